// The power routines: accuracy against long double over many arguments, the special
// values, the exponent dispatch of the vector routine, and its handling of the
// caller's floating-point state.
#include <gtest/gtest.h>

#include <xmmintrin.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "random.h"
#include "sweep.h"
#include "twist_gamma/power_scalar.h"
#include "twist_gamma/power_vector.h"

namespace {

using pxktest::Rng;

uint32_t bitsOf(float v) {
    uint32_t b;
    std::memcpy(&b, &v, sizeof b);
    return b;
}
float floatOf(uint32_t b) {
    float v;
    std::memcpy(&v, &b, sizeof v);
    return v;
}

// (long double pow is itself good to a few of its own ulps, 2^-11 of a double's: the
// double bounds below leave room for that, and for the 0.52 ulp that the platform's
// pow promises for arguments far from 1.)
// Distance of `got` from the exact value, in units in the last place of a float at
// the exact value. A correctly rounded result is within 0.5.
long double floatUlps(float got, long double exact) {
    const long double a = std::fabs(exact);
    int e;
    std::frexp(static_cast<double>(a), &e);
    long double ulp = std::ldexp(1.0L, e - 24);
    if (ulp < std::ldexp(1.0L, -149)) ulp = std::ldexp(1.0L, -149);
    return std::fabs(static_cast<long double>(got) - exact) / ulp;
}

long double doubleUlps(double got, long double exact) {
    int e;
    std::frexp(static_cast<double>(std::fabs(exact)), &e);
    const long double ulp = std::ldexp(1.0L, e - 53);
    return std::fabs(static_cast<long double>(got) - exact) / ulp;
}

// Positive normal floats spread over the whole exponent range and over [0, 1].
std::vector<float> sampleArguments(uint32_t seed, int count) {
    Rng rng(seed);
    std::vector<float> v;
    for (int i = 0; i < count; ++i) {
        if (i % 2 == 0) {
            v.push_back(floatOf(static_cast<uint32_t>(rng.uniform(0x00800000, 0x7F7FFFFF))));
        } else {
            v.push_back(static_cast<float>(rng.unit() * 0.999 + 0.0005));
        }
    }
    return v;
}

int sampleCount() { return pxktest::kLightSweep ? 20000 : 400000; }

// Arguments whose result stays a normal float for exponent y.
bool resultIsNormal(float x, float y) {
    const long double r = std::pow(static_cast<long double>(x), static_cast<long double>(y));
    return r > 1.2e-38L && r < 3.3e38L;
}

// ---------------------------------------------------------------------------------
// pxkScalarPow
// ---------------------------------------------------------------------------------

TEST(ScalarPow, WithinHalfAnUlpOfADouble) {
    Rng rng(11);
    const int n = sampleCount() / 4;
    for (int i = 0; i < n; ++i) {
        const double x = std::ldexp(1.0 + rng.unit(), static_cast<int>(rng.uniform(-300, 300)));
        const double y = (rng.unit() - 0.5) * 4.0;
        const long double exact = std::pow(static_cast<long double>(x), static_cast<long double>(y));
        ASSERT_LE(doubleUlps(pxk::pxkScalarPow(x, y), exact), 0.52L) << x << " ^ " << y;
    }
}

TEST(ScalarPow, CubeRootNarrowsToTheCorrectlyRoundedFloat) {
    const double third = 0.3333333333333333;
    ASSERT_EQ(std::memcmp(&third, "\x55\x55\x55\x55\x55\x55\xD5\x3F", 8), 0);
    Rng rng(12);
    const int n = sampleCount() / 4;
    for (int i = 0; i < n; ++i) {
        const double x = static_cast<double>(static_cast<float>(rng.unit()));
        const long double exact = std::pow(static_cast<long double>(x), static_cast<long double>(third));
        const double got = pxk::pxkScalarPow(x, third);
        ASSERT_LE(doubleUlps(got, exact), 0.505L) << x;
        EXPECT_EQ(static_cast<float>(got), static_cast<float>(exact)) << x;
    }
    EXPECT_EQ(pxk::pxkScalarPow(0.125, third), 0.5);  // 0.5 * 8^(third - 1/3) = 0.5 + 1.9e-17
    EXPECT_EQ(pxk::pxkScalarPow(1.0, third), 1.0);
    EXPECT_EQ(pxk::pxkScalarPow(0.0, third), 0.0);
}

TEST(ScalarPow, SpecialValues) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(pxk::pxkScalarPow(nan, 0.0), 1.0);
    EXPECT_TRUE(std::isnan(pxk::pxkScalarPow(-2.0, 0.5)));
    EXPECT_EQ(pxk::pxkScalarPow(-2.0, 3.0), -8.0);
    EXPECT_EQ(pxk::pxkScalarPow(0.0, -1.0), inf);
    EXPECT_EQ(pxk::pxkScalarPow(inf, 0.5), inf);
    EXPECT_EQ(pxk::pxkScalarPow(2.0, 2000.0), inf);
    EXPECT_EQ(pxk::pxkScalarPow(2.0, -2000.0), 0.0);
}

// ---------------------------------------------------------------------------------
// pxkScalarPowf and the general path of pxkVectorPow: both correctly rounded to
// float but for values within a hair of a tie.
// ---------------------------------------------------------------------------------

const float kExponents[] = {0.45f, 2.22222233f, 0.3333333f, -1.7f, 3.5f, 0.1f, -0.45f, 12.25f};

TEST(ScalarPowf, CorrectlyRoundedOverManyArguments) {
    for (float y : kExponents) {
        const std::vector<float> xs = sampleArguments(pxktest::seedFor("powf", {bitsOf(y)}), sampleCount() / 8);
        for (float x : xs) {
            if (!resultIsNormal(x, y)) continue;
            const long double exact = std::pow(static_cast<long double>(x), static_cast<long double>(y));
            ASSERT_LE(floatUlps(pxk::pxkScalarPowf(x, y), exact), 0.50001L) << x << " ^ " << y;
        }
    }
}

TEST(ScalarPowf, SpecialValues) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(pxk::pxkScalarPowf(0.0f, 0.45f), 0.0f);
    EXPECT_EQ(pxk::pxkScalarPowf(1.0f, 0.45f), 1.0f);
    EXPECT_TRUE(std::isnan(pxk::pxkScalarPowf(-0.5f, 2.22222233f)));
    EXPECT_EQ(pxk::pxkScalarPowf(-2.0f, 3.0f), -8.0f);
    EXPECT_EQ(pxk::pxkScalarPowf(nan, 0.0f), 1.0f);
    EXPECT_EQ(pxk::pxkScalarPowf(inf, 0.45f), inf);
    EXPECT_EQ(pxk::pxkScalarPowf(0.0f, -1.0f), inf);
    EXPECT_EQ(pxk::pxkScalarPowf(1e30f, 10.5f), inf);
    EXPECT_EQ(pxk::pxkScalarPowf(1e-30f, 10.5f), 0.0f);
    // A denormal argument: 2^-140 ^ 0.5 = 2^-70.
    EXPECT_EQ(pxk::pxkScalarPowf(std::ldexp(1.0f, -140), 0.5f), std::ldexp(1.0f, -70));
    EXPECT_EQ(pxk::pxkScalarPowf(4.0f, 0.5f), 2.0f);
    EXPECT_EQ(pxk::pxkScalarPowf(2.0f, 10.0f), 1024.0f);
}

std::vector<float> vectorPow(const std::vector<float>& src, float y) {
    std::vector<float> dst(src.size(), -7.0f);
    EXPECT_EQ(pxk::pxkVectorPow(src.data(), y, dst.data(), static_cast<int32_t>(src.size())), 0);
    return dst;
}

TEST(VectorPow, GeneralPathCorrectlyRounded) {
    for (float y : kExponents) {
        const std::vector<float> xs = sampleArguments(pxktest::seedFor("vpow", {bitsOf(y)}), sampleCount() / 8);
        const std::vector<float> out = vectorPow(xs, y);
        for (std::size_t i = 0; i < xs.size(); ++i) {
            if (!resultIsNormal(xs[i], y)) continue;
            const long double exact = std::pow(static_cast<long double>(xs[i]), static_cast<long double>(y));
            ASSERT_LE(floatUlps(out[i], exact), 0.50001L) << xs[i] << " ^ " << y;
        }
    }
}

// Every length up to 40 and the longest the callers use, in place and not: each
// element gets what it gets alone, and nothing past len is written.
TEST(VectorPow, EveryLengthAndInPlace) {
    const std::vector<float> xs = sampleArguments(5, 384);
    for (int len = 1; len <= 384; len = len < 40 ? len + 1 : 384 + (len == 384)) {
        if (len > 384) break;
        std::vector<float> src(xs.begin(), xs.begin() + len);
        src[static_cast<std::size_t>(len) / 2] = -1.0f;  // one element through the fallback
        std::vector<float> dst(static_cast<std::size_t>(len) + 8, 99.0f);
        pxk::pxkVectorPow(src.data(), 0.45f, dst.data(), len);
        std::vector<float> inPlace = src;
        pxk::pxkVectorPow(inPlace.data(), 0.45f, inPlace.data(), len);
        for (int i = 0; i < len; ++i) {
            float alone = 0.0f;
            pxk::pxkVectorPow(&src[static_cast<std::size_t>(i)], 0.45f, &alone, 1);
            ASSERT_EQ(bitsOf(dst[static_cast<std::size_t>(i)]), bitsOf(alone)) << len << " " << i;
            ASSERT_EQ(bitsOf(inPlace[static_cast<std::size_t>(i)]), bitsOf(alone)) << len << " " << i;
        }
        for (int i = len; i < len + 8; ++i) ASSERT_EQ(dst[static_cast<std::size_t>(i)], 99.0f);
    }
}

TEST(VectorPow, SpecialValuesOfTheGeneralPath) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const std::vector<float> src = {0.0f, 1.0f, -0.0f, -0.25f, nan, inf, std::ldexp(1.0f, -140), 1e30f, 1e-30f};
    const std::vector<float> fwd = vectorPow(src, 0.45f);
    EXPECT_EQ(bitsOf(fwd[0]), 0u);  // 0 ^ 0.45 = 0, by the fallback
    EXPECT_EQ(fwd[1], 1.0f);
    EXPECT_EQ(bitsOf(fwd[2]), 0u);
    EXPECT_TRUE(std::isnan(fwd[3]));
    EXPECT_TRUE(std::isnan(fwd[4]));
    EXPECT_EQ(fwd[5], inf);
    EXPECT_EQ(fwd[6], static_cast<float>(std::pow(std::ldexp(1.0L, -140), static_cast<long double>(0.45f))));
    const std::vector<float> inv = vectorPow(src, 2.22222233f);
    EXPECT_TRUE(std::isnan(inv[3]));  // a negative element with a non-integer exponent
    EXPECT_EQ(inv[7], inf);           // beyond the range: overflow
    EXPECT_EQ(inv[8], 0.0f);          // and underflow
    // Odd and even integer exponents of the general path on a negative element.
    EXPECT_EQ(vectorPow({-2.0f}, 11.0f)[0], -2048.0f);
    EXPECT_EQ(vectorPow({-2.0f}, 10.0f)[0], 1024.0f);
    EXPECT_EQ(vectorPow({-0.0f}, -3.0f)[0], -inf);
    // An exponent that is not finite goes to the fallback as a whole.
    EXPECT_EQ(vectorPow({0.5f}, inf)[0], 0.0f);
    EXPECT_EQ(vectorPow({2.0f}, inf)[0], inf);
    EXPECT_TRUE(std::isnan(vectorPow({2.0f}, nan)[0]));
    EXPECT_EQ(vectorPow({1.0f}, nan)[0], 1.0f);
}

// ---------------------------------------------------------------------------------
// The dispatch on the exponent's bits: each special exponent against its own model
// (written here, one float operation at a time), and its neighbours on the general
// path.
// ---------------------------------------------------------------------------------

float model(float x, int which) {
    volatile float a = x;
    const float x2 = a * a;
    const float x3 = x2 * a, x4 = x2 * x2;
    const float x5 = x4 * a, x6 = x3 * x3, x8 = x4 * x4;
    const float x7 = x6 * a, x9 = x8 * a;
    switch (which) {
        case 2: return x2;
        case 3: return x3;
        case 4: return x4;
        case 5: return x5;
        case 6: return x6;
        case 7: return x7;
        case 8: return x8;
        case 9: return x9;
        case -1: return 1.0f / a;
        case -2: return 1.0f / x2;
        case -3: return 1.0f / x3;
        case -4: return 1.0f / x4;
        default: return 0.0f;
    }
}

TEST(VectorPow, DispatchOnTheExponentsBits) {
    Rng rng(21);
    std::vector<float> src;
    for (int i = 0; i < 203; ++i) src.push_back(static_cast<float>((rng.unit() - 0.3) * 40.0));
    src.push_back(0.0f);
    src.push_back(-0.0f);
    for (int n : {2, 3, 4, 5, 6, 7, 8, 9, -1, -2, -3, -4}) {
        const std::vector<float> out = vectorPow(src, static_cast<float>(n));
        for (std::size_t i = 0; i < src.size(); ++i) {
            const float want = model(src[i], n);
            ASSERT_TRUE(bitsOf(out[i]) == bitsOf(want) || (std::isnan(out[i]) && std::isnan(want)))
                << src[i] << " ^ " << n << ": " << out[i] << " vs " << want;
        }
    }
    const std::vector<float> half = vectorPow(src, 0.5f), minusHalf = vectorPow(src, -0.5f),
                             threeHalves = vectorPow(src, 1.5f), one = vectorPow(src, 1.0f);
    for (std::size_t i = 0; i < src.size(); ++i) {
        volatile float a = src[i];
        const float s = std::sqrt(static_cast<float>(a));
        const float wants[] = {s, 1.0f / s, a * s, a};
        const float gots[] = {half[i], minusHalf[i], threeHalves[i], one[i]};
        for (int k = 0; k < 4; ++k) {
            ASSERT_TRUE(bitsOf(gots[k]) == bitsOf(wants[k]) || (std::isnan(gots[k]) && std::isnan(wants[k])))
                << k << " " << src[i];
        }
    }
    // Exponent 1 copies the bits, NaN payloads included.
    EXPECT_EQ(bitsOf(vectorPow({floatOf(0x7FC01234u)}, 1.0f)[0]), 0x7FC01234u);
    // The next float above 2 is not 2: it takes the general path (correctly rounded
    // there, where the product x * x of exponent 2 is not).
    const float justAbove2 = floatOf(0x40000001u);
    for (float x : {1.1f, 3.3f, 7.77f}) {
        const long double exact = std::pow(static_cast<long double>(x), static_cast<long double>(justAbove2));
        EXPECT_LE(floatUlps(vectorPow({x}, justAbove2)[0], exact), 0.50001L);
    }
    const float x = 1.1000001f;
    EXPECT_NE(bitsOf(vectorPow({x}, justAbove2)[0]), bitsOf(vectorPow({x}, 2.0f)[0]));
}

TEST(VectorPow, ZeroExponentGivesOneWithoutReadingTheSource) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (float zero : {0.0f, -0.0f}) {
        EXPECT_EQ(vectorPow({nan, -3.0f, 0.0f, std::numeric_limits<float>::infinity()}, zero),
                  (std::vector<float>{1.0f, 1.0f, 1.0f, 1.0f}));
        std::vector<float> dst(19, 5.0f);
        pxk::pxkVectorPow(nullptr, zero, dst.data(), 19);  // the source is never read
        EXPECT_EQ(dst, std::vector<float>(19, 1.0f));
    }
}

// ---------------------------------------------------------------------------------
// The caller's floating-point state
// ---------------------------------------------------------------------------------

uint16_t x87Control() {
    uint16_t w;
    __asm__ __volatile__("fnstcw %0" : "=m"(w));
    return w;
}
void setX87Control(uint16_t w) { __asm__ __volatile__("fldcw %0" : : "m"(w)); }
uint16_t x87Status() {
    uint16_t w;
    __asm__ __volatile__("fnstsw %0" : "=m"(w));
    return w;
}

class CallerState : public ::testing::Test {
protected:
    void SetUp() override {
        csr_ = _mm_getcsr();
        cw_ = x87Control();
    }
    void TearDown() override {
        _mm_setcsr(csr_);
        setX87Control(cw_);
    }
    uint32_t csr_ = 0;
    uint16_t cw_ = 0;
};

std::vector<float> stateSample() {
    std::vector<float> v = sampleArguments(31, 2000);
    v.push_back(std::ldexp(1.0f, -140));  // denormal: flushed under the caller's DAZ, not here
    v.push_back(0.0f);
    return v;
}

TEST_F(CallerState, RoundTowardZeroAndFlushModesGiveTheSameResults) {
    const std::vector<float> src = stateSample();
    for (float y : {0.45f, 2.22222233f, 0.5f, -3.0f}) {
        const std::vector<float> atNearest = vectorPow(src, y);
        // toward zero; then toward zero with flush-to-zero and denormals-are-zero
        for (uint32_t mode : {0x7F80u, 0xFFC0u}) {
            const uint32_t callerCsr = (csr_ & ~0xFFC0u) | mode;
            _mm_setcsr(callerCsr);
            std::vector<float> dst(src.size());
            pxk::pxkVectorPow(src.data(), y, dst.data(), static_cast<int32_t>(src.size()));
            const uint32_t after = _mm_getcsr();
            _mm_setcsr(csr_);
            EXPECT_EQ(after, callerCsr) << "the caller's register is given back as a whole";
            for (std::size_t i = 0; i < src.size(); ++i) {
                ASSERT_EQ(bitsOf(dst[i]), bitsOf(atNearest[i])) << src[i] << " ^ " << y << " mode " << mode;
            }
        }
    }
}

TEST_F(CallerState, DefaultControlClearsTheErrorFlagsAndKeepsInexact) {
    const std::vector<float> src = {0.5f, 2.0f, 3.0f};
    // The caller's invalid and zero-divide flags, set before the call, are cleared.
    _mm_setcsr(0x1F80u | 0x01u | 0x04u | 0x20u);
    std::vector<float> dst(3);
    pxk::pxkVectorPow(src.data(), 0.45f, dst.data(), 3);
    uint32_t after = _mm_getcsr();
    EXPECT_EQ(after & 0x1Fu, 0u);
    EXPECT_EQ(after & 0x20u, 0x20u) << "inexact stays";
    EXPECT_EQ(after & 0xFFC0u, 0x1F80u);
    // Without any flag before, an overflow in the call leaves no error flag either.
    _mm_setcsr(0x1F80u);
    const std::vector<float> big = {1e30f};
    pxk::pxkVectorPow(big.data(), 10.5f, dst.data(), 1);
    after = _mm_getcsr();
    EXPECT_EQ(after & 0x1Fu, 0u);
    EXPECT_EQ(dst[0], std::numeric_limits<float>::infinity());
}

TEST_F(CallerState, ChangedControlRestoresTheFlagsAsTheyWere) {
    // Toward zero with the invalid flag set and inexact clear: given back as it was,
    // whatever the call raised (the overflow and inexact of 1e30 ^ 10.5).
    const uint32_t callerCsr = 0x7F80u | 0x01u;
    _mm_setcsr(callerCsr);
    const std::vector<float> big = {1e30f, 0.3f};
    std::vector<float> dst(2);
    pxk::pxkVectorPow(big.data(), 10.5f, dst.data(), 2);
    const uint32_t after = _mm_getcsr();
    _mm_setcsr(csr_);
    EXPECT_EQ(after, callerCsr);
}

TEST_F(CallerState, X87ControlWordAndPendingExceptions) {
    // A pending x87 zero-divide exception (masked, so only the flag is raised).
    volatile long double zero = 0.0L;
    volatile long double q = 1.0L / zero;
    (void)q;
    ASSERT_NE(x87Status() & 0x04u, 0u);
    const std::vector<float> src = {0.5f, 2.0f};
    std::vector<float> dst(2);
    pxk::pxkVectorPow(src.data(), 0.45f, dst.data(), 2);
    EXPECT_EQ(x87Status() & 0x3Fu, 0u) << "pending exceptions cleared";
    EXPECT_EQ(x87Control(), cw_);
    // A caller's word with an exception unmasked (denormal operand) is set to all
    // masks for the call and loaded back afterwards.
    const uint16_t callerWord = static_cast<uint16_t>(cw_ & ~0x02u);
    setX87Control(callerWord);
    pxk::pxkVectorPow(src.data(), 0.45f, dst.data(), 2);
    const uint16_t after = x87Control();
    setX87Control(cw_);
    EXPECT_EQ(after, callerWord);
    EXPECT_EQ(dst[0], pxk::pxkScalarPowf(0.5f, 0.45f));
}

}  // namespace
