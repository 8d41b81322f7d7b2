// Row kernels of the chroma-layout conversions: every output byte is one input byte,
// moved by interleaving or de-interleaving bytes in registers. Each kernel runs vector
// blocks of the build's widest type while whole blocks fit, then a 128-bit block,
// then single units; the split never changes a byte.
//
// Units: a pair is two bytes of an interleaved row (P2 chroma, or one chroma pair and
// its place in a packed row); a packed pair of pixels (C2) is four bytes.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <cstring>

#include "frame/vec.h"

namespace pxk {
namespace chroma {

using vec::V128;
using vec::Widest;

// Stores of a kernel: ordinary unaligned stores, or non-temporal stores to targets on
// 16-byte boundaries (rows whose start and step are multiples of 16, at offsets that
// are multiples of 16). A run of streaming stores ends with finish().
struct PlainStores : vec::UnalignedMemory {
    static void finish() {}
};
using StreamingStores = vec::StreamingMemory;

// Units of a kernel covered by one 128-bit lane, and by a whole vector of type V.
template <class V, int UnitsPerLane>
inline constexpr int32_t kUnitsOf = UnitsPerLane * vec::kLanes<V>;

// Runs block(V{}, i) for the units i.. of a block, first with the widest vector while
// a whole one fits, then once with a 128-bit one if it fits, then unit(i) for each of
// the remaining units.
template <int UnitsPerLane, class BlockFn, class UnitFn>
PXK_INLINE void forBlocks(int32_t n, BlockFn&& block, UnitFn&& unit) {
    int32_t i = 0;
    constexpr int32_t kWide = kUnitsOf<Widest, UnitsPerLane>;
    // Unrolled: a block is a handful of operations, and the loop's own counting
    // would otherwise be a good part of the work.
#pragma GCC unroll 4
    for (; n - i >= kWide; i += kWide) block(Widest{}, i);
    if constexpr (kWide > UnitsPerLane) {
        if (n - i >= UnitsPerLane) {
            block(V128{}, i);
            i += UnitsPerLane;
        }
    }
    for (; i < n; ++i) unit(i);
}

namespace simd {

using namespace vec;

// Thirty-two bytes a lane (a then b) split into their even and odd bytes. The avx2
// build gathers each vector's even bytes into its low half and odd bytes into its
// high half with a byte shuffle, then joins the halves; the sse2 build masks, shifts
// and packs.
template <class V>
PXK_INLINE void unzipBytes(V a, V b, V& even, V& odd) {
#if defined(PXKCC_TARGET_AVX2)
    static constexpr uint8_t kEvenThenOdd[16] = {0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15};
    const V split = bytesInEachLane<V>(kEvenThenOdd);
    const V sa = shuffleBytes(a, split), sb = shuffleBytes(b, split);
    even = unpacklo64(sa, sb);
    odd = unpackhi64(sa, sb);
#else
    const V low = splat16<V>(0x00FF);
    even = packus16(and_(a, low), and_(b, low));
    odd = packus16(srli16<8>(a), srli16<8>(b));
#endif
}

// The two bytes of every 16-bit lane exchanged.
template <class V>
PXK_INLINE V swapBytePairs(V v) {
    return or_(slli16<8>(v), srli16<8>(v));
}

// The even 16-bit lanes of a, then those of b, in each 128-bit lane: each kept lane
// sign-extended in its 32-bit lane, so that the signed pack takes it unchanged.
template <class V>
PXK_INLINE V evenWords(V a, V b) {
    return packs32(srai32<16>(slli32<16>(a)), srai32<16>(slli32<16>(b)));
}

// 64 bytes a lane of packed pixel pairs (luma at bytes LumaByte and LumaByte + 2 of
// each four) split: the 32 luma bytes a lane stored at y by `Stores` (unless KeepLuma
// is false), the 32 chroma bytes a lane (16-bit chroma pairs) in chroma0, chroma1.
template <int LumaByte, bool KeepLuma, class Stores, class V>
PXK_INLINE void splitPackedLanes(const uint8_t* p, uint8_t* y, V& chroma0, V& chroma1) {
    V e0, o0, e1, o1;
    unzipBytes(loadLanes<V, 64>(p), loadLanes<V, 64>(p + 16), e0, o0);
    unzipBytes(loadLanes<V, 64>(p + 32), loadLanes<V, 64>(p + 48), e1, o1);
    if (KeepLuma) {
        Stores::template storeLanes<V, 32>(y, LumaByte == 0 ? e0 : o0);
        Stores::template storeLanes<V, 32>(y + 16, LumaByte == 0 ? e1 : o1);
    }
    chroma0 = LumaByte == 0 ? o0 : e0;
    chroma1 = LumaByte == 0 ? o1 : e1;
}

// Bytes 1 and 3 of every four exchanged.
template <class V>
PXK_INLINE V swapOddBytesOfQuads(V v) {
    const V even = and_(v, splat16<V>(0x00FF));
    const V odd = and_(v, splat16<V>(0xFF00));
    return or_(even, or_(slli32<16>(odd), srli32<16>(odd)));
}

}  // namespace simd

// ---------------------------------------------------------------------------------
// Interleaved pairs to two rows: a[i] = src[2i], b[i] = src[2i + 1], for n pairs.
// With KeepA (KeepB) false that row is neither written nor needed. With SwapB, b is
// written as a row of pairs whose two bytes change places (b[i] = src[2 (i ^ 1) + 1];
// n even).
// ---------------------------------------------------------------------------------
template <bool KeepA = true, bool KeepB = true, class Stores = PlainStores, bool SwapB = false>
PXK_INLINE void unzipPairs(const uint8_t* src, uint8_t* a, uint8_t* b, int32_t n) {
    forBlocks<16>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            V even, odd;
            simd::unzipBytes(vec::loadLanes<V, 32>(src + 2 * i), vec::loadLanes<V, 32>(src + 2 * i + 16), even, odd);
            if (KeepA) Stores::template storeLanes<V, 16>(a + i, even);
            if (KeepB) Stores::template storeLanes<V, 16>(b + i, SwapB ? simd::swapBytePairs(odd) : odd);
        },
        [&](int32_t i) {
            if (KeepA) a[i] = src[2 * i];
            if (KeepB) b[i] = src[2 * (SwapB ? i ^ 1 : i) + 1];
        });
}

// Two rows to interleaved pairs: dst[2i] = a[i], dst[2i + 1] = b[i], for n pairs.
// With SwapB, b is a row of pairs itself whose two bytes change places (dst[2i + 1]
// takes b[i ^ 1]); b == a duplicates every byte of a.
template <class Stores = PlainStores, bool SwapB = false>
PXK_INLINE void zipPairs(const uint8_t* a, const uint8_t* b, uint8_t* dst, int32_t n) {
    forBlocks<16>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            const V va = vec::loadLanes<V, 16>(a + i);
            V vb = vec::loadLanes<V, 16>(b + i);
            if (SwapB) vb = simd::swapBytePairs(vb);
            Stores::template storeLanes<V, 32>(dst + 2 * i, vec::unpacklo8(va, vb));
            Stores::template storeLanes<V, 32>(dst + 2 * i + 16, vec::unpackhi8(va, vb));
        },
        [&](int32_t i) {
            dst[2 * i] = a[i];
            dst[2 * i + 1] = SwapB ? b[i ^ 1] : b[i];
        });
}

// Which chroma of packed pixel pairs a split keeps, and how it lays it out.
enum class PackedChroma {
    AllPairs,               // every pair: its first chroma byte to c0, its second to c1
    EveryOtherPair,         // pairs 0, 2, 4, ... (4:2:2 to 4:1:1), the same way
    EveryOtherPairAsPairs,  // pairs 0, 2, 4, ..., their two bytes as a row of pairs in c0
};

// Packed pixel pairs (four bytes: luma at bytes LumaByte and LumaByte + 2, chroma in
// the other two) to a luma row and the chroma that `Pick` keeps, for n output chroma
// columns (n pairs for AllPairs, else 2n). With KeepLuma false only the chroma is
// written. Luma and a row of pairs are stored by `Stores`, chroma rows by plain
// stores.
template <int LumaByte, PackedChroma Pick, bool KeepLuma = true, class Stores = PlainStores>
PXK_INLINE void unzipPackedPairs(const uint8_t* src, uint8_t* y, uint8_t* c0, uint8_t* c1, int32_t n) {
    constexpr int kChroma = 1 - LumaByte;
    // Packed bytes and luma bytes of one output chroma column.
    constexpr int kPacked = Pick == PackedChroma::AllPairs ? 4 : 8, kLuma = kPacked / 2;
    forBlocks<64 / kPacked>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            V chroma0, chroma1;
            simd::splitPackedLanes<LumaByte, KeepLuma, Stores>(src + kPacked * i, y + kLuma * i, chroma0, chroma1);
            if constexpr (Pick == PackedChroma::AllPairs) {
                V first, second;
                simd::unzipBytes(chroma0, chroma1, first, second);
                vec::storeLanes<V, 16>(c0 + i, first);
                vec::storeLanes<V, 16>(c1 + i, second);
            } else if constexpr (Pick == PackedChroma::EveryOtherPairAsPairs) {
                Stores::template storeLanes<V, 16>(c0 + 2 * i, simd::evenWords(chroma0, chroma1));
            } else {
                const V kept = simd::evenWords(chroma0, chroma1);
                V first, second;
                simd::unzipBytes(kept, kept, first, second);
                vec::storeLowHalves(c0 + i, first);
                vec::storeLowHalves(c1 + i, second);
            }
        },
        [&](int32_t i) {
            const uint8_t* p = src + kPacked * i;
            if (KeepLuma) {
                for (int k = 0; k < kLuma; ++k) y[kLuma * i + k] = p[LumaByte + 2 * k];
            }
            if constexpr (Pick == PackedChroma::EveryOtherPairAsPairs) {
                c0[2 * i] = p[kChroma];
                c0[2 * i + 1] = p[kChroma + 2];
            } else {
                c0[i] = p[kChroma];
                c1[i] = p[kChroma + 2];
            }
        });
}

// The inverse: a luma row and two chroma rows to packed pixel pairs, for n pairs.
template <int LumaByte, class Stores = PlainStores>
PXK_INLINE void zipPackedPairs(const uint8_t* y, const uint8_t* c0, const uint8_t* c1, uint8_t* dst, int32_t n) {
    constexpr int kChroma = 1 - LumaByte;
    forBlocks<16>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            const V cc0 = vec::loadLanes<V, 16>(c0 + i), cc1 = vec::loadLanes<V, 16>(c1 + i);
            const V clo = vec::unpacklo8(cc0, cc1), chi = vec::unpackhi8(cc0, cc1);
            const V y0 = vec::loadLanes<V, 32>(y + 2 * i), y1 = vec::loadLanes<V, 32>(y + 2 * i + 16);
            uint8_t* p = dst + 4 * i;
            if constexpr (LumaByte == 0) {
                Stores::template storeLanes<V, 64>(p, vec::unpacklo8(y0, clo));
                Stores::template storeLanes<V, 64>(p + 16, vec::unpackhi8(y0, clo));
                Stores::template storeLanes<V, 64>(p + 32, vec::unpacklo8(y1, chi));
                Stores::template storeLanes<V, 64>(p + 48, vec::unpackhi8(y1, chi));
            } else {
                Stores::template storeLanes<V, 64>(p, vec::unpacklo8(clo, y0));
                Stores::template storeLanes<V, 64>(p + 16, vec::unpackhi8(clo, y0));
                Stores::template storeLanes<V, 64>(p + 32, vec::unpacklo8(chi, y1));
                Stores::template storeLanes<V, 64>(p + 48, vec::unpackhi8(chi, y1));
            }
        },
        [&](int32_t i) {
            uint8_t* p = dst + 4 * i;
            p[LumaByte] = y[2 * i];
            p[LumaByte + 2] = y[2 * i + 1];
            p[kChroma] = c0[i];
            p[kChroma + 2] = c1[i];
        });
}

// A luma row and a row of 4:1:1 chroma pairs (first chroma byte first) into packed
// pixel pairs, each chroma pair going into two packed pairs, for n chroma pairs (4n
// luma bytes, 8n packed bytes).
template <int LumaByte, class Stores = PlainStores>
PXK_INLINE void zipPackedRepeatedPairs(const uint8_t* y, const uint8_t* pairs, uint8_t* dst, int32_t n) {
    constexpr int kChroma = 1 - LumaByte;
    forBlocks<8>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            using namespace vec;
            const V p = loadLanes<V, 16>(pairs + 2 * i);
            const V c0 = unpacklo16(p, p), c1 = unpackhi16(p, p);
            const V y0 = loadLanes<V, 32>(y + 4 * i), y1 = loadLanes<V, 32>(y + 4 * i + 16);
            uint8_t* q = dst + 8 * i;
            if constexpr (LumaByte == 0) {
                Stores::template storeLanes<V, 64>(q, unpacklo8(y0, c0));
                Stores::template storeLanes<V, 64>(q + 16, unpackhi8(y0, c0));
                Stores::template storeLanes<V, 64>(q + 32, unpacklo8(y1, c1));
                Stores::template storeLanes<V, 64>(q + 48, unpackhi8(y1, c1));
            } else {
                Stores::template storeLanes<V, 64>(q, unpacklo8(c0, y0));
                Stores::template storeLanes<V, 64>(q + 16, unpackhi8(c0, y0));
                Stores::template storeLanes<V, 64>(q + 32, unpacklo8(c1, y1));
                Stores::template storeLanes<V, 64>(q + 48, unpackhi8(c1, y1));
            }
        },
        [&](int32_t i) {
            for (int k = 0; k < 2; ++k) {
                uint8_t* q = dst + 8 * i + 4 * k;
                q[LumaByte] = y[4 * i + 2 * k];
                q[LumaByte + 2] = y[4 * i + 2 * k + 1];
                q[kChroma] = pairs[2 * i];
                q[kChroma + 2] = pairs[2 * i + 1];
            }
        });
}

// Packed pixel pairs with their bytes rearranged, for n pairs: SwapChroma exchanges
// bytes 1 and 3 of each four, SwapPairs bytes 0 and 1 and bytes 2 and 3.
enum class QuadOrder { SwapOdd, SwapPairs };

template <QuadOrder Order, class Stores = PlainStores>
PXK_INLINE void reorderPackedPairs(const uint8_t* src, uint8_t* dst, int32_t n) {
    forBlocks<4>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            const V v = vec::loadLanes<V, 16>(src + 4 * i);
            Stores::template storeLanes<V, 16>(dst + 4 * i,
                                          Order == QuadOrder::SwapOdd ? simd::swapOddBytesOfQuads(v)
                                                                      : simd::swapBytePairs(v));
        },
        [&](int32_t i) {
            const uint8_t* s = src + 4 * i;
            uint8_t* d = dst + 4 * i;
            const uint8_t b0 = s[0], b1 = s[1], b2 = s[2], b3 = s[3];
            if (Order == QuadOrder::SwapOdd) {
                d[0] = b0, d[1] = b3, d[2] = b2, d[3] = b1;
            } else {
                d[0] = b1, d[1] = b0, d[2] = b3, d[3] = b2;
            }
        });
}

}  // namespace chroma
}  // namespace pxk
