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
// words that hold a needed field are read. Whole groups run four at a time in vector
// blocks that give the bits of the scalar pixels. Steps count elements: srcStep 32-bit words,
// dstStep 16-bit words. Checks: the pointers, the size (1 by 1), then the steps (below
// 1 gives pxkErrSize).
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"

#include <cstring>

#include "frame/vec.h"

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
PXK_INLINE void colourPixels(const uint32_t* src, uint16_t* dst, int32_t from, int32_t width) {
    // Pair by pair, the chroma terms once a pair.
    for (int32_t x = from; x < width; x += 2) {
        const PairChroma c = pairChroma(field(src, cbField(x)), field(src, crField(x)));
        put(dst, x, packed<Bgr>(field(src, lumaField(x)), c));
        if (x + 1 < width) put(dst, x + 1, packed<Bgr>(field(src, lumaField(x + 1)), c));
    }
}

PXK_INLINE void grayPixels(const uint32_t* src, uint16_t* dst, int32_t from, int32_t width) {
    for (int32_t x = from; x < width; ++x) put(dst, x, static_cast<uint16_t>(field(src, lumaField(x))));
}

// ---------------------------------------------------------------------------------
// Vector blocks of four groups a 128-bit lane (24 pixels, 16 words): the same fields
// and the same single-precision operations in the same order as the scalar pixels, so
// the same bits. Lane L of a block holds groups 4 L to 4 L + 3.
// ---------------------------------------------------------------------------------

using namespace vec;

// The twelve fields of each lane's four groups, field f of the lane's group g in its
// 32-bit lane g of fields[f].
template <class V>
struct GroupFields {
    V f[12];
};

template <class V>
PXK_INLINE GroupFields<V> loadGroups(const uint32_t* src) {
    const uint8_t* p = reinterpret_cast<const uint8_t*>(src);
    const V g0 = loadLanes<V, 64>(p), g1 = loadLanes<V, 64>(p + 16);
    const V g2 = loadLanes<V, 64>(p + 32), g3 = loadLanes<V, 64>(p + 48);
    // Transpose: word k of the four groups in one vector.
    const V a = unpacklo32(g0, g1), b = unpacklo32(g2, g3), c = unpackhi32(g0, g1), d = unpackhi32(g2, g3);
    const V words[4] = {unpacklo64(a, b), unpackhi64(a, b), unpacklo64(c, d), unpackhi64(c, d)};
    const V mask = splat32<V>(0x3FF);
    GroupFields<V> out;
    PXK_UNROLL
    for (int k = 0; k < 4; ++k) {
        out.f[3 * k] = and_(words[k], mask);
        out.f[3 * k + 1] = and_(srli32<10>(words[k]), mask);
        out.f[3 * k + 2] = and_(srli32<20>(words[k]), mask);
    }
    return out;
}

// Stores 24 samples of each lane's four groups: pairs[j] holds the two samples of pair
// j of group g (first in the low half) in its 32-bit lane g; the groups go one after
// the other, six samples each, 48 bytes a lane.
template <class V>
PXK_INLINE void storeGroups(uint16_t* dst, const V pairs[3]) {
    const V p0 = pairs[0], p1 = pairs[1], p2 = pairs[2];
    const V p0next = bytesDown<4>(p0), p1next = bytesDown<4>(p1), p2next = bytesDown<4>(p2);
    const V t0 = unpacklo32(p0, p1);         // P0g0 P1g0 P0g1 P1g1
    const V t1 = unpackhi32(p0, p1);         // P0g2 P1g2 P0g3 P1g3
    const V u = unpacklo32(p2, p0next);      // P2g0 P0g1 P2g1 P0g2
    const V w = unpacklo32(p1next, p2next);  // P1g1 P2g1 P1g2 P2g2
    const V z = unpackhi32(p2, p0next);      // P2g2 P0g3 P2g3 -
    const V q = unpackhi32(p1, p2);          // P1g2 P2g2 P1g3 P2g3
    uint8_t* out = reinterpret_cast<uint8_t*>(dst);
    storeLanes<V, 48>(out, shuffle2x32<_MM_SHUFFLE(1, 0, 1, 0)>(t0, u));       // P0g0 P1g0 P2g0 P0g1
    storeLanes<V, 48>(out + 16, shuffle2x32<_MM_SHUFFLE(1, 0, 1, 0)>(w, t1));  // P1g1 P2g1 P0g2 P1g2
    storeLanes<V, 48>(out + 32, shuffle2x32<_MM_SHUFFLE(3, 2, 1, 0)>(z, q));   // P2g2 P0g3 P1g3 P2g3
}

// t = trunc(x), then t + 1 unless x - t < 0.5: t + 1 plus the all-ones mask of x - t <
// 0.5. Every value lies well inside the range of the conversion.
template <class V>
PXK_INLINE V roundUpFromHalf(FloatOf<V> x) {
    const V t = truncToInt(x);
    const V below = lessThanF(subF(x, toFloat(t)), splatF<FloatOf<V>>(0.5f));
    return add32(add32(t, splat32<V>(1)), below);
}

// The two 16-bit samples of pair j of each group, from the fields.
template <bool Bgr, class V>
PXK_INLINE V colourPair(const GroupFields<V>& g, int j) {
    using F = FloatOf<V>;
    const V bias = splat32<V>(512);
    const F cb = toFloat(sub32(g.f[4 * j], bias)), cr = toFloat(sub32(g.f[4 * j + 2], bias));
    const F toR = mulF(splatF<F>(1.54f), cr);
    const F toG = addF(mulF(splatF<F>(-0.183f), cb), mulF(splatF<F>(-0.459f), cr));
    const F toB = mulF(splatF<F>(1.816f), cb);
    const F y0 = toFloat(g.f[4 * j + 1]), y1 = toFloat(g.f[4 * j + 3]);
    // Each channel of both pixels in 16-bit lanes (first pixel low), clamped.
    auto channel = [&](F term, int32_t hi) PXK_LAMBDA_INLINE {
        const V both = packs32(roundUpFromHalf<V>(addF(y0, term)), roundUpFromHalf<V>(addF(y1, term)));
        return min16(max16(both, zero<V>()), splat16<V>(hi));
    };
    const V r = channel(toR, 31), gr = channel(toG, 63), b = channel(toB, 31);
    const V packed = or_(or_(Bgr ? b : r, slli16<5>(gr)), slli16<11>(Bgr ? r : b));
    return unpacklo16(packed, upperHalf(packed));  // first and second pixel side by side
}

template <class V>
PXK_INLINE V grayPair(const GroupFields<V>& g, int j) {
    return or_(g.f[4 * j + 1], slli32<16>(g.f[4 * j + 3]));
}

// Whole groups, four a 128-bit lane, from group `first`: the widest vector while it
// fills, then 128-bit blocks. Returns the first group left.
template <class Block>
PXK_INLINE int32_t v210Blocks(int32_t groups, const uint32_t* src, uint16_t* dst, Block block) {
    int32_t g = 0;
    constexpr int32_t kWide = 4 * kLanes<Widest>;
    for (; groups - g >= kWide; g += kWide) block(Widest{}, src + 4 * g, dst + 6 * g);
    if constexpr (kWide > 4) {
        for (; groups - g >= 4; g += 4) block(V128{}, src + 4 * g, dst + 6 * g);
    }
    return g;
}

// A row: vector blocks of whole groups, then pixel by pixel (the groups left, and the
// width % 6 pixels of the next group's words).
template <bool Bgr>
void colourRow(int32_t width, const uint32_t* src, uint16_t* dst) {
    const int32_t done = v210Blocks(width / 6, src, dst, [](auto v, const uint32_t* s, uint16_t* d) PXK_LAMBDA_INLINE {
        using V = decltype(v);
        const GroupFields<V> g = loadGroups<V>(s);
        const V pairs[3] = {colourPair<Bgr>(g, 0), colourPair<Bgr>(g, 1), colourPair<Bgr>(g, 2)};
        storeGroups(d, pairs);
    });
    colourPixels<Bgr>(src, dst, 6 * done, width);
}

void grayRow(int32_t width, const uint32_t* src, uint16_t* dst) {
    const int32_t done = v210Blocks(width / 6, src, dst, [](auto v, const uint32_t* s, uint16_t* d) PXK_LAMBDA_INLINE {
        using V = decltype(v);
        const GroupFields<V> g = loadGroups<V>(s);
        const V pairs[3] = {grayPair(g, 0), grayPair(g, 1), grayPair(g, 2)};
        storeGroups(d, pairs);
    });
    grayPixels(src, dst, 6 * done, width);
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
