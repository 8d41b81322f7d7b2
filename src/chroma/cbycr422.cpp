// CbYCr422 (Cb Y0 Cr Y1) to and from the other YCbCr layouts: byte moves only. The two
// packed-to-packed members exchange the bytes of each pair; the others share the walk
// of the sampling conversions.
#include "pxkcc.h"

#include "chroma/byte_moves.h"
#include "chroma/chroma_rows.h"
#include "chroma/sampling_members.h"
#include "frame/checks.h"

using namespace pxk;
using namespace pxk::chroma;

namespace {

// Packed pairs with the two bytes of each half exchanged (Cb Y0 Cr Y1 <-> Y0 Cb Y1 Cr).
PxkResult exchangeHalves(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 2, 1));
    const int32_t pairs = size.width / 2;
    eachRow(
        size.height, [&](const uint8_t* s, uint8_t* d) { reorderPackedPairs<QuadOrder::SwapPairs>(s, d, pairs); },
        rows(src, srcStep), rows(dst, dstStep));
    return pxkOk;
}

}  // namespace

extern "C" {

PxkResult pxkiCbYCr422ToYCbCr422_8u_C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        PxkSize roiSize) {
    return exchangeHalves(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToCbYCr422_8u_C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        PxkSize roiSize) {
    return exchangeHalves(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiCbYCr422ToYCbCr422_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedCbYCr, Sampling::S422, kPlanesCbCr, 2, 2, 1};
    return packedToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToCbYCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                          int32_t dstStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPlanesCbCr, Sampling::S422, kPackedCbYCr, 2, 2, 1};
    return planesToPacked(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiCbYCr422ToYCbCr420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedCbYCr, Sampling::S420, kPlanesCbCr, 2, 2, 2};
    return packedToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiCbYCr422ToYCbCr420_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                          uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedCbYCr, Sampling::S420, kPairsCbCr, 2, 2, 2};
    return packedToPairs(kMember, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxkResult pxkiCbYCr422ToYCrCb420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedCbYCr, Sampling::S420, kPlanesCrCb, 2, 2, 2};
    return packedToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiCbYCr422ToYCbCr411_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedCbYCr, Sampling::S411, kPlanesCbCr, 4, 4, kNoHeightTest};
    return packedToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToCbYCr422_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S420, kPairsCbCr, Sampling::S422, kPackedCbYCr, 2, 2, 2};
    return pairsToPacked(kMember, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCrCb420ToCbYCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                          int32_t dstStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S420, kPlanesCrCb, Sampling::S422, kPackedCbYCr, 2, 2, 2};
    return planesToPacked(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

}  // extern "C"
