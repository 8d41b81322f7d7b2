// The 32f gamma members: the curve computed over the caller's range [vMin, vMax].
//
// Per sample, with range = vMax - vMin and t = x - vMin:
//   forward: u = r * t; 0.018 > u: t * 4.5 + vMin; else (u^0.45 * 1.099 - 0.099) * range + vMin.
//   inverse: r * t < 0.0812: v = t * 0.222222224; else v = w^2.22222233 with
//            w = (t * r + 0.099) * 0.909918129, times range in the AC4 members only
//            (the C3 and plane members take w^2.22222233 as it is); out = v + vMin.
// r = 1 / range is a float in some members and a double in others; with a double r,
// t is widened, u (or w) is worked and compared in double (the float constants widened)
// and narrowed to float for the power. Nothing is clamped. Each member's choice of r
// and of power routine (the scalar float routine per sample, or the vector routine
// over blocks of up to 384 samples) is in its line below. All other arithmetic is in
// float, in the order written, by the caller's rounding mode.
//
// Samples are converted one at a time and independently: the blocks (128 pixels of an
// AC4 or C3 row, 384 samples of a plane row) only batch the vector routine's calls, so
// that its set-up is paid once a block; the last, shorter block gets the same formula.
// Each block makes its three steps (t = x - vMin, the power and the branch, adding
// vMin) in stack buffers and writes the destination once, instead of passing over the
// destination row three times: the values are the same, a vMin of 0 needs no copy, and
// in place or not the source is read before its block is written.
#include <cstddef>

#include "frame/checks.h"
#include "pxkcc.h"
#include "twist_gamma/gamma_region.h"
#include "twist_gamma/power_scalar.h"
#include "twist_gamma/power_vector.h"

using namespace pxk;
using namespace pxk::gamma;

namespace {

constexpr float kForwardThreshold = 0.018f;
constexpr float kForwardSlope = 4.5f;
constexpr float kGain = 1.099f;
constexpr float kOffset = 0.099f;
constexpr float kForwardExponent = 0.45f;
constexpr float kInverseThreshold = 0.0812f;
constexpr float kInverseSlope = 0.222222224f;
constexpr float kInverseGain = 0.909918129f;
constexpr float kInverseExponent = 2.22222233f;

// The call's values: the range and its reciprocal in both precisions.
struct Range {
    float vMin;
    float range;
    float rFloat;
    double rDouble;
};

Range rangeOf(float vMin, float vMax) {
    const float range = vMax - vMin;
    return Range{vMin, range, 1.0f / range, 1.0 / static_cast<double>(range)};
}

// One sample's way to the power: its argument, and whether the linear branch takes it.
struct PowerStep {
    float argument;
    bool linear;
};

template <bool DoubleR>
struct Forward {
    static constexpr float kExponent = kForwardExponent;
    static PowerStep prepare(float t, const Range& g) {
        if constexpr (DoubleR) {
            const double u = g.rDouble * static_cast<double>(t);
            return PowerStep{static_cast<float>(u), static_cast<double>(kForwardThreshold) > u};
        } else {
            const float u = g.rFloat * t;
            return PowerStep{u, kForwardThreshold > u};
        }
    }
    static float finish(float t, float p, bool linear, const Range& g) {
        return linear ? t * kForwardSlope + g.vMin : (p * kGain - kOffset) * g.range + g.vMin;
    }
};

template <bool DoubleR, bool ScaleUpper>
struct Inverse {
    static constexpr float kExponent = kInverseExponent;
    static PowerStep prepare(float t, const Range& g) {
        if constexpr (DoubleR) {
            const double td = static_cast<double>(t);
            const double w = (td * g.rDouble + static_cast<double>(kOffset)) * static_cast<double>(kInverseGain);
            return PowerStep{static_cast<float>(w), g.rDouble * td < static_cast<double>(kInverseThreshold)};
        } else {
            const float w = (t * g.rFloat + kOffset) * kInverseGain;
            return PowerStep{w, g.rFloat * t < kInverseThreshold};
        }
    }
    static float finish(float t, float p, bool linear, const Range& g) {
        const float v = linear ? t * kInverseSlope : (ScaleUpper ? p * g.range : p);
        return v + g.vMin;
    }
};

constexpr int32_t kBlockSamples = 384;

// One row of `width` pixels. The vector routine raises every sample of a block (the
// linear branch then discards some); the scalar routine is called for the samples of
// the power branch only.
template <class Curve, bool VectorPower, class Layout>
void curveRow(const float* src, float* dst, int32_t width, const Range& g) {
    constexpr int32_t kBlockPixels = kBlockSamples / Layout::kChannels;
    float t[kBlockSamples], arg[kBlockSamples], p[kBlockSamples];
    bool linear[kBlockSamples];
    for (int32_t x0 = 0; x0 < width; x0 += kBlockPixels) {
        const int32_t pixels = width - x0 < kBlockPixels ? width - x0 : kBlockPixels;
        const float* s = src + static_cast<std::ptrdiff_t>(x0) * Layout::kStride;
        float* d = dst + static_cast<std::ptrdiff_t>(x0) * Layout::kStride;
        for (int32_t x = 0; x < pixels; ++x) {
            for (int c = 0; c < Layout::kChannels; ++c) {
                const int32_t j = x * Layout::kChannels + c;
                t[j] = loadSample(s + x * Layout::kStride + c) - g.vMin;
                const PowerStep step = Curve::prepare(t[j], g);
                arg[j] = step.argument;
                linear[j] = step.linear;
            }
        }
        const int32_t n = pixels * Layout::kChannels;
        if constexpr (VectorPower) {
            pxkVectorPow(arg, Curve::kExponent, p, n);
        } else {
            for (int32_t j = 0; j < n; ++j) p[j] = linear[j] ? 0.0f : pxkScalarPowf(arg[j], Curve::kExponent);
        }
        for (int32_t x = 0; x < pixels; ++x) {
            for (int c = 0; c < Layout::kChannels; ++c) {
                const int32_t j = x * Layout::kChannels + c;
                storeSample(d + x * Layout::kStride + c, Curve::finish(t[j], p[j], linear[j], g));
            }
        }
    }
}

// The range test comes first of all: a difference that is not above 0 is
// pxkErrRange, whatever the other arguments; a NaN difference passes.
PxkResult checkRange(float vMin, float vMax) { return vMax - vMin <= 0.0f ? pxkErrRange : pxkOk; }

template <class Curve, bool VectorPower, class Layout>
PxkResult curvePacked(const float* src, int32_t srcStep, float* dst, int32_t dstStep, PxkSize size, float vMin,
                      float vMax) {
    PXK_CHECK(checkRange(vMin, vMax));
    PXK_CHECK(checkPacked(src, srcStep, dst, dstStep, size));
    const Range g = rangeOf(vMin, vMax);
    walkPacked(src, srcStep, dst, dstStep, size,
               [&g](const float* s, float* d, int32_t width) { curveRow<Curve, VectorPower, Layout>(s, d, width, g); });
    return pxkOk;
}

template <class Curve, bool VectorPower>
PxkResult curvePlanar(const float* const* src, int32_t srcStep, float* const* dst, int32_t dstStep, PxkSize size,
                      float vMin, float vMax) {
    PXK_CHECK(checkRange(vMin, vMax));
    PXK_CHECK(checkPlanar(src, srcStep, dst, dstStep, size));
    const Range g = rangeOf(vMin, vMax);
    walkPlanes(src, srcStep, dst, dstStep, size,
               [&g](const float* s, float* d, int32_t width) { curveRow<Curve, VectorPower, Plane>(s, d, width, g); });
    return pxkOk;
}

constexpr bool kFloatR = false, kDoubleR = true;
constexpr bool kScalarPower = false, kVectorPower = true;
constexpr bool kUnscaledUpper = false, kScaledUpper = true;

}  // namespace

extern "C" {

// Forward C3: float r, scalar power.
PxkResult pxkiGammaFwd_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize,
                               float vMin, float vMax) {
    return curvePacked<Forward<kFloatR>, kScalarPower, C3>(pSrc, srcStep, pDst, dstStep, roiSize, vMin, vMax);
}
PxkResult pxkiGammaFwd_32f_C3IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize, float vMin, float vMax) {
    return curvePacked<Forward<kFloatR>, kScalarPower, C3>(pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, vMin,
                                                           vMax);
}
// Forward AC4: float r not in place, double r in place; vector power.
PxkResult pxkiGammaFwd_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize,
                                float vMin, float vMax) {
    return curvePacked<Forward<kFloatR>, kVectorPower, AC4>(pSrc, srcStep, pDst, dstStep, roiSize, vMin, vMax);
}
PxkResult pxkiGammaFwd_32f_AC4IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize, float vMin, float vMax) {
    return curvePacked<Forward<kDoubleR>, kVectorPower, AC4>(pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, vMin,
                                                             vMax);
}
// Forward planes: double r, scalar power.
PxkResult pxkiGammaFwd_32f_P3R(const float* const pSrc[3], int32_t srcStep, float* const pDst[3], int32_t dstStep,
                               PxkSize roiSize, float vMin, float vMax) {
    return curvePlanar<Forward<kDoubleR>, kScalarPower>(pSrc, srcStep, pDst, dstStep, roiSize, vMin, vMax);
}
PxkResult pxkiGammaFwd_32f_IP3R(float* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize, float vMin,
                                float vMax) {
    return curvePlanar<Forward<kDoubleR>, kScalarPower>(pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, vMin,
                                                        vMax);
}

// Inverse C3: float r, vector power, upper branch not scaled by the range.
PxkResult pxkiGammaInv_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize,
                               float vMin, float vMax) {
    return curvePacked<Inverse<kFloatR, kUnscaledUpper>, kVectorPower, C3>(pSrc, srcStep, pDst, dstStep, roiSize,
                                                                           vMin, vMax);
}
PxkResult pxkiGammaInv_32f_C3IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize, float vMin, float vMax) {
    return curvePacked<Inverse<kFloatR, kUnscaledUpper>, kVectorPower, C3>(pSrcDst, srcDstStep, pSrcDst, srcDstStep,
                                                                           roiSize, vMin, vMax);
}
// Inverse AC4: double r, vector power, upper branch scaled by the range.
PxkResult pxkiGammaInv_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, PxkSize roiSize,
                                float vMin, float vMax) {
    return curvePacked<Inverse<kDoubleR, kScaledUpper>, kVectorPower, AC4>(pSrc, srcStep, pDst, dstStep, roiSize,
                                                                           vMin, vMax);
}
PxkResult pxkiGammaInv_32f_AC4IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize, float vMin, float vMax) {
    return curvePacked<Inverse<kDoubleR, kScaledUpper>, kVectorPower, AC4>(pSrcDst, srcDstStep, pSrcDst, srcDstStep,
                                                                           roiSize, vMin, vMax);
}
// Inverse planes: double r, vector power, upper branch not scaled by the range.
PxkResult pxkiGammaInv_32f_P3R(const float* const pSrc[3], int32_t srcStep, float* const pDst[3], int32_t dstStep,
                               PxkSize roiSize, float vMin, float vMax) {
    return curvePlanar<Inverse<kDoubleR, kUnscaledUpper>, kVectorPower>(pSrc, srcStep, pDst, dstStep, roiSize, vMin,
                                                                         vMax);
}
PxkResult pxkiGammaInv_32f_IP3R(float* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize, float vMin,
                                float vMax) {
    return curvePlanar<Inverse<kDoubleR, kUnscaledUpper>, kVectorPower>(pSrcDst, srcDstStep, pSrcDst, srcDstStep,
                                                                         roiSize, vMin, vMax);
}

}  // extern "C"
