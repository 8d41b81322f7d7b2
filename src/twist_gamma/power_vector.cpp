// The vector power routine: the dispatch on the exponent's bits, the paths of the
// special exponents, the general path in groups of 16 elements and its fallback, all
// inside the default floating-point state.
#include "twist_gamma/power_vector.h"

#include <cmath>
#include <cstring>

#include "frame/vec_float.h"
#include "twist_gamma/power_core.h"
#include "twist_gamma/power_state.h"

namespace pxk {

namespace {

using vec::Widest;
using F = vec::FloatOf<Widest>;
constexpr int32_t kFloatLanes = sizeof(F) / sizeof(float);
#if defined(PXKCC_TARGET_AVX2)
using D = vec::D256;
#else
using D = vec::D128;
#endif
constexpr int32_t kDoubleLanes = sizeof(D) / sizeof(double);
constexpr int32_t kGroup = 16;

// Reporting hook: called with the name of the operation and the operands of an element
// that left the domain of the fast arithmetic. It does nothing in this library; it is
// the one place where such a report would go.
PXK_INLINE void reportPowerElement(const char* /*name*/, float /*x*/, float /*y*/, float /*result*/) {}

// ---------------------------------------------------------------------------------
// Special exponents: one elementwise operation each, the same IEEE operations in the
// vector blocks and in the scalar twin for the last len % kFloatLanes elements.
// ---------------------------------------------------------------------------------

PXK_INLINE float squareRoot(float x) { return std::sqrt(x); }
template <class T>
PXK_INLINE T squareRoot(T x) {
    return vec::sqrtF(x);
}

// x^N for N >= 1 by binary powering: x^2n = (x^n)^2, x^(2n+1) = x^2n * x, each
// product rounded to float (x^3 = x^2 * x, x^6 = x^3 * x^3, x^9 = x^8 * x).
template <int N, class T>
PXK_INLINE T integerPower(T x) {
    if constexpr (N == 1) {
        return x;
    } else if constexpr (N % 2 == 0) {
        const T h = integerPower<N / 2>(x);
        return h * h;
    } else {
        return integerPower<N - 1>(x) * x;
    }
}

template <int N>
struct IntegerPower {
    static constexpr const char* kName = "pow";
    template <class T>
    PXK_INLINE static T apply(T x) {
        return integerPower<N>(x);
    }
};
template <int N>
struct InverseIntegerPower {
    static constexpr const char* kName = N == 1 ? "vsInv" : "pow";
    template <class T>
    PXK_INLINE static T apply(T x) {
        return power::splat<T>(1.0) / integerPower<N>(x);
    }
};
struct SquareRoot {
    static constexpr const char* kName = "vsSqrt";
    template <class T>
    PXK_INLINE static T apply(T x) {
        return squareRoot(x);
    }
};
struct InverseSquareRoot {
    static constexpr const char* kName = "vsInvSqrt";
    template <class T>
    PXK_INLINE static T apply(T x) {
        return power::splat<T>(1.0) / squareRoot(x);
    }
};
struct ThreeHalves {
    static constexpr const char* kName = "vsPow3o2";
    template <class T>
    PXK_INLINE static T apply(T x) {
        return x * squareRoot(x);
    }
};

// An element whose result left the finite numbers (a pole, a domain error or an
// overflow) is reported under the path's name.
template <class Path>
void runPath(const float* src, float exponent, float* dst, int32_t len) {
    int32_t i = 0;
    for (; i + kFloatLanes <= len; i += kFloatLanes) vec::storeF(dst + i, Path::apply(vec::loadF<F>(src + i)));
    for (; i < len; ++i) dst[i] = Path::apply(src[i]);
    for (i = 0; i < len; ++i) {
        if (!std::isfinite(dst[i])) reportPowerElement(Path::kName, dst[i], exponent, dst[i]);
    }
}

// ---------------------------------------------------------------------------------
// General path
// ---------------------------------------------------------------------------------

// The usual rules of a power function, in double, for one element.
PXK_INLINE float fallback(float x, float y) {
    const float r = static_cast<float>(std::pow(static_cast<double>(x), static_cast<double>(y)));
    reportPowerElement("pow", x, y, r);
    return r;
}

// One group of 16 elements (the last group may be shorter: count elements). The table
// lookup is made element by element, all the rest in vector arithmetic; the elements
// outside the positive normal floats are marked, computed as 1 in the group, and then
// replaced by the fallback under one test of the group's marks.
void generalGroup(const float* src, float y, float* dst, int32_t count) {
    alignas(32) double m[kGroup], c[kGroup], base[kGroup];
    alignas(32) float x[kGroup], out[kGroup];
    uint32_t marks = 0;
    for (int32_t j = 0; j < kGroup; ++j) {
        x[j] = j < count ? src[j] : 1.0f;
        uint32_t bits;
        std::memcpy(&bits, &x[j], sizeof bits);
        if (!power::isPositiveNormal(bits)) {
            marks |= 1u << j;
            bits = 0x3F800000u;
        }
        const power::PowerArgument a = power::splitArgument(bits);
        m[j] = a.m;
        c[j] = a.c;
        base[j] = a.base;
    }
    constexpr int kVectors = kGroup / kDoubleLanes;
    D mv[kVectors], cv[kVectors], bv[kVectors], result[kVectors];
    PXK_UNROLL
    for (int k = 0; k < kVectors; ++k) {
        mv[k] = vec::loadD<D>(m + k * kDoubleLanes);
        cv[k] = vec::loadD<D>(c + k * kDoubleLanes);
        bv[k] = vec::loadD<D>(base + k * kDoubleLanes);
    }
    power::powerOfParts(mv, cv, bv, static_cast<double>(y), result);
    PXK_UNROLL
    for (int k = 0; k < kVectors; ++k) vec::storeNarrowedD(out + k * kDoubleLanes, result[k]);
    if (marks != 0) {
        for (int32_t j = 0; j < count; ++j) {
            if (marks & (1u << j)) out[j] = fallback(x[j], y);
        }
    }
    std::memcpy(dst, out, sizeof(float) * static_cast<std::size_t>(count));
}

void runGeneral(const float* src, float y, float* dst, int32_t len) {
    if (!std::isfinite(y)) {
        for (int32_t i = 0; i < len; ++i) dst[i] = fallback(src[i], y);
        return;
    }
    for (int32_t i = 0; i < len; i += kGroup) generalGroup(src + i, y, dst + i, len - i < kGroup ? len - i : kGroup);
}

void runOnes(float* dst, int32_t len) {
    for (int32_t i = 0; i < len; ++i) dst[i] = 1.0f;
}

void runCopy(const float* src, float* dst, int32_t len) {
    if (src != dst) std::memmove(dst, src, sizeof(float) * static_cast<std::size_t>(len));
}

// The exponents with a path of their own (besides 0 and 1), by their bits.
struct SpecialExponent {
    uint32_t bits;
    void (*run)(const float*, float, float*, int32_t);
};
constexpr SpecialExponent kSpecialExponents[] = {
    {0x40000000u, runPath<IntegerPower<2>>},        {0x40400000u, runPath<IntegerPower<3>>},
    {0x40800000u, runPath<IntegerPower<4>>},        {0x40A00000u, runPath<IntegerPower<5>>},
    {0x40C00000u, runPath<IntegerPower<6>>},        {0x40E00000u, runPath<IntegerPower<7>>},
    {0x41000000u, runPath<IntegerPower<8>>},        {0x41100000u, runPath<IntegerPower<9>>},
    {0xBF800000u, runPath<InverseIntegerPower<1>>}, {0xC0000000u, runPath<InverseIntegerPower<2>>},
    {0xC0400000u, runPath<InverseIntegerPower<3>>}, {0xC0800000u, runPath<InverseIntegerPower<4>>},
    {0x3F000000u, runPath<SquareRoot>},             {0xBF000000u, runPath<InverseSquareRoot>},
    {0x3FC00000u, runPath<ThreeHalves>},  // 2 to 9, -1 to -4, 0.5, -0.5, 1.5
};

// The dispatch on the exponent's exact bits. Kept out of line, so that no arithmetic
// is moved across the state changes around it.
__attribute__((noinline)) void dispatch(const float* src, float exponent, float* dst, int32_t len) {
    uint32_t bits;
    std::memcpy(&bits, &exponent, sizeof bits);
    if ((bits & 0x7FFFFFFFu) == 0) return runOnes(dst, len);  // +0 and -0
    if (bits == 0x3F800000u) return runCopy(src, dst, len);   // 1
    for (const SpecialExponent& special : kSpecialExponents) {
        if (bits == special.bits) return special.run(src, exponent, dst, len);
    }
    runGeneral(src, exponent, dst, len);
}

int32_t vectorPowWithDefaultState(const float* pSrc, float exponent, float* pDst, int32_t len) {
    const power::DefaultFloatState state;
    dispatch(pSrc, exponent, pDst, len);
    return 0;
}

}  // namespace

const PxkVectorPowFn pxkVectorPowTable[1] = {vectorPowWithDefaultState};

int32_t pxkVectorPow(const float* pSrc, float exponent, float* pDst, int32_t len) {
    return pxkVectorPowTable[0](pSrc, exponent, pDst, len);
}

}  // namespace pxk
