// The noise generator's internal operations (linked from the internal archive): the
// record size, the statuses of the fills in their order, a fill that goes on where the
// last one stopped, and both forms against the reference generator.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "dither/noise.h"
#include "reference_dither.h"

namespace {

using namespace pxk::dither;

TEST(NoiseGenerator, RecordSize) {
    int32_t size = 0;
    EXPECT_EQ(pxkNoiseStateSize(&size), pxkOk);
    EXPECT_EQ(size, 56);
    EXPECT_EQ(pxkNoiseStateSize(nullptr), pxkErrNullPtr);
}

TEST(NoiseGenerator, FillStatusesInOrder) {
    alignas(8) uint8_t state16[56] = {};
    alignas(8) uint8_t state32[56] = {};
    uint16_t out16[4] = {1, 2, 3, 4};
    float out32[4] = {1, 2, 3, 4};
    pxkNoiseInit16u(state16, 0, 1024, 0);
    pxkNoiseInit32f(state32, -1.0f, 1.0f, 0);
    EXPECT_EQ(pxkNoiseFill16u(nullptr, 0, state32), pxkErrNullPtr);
    EXPECT_EQ(pxkNoiseFill16u(out16, 4, nullptr), pxkErrNullPtr);
    EXPECT_EQ(pxkNoiseFill16u(out16, 0, state32), pxkErrSize);
    EXPECT_EQ(pxkNoiseFill16u(out16, 4, state32), pxkErrContext);  // the float form's tag
    EXPECT_EQ(pxkNoiseFill32f(nullptr, 0, state16), pxkErrNullPtr);
    EXPECT_EQ(pxkNoiseFill32f(out32, -1, state16), pxkErrSize);
    EXPECT_EQ(pxkNoiseFill32f(out32, 4, state16), pxkErrContext);
    EXPECT_EQ(out16[0], 1);  // failures write nothing
    EXPECT_EQ(out32[0], 1.0f);
}

TEST(NoiseGenerator, SecondFillGoesOnAndMatchesTheReference) {
    for (uint32_t seed : {0u, 1u, 12345u, 0xFFFFFFFFu}) {
        alignas(8) uint8_t a[56], b[56];
        pxkNoiseInit32f(a, -0.37f, 2.5f, seed);
        pxkNoiseInit32f(b, -0.37f, 2.5f, seed);
        std::vector<float> whole(1000), parts(1000);
        ASSERT_EQ(pxkNoiseFill32f(whole.data(), 1000, a), pxkOk);
        ASSERT_EQ(pxkNoiseFill32f(parts.data(), 1, b), pxkOk);
        ASSERT_EQ(pxkNoiseFill32f(parts.data() + 1, 332, b), pxkOk);
        ASSERT_EQ(pxkNoiseFill32f(parts.data() + 333, 667, b), pxkOk);
        EXPECT_EQ(std::memcmp(whole.data(), parts.data(), 1000 * sizeof(float)), 0) << seed;
        refdither::Generator g(double(-0.37f), double(2.5f), seed);
        for (int i = 0; i < 1000; ++i) ASSERT_EQ(whole[size_t(i)], float(g.next())) << seed << " " << i;

        alignas(8) uint8_t s16[56];
        pxkNoiseInit16u(s16, -300, 700, seed);
        std::vector<uint16_t> v(777);
        ASSERT_EQ(pxkNoiseFill16u(v.data(), 777, s16), pxkOk);
        refdither::Generator h(-300.0, 700.0, seed);
        for (int i = 0; i < 777; ++i) {
            const uint16_t expected = uint16_t(int64_t(std::nearbyint(h.next())) & 0xFFFF);
            ASSERT_EQ(v[size_t(i)], expected) << seed << " " << i;
        }
    }
}

}  // namespace
