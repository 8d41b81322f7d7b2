// Row kernel of the 8u twist in blocks of 16 pixels a 128-bit lane, read and written
// through the frame's packed and planar layouts (16-bit lanes a channel), widened to
// float lanes for the forms. Columns below width - width % 16 go in blocks, the rest
// pixel by pixel; both compute the same forms in the same order, so the split shows
// in speed only. A block reads all its pixels before it stores, so in place is safe.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "frame/vec_float.h"
#include "twist_gamma/twist_rows.h"

namespace pxk {
namespace twist {

// The matrix splat into float lanes of type F, once a row.
template <class F>
struct LaneMatrix {
    F t[3][4];
};
template <class F>
PXK_INLINE LaneMatrix<F> laneMatrix(const Matrix<3>& m) {
    LaneMatrix<F> l;
    for (int k = 0; k < 3; ++k)
        for (int j = 0; j < 4; ++j) l.t[k][j] = vec::splatF<F>(m.t[k][j]);
    return l;
}

// Eight pixels a lane (16-bit lanes of three channels) through the forms, clamped to
// 0..255 and converted to nearest, back in 16-bit lanes.
template <class V>
PXK_INLINE Lanes3<V> twistLanes(const Lanes3<V>& in, const LaneMatrix<vec::FloatOf<V>>& m) {
    using F = vec::FloatOf<V>;
    using namespace vec;
    const V z = zero<V>();
    const F lower = splatF<F>(0.0f), upper = splatF<F>(255.0f);
    F x[2][3];  // [low four / high four pixels of the lane][channel]
    PXK_UNROLL
    for (int c = 0; c < 3; ++c) {
        x[0][c] = toFloat(unpacklo16(in.c[c], z));
        x[1][c] = toFloat(unpackhi16(in.c[c], z));
    }
    Lanes3<V> out;
    PXK_UNROLL
    for (int k = 0; k < 3; ++k) {
        V d[2];
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) d[h] = roundToInt(clampTo(affine3(x[h][0], x[h][1], x[h][2], m.t[k]), lower, upper));
        out.c[k] = packs32(d[0], d[1]);
    }
    return out;
}

template <class V, class In, class Out>
PXK_INLINE void twistBlock8u(const In& in, const Out& out, int32_t x, const LaneMatrix<vec::FloatOf<V>>& m) {
    const Block<V> b = in.template load<V>(x);
    Block<V> r;
    r.half[0] = twistLanes(b.half[0], m);
    r.half[1] = twistLanes(b.half[1], m);
    out.store(x, r);
}

// One row of `width` pixels.
template <class In, class Out>
void twistRow8u(const In& inRow, const Out& outRow, int32_t width, const Matrix<3>& m) {
    const In in = inRow;
    const Out out = outRow;
    using W = vec::Widest;
    constexpr int32_t kWidest = kBlockPixels<W>;
    const LaneMatrix<vec::FloatOf<W>> wide = laneMatrix<vec::FloatOf<W>>(m);
    const LaneMatrix<vec::F128> narrow = laneMatrix<vec::F128>(m);
    splitColumns<kBlockPixels<vec::V128>, kWidest>(
        width,
        [&](int32_t x, int32_t count) PXK_LAMBDA_INLINE {
            if (count == kWidest) {
                twistBlock8u<W>(in, out, x, wide);
            } else {
                twistBlock8u<vec::V128>(in, out, x, narrow);
            }
        },
        [&](int32_t x) {
            const Pixel3 p = in.load1(x);
            const float x0 = p.c[0], x1 = p.c[1], x2 = p.c[2];
            Pixel3 r;
            for (int k = 0; k < 3; ++k) r.c[k] = static_cast<uint8_t>(pxkRoundHalfEven(Samples8u::finish(affine3(x0, x1, x2, m.t[k]))));
            out.store1(x, r);
        });
}

// A whole region, walked from the top; kept out of line so that the rounding field
// is set around it.
template <class In, class Out>
__attribute__((noinline)) void twistRegion8u(PxkSize size, PlaneRows<In> in, PlaneRows<Out> out, const Matrix<3>& m) {
    driveRows(
        size.width, size.height, [&m](int32_t width, const In& i, const Out& o) { twistRow8u(i, o, width, m); }, in,
        out);
}

}  // namespace twist
}  // namespace pxk
