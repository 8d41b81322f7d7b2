// Packed CbYCr422 (Cb Y0 Cr Y1): the five exports from RGB or BGR (709HDTV, the carried
// standard chroma, the gamma member) and the four to RGB or BGR, against the reference
// model; the odd last pixel, the two kernels by alignment, known values, statuses
// and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "hd_harness.h"
#include "hd_reference.h"
#include "pxkcc.h"

namespace {

using hdref::Inverse;
using hdtest::HdExport;
using pxktest::ImageGeometry;
using pxktest::Rng;
using pxktest::StepKind;
using pxktest::Surface;

using PackedFn = PxkResult (*)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize);
using PackedAlphaFn = PxkResult (*)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize, uint8_t);

enum class Kind { Hdtv, Carried, Gamma };

HdExport toCbYCr(const char* name, PackedFn f, Kind kind, int bytesPerPixel, bool bgr) {
    HdExport ex;
    ex.name = name;
    ex.source = hdtest::packedPlanes(bytesPerPixel);
    ex.dest = hdtest::packedPlanes(2);
    ex.call = [f](Surface& s, Surface& d, PxkSize z, uint8_t) { return f(s.data(), s.step(), d.data(), d.step(), z); };
    ex.nullCall = hdtest::packedNullCall(f);
    ex.reference = [kind, bytesPerPixel, bgr](Surface& s, Surface& d, int w, int h, uint8_t) {
        switch (kind) {
            case Kind::Hdtv:
                hdref::bgrToCbYCrHdtv(s.data(), s.step(), bytesPerPixel, d.data(), d.step(), w, h);
                break;
            case Kind::Carried:
                hdref::rgbToCbYCrCarried(s.data(), s.step(), bytesPerPixel, bgr, d.data(), d.step(), w, h);
                break;
            case Kind::Gamma:
                hdref::rgbToCbYCrGamma(s.data(), s.step(), d.data(), d.step(), w, h);
                break;
        }
    };
    return ex;
}

HdExport fromCbYCr(const char* name, PackedAlphaFn withAlpha, PackedFn without, Inverse m, int bytesPerPixel,
                   bool bgr) {
    HdExport ex;
    ex.name = name;
    ex.source = hdtest::packedPlanes(2);
    ex.dest = hdtest::packedPlanes(bytesPerPixel);
    ex.call = [withAlpha, without](Surface& s, Surface& d, PxkSize z, uint8_t alpha) {
        return withAlpha != nullptr ? withAlpha(s.data(), s.step(), d.data(), d.step(), z, alpha)
                                    : without(s.data(), s.step(), d.data(), d.step(), z);
    };
    ex.nullCall = withAlpha != nullptr ? hdtest::packedNullCall(withAlpha, uint8_t(3)) : hdtest::packedNullCall(without);
    ex.reference = [m, bytesPerPixel, bgr](Surface& s, Surface& d, int w, int h, uint8_t alpha) {
        hdref::cbycrToRgb(m, s.data(), s.step(), d.data(), d.step(), bytesPerPixel, bgr, alpha, w, h);
    };
    return ex;
}

const std::vector<HdExport>& exports() {
    static const std::vector<HdExport> list = {
        toCbYCr("BGRToCbYCr422_709HDTV_8u_C3C2R", pxkiBGRToCbYCr422_709HDTV_8u_C3C2R, Kind::Hdtv, 3, true),
        toCbYCr("BGRToCbYCr422_709HDTV_8u_AC4C2R", pxkiBGRToCbYCr422_709HDTV_8u_AC4C2R, Kind::Hdtv, 4, true),
        toCbYCr("BGRToCbYCr422_8u_AC4C2R", pxkiBGRToCbYCr422_8u_AC4C2R, Kind::Carried, 4, true),
        toCbYCr("RGBToCbYCr422_8u_C3C2R", pxkiRGBToCbYCr422_8u_C3C2R, Kind::Carried, 3, false),
        toCbYCr("RGBToCbYCr422Gamma_8u_C3C2R", pxkiRGBToCbYCr422Gamma_8u_C3C2R, Kind::Gamma, 3, false),
        fromCbYCr("CbYCr422ToBGR_709HDTV_8u_C2C3R", nullptr, pxkiCbYCr422ToBGR_709HDTV_8u_C2C3R, Inverse::Hdtv709,
                  3, true),
        fromCbYCr("CbYCr422ToBGR_709HDTV_8u_C2C4R", pxkiCbYCr422ToBGR_709HDTV_8u_C2C4R, nullptr, Inverse::Hdtv709,
                  4, true),
        fromCbYCr("CbYCr422ToBGR_8u_C2C4R", pxkiCbYCr422ToBGR_8u_C2C4R, nullptr, Inverse::Standard, 4, true),
        fromCbYCr("CbYCr422ToRGB_8u_C2C3R", nullptr, pxkiCbYCr422ToRGB_8u_C2C3R, Inverse::Standard, 3, false),
    };
    return list;
}

const HdExport& named(const std::string& n) { return hdtest::exportNamed(exports(), n); }

HDTEST_SWEEP_SUITE(HdCbYCr, exports);

class HdCbYCrEach : public ::testing::TestWithParam<const HdExport*> {};
INSTANTIATE_TEST_SUITE_P(AllExports, HdCbYCrEach, ::testing::ValuesIn(hdtest::exportPointers(exports())),
                         hdtest::exportParamName);

// Both kernels of the two-kernel members (and the one of the others): pointers and
// steps on multiples of 16, and every other alignment, at widths that end in a whole
// block and in each tail.
TEST_P(HdCbYCrEach, AlignedAndUnalignedMatchReference) {
    const HdExport& ex = *GetParam();
    for (int width : {1, 2, 15, 16, 31, 32, 47, 64, 77, 1920}) {
        EXPECT_TRUE(hdtest::alignedAgainstReference(ex, width, 3)) << "aligned, width " << width;
        for (std::size_t s = 0; s < 16; s += 3) {
            for (std::size_t d = 0; d < 16; d += 5) {
                EXPECT_TRUE(hdtest::misalignedAgainstReference(ex, width, 3, s, d, 16))
                    << width << ": " << s << " " << d;
            }
        }
        // Aligned pointers with a step that is not a multiple of 16.
        EXPECT_TRUE(hdtest::misalignedAgainstReference(ex, width, 3, 0, 0, 8)) << "step +8, width " << width;
    }
}

TEST_P(HdCbYCrEach, ExtremeBytesMatchReference) { hdtest::extremeBytesAgainstReference(*GetParam()); }

TEST_P(HdCbYCrEach, StatusOrderPointersThenSize) { hdtest::statusChecks(*GetParam()); }

// ---------------------------------------------------------------------------------
// Known values
// ---------------------------------------------------------------------------------

// Converts one row of RGB pixels (given R, G, B; written in the export's byte order)
// into a destination region of 2 * width bytes that ends four bytes before the next
// row; returns the bytes of the call's row and the four after it.
std::vector<int> toCbYCrRow(const HdExport& ex, const std::vector<hdref::Rgb>& pixels) {
    const int width = int(pixels.size());
    const bool four = ex.name.find("AC4") != std::string::npos;
    const bool bgr = ex.name.rfind("BGR", 0) == 0;
    const int bpp = four ? 4 : 3;
    Surface src = Surface::packed(width, 1, bpp, width * bpp);
    for (int x = 0; x < width; ++x) {
        const hdref::Rgb& p = pixels[std::size_t(x)];
        src.at(x, 0, 0) = uint8_t(bgr ? p.b : p.r);
        src.at(x, 0, 1) = uint8_t(p.g);
        src.at(x, 0, 2) = uint8_t(bgr ? p.r : p.b);
        if (four) src.at(x, 0, 3) = 0x99;
    }
    Surface dst = Surface::packed(width + 2, 1, 2, 2 * width + 4);
    dst.image(0).fill(0xAB, 0xCD);
    EXPECT_EQ(ex.call(src, dst, PxkSize{width, 1}, 0), pxkOk);
    std::vector<int> bytes;
    for (int i = 0; i < 2 * width + 4; ++i) bytes.push_back(dst.image(0).data()[i]);
    return bytes;
}

TEST(HdCbYCrValues, Hdtv709BlackWhiteGray) {
    for (const char* name : {"BGRToCbYCr422_709HDTV_8u_C3C2R", "BGRToCbYCr422_709HDTV_8u_AC4C2R"}) {
        const HdExport& ex = named(name);
        EXPECT_EQ(toCbYCrRow(ex, {{0, 0, 0}, {0, 0, 0}}), (std::vector<int>{128, 1, 128, 1, 0xAB, 0xAB, 0xAB, 0xAB}));
        EXPECT_EQ(toCbYCrRow(ex, {{255, 255, 255}, {255, 255, 255}}),
                  (std::vector<int>{128, 254, 128, 254, 0xAB, 0xAB, 0xAB, 0xAB}));
        EXPECT_EQ(toCbYCrRow(ex, {{128, 128, 128}, {128, 128, 128}}),
                  (std::vector<int>{128, 128, 128, 128, 0xAB, 0xAB, 0xAB, 0xAB}));
    }
}

// A last odd pixel writes its own Cb and its Y; the byte its Cr would take, and the
// rest of the row, keep what they held. 709HDTV blue: Cb (33489 * 255 + 8421376) >>
// 16 = 258, clamped to 255; Y 19.
TEST(HdCbYCrValues, Hdtv709LastOddPixel) {
    const HdExport& ex = named("BGRToCbYCr422_709HDTV_8u_C3C2R");
    EXPECT_EQ(toCbYCrRow(ex, {{128, 128, 128}, {128, 128, 128}, {0, 0, 255}}),
              (std::vector<int>{128, 128, 128, 128, 255, 19, 0xAB, 0xAB, 0xAB, 0xAB}));
    EXPECT_EQ(toCbYCrRow(ex, {{0, 0, 255}}), (std::vector<int>{255, 19, 0xAB, 0xAB, 0xAB, 0xAB}));
}

// The carried chroma: the first pair of a row misses the quarter that the pair before
// gives the others. Blue: Cb 212 in the first pair, 240 after; Cr 114, then 110; Y 41.
// A last odd pixel: Cb low8((28770 * 255 - 8355840) >> 16) = 240.
TEST(HdCbYCrValues, CarriedChromaOfBluePairs) {
    for (const char* name : {"RGBToCbYCr422_8u_C3C2R", "BGRToCbYCr422_8u_AC4C2R"}) {
        const HdExport& ex = named(name);
        const hdref::Rgb blue{0, 0, 255};
        EXPECT_EQ(toCbYCrRow(ex, {blue, blue, blue, blue, blue}),
                  (std::vector<int>{212, 41, 114, 41, 240, 41, 110, 41, 240, 41, 0xAB, 0xAB, 0xAB, 0xAB}))
            << name;
    }
}

// The carries pass from a vector block to the next and on to the scalar pairs: a long
// row of one colour has the short first pair only.
TEST(HdCbYCrValues, CarriedChromaAcrossBlocks) {
    const hdref::Rgb blue{0, 0, 255};
    const std::vector<hdref::Rgb> row(75, blue);
    for (const char* name : {"RGBToCbYCr422_8u_C3C2R", "BGRToCbYCr422_8u_AC4C2R"}) {
        const std::vector<int> bytes = toCbYCrRow(named(name), row);
        EXPECT_EQ(bytes[0], 212);
        EXPECT_EQ(bytes[2], 114);
        for (int pair = 1; pair < 37; ++pair) {
            EXPECT_EQ(bytes[std::size_t(4 * pair)], 240) << name << " pair " << pair;
            EXPECT_EQ(bytes[std::size_t(4 * pair + 2)], 110) << name << " pair " << pair;
        }
    }
}

// The gamma member reads the samples through the table: 1 becomes 4, so gray 1 gives
// Y (28149 * 4 + 540672) >> 15 = 19 (17 without the table). Black: Y 16, chroma 128;
// a lone black pixel: Cb low8(-8355840 >> 16) = 128, Y 16.
TEST(HdCbYCrValues, GammaMemberReadsThroughTheTable) {
    const HdExport& ex = named("RGBToCbYCr422Gamma_8u_C3C2R");
    EXPECT_EQ(toCbYCrRow(ex, {{1, 1, 1}, {1, 1, 1}}), (std::vector<int>{128, 19, 128, 19, 0xAB, 0xAB, 0xAB, 0xAB}));
    EXPECT_EQ(toCbYCrRow(ex, {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}),
              (std::vector<int>{128, 16, 128, 16, 128, 16, 0xAB, 0xAB, 0xAB, 0xAB}));
}

// At the start of a row the site stands in for its missing left neighbour: red then
// black gives Cb (-2426 * 255 - 1213 * (255 + 0) + 4210687) >> 15 = 100 (109 were the
// neighbour taken as 0) and Cr (7193 * 255 + 3596 * 255 + 4210687) >> 15 = 212.
TEST(HdCbYCrValues, GammaMemberFirstSiteIsItsOwnLeftNeighbour) {
    const std::vector<int> bytes = toCbYCrRow(named("RGBToCbYCr422Gamma_8u_C3C2R"), {{255, 0, 0}, {0, 0, 0}});
    EXPECT_EQ(bytes[0], 100);
    EXPECT_EQ(bytes[2], 212);
}

// Converts one row of CbYCr422 bytes and returns the destination bytes of the row.
std::vector<int> fromCbYCrRow(const HdExport& ex, const std::vector<int>& bytes, int width, uint8_t alpha = 0x42) {
    Surface src = Surface::packed(int(bytes.size()) / 2, 1, 2, int(bytes.size()));
    for (std::size_t i = 0; i < bytes.size(); ++i) src.image(0).data()[i] = uint8_t(bytes[i]);
    const int bpp = ex.name.find("C4R") != std::string::npos ? 4 : 3;
    Surface dst = Surface::packed(width, 1, bpp, width * bpp);
    dst.image(0).fill(0xAB, 0xCD);
    EXPECT_EQ(ex.call(src, dst, PxkSize{width, 1}, alpha), pxkOk);
    EXPECT_TRUE(dst.guardsIntact());
    std::vector<int> out;
    for (int i = 0; i < width * bpp; ++i) out.push_back(dst.image(0).data()[i]);
    return out;
}

TEST(HdCbYCrValues, StandardInverseBlackAndWhite) {
    EXPECT_EQ(fromCbYCrRow(named("CbYCr422ToRGB_8u_C2C3R"), {128, 16, 128, 235}, 2),
              (std::vector<int>{0, 0, 0, 255, 255, 255}));
    EXPECT_EQ(fromCbYCrRow(named("CbYCr422ToBGR_8u_C2C4R"), {128, 16, 128, 235}, 2),
              (std::vector<int>{0, 0, 0, 0x42, 255, 255, 255, 0x42}));
}

// 709HDTV has no luma gain: neutral Y comes back as it is.
TEST(HdCbYCrValues, Hdtv709InverseKeepsNeutralLuma) {
    EXPECT_EQ(fromCbYCrRow(named("CbYCr422ToBGR_709HDTV_8u_C2C3R"), {128, 0, 128, 128}, 2),
              (std::vector<int>{0, 0, 0, 128, 128, 128}));
    EXPECT_EQ(fromCbYCrRow(named("CbYCr422ToBGR_709HDTV_8u_C2C4R"), {128, 255, 128, 77}, 2, 9),
              (std::vector<int>{255, 255, 255, 9, 77, 77, 77, 9}));
}

// A last odd pixel: Y and Cb from its own two bytes, Cr from the pair before; at a
// width of 1 its Cb stands in for Cr. Y 100, Cb 200, Cr 200 gives R 213, G 11, B 243.
TEST(HdCbYCrValues, LastOddPixelTakesCrFromThePairBefore) {
    const HdExport& ex = named("CbYCr422ToRGB_8u_C2C3R");
    EXPECT_EQ(fromCbYCrRow(ex, {200, 100}, 1), (std::vector<int>{213, 11, 243}));
    const std::vector<int> three = fromCbYCrRow(ex, {0, 100, 200, 100, 200, 100}, 3);
    EXPECT_EQ(std::vector<int>(three.begin() + 6, three.end()), (std::vector<int>{213, 11, 243}));
    // Every member follows the rule: the same bytes with Cr of the pair before changed
    // change the last pixel.
    for (const HdExport& m : exports()) {
        if (m.name.rfind("CbYCr422To", 0) != 0) continue;
        const std::vector<int> a = fromCbYCrRow(m, {128, 90, 60, 90, 128, 90}, 3);
        const std::vector<int> b = fromCbYCrRow(m, {128, 90, 200, 90, 128, 90}, 3);
        const std::size_t last = a.size() / 3 * 2;
        EXPECT_NE(std::vector<int>(a.begin() + long(last), a.end()), std::vector<int>(b.begin() + long(last), b.end()))
            << m.name;
    }
}

}  // namespace
