// YCbCr planes -> BGR by the high-definition inverse matrices: full-resolution planes
// (709CSC) and 4:2:0 planes (709CSC, 709HDTV), into BGR or BGR with the alpha argument
// in byte 3. Every pixel takes the same form in every column.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/convert_row.h"
#include "frame/drivers.h"
#include "yuv/hd_forms.h"
#include "yuv/replicated_rows.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kBGR = true;

// Full resolution: three planes sharing one step. Checks: pSrc, pDst, the entries of
// pSrc, then the size (1 by 1).
template <class Out>
PxkResult fromPlanes(const uint8_t* const src[3], int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size,
                     Out out) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkSize(size, 1, 1));
    convertRegion<ColumnForms<Csc709InverseForm, Csc709InverseForm, kBGR>>(
        size, planeRows(PlanarP3In{{src[0], src[1], src[2]}}, srcStep), planeRows(out, dstStep));
    return pxkOk;
}

// 4:2:0: `height / 2` row pairs of `width / 2` pixel pairs, each chroma sample serving
// its 2 by 2 block; a last odd row or column is neither read nor written and reported
// with pxkWarnOddSize. Checks: pSrc, srcStep, pDst, the entries of pSrc, then the size
// (1 by 1: a width or height of 1 converts nothing).
template <class Form, class Out>
PxkResult from420(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst, const Out& out,
                  int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPlanesIntoPacked(src, srcStep, dst, size, 1, 1));
    return convert420<ColumnForms<Form, Form, kBGR>>(
        size, pairedPlaneRows<1>(ReplicatedPlanesIn<1>{{src[0], src[1], src[2]}}, srcStep),
        pairedPlaneRows(out, dstStep));
}

}  // namespace

extern "C" {

PxkResult pxkiYCbCrToBGR_709CSC_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize) {
    return fromPlanes(pSrc, srcStep, pDst, dstStep, roiSize, PackedC3Out{{pDst}});
}

PxkResult pxkiYCbCrToBGR_709CSC_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize, uint8_t alpha) {
    return fromPlanes(pSrc, srcStep, pDst, dstStep, roiSize, PackedC4AlphaOut{{pDst}, alpha});
}

PxkResult pxkiYCbCr420ToBGR_709CSC_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                            int32_t dstStep, PxkSize roiSize) {
    return from420<Csc709InverseForm>(pSrc, srcStep, pDst, PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToBGR_709HDTV_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, PxkSize roiSize, uint8_t alpha) {
    return from420<Hdtv709InverseForm>(pSrc, srcStep, pDst, PackedC4AlphaOut{{pDst}, alpha}, dstStep, roiSize);
}

}  // extern "C"
