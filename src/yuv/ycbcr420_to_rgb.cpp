// Studio-range YCbCr 4:2:0 -> RGB and BGR with replicated chroma: from a Y plane and a
// plane of chroma pairs, and from three planes. Each export names its forms (vector
// columns, then the rest) and its layouts; the row-pair driver does the rest.
#include "pxkcc.h"

#include "frame/checks.h"
#include "yuv/forms.h"
#include "yuv/replicated_rows.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kRGB = false;
constexpr bool kBGR = true;
// The channel that the first chroma byte of a pair (or plane) feeds.
constexpr int kCbFirst = 1;
constexpr int kCrFirst = 2;

// From a Y plane and a plane of chroma pairs: the wide rounded form in every column.
template <bool Bgr, int FirstChannel, class Out>
PxkResult fromChromaPairs(const uint8_t* y, int32_t yStep, const uint8_t* pairs, int32_t pairsStep, const Out& out,
                          int32_t dstStep, PxkSize size) {
    const int32_t steps[2] = {yStep, pairsStep};
    return convert420<ColumnForms<WideRoundedForm, WideRoundedForm, Bgr>>(
        size, pairedPlaneRows<1>(ChromaPairsIn<FirstChannel>{{y, pairs}}, steps), pairedPlaneRows(out, dstStep));
}

// From three planes Y, Cb, Cr.
template <class Forms, class Out>
PxkResult fromPlanes(const ReplicatedPlanesIn<1>& in, const int32_t srcStep[3], const Out& out, int32_t dstStep,
                     PxkSize size) {
    return convert420<Forms>(size, pairedPlaneRows<1>(in, srcStep), pairedPlaneRows(out, dstStep));
}

ReplicatedPlanesIn<1> cbCrPlanes(const uint8_t* const p[3]) { return ReplicatedPlanesIn<1>{{p[0], p[1], p[2]}}; }
ReplicatedPlanesIn<1> crCbPlanes(const uint8_t* const p[3]) { return ReplicatedPlanesIn<1>{{p[0], p[2], p[1]}}; }

// The high-product inverse form over the first width - width % 8 columns, the wide
// rounded form after them.
template <bool Bgr>
using HighProductThenWide = ColumnForms<HighProductInverseForm, WideRoundedForm, Bgr>;

}  // namespace

extern "C" {

// ---- Y plane and chroma pairs ----

PxkResult pxkiYCbCr420ToBGR_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                     int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrcY, pSrcCbCr, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromChromaPairs<kBGR, kCbFirst>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, PackedC3Out{{pDst}}, dstStep,
                                           roiSize);
}

PxkResult pxkiYCbCr420ToBGR_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                     int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                     uint8_t alpha) {
    PXK_CHECK(checkPtrs(pSrcY, pSrcCbCr, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromChromaPairs<kBGR, kCbFirst>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, PackedC4AlphaOut{{pDst}, alpha},
                                           dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToRGB_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                     int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrcY, pSrcCbCr, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromChromaPairs<kRGB, kCbFirst>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, PackedC3Out{{pDst}}, dstStep,
                                           roiSize);
}

PxkResult pxkiYCbCr420ToRGB_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                     int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                     uint8_t alpha) {
    PXK_CHECK(checkPtrs(pSrcY, pSrcCbCr, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromChromaPairs<kRGB, kCbFirst>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, PackedC4AlphaOut{{pDst}, alpha},
                                           dstStep, roiSize);
}

PxkResult pxkiYCrCb420ToBGR_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb,
                                     int32_t srcCrCbStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrcY, pSrcCrCb, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromChromaPairs<kBGR, kCrFirst>(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep, PackedC3Out{{pDst}}, dstStep,
                                           roiSize);
}

// The size is tested before the pointers in this member and its RGB twin.
PxkResult pxkiYCrCb420ToBGR_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb,
                                     int32_t srcCrCbStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                     uint8_t alpha) {
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkPtrs(pSrcY, pSrcCrCb, pDst));
    return fromChromaPairs<kBGR, kCrFirst>(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep, PackedC4AlphaOut{{pDst}, alpha},
                                           dstStep, roiSize);
}

PxkResult pxkiYCrCb420ToRGB_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb,
                                     int32_t srcCrCbStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrcY, pSrcCrCb, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromChromaPairs<kRGB, kCrFirst>(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep, PackedC3Out{{pDst}}, dstStep,
                                           roiSize);
}

PxkResult pxkiYCrCb420ToRGB_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb,
                                     int32_t srcCrCbStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                     uint8_t alpha) {
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkPtrs(pSrcY, pSrcCrCb, pDst));
    return fromChromaPairs<kRGB, kCrFirst>(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep, PackedC4AlphaOut{{pDst}, alpha},
                                           dstStep, roiSize);
}

// ---- three planes ----

// The wide rounded form in every column.
PxkResult pxkiYCbCr420ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 1, 1));
    return fromPlanes<ColumnForms<WideRoundedForm, WideRoundedForm, kBGR>>(cbCrPlanes(pSrc), srcStep,
                                                                           PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToBGR_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 1, 1));
    return fromPlanes<HighProductThenWide<kBGR>>(cbCrPlanes(pSrc), srcStep, PackedC4AlphaOut{{pDst}, alpha},
                                                 dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 1, 1));
    return fromPlanes<HighProductThenWide<kRGB>>(cbCrPlanes(pSrc), srcStep, PackedC3Out{{pDst}}, dstStep, roiSize);
}

// Planes Y, Cr, Cb.
PxkResult pxkiYCrCb420ToRGB_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 1, 1));
    const int32_t cbCrSteps[3] = {srcStep[0], srcStep[2], srcStep[1]};
    return fromPlanes<HighProductThenWide<kRGB>>(crCbPlanes(pSrc), cbCrSteps, PackedC4AlphaOut{{pDst}, alpha},
                                                 dstStep, roiSize);
}

// Planes Y, Cr, Cb; chroma filtered along the row, the filter form in every column.
PxkResult pxkiYCrCb420ToBGR_Filter_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                            int32_t dstStep, PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 1, 1));
    const int32_t cbCrSteps[3] = {srcStep[0], srcStep[2], srcStep[1]};
    return convertFiltered420<ColumnForms<FilterForm, FilterForm, kBGR, 16>>(
        roiSize, pairedPlaneRows<1>(FilteredPlanesIn{{pSrc[0], pSrc[2], pSrc[1]}, 0}, cbCrSteps),
        pairedPlaneRows(PackedC4AlphaOut{{pDst}, alpha}, dstStep));
}

}  // extern "C"
