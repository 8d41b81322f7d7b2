// Scalar reference model of the full-resolution RGB <-> full-range YUV conversions.
//
// Each fixed-point form is written out once, literally, pixel by pixel, in 64-bit
// integers with an explicit floor shift (the words floorShift, clamp8, low8 and h come
// from reference_forms.h); nothing here is shared with the library. The per-export
// references walk rows from the top by their steps (a step of 0 rewrites one row, the
// last row wins) and pick each pixel's form by its column: the vector-block form below
// cols8 = width - width % 8 or cols16 = width - width % 16, the tail form from there on.
#ifndef PXKCC_TESTS_YUV_REFERENCE_YUV_H
#define PXKCC_TESTS_YUV_REFERENCE_YUV_H

#include <cstddef>
#include <cstdint>

#include "reference_forms.h"

namespace refyuv {

using ref::clamp8;
using ref::floorShift;
using ref::h;
using ref::low8;
using ref::rowAt;

struct Yuv {
    uint8_t y, u, v;
};
struct Rgb {
    uint8_t r, g, b;
};

inline bool operator==(const Yuv& a, const Yuv& b) { return a.y == b.y && a.u == b.u && a.v == b.v; }
inline bool operator!=(const Yuv& a, const Yuv& b) { return !(a == b); }
inline bool operator==(const Rgb& a, const Rgb& b) { return a.r == b.r && a.g == b.g && a.b == b.b; }
inline bool operator!=(const Rgb& a, const Rgb& b) { return !(a == b); }

inline uint8_t channelOf(const Yuv& p, int c) { return c == 0 ? p.y : (c == 1 ? p.u : p.v); }
inline uint8_t channelOf(const Rgb& p, int c) { return c == 0 ? p.r : (c == 1 ? p.g : p.b); }

// ---------------------------------------------------------------------------------
// RGB -> YUV forms
// ---------------------------------------------------------------------------------

// The three scalar forms built on the luma L = 19595 R + 38470 G + 7471 B at 2^16.
// `lumaRound` is added to L for Y (0 for the truncating luma), `diffRound` to the
// scaled differences B - L and R - L.
inline Yuv lumaBasedForm(int R, int G, int B, int64_t lumaRound, int64_t diffRound) {
    const int64_t L = 19595LL * R + 38470LL * G + 7471LL * B;
    const int64_t Y = floorShift(L + lumaRound, 16);
    const int64_t d = floorShift(B * 65536LL - L + diffRound, 16);
    const int64_t e = floorShift(R * 65536LL - L + diffRound, 16);
    const uint8_t u = low8(floorShift(d * 32244, 16) + 128);  // never leaves 0..255
    const uint8_t v = clamp8(floorShift(e * 57475, 16) + 128);
    return {uint8_t(Y), u, v};
}

// Rounded scalar: Y = (L + 32768) >> 16, differences rounded with 32768.
inline Yuv roundedScalarForm(int R, int G, int B) { return lumaBasedForm(R, G, B, 32768, 32768); }

// Rounded luma scalar: Y as above, differences rounded with 32767.
inline Yuv roundedLumaScalarForm(int R, int G, int B) { return lumaBasedForm(R, G, B, 32768, 32767); }

// Truncating luma scalar: Y = L >> 16, differences rounded with 32767.
inline Yuv truncatingLumaScalarForm(int R, int G, int B) { return lumaBasedForm(R, G, B, 0, 32767); }

// Matrix scalar: luma coefficients summing to 65535, chroma at 2^15, no rounding.
inline Yuv matrixScalarForm(int R, int G, int B) {
    const int64_t Y = floorShift(19595LL * R + 38469LL * G + 7471LL * B, 16);
    const uint8_t u = low8(floorShift(-4816LL * R - 9469LL * G + 14286LL * B, 15) + 128);
    const uint8_t v = clamp8(floorShift(20152LL * R - 16875LL * G - 3276LL * B, 15) + 128);
    return {uint8_t(Y), u, v};
}

// High-product form: every product of a coefficient and a scaled sample is cut to its
// high 16 bits by itself; Y is a floor.
inline Yuv highProductForm(int R, int G, int B) {
    const int64_t a = floorShift(19595LL * (R * 256LL), 16);
    const int64_t b = floorShift(38469LL * (G * 256LL), 16);
    const int64_t c = floorShift(7471LL * (B * 256LL), 16);
    const uint8_t y = clamp8(floorShift(a + b + c, 8));
    const int64_t r = R * 128LL, g = G * 128LL, bb = B * 128LL;
    const uint8_t u = clamp8(floorShift(h(-4816, r) + h(-9469, g) + h(14286, bb), 6) + 128);
    const uint8_t v = clamp8(floorShift(h(20152, r) + h(-16875, g) + h(-3276, bb), 6) + 128);
    return {y, u, v};
}

// ---------------------------------------------------------------------------------
// YUV -> RGB forms. Arguments are the raw samples 0..255; U and V are taken less 128.
// ---------------------------------------------------------------------------------

inline Rgb fullRoundedForm(int Yraw, int Uraw, int Vraw) {
    const int64_t Y = Yraw, U = Uraw - 128, V = Vraw - 128;
    return {clamp8(floorShift(Y * 65536 + 74711 * V + 32768, 16)),
            clamp8(floorShift(Y * 65536 - 25821 * U - 38076 * V + 32768, 16)),
            clamp8(floorShift(Y * 65536 + 133169 * U + 32768, 16))};
}

// As the full rounded form, but G has no rounding term.
inline Rgb halfRoundedForm(int Yraw, int Uraw, int Vraw) {
    const int64_t Y = Yraw, U = Uraw - 128, V = Vraw - 128;
    return {clamp8(floorShift(Y * 65536 + 74711 * V + 32768, 16)),
            clamp8(floorShift(Y * 65536 - 25821 * U - 38076 * V, 16)),
            clamp8(floorShift(Y * 65536 + 133169 * U + 32768, 16))};
}

inline Rgb truncatingInverseForm(int Yraw, int Uraw, int Vraw) {
    const int64_t Y = Yraw, U = Uraw - 128, V = Vraw - 128;
    return {clamp8(floorShift(Y * 65536 + 74710 * V, 16)), clamp8(floorShift(Y * 65536 - 25820 * U - 38075 * V, 16)),
            clamp8(floorShift(Y * 65536 + 133168 * U, 16))};
}

// Octet form (8-pixel blocks): chroma scaled by 8 through high products.
inline Rgb octetForm(int Yraw, int Uraw, int Vraw) {
    const int64_t Y = Yraw, u = (Uraw - 128) * 8LL, v = (Vraw - 128) * 8LL;
    return {clamp8(Y + h(9339, v)), clamp8(Y + h(-3228, u) + h(-4760, v)), clamp8(Y + h(16646, u))};
}

// Doubled form (16-pixel blocks): chroma scaled by 16, luma doubled, one bit dropped.
inline Rgb doubledForm(int Yraw, int Uraw, int Vraw) {
    const int64_t Y = Yraw, u = (Uraw - 128) * 16LL, v = (Vraw - 128) * 16LL;
    return {clamp8(floorShift(2 * Y + h(9338, v), 1)), clamp8(floorShift(2 * Y + h(-3227, u) + h(-4759, v), 1)),
            clamp8(floorShift(2 * Y + h(16645, u), 1))};
}

// ---------------------------------------------------------------------------------
// Per-export references
// ---------------------------------------------------------------------------------

using ForwardForm = Yuv (*)(int, int, int);
using InverseForm = Rgb (*)(int, int, int);

// The columns [0, blockColumns(width, block)) are the vector columns of a kernel that
// works in blocks of `block` pixels (8 or 16); block 0 means no vector columns.
inline int blockColumns(int width, int block) { return block == 0 ? 0 : width - width % block; }

// One side of a conversion: packed (`planes` == nullptr, `channels` bytes a pixel) or
// planar (`planes[c]`, one step for all planes).
struct SrcSide {
    const uint8_t* packed;
    const uint8_t* const* planes;
    int channels;
    int step;
    uint8_t sample(int x, int y, int c) const {
        return planes ? rowAt(planes[c], step, y)[x] : rowAt(packed, step, y)[std::ptrdiff_t(x) * channels + c];
    }
};
struct DstSide {
    uint8_t* packed;
    uint8_t* const* planes;
    int channels;
    int step;
    uint8_t& sample(int x, int y, int c) const {
        return planes ? rowAt(planes[c], step, y)[x] : rowAt(packed, step, y)[std::ptrdiff_t(x) * channels + c];
    }
};

// What a member does with byte / plane 3 of the destination.
enum class Alpha {
    None,        // three-channel destination, or byte 3 left unwritten
    CopySource,  // dst channel 3 = source byte 3
    Constant,    // dst channel 3 = the alpha argument
};

inline void forward(const SrcSide& s, const DstSide& d, int width, int height, int block, ForwardForm blockForm,
                    ForwardForm tailForm, Alpha alpha) {
    const int cols = blockColumns(width, block);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int R = s.sample(x, y, 0), G = s.sample(x, y, 1), B = s.sample(x, y, 2);
            const Yuv p = x < cols ? blockForm(R, G, B) : tailForm(R, G, B);
            d.sample(x, y, 0) = p.y;
            d.sample(x, y, 1) = p.u;
            d.sample(x, y, 2) = p.v;
            if (alpha == Alpha::CopySource) d.sample(x, y, 3) = s.sample(x, y, 3);
        }
    }
}

inline void inverse(const SrcSide& s, const DstSide& d, int width, int height, int block, InverseForm blockForm,
                    InverseForm tailForm, Alpha alpha, uint8_t alphaValue) {
    const int cols = blockColumns(width, block);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int Y = s.sample(x, y, 0), U = s.sample(x, y, 1), V = s.sample(x, y, 2);
            const Rgb p = x < cols ? blockForm(Y, U, V) : tailForm(Y, U, V);
            d.sample(x, y, 0) = p.r;
            d.sample(x, y, 1) = p.g;
            d.sample(x, y, 2) = p.b;
            if (alpha == Alpha::Constant) d.sample(x, y, 3) = alphaValue;
        }
    }
}

// RGB -> YUV members.

inline void rgbToYUV_C3R(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width, int height) {
    forward({src, nullptr, 3, srcStep}, {dst, nullptr, 3, dstStep}, width, height, 16, highProductForm,
            truncatingLumaScalarForm, Alpha::None);
}

// Source byte 3 ignored, destination byte 3 unwritten.
inline void rgbToYUV_AC4R(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width, int height) {
    forward({src, nullptr, 4, srcStep}, {dst, nullptr, 4, dstStep}, width, height, 0, roundedScalarForm,
            roundedScalarForm, Alpha::None);
}

inline void rgbToYUV_C3P3R(const uint8_t* src, int srcStep, uint8_t* const dst[3], int dstStep, int width, int height) {
    forward({src, nullptr, 3, srcStep}, {nullptr, dst, 1, dstStep}, width, height, 8, highProductForm,
            truncatingLumaScalarForm, Alpha::None);
}

// dst[3] receives source byte 3.
inline void rgbToYUV_AC4P4R(const uint8_t* src, int srcStep, uint8_t* const dst[4], int dstStep, int width,
                            int height) {
    forward({src, nullptr, 4, srcStep}, {nullptr, dst, 1, dstStep}, width, height, 0, roundedLumaScalarForm,
            roundedLumaScalarForm, Alpha::CopySource);
}

inline void rgbToYUV_P3R(const uint8_t* const src[3], int srcStep, uint8_t* const dst[3], int dstStep, int width,
                         int height) {
    forward({nullptr, src, 1, srcStep}, {nullptr, dst, 1, dstStep}, width, height, 16, highProductForm,
            matrixScalarForm, Alpha::None);
}

// YUV -> RGB members.

inline void yuvToRGB_C3R(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width, int height) {
    inverse({src, nullptr, 3, srcStep}, {dst, nullptr, 3, dstStep}, width, height, 8, octetForm, halfRoundedForm,
            Alpha::None, 0);
}

// Source byte 3 ignored, destination byte 3 unwritten.
inline void yuvToRGB_AC4R(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width, int height) {
    inverse({src, nullptr, 4, srcStep}, {dst, nullptr, 4, dstStep}, width, height, 0, halfRoundedForm, halfRoundedForm,
            Alpha::None, 0);
}

// Byte 3 of every destination pixel = alpha.
inline void yuvToRGB_C3C4R(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width, int height,
                           uint8_t alpha) {
    inverse({src, nullptr, 3, srcStep}, {dst, nullptr, 4, dstStep}, width, height, 0, fullRoundedForm, fullRoundedForm,
            Alpha::Constant, alpha);
}

inline void yuvToRGB_P3C3R(const uint8_t* const src[3], int srcStep, uint8_t* dst, int dstStep, int width, int height) {
    inverse({nullptr, src, 1, srcStep}, {dst, nullptr, 3, dstStep}, width, height, 16, doubledForm,
            truncatingInverseForm, Alpha::None, 0);
}

inline void yuvToRGB_P3R(const uint8_t* const src[3], int srcStep, uint8_t* const dst[3], int dstStep, int width,
                         int height) {
    inverse({nullptr, src, 1, srcStep}, {nullptr, dst, 1, dstStep}, width, height, 0, truncatingInverseForm,
            truncatingInverseForm, Alpha::None, 0);
}

}  // namespace refyuv

#endif
