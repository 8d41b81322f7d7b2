// Full-resolution studio-range YCbCr -> RGB / BGR: the seven exports against the
// reference model, the known values, the choice of form by column, alpha,
// statuses and guards.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <vector>

#include "conversion_harness.h"
#include "pxkcc.h"
#include "reference_forms.h"

namespace {

using pxktest::Rng;
using pxktest::Surface;
using yuvtest::badSizes;
using yuvtest::ExportUnderTest;
using yuvtest::kValid;
using yuvtest::Layout;
using yuvtest::StatusFixture;

const std::vector<ExportUnderTest>& yccToRgbExports() {
    static const std::vector<ExportUnderTest> list = {
        {"YCbCrToRGB_8u_C3R", Layout::C3, Layout::C3, false,
         [](Surface& s, Surface& d, PxkSize z, uint8_t) {
             return pxkiYCbCrToRGB_8u_C3R(s.data(), s.step(), d.data(), d.step(), z);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t) {
             ref::yCbCrToRGB_C3R(s.data(), s.step(), d.data(), d.step(), w, h);
         }},
        {"YCbCrToRGB_8u_AC4R", Layout::AC4, Layout::AC4, true,
         [](Surface& s, Surface& d, PxkSize z, uint8_t) {
             return pxkiYCbCrToRGB_8u_AC4R(s.data(), s.step(), d.data(), d.step(), z);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t) {
             ref::yCbCrToRGB_AC4R(s.data(), s.step(), d.data(), d.step(), w, h);
         }},
        {"YCbCrToRGB_8u_P3R", Layout::P3, Layout::P3, false,
         [](Surface& s, Surface& d, PxkSize z, uint8_t) {
             return pxkiYCbCrToRGB_8u_P3R(s.constPlanes(), s.step(), d.planes(), d.step(), z);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t) {
             ref::yCbCrToRGB_P3R(s.constPlanes(), s.step(), d.planes(), d.step(), w, h);
         }},
        {"YCbCrToRGB_8u_P3C3R", Layout::P3, Layout::C3, false,
         [](Surface& s, Surface& d, PxkSize z, uint8_t) {
             return pxkiYCbCrToRGB_8u_P3C3R(s.constPlanes(), s.step(), d.data(), d.step(), z);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t) {
             ref::yCbCrToRGB_P3C3R(s.constPlanes(), s.step(), d.data(), d.step(), w, h);
         }},
        {"YCbCrToRGB_8u_P3C4R", Layout::P3, Layout::C4, false,
         [](Surface& s, Surface& d, PxkSize z, uint8_t a) {
             return pxkiYCbCrToRGB_8u_P3C4R(s.constPlanes(), s.step(), d.data(), d.step(), z, a);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t a) {
             ref::yCbCrToRGB_P3C4R(s.constPlanes(), s.step(), d.data(), d.step(), w, h, a);
         }},
        {"YCbCrToBGR_8u_P3C3R", Layout::P3, Layout::C3, false,
         [](Surface& s, Surface& d, PxkSize z, uint8_t) {
             return pxkiYCbCrToBGR_8u_P3C3R(s.constPlanes(), s.step(), d.data(), d.step(), z);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t) {
             ref::yCbCrToBGR_P3C3R(s.constPlanes(), s.step(), d.data(), d.step(), w, h);
         }},
        {"YCbCrToBGR_8u_P3C4R", Layout::P3, Layout::C4, false,
         [](Surface& s, Surface& d, PxkSize z, uint8_t a) {
             return pxkiYCbCrToBGR_8u_P3C4R(s.constPlanes(), s.step(), d.data(), d.step(), z, a);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t a) {
             ref::yCbCrToBGR_P3C4R(s.constPlanes(), s.step(), d.data(), d.step(), w, h, a);
         }},
    };
    return list;
}

const ExportUnderTest& exportNamed(const std::string& name) { return yuvtest::exportNamed(yccToRgbExports(), name); }

std::vector<const ExportUnderTest*> exportPointers() { return yuvtest::exportPointers(yccToRgbExports()); }

bool writesBgr(const ExportUnderTest& ex) { return ex.name.find("ToBGR") != std::string::npos; }

// ---------------------------------------------------------------------------------
// Reference comparison over all widths, heights and step layouts
// ---------------------------------------------------------------------------------

class YCbCrToRgbSweep : public ::testing::TestWithParam<yuvtest::SweepParam> {};

TEST_P(YCbCrToRgbSweep, MatchesReference) { yuvtest::sweepAgainstReference(*GetParam().ex, GetParam().plan); }

INSTANTIATE_TEST_SUITE_P(AllExports, YCbCrToRgbSweep, ::testing::ValuesIn(yuvtest::sweepParams(yccToRgbExports())),
                         yuvtest::sweepParamName);

class YCbCrToRgbDense : public ::testing::TestWithParam<const ExportUnderTest*> {};

TEST_P(YCbCrToRgbDense, VectorColumnsMatchReference) { yuvtest::denseAgainstReference(*GetParam(), 256); }
TEST_P(YCbCrToRgbDense, TailColumnsMatchReference) { yuvtest::denseAgainstReference(*GetParam(), 7); }
TEST_P(YCbCrToRgbDense, AnyAlignmentMatchesReference) { yuvtest::alignmentsAgainstReference(*GetParam()); }

INSTANTIATE_TEST_SUITE_P(AllExports, YCbCrToRgbDense, ::testing::ValuesIn(exportPointers()), yuvtest::exportParamName);

// ---------------------------------------------------------------------------------
// Running an export on given pixels
// ---------------------------------------------------------------------------------

using Pixel = std::array<int, 3>;  // Y, Cb, Cr as raw samples

// Output of one pixel, R, G, B whatever the export's byte order, and the alpha byte of
// a 4-byte destination (-1 for other layouts).
struct Out {
    ref::Rgb rgb;
    int alpha;
};

std::string show(const ref::Rgb& v) {
    return "(" + std::to_string(v.r) + ", " + std::to_string(v.g) + ", " + std::to_string(v.b) + ")";
}

uint8_t channelOf(const ref::Rgb& v, int c) { return c == 0 ? v.r : (c == 1 ? v.g : v.b); }

// Converts rows of the given pixels (all rows alike) with the export alone, checks the
// status and the guards, and returns the last row.
std::vector<Out> convertRow(const ExportUnderTest& ex, const std::vector<Pixel>& pixels, int height = 1,
                            uint8_t alpha = 0xA7, uint32_t seed = 1) {
    const int width = int(pixels.size());
    Surface dst = yuvtest::runOnRows(ex, pixels, height, alpha, seed);
    const bool bgr = writesBgr(ex);
    std::vector<Out> out;
    for (int x = 0; x < width; ++x) {
        const int y = height - 1;
        const uint8_t c0 = dst.at(x, y, 0), c1 = dst.at(x, y, 1), c2 = dst.at(x, y, 2);
        Out o{bgr ? ref::Rgb{c2, c1, c0} : ref::Rgb{c0, c1, c2}, -1};
        if (ex.dst == Layout::C4) o.alpha = dst.at(x, y, 3);
        out.push_back(o);
    }
    return out;
}

// ---------------------------------------------------------------------------------
// The forms themselves
// ---------------------------------------------------------------------------------

const ref::Rgb kBlack{0, 0, 0};
const ref::Rgb kWhite{255, 255, 255};

TEST(YCbCrToRgbForms, Y16NeutralIsBlackInEveryForm) {
    EXPECT_EQ(show(ref::roundedForm(16, 128, 128)), show(kBlack));
    EXPECT_EQ(show(ref::wideRoundedForm(16, 128, 128)), show(kBlack));
    EXPECT_EQ(show(ref::wideTruncatingForm(16, 128, 128)), show(kBlack));
    EXPECT_EQ(show(ref::highProductInverseForm(16, 128, 128)), show(kBlack));
}

TEST(YCbCrToRgbForms, Y235NeutralIsWhiteInTheRoundedForms) {
    EXPECT_EQ(show(ref::roundedForm(235, 128, 128)), show(kWhite));
    EXPECT_EQ(show(ref::wideRoundedForm(235, 128, 128)), show(kWhite));
    // Without rounding: (76284 * 235 - 1220544) >> 16 = 16706196 >> 16 = 254.
    EXPECT_EQ(show(ref::wideTruncatingForm(235, 128, 128)), show({254, 254, 254}));
    // h(9535, 219 * 128) = 4078; (4078 + 8) >> 4 = 255.
    EXPECT_EQ(show(ref::highProductInverseForm(235, 128, 128)), show(kWhite));
}

TEST(YCbCrToRgbForms, Y0AndY255NeutralClampInEveryForm) {
    for (ref::YccToRgbForm f :
         {ref::roundedForm, ref::wideRoundedForm, ref::wideTruncatingForm, ref::highProductInverseForm}) {
        EXPECT_EQ(show(f(0, 128, 128)), show(kBlack));
        EXPECT_EQ(show(f(255, 128, 128)), show(kWhite));
    }
}

TEST(YCbCrToRgbForms, Y17AndY18Neutral) {
    EXPECT_EQ(show(ref::wideTruncatingForm(17, 128, 128)), show({1, 1, 1}));  // 76284 >> 16
    EXPECT_EQ(show(ref::roundedForm(17, 128, 128)), show({1, 1, 1}));
    EXPECT_EQ(show(ref::wideRoundedForm(17, 128, 128)), show({1, 1, 1}));
    EXPECT_EQ(show(ref::wideTruncatingForm(18, 128, 128)), show({2, 2, 2}));
    EXPECT_EQ(show(ref::roundedForm(18, 128, 128)), show({2, 2, 2}));
}

// The truncating member never exceeds the wide rounded form and often lands one below.
TEST(YCbCrToRgbForms, TruncatingLandsAtOrOneBelowWideRounded) {
    long lower = 0, other = 0;
    for (int Y = 0; Y < 256; ++Y) {
        for (int Cb = 0; Cb < 256; ++Cb) {
            for (int Cr = 0; Cr < 256; ++Cr) {
                const ref::Rgb t = ref::wideTruncatingForm(Y, Cb, Cr);
                const ref::Rgb w = ref::wideRoundedForm(Y, Cb, Cr);
                for (int c = 0; c < 3; ++c) {
                    const int d = int(channelOf(t, c)) - int(channelOf(w, c));
                    lower += d == -1;
                    other += d != -1 && d != 0;
                }
            }
        }
    }
    EXPECT_EQ(other, 0);
    EXPECT_GT(lower, 3L * (1L << 24) / 10);  // over 10% of all samples
}

// Inputs at which two forms disagree, found by search: the first input met (in a
// scattered order over all inputs) for each wanted disagreement.
struct Disagreement {
    int channel;
    Pixel ycc;
};

std::vector<Disagreement> search(ref::YccToRgbForm a, ref::YccToRgbForm b, const std::vector<yuvtest::Wanted>& wanted) {
    const std::vector<yuvtest::Found> found =
        yuvtest::searchDisagreements(wanted, [a, b](int y, int cb, int cr, int c) {
            return int(channelOf(a(y, cb, cr), c)) - int(channelOf(b(y, cb, cr), c));
        });
    std::vector<Disagreement> out;
    for (const yuvtest::Found& f : found) {
        EXPECT_TRUE(f.found) << "no input where the forms differ in channel " << f.wanted.channel << " with sign "
                             << f.wanted.sign;
        if (f.found) out.push_back({f.wanted.channel, f.input});
    }
    return out;
}

const std::vector<Disagreement>& highProductVsRounded() {
    static const std::vector<Disagreement> d =
        search(ref::highProductInverseForm, ref::roundedForm, {{0, 0}, {1, 0}, {2, 0}});
    return d;
}
const std::vector<Disagreement>& wideVsRounded() {
    static const std::vector<Disagreement> d = search(ref::wideRoundedForm, ref::roundedForm, {{0, 0}, {1, 0}, {2, 0}});
    return d;
}
// The truncating member comes out lower.
const std::vector<Disagreement>& truncatingVsWide() {
    static const std::vector<Disagreement> d =
        search(ref::wideTruncatingForm, ref::wideRoundedForm, {{0, -1}, {1, -1}, {2, -1}});
    return d;
}

std::array<int, 3> countPerChannel(const std::vector<Disagreement>& ds) {
    std::array<int, 3> n{};
    for (const Disagreement& d : ds) ++n[std::size_t(d.channel)];
    return n;
}

TEST(YCbCrToRgbForms, SearchFindsEveryPairOfFormsDisagreeing) {
    // Every pair of forms used side by side disagrees somewhere in each channel.
    for (const auto* ds : {&highProductVsRounded(), &wideVsRounded(), &truncatingVsWide()}) {
        const std::array<int, 3> n = countPerChannel(*ds);
        for (int c = 0; c < 3; ++c) EXPECT_GE(n[std::size_t(c)], 1) << "channel " << c;
    }
    for (const Disagreement& d : highProductVsRounded()) {
        const auto [y, cb, cr] = d.ycc;
        EXPECT_NE(channelOf(ref::highProductInverseForm(y, cb, cr), d.channel),
                  channelOf(ref::roundedForm(y, cb, cr), d.channel));
    }
    for (const Disagreement& d : wideVsRounded()) {
        const auto [y, cb, cr] = d.ycc;
        EXPECT_NE(channelOf(ref::wideRoundedForm(y, cb, cr), d.channel),
                  channelOf(ref::roundedForm(y, cb, cr), d.channel));
    }
    for (const Disagreement& d : truncatingVsWide()) {
        const auto [y, cb, cr] = d.ycc;
        EXPECT_LT(channelOf(ref::wideTruncatingForm(y, cb, cr), d.channel),
                  channelOf(ref::wideRoundedForm(y, cb, cr), d.channel));
    }
}

std::vector<Disagreement> allDisagreements() {
    std::vector<Disagreement> all = highProductVsRounded();
    for (const auto* ds : {&wideVsRounded(), &truncatingVsWide()}) all.insert(all.end(), ds->begin(), ds->end());
    return all;
}

// A row of nine copies of each input: columns 0..7 must show `blockForm`, column 8
// `tailForm`.
void expectFormsByColumn(const ExportUnderTest& ex, const std::vector<Disagreement>& inputs,
                         ref::YccToRgbForm blockForm, ref::YccToRgbForm tailForm) {
    ASSERT_FALSE(inputs.empty());
    for (const Disagreement& d : inputs) {
        const auto [y, cb, cr] = d.ycc;
        SCOPED_TRACE(ex.name + " input (" + std::to_string(y) + ", " + std::to_string(cb) + ", " + std::to_string(cr) +
                     ")");
        const std::vector<Out> out = convertRow(ex, std::vector<Pixel>(9, d.ycc), 2);
        for (int x = 0; x < 8; ++x) {
            EXPECT_EQ(show(out[std::size_t(x)].rgb), show(blockForm(y, cb, cr))) << "column " << x;
        }
        EXPECT_EQ(show(out[8].rgb), show(tailForm(y, cb, cr))) << "column 8";
    }
}

TEST(YCbCrToRGB_8u_C3R, RoundedFormInEveryColumn) {
    expectFormsByColumn(exportNamed("YCbCrToRGB_8u_C3R"), allDisagreements(), ref::roundedForm, ref::roundedForm);
}
TEST(YCbCrToRGB_8u_P3C3R, RoundedFormInEveryColumn) {
    expectFormsByColumn(exportNamed("YCbCrToRGB_8u_P3C3R"), allDisagreements(), ref::roundedForm, ref::roundedForm);
}
TEST(YCbCrToBGR_8u_P3C3R, RoundedFormInEveryColumn) {
    expectFormsByColumn(exportNamed("YCbCrToBGR_8u_P3C3R"), allDisagreements(), ref::roundedForm, ref::roundedForm);
}
TEST(YCbCrToBGR_8u_P3C4R, RoundedFormInEveryColumn) {
    expectFormsByColumn(exportNamed("YCbCrToBGR_8u_P3C4R"), allDisagreements(), ref::roundedForm, ref::roundedForm);
}
TEST(YCbCrToRGB_8u_P3R, WideRoundedFormInEveryColumn) {
    expectFormsByColumn(exportNamed("YCbCrToRGB_8u_P3R"), allDisagreements(), ref::wideRoundedForm,
                        ref::wideRoundedForm);
}
TEST(YCbCrToRGB_8u_AC4R, WideTruncatingFormInEveryColumn) {
    expectFormsByColumn(exportNamed("YCbCrToRGB_8u_AC4R"), allDisagreements(), ref::wideTruncatingForm,
                        ref::wideTruncatingForm);
}
TEST(YCbCrToRGB_8u_P3C4R, HighProductInverseInBlocksRoundedInTail) {
    expectFormsByColumn(exportNamed("YCbCrToRGB_8u_P3C4R"), allDisagreements(), ref::highProductInverseForm,
                        ref::roundedForm);
}

// ---------------------------------------------------------------------------------
// Known values through the exports
// ---------------------------------------------------------------------------------

// Neutral chroma rows of 17 pixels (two blocks and a tail) of one Y value; every
// column must give `want` in all three channels.
void expectNeutral(const ExportUnderTest& ex, int Y, int want) {
    const std::vector<Out> out = convertRow(ex, std::vector<Pixel>(17, {Y, 128, 128}), 2);
    for (int x = 0; x < 17; ++x) {
        EXPECT_EQ(show(out[std::size_t(x)].rgb), show({uint8_t(want), uint8_t(want), uint8_t(want)}))
            << ex.name << " Y " << Y << " column " << x;
    }
}

class YCbCrToRgbKnownValues : public ::testing::TestWithParam<const ExportUnderTest*> {};

TEST_P(YCbCrToRgbKnownValues, Y16NeutralIsBlack) { expectNeutral(*GetParam(), 16, 0); }
TEST_P(YCbCrToRgbKnownValues, Y0NeutralIsBlack) { expectNeutral(*GetParam(), 0, 0); }
TEST_P(YCbCrToRgbKnownValues, Y255NeutralIsWhite) { expectNeutral(*GetParam(), 255, 255); }
TEST_P(YCbCrToRgbKnownValues, Y17NeutralIsOne) { expectNeutral(*GetParam(), 17, 1); }
TEST_P(YCbCrToRgbKnownValues, Y18NeutralIsTwo) { expectNeutral(*GetParam(), 18, 2); }
TEST_P(YCbCrToRgbKnownValues, Y235Neutral) {
    // White in the rounded forms (and in the high-product inverse form); 254 in the
    // truncating member.
    const ExportUnderTest& ex = *GetParam();
    expectNeutral(ex, 235, ex.name == "YCbCrToRGB_8u_AC4R" ? 254 : 255);
}

// Studio red (82, 90, 240), worked by hand (Cb - 128 = -38, Cr - 128 = 112):
//  rounded:         R = (76282*82 + 104593*112 - 1187744) >> 16 = 256 -> 255,
//                   G = (76282*82 + 25689*38 - 53279*112 - 1187744) >> 16 = 76314 >> 16 = 1,
//                   B = (76282*82 - 132184*38 - 1187744) >> 16 = 44388 >> 16 = 0;
//  wide rounded:    G = 76260 >> 16 = 1, B = 44444 >> 16 = 0, R clamps to 255;
//  wide truncating: G = 43492 >> 16 = 0, B = 11676 >> 16 = 0, R clamps to 255;
//  high-product:    y = h(9535, 66*128) = 1229; R = (1229 + 2859 + 8) >> 4 = 256 -> 255,
//                   G = (1229 - 1456 + 239 + 8) >> 4 = 1, B = (1229 - 1227 + 8) >> 4 = 0.
TEST_P(YCbCrToRgbKnownValues, StudioRedInByteOrder) {
    const ExportUnderTest& ex = *GetParam();
    const int width = 10;  // one block of 8 and two tail pixels
    Rng rng(3);
    Surface src = yuvtest::makeSurface(ex.src, width, 1, int(yuvtest::rowBytesOf(ex.src, width)));
    Surface dst = yuvtest::makeSurface(ex.dst, width, 1, int(yuvtest::rowBytesOf(ex.dst, width)));
    src.fillRandom(rng);
    dst.fillRandom(rng);
    for (int x = 0; x < width; ++x) {
        src.at(x, 0, 0) = 82;
        src.at(x, 0, 1) = 90;
        src.at(x, 0, 2) = 240;
    }
    ASSERT_EQ(ex.call(src, dst, PxkSize{width, 1}, 0), pxkOk);
    const int green = ex.name == "YCbCrToRGB_8u_AC4R" ? 0 : 1;
    // Bytes 0, 1, 2 of a packed pixel, or planes 0, 1, 2.
    const std::array<int, 3> want =
        writesBgr(ex) ? std::array<int, 3>{0, green, 255} : std::array<int, 3>{255, green, 0};
    for (int x = 0; x < width; ++x) {
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(dst.at(x, 0, c), want[std::size_t(c)]) << "column " << x << " channel " << c;
    }
}

INSTANTIATE_TEST_SUITE_P(AllExports, YCbCrToRgbKnownValues, ::testing::ValuesIn(exportPointers()),
                         yuvtest::exportParamName);

TEST(YCbCrToRGB_8u_P3C4R, WidthNineWritesAlphaEverywhereAndTailIsRounded) {
    const ExportUnderTest& ex = exportNamed("YCbCrToRGB_8u_P3C4R");
    ASSERT_FALSE(highProductVsRounded().empty());
    for (const Disagreement& d : highProductVsRounded()) {
        const auto [y, cb, cr] = d.ycc;
        ASSERT_NE(ref::highProductInverseForm(y, cb, cr), ref::roundedForm(y, cb, cr));
        for (uint8_t alpha : {uint8_t(0), uint8_t(0x5A), uint8_t(255)}) {
            const std::vector<Out> out = convertRow(ex, std::vector<Pixel>(9, d.ycc), 1, alpha);
            for (int x = 0; x < 9; ++x) EXPECT_EQ(out[std::size_t(x)].alpha, alpha) << "column " << x;
            EXPECT_EQ(show(out[0].rgb), show(ref::highProductInverseForm(y, cb, cr)));
            EXPECT_EQ(show(out[7].rgb), show(ref::highProductInverseForm(y, cb, cr)));
            EXPECT_EQ(show(out[8].rgb), show(ref::roundedForm(y, cb, cr)));
        }
    }
}

TEST(YCbCrToBGR_8u_P3C4R, WritesAlphaEverywhere) {
    Rng rng(8);
    std::vector<Pixel> row;
    for (int x = 0; x < 19; ++x) row.push_back({rng.byte(), rng.byte(), rng.byte()});
    for (uint8_t alpha : {uint8_t(0), uint8_t(0x5A), uint8_t(255)}) {
        const std::vector<Out> out = convertRow(exportNamed("YCbCrToBGR_8u_P3C4R"), row, 3, alpha);
        for (int x = 0; x < 19; ++x) EXPECT_EQ(out[std::size_t(x)].alpha, alpha) << "column " << x;
    }
}

TEST(YCbCrToRGB_8u_AC4R, LeavesDestinationAlphaAsItWas) {
    yuvtest::expectDestinationAlphaKept(exportNamed("YCbCrToRGB_8u_AC4R"), false);
}

TEST(YCbCrToRGB_8u_AC4R, IgnoresSourceAlpha) { yuvtest::expectSourceAlphaIgnored(exportNamed("YCbCrToRGB_8u_AC4R")); }

TEST(YCbCrToRGB_8u_AC4R, OftenOneBelowTheRoundedExports) {
    // The same random image through the truncating member and the planar wide rounded
    // export: never above, and one below in many samples.
    const int w = 64, h = 4;
    Rng rng(1234);
    std::vector<Pixel> row;
    for (int x = 0; x < w; ++x) row.push_back({rng.byte(), rng.byte(), rng.byte()});
    const std::vector<Out> trunc = convertRow(exportNamed("YCbCrToRGB_8u_AC4R"), row, h);
    const std::vector<Out> wide = convertRow(exportNamed("YCbCrToRGB_8u_P3R"), row, h);
    int below = 0;
    for (int x = 0; x < w; ++x) {
        for (int c = 0; c < 3; ++c) {
            const int d = int(channelOf(trunc[std::size_t(x)].rgb, c)) - int(channelOf(wide[std::size_t(x)].rgb, c));
            EXPECT_TRUE(d == 0 || d == -1) << "column " << x << " channel " << c << " difference " << d;
            below += d == -1;
        }
    }
    EXPECT_GT(below, 0);
}

// ---------------------------------------------------------------------------------
// Statuses
// ---------------------------------------------------------------------------------

TEST(YCbCrToRGB_8u_C3R_Status, NullPointersThenSize) { yuvtest::packedStatusChecks(Layout::C3, pxkiYCbCrToRGB_8u_C3R); }
TEST(YCbCrToRGB_8u_AC4R_Status, NullPointersThenSize) {
    yuvtest::packedStatusChecks(Layout::AC4, pxkiYCbCrToRGB_8u_AC4R);
}

using PlanarToPacked = std::function<PxkResult(const uint8_t* const*, int32_t, uint8_t*, int32_t, PxkSize)>;

// src array, dst, each src entry, then size: a null entry wins over a bad size.
void planarToPackedStatusChecks(Layout dstLayout, const PlanarToPacked& fn) {
    StatusFixture f(Layout::P3, dstLayout);
    const int ss = f.src.step(), ds = f.dst.step();
    const uint8_t* const* in = f.src.constPlanes();
    EXPECT_EQ(fn(nullptr, ss, f.dst.data(), ds, kValid), pxkErrNullPtr);
    EXPECT_EQ(fn(in, ss, nullptr, ds, kValid), pxkErrNullPtr);
    EXPECT_TRUE(f.nothingWritten());
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE("null src entry " + std::to_string(i));
        const uint8_t* withNull[3] = {in[0], in[1], in[2]};
        withNull[i] = nullptr;
        EXPECT_EQ(fn(withNull, ss, f.dst.data(), ds, kValid), pxkErrNullPtr);
        EXPECT_EQ(fn(withNull, ss, f.dst.data(), ds, PxkSize{0, 2}), pxkErrNullPtr);
        EXPECT_EQ(fn(withNull, ss, f.dst.data(), ds, PxkSize{9, -4}), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
    for (const PxkSize& z : badSizes()) {
        SCOPED_TRACE("size " + std::to_string(z.width) + "x" + std::to_string(z.height));
        EXPECT_EQ(fn(in, ss, f.dst.data(), ds, z), pxkErrSize);
        EXPECT_EQ(fn(nullptr, ss, f.dst.data(), ds, z), pxkErrNullPtr);
        EXPECT_EQ(fn(in, ss, nullptr, ds, z), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
}

TEST(YCbCrToRGB_8u_P3C3R_Status, PointersAndEntriesBeforeSize) {
    planarToPackedStatusChecks(Layout::C3, pxkiYCbCrToRGB_8u_P3C3R);
}
TEST(YCbCrToBGR_8u_P3C3R_Status, PointersAndEntriesBeforeSize) {
    planarToPackedStatusChecks(Layout::C3, pxkiYCbCrToBGR_8u_P3C3R);
}
TEST(YCbCrToRGB_8u_P3C4R_Status, PointersAndEntriesBeforeSize) {
    planarToPackedStatusChecks(Layout::C4, [](const uint8_t* const* s, int32_t ss, uint8_t* d, int32_t ds, PxkSize z) {
        return pxkiYCbCrToRGB_8u_P3C4R(s, ss, d, ds, z, 0x33);
    });
}
TEST(YCbCrToBGR_8u_P3C4R_Status, PointersAndEntriesBeforeSize) {
    planarToPackedStatusChecks(Layout::C4, [](const uint8_t* const* s, int32_t ss, uint8_t* d, int32_t ds, PxkSize z) {
        return pxkiYCbCrToBGR_8u_P3C4R(s, ss, d, ds, z, 0x33);
    });
}

// P3R: the two array pointers, then size, then the entries: a bad size wins over a
// null entry.
TEST(YCbCrToRGB_8u_P3R_Status, ArraysThenSizeThenEntries) {
    StatusFixture f(Layout::P3, Layout::P3);
    const int ss = f.src.step(), ds = f.dst.step();
    const uint8_t* const* in = f.src.constPlanes();
    uint8_t* const* out = f.dst.planes();
    EXPECT_EQ(pxkiYCbCrToRGB_8u_P3R(nullptr, ss, out, ds, kValid), pxkErrNullPtr);
    EXPECT_EQ(pxkiYCbCrToRGB_8u_P3R(in, ss, nullptr, ds, kValid), pxkErrNullPtr);
    EXPECT_EQ(pxkiYCbCrToRGB_8u_P3R(nullptr, ss, out, ds, PxkSize{0, 2}), pxkErrNullPtr);
    EXPECT_EQ(pxkiYCbCrToRGB_8u_P3R(in, ss, nullptr, ds, PxkSize{9, 0}), pxkErrNullPtr);
    EXPECT_TRUE(f.nothingWritten());
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE("null entry " + std::to_string(i));
        const uint8_t* srcNull[3] = {in[0], in[1], in[2]};
        srcNull[i] = nullptr;
        uint8_t* dstNull[3] = {out[0], out[1], out[2]};
        dstNull[i] = nullptr;
        EXPECT_EQ(pxkiYCbCrToRGB_8u_P3R(srcNull, ss, out, ds, kValid), pxkErrNullPtr);
        EXPECT_EQ(pxkiYCbCrToRGB_8u_P3R(in, ss, dstNull, ds, kValid), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
        EXPECT_EQ(pxkiYCbCrToRGB_8u_P3R(srcNull, ss, out, ds, PxkSize{0, 2}), pxkErrSize);
        EXPECT_EQ(pxkiYCbCrToRGB_8u_P3R(in, ss, dstNull, ds, PxkSize{9, 0}), pxkErrSize);
        EXPECT_EQ(pxkiYCbCrToRGB_8u_P3R(srcNull, ss, dstNull, ds, PxkSize{-3, 2}), pxkErrSize);
        EXPECT_TRUE(f.nothingWritten());
    }
    for (const PxkSize& z : badSizes()) {
        SCOPED_TRACE("size " + std::to_string(z.width) + "x" + std::to_string(z.height));
        EXPECT_EQ(pxkiYCbCrToRGB_8u_P3R(in, ss, out, ds, z), pxkErrSize);
        EXPECT_TRUE(f.nothingWritten());
    }
}

}  // namespace
