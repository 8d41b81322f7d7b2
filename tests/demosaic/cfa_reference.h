// Reference model of the basic demosaic, written from its rules pixel by pixel, with
// no vectors and nothing shared with the library.
//
// Where the image is too small for every band of the frame, the library's documented
// precedence holds: a pixel on the edge line belongs to the edge (not to the second
// line of the other side), and a pixel on the second line of both sides (column 1 of
// a 3-wide image) belongs to the left or top side.
#ifndef PXKCC_TESTS_DEMOSAIC_CFA_REFERENCE_H
#define PXKCC_TESTS_DEMOSAIC_CFA_REFERENCE_H

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

#include "mosaic_image.h"

namespace demosaictest {

using Rgb = std::array<int, 3>;

// Where a coordinate lies along an axis of `size` samples.
struct Place {
    int kind;   // 0 on the edge line, 1 on the second line, 2 farther in
    int edge;   // the edge line of its side
    int step;   // +1 from a low edge inward, -1 from a high edge
};

inline Place placeOf(int v, int size) {
    if (v == 0) return {0, 0, +1};
    if (v == size - 1) return {0, size - 1, -1};
    if (v == 1) return {1, 0, +1};
    if (v == size - 2) return {1, size - 1, -1};
    return {2, 0, 0};
}

inline Rgb referenceCfaPixel(const Mosaic& m, int grid, int x, int y) {
    Rgb out{-1, -1, -1};
    const int W = m.width, H = m.height;
    const Place px = placeOf(x, W), py = placeOf(y, H);
    const int site = colourAt(grid, x, y);
    const bool cornerBlock = (px.kind == 0 && py.kind <= 1) || (py.kind == 0 && px.kind <= 1);
    if (cornerBlock) {
        // The corner sample, its neighbour in the corner's row, its neighbour in the
        // corner's column, and the block's diagonal.
        const int cx = px.edge, cy = py.edge;
        const int nx = cx + px.step, ny = cy + py.step;
        const int corner = colourAt(grid, cx, cy);
        if (corner == G) {
            out[G] = (m(cx, cy) + m(nx, ny) + 1) >> 1;
            out[colourAt(grid, nx, cy)] = m(nx, cy);
            out[colourAt(grid, cx, ny)] = m(cx, ny);
        } else {
            out[corner] = m(cx, cy);
            out[G] = m(cx, ny);
            out[corner == R ? B : R] = m(nx, ny);
        }
        return out;
    }
    if (px.kind == 0) {
        // Left or right edge column, rows 2 to H - 3; i is the column one inward.
        const int i = x + px.step;
        if (site == G) {
            out[colourAt(grid, i, y)] = m(i, y);
            out[G] = (m(i, y - 1) + 2 * m(x, y) + m(i, y + 1) + 2) >> 2;
            out[colourAt(grid, x, y + 1)] = (m(x, y - 1) + m(x, y + 1) + 1) >> 1;
        } else {
            out[site] = m(x, y);
            out[G] = m(i, y);
            out[site == R ? B : R] = (m(i, y - 1) + m(i, y + 1) + 1) >> 1;
        }
        return out;
    }
    if (py.kind == 0) {
        // Top or bottom edge row, columns 2 to W - 3; j is the row one inward.
        const int j = y + py.step;
        if (site == G) {
            out[colourAt(grid, x, j)] = m(x, j);
            out[G] = (m(x - 1, j) + 2 * m(x, y) + m(x + 1, j) + 2) >> 2;
            out[colourAt(grid, x + 1, y)] = (m(x - 1, y) + m(x + 1, y) + 1) >> 1;
        } else {
            out[site] = m(x, y);
            out[G] = m(x, j);
            out[site == R ? B : R] = (m(x - 1, j) + m(x + 1, j) + 1) >> 1;
        }
        return out;
    }
    const int up = m(x, y - 1), down = m(x, y + 1), left = m(x - 1, y), right = m(x + 1, y);
    if (site == G) {
        out[G] = m(x, y);
        out[colourAt(grid, x + 1, y)] = (left + right + 1) >> 1;
        out[colourAt(grid, x, y + 1)] = (up + down + 1) >> 1;
        return out;
    }
    out[site] = m(x, y);
    out[site == R ? B : R] = (m(x - 1, y - 1) + m(x + 1, y - 1) + m(x - 1, y + 1) + m(x + 1, y + 1) + 2) >> 2;
    if (px.kind == 1 || py.kind == 1) {
        out[G] = (up + left + right + down + 2) >> 2;
        return out;
    }
    const int V = std::abs(m(x, y - 2) - m(x, y + 2));
    const int Hd = std::abs(m(x - 2, y) - m(x + 2, y));
    if (V < Hd) {
        out[G] = (up + down + 1) >> 1;
    } else if (V > Hd) {
        out[G] = (left + right + 1) >> 1;
    } else {
        out[G] = (up + left + right + down + 2) >> 2;
    }
    return out;
}

// The rectangle as the library takes it: negative x or y set to 0 with the size kept,
// then cut at the right and bottom edges.
struct RefRect {
    int x, y, w, h;
};
inline RefRect referenceClip(int rx, int ry, int rw, int rh, int W, int H) {
    RefRect r{std::max(rx, 0), std::max(ry, 0), rw, rh};
    if (int64_t(r.x) + r.w > W) r.w = W - r.x;
    if (int64_t(r.y) + r.h > H) r.h = H - r.y;
    return r;
}

// The whole call: the frame pixels of the region first, then the interior, each
// from the top row down, written through `write(x, y, rgb)` in image coordinates.
template <class Write>
void referenceCfa(const Mosaic& m, int grid, const RefRect& r, Write&& write) {
    auto interior = [&](int x, int y) { return x >= 2 && x <= m.width - 3 && y >= 2 && y <= m.height - 3; };
    for (int pass = 0; pass < 2; ++pass) {
        for (int y = r.y; y < r.y + r.h; ++y) {
            for (int x = r.x; x < r.x + r.w; ++x) {
                if (interior(x, y) == (pass == 1)) write(x, y, referenceCfaPixel(m, grid, x, y));
            }
        }
    }
}

}  // namespace demosaictest

#endif
