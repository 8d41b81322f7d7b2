// The integer forms of RGB <-> XYZ for 8-bit samples. The vector blocks multiply by a
// table of 16-bit coefficients in pairs (one multiply-add a pair of channels), add in
// 32 bits and shift arithmetically, with no rounding term; the layouts' stores then
// saturate to 0..255. The tails use tables of 65536ths in 32-bit words and their own
// storing rules. The two tables differ in precision, so a main-loop pixel and a tail
// pixel can differ by one.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/fixed_point.h"
#include "frame/pixel_block.h"
#include "frame/vec.h"

namespace pxk {
namespace colorimetric {

using namespace vec;

// Three rows of three coefficients: output c = k[c][0] * in0 + k[c][1] * in1 + k[c][2] * in2.
struct Matrix3 {
    int32_t k[3][3];
};

// Main loop: RGB to XYZ at a scale of 2^15, XYZ to RGB at 2^13 (the values as listed,
// not all of them the nearest integer).
inline constexpr Matrix3 kRgbToXyzMain{{{13515, 11717, 5912}, {6969, 23434, 2365}, {634, 3906, 31137}}};
inline constexpr Matrix3 kXyzToRgbMain{{{26546, -12591, -4083}, {-7939, 15368, 340}, {456, -1671, 8661}}};
// Tails: the coefficients times 65536, truncated toward zero.
inline constexpr Matrix3 kRgbToXyzTail{{{27030, 23434, 11824}, {13937, 46868, 4729}, {1267, 7811, 62274}}};
inline constexpr Matrix3 kXyzToRgbTail{
    {{212368, -100738, -32671}, {-63521, 122944, 2723}, {3646, -13372, 69291}}};

// The vector form: each output (k0 in0 + k1 in1 + k2 in2) >> Shift, arithmetic, in
// 32-bit lanes from two multiply-adds, (in0, in1) by (k0, k1) and (in2, 0) by (k2, 0);
// the result saturated to signed 16 bits.
template <const Matrix3& M, int Shift>
struct PairedMatrixForm {
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        const V z = zero<V>();
        const V ab[2] = {unpacklo16(v.c[0], v.c[1]), unpackhi16(v.c[0], v.c[1])};
        const V c0[2] = {unpacklo16(v.c[2], z), unpackhi16(v.c[2], z)};
        Lanes3<V> out;
        PXK_UNROLL
        for (int row = 0; row < 3; ++row) {
            V sum[2];
            PXK_UNROLL
            for (int h = 0; h < 2; ++h) {
                sum[h] = srai32<Shift>(add32(madd16(ab[h], pairs<V>(M.k[row][0], M.k[row][1])),
                                             madd16(c0[h], pairs<V>(M.k[row][2], 0))));
            }
            out.c[row] = packs32(sum[0], sum[1]);
        }
        return out;
    }
};

using RgbToXyz8uBlock = PairedMatrixForm<kRgbToXyzMain, 15>;
using XyzToRgb8uBlock = PairedMatrixForm<kXyzToRgbMain, 13>;

// Forward tail: unsigned 32-bit products shifted by 16; X and Y keep their low 8 bits,
// Z is limited to 255.
struct RgbToXyz8uTail {
    PXK_INLINE static uint32_t row(int r, Pixel3 p) {
        const Matrix3& m = kRgbToXyzTail;
        return (uint32_t(m.k[r][0]) * p.c[0] + uint32_t(m.k[r][1]) * p.c[1] + uint32_t(m.k[r][2]) * p.c[2]) >> 16;
    }
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const uint32_t z = row(2, p);
        return Pixel3{{low8(int32_t(row(0, p))), low8(int32_t(row(1, p))), uint8_t(z > 255 ? 255 : z)}};
    }
};

// Inverse tail: signed 32-bit sums shifted arithmetically by 16, saturated to 0..255.
struct XyzToRgb8uTail {
    PXK_INLINE static uint8_t row(int r, Pixel3 p) {
        const Matrix3& m = kXyzToRgbTail;
        return clamp8(asr(m.k[r][0] * p.c[0] + m.k[r][1] * p.c[1] + m.k[r][2] * p.c[2], 16));
    }
    PXK_INLINE static Pixel3 apply(Pixel3 p) { return Pixel3{{row(0, p), row(1, p), row(2, p)}}; }
};

}  // namespace colorimetric
}  // namespace pxk
