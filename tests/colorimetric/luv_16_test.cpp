// RGB <-> LUV, 16-bit samples: the eight exports against the reference model (every
// width, height and step plan, misaligned rows), the documented cases with literal
// values, statuses and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "pxkcc.h"
#include "reference_luv.h"
#include "luv_wide_harness.h"

namespace {

using widetest::pixelAt;

// Samples as the formulas see them: 16s plus 32768.
float sampleOf(uint16_t v) { return float(v); }
float sampleOf(int16_t v) { return float(int32_t(v) + 32768); }
uint16_t resultOf(int32_t v, uint16_t*) { return refluv::to16u(v); }
int16_t resultOf(int32_t v, int16_t*) { return refluv::to16s(v); }

// A model over the samples (16s plus 32768) giving converted integers, saturated to T.
template <class T, void (*Model)(const float[3], bool, int32_t[3])>
void viaModel(const T in[3], bool tail, T out[3]) {
    const float s[3] = {sampleOf(in[0]), sampleOf(in[1]), sampleOf(in[2])};
    int32_t r[3];
    Model(s, tail, r);
    for (int c = 0; c < 3; ++c) out[c] = resultOf(r[c], static_cast<T*>(nullptr));
}
template <class T>
constexpr auto toLuv = viaModel<T, refluv::forward16Converted>;
template <class T>
constexpr auto toRgb = viaModel<T, refluv::inverse16>;

using Member16u = widetest::Member<uint16_t, uint16_t>;
using Member16s = widetest::Member<int16_t, int16_t>;

const Member16u kToLuv16uC3{"RGBToLUV_16u_C3R", 3, 4, pxkiRGBToLUV_16u_C3R, toLuv<uint16_t>};
const Member16u kToLuv16uAC4{"RGBToLUV_16u_AC4R", 4, 4, pxkiRGBToLUV_16u_AC4R, toLuv<uint16_t>};
const Member16u kToRgb16uC3{"LUVToRGB_16u_C3R", 3, 4, pxkiLUVToRGB_16u_C3R, toRgb<uint16_t>};
const Member16u kToRgb16uAC4{"LUVToRGB_16u_AC4R", 4, 4, pxkiLUVToRGB_16u_AC4R, toRgb<uint16_t>};
const Member16s kToLuv16sC3{"RGBToLUV_16s_C3R", 3, 4, pxkiRGBToLUV_16s_C3R, toLuv<int16_t>};
const Member16s kToLuv16sAC4{"RGBToLUV_16s_AC4R", 4, 4, pxkiRGBToLUV_16s_AC4R, toLuv<int16_t>};
const Member16s kToRgb16sC3{"LUVToRGB_16s_C3R", 3, 4, pxkiLUVToRGB_16s_C3R, toRgb<int16_t>};
const Member16s kToRgb16sAC4{"LUVToRGB_16s_AC4R", 4, 4, pxkiLUVToRGB_16s_AC4R, toRgb<int16_t>};

WIDETEST_MEMBER_SUITE(Luv16u, uint16_t, uint16_t, kToLuv16uC3, kToLuv16uAC4, kToRgb16uC3, kToRgb16uAC4);
WIDETEST_MEMBER_SUITE(Luv16s, int16_t, int16_t, kToLuv16sC3, kToLuv16sAC4, kToRgb16sC3, kToRgb16sAC4);

// Black: L 0, U = 134 * 185.127121 = 24807.03 and V = 140 * 250.133591 = 35018.70,
// rounded in the main loop (24807, 35019); in the tail Z of 0 gives U and V of 0, and
// the tail truncates them (24807, 35018).
TEST(Luv16Cases, Black) {
    EXPECT_EQ(pixelAt(kToLuv16uC3, {0, 0, 0}, 5, 0), (std::vector<uint16_t>{0, 24807, 35019}));
    EXPECT_EQ(pixelAt(kToLuv16uC3, {0, 0, 0}, 5, 4), (std::vector<uint16_t>{0, 24807, 35018}));
    // 16s: the same less 32768; -32768 is black.
    EXPECT_EQ(pixelAt(kToLuv16sC3, {-32768, -32768, -32768}, 5, 0),
              (std::vector<int16_t>{-32768, 24807 - 32768, 35019 - 32768}));
}

// White: L 100 gives 65535 (saturated where rounding passes it), U and V near their
// offsets.
TEST(Luv16Cases, White) {
    for (int x : {0, 4}) {
        const std::vector<uint16_t> w = pixelAt(kToLuv16uC3, {65535, 65535, 65535}, 5, x);
        EXPECT_GE(w[0], 65520);
        EXPECT_NEAR(w[1], 24807, 20);
        EXPECT_NEAR(w[2], 35019, 20);
    }
}

// The inverse: L below 9e-05 (L16 0) gives black whatever U and V are; white comes
// back from L 65535 with U and V at their offsets.
TEST(Luv16Cases, Inverse) {
    for (int x : {0, 4}) {
        EXPECT_EQ(pixelAt(kToRgb16uC3, {0, 1000, 60000}, 5, x), (std::vector<uint16_t>{0, 0, 0}));
        EXPECT_EQ(pixelAt(kToRgb16sC3, {-32768, 0, 0}, 5, x), (std::vector<int16_t>{-32768, -32768, -32768}));
        for (uint16_t v : pixelAt(kToRgb16uC3, {65535, 24807, 35019}, 5, x)) EXPECT_NEAR(v, 65535, 40);
    }
}

// Saturation at both ends of the range in the main loop and the tail.
TEST(Luv16Cases, InverseSaturates) {
    for (int x : {0, 4}) {
        const std::vector<uint16_t> red = pixelAt(kToRgb16uC3, {39321, 65535, 45000}, 5, x);
        EXPECT_EQ(red[0], 65535);
        EXPECT_EQ(red[1], 0);
    }
}

}  // namespace
