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
// The order of the checks of the members from a Y plane and chroma pairs: pointers
// first, or (two members) the size first.
enum class PairsChecks { PointersFirst, SizeFirst };

// From a Y plane and a plane of chroma pairs: the checks, then the wide rounded form in
// every column.
template <bool Bgr, int FirstChannel, PairsChecks Order = PairsChecks::PointersFirst, class Out>
PxkResult fromChromaPairs(const uint8_t* y, int32_t yStep, const uint8_t* pairs, int32_t pairsStep, uint8_t* dst,
                          const Out& out, int32_t dstStep, PxkSize size) {
    if (Order == PairsChecks::SizeFirst) PXK_CHECK(checkSize(size, 1, 1));
    PXK_CHECK(checkPtrs(y, pairs, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    const int32_t steps[2] = {yStep, pairsStep};
    return convert420<ColumnForms<WideRoundedForm, WideRoundedForm, Bgr>>(
        size, pairedPlaneRows<1>(ChromaPairsIn<FirstChannel>{{y, pairs}}, steps), pairedPlaneRows(out, dstStep));
}

// The planes of a source in the order Y, Cb, Cr and their steps, from planes given as
// Y, Cb, Cr or (CrFirst) Y, Cr, Cb.
template <bool CrFirst>
struct CbCrOrder {
    const uint8_t* planes[3];
    int32_t steps[3];
    CbCrOrder(const uint8_t* const src[3], const int32_t srcStep[3])
        : planes{src[0], src[CrFirst ? 2 : 1], src[CrFirst ? 1 : 2]},
          steps{srcStep[0], srcStep[CrFirst ? 2 : 1], srcStep[CrFirst ? 1 : 2]} {}
};

// From three planes: the one-stage checks (at least 1 by 1), then the forms.
template <class Forms, bool CrFirst = false, class Out>
PxkResult fromPlanes(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst, const Out& out,
                     int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPlanesIntoPacked(src, srcStep, dst, size, 1, 1));
    const CbCrOrder<CrFirst> p(src, srcStep);
    return convert420<Forms>(size, pairedPlaneRows<1>(ReplicatedPlanesIn<1>{{p.planes[0], p.planes[1], p.planes[2]}}, p.steps),
                             pairedPlaneRows(out, dstStep));
}

// The high-product inverse form over the first width - width % 8 columns, the wide
// rounded form after them.
template <bool Bgr>
using HighProductThenWide = ColumnForms<HighProductInverseForm, WideRoundedForm, Bgr>;
using Wide = WideRoundedForm;
constexpr bool kCrFirstPlanes = true;

}  // namespace

extern "C" {

// ---- Y plane and chroma pairs ----

PxkResult pxkiYCbCr420ToBGR_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                     int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    return fromChromaPairs<kBGR, kCbFirst>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, PackedC3Out{{pDst}}, dstStep,
                                           roiSize);
}

PxkResult pxkiYCbCr420ToBGR_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                     int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                     uint8_t alpha) {
    return fromChromaPairs<kBGR, kCbFirst>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst,
                                           PackedC4AlphaOut{{pDst}, alpha}, dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToRGB_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                     int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    return fromChromaPairs<kRGB, kCbFirst>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, PackedC3Out{{pDst}}, dstStep,
                                           roiSize);
}

PxkResult pxkiYCbCr420ToRGB_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                     int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                     uint8_t alpha) {
    return fromChromaPairs<kRGB, kCbFirst>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst,
                                           PackedC4AlphaOut{{pDst}, alpha}, dstStep, roiSize);
}

PxkResult pxkiYCrCb420ToBGR_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb,
                                     int32_t srcCrCbStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    return fromChromaPairs<kBGR, kCrFirst>(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep, pDst, PackedC3Out{{pDst}}, dstStep,
                                           roiSize);
}

// The size is tested before the pointers in this member and its RGB twin.
PxkResult pxkiYCrCb420ToBGR_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb,
                                     int32_t srcCrCbStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                     uint8_t alpha) {
    return fromChromaPairs<kBGR, kCrFirst, PairsChecks::SizeFirst>(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep, pDst,
                                                                   PackedC4AlphaOut{{pDst}, alpha}, dstStep, roiSize);
}

PxkResult pxkiYCrCb420ToRGB_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb,
                                     int32_t srcCrCbStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    return fromChromaPairs<kRGB, kCrFirst>(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep, pDst, PackedC3Out{{pDst}}, dstStep,
                                           roiSize);
}

PxkResult pxkiYCrCb420ToRGB_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb,
                                     int32_t srcCrCbStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                     uint8_t alpha) {
    return fromChromaPairs<kRGB, kCrFirst, PairsChecks::SizeFirst>(pSrcY, srcYStep, pSrcCrCb, srcCrCbStep, pDst,
                                                                   PackedC4AlphaOut{{pDst}, alpha}, dstStep, roiSize);
}

// ---- three planes ----

// The wide rounded form in every column.
PxkResult pxkiYCbCr420ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    return fromPlanes<ColumnForms<Wide, Wide, kBGR>>(pSrc, srcStep, pDst, PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToBGR_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize, uint8_t alpha) {
    return fromPlanes<HighProductThenWide<kBGR>>(pSrc, srcStep, pDst, PackedC4AlphaOut{{pDst}, alpha}, dstStep,
                                                 roiSize);
}

PxkResult pxkiYCbCr420ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    return fromPlanes<HighProductThenWide<kRGB>>(pSrc, srcStep, pDst, PackedC3Out{{pDst}}, dstStep, roiSize);
}

// Planes Y, Cr, Cb.
PxkResult pxkiYCrCb420ToRGB_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize, uint8_t alpha) {
    return fromPlanes<HighProductThenWide<kRGB>, kCrFirstPlanes>(pSrc, srcStep, pDst, PackedC4AlphaOut{{pDst}, alpha},
                                                                 dstStep, roiSize);
}

// Planes Y, Cr, Cb; chroma filtered along the row, the filter form in every column.
PxkResult pxkiYCrCb420ToBGR_Filter_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                            int32_t dstStep, PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 1, 1));
    const CbCrOrder<kCrFirstPlanes> p(pSrc, srcStep);
    return convertFiltered420<ColumnForms<FilterForm, FilterForm, kBGR, 16>>(
        roiSize, pairedPlaneRows<1>(FilteredPlanesIn{{p.planes[0], p.planes[1], p.planes[2]}, 0}, p.steps),
        pairedPlaneRows(PackedC4AlphaOut{{pDst}, alpha}, dstStep));
}

}  // extern "C"
