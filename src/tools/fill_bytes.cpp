#include "tools/fill_bytes.h"

#include <emmintrin.h>

#include <cstddef>

#include "frame/checks.h"
#include "frame/cpu.h"
#include "frame/drivers.h"
#include "frame/vec.h"

namespace pxk {

namespace {

constexpr int64_t kCachedFillLimit = 524288;

// One 64-byte round at an aligned address, by ordinary or streaming stores.
template <bool Streaming>
PXK_INLINE void storeRound(uint8_t* p, vec::V128 pattern) {
    PXK_UNROLL
    for (int i = 0; i < 4; ++i) {
        __m128i* q = reinterpret_cast<__m128i*>(p + 16 * i);
        if constexpr (Streaming) {
            _mm_stream_si128(q, pattern);
        } else {
            _mm_store_si128(q, pattern);
        }
    }
}

// One run of n bytes: plain stores up to the first 16-byte aligned address, aligned
// rounds of 64 bytes, then plain stores (16 bytes, then single bytes) after the last
// full round. A run too short for a round takes plain stores only.
template <bool Streaming>
void fillRun(uint8_t* p, std::size_t n, uint8_t value, vec::V128 pattern) {
    std::size_t i = 0;
    const std::size_t head = (16 - (reinterpret_cast<std::uintptr_t>(p) & 15)) & 15;
    if (n >= head + 64) {
        for (; i < head; ++i) p[i] = value;
        for (; n - i >= 64; i += 64) storeRound<Streaming>(p + i, pattern);
    }
    for (; n - i >= 16; i += 16) vec::store128(p + i, pattern);
    for (; i < n; ++i) p[i] = value;
}

template <bool Streaming>
void fillRegion(uint8_t value, uint8_t* pDst, int32_t dstStep, int32_t width, int32_t height) {
    const vec::V128 pattern = _mm_set1_epi8(static_cast<char>(value));
    if (dstStep == width) {
        fillRun<Streaming>(pDst, static_cast<std::size_t>(width) * static_cast<std::size_t>(height), value, pattern);
    } else {
        driveRows(
            width, height, [&](int32_t w, uint8_t* row) { fillRun<Streaming>(row, static_cast<std::size_t>(w), value, pattern); },
            rows(pDst, dstStep));
    }
}

}  // namespace

PxkResult pxkFillBytes(uint8_t value, uint8_t* pDst, int32_t dstStep, int32_t width, int32_t height) {
    PXK_CHECK(checkPtrs(pDst));
    PXK_CHECK(checkSize(PxkSize{width, height}, 1, 1));
    const int64_t total = int64_t{width} * height;
    int32_t cacheBytes = 0;
    if (total > kCachedFillLimit && pxkGetMaxCacheSizeB(&cacheBytes) == 0 && total >= cacheBytes) {
        fillRegion<true>(value, pDst, dstStep, width, height);
        _mm_sfence();
    } else {
        fillRegion<false>(value, pDst, dstStep, width, height);
    }
    return pxkOk;
}

}  // namespace pxk
