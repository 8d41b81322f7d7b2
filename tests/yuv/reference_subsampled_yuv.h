// Scalar reference model of RGB -> full-range YUV with subsampled chroma (4:2:0 and
// 4:2:2).
//
// Written out literally, one pixel or one chroma group at a time, in 64-bit integers
// with an explicit floor shift; nothing is shared with the library. Which luma form a
// pixel gets is decided by its column (or, in the 4:2:2 forms without steps that
// convert a whole image as one long row, by its place in the image); chroma is the
// scalar form in every column. The conversions walk rows (or row pairs) from the top
// by their steps, so a step of 0 rewrites one row and the last row written wins.
#ifndef PXKCC_TESTS_YUV_REFERENCE_SUBSAMPLED_YUV_H
#define PXKCC_TESTS_YUV_REFERENCE_SUBSAMPLED_YUV_H

#include <cstddef>
#include <cstdint>

#include "reference_subsampled.h"

namespace subyuv {

using subref::clamp8;
using subref::floorShift;
using subref::low8;
using subref::PlanarDest;
using subref::RgbSource;

// ---------------------------------------------------------------------------------
// One pixel, one group
// ---------------------------------------------------------------------------------

// Luma at a scale of 2^16. G weighs 38470 here.
inline int64_t lumaL(int R, int G, int B) { return 19595LL * R + 38470LL * G + 7471LL * B; }

// The tail luma: L >> 16.
inline uint8_t tailLuma(int R, int G, int B) { return static_cast<uint8_t>(floorShift(lumaL(R, G, B), 16)); }

// The vector luma, at a scale of 2^15: R and G summed and shifted by 14, B shifted by
// 14 alone, the two added and halved. White gives 254 here, 255 in the tail.
inline uint8_t vectorLuma(int R, int G, int B) {
    const int64_t rg = floorShift(9798LL * R + 19235LL * G, 14);
    const int64_t b = floorShift(3736LL * B, 14);
    return static_cast<uint8_t>(floorShift(rg + b, 1));
}

struct Uv {
    uint8_t u, v;
};

// 4:2:0 chroma from the sums of a 2 x 2 block: sB, sR and the sum of the four L.
inline Uv chroma420(int64_t sR, int64_t sB, int64_t sL) {
    const int64_t D = floorShift(sB * 65536 - sL + 131071, 16);
    const int64_t E = floorShift(sR * 65536 - sL + 131071, 16);
    return {low8(floorShift(D * 32244, 18) + 128), clamp8(floorShift(E * 57475, 18) + 128)};
}

// 4:2:2 chroma from the sums of a horizontal pair.
inline Uv chroma422(int64_t sR, int64_t sB, int64_t sL) {
    const int64_t D = floorShift(sB * 65536 - sL + 65535, 16);
    const int64_t E = floorShift(sR * 65536 - sL + 65535, 16);
    return {low8(floorShift(D * 32244, 17) + 128), clamp8(floorShift(E * 57475, 17) + 128)};
}

// The chroma of an odd last pixel of a 4:2:2 row, alone, at a scale of 2^15:
// L2 = 9798 R + 19235 G + 3736 B.
inline Uv chromaOddPixel422(int R, int G, int B) {
    const int64_t L2 = 9798LL * R + 19235LL * G + 3736LL * B;
    const int64_t d = floorShift(B * 32768LL - L2 + 16383, 15);
    const int64_t e = floorShift(R * 32768LL - L2 + 16383, 15);
    return {low8(floorShift(d * 16121, 15) + 128), clamp8(floorShift(e * 28737, 15) + 128)};
}

// ---------------------------------------------------------------------------------
// Images
// ---------------------------------------------------------------------------------

// 4:2:0 into planes Y, U, V. Chroma column c of row pair r from pixels 2c, 2c + 1 of
// rows 2r, 2r + 1; height / 2 pairs and width / 2 columns, so an odd last row or
// column is neither read nor written (nor is anything, for a width or height of 1).
// Columns below `vectorColumns` take the vector luma, the rest the tail luma.
inline void rgbToYuv420(const RgbSource& src, const PlanarDest& dst, int width, int height, int vectorColumns) {
    for (int r = 0; r < height / 2; ++r) {
        for (int c = 0; c < width / 2; ++c) {
            int64_t sR = 0, sB = 0, sL = 0;
            for (int dy = 0; dy < 2; ++dy) {
                for (int dx = 0; dx < 2; ++dx) {
                    const int x = 2 * c + dx, y = 2 * r + dy;
                    const RgbSource::Rgb p = src.at(x, y);
                    dst.at(0, x, y) = x < vectorColumns ? vectorLuma(p.r, p.g, p.b) : tailLuma(p.r, p.g, p.b);
                    sR += p.r;
                    sB += p.b;
                    sL += lumaL(p.r, p.g, p.b);
                }
            }
            const Uv uv = chroma420(sR, sB, sL);
            dst.at(1, c, r) = uv.u;
            dst.at(2, c, r) = uv.v;
        }
    }
}

// Where the 4:2:2 samples go: planes Y, U, V (chroma planes (width + 1) / 2 wide), or
// one packed plane of Y0 U Y1 V.
enum class Layout422 { Planes, Packed };

inline void storeY422(const PlanarDest& d, Layout422 layout, int x, int y, uint8_t v) {
    if (layout == Layout422::Planes) {
        d.at(0, x, y) = v;
    } else {
        d.at(0, 2 * x, y) = v;
    }
}

// The chroma of the pair or odd pixel that starts at column x: planes at chroma
// column x / 2; packed U in byte 2x + 1 and V in byte 2x + 3.
inline void storeUv422(const PlanarDest& d, Layout422 layout, int x, int y, Uv uv, bool withV) {
    if (layout == Layout422::Planes) {
        d.at(1, x / 2, y) = uv.u;
        d.at(2, x / 2, y) = uv.v;
    } else {
        d.at(0, 2 * x + 1, y) = uv.u;
        if (withV) d.at(0, 2 * x + 3, y) = uv.v;
    }
}

// One horizontal pair at (x, y) and (x + 1, y), `vector` deciding each pixel's luma.
template <typename IsVector>
inline void pair422(const RgbSource& src, const PlanarDest& dst, Layout422 layout, int x, int y, IsVector&& vector) {
    const RgbSource::Rgb a = src.at(x, y);
    const RgbSource::Rgb b = src.at(x + 1, y);
    storeY422(dst, layout, x, y, vector(x) ? vectorLuma(a.r, a.g, a.b) : tailLuma(a.r, a.g, a.b));
    storeY422(dst, layout, x + 1, y, vector(x + 1) ? vectorLuma(b.r, b.g, b.b) : tailLuma(b.r, b.g, b.b));
    storeUv422(dst, layout, x, y, chroma422(a.r + b.r, a.b + b.b, lumaL(a.r, a.g, a.b) + lumaL(b.r, b.g, b.b)), true);
}

// 4:2:2 row by row: columns below width - width % 16 take the vector luma. The last
// pixel of an odd width takes the tail luma and its own chroma at scale 15: planes
// get Y, U and V, the packed layout its Y and U only.
inline void rgbToYuv422(const RgbSource& src, const PlanarDest& dst, int width, int height, Layout422 layout) {
    const int vectorColumns = width - width % 16;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x + 1 < width; x += 2) {
            pair422(src, dst, layout, x, y, [&](int col) { return col < vectorColumns; });
        }
        if (width % 2 == 1) {
            const int x = width - 1;
            const RgbSource::Rgb p = src.at(x, y);
            storeY422(dst, layout, x, y, tailLuma(p.r, p.g, p.b));
            storeUv422(dst, layout, x, y, chromaOddPixel422(p.r, p.g, p.b), false);
        }
    }
}

// The 4:2:2 forms without steps. An image of at least 256 pixels and an even width is
// one long row of N = width * height pixels: its first n = N - N % 8 pixels are a run
// whose vector part is the first n - n % 16, the remaining N % 8 a run of tail pixels,
// so the vector luma reaches across row ends. Pairs never straddle a row end (the
// width is even) and chroma is the same either way. Otherwise the rows are walked.
inline void rgbToYuv422WithoutSteps(const RgbSource& src, const PlanarDest& dst, int width, int height,
                                    Layout422 layout) {
    const int64_t N = int64_t(width) * height;
    if (N < 256 || width % 2 != 0) {
        rgbToYuv422(src, dst, width, height, layout);
        return;
    }
    const int64_t n = N - N % 8;
    const int64_t vectorPixels = n - n % 16;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; x += 2) {
            pair422(src, dst, layout, x, y, [&](int col) { return int64_t(y) * width + col < vectorPixels; });
        }
    }
}

}  // namespace subyuv

#endif
