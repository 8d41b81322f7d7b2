// 4:2:0 to 4:2:2 with the half-sample interpolator: each output chroma plane takes the
// source chroma rows as its even rows, then makes every odd row from the even rows
// already in place (read back from the output plane), top to bottom.
#include "pxkcc.h"

#include "chroma/chroma_rows.h"
#include "chroma/half_sample_filter.h"
#include "chroma/row_copier.h"
#include "frame/checks.h"
#include "frame/drivers.h"

using namespace pxk;
using namespace pxk::chroma;

namespace {

// Row 2k of a plane.
uint8_t* evenRow(uint8_t* plane, int32_t step, int32_t k) {
    return byteOffset(plane, 2 * static_cast<std::intptr_t>(step) * k);
}

// The odd rows of one output chroma plane of `rows` rows (a multiple of 8) and
// `columns` columns, whose even rows are in place. Row 2k + 1 is made from rows
// 2(k - 1) to 2(k + 2), the missing row at either edge folded into its neighbour.
void interpolateOddRows(uint8_t* plane, int32_t step, int32_t columns, int32_t rows) {
    const int32_t n = rows / 2;
    auto even = [&](int32_t k) { return evenRow(plane, step, k); };
    auto odd = [&](int32_t k) { return byteOffset(evenRow(plane, step, k), step); };
    // Row 1: 8 C[0] + 9 C[1] - C[2] (the fourth tap unused).
    halfSampleRow<HalfSampleTaps<8, 9, -1, 0>>(even(0), even(1), even(2), even(2), odd(0), columns);
    for (int32_t k = 1; k <= n - 3; ++k) {
        halfSampleRow<HalfSampleTaps<-1, 9, 9, -1>>(even(k - 1), even(k), even(k + 1), even(k + 2), odd(k), columns);
    }
    // Row h - 3: -C[n-3] + 9 C[n-2] + 8 C[n-1]; row h - 1: -C[n-2] + 17 C[n-1].
    halfSampleRow<HalfSampleTaps<-1, 9, 8, 0>>(even(n - 3), even(n - 2), even(n - 1), even(n - 1), odd(n - 2),
                                               columns);
    halfSampleRow<HalfSampleTaps<-1, 17, 0, 0>>(even(n - 2), even(n - 1), even(n - 1), even(n - 1), odd(n - 1),
                                                columns);
}

// The region cut to an even width and a height that is a multiple of 8.
PxkSize cutRegion(PxkSize size) { return PxkSize{cutTo(size.width, 2), cutTo(size.height, 8)}; }

void interpolatePlanes(uint8_t* const dst[3], const int32_t dstStep[3], PxkSize size) {
    for (int p = 1; p < 3; ++p) interpolateOddRows(dst[p], dstStep[p], size.width / 2, size.height);
}

// Luma copied, each source chroma plane (first to `firstOut`, second to the other)
// placed in the even rows of its output plane, then the odd rows made.
PxkResult planesFiltered(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* const dst[3],
                         const int32_t dstStep[3], PxkSize roiSize, int firstOut) {
    PXK_CHECK(checkPtrs(src, srcStep, dst, dstStep));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkPlanes(dst, 3));
    PXK_CHECK(checkSize(roiSize, 2, 8));
    const PxkSize size = cutRegion(roiSize);
    const auto w = static_cast<std::size_t>(size.width);
    copyRows(src[0], srcStep[0], dst[0], dstStep[0], w, size.height, false);
    for (int p = 1; p < 3; ++p) {
        const int out = p == 1 ? firstOut : 3 - firstOut;
        for (int32_t k = 0; k < size.height / 2; ++k) {
            copyRow(byteOffset(src[p], static_cast<std::intptr_t>(srcStep[p]) * k), evenRow(dst[out], dstStep[out], k),
                    w / 2, false);
        }
    }
    interpolatePlanes(dst, dstStep, size);
    return pxkOk;
}

}  // namespace

extern "C" {

PxkResult pxkiYCbCr420ToYCbCr422_Filter_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                               uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize) {
    return planesFiltered(pSrc, srcStep, pDst, dstStep, roiSize, 1);
}

// Source plane 1 (Cr) goes to dst[2], plane 2 (Cb) to dst[1].
PxkResult pxkiYCrCb420ToYCbCr422_Filter_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                               uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize) {
    return planesFiltered(pSrc, srcStep, pDst, dstStep, roiSize, 2);
}

// Byte 0 of each source pair to dst[1], byte 1 to dst[2].
PxkResult pxkiYCbCr420ToYCbCr422_Filter_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                 int32_t srcCbCrStep, uint8_t* const pDst[3],
                                                 const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrcY, pSrcCbCr, pDst, dstStep));
    PXK_CHECK(checkPlanes(pDst, 3));
    PXK_CHECK(checkSize(roiSize, 2, 8));
    const PxkSize size = cutRegion(roiSize);
    copyRows(pSrcY, srcYStep, pDst[0], dstStep[0], static_cast<std::size_t>(size.width), size.height, false);
    for (int32_t k = 0; k < size.height / 2; ++k) {
        unzipPairs(byteOffset(pSrcCbCr, static_cast<std::intptr_t>(srcCbCrStep) * k), evenRow(pDst[1], dstStep[1], k),
                   evenRow(pDst[2], dstStep[2], k), size.width / 2);
    }
    interpolatePlanes(pDst, dstStep, size);
    return pxkOk;
}

}  // extern "C"
