// The 4-tap half-sample chroma interpolator: the form, and the row kernel that applies
// it to four rows at once (16 columns a lane, then single columns; both give the same
// bits).
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "chroma/byte_moves.h"
#include "frame/fixed_point.h"
#include "frame/vec.h"

namespace pxk {
namespace chroma {

// Weights of the four rows a half-sample row is made from (gain 16 in all).
struct HalfSampleTaps {
    int32_t w0, w1, w2, w3;
};

// The half-sample form: (w0 a + w1 b + w2 c + w3 d + 8) >> 4, arithmetic shift,
// saturated to 0..255. Every sum lies within -1020..4598, so 16-bit lanes hold it;
// the vector form leaves the saturation to the pack that stores it.
struct HalfSampleForm {
    template <class V>
    PXK_INLINE static V apply(V a, V b, V c, V d, const HalfSampleTaps& t) {
        using namespace vec;
        V sum = add16(mullo16(a, splat16<V>(t.w0)), mullo16(b, splat16<V>(t.w1)));
        sum = add16(sum, add16(mullo16(c, splat16<V>(t.w2)), mullo16(d, splat16<V>(t.w3))));
        return srai16<4>(add16(sum, splat16<V>(8)));
    }
    // The scalar twin, saturated here (the vector form saturates as it packs).
    PXK_INLINE static uint8_t scalar(int32_t a, int32_t b, int32_t c, int32_t d, const HalfSampleTaps& t) {
        return clamp8(asr(t.w0 * a + t.w1 * b + t.w2 * c + t.w3 * d + 8, 4));
    }
};

// out[x] = the half-sample form of r0[x], r1[x], r2[x], r3[x], for n columns. The rows
// may be the same memory as `out` (each column is read before it is written).
PXK_INLINE void halfSampleRow(const uint8_t* r0, const uint8_t* r1, const uint8_t* r2, const uint8_t* r3,
                              uint8_t* out, int32_t n, const HalfSampleTaps& taps) {
    forBlocks<16>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            using namespace vec;
            const V z = zero<V>();
            const V a = loadLanes<V, 16>(r0 + i), b = loadLanes<V, 16>(r1 + i), c = loadLanes<V, 16>(r2 + i),
                    d = loadLanes<V, 16>(r3 + i);
            const V lo = HalfSampleForm::apply(unpacklo8(a, z), unpacklo8(b, z), unpacklo8(c, z), unpacklo8(d, z), taps);
            const V hi = HalfSampleForm::apply(unpackhi8(a, z), unpackhi8(b, z), unpackhi8(c, z), unpackhi8(d, z), taps);
            storeLanes<V, 16>(out + i, packus16(lo, hi));
        },
        [&](int32_t i) { out[i] = HalfSampleForm::scalar(r0[i], r1[i], r2[i], r3[i], taps); });
}

}  // namespace chroma
}  // namespace pxk
