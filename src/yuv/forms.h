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

    PXK_INLINE static Lanes3 apply(const Lanes3& v) {
        // Products by _mm_madd_epi16 on (R, G), (G, B) and (B, 512) pairs. The G
        // coefficient of Y, 33030, does not fit a signed 16-bit factor and is applied
        // as 16515 twice; the offsets of Cb and Cr ride on the constant 512.
        const __m128i k512 = lanes16(512);
        const __m128i rg[2] = {_mm_unpacklo_epi16(v.c[0], v.c[1]), _mm_unpackhi_epi16(v.c[0], v.c[1])};
        const __m128i gb[2] = {_mm_unpacklo_epi16(v.c[1], v.c[2]), _mm_unpackhi_epi16(v.c[1], v.c[2])};
        const __m128i b1[2] = {_mm_unpacklo_epi16(v.c[2], k512), _mm_unpackhi_epi16(v.c[2], k512)};
        __m128i y[2], cb[2], cr[2];
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) {
            y[h] = _mm_add_epi32(_mm_add_epi32(_mm_madd_epi16(rg[h], coefficientPairs(16843, 16515)),
                                               _mm_madd_epi16(gb[h], coefficientPairs(16515, 6423))),
                                 lanes32(1081344));
            cb[h] = _mm_add_epi32(_mm_madd_epi16(rg[h], coefficientPairs(-9699, -19071)),
                                  _mm_madd_epi16(b1[h], coefficientPairs(28770, 8421376 / 512)));
            cr[h] = _mm_add_epi32(_mm_madd_epi16(rg[h], coefficientPairs(28770, -24117)),
                                  _mm_madd_epi16(b1[h], coefficientPairs(-4653, 8421376 / 512)));
        }
        return Lanes3{{_mm_packs_epi32(_mm_srai_epi32(y[0], 16), _mm_srai_epi32(y[1], 16)),
                       _mm_packs_epi32(_mm_srai_epi32(cb[0], 16), _mm_srai_epi32(cb[1], 16)),
                       _mm_packs_epi32(_mm_srai_epi32(cr[0], 16), _mm_srai_epi32(cr[1], 16))}};
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

    PXK_INLINE static __m128i one(const Row& k, const __m128i rg[2], __m128i b32) {
        // (cR * R + cG * G) >> 11 by pairs; (cB * B) >> 11 as the high product of B * 32.
        const __m128i kRG = coefficientPairs(k.r, k.g);
        const __m128i p = _mm_packs_epi32(_mm_srai_epi32(_mm_madd_epi16(rg[0], kRG), 11),
                                          _mm_srai_epi32(_mm_madd_epi16(rg[1], kRG), 11));
        const __m128i q = highProductLanes(b32, lanes16(k.b));
        return _mm_srai_epi16(_mm_add_epi16(_mm_add_epi16(p, q), lanes16(k.offset)), 4);
    }
    PXK_INLINE static Lanes3 apply(const Lanes3& v) {
        const __m128i rg[2] = {_mm_unpacklo_epi16(v.c[0], v.c[1]), _mm_unpackhi_epi16(v.c[0], v.c[1])};
        const __m128i b32 = _mm_slli_epi16(v.c[2], 5);
        return Lanes3{{one(kY, rg, b32), one(kCb, rg, b32), one(kCr, rg, b32)}};
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

    PXK_INLINE static __m128i chroma(const int32_t (&k)[3], const __m128i x128[3]) {
        const __m128i sum = _mm_add_epi16(_mm_add_epi16(highProductLanes(x128[0], lanes16(k[0])),
                                                        highProductLanes(x128[1], lanes16(k[1]))),
                                          highProductLanes(x128[2], lanes16(k[2])));
        return _mm_add_epi16(_mm_srai_epi16(_mm_add_epi16(sum, lanes16(64)), 7), lanes16(128));
    }
    PXK_INLINE static Lanes3 apply(const Lanes3& v) {
        // The luma sum stays below 2^16 and is shifted as an unsigned number.
        __m128i luma = lanes16(128);
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) {
            luma = _mm_add_epi16(luma, highProductUnsignedLanes(_mm_slli_epi16(v.c[c], 8), lanes16(kLuma[c])));
        }
        const __m128i x128[3] = {_mm_slli_epi16(v.c[0], 7), _mm_slli_epi16(v.c[1], 7),
                                 _mm_slli_epi16(v.c[2], 7)};
        return Lanes3{{_mm_add_epi16(_mm_srli_epi16(luma, 8), lanes16(16)), chroma(kCb, x128),
                       chroma(kCr, x128)}};
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
// body. The vector block splits each coefficient into a multiple of 2^16 and a signed
// 16-bit remainder: (H * 2^16 + L) >> 16 is H + (L >> 16) exactly, so the remainders go
// through _mm_madd_epi16 and the multiples are added after the shift.
template <const InverseMatrix& M>
struct InverseMatrixForm {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t y = p.c[0], cb = p.c[1] - 128, cr = p.c[2] - 128;
        return Pixel3{{clamp8(asr(M.y * y + M.crToR * cr + M.offset, 16)),
                       clamp8(asr(M.y * y + M.cbToG * cb + M.crToG * cr + M.offset, 16)),
                       clamp8(asr(M.y * y + M.cbToB * cb + M.offset, 16))}};
    }

    static constexpr int32_t high(int32_t k) { return (k + 32768) >> 16; }
    static constexpr int32_t low(int32_t k) { return k - high(k) * 65536; }

    // (L >> 16) of the two pair products and the offset, packed to 16-bit lanes.
    PXK_INLINE static __m128i lowPart(const __m128i pairs[2], __m128i k, const __m128i pairs2[2], __m128i k2) {
        __m128i s[2];
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) {
            s[h] = _mm_add_epi32(_mm_madd_epi16(pairs[h], k), lanes32(M.offset));
            if (pairs2 != nullptr) s[h] = _mm_add_epi32(s[h], _mm_madd_epi16(pairs2[h], k2));
            s[h] = _mm_srai_epi32(s[h], 16);
        }
        return _mm_packs_epi32(s[0], s[1]);
    }
    PXK_INLINE static __m128i times(__m128i v, int32_t k) { return _mm_mullo_epi16(v, lanes16(k)); }

    PXK_INLINE static Lanes3 apply(const Lanes3& v) {
        const __m128i y = v.c[0];
        const __m128i cb = _mm_sub_epi16(v.c[1], lanes16(128));
        const __m128i cr = _mm_sub_epi16(v.c[2], lanes16(128));
        const __m128i yCr[2] = {_mm_unpacklo_epi16(y, cr), _mm_unpackhi_epi16(y, cr)};
        const __m128i yCb[2] = {_mm_unpacklo_epi16(y, cb), _mm_unpackhi_epi16(y, cb)};
        const __m128i yHigh = times(y, high(M.y));
        const __m128i r = _mm_add_epi16(
            lowPart(yCr, coefficientPairs(low(M.y), low(M.crToR)), nullptr, __m128i()),
            _mm_add_epi16(yHigh, times(cr, high(M.crToR))));
        const __m128i g = _mm_add_epi16(
            lowPart(yCb, coefficientPairs(low(M.y), low(M.cbToG)), yCr, coefficientPairs(0, low(M.crToG))),
            _mm_add_epi16(yHigh, _mm_add_epi16(times(cb, high(M.cbToG)), times(cr, high(M.crToG)))));
        const __m128i b = _mm_add_epi16(
            lowPart(yCb, coefficientPairs(low(M.y), low(M.cbToB)), nullptr, __m128i()),
            _mm_add_epi16(yHigh, times(cb, high(M.cbToB))));
        return Lanes3{{r, g, b}};
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
        const __m128i y = highProductLanes(_mm_slli_epi16(_mm_sub_epi16(v.c[0], lanes16(16)), 7), lanes16(9535));
        const __m128i cb = _mm_slli_epi16(_mm_sub_epi16(v.c[1], lanes16(128)), 7);
        const __m128i cr = _mm_slli_epi16(_mm_sub_epi16(v.c[2], lanes16(128)), 7);
        const __m128i round = lanes16(8);
        const __m128i r = _mm_add_epi16(_mm_add_epi16(y, highProductLanes(cr, lanes16(13074))), round);
        const __m128i g = _mm_add_epi16(
            _mm_sub_epi16(_mm_sub_epi16(y, highProductLanes(cr, lanes16(6660))), highProductLanes(cb, lanes16(3211))),
            round);
        const __m128i b = _mm_add_epi16(_mm_add_epi16(y, highProductLanes(cb, lanes16(16523))), round);
        return Lanes3{{_mm_srai_epi16(r, 4), _mm_srai_epi16(g, 4), _mm_srai_epi16(b, 4)}};
    }
};

}  // namespace yuv
}  // namespace pxk
