// Rows of the high-definition and CbYCr422 members: packed CbYCr422 (Cb Y0 Cr Y1, two
// pixels to four bytes) read into blocks and written from groups of pairs, 4:2:0 planes
// read with each chroma sample replicated over its pair, and the row kernel that turns
// either into RGB or BGR pixels.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/convert_row.h"
#include "frame/pixel_block.h"
#include "frame/vec.h"

namespace pxk {
namespace yuv {

namespace hd {

using namespace vec;

// Y, Cb, Cr of 16 pixels a lane from 16 luma words a lane in pixel order (y0: pixels 0
// to 7, y1: 8 to 15) and the eight chroma words of their pairs: the block's halves.
template <class V>
PXK_INLINE Block<V> pairBlock(V y0, V y1, V cb, V cr) {
    Block<V> out;
    if constexpr (simd::packedPosition(1) == 1) {
        // Halves in pixel order: each chroma word serves two neighbouring lanes.
        out.half[0] = Lanes3<V>{{y0, unpacklo16(cb, cb), unpacklo16(cr, cr)}};
        out.half[1] = Lanes3<V>{{y1, unpackhi16(cb, cb), unpackhi16(cr, cr)}};
    } else {
        // Even pixels, then odd ones: pixel 2i and 2i + 1 both take chroma word i.
        const V low = splat32<V>(0xFFFF);
        out.half[0] = Lanes3<V>{{packs32(and_(y0, low), and_(y1, low)), cb, cr}};
        out.half[1] = Lanes3<V>{{packs32(srli32<16>(y0), srli32<16>(y1)), cb, cr}};
    }
    return out;
}

// Eight bytes a lane from p (lane L: the bytes 8 L to 8 L + 7) as 16-bit words.
PXK_INLINE V128 widenEight(const uint8_t* p, V128) {
    return unpacklo8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), zero<V128>());
}
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE V256 widenEight(const uint8_t* p, V256) { return _mm256_cvtepu8_epi16(load128(p)); }
#endif

}  // namespace hd

// Packed CbYCr422 read: pixel x has its Y at byte 2 x + 1; pair c has Cb at byte 4 c
// and Cr at 4 c + 2. Memory is vec::UnalignedMemory or vec::AlignedMemory.
template <class Memory>
struct CbYCrIn {
    const uint8_t* row;

    // Sixteen pixels a lane from column x (even): 32 bytes a lane.
    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        using namespace vec;
        const uint8_t* p = row + pixelOffset<2>(x);
        const V a = Memory::template loadLanes<V, 32>(p), b = Memory::template loadLanes<V, 32>(p + 16);
        const V chromaA = and_(a, splat16<V>(0x00FF)), chromaB = and_(b, splat16<V>(0x00FF));
        const V low = splat32<V>(0xFFFF);
        return hd::pairBlock(srli16<8>(a), srli16<8>(b), packs32(and_(chromaA, low), and_(chromaB, low)),
                             packs32(srli32<16>(chromaA), srli32<16>(chromaB)));
    }
    // Pixel x as Y, Cb, Cr of its pair.
    PXK_INLINE Pixel3 load1(int32_t x) const {
        const uint8_t* g = row + pixelOffset<4>(x / 2);
        return Pixel3{{g[1 + 2 * (x % 2)], g[0], g[2]}};
    }
    // A last pixel x of an odd width: its Y and Cb from its own two bytes, its Cr from
    // the pair before (at a width of 1, where there is none, its Cb stands in).
    PXK_INLINE Pixel3 loadLast(int32_t x) const {
        const uint8_t* g = row + pixelOffset<2>(x);
        return Pixel3{{g[1], g[0], x == 0 ? g[0] : g[-2]}};
    }
};

// One row of 4:2:0 planes: Y at full width, Cb and Cr one sample a pair (the row of
// the row pair's chroma), each chroma sample serving both pixels of its pair.
struct Planar420In {
    const uint8_t* y;
    const uint8_t* cb;
    const uint8_t* cr;

    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        using namespace vec;
        const V luma = loadLanes<V, 16>(y + x);
        const V z = zero<V>();
        V y0 = unpacklo8(luma, z), y1 = unpackhi8(luma, z);
        return hd::pairBlock(y0, y1, hd::widenEight(cb + x / 2, V{}), hd::widenEight(cr + x / 2, V{}));
    }
    PXK_INLINE Pixel3 load1(int32_t x) const { return Pixel3{{y[x], cb[x / 2], cr[x / 2]}}; }
};

// Converts `pixels` (even) pixels of a row of pairs from `in` to `out` by Forms (see
// ColumnForms; both its forms are the same here): vector blocks of the widest vector
// and of 16 pixels, then pixel by pixel by the scalar form, with the same bits.
template <class Forms, class In, class Out>
PXK_INLINE void convertPairs(const In& in, const Out& out, int32_t pixels) {
    int32_t x = 0;
    for (; pixels - x >= kBlockPixels<vec::Widest>; x += kBlockPixels<vec::Widest>) {
        out.store(x, detail::applyForms<Forms>(in.template load<vec::Widest>(x)));
    }
    if (pixels - x >= kBlockPixels<vec::V128>) {
        out.store(x, detail::applyForms<Forms>(in.template load<vec::V128>(x)));
        x += kBlockPixels<vec::V128>;
    }
    for (; x < pixels; ++x) out.store1(x, Forms::tail(in.load1(x)));
}

// Packed CbYCr422 written from groups of pairs (the sink of convertGroupsRow): Y of
// pixel x at byte 2 x + 1, Cb and Cr of pair c at 4 c and 4 c + 2. Memory as in
// CbYCrIn.
template <class Memory>
struct CbYCrSink {
    uint8_t* row;

    PXK_INLINE void luma(int32_t x, uint8_t v) const { row[pixelOffset<2>(x) + 1] = v; }
    PXK_INLINE void chroma(int32_t c, uint8_t vb, uint8_t vr) const {
        row[pixelOffset<4>(c)] = vb;
        row[pixelOffset<4>(c) + 2] = vr;
    }
    // A last pixel x without a pair: its Cb before its Y; its Cr has no place.
    PXK_INLINE void loneChroma(int32_t x, uint8_t vb, uint8_t) const { row[pixelOffset<2>(x)] = vb; }
    // Sixteen pixels a lane from column x: Y bytes in pixel order, chromaBytes holding
    // [Cb of the eight pairs | Cr of the eight pairs]; 32 bytes a lane.
    template <class V>
    PXK_INLINE void block422(int32_t x, V lumaBytes, V chromaBytes) const {
        const V cbcr = vec::unpacklo8(chromaBytes, vec::upperHalf(chromaBytes));  // Cb0 Cr0 Cb1 Cr1 ...
        uint8_t* p = row + pixelOffset<2>(x);
        Memory::template storeLanes<V, 32>(p, vec::unpacklo8(cbcr, lumaBytes));
        Memory::template storeLanes<V, 32>(p + 16, vec::unpackhi8(cbcr, lumaBytes));
    }
};

// The kernel of a two-kernel member: the aligned one (aligned loads and stores) when
// every pointer and step is a multiple of 16, so that each 16-byte chunk of every row
// lies on a multiple of 16; the unaligned one otherwise. Both give the same bits. The
// avx2 build decides by the same 16-byte test.
template <class Run>
PXK_INLINE void byAlignment(const void* src, int32_t srcStep, const void* dst, int32_t dstStep, Run&& run) {
    const bool aligned = ((reinterpret_cast<std::uintptr_t>(src) | reinterpret_cast<std::uintptr_t>(dst) |
                           static_cast<std::uint32_t>(srcStep) | static_cast<std::uint32_t>(dstStep)) &
                          15u) == 0;
    if (aligned) {
        run(vec::AlignedMemory{});
    } else {
        run(vec::UnalignedMemory{});
    }
}

}  // namespace yuv
}  // namespace pxk
