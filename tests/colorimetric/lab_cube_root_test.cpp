// The short cube root of the Lab float kernels against the power routine it stands
// for: the same float for every float argument of its range (every 61st under the
// sanitizers), and the power routine's float outside it.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>

#include "colorimetric/lab_cube_root.h"
#include "sweep.h"

namespace {

float fromBits(uint32_t bits) {
    float v;
    std::memcpy(&v, &bits, sizeof v);
    return v;
}

// The float of x^0.3333333333333333 by the platform's pow, as the power routine gives it.
float expected(float x) { return static_cast<float>(std::pow(static_cast<double>(x), 0.3333333333333333)); }

::testing::AssertionResult sameFloat(float x) {
    const float got = pxk::colorimetric::lab::labCubeRoot(x);
    const float want = expected(x);
    if (std::memcmp(&got, &want, sizeof got) == 0) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "x " << x << ": " << got << ", expected " << want;
}

TEST(LabCubeRoot, EveryFloatOfTheShortRange) {
    const uint32_t stride = pxktest::kLightSweep ? 61 : 1;
    uint32_t mismatches = 0;
    for (uint32_t bits = 0x3C000000u; bits < 0x40000000u; bits += stride) {
        const float x = fromBits(bits);
        const float got = pxk::colorimetric::lab::labCubeRoot(x);
        const float want = expected(x);
        if (std::memcmp(&got, &want, sizeof got) != 0 && ++mismatches < 10) {
            ADD_FAILURE() << "x " << x << " (bits " << std::hex << bits << std::dec << "): " << got << ", expected "
                          << want;
        }
    }
    EXPECT_EQ(mismatches, 0u);
}

TEST(LabCubeRoot, OutsideTheShortRange) {
    for (float x : {0.0078124995f, 0.005f, 2.0f, 7.5f, 1e-30f, 1e30f, 0.0f}) EXPECT_TRUE(sameFloat(x));
    EXPECT_TRUE(std::isnan(pxk::colorimetric::lab::labCubeRoot(std::nanf(""))));
    EXPECT_TRUE(std::isnan(pxk::colorimetric::lab::labCubeRoot(-1.0f)));
}

// Exact cubes and the ends of the range.
TEST(LabCubeRoot, KnownValues) {
    EXPECT_EQ(pxk::colorimetric::lab::labCubeRoot(1.0f), 1.0f);
    EXPECT_EQ(pxk::colorimetric::lab::labCubeRoot(0.125f), 0.5f);
    EXPECT_EQ(pxk::colorimetric::lab::labCubeRoot(0.015625f), 0.25f);
    EXPECT_TRUE(sameFloat(0.008856f));
    EXPECT_TRUE(sameFloat(fromBits(0x3FFFFFFFu)));
}

}  // namespace
