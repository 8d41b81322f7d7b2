// The colour twist of float pixels: results stored unclamped, under whatever rounding
// mode the caller has (nothing here touches the control register).
//
// C3R alone has more than one kernel: a region whose two steps both equal width * 12
// goes as one row of width * height pixels, and above 34992 samples in all the groups
// go out by non-temporal stores once the destination is 16-byte aligned (single
// pixels until then), with a store fence at the end. C4R takes its whole image as one
// row when both steps equal width * 4 (the test counts four bytes, not the pixel's
// sixteen: with such a step rows overlap and the run covers width * height pixels
// from the start); otherwise it walks rows, and a row whose source and destination
// are both 16-byte aligned is stored by non-temporal stores, fenced at the end.
#include "pxkcc.h"

#include <emmintrin.h>

#include "twist_gamma/twist_region.h"

using namespace pxk;
using namespace pxk::twist;

namespace {

using Plain = FloatSamples<false>;
using Streamed = FloatSamples<true>;

constexpr int64_t kStreamSamples = 34992;  // more samples than this: non-temporal stores

PXK_INLINE bool aligned16(const void* p) { return reinterpret_cast<uintptr_t>(p) % 16 == 0; }

// A C3 run with non-temporal group stores: single pixels until the destination is
// 16-byte aligned (possible only from a 4-byte aligned one), then the groups.
void twistRunC3Streamed(const float* src, float* dst, int64_t count, const Matrix<3>& m) {
    if (reinterpret_cast<uintptr_t>(dst) % 4 != 0) {
        twistRowC3<Plain>(src, dst, count, m);
        return;
    }
    int64_t head = 0;
    while (head < count && !aligned16(dst + 3 * head)) ++head;
    twistRowC3<Plain>(src, dst, head, m);
    twistRowC3<Streamed>(src + 3 * head, dst + 3 * head, count - head, m);
}

}  // namespace

extern "C" {

PxkResult pxkiColorTwist_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize,
                                 const float twist[12]) {
    PXK_CHECK(checkPacked(pSrc, srcStep, pDst, dstStep, roiSize, twist));
    const Matrix<3> m = matrixOf<3>(twist);
    const int64_t samples = int64_t{roiSize.width} * 3 * roiSize.height;
    const bool stream = samples > kStreamSamples;
    const auto run = stream ? twistRunC3Streamed : twistRowC3<Plain>;
    if (srcStep == dstStep && int64_t{srcStep} == int64_t{roiSize.width} * 12) {
        run(pSrc, pDst, int64_t{roiSize.width} * roiSize.height, m);
    } else {
        driveRows(
            roiSize.width, roiSize.height, [&](int32_t width, const float* s, float* d) { run(s, d, width, m); },
            rows(pSrc, srcStep), rows(pDst, dstStep));
    }
    if (stream) _mm_sfence();
    return pxkOk;
}

PxkResult pxkiColorTwist_32f_C3IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize, const float twist[12]) {
    return twistPackedInPlace<Direct, float, twistRowC3<Plain>>(pSrcDst, srcDstStep, roiSize, twist);
}

PxkResult pxkiColorTwist_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize,
                                  const float twist[12]) {
    return twistPacked<Direct, float, twistRowAC4<Plain>>(pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxkResult pxkiColorTwist_32f_AC4IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize, const float twist[12]) {
    return twistPackedInPlace<Direct, float, twistRowAC4<Plain>>(pSrcDst, srcDstStep, roiSize, twist);
}

PxkResult pxkiColorTwist_32f_P3R(const float* const pSrc[3], int32_t srcStep, float* const pDst[3], int32_t dstStep,
                                 PxkSize roiSize, const float twist[12]) {
    return twistPlanes<Direct, Plain>(pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxkResult pxkiColorTwist_32f_IP3R(float* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize,
                                  const float twist[12]) {
    return twistPlanesInPlace<Direct, Plain>(pSrcDst, srcDstStep, roiSize, twist);
}

PxkResult pxkiColorTwist_32f_C4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize,
                                 const float twist[16]) {
    PXK_CHECK(checkPacked(pSrc, srcStep, pDst, dstStep, roiSize, twist));
    const Matrix<4> m = matrixOf<4>(twist);
    bool streamed = false;
    auto run = [&](const float* s, float* d, int64_t count) {
        if (aligned16(s) && aligned16(d)) {
            twistRowC4<Streamed>(s, d, count, m);
            streamed = true;
        } else {
            twistRowC4<Plain>(s, d, count, m);
        }
    };
    if (srcStep == dstStep && int64_t{srcStep} == int64_t{roiSize.width} * 4) {
        run(pSrc, pDst, int64_t{roiSize.width} * roiSize.height);
    } else {
        driveRows(
            roiSize.width, roiSize.height, [&](int32_t width, const float* s, float* d) { run(s, d, width); },
            rows(pSrc, srcStep), rows(pDst, dstStep));
    }
    if (streamed) _mm_sfence();
    return pxkOk;
}

}  // extern "C"
