// The homogeneity-directed demosaic, 8u and 16u: the reference model over every width
// and many heights, grids, regions and steps; the documented cases; statuses and
// their order; guard bytes around the destination and the work buffer.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "ahd_reference.h"
#include "demosaic_sweeps.h"
#include "guarded_image.h"
#include "mosaic_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace {

using demosaictest::AhdReference;
using demosaictest::Mosaic;
using pxktest::GuardedImage;
using pxktest::Rng;

PxkResult callAhd(const uint8_t* s, PxkRect roi, PxkSize size, int32_t sStep, uint8_t* d, int32_t dStep, int32_t grid,
                  uint8_t* buffer, int32_t bufferStep) {
    return pxkiDemosaicAHD_8u_C1C3R(s, roi, size, sStep, d, dStep, grid, buffer, bufferStep);
}
PxkResult callAhd(const uint16_t* s, PxkRect roi, PxkSize size, int32_t sStep, uint16_t* d, int32_t dStep, int32_t grid,
                  uint8_t* buffer, int32_t bufferStep) {
    return pxkiDemosaicAHD_16u_C1C3R(s, roi, size, sStep, d, dStep, grid, buffer, bufferStep);
}

// The documented least buffer step for a region `width` pixels wide.
template <class T>
int leastBufferStep(int width) {
    return (sizeof(T) == 1 ? 33 : 41) * width + 384;
}

struct Outcome {
    int saturated = 0;  // results the reference saturated
};

template <class T>
::testing::AssertionResult checkCall(int W, int H, PxkRect roi, int grid, pxktest::StepPlan plan, uint32_t seed,
                                     Outcome* outcome = nullptr) {
    Rng rng(seed);
    GuardedImage src(demosaictest::geometry<T>(W, H, 1, pxktest::stepFor(plan.src, std::size_t(W) * sizeof(T))),
                     demosaictest::fencedSource());
    demosaictest::fillMosaic<T>(src, rng);
    const int rx = std::max(roi.x, 0), ry = std::max(roi.y, 0);
    int rw = roi.width, rh = roi.height;
    if (int64_t(rx) + rw > W) rw = W - rx;
    if (int64_t(ry) + rh > H) rh = H - ry;
    const int dw = std::max(rw, 1), dh = std::max(rh, 1);
    GuardedImage dst(demosaictest::geometry<T>(dw, dh, 3, pxktest::stepFor(plan.dst, std::size_t(dw) * 3 * sizeof(T))));
    dst.fillRandom(rng);
    // The work buffer: exactly three rows of the least step, an odd address, guarded.
    const int bufferStep = leastBufferStep<T>(dw);
    pxktest::GuardOptions bufferOptions;
    bufferOptions.misalign = seed % 16;
    GuardedImage buffer(demosaictest::geometry<uint8_t>(bufferStep, 3, 1, bufferStep), bufferOptions);
    buffer.fillRandom(rng);
    GuardedImage expected = dst.clone();
    const int expectedStatus = (W < 5 || H < 5) ? pxkErrSize : pxkOk;
    if (expectedStatus == pxkOk) {
        const Mosaic m = demosaictest::readMosaic<T>(src);
        const AhdReference ref(m, grid, sizeof(T) == 1 ? 255 : 65535);
        ref.call(roi.x, roi.y, roi.width, roi.height, [&](int x, int y, const std::array<int, 3>& rgb) {
            for (int k = 0; k < 3; ++k) expected.set<T>(x - rx, y - ry, k, static_cast<T>(rgb[std::size_t(k)]));
        });
        if (outcome != nullptr) outcome->saturated = ref.saturated();
    }
    const PxkResult status = callAhd(reinterpret_cast<const T*>(src.data()), roi, PxkSize{W, H}, src.step(),
                                     reinterpret_cast<T*>(dst.data()), dst.step(), grid, buffer.data(), bufferStep);
    if (status != expectedStatus) return ::testing::AssertionFailure() << "status " << status << ", expected " << expectedStatus;
    if (!src.unchanged()) return src.unchanged();
    if (!dst.guardsIntact()) return dst.guardsIntact();
    if (!buffer.guardsIntact()) return ::testing::AssertionFailure() << "work buffer: " << buffer.guardsIntact().message();
    if (expectedStatus != pxkOk || rw < 1 || rh < 1) return dst.unchanged();
    return pxktest::sameRegion(dst, expected);
}

std::vector<int> heightsFor(int width) {
    if (width <= 40) return {4, 5, 6, 11, 14};
    return {5, 12};
}

template <class T>
void sweepWholeImages(const char* name) {
    demosaictest::sweepWholeImages(name, heightsFor, [](int W, int H, int grid, pxktest::StepPlan plan, uint32_t seed) {
        return checkCall<T>(W, H, PxkRect{0, 0, W, H}, grid, plan, seed);
    });
}

TEST(DemosaicAHD, Whole8uImagesMatchTheReferenceAtEveryWidth) { sweepWholeImages<uint8_t>("ahd8"); }
TEST(DemosaicAHD, Whole16uImagesMatchTheReferenceAtEveryWidth) { sweepWholeImages<uint16_t>("ahd16"); }

// Regions at every parity, inside the margin, across it and past the image's edges,
// with negative origins.
template <class T>
void sweepRegions(const char* name) {
    const demosaictest::RegionSweep sweep{{{16, 16}, {23, 19}, {40, 13}}, -2, 7, -1, 7, 2, {-9, -4, 0, 3}};
    demosaictest::sweepRegions(name, sweep, [](int W, int H, PxkRect roi, int grid, pxktest::StepPlan plan,
                                               uint32_t seed) { return checkCall<T>(W, H, roi, grid, plan, seed); });
}

TEST(DemosaicAHD, Regions8uMatchTheReference) { sweepRegions<uint8_t>("ahd8roi"); }
TEST(DemosaicAHD, Regions16uMatchTheReference) { sweepRegions<uint16_t>("ahd16roi"); }

// A region entirely inside the 5-pixel margin goes through the border kernel alone.
TEST(DemosaicAHD, RegionInsideTheMarginMatchesTheReference) {
    for (int grid = 0; grid < 4; ++grid) {
        ASSERT_TRUE(checkCall<uint8_t>(30, 30, PxkRect{1, 2, 3, 20}, grid, pxktest::stepPlans()[0], 11u + grid));
        ASSERT_TRUE(checkCall<uint16_t>(30, 30, PxkRect{2, 25, 26, 5}, grid, pxktest::stepPlans()[0], 17u + grid));
    }
}

// A flat grey image: both candidates are grey, every sum is 0, and the output is the
// grey value.
TEST(DemosaicAHD, FlatGreyGivesItsValue) {
    const int W = 21, H = 17;
    std::vector<uint8_t> src(std::size_t(W * H), 77);
    std::vector<uint8_t> dst(std::size_t(W * H * 3), 0);
    std::vector<uint8_t> buffer(std::size_t(3 * leastBufferStep<uint8_t>(W)));
    ASSERT_EQ(pxkiDemosaicAHD_8u_C1C3R(src.data(), PxkRect{0, 0, W, H}, PxkSize{W, H}, W, dst.data(), 3 * W, 2,
                                       buffer.data(), leastBufferStep<uint8_t>(W)),
              pxkOk);
    for (uint8_t v : dst) ASSERT_EQ(v, 77);
    std::vector<uint16_t> src16(std::size_t(W * H), 60000);
    std::vector<uint16_t> dst16(std::size_t(W * H * 3), 0);
    std::vector<uint8_t> buffer16(std::size_t(3 * leastBufferStep<uint16_t>(W)));
    ASSERT_EQ(pxkiDemosaicAHD_16u_C1C3R(src16.data(), PxkRect{0, 0, W, H}, PxkSize{W, H}, 2 * W, dst16.data(), 6 * W,
                                        0, buffer16.data(), leastBufferStep<uint16_t>(W)),
              pxkOk);
    for (uint16_t v : dst16) ASSERT_EQ(v, 60000);
}

// Steps from 255 to 0 in the 8-bit form saturate in the candidates instead of
// wrapping: the reference saturates and the library matches it.
TEST(DemosaicAHD, SharpStepsSaturate) {
    Outcome outcome;
    int saturated = 0;
    for (uint32_t seed = 0; seed < 6; ++seed) {
        ASSERT_TRUE(checkCall<uint8_t>(24, 24, PxkRect{0, 0, 24, 24}, int(seed % 4), pxktest::stepPlans()[0], seed,
                                       &outcome));
        saturated += outcome.saturated;
        ASSERT_TRUE(checkCall<uint16_t>(24, 24, PxkRect{0, 0, 24, 24}, int(seed % 4), pxktest::stepPlans()[0], seed,
                                        &outcome));
        saturated += outcome.saturated;
    }
    EXPECT_GT(saturated, 100);
}

// Statuses: pointers, then the size, then the grid; nothing written on failure.
TEST(DemosaicAHD, StatusesInTheirOrderAndNothingWrittenOnFailure) {
    uint8_t src[64] = {};
    GuardedImage dst(demosaictest::geometry<uint8_t>(8, 8, 3, 24));
    dst.fill(0x33, 0x44);
    uint8_t buffer[4096];
    const PxkRect roi{0, 0, 8, 8};
    uint8_t* d = dst.data();
    EXPECT_EQ(pxkiDemosaicAHD_8u_C1C3R(nullptr, roi, PxkSize{8, 8}, 8, d, 24, 0, buffer, 1000), pxkErrNullPtr);
    EXPECT_EQ(pxkiDemosaicAHD_8u_C1C3R(src, roi, PxkSize{8, 8}, 8, nullptr, 24, 0, buffer, 1000), pxkErrNullPtr);
    EXPECT_EQ(pxkiDemosaicAHD_8u_C1C3R(nullptr, roi, PxkSize{0, 0}, 8, d, 24, 7, buffer, 1000), pxkErrNullPtr);
    EXPECT_EQ(pxkiDemosaicAHD_8u_C1C3R(src, roi, PxkSize{4, 4}, 8, d, 24, 0, buffer, 1000), pxkErrSize);
    EXPECT_EQ(pxkiDemosaicAHD_8u_C1C3R(src, roi, PxkSize{8, 4}, 8, d, 24, 0, buffer, 1000), pxkErrSize);
    EXPECT_EQ(pxkiDemosaicAHD_8u_C1C3R(src, roi, PxkSize{4, 8}, 8, d, 24, 9, buffer, 1000), pxkErrSize);
    EXPECT_EQ(pxkiDemosaicAHD_8u_C1C3R(src, roi, PxkSize{8, 8}, 8, d, 24, 4, buffer, 1000), pxkErrBadArg);
    EXPECT_EQ(pxkiDemosaicAHD_8u_C1C3R(src, roi, PxkSize{8, 8}, 8, d, 24, -1, nullptr, 0), pxkErrBadArg);
    EXPECT_TRUE(dst.unchanged());
    uint16_t src16[64] = {};
    uint16_t* d16 = reinterpret_cast<uint16_t*>(d);
    EXPECT_EQ(pxkiDemosaicAHD_16u_C1C3R(nullptr, roi, PxkSize{8, 8}, 16, d16, 24, 0, buffer, 1000), pxkErrNullPtr);
    EXPECT_EQ(pxkiDemosaicAHD_16u_C1C3R(src16, roi, PxkSize{8, 8}, 16, nullptr, 24, 0, buffer, 1000), pxkErrNullPtr);
    EXPECT_EQ(pxkiDemosaicAHD_16u_C1C3R(src16, roi, PxkSize{4, 4}, 16, d16, 24, 0, buffer, 1000), pxkErrSize);
    EXPECT_EQ(pxkiDemosaicAHD_16u_C1C3R(src16, roi, PxkSize{8, 8}, 16, d16, 24, 4, buffer, 1000), pxkErrBadArg);
    EXPECT_TRUE(dst.unchanged());
}

// An empty region, or one outside the image, succeeds and touches neither the
// destination nor the buffer (which may then be null).
TEST(DemosaicAHD, EmptyRegionsWriteNothing) {
    uint8_t src[100] = {};
    GuardedImage dst(demosaictest::geometry<uint8_t>(10, 10, 3, 30));
    dst.fill(0x33, 0x44);
    for (const PxkRect roi : {PxkRect{0, 0, 0, 8}, PxkRect{0, 0, 8, 0}, PxkRect{10, 0, 4, 4}, PxkRect{0, 10, 4, 4},
                              PxkRect{3, 3, -2, 4}, PxkRect{INT32_MAX, 0, INT32_MAX, 2}}) {
        EXPECT_EQ(pxkiDemosaicAHD_8u_C1C3R(src, roi, PxkSize{10, 10}, 10, dst.data(), 30, 0, nullptr, 0), pxkOk);
    }
    EXPECT_TRUE(dst.unchanged());
}

TEST(DemosaicAHD, EveryStepPlanAtWideSizes) {
    unsigned n = 0;
    for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
        ++n;
        ASSERT_TRUE(checkCall<uint8_t>(301, 13, PxkRect{0, 0, 301, 13}, int(n % 4), plan, n)) << pxktest::stepPlanName(plan);
        ASSERT_TRUE(checkCall<uint16_t>(67, 12, PxkRect{1, 2, 60, 9}, int((n + 1) % 4), plan, n))
            << pxktest::stepPlanName(plan);
    }
}

}  // namespace
