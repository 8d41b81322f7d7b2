// The frame of every gamma export: its checks, in their order, and the walk of its
// region. A gamma conversion works sample by sample, so a row is handed to the kernel
// as a run of pixels of `Channels` converted samples, `Stride` samples apart (3 and 3
// for C3, 3 and 4 for AC4, whose fourth sample is neither read nor written; 1 and 1
// for each plane of a planar form).
#pragma once

#include "frame/samples.h"

#include <cstdint>
#include <cstring>

#include "frame/checks.h"
#include "frame/drivers.h"
#include "pxkcc.h"

namespace pxk {
namespace gamma {

template <int ChannelsArg, int StrideArg>
struct PixelLayout {
    static constexpr int kChannels = ChannelsArg;
    static constexpr int kStride = StrideArg;
};
using C3 = PixelLayout<3, 3>;
using AC4 = PixelLayout<3, 4>;
using Plane = PixelLayout<1, 1>;

// Checks after the range test of the float members: pointers, size, steps.
template <class T>
PxkResult checkPacked(const T* src, int32_t srcStep, const T* dst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    return checkSteps(srcStep, dstStep);
}

// The plane forms test each pointer array and each of its three planes.
template <class T, class U>
PxkResult checkPlanar(T* const* src, int32_t srcStep, U* const* dst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkPtrs(dst));
    PXK_CHECK(checkPlanes(dst, 3));
    PXK_CHECK(checkSize(size, 1, 1));
    return checkSteps(srcStep, dstStep);
}

// kernel(src row, dst row, width) for each row of a packed region.
template <class T, class Kernel>
void walkPacked(const T* src, int32_t srcStep, T* dst, int32_t dstStep, PxkSize size, Kernel&& kernel) {
    driveRows(
        size.width, size.height, [&](int32_t width, const T* s, T* d) { kernel(s, d, width); }, rows(src, srcStep),
        rows(dst, dstStep));
}

// The same over each of three planes in turn.
template <class T, class Kernel>
void walkPlanes(const T* const* src, int32_t srcStep, T* const* dst, int32_t dstStep, PxkSize size,
                Kernel&& kernel) {
    for (int p = 0; p < 3; ++p) walkPacked(src[p], srcStep, dst[p], dstStep, size, kernel);
}

}  // namespace gamma
}  // namespace pxk
