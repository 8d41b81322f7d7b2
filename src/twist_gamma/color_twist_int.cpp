// The colour twist of integer pixels (8u, 16u, 16s): samples converted to float, the
// three-channel sum, the clamp to the type's range (a NaN gives the upper bound), and
// conversion to nearest with ties to even. The rounding field of the control register
// is set to nearest for the row loop and put back (twist_rounding.h). AC4 forms leave
// the fourth sample of every destination pixel as it was.
#include "pxkcc.h"

#include "twist_gamma/twist_region.h"

using namespace pxk;
using namespace pxk::twist;

// Each export names its sample type and its form; T is the sample, S the sample type
// of the kernels.
#define PXK_TWIST_INT_MEMBERS(type, T, S)                                                                          \
    PxkResult pxkiColorTwist32f_##type##_C3R(const T* pSrc, int32_t srcStep, T* pDst, int32_t dstStep,           \
                                             PxkSize roiSize, const float twist[12]) {                            \
        return twistPacked<NearestRounding, T, twistRowC3<S>>(pSrc, srcStep, pDst, dstStep, roiSize, twist);      \
    }                                                                                                             \
    PxkResult pxkiColorTwist32f_##type##_C3IR(T* pSrcDst, int32_t srcDstStep, PxkSize roiSize,                    \
                                              const float twist[12]) {                                            \
        return twistPackedInPlace<NearestRounding, T, twistRowC3<S>>(pSrcDst, srcDstStep, roiSize, twist);       \
    }                                                                                                             \
    PxkResult pxkiColorTwist32f_##type##_AC4R(const T* pSrc, int32_t srcStep, T* pDst, int32_t dstStep,          \
                                              PxkSize roiSize, const float twist[12]) {                           \
        return twistPacked<NearestRounding, T, twistRowAC4<S>>(pSrc, srcStep, pDst, dstStep, roiSize, twist);     \
    }                                                                                                             \
    PxkResult pxkiColorTwist32f_##type##_AC4IR(T* pSrcDst, int32_t srcDstStep, PxkSize roiSize,                   \
                                               const float twist[12]) {                                           \
        return twistPackedInPlace<NearestRounding, T, twistRowAC4<S>>(pSrcDst, srcDstStep, roiSize, twist);      \
    }                                                                                                             \
    PxkResult pxkiColorTwist32f_##type##_P3R(const T* const pSrc[3], int32_t srcStep, T* const pDst[3],           \
                                             int32_t dstStep, PxkSize roiSize, const float twist[12]) {           \
        return twistPlanes<NearestRounding, S>(pSrc, srcStep, pDst, dstStep, roiSize, twist);                     \
    }                                                                                                             \
    PxkResult pxkiColorTwist32f_##type##_IP3R(T* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize,           \
                                              const float twist[12]) {                                            \
        return twistPlanesInPlace<NearestRounding, S>(pSrcDst, srcDstStep, roiSize, twist);                       \
    }

extern "C" {

PXK_TWIST_INT_MEMBERS(8u, uint8_t, Samples8u)
PXK_TWIST_INT_MEMBERS(16u, uint16_t, Samples16u)
PXK_TWIST_INT_MEMBERS(16s, int16_t, Samples16s)

}  // extern "C"
