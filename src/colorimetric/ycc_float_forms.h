// The float forms of RGB <-> YCC for 16-bit and float samples, each once over float
// lanes and once as its scalar twin, one rounding an operation in the order written
// (sums of two terms that can both be NaN with their operands in that order too).
// The float members use the luma-and-differences form in every column and store it
// unclamped (forward) or clamped to 0..1 (inverse). The 16-bit members use the same
// form, with offsets in sample units, in their groups of four and round by the current
// mode; their tails take a folded form of their own (one matrix with the offsets and
// the rounding term folded in) and truncate. Groups and tails of the 16-bit members can
// therefore differ in their last unit.
#pragma once

#include "frame/simd_inline.h"

#include "colorimetric/float_columns.h"
#include "colorimetric/sample_forms.h"
#include "frame/vec_float.h"

namespace pxk {
namespace colorimetric {

// Where neutral lies on the two colour differences, in the unit of the samples.
struct YccOffsets {
    float first;
    float second;
};
inline constexpr YccOffsets kYccUnitOffsets{0.6117647f, 0.5372549f};
inline constexpr YccOffsets kYccWordOffsets{40092.0f, 35209.0f};

// ---------------------------------------------------------------------------------
// RGB -> YCC
// ---------------------------------------------------------------------------------

// Y = (0.299 R + 0.587 G) + 0.114 B; out Y * 0.7132668, (B - Y) * 0.4368627 + first,
// (R - Y) * 0.53192 + second.
template <const YccOffsets& O>
struct RgbToYccBody {
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& v) {
        using namespace vec;
        const F r = v.c[0], g = v.c[1], b = v.c[2];
        const F y = addOrderedF(addOrderedF(mulF(splatF<F>(0.299f), r), mulF(splatF<F>(0.587f), g)),
                                mulF(splatF<F>(0.114f), b));
        return Floats3<F>{{mulF(y, splatF<F>(0.7132668f)),
                           addF(mulF(subF(b, y), splatF<F>(0.4368627f)), splatF<F>(O.first)),
                           addF(mulF(subF(r, y), splatF<F>(0.53192f)), splatF<F>(O.second))}};
    }
    PXK_INLINE static Floats3<float> apply(const Floats3<float>& v) {
        const float r = v.c[0], g = v.c[1], b = v.c[2];
        const float y = addOrderedF(addOrderedF(0.299f * r, 0.587f * g), 0.114f * b);
        return Floats3<float>{{y * 0.7132668f, (b - y) * 0.4368627f + O.first, (r - y) * 0.53192f + O.second}};
    }
};

// Float members: unclamped. 16-bit groups: offsets 40092 and 35209, converted by the
// current rounding mode.
using RgbToYcc32f = SampleForm<RgbToYccBody<kYccUnitOffsets>, Rounding::None>;
using RgbToYcc16Block = SampleForm<RgbToYccBody<kYccWordOffsets>, Rounding::Current>;

// 16-bit tail: one matrix with the offsets (and one half, less a little, for Y)
// folded in, summed left to right and truncated.
struct RgbToYcc16Tail {
    static constexpr Rounding kRounding = Rounding::Truncate;
    PXK_INLINE static Floats3<float> apply(const Floats3<float>& v) {
        const float r = v.c[0], g = v.c[1], b = v.c[2];
        return Floats3<float>{{((0.213267f * r + 0.418688f * g) + 0.0813124f * b) + 0.49999f,
                               ((40092.5f - 0.130621f * r) - 0.256437f * g) + 0.387058f * b,
                               ((35209.5f + 0.372876f * r) - 0.312237f * g) - 0.0606389f * b}};
    }
};

// ---------------------------------------------------------------------------------
// YCC -> RGB
// ---------------------------------------------------------------------------------

// c1 = (C1 - first) * 2.2179, y = Y * 1.3584, c2 = (C2 - second) * 1.8215;
// R = y + c2, G = (y - 0.194 c1) - c2 * 0.509, B = y + c1.
template <const YccOffsets& O>
struct YccToRgbBody {
    template <class F>
    PXK_INLINE static Floats3<F> apply(const Floats3<F>& v) {
        using namespace vec;
        const F c1 = mulF(subF(v.c[1], splatF<F>(O.first)), splatF<F>(2.2179f));
        const F y = mulF(v.c[0], splatF<F>(1.3584f));
        const F c2 = mulF(subF(v.c[2], splatF<F>(O.second)), splatF<F>(1.8215f));
        return Floats3<F>{{addOrderedF(y, c2),
                           subF(subF(y, mulF(splatF<F>(0.194f), c1)), mulF(c2, splatF<F>(0.509f))),
                           addOrderedF(y, c1)}};
    }
    PXK_INLINE static Floats3<float> apply(const Floats3<float>& v) {
        const float c1 = (v.c[1] - O.first) * 2.2179f;
        const float y = v.c[0] * 1.3584f;
        const float c2 = (v.c[2] - O.second) * 1.8215f;
        return Floats3<float>{{addOrderedF(y, c2), (y - 0.194f * c1) - c2 * 0.509f, addOrderedF(y, c1)}};
    }
};

// Float members: each channel clamped to 0..1. 16-bit groups: offsets 40092 and 35209,
// converted by the current rounding mode (and saturated to the sample range).
using YccToRgb32f = SampleForm<YccToRgbBody<kYccUnitOffsets>, Rounding::None, true>;
using YccToRgb16Block = SampleForm<YccToRgbBody<kYccWordOffsets>, Rounding::Current>;

// 16-bit tail, folded: y = 1.3584 Y and the differences d1 = C1 - 40092,
// d2 = C2 - 35209; R = (y + 1.8215 d2), G = (y - 0.430272609 d1) - 0.927143455 d2,
// B = (y + 2.2179 d1), each plus 0.49999 and truncated (then saturated).
struct YccToRgb16Tail {
    static constexpr Rounding kRounding = Rounding::Truncate;
    PXK_INLINE static Floats3<float> apply(const Floats3<float>& v) {
        const float y = 1.3584f * v.c[0];
        const float d1 = v.c[1] - 40092.0f;
        const float d2 = v.c[2] - 35209.0f;
        return Floats3<float>{{(y + 1.8215f * d2) + 0.49999f,
                               ((y - 0.430272609f * d1) - 0.927143455f * d2) + 0.49999f,
                               (y + 2.2179f * d1) + 0.49999f}};
    }
};

}  // namespace colorimetric
}  // namespace pxk
