// Full-range YUV -> RGB at full resolution. Each export names the form of its vector
// columns (with their unit, 8 or 16) and the form of the rest of the row. The members
// with one form in every column still run vector blocks where that form has an exact
// vector twin: the bytes are the same either way.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/convert_row.h"
#include "yuv/yuv_forms.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kRGB = false;

PlanarP3In planes(const uint8_t* const p[3]) { return PlanarP3In{{p[0], p[1], p[2]}}; }

}  // namespace

extern "C" {

// Octet form over the first width - width % 8 columns, half rounded form after them.
PxkResult pxkiYUVToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                              PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<OctetForm, HalfRoundedForm, kRGB, 8>>(
        roiSize, planeRows(PackedC3In{{pSrc}}, srcStep), planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}

// The half rounded form in every column; source byte 3 ignored, destination byte 3
// left unwritten.
PxkResult pxkiYUVToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                               PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<HalfRoundedForm, HalfRoundedForm>>(
        roiSize, planeRows(PackedC4In{{pSrc}}, srcStep), planeRows(PackedAC4KeepOut{{pDst}}, dstStep));
    return pxkOk;
}

// The full rounded form in every column; byte 3 of each destination pixel is alpha.
PxkResult pxkiYUVToRGB_8u_C3C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<FullRoundedForm, FullRoundedForm>>(
        roiSize, planeRows(PackedC3In{{pSrc}}, srcStep), planeRows(PackedC4AlphaOut{{pDst}, alpha}, dstStep));
    return pxkOk;
}

// Doubled form over the first width - width % 16 columns, truncating form after them.
PxkResult pxkiYUVToRGB_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkPlanes(pSrc, 3));
    convertRegion<ColumnForms<DoubledForm, TruncatingForm, kRGB, 16>>(
        roiSize, planeRows(planes(pSrc), srcStep), planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}

// The truncating form in every column.
PxkResult pxkiYUVToRGB_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3],
                              int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkPlanes(pDst, 3));
    convertRegion<ColumnForms<TruncatingForm, TruncatingForm>>(
        roiSize, planeRows(planes(pSrc), srcStep), planeRows(PlanarP3Out{{pDst[0], pDst[1], pDst[2]}}, dstStep));
    return pxkOk;
}

}  // extern "C"
