// Studio-range YCbCr 4:2:2 and 4:1:1 -> RGB / BGR: the packed Y0 Cb Y1 Cr and
// Y0 Cr Y1 Cb members, the two into planes, the two from planes, and the two 4:1:1
// members, against the reference model; the odd last pixel of a packed row (its
// second chroma from the byte before its Y), the odd pixel the planar members leave,
// the columns past the last group of four, statuses and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "subsampled_to_rgb_harness.h"
#include "subsampled_to_rgb_members.h"

namespace {

using pxktest::Rng;
using pxktest::StepKind;
using pxktest::Surface;
using s2rgb::Member;
using s2rgb::Ycc;
using subrgb::Source;

std::vector<const Member*> members() { return s2rgb::ycbcr422And411Members(); }

// Every input through the high-product 4:1:1 and 4:2:2 form: from Y0 Cb Y1 Cr, from
// Y0 Cr Y1 Cb, and from 4:1:1 planes.
std::vector<const Member*> exhaustive() {
    return s2rgb::membersNamed({"YCbCr422ToRGB_8u_C2P3R", "YCrCb422ToRGB_8u_C2C3R", "YCbCr411ToBGR_8u_P3C4R"});
}

S2RGB_REFERENCE_SUITES(YCbCr422And411ToRgb, members, exhaustive);

std::string rgb(int r, int g, int b) { return s2rgb::rgbText(r, g, b); }

std::vector<const Member*> packedMembers() {
    std::vector<const Member*> v;
    for (const Member* m : members()) {
        if (m->rule.source == Source::C2) v.push_back(m);
    }
    return v;
}

// Members that take the high-product form in their vector columns and the raw-chroma
// offset form after them.
bool rawChromaTail(const Member& m) {
    return m.name == "YCrCb422ToRGB_8u_C2C3R" || m.name == "YCbCr422ToRGB_8u_C2P3R" ||
           m.name == "YCrCb422ToRGB_8u_C2P3R";
}

// Converts one row of packed bytes (two a pixel) of `width` pixels; returns R, G, B
// of each pixel as text.
std::vector<std::string> packedRow(const Member& m, const std::vector<int>& bytes, PxkResult want = pxkOk) {
    const int w = int(bytes.size()) / 2;
    Surface src = s2rgb::makeSource(m, w, 1, s2rgb::tightPlan());
    for (int i = 0; i < 2 * w; ++i) src.image(0).row(0)[i] = uint8_t(bytes[std::size_t(i)]);
    src.snapshot();
    Surface dst = s2rgb::makeDest(m, w, 1, StepKind::Padded);
    for (int i = 0; i < dst.imageCount(); ++i) dst.image(i).fill(0xEE, 0x5A);
    EXPECT_EQ(s2rgb::callOn(m, src, dst, PxkSize{w, 1}, 0x61), want);
    EXPECT_TRUE(dst.guardsIntact());
    EXPECT_TRUE(src.unchanged());
    std::vector<std::string> out;
    for (int x = 0; x < w; ++x) out.push_back(s2rgb::rgbAt(m, dst, x, 0));
    return out;
}

// ---------------------------------------------------------------------------------
// The odd last pixel of a packed row
// ---------------------------------------------------------------------------------

class PackedOddPixel : public ::testing::TestWithParam<const Member*> {};

// Width 3, bytes Y0 A Y1 B Y2 C: the last pixel takes Y2, its first chroma from C and
// its second from B. YCbCr: Cb 128 in C, Cr 168 in B; YCrCb: Cr 168 in C, Cb 128 in B.
// Wide rounded at (128, Cb 128, Cr 168): R = (9764352 + 4183800 - 1187776) >> 16 =
// 194, G = (9764352 - 2131240 - 1187776) >> 16 = 98, B = (9764352 - 1187776) >> 16 =
// 130. Raw-chroma offset: R = (9764352 + 17571960 - 14608761) >> 16 = 194, G =
// (9764352 - 8951208 - 3288320 + 8887730) >> 16 = 97, B = (9764352 + 16919808 -
// 18140365) >> 16 = 130. Had its second chroma been its first, the pixel would be
// grey (wide rounded 130 for Y 128) or (194, 82, 211).
TEST_P(PackedOddPixel, WidthThreeSecondChromaFromTheByteBeforeItsY) {
    const Member& m = *GetParam();
    const bool cbFirst = m.rule.cbFirst;
    const int c = cbFirst ? 128 : 168;  // byte 5, the pixel's first chroma
    const int b = cbFirst ? 168 : 128;  // byte 3, the pair's second chroma
    const std::vector<std::string> got = packedRow(m, {16, 128, 16, b, 128, c});
    EXPECT_EQ(got[2], rawChromaTail(m) ? rgb(194, 97, 130) : rgb(194, 98, 130));
    // The pair: Y 16 with Cb 128 and Cr 168 (YCbCr), or neutral (YCrCb: Cr 128 in
    // byte 1, Cb 128 in byte 3), which is black. Wide rounded: R = (1220544 + 4183800 -
    // 1187776) >> 16 = 64, G and B 0; raw-chroma offset, without the half: R =
    // (1220544 + 17571960 - 14608761) >> 16 = 63.
    const std::string pair = !cbFirst ? rgb(0, 0, 0) : (rawChromaTail(m) ? rgb(63, 0, 0) : rgb(64, 0, 0));
    EXPECT_EQ(got[0], pair);
    EXPECT_EQ(got[1], pair);
}

// Width 1 (where the least width allows it): the row has no byte before Y, so the
// pixel's first chroma serves as both: (128, 168, 168) gives (194, 82, 211) in the
// wide rounded form (G = (9764352 - 1027600 - 2131240 - 1187776) >> 16 = 82, B =
// (9764352 + 5287440 - 1187776) >> 16 = 211) and in the raw-chroma offset form.
TEST_P(PackedOddPixel, WidthOneFirstChromaStandsIn) {
    const Member& m = *GetParam();
    if (m.least.width > 1) GTEST_SKIP() << "least width " << m.least.width;
    EXPECT_EQ(packedRow(m, {128, 168}), std::vector<std::string>{rgb(194, 82, 211)});
}

// Odd widths over several rows: every row's last pixel takes its bytes from its own
// row, and the pixel of room after it stays.
TEST_P(PackedOddPixel, OddWidthsOverSeveralRowsMatchReference) {
    const Member& m = *GetParam();
    for (int w : {3, 5, 7, 9, 15, 17, 23, 25, 31, 33, 63, 65}) {
        for (int h : {1, 2, 3}) {
            Rng rng(pxktest::seedFor((m.name + "/odd").c_str(), {uint32_t(w), uint32_t(h)}));
            pxktest::GuardOptions fenced;
            fenced.after = 0;
            fenced.fenceAfter = true;
            Surface src = s2rgb::makeSource(m, w, h, s2rgb::tightPlan(), fenced);
            Surface dst = s2rgb::makeDest(m, w, h, StepKind::Padded);
            src.fillRandom(rng);
            dst.fillRandom(rng);
            EXPECT_TRUE(s2rgb::compareOnce(m, src, dst, w, h, rng.byte())) << w << "x" << h;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(PackedMembers, PackedOddPixel, ::testing::ValuesIn(packedMembers()), s2rgb::memberParamName);

// Each pair has its own chroma: width 4, pairs (Cb 60, Cr 200) and (Cb 200, Cr 60)
// with Y 100: wide rounded (213, 66, 0) and (0, 125, 243).
TEST(YCbCr422ToRGB_8u_C2C3R, EachPairHasItsOwnChroma) {
    const Member& m = s2rgb::memberNamed("YCbCr422ToRGB_8u_C2C3R");
    EXPECT_EQ(packedRow(m, {100, 60, 100, 200, 100, 200, 100, 60}),
              (std::vector<std::string>{rgb(213, 66, 0), rgb(213, 66, 0), rgb(0, 125, 243), rgb(0, 125, 243)}));
}

// The same bytes read as Y0 Cr Y1 Cb swap the chroma of each pair.
TEST(YCrCb422ToRGB_8u_C2C4R, EachPairHasItsOwnChroma) {
    const Member& m = s2rgb::memberNamed("YCrCb422ToRGB_8u_C2C4R");
    EXPECT_EQ(packedRow(m, {100, 200, 100, 60, 100, 60, 100, 200}),
              (std::vector<std::string>{rgb(213, 66, 0), rgb(213, 66, 0), rgb(0, 125, 243), rgb(0, 125, 243)}));
}

// BGR destinations put B first: the bytes of one pixel, alpha after them.
TEST(YCbCr422ToBGR_8u_C2C4R, BytesAreBgrThenAlpha) {
    const Member& m = s2rgb::memberNamed("YCbCr422ToBGR_8u_C2C4R");
    Surface src = s2rgb::makeSource(m, 2, 1, s2rgb::tightPlan());
    const uint8_t bytes[4] = {100, 60, 100, 200};
    for (int i = 0; i < 4; ++i) src.image(0).row(0)[i] = bytes[i];
    Surface dst = s2rgb::makeDest(m, 2, 1, StepKind::Tight);
    ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{2, 1}, 0x61), pxkOk);
    const uint8_t* d = dst.image(0).row(0);
    EXPECT_EQ(std::vector<int>(d, d + 8), (std::vector<int>{0, 66, 213, 0x61, 0, 66, 213, 0x61}));
}

// The members into planes write R, G and B planes.
TEST(YCbCr422ToRGB_8u_C2P3R, PlanesAreRgb) {
    const Member& m = s2rgb::memberNamed("YCbCr422ToRGB_8u_C2P3R");
    Surface src = s2rgb::makeSource(m, 2, 1, s2rgb::tightPlan());
    const uint8_t bytes[4] = {20, 10, 20, 10};
    for (int i = 0; i < 4; ++i) src.image(0).row(0)[i] = bytes[i];
    Surface dst = s2rgb::makeDest(m, 2, 1, StepKind::Tight);
    ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{2, 1}, 0), pxkOk);
    // Two columns: both in the tail, raw-chroma offset form: (0, 146, 0).
    for (int x = 0; x < 2; ++x) {
        EXPECT_EQ(dst.image(0).at(x, 0), 0);
        EXPECT_EQ(dst.image(1).at(x, 0), 146);
        EXPECT_EQ(dst.image(2).at(x, 0), 0);
    }
}

// ---------------------------------------------------------------------------------
// Planar 4:2:2 and 4:1:1
// ---------------------------------------------------------------------------------

class PlanarLeavesOddPixel : public ::testing::TestWithParam<const Member*> {};

// Odd widths: whole pairs converted, the last pixel keeps the fill, pxkOk. Y 235,
// neutral chroma: 254 in the raw-chroma offset form.
TEST_P(PlanarLeavesOddPixel, LastOddPixelUnwritten) {
    const Member& m = *GetParam();
    for (int w : {3, 5, 9, 17}) {
        SCOPED_TRACE("width " + std::to_string(w));
        const Surface d = s2rgb::convertUniform(m, w, 2, Ycc{235, 128, 128}, 0, 0xEE);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < w; ++x) {
                EXPECT_EQ(s2rgb::rgbAt(m, d, x, y), x < w - 1 ? rgb(254, 254, 254) : rgb(0xEE, 0xEE, 0xEE)) << x;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(PlanarMembers, PlanarLeavesOddPixel,
                         ::testing::Values(&s2rgb::memberNamed("YCbCr422ToBGR_8u_P3C3R"),
                                           &s2rgb::memberNamed("YCbCr422ToRGB_8u_P3C3R")),
                         s2rgb::memberParamName);

class Ycbcr411 : public ::testing::TestWithParam<const Member*> {};

// Width 5: four columns converted, the fifth keeps the fill; pxkOk, no warning.
// (100, Cb 60, Cr 200) in the 4:1:1 form: R = (7629400 + 7530840 - 1187936) >> 16 =
// 213, G = (7629400 + 1742500 - 3836232 - 1187936) >> 16 = 66, B below 0.
TEST_P(Ycbcr411, WidthFiveConvertsFourColumns) {
    const Member& m = *GetParam();
    const Surface d = s2rgb::convertUniform(m, 5, 3, Ycc{100, 60, 200}, 0x44, 0xEE);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x) {
            EXPECT_EQ(s2rgb::rgbAt(m, d, x, y), x < 4 ? rgb(213, 66, 0) : rgb(0xEE, 0xEE, 0xEE)) << x << "," << y;
        }
    }
}

// Widths 4 to 19 and any height: pxkOk.
TEST_P(Ycbcr411, NeverWarns) {
    const Member& m = *GetParam();
    for (int w = 4; w <= 19; ++w) {
        for (int h : {1, 2, 3}) {
            Rng rng(pxktest::seedFor((m.name + "/status").c_str(), {uint32_t(w), uint32_t(h)}));
            Surface src = s2rgb::makeSource(m, w, h, s2rgb::tightPlan());
            Surface dst = s2rgb::makeDest(m, w, h, StepKind::Tight);
            src.fillRandom(rng);
            dst.fillRandom(rng);
            EXPECT_EQ(s2rgb::callOn(m, src, dst, PxkSize{w, h}, 0), pxkOk) << w << "x" << h;
        }
    }
}

// One chroma sample serves four pixels of a row: width 8, groups (Cb 60, Cr 200) and
// (Cb 128, Cr 128) with Y 100: the first eight columns are vector columns, the
// high-product form: (213, 66, 0), then grey h(9536, 84 * 128) = 1564, (1564 + 8)
// >> 4 = 98.
TEST_P(Ycbcr411, EachGroupOfFourHasItsOwnChroma) {
    const Member& m = *GetParam();
    Surface src = s2rgb::makeSource(m, 8, 1, s2rgb::tightPlan());
    for (int x = 0; x < 8; ++x) s2rgb::setSamples(m, src, x, 0, x < 4 ? Ycc{100, 60, 200} : Ycc{100, 128, 128});
    Surface dst = s2rgb::makeDest(m, 8, 1, StepKind::Tight);
    ASSERT_EQ(s2rgb::callOn(m, src, dst, PxkSize{8, 1}, 0), pxkOk);
    for (int x = 0; x < 8; ++x) EXPECT_EQ(s2rgb::rgbAt(m, dst, x, 0), x < 4 ? rgb(213, 66, 0) : rgb(98, 98, 98)) << x;
}

INSTANTIATE_TEST_SUITE_P(Members411, Ycbcr411,
                         ::testing::Values(&s2rgb::memberNamed("YCbCr411ToBGR_8u_P3C3R"),
                                           &s2rgb::memberNamed("YCbCr411ToBGR_8u_P3C4R")),
                         s2rgb::memberParamName);

}  // namespace
