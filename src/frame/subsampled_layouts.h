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

// Chroma bytes (per lane), `Group` pixels to a sample, as the block's two halves.
template <int Group, class V>
PXK_INLINE void replicatedChroma(V samples, V& half0, V& half1) {
    static_assert(Group == 2 || Group == 4, "pairs or groups of four");
    V perPair = unpacklo8(samples, zero<V>());
    if constexpr (Group == 4) perPair = unpacklo16(perPair, perPair);
    pairSharedHalves(perPair, half0, half1);
}

// Sixteen bytes (per lane) of interleaved pairs: the first of each pair and the
// second of each pair, eight 16-bit values each.
template <class V>
PXK_INLINE void splitPairs(V bytes, V& first, V& second) {
    first = and_(bytes, splat16<V>(0x00FF));
    second = srli16<8>(bytes);
}

// Sixteen bytes (per lane) of chroma pairs, the first of each pair for channel
// FirstChannel and the second for the other, as the block's chroma halves.
template <int FirstChannel, class V>
PXK_INLINE void pairedChroma(V pairBytes, Block<V>& out) {
    V first, second;
    splitPairs(pairBytes, first, second);
    pairSharedHalves(first, out.half[0].c[FirstChannel], out.half[1].c[FirstChannel]);
    pairSharedHalves(second, out.half[0].c[3 - FirstChannel], out.half[1].c[3 - FirstChannel]);
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

// Three planes: luma at full resolution, two chroma planes with one sample for each
// group of 2^Shift columns. plane[1] and plane[2] feed channels 1 and 2.
template <int Shift>
struct ReplicatedPlanesIn {
    static_assert(Shift == 1 || Shift == 2, "pairs or groups of four");
    static constexpr int kPlanes = 3;
    static constexpr int kBytes = 1;
    const uint8_t* plane[3];

    static constexpr std::ptrdiff_t planeOffset(int i, int32_t x) { return i == 0 ? x : (x >> Shift); }

    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        using namespace vec;
        Block<V> out;
        simd::toHalves(vec::loadLanes<V, 16>(plane[0] + x), out.half[0].c[0], out.half[1].c[0]);
        PXK_UNROLL
        for (int c = 1; c < 3; ++c) {
            const uint8_t* p = plane[c] + (x >> Shift);
            const V samples = Shift == 1 ? vec::loadLowHalves<V>(p) : vec::loadLowQuarters<V>(p);
            simd::replicatedChroma<1 << Shift>(samples, out.half[0].c[c], out.half[1].c[c]);
        }
        return out;
    }
    PXK_INLINE Pixel3 load1(int32_t x) const {
        return Pixel3{{plane[0][x], plane[1][x >> Shift], plane[2][x >> Shift]}};
    }
};

// A luma plane and a plane of chroma pairs, one pair for each pair of columns: the
// first byte of a pair feeds channel FirstChannel (1 or 2), the second the other.
template <int FirstChannel>
struct ChromaPairsIn {
    static_assert(FirstChannel == 1 || FirstChannel == 2, "a chroma channel");
    static constexpr int kPlanes = 2;
    static constexpr int kBytes = 1;
    const uint8_t* plane[2];

    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        using namespace vec;
        Block<V> out;
        simd::toHalves(vec::loadLanes<V, 16>(plane[0] + x), out.half[0].c[0], out.half[1].c[0]);
        simd::pairedChroma<FirstChannel>(loadLanes<V, 16>(plane[1] + x), out);
        return out;
    }
    PXK_INLINE Pixel3 load1(int32_t x) const {
        const uint8_t* pair = plane[1] + (x & ~1);
        return withChromaPair<FirstChannel>(plane[0][x], pair[0], pair[1]);
    }
};

// Packed pairs of pixels in four bytes: Y0, a chroma sample, Y1, the other chroma
// sample. The first chroma byte feeds channel FirstChannel (1 or 2).
template <int FirstChannel>
struct PackedC2In {
    static_assert(FirstChannel == 1 || FirstChannel == 2, "a chroma channel");
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 2;
    const uint8_t* plane[1];

    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        using namespace vec;
        const uint8_t* p = plane[0] + pixelOffset<2>(x);
        const V a = vec::loadLanes<V, 32>(p);
        const V b = vec::loadLanes<V, 32>(p + 16);
        const V lowBytes = splat16<V>(0x00FF);
        Block<V> out;
        simd::toHalves(packus16(and_(a, lowBytes), and_(b, lowBytes)), out.half[0].c[0], out.half[1].c[0]);
        simd::pairedChroma<FirstChannel>(packus16(srli16<8>(a), srli16<8>(b)), out);
        return out;
    }
    PXK_INLINE Pixel3 load1(int32_t x) const {
        const uint8_t* pair = plane[0] + pixelOffset<2>(x & ~1);
        return withChromaPair<FirstChannel>(plane[0][pixelOffset<2>(x)], pair[1], pair[3]);
    }
    // A last pixel at an even column x without its partner: Y and the first chroma
    // from its own two bytes, the second chroma from the byte before them, or, at the
    // start of the row where there is none, the first chroma again.
    PXK_INLINE Pixel3 loadLone(int32_t x) const {
        const uint8_t* own = plane[0] + pixelOffset<2>(x);
        return withChromaPair<FirstChannel>(own[0], own[1], x > 0 ? own[-1] : own[1]);
    }
};

// Planes Y, then the two chroma planes at half width (channels 1 and 2), with chroma
// filtered along the row: the even pixel of pair i takes c[i], the odd one
// (c[i] + c[i + 1] + 1) >> 1, except in the last pair, `lastPair`, which takes c[i]
// for both. Vector blocks must end before the last pair (they read c[i + 1]).
struct FilteredPlanesIn {
    static constexpr int kPlanes = 3;
    static constexpr int kBytes = 1;
    const uint8_t* plane[3];
    int32_t lastPair;

    static constexpr std::ptrdiff_t planeOffset(int i, int32_t x) { return i == 0 ? x : (x >> 1); }

    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        using namespace vec;
        Block<V> out;
        simd::toHalves(vec::loadLanes<V, 16>(plane[0] + x), out.half[0].c[0], out.half[1].c[0]);
        PXK_UNROLL
        for (int c = 1; c < 3; ++c) {
            const uint8_t* p = plane[c] + (x >> 1);
            const V own = vec::loadLowHalves<V>(p);
            const V mean = avg8(own, vec::loadLowHalves<V>(p + 1));
            simd::toHalves(unpacklo8(own, mean), out.half[0].c[c], out.half[1].c[c]);
        }
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
