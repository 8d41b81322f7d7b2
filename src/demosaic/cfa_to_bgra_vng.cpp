// Bayer mosaic -> four-sample B, G, R pixels by variable number of gradients: eight
// gradients a pixel (vng_directions.h), the calm directions kept by a threshold, the
// colour differences of those directions averaged, a float scale a channel. The
// fourth sample of each pixel is never computed; the frame is copied from the
// interior afterwards.
#include "pxkcc.h"

#include <algorithm>
#include <cstring>

#include "demosaic/bayer.h"
#include "demosaic/vng_directions.h"
#include "frame/checks.h"
#include "frame/vec_float.h"

using namespace pxk;
using namespace pxk::demosaic;

namespace {

// Destination samples: blue 0, green 1, red 2.
constexpr int kOutBlue = 0, kOutGreen = 1, kOutRed = 2;

// The kind of site by grid and the parities of x and y ([grid][x odd + 2 * y odd]):
// 0 a blue site, 1 a red site, 2 green in a row with blue, 3 green in a row with red.
constexpr int kVngPhase[4][4] = {{0, 2, 3, 1}, {1, 3, 2, 0}, {2, 0, 1, 3}, {3, 1, 0, 2}};

// The destination sample of the colour at offset (dx, dy) from a site of `kind`.
constexpr int colourAround(int kind, int dx, int dy) {
    const bool oddX = (dx & 1) != 0, oddY = (dy & 1) != 0;
    if (kind <= 1) {
        const int own = kind == 0 ? kOutBlue : kOutRed;
        if (oddX == oddY) return oddX ? kOutBlue + kOutRed - own : own;
        return kOutGreen;
    }
    if (oddX == oddY) return kOutGreen;
    const int rowColour = kind == 2 ? kOutBlue : kOutRed;
    return oddX ? rowColour : kOutBlue + kOutRed - rowColour;
}

// The scale of the channels, clamping and rounding of one value.
template <class T>
PXK_INLINE void storeScaled(T* out, int k, int32_t value, float scale) {
    constexpr float kTop = sizeof(T) == 1 ? 255.0f : 65535.0f;
    float p = static_cast<float>(value) * scale;
    p = p < 0.0f ? 0.0f : (p > kTop ? kTop : p);
    storeSample(out, k, pxkRoundHalfEven(p));
}

// One interior pixel at (x, y), into samples 0 to 2 of `out`.
template <class T>
PXK_INLINE void vngPixel(const SourceImage<T>& img, int32_t grid, int32_t x, int32_t y, const float scale[3], T* out) {
    const T* rows[5];
    for (int i = 0; i < 5; ++i) rows[i] = img.row(y - 2 + i);
    auto c = [&](int dx, int dy) { return loadSample(rows[dy + 2], x + dx); };
    const int kind = kVngPhase[grid][(x & 1) + 2 * (y & 1)];
    const VngDirections& dirs = kVngDirections[kind <= 1 ? 0 : 1];

    int32_t gradient[8];
    int32_t lo = INT32_MAX, hi = 0;
    for (int d = 0; d < 8; ++d) {
        int32_t g = 0;
        for (const VngTerm& t : dirs.d[d].terms) {
            const int32_t diff = c(t.dx1, t.dy1) - c(t.dx2, t.dy2);
            g += t.weight * (diff < 0 ? -diff : diff);
        }
        gradient[d] = g;
        lo = std::min(lo, g);
        hi = std::max(hi, g);
    }
    const int32_t threshold = pxkRoundHalfEven(static_cast<double>(lo) + std::max(0.5 * hi, 1.0));

    int32_t sum[3] = {0, 0, 0};
    int32_t count = 0;
    for (int d = 0; d < 8; ++d) {
        if (threshold <= gradient[d]) continue;
        ++count;
        for (const VngShare& s : dirs.d[d].shares) sum[colourAround(kind, s.dx, s.dy)] += s.weight * c(s.dx, s.dy);
    }
    const int own = colourAround(kind, 0, 0);
    const int32_t centre = c(0, 0);
    for (int k = 0; k < 3; ++k) {
        const int32_t value = k == own ? centre : centre + (sum[k] - sum[own]) / (2 * count);
        storeScaled(out, k, value, scale[k]);
    }
}

// Copies whole four-sample pixels (column copies) or whole region rows.
template <class T>
void copyPixel(const DestinationRegion<T, 4>& dst, int32_t fromX, int32_t toX, int32_t y) {
    std::memmove(dst.pixel(toX, y), dst.pixel(fromX, y), 4 * sizeof(T));
}
template <class T>
void copyRow(const DestinationRegion<T, 4>& dst, const Region& r, int32_t fromY, int32_t toY) {
    std::memmove(dst.row(toY), dst.row(fromY), static_cast<std::size_t>(r.width) * 4 * sizeof(T));
}

template <class T>
PxkResult cfaToBgraVng(const T* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep, const float* pScale, T* pDst,
                       int32_t dstStep, PxkBayerGrid grid) {
    PXK_CHECK(checkMosaicCall(pSrc, pDst, srcSize, 5, grid));
    if (srcRoi.width < 1 || srcRoi.height < 1) return pxkOk;
    const Region r = clipRegion(srcRoi, srcSize);
    const int32_t ix0 = std::max(r.x, 2), iy0 = std::max(r.y, 2);
    const int32_t ix1 = std::min(r.lastX(), srcSize.width - 3), iy1 = std::min(r.lastY(), srcSize.height - 3);
    // Nothing to copy from without an interior.
    if (r.empty() || ix1 < ix0 || iy1 < iy0) return pxkOk;
    const float ones[3] = {1.0f, 1.0f, 1.0f};
    const float* scale = pScale != nullptr ? pScale : ones;
    const SourceImage<T> img{pSrc, srcStep, srcSize.width, srcSize.height};
    const DestinationRegion<T, 4> dst{pDst, dstStep, r.x, r.y};

    for (int32_t y = iy0; y <= iy1; ++y) {
        T* out = dst.pixel(ix0, y);
        for (int32_t x = ix0; x <= ix1; ++x, out += 4) vngPixel(img, grid, x, y, scale, out);
    }

    // The frame, after the interior: columns of the interior rows, then whole rows.
    for (int32_t y = iy0; y <= iy1; ++y) {
        if (r.x <= 1) {
            if (r.x == 0) copyPixel(dst, ix0, 0, y);
            copyPixel(dst, ix0, 1, y);
        }
        if (r.lastX() >= srcSize.width - 2) {
            copyPixel(dst, ix1, ix1 + 1, y);
            if (r.lastX() >= srcSize.width - 1) copyPixel(dst, ix1, ix1 + 2, y);
        }
    }
    if (r.y <= 1) {
        if (r.y == 0) copyRow(dst, r, iy0, 0);
        copyRow(dst, r, iy0, 1);
    }
    if (r.lastY() >= srcSize.height - 2) {
        copyRow(dst, r, iy1, iy1 + 1);
        if (r.lastY() >= srcSize.height - 1) copyRow(dst, r, iy1, iy1 + 2);
    }
    return pxkOk;
}

}  // namespace

extern "C" {

PxkResult pxkiCFAToBGRA_VNG_8u_C1C4R_L(const uint8_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                       const float* pScale, uint8_t* pDst, int32_t dstStep, PxkBayerGrid grid) {
    return cfaToBgraVng(pSrc, srcRoi, srcSize, srcStep, pScale, pDst, dstStep, grid);
}

PxkResult pxkiCFAToBGRA_VNG_16u_C1C4R_L(const uint16_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                        const float* pScale, uint16_t* pDst, int32_t dstStep, PxkBayerGrid grid) {
    return cfaToBgraVng(pSrc, srcRoi, srcSize, srcStep, pScale, pDst, dstStep, grid);
}

// The plain members hand their arguments on unchanged.
PxkResult pxkiCFAToBGRA_VNG_8u_C1C4R(const uint8_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                     const float* pScale, uint8_t* pDst, int32_t dstStep, PxkBayerGrid grid) {
    return pxkiCFAToBGRA_VNG_8u_C1C4R_L(pSrc, srcRoi, srcSize, srcStep, pScale, pDst, dstStep, grid);
}

PxkResult pxkiCFAToBGRA_VNG_16u_C1C4R(const uint16_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                      const float* pScale, uint16_t* pDst, int32_t dstStep, PxkBayerGrid grid) {
    return pxkiCFAToBGRA_VNG_16u_C1C4R_L(pSrc, srcRoi, srcSize, srcStep, pScale, pDst, dstStep, grid);
}

}  // extern "C"
