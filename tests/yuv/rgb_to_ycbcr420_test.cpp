// RGB / BGR -> studio-range YCbCr 4:2:0 into three planes: the six exports against the
// reference model, the known values, the block form by column in RGBToYCbCr420_8u_C3P3R,
// the odd last row and column, statuses and guards.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "reference_subsampled.h"
#include "subsampled_harness.h"
#include "subsampled_known_values.h"

namespace {

using pxktest::Rng;
using pxktest::StepKind;
using pxktest::Surface;
using subref::ChromaOrder;
using subtest::DestLayout;
using subtest::Rgb;
using subtest::Sampling;
using subtest::SubsampledExport;

// A 4:2:0 reference: luma and chroma direct (or the block form in the columns that
// take it), chroma planes in the given order.
std::function<void(const subref::PackedSource&, const subref::PlanarDest&, int, int)> ref420(ChromaOrder order,
                                                                                              bool blockColumns) {
    return [order, blockColumns](const subref::PackedSource& s, const subref::PlanarDest& d, int w, int h) {
        subref::rgbTo420(s, d, w, h, order, blockColumns);
    };
}

const std::vector<SubsampledExport>& exports420() {
    static const std::vector<SubsampledExport> list = {
        {"BGRToYCbCr420_8u_C3P3R", 3, true, Sampling::S420, DestLayout::P3, pxkiBGRToYCbCr420_8u_C3P3R, nullptr,
         ref420(ChromaOrder::CbCr, false)},
        {"BGRToYCbCr420_8u_AC4P3R", 4, true, Sampling::S420, DestLayout::P3, pxkiBGRToYCbCr420_8u_AC4P3R, nullptr,
         ref420(ChromaOrder::CbCr, false)},
        {"BGRToYCrCb420_8u_C3P3R", 3, true, Sampling::S420, DestLayout::P3, pxkiBGRToYCrCb420_8u_C3P3R, nullptr,
         ref420(ChromaOrder::CrCb, false)},
        {"BGRToYCrCb420_8u_AC4P3R", 4, true, Sampling::S420, DestLayout::P3, pxkiBGRToYCrCb420_8u_AC4P3R, nullptr,
         ref420(ChromaOrder::CrCb, false)},
        {"RGBToYCrCb420_8u_AC4P3R", 4, false, Sampling::S420, DestLayout::P3, pxkiRGBToYCrCb420_8u_AC4P3R, nullptr,
         ref420(ChromaOrder::CrCb, false)},
        {"RGBToYCbCr420_8u_C3P3R", 3, false, Sampling::S420, DestLayout::P3, pxkiRGBToYCbCr420_8u_C3P3R, nullptr,
         ref420(ChromaOrder::CbCr, true)},
    };
    return list;
}

const SubsampledExport& exportNamed(const std::string& name) { return subtest::exportNamed(exports420(), name); }
std::vector<const SubsampledExport*> allExports() { return subtest::exportPointers(exports420()); }

// The exports whose every column is in the direct forms.
std::vector<const SubsampledExport*> directExports() {
    std::vector<const SubsampledExport*> v;
    for (const SubsampledExport* ex : allExports()) {
        if (ex->name != "RGBToYCbCr420_8u_C3P3R") v.push_back(ex);
    }
    return v;
}

const SubsampledExport& blockFormExport() { return exportNamed("RGBToYCbCr420_8u_C3P3R"); }

bool swapsChroma(const SubsampledExport& ex) { return ex.name.find("YCrCb") != std::string::npos; }

// Cb and Cr as read from a destination: plane 1 and 2, or 2 and 1 in YCrCb members.
uint8_t cbAt(const SubsampledExport& ex, const Surface& d, int c, int r) { return d.at(c, r, swapsChroma(ex) ? 2 : 1); }
uint8_t crAt(const SubsampledExport& ex, const Surface& d, int c, int r) { return d.at(c, r, swapsChroma(ex) ? 1 : 2); }

// ---------------------------------------------------------------------------------
// Reference comparison over all widths, heights and step layouts
// ---------------------------------------------------------------------------------

SUBTEST_SWEEP_SUITE(RgbTo420, exports420);

class RgbTo420Each : public ::testing::TestWithParam<const SubsampledExport*> {};

TEST_P(RgbTo420Each, AnyAlignmentMatchesReference) { subtest::alignmentsAgainstReference(*GetParam()); }
TEST_P(RgbTo420Each, ExtremeBlocksMatchReference) { subtest::extremeGroupsAgainstReference(*GetParam(), 30); }
TEST_P(RgbTo420Each, RandomBlocksMatchReference) { subtest::randomGroupsAgainstReference(*GetParam(), 256, 256); }
TEST_P(RgbTo420Each, UniformSumsMatchReference) { subtest::uniformSumsAgainstReference(*GetParam(), 254, 128); }
TEST_P(RgbTo420Each, StatusOrderPointersThenSize) { subtest::planarStatusChecks(*GetParam()); }
TEST_P(RgbTo420Each, LeastSizeIsTwoByTwo) { subtest::leastSizeChecks(*GetParam()); }

INSTANTIATE_TEST_SUITE_P(AllExports, RgbTo420Each, ::testing::ValuesIn(allExports()), subtest::exportParamName);

// Dense inputs through both kinds of column of RGBToYCbCr420_8u_C3P3R. A width that is
// a multiple of 8 puts every block in the block form; a width of 6 (three chroma
// columns, fewer than 4) puts every block in the direct forms.
TEST(RGBToYCbCr420_8u_C3P3R, EveryPixelInBlockColumns) { subtest::everyPixelAgainstReference(blockFormExport(), 256); }
TEST(RGBToYCbCr420_8u_C3P3R, EveryPixelInDirectColumns) { subtest::everyPixelAgainstReference(blockFormExport(), 6); }
TEST(RGBToYCbCr420_8u_C3P3R, ExtremeBlocksInBlockColumns) {
    subtest::extremeGroupsAgainstReference(blockFormExport(), 8);
}
TEST(RGBToYCbCr420_8u_C3P3R, ExtremeBlocksInDirectColumns) {
    subtest::extremeGroupsAgainstReference(blockFormExport(), 6);
}
TEST(RGBToYCbCr420_8u_C3P3R, RandomBlocksInBlockColumns) {
    subtest::randomGroupsAgainstReference(blockFormExport(), 256, 512);
}
TEST(RGBToYCbCr420_8u_C3P3R, RandomBlocksInDirectColumns) {
    subtest::randomGroupsAgainstReference(blockFormExport(), 6, 8192);
}
TEST(RGBToYCbCr420_8u_C3P3R, UniformSumsInBlockColumns) {
    subtest::uniformSumsAgainstReference(blockFormExport(), 256, 512);
}
TEST(RGBToYCbCr420_8u_C3P3R, UniformSumsInDirectColumns) {
    subtest::uniformSumsAgainstReference(blockFormExport(), 6, 8192);
}
// The direct luma over every input, through a member without the block form.
TEST(BGRToYCbCr420_8u_C3P3R, EveryPixel) { subtest::everyPixelAgainstReference(exportNamed("BGRToYCbCr420_8u_C3P3R"), 30); }

// ---------------------------------------------------------------------------------
// Known values
// ---------------------------------------------------------------------------------

using Known = subtest::KnownYcc;

// Uniform 2 x 2 blocks in the direct forms.
const std::vector<Known>& primariesDirect() { return subtest::studioPrimaries(); }

// The same blocks in the block form of RGBToYCbCr420_8u_C3P3R: red and green lose one
// in Y, green gains one in Cb.
const std::vector<Known>& primariesBlockForm() {
    static const std::vector<Known> k = {
        {"black", {0, 0, 0}, 16, 128, 128},   {"white", {255, 255, 255}, 235, 128, 128},
        {"red", {255, 0, 0}, 81, 90, 240},    {"green", {0, 255, 0}, 144, 54, 34},
        {"blue", {0, 0, 255}, 41, 240, 110},
    };
    return k;
}

TEST(BGRToYCbCr420_8u_C3P3R, WhiteTwoByTwoGivesY235AndNeutralChroma) {
    const SubsampledExport& ex = exportNamed("BGRToYCbCr420_8u_C3P3R");
    const Surface d = subtest::convertPixels(ex, subtest::uniformRows(2, 2, {255, 255, 255}), pxkOk);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 2; ++x) EXPECT_EQ(d.at(x, y, 0), 235) << x << "," << y;
    }
    EXPECT_EQ(d.at(0, 0, 1), 128);
    EXPECT_EQ(d.at(0, 0, 2), 128);
}

class RgbTo420Direct : public ::testing::TestWithParam<const SubsampledExport*> {};

// Uniform images of each primary, 18 x 2: nine blocks, the same values everywhere.
TEST_P(RgbTo420Direct, PrimaryBlocks) {
    const SubsampledExport& ex = *GetParam();
    for (const Known& k : primariesDirect()) {
        SCOPED_TRACE(k.name);
        const Surface d = subtest::convertPixels(ex, subtest::uniformRows(18, 2, k.rgb), pxkOk);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 18; ++x) EXPECT_EQ(d.at(x, y, 0), k.y) << "Y at " << x << "," << y;
        }
        for (int c = 0; c < 9; ++c) {
            EXPECT_EQ(cbAt(ex, d, c, 0), k.cb) << "Cb at " << c;
            EXPECT_EQ(crAt(ex, d, c, 0), k.cr) << "Cr at " << c;
        }
    }
}

using subtest::mixedBlock;

TEST_P(RgbTo420Direct, MixedBlock) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subtest::convertPixels(ex, mixedBlock(), pxkOk);
    EXPECT_EQ(d.at(0, 0, 0), 32);
    EXPECT_EQ(d.at(1, 0, 0), 123);
    EXPECT_EQ(d.at(0, 1, 0), 157);
    EXPECT_EQ(d.at(1, 1, 0), 77);
    EXPECT_EQ(cbAt(ex, d, 0, 0), 138);
    EXPECT_EQ(crAt(ex, d, 0, 0), 113);
}

INSTANTIATE_TEST_SUITE_P(DirectMembers, RgbTo420Direct, ::testing::ValuesIn(directExports()),
                         subtest::exportParamName);

// A 3 x 3 region converts its top-left 2 x 2 block, leaves the third row and column of
// Y as they were, and reports the odd size.
TEST_P(RgbTo420Each, ThreeByThreeConvertsTopLeftTwoByTwo) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subtest::convertPixels(ex, subtest::threeByThree(), pxkWarnOddSize, 0xEE);
    EXPECT_EQ(d.at(0, 0, 0), 235);
    EXPECT_EQ(d.at(1, 0, 0), 16);
    EXPECT_EQ(d.at(0, 1, 0), 82);
    EXPECT_EQ(d.at(1, 1, 0), 41);
    // Sums R 510, G 255, B 510.
    EXPECT_EQ(cbAt(ex, d, 0, 0), 146);
    EXPECT_EQ(crAt(ex, d, 0, 0), 151);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(d.at(2, i, 0), 0xEE) << "column 2, row " << i;
        EXPECT_EQ(d.at(i, 2, 0), 0xEE) << "row 2, column " << i;
    }
    EXPECT_EQ(d.image(1).width(), 1);
    EXPECT_EQ(d.image(1).height(), 1);
}

// The odd last column and row are never read: each source ends with the last pixel
// of the last whole block in its highest row (the last row of the region for a
// positive step, the first for a negative one), and an inaccessible page follows.
TEST_P(RgbTo420Each, OddLastRowAndColumnAreNotRead) {
    const SubsampledExport& ex = *GetParam();
    for (int w : {2, 3, 5, 17, 33}) {
        for (int h : {2, 3, 5}) {
            for (int sign : {1, -1}) {
                SCOPED_TRACE(std::to_string(w) + "x" + std::to_string(h) + (sign < 0 ? " upward" : ""));
                Rng rng(pxktest::seedFor("unread420", {uint32_t(w), uint32_t(h), uint32_t(sign + 1)}));
                pxktest::GuardOptions fenced;
                fenced.after = 0;
                fenced.fenceAfter = true;
                Surface src = subtest::makeSource(ex, w, h, sign * w * ex.srcBytes, fenced);
                ASSERT_EQ(src.width(), w - w % 2);
                ASSERT_EQ(src.height(), h - h % 2);
                Surface dst = subtest::makeDest(ex, w, h);
                src.fillRandom(rng);
                dst.fillRandom(rng);
                EXPECT_TRUE(subtest::compareOnce(ex, src, dst, w, h));
            }
        }
    }
}

TEST_P(RgbTo420Each, OddSizesWarn) {
    const SubsampledExport& ex = *GetParam();
    subtest::expectOddSizeStatuses(ex,
                                   {{{2, 2}, pxkOk},
                                    {{3, 2}, pxkWarnOddSize},
                                    {{2, 3}, pxkWarnOddSize},
                                    {{3, 3}, pxkWarnOddSize},
                                    {{4, 4}, pxkOk},
                                    {{17, 4}, pxkWarnOddSize},
                                    {{16, 5}, pxkWarnOddSize},
                                    {{64, 2}, pxkOk}},
                                   "odd420");
}

TEST(BGRToYCrCb420_8u_C3P3R, CrInPlaneOneCbInPlaneTwo) {
    const Surface d = subtest::convertPixels(exportNamed("BGRToYCrCb420_8u_C3P3R"),
                                             subtest::uniformRows(2, 2, {255, 0, 0}), pxkOk);
    EXPECT_EQ(d.at(0, 0, 0), 82);
    EXPECT_EQ(d.at(0, 0, 1), 240);  // Cr of red
    EXPECT_EQ(d.at(0, 0, 2), 90);   // Cb of red
}

TEST(RGBToYCrCb420_8u_AC4P3R, CrInPlaneOneCbInPlaneTwo) {
    const Surface d = subtest::convertPixels(exportNamed("RGBToYCrCb420_8u_AC4P3R"),
                                             subtest::uniformRows(2, 2, {0, 0, 255}), pxkOk);
    EXPECT_EQ(d.at(0, 0, 0), 41);
    EXPECT_EQ(d.at(0, 0, 1), 110);  // Cr of blue
    EXPECT_EQ(d.at(0, 0, 2), 240);  // Cb of blue
}

// Source bytes 255, 0, 0 (and an alpha byte where there is one) in every pixel: blue
// for a BGR member, red for an RGB member.
TEST_P(RgbTo420Each, ByteOrderOfTheSource) {
    const SubsampledExport& ex = *GetParam();
    const int w = 10, h = 2;
    Surface src = Surface::packed(w, h, ex.srcBytes, w * ex.srcBytes);
    src.image(0).fillRegion([](int x, int, int b) { return uint8_t(b == 0 ? 255 : (b == 3 ? 17 * x : 0)); });
    Surface dst = subtest::makeDest(ex, w, h);
    ASSERT_EQ(subtest::callExport(ex, src.data(), src.step(), dst, PxkSize{w, h}), pxkOk);
    const bool red = !ex.bgr;
    // In RGBToYCbCr420_8u_C3P3R pixels 0-7 (chroma columns 0-3) take the block form,
    // where red has Y 81.
    const int blockPixels = &ex == &blockFormExport() ? 8 : 0;
    for (int x = 0; x < w; ++x) EXPECT_EQ(dst.at(x, 1, 0), red ? (x < blockPixels ? 81 : 82) : 41) << x;
    for (int c = 0; c < w / 2; ++c) {
        EXPECT_EQ(cbAt(ex, dst, c, 0), red ? 90 : 240) << c;
        EXPECT_EQ(crAt(ex, dst, c, 0), red ? 240 : 110) << c;
    }
}

class RgbTo420FourBytes : public ::testing::TestWithParam<const SubsampledExport*> {};

std::vector<const SubsampledExport*> fourByteSourceExports() {
    std::vector<const SubsampledExport*> v;
    for (const SubsampledExport* ex : allExports()) {
        if (ex->srcBytes == 4) v.push_back(ex);
    }
    return v;
}

// The fourth byte of an AC4 source takes no part.
TEST_P(RgbTo420FourBytes, FourthSourceByteIgnored) {
    subtest::expectFourthSourceByteIgnored(*GetParam(), 21, 5, pxkWarnOddSize);
}

INSTANTIATE_TEST_SUITE_P(FourByteSources, RgbTo420FourBytes, ::testing::ValuesIn(fourByteSourceExports()),
                         subtest::exportParamName);

// A zero step on every destination plane: each row pair rewrites the same rows, and
// the last pair stays. Rows 0-1 are black, rows 2-3 blue.
TEST_P(RgbTo420Each, ZeroDestinationStepsKeepTheLastRowPair) {
    const SubsampledExport& ex = *GetParam();
    const int w = 12, h = 4;
    std::vector<std::vector<Rgb>> rows(4, std::vector<Rgb>(std::size_t(w), Rgb{0, 0, 0}));
    rows[2] = rows[3] = std::vector<Rgb>(std::size_t(w), Rgb{0, 0, 255});
    Surface src = Surface::packed(w, h, ex.srcBytes, w * ex.srcBytes + 1);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) subtest::setPixel(ex, src, x, y, rows[std::size_t(y)][std::size_t(x)]);
    }
    Surface dst = subtest::makeDest(ex, w, h, StepKind::Zero);
    for (int i = 0; i < 3; ++i) dst.image(i).fill(0xEE, 0x5A);
    ASSERT_EQ(subtest::callExport(ex, src.data(), src.step(), dst, PxkSize{w, h}), pxkOk);
    for (int x = 0; x < w; ++x) EXPECT_EQ(dst.at(x, 0, 0), 41) << x;
    for (int c = 0; c < w / 2; ++c) {
        EXPECT_EQ(cbAt(ex, dst, c, 0), 240) << c;
        EXPECT_EQ(crAt(ex, dst, c, 0), 110) << c;
    }
    EXPECT_TRUE(dst.guardsIntact());
}

// Negative steps: row 1 lies below row 0 in memory, and so on for every plane.
TEST_P(RgbTo420Each, NegativeStepsRunDownwardInMemory) {
    const SubsampledExport& ex = *GetParam();
    const int w = 4, h = 4;
    const int ss = -(w * ex.srcBytes + 5);
    Surface src = Surface::packed(w, h, ex.srcBytes, ss);
    const Rgb colours[2] = {{255, 255, 255}, {255, 0, 0}};  // pair 0 white, pair 1 red
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) subtest::setPixel(ex, src, x, y, colours[y / 2]);
    }
    Surface dst = subtest::makeDest(ex, w, h, StepKind::Negative);
    for (int i = 0; i < 3; ++i) dst.image(i).fill(0xEE, 0x5A);
    ASSERT_EQ(subtest::callExport(ex, src.data(), ss, dst, PxkSize{w, h}), pxkOk);
    ASSERT_LT(dst.image(0).step(), 0);
    ASSERT_LT(dst.image(1).step(), 0);
    const uint8_t* y0 = dst.image(0).data();
    const int ys = dst.image(0).step();
    for (int x = 0; x < w; ++x) {
        EXPECT_EQ(y0[x], 235);
        EXPECT_EQ(y0[ys + x], 235);
        EXPECT_EQ(y0[2 * ys + x], 82);
        EXPECT_EQ(y0[3 * ys + x], 82);
    }
    for (int c = 0; c < 2; ++c) {
        EXPECT_EQ(cbAt(ex, dst, c, 0), 128);
        EXPECT_EQ(crAt(ex, dst, c, 0), 128);
        EXPECT_EQ(cbAt(ex, dst, c, 1), 90);
        EXPECT_EQ(crAt(ex, dst, c, 1), 240);
    }
    EXPECT_TRUE(dst.guardsIntact());
}

// ---------------------------------------------------------------------------------
// RGBToYCbCr420_8u_C3P3R: the block form below n = p - p % 4 chroma columns
// ---------------------------------------------------------------------------------

TEST(RGBToYCbCr420_8u_C3P3R, PrimaryBlocksInBlockAndDirectColumns) {
    // Width 18: p = 9 chroma columns, n = 8 in the block form, column 8 (pixels 16, 17)
    // in the direct forms.
    const SubsampledExport& ex = blockFormExport();
    for (std::size_t i = 0; i < primariesDirect().size(); ++i) {
        const Known& blk = primariesBlockForm()[i];
        const Known& dir = primariesDirect()[i];
        SCOPED_TRACE(blk.name);
        const Surface d = subtest::convertPixels(ex, subtest::uniformRows(18, 2, blk.rgb), pxkOk);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 18; ++x) EXPECT_EQ(d.at(x, y, 0), x < 16 ? blk.y : dir.y) << "Y at " << x << "," << y;
        }
        for (int c = 0; c < 9; ++c) {
            EXPECT_EQ(d.at(c, 0, 1), c < 8 ? blk.cb : dir.cb) << "Cb at " << c;
            EXPECT_EQ(d.at(c, 0, 2), c < 8 ? blk.cr : dir.cr) << "Cr at " << c;
        }
    }
}

TEST(RGBToYCbCr420_8u_C3P3R, MixedBlockInBlockColumns) {
    // Four copies of the block side by side: width 8, p = 4 = n, all in the block form.
    const std::vector<std::vector<Rgb>> rows = subtest::mixedBlockFourTimes();
    const Surface d = subtest::convertPixels(blockFormExport(), rows, pxkOk);
    for (int c = 0; c < 4; ++c) {
        EXPECT_EQ(d.at(2 * c, 0, 0), 31) << c;
        EXPECT_EQ(d.at(2 * c + 1, 0, 0), 123) << c;
        EXPECT_EQ(d.at(2 * c, 1, 0), 157) << c;
        EXPECT_EQ(d.at(2 * c + 1, 1, 0), 77) << c;
        EXPECT_EQ(d.at(c, 0, 1), 138) << c;
        EXPECT_EQ(d.at(c, 0, 2), 114) << c;
    }
}

TEST(RGBToYCbCr420_8u_C3P3R, MixedBlockAloneIsDirect) {
    const Surface d = subtest::convertPixels(blockFormExport(), mixedBlock(), pxkOk);
    EXPECT_EQ(d.at(0, 0, 0), 32);
    EXPECT_EQ(d.at(1, 0, 0), 123);
    EXPECT_EQ(d.at(0, 1, 0), 157);
    EXPECT_EQ(d.at(1, 1, 0), 77);
    EXPECT_EQ(d.at(0, 0, 1), 138);
    EXPECT_EQ(d.at(0, 0, 2), 113);
}

// Uniform green and red of every width from 2 to 40 and around 64 and 128, two and
// three rows: green has Y 144 and Cb 54 in the block form, Y 145 and Cb 53 in the
// direct forms; red has Y 81 and 82. The split falls at chroma column n = p - p % 4.
TEST(RGBToYCbCr420_8u_C3P3R, BlockFormEndsAtWholeGroupsOfFourChromaColumns) {
    const SubsampledExport& ex = blockFormExport();
    std::vector<int> widths;
    for (int w = 2; w <= 40; ++w) widths.push_back(w);
    for (int w : {62, 63, 64, 65, 66, 67, 126, 127, 128, 129, 130, 131, 133}) widths.push_back(w);
    for (int w : widths) {
        for (int h : {2, 3}) {
            const int p = w / 2;
            const int n = p - p % 4;
            SCOPED_TRACE("width " + std::to_string(w) + " height " + std::to_string(h));
            const Surface g = subtest::convertPixels(ex, subtest::uniformRows(w, h, {0, 255, 0}),
                                                     (w % 2 || h % 2) ? pxkWarnOddSize : pxkOk, 0xEE);
            const Surface r = subtest::convertPixels(ex, subtest::uniformRows(w, h, {255, 0, 0}),
                                                     (w % 2 || h % 2) ? pxkWarnOddSize : pxkOk, 0xEE);
            for (int y = 0; y < h; ++y) {
                for (int x = 0; x < w; ++x) {
                    const bool written = x < 2 * p && y < 2;
                    const bool block = x < 2 * n;
                    ASSERT_EQ(g.at(x, y, 0), written ? (block ? 144 : 145) : 0xEE) << "green Y at " << x << "," << y;
                    ASSERT_EQ(r.at(x, y, 0), written ? (block ? 81 : 82) : 0xEE) << "red Y at " << x << "," << y;
                }
            }
            for (int c = 0; c < p; ++c) {
                ASSERT_EQ(g.at(c, 0, 1), c < n ? 54 : 53) << "green Cb at " << c;
                ASSERT_EQ(g.at(c, 0, 2), 34) << "green Cr at " << c;
                ASSERT_EQ(r.at(c, 0, 1), 90) << "red Cb at " << c;
                ASSERT_EQ(r.at(c, 0, 2), 240) << "red Cr at " << c;
            }
        }
    }
}

// The block form of a block depends on its column only: the same block gives the same
// values wherever the image starts in memory (covered for random data by the
// alignment sweep) and in every row pair.
TEST(RGBToYCbCr420_8u_C3P3R, BlockFormInEveryRowPair) {
    const SubsampledExport& ex = blockFormExport();
    const Surface d = subtest::convertPixels(ex, subtest::uniformRows(8, 10, {0, 255, 0}), pxkOk);
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 8; ++x) EXPECT_EQ(d.at(x, y, 0), 144) << x << "," << y;
    }
    for (int r = 0; r < 5; ++r) {
        for (int c = 0; c < 4; ++c) EXPECT_EQ(d.at(c, r, 1), 54) << c << "," << r;
    }
}

}  // namespace
