// The forms of the gray reduction, each in one place: the 16-bit fixed-point weights
// of the 8u kernel, its block form (a truncated high product per channel, saturating
// sums, a signed shift) and its tail form (one rounded sum, low 8 bits kept), the
// weighted sum in single and double precision, and the merge of four 32-bit results
// into the words of the 16u main loop.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/vec_float.h"

namespace pxk {
namespace gray {

// The default weights of the first, second and third channel, as 32-bit floats.
inline constexpr float kDefaultWeights[3] = {0.299f, 0.587f, 0.114f};

// The three weights of a call: the caller's, or the defaults for a null pointer.
// The double members take the float defaults widened, not the nearest doubles.
template <class T>
struct Weights {
    T c[3];
};
template <class T>
PXK_INLINE Weights<T> weightsOf(const T* coeffs) {
    Weights<T> w;
    for (int i = 0; i < 3; ++i) w.c[i] = coeffs ? coeffs[i] : static_cast<T>(kDefaultWeights[i]);
    return w;
}

// A caller's float weight as the 8u kernel's unsigned 16-bit weight with 15
// fractional bits: widened, times 32768, plus 0.5, truncated to 32 bits, low 16 bits
// kept. Negative and large weights wrap (-0.1 gives 62260, 2.0 gives 0).
PXK_INLINE uint16_t fixedWeight(float c) {
    const int32_t t = truncToInt32(static_cast<double>(c) * 32768.0 + 0.5);
    return static_cast<uint16_t>(static_cast<uint32_t>(t) & 0xFFFFu);
}

struct FixedWeights {
    uint16_t w[3];
};
PXK_INLINE FixedWeights fixedWeightsOf(const float* coeffs) {
    const Weights<float> f = weightsOf(coeffs);
    return FixedWeights{{fixedWeight(f.c[0]), fixedWeight(f.c[1]), fixedWeight(f.c[2])}};
}

// Block form of the 8u kernel over 16-bit lanes of samples s: per channel the high
// product (s * 256 * w) >> 16, the three added with unsigned saturation, 64 added
// the same way, the sum read as signed and shifted right by 7. The caller saturates
// to 0..255 when it packs; an over-unity sum reads as negative and becomes 0.
template <class V>
PXK_INLINE V fixedBlock(const V s[3], const V w[3]) {
    using namespace vec;
    V sum = mulhiu16(slli16<8>(s[0]), w[0]);
    sum = addSatU16(sum, mulhiu16(slli16<8>(s[1]), w[1]));
    sum = addSatU16(sum, mulhiu16(slli16<8>(s[2]), w[2]));
    sum = addSatU16(sum, splat16<V>(64));
    return srai16<7>(sum);
}

// Tail form of the 8u kernel: one sum of exact products, rounded once, in 32 bits
// unsigned; the low 8 bits kept (it wraps where the block form folds to 0).
PXK_INLINE uint8_t fixedTail(const uint8_t s[3], const FixedWeights& f) {
    const uint32_t sum = uint32_t{s[0]} * f.w[0] + uint32_t{s[1]} * f.w[1] + uint32_t{s[2]} * f.w[2] + 0x4000u;
    return static_cast<uint8_t>((sum >> 15) & 0xFFu);
}

// The weighted sum (c0 * s0 + c1 * s1) + c2 * s2, in this order, one rounding an
// operation: over float lanes, and its scalar twins in float and double.
template <class F>
PXK_INLINE F weightedSum(const F s[3], const F c[3]) {
    using namespace vec;
    return addF(addF(mulF(c[0], s[0]), mulF(c[1], s[1])), mulF(c[2], s[2]));
}
template <class T>
PXK_INLINE T weightedSum(const T s[3], const Weights<T>& w) {
    return (w.c[0] * s[0] + w.c[1] * s[1]) + w.c[2] * s[2];
}

// The 16u main loop's four output words from its four 32-bit results D0..D3 (l and h
// their low and high halves), each the OR of two halves: D0l|D2h, D0h|D1l, D2l|D1h,
// D2h|D3l. For results within 0..65535 these are the four low halves.
template <class V>
PXK_INLINE V mergeWords(V d) {
    using namespace vec;
    const V low = and_(d, splat32<V>(0xFFFF));
    const V high = srli32<16>(d);
    // Output k takes low half k, and the high half of D2, D0, D1, D2 in turn.
    return or_(low, shuffle32<_MM_SHUFFLE(2, 1, 0, 2)>(high));
}

}  // namespace gray
}  // namespace pxk
