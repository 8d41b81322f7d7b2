// RGB <-> LUV, 16-bit unsigned and signed samples (signed ones plus 32768), interleaved:
// the block forms over width & ~3, the tails for the rest (see luv_members.h for the
// conversions of each). Steps have their low bit cleared and are not tested; AC4
// destinations keep their fourth sample.
#include "pxkcc.h"

#include "colorimetric/luv_members.h"

using namespace pxk::colorimetric;

#define PXK_LUV_16_MEMBER(name, T, ...)                                                           \
    PxkResult name(const T* pSrc, int32_t srcStep, T* pDst, int32_t dstStep, PxkSize roiSize) { \
        return convertSamples<luv::__VA_ARGS__>(pSrc, srcStep, pDst, dstStep, roiSize);          \
    }

extern "C" {

PXK_LUV_16_MEMBER(pxkiRGBToLUV_16u_C3R, uint16_t, ToLuv16<uint16_t, false, 3>)
PXK_LUV_16_MEMBER(pxkiRGBToLUV_16u_AC4R, uint16_t, ToLuv16<uint16_t, false, 4>)
PXK_LUV_16_MEMBER(pxkiRGBToLUV_16s_C3R, int16_t, ToLuv16<int16_t, false, 3>)
PXK_LUV_16_MEMBER(pxkiRGBToLUV_16s_AC4R, int16_t, ToLuv16<int16_t, false, 4>)
PXK_LUV_16_MEMBER(pxkiLUVToRGB_16u_C3R, uint16_t, FromLuv16<uint16_t, false, 3>)
PXK_LUV_16_MEMBER(pxkiLUVToRGB_16u_AC4R, uint16_t, FromLuv16<uint16_t, false, 4>)
PXK_LUV_16_MEMBER(pxkiLUVToRGB_16s_C3R, int16_t, FromLuv16<int16_t, false, 3>)
PXK_LUV_16_MEMBER(pxkiLUVToRGB_16s_AC4R, int16_t, FromLuv16<int16_t, false, 4>)

}  // extern "C"
