// Every YCoCg member against the reference model: every width of the sweep, several
// heights, every step plan (tight, padded, odd, zero, negative), every alignment;
// then its statuses, their order, and that a refused call writes nothing.
#include <gtest/gtest.h>

#include "alignment_sweep.h"
#include "ycocg_harness.h"

namespace {

using namespace ycocgtest;
using pxktest::GuardOptions;
using pxktest::Rng;
using pxktest::seedFor;

class YCoCgMember : public ::testing::TestWithParam<std::string> {
protected:
    const MemberInfo& m() const { return member(GetParam()); }
};

TEST_P(YCoCgMember, MatchesReferenceAtEveryWidthHeightAndStep) {
    for (int width : pxktest::sweepWidths()) {
        for (int height : pxktest::sweepHeights(width)) {
            for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
                Rng rng(seedFor(m().name, {uint32_t(width), uint32_t(height), uint32_t(plan.src), uint32_t(plan.dst)}));
                const ::testing::AssertionResult r = runCase(m(), width, height, plan, {}, {}, rng);
                ASSERT_TRUE(r) << m().name << " " << width << "x" << height << " " << pxktest::stepPlanName(plan);
            }
        }
    }
}

TEST_P(YCoCgMember, MatchesReferenceAtEveryAlignment) {
    for (int width : {29, 67}) {
        pxktest::everyAlignment(std::string(m().name) + "/" + std::to_string(width),
                                [&](const GuardOptions& srcOpt, const GuardOptions& dstOpt, Rng& rng) {
                                    return runCase(m(), width, 3, pxktest::stepPlans()[1], srcOpt, dstOpt, rng);
                                });
    }
}

// A fenced source: any read past the last source byte faults.
TEST_P(YCoCgMember, ReadsNothingPastTheSource) {
    for (int width = 1; width <= 40; ++width) {
        GuardOptions fenced;
        fenced.after = 0;
        fenced.fenceAfter = true;
        Rng rng(seedFor(m().name, {uint32_t(width), 99}));
        EXPECT_TRUE(runCase(m(), width, 2, pxktest::stepPlans()[0], fenced, {}, rng)) << m().name << " width " << width;
    }
}

// Each null pointer, the array pointer, and each plane entry.
TEST_P(YCoCgMember, RefusesEveryNullPointerAndWritesNothing) {
    Rng rng(seedFor(m().name, {7}));
    CallSides s = buildSides(m(), 9, 2, m().rule.forward ? int(packedRowBytes(m(), 9)) : int(planeRowBytes(m(), 9)),
                             m().rule.forward ? int(planeRowBytes(m(), 9)) : int(packedRowBytes(m(), 9)), {}, {},
                             rng);
    const Args good = argsFor(m(), s.src, s.dst, 0);
    std::vector<Args> bad;
    Args a = good;
    if (m().rule.forward) {
        a.packedSrc = nullptr;
        bad.push_back(a);
        a = good;
        a.planeDst = nullptr;
        bad.push_back(a);
    } else {
        a.planeSrc = nullptr;
        bad.push_back(a);
        a = good;
        a.packedDst = nullptr;
        bad.push_back(a);
    }
    void* entries[3];
    const void* constEntries[3];
    for (int i = 0; i < 3; ++i) {
        a = good;
        // Only the planar side has three entries.
        for (int j = 0; j < 3; ++j) {
            if (m().rule.forward) {
                entries[j] = j == i ? nullptr : s.dst.planes()[j];
            } else {
                constEntries[j] = j == i ? nullptr : s.src.constPlanes()[j];
            }
        }
        if (m().rule.forward) {
            a.planeDst = entries;
        } else {
            a.planeSrc = constEntries;
        }
        // Nulls come before the size: a bad size does not hide them.
        for (PxkSize size : {PxkSize{9, 2}, PxkSize{0, 2}, PxkSize{9, -1}}) {
            Args sized = a;
            sized.size = size;
            EXPECT_EQ(m().call(sized), pxkErrNullPtr) << m().name << " plane " << i << " size " << size.width;
        }
    }
    for (Args& b : bad) {
        EXPECT_EQ(m().call(b), pxkErrNullPtr) << m().name;
        b.size = PxkSize{0, 0};
        EXPECT_EQ(m().call(b), pxkErrNullPtr) << m().name;
    }
    EXPECT_TRUE(s.dst.unchanged());
    EXPECT_TRUE(s.src.unchanged());
}

// Members that test the size refuse a width or height below 1; the others succeed
// and write nothing.
TEST_P(YCoCgMember, SizeBelowOneByTheMembersRule) {
    Rng rng(seedFor(m().name, {8}));
    CallSides s = buildSides(m(), 9, 2, m().rule.forward ? int(packedRowBytes(m(), 9)) : int(planeRowBytes(m(), 9)),
                             m().rule.forward ? int(planeRowBytes(m(), 9)) : int(packedRowBytes(m(), 9)), {}, {},
                             rng);
    for (PxkSize size : {PxkSize{0, 2}, PxkSize{9, 0}, PxkSize{0, 0}, PxkSize{-1, 2}, PxkSize{9, -3},
                         PxkSize{INT32_MIN, 1}, PxkSize{1, INT32_MIN}}) {
        Args a = argsFor(m(), s.src, s.dst, 0);
        a.size = size;
        EXPECT_EQ(m().call(a), m().checksSize ? pxkErrSize : pxkOk)
            << m().name << " " << size.width << "x" << size.height;
    }
    EXPECT_TRUE(s.dst.unchanged());
    EXPECT_TRUE(s.src.unchanged());
}

std::vector<std::string> memberNames() {
    std::vector<std::string> names;
    for (const MemberInfo& m : members()) names.push_back(m.name);
    return names;
}

INSTANTIATE_TEST_SUITE_P(AllMembers, YCoCgMember, ::testing::ValuesIn(memberNames()),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });

// The size-check column, member by member, as a literal list.
TEST(YCoCgSizeCheck, ExactlyTheseMembersTestTheSize) {
    const std::vector<std::string> checked = {
        "BGRToYCoCg_8u16s_C3P3R",       "BGRToYCoCg_8u16s_C4P3R",   "BGRToYCoCg_Rev_8u16s_C3P3R",
        "BGRToYCoCg_Rev_8u16s_C4P3R",   "RGBToYCoCg_8u_C3P3R",      "SBGRToYCoCg_16s32s_C3P3R",
        "SBGRToYCoCg_16s_C3P3R",        "SBGRToYCoCg_16s_C4P3R",    "SBGRToYCoCg_Rev_16s32s_C3P3R",
        "YCoCgToSBGR_16s_P3C4R",        "YCoCgToSBGR_32s16s_P3C3R", "YCoCgToSBGR_32s16s_P3C4R"};
    EXPECT_EQ(members().size(), 26u);
    for (const MemberInfo& m : members()) {
        bool listed = false;
        for (const std::string& n : checked) listed = listed || n == m.name;
        EXPECT_EQ(m.checksSize, listed) << m.name;
    }
}

}  // namespace

namespace {

// 32-bit planes of more than 524288 bytes: with every plane and the step on a multiple
// of 16 they are written past the cache, otherwise normally; the bytes are the same.
TEST(YCoCgLargePlanes, ThirtyTwoBitPlanesAlignedOrNot) {
    for (const char* name : {"SBGRToYCoCg_16s32s_C3P3R", "SBGRToYCoCg_16s32s_C4P3R", "SBGRToYCoCg_Rev_16s32s_C3P3R",
                             "SBGRToYCoCg_Rev_16s32s_C4P3R"}) {
        const MemberInfo& m = member(name);
        for (size_t misalign : {size_t(0), size_t(4)}) {
            for (int width : {256, 259}) {
                const int height = 181;
                Rng rng(seedFor(name, {uint32_t(misalign), uint32_t(width)}));
                GuardOptions dstOpt;
                dstOpt.misalign = misalign;
                CallSides s = buildSides(m, width, height, int(packedRowBytes(m, width)), 16 * ((width * 4 + 15) / 16),
                                         {}, dstOpt, rng);
                const bool aligned = reinterpret_cast<std::uintptr_t>(s.dst.planes()[1]) % 16 == 0;
                EXPECT_EQ(aligned, misalign == 0) << "the guarded planes start on a multiple of 16";
                EXPECT_TRUE(callAndCompare(m, s, 0)) << name << " misaligned by " << misalign << ", width " << width;
            }
        }
    }
}

}  // namespace
