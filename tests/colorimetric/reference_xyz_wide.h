// Reference model of RGB <-> XYZ on 16-bit and float samples, written from the fixed
// matrices: each output (c0 * a + c1 * b) + c2 * c in single precision; 16u truncated
// and saturated, 16s through 16u with 32768 added and taken off, 32f clamped (forward Z
// alone, inverse every channel). Every column computes alike.
#pragma once

#include <cstdint>

namespace refxyzwide {

struct Matrix {
    float k[3][3];
};
inline constexpr Matrix kForward{
    {{0.412453f, 0.35758f, 0.180423f}, {0.212671f, 0.71516f, 0.072169f}, {0.019334f, 0.119193f, 0.950227f}}};
inline constexpr Matrix kInverse{
    {{3.240479f, -1.53715f, -0.498535f}, {-0.969256f, 1.875991f, 0.041556f}, {0.055648f, -0.204043f, 1.057311f}}};

inline float row(const Matrix& m, int r, const float in[3]) {
    const float first = m.k[r][0] * in[0];
    const float second = m.k[r][1] * in[1];
    const float third = m.k[r][2] * in[2];
    return (first + second) + third;
}

// Truncation toward zero of a sum of 16-bit samples (well inside the int32 range).
inline int32_t truncate(float v) { return static_cast<int32_t>(v); }

inline uint16_t saturate16u(int32_t v) { return uint16_t(v < 0 ? 0 : (v > 65535 ? 65535 : v)); }
inline int16_t saturate16s(int32_t v) { return int16_t(v < -32768 ? -32768 : (v > 32767 ? 32767 : v)); }

inline void words16u(const Matrix& m, const uint16_t in[3], uint16_t out[3]) {
    const float f[3] = {float(in[0]), float(in[1]), float(in[2])};
    for (int r = 0; r < 3; ++r) out[r] = saturate16u(truncate(row(m, r, f)));
}
inline void words16s(const Matrix& m, const int16_t in[3], int16_t out[3]) {
    const float f[3] = {float(int32_t(in[0]) + 32768), float(int32_t(in[1]) + 32768), float(int32_t(in[2]) + 32768)};
    for (int r = 0; r < 3; ++r) out[r] = saturate16s(truncate(row(m, r, f)) - 32768);
}

inline void forward16u(const uint16_t in[3], bool, uint16_t out[3]) { words16u(kForward, in, out); }
inline void inverse16u(const uint16_t in[3], bool, uint16_t out[3]) { words16u(kInverse, in, out); }
inline void forward16s(const int16_t in[3], bool, int16_t out[3]) { words16s(kForward, in, out); }
inline void inverse16s(const int16_t in[3], bool, int16_t out[3]) { words16s(kInverse, in, out); }

// Forward: X and Y as they come; Z: the maximum with 0 (a NaN gives the 0), then the
// minimum with 1.
inline void forward32f(const float in[3], bool, float out[3]) {
    out[0] = row(kForward, 0, in);
    out[1] = row(kForward, 1, in);
    float z = row(kForward, 2, in);
    z = z > 0.0f ? z : 0.0f;
    out[2] = z < 1.0f ? z : 1.0f;
}
// Inverse: below 0 gives 0, otherwise the minimum of 1 and the value.
inline void inverse32f(const float in[3], bool, float out[3]) {
    for (int r = 0; r < 3; ++r) {
        const float v = row(kInverse, r, in);
        out[r] = v < 0.0f ? 0.0f : (v > 1.0f ? 1.0f : v);
    }
}

}  // namespace refxyzwide
