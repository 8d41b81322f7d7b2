// The float forms of RGB <-> XYZ for 16-bit and float samples: each output
// (c0 * in0 + c1 * in1) + c2 * in2 in single precision, one rounding an operation, once
// over float lanes and once as its scalar twin, the sums with their operands in the
// order written (so that NaN inputs give the same NaN in every build). Groups and tails
// compute the same bits.
// The 16-bit members truncate (and saturate); the float members store X and Y of the
// forward way unclamped and clamp Z alone, and clamp every channel of the inverse way.
#pragma once

#include "frame/simd_inline.h"

#include "colorimetric/float_columns.h"
#include "colorimetric/sample_forms.h"
#include "frame/vec_float.h"

namespace pxk {
namespace colorimetric {

struct FloatMatrix3 {
    float k[3][3];
};

inline constexpr FloatMatrix3 kRgbToXyzFloat{
    {{0.412453f, 0.35758f, 0.180423f}, {0.212671f, 0.71516f, 0.072169f}, {0.019334f, 0.119193f, 0.950227f}}};
inline constexpr FloatMatrix3 kXyzToRgbFloat{
    {{3.240479f, -1.53715f, -0.498535f}, {-0.969256f, 1.875991f, 0.041556f}, {0.055648f, -0.204043f, 1.057311f}}};

// The three sums of a matrix.
template <const FloatMatrix3& M>
struct FloatMatrixBody {
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& v) {
        using namespace vec;
        Floats3<F> out;
        PXK_UNROLL
        for (int r = 0; r < 3; ++r) {
            out.c[r] = addOrderedF(addOrderedF(mulF(splatF<F>(M.k[r][0]), v.c[0]), mulF(splatF<F>(M.k[r][1]), v.c[1])),
                                   mulF(splatF<F>(M.k[r][2]), v.c[2]));
        }
        return out;
    }
    PXK_INLINE static Floats3<float> apply(const Floats3<float>& v) {
        Floats3<float> out;
        for (int r = 0; r < 3; ++r) {
            out.c[r] = addOrderedF(addOrderedF(M.k[r][0] * v.c[0], M.k[r][1] * v.c[1]), M.k[r][2] * v.c[2]);
        }
        return out;
    }
};

// The forward matrix with Z alone clamped: the maximum with 0, then the minimum with
// 1, as the processor's max and min take them (a NaN Z becomes 0, -0 becomes +0).
struct RgbToXyzClampedZBody {
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& v) {
        using namespace vec;
        Floats3<F> r = FloatMatrixBody<kRgbToXyzFloat>::apply(v);
        r.c[2] = minF(maxF(r.c[2], zeroF<F>()), splatF<F>(1.0f));
        return r;
    }
    PXK_INLINE static Floats3<float> apply(const Floats3<float>& v) {
        Floats3<float> r = FloatMatrixBody<kRgbToXyzFloat>::apply(v);
        const float z = r.c[2] > 0.0f ? r.c[2] : 0.0f;
        r.c[2] = z < 1.0f ? z : 1.0f;
        return r;
    }
};

using RgbToXyz32f = SampleForm<RgbToXyzClampedZBody, Rounding::None>;
using XyzToRgb32f = SampleForm<FloatMatrixBody<kXyzToRgbFloat>, Rounding::None, true>;
using RgbToXyz16 = SampleForm<FloatMatrixBody<kRgbToXyzFloat>, Rounding::Truncate>;
using XyzToRgb16 = SampleForm<FloatMatrixBody<kXyzToRgbFloat>, Rounding::Truncate>;

}  // namespace colorimetric
}  // namespace pxk
