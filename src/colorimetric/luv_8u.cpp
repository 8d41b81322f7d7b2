// RGB and BGR <-> LUV, 8-bit, interleaved. Forward: every column by the same
// arithmetic (a double cube root per pixel above the linear foot), blocks of eight or
// sixteen pixels in float lanes, the scalar twin past the last whole block. Inverse:
// float blocks over width & ~7 with the refined reciprocal, the tail for the rest with
// the cube worked in double. Steps are not tested; AC4 destinations keep their alpha
// bytes.
#include "pxkcc.h"

#include "colorimetric/luv_members.h"
#include "colorimetric/packed_members.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_PACKED_C3_AC4_MEMBERS(pxkiRGBToLUV_8u, luv::Forward8uBlock, luv::Forward8u, 8, 8)

PxkResult pxkiBGRToLUV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    return convertPackedC3<MemberColumns<luv::Forward8uBlock, luv::Forward8u, 8, true>>(pSrc, srcStep, pDst, dstStep,
                                                                                      roiSize);
}

PXK_PACKED_C3_AC4_MEMBERS(pxkiLUVToRGB_8u, luv::FromLuv8uBlock, luv::FromLuv8uTail, 8, 8)

PxkResult pxkiLUVToBGR_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    return convertPackedC3<MemberColumns<luv::FromLuv8uBlock, luv::FromLuv8uTail, 8, false, true>>(pSrc, srcStep, pDst,
                                                                                                  dstStep, roiSize);
}

}  // extern "C"
