// Ordered dither with the 4 x 4 matrix: the threshold of a sample comes from the
// matrix entry of its pixel's row and column (all channels of a pixel share it), with
// or without noise from the tables. Rows are independent. A row runs in chunks of 64
// pixels: the thresholds of the chunk's samples are laid out first (once a row without
// noise, where every chunk repeats the pattern), then the samples go through in
// vectors of four a lane, with a scalar tail of the same arithmetic. 8-bit samples
// into 8-bit codes without noise take the integer form of byte_levels.h instead where
// it is proven to give the same codes (on large enough regions).
#pragma once

#include <cstdint>
#include <type_traits>

#include "dither/byte_levels.h"
#include "dither/noise.h"
#include "dither/sample_vectors.h"
#include "dither/samples.h"

namespace pxk {
namespace dither {

// Entry k / 15 as the nearest float (a float division of exact values is correctly
// rounded).
constexpr float bayerEntry(int k) { return static_cast<float>(k) / 15.0f; }

// The k of each entry, rows by y & 3, columns by x & 3.
constexpr int kBayerIndex[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};

// The entries as floats, rows by y & 3, columns by x & 3.
constexpr float kBayer4x4[4][4] = {
    {bayerEntry(kBayerIndex[0][0]), bayerEntry(kBayerIndex[0][1]), bayerEntry(kBayerIndex[0][2]),
     bayerEntry(kBayerIndex[0][3])},
    {bayerEntry(kBayerIndex[1][0]), bayerEntry(kBayerIndex[1][1]), bayerEntry(kBayerIndex[1][2]),
     bayerEntry(kBayerIndex[1][3])},
    {bayerEntry(kBayerIndex[2][0]), bayerEntry(kBayerIndex[2][1]), bayerEntry(kBayerIndex[2][2]),
     bayerEntry(kBayerIndex[2][3])},
    {bayerEntry(kBayerIndex[3][0]), bayerEntry(kBayerIndex[3][1]), bayerEntry(kBayerIndex[3][2]),
     bayerEntry(kBayerIndex[3][3])},
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
        // The step added where the threshold is below the remainder, +0 elsewhere (q is
        // a whole number of steps, never -0 nor NaN, so q + 0 is q to the bit).
        q = addF(q, andF(lessF(loadF<F>(t), subF(v, q)), stepV));
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

// 8-bit samples into 8-bit codes without noise by the integer form, when it agrees with
// the float form for every value against every entry (false, and nothing written, when
// it does not or the region is too small to pay for the check). Entry k of the matrix
// is the limit 17 k: the float threshold k / 15 of a step, times L.
template <int Code>
bool reduceOrderedBytes(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size,
                        int32_t L, float inv, float step) {
    using Lay = Layout<Code>;
    ByteLevelForm<Sample::U8> bytes;
    if (!worthByteLevels(size, Lay::kStride, 16 * 256) || !bytes.setUp(L)) return false;
    const OrderedForm<Sample::U8, Sample::U8, false> form{inv, step};
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            const float t = kBayer4x4[r][c] * step;
            const uint32_t limit = 17u * static_cast<uint32_t>(kBayerIndex[r][c]);
            const auto floatCodes = [&](const uint8_t* values, uint8_t* codes, int32_t n) {
                for (int32_t j = 0; j < n; ++j) codes[j] = form.apply(values[j], t);
            };
            if (!bytes.agrees(limit, floatCodes)) return false;
        }
    }
    // The limits of rows y & 3, sample by sample.
    alignas(32) LimitPattern patterns[4];
    for (int r = 0; r < 4; ++r) {
        for (int32_t j = 0; j < static_cast<int32_t>(sizeof(LimitPattern)); ++j) {
            const int32_t x = (j % kLimitPeriod) / Lay::kStride;
            patterns[r][j] = static_cast<uint8_t>(17 * kBayerIndex[r][x & 3]);
        }
    }
    eachRowRun<Lay::kStride>(src, srcStep, dst, dstStep, size,
                             [&](const uint8_t* s, uint8_t* d, int32_t n, int32_t y) {
                                 byteLevelRow<Sample::U8, Code == 4, false>(bytes, s, d, n, patterns[y & 3]);
                             });
    return true;
}

// The region, row by row. The half rule holds in the form with noise (tables not
// null), in C1, C3 and AC4, for the types that have it; C4 never adds it.
template <Sample S, Sample D, int Code>
void reduceOrdered(const SampleT<S>* src, int32_t srcStep, SampleT<D>* dst, int32_t dstStep, PxkSize size,
                   int32_t L, const NoiseTables* tables) {
    using Lay = Layout<Code>;
    constexpr bool kKeepFourth = Code == 4;
    const float step = domainTop<S>() / static_cast<float>(L);
    const float inv = static_cast<float>(L) / domainTop<S>();
    if constexpr (S == Sample::U8 && D == Sample::U8) {
        if (tables == nullptr && reduceOrderedBytes<Code>(src, srcStep, dst, dstStep, size, L, inv, step)) return;
    }
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
