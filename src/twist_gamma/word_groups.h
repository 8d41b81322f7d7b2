// Groups of four pixels of 16-bit samples as float lanes, one group a 128-bit lane:
// a V128 holds one group, a V256 (avx2 build) two groups of consecutive pixels. The
// three channels of a C3 or AC4 row come out as one float vector each, exactly;
// 16s samples are offset by 32768 on the way (AC4: their sign bit flipped; C3: the
// offset added as a float). Layouts only: the arithmetic lives in the forms.
//
// Neither layout needs a transpose. AC4: two pixels are one 128-bit load, and a
// pixel's first two samples (and its last two) are one 32-bit lane, so one dword pick
// a pair and a mask or a shift a channel suffice. C3 16s: a dword pick a channel takes
// the pairs that hold its samples, and a madd keeps the low or the high sample of
// each pair. C3 16u: float picks (sse2), byte shuffles (avx2).
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/vec_float.h"
#include "twist_gamma/float_quads.h"

namespace pxk {
namespace words {

template <class F>
struct Channels3 {
    F c[3];
};

// The samples of v with their sign bit flipped when Offset (16s plus 32768).
template <bool Offset, class V>
PXK_INLINE V offsetOf(V v) {
    if constexpr (Offset) {
        return vec::xor_(v, vec::splat16<V>(0x8000));
    } else {
        return v;
    }
}

// The groups of an AC4 row from p (4 pixels a 128-bit lane, 32 bytes a group).
template <class V, bool Offset>
PXK_INLINE Channels3<vec::FloatOf<V>> loadAC4(const uint8_t* p) {
    using namespace vec;
    // Each 128-bit lane: pixels 0-1 of its group in a, pixels 2-3 in b.
    const V a = offsetOf<Offset>(loadLanes<V, 32>(p));
    const V b = offsetOf<Offset>(loadLanes<V, 32>(p + 16));
    const V first = shuffle2x32<_MM_SHUFFLE(2, 0, 2, 0)>(a, b);   // channels 0 and 1 of pixels 0-3
    const V second = shuffle2x32<_MM_SHUFFLE(3, 1, 3, 1)>(a, b);  // channels 2 and 3
    const V low = splat32<V>(0xFFFF);
    return {{toFloat(and_(first, low)), toFloat(srli32<16>(first)), toFloat(and_(second, low))}};
}

// Two 16-byte chunks 8 bytes apart in each 128-bit lane (samples 0-7 and 4-11 of its
// group), for C3 groups.
PXK_INLINE void groupChunks(const uint8_t* p, vec::V128& a, vec::V128& b) {
    a = vec::load128(p);
    b = vec::load128(p + 8);
}
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE void groupChunks(const uint8_t* p, vec::V256& a, vec::V256& b) {
    a = vec::loadTwoChunks<24>(p);
    b = vec::loadTwoChunks<24>(p + 8);
}
#endif

// One channel of a C3 group: the 32-bit lanes (sample pairs) that Pick takes from the
// two chunks, of each the low sample (First) or the high one, alternately. A madd with
// the pair (1, 0) or (0, 1) keeps the one, read as signed (16s samples as they are);
// the offset of 32768 goes on as a float, exactly.
template <int Pick, bool First, class V>
PXK_INLINE vec::FloatOf<V> c3Channel(V a, V b) {
    using namespace vec;
    const V pair = shuffle2x32<Pick>(a, b);
    const V one = splat32Pattern<V>(First ? 1 : 0x10000, First ? 0x10000 : 1, First ? 1 : 0x10000,
                                    First ? 0x10000 : 1);
    using F = FloatOf<V>;
    return addF(toFloat(madd16(pair, one)), splatF<F>(32768.0f));
}

// The groups of a 16s C3 row from p (4 pixels a 128-bit lane, 24 bytes a group). In each
// lane, a holds the 32-bit pairs a0..a3 of samples 0-7 and b the pairs b0..b3 of
// samples 4-11 (b1 is a3): channel 0 is lo a0, hi a1, lo b1, hi b2; channel 1 hi a0,
// lo a2, hi b1, lo b3; channel 2 lo a1, hi a2, lo b2, hi b3.
template <class V>
PXK_INLINE Channels3<vec::FloatOf<V>> loadC3Signed(const uint8_t* p) {
    V a, b;
    groupChunks(p, a, b);
    return {{c3Channel<_MM_SHUFFLE(2, 1, 1, 0), true>(a, b), c3Channel<_MM_SHUFFLE(3, 1, 2, 0), false>(a, b),
             c3Channel<_MM_SHUFFLE(3, 2, 2, 1), true>(a, b)}};
}

// The groups of a 16u C3 row from p (4 pixels a 128-bit lane, 24 bytes a group): the
// float picks of float_quads.h on 128-bit vectors, byte shuffles on 256-bit ones. (The
// madd route of the 16s rows measures slower here, where the merge of the results
// into words takes the shuffle unit too.)
template <class V>
PXK_INLINE Channels3<vec::FloatOf<V>> loadC3Unsigned(const uint8_t* p);

template <>
PXK_INLINE Channels3<vec::F128> loadC3Unsigned<vec::V128>(const uint8_t* p) {
    const quads::Channels3 r = quads::loadC3(reinterpret_cast<const uint16_t*>(p));
    return {{r.c[0], r.c[1], r.c[2]}};
}

#if defined(PXKCC_TARGET_AVX2)
// Byte-shuffle masks that move samples of a 16-byte lane into zero-extended 32-bit
// lanes: for channel c, from[c] names the sample each 32-bit lane takes (-1: none).
// Both 128-bit lanes of a mask are alike.
struct WidenMasks {
    alignas(32) uint8_t b[3][32];
};
constexpr WidenMasks widenMasks(const int (&from)[3][4]) {
    WidenMasks m{};
    for (int c = 0; c < 3; ++c) {
        for (int i = 0; i < 32; ++i) {
            const int at = from[c][(i % 16) / 4];
            const bool take = at >= 0 && (i % 4) < 2;
            m.b[c][i] = take ? static_cast<uint8_t>(2 * at + (i % 2)) : uint8_t{0x80};
        }
    }
    return m;
}
// Lane 0 holds samples 0-7 in a and 4-11 in b (pixels 0-3), lane 1 samples 12-19 and
// 16-23 (pixels 4-7): channel c of pixel k is sample 3k + c of its lane, in a up to
// sample 7, else in b (four places lower).
inline constexpr int kC3FromA[3][4] = {{0, 3, 6, -1}, {1, 4, 7, -1}, {2, 5, -1, -1}};
inline constexpr int kC3FromB[3][4] = {{-1, -1, -1, 5}, {-1, -1, -1, 6}, {-1, -1, 4, 7}};
inline constexpr WidenMasks kC3MasksA = widenMasks(kC3FromA);
inline constexpr WidenMasks kC3MasksB = widenMasks(kC3FromB);

template <>
PXK_INLINE Channels3<vec::F256> loadC3Unsigned<vec::V256>(const uint8_t* p) {
    using namespace vec;
    V256 a, b;
    groupChunks(p, a, b);
    Channels3<F256> r;
    PXK_UNROLL
    for (int c = 0; c < 3; ++c) {
        const V256 fromA = _mm256_load_si256(reinterpret_cast<const __m256i*>(kC3MasksA.b[c]));
        const V256 fromB = _mm256_load_si256(reinterpret_cast<const __m256i*>(kC3MasksB.b[c]));
        r.c[c] = toFloat(or_(shuffleBytes(a, fromA), shuffleBytes(b, fromB)));
    }
    return r;
}
#endif

// The groups of a C3 row, 16u or (Offset) 16s.
template <class V, bool Offset>
PXK_INLINE Channels3<vec::FloatOf<V>> loadC3(const uint8_t* p) {
    if constexpr (Offset) {
        return loadC3Signed<V>(p);
    } else {
        return loadC3Unsigned<V>(p);
    }
}

}  // namespace words
}  // namespace pxk
