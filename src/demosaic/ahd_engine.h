// The homogeneity-directed demosaic of one rectangle of the image, streamed from the
// top through rings of rows in the caller's buffer.
//
// Each image row r passes four stages, each a row behind the one before:
//   greens(r)       green along the row and along the column at every site;
//   candidates(r)   the row candidate and the column candidate, R G B and Y U V;
//   homogeneity(r)  row candidate's count of homogeneous neighbours minus the column
//                   candidate's, as a signed byte;
//   choose(r)       the sign of the 3x3 sum of those differences picks the candidate.
// Each stage keeps its last three rows, in three slots of the buffer (a slot holds
// one row of every stage). Rows and columns past the rectangle are computed as far as
// the later stages reach: greens 3 beyond it, candidates 2, differences 1.
//
// The sample rows come from an accessor: the main kernel reads the image directly
// (its area keeps 5 samples from every edge, as far as the stages reach); the border
// kernel reads a sample past an edge from its mirror image across the edge sample
// (-x for x < 0, 2 (size - 1) - x past the end, repeated as needed), which keeps the
// colour of every site.
//
// Buffer: three slots, slot s at pBuffer + s * bufferStep (rounded up to 16 bytes).
// A slot holds, for a rectangle n pixels wide, plane by plane: two rows of greens
// (n + 6 samples), the R, G and B rows of two candidates (n + 4 samples each), their
// Y (unsigned), U and V (signed) terms as 16-bit values (n + 4 each; the terms of
// 16-bit samples stay within 0..56319 and -28672..28672) and one row of differences
// (n + 2 bytes), each rounded up to 16 bytes: at most (8 * sizeof(T) + 13) * n + 362
// bytes, within the (8 * sizeof(T) + 25) * n + 384 that the header asks for.
//
// The main kernel (rows read directly) runs each stage in vectors of 32-bit lanes
// over the row, then the scalar forms for the columns left over; the border kernel
// runs the scalar forms throughout. Both give the same integers.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "demosaic/ahd_lanes.h"
#include "demosaic/ahd_stages.h"
#include "demosaic/bayer.h"

namespace pxk {
namespace demosaic {

// The bytes a buffer row needs for a rectangle `width` pixels wide.
template <class T>
constexpr int64_t ahdBufferStep(int64_t width) {
    return (8 * int64_t{sizeof(T)} + 25) * width + 384;
}

// Sample rows of the image read directly.
template <class T>
struct DirectRows {
    SourceImage<T> img;
    struct Row {
        const T* p;
        PXK_INLINE int32_t operator[](int32_t x) const { return loadSample(p, x); }
    };
    PXK_INLINE Row row(int32_t y) const { return Row{img.row(y)}; }
};

// Mirror of a coordinate into 0..size - 1 across the edge samples.
PXK_INLINE int32_t mirrored(int32_t v, int32_t size) {
    while (v < 0 || v >= size) v = v < 0 ? -v : 2 * (size - 1) - v;
    return v;
}

// Sample rows of the image with both coordinates mirrored at the edges.
template <class T>
struct MirroredRows {
    SourceImage<T> img;
    struct Row {
        const T* p;
        int32_t width;
        PXK_INLINE int32_t operator[](int32_t x) const { return loadSample(p, mirrored(x, width)); }
    };
    PXK_INLINE Row row(int32_t y) const { return Row{img.row(mirrored(y, img.height)), img.width}; }
};

template <class T>
struct AhdSlot {
    T* green[2];         // [0] along the row, [1] along the column; column x at [x - (x0 - 3)]
    T* candidate[2][3];  // R, G, B rows of the row and the column candidate; column x at [x - (x0 - 2)]
    uint16_t* y[2];      // their terms, at the same index
    int16_t* u[2];
    int16_t* v[2];
    int8_t* difference;  // column x at [x - (x0 - 1)]

    PXK_INLINE Yuv yuv(int k, int32_t i) const { return Yuv{y[k][i], u[k][i], v[k][i]}; }
    PXK_INLINE void setYuv(int k, int32_t i, const Yuv& t) const {
        y[k][i] = static_cast<uint16_t>(t.y);
        u[k][i] = static_cast<int16_t>(t.u);
        v[k][i] = static_cast<int16_t>(t.v);
    }
};

template <class T, class Rows>
class AhdEngine {
public:
    AhdEngine(const Rows& rows, int32_t grid, uint8_t* buffer, int32_t bufferStep, const DestinationRegion<T, 3>& dst)
        : rows_(rows), grid_(grid), dst_(dst), buffer_(buffer), bufferStep_(bufferStep) {}

    // The rectangle [x0, x0 + width) x [y0, y0 + height), width and height at least 1.
    void run(int32_t x0, int32_t y0, int32_t width, int32_t height) {
        x0_ = x0;
        x1_ = x0 + width - 1;
        const int32_t y1 = y0 + height - 1;
        for (int s = 0; s < 3; ++s) slots_[s] = layOut(s, width);
        for (int32_t r = y0 - 3; r <= y1 + 3; ++r) {
            greens(r);
            if (r - 1 >= y0 - 2) candidates(r - 1);
            if (r - 2 >= y0 - 1) homogeneity(r - 2);
            if (r - 3 >= y0) choose(r - 3);
        }
    }

private:
    static constexpr int32_t kTop = sizeof(T) == 1 ? 255 : 65535;
    // Rows read directly have vector stages (the border kernel's mirrored rows do not).
    static constexpr bool kVector = std::is_same<Rows, DirectRows<T>>::value;
    using V = vec::Widest;
    static constexpr int32_t kLanes = lanes32::kCount<V>;

    static uint8_t* alignUp(uint8_t* p) {
        return p + ((16 - (reinterpret_cast<std::uintptr_t>(p) & 15)) & 15);
    }
    AhdSlot<T> layOut(int s, int32_t n) const {
        uint8_t* p = alignUp(byteOffset(buffer_, static_cast<std::intptr_t>(s) * bufferStep_));
        auto take = [&p](std::size_t bytes) {
            uint8_t* at = p;
            p = alignUp(p + bytes);
            return at;
        };
        AhdSlot<T> slot;
        const std::size_t w = static_cast<std::size_t>(n);
        for (int k = 0; k < 2; ++k) slot.green[k] = reinterpret_cast<T*>(take((w + 6) * sizeof(T)));
        for (int k = 0; k < 2; ++k) {
            for (int c = 0; c < 3; ++c) slot.candidate[k][c] = reinterpret_cast<T*>(take((w + 4) * sizeof(T)));
        }
        for (int k = 0; k < 2; ++k) {
            slot.y[k] = reinterpret_cast<uint16_t*>(take((w + 4) * 2));
            slot.u[k] = reinterpret_cast<int16_t*>(take((w + 4) * 2));
            slot.v[k] = reinterpret_cast<int16_t*>(take((w + 4) * 2));
        }
        slot.difference = reinterpret_cast<int8_t*>(take(w + 2));
        return slot;
    }
    const AhdSlot<T>& slot(int32_t r) const { return slots_[((r % 3) + 3) % 3]; }

    // All ones in the lanes of a vector from column x whose site in row r is green.
    V greenLanes(int32_t x, int32_t r) const {
        auto m = [&](int32_t j) { return siteAt(grid_, x + j, r) == kGreen ? -1 : 0; };
        return vec::splat32Pattern<V>(m(0), m(1), m(2), m(3));
    }

    void greens(int32_t r) {
        const typename Rows::Row s0 = rows_.row(r - 2), s1 = rows_.row(r - 1), s2 = rows_.row(r),
                                 s3 = rows_.row(r + 1), s4 = rows_.row(r + 2);
        const AhdSlot<T>& out = slot(r);
        int32_t x = x0_ - 3;
        if constexpr (kVector) {
            using lanes32::widen;
            const V green = greenLanes(x, r);
            for (; x1_ + 3 - x + 1 >= kLanes; x += kLanes) {
                const int32_t i = x - (x0_ - 3);
                const T* m = s2.p + x;
                const V c = widen<V>(m);
                const V h = lineGreen(widen<V>(m - 1), widen<V>(m + 1), c, widen<V>(m - 2), widen<V>(m + 2));
                const V v = lineGreen(widen<V>(s1.p + x), widen<V>(s3.p + x), c, widen<V>(s0.p + x), widen<V>(s4.p + x));
                lanes32::narrow(out.green[0] + i, vec::selectBits(green, c, h));
                lanes32::narrow(out.green[1] + i, vec::selectBits(green, c, v));
            }
        }
        for (; x <= x1_ + 3; ++x) {
            const int32_t i = x - (x0_ - 3);
            const int32_t c = s2[x];
            if (siteAt(grid_, x, r) == kGreen) {
                out.green[0][i] = static_cast<T>(c);
                out.green[1][i] = static_cast<T>(c);
            } else {
                out.green[0][i] = static_cast<T>(lineGreen(s2[x - 1], s2[x + 1], c, s2[x - 2], s2[x + 2]));
                out.green[1][i] = static_cast<T>(lineGreen(s1[x], s3[x], c, s0[x], s4[x]));
            }
        }
    }

    // Both candidates of the columns from x on, kLanes at a time. In a row the sites
    // alternate between green and one other colour `site`; a green site's neighbours
    // along the row hold `site`, those along the column the third colour.
    int32_t vectorCandidates(int32_t x, int32_t r, int site) const {
        using lanes32::widen;
        using namespace vec;
        const T* up = rows_.row(r - 1).p;
        const T* mid = rows_.row(r).p;
        const T* down = rows_.row(r + 1).p;
        const AhdSlot<T>& above = slot(r - 1);
        const AhdSlot<T>& here = slot(r);
        const AhdSlot<T>& below = slot(r + 1);
        const V green = greenLanes(x, r);
        for (; x1_ + 2 - x + 1 >= kLanes; x += kLanes) {
            const int32_t g = x - (x0_ - 3);
            const int32_t i = x - (x0_ - 2);
            const V c = widen<V>(mid + x);
            const V along = add32(widen<V>(mid + x - 1), widen<V>(mid + x + 1));
            const V across = add32(widen<V>(up + x), widen<V>(down + x));
            const V diagonal =
                add32(add32(add32(widen<V>(up + x - 1), widen<V>(up + x + 1)), widen<V>(down + x - 1)), widen<V>(down + x + 1));
            for (int k = 0; k < 2; ++k) {
                const T* ga = above.green[k] + g;
                const T* gh = here.green[k] + g;
                const T* gb = below.green[k] + g;
                const V centre = widen<V>(gh);
                const V fromRow = colourFromGreen<1>(c, along, add32(widen<V>(gh - 1), widen<V>(gh + 1)), kTop);
                const V fromColumn = colourFromGreen<1>(c, across, add32(widen<V>(ga), widen<V>(gb)), kTop);
                const V fromDiagonal = colourFromGreen<2>(
                    centre, diagonal,
                    add32(add32(add32(widen<V>(ga - 1), widen<V>(ga + 1)), widen<V>(gb - 1)), widen<V>(gb + 1)), kTop);
                V rgb[3];
                rgb[site] = selectBits(green, fromRow, c);
                rgb[kGreen] = selectBits(green, c, centre);
                rgb[2 - site] = selectBits(green, fromColumn, fromDiagonal);
                for (int ch = 0; ch < 3; ++ch) lanes32::narrow(here.candidate[k][ch] + i, rgb[ch]);
                const YuvLanes<V> t = yuvOf(rgb[0], rgb[1], rgb[2]);
                lanes32::narrow(here.y[k] + i, t.y);
                lanes32::narrow(here.u[k] + i, t.u);
                lanes32::narrow(here.v[k] + i, t.v);
            }
        }
        return x;
    }

    void candidates(int32_t r) {
        const typename Rows::Row up = rows_.row(r - 1), mid = rows_.row(r), down = rows_.row(r + 1);
        const AhdSlot<T>& above = slot(r - 1);
        const AhdSlot<T>& here = slot(r);
        const AhdSlot<T>& below = slot(r + 1);
        // The row's sites alternate: [p] for the columns of parity p from x0 - 2 on, with
        // the colours of their row and column neighbours.
        int sites[2], rowColours[2], columnColours[2];
        for (int p = 0; p < 2; ++p) {
            sites[p] = siteAt(grid_, x0_ - 2 + p, r);
            rowColours[p] = siteAt(grid_, x0_ - 1 + p, r);
            columnColours[p] = siteAt(grid_, x0_ - 2 + p, r + 1);
        }
        int32_t x = x0_ - 2;
        if constexpr (kVector) x = vectorCandidates(x, r, sites[0] == kGreen ? sites[1] : sites[0]);
        for (; x <= x1_ + 2; ++x) {
            const int32_t g = x - (x0_ - 3);  // index into the green rows
            const int32_t i = x - (x0_ - 2);
            const int site = sites[i & 1];
            const int32_t c = mid[x];
            // The samples that both candidates share.
            int32_t along = 0, across = 0, diagonal = 0;
            if (site == kGreen) {
                along = mid[x - 1] + mid[x + 1];
                across = up[x] + down[x];
            } else {
                diagonal = up[x - 1] + up[x + 1] + down[x - 1] + down[x + 1];
            }
            for (int k = 0; k < 2; ++k) {
                const T* ga = above.green[k];
                const T* gh = here.green[k];
                const T* gb = below.green[k];
                int32_t rgb[3];
                if (site == kGreen) {
                    rgb[kGreen] = c;
                    rgb[rowColours[i & 1]] = colourFromGreen<1>(c, along, gh[g - 1] + gh[g + 1], kTop);
                    rgb[columnColours[i & 1]] = colourFromGreen<1>(c, across, ga[g] + gb[g], kTop);
                } else {
                    const int32_t green = gh[g];
                    rgb[site] = c;
                    rgb[kGreen] = green;
                    rgb[2 - site] =
                        colourFromGreen<2>(green, diagonal, ga[g - 1] + ga[g + 1] + gb[g - 1] + gb[g + 1], kTop);
                }
                for (int ch = 0; ch < 3; ++ch) here.candidate[k][ch][i] = static_cast<T>(rgb[ch]);
                here.setYuv(k, i, yuvOf(rgb[0], rgb[1], rgb[2]));
            }
        }
    }

    // The distances of a candidate's terms to one neighbour's.
    struct Distance {
        int32_t luma;
        ChromaDistance<T> chroma;
    };
    static PXK_INLINE Distance distance(const Yuv& a, const Yuv& b) {
        return Distance{lumaDistance(a, b), chromaDistance<T>(a, b)};
    }
    static PXK_INLINE int32_t within(const Distance& d, int32_t limitY, ChromaDistance<T> limitC) {
        return static_cast<int32_t>(d.luma <= limitY) & static_cast<int32_t>(d.chroma <= limitC);
    }

    // The differences of the columns from x on, kLanes at a time.
    int32_t vectorHomogeneity(int32_t x, int32_t r) const {
        using lanes32::widen;
        using namespace vec;
        using Chroma = lanes32::ChromaDistances<T, V>;
        using CD = typename Chroma::D;
        struct Lanes {
            V luma;
            CD chroma;
        };
        const AhdSlot<T>& above = slot(r - 1);
        const AhdSlot<T>& here = slot(r);
        const AhdSlot<T>& below = slot(r + 1);
        for (; x1_ + 1 - x + 1 >= kLanes; x += kLanes) {
            const int32_t i = x - (x0_ - 2);
            Lanes left[2], right[2], upper[2], lower[2];
            for (int k = 0; k < 2; ++k) {
                auto terms = [&](const AhdSlot<T>& s, int32_t at) {
                    return YuvLanes<V>{widen<V>(s.y[k] + at), widen<V>(s.u[k] + at), widen<V>(s.v[k] + at)};
                };
                const YuvLanes<V> c = terms(here, i);
                auto distanceTo = [&](const YuvLanes<V>& n) {
                    return Lanes{abs32(sub32(c.y, n.y)), Chroma::of(sub32(c.u, n.u), sub32(c.v, n.v))};
                };
                left[k] = distanceTo(terms(here, i - 1));
                right[k] = distanceTo(terms(here, i + 1));
                upper[k] = distanceTo(terms(above, i));
                lower[k] = distanceTo(terms(below, i));
            }
            const V limitY = min32(max32(left[0].luma, right[0].luma), max32(upper[1].luma, lower[1].luma));
            const CD limitC = Chroma::min(Chroma::max(left[0].chroma, right[0].chroma),
                                          Chroma::max(upper[1].chroma, lower[1].chroma));
            // All ones where a neighbour is not homogeneous; the count of those that are
            // is 4 plus the sum of the four masks.
            auto outside = [&](const Lanes& d) { return or_(greater32(d.luma, limitY), Chroma::above(d.chroma, limitC)); };
            V sums[2];
            for (int k = 0; k < 2; ++k) {
                sums[k] = add32(add32(outside(left[k]), outside(right[k])), add32(outside(upper[k]), outside(lower[k])));
            }
            lanes32::narrow(here.difference + (x - (x0_ - 1)), sub32(sums[0], sums[1]));
        }
        return x;
    }

    void homogeneity(int32_t r) {
        const AhdSlot<T>& above = slot(r - 1);
        const AhdSlot<T>& here = slot(r);
        const AhdSlot<T>& below = slot(r + 1);
        int32_t x = x0_ - 1;
        if constexpr (kVector) x = vectorHomogeneity(x, r);
        // Each distance between horizontal neighbours serves both pixels: the right one
        // of a pixel is the left one of the next.
        Distance left[2];
        for (int k = 0; k < 2; ++k) {
            const int32_t i = x - (x0_ - 2);
            left[k] = distance(here.yuv(k, i), here.yuv(k, i - 1));
        }
        for (; x <= x1_ + 1; ++x) {
            const int32_t i = x - (x0_ - 2);
            Distance right[2], upper[2], lower[2];
            for (int k = 0; k < 2; ++k) {
                const Yuv c = here.yuv(k, i);
                right[k] = distance(c, here.yuv(k, i + 1));
                upper[k] = distance(c, above.yuv(k, i));
                lower[k] = distance(c, below.yuv(k, i));
            }
            // The row candidate's limits along the row, the column candidate's along the
            // column.
            const int32_t limitY = std::min(std::max(left[0].luma, right[0].luma), std::max(upper[1].luma, lower[1].luma));
            const ChromaDistance<T> limitC =
                std::min(std::max(left[0].chroma, right[0].chroma), std::max(upper[1].chroma, lower[1].chroma));
            int32_t counts[2];
            for (int k = 0; k < 2; ++k) {
                counts[k] = within(left[k], limitY, limitC) + within(right[k], limitY, limitC) +
                            within(upper[k], limitY, limitC) + within(lower[k], limitY, limitC);
                left[k] = right[k];
            }
            here.difference[x - (x0_ - 1)] = static_cast<int8_t>(counts[0] - counts[1]);
        }
    }

    // The 3x3 sums slide along the row as sums of three columns.
    void choose(int32_t y) {
        const int8_t* d0 = slot(y - 1).difference;
        const int8_t* d1 = slot(y).difference;
        const int8_t* d2 = slot(y + 1).difference;
        const AhdSlot<T>& here = slot(y);
        T* out = dst_.pixel(x0_, y);
        auto column = [&](int32_t j) { return int32_t{d0[j]} + d1[j] + d2[j]; };
        int32_t previous = column(0), current = column(1);
        int32_t last = 1;
        for (int32_t x = x0_; x <= x1_; ++x) {
            const int32_t j = x - x0_;  // the difference of column x - 1
            const int32_t next = column(j + 2);
            const int32_t sum = previous + current + next;
            previous = current;
            current = next;
            if (sum != 0) last = sum;
            const int k = last > 0 ? 0 : 1;
            const int32_t i = x - (x0_ - 2);
            for (int ch = 0; ch < 3; ++ch) storeSample(out, ch, here.candidate[k][ch][i]);
            out += 3;
        }
    }

    Rows rows_;
    int32_t grid_;
    DestinationRegion<T, 3> dst_;
    uint8_t* buffer_;
    int32_t bufferStep_;
    int32_t x0_ = 0, x1_ = 0;
    AhdSlot<T> slots_[3];
};

}  // namespace demosaic
}  // namespace pxk
