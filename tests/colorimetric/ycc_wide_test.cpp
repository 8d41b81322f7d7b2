// RGB <-> YCC on 16u, 16s and 32f samples, C3 and AC4: the twelve exports against the
// reference model (every width, height and step plan, steps with low bits, misaligned
// rows, every 16-bit value in each channel; the 16-bit groups also under another
// rounding mode), the known cases, statuses and guards.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <vector>

#include "pxkcc.h"
#include "reference_ycc_wide.h"
#include "sample_harness.h"

namespace {

using sampletest::pixelAt;

const std::vector<sampletest::Member> kMembers = SAMPLETEST_CONVERSION_PAIR(RGBToYCC, YCCToRGB, refyccwide);

SAMPLETEST_MEMBER_SUITES(YccWide, kMembers);

// The groups of the 16-bit members round by the caller's rounding mode (the tails
// truncate): under rounding down, and toward +infinity, the exports still match the
// reference, whose groups round by the same mode.
TEST(YccWideRounding, GroupsFollowTheCurrentRoundingMode) {
    const int saved = std::fegetround();
    for (int mode : {FE_DOWNWARD, FE_UPWARD}) {
        for (const sampletest::Member& m : sampletest::sixteenBit(kMembers)) {
            pxktest::Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(mode)}));
            std::fesetround(mode);
            const ::testing::AssertionResult r = sampletest::runAgainstReference(
                m, 37, 3, sampletest::rowBytes(m, 37) + 6, sampletest::rowBytes(m, 37), rng);
            std::fesetround(saved);
            EXPECT_TRUE(r) << m.name << " rounding mode " << mode;
        }
    }
    // And the mode matters: some group pixel differs between rounding down and up.
    std::vector<uint16_t> down, up;
    for (int mode : {FE_DOWNWARD, FE_UPWARD}) {
        std::fesetround(mode);
        const std::vector<uint16_t> v = pixelAt<uint16_t>(pxkiRGBToYCC_16u_C3R, 3, {1000, 2000, 3000}, 4, 0);
        std::fesetround(saved);
        (mode == FE_DOWNWARD ? down : up) = v;
    }
    EXPECT_NE(down, up);
}

const int kWidth = 7;
const int kGroup = 0;
const int kTail = 6;

// 32f black gives Y 0, C1 0.6117647, C2 0.5372549, and back gives 0.
TEST(YccWideCases, BlackIn32f) {
    for (int x : {kGroup, kTail}) {
        EXPECT_EQ(pixelAt<float>(pxkiRGBToYCC_32f_C3R, 3, {0.0f, 0.0f, 0.0f}, kWidth, x),
                  (std::vector<float>{0.0f, 0.6117647f, 0.5372549f}));
        EXPECT_EQ(pixelAt<float>(pxkiYCCToRGB_32f_AC4R, 4, {0.0f, 0.6117647f, 0.5372549f}, kWidth, x),
                  (std::vector<float>{0.0f, 0.0f, 0.0f}));
    }
}

// The forward way never clamps; the inverse way clamps each channel to 0..1.
TEST(YccWideCases, OnlyTheInverseClamps) {
    for (int x : {kGroup, kTail}) {
        const std::vector<float> f = pixelAt<float>(pxkiRGBToYCC_32f_C3R, 3, {2.0f, 2.0f, 2.0f}, kWidth, x);
        EXPECT_FLOAT_EQ(f[0], 2.0f * 0.7132668f);
        const std::vector<float> n = pixelAt<float>(pxkiRGBToYCC_32f_C3R, 3, {-1.0f, -1.0f, -1.0f}, kWidth, x);
        EXPECT_FLOAT_EQ(n[0], -0.7132668f);
        // Y 1 with neutral differences: 1.3584 for each channel, clamped to 1; Y -1: 0.
        EXPECT_EQ(pixelAt<float>(pxkiYCCToRGB_32f_C3R, 3, {1.0f, 0.6117647f, 0.5372549f}, kWidth, x),
                  (std::vector<float>{1.0f, 1.0f, 1.0f}));
        EXPECT_EQ(pixelAt<float>(pxkiYCCToRGB_32f_C3R, 3, {-1.0f, 0.6117647f, 0.5372549f}, kWidth, x),
                  (std::vector<float>{0.0f, 0.0f, 0.0f}));
    }
}

// 16u black: Y 0, C1 40092 and C2 35209 in the groups (the offsets) and in the tail
// (trunc(40092.5), trunc(35209.5)); 16s black (-32768): the same less 32768.
TEST(YccWideCases, BlackIn16Bit) {
    for (int x : {kGroup, kTail}) {
        EXPECT_EQ(pixelAt<uint16_t>(pxkiRGBToYCC_16u_C3R, 3, {0, 0, 0}, kWidth, x),
                  (std::vector<uint16_t>{0, 40092, 35209}));
        EXPECT_EQ(pixelAt<int16_t>(pxkiRGBToYCC_16s_AC4R, 4, {-32768, -32768, -32768}, kWidth, x),
                  (std::vector<int16_t>{-32768, 7324, 2441}));
    }
}

// 16u inverse of a neutral pixel: Y 10000 gives 1.3584 * 10000 = 13584 in every
// channel, in the groups (rounded) and in the tail (13584.49999, truncated); a bright
// neutral (Y 65535: 89022.7) saturates; Y 0 with the lowest differences gives R and B
// below 0, stored as 0.
TEST(YccWideCases, InverseIn16Bit) {
    for (int x : {kGroup, kTail}) {
        EXPECT_EQ(pixelAt<uint16_t>(pxkiYCCToRGB_16u_C3R, 3, {10000, 40092, 35209}, kWidth, x),
                  (std::vector<uint16_t>{13584, 13584, 13584}));
        EXPECT_EQ(pixelAt<uint16_t>(pxkiYCCToRGB_16u_AC4R, 4, {65535, 40092, 35209}, kWidth, x),
                  (std::vector<uint16_t>{65535, 65535, 65535}));
        const std::vector<uint16_t> low = pixelAt<uint16_t>(pxkiYCCToRGB_16u_C3R, 3, {0, 0, 0}, kWidth, x);
        EXPECT_EQ(low[0], 0);
        EXPECT_EQ(low[2], 0);
        EXPECT_EQ(pixelAt<int16_t>(pxkiYCCToRGB_16s_C3R, 3, {10000 - 32768, 40092 - 32768, 35209 - 32768}, kWidth,
                               x),
                  (std::vector<int16_t>{13584 - 32768, 13584 - 32768, 13584 - 32768}));
    }
}

// The tail's folded form is its own: over a range of pixels, the groups and the tail
// give different values for some of them (by one at most).
TEST(YccWideCases, GroupsAndTailDifferInTheLastUnit) {
    int differ = 0, worst = 0;
    for (uint32_t v = 0; v < 4096; ++v) {
        const uint16_t in[3] = {uint16_t(v * 16), uint16_t(65535 - v * 13), uint16_t(v * 7 + 20000)};
        const std::vector<uint16_t> pixel(in, in + 3);
        const std::vector<uint16_t> group = pixelAt<uint16_t>(pxkiRGBToYCC_16u_C3R, 3, pixel, 5, 0);
        const std::vector<uint16_t> tail = pixelAt<uint16_t>(pxkiRGBToYCC_16u_C3R, 3, pixel, 5, 4);
        for (int c = 0; c < 3; ++c) {
            differ += group[size_t(c)] != tail[size_t(c)];
            worst = std::max(worst, std::abs(int(group[size_t(c)]) - int(tail[size_t(c)])));
        }
    }
    EXPECT_GT(differ, 0);
    EXPECT_LE(worst, 1);
}

}  // namespace

namespace {

// Two NaN inputs with different bits: Y's NaN wins in every channel of the inverse way
// (y + c2, y - 0.194 c1 - ..., y + c1), in the groups and in the tail alike.
TEST(YccWideCases, NaNOfTheFirstTermInEveryColumn) {
    const float first = sampletest::floatOfBits(0x7FC00001u), second = sampletest::floatOfBits(0xFFC00002u);
    for (int x : {kGroup, kTail}) {
        const std::vector<float> v = pixelAt<float>(pxkiYCCToRGB_32f_C3R, 3, {first, second, 0.5f}, kWidth, x);
        for (int c = 0; c < 3; ++c) EXPECT_EQ(sampletest::bitsOfFloat(v[size_t(c)]), 0x7FC00001u) << c;
    }
}

}  // namespace
