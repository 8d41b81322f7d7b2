// Ordered dither with the 4 x 4 matrix: the threshold of a sample comes from the
// matrix entry of its pixel's row and column (all channels of a pixel share it), with
// or without noise from the tables. Rows are independent.
#pragma once

#include <cstdint>
#include <type_traits>

#include "dither/noise.h"
#include "dither/samples.h"

namespace pxk {
namespace dither {

// Entry k / 15 as the nearest float (a float division of exact values is correctly
// rounded).
constexpr float bayerEntry(int k) { return static_cast<float>(k) / 15.0f; }

// Rows by y & 3, columns by x & 3.
constexpr float kBayer4x4[4][4] = {
    {bayerEntry(0), bayerEntry(8), bayerEntry(2), bayerEntry(10)},
    {bayerEntry(12), bayerEntry(4), bayerEntry(14), bayerEntry(6)},
    {bayerEntry(3), bayerEntry(11), bayerEntry(1), bayerEntry(9)},
    {bayerEntry(15), bayerEntry(7), bayerEntry(13), bayerEntry(5)},
};

// One sample against its threshold t: the level below it, raised by a step when t is
// strictly less than the remainder.
template <Sample S, Sample D, bool Half>
PXK_INLINE SampleT<D> orderedSample(SampleT<S> s, float inv, float step, float t) {
    const float v = toDomain<S>(s);
    float q = static_cast<float>(truncToInt32(v * inv)) * step;
    const float r = v - q;
    if (t < r) q = q + step;
    return codeOfLevel<S, D, Half>(q);
}

// The region, row by row. Without noise (tables null) the four thresholds of a row are
// computed once for the row. The half rule holds in the form with noise, in C1, C3
// and AC4, for the types that have it; C4 never adds it.
template <Sample S, Sample D, int Code>
void reduceOrdered(const SampleT<S>* src, int32_t srcStep, SampleT<D>* dst, int32_t dstStep, PxkSize size,
                   int32_t L, const NoiseTables* tables) {
    using Lay = Layout<Code>;
    const float step = domainTop<S>() / static_cast<float>(L);
    const float inv = static_cast<float>(L) / domainTop<S>();
    const auto run = [&](auto halfTag, auto threshold) {
        constexpr bool kHalf = decltype(halfTag)::value;
        for (int32_t y = 0; y < size.height; ++y) {
            const SampleT<S>* s = rowAt(src, y, srcStep);
            SampleT<D>* d = rowAt(dst, y, dstStep);
            for (int32_t x = 0; x < size.width; ++x) {
                const float t = threshold(x, y);
                PXK_UNROLL
                for (int c = 0; c < Lay::kChannels; ++c) {
                    const int32_t i = x * Lay::kStride + c;
                    storeSample(d + i, orderedSample<S, D, kHalf>(loadSample(s + i), inv, step, t));
                }
            }
        }
    };
    if (tables == nullptr) {
        float rowThresholds[4][4];
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 4; ++c) rowThresholds[r][c] = kBayer4x4[r][c] * step;
        }
        run(std::false_type{}, [&](int32_t x, int32_t y) PXK_LAMBDA_INLINE { return rowThresholds[y & 3][x & 3]; });
    } else {
        const NoiseTables t = *tables;
        const auto threshold = [&](int32_t x, int32_t y) PXK_LAMBDA_INLINE {
            return (kBayer4x4[y & 3][x & 3] + t.at(x, 2u * static_cast<uint32_t>(y))) * step;
        };
        run(std::integral_constant<bool, hasHalf<S, D>() && Code != 5>{}, threshold);
    }
}

}  // namespace dither
}  // namespace pxk
