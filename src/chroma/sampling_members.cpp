#include "chroma/sampling_members.h"

#include <initializer_list>

#include "chroma/chroma_rows.h"
#include "frame/checks.h"

namespace pxk {
namespace chroma {

namespace {

// The region after the cuts: the width to whole groups, the height to even where
// either side is 4:2:0.
PxkSize cut(const Member& m, PxkSize size) {
    const bool evenHeight = m.from == Sampling::S420 || m.to == Sampling::S420;
    return PxkSize{cutTo(size.width, m.group), evenHeight ? cutTo(size.height, 2) : size.height};
}

bool aligned16(std::initializer_list<const void*> pointers, std::initializer_list<int32_t> steps) {
    for (const void* p : pointers) {
        if (reinterpret_cast<std::uintptr_t>(p) % 16 != 0) return false;
    }
    for (int32_t s : steps) {
        if (s % 16 != 0) return false;
    }
    return true;
}

// The stores of a call; `allSteps` are the row steps of both sides, `dstPointers`
// and `dstSteps` those of the destination.
Stores storesFor(const Member& m, PxkSize size, std::initializer_list<int32_t> allSteps,
                 std::initializer_list<const void*> dstPointers, std::initializer_list<int32_t> dstSteps) {
    Stores s;
    switch (m.streaming) {
        case Streaming::None:
            break;
        case Streaming::LumaCopies:
            s.streamLumaCopies = int64_t{size.width} * size.height > m.limit;
            break;
        case Streaming::Region:
            s.streamOwnStores = streamsRegion(allSteps, size.height, dstPointers, dstSteps);
            break;
        case Streaming::WholeImage: {
            const int64_t w = size.width;
            s.streamOwnStores = (3 * w + w / 2) * size.height > 1572864 && aligned16(dstPointers, dstSteps);
            break;
        }
    }
    return s;
}

Side packed(const uint8_t* p, int32_t step, const Order& o) { return packedSide(p, step, o.lumaByte, o.cbAt, o.crAt); }

}  // namespace

PxkResult packedToPairs(const Member& m, const uint8_t* src, int32_t srcStep, uint8_t* dstY, int32_t dstYStep,
                        uint8_t* dstCbCr, int32_t dstCbCrStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dstY, dstCbCr));
    PXK_CHECK(checkSize(size, m.minWidth, m.minHeight));
    const PxkSize c = cut(m, size);
    const Stores st = storesFor(m, c, {srcStep, dstYStep, dstCbCrStep}, {dstY, dstCbCr}, {dstYStep, dstCbCrStep});
    convertSampling(packed(src, srcStep, m.src), pairsSide(m.to, dstY, dstYStep, dstCbCr, dstCbCrStep, m.dst.cbAt),
                    c.width, c.height, st);
    return pxkOk;
}

PxkResult packedToPlanes(const Member& m, const uint8_t* src, int32_t srcStep, uint8_t* const dst[3],
                         const int32_t dstStep[3], PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkPlanes(dst, 3));
    PXK_CHECK(checkPtrs(dstStep));
    PXK_CHECK(checkSize(size, m.minWidth, m.minHeight));
    const PxkSize c = cut(m, size);
    const Stores st = storesFor(m, c, {srcStep, dstStep[0], dstStep[1], dstStep[2]}, {dst[0], dst[1], dst[2]},
                                {dstStep[0], dstStep[1], dstStep[2]});
    convertSampling(packed(src, srcStep, m.src), planesSide(m.to, dst, dstStep, m.dst.cbAt), c.width, c.height,
                    st);
    return pxkOk;
}

PxkResult planesToPairs(const Member& m, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dstY,
                        int32_t dstYStep, uint8_t* dstCbCr, int32_t dstCbCrStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkPtrs(srcStep, dstY, dstCbCr));
    PXK_CHECK(checkSize(size, m.minWidth, m.minHeight));
    const PxkSize c = cut(m, size);
    const Stores st = storesFor(m, c, {srcStep[0], srcStep[1], srcStep[2], dstYStep, dstCbCrStep}, {dstY, dstCbCr},
                                {dstYStep, dstCbCrStep});
    convertSampling(planesSide(m.from, src, srcStep, m.src.cbAt),
                    pairsSide(m.to, dstY, dstYStep, dstCbCr, dstCbCrStep, m.dst.cbAt), c.width, c.height, st);
    return pxkOk;
}

PxkResult planesToPlanes(const Member& m, const uint8_t* const src[3], const int32_t srcStep[3],
                         uint8_t* const dst[3], const int32_t dstStep[3], PxkSize size) {
    PXK_CHECK(checkPtrs(src));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkPtrs(srcStep, dst));
    PXK_CHECK(checkPlanes(dst, 3));
    PXK_CHECK(checkPtrs(dstStep));
    PXK_CHECK(checkSize(size, m.minWidth, m.minHeight));
    const PxkSize c = cut(m, size);
    const Stores st = storesFor(m, c, {srcStep[0], srcStep[1], srcStep[2], dstStep[0], dstStep[1], dstStep[2]},
                                {dst[0], dst[1], dst[2]}, {dstStep[0], dstStep[1], dstStep[2]});
    convertSampling(planesSide(m.from, src, srcStep, m.src.cbAt), planesSide(m.to, dst, dstStep, m.dst.cbAt),
                    c.width, c.height, st);
    return pxkOk;
}

PxkResult pairsToPacked(const Member& m, const uint8_t* srcY, int32_t srcYStep, const uint8_t* srcCbCr,
                        int32_t srcCbCrStep, uint8_t* dst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(srcY, srcCbCr, dst));
    PXK_CHECK(checkSize(size, m.minWidth, m.minHeight));
    const PxkSize c = cut(m, size);
    const Stores st = storesFor(m, c, {srcYStep, srcCbCrStep, dstStep}, {dst}, {dstStep});
    convertSampling(pairsSide(m.from, srcY, srcYStep, srcCbCr, srcCbCrStep, m.src.cbAt),
                    packed(dst, dstStep, m.dst), c.width, c.height, st);
    return pxkOk;
}

PxkResult pairsToPlanes(const Member& m, const uint8_t* srcY, int32_t srcYStep, const uint8_t* srcCbCr,
                        int32_t srcCbCrStep, uint8_t* const dst[3], const int32_t dstStep[3], PxkSize size) {
    PXK_CHECK(checkPtrs(srcY, srcCbCr));
    if (!m.dstArrayUntested) PXK_CHECK(checkPtrs(dst));
    PXK_CHECK(checkPlanes(dst, 3));
    PXK_CHECK(checkPtrs(dstStep));
    PXK_CHECK(checkSize(size, m.minWidth, m.minHeight));
    const PxkSize c = cut(m, size);
    const Stores st = storesFor(m, c, {srcYStep, srcCbCrStep, dstStep[0], dstStep[1], dstStep[2]},
                                {dst[0], dst[1], dst[2]}, {dstStep[0], dstStep[1], dstStep[2]});
    convertSampling(pairsSide(m.from, srcY, srcYStep, srcCbCr, srcCbCrStep, m.src.cbAt),
                    planesSide(m.to, dst, dstStep, m.dst.cbAt), c.width, c.height, st);
    return pxkOk;
}

PxkResult planesToPacked(const Member& m, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                         int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkPtrs(srcStep, dst));
    PXK_CHECK(checkSize(size, m.minWidth, m.minHeight));
    const PxkSize c = cut(m, size);
    const Stores st = storesFor(m, c, {srcStep[0], srcStep[1], srcStep[2], dstStep}, {dst}, {dstStep});
    convertSampling(planesSide(m.from, src, srcStep, m.src.cbAt), packed(dst, dstStep, m.dst), c.width, c.height,
                    st);
    return pxkOk;
}

}  // namespace chroma
}  // namespace pxk
