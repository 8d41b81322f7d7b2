// The float forms of RGB <-> LUV: the matrix sums, the lightness by a cube-root table
// and a series, the chromaticity with the refined reciprocal, and the inverse way back
// through Y, X and Z. Each form is written once over the float vector type F (four
// pixels per 128-bit lane, one vector a channel), with its scalar twin beside it for
// the tails. Sample types only change the units around them (luv_units.h).
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <utility>

#include "colorimetric/float_columns.h"
#include "colorimetric/lab_cube_root.h"
#include "frame/pixel_block.h"
#include "frame/vec_float.h"

namespace pxk {
namespace colorimetric {
namespace luv {

using namespace vec;

// The integer vector as wide as the float vector F.
template <class F>
using IntsOf = decltype(bitsOf(F{}));

// White point chromaticity.
inline constexpr float kUn = 0.197839f;
inline constexpr float kVn = 0.468342f;

// RGB -> XYZ and XYZ -> RGB, as 32-bit floats.
inline constexpr float kToXyz[3][3] = {
    {0.412453f, 0.35758f, 0.180423f}, {0.212671f, 0.71516f, 0.072169f}, {0.019334f, 0.119193f, 0.950227f}};
inline constexpr float kToRgb[3][3] = {
    {3.240479f, -1.53715f, -0.498535f}, {-0.969256f, 1.875991f, 0.041556f}, {0.055648f, -0.204043f, 1.057311f}};

// ---------------------------------------------------------------------------------
// The cube-root table: 128 pairs (c, 1 / c^3) with c^3 = (i + 1.0128153) / 128, so
// that entry 0 is (0.199269, 126.3804) and entry 1 (0.250533, 63.592). Each c is the
// float nearest to the cube root (Newton's iteration in double, at compile time), and
// 1 / c^3 is taken from that float c.
// ---------------------------------------------------------------------------------

struct CubeRootEntry {
    float c;
    float inverseCube;
};
struct CubeRootTable {
    CubeRootEntry e[128];
};

constexpr double cubeRootNewton(double a) {
    double x = 1.0;
    for (int n = 0; n < 60; ++n) x = (2.0 * x + a / (x * x)) / 3.0;
    return x;
}
constexpr CubeRootTable makeCubeRootTable() {
    CubeRootTable t{};
    for (int i = 0; i < 128; ++i) {
        const float c = static_cast<float>(cubeRootNewton((i + 1.0128153) / 128.0));
        const double cube = static_cast<double>(c) * c * c;
        t.e[i] = CubeRootEntry{c, static_cast<float>(1.0 / cube)};
    }
    return t;
}
inline constexpr CubeRootTable kCubeRoots = makeCubeRootTable();

// The binomial series of (1 + e)^(1/3), to its ninth term.
inline constexpr float kSeries[9] = {1.0f,          0.333333343f,   -0.111111112f,
                                     0.0617283955f, -0.0411522649f, 0.0301783271f,
                                     -0.0234720316f, 0.0190011691f, -0.0158343073f};

// The table index of a (scaled) Y, trunc(Y * 127.998047). Indexes outside the table
// (Y above 1.0000153, or NaN, whose conversion gives INT32_MIN) take the nearest end;
// in-range Y above the linear foot always gives 1 to 127.
inline constexpr float kIndexScale = 127.998047f;
PXK_INLINE int32_t clampIndex(int32_t i) { return i < 0 ? 0 : (i > 127 ? 127 : i); }

// The units of a forward kernel: Y is compared with the linear foot's threshold in the
// units of the samples, then scaled to 0..1 for the lightness.
struct UnitRange {
    static constexpr float kThreshold = 0.008856f;
    static constexpr float kScale = 1.0f;  // exact: scaling by it changes no bit
};
struct SampleRange16 {
    static constexpr float kThreshold = 580.377991f;
    static constexpr float kScale = 1.52590219e-05f;
};

// ---------------------------------------------------------------------------------
// Forward: X, Y, Z; L; U and V
// ---------------------------------------------------------------------------------

// Row r of a matrix applied in the order (m0 a + m1 b) + m2 c.
template <class F>
PXK_INLINE F matrixRow(const float (&m)[3], const Floats3<F>& v) {
    return addF(addF(mulF(splatF<F>(m[0]), v.c[0]), mulF(splatF<F>(m[1]), v.c[1])), mulF(splatF<F>(m[2]), v.c[2]));
}
PXK_INLINE float matrixRow(const float (&m)[3], const float v[3]) { return (m[0] * v[0] + m[1] * v[1]) + m[2] * v[2]; }

// L of a Y in sample units: 903.3 Y at or below the threshold, else the cube root of
// the scaled Y from the table entry (c, k) and the series in e = (Y - c^3) k:
// L = (s c) 116 - 16. The series by Horner's rule from its last coefficient.
template <class Units, class F>
PXK_INLINE F lightness(F ySamples) {
    const F y = mulF(ySamples, splatF<F>(Units::kScale));
    using V = IntsOf<F>;
    const V index = max32(min32(truncToInt(mulF(y, splatF<F>(kIndexScale))), splat32<V>(127)), zero<V>());
    alignas(32) int32_t idx[sizeof(V) / 4];
    alignas(32) float cs[sizeof(V) / 4], ks[sizeof(V) / 4];
    storeLanes<V, 16>(reinterpret_cast<uint8_t*>(idx), index);
    PXK_UNROLL
    for (unsigned j = 0; j < sizeof(V) / 4; ++j) {
        cs[j] = kCubeRoots.e[idx[j]].c;
        ks[j] = kCubeRoots.e[idx[j]].inverseCube;
    }
    const F c = loadF<F>(cs), k = loadF<F>(ks);
    const F e = mulF(subF(y, mulF(mulF(c, c), c)), k);
    F s = splatF<F>(kSeries[8]);
    PXK_UNROLL
    for (int n = 7; n >= 0; --n) s = addF(mulF(s, e), splatF<F>(kSeries[n]));
    const F curve = subF(mulF(mulF(s, c), splatF<F>(116.0f)), splatF<F>(16.0f));
    const F linear = mulF(splatF<F>(903.3f), y);
    return selectF(lessEqualF(ySamples, splatF<F>(Units::kThreshold)), linear, curve);
}
template <class Units>
PXK_INLINE float lightness(float ySamples) {
    const float y = ySamples * Units::kScale;
    if (ySamples <= Units::kThreshold) return 903.3f * y;
    const CubeRootEntry& t = kCubeRoots.e[clampIndex(truncToInt32(y * kIndexScale))];
    const float e = (y - t.c * t.c * t.c) * t.inverseCube;
    float s = kSeries[8];
    for (int n = 7; n >= 0; --n) s = s * e + kSeries[n];
    return (s * t.c) * 116.0f - 16.0f;
}

// The processor's approximate reciprocal refined once, 2 r - (x r) r.
template <class F>
PXK_INLINE F refinedReciprocalF(F x) {
    const F r = rcpF(x);
    return subF(mulF(splatF<F>(2.0f), r), mulF(mulF(x, r), r));
}

// U and V from X, Y, Z (any common scale) and L: D = (X + 15 Y) + 3 Z,
// u = 4 X / D, v = 9 Y / D by the refined reciprocal of D, U = (u - un) 13 L,
// V = (v - vn) 13 L.
template <class F>
PXK_INLINE void chromaOf(F r, const Floats3<F>& xyz, F l, F& outU, F& outV) {
    const F l13 = mulF(splatF<F>(13.0f), l);
    outU = mulF(subF(mulF(mulF(splatF<F>(4.0f), xyz.c[0]), r), splatF<F>(kUn)), l13);
    outV = mulF(subF(mulF(mulF(splatF<F>(9.0f), xyz.c[1]), r), splatF<F>(kVn)), l13);
}
template <class F>
PXK_INLINE F denominatorOf(const Floats3<F>& xyz) {
    return addF(addF(xyz.c[0], mulF(splatF<F>(15.0f), xyz.c[1])), mulF(splatF<F>(3.0f), xyz.c[2]));
}

// The main loop's form: R, G, B (in sample units) to L, U, V floats. Where D is 0, 3 is
// added to it before the reciprocal.
template <class Units>
struct ForwardBlock {
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& rgb) {
        const Floats3<F> xyz{{matrixRow(kToXyz[0], rgb), matrixRow(kToXyz[1], rgb), matrixRow(kToXyz[2], rgb)}};
        Floats3<F> out;
        out.c[0] = lightness<Units>(xyz.c[1]);
        F d = denominatorOf(xyz);
        d = addF(d, andF(equalF(d, zeroF<F>()), splatF<F>(3.0f)));
        chromaOf(refinedReciprocalF(d), xyz, out.c[0], out.c[1], out.c[2]);
        return out;
    }
};

// The tail's form: the same, one pixel at a time, except that a Z of 0 gives U and V
// of 0 with no division (and D is taken as it is).
template <class Units>
struct ForwardTail {
    PXK_INLINE static void apply(const float rgb[3], float out[3]) {
        const float x = matrixRow(kToXyz[0], rgb), y = matrixRow(kToXyz[1], rgb), z = matrixRow(kToXyz[2], rgb);
        out[0] = lightness<Units>(y);
        if (z == 0.0f) {
            out[1] = 0.0f;
            out[2] = 0.0f;
            return;
        }
        const float d = (x + 15.0f * y) + 3.0f * z;
        const float r = refinedReciprocal(d);
        const float l13 = 13.0f * out[0];
        out[1] = ((4.0f * x) * r - kUn) * l13;
        out[2] = ((9.0f * y) * r - kVn) * l13;
    }
};

// ---------------------------------------------------------------------------------
// Inverse: Y from L, u and v from U and V, then X, Z and the inverse matrix
// ---------------------------------------------------------------------------------

// The float kernel: true divisions by 116, 903.3, 13 L and v; the threshold of L for
// the cube 7.9996247; a v nearer 0 than 1.1920929e-07 moved by 9e-05.
struct InverseExact {
    static constexpr bool kReciprocal = false;
    static constexpr float kGuard = 1.1920929e-07f;
};
// The integer kernels: 1 / 116 by multiplication with 0.00862068962, 1 / (13 L) by the
// refined reciprocal; the guard of v is 1.1920929e-05.
struct InverseByReciprocal {
    static constexpr bool kReciprocal = true;
    static constexpr float kGuard = 1.1920929e-05f;
};
inline constexpr float kBlackBelow = 9e-05f;
inline constexpr float kCubeFrom = 7.9996247f;
inline constexpr float kInverse116 = 0.00862068962f;

// R, G, B from X, Y, Z in the order of the inverse matrix: (3.240479 X - 1.53715 Y) -
// 0.498535 Z, (1.875991 Y + -0.969256 X) + 0.041556 Z, (0.055648 X - 0.204043 Y) +
// 1.057311 Z.
template <class F>
PXK_INLINE Floats3<F> rgbOfXyz(F x, F y, F z) {
    const auto k = [](float v) { return splatF<F>(v); };
    Floats3<F> out;
    out.c[0] = subF(subF(mulF(k(kToRgb[0][0]), x), mulF(k(-kToRgb[0][1]), y)), mulF(k(-kToRgb[0][2]), z));
    out.c[1] = addF(addF(mulF(k(kToRgb[1][1]), y), mulF(k(kToRgb[1][0]), x)), mulF(k(kToRgb[1][2]), z));
    out.c[2] = addF(subF(mulF(k(kToRgb[2][0]), x), mulF(k(-kToRgb[2][1]), y)), mulF(k(kToRgb[2][2]), z));
    return out;
}
PXK_INLINE void rgbOfXyz(float x, float y, float z, float out[3]) {
    out[0] = (kToRgb[0][0] * x - -kToRgb[0][1] * y) - -kToRgb[0][2] * z;
    out[1] = (kToRgb[1][1] * y + kToRgb[1][0] * x) + kToRgb[1][2] * z;
    out[2] = (kToRgb[2][0] * x - -kToRgb[2][1] * y) + kToRgb[2][2] * z;
}

// L, U, V to linear R, G, B (unclamped); the caller forces black where L < 9e-05.
// CubeInDouble: the tails of the integer kernels work the square and the cube of
// (16 + L) / 116 in double.
template <class Kind>
struct Inverse {
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& luv) {
        const F l = luv.c[0];
        F base, l13r;
        if constexpr (Kind::kReciprocal) {
            base = mulF(addF(splatF<F>(16.0f), l), splatF<F>(kInverse116));
            l13r = refinedReciprocalF(mulF(splatF<F>(13.0f), l));
        } else {
            base = divF(addF(splatF<F>(16.0f), l), splatF<F>(116.0f));
        }
        const F cube = mulF(mulF(base, base), base);
        const F y = selectF(lessF(l, splatF<F>(kCubeFrom)), divF(l, splatF<F>(903.3f)), cube);
        F u, v;
        if constexpr (Kind::kReciprocal) {
            u = mulF(luv.c[1], l13r);
            v = addF(mulF(luv.c[2], l13r), splatF<F>(kVn));
        } else {
            const F l13 = mulF(splatF<F>(13.0f), l);
            u = divF(luv.c[1], l13);
            v = addF(divF(luv.c[2], l13), splatF<F>(kVn));
        }
        const F magnitude = andF(v, floatsOf(splat32<IntsOf<F>>(0x7FFFFFFF)));
        v = addF(v, andF(lessF(magnitude, splatF<F>(Kind::kGuard)), splatF<F>(kBlackBelow)));
        const F t = divF(y, v);
        const F x = mulF(mulF(addF(u, splatF<F>(kUn)), splatF<F>(2.25f)), t);
        const F z = subF(subF(mulF(t, splatF<F>(3.0f)), mulF(splatF<F>(5.0f), y)), divF(x, splatF<F>(3.0f)));
        return rgbOfXyz(x, y, z);
    }
    template <bool CubeInDouble = false>
    PXK_INLINE static void apply(const float luv[3], float out[3]) {
        const float l = luv[0];
        float base, l13r = 0.0f;
        if constexpr (Kind::kReciprocal) {
            base = (16.0f + l) * kInverse116;
            l13r = refinedReciprocal(13.0f * l);
        } else {
            base = (16.0f + l) / 116.0f;
        }
        float cube;
        if constexpr (CubeInDouble) {
            const double b = base;
            cube = static_cast<float>((b * b) * b);
        } else {
            cube = (base * base) * base;
        }
        const float y = l < kCubeFrom ? l / 903.3f : cube;
        float u, v;
        if constexpr (Kind::kReciprocal) {
            u = luv[1] * l13r;
            v = luv[2] * l13r + kVn;
        } else {
            u = luv[1] / (13.0f * l);
            v = luv[2] / (13.0f * l) + kVn;
        }
        if ((v < 0.0f ? -v : v) < Kind::kGuard) v += kBlackBelow;
        const float t = y / v;
        const float x = ((u + kUn) * 2.25f) * t;
        const float z = (t * 3.0f - 5.0f * y) - x / 3.0f;
        rgbOfXyz(x, y, z, out);
    }
};

// ---------------------------------------------------------------------------------
// Forward, 8-bit: single precision, the cube root by the double power routine
// (narrowed to float), true divisions; the results' low 8 bits. Every column takes the
// same arithmetic: the vector form runs it eight or sixteen pixels at a time (its
// divisions are the scalar ones, lane by lane, and the cube roots are taken lane by
// lane), and the scalar twin takes the columns past the last whole block.
// ---------------------------------------------------------------------------------

// L of a Y in 0..1.
PXK_INLINE float forward8uLightness(float y) {
    return y > UnitRange::kThreshold ? 116.0f * lab::labCubeRoot(y) - 16.0f : 903.3f * y;
}

struct Forward8u {
    PXK_INLINE static uint8_t lowByte(float v) { return static_cast<uint8_t>(static_cast<uint32_t>(truncToInt32(v)) & 0xFFu); }
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const float rgb[3] = {float(p.c[0]), float(p.c[1]), float(p.c[2])};
        const float x = matrixRow(kToXyz[0], rgb) / 255.0f, y = matrixRow(kToXyz[1], rgb) / 255.0f;
        const float l = forward8uLightness(y);
        float u = 0.0f, v = 0.0f;
        if (y != 0.0f) {
            const float z = matrixRow(kToXyz[2], rgb) / 255.0f;
            const float d = (z * 3.0f + x) + 15.0f * y;
            u = (4.0f * x) / d;
            v = (9.0f * y) / d;
        }
        const float l13 = 13.0f * l;
        return Pixel3{{lowByte((255.0f * l) / 100.0f), lowByte(((l13 * (u - kUn) + 134.0f) * 255.0f) / 354.0f + 0.5f),
                       lowByte(((l13 * (v - kVn) + 140.0f) * 255.0f) / 262.0f + 0.5f)}};
    }
};

// The vector twin of Forward8u, with the cube roots of labCubeRootLanes. Black (Y
// exactly 0) divides 0 by 0 in its lanes; the mask then gives u and v of 0 there, as
// the scalar form does.
struct Forward8uForm {
    static constexpr ToInteger kToInteger = ToInteger::TruncateLowByte;
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& rgb) {
        const F k255 = splatF<F>(255.0f);
        const F x = divF(matrixRow(kToXyz[0], rgb), k255), y = divF(matrixRow(kToXyz[1], rgb), k255);
        const F curve = lessF(splatF<F>(UnitRange::kThreshold), y);
        const F root = lab::labCubeRootLanes(y, curve);
        const F l = selectF(curve, subF(mulF(splatF<F>(116.0f), root), splatF<F>(16.0f)), mulF(splatF<F>(903.3f), y));
        const F z = divF(matrixRow(kToXyz[2], rgb), k255);
        const F d = addF(addF(mulF(z, splatF<F>(3.0f)), x), mulF(splatF<F>(15.0f), y));
        const F lit = notEqualF(y, zeroF<F>());
        const F u = andF(lit, divF(mulF(splatF<F>(4.0f), x), d));
        const F v = andF(lit, divF(mulF(splatF<F>(9.0f), y), d));
        const F l13 = mulF(splatF<F>(13.0f), l);
        const auto code = [&](F c, float offset, float range) PXK_LAMBDA_INLINE {
            const F scaled = mulF(addF(mulF(l13, c), splatF<F>(offset)), splatF<F>(255.0f));
            return addF(divF(scaled, splatF<F>(range)), splatF<F>(0.5f));
        };
        return Floats3<F>{{divF(mulF(splatF<F>(255.0f), l), splatF<F>(100.0f)),
                           code(subF(u, splatF<F>(kUn)), 134.0f, 354.0f), code(subF(v, splatF<F>(kVn)), 140.0f, 262.0f)}};
    }
};
using Forward8uBlock = HalvesBlock<Forward8uForm>;

// Where L < 9e-05: all ones (the pixel is black).
template <class F>
PXK_INLINE F blackMask(F l) {
    return lessF(l, splatF<F>(kBlackBelow));
}

}  // namespace luv
}  // namespace colorimetric
}  // namespace pxk
