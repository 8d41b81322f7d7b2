// The 8u and 16u gamma members: each colour sample replaced by its entry in the
// forward or inverse table of its type (gamma_tables.h); in place and not in place are
// the same. The lookup is a gather, which neither vector instruction set of the two
// builds does faster than the scalar loads; the rows of C3 and of planes, whose every
// sample is converted, go a 64-bit word of 8u samples at a time (lookupWord), and in
// the avx2 build 32 8u samples at a time by byte shuffles (byte_lookup.h).
#include "frame/checks.h"
#include "pxkcc.h"
#include "twist_gamma/byte_lookup.h"
#include "twist_gamma/gamma_region.h"
#include "twist_gamma/gamma_tables.h"

using namespace pxk;
using namespace pxk::gamma;

namespace {

// The eight byte samples of one 64-bit word, each replaced by its entry: one load for
// the word, one a sample for the table, one store for the word, where sample by sample
// takes a load of the sample, a load of its entry and a store each; the shifts that
// take the word apart and put it back together run beside them. (16u rows stay sample
// by sample: their table does not fit the first-level cache, the misses bound them,
// and words measure no faster, slower in place.)
template <class T, class E>
PXK_INLINE uint64_t lookupWord(uint64_t in, const E* table) {
    constexpr int kBits = 8 * static_cast<int>(sizeof(T));
    constexpr uint64_t kMask = (uint64_t{1} << kBits) - 1u;
    uint64_t out = 0;
    PXK_UNROLL
    for (int k = 0; k < 64 / kBits; ++k) out |= (uint64_t{table[(in >> (k * kBits)) & kMask]} & kMask) << (k * kBits);
    return out;
}

// The table of a call as the row kernels read it. In the avx2 build a byte table is
// also held for the shuffle lookup (byte_lookup.h), built once a call and only when
// the rows are long enough to use it.
template <class T, class E>
struct Lookup {
    Lookup(const E* t, std::ptrdiff_t) : table(t) {}
    const E* table;
};
#if defined(PXKCC_TARGET_AVX2)
constexpr std::ptrdiff_t kShuffleRun = 32;  // samples a shuffle lookup takes
template <class E>
struct Lookup<uint8_t, E> {
    Lookup(const E* t, std::ptrdiff_t run) : table(t), shuffles(run >= kShuffleRun) {
        if (shuffles) shuffle = shuffleTableOf(t);
    }
    const E* table;
    bool shuffles;
    ShuffleTable shuffle{};  // zeros until built
};
#endif

// A run of `count` 8u samples, all converted (a C3 row, or a row of one plane): blocks
// of 32 byte samples by shuffles (avx2 build), whole words of bytes while they last,
// two at a time, then sample by sample.
template <class T, class E>
void lookupRun(const T* src, T* dst, std::ptrdiff_t count, const Lookup<T, E>& lut) {
    static_assert(sizeof(T) == 1, "byte samples");
    constexpr std::ptrdiff_t kPerWord = static_cast<std::ptrdiff_t>(sizeof(uint64_t) / sizeof(T));
    const E* table = lut.table;  // a local: the byte stores could alias the member
    std::ptrdiff_t i = 0;
#if defined(PXKCC_TARGET_AVX2)
    if (lut.shuffles) {
        for (; i + kShuffleRun <= count; i += kShuffleRun) {
            const vec::V256 s = vec::loadLanes<vec::V256, 16>(src + i);
            vec::storeLanes<vec::V256, 16>(dst + i, lookup32(s, lut.shuffle));
        }
    }
#endif
    for (; i + 2 * kPerWord <= count; i += 2 * kPerWord) {
        const uint64_t a = loadSample<uint64_t>(src + i), b = loadSample<uint64_t>(src + i + kPerWord);
        storeSample<uint64_t>(dst + i, lookupWord<T>(a, table));
        storeSample<uint64_t>(dst + i + kPerWord, lookupWord<T>(b, table));
    }
    for (; i < count; ++i) storeSample(dst + i, static_cast<T>(table[loadSample(src + i)]));
}

// Pixels of `Channels` converted samples a stride apart, the samples beyond them not
// converted (all 16u rows, and 8u AC4 rows), sample by sample: the fourth sample of a
// destination pixel is neither read nor written. (Looking 8u pixels up by byte
// shuffles gains nothing here: their colour bytes must still be stored pixel by pixel
// around the fourth.)
template <class Layout, class T, class E>
void lookupPixels(const T* src, T* dst, int32_t width, const Lookup<T, E>& lut) {
    const E* table = lut.table;  // a local: the byte stores could alias the member
    for (int32_t x = 0; x < width; ++x) {
        const T* s = src + static_cast<std::ptrdiff_t>(x) * Layout::kStride;
        T* d = dst + static_cast<std::ptrdiff_t>(x) * Layout::kStride;
        PXK_UNROLL
        for (int c = 0; c < Layout::kChannels; ++c) storeSample(d + c, static_cast<T>(table[loadSample(s + c)]));
    }
}

template <class Layout, class T, class E>
PXK_INLINE void lookupRow(const T* src, T* dst, int32_t width, const Lookup<T, E>& lut) {
    if constexpr (Layout::kChannels == Layout::kStride && sizeof(T) == 1) {
        lookupRun(src, dst, std::ptrdiff_t{width} * Layout::kStride, lut);
    } else {
        lookupPixels<Layout>(src, dst, width, lut);
    }
}

template <class Layout, class T, class E>
PxkResult lookupPacked(const T* src, int32_t srcStep, T* dst, int32_t dstStep, PxkSize size, const E* table) {
    PXK_CHECK(checkPacked(src, srcStep, dst, dstStep, size));
    // Only rows whose every sample is converted take the shuffle table.
    const std::ptrdiff_t run = Layout::kChannels == Layout::kStride ? std::ptrdiff_t{size.width} * Layout::kStride : 0;
    const Lookup<T, E> lut(table, run);
    walkPacked(src, srcStep, dst, dstStep, size,
               [&lut](const T* s, T* d, int32_t width) { lookupRow<Layout>(s, d, width, lut); });
    return pxkOk;
}

template <class T, class E>
PxkResult lookupPlanar(const T* const* src, int32_t srcStep, T* const* dst, int32_t dstStep, PxkSize size,
                       const E* table) {
    PXK_CHECK(checkPlanar(src, srcStep, dst, dstStep, size));
    const Lookup<T, E> lut(table, size.width);
    walkPlanes(src, srcStep, dst, dstStep, size,
               [&lut](const T* s, T* d, int32_t width) { lookupRow<Plane>(s, d, width, lut); });
    return pxkOk;
}

}  // namespace

// The six forms of one direction and type, reading `table`.
#define PXK_GAMMA_TABLE_MEMBERS(Dir, Type, T, table)                                                            \
    PxkResult pxkiGamma##Dir##_##Type##_C3R(const T* pSrc, int32_t srcStep, T* pDst, int32_t dstStep,          \
                                            PxkSize roiSize) {                                                 \
        return lookupPacked<C3>(pSrc, srcStep, pDst, dstStep, roiSize, table);                                 \
    }                                                                                                          \
    PxkResult pxkiGamma##Dir##_##Type##_C3IR(T* pSrcDst, int32_t srcDstStep, PxkSize roiSize) {                \
        return lookupPacked<C3>(pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, table);                     \
    }                                                                                                          \
    PxkResult pxkiGamma##Dir##_##Type##_AC4R(const T* pSrc, int32_t srcStep, T* pDst, int32_t dstStep,         \
                                             PxkSize roiSize) {                                                \
        return lookupPacked<AC4>(pSrc, srcStep, pDst, dstStep, roiSize, table);                                \
    }                                                                                                          \
    PxkResult pxkiGamma##Dir##_##Type##_AC4IR(T* pSrcDst, int32_t srcDstStep, PxkSize roiSize) {               \
        return lookupPacked<AC4>(pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, table);                    \
    }                                                                                                          \
    PxkResult pxkiGamma##Dir##_##Type##_P3R(const T* const pSrc[3], int32_t srcStep, T* const pDst[3],         \
                                            int32_t dstStep, PxkSize roiSize) {                                \
        return lookupPlanar(pSrc, srcStep, pDst, dstStep, roiSize, table);                                     \
    }                                                                                                          \
    PxkResult pxkiGamma##Dir##_##Type##_IP3R(T* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize) {       \
        return lookupPlanar(pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, table);                         \
    }

extern "C" {

// pxkiGammaFwd_8u_C3R, _C3IR, _AC4R, _AC4IR, _P3R, _IP3R, and the same of GammaInv_8u,
// GammaFwd_16u and GammaInv_16u.
PXK_GAMMA_TABLE_MEMBERS(Fwd, 8u, uint8_t, kForward8u)
PXK_GAMMA_TABLE_MEMBERS(Inv, 8u, uint8_t, kInverse8u)
PXK_GAMMA_TABLE_MEMBERS(Fwd, 16u, uint16_t, kForward16u)
PXK_GAMMA_TABLE_MEMBERS(Inv, 16u, uint16_t, kInverse16u)

}  // extern "C"
