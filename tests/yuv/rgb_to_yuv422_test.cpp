// RGB -> full-range YUV 4:2:2: the five exports (packed Y0 U Y1 V, planes with steps,
// a step for each source plane, and the forms without steps with their one-long-row
// path) against the reference model, the vector luma by column or by place in the
// image, the odd last pixel at scale 15, statuses and guards.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
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
using subyuv::Layout422;
using subyuvtest::lumaAt;
using subyuvtest::uAt;
using subyuvtest::vAt;

using RefFn = std::function<void(const subref::PackedSource&, const subref::PlanarDest&, int, int)>;

RefFn rowsRef(Layout422 layout) {
    return [layout](const subref::PackedSource& s, const subref::PlanarDest& d, int w, int h) {
        subyuv::rgbToYuv422(s, d, w, h, layout);
    };
}

RefFn withoutStepsRef() {
    return [](const subref::PackedSource& s, const subref::PlanarDest& d, int w, int h) {
        subyuv::rgbToYuv422WithoutSteps(s, d, w, h, Layout422::Planes);
    };
}

SubsampledExport member(const char* name, int srcBytes, DestLayout dest, RefFn ref) {
    SubsampledExport ex{name, srcBytes, false, Sampling::S422, dest, nullptr, nullptr, std::move(ref)};
    ex.least = {1, 1};
    ex.oddChromaColumn = dest == DestLayout::P3;
    return ex;
}

const std::vector<SubsampledExport>& exports() {
    static const std::vector<SubsampledExport> list = [] {
        SubsampledExport packed = member("RGBToYUV422_8u_C3C2R", 3, DestLayout::C2, rowsRef(Layout422::Packed));
        packed.c2 = pxkiRGBToYUV422_8u_C3C2R;

        SubsampledExport planes = member("RGBToYUV422_8u_C3P3R", 3, DestLayout::P3, rowsRef(Layout422::Planes));
        planes.p3 = pxkiRGBToYUV422_8u_C3P3R;

        SubsampledExport packedNoSteps = member("RGBToYUV422_8u_C3P3", 3, DestLayout::P3, withoutStepsRef());
        packedNoSteps.call = subyuvtest::callPackedWithoutSteps(pxkiRGBToYUV422_8u_C3P3);
        packedNoSteps.derivedSteps = true;

        SubsampledExport planar = member("RGBToYUV422_8u_P3R", 1, DestLayout::P3, rowsRef(Layout422::Planes));
        planar.source = SourceLayout::Planar;
        planar.ownSourceSteps = true;
        planar.call = subyuvtest::callPlanesWithSteps(pxkiRGBToYUV422_8u_P3R);

        SubsampledExport planarNoSteps = member("RGBToYUV422_8u_P3", 1, DestLayout::P3, withoutStepsRef());
        planarNoSteps.source = SourceLayout::Planar;
        planarNoSteps.call = subyuvtest::callPlanesWithoutSteps(pxkiRGBToYUV422_8u_P3);
        planarNoSteps.derivedSteps = true;
        return std::vector<SubsampledExport>{packed, planes, packedNoSteps, planar, planarNoSteps};
    }();
    return list;
}

const SubsampledExport& exportNamed(const std::string& name) { return subtest::exportNamed(exports(), name); }
std::vector<const SubsampledExport*> allExports() { return subtest::exportPointers(exports()); }

// ---------------------------------------------------------------------------------
// Reference comparison
// ---------------------------------------------------------------------------------

SUBTEST_SWEEP_SUITE(RgbToYuv422, exports);

class RgbToYuv422Each : public ::testing::TestWithParam<const SubsampledExport*> {};

TEST_P(RgbToYuv422Each, AnyAlignmentMatchesReference) { subtest::alignmentsAgainstReference(*GetParam()); }
TEST_P(RgbToYuv422Each, ExtremePairsMatchReference) {
    subtest::extremeGroupsAgainstReference(*GetParam(), 32);
    subtest::extremeGroupsAgainstReference(*GetParam(), 31);
}
TEST_P(RgbToYuv422Each, RandomPairsMatchReference) {
    subtest::randomGroupsAgainstReference(*GetParam(), 256, 128);
    subtest::randomGroupsAgainstReference(*GetParam(), 15, 2048);
}
TEST_P(RgbToYuv422Each, UniformSumsMatchReference) {
    subtest::uniformSumsAgainstReference(*GetParam(), 256, 128);
    subtest::uniformSumsAgainstReference(*GetParam(), 14, 2048);
}
TEST_P(RgbToYuv422Each, LeastSizeIsOneByOne) { subtest::leastSizeChecks(*GetParam()); }

INSTANTIATE_TEST_SUITE_P(AllExports, RgbToYuv422Each, ::testing::ValuesIn(allExports()), subtest::exportParamName);

// Dense inputs: width 16 puts every pixel in the vector luma, width 15 every pair in
// the tail and every input about four thousand times a slice in the odd last pixel.
TEST(RGBToYUV422_8u_C3P3R, EveryPixelInVectorColumns) {
    subtest::everyPixelAgainstReference(exportNamed("RGBToYUV422_8u_C3P3R"), 16);
}
TEST(RGBToYUV422_8u_C3P3R, EveryPixelInTailColumnsAndOddPixel) {
    subtest::everyPixelAgainstReference(exportNamed("RGBToYUV422_8u_C3P3R"), 15);
}
TEST(RGBToYUV422_8u_C3C2R, EveryPixelInTailColumnsAndOddPixel) {
    subtest::everyPixelAgainstReference(exportNamed("RGBToYUV422_8u_C3C2R"), 31);
}

// Pairs whose chroma differences sit on a rounding edge: the sum of the two L is
// within one of a multiple of 2^16 (see RoundingEdgesAreAllFound).
TEST_P(RgbToYuv422Each, SumsOnRoundingEdgesMatchReference) {
    static const std::vector<std::array<int, 3>> sums =
        subtest::sumsOnRoundingEdges(-19595, -38470, 65536 - 7471, 65535, 16, 510);
    subtest::givenSumsAgainstReference(*GetParam(), 256, sums, "edges");
}

// Every input as the odd last pixel, in rows of one pixel.
TEST(RGBToYUV422_8u_C3P3R, EveryPixelAsTheOddLastPixel) {
    subtest::everyPixelAgainstReference(exportNamed("RGBToYUV422_8u_C3P3R"), 1);
}
TEST(RGBToYUV422_8u_C3C2R, EveryPixelAsTheOddLastPixel) {
    subtest::everyPixelAgainstReference(exportNamed("RGBToYUV422_8u_C3C2R"), 1);
}

// The edge sums are those a plain search finds, in the same order: sR, then sG, then
// the edge (-1, 0, 1), then sB. Searched over sums up to 240, not to 510, to stay quick.
std::vector<std::array<int, 3>> edgesBySearch(int64_t kR, int64_t kG, int64_t kB, int64_t offset, int shift,
                                              int maxSum) {
    const int64_t m = int64_t(1) << shift;
    std::vector<std::array<int, 3>> out;
    for (int r = 0; r <= maxSum; ++r) {
        for (int g = 0; g <= maxSum; ++g) {
            std::vector<std::array<int, 3>> byEdge[3];
            for (int b = 0; b <= maxSum; ++b) {
                const int64_t v = (((kR * r + kG * g + kB * b + offset) % m) + m) % m;
                if (v == m - 1) byEdge[0].push_back({r, g, b});
                if (v == 0) byEdge[1].push_back({r, g, b});
                if (v == 1) byEdge[2].push_back({r, g, b});
            }
            for (const auto& e : byEdge) out.insert(out.end(), e.begin(), e.end());
        }
    }
    return out;
}

TEST(RoundingEdges, AreAllFound) {
    // An odd coefficient of B (one solution in 2^16), and an even one (28770: targets
    // of one parity only, one solution in 2^16 of a modulus of 2^17).
    const std::vector<std::array<int, 3>> odd = edgesBySearch(-19595, -38470, 65536 - 7471, 65535, 16, 240);
    const std::vector<std::array<int, 3>> even = edgesBySearch(-9699, -19071, 28770, 16842752, 17, 240);
    ASSERT_GT(odd.size(), 100u);
    ASSERT_GT(even.size(), 20u);
    EXPECT_EQ(subtest::sumsOnRoundingEdges(-19595, -38470, 65536 - 7471, 65535, 16, 240), odd);
    EXPECT_EQ(subtest::sumsOnRoundingEdges(-9699, -19071, 28770, 16842752, 17, 240), even);
}

// The forms without steps on tight buffers, the source ending flush against an
// inaccessible page: the one-long-row path (16 x 16, 18 x 15, 20 x 13, 8 x 32,
// 2 x 128, 24 x 11, 128 x 2, 130 x 2, 40 x 40, 1920 x 2), odd widths of 256 pixels
// and more that walk rows (17 x 16, 15 x 17, 255 x 1, 257 x 3, 1 x 256), and even
// widths below 256 pixels that walk rows too (18 x 14, 30 x 8, 2 x 127, 16 x 15).
class RgbToYuv422WithoutSteps : public ::testing::TestWithParam<const SubsampledExport*> {};
TEST_P(RgbToYuv422WithoutSteps, TightBuffersMatchReference) {
    const std::vector<PxkSize> sizes = {{16, 16}, {18, 15}, {20, 13},  {8, 32},   {2, 128}, {24, 11},
                                        {128, 2}, {130, 2}, {40, 40},  {1920, 2}, {17, 16}, {15, 17},
                                        {255, 1}, {257, 3}, {1, 256},  {18, 14},  {30, 8},  {2, 127},
                                        {16, 15}, {256, 1}, {258, 1},  {34, 9},   {1, 1},   {3, 1}};
    subtest::sizesAgainstReference(*GetParam(), subtest::stepPlans().front(), sizes);
}
TEST_P(RgbToYuv422WithoutSteps, DenseInputsAcrossRowEnds) {
    // 18 x 512: one long row whose vector blocks start anywhere in an image row.
    subtest::randomGroupsAgainstReference(*GetParam(), 18, 512);
    subtest::uniformSumsAgainstReference(*GetParam(), 18, 512);
    subtest::extremeGroupsAgainstReference(*GetParam(), 22);
}
INSTANTIATE_TEST_SUITE_P(FormsWithoutSteps, RgbToYuv422WithoutSteps,
                         ::testing::Values(&exportNamed("RGBToYUV422_8u_C3P3"), &exportNamed("RGBToYUV422_8u_P3")),
                         subtest::exportParamName);

// ---------------------------------------------------------------------------------
// Statuses
// ---------------------------------------------------------------------------------

TEST(RGBToYUV422_8u_C3C2R, StatusOrderPointersThenSize) { subtest::packedStatusChecks(exportNamed("RGBToYUV422_8u_C3C2R")); }
TEST(RGBToYUV422_8u_C3P3R, StatusOrderPointersThenSize) { subtest::planarStatusChecks(exportNamed("RGBToYUV422_8u_C3P3R")); }
TEST(RGBToYUV422_8u_P3R, StatusOrderArraysThenSizeThenEntries) {
    subyuvtest::planesWithStepsStatusChecks(exportNamed("RGBToYUV422_8u_P3R"), pxkiRGBToYUV422_8u_P3R);
}
TEST(RGBToYUV422_8u_C3P3, StatusOrderPointersAndEntriesThenSize) {
    subyuvtest::packedWithoutStepsStatusChecks(exportNamed("RGBToYUV422_8u_C3P3"), pxkiRGBToYUV422_8u_C3P3);
}
TEST(RGBToYUV422_8u_P3, StatusOrderPointersThenSizeThenEntries) {
    subyuvtest::planesWithoutStepsStatusChecks(exportNamed("RGBToYUV422_8u_P3"), pxkiRGBToYUV422_8u_P3);
}

// Every width from 1 and a few heights succeed with pxkOk, odd widths included.
TEST_P(RgbToYuv422Each, StatusOfEachWidth) {
    const SubsampledExport& ex = *GetParam();
    for (int w = 1; w <= 19; ++w) {
        for (int h : {1, 2, 3, 17}) {
            Rng rng(pxktest::seedFor("statusYuv422", {uint32_t(w), uint32_t(h)}));
            Surface src = subtest::makeFullSource(ex, w, h, subtest::tightSourceStep(ex, w));
            Surface dst = subtest::makeDest(ex, w, h);
            src.fillRandom(rng);
            dst.fillRandom(rng);
            EXPECT_EQ(subtest::callExport(ex, src, dst, PxkSize{w, h}), pxkOk) << w << "x" << h;
        }
    }
}

// ---------------------------------------------------------------------------------
// Known values
// ---------------------------------------------------------------------------------

using Known = subtest::KnownYuv;
using subtest::vectorLumaOf;

// Uniform pairs with the tail luma. The odd pixel's chroma agrees on these.
const std::vector<Known>& primaries() { return subtest::fullRangePrimaries(); }

// Width 21, one row (21 pixels, no whole-image path): the vector luma in columns
// 0-15, the tail in 16-19, and the odd last pixel; chroma the same in every column.
TEST_P(RgbToYuv422Each, PrimariesByColumn) {
    const SubsampledExport& ex = *GetParam();
    for (const Known& k : primaries()) {
        SCOPED_TRACE(k.name);
        const Surface d = subyuvtest::convertUniform(ex, 21, 1, k.rgb);
        for (int x = 0; x < 21; ++x) EXPECT_EQ(lumaAt(d, x, 0), x < 16 ? vectorLumaOf(k) : k.y) << x;
        for (int c = 0; c < 10; ++c) {
            EXPECT_EQ(uAt(ex, d, c, 0), k.u) << "U at " << c;
            EXPECT_EQ(vAt(ex, d, c, 0), k.v) << "V at " << c;
        }
        EXPECT_EQ(uAt(ex, d, 10, 0), k.u) << "U of the odd pixel";
        if (ex.dest == DestLayout::P3) {
            EXPECT_EQ(vAt(ex, d, 10, 0), k.v) << "V of the odd pixel";
        }
    }
}

// A white row of 20 pixels: 16 with Y 254, 4 with 255.
TEST_P(RgbToYuv422Each, WhiteRowOfTwenty) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subyuvtest::convertUniform(ex, 20, 1, {255, 255, 255});
    std::vector<int> got;
    for (int x = 0; x < 20; ++x) got.push_back(lumaAt(d, x, 0));
    std::vector<int> want(16, 254);
    want.insert(want.end(), 4, 255);
    EXPECT_EQ(got, want);
}

// White of every width from 1 to 40 and around 64 and 128, one and two rows: Y 254 in
// the vector columns (below width - width % 16), 255 elsewhere. The forms without
// steps take the long row for 256 pixels or more of an even width: the vector luma
// then covers the first N - N % 16 pixels of the image, N = width * height.
TEST_P(RgbToYuv422Each, VectorLumaEndsAtWholeBlocksOf16) {
    const SubsampledExport& ex = *GetParam();
    std::vector<int> widths;
    for (int w = 1; w <= 40; ++w) widths.push_back(w);
    for (int w : {62, 63, 64, 65, 66, 67, 126, 127, 128, 129, 130, 131, 133, 136, 142}) widths.push_back(w);
    for (int w : widths) {
        for (int h : {1, 2}) {
            SCOPED_TRACE("width " + std::to_string(w) + " height " + std::to_string(h));
            const Surface d = subyuvtest::convertUniform(ex, w, h, {255, 255, 255});
            const int n = w * h;
            const bool longRow = ex.derivedSteps && n >= 256 && w % 2 == 0;
            for (int y = 0; y < h; ++y) {
                for (int x = 0; x < w; ++x) {
                    const bool vector = longRow ? y * w + x < n - n % 16 : x < w - w % 16;
                    ASSERT_EQ(lumaAt(d, x, y), vector ? 254 : 255) << x << "," << y;
                }
                for (int c = 0; c < w / 2; ++c) {
                    ASSERT_EQ(uAt(ex, d, c, y), 128) << c;
                    ASSERT_EQ(vAt(ex, d, c, y), 128) << c;
                }
            }
        }
    }
}

// Row of three: red and green make the pair (Y 76, 149; U 72, V 141), and the last
// pixel (0, 0, 25) takes Y 2 and its chroma at scale 15, U 138 and V 125 (a pair of it
// would give U 139). Planes get its Y, U and V; the packed layout its Y and U only.
TEST(RGBToYUV422_8u_C3C2R, WidthThreeWritesPairThenLumaAndU) {
    const std::vector<std::vector<Rgb>> row = {{{255, 0, 0}, {0, 255, 0}, {0, 0, 25}}};
    const Surface d = subtest::convertPixels(exportNamed("RGBToYUV422_8u_C3C2R"), row, pxkOk, 0xEE);
    const uint8_t* p = d.image(0).row(0);
    EXPECT_EQ(std::vector<int>(p, p + 6), (std::vector<int>{76, 72, 149, 141, 2, 138}));
    EXPECT_EQ(p[6], 0x5A);  // the padding after the row: a guard
    EXPECT_EQ(p[7], 0x5A);
}

class RgbToYuv422Planes : public ::testing::TestWithParam<const SubsampledExport*> {};
TEST_P(RgbToYuv422Planes, WidthThreeOddPixelAtScale15) {
    const SubsampledExport& ex = *GetParam();
    const std::vector<std::vector<Rgb>> row = {{{255, 0, 0}, {0, 255, 0}, {0, 0, 25}}};
    const Surface d = subtest::convertPixels(ex, row, pxkOk, 0xEE);
    EXPECT_EQ(lumaAt(d, 0, 0), 76);
    EXPECT_EQ(lumaAt(d, 1, 0), 149);
    EXPECT_EQ(lumaAt(d, 2, 0), 2);
    ASSERT_EQ(d.image(1).width(), 2);
    EXPECT_EQ(uAt(ex, d, 0, 0), 72);
    EXPECT_EQ(vAt(ex, d, 0, 0), 141);
    EXPECT_EQ(uAt(ex, d, 1, 0), 138);
    EXPECT_EQ(vAt(ex, d, 1, 0), 125);
}
INSTANTIATE_TEST_SUITE_P(PlanarDestinations, RgbToYuv422Planes,
                         ::testing::Values(&exportNamed("RGBToYUV422_8u_C3P3R"), &exportNamed("RGBToYUV422_8u_C3P3"),
                                           &exportNamed("RGBToYUV422_8u_P3R"), &exportNamed("RGBToYUV422_8u_P3")),
                         subtest::exportParamName);

// One pixel: (0, 0, 40) gives Y 4, U 145, V 123 at scale 15 (a pair of it: V 124).
TEST_P(RgbToYuv422Each, OneByOne) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subtest::convertPixels(ex, subtest::uniformRows(1, 1, {0, 0, 40}), pxkOk, 0xEE);
    if (ex.dest == DestLayout::C2) {
        const uint8_t* p = d.image(0).row(0);
        EXPECT_EQ(std::vector<int>(p, p + 2), (std::vector<int>{4, 145}));
    } else {
        EXPECT_EQ(lumaAt(d, 0, 0), 4);
        EXPECT_EQ(uAt(ex, d, 0, 0), 145);
        EXPECT_EQ(vAt(ex, d, 0, 0), 123);
    }
}

// A uniform pair of (0, 0, 40) for comparison: the pair form's V is 124.
TEST_P(RgbToYuv422Each, PairOfZeroZeroForty) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subyuvtest::convertUniform(ex, 2, 1, {0, 0, 40});
    EXPECT_EQ(lumaAt(d, 0, 0), 4);
    EXPECT_EQ(lumaAt(d, 1, 0), 4);
    EXPECT_EQ(uAt(ex, d, 0, 0), 145);
    EXPECT_EQ(vAt(ex, d, 0, 0), 124);
}

// Odd widths over several rows: each row's last pixel takes its own chroma; in the
// packed layout it gives exactly two bytes and the pixel of room after it stays.
TEST(RGBToYUV422_8u_C3C2R, OddWidthsEndEachRowWithTwoBytes) {
    const SubsampledExport& ex = exportNamed("RGBToYUV422_8u_C3C2R");
    for (int w : {1, 3, 5, 15, 17, 33}) {
        SCOPED_TRACE("width " + std::to_string(w));
        Surface src = Surface::packed(w, 2, 3, 3 * w);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < w; ++x) subtest::setPixel(ex, src, x, y, {0, 0, 0});
        }
        subtest::setPixel(ex, src, w - 1, 0, {0, 0, 25});  // Y 2, U 138
        subtest::setPixel(ex, src, w - 1, 1, {0, 0, 40});  // Y 4, U 145
        Surface dst = Surface::packed(w + 1, 2, 2, 2 * (w + 1));
        dst.image(0).fill(0xEE, 0x5A);
        ASSERT_EQ(ex.c2(src.data(), src.step(), dst.data(), dst.step(), PxkSize{w, 2}), pxkOk);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x + 1 < w; ++x) {
                EXPECT_EQ(dst.at(x, y, 0), 0) << x << "," << y;
                EXPECT_EQ(dst.at(x, y, 1), 128) << x << "," << y;
            }
            EXPECT_EQ(dst.at(w - 1, y, 0), y == 0 ? 2 : 4);
            EXPECT_EQ(dst.at(w - 1, y, 1), y == 0 ? 138 : 145);
            EXPECT_EQ(dst.at(w, y, 0), 0xEE);
            EXPECT_EQ(dst.at(w, y, 1), 0xEE);
        }
        EXPECT_TRUE(dst.guardsIntact());
    }
}

// Source order R, G, B in bytes or planes 0-2: sample 0 at 255 and the others 0 is red.
TEST_P(RgbToYuv422Each, SourceOrderIsRgb) {
    const SubsampledExport& ex = *GetParam();
    const int w = 10, h = 2;
    Surface src = subtest::makeFullSource(ex, w, h, subtest::tightSourceStep(ex, w));
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            src.at(x, y, 0) = 255;
            src.at(x, y, 1) = 0;
            src.at(x, y, 2) = 0;
        }
    }
    Surface dst = subtest::makeDest(ex, w, h);
    ASSERT_EQ(subtest::callExport(ex, src, dst, PxkSize{w, h}), pxkOk);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) EXPECT_EQ(lumaAt(dst, x, y), 76) << x;
        for (int c = 0; c < w / 2; ++c) {
            EXPECT_EQ(uAt(ex, dst, c, y), 90) << c;
            EXPECT_EQ(vAt(ex, dst, c, y), 255) << c;
        }
    }
}

// Each source plane of RGBToYUV422_8u_P3R follows its own step: R with a zero step, G
// running upward, B padded. R is 255 everywhere; G and B are 0 in row 0 and 255 in
// row 1: red, then white.
TEST(RGBToYUV422_8u_P3R, EachSourcePlaneFollowsItsOwnStep) {
    const SubsampledExport& ex = exportNamed("RGBToYUV422_8u_P3R");
    const int w = 4, h = 2;
    Surface src = subtest::makeSource(ex, w, h, std::array<int, 3>{0, -(w + 3), w + 16});
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) subtest::setPixel(ex, src, x, y, y == 0 ? Rgb{255, 0, 0} : Rgb{255, 255, 255});
    }
    Surface dst = subtest::makeDest(ex, w, h, StepKind::Padded);
    ASSERT_EQ(subtest::callExport(ex, src, dst, PxkSize{w, h}), pxkOk);
    for (int x = 0; x < w; ++x) {
        EXPECT_EQ(lumaAt(dst, x, 0), 76) << x;
        EXPECT_EQ(lumaAt(dst, x, 1), 255) << x;
    }
    for (int c = 0; c < 2; ++c) {
        EXPECT_EQ(uAt(ex, dst, c, 0), 90);
        EXPECT_EQ(vAt(ex, dst, c, 0), 255);
        EXPECT_EQ(uAt(ex, dst, c, 1), 128);
        EXPECT_EQ(vAt(ex, dst, c, 1), 128);
    }
    EXPECT_TRUE(dst.guardsIntact());
}

// ---------------------------------------------------------------------------------
// The forms without steps: one long row, or rows
// ---------------------------------------------------------------------------------

// White everywhere; Y 254 where `vector(x, y)`, 255 elsewhere; U and V 128.
template <typename IsVector>
void expectWhiteLuma(const SubsampledExport& ex, int w, int h, IsVector&& vector) {
    SCOPED_TRACE(ex.name + " " + std::to_string(w) + "x" + std::to_string(h));
    const Surface d = subyuvtest::convertUniform(ex, w, h, {255, 255, 255});
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) ASSERT_EQ(lumaAt(d, x, y), vector(x, y) ? 254 : 255) << x << "," << y;
        for (int c = 0; c < (w + 1) / 2; ++c) {
            ASSERT_EQ(uAt(ex, d, c, y), 128) << c << "," << y;
            ASSERT_EQ(vAt(ex, d, c, y), 128) << c << "," << y;
        }
    }
}

std::vector<const SubsampledExport*> withoutSteps() {
    return {&exportNamed("RGBToYUV422_8u_C3P3"), &exportNamed("RGBToYUV422_8u_P3")};
}
std::vector<const SubsampledExport*> rowTwins() {
    return {&exportNamed("RGBToYUV422_8u_C3P3R"), &exportNamed("RGBToYUV422_8u_P3R")};
}

// 18 x 15 = 270 pixels, an even width: one long row; its first run is 264 pixels, of
// which the first 256 are vector blocks. So the vector luma covers rows 0-13 and the
// first four pixels of row 14, crossing row ends; the R twins stop at column 16 in
// every row.
TEST(RGBToYUV422WithoutSteps, EighteenByFifteenIsOneLongRow) {
    for (const SubsampledExport* ex : withoutSteps()) {
        expectWhiteLuma(*ex, 18, 15, [](int x, int y) { return y * 18 + x < 256; });
    }
    for (const SubsampledExport* ex : rowTwins()) {
        expectWhiteLuma(*ex, 18, 15, [](int x, int) { return x < 16; });
    }
}

// 16 x 16: both ways give the vector luma everywhere.
TEST(RGBToYUV422WithoutSteps, SixteenBySixteen) {
    for (const SubsampledExport* ex : withoutSteps()) expectWhiteLuma(*ex, 16, 16, [](int, int) { return true; });
}

// Exactly 256 pixels is enough: 8 x 32 and 2 x 128 are one long row of vector blocks,
// where the R twins, with rows narrower than 16, have none.
TEST(RGBToYUV422WithoutSteps, TwoHundredFiftySixPixelsTakeTheLongRow) {
    for (const SubsampledExport* ex : withoutSteps()) {
        expectWhiteLuma(*ex, 8, 32, [](int, int) { return true; });
        expectWhiteLuma(*ex, 2, 128, [](int, int) { return true; });
    }
    for (const SubsampledExport* ex : rowTwins()) {
        expectWhiteLuma(*ex, 8, 32, [](int, int) { return false; });
        expectWhiteLuma(*ex, 2, 128, [](int, int) { return false; });
    }
}

// 20 x 13 = 260 pixels: the first run is 256 pixels, all vector blocks; the last 4
// pixels of row 12 are the tail.
TEST(RGBToYUV422WithoutSteps, TwentyByThirteen) {
    for (const SubsampledExport* ex : withoutSteps()) {
        expectWhiteLuma(*ex, 20, 13, [](int x, int y) { return y * 20 + x < 256; });
    }
}

// Below 256 pixels the rows are walked: 18 x 14 (252), 30 x 8 (240), 2 x 127 (254).
TEST(RGBToYUV422WithoutSteps, FewerThan256PixelsWalkRows) {
    for (const SubsampledExport* ex : withoutSteps()) {
        expectWhiteLuma(*ex, 18, 14, [](int x, int) { return x < 16; });
        expectWhiteLuma(*ex, 30, 8, [](int x, int) { return x < 16; });
        expectWhiteLuma(*ex, 2, 127, [](int, int) { return false; });
    }
}

// An odd width never takes the long row, however many pixels: 17 x 16 (272) converts
// each row, vector luma in columns 0-15 and the odd pixel at column 16; 15 x 20 and
// 1 x 300 have no vector columns at all.
TEST(RGBToYUV422WithoutSteps, OddWidthsWalkRows) {
    for (const SubsampledExport* ex : withoutSteps()) {
        expectWhiteLuma(*ex, 17, 16, [](int x, int) { return x < 16; });
        expectWhiteLuma(*ex, 15, 20, [](int, int) { return false; });
        expectWhiteLuma(*ex, 1, 300, [](int, int) { return false; });
    }
}

// The odd pixel of a row walked by a form without steps: 17 x 16 with (0, 0, 25) in
// the last column: Y 2, U 138, V 125 at chroma column 8 of every row.
TEST(RGBToYUV422WithoutSteps, OddPixelOfEachRowAtScale15) {
    for (const SubsampledExport* ex : withoutSteps()) {
        SCOPED_TRACE(ex->name);
        std::vector<std::vector<Rgb>> rows = subtest::uniformRows(17, 16, {0, 0, 0});
        for (auto& r : rows) r.back() = {0, 0, 25};
        const Surface d = subtest::convertPixels(*ex, rows, pxkOk);
        ASSERT_EQ(d.image(1).width(), 9);
        for (int y = 0; y < 16; ++y) {
            EXPECT_EQ(lumaAt(d, 16, y), 2) << y;
            EXPECT_EQ(uAt(*ex, d, 8, y), 138) << y;
            EXPECT_EQ(vAt(*ex, d, 8, y), 125) << y;
        }
    }
}

}  // namespace
