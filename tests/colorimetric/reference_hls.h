// Reference model of RGB <-> HLS, 8-bit, written from the fixed steps of the conversion, one pixel
// at a time with branches. The main loop's reciprocal is the processor's approximate
// one (the same instruction, at run time); the tail's is that one refined once.
#pragma once

#include <xmmintrin.h>

#include <cmath>
#include <cstdint>

#include "surface.h"

namespace refhls {

inline float rcp(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }
inline float refined(float x) {
    const float r = rcp(x);
    return 2.0f * r - x * r * r;
}
// Truncation of a finite value that fits 32 bits.
inline int32_t trunc32(float v) { return static_cast<int32_t>(std::trunc(v)); }
inline uint8_t saturate8(int32_t v) { return uint8_t(v < 0 ? 0 : (v > 255 ? 255 : v)); }
inline uint8_t lowByteOf16Saturated(int32_t v) {
    const int32_t s = v < -32768 ? -32768 : (v > 32767 ? 32767 : v);
    return uint8_t(uint32_t(s) & 0xFF);
}

enum class Path { MainLoop, Tail };

struct Hls {
    uint8_t h, l, s;
};

// RGB -> HLS of one pixel by the path's rules.
inline Hls rgbToHls(uint8_t r8, uint8_t g8, uint8_t b8, Path path) {
    const float R = r8, G = g8, B = b8;
    float mx = R;
    if (G > mx) mx = G;
    if (B > mx) mx = B;
    float mn = R;
    if (G < mn) mn = G;
    if (B < mn) mn = B;
    const float d = mx - mn;
    const float s = mx + mn;
    const float Lf = 0.5f * s;
    const uint8_t L = uint8_t(trunc32(Lf));
    if (d == 0.0f) return Hls{0, L, 0};
    float (*inv)(float) = path == Path::MainLoop ? rcp : refined;
    const float denominator = Lf <= 127.5f ? s : 510.0f - s;
    const float S = (d * inv(denominator)) * 255.0f;
    float h;
    if (R == mx) {
        h = inv(d) * (60.0f * (G - B));
    } else if (G == mx) {
        h = 120.0f + inv(d) * (60.0f * (B - R));
    } else {
        h = 240.0f + inv(d) * (60.0f * (R - G));
    }
    if (h < 0.0f) h = h + 360.0f;
    const float H = h * 0.708333313f;
    if (path == Path::MainLoop) return Hls{saturate8(trunc32(H)), L, saturate8(trunc32(S))};
    return Hls{lowByteOf16Saturated(trunc32(H)), L, lowByteOf16Saturated(trunc32(S))};
}

inline float channel(float x, float m1, float m2) {
    if (x < 60.0f) return ((x * 0.0166666675f) * (m2 - m1)) + m1;
    if (x < 180.0f) return m2;
    if (x < 240.0f) return (((240.0f - x) * 0.0166666675f) * (m2 - m1)) + m1;
    return m1;
}

struct Rgb {
    uint8_t r, g, b;
};

// HLS -> RGB of one pixel by the path's rules.
inline Rgb hlsToRgb(uint8_t h8, uint8_t l8, uint8_t s8, Path path) {
    const float Hd = float(h8) * 1.41176474f;
    const float L = float(l8) * 0.00392156886f;
    const float S = float(s8) * 0.00392156886f;
    float v[3];
    if (S == 0.0f) {
        if (path == Path::Tail) return Rgb{l8, l8, l8};
        v[0] = v[1] = v[2] = L;
    } else {
        const float P = L * S;
        float m2;
        if (L <= 0.5f) {
            m2 = L + P;
        } else {
            m2 = (L + S) - P;
        }
        const float m1 = 2.0f * L - m2;
        float xr = Hd + 120.0f;
        if (xr > 360.0f) xr = xr - 360.0f;
        float xb = Hd - 120.0f;
        if (xb < 0.0f) xb = xb + 360.0f;
        v[0] = channel(xr, m1, m2);
        v[1] = channel(Hd, m1, m2);
        v[2] = channel(xb, m1, m2);
    }
    return Rgb{saturate8(trunc32(v[0] * 255.0f)), saturate8(trunc32(v[1] * 255.0f)),
               saturate8(trunc32(v[2] * 255.0f))};
}

// A region with the export's walk: the columns below width - width % group by the main
// loop, the rest by the tail. `bgr` reads and writes the colour side in B, G, R order;
// `copyAlpha` copies the source's fourth channel (or plane) into the destination's.
// Nothing else is written.
inline void rgbToHlsRegion(const pxktest::Surface& src, pxktest::Surface& dst, int width, int height, int group,
                           bool bgr = false, bool copyAlpha = false) {
    const int mainColumns = width - width % group;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const uint8_t r = src.at(x, y, bgr ? 2 : 0), g = src.at(x, y, 1), b = src.at(x, y, bgr ? 0 : 2);
            const Hls o = rgbToHls(r, g, b, x < mainColumns ? Path::MainLoop : Path::Tail);
            dst.at(x, y, 0) = o.h;
            dst.at(x, y, 1) = o.l;
            dst.at(x, y, 2) = o.s;
            if (copyAlpha) dst.at(x, y, 3) = src.at(x, y, 3);
        }
    }
}

inline void hlsToRgbRegion(const pxktest::Surface& src, pxktest::Surface& dst, int width, int height, int group,
                           bool bgr = false, bool copyAlpha = false) {
    const int mainColumns = width - width % group;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Rgb o = hlsToRgb(src.at(x, y, 0), src.at(x, y, 1), src.at(x, y, 2),
                                   x < mainColumns ? Path::MainLoop : Path::Tail);
            dst.at(x, y, 0) = bgr ? o.b : o.r;
            dst.at(x, y, 1) = o.g;
            dst.at(x, y, 2) = bgr ? o.r : o.b;
            if (copyAlpha) dst.at(x, y, 3) = src.at(x, y, 3);
        }
    }
}

}  // namespace refhls
