// A plain scalar model of the bit-depth reduction family, written from its
// description alone: the noise generator and its tables, the path without dither,
// the three diffusion methods, the ordered matrix and the one-bit member. It shares
// nothing with the library's code. Pointers are raw row starts with byte steps, as the
// exports take them.
#ifndef PXKCC_TESTS_DITHER_REFERENCE_DITHER_H
#define PXKCC_TESTS_DITHER_REFERENCE_DITHER_H

#include <cfenv>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace refdither {

enum class Kind { U8, U16, S16, F32 };

inline int bytesOf(Kind k) { return k == Kind::U8 ? 1 : (k == Kind::F32 ? 4 : 2); }

// Truncation toward zero through a signed 32-bit integer; NaN and values outside the
// integer range give INT32_MIN, as the processor's conversion does.
inline int32_t trunc32(float v) {
    if (!(v >= -2147483648.0f && v < 2147483648.0f)) return INT32_MIN;
    return static_cast<int32_t>(v);
}

// ---------------------------------------------------------------------------------
// The noise generator
// ---------------------------------------------------------------------------------

struct Generator {
    double mid = 0, scale = 0;
    uint32_t lcg = 0, a = 0, b = 0, d = 0;
    int32_t borrow = 0;

    Generator(double low, double high, uint32_t seed) {
        mid = (high + low) * 0.5;
        scale = (high - low) * 2.3283064365386963e-10;
        lcg = 1131199209u;
        a = seed;
        b = static_cast<uint32_t>((uint64_t{seed} * 69069u + 1013904243u) & 0xFFFFFFFFu);
        d = static_cast<uint32_t>((uint64_t{b} * 69069u + 1013904243u) & 0xFFFFFFFFu);
        borrow = -1;
    }

    double next() {
        const int64_t wide = int64_t{b} - int64_t{d} + borrow;
        const uint32_t t32 = static_cast<uint32_t>(wide & 0xFFFFFFFF);
        const int64_t t = t32 >= 0x80000000u ? int64_t{t32} - 4294967296LL : int64_t{t32};
        const int64_t x = t < 0 ? t - 18 : t;
        borrow = t < 0 ? -1 : 0;
        d = b;
        b = a;
        a = static_cast<uint32_t>(x & 0xFFFFFFFF);
        lcg = static_cast<uint32_t>((uint64_t{lcg} * 69069u + 1013904243u) & 0xFFFFFFFFu);
        const uint32_t r32 = static_cast<uint32_t>((uint64_t{a} + lcg) & 0xFFFFFFFFu);
        const int64_t r = r32 >= 0x80000000u ? int64_t{r32} - 4294967296LL : int64_t{r32};
        return static_cast<double>(r) * scale + mid;
    }
};

// 1024 values of the 16-bit form: rounded half to even, the low 16 bits kept.
inline std::vector<uint16_t> offsetTable() {
    Generator g(0.0, 1024.0, 0);
    std::vector<uint16_t> t(1024);
    for (auto& v : t) {
        const double r = std::nearbyint(g.next());  // the default mode: ties to even
        v = static_cast<uint16_t>(static_cast<int64_t>(r) & 0xFFFF);
    }
    return t;
}

inline std::vector<float> noiseTable(float low, float high) {
    Generator g(static_cast<double>(low), static_cast<double>(high), 0);
    std::vector<float> t(1024);
    for (auto& v : t) v = static_cast<float>(g.next());
    return t;
}

struct Tables {
    std::vector<uint16_t> offset;
    std::vector<float> noise;
    float at(long long column, long long row) const {
        const long long pos = (offset[size_t(column % 1024)] + 2 * row + column) % 1024;
        return noise[size_t(pos)];
    }
};

// ---------------------------------------------------------------------------------
// Samples
// ---------------------------------------------------------------------------------

// A sample of kind k at p, as a float: the plain value (integers are exact).
inline float readRaw(Kind k, const uint8_t* p) {
    switch (k) {
        case Kind::U8:
            return float(*p);
        case Kind::U16: {
            uint16_t v;
            std::memcpy(&v, p, 2);
            return float(v);
        }
        case Kind::S16: {
            int16_t v;
            std::memcpy(&v, p, 2);
            return float(v);
        }
        case Kind::F32: {
            float v;
            std::memcpy(&v, p, 4);
            return v;
        }
    }
    return 0;
}

// In the working domain: 16s plus 32768.
inline float readDomain(Kind k, const uint8_t* p) {
    if (k == Kind::S16) {
        int16_t v;
        std::memcpy(&v, p, 2);
        return float(int32_t(v) + 32768);
    }
    return readRaw(k, p);
}

inline float domainTopOf(Kind src) { return src == Kind::U8 ? 255.0f : (src == Kind::F32 ? 1.0f : 65535.0f); }

// Writes code z to a destination of kind k: 8u 0..255, 16u 0..65535, 16s z - 32768
// saturated to -32768..32767.
inline void writeCode(Kind k, uint8_t* p, int64_t z) {
    if (k == Kind::U8) {
        *p = uint8_t(z < 0 ? 0 : (z > 255 ? 255 : z));
    } else if (k == Kind::U16) {
        const uint16_t v = uint16_t(z < 0 ? 0 : (z > 65535 ? 65535 : z));
        std::memcpy(p, &v, 2);
    } else {
        const int64_t s = z - 32768;
        const int16_t v = int16_t(s < -32768 ? -32768 : (s > 32767 ? 32767 : s));
        std::memcpy(p, &v, 2);
    }
}

// The destination's code of a level q (working domain): float sources times 255 or
// 65535, 16-bit sources into 8-bit destinations shifted right by 8; `half` adds 0.5
// before the truncation.
inline int64_t levelCode(Kind src, Kind dst, float q, bool half) {
    if (src == Kind::F32) {
        float m = q * (dst == Kind::U8 ? 255.0f : 65535.0f);
        if (half) m = m + 0.5f;
        return trunc32(m);
    }
    float m = q;
    if (half) m = m + 0.5f;
    int64_t z = trunc32(m);
    if (src != Kind::U8 && dst == Kind::U8) z = (z >= 0) ? (z >> 8) : -((-z + 255) >> 8);
    return z;
}

inline int64_t largestCodeOf(Kind dst) { return dst == Kind::U8 ? 255 : 65535; }

struct Layout {
    int channels;  // walked
    int stride;    // samples a pixel
};
inline Layout layoutOf(int channelCode) {
    switch (channelCode) {
        case 1:
            return {1, 1};
        case 3:
            return {3, 3};
        case 4:
            return {3, 4};
        default:
            return {4, 4};
    }
}

struct Call {
    Kind src, dst;
    int channelCode;  // 1, 3, 4 (AC4), 5 (C4)
    const uint8_t* pSrc;
    long long srcStep;  // bytes
    uint8_t* pDst;
    long long dstStep;
    int width, height;
    unsigned noise;
    int dtype;
    int levels;
};

inline const uint8_t* sampleAt(const Call& c, long long srcStep, int x, int y, int ch) {
    const Layout l = layoutOf(c.channelCode);
    return c.pSrc + y * srcStep + (long long)(x * l.stride + ch) * bytesOf(c.src);
}
inline uint8_t* destAt(const Call& c, long long dstStep, int x, int y, int ch) {
    const Layout l = layoutOf(c.channelCode);
    return c.pDst + y * dstStep + (long long)(x * l.stride + ch) * bytesOf(c.dst);
}

// ---------------------------------------------------------------------------------
// Methods
// ---------------------------------------------------------------------------------

inline void nearest(const Call& c) {
    const int L = c.levels - 1;
    const float stepN = 1.0f / float(L);
    const float halfN = 0.5f / float(L);
    const Layout l = layoutOf(c.channelCode);
    for (int y = 0; y < c.height; ++y) {
        for (int x = 0; x < c.width; ++x) {
            for (int ch = 0; ch < l.channels; ++ch) {
                const float raw = readRaw(c.src, sampleAt(c, c.srcStep, x, y, ch));
                float xn;
                if (c.src == Kind::U8) {
                    xn = raw * 0.003921569f;
                } else if (c.src == Kind::F32) {
                    xn = raw;
                } else {
                    xn = readDomain(c.src, sampleAt(c, c.srcStep, x, y, ch)) * 1.5259022e-5f;
                }
                float yv = float(trunc32(xn * float(L))) * stepN;
                if (xn - yv > halfN) yv = yv + stepN;
                const int64_t z = trunc32(yv * (c.dst == Kind::U8 ? 255.0f : 65535.0f));
                writeCode(c.dst, destAt(c, c.dstStep, x, y, ch), z);
            }
        }
    }
}

inline bool halfTypes(Kind src, Kind dst) { return src == Kind::F32 || (src == Kind::S16 && dst == Kind::U8); }

inline void ordered(const Call& c, const Tables* tables) {
    static const int kMatrix[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    const int L = c.levels - 1;
    const float top = domainTopOf(c.src);
    const float step = top / float(L);
    const float inv = float(L) / top;
    const bool half = tables != nullptr && c.channelCode != 5 && halfTypes(c.src, c.dst);
    const Layout l = layoutOf(c.channelCode);
    for (int y = 0; y < c.height; ++y) {
        for (int x = 0; x < c.width; ++x) {
            const float m = float(kMatrix[y & 3][x & 3]) / 15.0f;
            const float t = tables ? (m + tables->at(x, y)) * step : m * step;
            for (int ch = 0; ch < l.channels; ++ch) {
                const float v = readDomain(c.src, sampleAt(c, c.srcStep, x, y, ch));
                float q = float(trunc32(v * inv)) * step;
                const float r = v - q;
                if (t < r) q = q + step;
                writeCode(c.dst, destAt(c, c.dstStep, x, y, ch), levelCode(c.src, c.dst, q, half));
            }
        }
    }
}

// The gathered error of x: E2 the row before the previous, E1 the previous, C current
// (vectors with `pad` zero cells before index 0).
inline float gathered(int dtype, bool eightBit, const std::vector<float>& E2, const std::vector<float>& E1,
                      const std::vector<float>& C, int pad, int x) {
    auto e2 = [&](int i) { return E2[size_t(i + pad)]; };
    auto e1 = [&](int i) { return E1[size_t(i + pad)]; };
    auto cc = [&](int i) { return C[size_t(i + pad)]; };
    if (dtype == 1) {
        if (eightBit) return (((e1(x + 1) * 3.0f + e1(x - 1)) + e1(x) * 5.0f) + cc(x - 1) * 7.0f) * 0.0625f;
        return (((e1(x + 1) * 3.0f + e1(x) * 5.0f) + e1(x - 1)) + cc(x - 1) * 7.0f) * 0.0625f;
    }
    const float a = dtype == 2 ? 5.0f : 4.0f;
    const float b = dtype == 2 ? 3.0f : 2.0f;
    const float cw = dtype == 2 ? 7.0f : 8.0f;
    const float divider = dtype == 2 ? 0.020833334f : 0.023809524f;
    const float low = (a * e2(x) + cw * e1(x)) + (a * cc(x - 2) + (e2(x - 2) + b * e1(x - 2)));
    const float high = (b * e2(x + 1) + a * e1(x + 1)) + (cw * cc(x - 1) + (b * e2(x - 1) + a * e1(x - 1)));
    return (((high + low) + e2(x + 2)) + e1(x + 2) * b) * divider;
}

// Diffusion; steps are cut to whole elements of each side first.
inline void diffusion(const Call& c, const Tables* tables) {
    const int L = c.levels - 1;
    const float top = domainTopOf(c.src);
    const float step = top / float(L);
    const float inv = float(L) / top;
    const bool fs = c.dtype == 1;
    const float lowLimit = (fs && c.src == Kind::F32) ? 1.1920929e-7f : 0.0f;
    const bool half = fs && halfTypes(c.src, c.dst);
    auto cut = [](long long step, Kind k) {
        const int size = bytesOf(k);
        const long long q = step >= 0 ? step / size : -((-step + size - 1) / size);  // floor
        return q * size;
    };
    const long long srcStep = cut(c.srcStep, c.src);
    const long long dstStep = cut(c.dstStep, c.dst);
    const int pad = fs ? 1 : 2;
    const size_t len = size_t(c.width + 2 * pad);
    std::vector<float> E2(len, 0.0f), E1(len, 0.0f), C(len, 0.0f);
    const Layout l = layoutOf(c.channelCode);
    for (int ch = 0; ch < l.channels; ++ch) {
        for (int y = 0; y < c.height; ++y) {
            for (int x = 0; x < c.width; ++x) {
                const float v = readDomain(c.src, sampleAt(c, srcStep, x, y, ch)) +
                                gathered(c.dtype, c.src == Kind::U8, E2, E1, C, pad, x);
                float& err = C[size_t(x + pad)];
                int64_t code;
                if (v >= top) {
                    code = largestCodeOf(c.dst);
                    err = 0.0f;
                } else if (v < lowLimit) {
                    code = 0;
                    err = 0.0f;
                } else {
                    float q = float(trunc32(v * inv)) * step;
                    float r = v - q;
                    const float t = tables ? tables->at(x, y) : step * 0.5f;
                    if (r > t) {
                        q = q + step;
                        r = v - q;
                    }
                    err = r;
                    code = levelCode(c.src, c.dst, q, half);
                }
                writeCode(c.dst, destAt(c, dstStep, x, y, ch), code);
            }
            if (fs) {
                std::swap(E1, C);
            } else {
                std::vector<float> oldE2 = E2;
                E2 = E1;
                E1 = C;
                C = oldE2;
            }
        }
    }
}

// The noise tables a call builds, or none.
inline bool tablesFor(const Call& c, Tables* t) {
    if (c.noise == 0 || c.dtype == 0) return false;
    t->offset = offsetTable();
    if (c.dtype == 4) {
        t->noise = noiseTable(float(-int(c.noise)) / 100.0f, float(int(c.noise)) / 100.0f);
    } else {
        const float step = domainTopOf(c.src) / float(c.levels - 1);
        t->noise = noiseTable(float(50 - int(c.noise)) * step / 100.0f, float(50 + int(c.noise)) * step / 100.0f);
    }
    return true;
}

// A whole call with valid arguments.
inline void reduceBits(const Call& c) {
    Tables t;
    const bool noisy = tablesFor(c, &t);
    if (c.dtype == 0) {
        nearest(c);
    } else if (c.dtype == 4) {
        ordered(c, noisy ? &t : nullptr);
    } else {
        diffusion(c, noisy ? &t : nullptr);
    }
}

// ---------------------------------------------------------------------------------
// The one-bit member
// ---------------------------------------------------------------------------------

// Bit i of a row (MSB first from bit offset&7 of the first byte) for each pixel.
inline void oneBit(const uint8_t* src, long long srcStep, uint8_t* dst, long long dstStep, int offset, int width,
                   int height, int dtype, uint8_t threshold) {
    const int off = offset & 7;
    const size_t len = size_t(width + 4);
    std::vector<int64_t> A(len, 0), B(len, 0), C(len, 0);
    for (int y = 0; y < height; ++y) {
        std::vector<int> bits(static_cast<size_t>(width));
        for (int i = 0; i < width; ++i) {
            const int s = src[y * srcStep + i];
            if (dtype == 0) {
                bits[size_t(i)] = threshold < s;
                continue;
            }
            auto a = [&](int k) { return A[size_t(k + 2)]; };
            auto b = [&](int k) { return B[size_t(k + 2)]; };
            auto c = [&](int k) { return C[size_t(k + 2)]; };
            const int64_t G = a(i - 2) + a(i + 2) + 8 * (b(i) + c(i - 1)) + 4 * (a(i) + b(i - 1) + b(i + 1) + c(i - 2)) +
                              2 * (a(i - 1) + a(i + 1) + b(i - 2) + b(i + 2));
            const int64_t S = int64_t(s) * 8192 + 23 * G;
            int64_t e = S >= 0 ? S / 1024 : -((-S + 1023) / 1024);
            const bool one = S > int64_t(threshold) * 8192;
            if (one) e -= 2047;
            C[size_t(i + 2)] = e;
            bits[size_t(i)] = one;
        }
        if (dtype == 3) {
            std::vector<int64_t> oldA = A;
            A = B;
            B = C;
            C = oldA;
        }
        uint8_t* row = dst + y * dstStep;
        const int bytes = (off + width + 7) / 8;
        for (int k = 0; k < bytes; ++k) {
            int value = row[k];
            for (int bit = 0; bit < 8; ++bit) {
                const int index = k * 8 + bit - off;  // pixel of this bit, if any
                const int mask = 0x80 >> bit;
                if (index >= 0 && index < width) {
                    value = bits[size_t(index)] ? (value | mask) : (value & ~mask);
                } else if (k == 0 && index >= width) {
                    value &= ~mask;  // first byte: cleared after the written bits
                }
            }
            row[k] = uint8_t(value);
        }
    }
}

}  // namespace refdither

#endif
