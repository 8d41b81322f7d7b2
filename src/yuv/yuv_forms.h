// The fixed-point forms of the full-range YUV matrix (Y = 0.299 R + 0.587 G + 0.114 B,
// U = 0.492 (B - Y) + 128, V = 0.877 (R - Y) + 128) and of its inverse. As with the
// studio-range forms, each form is one struct with a scalar apply(Pixel3) and, where
// a vector block uses it, one apply(Lanes3<V>) over the vector type giving the same
// bits; the forms differ from one another in their low bit and are kept apart.
//
// Vector results are 16-bit lanes that the layouts saturate to 8 bits on store.
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

// ---------------------------------------------------------------------------------
// RGB -> YUV. Input channels R, G, B; output Y, U, V.
// ---------------------------------------------------------------------------------

// The scalar forms built on the luma L = 19595 R + 38470 G + 7471 B at a scale of 2^16:
// Y = (L + LumaRound) >> 16; the colour differences d (from B) and e (from R) at the
// same scale with DiffRound added; U keeps the low 8 bits, V saturates (it can run past
// 255). The three members:
//   - rounded scalar:          LumaRound 32768, DiffRound 32768;
//   - rounded luma scalar:     LumaRound 32768, DiffRound 32767;
//   - truncating luma scalar:  LumaRound 0,     DiffRound 32767.
template <int32_t LumaRound, int32_t DiffRound>
struct LumaDifferenceForm {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t r = p.c[0], g = p.c[1], b = p.c[2];
        const int32_t luma = 19595 * r + 38470 * g + 7471 * b;
        const int32_t d = asr(b * 65536 - luma + DiffRound, 16);
        const int32_t e = asr(r * 65536 - luma + DiffRound, 16);
        return Pixel3{{low8(asr(luma + LumaRound, 16)), low8(asr(d * 32244, 16) + 128),
                       clamp8(asr(e * 57475, 16) + 128)}};
    }

    // The same bits in vector blocks. L is formed exactly in 32-bit lanes from two
    // madd16 products on (R, G) and (G, B), with 38470 split as 19235 twice. Since
    // B * 65536 is a whole number of steps, d = B - c and e = R - c with the shared
    // c = -((DiffRound - L) >> 16) = (L + 65535 - DiffRound) >> 16. Then d * 32244 >> 16
    // is one high product; e * 57475 >> 16 is e + (e * -8061 >> 16), as 57475 =
    // 65536 - 8061 does not fit a signed factor. U lies in 2..253, so the store's
    // saturation keeps its low 8 bits.
    template <class V>
    PXK_INLINE static V highHalf(const V luma[2], int32_t add) {
        return packs32(srai32<16>(add32(luma[0], splat32<V>(add))), srai32<16>(add32(luma[1], splat32<V>(add))));
    }
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        const V rg[2] = {unpacklo16(v.c[0], v.c[1]), unpackhi16(v.c[0], v.c[1])};
        const V gb[2] = {unpacklo16(v.c[1], v.c[2]), unpackhi16(v.c[1], v.c[2])};
        V luma[2];
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) {
            luma[h] = add32(madd16(rg[h], pairs<V>(19595, 19235)), madd16(gb[h], pairs<V>(19235, 7471)));
        }
        const V y = highHalf(luma, LumaRound);
        const V c = highHalf(luma, 65535 - DiffRound);
        const V d = sub16(v.c[2], c);
        const V e = sub16(v.c[0], c);
        const V u = add16(mulhi16(d, splat16<V>(32244)), splat16<V>(128));
        const V w = add16(add16(e, mulhi16(e, splat16<V>(-8061))), splat16<V>(128));
        return Lanes3<V>{{y, u, w}};
    }
};

using RoundedScalarForm = LumaDifferenceForm<32768, 32768>;
using RoundedLumaScalarForm = LumaDifferenceForm<32768, 32767>;
using TruncatingLumaScalarForm = LumaDifferenceForm<0, 32767>;

// The matrix scalar form: no colour differences; Y at a scale of 2^16 with 38469 for
// G, U and V at a scale of 2^15. Nothing is rounded.
struct MatrixScalarForm {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t r = p.c[0], g = p.c[1], b = p.c[2];
        return Pixel3{{low8(asr(19595 * r + 38469 * g + 7471 * b, 16)),
                       low8(asr(-4816 * r - 9469 * g + 14286 * b, 15) + 128),
                       clamp8(asr(20152 * r - 16875 * g - 3276 * b, 15) + 128)}};
    }
};

// The high-product form of the vector blocks: each product truncated by itself to its
// high 16 bits. Luma takes unsigned products of the samples times 256 and is a floor
// (no rounding); chroma takes signed products of the samples times 128, summed and
// shifted by 6.
struct YuvHighProductForm {
    static constexpr int32_t kLuma[3] = {19595, 38469, 7471};
    static constexpr int32_t kU[3] = {-4816, -9469, 14286};
    static constexpr int32_t kV[3] = {20152, -16875, -3276};

    PXK_INLINE static int32_t chroma(const int32_t (&k)[3], int32_t r, int32_t g, int32_t b) {
        return asr(highProduct(k[0], r * 128) + highProduct(k[1], g * 128) + highProduct(k[2], b * 128), 6) + 128;
    }
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t r = p.c[0], g = p.c[1], b = p.c[2];
        const int32_t luma = highProductUnsigned(kLuma[0], r * 256) + highProductUnsigned(kLuma[1], g * 256) +
                             highProductUnsigned(kLuma[2], b * 256);
        return Pixel3{{clamp8(asr(luma, 8)), clamp8(chroma(kU, r, g, b)), clamp8(chroma(kV, r, g, b))}};
    }

    // A luma product of R * 256 by k is the product of R * 128 by 2k, which still fits
    // an unsigned factor for R and B; G keeps G * 256. The luma sum stays below 2^16
    // unsigned, and the chroma sums within signed 16 bits; 128 rides on the chroma
    // sums as 128 * 64 before the shift.
    template <class V>
    PXK_INLINE static V chroma(const int32_t (&k)[3], const V x128[3]) {
        const V sum = add16(add16(mulhi16(x128[0], splat16<V>(k[0])), mulhi16(x128[1], splat16<V>(k[1]))),
                            add16(mulhi16(x128[2], splat16<V>(k[2])), splat16<V>(128 * 64)));
        return srai16<6>(sum);
    }
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        const V x128[3] = {slli16<7>(v.c[0]), slli16<7>(v.c[1]), slli16<7>(v.c[2])};
        const V g256 = add16(x128[1], x128[1]);
        const V luma = add16(add16(mulhiu16(x128[0], splat16<V>(2 * kLuma[0])), mulhiu16(g256, splat16<V>(kLuma[1]))),
                             mulhiu16(x128[2], splat16<V>(2 * kLuma[2])));
        return Lanes3<V>{{srli16<8>(luma), chroma(kU, x128), chroma(kV, x128)}};
    }
};

// ---------------------------------------------------------------------------------
// YUV -> RGB. Input channels Y, U, V (raw samples); output R, G, B.
// ---------------------------------------------------------------------------------

// The inverse forms at a scale of 2^16 with Y taken whole (65536): the studio-range
// inverse body serves them, with U and V in the places of Cb and Cr.
inline constexpr InverseMatrix kFullRoundedMatrix = inverseMatrix(65536, 74711, -25821, -38076, 133169, 32768);
// The same, with no rounding term in G.
inline constexpr InverseMatrix kHalfRoundedMatrix(65536, 74711, -25821, -38076, 133169, 32768, 0, 32768);
// Each coefficient one lower, and no rounding term.
inline constexpr InverseMatrix kTruncatingMatrix = inverseMatrix(65536, 74710, -25820, -38075, 133168, 0);
// The full rounded constants with no rounding term in any output.
inline constexpr InverseMatrix kTruncatingFullMatrix = inverseMatrix(65536, 74711, -25821, -38076, 133169, 0);

using FullRoundedForm = InverseMatrixForm<kFullRoundedMatrix>;
using HalfRoundedForm = InverseMatrixForm<kHalfRoundedMatrix>;
using TruncatingForm = InverseMatrixForm<kTruncatingMatrix>;
// The truncating form with the full constants (4:2:0 and 4:2:2 members).
using TruncatingFullForm = InverseMatrixForm<kTruncatingFullMatrix>;

// The sixteenths form of the 4:2:0 and 4:2:2 vector blocks with an alpha byte: 16 Y
// plus high products of U and V times 128, at four fraction bits; G subtracts its two.
inline constexpr HighProductInverse kSixteenths{0, 9338, 3227, 4759, 16646, true};
using SixteenthsForm = HighProductInverseFormOf<kSixteenths>;

// The high-product inverse forms of the vector blocks: Y plus high products of the
// colour differences times 2^Shift. The octet form (Shift 3) adds them to Y; the
// doubled form (Shift 4) adds them to 2 Y and halves the sum.
struct InverseHighProduct {
    int32_t vToR, uToG, vToG, uToB;
};

template <const InverseHighProduct& K, int Shift>
struct YuvInverseHighProductForm {
    static_assert(Shift == 3 || Shift == 4, "octet or doubled");
    // Y once (octet) or twice (doubled), the sum halved in the doubled form.
    static constexpr int32_t kYTimes = Shift == 3 ? 1 : 2;
    static constexpr int kHalve = Shift == 3 ? 0 : 1;

    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t y = kYTimes * p.c[0];
        const int32_t u = (p.c[1] - 128) * (1 << Shift), v = (p.c[2] - 128) * (1 << Shift);
        return Pixel3{{clamp8(asr(y + highProduct(K.vToR, v), kHalve)),
                       clamp8(asr(y + highProduct(K.uToG, u) + highProduct(K.vToG, v), kHalve)),
                       clamp8(asr(y + highProduct(K.uToB, u), kHalve))}};
    }

    template <class V>
    PXK_INLINE static V finish(V sum) {
        if constexpr (kHalve == 0) {
            return sum;
        } else {
            return srai16<kHalve>(sum);
        }
    }
    // The block in two parts: the chroma terms of R, G, B, then Y and the halving.
    template <class V>
    PXK_INLINE static Terms<V, 3> chromaTerms(V uRaw, V vRaw) {
        const V u = slli16<Shift>(sub16(uRaw, splat16<V>(128)));
        const V v = slli16<Shift>(sub16(vRaw, splat16<V>(128)));
        return Terms<V, 3>{{mulhi16(v, splat16<V>(K.vToR)),
                            add16(mulhi16(u, splat16<V>(K.uToG)), mulhi16(v, splat16<V>(K.vToG))),
                            mulhi16(u, splat16<V>(K.uToB))}};
    }
    template <class V>
    PXK_INLINE static Lanes3<V> withLuma(V luma, const Terms<V, 3>& t) {
        const V y = kYTimes == 1 ? luma : add16(luma, luma);
        return Lanes3<V>{{finish(add16(y, t.v[0])), finish(add16(y, t.v[1])), finish(add16(y, t.v[2]))}};
    }
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& px) {
        return withLuma(px.c[0], chromaTerms(px.c[1], px.c[2]));
    }
};

inline constexpr InverseHighProduct kOctetProducts{9339, -3228, -4760, 16646};
inline constexpr InverseHighProduct kDoubledProducts{9338, -3227, -4759, 16645};

// The octet form, for 8-pixel blocks: U and V times 8.
using OctetForm = YuvInverseHighProductForm<kOctetProducts, 3>;
// The doubled form, for 16-pixel blocks: U and V times 16, Y doubled, the sum halved.
using DoubledForm = YuvInverseHighProductForm<kDoubledProducts, 4>;
// The doubled form with the octet form's constants (9339, -3228, -4760, 16646).
using Doubled9339Form = YuvInverseHighProductForm<kOctetProducts, 4>;

}  // namespace yuv
}  // namespace pxk
