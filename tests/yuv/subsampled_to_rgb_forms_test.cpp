// Subsampled YCbCr and YUV -> RGB: the forms of the reference model against values
// worked by hand, and every member on uniform images with literal expected values:
// black and white luma with neutral chroma, and inputs on which a member's vector form
// and its other form differ, so that each column shows which form it got.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "subsampled_to_rgb_harness.h"
#include "subsampled_to_rgb_members.h"
#include "subsampled_to_rgb_reference.h"

namespace {

using s2rgb::Member;
using s2rgb::Ycc;
using subrgb::Columns;
using subrgb::Dest;
using subrgb::Rgb;
using subrgb::Sampling;

std::string show(const Rgb& v) { return s2rgb::rgbText(v.r, v.g, v.b); }
std::string rgb(int r, int g, int b) { return s2rgb::rgbText(r, g, b); }

// ---------------------------------------------------------------------------------
// The forms, by hand
// ---------------------------------------------------------------------------------

// Y 16 with neutral chroma: every studio-range form gives black.
//  raw-chroma offset: R = 1220544 + 13388160 - 14608761 = -57, G = 1220544 - 6819968
//  - 3288320 + 8887730 = -14, B = 1220544 + 16919808 - 18140365 = -13: all clamp to 0.
//  4:1:1: 76294 * 16 - 1187936 = 32768, >> 16 = 0. Filter: 76309 * 16 - 1220944 = 0.
//  High-product: y = h(9536, 0) = 0, (0 + 8) >> 4 = 0.
TEST(SubsampledToRgbForms, LumaSixteenNeutralIsBlack) {
    EXPECT_EQ(show(subrgb::rawChromaOffsetForm(16, 128, 128)), rgb(0, 0, 0));
    EXPECT_EQ(show(subrgb::form411(16, 128, 128)), rgb(0, 0, 0));
    EXPECT_EQ(show(subrgb::highProduct411And422Form(16, 128, 128)), rgb(0, 0, 0));
    EXPECT_EQ(show(subrgb::filterForm(16, 128, 128)), rgb(0, 0, 0));
    EXPECT_EQ(show(subrgb::wideRoundedForm(16, 128, 128)), rgb(0, 0, 0));
    EXPECT_EQ(show(subrgb::highProductInverseForm(16, 128, 128)), rgb(0, 0, 0));
}

// Y 235 with neutral chroma: 255 in the rounded forms, 254 in the two without a half.
//  wide rounded: 76284 * 235 - 1187776 = 16738964, >> 16 = 255.
//  4:1:1: 76294 * 235 - 1187936 = 16741154, >> 16 = 255.
//  raw-chroma offset: R = 17926740 + 13388160 - 14608761 = 16706139, G = 17926740
//  - 6819968 - 3288320 + 8887730 = 16706182, B = 17926740 + 16919808 - 18140365 =
//  16706183: each >> 16 = 254.
//  filter: 76309 * 235 - 1220944 = 16711671, >> 16 = 254.
//  high-product 4:1:1 and 4:2:2: y = h(9536, 219 * 128) = 267313152 >> 16 = 4078,
//  (4078 + 8) >> 4 = 255; the inverse one: h(9535, 28032) = 4078 as well.
TEST(SubsampledToRgbForms, Luma235Neutral) {
    EXPECT_EQ(show(subrgb::wideRoundedForm(235, 128, 128)), rgb(255, 255, 255));
    EXPECT_EQ(show(subrgb::form411(235, 128, 128)), rgb(255, 255, 255));
    EXPECT_EQ(show(subrgb::rawChromaOffsetForm(235, 128, 128)), rgb(254, 254, 254));
    EXPECT_EQ(show(subrgb::filterForm(235, 128, 128)), rgb(254, 254, 254));
    EXPECT_EQ(show(subrgb::highProduct411And422Form(235, 128, 128)), rgb(255, 255, 255));
    EXPECT_EQ(show(subrgb::highProductInverseForm(235, 128, 128)), rgb(255, 255, 255));
}

// The Cb term of G in the high-product 4:1:1 and 4:2:2 form is the floor of the
// negative product. (16, 27, 128): cb = -101 * 128 = -12928; h(-3203, -12928) =
// 41408384 >> 16 = 631 (631.8 rounded down), so G = (0 + 631 + 0 + 8) >> 4 = 39. The
// negated floor of the positive product, -h(3203, -12928) = 632, would give 40.
// R = (0 + 0 + 8) >> 4 = 0; B = (h(16523, -12928) + 8) >> 4 < 0, so 0.
TEST(SubsampledToRgbForms, HighProductCbTermIsTheFloorOfTheNegativeProduct) {
    EXPECT_EQ(show(subrgb::highProduct411And422Form(16, 27, 128)), rgb(0, 39, 0));
}

// (20, 10, 10): y = h(9536, 512) = 74; cb = cr = -15104. High-product G = (74 +
// h(-3203, -15104) + h(-6660, -15104) + 8) >> 4 = (74 + 738 + 1534 + 8) >> 4 = 147.
// Raw-chroma offset G = (1525680 - 532810 - 256900 + 8887730) >> 16 = 9623700 >> 16 =
// 146. R and B are below 0 in both.
TEST(SubsampledToRgbForms, HighProductAgainstRawChromaOffset) {
    EXPECT_EQ(show(subrgb::highProduct411And422Form(20, 10, 10)), rgb(0, 147, 0));
    EXPECT_EQ(show(subrgb::rawChromaOffsetForm(20, 10, 10)), rgb(0, 146, 0));
}

// (20, 44, 48): cb = -10752, cr = -10240. High-product G = (74 + h(-3203, -10752) +
// h(-6660, -10240) + 8) >> 4 = (74 + 525 + 1040 + 8) >> 4 = 102. 4:1:1 G = (1525880 +
// 2152500 + 4262480 - 1187936) >> 16 = 6752924 >> 16 = 103.
TEST(SubsampledToRgbForms, HighProductAgainst411) {
    EXPECT_EQ(show(subrgb::highProduct411And422Form(20, 44, 48)), rgb(0, 102, 0));
    EXPECT_EQ(show(subrgb::form411(20, 44, 48)), rgb(0, 103, 0));
}

// (20, 27, 124): the inverse high-product form's G = (74 - h(6660, -512) - h(3211,
// -12928) + 8) >> 4 = (74 + 53 + 634 + 8) >> 4 = 48; the wide rounded G = (1525680 +
// 2594690 + 213124 - 1187776) >> 16 = 3145718 >> 16 = 47.
TEST(SubsampledToRgbForms, HighProductInverseAgainstWideRounded) {
    EXPECT_EQ(show(subrgb::highProductInverseForm(20, 27, 124)), rgb(0, 48, 0));
    EXPECT_EQ(show(subrgb::wideRoundedForm(20, 27, 124)), rgb(0, 47, 0));
}

// Filter form at Y 100: Cb 50, Cr 200 gives R = (7630900 + 7530984 - 1220944) >> 16 =
// 212, G = (7630900 + 2002650 - 3836088 - 1220944) >> 16 = 69, B below 0; Cb 100, Cr
// 150 gives (132, 90, 41); Cb 150, Cr 100 gives (53, 111, 142).
TEST(SubsampledToRgbForms, FilterForm) {
    EXPECT_EQ(show(subrgb::filterForm(100, 50, 200)), rgb(212, 69, 0));
    EXPECT_EQ(show(subrgb::filterForm(100, 100, 150)), rgb(132, 90, 41));
    EXPECT_EQ(show(subrgb::filterForm(100, 150, 100)), rgb(53, 111, 142));
}

// (120, 40, 210), U = -88, V = 82. Doubled: R = (240 + 186) >> 1 = 213, G = (240 + 69
// - 96) >> 1 = 106, B below 0. Truncating with full constants: R = (7864320 + 6126302)
// >> 16 = 213, G = (7864320 - 3122232 + 2272248) >> 16 = 107, B below 0.
TEST(SubsampledToRgbForms, DoubledAgainstTruncatingFull) {
    EXPECT_EQ(show(subrgb::yuvDoubledForm(120, 40, 210)), rgb(213, 106, 0));
    EXPECT_EQ(show(subrgb::yuvTruncatingFullForm(120, 40, 210)), rgb(213, 107, 0));
}

// (100, 190, 190), U = V = 62, u = v = 7936. Sixteenths: R = (1600 + 1130 + 8) >> 4 =
// 171, G = (1600 - (390 + 576) + 8) >> 4 = 40, B = (1600 + 2015 + 8) >> 4 = 226. Half
// rounded (171, 39, 226); truncating with full constants (170, 39, 225); doubled
// (170, 39, 225).
TEST(SubsampledToRgbForms, SixteenthsAgainstTheOthers) {
    EXPECT_EQ(show(subrgb::sixteenthsForm(100, 190, 190)), rgb(171, 40, 226));
    EXPECT_EQ(show(subrgb::yuvHalfRoundedForm(100, 190, 190)), rgb(171, 39, 226));
    EXPECT_EQ(show(subrgb::yuvTruncatingFullForm(100, 190, 190)), rgb(170, 39, 225));
    EXPECT_EQ(show(subrgb::yuvDoubledForm(100, 190, 190)), rgb(170, 39, 225));
}

// (0, 161, 0), U = 33, V = -128, u = 528, v = -2048. Doubled 9339: G = (0 + h(-3228,
// 528) + h(-4760, -2048)) >> 1 = (-27 + 148) >> 1 = 60, B = h(16646, 528) >> 1 = 134
// >> 1 = 67, R below 0. The doubled form's G: (-26 + 148) >> 1 = 61.
TEST(SubsampledToRgbForms, Doubled9339) {
    EXPECT_EQ(show(subrgb::doubled9339Form(0, 161, 0)), rgb(0, 60, 67));
    EXPECT_EQ(show(subrgb::yuvDoubledForm(0, 161, 0)), rgb(0, 61, 67));
}

// Neutral chroma leaves every YUV form at grey Y.
TEST(SubsampledToRgbForms, YuvNeutralChromaIsGrey) {
    for (int y : {0, 1, 16, 100, 235, 254, 255}) {
        const std::string grey = rgb(y, y, y);
        EXPECT_EQ(show(subrgb::yuvTruncatingFullForm(y, 128, 128)), grey) << y;
        EXPECT_EQ(show(subrgb::sixteenthsForm(y, 128, 128)), grey) << y;
        EXPECT_EQ(show(subrgb::doubled9339Form(y, 128, 128)), grey) << y;
    }
}

// ---------------------------------------------------------------------------------
// Every member, column by column
// ---------------------------------------------------------------------------------

// What a member gives for a uniform input: `vector` in the columns below `cols(w)`,
// `other` in the rest of the columns it converts.
struct ColumnCase {
    const char* member;
    int block;  // vector columns below c - c % block of the c converted columns; -1 all, 0 none
    Ycc input;
    std::string vector;
    std::string other;
};

// Columns each member converts in a row of `w`: 4:2:0 even widths, 4:1:1 multiples of
// 4, YCbCr 4:2:2 planes whole pairs; the others every column.
int convertedColumns(const Member& m, int w) {
    if (m.rule.sampling == Sampling::S420) return w - w % 2;
    if (m.rule.sampling == Sampling::S411) return w - w % 4;
    if (m.name == "YCbCr422ToBGR_8u_P3C3R" || m.name == "YCbCr422ToRGB_8u_P3C3R") return w - w % 2;
    return w;
}

int vectorColumnsOf(int block, int c) {
    if (block < 0) return c;
    if (block == 0) return 0;
    return c - c % block;
}

// A run of columns by form: width, height, and for each converted column the expected
// value; unconverted columns and rows hold the fill; byte 3 holds alpha, 0 or the fill.
void expectColumns(const ColumnCase& k, int w, int h) {
    const Member& m = s2rgb::memberNamed(k.member);
    if (w < m.least.width || h < m.least.height) return;
    // A packed row of one pixel holds one chroma byte, which serves as both: a uniform
    // image of two different chroma samples has no such row (see the packed tests).
    if (w == 1 && m.rule.source == subrgb::Source::C2 && k.input.cb != k.input.cr) return;
    SCOPED_TRACE(m.name + " " + std::to_string(w) + "x" + std::to_string(h));
    const uint8_t alpha = 0x3D, fill = 0xEE;
    const pxktest::Surface d = s2rgb::convertUniform(m, w, h, k.input, alpha, fill);
    const int c = convertedColumns(m, w);
    const int rows = m.rule.sampling == Sampling::S420 ? h - h % 2 : h;
    const int v = vectorColumnsOf(k.block, c);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const bool converted = x < c && y < rows;
            const std::string want = !converted ? rgb(fill, fill, fill) : (x < v ? k.vector : k.other);
            EXPECT_EQ(s2rgb::rgbAt(m, d, x, y), want) << "pixel " << x << "," << y;
            if (m.rule.dest == Dest::C4 || m.rule.dest == Dest::AC4) {
                const int a = !converted ? fill : (m.rule.dest == Dest::C4 ? alpha : 0);
                EXPECT_EQ(s2rgb::channelAt(m, d, x, y, 3), a) << "alpha of pixel " << x << "," << y;
            }
        }
    }
}

const std::vector<ColumnCase>& columnCases() {
    const Ycc black{16, 128, 128}, white{235, 128, 128};
    const Ycc hpInv{20, 27, 124}, hpRaw{20, 10, 10}, hp411{20, 44, 48};
    const Ycc yuvA{120, 40, 210}, yuvB{100, 190, 190}, yuvC{0, 161, 0};
    static const std::vector<ColumnCase> cases = {
        // Y 16 and Y 235 with neutral chroma, every studio-range member.
        {"YCbCr420ToBGR_8u_P2C3R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr420ToBGR_8u_P2C4R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr420ToRGB_8u_P2C3R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr420ToRGB_8u_P2C4R", 0, black, "", rgb(0, 0, 0)},
        {"YCrCb420ToBGR_8u_P2C3R", 0, black, "", rgb(0, 0, 0)},
        {"YCrCb420ToBGR_8u_P2C4R", 0, black, "", rgb(0, 0, 0)},
        {"YCrCb420ToRGB_8u_P2C3R", 0, black, "", rgb(0, 0, 0)},
        {"YCrCb420ToRGB_8u_P2C4R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr420ToBGR_8u_P3C3R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr420ToBGR_8u_P3C4R", 8, black, rgb(0, 0, 0), rgb(0, 0, 0)},
        {"YCbCr420ToRGB_8u_P3C3R", 8, black, rgb(0, 0, 0), rgb(0, 0, 0)},
        {"YCrCb420ToRGB_8u_P3C4R", 8, black, rgb(0, 0, 0), rgb(0, 0, 0)},
        {"YCrCb420ToBGR_Filter_8u_P3C4R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr422ToBGR_8u_C2C3R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr422ToBGR_8u_C2C4R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr422ToRGB_8u_C2C3R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr422ToRGB_8u_C2C4R", 0, black, "", rgb(0, 0, 0)},
        {"YCrCb422ToBGR_8u_C2C3R", 0, black, "", rgb(0, 0, 0)},
        {"YCrCb422ToBGR_8u_C2C4R", 0, black, "", rgb(0, 0, 0)},
        {"YCrCb422ToRGB_8u_C2C3R", 8, black, rgb(0, 0, 0), rgb(0, 0, 0)},
        {"YCrCb422ToRGB_8u_C2C4R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr422ToRGB_8u_C2P3R", 8, black, rgb(0, 0, 0), rgb(0, 0, 0)},
        {"YCrCb422ToRGB_8u_C2P3R", 8, black, rgb(0, 0, 0), rgb(0, 0, 0)},
        {"YCbCr422ToBGR_8u_P3C3R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr422ToRGB_8u_P3C3R", 0, black, "", rgb(0, 0, 0)},
        {"YCbCr411ToBGR_8u_P3C3R", 8, black, rgb(0, 0, 0), rgb(0, 0, 0)},
        {"YCbCr411ToBGR_8u_P3C4R", 8, black, rgb(0, 0, 0), rgb(0, 0, 0)},

        {"YCbCr420ToBGR_8u_P2C3R", 0, white, "", rgb(255, 255, 255)},
        {"YCbCr420ToBGR_8u_P2C4R", 0, white, "", rgb(255, 255, 255)},
        {"YCbCr420ToRGB_8u_P2C3R", 0, white, "", rgb(255, 255, 255)},
        {"YCbCr420ToRGB_8u_P2C4R", 0, white, "", rgb(255, 255, 255)},
        {"YCrCb420ToBGR_8u_P2C3R", 0, white, "", rgb(255, 255, 255)},
        {"YCrCb420ToBGR_8u_P2C4R", 0, white, "", rgb(255, 255, 255)},
        {"YCrCb420ToRGB_8u_P2C3R", 0, white, "", rgb(255, 255, 255)},
        {"YCrCb420ToRGB_8u_P2C4R", 0, white, "", rgb(255, 255, 255)},
        {"YCbCr420ToBGR_8u_P3C3R", 0, white, "", rgb(255, 255, 255)},
        {"YCbCr420ToBGR_8u_P3C4R", 8, white, rgb(255, 255, 255), rgb(255, 255, 255)},
        {"YCbCr420ToRGB_8u_P3C3R", 8, white, rgb(255, 255, 255), rgb(255, 255, 255)},
        {"YCrCb420ToRGB_8u_P3C4R", 8, white, rgb(255, 255, 255), rgb(255, 255, 255)},
        {"YCrCb420ToBGR_Filter_8u_P3C4R", 0, white, "", rgb(254, 254, 254)},
        {"YCbCr422ToBGR_8u_C2C3R", 0, white, "", rgb(255, 255, 255)},
        {"YCbCr422ToBGR_8u_C2C4R", 0, white, "", rgb(255, 255, 255)},
        {"YCbCr422ToRGB_8u_C2C3R", 0, white, "", rgb(255, 255, 255)},
        {"YCbCr422ToRGB_8u_C2C4R", 0, white, "", rgb(255, 255, 255)},
        {"YCrCb422ToBGR_8u_C2C3R", 0, white, "", rgb(255, 255, 255)},
        {"YCrCb422ToBGR_8u_C2C4R", 0, white, "", rgb(255, 255, 255)},
        {"YCrCb422ToRGB_8u_C2C3R", 8, white, rgb(255, 255, 255), rgb(254, 254, 254)},
        {"YCrCb422ToRGB_8u_C2C4R", 0, white, "", rgb(255, 255, 255)},
        {"YCbCr422ToRGB_8u_C2P3R", 8, white, rgb(255, 255, 255), rgb(254, 254, 254)},
        {"YCrCb422ToRGB_8u_C2P3R", 8, white, rgb(255, 255, 255), rgb(254, 254, 254)},
        {"YCbCr422ToBGR_8u_P3C3R", 0, white, "", rgb(254, 254, 254)},
        {"YCbCr422ToRGB_8u_P3C3R", 0, white, "", rgb(254, 254, 254)},
        {"YCbCr411ToBGR_8u_P3C3R", 8, white, rgb(255, 255, 255), rgb(255, 255, 255)},
        {"YCbCr411ToBGR_8u_P3C4R", 8, white, rgb(255, 255, 255), rgb(255, 255, 255)},

        // Inputs on which the vector form and the other form differ (see the form tests).
        {"YCbCr420ToBGR_8u_P3C4R", 8, hpInv, rgb(0, 48, 0), rgb(0, 47, 0)},
        {"YCbCr420ToRGB_8u_P3C3R", 8, hpInv, rgb(0, 48, 0), rgb(0, 47, 0)},
        {"YCrCb420ToRGB_8u_P3C4R", 8, hpInv, rgb(0, 48, 0), rgb(0, 47, 0)},
        {"YCbCr420ToBGR_8u_P3C3R", 0, hpInv, "", rgb(0, 47, 0)},
        {"YCbCr420ToRGB_8u_P2C4R", 0, hpInv, "", rgb(0, 47, 0)},
        {"YCrCb420ToBGR_8u_P2C3R", 0, hpInv, "", rgb(0, 47, 0)},
        {"YCrCb422ToRGB_8u_C2C3R", 8, hpRaw, rgb(0, 147, 0), rgb(0, 146, 0)},
        {"YCbCr422ToRGB_8u_C2P3R", 8, hpRaw, rgb(0, 147, 0), rgb(0, 146, 0)},
        {"YCrCb422ToRGB_8u_C2P3R", 8, hpRaw, rgb(0, 147, 0), rgb(0, 146, 0)},
        {"YCbCr422ToRGB_8u_C2P3R", 8, {16, 27, 128}, rgb(0, 39, 0), rgb(0, 39, 0)},
        {"YCbCr422ToBGR_8u_P3C3R", 0, hpRaw, "", rgb(0, 146, 0)},
        {"YCbCr422ToRGB_8u_C2C4R", 0, hpInv, "", rgb(0, 47, 0)},
        {"YCbCr411ToBGR_8u_P3C3R", 8, hp411, rgb(0, 102, 0), rgb(0, 103, 0)},
        {"YCbCr411ToBGR_8u_P3C4R", 8, hp411, rgb(0, 102, 0), rgb(0, 103, 0)},

        {"YUV420ToRGB_8u_P3R", 0, yuvA, "", rgb(213, 107, 0)},
        {"YUV420ToRGB_8u_P3", 0, yuvA, "", rgb(213, 107, 0)},
        {"YUV420ToRGB_8u_P3C3R", 8, yuvA, rgb(213, 106, 0), rgb(213, 107, 0)},
        {"YUV420ToRGB_8u_P3C3", 8, yuvA, rgb(213, 106, 0), rgb(213, 107, 0)},
        {"YUV420ToBGR_8u_P3C3R", -1, yuvC, rgb(0, 60, 67), ""},
        {"YUV420ToRGB_8u_P3AC4R", 8, yuvB, rgb(171, 40, 226), rgb(171, 39, 226)},
        {"YUV422ToRGB_8u_P3AC4R", 8, yuvB, rgb(171, 40, 226), rgb(170, 39, 225)},
        {"YUV422ToRGB_8u_C2C3R", 16, yuvB, rgb(170, 39, 225), rgb(171, 39, 226)},
        {"YUV422ToRGB_8u_P3C3R", 16, yuvA, rgb(213, 106, 0), rgb(213, 107, 0)},
        {"YUV422ToRGB_8u_P3C3", 16, yuvA, rgb(213, 106, 0), rgb(213, 107, 0)},
        {"YUV422ToRGB_8u_P3R", 16, yuvA, rgb(213, 106, 0), rgb(213, 107, 0)},
        {"YUV422ToRGB_8u_P3", 16, yuvA, rgb(213, 106, 0), rgb(213, 107, 0)},
    };
    return cases;
}

class SubsampledToRgbColumns : public ::testing::TestWithParam<ColumnCase> {};

// Widths around blocks of 8 and 16 and below them, odd and even heights; all of them
// below 256 pixels, so that the forms without steps walk rows.
TEST_P(SubsampledToRgbColumns, EachColumnGetsItsForm) {
    for (int w : {1, 2, 3, 4, 5, 7, 8, 9, 12, 15, 16, 17, 23, 24, 25, 31, 33, 41}) {
        for (int h : {1, 2, 3}) expectColumns(GetParam(), w, h);
    }
}

std::string columnCaseName(const ::testing::TestParamInfo<ColumnCase>& info) {
    const ColumnCase& k = info.param;
    return std::string(k.member) + "_Y" + std::to_string(k.input.y) + "_" + std::to_string(k.input.cb) + "_" +
           std::to_string(k.input.cr) + "_" + std::to_string(info.index);
}

INSTANTIATE_TEST_SUITE_P(Members, SubsampledToRgbColumns, ::testing::ValuesIn(columnCases()), columnCaseName);

// Every member has cases here.
TEST(SubsampledToRgbColumns, EveryMemberIsCovered) {
    for (const Member& m : s2rgb::allMembers()) {
        bool found = false;
        for (const ColumnCase& k : columnCases()) found = found || m.name == k.member;
        EXPECT_TRUE(found) << m.name;
    }
    EXPECT_EQ(s2rgb::allMembers().size(), 39u);
}

}  // namespace
