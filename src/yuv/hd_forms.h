// The fixed-point forms of the high-definition matrices (709CSC, studio range, and
// 709HDTV, close to full range), of their inverses, and the luma and chroma forms of the
// standard matrix that the packed CbYCr422 members use.
//
// The scalar forms are the reference: each vector twin gives exactly the bits of its
// scalar form in every pixel, so that where a row passes from vector blocks to the
// scalar loop changes no output. Vector results are 16-bit lanes that the layouts
// saturate to 8 bits on store, which is clamp8 of the scalar forms.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/fixed_point.h"
#include "frame/pixel_block.h"
#include "frame/vec.h"
#include "yuv/forms.h"
#include "yuv/subsampled_forms.h"

namespace pxk {
namespace yuv {

using namespace vec;

// ---------------------------------------------------------------------------------
// YCbCr -> RGB at a scale of 2^16 (Cb and Cr less 128, results clamped to 0..255)
// ---------------------------------------------------------------------------------

// 709CSC: Y less 16 times 76284; the offset is -16 * 76284 plus the rounding half.
inline constexpr InverseMatrix k709CscMatrix = inverseMatrix(76284, 117506, -13959, -34996, 138609, -16 * 76284 + 32768);
// 709HDTV: Y taken as it is (times 65536), offset the rounding half alone.
inline constexpr InverseMatrix k709HdtvMatrix = inverseMatrix(65536, 100925, -11993, -30081, 119013, 32768);

using Csc709InverseForm = InverseMatrixForm<k709CscMatrix>;
using Hdtv709InverseForm = InverseMatrixForm<k709HdtvMatrix>;

// ---------------------------------------------------------------------------------
// RGB -> luma of one pixel
// ---------------------------------------------------------------------------------

// Each vector luma forms its 32-bit sum with two madd16 products over pairs of 16-bit
// lanes, (first, second) and (third, fourth), and finishes it as its scalar form does.
template <class V, class Finish>
PXK_INLINE V lumaOfPairs(V first, V second, V third, V fourth, V k01, V k23, Finish finish) {
    const V a[2] = {unpacklo16(first, second), unpackhi16(first, second)};
    const V b[2] = {unpacklo16(third, fourth), unpackhi16(third, fourth)};
    V s[2];
    PXK_UNROLL
    for (int h = 0; h < 2; ++h) s[h] = finish(add32(madd16(a[h], k01), madd16(b[h], k23)));
    return packs32(s[0], s[1]);
}

// Y = clamp8((kR R + kG G + kB B + Offset) >> Shift). The vector form carries the offset
// as Offset / 16384 beside B, times 16384.
template <int32_t KR, int32_t KG, int32_t KB, int32_t Offset, int Shift>
struct OffsetLuma {
    PXK_INLINE static uint8_t luma(Pixel3 p) { return clamp8(asr(KR * p.c[0] + KG * p.c[1] + KB * p.c[2] + Offset, Shift)); }
    static_assert(Offset % 16384 == 0 && Offset / 16384 < 32768, "offset as a product");
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& p) {
        return lumaOfPairs(p.c[0], p.c[1], p.c[2], splat16<V>(Offset / 16384), pairs<V>(KR, KG), pairs<V>(KB, 16384),
                           [](V s) PXK_LAMBDA_INLINE { return srai32<Shift>(s); });
    }
};

// 709CSC: scale 2^15, offset 540672 (16.5 at that scale).
using Csc709Luma = OffsetLuma<5997, 20120, 2032, 540672, 15>;

// 709HDTV: S = 13959 R + 46858 G + 4719 B, Y = clamp8((S - (S >> 7) + 98304) >> 16):
// black gives 1, white 254, gray 128 gives 128. The vector form splits 46858, too wide
// for a signed 16-bit factor, as 23429 on each of two pairs (R, G) and (G, B).
struct Hdtv709Luma {
    PXK_INLINE static uint8_t luma(Pixel3 p) {
        const int32_t s = 13959 * p.c[0] + 46858 * p.c[1] + 4719 * p.c[2];
        return clamp8(asr(s - asr(s, 7) + 98304, 16));
    }
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& p) {
        return lumaOfPairs(p.c[0], p.c[1], p.c[1], p.c[2], pairs<V>(13959, 23429), pairs<V>(23429, 4719),
                           [](V s) PXK_LAMBDA_INLINE {
                               return srai32<16>(add32(sub32(s, srai32<7>(s)), splat32<V>(98304)));
                           });
    }
};

// ---------------------------------------------------------------------------------
// RGB -> chroma of a group, from the sums of its samples
// ---------------------------------------------------------------------------------

// The Cb and Cr rows of a matrix at a scale of 2^16, on R, G, B.
struct ChromaRows {
    int32_t cb[3];
    int32_t cr[3];
};

inline constexpr ChromaRows kStandardChroma{{-9699, -19071, 28770}, {28770, -24117, -4653}};
inline constexpr ChromaRows k709CscChroma{{-6619, -22151, 28770}, {28770, -26149, -2621}};
inline constexpr ChromaRows k709HdtvChroma{{-7668, -25821, 33489}, {33489, -30409, -3080}};

// C = clamp8((kR sR + kG sG + kB sB + 128.5 * 2^Shift) >> Shift) for the sums of 2^(Shift
// - 16) pixels: a 2 by 2 block at 2^18, a pair at 2^17, one pixel at 2^16.
template <const ChromaRows& K, int Shift>
struct ClampedSumChroma {
    static constexpr int32_t kOffset = (257 << Shift) / 2;  // 128.5 at the scale

    PXK_INLINE static uint8_t one(const int32_t (&k)[3], int32_t r, int32_t g, int32_t b) {
        return clamp8(asr(k[0] * r + k[1] * g + k[2] * b + kOffset, Shift));
    }
    PXK_INLINE static uint8_t cb(const ChromaSums& s) { return one(K.cb, s.r, s.g, s.b); }
    PXK_INLINE static uint8_t cr(const ChromaSums& s) { return one(K.cr, s.r, s.g, s.b); }
    // One pixel alone (the sums of one).
    PXK_INLINE static uint8_t cb(Pixel3 p) { return one(K.cb, p.c[0], p.c[1], p.c[2]); }
    PXK_INLINE static uint8_t cr(Pixel3 p) { return one(K.cr, p.c[0], p.c[1], p.c[2]); }

    // The vector twin on 16-bit lanes of sums, in 32-bit lanes: each sum paired with
    // itself and multiplied by the two halves of its coefficient (33489 does not fit a
    // signed 16-bit factor whole), the offset added, the shift; the results saturate to
    // 16 bits and then to bytes on store, which is clamp8.
    template <class V>
    PXK_INLINE static V term(V s, int32_t k, int h) {
        const V twice = h == 0 ? unpacklo16(s, s) : unpackhi16(s, s);
        return madd16(twice, pairs<V>(k / 2, k - k / 2));
    }
    template <class V>
    PXK_INLINE static V row(const int32_t (&k)[3], V sr, V sg, V sb) {
        V out[2];
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) {
            const V sum = add32(add32(term(sr, k[0], h), term(sg, k[1], h)), add32(term(sb, k[2], h), splat32<V>(kOffset)));
            out[h] = srai32<Shift>(sum);
        }
        return packs32(out[0], out[1]);
    }
    template <class V>
    PXK_INLINE static void apply(V sr, V sg, V sb, V& cbOut, V& crOut) {
        cbOut = row(K.cb, sr, sg, sb);
        crOut = row(K.cr, sr, sg, sb);
    }
};

// 4:2:0 chroma from the sums of a 2 by 2 block (both rows feed it).
using Csc709Chroma420 = ClampedSumChroma<k709CscChroma, 18>;
using Hdtv709Chroma420 = ClampedSumChroma<k709HdtvChroma, 18>;
// CbYCr422: chroma of a pair from its sums, and of a last pixel without a pair.
using Hdtv709PairChroma = ClampedSumChroma<k709HdtvChroma, 17>;
using Hdtv709LoneChroma = ClampedSumChroma<k709HdtvChroma, 16>;

}  // namespace yuv
}  // namespace pxk
