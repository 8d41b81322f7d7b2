// 12-bit samples between 16-bit containers and packed rows of three bytes for two
// samples (the forms in pack12_forms.h). An odd last sample takes bytes 0 and 1, the
// low half of byte 1 written as 0. Each row starts a new group.
//
// A row runs in vector blocks of 16 samples a 128-bit lane (24 packed bytes) while
// they last, then pair by pair; every column gets the same bits either way.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/vec_float.h"
#include "tools/lane_memory.h"
#include "tools/pack12_forms.h"
#include "tools/samples.h"

using namespace pxk;
using namespace pxk::pack12;

namespace {

using namespace vec;

// Without byte shuffles (SSE2), the groups move by 64-bit halves. Each pair (a, b) is
// the 24-bit number a * 4096 + b (see groupNumbers below), the first group's bytes
// high first; the two numbers of a half make one 48-bit number, first group on top,
// whose six bytes reversed are the half's packed bytes. A byte reversal is a reversal
// of the 16-bit words followed by a swap of the bytes in each word. The words go where
// two halves' packed bytes meet in the middle: the lower half's six bytes at bytes 2-7,
// the upper half's at 8-13, the rest zero, so that twelve packed bytes lie in a row.
// The word moves are their own inverse, so unpacking takes the same steps back.
template <class V>
PXK_INLINE V wordsToMiddle(V halves) {
    return shuffleHigh16<_MM_SHUFFLE(3, 0, 1, 2)>(shuffleLow16<_MM_SHUFFLE(0, 1, 2, 3)>(halves));
}
template <class V>
PXK_INLINE V swapBytesOfWords(V v) {
    return or_(slli16<8>(v), srli16<8>(v));
}

// Four group numbers to twelve packed bytes at bytes 2-13 (zeros around them).
template <class V>
PXK_INLINE V middleOfNumbers(V numbers) {
    const V halves = or_(mulEvenU32(numbers, splat32<V>(1 << 24)), srli64<32>(numbers));  // bits 48-63 zero
    return swapBytesOfWords(wordsToMiddle(halves));
}
// Twelve packed bytes at bytes 2-13 (any bytes around them) to the four group numbers.
template <class V>
PXK_INLINE V numbersOfMiddle(V middle) {
    const V halves = wordsToMiddle(swapBytesOfWords(middle));  // 48-bit numbers; bits 48-63 as they come
    // First groups (bits 24-47) and second groups (bits 0-23) of each half, in the
    // order of the groups, with the bits above 24 cleared.
    const V firstsThenSeconds = shuffle2x32<_MM_SHUFFLE(2, 0, 2, 0)>(srli64<24>(halves), halves);
    return and_(shuffle32<_MM_SHUFFLE(3, 1, 2, 0)>(firstsThenSeconds), splat32<V>(0x00FFFFFF));
}
// Four group numbers to eight samples: a = number >> 12, b = its low 12 bits.
template <class V>
PXK_INLINE V samplesOfNumbers(V numbers) {
    return or_(srli32<12>(numbers), srli16<4>(slli32<20>(numbers)));
}

// Where the build has byte shuffles, a shorter network moves the same bits: each pair
// (a, b) becomes the 24-bit number a * 4096 + b (one multiply-add of its two 12-bit
// samples), whose bytes, high first, are the group's bytes 0, 1, 2; one shuffle
// reverses and gathers them. Back, one shuffle puts bytes (0, 1) and (1, 2) of each
// group high-first into two 16-bit words, and sample a is the first word shifted right
// by 4, sample b the second word's low 12 bits (times 16, then shifted right by 4).
constexpr uint8_t kNone = 0x80;  // a shuffle index that gives a zero byte
constexpr uint8_t kGroupsHighFirst[16] = {2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, kNone, kNone, kNone, kNone};
constexpr uint8_t kFirstGroupsAtTwelve[16] = {kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone,
                                              kNone, kNone, kNone, kNone, 2,     1,     0,     6};
constexpr uint8_t kLastGroupsFromFive[16] = {5, 4, 10, 9, 8, 14, 13, 12, kNone, kNone, kNone, kNone,
                                             kNone, kNone, kNone, kNone};
constexpr uint8_t kWordsOfGroups[16] = {1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10};

// Eight samples a lane to four groups, a * 4096 + b in each 32-bit lane.
template <class V>
PXK_INLINE V groupNumbers(V samples) {
    return madd16(and_(samples, splat32<V>(0x0FFF0FFF)), pairs<V>(4096, 1));
}
// Four groups a lane, as three bytes each from byte 0, to eight samples.
template <class V>
PXK_INLINE V samplesOfGroups(V bytes) {
    const V words = shuffleBytes(bytes, bytesInEachLane<V>(kWordsOfGroups));
    return srli16<4>(mullo16(words, pairs<V>(1, 16)));
}

// Sixteen samples a lane (32 bytes) to 24 packed bytes.
template <class V>
PXK_INLINE void packBlock(const uint8_t* src, uint8_t* dst) {
    if constexpr (kHasByteShuffle) {
        const V lo = groupNumbers(loadLanes<V, 32>(src));
        const V hi = groupNumbers(loadLanes<V, 32>(src + 16));
        const V first = or_(shuffleBytes(lo, bytesInEachLane<V>(kGroupsHighFirst)),
                            shuffleBytes(hi, bytesInEachLane<V>(kFirstGroupsAtTwelve)));
        lanes::store24PerLane(dst, first, shuffleBytes(hi, bytesInEachLane<V>(kLastGroupsFromFive)));
    } else {
        const V lo = middleOfNumbers(groupNumbers(loadLanes<V, 32>(src)));
        const V hi = middleOfNumbers(groupNumbers(loadLanes<V, 32>(src + 16)));
        lanes::store24PerLane(dst, or_(bytesDown<2>(lo), bytesUp<10>(hi)), bytesDown<6>(hi));
    }
}

// 24 packed bytes a lane to sixteen samples.
template <class V>
PXK_INLINE void unpackBlock(const uint8_t* src, uint8_t* dst) {
    V first, last;
    lanes::load24PerLane(src, first, last);
    V lo, hi;
    if constexpr (kHasByteShuffle) {
        lo = samplesOfGroups(first);
        hi = samplesOfGroups(or_(bytesDown<12>(first), bytesUp<4>(last)));  // bytes 12-23
    } else {
        // Bytes 0-11 and 12-23, each moved to bytes 2-13.
        lo = samplesOfNumbers(numbersOfMiddle(bytesUp<2>(first)));
        hi = samplesOfNumbers(numbersOfMiddle(bytesDown<2>(lanes::loadLast16PerLane<V>(src))));
    }
    storeLanes<V, 32>(dst, lo);
    storeLanes<V, 32>(dst + 16, hi);
}

// Runs block<V>(x) over the whole blocks of a row (16 samples a lane, widest vector
// first) and returns the first column left over.
template <class BlockFn>
PXK_INLINE int32_t wholeBlocks(int32_t width, BlockFn&& block) {
    constexpr int32_t kWide = 16 * kLanes<Widest>;
    int32_t x = 0;
    for (; width - x >= kWide; x += kWide) block(Widest{}, x);
    for (; width - x >= 16; x += 16) block(V128{}, x);
    return x;
}

void packRow(int32_t width, const uint16_t* src, uint8_t* dst) {
    const auto* s = reinterpret_cast<const uint8_t*>(src);
    int32_t x = wholeBlocks(width, [&](auto v, int32_t at) PXK_LAMBDA_INLINE {
        packBlock<decltype(v)>(s + 2 * static_cast<std::ptrdiff_t>(at), dst + 3 * static_cast<std::ptrdiff_t>(at / 2));
    });
    for (; x < width; x += 2) {
        const uint32_t b = x + 1 < width ? loadSample<uint16_t>(src + x + 1) : 0;
        const uint32_t group = packPair<ScalarWords>(loadSample<uint16_t>(src + x) | (b << 16));
        uint8_t* d = dst + 3 * static_cast<std::ptrdiff_t>(x / 2);
        d[0] = static_cast<uint8_t>(group);
        d[1] = static_cast<uint8_t>(group >> 8);
        if (x + 1 < width) d[2] = static_cast<uint8_t>(group >> 16);
    }
}

void unpackRow(int32_t width, const uint8_t* src, uint16_t* dst) {
    auto* d = reinterpret_cast<uint8_t*>(dst);
    int32_t x = wholeBlocks(width, [&](auto v, int32_t at) PXK_LAMBDA_INLINE {
        unpackBlock<decltype(v)>(src + 3 * static_cast<std::ptrdiff_t>(at / 2), d + 2 * static_cast<std::ptrdiff_t>(at));
    });
    for (; x < width; x += 2) {
        const uint8_t* g = src + 3 * static_cast<std::ptrdiff_t>(x / 2);
        const uint32_t byte2 = x + 1 < width ? g[2] : 0;  // an odd last sample reads two bytes
        const uint32_t pair = unpackGroup<ScalarWords>(g[0] | (uint32_t{g[1]} << 8) | (byte2 << 16));
        storeSample(dst + x, static_cast<uint16_t>(pair));
        if (x + 1 < width) storeSample(dst + x + 1, static_cast<uint16_t>(pair >> 16));
    }
}

// The checks of both, in their order (pointers, size, then steps), then the rows.
template <class Row, class S, class D>
PxkResult checkedRows(Row row, const S* src, int32_t srcStep, D* dst, int32_t dstStep, int32_t width, int32_t height) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(PxkSize{width, height}, 1, 1));
    PXK_CHECK(checkSteps(srcStep, dstStep));
    driveRows(width, height, row, rows(src, srcStep), rows(dst, dstStep));
    return pxkOk;
}

}  // namespace

extern "C" {

PxkResult pxkiPack_16u12u_C1R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t width,
                              int32_t height) {
    return checkedRows(packRow, pSrc, srcStep, pDst, dstStep, width, height);
}

PxkResult pxkiUnpack_12u16u_C1R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, int32_t width,
                                int32_t height) {
    return checkedRows(unpackRow, pSrc, srcStep, pDst, dstStep, width, height);
}

}  // extern "C"
