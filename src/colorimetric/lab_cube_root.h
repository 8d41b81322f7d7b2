// The cube roots of the Lab forward curve: the double power routine with the exponent
// 0.3333333333333333 (not exactly a third), a double in and a double out; the float
// kernels narrow the result to float. The 8-bit LUV forward kernel takes the same
// narrowed root of its Y.
//
// The float kernels take a shorter way that gives the same float. For an argument in
// [2^-7, 2) (all that the curve sees above its threshold, up to 1 and a little beyond
// in the 8-bit kernels) the cube root is worked in double without a division: a table
// row and a second-order step give x^(-1/3) to about 1e-7, one Newton step
// r += r (1 - x r^3) / 3 takes it below 2e-14, and the root (x r) r is within 3e-14 of
// x^(1/3); x^0.3333333333333333 lies within 1e-16 of that. Its float is then the
// float of the power routine's result unless the double lies within 2^-40 (relative)
// of a point where narrowing changes its float (a float, or the midpoint of two
// floats, so that any rounding mode is covered): such arguments, and those outside
// the range, go to the power routine. The tests compare the two over every float of
// the range.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <cstring>

#include "twist_gamma/power_scalar.h"

namespace pxk {
namespace colorimetric {
namespace lab {

inline constexpr double kCubeRootExponent = 0.3333333333333333;

PXK_INLINE double labCubeRoot(double v) { return pxkScalarPow(v, kCubeRootExponent); }

namespace cube_root {

// x^(-1/3) for x in [1, 2], by Newton steps at compile time from a first-order start.
constexpr double inverseCubeRoot(double x) {
    double r = 1.0 - (x - 1.0) / 3.0;
    for (int i = 0; i < 40; ++i) r = r + r * (1.0 - x * r * r * r) / 3.0;
    return r;
}

// Row i of 65: 1 / (1 + i / 64) and (1 + i / 64)^(-1/3).
struct Row {
    double inverse;
    double root;
};
struct Table {
    Row row[65];
    double exponentRoot[8];  // 2^(k / 3) for the float exponent -k, k = 0 to 7
};
constexpr Table makeTable() {
    Table t{};
    for (int i = 0; i <= 64; ++i) {
        const double c = 1.0 + i / 64.0;
        t.row[i] = Row{1.0 / c, inverseCubeRoot(c)};
    }
    const double thirds[3] = {1.0, 1.2599210498948732, 1.5874010519681994};  // 2^0, 2^(1/3), 2^(2/3)
    for (int k = 0; k < 8; ++k) t.exponentRoot[k] = double(1 << (k / 3)) * thirds[k % 3];
    return t;
}
inline constexpr Table kTable = makeTable();

// Arguments of the short way: floats in [2^-7, 2).
inline constexpr uint32_t kLowestBits = 0x3C000000u;
inline constexpr uint32_t kEndBits = 0x40000000u;
// Half the width, in units of the double's last place, of the band around each point
// where narrowing to float changes (2^12 units: 2^-40 of the value).
inline constexpr uint64_t kBand = uint64_t(1) << 12;

// True when the double v lies within the band of a float or of the midpoint of two
// floats: the low 28 bits of its fraction (a half float unit) near 0 or its end.
PXK_INLINE bool nearNarrowingPoint(double v) {
    uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    return ((bits + kBand) & 0x0FFFFFFFu) < 2 * kBand;
}

// x^(1/3) of a float x in [2^-7, 2) given by its bits, in double.
PXK_INLINE double shortCubeRoot(float x, uint32_t bits) {
    const int exponent = int(bits >> 23) - 127;  // -7 to 0
    const uint32_t mantissa = bits & 0x7FFFFFu;
    const Row& row = kTable.row[(mantissa + 0x10000u) >> 17];
    const double m = 1.0 + mantissa * (1.0 / 8388608.0);
    const double d = m * row.inverse - 1.0;  // |d| <= 1/128
    const double xd = static_cast<double>(x);
    const double third = 1.0 / 3.0;
    // (1 + d)^(-1/3) to the second order: 1 - d / 3 + 2 d^2 / 9, within 8.3e-8.
    double r = (row.root * (1.0 - d * (third - d * (2.0 / 9.0)))) * kTable.exponentRoot[-exponent];
    // One Newton step squares the error (2 e^2 < 1.4e-14).
    r = r + r * (1.0 - xd * r * r * r) * third;
    return (xd * r) * r;
}

}  // namespace cube_root

PXK_INLINE float labCubeRoot(float v) {
    uint32_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    if (bits - cube_root::kLowestBits < cube_root::kEndBits - cube_root::kLowestBits) {
        const double root = cube_root::shortCubeRoot(v, bits);
        if (!cube_root::nearNarrowingPoint(root)) return static_cast<float>(root);
    }
    return static_cast<float>(pxkScalarPow(static_cast<double>(v), kCubeRootExponent));
}

}  // namespace lab
}  // namespace colorimetric
}  // namespace pxk
