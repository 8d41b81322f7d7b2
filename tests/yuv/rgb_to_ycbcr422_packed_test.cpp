// RGB -> studio-range YCbCr 4:2:2 packed by the pair-luma members, from packed RGB
// (C3C2R) or from three planes with one step (P3C2R), in both chroma orders: the
// reference model over all widths, heights and steps, the second Y of a pair without
// its rounding half, the half-rounded pair chroma, the two bytes of an odd last pixel,
// statuses and guards.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "reference_subsampled.h"
#include "subsampled_harness.h"
#include "subsampled_rounding_edges.h"

namespace {

using pxktest::Rng;
using pxktest::StepKind;
using pxktest::Surface;
using subref::ChromaOrder;
using subref::OddPixelChroma;
using subtest::DestLayout;
using subtest::Rgb;
using subtest::Sampling;
using subtest::SourceLayout;
using subtest::SubsampledExport;

using PlanesToPackedFn = PxkResult (*)(const uint8_t* const[3], int32_t, uint8_t*, int32_t, PxkSize);

using RefFn = std::function<void(const subref::PackedSource&, const subref::PlanarDest&, int, int)>;

RefFn refPairLuma(ChromaOrder order, OddPixelChroma odd, bool clamped) {
    return [=](const subref::PackedSource& s, const subref::PlanarDest& d, int w, int h) {
        subref::rgbTo422PackedPairLuma(s, d.plane[0], d.step[0], w, h, order, odd, clamped);
    };
}

// The planes share the step of plane 0, as the surfaces of these members are built.
subtest::SurfaceCall callPlanesToPacked(PlanesToPackedFn fn) {
    return [fn](Surface& src, Surface& dst, PxkSize z) {
        return fn(src.constPlanes(), src.image(0).step(), dst.data(), dst.step(), z);
    };
}

SubsampledExport packedMember(const char* name, subtest::C2Fn fn, ChromaOrder order) {
    SubsampledExport ex{name, 3, false, Sampling::S422, DestLayout::C2, nullptr, fn,
                        refPairLuma(order, OddPixelChroma::DirectCb, false)};
    ex.least = {1, 1};
    return ex;
}

SubsampledExport planarMember(const char* name, PlanesToPackedFn fn, ChromaOrder order) {
    SubsampledExport ex{name, 1, false, Sampling::S422, DestLayout::C2, nullptr, nullptr,
                        refPairLuma(order, OddPixelChroma::DirectCr, true)};
    ex.source = SourceLayout::Planar;
    ex.call = callPlanesToPacked(fn);
    ex.least = {1, 1};
    return ex;
}

const std::vector<SubsampledExport>& exports() {
    static const std::vector<SubsampledExport> list = {
        packedMember("RGBToYCbCr422_8u_C3C2R", pxkiRGBToYCbCr422_8u_C3C2R, ChromaOrder::CbCr),
        packedMember("RGBToYCrCb422_8u_C3C2R", pxkiRGBToYCrCb422_8u_C3C2R, ChromaOrder::CrCb),
        planarMember("RGBToYCbCr422_8u_P3C2R", pxkiRGBToYCbCr422_8u_P3C2R, ChromaOrder::CbCr),
        planarMember("RGBToYCrCb422_8u_P3C2R", pxkiRGBToYCrCb422_8u_P3C2R, ChromaOrder::CrCb),
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
std::vector<const SubsampledExport*> packedSourceExports() {
    return where([](const SubsampledExport& ex) { return ex.source == SourceLayout::Packed; });
}

bool swapsChroma(const SubsampledExport& ex) { return ex.name.find("YCrCb") != std::string::npos; }

// The bytes of row y of a packed destination, from byte 0 to byte n - 1.
std::vector<int> rowBytes(const Surface& d, int y, int n) {
    const uint8_t* p = d.image(0).row(y);
    return std::vector<int>(p, p + n);
}

// ---------------------------------------------------------------------------------
// Reference comparison
// ---------------------------------------------------------------------------------

SUBTEST_SWEEP_SUITE(RgbTo422Packed, exports);

class RgbTo422PackedEach : public ::testing::TestWithParam<const SubsampledExport*> {};

TEST_P(RgbTo422PackedEach, AnyAlignmentMatchesReference) { subtest::alignmentsAgainstReference(*GetParam()); }
TEST_P(RgbTo422PackedEach, ExtremePairsMatchReference) {
    subtest::extremeGroupsAgainstReference(*GetParam(), 32);
    subtest::extremeGroupsAgainstReference(*GetParam(), 31);
}
TEST_P(RgbTo422PackedEach, RandomPairsMatchReference) {
    subtest::randomGroupsAgainstReference(*GetParam(), 256, 128);
    subtest::randomGroupsAgainstReference(*GetParam(), 7, 2048);
}
TEST_P(RgbTo422PackedEach, UniformSumsMatchReference) {
    subtest::uniformSumsAgainstReference(*GetParam(), 256, 128);
    subtest::uniformSumsAgainstReference(*GetParam(), 13, 2048);
}
TEST_P(RgbTo422PackedEach, LeastSizeIsOneByOne) { subtest::leastSizeChecks(*GetParam()); }

INSTANTIATE_TEST_SUITE_P(AllExports, RgbTo422PackedEach, ::testing::ValuesIn(allExports()),
                         subtest::exportParamName);

// Every input as a pixel of a pair and, with the odd width, about two thousand times a
// slice as the odd last pixel.
TEST(RGBToYCrCb422_8u_C3C2R, EveryPixel) { subtest::everyPixelAgainstReference(exportNamed("RGBToYCrCb422_8u_C3C2R"), 31); }
TEST(RGBToYCbCr422_8u_P3C2R, EveryPixel) { subtest::everyPixelAgainstReference(exportNamed("RGBToYCbCr422_8u_P3C2R"), 31); }

// Every input as the odd last pixel, in rows of one pixel.
TEST(RGBToYCbCr422_8u_C3C2R, EveryPixelAsTheOddLastPixel) {
    subtest::everyPixelAgainstReference(exportNamed("RGBToYCbCr422_8u_C3C2R"), 1);
}
TEST(RGBToYCrCb422_8u_P3C2R, EveryPixelAsTheOddLastPixel) {
    subtest::everyPixelAgainstReference(exportNamed("RGBToYCrCb422_8u_P3C2R"), 1);
}

// Pairs whose Cb or Cr sits on a rounding edge: the sum before the shift by 17 is
// within one of a multiple of 2^17, so that an offset one larger or smaller than
// 16842752 would change it.
TEST_P(RgbTo422PackedEach, SumsOnRoundingEdgesMatchReference) {
    static const std::vector<std::array<int, 3>> sums = [] {
        std::vector<std::array<int, 3>> v = subtest::sumsOnRoundingEdges(-9699, -19071, 28770, 16842752, 17, 510);
        const std::vector<std::array<int, 3>> cr = subtest::sumsOnRoundingEdges(28770, -24117, -4653, 16842752, 17, 510);
        v.insert(v.end(), cr.begin(), cr.end());
        return v;
    }();
    subtest::givenSumsAgainstReference(*GetParam(), 256, sums, "edges");
}

// ---------------------------------------------------------------------------------
// Statuses
// ---------------------------------------------------------------------------------

class RgbTo422PackedSource : public ::testing::TestWithParam<const SubsampledExport*> {};
// pSrc, pDst, then the size.
TEST_P(RgbTo422PackedSource, StatusOrderPointersThenSize) { subtest::packedStatusChecks(*GetParam()); }
INSTANTIATE_TEST_SUITE_P(PackedSources, RgbTo422PackedSource, ::testing::ValuesIn(packedSourceExports()),
                         subtest::exportParamName);

// pSrc, pDst, each entry of pSrc, then the size: a null entry is reported whatever the
// size. The step is not tested.
void planesToPackedStatusChecks(const SubsampledExport& ex, PlanesToPackedFn fn) {
    subtest::StatusFixture f(ex);
    const uint8_t* const* src = f.src.constPlanes();
    const int ss = f.src.image(0).step();
    uint8_t* d = f.dst.data();
    const int ds = f.dst.step();
    const uint8_t* noSrc[3] = {nullptr, nullptr, nullptr};
    std::vector<PxkSize> sizes = subtest::badSizes(ex);
    sizes.insert(sizes.begin(), subtest::validSize(ex.sampling));
    for (const PxkSize& z : sizes) {
        SCOPED_TRACE("size " + subtest::sizeText(z));
        EXPECT_EQ(fn(nullptr, ss, d, ds, z), pxkErrNullPtr);
        EXPECT_EQ(fn(src, ss, nullptr, ds, z), pxkErrNullPtr);
        EXPECT_EQ(fn(nullptr, ss, nullptr, ds, z), pxkErrNullPtr);
        EXPECT_EQ(fn(noSrc, ss, d, ds, z), pxkErrNullPtr);
        for (int i = 0; i < 3; ++i) {
            const uint8_t* withNull[3] = {src[0], src[1], src[2]};
            withNull[i] = nullptr;
            EXPECT_EQ(fn(withNull, ss, d, ds, z), pxkErrNullPtr) << "null entry " << i;
            EXPECT_EQ(fn(withNull, -1, d, 0, z), pxkErrNullPtr) << "null entry " << i;
        }
        EXPECT_TRUE(f.nothingWritten());
    }
    for (const PxkSize& z : subtest::badSizes(ex)) {
        SCOPED_TRACE("size " + subtest::sizeText(z));
        EXPECT_EQ(fn(src, ss, d, ds, z), pxkErrSize);
        EXPECT_EQ(fn(src, 0, d, -7, z), pxkErrSize);
        EXPECT_TRUE(f.nothingWritten());
    }
    EXPECT_EQ(fn(src, ss, d, ds, subtest::validSize(ex.sampling)), pxkOk);
    EXPECT_FALSE(f.dst.unchanged());
    EXPECT_TRUE(f.src.unchanged());
}

TEST(RGBToYCbCr422_8u_P3C2R, StatusOrderPointersEntriesThenSize) {
    planesToPackedStatusChecks(exportNamed("RGBToYCbCr422_8u_P3C2R"), pxkiRGBToYCbCr422_8u_P3C2R);
}
TEST(RGBToYCrCb422_8u_P3C2R, StatusOrderPointersEntriesThenSize) {
    planesToPackedStatusChecks(exportNamed("RGBToYCrCb422_8u_P3C2R"), pxkiRGBToYCrCb422_8u_P3C2R);
}

// Every width from 1 and a few heights succeed with pxkOk, odd widths included.
TEST_P(RgbTo422PackedEach, StatusOfEachWidth) {
    const SubsampledExport& ex = *GetParam();
    for (int w = 1; w <= 13; ++w) {
        for (int h : {1, 2, 3}) {
            Rng rng(pxktest::seedFor("status", {uint32_t(w), uint32_t(h)}));
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

struct Known {
    const char* name;
    Rgb rgb;
    int y0, y1, cb, cr;
};

// Uniform pairs. The second Y lacks the half: red, green and blue lose one there.
// Chroma rounds by a half, so green has Cb 54 as at full resolution.
const std::vector<Known>& primaries() {
    static const std::vector<Known> k = {
        {"black", {0, 0, 0}, 16, 16, 128, 128},     {"white", {255, 255, 255}, 235, 235, 128, 128},
        {"red", {255, 0, 0}, 82, 81, 90, 240},      {"green", {0, 255, 0}, 145, 144, 54, 34},
        {"blue", {0, 0, 255}, 41, 40, 240, 110},
    };
    return k;
}

TEST_P(RgbTo422PackedEach, PrimaryPairs) {
    const SubsampledExport& ex = *GetParam();
    const int w = 24, h = 2;
    for (const Known& k : primaries()) {
        SCOPED_TRACE(k.name);
        const Surface d = subtest::convertPixels(ex, subtest::uniformRows(w, h, k.rgb), pxkOk);
        const int b1 = swapsChroma(ex) ? k.cr : k.cb;
        const int b3 = swapsChroma(ex) ? k.cb : k.cr;
        for (int y = 0; y < h; ++y) {
            for (int c = 0; c < w / 2; ++c) {
                EXPECT_EQ(rowBytes(d, y, 2 * w)[std::size_t(4 * c)], k.y0) << "pair " << c << ", row " << y;
                EXPECT_EQ(rowBytes(d, y, 2 * w)[std::size_t(4 * c + 1)], b1) << "pair " << c << ", row " << y;
                EXPECT_EQ(rowBytes(d, y, 2 * w)[std::size_t(4 * c + 2)], k.y1) << "pair " << c << ", row " << y;
                EXPECT_EQ(rowBytes(d, y, 2 * w)[std::size_t(4 * c + 3)], b3) << "pair " << c << ", row " << y;
            }
        }
    }
}

// Row of three: red and green make the pair (Y 82, and 144 for green where the direct
// form gives 145; sums R 255, G 255, B 0: Cb 72, Cr 137), and the last pixel
// (0, 0, 20) gives its Y 18 and, in byte 1, its direct Cb 137 in the C3C2R members,
// its direct Cr 127 in the P3C2R members, whatever the chroma order. Six bytes are
// written; the row's padding after them stays.
const std::vector<std::vector<Rgb>>& rowOfThree() {
    static const std::vector<std::vector<Rgb>> r = {{{255, 0, 0}, {0, 255, 0}, {0, 0, 20}}};
    return r;
}

void expectRowOfThree(const char* name, const std::vector<int>& bytes) {
    const SubsampledExport& ex = exportNamed(name);
    const Surface d = subtest::convertPixels(ex, rowOfThree(), pxkOk, 0xEE);
    EXPECT_EQ(rowBytes(d, 0, 6), bytes);
    ASSERT_GT(d.step(), 8);
    EXPECT_EQ(d.image(0).row(0)[6], 0x5A);  // padding of the padded step: a guard
    EXPECT_EQ(d.image(0).row(0)[7], 0x5A);
}

TEST(RGBToYCbCr422_8u_C3C2R, WidthThreeWritesPairThenLumaAndCb) {
    expectRowOfThree("RGBToYCbCr422_8u_C3C2R", {82, 72, 144, 137, 18, 137});
}
TEST(RGBToYCrCb422_8u_C3C2R, WidthThreeWritesPairThenLumaAndCb) {
    expectRowOfThree("RGBToYCrCb422_8u_C3C2R", {82, 137, 144, 72, 18, 137});
}
TEST(RGBToYCbCr422_8u_P3C2R, WidthThreeWritesPairThenLumaAndCr) {
    expectRowOfThree("RGBToYCbCr422_8u_P3C2R", {82, 72, 144, 137, 18, 127});
}
TEST(RGBToYCrCb422_8u_P3C2R, WidthThreeWritesPairThenLumaAndCr) {
    expectRowOfThree("RGBToYCrCb422_8u_P3C2R", {82, 137, 144, 72, 18, 127});
}

// A region of one pixel: two bytes, Y and the odd pixel's chroma byte.
TEST_P(RgbTo422PackedEach, OneByOneWritesTwoBytes) {
    const SubsampledExport& ex = *GetParam();
    const Surface d = subtest::convertPixels(ex, subtest::uniformRows(1, 1, {0, 0, 20}), pxkOk, 0xEE);
    const bool crInByteOne = ex.source == SourceLayout::Planar;
    EXPECT_EQ(rowBytes(d, 0, 2), (std::vector<int>{18, crInByteOne ? 127 : 137}));
}

// Odd widths over several rows: each row's last pixel gives exactly two bytes, and the
// pixel of room after the row stays as it was.
TEST_P(RgbTo422PackedEach, OddWidthsEndEachRowWithTwoBytes) {
    const SubsampledExport& ex = *GetParam();
    const bool crInByteOne = ex.source == SourceLayout::Planar;
    for (int w : {1, 3, 5, 7, 9, 15, 17, 33}) {
        SCOPED_TRACE("width " + std::to_string(w));
        Surface src = subtest::makeFullSource(ex, w, 2, subtest::tightSourceStep(ex, w));
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < w; ++x) subtest::setPixel(ex, src, x, y, {255, 255, 255});
        }
        subtest::setPixel(ex, src, w - 1, 0, {0, 255, 0});  // Y 145, Cb 54, Cr 34
        subtest::setPixel(ex, src, w - 1, 1, {0, 0, 255});  // Y 41, Cb 240, Cr 110
        Surface dst = Surface::packed(w + 1, 2, 2, 2 * (w + 1));  // one pixel of room past the row
        dst.image(0).fill(0xEE, 0x5A);
        ASSERT_EQ(subtest::callExport(ex, src, dst, PxkSize{w, 2}), pxkOk);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x + 1 < w; ++x) {
                EXPECT_EQ(dst.at(x, y, 0), 235) << x << "," << y;
                EXPECT_EQ(dst.at(x, y, 1), 128) << x << "," << y;
            }
            EXPECT_EQ(dst.at(w - 1, y, 0), y == 0 ? 145 : 41);
            EXPECT_EQ(dst.at(w - 1, y, 1), y == 0 ? (crInByteOne ? 34 : 54) : (crInByteOne ? 110 : 240));
            EXPECT_EQ(dst.at(w, y, 0), 0xEE);
            EXPECT_EQ(dst.at(w, y, 1), 0xEE);
        }
        EXPECT_TRUE(dst.guardsIntact());
    }
}

// Source order: the C3C2R members read R, G, B from bytes 0, 1, 2; the P3C2R members
// from planes 0, 1, 2. Sample 0 at 255 and the others at 0 is red.
TEST_P(RgbTo422PackedEach, SourceOrderIsRgb) {
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
        const std::vector<int> want = swapsChroma(ex) ? std::vector<int>{82, 240, 81, 90}
                                                      : std::vector<int>{82, 90, 81, 240};
        for (int c = 0; c < w / 2; ++c) {
            const std::vector<int> all = rowBytes(dst, y, 2 * w);
            EXPECT_EQ(std::vector<int>(all.begin() + 4 * c, all.begin() + 4 * c + 4), want) << c << "," << y;
        }
    }
}

// Three planes, each with one step: a zero step reads one row of each plane for every
// row, and a negative step runs upward through memory.
TEST(RGBToYCbCr422_8u_P3C2R, OneStepServesAllThreePlanes) {
    const SubsampledExport& ex = exportNamed("RGBToYCbCr422_8u_P3C2R");
    for (int step : {0, -6}) {
        SCOPED_TRACE("source step " + std::to_string(step));
        const int w = 4, h = 3;
        Surface src = subtest::makeFullSource(ex, w, h, step);
        // Blue in the highest row of memory (row 0), red below it where the rows run
        // downward.
        for (int y = h - 1; y >= 0; --y) {
            for (int x = 0; x < w; ++x) subtest::setPixel(ex, src, x, y, y == 0 ? Rgb{0, 0, 255} : Rgb{255, 0, 0});
        }
        Surface dst = subtest::makeDest(ex, w, h, StepKind::Padded);
        ASSERT_EQ(subtest::callExport(ex, src, dst, PxkSize{w, h}), pxkOk);
        for (int y = 0; y < h; ++y) {
            const bool blue = step == 0 || y == 0;
            EXPECT_EQ(rowBytes(dst, y, 8), blue ? (std::vector<int>{41, 240, 40, 110, 41, 240, 40, 110})
                                                : (std::vector<int>{82, 90, 81, 240, 82, 90, 81, 240}))
                << "row " << y;
        }
        EXPECT_TRUE(dst.guardsIntact());
    }
}

}  // namespace
