// Changes of layout at one chroma sampling: packed Y0 C Y1 C pairs, three planes, and
// a luma plane beside a plane of chroma pairs. Luma rows between planes go through
// the row copier; everything else is one of the byte-move kernels.
#include "pxkcc.h"

#include "chroma/byte_moves.h"
#include "chroma/chroma_rows.h"
#include "chroma/row_copier.h"
#include "frame/checks.h"

using namespace pxk;
using namespace pxk::chroma;

namespace {

// Packed 4:2:2 rows into planes Y, then the planes that take the first and the
// second chroma byte of each pair.
void packedToPlanes(const uint8_t* src, int32_t srcStep, uint8_t* y, int32_t yStep, uint8_t* first,
                    int32_t firstStep, uint8_t* second, int32_t secondStep, PxkSize size) {
    eachRow(
        size.height,
        [&](const uint8_t* s, uint8_t* py, uint8_t* p1, uint8_t* p2) {
            unzipPackedPairs<0, PackedChroma::AllPairs>(s, py, p1, p2, size.width / 2);
        },
        rows(src, srcStep), rows(y, yStep), rows(first, firstStep), rows(second, secondStep));
}

// Planes Y, then the planes of the first and the second chroma byte of each packed
// pair, into packed 4:2:2 rows (non-temporal stores by the region rule).
void planesToPacked(const uint8_t* y, int32_t yStep, const uint8_t* first, int32_t firstStep, const uint8_t* second,
                    int32_t secondStep, uint8_t* dst, int32_t dstStep, PxkSize size) {
    const bool stream = streamsRegion({yStep, firstStep, secondStep, dstStep}, size.height, {dst}, {dstStep});
    withStores(stream, [&](auto stores) {
        using Stores = decltype(stores);
        eachRow(
            size.height,
            [&](const uint8_t* py, const uint8_t* p1, const uint8_t* p2, uint8_t* d) {
                zipPackedPairs<0, Stores>(py, p1, p2, d, size.width / 2);
            },
            rows(y, yStep), rows(first, firstStep), rows(second, secondStep), rows(dst, dstStep));
    });
}

// A plane of chroma pairs into two planes (first byte, second byte), `count` rows of
// `pairs` pairs.
void pairsToPlanes(const uint8_t* src, int32_t srcStep, uint8_t* first, int32_t firstStep, uint8_t* second,
                   int32_t secondStep, int32_t pairs, int32_t count) {
    eachRow(
        count, [&](const uint8_t* s, uint8_t* a, uint8_t* b) { unzipPairs(s, a, b, pairs); }, rows(src, srcStep),
        rows(first, firstStep), rows(second, secondStep));
}

// Two planes into a plane of pairs (first byte from `first`).
void planesToPairs(const uint8_t* first, int32_t firstStep, const uint8_t* second, int32_t secondStep, uint8_t* dst,
                   int32_t dstStep, int32_t pairs, int32_t count) {
    eachRow(
        count, [&](const uint8_t* a, const uint8_t* b, uint8_t* d) { zipPairs(a, b, d, pairs); },
        rows(first, firstStep), rows(second, secondStep), rows(dst, dstStep));
}

// Y plane and a plane of pairs into three planes, chroma `chromaShift` (1 or 2) times
// narrower than luma and `chromaRows` rows high; bytes of a pair go to dst[1], dst[2].
void lumaAndPairsToPlanes(const uint8_t* srcY, int32_t srcYStep, const uint8_t* srcPairs, int32_t srcPairsStep,
                          uint8_t* const dst[3], const int32_t dstStep[3], PxkSize size, int chromaShift,
                          int32_t chromaRows) {
    copyRows(srcY, srcYStep, dst[0], dstStep[0], static_cast<std::size_t>(size.width), size.height, false);
    pairsToPlanes(srcPairs, srcPairsStep, dst[1], dstStep[1], dst[2], dstStep[2], size.width >> chromaShift,
                  chromaRows);
}

// Three planes (Y, then the planes of the first and second byte of each pair) into a
// Y plane and a plane of pairs.
void planesToLumaAndPairs(const uint8_t* y, int32_t yStep, const uint8_t* first, int32_t firstStep,
                          const uint8_t* second, int32_t secondStep, uint8_t* dstY, int32_t dstYStep,
                          uint8_t* dstPairs, int32_t dstPairsStep, PxkSize size, int chromaShift, int32_t chromaRows,
                          bool streamLuma) {
    copyRows(y, yStep, dstY, dstYStep, static_cast<std::size_t>(size.width), size.height, streamLuma);
    planesToPairs(first, firstStep, second, secondStep, dstPairs, dstPairsStep, size.width >> chromaShift,
                  chromaRows);
}

// The checks of a packed source into planes: pointers (the step array only where
// tested), then the size.
PxkResult checkPackedToPlanes(const uint8_t* src, uint8_t* const* dst, const int32_t* dstStep, bool testDstStep,
                              PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkPlanes(dst, 3));
    if (testDstStep) PXK_CHECK(checkPtrs(dstStep));
    return checkSize(size, 2, 1);
}

PxkResult checkPlanesToPacked(const uint8_t* const* src, const int32_t* srcStep, const uint8_t* dst, PxkSize size,
                              int32_t minHeight) {
    PXK_CHECK(checkPtrs(src));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkPtrs(srcStep, dst));
    return checkSize(size, 2, minHeight);
}

PxkResult checkPairsToPlanes(const uint8_t* srcY, const uint8_t* srcPairs, uint8_t* const* dst, bool testDstArray,
                             const int32_t* dstStep, PxkSize size, int32_t minWidth, int32_t minHeight) {
    PXK_CHECK(checkPtrs(srcY, srcPairs));
    if (testDstArray) PXK_CHECK(checkPtrs(dst));
    PXK_CHECK(checkPlanes(dst, 3));
    PXK_CHECK(checkPtrs(dstStep));
    return checkSize(size, minWidth, minHeight);
}

PxkResult checkPlanesToPairs(const uint8_t* const* src, const int32_t* srcStep, const uint8_t* dstY,
                             const uint8_t* dstPairs, PxkSize size, int32_t minWidth, int32_t minHeight) {
    PXK_CHECK(checkPtrs(src));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkPtrs(srcStep, dstY, dstPairs));
    return checkSize(size, minWidth, minHeight);
}

// The members without a height test convert nothing for a height of 0 or below.
constexpr int32_t kNoHeightTest = INT32_MIN;

// 4:2:0 P2 to P3 without any exchange of the chroma bytes: byte 0 of each pair into
// dst[1], byte 1 into dst[2], whatever the target's name says.
PxkResult pairs420ToPlanes(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                           uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPairsToPlanes(pSrcY, pSrcCbCr, pDst, true, dstStep, roiSize, 2, 2));
    const PxkSize size{cutTo(roiSize.width, 2), cutTo(roiSize.height, 2)};
    lumaAndPairsToPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, size, 1, size.height / 2);
    return pxkOk;
}

// 4:2:0 P3 to P2: `firstPlane` (1 or 2) gives byte 0 of each pair.
PxkResult planes420ToPairs(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY, int32_t dstYStep,
                           uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize, int firstPlane) {
    PXK_CHECK(checkPlanesToPairs(pSrc, srcStep, pDstY, pDstCbCr, roiSize, 2, 2));
    const PxkSize size{cutTo(roiSize.width, 2), cutTo(roiSize.height, 2)};
    const int secondPlane = 3 - firstPlane;
    planesToLumaAndPairs(pSrc[0], srcStep[0], pSrc[firstPlane], srcStep[firstPlane], pSrc[secondPlane],
                         srcStep[secondPlane], pDstY, dstYStep, pDstCbCr, dstCbCrStep, size, 1, size.height / 2,
                         false);
    return pxkOk;
}

// 4:2:2 planes into packed pairs; `firstPlane` gives the first chroma byte of each.
PxkResult planes422ToPacked(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst, int32_t dstStep,
                            PxkSize roiSize, int32_t minHeight, int firstPlane) {
    PXK_CHECK(checkPlanesToPacked(pSrc, srcStep, pDst, roiSize, minHeight));
    const PxkSize size{cutTo(roiSize.width, 2), roiSize.height};
    const int secondPlane = 3 - firstPlane;
    planesToPacked(pSrc[0], srcStep[0], pSrc[firstPlane], srcStep[firstPlane], pSrc[secondPlane], srcStep[secondPlane],
                   pDst, dstStep, size);
    return pxkOk;
}

}  // namespace

extern "C" {

// One kernel serves both alignments here: the aligned and the unaligned one write the
// same bytes in this member.
PxkResult pxkiYCbCr422_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPackedToPlanes(pSrc, pDst, dstStep, true, roiSize));
    const PxkSize size{cutTo(roiSize.width, 2), roiSize.height};
    packedToPlanes(pSrc, srcStep, pDst[0], dstStep[0], pDst[1], dstStep[1], pDst[2], dstStep[2], size);
    return pxkOk;
}

PxkResult pxkiYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                int32_t dstStep, PxkSize roiSize) {
    return planes422ToPacked(pSrc, srcStep, pDst, dstStep, roiSize, 1, 1);
}

// Two kernels: the aligned one (source, dst[0] and both of their steps multiples of
// 16, bits 1 to 3 of the width clear) takes byte 1 of each pair into dst[1] and byte
// 3 into dst[2], without exchanging them; the other exchanges them. dstStep itself is
// not tested.
PxkResult pxkiYCrCb422ToYCbCr422_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPackedToPlanes(pSrc, pDst, dstStep, false, roiSize));
    const bool aligned = reinterpret_cast<std::uintptr_t>(pSrc) % 16 == 0 &&
                         reinterpret_cast<std::uintptr_t>(pDst[0]) % 16 == 0 && srcStep % 16 == 0 &&
                         dstStep[0] % 16 == 0 && (roiSize.width & 0xE) == 0;
    const PxkSize size{cutTo(roiSize.width, 2), roiSize.height};
    const int first = aligned ? 1 : 2;
    packedToPlanes(pSrc, srcStep, pDst[0], dstStep[0], pDst[first], dstStep[first], pDst[3 - first],
                   dstStep[3 - first], size);
    return pxkOk;
}

// No height test; non-temporal stores by the region rule.
PxkResult pxkiYCbCr422ToYCrCb422_8u_C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 2, kNoHeightTest));
    const int32_t pairs = roiSize.width / 2;
    withStores(streamsRegion({srcStep, dstStep}, roiSize.height, {pDst}, {dstStep}), [&](auto stores) {
        using Stores = decltype(stores);
        eachRow(
            roiSize.height,
            [&](const uint8_t* s, uint8_t* d) { reorderPackedPairs<QuadOrder::SwapOdd, Stores>(s, d, pairs); },
            rows(pSrc, srcStep), rows(pDst, dstStep));
    });
    return pxkOk;
}

// No height test; non-temporal stores by the region rule.
PxkResult pxkiYCbCr422ToYCrCb422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                          int32_t dstStep, PxkSize roiSize) {
    return planes422ToPacked(pSrc, srcStep, pDst, dstStep, roiSize, kNoHeightTest, 2);
}

PxkResult pxkiYCbCr420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize) {
    return pairs420ToPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    return planes420ToPairs(pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize, 1);
}

// Deliberately no exchange: byte 0 of each pair goes to dst[1], byte 1 to dst[2].
PxkResult pxkiYCbCr420ToYCrCb420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                          PxkSize roiSize) {
    return pairs420ToPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

PxkResult pxkiYCrCb420ToYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                          int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                          PxkSize roiSize) {
    return planes420ToPairs(pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize, 2);
}

// No height test. The dst array pointer is not tested, only its three entries.
PxkResult pxkiYCbCr411_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPairsToPlanes(pSrcY, pSrcCbCr, pDst, false, dstStep, roiSize, 4, kNoHeightTest));
    const PxkSize size{cutTo(roiSize.width, 4), roiSize.height};
    lumaAndPairsToPlanes(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, size, 2, size.height);
    return pxkOk;
}

// No height test. Luma rows stream when the cut region holds more than 348602 pixels.
PxkResult pxkiYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    PXK_CHECK(checkPlanesToPairs(pSrc, srcStep, pDstY, pDstCbCr, roiSize, 4, kNoHeightTest));
    const PxkSize size{cutTo(roiSize.width, 4), roiSize.height};
    const bool stream = size.height > 0 && int64_t{size.width} * size.height > 348602;
    planesToLumaAndPairs(pSrc[0], srcStep[0], pSrc[1], srcStep[1], pSrc[2], srcStep[2], pDstY, dstYStep, pDstCbCr,
                         dstCbCrStep, size, 2, size.height, stream);
    return pxkOk;
}

}  // extern "C"
