// The sweep of an 8-bit export against its reference model: every width of the sweep,
// several heights, every step plan (padded, odd, zero and negative steps), random
// contents everywhere (guards and the destination's old bytes included); the status,
// every destination byte, the guards, the bytes that must keep their value, and the
// source are checked. Also the statuses and their order, misaligned runs, and runs
// over every colour. Each side is packed (C3, AC4) or planar (P3, and AP4 / P4 with an
// alpha plane); a reference model reads and writes the sides through Surface::at.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "alignment_sweep.h"
#include "pxkcc.h"
#include "random.h"
#include "surface.h"
#include "sweep.h"

namespace colortest {

using pxktest::GuardOptions;
using pxktest::Rng;
using pxktest::Surface;

struct Side {
    bool planar;
    int channels;  // interleaved channels, or planes
};
inline constexpr Side kC3{false, 3};
inline constexpr Side kAC4{false, 4};
inline constexpr Side kP3{true, 3};
inline constexpr Side kP4{true, 4};

// The arguments of one call: a packed side by its row pointer, a planar side by its
// plane array (each is null when the call breaks it), then the steps and the size.
struct Args {
    const uint8_t* src;
    const uint8_t* const* srcPlanes;
    int32_t srcStep;
    uint8_t* dst;
    uint8_t* const* dstPlanes;
    int32_t dstStep;
    PxkSize size;
};

using Call = std::function<PxkResult(const Args&)>;
// The reference: converts `height` rows of `width` pixels with the export's walk.
using Reference = std::function<void(const Surface& src, Surface& dst, int width, int height)>;

struct Member {
    std::string name;
    Side src;
    Side dst;
    Call call;
    Reference reference;
    // The destination's fourth channel keeps its value (AC4 destinations).
    bool keepsAlpha = false;
};

inline std::ostream& operator<<(std::ostream& os, const Member& m) { return os << m.name; }

inline Surface makeSide(Side side, int width, int height, int step, const GuardOptions& options = {}) {
    return side.planar ? Surface::planar(width, height, side.channels, step, options)
                       : Surface::packed(width, height, side.channels, step, options);
}
inline int rowBytes(Side side, int width) { return side.planar ? width : width * side.channels; }

// One call and its reference on the same random images; the export's outcome against
// the reference's.
inline ::testing::AssertionResult runAgainstReference(const Member& m, int width, int height, int srcStep,
                                                      int dstStep, Rng& rng, const GuardOptions& srcOpt = {},
                                                      const GuardOptions& dstOpt = {}) {
    Surface src = makeSide(m.src, width, height, srcStep, srcOpt);
    Surface dst = makeSide(m.dst, width, height, dstStep, dstOpt);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    if (m.keepsAlpha) dst.protectChannel(3);
    Surface expected = dst.clone();
    m.reference(src, expected, width, height);
    src.snapshot();
    dst.snapshot();
    const PxkResult status =
        m.call(Args{src.data(), src.constPlanes(), src.step(), dst.data(), dst.planes(), dst.step(), {width, height}});
    return pxktest::sameOutcome(status, pxkOk, dst, expected, src);
}

// Every width, heights and step plans of the sweep. With positiveSteps, the plans with
// zero or negative steps are left out (for the exports that refuse them).
inline void sweepAgainstReference(const Member& m, bool positiveSteps = false) {
    using pxktest::StepKind;
    const auto positive = [](StepKind k) {
        return k == StepKind::Tight || k == StepKind::Padded || k == StepKind::Odd;
    };
    for (int width : pxktest::sweepWidths()) {
        for (int height : pxktest::sweepHeights(width)) {
            for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
                if (positiveSteps && !(positive(plan.src) && positive(plan.dst))) continue;
                Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(width), uint32_t(height),
                                                          uint32_t(plan.src) * 8 + uint32_t(plan.dst)}));
                const int srcStep = pxktest::stepFor(plan.src, size_t(rowBytes(m.src, width)));
                const int dstStep = pxktest::stepFor(plan.dst, size_t(rowBytes(m.dst, width)));
                const ::testing::AssertionResult r = runAgainstReference(m, width, height, srcStep, dstStep, rng);
                ASSERT_TRUE(r) << m.name << " width " << width << " height " << height << " "
                               << pxktest::stepPlanName(plan);
            }
        }
    }
}

// Results depend on the column alone, never on the addresses.
inline void alignmentsAgainstReference(const Member& m) {
    pxktest::everyAlignment(m.name, [&](const GuardOptions& s, const GuardOptions& d, Rng& rng) {
        return runAgainstReference(m, 45, 2, rowBytes(m.src, 45) + 5, rowBytes(m.dst, 45) + 3, rng, s, d);
    });
}

// What to break in a call that must fail.
struct Breakage {
    bool nullSrc = false;   // the packed pointer or the plane array
    bool nullDst = false;
    int nullSrcPlane = -1;  // an entry of a plane array set to null
    int nullDstPlane = -1;
    int32_t srcStep = 16;   // the images have rows of 4 pixels of up to 4 bytes
    int32_t dstStep = 16;
    PxkSize size{4, 2};
};

// A call with the breakage returns `expected` and leaves the destination as it was.
inline ::testing::AssertionResult failsWith(const Member& m, PxkResult expected, const Breakage& b) {
    Surface src = makeSide(m.src, 4, 2, 16);
    Surface dst = makeSide(m.dst, 4, 2, 16);
    Rng rng(7);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    dst.snapshot();
    std::vector<const uint8_t*> srcPlanes;
    std::vector<uint8_t*> dstPlanes;
    for (int i = 0; i < src.imageCount(); ++i) srcPlanes.push_back(src.image(i).data());
    for (int i = 0; i < dst.imageCount(); ++i) dstPlanes.push_back(dst.image(i).data());
    if (b.nullSrcPlane >= 0) srcPlanes.at(size_t(b.nullSrcPlane)) = nullptr;
    if (b.nullDstPlane >= 0) dstPlanes.at(size_t(b.nullDstPlane)) = nullptr;
    const Args args{b.nullSrc ? nullptr : src.data(), b.nullSrc ? nullptr : srcPlanes.data(), b.srcStep,
                    b.nullDst ? nullptr : dst.data(),  b.nullDst ? nullptr : dstPlanes.data(), b.dstStep,
                    b.size};
    const PxkResult status = m.call(args);
    if (status != expected) return ::testing::AssertionFailure() << "status " << status << ", expected " << expected;
    return dst.unchanged();
}

// Null pointers (and each plane entry), then size; steps untested: zero and negative
// steps succeed.
inline void checkCommonStatuses(const Member& m) {
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, Breakage{true, false}));
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, Breakage{false, true}));
    Breakage both{true, true};
    both.size = {0, 0};
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, both)) << "pointers are tested before the size";
    for (int i = 0; m.src.planar && i < m.src.channels; ++i) {
        Breakage b;
        b.nullSrcPlane = i;
        EXPECT_TRUE(failsWith(m, pxkErrNullPtr, b)) << "source plane " << i;
    }
    for (int i = 0; m.dst.planar && i < m.dst.channels; ++i) {
        Breakage b;
        b.nullDstPlane = i;
        EXPECT_TRUE(failsWith(m, pxkErrNullPtr, b)) << "destination plane " << i;
    }
    for (PxkSize bad : {PxkSize{0, 2}, PxkSize{4, 0}, PxkSize{-1, 2}, PxkSize{4, -5}, PxkSize{INT32_MIN, 1}}) {
        Breakage b;
        b.size = bad;
        EXPECT_TRUE(failsWith(m, pxkErrSize, b)) << bad.width << " x " << bad.height;
    }
}

// Steps are not tested: zero and negative steps succeed.
inline void checkStepsUntested(const Member& m) {
    Surface src = makeSide(m.src, 4, 2, 16);
    Surface dst = makeSide(m.dst, 4, 2, 16);
    EXPECT_EQ(m.call(Args{src.data(), src.constPlanes(), 0, dst.data(), dst.planes(), 0, {4, 2}}), pxkOk);
    EXPECT_EQ(m.call(Args{src.data(), src.constPlanes(), -16, dst.data(), dst.planes(), 0, {4, 1}}), pxkOk);
}

// The outputs of one row of given pixels (one pixel = src.channels bytes), channel by
// channel.
inline std::vector<uint8_t> convertPixels(const Member& m, const std::vector<uint8_t>& pixels) {
    const int width = int(pixels.size()) / m.src.channels;
    Surface src = makeSide(m.src, width, 1, rowBytes(m.src, width));
    Surface dst = makeSide(m.dst, width, 1, rowBytes(m.dst, width));
    for (int x = 0; x < width; ++x)
        for (int c = 0; c < m.src.channels; ++c) src.at(x, 0, c) = pixels[size_t(x * m.src.channels + c)];
    dst.snapshot();
    EXPECT_EQ(m.call(Args{src.data(), src.constPlanes(), src.step(), dst.data(), dst.planes(), dst.step(),
                          {width, 1}}),
              pxkOk);
    EXPECT_TRUE(dst.guardsIntact());
    std::vector<uint8_t> out;
    for (int x = 0; x < width; ++x)
        for (int c = 0; c < m.dst.channels; ++c) out.push_back(dst.at(x, 0, c));
    return out;
}

// Runs the export and its reference over every 8-bit colour (three channels; a fourth
// takes a pattern), in slices of 2^20 colours, in rows of `width` pixels: a width that
// puts every pixel in the main loop, or every pixel in the tail. Under the sanitizers,
// one slice in 16.
inline void everyColour(const Member& m, int width) {
    const uint32_t slice = 1u << 20;
    const int height = int((slice + uint32_t(width) - 1) / uint32_t(width));
    Surface src = makeSide(m.src, width, height, rowBytes(m.src, width));
    Surface dst = makeSide(m.dst, width, height, rowBytes(m.dst, width));
    for (uint32_t first = 0; first < (1u << 24); first += pxktest::kLightSweep ? 16 * slice : slice) {
        uint32_t v = first;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x, ++v) {
                src.at(x, y, 0) = uint8_t(v >> 16);
                src.at(x, y, 1) = uint8_t(v >> 8);
                src.at(x, y, 2) = uint8_t(v);
                if (m.src.channels == 4) src.at(x, y, 3) = uint8_t(v * 7);
            }
        }
        Surface expected = dst.clone();
        m.reference(src, expected, width, height);
        ASSERT_EQ(m.call(Args{src.data(), src.constPlanes(), src.step(), dst.data(), dst.planes(), dst.step(),
                              {width, height}}),
                  pxkOk);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                for (int c = 0; c < m.dst.channels; ++c) {
                    ASSERT_EQ(int(dst.at(x, y, c)), int(expected.at(x, y, c)))
                        << m.name << " width " << width << " source " << int(src.at(x, y, 0)) << ","
                        << int(src.at(x, y, 1)) << "," << int(src.at(x, y, 2)) << " channel " << c;
                }
            }
        }
    }
}

// A test name from a member's name.
inline std::string testName(const ::testing::TestParamInfo<Member>& info) {
    std::string n = info.param.name;
    for (char& c : n)
        if (c == '_') c = 'x';
    return n;
}

// The arguments of an export with packed sides.
template <class Fn>
Call packedCall(Fn fn) {
    return [fn](const Args& a) { return fn(a.src, a.srcStep, a.dst, a.dstStep, a.size); };
}

// A reference model of one pixel: channels 0 to 2 from the source's channels 0 to 2,
// by the main loop's rule or by the tail's.
using PixelModel = void (*)(const uint8_t in[3], bool tail, uint8_t out[3]);

// The region walk of a reference: columns below width - width % group by the main
// loop's rule, the rest by the tail's; only channels 0 to 2 are written.
inline Reference byColumns(int group, PixelModel model) {
    return [group, model](const Surface& src, Surface& dst, int width, int height) {
        const int mainColumns = width - width % group;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const uint8_t in[3] = {src.at(x, y, 0), src.at(x, y, 1), src.at(x, y, 2)};
                uint8_t out[3];
                model(in, x >= mainColumns, out);
                for (int c = 0; c < 3; ++c) dst.at(x, y, c) = out[c];
            }
        }
    };
}

// The C3R member (main loop in groups of 8) and the AC4R member (groups of 4, alpha
// kept) of one conversion.
template <class Fn>
Member c3Member(const std::string& name, Fn fn, PixelModel model) {
    return Member{name, kC3, kC3, packedCall(fn), byColumns(8, model)};
}
template <class Fn>
Member ac4Member(const std::string& name, Fn fn, PixelModel model) {
    return Member{name, kAC4, kAC4, packedCall(fn), byColumns(4, model), true};
}

// Channels 0 to 2 of column x of a row of `width` copies of one pixel.
inline std::vector<uint8_t> pixelAt(const Member& m, const std::vector<uint8_t>& pixel, int width, int x) {
    std::vector<uint8_t> row;
    for (int i = 0; i < width; ++i) row.insert(row.end(), pixel.begin(), pixel.end());
    const std::vector<uint8_t> out = convertPixels(m, row);
    return std::vector<uint8_t>(out.begin() + x * m.dst.channels, out.begin() + x * m.dst.channels + 3);
}

}  // namespace colortest

// The tests every member of a family of interleaved members with untested steps runs:
// the sweep against the reference, misaligned runs, statuses, untested steps, and every
// colour at a width of 256 (no tail) and of 3 (tail only).
#define COLORTEST_PACKED_MEMBER_SUITE(Suite, ...)                                                          \
    class Suite : public ::testing::TestWithParam<colortest::Member> {};                                   \
    TEST_P(Suite, MatchesReferenceAtEveryWidthHeightAndStep) { colortest::sweepAgainstReference(GetParam()); } \
    TEST_P(Suite, ResultsDependOnColumnNotAddress) { colortest::alignmentsAgainstReference(GetParam()); }   \
    TEST_P(Suite, NullPointersThenSize) { colortest::checkCommonStatuses(GetParam()); }                     \
    TEST_P(Suite, StepsAreNotTested) { colortest::checkStepsUntested(GetParam()); }                         \
    TEST_P(Suite, EveryColourInTheMainLoop) { colortest::everyColour(GetParam(), 256); }                   \
    TEST_P(Suite, EveryColourInTheTail) { colortest::everyColour(GetParam(), 3); }                          \
    INSTANTIATE_TEST_SUITE_P(Members, Suite, ::testing::Values(__VA_ARGS__), colortest::testName)

namespace colortest {

// A test name from the name of a member of any harness (one with a `name`).
template <class M>
std::string memberTestName(const ::testing::TestParamInfo<M>& info) {
    std::string n = info.param.name;
    for (char& c : n)
        if (c == '_') c = 'x';
    return n;
}

}  // namespace colortest
