// Reference model of the gray conversions, written plainly from their rules and
// sharing nothing with the library: per pixel, which path its column takes and what
// that path computes.
#pragma once

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace refgray {

inline const float kDefault[3] = {0.299f, 0.587f, 0.114f};

// A float weight as the 8u kernel's 16-bit weight: widened to double, times 32768,
// plus 0.5, truncated toward zero to 32 bits (out of range: 0x80000000, as the
// processor gives), low 16 bits.
inline uint16_t fixedWeight(float c) {
    const double d = static_cast<double>(c) * 32768.0 + 0.5;
    uint32_t t;
    if (d > -2147483649.0 && d < 2147483648.0) {
        t = static_cast<uint32_t>(static_cast<int64_t>(std::trunc(d)));
    } else {
        t = 0x80000000u;
    }
    return static_cast<uint16_t>(t & 0xFFFFu);
}

// The 8u vector path for one pixel.
inline uint8_t fixedMain(const uint8_t s[3], const uint16_t w[3]) {
    uint32_t sum = 0;
    for (int k = 0; k < 3; ++k) {
        const uint32_t p = (uint32_t(s[k]) * 256u * uint32_t(w[k])) >> 16;
        sum = sum + p > 65535u ? 65535u : sum + p;
    }
    sum = sum + 64u > 65535u ? 65535u : sum + 64u;
    const int32_t asSigned = sum >= 32768u ? int32_t(sum) - 65536 : int32_t(sum);
    const int32_t shifted = asSigned >= 0 ? asSigned / 128 : -((-asSigned + 127) / 128);  // toward -infinity
    return static_cast<uint8_t>(shifted < 0 ? 0 : (shifted > 255 ? 255 : shifted));
}

// The 8u tail for one pixel.
inline uint8_t fixedTail(const uint8_t s[3], const uint16_t w[3]) {
    const uint32_t sum = uint32_t(s[0]) * w[0] + uint32_t(s[1]) * w[1] + uint32_t(s[2]) * w[2] + 0x4000u;
    return static_cast<uint8_t>((sum >> 15) % 256u);
}

// (c0 * s0 + c1 * s1) + c2 * s2, each operation rounded to the type.
template <class T>
T sum3(const T s[3], const T c[3]) {
    const T a = c[0] * s[0];
    const T b = c[1] * s[1];
    const T ab = a + b;
    const T d = c[2] * s[2];
    return ab + d;
}

// Float to 32-bit integer under the current rounding mode; 0x80000000 for NaN and
// values outside the 32-bit range.
inline int32_t roundCurrent(float v) {
    if (std::isnan(v)) return INT32_MIN;
    const double r = std::nearbyint(static_cast<double>(v));
    if (r < -2147483648.0 || r > 2147483647.0) return INT32_MIN;
    return static_cast<int32_t>(r);
}

inline uint16_t low16(int64_t v) { return static_cast<uint16_t>(static_cast<uint64_t>(v) & 0xFFFFu); }
inline int16_t low16s(int64_t v) {
    const uint16_t u = low16(v);
    return u >= 32768u ? static_cast<int16_t>(int32_t(u) - 65536) : static_cast<int16_t>(u);
}
inline int16_t saturate16s(int64_t v) {
    return static_cast<int16_t>(v < -32768 ? -32768 : (v > 32767 ? 32767 : v));
}

// A row of one of the types: src has `channels` samples a pixel; the first three are
// the colour. Column x < vectorEnd takes the vector path where the type has one.

inline void row8u(const uint8_t* src, int channels, uint8_t* dst, int width, int vectorEnd, const float* c) {
    const float* f = c ? c : kDefault;
    const uint16_t w[3] = {fixedWeight(f[0]), fixedWeight(f[1]), fixedWeight(f[2])};
    for (int x = 0; x < width; ++x) {
        const uint8_t* s = src + x * channels;
        dst[x] = x < vectorEnd ? fixedMain(s, w) : fixedTail(s, w);
    }
}

// 16u: groups of four below width & ~3, their results merged into words.
inline void row16u(const uint16_t* src, int channels, uint16_t* dst, int width, const float* c) {
    const float* f = c ? c : kDefault;
    const int groups = width & ~3;
    int32_t d[4];
    for (int x = 0; x < width; ++x) {
        const uint16_t* s = src + x * channels;
        const float v[3] = {float(s[0]), float(s[1]), float(s[2])};
        const int32_t r = roundCurrent(sum3(v, f));
        if (x >= groups) {
            dst[x] = low16(r);
            continue;
        }
        d[x % 4] = r;
        if (x % 4 == 3) {
            auto l = [&](int k) { return uint32_t(d[k]) & 0xFFFFu; };
            auto h = [&](int k) { return uint32_t(d[k]) >> 16; };
            dst[x - 3] = uint16_t(l(0) | h(2));
            dst[x - 2] = uint16_t(h(0) | l(1));
            dst[x - 1] = uint16_t(l(2) | h(1));
            dst[x] = uint16_t(h(2) | l(3));
        }
    }
}

inline void row16s(const int16_t* src, int channels, int16_t* dst, int width, const float* c) {
    const float* f = c ? c : kDefault;
    const int groups = width & ~3;
    for (int x = 0; x < width; ++x) {
        const int16_t* s = src + x * channels;
        const float v[3] = {float(int32_t(s[0]) + 32768), float(int32_t(s[1]) + 32768), float(int32_t(s[2]) + 32768)};
        const int64_t r = int64_t(roundCurrent(sum3(v, f))) - 32768;
        dst[x] = x < groups ? saturate16s(r) : low16s(r);
    }
}

inline void row32f(const float* src, int channels, float* dst, int width, const float* c) {
    const float* f = c ? c : kDefault;
    for (int x = 0; x < width; ++x) dst[x] = sum3(src + x * channels, f);
}

inline void row64f(const double* src, int channels, double* dst, int width, const double* c) {
    const double widened[3] = {double(kDefault[0]), double(kDefault[1]), double(kDefault[2])};
    const double* f = c ? c : widened;
    for (int x = 0; x < width; ++x) dst[x] = sum3(src + x * channels, f);
}

}  // namespace refgray
