// RGB and BGR <-> LUV, 32-bit floats, interleaved: forward by the block form over
// width & ~3 and the tail form for the rest; inverse by one form. Steps have their
// low two bits cleared and are not tested; AC4 destinations keep their fourth sample.
#include "pxkcc.h"

#include "colorimetric/luv_members.h"

using namespace pxk::colorimetric;

#define PXK_LUV_32F_MEMBER(name, ...)                                                                    \
    PxkResult name(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize) { \
        return convertSamples<luv::__VA_ARGS__>(pSrc, srcStep, pDst, dstStep, roiSize);                  \
    }

extern "C" {

PXK_LUV_32F_MEMBER(pxkiRGBToLUV_32f_C3R, ToLuv32f<false, 3>)
PXK_LUV_32F_MEMBER(pxkiRGBToLUV_32f_AC4R, ToLuv32f<false, 4>)
PXK_LUV_32F_MEMBER(pxkiBGRToLUV_32f_C3R, ToLuv32f<true, 3>)
PXK_LUV_32F_MEMBER(pxkiLUVToRGB_32f_C3R, FromLuv32f<false, 3>)
PXK_LUV_32F_MEMBER(pxkiLUVToRGB_32f_AC4R, FromLuv32f<false, 4>)
PXK_LUV_32F_MEMBER(pxkiLUVToBGR_32f_C3R, FromLuv32f<true, 3>)

}  // extern "C"
