// The row kernel of the colorimetric members on 16-bit and float samples, C3 and AC4:
// groups of four pixels in float lanes (one vector a channel) over the columns below
// width & ~3, then single pixels. In the avx2 build two groups go side by side in one
// 256-bit vector; the columns of each form stay the same. A member is a sample kind
// (how samples become floats and results become samples) and two forms, the group's
// and the tail's. AC4: the destination's fourth sample keeps its value (the groups
// load it and store it back bit for bit, the tail never touches it).
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <type_traits>

#include "pxkcc.h"

#include "colorimetric/float_columns.h"
#include "colorimetric/sample_forms.h"
#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/samples.h"
#include "frame/vec_float.h"
#include "twist_gamma/float_quads.h"

namespace pxk {
namespace colorimetric {

using vec::F128;
using vec::V128;

// ---------------------------------------------------------------------------------
// Sample kinds
// ---------------------------------------------------------------------------------

// 16-bit samples, unsigned, or signed (Flip): a signed sample is taken plus 32768 as an
// integer (its top bit flipped), converted as an unsigned one, and the result, 0..65535
// after saturation, less 32768 (the top bit flipped again). Steps lose their low bit.
template <bool Flip>
struct Words16 {
    using T = std::conditional_t<Flip, int16_t, uint16_t>;
    static constexpr int kStepShift = 1;
    static constexpr uint16_t kFlip = Flip ? 0x8000u : 0u;

    PXK_INLINE static F128 load4(const T* p) {
        if constexpr (Flip) {
            return quads::load4Offset(p);
        } else {
            return quads::load4(p);
        }
    }
    PXK_INLINE static float sample(const T* p) {
        return static_cast<float>(static_cast<uint16_t>(loadSample<T>(p)) ^ kFlip);
    }
    // Eight 32-bit results (a, then b) saturated to 0..65535, as eight samples.
    PXK_INLINE static V128 words(V128 a, V128 b) {
        const V128 half = vec::splat32<V128>(32768);
        return vec::xor_(vec::packs32(vec::sub32(a, half), vec::sub32(b, half)),
                         vec::splat16<V128>(Flip ? 0 : 0x8000));
    }
    PXK_INLINE static void store(T* p, int32_t v) {
        const int32_t s = v < 0 ? 0 : (v > 65535 ? 65535 : v);
        storeSample<T>(p, static_cast<T>(static_cast<uint16_t>(static_cast<uint16_t>(s) ^ kFlip)));
    }
};
using Samples16u = Words16<false>;
using Samples16s = Words16<true>;

// Float samples, stored as computed. Steps lose their two low bits.
struct Samples32f {
    using T = float;
    static constexpr int kStepShift = 2;
    PXK_INLINE static F128 load4(const T* p) { return quads::load4(p); }
    PXK_INLINE static float sample(const T* p) { return loadSample<float>(p); }
};

// ---------------------------------------------------------------------------------
// Group layouts: four pixels of a row in float lanes and back
// ---------------------------------------------------------------------------------

template <class S, int Channels>
PXK_INLINE Floats3<F128> loadGroup(const typename S::T* p) {
    if constexpr (Channels == 3) {
        const quads::Channels3 c = quads::split3(S::load4(p), S::load4(p + 4), S::load4(p + 8));
        return Floats3<F128>{{c.c[0], c.c[1], c.c[2]}};
    } else {
        F128 v[4] = {S::load4(p), S::load4(p + 4), S::load4(p + 8), S::load4(p + 12)};
        quads::transpose4(v);
        return Floats3<F128>{{v[0], v[1], v[2]}};
    }
}

// The first three lanes of a four-lane pixel vector from `fresh`, the fourth from `kept`.
PXK_INLINE V128 keepFourth32(V128 fresh, V128 kept) {
    return vec::selectBits(vec::splat32Pattern<V128>(-1, -1, -1, 0), fresh, kept);
}
PXK_INLINE V128 keepFourth16(V128 fresh, V128 kept) {
    return vec::selectBits(vec::splat32Pattern<V128>(-1, 0xFFFF, -1, 0xFFFF), fresh, kept);
}

// Four float results a channel stored as C3 or AC4 pixels.
template <int Channels>
PXK_INLINE void storeGroup(float* p, const F128 (&c)[3]) {
    if constexpr (Channels == 3) {
        F128 x, y, z;
        quads::join3(c, x, y, z);
        vec::storeF(p, x);
        vec::storeF(p + 4, y);
        vec::storeF(p + 8, z);
    } else {
        F128 v[4] = {c[0], c[1], c[2], vec::zeroF<F128>()};
        quads::transpose4(v);
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) {
            const V128 kept = vec::bitsOf(vec::loadF<F128>(p + 4 * i));
            vec::storeF(p + 4 * i, vec::floatsOf(keepFourth32(vec::bitsOf(v[i]), kept)));
        }
    }
}

// Four 32-bit results a channel stored as C3 or AC4 pixels of 16-bit samples.
template <class S, int Channels>
PXK_INLINE void storeGroup(typename S::T* p, const V128 (&c)[3]) {
    uint8_t* bytes = quads::bytes(p);
    if constexpr (Channels == 3) {
        const F128 lanes[3] = {vec::floatsOf(c[0]), vec::floatsOf(c[1]), vec::floatsOf(c[2])};
        F128 x, y, z;  // pixel order, bits only
        quads::join3(lanes, x, y, z);
        vec::store128(bytes, S::words(vec::bitsOf(x), vec::bitsOf(y)));
        vec::storeLowHalves(bytes + 16, S::words(vec::bitsOf(z), vec::bitsOf(z)));
    } else {
        F128 v[4] = {vec::floatsOf(c[0]), vec::floatsOf(c[1]), vec::floatsOf(c[2]), vec::zeroF<F128>()};
        quads::transpose4(v);
        PXK_UNROLL
        for (int i = 0; i < 2; ++i) {
            const V128 fresh = S::words(vec::bitsOf(v[2 * i]), vec::bitsOf(v[2 * i + 1]));
            vec::store128(bytes + 16 * i, keepFourth16(fresh, vec::load128(bytes + 16 * i)));
        }
    }
}

// ---------------------------------------------------------------------------------
// Groups of one or two sets of four pixels
// ---------------------------------------------------------------------------------

template <Rounding R, class F>
PXK_INLINE auto toIntegers(F v) {
    if constexpr (R == Rounding::Truncate) {
        return vec::truncToInt(v);
    } else {
        return vec::roundToInt(v);
    }
}

// The 32-bit lanes of the lower (i = 0) or upper (i = 1) four pixels of a vector.
PXK_INLINE V128 quarterOf(V128 v, int) { return v; }
PXK_INLINE F128 quarterOf(F128 v, int) { return v; }
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE V128 quarterOf(vec::V256 v, int i) {
    return i == 0 ? _mm256_castsi256_si128(v) : _mm256_extracti128_si256(v, 1);
}
PXK_INLINE F128 quarterOf(vec::F256 v, int i) {
    return i == 0 ? _mm256_castps256_ps128(v) : _mm256_extractf128_ps(v, 1);
}
#endif

template <class F>
struct GroupOf;
template <>
struct GroupOf<F128> {
    static constexpr int32_t kPixels = 4;
    template <class S, int Channels>
    PXK_INLINE static Floats3<F128> load(const typename S::T* p) {
        return loadGroup<S, Channels>(p);
    }
};
#if defined(PXKCC_TARGET_AVX2)
template <>
struct GroupOf<vec::F256> {
    static constexpr int32_t kPixels = 8;
    template <class S, int Channels>
    PXK_INLINE static Floats3<vec::F256> load(const typename S::T* p) {
        const auto load4 = [](const typename S::T* q) PXK_LAMBDA_INLINE { return S::load4(q); };
        if constexpr (Channels == 3) {
            const quads::ChannelsOf3<vec::F256> c = quads::loadC3x8(load4, p);
            return Floats3<vec::F256>{{c.c[0], c.c[1], c.c[2]}};
        } else {
            vec::F256 v[4];
            quads::loadC4x8(load4, p, v);
            return Floats3<vec::F256>{{v[0], v[1], v[2]}};
        }
    }
};
#endif

// One group of GroupOf<F>::kPixels pixels at p (source) and q (destination) by Form,
// whose results become samples as Form::kRounding says.
template <class S, int Channels, class Form, class F>
PXK_INLINE void convertGroup(const typename S::T* p, typename S::T* q) {
    const Floats3<F> r = Form::apply(GroupOf<F>::template load<S, Channels>(p));
    if constexpr (Form::kRounding == Rounding::None && sizeof(F) == 32) {
#if defined(PXKCC_TARGET_AVX2)
        if constexpr (Channels == 3) {
            quads::storeC3x8(q, r.c);
        } else {
            quads::storeAC4x8<quads::FourthFloat::Masked>(q, r.c);
        }
#endif
    } else if constexpr (Form::kRounding == Rounding::None) {
        PXK_UNROLL
        for (int i = 0; i < GroupOf<F>::kPixels / 4; ++i) {
            const F128 c[3] = {quarterOf(r.c[0], i), quarterOf(r.c[1], i), quarterOf(r.c[2], i)};
            storeGroup<Channels>(q + 4 * Channels * i, c);
        }
    } else {
        const auto n0 = toIntegers<Form::kRounding>(r.c[0]);
        const auto n1 = toIntegers<Form::kRounding>(r.c[1]);
        const auto n2 = toIntegers<Form::kRounding>(r.c[2]);
        PXK_UNROLL
        for (int i = 0; i < GroupOf<F>::kPixels / 4; ++i) {
            const V128 c[3] = {quarterOf(n0, i), quarterOf(n1, i), quarterOf(n2, i)};
            storeGroup<S, Channels>(q + 4 * Channels * i, c);
        }
    }
}

// One tail pixel by the scalar Tail form; only its three colour samples are written.
template <class S, class Tail>
PXK_INLINE void convertPixel(const typename S::T* p, typename S::T* q) {
    const Floats3<float> r = Tail::apply(Floats3<float>{{S::sample(p), S::sample(p + 1), S::sample(p + 2)}});
    PXK_UNROLL
    for (int c = 0; c < 3; ++c) {
        if constexpr (Tail::kRounding == Rounding::None) {
            storeSample<float>(q + c, r.c[c]);
        } else if constexpr (Tail::kRounding == Rounding::Truncate) {
            S::store(q + c, truncToInt32(r.c[c]));
        } else {
            S::store(q + c, pxkRoundHalfEven(r.c[c]));
        }
    }
}

// One row: Block over the columns below width & ~3, Tail over the rest.
template <class S, int Channels, class Block, class Tail>
void convertSampleRow(int32_t width, const typename S::T* src, typename S::T* dst) {
    constexpr int32_t kWidest = GroupOf<vec::FloatOf<vec::Widest>>::kPixels;
    splitColumns<4, kWidest>(
        width,
        [&](int32_t x, int32_t count) PXK_LAMBDA_INLINE {
            const typename S::T* p = src + std::ptrdiff_t{Channels} * x;
            typename S::T* q = dst + std::ptrdiff_t{Channels} * x;
            if (count == kWidest) {
                convertGroup<S, Channels, Block, vec::FloatOf<vec::Widest>>(p, q);
            } else {
                convertGroup<S, Channels, Block, F128>(p, q);
            }
        },
        [&](int32_t x) { convertPixel<S, Tail>(src + std::ptrdiff_t{Channels} * x, dst + std::ptrdiff_t{Channels} * x); });
}

// A byte step with its low bits cleared: the step shifted down arithmetically to count
// samples, as these members count it, and back to bytes.
PXK_INLINE int32_t sampleStepBytes(int32_t step, int shift) {
    return static_cast<int32_t>(static_cast<uint32_t>(step) & ~((1u << shift) - 1u));
}

// An export body: pointers, then size (steps are not tested), then the rows.
template <class S, int Channels, class Block, class Tail>
PxkResult convertSamples(const typename S::T* pSrc, int32_t srcStep, typename S::T* pDst, int32_t dstStep,
                         PxkSize size) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(size, 1, 1));
    using T = typename S::T;
    driveRows(
        size.width, size.height,
        [](int32_t width, const T* s, T* d) { convertSampleRow<S, Channels, Block, Tail>(width, s, d); },
        rows(pSrc, sampleStepBytes(srcStep, S::kStepShift)), rows(pDst, sampleStepBytes(dstStep, S::kStepShift)));
    return pxkOk;
}

}  // namespace colorimetric
}  // namespace pxk

// The C3R and AC4R exports of one conversion on one sample kind: `name`_C3R and
// `name`_AC4R, with the group form Block and the tail form Tail.
#define PXK_SAMPLE_C3_AC4_MEMBERS(name, Kind, Block, Tail)                                                       \
    PxkResult name##_C3R(const Kind::T* pSrc, int32_t srcStep, Kind::T* pDst, int32_t dstStep, PxkSize roiSize) { \
        return pxk::colorimetric::convertSamples<Kind, 3, Block, Tail>(pSrc, srcStep, pDst, dstStep, roiSize);   \
    }                                                                                                             \
    PxkResult name##_AC4R(const Kind::T* pSrc, int32_t srcStep, Kind::T* pDst, int32_t dstStep,                  \
                          PxkSize roiSize) {                                                                      \
        return pxk::colorimetric::convertSamples<Kind, 4, Block, Tail>(pSrc, srcStep, pDst, dstStep, roiSize);   \
    }

// The twelve exports of a pair of conversions on 16u, 16s and 32f samples, C3R and
// AC4R: `forward`_<type>_... and `inverse`_<type>_..., the 16-bit members with their
// group and tail forms (16s through 16u), the float members with one form each.
#define PXK_SAMPLE_CONVERSION_PAIR(forward, inverse, Forward16Block, Forward16Tail, Inverse16Block, Inverse16Tail, \
                                   Forward32f, Inverse32f)                                                     \
    PXK_SAMPLE_C3_AC4_MEMBERS(forward##_16u, Samples16u, Forward16Block, Forward16Tail)                          \
    PXK_SAMPLE_C3_AC4_MEMBERS(inverse##_16u, Samples16u, Inverse16Block, Inverse16Tail)                          \
    PXK_SAMPLE_C3_AC4_MEMBERS(forward##_16s, Samples16s, Forward16Block, Forward16Tail)                          \
    PXK_SAMPLE_C3_AC4_MEMBERS(inverse##_16s, Samples16s, Inverse16Block, Inverse16Tail)                          \
    PXK_SAMPLE_C3_AC4_MEMBERS(forward##_32f, Samples32f, Forward32f, Forward32f)                                 \
    PXK_SAMPLE_C3_AC4_MEMBERS(inverse##_32f, Samples32f, Inverse32f, Inverse32f)
