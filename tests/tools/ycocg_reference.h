// Reference model of the YCoCg members, written from their formulas and range rules
// alone: exact integers in 64 bits, with each wrap-around and each saturation done
// where the rules put it. It shares nothing with the library's kernels.
#pragma once

#include <cstdint>

namespace ycocgref {

enum class Family { Plain, Rev, Offset };

// How one member computes and stores.
struct Rule {
    Family family;
    bool forward;
    int arithmeticBits;   // 16 or 32: the width in which every step wraps
    int packedBits;       // 8 or 16: samples of the packed side
    int planeBits;        // 8, 16 or 32: samples of the planes
    bool redFirst;        // packed side stored R, G, B (else B, G, R)
    bool vectorSaturates; // 16-bit plain forward: vector columns saturate, tail wraps
};

inline int64_t wrapBits(int64_t v, int bits) {
    const uint64_t mask = (bits == 64) ? ~0ull : ((1ull << bits) - 1);
    uint64_t u = static_cast<uint64_t>(v) & mask;
    const uint64_t sign = 1ull << (bits - 1);
    return static_cast<int64_t>((u ^ sign)) - static_cast<int64_t>(sign);
}
// Arithmetic shift right of an exact integer: floor division by 2^n.
inline int64_t floorShift(int64_t v, int n) {
    const int64_t d = int64_t{1} << n;
    return v >= 0 ? v / d : -((-v + d - 1) / d);
}
inline int64_t saturate(int64_t v, int64_t lo, int64_t hi) { return v < lo ? lo : (v > hi ? hi : v); }

// Forward: from R, G, B to the three stored plane values (Y, Co, Cg). `vectorColumn`
// tells whether the pixel lies in the vector columns (first width - width % 4).
inline void forward(const Rule& r, int64_t R, int64_t G, int64_t B, bool vectorColumn, int64_t out[3]) {
    const int bits = r.arithmeticBits;
    auto w = [bits](int64_t v) { return wrapBits(v, bits); };
    int64_t y, co, cg;
    if (r.family == Family::Rev) {
        co = w(R - B);
        const int64_t t = w(B + floorShift(co, 1));
        cg = w(G - t);
        y = w(t + floorShift(cg, 1));
    } else {
        y = floorShift(R + 2 * G + B + 2, 2);
        co = floorShift(R - B + 1, 1);
        cg = floorShift(2 * G - R - B + 2, 2);
    }
    if (r.family == Family::Offset) {
        co = co + 128 > 255 ? 255 : co + 128;
        cg = cg + 128 > 255 ? 255 : cg + 128;
    }
    out[0] = y;
    out[1] = co;
    out[2] = cg;
    if (r.planeBits == 16) {
        for (int i = 0; i < 3; ++i) {
            out[i] = (r.vectorSaturates && vectorColumn) ? saturate(out[i], -32768, 32767) : wrapBits(out[i], 16);
        }
    }
}

// Inverse: from the three plane values to R, G, B as stored (before the order).
inline void inverse(const Rule& r, int64_t Y, int64_t Co, int64_t Cg, int64_t rgb[3]) {
    const int bits = r.arithmeticBits;
    auto w = [bits](int64_t v) { return wrapBits(v, bits); };
    int64_t R, G, B;
    if (r.family == Family::Rev) {
        const int64_t t = w(Y - floorShift(Cg, 1));
        G = w(Cg + t);
        B = w(t - floorShift(Co, 1));
        R = w(B + Co);
    } else if (r.family == Family::Plain) {
        R = w(Y + Co - Cg);
        G = w(Y + Cg);
        B = w(Y - Co - Cg);
    } else {
        R = Y + Co - Cg;
        G = Y + Cg - 128;
        B = 128 - Co + Y - Cg + 128;
    }
    rgb[0] = R;
    rgb[1] = G;
    rgb[2] = B;
    for (int i = 0; i < 3; ++i) {
        rgb[i] = (r.packedBits == 8) ? saturate(rgb[i], 0, 255) : wrapBits(rgb[i], 16);
    }
}

}  // namespace ycocgref
