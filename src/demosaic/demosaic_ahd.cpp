// Bayer mosaic -> interleaved RGB by the homogeneity-directed demosaic: the region is
// split into a main area, five samples from every edge of the image and starting on a
// red site, and the strips around it; both go through the stages of ahd_engine.h,
// the strips with the image mirrored at its edges.
#include "pxkcc.h"

#include <algorithm>

#include "demosaic/ahd_engine.h"
#include "demosaic/bayer.h"
#include "frame/checks.h"

using namespace pxk;
using namespace pxk::demosaic;

namespace {

// The phase of the site at (x, y): 0 red, 1 green in a blue row, 2 blue, 3 green in a
// red row. By the grid's first site; an odd column inverts both low bits, an odd row
// then steps an even phase up and an odd one down.
int32_t phaseAt(int32_t grid, int32_t x, int32_t y) {
    static constexpr int32_t kGridPhase[4] = {2, 0, 1, 3};
    int32_t p = kGridPhase[grid];
    if (x & 1) p ^= 3;
    if (y & 1) p = (p % 2 == 0) ? p + 1 : p - 1;
    return p;
}

template <class T>
PxkResult demosaicAhd(const T* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep, T* pDst, int32_t dstStep,
                      PxkBayerGrid grid, uint8_t* pBuffer, int32_t bufferStep) {
    PXK_CHECK(checkMosaicCall(pSrc, pDst, srcSize, 5, grid));
    const Region r = clipRegion(srcRoi, srcSize);
    if (r.empty()) return pxkOk;
    const SourceImage<T> img{pSrc, srcStep, srcSize.width, srcSize.height};
    const DestinationRegion<T, 3> dst{pDst, dstStep, r.x, r.y};
    AhdEngine<T, MirroredRows<T>> border(MirroredRows<T>{img}, grid, pBuffer, bufferStep, dst);
    auto borderStrip = [&](int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
        if (x1 >= x0 && y1 >= y0) border.run(x0, y0, x1 - x0 + 1, y1 - y0 + 1);
    };

    // The main area: columns and rows 5 to size - 6 of the region, moved to start on a
    // phase-0 site, then cut to even width and height.
    int32_t mx = std::max(r.x, 5), my = std::max(r.y, 5);
    int32_t mw = std::min(r.lastX(), srcSize.width - 6) - mx + 1;
    int32_t mh = std::min(r.lastY(), srcSize.height - 6) - my + 1;
    if (phaseAt(grid, mx, my) > 1) {
        ++mx;
        --mw;
    }
    if (phaseAt(grid, mx, my) != 0) {
        ++my;
        --mh;
    }
    mw = mw > 0 ? mw - mw % 2 : 0;
    mh = mh > 0 ? mh - mh % 2 : 0;
    if (mw < 1 || mh < 1) {
        borderStrip(r.x, r.y, r.lastX(), r.lastY());
        return pxkOk;
    }
    AhdEngine<T, DirectRows<T>>(DirectRows<T>{img}, grid, pBuffer, bufferStep, dst).run(mx, my, mw, mh);
    borderStrip(r.x, r.y, r.lastX(), my - 1);                  // above
    borderStrip(r.x, my + mh, r.lastX(), r.lastY());           // below
    borderStrip(r.x, my, mx - 1, my + mh - 1);                 // left
    borderStrip(mx + mw, my, r.lastX(), my + mh - 1);          // right
    return pxkOk;
}

}  // namespace

extern "C" {

PxkResult pxkiDemosaicAHD_8u_C1C3R(const uint8_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                   uint8_t* pDst, int32_t dstStep, PxkBayerGrid grid, uint8_t* pBuffer,
                                   int32_t bufferStep) {
    return demosaicAhd(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid, pBuffer, bufferStep);
}

PxkResult pxkiDemosaicAHD_16u_C1C3R(const uint16_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                    uint16_t* pDst, int32_t dstStep, PxkBayerGrid grid, uint8_t* pBuffer,
                                    int32_t bufferStep) {
    return demosaicAhd(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid, pBuffer, bufferStep);
}

}  // extern "C"
