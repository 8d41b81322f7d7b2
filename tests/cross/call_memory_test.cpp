// The memory of one call: step kinds and their pairings over the sweep, regions that
// stay inside their buffers for every step kind, copies that start equal, and a
// comparison that finds a single changed byte.
#include "call_memory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <utility>

#include "export_name_grammar.h"
#include "guard_allowances.h"

namespace {

using pxkcross::CallMemory;
using pxkcross::CallShape;
using pxkcross::stepBytesFor;
using pxkcross::StepKind;
using pxkcross::stepKindFor;
using pxkcross::SweepPoint;

CallShape shapeOf(const std::string& name, const std::string& row = std::string()) {
    const pxkcross::NameReading r = pxkcross::readExportName(name);
    EXPECT_TRUE(r.tokensRead) << r.error;
    if (row.empty()) return r.shape;
    std::string error;
    const std::optional<CallShape> shape = pxkcross::shapeFromRow(row, &r.shape, &error);
    EXPECT_TRUE(shape.has_value()) << error;
    return shape ? *shape : CallShape();
}

SweepPoint point(int w, int h, unsigned index) {
    SweepPoint p;
    p.width = w;
    p.height = h;
    p.index = index;
    return p;
}

int32_t int32At(const pxkcross::AbiArgument& a) { return static_cast<int32_t>(a.word[0]); }

TEST(StepKinds, StepsInBytes) {
    EXPECT_EQ(stepBytesFor(StepKind::Tight, 48, 1, 0), 48);
    EXPECT_EQ(stepBytesFor(StepKind::Padded, 48, 1, 0), 64);
    EXPECT_EQ(stepBytesFor(StepKind::Padded, 50, 1, 0), 66);
    EXPECT_EQ(stepBytesFor(StepKind::Padded, 50, 2, 1), 96);
    EXPECT_EQ(stepBytesFor(StepKind::Padded, 50, 1, 2), 98);
    EXPECT_EQ(stepBytesFor(StepKind::Odd, 48, 1, 0), 49);
    EXPECT_EQ(stepBytesFor(StepKind::Odd, 48, 2, 1), 54);
    EXPECT_EQ(stepBytesFor(StepKind::Zero, 48, 1, 2), 0);
    EXPECT_EQ(stepBytesFor(StepKind::NegativeTight, 48, 1, 0), -48);
    EXPECT_EQ(stepBytesFor(StepKind::Negative, 48, 1, 0), -64);
    EXPECT_EQ(stepBytesFor(StepKind::Negative, 50, 1, 1), -80);
}

TEST(StepKinds, TheFirstTwoSlotsMeetInEveryPairing) {
    std::set<std::pair<StepKind, StepKind>> pairs;
    for (unsigned i = 0; i < 36; ++i) pairs.insert({stepKindFor(i, 0, false), stepKindFor(i, 1, false)});
    EXPECT_EQ(pairs.size(), 36u);
    std::set<StepKind> third;
    for (unsigned i = 0; i < 216; ++i) third.insert(stepKindFor(i, 2, false));
    EXPECT_EQ(third.size(), 6u);
}

TEST(StepKinds, PositiveOnlyNeverGivesZeroOrNegative) {
    std::set<StepKind> kinds;
    for (unsigned i = 0; i < 200; ++i) {
        for (int slot = 0; slot < 6; ++slot) kinds.insert(stepKindFor(i, slot, true));
    }
    EXPECT_EQ(kinds, (std::set<StepKind>{StepKind::Tight, StepKind::Padded, StepKind::Odd}));
}

// For a packed 8u three-channel source and destination, every row of the region lies
// inside its buffer with margins on both sides, whatever the step kind.
TEST(CallMemoryLayout, EveryRowLiesInsideItsBufferWithMargins) {
    const CallShape shape = shapeOf("pxkiRGBToYCbCr_8u_C3R");
    std::set<int64_t> signs;
    unsigned index = 0;
    for (int w : {1, 2, 7, 16, 33, 130}) {
        for (int h : {1, 2, 5, 37}) {
            for (int repeat = 0; repeat < 5; ++repeat, ++index) {
                CallMemory m(shape, point(w, h, index), 1234u + index);
                ASSERT_EQ(m.bufferCount(), 2u);
                const std::vector<pxkcross::AbiArgument> args = m.arguments();
                ASSERT_EQ(args.size(), 5u);
                for (std::size_t b = 0; b < 2; ++b) {
                    const int64_t step = m.bufferStep(b);
                    signs.insert(step > 0 ? 1 : (step < 0 ? -1 : 0));
                    // The step passed is the step of the buffer, and the pointer is its origin.
                    EXPECT_EQ(int32At(args[2 * b + 1]), step);
                    EXPECT_EQ(args[2 * b].word[0], reinterpret_cast<uintptr_t>(m.bufferData(b) + m.bufferOrigin(b)));
                    for (int y = 0; y < h; ++y) {
                        const int64_t start = int64_t(m.bufferOrigin(b)) + y * step;
                        EXPECT_GE(start, 64) << "w " << w << " h " << h << " row " << y;
                        EXPECT_LE(start + 3 * w + 64, int64_t(m.bufferSize(b))) << "w " << w << " h " << h;
                    }
                }
                EXPECT_EQ(args[4].word[0], uint64_t(uint32_t(w)) | (uint64_t(uint32_t(h)) << 32));
            }
        }
    }
    EXPECT_EQ(signs, (std::set<int64_t>{-1, 0, 1}));
}

TEST(CallMemoryLayout, ChromaPlanesGetTheirOwnTightSteps) {
    const CallShape shape = shapeOf("pxkiYCbCr420ToBGR_8u_P3C3R");
    // Index 0 gives the first slot (the luma plane) a tight step; the chroma planes
    // are slots 1 and 2, and are tight at the indices that make their kinds come round.
    CallMemory m(shape, point(9, 4, 0), 5u);
    EXPECT_EQ(m.bufferStep(0), 9);
    for (unsigned i = 0; i < 125; ++i) {
        CallMemory k(shape, point(9, 4, i), 5u);
        if (stepKindFor(i, 1, false) == StepKind::Tight) {
            EXPECT_EQ(k.bufferStep(1), 5);
        }
        if (stepKindFor(i, 2, false) == StepKind::Tight) {
            EXPECT_EQ(k.bufferStep(2), 5);
        }
    }
}

TEST(CallMemoryLayout, StepsInElementsArePassedInElements) {
    const CallShape shape = shapeOf("pxkiYUV422v210ToRGB_709HDTV_32u16u_C3", "src step dst step size steps=elements");
    for (unsigned i = 0; i < 25; ++i) {
        CallMemory m(shape, point(7, 3, i), 9u);
        const std::vector<pxkcross::AbiArgument> args = m.arguments();
        EXPECT_EQ(int64_t(int32At(args[1])) * 4, m.bufferStep(0));
        EXPECT_EQ(int64_t(int32At(args[3])) * 2, m.bufferStep(1));
    }
}

TEST(CallMemoryLayout, FloatSamplesStayInTheRowsRange) {
    const CallShape shape = shapeOf("pxkiToneMapMean_32f8u_C1R", "src step dst step wh floats=0.25:2");
    CallMemory m(shape, point(40, 5, 3), 77u);
    for (std::size_t at = 0; at + 4 <= m.bufferSize(0); at += 4) {
        float f;
        std::memcpy(&f, m.bufferData(0) + at, 4);
        ASSERT_GE(f, 0.25f) << at;
        ASSERT_LE(f, 2.0f) << at;
    }
    const std::vector<pxkcross::AbiArgument> args = m.arguments();
    ASSERT_EQ(args.size(), 6u);
    EXPECT_EQ(args[4].word[0], 40u);
    EXPECT_EQ(args[5].word[0], 5u);
}

TEST(CallMemoryLayout, ValuesAndArraysKeepTheirRanges) {
    const CallShape shape = shapeOf("pxkiColorTwist32f_8u_C3R", "... f32[12]:-2:2 i32:-3:3 alpha:8u");
    for (unsigned i = 0; i < 20; ++i) {
        CallMemory m(shape, point(3, 2, i), 100u + i);
        const std::vector<pxkcross::AbiArgument> args = m.arguments();
        ASSERT_EQ(args.size(), 8u);
        const float* matrix = reinterpret_cast<const float*>(args[5].word[0]);
        for (int k = 0; k < 12; ++k) {
            EXPECT_GE(matrix[k], -2.0f);
            EXPECT_LE(matrix[k], 2.0f);
        }
        const int64_t v = int64_t(args[6].word[0]);
        EXPECT_GE(v, -3);
        EXPECT_LE(v, 3);
        EXPECT_LE(args[7].word[0], 255u);
    }
}

TEST(CallMemoryLayout, WideSizesRectanglesAndStepArraysAreLaidOutAsDeclared) {
    const CallShape lab = shapeOf("pxkiLabToRGB_32f_P3R_L", "src step64[] dst step64[] sizeL");
    for (unsigned i = 0; i < 30; ++i) {
        CallMemory m(lab, point(11, 4, i), 8u);
        const std::vector<pxkcross::AbiArgument> args = m.arguments();
        ASSERT_EQ(args.size(), 5u);
        const int64_t* srcSteps = reinterpret_cast<const int64_t*>(args[1].word[0]);
        const int64_t* dstSteps = reinterpret_cast<const int64_t*>(args[3].word[0]);
        for (std::size_t p = 0; p < 3; ++p) {
            EXPECT_EQ(srcSteps[p], m.bufferStep(p));
            EXPECT_EQ(dstSteps[p], m.bufferStep(3 + p));
        }
        ASSERT_EQ(args[4].words, 2);
        EXPECT_EQ(args[4].word[0], 11u);
        EXPECT_EQ(args[4].word[1], 4u);
    }
    const CallShape cfa = shapeOf("pxkiCFAToRGB_8u_C1C3R", "src roi size step dst step i32:0:3 i32:0:0");
    CallMemory m(cfa, point(6, 9, 2), 8u);
    const std::vector<pxkcross::AbiArgument> args = m.arguments();
    ASSERT_EQ(args.size(), 8u);
    ASSERT_EQ(args[1].words, 2);
    EXPECT_EQ(args[1].word[0], 0u);
    EXPECT_EQ(args[1].word[1], uint64_t(6) | (uint64_t(9) << 32));
    EXPECT_EQ(args[2].word[0], uint64_t(6) | (uint64_t(9) << 32));
    EXPECT_EQ(int32At(args[3]), m.bufferStep(0));
    EXPECT_EQ(args[7].word[0], 0u);
}

TEST(CallMemoryLayout, WorkBuffersAndResultsHaveTheirOwnBuffers) {
    std::string error;
    const std::optional<CallShape> size =
        pxkcross::shapeFromRow("i32:0:9 size u32:0:120 i32:-1:5 out:i32", nullptr, &error);
    ASSERT_TRUE(size.has_value()) << error;
    CallMemory q(*size, point(20, 1, 0), 4u);
    ASSERT_EQ(q.bufferCount(), 1u);
    const std::vector<pxkcross::AbiArgument> qa = q.arguments();
    ASSERT_EQ(qa.size(), 5u);
    EXPECT_EQ(qa[4].word[0], reinterpret_cast<uintptr_t>(q.bufferData(0) + q.bufferOrigin(0)));
    EXPECT_GE(q.bufferSize(0), q.bufferOrigin(0) + 4 + 16);

    const CallShape ahd =
        shapeOf("pxkiDemosaicAHD_8u_C1C3R", "src roi size step dst step i32:0:3 scratch:12:64:3 bufstep");
    CallMemory m(ahd, point(10, 6, 5), 4u);
    ASSERT_EQ(m.bufferCount(), 3u);
    const std::vector<pxkcross::AbiArgument> args = m.arguments();
    ASSERT_EQ(args.size(), 9u);
    EXPECT_EQ(int32At(args[8]), 12 * 10 + 64);
    EXPECT_EQ(args[7].word[0], reinterpret_cast<uintptr_t>(m.bufferData(2) + m.bufferOrigin(2)));
    EXPECT_GE(m.bufferSize(2), m.bufferOrigin(2) + 3 * (12 * 10 + 64));
}

TEST(CallMemoryCompare, CopiesStartEqualAndOneChangedByteIsFound) {
    const CallShape shape = shapeOf("pxkiYCbCr420ToRGB_8u_P2C4R");
    CallMemory a(shape, point(13, 5, 7), 42u);
    CallMemory b(a);
    EXPECT_EQ(CallMemory::firstDifference(a, b), "");
    ASSERT_EQ(a.bufferCount(), 3u);
    EXPECT_EQ(a.bufferLabel(2), "destination");
    // Pointers of the copies point into their own buffers.
    EXPECT_NE(a.arguments()[4].word[0], b.arguments()[4].word[0]);
    b.bufferData(2)[b.bufferOrigin(2) + 6] ^= 0x01;
    const std::string difference = CallMemory::firstDifference(a, b);
    EXPECT_NE(difference.find("destination"), std::string::npos) << difference;
    EXPECT_NE(difference.find("+6 from the pointer"), std::string::npos) << difference;
    EXPECT_NE(difference.find("1 of its"), std::string::npos) << difference;
}

TEST(CallMemoryCompare, ADifferenceIsPlacedInItsRowForNegativeSteps) {
    const CallShape shape = shapeOf("pxkiRGBToYCbCr_8u_C3R");
    // The destination's step slot takes the padded negative kind at points 18 to 23.
    ASSERT_EQ(stepKindFor(18, 1, false), StepKind::Negative);
    CallMemory a(shape, point(4, 3, 18), 3u);
    CallMemory b(a);
    const int64_t step = b.bufferStep(1);
    ASSERT_LT(step, 0);
    b.bufferData(1)[int64_t(b.bufferOrigin(1)) + step + 4] ^= 0x02;
    const std::string difference = CallMemory::firstDifference(a, b);
    EXPECT_NE(difference.find("destination"), std::string::npos) << difference;
    EXPECT_NE(difference.find("row 1 byte 4"), std::string::npos) << difference;
}

// Rows before the pointer and after the last row that an allowance names lie inside
// the plane's buffer in every placement and for every step sign; in the guarded
// placements nothing else does.
TEST(CallMemoryLayout, AllowedRowsBeforeAndAfterLieInTheirBuffers) {
    const CallShape shape = shapeOf("pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", "... i32:1|4");
    // Source luma: 3 rows before and 1 after; destination: 2 rows before.
    const std::vector<pxkcross::PlaneAllowance> allowances = {{0, 0, 1, 3}, {1, 0, 0, 2}};
    std::set<int64_t> signs;
    for (pxkcross::Placement placement :
         {pxkcross::Placement::Margins, pxkcross::Placement::GuardAfter, pxkcross::Placement::GuardBefore}) {
        for (unsigned index = 0; index < 40; ++index) {
            const int w = 6, h = 4;
            CallMemory m(shape, point(w, h, index), 7u + index, placement, allowances);
            ASSERT_EQ(m.bufferCount(), 3u);  // luma, chroma pairs, packed destination
            struct Expect {
                std::size_t buffer;
                int first, last;  // rows that must lie inside
                int64_t rowBytes;
            };
            for (const Expect& e : {Expect{0, -3, h, w}, Expect{1, 0, h / 2 - 1, w}, Expect{2, -2, h - 1, 2 * w}}) {
                const int64_t step = m.bufferStep(e.buffer);
                signs.insert(step > 0 ? 1 : (step < 0 ? -1 : 0));
                for (int y = e.first; y <= e.last; ++y) {
                    const int64_t start = int64_t(m.bufferOrigin(e.buffer)) + y * step;
                    EXPECT_GE(start, 0) << "buffer " << e.buffer << " row " << y << " step " << step;
                    EXPECT_LE(start + e.rowBytes, int64_t(m.bufferSize(e.buffer)))
                        << "buffer " << e.buffer << " row " << y << " step " << step;
                }
                if (placement == pxkcross::Placement::Margins || step == 0) continue;
                // Guarded: the allowed rows are the first and last rows of the buffer.
                const int64_t lowRow = step > 0 ? e.first : e.last, highRow = step > 0 ? e.last : e.first;
                EXPECT_EQ(int64_t(m.bufferOrigin(e.buffer)) + lowRow * step, 0) << "buffer " << e.buffer;
                EXPECT_EQ(int64_t(m.bufferOrigin(e.buffer)) + highRow * step + e.rowBytes,
                          int64_t(m.bufferSize(e.buffer)))
                    << "buffer " << e.buffer;
            }
        }
    }
    EXPECT_EQ(signs, (std::set<int64_t>{-1, 0, 1}));
}

// The allowances of one export: those of every height, with those of the height asked.
TEST(GuardAllowances, EveryHeightAndOneHeightAddUp) {
    auto count = [](const std::string& name, int h, bool before) {
        int rows = 0;
        for (const pxkcross::PlaneAllowance& a : pxkcross::guardAllowancesFor(name, h)) {
            rows += before ? a.rowsBefore : a.rowsAfter;
        }
        return rows;
    };
    for (int h : {2, 3, 4, 37}) {
        EXPECT_EQ(count("pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", h, true), 6) << h;
        EXPECT_EQ(count("pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R", h, true), 8) << h;
        EXPECT_EQ(count("pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R", h, false), 0) << h;
    }
    EXPECT_EQ(count("pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", 2, false), 2);
    EXPECT_EQ(count("pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", 3, false), 1);
    EXPECT_EQ(count("pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", 4, false), 0);
    EXPECT_EQ(count("pxkiYCbCr420To411_8u_P3R", 2, false), 6);
    EXPECT_EQ(count("pxkiYCbCr420To411_8u_P3R", 2, true), 0);
    EXPECT_TRUE(pxkcross::guardAllowancesFor("pxkiYCbCr420To411_8u_P3R", 4).empty());
    EXPECT_TRUE(pxkcross::guardAllowancesFor("pxkiRGBToYCbCr_8u_C3R", 2).empty());
}

// A value drawn from a list takes each listed value, and no other.
TEST(CallMemoryLayout, ValuesFromAListTakeEachListedValue) {
    const CallShape shape = shapeOf("pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", "... i32:1|4|16|21|5");
    std::set<int64_t> seen;
    for (unsigned i = 0; i < 200; ++i) {
        CallMemory m(shape, point(4, 4, i), 300u + i);
        const std::vector<pxkcross::AbiArgument> args = m.arguments();
        ASSERT_EQ(args.size(), 8u);
        seen.insert(int64_t(int32At(args[7])));
    }
    EXPECT_EQ(seen, (std::set<int64_t>{1, 4, 5, 16, 21}));
}

TEST(CallMemoryCompare, AChangeInAMarginIsFoundToo) {
    const CallShape shape = shapeOf("pxkiRGBToYCbCr_8u_C3R");
    CallMemory a(shape, point(4, 2, 0), 1u);
    CallMemory b(a);
    b.bufferData(0)[0] ^= 0x80;
    const std::string difference = CallMemory::firstDifference(a, b);
    EXPECT_NE(difference.find("source"), std::string::npos) << difference;
}

}  // namespace
