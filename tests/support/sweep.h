// The sizes and steps that every conversion is swept over, so that each remainder of
// a vector block and each way of laying out rows is exercised.
#ifndef PXKCC_TEST_SUPPORT_SWEEP_H
#define PXKCC_TEST_SUPPORT_SWEEP_H

#include <cstddef>
#include <string>
#include <vector>

namespace pxktest {

// True in the sanitizer build: tests that sweep a large space (every 8-bit colour,
// every 16-bit value, long random campaigns) take a lighter sample of it there, and the
// release builds run the whole sweep.
#if defined(PXKCC_TESTS_LIGHT_SWEEP)
inline constexpr bool kLightSweep = true;
#else
inline constexpr bool kLightSweep = false;
#endif

// Every width from 1 to 40, then 59 (blocks of 32, 16 and 8 and a tail), 67, 130, 301
// and 1920.
const std::vector<int>& sweepWidths();

// Heights to combine with a width: several small ones for narrow images, fewer for the
// wide ones, so that a full sweep stays quick under the sanitizers.
std::vector<int> sweepHeights(int width);

// How a row step relates to the bytes of a row.
enum class StepKind {
    Tight,          // step == row bytes
    Padded,         // step > row bytes, by a multiple of 16
    Odd,            // an odd step larger than the row
    Zero,           // every row shares one row of memory
    Negative,       // rows run downward in memory, with padding between them
    NegativeTight,  // rows run downward in memory, no padding
};

const std::vector<StepKind>& allStepKinds();
const char* stepKindName(StepKind kind);
int stepFor(StepKind kind, std::size_t rowBytes);

// A pair of step kinds for the source side and the destination side of a call.
struct StepPlan {
    StepKind src;
    StepKind dst;
};
// The combinations a conversion sweep runs: each kind on each side at least once,
// with zero and negative steps on both sides.
const std::vector<StepPlan>& stepPlans();
std::string stepPlanName(const StepPlan& plan);

}  // namespace pxktest

#endif
