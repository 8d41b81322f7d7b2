// Studio-range YCbCr 4:2:0 -> RGB / BGR: the eight members with a Y plane and a plane
// of chroma pairs, the four with three planes, and the filtered one, against the
// reference model; odd sizes (the last odd row and column left unwritten, with a
// warning), the order of the chroma samples, the filter's neighbours, statuses and
// guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "subsampled_to_rgb_harness.h"
#include "subsampled_to_rgb_members.h"

namespace {

using pxktest::Rng;
using pxktest::StepKind;
using pxktest::Surface;
using s2rgb::Member;
using s2rgb::StepPlan;
using s2rgb::Ycc;

std::vector<const Member*> members() { return s2rgb::ycbcr420Members(); }

// Every input through the high-product inverse form, in planes Y, Cb, Cr and Y, Cr, Cb.
std::vector<const Member*> exhaustive() {
    return s2rgb::membersNamed({"YCbCr420ToRGB_8u_P3C3R", "YCrCb420ToRGB_8u_P3C4R"});
}

S2RGB_REFERENCE_SUITES(YCbCr420ToRgb, members, exhaustive);

std::string rgb(int r, int g, int b) { return s2rgb::rgbText(r, g, b); }

// ---------------------------------------------------------------------------------
// Odd sizes
// ---------------------------------------------------------------------------------

class YCbCr420ToRgbOdd : public ::testing::TestWithParam<const Member*> {};

// A width or height of 1 converts nothing and warns; the destination stays as it was.
TEST_P(YCbCr420ToRgbOdd, WidthOrHeightOfOneWritesNothingAndWarns) {
    const Member& m = *GetParam();
    for (const PxkSize z : {PxkSize{1, 1}, PxkSize{1, 2}, PxkSize{2, 1}, PxkSize{1, 9}, PxkSize{17, 1}}) {
        SCOPED_TRACE(s2rgb::sizeText(z));
        Rng rng(pxktest::seedFor((m.name + "/one").c_str(), {uint32_t(z.width), uint32_t(z.height)}));
        Surface src = s2rgb::makeSource(m, z.width, z.height, s2rgb::tightPlan());
        Surface dst = s2rgb::makeDest(m, z.width, z.height, StepKind::Padded);
        src.fillRandom(rng);
        dst.fillRandom(rng);
        EXPECT_EQ(s2rgb::callOn(m, src, dst, z, 0x77), pxkWarnOddSize);
        EXPECT_TRUE(dst.unchanged());
        EXPECT_TRUE(src.unchanged());
    }
}

// The statuses of whole blocks and of odd sizes.
TEST_P(YCbCr420ToRgbOdd, StatusOfEachSize) {
    const Member& m = *GetParam();
    for (int w = 1; w <= 19; ++w) {
        for (int h : {1, 2, 3, 4, 7, 8}) {
            Rng rng(pxktest::seedFor((m.name + "/status").c_str(), {uint32_t(w), uint32_t(h)}));
            Surface src = s2rgb::makeSource(m, w, h, s2rgb::tightPlan());
            Surface dst = s2rgb::makeDest(m, w, h, StepKind::Tight);
            src.fillRandom(rng);
            dst.fillRandom(rng);
            const PxkResult want = (w % 2 != 0 || h % 2 != 0) ? pxkWarnOddSize : pxkOk;
            EXPECT_EQ(s2rgb::callOn(m, src, dst, PxkSize{w, h}, 0x10), want) << w << "x" << h;
        }
    }
}

// 3 x 3 of Y 235, neutral chroma: the top-left 2 x 2 is written (white, or 254 in the
// filter form), the last row and column keep the fill; pxkWarnOddSize.
TEST_P(YCbCr420ToRgbOdd, ThreeByThreeConvertsTopLeftTwoByTwo) {
    const Member& m = *GetParam();
    const Surface d = s2rgb::convertUniform(m, 3, 3, Ycc{235, 128, 128}, 0x42, 0xEE);
    const int white = m.name == "YCrCb420ToBGR_Filter_8u_P3C4R" ? 254 : 255;
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 3; ++x) {
            const bool written = x < 2 && y < 2;
            EXPECT_EQ(s2rgb::rgbAt(m, d, x, y), written ? rgb(white, white, white) : rgb(0xEE, 0xEE, 0xEE))
                << x << "," << y;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllMembers, YCbCr420ToRgbOdd, ::testing::ValuesIn(members()), s2rgb::memberParamName);

// A 1 x 1 region of the P2 member to BGR: nothing written, pxkWarnOddSize.
TEST(YCbCr420ToBGR_8u_P2C3R, OneByOneWritesNothingAndWarns) {
    uint8_t y[1] = {200}, cbcr[2] = {90, 170};
    uint8_t dst[16];
    for (uint8_t& b : dst) b = 0xC3;
    EXPECT_EQ(pxkiYCbCr420ToBGR_8u_P2C3R(y, 1, cbcr, 2, dst, 3, PxkSize{1, 1}), pxkWarnOddSize);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(dst[i], 0xC3) << i;
}

// ---------------------------------------------------------------------------------
// Chroma order and destination order
// ---------------------------------------------------------------------------------

// A 2 x 2 block of Y 100 whose chroma pair is Cb 60, Cr 200: wide rounded R = (7628400
// + 7530840 - 1187776) >> 16 = 213, G = (7628400 + 1746920 - 3836232 - 1187776) >> 16
// = 66, B below 0. A YCbCr pair plane holds 60, 200; a YCrCb one 200, 60. RGB members
// write 213, 66, 0; BGR members 0, 66, 213; C4 members alpha in byte 3.
struct PairCase {
    const char* member;
    uint8_t first, second;  // the bytes of the pair plane
    std::vector<int> bytes;
};

TEST(YCbCr420ToRgbP2, PairOrderAndDestinationOrder) {
    const std::vector<PairCase> cases = {
        {"YCbCr420ToBGR_8u_P2C3R", 60, 200, {0, 66, 213}}, {"YCbCr420ToBGR_8u_P2C4R", 60, 200, {0, 66, 213, 0x9B}},
        {"YCbCr420ToRGB_8u_P2C3R", 60, 200, {213, 66, 0}}, {"YCbCr420ToRGB_8u_P2C4R", 60, 200, {213, 66, 0, 0x9B}},
        {"YCrCb420ToBGR_8u_P2C3R", 200, 60, {0, 66, 213}}, {"YCrCb420ToBGR_8u_P2C4R", 200, 60, {0, 66, 213, 0x9B}},
        {"YCrCb420ToRGB_8u_P2C3R", 200, 60, {213, 66, 0}}, {"YCrCb420ToRGB_8u_P2C4R", 200, 60, {213, 66, 0, 0x9B}},
    };
    for (const PairCase& k : cases) {
        SCOPED_TRACE(k.member);
        const Member& m = s2rgb::memberNamed(k.member);
        Surface src = s2rgb::makeSource(m, 2, 2, s2rgb::tightPlan());
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 2; ++x) src.image(0).at(x, y) = 100;
        }
        src.image(1).at(0, 0, 0) = k.first;
        src.image(1).at(0, 0, 1) = k.second;
        Surface dst = s2rgb::makeDest(m, 2, 2, StepKind::Padded);
        dst.image(0).fill(0xEE, 0x5A);
        ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{2, 2}, 0x9B), pxkOk);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 2; ++x) {
                std::vector<int> got;
                for (std::size_t c = 0; c < k.bytes.size(); ++c) got.push_back(dst.at(x, y, int(c)));
                EXPECT_EQ(got, k.bytes) << x << "," << y;
            }
        }
        EXPECT_TRUE(dst.guardsIntact());
    }
}

// The same block through the three-plane members, whose second plane is Cb (YCbCr) or
// Cr (YCrCb): the high-product inverse form at width 8 and the wide rounded form at
// width 2 agree on it.
TEST(YCbCr420ToRgbP3, PlaneOrderAndDestinationOrder) {
    const std::vector<PairCase> cases = {
        {"YCbCr420ToBGR_8u_P3C3R", 60, 200, {0, 66, 213}},
        {"YCbCr420ToBGR_8u_P3C4R", 60, 200, {0, 66, 213, 0x9B}},
        {"YCbCr420ToRGB_8u_P3C3R", 60, 200, {213, 66, 0}},
        {"YCrCb420ToRGB_8u_P3C4R", 200, 60, {213, 66, 0, 0x9B}},
    };
    for (const PairCase& k : cases) {
        for (int w : {2, 8}) {
            SCOPED_TRACE(std::string(k.member) + " width " + std::to_string(w));
            const Member& m = s2rgb::memberNamed(k.member);
            Surface src = s2rgb::makeSource(m, w, 2, s2rgb::tightPlan());
            for (int y = 0; y < 2; ++y) {
                for (int x = 0; x < w; ++x) src.image(0).at(x, y) = 100;
            }
            for (int c = 0; c < w / 2; ++c) {
                src.image(1).at(c, 0) = k.first;
                src.image(2).at(c, 0) = k.second;
            }
            Surface dst = s2rgb::makeDest(m, w, 2, StepKind::Padded);
            dst.image(0).fill(0xEE, 0x5A);
            ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{w, 2}, 0x9B), pxkOk);
            for (int y = 0; y < 2; ++y) {
                for (int x = 0; x < w; ++x) {
                    std::vector<int> got;
                    for (std::size_t c = 0; c < k.bytes.size(); ++c) got.push_back(dst.at(x, y, int(c)));
                    EXPECT_EQ(got, k.bytes) << x << "," << y;
                }
            }
            EXPECT_TRUE(dst.guardsIntact());
        }
    }
}

// Each chroma sample serves its 2 x 2 block and no other: a 4 x 4 image of Y 100 whose
// four blocks have different chroma gives each block its own colour.
TEST_P(YCbCr420ToRgbOdd, EachBlockHasItsOwnChroma) {
    const Member& m = *GetParam();
    if (m.name == "YCrCb420ToBGR_Filter_8u_P3C4R") GTEST_SKIP() << "chroma filtered in the row";
    Surface src = s2rgb::makeSource(m, 4, 4, s2rgb::tightPlan());
    const Ycc blocks[4] = {{100, 60, 200}, {100, 128, 128}, {100, 200, 60}, {16, 128, 128}};
    // Wide rounded: (213, 66, 0); grey Y 100: (7628400 - 1187776) >> 16 = 98;
    // Cb 200, Cr 60: R below 0, G = (7628400 - 1849680 + 3623108 - 1187776) >> 16 = 125,
    // B = (7628400 + 9517392 - 1187776) >> 16 = 243; Y 16 neutral: black.
    const std::string want[4] = {rgb(213, 66, 0), rgb(98, 98, 98), rgb(0, 125, 243), rgb(0, 0, 0)};
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) s2rgb::setSamples(m, src, x, y, blocks[(y / 2) * 2 + x / 2]);
    }
    Surface dst = s2rgb::makeDest(m, 4, 4, StepKind::Padded);
    ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{4, 4}, 1), pxkOk);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) EXPECT_EQ(s2rgb::rgbAt(m, dst, x, y), want[(y / 2) * 2 + x / 2]) << x << "," << y;
    }
}

// ---------------------------------------------------------------------------------
// The filtered member
// ---------------------------------------------------------------------------------

const Member& filterMember() { return s2rgb::memberNamed("YCrCb420ToBGR_Filter_8u_P3C4R"); }

// Builds a Y 100 source of width w, height 2, whose pairs have the given (Cb, Cr), in
// planes Y, Cr, Cb; converts; returns B, G, R, A of row `row` as text.
std::vector<std::string> filterRow(int w, const std::vector<std::pair<int, int>>& pairs, int row = 1,
                                   PxkResult want = pxkOk) {
    const Member& m = filterMember();
    Surface src = s2rgb::makeSource(m, w, 2, s2rgb::tightPlan());
    for (int y = 0; y < 2 && y < src.image(0).height(); ++y) {
        for (int x = 0; x < src.image(0).width(); ++x) src.image(0).at(x, y) = 100;
    }
    for (int c = 0; c < w / 2; ++c) {
        src.image(1).at(c, 0) = uint8_t(pairs[std::size_t(c)].second);  // Cr
        src.image(2).at(c, 0) = uint8_t(pairs[std::size_t(c)].first);   // Cb
    }
    src.snapshot();
    Surface dst = s2rgb::makeDest(m, w, 2, StepKind::Padded);
    dst.image(0).fill(0xEE, 0x5A);
    EXPECT_EQ(s2rgb::callOn(m, src, dst, PxkSize{w, 2}, 0x80), want);
    EXPECT_TRUE(dst.guardsIntact());
    EXPECT_TRUE(src.unchanged());
    std::vector<std::string> out;
    for (int x = 0; x < w; ++x) {
        out.push_back(rgb(dst.at(x, row, 0), dst.at(x, row, 1), dst.at(x, row, 2)) + " " +
                      std::to_string(dst.at(x, row, 3)));
    }
    return out;
}

// Width 2: one pair, no right neighbour: both pixels take its samples. Cb 50, Cr 200
// in the filter form: (212, 69, 0), written B, G, R: 0, 69, 212.
TEST(YCrCb420ToBGR_Filter_8u_P3C4R, WidthTwoBothPixelsSameChroma) {
    const std::vector<std::string> want = {rgb(0, 69, 212) + " 128", rgb(0, 69, 212) + " 128"};
    EXPECT_EQ(filterRow(2, {{50, 200}}, 0), want);
    EXPECT_EQ(filterRow(2, {{50, 200}}, 1), want);
}

// Width 4: pairs (Cb 50, Cr 200) and (Cb 150, Cr 100). Pixel 0 takes the first pair;
// pixel 1 the rounded means, Cb (50 + 150 + 1) >> 1 = 100, Cr (200 + 100 + 1) >> 1 =
// 150, giving (132, 90, 41); pixels 2 and 3, the last pair, its own samples: (53, 111,
// 142). Written B, G, R.
TEST(YCrCb420ToBGR_Filter_8u_P3C4R, OddPixelTakesTheMeanOfItsPairAndTheNext) {
    const std::vector<std::string> want = {rgb(0, 69, 212) + " 128", rgb(41, 90, 132) + " 128",
                                           rgb(142, 111, 53) + " 128", rgb(142, 111, 53) + " 128"};
    EXPECT_EQ(filterRow(4, {{50, 200}, {150, 100}}, 0), want);
    EXPECT_EQ(filterRow(4, {{50, 200}, {150, 100}}, 1), want);
}

// Width 5: the odd column is cut, so the second pair is the last: pixel 3 takes its own
// samples, not a mean with a third; pixel 4 keeps the fill.
TEST(YCrCb420ToBGR_Filter_8u_P3C4R, OddWidthCutsBeforeTheFilter) {
    const std::vector<std::string> want = {rgb(0, 69, 212) + " 128", rgb(41, 90, 132) + " 128",
                                           rgb(142, 111, 53) + " 128", rgb(142, 111, 53) + " 128",
                                           rgb(0xEE, 0xEE, 0xEE) + " 238"};
    EXPECT_EQ(filterRow(5, {{50, 200}, {150, 100}}, 1, pxkWarnOddSize), want);
}

// The mean rounds half up: Cb 50 and 51 give 51, Cr 200 and 201 give 201, for every
// odd pixel but the last pair's; a row of alternating pairs, width 8.
TEST(YCrCb420ToBGR_Filter_8u_P3C4R, MeanRoundsUp) {
    const Member& m = filterMember();
    const std::vector<std::pair<int, int>> pairs = {{50, 200}, {51, 201}, {50, 200}, {51, 201}};
    const std::vector<std::string> got = filterRow(8, pairs, 0);
    auto bgra = [](const subrgb::Rgb& v) { return rgb(v.b, v.g, v.r) + " 128"; };
    // Values from the form itself at the samples each pixel must use.
    const std::vector<std::string> want = {
        bgra(subrgb::filterForm(100, 50, 200)), bgra(subrgb::filterForm(100, 51, 201)),
        bgra(subrgb::filterForm(100, 51, 201)), bgra(subrgb::filterForm(100, 51, 201)),
        bgra(subrgb::filterForm(100, 50, 200)), bgra(subrgb::filterForm(100, 51, 201)),
        bgra(subrgb::filterForm(100, 51, 201)), bgra(subrgb::filterForm(100, 51, 201)),
    };
    EXPECT_EQ(got, want) << m.name;
    // The truncated mean, (50 + 51) >> 1 = 50, would differ at pixel 1 here.
    EXPECT_NE(bgra(subrgb::filterForm(100, 50, 200)), bgra(subrgb::filterForm(100, 51, 201)));
}

// No vertical filter: rows 0 and 1 share one chroma row, rows 2 and 3 the next.
TEST(YCrCb420ToBGR_Filter_8u_P3C4R, ChromaRowsServeTwoLumaRowsUnfiltered) {
    const Member& m = filterMember();
    Surface src = s2rgb::makeSource(m, 2, 4, s2rgb::tightPlan());
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 2; ++x) src.image(0).at(x, y) = 100;
    }
    src.image(1).at(0, 0) = 200;  // Cr of chroma row 0
    src.image(2).at(0, 0) = 50;   // Cb
    src.image(1).at(0, 1) = 100;  // Cr of chroma row 1
    src.image(2).at(0, 1) = 150;  // Cb
    Surface dst = s2rgb::makeDest(m, 2, 4, StepKind::Padded);
    ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{2, 4}, 7), pxkOk);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 2; ++x) {
            EXPECT_EQ(s2rgb::rgbAt(m, dst, x, y), y < 2 ? rgb(212, 69, 0) : rgb(53, 111, 142)) << x << "," << y;
        }
    }
}

}  // namespace
