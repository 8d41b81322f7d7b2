// YCbCr planes -> BGR by the high-definition inverse matrices: full-resolution 709CSC
// planes and 4:2:0 planes (709CSC, 709HDTV) against the reference model, known
// values, the odd last row and column, statuses and guards.
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
using pxktest::Surface;

using Planes420Fn = PxkResult (*)(const uint8_t* const[3], const int32_t[3], uint8_t*, int32_t, PxkSize);
using Planes420AlphaFn = PxkResult (*)(const uint8_t* const[3], const int32_t[3], uint8_t*, int32_t, PxkSize, uint8_t);
using PlanesFn = PxkResult (*)(const uint8_t* const[3], int32_t, uint8_t*, int32_t, PxkSize);
using PlanesAlphaFn = PxkResult (*)(const uint8_t* const[3], int32_t, uint8_t*, int32_t, PxkSize, uint8_t);

// The 4:2:0 source holds what the call may read: Y of the whole row pairs and pixel
// pairs, chroma width / 2 by height / 2.
std::vector<ImageGeometry> planes420(int w, int h) {
    const int ew = w - w % 2, eh = h - h % 2;
    return {ImageGeometry{ew, eh, 1, 1, ew}, ImageGeometry{w / 2, h / 2, 1, 1, w / 2},
            ImageGeometry{w / 2, h / 2, 1, 1, w / 2}};
}
std::vector<ImageGeometry> planes444(int w, int h) {
    return {ImageGeometry{w, h, 1, 1, w}, ImageGeometry{w, h, 1, 1, w}, ImageGeometry{w, h, 1, 1, w}};
}

// Calls f with the source's plane pointers and steps, one of them left out on request:
// 0 the plane array, 1 the destination, 2 to 4 the entries, 5 the step array.
template <class Call>
PxkResult withPlanes(Surface& s, int nullAt, Call call) {
    const uint8_t* planes[3] = {s.image(0).data(), s.image(1).data(), s.image(2).data()};
    const int32_t steps[3] = {s.image(0).step(), s.image(1).step(), s.image(2).step()};
    if (nullAt >= 2 && nullAt <= 4) planes[nullAt - 2] = nullptr;
    const bool all = nullAt == -1;
    return call(all || nullAt == 0 ? nullptr : planes, all || nullAt == 5 ? nullptr : steps, all || nullAt == 1);
}

HdExport member420(const char* name, Planes420Fn f3, Planes420AlphaFn f4, Inverse m) {
    HdExport ex;
    ex.name = name;
    ex.source = planes420;
    const int bpp = f4 != nullptr ? 4 : 3;
    ex.dest = hdtest::packedPlanes(bpp);
    auto call = [f3, f4](Surface& s, Surface& d, PxkSize z, uint8_t alpha, int nullAt) {
        return withPlanes(s, nullAt, [&](const uint8_t* const* p, const int32_t* st, bool noDst) {
            uint8_t* dst = noDst ? nullptr : d.data();
            return f4 != nullptr ? f4(p, st, dst, d.step(), z, alpha) : f3(p, st, dst, d.step(), z);
        });
    };
    ex.call = [call](Surface& s, Surface& d, PxkSize z, uint8_t alpha) { return call(s, d, z, alpha, 99); };
    ex.nullCall = [call](Surface& s, Surface& d, PxkSize z, int nullAt) { return call(s, d, z, 5, nullAt); };
    ex.pointerCount = 6;
    ex.reference = [m, bpp](Surface& s, Surface& d, int w, int h, uint8_t alpha) {
        const uint8_t* planes[3] = {s.image(0).data(), s.image(1).data(), s.image(2).data()};
        const int steps[3] = {s.image(0).step(), s.image(1).step(), s.image(2).step()};
        hdref::planesToBgr(m, planes, steps, true, d.data(), d.step(), bpp, alpha, w, h);
    };
    ex.warnsOdd = true;
    return ex;
}

HdExport member444(const char* name, PlanesFn f3, PlanesAlphaFn f4) {
    HdExport ex;
    ex.name = name;
    ex.source = planes444;
    ex.sharedSourceStep = true;
    const int bpp = f4 != nullptr ? 4 : 3;
    ex.dest = hdtest::packedPlanes(bpp);
    auto call = [f3, f4](Surface& s, Surface& d, PxkSize z, uint8_t alpha, int nullAt) {
        return withPlanes(s, nullAt, [&](const uint8_t* const* p, const int32_t*, bool noDst) {
            uint8_t* dst = noDst ? nullptr : d.data();
            return f4 != nullptr ? f4(p, s.step(), dst, d.step(), z, alpha) : f3(p, s.step(), dst, d.step(), z);
        });
    };
    ex.call = [call](Surface& s, Surface& d, PxkSize z, uint8_t alpha) { return call(s, d, z, alpha, 99); };
    ex.nullCall = [call](Surface& s, Surface& d, PxkSize z, int nullAt) { return call(s, d, z, 5, nullAt); };
    ex.pointerCount = 5;  // no step array
    ex.reference = [bpp](Surface& s, Surface& d, int w, int h, uint8_t alpha) {
        const uint8_t* planes[3] = {s.image(0).data(), s.image(1).data(), s.image(2).data()};
        const int steps[3] = {s.image(0).step(), s.image(0).step(), s.image(0).step()};
        hdref::planesToBgr(Inverse::Csc709, planes, steps, false, d.data(), d.step(), bpp, alpha, w, h);
    };
    return ex;
}

const std::vector<HdExport>& exports() {
    static const std::vector<HdExport> list = {
        member420("YCbCr420ToBGR_709CSC_8u_P3C3R", pxkiYCbCr420ToBGR_709CSC_8u_P3C3R, nullptr, Inverse::Csc709),
        member420("YCbCr420ToBGR_709HDTV_8u_P3C4R", nullptr, pxkiYCbCr420ToBGR_709HDTV_8u_P3C4R, Inverse::Hdtv709),
        member444("YCbCrToBGR_709CSC_8u_P3C3R", pxkiYCbCrToBGR_709CSC_8u_P3C3R, nullptr),
        member444("YCbCrToBGR_709CSC_8u_P3C4R", nullptr, pxkiYCbCrToBGR_709CSC_8u_P3C4R),
    };
    return list;
}

const HdExport& named(const std::string& n) { return hdtest::exportNamed(exports(), n); }

HDTEST_SWEEP_SUITE(HdPlanesToBgr, exports);

class HdPlanesToBgrEach : public ::testing::TestWithParam<const HdExport*> {};
INSTANTIATE_TEST_SUITE_P(AllExports, HdPlanesToBgrEach, ::testing::ValuesIn(hdtest::exportPointers(exports())),
                         hdtest::exportParamName);

TEST_P(HdPlanesToBgrEach, AnyAlignmentMatchesReference) { hdtest::alignmentsAgainstReference(*GetParam(), 70, 4); }

TEST_P(HdPlanesToBgrEach, ExtremeBytesMatchReference) { hdtest::extremeBytesAgainstReference(*GetParam()); }

TEST_P(HdPlanesToBgrEach, StatusOrderPointersThenSize) { hdtest::statusChecks(*GetParam()); }

// Every Y and chroma sample once, in a 256 x 256 image: Y across, chroma down (the
// 4:2:0 members in 2 x 2 blocks).
TEST_P(HdPlanesToBgrEach, EverySampleAgainstReference) {
    const HdExport& ex = *GetParam();
    Rng rng(3);
    const std::vector<pxktest::StepKind> tight = {pxktest::StepKind::Tight};
    Surface src = hdtest::makeSide(ex.source(512, 512), tight, ex.sharedSourceStep, {});
    Surface dst = hdtest::makeSide(ex.dest(512, 512), tight, false, {});
    dst.fillRandom(rng);
    src.fillRandom(rng);
    for (int y = 0; y < src.image(0).height(); ++y)
        for (int x = 0; x < src.image(0).width(); ++x) src.image(0).at(x, y) = uint8_t(x / 2);
    for (int p = 1; p < 3; ++p)
        for (int y = 0; y < src.image(p).height(); ++y)
            for (int x = 0; x < src.image(p).width(); ++x)
                src.image(p).at(x, y) = uint8_t(p == 1 ? y / (src.image(p).height() / 256) : x * 7 + y);
    EXPECT_TRUE(hdtest::compareOnce(ex, src, dst, 512, 512, 200));
}

// One pixel Y, Cb, Cr into BGR(A) with a 2 x 2 region (the 4:2:0 chroma shared).
std::vector<int> convertOne(const HdExport& ex, int y, int cb, int cr) {
    const std::vector<pxktest::StepKind> tight = {pxktest::StepKind::Tight};
    Surface src = hdtest::makeSide(ex.source(2, 2), tight, ex.sharedSourceStep, {});
    for (int p = 0; p < 3; ++p)
        for (int yy = 0; yy < src.image(p).height(); ++yy)
            for (int x = 0; x < src.image(p).width(); ++x) src.image(p).at(x, yy) = uint8_t(p == 0 ? y : p == 1 ? cb : cr);
    Surface dst = hdtest::makeSide(ex.dest(2, 2), tight, false, {});
    EXPECT_EQ(ex.call(src, dst, PxkSize{2, 2}, 0x5C), pxkOk);
    std::vector<int> out;
    for (int c = 0; c < dst.image(0).channels(); ++c) out.push_back(dst.image(0).at(1, 1, c));
    return out;
}

TEST(HdPlanesToBgrValues, Csc709BlackAndWhite) {
    for (const char* name : {"YCbCr420ToBGR_709CSC_8u_P3C3R", "YCbCrToBGR_709CSC_8u_P3C3R"}) {
        EXPECT_EQ(convertOne(named(name), 16, 128, 128), (std::vector<int>{0, 0, 0})) << name;
        EXPECT_EQ(convertOne(named(name), 235, 128, 128), (std::vector<int>{255, 255, 255})) << name;
    }
    EXPECT_EQ(convertOne(named("YCbCrToBGR_709CSC_8u_P3C4R"), 16, 128, 128), (std::vector<int>{0, 0, 0, 0x5C}));
}

// 709CSC pure red from the matrix: Y 63, Cb 102, Cr 240 gives B (76284 * 63 +
// 138609 * -26 - 1187776) >> 16 = 0, G (76284 * 63 - 13959 * -26 - 34996 * 112 -
// 1187776) >> 16 = 0 (clamped from -1), R (76284 * 63 + 117506 * 112 - 1187776) >> 16
// = 255 (clamped from 256).
TEST(HdPlanesToBgrValues, Csc709RedByTheMatrix) {
    EXPECT_EQ(convertOne(named("YCbCrToBGR_709CSC_8u_P3C3R"), 63, 102, 240), (std::vector<int>{0, 0, 255}));
}

// 709HDTV: Y as it is with neutral chroma; alpha in byte 3.
TEST(HdPlanesToBgrValues, Hdtv709NeutralLumaAsItIs) {
    const HdExport& ex = named("YCbCr420ToBGR_709HDTV_8u_P3C4R");
    EXPECT_EQ(convertOne(ex, 0, 128, 128), (std::vector<int>{0, 0, 0, 0x5C}));
    EXPECT_EQ(convertOne(ex, 99, 128, 128), (std::vector<int>{99, 99, 99, 0x5C}));
    EXPECT_EQ(convertOne(ex, 255, 128, 128), (std::vector<int>{255, 255, 255, 0x5C}));
}

// 4:2:0 with an odd width or height: whole pairs converted, the last odd row and
// column left as they were, pxkWarnOddSize; a width or height of 1 converts nothing.
TEST(HdPlanesToBgrValues, OddSizes420) {
    for (const char* name : {"YCbCr420ToBGR_709CSC_8u_P3C3R", "YCbCr420ToBGR_709HDTV_8u_P3C4R"}) {
        const HdExport& ex = named(name);
        for (PxkSize z : {PxkSize{1, 1}, PxkSize{1, 2}, PxkSize{2, 1}, PxkSize{3, 3}, PxkSize{5, 2}, PxkSize{4, 4}}) {
            Rng rng(11);
            const std::vector<pxktest::StepKind> tight = {pxktest::StepKind::Tight};
            Surface src = hdtest::makeSide(ex.source(z.width, z.height), tight, false, {});
            Surface dst = hdtest::makeSide(ex.dest(z.width, z.height), tight, false, {});
            src.fillRandom(rng);
            dst.fillRandom(rng);
            dst.snapshot();
            Surface before = dst.clone();
            const PxkResult want = (z.width % 2 != 0 || z.height % 2 != 0) ? pxkWarnOddSize : pxkOk;
            EXPECT_EQ(ex.call(src, dst, z, 1), want) << name << " " << hdtest::sizeText(z);
            const int bpp = dst.image(0).channels();
            for (int y = 0; y < z.height; ++y)
                for (int x = 0; x < z.width; ++x) {
                    if (x < z.width - z.width % 2 && y < z.height - z.height % 2) continue;
                    for (int c = 0; c < bpp; ++c) {
                        EXPECT_EQ(dst.image(0).at(x, y, c), before.image(0).at(x, y, c));
                    }
                }
            if (z.width < 2 || z.height < 2) {
                EXPECT_TRUE(dst.unchanged()) << name << " " << hdtest::sizeText(z);
            }
            EXPECT_TRUE(dst.guardsIntact());
        }
    }
}

}  // namespace
