// Dot products of the pairs of pixels of a 128-bit block with a row of coefficients,
// for the CbYCr422 members whose chroma reaches across pairs: each pair's value needs
// a value of the pair before it, carried from block to block.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/pixel_block.h"
#include "frame/vec.h"

namespace pxk {
namespace yuv {

using namespace vec;

// k . p of the pixels of one half of a block (eight 16-bit lanes a channel a 128-bit
// lane), in 32-bit lanes: pixels 0 to 3 of the half, then 4 to 7.
template <class V>
PXK_INLINE void dotHalf(const int32_t (&k)[3], const Lanes3<V>& h, V out[2]) {
    const V z = zero<V>();
    const V rg[2] = {unpacklo16(h.c[0], h.c[1]), unpackhi16(h.c[0], h.c[1])};
    const V b0[2] = {unpacklo16(h.c[2], z), unpackhi16(h.c[2], z)};
    PXK_UNROLL
    for (int i = 0; i < 2; ++i) out[i] = add32(madd16(rg[i], pairs<V>(k[0], k[1])), madd16(b0[i], pairs<V>(k[2], 0)));
}

// k . p0 and k . p1 of the eight pairs of each 128-bit lane of a block, four pairs a
// vector (pairs 0 to 3 of the lane, then 4 to 7).
template <class V>
PXK_INLINE void pairDots(const int32_t (&k)[3], const Block<V>& b, V even[2], V odd[2]) {
    V d0[2], d1[2];
    dotHalf(k, b.half[0], d0);
    dotHalf(k, b.half[1], d1);
    if constexpr (simd::packedPosition(1) == 1) {
        // Halves in pixel order: d0 holds pixels 0 to 7, d1 pixels 8 to 15.
        even[0] = shuffle2x32<_MM_SHUFFLE(2, 0, 2, 0)>(d0[0], d0[1]);
        odd[0] = shuffle2x32<_MM_SHUFFLE(3, 1, 3, 1)>(d0[0], d0[1]);
        even[1] = shuffle2x32<_MM_SHUFFLE(2, 0, 2, 0)>(d1[0], d1[1]);
        odd[1] = shuffle2x32<_MM_SHUFFLE(3, 1, 3, 1)>(d1[0], d1[1]);
    } else {
        // Even pixels, then odd ones: the first pixels of the pairs, then the second.
        even[0] = d0[0];
        even[1] = d0[1];
        odd[0] = d1[0];
        odd[1] = d1[1];
    }
}

// Each pair's value from the pair before it: cur (pairs 0 to 3, then 4 to 7 of the
// block) shifted up by one pair, the pair before the block taken from `carry`, which
// then becomes cur[1] (holding the block's last pair). The value carried sits in the
// last 32-bit lane of the vector (see carriedValue and carryOf).
PXK_INLINE void fromPairBefore(const V128 cur[2], V128& carry, V128 before[2]) {
    before[0] = or_(_mm_slli_si128(cur[0], 4), _mm_srli_si128(carry, 12));
    before[1] = or_(_mm_slli_si128(cur[1], 4), _mm_srli_si128(cur[0], 12));
    carry = cur[1];
}

// The value carried: the last 32-bit lane.
PXK_INLINE int32_t carriedValue(V128 v) { return _mm_cvtsi128_si32(_mm_srli_si128(v, 12)); }

// A carry of `value`.
template <class V>
PXK_INLINE V carryOf(int32_t value);
template <>
PXK_INLINE V128 carryOf<V128>(int32_t value) {
    return _mm_slli_si128(_mm_cvtsi32_si128(value), 12);
}

#if defined(PXKCC_TARGET_AVX2)
// The 256-bit block: lane 0 holds pairs 0 to 7, lane 1 pairs 8 to 15. Lane 1's first
// pair takes its predecessor from the end of lane 0, lane 0's from the carry.
PXK_INLINE void fromPairBefore(const V256 cur[2], V256& carry, V256 before[2]) {
    // Lane 0: the carry's last lane; lane 1: the last pair of lane 0 (in cur[1]).
    const V256 predecessors = _mm256_permute2x128_si256(carry, cur[1], 0x21);
    before[0] = or_(_mm256_slli_si256(cur[0], 4), _mm256_srli_si256(predecessors, 12));
    before[1] = or_(_mm256_slli_si256(cur[1], 4), _mm256_srli_si256(cur[0], 12));
    carry = cur[1];
}
PXK_INLINE int32_t carriedValue(V256 v) { return _mm256_extract_epi32(v, 7); }
template <>
PXK_INLINE V256 carryOf<V256>(int32_t value) {
    return _mm256_set_epi32(value, 0, 0, 0, 0, 0, 0, 0);
}
#endif

// Runs block(V{}, x) over the 16-pixel blocks of columns `from` to `to` (a whole number
// of them): the widest vector while it fills, then 128-bit blocks.
template <class BlockFn>
PXK_INLINE void pairBlocks(int32_t from, int32_t to, BlockFn&& block) {
    int32_t x = from;
    for (; to - x >= kBlockPixels<Widest>; x += kBlockPixels<Widest>) block(Widest{}, x);
    if constexpr (kBlockPixels<Widest> > kBlockPixels<V128>) {
        for (; to - x >= kBlockPixels<V128>; x += kBlockPixels<V128>) block(V128{}, x);
    }
}

}  // namespace yuv
}  // namespace pxk
