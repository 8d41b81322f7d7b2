// The integer forms of RGB <-> YCC for 8-bit samples. The tails work in 32-bit
// integers exactly as the fixed formulas go (inverse green included, whose luma term
// is shifted by 16 where red and blue shift theirs by 12). The vector blocks stay
// within 16-bit words: high-half products, a final arithmetic shift of 2, saturation to
// 0..255 on store; being narrower, a block pixel can differ from a tail pixel.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/fixed_point.h"
#include "frame/pixel_block.h"
#include "frame/vec.h"

namespace pxk {
namespace colorimetric {

using namespace vec;

// ---------------------------------------------------------------------------------
// RGB -> YCC
// ---------------------------------------------------------------------------------

// Vector blocks, chosen for speed in 16-bit words: the samples times 128 by the luma
// weights 4898, 9617, 1867 (of 2^14) give the luma times 32 (L); then, at four times
// the result, Y = L * 5842 (2 * 2921), C1 = (32 B - L) * 3578 (2 * 1789) and
// C2 = (32 R - L) * 4356 (2 * 2178), each a high product, shifted right by 2, with the
// offsets 156 and 137 added after the shift.
struct RgbToYcc8uBlock {
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        const V r = slli16<7>(v.c[0]), g = slli16<7>(v.c[1]), b = slli16<7>(v.c[2]);
        const V luma = add16(add16(mulhi16(r, splat16<V>(4898)), mulhi16(g, splat16<V>(9617))),
                             mulhi16(b, splat16<V>(1867)));
        const V y = srai16<2>(mulhi16(luma, splat16<V>(5842)));
        const V c1 = srai16<2>(mulhi16(sub16(slli16<5>(v.c[2]), luma), splat16<V>(3578)));
        const V c2 = srai16<2>(mulhi16(sub16(slli16<5>(v.c[0]), luma), splat16<V>(4356)));
        return Lanes3<V>{{y, add16(c1, splat16<V>(156)), add16(c2, splat16<V>(137))}};
    }
};

// Tail, in 32-bit integers: Yq = 4898 R + 9617 G + 1867 B; Y = ((Yq >> 10) * 2921) >> 16;
// the colour differences ((X << 14) - Yq) >> 10 by 1789 (blue) and 2178 (red), >> 16,
// plus 156 and 137, low 8 bits kept.
struct RgbToYcc8uTail {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t r = p.c[0], g = p.c[1], b = p.c[2];
        const int32_t yq = 4898 * r + 9617 * g + 1867 * b;
        return Pixel3{{low8(asr(asr(yq, 10) * 2921, 16)), low8(asr(asr(b * 16384 - yq, 10) * 1789, 16) + 156),
                       low8(asr(asr(r * 16384 - yq, 10) * 2178, 16) + 137)}};
    }
};

// ---------------------------------------------------------------------------------
// YCC -> RGB
// ---------------------------------------------------------------------------------

// Vector blocks, at four times the result: y = (64 Y) * 5563, c1 = (32 (C1 - 156))
// * 18168, c2 = (32 (C2 - 137)) * 14921 as high products; R = y + c2, B = y + c1,
// G = y + (2 c1) * -6357 + (2 c2) * -16679 (that is y - 0.194 c1 - 0.509 c2); each
// shifted right by 2.
struct YccToRgb8uBlock {
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        const V y = mulhi16(slli16<6>(v.c[0]), splat16<V>(5563));
        const V c1 = mulhi16(slli16<5>(sub16(v.c[1], splat16<V>(156))), splat16<V>(18168));
        const V c2 = mulhi16(slli16<5>(sub16(v.c[2], splat16<V>(137))), splat16<V>(14921));
        const V g = add16(add16(y, mulhi16(add16(c1, c1), splat16<V>(-6357))),
                          mulhi16(add16(c2, c2), splat16<V>(-16679)));
        return Lanes3<V>{{srai16<2>(add16(y, c2)), srai16<2>(g), srai16<2>(add16(y, c1))}};
    }
};

// Tail, in 32-bit integers: a = 5564 Y, b = 9084 C1 - 1417104, c = 7460 C2 - 1022020;
// R = (a + c) >> 12, B = (a + b) >> 12, G = (a - 794 (b >> 8) - 2084 (c >> 8)) >> 16,
// each saturated to 0..255.
struct YccToRgb8uTail {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const int32_t a = 5564 * p.c[0];
        const int32_t b = 9084 * p.c[1] - 1417104;
        const int32_t c = 7460 * p.c[2] - 1022020;
        return Pixel3{{clamp8(asr(a + c, 12)), clamp8(asr(a - 794 * asr(b, 8) - 2084 * asr(c, 8), 16)),
                       clamp8(asr(a + b, 12))}};
    }
};

}  // namespace colorimetric
}  // namespace pxk
