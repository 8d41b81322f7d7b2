// Rows of the high-definition and CbYCr422 members: packed CbYCr422 (Cb Y0 Cr Y1, two
// pixels to four bytes) written from groups of pairs, and the choice between the
// aligned and the unaligned kernel. (CbYCr422 is read by PackedC2In.)
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/convert_row.h"
#include "frame/pixel_block.h"
#include "frame/vec.h"

namespace pxk {
namespace yuv {

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
