// BGR -> YCbCr 4:2:0 by the 709CSC and 709HDTV matrices: the seven exports against the
// reference model, the known black, white and gray values, the plane order of the
// YCrCb members, the ignored fourth source byte, odd sizes, statuses and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "hd_harness.h"
#include "hd_reference.h"
#include "pxkcc.h"

namespace {

using hdref::Matrix;
using hdtest::HdExport;
using pxktest::ImageGeometry;
using pxktest::Rng;
using pxktest::Surface;

using P3Fn = PxkResult (*)(const uint8_t*, int32_t, uint8_t* const[3], const int32_t[3], PxkSize);
using P2Fn = PxkResult (*)(const uint8_t*, int32_t, uint8_t*, int32_t, uint8_t*, int32_t, PxkSize);

// The source holds the whole blocks only: a last odd row or column is not there to read.
hdtest::PlanesOf blockSource(int bytesPerPixel) {
    return [bytesPerPixel](int w, int h) {
        const int ew = w - w % 2, eh = h - h % 2;
        return std::vector<ImageGeometry>{ImageGeometry{ew, eh, bytesPerPixel, 1, ew * bytesPerPixel}};
    };
}

std::vector<ImageGeometry> threePlanes(int w, int h) {
    return {ImageGeometry{w, h, 1, 1, w}, ImageGeometry{w / 2, h / 2, 1, 1, w / 2},
            ImageGeometry{w / 2, h / 2, 1, 1, w / 2}};
}
std::vector<ImageGeometry> twoPlanes(int w, int h) {
    return {ImageGeometry{w, h, 1, 1, w}, ImageGeometry{w / 2, h / 2, 2, 1, w}};
}

// A member into planes Y, Cb, Cr (Y, Cr, Cb when crFirst).
HdExport planarMember(const char* name, P3Fn f, Matrix m, int bytesPerPixel, bool crFirst) {
    HdExport ex;
    ex.name = name;
    ex.source = blockSource(bytesPerPixel);
    ex.dest = threePlanes;
    ex.call = [f](Surface& s, Surface& d, PxkSize z, uint8_t) {
        const int32_t steps[3] = {d.image(0).step(), d.image(1).step(), d.image(2).step()};
        return f(s.data(), s.step(), d.planes(), steps, z);
    };
    ex.reference = [m, bytesPerPixel, crFirst](Surface& s, Surface& d, int w, int h, uint8_t) {
        hdref::Dest420 out{d.image(0).data(), d.image(0).step()};
        const int cb = crFirst ? 2 : 1, cr = crFirst ? 1 : 2;
        out.cb = d.image(cb).data();
        out.cbStep = d.image(cb).step();
        out.cr = d.image(cr).data();
        out.crStep = d.image(cr).step();
        hdref::bgrTo420(m, s.data(), s.step(), bytesPerPixel, out, w, h);
    };
    ex.least = {2, 2};
    ex.warnsOdd = true;
    // 0 source, 1 plane array, 2 to 4 its entries, 5 step array.
    ex.nullCall = [f](Surface& s, Surface& d, PxkSize z, int nullAt) {
        uint8_t* planes[3] = {d.image(0).data(), d.image(1).data(), d.image(2).data()};
        const int32_t steps[3] = {d.image(0).step(), d.image(1).step(), d.image(2).step()};
        if (nullAt >= 2 && nullAt <= 4) planes[nullAt - 2] = nullptr;
        const bool all = nullAt == -1;
        return f(all || nullAt == 0 ? nullptr : s.data(), s.step(), all || nullAt == 1 ? nullptr : planes,
                 all || nullAt == 5 ? nullptr : steps, z);
    };
    ex.pointerCount = 6;
    return ex;
}

// A member into a Y plane and a plane of Cb, Cr pairs.
HdExport twoPlaneMember(const char* name, P2Fn f, int bytesPerPixel) {
    HdExport ex;
    ex.name = name;
    ex.source = blockSource(bytesPerPixel);
    ex.dest = twoPlanes;
    ex.call = [f](Surface& s, Surface& d, PxkSize z, uint8_t) {
        return f(s.data(), s.step(), d.image(0).data(), d.image(0).step(), d.image(1).data(), d.image(1).step(), z);
    };
    ex.reference = [bytesPerPixel](Surface& s, Surface& d, int w, int h, uint8_t) {
        hdref::Dest420 out{d.image(0).data(), d.image(0).step()};
        out.cbcr = d.image(1).data();
        out.cbcrStep = d.image(1).step();
        hdref::bgrTo420(Matrix::Csc709, s.data(), s.step(), bytesPerPixel, out, w, h);
    };
    ex.least = {2, 2};
    ex.warnsOdd = true;
    // 0 source, 1 Y plane, 2 chroma plane.
    ex.nullCall = [f](Surface& s, Surface& d, PxkSize z, int nullAt) {
        const bool all = nullAt == -1;
        return f(all || nullAt == 0 ? nullptr : s.data(), s.step(), all || nullAt == 1 ? nullptr : d.image(0).data(),
                 d.image(0).step(), all || nullAt == 2 ? nullptr : d.image(1).data(), d.image(1).step(), z);
    };
    ex.pointerCount = 3;
    return ex;
}

const std::vector<HdExport>& exports() {
    static const std::vector<HdExport> list = {
        planarMember("BGRToYCbCr420_709CSC_8u_C3P3R", pxkiBGRToYCbCr420_709CSC_8u_C3P3R, Matrix::Csc709, 3, false),
        planarMember("BGRToYCbCr420_709CSC_8u_AC4P3R", pxkiBGRToYCbCr420_709CSC_8u_AC4P3R, Matrix::Csc709, 4, false),
        planarMember("BGRToYCrCb420_709CSC_8u_C3P3R", pxkiBGRToYCrCb420_709CSC_8u_C3P3R, Matrix::Csc709, 3, true),
        planarMember("BGRToYCrCb420_709CSC_8u_AC4P3R", pxkiBGRToYCrCb420_709CSC_8u_AC4P3R, Matrix::Csc709, 4, true),
        planarMember("BGRToYCbCr420_709HDTV_8u_AC4P3R", pxkiBGRToYCbCr420_709HDTV_8u_AC4P3R, Matrix::Hdtv709, 4,
                     false),
        twoPlaneMember("BGRToYCbCr420_709CSC_8u_C3P2R", pxkiBGRToYCbCr420_709CSC_8u_C3P2R, 3),
        twoPlaneMember("BGRToYCbCr420_709CSC_8u_AC4P2R", pxkiBGRToYCbCr420_709CSC_8u_AC4P2R, 4),
    };
    return list;
}

const HdExport& named(const std::string& n) { return hdtest::exportNamed(exports(), n); }

HDTEST_SWEEP_SUITE(HdTo420, exports);

class HdTo420Each : public ::testing::TestWithParam<const HdExport*> {};
INSTANTIATE_TEST_SUITE_P(AllExports, HdTo420Each, ::testing::ValuesIn(hdtest::exportPointers(exports())),
                         hdtest::exportParamName);

TEST_P(HdTo420Each, AnyAlignmentMatchesReference) { hdtest::alignmentsAgainstReference(*GetParam(), 70, 4); }

TEST_P(HdTo420Each, LeastSizeIsTwoByTwo) { hdtest::leastSizeConverts(*GetParam()); }

// A large image whose rows run in the widest blocks and in every tail.
TEST_P(HdTo420Each, FullHdMatchesReference) {
    const HdExport& ex = *GetParam();
    Rng rng(pxktest::seedFor((ex.name + "/hd").c_str(), {}));
    const std::vector<pxktest::StepKind> tight = {pxktest::StepKind::Tight};
    Surface src = hdtest::makeSide(ex.source(1920, 64), tight, false, {});
    Surface dst = hdtest::makeSide(ex.dest(1920, 64), tight, false, {});
    src.fillRandom(rng);
    dst.fillRandom(rng);
    EXPECT_TRUE(hdtest::compareOnce(ex, src, dst, 1920, 64, 0));
}

// Pointers (source, plane array, each entry, step array), then the size.
TEST_P(HdTo420Each, ExtremeBytesMatchReference) { hdtest::extremeBytesAgainstReference(*GetParam()); }

TEST_P(HdTo420Each, StatusOrderPointersThenSize) { hdtest::statusChecks(*GetParam()); }

// ---------------------------------------------------------------------------------
// Known values
// ---------------------------------------------------------------------------------

// Converts a uniform 4 x 2 BGR image of one colour (fourth byte 0x77) and returns its
// Y, Cb and Cr, checking that all four Y and both blocks agree.
struct Ycc {
    int y, cb, cr;
};
Ycc uniform(const HdExport& ex, int r, int g, int b) {
    const int bpp = ex.name.find("AC4") != std::string::npos ? 4 : 3;
    Surface src = Surface::packed(4, 2, bpp, 4 * bpp);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 4; ++x) {
            src.at(x, y, 0) = uint8_t(b);
            src.at(x, y, 1) = uint8_t(g);
            src.at(x, y, 2) = uint8_t(r);
            if (bpp == 4) src.at(x, y, 3) = 0x77;
        }
    }
    const std::vector<pxktest::StepKind> tight = {pxktest::StepKind::Tight};
    Surface dst = hdtest::makeSide(ex.dest(4, 2), tight, false, {});
    EXPECT_EQ(ex.call(src, dst, PxkSize{4, 2}, 0), pxkOk);
    const bool pairs = dst.imageCount() == 2;
    const bool crFirst = ex.name.find("YCrCb") != std::string::npos;
    Ycc v{dst.image(0).at(0, 0), 0, 0};
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 4; ++x) EXPECT_EQ(dst.image(0).at(x, y), v.y);
    if (pairs) {
        v.cb = dst.image(1).at(0, 0, 0);
        v.cr = dst.image(1).at(0, 0, 1);
        EXPECT_EQ(dst.image(1).at(1, 0, 0), v.cb);
        EXPECT_EQ(dst.image(1).at(1, 0, 1), v.cr);
    } else {
        v.cb = dst.image(crFirst ? 2 : 1).at(0, 0);
        v.cr = dst.image(crFirst ? 1 : 2).at(0, 0);
        EXPECT_EQ(dst.image(crFirst ? 2 : 1).at(1, 0), v.cb);
        EXPECT_EQ(dst.image(crFirst ? 1 : 2).at(1, 0), v.cr);
    }
    return v;
}

bool isHdtv(const HdExport& ex) { return ex.name.find("HDTV") != std::string::npos; }

TEST_P(HdTo420Each, BlackWhiteAndGray) {
    const HdExport& ex = *GetParam();
    const Ycc black = uniform(ex, 0, 0, 0), white = uniform(ex, 255, 255, 255), gray = uniform(ex, 128, 128, 128);
    if (isHdtv(ex)) {
        EXPECT_EQ(black.y, 1);
        EXPECT_EQ(white.y, 254);
        EXPECT_EQ(gray.y, 128);
    } else {
        EXPECT_EQ(black.y, 16);
        EXPECT_EQ(white.y, 235);
    }
    EXPECT_EQ(black.cb, 128);
    EXPECT_EQ(black.cr, 128);
    EXPECT_EQ(white.cb, 128);
    EXPECT_EQ(white.cr, 128);
}

// Saturated primaries by hand from the formulas: pure blue has the largest Cb.
TEST(HdTo420Values, PrimariesByTheFormulas) {
    // 709CSC blue: Y = (2032 * 255 + 540672) >> 15 = 32; Cb = (28770 * 1020 +
    // 33685504) >> 18 = 240; Cr = (-2621 * 1020 + 33685504) >> 18 = 118.
    const Ycc cscBlue = uniform(named("BGRToYCbCr420_709CSC_8u_C3P3R"), 0, 0, 255);
    EXPECT_EQ(cscBlue.y, 32);
    EXPECT_EQ(cscBlue.cb, 240);
    EXPECT_EQ(cscBlue.cr, 118);
    // 709HDTV blue: S = 4719 * 255 = 1203345, Y = (S - 9401 + 98304) >> 16 = 19; Cb =
    // (33489 * 1020 + 33685504) >> 18 = 258, clamped to 255; Cr = (-3080 * 1020 +
    // 33685504) >> 18 = 116.
    const Ycc hdBlue = uniform(named("BGRToYCbCr420_709HDTV_8u_AC4P3R"), 0, 0, 255);
    EXPECT_EQ(hdBlue.y, 19);
    EXPECT_EQ(hdBlue.cb, 255);
    EXPECT_EQ(hdBlue.cr, 116);
    // 709HDTV yellow (R = G = 255): Cb = (-33489 * 1020 + 33685504) >> 18 = -2,
    // clamped to 0.
    EXPECT_EQ(uniform(named("BGRToYCbCr420_709HDTV_8u_AC4P3R"), 255, 255, 0).cb, 0);
}

// Both rows of a block feed its chroma: a block whose top row is black and bottom row
// blue gives half the blue chroma.
TEST(HdTo420Values, BothRowsFeedChroma) {
    const HdExport& ex = named("BGRToYCbCr420_709CSC_8u_C3P3R");
    Surface src = Surface::packed(2, 2, 3, 6);
    for (int x = 0; x < 2; ++x) {
        for (int c = 0; c < 3; ++c) src.at(x, 0, c) = 0;
        src.at(x, 1, 0) = 255;  // B
        src.at(x, 1, 1) = 0;
        src.at(x, 1, 2) = 0;
    }
    const std::vector<pxktest::StepKind> tight = {pxktest::StepKind::Tight};
    Surface dst = hdtest::makeSide(ex.dest(2, 2), tight, false, {});
    ASSERT_EQ(ex.call(src, dst, PxkSize{2, 2}, 0), pxkOk);
    // Cb = (28770 * 510 + 33685504) >> 18 = 184; Cr = (-2621 * 510 + 33685504) >> 18 = 123.
    EXPECT_EQ(dst.image(1).at(0, 0), 184);
    EXPECT_EQ(dst.image(2).at(0, 0), 123);
    EXPECT_EQ(dst.image(0).at(0, 0), 16);
    EXPECT_EQ(dst.image(0).at(0, 1), 32);
}

// The YCrCb members put Cr in the second plane and Cb in the third.
TEST(HdTo420Values, YCrCbSwapsThePlanes) {
    const Ycc a = uniform(named("BGRToYCbCr420_709CSC_8u_C3P3R"), 200, 30, 90);
    const Ycc b = uniform(named("BGRToYCrCb420_709CSC_8u_C3P3R"), 200, 30, 90);
    EXPECT_NE(a.cb, a.cr);
    EXPECT_EQ(a.cb, b.cb);
    EXPECT_EQ(a.cr, b.cr);
}

// A 3 x 3 image converts its top-left 2 x 2 block, leaves the rest, and warns.
TEST_P(HdTo420Each, ThreeByThreeConvertsTopLeftBlock) {
    const HdExport& ex = *GetParam();
    Rng rng(77);
    const int bpp = ex.name.find("AC4") != std::string::npos ? 4 : 3;
    Surface src = Surface::packed(3, 3, bpp, 3 * bpp);
    src.fillRandom(rng);
    const std::vector<pxktest::StepKind> tight = {pxktest::StepKind::Tight};
    // Planes of the 3 x 3 region: Y 3 x 3, chroma 1 x 1.
    Surface dst = hdtest::makeSide(ex.dest(3, 3), tight, false, {});
    dst.fillRandom(rng);
    dst.snapshot();
    Surface before = dst.clone();
    EXPECT_EQ(ex.call(src, dst, PxkSize{3, 3}, 0), pxkWarnOddSize);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 3; ++x) {
            if (x < 2 && y < 2) continue;
            EXPECT_EQ(dst.image(0).at(x, y), before.image(0).at(x, y)) << x << "," << y;
        }
    }
    EXPECT_TRUE(dst.guardsIntact());
}

// The fourth source byte takes no part.
TEST(HdTo420Values, FourthSourceByteIgnored) {
    for (const char* name : {"BGRToYCbCr420_709CSC_8u_AC4P3R", "BGRToYCrCb420_709CSC_8u_AC4P3R",
                             "BGRToYCbCr420_709HDTV_8u_AC4P3R", "BGRToYCbCr420_709CSC_8u_AC4P2R"}) {
        const HdExport& ex = named(name);
        Rng rng(5);
        Surface a = Surface::packed(34, 4, 4, 136);
        a.fillRandom(rng);
        Surface b = a.clone();
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 34; ++x) b.at(x, y, 3) = uint8_t(~a.at(x, y, 3));
        const std::vector<pxktest::StepKind> tight = {pxktest::StepKind::Tight};
        Surface da = hdtest::makeSide(ex.dest(34, 4), tight, false, {});
        Surface db = hdtest::makeSide(ex.dest(34, 4), tight, false, {});
        ASSERT_EQ(ex.call(a, da, PxkSize{34, 4}, 0), pxkOk);
        ASSERT_EQ(ex.call(b, db, PxkSize{34, 4}, 0), pxkOk);
        EXPECT_TRUE(pxktest::sameContents(da, db)) << name;
    }
}

}  // namespace
