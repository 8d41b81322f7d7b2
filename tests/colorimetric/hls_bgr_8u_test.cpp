// BGR <-> HLS, 8-bit, packed, planar and alpha forms: the thirteen exports against the
// reference model (groups of 4 in the main loop, B, G, R order on the colour side,
// alpha carried as each form says), the step checks and their place in the check
// order, and known cases.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "harness.h"
#include "pxkcc.h"
#include "reference_hls.h"

namespace {

using colortest::Args;
using colortest::Breakage;
using colortest::kAC4;
using colortest::kC3;
using colortest::kP3;
using colortest::kP4;
using colortest::Member;
using pxktest::Surface;

// Adapters from the harness's arguments to each shape of export.
template <class Fn>
colortest::Call packedToPlanes(Fn fn) {
    return [fn](const Args& a) { return fn(a.src, a.srcStep, a.dstPlanes, a.dstStep, a.size); };
}
template <class Fn>
colortest::Call planesToPacked(Fn fn) {
    return [fn](const Args& a) { return fn(a.srcPlanes, a.srcStep, a.dst, a.dstStep, a.size); };
}
template <class Fn>
colortest::Call planesToPlanes(Fn fn) {
    return [fn](const Args& a) { return fn(a.srcPlanes, a.srcStep, a.dstPlanes, a.dstStep, a.size); };
}

colortest::Reference toHls(bool copyAlpha) {
    return [copyAlpha](const Surface& s, Surface& d, int w, int h) {
        refhls::rgbToHlsRegion(s, d, w, h, 4, true, copyAlpha);
    };
}
colortest::Reference fromHls(bool copyAlpha) {
    return [copyAlpha](const Surface& s, Surface& d, int w, int h) {
        refhls::hlsToRgbRegion(s, d, w, h, 4, true, copyAlpha);
    };
}

const Member kBgrToHlsAC4{"BGRToHLS_8u_AC4R", kAC4, kAC4, colortest::packedCall(pxkiBGRToHLS_8u_AC4R), toHls(false), true};

// The twelve forms that test steps before the size.
const std::vector<Member>& stepsFirstMembers() {
    static const std::vector<Member> list = {
        {"BGRToHLS_8u_AC4P4R", kAC4, kP4, packedToPlanes(pxkiBGRToHLS_8u_AC4P4R), toHls(true)},
        {"BGRToHLS_8u_AP4C4R", kP4, kAC4, planesToPacked(pxkiBGRToHLS_8u_AP4C4R), toHls(true)},
        {"BGRToHLS_8u_AP4R", kP4, kP4, planesToPlanes(pxkiBGRToHLS_8u_AP4R), toHls(true)},
        {"BGRToHLS_8u_C3P3R", kC3, kP3, packedToPlanes(pxkiBGRToHLS_8u_C3P3R), toHls(false)},
        {"BGRToHLS_8u_P3C3R", kP3, kC3, planesToPacked(pxkiBGRToHLS_8u_P3C3R), toHls(false)},
        {"BGRToHLS_8u_P3R", kP3, kP3, planesToPlanes(pxkiBGRToHLS_8u_P3R), toHls(false)},
        {"HLSToBGR_8u_AC4P4R", kAC4, kP4, packedToPlanes(pxkiHLSToBGR_8u_AC4P4R), fromHls(true)},
        {"HLSToBGR_8u_AP4C4R", kP4, kAC4, planesToPacked(pxkiHLSToBGR_8u_AP4C4R), fromHls(true)},
        {"HLSToBGR_8u_AP4R", kP4, kP4, planesToPlanes(pxkiHLSToBGR_8u_AP4R), fromHls(true)},
        {"HLSToBGR_8u_C3P3R", kC3, kP3, packedToPlanes(pxkiHLSToBGR_8u_C3P3R), fromHls(false)},
        {"HLSToBGR_8u_P3C3R", kP3, kC3, planesToPacked(pxkiHLSToBGR_8u_P3C3R), fromHls(false)},
        {"HLSToBGR_8u_P3R", kP3, kP3, planesToPlanes(pxkiHLSToBGR_8u_P3R), fromHls(false)},
    };
    return list;
}

std::vector<Member> allMembers() {
    std::vector<Member> all = stepsFirstMembers();
    all.push_back(kBgrToHlsAC4);
    return all;
}

class HlsBgr8u : public ::testing::TestWithParam<Member> {};

TEST_P(HlsBgr8u, MatchesReferenceAtEveryWidthHeightAndPositiveStep) {
    colortest::sweepAgainstReference(GetParam(), true);
}
TEST_P(HlsBgr8u, ResultsDependOnColumnNotAddress) { colortest::alignmentsAgainstReference(GetParam()); }
TEST_P(HlsBgr8u, NullPointersAndPlanesThenSize) { colortest::checkCommonStatuses(GetParam()); }
// (Every colour goes through the shared arithmetic in the RGB members' tests.)

// A step below 1 on either side is refused, and nothing is written.
TEST_P(HlsBgr8u, StepsBelowOneAreRefused) {
    for (int32_t bad : {0, -1, -16, INT32_MIN}) {
        Breakage src;
        src.srcStep = bad;
        EXPECT_TRUE(colortest::failsWith(GetParam(), pxkErrStep, src)) << bad;
        Breakage dst;
        dst.dstStep = bad;
        EXPECT_TRUE(colortest::failsWith(GetParam(), pxkErrStep, dst)) << bad;
    }
}

INSTANTIATE_TEST_SUITE_P(Members, HlsBgr8u, ::testing::ValuesIn(allMembers()), colortest::testName);

class HlsStepsFirst : public ::testing::TestWithParam<Member> {};

// Pointers, then steps, then size: a zero step wins over a zero width, a null pointer
// over a zero step.
TEST_P(HlsStepsFirst, PointersThenStepsThenSize) {
    Breakage stepAndSize;
    stepAndSize.srcStep = 0;
    stepAndSize.size = {0, 1};
    EXPECT_TRUE(colortest::failsWith(GetParam(), pxkErrStep, stepAndSize));
    stepAndSize.srcStep = 16;
    stepAndSize.dstStep = -4;
    stepAndSize.size = {5, -1};
    EXPECT_TRUE(colortest::failsWith(GetParam(), pxkErrStep, stepAndSize));
    Breakage nullAndStep;
    nullAndStep.nullDst = true;
    nullAndStep.srcStep = 0;
    EXPECT_TRUE(colortest::failsWith(GetParam(), pxkErrNullPtr, nullAndStep));
    Breakage planeAndStep;
    planeAndStep.srcStep = 0;
    if (GetParam().src.planar) {
        planeAndStep.nullSrcPlane = GetParam().src.channels - 1;
    } else {
        planeAndStep.nullDstPlane = GetParam().dst.channels - 1;
    }
    EXPECT_TRUE(colortest::failsWith(GetParam(), pxkErrNullPtr, planeAndStep));
}

INSTANTIATE_TEST_SUITE_P(Members, HlsStepsFirst, ::testing::ValuesIn(stepsFirstMembers()), colortest::testName);

// pxkiBGRToHLS_8u_AC4R tests the size before the steps: a zero width with a zero step
// is pxkErrSize, while pxkiBGRToHLS_8u_P3R gives pxkErrStep.
TEST(HlsBgr8uCases, Ac4TestsSizeBeforeSteps) {
    Breakage b;
    b.srcStep = 0;
    b.dstStep = 0;
    b.size = {0, 1};
    EXPECT_TRUE(colortest::failsWith(kBgrToHlsAC4, pxkErrSize, b));
    EXPECT_TRUE(colortest::failsWith(stepsFirstMembers()[5], pxkErrStep, b)) << stepsFirstMembers()[5].name;
    b.size = {3, 1};
    EXPECT_TRUE(colortest::failsWith(kBgrToHlsAC4, pxkErrStep, b));
}

// The C3P3R edge case: a step of 0 and a width of 0 give pxkErrStep.
TEST(HlsBgr8uCases, C3P3ZeroStepAndZeroWidthIsAStepError) {
    Breakage b;
    b.srcStep = 0;
    b.size = {0, 2};
    EXPECT_TRUE(colortest::failsWith(stepsFirstMembers()[3], pxkErrStep, b));
}

// Blue first in memory: (255, 0, 0) in B, G, R order is pure blue, h = 240 degrees,
// H = trunc(240 * 0.708333313) = 170 (the product rounds to 170 in float), L 127;
// (0, 0, 255) is pure red, H 0.
TEST(HlsBgr8uCases, ColourSideIsInBgrOrder) {
    const Member& c3p3 = stepsFirstMembers()[3];
    for (int width : {4, 5}) {
        std::vector<uint8_t> row;
        for (int i = 0; i < width; ++i) row.insert(row.end(), {255, 0, 0});
        const std::vector<uint8_t> out = colortest::convertPixels(c3p3, row);
        EXPECT_EQ(out[size_t(3 * (width - 1))], 170);
        EXPECT_EQ(out[size_t(3 * (width - 1)) + 1], 127);
        std::vector<uint8_t> red;
        for (int i = 0; i < width; ++i) red.insert(red.end(), {0, 0, 255});
        const std::vector<uint8_t> r = colortest::convertPixels(c3p3, red);
        EXPECT_EQ(r[size_t(3 * (width - 1))], 0);
        EXPECT_EQ(r[size_t(3 * (width - 1)) + 1], 127);
    }
    // Back: HLS (170, 128, 255) is blue, written first.
    const Member& toBgr = stepsFirstMembers()[9];
    const std::vector<uint8_t> bgr = colortest::convertPixels(toBgr, {170, 128, 255, 170, 128, 255, 170, 128, 255,
                                                                      170, 128, 255, 170, 128, 255});
    for (int x : {0, 4}) {
        EXPECT_GE(bgr[size_t(3 * x)], 250) << x;
        EXPECT_LE(bgr[size_t(3 * x) + 2], 5) << x;
    }
}

}  // namespace
