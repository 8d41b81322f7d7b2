// The alpha channel of the forms that carry it alongside a three-channel conversion:
// byte 3 of four-byte pixels taken into a plane, a plane put into byte 3, or a plane
// copied. The colour conversion of the row does not touch these bytes.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <cstring>

#include "frame/pixel_block.h"
#include "frame/vec.h"

namespace pxk {
namespace colorimetric {

// Bytes of a plane row put into byte 3 of each of `width` four-byte pixels; bytes 0
// to 2 are left. Sixteen pixels at a time, then one by one.
PXK_INLINE void putFourthBytes(const uint8_t* alpha, uint8_t* dst, int32_t width) {
    using namespace vec;
    int32_t x = 0;
    const V128 colour = splat32<V128>(0x00FFFFFF);
    for (; width - x >= 16; x += 16) {
        const V128 a = load128(alpha + x);
        const V128 lo = unpacklo8(zero<V128>(), a), hi = unpackhi8(zero<V128>(), a);  // a in the high byte
        const V128 inByte3[4] = {unpacklo16(zero<V128>(), lo), unpackhi16(zero<V128>(), lo),
                                 unpacklo16(zero<V128>(), hi), unpackhi16(zero<V128>(), hi)};
        uint8_t* p = dst + pixelOffset<4>(x);
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) store128(p + 16 * i, or_(and_(load128(p + 16 * i), colour), inByte3[i]));
    }
    for (; x < width; ++x) dst[pixelOffset<4>(x) + 3] = alpha[x];
}

// One row of the alpha plane copied.
PXK_INLINE void copyPlaneRow(const uint8_t* src, uint8_t* dst, int32_t width) {
    std::memcpy(dst, src, static_cast<std::size_t>(width));
}

}  // namespace colorimetric
}  // namespace pxk
