// Rows of RGB or BGR with horizontally subsampled chroma: groups of two (4:2:2) or four
// (4:1:1) pixels of a row give a Y each and one chroma pair from the group's sums.
// Where the results go (planes, or packed Y0 Cb Y1 Cr), which luma and chroma forms
// run, and what a last pixel without a pair does are chosen by the caller. The whole
// groups run in vector blocks as far as they fill them (the forms' vector twins), the
// rest one group at a time.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/pixel_block.h"
#include "frame/vec.h"
#include "yuv/forms.h"
#include "yuv/subsampled_forms.h"

namespace pxk {
namespace yuv {

// Three planes: Y at full width, Cb and Cr one sample a group.
struct PlanarSink {
    uint8_t* y;
    uint8_t* cb;
    uint8_t* cr;

    PXK_INLINE void luma(int32_t x, uint8_t v) const { y[x] = v; }
    PXK_INLINE void chroma(int32_t c, uint8_t vb, uint8_t vr) const {
        cb[c] = vb;
        cr[c] = vr;
    }
    // The chroma of a last pixel x that has no pair, in the column after the pairs.
    PXK_INLINE void loneChroma(int32_t x, uint8_t vb, uint8_t vr) const {
        cb[x / 2] = vb;
        cr[x / 2] = vr;
    }
    // Sixteen pixels a lane from column x (4:1:1): their Y bytes in pixel order, and
    // [Cb of the four groups (twice) | Cr of the four groups (twice)] in each lane.
    template <class V>
    PXK_INLINE void block411(int32_t x, V lumaBytes, V chromaBytes) const {
        vec::storeLanes<V, 16>(y + x, lumaBytes);
        vec::storeLowQuarters(cb + x / 4, chromaBytes);
        vec::storeLowQuarters(cr + x / 4, vec::upperHalf(chromaBytes));
    }
    // Sixteen pixels a lane from column x (4:2:2): their Y bytes in pixel order, and
    // [Cb of the eight pairs | Cr of the eight pairs] in each lane.
    template <class V>
    PXK_INLINE void block422(int32_t x, V lumaBytes, V chromaBytes) const {
        vec::storeLanes<V, 16>(y + x, lumaBytes);
        vec::storeLowHalves(cb + x / 2, chromaBytes);
        vec::storeLowHalves(cr + x / 2, vec::upperHalf(chromaBytes));
    }
};

// Packed 4:2:2, Y0 Cb Y1 Cr (Y0 Cr Y1 Cb with CrFirst): the Y of pixel x at byte 2 x,
// the pair's chroma at 4 c + 1 and 4 c + 3.
template <bool CrFirst>
struct PackedC2Sink {
    uint8_t* row;

    PXK_INLINE void luma(int32_t x, uint8_t v) const { row[pixelOffset<2>(x)] = v; }
    PXK_INLINE void chroma(int32_t c, uint8_t vb, uint8_t vr) const {
        row[pixelOffset<4>(c) + 1] = CrFirst ? vr : vb;
        row[pixelOffset<4>(c) + 3] = CrFirst ? vb : vr;
    }
    // The chroma of a last pixel x that has no pair: byte 1 after its Y takes the first
    // value, whatever the chroma order; the second has no place.
    PXK_INLINE void loneChroma(int32_t x, uint8_t first, uint8_t) const { row[pixelOffset<2>(x) + 1] = first; }
    // Sixteen pixels a lane from column x: Y bytes in pixel order interleaved with the
    // pairs' chroma (32 bytes a lane); chromaBytes holds [Cb of the eight pairs | Cr].
    template <class V>
    PXK_INLINE void block422(int32_t x, V lumaBytes, V chromaBytes) const {
        const V first = CrFirst ? vec::upperHalf(chromaBytes) : chromaBytes;
        const V second = CrFirst ? chromaBytes : vec::upperHalf(chromaBytes);
        const V cbcr = vec::unpacklo8(first, second);  // Cb0 Cr0 Cb1 Cr1 ... (or Cr first)
        uint8_t* p = row + pixelOffset<2>(x);
        vec::storeLanes<V, 32>(p, vec::unpacklo8(lumaBytes, cbcr));
        vec::storeLanes<V, 32>(p + 16, vec::unpackhi8(lumaBytes, cbcr));
    }
};

// A luma form as the row of groups wants it, where the pixel's column does not matter.
template <class Luma>
struct AnyColumnLuma {
    PXK_INLINE static uint8_t luma(Pixel3 p, int32_t) { return Luma::luma(p); }
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& half, int) {
        return Luma::luma(half);
    }
};

// Luma of every pixel by the direct form.
using DirectPairLuma = AnyColumnLuma<DirectLuma>;

// The first pixel of a pair by the direct form, the second with the offset 1048576 in
// place of 1081344: without the rounding half. (Both lie within 16..235, so the low 8
// bits and a saturation give the same byte.)
struct AsymmetricPairLuma {
    PXK_INLINE static uint8_t luma(Pixel3 p, int32_t x) {
        const int32_t offset = x % 2 == 0 ? 1081344 : 1048576;
        return low8(asr(16843 * p.c[0] + 33030 * p.c[1] + 6423 * p.c[2] + offset, 16));
    }
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& half, int h) {
        return DirectForm::lumaLess(half, vec::and_(simd::oddColumnLanes32<V>(h), vec::splat32<V>(1081344 - 1048576)));
    }
};

// Sixteen pixels a lane of a row from column x, by the forms' vector twins: eight
// pairs (4:2:2) or four groups of four (4:1:1) a lane.
template <int Group, class Luma, class Chroma, bool Bgr, class V, class In, class Sink>
PXK_INLINE void vectorGroups(const In& in, const Sink& out, int32_t x) {
    Block<V> b = in.template load<V>(x);
    if (Bgr) swapFirstAndThird(b);
    const V lumaBytes = simd::halvesToPixelBytes(Luma::luma(b.half[0], 0), Luma::luma(b.half[1], 1));
    V sums[3];
    PXK_UNROLL
    for (int k = 0; k < 3; ++k) {
        sums[k] = simd::horizontalPairSums(b.half[0].c[k], b.half[1].c[k]);
        if constexpr (Group == 4) sums[k] = simd::adjacentSums(sums[k]);
    }
    V cb, cr;
    Chroma::apply(sums[0], sums[1], sums[2], cb, cr);
    if constexpr (Group == 2) {
        out.block422(x, lumaBytes, vec::packus16(cb, cr));
    } else {
        out.block411(x, lumaBytes, vec::packus16(cb, cr));
    }
}

// One row: `width / Group` whole groups, then what the odd-pixel rule says. The whole
// groups run in vector blocks as far as they fill them (the forms' vector twins give
// the same bits), the rest one group at a time.
template <int Group, class Luma, class Chroma, bool Bgr, class Odd, class In, class Sink>
PXK_INLINE void convertGroupsRow(const In& in, const Sink& out, int32_t width) {
    const int32_t groups = width / Group;
    int32_t first = 0;  // the first group left to the scalar loop
    {
        const int32_t pixels = Group * groups;
        int32_t x = 0;
        for (; pixels - x >= kBlockPixels<vec::Widest>; x += kBlockPixels<vec::Widest>) {
            vectorGroups<Group, Luma, Chroma, Bgr, vec::Widest>(in, out, x);
        }
        if (pixels - x >= kBlockPixels<vec::V128>) {
            vectorGroups<Group, Luma, Chroma, Bgr, vec::V128>(in, out, x);
            x += kBlockPixels<vec::V128>;
        }
        first = x / Group;
    }
    for (int32_t c = first; c < groups; ++c) {
        ChromaSums sums;
        for (int32_t i = 0; i < Group; ++i) {
            const int32_t x = Group * c + i;
            const Pixel3 p = readRgb<Bgr>(in, x);
            out.luma(x, Luma::luma(p, x));
            sums.add(p);
        }
        out.chroma(c, Chroma::cb(sums), Chroma::cr(sums));
    }
    if constexpr (Odd::kWrites) {
        if (width % Group != 0) {
            const int32_t x = groups * Group;
            Odd::template write<Luma>(out, readRgb<Bgr>(in, x), x);
        }
    }
}

// What a last pixel without a pair does (4:2:2 with an odd width). One that is left
// unwritten is not read either.
struct OddLeftUnwritten {
    static constexpr bool kWrites = false;
    template <class Luma, class Sink>
    PXK_INLINE static void write(const Sink&, Pixel3, int32_t) {}
};
// Its Y is written.
struct OddLumaOnly {
    static constexpr bool kWrites = true;
    template <class Luma, class Sink>
    PXK_INLINE static void write(const Sink& out, Pixel3 p, int32_t x) {
        out.luma(x, Luma::luma(p, x));
    }
};
// Its Y, and the chroma that Lone gives it (Lone::cb, Lone::cr).
template <class Lone>
struct OddLumaAndChroma {
    static constexpr bool kWrites = true;
    template <class Luma, class Sink>
    PXK_INLINE static void write(const Sink& out, Pixel3 p, int32_t x) {
        out.luma(x, Luma::luma(p, x));
        out.loneChroma(x, Lone::cb(p), Lone::cr(p));
    }
};

}  // namespace yuv
}  // namespace pxk
