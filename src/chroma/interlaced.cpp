// Interlaced 4:2:2 <-> 4:2:0: the two fields never mix. Each output chroma row is a
// weighted mean of two source chroma rows of its own field, with weights by the
// distance of the output line from them; luma is moved unchanged.
#include "pxkcc.h"

#include "frame/simd_inline.h"

#include <algorithm>

#include "chroma/byte_moves.h"
#include "chroma/chroma_rows.h"
#include "chroma/row_copier.h"
#include "chroma/sampling_engine.h"
#include "frame/checks.h"
#include "frame/vec_float.h"

using namespace pxk;
using namespace pxk::chroma;

namespace {

// An output chroma row: a weighted mean of the rows `near` and `far` of one field,
// the larger weight on `near`; the weights sum to 4 or 8 and the mean is rounded half
// up. A row copied outright takes `near` alone.
enum class Weights { Copy, ThreeOne, SevenOne, FiveThree };

struct FieldBlend {
    int32_t near, far;
    Weights weights;
};

// The field blend form: (3 near + far + 2) >> 2, (7 near + far + 4) >> 3 or
// (5 near + 3 far + 4) >> 3. The vector form stays in bytes and is exact for all
// inputs: with up(a, b) = (a + b + 1) >> 1 and down(a, b) = (a + b) >> 1 the three
// are up(near, d), up(near, down(near, d)) and up(near, down(far, d)) for
// d = down(near, far). down is the complement of up of the complements, so the
// chain runs on complements and takes the complement once at the end.
template <Weights W>
struct FieldBlendForm {
    template <class V>
    PXK_INLINE static V apply(V near, V far) {
        using namespace vec;
        const V ones = splat16<V>(-1);
        const V notNear = xor_(near, ones);
        V notMean = avg8(notNear, xor_(far, ones));
        if constexpr (W == Weights::SevenOne) notMean = avg8(notNear, notMean);
        if constexpr (W == Weights::FiveThree) notMean = avg8(xor_(far, ones), notMean);
        return avg8(near, xor_(notMean, ones));
    }
    PXK_INLINE static uint8_t scalar(int32_t near, int32_t far) {
        switch (W) {
            case Weights::ThreeOne:
                return static_cast<uint8_t>((3 * near + far + 2) >> 2);
            case Weights::SevenOne:
                return static_cast<uint8_t>((7 * near + far + 4) >> 3);
            case Weights::FiveThree:
                return static_cast<uint8_t>((5 * near + 3 * far + 4) >> 3);
            case Weights::Copy:
                break;
        }
        return static_cast<uint8_t>(near);
    }
};

template <Weights W>
void blendRowWith(const uint8_t* near, const uint8_t* far, uint8_t* out, int32_t n) {
    using Form = FieldBlendForm<W>;
    forBlocks<16>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            vec::storeLanes<V, 16>(out + i, Form::apply(vec::loadLanes<V, 16>(near + i),
                                                        vec::loadLanes<V, 16>(far + i)));
        },
        [&](int32_t i) { out[i] = Form::scalar(near[i], far[i]); });
}

void blendRow(const uint8_t* near, const uint8_t* far, uint8_t* out, int32_t n, Weights w) {
    switch (w) {
        case Weights::Copy:
            copyRow(near, out, static_cast<std::size_t>(n), false);
            return;
        case Weights::ThreeOne:
            return blendRowWith<Weights::ThreeOne>(near, far, out, n);
        case Weights::SevenOne:
            return blendRowWith<Weights::SevenOne>(near, far, out, n);
        case Weights::FiveThree:
            return blendRowWith<Weights::FiveThree>(near, far, out, n);
    }
}

// 422 -> 420: group g of four source rows gives output rows 2g (even field, 3:1) and
// 2g + 1 (odd field, 1:3).
FieldBlend to420(int32_t row) {
    const int32_t g = row / 2;
    return row % 2 == 0 ? FieldBlend{4 * g, 4 * g + 2, Weights::ThreeOne}
                        : FieldBlend{4 * g + 3, 4 * g + 1, Weights::ThreeOne};
}

// 420 -> 422 over `height` output rows: the first two and last two rows copied, the
// rows between in groups of four (even field 5:3 then 1:7, odd field 7:1 then 3:5).
FieldBlend to422(int32_t row, int32_t height) {
    const int32_t n = height / 2;
    if (row < 2) return FieldBlend{row, row, Weights::Copy};
    if (row >= height - 2) return FieldBlend{n - 2 + (row - (height - 2)), n - 2, Weights::Copy};
    const int32_t i = (row - 2) / 4, b = 2 * i;
    switch ((row - 2) % 4) {
        case 0:
            return FieldBlend{b, b + 2, Weights::FiveThree};
        case 1:
            return FieldBlend{b + 1, b + 3, Weights::SevenOne};
        case 2:
            return FieldBlend{b + 2, b, Weights::SevenOne};
        default:
            return FieldBlend{b + 3, b + 1, Weights::FiveThree};
    }
}

// Chroma of source row `row`, columns [c, c + n). A packed source (4:2:2, so every
// source row is read exactly once) hands over the luma of the row on the way, to the
// same row of the destination's luma plane.
CbCr readFieldRow(const Side& s, const Side& d, int32_t row, int32_t c, int32_t n, uint8_t* cb, uint8_t* cr) {
    uint8_t* luma = s.layout == Layout::Packed ? rowOf(d.luma, d.lumaStep, row) : nullptr;
    return readChroma(s, row, c, n, cb, cr, luma);
}

// The conversion of the cut region (width even, height a multiple of 4).
void convertFields(const Side& s, const Side& d, int32_t width, int32_t height) {
    const int32_t rows = chromaRows(d.sampling, height), cols = chromaColumns(d.sampling, width);
    alignas(16) uint8_t a[2][kChromaChunk], b[2][kChromaChunk], out[2][kChromaChunk];
    for (int32_t r = 0; r < rows; ++r) {
        const FieldBlend f = d.sampling == Sampling::S420 ? to420(r) : to422(r, height);
        for (int32_t c = 0; c < cols; c += kChromaChunk) {
            const int32_t n = std::min(kChromaChunk, cols - c);
            // The upper row first: luma taken from a packed source then goes out with
            // the last source row last, as a row-by-row walk leaves it (a destination
            // step of 0 keeps the last row).
            CbCr va, vb;
            if (f.near < f.far) {
                va = readFieldRow(s, d, f.near, c, n, a[0], a[1]);
                vb = readFieldRow(s, d, f.far, c, n, b[0], b[1]);
            } else {
                vb = readFieldRow(s, d, f.far, c, n, b[0], b[1]);
                va = readFieldRow(s, d, f.near, c, n, a[0], a[1]);
            }
            const Targets t = chromaTargets(d, r, c, out[0], out[1]);
            blendRow(va.cb, vb.cb, t.cb, n, f.weights);
            blendRow(va.cr, vb.cr, t.cr, n, f.weights);
            writeChromaPlain(d, s, r, c, n, CbCr{t.cb, t.cr});
        }
    }
    if (s.layout != Layout::Packed) copyLuma(s, d, width, height, false);
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
