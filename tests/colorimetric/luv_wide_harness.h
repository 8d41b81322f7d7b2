// The sweep of an interleaved export of 16-bit or float samples against a reference
// model of one pixel: every width of the sweep, several heights, every step plan (the
// export clears the low bits of its byte steps: 1 for 16-bit samples, 2 for floats, so
// the images are laid out with the cleared steps), random samples; the status, every
// destination sample, the guards, the fourth samples of AC4 destinations and the
// source are checked. Also misaligned rows, statuses and their order, and the outputs
// of given pixels.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "alignment_sweep.h"
#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace widetest {

using pxktest::GuardedImage;
using pxktest::GuardOptions;
using pxktest::ImageGeometry;
using pxktest::Rng;

// One export: In and Out samples, 3 or 4 samples a pixel on both sides, the column
// group of its main loop, and the model of one pixel (channels 0 to 2 of the source
// to channels 0 to 2 of the destination; `tail` for the columns past the main loop).
template <class In, class Out>
struct Member {
    std::string name;
    int channels;
    int group;
    PxkResult (*call)(const In*, int32_t, Out*, int32_t, PxkSize);
    void (*model)(const In in[3], bool tail, Out out[3]);
    // The range of random float samples (float sources only).
    float lo = 0.0f, hi = 1.0f;
};

template <class In, class Out>
std::ostream& operator<<(std::ostream& os, const Member<In, Out>& m) {
    return os << m.name;
}

template <class T>
constexpr int stepBitsOf() {
    return sizeof(T) == 4 ? 3 : (sizeof(T) == 2 ? 1 : 0);
}

// Random samples: any bits for integer samples; floats uniform in [lo, hi), with a few
// exact zeros and ones.
template <class T>
void fillSamples(GuardedImage& img, Rng& rng, float lo, float hi) {
    img.fillRandom(rng);
    if constexpr (std::is_floating_point_v<T>) {
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
                for (int c = 0; c < img.channels(); ++c) {
                    const uint32_t pick = rng.next32() % 64;
                    const float v = pick == 0 ? 0.0f : (pick == 1 ? 1.0f : lo + (hi - lo) * float(rng.unit()));
                    img.set<T>(x, y, c, v);
                }
        img.snapshot();
    }
}

// The reference over a region: columns below width - width % group by the main loop's
// rule, the rest by the tail's; only samples 0 to 2 are written.
template <class In, class Out>
void referenceRegion(const Member<In, Out>& m, const GuardedImage& src, GuardedImage& dst) {
    const int width = src.width(), mainColumns = width - width % m.group;
    for (int y = 0; y < src.height(); ++y) {
        for (int x = 0; x < width; ++x) {
            In in[3];
            Out out[3];
            for (int c = 0; c < 3; ++c) in[c] = src.get<In>(x, y, c);
            m.model(in, x >= mainColumns, out);
            for (int c = 0; c < 3; ++c) dst.set<Out>(x, y, c, out[c]);
        }
    }
}

template <class In, class Out>
::testing::AssertionResult runOnce(const Member<In, Out>& m, int width, int height, int srcStep, int dstStep,
                                   uint32_t seed, const GuardOptions& srcOpt = {}, const GuardOptions& dstOpt = {}) {
    Rng rng(seed);
    const int srcEff = srcStep & ~stepBitsOf<In>(), dstEff = dstStep & ~stepBitsOf<Out>();
    GuardedImage src(ImageGeometry{width, height, m.channels, int(sizeof(In)), srcEff}, srcOpt);
    GuardedImage dst(ImageGeometry{width, height, m.channels, int(sizeof(Out)), dstEff}, dstOpt);
    fillSamples<In>(src, rng, m.lo, m.hi);
    dst.fillRandom(rng);
    if (m.channels == 4) {
        for (int b = 0; b < int(sizeof(Out)); ++b) dst.protectChannel(3 * int(sizeof(Out)) + b);
    }
    dst.snapshot();
    GuardedImage expected = dst.clone();
    referenceRegion(m, src, expected);
    const PxkResult r = m.call(reinterpret_cast<const In*>(src.data()), srcStep, reinterpret_cast<Out*>(dst.data()),
                               dstStep, PxkSize{width, height});
    if (r != pxkOk) return ::testing::AssertionFailure() << "status " << r;
    auto ok = pxktest::sameRegion(dst, expected);
    if (!ok) return ok;
    ok = dst.guardsIntact();
    if (!ok) return ok;
    return src.unchanged();
}

// Every width, height and step plan of the sweep.
template <class In, class Out>
void sweep(const Member<In, Out>& m) {
    for (int width : pxktest::sweepWidths()) {
        for (int height : pxktest::sweepHeights(width)) {
            for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
                const int srcStep = pxktest::stepFor(plan.src, size_t(width) * m.channels * sizeof(In));
                const int dstStep = pxktest::stepFor(plan.dst, size_t(width) * m.channels * sizeof(Out));
                const uint32_t seed = pxktest::seedFor(m.name.c_str(), {uint32_t(width), uint32_t(height),
                                                                       uint32_t(plan.src) * 8 + uint32_t(plan.dst)});
                ASSERT_TRUE(runOnce(m, width, height, srcStep, dstStep, seed))
                    << m.name << " width " << width << " height " << height << " " << pxktest::stepPlanName(plan);
            }
        }
    }
}

// Rows at every alignment: results depend on the column alone.
template <class In, class Out>
void alignments(const Member<In, Out>& m) {
    pxktest::everyAlignment(m.name, [&](const GuardOptions& s, const GuardOptions& d, Rng& rng) {
        const int srcStep = 45 * m.channels * int(sizeof(In)) + 4 * int(sizeof(In));
        const int dstStep = 45 * m.channels * int(sizeof(Out)) + 8 * int(sizeof(Out));
        return runOnce(m, 45, 2, srcStep, dstStep, rng.next32(), s, d);
    });
}

// A call with the given pointers and size returns `expected` and writes nothing.
template <class In, class Out>
::testing::AssertionResult failsWith(const Member<In, Out>& m, PxkResult expected, bool nullSrc, bool nullDst,
                                     PxkSize size) {
    GuardedImage src(ImageGeometry{4, 2, m.channels, int(sizeof(In)), 4 * m.channels * int(sizeof(In))});
    GuardedImage dst(ImageGeometry{4, 2, m.channels, int(sizeof(Out)), 4 * m.channels * int(sizeof(Out))});
    Rng rng(11);
    fillSamples<In>(src, rng, m.lo, m.hi);
    dst.fillRandom(rng);
    const PxkResult r = m.call(nullSrc ? nullptr : reinterpret_cast<const In*>(src.data()), src.step(),
                               nullDst ? nullptr : reinterpret_cast<Out*>(dst.data()), dst.step(), size);
    if (r != expected) return ::testing::AssertionFailure() << "status " << r << ", expected " << expected;
    return dst.unchanged();
}

// Null pointers, then the size; steps are not tested.
template <class In, class Out>
void statuses(const Member<In, Out>& m) {
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, true, false, {4, 2}));
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, false, true, {4, 2}));
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, true, true, {0, 0})) << "pointers are tested before the size";
    for (PxkSize bad : {PxkSize{0, 2}, PxkSize{4, 0}, PxkSize{-1, 2}, PxkSize{4, -5}, PxkSize{INT32_MIN, 1}}) {
        EXPECT_TRUE(failsWith(m, pxkErrSize, false, false, bad)) << bad.width << " x " << bad.height;
    }
    // Zero and negative steps are taken as they come.
    GuardedImage src(ImageGeometry{4, 2, m.channels, int(sizeof(In)), 64});
    GuardedImage dst(ImageGeometry{4, 2, m.channels, int(sizeof(Out)), 64});
    EXPECT_EQ(m.call(reinterpret_cast<const In*>(src.data()), 0, reinterpret_cast<Out*>(dst.data()), 0, {4, 2}), pxkOk);
    EXPECT_EQ(m.call(reinterpret_cast<const In*>(src.row(1)), -64, reinterpret_cast<Out*>(dst.data()), 1, {4, 2}),
              pxkOk);
}

// The outputs (samples 0 to 2) of column x of a row of `width` copies of one pixel.
template <class In, class Out>
std::vector<Out> pixelAt(const Member<In, Out>& m, const std::vector<In>& pixel, int width, int x) {
    const int rowIn = width * m.channels * int(sizeof(In)), rowOut = width * m.channels * int(sizeof(Out));
    GuardedImage src(ImageGeometry{width, 1, m.channels, int(sizeof(In)), rowIn});
    GuardedImage dst(ImageGeometry{width, 1, m.channels, int(sizeof(Out)), rowOut});
    for (int i = 0; i < width; ++i)
        for (int c = 0; c < m.channels; ++c) src.set<In>(i, 0, c, pixel[size_t(c % int(pixel.size()))]);
    dst.fill(0, 0x5A);
    EXPECT_EQ(m.call(reinterpret_cast<const In*>(src.data()), rowIn, reinterpret_cast<Out*>(dst.data()), rowOut,
                     {width, 1}),
              pxkOk);
    EXPECT_TRUE(dst.guardsIntact());
    return {dst.get<Out>(x, 0, 0), dst.get<Out>(x, 0, 1), dst.get<Out>(x, 0, 2)};
}

struct TestName {
    template <class P>
    std::string operator()(const ::testing::TestParamInfo<P>& info) const {
        std::string n = info.param.name;
        for (char& c : n)
            if (c == '_') c = 'x';
        return n;
    }
};

}  // namespace widetest

// The tests every member of a family of wide interleaved members runs.
#define WIDETEST_MEMBER_SUITE(Suite, In, Out, ...)                                                  \
    class Suite : public ::testing::TestWithParam<widetest::Member<In, Out>> {};                    \
    TEST_P(Suite, MatchesReferenceAtEveryWidthHeightAndStep) { widetest::sweep(GetParam()); }       \
    TEST_P(Suite, ResultsDependOnColumnNotAddress) { widetest::alignments(GetParam()); }            \
    TEST_P(Suite, NullPointersThenSizeStepsUntested) { widetest::statuses(GetParam()); }            \
    INSTANTIATE_TEST_SUITE_P(Members, Suite, ::testing::Values(__VA_ARGS__), widetest::TestName())
