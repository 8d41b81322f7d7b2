// RGB / BGR -> studio-range YCbCr 4:2:0 into a Y plane and a plane of Cb, Cr pairs, by
// the float form: the four exports against the reference model, values where the
// single-precision order of operations decides the last bit, the odd last row and
// column, the regions of width or height 1 that convert nothing, statuses and guards.
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
using subtest::DestLayout;
using subtest::Rgb;
using subtest::Sampling;
using subtest::SubsampledExport;

using P2Fn = PxkResult (*)(const uint8_t*, int32_t, uint8_t*, int32_t, uint8_t*, int32_t, PxkSize);

subtest::SurfaceCall callP2(P2Fn fn) {
    return [fn](Surface& src, Surface& dst, PxkSize z) {
        return fn(src.data(), src.step(), dst.image(0).data(), dst.image(0).step(), dst.image(1).data(),
                  dst.image(1).step(), z);
    };
}

SubsampledExport member(const char* name, int srcBytes, bool bgr, P2Fn fn) {
    SubsampledExport ex{name, srcBytes, bgr, Sampling::S420, DestLayout::P2, nullptr, nullptr,
                        [](const subref::PackedSource& s, const subref::PlanarDest& d, int w, int h) {
                            subref::rgbTo420Float(s, d, w, h);
                        }};
    ex.call = callP2(fn);
    ex.least = {1, 1};
    return ex;
}

struct Member {
    SubsampledExport ex;
    P2Fn fn;
};

const std::vector<Member>& members() {
    static const std::vector<Member> list = {
        {member("BGRToYCbCr420_8u_C3P2R", 3, true, pxkiBGRToYCbCr420_8u_C3P2R), pxkiBGRToYCbCr420_8u_C3P2R},
        {member("BGRToYCbCr420_8u_AC4P2R", 4, true, pxkiBGRToYCbCr420_8u_AC4P2R), pxkiBGRToYCbCr420_8u_AC4P2R},
        {member("RGBToYCbCr420_8u_C3P2R", 3, false, pxkiRGBToYCbCr420_8u_C3P2R), pxkiRGBToYCbCr420_8u_C3P2R},
        {member("RGBToYCbCr420_8u_C4P2R", 4, false, pxkiRGBToYCbCr420_8u_C4P2R), pxkiRGBToYCbCr420_8u_C4P2R},
    };
    return list;
}

const std::vector<SubsampledExport>& exports() {
    static const std::vector<SubsampledExport> list = [] {
        std::vector<SubsampledExport> v;
        for (const Member& m : members()) v.push_back(m.ex);
        return v;
    }();
    return list;
}

const SubsampledExport& exportNamed(const std::string& name) { return subtest::exportNamed(exports(), name); }
P2Fn functionOf(const SubsampledExport& ex) {
    for (const Member& m : members()) {
        if (m.ex.name == ex.name) return m.fn;
    }
    return nullptr;
}
std::vector<const SubsampledExport*> allExports() { return subtest::exportPointers(exports()); }

// Cb and Cr of chroma column c, row r: bytes 2c and 2c + 1 of the pairs' plane.
int cbAt(const Surface& d, int c, int r) { return d.image(1).at(c, r, 0); }
int crAt(const Surface& d, int c, int r) { return d.image(1).at(c, r, 1); }

// ---------------------------------------------------------------------------------
// Reference comparison
// ---------------------------------------------------------------------------------

SUBTEST_SWEEP_SUITE(RgbTo420P2, exports);

class RgbTo420P2Each : public ::testing::TestWithParam<const SubsampledExport*> {};

TEST_P(RgbTo420P2Each, AnyAlignmentMatchesReference) { subtest::alignmentsAgainstReference(*GetParam()); }
TEST_P(RgbTo420P2Each, ExtremeBlocksMatchReference) { subtest::extremeGroupsAgainstReference(*GetParam(), 30); }
TEST_P(RgbTo420P2Each, RandomBlocksMatchReference) { subtest::randomGroupsAgainstReference(*GetParam(), 256, 256); }
TEST_P(RgbTo420P2Each, UniformSumsMatchReference) { subtest::uniformSumsAgainstReference(*GetParam(), 254, 128); }
TEST_P(RgbTo420P2Each, LeastSizeIsOneByOne) { subtest::leastSizeChecks(*GetParam()); }

INSTANTIATE_TEST_SUITE_P(AllExports, RgbTo420P2Each, ::testing::ValuesIn(allExports()), subtest::exportParamName);

// The float luma over every input, in both source orders.
TEST(RGBToYCbCr420_8u_C3P2R, EveryPixel) { subtest::everyPixelAgainstReference(exportNamed("RGBToYCbCr420_8u_C3P2R"), 30); }
TEST(BGRToYCbCr420_8u_AC4P2R, EveryPixel) { subtest::everyPixelAgainstReference(exportNamed("BGRToYCbCr420_8u_AC4P2R"), 32); }

// ---------------------------------------------------------------------------------
// Statuses
// ---------------------------------------------------------------------------------

// pSrc, pDstY, pDstCbCr (pxkErrNullPtr), then the size (pxkErrSize); steps are not
// tested. Failing calls write nothing.
TEST_P(RgbTo420P2Each, StatusOrderPointersThenSize) {
    const SubsampledExport& ex = *GetParam();
    const P2Fn fn = functionOf(ex);
    ASSERT_NE(fn, nullptr);
    subtest::StatusFixture f(ex);
    const uint8_t* s = f.src.data();
    const int ss = f.src.step();
    uint8_t* y = f.dst.image(0).data();
    uint8_t* c = f.dst.image(1).data();
    const int ys = f.dst.image(0).step(), cs = f.dst.image(1).step();
    std::vector<PxkSize> sizes = subtest::badSizes(ex);
    sizes.insert(sizes.begin(), subtest::validSize(ex.sampling));
    for (const PxkSize& z : sizes) {
        SCOPED_TRACE("size " + subtest::sizeText(z));
        EXPECT_EQ(fn(nullptr, ss, y, ys, c, cs, z), pxkErrNullPtr);
        EXPECT_EQ(fn(s, ss, nullptr, ys, c, cs, z), pxkErrNullPtr);
        EXPECT_EQ(fn(s, ss, y, ys, nullptr, cs, z), pxkErrNullPtr);
        EXPECT_EQ(fn(nullptr, ss, nullptr, ys, nullptr, cs, z), pxkErrNullPtr);
        EXPECT_EQ(fn(s, -1, nullptr, 0, c, -3, z), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
    for (const PxkSize& z : subtest::badSizes(ex)) {
        SCOPED_TRACE("size " + subtest::sizeText(z));
        EXPECT_EQ(fn(s, ss, y, ys, c, cs, z), pxkErrSize);
        EXPECT_EQ(fn(s, 0, y, -ys, c, 0, z), pxkErrSize);
        EXPECT_TRUE(f.nothingWritten());
    }
    EXPECT_EQ(fn(s, ss, y, ys, c, cs, subtest::validSize(ex.sampling)), pxkOk);
    EXPECT_FALSE(f.dst.image(0).unchanged());
    EXPECT_FALSE(f.dst.image(1).unchanged());
    EXPECT_TRUE(f.src.unchanged());
}

// Least size 1 x 1; an odd width or height is reported, whole blocks are not.
TEST_P(RgbTo420P2Each, OddSizesWarn) {
    const SubsampledExport& ex = *GetParam();
    subtest::expectOddSizeStatuses(ex, subtest::oddSizeCases420FromOne(), "oddP2");
}

// ---------------------------------------------------------------------------------
// Known values
// ---------------------------------------------------------------------------------

// A 1 x 1 region writes nothing and reports the odd size.
TEST(BGRToYCbCr420_8u_C3P2R, OneByOneWritesNothingAndWarns) {
    const SubsampledExport& ex = exportNamed("BGRToYCbCr420_8u_C3P2R");
    Rng rng(11);
    Surface src = subtest::makeFullSource(ex, 1, 1, 3);
    // A destination of one Y sample and room for one chroma pair.
    Surface dst = Surface::planar({pxktest::ImageGeometry{1, 1, 1, 1, 1}, pxktest::ImageGeometry{1, 1, 2, 1, 2}});
    src.fillRandom(rng);
    dst.fillRandom(rng);
    EXPECT_EQ(subtest::callExport(ex, src, dst, PxkSize{1, 1}), pxkWarnOddSize);
    EXPECT_TRUE(dst.unchanged());
    EXPECT_TRUE(src.unchanged());
}

// So does a width or a height of 1 in every member, however long the other side.
TEST_P(RgbTo420P2Each, WidthOrHeightOfOneWritesNothing) {
    const SubsampledExport& ex = *GetParam();
    for (const PxkSize z : {PxkSize{1, 1}, PxkSize{1, 2}, PxkSize{1, 7}, PxkSize{2, 1}, PxkSize{33, 1}}) {
        SCOPED_TRACE(subtest::sizeText(z));
        Rng rng(pxktest::seedFor("oneP2", {uint32_t(z.width), uint32_t(z.height)}));
        Surface src = subtest::makeFullSource(ex, z.width, z.height, z.width * ex.srcBytes);
        Surface dst = Surface::planar(
            {pxktest::ImageGeometry{z.width, z.height, 1, 1, z.width},
             pxktest::ImageGeometry{(z.width + 1) / 2, (z.height + 1) / 2, 2, 1, (z.width + 1) / 2 * 2}});
        src.fillRandom(rng);
        dst.fillRandom(rng);
        EXPECT_EQ(subtest::callExport(ex, src, dst, z), pxkWarnOddSize);
        EXPECT_TRUE(dst.unchanged());
    }
}

using Known = subtest::KnownYcc;

// Uniform 2 x 2 blocks: the float form gives green Cb 54.
const std::vector<Known>& primaries() {
    static const std::vector<Known> k = {
        {"black", {0, 0, 0}, 16, 128, 128},   {"white", {255, 255, 255}, 235, 128, 128},
        {"red", {255, 0, 0}, 82, 90, 240},    {"green", {0, 255, 0}, 145, 54, 34},
        {"blue", {0, 0, 255}, 41, 240, 110},
    };
    return k;
}

TEST_P(RgbTo420P2Each, PrimaryBlocks) {
    const SubsampledExport& ex = *GetParam();
    for (const Known& k : primaries()) {
        SCOPED_TRACE(k.name);
        const Surface d = subtest::convertPixels(ex, subtest::uniformRows(18, 2, k.rgb), pxkOk);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 18; ++x) EXPECT_EQ(d.at(x, y, 0), k.y) << "Y at " << x << "," << y;
        }
        for (int c = 0; c < 9; ++c) {
            EXPECT_EQ(cbAt(d, c, 0), k.cb) << "Cb at " << c;
            EXPECT_EQ(crAt(d, c, 0), k.cr) << "Cr at " << c;
        }
    }
}

// One block of four different pixels, sums R 287, G 408, B 458: Cr 114 (the integer
// direct sum form gives 113).
TEST_P(RgbTo420P2Each, MixedBlock) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subtest::convertPixels(ex, subtest::mixedBlock(), pxkOk);
    EXPECT_EQ(d.at(0, 0, 0), 32);
    EXPECT_EQ(d.at(1, 0, 0), 123);
    EXPECT_EQ(d.at(0, 1, 0), 157);
    EXPECT_EQ(d.at(1, 1, 0), 77);
    EXPECT_EQ(cbAt(d, 0, 0), 138);
    EXPECT_EQ(crAt(d, 0, 0), 114);
}

// Values that single precision in the written order puts one below the exact result:
// (4, 60, 84) is exactly 56.0 but gives Y 55, (12, 60, 12) 51.0 gives 50 and
// (20, 25, 120) 46.0 gives 45. Block sums R 0, G 627, B 384 give Cr 63 where the exact
// value is 64.0, and sums R 14, G 44, B 84 give Cb 133 for an exact 134.0.
TEST_P(RgbTo420P2Each, SinglePrecisionInWrittenOrder) {
    const SubsampledExport& ex = *GetParam();
    const std::vector<std::vector<Rgb>> rows = {
        {{4, 60, 84}, {12, 60, 12}, {0, 156, 96}, {0, 157, 96}, {3, 11, 21}, {3, 11, 21}},
        {{20, 25, 120}, {0, 0, 0}, {0, 157, 96}, {0, 157, 96}, {4, 11, 21}, {4, 11, 21}}};
    const Surface d = subtest::convertPixels(ex, rows, pxkOk);
    const std::vector<std::vector<int>> wantY = {{55, 50, 104, 105, 24, 24}, {45, 16, 105, 105, 25, 25}};
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 6; ++x) EXPECT_EQ(d.at(x, y, 0), wantY[std::size_t(y)][std::size_t(x)]) << x << "," << y;
    }
    // Block 0: sums R 36, G 145, B 216.
    EXPECT_EQ(cbAt(d, 0, 0), 140);
    EXPECT_EQ(crAt(d, 0, 0), 115);
    EXPECT_EQ(cbAt(d, 1, 0), 125);
    EXPECT_EQ(crAt(d, 1, 0), 63);
    EXPECT_EQ(cbAt(d, 2, 0), 133);
    EXPECT_EQ(crAt(d, 2, 0), 124);
}

// A 3 x 3 region converts its top-left 2 x 2 block (white, black / red, blue: sums
// R 510, G 255, B 510, Cb 147, Cr 151), leaves the third row and column of Y as they
// were, and reports the odd size.
TEST_P(RgbTo420P2Each, ThreeByThreeConvertsTopLeftTwoByTwo) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subtest::convertPixels(ex, subtest::threeByThree(), pxkWarnOddSize, 0xEE);
    EXPECT_EQ(d.at(0, 0, 0), 235);
    EXPECT_EQ(d.at(1, 0, 0), 16);
    EXPECT_EQ(d.at(0, 1, 0), 82);
    EXPECT_EQ(d.at(1, 1, 0), 41);
    EXPECT_EQ(cbAt(d, 0, 0), 147);
    EXPECT_EQ(crAt(d, 0, 0), 151);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(d.at(2, i, 0), 0xEE) << "column 2, row " << i;
        EXPECT_EQ(d.at(i, 2, 0), 0xEE) << "row 2, column " << i;
    }
    EXPECT_EQ(d.image(1).width(), 1);
    EXPECT_EQ(d.image(1).height(), 1);
}

// Source bytes 255, 0, 0 (and a fourth byte where there is one) in every pixel: blue
// for a BGR member, red for an RGB member.
TEST_P(RgbTo420P2Each, ByteOrderOfTheSource) {
    const SubsampledExport& ex = *GetParam();
    const int w = 10, h = 2;
    Surface src = Surface::packed(w, h, ex.srcBytes, w * ex.srcBytes);
    src.image(0).fillRegion([](int x, int, int b) { return uint8_t(b == 0 ? 255 : (b == 3 ? 17 * x : 0)); });
    Surface dst = subtest::makeDest(ex, w, h);
    ASSERT_EQ(subtest::callExport(ex, src, dst, PxkSize{w, h}), pxkOk);
    const bool red = !ex.bgr;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) EXPECT_EQ(dst.at(x, y, 0), red ? 82 : 41) << x << "," << y;
    }
    for (int c = 0; c < w / 2; ++c) {
        EXPECT_EQ(cbAt(dst, c, 0), red ? 90 : 240) << c;
        EXPECT_EQ(crAt(dst, c, 0), red ? 240 : 110) << c;
    }
}

// The fourth byte of a four-byte source takes no part.
class RgbTo420P2FourBytes : public ::testing::TestWithParam<const SubsampledExport*> {};
TEST_P(RgbTo420P2FourBytes, FourthSourceByteIgnored) {
    subtest::expectFourthSourceByteIgnored(*GetParam(), 21, 5, pxkWarnOddSize);
}
INSTANTIATE_TEST_SUITE_P(FourByteSources, RgbTo420P2FourBytes,
                         ::testing::Values(&exportNamed("BGRToYCbCr420_8u_AC4P2R"),
                                           &exportNamed("RGBToYCbCr420_8u_C4P2R")),
                         subtest::exportParamName);

// Each destination plane follows its own step: a zero Y step keeps the last row
// written, a negative pairs' step runs upward. Rows 0-1 black, rows 2-3 blue.
TEST_P(RgbTo420P2Each, EachPlaneFollowsItsOwnStep) {
    const SubsampledExport& ex = *GetParam();
    const int w = 6, h = 4;
    std::vector<std::vector<Rgb>> rows(4, std::vector<Rgb>(std::size_t(w), Rgb{0, 0, 0}));
    rows[2] = rows[3] = std::vector<Rgb>(std::size_t(w), Rgb{0, 0, 255});
    Surface src = Surface::packed(w, h, ex.srcBytes, w * ex.srcBytes + 1);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) subtest::setPixel(ex, src, x, y, rows[std::size_t(y)][std::size_t(x)]);
    }
    Surface dst = subtest::makeDest(ex, w, h, subtest::DestSteps{StepKind::Zero, StepKind::Negative, StepKind::Tight});
    for (int i = 0; i < 2; ++i) dst.image(i).fill(0xEE, 0x5A);
    ASSERT_EQ(subtest::callExport(ex, src, dst, PxkSize{w, h}), pxkOk);
    ASSERT_LT(dst.image(1).step(), 0);
    for (int x = 0; x < w; ++x) EXPECT_EQ(dst.at(x, 0, 0), 41) << x;
    const uint8_t* pairs = dst.image(1).data();
    const int cs = dst.image(1).step();
    for (int c = 0; c < w / 2; ++c) {
        EXPECT_EQ(pairs[2 * c], 128) << c;          // black: Cb
        EXPECT_EQ(pairs[2 * c + 1], 128) << c;      //        Cr
        EXPECT_EQ(pairs[cs + 2 * c], 240) << c;     // blue, one row lower in memory
        EXPECT_EQ(pairs[cs + 2 * c + 1], 110) << c;
    }
    EXPECT_TRUE(dst.guardsIntact());
}

}  // namespace
