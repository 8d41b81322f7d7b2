// The forms of RGB <-> HLS for 16-bit and float samples, around the cone formula of
// hls_forms.h: the 16-bit scales, the ways back to 16-bit samples of each path, the
// float forward conversion with true divisions, and the tails that divide by 60 and
// form m2 as (S + 1) L (the float and 16s tails).
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <type_traits>

#include "colorimetric/hls_forms.h"
#include "colorimetric/wide_rows.h"

namespace pxk {
namespace colorimetric {

inline constexpr HlsScale kHls16{65535.0f, 32767.5f, 131070.0f, 182.041672f, 0.00549324788f, 1.52590219e-05f};
// Added before truncation in the 16s paths that truncate.
inline constexpr float kHls16sRounding = 0.499989986f;
inline constexpr float kFloatGrayThreshold = 1.1920929e-07f;

// Signed 32-bit lanes limited to lo..hi.
template <class V>
PXK_INLINE V clampLanes(V v, int32_t lo, int32_t hi) {
    return vec::min32(vec::max32(v, vec::splat32<V>(lo)), vec::splat32<V>(hi));
}
PXK_INLINE int32_t clampInt(int32_t v, int32_t lo, int32_t hi) { return v < lo ? lo : (v > hi ? hi : v); }

// Integer lanes of each of the three channels of a float form's result, by map(F).
template <class F, class Map>
PXK_INLINE Lanes3<LanesOf<F>> eachChannel(const Floats3<F>& v, Map map) {
    Lanes3<LanesOf<F>> out;
    PXK_UNROLL
    for (int c = 0; c < 3; ++c) out.c[c] = map(v.c[c]);
    return out;
}

// ---------------------------------------------------------------------------------
// RGB -> HLS, 16-bit: H, L, S truncated, 32768 taken off and saturated to the signed
// range; the 16u members add 32768 back (so saturate to 0..65535). Gray pixels give
// H and S of the lowest code; in the tail their L is stored with no saturation.
// ---------------------------------------------------------------------------------

template <bool Unsigned>
PXK_INLINE int32_t hls16Code(float v) {
    return clampInt(int32_t(uint32_t(truncToInt32(v)) - 32768u), -32768, 32767) + (Unsigned ? 32768 : 0);
}

template <class T>
struct RgbToHls16 {
    static constexpr bool kUnsigned = std::is_same_v<T, uint16_t>;
    static constexpr bool kTail = true;
    template <class F>
    PXK_INLINE static Lanes3<LanesOf<F>> block(const Floats3<F>& rgb) {
        using V = LanesOf<F>;
        return eachChannel(rgbToHlsVector(rgb, kHls16), [](F v) PXK_LAMBDA_INLINE {
            const V t = clampLanes(vec::sub32(vec::truncToInt(v), vec::splat32<V>(32768)), -32768, 32767);
            return kUnsigned ? vec::add32(t, vec::splat32<V>(32768)) : t;
        });
    }
    PXK_INLINE static void tail(const float in[3], T out[3]) {
        HlsTail t{};
        const int32_t lowest = kUnsigned ? 0 : -32768;
        if (!rgbToHlsScalar(in[0], in[1], in[2], kHls16, t)) {
            const int32_t l = int32_t(uint32_t(truncToInt32(t.lightness)) - (kUnsigned ? 0u : 32768u));
            out[0] = out[2] = T(lowest);
            out[1] = T(uint16_t(uint32_t(l)));
            return;
        }
        out[0] = T(hls16Code<kUnsigned>(t.hue));
        out[1] = T(hls16Code<kUnsigned>(t.lightness));
        out[2] = T(hls16Code<kUnsigned>(t.saturation));
    }
};

// ---------------------------------------------------------------------------------
// RGB -> HLS, float: one vector form for every column (no tail), true divisions, a
// gray test against 1.1920929e-07, hue in turns.
// ---------------------------------------------------------------------------------

struct RgbToHls32f {
    static constexpr bool kTail = false;
    template <class F>
    PXK_INLINE static Floats3<F> block(const Floats3<F>& rgb) {
        using namespace vec;
        const F r = rgb.c[0], g = rgb.c[1], b = rgb.c[2];
        const F mx = maxF(maxF(r, g), b);
        const F mn = minF(minF(r, g), b);
        const F d = subF(mx, mn);
        const F s = addF(mx, mn);
        const F lightness = mulF(splatF<F>(0.5f), s);
        const F gray = lessEqualF(d, splatF<F>(kFloatGrayThreshold));
        const F denominator = selectF(lessEqualF(lightness, splatF<F>(0.5f)), s, subF(splatF<F>(2.0f), s));
        const F saturation = divF(d, denominator);
        // The first channel equal to the maximum wins: red, then green, then blue. Each
        // lane divides only its own case's difference (one division for the three), and
        // only the green and blue cases add their offset, so a red -0 stays -0.
        const F isRed = equalF(r, mx), isGreen = equalF(g, mx);
        const F difference = selectF(isRed, subF(g, b), selectF(isGreen, subF(b, r), subF(r, g)));
        const F quotient = divF(mulF(difference, splatF<F>(60.0f)), d);
        const F offset = selectF(isGreen, splatF<F>(120.0f), splatF<F>(240.0f));
        F h = selectF(isRed, quotient, addF(quotient, offset));
        h = selectF(lessF(h, zeroF<F>()), addF(h, splatF<F>(360.0f)), h);
        const F hue = divF(h, splatF<F>(360.0f));
        return Floats3<F>{{andNotF(gray, hue), lightness, andNotF(gray, saturation)}};
    }
};

// ---------------------------------------------------------------------------------
// HLS -> RGB
// ---------------------------------------------------------------------------------

// The tails of the float and 16s members: a gray pixel (S 0) gives L; others m2 as
// (S + 1) L below one half and each channel by a true division by 60.
PXK_INLINE Floats3<float> hlsToRgbDivided(float degrees, float l, float s) {
    if (s == 0.0f) return Floats3<float>{{l, l, l}};
    return hlsToRgbScalar<true>(degrees, l, s);
}

// R, G, B in 0..1 of 16-bit codes by the products with the 16-bit scales.
template <class F>
PXK_INLINE Floats3<F> hlsToRgbByProducts16(const Floats3<F>& hls) {
    using namespace vec;
    const F unit = splatF<F>(kHls16.toUnit);
    return hlsToRgbVector(mulF(hls.c[0], splatF<F>(kHls16.hueToDegrees)), mulF(hls.c[1], unit),
                          mulF(hls.c[2], unit));
}

// 16u: v * 32767.5 truncated, saturated to 32767 and doubled, so every output is
// even. A gray tail pixel stores its L word in all three channels.
PXK_INLINE int32_t hlsToRgb16uCode(float v) { return 2 * clampInt(truncToInt32(v * 32767.5f), -32768, 32767); }

struct HlsToRgb16u {
    static constexpr bool kTail = true;
    template <class F>
    PXK_INLINE static Lanes3<LanesOf<F>> block(const Floats3<F>& hls) {
        return eachChannel(hlsToRgbByProducts16(hls), [](F v) PXK_LAMBDA_INLINE {
            const LanesOf<F> t = clampLanes(vec::truncToInt(vec::mulF(v, vec::splatF<F>(32767.5f))), -32768, 32767);
            return vec::add32(t, t);
        });
    }
    PXK_INLINE static void tail(const float in[3], uint16_t out[3]) {
        if (in[2] == 0.0f) {
            out[0] = out[1] = out[2] = uint16_t(in[1]);
            return;
        }
        const Floats3<float> v =
            hlsToRgbScalar(in[0] * kHls16.hueToDegrees, in[1] * kHls16.toUnit, in[2] * kHls16.toUnit);
        for (int c = 0; c < 3; ++c) out[c] = uint16_t(hlsToRgb16uCode(v.c[c]));
    }
};

// 16s, the tails of both forms: inputs plus 32768 by true divisions by 65535, v * 65535
// plus 0.499989986 truncated, 32768 taken off, the low 16 bits stored.
PXK_INLINE void hlsToRgb16sTail(const float in[3], int16_t out[3]) {
    const Floats3<float> v = hlsToRgbDivided((in[0] * 360.0f) / 65535.0f, in[1] / 65535.0f, in[2] / 65535.0f);
    for (int c = 0; c < 3; ++c) {
        out[c] = int16_t(uint16_t(uint32_t(truncToInt32(v.c[c] * 65535.0f + kHls16sRounding)) - 32768u));
    }
}

// 16s C3 main loop: inputs plus 32768 by the 16u products; v * 65535 rounded by the
// current mode, 32768 taken off, saturated to the signed range.
struct HlsToRgb16sC3 {
    static constexpr bool kTail = true;
    template <class F>
    PXK_INLINE static Lanes3<LanesOf<F>> block(const Floats3<F>& hls) {
        using V = LanesOf<F>;
        return eachChannel(hlsToRgbByProducts16(hls), [](F v) PXK_LAMBDA_INLINE {
            const V t = vec::roundToInt(vec::mulF(v, vec::splatF<F>(65535.0f)));
            return clampLanes(vec::sub32(t, vec::splat32<V>(32768)), -32768, 32767);
        });
    }
    PXK_INLINE static void tail(const float in[3], int16_t out[3]) { hlsToRgb16sTail(in, out); }
};

// 16s AC4 main loop: inputs plus 32768 times the once-refined reciprocal of 65535 (hue
// times 360 first); v * 65535 plus 0.499989986 truncated, saturated to 32767, and
// -32768 added with wrap-around, which folds the upper half of the range.
struct HlsToRgb16sAC4 {
    static constexpr bool kTail = true;
    template <class F>
    PXK_INLINE static Lanes3<LanesOf<F>> block(const Floats3<F>& hls) {
        using namespace vec;
        using V = LanesOf<F>;
        const F r = splatF<F>(refinedReciprocal(65535.0f));
        const Floats3<F> v = hlsToRgbVector(mulF(mulF(hls.c[0], splatF<F>(360.0f)), r), mulF(hls.c[1], r),
                                            mulF(hls.c[2], r));
        return eachChannel(v, [](F c) PXK_LAMBDA_INLINE {
            const F scaled = addF(mulF(c, splatF<F>(65535.0f)), splatF<F>(kHls16sRounding));
            return add32(clampLanes(truncToInt(scaled), -32768, 32767), splat32<V>(-32768));
        });
    }
    PXK_INLINE static void tail(const float in[3], int16_t out[3]) { hlsToRgb16sTail(in, out); }
};

// Float: hue times 360; the main loop by the products with one sixtieth, the tail by
// true divisions by 60 and m2 as (S + 1) L. Values stored as they are. Inputs are not
// clamped, and NaN flows through: where two operands of a step are NaN, which payload
// the result keeps is the compiler's choice of operand order, not fixed.
struct HlsToRgb32f {
    static constexpr bool kTail = true;
    template <class F>
    PXK_INLINE static Floats3<F> block(const Floats3<F>& hls) {
        return hlsToRgbVector(vec::mulF(hls.c[0], vec::splatF<F>(360.0f)), hls.c[1], hls.c[2]);
    }
    PXK_INLINE static void tail(const float in[3], float out[3]) {
        const Floats3<float> v = hlsToRgbDivided(in[0] * 360.0f, in[1], in[2]);
        for (int c = 0; c < 3; ++c) out[c] = v.c[c];
    }
};

}  // namespace colorimetric
}  // namespace pxk
