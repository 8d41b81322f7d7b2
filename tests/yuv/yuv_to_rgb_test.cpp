// Full-resolution full-range YUV -> RGB: the five exports against the reference model,
// the known values, the choice of form by column (blocks of 8 or 16 pixels), alpha,
// statuses and guards.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
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
using refyuv::InverseForm;
using refyuv::Rgb;
using yuvtest::ExportUnderTest;
using yuvtest::kValid;
using yuvtest::Layout;
using yuvtest::StatusFixture;

using InverseMember = yuvtest::ColumnRuleMember<InverseForm>;
using Pixel = yuvtest::Pixel;  // Y, U, V as raw samples

const std::vector<InverseMember>& members() {
    static const std::vector<InverseMember> list = {
        {{"YUVToRGB_8u_C3R", Layout::C3, Layout::C3, false,
          [](Surface& s, Surface& d, PxkSize z, uint8_t) {
              return pxkiYUVToRGB_8u_C3R(s.data(), s.step(), d.data(), d.step(), z);
          },
          [](Surface& s, Surface& d, int w, int h, uint8_t) {
              refyuv::yuvToRGB_C3R(s.data(), s.step(), d.data(), d.step(), w, h);
          }},
         8,
         refyuv::octetForm,
         refyuv::halfRoundedForm},
        {{"YUVToRGB_8u_AC4R", Layout::AC4, Layout::AC4, true,
          [](Surface& s, Surface& d, PxkSize z, uint8_t) {
              return pxkiYUVToRGB_8u_AC4R(s.data(), s.step(), d.data(), d.step(), z);
          },
          [](Surface& s, Surface& d, int w, int h, uint8_t) {
              refyuv::yuvToRGB_AC4R(s.data(), s.step(), d.data(), d.step(), w, h);
          }},
         0,
         refyuv::halfRoundedForm,
         refyuv::halfRoundedForm},
        {{"YUVToRGB_8u_C3C4R", Layout::C3, Layout::C4, false,
          [](Surface& s, Surface& d, PxkSize z, uint8_t a) {
              return pxkiYUVToRGB_8u_C3C4R(s.data(), s.step(), d.data(), d.step(), z, a);
          },
          [](Surface& s, Surface& d, int w, int h, uint8_t a) {
              refyuv::yuvToRGB_C3C4R(s.data(), s.step(), d.data(), d.step(), w, h, a);
          }},
         0,
         refyuv::fullRoundedForm,
         refyuv::fullRoundedForm},
        {{"YUVToRGB_8u_P3C3R", Layout::P3, Layout::C3, false,
          [](Surface& s, Surface& d, PxkSize z, uint8_t) {
              return pxkiYUVToRGB_8u_P3C3R(s.constPlanes(), s.step(), d.data(), d.step(), z);
          },
          [](Surface& s, Surface& d, int w, int h, uint8_t) {
              refyuv::yuvToRGB_P3C3R(s.constPlanes(), s.step(), d.data(), d.step(), w, h);
          }},
         16,
         refyuv::doubledForm,
         refyuv::truncatingInverseForm},
        {{"YUVToRGB_8u_P3R", Layout::P3, Layout::P3, false,
          [](Surface& s, Surface& d, PxkSize z, uint8_t) {
              return pxkiYUVToRGB_8u_P3R(s.constPlanes(), s.step(), d.planes(), d.step(), z);
          },
          [](Surface& s, Surface& d, int w, int h, uint8_t) {
              refyuv::yuvToRGB_P3R(s.constPlanes(), s.step(), d.planes(), d.step(), w, h);
          }},
         0,
         refyuv::truncatingInverseForm,
         refyuv::truncatingInverseForm},
    };
    return list;
}

const std::vector<ExportUnderTest>& exports() {
    static const std::vector<ExportUnderTest> list = yuvtest::exportsOf(members());
    return list;
}

const InverseMember& memberNamed(const std::string& name) { return yuvtest::memberNamed(members(), name); }

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

YUVTEST_COLUMN_RULE_REFERENCE_SUITES(YuvToRgb, exports, blockExportPointers);

// ---------------------------------------------------------------------------------
// Running an export on given pixels
// ---------------------------------------------------------------------------------

// Output of one pixel, and the alpha byte of a four-byte destination (-1 otherwise).
struct Out {
    Rgb rgb;
    int alpha;
};

std::string show(const Rgb& v) { return yuvtest::show(v); }

// Converts rows of the given pixels (all rows alike) with the export alone, checks the
// status and the guards, and returns the last row.
std::vector<Out> convertRow(const ExportUnderTest& ex, const std::vector<Pixel>& pixels, int height = 1,
                            uint8_t alpha = 0xA7, uint32_t seed = 1) {
    const int width = int(pixels.size());
    Surface dst = yuvtest::runOnRows(ex, pixels, height, alpha, seed);
    std::vector<Out> out;
    for (int x = 0; x < width; ++x) {
        const int y = height - 1;
        Out o{{dst.at(x, y, 0), dst.at(x, y, 1), dst.at(x, y, 2)}, -1};
        if (ex.dst == Layout::C4) o.alpha = dst.at(x, y, 3);
        out.push_back(o);
    }
    return out;
}

std::vector<std::string> shownRow(const std::string& name, Pixel p, int width, int height = 2) {
    std::vector<std::string> s;
    for (const Out& o : convertRow(memberNamed(name).ex, std::vector<Pixel>(std::size_t(width), p), height)) {
        s.push_back(show(o.rgb));
    }
    return s;
}

// `n` copies of `first`, then `m` copies of `second`.
std::vector<std::string> runs(int n, const Rgb& first, int m = 0, const Rgb& second = {}) {
    return yuvtest::runs(n, first, m, second);
}

// ---------------------------------------------------------------------------------
// The forms themselves: known values
// ---------------------------------------------------------------------------------

using NamedForm = yuvtest::NamedForm<InverseForm>;

const std::vector<NamedForm>& allForms() {
    static const std::vector<NamedForm> f = {
        {"full rounded", refyuv::fullRoundedForm},
        {"half rounded", refyuv::halfRoundedForm},
        {"truncating", refyuv::truncatingInverseForm},
        {"octet", refyuv::octetForm},
        {"doubled", refyuv::doubledForm},
    };
    return f;
}

// Neutral chroma leaves only the Y * 65536 term (or Y, or 2 Y >> 1): grey Y in every
// form, for every Y.
TEST(YuvToRgbForms, NeutralChromaGivesGreyInEveryForm) {
    for (const NamedForm& f : allForms()) {
        for (int Y : {0, 1, 16, 127, 128, 235, 254, 255}) {
            EXPECT_EQ(show(f.form(Y, 128, 128)), show({uint8_t(Y), uint8_t(Y), uint8_t(Y)})) << f.name << " Y " << Y;
        }
    }
}

// (100, 190, 190): U = V = 62, worked by hand.
//  octet:   u = v = 496; R = 100 + h(9339, 496) = 100 + 70 = 170,
//           G = 100 + h(-3228, 496) + h(-4760, 496) = 100 - 25 - 37 = 38,
//           B = 100 + h(16646, 496) = 100 + 125 = 225.
//  half rounded: R = (6553600 + 4632082 + 32768) >> 16 = 11218450 >> 16 = 171,
//           G = (6553600 - 1600902 - 2360712) >> 16 = 2591986 >> 16 = 39,
//           B = (6553600 + 8256478 + 32768) >> 16 = 14842846 >> 16 = 226.
//  full rounded: G = 2624754 >> 16 = 40; R and B as half rounded.
//  truncating: R = (6553600 + 4632020) >> 16 = 170, G = (6553600 - 1600840 - 2360650)
//           >> 16 = 2592110 >> 16 = 39, B = (6553600 + 8256416) >> 16 = 225.
//  doubled: u = v = 992; R = (200 + h(9338, 992)) >> 1 = (200 + 141) >> 1 = 170,
//           G = (200 + h(-3227, 992) + h(-4759, 992)) >> 1 = (200 - 49 - 73) >> 1 = 39,
//           B = (200 + h(16645, 992)) >> 1 = (200 + 251) >> 1 = 225.
const Pixel kExample{100, 190, 190};
const Rgb kExampleOctet{170, 38, 225};
const Rgb kExampleHalfRounded{171, 39, 226};
const Rgb kExampleFullRounded{171, 40, 226};
const Rgb kExampleTruncating{170, 39, 225};
const Rgb kExampleDoubled{170, 39, 225};

TEST(YuvToRgbForms, Example100_190_190) {
    EXPECT_EQ(show(refyuv::octetForm(100, 190, 190)), show(kExampleOctet));
    EXPECT_EQ(show(refyuv::halfRoundedForm(100, 190, 190)), show(kExampleHalfRounded));
    EXPECT_EQ(show(refyuv::fullRoundedForm(100, 190, 190)), show(kExampleFullRounded));
    EXPECT_EQ(show(refyuv::truncatingInverseForm(100, 190, 190)), show(kExampleTruncating));
    EXPECT_EQ(show(refyuv::doubledForm(100, 190, 190)), show(kExampleDoubled));
}

// Saturated chroma clamps: Y 255 with U = V = 255 pushes R and B over 255;
// Y 0 with U = V = 0 pushes them below 0.
TEST(YuvToRgbForms, ExtremesClamp) {
    for (const NamedForm& f : allForms()) {
        const Rgb hi = f.form(255, 255, 255);
        EXPECT_EQ(hi.r, 255) << f.name;
        EXPECT_EQ(hi.b, 255) << f.name;
        const Rgb lo = f.form(0, 0, 0);
        EXPECT_EQ(lo.r, 0) << f.name;
        EXPECT_EQ(lo.b, 0) << f.name;
    }
    // G of (0, 0, 0): U = V = -128, 25821 * 128 + 38076 * 128 = 8178816, >> 16 = 124.
    EXPECT_EQ(refyuv::fullRoundedForm(0, 0, 0).g, 125);  // 8211584 >> 16
    EXPECT_EQ(refyuv::halfRoundedForm(0, 0, 0).g, 124);
    EXPECT_EQ(refyuv::truncatingInverseForm(0, 0, 0).g, 124);  // 8178560 >> 16
}

// ---------------------------------------------------------------------------------
// Which form each column gets
// ---------------------------------------------------------------------------------

// For every pair of forms, inputs that tell them apart in each channel in which they
// differ at all. The full and half rounded forms differ in G only; the truncating and
// doubled forms agree in R everywhere, and the truncating and octet forms in B.
const std::vector<Pixel>& tellingInputs() {
    static const std::vector<Pixel> inputs = [] {
        using namespace refyuv;
        std::vector<Pixel> all;
        auto add = [&](InverseForm a, InverseForm b, std::vector<int> channels) {
            for (const Pixel& p : yuvtest::disagreements(a, b, channels)) all.push_back(p);
        };
        add(fullRoundedForm, halfRoundedForm, {1});
        add(fullRoundedForm, truncatingInverseForm, {0, 1, 2});
        add(fullRoundedForm, octetForm, {0, 1, 2});
        add(fullRoundedForm, doubledForm, {0, 1, 2});
        add(halfRoundedForm, truncatingInverseForm, {0, 1, 2});
        add(halfRoundedForm, octetForm, {0, 1, 2});
        add(halfRoundedForm, doubledForm, {0, 1, 2});
        add(truncatingInverseForm, octetForm, {0, 1});
        add(truncatingInverseForm, doubledForm, {1, 2});
        add(octetForm, doubledForm, {0, 1, 2});
        return all;
    }();
    return inputs;
}

TEST(YuvToRgbForms, SearchFindsEveryPairOfFormsDisagreeing) {
    yuvtest::expectEachInputTellsFormsApart(tellingInputs(), 26u, allForms());
}

class YuvToRgbFormByColumn : public ::testing::TestWithParam<const ExportUnderTest*> {};

TEST_P(YuvToRgbFormByColumn, BlockFormBelowTheLastWholeBlockTailFormAfter) {
    for (int width : yuvtest::formByColumnWidths()) {
        yuvtest::expectFormsByColumn(memberNamed(GetParam()->name), width, tellingInputs(),
                                     [](const ExportUnderTest& ex, const std::vector<Pixel>& row) {
                                         std::vector<Rgb> rgb;
                                         for (const Out& o : convertRow(ex, row, 2)) rgb.push_back(o.rgb);
                                         return rgb;
                                     });
    }
}

INSTANTIATE_TEST_SUITE_P(AllExports, YuvToRgbFormByColumn, ::testing::ValuesIn(exportPointers()),
                         yuvtest::exportParamName);

// ---------------------------------------------------------------------------------
// Known values through the exports
// ---------------------------------------------------------------------------------

TEST(YUVToRGB_8u_C3R, WidthNineIsOctetFormThenHalfRoundedForm) {
    // Columns 0..7 in the octet form, column 8 in the half rounded form, whose G has no
    // rounding term (the full rounded form would give G 40).
    EXPECT_EQ(shownRow("YUVToRGB_8u_C3R", kExample, 9), runs(8, kExampleOctet, 1, kExampleHalfRounded));
}

TEST(YUVToRGB_8u_C3R, WidthSixteenIsAllOctetForm) {
    EXPECT_EQ(shownRow("YUVToRGB_8u_C3R", kExample, 16), runs(16, kExampleOctet));
}

TEST(YUVToRGB_8u_C3R, WidthBelowEightIsAllHalfRounded) {
    for (int w = 1; w < 8; ++w) EXPECT_EQ(shownRow("YUVToRGB_8u_C3R", kExample, w), runs(w, kExampleHalfRounded));
}

TEST(YUVToRGB_8u_AC4R, HalfRoundedInEveryColumn) {
    EXPECT_EQ(shownRow("YUVToRGB_8u_AC4R", kExample, 17), runs(17, kExampleHalfRounded));
}

TEST(YUVToRGB_8u_C3C4R, FullRoundedInEveryColumn) {
    EXPECT_EQ(shownRow("YUVToRGB_8u_C3C4R", kExample, 17), runs(17, kExampleFullRounded));
}

TEST(YUVToRGB_8u_P3R, TruncatingInEveryColumn) {
    EXPECT_EQ(shownRow("YUVToRGB_8u_P3R", kExample, 17), runs(17, kExampleTruncating));
}

TEST(YUVToRGB_8u_P3C3R, DoubledFormInBlocksOfSixteenTruncatingAfter) {
    // Both give (170, 39, 225) here; the column rule itself is checked on inputs where
    // they differ, by the form-by-column tests.
    EXPECT_EQ(shownRow("YUVToRGB_8u_P3C3R", kExample, 20), runs(16, kExampleDoubled, 4, kExampleTruncating));
}

class YuvToRgbKnownValues : public ::testing::TestWithParam<const ExportUnderTest*> {};

TEST_P(YuvToRgbKnownValues, NeutralChromaIsGreyInEveryColumn) {
    for (int Y : {0, 16, 128, 235, 255}) {
        const uint8_t g = uint8_t(Y);
        EXPECT_EQ(shownRow(GetParam()->name, {Y, 128, 128}, 37), runs(37, {g, g, g})) << "Y " << Y;
    }
}

TEST_P(YuvToRgbKnownValues, SaturatedChromaClampsInEveryColumn) {
    // Y 255 with U = V = 255 drives R and B past 255, Y 0 with U = V = 0 below 0, in
    // every form; G lies inside the range there and is left to the reference sweeps.
    const std::vector<Out> hi = convertRow(*GetParam(), std::vector<Pixel>(37, {255, 255, 255}), 2);
    const std::vector<Out> lo = convertRow(*GetParam(), std::vector<Pixel>(37, {0, 0, 0}), 2);
    for (int x = 0; x < 37; ++x) {
        EXPECT_EQ(hi[std::size_t(x)].rgb.r, 255) << "column " << x;
        EXPECT_EQ(hi[std::size_t(x)].rgb.b, 255) << "column " << x;
        EXPECT_EQ(lo[std::size_t(x)].rgb.r, 0) << "column " << x;
        EXPECT_EQ(lo[std::size_t(x)].rgb.b, 0) << "column " << x;
    }
}

INSTANTIATE_TEST_SUITE_P(AllExports, YuvToRgbKnownValues, ::testing::ValuesIn(exportPointers()),
                         yuvtest::exportParamName);

// ---------------------------------------------------------------------------------
// Alpha
// ---------------------------------------------------------------------------------

TEST(YUVToRGB_8u_C3C4R, WritesAlphaIntoEveryPixel) {
    Rng rng(8);
    std::vector<Pixel> row;
    for (int x = 0; x < 19; ++x) row.push_back({rng.byte(), rng.byte(), rng.byte()});
    for (uint8_t alpha : {uint8_t(0), uint8_t(0x5A), uint8_t(255)}) {
        const std::vector<Out> out = convertRow(memberNamed("YUVToRGB_8u_C3C4R").ex, row, 3, alpha);
        for (int x = 0; x < 19; ++x) EXPECT_EQ(out[std::size_t(x)].alpha, alpha) << "column " << x;
    }
}

TEST(YUVToRGB_8u_AC4R, LeavesDestinationAlphaAsItWas) {
    yuvtest::expectDestinationAlphaKept(memberNamed("YUVToRGB_8u_AC4R").ex, true);
}

TEST(YUVToRGB_8u_AC4R, IgnoresSourceAlpha) { yuvtest::expectSourceAlphaIgnored(memberNamed("YUVToRGB_8u_AC4R").ex); }

// ---------------------------------------------------------------------------------
// Steps
// ---------------------------------------------------------------------------------

TEST(YUVToRGB_8u_P3C3R, ZeroSourceStepRepeatsTheRow) {
    const int w = 17, h = 4;
    Surface src = Surface::planar(w, h, 3, 0);
    Surface dst = Surface::packed(w, h, 3, w * 3 + 2);
    Rng rng(12);
    dst.fillRandom(rng);
    for (int c = 0; c < 3; ++c)
        src.image(c).fillRegion([&](int, int, int) { return uint8_t(kExample[std::size_t(c)]); });
    ASSERT_EQ(pxkiYUVToRGB_8u_P3C3R(src.constPlanes(), 0, dst.data(), dst.step(), PxkSize{w, h}), pxkOk);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            EXPECT_EQ(dst.at(x, y, 0), 170);
            EXPECT_EQ(dst.at(x, y, 1), 39);
            EXPECT_EQ(dst.at(x, y, 2), 225);
        }
    }
    EXPECT_TRUE(dst.guardsIntact());
    EXPECT_TRUE(src.unchanged());
}

// ---------------------------------------------------------------------------------
// Statuses: each null pointer, each bad size, the order of the checks; a failing call
// writes nothing.
// ---------------------------------------------------------------------------------

TEST(YUVToRGB_8u_C3R_Status, NullPointersThenSize) { yuvtest::packedStatusChecks(Layout::C3, pxkiYUVToRGB_8u_C3R); }
TEST(YUVToRGB_8u_AC4R_Status, NullPointersThenSize) { yuvtest::packedStatusChecks(Layout::AC4, pxkiYUVToRGB_8u_AC4R); }

TEST(YUVToRGB_8u_C3C4R_Status, NullPointersThenSize) {
    for (uint8_t alpha : {uint8_t(0), uint8_t(0xC8)}) {
        yuvtest::packedStatusChecks(Layout::C3, Layout::C4,
                                    [alpha](const uint8_t* s, int32_t ss, uint8_t* d, int32_t ds, PxkSize z) {
                                        return pxkiYUVToRGB_8u_C3C4R(s, ss, d, ds, z, alpha);
                                    });
    }
}

TEST(YUVToRGB_8u_P3C3R_Status, PointersThenSizeThenEntries) {
    yuvtest::twoStageStatusChecks(Layout::P3, Layout::C3, 0,
                                  [](const uint8_t*, const uint8_t* const* s, int32_t ss, uint8_t* d, uint8_t* const*,
                                     int32_t ds, PxkSize z) { return pxkiYUVToRGB_8u_P3C3R(s, ss, d, ds, z); });
}

TEST(YUVToRGB_8u_P3R_Status, ArraysThenSizeThenEntries) {
    yuvtest::twoStageStatusChecks(Layout::P3, Layout::P3, 3,
                                  [](const uint8_t*, const uint8_t* const* s, int32_t ss, uint8_t*, uint8_t* const* d,
                                     int32_t ds, PxkSize z) { return pxkiYUVToRGB_8u_P3R(s, ss, d, ds, z); });
}

// Unlike the studio-range P3C3R, which tests its entries before the size, this member
// reports a bad size before a null entry.
TEST(YUVToRGB_8u_StatusOrder, NullEntryAndZeroWidthReportTheSize) {
    StatusFixture f(Layout::P3, Layout::C3);
    const uint8_t* srcNull[3] = {f.src.constPlanes()[0], f.src.constPlanes()[1], nullptr};
    EXPECT_EQ(pxkiYUVToRGB_8u_P3C3R(srcNull, f.src.step(), f.dst.data(), f.dst.step(), PxkSize{0, 2}), pxkErrSize);
    EXPECT_EQ(pxkiYUVToRGB_8u_P3C3R(srcNull, f.src.step(), f.dst.data(), f.dst.step(), kValid), pxkErrNullPtr);
    EXPECT_TRUE(f.nothingWritten());
}

TEST(YUVToRGB_8u_Status, ValidCallsReportOk) {
    StatusFixture f(Layout::C3, Layout::C4);
    EXPECT_EQ(pxkiYUVToRGB_8u_C3C4R(f.src.data(), f.src.step(), f.dst.data(), f.dst.step(), kValid, 9), pxkOk);
    EXPECT_FALSE(f.dst.unchanged());
}

}  // namespace
