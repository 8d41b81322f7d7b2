// Changes of layout at one chroma sampling: the eleven members against the reference
// model, their statuses and the documented cases.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

#include "chroma_harness.h"

namespace {

using namespace chromatest;

// The aligned kernel of YCrCb422ToYCbCr422_8u_C2P3R: source, dst[0] and both of their
// steps multiples of 16 and bits 1 to 3 of the width clear.
bool alignedKernel(const Args& a) {
    auto at16 = [](const void* p) { return reinterpret_cast<std::uintptr_t>(p) % 16 == 0; };
    return at16(a.srcPtr[0]) && at16(a.dstPtr[0]) && a.srcStep[0] % 16 == 0 && a.dstStep[0] % 16 == 0 &&
           (a.size.width & 0xE) == 0;
}

const std::vector<Member>& members() {
    static const std::vector<Member> list = {
        {"YCbCr422_8u_C2P3R", packedYCbCr(), planes(Sampling::S422), 2, false, 2, 1,
         [](Args& a) { return pxkiYCbCr422_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size); }},
        {"YCbCr422_8u_P3C2R", planes(Sampling::S422), packedYCbCr(), 2, false, 2, 1,
         [](Args& a) { return pxkiYCbCr422_8u_P3C2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.size); }},
        {"YCrCb422ToYCbCr422_8u_C2P3R", packedYCrCb(), planes(Sampling::S422), 2, false, 2, 1,
         [](Args& a) {
             return pxkiYCrCb422ToYCbCr422_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size);
         },
         {Slot::DstSteps},
         // The aligned kernel exchanges nothing: byte 1 (Cr) into dst[1], byte 3 into dst[2].
         [](const Args& a) { return alignedKernel(a) ? planesCrCb(Sampling::S422) : planes(Sampling::S422); }},
        {"YCbCr422ToYCrCb422_8u_C2R", packedYCbCr(), packedYCrCb(), 2, false, 2, kNoHeightTest,
         [](Args& a) {
             return pxkiYCbCr422ToYCrCb422_8u_C2R(a.srcPtr[0], a.srcStep[0], a.dstPtr[0], a.dstStep[0], a.size);
         }},
        {"YCbCr422ToYCrCb422_8u_P3C2R", planes(Sampling::S422), packedYCrCb(), 2, false, 2, kNoHeightTest,
         [](Args& a) {
             return pxkiYCbCr422ToYCrCb422_8u_P3C2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.size);
         }},
        {"YCbCr420_8u_P2P3R", pairs(Sampling::S420), planes(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr420_8u_P2P3R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1], a.dstArray,
                                          a.dstSteps, a.size);
         }},
        {"YCbCr420_8u_P3P2R", planes(Sampling::S420), pairs(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr420_8u_P3P2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                          a.dstStep[1], a.size);
         }},
        // No exchange although the target is named YCrCb: pair byte 0 to dst[1].
        {"YCbCr420ToYCrCb420_8u_P2P3R", pairs(Sampling::S420), planes(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr420ToYCrCb420_8u_P2P3R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1],
                                                    a.dstArray, a.dstSteps, a.size);
         }},
        {"YCrCb420ToYCbCr420_8u_P3P2R", planesCrCb(Sampling::S420), pairs(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCrCb420ToYCbCr420_8u_P3P2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                                    a.dstStep[1], a.size);
         }},
        {"YCbCr411_8u_P2P3R", pairs(Sampling::S411), planes(Sampling::S411), 4, false, 4, kNoHeightTest,
         [](Args& a) {
             return pxkiYCbCr411_8u_P2P3R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1], a.dstArray,
                                          a.dstSteps, a.size);
         },
         {Slot::DstArray}},
        {"YCbCr411_8u_P3P2R", planes(Sampling::S411), pairs(Sampling::S411), 4, false, 4, kNoHeightTest,
         [](Args& a) {
             return pxkiYCbCr411_8u_P3P2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                          a.dstStep[1], a.size);
         }},
    };
    return list;
}

CHROMATEST_MEMBER_SUITES(PlaneShuffles, members);

// ---------------------------------------------------------------------------------
// Documented cases, with literal values
// ---------------------------------------------------------------------------------

// Width 3: two columns used, everything else in dst untouched, pxkOk.
TEST(PlaneShufflesCases, Width3OfYCbCr422C2P3RUsesTwoColumns) {
    const uint8_t src[6] = {10, 20, 30, 40, 50, 60};
    uint8_t y[4] = {0xEE, 0xEE, 0xEE, 0xEE}, cb[2] = {0xEE, 0xEE}, cr[2] = {0xEE, 0xEE};
    uint8_t* const dst[3] = {y, cb, cr};
    const int32_t steps[3] = {4, 2, 2};
    EXPECT_EQ(pxkiYCbCr422_8u_C2P3R(src, 6, dst, steps, PxkSize{3, 1}), pxkOk);
    EXPECT_EQ(y[0], 10);
    EXPECT_EQ(y[1], 30);
    EXPECT_EQ(y[2], 0xEE);
    EXPECT_EQ(cb[0], 20);
    EXPECT_EQ(cb[1], 0xEE);
    EXPECT_EQ(cr[0], 40);
    EXPECT_EQ(cr[1], 0xEE);
}

// Width 7: four columns used.
TEST(PlaneShufflesCases, Width7OfYCbCr411P3P2RUsesFourColumns) {
    const uint8_t y[7] = {1, 2, 3, 4, 5, 6, 7}, cb[2] = {8, 9}, cr[2] = {10, 11};
    const uint8_t* const src[3] = {y, cb, cr};
    const int32_t steps[3] = {7, 2, 2};
    uint8_t dy[8], dc[4];
    std::fill(dy, dy + 8, 0xEE);
    std::fill(dc, dc + 4, 0xEE);
    EXPECT_EQ(pxkiYCbCr411_8u_P3P2R(src, steps, dy, 8, dc, 4, PxkSize{7, 1}), pxkOk);
    const uint8_t wantY[8] = {1, 2, 3, 4, 0xEE, 0xEE, 0xEE, 0xEE}, wantC[4] = {8, 10, 0xEE, 0xEE};
    EXPECT_EQ(std::vector<uint8_t>(dy, dy + 8), std::vector<uint8_t>(wantY, wantY + 8));
    EXPECT_EQ(std::vector<uint8_t>(dc, dc + 4), std::vector<uint8_t>(wantC, wantC + 4));
}

// Height 1 is pxkErrSize; height 3 writes two Y rows and one chroma row.
TEST(PlaneShufflesCases, Heights1And3OfYCbCr420P2P3R) {
    const uint8_t y[6] = {1, 2, 3, 4, 5, 6}, c[4] = {7, 8, 9, 10};  // c: rows of one pair, step 2
    uint8_t dy[6], dcb[2], dcr[2];
    std::fill(dy, dy + 6, 0xEE);
    std::fill(dcb, dcb + 2, 0xEE);
    std::fill(dcr, dcr + 2, 0xEE);
    uint8_t* const dst[3] = {dy, dcb, dcr};
    const int32_t steps[3] = {2, 1, 1};
    EXPECT_EQ(pxkiYCbCr420_8u_P2P3R(y, 2, c, 2, dst, steps, PxkSize{2, 1}), pxkErrSize);
    EXPECT_EQ(dy[0], 0xEE);
    EXPECT_EQ(pxkiYCbCr420_8u_P2P3R(y, 2, c, 2, dst, steps, PxkSize{2, 3}), pxkOk);
    const uint8_t wantY[6] = {1, 2, 3, 4, 0xEE, 0xEE};
    EXPECT_EQ(std::vector<uint8_t>(dy, dy + 6), std::vector<uint8_t>(wantY, wantY + 6));
    EXPECT_EQ(dcb[0], 7);
    EXPECT_EQ(dcr[0], 8);
    EXPECT_EQ(dcb[1], 0xEE);
    EXPECT_EQ(dcr[1], 0xEE);
}

TEST(PlaneShufflesCases, Height0OfYCbCr422ToYCrCb422C2RIsOk) {
    uint8_t src[4] = {1, 2, 3, 4}, dst[4] = {9, 9, 9, 9};
    EXPECT_EQ(pxkiYCbCr422ToYCrCb422_8u_C2R(src, 4, dst, 4, PxkSize{2, 0}), pxkOk);
    EXPECT_EQ(dst[0], 9);
    EXPECT_EQ(pxkiYCbCr422ToYCrCb422_8u_C2R(src, 4, dst, 4, PxkSize{2, 1}), pxkOk);
    const uint8_t want[4] = {1, 4, 3, 2};
    EXPECT_EQ(std::vector<uint8_t>(dst, dst + 4), std::vector<uint8_t>(want, want + 4));
}

// The deliberate non-exchange: pair byte 0 into dst[1], byte 1 into dst[2].
TEST(PlaneShufflesCases, YCbCr420ToYCrCb420P2P3RDoesNotExchange) {
    const uint8_t y[4] = {1, 2, 3, 4}, c[2] = {50, 60};
    uint8_t dy[4], d1 = 0, d2 = 0;
    uint8_t* const dst[3] = {dy, &d1, &d2};
    const int32_t steps[3] = {2, 1, 1};
    EXPECT_EQ(pxkiYCbCr420ToYCrCb420_8u_P2P3R(y, 2, c, 2, dst, steps, PxkSize{2, 2}), pxkOk);
    EXPECT_EQ(d1, 50);
    EXPECT_EQ(d2, 60);
}

// With every pointer and step a multiple of 16 and a width that is a multiple of 16,
// the chroma planes of YCrCb422ToYCbCr422_8u_C2P3R change places; a misaligned source
// or a width of 18 (bit 1 set) takes the exchanging kernel.
TEST(PlaneShufflesCases, AlignedKernelOfYCrCb422ToYCbCr422KeepsTheByteOrder) {
    for (int width : {16, 32, 64, 18, 20, 24}) {
        for (int misalign : {0, 1}) {
            alignas(16) static uint8_t src[2 * 128 + 16];
            alignas(16) static uint8_t y[2 * 64], p1[2 * 64], p2[2 * 64];
            for (int i = 0; i < 2 * 128 + 16; ++i) src[i] = uint8_t(i * 7 + 3);
            uint8_t* const dst[3] = {y, p1, p2};
            const int32_t steps[3] = {64, 64, 64};
            const uint8_t* s = src + misalign;
            ASSERT_EQ(pxkiYCrCb422ToYCbCr422_8u_C2P3R(s, 128, dst, steps, PxkSize{width, 2}), pxkOk);
            const bool aligned = misalign == 0 && (width & 0xE) == 0;
            for (int row = 0; row < 2; ++row) {
                for (int p = 0; p < width / 2; ++p) {
                    const uint8_t byte1 = s[128 * row + 4 * p + 1], byte3 = s[128 * row + 4 * p + 3];
                    EXPECT_EQ(p1[64 * row + p], aligned ? byte1 : byte3) << width << " " << misalign;
                    EXPECT_EQ(p2[64 * row + p], aligned ? byte3 : byte1) << width << " " << misalign;
                    EXPECT_EQ(y[64 * row + 2 * p], s[128 * row + 4 * p]);
                    EXPECT_EQ(y[64 * row + 2 * p + 1], s[128 * row + 4 * p + 2]);
                }
            }
        }
    }
}

// The other members give the same bytes at every alignment of pointers and steps;
// YCbCr422_8u_C2P3R in particular, whose kernels are chosen by the same test.
TEST(PlaneShufflesCases, YCbCr422C2P3RIsTheSameAlignedAndNot) {
    alignas(16) static uint8_t src[2 * 128 + 16];
    for (int i = 0; i < 2 * 128 + 16; ++i) src[i] = uint8_t(i * 13 + 1);
    for (int misalign : {0, 1}) {
        alignas(16) static uint8_t y[128], cb[128], cr[128];
        uint8_t* const dst[3] = {y, cb, cr};
        const int32_t steps[3] = {64, 64, 64};
        const uint8_t* s = src + misalign;
        ASSERT_EQ(pxkiYCbCr422_8u_C2P3R(s, 128, dst, steps, PxkSize{32, 2}), pxkOk);
        for (int row = 0; row < 2; ++row) {
            for (int p = 0; p < 16; ++p) {
                EXPECT_EQ(cb[64 * row + p], s[128 * row + 4 * p + 1]);
                EXPECT_EQ(cr[64 * row + p], s[128 * row + 4 * p + 3]);
            }
        }
    }
}

// A null dstStep is not tested by YCrCb422ToYCbCr422_8u_C2P3R (a bad size is reported
// as such), but is by YCbCr422_8u_C2P3R.
TEST(PlaneShufflesCases, DstStepTestedByOneC2P3RMemberOnly) {
    uint8_t src[8] = {}, y[4], cb[2], cr[2];
    uint8_t* const dst[3] = {y, cb, cr};
    EXPECT_EQ(pxkiYCrCb422ToYCbCr422_8u_C2P3R(src, 8, dst, nullptr, PxkSize{0, 1}), pxkErrSize);
    EXPECT_EQ(pxkiYCbCr422_8u_C2P3R(src, 8, dst, nullptr, PxkSize{4, 1}), pxkErrNullPtr);
    EXPECT_EQ(pxkiYCbCr422_8u_C2P3R(src, 8, dst, nullptr, PxkSize{0, 1}), pxkErrNullPtr);
}

}  // namespace
