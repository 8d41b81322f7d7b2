// The arithmetic of RGB <-> CIE Lab (D65 white). Forward: the matrix sums, the white
// point, then the cube-root curve with its linear foot, each cube root one double power
// call made only above the threshold (see lab_cube_root.h), one pixel at a time.
// Backward: cubes, no threshold, no clamp, no linear foot.
//
// The forms are written once over their element type with the ordinary operators:
// T is float or double for a scalar pixel, or a vector of floats or doubles (the
// compiler's vector extensions give the operators on F128/F256/D128/D256, one
// instruction an operation, in the order written; a scalar operand is taken in every
// lane). Every operation rounds once (the build never contracts a multiply and an add),
// so a vector lane and the scalar twin give the same bits.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <type_traits>

#include "colorimetric/float_columns.h"
#include "colorimetric/lab_cube_root.h"
#include "frame/pixel_block.h"
#include "frame/samples.h"
#include "frame/vec_float.h"

namespace pxk {
namespace colorimetric {
namespace lab {

// ---------------------------------------------------------------------------------
// Constants
// ---------------------------------------------------------------------------------

// The RGB -> XYZ matrix, rows X, Y, Z, columns R, G, B. Float kernels hold the float
// nearest each decimal, the double kernel the double nearest it.
template <class T>
struct ForwardMatrix {
    static constexpr T k[3][3] = {{T(0.412453), T(0.35758), T(0.180423)},
                                  {T(0.212671), T(0.71516), T(0.072169)},
                                  {T(0.019334), T(0.119193), T(0.950227)}};
};

// The XYZ -> RGB matrix, rows R, G, B, as floats; the double kernel holds these floats
// widened (3.240478992462158, ...), so its precision stops at the float constants. The
// white point of the backward cubes likewise.
inline constexpr float kInverseMatrix[3][3] = {{3.240479f, -1.53715f, -0.498535f},
                                               {-0.969256f, 1.875991f, 0.041556f},
                                               {0.055648f, -0.204043f, 1.057311f}};
inline constexpr float kWhiteX = 0.950456f;
inline constexpr float kWhiteZ = 1.088754f;

// The white point of the forward float and double kernels: divided in double by the
// decimals to nine places.
inline constexpr double kForwardWhiteX = 0.950456023;
inline constexpr double kForwardWhiteZ = 1.08875394;

// The 8-bit kernels fold the white point and the 255 range into one divisor each.
inline constexpr float kDivisor8uX = 242.365997f;
inline constexpr float kDivisor8uY = 255.0f;
inline constexpr float kDivisor8uZ = 277.631989f;

// The curve in the kernel's precision: the threshold is compared as a T. The offset
// 16/116 is 0.137931034 in float kernels and 0.13793103448275862 in the double kernel.
template <class T>
struct Curve {
    static constexpr T kThreshold = T(0.008856);
    static constexpr T kSlope = T(7.787);
    static constexpr T kOffset = std::is_same_v<T, float> ? T(0.137931034f) : T(0.13793103448275862);
    static constexpr T kScale = T(903.3);
};
static_assert(Curve<float>::kThreshold == 0.008856f && Curve<float>::kSlope == 7.787f && Curve<float>::kScale == 903.3f,
              "the float constants are the floats nearest their decimals");

// ---------------------------------------------------------------------------------
// Forward, one pixel
// ---------------------------------------------------------------------------------

template <class T>
struct Lab {
    T l, a, b;
};

// One row of the forward matrix applied to a pixel, blue term first whatever the order
// of the channels in memory: (kB * B + kG * G) + kR * R.
template <class T>
PXK_INLINE T matrixRow(int row, T r, T g, T b) {
    const auto& k = ForwardMatrix<T>::k;
    return (k[row][2] * b + k[row][1] * g) + k[row][0] * r;
}

// min(1, v) with a NaN passed through.
template <class T>
PXK_INLINE T atMostOne(T v) {
    return T(1) < v ? T(1) : v;
}

// The curve of one coordinate: its cube root above the threshold, the linear foot at
// and below it (and for NaN).
template <class T>
PXK_INLINE T curveOf(T v) {
    return v > Curve<T>::kThreshold ? labCubeRoot(v) : Curve<T>::kSlope * v + Curve<T>::kOffset;
}

// L, a and b of white-relative X, Y, Z.
template <class T>
PXK_INLINE Lab<T> labOfXyz(T x, T y, T z) {
    T fy, l;
    if (y > Curve<T>::kThreshold) {
        fy = labCubeRoot(y);
        l = T(116) * fy - T(16);
    } else {
        l = Curve<T>::kScale * y;
        fy = Curve<T>::kSlope * y + Curve<T>::kOffset;
    }
    const T fx = curveOf(x), fz = curveOf(z);
    return Lab<T>{l, T(500) * (fx - fy), T(200) * (fy - fz)};
}

// Float and double samples: X and Z divided in double by the white point, and all
// three limited to at most 1.
PXK_INLINE Lab<float> labOfRgb(float r, float g, float b) {
    const float x = atMostOne(static_cast<float>(static_cast<double>(matrixRow(0, r, g, b)) / kForwardWhiteX));
    const float y = atMostOne(matrixRow(1, r, g, b));
    const float z = atMostOne(static_cast<float>(static_cast<double>(matrixRow(2, r, g, b)) / kForwardWhiteZ));
    return labOfXyz(x, y, z);
}
PXK_INLINE Lab<double> labOfRgb(double r, double g, double b) {
    const double x = atMostOne(matrixRow(0, r, g, b) / kForwardWhiteX);
    const double y = atMostOne(matrixRow(1, r, g, b));
    const double z = atMostOne(matrixRow(2, r, g, b) / kForwardWhiteZ);
    return labOfXyz(x, y, z);
}

// 8-bit samples: the folded divisors in float, no upper limit.
PXK_INLINE Lab<float> labOfRgb8u(uint8_t r8, uint8_t g8, uint8_t b8) {
    const float r = r8, g = g8, b = b8;
    return labOfXyz(matrixRow(0, r, g, b) / kDivisor8uX, matrixRow(1, r, g, b) / kDivisor8uY,
                    matrixRow(2, r, g, b) / kDivisor8uZ);
}

// Integer results keep the low bits of the truncated value: no saturation.
template <class Sample>
PXK_INLINE Sample lowBitsOfTruncated(float v) {
    return static_cast<Sample>(static_cast<uint32_t>(truncToInt32(v)));
}

// The 8-bit codes of a Lab value, each multiplication and division a step
// of its own.
struct LabTo8u {
    using Sample = uint8_t;
    PXK_INLINE static void store(const Lab<float>& v, uint8_t* out) {
        out[0] = lowBitsOfTruncated<uint8_t>(v.l * 255.0f / 100.0f + 0.5f);
        out[1] = lowBitsOfTruncated<uint8_t>(v.a + 128.5f);
        out[2] = lowBitsOfTruncated<uint8_t>(v.b + 128.5f);
    }
};
// ---------------------------------------------------------------------------------
// Forward over vectors of floats: every lane as labOfXyz, the cube roots by
// labCubeRootLanes for the lanes above the threshold, the linear foot for the others.
// ---------------------------------------------------------------------------------

template <class F>
PXK_INLINE Lab<F> labOfXyzLanes(F x, F y, F z) {
    using C = Curve<float>;
    const F threshold = splatF<F>(C::kThreshold);
    const auto curve = [&](F v, F above, F root) PXK_LAMBDA_INLINE {
        return selectF(above, root, addF(mulF(splatF<F>(C::kSlope), v), splatF<F>(C::kOffset)));
    };
    const F aboveX = lessF(threshold, x), aboveY = lessF(threshold, y), aboveZ = lessF(threshold, z);
    const F rootY = labCubeRootLanes(y, aboveY);
    const F fy = curve(y, aboveY, rootY);
    const F l = selectF(aboveY, subF(mulF(splatF<F>(116.0f), rootY), splatF<F>(16.0f)), mulF(splatF<F>(C::kScale), y));
    const F fx = curve(x, aboveX, labCubeRootLanes(x, aboveX));
    const F fz = curve(z, aboveZ, labCubeRootLanes(z, aboveZ));
    return Lab<F>{l, mulF(splatF<F>(500.0f), subF(fx, fy)), mulF(splatF<F>(200.0f), subF(fy, fz))};
}

// One row of the forward matrix over lanes, blue term first as matrixRow, each add
// with its first operand fixed (so that two NaN operands give the same payload in
// every build).
template <class F>
PXK_INLINE F matrixRowLanes(int row, F r, F g, F b) {
    const auto& k = ForwardMatrix<float>::k[row];
    return addOrderedF(addOrderedF(mulF(splatF<F>(k[2]), b), mulF(splatF<F>(k[1]), g)), mulF(splatF<F>(k[0]), r));
}

// Float RGB to Lab over lanes, as labOfRgb: X and Z divided by the white point in
// double, all three limited to at most 1 (the least of 1 and v, NaN passed through).
template <class F>
PXK_INLINE Lab<F> labOfRgbLanes(F r, F g, F b) {
    using D = cube_root::DoublesOf<F>;
    const auto byWhite = [](F v, double white) PXK_LAMBDA_INLINE {
        D d[2];
        cube_root::widen(v, d);
        d[0] = divD(d[0], splatD<D>(white));
        d[1] = divD(d[1], splatD<D>(white));
        return cube_root::narrow(d);
    };
    const F one = splatF<F>(1.0f);
    return labOfXyzLanes(minF(one, byWhite(matrixRowLanes(0, r, g, b), kForwardWhiteX)),
                         minF(one, matrixRowLanes(1, r, g, b)),
                         minF(one, byWhite(matrixRowLanes(2, r, g, b), kForwardWhiteZ)));
}

// Float RGB (or BGR) to Lab for the float rows: every column by the vector form.
template <bool Bgr>
struct ToLab32f {
    static constexpr bool kTail = false;
    template <class F>
    PXK_INLINE static Floats3<F> block(const Floats3<F>& in) {
        const Lab<F> v = labOfRgbLanes(in.c[Bgr ? 2 : 0], in.c[1], in.c[Bgr ? 0 : 2]);
        return Floats3<F>{{v.l, v.a, v.b}};
    }
};

// 8-bit RGB to 8-bit Lab codes: the vector form (all columns alike, so any block
// split gives the same bytes) and its scalar twin.
// Lab of 8-bit R, G, B lanes, as labOfRgb8u.
template <class F>
PXK_INLINE Lab<F> labOfRgb8uLanes(F r, F g, F b) {
    return labOfXyzLanes(divF(matrixRowLanes(0, r, g, b), splatF<F>(kDivisor8uX)),
                         divF(matrixRowLanes(1, r, g, b), splatF<F>(kDivisor8uY)),
                         divF(matrixRowLanes(2, r, g, b), splatF<F>(kDivisor8uZ)));
}

struct ToLab8uForm {
    static constexpr ToInteger kToInteger = ToInteger::TruncateLowByte;
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& rgb) {
        const Lab<F> v = labOfRgb8uLanes(rgb.c[0], rgb.c[1], rgb.c[2]);
        return Floats3<F>{{addF(divF(mulF(v.l, splatF<F>(255.0f)), splatF<F>(100.0f)), splatF<F>(0.5f)),
                           addF(v.a, splatF<F>(128.5f)), addF(v.b, splatF<F>(128.5f))}};
    }
};

// 8-bit BGR to 16-bit Lab codes, L 65535 / 100, (a + 128) 255 and (b + 128) 255, each
// product and quotient a step of its own, truncated, the low 16 bits stored (no
// saturation); for the float rows, every column by the vector form.
struct ToLab16uFrom8u {
    static constexpr bool kTail = false;
    template <class F>
    PXK_INLINE static auto block(const Floats3<F>& bgr) {
        const Lab<F> v = labOfRgb8uLanes(bgr.c[2], bgr.c[1], bgr.c[0]);
        using V = decltype(bitsOf(F{}));
        return Lanes3<V>{{truncToInt(divF(mulF(v.l, splatF<F>(65535.0f)), splatF<F>(100.0f))),
                          truncToInt(mulF(addF(v.a, splatF<F>(128.0f)), splatF<F>(255.0f))),
                          truncToInt(mulF(addF(v.b, splatF<F>(128.0f)), splatF<F>(255.0f)))}};
    }
};
using ToLab8uBlock = HalvesBlock<ToLab8uForm>;
struct ToLab8uPixel {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        uint8_t out[3];
        LabTo8u::store(labOfRgb8u(p.c[0], p.c[1], p.c[2]), out);
        return Pixel3{{out[0], out[1], out[2]}};
    }
};

// ---------------------------------------------------------------------------------
// Backward
// ---------------------------------------------------------------------------------

template <class T>
struct Rgb {
    T c[3];  // R, G, B
};

// X, Y, Z of fx, fy, fz by the cubes: ((w * f) * f) * f, with `scale` the white
// point's (or the 8-bit divisor's) X and Z and yScale Y's (1 when there is none).
template <class T, class S>
PXK_INLINE Rgb<T> rgbOfCubes(T fx, T fy, T fz, S xScale, S yScale, S zScale, S half) {
    const T x = ((xScale * fx) * fx) * fx;
    const T y = ((yScale * fy) * fy) * fy;
    const T z = ((zScale * fz) * fz) * fz;
    Rgb<T> out;
    PXK_UNROLL
    for (int row = 0; row < 3; ++row) {
        const S k0 = S(kInverseMatrix[row][0]), k1 = S(kInverseMatrix[row][1]), k2 = S(kInverseMatrix[row][2]);
        out.c[row] = ((k0 * x + half) + k1 * y) + k2 * z;
    }
    return out;
}
// Without the rounding term: R = (k0 X + k1 Y) + k2 Z.
template <class T, class S>
PXK_INLINE Rgb<T> rgbOfCubes(T fx, T fy, T fz, S xScale, S zScale) {
    const T x = ((xScale * fx) * fx) * fx;
    const T y = (fy * fy) * fy;
    const T z = ((zScale * fz) * fz) * fz;
    Rgb<T> out;
    PXK_UNROLL
    for (int row = 0; row < 3; ++row) {
        const S k0 = S(kInverseMatrix[row][0]), k1 = S(kInverseMatrix[row][1]), k2 = S(kInverseMatrix[row][2]);
        out.c[row] = (k0 * x + k1 * y) + k2 * z;
    }
    return out;
}

// Float and double Lab: fy = (L + 16) / 116, fx = a / 500 + fy, fz = fy - b / 200,
// then the cubes with the white point. S is the scalar type (float or double) of T.
template <class S, class T>
PXK_INLINE Rgb<T> rgbOfLab(T l, T a, T b) {
    const T fy = (l + S(16)) / S(116);
    const T fx = a / S(500) + fy;
    const T fz = fy - b / S(200);
    return rgbOfCubes(fx, fy, fz, S(kWhiteX), S(kWhiteZ));
}

// The 8-bit backward form. Div divides by one of the constants 255, 500, 200, 116 and
// 65535: by true division in the tail, by a multiplication with the refined reciprocal
// in the main loop. Source maps the codes to fy, fx, fz by the member's steps 1 to 3.
struct Lab8uCodes {
    // fy = (l * 100 / 255 + 16) / 116, fx = (a - 128) / 500 + fy (the subtraction on
    // the integer code, exact in float), fz = fy - (b - 128) / 200.
    template <class T, class Div>
    PXK_INLINE static void curves(T l, T a, T b, const Div& div, T& fx, T& fy, T& fz) {
        fy = div(div(l * 100.0f, 255) + 16.0f, 116);
        fx = div(a - 128.0f, 500) + fy;
        fz = fy - div(b - 128.0f, 200);
    }
};
struct Lab16uCodes {
    // fy = (l * 100 / 65535 + 16) / 116, fx = (a / 255 - 128) / 500 + fy,
    // fz = fy - (b / 255 - 128) / 200.
    template <class T, class Div>
    PXK_INLINE static void curves(T l, T a, T b, const Div& div, T& fx, T& fy, T& fz) {
        fy = div(div(l * 100.0f, 65535) + 16.0f, 116);
        fx = div(div(a, 255) - 128.0f, 500) + fy;
        fz = fy - div(div(b, 255) - 128.0f, 200);
    }
};

// R, G, B of integer Lab codes before truncation: the cubes scaled by the 8-bit
// divisors, and the 0.5 rounding term added to the first product.
template <class Codes, class T, class Div>
PXK_INLINE Rgb<T> rgbOfCodes(T l, T a, T b, const Div& div) {
    T fx, fy, fz;
    Codes::curves(l, a, b, div, fx, fy, fz);
    return rgbOfCubes(fx, fy, fz, kDivisor8uX, kDivisor8uY, kDivisor8uZ, 0.5f);
}

// True division (the tails).
struct TrueDivision {
    template <class T>
    PXK_INLINE T operator()(T v, int divisor) const {
        return v / static_cast<float>(divisor);
    }
};

// Multiplication by the processor's approximate reciprocal of the divisor refined once,
// 2 r - x r r (the main loops); formed once a row.
struct ReciprocalDivision {
    float r255, r500, r200, r116, r65535;
    static ReciprocalDivision make() {
        return ReciprocalDivision{refinedReciprocal(255.0f), refinedReciprocal(500.0f), refinedReciprocal(200.0f),
                                  refinedReciprocal(116.0f), refinedReciprocal(65535.0f)};
    }
    template <class T>
    PXK_INLINE T operator()(T v, int divisor) const {
        return v * (divisor == 255 ? r255 : divisor == 500 ? r500 : divisor == 200 ? r200 : divisor == 116 ? r116 : r65535);
    }
};

// The 8-bit backward members in the shared 8-bit row kernel: Block converts the
// columns below width - width % 4 (16-bit lanes widened to floats, the main loop's
// reciprocals, truncated and saturated by the layout's store), Tail the rest (true
// divisions, truncated, limited to 0..255).
struct LabToRgb8uBlock {
    struct Form {
        static constexpr ToInteger kToInteger = ToInteger::TruncateSaturate;
        template <class F>
        PXK_INLINE static Floats3<F> apply(const Floats3<F>& lab) {
            const Rgb<F> rgb = rgbOfCodes<Lab8uCodes>(lab.c[0], lab.c[1], lab.c[2], ReciprocalDivision::make());
            return Floats3<F>{{rgb.c[0], rgb.c[1], rgb.c[2]}};
        }
    };
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        return applyToHalves<Form>(v);
    }
};
// Truncated toward zero, then limited to 0..255.
PXK_INLINE uint8_t truncatedTo8u(int32_t t) { return static_cast<uint8_t>(t < 0 ? 0 : (t > 255 ? 255 : t)); }
PXK_INLINE uint8_t limited(float v) { return truncatedTo8u(truncToInt32(v)); }

struct LabToRgb8uTail {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const Rgb<float> rgb = rgbOfCodes<Lab8uCodes>(static_cast<float>(p.c[0]), static_cast<float>(p.c[1]),
                                                      static_cast<float>(p.c[2]), TrueDivision{});
        return Pixel3{{limited(rgb.c[0]), limited(rgb.c[1]), limited(rgb.c[2])}};
    }
};

}  // namespace lab
}  // namespace colorimetric
}  // namespace pxk
