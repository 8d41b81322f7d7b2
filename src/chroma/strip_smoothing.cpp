// 4:2:0 luma beside chroma pairs, smoothed vertically in luma and chroma, for images
// converted whole or in strips (`layout`): into packed 4:2:2 (Y0 Cb Y1 Cr) or into
// 4:2:0 planes. Rows are counted from the given pointers. The center and bottom
// strips finish the last two rows of the strip above: they write two luma rows above
// the destination (and one chroma row above each chroma plane of the planar member),
// and read three luma rows and one chroma row above the source.
//
// Each export picks, for every output row, the taps of its luma and chroma filters
// (strip_smoothing_rows.h), then runs one row kernel for it.
#include "pxkcc.h"

#include "chroma/chroma_rows.h"
#include "chroma/strip_smoothing_rows.h"
#include "frame/checks.h"

using namespace pxk;
using namespace pxk::chroma;

namespace {

// The path a `layout` value takes: the three strip forms, the whole image (any other
// value with bits 0, 2 and 4 set), or nothing.
enum class Path { Whole, Top, Center, Bottom, None };

Path pathOf(int32_t layout) {
    if (layout == pxkLayoutTop) return Path::Top;
    if (layout == pxkLayoutCenter) return Path::Center;
    if (layout == pxkLayoutBottom) return Path::Bottom;
    const uint32_t bits = static_cast<uint32_t>(layout);
    return (bits & 0x15u) == 0x15u ? Path::Whole : Path::None;
}

// The luma filters of row r, with the bias (0 or 1) that follows the shift.
LumaTaps f31(int32_t r, int32_t bias) { return LumaTaps{r, r + 1, r, bias}; }
LumaTaps f121(int32_t r, int32_t bias) { return LumaTaps{r - 1, r + 1, r, bias}; }
LumaTaps f13(int32_t r, int32_t bias) { return LumaTaps{r - 1, r, r, bias}; }
// The chroma mean of rows i and i + 1, and a chroma row copied.
ChromaTaps meanOf(int32_t i, int32_t bias) { return ChromaTaps{i, i + 1, bias}; }
ChromaTaps copyOf(int32_t i) { return ChromaTaps{i, i, 0}; }

// Floor of a / 2, for the negative rows of the strips too.
int32_t halfDown(int32_t a) { return a >= 0 ? a / 2 : -((1 - a) / 2); }

// The whole image's luma, shared by both members: 3 1 on the first row, 1 3 on the
// last, 1 2 1 between, all biased.
LumaTaps wholeLuma(int32_t r, int32_t h) {
    if (r == 0) return f31(0, 1);
    return r == h - 1 ? f13(r, 1) : f121(r, 1);
}

// ---------------------------------------------------------------------------------
// Into packed 4:2:2: every output row r has its own luma and the chroma of its pair.
// ---------------------------------------------------------------------------------

LumaTaps packedLuma(Path path, int32_t r, int32_t h) {
    switch (path) {
        case Path::Whole:
            return wholeLuma(r, h);
        case Path::Top:
            if (r == 0) return f31(0, 1);
            return f121(r, r == 1 ? 0 : 1);
        case Path::Center:
            return f121(r, 1);
        default:  // Bottom
            if (r == h - 1) return f13(r, 0);
            return f121(r, r == h - 2 ? 0 : 1);
    }
}

ChromaTaps packedChroma(Path path, int32_t r, int32_t h) {
    const int32_t n = h / 2, p = halfDown(r);
    switch (path) {
        case Path::Whole:
            if (h == 2) return copyOf(0);
            if (p == 0 || p == n - 1) return meanOf(p == 0 ? 0 : n - 2, 1);
            return meanOf(p, 0);
        case Path::Top:
        case Path::Center:
            return meanOf(p, 1);
        default:  // Bottom: the last pair repeats the mean of the pair above, unbiased.
            return r >= h - 2 ? meanOf(n - 2, 0) : meanOf(p, 1);
    }
}

void packedRows(const uint8_t* srcY, int32_t srcYStep, const uint8_t* srcC, int32_t srcCStep, uint8_t* dst,
                int32_t dstStep, int32_t w, int32_t h, Path path) {
    // Rows written: the top strip stops two rows short (but always makes rows 0 and
    // 1); the center and bottom strips start two rows above the pointer. Every path
    // writes whole pairs of rows 2q, 2q + 1, and both rows of a pair take one chroma
    // filter, so the pairs are made together, top to bottom.
    const int32_t first = (path == Path::Center || path == Path::Bottom) ? -2 : 0;
    int32_t last = h - 1;
    if (path == Path::Top) last = h - 3 < 1 ? 1 : h - 3;
    if (path == Path::Center) last = h - 3;
    for (int32_t r = first; r < last; r += 2) {
        const LumaRows luma[2] = {lumaRows(srcY, srcYStep, packedLuma(path, r, h)),
                                  lumaRows(srcY, srcYStep, packedLuma(path, r + 1, h))};
        uint8_t* const rows[2] = {rowOf(dst, dstStep, r), rowOf(dst, dstStep, r + 1)};
        smoothedPackedRowPair(luma, chromaRows(srcC, srcCStep, packedChroma(path, r, h)), rows, w);
    }
}

// ---------------------------------------------------------------------------------
// Into 4:2:0 planes: luma rows, then chroma rows (one for two luma rows). The whole
// image is biased; the strips are not.
// ---------------------------------------------------------------------------------

LumaTaps planarLuma(Path path, int32_t r, int32_t h) {
    switch (path) {
        case Path::Whole:
            return wholeLuma(r, h);
        case Path::Top:
            return r == 0 ? f31(0, 0) : f121(r, 0);
        case Path::Center:
            return f121(r, 0);
        default:  // Bottom
            return r == h - 1 ? f13(r, 0) : f121(r, 0);
    }
}

ChromaTaps planarChroma(Path path, int32_t p, int32_t h) {
    const int32_t n = h / 2;
    switch (path) {
        case Path::Whole:
            if (h == 2) return copyOf(0);
            return meanOf(p == n - 1 ? n - 2 : p, 1);
        case Path::Top:
        case Path::Center:
            return meanOf(p, 0);
        default:  // Bottom
            return meanOf(p == n - 1 ? n - 2 : p, 0);
    }
}

void planarRows(const uint8_t* srcY, int32_t srcYStep, const uint8_t* srcC, int32_t srcCStep, uint8_t* const dst[3],
                const int32_t dstStep[3], int32_t w, int32_t h, Path path) {
    const int32_t n = h / 2;
    const bool fromAbove = path == Path::Center || path == Path::Bottom;
    const bool stopsShort = path == Path::Top || path == Path::Center;
    const int32_t first = fromAbove ? -2 : 0, last = stopsShort ? h - 3 : h - 1;
    const int32_t firstC = fromAbove ? -1 : 0, lastC = stopsShort ? n - 2 : n - 1;
    for (int32_t r = first; r <= last; ++r) {
        smoothedLumaRow(lumaRows(srcY, srcYStep, planarLuma(path, r, h)), rowOf(dst[0], dstStep[0], r), w);
    }
    for (int32_t p = firstC; p <= lastC; ++p) {
        smoothedChromaPlanes(chromaRows(srcC, srcCStep, planarChroma(path, p, h)), rowOf(dst[1], dstStep[1], p),
                             rowOf(dst[2], dstStep[2], p), w / 2);
    }
}

// The path of `layout` over the region cut to even sizes, by rows(..., w, h, path).
template <class RowsFn, class Dst, class DstStep>
PxkResult smoothRegion(RowsFn rows, const uint8_t* srcY, int32_t srcYStep, const uint8_t* srcC, int32_t srcCStep,
                       Dst dst, DstStep dstStep, PxkSize size, int32_t layout) {
    const Path path = pathOf(layout);
    if (path != Path::None) {
        rows(srcY, srcYStep, srcC, srcCStep, dst, dstStep, cutTo(size.width, 2), cutTo(size.height, 2), path);
    }
    return pxkOk;
}

}  // namespace

extern "C" {

PxkResult pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                 int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep,
                                                 PxkSize roiSize, int32_t layout) {
    PXK_CHECK(checkPtrs(pSrcY, pSrcCbCr, pDst));
    PXK_CHECK(checkSize(roiSize, 2, 2));
    return smoothRegion(packedRows, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize, layout);
}

// No exchange of the chroma bytes: byte 0 of each pair to dst[1], byte 1 to dst[2].
// The step array is tested with the plane entries, after the first size test.
PxkResult pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                 int32_t srcCbCrStep, uint8_t* const pDst[3],
                                                 const int32_t dstStep[3], PxkSize roiSize, int32_t layout) {
    PXK_CHECK(checkPtrs(pSrcY, pSrcCbCr, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkPlanes(pDst, 3));
    PXK_CHECK(checkPtrs(dstStep));
    PXK_CHECK(checkSize(roiSize, 2, 2));
    return smoothRegion(planarRows, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize, layout);
}

}  // extern "C"
