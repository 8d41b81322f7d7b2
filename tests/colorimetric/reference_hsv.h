// Reference model of RGB <-> HSV, 8-bit, written from the fixed steps of the conversion, one pixel at
// a time. The reciprocal is the processor's approximate one, unrefined (the same
// instruction, at run time); rounding is to nearest, ties to even (the default mode).
#pragma once

#include <xmmintrin.h>

#include <cmath>
#include <cstdint>

namespace refhsv {

inline float rcp(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }
// Round half to even of a finite value that fits 32 bits, low byte kept.
inline uint8_t roundedLowByte(float v) {
    const int64_t n = static_cast<int64_t>(std::nearbyint(v));
    return uint8_t(uint64_t(n) & 0xFF);
}

struct Triple {
    uint8_t a, b, c;
};

// Which rule forms the hue when channels tie at the maximum (the required order
// lets blue win; the other is for tests that tell them apart).
enum class Ties { BlueWins, RedWins };

inline Triple rgbToHsv(uint8_t r8, uint8_t g8, uint8_t b8, Ties ties = Ties::BlueWins) {
    const float R = r8, G = g8, B = b8;
    float mx = R, mn = R;
    if (G > mx) mx = G;
    if (B > mx) mx = B;
    if (G < mn) mn = G;
    if (B < mn) mn = B;
    const float d = mx - mn;
    const uint8_t V = uint8_t(mx);
    if (mx == 0.0f || d == 0.0f) return Triple{0, 0, V};
    const float S = (rcp(mx) * d) * 255.0f;
    const float r = rcp(d);
    const float cR = (mx - R) * r, cG = (mx - G) * r, cB = (mx - B) * r;
    float h = 0.0f;
    if (ties == Ties::BlueWins) {
        if (mx == R) h = cB - cG;
        if (mx == G) h = cR - cB + 2.0f;
        if (mx == B) h = cG - cR + 4.0f;
    } else {
        if (mx == B) h = cG - cR + 4.0f;
        if (mx == G) h = cR - cB + 2.0f;
        if (mx == R) h = cB - cG;
    }
    float H = h * 42.5f;
    if (H < 0.0f) H = H + 255.0f;
    return Triple{roundedLowByte(H), roundedLowByte(S), V};
}

inline Triple hsvToRgb(uint8_t h8, uint8_t s8, uint8_t v8) {
    if (s8 == 0) return Triple{v8, v8, v8};
    const float x = h8 == 255 ? 0.0f : (float(h8) * 0.0166666675f) * 1.41176474f;
    const int i = int(std::trunc(x));
    const float f = x - float(i);
    const float v = v8;
    const float w = v * (float(s8) * 0.00392156886f);
    const float p = v - w;
    const float t = p + f * w;
    const float q = v - f * w;
    const float table[6][3] = {{v, t, p}, {q, v, p}, {p, v, t}, {p, q, v}, {t, p, v}, {v, p, q}};
    return Triple{roundedLowByte(table[i][0]), roundedLowByte(table[i][1]), roundedLowByte(table[i][2])};
}

// One pixel: the same formula in every column.
inline void forward(const uint8_t in[3], bool, uint8_t out[3]) {
    const Triple t = rgbToHsv(in[0], in[1], in[2]);
    out[0] = t.a, out[1] = t.b, out[2] = t.c;
}
inline void inverse(const uint8_t in[3], bool, uint8_t out[3]) {
    const Triple t = hsvToRgb(in[0], in[1], in[2]);
    out[0] = t.a, out[1] = t.b, out[2] = t.c;
}

}  // namespace refhsv
