// Reference models of RGB <-> HLS (16u, 16s, 32f) and RGB <-> HSV (16u), one pixel at
// a time, written from the formulas: the main loop's rule (approximate reciprocal
// unrefined, products by constants) and the tail's (reciprocal refined once, or true
// divisions), in the operation order the formulas give. Independent of the library's
// code. The reciprocal is the processor's, taken at run time.
#pragma once

#include <xmmintrin.h>

#include <cstdint>

#include "reference_hls.h"

namespace refwide {

using refhls::rcp;
// The approximate reciprocal refined once.
inline float rcp1(float x) { return refhls::refined(x); }
// Round to nearest by the current rounding mode.
inline int32_t roundNear(float x) { return _mm_cvtss_si32(_mm_set_ss(x)); }
inline int32_t trunc32(float x) { return int32_t(x); }
inline int32_t clampTo(int32_t v, int32_t lo, int32_t hi) { return v < lo ? lo : v > hi ? hi : v; }
// The processor's maximum and minimum of two floats: the second when unordered.
inline float fmax2(float a, float b) { return a > b ? a : b; }
inline float fmin2(float a, float b) { return a < b ? a : b; }

// ---------------------------------------------------------------------------------
// RGB -> HLS, 16-bit. u holds R, G, B in 0..65535 (16s already plus 32768).
// ---------------------------------------------------------------------------------
inline void rgbToHls16(const int32_t u[3], bool tail, bool isUnsigned, int32_t out[3]) {
    const float r = float(u[0]), g = float(u[1]), b = float(u[2]);
    const float mx = fmax2(fmax2(r, g), b), mn = fmin2(fmin2(r, g), b);
    float d = mx - mn, s = mx + mn;
    const float lf = 0.5f * s;
    const int32_t lowest = isUnsigned ? 0 : -32768;
    // 32768 taken off, saturated to signed 16 bits, 32768 added back for 16u.
    const auto code = [isUnsigned](float v) {
        return clampTo(trunc32(v) - 32768, -32768, 32767) + (isUnsigned ? 32768 : 0);
    };
    if (d == 0.0f) {
        out[0] = out[2] = lowest;
        out[1] = tail ? trunc32(lf) - (isUnsigned ? 0 : 32768) : code(lf);
        return;
    }
    const float den = lf <= 32767.5f ? s : 131070.0f - s;
    const float sat = (d * (tail ? rcp1(den) : rcp(den))) * 65535.0f;
    const float rd = tail ? rcp1(d) : rcp(d);
    float h;
    if (r == mx)
        h = rd * (60.0f * (g - b));
    else if (g == mx)
        h = 120.0f + rd * (60.0f * (b - r));
    else
        h = 240.0f + rd * (60.0f * (r - g));
    if (h < 0.0f) h = h + 360.0f;
    out[0] = code(h * 182.041672f);
    out[1] = code(lf);
    out[2] = code(sat);
}

// ---------------------------------------------------------------------------------
// RGB -> HLS, float: true divisions, gray when the spread is at most 2^-23.
// ---------------------------------------------------------------------------------
inline void rgbToHls32f(const float in[3], float out[3]) {
    const float r = in[0], g = in[1], b = in[2];
    const float mx = fmax2(fmax2(r, g), b), mn = fmin2(fmin2(r, g), b);
    const float d = mx - mn, s = mx + mn;
    const float l = 0.5f * s;
    if (1.1920929e-07f >= d) {
        out[0] = 0.0f, out[1] = l, out[2] = 0.0f;
        return;
    }
    const float sat = 0.5f >= l ? d / s : d / (2.0f - s);
    float h;
    if (r == mx)
        h = (g - b) * 60.0f / d;
    else if (g == mx)
        h = (b - r) * 60.0f / d + 120.0f;
    else
        h = (r - g) * 60.0f / d + 240.0f;
    if (h < 0.0f) h = h + 360.0f;
    out[0] = h / 360.0f, out[1] = l, out[2] = sat;
}

// ---------------------------------------------------------------------------------
// HLS -> RGB: v of each channel in 0..1 from the hue in degrees and L, S in 0..1.
// `divided`: m2 as (S + 1) L below one half and the ramps by a true division by 60
// (the float and 16s tails); otherwise m2 = L + L S and the ramps by one sixtieth.
// ---------------------------------------------------------------------------------
inline float hueRamp(float x, float m1, float m2, bool divided) {
    const float sixtieth = 0.0166666675f;
    if (x < 60.0f) return divided ? ((m2 - m1) * x) / 60.0f + m1 : ((x * sixtieth) * (m2 - m1)) + m1;
    if (x < 180.0f) return m2;
    if (x < 240.0f) {
        return divided ? ((m2 - m1) * (240.0f - x)) / 60.0f + m1 : (((240.0f - x) * sixtieth) * (m2 - m1)) + m1;
    }
    return m1;
}
inline void hlsToUnitRgb(float hd, float l, float s, bool divided, float v[3]) {
    if (s == 0.0f) {
        v[0] = v[1] = v[2] = l;
        return;
    }
    const float p = l * s;
    const float m2 = l <= 0.5f ? (divided ? (s + 1.0f) * l : l + p) : (l + s) - p;
    const float m1 = 2.0f * l - m2;
    float red = hd + 120.0f;
    if (red > 360.0f) red = red - 360.0f;
    float blue = hd - 120.0f;
    if (blue < 0.0f) blue = blue + 360.0f;
    v[0] = hueRamp(red, m1, m2, divided);
    v[1] = hueRamp(hd, m1, m2, divided);
    v[2] = hueRamp(blue, m1, m2, divided);
}

// 16u: products by the 16-bit scales; v * 32767.5 truncated, saturated to 32767,
// doubled. A gray tail pixel gives its L.
inline void hlsToRgb16u(const int32_t in[3], bool tail, int32_t out[3]) {
    if (tail && in[2] == 0) {
        out[0] = out[1] = out[2] = in[1];
        return;
    }
    float v[3];
    hlsToUnitRgb(float(in[0]) * 0.00549324788f, float(in[1]) * 1.52590219e-05f, float(in[2]) * 1.52590219e-05f,
                 false, v);
    for (int c = 0; c < 3; ++c) out[c] = 2 * clampTo(trunc32(v[c] * 32767.5f), -32768, 32767);
}

// 16s. in: the samples plus 32768. Results as 16-bit patterns.
enum class Hls16sPath { C3Main, AC4Main, Tail };
inline void hlsToRgb16s(const int32_t in[3], Hls16sPath path, int32_t out[3]) {
    float v[3];
    if (path == Hls16sPath::C3Main) {
        hlsToUnitRgb(float(in[0]) * 0.00549324788f, float(in[1]) * 1.52590219e-05f,
                     float(in[2]) * 1.52590219e-05f, false, v);
        for (int c = 0; c < 3; ++c) out[c] = clampTo(roundNear(v[c] * 65535.0f) - 32768, -32768, 32767) & 0xFFFF;
    } else if (path == Hls16sPath::AC4Main) {
        const float r = rcp1(65535.0f);
        hlsToUnitRgb(float(in[0]) * 360.0f * r, float(in[1]) * r, float(in[2]) * r, false, v);
        for (int c = 0; c < 3; ++c) {
            const int32_t t = clampTo(trunc32(v[c] * 65535.0f + 0.499989986f), -32768, 32767);
            out[c] = (t - 32768) & 0xFFFF;
        }
    } else {
        hlsToUnitRgb(float(in[0]) * 360.0f / 65535.0f, float(in[1]) / 65535.0f, float(in[2]) / 65535.0f, true, v);
        for (int c = 0; c < 3; ++c) out[c] = (trunc32(v[c] * 65535.0f + 0.499989986f) - 32768) & 0xFFFF;
    }
}

// Float: hue times 360; the main loop by products, the tail divided.
inline void hlsToRgb32f(const float in[3], bool tail, float out[3]) {
    hlsToUnitRgb(in[0] * 360.0f, in[1], in[2], tail, out);
}

// ---------------------------------------------------------------------------------
// RGB -> HSV, 16u: true divisions; S and H truncated after adding 0.5.
// ---------------------------------------------------------------------------------
inline void rgbToHsv16u(const int32_t in[3], int32_t out[3]) {
    const int32_t imx = in[0] > in[1] ? (in[0] > in[2] ? in[0] : in[2]) : (in[1] > in[2] ? in[1] : in[2]);
    const int32_t imn = in[0] < in[1] ? (in[0] < in[2] ? in[0] : in[2]) : (in[1] < in[2] ? in[1] : in[2]);
    out[2] = imx;
    if (imx == 0 || imx == imn) {
        out[0] = out[1] = 0;
        return;
    }
    const float mx = float(imx), d = float(imx - imn);
    out[1] = trunc32((d / mx) * 65535.0f + 0.5f);
    const float r = 1.0f / d;
    const float cr = (mx - float(in[0])) * r, cg = (mx - float(in[1])) * r, cb = (mx - float(in[2])) * r;
    float h = 0.0f;
    if (imx == in[0]) h = cb - cg;
    if (imx == in[1]) h = cr - cb + 2.0f;
    if (imx == in[2]) h = cg - cr + 4.0f;
    if (h + 1.1920929e-07f < 0.0f) h = h + 6.0f;
    out[0] = trunc32(h * 65535.0f / 6.0f + 0.5f);
}

// ---------------------------------------------------------------------------------
// HSV -> RGB, 16u: the sextant x = (h * one sixtieth) * 0.00549324788, hue 65535 as 0;
// results rounded by the current mode, stored as 16 bits. S 0 returns V.
// ---------------------------------------------------------------------------------
inline void hsvToRgb16u(const int32_t in[3], int32_t out[3]) {
    if (in[1] == 0) {
        out[0] = out[1] = out[2] = in[2];
        return;
    }
    const float h = float(in[0]), s = float(in[1]), v = float(in[2]);
    const float x = in[0] == 65535 ? 0.0f : (h * 0.0166666675f) * 0.00549324788f;
    const int32_t i = trunc32(x);
    const float f = x - float(i);
    const float w = v * (s * 1.52590219e-05f);
    const float p = v - w, t = p + f * w, q = v - f * w;
    const float table[6][3] = {{v, t, p}, {q, v, p}, {p, v, t}, {p, q, v}, {t, p, v}, {v, p, q}};
    for (int c = 0; c < 3; ++c) out[c] = roundNear(table[i][c]) & 0xFFFF;
}

}  // namespace refwide
