// The interior of the basic demosaic: every pixel at least two lines from each edge of
// the image, by the edge-directed rule. A row holds green sites and sites of one other
// colour, alternating; a kernel is fixed by that colour and by whether the row's first
// pixel is green, and a pair of rows alternates between two kernels. The four kernels
// are chosen once per call from the pattern at the interior's first pixel, so the row
// loops never test a site.
//
// A vector block loads each row it needs at the offsets it needs and splits it into
// its even and its odd pixels: each half then holds sites of one kind, and every
// neighbour of a half is the same half of another load. Blocks and the scalar tail
// give the same bits.
#pragma once

#include <cstdint>

#include "demosaic/bayer.h"
#include "demosaic/cfa_forms.h"
#include "frame/drivers.h"
#include "frame/pixel_block.h"

namespace pxk {
namespace demosaic {

// Loads and stores of a block by sample type: 8-bit samples in 16-bit lanes, sixteen
// pixels a 128-bit lane; 16-bit samples in 32-bit lanes, eight pixels a 128-bit lane.
template <class T>
struct CfaLanes {
    static constexpr int kBits = 16 * int(sizeof(T));
    template <class V>
    using Policy = SumLanes<V, kBits>;
    template <class V>
    static constexpr int32_t kPixels = 16 / int(sizeof(T)) * vec::kLanes<V>;

    // The pixels x, x + 1, ... of a row as two halves: the even pixels and the odd ones.
    template <class V>
    static PXK_INLINE void load(const T* row, int32_t x, V& even, V& odd) {
        const V v = vec::loadLanes<V, 16>(reinterpret_cast<const uint8_t*>(row + x));
        if constexpr (sizeof(T) == 1) {
            simd::evenOddHalves(v, even, odd);
        } else {
            even = vec::and_(v, vec::splat32<V>(0xFFFF));
            odd = vec::srli32<16>(v);
        }
    }
    // Three channels of the two halves, interleaved from `out` on.
    template <class V>
    static PXK_INLINE void store(T* out, const V (&even)[3], const V (&odd)[3]) {
        if constexpr (sizeof(T) == 1) {
            Block<V> b;
            PXK_UNROLL
            for (int k = 0; k < 3; ++k) simd::evenOddToBlockHalves(even[k], odd[k], b.half[0].c[k], b.half[1].c[k]);
            PackedC3Out{{out}}.store(0, b);
        } else {
            storeWords3(reinterpret_cast<uint8_t*>(out), even, odd);
        }
    }

    // Eight pixels a 128-bit lane of three 16-bit channels, each channel's even pixels
    // (0, 2, 4, 6) and odd pixels in 32-bit lanes, as 48 bytes of interleaved pixels a
    // lane. The samples first pair up in 32-bit lanes as they stand in memory:
    //   a = c0 c1 of the even pixels, b = c2 of an even pixel with c0 of the next odd
    //   one, c = c1 c2 of the odd pixels,
    // so that the lane's 48 bytes are a0 b0 c0 a1 | b1 c1 a2 b2 | c2 a3 b3 c3.
    template <class V>
    static PXK_INLINE void storeWords3(uint8_t* out, const V (&even)[3], const V (&odd)[3]) {
        const V a = vec::or_(even[0], vec::slli32<16>(even[1]));
        const V b = vec::or_(even[2], vec::slli32<16>(odd[0]));
        const V c = vec::or_(odd[1], vec::slli32<16>(odd[2]));
        const V ab = vec::unpacklo32(a, b);   // a0 b0 a1 b1
        const V ca = vec::unpacklo32(c, a);   // c0 a0 c1 a1
        const V bc = vec::unpacklo32(b, c);   // b0 c0 b1 c1
        const V abHi = vec::unpackhi32(a, b);  // a2 b2 a3 b3
        const V caHi = vec::unpackhi32(c, a);  // c2 a2 c3 a3
        const V bcHi = vec::unpackhi32(b, c);  // b2 c2 b3 c3
        vec::storeLanes<V, 48>(out, vec::shuffle2x32<_MM_SHUFFLE(3, 0, 1, 0)>(ab, ca));
        vec::storeLanes<V, 48>(out + 16, vec::shuffle2x32<_MM_SHUFFLE(1, 0, 3, 2)>(bc, abHi));
        vec::storeLanes<V, 48>(out + 32, vec::shuffle2x32<_MM_SHUFFLE(3, 2, 3, 0)>(caHi, bcHi));
    }
};

// The samples around the pixels of one half of a block, each of the centre's kind.
template <class V>
struct Neighbourhood {
    V centre, left, right, left2, right2, up, down, up2, down2, upLeft, upRight, downLeft, downRight;
};

// The block of pixels x, x + 1, ... of image row y into `out` (the destination pixel
// of x). RowColour is the row's colour other than green; EvenGreen tells whether the
// block's even pixels are green sites.
template <class T, int RowColour, bool EvenGreen, class V>
PXK_INLINE void interiorBlock(const SourceImage<T>& img, int32_t y, int32_t x, T* out) {
    using Lanes = CfaLanes<T>;
    using L = typename Lanes::template Policy<V>;
    const T* above2 = img.row(y - 2);
    const T* above = img.row(y - 1);
    const T* mid = img.row(y);
    const T* below = img.row(y + 1);
    const T* below2 = img.row(y + 2);
    Neighbourhood<V> h[2];
    Lanes::load(mid, x, h[0].centre, h[1].centre);
    Lanes::load(mid, x - 1, h[0].left, h[1].left);
    Lanes::load(mid, x + 1, h[0].right, h[1].right);
    Lanes::load(mid, x - 2, h[0].left2, h[1].left2);
    Lanes::load(mid, x + 2, h[0].right2, h[1].right2);
    Lanes::load(above, x, h[0].up, h[1].up);
    Lanes::load(below, x, h[0].down, h[1].down);
    Lanes::load(above2, x, h[0].up2, h[1].up2);
    Lanes::load(below2, x, h[0].down2, h[1].down2);
    Lanes::load(above, x - 1, h[0].upLeft, h[1].upLeft);
    Lanes::load(above, x + 1, h[0].upRight, h[1].upRight);
    Lanes::load(below, x - 1, h[0].downLeft, h[1].downLeft);
    Lanes::load(below, x + 1, h[0].downRight, h[1].downRight);
    V channels[2][3];
    PXK_UNROLL
    for (int p = 0; p < 2; ++p) {
        const Neighbourhood<V>& n = h[p];
        V* ch = channels[p];
        if ((p == 0) == EvenGreen) {
            ch[kGreen] = n.centre;
            ch[RowColour] = mean2<L>(n.left, n.right);
            ch[2 - RowColour] = mean2<L>(n.up, n.down);
        } else {
            ch[RowColour] = n.centre;
            ch[kGreen] = edgeDirectedGreen<L>(n.up, n.down, n.left, n.right, n.up2, n.down2, n.left2, n.right2);
            ch[2 - RowColour] = mean4<L>(n.upLeft, n.upRight, n.downLeft, n.downRight);
        }
    }
    Lanes::store(out, channels[0], channels[1]);
}

// The scalar twin: pixel x of image row y, whose site is green or of RowColour.
template <class T, int RowColour>
PXK_INLINE void interiorPixel(const SourceImage<T>& img, int32_t y, int32_t x, bool green, T* out) {
    auto c = [&](int32_t dx, int32_t dy) { return img.at(x + dx, y + dy); };
    int32_t ch[3];
    if (green) {
        ch[kGreen] = c(0, 0);
        ch[RowColour] = mean2(c(-1, 0), c(1, 0));
        ch[2 - RowColour] = mean2(c(0, -1), c(0, 1));
    } else {
        ch[RowColour] = c(0, 0);
        ch[kGreen] = edgeDirectedGreen(c(0, -1), c(0, 1), c(-1, 0), c(1, 0), c(0, -2), c(0, 2), c(-2, 0), c(2, 0));
        ch[2 - RowColour] = mean4(c(-1, -1), c(1, -1), c(-1, 1), c(1, 1));
    }
    PXK_UNROLL
    for (int k = 0; k < 3; ++k) storeSample(out, k, ch[k]);
}

// Columns x0 to x0 + count - 1 of image row y: vector blocks over the first
// count - count % block columns, the scalar twin after them.
template <class T, int RowColour, bool EvenGreen>
void interiorRow(const SourceImage<T>& img, int32_t y, int32_t x0, int32_t count, T* out) {
    using Lanes = CfaLanes<T>;
    constexpr int32_t kNarrow = Lanes::template kPixels<vec::V128>;
    constexpr int32_t kWide = Lanes::template kPixels<vec::Widest>;
    splitColumns<kNarrow, kWide>(
        count,
        [&](int32_t i, int32_t n) PXK_LAMBDA_INLINE {
            if (n == kWide) {
                interiorBlock<T, RowColour, EvenGreen, vec::Widest>(img, y, x0 + i, out + 3 * i);
            } else {
                interiorBlock<T, RowColour, EvenGreen, vec::V128>(img, y, x0 + i, out + 3 * i);
            }
        },
        [&](int32_t i) { interiorPixel<T, RowColour>(img, y, x0 + i, (i % 2 == 0) == EvenGreen, out + 3 * i); });
}

// The interior rows from the top, two at a time (the second row of a pair has the
// other colour and the other parity of green), a last odd row alone.
template <class T, int RowColour, bool EvenGreen>
void interiorRows(const SourceImage<T>& img, const DestinationRegion<T, 3>& dst, const Region& in) {
    int32_t y = in.y;
    for (; y < in.lastY(); y += 2) {
        interiorRow<T, RowColour, EvenGreen>(img, y, in.x, in.width, dst.pixel(in.x, y));
        interiorRow<T, 2 - RowColour, !EvenGreen>(img, y + 1, in.x, in.width, dst.pixel(in.x, y + 1));
    }
    if (y == in.lastY()) interiorRow<T, RowColour, EvenGreen>(img, y, in.x, in.width, dst.pixel(in.x, y));
}

// The kernel for the pattern at the interior's first pixel.
template <class T>
void interior(const SourceImage<T>& img, int32_t grid, const DestinationRegion<T, 3>& dst, const Region& in) {
    const int first = siteAt(grid, in.x, in.y);
    const int next = siteAt(grid, in.x + 1, in.y);
    if (first == kBlue) {
        interiorRows<T, kBlue, false>(img, dst, in);
    } else if (first == kRed) {
        interiorRows<T, kRed, false>(img, dst, in);
    } else if (next == kBlue) {
        interiorRows<T, kBlue, true>(img, dst, in);
    } else {
        interiorRows<T, kRed, true>(img, dst, in);
    }
}

}  // namespace demosaic
}  // namespace pxk
