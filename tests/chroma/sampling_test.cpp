// Conversions between 4:2:2, 4:2:0 and 4:1:1 without filtering: the thirty members
// against the reference model, their statuses, and the documented cases.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "chroma_harness.h"

namespace {

using namespace chromatest;

const std::vector<Member>& members() {
    static const std::vector<Member> list = {
        {"YCbCr422ToYCbCr420_8u_C2P2R", packedYCbCr(), pairs(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr422ToYCbCr420_8u_C2P2R(a.srcPtr[0], a.srcStep[0], a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                                    a.dstStep[1], a.size);
         }},
        {"YCbCr422ToYCbCr420_8u_C2P3R", packedYCbCr(), planes(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr422ToYCbCr420_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size);
         }},
        {"YCbCr422ToYCbCr420_8u_P3P2R", planes(Sampling::S422), pairs(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr422ToYCbCr420_8u_P3P2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                                    a.dstStep[1], a.size);
         }},
        {"YCbCr422ToYCbCr420_8u_P3R", planes(Sampling::S422), planes(Sampling::S420), 2, true, 2, 2,
         [](Args& a) { return pxkiYCbCr422ToYCbCr420_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size); }},
        {"YCbCr422ToYCrCb420_8u_C2P2R", packedYCbCr(), pairsCrCb(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr422ToYCrCb420_8u_C2P2R(a.srcPtr[0], a.srcStep[0], a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                                    a.dstStep[1], a.size);
         }},
        {"YCbCr422ToYCrCb420_8u_C2P3R", packedYCbCr(), planesCrCb(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr422ToYCrCb420_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size);
         }},
        {"YCrCb422ToYCbCr420_8u_C2P3R", packedYCrCb(), planes(Sampling::S420), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCrCb422ToYCbCr420_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size);
         }},
        {"YCbCr420ToYCbCr422_8u_P2C2R", pairs(Sampling::S420), packedYCbCr(), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr420ToYCbCr422_8u_P2C2R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1], a.dstPtr[0],
                                                    a.dstStep[0], a.size);
         }},
        {"YCbCr420ToYCbCr422_8u_P2P3R", pairs(Sampling::S420), planes(Sampling::S422), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCbCr420ToYCbCr422_8u_P2P3R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1], a.dstArray,
                                                    a.dstSteps, a.size);
         }},
        {"YCbCr420ToYCbCr422_8u_P3R", planes(Sampling::S420), planes(Sampling::S422), 2, true, 2, 2,
         [](Args& a) { return pxkiYCbCr420ToYCbCr422_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size); }},
        {"YCrCb420ToYCbCr422_8u_P3C2R", planesCrCb(Sampling::S420), packedYCbCr(), 2, true, 2, 2,
         [](Args& a) {
             return pxkiYCrCb420ToYCbCr422_8u_P3C2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.size);
         }},
        {"YCrCb420ToYCbCr422_8u_P3R", planesCrCb(Sampling::S420), planes(Sampling::S422), 2, true, 2, 2,
         [](Args& a) { return pxkiYCrCb420ToYCbCr422_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size); }},
        {"YCbCr422ToYCbCr411_8u_C2P2R", packedYCbCr(), pairs(Sampling::S411), 4, false, 4, kNoHeightTest,
         [](Args& a) {
             return pxkiYCbCr422ToYCbCr411_8u_C2P2R(a.srcPtr[0], a.srcStep[0], a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                                    a.dstStep[1], a.size);
         }},
        {"YCbCr422ToYCbCr411_8u_C2P3R", packedYCbCr(), planes(Sampling::S411), 4, false, 4, 1,
         [](Args& a) {
             return pxkiYCbCr422ToYCbCr411_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size);
         }},
        {"YCbCr422ToYCbCr411_8u_P3P2R", planes(Sampling::S422), pairs(Sampling::S411), 4, false, 4, kNoHeightTest,
         [](Args& a) {
             return pxkiYCbCr422ToYCbCr411_8u_P3P2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                                    a.dstStep[1], a.size);
         }},
        {"YCbCr422ToYCbCr411_8u_P3R", planes(Sampling::S422), planes(Sampling::S411), 4, false, 4, kNoHeightTest,
         [](Args& a) { return pxkiYCbCr422ToYCbCr411_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size); }},
        {"YCrCb422ToYCbCr411_8u_C2P3R", packedYCrCb(), planes(Sampling::S411), 4, false, 4, kNoHeightTest,
         [](Args& a) {
             return pxkiYCrCb422ToYCbCr411_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray, a.dstSteps, a.size);
         }},
        {"YCbCr411ToYCbCr422_8u_P2C2R", pairs(Sampling::S411), packedYCbCr(), 4, false, 4, kNoHeightTest,
         [](Args& a) {
             return pxkiYCbCr411ToYCbCr422_8u_P2C2R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1], a.dstPtr[0],
                                                    a.dstStep[0], a.size);
         }},
        {"YCbCr411ToYCbCr422_8u_P2P3R",
         pairs(Sampling::S411),
         planes(Sampling::S422),
         4,
         false,
         4,
         kNoHeightTest,
         [](Args& a) {
             return pxkiYCbCr411ToYCbCr422_8u_P2P3R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1], a.dstArray,
                                                    a.dstSteps, a.size);
         },
         {Slot::DstArray}},
        {"YCbCr411ToYCbCr422_8u_P3C2R", planes(Sampling::S411), packedYCbCr(), 4, false, 4, kNoHeightTest,
         [](Args& a) {
             return pxkiYCbCr411ToYCbCr422_8u_P3C2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.size);
         }},
        {"YCbCr411ToYCbCr422_8u_P3R", planes(Sampling::S411), planes(Sampling::S422), 4, false, 4, kNoHeightTest,
         [](Args& a) { return pxkiYCbCr411ToYCbCr422_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size); }},
        {"YCbCr411ToYCrCb422_8u_P3C2R", planes(Sampling::S411), packedYCrCb(), 4, false, 4, kNoHeightTest,
         [](Args& a) {
             return pxkiYCbCr411ToYCrCb422_8u_P3C2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.size);
         }},
        {"YCbCr411ToYCrCb422_8u_P3R", planes(Sampling::S411), planesCrCb(Sampling::S422), 4, false, 4, kNoHeightTest,
         [](Args& a) { return pxkiYCbCr411ToYCrCb422_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size); }},
        {"YCbCr420ToYCbCr411_8u_P2P3R", pairs(Sampling::S420), planes(Sampling::S411), 4, true, 4, 2,
         [](Args& a) {
             return pxkiYCbCr420ToYCbCr411_8u_P2P3R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1], a.dstArray,
                                                    a.dstSteps, a.size);
         }},
        {"YCbCr420ToYCbCr411_8u_P3P2R", planes(Sampling::S420), pairs(Sampling::S411), 4, true, 4, 2,
         [](Args& a) {
             return pxkiYCbCr420ToYCbCr411_8u_P3P2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                                    a.dstStep[1], a.size);
         }},
        {"YCrCb420ToYCbCr411_8u_P3P2R", planesCrCb(Sampling::S420), pairs(Sampling::S411), 4, true, 4, 2,
         [](Args& a) {
             return pxkiYCrCb420ToYCbCr411_8u_P3P2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                                    a.dstStep[1], a.size);
         }},
        {"YCbCr411ToYCbCr420_8u_P2P3R",
         pairs(Sampling::S411),
         planes(Sampling::S420),
         4,
         true,
         4,
         2,
         [](Args& a) {
             return pxkiYCbCr411ToYCbCr420_8u_P2P3R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1], a.dstArray,
                                                    a.dstSteps, a.size);
         },
         {Slot::DstArray}},
        {"YCbCr411ToYCbCr420_8u_P3P2R", planes(Sampling::S411), pairs(Sampling::S420), 4, true, 4, 2,
         [](Args& a) {
             return pxkiYCbCr411ToYCbCr420_8u_P3P2R(a.srcArray, a.srcSteps, a.dstPtr[0], a.dstStep[0], a.dstPtr[1],
                                                    a.dstStep[1], a.size);
         }},
        {"YCbCr411ToYCbCr420_8u_P3R", planes(Sampling::S411), planes(Sampling::S420), 4, true, 4, 2,
         [](Args& a) { return pxkiYCbCr411ToYCbCr420_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size); }},
        {"YCbCr411ToYCrCb420_8u_P2P3R",
         pairs(Sampling::S411),
         planesCrCb(Sampling::S420),
         4,
         true,
         4,
         2,
         [](Args& a) {
             return pxkiYCbCr411ToYCrCb420_8u_P2P3R(a.srcPtr[0], a.srcStep[0], a.srcPtr[1], a.srcStep[1], a.dstArray,
                                                    a.dstSteps, a.size);
         },
         {Slot::DstArray}},
    };
    return list;
}

CHROMATEST_MEMBER_SUITES(Samplings, members);

// ---------------------------------------------------------------------------------
// Documented cases
// ---------------------------------------------------------------------------------

// Runs a member on a source, returning the destination side.
Surface convert(const Member& m, Surface& src, int w, int h, PxkResult want = pxkOk) {
    Surface dst = makeSide(m.dst, w, h, StepKind::Padded);
    pxktest::Rng rng(3);
    dst.fillRandom(rng);
    Args a(src, dst, PxkSize{w, h});
    EXPECT_EQ(m.call(a), want) << m.name;
    return dst;
}

// 422 -> 420: odd source chroma rows have no effect at all.
TEST(SamplingCases, OddChromaRowsOf422HaveNoEffect) {
    for (const char* name :
         {"YCbCr422ToYCbCr420_8u_C2P2R", "YCbCr422ToYCbCr420_8u_P3R", "YCrCb422ToYCbCr420_8u_C2P3R"}) {
        const Member& m = memberNamed(members(), name);
        pxktest::Rng rng(11);
        Surface a = makeSide(m.src, 20, 6, StepKind::Tight);
        a.fillRandom(rng);
        Surface b = a.clone();
        for (int r = 1; r < 6; r += 2) {
            for (int c = 0; c < 10; ++c) {
                *chromaAt(b, m.src, 0, c, r) ^= 0x5A;
                *chromaAt(b, m.src, 1, c, r) ^= 0xA5;
            }
        }
        Surface da = convert(m, a, 20, 6);
        Surface db = convert(m, b, 20, 6);
        for (int r = 0; r < 3; ++r) {
            for (int c = 0; c < 10; ++c) {
                for (int k = 0; k < 2; ++k) EXPECT_EQ(*chromaAt(da, m.dst, k, c, r), *chromaAt(db, m.dst, k, c, r));
            }
        }
    }
}

// 420 -> 422: output chroma rows 2r and 2r + 1 are equal.
TEST(SamplingCases, ChromaRowsOf422FromTheSame420RowAreEqual) {
    for (const char* name :
         {"YCbCr420ToYCbCr422_8u_P2C2R", "YCbCr420ToYCbCr422_8u_P3R", "YCrCb420ToYCbCr422_8u_P3C2R"}) {
        const Member& m = memberNamed(members(), name);
        pxktest::Rng rng(12);
        Surface src = makeSide(m.src, 18, 8, StepKind::Tight);
        src.fillRandom(rng);
        Surface dst = convert(m, src, 18, 8);
        for (int r = 0; r < 8; r += 2) {
            for (int c = 0; c < 9; ++c) {
                for (int k = 0; k < 2; ++k)
                    EXPECT_EQ(*chromaAt(dst, m.dst, k, c, r), *chromaAt(dst, m.dst, k, c, r + 1));
            }
        }
    }
}

// 420 -> 411 -> 420 returns the source exactly, Y included.
TEST(SamplingCases, RoundTripThrough411IsExact) {
    const Member& there = memberNamed(members(), "YCbCr420ToYCbCr411_8u_P3P2R");
    const Member& back = memberNamed(members(), "YCbCr411ToYCbCr420_8u_P2P3R");
    for (int w : {4, 8, 36, 64, 132}) {
        for (int h : {2, 4, 10}) {
            pxktest::Rng rng(pxktest::seedFor("roundtrip", {uint32_t(w), uint32_t(h)}));
            Surface src = makeSide(there.src, w, h, StepKind::Tight);
            src.fillRandom(rng);
            Surface mid = convert(there, src, w, h);
            Surface out = convert(back, mid, w, h);
            EXPECT_TRUE(pxktest::sameContents(out, src)) << w << "x" << h;
        }
    }
}

// The weave with literal values: one 420 chroma row of Cb 10 11 12 13 (width 8,
// height 2) gives 411 row 0 = 10 12 and row 1 = 11 13; back, the rows weave again.
TEST(SamplingCases, WeaveOf420And411InLiteralValues) {
    const uint8_t y[16] = {};
    const uint8_t cb[4] = {10, 11, 12, 13}, cr[4] = {20, 21, 22, 23};
    const uint8_t* const src[3] = {y, cb, cr};
    const int32_t steps[3] = {8, 4, 4};
    uint8_t dy[16], pairs[8];
    ASSERT_EQ(pxkiYCbCr420ToYCbCr411_8u_P3P2R(src, steps, dy, 8, pairs, 4, PxkSize{8, 2}), pxkOk);
    const uint8_t want[8] = {10, 20, 12, 22, 11, 21, 13, 23};
    EXPECT_EQ(std::vector<uint8_t>(pairs, pairs + 8), std::vector<uint8_t>(want, want + 8));
    uint8_t oy[16], ocb[4] = {}, ocr[4] = {};
    uint8_t* const out[3] = {oy, ocb, ocr};
    ASSERT_EQ(pxkiYCbCr411ToYCbCr420_8u_P2P3R(dy, 8, pairs, 4, out, steps, PxkSize{8, 2}), pxkOk);
    EXPECT_EQ(std::vector<uint8_t>(ocb, ocb + 4), std::vector<uint8_t>(cb, cb + 4));
    EXPECT_EQ(std::vector<uint8_t>(ocr, ocr + 4), std::vector<uint8_t>(cr, cr + 4));
}

// Width 6 with a 411 member uses 4 columns, pxkOk; height 1 with a 420 member is
// pxkErrSize and height 5 uses 4 rows.
TEST(SamplingCases, Width6Of411AndHeights1And5Of420) {
    const uint8_t y[6] = {1, 2, 3, 4, 5, 6}, cb[3] = {7, 8, 9}, cr[3] = {10, 11, 12};
    const uint8_t* const src[3] = {y, cb, cr};
    const int32_t steps[3] = {6, 3, 3};
    uint8_t dy[6], dcb[2], dcr[2];
    std::fill(dy, dy + 6, 0xEE);
    std::fill(dcb, dcb + 2, 0xEE);
    std::fill(dcr, dcr + 2, 0xEE);
    uint8_t* const dst[3] = {dy, dcb, dcr};
    const int32_t dsteps[3] = {6, 2, 2};
    EXPECT_EQ(pxkiYCbCr422ToYCbCr411_8u_P3R(src, steps, dst, dsteps, PxkSize{6, 1}), pxkOk);
    const uint8_t wantY[6] = {1, 2, 3, 4, 0xEE, 0xEE};
    EXPECT_EQ(std::vector<uint8_t>(dy, dy + 6), std::vector<uint8_t>(wantY, wantY + 6));
    EXPECT_EQ(dcb[0], 7);
    EXPECT_EQ(dcr[0], 10);
    EXPECT_EQ(dcb[1], 0xEE);

    const Member& m = memberNamed(members(), "YCbCr420ToYCbCr422_8u_P3R");
    pxktest::Rng rng(13);
    Surface s = makeSide(m.src, 4, 5, StepKind::Tight);
    s.fillRandom(rng);
    s.snapshot();
    Surface d1 = makeSide(m.dst, 4, 5, StepKind::Tight);
    d1.snapshot();
    {
        Args a(s, d1, PxkSize{4, 1});
        EXPECT_EQ(m.call(a), pxkErrSize);
        EXPECT_TRUE(d1.unchanged());
    }
    Surface d = makeSide(m.dst, 4, 5, StepKind::Tight);
    for (int i = 0; i < d.imageCount(); ++i) d.image(i).fill(0xEE, 0);
    Args a(s, d, PxkSize{4, 5});
    EXPECT_EQ(m.call(a), pxkOk);
    for (int x = 0; x < 4; ++x) {
        for (int yy = 0; yy < 4; ++yy) EXPECT_EQ(*lumaAt(d, m.dst, x, yy), *lumaAt(s, m.src, x, yy));
        EXPECT_EQ(*lumaAt(d, m.dst, x, 4), 0xEE) << "row 4 is cut";
    }
    for (int c = 0; c < 2; ++c) EXPECT_EQ(*chromaAt(d, m.dst, 0, c, 4), 0xEE);
}

}  // namespace
