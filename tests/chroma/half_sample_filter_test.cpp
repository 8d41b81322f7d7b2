// 4:2:0 to 4:2:2 with the half-sample interpolator: the three members against a
// literal model of the two passes, their statuses, and the documented cases.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "chroma_harness.h"

namespace {

using namespace chromatest;

int floorShift4(int v) { return v >= 0 ? v / 16 : -((-v + 15) / 16); }
uint8_t saturate(int v) { return uint8_t(v < 0 ? 0 : (v > 255 ? 255 : v)); }

// The model: luma copied; output chroma row 2k is source row k; then output rows
// 2k + 1, top to bottom, from the even output rows as they stand in the output.
void halfSampleModel(Surface& src, const Side& s, Surface& dst, const Side& d, int w, int h) {
    w -= w % 2;
    h -= h % 8;
    const int n = h / 2, cw = w / 2;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) *lumaAt(dst, d, x, y) = *lumaAt(src, s, x, y);
    }
    for (int k = 0; k < 2; ++k) {
        for (int r = 0; r < n; ++r) {
            for (int c = 0; c < cw; ++c) *chromaAt(dst, d, k, c, 2 * r) = *chromaAt(src, s, k, c, r);
        }
        for (int j = 0; j < n; ++j) {
            for (int c = 0; c < cw; ++c) {
                auto C = [&](int i) { return int(*chromaAt(dst, d, k, c, 2 * i)); };
                int v;
                if (j == 0) {
                    v = 8 * C(0) + 9 * C(1) - C(2) + 8;
                } else if (j <= n - 3) {
                    v = 9 * (C(j) + C(j + 1)) - (C(j - 1) + C(j + 2)) + 8;
                } else if (j == n - 2) {
                    v = -C(n - 3) + 9 * C(n - 2) + 8 * C(n - 1) + 8;
                } else {
                    v = 17 * C(n - 1) - C(n - 2) + 8;
                }
                *chromaAt(dst, d, k, c, 2 * j + 1) = saturate(floorShift4(v));
            }
        }
    }
}

Member filtered(const char* name, Side src, Call call) {
    Member m{name, src, planes(Sampling::S422), 2, false, 2, 8, std::move(call)};
    m.reference = [src](Surface& s, Surface& d, int w, int h) {
        halfSampleModel(s, src, d, planes(Sampling::S422), w, h);
    };
    m.heights = {8, 9, 15, 16, 24};
    return m;
}

const std::vector<Member>& members() {
    static const std::vector<Member> list = {
        filtered("YCbCr420ToYCbCr422_Filter_8u_P3R", planes(Sampling::S420),
                 [](Args& a) {
                     return pxkiYCbCr420ToYCbCr422_Filter_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps,
                                                                 a.size);
                 }),
        filtered("YCbCr420ToYCbCr422_Filter_8u_P2P3R", pairs(Sampling::S420),
                 [](Args& a) {
                     return pxkiYCbCr420ToYCbCr422_Filter_8u_P2P3R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1],
                                                                   a.srcStep[1], a.dstArray, a.dstSteps, a.size);
                 }),
        // Source plane 1 (Cr) into dst[2], plane 2 (Cb) into dst[1].
        filtered("YCrCb420ToYCbCr422_Filter_8u_P3R", planesCrCb(Sampling::S420),
                 [](Args& a) {
                     return pxkiYCrCb420ToYCbCr422_Filter_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps,
                                                                 a.size);
                 }),
    };
    return list;
}

CHROMATEST_MEMBER_SUITES(HalfSampleFilter, members);

// Height 8, one column: rows 1, 3, 5, 7 use the first, general, h - 3 and h - 1
// rules (row 3 has k = 1 = n - 3). Source column 10, 50, 200, 0:
//   row 1: 80 + 450 - 200 + 8 = 338 >> 4 = 21
//   row 3: 9 * 250 - 10 + 8 = 2248 >> 4 = 140
//   row 5: -50 + 1800 + 0 + 8 = 1758 >> 4 = 109
//   row 7: 0 - 200 + 8 = -192 >> 4 = -12 -> 0
TEST(HalfSampleFilterCases, Height8TakesEachRuleOnce) {
    const uint8_t y[16] = {}, cb[4] = {10, 50, 200, 0}, cr[4] = {255, 255, 255, 255};
    const uint8_t* const src[3] = {y, cb, cr};
    const int32_t srcSteps[3] = {2, 1, 1};
    uint8_t dy[16], dcb[8], dcr[8];
    uint8_t* const dst[3] = {dy, dcb, dcr};
    const int32_t dstSteps[3] = {2, 1, 1};
    ASSERT_EQ(pxkiYCbCr420ToYCbCr422_Filter_8u_P3R(src, srcSteps, dst, dstSteps, PxkSize{2, 8}), pxkOk);
    const uint8_t want[8] = {10, 21, 50, 140, 200, 109, 0, 0};
    EXPECT_EQ(std::vector<uint8_t>(dcb, dcb + 8), std::vector<uint8_t>(want, want + 8));
    // A flat plane stays flat at every row, edges included (255: saturated).
    EXPECT_EQ(std::vector<uint8_t>(dcr, dcr + 8), std::vector<uint8_t>(8, 255));
}

TEST(HalfSampleFilterCases, FlatChromaStaysFlat) {
    for (int v : {0, 1, 100, 128, 254, 255}) {
        std::vector<uint8_t> y(40 * 16), c(20 * 8, uint8_t(v)), dy(40 * 16), d1(20 * 16), d2(20 * 16);
        const uint8_t* const src[3] = {y.data(), c.data(), c.data()};
        const int32_t srcSteps[3] = {40, 20, 20};
        uint8_t* const dst[3] = {dy.data(), d1.data(), d2.data()};
        const int32_t dstSteps[3] = {40, 20, 20};
        ASSERT_EQ(pxkiYCbCr420ToYCbCr422_Filter_8u_P3R(src, srcSteps, dst, dstSteps, PxkSize{40, 16}), pxkOk);
        EXPECT_EQ(d1, std::vector<uint8_t>(d1.size(), uint8_t(v))) << v;
        EXPECT_EQ(d2, std::vector<uint8_t>(d2.size(), uint8_t(v))) << v;
    }
}

// The P2 source: byte 0 of each pair into dst[1], byte 1 into dst[2]; the YCrCb
// member: source plane 1 into dst[2].
TEST(HalfSampleFilterCases, ComponentsGoWhereTheNamesSay) {
    const uint8_t y[16] = {}, pairsRow[8] = {1, 2, 1, 2, 1, 2, 1, 2};
    uint8_t dy[16], d1[8], d2[8];
    uint8_t* const dst[3] = {dy, d1, d2};
    const int32_t dstSteps[3] = {2, 1, 1};
    ASSERT_EQ(pxkiYCbCr420ToYCbCr422_Filter_8u_P2P3R(y, 2, pairsRow, 2, dst, dstSteps, PxkSize{2, 8}), pxkOk);
    EXPECT_EQ(std::vector<uint8_t>(d1, d1 + 8), std::vector<uint8_t>(8, 1));
    EXPECT_EQ(std::vector<uint8_t>(d2, d2 + 8), std::vector<uint8_t>(8, 2));
    const uint8_t cr[4] = {7, 7, 7, 7}, cb[4] = {9, 9, 9, 9};
    const uint8_t* const src[3] = {y, cr, cb};
    const int32_t srcSteps[3] = {2, 1, 1};
    ASSERT_EQ(pxkiYCrCb420ToYCbCr422_Filter_8u_P3R(src, srcSteps, dst, dstSteps, PxkSize{2, 8}), pxkOk);
    EXPECT_EQ(std::vector<uint8_t>(d1, d1 + 8), std::vector<uint8_t>(8, 9));
    EXPECT_EQ(std::vector<uint8_t>(d2, d2 + 8), std::vector<uint8_t>(8, 7));
}

// Width 5, height 13: the 4 x 8 result; the rest stays unwritten.
TEST(HalfSampleFilterCases, CutsToEvenWidthAndMultipleOf8Height) {
    std::vector<uint8_t> y(5 * 13, 3), c(3 * 7, 50), dy(5 * 13, 0xEE), d1(3 * 13, 0xEE), d2(3 * 13, 0xEE);
    const uint8_t* const src[3] = {y.data(), c.data(), c.data()};
    const int32_t srcSteps[3] = {5, 3, 3};
    uint8_t* const dst[3] = {dy.data(), d1.data(), d2.data()};
    const int32_t dstSteps[3] = {5, 3, 3};
    ASSERT_EQ(pxkiYCbCr420ToYCbCr422_Filter_8u_P3R(src, srcSteps, dst, dstSteps, PxkSize{5, 13}), pxkOk);
    for (int r = 0; r < 13; ++r) {
        for (int x = 0; x < 5; ++x) EXPECT_EQ(dy[std::size_t(5 * r + x)], (r < 8 && x < 4) ? 3 : 0xEE) << r << " " << x;
        for (int x = 0; x < 3; ++x) EXPECT_EQ(d1[std::size_t(3 * r + x)], (r < 8 && x < 2) ? 50 : 0xEE) << r << " " << x;
    }
}

}  // namespace
