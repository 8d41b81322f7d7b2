// RGB <-> XYZ, 8-bit interleaved: the four exports against the reference model (every
// width, height and step plan; every colour in the main loop and in the tail), the
// known cases, statuses and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "harness.h"
#include "pxkcc.h"
#include "reference_xyz.h"

namespace {

using colortest::Member;
using colortest::pixelAt;

const Member kToXyzC3 = colortest::c3Member("RGBToXYZ_8u_C3R", pxkiRGBToXYZ_8u_C3R, refxyz::forwardPixel);
const Member kToXyzAC4 = colortest::ac4Member("RGBToXYZ_8u_AC4R", pxkiRGBToXYZ_8u_AC4R, refxyz::forwardPixel);
const Member kToRgbC3 = colortest::c3Member("XYZToRGB_8u_C3R", pxkiXYZToRGB_8u_C3R, refxyz::inversePixel);
const Member kToRgbAC4 = colortest::ac4Member("XYZToRGB_8u_AC4R", pxkiXYZToRGB_8u_AC4R, refxyz::inversePixel);

COLORTEST_PACKED_MEMBER_SUITE(Xyz8u, kToXyzC3, kToXyzAC4, kToRgbC3, kToRgbAC4);

// White: the main loop gives X = (13515 + 11717 + 5912) * 255 >> 15 = 242, Y 255 and
// Z 255 after saturation; the tail X = 62288 * 255 >> 16 = 242, Y = 65534 * 255 >> 16
// = 254, and Z limited to 255.
TEST(Xyz8uCases, WhiteInTheMainLoopAndInTheTail) {
    EXPECT_EQ(pixelAt(kToXyzC3, {255, 255, 255}, 9, 0), (std::vector<uint8_t>{242, 255, 255}));
    EXPECT_EQ(pixelAt(kToXyzC3, {255, 255, 255}, 9, 8), (std::vector<uint8_t>{242, 254, 255}));
    EXPECT_EQ(pixelAt(kToXyzAC4, {255, 255, 255, 0}, 5, 3), (std::vector<uint8_t>{242, 255, 255}));
    EXPECT_EQ(pixelAt(kToXyzAC4, {255, 255, 255, 0}, 5, 4), (std::vector<uint8_t>{242, 254, 255}));
}

// Inverse of (255, 0, 0): the main loop R = 26546 * 255 >> 13 saturates to 255, G =
// -7939 * 255 >> 13 becomes 0, B = 456 * 255 >> 13 = 14; the tail likewise 255, 0 and
// 3646 * 255 >> 16 = 14.
TEST(Xyz8uCases, InverseOfPureX) {
    EXPECT_EQ(pixelAt(kToRgbC3, {255, 0, 0}, 9, 0), (std::vector<uint8_t>{255, 0, 14}));
    EXPECT_EQ(pixelAt(kToRgbC3, {255, 0, 0}, 9, 8), (std::vector<uint8_t>{255, 0, 14}));
}

TEST(Xyz8uCases, BlackStaysBlack) {
    for (const Member* m : {&kToXyzC3, &kToRgbC3}) {
        EXPECT_EQ(pixelAt(*m, {0, 0, 0}, 9, 0), (std::vector<uint8_t>{0, 0, 0}));
        EXPECT_EQ(pixelAt(*m, {0, 0, 0}, 9, 8), (std::vector<uint8_t>{0, 0, 0}));
    }
}

// The main loop truncates without a rounding term: G 1 alone gives
// X = 11717 >> 15 = 0 in the main loop, and 23434 >> 16 = 0 in the tail; G 255 gives
// Y = 23434 * 255 >> 15 = 182 and 46868 * 255 >> 16 = 182.
TEST(Xyz8uCases, TruncatesWithoutRounding) {
    EXPECT_EQ(pixelAt(kToXyzC3, {0, 1, 0}, 9, 0), (std::vector<uint8_t>{0, 0, 0}));
    EXPECT_EQ(pixelAt(kToXyzC3, {0, 255, 0}, 9, 0)[1], 182);
    EXPECT_EQ(pixelAt(kToXyzC3, {0, 255, 0}, 9, 8)[1], 182);
}

}  // namespace
