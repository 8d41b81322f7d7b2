// Full-resolution RGB -> full-range YUV: the five exports against the reference model,
// the known values, the choice of form by column (blocks of 16 or 8 pixels), alpha,
// statuses and guards.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "column_rule_members.h"
#include "conversion_harness.h"
#include "pxkcc.h"
#include "reference_yuv.h"

namespace {

using pxktest::Rng;
using pxktest::Surface;
using refyuv::ForwardForm;
using refyuv::Yuv;
using yuvtest::ExportUnderTest;
using yuvtest::kValid;
using yuvtest::Layout;
using yuvtest::StatusFixture;

using ForwardMember = yuvtest::ColumnRuleMember<ForwardForm>;
using yuvtest::Pixel;

const std::vector<ForwardMember>& members() {
    static const std::vector<ForwardMember> list = {
        {{"RGBToYUV_8u_C3R", Layout::C3, Layout::C3, false,
          [](Surface& s, Surface& d, PxkSize z, uint8_t) {
              return pxkiRGBToYUV_8u_C3R(s.data(), s.step(), d.data(), d.step(), z);
          },
          [](Surface& s, Surface& d, int w, int h, uint8_t) {
              refyuv::rgbToYUV_C3R(s.data(), s.step(), d.data(), d.step(), w, h);
          }},
         16,
         refyuv::highProductForm,
         refyuv::truncatingLumaScalarForm},
        {{"RGBToYUV_8u_AC4R", Layout::AC4, Layout::AC4, true,
          [](Surface& s, Surface& d, PxkSize z, uint8_t) {
              return pxkiRGBToYUV_8u_AC4R(s.data(), s.step(), d.data(), d.step(), z);
          },
          [](Surface& s, Surface& d, int w, int h, uint8_t) {
              refyuv::rgbToYUV_AC4R(s.data(), s.step(), d.data(), d.step(), w, h);
          }},
         0,
         refyuv::roundedScalarForm,
         refyuv::roundedScalarForm},
        {{"RGBToYUV_8u_C3P3R", Layout::C3, Layout::P3, false,
          [](Surface& s, Surface& d, PxkSize z, uint8_t) {
              return pxkiRGBToYUV_8u_C3P3R(s.data(), s.step(), d.planes(), d.step(), z);
          },
          [](Surface& s, Surface& d, int w, int h, uint8_t) {
              refyuv::rgbToYUV_C3P3R(s.data(), s.step(), d.planes(), d.step(), w, h);
          }},
         8,
         refyuv::highProductForm,
         refyuv::truncatingLumaScalarForm},
        {{"RGBToYUV_8u_AC4P4R", Layout::AC4, Layout::P4, false,
          [](Surface& s, Surface& d, PxkSize z, uint8_t) {
              return pxkiRGBToYUV_8u_AC4P4R(s.data(), s.step(), d.planes(), d.step(), z);
          },
          [](Surface& s, Surface& d, int w, int h, uint8_t) {
              refyuv::rgbToYUV_AC4P4R(s.data(), s.step(), d.planes(), d.step(), w, h);
          }},
         0,
         refyuv::roundedLumaScalarForm,
         refyuv::roundedLumaScalarForm},
        {{"RGBToYUV_8u_P3R", Layout::P3, Layout::P3, false,
          [](Surface& s, Surface& d, PxkSize z, uint8_t) {
              return pxkiRGBToYUV_8u_P3R(s.constPlanes(), s.step(), d.planes(), d.step(), z);
          },
          [](Surface& s, Surface& d, int w, int h, uint8_t) {
              refyuv::rgbToYUV_P3R(s.constPlanes(), s.step(), d.planes(), d.step(), w, h);
          }},
         16,
         refyuv::highProductForm,
         refyuv::matrixScalarForm},
    };
    return list;
}

const std::vector<ExportUnderTest>& exports() {
    static const std::vector<ExportUnderTest> list = yuvtest::exportsOf(members());
    return list;
}

const ForwardMember& memberNamed(const std::string& name) { return yuvtest::memberNamed(members(), name); }

std::vector<const ExportUnderTest*> exportPointers() { return yuvtest::exportPointers(exports()); }

std::vector<const ExportUnderTest*> blockExportPointers() {
    return yuvtest::blockExportPointers(members(), exports());
}

// ---------------------------------------------------------------------------------
// Reference comparison over all widths, heights and step layouts; every one of the
// 2^24 inputs through each export, at a width that puts every pixel in the vector
// columns (256, a multiple of 16) and, for the members with vector columns, at one
// that puts every pixel in the tail (7). A lighter run (16 of the 256 slices) adds
// width 15, all tail for the members with blocks of 16.
// ---------------------------------------------------------------------------------

YUVTEST_COLUMN_RULE_REFERENCE_SUITES(RgbToYuv, exports, blockExportPointers);

// ---------------------------------------------------------------------------------
// Running an export on given pixels
// ---------------------------------------------------------------------------------

std::string show(const Yuv& v) { return yuvtest::show(v); }

// Converts rows of the given pixels (all rows alike) with the export alone, checks the
// status and the guards, and returns the output of row `height - 1` as Y, U, V.
std::vector<Yuv> convertRow(const ExportUnderTest& ex, const std::vector<Pixel>& pixels, int height = 1,
                            uint32_t seed = 1) {
    const int width = int(pixels.size());
    Surface dst = yuvtest::runOnRows(ex, pixels, height, 0, seed);
    std::vector<Yuv> out;
    for (int x = 0; x < width; ++x) {
        out.push_back({dst.at(x, height - 1, 0), dst.at(x, height - 1, 1), dst.at(x, height - 1, 2)});
    }
    return out;
}

// ---------------------------------------------------------------------------------
// The forms themselves: known values
// ---------------------------------------------------------------------------------

using NamedForm = yuvtest::NamedForm<ForwardForm>;

const std::vector<NamedForm>& allForms() {
    static const std::vector<NamedForm> f = {
        {"rounded scalar", refyuv::roundedScalarForm},
        {"rounded luma scalar", refyuv::roundedLumaScalarForm},
        {"truncating luma scalar", refyuv::truncatingLumaScalarForm},
        {"matrix scalar", refyuv::matrixScalarForm},
        {"high-product", refyuv::highProductForm},
    };
    return f;
}

TEST(RgbToYuvForms, BlackIsY0U128V128InEveryForm) {
    for (const NamedForm& f : allForms()) EXPECT_EQ(show(f.form(0, 0, 0)), show({0, 128, 128})) << f.name;
}

// White: L = 65536 * 255 exactly, so the three forms built on L give 255 and zero
// differences (U = V = 128). The matrix scalar coefficients sum to 65535:
// 65535 * 255 >> 16 = 254, and its chroma rows sum to 1: 255 >> 15 = 0.
// High-product: a = 19518, b = 38318, c = 7441, (a + b + c) >> 8 = 65277 >> 8 = 254;
// U = (-2399 - 4717 + 7115) >> 6 = -1 >> 6 = -1, V = (10036 - 8405 - 1632) >> 6 = -1.
TEST(RgbToYuvForms, WhiteIs255InTheFormsOnLAnd254InTheOthers) {
    EXPECT_EQ(show(refyuv::roundedScalarForm(255, 255, 255)), show({255, 128, 128}));
    EXPECT_EQ(show(refyuv::roundedLumaScalarForm(255, 255, 255)), show({255, 128, 128}));
    EXPECT_EQ(show(refyuv::truncatingLumaScalarForm(255, 255, 255)), show({255, 128, 128}));
    EXPECT_EQ(show(refyuv::matrixScalarForm(255, 255, 255)), show({254, 128, 128}));
    EXPECT_EQ(show(refyuv::highProductForm(255, 255, 255)), show({254, 127, 127}));
}

// Pure red in the rounded scalar form: L = 19595 * 255 = 4996725,
// Y = 5029493 >> 16 = 76; d = (-4996725 + 32768) >> 16 = -76, U = (-76 * 32244 >> 16) +
// 128 = -38 + 128 = 90; e = 11747723 >> 16 = 179, V = (179 * 57475 >> 16) + 128 =
// 156 + 128 = 284, clamped to 255.
TEST(RgbToYuvForms, PureRedInTheRoundedScalarForm) {
    EXPECT_EQ(show(refyuv::roundedScalarForm(255, 0, 0)), show({76, 90, 255}));
}

// (100, 150, 200), worked by hand. L = 1959500 + 5770500 + 1494200 = 9224200.
//  rounded scalar:   Y = 9256968 >> 16 = 141; d = (13107200 - 9224200 + 32768) >> 16 = 59,
//                    U = (59 * 32244 >> 16) + 128 = 29 + 128 = 157;
//                    e = (6553600 - 9224200 + 32768) >> 16 = -41,
//                    V = (-41 * 57475 >> 16) + 128 = -36 + 128 = 92.
//  rounded luma:     the same; 32767 in place of 32768 changes neither d nor e here.
//  truncating luma:  Y = 9224200 >> 16 = 140, chroma as above: (140, 157, 92).
//  matrix scalar:    Y = 9224050 >> 16 = 140; U = (-481600 - 1420350 + 2857200) >> 15
//                    = 955250 >> 15 = 29 -> 157; V = (2015200 - 2531250 - 655200) >> 15
//                    = -1171250 >> 15 = -36 -> 92.
//  high-product:     a = 7654, b = 22540, c = 5836, 36030 >> 8 = 140;
//                    U = (-941 - 2775 + 5580) >> 6 = 1864 >> 6 = 29 -> 157;
//                    V = (3935 - 4944 - 1280) >> 6 = -2289 >> 6 = -36 -> 92.
TEST(RgbToYuvForms, Example100_150_200) {
    EXPECT_EQ(show(refyuv::roundedScalarForm(100, 150, 200)), show({141, 157, 92}));
    EXPECT_EQ(show(refyuv::roundedLumaScalarForm(100, 150, 200)), show({141, 157, 92}));
    EXPECT_EQ(show(refyuv::truncatingLumaScalarForm(100, 150, 200)), show({140, 157, 92}));
    EXPECT_EQ(show(refyuv::matrixScalarForm(100, 150, 200)), show({140, 157, 92}));
    EXPECT_EQ(show(refyuv::highProductForm(100, 150, 200)), show({140, 157, 92}));
}

// U needs no clamp in the scalar forms: over all inputs it stays within 16..239 before
// the store, so keeping the low 8 bits never wraps. V does run past 255 (pure red).
TEST(RgbToYuvForms, ScalarUStaysInRangeAndVNeedsItsClamp) {
    int lowU = 255, highU = 0;
    long vClamped = 0;
    for (int R = 0; R < 256; R += 1) {
        for (int G = 0; G < 256; G += 5) {
            for (int B = 0; B < 256; B += 1) {
                const int64_t L = 19595LL * R + 38470LL * G + 7471LL * B;
                const int64_t d = refyuv::floorShift(B * 65536LL - L + 32768, 16);
                const int64_t e = refyuv::floorShift(R * 65536LL - L + 32768, 16);
                const int64_t u = refyuv::floorShift(d * 32244, 16) + 128;
                const int64_t v = refyuv::floorShift(e * 57475, 16) + 128;
                lowU = std::min(lowU, int(u));
                highU = std::max(highU, int(u));
                vClamped += v > 255 || v < 0;
            }
        }
    }
    EXPECT_EQ(lowU, 16);
    EXPECT_EQ(highU, 239);
    EXPECT_GT(vClamped, 0);
}

// ---------------------------------------------------------------------------------
// Which form each column gets
// ---------------------------------------------------------------------------------

// For every pair of forms, inputs that tell them apart in each channel in which they
// differ at all. The rounded and rounded luma scalar forms share Y and differ in U and
// V only (274 inputs of 2^24); the rounded luma and truncating luma forms share U, V.
const std::vector<Pixel>& tellingInputs() {
    static const std::vector<Pixel> inputs = [] {
        using namespace refyuv;
        std::vector<Pixel> all;
        auto add = [&](ForwardForm a, ForwardForm b, std::vector<int> channels) {
            for (const Pixel& p : yuvtest::disagreements(a, b, channels)) all.push_back(p);
        };
        add(roundedScalarForm, roundedLumaScalarForm, {1, 2});
        add(roundedLumaScalarForm, truncatingLumaScalarForm, {0});
        add(roundedScalarForm, truncatingLumaScalarForm, {0, 1, 2});
        for (ForwardForm f : {roundedScalarForm, roundedLumaScalarForm, truncatingLumaScalarForm}) {
            add(f, matrixScalarForm, {0, 1, 2});
            add(f, highProductForm, {0, 1, 2});
        }
        add(matrixScalarForm, highProductForm, {0, 1, 2});
        return all;
    }();
    return inputs;
}

TEST(RgbToYuvForms, SearchFindsEveryPairOfFormsDisagreeing) {
    // 2 + 1 + 3 + 3 * 6 + 3 inputs; each input must tell some pair apart.
    yuvtest::expectEachInputTellsFormsApart(tellingInputs(), 27u, allForms());
}

class RgbToYuvFormByColumn : public ::testing::TestWithParam<const ExportUnderTest*> {};

// Widths around both block sizes: all tail (1, 7, 15), one block and a tail (9, 17),
// whole blocks of 8 that are no whole blocks of 16 (8, 24), and more.
TEST_P(RgbToYuvFormByColumn, BlockFormBelowTheLastWholeBlockTailFormAfter) {
    for (int width : yuvtest::formByColumnWidths()) {
        yuvtest::expectFormsByColumn(memberNamed(GetParam()->name), width, tellingInputs(),
                                     [](const ExportUnderTest& ex, const std::vector<Pixel>& row) {
                                         return convertRow(ex, row, 2);
                                     });
    }
}

INSTANTIATE_TEST_SUITE_P(AllExports, RgbToYuvFormByColumn, ::testing::ValuesIn(exportPointers()),
                         yuvtest::exportParamName);

// ---------------------------------------------------------------------------------
// Known values through the exports
// ---------------------------------------------------------------------------------

std::vector<Yuv> convertUniformRow(const std::string& name, Pixel p, int width, int height = 2) {
    return convertRow(memberNamed(name).ex, std::vector<Pixel>(std::size_t(width), p), height);
}

std::vector<std::string> runs(int n, const Yuv& first, int m = 0, const Yuv& second = {}) {
    return yuvtest::runs(n, first, m, second);
}

std::vector<std::string> shown(const std::vector<Yuv>& v) {
    std::vector<std::string> s;
    for (const Yuv& p : v) s.push_back(show(p));
    return s;
}

class RgbToYuvKnownValues : public ::testing::TestWithParam<const ExportUnderTest*> {};

TEST_P(RgbToYuvKnownValues, BlackIsY0U128V128InEveryColumn) {
    EXPECT_EQ(shown(convertUniformRow(GetParam()->name, {0, 0, 0}, 37)), runs(37, {0, 128, 128}));
}

// Pure red is (76, 90, 255) in every form.
TEST_P(RgbToYuvKnownValues, PureRedIs76_90_255InEveryColumn) {
    EXPECT_EQ(shown(convertUniformRow(GetParam()->name, {255, 0, 0}, 37)), runs(37, {76, 90, 255}));
}

INSTANTIATE_TEST_SUITE_P(AllExports, RgbToYuvKnownValues, ::testing::ValuesIn(exportPointers()),
                         yuvtest::exportParamName);

const Yuv kWhiteOnL{255, 128, 128};  // the three scalar forms built on L
const Yuv kWhiteHighProduct{254, 127, 127};
const Yuv kWhiteMatrix{254, 128, 128};

TEST(RGBToYUV_8u_C3R, WhiteRowOfTwentyIs16x254Then4x255) {
    EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_C3R", {255, 255, 255}, 20)),
              runs(16, kWhiteHighProduct, 4, kWhiteOnL));
}

TEST(RGBToYUV_8u_C3R, WhiteRowOfTwentyFourHasOneBlockOfSixteen) {
    // 24 is a whole number of 8-pixel blocks but not of 16: columns 16..23 are tail.
    EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_C3R", {255, 255, 255}, 24)),
              runs(16, kWhiteHighProduct, 8, kWhiteOnL));
}

TEST(RGBToYUV_8u_C3R, WhiteRowsBelowSixteenAreAllTail) {
    for (int w : {1, 8, 15})
        EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_C3R", {255, 255, 255}, w)), runs(w, kWhiteOnL));
}

TEST(RGBToYUV_8u_C3P3R, WhiteRowOfTwentyIs16x254Then4x255) {
    EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_C3P3R", {255, 255, 255}, 20)),
              runs(16, kWhiteHighProduct, 4, kWhiteOnL));
}

TEST(RGBToYUV_8u_C3P3R, WhiteRowOfTwelveIs8x254Then4x255) {
    EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_C3P3R", {255, 255, 255}, 12)),
              runs(8, kWhiteHighProduct, 4, kWhiteOnL));
}

TEST(RGBToYUV_8u_P3R, WhiteIs254InEveryColumn) {
    // High-product in the blocks of 16, matrix scalar after: both floor to 254.
    EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_P3R", {255, 255, 255}, 20)),
              runs(16, kWhiteHighProduct, 4, kWhiteMatrix));
}

TEST(RGBToYUV_8u_AC4R, WhiteIs255InEveryColumn) {
    EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_AC4R", {255, 255, 255}, 20)), runs(20, kWhiteOnL));
}

TEST(RGBToYUV_8u_AC4P4R, WhiteIs255InEveryColumn) {
    EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_AC4P4R", {255, 255, 255}, 20)), runs(20, kWhiteOnL));
}

TEST(RGBToYUV_8u_AC4R, PureRedIsY76U90V255) {
    // The rounded scalar form: V is 284 before the clamp.
    EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_AC4R", {255, 0, 0}, 9)), runs(9, {76, 90, 255}));
}

TEST(RGBToYUV_8u_AC4R, Example100_150_200IsRoundedToY141) {
    EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_AC4R", {100, 150, 200}, 17)), runs(17, {141, 157, 92}));
}

TEST(RGBToYUV_8u_C3R, Example100_150_200IsY140InEveryColumn) {
    EXPECT_EQ(shown(convertUniformRow("RGBToYUV_8u_C3R", {100, 150, 200}, 17)), runs(17, {140, 157, 92}));
}

// ---------------------------------------------------------------------------------
// Alpha
// ---------------------------------------------------------------------------------

TEST(RGBToYUV_8u_AC4R, LeavesDestinationAlphaAsItWas) {
    yuvtest::expectDestinationAlphaKept(memberNamed("RGBToYUV_8u_AC4R").ex, true);
}

TEST(RGBToYUV_8u_AC4P4R, FourthPlaneGetsSourceByte3) {
    const int w = 21, h = 3;
    Surface src = Surface::packed(w, h, 4, w * 4 + 1);
    Surface dst = Surface::planar(w, h, 4, w + 3);
    Rng rng(17);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) src.at(x, y, 3) = uint8_t(x * 11 + y * 5 + 3);
    }
    src.snapshot();
    dst.snapshot();
    ASSERT_EQ(pxkiRGBToYUV_8u_AC4P4R(src.data(), src.step(), dst.planes(), dst.step(), PxkSize{w, h}), pxkOk);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) EXPECT_EQ(dst.at(x, y, 3), uint8_t(x * 11 + y * 5 + 3)) << x << "," << y;
    }
    EXPECT_TRUE(dst.guardsIntact());
    EXPECT_TRUE(src.unchanged());
}

// Byte 3 of a four-byte source does not take part in Y, U and V.
TEST(RGBToYUV_8u_AC4R, IgnoresSourceAlpha) { yuvtest::expectSourceAlphaIgnored(memberNamed("RGBToYUV_8u_AC4R").ex, 3); }
TEST(RGBToYUV_8u_AC4P4R, IgnoresSourceAlphaInYUV) {
    yuvtest::expectSourceAlphaIgnored(memberNamed("RGBToYUV_8u_AC4P4R").ex, 3);
}

// A null dst[3] passes the checks (only dst[0..2] are tested), so the call goes on
// and stores the alpha plane through it.
TEST(RGBToYUV_8u_AC4P4RDeathTest, NullFourthPlaneIsNotCaught) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    StatusFixture f(Layout::AC4, Layout::P4);
    uint8_t* planes[4] = {f.dst.planes()[0], f.dst.planes()[1], f.dst.planes()[2], nullptr};
    EXPECT_DEATH(
        {
            const PxkResult st = pxkiRGBToYUV_8u_AC4P4R(f.src.data(), f.src.step(), planes, f.dst.step(), kValid);
            // Reached only if the call returned instead of writing through dst[3].
            std::fprintf(stderr, "returned %d\n", int(st));
            std::fflush(stderr);
            std::_Exit(0);
        },
        "");
}

TEST(RGBToYUV_8u_AC4P4R_Status, NullFourthPlaneIsNotReported) {
    StatusFixture f(Layout::AC4, Layout::P4);
    uint8_t* const* p = f.dst.planes();
    uint8_t* noAlpha[4] = {p[0], p[1], p[2], nullptr};
    // A bad size is still reported as such...
    EXPECT_EQ(pxkiRGBToYUV_8u_AC4P4R(f.src.data(), f.src.step(), noAlpha, f.dst.step(), PxkSize{0, 2}), pxkErrSize);
    EXPECT_EQ(pxkiRGBToYUV_8u_AC4P4R(f.src.data(), f.src.step(), noAlpha, f.dst.step(), PxkSize{9, -1}), pxkErrSize);
    // ...and a null among the first three entries as a null pointer.
    for (int i = 0; i < 3; ++i) {
        uint8_t* planes[4] = {p[0], p[1], p[2], nullptr};
        planes[i] = nullptr;
        EXPECT_EQ(pxkiRGBToYUV_8u_AC4P4R(f.src.data(), f.src.step(), planes, f.dst.step(), kValid), pxkErrNullPtr)
            << "entry " << i;
    }
    EXPECT_TRUE(f.nothingWritten());
}

// ---------------------------------------------------------------------------------
// Steps
// ---------------------------------------------------------------------------------

TEST(RGBToYUV_8u_C3R, NegativeStepRunsDownwardInMemory) {
    // Row 1 white in the tail columns: truncating luma scalar.
    yuvtest::expectRowsRunDownward(memberNamed("RGBToYUV_8u_C3R").ex, {0, 128, 128}, {255, 128, 128}, true);
}

TEST(RGBToYUV_8u_P3R, ZeroDestinationStepKeepsTheLastRow) {
    const int w = 18, h = 3;
    Surface src = Surface::planar(w, h, 3, w + 1);
    Surface dst = Surface::planar(w, h, 3, 0);
    Rng rng(11);
    dst.fillRandom(rng);
    const Pixel rows[3] = {{0, 0, 0}, {100, 150, 200}, {255, 0, 0}};
    for (int c = 0; c < 3; ++c)
        src.image(c).fillRegion([&](int, int y, int) { return uint8_t(rows[y][std::size_t(c)]); });
    ASSERT_EQ(pxkiRGBToYUV_8u_P3R(src.constPlanes(), src.step(), dst.planes(), 0, PxkSize{w, h}), pxkOk);
    for (int x = 0; x < w; ++x) {
        EXPECT_EQ(dst.at(x, 0, 0), 76) << x;
        EXPECT_EQ(dst.at(x, 0, 1), 90) << x;
        EXPECT_EQ(dst.at(x, 0, 2), 255) << x;
    }
    EXPECT_TRUE(dst.guardsIntact());
}

// ---------------------------------------------------------------------------------
// Statuses: each null pointer, each bad size, the order of the checks; a failing call
// writes nothing.
// ---------------------------------------------------------------------------------

TEST(RGBToYUV_8u_C3R_Status, NullPointersThenSize) { yuvtest::packedStatusChecks(Layout::C3, pxkiRGBToYUV_8u_C3R); }
TEST(RGBToYUV_8u_AC4R_Status, NullPointersThenSize) { yuvtest::packedStatusChecks(Layout::AC4, pxkiRGBToYUV_8u_AC4R); }

TEST(RGBToYUV_8u_C3P3R_Status, PointersThenSizeThenEntries) {
    yuvtest::twoStageStatusChecks(Layout::C3, Layout::P3, 3,
                                  [](const uint8_t* s, const uint8_t* const*, int32_t ss, uint8_t*, uint8_t* const* d,
                                     int32_t ds, PxkSize z) { return pxkiRGBToYUV_8u_C3P3R(s, ss, d, ds, z); });
}

TEST(RGBToYUV_8u_AC4P4R_Status, PointersThenSizeThenFirstThreeEntries) {
    yuvtest::twoStageStatusChecks(Layout::AC4, Layout::P4, 3,
                                  [](const uint8_t* s, const uint8_t* const*, int32_t ss, uint8_t*, uint8_t* const* d,
                                     int32_t ds, PxkSize z) { return pxkiRGBToYUV_8u_AC4P4R(s, ss, d, ds, z); });
}

TEST(RGBToYUV_8u_P3R_Status, ArraysThenSizeThenEntries) {
    yuvtest::twoStageStatusChecks(Layout::P3, Layout::P3, 3,
                                  [](const uint8_t*, const uint8_t* const* s, int32_t ss, uint8_t*, uint8_t* const* d,
                                     int32_t ds, PxkSize z) { return pxkiRGBToYUV_8u_P3R(s, ss, d, ds, z); });
}

// Unlike the studio-range C3P3R, which tests its entries before the size, these
// members report a bad size before a null entry.
TEST(RGBToYUV_8u_StatusOrder, NullEntryAndZeroWidthReportTheSize) {
    StatusFixture packed(Layout::C3, Layout::P3);
    uint8_t* dstNull[3] = {packed.dst.planes()[0], nullptr, packed.dst.planes()[2]};
    EXPECT_EQ(pxkiRGBToYUV_8u_C3P3R(packed.src.data(), packed.src.step(), dstNull, packed.dst.step(), PxkSize{0, 2}),
              pxkErrSize);
    StatusFixture four(Layout::AC4, Layout::P4);
    uint8_t* dst4Null[4] = {nullptr, four.dst.planes()[1], four.dst.planes()[2], four.dst.planes()[3]};
    EXPECT_EQ(pxkiRGBToYUV_8u_AC4P4R(four.src.data(), four.src.step(), dst4Null, four.dst.step(), PxkSize{0, 2}),
              pxkErrSize);
    StatusFixture planar(Layout::P3, Layout::P3);
    const uint8_t* srcNull[3] = {planar.src.constPlanes()[0], nullptr, planar.src.constPlanes()[2]};
    EXPECT_EQ(pxkiRGBToYUV_8u_P3R(srcNull, planar.src.step(), planar.dst.planes(), planar.dst.step(), PxkSize{0, 2}),
              pxkErrSize);
    EXPECT_TRUE(packed.nothingWritten());
    EXPECT_TRUE(four.nothingWritten());
    EXPECT_TRUE(planar.nothingWritten());
}

TEST(RGBToYUV_8u_Status, ValidCallsReportOk) {
    StatusFixture f(Layout::C3, Layout::C3);
    EXPECT_EQ(pxkiRGBToYUV_8u_C3R(f.src.data(), f.src.step(), f.dst.data(), f.dst.step(), kValid), pxkOk);
    EXPECT_FALSE(f.dst.unchanged());
    StatusFixture g(Layout::AC4, Layout::P4);
    EXPECT_EQ(pxkiRGBToYUV_8u_AC4P4R(g.src.data(), g.src.step(), g.dst.planes(), g.dst.step(), kValid), pxkOk);
    EXPECT_FALSE(g.dst.unchanged());
}

}  // namespace
