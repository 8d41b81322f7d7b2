// The bridge between the 8-bit pixel blocks of the shared row kernel and the float
// forms of the colorimetric conversions: a block's 16-bit lanes widened to floats four
// pixels at a time, results converted back to 16-bit lanes; and the scalar helpers of
// the float tails.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/pixel_block.h"
#include "frame/vec_float.h"

namespace pxk {
namespace colorimetric {

using namespace vec;

// The floats of the lower and the upper four 16-bit lanes (per 128-bit lane) of a
// vector of unsigned samples.
template <class V>
PXK_INLINE FloatOf<V> lowerFloats(V v) {
    return toFloat(unpacklo16(v, zero<V>()));
}
template <class V>
PXK_INLINE FloatOf<V> upperFloats(V v) {
    return toFloat(unpackhi16(v, zero<V>()));
}

// Floats truncated toward zero and saturated to signed 16-bit lanes, lower half then
// upper half: the inverse order of lowerFloats/upperFloats. (A layout's store then
// saturates to 0..255.)
template <class V>
PXK_INLINE V truncatedLanes(FloatOf<V> lower, FloatOf<V> upper) {
    return packs32(truncToInt(lower), truncToInt(upper));
}

// Three channels of four pixels (per 128-bit lane) as floats.
template <class F>
struct Floats3 {
    F c[3];
};

// How the results of a float form go back to integers: truncated, or rounded by the
// current rounding mode; then saturated (by the layout's store) or reduced to their low
// 8 bits (truncated values of any size).
enum class ToInteger { TruncateSaturate, RoundLowByte, TruncateLowByte };

// A three-channel float form applied to a block of 16-bit lanes: each half of the
// lanes widened, converted by Form::apply(Floats3<F>) -> Floats3<F>, and brought back
// as Form::kToInteger says.
template <class Form, class V>
PXK_INLINE Lanes3<V> applyToHalves(const Lanes3<V>& v) {
    using F = FloatOf<V>;
    const Floats3<F> lower = Form::apply(Floats3<F>{{lowerFloats(v.c[0]), lowerFloats(v.c[1]), lowerFloats(v.c[2])}});
    const Floats3<F> upper = Form::apply(Floats3<F>{{upperFloats(v.c[0]), upperFloats(v.c[1]), upperFloats(v.c[2])}});
    Lanes3<V> out;
    PXK_UNROLL
    for (int c = 0; c < 3; ++c) {
        if constexpr (Form::kToInteger == ToInteger::TruncateSaturate) {
            out.c[c] = truncatedLanes<V>(lower.c[c], upper.c[c]);
        } else if constexpr (Form::kToInteger == ToInteger::RoundLowByte) {
            // The rounded values fit 16 bits, so the pack keeps their low byte.
            out.c[c] = and_(packs32(roundToInt(lower.c[c]), roundToInt(upper.c[c])), splat16<V>(0x00FF));
        } else {
            // Low bytes taken before the pack, so that no value is saturated.
            const V low = splat32<V>(0xFF);
            out.c[c] = packs32(and_(truncToInt(lower.c[c]), low), and_(truncToInt(upper.c[c]), low));
        }
    }
    return out;
}

// A block form of 16-bit lanes that applies the float Form to each half.
template <class Form>
struct HalvesBlock {
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        return applyToHalves<Form>(v);
    }
};

// The processor's approximate reciprocal refined once, 2 r - x r r, in that order.
PXK_INLINE float refinedReciprocal(float x) {
    const float r = approxReciprocal(x);
    return 2.0f * r - x * r * r;
}

// Truncated toward zero, saturated to signed 16 bits, low 8 bits kept.
PXK_INLINE uint8_t lowByteOfSaturated16(float v) {
    const int32_t t = truncToInt32(v);
    const int32_t s = t < -32768 ? -32768 : (t > 32767 ? 32767 : t);
    return static_cast<uint8_t>(static_cast<uint32_t>(s) & 0xFFu);
}

}  // namespace colorimetric
}  // namespace pxk
