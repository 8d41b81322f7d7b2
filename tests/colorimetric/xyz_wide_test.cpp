// RGB <-> XYZ on 16u, 16s and 32f samples, C3 and AC4: the twelve exports against the
// reference model (every width, height and step plan, steps with low bits, misaligned
// rows, every 16-bit value in each channel), the known cases, statuses and guards.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "pxkcc.h"
#include "reference_xyz_wide.h"
#include "sample_harness.h"

namespace {

using sampletest::pixelAt;

const std::vector<sampletest::Member> kMembers = SAMPLETEST_CONVERSION_PAIR(RGBToXYZ, XYZToRGB, refxyzwide);

SAMPLETEST_MEMBER_SUITES(XyzWide, kMembers);

// Columns 0 (a group) and width - 1 (the tail) of a row of 7 copies of one pixel.
const int kWidth = 7;
const int kGroup = 0;
const int kTail = 6;

// 16u white: X = trunc(27030.1 + 23434.0 + 11824.0) = 62288; Y and Z above 65535
// saturate.
TEST(XyzWideCases, WhiteIn16u) {
    for (int x : {kGroup, kTail}) {
        EXPECT_EQ(pixelAt<uint16_t>(pxkiRGBToXYZ_16u_C3R, 3, {65535, 65535, 65535}, kWidth, x),
                  (std::vector<uint16_t>{62288, 65535, 65535}));
        EXPECT_EQ(pixelAt<uint16_t>(pxkiRGBToXYZ_16u_AC4R, 4, {65535, 65535, 65535}, kWidth, x),
                  (std::vector<uint16_t>{62288, 65535, 65535}));
    }
}

// 16s: -32768 in every channel is 0 as 16u, which gives 0, and -32768 back; white
// (32767) gives 62288 - 32768 = 29520 and saturated channels.
TEST(XyzWideCases, SignedExtremes) {
    for (int x : {kGroup, kTail}) {
        for (auto fn : {pxkiRGBToXYZ_16s_C3R, pxkiXYZToRGB_16s_C3R}) {
            EXPECT_EQ(pixelAt<int16_t>(fn, 3, {-32768, -32768, -32768}, kWidth, x),
                      (std::vector<int16_t>{-32768, -32768, -32768}));
        }
        EXPECT_EQ(pixelAt<int16_t>(pxkiRGBToXYZ_16s_AC4R, 4, {32767, 32767, 32767}, kWidth, x),
                  (std::vector<int16_t>{29520, 32767, 32767}));
    }
}

// 32f white: X 0.950456 and Y 1.0 unclamped, Z (1.088754) clamped to 1.
TEST(XyzWideCases, WhiteIn32fClampsZAlone) {
    for (int x : {kGroup, kTail}) {
        const std::vector<float> v = pixelAt<float>(pxkiRGBToXYZ_32f_C3R, 3, {1.0f, 1.0f, 1.0f}, kWidth, x);
        EXPECT_FLOAT_EQ(v[0], 0.950456f);
        EXPECT_FLOAT_EQ(v[1], 1.0f);
        EXPECT_EQ(v[2], 1.0f);
    }
    // A bright blue: Z = 2 * 0.950227 is clamped, X and Y are not limited above 1.
    const std::vector<float> b = pixelAt<float>(pxkiRGBToXYZ_32f_AC4R, 4, {4.0f, 4.0f, 2.0f}, kWidth, kTail);
    EXPECT_GT(b[0], 1.0f);
    EXPECT_GT(b[1], 1.0f);
    EXPECT_EQ(b[2], 1.0f);
}

// 32f negative inputs give negative X and Y, and Z 0.
TEST(XyzWideCases, NegativeInputsIn32f) {
    for (int x : {kGroup, kTail}) {
        const std::vector<float> v = pixelAt<float>(pxkiRGBToXYZ_32f_C3R, 3, {-0.5f, -0.5f, -0.5f}, kWidth, x);
        EXPECT_FLOAT_EQ(v[0], -0.475228f);
        EXPECT_FLOAT_EQ(v[1], -0.5f);
        EXPECT_EQ(v[2], 0.0f);
        EXPECT_FALSE(std::signbit(v[2]));
    }
}

// Inverse of pure X: R = 3.240479 clamps to 1 (16u: saturates to 65535), G = -0.969256
// gives 0, B = 0.055648 (16u: trunc(3646.9) = 3646).
TEST(XyzWideCases, InverseOfPureX) {
    for (int x : {kGroup, kTail}) {
        const std::vector<float> v = pixelAt<float>(pxkiXYZToRGB_32f_C3R, 3, {1.0f, 0.0f, 0.0f}, kWidth, x);
        EXPECT_EQ(v[0], 1.0f);
        EXPECT_EQ(v[1], 0.0f);
        EXPECT_FLOAT_EQ(v[2], 0.055648f);
        EXPECT_EQ(pixelAt<uint16_t>(pxkiXYZToRGB_16u_AC4R, 4, {65535, 0, 0}, kWidth, x),
                  (std::vector<uint16_t>{65535, 0, 3646}));
    }
}

// The 16-bit members truncate: G 1 alone gives X = trunc(0.35758) = 0 and
// Y = trunc(0.71516) = 0; G 2 gives Y 1.
TEST(XyzWideCases, SixteenBitTruncates) {
    EXPECT_EQ(pixelAt<uint16_t>(pxkiRGBToXYZ_16u_C3R, 3, {0, 1, 0}, kWidth, kGroup),
              (std::vector<uint16_t>{0, 0, 0}));
    EXPECT_EQ(pixelAt<uint16_t>(pxkiRGBToXYZ_16u_C3R, 3, {0, 2, 0}, kWidth, kTail),
              (std::vector<uint16_t>{0, 1, 0}));
}

// NaN: the forward Z of a NaN pixel is 0; inverse channels pass a NaN.
TEST(XyzWideCases, NotANumber) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (int x : {kGroup, kTail}) {
        const std::vector<float> f = pixelAt<float>(pxkiRGBToXYZ_32f_C3R, 3, {nan, nan, nan}, kWidth, x);
        EXPECT_TRUE(std::isnan(f[0]));
        EXPECT_EQ(f[2], 0.0f);
        const std::vector<float> i = pixelAt<float>(pxkiXYZToRGB_32f_C3R, 3, {nan, 0.0f, 0.0f}, kWidth, x);
        EXPECT_TRUE(std::isnan(i[0]));
    }
}

}  // namespace

namespace {

// Two NaN inputs with different bits: each sum passes on the NaN of its first term, in
// the groups and in the tail alike, so X and Y take R's NaN; Z is 0.
TEST(XyzWideCases, NaNOfTheFirstTermInEveryColumn) {
    const float first = sampletest::floatOfBits(0x7FC00001u), second = sampletest::floatOfBits(0xFFC00002u);
    for (int x : {kGroup, kTail}) {
        const std::vector<float> v = pixelAt<float>(pxkiRGBToXYZ_32f_C3R, 3, {first, second, 0.5f}, kWidth, x);
        EXPECT_EQ(sampletest::bitsOfFloat(v[0]), 0x7FC00001u);
        EXPECT_EQ(sampletest::bitsOfFloat(v[1]), 0x7FC00001u);
        EXPECT_EQ(sampletest::bitsOfFloat(v[2]), 0u);
    }
}

}  // namespace
