// Packed CbYCr422 (Cb Y0 Cr Y1) -> RGB or BGR, by the standard inverse matrix (the
// rounded form of the full-resolution conversion) or the 709HDTV one; C4 destinations
// take the alpha argument in byte 3. Both pixels of a pair take its Cb and Cr. A last
// pixel of an odd width takes its Y and Cb from its own two bytes and its Cr from the
// pair before; in a row of width 1 its Cb stands in for Cr. Checks: the pointers, then
// the size (1 by 1 at least); steps are not tested.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/convert_row.h"
#include "frame/drivers.h"
#include "yuv/forms.h"
#include "yuv/hd_forms.h"
#include "yuv/hd_rows.h"
#include "yuv/replicated_rows.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kBGR = true, kRGB = false;

template <class Form, bool Bgr>
PxkResult toC3(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    convertPackedPairs<ColumnForms<Form, Form, Bgr>>(size, planeRows(CbYCrIn<>{{src}}, srcStep),
                                                    planeRows(PackedC3Out{{dst}}, dstStep));
    return pxkOk;
}

// Two kernels, by the alignment of both pointers and steps (see byAlignment).
template <class Form, bool Bgr>
PxkResult toC4(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size, uint8_t alpha) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    byAlignment(src, srcStep, dst, dstStep, [&](auto memory) {
        using Memory = decltype(memory);
        convertPackedPairs<ColumnForms<Form, Form, Bgr>>(size, planeRows(CbYCrIn<Memory>{{src}}, srcStep),
                                                        planeRows(PackedC4AlphaOutWith<Memory>{{dst}, alpha}, dstStep));
    });
    return pxkOk;
}

}  // namespace

extern "C" {

PxkResult pxkiCbYCr422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    return toC3<RoundedForm, kRGB>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiCbYCr422ToBGR_709HDTV_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             PxkSize roiSize) {
    return toC3<Hdtv709InverseForm, kBGR>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiCbYCr422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize, uint8_t alpha) {
    return toC4<RoundedForm, kBGR>(pSrc, srcStep, pDst, dstStep, roiSize, alpha);
}

PxkResult pxkiCbYCr422ToBGR_709HDTV_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             PxkSize roiSize, uint8_t alpha) {
    return toC4<Hdtv709InverseForm, kBGR>(pSrc, srcStep, pDst, dstStep, roiSize, alpha);
}

}  // extern "C"
