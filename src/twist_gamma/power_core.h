// The arithmetic of a power of a positive, normal float: x^y = 2^(y * log2 x), with
// the logarithm and the exponential worked in double. Written once, over a double
// vector type or plain double (the scalar twin); both give the same bits.
//
//   x = 2^k * m, m in [1, 2). The row i = round(64 * (m - 1)) (the leading seven
//   mantissa bits rounded to an even index, 0 to 64) holds c, the float nearest
//   1 / (1 + i / 64), and log2(1 / c). Then r = m * c - 1 is exact in double
//   (|r| <= 1/128), and log2 x = (k + log2(1 / c)) + log2(1 + r), the last by its
//   series to the seventh power of r.
//   t = y * log2 x, limited to [-160, 130] (beyond either end the float result is 0 or
//   infinity anyway). N is t rounded to an integer by the current rounding mode (by
//   adding and subtracting 1.5 * 2^52), f = t - N, and 2^t = 2^N * e^(f ln 2), the
//   last by its series to the twelfth power; 2^N goes into the exponent field.
//
// The errors of all this stay below 2e-12 of the result (1e-15 under round to nearest),
// so that the final narrowing
// to float is correctly rounded but for values within that distance of a tie.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "frame/vec_float.h"

namespace pxk {
namespace power {

// One row of the logarithm table.
struct LogRow {
    double c;             // the float nearest 1 / (1 + i / 64)
    double log2OfInverse;  // log2(1 / c)
};

inline constexpr int kLogRows = 65;

// ln(v) for v in [0.5, 1], as 2 atanh((v - 1) / (v + 1)) by its series: good to an
// ulp or two of a double, computed when the program is compiled.
constexpr double naturalLog(double v) {
    const double z = (v - 1.0) / (v + 1.0);
    const double z2 = z * z;
    double term = z, sum = 0.0;
    for (int n = 1; n < 80; n += 2) {
        sum += term / n;
        term *= z2;
    }
    return 2.0 * sum;
}

inline constexpr double kLn2 = 0.6931471805599453;

struct LogTable {
    LogRow row[kLogRows];
};

constexpr LogTable makeLogTable() {
    LogTable t{};
    for (int i = 0; i < kLogRows; ++i) {
        const double c = static_cast<double>(static_cast<float>(1.0 / (1.0 + i / 64.0)));
        // Rows 0 and 64 are 1 and 1/2, whose logarithms are exact.
        const double lg = i == 0 ? 0.0 : i == kLogRows - 1 ? 1.0 : -naturalLog(c) / kLn2;
        t.row[i] = LogRow{c, lg};
    }
    return t;
}

inline constexpr LogTable kLogTable = makeLogTable();

// Coefficients of log2(1 + r) = r * (a1 + r * (a2 + ... + r * a7)), a_n = (-1)^(n+1) / (n ln 2).
struct Series {
    double a[13];
};

constexpr Series makeLogSeries() {
    Series s{};
    for (int n = 1; n <= 7; ++n) s.a[n - 1] = ((n % 2 == 1) ? 1.0 : -1.0) / (n * kLn2);
    return s;
}

// Coefficients of 2^f = sum (ln 2)^k / k! * f^k, k = 0 to 12.
constexpr Series makeExpSeries() {
    Series s{};
    double c = 1.0;
    for (int k = 0; k <= 12; ++k) {
        s.a[k] = c;
        c = c * kLn2 / (k + 1);
    }
    return s;
}

inline constexpr Series kLogSeries = makeLogSeries();
inline constexpr Series kExpSeries = makeExpSeries();

// The parts of a positive, normal float that the table gives: m (1 + the mantissa),
// c, and k + log2(1 / c).
struct PowerArgument {
    double m;
    double c;
    double base;
};

inline PowerArgument splitArgument(uint32_t bits) {
    const int32_t k = static_cast<int32_t>(bits >> 23) - 127;
    const uint32_t mantissa = bits & 0x7FFFFFu;
    const LogRow& row = kLogTable.row[(mantissa + 0x10000u) >> 17];
    return PowerArgument{1.0 + mantissa * (1.0 / 8388608.0), row.c, k + row.log2OfInverse};
}

// Scalar twins of the double-lane operations.
PXK_INLINE double addD(double a, double b) { return a + b; }
PXK_INLINE double subD(double a, double b) { return a - b; }
PXK_INLINE double mulD(double a, double b) { return a * b; }
PXK_INLINE double minD(double a, double b) { return a < b ? a : b; }
PXK_INLINE double maxD(double a, double b) { return a > b ? a : b; }
// v in every lane of T: a float or double vector, or a plain float or double.
template <class T>
PXK_INLINE T splat(double v) {
    if constexpr (std::is_arithmetic_v<T>) {
        return static_cast<T>(v);
    } else if constexpr (std::is_same_v<decltype(T{}[0] + 0.0f), float>) {
        return vec::splatF<T>(static_cast<float>(v));
    } else {
        return vec::splatD<T>(v);
    }
}
using vec::addD;
using vec::maxD;
using vec::minD;
using vec::mulD;
using vec::subD;

// 2^N from s = N + 1023 + 1.5 * 2^52 (an integer-valued double): the low 12 bits of s's
// bits are N + 1023, which moved to the exponent field make 2^N.
PXK_INLINE double pow2FromBiased(double s) {
    uint64_t bits;
    std::memcpy(&bits, &s, sizeof bits);
    bits <<= 52;
    double r;
    std::memcpy(&r, &bits, sizeof r);
    return r;
}
template <class D>
PXK_INLINE D pow2FromBiased(D s) {
    return vec::doublesOf(vec::slli64<52>(vec::bitsOfD(s)));
}

// p[k] = a[0] + x[k] * (a[1] + ... + x[k] * a[last]) for K values at once: each step
// of the series is taken for all K before the next, so that K independent chains of
// operations run side by side.
template <class D, int K>
PXK_INLINE void hornerSeries(const double* a, int last, const D (&x)[K], D (&p)[K]) {
    PXK_UNROLL
    for (int k = 0; k < K; ++k) p[k] = splat<D>(a[last]);
    for (int n = last - 1; n >= 0; --n) {
        PXK_UNROLL
        for (int k = 0; k < K; ++k) p[k] = addD(mulD(p[k], x[k]), splat<D>(a[n]));
    }
}

// out[k] = x^y for K values (or vectors) of x given by their parts (m, c, base as
// above), in double.
template <class D, int K>
PXK_INLINE void powerOfParts(const D (&m)[K], const D (&c)[K], const D (&base)[K], double y, D (&out)[K]) {
    const double kRound = 6755399441055744.0;  // 1.5 * 2^52
    D r[K], series[K], t[K], s[K];
    PXK_UNROLL
    for (int k = 0; k < K; ++k) r[k] = subD(mulD(m[k], c[k]), splat<D>(1.0));
    hornerSeries(kLogSeries.a, 6, r, series);
    PXK_UNROLL
    for (int k = 0; k < K; ++k) {
        const D log2x = addD(base[k], mulD(r[k], series[k]));
        t[k] = minD(maxD(mulD(splat<D>(y), log2x), splat<D>(-160.0)), splat<D>(130.0));
        s[k] = addD(t[k], splat<D>(kRound));
        // f = t - N, N = s - 1.5 * 2^52: t rounded to an integer.
        r[k] = subD(t[k], subD(s[k], splat<D>(kRound)));
    }
    hornerSeries(kExpSeries.a, 12, r, series);
    PXK_UNROLL
    for (int k = 0; k < K; ++k) out[k] = mulD(series[k], pow2FromBiased(addD(s[k], splat<D>(1023.0))));
}

// True for the bits of a positive, normal, finite float: the elements that take the
// arithmetic above; all others go to the fallback.
PXK_INLINE bool isPositiveNormal(uint32_t bits) { return bits - 0x00800000u < 0x7F000000u; }

}  // namespace power
}  // namespace pxk
