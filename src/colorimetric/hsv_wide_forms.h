// The forms of RGB <-> HSV for 16u samples. RGB to HSV divides for real and adds 0.5
// before truncating, in one vector form for every column (each lane computes what the
// per-pixel formula does); HSV to RGB is the 8-bit form with the 16-bit scales,
// rounded by the current mode and stored as the low 16 bits.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "colorimetric/hsv_forms.h"
#include "colorimetric/wide_rows.h"

namespace pxk {
namespace colorimetric {

// V is the maximum. A black or gray lane gets H and S of 0. Of channels tied at the
// maximum the last rule applies: blue over green over red. Slightly negative hues
// (not below -1.1920929e-07) are not moved up by a turn.
struct RgbToHsv16u {
    static constexpr bool kTail = false;
    template <class F>
    PXK_INLINE static Lanes3<LanesOf<F>> block(const Floats3<F>& rgb) {
        using namespace vec;
        const F r = rgb.c[0], g = rgb.c[1], b = rgb.c[2];
        const F mx = maxF(maxF(r, g), b);
        const F d = subF(mx, minF(minF(r, g), b));
        const F gray = orF(equalF(mx, zeroF<F>()), equalF(d, zeroF<F>()));
        const F half = splatF<F>(0.5f);
        const F saturation = addF(mulF(divF(d, mx), splatF<F>(65535.0f)), half);
        const F rd = divF(splatF<F>(1.0f), d);
        const F cr = mulF(subF(mx, r), rd), cg = mulF(subF(mx, g), rd), cb = mulF(subF(mx, b), rd);
        F h = subF(cb, cg);
        h = selectF(equalF(mx, g), addF(subF(cr, cb), splatF<F>(2.0f)), h);
        h = selectF(equalF(mx, b), addF(subF(cg, cr), splatF<F>(4.0f)), h);
        h = selectF(lessF(addF(h, splatF<F>(1.1920929e-07f)), zeroF<F>()), addF(h, splatF<F>(6.0f)), h);
        const F hue = addF(divF(mulF(h, splatF<F>(65535.0f)), splatF<F>(6.0f)), half);
        const auto gate = bitsOf(gray);
        return Lanes3<LanesOf<F>>{{andNot(gate, truncToInt(hue)), andNot(gate, truncToInt(saturation)), truncToInt(mx)}};
    }
};

inline constexpr HsvToRgbScale kHsvToRgb16u{0.00549324788f, 65535.0f, 1.52590219e-05f};

// The 8-bit form with the 16-bit scales: hue 65535 (a whole turn, whose sextant
// position comes to 6.0 in floats) taken as 0, as hue 255 is in 8 bits; S 0 returns V.
struct HsvToRgb16u {
    static constexpr bool kTail = true;
    template <class F>
    PXK_INLINE static Lanes3<LanesOf<F>> block(const Floats3<F>& hsv) {
        const Floats3<F> v = hsvToRgbVector(hsv, kHsvToRgb16u);
        return Lanes3<LanesOf<F>>{{vec::roundToInt(v.c[0]), vec::roundToInt(v.c[1]), vec::roundToInt(v.c[2])}};
    }
    PXK_INLINE static void tail(const float in[3], uint16_t out[3]) {
        if (in[1] == 0.0f) {
            out[0] = out[1] = out[2] = uint16_t(in[2]);
            return;
        }
        const Floats3<float> v = hsvToRgbScalar(in[0], in[1], in[2], kHsvToRgb16u);
        for (int c = 0; c < 3; ++c) out[c] = uint16_t(uint32_t(pxkRoundHalfEven(v.c[c])));
    }
};

}  // namespace colorimetric
}  // namespace pxk
