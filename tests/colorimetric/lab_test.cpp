// RGB <-> Lab, every member against the reference model (every width, height and step
// plan; misaligned regions), the statuses and their order, and every 8-bit colour
// through the 8-bit members.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "lab_members.h"
#include "pxkcc.h"
#include "reference_lab.h"

namespace {

using labtest::Breakage;
using labtest::Member;

class LabMembers : public ::testing::TestWithParam<Member> {};

TEST_P(LabMembers, MatchesReferenceAtEveryWidthHeightAndStep) { labtest::sweepAgainstReference(GetParam()); }
TEST_P(LabMembers, ResultsDependOnColumnNotAddress) { labtest::misalignedAgainstReference(GetParam()); }

// Pointers (each plane entry and step array of the planar members), then the size: a
// null pointer wins over a bad size; a failing call writes nothing.
TEST_P(LabMembers, NullPointersThenSize) {
    const Member& m = GetParam();
    std::vector<Breakage> nulls;
    const auto add = [&nulls](auto change) {
        Breakage b;
        change(b);
        nulls.push_back(b);
    };
    add([](Breakage& b) { b.nullSrc = true; });
    add([](Breakage& b) { b.nullDst = true; });
    for (int i = 0; m.src.planar && i < 3; ++i) {
        add([i](Breakage& b) { b.nullSrcPlane = i; });
        add([i](Breakage& b) { b.nullDstPlane = i; });
    }
    if (m.src.planar) {
        add([](Breakage& b) { b.nullSrcSteps = true; });
        add([](Breakage& b) { b.nullDstSteps = true; });
    }
    for (size_t i = 0; i < nulls.size(); ++i) {
        EXPECT_TRUE(labtest::failsWith(m, pxkErrNullPtr, PxkSize{4, 2}, nulls[i])) << "null case " << i;
        EXPECT_TRUE(labtest::failsWith(m, pxkErrNullPtr, PxkSize{0, 0}, nulls[i])) << "null case " << i << ", no size";
    }
    for (PxkSize bad : labtest::badSizes())
        EXPECT_TRUE(labtest::failsWith(m, pxkErrSize, bad, Breakage{})) << bad.width << " x " << bad.height;
}

INSTANTIATE_TEST_SUITE_P(Lab, LabMembers,
                         ::testing::Values(labtest::kRgbToLab8u, labtest::kBgrToLab8u, labtest::kBgrToLab8u16u,
                                           labtest::kRgbToLab32f, labtest::kBgrToLab32f, labtest::kLabToRgb8u,
                                           labtest::kLabToBgr8u, labtest::kLabToBgr16u8u, labtest::kLabToRgb32f,
                                           labtest::kLabToBgr32f, labtest::kRgbToLab32fP3, labtest::kRgbToLab32fP3L,
                                           labtest::kRgbToLab64fP3, labtest::kRgbToLab64fP3L, labtest::kLabToRgb32fP3,
                                           labtest::kLabToRgb32fP3L, labtest::kLabToRgb64fP3,
                                           labtest::kLabToRgb64fP3L),
                         colortest::memberTestName<labtest::Member>);

// Every 8-bit colour through a member, in rows of `width` pixels (a width of 256 puts
// every pixel in the main loop of the backward members, 3 every pixel in the tail).
// Under the sanitizers, one slice in 16.
void everyColour(const Member& m, int width) {
    const uint32_t slice = 1u << 20;
    const int height = int(slice / uint32_t(width)) + 1;
    const int32_t srcSteps[3] = {width * 3 * m.src.sampleBytes, 0, 0};
    const int32_t dstSteps[3] = {width * 3 * m.dst.sampleBytes, 0, 0};
    labtest::Images src(m.src, width, height, srcSteps);
    labtest::Images dst(m.dst, width, height, dstSteps);
    for (uint32_t first = 0; first < (1u << 24); first += pxktest::kLightSweep ? 16 * slice : slice) {
        uint32_t v = first;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x, ++v)
                for (int c = 0; c < 3; ++c) src.set<uint8_t>(x, y, c, uint8_t(v >> (16 - 8 * c)));
        labtest::Images expected = dst.clone();
        m.reference(src, expected, width, height);
        ASSERT_EQ(m.call(src, dst, PxkSize{width, height}, Breakage{}), pxkOk);
        ASSERT_TRUE(labtest::sameRegion(dst, expected, width, height)) << m.name << " from colour " << first;
    }
}

TEST(LabEveryColour, RgbToLab8u) { everyColour(labtest::kRgbToLab8u, 256); }
TEST(LabEveryColour, LabToRgb8uMainLoop) { everyColour(labtest::kLabToRgb8u, 256); }
TEST(LabEveryColour, LabToRgb8uTail) { everyColour(labtest::kLabToRgb8u, 3); }

}  // namespace
