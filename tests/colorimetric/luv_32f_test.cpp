// RGB and BGR <-> LUV, 32-bit floats: the six exports against the reference model
// (every width, height and step plan, misaligned rows), the documented cases with
// literal values, statuses and guards.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "pxkcc.h"
#include "reference_luv.h"
#include "luv_wide_harness.h"

namespace {

using Member32f = widetest::Member<float, float>;
using widetest::pixelAt;

void toLuv(const float in[3], bool tail, float out[3]) { refluv::forward32f(in, tail, out); }
void bgrToLuv(const float in[3], bool tail, float out[3]) {
    const float rgb[3] = {in[2], in[1], in[0]};
    refluv::forward32f(rgb, tail, out);
}
void toRgb(const float in[3], bool, float out[3]) { refluv::inverse32f(in, out); }
void toBgr(const float in[3], bool, float out[3]) {
    refluv::inverse32f(in, out);
    std::swap(out[0], out[2]);
}

// Forward sources reach a little past 0..1 on both sides; inverse sources cover L, U
// and V (and some L below 0).
const Member32f kToLuvC3{"RGBToLUV_32f_C3R", 3, 4, pxkiRGBToLUV_32f_C3R, toLuv, -0.25f, 1.25f};
const Member32f kToLuvAC4{"RGBToLUV_32f_AC4R", 4, 4, pxkiRGBToLUV_32f_AC4R, toLuv, -0.25f, 1.25f};
const Member32f kBgrToLuvC3{"BGRToLUV_32f_C3R", 3, 4, pxkiBGRToLUV_32f_C3R, bgrToLuv, -0.25f, 1.25f};
const Member32f kToRgbC3{"LUVToRGB_32f_C3R", 3, 4, pxkiLUVToRGB_32f_C3R, toRgb, -20.0f, 120.0f};
const Member32f kToRgbAC4{"LUVToRGB_32f_AC4R", 4, 4, pxkiLUVToRGB_32f_AC4R, toRgb, -20.0f, 120.0f};
const Member32f kToBgrC3{"LUVToBGR_32f_C3R", 3, 4, pxkiLUVToBGR_32f_C3R, toBgr, -20.0f, 120.0f};

WIDETEST_MEMBER_SUITE(Luv32f, float, float, kToLuvC3, kToLuvAC4, kBgrToLuvC3, kToRgbC3, kToRgbAC4, kToBgrC3);

// Sources in the ranges of use: RGB in 0..1, and L 0..100 with U and V from the
// forward results.
const Member32f kToLuvUnit{"RGBToLUV_32f_C3R", 3, 4, pxkiRGBToLUV_32f_C3R, toLuv, 0.0f, 1.0f};
const Member32f kToRgbInRange{"LUVToRGB_32f_C3R", 3, 4, pxkiLUVToRGB_32f_C3R, toRgb, 0.0f, 100.0f};
TEST(Luv32fCases, MatchesReferenceInTheRangesOfUse) {
    for (int width : {1, 3, 4, 5, 8, 13, 67}) {
        ASSERT_TRUE(widetest::runOnce(kToLuvUnit, width, 3, width * 12, width * 12, 100u + uint32_t(width)));
        ASSERT_TRUE(widetest::runOnce(kToRgbInRange, width, 3, width * 12, width * 12, 200u + uint32_t(width)));
    }
}

// Black gives L, U and V of 0, in the main loop (where D of 0 takes 3) and in the tail
// (where Z of 0 skips the division).
TEST(Luv32fCases, BlackGivesZero) {
    for (int x : {0, 4}) {
        const std::vector<float> out = pixelAt(kToLuvC3, {0.0f, 0.0f, 0.0f}, 5, x);
        EXPECT_EQ(out, (std::vector<float>{0.0f, 0.0f, 0.0f})) << "column " << x;
    }
}

// White gives L near 100 and U and V near 0, in both kinds of column.
TEST(Luv32fCases, WhiteGivesLightnessHundred) {
    for (int x : {0, 4}) {
        const std::vector<float> out = pixelAt(kToLuvC3, {1.0f, 1.0f, 1.0f}, 5, x);
        EXPECT_NEAR(out[0], 100.0f, 0.01f);
        EXPECT_NEAR(out[1], 0.0f, 0.05f);
        EXPECT_NEAR(out[2], 0.0f, 0.05f);
    }
}

// Nothing is clamped: a source above 1 gives L above 100.
TEST(Luv32fCases, ForwardResultsAreNotClamped) {
    EXPECT_GT(pixelAt(kToLuvC3, {2.0f, 2.0f, 2.0f}, 4, 0)[0], 120.0f);
    EXPECT_GT(pixelAt(kToLuvC3, {2.0f, 2.0f, 2.0f}, 1, 0)[0], 120.0f);
}

// A Y of exactly 0.008856 takes the linear branch: L = 903.3 * 0.008856, not the
// curve's value.
TEST(Luv32fCases, ThresholdTakesTheLinearBranch) {
    float r = 0.008856f / 0.212671f;
    for (int i = 0; i < 4000 && 0.212671f * r != 0.008856f; ++i) {
        const float up = std::nextafter(r, 1.0f);
        r = 0.212671f * r < 0.008856f ? up : std::nextafter(r, 0.0f);
    }
    ASSERT_EQ(0.212671f * r, 0.008856f) << "no red sample with Y exactly at the threshold";
    const float linear = 903.3f * 0.008856f;
    EXPECT_EQ(pixelAt(kToLuvC3, {r, 0.0f, 0.0f}, 4, 0)[0], linear);
    EXPECT_EQ(pixelAt(kToLuvC3, {r, 0.0f, 0.0f}, 1, 0)[0], linear);
    // One step above, the curve.
    const float above = std::nextafter(r, 1.0f);
    const float l = pixelAt(kToLuvC3, {above, 0.0f, 0.0f}, 4, 0)[0];
    EXPECT_NE(l, 903.3f * (0.212671f * above));
    EXPECT_NEAR(l, 8.0f, 0.01f);
}

// L below 9e-05 in the inverse gives black, whatever U and V are.
TEST(Luv32fCases, InverseBelowTheGuardIsBlack) {
    for (int x : {0, 4}) {
        EXPECT_EQ(pixelAt(kToRgbC3, {8.9e-05f, 50.0f, -30.0f}, 5, x), (std::vector<float>{0.0f, 0.0f, 0.0f}));
        EXPECT_EQ(pixelAt(kToRgbC3, {0.0f, 0.0f, 0.0f}, 5, x), (std::vector<float>{0.0f, 0.0f, 0.0f}));
    }
}

// The inverse clamps to 0..1: L 100 with U, V 0 is white; a strong red clamps G and B.
TEST(Luv32fCases, InverseClampsToUnit) {
    const std::vector<float> white = pixelAt(kToRgbC3, {100.0f, 0.0f, 0.0f}, 1, 0);
    for (float v : white) EXPECT_NEAR(v, 1.0f, 0.001f);
    const std::vector<float> red = pixelAt(kToRgbC3, {60.0f, 250.0f, 80.0f}, 1, 0);
    EXPECT_EQ(red[0], 1.0f);
    EXPECT_EQ(red[1], 0.0f);
    EXPECT_EQ(red[2], 0.0f);
}

// A round trip through both ways returns the colour.
TEST(Luv32fCases, RoundTrip) {
    const float rgb[3] = {0.25f, 0.5f, 0.75f};
    const std::vector<float> luv = pixelAt(kToLuvC3, {rgb[0], rgb[1], rgb[2]}, 4, 0);
    const std::vector<float> back = pixelAt(kToRgbC3, luv, 4, 0);
    for (int c = 0; c < 3; ++c) EXPECT_NEAR(back[size_t(c)], rgb[c], 1e-4f);
}

// The BGR members read and write the first and third channels exchanged.
TEST(Luv32fCases, BgrMembersExchangeChannels) {
    EXPECT_EQ(pixelAt(kBgrToLuvC3, {0.75f, 0.5f, 0.25f}, 5, 4), pixelAt(kToLuvC3, {0.25f, 0.5f, 0.75f}, 5, 4));
    const std::vector<float> bgr = pixelAt(kToBgrC3, {40.0f, 20.0f, -30.0f}, 4, 0);
    const std::vector<float> rgb = pixelAt(kToRgbC3, {40.0f, 20.0f, -30.0f}, 4, 0);
    EXPECT_EQ(bgr, (std::vector<float>{rgb[2], rgb[1], rgb[0]}));
}

}  // namespace
