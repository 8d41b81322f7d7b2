// The fixed-point forms of the BT.601 studio-range matrix and of its inverse. Each
// form is one struct with a scalar apply(Pixel3) and, where a vector block uses it,
// one apply(Lanes3<V>) over the vector type (eight pixels of 16-bit lanes per 128-bit
// lane); the two give the same bits.
// The forms of one matrix differ from one another in their low bit and are kept apart
// on purpose: which one a pixel gets is part of each export's output.
//
// Vector results are 16-bit lanes that the layouts saturate to 8 bits on store.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/fixed_point.h"
#include "frame/pixel_block.h"
#include "frame/vec.h"

namespace pxk {
namespace yuv {

using namespace vec;

// ---------------------------------------------------------------------------------
// RGB -> YCbCr. Input channels R, G, B; output Y, Cb, Cr.
// ---------------------------------------------------------------------------------

// The direct form: 32-bit sums at a scale of 2^16, offsets 16.5 and 128.5, the low 8
// bits of each result kept. The results always lie in 16..240, so the vector store's
// saturation never acts and gives the same bytes.
struct DirectForm {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t r = p.c[0], g = p.c[1], b = p.c[2];
        return Pixel3{{low8(asr(16843 * r + 33030 * g + 6423 * b + 1081344, 16)),
                       low8(asr(-9699 * r - 19071 * g + 28770 * b + 8421376, 16)),
                       low8(asr(28770 * r - 24117 * g - 4653 * b + 8421376, 16))}};
    }

    // The vector block forms each sum with two madd16 products, on the pairs
    // (R, G) and (G + 1024, B). The G coefficient of each row is split between the two
    // pairs so that the second pair's share times 1024 is the row's offset, and the Y
    // coefficient 33030, too wide for one signed 16-bit factor, is split in passing:
    //   Y:  16843 R + 31974 G  +  1056 (G + 1024) +  6423 B
    //   Cb: -9699 R - 27295 G  +  8224 (G + 1024) + 28770 B
    //   Cr: 28770 R - 32341 G  +  8224 (G + 1024) -  4653 B
    struct Split {
        int32_t r, g, gBiased, b;
    };
    static constexpr int32_t kGreenBias = 1024;
    static constexpr Split kSplitY{16843, 31974, 1056, 6423};
    static constexpr Split kSplitCb{-9699, -27295, 8224, 28770};
    static constexpr Split kSplitCr{28770, -32341, 8224, -4653};
    static_assert(kSplitY.g + kSplitY.gBiased == 33030 && kSplitY.gBiased * kGreenBias == 1081344, "Y split");
    static_assert(kSplitCb.g + kSplitCb.gBiased == -19071 && kSplitCb.gBiased * kGreenBias == 8421376, "Cb split");
    static_assert(kSplitCr.g + kSplitCr.gBiased == -24117 && kSplitCr.gBiased * kGreenBias == 8421376, "Cr split");

    template <class V>
    PXK_INLINE static V row(const Split& k, const V rg[2], const V gb[2]) {
        V s[2];
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) {
            s[h] = srai32<16>(add32(madd16(rg[h], pairs<V>(k.r, k.g)), madd16(gb[h], pairs<V>(k.gBiased, k.b))));
        }
        return packs32(s[0], s[1]);
    }
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        const V g = add16(v.c[1], splat16<V>(kGreenBias));
        const V rg[2] = {unpacklo16(v.c[0], v.c[1]), unpackhi16(v.c[0], v.c[1])};
        const V gb[2] = {unpacklo16(g, v.c[2]), unpackhi16(g, v.c[2])};
        return Lanes3<V>{{row(kSplitY, rg, gb), row(kSplitCb, rg, gb), row(kSplitCr, rg, gb)}};
    }

    // Y alone.
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& v) {
        const V g = add16(v.c[1], splat16<V>(kGreenBias));
        const V rg[2] = {unpacklo16(v.c[0], v.c[1]), unpackhi16(v.c[0], v.c[1])};
        const V gb[2] = {unpacklo16(g, v.c[2]), unpackhi16(g, v.c[2])};
        return row(kSplitY, rg, gb);
    }

    // Y alone, with `less` (32-bit lanes, in the order of the pixels unpacked from each
    // half of the vector: the same pattern for both) taken off each sum before the
    // shift: a lower offset for chosen pixels.
    template <class V>
    PXK_INLINE static V lumaLess(const Lanes3<V>& v, V less) {
        const V g = add16(v.c[1], splat16<V>(kGreenBias));
        const V rg[2] = {unpacklo16(v.c[0], v.c[1]), unpackhi16(v.c[0], v.c[1])};
        const V gb[2] = {unpacklo16(g, v.c[2]), unpackhi16(g, v.c[2])};
        V s[2];
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) {
            const V sum = add32(madd16(rg[h], pairs<V>(kSplitY.r, kSplitY.g)),
                                madd16(gb[h], pairs<V>(kSplitY.gBiased, kSplitY.b)));
            s[h] = srai32<16>(sub32(sum, less));
        }
        return packs32(s[0], s[1]);
    }
};

// The paired form: 16-bit coefficients at a scale of 2^15, four fraction bits kept.
// The R and G products are summed and shifted together, the B product is shifted
// alone; the two truncations are what set this form apart.
struct PairedForm {
    struct Row {
        int32_t r, g, b, offset;
    };
    static constexpr Row kY{8421, 16515, 3211, 264};
    static constexpr Row kCb{-4850, -9535, 14385, 2056};
    static constexpr Row kCr{14385, -12059, -2327, 2056};

    PXK_INLINE static uint8_t one(const Row& k, int32_t r, int32_t g, int32_t b) {
        const int32_t p = asr(k.r * r + k.g * g, 11);
        const int32_t q = asr(k.b * b, 11);
        return clamp8(asr(p + q + k.offset, 4));
    }
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        return Pixel3{{one(kY, p.c[0], p.c[1], p.c[2]), one(kCb, p.c[0], p.c[1], p.c[2]),
                       one(kCr, p.c[0], p.c[1], p.c[2])}};
    }

    // Two sets of four results, each the output of row k of its own four pixels: rgLo
    // and rgHi hold the (R, G) pairs of the pixels, b32 their B times 32, the lower set
    // in its lower half. (cR * R + cG * G) >> 11 comes by pairs; (cB * B) >> 11 as the
    // high product of B * 32.
    template <class V>
    PXK_INLINE static V quadPair(const Row& kLo, const Row& kHi, V rgLo, V rgHi, V b32) {
        const V p = packs32(srai32<11>(madd16(rgLo, pairs<V>(kLo.r, kLo.g))),
                            srai32<11>(madd16(rgHi, pairs<V>(kHi.r, kHi.g))));
        const V q = mulhi16(b32, splat16Halves<V>(kLo.b, kHi.b));
        return srai16<4>(add16(add16(p, q), splat16Halves<V>(kLo.offset, kHi.offset)));
    }
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        const V rg[2] = {unpacklo16(v.c[0], v.c[1]), unpackhi16(v.c[0], v.c[1])};
        const V b32 = slli16<5>(v.c[2]);
        return Lanes3<V>{{quadPair(kY, kY, rg[0], rg[1], b32), quadPair(kCb, kCb, rg[0], rg[1], b32),
                          quadPair(kCr, kCr, rg[0], rg[1], b32)}};
    }

    // In quad order the R, G and B quads of pixel set s are quads 3s, 3s + 1 and
    // 3s + 2, and output quad 3s + k is row k of that set; an output vector pairs two
    // quads whose rows may differ. (128-bit only: the avx2 build's packed layouts have
    // byte shuffles and need no quad order.)
    static constexpr Row kRows[3] = {kY, kCb, kCr};
    template <int S>
    PXK_INLINE static V128 rgPairs(const Quads16& q) {
        return unpacklo16(simd::quadLow<3 * S>(q), simd::quadLow<3 * S + 1>(q));
    }
    template <int Out>
    PXK_INLINE static V128 outputQuads(const Quads16& q, const V128 rg[4]) {
        constexpr int sLo = (2 * Out) / 3, kLo = (2 * Out) % 3, sHi = (2 * Out + 1) / 3, kHi = (2 * Out + 1) % 3;
        const V128 b32 = slli16<5>(simd::joinQuads<3 * sLo + 2, 3 * sHi + 2>(q));
        return quadPair(kRows[kLo], kRows[kHi], rg[sLo], rg[sHi], b32);
    }
    PXK_INLINE static Quads16 apply(const Quads16& q) {
        const V128 rg[4] = {rgPairs<0>(q), rgPairs<1>(q), rgPairs<2>(q), rgPairs<3>(q)};
        return Quads16{{outputQuads<0>(q, rg), outputQuads<1>(q, rg), outputQuads<2>(q, rg),
                        outputQuads<3>(q, rg), outputQuads<4>(q, rg), outputQuads<5>(q, rg)}};
    }
};

// The high-product form: the direct form's coefficients, each product truncated by
// itself to its high 16 bits. Luma works on R * 256 with unsigned factors (33030 is
// taken as unsigned), chroma on R * 128 with signed ones.
struct HighProductForm {
    static constexpr int32_t kLuma[3] = {16843, 33030, 6423};
    static constexpr int32_t kCb[3] = {-9699, -19071, 28770};
    static constexpr int32_t kCr[3] = {28770, -24117, -4653};

    PXK_INLINE static uint8_t chroma(const int32_t (&k)[3], int32_t r, int32_t g, int32_t b) {
        const int32_t sum = highProduct(k[0], r * 128) + highProduct(k[1], g * 128) +
                            highProduct(k[2], b * 128);
        return clamp8(asr(sum + 64, 7) + 128);
    }
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t r = p.c[0], g = p.c[1], b = p.c[2];
        const int32_t luma = highProductUnsigned(kLuma[0], r * 256) + highProductUnsigned(kLuma[1], g * 256) +
                             highProductUnsigned(kLuma[2], b * 256);
        return Pixel3{{clamp8(asr(luma + 128, 8) + 16), chroma(kCb, r, g, b), chroma(kCr, r, g, b)}};
    }

    // The vector block takes every product from the samples times 128. A luma product
    // of R * 256 by k is the product of R * 128 by 2k, which still fits an unsigned
    // factor for R and B; G keeps G * 256, as 2 * 33030 does not. The constant
    // additions after the shifts ride on the rounding halves: 16 * 256 + 128 before
    // the luma shift, 128 * 128 + 64 before the chroma shifts (neither sum wraps: luma
    // stays below 2^16 unsigned, chroma within 2118..30777).
    static constexpr int32_t kLumaRound = 16 * 256 + 128;
    static constexpr int32_t kChromaRound = 128 * 128 + 64;

    template <class V>
    PXK_INLINE static V chroma(const int32_t (&k)[3], const V x128[3]) {
        const V sum = add16(add16(mulhi16(x128[0], splat16<V>(k[0])), mulhi16(x128[1], splat16<V>(k[1]))),
                            add16(mulhi16(x128[2], splat16<V>(k[2])), splat16<V>(kChromaRound)));
        return srai16<7>(sum);
    }
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        const V x128[3] = {slli16<7>(v.c[0]), slli16<7>(v.c[1]), slli16<7>(v.c[2])};
        const V g256 = add16(x128[1], x128[1]);
        const V luma = add16(add16(mulhiu16(x128[0], splat16<V>(2 * kLuma[0])), mulhiu16(g256, splat16<V>(kLuma[1]))),
                             add16(mulhiu16(x128[2], splat16<V>(2 * kLuma[2])), splat16<V>(kLumaRound)));
        return Lanes3<V>{{srli16<8>(luma), chroma(kCb, x128), chroma(kCr, x128)}};
    }
};

// ---------------------------------------------------------------------------------
// YCbCr -> RGB.
//
// The inverse forms sum a luma term and a chroma term for each output. Their vector
// blocks come in two parts, chromaTerms(Cb, Cr) and withLuma(Y, terms), so that pixels
// that share their chroma samples share the chroma terms: every sum is exact in 16
// bits, so the order of the additions does not change a bit. Input channels Y, Cb, Cr (raw samples); output R, G, B.
// ---------------------------------------------------------------------------------

// The inverse matrix at a scale of 2^16: R from Y and Cr, G from all three, B from Y
// and Cb, with Cb and Cr taken less 128, then shifted and saturated. Each output has
// its own offset (most forms give all three the same one).
struct InverseMatrix {
    int32_t y, crToR, cbToG, crToG, cbToB;
    int32_t offset[3];  // R, G, B

    // The offsets are always given all three (a brace list of six would leave two of
    // them 0).
    constexpr InverseMatrix(int32_t y_, int32_t crToR_, int32_t cbToG_, int32_t crToG_, int32_t cbToB_,
                            int32_t offsetR, int32_t offsetG, int32_t offsetB)
        : y(y_), crToR(crToR_), cbToG(cbToG_), crToG(crToG_), cbToB(cbToB_), offset{offsetR, offsetG, offsetB} {}
};

// One offset for all three outputs.
constexpr InverseMatrix inverseMatrix(int32_t y, int32_t crToR, int32_t cbToG, int32_t crToG, int32_t cbToB,
                                      int32_t offset) {
    return InverseMatrix(y, crToR, cbToG, crToG, cbToB, offset, offset, offset);
}

// The forms of the inverse matrix that differ only in their constants share this
// body.
//
// The vector block works in 16-bit lanes and finds each result q = s >> 16 of the
// 32-bit sum s = y * Y + ... + offset from two halves that 16-bit multiplies give:
//   - an estimate e of s / 2^12 + 8, from high products of the samples times 256 with
//     the coefficients divided by 16 and rounded, plus 8 and the offset / 2^12
//     rounded: each of the (at most three) products truncates by less than 1 and is
//     off by at most 255 / 512 through its rounded factor, the offset by 1/2, so e lies
//     within -4.5 and +1.5 of s / 2^12 + 8;
//   - the exact low 16 bits lo of s, from low products (they wrap modulo 2^16 as s
//     does; only the coefficients modulo 2^16 matter).
// With s = 2^16 q + lo, s / 2^12 + 8 = 16 q + lo / 2^12 + 8, so e - (lo >> 12) lies
// in 16 q + (3, 11), and (e - (lo >> 12)) >> 4 is q exactly. All of it stays within
// 16 bits: |s| / 2^12 is below 9000.
// The luma products are shared by the three outputs, and so are the offsets' terms
// where the offsets are equal.
template <const InverseMatrix& M>
struct InverseMatrixForm {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t y = p.c[0], cb = p.c[1] - 128, cr = p.c[2] - 128;
        return Pixel3{{clamp8(asr(M.y * y + M.crToR * cr + M.offset[0], 16)),
                       clamp8(asr(M.y * y + M.cbToG * cb + M.crToG * cr + M.offset[1], 16)),
                       clamp8(asr(M.y * y + M.cbToB * cb + M.offset[2], 16))}};
    }

    // k / 16 rounded to nearest: the factor of a sample times 256 in the estimate.
    static constexpr int32_t estimateFactor(int32_t k) { return (k >= 0 ? k + 8 : k - 8) / 16; }
    // 8 + offset / 2^12 rounded to nearest.
    static constexpr int32_t estimateBase(int32_t offset) {
        return 8 + (offset >= 0 ? offset + 2048 : offset - 2048) / 4096;
    }
    static_assert(estimateFactor(M.y) > 0 && estimateFactor(M.y) < 65536, "luma factor, unsigned");
    static_assert(estimateFactor(M.crToR) > -32768 && estimateFactor(M.crToR) < 32768 &&
                      estimateFactor(M.cbToG) > -32768 && estimateFactor(M.crToG) > -32768 &&
                      estimateFactor(M.cbToB) < 32768,
                  "chroma factors, signed");

    // The corrected shift of one output from its estimate and low 16 bits.
    template <class V>
    PXK_INLINE static V finish(V estimate, V low) {
        return srai16<4>(sub16(estimate, srli16<12>(low)));
    }
    template <class V>
    PXK_INLINE static V addEstimate(V acc, V x256, int32_t k) {
        return add16(acc, mulhi16(x256, splat16<V>(estimateFactor(k))));
    }
    // Low products need k modulo 2^16 only, which is what splat16 keeps.
    template <class V>
    PXK_INLINE static V addLow(V acc, V x, int32_t k) {
        return add16(acc, mullo16(x, splat16<V>(k)));
    }

    // The block in two parts: the chroma terms (with the offsets), which pixels that
    // share their chroma share, then the luma terms of each pixel and the shift.
    // Estimates first, then low bits, for R, G, B.
    template <class V>
    PXK_INLINE static Terms<V, 6> chromaTerms(V cbRaw, V crRaw) {
        const V cb = sub16(cbRaw, splat16<V>(128));
        const V cr = sub16(crRaw, splat16<V>(128));
        const V cb256 = slli16<8>(cb);
        const V cr256 = slli16<8>(cr);
        Terms<V, 6> t;
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) {
            t.v[c] = splat16<V>(estimateBase(M.offset[c]));
            t.v[3 + c] = splat16<V>(M.offset[c]);
        }
        t.v[0] = addEstimate(t.v[0], cr256, M.crToR);
        t.v[1] = addEstimate(addEstimate(t.v[1], cb256, M.cbToG), cr256, M.crToG);
        t.v[2] = addEstimate(t.v[2], cb256, M.cbToB);
        t.v[3] = addLow(t.v[3], cr, M.crToR);
        t.v[4] = addLow(addLow(t.v[4], cb, M.cbToG), cr, M.crToG);
        t.v[5] = addLow(t.v[5], cb, M.cbToB);
        return t;
    }
    template <class V>
    PXK_INLINE static Lanes3<V> withLuma(V y, const Terms<V, 6>& t) {
        const V lumaEstimate = mulhiu16(slli16<8>(y), splat16<V>(estimateFactor(M.y)));
        const V lumaLow = mullo16(y, splat16<V>(M.y));
        Lanes3<V> out;
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) out.c[c] = finish(add16(lumaEstimate, t.v[c]), add16(lumaLow, t.v[3 + c]));
        return out;
    }
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        return withLuma(v.c[0], chromaTerms(v.c[1], v.c[2]));
    }
};

inline constexpr InverseMatrix kRoundedMatrix = inverseMatrix(76282, 104593, -25689, -53279, 132184, -1187744);
inline constexpr InverseMatrix kWideRoundedMatrix =
    inverseMatrix(76284, 104595, -25690, -53281, 132186, -1187776);
// No rounding half in the offset: results come out lower, on purpose.
inline constexpr InverseMatrix kWideTruncatingMatrix =
    inverseMatrix(76284, 104595, -25690, -53281, 132186, -1220544);
// The 4:1:1 form: its own constants, rounded.
inline constexpr InverseMatrix k411Matrix = inverseMatrix(76294, 104595, -25625, -53281, 132186, -1187936);
// The filter form: its own constants, truncating (no rounding half).
inline constexpr InverseMatrix kFilterMatrix = inverseMatrix(76309, 104597, -25675, -53279, 132201, -1220944);

// The raw-chroma offset form works on Cb and Cr as they stand, with an offset of its
// own in each output that is not derived from one rounding term (and holds no half).
// In the terms of chroma less 128 each offset takes in the chroma coefficients
// times 128.
constexpr InverseMatrix rawChromaMatrix(int32_t y, int32_t crToR, int32_t cbToG, int32_t crToG, int32_t cbToB,
                                        int32_t rawOffsetR, int32_t rawOffsetG, int32_t rawOffsetB) {
    return InverseMatrix(y, crToR, cbToG, crToG, cbToB, rawOffsetR + 128 * crToR, rawOffsetG + 128 * (cbToG + crToG),
                         rawOffsetB + 128 * cbToB);
}
inline constexpr InverseMatrix kRawChromaOffsetMatrix =
    rawChromaMatrix(76284, 104595, -25690, -53281, 132186, -14608761, 8887730, -18140365);

// The rounded form: offset 16 * 76282 less the rounding half.
using RoundedForm = InverseMatrixForm<kRoundedMatrix>;
// The wide rounded form: the second set of constants, rounded.
using WideRoundedForm = InverseMatrixForm<kWideRoundedMatrix>;
// The wide truncating form: the second set of constants without the rounding half.
using WideTruncatingForm = InverseMatrixForm<kWideTruncatingMatrix>;
using Form411 = InverseMatrixForm<k411Matrix>;
using FilterForm = InverseMatrixForm<kFilterMatrix>;
using RawChromaOffsetForm = InverseMatrixForm<kRawChromaOffsetMatrix>;

// Inverse forms at four fraction bits whose terms are each a high product truncated
// by itself: h(k, x) = (k * x) >> 16 of a coefficient and a sample times 128 (luma less
// 16), or the luma taken as 16 * Y where `y` is 0. G either adds the products of its
// (signed) coefficients, or subtracts those of its (positive) ones: -h(k, x) and
// h(-k, x) differ in their low bit, and each form keeps its own.
struct HighProductInverse {
    int32_t y;  // 0: luma is 16 * Y, not a product
    int32_t crToR, cbToG, crToG, cbToB;
    bool gSubtracts;
};

template <const HighProductInverse& K>
struct HighProductInverseFormOf {
    PXK_INLINE static int32_t gTerm(int32_t k, int32_t x) { return K.gSubtracts ? -highProduct(k, x) : highProduct(k, x); }
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t y = K.y == 0 ? 16 * p.c[0] : highProduct(K.y, (p.c[0] - 16) * 128);
        const int32_t cb = (p.c[1] - 128) * 128, cr = (p.c[2] - 128) * 128;
        return Pixel3{{clamp8(asr(y + highProduct(K.crToR, cr) + 8, 4)),
                       clamp8(asr(y + gTerm(K.crToG, cr) + gTerm(K.cbToG, cb) + 8, 4)),
                       clamp8(asr(y + highProduct(K.cbToB, cb) + 8, 4))}};
    }

    template <class V>
    PXK_INLINE static V addGTerm(V acc, V x, int32_t k) {
        const V product = mulhi16(x, splat16<V>(k));
        return K.gSubtracts ? sub16(acc, product) : add16(acc, product);
    }
    // The block in two parts: the chroma terms of R, G, B (with the rounding 8), then
    // the luma term and the shift.
    template <class V>
    PXK_INLINE static Terms<V, 3> chromaTerms(V cbRaw, V crRaw) {
        const V cb = slli16<7>(sub16(cbRaw, splat16<V>(128)));
        const V cr = slli16<7>(sub16(crRaw, splat16<V>(128)));
        const V eight = splat16<V>(8);
        return Terms<V, 3>{{add16(eight, mulhi16(cr, splat16<V>(K.crToR))), addGTerm(addGTerm(eight, cr, K.crToG), cb, K.cbToG),
                            add16(eight, mulhi16(cb, splat16<V>(K.cbToB)))}};
    }
    template <class V>
    PXK_INLINE static Lanes3<V> withLuma(V y, const Terms<V, 3>& t) {
        const V luma = K.y == 0 ? slli16<4>(y) : mulhi16(slli16<7>(sub16(y, splat16<V>(16))), splat16<V>(K.y));
        return Lanes3<V>{{srai16<4>(add16(luma, t.v[0])), srai16<4>(add16(luma, t.v[1])), srai16<4>(add16(luma, t.v[2]))}};
    }
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        return withLuma(v.c[0], chromaTerms(v.c[1], v.c[2]));
    }
};

// The high-product inverse form: y = h(9535, (Y - 16) * 128); G subtracts h(6660, cr)
// and h(3211, cb).
inline constexpr HighProductInverse kHighProductInverse{9535, 13074, 3211, 6660, 16523, true};
// The high-product 4:1:1 and 4:2:2 form: 9536 on luma, and G adds h(-3203, cb) and
// h(-6660, cr).
inline constexpr HighProductInverse kHighProduct411{9536, 13074, -3203, -6660, 16523, false};
using HighProductInverseForm = HighProductInverseFormOf<kHighProductInverse>;
using HighProduct411Form = HighProductInverseFormOf<kHighProduct411>;

}  // namespace yuv
}  // namespace pxk
