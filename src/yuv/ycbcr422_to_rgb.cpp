// Studio-range YCbCr 4:2:2 and 4:1:1 -> RGB and BGR with replicated chroma, from packed
// pairs (Y0 Cb Y1 Cr or Y0 Cr Y1 Cb) and from planes. Each export names its forms
// (vector columns, then the rest) and its layouts.
#include "pxkcc.h"

#include "frame/checks.h"
#include "yuv/forms.h"
#include "yuv/replicated_rows.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kRGB = false;
constexpr bool kBGR = true;
// The channel that the first chroma byte of a packed pair feeds.
constexpr int kCbFirst = 1;
constexpr int kCrFirst = 2;

using Wide = WideRoundedForm;
// The high-product 4:1:1 and 4:2:2 form over the first width - width % 8 columns, and
// `Tail` after them.
template <class Tail, bool Bgr>
using HighProduct411Then = ColumnForms<HighProduct411Form, Tail, Bgr>;

// From packed pairs: whole pairs, then a lone last pixel (its second chroma from the
// byte before it).
template <class Forms, int FirstChannel, class Out>
PxkResult fromPairs(const uint8_t* src, int32_t srcStep, const Out& out, int32_t dstStep, PxkSize size) {
    convertPackedPairs<Forms>(size, planeRows(PackedC2In<FirstChannel>{{src}}, srcStep), planeRows(out, dstStep));
    return pxkOk;
}

PlanarP3Out planesOut(uint8_t* const p[3]) { return PlanarP3Out{{p[0], p[1], p[2]}}; }

// From planes Y, Cb, Cr with one chroma sample for each group of `Group` columns: the
// whole groups of each row.
template <class Forms, int Group, class Out>
PxkResult fromPlanes(const uint8_t* const src[3], const int32_t srcStep[3], const Out& out, int32_t dstStep,
                     PxkSize size) {
    constexpr int kShift = Group == 2 ? 1 : 2;
    convertWholeGroups<Forms, Group>(size, planeRows(ReplicatedPlanesIn<kShift>{{src[0], src[1], src[2]}}, srcStep),
                                     planeRows(out, dstStep));
    return pxkOk;
}

}  // namespace

extern "C" {

// ---- packed pairs, the wide rounded form in every column ----

PxkResult pxkiYCbCr422ToBGR_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 2, 1));
    return fromPairs<ColumnForms<Wide, Wide, kBGR>, kCbFirst>(pSrc, srcStep, PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 2, 1));
    return fromPairs<ColumnForms<Wide, Wide, kBGR>, kCbFirst>(pSrc, srcStep, PackedC4AlphaOut{{pDst}, alpha},
                                                             dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromPairs<ColumnForms<Wide, Wide, kRGB>, kCbFirst>(pSrc, srcStep, PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToRGB_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromPairs<ColumnForms<Wide, Wide, kRGB>, kCbFirst>(pSrc, srcStep, PackedC4AlphaOut{{pDst}, alpha},
                                                             dstStep, roiSize);
}

PxkResult pxkiYCrCb422ToBGR_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromPairs<ColumnForms<Wide, Wide, kBGR>, kCrFirst>(pSrc, srcStep, PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYCrCb422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromPairs<ColumnForms<Wide, Wide, kBGR>, kCrFirst>(pSrc, srcStep, PackedC4AlphaOut{{pDst}, alpha},
                                                             dstStep, roiSize);
}

PxkResult pxkiYCrCb422ToRGB_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromPairs<ColumnForms<Wide, Wide, kRGB>, kCrFirst>(pSrc, srcStep, PackedC4AlphaOut{{pDst}, alpha},
                                                             dstStep, roiSize);
}

// ---- packed pairs, the high-product form then the raw-chroma offset form ----

PxkResult pxkiYCrCb422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromPairs<HighProduct411Then<RawChromaOffsetForm, kRGB>, kCrFirst>(pSrc, srcStep, PackedC3Out{{pDst}},
                                                                              dstStep, roiSize);
}

// Three planes R, G, B with one step.
PxkResult pxkiYCbCr422ToRGB_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                     PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pDst, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromPairs<HighProduct411Then<RawChromaOffsetForm, kRGB>, kCbFirst>(pSrc, srcStep, planesOut(pDst),
                                                                              dstStep, roiSize);
}

PxkResult pxkiYCrCb422ToRGB_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                     PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pDst, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return fromPairs<HighProduct411Then<RawChromaOffsetForm, kRGB>, kCrFirst>(pSrc, srcStep, planesOut(pDst),
                                                                              dstStep, roiSize);
}

// ---- planes: whole pairs (4:2:2) or groups of four (4:1:1) ----

// The raw-chroma offset form in every column; a last odd pixel is left unwritten.
PxkResult pxkiYCbCr422ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 2, 1));
    return fromPlanes<ColumnForms<RawChromaOffsetForm, RawChromaOffsetForm, kBGR>, 2>(pSrc, srcStep,
                                                                                      PackedC3Out{{pDst}}, dstStep,
                                                                                      roiSize);
}

PxkResult pxkiYCbCr422ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 2, 1));
    return fromPlanes<ColumnForms<RawChromaOffsetForm, RawChromaOffsetForm, kRGB>, 2>(pSrc, srcStep,
                                                                                      PackedC3Out{{pDst}}, dstStep,
                                                                                      roiSize);
}

// The high-product form over the first width - width % 8 columns (two groups of four
// a block), the 4:1:1 form after them; width - width % 4 columns.
PxkResult pxkiYCbCr411ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 4, 1));
    return fromPlanes<HighProduct411Then<Form411, kBGR>, 4>(pSrc, srcStep, PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYCbCr411ToBGR_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 4, 1));
    return fromPlanes<HighProduct411Then<Form411, kBGR>, 4>(pSrc, srcStep, PackedC4AlphaOut{{pDst}, alpha}, dstStep,
                                                            roiSize);
}

}  // extern "C"
