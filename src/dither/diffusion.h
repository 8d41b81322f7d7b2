// Error diffusion (Floyd-Steinberg, Jarvis-Judice-Ninke, Stucki) in float row buffers
// with zero cells at both ends. One channel is diffused at a time; the buffers are
// cleared once per call, so the errors that one channel leaves feed the first row of
// the next. Rows always run left to right. Each pixel takes the weighted sum of its
// method in the one order written below, and the same formula serves every pixel of a
// row (no regrouping inside rounds of pixels).
#pragma once

#include <cstdint>
#include <cstring>

#include "dither/noise.h"
#include "dither/samples.h"
#include "frame/vec_float.h"

namespace pxk {
namespace dither {

// The gathered error of pixel x, times the method's divider. E2: the row before the
// previous (three-row methods only), E1: the previous row, C: the current row.
struct FloydSteinbergSum {
    static constexpr int kRows = 2;
    static constexpr int kPad = 1;
    PXK_INLINE static float at(const float*, const float* e1, const float* c, int32_t x) {
        return (((e1[x + 1] * 3.0f + e1[x] * 5.0f) + e1[x - 1]) + c[x - 1] * 7.0f) * 0.0625f;
    }
};

// The order of the 8-bit members.
struct FloydSteinbergSum8u {
    static constexpr int kRows = 2;
    static constexpr int kPad = 1;
    PXK_INLINE static float at(const float*, const float* e1, const float* c, int32_t x) {
        return (((e1[x + 1] * 3.0f + e1[x - 1]) + e1[x] * 5.0f) + c[x - 1] * 7.0f) * 0.0625f;
    }
};

// Jarvis-Judice-Ninke (a 5, b 3, c 7, divider 1/48) and Stucki (a 4, b 2, c 8,
// divider 1/42): weights named for the middle of E2 (a), the next of E1 (b) and the
// near C (c).
template <int A, int B, int Cw, uint32_t DividerBits>
struct ThreeRowSum {
    static constexpr int kRows = 3;
    static constexpr int kPad = 2;
    PXK_INLINE static float at(const float* e2, const float* e1, const float* c, int32_t x) {
        constexpr float a = A, b = B, cw = Cw;
        const float low = (a * e2[x] + cw * e1[x]) + (a * c[x - 2] + (e2[x - 2] + b * e1[x - 2]));
        const float high = (b * e2[x + 1] + a * e1[x + 1]) + (cw * c[x - 1] + (b * e2[x - 1] + a * e1[x - 1]));
        const uint32_t bits = DividerBits;
        float divider;
        std::memcpy(&divider, &bits, sizeof divider);
        return (((high + low) + e2[x + 2]) + e1[x + 2] * b) * divider;
    }
};
// 0.020833334f and 0.023809524f.
using JarvisJudiceNinkeSum = ThreeRowSum<5, 3, 7, 0x3CAAAAABu>;
using StuckiSum = ThreeRowSum<4, 2, 8, 0x3CC30C31u>;

// Floats of the row buffers of a method for a row of `width` pixels.
template <class Sum>
constexpr std::size_t rowBufferFloats(int32_t width) {
    return static_cast<std::size_t>(Sum::kRows) * (static_cast<std::size_t>(width) + 2 * Sum::kPad);
}

// One pixel: the sample plus its gathered error, the clamps (lower limit `low`), the
// quantiser against threshold t; stores the error in *err and returns the code.
template <Sample S, Sample D, bool Half>
PXK_INLINE SampleT<D> diffuseSample(float v, float low, float inv, float step, float t, float* err) {
    if (v >= domainTop<S>()) {
        *err = 0.0f;
        return largestCode<D>();
    }
    if (v < low) {
        *err = 0.0f;
        return smallestCode<D>();
    }
    // Both levels are worked out and the threshold picks one by a mask: which one wins
    // is as good as random, and a mispredicted branch costs more than the spare sums.
    const float q0 = static_cast<float>(truncToInt32(v * inv)) * step;
    const float q1 = q0 + step;
    const __m128 r0 = _mm_set_ss(v - q0);
    const __m128 up = _mm_cmpgt_ss(r0, _mm_set_ss(t));
    const float q = _mm_cvtss_f32(vec::selectF(up, _mm_set_ss(q1), _mm_set_ss(q0)));
    *err = _mm_cvtss_f32(vec::selectF(up, _mm_set_ss(v - q1), r0));
    return codeOfLevel<S, D, Half>(q);
}

// The whole region. `rows` is the row buffers' place (zeroed here), `tables` null
// without noise. Steps are in bytes, already cut to whole elements.
//
// The rows of all channels form one sequence (channel by channel, each from the top),
// and the buffers rotate along it. Each pixel waits on the error of the pixel before
// it, a long chain of dependent float operations; the next row needs only errors up
// to kPad pixels to the right in the row above. So rows go in pairs, the second
// kPad + 1 pixels behind the first, and the processor runs both chains side by side.
// Each pixel still takes exactly the inputs it takes one row at a time: the second row
// reads cells of the first that are already written, and writes cells of the row
// before the first that the first no longer reads.
template <class Sum, Sample S, Sample D, int Code>
void diffuse(const SampleT<S>* src, std::intptr_t srcStep, SampleT<D>* dst, std::intptr_t dstStep, PxkSize size,
             int32_t L, float* rows, const NoiseTables* tables) {
    using Lay = Layout<Code>;
    // Floyd-Steinberg of float sources keeps the smallest normal float as its lower limit.
    constexpr bool kFloydSteinberg = Sum::kRows == 2;
    constexpr float kLow = (kFloydSteinberg && S == Sample::F32) ? 1.1920929e-7f : 0.0f;
    constexpr bool kHalf = kFloydSteinberg && hasHalf<S, D>();
    const float step = domainTop<S>() / static_cast<float>(L);
    const float inv = static_cast<float>(L) / domainTop<S>();
    const float halfStep = step * 0.5f;
    const int32_t w = size.width;
    const std::size_t rowLength = static_cast<std::size_t>(w) + 2 * Sum::kPad;
    std::memset(rows, 0, rowBufferFloats<Sum>(w) * sizeof(float));
    // Row starts: E2 (three rows only), E1, C.
    float* buffer[3];
    for (int k = 0; k < Sum::kRows; ++k) buffer[k] = rows + Sum::kPad + static_cast<std::size_t>(k) * rowLength;

    // One row of the sequence: its samples, and its buffers.
    struct Row {
        const SampleT<S>* s;
        SampleT<D>* d;
        uint32_t twiceY;
        float *e2, *e1, *cur;
    };
    // Row n of the sequence is row n % height of channel n / height; its buffers are
    // the rotation's n-th turn.
    auto rowAt = [&](int64_t n) {
        const int32_t ch = static_cast<int32_t>(n / size.height);
        const int32_t y = static_cast<int32_t>(n % size.height);
        Row r;
        r.s = byteOffset(src, static_cast<std::intptr_t>(y) * srcStep) + ch;
        r.d = byteOffset(dst, static_cast<std::intptr_t>(y) * dstStep) + ch;
        r.twiceY = 2u * static_cast<uint32_t>(y);
        const int turn = static_cast<int>(n % Sum::kRows);
        if constexpr (Sum::kRows == 2) {
            r.e2 = nullptr;
            r.e1 = buffer[turn];
            r.cur = buffer[1 - turn];
        } else {
            r.e2 = buffer[turn];
            r.e1 = buffer[(turn + 1) % 3];
            r.cur = buffer[(turn + 2) % 3];
        }
        return r;
    };
    auto pixel = [&](const Row& r, int32_t x) PXK_LAMBDA_INLINE {
        const std::size_t i = static_cast<std::size_t>(x) * Lay::kStride;
        const float v = toDomain<S>(loadSample(r.s + i)) + Sum::at(r.e2, r.e1, r.cur, x);
        const float t = tables ? tables->at(x, r.twiceY) : halfStep;
        storeSample(r.d + i, diffuseSample<S, D, kHalf>(v, kLow, inv, step, t, r.cur + x));
    };

    // Rows in flight, each kLag pixels behind the one before; what is left at the end
    // of the sequence goes one row at a time.
    constexpr int kInFlight = 4;
    constexpr int32_t kLag = Sum::kPad + 1;
    constexpr int32_t kBehind = (kInFlight - 1) * kLag;
    const int64_t count = static_cast<int64_t>(Lay::kChannels) * size.height;
    int64_t n = 0;
    for (; count - n >= kInFlight; n += kInFlight) {
        Row r[kInFlight];
        for (int j = 0; j < kInFlight; ++j) r[j] = rowAt(n + j);
        for (int32_t x = 0; x < w + kBehind; ++x) {
            if (x >= kBehind && x < w) {
                PXK_UNROLL
                for (int j = 0; j < kInFlight; ++j) pixel(r[j], x - j * kLag);
            } else {
                for (int j = 0; j < kInFlight; ++j) {
                    const int32_t at = x - j * kLag;
                    if (at >= 0 && at < w) pixel(r[j], at);
                }
            }
        }
    }
    for (; n < count; ++n) {
        const Row r = rowAt(n);
        for (int32_t x = 0; x < w; ++x) pixel(r, x);
    }
}

}  // namespace dither
}  // namespace pxk
