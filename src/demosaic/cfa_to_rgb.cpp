// Bayer mosaic -> interleaved RGB by the basic demosaic: the frame rules along the
// image's edges (cfa_frame.h), then the edge-directed interior (cfa_interior.h).
#include "pxkcc.h"

#include <algorithm>

#include "demosaic/bayer.h"
#include "demosaic/cfa_frame.h"
#include "demosaic/cfa_interior.h"
#include "frame/checks.h"

using namespace pxk;
using namespace pxk::demosaic;

namespace {

// Pixels x0 to x1 of image row y through the frame rules.
template <class T>
void frameSpan(const SourceImage<T>& img, int32_t grid, const DestinationRegion<T, 3>& dst, int32_t y, int32_t x0,
               int32_t x1) {
    for (int32_t x = x0; x <= x1; ++x) {
        int32_t rgb[3];
        framePixel(img, grid, x, y, rgb);
        T* out = dst.pixel(x, y);
        for (int k = 0; k < 3; ++k) storeSample(out, k, rgb[k]);
    }
}

template <class T>
PxkResult cfaToRgb(const T* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep, T* pDst, int32_t dstStep,
                   PxkBayerGrid grid) {
    PXK_CHECK(checkMosaicCall(pSrc, pDst, srcSize, 2, grid));
    const Region r = clipRegion(srcRoi, srcSize);
    if (r.empty()) return pxkOk;
    const SourceImage<T> img{pSrc, srcStep, srcSize.width, srcSize.height};
    const DestinationRegion<T, 3> dst{pDst, dstStep, r.x, r.y};

    // The frame: whole rows above and below the interior's rows, the two columns at
    // each side elsewhere.
    const int32_t leftEnd = std::min(r.lastX(), 1);
    const int32_t rightStart = std::max(r.x, std::max(2, srcSize.width - 2));
    for (int32_t y = r.y; y <= r.lastY(); ++y) {
        if (y < 2 || y > srcSize.height - 3) {
            frameSpan(img, grid, dst, y, r.x, r.lastX());
        } else {
            frameSpan(img, grid, dst, y, r.x, leftEnd);
            frameSpan(img, grid, dst, y, rightStart, r.lastX());
        }
    }

    const int32_t ix = std::max(r.x, 2), iy = std::max(r.y, 2);
    const Region in{ix, iy, std::min(r.lastX(), srcSize.width - 3) - ix + 1,
                    std::min(r.lastY(), srcSize.height - 3) - iy + 1};
    if (!in.empty()) interior(img, grid, dst, in);
    return pxkOk;
}

}  // namespace

extern "C" {

// `spare` is never read.
PxkResult pxkiCFAToRGB_8u_C1C3R(const uint8_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                uint8_t* pDst, int32_t dstStep, PxkBayerGrid grid, int32_t spare) {
    (void)spare;
    return cfaToRgb(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid);
}

PxkResult pxkiCFAToRGB_16u_C1C3R(const uint16_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                 uint16_t* pDst, int32_t dstStep, PxkBayerGrid grid, int32_t spare) {
    (void)spare;
    return cfaToRgb(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid);
}

}  // extern "C"
