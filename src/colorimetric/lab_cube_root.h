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

#include "frame/vec_float.h"
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

// ---------------------------------------------------------------------------------
// The same roots for a vector of floats: the short way in double lanes (the same
// operations in the same order, so the same doubles), narrowed to float; the lanes
// that `wanted` marks and the short way does not serve (outside its range, or within
// the band of a narrowing point) go to labCubeRoot one by one. Other lanes give
// unspecified values.
// ---------------------------------------------------------------------------------

namespace cube_root {

using vec::D128;
using vec::F128;
using vec::V128;

// The doubles of the lower and the upper half of a vector's lanes (floats, or 32-bit
// integers).
PXK_INLINE void widen(F128 v, D128 out[2]) {
    out[0] = _mm_cvtps_pd(v);
    out[1] = _mm_cvtps_pd(_mm_movehl_ps(v, v));
}
PXK_INLINE void widen(V128 v, D128 out[2]) {
    out[0] = _mm_cvtepi32_pd(v);
    out[1] = _mm_cvtepi32_pd(_mm_unpackhi_epi64(v, v));
}
// Two vectors of doubles narrowed to the floats of one vector, lower half first.
PXK_INLINE F128 narrow(const D128 d[2]) { return _mm_movelh_ps(_mm_cvtpd_ps(d[0]), _mm_cvtpd_ps(d[1])); }
// Column `Field` (0: inverse, 1: root) of the table rows that the 32-bit lanes of
// `rows` index, lower and upper half.
template <int Field>
PXK_INLINE void rowColumn(V128 rows, D128 out[2]) {
    alignas(16) int32_t i[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(i), rows);
    const double* base = &kTable.row[0].inverse + Field;
    out[0] = _mm_set_pd(base[2 * i[1]], base[2 * i[0]]);
    out[1] = _mm_set_pd(base[2 * i[3]], base[2 * i[2]]);
}
PXK_INLINE void exponentColumn(V128 k, D128 out[2]) {
    alignas(16) int32_t i[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(i), k);
    out[0] = _mm_set_pd(kTable.exponentRoot[i[1]], kTable.exponentRoot[i[0]]);
    out[1] = _mm_set_pd(kTable.exponentRoot[i[3]], kTable.exponentRoot[i[2]]);
}
#if defined(PXKCC_TARGET_AVX2)
using vec::D256;
using vec::F256;
using vec::V256;
PXK_INLINE void widen(F256 v, D256 out[2]) {
    out[0] = _mm256_cvtps_pd(_mm256_castps256_ps128(v));
    out[1] = _mm256_cvtps_pd(_mm256_extractf128_ps(v, 1));
}
PXK_INLINE void widen(V256 v, D256 out[2]) {
    out[0] = _mm256_cvtepi32_pd(_mm256_castsi256_si128(v));
    out[1] = _mm256_cvtepi32_pd(_mm256_extracti128_si256(v, 1));
}
PXK_INLINE F256 narrow(const D256 d[2]) {
    return _mm256_set_m128(_mm256_cvtpd_ps(d[1]), _mm256_cvtpd_ps(d[0]));
}
// Four doubles from base[index[i]] (every lane gathered).
PXK_INLINE D256 gather4(const double* base, V128 index) {
    const D256 all = _mm256_castsi256_pd(_mm256_set1_epi64x(-1));
    return _mm256_mask_i32gather_pd(_mm256_setzero_pd(), base, index, all, 8);
}
template <int Field>
PXK_INLINE void rowColumn(V256 rows, D256 out[2]) {
    const double* base = &kTable.row[0].inverse + Field;
    const V256 at = vec::add32(rows, rows);  // two doubles a row
    out[0] = gather4(base, _mm256_castsi256_si128(at));
    out[1] = gather4(base, _mm256_extracti128_si256(at, 1));
}
PXK_INLINE void exponentColumn(V256 k, D256 out[2]) {
    out[0] = gather4(kTable.exponentRoot, _mm256_castsi256_si128(k));
    out[1] = gather4(kTable.exponentRoot, _mm256_extracti128_si256(k, 1));
}
#endif

// The double vector that holds half the lanes of a float vector (declarations only,
// for DoublesOf).
D128 doublesFor(F128);
#if defined(PXKCC_TARGET_AVX2)
D256 doublesFor(F256);
#endif
template <class F>
using DoublesOf = decltype(doublesFor(F{}));

// The short way of shortCubeRoot over double lanes: x, the row's inverse and root,
// the exponent's root and m, each as in the scalar form.
template <class D>
PXK_INLINE D shortCubeRoot(D x, D inverse, D root, D exponentRoot, D m) {
    using namespace vec;
    const D one = splatD<D>(1.0), third = splatD<D>(1.0 / 3.0);
    const D d = subD(mulD(m, inverse), one);
    D r = mulD(mulD(root, subD(one, mulD(d, subD(third, mulD(d, splatD<D>(2.0 / 9.0)))))), exponentRoot);
    r = addD(r, mulD(mulD(r, subD(one, mulD(mulD(mulD(x, r), r), r))), third));
    return mulD(mulD(x, r), r);
}

PXK_INLINE int signBits(F128 v) { return _mm_movemask_ps(v); }
PXK_INLINE int signBits(D128 v) { return _mm_movemask_pd(v); }
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE int signBits(F256 v) { return _mm256_movemask_ps(v); }
PXK_INLINE int signBits(D256 v) { return _mm256_movemask_pd(v); }
#endif

// Bit i set where double lane i lies within the band of a narrowing point (as
// nearNarrowingPoint; the masked value is below 2^28, so each lane's low 32 bits
// decide, and the shift brings their compare to the lane's top bit).
template <class D>
PXK_INLINE int nearNarrowingPoints(D v) {
    using namespace vec;
    using V = BitsOfD<D>;
    const auto splat64 = [](uint64_t u) { return splat32Pattern<V>(int32_t(u), 0, int32_t(u), 0); };
    const V t = and_(add64(bitsOfD(v), splat64(kBand)), splat64(0x0FFFFFFF));
    const V below = greater32(splat64(2 * kBand), t);
    return signBits(doublesOf(slli64<32>(below)));
}

}  // namespace cube_root

template <class F>
PXK_INLINE F labCubeRootLanes(F v, F wanted) {
    using namespace vec;
    using V = decltype(bitsOf(F{}));
    constexpr int kLanes = sizeof(F) / 4;
    // Lanes outside the short way's range work on 1.0 instead, so that every index
    // stays in its table; their results are replaced below.
    const V offset = sub32(bitsOf(v), splat32<V>(int32_t(cube_root::kLowestBits)));
    const V inRange = andNot(greater32(zero<V>(), offset),
                             greater32(splat32<V>(int32_t(cube_root::kEndBits - cube_root::kLowestBits)), offset));
    const V bits = bitsOf(selectF(floatsOf(inRange), v, splatF<F>(1.0f)));
    const V exponentIndex = sub32(splat32<V>(127), srli32<23>(bits));
    const V mantissa = and_(bits, splat32<V>(0x7FFFFF));
    const V rows = srli32<17>(add32(mantissa, splat32<V>(0x10000)));
    using D = cube_root::DoublesOf<F>;
    D x[2], inverse[2], root[2], exponentRoot[2], m[2], r[2];
    cube_root::widen(floatsOf(bits), x);
    cube_root::rowColumn<0>(rows, inverse);
    cube_root::rowColumn<1>(rows, root);
    cube_root::exponentColumn(exponentIndex, exponentRoot);
    cube_root::widen(mantissa, m);
    PXK_UNROLL
    for (int i = 0; i < 2; ++i) {
        m[i] = addD(splatD<D>(1.0), mulD(m[i], splatD<D>(1.0 / 8388608.0)));
        r[i] = cube_root::shortCubeRoot(x[i], inverse[i], root[i], exponentRoot[i], m[i]);
    }
    F out = cube_root::narrow(r);
    const int near = cube_root::nearNarrowingPoints(r[0]) | (cube_root::nearNarrowingPoints(r[1]) << (kLanes / 2));
    const int redo = (near | ~cube_root::signBits(floatsOf(inRange))) & cube_root::signBits(wanted);
    if (redo != 0) {
        alignas(32) float in[kLanes], lanes[kLanes];
        storeF(in, v);
        storeF(lanes, out);
        for (int j = 0; j < kLanes; ++j) {
            if (redo & (1 << j)) lanes[j] = labCubeRoot(in[j]);
        }
        out = loadF<F>(lanes);
    }
    return out;
}

}  // namespace lab
}  // namespace colorimetric
}  // namespace pxk
