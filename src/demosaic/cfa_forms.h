// The arithmetic of the basic demosaic, each form once: the rounded means of two and
// of four samples and the edge-directed green at a red or blue site. Each vector form
// is written over a lane policy (16-bit lanes for 8-bit samples, 32-bit lanes for
// 16-bit samples, so that a sum of four never overflows its lane), and beside it the
// scalar twin. Vector and scalar forms give the same bits.
#pragma once

#include <cstdint>

#include "frame/vec_float.h"

namespace pxk {
namespace demosaic {

// Lanes of `Bits` bits (16 for 8-bit samples, 32 for 16-bit samples), wide enough for
// a sum of four samples (and for the gradients and colour sums of the VNG demosaic),
// and the few operations the forms need on them. Samples are unsigned and sums stay
// below the lane's sign bit; differences are signed.
// The operation of the lane width: op16 on 16-bit lanes, op32 on 32-bit lanes.
#define PXK_SUM_LANES_OP(name, op16, op32, params, args)       \
    static PXK_INLINE V name params {                          \
        if constexpr (Bits == 16) {                            \
            return op16 args;                                  \
        } else {                                               \
            return op32 args;                                  \
        }                                                      \
    }

template <class V, int Bits>
struct SumLanes {
    static_assert(Bits == 16 || Bits == 32, "16-bit or 32-bit lanes");
    static constexpr int kBits = Bits;
    PXK_SUM_LANES_OP(add, vec::add16, vec::add32, (V a, V b), (a, b))
    PXK_SUM_LANES_OP(sub, vec::sub16, vec::sub32, (V a, V b), (a, b))
    PXK_SUM_LANES_OP(abs, vec::abs16, vec::abs32, (V a), (a))
    PXK_SUM_LANES_OP(min, vec::min16, vec::min32, (V a, V b), (a, b))
    PXK_SUM_LANES_OP(max, vec::max16, vec::max32, (V a, V b), (a, b))
    PXK_SUM_LANES_OP(constant, vec::splat16<V>, vec::splat32<V>, (int32_t k), (k))
    // All ones where a < b.
    PXK_SUM_LANES_OP(less, vec::greater16, vec::greater32, (V a, V b), (b, a))
    template <int N>
    PXK_SUM_LANES_OP(shiftRight, vec::srli16<N>, vec::srli32<N>, (V a), (a))
    template <int N>
    PXK_SUM_LANES_OP(shiftLeft, vec::slli16<N>, vec::slli32<N>, (V a), (a))
};

#undef PXK_SUM_LANES_OP

// |a - b| of samples below 2^16 in either lane width: the two saturating differences,
// one of which is 0 (the upper halves of 32-bit lanes are 0 on both sides).
template <class V>
PXK_INLINE V absDifference(V a, V b) {
    return vec::or_(vec::subSatU16(a, b), vec::subSatU16(b, a));
}

// (a + b + 1) >> 1
template <class L, class V>
PXK_INLINE V mean2(V a, V b) {
    return L::template shiftRight<1>(L::add(L::add(a, b), L::constant(1)));
}
PXK_INLINE int32_t mean2(int32_t a, int32_t b) { return (a + b + 1) >> 1; }

// (a + b + c + d + 2) >> 2
template <class L, class V>
PXK_INLINE V mean4(V a, V b, V c, V d) {
    return L::template shiftRight<2>(L::add(L::add(L::add(a, b), L::add(c, d)), L::constant(2)));
}
PXK_INLINE int32_t mean4(int32_t a, int32_t b, int32_t c, int32_t d) { return (a + b + c + d + 2) >> 2; }

// Green at a red or blue site from its four green neighbours (up, down, left, right)
// and the samples two away (up2, down2, left2, right2): the column's mean where the
// column changes less, the row's mean where the row changes less, the mean of all four
// where both change alike.
template <class L, class V>
PXK_INLINE V edgeDirectedGreen(V up, V down, V left, V right, V up2, V down2, V left2, V right2) {
    const V vertical = absDifference(up2, down2);
    const V horizontal = absDifference(left2, right2);
    const V byColumn = L::less(vertical, horizontal);
    const V byRow = L::less(horizontal, vertical);
    return vec::selectBits(byColumn, mean2<L>(up, down),
                           vec::selectBits(byRow, mean2<L>(left, right), mean4<L>(up, left, right, down)));
}
PXK_INLINE int32_t edgeDirectedGreen(int32_t up, int32_t down, int32_t left, int32_t right, int32_t up2,
                                     int32_t down2, int32_t left2, int32_t right2) {
    const int32_t vertical = up2 > down2 ? up2 - down2 : down2 - up2;
    const int32_t horizontal = left2 > right2 ? left2 - right2 : right2 - left2;
    if (vertical < horizontal) return mean2(up, down);
    if (vertical > horizontal) return mean2(left, right);
    return mean4(up, left, right, down);
}

}  // namespace demosaic
}  // namespace pxk
