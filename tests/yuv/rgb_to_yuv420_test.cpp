// RGB / BGR -> full-range YUV 4:2:0 into three planes: the five exports (with steps,
// with a step for each source plane, and without steps) against the reference model,
// the vector luma by column in the C3 members, the odd last row and column, regions of
// width or height 1 that convert nothing, tight buffers for the forms without steps,
// statuses and guards.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "pxkcc.h"
#include "reference_subsampled_yuv.h"
#include "subsampled_harness.h"
#include "subsampled_known_values.h"
#include "subsampled_rounding_edges.h"
#include "subsampled_yuv_calls.h"

namespace {

using pxktest::Rng;
using pxktest::StepKind;
using pxktest::Surface;
using subtest::DestLayout;
using subtest::Rgb;
using subtest::Sampling;
using subtest::SourceLayout;
using subtest::SubsampledExport;
using subyuvtest::lumaAt;
using subyuvtest::uAt;
using subyuvtest::vAt;

// Vector luma in the first width - width % 8 columns, or in none.
enum class Luma { VectorBlocksOf8, TailOnly };

using RefFn = std::function<void(const subref::PackedSource&, const subref::PlanarDest&, int, int)>;

RefFn ref420(Luma luma) {
    return [luma](const subref::PackedSource& s, const subref::PlanarDest& d, int w, int h) {
        subyuv::rgbToYuv420(s, d, w, h, luma == Luma::VectorBlocksOf8 ? w - w % 8 : 0);
    };
}

SubsampledExport member(const char* name, int srcBytes, bool bgr, Luma luma) {
    SubsampledExport ex{name, srcBytes, bgr, Sampling::S420, DestLayout::P3, nullptr, nullptr, ref420(luma)};
    ex.least = {1, 1};
    return ex;
}

SubsampledExport packedWithSteps(const char* name, int srcBytes, bool bgr, Luma luma, subtest::P3Fn fn) {
    SubsampledExport ex = member(name, srcBytes, bgr, luma);
    ex.p3 = fn;
    return ex;
}

SubsampledExport packedWithoutSteps(const char* name, subyuvtest::PackedWithoutStepsFn fn) {
    SubsampledExport ex = member(name, 3, false, Luma::VectorBlocksOf8);
    ex.call = subyuvtest::callPackedWithoutSteps(fn);
    ex.derivedSteps = true;
    return ex;
}

SubsampledExport planesWithSteps(const char* name, subyuvtest::PlanesWithStepsFn fn) {
    SubsampledExport ex = member(name, 1, false, Luma::TailOnly);
    ex.source = SourceLayout::Planar;
    ex.ownSourceSteps = true;
    ex.call = subyuvtest::callPlanesWithSteps(fn);
    return ex;
}

SubsampledExport planesWithoutSteps(const char* name, subyuvtest::PlanesWithoutStepsFn fn) {
    SubsampledExport ex = member(name, 1, false, Luma::TailOnly);
    ex.source = SourceLayout::Planar;
    ex.call = subyuvtest::callPlanesWithoutSteps(fn);
    ex.derivedSteps = true;
    return ex;
}

const std::vector<SubsampledExport>& exports() {
    static const std::vector<SubsampledExport> list = {
        packedWithSteps("BGRToYUV420_8u_AC4P3R", 4, true, Luma::TailOnly, pxkiBGRToYUV420_8u_AC4P3R),
        packedWithSteps("RGBToYUV420_8u_C3P3R", 3, false, Luma::VectorBlocksOf8, pxkiRGBToYUV420_8u_C3P3R),
        packedWithoutSteps("RGBToYUV420_8u_C3P3", pxkiRGBToYUV420_8u_C3P3),
        planesWithSteps("RGBToYUV420_8u_P3R", pxkiRGBToYUV420_8u_P3R),
        planesWithoutSteps("RGBToYUV420_8u_P3", pxkiRGBToYUV420_8u_P3),
    };
    return list;
}

const SubsampledExport& exportNamed(const std::string& name) { return subtest::exportNamed(exports(), name); }
std::vector<const SubsampledExport*> allExports() { return subtest::exportPointers(exports()); }

bool hasVectorLuma(const SubsampledExport& ex) { return ex.name.find("_C3P3") != std::string::npos; }

// ---------------------------------------------------------------------------------
// Reference comparison
// ---------------------------------------------------------------------------------

SUBTEST_SWEEP_SUITE(RgbToYuv420, exports);

class RgbToYuv420Each : public ::testing::TestWithParam<const SubsampledExport*> {};

TEST_P(RgbToYuv420Each, AnyAlignmentMatchesReference) { subtest::alignmentsAgainstReference(*GetParam()); }
TEST_P(RgbToYuv420Each, ExtremeBlocksMatchReference) { subtest::extremeGroupsAgainstReference(*GetParam(), 30); }
TEST_P(RgbToYuv420Each, RandomBlocksMatchReference) { subtest::randomGroupsAgainstReference(*GetParam(), 256, 256); }
TEST_P(RgbToYuv420Each, UniformSumsMatchReference) { subtest::uniformSumsAgainstReference(*GetParam(), 254, 128); }
TEST_P(RgbToYuv420Each, LeastSizeIsOneByOne) { subtest::leastSizeChecks(*GetParam()); }

INSTANTIATE_TEST_SUITE_P(AllExports, RgbToYuv420Each, ::testing::ValuesIn(allExports()), subtest::exportParamName);

// Dense inputs through both kinds of column of the C3 members: a width that is a
// multiple of 8 puts every pixel in the vector luma, a width of 6 none.
TEST(RGBToYUV420_8u_C3P3R, EveryPixelInVectorColumns) {
    subtest::everyPixelAgainstReference(exportNamed("RGBToYUV420_8u_C3P3R"), 256);
}
TEST(RGBToYUV420_8u_C3P3R, EveryPixelInTailColumns) {
    subtest::everyPixelAgainstReference(exportNamed("RGBToYUV420_8u_C3P3R"), 6);
}
TEST(RGBToYUV420_8u_P3R, EveryPixel) { subtest::everyPixelAgainstReference(exportNamed("RGBToYUV420_8u_P3R"), 30); }
TEST(RGBToYUV420_8u_C3P3R, ExtremeBlocksInVectorAndTailColumns) {
    subtest::extremeGroupsAgainstReference(exportNamed("RGBToYUV420_8u_C3P3R"), 8);
    subtest::extremeGroupsAgainstReference(exportNamed("RGBToYUV420_8u_C3P3R"), 6);
}
TEST(RGBToYUV420_8u_C3P3R, RandomBlocksInVectorAndTailColumns) {
    subtest::randomGroupsAgainstReference(exportNamed("RGBToYUV420_8u_C3P3R"), 256, 512);
    subtest::randomGroupsAgainstReference(exportNamed("RGBToYUV420_8u_C3P3R"), 6, 8192);
}
TEST(RGBToYUV420_8u_C3P3R, UniformSumsInVectorAndTailColumns) {
    subtest::uniformSumsAgainstReference(exportNamed("RGBToYUV420_8u_C3P3R"), 256, 512);
    subtest::uniformSumsAgainstReference(exportNamed("RGBToYUV420_8u_C3P3R"), 6, 8192);
}

// Blocks whose chroma differences sit on a rounding edge: the sum of the four L is
// within one of a multiple of 2^16, so that a rounding term of 131072 or 131070 in
// place of 131071 would change D or E.
TEST_P(RgbToYuv420Each, SumsOnRoundingEdgesMatchReference) {
    static const std::vector<std::array<int, 3>> sums =
        subtest::sumsOnRoundingEdges(-19595, -38470, 65536 - 7471, 131071, 16, 1020);
    subtest::givenSumsAgainstReference(*GetParam(), 256, sums, "edges");
}

// The forms without steps on tight buffers of sizes around the vector blocks, the
// source ending flush against an inaccessible page.
class RgbToYuv420WithoutSteps : public ::testing::TestWithParam<const SubsampledExport*> {};
TEST_P(RgbToYuv420WithoutSteps, TightBuffersMatchReference) {
    const std::vector<PxkSize> sizes = {{16, 16}, {18, 15}, {17, 16}, {15, 17}, {8, 32}, {2, 128}, {24, 11},
                                        {255, 1}, {1, 255}, {256, 2}, {257, 3}, {33, 9}, {40, 40}, {1920, 4}};
    subtest::sizesAgainstReference(*GetParam(), subtest::stepPlans().front(), sizes);
}
INSTANTIATE_TEST_SUITE_P(FormsWithoutSteps, RgbToYuv420WithoutSteps,
                         ::testing::Values(&exportNamed("RGBToYUV420_8u_C3P3"), &exportNamed("RGBToYUV420_8u_P3")),
                         subtest::exportParamName);

// ---------------------------------------------------------------------------------
// Statuses
// ---------------------------------------------------------------------------------

// pSrc, pDst, each entry of pDst, dstStep, then the size.
class RgbToYuv420PackedWithSteps : public ::testing::TestWithParam<const SubsampledExport*> {};
TEST_P(RgbToYuv420PackedWithSteps, StatusOrderPointersThenSize) { subtest::planarStatusChecks(*GetParam()); }
INSTANTIATE_TEST_SUITE_P(PackedSources, RgbToYuv420PackedWithSteps,
                         ::testing::Values(&exportNamed("BGRToYUV420_8u_AC4P3R"), &exportNamed("RGBToYUV420_8u_C3P3R")),
                         subtest::exportParamName);

TEST(RGBToYUV420_8u_P3R, StatusOrderArraysThenSizeThenEntries) {
    subyuvtest::planesWithStepsStatusChecks(exportNamed("RGBToYUV420_8u_P3R"), pxkiRGBToYUV420_8u_P3R);
}
TEST(RGBToYUV420_8u_C3P3, StatusOrderPointersAndEntriesThenSize) {
    subyuvtest::packedWithoutStepsStatusChecks(exportNamed("RGBToYUV420_8u_C3P3"), pxkiRGBToYUV420_8u_C3P3);
}
TEST(RGBToYUV420_8u_P3, StatusOrderPointersThenSizeThenEntries) {
    subyuvtest::planesWithoutStepsStatusChecks(exportNamed("RGBToYUV420_8u_P3"), pxkiRGBToYUV420_8u_P3);
}

TEST_P(RgbToYuv420Each, OddSizesWarn) {
    const SubsampledExport& ex = *GetParam();
    subtest::expectOddSizeStatuses(ex, subtest::oddSizeCases420FromOne(), "oddYuv420");
}

// ---------------------------------------------------------------------------------
// Known values
// ---------------------------------------------------------------------------------

// A width or a height of 1 converts nothing and reports the odd size; the planes are
// as wide and high as the rules make them (a chroma plane of no rows or columns).
TEST_P(RgbToYuv420Each, WidthOrHeightOfOneWritesNothing) {
    const SubsampledExport& ex = *GetParam();
    for (const PxkSize z : {PxkSize{1, 1}, PxkSize{1, 2}, PxkSize{1, 7}, PxkSize{2, 1}, PxkSize{33, 1}}) {
        SCOPED_TRACE(subtest::sizeText(z));
        Rng rng(pxktest::seedFor("oneYuv420", {uint32_t(z.width), uint32_t(z.height)}));
        Surface src = subtest::makeFullSource(ex, z.width, z.height, subtest::tightSourceStep(ex, z.width));
        Surface dst = subtest::makeDest(ex, z.width, z.height);
        src.fillRandom(rng);
        dst.fillRandom(rng);
        EXPECT_EQ(subtest::callExport(ex, src, dst, z), pxkWarnOddSize);
        EXPECT_TRUE(dst.unchanged());
        EXPECT_TRUE(src.unchanged());
    }
}

using Known = subtest::KnownYuv;
using subtest::vectorLumaOf;

// Uniform 2 x 2 blocks with the tail luma L >> 16.
const std::vector<Known>& primaries() { return subtest::fullRangePrimaries(); }

// Width 6 has no vector columns in any member.
TEST_P(RgbToYuv420Each, PrimaryBlocksInTailColumns) {
    const SubsampledExport& ex = *GetParam();
    for (const Known& k : primaries()) {
        SCOPED_TRACE(k.name);
        const Surface d = subyuvtest::convertUniform(ex, 6, 4, k.rgb);
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 6; ++x) EXPECT_EQ(lumaAt(d, x, y), k.y) << "Y at " << x << "," << y;
        }
        for (int r = 0; r < 2; ++r) {
            for (int c = 0; c < 3; ++c) {
                EXPECT_EQ(uAt(ex, d, c, r), k.u) << "U at " << c << "," << r;
                EXPECT_EQ(vAt(ex, d, c, r), k.v) << "V at " << c << "," << r;
            }
        }
    }
}

// Width 18: the C3 members take the vector luma in columns 0-15, the tail in 16 and 17;
// the others the tail everywhere. Chroma is the same in every column.
TEST_P(RgbToYuv420Each, PrimaryBlocksByColumn) {
    const SubsampledExport& ex = *GetParam();
    for (const Known& k : primaries()) {
        SCOPED_TRACE(k.name);
        const Surface d = subyuvtest::convertUniform(ex, 18, 2, k.rgb);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 18; ++x) {
                EXPECT_EQ(lumaAt(d, x, y), hasVectorLuma(ex) && x < 16 ? vectorLumaOf(k) : k.y) << x << "," << y;
            }
        }
        for (int c = 0; c < 9; ++c) {
            EXPECT_EQ(uAt(ex, d, c, 0), k.u) << "U at " << c;
            EXPECT_EQ(vAt(ex, d, c, 0), k.v) << "V at " << c;
        }
    }
}

// White of every width from 1 to 40 and around 64 and 128, heights 2 and 3: Y 254
// below width - width % 8 in the C3 members, 255 elsewhere; the odd last column and
// row stay as they were.
TEST_P(RgbToYuv420Each, VectorLumaEndsAtWholeBlocksOf8) {
    const SubsampledExport& ex = *GetParam();
    std::vector<int> widths;
    for (int w = 1; w <= 40; ++w) widths.push_back(w);
    for (int w : {62, 63, 64, 65, 66, 67, 126, 127, 128, 129, 130, 131, 133}) widths.push_back(w);
    for (int w : widths) {
        for (int h : {2, 3}) {
            SCOPED_TRACE("width " + std::to_string(w) + " height " + std::to_string(h));
            const Surface d = subyuvtest::convertUniform(ex, w, h, {255, 255, 255});
            const int vectorColumns = hasVectorLuma(ex) ? w - w % 8 : 0;
            for (int y = 0; y < h; ++y) {
                for (int x = 0; x < w; ++x) {
                    const bool written = x < w - w % 2 && y < 2;
                    ASSERT_EQ(lumaAt(d, x, y), written ? (x < vectorColumns ? 254 : 255) : 0xEE) << x << "," << y;
                }
            }
            for (int c = 0; c < w / 2; ++c) {
                ASSERT_EQ(uAt(ex, d, c, 0), 128) << c;
                ASSERT_EQ(vAt(ex, d, c, 0), 128) << c;
            }
        }
    }
}

// One block of four different pixels: Y 18, 124 / 164, 70 by the tail luma (17 for the
// first by the vector luma), U 138, V 108.
TEST_P(RgbToYuv420Each, MixedBlock) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subtest::convertPixels(ex, subtest::mixedBlock(), pxkOk);
    EXPECT_EQ(lumaAt(d, 0, 0), 18);
    EXPECT_EQ(lumaAt(d, 1, 0), 124);
    EXPECT_EQ(lumaAt(d, 0, 1), 164);
    EXPECT_EQ(lumaAt(d, 1, 1), 70);
    EXPECT_EQ(uAt(ex, d, 0, 0), 138);
    EXPECT_EQ(vAt(ex, d, 0, 0), 108);
}

TEST(RGBToYUV420_8u_C3P3R, MixedBlockInVectorColumns) {
    // Four copies of the block side by side: width 8, all in the vector columns.
    const std::vector<std::vector<Rgb>> rows = subtest::mixedBlockFourTimes();
    for (const char* name : {"RGBToYUV420_8u_C3P3R", "RGBToYUV420_8u_C3P3"}) {
        SCOPED_TRACE(name);
        const SubsampledExport& ex = exportNamed(name);
        const Surface d = subtest::convertPixels(ex, rows, pxkOk);
        for (int c = 0; c < 4; ++c) {
            EXPECT_EQ(lumaAt(d, 2 * c, 0), 17) << c;
            EXPECT_EQ(lumaAt(d, 2 * c + 1, 0), 124) << c;
            EXPECT_EQ(lumaAt(d, 2 * c, 1), 164) << c;
            EXPECT_EQ(lumaAt(d, 2 * c + 1, 1), 70) << c;
            EXPECT_EQ(uAt(ex, d, c, 0), 138) << c;
            EXPECT_EQ(vAt(ex, d, c, 0), 108) << c;
        }
    }
}

// A 3 x 3 region converts its top-left 2 x 2 block (white, black / red, blue: U 146,
// V 161), leaves the third row and column as they were, and reports the odd size.
TEST_P(RgbToYuv420Each, ThreeByThreeConvertsTopLeftTwoByTwo) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subtest::convertPixels(ex, subtest::threeByThree(), pxkWarnOddSize, 0xEE);
    EXPECT_EQ(lumaAt(d, 0, 0), 255);
    EXPECT_EQ(lumaAt(d, 1, 0), 0);
    EXPECT_EQ(lumaAt(d, 0, 1), 76);
    EXPECT_EQ(lumaAt(d, 1, 1), 29);
    EXPECT_EQ(uAt(ex, d, 0, 0), 146);
    EXPECT_EQ(vAt(ex, d, 0, 0), 161);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(lumaAt(d, 2, i), 0xEE) << "column 2, row " << i;
        EXPECT_EQ(lumaAt(d, i, 2), 0xEE) << "row 2, column " << i;
    }
    EXPECT_EQ(d.image(1).width(), 1);
    EXPECT_EQ(d.image(1).height(), 1);
}

// Source order: BGR for BGRToYUV420_8u_AC4P3R (bytes 0-2 B, G, R), R, G, B in bytes or
// planes 0-2 for the others. Sample 0 at 255, the others 0: blue or red.
TEST_P(RgbToYuv420Each, SourceOrder) {
    const SubsampledExport& ex = *GetParam();
    const int w = 10, h = 2;
    Surface src = subtest::makeFullSource(ex, w, h, subtest::tightSourceStep(ex, w));
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            src.at(x, y, 0) = 255;
            src.at(x, y, 1) = 0;
            src.at(x, y, 2) = 0;
            if (ex.srcBytes == 4) src.at(x, y, 3) = uint8_t(17 * x);
        }
    }
    Surface dst = subtest::makeDest(ex, w, h);
    ASSERT_EQ(subtest::callExport(ex, src, dst, PxkSize{w, h}), pxkOk);
    const bool red = !ex.bgr;
    for (int x = 0; x < w; ++x) EXPECT_EQ(lumaAt(dst, x, 1), red ? 76 : 29) << x;
    for (int c = 0; c < w / 2; ++c) {
        EXPECT_EQ(uAt(ex, dst, c, 0), red ? 90 : 239) << c;
        EXPECT_EQ(vAt(ex, dst, c, 0), red ? 255 : 102) << c;
    }
}

// The fourth byte of BGRToYUV420_8u_AC4P3R takes no part.
TEST(BGRToYUV420_8u_AC4P3R, FourthSourceByteIgnored) {
    subtest::expectFourthSourceByteIgnored(exportNamed("BGRToYUV420_8u_AC4P3R"), 21, 5, pxkWarnOddSize);
}

// Each source plane of RGBToYUV420_8u_P3R follows its own step: R with a zero step
// (one row serves every row), G running upward, B padded. R is 255 everywhere, G and B
// are 0 in rows 0-1 and 255 in rows 2-3: red blocks, then white ones.
TEST(RGBToYUV420_8u_P3R, EachSourcePlaneFollowsItsOwnStep) {
    const SubsampledExport& ex = exportNamed("RGBToYUV420_8u_P3R");
    const int w = 4, h = 4;
    Surface src = subtest::makeSource(ex, w, h, std::array<int, 3>{0, -(w + 3), w + 16});
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) subtest::setPixel(ex, src, x, y, y < 2 ? Rgb{255, 0, 0} : Rgb{255, 255, 255});
    }
    ASSERT_EQ(src.image(0).step(), 0);
    ASSERT_LT(src.image(1).step(), 0);
    Surface dst = subtest::makeDest(ex, w, h, StepKind::Padded);
    ASSERT_EQ(subtest::callExport(ex, src, dst, PxkSize{w, h}), pxkOk);
    for (int x = 0; x < w; ++x) {
        EXPECT_EQ(lumaAt(dst, x, 0), 76) << x;
        EXPECT_EQ(lumaAt(dst, x, 3), 255) << x;
    }
    for (int c = 0; c < 2; ++c) {
        EXPECT_EQ(uAt(ex, dst, c, 0), 90);
        EXPECT_EQ(vAt(ex, dst, c, 0), 255);
        EXPECT_EQ(uAt(ex, dst, c, 1), 128);
        EXPECT_EQ(vAt(ex, dst, c, 1), 128);
    }
    EXPECT_TRUE(dst.guardsIntact());
}

// The forms without steps give what their twins with steps give on tight buffers: the
// 4:2:0 ones have no whole-image path, so the vector luma of RGBToYUV420_8u_C3P3 stops
// at width - width % 8 in every row (18 x 16 white: columns 16 and 17 have Y 255).
TEST(RGBToYUV420_8u_C3P3, VectorLumaByColumnInEveryRow) {
    const Surface d = subyuvtest::convertUniform(exportNamed("RGBToYUV420_8u_C3P3"), 18, 16, {255, 255, 255});
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 18; ++x) EXPECT_EQ(lumaAt(d, x, y), x < 16 ? 254 : 255) << x << "," << y;
    }
}

}  // namespace
