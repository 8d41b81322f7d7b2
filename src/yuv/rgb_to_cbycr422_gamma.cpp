// RGB -> packed CbYCr422 through the forward transfer curve: every sample is first read
// through the forward 8u gamma table (32-bit entries), then converted.
//
// Columns go in groups of four, then a pair, then a last odd pixel. In the groups and
// in the pair after them:
//   Y = clamp8((8422 R + 16515 G + 3212 B + 540672) >> 15) for each pixel;
//   the chroma of a pair is taken at its first (even) pixel, the site, weighing the
//   site double and each neighbour (the pixels just before and after it) once:
//   C = clamp8((s . site + n . (left + right) + 4210687) >> 15), with s, n the site and
//   neighbour rows below. At the start of a row, where the first site has no pixel
//   before it, the site pixel stands in for its missing left neighbour; the right
//   neighbour of a site is always the second pixel of its own pair.
// A last odd pixel writes two bytes: Cb = low8((-9699 R - 19071 G + 28770 B - 8355840)
// >> 16), then Y = low8((16843 R + 33030 G + 6423 B + 1081344) >> 16); its Cr byte is
// left unwritten.
// Checks: the pointers, then the size (1 by 1); steps are not tested.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/fixed_point.h"
#include "twist_gamma/gamma_tables.h"
#include "yuv/hd_rows.h"
#include "yuv/subsampled_forms.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

struct Weights {
    int32_t site[3];
    int32_t neighbour[3];
};
constexpr Weights kCb{{-2426, -4769, 7193}, {-1213, -2385, 3596}};
constexpr Weights kCr{{7193, -6030, -1164}, {3596, -3015, -582}};
constexpr int32_t kChromaRound = 4210687;

// A pixel of the row, read through the table.
struct Linear {
    int32_t c[3];
};

PXK_INLINE Linear readThroughTable(const uint8_t* row, int32_t x) {
    const uint8_t* p = row + pixelOffset<3>(x);
    return Linear{{static_cast<int32_t>(gamma::kForward8u[p[0]]), static_cast<int32_t>(gamma::kForward8u[p[1]]),
                   static_cast<int32_t>(gamma::kForward8u[p[2]])}};
}

PXK_INLINE uint8_t groupLuma(const Linear& p) {
    return clamp8(asr(8422 * p.c[0] + 16515 * p.c[1] + 3212 * p.c[2] + 540672, 15));
}

PXK_INLINE uint8_t siteChroma(const Weights& w, const Linear& left, const Linear& site, const Linear& right) {
    int32_t sum = kChromaRound;
    for (int c = 0; c < 3; ++c) sum += w.site[c] * site.c[c] + w.neighbour[c] * (left.c[c] + right.c[c]);
    return clamp8(asr(sum, 15));
}

// The pair at column x (even), its chroma at x with neighbours x - 1 (or x itself at
// the start of the row) and x + 1.
PXK_INLINE void pairAt(const uint8_t* src, const CbYCrSink<vec::UnalignedMemory>& out, int32_t x) {
    const Linear site = readThroughTable(src, x);
    const Linear right = readThroughTable(src, x + 1);
    const Linear left = x == 0 ? site : readThroughTable(src, x - 1);
    out.luma(x, groupLuma(site));
    out.luma(x + 1, groupLuma(right));
    out.chroma(x / 2, siteChroma(kCb, left, site, right), siteChroma(kCr, left, site, right));
}

void gammaRow(int32_t width, const uint8_t* src, uint8_t* dst) {
    const CbYCrSink<vec::UnalignedMemory> out{dst};
    const int32_t groups = width / 4;
    for (int32_t g = 0; g < groups; ++g) {
        pairAt(src, out, 4 * g);
        pairAt(src, out, 4 * g + 2);
    }
    int32_t x = 4 * groups;
    if (width - x >= 2) {
        pairAt(src, out, x);
        x += 2;
    }
    if (x < width) {
        const Linear p = readThroughTable(src, x);
        out.loneChroma(x, low8(asr(-9699 * p.c[0] - 19071 * p.c[1] + 28770 * p.c[2] - 8355840, 16)), 0);
        out.luma(x, low8(asr(16843 * p.c[0] + 33030 * p.c[1] + 6423 * p.c[2] + 1081344, 16)));
    }
}

}  // namespace

extern "C" {

PxkResult pxkiRGBToCbYCr422Gamma_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    driveRows(roiSize.width, roiSize.height, gammaRow, rows(pSrc, srcStep), rows(pDst, dstStep));
    return pxkOk;
}

}  // extern "C"
