// The documented examples of the YCoCg members with their literal values, and the
// round trips of the reversible family.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace {

// 16-bit plain forward of R = 32767, G = 0, B = -32768 (Co = 32768) at width 15:
// columns 0 to 11 are vector groups (8, then 4) and saturate to 32767; columns 12 to 14
// are the tail and wrap to -32768.
TEST(YCoCgCases, SixteenBitPlainForwardSaturatesInGroupsAndWrapsInTheTail) {
    for (bool c4 : {false, true}) {
        const int w = 15, ch = c4 ? 4 : 3;
        std::vector<int16_t> src(size_t(w) * ch);
        for (int x = 0; x < w; ++x) {
            src[size_t(x) * ch + 0] = -32768;  // B
            src[size_t(x) * ch + 1] = 0;       // G
            src[size_t(x) * ch + 2] = 32767;   // R
            if (c4) src[size_t(x) * ch + 3] = 1234;
        }
        std::vector<int16_t> y(w, 7), co(w, 7), cg(w, 7);
        int16_t* const planes[3] = {y.data(), co.data(), cg.data()};
        const PxkResult s = c4 ? pxkiSBGRToYCoCg_16s_C4P3R(src.data(), w * ch * 2, planes, w * 2, PxkSize{w, 1})
                               : pxkiSBGRToYCoCg_16s_C3P3R(src.data(), w * ch * 2, planes, w * 2, PxkSize{w, 1});
        ASSERT_EQ(s, pxkOk);
        for (int x = 0; x < w; ++x) {
            EXPECT_EQ(co[x], x < 12 ? 32767 : -32768) << "column " << x << (c4 ? " C4" : " C3");
            EXPECT_EQ(y[x], 0) << x;    // (32767 - 32768 + 2) >> 2
            EXPECT_EQ(cg[x], 0) << x;   // (0 - 32767 + 32768 + 2) >> 2
        }
    }
}

// Cg of 32768 (G = 32767, R = B = -32768): saturated in a group of eight, wrapped in
// the tail of a width of 9.
TEST(YCoCgCases, SixteenBitPlainForwardCgAtTheLimit) {
    const int w = 9;
    std::vector<int16_t> src(size_t(w) * 3);
    for (int x = 0; x < w; ++x) {
        src[size_t(x) * 3 + 0] = -32768;
        src[size_t(x) * 3 + 1] = 32767;
        src[size_t(x) * 3 + 2] = -32768;
    }
    std::vector<int16_t> y(w), co(w), cg(w);
    int16_t* const planes[3] = {y.data(), co.data(), cg.data()};
    ASSERT_EQ(pxkiSBGRToYCoCg_16s_C3P3R(src.data(), w * 6, planes, w * 2, PxkSize{w, 1}), pxkOk);
    for (int x = 0; x < w; ++x) EXPECT_EQ(cg[x], x < 8 ? 32767 : -32768) << x;
    // The 32-bit planes keep the whole value.
    std::vector<int32_t> y32(w), co32(w), cg32(w);
    int32_t* const p32[3] = {y32.data(), co32.data(), cg32.data()};
    ASSERT_EQ(pxkiSBGRToYCoCg_16s32s_C3P3R(src.data(), w * 6, p32, w * 4, PxkSize{w, 1}), pxkOk);
    for (int x = 0; x < w; ++x) EXPECT_EQ(cg32[x], 32768) << x;
}

// All four BGR members of a white pixel, and the offset member of it.
TEST(YCoCgCases, WhitePixel) {
    const uint8_t white[4] = {255, 255, 255, 9};
    for (auto f : {pxkiBGRToYCoCg_8u16s_C3P3R, pxkiBGRToYCoCg_8u16s_C4P3R, pxkiBGRToYCoCg_Rev_8u16s_C3P3R,
                   pxkiBGRToYCoCg_Rev_8u16s_C4P3R}) {
        int16_t v[3] = {7, 7, 7};
        int16_t* const p16[3] = {&v[0], &v[1], &v[2]};
        ASSERT_EQ(f(white, 4, p16, 2, PxkSize{1, 1}), pxkOk);
        EXPECT_EQ(v[0], 255);
        EXPECT_EQ(v[1], 0);
        EXPECT_EQ(v[2], 0);
    }
    uint8_t y8, co8, cg8;
    uint8_t* const p8[3] = {&y8, &co8, &cg8};
    ASSERT_EQ(pxkiRGBToYCoCg_8u_C3P3R(white, 3, p8, 1, PxkSize{1, 1}), pxkOk);
    EXPECT_EQ(y8, 255);
    EXPECT_EQ(co8, 128);
    EXPECT_EQ(cg8, 128);
}

// R = 1, G = 0, B = 0 gives Y 0, Co 1, Cg 0; the inverse gives R 1, G 0, B -1,
// saturated to 0.
TEST(YCoCgCases, PlainRoundTripOfDarkRed) {
    const uint8_t bgr[3] = {0, 0, 1};
    int16_t y = 9, co = 9, cg = 9;
    int16_t* const p[3] = {&y, &co, &cg};
    ASSERT_EQ(pxkiBGRToYCoCg_8u16s_C3P3R(bgr, 3, p, 2, PxkSize{1, 1}), pxkOk);
    EXPECT_EQ(y, 0);
    EXPECT_EQ(co, 1);
    EXPECT_EQ(cg, 0);
    const int16_t* const q[3] = {&y, &co, &cg};
    uint8_t out[3] = {7, 7, 7};
    ASSERT_EQ(pxkiYCoCgToBGR_16s8u_P3C3R(q, 2, out, 3, PxkSize{1, 1}), pxkOk);
    EXPECT_EQ(out[0], 0);  // B = -1, saturated
    EXPECT_EQ(out[1], 0);
    EXPECT_EQ(out[2], 1);
    int16_t out16[3];
    ASSERT_EQ(pxkiYCoCgToSBGR_16s_P3C3R(q, 2, out16, 6, PxkSize{1, 1}), pxkOk);
    EXPECT_EQ(out16[0], -1);
    EXPECT_EQ(out16[1], 0);
    EXPECT_EQ(out16[2], 1);
}

// The offset inverse: the offsets cancel in R; each value saturated.
TEST(YCoCgCases, OffsetInverseLiteralValues) {
    const uint8_t y[2] = {255, 0}, co[2] = {128, 255}, cg[2] = {128, 0};
    const uint8_t* const p[3] = {y, co, cg};
    uint8_t rgb[6];
    ASSERT_EQ(pxkiYCoCgToRGB_8u_P3C3R(p, 2, rgb, 6, PxkSize{2, 1}), pxkOk);
    EXPECT_EQ(rgb[0], 255);  // 255 + 128 - 128
    EXPECT_EQ(rgb[1], 255);  // 255 + 128 - 128
    EXPECT_EQ(rgb[2], 255);  // 128 - 128 + 255 - 128 + 128
    EXPECT_EQ(rgb[3], 255);  // 0 + 255 - 0
    EXPECT_EQ(rgb[4], 0);    // 0 + 0 - 128
    EXPECT_EQ(rgb[5], 1);    // 128 - 255 + 0 - 0 + 128
    // A height below 1 returns pxkOk at once.
    EXPECT_EQ(pxkiYCoCgToRGB_8u_P3C3R(p, 2, rgb, 6, PxkSize{2, 0}), pxkOk);
    EXPECT_EQ(pxkiYCoCgToRGB_8u_P3C3R(p, 2, rgb, 6, PxkSize{2, -5}), pxkOk);
    EXPECT_EQ(rgb[5], 1);
}

// Alpha of the C4 inverses: every fourth sample is the argument.
TEST(YCoCgCases, FourthSampleOfC4InversesIsAlpha) {
    const int w = 21;
    std::vector<int16_t> y(w, 100), co(w, 3), cg(w, -2);
    const int16_t* const p16[3] = {y.data(), co.data(), cg.data()};
    std::vector<uint8_t> out8(size_t(w) * 4, 0);
    ASSERT_EQ(pxkiYCoCgToBGR_16s8u_P3C4R(p16, w * 2, out8.data(), w * 4, PxkSize{w, 1}, 201), pxkOk);
    ASSERT_EQ(pxkiYCoCgToBGR_Rev_16s8u_P3C4R(p16, w * 2, out8.data(), w * 4, PxkSize{w, 1}, 201), pxkOk);
    for (int x = 0; x < w; ++x) EXPECT_EQ(out8[size_t(x) * 4 + 3], 201) << x;
    std::vector<int16_t> out16(size_t(w) * 4, 0);
    ASSERT_EQ(pxkiYCoCgToSBGR_Rev_16s_P3C4R(p16, w * 2, out16.data(), w * 8, PxkSize{w, 1}, -5), pxkOk);
    for (int x = 0; x < w; ++x) EXPECT_EQ(out16[size_t(x) * 4 + 3], -5) << x;
    // Y 100, Co 3, Cg -2: plain R = 105, G = 98, B = 99.
    ASSERT_EQ(pxkiYCoCgToSBGR_16s_P3C4R(p16, w * 2, out16.data(), w * 8, PxkSize{w, 1}, -7), pxkOk);
    for (int x = 0; x < w; ++x) {
        EXPECT_EQ(out16[size_t(x) * 4 + 0], 99);
        EXPECT_EQ(out16[size_t(x) * 4 + 1], 98);
        EXPECT_EQ(out16[size_t(x) * 4 + 2], 105);
        EXPECT_EQ(out16[size_t(x) * 4 + 3], -7);
    }
}

// Reversible forward then inverse returns every 8-bit colour exactly: all 2^24
// colours in the release builds, one strip in 16 under the sanitizers. Colour k of a
// strip of 4096 x 256 pixels is B = k & 255, G = (k >> 8) & 255, R = k >> 16.
TEST(YCoCgCases, ReversibleRoundTripOfEveryEightBitColour) {
    const int w = 4096, h = 256, strips = 16;
    const int stripStep = pxktest::kLightSweep ? 16 : 1;
    std::vector<uint8_t> src(size_t(w) * h * 4), back(size_t(w) * h * 4);
    std::vector<int16_t> planes(size_t(w) * h * 3);
    int16_t* const dst[3] = {planes.data(), planes.data() + size_t(w) * h, planes.data() + 2 * size_t(w) * h};
    const int16_t* const csrc[3] = {dst[0], dst[1], dst[2]};
    for (int c4 = 0; c4 < 2; ++c4) {
        const int ch = c4 ? 4 : 3;
        for (int s = c4 ? 5 : 0; s < strips; s += c4 ? 16 : stripStep) {
            for (int i = 0; i < w * h; ++i) {
                const uint32_t k = uint32_t(s) * w * h + uint32_t(i);
                src[size_t(i) * ch + 0] = uint8_t(k);
                src[size_t(i) * ch + 1] = uint8_t(k >> 8);
                src[size_t(i) * ch + 2] = uint8_t(k >> 16);
                if (c4) src[size_t(i) * ch + 3] = uint8_t(k * 7);
            }
            if (c4) {
                ASSERT_EQ(pxkiBGRToYCoCg_Rev_8u16s_C4P3R(src.data(), w * ch, dst, w * 2, PxkSize{w, h}), pxkOk);
                ASSERT_EQ(pxkiYCoCgToBGR_Rev_16s8u_P3C4R(csrc, w * 2, back.data(), w * ch, PxkSize{w, h}, 77), pxkOk);
            } else {
                ASSERT_EQ(pxkiBGRToYCoCg_Rev_8u16s_C3P3R(src.data(), w * ch, dst, w * 2, PxkSize{w, h}), pxkOk);
                ASSERT_EQ(pxkiYCoCgToBGR_Rev_16s8u_P3C3R(csrc, w * 2, back.data(), w * ch, PxkSize{w, h}), pxkOk);
            }
            for (int i = 0; i < w * h; ++i) {
                for (int c = 0; c < 3; ++c) {
                    ASSERT_EQ(back[size_t(i) * ch + c], src[size_t(i) * ch + c])
                        << "colour " << (uint32_t(s) * w * h + uint32_t(i)) << " channel " << c << (c4 ? " C4" : "");
                }
                if (c4) {
                    ASSERT_EQ(back[size_t(i) * ch + 3], 77);
                }
            }
        }
    }
}

// The 16-bit reversible pair stays exact through its wrap-around, and the 32-bit
// planes give back any 16-bit colour.
TEST(YCoCgCases, ReversibleSixteenBitRoundTrips) {
    pxktest::Rng rng(pxktest::seedFor("YCoCgRev16", {1}));
    for (int w : {1, 3, 4, 7, 8, 12, 13, 31, 67, 301}) {
        const int h = 3;
        std::vector<int16_t> src(size_t(w) * h * 3), back(size_t(w) * h * 3, 0);
        for (int16_t& v : src) {
            const int pick = int(rng.uniform(0, 3));
            v = pick == 0 ? int16_t(-32768) : pick == 1 ? int16_t(32767) : int16_t(rng.uniform(-32768, 32767));
        }
        std::vector<int16_t> p16(size_t(w) * h * 3);
        int16_t* const d16[3] = {p16.data(), p16.data() + size_t(w) * h, p16.data() + 2 * size_t(w) * h};
        const int16_t* const s16[3] = {d16[0], d16[1], d16[2]};
        ASSERT_EQ(pxkiSBGRToYCoCg_Rev_16s_C3P3R(src.data(), w * 6, d16, w * 2, PxkSize{w, h}), pxkOk);
        ASSERT_EQ(pxkiYCoCgToSBGR_Rev_16s_P3C3R(s16, w * 2, back.data(), w * 6, PxkSize{w, h}), pxkOk);
        EXPECT_EQ(back, src) << "16-bit planes, width " << w;
        std::vector<int32_t> p32(size_t(w) * h * 3);
        int32_t* const d32[3] = {p32.data(), p32.data() + size_t(w) * h, p32.data() + 2 * size_t(w) * h};
        const int32_t* const s32[3] = {d32[0], d32[1], d32[2]};
        std::fill(back.begin(), back.end(), int16_t(0));
        ASSERT_EQ(pxkiSBGRToYCoCg_Rev_16s32s_C3P3R(src.data(), w * 6, d32, w * 4, PxkSize{w, h}), pxkOk);
        ASSERT_EQ(pxkiYCoCgToSBGR_Rev_32s16s_P3C3R(s32, w * 4, back.data(), w * 6, PxkSize{w, h}), pxkOk);
        EXPECT_EQ(back, src) << "32-bit planes, width " << w;
    }
}

}  // namespace
