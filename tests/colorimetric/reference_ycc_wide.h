// Reference model of RGB <-> YCC on 16-bit and float samples, written from the fixed
// constants in single precision, one operation at a time in the order given. 32f: the
// luma-and-differences form in every column, the inverse clamped to 0..1. 16u: groups of
// four by the same form with offsets 40092 and 35209, rounded by the current rounding
// mode; the tail (columns from width & ~3) by the folded matrices, truncated; results
// saturated to 0..65535. 16s: 32768 added to each sample, converted as 16u, 32768 taken
// off each result.
#pragma once

#include <cmath>
#include <cstdint>

namespace refyccwide {

inline uint16_t saturate16u(float v) {
    // v is an integer value here (rounded or truncated), well inside the int32 range.
    const int32_t i = static_cast<int32_t>(v);
    return uint16_t(i < 0 ? 0 : (i > 65535 ? 65535 : i));
}

// The luma-and-differences form, with the offsets of the sample unit.
inline void forwardForm(const float in[3], float first, float second, float out[3]) {
    const float R = in[0], G = in[1], B = in[2];
    const float Y = (0.299f * R + 0.587f * G) + 0.114f * B;
    out[0] = Y * 0.7132668f;
    out[1] = (B - Y) * 0.4368627f + first;
    out[2] = (R - Y) * 0.53192f + second;
}
inline void inverseForm(const float in[3], float first, float second, float out[3]) {
    const float c1 = (in[1] - first) * 2.2179f;
    const float y = in[0] * 1.3584f;
    const float c2 = (in[2] - second) * 1.8215f;
    out[0] = y + c2;
    out[1] = (y - 0.194f * c1) - c2 * 0.509f;
    out[2] = y + c1;
}

inline float clampUnit(float v) { return v < 0.0f ? 0.0f : (v > 1.0f ? 1.0f : v); }

inline void forward32f(const float in[3], bool, float out[3]) { forwardForm(in, 0.6117647f, 0.5372549f, out); }
inline void inverse32f(const float in[3], bool, float out[3]) {
    inverseForm(in, 0.6117647f, 0.5372549f, out);
    for (int c = 0; c < 3; ++c) out[c] = clampUnit(out[c]);
}

// 16u on samples as floats: the group's rule (rounded by the current mode) or the
// tail's (folded, truncated).
inline void forward16uValues(const float in[3], bool tail, uint16_t out[3]) {
    const float R = in[0], G = in[1], B = in[2];
    if (!tail) {
        float f[3];
        forwardForm(in, 40092.0f, 35209.0f, f);
        for (int c = 0; c < 3; ++c) out[c] = saturate16u(std::nearbyint(f[c]));
        return;
    }
    out[0] = saturate16u(std::trunc(0.213267f * R + 0.418688f * G + 0.0813124f * B + 0.49999f));
    out[1] = saturate16u(std::trunc(40092.5f - 0.130621f * R - 0.256437f * G + 0.387058f * B));
    out[2] = saturate16u(std::trunc(35209.5f + 0.372876f * R - 0.312237f * G - 0.0606389f * B));
}
inline void inverse16uValues(const float in[3], bool tail, uint16_t out[3]) {
    if (!tail) {
        float f[3];
        inverseForm(in, 40092.0f, 35209.0f, f);
        for (int c = 0; c < 3; ++c) out[c] = saturate16u(std::nearbyint(f[c]));
        return;
    }
    const float y = 1.3584f * in[0];
    const float d1 = in[1] - 40092.0f;
    const float d2 = in[2] - 35209.0f;
    out[0] = saturate16u(std::trunc(y + 1.8215f * d2 + 0.49999f));
    out[1] = saturate16u(std::trunc(y - 0.430272609f * d1 - 0.927143455f * d2 + 0.49999f));
    out[2] = saturate16u(std::trunc(y + 2.2179f * d1 + 0.49999f));
}

inline void forward16u(const uint16_t in[3], bool tail, uint16_t out[3]) {
    const float f[3] = {float(in[0]), float(in[1]), float(in[2])};
    forward16uValues(f, tail, out);
}
inline void inverse16u(const uint16_t in[3], bool tail, uint16_t out[3]) {
    const float f[3] = {float(in[0]), float(in[1]), float(in[2])};
    inverse16uValues(f, tail, out);
}
inline void forward16s(const int16_t in[3], bool tail, int16_t out[3]) {
    const float f[3] = {float(int32_t(in[0]) + 32768), float(int32_t(in[1]) + 32768), float(int32_t(in[2]) + 32768)};
    uint16_t u[3];
    forward16uValues(f, tail, u);
    for (int c = 0; c < 3; ++c) out[c] = int16_t(int32_t(u[c]) - 32768);
}
inline void inverse16s(const int16_t in[3], bool tail, int16_t out[3]) {
    const float f[3] = {float(int32_t(in[0]) + 32768), float(int32_t(in[1]) + 32768), float(int32_t(in[2]) + 32768)};
    uint16_t u[3];
    inverse16uValues(f, tail, u);
    for (int c = 0; c < 3; ++c) out[c] = int16_t(int32_t(u[c]) - 32768);
}

}  // namespace refyccwide
