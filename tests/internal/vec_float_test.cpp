// The 32-bit and float operations of the vector layer against their scalar meaning,
// element by element, for the 128-bit type and (in the avx2 build) the 256-bit type;
// and the scalar conversions against the literal rules they stand for.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "frame/vec_float.h"

namespace {

using namespace pxk;
using namespace pxk::vec;

template <class T, class V>
V fromArray(const T* values) {
    V v;
    std::memcpy(&v, values, sizeof v);
    return v;
}
template <class T, class V>
void toArray(V v, T* values) {
    std::memcpy(values, &v, sizeof v);
}

// Floats that exercise the rules: ties, signed zeros, NaN, infinities, values beyond
// the 32-bit range, denormals, and random values.
std::vector<float> interestingFloats() {
    const float inf = std::numeric_limits<float>::infinity();
    std::vector<float> v = {0.0f,   -0.0f,   0.5f,    1.5f,   2.5f,    -0.5f,      -1.5f,   -2.5f,
                            0.49999997f, 1.0f, -1.0f, 255.5f, 65535.5f, 3e9f,      -3e9f,   2147483520.0f,
                            inf,    -inf,    std::numeric_limits<float>::quiet_NaN(), FLT_MIN / 4, 1e-30f, 7.25f};
    std::mt19937 rng(12345);
    std::uniform_real_distribution<float> d(-70000.0f, 70000.0f);
    while (v.size() < 64) v.push_back(d(rng));
    return v;
}

int32_t bitsOfFloat(float f) {
    int32_t b;
    std::memcpy(&b, &f, sizeof b);
    return b;
}

template <class V>
void checkFloatOps() {
    using F = FloatOf<V>;
    constexpr int n = sizeof(F) / 4;
    const std::vector<float> pool = interestingFloats();
    for (std::size_t i = 0; i + n <= pool.size(); ++i) {
        float a[n], b[n];
        for (int k = 0; k < n; ++k) {
            a[k] = pool[(i + k) % pool.size()];
            b[k] = pool[(i * 7 + k * 3 + 1) % pool.size()];
        }
        const F fa = loadF<F>(a), fb = loadF<F>(b);
        float sum[n], mn[n], mx[n], dv[n], sel[n];
        int32_t rounded[n], lt[n], unord[n];
        storeF(sum, addF(fa, fb));
        storeF(mn, minF(fa, fb));
        storeF(mx, maxF(fa, fb));
        storeF(dv, divF(fa, fb));
        storeF(sel, selectF(lessF(fa, fb), fa, fb));
        toArray(roundToInt(fa), rounded);
        toArray(bitsOf(lessF(fa, fb)), lt);
        toArray(bitsOf(unorderedF(fa, fb)), unord);
        for (int k = 0; k < n; ++k) {
            EXPECT_EQ(bitsOfFloat(sum[k]), bitsOfFloat(a[k] + b[k]));
            EXPECT_EQ(bitsOfFloat(dv[k]), bitsOfFloat(a[k] / b[k]));
            // The processor's rule: the second operand unless a is strictly below
            // (above) b.
            EXPECT_EQ(bitsOfFloat(mn[k]), bitsOfFloat(a[k] < b[k] ? a[k] : b[k]));
            EXPECT_EQ(bitsOfFloat(mx[k]), bitsOfFloat(a[k] > b[k] ? a[k] : b[k]));
            EXPECT_EQ(bitsOfFloat(sel[k]), bitsOfFloat(a[k] < b[k] ? a[k] : b[k]));
            EXPECT_EQ(lt[k], a[k] < b[k] ? -1 : 0);
            EXPECT_EQ(unord[k], (std::isnan(a[k]) || std::isnan(b[k])) ? -1 : 0);
            EXPECT_EQ(rounded[k], pxkRoundHalfEven(a[k])) << a[k];
        }
    }
}

TEST(VecFloat, FloatOperationsMatchTheirScalarMeaning128) { checkFloatOps<V128>(); }
#if defined(PXKCC_TARGET_AVX2)
TEST(VecFloat, FloatOperationsMatchTheirScalarMeaning256) { checkFloatOps<V256>(); }
#endif

TEST(VecFloat, RoundHalfEvenTiesGoToEvenAndOutOfRangeGivesTheIndefiniteValue) {
    EXPECT_EQ(pxkRoundHalfEven(0.5f), 0);
    EXPECT_EQ(pxkRoundHalfEven(1.5f), 2);
    EXPECT_EQ(pxkRoundHalfEven(2.5f), 2);
    EXPECT_EQ(pxkRoundHalfEven(-0.5f), 0);
    EXPECT_EQ(pxkRoundHalfEven(-1.5f), -2);
    EXPECT_EQ(pxkRoundHalfEven(0.49999997f), 0);
    EXPECT_EQ(pxkRoundHalfEven(2.5), 2);
    EXPECT_EQ(pxkRoundHalfEven(3.5), 4);
    EXPECT_EQ(pxkRoundHalfEven(3e9f), INT32_MIN);
    EXPECT_EQ(pxkRoundHalfEven(std::numeric_limits<float>::quiet_NaN()), INT32_MIN);
    EXPECT_EQ(truncToInt32(2.9f), 2);
    EXPECT_EQ(truncToInt32(-2.9f), -2);
    EXPECT_EQ(truncToInt32(-2.9), -2);
    EXPECT_EQ(truncToInt32(1e10), INT32_MIN);
    int32_t lanes[4], truncated[4];
    toArray(roundToInt(splatF<F128>(3e9f)), lanes);
    toArray(truncToInt(splatF<F128>(-3e9f)), truncated);
    for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(lanes[k], INT32_MIN);
        EXPECT_EQ(truncated[k], INT32_MIN);
    }
}

TEST(VecFloat, RoundToIntFollowsTheCallersRoundingMode) {
    const unsigned saved = _mm_getcsr();
    _mm_setcsr((saved & ~0x6000u) | 0x6000u);  // toward zero
    const int32_t scalar = pxkRoundHalfEven(2.7f);
    int32_t lanes[4];
    toArray(roundToInt(splatF<F128>(-2.7f)), lanes);
    _mm_setcsr(saved);
    EXPECT_EQ(scalar, 2);
    for (int32_t v : lanes) EXPECT_EQ(v, -2);
}

// The approximate reciprocal of the vector form and the scalar one agree per element.
template <class V>
void checkReciprocal() {
    using F = FloatOf<V>;
    constexpr int n = sizeof(F) / 4;
    std::mt19937 rng(7);
    std::uniform_int_distribution<uint32_t> bits;
    for (int round = 0; round < 20000; ++round) {
        float x[n], r[n];
        for (int k = 0; k < n; ++k) {
            const uint32_t b = bits(rng);
            std::memcpy(&x[k], &b, sizeof b);
        }
        storeF(r, rcpF(loadF<F>(x)));
        for (int k = 0; k < n; ++k) {
            ASSERT_EQ(bitsOfFloat(r[k]), bitsOfFloat(approxReciprocal(x[k]))) << x[k];
        }
    }
}
TEST(VecFloat, ApproximateReciprocalIsThatOfEachElement128) { checkReciprocal<V128>(); }
#if defined(PXKCC_TARGET_AVX2)
TEST(VecFloat, ApproximateReciprocalIsThatOfEachElement256) { checkReciprocal<V256>(); }
#endif

template <class V>
void checkIntegerOps() {
    constexpr int n8 = sizeof(V), n16 = sizeof(V) / 2;
    std::mt19937 rng(99);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int round = 0; round < 2000; ++round) {
        uint8_t a[n8], b[n8], m[n8];
        for (int k = 0; k < n8; ++k) {
            a[k] = static_cast<uint8_t>(byte(rng));
            b[k] = static_cast<uint8_t>(byte(rng));
            m[k] = (byte(rng) & 1) ? 0xFF : 0x00;
        }
        const V va = fromArray<uint8_t, V>(a), vb = fromArray<uint8_t, V>(b), vm = fromArray<uint8_t, V>(m);
        uint8_t addU8[n8], subU8[n8], sel[n8], x[n8];
        toArray(addSatU8(va, vb), addU8);
        toArray(subSatU8(va, vb), subU8);
        toArray(selectBits(vm, va, vb), sel);
        toArray(xor_(va, vb), x);
        int16_t a16[n16], b16[n16], add16s[n16], sub16s[n16], gt16[n16];
        std::memcpy(a16, a, sizeof a16);
        std::memcpy(b16, b, sizeof b16);
        toArray(addSat16(va, vb), add16s);
        toArray(subSat16(va, vb), sub16s);
        toArray(greater16(va, vb), gt16);
        for (int k = 0; k < n8; ++k) {
            EXPECT_EQ(addU8[k], std::min(255, a[k] + b[k]));
            EXPECT_EQ(subU8[k], std::max(0, a[k] - b[k]));
            EXPECT_EQ(sel[k], m[k] ? a[k] : b[k]);
            EXPECT_EQ(x[k], a[k] ^ b[k]);
        }
        for (int k = 0; k < n16; ++k) {
            EXPECT_EQ(add16s[k], std::clamp(a16[k] + b16[k], -32768, 32767));
            EXPECT_EQ(sub16s[k], std::clamp(a16[k] - b16[k], -32768, 32767));
            EXPECT_EQ(gt16[k], a16[k] > b16[k] ? -1 : 0);
        }
    }
}
TEST(VecFloat, IntegerOperationsMatchTheirScalarMeaning128) { checkIntegerOps<V128>(); }
#if defined(PXKCC_TARGET_AVX2)
TEST(VecFloat, IntegerOperationsMatchTheirScalarMeaning256) { checkIntegerOps<V256>(); }
#endif

}  // namespace
