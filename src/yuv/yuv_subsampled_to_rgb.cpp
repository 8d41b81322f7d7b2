// Full-range YUV 4:2:0 and 4:2:2 -> RGB and BGR with replicated chroma. Each export
// names its forms (vector columns with their unit, then the rest) and its layouts.
#include "pxkcc.h"

#include "frame/checks.h"
#include "yuv/replicated_rows.h"
#include "yuv/yuv_forms.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kRGB = false;
constexpr bool kBGR = true;

ReplicatedPlanesIn<1> yuvPlanes(const uint8_t* const p[3]) { return ReplicatedPlanesIn<1>{{p[0], p[1], p[2]}}; }
PlanarP3Out rgbPlanes(uint8_t* const p[3]) { return PlanarP3Out{{p[0], p[1], p[2]}}; }

// The truncating form with the full constants in every column.
using Truncating = ColumnForms<TruncatingFullForm, TruncatingFullForm>;
// The doubled form over the first width - width % Unit columns, the truncating form
// with the full constants after them.
template <int32_t Unit>
using DoubledThenTruncating = ColumnForms<DoubledForm, TruncatingFullForm, kRGB, Unit>;

// 4:2:0 from planes with their own steps.
template <class Forms, class Out>
PxkResult yuv420(const uint8_t* const src[3], const int32_t srcStep[3], const Out& out, int32_t dstStep,
                 PxkSize size) {
    return convert420<Forms>(size, pairedPlaneRows<1>(yuvPlanes(src), srcStep), pairedPlaneRows(out, dstStep));
}

// 4:2:0 with the derived steps: Y `width`, chroma width / 2, the destination
// `dstStep`.
template <class Forms, class Out>
PxkResult yuv420WithoutSteps(const uint8_t* const src[3], const Out& out, int32_t dstStep, PxkSize size) {
    const int32_t steps[3] = {size.width, size.width / 2, size.width / 2};
    return yuv420<Forms>(src, steps, out, dstStep, size);
}

// 4:2:2 from planes with their own steps: every column (an odd last pixel with the
// chroma column after the last pair).
template <class Forms, class Out>
PxkResult yuv422(const uint8_t* const src[3], const int32_t srcStep[3], const Out& out, int32_t dstStep,
                 PxkSize size) {
    convertChromaRegion<Forms>(size, planeRows(yuvPlanes(src), srcStep), planeRows(out, dstStep));
    return pxkOk;
}

}  // namespace

extern "C" {

// ---- 4:2:0 ----

// Three planes R, G, B with one step.
PxkResult pxkiYUV420ToRGB_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                 int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesToPlanes(pSrc, pDst, roiSize, 1, 1, pSrc, srcStep, pDst));
    return yuv420<Truncating>(pSrc, srcStep, rgbPlanes(pDst), dstStep, roiSize);
}

PxkResult pxkiYUV420ToRGB_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3], PxkSize roiSize) {
    PXK_CHECK(checkPlanesToPlanes(pSrc, pDst, roiSize, 1, 1, pSrc, pDst));
    return yuv420WithoutSteps<Truncating>(pSrc, rgbPlanes(pDst), roiSize.width, roiSize);
}

PxkResult pxkiYUV420ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                   int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 1, 1));
    return yuv420<DoubledThenTruncating<8>>(pSrc, srcStep, PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYUV420ToRGB_8u_P3C3(const uint8_t* const pSrc[3], uint8_t* pDst, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return yuv420WithoutSteps<DoubledThenTruncating<8>>(pSrc, PackedC3Out{{pDst}}, 3 * roiSize.width, roiSize);
}

// The doubled form with the octet constants in every column; at least 2 x 2.
PxkResult pxkiYUV420ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                   int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 2, 2));
    return yuv420<ColumnForms<Doubled9339Form, Doubled9339Form, kBGR>>(pSrc, srcStep, PackedC3Out{{pDst}}, dstStep,
                                                                       roiSize);
}

// The sixteenths form over the first width - width % 8 columns, the half rounded form
// after them; byte 3 of every pixel 0.
PxkResult pxkiYUV420ToRGB_8u_P3AC4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                    int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 1, 1));
    return yuv420<ColumnForms<SixteenthsForm, HalfRoundedForm>>(pSrc, srcStep, PackedC4AlphaOut{{pDst}, 0}, dstStep,
                                                                roiSize);
}

// ---- 4:2:2 ----

// The sixteenths form over the first width - width % 8 columns, the truncating form
// after them; byte 3 of every pixel 0.
PxkResult pxkiYUV422ToRGB_8u_P3AC4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                    int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 1, 1));
    return yuv422<ColumnForms<SixteenthsForm, TruncatingFullForm>>(pSrc, srcStep, PackedC4AlphaOut{{pDst}, 0},
                                                                   dstStep, roiSize);
}

// Packed Y0 U Y1 V: the doubled form over the first width - width % 16 columns, the
// half rounded form after them; a lone last pixel takes its V from the byte before it.
PxkResult pxkiYUV422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                   PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertPackedPairs<ColumnForms<DoubledForm, HalfRoundedForm, kRGB, 16>>(
        roiSize, planeRows(PackedC2In<1>{{pSrc}}, srcStep), planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}

PxkResult pxkiYUV422ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                   int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesIntoPacked(pSrc, srcStep, pDst, roiSize, 2, 1));
    return yuv422<DoubledThenTruncating<16>>(pSrc, srcStep, PackedC3Out{{pDst}}, dstStep, roiSize);
}

PxkResult pxkiYUV422ToRGB_8u_P3C3(const uint8_t* const pSrc[3], uint8_t* pDst, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convert422WithoutSteps<DoubledThenTruncating<16>>(roiSize, yuvPlanes(pSrc), PackedC3Out{{pDst}},
                                                      3 * roiSize.width);
    return pxkOk;
}

// Three planes R, G, B with one step.
PxkResult pxkiYUV422ToRGB_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                 int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesToPlanes(pSrc, pDst, roiSize, 1, 1, pSrc, srcStep, pDst));
    return yuv422<DoubledThenTruncating<16>>(pSrc, srcStep, rgbPlanes(pDst), dstStep, roiSize);
}

PxkResult pxkiYUV422ToRGB_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3], PxkSize roiSize) {
    PXK_CHECK(checkPlanesToPlanes(pSrc, pDst, roiSize, 1, 1, pSrc, pDst));
    convert422WithoutSteps<DoubledThenTruncating<16>>(roiSize, yuvPlanes(pSrc), rgbPlanes(pDst), roiSize.width);
    return pxkOk;
}

}  // extern "C"
