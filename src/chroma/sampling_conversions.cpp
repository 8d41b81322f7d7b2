// Conversions between 4:2:2, 4:2:0 and 4:1:1 that only move bytes: rows or columns of
// chroma dropped or repeated, and 4:2:0 and 4:1:1 woven into each other. Each export
// is its member's description, handed to the entry point of its argument shape.
#include "pxkcc.h"

#include "chroma/sampling_members.h"

using namespace pxk::chroma;

extern "C" {

PxkResult pxkiYCbCr422ToYCbCr420_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                          uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedYCbCr, Sampling::S420, kPairsCbCr, 2, 2, 2};
    return packedToPairs(kMember, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxkResult pxkiYCbCr422ToYCbCr420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedYCbCr, Sampling::S420, kPlanesCbCr, 2, 2, 2};
    return packedToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                          int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPlanesCbCr, Sampling::S420, kPairsCbCr, 2, 2, 2};
    return planesToPairs(kMember, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

// Luma rows stream above 348602 pixels; chroma rows never.
PxkResult pxkiYCbCr422ToYCbCr420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                        const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422,        kPlanesCbCr, Sampling::S420, kPlanesCbCr, 2, 2, 2,
                                    Streaming::LumaCopies, 348602};
    return planesToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToYCrCb420_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                          uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedYCbCr, Sampling::S420, kPairsCrCb, 2, 2, 2};
    return packedToPairs(kMember, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxkResult pxkiYCbCr422ToYCrCb420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedYCbCr, Sampling::S420, kPlanesCrCb, 2, 2, 2};
    return packedToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCrCb422ToYCbCr420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedYCrCb, Sampling::S420, kPlanesCbCr, 2, 2, 2};
    return packedToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToYCbCr422_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S420, kPairsCbCr, Sampling::S422, kPackedYCbCr, 2, 2, 2};
    return pairsToPacked(kMember, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToYCbCr422_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                          PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S420, kPairsCbCr, Sampling::S422, kPlanesCbCr, 2, 2, 2};
    return pairsToPlanes(kMember, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToYCbCr422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                        const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S420, kPlanesCbCr, Sampling::S422, kPlanesCbCr, 2, 2, 2};
    return planesToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCrCb420ToYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                          int32_t dstStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S420, kPlanesCrCb, Sampling::S422, kPackedYCbCr, 2, 2, 2};
    return planesToPacked(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCrCb420ToYCbCr422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                        const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S420, kPlanesCrCb, Sampling::S422, kPlanesCbCr, 2, 2, 2};
    return planesToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

// Own non-temporal stores when (3 w + w/2) h > 1572864 and the destination is aligned.
PxkResult pxkiYCbCr422ToYCbCr411_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                          uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    static constexpr Member kMember{
        Sampling::S422, kPackedYCbCr, Sampling::S411, kPairsCbCr, 4, 4, kNoHeightTest, Streaming::WholeImage, 0};
    return packedToPairs(kMember, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxkResult pxkiYCbCr422ToYCbCr411_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedYCbCr, Sampling::S411, kPlanesCbCr, 4, 4, 1};
    return packedToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr422ToYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                          int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPlanesCbCr, Sampling::S411, kPairsCbCr, 4, 4, kNoHeightTest};
    return planesToPairs(kMember, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

// Luma rows stream above 524288 pixels.
PxkResult pxkiYCbCr422ToYCbCr411_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                        const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPlanesCbCr,           Sampling::S411, kPlanesCbCr, 4, 4,
                                    kNoHeightTest,  Streaming::LumaCopies, 524288};
    return planesToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCrCb422ToYCbCr411_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S422, kPackedYCrCb, Sampling::S411, kPlanesCbCr, 4, 4, kNoHeightTest};
    return packedToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

// Own non-temporal stores by the region rule.
PxkResult pxkiYCbCr411ToYCbCr422_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S411,    kPairsCbCr, Sampling::S422, kPackedYCbCr, 4, 4, kNoHeightTest,
                                    Streaming::Region, 0};
    return pairsToPacked(kMember, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

// Luma rows stream above 348602 pixels; the dst array pointer is not tested.
PxkResult pxkiYCbCr411ToYCbCr422_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                          PxkSize roiSize) {
    static constexpr Member kMember{
        Sampling::S411, kPairsCbCr, Sampling::S422, kPlanesCbCr, 4, 4, kNoHeightTest, Streaming::LumaCopies,
        348602,         true};
    return pairsToPlanes(kMember, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

// Own non-temporal stores by the region rule.
PxkResult pxkiYCbCr411ToYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                          int32_t dstStep, PxkSize roiSize) {
    static constexpr Member kMember{
        Sampling::S411, kPlanesCbCr, Sampling::S422, kPackedYCbCr, 4, 4, kNoHeightTest, Streaming::Region, 0};
    return planesToPacked(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr411ToYCbCr422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                        const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S411, kPlanesCbCr, Sampling::S422, kPlanesCbCr, 4, 4, kNoHeightTest};
    return planesToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

// Own non-temporal stores by the region rule.
PxkResult pxkiYCbCr411ToYCrCb422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                          int32_t dstStep, PxkSize roiSize) {
    static constexpr Member kMember{
        Sampling::S411, kPlanesCbCr, Sampling::S422, kPackedYCrCb, 4, 4, kNoHeightTest, Streaming::Region, 0};
    return planesToPacked(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr411ToYCrCb422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                        const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S411, kPlanesCbCr, Sampling::S422, kPlanesCrCb, 4, 4, kNoHeightTest};
    return planesToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToYCbCr411_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                          PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S420, kPairsCbCr, Sampling::S411, kPlanesCbCr, 4, 4, 2};
    return pairsToPlanes(kMember, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr420ToYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                          int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S420, kPlanesCbCr, Sampling::S411, kPairsCbCr, 4, 4, 2};
    return planesToPairs(kMember, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxkResult pxkiYCrCb420ToYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                          int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S420, kPlanesCrCb, Sampling::S411, kPairsCbCr, 4, 4, 2};
    return planesToPairs(kMember, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

// The dst array pointer is not tested.
PxkResult pxkiYCbCr411ToYCbCr420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                          PxkSize roiSize) {
    static constexpr Member kMember{
        Sampling::S411, kPairsCbCr, Sampling::S420, kPlanesCbCr, 4, 4, 2, Streaming::None, 0, true};
    return pairsToPlanes(kMember, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

// Luma rows stream above 348602 pixels.
PxkResult pxkiYCbCr411ToYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                          int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S411,        kPlanesCbCr, Sampling::S420, kPairsCbCr, 4, 4, 2,
                                    Streaming::LumaCopies, 348602};
    return planesToPairs(kMember, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxkResult pxkiYCbCr411ToYCbCr420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                        const int32_t dstStep[3], PxkSize roiSize) {
    static constexpr Member kMember{Sampling::S411, kPlanesCbCr, Sampling::S420, kPlanesCbCr, 4, 4, 2};
    return planesToPlanes(kMember, pSrc, srcStep, pDst, dstStep, roiSize);
}

// The dst array pointer is not tested.
PxkResult pxkiYCbCr411ToYCrCb420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                          PxkSize roiSize) {
    static constexpr Member kMember{
        Sampling::S411, kPairsCbCr, Sampling::S420, kPlanesCrCb, 4, 4, 2, Streaming::None, 0, true};
    return pairsToPlanes(kMember, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

}  // extern "C"
