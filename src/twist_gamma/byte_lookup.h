// The lookup of 8-bit samples in a 256-entry table by byte shuffles (avx2 build): the
// table held as sixteen vectors of sixteen entries, 32 samples looked up at a time.
// Output equals the scalar lookup, entry for entry; only the speed differs.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/vec_float.h"

#if defined(PXKCC_TARGET_AVX2)

namespace pxk {
namespace gamma {

// Entries 16k to 16k + 15 in part k, the same in both 128-bit lanes.
struct ShuffleTable {
    vec::V256 part[16];
};

// The table of entries of any integer type whose values fit a byte.
template <class E>
PXK_INLINE ShuffleTable shuffleTableOf(const E* table) {
    alignas(16) uint8_t bytes[256];
    for (int i = 0; i < 256; ++i) bytes[i] = static_cast<uint8_t>(table[i]);
    ShuffleTable t;
    PXK_UNROLL
    for (int k = 0; k < 16; ++k) t.part[k] = _mm256_broadcastsi128_si256(vec::load128(bytes + 16 * k));
    return t;
}

// The entries of 32 samples: the low four bits of a sample pick its entry in each of
// the sixteen parts, bits 4 to 7 choose among them, one bit a level of byte blends (a
// blend reads the top bit of each mask byte; a left shift of the 16-bit lanes by 7 - b
// puts bit b of each byte there).
PXK_INLINE vec::V256 lookup32(vec::V256 samples, const ShuffleTable& t) {
    using namespace vec;
    const V256 low = and_(samples, splat16<V256>(0x0F0F));
    V256 r[16];
    PXK_UNROLL
    for (int k = 0; k < 16; ++k) r[k] = shuffleBytes(t.part[k], low);
    const V256 choose[4] = {slli16<3>(samples), slli16<2>(samples), slli16<1>(samples), samples};
    PXK_UNROLL
    for (int level = 0; level < 4; ++level) {
        PXK_UNROLL
        for (int j = 0; j < (8 >> level); ++j) r[j] = blendBytes(r[2 * j], r[2 * j + 1], choose[level]);
    }
    return r[0];
}

}  // namespace gamma
}  // namespace pxk

#endif  // PXKCC_TARGET_AVX2
