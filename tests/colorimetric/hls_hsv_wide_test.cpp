// RGB <-> HLS (16u, 16s, 32f) and RGB <-> HSV (16u), interleaved: the sixteen exports
// against the reference models (every width, height and step plan, misaligned rows),
// the statuses, and the known cases with their literal values.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "pxkcc.h"
#include "reference_hls_hsv_wide.h"
#include "wide_harness.h"

namespace {

using widetest::Member;
using widetest::pixelAt;
using widetest::Rng;

// ---------------------------------------------------------------------------------
// Source samples: uniform, with grays, ties at the maximum and extremes mixed in.
// ---------------------------------------------------------------------------------

// Three integers in 0..65535.
void drawCodes(Rng& rng, int32_t px[3]) {
    static const int32_t kExtremes[] = {0, 1, 32767, 32768, 65534, 65535};
    for (int c = 0; c < 3; ++c) px[c] = int32_t(rng.next32() & 0xFFFF);
    switch (rng.next32() % 8) {
        case 0: px[1] = px[2] = px[0]; break;                              // gray
        case 1: px[rng.next32() % 3] = px[(rng.next32() % 2) ? 1 : 2] = 65535; break;  // a tie at the top
        case 2: px[1] = px[0]; break;                                      // a tie
        case 3:
            for (int c = 0; c < 3; ++c) px[c] = kExtremes[rng.next32() % 6];
            break;
        case 4: px[2] = 0; break;  // saturation 0 for HLS and HSV sources
        default: break;
    }
}
void drawU16(Rng& rng, uint16_t px[3]) {
    int32_t v[3];
    drawCodes(rng, v);
    for (int c = 0; c < 3; ++c) px[c] = uint16_t(v[c]);
}
void drawS16(Rng& rng, int16_t px[3]) {
    int32_t v[3];
    drawCodes(rng, v);
    for (int c = 0; c < 3; ++c) px[c] = int16_t(uint16_t(uint32_t(v[c]) ^ 0x8000u));
}
// Floats mostly in 0..1 with some outside; grays, near-grays a few units in the last
// place apart, ties and the values 0, 0.5 and 1.
void drawFloats(Rng& rng, float px[3]) {
    static const float kExact[] = {0.0f, 0.5f, 1.0f, 0.25f, -0.0f};
    for (int c = 0; c < 3; ++c) px[c] = float(rng.unit() * 1.2 - 0.1);
    switch (rng.next32() % 8) {
        case 0: px[1] = px[2] = px[0]; break;
        case 1:
            px[1] = std::nextafter(px[0], 2.0f);
            px[2] = std::nextafter(px[1], 2.0f);
            if (rng.next32() % 2) px[2] = std::nextafter(px[2], 2.0f);
            break;
        case 2: px[1] = px[0]; break;
        case 3:
            for (int c = 0; c < 3; ++c) px[c] = kExact[rng.next32() % 5];
            break;
        case 4: px[2] = 0.0f; break;
        default: break;
    }
}

// ---------------------------------------------------------------------------------
// The models in the sample types.
// ---------------------------------------------------------------------------------

int32_t codeOf(uint16_t v) { return v; }
int32_t codeOf(int16_t v) { return int32_t(v) + 32768; }

template <class T>
void store(const int32_t v[3], T out[3]) {
    for (int c = 0; c < 3; ++c) out[c] = T(uint16_t(uint32_t(v[c]) & 0xFFFFu));
}

template <class T>
void rgbToHls16(const T in[3], bool tail, T out[3]) {
    const int32_t u[3] = {codeOf(in[0]), codeOf(in[1]), codeOf(in[2])};
    int32_t r[3];
    refwide::rgbToHls16(u, tail, std::is_same_v<T, uint16_t>, r);
    store(r, out);
}
void hlsToRgb16u(const uint16_t in[3], bool tail, uint16_t out[3]) {
    const int32_t u[3] = {in[0], in[1], in[2]};
    int32_t r[3];
    refwide::hlsToRgb16u(u, tail, r);
    store(r, out);
}
template <refwide::Hls16sPath Main>
void hlsToRgb16s(const int16_t in[3], bool tail, int16_t out[3]) {
    const int32_t u[3] = {codeOf(in[0]), codeOf(in[1]), codeOf(in[2])};
    int32_t r[3];
    refwide::hlsToRgb16s(u, tail ? refwide::Hls16sPath::Tail : Main, r);
    store(r, out);
}
void rgbToHls32f(const float in[3], bool, float out[3]) { refwide::rgbToHls32f(in, out); }
void hlsToRgb32f(const float in[3], bool tail, float out[3]) { refwide::hlsToRgb32f(in, tail, out); }
void rgbToHsv16u(const uint16_t in[3], bool, uint16_t out[3]) {
    const int32_t u[3] = {in[0], in[1], in[2]};
    int32_t r[3];
    refwide::rgbToHsv16u(u, r);
    store(r, out);
}
void hsvToRgb16u(const uint16_t in[3], bool, uint16_t out[3]) {
    const int32_t u[3] = {in[0], in[1], in[2]};
    int32_t r[3];
    refwide::hsvToRgb16u(u, r);
    store(r, out);
}

#define WIDE_MEMBER(T, fn, channels, model, draw) \
    Member<T> { #fn, channels, fn, model, draw }

using P16s = refwide::Hls16sPath;

const Member<uint16_t> kToHls16uC3 = WIDE_MEMBER(uint16_t, pxkiRGBToHLS_16u_C3R, 3, rgbToHls16<uint16_t>, drawU16);
const Member<uint16_t> kToHls16uAC4 = WIDE_MEMBER(uint16_t, pxkiRGBToHLS_16u_AC4R, 4, rgbToHls16<uint16_t>, drawU16);
const Member<uint16_t> kToRgb16uC3 = WIDE_MEMBER(uint16_t, pxkiHLSToRGB_16u_C3R, 3, hlsToRgb16u, drawU16);
const Member<uint16_t> kToRgb16uAC4 = WIDE_MEMBER(uint16_t, pxkiHLSToRGB_16u_AC4R, 4, hlsToRgb16u, drawU16);
const Member<int16_t> kToHls16sC3 = WIDE_MEMBER(int16_t, pxkiRGBToHLS_16s_C3R, 3, rgbToHls16<int16_t>, drawS16);
const Member<int16_t> kToHls16sAC4 = WIDE_MEMBER(int16_t, pxkiRGBToHLS_16s_AC4R, 4, rgbToHls16<int16_t>, drawS16);
const Member<int16_t> kToRgb16sC3 =
    WIDE_MEMBER(int16_t, pxkiHLSToRGB_16s_C3R, 3, hlsToRgb16s<P16s::C3Main>, drawS16);
const Member<int16_t> kToRgb16sAC4 =
    WIDE_MEMBER(int16_t, pxkiHLSToRGB_16s_AC4R, 4, hlsToRgb16s<P16s::AC4Main>, drawS16);
const Member<float> kToHls32fC3 = WIDE_MEMBER(float, pxkiRGBToHLS_32f_C3R, 3, rgbToHls32f, drawFloats);
const Member<float> kToHls32fAC4 = WIDE_MEMBER(float, pxkiRGBToHLS_32f_AC4R, 4, rgbToHls32f, drawFloats);
const Member<float> kToRgb32fC3 = WIDE_MEMBER(float, pxkiHLSToRGB_32f_C3R, 3, hlsToRgb32f, drawFloats);
const Member<float> kToRgb32fAC4 = WIDE_MEMBER(float, pxkiHLSToRGB_32f_AC4R, 4, hlsToRgb32f, drawFloats);
const Member<uint16_t> kToHsvC3 = WIDE_MEMBER(uint16_t, pxkiRGBToHSV_16u_C3R, 3, rgbToHsv16u, drawU16);
const Member<uint16_t> kToHsvAC4 = WIDE_MEMBER(uint16_t, pxkiRGBToHSV_16u_AC4R, 4, rgbToHsv16u, drawU16);
const Member<uint16_t> kHsvToRgbC3 = WIDE_MEMBER(uint16_t, pxkiHSVToRGB_16u_C3R, 3, hsvToRgb16u, drawU16);
const Member<uint16_t> kHsvToRgbAC4 = WIDE_MEMBER(uint16_t, pxkiHSVToRGB_16u_AC4R, 4, hsvToRgb16u, drawU16);

WIDETEST_MEMBER_SUITE(Wide16u, uint16_t, kToHls16uC3, kToHls16uAC4, kToRgb16uC3, kToRgb16uAC4, kToHsvC3, kToHsvAC4,
                      kHsvToRgbC3, kHsvToRgbAC4);
WIDETEST_MEMBER_SUITE(Wide16s, int16_t, kToHls16sC3, kToHls16sAC4, kToRgb16sC3, kToRgb16sAC4);
WIDETEST_MEMBER_SUITE(Wide32f, float, kToHls32fC3, kToHls32fAC4, kToRgb32fC3, kToRgb32fAC4);

float rcp(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }

// ---------------------------------------------------------------------------------
// HLS, 16-bit
// ---------------------------------------------------------------------------------

// Pure red: H 0 and L 32767 everywhere; S = trunc((65535 * r) * 65535), 32768 off and
// saturated, with r the reciprocal of 65535 unrefined (main loop) or refined once
// (tail): 65535 or just below.
TEST(HlsWideCases, PureRed16u) {
    const float r = rcp(65535.0f);
    const float r2 = 2.0f * r - 65535.0f * r * r;
    const auto code = [](float v) { return std::min(int(v), 65535); };
    const int mainS = code((65535.0f * r) * 65535.0f), tailS = code((65535.0f * r2) * 65535.0f);
    EXPECT_GE(mainS, 65500);
    EXPECT_GE(tailS, 65530);
    for (const Member<uint16_t>* m : {&kToHls16uC3, &kToHls16uAC4}) {
        EXPECT_EQ(pixelAt(*m, {65535, 0, 0}, 5, 0), (std::vector<uint16_t>{0, 32767, uint16_t(mainS)})) << m->name;
        EXPECT_EQ(pixelAt(*m, {65535, 0, 0}, 5, 4), (std::vector<uint16_t>{0, 32767, uint16_t(tailS)})) << m->name;
    }
}

// Black and white: H and S of the lowest code, L 0 or full scale, in both paths.
TEST(HlsWideCases, BlackAndWhite16uAnd16s) {
    for (int x : {0, 4}) {
        EXPECT_EQ(pixelAt(kToHls16uC3, {0, 0, 0}, 5, x), (std::vector<uint16_t>{0, 0, 0}));
        EXPECT_EQ(pixelAt(kToHls16uC3, {65535, 65535, 65535}, 5, x), (std::vector<uint16_t>{0, 65535, 0}));
        EXPECT_EQ(pixelAt(kToHls16sAC4, {32767, 32767, 32767}, 5, x), (std::vector<int16_t>{-32768, 32767, -32768}));
    }
}

// 16s: -32768 in every channel stands for black: L -32768 (and H and S -32768).
TEST(HlsWideCases, Black16sGivesLightnessMinus32768) {
    for (const Member<int16_t>* m : {&kToHls16sC3, &kToHls16sAC4}) {
        for (int x : {0, 4}) {
            EXPECT_EQ(pixelAt(*m, {-32768, -32768, -32768}, 5, x), (std::vector<int16_t>{-32768, -32768, -32768}))
                << m->name << " column " << x;
        }
    }
}

// R and G tied at the maximum: the red rule, h = 60 (G - B) / d = 60 degrees, so
// H = trunc(60 * 182.041672) = 10922 up to the reciprocal's last bits;
// L = (60000 + 20000) / 2 = 40000.
TEST(HlsWideCases, RedWinsATieWithGreen16u) {
    for (int x : {0, 4}) {
        const std::vector<uint16_t> out = pixelAt(kToHls16uC3, {60000, 60000, 20000}, 5, x);
        EXPECT_NEAR(out[0], 10922, 2);
        EXPECT_EQ(out[1], 40000);
        // S = 40000 / (131070 - 80000) * 65535 = 51330.9...
        EXPECT_NEAR(out[2], 51330, 8);
    }
}

// 16u HLS to RGB of white (S 0, L 65535): 65534 from the full path (v * 32767.5
// saturated to 32767, doubled), 65535 from a gray tail pixel.
TEST(HlsWideCases, White16uIs65534InTheMainLoopAnd65535InTheTail) {
    for (const Member<uint16_t>* m : {&kToRgb16uC3, &kToRgb16uAC4}) {
        EXPECT_EQ(pixelAt(*m, {0, 65535, 0}, 5, 0), (std::vector<uint16_t>{65534, 65534, 65534})) << m->name;
        EXPECT_EQ(pixelAt(*m, {0, 65535, 0}, 5, 4), (std::vector<uint16_t>{65535, 65535, 65535})) << m->name;
        EXPECT_EQ(pixelAt(*m, {1234, 333, 0}, 5, 4), (std::vector<uint16_t>{333, 333, 333})) << m->name;
    }
}

// Every 16u HLS-to-RGB output of a coloured pixel is even.
TEST(HlsWideCases, HlsToRgb16uOutputIsEven) {
    std::vector<uint16_t> row;
    Rng rng(3);
    for (int i = 0; i < 4003; ++i) {
        row.push_back(uint16_t(rng.next32()));
        row.push_back(uint16_t(rng.next32()));
        row.push_back(uint16_t(rng.next32() | 1));  // S never 0
    }
    const std::vector<uint16_t> out = widetest::convertRow(kToRgb16uC3, row);
    for (size_t i = 0; i < out.size(); ++i) ASSERT_EQ(out[i] % 2, 0) << i;
}

// 16s HLS to RGB of a gray pixel with sample 0 (code 32768). C3 main loop:
// v = 32768 * 1.52590219e-05 = 0.500007629, v * 65535 = 32768 rounded: 32768, minus
// 32768: 0. Tails: v = 32768 / 65535, v * 65535 = 32768, plus 0.499989986 is 32768.5
// in floats, truncated: 32768, minus 32768: 0. Full white (32767) gives 32767 in the
// C3 main loop and the tails, while the AC4 main loop saturates 65535 to 32767 and
// adds -32768: -1.
TEST(HlsWideCases, Hls16sGrayAndWhiteByPath) {
    EXPECT_EQ(pixelAt(kToRgb16sC3, {5, 0, -32768}, 5, 0), (std::vector<int16_t>{0, 0, 0}));
    EXPECT_EQ(pixelAt(kToRgb16sC3, {5, 0, -32768}, 5, 4), (std::vector<int16_t>{0, 0, 0}));
    EXPECT_EQ(pixelAt(kToRgb16sC3, {5, 32767, -32768}, 5, 0), (std::vector<int16_t>{32767, 32767, 32767}));
    EXPECT_EQ(pixelAt(kToRgb16sC3, {5, 32767, -32768}, 5, 4), (std::vector<int16_t>{32767, 32767, 32767}));
    EXPECT_EQ(pixelAt(kToRgb16sAC4, {5, 32767, -32768}, 5, 0), (std::vector<int16_t>{-1, -1, -1}));
    EXPECT_EQ(pixelAt(kToRgb16sAC4, {5, 32767, -32768}, 5, 4), (std::vector<int16_t>{32767, 32767, 32767}));
    // Black: -32768 in every path.
    for (int x : {0, 4}) {
        EXPECT_EQ(pixelAt(kToRgb16sC3, {5, -32768, -32768}, 5, x), (std::vector<int16_t>{-32768, -32768, -32768}));
        EXPECT_EQ(pixelAt(kToRgb16sAC4, {5, -32768, -32768}, 5, x), (std::vector<int16_t>{-32768, -32768, -32768}));
    }
}

// The 16s AC4 main loop folds the upper half of the range: every output of its main
// loop is below 0 (the sum 32767 - 32768 at most), while the C3 main loop reaches it.
TEST(HlsWideCases, Hls16sAc4MainLoopFoldsTheUpperHalf) {
    std::vector<int16_t> row;
    Rng rng(9);
    for (int i = 0; i < 4000; ++i)
        for (int c = 0; c < 3; ++c) row.push_back(int16_t(uint16_t(rng.next32())));
    const std::vector<int16_t> ac4 = widetest::convertRow(kToRgb16sAC4, row);
    const std::vector<int16_t> c3 = widetest::convertRow(kToRgb16sC3, row);
    int c3Positive = 0;
    for (size_t i = 0; i < ac4.size(); ++i) {
        ASSERT_LT(ac4[i], 0) << i;
        c3Positive += c3[i] > 0;
    }
    EXPECT_GT(c3Positive, 1000);
}

// ---------------------------------------------------------------------------------
// HLS, 32f
// ---------------------------------------------------------------------------------

// A spread of channels at or below 2^-23 is gray: H 0, S 0, L half the sum (here
// 0.5 * (1 + 2^-23) = 0.5 + 2^-24). Above it the pixel has a hue.
TEST(HlsWideCases, NearlyGrayFloatsAreGray) {
    const float a = 0.5f, b = 0.5f + 0x1p-24f, c = 0.5f + 0x1p-23f;
    for (const Member<float>* m : {&kToHls32fC3, &kToHls32fAC4}) {
        for (int x : {0, 4}) {
            EXPECT_EQ(pixelAt(*m, {a, b, c}, 5, x), (std::vector<float>{0.0f, 0.5f + 0x1p-24f, 0.0f})) << m->name;
            EXPECT_EQ(pixelAt(*m, {c, a, a}, 5, x), (std::vector<float>{0.0f, 0.5f + 0x1p-24f, 0.0f})) << m->name;
        }
    }
    // 2^-22 apart: not gray; red is the maximum, G = B, so h is 0 and S = d / s.
    const float far = 0.5f + 0x1p-22f;
    const std::vector<float> out = pixelAt(kToHls32fC3, {far, 0.5f, 0.5f}, 5, 4);
    EXPECT_EQ(out[0], 0.0f);
    EXPECT_EQ(out[2], 0x1p-22f / (2.0f - (far + 0.5f)));
}

// Red, green, blue and a mixed colour in floats, with their exact quotients.
TEST(HlsWideCases, FloatPrimaries) {
    for (int x : {0, 2}) {
        EXPECT_EQ(pixelAt(kToHls32fC3, {1.0f, 0.0f, 0.0f}, 3, x), (std::vector<float>{0.0f, 0.5f, 1.0f}));
        EXPECT_EQ(pixelAt(kToHls32fC3, {0.0f, 1.0f, 0.0f}, 3, x), (std::vector<float>{120.0f / 360.0f, 0.5f, 1.0f}));
        EXPECT_EQ(pixelAt(kToHls32fC3, {0.0f, 0.0f, 1.0f}, 3, x), (std::vector<float>{240.0f / 360.0f, 0.5f, 1.0f}));
        // Red with G -0 and B +0: (G - B) * 60 / d is -0, and the red case adds no offset,
        // so H is -0 / 360 = -0.
        const std::vector<float> negativeZero = pixelAt(kToHls32fC3, {1.0f, -0.0f, 0.0f}, 3, x);
        EXPECT_EQ(negativeZero, (std::vector<float>{0.0f, 0.5f, 1.0f}));
        EXPECT_TRUE(std::signbit(negativeZero[0]));
        // Blue above green under red: h = (0 - 0.25) * 60 / 1 + 360 = 345 degrees;
        // L 0.5, S = 1 / 1.
        EXPECT_EQ(pixelAt(kToHls32fAC4, {1.0f, 0.0f, 0.25f}, 3, x), (std::vector<float>{345.0f / 360.0f, 0.5f, 1.0f}));
    }
}

// Hue 1.0 is 360 degrees: red's position becomes 120 after the subtraction, so it acts
// as hue 0 (L 0.5, S 1: pure red) in the main loop and the tail.
TEST(HlsWideCases, FloatHueOneActsAsHueZero) {
    for (const Member<float>* m : {&kToRgb32fC3, &kToRgb32fAC4}) {
        for (int x : {0, 4}) {
            EXPECT_EQ(pixelAt(*m, {1.0f, 0.5f, 1.0f}, 5, x), (std::vector<float>{1.0f, 0.0f, 0.0f})) << m->name;
            EXPECT_EQ(pixelAt(*m, {0.0f, 0.5f, 1.0f}, 5, x), (std::vector<float>{1.0f, 0.0f, 0.0f})) << m->name;
            EXPECT_EQ(pixelAt(*m, {0.25f, 0.75f, 0.0f}, 5, x), (std::vector<float>{0.75f, 0.75f, 0.75f})) << m->name;
        }
    }
}

// The 32f main loop multiplies by one sixtieth, the tail divides by 60: at 30 degrees
// (hue 1/12) with m1 0 and m2 1 (L 0.5, S 1) green is 30 * 0.0166666675 in the main
// loop and 30 / 60 = 0.5 in the tail.
TEST(HlsWideCases, FloatMainLoopAndTailRamps) {
    const float hue = 30.0f / 360.0f;
    const float degrees = hue * 360.0f;
    EXPECT_EQ(pixelAt(kToRgb32fC3, {hue, 0.5f, 1.0f}, 5, 0)[1], (degrees * 0.0166666675f) * 1.0f + 0.0f);
    EXPECT_EQ(pixelAt(kToRgb32fC3, {hue, 0.5f, 1.0f}, 5, 4)[1], (1.0f * degrees) / 60.0f + 0.0f);
}

// ---------------------------------------------------------------------------------
// HSV, 16u
// ---------------------------------------------------------------------------------

TEST(HsvWideCases, BlackWhiteAndPrimaries) {
    for (const Member<uint16_t>* m : {&kToHsvC3, &kToHsvAC4}) {
        for (int x : {0, 4}) {
            EXPECT_EQ(pixelAt(*m, {0, 0, 0}, 5, x), (std::vector<uint16_t>{0, 0, 0}));
            EXPECT_EQ(pixelAt(*m, {65535, 65535, 65535}, 5, x), (std::vector<uint16_t>{0, 0, 65535}));
            EXPECT_EQ(pixelAt(*m, {65535, 0, 0}, 5, x), (std::vector<uint16_t>{0, 65535, 65535}));
            // Green: h = 2, H = trunc(2 * 65535 / 6 + 0.5) = 21845.
            EXPECT_EQ(pixelAt(*m, {0, 40000, 0}, 5, x), (std::vector<uint16_t>{21845, 65535, 40000}));
            // Blue: h = 4, H = trunc(43690 + 0.5) = 43690.
            EXPECT_EQ(pixelAt(*m, {0, 0, 1000}, 5, x), (std::vector<uint16_t>{43690, 65535, 1000}));
        }
    }
}

// R and B tied at the maximum: the blue rule, h = cG - cR + 4 = 5 with cG = d / d;
// H = trunc(5 * 65535 / 6 + 0.5) = trunc(54612.5 + 0.5) = 54613, S = 50000. (The red rule reaches
// the same sextant from -1; the sweep's ties check the rule's last bits.)
TEST(HsvWideCases, BlueWinsATieWithRed) {
    for (int x : {0, 4}) {
        EXPECT_EQ(pixelAt(kToHsvC3, {65535, 15535, 65535}, 5, x), (std::vector<uint16_t>{54613, 50000, 65535}));
    }
}

// HSV to RGB: S 0 returns V exactly; hue 65535 (a whole turn: its sextant position
// (65535 * 0.0166666675) * 0.00549324788 is 6.0 in floats) behaves as hue 0.
TEST(HsvWideCases, GrayAndFullTurn) {
    for (const Member<uint16_t>* m : {&kHsvToRgbC3, &kHsvToRgbAC4}) {
        for (int x : {0, 4}) {
            EXPECT_EQ(pixelAt(*m, {12345, 0, 54321}, 5, x), (std::vector<uint16_t>{54321, 54321, 54321}));
            EXPECT_EQ(pixelAt(*m, {65535, 65535, 60000}, 5, x), (std::vector<uint16_t>{60000, 0, 0}));
            EXPECT_EQ(pixelAt(*m, {0, 65535, 60000}, 5, x), (std::vector<uint16_t>{60000, 0, 0}));
        }
    }
}

}  // namespace
