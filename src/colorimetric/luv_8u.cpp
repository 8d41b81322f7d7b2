// RGB and BGR <-> LUV, 8-bit, interleaved. Forward: one pixel at a time (a double
// cube root per pixel above the linear foot), every column alike. Inverse: float
// blocks over width & ~7 with the refined reciprocal, the tail for the rest with the
// cube worked in double. Steps are not tested; AC4 destinations keep their alpha
// bytes.
#include "pxkcc.h"

#include <utility>

#include "colorimetric/luv_members.h"
#include "colorimetric/packed_members.h"
#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/pixel_block.h"

namespace pxk {
namespace colorimetric {
namespace {

// The scalar forward walk over packed pixels of Bytes bytes (3 or 4; a fourth byte is
// neither read nor written), with the first and third source channels exchanged for
// BGR.
template <int Bytes, bool Bgr>
PxkResult forward8u(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(size, 1, 1));
    driveRows(
        size.width, size.height,
        [](int32_t width, const uint8_t* s, uint8_t* d) {
            for (int32_t x = 0; x < width; ++x) {
                Pixel3 p = readPacked<Bytes>(s, x);
                if (Bgr) std::swap(p.c[0], p.c[2]);
                writePacked<Bytes>(d, x, luv::Forward8u::apply(p));
            }
        },
        rows(pSrc, srcStep), rows(pDst, dstStep));
    return pxkOk;
}

}  // namespace
}  // namespace colorimetric
}  // namespace pxk

using namespace pxk::colorimetric;

extern "C" {

PxkResult pxkiRGBToLUV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    return forward8u<3, false>(pSrc, srcStep, pDst, dstStep, roiSize);
}
PxkResult pxkiRGBToLUV_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    return forward8u<4, false>(pSrc, srcStep, pDst, dstStep, roiSize);
}
PxkResult pxkiBGRToLUV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    return forward8u<3, true>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PXK_PACKED_C3_AC4_MEMBERS(pxkiLUVToRGB_8u, luv::FromLuv8uBlock, luv::FromLuv8uTail, 8, 8)

PxkResult pxkiLUVToBGR_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    return convertPackedC3<MemberColumns<luv::FromLuv8uBlock, luv::FromLuv8uTail, 8, false, true>>(pSrc, srcStep, pDst,
                                                                                                  dstStep, roiSize);
}

}  // extern "C"
