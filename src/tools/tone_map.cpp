// Tone maps from float images to bytes, each by one scale factor measured from the
// image: Linear from its largest sample, Mean from twice its mean. An image without
// positive light takes the byte fill of 0.
#include "pxkcc.h"

#include <cfloat>

#include "frame/checks.h"
#include "frame/drivers.h"
#include "tools/fill_bytes.h"
#include "tools/samples.h"
#include "tools/tone_map_row.h"

using namespace pxk;
using namespace pxk::tonemap;

namespace {

// The largest sample, from the most negative finite float up. NaN samples are passed
// over (the vector maximum keeps its second operand, the scalar compare is false).
// Running maxima over 32 samples a round (eight 128-bit ones, or four 256-bit ones),
// so that the loads need not wait for a chain of compares; a maximum does not depend
// on the order it is taken in (zeros of either sign lead to the same fill below).
float imageMax(const float* src, int32_t srcStep, int32_t width, int32_t height) {
    using F = vec::FloatOf<vec::Widest>;
    constexpr int32_t kPer = static_cast<int32_t>(sizeof(F) / sizeof(float));
    constexpr int32_t kRunning = 32 / kPer;
    F wide[kRunning];
    for (F& w : wide) w = vec::splatF<F>(-FLT_MAX);
    float m = -FLT_MAX;
    driveRows(
        width, height,
        [&](int32_t w, const float* row) {
            int32_t x = 0;
            for (; w - x >= kRunning * kPer; x += kRunning * kPer) {
                PXK_UNROLL
                for (int i = 0; i < kRunning; ++i) wide[i] = vec::maxF(vec::loadF<F>(row + x + i * kPer), wide[i]);
            }
            for (; w - x >= kPer; x += kPer) wide[0] = vec::maxF(vec::loadF<F>(row + x), wide[0]);
            for (; x < w; ++x) {
                const float v = loadSample<float>(row + x);
                m = v > m ? v : m;
            }
        },
        rows(src, srcStep));
    for (int i = 1; i < kRunning; ++i) wide[0] = vec::maxF(wide[i], wide[0]);
    float lanes[kPer];
    vec::storeF(lanes, wide[0]);
    for (float v : lanes) m = v > m ? v : m;
    return m;
}

// The sum in double as four partial sums, one for each column modulo 4 over all rows,
// joined as (s0 + s1) + (s2 + s3).
double imageSum(const float* src, int32_t srcStep, int32_t width, int32_t height) {
    double s[4] = {0.0, 0.0, 0.0, 0.0};
    driveRows(
        width, height,
        [&](int32_t w, const float* row) {
            int32_t x = 0;
            for (; w - x >= 4; x += 4) {
                PXK_UNROLL
                for (int i = 0; i < 4; ++i) s[i] += loadSample<float>(row + x + i);
            }
            for (; x < w; ++x) s[x & 3] += loadSample<float>(row + x);
        },
        rows(src, srcStep));
    return (s[0] + s[1]) + (s[2] + s[3]);
}

template <class Map>
void mapImage(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t width, int32_t height,
              float scale) {
    driveRows(
        width, height, [scale](int32_t w, const float* s, uint8_t* d) { mapRow<Map>(w, s, d, scale); },
        rows(src, srcStep), rows(dst, dstStep));
}

}  // namespace

extern "C" {

PxkResult pxkiToneMapLinear_32f8u_C1R(const float* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                      int32_t width, int32_t height) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(PxkSize{width, height}, 1, 1));
    const float m = imageMax(pSrc, srcStep, width, height);
    if (m < 0.0f) return pxkWarnNegativeImage;
    if (m <= 1.1754944e-38f) return pxkFillBytes(0, pDst, dstStep, width, height);
    mapImage<LinearMap>(pSrc, srcStep, pDst, dstStep, width, height, 255.0f / m);
    return pxkOk;
}

PxkResult pxkiToneMapMean_32f8u_C1R(const float* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                    int32_t width, int32_t height) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(PxkSize{width, height}, 1, 1));
    const double mean = imageSum(pSrc, srcStep, width, height) / (static_cast<double>(width) * height);
    const double d = 2.0 * mean;
    if (d < 0.0) return pxkWarnNegativeImage;
    if (d <= 1.1754943508222875e-38) {
        pxkFillBytes(0, pDst, dstStep, width, height);
        return pxkOk;
    }
    mapImage<MeanMap>(pSrc, srcStep, pDst, dstStep, width, height, static_cast<float>(255.0 / d));
    return pxkOk;
}

}  // extern "C"
