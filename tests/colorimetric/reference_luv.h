// Reference model of RGB <-> LUV, one pixel at a time, written from the formulas: the
// matrix sums in their order, the lightness by the cube-root table (built here with
// the library's cbrt) and the nine-term series, the chromaticity with the processor's
// approximate reciprocal refined once (the same instruction at run time), the 8-bit
// forward path through a double cube root, and the inverse with its black guard, its
// v guard and its clamps. `tail` selects the rule of the columns past the main loop.
#pragma once

#include <xmmintrin.h>

#include <cmath>
#include <cstdint>

namespace refluv {

inline float rcp(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }
inline float refined(float d) {
    const float r0 = rcp(d);
    const float twice = 2.0f * r0;
    const float dr = d * r0;
    return twice - dr * r0;
}

// Conversions as the processor does them: out of range (and NaN) gives INT32_MIN.
inline int32_t truncated(float v) {
    if (!(v > -2147483904.0f && v < 2147483648.0f)) return INT32_MIN;
    return int32_t(v);
}
inline int32_t rounded(float v) {
    const float r = std::nearbyint(v);
    if (!(r >= -2147483648.0f && r < 2147483648.0f)) return INT32_MIN;
    return int32_t(r);
}

// c = cbrt((i + 1.0128153) / 128) as a float, k = 1 / c^3 from that float.
struct Table {
    float c[128];
    float k[128];
    Table() {
        for (int i = 0; i < 128; ++i) {
            c[i] = float(std::cbrt((double(i) + 1.0128153) / 128.0));
            const double c3 = double(c[i]) * double(c[i]) * double(c[i]);
            k[i] = float(1.0 / c3);
        }
    }
};
inline const Table& table() {
    static const Table t;
    return t;
}

inline float X(const float p[3]) { return (0.412453f * p[0] + 0.35758f * p[1]) + 0.180423f * p[2]; }
inline float Y(const float p[3]) { return (0.212671f * p[0] + 0.71516f * p[1]) + 0.072169f * p[2]; }
inline float Z(const float p[3]) { return (0.019334f * p[0] + 0.119193f * p[1]) + 0.950227f * p[2]; }

// L of y in sample units: the threshold is in the same units, then y times `scale`.
inline float lightness(float yUnits, float threshold, float scale) {
    const float y = yUnits * scale;
    if (yUnits <= threshold) return 903.3f * y;
    int i = truncated(y * 127.998047f);
    if (i < 0) i = 0;
    if (i > 127) i = 127;
    const float c = table().c[i], k = table().k[i];
    const float e = (y - c * c * c) * k;
    const float a[9] = {1.0f,          0.333333343f,   -0.111111112f, 0.0617283955f, -0.0411522649f,
                        0.0301783271f, -0.0234720316f, 0.0190011691f, -0.0158343073f};
    float s = a[8];
    for (int n = 7; n >= 0; --n) s = s * e + a[n];
    return (s * c) * 116.0f - 16.0f;
}

// Forward to float L, U, V from R, G, B in sample units.
inline void forward(const float rgb[3], bool tail, float threshold, float scale, float out[3]) {
    const float x = X(rgb), y = Y(rgb), z = Z(rgb);
    const float l = lightness(y, threshold, scale);
    out[0] = l;
    if (tail && z == 0.0f) {
        out[1] = 0.0f;
        out[2] = 0.0f;
        return;
    }
    float d = (x + 15.0f * y) + 3.0f * z;
    if (!tail && d == 0.0f) d += 3.0f;
    const float r = refined(d);
    const float u = (4.0f * x) * r;
    const float v = (9.0f * y) * r;
    out[1] = (u - 0.197839f) * (13.0f * l);
    out[2] = (v - 0.468342f) * (13.0f * l);
}

inline void forward32f(const float rgb[3], bool tail, float out[3]) { forward(rgb, tail, 0.008856f, 1.0f, out); }

// Saturation of a converted integer to 16 bits, as 32768 off, signed saturation, and
// 32768 back for unsigned results (so INT32_MIN wraps to the top).
inline int32_t saturate16s(int32_t v) {
    const int32_t off = int32_t(uint32_t(v) - 32768u);
    return off < -32768 ? -32768 : (off > 32767 ? 32767 : off);
}
inline uint16_t to16u(int32_t v) { return uint16_t(saturate16s(v) + 32768); }
inline int16_t to16s(int32_t v) { return int16_t(saturate16s(v)); }

// Forward 16-bit: samples (16s plus 32768) to L16, U16, V16 before conversion.
inline void forward16(const float samples[3], bool tail, float out[3]) {
    float luv[3];
    forward(samples, tail, 580.377991f, 1.52590219e-05f, luv);
    out[0] = luv[0] * 655.35f;
    out[1] = (luv[1] + 134.0f) * 185.127121f;
    out[2] = (luv[2] + 140.0f) * 250.133591f;
}
// The conversions: the main loop rounds all three; the tail rounds L and truncates U
// and V.
inline void forward16Converted(const float samples[3], bool tail, int32_t out[3]) {
    float f[3];
    forward16(samples, tail, f);
    out[0] = rounded(f[0]);
    out[1] = tail ? truncated(f[1]) : rounded(f[1]);
    out[2] = tail ? truncated(f[2]) : rounded(f[2]);
}

// Inverse, float: black below L 9e-05, clamps to 0..1.
inline float clampUnit(float v) {
    if (v < 0.0f) return 0.0f;
    return v < 1.0f ? v : 1.0f;
}
inline void inverse32f(const float luv[3], float out[3]) {
    const float l = luv[0];
    if (l < 9e-05f) {
        out[0] = out[1] = out[2] = 0.0f;
        return;
    }
    float y;
    if (l >= 7.9996247f) {
        const float f = (16.0f + l) / 116.0f;
        y = (f * f) * f;
    } else {
        y = l / 903.3f;
    }
    const float u = luv[1] / (13.0f * l);
    float v = luv[2] / (13.0f * l) + 0.468342f;
    if (std::fabs(v) < 1.1920929e-07f) v += 9e-05f;
    const float t = y / v;
    const float x = ((u + 0.197839f) * 2.25f) * t;
    const float z = (t * 3.0f - 5.0f * y) - x / 3.0f;
    out[0] = clampUnit(3.240479f * x - 1.53715f * y - 0.498535f * z);
    out[1] = clampUnit(1.875991f * y + (-0.969256f * x) + 0.041556f * z);
    out[2] = clampUnit((0.055648f * x - 0.204043f * y) + 1.057311f * z);
}

// Inverse of the integer members from L, U, V floats, to R, G, B times `range` (0 for
// black): 1/116 as 0.00862068962, 1/(13 L) by the refined reciprocal, the v guard
// 1.1920929e-05; the tail cubes in double.
inline void inverseScaled(const float luv[3], bool tail, float range, float out[3]) {
    const float l = luv[0];
    if (l < 9e-05f) {
        out[0] = out[1] = out[2] = 0.0f;
        return;
    }
    const float f = (16.0f + l) * 0.00862068962f;
    float y;
    if (l >= 7.99962473f) {
        y = tail ? float((double(f) * double(f)) * double(f)) : (f * f) * f;
    } else {
        y = l / 903.3f;
    }
    const float r = refined(13.0f * l);
    const float u = luv[1] * r;
    float v = luv[2] * r + 0.468342f;
    if (std::fabs(v) < 1.1920929e-05f) v += 9e-05f;
    const float t = y / v;
    const float x = ((u + 0.197839f) * 2.25f) * t;
    const float z = (t * 3.0f - 5.0f * y) - x / 3.0f;
    out[0] = (3.240479f * x - 1.53715f * y - 0.498535f * z) * range;
    out[1] = (1.875991f * y + (-0.969256f * x) + 0.041556f * z) * range;
    out[2] = ((0.055648f * x - 0.204043f * y) + 1.057311f * z) * range;
}

// Inverse 16-bit: L16 0.00152590219, U16 0.00540169375 - 134, V16 0.00399786374 - 140
// (samples of 16s plus 32768); results truncated (then saturated by the caller).
inline void inverse16(const float s[3], bool tail, int32_t out[3]) {
    const float luv[3] = {s[0] * 0.00152590219f, s[1] * 0.00540169375f - 134.0f, s[2] * 0.00399786374f - 140.0f};
    float f[3];
    inverseScaled(luv, tail, 65535.0f, f);
    for (int c = 0; c < 3; ++c) out[c] = truncated(f[c]);
}

// Inverse 8-bit: L8 0.392156869, U8 1.38823533 - 134, V8 1.02745104 - 140; truncated
// and saturated to 0..255.
inline void inverse8(const uint8_t in[3], bool tail, uint8_t out[3]) {
    const float luv[3] = {float(in[0]) * 0.392156869f, float(in[1]) * 1.38823533f - 134.0f,
                          float(in[2]) * 1.02745104f - 140.0f};
    float f[3];
    inverseScaled(luv, tail, 255.0f, f);
    for (int c = 0; c < 3; ++c) {
        const int32_t t = truncated(f[c]);
        out[c] = uint8_t(t < 0 ? 0 : (t > 255 ? 255 : t));
    }
}

// Forward 8-bit, scalar: X and Y over 255; L by a double cube root narrowed to float;
// L8 = trunc(255 L / 100); u = v = 0 for Y exactly 0, else true divisions by
// D = (Z/255 * 3 + X) + 15 Y; U8 and V8 with the +0.5 and truncation; low 8 bits.
inline void forward8(const uint8_t in[3], bool, uint8_t out[3]) {
    const float p[3] = {float(in[0]), float(in[1]), float(in[2])};
    const float x = X(p) / 255.0f, y = Y(p) / 255.0f;
    float l;
    if (y > 0.008856f) {
        l = 116.0f * float(std::pow(double(y), 0.3333333333333333)) - 16.0f;
    } else {
        l = 903.3f * y;
    }
    float u = 0.0f, v = 0.0f;
    if (y != 0.0f) {
        const float z = Z(p) / 255.0f;
        const float d = (z * 3.0f + x) + 15.0f * y;
        u = (4.0f * x) / d;
        v = (9.0f * y) / d;
    }
    const float L8 = (255.0f * l) / 100.0f;
    const float U8 = (((13.0f * l) * (u - 0.197839f) + 134.0f) * 255.0f) / 354.0f + 0.5f;
    const float V8 = (((13.0f * l) * (v - 0.468342f) + 140.0f) * 255.0f) / 262.0f + 0.5f;
    out[0] = uint8_t(uint32_t(truncated(L8)) & 0xFFu);
    out[1] = uint8_t(uint32_t(truncated(U8)) & 0xFFu);
    out[2] = uint8_t(uint32_t(truncated(V8)) & 0xFFu);
}

}  // namespace refluv
