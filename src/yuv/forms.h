// The fixed-point forms of the BT.601 studio-range matrix and of its inverse. Each
// form is one struct with a scalar apply(Pixel3) and, where a vector block uses it,
// an SSE2 apply(Lanes3) on eight pixels of 16-bit lanes; the two give the same bits.
// The forms of one matrix differ from one another in their low bit and are kept apart
// on purpose: which one a pixel gets is part of each export's output.
//
// Vector results are 16-bit lanes that the layouts saturate to 8 bits on store.
#pragma once

#include "frame/simd_inline.h"

#include <emmintrin.h>

#include <cstdint>

#include "frame/fixed_point.h"
#include "frame/pixel_block.h"

namespace pxk {
namespace yuv {

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

    // The vector block forms each sum with two _mm_madd_epi16 products, on the pairs
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

    PXK_INLINE static __m128i row(const Split& k, const __m128i rg[2], const __m128i gb[2]) {
        __m128i s[2];
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) {
            s[h] = _mm_srai_epi32(_mm_add_epi32(_mm_madd_epi16(rg[h], coefficientPairs(k.r, k.g)),
                                                _mm_madd_epi16(gb[h], coefficientPairs(k.gBiased, k.b))),
                                  16);
        }
        return _mm_packs_epi32(s[0], s[1]);
    }
    PXK_INLINE static Lanes3 apply(const Lanes3& v) {
        const __m128i g = _mm_add_epi16(v.c[1], lanes16(kGreenBias));
        const __m128i rg[2] = {_mm_unpacklo_epi16(v.c[0], v.c[1]), _mm_unpackhi_epi16(v.c[0], v.c[1])};
        const __m128i gb[2] = {_mm_unpacklo_epi16(g, v.c[2]), _mm_unpackhi_epi16(g, v.c[2])};
        return Lanes3{{row(kSplitY, rg, gb), row(kSplitCb, rg, gb), row(kSplitCr, rg, gb)}};
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
    PXK_INLINE static __m128i quadPair(const Row& kLo, const Row& kHi, __m128i rgLo, __m128i rgHi, __m128i b32) {
        const __m128i p = _mm_packs_epi32(_mm_srai_epi32(_mm_madd_epi16(rgLo, coefficientPairs(kLo.r, kLo.g)), 11),
                                          _mm_srai_epi32(_mm_madd_epi16(rgHi, coefficientPairs(kHi.r, kHi.g)), 11));
        const __m128i q = highProductLanes(b32, lanes16Halves(kLo.b, kHi.b));
        return _mm_srai_epi16(_mm_add_epi16(_mm_add_epi16(p, q), lanes16Halves(kLo.offset, kHi.offset)), 4);
    }
    PXK_INLINE static Lanes3 apply(const Lanes3& v) {
        const __m128i rg[2] = {_mm_unpacklo_epi16(v.c[0], v.c[1]), _mm_unpackhi_epi16(v.c[0], v.c[1])};
        const __m128i b32 = _mm_slli_epi16(v.c[2], 5);
        return Lanes3{{quadPair(kY, kY, rg[0], rg[1], b32), quadPair(kCb, kCb, rg[0], rg[1], b32),
                       quadPair(kCr, kCr, rg[0], rg[1], b32)}};
    }

    // In quad order the R, G and B quads of pixel set s are quads 3s, 3s + 1 and
    // 3s + 2, and output quad 3s + k is row k of that set; an output vector pairs two
    // quads whose rows may differ.
    static constexpr Row kRows[3] = {kY, kCb, kCr};
    template <int S>
    PXK_INLINE static __m128i rgPairs(const Quads16& q) {
        return _mm_unpacklo_epi16(simd::quadLow<3 * S>(q), simd::quadLow<3 * S + 1>(q));
    }
    template <int V>
    PXK_INLINE static __m128i outputQuads(const Quads16& q, const __m128i rg[4]) {
        constexpr int sLo = (2 * V) / 3, kLo = (2 * V) % 3, sHi = (2 * V + 1) / 3, kHi = (2 * V + 1) % 3;
        const __m128i b32 = _mm_slli_epi16(simd::joinQuads<3 * sLo + 2, 3 * sHi + 2>(q), 5);
        return quadPair(kRows[kLo], kRows[kHi], rg[sLo], rg[sHi], b32);
    }
    PXK_INLINE static Quads16 apply(const Quads16& q) {
        const __m128i rg[4] = {rgPairs<0>(q), rgPairs<1>(q), rgPairs<2>(q), rgPairs<3>(q)};
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

    PXK_INLINE static __m128i chroma(const int32_t (&k)[3], const __m128i x128[3]) {
        const __m128i sum = _mm_add_epi16(_mm_add_epi16(highProductLanes(x128[0], lanes16(k[0])),
                                                        highProductLanes(x128[1], lanes16(k[1]))),
                                          _mm_add_epi16(highProductLanes(x128[2], lanes16(k[2])),
                                                        lanes16(kChromaRound)));
        return _mm_srai_epi16(sum, 7);
    }
    PXK_INLINE static Lanes3 apply(const Lanes3& v) {
        const __m128i x128[3] = {_mm_slli_epi16(v.c[0], 7), _mm_slli_epi16(v.c[1], 7),
                                 _mm_slli_epi16(v.c[2], 7)};
        const __m128i g256 = _mm_add_epi16(x128[1], x128[1]);
        const __m128i luma = _mm_add_epi16(
            _mm_add_epi16(highProductUnsignedLanes(x128[0], lanes16(2 * kLuma[0])),
                          highProductUnsignedLanes(g256, lanes16(kLuma[1]))),
            _mm_add_epi16(highProductUnsignedLanes(x128[2], lanes16(2 * kLuma[2])), lanes16(kLumaRound)));
        return Lanes3{{_mm_srli_epi16(luma, 8), chroma(kCb, x128), chroma(kCr, x128)}};
    }
};

// ---------------------------------------------------------------------------------
// YCbCr -> RGB. Input channels Y, Cb, Cr (raw samples); output R, G, B.
// ---------------------------------------------------------------------------------

// The inverse matrix at a scale of 2^16: R from Y and Cr, G from all three, B from Y
// and Cb, with Cb and Cr taken less 128, then shifted and saturated.
struct InverseMatrix {
    int32_t y, crToR, cbToG, crToG, cbToB, offset;
};

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
// The luma products and the offset are shared by the three outputs.
template <const InverseMatrix& M>
struct InverseMatrixForm {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t y = p.c[0], cb = p.c[1] - 128, cr = p.c[2] - 128;
        return Pixel3{{clamp8(asr(M.y * y + M.crToR * cr + M.offset, 16)),
                       clamp8(asr(M.y * y + M.cbToG * cb + M.crToG * cr + M.offset, 16)),
                       clamp8(asr(M.y * y + M.cbToB * cb + M.offset, 16))}};
    }

    // k / 16 rounded to nearest: the factor of a sample times 256 in the estimate.
    static constexpr int32_t estimateFactor(int32_t k) { return (k >= 0 ? k + 8 : k - 8) / 16; }
    // 8 + offset / 2^12 rounded to nearest.
    static constexpr int32_t kEstimateBase =
        8 + (M.offset >= 0 ? M.offset + 2048 : M.offset - 2048) / 4096;
    static_assert(estimateFactor(M.y) > 0 && estimateFactor(M.y) < 65536, "luma factor, unsigned");
    static_assert(estimateFactor(M.crToR) > -32768 && estimateFactor(M.crToR) < 32768 &&
                      estimateFactor(M.cbToG) > -32768 && estimateFactor(M.crToG) > -32768 &&
                      estimateFactor(M.cbToB) < 32768,
                  "chroma factors, signed");

    // The estimate and the low 16 bits of one output, its chroma terms added to the
    // shared luma ones; then the corrected shift.
    PXK_INLINE static __m128i finish(__m128i estimate, __m128i low) {
        return _mm_srai_epi16(_mm_sub_epi16(estimate, _mm_srli_epi16(low, 12)), 4);
    }
    PXK_INLINE static __m128i addEstimate(__m128i acc, __m128i x256, int32_t k) {
        return _mm_add_epi16(acc, highProductLanes(x256, lanes16(estimateFactor(k))));
    }
    // Low products need k modulo 2^16 only, which is what lanes16 keeps.
    PXK_INLINE static __m128i addLow(__m128i acc, __m128i x, int32_t k) {
        return _mm_add_epi16(acc, _mm_mullo_epi16(x, lanes16(k)));
    }

    PXK_INLINE static Lanes3 apply(const Lanes3& v) {
        const __m128i y = v.c[0];
        const __m128i cb = _mm_sub_epi16(v.c[1], lanes16(128));
        const __m128i cr = _mm_sub_epi16(v.c[2], lanes16(128));
        const __m128i cb256 = _mm_slli_epi16(cb, 8);
        const __m128i cr256 = _mm_slli_epi16(cr, 8);
        const __m128i lumaEstimate = _mm_add_epi16(
            highProductUnsignedLanes(_mm_slli_epi16(y, 8), lanes16(estimateFactor(M.y))), lanes16(kEstimateBase));
        const __m128i lumaLow = addLow(lanes16(M.offset), y, M.y);
        Lanes3 out;
        out.c[0] = finish(addEstimate(lumaEstimate, cr256, M.crToR), addLow(lumaLow, cr, M.crToR));
        out.c[1] = finish(addEstimate(addEstimate(lumaEstimate, cb256, M.cbToG), cr256, M.crToG),
                          addLow(addLow(lumaLow, cb, M.cbToG), cr, M.crToG));
        out.c[2] = finish(addEstimate(lumaEstimate, cb256, M.cbToB), addLow(lumaLow, cb, M.cbToB));
        return out;
    }
};

inline constexpr InverseMatrix kRoundedMatrix{76282, 104593, -25689, -53279, 132184, -1187744};
inline constexpr InverseMatrix kWideRoundedMatrix{76284, 104595, -25690, -53281, 132186, -1187776};
// No rounding half in the offset: results come out lower, on purpose.
inline constexpr InverseMatrix kWideTruncatingMatrix{76284, 104595, -25690, -53281, 132186, -1220544};

// The rounded form: offset 16 * 76282 less the rounding half.
using RoundedForm = InverseMatrixForm<kRoundedMatrix>;
// The wide rounded form: the second set of constants, rounded.
using WideRoundedForm = InverseMatrixForm<kWideRoundedMatrix>;
// The wide truncating form: the second set of constants without the rounding half.
using WideTruncatingForm = InverseMatrixForm<kWideTruncatingMatrix>;

// The high-product inverse form, at four fraction bits: every term the high product
// of a coefficient and a sample times 128, truncated by itself.
struct HighProductInverseForm {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t y = highProduct(9535, (p.c[0] - 16) * 128);
        const int32_t cb = (p.c[1] - 128) * 128, cr = (p.c[2] - 128) * 128;
        return Pixel3{{clamp8(asr(y + highProduct(13074, cr) + 8, 4)),
                       clamp8(asr(y - highProduct(6660, cr) - highProduct(3211, cb) + 8, 4)),
                       clamp8(asr(y + highProduct(16523, cb) + 8, 4))}};
    }

    PXK_INLINE static Lanes3 apply(const Lanes3& v) {
        // The rounding 8 is added once, to the luma term that all three outputs share.
        const __m128i y = _mm_add_epi16(
            highProductLanes(_mm_slli_epi16(_mm_sub_epi16(v.c[0], lanes16(16)), 7), lanes16(9535)), lanes16(8));
        const __m128i cb = _mm_slli_epi16(_mm_sub_epi16(v.c[1], lanes16(128)), 7);
        const __m128i cr = _mm_slli_epi16(_mm_sub_epi16(v.c[2], lanes16(128)), 7);
        const __m128i r = _mm_add_epi16(y, highProductLanes(cr, lanes16(13074)));
        const __m128i g =
            _mm_sub_epi16(_mm_sub_epi16(y, highProductLanes(cr, lanes16(6660))), highProductLanes(cb, lanes16(3211)));
        const __m128i b = _mm_add_epi16(y, highProductLanes(cb, lanes16(16523)));
        return Lanes3{{_mm_srai_epi16(r, 4), _mm_srai_epi16(g, 4), _mm_srai_epi16(b, 4)}};
    }
};

}  // namespace yuv
}  // namespace pxk
