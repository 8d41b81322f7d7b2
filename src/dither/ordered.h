// Ordered dither with the 4 x 4 matrix: the threshold of a sample comes from the
// matrix entry of its pixel's row and column (all channels of a pixel share it), with
// or without noise from the tables. Rows are independent. A row runs in chunks of 64
// pixels: the thresholds of the chunk's samples are laid out first (once a row without
// noise, where every chunk repeats the pattern), then the samples go through in
// vectors of four a lane, with a scalar tail of the same arithmetic.
#pragma once

#include <cstdint>
#include <type_traits>

#include "dither/noise.h"
#include "dither/sample_vectors.h"
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
// strictly less than the remainder. The vector form gives the codes before saturation.
template <Sample S, Sample D, bool Half>
struct OrderedForm {
    float inv, step;

    template <class V>
    PXK_INLINE V apply(const SampleT<S>* p, const float* t) const {
        using namespace vec;
        using F = FloatOf<V>;
        const F v = loadDomainVec<S, V>(p);
        const F stepV = splatF<F>(step);
        F q = mulF(toFloat(truncToInt(mulF(v, splatF<F>(inv)))), stepV);
        q = selectF(lessF(loadF<F>(t), subF(v, q)), addF(q, stepV), q);
        return levelCodesVec<S, D, Half>(q);
    }

    PXK_INLINE SampleT<D> apply(SampleT<S> s, float t) const {
        const float v = toDomain<S>(s);
        float q = static_cast<float>(truncToInt32(v * inv)) * step;
        const float r = v - q;
        if (t < r) q = q + step;
        return codeOfLevel<S, D, Half>(q);
    }
};

constexpr int32_t kOrderedChunk = 64;

// The region, row by row. The half rule holds in the form with noise (tables not
// null), in C1, C3 and AC4, for the types that have it; C4 never adds it.
template <Sample S, Sample D, int Code>
void reduceOrdered(const SampleT<S>* src, int32_t srcStep, SampleT<D>* dst, int32_t dstStep, PxkSize size,
                   int32_t L, const NoiseTables* tables) {
    using Lay = Layout<Code>;
    constexpr bool kKeepFourth = Code == 4;
    const float step = domainTop<S>() / static_cast<float>(L);
    const float inv = static_cast<float>(L) / domainTop<S>();
    const auto run = [&](auto halfTag) {
        const OrderedForm<S, D, decltype(halfTag)::value> form{inv, step};
        // Thresholds of one chunk, a sample each.
        alignas(32) float t[kOrderedChunk * Lay::kStride];
        const auto layThresholds = [&](int32_t x0, int32_t count, int32_t y) {
            for (int32_t j = 0; j < count; ++j) {
                const int32_t x = x0 + j;
                const float m = kBayer4x4[y & 3][x & 3];
                const float th = tables ? (m + tables->at(x, 2u * static_cast<uint32_t>(y))) * step : m * step;
                for (int c = 0; c < Lay::kStride; ++c) t[j * Lay::kStride + c] = th;
            }
        };
        for (int32_t y = 0; y < size.height; ++y) {
            const SampleT<S>* s = rowAt(src, y, srcStep);
            SampleT<D>* d = rowAt(dst, y, dstStep);
            if (!tables) layThresholds(0, size.width < kOrderedChunk ? size.width : kOrderedChunk, y);
            for (int32_t x0 = 0; x0 < size.width; x0 += kOrderedChunk) {
                const int32_t count = size.width - x0 < kOrderedChunk ? size.width - x0 : kOrderedChunk;
                if (tables) layThresholds(x0, count, y);
                const std::intptr_t first = static_cast<std::intptr_t>(x0) * Lay::kStride;
                runSamples(
                    count * Lay::kStride,
                    [&](int32_t i, auto* type) PXK_LAMBDA_INLINE {
                        using V = std::remove_pointer_t<decltype(type)>;
                        const V codes = form.template apply<V>(s + first + i, t + i);
                        storeCodesVec<D, kKeepFourth>(d + first + i, packCodes<D>(codes));
                    },
                    [&](int32_t i) {
                        // Only C1 and C3 chunks leave a tail; every sample of them is written.
                        storeSample(d + first + i, form.apply(loadSample(s + first + i), t[i]));
                    });
            }
        }
    };
    if (tables == nullptr) {
        run(std::false_type{});
    } else {
        run(std::integral_constant<bool, hasHalf<S, D>() && Code != 5>{});
    }
}

}  // namespace dither
}  // namespace pxk
