// RGB / BGR -> studio-range YCbCr 4:1:1 and 4:2:2: the seven exports against the
// reference model, the known values, what each member does with an odd last pixel or
// a partial group of four, statuses and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "pxkcc.h"
#include "reference_subsampled.h"
#include "subsampled_harness.h"
#include "subsampled_known_values.h"

namespace {

using pxktest::Rng;
using pxktest::StepKind;
using pxktest::Surface;
using subref::OddPixel422;
using subtest::DestLayout;
using subtest::Rgb;
using subtest::Sampling;
using subtest::SubsampledExport;

using RefFn = std::function<void(const subref::PackedSource&, const subref::PlanarDest&, int, int)>;

RefFn ref411() {
    return [](const subref::PackedSource& s, const subref::PlanarDest& d, int w, int h) { subref::rgbTo411(s, d, w, h); };
}

RefFn ref422Planar(OddPixel422 odd) {
    return [odd](const subref::PackedSource& s, const subref::PlanarDest& d, int w, int h) {
        subref::rgbTo422Planar(s, d, w, h, odd);
    };
}

RefFn ref422Packed() {
    return [](const subref::PackedSource& s, const subref::PlanarDest& d, int w, int h) {
        subref::rgbTo422Packed(s, d.plane[0], d.step[0], w, h);
    };
}

const std::vector<SubsampledExport>& exports() {
    static const std::vector<SubsampledExport> list = {
        {"BGRToYCbCr411_8u_C3P3R", 3, true, Sampling::S411, DestLayout::P3, pxkiBGRToYCbCr411_8u_C3P3R, nullptr,
         ref411()},
        {"BGRToYCbCr411_8u_AC4P3R", 4, true, Sampling::S411, DestLayout::P3, pxkiBGRToYCbCr411_8u_AC4P3R, nullptr,
         ref411()},
        {"BGRToYCbCr422_8u_C3P3R", 3, true, Sampling::S422, DestLayout::P3, pxkiBGRToYCbCr422_8u_C3P3R, nullptr,
         ref422Planar(OddPixel422::LumaOnly)},
        {"BGRToYCbCr422_8u_AC4P3R", 4, true, Sampling::S422, DestLayout::P3, pxkiBGRToYCbCr422_8u_AC4P3R, nullptr,
         ref422Planar(OddPixel422::LumaOnly)},
        {"BGRToYCbCr422_8u_C3C2R", 3, true, Sampling::S422, DestLayout::C2, nullptr, pxkiBGRToYCbCr422_8u_C3C2R,
         ref422Packed()},
        {"BGRToYCbCr422_8u_AC4C2R", 4, true, Sampling::S422, DestLayout::C2, nullptr, pxkiBGRToYCbCr422_8u_AC4C2R,
         ref422Packed()},
        {"RGBToYCbCr422_8u_C3P3R", 3, false, Sampling::S422, DestLayout::P3, pxkiRGBToYCbCr422_8u_C3P3R, nullptr,
         ref422Planar(OddPixel422::Unwritten)},
    };
    return list;
}

const SubsampledExport& exportNamed(const std::string& name) { return subtest::exportNamed(exports(), name); }

std::vector<const SubsampledExport*> where(bool (*keep)(const SubsampledExport&)) {
    std::vector<const SubsampledExport*> v;
    for (const SubsampledExport* ex : subtest::exportPointers(exports())) {
        if (keep(*ex)) v.push_back(ex);
    }
    return v;
}

std::vector<const SubsampledExport*> allExports() {
    return where([](const SubsampledExport&) { return true; });
}
std::vector<const SubsampledExport*> planarExports() {
    return where([](const SubsampledExport& ex) { return ex.dest == DestLayout::P3; });
}
std::vector<const SubsampledExport*> packedExports() {
    return where([](const SubsampledExport& ex) { return ex.dest == DestLayout::C2; });
}
std::vector<const SubsampledExport*> exports422() {
    return where([](const SubsampledExport& ex) { return ex.sampling == Sampling::S422; });
}
std::vector<const SubsampledExport*> fourByteSourceExports() {
    return where([](const SubsampledExport& ex) { return ex.srcBytes == 4; });
}

// ---------------------------------------------------------------------------------
// Reference comparison over all widths, heights and step layouts
// ---------------------------------------------------------------------------------

SUBTEST_SWEEP_SUITE(RgbToSubsampled, exports);

class RgbToSubsampledEach : public ::testing::TestWithParam<const SubsampledExport*> {};

TEST_P(RgbToSubsampledEach, AnyAlignmentMatchesReference) { subtest::alignmentsAgainstReference(*GetParam()); }
TEST_P(RgbToSubsampledEach, ExtremeGroupsMatchReference) {
    subtest::extremeGroupsAgainstReference(*GetParam(), 32);
    subtest::extremeGroupsAgainstReference(*GetParam(), 31);
}
TEST_P(RgbToSubsampledEach, RandomGroupsMatchReference) {
    subtest::randomGroupsAgainstReference(*GetParam(), 256, 256);
    subtest::randomGroupsAgainstReference(*GetParam(), 7, 4096);
}
TEST_P(RgbToSubsampledEach, UniformSumsMatchReference) {
    subtest::uniformSumsAgainstReference(*GetParam(), 256, 128);
    subtest::uniformSumsAgainstReference(*GetParam(), 13, 2048);
}
TEST_P(RgbToSubsampledEach, LeastSize) { subtest::leastSizeChecks(*GetParam()); }

INSTANTIATE_TEST_SUITE_P(AllExports, RgbToSubsampledEach, ::testing::ValuesIn(allExports()),
                         subtest::exportParamName);

// Every input as a pixel of a whole group, once; and, with an odd width, as the last
// pixel of a 4:2:2 row about two thousand times a slice.
TEST(BGRToYCbCr411_8u_C3P3R, EveryPixel) { subtest::everyPixelAgainstReference(exportNamed("BGRToYCbCr411_8u_C3P3R"), 32); }
TEST(BGRToYCbCr422_8u_C3C2R, EveryPixel) { subtest::everyPixelAgainstReference(exportNamed("BGRToYCbCr422_8u_C3C2R"), 31); }
TEST(RGBToYCbCr422_8u_C3P3R, EveryPixel) { subtest::everyPixelAgainstReference(exportNamed("RGBToYCbCr422_8u_C3P3R"), 64); }

// ---------------------------------------------------------------------------------
// Statuses
// ---------------------------------------------------------------------------------

class RgbToSubsampledPlanar : public ::testing::TestWithParam<const SubsampledExport*> {};
TEST_P(RgbToSubsampledPlanar, StatusOrderPointersThenSize) { subtest::planarStatusChecks(*GetParam()); }
INSTANTIATE_TEST_SUITE_P(PlanarMembers, RgbToSubsampledPlanar, ::testing::ValuesIn(planarExports()),
                         subtest::exportParamName);

class RgbToSubsampledPacked : public ::testing::TestWithParam<const SubsampledExport*> {};
TEST_P(RgbToSubsampledPacked, StatusOrderPointersThenSize) { subtest::packedStatusChecks(*GetParam()); }
INSTANTIATE_TEST_SUITE_P(PackedMembers, RgbToSubsampledPacked, ::testing::ValuesIn(packedExports()),
                         subtest::exportParamName);

PxkResult callOn(const SubsampledExport& ex, PxkSize z) {
    Rng rng(pxktest::seedFor("status", {uint32_t(z.width), uint32_t(z.height)}));
    Surface src = Surface::packed(z.width, z.height, ex.srcBytes, z.width * ex.srcBytes);
    Surface dst = subtest::makeDest(ex, z.width, z.height);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    return subtest::callExport(ex, src.data(), src.step(), dst, z);
}

TEST_P(RgbToSubsampledEach, StatusOfEachWidth) {
    const SubsampledExport& ex = *GetParam();
    for (int w = subtest::minimumSize(ex.sampling).width; w <= 13; ++w) {
        for (int h : {1, 2, 3}) {
            const PxkResult want = (ex.sampling == Sampling::S411 && w % 4 != 0) ? pxkWarnOddSize : pxkOk;
            EXPECT_EQ(callOn(ex, PxkSize{w, h}), want) << w << "x" << h;
        }
    }
}

// ---------------------------------------------------------------------------------
// Known values
// ---------------------------------------------------------------------------------

using Known = subtest::KnownYcc;

// Uniform groups: chroma is (c . rgb + 8396800) >> 16, with a rounding term of an
// eighth, so green has Cb 53 where the full-resolution direct form gives 54.
const std::vector<Known>& primaries() { return subtest::studioPrimaries(); }

// Y of pixel x of row y, and Cb, Cr of chroma group c of row y, from either layout.
// (A packed destination is an image of two-byte pixels: Y, then Cb or Cr.)
int lumaAt(const SubsampledExport&, const Surface& d, int x, int y) { return d.at(x, y, 0); }
int cbAt(const SubsampledExport& ex, const Surface& d, int c, int y) {
    return ex.dest == DestLayout::C2 ? d.at(2 * c, y, 1) : d.at(c, y, 1);
}
int crAt(const SubsampledExport& ex, const Surface& d, int c, int y) {
    return ex.dest == DestLayout::C2 ? d.at(2 * c + 1, y, 1) : d.at(c, y, 2);
}

TEST_P(RgbToSubsampledEach, PrimaryGroups) {
    const SubsampledExport& ex = *GetParam();
    const int w = 24, h = 2;
    const int groups = ex.sampling == Sampling::S411 ? w / 4 : w / 2;
    for (const Known& k : primaries()) {
        SCOPED_TRACE(k.name);
        const Surface d = subtest::convertPixels(ex, subtest::uniformRows(w, h, k.rgb), pxkOk);
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) EXPECT_EQ(lumaAt(ex, d, x, y), k.y) << "Y at " << x << "," << y;
            for (int c = 0; c < groups; ++c) {
                EXPECT_EQ(cbAt(ex, d, c, y), k.cb) << "Cb at " << c << "," << y;
                EXPECT_EQ(crAt(ex, d, c, y), k.cr) << "Cr at " << c << "," << y;
            }
        }
    }
}

// Source bytes 255, 0, 0 (and an alpha byte where there is one): blue for the BGR
// members, red for RGBToYCbCr422_8u_C3P3R.
TEST_P(RgbToSubsampledEach, ByteOrderOfTheSource) {
    const SubsampledExport& ex = *GetParam();
    const int w = 12, h = 1;
    Surface src = Surface::packed(w, h, ex.srcBytes, w * ex.srcBytes);
    src.image(0).fillRegion([](int x, int, int b) { return uint8_t(b == 0 ? 255 : (b == 3 ? 19 * x : 0)); });
    Surface dst = subtest::makeDest(ex, w, h);
    ASSERT_EQ(subtest::callExport(ex, src.data(), src.step(), dst, PxkSize{w, h}), pxkOk);
    const bool red = !ex.bgr;
    const int groups = ex.sampling == Sampling::S411 ? w / 4 : w / 2;
    for (int x = 0; x < w; ++x) EXPECT_EQ(lumaAt(ex, dst, x, 0), red ? 82 : 41) << x;
    for (int c = 0; c < groups; ++c) {
        EXPECT_EQ(cbAt(ex, dst, c, 0), red ? 90 : 240) << c;
        EXPECT_EQ(crAt(ex, dst, c, 0), red ? 240 : 110) << c;
    }
}

class RgbToSubsampledFourBytes : public ::testing::TestWithParam<const SubsampledExport*> {};

// The fourth byte of an AC4 source takes no part.
TEST_P(RgbToSubsampledFourBytes, FourthSourceByteIgnored) {
    const SubsampledExport& ex = *GetParam();
    subtest::expectFourthSourceByteIgnored(ex, 23, 3, subtest::expectedStatus(ex.sampling, 23, 3));
}

INSTANTIATE_TEST_SUITE_P(FourByteSources, RgbToSubsampledFourBytes, ::testing::ValuesIn(fourByteSourceExports()),
                         subtest::exportParamName);

// ---------------------------------------------------------------------------------
// 4:1:1: a partial last group
// ---------------------------------------------------------------------------------

// Width 5: four columns convert, the fifth is left as it was, pxkWarnOddSize. The
// group's sums are R 265, G 275, B 285.
void expectWidthFiveConvertsFourColumns(const SubsampledExport& ex) {
    const std::vector<std::vector<Rgb>> rows = {{{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {10, 20, 30}, {50, 60, 70}}};
    const Surface d = subtest::convertPixels(ex, rows, pxkWarnOddSize, 0xEE);
    EXPECT_EQ(d.at(0, 0, 0), 82);
    EXPECT_EQ(d.at(1, 0, 0), 145);
    EXPECT_EQ(d.at(2, 0, 0), 41);
    EXPECT_EQ(d.at(3, 0, 0), 32);
    EXPECT_EQ(d.at(4, 0, 0), 0xEE);
    EXPECT_EQ(d.image(1).width(), 1);
    EXPECT_EQ(d.at(0, 0, 1), 129);
    EXPECT_EQ(d.at(0, 0, 2), 126);
}

TEST(BGRToYCbCr411_8u_C3P3R, WidthFiveConvertsFourColumnsAndWarns) {
    expectWidthFiveConvertsFourColumns(exportNamed("BGRToYCbCr411_8u_C3P3R"));
}
TEST(BGRToYCbCr411_8u_AC4P3R, WidthFiveConvertsFourColumnsAndWarns) {
    expectWidthFiveConvertsFourColumns(exportNamed("BGRToYCbCr411_8u_AC4P3R"));
}

// The columns past the last whole group are never read: each source ends with the
// last pixel of the last whole group of its highest row, and an inaccessible page
// follows.
void expectPartialGroupNeverRead(const SubsampledExport& ex) {
    for (int w : {5, 6, 7, 9, 11, 13, 15}) {
        for (int h : {1, 2, 3}) {
            SCOPED_TRACE(std::to_string(w) + "x" + std::to_string(h));
            Rng rng(pxktest::seedFor("unread411", {uint32_t(w), uint32_t(h)}));
            pxktest::GuardOptions fenced;
            fenced.after = 0;
            fenced.fenceAfter = true;
            Surface src = subtest::makeSource(ex, w, h, w * ex.srcBytes, fenced);
            ASSERT_EQ(src.width(), w - w % 4);
            Surface dst = subtest::makeDest(ex, w, h);
            src.fillRandom(rng);
            dst.fillRandom(rng);
            EXPECT_TRUE(subtest::compareOnce(ex, src, dst, w, h));
        }
    }
}

TEST(BGRToYCbCr411_8u_C3P3R, ColumnsPastTheLastWholeGroupAreNotRead) {
    expectPartialGroupNeverRead(exportNamed("BGRToYCbCr411_8u_C3P3R"));
}
TEST(BGRToYCbCr411_8u_AC4P3R, ColumnsPastTheLastWholeGroupAreNotRead) {
    expectPartialGroupNeverRead(exportNamed("BGRToYCbCr411_8u_AC4P3R"));
}

// Widths 4 to 12 of white, three rows: the columns past the last whole group stay as
// they were in every row.
TEST(BGRToYCbCr411_8u_C3P3R, ColumnsPastTheLastWholeGroupUntouched) {
    const SubsampledExport& ex = exportNamed("BGRToYCbCr411_8u_C3P3R");
    for (int w = 4; w <= 12; ++w) {
        SCOPED_TRACE("width " + std::to_string(w));
        const Surface d = subtest::convertPixels(ex, subtest::uniformRows(w, 3, {255, 255, 255}),
                                                 w % 4 ? pxkWarnOddSize : pxkOk, 0xEE);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < w; ++x) EXPECT_EQ(d.at(x, y, 0), x < w - w % 4 ? 235 : 0xEE) << x << "," << y;
            for (int c = 0; c < w / 4; ++c) {
                EXPECT_EQ(d.at(c, y, 1), 128);
                EXPECT_EQ(d.at(c, y, 2), 128);
            }
        }
    }
}

// ---------------------------------------------------------------------------------
// 4:2:2: the pair's chroma and an odd last pixel
// ---------------------------------------------------------------------------------

// Row of three: red and green make the pair (sums R 255, G 255, B 0: Cb 72, Cr 137),
// and the last pixel is (0, 0, 20): Y 18, and a Cb of its own at the eighth rounding
// of 136 (the full-resolution direct form would give 137).
const std::vector<std::vector<Rgb>>& rowOfThree() {
    static const std::vector<std::vector<Rgb>> r = {{{255, 0, 0}, {0, 255, 0}, {0, 0, 20}}};
    return r;
}

void expectPlanarOddPixelLumaOnly(const SubsampledExport& ex) {
    const Surface d = subtest::convertPixels(ex, rowOfThree(), pxkOk, 0xEE);
    EXPECT_EQ(d.at(0, 0, 0), 82);
    EXPECT_EQ(d.at(1, 0, 0), 145);
    EXPECT_EQ(d.at(2, 0, 0), 18);
    EXPECT_EQ(d.image(1).width(), 1);
    EXPECT_EQ(d.at(0, 0, 1), 72);
    EXPECT_EQ(d.at(0, 0, 2), 137);
}

TEST(BGRToYCbCr422_8u_C3P3R, OddLastPixelWritesItsLumaOnly) {
    expectPlanarOddPixelLumaOnly(exportNamed("BGRToYCbCr422_8u_C3P3R"));
}
TEST(BGRToYCbCr422_8u_AC4P3R, OddLastPixelWritesItsLumaOnly) {
    expectPlanarOddPixelLumaOnly(exportNamed("BGRToYCbCr422_8u_AC4P3R"));
}

TEST(RGBToYCbCr422_8u_C3P3R, OddLastPixelLeftUnwritten) {
    const Surface d = subtest::convertPixels(exportNamed("RGBToYCbCr422_8u_C3P3R"), rowOfThree(), pxkOk, 0xEE);
    EXPECT_EQ(d.at(0, 0, 0), 82);
    EXPECT_EQ(d.at(1, 0, 0), 145);
    EXPECT_EQ(d.at(2, 0, 0), 0xEE);
    EXPECT_EQ(d.at(0, 0, 1), 72);
    EXPECT_EQ(d.at(0, 0, 2), 137);
}

// Packed: Y0 Cb Y1 Cr for the pair, then Y and the odd pixel's Cb; six bytes in all,
// and nothing after them.
void expectPackedRowOfThree(const SubsampledExport& ex) {
    const Surface d = subtest::convertPixels(ex, rowOfThree(), pxkOk, 0xEE);
    const uint8_t* row = d.image(0).data();
    const std::vector<int> got(row, row + 6);
    EXPECT_EQ(got, (std::vector<int>{82, 72, 145, 137, 18, 136}));
}

TEST(BGRToYCbCr422_8u_C3C2R, WidthThreeWritesPairThenLumaAndCb) {
    expectPackedRowOfThree(exportNamed("BGRToYCbCr422_8u_C3C2R"));
}
TEST(BGRToYCbCr422_8u_AC4C2R, WidthThreeWritesPairThenLumaAndCb) {
    expectPackedRowOfThree(exportNamed("BGRToYCbCr422_8u_AC4C2R"));
}

// A uniform pair of (0, 0, 20) has Cb 136 in every 4:2:2 member, as the odd pixel
// of the packed members does.
class RgbTo422Each : public ::testing::TestWithParam<const SubsampledExport*> {};

TEST_P(RgbTo422Each, PairOfZeroZeroTwentyGivesCb136) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subtest::convertPixels(ex, subtest::uniformRows(2, 1, {0, 0, 20}), pxkOk);
    EXPECT_EQ(lumaAt(ex, d, 0, 0), 18);
    EXPECT_EQ(lumaAt(ex, d, 1, 0), 18);
    EXPECT_EQ(cbAt(ex, d, 0, 0), 136);
    // Cr: (28770 * 0 - 24117 * 0 - 4653 * 40 + 16793600) >> 17 = 126.
    EXPECT_EQ(crAt(ex, d, 0, 0), 126);
}

INSTANTIATE_TEST_SUITE_P(Members422, RgbTo422Each, ::testing::ValuesIn(exports422()), subtest::exportParamName);

// Odd widths of the packed members over several rows: each row's last pixel gives
// exactly two bytes, whatever the colour, and the bytes past them stay.
TEST(BGRToYCbCr422_8u_C3C2R, OddWidthsEndEachRowWithTwoBytes) {
    const SubsampledExport& ex = exportNamed("BGRToYCbCr422_8u_C3C2R");
    for (int w : {3, 5, 7, 9, 15, 17, 33}) {
        SCOPED_TRACE("width " + std::to_string(w));
        std::vector<std::vector<Rgb>> rows = subtest::uniformRows(w, 2, {255, 255, 255});
        rows[0][std::size_t(w - 1)] = {0, 255, 0};  // odd pixel: Y 145, Cb 53
        rows[1][std::size_t(w - 1)] = {0, 0, 255};  // odd pixel: Y 41, Cb 240
        Surface src = Surface::packed(w, 2, 3, 3 * w);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < w; ++x) subtest::setPixel(ex, src, x, y, rows[std::size_t(y)][std::size_t(x)]);
        }
        Surface dst = Surface::packed(w + 1, 2, 2, 2 * (w + 1));  // one pixel of room past the row
        dst.image(0).fill(0xEE, 0x5A);
        ASSERT_EQ(ex.c2(src.data(), src.step(), dst.data(), dst.step(), PxkSize{w, 2}), pxkOk);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x + 1 < w; ++x) {
                EXPECT_EQ(dst.at(x, y, 0), 235) << x << "," << y;
                EXPECT_EQ(dst.at(x, y, 1), 128) << x << "," << y;
            }
            EXPECT_EQ(dst.at(w - 1, y, 0), y == 0 ? 145 : 41);
            EXPECT_EQ(dst.at(w - 1, y, 1), y == 0 ? 53 : 240);
            EXPECT_EQ(dst.at(w, y, 0), 0xEE);
            EXPECT_EQ(dst.at(w, y, 1), 0xEE);
        }
        EXPECT_TRUE(dst.guardsIntact());
    }
}

}  // namespace
