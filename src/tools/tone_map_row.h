// The rows of the tone maps: each output byte is truncate(sample * scale).
//
// Vector columns saturate to 0..255; the scalar samples follow the map (Linear keeps
// the low 8 bits, Mean limits to 0..255). A row takes the vector loop only when it is
// wider than 6 and its source and destination do not overlap. Then a row of 16 or
// more first runs scalar samples up to the destination's 16-byte alignment (the same
// 16-byte test in every build), the vector loop takes rounds of 16 samples, then of 4,
// and the last width % 4 samples run scalar. Other rows run scalar, two samples a
// round.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/fixed_point.h"
#include "frame/vec_float.h"
#include "tools/samples.h"

namespace pxk {
namespace tonemap {

using vec::F128;
using vec::V128;

// The vector form: truncate(sample * scale) in 32-bit lanes. Out-of-range products and
// NaN give INT32_MIN, which the byte stores saturate to 0.
template <class F>
PXK_INLINE auto scaledTruncated(F x, F scale) {
    return vec::truncToInt(vec::mulF(x, scale));
}

// Its scalar twins.
struct LinearMap {
    PXK_INLINE static uint8_t scalar(float x, float scale) { return low8(truncToInt32(x * scale)); }
};
struct MeanMap {
    PXK_INLINE static uint8_t scalar(float x, float scale) { return clamp8(truncToInt32(x * scale)); }
};

// Sixteen results, saturated to bytes, stored at a 16-byte aligned address.
PXK_INLINE void storeSixteen(uint8_t* dst, const V128 (&v)[4]) {
    _mm_store_si128(reinterpret_cast<__m128i*>(dst), vec::packus16(vec::packs32(v[0], v[1]), vec::packs32(v[2], v[3])));
}
#if defined(PXKCC_TARGET_AVX2)
// The 256-bit packs interleave the lanes' quarters; one cross-lane move restores order.
PXK_INLINE void storeSixteen(uint8_t* dst, const vec::V256 (&v)[2]) {
    const vec::V256 bytes = vec::packus16(vec::packs32(v[0], v[1]), vec::zero<vec::V256>());
    const vec::V256 ordered = _mm256_permutevar8x32_epi32(bytes, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
    _mm_store_si128(reinterpret_cast<__m128i*>(dst), _mm256_castsi256_si128(ordered));
}
#endif

// Sixteen samples through the widest float vector.
PXK_INLINE void mapSixteen(const float* src, uint8_t* dst, float scale) {
    using F = vec::FloatOf<vec::Widest>;
    constexpr int kPer = static_cast<int>(sizeof(F) / sizeof(float));
    const F s = vec::splatF<F>(scale);
    vec::Widest v[16 / kPer];
    PXK_UNROLL
    for (int i = 0; i < 16 / kPer; ++i) v[i] = scaledTruncated(vec::loadF<F>(src + kPer * i), s);
    storeSixteen(dst, v);
}

// Four samples, stored as four bytes at any address.
PXK_INLINE void mapFour(const float* src, uint8_t* dst, float scale) {
    const V128 v = scaledTruncated(vec::loadF<F128>(src), vec::splatF<F128>(scale));
    const V128 words = vec::packs32(v, v);
    vec::storeLowQuarters(dst, vec::packus16(words, words));
}

// Whether the row's source bytes and destination bytes share an address.
PXK_INLINE bool rowsOverlap(const float* src, const uint8_t* dst, int32_t width) {
    const std::uintptr_t s = reinterpret_cast<std::uintptr_t>(src), d = reinterpret_cast<std::uintptr_t>(dst);
    const std::uintptr_t n = static_cast<std::uintptr_t>(width);
    return s < d + n && d < s + 4 * n;
}

template <class Map>
void mapRow(int32_t width, const float* src, uint8_t* dst, float scale) {
    int32_t x = 0;
    if (width > 6 && !rowsOverlap(src, dst, width)) {
        if (width >= 16) {
            const int32_t head = static_cast<int32_t>((16 - (reinterpret_cast<std::uintptr_t>(dst) & 15)) & 15);
            for (; x < head; ++x) dst[x] = Map::scalar(loadSample<float>(src + x), scale);
        }
        for (; width - x >= 16; x += 16) mapSixteen(src + x, dst + x, scale);
        for (; width - x >= 4; x += 4) mapFour(src + x, dst + x, scale);
        for (; x < width; ++x) dst[x] = Map::scalar(loadSample<float>(src + x), scale);
        return;
    }
    // Two samples a round, both read before either is written.
    for (; width - x >= 2; x += 2) {
        const float a = loadSample<float>(src + x), b = loadSample<float>(src + x + 1);
        dst[x] = Map::scalar(a, scale);
        dst[x + 1] = Map::scalar(b, scale);
    }
    if (x < width) dst[x] = Map::scalar(loadSample<float>(src + x), scale);
}

}  // namespace tonemap
}  // namespace pxk
