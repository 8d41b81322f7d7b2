// Full-range YUV 4:2:0 and 4:2:2 -> RGB / BGR: the twelve members against the
// reference model; 4:2:0 odd sizes, the odd last pixel of the 4:2:2 members (planes:
// chroma column width / 2; packed: V from the byte before its Y), alpha 0 in the AC4
// members, the forms without steps and the one-long-row path of the 4:2:2 ones,
// statuses and guards.
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
using s2rgb::Ycc;
using subrgb::Dest;
using subrgb::Sampling;
using subrgb::Source;

std::vector<const Member*> members() { return s2rgb::yuvMembers(); }

// Every input through each vector form: doubled (4:2:0 blocks of 8, 4:2:2 blocks of
// 16, Y0 U Y1 V), doubled 9339, and sixteenths (4:2:0 and 4:2:2).
std::vector<const Member*> exhaustive() {
    return s2rgb::membersNamed({"YUV420ToRGB_8u_P3C3R", "YUV422ToRGB_8u_P3C3R", "YUV422ToRGB_8u_C2C3R",
                                "YUV420ToBGR_8u_P3C3R", "YUV420ToRGB_8u_P3AC4R", "YUV422ToRGB_8u_P3AC4R"});
}

S2RGB_REFERENCE_SUITES(YuvSubsampledToRgb, members, exhaustive);

std::string rgb(int r, int g, int b) { return s2rgb::rgbText(r, g, b); }

std::vector<const Member*> membersWhere(bool (*keep)(const Member&)) {
    std::vector<const Member*> v;
    for (const Member* m : members()) {
        if (keep(*m)) v.push_back(m);
    }
    return v;
}

// ---------------------------------------------------------------------------------
// 4:2:0 odd sizes
// ---------------------------------------------------------------------------------

class Yuv420Odd : public ::testing::TestWithParam<const Member*> {};

// Statuses of every width to 19 and several heights from the least size; a width or
// height of 1 converts nothing.
TEST_P(Yuv420Odd, StatusOfEachSize) {
    const Member& m = *GetParam();
    for (int w = m.least.width; w <= 19; ++w) {
        for (int h : {1, 2, 3, 4, 7, 8}) {
            if (h < m.least.height) continue;
            SCOPED_TRACE(std::to_string(w) + "x" + std::to_string(h));
            Rng rng(pxktest::seedFor((m.name + "/status").c_str(), {uint32_t(w), uint32_t(h)}));
            Surface src = s2rgb::makeSource(m, w, h, s2rgb::tightPlan());
            Surface dst = s2rgb::makeDest(m, w, h, StepKind::Tight);
            src.fillRandom(rng);
            dst.fillRandom(rng);
            const PxkResult want = (w % 2 != 0 || h % 2 != 0) ? pxkWarnOddSize : pxkOk;
            EXPECT_EQ(s2rgb::callOn(m, src, dst, PxkSize{w, h}, 0), want);
            if (w == 1 || h == 1) {
                EXPECT_TRUE(dst.unchanged());
            }
        }
    }
}

// 3 x 3: the top-left 2 x 2 written, the last row and column keep the fill.
TEST_P(Yuv420Odd, ThreeByThreeConvertsTopLeftTwoByTwo) {
    const Member& m = *GetParam();
    const Surface d = s2rgb::convertUniform(m, 3, 3, Ycc{77, 128, 128}, 0, 0xEE);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 3; ++x) {
            EXPECT_EQ(s2rgb::rgbAt(m, d, x, y), x < 2 && y < 2 ? rgb(77, 77, 77) : rgb(0xEE, 0xEE, 0xEE))
                << x << "," << y;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Members420, Yuv420Odd, ::testing::ValuesIn(membersWhere([](const Member& m) {
                             return m.rule.sampling == Sampling::S420;
                         })),
                         s2rgb::memberParamName);

// ---------------------------------------------------------------------------------
// Alpha of the AC4 members
// ---------------------------------------------------------------------------------

class YuvAc4 : public ::testing::TestWithParam<const Member*> {};

// Byte 3 of every converted pixel is 0, in the vector columns and in the tail, over
// random images whose destinations start with other bytes.
TEST_P(YuvAc4, AlphaZeroInEveryColumn) {
    const Member& m = *GetParam();
    for (int w : {1, 2, 7, 8, 9, 15, 16, 17, 24, 31, 40, 67}) {
        const int h = 4;
        Rng rng(pxktest::seedFor((m.name + "/alpha").c_str(), {uint32_t(w)}));
        Surface src = s2rgb::makeSource(m, w, h, s2rgb::tightPlan());
        Surface dst = s2rgb::makeDest(m, w, h, StepKind::Padded);
        src.fillRandom(rng);
        dst.image(0).fill(0xFF, 0x5A);
        ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{w, h}, 0xFF), s2rgb::expectedStatus(m, w, h));
        const int columns = m.rule.sampling == Sampling::S420 ? w - w % 2 : w;
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) {
                EXPECT_EQ(dst.at(x, y, 3), x < columns ? 0 : 0xFF) << "width " << w << ", pixel " << x << "," << y;
            }
        }
        EXPECT_TRUE(dst.guardsIntact());
    }
}

INSTANTIATE_TEST_SUITE_P(Ac4Members, YuvAc4,
                         ::testing::Values(&s2rgb::memberNamed("YUV420ToRGB_8u_P3AC4R"),
                                           &s2rgb::memberNamed("YUV422ToRGB_8u_P3AC4R")),
                         s2rgb::memberParamName);

// ---------------------------------------------------------------------------------
// The odd last pixel of the 4:2:2 members
// ---------------------------------------------------------------------------------

class Yuv422PlanarOddPixel : public ::testing::TestWithParam<const Member*> {};

// Width 3, Y 128: chroma column 0 neutral, column 1 (U 168, V 168). The pair is grey
// 128; the last pixel takes column 1 in the truncating form with full constants: R =
// (8388608 + 2988440) >> 16 = 173, G = (8388608 - 1523040 - 1032840) >> 16 = 89, B =
// (8388608 + 5326760) >> 16 = 209.
TEST_P(Yuv422PlanarOddPixel, WidthThreeTakesChromaColumnOne) {
    const Member& m = *GetParam();
    for (int h : {1, 2, 3}) {
        Surface src = s2rgb::makeSource(m, 3, h, s2rgb::tightPlan());
        ASSERT_EQ(src.image(1).width(), 2);
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < 3; ++x) src.image(0).at(x, y) = 128;
            src.image(1).at(0, y) = 128;
            src.image(2).at(0, y) = 128;
            src.image(1).at(1, y) = 168;
            src.image(2).at(1, y) = 168;
        }
        src.snapshot();
        Surface dst = s2rgb::makeDest(m, 3, h, StepKind::Padded);
        ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{3, h}, 0), pxkOk);
        for (int y = 0; y < h; ++y) {
            EXPECT_EQ(s2rgb::rgbAt(m, dst, 0, y), rgb(128, 128, 128));
            EXPECT_EQ(s2rgb::rgbAt(m, dst, 1, y), rgb(128, 128, 128));
            EXPECT_EQ(s2rgb::rgbAt(m, dst, 2, y), rgb(173, 89, 209));
        }
        EXPECT_TRUE(dst.guardsIntact());
        EXPECT_TRUE(src.unchanged());
    }
}

// Width 1 (where allowed): the pixel takes chroma column 0.
TEST_P(Yuv422PlanarOddPixel, WidthOne) {
    const Member& m = *GetParam();
    if (m.least.width > 1) GTEST_SKIP() << "least width " << m.least.width;
    const Surface d = s2rgb::convertUniform(m, 1, 2, Ycc{128, 168, 168});
    EXPECT_EQ(s2rgb::rgbAt(m, d, 0, 0), rgb(173, 89, 209));
    EXPECT_EQ(s2rgb::rgbAt(m, d, 0, 1), rgb(173, 89, 209));
}

INSTANTIATE_TEST_SUITE_P(PlanarMembers422, Yuv422PlanarOddPixel, ::testing::ValuesIn(membersWhere([](const Member& m) {
                             return m.rule.sampling == Sampling::S422 && m.rule.source == Source::P3;
                         })),
                         s2rgb::memberParamName);

// Packed Y0 U Y1 V, width 3: bytes 128 168 128 168 128 128. The pair takes U 168,
// V 168 in the half rounded form: R = (8388608 + 2988440 + 32768) >> 16 = 174, G =
// (8388608 - 1032840 - 1523040) >> 16 = 89, B = (8388608 + 5326760 + 32768) >> 16 =
// 209. The last pixel takes U 128 from its own byte and V 168 from the byte before its
// Y: R = 174, G = (8388608 - 1523040) >> 16 = 104, B = (8388608 + 32768) >> 16 = 128.
TEST(YUV422ToRGB_8u_C2C3R, WidthThreeVFromTheByteBeforeY) {
    const Member& m = s2rgb::memberNamed("YUV422ToRGB_8u_C2C3R");
    Surface src = s2rgb::makeSource(m, 3, 1, s2rgb::tightPlan());
    const uint8_t bytes[6] = {128, 168, 128, 168, 128, 128};
    for (int i = 0; i < 6; ++i) src.image(0).row(0)[i] = bytes[i];
    Surface dst = s2rgb::makeDest(m, 3, 1, StepKind::Padded);
    ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{3, 1}, 0), pxkOk);
    EXPECT_EQ(s2rgb::rgbAt(m, dst, 0, 0), rgb(174, 89, 209));
    EXPECT_EQ(s2rgb::rgbAt(m, dst, 1, 0), rgb(174, 89, 209));
    EXPECT_EQ(s2rgb::rgbAt(m, dst, 2, 0), rgb(174, 104, 128));
    EXPECT_TRUE(dst.guardsIntact());
}

// Width 1: U serves as V as well: (128, 168, 168) gives (174, 89, 209).
TEST(YUV422ToRGB_8u_C2C3R, WidthOneUStandsInForV) {
    const Member& m = s2rgb::memberNamed("YUV422ToRGB_8u_C2C3R");
    Surface src = s2rgb::makeSource(m, 1, 1, s2rgb::tightPlan());
    src.image(0).row(0)[0] = 128;
    src.image(0).row(0)[1] = 168;
    Surface dst = s2rgb::makeDest(m, 1, 1, StepKind::Padded);
    ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{1, 1}, 0), pxkOk);
    EXPECT_EQ(s2rgb::rgbAt(m, dst, 0, 0), rgb(174, 89, 209));
    EXPECT_TRUE(dst.guardsIntact());
}

// ---------------------------------------------------------------------------------
// The forms without steps
// ---------------------------------------------------------------------------------

const Member& noSteps422P3() { return s2rgb::memberNamed("YUV422ToRGB_8u_P3"); }
const Member& noSteps422P3C3() { return s2rgb::memberNamed("YUV422ToRGB_8u_P3C3"); }

// The tight layout the forms without steps take: a step of width on the Y plane,
// width / 2 (4:2:0) or width / 2 + width % 2 (4:2:2) on the chroma planes, 3 * width
// on a packed destination, width on destination planes.
TEST(YuvWithoutSteps, TightLayout) {
    for (const char* name : {"YUV420ToRGB_8u_P3", "YUV420ToRGB_8u_P3C3", "YUV422ToRGB_8u_P3", "YUV422ToRGB_8u_P3C3"}) {
        const Member& m = s2rgb::memberNamed(name);
        for (int w : {5, 6}) {
            SCOPED_TRACE(std::string(name) + " width " + std::to_string(w));
            Surface src = s2rgb::makeSource(m, w, 4, s2rgb::stepPlans()[3]);  // asks for negative steps
            Surface dst = s2rgb::makeDest(m, w, 4, StepKind::Negative);
            EXPECT_EQ(src.image(0).step(), w);
            const int chroma = m.rule.sampling == Sampling::S420 ? w / 2 : w / 2 + w % 2;
            EXPECT_EQ(src.image(1).step(), chroma);
            EXPECT_EQ(src.image(2).step(), chroma);
            EXPECT_EQ(dst.image(0).step(), m.rule.dest == Dest::P3 ? w : 3 * w);
        }
    }
}

// Sizes around the one-long-row rule, each against the reference, sources fenced:
// 256 pixels or more with an even width take the long row (10 x 26, 18 x 15, 16 x 16,
// 8 x 32, 2 x 128, 20 x 13, 130 x 2, 40 x 40, 1920 x 2, 256 x 1, 258 x 1, 6 x 43);
// odd widths (17 x 16, 15 x 20, 1 x 300, 257 x 3, 255 x 1) and fewer pixels (18 x 14,
// 30 x 8, 2 x 127, 16 x 15) walk rows.
class YuvLongRow : public ::testing::TestWithParam<const Member*> {};

TEST_P(YuvLongRow, SizesAroundTheRuleMatchReference) {
    const std::vector<PxkSize> sizes = {{10, 26}, {18, 15},  {16, 16}, {8, 32},  {2, 128}, {20, 13}, {130, 2},
                                        {40, 40}, {1920, 2}, {256, 1}, {258, 1}, {6, 43},  {17, 16}, {15, 20},
                                        {1, 300}, {257, 3},  {255, 1}, {18, 14}, {30, 8},  {2, 127}, {16, 15},
                                        {34, 9},  {14, 19},  {1, 1},   {3, 1},   {22, 12}, {24, 11}};
    s2rgb::sizesAgainstReference(*GetParam(), s2rgb::tightPlan(), sizes);
}

// Uniform (120, 40, 210): the doubled form gives (213, 106, 0), the truncating form
// with full constants (213, 107, 0). 10 x 26 = 260 pixels, an even width: one long
// row whose first run covers 256 pixels, all in blocks of 16; the second run, the
// last 4 pixels of row 25, is the tail. So the doubled form covers rows 0 to 24 and
// the first 6 pixels of row 25, across every row end; the R twins, with rows of 10,
// have no vector columns at all.
TEST_P(YuvLongRow, TenByTwentySixCrossesRowEnds) {
    const Member& m = *GetParam();
    const Surface d = s2rgb::convertUniform(m, 10, 26, Ycc{120, 40, 210});
    for (int y = 0; y < 26; ++y) {
        for (int x = 0; x < 10; ++x) {
            EXPECT_EQ(s2rgb::rgbAt(m, d, x, y), y * 10 + x < 256 ? rgb(213, 106, 0) : rgb(213, 107, 0))
                << x << "," << y;
        }
    }
}

// 18 x 15 = 270: first run 264 pixels, of which 256 in blocks of 16; the doubled form
// ends after 4 pixels of row 14.
TEST_P(YuvLongRow, EighteenByFifteen) {
    const Member& m = *GetParam();
    const Surface d = s2rgb::convertUniform(m, 18, 15, Ycc{120, 40, 210});
    for (int y = 0; y < 15; ++y) {
        for (int x = 0; x < 18; ++x) {
            EXPECT_EQ(s2rgb::rgbAt(m, d, x, y), y * 18 + x < 256 ? rgb(213, 106, 0) : rgb(213, 107, 0))
                << x << "," << y;
        }
    }
}

// Fewer than 256 pixels, or an odd width: rows are walked, each with its own columns
// below width - width % 16 in the doubled form. 17 x 16: columns 0 to 15 doubled, the
// odd pixel 16 truncating; 18 x 14: columns 0 to 15 doubled.
TEST_P(YuvLongRow, RowsWalkedOtherwise) {
    const Member& m = *GetParam();
    for (const PxkSize z : {PxkSize{17, 16}, PxkSize{18, 14}, PxkSize{15, 20}}) {
        SCOPED_TRACE(s2rgb::sizeText(z));
        const Surface d = s2rgb::convertUniform(m, z.width, z.height, Ycc{120, 40, 210});
        for (int y = 0; y < z.height; ++y) {
            for (int x = 0; x < z.width; ++x) {
                EXPECT_EQ(s2rgb::rgbAt(m, d, x, y), x < z.width - z.width % 16 ? rgb(213, 106, 0) : rgb(213, 107, 0))
                    << x << "," << y;
            }
        }
    }
}

// Random 10 x 26 and 18 x 15 images against the R twin's reference run on the whole
// image as a single row of 260 (or 270) pixels.
TEST_P(YuvLongRow, SameAsTheRowTwinOnOneLongRow) {
    const Member& m = *GetParam();
    const Member& twin = s2rgb::memberNamed(m.name + "R");
    for (const PxkSize z : {PxkSize{10, 26}, PxkSize{18, 15}, PxkSize{2, 128}}) {
        SCOPED_TRACE(s2rgb::sizeText(z));
        const int n = z.width * z.height;
        Rng rng(pxktest::seedFor((m.name + "/long").c_str(), {uint32_t(z.width), uint32_t(z.height)}));
        Surface src = s2rgb::makeSource(m, z.width, z.height, s2rgb::tightPlan());
        Surface dst = s2rgb::makeDest(m, z.width, z.height, StepKind::Tight);
        src.fillRandom(rng);
        dst.fillRandom(rng);
        // The same memory seen as one row of n pixels.
        Surface longSrc = s2rgb::makeSource(twin, n, 1, s2rgb::tightPlan());
        Surface longDst = s2rgb::makeDest(twin, n, 1, StepKind::Tight);
        for (int i = 0; i < 3; ++i) {
            const Surface& s = src;
            for (int y = 0; y < s.image(i).height(); ++y) {
                for (int x = 0; x < s.image(i).width(); ++x) {
                    longSrc.image(i).at(y * s.image(i).width() + x, 0) = s.image(i).at(x, y);
                }
            }
        }
        dst.snapshot();
        for (int i = 0; i < dst.imageCount(); ++i) {
            const int bytes = dst.image(i).width() * dst.image(i).channels();
            for (int y = 0; y < z.height; ++y) {
                for (int b = 0; b < bytes; ++b) longDst.image(i).row(0)[y * bytes + b] = dst.image(i).row(y)[b];
            }
        }
        s2rgb::runReference(twin, longSrc, longDst, n, 1, 0);
        ASSERT_EQ(s2rgb::callOn(m, src, dst, z, 0), pxkOk);
        for (int i = 0; i < dst.imageCount(); ++i) {
            const int bytes = dst.image(i).width() * dst.image(i).channels();
            for (int y = 0; y < z.height; ++y) {
                for (int b = 0; b < bytes; ++b) {
                    ASSERT_EQ(dst.image(i).row(y)[b], longDst.image(i).row(0)[y * bytes + b])
                        << "plane " << i << ", row " << y << ", byte " << b;
                }
            }
        }
        EXPECT_TRUE(dst.guardsIntact());
    }
}

INSTANTIATE_TEST_SUITE_P(FormsWithoutSteps422, YuvLongRow, ::testing::Values(&noSteps422P3(), &noSteps422P3C3()),
                         s2rgb::memberParamName);

// The R twins never take the long row: 10 x 26 has no vector columns.
TEST(YuvLongRowTwins, RowsOfTenHaveNoVectorColumns) {
    for (const char* name : {"YUV422ToRGB_8u_P3R", "YUV422ToRGB_8u_P3C3R"}) {
        const Member& m = s2rgb::memberNamed(name);
        const Surface d = s2rgb::convertUniform(m, 10, 26, Ycc{120, 40, 210});
        for (int y = 0; y < 26; ++y) {
            for (int x = 0; x < 10; ++x) EXPECT_EQ(s2rgb::rgbAt(m, d, x, y), rgb(213, 107, 0)) << name << " " << x;
        }
    }
}

// The 4:2:0 forms without steps walk rows at any size: 20 x 32 (640 pixels) of (120,
// 40, 210) through YUV420ToRGB_8u_P3C3 gives the doubled form in columns 0 to 15 of
// every row, the truncating form in columns 16 to 19.
TEST(YUV420ToRGB_8u_P3C3, VectorColumnsInEveryRow) {
    const Member& m = s2rgb::memberNamed("YUV420ToRGB_8u_P3C3");
    const Surface d = s2rgb::convertUniform(m, 20, 32, Ycc{120, 40, 210});
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 20; ++x) {
            EXPECT_EQ(s2rgb::rgbAt(m, d, x, y), x < 16 ? rgb(213, 106, 0) : rgb(213, 107, 0)) << x << "," << y;
        }
    }
}

}  // namespace
