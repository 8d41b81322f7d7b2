// The basic demosaic, 8u and 16u: the reference model over every width and many
// heights, grids, regions and steps; the documented cases with literal values; the
// statuses and their order; guard bytes.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "cfa_reference.h"
#include "demosaic_sweeps.h"
#include "guarded_image.h"
#include "mosaic_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace {

using demosaictest::Mosaic;
using demosaictest::RefRect;
using demosaictest::Rgb;
using pxktest::GuardedImage;
using pxktest::Rng;

PxkResult callCfa(const uint8_t* s, PxkRect roi, PxkSize size, int32_t sStep, uint8_t* d, int32_t dStep, int32_t grid) {
    return pxkiCFAToRGB_8u_C1C3R(s, roi, size, sStep, d, dStep, grid, 0x5A5A);
}
PxkResult callCfa(const uint16_t* s, PxkRect roi, PxkSize size, int32_t sStep, uint16_t* d, int32_t dStep,
                  int32_t grid) {
    return pxkiCFAToRGB_16u_C1C3R(s, roi, size, sStep, d, dStep, grid, -1);
}

// One call on a random image of W x H against the reference: status, every sample of
// the region, the guards, and the source left alone.
template <class T>
::testing::AssertionResult checkCall(int W, int H, PxkRect roi, int grid, pxktest::StepPlan plan, uint32_t seed) {
    Rng rng(seed);
    GuardedImage src(demosaictest::geometry<T>(W, H, 1, pxktest::stepFor(plan.src, std::size_t(W) * sizeof(T))),
                     demosaictest::fencedSource());
    demosaictest::fillMosaic<T>(src, rng);
    const RefRect r = demosaictest::referenceClip(roi.x, roi.y, roi.width, roi.height, W, H);
    const int dw = std::max(r.w, 1), dh = std::max(r.h, 1);
    GuardedImage dst(demosaictest::geometry<T>(dw, dh, 3, pxktest::stepFor(plan.dst, std::size_t(dw) * 3 * sizeof(T))));
    dst.fillRandom(rng);
    GuardedImage expected = dst.clone();
    const int expectedStatus = (W < 2 || H < 2) ? pxkErrSize : pxkOk;
    if (expectedStatus == pxkOk && r.w >= 1 && r.h >= 1) {
        const Mosaic m = demosaictest::readMosaic<T>(src);
        demosaictest::referenceCfa(m, grid, r, [&](int x, int y, const Rgb& rgb) {
            for (int k = 0; k < 3; ++k) expected.set<T>(x - r.x, y - r.y, k, static_cast<T>(rgb[std::size_t(k)]));
        });
    }
    const PxkResult status = callCfa(reinterpret_cast<const T*>(src.data()), roi, PxkSize{W, H}, src.step(),
                                     reinterpret_cast<T*>(dst.data()), dst.step(), grid);
    if (status != expectedStatus) return ::testing::AssertionFailure() << "status " << status << ", expected " << expectedStatus;
    if (!src.unchanged()) return src.unchanged();
    if (!dst.guardsIntact()) return dst.guardsIntact();
    if (expectedStatus != pxkOk || r.w < 1 || r.h < 1) return dst.unchanged();
    return pxktest::sameRegion(dst, expected);
}

std::vector<int> heightsFor(int width) {
    if (width <= 40) return {1, 2, 3, 4, 5, 6, 7, 10};
    return {2, 5, 8};
}

template <class T>
void sweepWholeImages(const char* name) {
    demosaictest::sweepWholeImages(name, heightsFor, [](int W, int H, int grid, pxktest::StepPlan plan, uint32_t seed) {
        return checkCall<T>(W, H, PxkRect{0, 0, W, H}, grid, plan, seed);
    });
}

TEST(CFAToRGB, Whole8uImagesMatchTheReferenceAtEveryWidth) { sweepWholeImages<uint8_t>("cfa8"); }
TEST(CFAToRGB, Whole16uImagesMatchTheReferenceAtEveryWidth) { sweepWholeImages<uint16_t>("cfa16"); }

// Regions at every parity of their first pixel and of the interior's, inside the image
// and running past its edges, with every step plan.
template <class T>
void sweepRegions(const char* name) {
    const demosaictest::RegionSweep sweep{{{9, 9}, {40, 7}, {67, 12}, {130, 6}}, -1, 4, -1, 4, 1, {-5, 0, 5}};
    demosaictest::sweepRegions(name, sweep, checkCall<T>);
}

TEST(CFAToRGB, Regions8uMatchTheReference) { sweepRegions<uint8_t>("cfa8roi"); }
TEST(CFAToRGB, Regions16uMatchTheReference) { sweepRegions<uint16_t>("cfa16roi"); }

TEST(CFAToRGB, EveryStepPlanAtWideSizes) {
    unsigned n = 0;
    for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
        for (int W : {33, 301}) {
            ++n;
            ASSERT_TRUE(checkCall<uint8_t>(W, 9, PxkRect{0, 0, W, 9}, int(n % 4), plan, n)) << pxktest::stepPlanName(plan);
            ASSERT_TRUE(checkCall<uint16_t>(W, 9, PxkRect{1, 1, W, 9}, int((n + 1) % 4), plan, n))
                << pxktest::stepPlanName(plan);
        }
    }
}

// A 2 by 2 image consists of its four corners. Grid 0 (B G / G R) with samples
// B = 10, G = 20 (top right), G = 30 (bottom left), R = 40.
TEST(CFAToRGB, TwoByTwoIsCornersOnly) {
    const uint8_t src[4] = {10, 20, 30, 40};
    uint8_t dst[12] = {};
    ASSERT_EQ(pxkiCFAToRGB_8u_C1C3R(src, PxkRect{0, 0, 2, 2}, PxkSize{2, 2}, 2, dst, 6, 0, 0), pxkOk);
    // (0,0) B: green below it, red on the diagonal. (1,0) G: green (20 + 30 + 1) >> 1.
    // (0,1) G: the same green. (1,1) R: green above it, blue on the diagonal.
    const uint8_t expected[12] = {40, 30, 10, 40, 25, 10, 40, 25, 10, 40, 20, 10};
    for (int i = 0; i < 12; ++i) EXPECT_EQ(dst[i], expected[i]) << "sample " << i;
}

// A region at (1, 1) of an 8 by 8 image with grid 0: its interior starts at (2, 2), a
// blue site; pixel (1, 1) is a red site on the second lines and takes plain means.
TEST(CFAToRGB, RegionAtOneOneStartsItsInteriorOnABlueSite) {
    uint8_t src[64];
    for (int i = 0; i < 64; ++i) src[i] = uint8_t(3 * i + (i % 5) * 7);
    auto c = [&](int x, int y) { return int(src[y * 8 + x]); };
    uint8_t dst[7 * 7 * 3];
    ASSERT_EQ(pxkiCFAToRGB_8u_C1C3R(src, PxkRect{1, 1, 7, 7}, PxkSize{8, 8}, 8, dst, 21, 0, 0), pxkOk);
    // (2, 2) is region pixel (1, 1): blue own (c(2,2) = 75), red from the diagonals
    // 55, 40, 75, 95; the gradients V = |c(2,0) - c(2,4)| = |20 - 130| and
    // H = |c(0,2) - c(4,2)| = |55 - 60| take the row's mean of 65 and 85.
    EXPECT_EQ(c(2, 0), 20);
    EXPECT_EQ(c(2, 4), 130);
    EXPECT_EQ(c(0, 2), 55);
    EXPECT_EQ(c(4, 2), 60);
    const uint8_t* p = dst + 1 * 21 + 1 * 3;
    EXPECT_EQ(p[0], 66);
    EXPECT_EQ(p[1], 75);
    EXPECT_EQ(p[2], 75);
    // Region pixel (0, 0) is image (1, 1), a red site: green the mean of 10, 45, 30,
    // 65, blue the mean of 0, 20, 55, 75.
    EXPECT_EQ(dst[0], 55);
    EXPECT_EQ(dst[1], 38);
    EXPECT_EQ(dst[2], 38);
}

// Where V equals H at every red and blue site, green is the mean of four, in the
// vector blocks as in the tail. Columns alternate 0 and 100 (so both gradients are 0),
// rows add 0 or 8.
TEST(CFAToRGB, EqualGradientsTakeTheFourSampleMeanEverywhere) {
    const int W = 70, H = 9;
    std::vector<uint8_t> src(std::size_t(W * H));
    for (int y = 0; y < H; ++y) {
        for (int x = 0; x < W; ++x) src[std::size_t(y * W + x)] = uint8_t((x % 2) * 100 + (y % 2) * 8 + (x % 4 == 1 ? 1 : 0));
    }
    std::vector<uint8_t> dst(std::size_t(W * H * 3));
    ASSERT_EQ(pxkiCFAToRGB_8u_C1C3R(src.data(), PxkRect{0, 0, W, H}, PxkSize{W, H}, W, dst.data(), W * 3, 1, 0),
              pxkOk);
    // Grid 1 (R G / G B): red at even x and even y. At (x, 2) the column holds 0 and 8
    // alternately, so up = down = 8; left and right hold 100 and 101. The means by
    // column (8) and by row (101) differ from the mean of four (54).
    for (int x = 2; x <= W - 3; x += 2) {
        const int left = 100 + ((x - 1) % 4 == 1 ? 1 : 0), right = 100 + ((x + 1) % 4 == 1 ? 1 : 0);
        EXPECT_EQ(dst[std::size_t((2 * W + x) * 3 + 1)], (8 + 8 + left + right + 2) >> 2) << "x " << x;
    }
}

// A region past the image's edges is cut, and pDst stays the region's first pixel.
TEST(CFAToRGB, RegionPastTheEdgeIsCut) {
    const int W = 12, H = 10;
    Rng rng(7);
    GuardedImage src(demosaictest::geometry<uint8_t>(W, H, 1, W));
    demosaictest::fillMosaic<uint8_t>(src, rng);
    GuardedImage dst(demosaictest::geometry<uint8_t>(5, 4, 3, 15));
    dst.fill(0xEE, 0x11);
    ASSERT_EQ(pxkiCFAToRGB_8u_C1C3R(src.data(), PxkRect{7, 6, 100, 100}, PxkSize{W, H}, W, dst.data(), 15, 2, 0),
              pxkOk);
    EXPECT_TRUE(dst.guardsIntact());
    const Mosaic m = demosaictest::readMosaic<uint8_t>(src);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 5; ++x) {
            const Rgb e = demosaictest::referenceCfaPixel(m, 2, 7 + x, 6 + y);
            for (int k = 0; k < 3; ++k) EXPECT_EQ(dst.at(x, y, k), e[std::size_t(k)]) << x << "," << y;
        }
    }
}

TEST(CFAToRGB, FlatImageGivesItsValueEverywhere) {
    const int W = 37, H = 11;
    std::vector<uint16_t> src(std::size_t(W * H), 65535);
    std::vector<uint16_t> dst(std::size_t(W * H * 3), 0);
    ASSERT_EQ(pxkiCFAToRGB_16u_C1C3R(src.data(), PxkRect{0, 0, W, H}, PxkSize{W, H}, W * 2, dst.data(), W * 6, 3, 0),
              pxkOk);
    for (uint16_t v : dst) ASSERT_EQ(v, 65535);
}

// Statuses: pointers, then the size, then the grid; nothing written on failure.
TEST(CFAToRGB, StatusesInTheirOrderAndNothingWrittenOnFailure) {
    uint8_t src[64] = {};
    GuardedImage dst(demosaictest::geometry<uint8_t>(8, 8, 3, 24));
    dst.fill(0x33, 0x44);
    const PxkRect roi{0, 0, 8, 8};
    uint8_t* d = dst.data();
    EXPECT_EQ(pxkiCFAToRGB_8u_C1C3R(nullptr, roi, PxkSize{8, 8}, 8, d, 24, 0, 0), pxkErrNullPtr);
    EXPECT_EQ(pxkiCFAToRGB_8u_C1C3R(src, roi, PxkSize{8, 8}, 8, nullptr, 24, 0, 0), pxkErrNullPtr);
    EXPECT_EQ(pxkiCFAToRGB_8u_C1C3R(nullptr, roi, PxkSize{0, 0}, 8, d, 24, 9, 0), pxkErrNullPtr);
    EXPECT_EQ(pxkiCFAToRGB_8u_C1C3R(src, roi, PxkSize{1, 8}, 8, d, 24, 0, 0), pxkErrSize);
    EXPECT_EQ(pxkiCFAToRGB_8u_C1C3R(src, roi, PxkSize{8, 1}, 8, d, 24, 0, 0), pxkErrSize);
    EXPECT_EQ(pxkiCFAToRGB_8u_C1C3R(src, roi, PxkSize{1, 1}, 8, d, 24, 4, 0), pxkErrSize);
    EXPECT_EQ(pxkiCFAToRGB_8u_C1C3R(src, roi, PxkSize{8, 8}, 8, d, 24, 4, 0), pxkErrBadArg);
    EXPECT_EQ(pxkiCFAToRGB_8u_C1C3R(src, roi, PxkSize{8, 8}, 8, d, 24, -1, 0), pxkErrBadArg);
    EXPECT_TRUE(dst.unchanged());
    uint16_t src16[64] = {};
    uint16_t* d16 = reinterpret_cast<uint16_t*>(d);
    EXPECT_EQ(pxkiCFAToRGB_16u_C1C3R(nullptr, roi, PxkSize{8, 8}, 16, d16, 24, 0, 0), pxkErrNullPtr);
    EXPECT_EQ(pxkiCFAToRGB_16u_C1C3R(src16, roi, PxkSize{8, 8}, 16, nullptr, 24, 0, 0), pxkErrNullPtr);
    EXPECT_EQ(pxkiCFAToRGB_16u_C1C3R(src16, roi, PxkSize{8, 0}, 16, d16, 24, 0, 0), pxkErrSize);
    EXPECT_EQ(pxkiCFAToRGB_16u_C1C3R(src16, roi, PxkSize{1, 1}, 16, d16, 24, 4, 0), pxkErrSize);
    EXPECT_EQ(pxkiCFAToRGB_16u_C1C3R(src16, roi, PxkSize{8, 8}, 16, d16, 24, 4, 0), pxkErrBadArg);
    EXPECT_TRUE(dst.unchanged());
}

// An empty region, or one outside the image, succeeds and writes nothing.
TEST(CFAToRGB, EmptyRegionsWriteNothing) {
    uint8_t src[64] = {};
    GuardedImage dst(demosaictest::geometry<uint8_t>(8, 8, 3, 24));
    dst.fill(0x33, 0x44);
    for (const PxkRect roi : {PxkRect{0, 0, 0, 8}, PxkRect{0, 0, 8, 0}, PxkRect{8, 0, 4, 4}, PxkRect{0, 9, 4, 4},
                              PxkRect{2, 2, -5, 3}, PxkRect{INT32_MAX, 0, INT32_MAX, 2}}) {
        EXPECT_EQ(pxkiCFAToRGB_8u_C1C3R(src, roi, PxkSize{8, 8}, 8, dst.data(), 24, 0, 0), pxkOk);
    }
    EXPECT_TRUE(dst.unchanged());
}

// A negative x or y is taken as 0 with the width and height kept.
TEST(CFAToRGB, NegativeOriginCountsFromZero) {
    for (uint32_t seed = 0; seed < 8; ++seed) {
        ASSERT_TRUE(checkCall<uint8_t>(20, 9, PxkRect{-3, -1, 10, 5}, int(seed % 4), pxktest::stepPlans()[0], seed));
        ASSERT_TRUE(checkCall<uint16_t>(20, 9, PxkRect{-1, -4, 30, 30}, int(seed % 4), pxktest::stepPlans()[1], seed));
    }
}

}  // namespace
