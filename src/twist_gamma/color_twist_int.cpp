// The colour twist of integer pixels (8u, 16u, 16s): samples converted to float, the
// three-channel sum, the clamp to the type's range (a NaN gives the upper bound), and
// conversion to nearest with ties to even. The rounding field of the control register
// is set to nearest for the row loop and put back (twist_rounding.h). AC4 forms leave
// the fourth sample of every destination pixel as it was. The 8u members go in blocks
// of 16 pixels through the frame's layouts, the 16-bit ones in groups of four; every
// path gives a pixel the same bits.
#include "pxkcc.h"

#include "twist_gamma/twist_blocks8u.h"
#include "twist_gamma/twist_region.h"

using namespace pxk;
using namespace pxk::twist;

namespace {

// 8u: blocks of 16 pixels a lane through the frame's layouts, then single pixels.
template <class In, class Out>
void twist8u(PxkSize size, const In& in, int32_t inStep, const Out& out, int32_t outStep, const float* twist) {
    const Matrix<3> m = matrixOf<3>(twist);
    withNearestRounding([&] { twistRegion8u(size, planeRows(in, inStep), planeRows(out, outStep), m); });
}

PlanarP3In planesIn(const uint8_t* const p[3]) { return PlanarP3In{{p[0], p[1], p[2]}}; }
PlanarP3Out planesOut(uint8_t* const p[3]) { return PlanarP3Out{{p[0], p[1], p[2]}}; }

}  // namespace

// The 16-bit members: each export names its sample type and its form; T is the
// sample, S the sample type of the kernels.
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

// An 8u packed form out of place and in place, by its layouts.
#define PXK_TWIST_8U_PACKED(form, In, Out)                                                                         \
    PxkResult pxkiColorTwist32f_8u_##form##R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, \
                                             PxkSize roiSize, const float twist[12]) {                            \
        PXK_CHECK(checkPacked(pSrc, srcStep, pDst, dstStep, roiSize, twist));                                     \
        twist8u(roiSize, In{{pSrc}}, srcStep, Out{{pDst}}, dstStep, twist);                                       \
        return pxkOk;                                                                                             \
    }                                                                                                             \
    PxkResult pxkiColorTwist32f_8u_##form##IR(uint8_t* pSrcDst, int32_t srcDstStep, PxkSize roiSize,              \
                                              const float twist[12]) {                                            \
        PXK_CHECK(checkInPlace(pSrcDst, srcDstStep, roiSize, twist));                                             \
        twist8u(roiSize, In{{pSrcDst}}, srcDstStep, Out{{pSrcDst}}, srcDstStep, twist);                           \
        return pxkOk;                                                                                             \
    }

extern "C" {

PXK_TWIST_8U_PACKED(C3, PackedC3In, PackedC3Out)
PXK_TWIST_8U_PACKED(AC4, PackedC4In, PackedAC4KeepOut)
PxkResult pxkiColorTwist32f_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3],
                                   int32_t dstStep, PxkSize roiSize, const float twist[12]) {
    PXK_CHECK(checkPlanar(pSrc, srcStep, pDst, dstStep, roiSize, twist));
    twist8u(roiSize, planesIn(pSrc), srcStep, planesOut(pDst), dstStep, twist);
    return pxkOk;
}
PxkResult pxkiColorTwist32f_8u_IP3R(uint8_t* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize,
                                    const float twist[12]) {
    PXK_CHECK(checkPlanarInPlace(pSrcDst, srcDstStep, roiSize, twist));
    twist8u(roiSize, planesIn(pSrcDst), srcDstStep, planesOut(pSrcDst), srcDstStep, twist);
    return pxkOk;
}

PXK_TWIST_INT_MEMBERS(16u, uint16_t, Samples16u)
PXK_TWIST_INT_MEMBERS(16s, int16_t, Samples16s)

}  // extern "C"
