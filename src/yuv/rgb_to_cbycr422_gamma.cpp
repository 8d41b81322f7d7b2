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
// Whole pairs run in vector blocks of eight pairs as far as they fill them, the sums
// split as s . site + n . right + n . left, with n . left carried from pair to pair
// (the same integers, so the same bits), then pair by pair.
// Checks: the pointers, then the size (1 by 1); steps are not tested.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/fixed_point.h"
#include "twist_gamma/gamma_tables.h"
#include "yuv/hd_forms.h"
#include "yuv/hd_rows.h"
#include "yuv/pair_dots.h"
#include "yuv/subsampled_forms.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

// The chroma weights of a site and of each neighbour.
struct Weights {
    int32_t site[3];
    int32_t neighbour[3];
};
constexpr Weights kCb{{-2426, -4769, 7193}, {-1213, -2385, 3596}};
constexpr Weights kCr{{7193, -6030, -1164}, {3596, -3015, -582}};
constexpr int32_t kChromaRound = 4210687;

// The luma of the pairs, scale 2^15.
using PairLuma = OffsetLuma<8422, 16515, 3212, 540672, 15>;

PXK_INLINE int32_t dot(const int32_t (&k)[3], Pixel3 p) { return k[0] * p.c[0] + k[1] * p.c[1] + k[2] * p.c[2]; }

// Samples through the table (its entries fit a byte), `count` pixels.
PXK_INLINE void throughTable(const uint8_t* src, uint8_t* dst, int32_t count) {
    for (int32_t i = 0; i < 3 * count; ++i) dst[i] = static_cast<uint8_t>(gamma::kForward8u[src[i]]);
}

PXK_INLINE Pixel3 pixelThroughTable(const uint8_t* row, int32_t x) {
    const Pixel3 p = readPacked<3>(row, x);
    return Pixel3{{static_cast<uint8_t>(gamma::kForward8u[p.c[0]]), static_cast<uint8_t>(gamma::kForward8u[p.c[1]]),
                   static_cast<uint8_t>(gamma::kForward8u[p.c[2]])}};
}

// The chroma of a site, its right neighbour, and n . left (left being the pixel before
// the site) handed in: s . site + n . right + n . left, rounded, shifted, clamped.
PXK_INLINE uint8_t siteChroma(const Weights& w, Pixel3 site, Pixel3 right, int32_t leftDot) {
    return clamp8(asr(dot(w.site, site) + dot(w.neighbour, right) + leftDot + kChromaRound, 15));
}

// The vector twin for the pairs of a block: `carry` holds n . left of the block's first
// site, and leaves with that of the next block's.
template <class V>
PXK_INLINE V blockChroma(const Weights& w, const Block<V>& b, V& carry) {
    V sites[2], unused[2], rights[2], before[2];
    pairDots(w.site, b, sites, unused);
    pairDots(w.neighbour, b, unused, rights);
    fromPairBefore(rights, carry, before);
    V c[2];
    PXK_UNROLL
    for (int h = 0; h < 2; ++h) {
        c[h] = srai32<15>(add32(add32(sites[h], rights[h]), add32(before[h], splat32<V>(kChromaRound))));
    }
    return packs32(c[0], c[1]);  // within 16..240
}

// Pixels go through the table a stretch at a time, into a buffer on the stack.
constexpr int32_t kStretch = 256;

void gammaRow(int32_t width, const uint8_t* src, uint8_t* dst) {
    const CbYCrSink<vec::UnalignedMemory> out{dst};
    const int32_t pixels = 2 * (width / 2);
    // n . (the pixel before the next site); at the start of a row the first site
    // stands in for it.
    int32_t leftCb = 0, leftCr = 0;
    if (pixels > 0) {
        const Pixel3 first = pixelThroughTable(src, 0);
        leftCb = dot(kCb.neighbour, first);
        leftCr = dot(kCr.neighbour, first);
    }
    // Whole blocks of 16 pixels (eight pairs) in vectors, a stretch at a time.
    const int32_t blockEnd = pixels - pixels % kBlockPixels<V128>;
    if (blockEnd > 0) {
        alignas(16) uint8_t linear[3 * kStretch];
        for (int32_t x = 0; x < blockEnd; x += kStretch) {
            const int32_t count = blockEnd - x < kStretch ? blockEnd - x : kStretch;
            throughTable(src + pixelOffset<3>(x), linear, count);
            const PackedC3In in{{linear}};
            pairBlocks(0, count, [&](auto v, int32_t i) PXK_LAMBDA_INLINE {
                using V = decltype(v);
                const Block<V> b = in.load<V>(i);
                const V luma = simd::halvesToPixelBytes(PairLuma::luma(b.half[0]), PairLuma::luma(b.half[1]));
                V carryCb = carryOf<V>(leftCb), carryCr = carryOf<V>(leftCr);
                const V cb = blockChroma(kCb, b, carryCb), cr = blockChroma(kCr, b, carryCr);
                out.block422(x + i, luma, packus16(cb, cr));
                leftCb = carriedValue(carryCb);
                leftCr = carriedValue(carryCr);
            });
        }
    }
    // The pairs left, one at a time.
    for (int32_t x = blockEnd; x < pixels; x += 2) {
        const Pixel3 site = pixelThroughTable(src, x), right = pixelThroughTable(src, x + 1);
        out.luma(x, PairLuma::luma(site));
        out.luma(x + 1, PairLuma::luma(right));
        out.chroma(x / 2, siteChroma(kCb, site, right, leftCb), siteChroma(kCr, site, right, leftCr));
        leftCb = dot(kCb.neighbour, right);
        leftCr = dot(kCr.neighbour, right);
    }
    // A last odd pixel: its own Cb at 2^16, then its Y by the standard luma.
    if (width % 2 != 0) {
        const Pixel3 p = pixelThroughTable(src, pixels);
        out.loneChroma(pixels, low8(asr(dot(kStandardChroma.cb, p) - 8355840, 16)), 0);
        out.luma(pixels, DirectLuma::luma(p));
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
