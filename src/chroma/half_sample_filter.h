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

// Weights of the four rows a half-sample row is made from (gain 16 in all), fixed for
// each of the four row rules so that the vector form multiplies by shifts and adds.
template <int W0, int W1, int W2, int W3>
struct HalfSampleTaps {
    static constexpr int kW[4] = {W0, W1, W2, W3};
};

// The half-sample form: (w0 a + w1 b + w2 c + w3 d + 8) >> 4, arithmetic shift,
// saturated to 0..255. Every sum lies within -1020..4598, so 16-bit lanes hold it
// (the products wrap in 16 bits and the sum comes out exact); the vector form leaves
// the saturation to the pack that stores it. Where the outer and the inner weights
// are equal in pairs (the rows away from the edges), the pairs are summed first.
struct HalfSampleForm {
    // w x for a weight of the rules (0, -1, 1, 8, 9 or 17 on the way to the sum).
    template <int W, class V>
    PXK_INLINE static V times(V x) {
        using namespace vec;
        if constexpr (W == 1) return x;
        else if constexpr (W == 8) return slli16<3>(x);
        else if constexpr (W == 9) return add16(slli16<3>(x), x);
        else if constexpr (W == 17) return add16(slli16<4>(x), x);
        else return mullo16(x, splat16<V>(W));
    }
    // sum + w x.
    template <int W, class V>
    PXK_INLINE static V accumulate(V sum, V x) {
        using namespace vec;
        if constexpr (W == 0) return sum;
        else if constexpr (W == -1) return sub16(sum, x);
        else return add16(sum, times<W>(x));
    }
    template <class Taps, class V>
    PXK_INLINE static V apply(V a, V b, V c, V d) {
        using namespace vec;
        constexpr int w0 = Taps::kW[0], w1 = Taps::kW[1], w2 = Taps::kW[2], w3 = Taps::kW[3];
        V sum;
        if constexpr (w0 == w3 && w1 == w2) {
            sum = accumulate<w0>(times<w1>(add16(b, c)), add16(a, d));
        } else {
            sum = accumulate<w3>(accumulate<w2>(accumulate<w0>(times<w1>(b), a), c), d);
        }
        return srai16<4>(add16(sum, splat16<V>(8)));
    }
    // The scalar twin, saturated here (the vector form saturates as it packs).
    template <class Taps>
    PXK_INLINE static uint8_t scalar(int32_t a, int32_t b, int32_t c, int32_t d) {
        constexpr const int* w = Taps::kW;
        return clamp8(asr(w[0] * a + w[1] * b + w[2] * c + w[3] * d + 8, 4));
    }
};

// out[x] = the half-sample form of r0[x], r1[x], r2[x], r3[x], for n columns. The rows
// may be the same memory as `out` (each column is read before it is written).
template <class Taps>
PXK_INLINE void halfSampleRow(const uint8_t* r0, const uint8_t* r1, const uint8_t* r2, const uint8_t* r3,
                              uint8_t* out, int32_t n) {
    forBlocks<16>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            using namespace vec;
            const V z = zero<V>();
            const V a = loadLanes<V, 16>(r0 + i), b = loadLanes<V, 16>(r1 + i), c = loadLanes<V, 16>(r2 + i),
                    d = loadLanes<V, 16>(r3 + i);
            const V lo = HalfSampleForm::apply<Taps>(unpacklo8(a, z), unpacklo8(b, z), unpacklo8(c, z),
                                                     unpacklo8(d, z));
            const V hi = HalfSampleForm::apply<Taps>(unpackhi8(a, z), unpackhi8(b, z), unpackhi8(c, z),
                                                     unpackhi8(d, z));
            storeLanes<V, 16>(out + i, packus16(lo, hi));
        },
        [&](int32_t i) { out[i] = HalfSampleForm::scalar<Taps>(r0[i], r1[i], r2[i], r3[i]); });
}

}  // namespace chroma
}  // namespace pxk
