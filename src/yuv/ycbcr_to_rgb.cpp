// Studio-range YCbCr -> RGB and BGR at full resolution. Each export names the form of
// its vector-block columns and the form of its tail columns; the rest is the shared
// row kernel.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/convert_row.h"
#include "yuv/forms.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

// BGR destinations take the same forms with the first and third outputs swapped.
constexpr bool kBGR = true;

PlanarP3In planes(const uint8_t* const p[3]) { return PlanarP3In{{p[0], p[1], p[2]}}; }

}  // namespace

extern "C" {

PxkResult pxkiYCbCrToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<RoundedForm, RoundedForm>>(roiSize, planeRows(PackedC3In{{pSrc}}, srcStep),
                                                         planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}

// Source alpha is ignored and destination alpha left as it was.
PxkResult pxkiYCbCrToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                 PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<WideTruncatingForm, WideTruncatingForm>>(
        roiSize, planeRows(PackedC4In{{pSrc}}, srcStep), planeRows(PackedAC4KeepOut{{pDst}}, dstStep));
    return pxkOk;
}

// The array pointers first, then the size, then the entries.
PxkResult pxkiYCbCrToRGB_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3],
                                int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkPlanes(pDst, 3));
    convertRegion<ColumnForms<WideRoundedForm, WideRoundedForm>>(
        roiSize, planeRows(planes(pSrc), srcStep), planeRows(PlanarP3Out{{pDst[0], pDst[1], pDst[2]}}, dstStep));
    return pxkOk;
}

PxkResult pxkiYCbCrToRGB_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                  PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<RoundedForm, RoundedForm>>(roiSize, planeRows(planes(pSrc), srcStep),
                                                         planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}

// The one member whose vector block and tail differ: high-product inverse form in the
// blocks, rounded form in the tail; alpha in every pixel.
PxkResult pxkiYCbCrToRGB_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                  PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<HighProductInverseForm, RoundedForm>>(
        roiSize, planeRows(planes(pSrc), srcStep), planeRows(PackedC4AlphaOut{{pDst}, alpha}, dstStep));
    return pxkOk;
}

PxkResult pxkiYCbCrToBGR_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                  PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<RoundedForm, RoundedForm, kBGR>>(roiSize, planeRows(planes(pSrc), srcStep),
                                                               planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}

PxkResult pxkiYCbCrToBGR_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                  PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<RoundedForm, RoundedForm, kBGR>>(
        roiSize, planeRows(planes(pSrc), srcStep), planeRows(PackedC4AlphaOut{{pDst}, alpha}, dstStep));
    return pxkOk;
}

}  // extern "C"
