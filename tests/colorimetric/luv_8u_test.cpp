// RGB and BGR <-> LUV, 8-bit interleaved: the six exports against the reference model
// (every width, height and step plan; every colour, in the main loop and, for the
// inverse, in the tail), the documented cases with literal values, statuses and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

#include "harness.h"
#include "pxkcc.h"
#include "reference_luv.h"

namespace {

using colortest::kAC4;
using colortest::kC3;
using colortest::Member;
using colortest::pixelAt;

void bgrForward(const uint8_t in[3], bool tail, uint8_t out[3]) {
    const uint8_t rgb[3] = {in[2], in[1], in[0]};
    refluv::forward8(rgb, tail, out);
}
void bgrInverse(const uint8_t in[3], bool tail, uint8_t out[3]) {
    refluv::inverse8(in, tail, out);
    std::swap(out[0], out[2]);
}

// The forward members are scalar (every column alike); the inverse ones have main
// loops over width & ~7.
const Member kToLuvC3{"RGBToLUV_8u_C3R", kC3, kC3, colortest::packedCall(pxkiRGBToLUV_8u_C3R),
                      colortest::byColumns(8, refluv::forward8)};
const Member kToLuvAC4{"RGBToLUV_8u_AC4R", kAC4, kAC4, colortest::packedCall(pxkiRGBToLUV_8u_AC4R),
                       colortest::byColumns(8, refluv::forward8), true};
const Member kBgrToLuvC3{"BGRToLUV_8u_C3R", kC3, kC3, colortest::packedCall(pxkiBGRToLUV_8u_C3R),
                         colortest::byColumns(8, bgrForward)};
const Member kToRgbC3{"LUVToRGB_8u_C3R", kC3, kC3, colortest::packedCall(pxkiLUVToRGB_8u_C3R),
                      colortest::byColumns(8, refluv::inverse8)};
const Member kToRgbAC4{"LUVToRGB_8u_AC4R", kAC4, kAC4, colortest::packedCall(pxkiLUVToRGB_8u_AC4R),
                       colortest::byColumns(8, refluv::inverse8), true};
const Member kToBgrC3{"LUVToBGR_8u_C3R", kC3, kC3, colortest::packedCall(pxkiLUVToBGR_8u_C3R),
                      colortest::byColumns(8, bgrInverse)};

class Luv8u : public ::testing::TestWithParam<Member> {};
TEST_P(Luv8u, MatchesReferenceAtEveryWidthHeightAndStep) { colortest::sweepAgainstReference(GetParam()); }
TEST_P(Luv8u, ResultsDependOnColumnNotAddress) { colortest::alignmentsAgainstReference(GetParam()); }
TEST_P(Luv8u, NullPointersThenSize) { colortest::checkCommonStatuses(GetParam()); }
TEST_P(Luv8u, StepsAreNotTested) { colortest::checkStepsUntested(GetParam()); }
INSTANTIATE_TEST_SUITE_P(Members, Luv8u,
                         ::testing::Values(kToLuvC3, kToLuvAC4, kBgrToLuvC3, kToRgbC3, kToRgbAC4, kToBgrC3),
                         colortest::testName);

// Every colour through the forward form (one form in every column and member), and
// through the inverse's main loop and its tail, which cubes in double. The other
// members share these forms and differ in layout only, which the sweep covers.
TEST(Luv8uEveryColour, Forward) { colortest::everyColour(kToLuvC3, 256); }
TEST(Luv8uEveryColour, InverseMainLoop) { colortest::everyColour(kToRgbC3, 256); }
TEST(Luv8uEveryColour, InverseTail) { colortest::everyColour(kToRgbC3, 7); }

// Black gives L 0, U trunc(134 * 255 / 354 + 0.5) = 97, V trunc(140 * 255 / 262 + 0.5)
// = 136.
TEST(Luv8uCases, Black) {
    EXPECT_EQ(pixelAt(kToLuvC3, {0, 0, 0}, 3, 1), (std::vector<uint8_t>{0, 97, 136}));
    EXPECT_EQ(pixelAt(kToLuvAC4, {0, 0, 0, 9}, 3, 2), (std::vector<uint8_t>{0, 97, 136}));
    EXPECT_EQ(pixelAt(kBgrToLuvC3, {0, 0, 0}, 1, 0), (std::vector<uint8_t>{0, 97, 136}));
}

// White: L 100 scales to 255 (or 254 where Y rounds just below 1), U and V near their
// neutral codes.
TEST(Luv8uCases, White) {
    const std::vector<uint8_t> w = pixelAt(kToLuvC3, {255, 255, 255}, 3, 0);
    EXPECT_GE(w[0], 254);
    EXPECT_NEAR(w[1], 97, 1);
    EXPECT_NEAR(w[2], 136, 1);
}

// Pure red: L 53.24, U 175.0, V 37.8 give about 136, 223 and 173.
TEST(Luv8uCases, Red) {
    const std::vector<uint8_t> r = pixelAt(kToLuvC3, {255, 0, 0}, 3, 0);
    EXPECT_NEAR(r[0], 135, 1);
    EXPECT_NEAR(r[1], 223, 1);
    EXPECT_NEAR(r[2], 173, 1);
    EXPECT_EQ(pixelAt(kBgrToLuvC3, {0, 0, 255}, 3, 0), r);
}

// The inverse: L 0 gives black whatever U and V are, in the main loop and the tail;
// (255, 97, 136) comes back near white; each channel saturates.
TEST(Luv8uCases, Inverse) {
    for (int x : {0, 8}) {
        EXPECT_EQ(pixelAt(kToRgbC3, {0, 200, 17}, 9, x), (std::vector<uint8_t>{0, 0, 0}));
        for (uint8_t v : pixelAt(kToRgbC3, {255, 97, 136}, 9, x)) EXPECT_GE(v, 250);
        const std::vector<uint8_t> red = pixelAt(kToRgbC3, {150, 255, 200}, 9, x);
        EXPECT_EQ(red[0], 255);
        EXPECT_EQ(red[1], 0);
    }
}

}  // namespace
