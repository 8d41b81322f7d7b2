// The forms of RGB <-> HLS. All arithmetic is float, hue in degrees. The cone formula
// is written once for the vector blocks (over the float vector type, every case built
// with compare masks and merged, reciprocals unrefined) and once for the scalar tails
// (branches, each reciprocal refined once); the per-type parts (scales, conversion back
// to integers) sit around it. Main loop and tail differ in their low bits by design.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "colorimetric/float_columns.h"
#include "frame/fixed_point.h"
#include "frame/pixel_block.h"
#include "frame/vec_float.h"

namespace pxk {
namespace colorimetric {

// The scales of one integer type: its full scale, half of it, twice it, and the
// factors between hue codes and degrees and between samples and 0..1.
struct HlsScale {
    float full;
    float half;
    float doubled;
    float degreesToHue;
    float hueToDegrees;
    float toUnit;
};

inline constexpr HlsScale kHls8u{255.0f, 127.5f, 510.0f, 0.708333313f, 1.41176474f, 0.00392156886f};
inline constexpr float kOneSixtieth = 0.0166666675f;

// ---------------------------------------------------------------------------------
// RGB -> HLS
// ---------------------------------------------------------------------------------

// H (in codes), L (half the sum of maximum and minimum) and S (in codes) of four
// pixels a lane, unrefined reciprocals. A gray lane (no spread) takes 0.5 on its spread
// and sum before the reciprocals, to keep them finite, and H and S of 0 afterwards.
template <class F>
PXK_INLINE Floats3<F> rgbToHlsVector(const Floats3<F>& rgb, const HlsScale& k) {
    const F r = rgb.c[0], g = rgb.c[1], b = rgb.c[2];
    const F mx = maxF(maxF(r, g), b);
    const F mn = minF(minF(r, g), b);
    const F lightness = mulF(splatF<F>(0.5f), addF(mx, mn));
    const F gray = equalF(subF(mx, mn), zeroF<F>());
    const F bump = andF(gray, splatF<F>(0.5f));
    const F d = addF(subF(mx, mn), bump);
    const F s = addF(addF(mx, mn), bump);
    const F denominator = selectF(lessEqualF(lightness, splatF<F>(k.half)), s, subF(splatF<F>(k.doubled), s));
    const F saturation = mulF(mulF(d, rcpF(denominator)), splatF<F>(k.full));
    const F rd = rcpF(d);
    const F sixty = splatF<F>(60.0f);
    const F fromRed = mulF(rd, mulF(sixty, subF(g, b)));
    const F fromGreen = addF(splatF<F>(120.0f), mulF(rd, mulF(sixty, subF(b, r))));
    const F fromBlue = addF(splatF<F>(240.0f), mulF(rd, mulF(sixty, subF(r, g))));
    // The first channel equal to the maximum wins: red, then green, then blue.
    F h = selectF(equalF(r, mx), fromRed, selectF(equalF(g, mx), fromGreen, fromBlue));
    h = addF(h, andF(lessF(h, zeroF<F>()), splatF<F>(360.0f)));
    const F hue = mulF(h, splatF<F>(k.degreesToHue));
    return Floats3<F>{{andNotF(gray, hue), lightness, andNotF(gray, saturation)}};
}

// The scalar twin: the same steps with each reciprocal refined once. Returns false for
// a gray pixel (H and S are then the type's lowest code), with `lightness` set either
// way.
struct HlsTail {
    float hue, lightness, saturation;
};

PXK_INLINE bool rgbToHlsScalar(float r, float g, float b, const HlsScale& k, HlsTail& out) {
    const float mx = r > g ? (r > b ? r : b) : (g > b ? g : b);
    const float mn = r < g ? (r < b ? r : b) : (g < b ? g : b);
    const float d = mx - mn;
    const float s = mx + mn;
    out.lightness = 0.5f * s;
    if (d == 0.0f) return false;
    const float denominator = out.lightness <= k.half ? s : k.doubled - s;
    out.saturation = (d * refinedReciprocal(denominator)) * k.full;
    const float rd = refinedReciprocal(d);
    float h;
    if (r == mx) {
        h = rd * (60.0f * (g - b));
    } else if (g == mx) {
        h = 120.0f + rd * (60.0f * (b - r));
    } else {
        h = 240.0f + rd * (60.0f * (r - g));
    }
    if (h < 0.0f) h += 360.0f;
    out.hue = h * k.degreesToHue;
    return true;
}

// 8u: values truncated; the main loop saturates to 0..255, the tail saturates H and S
// to signed 16 bits and keeps their low byte.
struct RgbToHls8uBlock {
    struct Form {
        static constexpr ToInteger kToInteger = ToInteger::TruncateSaturate;
        template <class F>
        PXK_INLINE static Floats3<F> apply(const Floats3<F>& rgb) {
            return rgbToHlsVector(rgb, kHls8u);
        }
    };
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        return applyToHalves<Form>(v);
    }
};

struct RgbToHls8uTail {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        HlsTail t{};
        const bool coloured = rgbToHlsScalar(p.c[0], p.c[1], p.c[2], kHls8u, t);
        const uint8_t l = static_cast<uint8_t>(truncToInt32(t.lightness));
        if (!coloured) return Pixel3{{0, l, 0}};
        return Pixel3{{lowByteOfSaturated16(t.hue), l, lowByteOfSaturated16(t.saturation)}};
    }
};

// ---------------------------------------------------------------------------------
// HLS -> RGB
// ---------------------------------------------------------------------------------

// One colour channel from its hue position x in degrees, by the multiplication with
// one sixtieth: rising below 60, m2 up to 180, falling up to 240, m1 above.
// The rising and the falling edge are one formula of the distance from the nearer end,
// x below 60 and 240 - x above, so each lane works it once.
template <class F>
PXK_INLINE F hueChannelVector(F x, F m1, F m2) {
    const F below60 = lessF(x, splatF<F>(60.0f));
    const F edge = selectF(below60, x, subF(splatF<F>(240.0f), x));
    const F ramp = addF(mulF(mulF(edge, splatF<F>(kOneSixtieth)), subF(m2, m1)), m1);
    const F v = selectF(lessF(x, splatF<F>(240.0f)), ramp, m1);
    return selectF(andNotF(below60, lessF(x, splatF<F>(180.0f))), m2, v);
}

PXK_INLINE float hueChannelScalar(float x, float m1, float m2) {
    if (x < 60.0f) return ((x * kOneSixtieth) * (m2 - m1)) + m1;
    if (x < 180.0f) return m2;
    if (x < 240.0f) return (((240.0f - x) * kOneSixtieth) * (m2 - m1)) + m1;
    return m1;
}

// The same by a true division by 60 (the tails of the float and 16s members).
PXK_INLINE float hueChannelDivided(float x, float m1, float m2) {
    if (x < 60.0f) return ((m2 - m1) * x) / 60.0f + m1;
    if (x < 180.0f) return m2;
    if (x < 240.0f) return ((m2 - m1) * (240.0f - x)) / 60.0f + m1;
    return m1;
}

// R, G, B in 0..1 from the hue in degrees, L and S in 0..1. A gray lane (S of 0)
// gives L in all three.
template <class F>
PXK_INLINE Floats3<F> hlsToRgbVector(F degrees, F l, F s) {
    const F p = mulF(l, s);
    const F m2 = selectF(lessEqualF(l, splatF<F>(0.5f)), addF(l, p), subF(addF(l, s), p));
    const F m1 = subF(mulF(splatF<F>(2.0f), l), m2);
    F red = addF(degrees, splatF<F>(120.0f));
    red = subF(red, andF(lessF(splatF<F>(360.0f), red), splatF<F>(360.0f)));
    F blue = subF(degrees, splatF<F>(120.0f));
    blue = addF(blue, andF(lessF(blue, zeroF<F>()), splatF<F>(360.0f)));
    const F gray = equalF(s, zeroF<F>());
    return Floats3<F>{{selectF(gray, l, hueChannelVector(red, m1, m2)),
                       selectF(gray, l, hueChannelVector(degrees, m1, m2)),
                       selectF(gray, l, hueChannelVector(blue, m1, m2))}};
}

// The scalar twin for a pixel that is not gray; m2 as `L + P` below one half, and the
// channels by one sixtieth. With Divided (the tails of the float and 16s members), m2
// as `(S + 1) L` below one half, and the channels by a true division by 60.
template <bool Divided = false>
PXK_INLINE Floats3<float> hlsToRgbScalar(float degrees, float l, float s) {
    const float p = l * s;
    const float m2 = l <= 0.5f ? (Divided ? (s + 1.0f) * l : l + p) : (l + s) - p;
    const float m1 = 2.0f * l - m2;
    float red = degrees + 120.0f;
    if (red > 360.0f) red -= 360.0f;
    float blue = degrees - 120.0f;
    if (blue < 0.0f) blue += 360.0f;
    const auto channel = Divided ? hueChannelDivided : hueChannelScalar;
    return Floats3<float>{{channel(red, m1, m2), channel(degrees, m1, m2), channel(blue, m1, m2)}};
}

// 8u: inputs by the products with the 8u scales; each v times 255, truncated and
// saturated to 0..255. A gray main-loop pixel goes the same way (and can land one below
// its L); a gray tail pixel stores its L byte in all three channels.
struct HlsToRgb8uBlock {
    struct Form {
        static constexpr ToInteger kToInteger = ToInteger::TruncateSaturate;
        template <class F>
        PXK_INLINE static Floats3<F> apply(const Floats3<F>& hls) {
            const F unit = splatF<F>(kHls8u.toUnit);
            const Floats3<F> v = hlsToRgbVector(mulF(hls.c[0], splatF<F>(kHls8u.hueToDegrees)),
                                                mulF(hls.c[1], unit), mulF(hls.c[2], unit));
            const F scale = splatF<F>(255.0f);
            return Floats3<F>{{mulF(v.c[0], scale), mulF(v.c[1], scale), mulF(v.c[2], scale)}};
        }
    };
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        return applyToHalves<Form>(v);
    }
};

struct HlsToRgb8uTail {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        if (p.c[2] == 0) return Pixel3{{p.c[1], p.c[1], p.c[1]}};
        const Floats3<float> v = hlsToRgbScalar(float(p.c[0]) * kHls8u.hueToDegrees, float(p.c[1]) * kHls8u.toUnit,
                                                float(p.c[2]) * kHls8u.toUnit);
        return Pixel3{{clamp8(truncToInt32(v.c[0] * 255.0f)), clamp8(truncToInt32(v.c[1] * 255.0f)),
                       clamp8(truncToInt32(v.c[2] * 255.0f))}};
    }
};

}  // namespace colorimetric
}  // namespace pxk
