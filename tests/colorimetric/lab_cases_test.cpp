// RGB <-> Lab: the documented cases with literal values, the main-loop and tail
// columns of the 8-bit backward members, the merged walk of the planar backward
// members, and the plain and _L twins.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "lab_members.h"
#include "pxkcc.h"
#include "reference_lab.h"

namespace {

using labtest::Breakage;
using labtest::Images;
using labtest::Member;

// One row of pixels through a packed member: the samples of the result.
template <class S, class D>
std::vector<D> convertRow(const Member& m, const std::vector<S>& samples) {
    const int width = int(samples.size() / 3);
    const int32_t srcSteps[3] = {int32_t(samples.size() * sizeof(S)), 0, 0};
    const int32_t dstSteps[3] = {int32_t(samples.size() * sizeof(D)), 0, 0};
    Images src(m.src, width, 1, srcSteps);
    Images dst(m.dst, width, 1, dstSteps);
    for (int x = 0; x < width; ++x)
        for (int c = 0; c < 3; ++c) src.set<S>(x, 0, c, samples[size_t(3 * x + c)]);
    dst.snapshot();
    EXPECT_EQ(m.call(src, dst, PxkSize{width, 1}, Breakage{}), pxkOk);
    EXPECT_TRUE(dst.guardsIntact());
    std::vector<D> out;
    for (int x = 0; x < width; ++x)
        for (int c = 0; c < 3; ++c) out.push_back(dst.get<D>(x, 0, c));
    return out;
}

TEST(LabCases, BlackAndWhiteIn8u) {
    for (const Member* m : {&labtest::kRgbToLab8u, &labtest::kBgrToLab8u}) {
        EXPECT_EQ((convertRow<uint8_t, uint8_t>(*m, {0, 0, 0})), (std::vector<uint8_t>{0, 128, 128}));
        const std::vector<uint8_t> white = convertRow<uint8_t, uint8_t>(*m, {255, 255, 255});
        EXPECT_EQ(white[0], 255);
        EXPECT_NEAR(white[1], 128, 1);
        EXPECT_NEAR(white[2], 128, 1);
    }
    // 16-bit codes: black is L 0, a and b 128 * 255 = 32640.
    EXPECT_EQ((convertRow<uint8_t, uint16_t>(labtest::kBgrToLab8u16u, {0, 0, 0})),
              (std::vector<uint16_t>{0, 32640, 32640}));
}

// 8-bit primaries by hand: red (255, 0, 0) has X = 0.412453 * 255 / 242.365997,
// Y 0.212671, Z 0.019334 * 255 / 277.631989, so L = 116 * 0.5967 - 16 = 53.24 (code
// 136), a = 500 * (0.7571 - 0.5967) = 80.2 (code 208), b = 200 * (0.5967 - 0.2609) =
// 67.2 (code 195). Blue (0, 0, 255): L 32.30 (code 82), a 79.3 (207), b -107.9 (20).
TEST(LabCases, PrimariesIn8u) {
    EXPECT_EQ((convertRow<uint8_t, uint8_t>(labtest::kRgbToLab8u, {255, 0, 0})), (std::vector<uint8_t>{136, 208, 195}));
    EXPECT_EQ((convertRow<uint8_t, uint8_t>(labtest::kBgrToLab8u, {0, 0, 255})), (std::vector<uint8_t>{136, 208, 195}));
    EXPECT_EQ((convertRow<uint8_t, uint8_t>(labtest::kRgbToLab8u, {0, 0, 255})), (std::vector<uint8_t>{82, 207, 20}));
}

// Floats above 1 are limited: L is at most 100, and white beyond 1 gives exactly 100.
TEST(LabCases, FloatInputAboveOneGivesLAtMost100) {
    for (const Member* m : {&labtest::kRgbToLab32f, &labtest::kBgrToLab32f}) {
        const std::vector<float> lab = convertRow<float, float>(*m, {2.0f, 2.0f, 2.0f, 7.0f, 0.5f, 3.0f});
        EXPECT_EQ(lab[0], 100.0f);
        EXPECT_LE(lab[3], 100.0f);
    }
}

// Below the threshold the forward way is linear: Y = 0.005 of gray gives L 903.3 * Y.
TEST(LabCases, LinearFootBelowTheThreshold) {
    const std::vector<float> lab = convertRow<float, float>(labtest::kRgbToLab32f, {0.005f, 0.005f, 0.005f});
    EXPECT_NEAR(lab[0], 903.3f * 0.005f, 0.01f);
    EXPECT_NEAR(lab[1], 0.0f, 0.05f);
}

// The backward way has no linear foot: L 0 gives fy 0.137931 and Y 0.00262, not 0, so
// black does not come back as black.
TEST(LabCases, BackwardHasNoLinearFoot) {
    const std::vector<float> rgb = convertRow<float, float>(labtest::kLabToRgb32f, {0.0f, 0.0f, 0.0f});
    for (float v : rgb) EXPECT_NEAR(v, 0.00262f, 0.00002f);
    // In codes: black is L 0, a 128, b 128, and back R = 3.240479 X + 0.5 - 1.53715 Y -
    // 0.498535 Z with X = 242.366 * 0.00262, Y = 255 * 0.00262, Z = 277.632 * 0.00262,
    // that is 1.17: every channel 1, in the main loop and in the tail.
    const std::vector<uint8_t> black = convertRow<uint8_t, uint8_t>(labtest::kRgbToLab8u, {0, 0, 0});
    std::vector<uint8_t> codes;
    for (int i = 0; i < 5; ++i) codes.insert(codes.end(), black.begin(), black.end());
    EXPECT_EQ((convertRow<uint8_t, uint8_t>(labtest::kLabToRgb8u, codes)), std::vector<uint8_t>(15, 1));
}

// L 100, a 0, b 0 gives R, G, B close to 1, not clamped.
TEST(LabCases, BackwardWhiteIsCloseToOne) {
    for (const Member* m : {&labtest::kLabToRgb32f, &labtest::kLabToBgr32f}) {
        for (float v : convertRow<float, float>(*m, {100.0f, 0.0f, 0.0f})) EXPECT_NEAR(v, 1.0f, 0.0002f);
    }
    // Out of gamut stays out: a strong a gives a negative G and R above 1.
    const std::vector<float> rgb = convertRow<float, float>(labtest::kLabToRgb32f, {50.0f, 120.0f, 0.0f});
    EXPECT_GT(rgb[0], 0.6f);
    EXPECT_LT(rgb[1], 0.0f);
}

// NaN passes the limit and the thresholds as "not greater" and reaches the results.
TEST(LabCases, NaNReachesTheResults) {
    const float nan = std::nanf("");
    const std::vector<float> lab = convertRow<float, float>(labtest::kRgbToLab32f, {nan, 0.5f, 0.5f});
    EXPECT_TRUE(std::isnan(lab[0]) || std::isnan(lab[1]) || std::isnan(lab[2]));
}

// The 8-bit backward main loop multiplies by refined reciprocals, the tail divides;
// each column by its own rule, the two compared over many codes.
TEST(LabCases, BackwardMainLoopAndTailColumns) {
    int differing = 0;
    for (int l = 0; l < 256; l += 5) {
        for (int a = 0; a < 256; a += 17) {
            std::vector<uint8_t> row;
            for (int i = 0; i < 5; ++i) row.insert(row.end(), {uint8_t(l), uint8_t(a), uint8_t(255 - a)});
            const std::vector<uint8_t> out = convertRow<uint8_t, uint8_t>(labtest::kLabToRgb8u, row);
            const reflab::Triple<uint8_t> main = reflab::backward8u(uint8_t(l), uint8_t(a), uint8_t(255 - a), false);
            const reflab::Triple<uint8_t> tail = reflab::backward8u(uint8_t(l), uint8_t(a), uint8_t(255 - a), true);
            for (int c = 0; c < 3; ++c) {
                EXPECT_EQ(out[size_t(c)], main.v[c]);
                EXPECT_EQ(out[size_t(12 + c)], tail.v[c]);
                differing += main.v[c] != tail.v[c];
            }
        }
    }
    RecordProperty("main loop and tail differ", differing);
}

// Gray codes back: L 255 with a and b 128 gives white in both columns.
TEST(LabCases, BackwardWhiteCodes) {
    const std::vector<uint8_t> out =
        convertRow<uint8_t, uint8_t>(labtest::kLabToRgb8u, {255, 128, 128, 255, 128, 128, 255, 128, 128, 255, 128, 128,
                                                            255, 128, 128});
    for (uint8_t v : out) EXPECT_GE(v, 254);
    const std::vector<uint8_t> out16 =
        convertRow<uint16_t, uint8_t>(labtest::kLabToBgr16u8u, {0, 32640, 32640, 0, 32640, 32640, 0, 32640, 32640,
                                                                0, 32640, 32640, 65535, 32640, 32640});
    // L 0 comes back as 1 (no linear foot), L 65535 as white.
    for (size_t i = 0; i < 12; ++i) EXPECT_EQ(out16[i], 1) << i;
    for (size_t i = 12; i < 15; ++i) EXPECT_GE(out16[i], 254) << i;
}

// The planar backward members walk the region as one run when every step is the
// row's bytes: the same values as the row walk.
template <class T>
void mergedWalkGivesRowWalkValues(const Member& m) {
    const int width = 37, height = 5;
    const int32_t tight[3] = {width * int(sizeof(T)), width * int(sizeof(T)), width * int(sizeof(T))};
    const int32_t padded[3] = {tight[0] + 16, tight[0] + 32, tight[0] + 8};
    pxktest::Rng rng(11);
    Images srcTight(m.src, width, height, tight), srcPadded(m.src, width, height, padded);
    labtest::fillLabFloats<T>(srcTight, width, height, rng);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < 3; ++c) srcPadded.set<T>(x, y, c, srcTight.get<T>(x, y, c));
    Images dstTight(m.dst, width, height, tight), dstPadded(m.dst, width, height, padded);
    dstTight.snapshot();
    ASSERT_EQ(m.call(srcTight, dstTight, PxkSize{width, height}, Breakage{}), pxkOk);
    ASSERT_EQ(m.call(srcPadded, dstPadded, PxkSize{width, height}, Breakage{}), pxkOk);
    EXPECT_TRUE(labtest::sameRegion(dstTight, dstPadded, width, height));
    EXPECT_TRUE(dstTight.guardsIntact());
    Images expected = dstTight.clone();
    m.reference(srcTight, expected, width, height);
    EXPECT_TRUE(labtest::sameRegion(dstTight, expected, width, height));
}

TEST(LabCases, MergedWalkOfThePlanarBackwardMembers) {
    mergedWalkGivesRowWalkValues<float>(labtest::kLabToRgb32fP3);
    mergedWalkGivesRowWalkValues<float>(labtest::kLabToRgb32fP3L);
    mergedWalkGivesRowWalkValues<double>(labtest::kLabToRgb64fP3);
    mergedWalkGivesRowWalkValues<double>(labtest::kLabToRgb64fP3L);
}

// A null step array of a plain planar member gives pxkErrNullPtr, as its _L twin does.
TEST(LabCases, NullStepArrays) {
    for (const Member* m : {&labtest::kRgbToLab32fP3, &labtest::kRgbToLab32fP3L, &labtest::kLabToRgb64fP3,
                            &labtest::kLabToRgb64fP3L}) {
        Breakage b;
        b.nullSrcSteps = true;
        EXPECT_TRUE(labtest::failsWith(*m, pxkErrNullPtr, PxkSize{4, 2}, b)) << m->name;
    }
}

// The _L members take 64-bit sizes: a width or height below 1 in either half of the
// 64-bit value is refused, a zero step converts one row again.
TEST(LabCases, LongSizes) {
    const int32_t steps[3] = {64, 64, 64};
    Images src(labtest::kPlanes32f, 4, 1, steps), dst(labtest::kPlanes32f, 4, 1, steps);
    const float* s[3] = {reinterpret_cast<const float*>(src.planes()[0]), reinterpret_cast<const float*>(src.planes()[1]),
                         reinterpret_cast<const float*>(src.planes()[2])};
    float* d[3] = {reinterpret_cast<float*>(dst.planes()[0]), reinterpret_cast<float*>(dst.planes()[1]),
                   reinterpret_cast<float*>(dst.planes()[2])};
    const int64_t zero[3] = {0, 0, 0};
    dst.snapshot();
    EXPECT_EQ(pxkiLabToRGB_32f_P3R_L(s, zero, d, zero, PxkSizeL{4, 0}), pxkErrSize);
    EXPECT_EQ(pxkiLabToRGB_32f_P3R_L(s, zero, d, zero, PxkSizeL{-(int64_t(1) << 40), 1}), pxkErrSize);
    EXPECT_EQ(pxkiRGBToLab_32f_P3R_L(s, zero, d, zero, PxkSizeL{4, 0}), pxkErrSize);
    EXPECT_TRUE(dst.unchanged());
    EXPECT_EQ(pxkiRGBToLab_32f_P3R_L(s, zero, d, zero, PxkSizeL{4, 3}), pxkOk);
    EXPECT_TRUE(dst.guardsIntact());
}

}  // namespace
