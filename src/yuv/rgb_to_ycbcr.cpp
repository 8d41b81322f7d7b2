// RGB -> studio-range YCbCr at full resolution. Each export names the form of its
// vector-block columns and the form of its tail columns; the rest is the shared row
// kernel.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/convert_row.h"
#include "yuv/forms.h"

using namespace pxk;
using namespace pxk::yuv;

extern "C" {

PxkResult pxkiRGBToYCbCr_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<PairedForm, DirectForm>>(roiSize, planeRows(PackedC3In{{pSrc}}, srcStep),
                                                       planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}

PxkResult pxkiRGBToYCbCr_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                 PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<DirectForm, DirectForm>>(roiSize, planeRows(PackedC4In{{pSrc}}, srcStep),
                                                       planeRows(PackedAC4KeepOut{{pDst}}, dstStep));
    return pxkOk;
}

PxkResult pxkiRGBToYCbCr_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                  int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pDst, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<HighProductForm, DirectForm>>(
        roiSize, planeRows(PackedC3In{{pSrc}}, srcStep), planeRows(PlanarP3Out{{pDst[0], pDst[1], pDst[2]}}, dstStep));
    return pxkOk;
}

// The plane array pointer itself is read without a test; its entries are tested.
PxkResult pxkiRGBToYCbCr_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                   int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc));
    PXK_CHECK(checkPlanes(pDst, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<ColumnForms<HighProductForm, DirectForm>>(
        roiSize, planeRows(PackedC4In{{pSrc}}, srcStep), planeRows(PlanarP3Out{{pDst[0], pDst[1], pDst[2]}}, dstStep));
    return pxkOk;
}

// The array pointers first, then the size, then the entries.
PxkResult pxkiRGBToYCbCr_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3],
                                int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkPlanes(pDst, 3));
    convertRegion<ColumnForms<DirectForm, DirectForm>>(roiSize,
                                                       planeRows(PlanarP3In{{pSrc[0], pSrc[1], pSrc[2]}}, srcStep),
                                                       planeRows(PlanarP3Out{{pDst[0], pDst[1], pDst[2]}}, dstStep));
    return pxkOk;
}

}  // extern "C"
