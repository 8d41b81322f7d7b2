// Scalar reference model of the full-resolution RGB <-> YCbCr conversions.
//
// Each fixed-point form is written out once, literally, pixel by pixel, in 64-bit
// integers with an explicit floor shift; nothing here is shared with the library.
// The per-export references below walk rows from the top by their steps (so that a
// step of 0 rewrites one row and the last row wins, exactly as the library must), and
// pick the form of each pixel by its column: the vector-block form for columns below
// n = width - width % 8, the tail form from n on.
#ifndef PXKCC_TESTS_YUV_REFERENCE_FORMS_H
#define PXKCC_TESTS_YUV_REFERENCE_FORMS_H

#include <cstddef>
#include <cstdint>

namespace ref {

// ---------------------------------------------------------------------------------
// Words of fixed-point arithmetic
// ---------------------------------------------------------------------------------

// v / 2^s rounded toward negative infinity, written without shifting negative values.
inline int64_t floorShift(int64_t v, int s) {
    const int64_t d = int64_t(1) << s;
    int64_t q = v / d;  // truncates toward zero
    if (v % d != 0 && v < 0) --q;
    return q;
}

inline uint8_t clamp8(int64_t v) { return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v)); }

// The low 8 bits of v (two's complement).
inline uint8_t low8(int64_t v) { return static_cast<uint8_t>(static_cast<uint64_t>(v) & 0xFFu); }

// High product: exact signed product k * x, divided by 2^16 toward negative infinity.
inline int64_t h(int64_t k, int64_t x) { return floorShift(k * x, 16); }

struct Ycc {
    uint8_t y, cb, cr;
};
struct Rgb {
    uint8_t r, g, b;
};

inline bool operator==(const Ycc& a, const Ycc& b) { return a.y == b.y && a.cb == b.cb && a.cr == b.cr; }
inline bool operator!=(const Ycc& a, const Ycc& b) { return !(a == b); }
inline bool operator==(const Rgb& a, const Rgb& b) { return a.r == b.r && a.g == b.g && a.b == b.b; }
inline bool operator!=(const Rgb& a, const Rgb& b) { return !(a == b); }

// ---------------------------------------------------------------------------------
// RGB -> YCbCr forms
// ---------------------------------------------------------------------------------

// Direct form: 32-bit sums at 2^16, offset added before the shift, low 8 bits kept.
inline Ycc directForm(int R, int G, int B) {
    const int64_t y = floorShift(16843LL * R + 33030LL * G + 6423LL * B + 1081344LL, 16);
    const int64_t cb = floorShift(-9699LL * R - 19071LL * G + 28770LL * B + 8421376LL, 16);
    const int64_t cr = floorShift(28770LL * R - 24117LL * G - 4653LL * B + 8421376LL, 16);
    return {low8(y), low8(cb), low8(cr)};
}

// Paired form: R and G terms summed then shifted by 11, B term shifted by 11 alone,
// then offset with 4 fraction bits, shifted by 4 and clamped.
inline uint8_t pairedChannel(int64_t cR, int64_t cG, int64_t cB, int64_t offset, int R, int G, int B) {
    const int64_t p = floorShift(cR * R + cG * G, 11);
    const int64_t q = floorShift(cB * B, 11);
    return clamp8(floorShift(p + q + offset, 4));
}

inline Ycc pairedForm(int R, int G, int B) {
    return {pairedChannel(8421, 16515, 3211, 264, R, G, B),        // Y
            pairedChannel(-4850, -9535, 14385, 2056, R, G, B),     // Cb
            pairedChannel(14385, -12059, -2327, 2056, R, G, B)};   // Cr
}

// High-product form: each product of a coefficient of the direct form and a scaled
// sample is truncated to its high 16 bits by itself.
inline Ycc highProductForm(int R, int G, int B) {
    // Luma: samples scaled by 256, all values non-negative (33030 taken as unsigned).
    const int64_t a = floorShift(16843LL * (R * 256LL), 16);
    const int64_t b = floorShift(33030LL * (G * 256LL), 16);
    const int64_t c = floorShift(6423LL * (B * 256LL), 16);
    const uint8_t y = clamp8(floorShift(a + b + c + 128, 8) + 16);
    // Chroma: samples scaled by 128, signed products.
    const int64_t r = R * 128LL, g = G * 128LL, bb = B * 128LL;
    const uint8_t cb = clamp8(floorShift(h(-9699, r) + h(-19071, g) + h(28770, bb) + 64, 7) + 128);
    const uint8_t cr = clamp8(floorShift(h(28770, r) + h(-24117, g) + h(-4653, bb) + 64, 7) + 128);
    return {y, cb, cr};
}

// ---------------------------------------------------------------------------------
// YCbCr -> RGB forms. Arguments are the raw samples 0..255; chroma is taken less 128.
// ---------------------------------------------------------------------------------

inline Rgb roundedForm(int Yraw, int CbRaw, int CrRaw) {
    const int64_t Y = Yraw, Cb = CbRaw - 128, Cr = CrRaw - 128;
    return {clamp8(floorShift(76282 * Y + 104593 * Cr - 1187744, 16)),
            clamp8(floorShift(76282 * Y - 25689 * Cb - 53279 * Cr - 1187744, 16)),
            clamp8(floorShift(76282 * Y + 132184 * Cb - 1187744, 16))};
}

inline Rgb wideRoundedForm(int Yraw, int CbRaw, int CrRaw) {
    const int64_t Y = Yraw, Cb = CbRaw - 128, Cr = CrRaw - 128;
    return {clamp8(floorShift(76284 * Y + 104595 * Cr - 1187776, 16)),
            clamp8(floorShift(76284 * Y - 25690 * Cb - 53281 * Cr - 1187776, 16)),
            clamp8(floorShift(76284 * Y + 132186 * Cb - 1187776, 16))};
}

inline Rgb wideTruncatingForm(int Yraw, int CbRaw, int CrRaw) {
    const int64_t Y = Yraw, Cb = CbRaw - 128, Cr = CrRaw - 128;
    return {clamp8(floorShift(76284 * Y + 104595 * Cr - 1220544, 16)),
            clamp8(floorShift(76284 * Y - 25690 * Cb - 53281 * Cr - 1220544, 16)),
            clamp8(floorShift(76284 * Y + 132186 * Cb - 1220544, 16))};
}

inline Rgb highProductInverseForm(int Yraw, int CbRaw, int CrRaw) {
    const int64_t y = h(9535, (Yraw - 16) * 128LL);
    const int64_t cb = (CbRaw - 128) * 128LL;
    const int64_t cr = (CrRaw - 128) * 128LL;
    return {clamp8(floorShift(y + h(13074, cr) + 8, 4)),                   // R
            clamp8(floorShift(y - h(6660, cr) - h(3211, cb) + 8, 4)),      // G
            clamp8(floorShift(y + h(16523, cb) + 8, 4))};                  // B
}

// ---------------------------------------------------------------------------------
// Per-export references
// ---------------------------------------------------------------------------------

// True for the columns that a row kernel converts in blocks of 8.
inline bool inVectorColumns(int x, int width) { return x < width - width % 8; }

inline const uint8_t* rowAt(const uint8_t* p, int step, int y) { return p + std::ptrdiff_t(y) * step; }
inline uint8_t* rowAt(uint8_t* p, int step, int y) { return p + std::ptrdiff_t(y) * step; }

using RgbToYccForm = Ycc (*)(int, int, int);
using YccToRgbForm = Rgb (*)(int, int, int);

// RGB -> YCbCr, packed source of `srcChannels` bytes a pixel (R, G, B first).
// Destination packed (dstPlanes == nullptr, `dstChannels` bytes a pixel, only bytes
// 0..2 written) or planar (dstPlanes[0..2], one step).
inline void rgbToYccPacked(const uint8_t* src, int srcStep, int srcChannels, uint8_t* dst, uint8_t* const* dstPlanes,
                           int dstChannels, int dstStep, int width, int height, RgbToYccForm blockForm,
                           RgbToYccForm tailForm) {
    for (int y = 0; y < height; ++y) {
        const uint8_t* s = rowAt(src, srcStep, y);
        for (int x = 0; x < width; ++x) {
            const uint8_t* p = s + std::ptrdiff_t(x) * srcChannels;
            const Ycc v = inVectorColumns(x, width) ? blockForm(p[0], p[1], p[2]) : tailForm(p[0], p[1], p[2]);
            if (dstPlanes) {
                rowAt(dstPlanes[0], dstStep, y)[x] = v.y;
                rowAt(dstPlanes[1], dstStep, y)[x] = v.cb;
                rowAt(dstPlanes[2], dstStep, y)[x] = v.cr;
            } else {
                uint8_t* d = rowAt(dst, dstStep, y) + std::ptrdiff_t(x) * dstChannels;
                d[0] = v.y;
                d[1] = v.cb;
                d[2] = v.cr;
            }
        }
    }
}

inline void rgbToYCbCr_C3R(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width, int height) {
    rgbToYccPacked(src, srcStep, 3, dst, nullptr, 3, dstStep, width, height, pairedForm, directForm);
}

// Byte 3 of the source is ignored; byte 3 of the destination is not written.
inline void rgbToYCbCr_AC4R(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width, int height) {
    rgbToYccPacked(src, srcStep, 4, dst, nullptr, 4, dstStep, width, height, directForm, directForm);
}

inline void rgbToYCbCr_C3P3R(const uint8_t* src, int srcStep, uint8_t* const dst[3], int dstStep, int width,
                             int height) {
    rgbToYccPacked(src, srcStep, 3, nullptr, dst, 0, dstStep, width, height, highProductForm, directForm);
}

inline void rgbToYCbCr_AC4P3R(const uint8_t* src, int srcStep, uint8_t* const dst[3], int dstStep, int width,
                              int height) {
    rgbToYccPacked(src, srcStep, 4, nullptr, dst, 0, dstStep, width, height, highProductForm, directForm);
}

inline void rgbToYCbCr_P3R(const uint8_t* const src[3], int srcStep, uint8_t* const dst[3], int dstStep, int width,
                           int height) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Ycc v =
                directForm(rowAt(src[0], srcStep, y)[x], rowAt(src[1], srcStep, y)[x], rowAt(src[2], srcStep, y)[x]);
            rowAt(dst[0], dstStep, y)[x] = v.y;
            rowAt(dst[1], dstStep, y)[x] = v.cb;
            rowAt(dst[2], dstStep, y)[x] = v.cr;
        }
    }
}

// YCbCr -> RGB. Source packed (srcPlanes == nullptr, `srcChannels` bytes a pixel,
// Y Cb Cr first) or planar. Destination packed (`dstChannels` bytes a pixel; with
// bgr the blue sample goes first; with writeAlpha byte 3 gets `alpha`) or planar
// (dstPlanes R, G, B).
struct YccToRgbLayout {
    int srcChannels = 3;  // packed source only
    int dstChannels = 3;  // packed destination only
    bool bgr = false;     // packed destination only
    bool writeAlpha = false;
};

inline void yccToRgb(const uint8_t* src, const uint8_t* const* srcPlanes, int srcStep, uint8_t* dst,
                     uint8_t* const* dstPlanes, int dstStep, int width, int height, const YccToRgbLayout& lay,
                     uint8_t alpha, YccToRgbForm blockForm, YccToRgbForm tailForm) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            int Y, Cb, Cr;
            if (srcPlanes) {
                Y = rowAt(srcPlanes[0], srcStep, y)[x];
                Cb = rowAt(srcPlanes[1], srcStep, y)[x];
                Cr = rowAt(srcPlanes[2], srcStep, y)[x];
            } else {
                const uint8_t* p = rowAt(src, srcStep, y) + std::ptrdiff_t(x) * lay.srcChannels;
                Y = p[0];
                Cb = p[1];
                Cr = p[2];
            }
            const Rgb v = inVectorColumns(x, width) ? blockForm(Y, Cb, Cr) : tailForm(Y, Cb, Cr);
            if (dstPlanes) {
                rowAt(dstPlanes[0], dstStep, y)[x] = v.r;
                rowAt(dstPlanes[1], dstStep, y)[x] = v.g;
                rowAt(dstPlanes[2], dstStep, y)[x] = v.b;
            } else {
                uint8_t* d = rowAt(dst, dstStep, y) + std::ptrdiff_t(x) * lay.dstChannels;
                d[0] = lay.bgr ? v.b : v.r;
                d[1] = v.g;
                d[2] = lay.bgr ? v.r : v.b;
                if (lay.writeAlpha) d[3] = alpha;
            }
        }
    }
}

inline void yCbCrToRGB_C3R(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width, int height) {
    yccToRgb(src, nullptr, srcStep, dst, nullptr, dstStep, width, height, YccToRgbLayout{3, 3, false, false}, 0,
             roundedForm, roundedForm);
}

// Byte 3 of the source is ignored; byte 3 of the destination is not written.
inline void yCbCrToRGB_AC4R(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width, int height) {
    yccToRgb(src, nullptr, srcStep, dst, nullptr, dstStep, width, height, YccToRgbLayout{4, 4, false, false}, 0,
             wideTruncatingForm, wideTruncatingForm);
}

inline void yCbCrToRGB_P3R(const uint8_t* const src[3], int srcStep, uint8_t* const dst[3], int dstStep, int width,
                           int height) {
    yccToRgb(nullptr, src, srcStep, nullptr, dst, dstStep, width, height, YccToRgbLayout{}, 0, wideRoundedForm,
             wideRoundedForm);
}

inline void yCbCrToRGB_P3C3R(const uint8_t* const src[3], int srcStep, uint8_t* dst, int dstStep, int width,
                             int height) {
    yccToRgb(nullptr, src, srcStep, dst, nullptr, dstStep, width, height, YccToRgbLayout{3, 3, false, false}, 0,
             roundedForm, roundedForm);
}

inline void yCbCrToRGB_P3C4R(const uint8_t* const src[3], int srcStep, uint8_t* dst, int dstStep, int width, int height,
                             uint8_t alpha) {
    yccToRgb(nullptr, src, srcStep, dst, nullptr, dstStep, width, height, YccToRgbLayout{3, 4, false, true}, alpha,
             highProductInverseForm, roundedForm);
}

inline void yCbCrToBGR_P3C3R(const uint8_t* const src[3], int srcStep, uint8_t* dst, int dstStep, int width,
                             int height) {
    yccToRgb(nullptr, src, srcStep, dst, nullptr, dstStep, width, height, YccToRgbLayout{3, 3, true, false}, 0,
             roundedForm, roundedForm);
}

inline void yCbCrToBGR_P3C4R(const uint8_t* const src[3], int srcStep, uint8_t* dst, int dstStep, int width, int height,
                             uint8_t alpha) {
    yccToRgb(nullptr, src, srcStep, dst, nullptr, dstStep, width, height, YccToRgbLayout{3, 4, true, true}, alpha,
             roundedForm, roundedForm);
}

}  // namespace ref

#endif
