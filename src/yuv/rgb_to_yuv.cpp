// RGB -> full-range YUV at full resolution. Each export names the form of its vector
// columns (with their unit, 8 or 16) and the form of the rest of the row; the rest is
// the shared row kernel.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/convert_row.h"
#include "yuv/yuv_forms.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kRGB = false;

PlanarP3Out planes(uint8_t* const p[3]) { return PlanarP3Out{{p[0], p[1], p[2]}}; }

// Byte 3 of each pixel of a four-byte packed region copied into a plane.
void copyAlphaToPlane(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size) {
    driveRows(
        size.width, size.height, [](int32_t width, const uint8_t* s, uint8_t* d) { copyFourthBytes(s, d, width); },
        rows(src, srcStep), rows(dst, dstStep));
}

}  // namespace

extern "C" {

// High-product form over the first width - width % 16 columns.
PxkResult pxkiRGBToYUV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                              PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<YuvHighProductForm, TruncatingLumaScalarForm, kRGB, 16>>(
        roiSize, planeRows(PackedC3In{{pSrc}}, srcStep), planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}

// One form in every column (its vector twin gives the same bits); destination byte 3
// is left unwritten.
PxkResult pxkiRGBToYUV_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                               PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<RoundedScalarForm, RoundedScalarForm>>(
        roiSize, planeRows(PackedC4In{{pSrc}}, srcStep), planeRows(PackedAC4KeepOut{{pDst}}, dstStep));
    return pxkOk;
}

// High-product form over the first width - width % 8 columns. The array pointer is
// tested with the others, its entries after the size.
PxkResult pxkiRGBToYUV_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkPlanes(pDst, 3));
    convertRegion<ColumnForms<YuvHighProductForm, TruncatingLumaScalarForm, kRGB, 8>>(
        roiSize, planeRows(PackedC3In{{pSrc}}, srcStep), planeRows(planes(pDst), dstStep));
    return pxkOk;
}

// One form in every column (its vector twin gives the same bits), and source byte 3
// copied into the fourth plane. Only the first three plane entries are tested.
PxkResult pxkiRGBToYUV_8u_AC4P4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[4], int32_t dstStep,
                                 PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkPlanes(pDst, 3));
    convertRegion<ColumnForms<RoundedLumaScalarForm, RoundedLumaScalarForm>>(
        roiSize, planeRows(PackedC4In{{pSrc}}, srcStep), planeRows(planes(pDst), dstStep));
    copyAlphaToPlane(pSrc, srcStep, pDst[3], dstStep, roiSize);
    return pxkOk;
}

// High-product form over the first width - width % 16 columns, the matrix scalar form
// after them. (Taken plane by plane or pixel by pixel, the bytes are the same.)
PxkResult pxkiRGBToYUV_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3],
                              int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkPlanes(pDst, 3));
    convertRegion<ColumnForms<YuvHighProductForm, MatrixScalarForm, kRGB, 16>>(
        roiSize, planeRows(PlanarP3In{{pSrc[0], pSrc[1], pSrc[2]}}, srcStep), planeRows(planes(pDst), dstStep));
    return pxkOk;
}

}  // extern "C"
