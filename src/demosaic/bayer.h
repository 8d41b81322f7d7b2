// What the demosaicing families share: the colour of a site by grid code and
// position, the clipping of the caller's rectangle to the image, and row access into
// a source image and a destination region by signed byte steps.
#pragma once

#include <cstdint>
#include <cstring>

#include "frame/checks.h"
#include "frame/drivers.h"
#include "pxkcc.h"

namespace pxk {
namespace demosaic {

// Destination channels: red 0, green 1, blue 2.
constexpr int kRed = 0;
constexpr int kGreen = 1;
constexpr int kBlue = 2;

// The channel a grid code's site holds at image position (x, y), by the parities of x
// and y: kSites[grid][y & 1][x & 1].
constexpr int kSites[4][2][2] = {
    {{kBlue, kGreen}, {kGreen, kRed}},  // B G / G R
    {{kRed, kGreen}, {kGreen, kBlue}},  // R G / G B
    {{kGreen, kBlue}, {kRed, kGreen}},  // G B / R G
    {{kGreen, kRed}, {kBlue, kGreen}},  // G R / B G
};

constexpr int siteAt(int32_t grid, int32_t x, int32_t y) { return kSites[grid][y & 1][x & 1]; }

// The checks of every demosaicing member, in their order: the pointers, the image's
// size against its least width and height, then the grid code.
template <class T>
PxkResult checkMosaicCall(const T* src, const T* dst, PxkSize size, int32_t least, int32_t grid) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, least, least));
    return (grid >= 0 && grid <= 3) ? pxkOk : pxkErrBadArg;
}

// A region of the image, in image coordinates; empty when width or height is below 1.
struct Region {
    int32_t x, y, width, height;
    bool empty() const { return width < 1 || height < 1; }
    int32_t lastX() const { return x + width - 1; }
    int32_t lastY() const { return y + height - 1; }
};

// The caller's rectangle inside an image of `size`: a negative x or y is set to 0
// with the width or height kept, and what runs past the right or bottom edge is cut
// back to it (in 64 bits, so that no sum overflows).
inline Region clipRegion(PxkRect roi, PxkSize size) {
    Region r{roi.x < 0 ? 0 : roi.x, roi.y < 0 ? 0 : roi.y, roi.width, roi.height};
    if (int64_t{r.x} + r.width > size.width) r.width = static_cast<int32_t>(int64_t{size.width} - r.x);
    if (int64_t{r.y} + r.height > size.height) r.height = static_cast<int32_t>(int64_t{size.height} - r.y);
    return r;
}

// Samples at any byte address (steps and pointers need no alignment).
template <class T>
PXK_INLINE int32_t loadSample(const T* p, std::intptr_t i) {
    T v;
    std::memcpy(&v, p + i, sizeof v);
    return v;
}
template <class T>
PXK_INLINE void storeSample(T* p, std::intptr_t i, int32_t v) {
    const T t = static_cast<T>(v);
    std::memcpy(p + i, &t, sizeof t);
}

// A source image: row y starts y * step bytes after the first sample.
template <class T>
struct SourceImage {
    const T* base;
    int32_t step;
    int32_t width, height;

    PXK_INLINE const T* row(int32_t y) const { return byteOffset(base, static_cast<std::intptr_t>(y) * step); }
    PXK_INLINE int32_t at(int32_t x, int32_t y) const { return loadSample(row(y), x); }
};

// A destination region of `Channels` samples a pixel whose first pixel is the
// region's pixel (x0, y0) of the image.
template <class T, int Channels>
struct DestinationRegion {
    T* base;
    int32_t step;
    int32_t x0, y0;

    // Column 0 of the region in the row that holds image row y.
    PXK_INLINE T* row(int32_t y) const { return byteOffset(base, static_cast<std::intptr_t>(y - y0) * step); }
    // The pixel that holds image pixel (x, y).
    PXK_INLINE T* pixel(int32_t x, int32_t y) const {
        return row(y) + static_cast<std::intptr_t>(x - x0) * Channels;
    }
};

}  // namespace demosaic
}  // namespace pxk
