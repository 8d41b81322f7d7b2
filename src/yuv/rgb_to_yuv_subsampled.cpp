// RGB or BGR -> full-range YUV with subsampled chroma: 4:2:0 into three planes and
// 4:2:2 into three planes or packed Y0 U Y1 V, with the forms without R that derive
// their steps from the width.
//
// Luma: L >> 16 (L = 19595 R + 38470 G + 7471 B), except in the vector columns (the
// first width - width % 8 columns of the 4:2:0 members with a packed RGB source, the
// first width - width % 16 of every 4:2:2 member), which take the vector luma form at a
// scale of 2^15. Chroma: the YUV scalar chroma of the group's sums in every column; the
// vector blocks compute that same chroma (their own order of truncations is ours to
// choose, and we choose the one that gives these bits).
#include "pxkcc.h"

#include <cstdint>

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "yuv/blocks420.h"
#include "yuv/groups_row.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kBGR = true, kRGB = false;

using TailBlock = BlockForms<YuvLuma, Yuv420Chroma>;
using VectorBlock = BlockForms<YuvVectorLuma, Yuv420Chroma>;

// ---------------------------------------------------------------------------------
// 4:2:0
// ---------------------------------------------------------------------------------

// The region in row pairs: the first `lead` pixel columns (even) in the vector forms,
// the rest in the tail forms; a last odd row or column is neither read nor written.
template <bool Bgr, class In>
PxkResult yuv420(PairedPlaneRows<In> source, uint8_t* const dst[3], const int32_t dstStep[3], PxkSize size,
                 int32_t lead) {
    const int32_t end = 2 * (size.width / 2);
    driveRowPairs(
        size.width, size.height,
        [lead, end](int32_t, RowPair<const In> s, RowPair<uint8_t> y, uint8_t* u, uint8_t* v) {
            const ChromaPlanes chroma{u, v};
            run420<VectorBlock, Bgr>(*s.top, *s.bottom, y, chroma, 0, lead);
            run420<TailBlock, Bgr>(*s.top, *s.bottom, y, chroma, lead, end);
        },
        source, pairedRows(dst[0], dstStep[0]), rows(dst[1], dstStep[1]), rows(dst[2], dstStep[2]));
    return oddSizeStatus(size, 2, 2);
}

// The vector columns of the members that have them: whole blocks of 8.
int32_t vectorColumns8(int32_t width) { return width - width % 8; }

// ---------------------------------------------------------------------------------
// 4:2:2
// ---------------------------------------------------------------------------------

// Luma of a 4:2:2 row: the vector luma form in the vector blocks (which cover exactly
// the first width - width % 16 columns), L >> 16 in the rest.
struct Yuv422Luma {
    PXK_INLINE static uint8_t luma(Pixel3 p, int32_t) { return YuvLuma::luma(p); }
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& half, int) {
        return YuvVectorLuma::luma(half);
    }
};

// A last pixel without a pair: its Y by L >> 16, its chroma at a scale of 2^15. Planes
// take U and V in the column after the pairs (the chroma planes are (width + 1) / 2
// wide); packed Y0 U Y1 V takes U after the Y, and V has no place.
using YuvOddPixel = OddLumaAndChroma<YuvLoneChroma>;

template <class In, class Sink>
PXK_INLINE void yuv422Row(const In& in, const Sink& out, int32_t width) {
    convertGroupsRow<2, Yuv422Luma, Yuv422Chroma, kRGB, YuvOddPixel>(in, out, width);
}

// Into three planes, each with its own step.
template <class In>
void yuv422ToPlanes(PlaneRows<In> source, uint8_t* const dst[3], const int32_t dstStep[3], PxkSize size) {
    driveRows(
        size.width, size.height,
        [](int32_t width, const In& s, uint8_t* y, uint8_t* u, uint8_t* v) {
            yuv422Row(s, PlanarSink{y, u, v}, width);
        },
        source, rows(dst[0], dstStep[0]), rows(dst[1], dstStep[1]), rows(dst[2], dstStep[2]));
}

// The forms without R: rows that touch are converted as one long row (see
// runAsOneLongRow). Otherwise the rows are walked with the derived steps: chroma
// planes of width / 2 + width % 2.
template <class In>
PxkResult yuv422WithoutSteps(const In& source, uint8_t* const dst[3], PxkSize size) {
    const bool longRow = runAsOneLongRow(size, [&](int32_t start, int32_t count) {
        yuv422Row(shiftedBy(source, start), PlanarSink{dst[0] + start, dst[1] + start / 2, dst[2] + start / 2}, count);
    });
    if (!longRow) {
        const int32_t chromaStep = size.width / 2 + size.width % 2;
        const int32_t steps[3] = {size.width, chromaStep, chromaStep};
        yuv422ToPlanes(planeRows(source, size.width * In::kBytes), dst, steps, size);
    }
    return pxkOk;
}

PlanarP3In planes(const uint8_t* const p[3]) { return PlanarP3In{{p[0], p[1], p[2]}}; }

// The second stage of the planar members' checks: the size, then the entries of the
// source planes and of the destination planes (the arrays themselves come first).
PxkResult checkSizeThenEntries(PxkSize size, const uint8_t* const src[3], uint8_t* const dst[3]) {
    PXK_CHECK(checkSize(size, 1, 1));
    PXK_CHECK(checkPlanes(src, 3));
    return checkPlanes(dst, 3);
}

// The derived steps of the 4:2:0 forms without R: chroma planes of width / 2.
struct Derived420Steps {
    int32_t steps[3];
    explicit Derived420Steps(int32_t width) : steps{width, width / 2, width / 2} {}
};

}  // namespace

extern "C" {

// ---- 4:2:0 ----

PxkResult pxkiBGRToYUV420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                    const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPackedIntoPlanes(pSrc, pDst, dstStep, roiSize, 1, 1));
    return yuv420<kBGR>(pairedPlaneRows(PackedC4In{{pSrc}}, srcStep), pDst, dstStep, roiSize, 0);
}

PxkResult pxkiRGBToYUV420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                   const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPackedIntoPlanes(pSrc, pDst, dstStep, roiSize, 1, 1));
    return yuv420<kRGB>(pairedPlaneRows(PackedC3In{{pSrc}}, srcStep), pDst, dstStep, roiSize,
                        vectorColumns8(roiSize.width));
}

PxkResult pxkiRGBToYUV420_8u_C3P3(const uint8_t* pSrc, uint8_t* const pDst[3], PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pDst, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    const Derived420Steps derived(roiSize.width);
    return yuv420<kRGB>(pairedPlaneRows(PackedC3In{{pSrc}}, 3 * roiSize.width), pDst, derived.steps, roiSize,
                        vectorColumns8(roiSize.width));
}

PxkResult pxkiRGBToYUV420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                 const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, srcStep, pDst, dstStep));
    PXK_CHECK(checkSizeThenEntries(roiSize, pSrc, pDst));
    return yuv420<kRGB>(pairedPlaneRows(planes(pSrc), srcStep), pDst, dstStep, roiSize, 0);
}

PxkResult pxkiRGBToYUV420_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3], PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSizeThenEntries(roiSize, pSrc, pDst));
    const Derived420Steps derived(roiSize.width);
    return yuv420<kRGB>(pairedPlaneRows(planes(pSrc), roiSize.width), pDst, derived.steps, roiSize, 0);
}

// ---- 4:2:2 ----

PxkResult pxkiRGBToYUV422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                   PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    driveRows(
        roiSize.width, roiSize.height,
        [](int32_t width, const PackedC3In& s, uint8_t* d) { yuv422Row(s, PackedC2Sink<false>{d}, width); },
        planeRows(PackedC3In{{pSrc}}, srcStep), rows(pDst, dstStep));
    return pxkOk;
}

PxkResult pxkiRGBToYUV422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                   const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPackedIntoPlanes(pSrc, pDst, dstStep, roiSize, 1, 1));
    yuv422ToPlanes(planeRows(PackedC3In{{pSrc}}, srcStep), pDst, dstStep, roiSize);
    return pxkOk;
}

PxkResult pxkiRGBToYUV422_8u_C3P3(const uint8_t* pSrc, uint8_t* const pDst[3], PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pDst, 3));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    return yuv422WithoutSteps(PackedC3In{{pSrc}}, pDst, roiSize);
}

PxkResult pxkiRGBToYUV422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                 const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, srcStep, pDst, dstStep));
    PXK_CHECK(checkSizeThenEntries(roiSize, pSrc, pDst));
    yuv422ToPlanes(planeRows(planes(pSrc), srcStep), pDst, dstStep, roiSize);
    return pxkOk;
}

PxkResult pxkiRGBToYUV422_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3], PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSizeThenEntries(roiSize, pSrc, pDst));
    return yuv422WithoutSteps(planes(pSrc), pDst, roiSize);
}

}  // extern "C"
