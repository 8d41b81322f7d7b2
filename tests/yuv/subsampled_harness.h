// Harness shared by the tests of RGB -> YCbCr and YUV with subsampled chroma: the
// sweeps that compare each export with its reference, dense images built group by
// group, the status checks, the test parameters and the suites every file registers.
// The table entry and its surfaces are in subsampled_export.h.
#ifndef PXKCC_TESTS_YUV_SUBSAMPLED_HARNESS_H
#define PXKCC_TESTS_YUV_SUBSAMPLED_HARNESS_H

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "pxkcc.h"
#include "alignment_sweep.h"
#include "random.h"
#include "reference_subsampled.h"
#include "subsampled_export.h"
#include "surface.h"
#include "sweep.h"

namespace subtest {

// ---------------------------------------------------------------------------------
// Sweeps over sizes and steps
// ---------------------------------------------------------------------------------

// Steps of the source and of each destination plane.
struct StepPlan {
    StepKind src;
    DestSteps dst;
};

inline const std::vector<StepPlan>& stepPlans() {
    using K = StepKind;
    static const std::vector<StepPlan> plans = {
        {K::Tight, {K::Tight, K::Tight, K::Tight}},
        {K::Padded, {K::Odd, K::Padded, K::Negative}},
        {K::Odd, {K::Padded, K::Odd, K::Odd}},
        {K::Negative, {K::Negative, K::Negative, K::NegativeTight}},
        {K::NegativeTight, {K::Padded, K::Zero, K::Tight}},
        {K::Tight, {K::NegativeTight, K::Tight, K::Padded}},
        {K::Zero, {K::Padded, K::Negative, K::Odd}},
        {K::Odd, {K::Zero, K::Zero, K::Zero}},
        {K::Zero, {K::Zero, K::Padded, K::Zero}},
    };
    return plans;
}

inline std::string stepPlanName(const StepPlan& p) {
    return std::string("src") + pxktest::stepKindName(p.src) + "_y" + pxktest::stepKindName(p.dst.y) + "_c" +
           pxktest::stepKindName(p.dst.c1) + "_c" + pxktest::stepKindName(p.dst.c2);
}

// Every width from the least to 40, the library-wide sweep's wider ones, and widths
// on both sides of 64 and 128 (whole and partial blocks of 8, 16 and 32 pixels).
inline std::vector<int> widthsFrom(int least) {
    std::vector<int> w;
    for (int x : pxktest::sweepWidths()) {
        if (x >= least) w.push_back(x);
    }
    for (int x : {62, 63, 64, 65, 66, 127, 128, 129}) w.push_back(x);
    return w;
}

inline std::vector<int> widthsFor(Sampling s) { return widthsFrom(minimumSize(s).width); }

inline std::vector<int> heightsFor(Sampling s, int width) {
    const int least = minimumSize(s).height;
    std::vector<int> h;
    if (width <= 40) {
        for (int y : {1, 2, 3, 4, 5, 11}) {
            if (y >= least) h.push_back(y);
        }
    } else if (width <= 301) {
        for (int y : {1, 2, 3}) {
            if (y >= least) h.push_back(y);
        }
    } else {
        h = {2, 3};
    }
    return h;
}

inline std::vector<int> widthsFor(const SubsampledExport& ex) { return widthsFrom(minimumSize(ex).width); }

inline std::vector<int> heightsFor(const SubsampledExport& ex, int width) {
    const int least = minimumSize(ex).height;
    std::vector<int> h;
    for (int y : heightsFor(Sampling::S422, width)) {  // the sweep's heights from 1
        if (y >= least) h.push_back(y);
    }
    return h;
}

// The source steps of a sweep: the plan's source step, and for a planar source with a
// step per plane, the plan's chroma step kinds for planes G and B.
inline std::array<int, 3> sourceSteps(const SubsampledExport& ex, const StepPlan& plan, int width) {
    const std::size_t row = std::size_t(tightSourceStep(ex, width));
    const int s = pxktest::stepFor(plan.src, row);
    if (!ex.ownSourceSteps) return {s, s, s};
    return {s, pxktest::stepFor(plan.dst.c2, row), pxktest::stepFor(plan.dst.c1, row)};
}

// Compares an export with its reference over random images of each given size with
// the given steps. Sources end flush against an inaccessible page.
inline void sizesAgainstReference(const SubsampledExport& ex, const StepPlan& plan,
                                  const std::vector<PxkSize>& sizes) {
    for (const PxkSize& z : sizes) {
        const int width = z.width, height = z.height;
        Rng rng(pxktest::seedFor(ex.name.c_str(), {uint32_t(width), uint32_t(height), uint32_t(plan.src),
                                                    uint32_t(plan.dst.y), uint32_t(plan.dst.c1)}));
        const std::array<int, 3> srcSteps = sourceSteps(ex, plan, width);
        GuardOptions srcOpt;
        srcOpt.after = 0;
        srcOpt.fenceAfter = true;
        srcOpt.misalign = std::size_t(rng.uniform(0, 15));
        GuardOptions dstOpt;
        dstOpt.misalign = std::size_t(rng.uniform(0, 15));
        Surface src = makeSource(ex, width, height, srcSteps, srcOpt);
        Surface dst = makeDest(ex, width, height, plan.dst, dstOpt);
        src.fillRandom(rng);
        dst.fillRandom(rng);
        ::testing::AssertionResult r = compareOnce(ex, src, dst, width, height);
        if (!r) {
            ADD_FAILURE() << ex.name << " " << width << "x" << height << ", srcStep " << src.image(0).step() << ", "
                          << stepPlanName(plan) << ": " << r.message();
            return;  // one report per sweep keeps the output readable
        }
    }
}

// The same over every width and height of the sweep.
inline void sweepAgainstReference(const SubsampledExport& ex, const StepPlan& plan) {
    std::vector<PxkSize> sizes;
    for (int width : widthsFor(ex)) {
        for (int height : heightsFor(ex, width)) sizes.push_back({width, height});
    }
    sizesAgainstReference(ex, plan, sizes);
}

// The same conversion at every alignment of source and destination modulo 16: the
// result depends on the column alone, never on an address.
inline void alignmentsAgainstReference(const SubsampledExport& ex) {
    const int width = 45, height = 4;
    pxktest::everyAlignment(ex.name, [&](const GuardOptions& srcOpt, const GuardOptions& dstOpt, Rng& rng) {
        Surface src = makeSource(ex, width, height, tightSourceStep(ex, width) + 16, srcOpt);
        Surface dst = makeDest(ex, width, height, StepKind::Padded, dstOpt);
        src.fillRandom(rng);
        dst.fillRandom(rng);
        return compareOnce(ex, src, dst, width, height);
    });
}

// ---------------------------------------------------------------------------------
// Dense images, built chroma group by chroma group
// ---------------------------------------------------------------------------------

struct Rgb {
    int r, g, b;
};

// Pixels per chroma group.
inline int groupPixels(Sampling s) { return s == Sampling::S422 ? 2 : 4; }

// Calls f(group, k, x, y) for pixel k of each whole chroma group of a region, groups
// numbered from the top left, row (or row pair) by row.
template <typename F>
inline void forEachGroupPixel(Sampling s, int width, int height, F&& f) {
    long group = 0;
    switch (s) {
        case Sampling::S420:
            for (int r = 0; r < height / 2; ++r) {
                for (int c = 0; c < width / 2; ++c, ++group) {
                    for (int k = 0; k < 4; ++k) f(group, k, 2 * c + k % 2, 2 * r + k / 2);
                }
            }
            break;
        case Sampling::S411:
            for (int y = 0; y < height; ++y) {
                for (int c = 0; c < width / 4; ++c, ++group) {
                    for (int k = 0; k < 4; ++k) f(group, k, 4 * c + k, y);
                }
            }
            break;
        case Sampling::S422:
            for (int y = 0; y < height; ++y) {
                for (int c = 0; c < width / 2; ++c, ++group) {
                    for (int k = 0; k < 2; ++k) f(group, k, 2 * c + k, y);
                }
            }
            break;
    }
}

inline int& channel(Rgb& v, int c) { return c == 0 ? v.r : (c == 1 ? v.g : v.b); }

inline void setPixel(const SubsampledExport& ex, Surface& src, int x, int y, Rgb v) {
    src.at(x, y, 0) = uint8_t(ex.bgr ? v.b : v.r);
    src.at(x, y, 1) = uint8_t(v.g);
    src.at(x, y, 2) = uint8_t(ex.bgr ? v.r : v.b);
}

// Fills the whole groups of a random source and destination of width x height by
// `pixel(group, k)` (the rest, and the fourth bytes, stay random) and compares.
template <typename PixelOf>
inline void denseAgainstReference(const SubsampledExport& ex, int width, int height, const std::string& what,
                                  PixelOf&& pixel) {
    SCOPED_TRACE(ex.name + " " + what + " " + std::to_string(width) + "x" + std::to_string(height));
    Rng rng(pxktest::seedFor((ex.name + "/" + what).c_str(), {uint32_t(width), uint32_t(height)}));
    Surface src = makeSource(ex, width, height, tightSourceStep(ex, width) + 3);
    Surface dst = makeDest(ex, width, height, DestSteps{StepKind::Odd, StepKind::Padded, StepKind::Odd});
    src.fillRandom(rng);
    dst.fillRandom(rng);
    forEachGroupPixel(ex.sampling, width, height,
                      [&](long group, int k, int x, int y) { setPixel(ex, src, x, y, pixel(group, k)); });
    EXPECT_TRUE(compareOnce(ex, src, dst, width, height));
}

// Every assignment of 0 or 255 to the samples of a group: 2^12 for groups of four
// pixels, 2^6 for pairs, each several times over, at the given width.
inline void extremeGroupsAgainstReference(const SubsampledExport& ex, int width) {
    const int bits = 3 * groupPixels(ex.sampling);
    const long combos = 1L << bits;
    // Groups per row (per row pair in 4:2:0), and the rows needed for three rounds.
    const long groupsPerRow = chromaPlaneSize(ex.sampling, width, 2).width;
    const int rowsPerGroupRow = ex.sampling == Sampling::S420 ? 2 : 1;
    const int height = int((3 * combos + groupsPerRow - 1) / groupsPerRow) * rowsPerGroupRow;
    denseAgainstReference(ex, width, height, "extremes", [&](long group, int k) {
        const long code = group % combos;
        auto bit = [&](int c) { return ((code >> (3 * k + c)) & 1) ? 255 : 0; };
        return Rgb{bit(0), bit(1), bit(2)};
    });
}

// Groups of uniformly random pixels.
inline void randomGroupsAgainstReference(const SubsampledExport& ex, int width, int height) {
    Rng rng(pxktest::seedFor((ex.name + "/random").c_str(), {uint32_t(width), uint32_t(height)}));
    denseAgainstReference(ex, width, height, "random", [&](long, int) {
        return Rgb{int(rng.byte()), int(rng.byte()), int(rng.byte())};
    });
}

// Groups whose sums are uniform over their whole range (0 to 255 times the group's
// pixel count), each sum spread over the pixels in a random way: the chroma
// arithmetic meets every part of its input range alike.
inline void uniformSumsAgainstReference(const SubsampledExport& ex, int width, int height) {
    Rng rng(pxktest::seedFor((ex.name + "/sums").c_str(), {uint32_t(width), uint32_t(height)}));
    const int n = groupPixels(ex.sampling);
    std::vector<Rgb> pixels(static_cast<std::size_t>(n));
    long current = -1;
    auto spread = [&](int sum, int c) {
        // Split `sum` into n samples of 0..255: random cuts, then carry any excess on.
        std::vector<int> v(static_cast<std::size_t>(n), 0);
        int left = sum;
        for (int k = 0; k < n; ++k) {
            const int rest = (n - 1 - k) * 255;  // what the later samples can still take
            const int lo = left - rest > 0 ? left - rest : 0;
            const int hi = left < 255 ? left : 255;
            v[std::size_t(k)] = k == n - 1 ? left : int(rng.uniform(lo, hi));
            left -= v[std::size_t(k)];
        }
        for (int k = 0; k < n; ++k) channel(pixels[std::size_t(k)], c) = v[std::size_t(k)];
    };
    denseAgainstReference(ex, width, height, "sums", [&](long group, int k) {
        if (group != current) {
            current = group;
            for (int c = 0; c < 3; ++c) spread(int(rng.uniform(0, 255L * n)), c);
        }
        return pixels[std::size_t(k)];
    });
}

// Every one of the 2^24 three-sample inputs as a pixel of a whole group, once: 256
// slices, slice s holding R = s and G, B over all 65536 pairs, rows of `width`
// pixels. One pair of images serves all slices; the guards and the bytes the export
// must leave alone are checked after every slice.
inline void everyPixelAgainstReference(const SubsampledExport& ex, int width) {
    const int perSlice = 65536;
    const int unit = ex.sampling == Sampling::S420 ? 2 : 1;
    const PxkSize read = readableExtent(ex.sampling, width, 2);
    const int perRow = read.width;
    int height = (perSlice + perRow - 1) / perRow;
    height += height % unit;
    Rng rng(pxktest::seedFor((ex.name + "/every").c_str(), {uint32_t(width)}));
    Surface src = makeSource(ex, width, height, tightSourceStep(ex, width) + 1);
    Surface dst = makeDest(ex, width, height, DestSteps{StepKind::Padded, StepKind::Odd, StepKind::Tight});
    src.fillRandom(rng);
    dst.fillRandom(rng);
    dst.snapshot();
    Surface expected = dst.clone();
    const PxkResult want = expectedStatus(ex.sampling, width, height);
    for (int slice = 0; slice < 256; ++slice) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < perRow; ++x) {
                const uint32_t i = (uint32_t(y) * uint32_t(perRow) + uint32_t(x)) % uint32_t(perSlice);
                setPixel(ex, src, x, y, Rgb{slice, int(i >> 8), int(i & 0xFF)});
            }
        }
        src.snapshot();
        runReference(ex, src, expected, width, height);
        const PxkResult st = callExport(ex, src, dst, PxkSize{width, height});
        ::testing::AssertionResult r = ::testing::AssertionSuccess();
        if (st != want) r = ::testing::AssertionFailure() << "status " << st << ", expected " << want;
        if (r) r = pxktest::sameContents(dst, expected);
        if (r) r = dst.guardsIntact();
        if (r) r = src.unchanged();
        if (!r) {
            ADD_FAILURE() << ex.name << " width " << width << ", R " << slice << ": " << r.message();
            return;
        }
    }
}

// ---------------------------------------------------------------------------------
// Converting given pixels
// ---------------------------------------------------------------------------------

// Runs the export alone on the given rows of pixels (R, G, B; written in the export's
// byte order, fourth bytes random) over a destination whose region holds `fill` and
// guards hold another value. Checks the status, the guards and that the source stayed
// as it was, and returns the destination.
inline Surface convertPixels(const SubsampledExport& ex, const std::vector<std::vector<Rgb>>& rows,
                             PxkResult wantStatus, uint8_t fill = 0xEE) {
    const int height = int(rows.size());
    const int width = int(rows.front().size());
    Rng rng(pxktest::seedFor((ex.name + "/pixels").c_str(), {uint32_t(width), uint32_t(height)}));
    Surface src = makeFullSource(ex, width, height, tightSourceStep(ex, width) + 2);
    src.fillRandom(rng);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) setPixel(ex, src, x, y, rows[std::size_t(y)][std::size_t(x)]);
    }
    src.snapshot();
    Surface dst = makeDest(ex, width, height, StepKind::Padded);
    for (int i = 0; i < dst.imageCount(); ++i) dst.image(i).fill(fill, 0x5A);
    EXPECT_EQ(callExport(ex, src, dst, PxkSize{width, height}), wantStatus) << ex.name;
    EXPECT_TRUE(dst.guardsIntact()) << ex.name;
    EXPECT_TRUE(src.unchanged()) << ex.name;
    return dst;
}

// The same pixel in every place of a width x height region.
inline std::vector<std::vector<Rgb>> uniformRows(int width, int height, Rgb v) {
    return std::vector<std::vector<Rgb>>(std::size_t(height), std::vector<Rgb>(std::size_t(width), v));
}

// ---------------------------------------------------------------------------------
// Statuses
// ---------------------------------------------------------------------------------

// A valid size for status tests: whole groups, more than one vector block.
inline PxkSize validSize(Sampling s) {
    switch (s) {
        case Sampling::S420:
            return {18, 4};
        case Sampling::S411:
            return {20, 2};
        case Sampling::S422:
            return {18, 2};
    }
    throw std::invalid_argument("sampling");
}

// Random source and destination of the valid size, to check that a failing call
// writes nothing.
struct StatusFixture {
    Surface src;
    Surface dst;
    explicit StatusFixture(const SubsampledExport& ex)
        : src(makeFullSource(ex, validSize(ex.sampling).width, validSize(ex.sampling).height,
                             tightSourceStep(ex, validSize(ex.sampling).width))),
          dst(makeDest(ex, validSize(ex.sampling).width, validSize(ex.sampling).height)) {
        Rng rng(271);
        src.fillRandom(rng);
        dst.fillRandom(rng);
    }
    ::testing::AssertionResult nothingWritten() const {
        ::testing::AssertionResult r = dst.unchanged();
        if (!r) return ::testing::AssertionFailure() << "destination: " << r.message();
        r = src.unchanged();
        if (!r) return ::testing::AssertionFailure() << "source: " << r.message();
        return ::testing::AssertionSuccess();
    }
};

// Planar destination: pSrc, pDst, each entry of pDst, dstStep (all pxkErrNullPtr),
// then the size (pxkErrSize). Steps are not tested. Failing calls write nothing.
inline void planarStatusChecks(const SubsampledExport& ex) {
    ASSERT_EQ(ex.dest, DestLayout::P3);
    StatusFixture f(ex);
    const PxkSize valid = validSize(ex.sampling);
    const uint8_t* s = f.src.data();
    const int ss = f.src.step();
    uint8_t* const* planes = f.dst.planes();
    const int32_t steps[3] = {f.dst.image(0).step(), f.dst.image(1).step(), f.dst.image(2).step()};
    const int32_t oddSteps[3] = {0, -3, -1};

    std::vector<PxkSize> sizes = badSizes(ex);
    sizes.insert(sizes.begin(), valid);
    for (const PxkSize& z : sizes) {
        SCOPED_TRACE("size " + sizeText(z));
        // Each pointer missing alone, then all of them; a bad size never hides one.
        EXPECT_EQ(ex.p3(nullptr, ss, planes, steps, z), pxkErrNullPtr);
        EXPECT_EQ(ex.p3(s, ss, nullptr, steps, z), pxkErrNullPtr);
        for (int i = 0; i < 3; ++i) {
            SCOPED_TRACE("null entry " + std::to_string(i));
            uint8_t* withNull[3] = {planes[0], planes[1], planes[2]};
            withNull[i] = nullptr;
            EXPECT_EQ(ex.p3(s, ss, withNull, steps, z), pxkErrNullPtr);
            EXPECT_EQ(ex.p3(s, ss, withNull, nullptr, z), pxkErrNullPtr);
        }
        uint8_t* noPlanes[3] = {nullptr, nullptr, nullptr};
        EXPECT_EQ(ex.p3(s, ss, noPlanes, steps, z), pxkErrNullPtr);
        EXPECT_EQ(ex.p3(s, ss, planes, nullptr, z), pxkErrNullPtr);
        EXPECT_EQ(ex.p3(s, 0, planes, nullptr, z), pxkErrNullPtr);
        EXPECT_EQ(ex.p3(nullptr, ss, nullptr, nullptr, z), pxkErrNullPtr);
        EXPECT_EQ(ex.p3(nullptr, -1, noPlanes, nullptr, z), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
    for (const PxkSize& z : badSizes(ex)) {
        SCOPED_TRACE("size " + sizeText(z));
        EXPECT_EQ(ex.p3(s, ss, planes, steps, z), pxkErrSize);
        // Steps are not tested: odd, zero or negative ones change nothing.
        EXPECT_EQ(ex.p3(s, -ss, planes, oddSteps, z), pxkErrSize);
        EXPECT_EQ(ex.p3(s, 0, planes, oddSteps, z), pxkErrSize);
        EXPECT_TRUE(f.nothingWritten());
    }
    // With every pointer in place the valid size converts.
    EXPECT_EQ(ex.p3(s, ss, planes, steps, valid), pxkOk);
    EXPECT_FALSE(f.dst.image(0).unchanged());
    EXPECT_FALSE(f.dst.image(1).unchanged());
    EXPECT_FALSE(f.dst.image(2).unchanged());
    EXPECT_TRUE(f.src.unchanged());
}

// Packed destination: pSrc, pDst (pxkErrNullPtr), then the size (pxkErrSize).
inline void packedStatusChecks(const SubsampledExport& ex) {
    ASSERT_EQ(ex.dest, DestLayout::C2);
    StatusFixture f(ex);
    const PxkSize valid = validSize(ex.sampling);
    const uint8_t* s = f.src.data();
    uint8_t* d = f.dst.data();
    const int ss = f.src.step(), ds = f.dst.step();
    std::vector<PxkSize> sizes = badSizes(ex);
    sizes.insert(sizes.begin(), valid);
    for (const PxkSize& z : sizes) {
        SCOPED_TRACE("size " + sizeText(z));
        EXPECT_EQ(ex.c2(nullptr, ss, d, ds, z), pxkErrNullPtr);
        EXPECT_EQ(ex.c2(s, ss, nullptr, ds, z), pxkErrNullPtr);
        EXPECT_EQ(ex.c2(nullptr, ss, nullptr, ds, z), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
    for (const PxkSize& z : badSizes(ex)) {
        SCOPED_TRACE("size " + sizeText(z));
        EXPECT_EQ(ex.c2(s, ss, d, ds, z), pxkErrSize);
        EXPECT_EQ(ex.c2(s, 0, d, -7, z), pxkErrSize);
        EXPECT_TRUE(f.nothingWritten());
    }
    EXPECT_EQ(ex.c2(s, ss, d, ds, valid), pxkOk);
    EXPECT_FALSE(f.dst.unchanged());
    EXPECT_TRUE(f.src.unchanged());
}

// The least size converts; each step below it in width or height is refused.
inline void leastSizeChecks(const SubsampledExport& ex) {
    const PxkSize m = minimumSize(ex);
    Rng rng(pxktest::seedFor((ex.name + "/least").c_str(), {}));
    Surface src = makeSource(ex, m.width, m.height, tightSourceStep(ex, m.width));
    Surface dst = makeDest(ex, m.width, m.height);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    const std::vector<PxkSize> below = {{m.width - 1, m.height}, {m.width, m.height - 1}};
    for (const PxkSize& z : below) {
        if (z.height == 0 && m.height == 1) continue;  // covered as a zero height
        EXPECT_EQ(callExport(ex, src, dst, z), pxkErrSize) << sizeText(z);
        EXPECT_TRUE(dst.unchanged()) << sizeText(z);
    }
    EXPECT_TRUE(compareOnce(ex, src, dst, m.width, m.height));
}

// Each (size, status) pair: a random image of that size converts with that status.
// `seedName` keeps each file's images its own.
inline void expectOddSizeStatuses(const SubsampledExport& ex, const std::vector<std::pair<PxkSize, PxkResult>>& cases,
                                  const char* seedName) {
    for (const auto& [z, want] : cases) {
        Rng rng(pxktest::seedFor(seedName, {uint32_t(z.width), uint32_t(z.height)}));
        Surface src = makeFullSource(ex, z.width, z.height, tightSourceStep(ex, z.width));
        Surface dst = makeDest(ex, z.width, z.height);
        src.fillRandom(rng);
        dst.fillRandom(rng);
        EXPECT_EQ(callExport(ex, src, dst, z), want) << sizeText(z);
    }
}

// The statuses of 4:2:0 members whose least size is 1 x 1: an odd width or height is
// reported, whole blocks are not.
inline const std::vector<std::pair<PxkSize, PxkResult>>& oddSizeCases420FromOne() {
    static const std::vector<std::pair<PxkSize, PxkResult>> cases = {
        {{1, 1}, pxkWarnOddSize}, {{1, 2}, pxkWarnOddSize}, {{2, 1}, pxkWarnOddSize}, {{1, 9}, pxkWarnOddSize},
        {{9, 1}, pxkWarnOddSize}, {{2, 2}, pxkOk},          {{3, 2}, pxkWarnOddSize}, {{2, 3}, pxkWarnOddSize},
        {{3, 3}, pxkWarnOddSize}, {{4, 4}, pxkOk},          {{17, 4}, pxkWarnOddSize}, {{16, 5}, pxkWarnOddSize},
        {{64, 2}, pxkOk},
    };
    return cases;
}

// ---------------------------------------------------------------------------------
// The fourth byte of a four-byte source
// ---------------------------------------------------------------------------------

// The fourth byte takes no part: a random w x h source and the same with byte 3 of
// every pixel flipped give the same destination, each call with status `want`.
inline void expectFourthSourceByteIgnored(const SubsampledExport& ex, int w, int h, PxkResult want) {
    ASSERT_EQ(ex.srcBytes, 4);
    Rng rng(99);
    Surface srcA = Surface::packed(w, h, 4, w * 4);
    srcA.fillRandom(rng);
    Surface srcB = srcA.clone();
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) srcB.at(x, y, 3) = uint8_t(~srcA.at(x, y, 3));
    }
    Surface dstA = makeDest(ex, w, h);
    dstA.fillRandom(rng);
    Surface dstB = dstA.clone();
    ASSERT_EQ(callExport(ex, srcA, dstA, PxkSize{w, h}), want);
    ASSERT_EQ(callExport(ex, srcB, dstB, PxkSize{w, h}), want);
    EXPECT_TRUE(pxktest::sameContents(dstA, dstB));
    EXPECT_FALSE(dstA.unchanged());
}

// ---------------------------------------------------------------------------------
// Test parameters
// ---------------------------------------------------------------------------------

struct SweepParam {
    const SubsampledExport* ex;
    StepPlan plan;
};

// Every export with every step plan; a member without steps with the tight plan only.
inline std::vector<SweepParam> sweepParams(const std::vector<SubsampledExport>& exports) {
    std::vector<SweepParam> out;
    for (const SubsampledExport& ex : exports) {
        for (const StepPlan& p : stepPlans()) {
            out.push_back({&ex, p});
            if (ex.derivedSteps) break;
        }
    }
    return out;
}

inline std::string sweepParamName(const ::testing::TestParamInfo<SweepParam>& info) {
    return info.param.ex->name + "_" + stepPlanName(info.param.plan);
}

inline std::vector<const SubsampledExport*> exportPointers(const std::vector<SubsampledExport>& exports) {
    std::vector<const SubsampledExport*> v;
    for (const SubsampledExport& ex : exports) v.push_back(&ex);
    return v;
}

inline std::string exportParamName(const ::testing::TestParamInfo<const SubsampledExport*>& info) {
    return info.param->name;
}

inline const SubsampledExport& exportNamed(const std::vector<SubsampledExport>& exports, const std::string& name) {
    for (const SubsampledExport& ex : exports) {
        if (ex.name == name) return ex;
    }
    throw std::invalid_argument(name);
}

inline void PrintTo(const SweepParam& p, std::ostream* os) { *os << p.ex->name << " " << stepPlanName(p.plan); }
inline void PrintTo(const SubsampledExport* ex, std::ostream* os) { *os << ex->name; }

}  // namespace subtest

// `Prefix`Sweep: every export of `exportsList()` against its reference over every size
// and step plan of the sweep.
#define SUBTEST_SWEEP_SUITE(Prefix, exportsList)                                                                  \
    class Prefix##Sweep : public ::testing::TestWithParam<subtest::SweepParam> {};                                 \
    TEST_P(Prefix##Sweep, MatchesReference) { subtest::sweepAgainstReference(*GetParam().ex, GetParam().plan); }     \
    INSTANTIATE_TEST_SUITE_P(AllExports, Prefix##Sweep, ::testing::ValuesIn(subtest::sweepParams(exportsList())),  \
                             subtest::sweepParamName)

#endif
