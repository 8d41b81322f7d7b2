// The LUV members composed from the forms of luv_forms.h: the units of each sample
// type around them, the column rules, and the channel order (a BGR member reads or
// writes the first and third channels exchanged).
//
//   32f  forward: the block form over width & ~3, the tail form (Z of 0 gives U and V
//        of 0) for the rest; L, U, V unclamped. Inverse: one form everywhere, with
//        true divisions; R, G, B clamped to 0..1, black where L < 9e-05.
//   16u, 16s  forward: samples (16s plus 32768) in sample units, the threshold of the
//        linear foot in those units; L16 = L 655.35, U16 = (U + 134) 185.127121,
//        V16 = (V + 140) 250.133591. The block rounds by the current mode and
//        saturates; the tail rounds L by the current mode and truncates U and V (the
//        cheaper conversion where the range allows it), and saturates all three to the
//        type's range like the block. Inverse: L = L16 0.00152590219,
//        U = U16 0.00540169375 - 134, V = V16 0.00399786374 - 140 (the mapping's
//        reciprocals as floats); the reciprocal form; R, G, B times 65535, truncated,
//        saturated; the tail works the cube in double.
//   8u   inverse: L = L8 0.392156869, U = U8 1.38823533 - 134, V = V8 1.02745104 - 140;
//        the reciprocal form over width & ~7; R, G, B times 255, truncated, saturated;
//        the tail works the cube in double. (Forward 8u is scalar: luv_8u.cpp.)
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <utility>

#include "colorimetric/float_columns.h"
#include "colorimetric/luv_forms.h"
#include "colorimetric/luv_sample_rows.h"
#include "frame/pixel_block.h"

namespace pxk {
namespace colorimetric {
namespace luv {

template <bool Swap, class F>
PXK_INLINE Floats3<F> ordered(Floats3<F> v) {
    if (Swap) std::swap(v.c[0], v.c[2]);
    return v;
}
template <bool Swap, class T>
PXK_INLINE void orderedInPlace(T v[3]) {
    if (Swap) std::swap(v[0], v[2]);
}

// What the row kernel needs to know of a member besides its forms: its sample type
// (both sides), samples a pixel, and how its block results become integer samples.
template <class T, int Channels, Conversion BlockConversion = Conversion::Truncate>
struct MemberOf {
    using In = T;
    using Out = T;
    static constexpr int kChannels = Channels;
    static constexpr Conversion kBlockConversion = BlockConversion;
};

// R, G, B limited to 0..1: below 0 gives 0, else the least of the value and 1 (so NaN
// gives 1); black where L < 9e-05.
template <class F>
PXK_INLINE F clampUnit(F v, F black) {
    const F limited = selectF(lessF(v, zeroF<F>()), zeroF<F>(), minF(v, splatF<F>(1.0f)));
    return andNotF(black, limited);
}
PXK_INLINE float clampUnit(float v, bool black) {
    if (black || v < 0.0f) return 0.0f;
    return v < 1.0f ? v : 1.0f;
}

// ---------------------------------------------------------------------------------
// 32f
// ---------------------------------------------------------------------------------

template <bool Bgr, int Channels>
struct ToLuv32f : MemberOf<float, Channels> {
    template <class F>
    PXK_INLINE static Floats3<F> block(const Floats3<F>& rgb) {
        return ForwardBlock<UnitRange>::apply(ordered<Bgr>(rgb));
    }
    PXK_INLINE static void tail(float rgb[3], float out[3]) {
        orderedInPlace<Bgr>(rgb);
        ForwardTail<UnitRange>::apply(rgb, out);
    }
};

template <bool Bgr, int Channels>
struct FromLuv32f : MemberOf<float, Channels> {
    template <class F>
    PXK_INLINE static Floats3<F> block(const Floats3<F>& luv) {
        const Floats3<F> rgb = Inverse<InverseExact>::apply(luv);
        const F black = blackMask(luv.c[0]);
        return ordered<Bgr>(Floats3<F>{{clampUnit(rgb.c[0], black), clampUnit(rgb.c[1], black), clampUnit(rgb.c[2], black)}});
    }
    PXK_INLINE static void tail(float luv[3], float out[3]) {
        Inverse<InverseExact>::apply(luv, out);
        const bool black = luv[0] < kBlackBelow;
        for (int c = 0; c < 3; ++c) out[c] = clampUnit(out[c], black);
        orderedInPlace<Bgr>(out);
    }
};

// ---------------------------------------------------------------------------------
// 16u and 16s
// ---------------------------------------------------------------------------------

// L, U, V to the 16-bit mapping (as floats, before the conversion).
template <class F>
PXK_INLINE Floats3<F> toSamples16(const Floats3<F>& luv) {
    return Floats3<F>{{mulF(luv.c[0], splatF<F>(655.35f)), mulF(addF(luv.c[1], splatF<F>(134.0f)), splatF<F>(185.127121f)),
                       mulF(addF(luv.c[2], splatF<F>(140.0f)), splatF<F>(250.133591f))}};
}
PXK_INLINE void toSamples16(const float luv[3], float out[3]) {
    out[0] = luv[0] * 655.35f;
    out[1] = (luv[1] + 134.0f) * 185.127121f;
    out[2] = (luv[2] + 140.0f) * 250.133591f;
}

// Samples of an integer LUV (8-bit or 16-bit mapping) back to L, U, V floats.
struct Mapping16 {
    static constexpr float kScale[3] = {0.00152590219f, 0.00540169375f, 0.00399786374f};
    static constexpr float kRange = 65535.0f;
};
struct Mapping8 {
    static constexpr float kScale[3] = {0.392156869f, 1.38823533f, 1.02745104f};
    static constexpr float kRange = 255.0f;
};
template <class Mapping, class F>
PXK_INLINE Floats3<F> fromSamples(const Floats3<F>& s) {
    return Floats3<F>{{mulF(s.c[0], splatF<F>(Mapping::kScale[0])),
                       subF(mulF(s.c[1], splatF<F>(Mapping::kScale[1])), splatF<F>(134.0f)),
                       subF(mulF(s.c[2], splatF<F>(Mapping::kScale[2])), splatF<F>(140.0f))}};
}
template <class Mapping>
PXK_INLINE void fromSamples(const float s[3], float out[3]) {
    out[0] = s[0] * Mapping::kScale[0];
    out[1] = s[1] * Mapping::kScale[1] - 134.0f;
    out[2] = s[2] * Mapping::kScale[2] - 140.0f;
}

// The inverse of an integer member: R, G, B times the range, 0 where L < 9e-05 (the
// caller truncates and saturates). The tail works the cube in double.
template <class Mapping>
struct InverseToRange {
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& samples) {
        const Floats3<F> luv = fromSamples<Mapping>(samples);
        const Floats3<F> rgb = Inverse<InverseByReciprocal>::apply(luv);
        const F black = blackMask(luv.c[0]);
        Floats3<F> out;
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) out.c[c] = andNotF(black, mulF(rgb.c[c], splatF<F>(Mapping::kRange)));
        return out;
    }
    PXK_INLINE static void apply(const float samples[3], float out[3]) {
        float luv[3];
        fromSamples<Mapping>(samples, luv);
        Inverse<InverseByReciprocal>::apply<true>(luv, out);
        const bool black = luv[0] < kBlackBelow;
        for (int c = 0; c < 3; ++c) out[c] = black ? 0.0f : out[c] * Mapping::kRange;
    }
};

template <class T, bool Bgr, int Channels>
struct ToLuv16 : MemberOf<T, Channels, Conversion::Round> {
    template <class F>
    PXK_INLINE static Floats3<F> block(const Floats3<F>& rgb) {
        return toSamples16(ForwardBlock<SampleRange16>::apply(ordered<Bgr>(rgb)));
    }
    PXK_INLINE static void tail(float rgb[3], T out[3]) {
        orderedInPlace<Bgr>(rgb);
        float luv[3], mapped[3];
        ForwardTail<SampleRange16>::apply(rgb, luv);
        toSamples16(luv, mapped);
        out[0] = SampleKind<T>::fromInt(convertScalar(mapped[0], Conversion::Round));
        out[1] = SampleKind<T>::fromInt(convertScalar(mapped[1], Conversion::Truncate));
        out[2] = SampleKind<T>::fromInt(convertScalar(mapped[2], Conversion::Truncate));
    }
};

template <class T, bool Bgr, int Channels>
struct FromLuv16 : MemberOf<T, Channels> {
    template <class F>
    PXK_INLINE static Floats3<F> block(const Floats3<F>& luv) {
        return ordered<Bgr>(InverseToRange<Mapping16>::apply(luv));
    }
    PXK_INLINE static void tail(float luv[3], T out[3]) {
        float rgb[3];
        InverseToRange<Mapping16>::apply(luv, rgb);
        orderedInPlace<Bgr>(rgb);
        for (int c = 0; c < 3; ++c) out[c] = SampleKind<T>::fromInt(truncToInt32(rgb[c]));
    }
};

// ---------------------------------------------------------------------------------
// 8u inverse, for the 8-bit row kernel (MemberColumns): blocks of 16-bit lanes
// widened to floats, results truncated and saturated; the tail one pixel at a time.
// ---------------------------------------------------------------------------------

struct FromLuv8uForm {
    static constexpr ToInteger kToInteger = ToInteger::TruncateSaturate;
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& luv) {
        return InverseToRange<Mapping8>::apply(luv);
    }
};
using FromLuv8uBlock = HalvesBlock<FromLuv8uForm>;
struct FromLuv8uTail {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const float samples[3] = {float(p.c[0]), float(p.c[1]), float(p.c[2])};
        float rgb[3];
        InverseToRange<Mapping8>::apply(samples, rgb);
        Pixel3 out;
        for (int c = 0; c < 3; ++c) {
            const int32_t t = truncToInt32(rgb[c]);
            out.c[c] = static_cast<uint8_t>(t < 0 ? 0 : (t > 255 ? 255 : t));
        }
        return out;
    }
};

}  // namespace luv
}  // namespace colorimetric
}  // namespace pxk
