// Reference model of RGB <-> YCC, 8-bit. The tails as the fixed 32-bit formulas give
// them; the main loops as this library lays them out in 16-bit words (high products
// floor, a final arithmetic shift of 2, saturation to 0..255).
#pragma once

#include <cstdint>

namespace refycc {

// Floor of v / 2^n for any sign.
inline int64_t floorShift(int64_t v, int n) {
    const int64_t d = int64_t(1) << n;
    return v >= 0 ? v / d : -((-v + d - 1) / d);
}
// The high 16 bits of the product of two signed 16-bit values.
inline int64_t high(int64_t a, int64_t b) { return floorShift(a * b, 16); }
inline uint8_t saturate8(int64_t v) { return uint8_t(v < 0 ? 0 : (v > 255 ? 255 : v)); }
inline uint8_t low8(int64_t v) { return uint8_t(uint64_t(v) & 0xFF); }

inline void forwardTail(const uint8_t in[3], uint8_t out[3]) {
    const int64_t R = in[0], G = in[1], B = in[2];
    const int64_t yq = 4898 * R + 9617 * G + 1867 * B;
    out[0] = low8(floorShift(floorShift(yq, 10) * 2921, 16));
    out[1] = low8(floorShift(floorShift(B * 16384 - yq, 10) * 1789, 16) + 156);
    out[2] = low8(floorShift(floorShift(R * 16384 - yq, 10) * 2178, 16) + 137);
}

inline void forwardMain(const uint8_t in[3], uint8_t out[3]) {
    const int64_t R = in[0], G = in[1], B = in[2];
    const int64_t L = high(R * 128, 4898) + high(G * 128, 9617) + high(B * 128, 1867);
    out[0] = saturate8(floorShift(high(L, 5842), 2));
    out[1] = saturate8(floorShift(high(B * 32 - L, 3578), 2) + 156);
    out[2] = saturate8(floorShift(high(R * 32 - L, 4356), 2) + 137);
}

inline void inverseTail(const uint8_t in[3], uint8_t out[3]) {
    const int64_t a = 5564 * int64_t(in[0]);
    const int64_t b = 9084 * int64_t(in[1]) - 1417104;
    const int64_t c = 7460 * int64_t(in[2]) - 1022020;
    out[0] = saturate8(floorShift(a + c, 12));
    out[1] = saturate8(floorShift(a - 794 * floorShift(b, 8) - 2084 * floorShift(c, 8), 16));
    out[2] = saturate8(floorShift(a + b, 12));
}

inline void inverseMain(const uint8_t in[3], uint8_t out[3]) {
    const int64_t y = high(int64_t(in[0]) * 64, 5563);
    const int64_t c1 = high((int64_t(in[1]) - 156) * 32, 18168);
    const int64_t c2 = high((int64_t(in[2]) - 137) * 32, 14921);
    out[0] = saturate8(floorShift(y + c2, 2));
    out[1] = saturate8(floorShift(y + high(2 * c1, -6357) + high(2 * c2, -16679), 2));
    out[2] = saturate8(floorShift(y + c1, 2));
}

// One pixel by the main loop's rule or the tail's.
inline void forward(const uint8_t in[3], bool tail, uint8_t out[3]) { tail ? forwardTail(in, out) : forwardMain(in, out); }
inline void inverse(const uint8_t in[3], bool tail, uint8_t out[3]) { tail ? inverseTail(in, out) : inverseMain(in, out); }

}  // namespace refycc
