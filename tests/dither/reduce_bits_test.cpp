// The 32 ReduceBits members against the reference model over every width, several
// heights and step layouts, every method with and without noise; the documented cases
// with literal values; statuses and their order.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "dither_harness.h"
#include "sweep.h"

namespace {

using dithertest::Kind;
using dithertest::Member;
using dithertest::members;
using dithertest::RunSpec;
using pxktest::Rng;

// Steps of one side that are whole elements (the diffusion paths cut others): tight,
// padded, loose by three samples, zero, negative with a gap, negative tight.
int stepOf(int kind, int rowBytes, int sampleBytes) {
    switch (kind % 6) {
        case 0:
            return rowBytes;
        case 1:
            return rowBytes + 32;
        case 2:
            return rowBytes + 3 * sampleBytes;
        case 3:
            return 0;
        case 4:
            return -(rowBytes + 5 * sampleBytes);
        default:
            return -rowBytes;
    }
}

int levelsFor(const Member& m, uint32_t pick) {
    static const int small[] = {2, 3, 5, 16, 17, 100, 255, 256};
    static const int wide[] = {2, 7, 256, 257, 1000, 4097, 65535, 65536};
    return m.dst == Kind::U8 ? small[pick % 8] : wide[pick % 8];
}

void sweepMember(const Member& m) {
    const std::vector<int> noises = {0, 37};
    const int rowPixels = dithertest::samplesPerPixel(m);
    unsigned caseIndex = 0;
    for (int w : pxktest::sweepWidths()) {
        for (int h : pxktest::sweepHeights(w)) {
            for (int dtype = 0; dtype <= 4; ++dtype) {
                for (uint32_t noise : noises) {
                    if (dtype == 0 && noise != 0 && w > 8) continue;  // noise has no effect there
                    if (pxktest::kLightSweep && (caseIndex++ % 4) != 0) continue;
                    const uint32_t pick = uint32_t(w * 7 + h * 3 + dtype * 5 + int(noise));
                    RunSpec r;
                    r.width = w;
                    r.height = h;
                    r.srcStep = stepOf(int(pick), w * rowPixels * refdither::bytesOf(m.src), refdither::bytesOf(m.src));
                    r.dstStep =
                        stepOf(int(pick / 6 + 1), w * rowPixels * refdither::bytesOf(m.dst), refdither::bytesOf(m.dst));
                    r.noise = noise;
                    r.dtype = dtype;
                    r.levels = levelsFor(m, pick / 5 + uint32_t(h));
                    r.misalign = std::size_t(pick % 64);
                    r.seed = pxktest::seedFor(m.name.c_str(), {uint32_t(w), uint32_t(h), uint32_t(dtype), noise});
                    ASSERT_TRUE(dithertest::runAgainstReference(m, r));
                }
            }
        }
    }
}

class EveryMember : public ::testing::TestWithParam<int> {};

TEST_P(EveryMember, MatchesTheReferenceOverWidthsHeightsStepsMethodsAndNoise) {
    sweepMember(members()[size_t(GetParam())]);
}

// Every level count of an 8-bit destination and a spread of 16-bit ones, every method.
TEST_P(EveryMember, MatchesTheReferenceForManyLevelCountsAndNoises) {
    const Member& m = members()[size_t(GetParam())];
    const int top = dithertest::maxLevelsOf(m);
    const int stride = pxktest::kLightSweep ? 23 : (top == 256 ? 3 : 997);
    for (int levels = 2; levels <= top; levels += stride) {
        for (int dtype = 0; dtype <= 4; ++dtype) {
            RunSpec r;
            r.width = 37;
            r.height = 3;
            r.srcStep = r.width * dithertest::samplesPerPixel(m) * refdither::bytesOf(m.src);
            r.dstStep = r.width * dithertest::samplesPerPixel(m) * refdither::bytesOf(m.dst);
            r.noise = uint32_t((levels * 13 + dtype * 29) % 101);
            r.dtype = dtype;
            r.levels = levels;
            r.seed = pxktest::seedFor(m.name.c_str(), {uint32_t(levels), uint32_t(dtype), 99u});
            ASSERT_TRUE(dithertest::runAgainstReference(m, r));
        }
    }
}

// Steps that are no multiple of the element size: the diffusion paths cut them to
// whole elements, the others keep the bytes.
TEST_P(EveryMember, StepsOfOddBytesAreCutOnTheDiffusionPathsOnly) {
    const Member& m = members()[size_t(GetParam())];
    for (int extra = 1; extra <= 7; extra += 2) {
        for (int dtype = 0; dtype <= 4; ++dtype) {
            RunSpec r;
            r.width = 19;
            r.height = 4;
            r.srcStep = r.width * dithertest::samplesPerPixel(m) * refdither::bytesOf(m.src) + extra;
            r.dstStep = r.width * dithertest::samplesPerPixel(m) * refdither::bytesOf(m.dst) + extra + 2;
            // Downward steps on every other round (the cut rounds them toward minus
            // infinity).
            if (extra % 4 == 3) {
                r.srcStep = -r.srcStep;
                r.dstStep = -r.dstStep;
            }
            r.noise = dtype == 2 ? 0u : 12u;
            r.dtype = dtype;
            r.levels = 5;
            r.seed = pxktest::seedFor(m.name.c_str(), {uint32_t(extra), uint32_t(dtype), 7u});
            ASSERT_TRUE(dithertest::runAgainstReference(m, r));
        }
    }
}

// The extremes of noise, and every one of a few in between.
TEST_P(EveryMember, MatchesTheReferenceAtNoiseExtremes) {
    const Member& m = members()[size_t(GetParam())];
    for (uint32_t noise : {1u, 50u, 99u, 100u}) {
        for (int dtype = 1; dtype <= 4; ++dtype) {
            RunSpec r;
            r.width = 67;
            r.height = 5;
            r.srcStep = r.width * dithertest::samplesPerPixel(m) * refdither::bytesOf(m.src) + 16;
            r.dstStep = r.width * dithertest::samplesPerPixel(m) * refdither::bytesOf(m.dst);
            r.noise = noise;
            r.dtype = dtype;
            r.levels = m.dst == Kind::U8 ? 9 : 300;
            r.seed = pxktest::seedFor(m.name.c_str(), {noise, uint32_t(dtype), 5u});
            ASSERT_TRUE(dithertest::runAgainstReference(m, r));
        }
    }
}

std::string memberName(const ::testing::TestParamInfo<int>& info) {
    std::string n = members()[size_t(info.param)].name;
    for (char& c : n) {
        if (c == '_') c = 'x';
    }
    return n;
}

INSTANTIATE_TEST_SUITE_P(ReduceBits, EveryMember, ::testing::Range(0, 32), memberName);

// ---------------------------------------------------------------------------------
// Documented cases, literal values
// ---------------------------------------------------------------------------------

std::vector<uint8_t> run8u(PxkResult (*f)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize, uint32_t,
                                          PxkDitherType, int32_t, uint8_t*),
                           const std::vector<uint8_t>& src, int width, int height, uint32_t noise, int dtype,
                           int levels) {
    std::vector<uint8_t> dst(src.size(), 0xAA);
    std::vector<uint8_t> buffer(100000, 0x55);
    const int channels = int(src.size()) / (width * height);
    EXPECT_EQ(f(src.data(), width * channels, dst.data(), width * channels, PxkSize{width, height}, noise, dtype,
                levels, buffer.data()),
              pxkOk);
    return dst;
}

TEST(ReduceBitsCases, NoDitherWithTwoLevelsSplitsAtHalf) {
    const std::vector<uint8_t> src = {0, 127, 128, 255};
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, src, 4, 1, 0, pxkDitherNone, 2), (std::vector<uint8_t>{0, 0, 255, 255}));
}

TEST(ReduceBitsCases, NoiseHasNoEffectWithoutDither) {
    const std::vector<uint8_t> src = {0, 127, 128, 255};
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, src, 4, 1, 80, pxkDitherNone, 2), (std::vector<uint8_t>{0, 0, 255, 255}));
}

TEST(ReduceBitsCases, FloydSteinbergWith256LevelsKeepsEverySample) {
    std::vector<uint8_t> src(64 * 3);
    for (size_t i = 0; i < src.size(); ++i) src[i] = uint8_t(i * 37 + 11);
    for (int dtype : {pxkDitherFS, pxkDitherJJN, pxkDitherStucki}) {
        EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, src, 64, 3, 0, dtype, 256), src) << dtype;
    }
}

TEST(ReduceBitsCases, NoNoiseThresholdIsExactlyHalfAStep) {
    // 8u, two levels: step 255, threshold 127.5.
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, {127}, 1, 1, 0, pxkDitherFS, 2), (std::vector<uint8_t>{0}));
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, {128}, 1, 1, 0, pxkDitherFS, 2), (std::vector<uint8_t>{255}));
}

TEST(ReduceBitsCases, ErrorsCarryFromOneChannelIntoTheNext) {
    // Channel 0 leaves error 100; channel 1 takes 5/16 of it (31.25) and crosses the
    // half step (255 with error -123.75); channel 2 takes 5/16 of that and stays at 0.
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C3R, {100, 100, 100}, 1, 1, 0, pxkDitherFS, 2),
              (std::vector<uint8_t>{0, 255, 0}));
}

TEST(ReduceBitsCases, ClampedSampleCarriesNoError) {
    // 255 saturates the upper clamp: the next pixel takes no error from it.
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, {255, 100}, 2, 1, 0, pxkDitherFS, 2), (std::vector<uint8_t>{255, 0}));
    // Below the clamp, 200 leaves error -55, and 150 - 55 * 7 / 16 = 125.9 stays under
    // the half step.
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, {200, 150}, 2, 1, 0, pxkDitherFS, 2), (std::vector<uint8_t>{255, 0}));
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, {100, 100}, 2, 1, 0, pxkDitherFS, 2), (std::vector<uint8_t>{0, 255}));
}

TEST(ReduceBitsCases, OrderedOnePixelAtRowZeroRisesForAnyRemainder) {
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, {1}, 1, 1, 0, pxkDitherBayer, 2), (std::vector<uint8_t>{255}));
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, {0}, 1, 1, 0, pxkDitherBayer, 2), (std::vector<uint8_t>{0}));
}

TEST(ReduceBitsCases, OrderedRowThreeColumnZeroNeedsAWholeStep) {
    // Column 0 down four rows: entries 0, 12/15, 3/15, 1 of a step of 255.
    const std::vector<uint8_t> src = {254, 254, 254, 254};
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, src, 1, 4, 0, pxkDitherBayer, 2), (std::vector<uint8_t>{255, 255, 255, 0}));
    const std::vector<uint8_t> mid = {180, 180, 180, 180};
    // 180 against 0, 204, 51, 255.
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, mid, 1, 4, 0, pxkDitherBayer, 2), (std::vector<uint8_t>{255, 0, 255, 0}));
}

TEST(ReduceBitsCases, OrderedMatrixIsIndexedFromTheRegionsCorner) {
    // A row of 150s against the thresholds 0 136 34 170 of row 0 and 204 68 238 102 of
    // row 1 (a step of 255).
    const std::vector<uint8_t> src(4, 150);
    EXPECT_EQ(run8u(pxkiReduceBits_8u_C1R, src, 4, 1, 0, pxkDitherBayer, 2),
              (std::vector<uint8_t>{255, 255, 255, 0}));
    const std::vector<uint8_t> two(8, 150);
    const std::vector<uint8_t> out = run8u(pxkiReduceBits_8u_C1R, two, 4, 2, 0, pxkDitherBayer, 2);
    EXPECT_EQ(std::vector<uint8_t>(out.begin() + 4, out.end()), (std::vector<uint8_t>{0, 255, 0, 255}));
}

TEST(ReduceBitsCases, FloatSourcesAreNotClampedBeforeQuantising) {
    // 32f16u without dither, 65536 levels: -0.25 gives a negative code, saturated to 0;
    // 1.25 saturates to 65535.
    const float src[2] = {-0.25f, 1.25f};
    uint16_t dst[2] = {7, 7};
    ASSERT_EQ(pxkiReduceBits_32f16u_C1R(src, 8, dst, 4, PxkSize{2, 1}, 0, pxkDitherNone, 65536, nullptr), pxkOk);
    EXPECT_EQ(dst[0], 0);
    EXPECT_EQ(dst[1], 65535);
    // Ordered: 2.0 with two levels quantises to q = 2, code 131070, saturated.
    const float big[1] = {2.0f};
    uint8_t out[1] = {7};
    ASSERT_EQ(pxkiReduceBits_32f8u_C1R(big, 4, out, 1, PxkSize{1, 1}, 0, pxkDitherBayer, 2, nullptr), pxkOk);
    EXPECT_EQ(out[0], 255);
}

TEST(ReduceBitsCases, SixteenBitSourceIntoEightBitsClampsAtTheSixteenBitTop) {
    // 65535 reaches the upper clamp of the domain 0..65535: the largest 8-bit code.
    const uint16_t src[2] = {65535, 65280};
    uint8_t dst[2] = {0, 0};
    std::vector<uint8_t> buffer(100000);
    ASSERT_EQ(pxkiReduceBits_16u8u_C1R(src, 4, dst, 2, PxkSize{2, 1}, 0, pxkDitherFS, 256, buffer.data()), pxkOk);
    EXPECT_EQ(dst[0], 255);
    EXPECT_EQ(dst[1], 254);  // q = trunc(65280 * 255 / 65535) * 257 = 65278, >> 8
}

TEST(ReduceBitsCases, TwoCallsWithNoiseGiveTheSameImage) {
    for (const Member& m : members()) {
        for (int dtype = 1; dtype <= 4; ++dtype) {
            const int w = 33, h = 4, spp = dithertest::samplesPerPixel(m);
            Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(dtype), 3u}));
            pxktest::GuardedImage src({w, h, spp, refdither::bytesOf(m.src), w * spp * refdither::bytesOf(m.src)});
            dithertest::fillSource(src, m.src, rng);
            pxktest::GuardedImage a({w, h, spp, refdither::bytesOf(m.dst), w * spp * refdither::bytesOf(m.dst)});
            a.fill(0, 0);
            pxktest::GuardedImage b = a.clone();
            std::vector<uint8_t> buf1(20000, 0x11), buf2(20000, 0xEE);
            ASSERT_EQ(m.call(src.data(), src.step(), a.data(), a.step(), PxkSize{w, h}, 60, dtype, 7, buf1.data()),
                      pxkOk);
            ASSERT_EQ(m.call(src.data(), src.step(), b.data(), b.step(), PxkSize{w, h}, 60, dtype, 7, buf2.data() + 5),
                      pxkOk);
            EXPECT_TRUE(pxktest::sameRegion(a, b)) << m.name << " dtype " << dtype;
        }
    }
}

// ---------------------------------------------------------------------------------
// Statuses and their order
// ---------------------------------------------------------------------------------

struct StatusCase {
    const char* what;
    bool nullSrc, nullDst, nullBuffer;
    int width, height;
    uint32_t noise;
    int dtype;
    int levels;  // 0: the member's largest + 1; -1: the largest
    PxkResult expected;
};

TEST(ReduceBitsStatus, EveryCheckInItsOrderAndNothingWrittenOnFailure) {
    const StatusCase cases[] = {
        {"null source", true, false, false, 4, 4, 0, 0, 2, pxkErrNullPtr},
        {"null destination", false, true, false, 4, 4, 0, 0, 2, pxkErrNullPtr},
        {"null pointer before size", true, false, false, 0, 4, 0, 0, 2, pxkErrNullPtr},
        {"width 0", false, false, false, 0, 4, 0, 0, 2, pxkErrSize},
        {"height 0", false, false, false, 4, 0, 0, 0, 2, pxkErrSize},
        {"negative width", false, false, false, -3, 4, 0, 0, 2, pxkErrSize},
        {"size before noise", false, false, false, 4, -1, 101, 9, 1, pxkErrSize},
        {"noise 101 with dtype 0", false, false, false, 4, 4, 101, 0, 2, pxkErrNoiseRange},
        {"noise before levels", false, false, false, 4, 4, 101, 0, 1, pxkErrNoiseRange},
        {"levels 1", false, false, false, 4, 4, 0, 0, 1, pxkErrDitherLevels},
        {"levels above the largest", false, false, false, 4, 4, 0, 0, 0, pxkErrDitherLevels},
        {"levels before dtype", false, false, false, 4, 4, 0, 9, 1, pxkErrDitherLevels},
        {"dtype 5", false, false, false, 4, 4, 0, 5, 2, pxkErrDitherType},
        {"dtype -1", false, false, false, 4, 4, 3, -1, 2, pxkErrDitherType},
        {"dtype before buffer", false, false, true, 4, 4, 3, 7, 2, pxkErrDitherType},
        {"FS null buffer", false, false, true, 4, 4, 0, 1, 2, pxkErrNullPtr},
        {"JJN null buffer", false, false, true, 4, 4, 0, 2, 2, pxkErrNullPtr},
        {"Stucki null buffer with noise", false, false, true, 4, 4, 9, 3, 2, pxkErrNullPtr},
        {"ordered with noise null buffer", false, false, true, 4, 4, 1, 4, 2, pxkErrNullPtr},
    };
    for (const Member& m : members()) {
        for (const StatusCase& c : cases) {
            const int w = 4, h = 4, spp = dithertest::samplesPerPixel(m);
            Rng rng(7);
            pxktest::GuardedImage src({w, h, spp, refdither::bytesOf(m.src), w * spp * refdither::bytesOf(m.src)});
            src.fillRandom(rng);
            pxktest::GuardedImage dst({w, h, spp, refdither::bytesOf(m.dst), w * spp * refdither::bytesOf(m.dst)});
            dst.fillRandom(rng);
            dithertest::Scratch buffer(20000, 3, rng);
            const int levels = c.levels == 0 ? dithertest::maxLevelsOf(m) + 1 : c.levels;
            const PxkResult st = m.call(c.nullSrc ? nullptr : src.data(), src.step(), c.nullDst ? nullptr : dst.data(),
                                        dst.step(), PxkSize{c.width, c.height}, c.noise, c.dtype, levels,
                                        c.nullBuffer ? nullptr : buffer.data());
            EXPECT_EQ(st, c.expected) << m.name << ": " << c.what;
            EXPECT_TRUE(dst.unchanged()) << m.name << ": " << c.what;
            EXPECT_TRUE(buffer.unchanged()) << m.name << ": " << c.what;
        }
    }
}

TEST(ReduceBitsStatus, LevelLimitsByDestination) {
    for (const Member& m : members()) {
        const int spp = dithertest::samplesPerPixel(m);
        std::vector<uint8_t> src(size_t(spp * 4), 0), dst(size_t(spp * 4), 0);
        const int top = dithertest::maxLevelsOf(m);
        EXPECT_EQ(m.call(src.data(), 0, dst.data(), 0, PxkSize{1, 1}, 0, 0, 2, nullptr), pxkOk) << m.name;
        EXPECT_EQ(m.call(src.data(), 0, dst.data(), 0, PxkSize{1, 1}, 0, 0, top, nullptr), pxkOk) << m.name;
        EXPECT_EQ(m.call(src.data(), 0, dst.data(), 0, PxkSize{1, 1}, 0, 0, top + 1, nullptr), pxkErrDitherLevels)
            << m.name;
        // 257 levels: accepted into 16 bits, refused into 8.
        EXPECT_EQ(m.call(src.data(), 0, dst.data(), 0, PxkSize{1, 1}, 0, 0, 257, nullptr),
                  m.dst == Kind::U8 ? pxkErrDitherLevels : pxkOk)
            << m.name;
        // Ordered without noise reads no buffer.
        EXPECT_EQ(m.call(src.data(), 0, dst.data(), 0, PxkSize{1, 1}, 0, pxkDitherBayer, 2, nullptr), pxkOk) << m.name;
    }
}

}  // namespace
