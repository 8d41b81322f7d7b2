// RGB <-> HLS, 8-bit interleaved: the four exports against the reference model (every
// width, height and step plan; every colour in the main loop and in the tail), the
// known cases, statuses and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "harness.h"
#include "pxkcc.h"
#include "reference_hls.h"

namespace {

using colortest::Args;
using colortest::Member;
using colortest::pixelAt;
using pxktest::Surface;
using refhls::Path;


const Member kRgbToHlsC3{"RGBToHLS_8u_C3R", colortest::kC3, colortest::kC3, colortest::packedCall(pxkiRGBToHLS_8u_C3R),
                         [](const Surface& s, Surface& d, int w, int h) { refhls::rgbToHlsRegion(s, d, w, h, 8); }};
const Member kRgbToHlsAC4{"RGBToHLS_8u_AC4R", colortest::kAC4, colortest::kAC4, colortest::packedCall(pxkiRGBToHLS_8u_AC4R),
                          [](const Surface& s, Surface& d, int w, int h) { refhls::rgbToHlsRegion(s, d, w, h, 4); },
                          true};
const Member kHlsToRgbC3{"HLSToRGB_8u_C3R", colortest::kC3, colortest::kC3, colortest::packedCall(pxkiHLSToRGB_8u_C3R),
                         [](const Surface& s, Surface& d, int w, int h) { refhls::hlsToRgbRegion(s, d, w, h, 8); }};
const Member kHlsToRgbAC4{"HLSToRGB_8u_AC4R", colortest::kAC4, colortest::kAC4, colortest::packedCall(pxkiHLSToRGB_8u_AC4R),
                          [](const Surface& s, Surface& d, int w, int h) { refhls::hlsToRgbRegion(s, d, w, h, 4); },
                          true};

COLORTEST_PACKED_MEMBER_SUITE(Hls8u, kRgbToHlsC3, kRgbToHlsAC4, kHlsToRgbC3, kHlsToRgbAC4);

float rcp(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }

// Pure red: H 0 and L 127 everywhere; S is trunc((255 r) 255) with r the reciprocal
// of 255, refined once in the tail (255 on most processors), unrefined in the main
// loop (254 or 255).
TEST(Hls8uCases, PureRedGivesH0L127AndSaturationByTheReciprocal) {
    const float r = rcp(255.0f);
    const float r2 = 2.0f * r - 255.0f * r * r;
    const int tailS = int((255.0f * r2) * 255.0f);
    const int mainS = int((255.0f * r) * 255.0f);
    EXPECT_TRUE(tailS == 254 || tailS == 255);
    EXPECT_TRUE(mainS == 254 || mainS == 255);
    for (const Member* m : {&kRgbToHlsC3, &kRgbToHlsAC4}) {
        const std::vector<uint8_t> px = m->src.channels == 3 ? std::vector<uint8_t>{255, 0, 0}
                                                            : std::vector<uint8_t>{255, 0, 0, 9};
        EXPECT_EQ(pixelAt(*m, px, 9, 8), (std::vector<uint8_t>{0, 127, uint8_t(tailS)})) << m->name;
        EXPECT_EQ(pixelAt(*m, px, 9, 0), (std::vector<uint8_t>{0, 127, uint8_t(mainS)})) << m->name;
    }
}

TEST(Hls8uCases, BlackAndWhiteHaveNoHueOrSaturation) {
    for (int width : {1, 8, 9}) {
        EXPECT_EQ(pixelAt(kRgbToHlsC3, {0, 0, 0}, width, width - 1), (std::vector<uint8_t>{0, 0, 0}));
        EXPECT_EQ(pixelAt(kRgbToHlsC3, {255, 255, 255}, width, width - 1), (std::vector<uint8_t>{0, 255, 0}));
        EXPECT_EQ(pixelAt(kRgbToHlsAC4, {255, 255, 255, 0}, width, 0), (std::vector<uint8_t>{0, 255, 0}));
    }
}

// R and G tied at the maximum: the red rule, h = 60 (G - B) / d = 60 degrees, so
// H = trunc(60 * 0.708333313) = 42; L = (200 + 50) / 2 = 125, S = 150 / 250 * 255 = 153.
TEST(Hls8uCases, RedWinsATieWithGreen) {
    for (int x : {0, 8}) {
        const std::vector<uint8_t> out = pixelAt(kRgbToHlsC3, {200, 200, 50}, 9, x);
        EXPECT_EQ(out[0], 42);
        EXPECT_EQ(out[1], 125);
        EXPECT_TRUE(out[2] == 152 || out[2] == 153);
    }
}

// A gray HLS pixel: the tail returns L exactly; the main loop trunc(l * 0.00392156886
// * 255), which may be l - 1.
TEST(Hls8uCases, GrayReturnsLInTheTailAndTheProductInTheMainLoop) {
    for (int l = 0; l < 256; ++l) {
        const int product = int(float(l) * 0.00392156886f * 255.0f);
        EXPECT_TRUE(product == l || product == l - 1);
        const uint8_t L = uint8_t(l);
        EXPECT_EQ(pixelAt(kHlsToRgbC3, {77, L, 0}, 9, 8), (std::vector<uint8_t>{L, L, L})) << l;
        EXPECT_EQ(pixelAt(kHlsToRgbC3, {77, L, 0}, 9, 3), (std::vector<uint8_t>{uint8_t(product), uint8_t(product),
                                                                           uint8_t(product)}))
            << l;
        EXPECT_EQ(pixelAt(kHlsToRgbAC4, {77, L, 0, 1}, 5, 4), (std::vector<uint8_t>{L, L, L})) << l;
    }
}

// Hue 0 with full saturation and L of one half is red; hue 255 (360 degrees) takes red
// position 120 after the subtraction and gives red as well.
TEST(Hls8uCases, HueZeroAndFullTurnAreRed) {
    for (int x : {0, 8}) {
        const std::vector<uint8_t> zero = pixelAt(kHlsToRgbC3, {0, 128, 255}, 9, x);
        const std::vector<uint8_t> turn = pixelAt(kHlsToRgbC3, {255, 128, 255}, 9, x);
        EXPECT_GE(zero[0], 254);
        EXPECT_LE(zero[1], 1);
        EXPECT_LE(zero[2], 1);
        EXPECT_GE(turn[0], 254);
        EXPECT_LE(turn[1], 1);
    }
}

// The main loop of AC4 reads the destination and puts its alpha back; the tail does not
// write it: the alpha bytes keep their values at every width (also checked by the
// sweep, which protects them).
TEST(Hls8uCases, Ac4AlphaKeepsItsValue) {
    for (const Member* m : {&kRgbToHlsAC4, &kHlsToRgbAC4}) {
        for (int width = 1; width <= 21; ++width) {
            Surface src = Surface::packed(width, 1, 4, 4 * width);
            Surface dst = Surface::packed(width, 1, 4, 4 * width);
            pxktest::Rng rng{uint32_t(width)};
            src.fillRandom(rng);
            dst.fillRandom(rng);
            std::vector<uint8_t> alpha;
            for (int x = 0; x < width; ++x) alpha.push_back(dst.at(x, 0, 3));
            ASSERT_EQ(m->call(Args{src.data(), nullptr, src.step(), dst.data(), nullptr, dst.step(), {width, 1}}), pxkOk);
            for (int x = 0; x < width; ++x) EXPECT_EQ(dst.at(x, 0, 3), alpha[size_t(x)]) << m->name << " " << x;
        }
    }
}

}  // namespace
