// Source layouts with subsampled chroma, read as full-resolution blocks of three
// channels: luma, then the two chroma channels in the order the forms take them
// (Cb then Cr, or U then V). Chroma is replicated: each sample serves every pixel of
// its group. The layouts plug into the generic row kernel like the full-resolution
// ones; vector blocks start at even columns (at columns that are multiples of 8), and
// load1 reads any single pixel.
#pragma once

#include "frame/simd_inline.h"

#include <cstddef>
#include <cstdint>

#include "frame/pixel_block.h"
#include "frame/vec.h"

namespace pxk {

namespace simd {

// Sixteen bytes (per lane) of interleaved pairs: the first of each pair and the
// second of each pair, eight 16-bit values each.
template <class V>
PXK_INLINE void splitPairs(V bytes, V& first, V& second) {
    first = and_(bytes, splat16<V>(0x00FF));
    second = srli16<8>(bytes);
}

// Sixteen bytes (per lane) of chroma pairs as one 16-bit value a pair for each of
// channels 1 and 2: the first byte of each pair for channel FirstChannel.
template <int FirstChannel, class V>
PXK_INLINE void pairedChroma(V pairBytes, V& c1, V& c2) {
    V first, second;
    splitPairs(pairBytes, first, second);
    c1 = FirstChannel == 1 ? first : second;
    c2 = FirstChannel == 1 ? second : first;
}

// The block of a layout that reads luma (loadLuma) and one chroma value a pair of
// pixels (loadChroma).
template <class V, class Layout>
PXK_INLINE Block<V> sharedChromaBlock(const Layout& layout, int32_t x) {
    Block<V> out;
    layout.loadLuma(x, out.half[0].c[0], out.half[1].c[0]);
    V c[2];
    layout.loadChroma(x, c[0], c[1]);
    PXK_UNROLL
    for (int i = 0; i < 2; ++i) pairSharedHalves(c[i], out.half[0].c[1 + i], out.half[1].c[1 + i]);
    return out;
}

}  // namespace simd

// A pixel of luma y whose chroma pair is (first, second), the first for channel
// FirstChannel.
template <int FirstChannel>
PXK_INLINE Pixel3 withChromaPair(uint8_t y, uint8_t first, uint8_t second) {
    Pixel3 p;
    p.c[0] = y;
    p.c[FirstChannel] = first;
    p.c[3 - FirstChannel] = second;
    return p;
}

// The channels that the first chroma byte of a pair (or the first chroma plane)
// feeds: Cb (Cr) first, as in the YCbCr (YCrCb) layouts.
inline constexpr int kCbFirst = 1;
inline constexpr int kCrFirst = 2;

// A luma plane at full resolution (plane 0) beside chroma planes with one column for
// each 2^ChromaShift columns of the image: the luma loads that the planar layouts
// share.
template <int Planes, int ChromaShift>
struct LumaBesideChromaPlanes {
    static constexpr int kPlanes = Planes;
    static constexpr int kBytes = 1;
    const uint8_t* plane[Planes];

    static constexpr std::ptrdiff_t planeOffset(int i, int32_t x) { return i == 0 ? x : (x >> ChromaShift); }

    template <class V>
    PXK_INLINE void loadLuma(int32_t x, V& half0, V& half1) const {
        simd::toHalves(vec::loadLanes<V, 16>(plane[0] + x), half0, half1);
    }
    template <class V>
    PXK_INLINE void loadLumaEvenOdd(int32_t x, V& even, V& odd) const {
        simd::evenOddHalves(vec::loadLanes<V, 16>(plane[0] + x), even, odd);
    }
};

// Three planes: luma at full resolution, two chroma planes with one sample for each
// group of 2^Shift columns. plane[1] and plane[2] feed channels 1 and 2.
template <int Shift>
struct ReplicatedPlanesIn : LumaBesideChromaPlanes<3, Shift> {
    static_assert(Shift == 1 || Shift == 2, "pairs or groups of four");
    using LumaBesideChromaPlanes<3, Shift>::plane;
    // One 16-bit value a pair of pixels (a group of four gives two equal pairs).
    template <class V>
    PXK_INLINE void loadChroma(int32_t x, V& c1, V& c2) const {
        c1 = samples<V>(plane[1] + (x >> Shift));
        c2 = samples<V>(plane[2] + (x >> Shift));
    }
    template <class V>
    PXK_INLINE static V samples(const uint8_t* p) {
        using namespace vec;
        if constexpr (Shift == 1) {
            return unpacklo8(loadLowHalves<V>(p), zero<V>());
        } else {
            const V perGroup = unpacklo8(loadLowQuarters<V>(p), zero<V>());
            return unpacklo16(perGroup, perGroup);
        }
    }
    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        return simd::sharedChromaBlock<V>(*this, x);
    }
    PXK_INLINE Pixel3 load1(int32_t x) const {
        return Pixel3{{plane[0][x], plane[1][x >> Shift], plane[2][x >> Shift]}};
    }
};

// A luma plane and a plane of chroma pairs, one pair for each pair of columns: the
// first byte of a pair feeds channel FirstChannel (1 or 2), the second the other.
template <int FirstChannel>
struct ChromaPairsIn : LumaBesideChromaPlanes<2, 0> {
    static_assert(FirstChannel == 1 || FirstChannel == 2, "a chroma channel");
    template <class V>
    PXK_INLINE void loadChroma(int32_t x, V& c1, V& c2) const {
        simd::pairedChroma<FirstChannel>(vec::loadLanes<V, 16>(plane[1] + x), c1, c2);
    }
    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        return simd::sharedChromaBlock<V>(*this, x);
    }
    PXK_INLINE Pixel3 load1(int32_t x) const {
        const uint8_t* pair = plane[1] + (x & ~1);
        return withChromaPair<FirstChannel>(plane[0][x], pair[0], pair[1]);
    }
};

// Packed pairs of pixels in four bytes: Y0, a chroma sample, Y1, the other chroma
// sample (LumaFirst), or a chroma sample, Y0, the other, Y1. The first chroma byte of a
// pair feeds channel FirstChannel (1 or 2). Memory is vec::UnalignedMemory, or
// vec::AlignedMemory where every row and block starts on a multiple of 16 bytes.
template <int FirstChannel, bool LumaFirst = true, class Memory = vec::UnalignedMemory>
struct PackedC2In {
    static_assert(FirstChannel == 1 || FirstChannel == 2, "a chroma channel");
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 2;
    // The byte of a pixel's two that holds its luma, and the one that holds chroma.
    static constexpr int kLumaByte = LumaFirst ? 0 : 1;
    static constexpr int kChromaByte = 1 - kLumaByte;
    const uint8_t* plane[1];

    // The 32 bytes of 16 pixels (per lane) as two vectors of 16-bit lanes, luma in the
    // low or the high byte of each.
    template <class V>
    PXK_INLINE void loadWords(int32_t x, V& a, V& b) const {
        const uint8_t* p = plane[0] + pixelOffset<2>(x);
        a = Memory::template loadLanes<V, 32>(p);
        b = Memory::template loadLanes<V, 32>(p + 16);
    }
    // The luma bytes (Luma) or the chroma bytes of 16 pixels, in order.
    template <bool Luma, class V>
    PXK_INLINE V bytesOf(V a, V b) const {
        using namespace vec;
        if constexpr (Luma == LumaFirst) {
            const V lowBytes = splat16<V>(0x00FF);
            return packus16(and_(a, lowBytes), and_(b, lowBytes));
        } else {
            return packus16(srli16<8>(a), srli16<8>(b));
        }
    }
    template <class V>
    PXK_INLINE void loadLuma(int32_t x, V& half0, V& half1) const {
        V a, b;
        loadWords(x, a, b);
        simd::toHalves(bytesOf<true>(a, b), half0, half1);
    }
    // Luma of the even and of the odd pixels: in the avx2 build by byte shuffles
    // (luma bytes 0, 4, 8, 12 and 2, 6, 10, 14 of each 16, one more where chroma comes
    // first), else the block's halves.
    template <class V>
    PXK_INLINE void loadLumaEvenOdd(int32_t x, V& even, V& odd) const {
#if defined(PXKCC_TARGET_AVX2)
        using namespace vec;
        constexpr uint8_t k = kLumaByte;
        static constexpr uint8_t kEvenThenOdd[16] = {k,     0x80, 4 + k,  0x80, 8 + k,  0x80, 12 + k, 0x80,
                                                     2 + k, 0x80, 6 + k,  0x80, 10 + k, 0x80, 14 + k, 0x80};
        V a, b;
        loadWords(x, a, b);
        const V order = bytesInEachLane<V>(kEvenThenOdd);
        const V sa = shuffleBytes(a, order), sb = shuffleBytes(b, order);
        even = unpacklo64(sa, sb);
        odd = unpackhi64(sa, sb);
#else
        loadLuma(x, even, odd);
#endif
    }
    template <class V>
    PXK_INLINE void loadChroma(int32_t x, V& c1, V& c2) const {
        V a, b;
        loadWords(x, a, b);
        simd::pairedChroma<FirstChannel>(bytesOf<false>(a, b), c1, c2);
    }
    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        return simd::sharedChromaBlock<V>(*this, x);
    }
    PXK_INLINE Pixel3 load1(int32_t x) const {
        const uint8_t* pair = plane[0] + pixelOffset<2>(x & ~1);
        return withChromaPair<FirstChannel>(plane[0][pixelOffset<2>(x) + kLumaByte], pair[kChromaByte],
                                            pair[kChromaByte + 2]);
    }
    // A last pixel at an even column x without its partner: Y and the first chroma
    // from its own two bytes, the second chroma from the pair before, or, at the start
    // of the row where there is none, the first chroma again.
    PXK_INLINE Pixel3 loadLone(int32_t x) const {
        const uint8_t* own = plane[0] + pixelOffset<2>(x);
        return withChromaPair<FirstChannel>(own[kLumaByte], own[kChromaByte],
                                            x > 0 ? own[kChromaByte - 2] : own[kChromaByte]);
    }
};

// Packed CbYCr422: Cb, Y0, Cr, Y1.
template <class Memory = vec::UnalignedMemory>
using CbYCrIn = PackedC2In<kCbFirst, false, Memory>;

// Planes Y, then the two chroma planes at half width (channels 1 and 2), with chroma
// filtered along the row: the even pixel of pair i takes c[i], the odd one
// (c[i] + c[i + 1] + 1) >> 1, except in the last pair, `lastPair`, which takes c[i]
// for both. Vector blocks must end before the last pair (they read c[i + 1]).
struct FilteredPlanesIn : LumaBesideChromaPlanes<3, 1> {
    int32_t lastPair;

    static constexpr bool kChromaEachPixel = true;
    // The chroma of channel c (1 or 2) of each pixel, as the block's two halves.
    template <class V>
    PXK_INLINE void loadChromaHalves(int32_t x, int c, V& half0, V& half1) const {
        using namespace vec;
        const uint8_t* p = plane[c] + (x >> 1);
        const V own = loadLowHalves<V>(p);
        const V mean = avg8(own, loadLowHalves<V>(p + 1));
        simd::toHalves(unpacklo8(own, mean), half0, half1);
    }
    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        Block<V> out;
        loadLuma(x, out.half[0].c[0], out.half[1].c[0]);
        PXK_UNROLL
        for (int c = 1; c < 3; ++c) loadChromaHalves(x, c, out.half[0].c[c], out.half[1].c[c]);
        return out;
    }
    PXK_INLINE uint8_t chroma(int c, int32_t x) const {
        const int32_t i = x >> 1;
        if ((x & 1) == 0 || i == lastPair) return plane[c][i];
        return static_cast<uint8_t>((plane[c][i] + plane[c][i + 1] + 1) >> 1);
    }
    PXK_INLINE Pixel3 load1(int32_t x) const { return Pixel3{{plane[0][x], chroma(1, x), chroma(2, x)}}; }
};

}  // namespace pxk
