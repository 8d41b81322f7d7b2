// RGB <-> HSV, 8-bit interleaved: the four exports against the reference model (every
// width, height and step plan; every colour at a width with vector blocks and at one
// without), the known cases, statuses and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "harness.h"
#include "pxkcc.h"
#include "reference_hsv.h"

namespace {

using colortest::Member;
using colortest::pixelAt;

const Member kToHsvC3 = colortest::c3Member("RGBToHSV_8u_C3R", pxkiRGBToHSV_8u_C3R, refhsv::forward);
const Member kToHsvAC4 = colortest::ac4Member("RGBToHSV_8u_AC4R", pxkiRGBToHSV_8u_AC4R, refhsv::forward);
const Member kToRgbC3 = colortest::c3Member("HSVToRGB_8u_C3R", pxkiHSVToRGB_8u_C3R, refhsv::inverse);
const Member kToRgbAC4 = colortest::ac4Member("HSVToRGB_8u_AC4R", pxkiHSVToRGB_8u_AC4R, refhsv::inverse);

COLORTEST_PACKED_MEMBER_SUITE(Hsv8u, kToHsvC3, kToHsvAC4, kToRgbC3, kToRgbAC4);

float rcp(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }

TEST(Hsv8uCases, BlackAndWhite) {
    for (int x : {0, 4}) {
        EXPECT_EQ(pixelAt(kToHsvC3, {0, 0, 0}, 5, x), (std::vector<uint8_t>{0, 0, 0}));
        EXPECT_EQ(pixelAt(kToHsvC3, {255, 255, 255}, 5, x), (std::vector<uint8_t>{0, 0, 255}));
    }
}

// Pure red: H 0, V 255, and S = round((rcp(255) * 255) * 255): 254 or 255 by processor.
TEST(Hsv8uCases, PureRedSaturationByTheReciprocal) {
    const int s = int(std::nearbyint((rcp(255.0f) * 255.0f) * 255.0f));
    EXPECT_TRUE(s == 254 || s == 255);
    for (int x : {0, 4}) EXPECT_EQ(pixelAt(kToHsvC3, {255, 0, 0}, 5, x), (std::vector<uint8_t>{0, uint8_t(s), 255}));
}

// R and B tied at the maximum: the blue rule (h = cG - cR + 4) replaces the red rule.
// Both give 212.5 codes up to the reciprocal's error, which pushes them to different
// sides of the tie; the export agrees with the blue rule wherever the two differ.
TEST(Hsv8uCases, BlueWinsATieWithRed) {
    int differing = 0;
    for (int g = 0; g < 255; ++g) {
        for (int m = g + 1; m < 256; ++m) {
            const refhsv::Triple blue = refhsv::rgbToHsv(uint8_t(m), uint8_t(g), uint8_t(m));
            const refhsv::Triple red = refhsv::rgbToHsv(uint8_t(m), uint8_t(g), uint8_t(m), refhsv::Ties::RedWins);
            if (blue.a == red.a) continue;
            ++differing;
            EXPECT_EQ(pixelAt(kToHsvC3, {uint8_t(m), uint8_t(g), uint8_t(m)}, 5, 0)[0], blue.a) << m << " " << g;
            EXPECT_EQ(pixelAt(kToHsvC3, {uint8_t(m), uint8_t(g), uint8_t(m)}, 5, 4)[0], blue.a) << m << " " << g;
            if (differing > 40) return;
        }
    }
    if (differing == 0) GTEST_SKIP() << "this processor's reciprocal makes both rules agree";
}

// Hue 255 wraps round to hue 0.
TEST(Hsv8uCases, Hue255BehavesAsHue0) {
    for (uint8_t s : {1, 100, 255}) {
        for (uint8_t v : {10, 200, 255}) {
            for (int x : {0, 4}) {
                EXPECT_EQ(pixelAt(kToRgbC3, {255, s, v}, 5, x), pixelAt(kToRgbC3, {0, s, v}, 5, x));
            }
        }
    }
    EXPECT_EQ(pixelAt(kToRgbC3, {255, 255, 255}, 5, 0), (std::vector<uint8_t>{255, 0, 0}));
}

// S 0 returns V exactly, whatever the hue.
TEST(Hsv8uCases, NoSaturationReturnsValue) {
    for (int v = 0; v < 256; v += 5) {
        for (int x : {0, 4}) {
            EXPECT_EQ(pixelAt(kToRgbC3, {77, 0, uint8_t(v)}, 5, x), (std::vector<uint8_t>{uint8_t(v), uint8_t(v), uint8_t(v)}));
        }
    }
}

}  // namespace
