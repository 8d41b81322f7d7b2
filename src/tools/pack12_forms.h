// The two forms of 12-bit packing over a word of 32 bits.
//   pair:  sample a in bits 0-15, sample b in bits 16-31;
//   group: byte 0 in bits 0-7, byte 1 in bits 8-15, byte 2 in bits 16-23, where
//          byte 0 = a bits 11-4, byte 1 = a bits 3-0 | b bits 11-8, byte 2 = b bits 7-0.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

namespace pxk {
namespace pack12 {

// One pair or group in a uint32_t (the tail of a row; the vector blocks move the same
// bits by the byte networks of pack12.cpp).
struct ScalarWords {
    using T = uint32_t;
    PXK_INLINE static T and_(T a, T b) { return a & b; }
    PXK_INLINE static T or_(T a, T b) { return a | b; }
    template <int N>
    PXK_INLINE static T shl(T a) { return a << N; }
    template <int N>
    PXK_INLINE static T shr(T a) { return a >> N; }
    PXK_INLINE static T constant(uint32_t v) { return v; }
};

// A pair of samples to its group of three bytes; bits 15-12 of each sample are dropped.
template <class W, class T>
PXK_INLINE T packPair(T pair) {
    const T twelve = W::constant(0xFFF), low8 = W::constant(0xFF);
    const T a = W::and_(pair, twelve);
    const T b = W::and_(W::template shr<16>(pair), twelve);
    const T byte0 = W::template shr<4>(a);
    const T byte1 = W::or_(W::and_(W::template shl<4>(a), W::constant(0xF0)), W::template shr<8>(b));
    const T byte2 = W::and_(b, low8);
    return W::or_(W::or_(byte0, W::template shl<8>(byte1)), W::template shl<16>(byte2));
}

// A group of three bytes to its pair of samples (the top four bits of each are 0).
template <class W, class T>
PXK_INLINE T unpackGroup(T group) {
    const T low8 = W::constant(0xFF);
    const T byte0 = W::and_(group, low8);
    const T byte1 = W::and_(W::template shr<8>(group), low8);
    const T byte2 = W::and_(W::template shr<16>(group), low8);
    const T a = W::or_(W::template shl<4>(byte0), W::template shr<4>(byte1));
    const T b = W::or_(W::template shl<8>(W::and_(byte1, W::constant(0x0F))), byte2);
    return W::or_(a, W::template shl<16>(b));
}

}  // namespace pack12
}  // namespace pxk
