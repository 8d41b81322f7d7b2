// Reference model of the colour twist, written plainly from its rules and sharing
// nothing with the library.
#pragma once

#include <cmath>
#include <cstdint>

namespace reftwist {

// (t3 + t0 * x0) + (t2 * x2 + t1 * x1), each step rounded to float.
inline float affine(const float t[4], float x0, float x1, float x2) {
    const float first = t[0] * x0;
    const float left = t[3] + first;
    const float third = t[2] * x2;
    const float second = t[1] * x1;
    const float right = third + second;
    return left + right;
}

// ((t0 * x0 + t1 * x1) + t2 * x2) + t3 * x3.
inline float linear(const float t[4], const float x[4]) {
    const float a = t[0] * x[0];
    const float b = t[1] * x[1];
    const float ab = a + b;
    const float c = t[2] * x[2];
    const float abc = ab + c;
    const float d = t[3] * x[3];
    return abc + d;
}

// The integer members' finish: minimum with the upper bound (NaN and +inf become it),
// maximum with the lower bound, then to nearest with ties to even whatever the
// current mode.
inline int32_t clampRound(float v, float lower, float upper) {
    float m = v;
    if (std::isnan(m) || m > upper) m = upper;
    if (m < lower) m = lower;
    // To nearest, ties to even, by hand: independent of any rounding mode.
    const double d = m;
    const double below = std::floor(d);
    const double fraction = d - below;
    double r = below;
    if (fraction > 0.5 || (fraction == 0.5 && std::fmod(below, 2.0) != 0.0)) r = below + 1.0;
    return static_cast<int32_t>(r);
}

}  // namespace reftwist
