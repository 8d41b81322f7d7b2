// 4:2:0 to and from the sparser 1620 (one chroma sample a 4 x 4 block) and 4:1:1
// chroma, with real averages where new samples are needed. The vector columns round
// their averages up and the scalar columns truncate; which columns are vector ones is
// fixed by each kernel's block limits below, the same in both builds.
#include "pxkcc.h"

#include "frame/simd_inline.h"

#include <cstdint>

#include "chroma/byte_moves.h"
#include "chroma/row_copier.h"
#include "frame/checks.h"
#include "frame/drivers.h"

using namespace pxk;
using namespace pxk::chroma;

namespace {

// The two means: up(a, b) = (a + b + 1) >> 1 (the vector columns), down(a, b) =
// (a + b) >> 1 (the scalar ones).
inline uint8_t up(int a, int b) { return static_cast<uint8_t>((a + b + 1) >> 1); }
inline uint8_t down(int a, int b) { return static_cast<uint8_t>((a + b) >> 1); }

// Row `row` of a plane.
template <class T>
T* rowAt(T* plane, int32_t step, int32_t row) {
    return byteOffset(plane, static_cast<std::intptr_t>(step) * row);
}

// Vector columns: taking `big` columns while more than `bigAbove` remain, then 16
// while more than `smallAbove` remain (both limits as "remaining > limit").
int32_t vectorColumns(int32_t columns, int32_t big, int32_t bigAbove, int32_t smallAbove) {
    int32_t rem = columns;
    while (big > 0 && rem > bigAbove) rem -= big;
    while (rem > smallAbove) rem -= 16;
    return columns - rem;
}

// out[2c] = s[c], out[2c + 1] = the mean of s[c] and s[c + 1]: up below nv, down
// from nv to the last column, which repeats s[c].
void widenRow(const uint8_t* s, uint8_t* out, int32_t columns, int32_t nv) {
    forBlocks<16>(
        nv,
        [&](auto tag, int32_t c) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            using namespace vec;
            const V a = loadLanes<V, 16>(s + c), m = avg8(a, loadLanes<V, 16>(s + c + 1));
            storeLanes<V, 32>(out + 2 * c, unpacklo8(a, m));
            storeLanes<V, 32>(out + 2 * c + 16, unpackhi8(a, m));
        },
        [&](int32_t c) {
            out[2 * c] = s[c];
            out[2 * c + 1] = up(s[c], s[c + 1]);
        });
    for (int32_t c = nv; c < columns - 1; ++c) {
        out[2 * c] = s[c];
        out[2 * c + 1] = down(s[c], s[c + 1]);
    }
    out[2 * columns - 2] = out[2 * columns - 1] = s[columns - 1];
}

// The row between source rows s0 and s1: out[2c] the mean of s0[c] and s1[c],
// out[2c + 1] the mean of the two horizontal means; up below nv, down after, and in
// the last column the vertical mean (down) twice.
void betweenRows(const uint8_t* s0, const uint8_t* s1, uint8_t* out, int32_t columns, int32_t nv) {
    forBlocks<16>(
        nv,
        [&](auto tag, int32_t c) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            using namespace vec;
            const V a0 = loadLanes<V, 16>(s0 + c), a1 = loadLanes<V, 16>(s0 + c + 1);
            const V b0 = loadLanes<V, 16>(s1 + c), b1 = loadLanes<V, 16>(s1 + c + 1);
            const V even = avg8(a0, b0), odd = avg8(avg8(a0, a1), avg8(b0, b1));
            storeLanes<V, 32>(out + 2 * c, unpacklo8(even, odd));
            storeLanes<V, 32>(out + 2 * c + 16, unpackhi8(even, odd));
        },
        [&](int32_t c) {
            out[2 * c] = up(s0[c], s1[c]);
            out[2 * c + 1] = up(up(s0[c], s0[c + 1]), up(s1[c], s1[c + 1]));
        });
    for (int32_t c = nv; c < columns - 1; ++c) {
        out[2 * c] = down(s0[c], s1[c]);
        out[2 * c + 1] = down(down(s1[c + 1], s1[c]), down(s0[c], s0[c + 1]));
    }
    const int32_t c = columns - 1;
    out[2 * c] = out[2 * c + 1] = down(s0[c], s1[c]);
}

// out[c] = the mean of the even samples s0[2c] and s1[2c]: up below nv, down after.
void evenColumnMeans(const uint8_t* s0, const uint8_t* s1, uint8_t* out, int32_t columns, int32_t nv) {
    forBlocks<16>(
        nv,
        [&](auto tag, int32_t c) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            using namespace vec;
            const V low = splat16<V>(0x00FF);
            const V e0 = packus16(and_(loadLanes<V, 32>(s0 + 2 * c), low), and_(loadLanes<V, 32>(s0 + 2 * c + 16), low));
            const V e1 = packus16(and_(loadLanes<V, 32>(s1 + 2 * c), low), and_(loadLanes<V, 32>(s1 + 2 * c + 16), low));
            storeLanes<V, 16>(out + c, avg8(e0, e1));
        },
        [&](int32_t c) { out[c] = up(s0[2 * c], s1[2 * c]); });
    for (int32_t c = nv; c < columns; ++c) out[c] = down(s0[2 * c], s1[2 * c]);
}

// The even samples of a row.
void evenColumns(const uint8_t* s, uint8_t* out, int32_t columns) { unzipPairs<true, false>(s, out, nullptr, columns); }

// 1620 -> 420 chroma: cw x ch source samples (a quarter of the region each way),
// 2 cw x 2 ch output.
void from1620(const uint8_t* s, int32_t sStep, uint8_t* d, int32_t dStep, PxkSize size) {
    const int32_t cw = size.width / 4, ch = size.height / 4;
    const int32_t nv = vectorColumns(cw, 32, 32, 16);
    for (int32_t r = 0; r < ch - 1; ++r) {
        const uint8_t* s0 = rowAt(s, sStep, r);
        widenRow(s0, rowAt(d, dStep, 2 * r), cw, nv);
        betweenRows(s0, rowAt(s, sStep, r + 1), rowAt(d, dStep, 2 * r + 1), cw, nv);
    }
    // The last source row: no 32-column step, and the row below repeats the source.
    const int32_t r = ch - 1;
    const uint8_t* s0 = rowAt(s, sStep, r);
    widenRow(s0, rowAt(d, dStep, 2 * r), cw, vectorColumns(cw, 0, 0, 16));
    zipPairs(s0, s0, rowAt(d, dStep, 2 * r + 1), cw);
}

// 420 -> 1620 chroma: D[r][c] = S[2r][2c], cw x ch output samples.
void to1620(const uint8_t* s, int32_t sStep, uint8_t* d, int32_t dStep, PxkSize size) {
    const int32_t cw = size.width / 4, ch = size.height / 4;
    for (int32_t r = 0; r < ch; ++r) evenColumns(rowAt(s, sStep, 2 * r), rowAt(d, dStep, r), cw);
}

// 411 -> 420 chroma: output row y from source row 2y, widened; cw source columns.
void from411(const uint8_t* s, int32_t sStep, uint8_t* d, int32_t dStep, PxkSize size) {
    const int32_t cw = size.width / 4, rows = size.height / 2;
    const int32_t nv = vectorColumns(cw, 64, 64, 16);
    for (int32_t y = 0; y < rows; ++y) widenRow(rowAt(s, sStep, 2 * y), rowAt(d, dStep, y), cw, nv);
}

// 420 -> 411 chroma: n source rows; row 2r the even samples of row r, row 2r + 1 the
// means with row r + 1. The main row runs at least once (with n = 1 it reads source
// row 1 and writes output rows 2 and 3 from it).
void to411(const uint8_t* s, int32_t sStep, uint8_t* d, int32_t dStep, PxkSize size) {
    const int32_t cw = size.width / 4, n = size.height / 2;
    const int32_t nv = cw - cw % 32;
    const int32_t mainRows = n - 1 > 1 ? n - 1 : 1;
    for (int32_t r = 0; r < mainRows; ++r) {
        const uint8_t* s0 = rowAt(s, sStep, r);
        evenColumns(s0, rowAt(d, dStep, 2 * r), cw);
        evenColumnMeans(s0, rowAt(s, sStep, r + 1), rowAt(d, dStep, 2 * r + 1), cw, nv);
    }
    const uint8_t* last = rowAt(s, sStep, mainRows);
    evenColumns(last, rowAt(d, dStep, 2 * mainRows), cw);
    evenColumns(last, rowAt(d, dStep, 2 * mainRows + 1), cw);
}

// The checks of all four: the arrays, their entries (and the step arrays, which are
// read at once), then the size.
PxkResult checkArguments(const uint8_t* const* src, const int32_t* srcStep, uint8_t* const* dst,
                         const int32_t* dstStep) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkPlanes(dst, 3));
    return checkPtrs(srcStep, dstStep);
}

bool multipleOf4From4(int32_t v) { return v >= 4 && v % 4 == 0; }

// The luma plane: one run of width * height bytes where both steps equal the width
// and width and height are below 2^15, else row by row; non-temporal stores above
// 1048576 pixels.
void copyLumaPlane(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size) {
    const int64_t pixels = int64_t{size.width} * size.height;
    const bool stream = pixels > 1048576;
    if (srcStep == dstStep && srcStep == size.width && size.width < 32768 && size.height < 32768) {
        copyRow(src, dst, static_cast<std::size_t>(pixels), stream, false);
        return;
    }
    for (int32_t y = 0; y < size.height; ++y) {
        copyRow(rowAt(src, srcStep, y), rowAt(dst, dstStep, y), static_cast<std::size_t>(size.width), stream, false);
    }
}

using ChromaKernel = void (*)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize);

// The sizes a member takes: width and height multiples of 4 from 4, or (420To411) a
// height that is even from 2.
enum class Heights { MultipleOf4, Even };

// The checks, then the luma plane and each chroma plane by `chroma`.
PxkResult resample(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* const dst[3],
                   const int32_t dstStep[3], PxkSize size, Heights heights, ChromaKernel chroma) {
    PXK_CHECK(checkArguments(src, srcStep, dst, dstStep));
    const bool heightOk = heights == Heights::Even ? size.height >= 2 && size.height % 2 == 0
                                                   : multipleOf4From4(size.height);
    if (!multipleOf4From4(size.width) || !heightOk) return pxkErrSize;
    copyLumaPlane(src[0], srcStep[0], dst[0], dstStep[0], size);
    for (int p = 1; p < 3; ++p) chroma(src[p], srcStep[p], dst[p], dstStep[p], size);
    return pxkOk;
}

}  // namespace

extern "C" {

PxkResult pxkiYCbCr1620To420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                    const int32_t dstStep[3], PxkSize roiSize) {
    return resample(pSrc, srcStep, pDst, dstStep, roiSize, Heights::MultipleOf4, from1620);
}

PxkResult pxkiYCbCr420To1620_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                    const int32_t dstStep[3], PxkSize roiSize) {
    return resample(pSrc, srcStep, pDst, dstStep, roiSize, Heights::MultipleOf4, to1620);
}

PxkResult pxkiYCbCr411To420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                   const int32_t dstStep[3], PxkSize roiSize) {
    return resample(pSrc, srcStep, pDst, dstStep, roiSize, Heights::MultipleOf4, from411);
}

// Height 2 reads chroma row 1 of the source and writes chroma rows 2 and 3 of the
// destination, outside the region: the caller supplies those rows.
PxkResult pxkiYCbCr420To411_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                   const int32_t dstStep[3], PxkSize roiSize) {
    return resample(pSrc, srcStep, pDst, dstStep, roiSize, Heights::Even, to411);
}

}  // extern "C"
