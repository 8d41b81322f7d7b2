// Blocks of pixels for the vector kernels, and the memory layouts they are read from
// and written to.
//
// A block is 16 pixels in each 128-bit lane of its vector type (16 in the 128-bit type,
// 32 in the 256-bit one; lane L holds pixels 16 L to 16 L + 15). Within a lane each
// channel is held as two vectors of eight 16-bit lanes: half 0 carries the even pixels
// (0, 2, ..., 14), half 1 the odd ones. That order comes from packed and planar rows
// with the fewest shuffles, and every layout reads and writes it, so layouts can be
// mixed freely. Stores saturate each lane to 8 bits.
//
// Each layout is written once over the vector type: loadLanes/storeLanes fetch one
// 16-byte chunk a lane, and every shuffle is in-lane, so the wider block is the
// narrow one twice over. Where the avx2 build has byte shuffles, the packed layouts
// use a shorter network of their own; it delivers the same order.
#pragma once

#include "frame/simd_inline.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "frame/vec.h"

namespace pxk {

// Eight pixels (per 128-bit lane) of three channels, one vector of 16-bit lanes a
// channel.
template <class V>
struct Lanes3 {
    V c[3];
};

// Sixteen pixels per 128-bit lane of three channels: half[0] the even pixels,
// half[1] the odd ones.
template <class V>
struct Block {
    Lanes3<V> half[2];
};

// Pixels a block of vector type V covers.
template <class V>
inline constexpr int32_t kBlockPixels = 16 * vec::kLanes<V>;

// Sixteen pixels of a packed three-channel row in quad order (128-bit, SSE2 network
// only). Quad q = 3 * s + c holds channel c of the pixels s, s + 4, s + 8 and s + 12
// (s = 0..3) in four 16-bit lanes, and v[r] carries quad 2r in its lower half and quad
// 2r + 1 in its upper half: the quads lie in the order of the packed bytes. Two rounds
// of the byte network reach this order from packed pixels, one round less than a Block
// takes, and two merge rounds go back; a form that can work on it saves a round each
// way.
struct Quads16 {
    vec::V128 v[6];
};

// N vectors of terms that a form computes once for pixels that share them.
template <class V, int N>
struct Terms {
    V v[N];
};

// One pixel of three 8-bit channels, for the scalar tails.
struct Pixel3 {
    uint8_t c[3];
};

namespace simd {

using namespace vec;

// One round of the three-register byte network. Three rounds take 48 bytes of packed
// three-channel pixels to [c0 even | c1 even], [c2 even | c0 odd], [c1 odd | c2 odd];
// a fourth would finish the split into planes.
template <class V>
PXK_INLINE void splitRound(V& a, V& b, V& c) {
    const V na = unpacklo8(a, upperHalf(b));
    const V nb = unpacklo8(upperHalf(a), c);
    const V nc = unpacklo8(b, upperHalf(c));
    a = na;
    b = nb;
    c = nc;
}

// The inverse of splitRound: even bytes and odd bytes gathered back.
template <class V>
PXK_INLINE void mergeRound(V& a, V& b, V& c) {
    const V lowBytes = splat16<V>(0x00FF);
    const V na = packus16(and_(a, lowBytes), and_(b, lowBytes));
    const V nb = packus16(and_(c, lowBytes), srli16<8>(a));
    const V nc = packus16(srli16<8>(b), srli16<8>(c));
    a = na;
    b = nb;
    c = nc;
}

#if defined(PXKCC_TARGET_AVX2)
// Sixteen bytes in pixel order (per lane) as the block's two halves of 16-bit lanes:
// pixels 0 to 7, then 8 to 15.
template <class V>
PXK_INLINE void toHalves(V v, V& half0, V& half1) {
    half0 = unpacklo8(v, zero<V>());
    half1 = unpackhi8(v, zero<V>());
}
// The position of pixel p in the bytes that packHalves gives.
constexpr int packedPosition(int p) { return p; }
#else
// Sixteen bytes in pixel order (per lane) as the block's two halves of 16-bit lanes:
// the even pixels, then the odd ones.
template <class V>
PXK_INLINE void toHalves(V v, V& half0, V& half1) {
    half0 = and_(v, splat16<V>(0x00FF));
    half1 = srli16<8>(v);
}
// The position of pixel p in the bytes that packHalves gives.
constexpr int packedPosition(int p) { return (p % 2) * 8 + p / 2; }
#endif

// Sixteen bytes (per lane) in pixel order as 16-bit lanes of the even pixels and of
// the odd pixels (the block's own halves in the sse2 build).
template <class V>
PXK_INLINE void evenOddHalves(V v, V& even, V& odd) {
    even = and_(v, splat16<V>(0x00FF));
    odd = srli16<8>(v);
}

// The even pixels and the odd pixels (16-bit lanes) as the block's two halves.
template <class V>
PXK_INLINE void evenOddToBlockHalves(V even, V odd, V& half0, V& half1) {
    if constexpr (packedPosition(1) == 1) {
        half0 = unpacklo16(even, odd);  // pixels 0 to 7
        half1 = unpackhi16(even, odd);
    } else {
        half0 = even;
        half1 = odd;
    }
}

// Eight 16-bit values (per lane), one for each pair of pixels, as the block's two
// halves: each value serves both pixels of its pair.
template <class V>
PXK_INLINE void pairSharedHalves(V perPair, V& half0, V& half1) {
    if constexpr (packedPosition(1) == 1) {
        half0 = unpacklo16(perPair, perPair);  // pixels 0 to 7: pairs 0 to 3
        half1 = unpackhi16(perPair, perPair);
    } else {
        half0 = perPair;  // even pixels and odd pixels alike: one each pair
        half1 = perPair;
    }
}

// The two halves as bytes, saturated to 8 bits: pixel p at packedPosition(p).
template <class V>
PXK_INLINE V packHalves(V half0, V half1) {
    return packus16(half0, half1);
}

// For the pixels of one half of a block, unpacked to 32-bit lanes four at a time
// (unpacklo16 / unpackhi16 give the same pattern): all ones in the lanes whose pixel
// has an odd column, zeros in the others.
template <class V>
PXK_INLINE V oddColumnLanes32(int half) {
    if constexpr (packedPosition(1) == 1) {
        return splat32Pattern<V>(0, -1, 0, -1);  // pixels in order: odd and even alternate
    } else {
        return half == 0 ? zero<V>() : splat32<V>(-1);  // even pixels, then odd ones
    }
}

// The sums of the horizontal pairs of pixels (0, 1), (2, 3), ... of a block's two
// halves of one channel, in pair order: eight sums per 128-bit lane.
template <class V>
PXK_INLINE V horizontalPairSums(V half0, V half1) {
    if constexpr (packedPosition(1) == 1) {
        return pairSums16(half0, half1);  // pixels in order: adjacent lanes
    } else {
        return add16(half0, half1);  // even and odd pixels: the same lane of each half
    }
}

// Sums of adjacent pairs of 16-bit lanes: the four sums of each 128-bit lane's eight
// lanes in its lanes 0 to 3, repeated in 4 to 7 (the inputs' sums fit 16 bits).
template <class V>
PXK_INLINE V adjacentSums(V v) {
    const V sums = madd16(v, splat16<V>(1));
    return packs32(sums, sums);
}

// Bytes in pixel order from the block's two halves, saturated to 8 bits.
template <class V>
PXK_INLINE V halvesToPixelBytes(V half0, V half1) {
    const V packed = packHalves(half0, half1);
    if constexpr (packedPosition(1) == 1) {
        return packed;
    } else {
        return unpacklo8(packed, upperHalf(packed));  // even and odd bytes interleaved
    }
}

// Quad Q of a Quads16 in the lower half of a vector; the upper half is left unspecified.
template <int Q>
PXK_INLINE V128 quadLow(const Quads16& q) {
    if constexpr (Q % 2 == 0) {
        return q.v[Q / 2];
    } else {
        return upperHalf(q.v[Q / 2]);
    }
}

// Quad Lo in the lower half and quad Hi in the upper half of one vector.
template <int Lo, int Hi>
PXK_INLINE V128 joinQuads(const Quads16& q) {
    constexpr int lo = Lo % 2, hi = Hi % 2;
    if constexpr (Lo / 2 == Hi / 2) {
        return shuffle32<_MM_SHUFFLE(2 * hi + 1, 2 * hi, 2 * lo + 1, 2 * lo)>(q.v[Lo / 2]);
    } else {
        return _mm_castpd_si128(
            _mm_shuffle_pd(_mm_castsi128_pd(q.v[Lo / 2]), _mm_castsi128_pd(q.v[Hi / 2]), lo | (hi << 1)));
    }
}

// Sixteen pixels (per lane) of four bytes, as four vectors of four pixels each, from
// the block's 16-bit lanes of three channels and an alpha (16-bit lanes, the same in
// every pixel), saturated to 8 bits.
template <class V>
PXK_INLINE void fourChannelPixels(const Block<V>& v, V alpha, V out[4]) {
    if constexpr (packedPosition(1) == 1) {
        // Halves in pixel order: the bytes of each channel, then two rounds of
        // interleaving.
        const V c0 = packHalves(v.half[0].c[0], v.half[1].c[0]);
        const V c1 = packHalves(v.half[0].c[1], v.half[1].c[1]);
        const V c2 = packHalves(v.half[0].c[2], v.half[1].c[2]);
        const V c3 = packus16(alpha, alpha);
        const V c01lo = unpacklo8(c0, c1), c01hi = unpackhi8(c0, c1);
        const V c23lo = unpacklo8(c2, c3), c23hi = unpackhi8(c2, c3);
        out[0] = unpacklo16(c01lo, c23lo);
        out[1] = unpackhi16(c01lo, c23lo);
        out[2] = unpacklo16(c01hi, c23hi);
        out[3] = unpackhi16(c01hi, c23hi);
    } else {
        // Even and odd halves: four pixels of each from the bytes of both, then the
        // even and odd pixels interleaved.
        V pix[2][2];  // [even/odd][pixels 0-7 / 8-15], four pixels a vector
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) {
            const V c0c2 = packus16(v.half[h].c[0], v.half[h].c[2]);
            const V c1c3 = packus16(v.half[h].c[1], alpha);
            const V c01 = unpacklo8(c0c2, c1c3);
            const V c23 = unpackhi8(c0c2, c1c3);
            pix[h][0] = unpacklo16(c01, c23);
            pix[h][1] = unpackhi16(c01, c23);
        }
        out[0] = unpacklo32(pix[0][0], pix[1][0]);
        out[1] = unpackhi32(pix[0][0], pix[1][0]);
        out[2] = unpacklo32(pix[0][1], pix[1][1]);
        out[3] = unpackhi32(pix[0][1], pix[1][1]);
    }
}

// ---------------------------------------------------------------------------------
// Byte-shuffle networks (avx2 build). A lane's 48 packed three-channel bytes lie in
// three chunks; since 16 = 1 modulo 3, each channel owns a different set of byte
// positions in each chunk, and the three sets partition the 16 positions. So two
// blends gather every byte of one channel into one vector, and one shuffle puts them
// in pixel order; the store runs the same steps backwards.
// ---------------------------------------------------------------------------------

struct ByteTable {
    uint8_t b[16];
};

// After the blends, position j of channel c's vector holds the byte of chunk
// (c - j) mod 3 at position j, which is pixel (16 * chunk + j) / 3.
constexpr int chunkOf(int c, int j) { return ((c - j) % 3 + 3) % 3; }
constexpr int pixelAt(int c, int j) { return (16 * chunkOf(c, j) + j) / 3; }

// The tables are built at compile time, once, into constant arrays indexed by chunk and
// channel; the unrolled loops below index them with constants.
struct C3Tables {
    ByteTable channelPositions[3][3];  // [chunk][c]: top bit set where chunk holds channel c
    ByteTable gatheredToPixels[3];     // [c]: pixel i sits at position (3 i + c) % 16
    ByteTable packedToGathered[3];     // [c]: packed halves (pixel p at packedPosition(p))
                                       //      into channel c's gathered order
};

constexpr C3Tables makeC3Tables() {
    C3Tables t{};
    for (int chunk = 0; chunk < 3; ++chunk)
        for (int c = 0; c < 3; ++c)
            for (int j = 0; j < 16; ++j)
                t.channelPositions[chunk][c].b[j] = ((16 * chunk + j) % 3 == c) ? 0x80 : 0x00;
    for (int c = 0; c < 3; ++c) {
        for (int i = 0; i < 16; ++i) t.gatheredToPixels[c].b[i] = static_cast<uint8_t>((3 * i + c) % 16);
        for (int j = 0; j < 16; ++j) {
            const int p = pixelAt(c, j);
            t.packedToGathered[c].b[j] = static_cast<uint8_t>(packedPosition(p));
        }
    }
    return t;
}
inline constexpr C3Tables kC3Tables = makeC3Tables();

// Four-byte pixels: shuffle of one 16-byte chunk (four pixels) into channel order,
// four bytes a channel.
constexpr ByteTable makePixelsToChannels() {
    ByteTable t{};
    for (int c = 0; c < 4; ++c)
        for (int i = 0; i < 4; ++i) t.b[4 * c + i] = static_cast<uint8_t>(4 * i + c);
    return t;
}
inline constexpr ByteTable kPixelsToChannels = makePixelsToChannels();

template <class V>
PXK_INLINE V table(const ByteTable& t) {
    return bytesInEachLane<V>(t.b);
}

}  // namespace simd

// Byte offset of column x in a row of Bytes-byte pixels, as a pointer difference so
// that no int product can overflow, however wide the row.
template <int Bytes>
PXK_INLINE std::ptrdiff_t pixelOffset(int32_t x) {
    return static_cast<std::ptrdiff_t>(Bytes) * x;
}

// The first three bytes of the pixel at column x of a packed row of Bytes-byte pixels.
// The byte offset of column x in plane i of a layout: x times the layout's bytes a
// pixel, unless the layout has planes of its own resolution (planeOffset).
template <class Layout, class = void>
struct HasPlaneOffset : std::false_type {};
template <class Layout>
struct HasPlaneOffset<Layout, std::void_t<decltype(Layout::planeOffset(0, 0))>> : std::true_type {};

template <class Layout>
PXK_INLINE std::ptrdiff_t planeOffsetOf(int plane, int32_t x) {
    if constexpr (HasPlaneOffset<Layout>::value) {
        return Layout::planeOffset(plane, x);
    } else {
        return pixelOffset<Layout::kBytes>(x);
    }
}

// The layout moved right by `pixels` columns (a multiple of every plane's grouping).
template <class Layout>
PXK_INLINE Layout shiftedBy(Layout layout, int32_t pixels) {
    PXK_UNROLL
    for (int i = 0; i < Layout::kPlanes; ++i) layout.plane[i] += planeOffsetOf<Layout>(i, pixels);
    return layout;
}

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

// Byte 3 of each of `width` four-byte pixels copied into a row of one byte a pixel;
// sixteen pixels at a time, then one by one.
PXK_INLINE void copyFourthBytes(const uint8_t* src, uint8_t* dst, int32_t width) {
    using namespace vec;
    int32_t x = 0;
    for (; width - x >= 16; x += 16) {
        const uint8_t* p = src + pixelOffset<4>(x);
        const V128 a0 = srli32<24>(load128(p)), a1 = srli32<24>(load128(p + 16));
        const V128 a2 = srli32<24>(load128(p + 32)), a3 = srli32<24>(load128(p + 48));
        store128(dst + x, packus16(packs32(a0, a1), packs32(a2, a3)));
    }
    for (; x < width; ++x) dst[x] = src[pixelOffset<4>(x) + 3];
}

// The first and third channels of a block exchanged (B, G, R read as R, G, B).
template <class V>
PXK_INLINE void swapFirstAndThird(Block<V>& b) {
    std::swap(b.half[0].c[0], b.half[0].c[2]);
    std::swap(b.half[1].c[0], b.half[1].c[2]);
}

// The pixel at column x of a layout as R, G, B: with Bgr, its first and third bytes
// exchanged.
template <bool Bgr, class In>
PXK_INLINE Pixel3 readRgb(const In& row, int32_t x) {
    Pixel3 p = row.load1(x);
    if (Bgr) std::swap(p.c[0], p.c[2]);
    return p;
}

// ---------------------------------------------------------------------------------
// Layouts. Each is bound to one row: load<V>(x) / store(x, block) move the block of
// pixels from column x, load1(x) / store1(x, pixel) one pixel for the scalar tail.
// kPlanes and kBytes (bytes a pixel in each plane) let the generic row kernel stage a
// short block through a local buffer (see convert_row.h).
// ---------------------------------------------------------------------------------

// Three interleaved channels (C3), read.
struct PackedC3In {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 3;
    const uint8_t* plane[1];

    // The three 16-byte chunks of each lane's 48 bytes from column x.
    template <class V>
    PXK_INLINE void chunks(int32_t x, V& a, V& b, V& c) const {
        const uint8_t* p = plane[0] + pixelOffset<3>(x);
        a = vec::loadLanes<V, 48>(p);
        b = vec::loadLanes<V, 48>(p + 16);
        c = vec::loadLanes<V, 48>(p + 32);
    }

#if defined(PXKCC_TARGET_AVX2)
    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        using namespace simd;
        V a, b, c;
        chunks(x, a, b, c);
        Block<V> out;
        PXK_UNROLL
        for (int k = 0; k < 3; ++k) {
            const V gathered = blendBytes(blendBytes(a, b, table<V>(kC3Tables.channelPositions[1][k])), c,
                                          table<V>(kC3Tables.channelPositions[2][k]));
            toHalves(shuffleBytes(gathered, table<V>(kC3Tables.gatheredToPixels[k])), out.half[0].c[k], out.half[1].c[k]);
        }
        return out;
    }
#else
    // Sixteen pixels a lane through `Rounds` rounds of the byte network, then widened
    // to six vectors of 16-bit lanes in the order of the three registers.
    template <class V, int Rounds>
    PXK_INLINE void loadSplit(int32_t x, V w[6]) const {
        V a, b, c;
        chunks(x, a, b, c);
        PXK_UNROLL
        for (int r = 0; r < Rounds; ++r) simd::splitRound(a, b, c);
        const V z = vec::zero<V>();
        w[0] = vec::unpacklo8(a, z);
        w[1] = vec::unpackhi8(a, z);
        w[2] = vec::unpacklo8(b, z);
        w[3] = vec::unpackhi8(b, z);
        w[4] = vec::unpacklo8(c, z);
        w[5] = vec::unpackhi8(c, z);
    }
    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        V w[6];
        loadSplit<V, 3>(x, w);
        Block<V> out;
        out.half[0] = Lanes3<V>{{w[0], w[1], w[2]}};
        out.half[1] = Lanes3<V>{{w[3], w[4], w[5]}};
        return out;
    }
    // The same pixels in quad order: one round fewer.
    PXK_INLINE Quads16 loadQuads(int32_t x) const {
        Quads16 out;
        loadSplit<vec::V128, 2>(x, out.v);
        return out;
    }
#endif
    PXK_INLINE Pixel3 load1(int32_t x) const { return readPacked<3>(plane[0], x); }
};

// Three interleaved channels (C3), written.
struct PackedC3Out {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 3;
    uint8_t* plane[1];

    template <class V>
    PXK_INLINE void storeChunks(int32_t x, V a, V b, V c) const {
        uint8_t* p = plane[0] + pixelOffset<3>(x);
        vec::storeLanes<V, 48>(p, a);
        vec::storeLanes<V, 48>(p + 16, b);
        vec::storeLanes<V, 48>(p + 32, c);
    }

#if defined(PXKCC_TARGET_AVX2)
    template <class V>
    PXK_INLINE void store(int32_t x, const Block<V>& v) const {
        using namespace simd;
        V gathered[3];
        PXK_UNROLL
        for (int k = 0; k < 3; ++k) {
            gathered[k] = shuffleBytes(packHalves(v.half[0].c[k], v.half[1].c[k]), table<V>(kC3Tables.packedToGathered[k]));
        }
        V out[3];
        PXK_UNROLL
        for (int m = 0; m < 3; ++m) {
            out[m] = blendBytes(blendBytes(gathered[0], gathered[1], table<V>(kC3Tables.channelPositions[m][1])), gathered[2],
                                table<V>(kC3Tables.channelPositions[m][2]));
        }
        storeChunks(x, out[0], out[1], out[2]);
    }
#else
    // Six vectors of 16-bit lanes, saturated to bytes in pairs, through `Rounds` merge
    // rounds back to packed pixels at column x: the inverse of PackedC3In::loadSplit.
    template <class V, int Rounds>
    PXK_INLINE void storeMerged(int32_t x, const V w[6]) const {
        V a = vec::packus16(w[0], w[1]);
        V b = vec::packus16(w[2], w[3]);
        V c = vec::packus16(w[4], w[5]);
        PXK_UNROLL
        for (int r = 0; r < Rounds; ++r) simd::mergeRound(a, b, c);
        storeChunks(x, a, b, c);
    }
    template <class V>
    PXK_INLINE void store(int32_t x, const Block<V>& v) const {
        const Lanes3<V>& e = v.half[0];
        const Lanes3<V>& o = v.half[1];
        const V w[6] = {e.c[0], e.c[1], e.c[2], o.c[0], o.c[1], o.c[2]};
        storeMerged<V, 3>(x, w);
    }
    // Sixteen pixels in quad order, saturated to 8 bits: one round fewer.
    PXK_INLINE void storeQuads(int32_t x, const Quads16& q) const { storeMerged<vec::V128, 2>(x, q.v); }
#endif
    PXK_INLINE void store1(int32_t x, Pixel3 v) const { writePacked<3>(plane[0], x, v); }
};

#if defined(PXKCC_TARGET_AVX2)
// Whole 32-byte loads of four-byte pixels leave the groups of four pixels of a 256-bit
// block in the lanes as (0, 2, 4, 6 | 1, 3, 5, 7); one cross-lane move per channel
// puts them in block order. The 128-bit block is in order already.
PXK_INLINE vec::V128 fixC4Order(vec::V128 v) { return v; }
PXK_INLINE vec::V256 fixC4Order(vec::V256 v) {
    return _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}
#endif

// Four interleaved bytes a pixel (AC4, C4), read: the fourth byte is ignored. Memory
// is vec::UnalignedMemory, or vec::AlignedMemory for rows whose chunks all lie on
// multiples of 16 (the same bytes either way).
template <class Memory>
struct PackedC4InWith {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 4;
    const uint8_t* plane[1];

    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        using namespace vec;
        const uint8_t* p = plane[0] + pixelOffset<4>(x);
#if defined(PXKCC_TARGET_AVX2)
        V x0 = Memory::template loadLanes<V, 16>(p), x1 = Memory::template loadLanes<V, 16>(p + sizeof(V));
        V x2 = Memory::template loadLanes<V, 16>(p + 2 * sizeof(V));
        V x3 = Memory::template loadLanes<V, 16>(p + 3 * sizeof(V));
        Block<V> out;
        // Each chunk to [c0 | c1 | c2 | c3] of its four pixels, then a transpose of
        // 4-byte groups gives each channel's 16 bytes in pixel order.
        const V toChannels = simd::table<V>(simd::kPixelsToChannels);
        x0 = shuffleBytes(x0, toChannels);
        x1 = shuffleBytes(x1, toChannels);
        x2 = shuffleBytes(x2, toChannels);
        x3 = shuffleBytes(x3, toChannels);
        const V lo01 = unpacklo32(x0, x1), lo23 = unpacklo32(x2, x3);
        const V hi01 = unpackhi32(x0, x1), hi23 = unpackhi32(x2, x3);
        simd::toHalves(fixC4Order(unpacklo64(lo01, lo23)), out.half[0].c[0], out.half[1].c[0]);
        simd::toHalves(fixC4Order(unpackhi64(lo01, lo23)), out.half[0].c[1], out.half[1].c[1]);
        simd::toHalves(fixC4Order(unpacklo64(hi01, hi23)), out.half[0].c[2], out.half[1].c[2]);
#else
        V x0 = Memory::template loadLanes<V, 64>(p), x1 = Memory::template loadLanes<V, 64>(p + 16);
        V x2 = Memory::template loadLanes<V, 64>(p + 32), x3 = Memory::template loadLanes<V, 64>(p + 48);
        Block<V> out;
        // Byte transpose: [c0 even | c1 even], [c2 even | c3 even] and the same for the
        // odd pixels, four pixels in each quarter.
        const V t0 = unpacklo8(x0, x1), t1 = unpackhi8(x0, x1);
        const V t2 = unpacklo8(x2, x3), t3 = unpackhi8(x2, x3);
        const V u0 = unpacklo8(t0, t1), u1 = unpackhi8(t0, t1);
        const V u2 = unpacklo8(t2, t3), u3 = unpackhi8(t2, t3);
        const V even01 = unpacklo32(u0, u2), even23 = unpackhi32(u0, u2);
        const V odd01 = unpacklo32(u1, u3), odd23 = unpackhi32(u1, u3);
        const V z = zero<V>();
        out.half[0] = Lanes3<V>{{unpacklo8(even01, z), unpackhi8(even01, z), unpacklo8(even23, z)}};
        out.half[1] = Lanes3<V>{{unpacklo8(odd01, z), unpackhi8(odd01, z), unpacklo8(odd23, z)}};
#endif
        return out;
    }
    PXK_INLINE Pixel3 load1(int32_t x) const { return readPacked<4>(plane[0], x); }
};
using PackedC4In = PackedC4InWith<vec::UnalignedMemory>;

// Four bytes a pixel whose fourth byte keeps what the destination held (AC4). The
// vector store reads the destination's bytes and puts their alpha back in place; the
// scalar store touches bytes 0 to 2 only.
struct PackedAC4KeepOut {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 4;
    uint8_t* plane[1];

    template <class V>
    PXK_INLINE void store(int32_t x, const Block<V>& v) const {
        using namespace vec;
        uint8_t* p = plane[0] + pixelOffset<4>(x);
        const V alphaMask = splat32<V>(static_cast<int32_t>(0xFF000000u));
        const V z = zero<V>();
        V colour[4];
        simd::fourChannelPixels(v, z, colour);
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) {
            const V old = loadLanes<V, 64>(p + 16 * i);
            storeLanes<V, 64>(p + 16 * i, or_(colour[i], and_(old, alphaMask)));
        }
    }
    PXK_INLINE void store1(int32_t x, Pixel3 v) const { writePacked<4>(plane[0], x, v); }
};

// Four bytes a pixel whose fourth byte is set to a given alpha (C4). Memory as in
// PackedC4InWith.
template <class Memory>
struct PackedC4AlphaOutWith {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 4;
    uint8_t* plane[1];
    uint8_t alpha;

    template <class V>
    PXK_INLINE void store(int32_t x, const Block<V>& v) const {
        using namespace vec;
        const V a = splat16<V>(alpha);
        V pixels[4];
        simd::fourChannelPixels(v, a, pixels);
        Memory::storeLanes4x64(plane[0] + pixelOffset<4>(x), pixels);
    }
    PXK_INLINE void store1(int32_t x, Pixel3 v) const {
        writePacked<4>(plane[0], x, v);
        plane[0][pixelOffset<4>(x) + 3] = alpha;
    }
};
using PackedC4AlphaOut = PackedC4AlphaOutWith<vec::UnalignedMemory>;

// Three planes of one channel each (P3), read.
struct PlanarP3In {
    static constexpr int kPlanes = 3;
    static constexpr int kBytes = 1;
    const uint8_t* plane[3];

    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        Block<V> out;
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) {
            simd::toHalves(vec::loadLanes<V, 16>(plane[c] + x), out.half[0].c[c], out.half[1].c[c]);
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

    template <class V>
    PXK_INLINE void store(int32_t x, const Block<V>& v) const {
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) {
            vec::storeLanes<V, 16>(plane[c] + x, simd::halvesToPixelBytes(v.half[0].c[c], v.half[1].c[c]));
        }
    }
    PXK_INLINE void store1(int32_t x, Pixel3 v) const {
        plane[0][x] = v.c[0];
        plane[1][x] = v.c[1];
        plane[2][x] = v.c[2];
    }
};

}  // namespace pxk
