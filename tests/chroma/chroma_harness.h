// The checks that every chroma-layout member goes through, driven by a table of
// members: the reference sweep over widths, heights and step layouts (guards
// included), and the statuses (each pointer, each size, pointers before sizes, a
// failing call writes nothing).
#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "chroma_reference.h"
#include "pxkcc.h"
#include "random.h"
#include "surface.h"
#include "sweep.h"

namespace chromatest {

// The arguments of one call, taken from a source and a destination side. Packed
// sides use ptr[0] and step[0]; P2 sides ptr[0..1] and step[0..1]; P3 sides pass
// the arrays, through srcArray / srcSteps (dstArray / dstSteps), which a test may
// replace by null.
struct Args {
    const uint8_t* srcPtr[3] = {};
    int32_t srcStep[3] = {};
    uint8_t* dstPtr[3] = {};
    int32_t dstStep[3] = {};
    const uint8_t* const* srcArray = srcPtr;
    const int32_t* srcSteps = srcStep;
    uint8_t* const* dstArray = dstPtr;
    const int32_t* dstSteps = dstStep;
    PxkSize size{0, 0};

    Args(Surface& src, Surface& dst, PxkSize region) : size(region) {
        for (int i = 0; i < src.imageCount(); ++i) {
            srcPtr[i] = src.image(i).data();
            srcStep[i] = src.image(i).step();
        }
        for (int i = 0; i < dst.imageCount(); ++i) {
            dstPtr[i] = dst.image(i).data();
            dstStep[i] = dst.image(i).step();
        }
    }
    Args(const Args&) = delete;
    Args& operator=(const Args&) = delete;
};

using Call = std::function<PxkResult(Args&)>;

// A pointer argument that a status test can set to null.
enum class Slot { SrcPtr0, SrcPtr1, SrcArray, SrcEntry0, SrcEntry1, SrcEntry2, SrcSteps,
                  DstPtr0, DstPtr1, DstArray, DstEntry0, DstEntry1, DstEntry2, DstSteps };

inline constexpr int32_t kNoHeightTest = INT32_MIN;

struct Member {
    std::string name;
    Side src;
    Side dst;
    int widthMultiple;   // the width is cut to a multiple of this (2 or 4)
    bool evenHeight;     // the height is cut to even
    int32_t minWidth;
    int32_t minHeight;   // kNoHeightTest: no test, heights of 0 or below write nothing
    Call call;
    std::vector<Slot> untested = {};  // pointers the member reads without a test
    // The destination side the member writes for these arguments, where it depends on
    // them (the aligned kernel of one member); the table's side otherwise.
    std::function<Side(const Args&)> dstFor = nullptr;
    // A reference of the member's own (given the region before any cut), in place of
    // the sampling model; and the heights its sweep takes, where they differ.
    std::function<void(Surface& src, Surface& dst, int w, int h)> reference = nullptr;
    std::vector<int> heights = {};
    // The status of a call that passes the checks, where it is not always pxkOk.
    std::function<PxkResult(int w, int h)> status = nullptr;
    // Sizes the member accepts, where that is more than least sizes.
    std::function<bool(int w, int h)> validSize = nullptr;
};

// gtest prints a parameter by this, not as raw bytes.
inline void PrintTo(const Member& m, std::ostream* os) { *os << m.name; }

inline const Member& memberNamed(const std::vector<Member>& list, const std::string& name) {
    for (const Member& m : list) {
        if (m.name == name) return m;
    }
    throw std::runtime_error("no member " + name);
}

inline PxkResult expectedStatus(const Member& m, int w, int h) {
    if (w < m.minWidth) return pxkErrSize;
    if (m.minHeight != kNoHeightTest && h < m.minHeight) return pxkErrSize;
    if (m.validSize && !m.validSize(w, h)) return pxkErrSize;
    return m.status ? m.status(w, h) : pxkOk;
}

// The region of a call after the member's cuts (nothing where it converts nothing).
inline void cutRegion(const Member& m, int w, int h, int* cw, int* ch) {
    *cw = w - w % m.widthMultiple;
    *ch = h < 0 ? 0 : (m.evenHeight ? h - h % 2 : h);
}

// One call against the reference on fresh random images; returns the outcome.
inline ::testing::AssertionResult runOnce(const Member& m, int w, int h, StepKind srcKind, StepKind dstKind,
                                          uint32_t seed, const GuardOptions& srcOpt = {},
                                          const GuardOptions& dstOpt = {}) {
    pxktest::Rng rng(seed);
    Surface src = makeSide(m.src, w, h, srcKind, srcOpt);
    Surface dst = makeSide(m.dst, w, h, dstKind, dstOpt);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    src.snapshot();
    dst.snapshot();
    Surface expected = dst.clone();
    Args args(src, dst, PxkSize{w, h});
    const PxkResult want = expectedStatus(m, w, h);
    if (want >= 0 && m.reference) {
        m.reference(src, expected, w, h);
    } else if (want >= 0) {
        int cw = 0, ch = 0;
        cutRegion(m, w, h, &cw, &ch);
        const Side d = m.dstFor ? m.dstFor(args) : m.dst;
        convertReference(src, m.src, expected, d, cw, ch);
    }
    const PxkResult got = m.call(args);
    return pxktest::sameOutcome(got, want, dst, expected, src);
}

inline std::vector<int> heightsFor(int width) {
    if (width <= 40) return {1, 2, 3, 4, 5, 8};
    if (width <= 301) return {2, 3, 7};
    return {2, 5};
}

// Every width of the sweep, several heights, every plan of steps.
inline void sweepAgainstReference(const Member& m) {
    for (int w : pxktest::sweepWidths()) {
        for (int h : m.heights.empty() ? heightsFor(w) : m.heights) {
            for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
                const uint32_t seed = pxktest::seedFor(m.name.c_str(), {uint32_t(w), uint32_t(h), uint32_t(plan.src),
                                                                        uint32_t(plan.dst)});
                const ::testing::AssertionResult r = runOnce(m, w, h, plan.src, plan.dst, seed);
                if (!r) {
                    ADD_FAILURE() << m.name << " width " << w << " height " << h << " steps "
                                  << pxktest::stepPlanName(plan) << ": " << r.message();
                    return;
                }
            }
        }
    }
}

// Every source and destination alignment at a few widths: the bytes depend on the
// column alone (except where dstFor says otherwise, which the reference follows).
inline void sweepAlignments(const Member& m) {
    for (int w : {16, 33, 64, 130}) {
        for (std::size_t srcMis = 0; srcMis < 16; ++srcMis) {
            for (std::size_t dstMis = 0; dstMis < 16; dstMis += 5) {
                GuardOptions so, dop;
                so.misalign = srcMis;
                dop.misalign = dstMis;
                const ::testing::AssertionResult r =
                    runOnce(m, w, m.heights.empty() ? 4 : m.heights.back(), StepKind::Padded, StepKind::Padded,
                            pxktest::seedFor(m.name.c_str(), {uint32_t(w), uint32_t(srcMis), uint32_t(dstMis)}), so,
                            dop);
                if (!r) {
                    ADD_FAILURE() << m.name << " width " << w << " misaligned by " << srcMis << " / " << dstMis << ": "
                                  << r.message();
                    return;
                }
            }
        }
    }
}

// Regions large enough for the non-temporal stores of each member that has them,
// on 16-byte aligned rows (and once with tight, unaligned steps): the bytes are those
// of the reference.
inline void largeRegions(const Member& m) {
    EXPECT_TRUE(runOnce(m, 1280, 400, StepKind::Padded, StepKind::Padded, 5u)) << m.name;
    EXPECT_TRUE(runOnce(m, 1028, 342, StepKind::Tight, StepKind::Tight, 6u)) << m.name;
}

// Widths around the chunks of columns that the kernels work in (512 chroma columns:
// 1024 luma columns in 4:2:2 and 4:2:0, 2048 in 4:1:1), with every plan of steps
// (a destination step of 0 keeps the last row written, so the order of the rows
// counts too), and once on large padded rows.
inline void chunkBoundaries(const Member& m) {
    const int h = m.heights.empty() ? 4 : m.heights.back();
    for (int w : {1020, 1022, 1024, 1026, 1030, 1040, 2044, 2046, 2048, 2052, 2060, 2080, 3076}) {
        for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
            const ::testing::AssertionResult r =
                runOnce(m, w, h, plan.src, plan.dst, pxktest::seedFor(m.name.c_str(), {uint32_t(w), 77u}));
            if (!r) {
                ADD_FAILURE() << m.name << " width " << w << " steps " << pxktest::stepPlanName(plan) << ": "
                              << r.message();
                return;
            }
        }
    }
}

// The pointer slots a member takes, by the kinds of its sides.
inline std::vector<Slot> slotsOf(const Member& m) {
    std::vector<Slot> s;
    switch (m.src.kind) {
        case Kind::C2:
            s = {Slot::SrcPtr0};
            break;
        case Kind::P2:
            s = {Slot::SrcPtr0, Slot::SrcPtr1};
            break;
        case Kind::P3:
            s = {Slot::SrcArray, Slot::SrcEntry0, Slot::SrcEntry1, Slot::SrcEntry2, Slot::SrcSteps};
            break;
    }
    switch (m.dst.kind) {
        case Kind::C2:
            s.push_back(Slot::DstPtr0);
            break;
        case Kind::P2:
            s.insert(s.end(), {Slot::DstPtr0, Slot::DstPtr1});
            break;
        case Kind::P3:
            s.insert(s.end(), {Slot::DstArray, Slot::DstEntry0, Slot::DstEntry1, Slot::DstEntry2, Slot::DstSteps});
            break;
    }
    return s;
}

inline const char* slotName(Slot s) {
    static const char* const names[] = {"src pointer",  "second src pointer", "src array",      "src[0]",
                                        "src[1]",       "src[2]",             "src step array", "dst pointer",
                                        "second dst pointer", "dst array",   "dst[0]",         "dst[1]",
                                        "dst[2]",       "dst step array"};
    return names[static_cast<int>(s)];
}

// Sets one slot of `a` to null; the arrays it points into stay in `holder`.
struct NullHolder {
    const uint8_t* src[3];
    uint8_t* dst[3];
};

inline void nullSlot(Args& a, Slot s, NullHolder& h) {
    for (int i = 0; i < 3; ++i) {
        h.src[i] = a.srcPtr[i];
        h.dst[i] = a.dstPtr[i];
    }
    switch (s) {
        case Slot::SrcPtr0: a.srcPtr[0] = nullptr; break;
        case Slot::SrcPtr1: a.srcPtr[1] = nullptr; break;
        case Slot::SrcArray: a.srcArray = nullptr; break;
        case Slot::SrcEntry0: case Slot::SrcEntry1: case Slot::SrcEntry2:
            h.src[int(s) - int(Slot::SrcEntry0)] = nullptr;
            a.srcArray = h.src;
            break;
        case Slot::SrcSteps: a.srcSteps = nullptr; break;
        case Slot::DstPtr0: a.dstPtr[0] = nullptr; break;
        case Slot::DstPtr1: a.dstPtr[1] = nullptr; break;
        case Slot::DstArray: a.dstArray = nullptr; break;
        case Slot::DstEntry0: case Slot::DstEntry1: case Slot::DstEntry2:
            h.dst[int(s) - int(Slot::DstEntry0)] = nullptr;
            a.dstArray = h.dst;
            break;
        case Slot::DstSteps: a.dstSteps = nullptr; break;
    }
}

// Runs a call that must fail (or convert nothing) and checks its status and that
// neither side changed.
inline ::testing::AssertionResult writesNothing(const Member& m, int w, int h, PxkResult want,
                                                const std::function<void(Args&, NullHolder&)>& change) {
    pxktest::Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(w), uint32_t(h), 77u}));
    const int aw = w < 8 ? 8 : w, ah = h < 8 ? 8 : h;
    Surface src = makeSide(m.src, aw, ah, StepKind::Padded);
    Surface dst = makeSide(m.dst, aw, ah, StepKind::Padded);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    src.snapshot();
    dst.snapshot();
    Args args(src, dst, PxkSize{w, h});
    NullHolder holder;
    change(args, holder);
    const PxkResult got = m.call(args);
    if (got != want) return ::testing::AssertionFailure() << "status " << got << ", expected " << want;
    if (!dst.unchanged()) return ::testing::AssertionFailure() << "destination written: " << dst.unchanged().message();
    if (!src.unchanged()) return ::testing::AssertionFailure() << "source written";
    return ::testing::AssertionSuccess();
}

inline bool isUntested(const Member& m, Slot s) {
    for (Slot u : m.untested) {
        if (u == s) return true;
    }
    return false;
}

// Each tested pointer null gives pxkErrNullPtr, also together with a bad width (and
// a bad height where the member tests it): pointers come before sizes.
inline void checkNullPointers(const Member& m) {
    for (Slot s : slotsOf(m)) {
        if (isUntested(m, s)) continue;
        const auto nulled = [s](Args& a, NullHolder& h) { nullSlot(a, s, h); };
        EXPECT_TRUE(writesNothing(m, 8, 8, pxkErrNullPtr, nulled)) << m.name << " " << slotName(s);
        EXPECT_TRUE(writesNothing(m, 0, 8, pxkErrNullPtr, nulled)) << m.name << " " << slotName(s) << ", width 0";
        EXPECT_TRUE(writesNothing(m, -3, -3, pxkErrNullPtr, nulled))
            << m.name << " " << slotName(s) << ", width and height -3";
    }
}

// Sizes below the least: pxkErrSize and nothing written; heights of 0 and below in
// the members without a height test: pxkOk and nothing written.
inline void checkSizes(const Member& m) {
    const auto none = [](Args&, NullHolder&) {};
    for (int w : {m.minWidth - 1, 0, -1, INT32_MIN}) {
        EXPECT_TRUE(writesNothing(m, w, 8, pxkErrSize, none)) << m.name << " width " << w;
    }
    if (m.minHeight != kNoHeightTest) {
        for (int h : {m.minHeight - 1, 0, -1, INT32_MIN}) {
            EXPECT_TRUE(writesNothing(m, 8, h, pxkErrSize, none)) << m.name << " height " << h;
        }
    } else {
        for (int h : {0, -1, -1000, INT32_MIN}) {
            EXPECT_TRUE(writesNothing(m, 8, h, pxkOk, none)) << m.name << " height " << h;
        }
        EXPECT_TRUE(writesNothing(m, m.minWidth - 1, 0, pxkErrSize, none)) << m.name << " width below, height 0";
    }
}

}  // namespace chromatest

// The suites every member table runs: the reference sweeps, the statuses, the large
// regions. `Suite` names the test suite, `table` a function returning the members.
#define CHROMATEST_MEMBER_SUITES(Suite, table)                                                           \
    class Suite : public ::testing::TestWithParam<::chromatest::Member> {};                               \
    TEST_P(Suite, MatchesTheReferenceAtEveryWidthHeightAndStep) { sweepAgainstReference(GetParam()); }  \
    TEST_P(Suite, MatchesTheReferenceAtEveryAlignment) { sweepAlignments(GetParam()); }                 \
    TEST_P(Suite, EachNullPointerIsReportedBeforeTheSize) { checkNullPointers(GetParam()); }            \
    TEST_P(Suite, SizesBelowTheLeastWriteNothing) { checkSizes(GetParam()); }                           \
    TEST_P(Suite, LargeRegionsGiveTheSameBytes) { largeRegions(GetParam()); }                           \
    TEST_P(Suite, WidthsAroundTheChunksOfColumns) { chunkBoundaries(GetParam()); }                      \
    INSTANTIATE_TEST_SUITE_P(Members, Suite, ::testing::ValuesIn(table()),                               \
                             [](const ::testing::TestParamInfo<::chromatest::Member>& info) {            \
                                 return info.param.name;                                                 \
                             })
