// The 2 by 2 blocks of 4:2:0 conversions from packed RGB or BGR: a row pair of the
// source gives two rows of Y and one row of chroma pairs. Luma and chroma forms are
// chosen by the caller, and so is where the chroma goes (two planes, or one plane of
// interleaved pairs); vector blocks run the forms' vector twins, the scalar loop their
// scalar forms, with the same bits.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "frame/vec.h"
#include "yuv/subsampled_forms.h"

namespace pxk {
namespace yuv {

// The forms of one chroma column: luma of each of its four pixels, chroma from the
// block's sums.
template <class Luma, class Chroma>
struct BlockForms {
    using LumaForm = Luma;
    using ChromaForm = Chroma;
};

// Cb and Cr in planes of their own.
struct ChromaPlanes {
    uint8_t* cb;
    uint8_t* cr;

    PXK_INLINE void store1(int32_t c, uint8_t vb, uint8_t vr) const {
        cb[c] = vb;
        cr[c] = vr;
    }
    // Eight pairs a lane from chroma column c: [Cb of the eight | Cr of the eight].
    template <class V>
    PXK_INLINE void store(int32_t c, V chroma) const {
        vec::storeLowHalves(cb + c, chroma);
        vec::storeLowHalves(cr + c, vec::upperHalf(chroma));
    }
};

// Cb, Cr pairs interleaved in one plane.
struct ChromaPairs {
    uint8_t* cbcr;

    PXK_INLINE void store1(int32_t c, uint8_t vb, uint8_t vr) const {
        cbcr[2 * c] = vb;
        cbcr[2 * c + 1] = vr;
    }
    template <class V>
    PXK_INLINE void store(int32_t c, V chroma) const {
        vec::storeLanes<V, 16>(cbcr + 2 * c, vec::unpacklo8(chroma, vec::upperHalf(chroma)));
    }
};

// One chroma column c of a row pair: Y of its four pixels, Cb and Cr of the block.
template <class Forms, bool Bgr, class In, class Chroma>
PXK_INLINE void scalarBlock420(const In& top, const In& bottom, RowPair<uint8_t> y, const Chroma& chroma, int32_t c) {
    const int32_t x = 2 * c;
    const Pixel3 px[4] = {readRgb<Bgr>(top, x), readRgb<Bgr>(top, x + 1), readRgb<Bgr>(bottom, x),
                          readRgb<Bgr>(bottom, x + 1)};
    ChromaSums sums;
    for (const Pixel3& p : px) sums.add(p);
    y.top[x] = Forms::LumaForm::luma(px[0]);
    y.top[x + 1] = Forms::LumaForm::luma(px[1]);
    y.bottom[x] = Forms::LumaForm::luma(px[2]);
    y.bottom[x + 1] = Forms::LumaForm::luma(px[3]);
    chroma.store1(c, Forms::ChromaForm::cb(sums), Forms::ChromaForm::cr(sums));
}

// Sixteen pixels a lane of a row pair from column x: Y of each, and Cb, Cr of each of
// its 2 by 2 blocks from the blocks' sums, by the forms' vector twins.
template <class Forms, bool Bgr, class V, class In, class Chroma>
PXK_INLINE void vectorBlock420(const In& top, const In& bottom, RowPair<uint8_t> y, const Chroma& chroma, int32_t x) {
    Block<V> rows[2] = {top.template load<V>(x), bottom.template load<V>(x)};
    uint8_t* const lumaRows[2] = {y.top, y.bottom};
    PXK_UNROLL
    for (int r = 0; r < 2; ++r) {
        Block<V>& b = rows[r];
        if (Bgr) swapFirstAndThird(b);
        vec::storeLanes<V, 16>(lumaRows[r] + x, simd::halvesToPixelBytes(Forms::LumaForm::luma(b.half[0]),
                                                                         Forms::LumaForm::luma(b.half[1])));
    }
    // The two rows added first, then the horizontal pairs: one pairing per channel.
    V sums[3];
    PXK_UNROLL
    for (int k = 0; k < 3; ++k) {
        sums[k] = simd::horizontalPairSums(vec::add16(rows[0].half[0].c[k], rows[1].half[0].c[k]),
                                           vec::add16(rows[0].half[1].c[k], rows[1].half[1].c[k]));
    }
    V vcb, vcr;
    Forms::ChromaForm::apply(sums[0], sums[1], sums[2], vcb, vcr);
    chroma.store(x / 2, vec::packus16(vcb, vcr));
}

// The pixel columns from `from` to `to` (both even) of a row pair in one set of forms:
// vector blocks of the widest vector and of 16 pixels, then the scalar forms two
// columns at a time (the same bits).
template <class Forms, bool Bgr, class In, class Chroma>
PXK_INLINE void run420(const In& top, const In& bottom, RowPair<uint8_t> y, const Chroma& chroma, int32_t from,
                       int32_t to) {
    int32_t x = from;
    for (; to - x >= kBlockPixels<vec::Widest>; x += kBlockPixels<vec::Widest>) {
        vectorBlock420<Forms, Bgr, vec::Widest>(top, bottom, y, chroma, x);
    }
    if (to - x >= kBlockPixels<vec::V128>) {
        vectorBlock420<Forms, Bgr, vec::V128>(top, bottom, y, chroma, x);
        x += kBlockPixels<vec::V128>;
    }
    for (; x < to; x += 2) scalarBlock420<Forms, Bgr>(top, bottom, y, chroma, x / 2);
}

}  // namespace yuv
}  // namespace pxk
