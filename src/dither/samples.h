// Sample types of the bit-depth reduction members, the working domain of each source
// type, the layouts (ChannelCode) and the output codes: each rule in one place.
#pragma once

#include "frame/samples.h"

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "frame/drivers.h"
#include "frame/fixed_point.h"
#include "frame/vec_float.h"

namespace pxk {
namespace dither {

enum class Sample { U8, U16, S16, F32 };

// The C type of a sample.
template <Sample S>
using SampleT = std::conditional_t<
    S == Sample::U8, uint8_t,
    std::conditional_t<S == Sample::U16, uint16_t, std::conditional_t<S == Sample::S16, int16_t, float>>>;

// The top of a source type's working domain: 255, 65535 (both 16-bit types) or 1.
template <Sample S>
constexpr float domainTop() {
    return S == Sample::U8 ? 255.0f : (S == Sample::F32 ? 1.0f : 65535.0f);
}

// The largest `levels` of a destination type.
template <Sample D>
constexpr int32_t maxLevels() {
    return D == Sample::U8 ? 256 : 65536;
}

// A source sample in its working domain: 16-bit signed samples move up by 32768, float
// samples are taken as they stand.
template <Sample S>
PXK_INLINE float toDomain(SampleT<S> v) {
    if constexpr (S == Sample::S16) {
        return static_cast<float>(int32_t{v} + 32768);
    } else {
        return static_cast<float>(v);
    }
}

// Saturates a code to the destination: 0..255, 0..65535, and for 16-bit signed
// destinations the code less 32768, saturated to -32768..32767.
template <Sample D>
PXK_INLINE SampleT<D> saturateCode(int32_t z) {
    if constexpr (D == Sample::U8) {
        return clamp8(z);
    } else {
        const int32_t c = z < 0 ? 0 : (z > 65535 ? 65535 : z);
        if constexpr (D == Sample::U16) {
            return static_cast<uint16_t>(c);
        } else {
            return static_cast<int16_t>(c - 32768);
        }
    }
}

// The destination's largest and smallest codes.
template <Sample D>
PXK_INLINE SampleT<D> largestCode() {
    return saturateCode<D>(65535);
}
template <Sample D>
PXK_INLINE SampleT<D> smallestCode() {
    return saturateCode<D>(0);
}

// The output code of a quantised level q (in the working domain). Float sources scale
// by 255 or 65535; 16-bit sources into 8-bit destinations shift right by 8. With Half,
// 0.5 is added before the truncation, after any multiplication.
template <Sample S, Sample D, bool Half>
PXK_INLINE SampleT<D> codeOfLevel(float q) {
    float m = q;
    if constexpr (S == Sample::F32) m = m * (D == Sample::U8 ? 255.0f : 65535.0f);
    if constexpr (Half) m = m + 0.5f;
    int32_t z = truncToInt32(m);
    if constexpr (S != Sample::U8 && S != Sample::F32 && D == Sample::U8) z = asr(z, 8);
    return saturateCode<D>(z);
}

// Whether a member's type pair has the half rule at all (16s8u and the float sources).
template <Sample S, Sample D>
constexpr bool hasHalf() {
    return S == Sample::F32 || (S == Sample::S16 && D == Sample::U8);
}

// A layout by its ChannelCode: 1 C1, 3 C3, 4 AC4 (three channels walked in pixels of
// four samples), 5 C4.
template <int Code>
struct Layout {
    static_assert(Code == 1 || Code == 3 || Code == 4 || Code == 5, "ChannelCode 1, 3, 4 or 5");
    static constexpr int kChannels = Code == 4 ? 3 : (Code == 5 ? 4 : Code);
    static constexpr int kStride = Code == 1 ? 1 : (Code == 3 ? 3 : 4);
};

// A row of samples of type T `step` bytes after `row`.
template <class T>
PXK_INLINE T* rowAt(T* row0, int32_t y, std::intptr_t step) {
    return byteOffset(row0, static_cast<std::intptr_t>(y) * step);
}

// The rows of a region as flat runs of samples: run(s, d, n, y) for each run of at most
// 2^24 pixels (so that a run's sample count fits an int32; a run starts on a multiple
// of 4 pixels), Stride samples a pixel.
template <int Stride, class TS, class TD, class Run>
PXK_INLINE void eachRowRun(const TS* src, int32_t srcStep, TD* dst, int32_t dstStep, PxkSize size, Run&& run) {
    constexpr int32_t kRun = 1 << 24;
    for (int32_t y = 0; y < size.height; ++y) {
        const TS* rowS = rowAt(src, y, srcStep);
        TD* rowD = rowAt(dst, y, dstStep);
        for (int32_t x0 = 0; x0 < size.width; x0 += kRun) {
            const std::intptr_t first = static_cast<std::intptr_t>(x0) * Stride;
            const int32_t n = (size.width - x0 < kRun ? size.width - x0 : kRun) * Stride;
            run(rowS + first, rowD + first, n, y);
        }
    }
}

}  // namespace dither
}  // namespace pxk
