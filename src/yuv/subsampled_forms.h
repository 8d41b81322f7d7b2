// The chroma forms of subsampled YCbCr: every source pixel of a chroma group (a 2 by 2
// block in 420, a horizontal pair in 422, four pixels of a row in 411) contributes
// through a sum taken before the matrix. Luma comes from the full-resolution forms.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/fixed_point.h"
#include "frame/pixel_block.h"
#include "frame/vec.h"
#include "yuv/forms.h"

namespace pxk {
namespace yuv {

using namespace vec;

// The sums of the R, G and B samples of one chroma group.
struct ChromaSums {
    int32_t r = 0, g = 0, b = 0;

    PXK_INLINE void add(Pixel3 rgb) {
        r += rgb.c[0];
        g += rgb.c[1];
        b += rgb.c[2];
    }
};

// The chroma of a group from its sums: the studio-range matrix rows at a scale of
// 2^Shift, Offset added before the shift, the low 8 bits kept.
//   - direct sum form (420 and 411, four samples): scale 2^18, offset 128 at that scale
//     plus 32768, a rounding term of one eighth of a step;
//   - eighth-rounded pair form (422): scale 2^17, offset 128 plus 16384;
//   - half-rounded pair form (422): scale 2^17, offset 128.5.
template <int32_t Offset, int Shift>
struct SumChromaForm {
    PXK_INLINE static uint8_t cb(const ChromaSums& s) {
        return low8(asr(-9699 * s.r - 19071 * s.g + 28770 * s.b + Offset, Shift));
    }
    PXK_INLINE static uint8_t cr(const ChromaSums& s) {
        return low8(asr(28770 * s.r - 24117 * s.g - 4653 * s.b + Offset, Shift));
    }

    // The same bits on vectors of sums (16-bit lanes): each row in 32-bit lanes by two
    // madd16 products, on (sR, sG) and on (sB, Offset / 16384), the offset carried by a
    // factor of 16384. The results lie within 16..240, so the store's saturation keeps
    // their low 8 bits.
    static_assert(Offset % 16384 == 0 && Offset / 16384 < 32768, "offset as a product");
    template <class V>
    PXK_INLINE static V row(int32_t kr, int32_t kg, int32_t kb, const V rg[2], const V b1[2]) {
        V out[2];
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) {
            out[h] = srai32<Shift>(add32(madd16(rg[h], pairs<V>(kr, kg)), madd16(b1[h], pairs<V>(kb, 16384))));
        }
        return packs32(out[0], out[1]);
    }
    template <class V>
    PXK_INLINE static void apply(V sr, V sg, V sb, V& cbOut, V& crOut) {
        const V offsets = splat16<V>(Offset / 16384);
        const V rg[2] = {unpacklo16(sr, sg), unpackhi16(sr, sg)};
        const V b1[2] = {unpacklo16(sb, offsets), unpackhi16(sb, offsets)};
        cbOut = row(-9699, -19071, 28770, rg, b1);
        crOut = row(28770, -24117, -4653, rg, b1);
    }
};

using DirectSumForm = SumChromaForm<33587200, 18>;
using EighthRoundedPairForm = SumChromaForm<16793600, 17>;
using HalfRoundedPairForm = SumChromaForm<16842752, 17>;

// The vector 420 form, at 3 fraction bits: each product the high product of a
// coefficient and a sample times 128 (luma) or a 2 by 2 sum times 32 (chroma),
// truncated by itself. This is its scalar twin, exact to the bit.
struct Vector420Form {
    PXK_INLINE static uint8_t luma(Pixel3 p) {
        return clamp8(asr(highProduct(1052, p.c[0] * 128) + highProduct(2064, p.c[1] * 128) +
                              highProduct(401, p.c[2] * 128) + 132,
                          3));
    }
    PXK_INLINE static uint8_t cb(const ChromaSums& s) {
        return clamp8(asr(highProduct(-607, s.r * 32) + highProduct(-1192, s.g * 32) + highProduct(1798, s.b * 32) + 1028,
                          3));
    }
    PXK_INLINE static uint8_t cr(const ChromaSums& s) {
        return clamp8(asr(highProduct(1798, s.r * 32) + highProduct(-1508, s.g * 32) + highProduct(-291, s.b * 32) + 1028,
                          3));
    }

    // The vector blocks: the same products in 16-bit lanes (a sum of four samples
    // times 32 stays below 2^15); results saturate on store.
    template <class V>
    PXK_INLINE static V products(const int32_t (&k)[3], V x0, V x1, V x2, int32_t round) {
        return srai16<3>(add16(add16(mulhi16(x0, splat16<V>(k[0])), mulhi16(x1, splat16<V>(k[1]))),
                               add16(mulhi16(x2, splat16<V>(k[2])), splat16<V>(round))));
    }
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& p) {
        return products({1052, 2064, 401}, slli16<7>(p.c[0]), slli16<7>(p.c[1]), slli16<7>(p.c[2]), 132);
    }
    template <class V>
    PXK_INLINE static void apply(V sr, V sg, V sb, V& cbOut, V& crOut) {
        const V r32 = slli16<5>(sr), g32 = slli16<5>(sg), b32 = slli16<5>(sb);
        cbOut = products({-607, -1192, 1798}, r32, g32, b32, 1028);
        crOut = products({1798, -1508, -291}, r32, g32, b32, 1028);
    }
};

// The float form: single precision, one rounding for each operation, in exactly the
// written order (left to right; the build never contracts a multiply and an add), each
// result truncated toward zero into a byte. Y of one pixel; Cb, Cr of a 2 by 2 block
// from its sums. Every result lies within 16..240, so the conversions are defined.
struct FloatForm {
    PXK_INLINE static uint8_t luma(Pixel3 p) {
        const float r = p.c[0], g = p.c[1], b = p.c[2];
        return truncated(0.257f * r + 16.5f + 0.504f * g + 0.098f * b);
    }
    PXK_INLINE static uint8_t cb(const ChromaSums& s) {
        const float r = static_cast<float>(s.r), g = static_cast<float>(s.g), b = static_cast<float>(s.b);
        return truncated((0.439f * b + 512.0f - 0.148f * r - 0.291f * g) * 0.25f + 0.5f);
    }
    PXK_INLINE static uint8_t cr(const ChromaSums& s) {
        const float r = static_cast<float>(s.r), g = static_cast<float>(s.g), b = static_cast<float>(s.b);
        return truncated((512.0f - 0.071f * b + 0.439f * r - 0.368f * g) * 0.25f + 0.5f);
    }
    PXK_INLINE static uint8_t truncated(float v) { return static_cast<uint8_t>(static_cast<int32_t>(v)); }

    // The vector twins: 16-bit lanes widened to 32 bits and converted (exactly), the
    // same operations in the same order on float lanes, truncated, packed back.
    template <class V, class Each>
    PXK_INLINE static V perHalf(Each&& each) {
        return packs32(each(0), each(1));
    }
    template <class V>
    PXK_INLINE static FloatOf<V> widened(V x, int h) {
        return toFloat(h == 0 ? unpacklo16(x, zero<V>()) : unpackhi16(x, zero<V>()));
    }
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& p) {
        using F = FloatOf<V>;
        return perHalf<V>([&](int h) PXK_LAMBDA_INLINE {
            const F r = widened(p.c[0], h), g = widened(p.c[1], h), b = widened(p.c[2], h);
            return truncToInt(addF(addF(addF(mulF(splatF<F>(0.257f), r), splatF<F>(16.5f)), mulF(splatF<F>(0.504f), g)),
                                   mulF(splatF<F>(0.098f), b)));
        });
    }
    template <class V>
    PXK_INLINE static void apply(V sr, V sg, V sb, V& cbOut, V& crOut) {
        using F = FloatOf<V>;
        cbOut = perHalf<V>([&](int h) PXK_LAMBDA_INLINE {
            const F r = widened(sr, h), g = widened(sg, h), b = widened(sb, h);
            const F sum = subF(subF(addF(mulF(splatF<F>(0.439f), b), splatF<F>(512.0f)), mulF(splatF<F>(0.148f), r)),
                               mulF(splatF<F>(0.291f), g));
            return truncToInt(addF(mulF(sum, splatF<F>(0.25f)), splatF<F>(0.5f)));
        });
        crOut = perHalf<V>([&](int h) PXK_LAMBDA_INLINE {
            const F r = widened(sr, h), g = widened(sg, h), b = widened(sb, h);
            const F sum = subF(addF(subF(splatF<F>(512.0f), mulF(splatF<F>(0.071f), b)), mulF(splatF<F>(0.439f), r)),
                               mulF(splatF<F>(0.368f), g));
            return truncToInt(addF(mulF(sum, splatF<F>(0.25f)), splatF<F>(0.5f)));
        });
    }
};

// ---------------------------------------------------------------------------------
// Full-range YUV with subsampled chroma
// ---------------------------------------------------------------------------------

// The luma L = 19595 R + 38470 G + 7471 B at a scale of 2^16, in 32-bit lanes from the
// block's 16-bit lanes: two madd16 products on (R, G) and (G, B), 38470 split as 19235
// twice. The same linear form serves a group's sums (the sum of the L of its pixels).
template <class V>
PXK_INLINE void yuvLumaSums(V r, V g, V b, V out[2]) {
    const V rg[2] = {unpacklo16(r, g), unpackhi16(r, g)};
    const V gb[2] = {unpacklo16(g, b), unpackhi16(g, b)};
    PXK_UNROLL
    for (int h = 0; h < 2; ++h) out[h] = add32(madd16(rg[h], pairs<V>(19595, 19235)), madd16(gb[h], pairs<V>(19235, 7471)));
}

// Y = L >> 16, the floor of the luma (the coefficients sum to 2^16, so it is a byte).
struct YuvLuma {
    PXK_INLINE static uint8_t luma(Pixel3 p) { return low8(asr(19595 * p.c[0] + 38470 * p.c[1] + 7471 * p.c[2], 16)); }
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& p) {
        V l[2];
        yuvLumaSums(p.c[0], p.c[1], p.c[2], l);
        return packs32(srai32<16>(l[0]), srai32<16>(l[1]));
    }
};

// The luma of the YUV vector blocks, at a scale of 2^15: R and G summed and shifted by
// 14, B shifted by 14 alone, the two added and halved.
struct YuvVectorLuma {
    PXK_INLINE static uint8_t luma(Pixel3 p) {
        return low8(asr(asr(9798 * p.c[0] + 19235 * p.c[1], 14) + asr(3736 * p.c[2], 14), 1));
    }
    // (3736 B) >> 14 is the high product of B * 4 by 3736.
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& p) {
        const V rg[2] = {unpacklo16(p.c[0], p.c[1]), unpackhi16(p.c[0], p.c[1])};
        const V sumRG = packs32(srai32<14>(madd16(rg[0], pairs<V>(9798, 19235))),
                                srai32<14>(madd16(rg[1], pairs<V>(9798, 19235))));
        return srli16<1>(add16(sumRG, mulhi16(slli16<2>(p.c[2]), splat16<V>(3736))));
    }
};

// The YUV scalar chroma of a group from its sums: sL = 19595 sR + 38470 sG + 7471 sB,
// D = (sB * 65536 - sL + Round) >> 16 and E likewise from sR, U = low8(((D * 32244) >>
// Shift) + 128), V = clamp8(((E * 57475) >> Shift) + 128). 4:2:0 (four samples): Round
// 131071, Shift 18; 4:2:2 (two): Round 65535, Shift 17.
template <int32_t Round, int Shift>
struct YuvSumChroma {
    PXK_INLINE static int32_t luma(const ChromaSums& s) { return 19595 * s.r + 38470 * s.g + 7471 * s.b; }
    PXK_INLINE static uint8_t cb(const ChromaSums& s) {
        const int32_t d = asr(s.b * 65536 - luma(s) + Round, 16);
        return low8(asr(d * 32244, Shift) + 128);
    }
    PXK_INLINE static uint8_t cr(const ChromaSums& s) {
        const int32_t e = asr(s.r * 65536 - luma(s) + Round, 16);
        return clamp8(asr(e * 57475, Shift) + 128);
    }

    // The vector twins. Since sB * 65536 is a whole number of steps, D = sB - c and
    // E = sR - c with c = (sL - Round + 65535) >> 16 (a ceiling). D * 32244 >> 16 is one
    // high product and E * 57475 >> 16 is E + (E * -8061 >> 16); the shift by the rest
    // of Shift follows (a floor of a floor). U stays within 3..253, so the store's
    // saturation keeps its low 8 bits; V saturates as it should.
    template <class V>
    PXK_INLINE static void apply(V sr, V sg, V sb, V& u, V& v) {
        V l[2];
        yuvLumaSums(sr, sg, sb, l);
        const V c = packs32(srai32<16>(add32(l[0], splat32<V>(65535 - Round))),
                            srai32<16>(add32(l[1], splat32<V>(65535 - Round))));
        const V d = sub16(sb, c), e = sub16(sr, c);
        u = add16(srai16<Shift - 16>(mulhi16(d, splat16<V>(32244))), splat16<V>(128));
        v = add16(srai16<Shift - 16>(add16(e, mulhi16(e, splat16<V>(-8061)))), splat16<V>(128));
    }
};

using Yuv420Chroma = YuvSumChroma<131071, 18>;
using Yuv422Chroma = YuvSumChroma<65535, 17>;

// The chroma of a last pixel that has no pair (4:2:2, odd width), at a scale of 2^15:
// L2 = 9798 R + 19235 G + 3736 B (the luma of the vector blocks' scale), d and e the
// colour differences with 16383 added, U and V with 16121 and 28737 (cb() gives U and
// cr() gives V, in the places of Cb and Cr).
struct YuvLoneChroma {
    PXK_INLINE static int32_t luma2(Pixel3 p) { return 9798 * p.c[0] + 19235 * p.c[1] + 3736 * p.c[2]; }
    PXK_INLINE static uint8_t cb(Pixel3 p) {
        const int32_t d = asr(p.c[2] * 32768 - luma2(p) + 16383, 15);
        return low8(asr(d * 16121, 15) + 128);
    }
    PXK_INLINE static uint8_t cr(Pixel3 p) {
        const int32_t e = asr(p.c[0] * 32768 - luma2(p) + 16383, 15);
        return clamp8(asr(e * 28737, 15) + 128);
    }
};

// Luma by the direct form of the full-resolution conversion.
struct DirectLuma {
    PXK_INLINE static uint8_t luma(Pixel3 p) { return DirectForm::apply(p).c[0]; }
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& p) {
        return DirectForm::luma(p);
    }
};

}  // namespace yuv
}  // namespace pxk
