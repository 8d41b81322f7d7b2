// RGB <-> YCC, 8-bit interleaved: the four exports against the reference model (every
// width, height and step plan; every colour in the main loop and in the tail), the
// known cases, statuses and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

#include "harness.h"
#include "pxkcc.h"
#include "reference_ycc.h"

namespace {

using colortest::Member;
using colortest::pixelAt;

const Member kToYccC3 = colortest::c3Member("RGBToYCC_8u_C3R", pxkiRGBToYCC_8u_C3R, refycc::forward);
const Member kToYccAC4 = colortest::ac4Member("RGBToYCC_8u_AC4R", pxkiRGBToYCC_8u_AC4R, refycc::forward);
const Member kToRgbC3 = colortest::c3Member("YCCToRGB_8u_C3R", pxkiYCCToRGB_8u_C3R, refycc::inverse);
const Member kToRgbAC4 = colortest::ac4Member("YCCToRGB_8u_AC4R", pxkiYCCToRGB_8u_AC4R, refycc::inverse);

COLORTEST_PACKED_MEMBER_SUITE(Ycc8u, kToYccC3, kToYccAC4, kToRgbC3, kToRgbAC4);

// Black gives 0, 156, 137 in the tail (and in the main loop).
TEST(Ycc8uCases, BlackGivesTheOffsets) {
    EXPECT_EQ(pixelAt(kToYccC3, {0, 0, 0}, 9, 8), (std::vector<uint8_t>{0, 156, 137}));
    EXPECT_EQ(pixelAt(kToYccC3, {0, 0, 0}, 9, 0), (std::vector<uint8_t>{0, 156, 137}));
    EXPECT_EQ(pixelAt(kToYccAC4, {0, 0, 0, 0}, 5, 4), (std::vector<uint8_t>{0, 156, 137}));
}

// White: Yq = 16382 * 255 = 4177410; Y = (4079 * 2921) >> 16 = 181; the differences
// (4177920 - 4177410) >> 10 = 0 leave C1 156 and C2 137.
TEST(Ycc8uCases, WhiteInTheTail) {
    EXPECT_EQ(pixelAt(kToYccC3, {255, 255, 255}, 9, 8), (std::vector<uint8_t>{181, 156, 137}));
}

// The inverse tail as written: G's luma term a = 5564 Y is shifted by 16, not 12. For
// (Y, C1, C2) = (100, 156, 137): b = c = 0, so R = B = 556400 >> 12 = 135 and
// G = 556400 >> 16 = 8.
TEST(Ycc8uCases, InverseTailGreenAsWritten) {
    EXPECT_EQ(pixelAt(kToRgbC3, {100, 156, 137}, 9, 8), (std::vector<uint8_t>{135, 8, 135}));
    EXPECT_EQ(pixelAt(kToRgbAC4, {100, 156, 137, 0}, 5, 4), (std::vector<uint8_t>{135, 8, 135}));
}

// The main loop is the same conversion in 16-bit words: Y, C1, C2 (forward) and R, B
// (inverse) stay within 2 of the tail's values for every input, and both saturate
// instead of wrapping. (Inverse G differs by design: see above.)
TEST(Ycc8uCases, MainLoopStaysCloseToTheTail) {
    int worst = 0;
    for (uint32_t v = 0; v < (1u << 24); v += 7) {
        const uint8_t in[3] = {uint8_t(v >> 16), uint8_t(v >> 8), uint8_t(v)};
        uint8_t m[3], t[3];
        refycc::forwardMain(in, m);
        refycc::forwardTail(in, t);
        for (int c = 0; c < 3; ++c) worst = std::max(worst, std::abs(int(m[c]) - int(t[c])));
        refycc::inverseMain(in, m);
        refycc::inverseTail(in, t);
        worst = std::max(worst, std::abs(int(m[0]) - int(t[0])));
        worst = std::max(worst, std::abs(int(m[2]) - int(t[2])));
    }
    EXPECT_LE(worst, 2);
}

}  // namespace
