// Self-test of the test helpers: the guards and comparisons must notice every kind of
// stray write, or the conversion tests built on them prove nothing.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "guarded_image.h"
#include "random.h"
#include "surface.h"
#include "sweep.h"

namespace {

using pxktest::GuardedImage;
using pxktest::GuardOptions;
using pxktest::Rng;

TEST(GuardedImage, RowsFollowThePositiveStep) {
    GuardedImage img(5, 3, 3, 20);
    EXPECT_EQ(img.rowBytes(), 15u);
    EXPECT_EQ(img.row(1) - img.row(0), 20);
    EXPECT_EQ(img.row(2) - img.row(0), 40);
    EXPECT_EQ(img.data(), img.row(0));
}

TEST(GuardedImage, NegativeStepRunsDownwardFromRowZero) {
    GuardedImage img(4, 3, 4, -20);
    EXPECT_EQ(img.row(1) - img.row(0), -20);
    EXPECT_EQ(img.row(2) - img.row(0), -40);
    Rng rng(1);
    img.fillRandom(rng);
    // Every byte of every row is region: writing them all leaves the guards intact.
    for (int y = 0; y < 3; ++y) {
        for (int i = 0; i < 16; ++i) img.row(y)[i] ^= 0xFF;
    }
    EXPECT_TRUE(img.guardsIntact());
    EXPECT_FALSE(img.unchanged());
    // One byte past the top row (row 0, the highest in memory) is a guard.
    img.row(0)[16] ^= 1;
    EXPECT_FALSE(img.guardsIntact());
}

TEST(GuardedImage, ZeroStepSharesOneRow) {
    GuardedImage img(6, 4, 1, 0);
    EXPECT_EQ(img.row(3), img.row(0));
    Rng rng(2);
    img.fillRandom(rng);
    img.at(5, 2) ^= 1;
    EXPECT_EQ(img.at(5, 0), img.at(5, 2));
    EXPECT_TRUE(img.guardsIntact());
    img.row(0)[6] ^= 1;
    EXPECT_FALSE(img.guardsIntact());
}

TEST(GuardedImage, DetectsWritesBeforeAfterAndInPadding) {
    Rng rng(3);
    for (int step : {9, 16, -16, 0}) {
        SCOPED_TRACE("step " + std::to_string(step));
        GuardedImage img(3, 3, 2, step);  // rows of 6 bytes
        img.fillRandom(rng);
        EXPECT_TRUE(img.guardsIntact());
        uint8_t* lowest = step < 0 ? img.row(2) : img.row(0);
        uint8_t* highest = step < 0 ? img.row(0) : img.row(2);
        lowest[-1] ^= 1;
        EXPECT_FALSE(img.guardsIntact());
        lowest[-1] ^= 1;
        EXPECT_TRUE(img.guardsIntact());
        highest[6] ^= 1;
        EXPECT_FALSE(img.guardsIntact());
        highest[6] ^= 1;
        if (step > 6 || step < -6) {
            lowest[6] ^= 1;  // padding between rows
            EXPECT_FALSE(img.guardsIntact());
            lowest[6] ^= 1;
        }
        EXPECT_TRUE(img.unchanged());
    }
}

TEST(GuardedImage, ProtectedChannelIsChecked) {
    Rng rng(4);
    GuardedImage img(7, 2, 4, 30);
    img.fillRandom(rng);
    img.protectChannel(3);
    img.at(6, 1, 2) ^= 1;
    EXPECT_TRUE(img.guardsIntact());
    img.at(6, 1, 3) ^= 1;
    ::testing::AssertionResult r = img.guardsIntact();
    EXPECT_FALSE(r);
    EXPECT_NE(std::string(r.message()).find("row 1, pixel 6, sample 3"), std::string::npos) << r.message();
}

TEST(GuardedImage, FenceFaultsOnReadPastTheEnd) {
    GuardOptions opt;
    opt.after = 0;
    opt.fenceAfter = true;
    GuardedImage img(5, 2, 3, 17, opt);
    Rng rng(5);
    img.fillRandom(rng);
    volatile const uint8_t* last = img.row(1) + 14;
    EXPECT_EQ(*last, img.at(4, 1, 2));  // the last byte is readable
    EXPECT_DEATH(
        {
            volatile uint8_t v = last[1];
            (void)v;
        },
        "");
}

TEST(GuardedImage, CloneCopiesBytesAndBaseline) {
    Rng rng(6);
    GuardedImage img(4, 2, 3, 13);
    img.fillRandom(rng);
    img.protectChannel(1);
    GuardedImage copy = img.clone();
    EXPECT_TRUE(pxktest::sameRegion(copy, img));
    EXPECT_TRUE(copy.unchanged());
    copy.at(0, 0, 1) ^= 1;
    EXPECT_FALSE(copy.guardsIntact());
    EXPECT_TRUE(img.guardsIntact());
}

TEST(SameRegion, ReportsTheFirstDifference) {
    Rng rng(7);
    GuardedImage a(5, 3, 3, 15);
    a.fillRandom(rng);
    GuardedImage b = a.clone();
    EXPECT_TRUE(pxktest::sameRegion(a, b));
    b.at(4, 2, 1) = uint8_t(a.at(4, 2, 1) + 1);
    b.at(2, 1, 0) = uint8_t(a.at(2, 1, 0) + 1);
    ::testing::AssertionResult r = pxktest::sameRegion(a, b);
    EXPECT_FALSE(r);
    EXPECT_NE(std::string(r.message()).find("2 sample(s) differ; first at (x=2, y=1, channel=0)"), std::string::npos)
        << r.message();
}

TEST(SameRegion, WideSamples) {
    GuardedImage a(pxktest::ImageGeometry{3, 2, 2, 2, 12});
    Rng rng(8);
    a.fillRandom(rng);
    GuardedImage b = a.clone();
    b.set<uint16_t>(1, 1, 1, uint16_t(a.get<uint16_t>(1, 1, 1) ^ 0x100));
    ::testing::AssertionResult r = pxktest::sameRegion(a, b);
    EXPECT_FALSE(r);
    EXPECT_NE(std::string(r.message()).find("(x=1, y=1, channel=1)"), std::string::npos) << r.message();
}

TEST(Surface, PlanarAccessAndComparison) {
    Rng rng(9);
    pxktest::Surface s = pxktest::Surface::planar(4, 2, 3, 7);
    s.fillRandom(rng);
    EXPECT_EQ(s.planes()[2], s.image(2).data());
    EXPECT_EQ(&s.at(3, 1, 2), s.image(2).row(1) + 3);
    pxktest::Surface t = s.clone();
    EXPECT_TRUE(pxktest::sameContents(s, t));
    t.at(3, 1, 2) ^= 1;
    EXPECT_FALSE(pxktest::sameContents(s, t));
    s.protectChannel(1);
    s.at(0, 0, 1) ^= 1;
    EXPECT_FALSE(s.guardsIntact());
}

TEST(Random, SeedsAreDeterministicAndDistinct) {
    EXPECT_EQ(pxktest::seedFor("a", {1, 2}), pxktest::seedFor("a", {1, 2}));
    EXPECT_NE(pxktest::seedFor("a", {1, 2}), pxktest::seedFor("a", {2, 1}));
    EXPECT_NE(pxktest::seedFor("a", {1}), pxktest::seedFor("b", {1}));
    Rng x(42), y(42);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(x.next32(), y.next32());
    Rng r(43);
    std::set<int64_t> seen;
    for (int i = 0; i < 2000; ++i) {
        const int64_t v = r.uniform(-3, 3);
        ASSERT_GE(v, -3);
        ASSERT_LE(v, 3);
        seen.insert(v);
    }
    EXPECT_EQ(seen.size(), 7u);
}

TEST(Sweep, WidthsAndSteps) {
    const std::vector<int>& w = pxktest::sweepWidths();
    ASSERT_EQ(w.size(), 45u);
    for (int i = 1; i <= 40; ++i) EXPECT_EQ(w[std::size_t(i - 1)], i);
    EXPECT_EQ(w[40], 59);
    EXPECT_EQ(w[41], 67);
    EXPECT_EQ(w[44], 1920);
    for (std::size_t rb : {1u, 2u, 24u, 25u}) {
        EXPECT_GT(pxktest::stepFor(pxktest::StepKind::Padded, rb), int(rb));
        EXPECT_EQ(pxktest::stepFor(pxktest::StepKind::Odd, rb) % 2, 1);
        EXPECT_GT(pxktest::stepFor(pxktest::StepKind::Odd, rb), int(rb));
        EXPECT_EQ(pxktest::stepFor(pxktest::StepKind::Zero, rb), 0);
        EXPECT_LT(pxktest::stepFor(pxktest::StepKind::Negative, rb), -int(rb));
        EXPECT_EQ(pxktest::stepFor(pxktest::StepKind::NegativeTight, rb), -int(rb));
    }
}

}  // namespace
