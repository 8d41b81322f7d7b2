// v210 (10-bit 4:2:2, six pixels in four 32-bit words) -> 16-bit RGB or BGR words and
// 16-bit gray.
//
// Each word holds three 10-bit fields at bits 0, 10 and 20 (bits 30 and 31 ignored).
// Numbered across a group, field f sits in word f / 3 at bit 10 (f % 3), and the fields
// run Cb0 Y0 Cr0 Y1 Cb1 Y2 Cr1 Y3 Cb2 Y4 Cr2 Y5: pair j has Cb at field 4 j, Cr at
// 4 j + 2, and the Y of its two pixels at 4 j + 1 and 4 j + 3.
//
// Colour, in single precision, in this order and without contraction, Y as it stands
// and Cb, Cr less 512:
//   R = Y + 1.54 Cr;  G = Y + (-0.183 Cb + -0.459 Cr) (the chroma term once a pair);
//   B = Y + 1.816 Cb;
// each rounded by t = trunc(x), t + 1 unless x - t < 0.5; then R and B clamped to 0..31
// and G to 0..63 (no scaling: the clamp makes the fields fit), packed R | G << 5 | B << 11
// (RGB) or B | G << 5 | R << 11 (BGR).
// Gray: the Y field as it stands.
//
// Rows: groups of six pixels, then the width % 6 that remain from the next group's
// words (gray: word pairs of three pixels, then the one or two that remain); only the
// words that hold a needed field are read. Steps count elements: srcStep 32-bit words,
// dstStep 16-bit words. Checks: the pointers, the size (1 by 1), then the steps (below
// 1 gives pxkErrSize).
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"

#include <cstring>

using namespace pxk;

namespace {

// Field f of a row of groups. Words and output samples are moved by memcpy: the
// caller's pointers need no alignment.
PXK_INLINE int32_t field(const uint32_t* row, int32_t f) {
    uint32_t word;
    std::memcpy(&word, row + f / 3, sizeof word);
    return static_cast<int32_t>((word >> (10 * (f % 3))) & 0x3FF);
}

PXK_INLINE void put(uint16_t* row, int32_t x, uint16_t v) { std::memcpy(row + x, &v, sizeof v); }

// Field numbers of pixel x's Y, and of its pair's Cb and Cr.
PXK_INLINE int32_t lumaField(int32_t x) { return 4 * (x / 2) + 1 + 2 * (x % 2); }
PXK_INLINE int32_t cbField(int32_t x) { return 4 * (x / 2); }
PXK_INLINE int32_t crField(int32_t x) { return 4 * (x / 2) + 2; }

// t = trunc(x), then t + 1 unless x - t < 0.5. Every value reached lies well inside the
// range of int32_t, so the conversion is defined.
PXK_INLINE int32_t roundUpFromHalf(float x) {
    const int32_t t = static_cast<int32_t>(x);
    return (x - static_cast<float>(t) < 0.5f) ? t : t + 1;
}

PXK_INLINE uint32_t clampTo(int32_t v, int32_t hi) { return static_cast<uint32_t>(v < 0 ? 0 : (v > hi ? hi : v)); }

// One pair's chroma terms.
struct PairChroma {
    float toR, toG, toB;
};

PXK_INLINE PairChroma pairChroma(int32_t cbField10, int32_t crField10) {
    const float cb = static_cast<float>(cbField10 - 512), cr = static_cast<float>(crField10 - 512);
    return PairChroma{1.54f * cr, -0.183f * cb + -0.459f * cr, 1.816f * cb};
}

template <bool Bgr>
PXK_INLINE uint16_t packed(int32_t luma, const PairChroma& c) {
    const float y = static_cast<float>(luma);
    const uint32_t r = clampTo(roundUpFromHalf(y + c.toR), 31);
    const uint32_t g = clampTo(roundUpFromHalf(y + c.toG), 63);
    const uint32_t b = clampTo(roundUpFromHalf(y + c.toB), 31);
    return static_cast<uint16_t>(Bgr ? (b | g << 5 | r << 11) : (r | g << 5 | b << 11));
}

template <bool Bgr>
void colourRow(int32_t width, const uint32_t* src, uint16_t* dst) {
    // Whole groups of six, then the rest: the same fields, pair by pair.
    for (int32_t x = 0; x < width; x += 2) {
        const PairChroma c = pairChroma(field(src, cbField(x)), field(src, crField(x)));
        put(dst, x, packed<Bgr>(field(src, lumaField(x)), c));
        if (x + 1 < width) put(dst, x + 1, packed<Bgr>(field(src, lumaField(x + 1)), c));
    }
}

void grayRow(int32_t width, const uint32_t* src, uint16_t* dst) {
    for (int32_t x = 0; x < width; ++x) put(dst, x, static_cast<uint16_t>(field(src, lumaField(x))));
}

template <class Row>
PxkResult fromV210(const uint32_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, PxkSize size, Row row) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    if (srcStep < 1 || dstStep < 1) return pxkErrSize;
    const std::intptr_t srcBytes = static_cast<std::intptr_t>(srcStep) * 4;
    const std::intptr_t dstBytes = static_cast<std::intptr_t>(dstStep) * 2;
    for (int32_t y = 0; y < size.height; ++y) {
        row(size.width, src, dst);
        src = byteOffset(src, srcBytes);
        dst = byteOffset(dst, dstBytes);
    }
    return pxkOk;
}

constexpr bool kBGR = true, kRGB = false;

}  // namespace

extern "C" {

PxkResult pxkiYUV422v210ToRGB_709HDTV_32u16u_C3(const uint32_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                PxkSize roiSize) {
    return fromV210(pSrc, srcStep, pDst, dstStep, roiSize, colourRow<kRGB>);
}

PxkResult pxkiYUV422v210ToBGR_709HDTV_32u16u_C3(const uint32_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                PxkSize roiSize) {
    return fromV210(pSrc, srcStep, pDst, dstStep, roiSize, colourRow<kBGR>);
}

PxkResult pxkiYUV422v210ToGray_709HDTV_32u16u_C3C1(const uint32_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                                   int32_t dstStep, PxkSize roiSize) {
    return fromV210(pSrc, srcStep, pDst, dstStep, roiSize, grayRow);
}

}  // extern "C"
