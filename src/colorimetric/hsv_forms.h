// The forms of RGB <-> HSV for 8-bit samples. All arithmetic is float with hue in
// sextants; results are rounded by the current rounding mode and stored as their low
// byte. The approximate reciprocal is used unrefined in the vector blocks and in the
// tail alike, so both give the same bits: the vector form builds every case with compare
// masks, its scalar twin branches.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <type_traits>

#include "colorimetric/float_columns.h"
#include "frame/fixed_point.h"
#include "frame/pixel_block.h"
#include "frame/vec_float.h"

namespace pxk {
namespace colorimetric {

inline constexpr float kHsvCodesPerSextant = 42.5f;
inline constexpr float kHsvSixtieth = 0.0166666675f;
inline constexpr float kHsvHueToDegrees = 1.41176474f;
inline constexpr float kHsvToUnit = 0.00392156886f;

// ---------------------------------------------------------------------------------
// RGB -> HSV
// ---------------------------------------------------------------------------------

struct RgbToHsv8uBlock {
    struct Form {
        static constexpr ToInteger kToInteger = ToInteger::RoundLowByte;
        // A black or gray lane (no spread) gets H and S of 0. Of channels tied at the
        // maximum the last rule applies: blue over green over red.
        template <class F>
        PXK_INLINE static Floats3<F> apply(const Floats3<F>& rgb) {
            const F r = rgb.c[0], g = rgb.c[1], b = rgb.c[2];
            const F mx = maxF(maxF(r, g), b);
            const F d = subF(mx, minF(minF(r, g), b));
            const F gray = equalF(d, zeroF<F>());
            const F saturation = mulF(mulF(rcpF(mx), d), splatF<F>(255.0f));
            const F rd = rcpF(d);
            const F cr = mulF(subF(mx, r), rd), cg = mulF(subF(mx, g), rd), cb = mulF(subF(mx, b), rd);
            F h = subF(cb, cg);
            h = selectF(equalF(mx, g), addF(subF(cr, cb), splatF<F>(2.0f)), h);
            h = selectF(equalF(mx, b), addF(subF(cg, cr), splatF<F>(4.0f)), h);
            F hue = mulF(h, splatF<F>(kHsvCodesPerSextant));
            hue = addF(hue, andF(lessF(hue, zeroF<F>()), splatF<F>(255.0f)));
            return Floats3<F>{{andNotF(gray, hue), andNotF(gray, saturation), mx}};
        }
    };
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        return applyToHalves<Form>(v);
    }
};

struct RgbToHsv8uTail {
    PXK_INLINE static Pixel3 apply(Pixel3 p) {
        const float r = p.c[0], g = p.c[1], b = p.c[2];
        const float mx = r > g ? (r > b ? r : b) : (g > b ? g : b);
        const float mn = r < g ? (r < b ? r : b) : (g < b ? g : b);
        const float d = mx - mn;
        const uint8_t v = low8(pxkRoundHalfEven(mx));
        if (mx == 0.0f || d == 0.0f) return Pixel3{{0, 0, v}};
        const float saturation = (approxReciprocal(mx) * d) * 255.0f;
        const float rd = approxReciprocal(d);
        const float cr = (mx - r) * rd, cg = (mx - g) * rd, cb = (mx - b) * rd;
        float h = 0.0f;
        if (mx == r) h = cb - cg;
        if (mx == g) h = (cr - cb) + 2.0f;
        if (mx == b) h = (cg - cr) + 4.0f;
        float hue = h * kHsvCodesPerSextant;
        if (hue < 0.0f) hue += 255.0f;
        return Pixel3{{low8(pxkRoundHalfEven(hue)), low8(pxkRoundHalfEven(saturation)), v}};
    }
};

// ---------------------------------------------------------------------------------
// HSV -> RGB
// ---------------------------------------------------------------------------------

// The scales of HSV to RGB for one sample type: the hue to degrees factor (applied
// after one sixtieth), the top hue code (one whole turn, taken as hue 0) and the
// factor of S into 0..1.
struct HsvToRgbScale {
    float hueToDegrees;
    float topHue;
    float toUnit;
};
inline constexpr HsvToRgbScale kHsvToRgb8u{kHsvHueToDegrees, 255.0f, kHsvToUnit};

// R, G, B of four pixels a lane. The sextant x = (h / 60) * hueToDegrees, with the top
// hue taken as 0; i its whole part, f the rest. A gray lane (S 0) gives V in all three
// channels.
template <class F>
PXK_INLINE Floats3<F> hsvToRgbVector(const Floats3<F>& hsv, const HsvToRgbScale& k) {
    const F h = hsv.c[0], s = hsv.c[1], v = hsv.c[2];
    const F x = andNotF(equalF(h, splatF<F>(k.topHue)),
                        mulF(mulF(h, splatF<F>(kHsvSixtieth)), splatF<F>(k.hueToDegrees)));
    const auto i = truncToInt(x);
    const F f = subF(x, toFloat(i));
    const F w = mulF(v, mulF(s, splatF<F>(k.toUnit)));
    const F fw = mulF(f, w);
    const F p = subF(v, w);
    const F t = addF(p, fw);
    const F q = subF(v, fw);
    using V = std::remove_const_t<decltype(i)>;
    F is[6];
    PXK_UNROLL
    for (int n = 0; n < 6; ++n) is[n] = floatsOf(equal32(i, splat32<V>(n)));
    // By sextant 0 to 5: R is v, q, p, p, t, v; G is t, v, v, q, p, p;
    // B is p, p, t, v, v, q.
    Floats3<F> out;
    out.c[0] = selectF(orF(is[0], is[5]), v, selectF(is[1], q, selectF(is[4], t, p)));
    out.c[1] = selectF(orF(is[1], is[2]), v, selectF(is[0], t, selectF(is[3], q, p)));
    out.c[2] = selectF(orF(is[3], is[4]), v, selectF(is[2], t, selectF(is[5], q, p)));
    const F gray = equalF(s, zeroF<F>());
    PXK_UNROLL
    for (int c = 0; c < 3; ++c) out.c[c] = selectF(gray, v, out.c[c]);
    return out;
}

// The scalar twin for a pixel that is not gray.
PXK_INLINE Floats3<float> hsvToRgbScalar(float h, float s, float v, const HsvToRgbScale& k) {
    const float x = h == k.topHue ? 0.0f : (h * kHsvSixtieth) * k.hueToDegrees;
    const int32_t i = truncToInt32(x);
    const float f = x - float(i);
    const float w = v * (s * k.toUnit);
    const float p = v - w, t = p + f * w, q = v - f * w;
    switch (i) {
        case 0: return Floats3<float>{{v, t, p}};
        case 1: return Floats3<float>{{q, v, p}};
        case 2: return Floats3<float>{{p, v, t}};
        case 3: return Floats3<float>{{p, q, v}};
        case 4: return Floats3<float>{{t, p, v}};
        default: return Floats3<float>{{v, p, q}};
    }
}

struct HsvToRgb8uBlock {
    struct Form {
        static constexpr ToInteger kToInteger = ToInteger::RoundLowByte;
        template <class F>
        PXK_INLINE static Floats3<F> apply(const Floats3<F>& hsv) {
            return hsvToRgbVector(hsv, kHsvToRgb8u);
        }
    };
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        return applyToHalves<Form>(v);
    }
};

struct HsvToRgb8uTail {
    PXK_INLINE static Pixel3 apply(Pixel3 px) {
        if (px.c[1] == 0) return Pixel3{{px.c[2], px.c[2], px.c[2]}};
        const Floats3<float> rgb = hsvToRgbScalar(px.c[0], px.c[1], px.c[2], kHsvToRgb8u);
        return Pixel3{{low8(pxkRoundHalfEven(rgb.c[0])), low8(pxkRoundHalfEven(rgb.c[1])),
                       low8(pxkRoundHalfEven(rgb.c[2]))}};
    }
};

}  // namespace colorimetric
}  // namespace pxk
