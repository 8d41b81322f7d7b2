// Memory of the tools' vector loops: 24 bytes a 128-bit lane (eight three-byte pixels,
// or sixteen packed 12-bit samples), loaded and stored as a 16-byte chunk and an 8-byte
// one. Lane L of a 256-bit vector holds the 24 bytes at 24 L.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/vec.h"

namespace pxk {
namespace lanes {

using namespace vec;

// The 24 bytes of each lane: bytes 0-15 in `first`, 16-23 in the low half of `last`.
PXK_INLINE void load24PerLane(const uint8_t* p, V128& first, V128& last) {
    first = load128(p);
    last = loadLowHalves128(p + 16);
}
PXK_INLINE void store24PerLane(uint8_t* p, V128 first, V128 last) {
    store128(p, first);
    storeLowHalves(p + 16, last);
}
// Bytes 8-23 of each lane's 24.
template <class V>
PXK_INLINE V loadLast16PerLane(const uint8_t* p);
template <>
PXK_INLINE V128 loadLast16PerLane<V128>(const uint8_t* p) { return load128(p + 8); }
#if defined(PXKCC_TARGET_AVX2)
template <>
PXK_INLINE V256 loadLast16PerLane<V256>(const uint8_t* p) { return loadTwoChunks<24>(p + 8); }
PXK_INLINE void load24PerLane(const uint8_t* p, V256& first, V256& last) {
    first = loadTwoChunks<24>(p);
    last = _mm256_inserti128_si256(_mm256_castsi128_si256(loadLowHalves128(p + 16)), loadLowHalves128(p + 40), 1);
}
PXK_INLINE void store24PerLane(uint8_t* p, V256 first, V256 last) {
    storeTwoChunks<24>(p, first);
    storeLowHalves(p + 16, _mm256_castsi256_si128(last));
    storeLowHalves(p + 40, _mm256_extracti128_si256(last, 1));
}
#endif

}  // namespace lanes
}  // namespace pxk
