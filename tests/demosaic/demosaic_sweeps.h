// The sweeps that every demosaicing test runs its calls over: whole images of every
// width, and regions at every parity of their origin, inside the image and past its
// edges. A check is called with the case and returns an AssertionResult.
#ifndef PXKCC_TESTS_DEMOSAIC_DEMOSAIC_SWEEPS_H
#define PXKCC_TESTS_DEMOSAIC_DEMOSAIC_SWEEPS_H

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace demosaictest {

// check(W, H, grid, plan, seed) for every sweep width, the heights that heights(W)
// gives and the four grids (two of them for the wide images under the sanitizers),
// the step plans taken in turn.
template <class Check>
void sweepWholeImages(const char* name, std::vector<int> (*heights)(int), Check&& check) {
    const auto& plans = pxktest::stepPlans();
    for (int W : pxktest::sweepWidths()) {
        for (int H : heights(W)) {
            for (int grid = 0; grid < 4; ++grid) {
                if (pxktest::kLightSweep && W > 40 && grid % 2 == 1) continue;
                const pxktest::StepPlan plan = plans[std::size_t(W + H + grid) % plans.size()];
                const uint32_t seed = pxktest::seedFor(name, {uint32_t(W), uint32_t(H), uint32_t(grid)});
                const ::testing::AssertionResult r = check(W, H, grid, plan, seed);
                ASSERT_TRUE(r) << name << " " << W << "x" << H << " grid " << grid << " steps "
                               << pxktest::stepPlanName(plan);
            }
        }
    }
}

// The origins and sizes of a region sweep: for each image, x from xFrom to xTo, y from
// yFrom to yTo by yStep, and width and height to the image's edge plus each extra.
struct RegionSweep {
    std::vector<std::array<int, 2>> images;
    int xFrom, xTo, yFrom, yTo, yStep;
    std::vector<int> extras;
};

// check(W, H, roi, grid, plan, seed) over a region sweep, grids and step plans in turn.
template <class Check>
void sweepRegions(const char* name, const RegionSweep& sweep, Check&& check) {
    const auto& plans = pxktest::stepPlans();
    uint32_t n = 0;
    for (const auto& image : sweep.images) {
        const int W = image[0], H = image[1];
        for (int rx = sweep.xFrom; rx <= sweep.xTo; ++rx) {
            for (int ry = sweep.yFrom; ry <= sweep.yTo; ry += sweep.yStep) {
                for (int extra : sweep.extras) {
                    ++n;
                    const PxkRect roi{rx, ry, W - rx + extra, H - ry + extra};
                    const int grid = int(n % 4);
                    const ::testing::AssertionResult r =
                        check(W, H, roi, grid, plans[n % plans.size()], pxktest::seedFor(name, {n}));
                    ASSERT_TRUE(r) << name << " image " << W << "x" << H << " region " << roi.x << "," << roi.y << " "
                                   << roi.width << "x" << roi.height << " grid " << grid;
                }
            }
        }
    }
}

}  // namespace demosaictest

#endif
