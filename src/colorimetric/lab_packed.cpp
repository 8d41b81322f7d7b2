// RGB <-> Lab, interleaved pixels: 8-bit RGB to 8-bit or 16-bit Lab codes, float RGB
// to float Lab, and back. Pointers, then size (at least 1 x 1); steps are bytes, used
// as they stand and not tested. The BGR members read or write blue first; the
// arithmetic is that of the RGB members.
#include "pxkcc.h"

#include "colorimetric/lab_rows.h"
#include "colorimetric/packed_members.h"
#include "frame/checks.h"
#include "frame/drivers.h"

using namespace pxk;
using namespace pxk::colorimetric;
using namespace pxk::colorimetric::lab;

namespace {

// Checks, then Row(src, dst, width) for each row.
template <class Src, class Dst, class Row>
PxkResult convertRows(const Src* pSrc, int32_t srcStep, Dst* pDst, int32_t dstStep, PxkSize size, Row row) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(size, 1, 1));
    driveRows(
        size.width, size.height, [row](int32_t width, const Src* s, Dst* d) { row(s, d, width); },
        rows(pSrc, srcStep), rows(pDst, dstStep));
    return pxkOk;
}

}  // namespace

extern "C" {

// 8-bit codes: blocks of eight or sixteen pixels in float lanes, the scalar twin past
// the last whole block (every column takes the same arithmetic).
PxkResult pxkiRGBToLab_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                              PxkSize roiSize) {
    return convertPackedC3<MemberColumns<ToLab8uBlock, ToLab8uPixel, 8>>(pSrc, srcStep, pDst, dstStep, roiSize);
}
PxkResult pxkiBGRToLab_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                              PxkSize roiSize) {
    return convertPackedC3<MemberColumns<ToLab8uBlock, ToLab8uPixel, 8, true>>(pSrc, srcStep, pDst, dstStep, roiSize);
}
PxkResult pxkiBGRToLab_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                 PxkSize roiSize) {
    return convertRows(pSrc, srcStep, pDst, dstStep, roiSize, bgrToLab16uRow);
}
PxkResult pxkiRGBToLab_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize) {
    return convertRows(pSrc, srcStep, pDst, dstStep, roiSize, rgbToLabFloatRow<Order::Rgb>);
}
PxkResult pxkiBGRToLab_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize) {
    return convertRows(pSrc, srcStep, pDst, dstStep, roiSize, rgbToLabFloatRow<Order::Bgr>);
}

// The columns below width - width % 4 by the main loop's form, the rest by the tail's.
PxkResult pxkiLabToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                              PxkSize roiSize) {
    return convertPackedC3<MemberColumns<LabToRgb8uBlock, LabToRgb8uTail, 4>>(pSrc, srcStep, pDst, dstStep, roiSize);
}
PxkResult pxkiLabToBGR_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                              PxkSize roiSize) {
    return convertPackedC3<MemberColumns<LabToRgb8uBlock, LabToRgb8uTail, 4, false, true>>(pSrc, srcStep, pDst,
                                                                                          dstStep, roiSize);
}
PxkResult pxkiLabToBGR_16u8u_C3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                 PxkSize roiSize) {
    return convertRows(pSrc, srcStep, pDst, dstStep, roiSize, labToRgb8uRow<Order::Bgr, Lab16uCodes, uint16_t>);
}
PxkResult pxkiLabToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize) {
    return convertRows(pSrc, srcStep, pDst, dstStep, roiSize, labToRgbFloatRow<Order::Rgb>);
}
PxkResult pxkiLabToBGR_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize) {
    return convertRows(pSrc, srcStep, pDst, dstStep, roiSize, labToRgbFloatRow<Order::Bgr>);
}

}  // extern "C"
