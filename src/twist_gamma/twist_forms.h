// The forms of the colour twist, each once over float lanes and once as a scalar
// twin: the three-channel affine sum with its fixed association, the four-channel
// linear sum with its own, and the clamp of the integer members.
#pragma once

#include "frame/simd_inline.h"

#include "frame/vec_float.h"

namespace pxk {
namespace twist {

// Output k of the three-channel twist from inputs x0, x1, x2 and its matrix row
// t[0..3]: (t3 + t0 * x0) + (t2 * x2 + t1 * x1), one rounding an operation. The lanes
// of F hold pixels; the coefficients are splat.
template <class F>
PXK_INLINE F affine3(F x0, F x1, F x2, const F t[4]) {
    using namespace vec;
    return addF(addF(t[3], mulF(t[0], x0)), addF(mulF(t[2], x2), mulF(t[1], x1)));
}
PXK_INLINE float affine3(float x0, float x1, float x2, const float t[4]) {
    return (t[3] + t[0] * x0) + (t[2] * x2 + t[1] * x1);
}

// Output k of the four-channel twist: ((t0 * x0 + t1 * x1) + t2 * x2) + t3 * x3.
template <class F>
PXK_INLINE F linear4(const F x[4], const F t[4]) {
    using namespace vec;
    return addF(addF(addF(mulF(t[0], x[0]), mulF(t[1], x[1])), mulF(t[2], x[2])), mulF(t[3], x[3]));
}
PXK_INLINE float linear4(const float x[4], const float t[4]) {
    return ((t[0] * x[0] + t[1] * x[1]) + t[2] * x[2]) + t[3] * x[3];
}

// The clamp of the integer members: the minimum with the upper bound first (a NaN
// becomes the upper bound), then the maximum with the lower bound.
template <class F>
PXK_INLINE F clampTo(F v, F lower, F upper) {
    using namespace vec;
    return maxF(minF(v, upper), lower);
}
PXK_INLINE float clampTo(float v, float lower, float upper) {
    const float m = v < upper ? v : upper;
    return m > lower ? m : lower;
}

}  // namespace twist
}  // namespace pxk
