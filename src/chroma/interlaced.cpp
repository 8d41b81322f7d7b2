// Interlaced 4:2:2 <-> 4:2:0: the two fields never mix. Each output chroma row is a
// weighted mean of two source chroma rows of its own field, with weights by the
// distance of the output line from them; luma is moved unchanged.
#include "pxkcc.h"

#include "frame/simd_inline.h"

#include <algorithm>

#include "chroma/byte_moves.h"
#include "chroma/chroma_rows.h"
#include "chroma/sampling_engine.h"
#include "frame/checks.h"

using namespace pxk;
using namespace pxk::chroma;

namespace {

// An output chroma row: (wa * row a + wb * row b + half) >> shift, wa + wb = 2^shift.
// A row copied outright is the weights (8, 0) at shift 3, which give it exactly.
struct FieldBlend {
    int32_t rowA, rowB;
    int32_t wa, wb;
    int shift;
};

// The field blend form: (wa a + wb b + 2^(shift-1)) >> shift, never above 255.
struct FieldBlendForm {
    template <class V>
    PXK_INLINE static V apply(V a, V b, const FieldBlend& f) {
        using namespace vec;
        const V sum = add16(add16(mullo16(a, splat16<V>(f.wa)), mullo16(b, splat16<V>(f.wb))),
                            splat16<V>(1 << (f.shift - 1)));
        return f.shift == 2 ? srli16<2>(sum) : srli16<3>(sum);
    }
    PXK_INLINE static uint8_t scalar(int32_t a, int32_t b, const FieldBlend& f) {
        return static_cast<uint8_t>((f.wa * a + f.wb * b + (1 << (f.shift - 1))) >> f.shift);
    }
};

void blendRow(const uint8_t* a, const uint8_t* b, uint8_t* out, int32_t n, const FieldBlend& f) {
    forBlocks<16>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            using namespace vec;
            const V z = zero<V>();
            const V va = loadLanes<V, 16>(a + i), vb = loadLanes<V, 16>(b + i);
            const V lo = FieldBlendForm::apply(unpacklo8(va, z), unpacklo8(vb, z), f);
            const V hi = FieldBlendForm::apply(unpackhi8(va, z), unpackhi8(vb, z), f);
            storeLanes<V, 16>(out + i, packus16(lo, hi));
        },
        [&](int32_t i) { out[i] = FieldBlendForm::scalar(a[i], b[i], f); });
}

// 422 -> 420: group g of four source rows gives output rows 2g (even field, 3:1) and
// 2g + 1 (odd field, 1:3).
FieldBlend to420(int32_t row) {
    const int32_t g = row / 2;
    return row % 2 == 0 ? FieldBlend{4 * g, 4 * g + 2, 3, 1, 2} : FieldBlend{4 * g + 1, 4 * g + 3, 1, 3, 2};
}

// 420 -> 422 over `height` output rows: the first two and last two rows copied, the
// rows between in groups of four (even field 5:3 then 1:7, odd field 7:1 then 3:5).
FieldBlend to422(int32_t row, int32_t height) {
    const int32_t n = height / 2;
    if (row < 2) return FieldBlend{row, row, 8, 0, 3};
    if (row >= height - 2) return FieldBlend{n - 2 + (row - (height - 2)), 0, 8, 0, 3};
    const int32_t i = (row - 2) / 4, b = 2 * i;
    switch ((row - 2) % 4) {
        case 0:
            return FieldBlend{b, b + 2, 5, 3, 3};
        case 1:
            return FieldBlend{b + 1, b + 3, 7, 1, 3};
        case 2:
            return FieldBlend{b, b + 2, 1, 7, 3};
        default:
            return FieldBlend{b + 1, b + 3, 3, 5, 3};
    }
}

// The conversion of the cut region (width even, height a multiple of 4).
void convertFields(const Side& s, const Side& d, int32_t width, int32_t height) {
    const int32_t rows = chromaRows(d.sampling, height), cols = chromaColumns(d.sampling, width);
    alignas(16) uint8_t a[2][kChromaChunk], b[2][kChromaChunk], out[2][kChromaChunk];
    for (int32_t r = 0; r < rows; ++r) {
        const FieldBlend f = d.sampling == Sampling::S420 ? to420(r) : to422(r, height);
        for (int32_t c = 0; c < cols; c += kChromaChunk) {
            const int32_t n = std::min(kChromaChunk, cols - c);
            const CbCr va = readChroma(s, f.rowA, c, n, a[0], a[1]);
            const CbCr vb = readChroma(s, f.rowB, c, n, b[0], b[1]);
            const Targets t = chromaTargets(d, r, c, out[0], out[1]);
            blendRow(va.cb, vb.cb, t.cb, n, f);
            blendRow(va.cr, vb.cr, t.cr, n, f);
            writeChromaPlain(d, s, r, c, n, CbCr{t.cb, t.cr});
        }
    }
    copyLuma(s, d, width, height, false);
}

// The checks of planes into planes: the arrays, their entries, then the size.
PxkResult checkPlanesToPlanes(const uint8_t* const* src, const int32_t* srcStep, uint8_t* const* dst,
                              const int32_t* dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, srcStep, dst, dstStep));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkPlanes(dst, 3));
    return checkSize(size, 2, 4);
}

PxkResult finish(const Side& s, const Side& d, PxkSize size) {
    convertFields(s, d, cutTo(size.width, 2), cutTo(size.height, 4));
    return oddSizeStatus(size, 2, 4);
}

}  // namespace

extern "C" {

PxkResult pxkiYCbCr422To420_Interlace_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                             uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPlanesToPlanes(pSrc, srcStep, pDst, dstStep, roiSize));
    return finish(planesSide(Sampling::S422, pSrc, srcStep, 1), planesSide(Sampling::S420, pDst, dstStep, 1),
                  roiSize);
}

PxkResult pxkiCbYCr422ToYCbCr420_Interlace_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                    const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst, dstStep));
    PXK_CHECK(checkPlanes(pDst, 3));
    PXK_CHECK(checkSize(roiSize, 2, 4));
    return finish(packedSide(pSrc, srcStep, 1, 0, 2), planesSide(Sampling::S420, pDst, dstStep, 1), roiSize);
}

PxkResult pxkiYCbCr420To422_Interlace_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                             uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(checkPlanesToPlanes(pSrc, srcStep, pDst, dstStep, roiSize));
    return finish(planesSide(Sampling::S420, pSrc, srcStep, 1), planesSide(Sampling::S422, pDst, dstStep, 1),
                  roiSize);
}

PxkResult pxkiYCbCr420ToCbYCr422_Interlace_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDst, int32_t dstStep, PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, srcStep, pDst));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkSize(roiSize, 2, 4));
    return finish(planesSide(Sampling::S420, pSrc, srcStep, 1), packedSide(pDst, dstStep, 1, 0, 2), roiSize);
}

}  // extern "C"
