// The exports of the three-channel twist, by form: argument checks in their order
// (pointers: source, destination, twist, then the plane entries; size; steps, which
// must be positive), the matrix copied, and the rows walked with one kernel. `Scope`
// runs the row loop: directly for the float members, with the rounding field at
// nearest for the integer ones.
#pragma once

#include "frame/simd_inline.h"

#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"
#include "twist_gamma/twist_rounding.h"
#include "twist_gamma/twist_rows.h"

namespace pxk {
namespace twist {

struct Direct {
    template <class Loop>
    static void run(Loop&& loop) {
        loop();
    }
};
struct NearestRounding {
    template <class Loop>
    static void run(Loop&& loop) {
        withNearestRounding(loop);
    }
};

template <class T>
using PackedRow = void (*)(const T*, T*, int64_t, const Matrix<3>&);

template <class T>
PXK_INLINE PxkResult checkPacked(const T* src, int32_t srcStep, const T* dst, int32_t dstStep, PxkSize size,
                                 const float* twist) {
    PXK_CHECK(checkPtrs(src, dst, twist));
    PXK_CHECK(checkSize(size, 1, 1));
    return checkSteps(srcStep, dstStep);
}

template <class T>
PXK_INLINE PxkResult checkInPlace(const T* srcDst, int32_t step, PxkSize size, const float* twist) {
    PXK_CHECK(checkPtrs(srcDst, twist));
    PXK_CHECK(checkSize(size, 1, 1));
    return checkSteps(step);
}

template <class T>
PXK_INLINE PxkResult checkPlanar(const T* const src[3], int32_t srcStep, T* const dst[3], int32_t dstStep,
                                 PxkSize size, const float* twist) {
    PXK_CHECK(checkPtrs(src, dst, twist));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkPlanes(dst, 3));
    PXK_CHECK(checkSize(size, 1, 1));
    return checkSteps(srcStep, dstStep);
}

template <class T>
PXK_INLINE PxkResult checkPlanarInPlace(T* const srcDst[3], int32_t step, PxkSize size, const float* twist) {
    PXK_CHECK(checkPtrs(srcDst, twist));
    PXK_CHECK(checkPlanes(srcDst, 3));
    PXK_CHECK(checkSize(size, 1, 1));
    return checkSteps(step);
}

template <class T, PackedRow<T> Row>
__attribute__((noinline)) void packedRegion(const T* src, int32_t srcStep, T* dst, int32_t dstStep, PxkSize size,
                                            const Matrix<3>& m) {
    driveRows(
        size.width, size.height, [&m](int32_t width, const T* s, T* d) { Row(s, d, width, m); },
        rows(src, srcStep), rows(dst, dstStep));
}

template <class Scope, class T, PackedRow<T> Row>
PxkResult twistPacked(const T* src, int32_t srcStep, T* dst, int32_t dstStep, PxkSize size, const float* twist) {
    PXK_CHECK(checkPacked(src, srcStep, dst, dstStep, size, twist));
    const Matrix<3> m = matrixOf<3>(twist);
    Scope::run([&] { packedRegion<T, Row>(src, srcStep, dst, dstStep, size, m); });
    return pxkOk;
}

template <class Scope, class T, PackedRow<T> Row>
PxkResult twistPackedInPlace(T* srcDst, int32_t step, PxkSize size, const float* twist) {
    PXK_CHECK(checkInPlace(srcDst, step, size, twist));
    const Matrix<3> m = matrixOf<3>(twist);
    Scope::run([&] { packedRegion<T, Row>(srcDst, step, srcDst, step, size, m); });
    return pxkOk;
}

template <class S>
__attribute__((noinline)) void planarRegion(const typename S::T* const src[3], int32_t srcStep,
                                            typename S::T* const dst[3], int32_t dstStep, PxkSize size,
                                            const Matrix<3>& m) {
    using T = typename S::T;
    driveRows(
        size.width, size.height,
        [&m](int32_t width, const PlanarRow<const T>& s, const PlanarRow<T>& d) {
            twistRowP3<S>(s.plane, d.plane, width, m);
        },
        planeRows(PlanarRow<const T>{{src[0], src[1], src[2]}}, srcStep),
        planeRows(PlanarRow<T>{{dst[0], dst[1], dst[2]}}, dstStep));
}

template <class Scope, class S>
PxkResult twistPlanes(const typename S::T* const src[3], int32_t srcStep, typename S::T* const dst[3],
                      int32_t dstStep, PxkSize size, const float* twist) {
    PXK_CHECK(checkPlanar(src, srcStep, dst, dstStep, size, twist));
    const Matrix<3> m = matrixOf<3>(twist);
    Scope::run([&] { planarRegion<S>(src, srcStep, dst, dstStep, size, m); });
    return pxkOk;
}

template <class Scope, class S>
PxkResult twistPlanesInPlace(typename S::T* const srcDst[3], int32_t step, PxkSize size, const float* twist) {
    PXK_CHECK(checkPlanarInPlace(srcDst, step, size, twist));
    const Matrix<3> m = matrixOf<3>(twist);
    const typename S::T* const src[3] = {srcDst[0], srcDst[1], srcDst[2]};
    Scope::run([&] { planarRegion<S>(src, step, srcDst, step, size, m); });
    return pxkOk;
}

}  // namespace twist
}  // namespace pxk
