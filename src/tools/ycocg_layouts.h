// Memory layouts of the YCoCg members: packed rows of three or four 8-bit or 16-bit
// samples a pixel, and planes of 8-, 16- or 32-bit samples.
//
// A vector group is eight pixels in each 128-bit lane (lane L holds pixels 8 L to
// 8 L + 7), as three channel vectors in pixel order: sixteen-bit lanes (Parts = 1),
// or 32-bit lanes in two vectors, pixels 0-3 then 4-7 (Parts = 2). Every shuffle is
// in-lane, so the 256-bit group is the 128-bit one twice over. load1/store1 move one
// pixel for the scalar tails. kPlanes and kBytes let the row kernel stage a short
// group through local buffers.
#pragma once

#include "frame/simd_inline.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "frame/fixed_point.h"
#include "frame/vec_float.h"
#include "tools/lane_memory.h"
#include "tools/samples.h"
#include "tools/ycocg_forms.h"

namespace pxk {
namespace ycocg {

using vec::V128;

template <class V, int Parts>
struct Group {
    V c[3][Parts];
};

namespace simd {

using namespace vec;

// Four vectors of two pixels each (four 16-bit samples a pixel, the fourth ignored)
// to three channel vectors in pixel order.
template <class V>
PXK_INLINE Group<V, 1> transposeFrom4(V q0, V q1, V q2, V q3) {
    const V t0 = unpacklo16(q0, q1), t1 = unpackhi16(q0, q1);
    const V t2 = unpacklo16(q2, q3), t3 = unpackhi16(q2, q3);
    const V u0 = unpacklo32(t0, t2), u1 = unpackhi32(t0, t2);
    const V u2 = unpacklo32(t1, t3), u3 = unpackhi32(t1, t3);
    return Group<V, 1>{{{unpacklo16(u0, u2)}, {unpackhi16(u0, u2)}, {unpacklo16(u1, u3)}}};
}

// Three channel vectors and a fourth to four vectors of two pixels each.
template <class V>
PXK_INLINE void transposeTo4(const Group<V, 1>& g, V fourth, V q[4]) {
    const V lo01 = unpacklo16(g.c[0][0], g.c[1][0]), lo23 = unpacklo16(g.c[2][0], fourth);
    const V hi01 = unpackhi16(g.c[0][0], g.c[1][0]), hi23 = unpackhi16(g.c[2][0], fourth);
    q[0] = unpacklo32(lo01, lo23);
    q[1] = unpackhi32(lo01, lo23);
    q[2] = unpacklo32(hi01, hi23);
    q[3] = unpackhi32(hi01, hi23);
}

// One round of the three-way split: a's low half with b's high half, a's high half
// with c's low half, b's low half with c's high half, each pair word by word. Three
// rounds take 24 words of eight pixels to their three channels.
template <class V>
PXK_INLINE void splitRound16(V& a, V& b, V& c) {
    const V cSwapped = shuffle32<_MM_SHUFFLE(1, 0, 3, 2)>(c);
    const V na = unpacklo16(a, bytesDown<8>(b));
    const V nb = unpackhi16(a, cSwapped);
    c = unpacklo16(b, cSwapped);
    a = na;
    b = nb;
}

// Eight pixels of three 16-bit samples (48 bytes a lane: a, b, c) to channels.
template <class V>
PXK_INLINE Group<V, 1> splitThree16(V a, V b, V c) {
    PXK_UNROLL
    for (int round = 0; round < 3; ++round) splitRound16(a, b, c);
    return Group<V, 1>{{{a}, {b}, {c}}};
}

// Channels to eight pixels of three 16-bit samples (a, b, c). Two pixels are three
// 32-bit words: (c0, c1) of the first, (c2 of the first, c0 of the second), (c1, c2)
// of the second; each kind is gathered for the four pairs by masks and shifts, and the
// twelve words are dealt into a, b, c by unpacks and one dword pick for each.
template <class V>
PXK_INLINE void mergeThree16(const Group<V, 1>& g, V& a, V& b, V& c) {
    const V c0 = g.c[0][0], c1 = g.c[1][0], c2 = g.c[2][0];
    const V low = splat32<V>(0xFFFF);
    const V p = or_(and_(c0, low), slli32<16>(c1));  // P k: pixel 2k, channels 0 and 1
    const V x = selectBits(low, c2, c0);              // X k: pixel 2k channel 2, pixel 2k+1 channel 0
    const V y = or_(srli32<16>(c1), andNot(low, c2)); // Y k: pixel 2k+1, channels 1 and 2
    // a = P0 X0 Y0 P1, b = X1 Y1 P2 X2, c = Y2 P3 X3 Y3.
    a = shuffle2x32<_MM_SHUFFLE(3, 0, 1, 0)>(unpacklo32(p, x), unpacklo32(y, p));
    b = shuffle2x32<_MM_SHUFFLE(1, 0, 3, 2)>(unpacklo32(x, y), unpackhi32(p, x));
    c = shuffle2x32<_MM_SHUFFLE(3, 2, 3, 0)>(unpackhi32(y, p), unpackhi32(x, y));
}

// Channels to eight pixels of three bytes, each value saturated to 0..255: `first`
// takes bytes 0-15, the low half of `last` bytes 16-23. The pixels are first spread
// to four bytes each (the fourth zero), pixels 0-3 in one vector and 4-7 in the other;
// then each 64-bit half packs its two pixels into six bytes: in the first vector, the
// lower half's six at bytes 2-7 and the upper half's at 8-13, so that twelve bytes
// lie in a row (likewise in the second), by multiplies that shift each pixel into place.
template <class V>
PXK_INLINE V sixBytePairsToMiddle(V pixels) {
    const V evens = mulEvenU32(pixels, splat32Pattern<V>(1 << 16, 0, 1, 0));
    const V odds = mulEvenU32(srli64<32>(pixels), splat32Pattern<V>(1 << 8, 0, 1 << 24, 0));
    return or_(evens, shuffle32<_MM_SHUFFLE(3, 2, 0, 1)>(odds));  // pixel 1 from bit 8 up to bit 40
}
template <class V>
PXK_INLINE void mergeThree8(const Group<V, 1>& g, V& first, V& last) {
    const V c01 = packus16(g.c[0][0], g.c[1][0]);
    const V pairs01 = unpacklo8(c01, bytesDown<8>(c01));
    const V c2 = unpacklo8(packus16(g.c[2][0], g.c[2][0]), zero<V>());
    const V lo = sixBytePairsToMiddle(unpacklo16(pairs01, c2));
    const V hi = sixBytePairsToMiddle(unpackhi16(pairs01, c2));
    first = or_(bytesDown<2>(lo), bytesUp<10>(hi));
    last = bytesDown<6>(hi);
}

// Where the build has byte shuffles, eight pixels of three or four bytes move between
// their 24 or 32 bytes (16 in `first`, the rest in `last`) and channels in one shuffle
// a vector and channel. Index tables: kNoByte gives a zero byte.
struct ByteIndices {
    uint8_t b[16];
};
inline constexpr uint8_t kNoByte = 0x80;
// Channel `channel` of eight pixels of `channels` bytes as 16-bit lanes, from the 16
// bytes that start at `from`.
constexpr ByteIndices channelWordsAt(int channels, int channel, int from) {
    ByteIndices r{};
    for (int i = 0; i < 8; ++i) {
        const int at = channels * i + channel - from;
        r.b[2 * i] = at >= 0 && at < 16 ? static_cast<uint8_t>(at) : kNoByte;
        r.b[2 * i + 1] = kNoByte;
    }
    return r;
}
// Bytes from..from+15 of the 24, from channel bytes: channels 0 and 1 in bytes 0-7 and
// 8-15 (twoChannels), or channel 2 in bytes 0-7.
constexpr ByteIndices pixelBytesAt(bool twoChannels, int from) {
    ByteIndices r{};
    for (int j = 0; j < 16; ++j) {
        const int at = from + j, pixel = at / 3, channel = at % 3;
        const bool here = at < 24 && (twoChannels ? channel < 2 : channel == 2);
        r.b[j] = here ? static_cast<uint8_t>(channel == 1 ? 8 + pixel : pixel) : kNoByte;
    }
    return r;
}
template <int Channels, int Channel, int From>
inline constexpr ByteIndices kChannelWordsAt = channelWordsAt(Channels, Channel, From);
template <bool TwoChannels, int From>
inline constexpr ByteIndices kPixelBytesAt = pixelBytesAt(TwoChannels, From);

template <class V, int Channels, int Channel>
PXK_INLINE V channelOfBytes(V first, V last) {
    return or_(shuffleBytes(first, bytesInEachLane<V>(kChannelWordsAt<Channels, Channel, 0>.b)),
               shuffleBytes(last, bytesInEachLane<V>(kChannelWordsAt<Channels, Channel, 16>.b)));
}
template <class V, int Channels>
PXK_INLINE Group<V, 1> channelsOfBytes(V first, V last) {
    return Group<V, 1>{{{channelOfBytes<V, Channels, 0>(first, last)},
                        {channelOfBytes<V, Channels, 1>(first, last)},
                        {channelOfBytes<V, Channels, 2>(first, last)}}};
}
template <class V, int From>
PXK_INLINE V bytesOfChannels(V c01, V c2) {
    return or_(shuffleBytes(c01, bytesInEachLane<V>(kPixelBytesAt<true, From>.b)),
               shuffleBytes(c2, bytesInEachLane<V>(kPixelBytesAt<false, From>.b)));
}

// Eight pixels of four bytes (pixels 0-3 in lo, 4-7 in hi) to three channels of 16-bit
// lanes: the even bytes (channels 0 and 2) and the odd ones (1 and 3) as 16-bit lanes,
// then each channel's 32-bit halves packed in pixel order (every value fits).
template <class V>
PXK_INLINE Group<V, 1> splitFour8(V lo, V hi) {
    const V evenLo = and_(lo, splat16<V>(0xFF)), evenHi = and_(hi, splat16<V>(0xFF));
    const V oddLo = srli16<8>(lo), oddHi = srli16<8>(hi);
    const V low = splat32<V>(0xFFFF);
    return Group<V, 1>{{{packs32(and_(evenLo, low), and_(evenHi, low))},
                        {packs32(and_(oddLo, low), and_(oddHi, low))},
                        {packs32(srli32<16>(evenLo), srli32<16>(evenHi))}}};
}

// Bytes to 16-bit lanes (zero-extended): the low eight and the high eight of a lane.
template <class V>
PXK_INLINE V widenLow8(V v) { return unpacklo8(v, zero<V>()); }
template <class V>
PXK_INLINE V widenHigh8(V v) { return unpackhi8(v, zero<V>()); }

// 16-bit lanes to 32-bit lanes, sign-extended: the low four and the high four.
template <class V>
PXK_INLINE V widenLow16(V v) { return srai32<16>(unpacklo16(v, v)); }
template <class V>
PXK_INLINE V widenHigh16(V v) { return srai32<16>(unpackhi16(v, v)); }

}  // namespace simd

// ---------------------------------------------------------------------------------
// Sample types: how one sample is read into an int32 and written back.
// ---------------------------------------------------------------------------------

template <class S>
PXK_INLINE int32_t readSample(const uint8_t* p) {
    return loadSample<S>(p);
}

// 8-bit samples saturate to 0..255, 16-bit ones keep their low 16 bits.
template <class S>
PXK_INLINE void writeSample(uint8_t* p, int32_t v) {
    if constexpr (std::is_same_v<S, uint8_t>) {
        *p = clamp8(v);
    } else if constexpr (std::is_same_v<S, int16_t>) {
        storeSample(p, static_cast<int16_t>(wrap16(v)));
    } else {
        storeSample(p, v);
    }
}

// ---------------------------------------------------------------------------------
// Packed rows of Channels samples a pixel (3, or 4 with the fourth not read).
// ---------------------------------------------------------------------------------

template <class S, int Channels>
struct PackedIn {
    static_assert(sizeof(S) <= 2, "packed rows hold 8- or 16-bit samples");
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = Channels * static_cast<int>(sizeof(S));
    static constexpr int kParts = 1;
    const uint8_t* plane[1];

    template <class V>
    PXK_INLINE Group<V, 1> load(int32_t x) const {
        using namespace simd;
        using namespace lanes;
        const uint8_t* p = plane[0] + static_cast<std::ptrdiff_t>(kBytes) * x;
        if constexpr (sizeof(S) == 1 && Channels == 3) {
            V first, last;
            load24PerLane(p, first, last);
            if constexpr (kHasByteShuffle) {
                return channelsOfBytes<V, 3>(first, last);
            } else {
                return splitThree16(widenLow8(first), widenHigh8(first), widenLow8(last));
            }
        } else if constexpr (sizeof(S) == 1) {
            const V lo = loadLanes<V, 32>(p), hi = loadLanes<V, 32>(p + 16);
            if constexpr (kHasByteShuffle) {
                return channelsOfBytes<V, 4>(lo, hi);
            } else {
                return splitFour8(lo, hi);
            }
        } else if constexpr (Channels == 3) {
            return splitThree16(loadLanes<V, 48>(p), loadLanes<V, 48>(p + 16), loadLanes<V, 48>(p + 32));
        } else {
            return transposeFrom4(loadLanes<V, 64>(p), loadLanes<V, 64>(p + 16), loadLanes<V, 64>(p + 32),
                                  loadLanes<V, 64>(p + 48));
        }
    }
    PXK_INLINE Triple<int32_t> load1(int32_t x) const {
        const uint8_t* p = plane[0] + static_cast<std::ptrdiff_t>(kBytes) * x;
        return Triple<int32_t>{{readSample<S>(p), readSample<S>(p + sizeof(S)), readSample<S>(p + 2 * sizeof(S))}};
    }
};

// The fourth sample of a C4 row is set to `alpha`. 8-bit rows saturate each value to
// 0..255; 16-bit rows keep the low 16 bits.
template <class S, int Channels>
struct PackedOut {
    static_assert(sizeof(S) <= 2, "packed rows hold 8- or 16-bit samples");
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = Channels * static_cast<int>(sizeof(S));
    static constexpr int kParts = 1;
    uint8_t* plane[1];
    int32_t alpha;

    template <class V>
    PXK_INLINE void store(int32_t x, const Group<V, 1>& g) const {
        using namespace simd;
        using namespace lanes;
        uint8_t* p = plane[0] + static_cast<std::ptrdiff_t>(kBytes) * x;
        if constexpr (Channels == 3 && sizeof(S) == 1) {
            if constexpr (kHasByteShuffle) {
                const V c01 = packus16(g.c[0][0], g.c[1][0]), c2 = packus16(g.c[2][0], g.c[2][0]);
                store24PerLane(p, bytesOfChannels<V, 0>(c01, c2), bytesOfChannels<V, 16>(c01, c2));
            } else {
                V first, last;
                mergeThree8(g, first, last);
                store24PerLane(p, first, last);
            }
        } else if constexpr (Channels == 3) {
            V a, b, c;
            mergeThree16(g, a, b, c);
            storeLanes<V, 48>(p, a);
            storeLanes<V, 48>(p + 16, b);
            storeLanes<V, 48>(p + 32, c);
        } else {
            V q[4];
            transposeTo4(g, splat16<V>(alpha), q);
            if constexpr (sizeof(S) == 1) {
                storeLanes<V, 32>(p, packus16(q[0], q[1]));
                storeLanes<V, 32>(p + 16, packus16(q[2], q[3]));
            } else {
                PXK_UNROLL
                for (int i = 0; i < 4; ++i) storeLanes<V, 64>(p + 16 * i, q[i]);
            }
        }
    }
    PXK_INLINE void store1(int32_t x, Triple<int32_t> v) const {
        uint8_t* p = plane[0] + static_cast<std::ptrdiff_t>(kBytes) * x;
        PXK_UNROLL
        for (int i = 0; i < 3; ++i) writeSample<S>(p + i * sizeof(S), v.c[i]);
        if constexpr (Channels == 4) writeSample<S>(p + 3 * sizeof(S), alpha);
    }
};

// ---------------------------------------------------------------------------------
// Three planes of one sample type, one sample a pixel each.
// ---------------------------------------------------------------------------------

template <class S>
struct PlanesIn {
    static constexpr int kPlanes = 3;
    static constexpr int kBytes = static_cast<int>(sizeof(S));
    static constexpr int kParts = sizeof(S) == 4 ? 2 : 1;
    const uint8_t* plane[3];

    template <class V>
    PXK_INLINE Group<V, kParts> load(int32_t x) const {
        using namespace simd;
        Group<V, kParts> g;
        PXK_UNROLL
        for (int i = 0; i < 3; ++i) {
            const uint8_t* p = plane[i] + static_cast<std::ptrdiff_t>(kBytes) * x;
            if constexpr (sizeof(S) == 1) {
                g.c[i][0] = widenLow8(loadLowHalves<V>(p));
            } else if constexpr (sizeof(S) == 2) {
                g.c[i][0] = loadLanes<V, 16>(p);
            } else {
                g.c[i][0] = loadLanes<V, 32>(p);
                g.c[i][kParts - 1] = loadLanes<V, 32>(p + 16);
            }
        }
        return g;
    }
    PXK_INLINE Triple<int32_t> load1(int32_t x) const {
        Triple<int32_t> v;
        PXK_UNROLL
        for (int i = 0; i < 3; ++i) v.c[i] = readSample<S>(plane[i] + static_cast<std::ptrdiff_t>(kBytes) * x);
        return v;
    }
};

// Streaming stores of whole 16-byte chunks past the cache (for 32-bit planes too large
// to stay in it): the vector layer's StreamingMemory. The caller fences after the region.
using vec::StreamingMemory;

// 8-bit planes saturate each value to 0..255. Memory (vec::UnalignedMemory, or
// StreamingMemory) stores the 32-bit planes.
template <class S, class Memory = vec::UnalignedMemory>
struct PlanesOut {
    static constexpr int kPlanes = 3;
    static constexpr int kBytes = static_cast<int>(sizeof(S));
    static constexpr int kParts = sizeof(S) == 4 ? 2 : 1;
    uint8_t* plane[3];

    template <class V>
    PXK_INLINE void store(int32_t x, const Group<V, kParts>& g) const {
        using namespace simd;
        PXK_UNROLL
        for (int i = 0; i < 3; ++i) {
            uint8_t* p = plane[i] + static_cast<std::ptrdiff_t>(kBytes) * x;
            if constexpr (sizeof(S) == 1) {
                storeLowHalves(p, packus16(g.c[i][0], g.c[i][0]));
            } else if constexpr (sizeof(S) == 2) {
                storeLanes<V, 16>(p, g.c[i][0]);
            } else {
                Memory::template storeLanes<V, 32>(p, g.c[i][0]);
                Memory::template storeLanes<V, 32>(p + 16, g.c[i][kParts - 1]);
            }
        }
    }
    PXK_INLINE void store1(int32_t x, Triple<int32_t> v) const {
        PXK_UNROLL
        for (int i = 0; i < 3; ++i) writeSample<S>(plane[i] + static_cast<std::ptrdiff_t>(kBytes) * x, v.c[i]);
    }
};

}  // namespace ycocg
}  // namespace pxk
