// CbYCr422 to and from the other YCbCr layouts: the ten members against the reference
// model, their statuses, and the documented cases.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "chroma_harness.h"

namespace {

using namespace chromatest;

const std::vector<Member>& members() {
    static const std::vector<Member> list = {
        {"CbYCr422ToYCbCr422_8u_C2R", packedCbYCr(), packedYCbCr(), 2, false, 2, 1,
         [](Args& a) {
             return pxkiCbYCr422ToYCbCr422_8u_C2R(a.srcPtr[0], a.srcStep[0], a.dstPtr[0], a.dstStep[0], a.size);
         }},
        {"YCbCr422ToCbYCr422_8u_C2R", packedYCbCr(), packedCbYCr(), 2, false, 2, 1,
         [](Args& a) {
             return pxkiYCbCr422ToCbYCr422_8u_C2R(a.srcPtr[0], a.srcStep[0], a.dstPtr[0], a.dstStep[0], a.size);
         }},
        {"CbYCr422ToYCbCr422_8u_C2P3R", packedCbYCr(), planes(Sampling::S422), 2, false, 2, 1,
         [](Args& a) {
             return pxkiCbYCr422ToYCbCr422_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size);
         }},
        {"YCbCr422ToCbYCr422_8u_P3C2R", planes(Sampling::S422), packedCbYCr(), 2, false, 2, 1,
         [](Args& a) {
             return pxkiYCbCr422ToCbYCr422_8u_P3C2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.size);
         }},
        {"CbYCr422ToYCbCr420_8u_C2P3R", packedCbYCr(), planes(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiCbYCr422ToYCbCr420_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size);
         }},
        {"CbYCr422ToYCbCr420_8u_C2P2R", packedCbYCr(), pairs(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiCbYCr422ToYCbCr420_8u_C2P2R(a.srcPtr[0], a.srcStep[0], a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                                    a.dstStep[1], a.size);
         }},
        {"CbYCr422ToYCrCb420_8u_C2P3R", packedCbYCr(), planesCrCb(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiCbYCr422ToYCrCb420_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size);
         }},
        {"CbYCr422ToYCbCr411_8u_C2P3R", packedCbYCr(), planes(Sampling::S411), 4, false, 4, kNoHeightTest,
         [](Args& a) {
             return pxkiCbYCr422ToYCbCr411_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size);
         }},
        {"YCbCr420ToCbYCr422_8u_P2C2R", pairs(Sampling::S420), packedCbYCr(), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr420ToCbYCr422_8u_P2C2R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1], a.dstPtr[0],
                                                    a.dstStep[0], a.size);
         }},
        {"YCrCb420ToCbYCr422_8u_P3C2R", planesCrCb(Sampling::S420), packedCbYCr(), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCrCb420ToCbYCr422_8u_P3C2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.size);
         }},
    };
    return list;
}

CHROMATEST_MEMBER_SUITES(CbYCr422, members);

// Swapping twice returns the source for an even width.
TEST(CbYCr422Cases, SwappingTwiceReturnsTheSource) {
    for (int w : {2, 6, 32, 66, 130}) {
        std::vector<uint8_t> src(2 * w), mid(2 * w), back(2 * w);
        pxktest::Rng rng{static_cast<uint32_t>(w)};
        rng.fill(src.data(), src.size());
        ASSERT_EQ(pxkiCbYCr422ToYCbCr422_8u_C2R(src.data(), 2 * w, mid.data(), 2 * w, PxkSize{w, 1}), pxkOk);
        ASSERT_EQ(pxkiYCbCr422ToCbYCr422_8u_C2R(mid.data(), 2 * w, back.data(), 2 * w, PxkSize{w, 1}), pxkOk);
        EXPECT_EQ(back, src) << w;
    }
    const uint8_t cbycr[4] = {1, 2, 3, 4};
    uint8_t out[4];
    ASSERT_EQ(pxkiCbYCr422ToYCbCr422_8u_C2R(cbycr, 4, out, 4, PxkSize{2, 1}), pxkOk);
    const uint8_t want[4] = {2, 1, 4, 3};
    EXPECT_EQ(std::vector<uint8_t>(out, out + 4), std::vector<uint8_t>(want, want + 4));
}

// CbYCr422ToYCbCr420_8u_C2P3R: chroma of odd rows has no effect; their Y still does.
TEST(CbYCr422Cases, OddRowChromaHasNoEffectButOddRowLumaDoes) {
    const uint8_t rows[2][4] = {{10, 11, 12, 13}, {20, 21, 22, 23}};  // Cb Y0 Cr Y1
    uint8_t y[4], cb = 0, cr = 0;
    uint8_t* const dst[3] = {y, &cb, &cr};
    const int32_t steps[3] = {2, 1, 1};
    ASSERT_EQ(pxkiCbYCr422ToYCbCr420_8u_C2P3R(&rows[0][0], 4, dst, steps, PxkSize{2, 2}), pxkOk);
    const uint8_t wantY[4] = {11, 13, 21, 23};
    EXPECT_EQ(std::vector<uint8_t>(y, y + 4), std::vector<uint8_t>(wantY, wantY + 4));
    EXPECT_EQ(cb, 10);
    EXPECT_EQ(cr, 12);
}

// YCbCr420ToCbYCr422_8u_P2C2R: rows 2r and 2r + 1 have equal chroma bytes.
TEST(CbYCr422Cases, RowsOfOnePairHaveEqualChroma) {
    const uint8_t y[8] = {1, 2, 3, 4, 5, 6, 7, 8}, c[4] = {50, 60, 70, 80};
    uint8_t out[16];
    ASSERT_EQ(pxkiYCbCr420ToCbYCr422_8u_P2C2R(y, 4, c, 4, out, 8, PxkSize{4, 2}), pxkOk);
    const uint8_t want[16] = {50, 1, 60, 2, 70, 3, 80, 4, 50, 5, 60, 6, 70, 7, 80, 8};
    EXPECT_EQ(std::vector<uint8_t>(out, out + 16), std::vector<uint8_t>(want, want + 16));
}

// A width of 3 gives one pixel pair per row.
TEST(CbYCr422Cases, Width3GivesOnePairPerRow) {
    const uint8_t src[6] = {1, 2, 3, 4, 5, 6};
    uint8_t dst[6] = {9, 9, 9, 9, 9, 9};
    ASSERT_EQ(pxkiCbYCr422ToYCbCr422_8u_C2R(src, 6, dst, 6, PxkSize{3, 1}), pxkOk);
    const uint8_t want[6] = {2, 1, 4, 3, 9, 9};
    EXPECT_EQ(std::vector<uint8_t>(dst, dst + 6), std::vector<uint8_t>(want, want + 6));
}

}  // namespace
