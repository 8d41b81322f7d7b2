// The tone maps against a model written from their rules: the level (largest sample,
// or twice the mean), the scale, the column rule of each row (width above 6 and no
// overlap for the vector loop; scalar samples up to the destination's 16-byte
// alignment in rows of 16 or more; whole groups of 4 in the vector loop; the rest
// scalar), saturation in the vector columns, and the scalar rules (Linear keeps the
// low 8 bits, Mean limits). Then the documented examples, the fill, the statuses.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "alignment_sweep.h"
#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace {

using pxktest::GuardedImage;
using pxktest::GuardOptions;
using pxktest::ImageGeometry;
using pxktest::Rng;

enum class Map { Linear, Mean };

// truncate() of the processor: toward zero, and INT32_MIN out of range or for NaN.
int32_t truncated(float v) {
    if (!(v >= -2147483648.0f && v < 2147483648.0f)) return INT32_MIN;
    return static_cast<int32_t>(v);
}
uint8_t saturated(int32_t v) { return static_cast<uint8_t>(v < 0 ? 0 : v > 255 ? 255 : v); }
uint8_t lowByte(int32_t v) { return static_cast<uint8_t>(static_cast<uint32_t>(v) & 0xFFu); }

struct Level {
    PxkResult status;  // pxkOk, or the warning
    bool fill;         // the region filled with 0
    float scale;
};

Level levelOf(Map map, const GuardedImage& src) {
    if (map == Map::Linear) {
        float m = -FLT_MAX;
        for (int y = 0; y < src.height(); ++y) {
            for (int x = 0; x < src.width(); ++x) {
                const float v = src.get<float>(x, y);
                if (v > m) m = v;
            }
        }
        if (m < 0.0f) return {pxkWarnNegativeImage, false, 0.0f};
        if (m <= 1.1754944e-38f) return {pxkOk, true, 0.0f};
        return {pxkOk, false, 255.0f / m};
    }
    // Four partial sums, by column modulo 4, joined as (s0 + s1) + (s2 + s3).
    double s[4] = {0, 0, 0, 0};
    for (int y = 0; y < src.height(); ++y) {
        for (int x = 0; x < src.width(); ++x) s[x % 4] += static_cast<double>(src.get<float>(x, y));
    }
    const double d = 2.0 * (((s[0] + s[1]) + (s[2] + s[3])) / (double(src.width()) * double(src.height())));
    if (d < 0.0) return {pxkWarnNegativeImage, false, 0.0f};
    if (d <= 1.1754943508222875e-38) return {pxkOk, true, 0.0f};
    return {pxkOk, false, static_cast<float>(255.0 / d)};
}

// Whether column x of a row takes the vector loop.
bool vectorColumn(int x, int width, const uint8_t* dstRow, bool overlap) {
    if (width <= 6 || overlap) return false;
    const int head = width >= 16 ? int((16 - (reinterpret_cast<std::uintptr_t>(dstRow) % 16)) % 16) : 0;
    const int groups = (width - head) / 4;
    return x >= head && x < head + 4 * groups;
}

// Expected destination, written row by row in order onto `expected`.
PxkResult modelToneMap(Map map, const GuardedImage& src, GuardedImage& dst, GuardedImage& expected) {
    const Level level = levelOf(map, src);
    if (level.status != pxkOk) return level.status;
    for (int y = 0; y < src.height(); ++y) {
        for (int x = 0; x < src.width(); ++x) {
            if (level.fill) {
                expected.at(x, y) = 0;
                continue;
            }
            const int32_t t = truncated(src.get<float>(x, y) * level.scale);
            const bool vec = vectorColumn(x, src.width(), dst.row(y), false);
            expected.at(x, y) = (vec || map == Map::Mean) ? saturated(t) : lowByte(t);
        }
    }
    return pxkOk;
}

PxkResult callToneMap(Map map, const float* s, int32_t ss, uint8_t* d, int32_t ds, int32_t w, int32_t h) {
    return map == Map::Linear ? pxkiToneMapLinear_32f8u_C1R(s, ss, d, ds, w, h)
                              : pxkiToneMapMean_32f8u_C1R(s, ss, d, ds, w, h);
}

void fillFloats(GuardedImage& img, Rng& rng, float lo, float hi) {
    for (int y = 0; y < img.height(); ++y) {
        for (int x = 0; x < img.width(); ++x) img.set<float>(x, y, 0, lo + float(rng.unit()) * (hi - lo));
    }
    img.snapshot();
}

::testing::AssertionResult runCase(Map map, int w, int h, const pxktest::StepPlan& plan, const GuardOptions& so,
                                   const GuardOptions& dopt, Rng& rng, float lo, float hi) {
    GuardedImage src(ImageGeometry{w, h, 1, 4, pxktest::stepFor(plan.src, size_t(w) * 4)}, so);
    GuardedImage dst(ImageGeometry{w, h, 1, 1, pxktest::stepFor(plan.dst, size_t(w))}, dopt);
    src.fillRandom(rng);
    fillFloats(src, rng, lo, hi);
    dst.fillRandom(rng);
    GuardedImage expected = dst.clone();
    const PxkResult want = modelToneMap(map, src, dst, expected);
    const PxkResult got =
        callToneMap(map, reinterpret_cast<const float*>(src.data()), src.step(), dst.data(), dst.step(), w, h);
    if (got != want) return ::testing::AssertionFailure() << "status " << got << ", expected " << want;
    ::testing::AssertionResult r = pxktest::sameRegion(dst, expected);
    if (!r) return r;
    r = dst.guardsIntact();
    if (!r) return r;
    return src.unchanged();
}

class ToneMap : public ::testing::TestWithParam<Map> {};

TEST_P(ToneMap, MatchesModelAtEveryWidthHeightAndStep) {
    for (int w : pxktest::sweepWidths()) {
        for (int h : pxktest::sweepHeights(w)) {
            for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
                Rng rng(pxktest::seedFor("ToneMap", {uint32_t(GetParam()), uint32_t(w), uint32_t(h),
                                                     uint32_t(plan.src), uint32_t(plan.dst)}));
                ASSERT_TRUE(runCase(GetParam(), w, h, plan, {}, {}, rng, -30.0f, 100.0f))
                    << w << "x" << h << " " << pxktest::stepPlanName(plan);
            }
        }
    }
}

// Every destination alignment moves the scalar head of rows of 16 or more.
TEST_P(ToneMap, MatchesModelAtEveryAlignment) {
    for (int w : {7, 15, 16, 17, 35, 67}) {
        pxktest::everyAlignment("ToneMap/" + std::to_string(w), [&](const GuardOptions& so, const GuardOptions&, Rng& rng) {
            ::testing::AssertionResult r = ::testing::AssertionSuccess();
            for (size_t dmis = 0; dmis < 16 && r; ++dmis) {
                GuardOptions dopt;
                dopt.misalign = dmis;
                r = runCase(GetParam(), w, 3, pxktest::stepPlans()[1], so, dopt, rng, -50.0f, 50.0f);
            }
            return r;
        });
    }
}

INSTANTIATE_TEST_SUITE_P(BothMaps, ToneMap, ::testing::Values(Map::Linear, Map::Mean),
                         [](const ::testing::TestParamInfo<Map>& i) {
                             return std::string(i.param == Map::Linear ? "Linear" : "Mean");
                         });

// A 16-byte aligned row of bytes, for literal examples.
struct AlignedBytes {
    alignas(16) uint8_t b[96];
};

TEST(ToneMapCases, AllZeroImageTakesTheFill) {
    for (Map map : {Map::Linear, Map::Mean}) {
        std::vector<float> src(40 * 3, 0.0f);
        std::vector<uint8_t> dst(40 * 3, 0xCD);
        EXPECT_EQ(callToneMap(map, src.data(), 160, dst.data(), 40, 40, 3), pxkOk);
        for (uint8_t v : dst) EXPECT_EQ(v, 0);
    }
}

TEST(ToneMapCases, AllNegativeImageWarnsAndWritesNothing) {
    for (Map map : {Map::Linear, Map::Mean}) {
        std::vector<float> src(9 * 2, -0.5f);
        std::vector<uint8_t> dst(9 * 2, 0xCD);
        EXPECT_EQ(callToneMap(map, src.data(), 36, dst.data(), 9, 9, 2), pxkWarnNegativeImage);
        EXPECT_EQ(pxkWarnNegativeImage, 1);
        for (uint8_t v : dst) EXPECT_EQ(v, 0xCD);
    }
}

TEST(ToneMapCases, OnePixelOfThree) {
    const float s = 3.0f;
    uint8_t d = 0;
    EXPECT_EQ(pxkiToneMapLinear_32f8u_C1R(&s, 4, &d, 1, 1, 1), pxkOk);
    EXPECT_EQ(d, 255);
    EXPECT_EQ(pxkiToneMapMean_32f8u_C1R(&s, 4, &d, 1, 1, 1), pxkOk);
    EXPECT_EQ(d, 127);  // truncate(3.0 * 255 / 6)
}

// Mean 3, d = 6, scale 42.5: 9 -> 382.5 -> 255, 1 -> 42, in scalar and vector columns.
TEST(ToneMapCases, TwiceTheMeanOrMoreGivesFullScaleUnderMean) {
    for (int w : {4, 8}) {
        std::vector<float> src;
        for (int i = 0; i < w / 4; ++i) src.insert(src.end(), {1.0f, 1.0f, 1.0f, 9.0f});
        AlignedBytes d{};
        ASSERT_EQ(pxkiToneMapMean_32f8u_C1R(src.data(), w * 4, d.b, w, w, 1), pxkOk);
        for (int x = 0; x < w; ++x) EXPECT_EQ(d.b[x], x % 4 == 3 ? 255 : 42) << "width " << w << " column " << x;
    }
}

// Scale 1 (largest sample 255): a negative sample gives a wrapped byte in the scalar
// columns and 0 in the vector columns.
TEST(ToneMapCases, LinearNarrowRowsWrapNegativeSamples) {
    const float src[5] = {-1.0f, 255.0f, 0.0f, 128.0f, -3.5f};
    AlignedBytes d{};
    ASSERT_EQ(pxkiToneMapLinear_32f8u_C1R(src, 20, d.b, 5, 5, 1), pxkOk);
    const uint8_t want[5] = {255, 255, 0, 128, 253};
    for (int x = 0; x < 5; ++x) EXPECT_EQ(d.b[x], want[x]) << x;
    // The same under Mean limits to 0.
    ASSERT_EQ(pxkiToneMapMean_32f8u_C1R(src, 20, d.b, 5, 5, 1), pxkOk);
    EXPECT_EQ(d.b[0], 0);
    EXPECT_EQ(d.b[4], 0);
}

TEST(ToneMapCases, LinearWidthSevenHasOneVectorGroup) {
    std::vector<float> src(7, -1.0f);
    src[1] = 255.0f;
    AlignedBytes d{};
    ASSERT_EQ(pxkiToneMapLinear_32f8u_C1R(src.data(), 28, d.b, 7, 7, 1), pxkOk);
    const uint8_t want[7] = {0, 255, 0, 0, 255, 255, 255};
    for (int x = 0; x < 7; ++x) EXPECT_EQ(d.b[x], want[x]) << x;
    // Width 6 is all scalar.
    ASSERT_EQ(pxkiToneMapLinear_32f8u_C1R(src.data(), 24, d.b, 6, 6, 1), pxkOk);
    const uint8_t want6[6] = {255, 255, 255, 255, 255, 255};
    for (int x = 0; x < 6; ++x) EXPECT_EQ(d.b[x], want6[x]) << x;
}

// Width 20, destination 3 bytes past a 16-byte boundary: columns 0-12 are scalar up to
// the aligned address, 13-16 one vector group, 17-19 scalar.
TEST(ToneMapCases, LinearRowOfSixteenOrMoreAlignsTheDestinationFirst) {
    std::vector<float> src(20, -1.0f);
    src[0] = 255.0f;
    AlignedBytes d{};
    ASSERT_EQ(pxkiToneMapLinear_32f8u_C1R(src.data(), 80, d.b + 3, 20, 20, 1), pxkOk);
    for (int x = 0; x < 20; ++x) EXPECT_EQ(d.b[3 + x], (x >= 13 && x <= 16) ? 0 : 255) << x;
    // Aligned: columns 0-15 in one round of 16, 16-19 a group of 4: all vector.
    ASSERT_EQ(pxkiToneMapLinear_32f8u_C1R(src.data(), 80, d.b + 16, 20, 20, 1), pxkOk);
    for (int x = 1; x < 20; ++x) EXPECT_EQ(d.b[16 + x], 0) << x;
}

// Source and destination rows sharing memory take the scalar path (two a round).
TEST(ToneMapCases, OverlappingRowsRunScalar) {
    std::vector<float> buf(24, -1.0f);
    buf[5] = 255.0f;
    uint8_t* dst = reinterpret_cast<uint8_t*>(buf.data());
    ASSERT_EQ(pxkiToneMapLinear_32f8u_C1R(buf.data(), 96, dst, 96, 24, 1), pxkOk);
    for (int x = 0; x < 24; ++x) EXPECT_EQ(dst[x], 255) << x;
}

TEST(ToneMapCases, LevelsAtTheSmallestNormalFloat) {
    std::vector<float> src(9, 0.0f);
    std::vector<uint8_t> dst(9, 0xCD);
    src[4] = FLT_MIN;  // not above the limit: the fill
    EXPECT_EQ(pxkiToneMapLinear_32f8u_C1R(src.data(), 36, dst.data(), 9, 9, 1), pxkOk);
    for (uint8_t v : dst) EXPECT_EQ(v, 0);
    src[4] = 1e-39f;  // a denormal
    std::fill(dst.begin(), dst.end(), 0xCD);
    EXPECT_EQ(pxkiToneMapLinear_32f8u_C1R(src.data(), 36, dst.data(), 9, 9, 1), pxkOk);
    for (uint8_t v : dst) EXPECT_EQ(v, 0);
    // Just above it the image is mapped, but 255 / m overflows to infinity: the
    // largest sample gives infinity and the zeros NaN, each truncated to INT32_MIN,
    // whose byte is 0 saturated or not.
    src[4] = std::nextafter(FLT_MIN, 1.0f);
    std::fill(dst.begin(), dst.end(), 0xCD);
    EXPECT_EQ(pxkiToneMapLinear_32f8u_C1R(src.data(), 36, dst.data(), 9, 9, 1), pxkOk);
    for (uint8_t v : dst) EXPECT_EQ(v, 0);
    src[4] = std::ldexp(1.0f, -100);  // scale 255 * 2^100, exact
    std::fill(dst.begin(), dst.end(), 0xCD);
    EXPECT_EQ(pxkiToneMapLinear_32f8u_C1R(src.data(), 36, dst.data(), 9, 9, 1), pxkOk);
    EXPECT_EQ(dst[4], 255);
    EXPECT_EQ(dst[0], 0);
}

// An image above 524288 pixels, filled as one run (step equal to the width) or row by
// row, from a source of one row of zeros (step 0).
TEST(ToneMapCases, LargeFillAsOneRunOrRowByRow) {
    const int w = 1024, h = 600;
    std::vector<float> zeros(w, 0.0f);
    for (int step : {w, w + 13}) {
        GuardedImage dst(ImageGeometry{w, h, 1, 1, step});
        dst.fill(0xCD, 0xEE);
        ASSERT_EQ(pxkiToneMapMean_32f8u_C1R(zeros.data(), 0, dst.data(), dst.step(), w, h), pxkOk);
        bool allZero = true;
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) allZero = allZero && dst.at(x, y) == 0;
        EXPECT_TRUE(allZero) << "step " << step;
        EXPECT_TRUE(dst.guardsIntact()) << "step " << step;
    }
}

TEST(ToneMapCases, StatusesInTheirOrderAndNothingWritten) {
    for (Map map : {Map::Linear, Map::Mean}) {
        const float src[4] = {1, 2, 3, 4};
        uint8_t dst[4] = {9, 9, 9, 9};
        EXPECT_EQ(callToneMap(map, nullptr, 16, dst, 4, 4, 1), pxkErrNullPtr);
        EXPECT_EQ(callToneMap(map, src, 16, nullptr, 4, 4, 1), pxkErrNullPtr);
        EXPECT_EQ(callToneMap(map, nullptr, 16, dst, 0, 0, 0), pxkErrNullPtr);  // before the size
        EXPECT_EQ(callToneMap(map, src, 16, dst, 4, 0, 1), pxkErrSize);
        EXPECT_EQ(callToneMap(map, src, 16, dst, 4, 4, 0), pxkErrSize);
        EXPECT_EQ(callToneMap(map, src, 16, dst, 4, -4, 1), pxkErrSize);
        for (uint8_t v : dst) EXPECT_EQ(v, 9);
        // Steps are not tested.
        EXPECT_EQ(callToneMap(map, src, 0, dst, 0, 4, 2), pxkOk);
    }
}

}  // namespace
