// The exports between chroma samplings and layouts that only move bytes, described as
// data: the samplings and component orders of both sides, the cuts, the least sizes
// and the choice of stores. Each argument shape has one entry point that tests the
// arguments and hands the sides to the sampling walk.
#pragma once

#include <cstdint>

#include "pxkcc.h"

#include "chroma/sampling_engine.h"

namespace pxk {
namespace chroma {

// The members without a height test convert nothing for a height of 0 or below.
inline constexpr int32_t kNoHeightTest = INT32_MIN;

// Where a side puts Cb and Cr, and its luma byte when packed.
struct Order {
    int lumaByte;  // packed sides: 0 for Y0 C Y1 C, 1 for C Y0 C Y1
    int cbAt;      // packed: byte of the four; pairs: byte of the pair; planes: plane
    int crAt;
};

inline constexpr Order kPackedYCbCr{0, 1, 3};
inline constexpr Order kPackedYCrCb{0, 3, 1};
inline constexpr Order kPackedCbYCr{1, 0, 2};
inline constexpr Order kPairsCbCr{0, 0, 1};
inline constexpr Order kPairsCrCb{0, 1, 0};
inline constexpr Order kPlanesCbCr{0, 1, 2};
inline constexpr Order kPlanesCrCb{0, 2, 1};

// Non-temporal stores of a member.
enum class Streaming {
    None,
    LumaCopies,   // luma rows through the row copier when width * height > limit
    Region,       // own stores: (sum of the steps) * height > 524288, destination aligned
    WholeImage,   // own stores: (3 * width + width / 2) * height > 1572864, destination aligned
};

struct Member {
    Sampling from;
    Order src;
    Sampling to;
    Order dst;
    int32_t group;  // the width is cut to a multiple of it
    int32_t minWidth;
    int32_t minHeight;
    Streaming streaming = Streaming::None;
    int64_t limit = 0;
    // The P2-to-P3 members that read the entries of the dst array without testing the
    // array pointer itself.
    bool dstArrayUntested = false;
};

PxkResult packedToPairs(const Member& m, const uint8_t* src, int32_t srcStep, uint8_t* dstY, int32_t dstYStep,
                        uint8_t* dstCbCr, int32_t dstCbCrStep, PxkSize size);
PxkResult packedToPlanes(const Member& m, const uint8_t* src, int32_t srcStep, uint8_t* const dst[3],
                         const int32_t dstStep[3], PxkSize size);
PxkResult planesToPairs(const Member& m, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dstY,
                        int32_t dstYStep, uint8_t* dstCbCr, int32_t dstCbCrStep, PxkSize size);
PxkResult planesToPlanes(const Member& m, const uint8_t* const src[3], const int32_t srcStep[3],
                         uint8_t* const dst[3], const int32_t dstStep[3], PxkSize size);
PxkResult pairsToPacked(const Member& m, const uint8_t* srcY, int32_t srcYStep, const uint8_t* srcCbCr,
                        int32_t srcCbCrStep, uint8_t* dst, int32_t dstStep, PxkSize size);
PxkResult pairsToPlanes(const Member& m, const uint8_t* srcY, int32_t srcYStep, const uint8_t* srcCbCr,
                        int32_t srcCbCrStep, uint8_t* const dst[3], const int32_t dstStep[3], PxkSize size);
PxkResult planesToPacked(const Member& m, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                         int32_t dstStep, PxkSize size);

}  // namespace chroma
}  // namespace pxk
