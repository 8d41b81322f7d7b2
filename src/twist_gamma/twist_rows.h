// Row kernels of the colour twist: groups of four pixels in float lanes (one vector a
// channel), then single pixels. Every path computes each output sample by the same
// forms in the same order, so a pixel's value does not depend on its column; only
// memory traffic differs. A group reads all its input before it stores, and a pixel
// is only ever stored over itself, which makes the in-place forms safe.
#pragma once

#include "frame/simd_inline.h"

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "frame/vec_float.h"
#include "twist_gamma/float_quads.h"
#include "twist_gamma/twist_forms.h"

namespace pxk {
namespace twist {

using vec::F128;

// The caller's matrix (Rows rows of four floats), copied, with each coefficient also
// splat into float lanes for the groups.
template <int Rows>
struct Matrix {
    float t[Rows][4];
    F128 lanes[Rows][4];
};
template <int Rows>
PXK_INLINE Matrix<Rows> matrixOf(const float* twist) {
    Matrix<Rows> m;
    std::memcpy(m.t, twist, sizeof m.t);
    for (int k = 0; k < Rows; ++k)
        for (int j = 0; j < 4; ++j) m.lanes[k][j] = vec::splatF<F128>(m.t[k][j]);
    return m;
}

// ---------------------------------------------------------------------------------
// Sample types: how a result is finished (clamped or not) and stored.
// ---------------------------------------------------------------------------------

// 32f: results stored as computed. With Stream, groups go out by non-temporal stores
// (the caller has aligned them to 16 bytes and fences after the run).
template <bool Stream = false>
struct FloatSamples {
    using T = float;
    PXK_INLINE static F128 finish(F128 v) { return v; }
    PXK_INLINE static float finish(float v) { return v; }
    PXK_INLINE static void store4(T* p, F128 v) {
        if constexpr (Stream) {
            _mm_stream_ps(p, v);
        } else {
            vec::storeF(p, v);
        }
    }
    PXK_INLINE static void storeOne(T* p, float v) { pxk::storeSample(p, v); }
};

// 8u, 16u, 16s: clamped to the type's range, then converted to nearest (the caller
// has set the rounding field); after the clamp the low bits are the value.
template <class Sample, int32_t Lower, int32_t Upper>
struct ClampedSamples {
    using T = Sample;
    PXK_INLINE static F128 finish(F128 v) {
        return clampTo(v, vec::splatF<F128>(float(Lower)), vec::splatF<F128>(float(Upper)));
    }
    PXK_INLINE static float finish(float v) { return clampTo(v, float(Lower), float(Upper)); }
    PXK_INLINE static void store4(T* p, F128 v) {
        const vec::V128 d = vec::roundToInt(v);
        if constexpr (sizeof(T) == 1) {
            quads::storeBytes(p, d);
        } else if constexpr (Lower == 0) {
            quads::storeLow16(p, d);
        } else {
            quads::storeSaturated16(p, d);
        }
    }
    PXK_INLINE static void storeOne(T* p, float v) {
        pxk::storeSample(p, static_cast<T>(pxkRoundHalfEven(v)));
    }
};
using Samples8u = ClampedSamples<uint8_t, 0, 255>;
using Samples16u = ClampedSamples<uint16_t, 0, 65535>;
using Samples16s = ClampedSamples<int16_t, -32768, 32767>;

// Three planes bound to one row, for the plane walks of drivers.h.
template <class T>
struct PlanarRow {
    static constexpr int kPlanes = 3;
    T* plane[3];
};

template <class T>
PXK_INLINE float sampleAt(const T* p) {
    return static_cast<float>(loadSample(p));
}

// ---------------------------------------------------------------------------------
// Three-channel twist: C3, AC4 (the fourth sample of each destination pixel left as
// it was) and three planes. `count` pixels.
// ---------------------------------------------------------------------------------

template <class S>
PXK_INLINE void twistPixel(const typename S::T* in0, const typename S::T* in1, const typename S::T* in2,
                           typename S::T* out0, typename S::T* out1, typename S::T* out2, const Matrix<3>& m) {
    const float x0 = sampleAt(in0), x1 = sampleAt(in1), x2 = sampleAt(in2);
    const float r0 = S::finish(affine3(x0, x1, x2, m.t[0]));
    const float r1 = S::finish(affine3(x0, x1, x2, m.t[1]));
    const float r2 = S::finish(affine3(x0, x1, x2, m.t[2]));
    S::storeOne(out0, r0);
    S::storeOne(out1, r1);
    S::storeOne(out2, r2);
}

template <class S>
PXK_INLINE void twistGroup(const F128 x[3], F128 out[3], const Matrix<3>& m) {
    PXK_UNROLL
    for (int k = 0; k < 3; ++k) out[k] = S::finish(affine3(x[0], x[1], x[2], m.lanes[k]));
}

template <class S>
void twistRowC3(const typename S::T* src, typename S::T* dst, int64_t count, const Matrix<3>& m) {
    const int64_t groups = count & ~int64_t{3};
    for (int64_t x = 0; x < groups; x += 4) {
        const quads::Channels3 in = quads::loadC3(src + 3 * x);
        F128 out[3], a, b, c;
        twistGroup<S>(in.c, out, m);
        quads::join3(out, a, b, c);
        S::store4(dst + 3 * x, a);
        S::store4(dst + 3 * x + 4, b);
        S::store4(dst + 3 * x + 8, c);
    }
    for (int64_t x = groups; x < count; ++x) {
        const typename S::T* p = src + 3 * x;
        typename S::T* q = dst + 3 * x;
        twistPixel<S>(p, p + 1, p + 2, q, q + 1, q + 2, m);
    }
}

template <class S>
void twistRowAC4(const typename S::T* src, typename S::T* dst, int64_t count, const Matrix<3>& m) {
    const int64_t groups = count & ~int64_t{3};
    for (int64_t x = 0; x < groups; x += 4) {
        F128 in[4], kept[4], out[4];
        quads::loadC4(src + 4 * x, in);
        quads::loadC4(dst + 4 * x, kept);  // the destination's fourth samples go back unchanged
        twistGroup<S>(in, out, m);
        out[3] = kept[3];
        quads::transpose4(out);
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) S::store4(dst + 4 * x + 4 * i, out[i]);
    }
    for (int64_t x = groups; x < count; ++x) {
        const typename S::T* p = src + 4 * x;
        typename S::T* q = dst + 4 * x;
        twistPixel<S>(p, p + 1, p + 2, q, q + 1, q + 2, m);
    }
}

template <class S>
void twistRowP3(const typename S::T* const src[3], typename S::T* const dst[3], int64_t count, const Matrix<3>& m) {
    const int64_t groups = count & ~int64_t{3};
    for (int64_t x = 0; x < groups; x += 4) {
        const F128 in[3] = {quads::load4(src[0] + x), quads::load4(src[1] + x), quads::load4(src[2] + x)};
        F128 out[3];
        twistGroup<S>(in, out, m);
        PXK_UNROLL
        for (int k = 0; k < 3; ++k) S::store4(dst[k] + x, out[k]);
    }
    for (int64_t x = groups; x < count; ++x) {
        twistPixel<S>(src[0] + x, src[1] + x, src[2] + x, dst[0] + x, dst[1] + x, dst[2] + x, m);
    }
}

// ---------------------------------------------------------------------------------
// Four-channel linear twist (32f).
// ---------------------------------------------------------------------------------

template <class S>
void twistRowC4(const float* src, float* dst, int64_t count, const Matrix<4>& m) {
    const int64_t groups = count & ~int64_t{3};
    for (int64_t x = 0; x < groups; x += 4) {
        F128 in[4], out[4];
        quads::loadC4(src + 4 * x, in);
        PXK_UNROLL
        for (int k = 0; k < 4; ++k) out[k] = linear4(in, m.lanes[k]);
        quads::transpose4(out);
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) S::store4(dst + 4 * x + 4 * i, out[i]);
    }
    for (int64_t x = groups; x < count; ++x) {
        float in[4], out[4];
        for (int j = 0; j < 4; ++j) in[j] = loadSample(src + 4 * x + j);
        for (int k = 0; k < 4; ++k) out[k] = linear4(in, m.t[k]);
        for (int k = 0; k < 4; ++k) storeSample(dst + 4 * x + k, out[k]);
    }
}

}  // namespace twist
}  // namespace pxk
