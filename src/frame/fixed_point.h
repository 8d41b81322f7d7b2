// The words of fixed-point arithmetic, scalar and SSE2, each in one place. "Keeps the
// low 8 bits", "saturates to 8 bits" and "takes the high product" are different
// operations and each has its own helper here.
#pragma once

#include <emmintrin.h>

#include <cstdint>

namespace pxk {

// Arithmetic shift right by n: rounds toward negative infinity. (The compilers we
// build with define >> on negative values as arithmetic.)
constexpr int32_t asr(int32_t x, int n) { return x >> n; }

// Saturates to 0..255.
constexpr uint8_t clamp8(int32_t x) {
    return static_cast<uint8_t>(x < 0 ? 0 : (x > 255 ? 255 : x));
}

// Keeps the low 8 bits.
constexpr uint8_t low8(int32_t x) { return static_cast<uint8_t>(x & 0xFF); }

// h(k, x): the exact signed product of two 16-bit values, shifted right by 16, so
// that a negative product truncates toward negative infinity.
constexpr int32_t highProduct(int32_t k, int32_t x) { return asr(k * x, 16); }

// The high product of two unsigned 16-bit values, the product taken exactly.
constexpr int32_t highProductUnsigned(uint32_t k, uint32_t x) { return static_cast<int32_t>((k * x) >> 16); }

// h(k, x) on eight signed 16-bit lanes.
inline __m128i highProductLanes(__m128i x, __m128i k) { return _mm_mulhi_epi16(x, k); }

// The same with both factors taken as unsigned 16-bit numbers.
inline __m128i highProductUnsignedLanes(__m128i x, __m128i k) { return _mm_mulhi_epu16(x, k); }

// Eight 16-bit lanes holding `v`.
inline __m128i lanes16(int32_t v) { return _mm_set1_epi16(static_cast<int16_t>(v)); }

// Four 16-bit lanes holding `lo`, then four holding `hi`.
inline __m128i lanes16Halves(int32_t lo, int32_t hi) {
    const int16_t l = static_cast<int16_t>(lo), h = static_cast<int16_t>(hi);
    return _mm_set_epi16(h, h, h, h, l, l, l, l);
}

// Coefficient pairs for _mm_madd_epi16: every 32-bit lane holds (lo, hi) as two
// signed 16-bit numbers, multiplied with the (first, second) 16-bit values of a lane.
inline __m128i coefficientPairs(int32_t first, int32_t second) {
    const uint32_t packed = static_cast<uint16_t>(first) |
                            (static_cast<uint32_t>(static_cast<uint16_t>(second)) << 16);
    return _mm_set1_epi32(static_cast<int32_t>(packed));
}

}  // namespace pxk
