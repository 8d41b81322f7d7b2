#include "chroma/row_copier.h"

#include <immintrin.h>

#include <cstring>

#include "frame/drivers.h"

namespace pxk {
namespace chroma {

namespace {

template <std::size_t N>
inline void moveBytes(const uint8_t* src, uint8_t* dst) {
    uint8_t chunk[N];
    std::memcpy(chunk, src, N);
    std::memcpy(dst, chunk, N);
}

inline __m128i load16(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }

// 64 bytes a round to a target on a 16-byte boundary, `rounds` times.
template <bool Stream>
inline void copyRounds(const uint8_t*& src, uint8_t*& dst, std::size_t rounds) {
#if defined(PXKCC_TARGET_AVX2)
    // Ordinary stores go 32 bytes at a time where the build has them (the target is
    // only sure of 16-byte alignment, so unaligned ones); the bytes are the same.
    if (!Stream) {
        for (; rounds > 0; --rounds, src += 64, dst += 64) {
            const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src));
            const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src + 32));
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst), a);
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + 32), b);
        }
        return;
    }
#endif
    for (; rounds > 0; --rounds, src += 64, dst += 64) {
        const __m128i a = load16(src), b = load16(src + 16), c = load16(src + 32), d = load16(src + 48);
        __m128i* t = reinterpret_cast<__m128i*>(dst);
        if (Stream) {
            _mm_stream_si128(t, a);
            _mm_stream_si128(t + 1, b);
            _mm_stream_si128(t + 2, c);
            _mm_stream_si128(t + 3, d);
        } else {
            _mm_store_si128(t, a);
            _mm_store_si128(t + 1, b);
            _mm_store_si128(t + 2, c);
            _mm_store_si128(t + 3, d);
        }
    }
}

}  // namespace

bool streamingAllowed(const uint8_t* src, const uint8_t* dst) {
    const uint32_t low = static_cast<uint32_t>(reinterpret_cast<std::uintptr_t>(src) -
                                               reinterpret_cast<std::uintptr_t>(dst)) & 0xFFFFu;
    return low < 0xFEC0u || low > 0xFFF0u;
}

void copyRow(const uint8_t* src, uint8_t* dst, std::size_t bytes, bool nonTemporal, bool addressTest) {
    bool streamed = false;
    if (bytes >= 64) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst), load16(src));
        // On to the next 16-byte boundary of the target (16 bytes on from an aligned
        // target): the bytes skipped were just stored.
        const std::size_t skip = 16 - (reinterpret_cast<std::uintptr_t>(dst) & 15u);
        src += skip;
        dst += skip;
        bytes -= skip;
        const std::size_t rounds = bytes / 64;
        bytes %= 64;
        if (nonTemporal && (!addressTest || streamingAllowed(src, dst))) {
            copyRounds<true>(src, dst, rounds);
            streamed = true;
        } else {
            copyRounds<false>(src, dst, rounds);
        }
    }
    for (; bytes >= 8; bytes -= 8, src += 8, dst += 8) moveBytes<8>(src, dst);
    if (bytes >= 4) {
        moveBytes<4>(src, dst);
        src += 4, dst += 4, bytes -= 4;
    }
    if (bytes >= 2) {
        moveBytes<2>(src, dst);
        src += 2, dst += 2, bytes -= 2;
    }
    if (bytes >= 1) *dst = *src;
    if (streamed) _mm_sfence();
}

void copyRows(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, std::size_t bytes, int32_t rows,
              bool nonTemporal) {
    // Rows that follow one another on both sides, in runs that do not overlap, are one
    // run of bytes: one copy of it writes the same bytes as a copy a row, and streams
    // with one closing fence instead of one a row. (The address test gives the same
    // answer for every row, since src - dst is the same for all of them.)
    const std::size_t total = bytes * static_cast<std::size_t>(rows > 0 ? rows : 0);
    const bool oneRun = rows > 1 && bytes > 0 && srcStep == dstStep && static_cast<std::size_t>(srcStep) == bytes &&
                        (reinterpret_cast<std::uintptr_t>(src) + total <= reinterpret_cast<std::uintptr_t>(dst) ||
                         reinterpret_cast<std::uintptr_t>(dst) + total <= reinterpret_cast<std::uintptr_t>(src));
    if (oneRun) {
        copyRow(src, dst, total, nonTemporal);
        return;
    }
    for (int32_t y = 0; y < rows; ++y) {
        copyRow(src, dst, bytes, nonTemporal);
        src = byteOffset(src, srcStep);
        dst = byteOffset(dst, dstStep);
    }
}

}  // namespace chroma
}  // namespace pxk
