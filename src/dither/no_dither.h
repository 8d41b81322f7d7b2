// The path without dither: nearest level in the normalised range 0 to 1, in single
// precision throughout. Every sample is independent of its column, so C1, C3 and C4
// rows are one flat run of width * channels samples; AC4 rows go by pixels and write
// three samples of four.
#pragma once

#include <cstdint>

#include "dither/samples.h"

namespace pxk {
namespace dither {

// Bits of the normalising factors: 1.5259022e-5 for 16-bit sources, 0.003921569 for
// 8-bit ones.
PXK_INLINE float floatFromBits(uint32_t bits) {
    float f;
    std::memcpy(&f, &bits, sizeof f);
    return f;
}

template <Sample S, Sample D>
struct NearestLevelForm {
    float levels;  // L as a float
    float stepN;   // 1 / L
    float halfN;   // 0.5 / L

    explicit NearestLevelForm(int32_t L)
        : levels(static_cast<float>(L)), stepN(1.0f / static_cast<float>(L)), halfN(0.5f / static_cast<float>(L)) {}

    PXK_INLINE static float normalise(SampleT<S> s) {
        if constexpr (S == Sample::U8) {
            return static_cast<float>(s) * floatFromBits(0x3B808081u);
        } else if constexpr (S == Sample::F32) {
            return s;
        } else {
            return toDomain<S>(s) * floatFromBits(0x37800080u);
        }
    }

    PXK_INLINE SampleT<D> apply(SampleT<S> s) const {
        const float x = normalise(s);
        float y = static_cast<float>(truncToInt32(x * levels)) * stepN;
        if (x - y > halfN) y = y + stepN;
        // No rounding term: float error in y may land a sample one code low.
        const int32_t z = truncToInt32(y * (D == Sample::U8 ? 255.0f : 65535.0f));
        return saturateCode<D>(z);
    }
};

template <Sample S, Sample D, int Code>
void reduceNearest(const SampleT<S>* src, int32_t srcStep, SampleT<D>* dst, int32_t dstStep, PxkSize size,
                   int32_t L) {
    using Lay = Layout<Code>;
    const NearestLevelForm<S, D> form(L);
    for (int32_t y = 0; y < size.height; ++y) {
        const SampleT<S>* s = rowAt(src, y, srcStep);
        SampleT<D>* d = rowAt(dst, y, dstStep);
        if constexpr (Code == 4) {
            for (int32_t x = 0; x < size.width; ++x) {
                for (int c = 0; c < 3; ++c) storeSample(d + 4 * x + c, form.apply(loadSample(s + 4 * x + c)));
            }
        } else {
            const int32_t n = size.width * Lay::kChannels;
            for (int32_t i = 0; i < n; ++i) storeSample(d + i, form.apply(loadSample(s + i)));
        }
    }
}

}  // namespace dither
}  // namespace pxk
