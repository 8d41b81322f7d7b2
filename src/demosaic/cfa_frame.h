// The frame of the basic demosaic: the two columns and two rows along each edge of
// the image, where the edge-directed rule lacks its neighbours. Scalar, pixel by pixel
// (the frame is a thin strip).
//
// Along each axis a position falls in one of five bands: the edge (0 or size - 1), the
// second line (1 or size - 2), or inside. Where the image is too small for all five
// the edge wins over the second line, and the left and top sides win over the right
// and bottom ones (so column 1 of a 3-wide image belongs to the left side).
//   - both bands inside: the interior (not handled here);
//   - second line and second line or inside: plain averages over all neighbours;
//   - edge and inside: the edge rules, which reach one line inward;
//   - edge and edge or second line: the corner of that side, from its 2x2 block only.
// Every pixel of a corner takes the colour of the corner block; the pixel on the
// second line in both axes has all its neighbours and takes the plain averages.
#pragma once

#include <cstdint>

#include "demosaic/bayer.h"
#include "demosaic/cfa_forms.h"

namespace pxk {
namespace demosaic {

enum class Band { Edge, Second, Inside };

struct AxisPlace {
    Band band;
    int32_t edge;    // the edge line of the pixel's side (0 or size - 1)
    int32_t inward;  // one line from that edge toward the inside
};

PXK_INLINE AxisPlace axisPlace(int32_t v, int32_t size) {
    if (v == 0) return AxisPlace{Band::Edge, 0, 1};
    if (v == size - 1) return AxisPlace{Band::Edge, size - 1, size - 2};
    if (v == 1) return AxisPlace{Band::Second, 0, 1};
    if (v == size - 2) return AxisPlace{Band::Second, size - 1, size - 2};
    return AxisPlace{Band::Inside, 0, 0};
}

// The colour of pixel (x, y) of the frame, into out[R, G, B].
template <class T>
void framePixel(const SourceImage<T>& img, int32_t grid, int32_t x, int32_t y, int32_t out[3]) {
    const AxisPlace px = axisPlace(x, img.width);
    const AxisPlace py = axisPlace(y, img.height);
    auto c = [&](int32_t u, int32_t v) { return img.at(u, v); };
    const int site = siteAt(grid, x, y);
    if ((px.band == Band::Edge && py.band != Band::Inside) || (py.band == Band::Edge && px.band != Band::Inside)) {
        // Corner block: the corner sample (cx, cy), its row and column neighbours in
        // the block and the block's diagonal sample.
        const int32_t cx = px.edge, cy = py.edge, ox = px.inward, oy = py.inward;
        const int corner = siteAt(grid, cx, cy);
        if (corner == kGreen) {
            out[kGreen] = mean2(c(cx, cy), c(ox, oy));
            out[siteAt(grid, ox, cy)] = c(ox, cy);
            out[siteAt(grid, cx, oy)] = c(cx, oy);
        } else {
            out[corner] = c(cx, cy);
            out[kGreen] = c(cx, oy);
            out[2 - corner] = c(ox, oy);
        }
        return;
    }
    if (px.band == Band::Edge || py.band == Band::Edge) {
        // Edge rules, told for the left edge; the top edge is the same with x and y
        // exchanged. `in` is the sample one line inward, `along` the two neighbours
        // on the edge line, `inAlong` the two inward samples beside `in`.
        const bool column = px.band == Band::Edge;
        auto at = [&](int32_t across, int32_t along) { return column ? c(across, along) : c(along, across); };
        const int32_t e = column ? px.edge : py.edge;
        const int32_t i = column ? px.inward : py.inward;
        const int32_t a = column ? y : x;
        const int inwardSite = column ? siteAt(grid, i, y) : siteAt(grid, x, i);
        if (site == kGreen) {
            const int alongSite = column ? siteAt(grid, x, y + 1) : siteAt(grid, x + 1, y);
            out[kGreen] = (at(i, a - 1) + 2 * at(e, a) + at(i, a + 1) + 2) >> 2;
            out[inwardSite] = at(i, a);
            out[alongSite] = mean2(at(e, a - 1), at(e, a + 1));
        } else {
            out[site] = at(e, a);
            out[kGreen] = at(i, a);
            out[2 - site] = mean2(at(i, a - 1), at(i, a + 1));
        }
        return;
    }
    // Second line: plain averages, no edge test.
    if (site == kGreen) {
        out[kGreen] = c(x, y);
        out[siteAt(grid, x + 1, y)] = mean2(c(x - 1, y), c(x + 1, y));
        out[siteAt(grid, x, y + 1)] = mean2(c(x, y - 1), c(x, y + 1));
    } else {
        out[site] = c(x, y);
        out[kGreen] = mean4(c(x, y - 1), c(x - 1, y), c(x + 1, y), c(x, y + 1));
        out[2 - site] = mean4(c(x - 1, y - 1), c(x + 1, y - 1), c(x - 1, y + 1), c(x + 1, y + 1));
    }
}

}  // namespace demosaic
}  // namespace pxk
