// The variable-number-of-gradients demosaic, 8u and 16u, plain and _L: the reference
// model over every width and many heights, grids, regions, scales and steps; the
// documented cases; statuses and their order; guard bytes and the untouched fourth
// sample.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "demosaic_sweeps.h"
#include "guarded_image.h"
#include "mosaic_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"
#include "vng_reference.h"

namespace {

using demosaictest::Mosaic;
using pxktest::GuardedImage;
using pxktest::Rng;

template <class T>
using VngFn = PxkResult (*)(const T*, PxkRect, PxkSize, int32_t, const float*, T*, int32_t, PxkBayerGrid);

struct Members8 {
    using T = uint8_t;
    static constexpr VngFn<uint8_t> plain = pxkiCFAToBGRA_VNG_8u_C1C4R;
    static constexpr VngFn<uint8_t> longForm = pxkiCFAToBGRA_VNG_8u_C1C4R_L;
};
struct Members16 {
    using T = uint16_t;
    static constexpr VngFn<uint16_t> plain = pxkiCFAToBGRA_VNG_16u_C1C4R;
    static constexpr VngFn<uint16_t> longForm = pxkiCFAToBGRA_VNG_16u_C1C4R_L;
};

// The whole call on `expected`: interior, then the frame copies.
template <class T>
void referenceCall(const Mosaic& m, int grid, PxkRect roi, const float* scale, GuardedImage& expected) {
    const int W = m.width, H = m.height;
    if (roi.width < 1 || roi.height < 1) return;
    const int rx = std::max(roi.x, 0), ry = std::max(roi.y, 0);
    int rw = roi.width, rh = roi.height;
    if (int64_t(rx) + rw > W) rw = W - rx;
    if (int64_t(ry) + rh > H) rh = H - ry;
    if (rw < 1 || rh < 1) return;
    const int lastX = rx + rw - 1, lastY = ry + rh - 1;
    const int ix0 = std::max(rx, 2), ix1 = std::min(lastX, W - 3), iy0 = std::max(ry, 2), iy1 = std::min(lastY, H - 3);
    if (ix1 < ix0 || iy1 < iy0) return;
    const int top = sizeof(T) == 1 ? 255 : 65535;
    const float ones[3] = {1, 1, 1};
    if (scale == nullptr) scale = ones;
    for (int y = iy0; y <= iy1; ++y) {
        for (int x = ix0; x <= ix1; ++x) {
            const std::array<int, 3> bgr = demosaictest::referenceVngValues(m, grid, x, y);
            for (int k = 0; k < 3; ++k) {
                expected.set<T>(x - rx, y - ry, k,
                                static_cast<T>(demosaictest::referenceVngScaled(bgr[std::size_t(k)], scale[k], top)));
            }
        }
    }
    auto copyPixel = [&](int fromX, int toX, int y) {
        for (int k = 0; k < 4; ++k) expected.set<T>(toX - rx, y - ry, k, expected.get<T>(fromX - rx, y - ry, k));
    };
    for (int y = iy0; y <= iy1; ++y) {
        if (rx == 0) copyPixel(ix0, 0, y);
        if (rx < 2) copyPixel(ix0, 1, y);
        if (lastX >= W - 2) copyPixel(ix1, ix1 + 1, y);
        if (lastX >= W - 1) copyPixel(ix1, ix1 + 2, y);
    }
    auto copyRow = [&](int fromY, int toY) {
        for (int x = rx; x <= lastX; ++x) {
            for (int k = 0; k < 4; ++k) expected.set<T>(x - rx, toY - ry, k, expected.get<T>(x - rx, fromY - ry, k));
        }
    };
    if (ry == 0) copyRow(iy0, 0);
    if (ry < 2) copyRow(iy0, 1);
    if (lastY >= H - 2) copyRow(iy1, iy1 + 1);
    if (lastY >= H - 1) copyRow(iy1, iy1 + 2);
}

template <class M>
::testing::AssertionResult checkCall(int W, int H, PxkRect roi, int grid, pxktest::StepPlan plan, uint32_t seed,
                                     bool useLong) {
    using T = typename M::T;
    Rng rng(seed);
    GuardedImage src(demosaictest::geometry<T>(W, H, 1, pxktest::stepFor(plan.src, std::size_t(W) * sizeof(T))),
                     demosaictest::fencedSource());
    demosaictest::fillMosaic<T>(src, rng);
    const int dw = std::max(1, std::min(roi.width, W)), dh = std::max(1, std::min(roi.height, H));
    GuardedImage dst(demosaictest::geometry<T>(dw, dh, 4, pxktest::stepFor(plan.dst, std::size_t(dw) * 4 * sizeof(T))));
    dst.fillRandom(rng);
    // A null scale, ones, or random scales around 1 (some above, to saturate).
    float scales[3];
    const float* scale = nullptr;
    if (seed % 3 != 0) {
        for (float& s : scales) s = seed % 3 == 1 ? 1.0f : float(0.25 + 1.75 * rng.unit());
        scale = scales;
    }
    GuardedImage expected = dst.clone();
    const int expectedStatus = (W < 5 || H < 5) ? pxkErrSize : pxkOk;
    if (expectedStatus == pxkOk) referenceCall<T>(demosaictest::readMosaic<T>(src), grid, roi, scale, expected);
    const VngFn<T> fn = useLong ? M::longForm : M::plain;
    const PxkResult status = fn(reinterpret_cast<const T*>(src.data()), roi, PxkSize{W, H}, src.step(), scale,
                                reinterpret_cast<T*>(dst.data()), dst.step(), grid);
    if (status != expectedStatus) return ::testing::AssertionFailure() << "status " << status << ", expected " << expectedStatus;
    if (!src.unchanged()) return src.unchanged();
    if (!dst.guardsIntact()) return dst.guardsIntact();
    return pxktest::sameRegion(dst, expected);
}

std::vector<int> heightsFor(int width) {
    if (width <= 40) return {4, 5, 6, 9};
    return {5, 8};
}

template <class M>
void sweepWholeImages(const char* name) {
    demosaictest::sweepWholeImages(name, heightsFor, [](int W, int H, int grid, pxktest::StepPlan plan, uint32_t seed) {
        return checkCall<M>(W, H, PxkRect{0, 0, W, H}, grid, plan, seed, (W + grid) % 2 == 0);
    });
}

TEST(CFAToBGRA_VNG, Whole8uImagesMatchTheReferenceAtEveryWidth) { sweepWholeImages<Members8>("vng8"); }
TEST(CFAToBGRA_VNG, Whole16uImagesMatchTheReferenceAtEveryWidth) { sweepWholeImages<Members16>("vng16"); }

template <class M>
void sweepRegions(const char* name) {
    const demosaictest::RegionSweep sweep{{{9, 8}, {23, 11}}, -1, 5, -1, 4, 1, {-4, 0, 2}};
    demosaictest::sweepRegions(name, sweep, [](int W, int H, PxkRect roi, int grid, pxktest::StepPlan plan,
                                               uint32_t seed) { return checkCall<M>(W, H, roi, grid, plan, seed, seed % 2 == 0); });
}

TEST(CFAToBGRA_VNG, Regions8uMatchTheReference) { sweepRegions<Members8>("vng8roi"); }
TEST(CFAToBGRA_VNG, Regions16uMatchTheReference) { sweepRegions<Members16>("vng16roi"); }

// Flat colour: every gradient is 0, the threshold 1, all eight directions kept, and
// the output is the input's value; the fourth samples stay as they were.
TEST(CFAToBGRA_VNG, FlatImageGivesItsValueAndLeavesTheFourthSample) {
    const int W = 12, H = 9;
    std::vector<uint8_t> src(std::size_t(W * H), 93);
    std::vector<uint8_t> dst(std::size_t(W * H * 4), 0xC5);
    ASSERT_EQ(pxkiCFAToBGRA_VNG_8u_C1C4R(src.data(), PxkRect{0, 0, W, H}, PxkSize{W, H}, W, nullptr, dst.data(), 4 * W,
                                          1),
              pxkOk);
    for (std::size_t i = 0; i < dst.size(); ++i) ASSERT_EQ(dst[i], i % 4 == 3 ? 0xC5 : 93) << "byte " << i;
}

// A null scale and a scale of three 1.0 give the same output; plain and _L agree.
TEST(CFAToBGRA_VNG, NullScaleIsOnesAndPlainEqualsLong) {
    const int W = 31, H = 10;
    Rng rng(5);
    std::vector<uint16_t> src(std::size_t(W * H));
    for (uint16_t& v : src) v = uint16_t(rng.next32());
    const float ones[3] = {1.0f, 1.0f, 1.0f};
    std::vector<uint16_t> a(std::size_t(W * H * 4), 7), b(a), c(a);
    const PxkRect roi{0, 0, W, H};
    ASSERT_EQ(pxkiCFAToBGRA_VNG_16u_C1C4R(src.data(), roi, PxkSize{W, H}, 2 * W, nullptr, a.data(), 8 * W, 2), pxkOk);
    ASSERT_EQ(pxkiCFAToBGRA_VNG_16u_C1C4R(src.data(), roi, PxkSize{W, H}, 2 * W, ones, b.data(), 8 * W, 2), pxkOk);
    ASSERT_EQ(pxkiCFAToBGRA_VNG_16u_C1C4R_L(src.data(), roi, PxkSize{W, H}, 2 * W, ones, c.data(), 8 * W, 2), pxkOk);
    EXPECT_EQ(a, b);
    EXPECT_EQ(b, c);
    EXPECT_NE(std::count(a.begin(), a.end(), uint16_t(7)), long(a.size()));
}

// A value above the top after scaling saturates: 200 times 1.5 is 255, 200 times 0.5
// is 100; halves round to even: 3 x 1.5 = 4.5 to 4, 5 x 1.5 = 7.5 to 8, 5 x 0.5 = 2.5 to 2.
TEST(CFAToBGRA_VNG, ScaledValuesSaturateAndRoundHalfToEven) {
    const int W = 8, H = 8;
    const float scale[3] = {1.5f, 0.5f, 1.0f};
    for (const auto& [value, b, g] : {std::array<int, 3>{200, 255, 100}, {3, 4, 2}, {5, 8, 2}}) {
        std::vector<uint8_t> src(std::size_t(W * H), uint8_t(value));
        std::vector<uint8_t> dst(std::size_t(W * H * 4), 0);
        ASSERT_EQ(pxkiCFAToBGRA_VNG_8u_C1C4R_L(src.data(), PxkRect{0, 0, W, H}, PxkSize{W, H}, W, scale, dst.data(),
                                                4 * W, 0),
                  pxkOk);
        for (int i = 0; i < W * H; ++i) {
            ASSERT_EQ(dst[std::size_t(4 * i)], b) << value;
            ASSERT_EQ(dst[std::size_t(4 * i + 1)], g) << value;
            ASSERT_EQ(dst[std::size_t(4 * i + 2)], value) << value;
        }
    }
}

TEST(CFAToBGRA_VNG, StatusesInTheirOrderAndNothingWrittenOnFailure) {
    uint8_t src[64] = {};
    GuardedImage dst(demosaictest::geometry<uint8_t>(8, 8, 4, 32));
    dst.fill(0x33, 0x44);
    uint8_t* d = dst.data();
    const PxkRect roi{0, 0, 8, 8};
    for (auto fn : {pxkiCFAToBGRA_VNG_8u_C1C4R, pxkiCFAToBGRA_VNG_8u_C1C4R_L}) {
        EXPECT_EQ(fn(nullptr, roi, PxkSize{8, 8}, 8, nullptr, d, 32, 0), pxkErrNullPtr);
        EXPECT_EQ(fn(src, roi, PxkSize{8, 8}, 8, nullptr, nullptr, 32, 0), pxkErrNullPtr);
        EXPECT_EQ(fn(nullptr, PxkRect{0, 0, 0, 0}, PxkSize{0, 0}, 8, nullptr, d, 32, 9), pxkErrNullPtr);
        EXPECT_EQ(fn(src, roi, PxkSize{4, 8}, 8, nullptr, d, 32, 0), pxkErrSize);
        EXPECT_EQ(fn(src, roi, PxkSize{8, 4}, 8, nullptr, d, 32, 0), pxkErrSize);
        EXPECT_EQ(fn(src, PxkRect{0, 0, 0, 0}, PxkSize{4, 4}, 8, nullptr, d, 32, 7), pxkErrSize);
        EXPECT_EQ(fn(src, roi, PxkSize{8, 8}, 8, nullptr, d, 32, 4), pxkErrBadArg);
        EXPECT_EQ(fn(src, PxkRect{0, 0, 0, 0}, PxkSize{8, 8}, 8, nullptr, d, 32, -1), pxkErrBadArg);
        // The empty region is tested after the grid.
        EXPECT_EQ(fn(src, PxkRect{0, 0, 0, 5}, PxkSize{8, 8}, 8, nullptr, d, 32, 0), pxkOk);
        EXPECT_EQ(fn(src, PxkRect{0, 0, 5, -1}, PxkSize{8, 8}, 8, nullptr, d, 32, 0), pxkOk);
    }
    uint16_t src16[64] = {};
    uint16_t* d16 = reinterpret_cast<uint16_t*>(d);
    for (auto fn : {pxkiCFAToBGRA_VNG_16u_C1C4R, pxkiCFAToBGRA_VNG_16u_C1C4R_L}) {
        EXPECT_EQ(fn(nullptr, roi, PxkSize{8, 8}, 16, nullptr, d16, 32, 0), pxkErrNullPtr);
        EXPECT_EQ(fn(src16, roi, PxkSize{8, 8}, 16, nullptr, nullptr, 32, 0), pxkErrNullPtr);
        EXPECT_EQ(fn(src16, roi, PxkSize{4, 4}, 16, nullptr, d16, 32, 0), pxkErrSize);
        EXPECT_EQ(fn(src16, roi, PxkSize{8, 8}, 16, nullptr, d16, 32, 4), pxkErrBadArg);
    }
    EXPECT_TRUE(dst.unchanged());
}

TEST(CFAToBGRA_VNG, EveryStepPlanAtWideSizes) {
    unsigned n = 0;
    for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
        ++n;
        ASSERT_TRUE(checkCall<Members8>(130, 7, PxkRect{0, 0, 130, 7}, int(n % 4), plan, n, true))
            << pxktest::stepPlanName(plan);
        ASSERT_TRUE(checkCall<Members16>(67, 9, PxkRect{1, 1, 70, 10}, int((n + 1) % 4), plan, n, false))
            << pxktest::stepPlanName(plan);
    }
}

// The row kernel runs 8-bit rows in blocks of 16 and 32 pixels and 16-bit rows in
// blocks of 8 and 16, the rest of a row pixel by pixel: every interior width from 43 to
// 103, starting at an even and at an odd column, reaches each combination of the two
// blocks and the tail.
template <class M>
void sweepBlockWidths(const char* name) {
    const auto& plans = pxktest::stepPlans();
    for (int inner = 41; inner <= 100; ++inner) {
        for (int x = 0; x < 4; ++x) {
            const int W = inner + 4 + x, H = 5 + x % 2;
            const int grid = (inner + x) % 4;
            const PxkRect roi{x, x % 2, W - x, H};
            const uint32_t seed = pxktest::seedFor(name, {uint32_t(inner), uint32_t(x)});
            ASSERT_TRUE(checkCall<M>(W, H, roi, grid, plans[std::size_t(inner + x) % plans.size()], seed, x % 2 == 0))
                << name << " " << W << "x" << H << " from x " << x;
        }
    }
}

TEST(CFAToBGRA_VNG, RowsAroundEveryBlockWidth8u) { sweepBlockWidths<Members8>("vng8blocks"); }
TEST(CFAToBGRA_VNG, RowsAroundEveryBlockWidth16u) { sweepBlockWidths<Members16>("vng16blocks"); }

}  // namespace
