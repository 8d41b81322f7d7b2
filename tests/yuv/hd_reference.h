// Scalar reference model of the high-definition family: 709CSC and 709HDTV 4:2:0, the
// CbYCr422 conversions (the carried standard chroma and the gamma member included),
// the full-resolution and 4:2:0 inverse conversions, and the v210 decoders.
//
// Written from the formulas alone, pixel by pixel, in 64-bit integers with
// an explicit floor shift (v210 in single-precision variables, one operation at a
// time). Nothing here is shared with the library. Rows are walked from the top by their
// steps, so that a step of 0 rewrites one row and the last row written wins; only the
// samples the export may touch are read or written.
#ifndef PXKCC_TESTS_YUV_HD_REFERENCE_H
#define PXKCC_TESTS_YUV_HD_REFERENCE_H

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace hdref {

// v / 2^s rounded toward negative infinity.
inline int64_t floorShift(int64_t v, int s) {
    const int64_t d = int64_t(1) << s;
    int64_t q = v / d;
    if (v % d != 0 && v < 0) --q;
    return q;
}
inline uint8_t low8(int64_t v) { return static_cast<uint8_t>(static_cast<uint64_t>(v) & 0xFFu); }
inline uint8_t clamp8(int64_t v) { return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v)); }

// Byte address of row y of an image whose row 0 is at `row0`.
inline const uint8_t* rowAt(const uint8_t* row0, int step, int y) { return row0 + std::ptrdiff_t(y) * step; }
inline uint8_t* rowAt(uint8_t* row0, int step, int y) { return row0 + std::ptrdiff_t(y) * step; }

struct Rgb {
    int64_t r, g, b;
};

// Pixel x of a packed row, B first when `bgr`.
inline Rgb pixelOf(const uint8_t* row, int bytesPerPixel, bool bgr, int x) {
    const uint8_t* p = row + std::ptrdiff_t(x) * bytesPerPixel;
    return bgr ? Rgb{p[2], p[1], p[0]} : Rgb{p[0], p[1], p[2]};
}

// ---------------------------------------------------------------------------------
// Forward matrices
// ---------------------------------------------------------------------------------

enum class Matrix { Csc709, Hdtv709, Standard };

inline uint8_t luma(Matrix m, Rgb p) {
    switch (m) {
        case Matrix::Csc709:
            return clamp8(floorShift(5997 * p.r + 20120 * p.g + 2032 * p.b + 540672, 15));
        case Matrix::Hdtv709: {
            const int64_t s = 13959 * p.r + 46858 * p.g + 4719 * p.b;
            return clamp8(floorShift(s - floorShift(s, 7) + 98304, 16));
        }
        case Matrix::Standard:
            return low8(floorShift(16843 * p.r + 33030 * p.g + 6423 * p.b + 1081344, 16));
    }
    return 0;
}

// k . p for the Cb (cb = true) or Cr row of a matrix at a scale of 2^16.
inline int64_t chromaDot(Matrix m, bool cb, Rgb p) {
    switch (m) {
        case Matrix::Csc709:
            return cb ? -6619 * p.r - 22151 * p.g + 28770 * p.b : 28770 * p.r - 26149 * p.g - 2621 * p.b;
        case Matrix::Hdtv709:
            return cb ? -7668 * p.r - 25821 * p.g + 33489 * p.b : 33489 * p.r - 30409 * p.g - 3080 * p.b;
        case Matrix::Standard:
            return cb ? -9699 * p.r - 19071 * p.g + 28770 * p.b : 28770 * p.r - 24117 * p.g - 4653 * p.b;
    }
    return 0;
}

// clamp8((k . sums + 128.5 * 2^shift) >> shift).
inline uint8_t sumChroma(Matrix m, bool cb, Rgb sums, int shift) {
    const int64_t offset = (int64_t(257) << shift) / 2;
    return clamp8(floorShift(chromaDot(m, cb, sums) + offset, shift));
}

// ---------------------------------------------------------------------------------
// To 4:2:0
// ---------------------------------------------------------------------------------

struct Dest420 {
    uint8_t* y;
    int yStep;
    // Three planes: cb and cr each with its step. Two planes: cbcr with its step.
    uint8_t* cb = nullptr;
    int cbStep = 0;
    uint8_t* cr = nullptr;
    int crStep = 0;
    uint8_t* cbcr = nullptr;
    int cbcrStep = 0;
};

// height / 2 row pairs of width / 2 blocks; Y of each pixel, chroma of each block from
// its sums over both rows.
inline void bgrTo420(Matrix m, const uint8_t* src, int srcStep, int bytesPerPixel, const Dest420& d, int width,
                     int height) {
    for (int r = 0; r < height / 2; ++r) {
        for (int c = 0; c < width / 2; ++c) {
            Rgb sum{0, 0, 0};
            for (int dy = 0; dy < 2; ++dy) {
                for (int dx = 0; dx < 2; ++dx) {
                    const int x = 2 * c + dx, y = 2 * r + dy;
                    const Rgb p = pixelOf(rowAt(src, srcStep, y), bytesPerPixel, true, x);
                    rowAt(d.y, d.yStep, y)[x] = luma(m, p);
                    sum.r += p.r;
                    sum.g += p.g;
                    sum.b += p.b;
                }
            }
            const uint8_t cb = sumChroma(m, true, sum, 18), cr = sumChroma(m, false, sum, 18);
            if (d.cbcr != nullptr) {
                rowAt(d.cbcr, d.cbcrStep, r)[2 * c] = cb;
                rowAt(d.cbcr, d.cbcrStep, r)[2 * c + 1] = cr;
            } else {
                rowAt(d.cb, d.cbStep, r)[c] = cb;
                rowAt(d.cr, d.crStep, r)[c] = cr;
            }
        }
    }
}

// ---------------------------------------------------------------------------------
// To CbYCr422: Cb Y0 Cr Y1 a pair
// ---------------------------------------------------------------------------------

// 709HDTV: pair chroma from the pair's sums at 2^17; a last odd pixel writes its own Cb
// at 2^16 and its Y.
inline void bgrToCbYCrHdtv(const uint8_t* src, int srcStep, int bytesPerPixel, uint8_t* dst, int dstStep, int width,
                           int height) {
    for (int y = 0; y < height; ++y) {
        const uint8_t* s = rowAt(src, srcStep, y);
        uint8_t* d = rowAt(dst, dstStep, y);
        for (int x = 0; x + 1 < width; x += 2) {
            const Rgb p0 = pixelOf(s, bytesPerPixel, true, x), p1 = pixelOf(s, bytesPerPixel, true, x + 1);
            const Rgb sum{p0.r + p1.r, p0.g + p1.g, p0.b + p1.b};
            d[2 * x] = sumChroma(Matrix::Hdtv709, true, sum, 17);
            d[2 * x + 1] = luma(Matrix::Hdtv709, p0);
            d[2 * x + 2] = sumChroma(Matrix::Hdtv709, false, sum, 17);
            d[2 * x + 3] = luma(Matrix::Hdtv709, p1);
        }
        if (width % 2 != 0) {
            const int x = width - 1;
            const Rgb p = pixelOf(s, bytesPerPixel, true, x);
            d[2 * x] = sumChroma(Matrix::Hdtv709, true, p, 16);
            d[2 * x + 1] = luma(Matrix::Hdtv709, p);
        }
    }
}

// The last odd pixel of the standard and gamma members: low8((k . p - 8355840) >> 16),
// then the standard Y.
inline void standardLonePixel(uint8_t* d, int x, Rgb p) {
    d[2 * x] = low8(floorShift(chromaDot(Matrix::Standard, true, p) - 8355840, 16));
    d[2 * x + 1] = luma(Matrix::Standard, p);
}

// Standard, carried: q = (k . p1) >> 2, C = low8((((k . p0) >> 1) + carry + q -
// 8355841) >> 16), carry = q; one carry for Cb and one for Cr, 0 at each row's start.
inline void rgbToCbYCrCarried(const uint8_t* src, int srcStep, int bytesPerPixel, bool bgr, uint8_t* dst, int dstStep,
                              int width, int height) {
    for (int y = 0; y < height; ++y) {
        const uint8_t* s = rowAt(src, srcStep, y);
        uint8_t* d = rowAt(dst, dstStep, y);
        int64_t carry[2] = {0, 0};
        for (int x = 0; x + 1 < width; x += 2) {
            const Rgb p0 = pixelOf(s, bytesPerPixel, bgr, x), p1 = pixelOf(s, bytesPerPixel, bgr, x + 1);
            uint8_t c[2];
            for (int k = 0; k < 2; ++k) {
                const int64_t q = floorShift(chromaDot(Matrix::Standard, k == 0, p1), 2);
                c[k] = low8(floorShift(floorShift(chromaDot(Matrix::Standard, k == 0, p0), 1) + carry[k] + q - 8355841,
                                       16));
                carry[k] = q;
            }
            d[2 * x] = c[0];
            d[2 * x + 1] = luma(Matrix::Standard, p0);
            d[2 * x + 2] = c[1];
            d[2 * x + 3] = luma(Matrix::Standard, p1);
        }
        if (width % 2 != 0) standardLonePixel(d, width - 1, pixelOf(s, bytesPerPixel, bgr, width - 1));
    }
}

// The forward 8u transfer-curve table by its rule, in long double: entry i is
// f(i / 255) * 255 rounded to nearest with ties to even, f(x) = 4.5 x below 0.018 and
// 1.099 x^0.45 - 0.099 from there on, the linear part as 4.5 * i exactly.
inline int gammaForward8u(int i) {
    const long double x = static_cast<long double>(i) / 255.0L;
    long double v;
    if (x < 0.018L) {
        v = 4.5L * static_cast<long double>(i);
    } else {
        v = (1.099L * std::pow(x, 0.45L) - 0.099L) * 255.0L;
    }
    const long double fl = std::floor(v);
    const long double frac = v - fl;
    long long n = static_cast<long long>(fl);
    if (frac > 0.5L || (frac == 0.5L && n % 2 != 0)) ++n;
    return static_cast<int>(n);
}

// The gamma member: samples through the table; groups of four, then a pair, then a
// last odd pixel. In pairs: Y = clamp8((8422 R + 16515 G + 3212 B + 540672) >> 15);
// chroma at the pair's first pixel x with neighbours x - 1 (x itself at the start of a
// row) and x + 1: clamp8((site . s + (left + right) . n + 4210687) >> 15).
inline void rgbToCbYCrGamma(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width, int height) {
    int table[256];
    for (int i = 0; i < 256; ++i) table[i] = gammaForward8u(i);
    auto at = [&](const uint8_t* s, int x) {
        const Rgb p = pixelOf(s, 3, false, x);
        return Rgb{table[p.r], table[p.g], table[p.b]};
    };
    auto pairLuma = [](Rgb p) { return clamp8(floorShift(8422 * p.r + 16515 * p.g + 3212 * p.b + 540672, 15)); };
    for (int y = 0; y < height; ++y) {
        const uint8_t* s = rowAt(src, srcStep, y);
        uint8_t* d = rowAt(dst, dstStep, y);
        for (int x = 0; x + 1 < width; x += 2) {
            const Rgb site = at(s, x), right = at(s, x + 1), left = x == 0 ? site : at(s, x - 1);
            const int64_t cb = -2426 * site.r - 4769 * site.g + 7193 * site.b - 1213 * (left.r + right.r) -
                               2385 * (left.g + right.g) + 3596 * (left.b + right.b);
            const int64_t cr = 7193 * site.r - 6030 * site.g - 1164 * site.b + 3596 * (left.r + right.r) -
                               3015 * (left.g + right.g) - 582 * (left.b + right.b);
            d[2 * x] = clamp8(floorShift(cb + 4210687, 15));
            d[2 * x + 1] = pairLuma(site);
            d[2 * x + 2] = clamp8(floorShift(cr + 4210687, 15));
            d[2 * x + 3] = pairLuma(right);
        }
        if (width % 2 != 0) standardLonePixel(d, width - 1, at(s, width - 1));
    }
}

// ---------------------------------------------------------------------------------
// Inverse matrices: Y, Cb, Cr -> R, G, B
// ---------------------------------------------------------------------------------

enum class Inverse { Standard, Csc709, Hdtv709 };

inline Rgb inverse(Inverse m, int64_t yv, int64_t cbv, int64_t crv) {
    const int64_t cb = cbv - 128, cr = crv - 128;
    int64_t yk = 0, rCr = 0, gCb = 0, gCr = 0, bCb = 0, off = 0;
    switch (m) {
        case Inverse::Standard:
            yk = 76282, rCr = 104593, gCb = -25689, gCr = -53279, bCb = 132184, off = -1187744;
            break;
        case Inverse::Csc709:
            yk = 76284, rCr = 117506, gCb = -13959, gCr = -34996, bCb = 138609, off = -1187776;
            break;
        case Inverse::Hdtv709:
            yk = 65536, rCr = 100925, gCb = -11993, gCr = -30081, bCb = 119013, off = 32768;
            break;
    }
    const int64_t y = yk * yv;
    return Rgb{clamp8(floorShift(y + rCr * cr + off, 16)), clamp8(floorShift(y + gCb * cb + gCr * cr + off, 16)),
               clamp8(floorShift(y + bCb * cb + off, 16))};
}

// Writes a pixel: B, G, R (bgr) or R, G, B, then alpha when bytesPerPixel is 4.
inline void putPixel(uint8_t* row, int x, int bytesPerPixel, bool bgr, Rgb v, uint8_t alpha) {
    uint8_t* p = row + std::ptrdiff_t(x) * bytesPerPixel;
    p[0] = uint8_t(bgr ? v.b : v.r);
    p[1] = uint8_t(v.g);
    p[2] = uint8_t(bgr ? v.r : v.b);
    if (bytesPerPixel == 4) p[3] = alpha;
}

// From CbYCr422: both pixels of a pair take its chroma; a last odd pixel its Y and Cb
// from its own bytes and its Cr from the pair before (its Cb at a width of 1).
inline void cbycrToRgb(Inverse m, const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int bytesPerPixel,
                       bool bgr, uint8_t alpha, int width, int height) {
    for (int y = 0; y < height; ++y) {
        const uint8_t* s = rowAt(src, srcStep, y);
        uint8_t* d = rowAt(dst, dstStep, y);
        for (int x = 0; x + 1 < width; x += 2) {
            const uint8_t cb = s[2 * x], y0 = s[2 * x + 1], cr = s[2 * x + 2], y1 = s[2 * x + 3];
            putPixel(d, x, bytesPerPixel, bgr, inverse(m, y0, cb, cr), alpha);
            putPixel(d, x + 1, bytesPerPixel, bgr, inverse(m, y1, cb, cr), alpha);
        }
        if (width % 2 != 0) {
            const int x = width - 1;
            const uint8_t cb = s[2 * x], yv = s[2 * x + 1];
            const uint8_t cr = x == 0 ? cb : s[2 * x - 2];
            putPixel(d, x, bytesPerPixel, bgr, inverse(m, yv, cb, cr), alpha);
        }
    }
}

// From planes Y, Cb, Cr to BGR. Full resolution (`subsampled` false): every pixel,
// planes sharing `steps[0]`. 4:2:0: height / 2 row pairs of width / 2 pairs, chroma
// row r serving rows 2 r and 2 r + 1.
inline void planesToBgr(Inverse m, const uint8_t* const planes[3], const int steps[3], bool subsampled, uint8_t* dst,
                        int dstStep, int bytesPerPixel, uint8_t alpha, int width, int height) {
    const int rowsDone = subsampled ? height - height % 2 : height;
    const int columns = subsampled ? width - width % 2 : width;
    for (int y = 0; y < rowsDone; ++y) {
        const int cy = subsampled ? y / 2 : y;
        for (int x = 0; x < columns; ++x) {
            const int cx = subsampled ? x / 2 : x;
            const uint8_t yv = rowAt(planes[0], steps[0], y)[x];
            const uint8_t cb = rowAt(planes[1], steps[1], cy)[cx];
            const uint8_t cr = rowAt(planes[2], steps[2], cy)[cx];
            putPixel(rowAt(dst, dstStep, y), x, bytesPerPixel, true, inverse(m, yv, cb, cr), alpha);
        }
    }
}

// ---------------------------------------------------------------------------------
// v210
// ---------------------------------------------------------------------------------

// Field f of a row of v210 words: word f / 3, bits 10 (f % 3) to 10 (f % 3) + 9. The
// fields of pair j: Cb 4 j, Y 4 j + 1, Cr 4 j + 2, Y 4 j + 3.
inline int v210Field(const uint8_t* row, int f) {
    uint32_t w;
    std::memcpy(&w, row + 4 * (f / 3), 4);
    return int((w >> (10 * (f % 3))) & 0x3FFu);
}
inline int v210Luma(const uint8_t* row, int x) { return v210Field(row, 4 * (x / 2) + (x % 2 == 0 ? 1 : 3)); }

// t = trunc(x); t + 1 unless x - t < 0.5.
inline int roundV210(float x) {
    const float t = std::trunc(x);
    const float frac = x - t;
    return frac < 0.5f ? int(t) : int(t) + 1;
}

inline uint16_t v210Colour(int yv, int cbv, int crv, bool bgr) {
    const float y = float(yv), cb = float(cbv - 512), cr = float(crv - 512);
    const float rTerm = 1.54f * cr;
    const float gCb = -0.183f * cb;
    const float gCr = -0.459f * cr;
    const float gTerm = gCb + gCr;
    const float bTerm = 1.816f * cb;
    const float rf = y + rTerm;
    const float gf = y + gTerm;
    const float bf = y + bTerm;
    auto clampTo = [](int v, int hi) { return v < 0 ? 0 : (v > hi ? hi : v); };
    const int r = clampTo(roundV210(rf), 31), g = clampTo(roundV210(gf), 63), b = clampTo(roundV210(bf), 31);
    return uint16_t(bgr ? (b | g << 5 | r << 11) : (r | g << 5 | b << 11));
}

enum class V210Out { Rgb, Bgr, Gray };

// Steps in elements: srcStep 32-bit words, dstStep 16-bit words.
inline void v210To16(V210Out kind, const uint8_t* src, int srcStepWords, uint8_t* dst, int dstStepWords, int width,
                     int height) {
    for (int y = 0; y < height; ++y) {
        const uint8_t* s = rowAt(src, srcStepWords * 4, y);
        uint8_t* d = rowAt(dst, dstStepWords * 2, y);
        for (int x = 0; x < width; ++x) {
            uint16_t v;
            if (kind == V210Out::Gray) {
                v = uint16_t(v210Luma(s, x));
            } else {
                v = v210Colour(v210Luma(s, x), v210Field(s, 4 * (x / 2)), v210Field(s, 4 * (x / 2) + 2),
                               kind == V210Out::Bgr);
            }
            std::memcpy(d + 2 * x, &v, 2);
        }
    }
}

}  // namespace hdref

#endif
