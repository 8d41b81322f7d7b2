// RGB or BGR -> studio-range YCbCr 4:2:0 into a Y plane and a plane of interleaved Cb,
// Cr pairs, by the float form: single precision, one rounding for each operation in
// the written order (no contraction), each result truncated toward zero into a byte.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "yuv/blocks420.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

// Checks: the three pointers, then the size (1 by 1 at least; a width or height of 1
// has no whole block, converts nothing and is reported as odd).
template <bool Bgr, class In>
PxkResult convertP2(const uint8_t* src, int32_t srcStep, uint8_t* dstY, int32_t dstYStep, uint8_t* dstCbCr,
                    int32_t dstCbCrStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dstY, dstCbCr));
    PXK_CHECK(checkSize(size, 1, 1));
    const int32_t columns = size.width / 2;
    driveRowPairs(
        size.width, size.height,
        [columns](int32_t, RowPair<const uint8_t> s, RowPair<uint8_t> y, uint8_t* cbcr) {
            run420<BlockForms<FloatForm, FloatForm>, Bgr>(In{{s.top}}, In{{s.bottom}}, y, ChromaPairs{cbcr}, 0,
                                                          2 * columns);
        },
        pairedRows(src, srcStep), pairedRows(dstY, dstYStep), rows(dstCbCr, dstCbCrStep));
    return oddSizeStatus(size, 2, 2);
}

constexpr bool kBGR = true, kRGB = false;

}  // namespace

extern "C" {

PxkResult pxkiBGRToYCbCr420_8u_C3P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                     uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    return convertP2<kBGR, PackedC3In>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxkResult pxkiBGRToYCbCr420_8u_AC4P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                      uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    return convertP2<kBGR, PackedC4In>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxkResult pxkiRGBToYCbCr420_8u_C3P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                     uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    return convertP2<kRGB, PackedC3In>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

// Byte 3 of each source pixel is not read into the result.
PxkResult pxkiRGBToYCbCr420_8u_C4P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                     uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    return convertP2<kRGB, PackedC4In>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

}  // extern "C"
