// Reference model of RGB <-> XYZ, 8-bit, from the fixed tables: the main loop's
// 16-bit table with its shift and saturation, the tail's table of 65536ths with its own
// storing rules.
#pragma once

#include <cstdint>

namespace refxyz {

struct Table {
    int32_t k[3][3];
};
inline constexpr Table kForwardMain{{{13515, 11717, 5912}, {6969, 23434, 2365}, {634, 3906, 31137}}};
inline constexpr Table kForwardTail{{{27030, 23434, 11824}, {13937, 46868, 4729}, {1267, 7811, 62274}}};
inline constexpr Table kInverseMain{{{26546, -12591, -4083}, {-7939, 15368, 340}, {456, -1671, 8661}}};
inline constexpr Table kInverseTail{{{212368, -100738, -32671}, {-63521, 122944, 2723}, {3646, -13372, 69291}}};

inline uint8_t saturate8(int64_t v) { return uint8_t(v < 0 ? 0 : (v > 255 ? 255 : v)); }
// Arithmetic shift of a possibly negative sum: floor division by 2^n.
inline int64_t floorShift(int64_t v, int n) {
    const int64_t d = int64_t(1) << n;
    return v >= 0 ? v / d : -((-v + d - 1) / d);
}

// One output of the main loop: the sum by the 16-bit table, shifted, saturated.
inline uint8_t mainLoop(const Table& t, int shift, int row, const uint8_t in[3]) {
    return saturate8(floorShift(int64_t(t.k[row][0]) * in[0] + int64_t(t.k[row][1]) * in[1] +
                                    int64_t(t.k[row][2]) * in[2],
                                shift));
}

inline void forwardPixel(const uint8_t in[3], bool tail, uint8_t out[3]) {
    if (!tail) {
        for (int r = 0; r < 3; ++r) out[r] = mainLoop(kForwardMain, 15, r, in);
        return;
    }
    uint32_t v[3];
    for (int r = 0; r < 3; ++r) {
        v[r] = (uint32_t(kForwardTail.k[r][0]) * in[0] + uint32_t(kForwardTail.k[r][1]) * in[1] +
                uint32_t(kForwardTail.k[r][2]) * in[2]) >>
               16;
    }
    out[0] = uint8_t(v[0] & 0xFF);
    out[1] = uint8_t(v[1] & 0xFF);
    out[2] = uint8_t(v[2] > 255 ? 255 : v[2]);
}

inline void inversePixel(const uint8_t in[3], bool tail, uint8_t out[3]) {
    for (int r = 0; r < 3; ++r) out[r] = tail ? mainLoop(kInverseTail, 16, r, in) : mainLoop(kInverseMain, 13, r, in);
}

}  // namespace refxyz
