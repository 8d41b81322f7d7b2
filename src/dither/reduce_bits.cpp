// Bit-depth reduction: the 32 members (eight type pairs in C1, C3, AC4 and C4), their
// checks and the choice of method, and the size query of the scratch buffer.
#include "pxkcc.h"

#include <climits>
#include <type_traits>

#include "dither/diffusion.h"
#include "dither/no_dither.h"
#include "dither/noise.h"
#include "dither/ordered.h"
#include "frame/checks.h"

using namespace pxk;
using namespace pxk::dither;

namespace {

// A step cut to whole elements of T by an arithmetic shift, back in bytes: the
// diffusion paths count their steps in elements.
template <class T>
std::intptr_t elementStep(int32_t step) {
    constexpr int kShift = sizeof(T) == 1 ? 0 : (sizeof(T) == 2 ? 1 : 2);
    return static_cast<std::intptr_t>(asr(step, kShift)) * static_cast<std::intptr_t>(sizeof(T));
}

template <class Sum, Sample S, Sample D, int Code>
PxkResult runDiffusion(const SampleT<S>* pSrc, int32_t srcStep, SampleT<D>* pDst, int32_t dstStep, PxkSize size,
                       uint32_t noise, int32_t L, uint8_t* pBuffer) {
    PXK_CHECK(checkPtrs(pBuffer));
    uint8_t* base = alignedBase(pBuffer);
    NoiseTables tables{};
    const float step = domainTop<S>() / static_cast<float>(L);
    if (noise != 0) {
        // The thresholds spread around half a step: (50 -+ noise) percent of it.
        const int32_t n = static_cast<int32_t>(noise);
        const float low = static_cast<float>(50 - n) * step / 100.0f;
        const float high = static_cast<float>(50 + n) * step / 100.0f;
        buildNoiseTables(base, low, high);
        tables = noiseTablesAt(base);
    }
    float* rows = reinterpret_cast<float*>(base + (noise != 0 ? kRowsWithNoiseAt : 0));
    diffuse<Sum, S, D, Code>(pSrc, elementStep<SampleT<S>>(srcStep), pDst, elementStep<SampleT<D>>(dstStep), size, L,
                             rows, noise != 0 ? &tables : nullptr);
    return pxkOk;
}

template <Sample S, Sample D, int Code>
PxkResult reduceBits(const SampleT<S>* pSrc, int32_t srcStep, SampleT<D>* pDst, int32_t dstStep, PxkSize size,
                     uint32_t noise, PxkDitherType dtype, int32_t levels, uint8_t* pBuffer) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(size, 1, 1));
    if (noise > 100) return pxkErrNoiseRange;
    if (levels < 2 || levels > maxLevels<D>()) return pxkErrDitherLevels;
    const int32_t L = levels - 1;
    using FloydSteinberg = std::conditional_t<S == Sample::U8, FloydSteinbergSum8u, FloydSteinbergSum>;
    switch (dtype) {
        case pxkDitherNone:
            reduceNearest<S, D, Code>(pSrc, srcStep, pDst, dstStep, size, L);
            return pxkOk;
        case pxkDitherBayer: {
            if (noise == 0) {
                reduceOrdered<S, D, Code>(pSrc, srcStep, pDst, dstStep, size, L, nullptr);
                return pxkOk;
            }
            PXK_CHECK(checkPtrs(pBuffer));
            uint8_t* base = alignedBase(pBuffer);
            // Noise in units of the matrix: -noise to +noise percent.
            buildNoiseTables(base, static_cast<float>(-static_cast<int32_t>(noise)) / 100.0f,
                             static_cast<float>(noise) / 100.0f);
            const NoiseTables tables = noiseTablesAt(base);
            reduceOrdered<S, D, Code>(pSrc, srcStep, pDst, dstStep, size, L, &tables);
            return pxkOk;
        }
        case pxkDitherFS:
            return runDiffusion<FloydSteinberg, S, D, Code>(pSrc, srcStep, pDst, dstStep, size, noise, L, pBuffer);
        case pxkDitherJJN:
            return runDiffusion<JarvisJudiceNinkeSum, S, D, Code>(pSrc, srcStep, pDst, dstStep, size, noise, L,
                                                                  pBuffer);
        case pxkDitherStucki:
            return runDiffusion<StuckiSum, S, D, Code>(pSrc, srcStep, pDst, dstStep, size, noise, L, pBuffer);
        default:
            return pxkErrDitherType;
    }
}

}  // namespace

extern "C" {

// The size query: pointer, width, channel code, noise, then the method.
PxkResult pxkiReduceBitsGetBufferSize(int32_t channelCode, PxkSize roiSize, uint32_t noise, PxkDitherType dtype,
                                      int32_t* pBufferSize) {
    PXK_CHECK(checkPtrs(pBufferSize));
    if (roiSize.width <= 0) return pxkErrSize;
    if (channelCode != 1 && channelCode != 3 && channelCode != 4 && channelCode != 9) return pxkErrChannels;
    if (noise > 100) return pxkErrNoiseRange;
    if (dtype == pxkDitherNone) {
        *pBufferSize = 0;
        return pxkOk;
    }
    const int64_t w = roiSize.width;
    int64_t bytes;
    switch (dtype) {
        case pxkDitherBayer:
            bytes = 0;
            break;
        case pxkDitherFS:
            bytes = w * 8 + 16;
            break;
        case pxkDitherJJN:
        case pxkDitherStucki:
            bytes = w * 12 + 48;
            break;
        default:
            return pxkErrDitherType;
    }
    if (noise != 0) bytes += kNoiseBytes;
    if (bytes != 0) bytes += 64;
    // A size that a 32-bit count cannot hold is refused as a size.
    if (bytes > INT32_MAX) return pxkErrSize;
    *pBufferSize = static_cast<int32_t>(bytes);
    return pxkOk;
}

#define PXK_REDUCE_BITS(types, layout, S, D, code)                                                            \
    PxkResult pxkiReduceBits_##types##_##layout##R(const SampleT<Sample::S>* pSrc, int32_t srcStep,             \
                                                   SampleT<Sample::D>* pDst, int32_t dstStep, PxkSize roiSize, \
                                                   uint32_t noise, PxkDitherType dtype, int32_t levels,         \
                                                   uint8_t* pBuffer) {                                          \
        return reduceBits<Sample::S, Sample::D, code>(pSrc, srcStep, pDst, dstStep, roiSize, noise, dtype,      \
                                                      levels, pBuffer);                                         \
    }
#define PXK_REDUCE_BITS_LAYOUTS(types, S, D)     \
    PXK_REDUCE_BITS(types, C1, S, D, 1)          \
    PXK_REDUCE_BITS(types, C3, S, D, 3)          \
    PXK_REDUCE_BITS(types, AC4, S, D, 4)         \
    PXK_REDUCE_BITS(types, C4, S, D, 5)

PXK_REDUCE_BITS_LAYOUTS(8u, U8, U8)
PXK_REDUCE_BITS_LAYOUTS(16u, U16, U16)
PXK_REDUCE_BITS_LAYOUTS(16s, S16, S16)
PXK_REDUCE_BITS_LAYOUTS(16u8u, U16, U8)
PXK_REDUCE_BITS_LAYOUTS(16s8u, S16, U8)
PXK_REDUCE_BITS_LAYOUTS(32f8u, F32, U8)
PXK_REDUCE_BITS_LAYOUTS(32f16u, F32, U16)
PXK_REDUCE_BITS_LAYOUTS(32f16s, F32, S16)

#undef PXK_REDUCE_BITS_LAYOUTS
#undef PXK_REDUCE_BITS

}  // extern "C"
