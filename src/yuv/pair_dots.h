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

// k . p of the pixels of one half of a block (eight 16-bit lanes a channel), in 32-bit
// lanes: pixels 0 to 3 of the half, then 4 to 7.
PXK_INLINE void dotHalf(const int32_t (&k)[3], const Lanes3<V128>& h, V128 out[2]) {
    const V128 z = zero<V128>();
    const V128 rg[2] = {unpacklo16(h.c[0], h.c[1]), unpackhi16(h.c[0], h.c[1])};
    const V128 b0[2] = {unpacklo16(h.c[2], z), unpackhi16(h.c[2], z)};
    PXK_UNROLL
    for (int i = 0; i < 2; ++i) out[i] = add32(madd16(rg[i], pairs<V128>(k[0], k[1])), madd16(b0[i], pairs<V128>(k[2], 0)));
}

// k . p0 and k . p1 of the eight pairs of a block, four pairs a vector.
PXK_INLINE void pairDots(const int32_t (&k)[3], const Block<V128>& b, V128 even[2], V128 odd[2]) {
    V128 d0[2], d1[2];
    dotHalf(k, b.half[0], d0);
    dotHalf(k, b.half[1], d1);
    if constexpr (simd::packedPosition(1) == 1) {
        // Halves in pixel order: d0 holds pixels 0 to 7, d1 pixels 8 to 15.
        auto pick = [](V128 a, V128 c, bool second) PXK_LAMBDA_INLINE {
            const __m128 fa = _mm_castsi128_ps(a), fc = _mm_castsi128_ps(c);
            return _mm_castps_si128(second ? _mm_shuffle_ps(fa, fc, _MM_SHUFFLE(3, 1, 3, 1))
                                           : _mm_shuffle_ps(fa, fc, _MM_SHUFFLE(2, 0, 2, 0)));
        };
        even[0] = pick(d0[0], d0[1], false);
        odd[0] = pick(d0[0], d0[1], true);
        even[1] = pick(d1[0], d1[1], false);
        odd[1] = pick(d1[0], d1[1], true);
    } else {
        // Even pixels, then odd ones: the first pixels of the pairs, then the second.
        even[0] = d0[0];
        even[1] = d0[1];
        odd[0] = d1[0];
        odd[1] = d1[1];
    }
}

// Each pair's value from the pair before it: cur (pairs 0 to 3, then 4 to 7) shifted
// up by one pair, the pair before the block taken from lane 3 of `carry`, which then
// becomes cur[1] (its lane 3 holding the block's last pair).
PXK_INLINE void fromPairBefore(const V128 cur[2], V128& carry, V128 before[2]) {
    before[0] = or_(_mm_slli_si128(cur[0], 4), _mm_srli_si128(carry, 12));
    before[1] = or_(_mm_slli_si128(cur[1], 4), _mm_srli_si128(cur[0], 12));
    carry = cur[1];
}

// Lane 3 of v, the value that fromPairBefore carries.
PXK_INLINE int32_t carriedValue(V128 v) { return _mm_cvtsi128_si32(_mm_srli_si128(v, 12)); }

// A carry whose lane 3 holds `value`.
PXK_INLINE V128 carryOf(int32_t value) { return _mm_slli_si128(_mm_cvtsi32_si128(value), 12); }

}  // namespace yuv
}  // namespace pxk
