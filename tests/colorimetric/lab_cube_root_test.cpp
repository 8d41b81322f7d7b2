// The short cube root of the Lab float kernels against the power routine it stands
// for: the same float for every float argument of its range (every 61st under the
// sanitizers), and the power routine's float outside it; and its vector form, lane by
// lane, for every float of the range and the lanes outside it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "colorimetric/lab_cube_root.h"
#include "frame/vec_float.h"
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

// The vector form over the widest float vector of the build, all lanes wanted.
#if defined(PXKCC_TARGET_AVX2)
using WideF = pxk::vec::F256;
#else
using WideF = pxk::vec::F128;
#endif
constexpr int kLanes = sizeof(WideF) / 4;

void lanes(const float* in, const bool* wanted, float* out) {
    alignas(32) uint32_t mask[kLanes];
    for (int j = 0; j < kLanes; ++j) mask[j] = wanted[j] ? 0xFFFFFFFFu : 0u;
    WideF m;
    std::memcpy(&m, mask, sizeof m);
    const WideF r = pxk::colorimetric::lab::labCubeRootLanes(pxk::vec::loadF<WideF>(in), m);
    pxk::vec::storeF(out, r);
}

TEST(LabCubeRootLanes, EveryFloatOfTheShortRange) {
    const uint32_t stride = pxktest::kLightSweep ? 61 : 1;
    bool all[kLanes];
    std::fill(all, all + kLanes, true);
    uint32_t mismatches = 0;
    float in[kLanes], out[kLanes];
    // Each vector takes kLanes consecutive arguments; the last one is padded with 1.
    for (uint32_t bits = 0x3C000000u; bits < 0x40000000u;) {
        for (int j = 0; j < kLanes; ++j, bits += stride) in[j] = bits < 0x40000000u ? fromBits(bits) : 1.0f;
        lanes(in, all, out);
        for (int j = 0; j < kLanes; ++j) {
            const float want = pxk::colorimetric::lab::labCubeRoot(in[j]);
            if (std::memcmp(&out[j], &want, sizeof want) != 0 && ++mismatches < 10) {
                ADD_FAILURE() << "x " << in[j] << ": " << out[j] << ", expected " << want;
            }
        }
    }
    EXPECT_EQ(mismatches, 0u);
}

// Lanes outside the range (and NaN) take the power routine where wanted; unwanted lanes
// do not disturb their neighbours.
TEST(LabCubeRootLanes, LanesOutsideTheShortRange) {
    const std::vector<float> values = {0.0078124995f, 0.005f, 2.0f, 7.5f, 1e-30f, 1e30f, 0.0f, -1.0f,
                                       std::nanf(""), 1.0f, 0.125f, 0.008856f, 0.5f, 1.5f, 3e-39f, 1.9999999f};
    for (std::size_t start = 0; start + kLanes <= values.size(); ++start) {
        float in[kLanes], out[kLanes];
        bool wanted[kLanes];
        for (int j = 0; j < kLanes; ++j) {
            in[j] = values[start + std::size_t(j)];
            wanted[j] = (j + start) % 3 != 1;
        }
        lanes(in, wanted, out);
        for (int j = 0; j < kLanes; ++j) {
            if (!wanted[j]) continue;
            const float want = pxk::colorimetric::lab::labCubeRoot(in[j]);
            if (std::isnan(want)) {
                EXPECT_TRUE(std::isnan(out[j])) << "x " << in[j];
            } else {
                EXPECT_EQ(std::memcmp(&out[j], &want, sizeof want), 0) << "x " << in[j] << ": " << out[j];
            }
        }
    }
}

}  // namespace
