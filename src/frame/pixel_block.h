// Blocks of pixels for the SSE2 kernels, and the memory layouts they are read from
// and written to.
//
// A vector kernel works on 16 pixels at a time. Each channel is held as two vectors
// of eight 16-bit lanes: half 0 carries the even pixels (0, 2, ..., 14), half 1 the
// odd ones. That order is what the packed three-channel network produces with the
// fewest shuffles, and every layout here reads and writes it, so layouts can be mixed
// freely. Stores saturate each lane to 8 bits.
#pragma once

#include "frame/simd_inline.h"

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace pxk {

// Eight pixels of three channels, one vector of 16-bit lanes a channel.
struct Lanes3 {
    __m128i c[3];
};

// Sixteen pixels of three channels: half[0] the even pixels, half[1] the odd ones.
struct Block16 {
    Lanes3 half[2];
};

// Sixteen pixels of a packed three-channel row in quad order. Quad q = 3 * s + c holds
// channel c of the pixels s, s + 4, s + 8 and s + 12 (s = 0..3) in four 16-bit lanes,
// and v[r] carries quad 2r in its lower half and quad 2r + 1 in its upper half: the
// quads lie in the order of the packed bytes. Two rounds of the byte network reach
// this order from packed pixels, one round less than Block16 takes, and two merge
// rounds go back; a form that can work on it saves a round each way.
struct Quads16 {
    __m128i v[6];
};

// One pixel of three 8-bit channels, for the scalar tails.
struct Pixel3 {
    uint8_t c[3];
};

namespace simd {

PXK_INLINE __m128i load(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
PXK_INLINE void store(uint8_t* p, __m128i v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }

// Upper eight bytes, moved to the lower half. A dword shuffle writes a new register and
// leaves v as it was, so no copy of v is needed when v is used again.
PXK_INLINE __m128i upperHalf(__m128i v) { return _mm_shuffle_epi32(v, _MM_SHUFFLE(3, 2, 3, 2)); }

// One round of the three-register byte network. Three rounds take 48 bytes of packed
// three-channel pixels to [c0 even | c1 even], [c2 even | c0 odd], [c1 odd | c2 odd];
// a fourth would finish the split into planes.
PXK_INLINE void splitRound(__m128i& a, __m128i& b, __m128i& c) {
    const __m128i na = _mm_unpacklo_epi8(a, upperHalf(b));
    const __m128i nb = _mm_unpacklo_epi8(upperHalf(a), c);
    const __m128i nc = _mm_unpacklo_epi8(b, upperHalf(c));
    a = na;
    b = nb;
    c = nc;
}

// The inverse of splitRound: even bytes and odd bytes gathered back.
PXK_INLINE void mergeRound(__m128i& a, __m128i& b, __m128i& c) {
    const __m128i lowBytes = _mm_set1_epi16(0x00FF);
    const __m128i na = _mm_packus_epi16(_mm_and_si128(a, lowBytes), _mm_and_si128(b, lowBytes));
    const __m128i nb = _mm_packus_epi16(_mm_and_si128(c, lowBytes), _mm_srli_epi16(a, 8));
    const __m128i nc = _mm_packus_epi16(_mm_srli_epi16(b, 8), _mm_srli_epi16(c, 8));
    a = na;
    b = nb;
    c = nc;
}

// Even and odd bytes of a vector as two vectors of eight 16-bit lanes.
PXK_INLINE void evenOddLanes(__m128i v, __m128i& even, __m128i& odd) {
    even = _mm_and_si128(v, _mm_set1_epi16(0x00FF));
    odd = _mm_srli_epi16(v, 8);
}

// Sixteen bytes in pixel order from even and odd 16-bit lanes, saturated to 8 bits.
PXK_INLINE __m128i fromEvenOddLanes(__m128i even, __m128i odd) {
    const __m128i packed = _mm_packus_epi16(even, odd);
    return _mm_unpacklo_epi8(packed, upperHalf(packed));
}

// Quad Q of a Quads16 in the lower half of a vector; the upper half is left unspecified.
template <int Q>
PXK_INLINE __m128i quadLow(const Quads16& q) {
    if constexpr (Q % 2 == 0) {
        return q.v[Q / 2];
    } else {
        return upperHalf(q.v[Q / 2]);
    }
}

// Quad Lo in the lower half and quad Hi in the upper half of one vector.
template <int Lo, int Hi>
PXK_INLINE __m128i joinQuads(const Quads16& q) {
    constexpr int lo = Lo % 2, hi = Hi % 2;
    if constexpr (Lo / 2 == Hi / 2) {
        return _mm_shuffle_epi32(q.v[Lo / 2], _MM_SHUFFLE(2 * hi + 1, 2 * hi, 2 * lo + 1, 2 * lo));
    } else {
        return _mm_castpd_si128(
            _mm_shuffle_pd(_mm_castsi128_pd(q.v[Lo / 2]), _mm_castsi128_pd(q.v[Hi / 2]), lo | (hi << 1)));
    }
}

// Sixteen pixels of four bytes, as four vectors of four pixels, from 16-bit lanes of
// three channels and an alpha (even and odd halves), saturated to 8 bits.
PXK_INLINE void fourChannelPixels(const Lanes3& even, __m128i alphaEven, const Lanes3& odd,
                              __m128i alphaOdd, __m128i out[4]) {
    __m128i pix[2][2];  // [even/odd][pixels 0-7 / 8-15], four pixels a vector
    const Lanes3* halves[2] = {&even, &odd};
    const __m128i alphas[2] = {alphaEven, alphaOdd};
    PXK_UNROLL
    for (int h = 0; h < 2; ++h) {
        const __m128i c0c2 = _mm_packus_epi16(halves[h]->c[0], halves[h]->c[2]);
        const __m128i c1c3 = _mm_packus_epi16(halves[h]->c[1], alphas[h]);
        const __m128i c01 = _mm_unpacklo_epi8(c0c2, c1c3);
        const __m128i c23 = _mm_unpackhi_epi8(c0c2, c1c3);
        pix[h][0] = _mm_unpacklo_epi16(c01, c23);
        pix[h][1] = _mm_unpackhi_epi16(c01, c23);
    }
    out[0] = _mm_unpacklo_epi32(pix[0][0], pix[1][0]);
    out[1] = _mm_unpackhi_epi32(pix[0][0], pix[1][0]);
    out[2] = _mm_unpacklo_epi32(pix[0][1], pix[1][1]);
    out[3] = _mm_unpackhi_epi32(pix[0][1], pix[1][1]);
}

}  // namespace simd

// Byte offset of column x in a row of Bytes-byte pixels, as a pointer difference so
// that no int product can overflow, however wide the row.
template <int Bytes>
PXK_INLINE std::ptrdiff_t pixelOffset(int32_t x) {
    return static_cast<std::ptrdiff_t>(Bytes) * x;
}

// The first three bytes of the pixel at column x of a packed row of Bytes-byte pixels.
template <int Bytes>
PXK_INLINE Pixel3 readPacked(const uint8_t* row, int32_t x) {
    const uint8_t* p = row + pixelOffset<Bytes>(x);
    return Pixel3{{p[0], p[1], p[2]}};
}

// Writes the first three bytes of the pixel at column x; any further byte is left.
template <int Bytes>
PXK_INLINE void writePacked(uint8_t* row, int32_t x, Pixel3 v) {
    uint8_t* p = row + pixelOffset<Bytes>(x);
    p[0] = v.c[0];
    p[1] = v.c[1];
    p[2] = v.c[2];
}

// ---------------------------------------------------------------------------------
// Layouts. Each is bound to one row: load(x) / store(x, block) move the 16 pixels
// from column x, load1(x) / store1(x, pixel) one pixel for the scalar tail. kPlanes
// and kBytes (bytes a pixel in each plane) let the generic row kernel stage a short
// block through a local buffer (see convert_row.h).
// ---------------------------------------------------------------------------------

// Three interleaved channels (C3), read.
struct PackedC3In {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 3;
    const uint8_t* plane[1];

    // Sixteen pixels from column x through `Rounds` rounds of the byte network, then
    // widened to six vectors of 16-bit lanes in the order of the three registers.
    template <int Rounds>
    PXK_INLINE void loadSplit(int32_t x, __m128i w[6]) const {
        const uint8_t* p = plane[0] + pixelOffset<3>(x);
        __m128i a = simd::load(p), b = simd::load(p + 16), c = simd::load(p + 32);
        PXK_UNROLL
        for (int r = 0; r < Rounds; ++r) simd::splitRound(a, b, c);
        const __m128i z = _mm_setzero_si128();
        w[0] = _mm_unpacklo_epi8(a, z);
        w[1] = _mm_unpackhi_epi8(a, z);
        w[2] = _mm_unpacklo_epi8(b, z);
        w[3] = _mm_unpackhi_epi8(b, z);
        w[4] = _mm_unpacklo_epi8(c, z);
        w[5] = _mm_unpackhi_epi8(c, z);
    }
    PXK_INLINE Block16 load(int32_t x) const {
        __m128i w[6];
        loadSplit<3>(x, w);
        Block16 out;
        out.half[0] = Lanes3{{w[0], w[1], w[2]}};
        out.half[1] = Lanes3{{w[3], w[4], w[5]}};
        return out;
    }
    // The same pixels in quad order: one round fewer.
    PXK_INLINE Quads16 loadQuads(int32_t x) const {
        Quads16 out;
        loadSplit<2>(x, out.v);
        return out;
    }
    PXK_INLINE Pixel3 load1(int32_t x) const { return readPacked<3>(plane[0], x); }
};

// Three interleaved channels (C3), written.
struct PackedC3Out {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 3;
    uint8_t* plane[1];

    // Six vectors of 16-bit lanes, saturated to bytes in pairs, through `Rounds` merge
    // rounds back to packed pixels at column x: the inverse of PackedC3In::loadSplit.
    template <int Rounds>
    PXK_INLINE void storeMerged(int32_t x, const __m128i w[6]) const {
        __m128i a = _mm_packus_epi16(w[0], w[1]);
        __m128i b = _mm_packus_epi16(w[2], w[3]);
        __m128i c = _mm_packus_epi16(w[4], w[5]);
        PXK_UNROLL
        for (int r = 0; r < Rounds; ++r) simd::mergeRound(a, b, c);
        uint8_t* p = plane[0] + pixelOffset<3>(x);
        simd::store(p, a);
        simd::store(p + 16, b);
        simd::store(p + 32, c);
    }
    PXK_INLINE void store(int32_t x, const Block16& v) const {
        const Lanes3& e = v.half[0];
        const Lanes3& o = v.half[1];
        const __m128i w[6] = {e.c[0], e.c[1], e.c[2], o.c[0], o.c[1], o.c[2]};
        storeMerged<3>(x, w);
    }
    // Sixteen pixels in quad order, saturated to 8 bits: one round fewer.
    PXK_INLINE void storeQuads(int32_t x, const Quads16& q) const { storeMerged<2>(x, q.v); }
    PXK_INLINE void store1(int32_t x, Pixel3 v) const { writePacked<3>(plane[0], x, v); }
};

// Four interleaved bytes a pixel (AC4, C4), read: the fourth byte is ignored.
struct PackedC4In {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 4;
    const uint8_t* plane[1];

    PXK_INLINE Block16 load(int32_t x) const {
        const uint8_t* p = plane[0] + pixelOffset<4>(x);
        const __m128i x0 = simd::load(p), x1 = simd::load(p + 16);
        const __m128i x2 = simd::load(p + 32), x3 = simd::load(p + 48);
        // Byte transpose: [c0 even | c1 even], [c2 even | c3 even] and the same for the
        // odd pixels, four pixels in each quarter.
        const __m128i t0 = _mm_unpacklo_epi8(x0, x1), t1 = _mm_unpackhi_epi8(x0, x1);
        const __m128i t2 = _mm_unpacklo_epi8(x2, x3), t3 = _mm_unpackhi_epi8(x2, x3);
        const __m128i u0 = _mm_unpacklo_epi8(t0, t1), u1 = _mm_unpackhi_epi8(t0, t1);
        const __m128i u2 = _mm_unpacklo_epi8(t2, t3), u3 = _mm_unpackhi_epi8(t2, t3);
        const __m128i even01 = _mm_unpacklo_epi32(u0, u2), even23 = _mm_unpackhi_epi32(u0, u2);
        const __m128i odd01 = _mm_unpacklo_epi32(u1, u3), odd23 = _mm_unpackhi_epi32(u1, u3);
        const __m128i z = _mm_setzero_si128();
        Block16 out;
        out.half[0] = Lanes3{{_mm_unpacklo_epi8(even01, z), _mm_unpackhi_epi8(even01, z),
                              _mm_unpacklo_epi8(even23, z)}};
        out.half[1] = Lanes3{{_mm_unpacklo_epi8(odd01, z), _mm_unpackhi_epi8(odd01, z),
                              _mm_unpacklo_epi8(odd23, z)}};
        return out;
    }
    PXK_INLINE Pixel3 load1(int32_t x) const { return readPacked<4>(plane[0], x); }
};

// Four bytes a pixel whose fourth byte keeps what the destination held (AC4). The
// vector store reads the destination's bytes and puts their alpha back in place; the
// scalar store touches bytes 0 to 2 only.
struct PackedAC4KeepOut {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 4;
    uint8_t* plane[1];

    PXK_INLINE void store(int32_t x, const Block16& v) const {
        uint8_t* p = plane[0] + pixelOffset<4>(x);
        const __m128i alphaMask = _mm_set1_epi32(static_cast<int32_t>(0xFF000000u));
        const __m128i z = _mm_setzero_si128();
        __m128i colour[4];
        simd::fourChannelPixels(v.half[0], z, v.half[1], z, colour);
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) {
            const __m128i old = simd::load(p + 16 * i);
            simd::store(p + 16 * i, _mm_or_si128(colour[i], _mm_and_si128(old, alphaMask)));
        }
    }
    PXK_INLINE void store1(int32_t x, Pixel3 v) const { writePacked<4>(plane[0], x, v); }
};

// Four bytes a pixel whose fourth byte is set to a given alpha (C4).
struct PackedC4AlphaOut {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 4;
    uint8_t* plane[1];
    uint8_t alpha;

    PXK_INLINE void store(int32_t x, const Block16& v) const {
        const __m128i a = _mm_set1_epi16(alpha);
        __m128i pixels[4];
        simd::fourChannelPixels(v.half[0], a, v.half[1], a, pixels);
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) simd::store(plane[0] + pixelOffset<4>(x) + 16 * i, pixels[i]);
    }
    PXK_INLINE void store1(int32_t x, Pixel3 v) const {
        writePacked<4>(plane[0], x, v);
        plane[0][pixelOffset<4>(x) + 3] = alpha;
    }
};

// Three planes of one channel each (P3), read.
struct PlanarP3In {
    static constexpr int kPlanes = 3;
    static constexpr int kBytes = 1;
    const uint8_t* plane[3];

    PXK_INLINE Block16 load(int32_t x) const {
        Block16 out;
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) {
            simd::evenOddLanes(simd::load(plane[c] + x), out.half[0].c[c], out.half[1].c[c]);
        }
        return out;
    }
    PXK_INLINE Pixel3 load1(int32_t x) const { return Pixel3{{plane[0][x], plane[1][x], plane[2][x]}}; }
};

// Three planes of one channel each (P3), written.
struct PlanarP3Out {
    static constexpr int kPlanes = 3;
    static constexpr int kBytes = 1;
    uint8_t* plane[3];

    PXK_INLINE void store(int32_t x, const Block16& v) const {
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) {
            simd::store(plane[c] + x, simd::fromEvenOddLanes(v.half[0].c[c], v.half[1].c[c]));
        }
    }
    PXK_INLINE void store1(int32_t x, Pixel3 v) const {
        plane[0][x] = v.c[0];
        plane[1][x] = v.c[1];
        plane[2][x] = v.c[2];
    }
};

}  // namespace pxk
