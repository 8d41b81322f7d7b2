// The sweep of an interleaved export of 16-bit or float samples against its reference
// model: every width of the sweep, several heights, every step plan (the steps the
// export takes carry odd low bits that its halving or quartering drops), random
// contents everywhere (guards and the destination's old samples included); the status,
// every destination sample, the guards, the fourth samples of AC4 destinations and
// the source are checked. Also misaligned rows, the statuses and their order, and
// untested steps.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
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
using pxktest::Rng;

template <class T>
using Call = std::function<PxkResult(const T*, int32_t, T*, int32_t, PxkSize)>;
// The reference of one pixel: channels 0 to 2 of the source, by the main loop's rule
// or by the tail's.
template <class T>
using PixelModel = std::function<void(const T in[3], bool tail, T out[3])>;
// A source sample drawn for a test: the generator sees the pixel's earlier channels,
// so that it can make ties and grays.
template <class T>
using SampleSource = std::function<void(Rng&, T px[3])>;

template <class T>
struct Member {
    std::string name;
    int channels;  // 3 (C3R) or 4 (AC4R), on both sides
    Call<T> call;
    PixelModel<T> model;
    SampleSource<T> draw;
};

template <class T>
std::ostream& operator<<(std::ostream& os, const Member<T>& m) {
    return os << m.name;
}

// The columns of the main loop: below width - width % 4.
inline int mainColumns(int width) { return width - width % 4; }

// The step an export uses: the byte step halved (16-bit) or quartered (float) by an
// arithmetic shift, in bytes again.
template <class T>
int32_t usedStep(int32_t step) {
    return sizeof(T) == 2 ? (step >> 1) * 2 : (step >> 2) * 4;
}

template <class T>
GuardedImage makeImage(const Member<T>& m, int width, int height, int step, const GuardOptions& o = {}) {
    return GuardedImage(pxktest::ImageGeometry{width, height, m.channels, int(sizeof(T)), step}, o);
}

template <class T>
void fillSource(const Member<T>& m, GuardedImage& src, Rng& rng) {
    src.fillRandom(rng);
    for (int y = 0; y < src.height(); ++y) {
        for (int x = 0; x < src.width(); ++x) {
            T px[3];
            m.draw(rng, px);
            for (int c = 0; c < 3; ++c) src.set<T>(x, y, c, px[c]);
        }
    }
    src.snapshot();
}

// The reference applied to every pixel of the region; the fourth samples are left.
template <class T>
void applyReference(const Member<T>& m, const GuardedImage& src, GuardedImage& dst) {
    const int tailFrom = mainColumns(src.width());
    for (int y = 0; y < src.height(); ++y) {
        for (int x = 0; x < src.width(); ++x) {
            const T in[3] = {src.get<T>(x, y, 0), src.get<T>(x, y, 1), src.get<T>(x, y, 2)};
            T out[3];
            m.model(in, x >= tailFrom, out);
            for (int c = 0; c < 3; ++c) dst.set<T>(x, y, c, out[c]);
        }
    }
}

// Samples equal bit for bit; floats that are NaN on both sides count as equal (their
// payloads are not part of the result).
template <class T>
::testing::AssertionResult sameSamples(const GuardedImage& actual, const GuardedImage& expected) {
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            for (int c = 0; c < actual.channels(); ++c) {
                const T a = actual.get<T>(x, y, c), e = expected.get<T>(x, y, c);
                if (std::memcmp(&a, &e, sizeof(T)) == 0) continue;
                if constexpr (std::is_floating_point_v<T>) {
                    if (std::isnan(a) && std::isnan(e)) continue;
                }
                return ::testing::AssertionFailure() << "sample (x=" << x << ", y=" << y << ", c=" << c << ") is "
                                                     << +a << ", expected " << +e;
            }
        }
    }
    return ::testing::AssertionSuccess();
}

// One call and its reference on the same random images. The images are laid out with
// the steps that the export uses; the call gets callSrcStep and callDstStep.
template <class T>
::testing::AssertionResult runOnce(const Member<T>& m, int width, int height, int32_t callSrcStep,
                                   int32_t callDstStep, Rng& rng, const GuardOptions& so = {},
                                   const GuardOptions& dop = {}) {
    GuardedImage src = makeImage(m, width, height, usedStep<T>(callSrcStep), so);
    GuardedImage dst = makeImage(m, width, height, usedStep<T>(callDstStep), dop);
    fillSource(m, src, rng);
    dst.fillRandom(rng);
    if (m.channels == 4) dst.protectChannel(3);
    GuardedImage expected = dst.clone();
    applyReference(m, src, expected);
    const PxkResult status = m.call(reinterpret_cast<const T*>(src.data()), callSrcStep,
                                    reinterpret_cast<T*>(dst.data()), callDstStep, PxkSize{width, height});
    if (status != pxkOk) return ::testing::AssertionFailure() << "status " << status;
    if (auto r = sameSamples<T>(dst, expected); !r) return r;
    if (auto r = dst.guardsIntact(); !r) return r;
    return src.unchanged();
}

// Every width, heights and step plans of the sweep. The call's steps have low bits
// that the export drops: an odd step as the sweep gives it, the others with
// sizeof(T) - 1 added in every second plan.
template <class T>
void sweepAgainstReference(const Member<T>& m) {
    int planIndex = 0;
    for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
        const int32_t extra = (planIndex++ % 2) ? int32_t(sizeof(T)) - 1 : 0;
        for (int width : pxktest::sweepWidths()) {
            for (int height : pxktest::sweepHeights(width)) {
                Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(width), uint32_t(height),
                                                          uint32_t(plan.src) * 8 + uint32_t(plan.dst)}));
                const size_t rowBytes = size_t(width) * size_t(m.channels) * sizeof(T);
                const int32_t srcStep = usedStep<T>(pxktest::stepFor(plan.src, rowBytes)) + extra;
                const int32_t dstStep = usedStep<T>(pxktest::stepFor(plan.dst, rowBytes)) + extra;
                const ::testing::AssertionResult r = runOnce(m, width, height, srcStep, dstStep, rng);
                ASSERT_TRUE(r) << m.name << " width " << width << " height " << height << " "
                               << pxktest::stepPlanName(plan) << " steps " << srcStep << ", " << dstStep;
            }
        }
    }
}

// Results depend on the column alone, never on the addresses (rows at any byte).
template <class T>
void alignmentsAgainstReference(const Member<T>& m) {
    const int32_t row = int32_t(45 * m.channels * sizeof(T));
    pxktest::everyAlignment(m.name, [&](const GuardOptions& s, const GuardOptions& d, Rng& rng) {
        return runOnce(m, 45, 2, row + 16, row + 8, rng, s, d);
    });
}

// A call with null pointers or a bad size returns `expected` and writes nothing.
template <class T>
::testing::AssertionResult failsWith(const Member<T>& m, PxkResult expected, bool nullSrc, bool nullDst,
                                     PxkSize size) {
    GuardedImage src = makeImage(m, 4, 2, 64);
    GuardedImage dst = makeImage(m, 4, 2, 64);
    Rng rng(11);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    dst.snapshot();
    const PxkResult status = m.call(nullSrc ? nullptr : reinterpret_cast<const T*>(src.data()), 64,
                                    nullDst ? nullptr : reinterpret_cast<T*>(dst.data()), 64, size);
    if (status != expected) return ::testing::AssertionFailure() << "status " << status << ", expected " << expected;
    return dst.unchanged();
}

template <class T>
void checkStatuses(const Member<T>& m) {
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, true, false, {4, 2}));
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, false, true, {4, 2}));
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, true, true, {0, 0})) << "pointers are tested before the size";
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, false, true, {-3, 2})) << "pointers are tested before the size";
    for (PxkSize bad : {PxkSize{0, 2}, PxkSize{4, 0}, PxkSize{-1, 2}, PxkSize{4, -5}, PxkSize{INT32_MIN, 1}}) {
        EXPECT_TRUE(failsWith(m, pxkErrSize, false, false, bad)) << bad.width << " x " << bad.height;
    }
}

// Steps are not tested: zero, negative and one-byte steps succeed.
template <class T>
void checkStepsUntested(const Member<T>& m) {
    GuardedImage src = makeImage(m, 4, 2, 64);
    GuardedImage dst = makeImage(m, 4, 2, 64);
    const auto s = reinterpret_cast<const T*>(src.data());
    const auto d = reinterpret_cast<T*>(dst.data());
    EXPECT_EQ(m.call(s, 0, d, 0, {4, 2}), pxkOk);
    EXPECT_EQ(m.call(s, -1, d, 1, {4, 1}), pxkOk);
}

// The outputs (channels 0 to 2 of each pixel) of one row of given pixels of three
// samples each; an AC4 member's fourth samples are checked to keep their value.
template <class T>
std::vector<T> convertRow(const Member<T>& m, const std::vector<T>& pixels) {
    const int width = int(pixels.size()) / 3;
    const int32_t row = int32_t(width * m.channels * sizeof(T));
    GuardedImage src = makeImage(m, width, 1, row);
    GuardedImage dst = makeImage(m, width, 1, row);
    Rng rng(5);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    for (int x = 0; x < width; ++x)
        for (int c = 0; c < 3; ++c) src.set<T>(x, 0, c, pixels[size_t(3 * x + c)]);
    if (m.channels == 4) dst.protectChannel(3);
    dst.snapshot();
    EXPECT_EQ(m.call(reinterpret_cast<const T*>(src.data()), row, reinterpret_cast<T*>(dst.data()), row,
                     PxkSize{width, 1}),
              pxkOk);
    EXPECT_TRUE(dst.guardsIntact());
    std::vector<T> out;
    for (int x = 0; x < width; ++x)
        for (int c = 0; c < 3; ++c) out.push_back(dst.get<T>(x, 0, c));
    return out;
}

// Channels 0 to 2 of column x of a row of `width` copies of one pixel.
template <class T>
std::vector<T> pixelAt(const Member<T>& m, const std::vector<T>& pixel, int width, int x) {
    std::vector<T> row;
    for (int i = 0; i < width; ++i) row.insert(row.end(), pixel.begin(), pixel.end());
    const std::vector<T> out = convertRow(m, row);
    return std::vector<T>(out.begin() + 3 * x, out.begin() + 3 * x + 3);
}

template <class T>
std::string testName(const ::testing::TestParamInfo<Member<T>>& info) {
    std::string n = info.param.name;
    for (char& c : n)
        if (c == '_') c = 'x';
    return n;
}

}  // namespace widetest

// The tests of every member of a family of interleaved 16-bit or float members.
#define WIDETEST_MEMBER_SUITE(Suite, T, ...)                                                              \
    class Suite : public ::testing::TestWithParam<widetest::Member<T>> {};                                \
    TEST_P(Suite, MatchesReferenceAtEveryWidthHeightAndStep) { widetest::sweepAgainstReference(GetParam()); } \
    TEST_P(Suite, ResultsDependOnColumnNotAddress) { widetest::alignmentsAgainstReference(GetParam()); }  \
    TEST_P(Suite, NullPointersThenSize) { widetest::checkStatuses(GetParam()); }                           \
    TEST_P(Suite, StepsAreNotTested) { widetest::checkStepsUntested(GetParam()); }                         \
    INSTANTIATE_TEST_SUITE_P(Members, Suite, ::testing::Values(__VA_ARGS__), widetest::testName<T>)
