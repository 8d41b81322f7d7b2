// Colour to gray: RGBToGray (the default weights) and ColorToGray (the caller's, or
// the defaults for a null pointer) share one row kernel a data type.
//
//   8u    16-bit fixed point. C3: the block form over width & ~3 columns (blocks of 8,
//         then one of 4), AC4: over width & ~7; the tail form for the rest. Steps in
//         bytes.
//   16u   single precision over width & ~3 columns in groups of four (two at a time
//         in the avx2 build, one a 128-bit lane), whose four
//         results are merged into words (mergeWords); low 16 bits in the tail. Steps
//         with their low bit cleared.
//   16s   as 16u on samples offset by 32768; saturated in the groups, wrapped in the
//         tail.
//   32f   single precision, unclamped; steps with their low two bits cleared.
//   64f   double precision, unclamped; steps in bytes.
#include "pxkcc.h"

#include <cstring>

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "twist_gamma/float_quads.h"
#include "twist_gamma/gray_forms.h"
#include "twist_gamma/word_groups.h"

using namespace pxk;
using namespace pxk::gray;

namespace {

// ---------------------------------------------------------------------------------
// 8u: blocks of 16 pixels a lane through the packed layouts of the frame.
// ---------------------------------------------------------------------------------

template <class V, class In>
PXK_INLINE void fixedBlockAt(const In& in, uint8_t* dst, int32_t x, const FixedWeights& f) {
    const V w[3] = {vec::splat16<V>(f.w[0]), vec::splat16<V>(f.w[1]), vec::splat16<V>(f.w[2])};
    const Block<V> b = in.template load<V>(x);
    vec::storeLanes<V, 16>(dst + x, simd::halvesToPixelBytes(fixedBlock(b.half[0].c, w), fixedBlock(b.half[1].c, w)));
}

// A last block of fewer than 16 pixels, through local buffers, so that nothing past
// the row's last pixel is read or written.
template <class In>
__attribute__((noinline)) void fixedStagedBlock(const uint8_t* src, uint8_t* dst, int32_t x, int32_t count,
                                                const FixedWeights& f) {
    alignas(16) uint8_t inBuf[16 * In::kBytes] = {};
    alignas(16) uint8_t outBuf[16];
    std::memcpy(inBuf, src + pixelOffset<In::kBytes>(x), static_cast<std::size_t>(pixelOffset<In::kBytes>(count)));
    fixedBlockAt<vec::V128>(In{{inBuf}}, outBuf, 0, f);
    std::memcpy(dst + x, outBuf, static_cast<std::size_t>(count));
}

// One row: the block form over width - width % Unit columns, the tail form after.
template <int32_t Unit, class In>
void fixedRow(int32_t width, const uint8_t* src, uint8_t* dst, const FixedWeights& f) {
    const In in{{src}};
    constexpr int32_t kWidest = kBlockPixels<vec::Widest>;
    splitColumns<Unit, kWidest>(
        width,
        [&](int32_t x, int32_t count) PXK_LAMBDA_INLINE {
            if (count == kWidest) {
                fixedBlockAt<vec::Widest>(in, dst, x, f);
            } else if (count == kBlockPixels<vec::V128>) {
                fixedBlockAt<vec::V128>(in, dst, x, f);
            } else {
                fixedStagedBlock<In>(src, dst, x, count, f);
            }
        },
        [&](int32_t x) { dst[x] = fixedTail(src + pixelOffset<In::kBytes>(x), f); });
}

template <int32_t Unit, class In>
PxkResult reduceFixed(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size,
                      const float* coeffs) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    const FixedWeights f = fixedWeightsOf(coeffs);
    driveRows(
        size.width, size.height,
        [&f](int32_t width, const uint8_t* s, uint8_t* d) { fixedRow<Unit, In>(width, s, d, f); },
        rows(src, srcStep), rows(dst, dstStep));
    return pxkOk;
}

// ---------------------------------------------------------------------------------
// 16u, 16s, 32f: groups of four pixels in float lanes, then the scalar tail.
// ---------------------------------------------------------------------------------

// What differs between the float kernels: how groups and single samples are read as
// floats, how a group's and a tail pixel's sums are stored, and the widest vector
// the group loop takes (16-bit samples: two groups at a time in the avx2 build).
template <class V, bool Offset, int Channels>
PXK_INLINE words::Channels3<vec::FloatOf<V>> loadWordGroups(const void* p) {
    if constexpr (Channels == 3) {
        return words::loadC3<V, Offset>(quads::bytes(p));
    } else {
        return words::loadAC4<V, Offset>(quads::bytes(p));
    }
}

struct Words16u {
    using T = uint16_t;
    using Wide = vec::Widest;
    static constexpr int kStepShift = 1;
    template <class V, int Channels>
    PXK_INLINE static words::Channels3<vec::FloatOf<V>> loadGroups(const T* p) {
        return loadWordGroups<V, false, Channels>(p);
    }
    PXK_INLINE static float sample(T s) { return static_cast<float>(s); }
    template <class F>
    PXK_INLINE static void storeGroups(T* p, F sums) {
        quads::storeLow16(p, mergeWords(vec::roundToInt(sums)));
    }
    template <class F>
    PXK_INLINE static void storeGroups(T* p, F a, F b) {
        quads::storeLow16(p, mergeWords(vec::roundToInt(a)), mergeWords(vec::roundToInt(b)));
    }
    PXK_INLINE static void storeOne(T* p, float sum) {
        pxk::storeSample(p, static_cast<T>(static_cast<uint32_t>(pxkRoundHalfEven(sum)) & 0xFFFFu));
    }
};

struct Words16s {
    using T = int16_t;
    using Wide = vec::Widest;
    static constexpr int kStepShift = 1;
    template <class V, int Channels>
    PXK_INLINE static words::Channels3<vec::FloatOf<V>> loadGroups(const T* p) {
        return loadWordGroups<V, true, Channels>(p);
    }
    PXK_INLINE static float sample(T s) { return static_cast<float>(int32_t{s} + 32768); }
    template <class F>
    PXK_INLINE static auto results(F sums) {
        using V = decltype(vec::roundToInt(sums));
        return vec::sub32(vec::roundToInt(sums), vec::splat32<V>(32768));
    }
    template <class F>
    PXK_INLINE static void storeGroups(T* p, F sums) {
        quads::storeSaturated16(p, results(sums));
    }
    template <class F>
    PXK_INLINE static void storeGroups(T* p, F a, F b) {
        quads::storeSaturated16(p, results(a), results(b));
    }
    PXK_INLINE static void storeOne(T* p, float sum) {
        const uint32_t low = (static_cast<uint32_t>(pxkRoundHalfEven(sum)) - 32768u) & 0xFFFFu;
        pxk::storeSample(p, static_cast<T>(static_cast<int32_t>(low) - static_cast<int32_t>((low & 0x8000u) << 1)));
    }
};

struct Floats32f {
    using T = float;
    using Wide = vec::V128;
    static constexpr int kStepShift = 2;
    // Four pixels of a C3 or AC4 row, one float vector a channel (the fourth channel
    // of AC4 is read but not used).
    template <class V, int Channels>
    PXK_INLINE static words::Channels3<vec::F128> loadGroups(const T* p) {
        if constexpr (Channels == 3) {
            const quads::Channels3 r = quads::loadC3(p);
            return {{r.c[0], r.c[1], r.c[2]}};
        } else {
            vec::F128 v[4];
            quads::loadC4(p, v);
            return {{v[0], v[1], v[2]}};
        }
    }
    PXK_INLINE static float sample(T s) { return s; }
    PXK_INLINE static void storeGroups(T* p, vec::F128 sums) { vec::storeF(p, sums); }
    PXK_INLINE static void storeGroups(T* p, vec::F128 a, vec::F128 b) {
        vec::storeF(p, a);
        vec::storeF(p + 4, b);
    }
    PXK_INLINE static void storeOne(T* p, float sum) { pxk::storeSample(p, sum); }
};

// Groups of four from column x while a whole vector of V's groups fits below n, two
// vectors at a time while they fit (stored together); the column where they stop.
template <class K, int Channels, class V>
PXK_INLINE int32_t floatGroups(int32_t x, int32_t n, const typename K::T* src, typename K::T* dst,
                               const Weights<float>& w) {
    using F = vec::FloatOf<V>;
    constexpr int32_t kPixels = 4 * static_cast<int32_t>(sizeof(V) / 16);
    const F c[3] = {vec::splatF<F>(w.c[0]), vec::splatF<F>(w.c[1]), vec::splatF<F>(w.c[2])};
    for (; x + 2 * kPixels <= n; x += 2 * kPixels) {
        const std::ptrdiff_t at = std::ptrdiff_t{Channels} * x;
        const words::Channels3<F> s0 = K::template loadGroups<V, Channels>(src + at);
        const words::Channels3<F> s1 = K::template loadGroups<V, Channels>(src + at + Channels * kPixels);
        K::storeGroups(dst + x, weightedSum(s0.c, c), weightedSum(s1.c, c));
    }
    for (; x + kPixels <= n; x += kPixels) {
        const words::Channels3<F> s = K::template loadGroups<V, Channels>(src + std::ptrdiff_t{Channels} * x);
        K::storeGroups(dst + x, weightedSum(s.c, c));
    }
    return x;
}

template <class K, int Channels>
void floatRow(int32_t width, const typename K::T* src, typename K::T* dst, const Weights<float>& w) {
    const int32_t n = width & ~3;  // groups of four; the rest in the tail
    // The widest blocks first, then a last group of four that they leave (avx2 build).
    int32_t x = floatGroups<K, Channels, typename K::Wide>(0, n, src, dst, w);
    x = floatGroups<K, Channels, vec::V128>(x, n, src, dst, w);
    for (; x < width; ++x) {
        const typename K::T* p = src + std::ptrdiff_t{Channels} * x;
        const float s[3] = {K::sample(loadSample(p)), K::sample(loadSample(p + 1)),
                            K::sample(loadSample(p + 2))};
        K::storeOne(dst + x, weightedSum(s, w));
    }
}

// A byte step with its low bits cleared, as the members that count steps in samples
// use it (an arithmetic shift down and back).
PXK_INLINE int32_t sampleStep(int32_t step, int shift) {
    return static_cast<int32_t>(static_cast<uint32_t>(step) & ~((1u << shift) - 1u));
}

template <class K, int Channels>
PxkResult reduceFloat(const typename K::T* src, int32_t srcStep, typename K::T* dst, int32_t dstStep, PxkSize size,
                      const float* coeffs) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    const Weights<float> w = weightsOf(coeffs);
    using T = typename K::T;
    driveRows(
        size.width, size.height,
        [&w](int32_t width, const T* s, T* d) { floatRow<K, Channels>(width, s, d, w); },
        rows(src, sampleStep(srcStep, K::kStepShift)), rows(dst, sampleStep(dstStep, K::kStepShift)));
    return pxkOk;
}

// 64f: one pixel at a time in double precision; steps in bytes.
template <int Channels>
PxkResult reduceDouble(const double* src, int32_t srcStep, double* dst, int32_t dstStep, PxkSize size,
                       const double* coeffs) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    const Weights<double> w = weightsOf(coeffs);
    driveRows(
        size.width, size.height,
        [&w](int32_t width, const double* s, double* d) {
            for (int32_t x = 0; x < width; ++x) {
                const double* p = s + std::ptrdiff_t{Channels} * x;
                const double v[3] = {loadSample(p), loadSample(p + 1), loadSample(p + 2)};
                storeSample(d + x, weightedSum(v, w));
            }
        },
        rows(src, srcStep), rows(dst, dstStep));
    return pxkOk;
}

}  // namespace

// RGBToGray and ColorToGray of one type and layout: the same kernel, the first with
// the default weights.
#define PXK_GRAY_MEMBERS(type, layout, T, ...)                                                                   \
    PxkResult pxkiRGBToGray_##type##_##layout(const T* pSrc, int32_t srcStep, T* pDst, int32_t dstStep,          \
                                              PxkSize roiSize) {                                                  \
        return __VA_ARGS__(pSrc, srcStep, pDst, dstStep, roiSize, nullptr);                                       \
    }                                                                                                             \
    PxkResult pxkiColorToGray_##type##_##layout(const T* pSrc, int32_t srcStep, T* pDst, int32_t dstStep,        \
                                                PxkSize roiSize, const float coeffs[3]) {                         \
        return __VA_ARGS__(pSrc, srcStep, pDst, dstStep, roiSize, coeffs);                                        \
    }

extern "C" {

PXK_GRAY_MEMBERS(8u, C3C1R, uint8_t, reduceFixed<4, PackedC3In>)
PXK_GRAY_MEMBERS(8u, AC4C1R, uint8_t, reduceFixed<8, PackedC4In>)
PXK_GRAY_MEMBERS(16u, C3C1R, uint16_t, reduceFloat<Words16u, 3>)
PXK_GRAY_MEMBERS(16u, AC4C1R, uint16_t, reduceFloat<Words16u, 4>)
PXK_GRAY_MEMBERS(16s, C3C1R, int16_t, reduceFloat<Words16s, 3>)
PXK_GRAY_MEMBERS(16s, AC4C1R, int16_t, reduceFloat<Words16s, 4>)
PXK_GRAY_MEMBERS(32f, C3C1R, float, reduceFloat<Floats32f, 3>)
PXK_GRAY_MEMBERS(32f, AC4C1R, float, reduceFloat<Floats32f, 4>)

PxkResult pxkiColorToGray_64f_C3C1R(const double* pSrc, int32_t srcStep, double* pDst, int32_t dstStep,
                                    PxkSize roiSize, const double coeffs[3]) {
    return reduceDouble<3>(pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}
PxkResult pxkiColorToGray_64f_AC4C1R(const double* pSrc, int32_t srcStep, double* pDst, int32_t dstStep,
                                     PxkSize roiSize, const double coeffs[3]) {
    return reduceDouble<4>(pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

}  // extern "C"
