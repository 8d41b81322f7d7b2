// What the float forms of the 16-bit and float members share: how a result becomes a
// sample, the clamp to 0..1, and the wrapper that makes a member's form of a body (a
// float form over float lanes with its scalar twin), its clamp and its rounding.
#pragma once

#include "frame/simd_inline.h"

#include "colorimetric/float_columns.h"
#include "frame/vec_float.h"

namespace pxk {
namespace colorimetric {

// How a float result becomes a sample: stored as a float (None), truncated toward
// zero, or rounded by the processor's current rounding mode. The integer sample kinds
// saturate after it.
enum class Rounding { None, Truncate, Current };

// The clamp to 0..1: a value below 0 gives 0, otherwise the minimum of 1 and the value,
// so that a NaN and -0 pass unchanged.
template <class F>
PXK_INLINE F clampUnit(F v) {
    using namespace vec;
    return selectF(lessF(v, zeroF<F>()), zeroF<F>(), minF(splatF<F>(1.0f), v));
}
PXK_INLINE float clampUnit(float v) {
    if (v < 0.0f) return 0.0f;
    return 1.0f < v ? 1.0f : v;
}

// A member's form: Body::apply over float lanes or a scalar pixel, each result clamped
// to 0..1 with Clamp, then turned into a sample as R says.
template <class Body, Rounding R, bool Clamp = false>
struct SampleForm {
    static constexpr Rounding kRounding = R;
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& v) {
        Floats3<F> r = Body::apply(v);
        if constexpr (Clamp) {
            PXK_UNROLL
            for (int c = 0; c < 3; ++c) r.c[c] = clampUnit(r.c[c]);
        }
        return r;
    }
};

}  // namespace colorimetric
}  // namespace pxk
