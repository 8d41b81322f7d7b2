// Reference model of RGB <-> Lab, written from the documented formulas: the forward
// matrix sums blue term first, the white point, the curve with the threshold 0.008856
// compared in the kernel's precision and the cube root as the platform's pow with the
// exponent 0.3333333333333333; the backward cubes; the integer codes. Plain scalar
// code, one pixel at a time, independent of the library's kernels.
#pragma once

#include <xmmintrin.h>

#include <cmath>
#include <cstdint>

namespace reflab {

template <class T>
struct Triple {
    T v[3];
};

inline float approxRcp(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }
// The processor's reciprocal refined once: 2 r - x r r.
inline float refined(float x) {
    const float r = approxRcp(x);
    return 2.0f * r - x * r * r;
}

// min(1, v), a NaN kept.
template <class T>
T minOne(T v) {
    if (std::isnan(v)) return v;
    return v < T(1) ? v : T(1);
}

inline double powThird(double v) { return std::pow(v, 0.3333333333333333); }

// ---- forward, float ----

inline Triple<float> curveF(float x, float y, float z) {
    float l, fy;
    if (y > 0.008856f) {
        fy = static_cast<float>(powThird(y));
        l = 116.0f * fy - 16.0f;
    } else {
        l = 903.3f * y;
        fy = 7.787f * y + 0.137931034f;
    }
    const float fx = x > 0.008856f ? static_cast<float>(powThird(x)) : 7.787f * x + 0.137931034f;
    const float fz = z > 0.008856f ? static_cast<float>(powThird(z)) : 7.787f * z + 0.137931034f;
    return {{l, 500.0f * (fx - fy), 200.0f * (fy - fz)}};
}

inline float sumX(float r, float g, float b) { return (0.180423f * b + 0.35758f * g) + 0.412453f * r; }
inline float sumY(float r, float g, float b) { return (0.072169f * b + 0.71516f * g) + 0.212671f * r; }
inline float sumZ(float r, float g, float b) { return (0.950227f * b + 0.119193f * g) + 0.019334f * r; }

inline Triple<float> forward32f(float r, float g, float b) {
    const float y = minOne(sumY(r, g, b));
    const float x = minOne(static_cast<float>(static_cast<double>(sumX(r, g, b)) / 0.950456023));
    const float z = minOne(static_cast<float>(static_cast<double>(sumZ(r, g, b)) / 1.08875394));
    return curveF(x, y, z);
}

inline Triple<float> forward8u(uint8_t r8, uint8_t g8, uint8_t b8) {
    const float r = r8, g = g8, b = b8;
    return curveF(sumX(r, g, b) / 242.365997f, sumY(r, g, b) / 255.0f, sumZ(r, g, b) / 277.631989f);
}

inline int64_t truncated(float v) { return static_cast<int64_t>(std::trunc(v)); }

inline Triple<uint8_t> codes8u(const Triple<float>& lab) {
    return {{uint8_t(truncated(lab.v[0] * 255.0f / 100.0f + 0.5f) & 0xFF), uint8_t(truncated(lab.v[1] + 128.5f) & 0xFF),
             uint8_t(truncated(lab.v[2] + 128.5f) & 0xFF)}};
}
inline Triple<uint16_t> codes16u(const Triple<float>& lab) {
    return {{uint16_t(truncated(lab.v[0] * 65535.0f / 100.0f) & 0xFFFF),
             uint16_t(truncated((lab.v[1] + 128.0f) * 255.0f) & 0xFFFF),
             uint16_t(truncated((lab.v[2] + 128.0f) * 255.0f) & 0xFFFF)}};
}

// ---- forward, double ----

inline Triple<double> forward64f(double r, double g, double b) {
    const double x = minOne(((0.180423 * b + 0.35758 * g) + 0.412453 * r) / 0.950456023);
    const double y = minOne((0.072169 * b + 0.71516 * g) + 0.212671 * r);
    const double z = minOne(((0.950227 * b + 0.119193 * g) + 0.019334 * r) / 1.08875394);
    const double t = 0.008856, slope = 7.787, offset = 0.13793103448275862;
    double l, fy;
    if (y > t) {
        fy = powThird(y);
        l = 116.0 * fy - 16.0;
    } else {
        l = 903.3 * y;
        fy = slope * y + offset;
    }
    const double fx = x > t ? powThird(x) : slope * x + offset;
    const double fz = z > t ? powThird(z) : slope * z + offset;
    return {{l, 500.0 * (fx - fy), 200.0 * (fy - fz)}};
}

// ---- backward, float and double ----

inline Triple<float> backward32f(float l, float a, float b) {
    const float fy = (l + 16.0f) / 116.0f;
    const float fx = a / 500.0f + fy;
    const float fz = fy - b / 200.0f;
    const float x = ((0.950456f * fx) * fx) * fx;
    const float y = (fy * fy) * fy;
    const float z = ((1.088754f * fz) * fz) * fz;
    return {{(3.240479f * x - 1.53715f * y) - 0.498535f * z, (-0.969256f * x + 1.875991f * y) + 0.041556f * z,
             (0.055648f * x - 0.204043f * y) + 1.057311f * z}};
}

inline Triple<double> backward64f(double l, double a, double b) {
    // The float constants widened.
    const double k[3][3] = {{double(3.240479f), double(1.53715f), double(0.498535f)},
                            {double(-0.969256f), double(1.875991f), double(0.041556f)},
                            {double(0.055648f), double(0.204043f), double(1.057311f)}};
    const double fy = (l + 16.0) / 116.0;
    const double fx = a / 500.0 + fy;
    const double fz = fy - b / 200.0;
    const double x = ((double(0.950456f) * fx) * fx) * fx;
    const double y = (fy * fy) * fy;
    const double z = ((double(1.088754f) * fz) * fz) * fz;
    return {{(k[0][0] * x - k[0][1] * y) - k[0][2] * z, (k[1][0] * x + k[1][1] * y) + k[1][2] * z,
             (k[2][0] * x - k[2][1] * y) + k[2][2] * z}};
}

// ---- backward, 8-bit results ----

inline uint8_t clampTruncated(float v) {
    const int64_t t = truncated(v);
    return uint8_t(t < 0 ? 0 : (t > 255 ? 255 : t));
}

inline Triple<uint8_t> rgbOfCurves(float fx, float fy, float fz) {
    const float x = ((242.365997f * fx) * fx) * fx;
    const float y = ((255.0f * fy) * fy) * fy;
    const float z = ((277.631989f * fz) * fz) * fz;
    return {{clampTruncated(((3.240479f * x + 0.5f) - 1.53715f * y) - 0.498535f * z),
             clampTruncated(((-0.969256f * x + 0.5f) + 1.875991f * y) + 0.041556f * z),
             clampTruncated(((0.055648f * x + 0.5f) - 0.204043f * y) + 1.057311f * z)}};
}

// 8-bit codes; `tail` picks the divisions of the tail, else the main loop's refined
// reciprocals.
inline Triple<uint8_t> backward8u(uint8_t l, uint8_t a, uint8_t b, bool tail) {
    if (tail) {
        const float fy = (float(l) * 100.0f / 255.0f + 16.0f) / 116.0f;
        const float fx = float(int(a) - 128) / 500.0f + fy;
        const float fz = fy - (float(b) - 128.0f) / 200.0f;
        return rgbOfCurves(fx, fy, fz);
    }
    const float fy = (float(l) * 100.0f * refined(255.0f) + 16.0f) * refined(116.0f);
    const float fx = float(int(a) - 128) * refined(500.0f) + fy;
    const float fz = fy - (float(b) - 128.0f) * refined(200.0f);
    return rgbOfCurves(fx, fy, fz);
}

// 16-bit codes.
inline Triple<uint8_t> backward16u8u(uint16_t l, uint16_t a, uint16_t b, bool tail) {
    if (tail) {
        const float fy = (float(l) * 100.0f / 65535.0f + 16.0f) / 116.0f;
        const float fx = (float(a) / 255.0f - 128.0f) / 500.0f + fy;
        const float fz = fy - (float(b) / 255.0f - 128.0f) / 200.0f;
        return rgbOfCurves(fx, fy, fz);
    }
    const float fy = (float(l) * 100.0f * refined(65535.0f) + 16.0f) * refined(116.0f);
    const float fx = (float(a) * refined(255.0f) - 128.0f) * refined(500.0f) + fy;
    const float fz = fy - (float(b) * refined(255.0f) - 128.0f) * refined(200.0f);
    return rgbOfCurves(fx, fy, fz);
}

}  // namespace reflab
