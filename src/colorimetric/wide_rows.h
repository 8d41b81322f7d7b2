// Rows of 16-bit and float samples for the colorimetric conversions that work in
// floats: groups of four pixels (C3, or AC4 whose fourth channel is neither read for
// the result nor written) loaded as one float vector a channel, converted by a vector
// form, and stored in the destination's sample type; the columns past the last whole
// group go to the scalar twin, or, for members without a tail, through the vector
// form by way of a local group. In the avx2 build a vector holds two groups side by
// side, one a 128-bit lane; the groups and the columns are those of the sse2 build.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <cstring>

#include "pxkcc.h"

#include "colorimetric/float_columns.h"
#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/samples.h"
#include "frame/vec_float.h"
#include "twist_gamma/float_quads.h"

namespace pxk {
namespace colorimetric {

// The integer lanes as wide as the float vector F.
template <class F>
using LanesOf = decltype(vec::bitsOf(F{}));

// A sample as the float that the conversions start from: 16s samples have 32768 added
// (as integers), so that every integer type reads as 0..65535.
PXK_INLINE float sampleValue(uint16_t v) { return float(v); }
PXK_INLINE float sampleValue(int16_t v) { return float(int32_t{v} + 32768); }
PXK_INLINE float sampleValue(float v) { return v; }

namespace wide {

using vec::F128;
using vec::V128;

// Four samples of a row as floats, 16s with 32768 added.
PXK_INLINE F128 load4(const uint16_t* p) { return quads::load4(p); }
PXK_INLINE F128 load4(const int16_t* p) { return quads::load4Offset(p); }
PXK_INLINE F128 load4(const float* p) { return quads::load4(p); }
PXK_INLINE F128 load4(const uint8_t* p) { return quads::load4(p); }

// Four pixels of Channels samples (3, or 4 with the fourth ignored), one vector a
// channel.
template <int Channels, class T>
PXK_INLINE Floats3<F128> loadGroup(const T* p) {
    Floats3<F128> r;
    if constexpr (Channels == 3) {
        const quads::Channels3 c = quads::split3(load4(p), load4(p + 4), load4(p + 8));
        r = Floats3<F128>{{c.c[0], c.c[1], c.c[2]}};
    } else {
        F128 v[4] = {load4(p), load4(p + 4), load4(p + 8), load4(p + 12)};
        quads::transpose4(v);
        r = Floats3<F128>{{v[0], v[1], v[2]}};
    }
    return r;
}

// The twelve samples of four pixels in pixel order, from one vector a channel: floats
// as they are, integer lanes as their low 16 bits.
PXK_INLINE void interleave(const Floats3<F128>& v, float out[12]) {
    F128 x, y, z;
    quads::join3(v.c, x, y, z);
    vec::storeF(out, x);
    vec::storeF(out + 4, y);
    vec::storeF(out + 8, z);
}
template <class T>
PXK_INLINE void interleave(const Lanes3<V128>& v, T out[12]) {
    using namespace vec;
    const F128 f[3] = {floatsOf(v.c[0]), floatsOf(v.c[1]), floatsOf(v.c[2])};
    F128 x, y, z;
    quads::join3(f, x, y, z);
    // Low halves sign-extended, so that the signed pack keeps them as they are.
    const auto low = [](F128 w) { return srai32<16>(slli32<16>(bitsOf(w))); };
    const V128 xy = packs32(low(x), low(y));
    const V128 zz = packs32(low(z), low(z));
    std::memcpy(out, &xy, 16);
    std::memcpy(out + 8, &zz, 8);
}

// Four converted pixels stored: C3 rows take the twelve samples at once; AC4 rows take
// three samples a pixel, and their fourth samples are not written.
template <int Channels, class T, class Result>
PXK_INLINE void storeGroup(T* p, const Result& r, int32_t pixels = 4) {
    T s[12];
    interleave(r, s);
    if (Channels == 3 && pixels == 4) {
        std::memcpy(p, s, sizeof s);
    } else {
        for (int32_t i = 0; i < pixels; ++i) std::memcpy(p + Channels * i, s + 3 * i, 3 * sizeof(T));
    }
}

#if defined(PXKCC_TARGET_AVX2)
using vec::F256;
using vec::V256;
PXK_INLINE V128 lowLane(V256 v) { return _mm256_castsi256_si128(v); }
PXK_INLINE V128 highLane(V256 v) { return _mm256_extracti128_si256(v, 1); }

// Eight pixels: the first four in the low lane of each vector, the next four in the
// high lane.
template <int Channels, class T>
PXK_INLINE Floats3<F256> loadGroups(const T* p) {
    const auto four = [](const T* q) PXK_LAMBDA_INLINE { return load4(q); };
    if constexpr (Channels == 3) {
        const quads::ChannelsOf3<F256> c = quads::loadC3x8(four, p);
        return Floats3<F256>{{c.c[0], c.c[1], c.c[2]}};
    } else {
        F256 v[4];
        quads::loadC4x8(four, p, v);
        return Floats3<F256>{{v[0], v[1], v[2]}};
    }
}
// Integer results: each 128-bit lane as a group of four pixels.
template <int Channels, class T>
PXK_INLINE void storeGroups(T* p, const Lanes3<V256>& r) {
    const Lanes3<V128> lo{{lowLane(r.c[0]), lowLane(r.c[1]), lowLane(r.c[2])}};
    const Lanes3<V128> hi{{highLane(r.c[0]), highLane(r.c[1]), highLane(r.c[2])}};
    storeGroup<Channels>(p, lo);
    storeGroup<Channels>(p + 4 * Channels, hi);
}
// Float results: whole vectors; AC4 destinations' fourth floats are not written.
template <int Channels>
PXK_INLINE void storeGroups(float* p, const Floats3<F256>& r) {
    if constexpr (Channels == 3) {
        quads::storeC3x8(p, r.c);
    } else {
        quads::storeAC4x8<quads::FourthFloat::Masked>(p, r.c);
    }
}
#endif

}  // namespace wide

// One row of `width` pixels. Member gives
//   template <class F> static auto block(const Floats3<F>&)  -> Floats3<F> or Lanes3<int lanes>
//   static void tail(const float in[3], TOut out[3])          (when kTail)
//   static constexpr bool kTail: columns past width - width % 4 go to the tail; without
//   it every column goes through the vector form, the last short group by way of a
//   local group of four pixels.
template <class Member, int InChannels, int OutChannels, class TIn, class TOut>
PXK_INLINE void convertWideRow(const TIn* src, TOut* dst, int32_t width) {
    const int32_t n = width - width % 4;
    int32_t x = 0;
#if defined(PXKCC_TARGET_AVX2)
    for (; n - x >= 8; x += 8) {
        wide::storeGroups<OutChannels>(dst + OutChannels * x,
                                       Member::block(wide::loadGroups<InChannels>(src + InChannels * x)));
    }
#endif
    for (; n - x >= 4; x += 4) {
        wide::storeGroup<OutChannels>(dst + OutChannels * x,
                                      Member::block(wide::loadGroup<InChannels>(src + InChannels * x)));
    }
    if (n == width) return;
    if constexpr (Member::kTail) {
        for (x = n; x < width; ++x) {
            const TIn* p = src + InChannels * x;
            const float in[3] = {sampleValue(loadSample(p)), sampleValue(loadSample(p + 1)),
                                 sampleValue(loadSample(p + 2))};
            TOut out[3];
            Member::tail(in, out);
            std::memcpy(dst + OutChannels * x, out, sizeof out);
        }
    } else {
        // The last one to three pixels, padded with zeros to a group.
        TIn group[4 * InChannels] = {};
        std::memcpy(group, src + InChannels * n, sizeof(TIn) * std::size_t(InChannels * (width - n)));
        wide::storeGroup<OutChannels>(dst + OutChannels * n, Member::block(wide::loadGroup<InChannels>(group)),
                                      width - n);
    }
}

// Byte steps of 16-bit rows halved and of float rows quartered by an arithmetic shift,
// and taken in samples: the odd low bits of a step are dropped.
template <class T>
PXK_INLINE int32_t sampleStepBytes(int32_t step) {
    return (step >> (sizeof(T) == 2 ? 1 : 2)) * int32_t(sizeof(T));
}

// The body of an interleaved member with untested steps: pointers, then size, then
// the rows.
template <class Member, int InChannels, int OutChannels, class TIn, class TOut>
PxkResult convertWide(const TIn* pSrc, int32_t srcStep, TOut* pDst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(size, 1, 1));
    driveRows(
        size.width, size.height,
        [](int32_t width, const TIn* s, TOut* d) { convertWideRow<Member, InChannels, OutChannels>(s, d, width); },
        rows(pSrc, sampleStepBytes<TIn>(srcStep)), rows(pDst, sampleStepBytes<TOut>(dstStep)));
    return pxkOk;
}

}  // namespace colorimetric
}  // namespace pxk

// The C3R and AC4R exports `name`_C3R and `name`_AC4R of samples T with the column
// rules C3Member and AC4Member.
#define PXK_WIDE_C3_AC4_MEMBERS(name, T, C3Member, AC4Member)                                            \
    PxkResult name##_C3R(const T* pSrc, int32_t srcStep, T* pDst, int32_t dstStep, PxkSize roiSize) {    \
        return pxk::colorimetric::convertWide<C3Member, 3, 3>(pSrc, srcStep, pDst, dstStep, roiSize);     \
    }                                                                                                    \
    PxkResult name##_AC4R(const T* pSrc, int32_t srcStep, T* pDst, int32_t dstStep, PxkSize roiSize) {   \
        return pxk::colorimetric::convertWide<AC4Member, 4, 4>(pSrc, srcStep, pDst, dstStep, roiSize);    \
    }
