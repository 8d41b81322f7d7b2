// The scalar power routines.
#include "twist_gamma/power_scalar.h"

#include <cmath>
#include <cstring>

#include "twist_gamma/power_core.h"

namespace pxk {

double pxkScalarPow(double x, double y) { return std::pow(x, y); }

float pxkScalarPowf(float x, float y) {
    uint32_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    if (!power::isPositiveNormal(bits) || !std::isfinite(y)) {
        return static_cast<float>(std::pow(static_cast<double>(x), static_cast<double>(y)));
    }
    const power::PowerArgument a = power::splitArgument(bits);
    const double m[1] = {a.m}, c[1] = {a.c}, base[1] = {a.base};
    double result[1];
    power::powerOfParts(m, c, base, static_cast<double>(y), result);
    return static_cast<float>(result[0]);
}

}  // namespace pxk
