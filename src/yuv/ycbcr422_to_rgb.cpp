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

using Wide = WideRoundedForm;
// The high-product 4:1:1 and 4:2:2 form over the first width - width % 8 columns, and
// `Tail` after them.
template <class Tail, bool Bgr>
using HighProduct411Then = ColumnForms<HighProduct411Form, Tail, Bgr>;

// From packed pairs, after the checks: whole pairs, then a lone last pixel (its second
// chroma from the byte before it).
template <class Forms, int FirstChannel, class Out>
PxkResult convertPairs(const uint8_t* src, int32_t srcStep, const Out& out, int32_t dstStep, PxkSize size) {
    convertPackedPairs<Forms>(size, planeRows(PackedC2In<FirstChannel>{{src}}, srcStep), planeRows(out, dstStep));
    return pxkOk;
}

// From packed pairs into packed pixels: the pointers, the size (at least MinWidth by
// 1), then the conversion.
template <class Forms, int FirstChannel, int32_t MinWidth = 1, class Out>
PxkResult fromPairs(const uint8_t* src, int32_t srcStep, uint8_t* dst, const Out& out, int32_t dstStep,
                    PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, MinWidth, 1));
    return convertPairs<Forms, FirstChannel>(src, srcStep, out, dstStep, size);
}

// From packed pairs into three planes R, G, B with one step: the pointers, the plane
// entries, then the size; the high-product form, then the raw-chroma offset form.
template <int FirstChannel>
PxkResult fromPairsIntoPlanes(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3], int32_t dstStep,
                              PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkPlanes(dst, 3));
    PXK_CHECK(checkSize(size, 1, 1));
    return convertPairs<HighProduct411Then<RawChromaOffsetForm, kRGB>, FirstChannel>(
        src, srcStep, PlanarP3Out{{dst[0], dst[1], dst[2]}}, dstStep, size);
}

// From planes Y, Cb, Cr with one chroma sample for each group of `Group` columns: the
// one-stage checks (at least one group wide), then the whole groups of each row.
template <class Forms, int Group, class Out>
PxkResult fromPlanes(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst, const Out& out,
                     int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPlanesIntoPacked(src, srcStep, dst, size, Group, 1));
    constexpr int kShift = Group == 2 ? 1 : 2;
    convertWholeGroups<Forms, Group>(size, planeRows(ReplicatedPlanesIn<kShift>{{src[0], src[1], src[2]}}, srcStep),
                                     planeRows(out, dstStep));
    return pxkOk;
}

}  // namespace

extern "C" {

// ---- packed pairs, the wide rounded form in every column ----

// At least 2 wide, as its C4 twin and the planar member.
PxkResult pxkiYCbCr422ToBGR_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    return fromPairs<ColumnForms<Wide, Wide, kBGR>, kCbFirst, 2>(pSrc, srcStep, pDst, PackedC3Out{{pDst}}, dstStep,
                                                                 roiSize);
}

PxkResult pxkiYCbCr422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize, uint8_t alpha) {
    return fromPairs<ColumnForms<Wide, Wide, kBGR>, kCbFirst, 2>(pSrc, srcStep, pDst, PackedC4AlphaOut{{pDst}, alpha},
                                                                 dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    return fromPairs<ColumnForms<Wide, Wide, kRGB>, kCbFirst>(pSrc, srcStep, pDst, PackedC3Out{{pDst}}, dstStep,
                                                              roiSize);
}

PxkResult pxkiYCbCr422ToRGB_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize, uint8_t alpha) {
    return fromPairs<ColumnForms<Wide, Wide, kRGB>, kCbFirst>(pSrc, srcStep, pDst, PackedC4AlphaOut{{pDst}, alpha},
                                                              dstStep, roiSize);
}

PxkResult pxkiYCrCb422ToBGR_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    return fromPairs<ColumnForms<Wide, Wide, kBGR>, kCrFirst>(pSrc, srcStep, pDst, PackedC3Out{{pDst}}, dstStep,
                                                              roiSize);
}

PxkResult pxkiYCrCb422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize, uint8_t alpha) {
    return fromPairs<ColumnForms<Wide, Wide, kBGR>, kCrFirst>(pSrc, srcStep, pDst, PackedC4AlphaOut{{pDst}, alpha},
                                                              dstStep, roiSize);
}

PxkResult pxkiYCrCb422ToRGB_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize, uint8_t alpha) {
    return fromPairs<ColumnForms<Wide, Wide, kRGB>, kCrFirst>(pSrc, srcStep, pDst, PackedC4AlphaOut{{pDst}, alpha},
                                                              dstStep, roiSize);
}

// ---- packed pairs, the high-product form then the raw-chroma offset form ----

PxkResult pxkiYCrCb422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    return fromPairs<HighProduct411Then<RawChromaOffsetForm, kRGB>, kCrFirst>(pSrc, srcStep, pDst,
                                                                              PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToRGB_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                     PxkSize roiSize) {
    return fromPairsIntoPlanes<kCbFirst>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCrCb422ToRGB_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                     PxkSize roiSize) {
    return fromPairsIntoPlanes<kCrFirst>(pSrc, srcStep, pDst, dstStep, roiSize);
}

// ---- planes: whole pairs (4:2:2) or groups of four (4:1:1) ----

// The raw-chroma offset form in every column; a last odd pixel is left unwritten.
PxkResult pxkiYCbCr422ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    return fromPlanes<ColumnForms<RawChromaOffsetForm, RawChromaOffsetForm, kBGR>, 2>(
        pSrc, srcStep, pDst, PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    return fromPlanes<ColumnForms<RawChromaOffsetForm, RawChromaOffsetForm, kRGB>, 2>(
        pSrc, srcStep, pDst, PackedC3Out{{pDst}}, dstStep, roiSize);
}

// The high-product form over the first width - width % 8 columns (two groups of four
// a block), the 4:1:1 form after them; width - width % 4 columns.
PxkResult pxkiYCbCr411ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    return fromPlanes<HighProduct411Then<Form411, kBGR>, 4>(pSrc, srcStep, pDst, PackedC3Out{{pDst}}, dstStep,
                                                            roiSize);
}

PxkResult pxkiYCbCr411ToBGR_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize, uint8_t alpha) {
    return fromPlanes<HighProduct411Then<Form411, kBGR>, 4>(pSrc, srcStep, pDst, PackedC4AlphaOut{{pDst}, alpha},
                                                            dstStep, roiSize);
}

}  // extern "C"
