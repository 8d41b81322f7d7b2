// Full-resolution RGB -> studio-range YCbCr: the five exports against the reference
// model, the known values, the choice of form by column, statuses and guards.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <vector>

#include "conversion_harness.h"
#include "pxkcc.h"
#include "reference_forms.h"

namespace {

using pxktest::GuardOptions;
using pxktest::Rng;
using pxktest::Surface;
using yuvtest::badSizes;
using yuvtest::ExportUnderTest;
using yuvtest::kValid;
using yuvtest::Layout;
using yuvtest::StatusFixture;

const std::vector<ExportUnderTest>& rgbToYccExports() {
    static const std::vector<ExportUnderTest> list = {
        {"RGBToYCbCr_8u_C3R", Layout::C3, Layout::C3, false,
         [](Surface& s, Surface& d, PxkSize z, uint8_t) {
             return pxkiRGBToYCbCr_8u_C3R(s.data(), s.step(), d.data(), d.step(), z);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t) {
             ref::rgbToYCbCr_C3R(s.data(), s.step(), d.data(), d.step(), w, h);
         }},
        {"RGBToYCbCr_8u_AC4R", Layout::AC4, Layout::AC4, true,
         [](Surface& s, Surface& d, PxkSize z, uint8_t) {
             return pxkiRGBToYCbCr_8u_AC4R(s.data(), s.step(), d.data(), d.step(), z);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t) {
             ref::rgbToYCbCr_AC4R(s.data(), s.step(), d.data(), d.step(), w, h);
         }},
        {"RGBToYCbCr_8u_C3P3R", Layout::C3, Layout::P3, false,
         [](Surface& s, Surface& d, PxkSize z, uint8_t) {
             return pxkiRGBToYCbCr_8u_C3P3R(s.data(), s.step(), d.planes(), d.step(), z);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t) {
             ref::rgbToYCbCr_C3P3R(s.data(), s.step(), d.planes(), d.step(), w, h);
         }},
        {"RGBToYCbCr_8u_AC4P3R", Layout::AC4, Layout::P3, false,
         [](Surface& s, Surface& d, PxkSize z, uint8_t) {
             return pxkiRGBToYCbCr_8u_AC4P3R(s.data(), s.step(), d.planes(), d.step(), z);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t) {
             ref::rgbToYCbCr_AC4P3R(s.data(), s.step(), d.planes(), d.step(), w, h);
         }},
        {"RGBToYCbCr_8u_P3R", Layout::P3, Layout::P3, false,
         [](Surface& s, Surface& d, PxkSize z, uint8_t) {
             return pxkiRGBToYCbCr_8u_P3R(s.constPlanes(), s.step(), d.planes(), d.step(), z);
         },
         [](Surface& s, Surface& d, int w, int h, uint8_t) {
             ref::rgbToYCbCr_P3R(s.constPlanes(), s.step(), d.planes(), d.step(), w, h);
         }},
    };
    return list;
}

const ExportUnderTest& exportNamed(const std::string& name) { return yuvtest::exportNamed(rgbToYccExports(), name); }

// ---------------------------------------------------------------------------------
// Reference comparison over all widths, heights and step layouts
// ---------------------------------------------------------------------------------

class RgbToYCbCrSweep : public ::testing::TestWithParam<yuvtest::SweepParam> {};

TEST_P(RgbToYCbCrSweep, MatchesReference) { yuvtest::sweepAgainstReference(*GetParam().ex, GetParam().plan); }

INSTANTIATE_TEST_SUITE_P(AllExports, RgbToYCbCrSweep, ::testing::ValuesIn(yuvtest::sweepParams(rgbToYccExports())),
                         yuvtest::sweepParamName);

class RgbToYCbCrDense : public ::testing::TestWithParam<const ExportUnderTest*> {};

TEST_P(RgbToYCbCrDense, VectorColumnsMatchReference) { yuvtest::denseAgainstReference(*GetParam(), 256); }
TEST_P(RgbToYCbCrDense, TailColumnsMatchReference) { yuvtest::denseAgainstReference(*GetParam(), 7); }
TEST_P(RgbToYCbCrDense, AnyAlignmentMatchesReference) { yuvtest::alignmentsAgainstReference(*GetParam()); }

std::vector<const ExportUnderTest*> exportPointers() { return yuvtest::exportPointers(rgbToYccExports()); }

INSTANTIATE_TEST_SUITE_P(AllExports, RgbToYCbCrDense, ::testing::ValuesIn(exportPointers()), yuvtest::exportParamName);

// ---------------------------------------------------------------------------------
// Running an export on given pixels
// ---------------------------------------------------------------------------------

using Pixel = std::array<int, 3>;

// Converts rows of the given pixels (all rows alike) with the export alone, checks the
// status and the guards, and returns the output of row `height - 1` as Y, Cb, Cr.
std::vector<ref::Ycc> convertRow(const ExportUnderTest& ex, const std::vector<Pixel>& pixels, int height = 1,
                                 uint32_t seed = 1) {
    const int width = int(pixels.size());
    Surface dst = yuvtest::runOnRows(ex, pixels, height, 0, seed);
    std::vector<ref::Ycc> out;
    for (int x = 0; x < width; ++x) {
        out.push_back({dst.at(x, height - 1, 0), dst.at(x, height - 1, 1), dst.at(x, height - 1, 2)});
    }
    return out;
}

std::string show(const ref::Ycc& v) {
    return "(" + std::to_string(v.y) + ", " + std::to_string(v.cb) + ", " + std::to_string(v.cr) + ")";
}

uint8_t channelOf(const ref::Ycc& v, int c) { return c == 0 ? v.y : (c == 1 ? v.cb : v.cr); }

// ---------------------------------------------------------------------------------
// The forms themselves: known values and the ways in which they differ
// ---------------------------------------------------------------------------------

struct Primary {
    const char* name;
    Pixel rgb;
    ref::Ycc ycc;
};

const std::vector<Primary>& primaries() {
    static const std::vector<Primary> p = {
        {"black", {0, 0, 0}, {16, 128, 128}},  {"white", {255, 255, 255}, {235, 128, 128}},
        {"red", {255, 0, 0}, {82, 90, 240}},   {"green", {0, 255, 0}, {145, 54, 34}},
        {"blue", {0, 0, 255}, {41, 240, 110}},
    };
    return p;
}

TEST(RgbToYCbCrForms, PrimariesAgreeInAllThreeForms) {
    for (const Primary& p : primaries()) {
        const auto [r, g, b] = p.rgb;
        EXPECT_EQ(show(ref::directForm(r, g, b)), show(p.ycc)) << p.name << " direct";
        EXPECT_EQ(show(ref::pairedForm(r, g, b)), show(p.ycc)) << p.name << " paired";
        EXPECT_EQ(show(ref::highProductForm(r, g, b)), show(p.ycc)) << p.name << " high-product";
    }
}

TEST(RgbToYCbCrForms, Example100_150_200) {
    EXPECT_EQ(show(ref::directForm(100, 150, 200)), show({137, 157, 103}));
    EXPECT_EQ(show(ref::pairedForm(100, 150, 200)), show({137, 157, 102}));
    EXPECT_EQ(show(ref::highProductForm(100, 150, 200)), show({137, 157, 102}));
}

// Over all inputs: the paired form is one lower than the direct form in about 3% of
// pixels per channel and, rarely, one higher in Cb; the high-product form is one lower
// in under about 1%, never higher. No other differences occur.
TEST(RgbToYCbCrForms, DifferFromDirectFormByAtMostOne) {
    std::array<long, 3> pairedLow{}, pairedHigh{}, hpLow{}, hpHigh{};
    long larger = 0;
    for (int R = 0; R < 256; ++R) {
        for (int G = 0; G < 256; ++G) {
            for (int B = 0; B < 256; ++B) {
                const ref::Ycc d = ref::directForm(R, G, B);
                const ref::Ycc p = ref::pairedForm(R, G, B);
                const ref::Ycc h = ref::highProductForm(R, G, B);
                for (int c = 0; c < 3; ++c) {
                    const int dp = int(channelOf(p, c)) - int(channelOf(d, c));
                    const int dh = int(channelOf(h, c)) - int(channelOf(d, c));
                    pairedLow[std::size_t(c)] += dp == -1;
                    pairedHigh[std::size_t(c)] += dp == 1;
                    hpLow[std::size_t(c)] += dh == -1;
                    hpHigh[std::size_t(c)] += dh == 1;
                    larger += (dp < -1 || dp > 1 || dh < -1 || dh > 1);
                }
            }
        }
    }
    const double n = double(1 << 24);
    EXPECT_EQ(larger, 0);
    for (int c = 0; c < 3; ++c) {
        SCOPED_TRACE("channel " + std::to_string(c));
        EXPECT_GT(pairedLow[std::size_t(c)] / n, 0.02);
        EXPECT_LT(pairedLow[std::size_t(c)] / n, 0.05);
        EXPECT_GT(hpLow[std::size_t(c)] / n, 0.002);
        EXPECT_LT(hpLow[std::size_t(c)] / n, 0.012);
        EXPECT_EQ(hpHigh[std::size_t(c)], 0);
    }
    EXPECT_EQ(pairedHigh[0], 0);
    EXPECT_GT(pairedHigh[1], 0);  // the rare Cb one higher
    EXPECT_LT(pairedHigh[1] / n, 0.001);
    EXPECT_EQ(pairedHigh[2], 0);
}

// Inputs at which a form and the direct form disagree, found by search: the first
// input met (in a scattered order over all inputs) for each wanted disagreement.
struct Disagreement {
    int channel;
    Pixel rgb;
};

std::vector<Disagreement> searchAgainstDirect(ref::RgbToYccForm form, const std::vector<yuvtest::Wanted>& wanted) {
    const std::vector<yuvtest::Found> found = yuvtest::searchDisagreements(wanted, [form](int r, int g, int b, int c) {
        return int(channelOf(form(r, g, b), c)) - int(channelOf(ref::directForm(r, g, b), c));
    });
    std::vector<Disagreement> out;
    for (const yuvtest::Found& f : found) {
        EXPECT_TRUE(f.found) << "no input where the forms differ in channel " << f.wanted.channel << " with sign "
                             << f.wanted.sign;
        if (f.found) out.push_back({f.wanted.channel, f.input});
    }
    return out;
}

// The paired form: one lower in each channel, and in Cb also one higher.
const std::vector<Disagreement>& pairedDisagreements() {
    static const std::vector<Disagreement> d =
        searchAgainstDirect(ref::pairedForm, {{0, -1}, {1, -1}, {2, -1}, {1, +1}});
    return d;
}
// The high-product form: one lower in each channel.
const std::vector<Disagreement>& highProductDisagreements() {
    static const std::vector<Disagreement> d = searchAgainstDirect(ref::highProductForm, {{0, -1}, {1, -1}, {2, -1}});
    return d;
}

TEST(RgbToYCbCrForms, SearchFindsPairedAndDirectDisagreeing) {
    const std::vector<Disagreement>& found = pairedDisagreements();
    ASSERT_EQ(found.size(), 4u);
    for (std::size_t i = 0; i < found.size(); ++i) {
        const auto [r, g, b] = found[i].rgb;
        const int d = int(channelOf(ref::pairedForm(r, g, b), found[i].channel)) -
                      int(channelOf(ref::directForm(r, g, b), found[i].channel));
        EXPECT_EQ(d, i < 3 ? -1 : +1) << "channel " << found[i].channel;
    }
}

TEST(RgbToYCbCrForms, SearchFindsHighProductAndDirectDisagreeing) {
    const std::vector<Disagreement>& found = highProductDisagreements();
    ASSERT_EQ(found.size(), 3u);
    for (const Disagreement& d : found) {
        const auto [r, g, b] = d.rgb;
        EXPECT_EQ(int(channelOf(ref::highProductForm(r, g, b), d.channel)) -
                      int(channelOf(ref::directForm(r, g, b), d.channel)),
                  -1)
            << "channel " << d.channel;
    }
}

// A row of nine copies of each disagreeing input: columns 0..7 must show `blockForm`,
// column 8 the direct form.
void expectFormsByColumn(const ExportUnderTest& ex, const std::vector<Disagreement>& inputs,
                         ref::RgbToYccForm blockForm) {
    ASSERT_FALSE(inputs.empty());
    for (const Disagreement& d : inputs) {
        const auto [r, g, b] = d.rgb;
        SCOPED_TRACE(ex.name + " input (" + std::to_string(r) + ", " + std::to_string(g) + ", " + std::to_string(b) +
                     ")");
        const std::vector<ref::Ycc> out = convertRow(ex, std::vector<Pixel>(9, d.rgb), 2);
        for (int x = 0; x < 8; ++x) EXPECT_EQ(show(out[std::size_t(x)]), show(blockForm(r, g, b))) << "column " << x;
        EXPECT_EQ(show(out[8]), show(ref::directForm(r, g, b))) << "column 8";
    }
}

TEST(RGBToYCbCr_8u_C3R, PairedFormInBlocksDirectFormInTail) {
    expectFormsByColumn(exportNamed("RGBToYCbCr_8u_C3R"), pairedDisagreements(), ref::pairedForm);
}

TEST(RGBToYCbCr_8u_C3P3R, HighProductFormInBlocksDirectFormInTail) {
    expectFormsByColumn(exportNamed("RGBToYCbCr_8u_C3P3R"), highProductDisagreements(), ref::highProductForm);
}

TEST(RGBToYCbCr_8u_AC4P3R, HighProductFormInBlocksDirectFormInTail) {
    expectFormsByColumn(exportNamed("RGBToYCbCr_8u_AC4P3R"), highProductDisagreements(), ref::highProductForm);
}

TEST(RGBToYCbCr_8u_AC4R, DirectFormInEveryColumn) {
    std::vector<Disagreement> inputs = pairedDisagreements();
    for (const Disagreement& d : highProductDisagreements()) inputs.push_back(d);
    expectFormsByColumn(exportNamed("RGBToYCbCr_8u_AC4R"), inputs, ref::directForm);
}

TEST(RGBToYCbCr_8u_P3R, DirectFormInEveryColumn) {
    std::vector<Disagreement> inputs = pairedDisagreements();
    for (const Disagreement& d : highProductDisagreements()) inputs.push_back(d);
    expectFormsByColumn(exportNamed("RGBToYCbCr_8u_P3R"), inputs, ref::directForm);
}

// ---------------------------------------------------------------------------------
// Known values through the exports
// ---------------------------------------------------------------------------------

class RgbToYCbCrKnownValues : public ::testing::TestWithParam<const ExportUnderTest*> {};

TEST_P(RgbToYCbCrKnownValues, PrimariesInBlockAndTailColumns) {
    const ExportUnderTest& ex = *GetParam();
    for (const Primary& p : primaries()) {
        const std::vector<ref::Ycc> out = convertRow(ex, std::vector<Pixel>(17, p.rgb), 2);
        for (int x = 0; x < 17; ++x) EXPECT_EQ(show(out[std::size_t(x)]), show(p.ycc)) << p.name << " column " << x;
    }
}

// A row mixing the five primaries, so that neighbouring pixels differ in each block.
TEST_P(RgbToYCbCrKnownValues, MixedPrimariesRow) {
    const ExportUnderTest& ex = *GetParam();
    std::vector<Pixel> row;
    std::vector<ref::Ycc> want;
    for (int x = 0; x < 21; ++x) {
        const Primary& p = primaries()[std::size_t(x * 3 % 5)];
        row.push_back(p.rgb);
        want.push_back(p.ycc);
    }
    const std::vector<ref::Ycc> out = convertRow(ex, row, 3);
    for (int x = 0; x < 21; ++x) EXPECT_EQ(show(out[std::size_t(x)]), show(want[std::size_t(x)])) << "column " << x;
}

INSTANTIATE_TEST_SUITE_P(AllExports, RgbToYCbCrKnownValues, ::testing::ValuesIn(exportPointers()),
                         yuvtest::exportParamName);

// Cr of a row of `width` pixels of 100, 150, 200; Y is 137 and Cb 157 throughout.
std::vector<int> crOfExampleRow(const std::string& name, int width) {
    const std::vector<ref::Ycc> out =
        convertRow(exportNamed(name), std::vector<Pixel>(std::size_t(width), {100, 150, 200}));
    std::vector<int> cr;
    for (const ref::Ycc& v : out) {
        EXPECT_EQ(v.y, 137);
        EXPECT_EQ(v.cb, 157);
        cr.push_back(v.cr);
    }
    return cr;
}

TEST(RGBToYCbCr_8u_C3R, NinePixelRowGivesCr102ThenTail103) {
    EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_C3R", 9), (std::vector<int>{102, 102, 102, 102, 102, 102, 102, 102, 103}));
}

TEST(RGBToYCbCr_8u_C3R, WidthSevenIsAllDirectForm) {
    EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_C3R", 7), (std::vector<int>{103, 103, 103, 103, 103, 103, 103}));
}

TEST(RGBToYCbCr_8u_C3R, BlockBoundaryFollowsWidth) {
    // 15 pixels: one block of 8, a tail of 7. 16: two blocks. 17: two blocks and one.
    std::vector<int> w15(15, 103), w16(16, 102), w17(17, 102);
    std::fill(w15.begin(), w15.begin() + 8, 102);
    w17[16] = 103;
    EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_C3R", 15), w15);
    EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_C3R", 16), w16);
    EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_C3R", 17), w17);
}

TEST(RGBToYCbCr_8u_C3P3R, NinePixelRowGivesCr102ThenTail103) {
    EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_C3P3R", 9),
              (std::vector<int>{102, 102, 102, 102, 102, 102, 102, 102, 103}));
}

TEST(RGBToYCbCr_8u_AC4P3R, NinePixelRowGivesCr102ThenTail103) {
    EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_AC4P3R", 9),
              (std::vector<int>{102, 102, 102, 102, 102, 102, 102, 102, 103}));
}

TEST(RGBToYCbCr_8u_AC4R, NinePixelRowIsAllDirectForm) {
    EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_AC4R", 9), std::vector<int>(9, 103));
}

TEST(RGBToYCbCr_8u_P3R, NinePixelRowIsAllDirectForm) {
    EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_P3R", 9), std::vector<int>(9, 103));
}

TEST(RGBToYCbCr_8u_C3R, WidthBelowEightIsAllDirectForm) {
    for (int w = 1; w < 8; ++w) {
        EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_C3R", w), std::vector<int>(std::size_t(w), 103)) << "width " << w;
        EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_C3P3R", w), std::vector<int>(std::size_t(w), 103)) << "width " << w;
        EXPECT_EQ(crOfExampleRow("RGBToYCbCr_8u_AC4P3R", w), std::vector<int>(std::size_t(w), 103)) << "width " << w;
    }
}

TEST(RGBToYCbCr_8u_AC4R, LeavesDestinationAlphaAsItWas) {
    yuvtest::expectDestinationAlphaKept(exportNamed("RGBToYCbCr_8u_AC4R"), false);
}

// The fourth byte of an AC4 source does not take part in the conversion.
TEST(RGBToYCbCr_8u_AC4R, IgnoresSourceAlpha) { yuvtest::expectSourceAlphaIgnored(exportNamed("RGBToYCbCr_8u_AC4R")); }
TEST(RGBToYCbCr_8u_AC4P3R, IgnoresSourceAlpha) {
    yuvtest::expectSourceAlphaIgnored(exportNamed("RGBToYCbCr_8u_AC4P3R"));
}

TEST(RGBToYCbCr_8u_P3R, DiffersFromC3RWhereTheFormsDisagree) {
    // One image, converted by both: the first pixels are inputs at which the paired and
    // direct forms disagree, the rest random.
    const int w = 32, h = 2;
    Rng rng(2024);
    std::vector<Pixel> pixels;
    for (const Disagreement& d : pairedDisagreements()) pixels.push_back(d.rgb);
    while (int(pixels.size()) < w) pixels.push_back({rng.byte(), rng.byte(), rng.byte()});
    const std::vector<ref::Ycc> packed = convertRow(exportNamed("RGBToYCbCr_8u_C3R"), pixels, h);
    const std::vector<ref::Ycc> planar = convertRow(exportNamed("RGBToYCbCr_8u_P3R"), pixels, h);
    int differing = 0;
    for (int x = 0; x < w; ++x) {
        const auto [r, g, b] = pixels[std::size_t(x)];
        EXPECT_EQ(show(packed[std::size_t(x)]), show(ref::pairedForm(r, g, b))) << "C3R column " << x;
        EXPECT_EQ(show(planar[std::size_t(x)]), show(ref::directForm(r, g, b))) << "P3R column " << x;
        differing += packed[std::size_t(x)] != planar[std::size_t(x)];
    }
    EXPECT_GE(differing, int(pairedDisagreements().size()));
}

TEST(RGBToYCbCr_8u_C3R, NegativeStepRunsDownwardInMemory) {
    yuvtest::expectRowsRunDownward(exportNamed("RGBToYCbCr_8u_C3R"), {16, 128, 128}, {235, 128, 128}, false);
}

TEST(RGBToYCbCr_8u_C3R, ZeroDestinationStepKeepsTheLastRow) {
    // Three source rows of different colours, one destination row: the bottom row wins.
    const int w = 10, h = 3;
    Surface src = Surface::packed(w, h, 3, w * 3);
    Surface dst = Surface::packed(w, h, 3, 0);
    Rng rng(11);
    dst.fillRandom(rng);
    const Pixel rows[3] = {{0, 0, 0}, {255, 0, 0}, {0, 0, 255}};
    src.image(0).fillRegion([&](int, int y, int c) { return uint8_t(rows[y][std::size_t(c)]); });
    ASSERT_EQ(pxkiRGBToYCbCr_8u_C3R(src.data(), src.step(), dst.data(), 0, PxkSize{w, h}), pxkOk);
    for (int x = 0; x < w; ++x) {
        EXPECT_EQ(dst.at(x, 0, 0), 41) << x;  // blue: 41, 240, 110
        EXPECT_EQ(dst.at(x, 0, 1), 240) << x;
        EXPECT_EQ(dst.at(x, 0, 2), 110) << x;
    }
    EXPECT_TRUE(dst.guardsIntact());
}

TEST(RGBToYCbCr_8u_P3R, ZeroSourceStepRepeatsTheRow) {
    // One source row read for every destination row.
    const int w = 11, h = 4;
    Surface src = Surface::planar(w, h, 3, 0);
    Surface dst = Surface::planar(w, h, 3, w + 2);
    Rng rng(12);
    dst.fillRandom(rng);
    const Pixel green{0, 255, 0};
    for (int c = 0; c < 3; ++c) src.image(c).fillRegion([&](int, int, int) { return uint8_t(green[std::size_t(c)]); });
    ASSERT_EQ(pxkiRGBToYCbCr_8u_P3R(src.constPlanes(), 0, dst.planes(), dst.step(), PxkSize{w, h}), pxkOk);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            EXPECT_EQ(dst.at(x, y, 0), 145);
            EXPECT_EQ(dst.at(x, y, 1), 54);
            EXPECT_EQ(dst.at(x, y, 2), 34);
        }
    }
    EXPECT_TRUE(dst.guardsIntact());
    EXPECT_TRUE(src.unchanged());
}

// ---------------------------------------------------------------------------------
// Statuses: each null pointer, each bad size, the order of the checks; a failing call
// writes nothing.
// ---------------------------------------------------------------------------------

TEST(RGBToYCbCr_8u_C3R_Status, NullPointersThenSize) { yuvtest::packedStatusChecks(Layout::C3, pxkiRGBToYCbCr_8u_C3R); }
TEST(RGBToYCbCr_8u_AC4R_Status, NullPointersThenSize) {
    yuvtest::packedStatusChecks(Layout::AC4, pxkiRGBToYCbCr_8u_AC4R);
}

TEST(RGBToYCbCr_8u_C3R_Status, ValidCallReportsOk) {
    StatusFixture f(Layout::C3, Layout::C3);
    EXPECT_EQ(pxkiRGBToYCbCr_8u_C3R(f.src.data(), f.src.step(), f.dst.data(), f.dst.step(), kValid), pxkOk);
    EXPECT_FALSE(f.dst.unchanged());
}

// C3P3R: src, the dst array, each dst entry, then size: a null entry wins over a bad size.
TEST(RGBToYCbCr_8u_C3P3R_Status, PointersAndEntriesBeforeSize) {
    StatusFixture f(Layout::C3, Layout::P3);
    const int ss = f.src.step(), ds = f.dst.step();
    uint8_t* const* planes = f.dst.planes();
    EXPECT_EQ(pxkiRGBToYCbCr_8u_C3P3R(nullptr, ss, planes, ds, kValid), pxkErrNullPtr);
    EXPECT_EQ(pxkiRGBToYCbCr_8u_C3P3R(f.src.data(), ss, nullptr, ds, kValid), pxkErrNullPtr);
    EXPECT_TRUE(f.nothingWritten());
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE("null dst entry " + std::to_string(i));
        uint8_t* withNull[3] = {planes[0], planes[1], planes[2]};
        withNull[i] = nullptr;
        EXPECT_EQ(pxkiRGBToYCbCr_8u_C3P3R(f.src.data(), ss, withNull, ds, kValid), pxkErrNullPtr);
        EXPECT_EQ(pxkiRGBToYCbCr_8u_C3P3R(f.src.data(), ss, withNull, ds, PxkSize{0, 2}), pxkErrNullPtr);
        EXPECT_EQ(pxkiRGBToYCbCr_8u_C3P3R(f.src.data(), ss, withNull, ds, PxkSize{9, -1}), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
    for (const PxkSize& z : badSizes()) {
        SCOPED_TRACE("size " + std::to_string(z.width) + "x" + std::to_string(z.height));
        EXPECT_EQ(pxkiRGBToYCbCr_8u_C3P3R(f.src.data(), ss, planes, ds, z), pxkErrSize);
        EXPECT_EQ(pxkiRGBToYCbCr_8u_C3P3R(nullptr, ss, planes, ds, z), pxkErrNullPtr);
        EXPECT_EQ(pxkiRGBToYCbCr_8u_C3P3R(f.src.data(), ss, nullptr, ds, z), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
}

// AC4P3R: src and the three dst entries, then size. The array pointer itself is never
// tested, so it is always given.
TEST(RGBToYCbCr_8u_AC4P3R_Status, PointerAndEntriesBeforeSize) {
    StatusFixture f(Layout::AC4, Layout::P3);
    const int ss = f.src.step(), ds = f.dst.step();
    uint8_t* const* planes = f.dst.planes();
    EXPECT_EQ(pxkiRGBToYCbCr_8u_AC4P3R(nullptr, ss, planes, ds, kValid), pxkErrNullPtr);
    EXPECT_TRUE(f.nothingWritten());
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE("null dst entry " + std::to_string(i));
        uint8_t* withNull[3] = {planes[0], planes[1], planes[2]};
        withNull[i] = nullptr;
        EXPECT_EQ(pxkiRGBToYCbCr_8u_AC4P3R(f.src.data(), ss, withNull, ds, kValid), pxkErrNullPtr);
        EXPECT_EQ(pxkiRGBToYCbCr_8u_AC4P3R(f.src.data(), ss, withNull, ds, PxkSize{0, 0}), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
    uint8_t* allNull[3] = {nullptr, nullptr, nullptr};
    EXPECT_EQ(pxkiRGBToYCbCr_8u_AC4P3R(f.src.data(), ss, allNull, ds, kValid), pxkErrNullPtr);
    for (const PxkSize& z : badSizes()) {
        SCOPED_TRACE("size " + std::to_string(z.width) + "x" + std::to_string(z.height));
        EXPECT_EQ(pxkiRGBToYCbCr_8u_AC4P3R(f.src.data(), ss, planes, ds, z), pxkErrSize);
        EXPECT_EQ(pxkiRGBToYCbCr_8u_AC4P3R(nullptr, ss, planes, ds, z), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
}

// P3R: the two array pointers, then size, then the entries of src and of dst: a bad
// size wins over a null entry.
TEST(RGBToYCbCr_8u_P3R_Status, ArraysThenSizeThenEntries) {
    StatusFixture f(Layout::P3, Layout::P3);
    const int ss = f.src.step(), ds = f.dst.step();
    const uint8_t* const* in = f.src.constPlanes();
    uint8_t* const* out = f.dst.planes();
    EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(nullptr, ss, out, ds, kValid), pxkErrNullPtr);
    EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(in, ss, nullptr, ds, kValid), pxkErrNullPtr);
    EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(nullptr, ss, out, ds, PxkSize{0, 2}), pxkErrNullPtr);
    EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(in, ss, nullptr, ds, PxkSize{9, 0}), pxkErrNullPtr);
    EXPECT_TRUE(f.nothingWritten());
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE("null entry " + std::to_string(i));
        const uint8_t* srcNull[3] = {in[0], in[1], in[2]};
        srcNull[i] = nullptr;
        uint8_t* dstNull[3] = {out[0], out[1], out[2]};
        dstNull[i] = nullptr;
        EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(srcNull, ss, out, ds, kValid), pxkErrNullPtr);
        EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(in, ss, dstNull, ds, kValid), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
        EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(srcNull, ss, out, ds, PxkSize{0, 2}), pxkErrSize);
        EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(in, ss, dstNull, ds, PxkSize{9, 0}), pxkErrSize);
        EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(srcNull, ss, dstNull, ds, PxkSize{-3, 2}), pxkErrSize);
        EXPECT_TRUE(f.nothingWritten());
    }
    for (const PxkSize& z : badSizes()) {
        SCOPED_TRACE("size " + std::to_string(z.width) + "x" + std::to_string(z.height));
        EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(in, ss, out, ds, z), pxkErrSize);
        EXPECT_TRUE(f.nothingWritten());
    }
}

TEST(RGBToYCbCr_8u_StatusOrder, NullEntryAndZeroWidthDifferByExport) {
    // The same arguments in substance: a null entry and a width of 0. The two-stage
    // P3R reports the size; the one-stage C3P3R reports the null pointer.
    StatusFixture planar(Layout::P3, Layout::P3);
    const uint8_t* srcNull[3] = {planar.src.constPlanes()[0], nullptr, planar.src.constPlanes()[2]};
    EXPECT_EQ(pxkiRGBToYCbCr_8u_P3R(srcNull, planar.src.step(), planar.dst.planes(), planar.dst.step(), PxkSize{0, 2}),
              pxkErrSize);
    StatusFixture packed(Layout::C3, Layout::P3);
    uint8_t* dstNull[3] = {packed.dst.planes()[0], nullptr, packed.dst.planes()[2]};
    EXPECT_EQ(pxkiRGBToYCbCr_8u_C3P3R(packed.src.data(), packed.src.step(), dstNull, packed.dst.step(), PxkSize{0, 2}),
              pxkErrNullPtr);
    EXPECT_TRUE(planar.nothingWritten());
    EXPECT_TRUE(packed.nothingWritten());
}

}  // namespace
