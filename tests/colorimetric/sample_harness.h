// The sweep of an interleaved export on 16-bit or float samples against its reference
// model: every width of the sweep, several heights, every step plan (the byte steps
// handed to the call may carry low bits, which the export drops: the images are laid
// out with the step that remains), random contents everywhere (guards and the
// destination's old samples included); the status, every destination sample bit for
// bit, the guards, the fourth samples of AC4 destinations and the source are checked.
// Also misaligned rows, the statuses and their order, and single pixels by value.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "alignment_sweep.h"
#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace sampletest {

using pxktest::GuardedImage;
using pxktest::GuardOptions;
using pxktest::ImageGeometry;
using pxktest::Rng;

// An export with its byte pointers: (src, srcStep, dst, dstStep, size).
using Call = std::function<PxkResult(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize)>;
// The reference: converts `height` rows of `width` pixels of src into dst.
using Reference = std::function<void(const GuardedImage& src, GuardedImage& dst, int width, int height)>;
// Random source contents of the sample type.
using Filler = std::function<void(GuardedImage& image, Rng& rng)>;

struct Member {
    std::string name;
    int channels;     // 3 or 4 on both sides
    int sampleBytes;  // 2 or 4
    Call call;
    Reference reference;
    Filler fillSource;
};

inline std::ostream& operator<<(std::ostream& os, const Member& m) { return os << m.name; }

inline std::string testName(const ::testing::TestParamInfo<Member>& info) {
    std::string n = info.param.name;
    for (char& c : n)
        if (c == '_') c = 'x';
    return n;
}

// A one-pixel model: channels 0 to 2 of the result from channels 0 to 2 of the source,
// by the group's rule or (tail) by the tail's.
template <class T>
using PixelModel = void (*)(const T in[3], bool tail, T out[3]);

// The walk of a reference: columns below width & ~3 by the group's rule, the rest by
// the tail's; channels 0 to 2 written, a fourth left as it was.
template <class T>
Reference byColumns(PixelModel<T> model) {
    return [model](const GuardedImage& src, GuardedImage& dst, int width, int height) {
        const int groups = width & ~3;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const T in[3] = {src.get<T>(x, y, 0), src.get<T>(x, y, 1), src.get<T>(x, y, 2)};
                T out[3];
                model(in, x >= groups, out);
                for (int c = 0; c < 3; ++c) dst.set<T>(x, y, c, out[c]);
            }
        }
    };
}

// Every byte random: 16-bit samples over their whole range.
inline void randomBytes(GuardedImage& image, Rng& rng) { image.fillRandom(rng); }

// Floats mostly in -0.25..1.25, with a sprinkling of values outside, zeros of both
// signs, infinities, NaN and subnormals.
inline float randomFloat(Rng& rng) {
    const uint32_t pick = rng.next32() % 64;
    switch (pick) {
        case 0: return std::numeric_limits<float>::quiet_NaN();
        case 1: return std::numeric_limits<float>::infinity();
        case 2: return -std::numeric_limits<float>::infinity();
        case 3: return -0.0f;
        case 4: return 0.0f;
        case 5: return std::numeric_limits<float>::denorm_min() * float(rng.next32() % 1000);
        case 6: return 1.0f;
        case 7: return float(int32_t(rng.next32() % 2001) - 1000);
        default: return -0.25f + 1.5f * float(rng.next32() >> 8) / 16777216.0f;
    }
}
inline void randomFloats(GuardedImage& image, Rng& rng) {
    image.fillRandom(rng);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            for (int c = 0; c < image.channels(); ++c) image.set<float>(x, y, c, randomFloat(rng));
    image.snapshot();
}

// The member of one export: sample type T, C3 or AC4.
template <class T, class Fn>
Member member(const std::string& name, int channels, Fn fn, PixelModel<T> model) {
    Call call = [fn](const uint8_t* s, int32_t ss, uint8_t* d, int32_t ds, PxkSize size) {
        return fn(reinterpret_cast<const T*>(s), ss, reinterpret_cast<T*>(d), ds, size);
    };
    return Member{name, channels, int(sizeof(T)), call, byColumns<T>(model),
                  std::is_same<T, float>::value ? Filler(randomFloats) : Filler(randomBytes)};
}

inline int rowBytes(const Member& m, int width) { return width * m.channels * m.sampleBytes; }
// The step in bytes that the export uses for a step handed to it: its low bits cleared
// (an arithmetic shift down to samples and back).
inline int usedStep(const Member& m, int step) { return int(uint32_t(step) & ~uint32_t(m.sampleBytes - 1)); }

inline GuardedImage makeImage(const Member& m, int width, int height, int step, const GuardOptions& o = {}) {
    return GuardedImage(ImageGeometry{width, height, m.channels, m.sampleBytes, step}, o);
}

inline float floatOfBits(uint32_t bits) {
    float f;
    std::memcpy(&f, &bits, 4);
    return f;
}
inline uint32_t bitsOfFloat(float f) {
    uint32_t bits;
    std::memcpy(&bits, &f, 4);
    return bits;
}

// Both samples NaN (floats only). Which NaN a sum of two NaN operands passes on hangs
// on the order in which the compiler puts the operands of the reference's sums; any NaN
// result matches any other here, and the NaN cases of each family pin the exports'
// own choice (the first term's NaN).
inline bool bothNaN(const Member& m, const uint8_t* a, const uint8_t* b) {
    if (m.sampleBytes != 4) return false;
    float fa, fb;
    std::memcpy(&fa, a, 4);
    std::memcpy(&fb, b, 4);
    return std::isnan(fa) && std::isnan(fb);
}

// Every sample of the region the same bits in both (a NaN float: NaN in both).
inline ::testing::AssertionResult sameSamples(const Member& m, const GuardedImage& actual,
                                              const GuardedImage& expected) {
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            for (int c = 0; c < m.channels; ++c) {
                const uint8_t* a = actual.sampleAddress(x, y, c);
                const uint8_t* e = expected.sampleAddress(x, y, c);
                if (std::memcmp(a, e, size_t(m.sampleBytes)) != 0 && !bothNaN(m, a, e)) {
                    uint32_t a = 0, e = 0;
                    std::memcpy(&a, actual.sampleAddress(x, y, c), size_t(m.sampleBytes));
                    std::memcpy(&e, expected.sampleAddress(x, y, c), size_t(m.sampleBytes));
                    return ::testing::AssertionFailure() << "at x " << x << " y " << y << " channel " << c
                                                         << ": bits 0x" << std::hex << a << ", expected 0x" << e;
                }
            }
        }
    }
    return ::testing::AssertionSuccess();
}

// One call and its reference on the same random images, with the byte steps handed to
// the call (the images use what the export makes of them).
inline ::testing::AssertionResult runAgainstReference(const Member& m, int width, int height, int srcStep,
                                                      int dstStep, Rng& rng, const GuardOptions& srcOpt = {},
                                                      const GuardOptions& dstOpt = {}) {
    GuardedImage src = makeImage(m, width, height, usedStep(m, srcStep), srcOpt);
    GuardedImage dst = makeImage(m, width, height, usedStep(m, dstStep), dstOpt);
    m.fillSource(src, rng);
    dst.fillRandom(rng);
    if (m.channels == 4) dst.protectChannel(3);
    GuardedImage expected = dst.clone();
    m.reference(src, expected, width, height);
    src.snapshot();
    dst.snapshot();
    const PxkResult status = m.call(src.data(), srcStep, dst.data(), dstStep, {width, height});
    if (status != pxkOk) return ::testing::AssertionFailure() << "status " << status;
    const ::testing::AssertionResult same = sameSamples(m, dst, expected);
    if (!same) return same;
    const ::testing::AssertionResult guards = dst.guardsIntact();
    if (!guards) return ::testing::AssertionFailure() << "destination: " << guards.message();
    const ::testing::AssertionResult source = src.unchanged();
    if (!source) return ::testing::AssertionFailure() << "source: " << source.message();
    return ::testing::AssertionSuccess();
}

inline void sweepAgainstReference(const Member& m) {
    for (int width : pxktest::sweepWidths()) {
        for (int height : pxktest::sweepHeights(width)) {
            for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
                Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(width), uint32_t(height),
                                                          uint32_t(plan.src) * 8 + uint32_t(plan.dst)}));
                const int srcStep = pxktest::stepFor(plan.src, size_t(rowBytes(m, width)));
                const int dstStep = pxktest::stepFor(plan.dst, size_t(rowBytes(m, width)));
                ASSERT_TRUE(runAgainstReference(m, width, height, srcStep, dstStep, rng))
                    << m.name << " width " << width << " height " << height << " " << pxktest::stepPlanName(plan);
            }
        }
    }
}

// Steps with low bits set, of both signs: the export drops the low bits (a step of
// -(row + 17) counts as -(row + 18) for 16-bit samples and -(row + 20) for floats).
inline void stepsLoseTheirLowBits(const Member& m) {
    for (int width : {1, 4, 7, 13}) {
        const int row = rowBytes(m, width);
        for (int extra = 1; extra < 4; ++extra) {
            const int steps[][2] = {{row + 16 + extra, row + extra}, {-(row + 16 + extra), row + 32 + extra},
                                    {row + extra, -(row + extra)}};
            for (const auto& s : steps) {
                Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(width), uint32_t(s[0]), uint32_t(s[1])}));
                EXPECT_TRUE(runAgainstReference(m, width, 3, s[0], s[1], rng))
                    << m.name << " width " << width << " steps " << s[0] << ", " << s[1];
            }
        }
    }
}

// Results depend on the column alone, never on the addresses (rows at odd addresses
// included).
inline void alignmentsAgainstReference(const Member& m) {
    pxktest::everyAlignment(m.name, [&](const GuardOptions& s, const GuardOptions& d, Rng& rng) {
        return runAgainstReference(m, 45, 2, rowBytes(m, 45) + 6, rowBytes(m, 45) + 2, rng, s, d);
    });
}

// A call with the given pointers nulled and size returns `expected` and writes nothing.
inline ::testing::AssertionResult failsWith(const Member& m, PxkResult expected, bool nullSrc, bool nullDst,
                                            PxkSize size) {
    GuardedImage src = makeImage(m, 4, 2, 64);
    GuardedImage dst = makeImage(m, 4, 2, 64);
    Rng rng(11);
    m.fillSource(src, rng);
    dst.fillRandom(rng);
    dst.snapshot();
    const PxkResult status = m.call(nullSrc ? nullptr : src.data(), 64, nullDst ? nullptr : dst.data(), 64, size);
    if (status != expected) return ::testing::AssertionFailure() << "status " << status << ", expected " << expected;
    return dst.unchanged();
}

inline void checkStatuses(const Member& m) {
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, true, false, {4, 2}));
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, false, true, {4, 2}));
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, true, true, {0, 0})) << "pointers are tested before the size";
    EXPECT_TRUE(failsWith(m, pxkErrNullPtr, false, true, {-3, 2})) << "pointers are tested before the size";
    for (PxkSize bad : {PxkSize{0, 2}, PxkSize{4, 0}, PxkSize{-1, 2}, PxkSize{4, -5}, PxkSize{INT32_MIN, 1},
                        PxkSize{1, INT32_MIN}}) {
        EXPECT_TRUE(failsWith(m, pxkErrSize, false, false, bad)) << bad.width << " x " << bad.height;
    }
}

// Steps are not tested: zero and negative steps succeed (and convert, as the sweep
// shows).
inline void checkStepsUntested(const Member& m) {
    GuardedImage src = makeImage(m, 4, 2, 64);
    GuardedImage dst = makeImage(m, 4, 2, 64);
    EXPECT_EQ(m.call(src.data(), 0, dst.data(), 0, {4, 2}), pxkOk);
    EXPECT_EQ(m.call(src.data(), -64, dst.data(), 0, {4, 1}), pxkOk);
    EXPECT_EQ(m.call(src.data(), -1, dst.data(), 1, {4, 2}), pxkOk);
}

// Channels 0 to 2 of column x of a row of `width` copies of one pixel (a fourth
// channel, if any, set to `alpha` in the source and checked unchanged in the
// destination).
template <class T, class Fn>
std::vector<T> pixelAt(Fn fn, int channels, const std::vector<T>& pixel, int width, int x) {
    const int bytes = width * channels * int(sizeof(T));
    GuardedImage src(ImageGeometry{width, 1, channels, int(sizeof(T)), bytes});
    GuardedImage dst(ImageGeometry{width, 1, channels, int(sizeof(T)), bytes});
    Rng rng(3);
    dst.fillRandom(rng);
    for (int i = 0; i < width; ++i)
        for (int c = 0; c < channels; ++c) src.set<T>(i, 0, c, pixel[size_t(c % 3)]);
    if (channels == 4) dst.protectChannel(3);
    dst.snapshot();
    EXPECT_EQ(fn(reinterpret_cast<const T*>(src.data()), bytes, reinterpret_cast<T*>(dst.data()), bytes,
                 PxkSize{width, 1}),
              pxkOk);
    EXPECT_TRUE(dst.guardsIntact());
    return {dst.get<T>(x, 0, 0), dst.get<T>(x, 0, 1), dst.get<T>(x, 0, 2)};
}

// Runs the export and its reference over every 16-bit value in each channel (the
// other two channels random), in rows of `width` pixels: a width that puts every pixel
// in a group (4096), or every pixel in the tail (3). Under the sanitizers, every 61st
// value.
inline void everyValue(const Member& m, int width) {
    const int stride = pxktest::kLightSweep ? 61 : 1;
    const int count = 65536 / stride;
    const int height = (count + width - 1) / width;
    GuardedImage src = makeImage(m, width, height, rowBytes(m, width));
    GuardedImage dst = makeImage(m, width, height, rowBytes(m, width));
    Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(width)}));
    for (int channel = 0; channel < 3; ++channel) {
        src.fillRandom(rng);
        dst.fillRandom(rng);
        for (int i = 0; i < width * height; ++i) {
            const uint16_t v = uint16_t(uint32_t(i % count) * uint32_t(stride));
            std::memcpy(src.sampleAddress(i % width, i / width, channel), &v, 2);
        }
        GuardedImage expected = dst.clone();
        m.reference(src, expected, width, height);
        ASSERT_EQ(m.call(src.data(), src.step(), dst.data(), dst.step(), {width, height}), pxkOk);
        ASSERT_TRUE(sameSamples(m, dst, expected)) << m.name << " width " << width << " channel " << channel;
    }
}

}  // namespace sampletest

// The twelve members of a pair of conversions on 16u, 16s and 32f samples, C3R and
// AC4R, with the reference models ref::forward16u, ref::inverse16u, ... of ref.
#define SAMPLETEST_CONVERSION_PAIR(Forward, Inverse, ref)                                                  \
    std::vector<sampletest::Member> {                                                                       \
        SAMPLETEST_PAIR_TYPE(Forward, Inverse, ref, uint16_t, 16u),                                         \
            SAMPLETEST_PAIR_TYPE(Forward, Inverse, ref, int16_t, 16s),                                      \
            SAMPLETEST_PAIR_TYPE(Forward, Inverse, ref, float, 32f)                                         \
    }
#define SAMPLETEST_PAIR_TYPE(Forward, Inverse, ref, T, type)                                                \
    sampletest::member<T>(#Forward "_" #type "_C3R", 3, pxki##Forward##_##type##_C3R, ref::forward##type),  \
        sampletest::member<T>(#Forward "_" #type "_AC4R", 4, pxki##Forward##_##type##_AC4R, ref::forward##type), \
        sampletest::member<T>(#Inverse "_" #type "_C3R", 3, pxki##Inverse##_##type##_C3R, ref::inverse##type), \
        sampletest::member<T>(#Inverse "_" #type "_AC4R", 4, pxki##Inverse##_##type##_AC4R, ref::inverse##type)

namespace sampletest {
// The members on 16-bit samples.
inline std::vector<Member> sixteenBit(const std::vector<Member>& members) {
    std::vector<Member> r;
    for (const Member& m : members)
        if (m.sampleBytes == 2) r.push_back(m);
    return r;
}
}  // namespace sampletest

// The tests of every member of a family on 16-bit or float samples, and every 16-bit
// value in each channel, in the groups and in the tail, for the 16-bit members.
#define SAMPLETEST_MEMBER_SUITES(Suite, members)                                                               \
    class Suite : public ::testing::TestWithParam<sampletest::Member> {};                                    \
    TEST_P(Suite, MatchesReferenceAtEveryWidthHeightAndStep) { sampletest::sweepAgainstReference(GetParam()); } \
    TEST_P(Suite, StepsLoseTheirLowBits) { sampletest::stepsLoseTheirLowBits(GetParam()); }                  \
    TEST_P(Suite, ResultsDependOnColumnNotAddress) { sampletest::alignmentsAgainstReference(GetParam()); }   \
    TEST_P(Suite, NullPointersThenSize) { sampletest::checkStatuses(GetParam()); }                           \
    TEST_P(Suite, StepsAreNotTested) { sampletest::checkStepsUntested(GetParam()); }                         \
    INSTANTIATE_TEST_SUITE_P(Members, Suite, ::testing::ValuesIn(members), sampletest::testName);            \
    class Suite##Values : public ::testing::TestWithParam<sampletest::Member> {};                            \
    TEST_P(Suite##Values, EveryValueInTheGroups) { sampletest::everyValue(GetParam(), 4096); }              \
    TEST_P(Suite##Values, EveryValueInTheTail) { sampletest::everyValue(GetParam(), 3); }                   \
    INSTANTIATE_TEST_SUITE_P(Members, Suite##Values, ::testing::ValuesIn(sampletest::sixteenBit(members)),   \
                             sampletest::testName)
