// The path without dither: nearest level in the normalised range 0 to 1, in single
// precision throughout. Every sample is independent of its column, so C1, C3 and C4
// rows are one flat run of width * channels samples, in vectors of four samples a
// lane and a scalar tail with the same arithmetic. AC4 rows run the same way over all
// four samples of each pixel, and only the first three of each are written. Integer
// sources into 8-bit codes take the integer form of byte_levels.h instead where it is
// proven to give the same codes (on large enough regions).
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "dither/byte_levels.h"
#include "dither/sample_vectors.h"
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

    // The source's factor to the range 0 to 1 (1 for floats, never used).
    static float factor() { return floatFromBits(S == Sample::U8 ? 0x3B808081u : 0x37800080u); }
    static constexpr float kScale = D == Sample::U8 ? 255.0f : 65535.0f;

    // The vector form: codes before saturation.
    template <class V>
    PXK_INLINE V apply(const SampleT<S>* p) const {
        using namespace vec;
        using F = FloatOf<V>;
        F x = loadDomainVec<S, V>(p);
        if constexpr (S != Sample::F32) x = mulF(x, splatF<F>(factor()));
        const F step = splatF<F>(stepN);
        F y = mulF(toFloat(truncToInt(mulF(x, splatF<F>(levels)))), step);
        // The step added where the remainder is above half a step, and +0 elsewhere:
        // y is a whole number of steps from an integer conversion, never -0 nor NaN,
        // so y + 0 is y to the bit and no select is needed.
        y = addF(y, andF(lessF(splatF<F>(halfN), subF(x, y)), step));
        // No rounding term: float error in y may land a sample one code low.
        return truncToInt(mulF(y, splatF<F>(kScale)));
    }

    // The scalar twin.
    PXK_INLINE SampleT<D> apply(SampleT<S> s) const {
        float x = toDomain<S>(s);
        if constexpr (S != Sample::F32) x = x * factor();
        float y = static_cast<float>(truncToInt32(x * levels)) * stepN;
        if (x - y > halfN) y = y + stepN;
        return saturateCode<D>(truncToInt32(y * kScale));
    }
};

template <Sample S, Sample D, int Code>
void reduceNearest(const SampleT<S>* src, int32_t srcStep, SampleT<D>* dst, int32_t dstStep, PxkSize size,
                   int32_t L) {
    using Lay = Layout<Code>;
    constexpr bool kKeepFourth = Code == 4;
    const NearestLevelForm<S, D> form(L);
    const auto eachRun = [&](auto&& run) {
        eachRowRun<Lay::kStride>(src, srcStep, dst, dstStep, size, run);
    };
    // The float form over a flat run of samples.
    const auto floatRun = [&](auto keepFourth, const SampleT<S>* s, SampleT<D>* d, int32_t n) {
        constexpr bool kKeep = decltype(keepFourth)::value;
        runSamples(
            n,
            [&](int32_t i, auto* type) PXK_LAMBDA_INLINE {
                using V = std::remove_pointer_t<decltype(type)>;
                storeCodesVec<D, kKeep>(d + i, packCodes<D>(form.template apply<V>(s + i)));
            },
            [&](int32_t i) {
                if (kKeep && i % 4 == 3) return;
                storeSample(d + i, form.apply(loadSample(s + i)));
            });
    };
    if constexpr (S != Sample::F32 && D == Sample::U8) {
        // The nearest level is the one above when the remainder is above half a step:
        // r > 127 (8-bit sources) or r > 32767 (16-bit ones) in the integer form's units.
        constexpr uint32_t kHalf = ByteLevelForm<S>::kHalfLimit;
        // 16-bit sources check 65536 values, worth it only from 2^18 samples on.
        constexpr int64_t kLeast = S == Sample::U8 ? 256 : (int64_t{1} << 18);
        ByteLevelForm<S> bytes;
        if (worthByteLevels(size, Lay::kStride, kLeast) && bytes.setUp(L) &&
            bytes.agrees(kHalf, [&](const SampleT<S>* v, uint8_t* codes, int32_t n) {
                floatRun(std::false_type{}, v, codes, n);
            })) {
            eachRun([&](const SampleT<S>* s, uint8_t* d, int32_t n, int32_t) {
                byteLevelRow<S, kKeepFourth, true>(bytes, s, d, n, nullptr);
            });
            return;
        }
    }
    eachRun([&](const SampleT<S>* s, SampleT<D>* d, int32_t n, int32_t) {
        floatRun(std::integral_constant<bool, kKeepFourth>{}, s, d, n);
    });
}

}  // namespace dither
}  // namespace pxk
