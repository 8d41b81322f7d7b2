// Test harness of the gamma members: the six forms of one direction and type as
// members with one call signature, images with guards for each form, and a sweep of
// widths, heights and steps that compares every converted sample with a check written
// from the curve's rules.
#ifndef PXKCC_TESTS_GAMMA_HARNESS_H
#define PXKCC_TESTS_GAMMA_HARNESS_H

#include <gtest/gtest.h>

#include <xmmintrin.h>

#include <cstdint>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace gammatest {

using pxktest::GuardedImage;
using pxktest::Rng;
using pxktest::StepKind;

enum class Form { C3R, C3IR, AC4R, AC4IR, P3R, IP3R };

inline bool isInPlace(Form f) { return f == Form::C3IR || f == Form::AC4IR || f == Form::IP3R; }
inline bool isPlanar(Form f) { return f == Form::P3R || f == Form::IP3R; }
inline bool hasAlpha(Form f) { return f == Form::AC4R || f == Form::AC4IR; }
// Samples a pixel of one image (plane) holds, and of those, how many are converted.
inline int channelsOf(Form f) { return isPlanar(f) ? 1 : hasAlpha(f) ? 4 : 3; }
inline int convertedOf(Form f) { return isPlanar(f) ? 1 : 3; }
inline int planesOf(Form f) { return isPlanar(f) ? 3 : 1; }

// Every member called the same way: plane arrays (entry 0 alone for packed forms; the
// destination alone for in-place forms), steps, size and the float range (ignored by
// the 8u and 16u members).
template <class T>
using Call = std::function<PxkResult(const T* const* src, int32_t srcStep, T* const* dst, int32_t dstStep,
                                     PxkSize size, float vMin, float vMax)>;

template <class T>
struct Member {
    std::string name;
    Form form;
    Call<T> call;
};

#define GAMMATEST_NO_RANGE
#define GAMMATEST_RANGE , vMin, vMax
// The six members pxkiGamma<Dir>_<Type>_{C3R, C3IR, AC4R, AC4IR, P3R, IP3R}.
#define GAMMATEST_MEMBERS(Dir, Type, T, RANGE)                                                            \
    {                                                                                                     \
        {#Dir "_" #Type "_C3R", gammatest::Form::C3R,                                                     \
         [](const T* const* s, int32_t ss, T* const* d, int32_t ds, PxkSize z, float vMin, float vMax) { \
             (void)vMin, (void)vMax;                                                                      \
             return pxkiGamma##Dir##_##Type##_C3R(s[0], ss, d[0], ds, z RANGE);                           \
         }},                                                                                              \
        {#Dir "_" #Type "_C3IR", gammatest::Form::C3IR,                                                   \
         [](const T* const*, int32_t, T* const* d, int32_t ds, PxkSize z, float vMin, float vMax) {       \
             (void)vMin, (void)vMax;                                                                      \
             return pxkiGamma##Dir##_##Type##_C3IR(d[0], ds, z RANGE);                                    \
         }},                                                                                              \
        {#Dir "_" #Type "_AC4R", gammatest::Form::AC4R,                                                   \
         [](const T* const* s, int32_t ss, T* const* d, int32_t ds, PxkSize z, float vMin, float vMax) { \
             (void)vMin, (void)vMax;                                                                      \
             return pxkiGamma##Dir##_##Type##_AC4R(s[0], ss, d[0], ds, z RANGE);                          \
         }},                                                                                              \
        {#Dir "_" #Type "_AC4IR", gammatest::Form::AC4IR,                                                 \
         [](const T* const*, int32_t, T* const* d, int32_t ds, PxkSize z, float vMin, float vMax) {       \
             (void)vMin, (void)vMax;                                                                      \
             return pxkiGamma##Dir##_##Type##_AC4IR(d[0], ds, z RANGE);                                   \
         }},                                                                                              \
        {#Dir "_" #Type "_P3R", gammatest::Form::P3R,                                                     \
         [](const T* const* s, int32_t ss, T* const* d, int32_t ds, PxkSize z, float vMin, float vMax) { \
             (void)vMin, (void)vMax;                                                                      \
             return pxkiGamma##Dir##_##Type##_P3R(s, ss, d, ds, z RANGE);                                 \
         }},                                                                                              \
        {#Dir "_" #Type "_IP3R", gammatest::Form::IP3R,                                                   \
         [](const T* const*, int32_t, T* const* d, int32_t ds, PxkSize z, float vMin, float vMax) {       \
             (void)vMin, (void)vMax;                                                                      \
             return pxkiGamma##Dir##_##Type##_IP3R(d, ds, z RANGE);                                       \
         }},                                                                                              \
    }

// The images of one call. `input` holds the samples the call reads (for in-place
// forms a copy, with the destination's steps, of what `output` holds before the call).
template <class T>
struct Images {
    std::vector<GuardedImage> input;
    std::vector<GuardedImage> output;
    std::vector<const T*> inputPlanes;
    std::vector<T*> outputPlanes;
    int32_t inputStep = 0;
    int32_t outputStep = 0;
};

// Images for a width x height region with the given step kinds (the destination's for
// both sides of an in-place form); every sample of the input is gen(rng), every other
// byte random. The alpha samples of AC4 destinations are protected.
template <class T>
Images<T> makeImages(Form form, int width, int height, StepKind srcKind, StepKind dstKind, uint32_t seed,
                     const std::function<T(Rng&)>& gen) {
    Rng rng(seed);
    Images<T> im;
    const int ch = channelsOf(form);
    const std::size_t rowBytes = std::size_t(width) * std::size_t(ch) * sizeof(T);
    if (isInPlace(form)) srcKind = dstKind;
    im.inputStep = pxktest::stepFor(srcKind, rowBytes);
    im.outputStep = pxktest::stepFor(dstKind, rowBytes);
    for (int p = 0; p < planesOf(form); ++p) {
        GuardedImage in(pxktest::ImageGeometry{width, height, ch, int(sizeof(T)), im.inputStep});
        in.fillRandom(rng);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                for (int c = 0; c < ch; ++c) in.set<T>(x, y, c, gen(rng));
            }
        }
        in.snapshot();
        GuardedImage out(pxktest::ImageGeometry{width, height, ch, int(sizeof(T)), im.outputStep});
        out.fillRandom(rng);
        if (isInPlace(form)) {
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    for (int c = 0; c < ch; ++c) out.set<T>(x, y, c, in.get<T>(x, y, c));
                }
            }
            out.snapshot();
        }
        if (hasAlpha(form)) out.protectChannel(3);
        im.input.push_back(std::move(in));
        im.output.push_back(std::move(out));
    }
    for (auto& in : im.input) im.inputPlanes.push_back(reinterpret_cast<const T*>(in.data()));
    for (auto& out : im.output) im.outputPlanes.push_back(reinterpret_cast<T*>(out.data()));
    return im;
}

template <class T>
PxkResult callOn(const Member<T>& m, Images<T>& im, PxkSize size, float vMin = 0.0f, float vMax = 1.0f) {
    return m.call(im.inputPlanes.data(), im.inputStep, im.outputPlanes.data(), im.outputStep, size, vMin, vMax);
}

// A check of one converted sample: empty when `out` is right for `in`, else a message.
template <class T>
using SampleCheck = std::function<std::string(T in, T out)>;

// Runs the member on the images and checks every converted sample, the guards, the
// alpha samples and (not in place) the untouched source.
template <class T>
::testing::AssertionResult runAndCheck(const Member<T>& m, Images<T>& im, int width, int height,
                                       const SampleCheck<T>& check, float vMin = 0.0f, float vMax = 1.0f) {
    const PxkResult r = callOn(m, im, PxkSize{width, height}, vMin, vMax);
    if (r != pxkOk) return ::testing::AssertionFailure() << m.name << ": status " << r;
    for (int p = 0; p < planesOf(m.form); ++p) {
        if (!isInPlace(m.form)) {
            const auto untouched = im.input[p].unchanged();
            if (!untouched) return ::testing::AssertionFailure() << m.name << " source: " << untouched.message();
        }
        const auto guards = im.output[p].guardsIntact();
        if (!guards) return ::testing::AssertionFailure() << m.name << " destination: " << guards.message();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                for (int c = 0; c < convertedOf(m.form); ++c) {
                    const std::string bad = check(im.input[p].template get<T>(x, y, c),
                                                  im.output[p].template get<T>(x, y, c));
                    if (!bad.empty()) {
                        return ::testing::AssertionFailure() << m.name << " plane " << p << " (" << x << ", " << y
                                                             << ", " << c << "): " << bad;
                    }
                }
            }
        }
    }
    return ::testing::AssertionSuccess();
}

// The legal step plans (steps must be at least 1): tight, padded and odd, on both sides.
inline const std::vector<std::pair<StepKind, StepKind>>& positiveStepPlans() {
    static const std::vector<std::pair<StepKind, StepKind>> plans = {
        {StepKind::Tight, StepKind::Tight}, {StepKind::Padded, StepKind::Odd}, {StepKind::Odd, StepKind::Padded}};
    return plans;
}

// Every width of the sweep, its heights and the step plans.
template <class T>
void sweep(const Member<T>& m, const std::function<T(Rng&)>& gen, const SampleCheck<T>& check, float vMin = 0.0f,
           float vMax = 1.0f) {
    for (int width : pxktest::sweepWidths()) {
        for (int height : pxktest::sweepHeights(width)) {
            for (const auto& plan : positiveStepPlans()) {
                Images<T> im = makeImages<T>(m.form, width, height, plan.first, plan.second,
                                             pxktest::seedFor(m.name.c_str(), {uint32_t(width), uint32_t(height)}),
                                             gen);
                ASSERT_TRUE(runAndCheck(m, im, width, height, check, vMin, vMax))
                    << width << " x " << height << " steps " << pxktest::stepKindName(plan.first) << "/"
                    << pxktest::stepKindName(plan.second);
            }
        }
    }
}

// ---------------------------------------------------------------------------------
// Statuses and their order, for every member: each failing call writes nothing.
// ---------------------------------------------------------------------------------

template <class T>
void expectFailureWritesNothing(const Member<T>& m, PxkResult want, const std::function<PxkResult(Images<T>&)>& call,
                                const std::string& what) {
    Images<T> im = makeImages<T>(m.form, 4, 3, StepKind::Padded, StepKind::Padded, 7, [](Rng& r) {
        return static_cast<T>(r.uniform(0, 200));
    });
    EXPECT_EQ(call(im), want) << m.name << ": " << what;
    for (auto& out : im.output) EXPECT_TRUE(out.unchanged()) << m.name << ": " << what;
}

// The common checks (null pointers and plane entries, sizes, steps and their order);
// (vMin, vMax) is a valid range for the float members.
template <class T>
void checkStatuses(const Member<T>& m, float vMin, float vMax) {
    const PxkSize ok{4, 3};
    using Im = Images<T>;
    {
        Im im = makeImages<T>(m.form, 4, 3, StepKind::Padded, StepKind::Padded, 7, [](Rng& r) {
            return static_cast<T>(r.uniform(0, 200));
        });
        EXPECT_EQ(callOn(m, im, ok, vMin, vMax), pxkOk) << m.name << ": the valid call the others vary";
    }
    const bool planar = isPlanar(m.form), inPlace = isInPlace(m.form);
    // Null destination (the only pointer of an in-place form), and null source.
    expectFailureWritesNothing<T>(m, pxkErrNullPtr, [&](Im& im) {
        if (planar) return m.call(im.inputPlanes.data(), im.inputStep, nullptr, im.outputStep, ok, vMin, vMax);
        T* none[1] = {nullptr};
        return m.call(im.inputPlanes.data(), im.inputStep, none, im.outputStep, ok, vMin, vMax);
    }, "null destination");
    if (!inPlace) {
        expectFailureWritesNothing<T>(m, pxkErrNullPtr, [&](Im& im) {
            if (planar) return m.call(nullptr, im.inputStep, im.outputPlanes.data(), im.outputStep, ok, vMin, vMax);
            const T* none[1] = {nullptr};
            return m.call(none, im.inputStep, im.outputPlanes.data(), im.outputStep, ok, vMin, vMax);
        }, "null source");
    }
    if (planar) {
        for (int side = inPlace ? 1 : 0; side < 2; ++side) {
            for (int p = 0; p < 3; ++p) {
                expectFailureWritesNothing<T>(m, pxkErrNullPtr, [&](Im& im) {
                    std::vector<const T*> src = im.inputPlanes;
                    std::vector<T*> dst = im.outputPlanes;
                    if (side == 0) src[p] = nullptr; else dst[p] = nullptr;
                    return m.call(src.data(), im.inputStep, dst.data(), im.outputStep, ok, vMin, vMax);
                }, "null plane " + std::to_string(p) + " of side " + std::to_string(side));
            }
        }
    }
    for (PxkSize bad : {PxkSize{0, 3}, PxkSize{4, 0}, PxkSize{-1, 3}, PxkSize{4, -5}}) {
        expectFailureWritesNothing<T>(m, pxkErrSize, [&](Im& im) { return callOn(m, im, bad, vMin, vMax); },
                                      "size " + std::to_string(bad.width) + " x " + std::to_string(bad.height));
    }
    for (int32_t badStep : {0, -1, -64}) {
        expectFailureWritesNothing<T>(m, pxkErrStep, [&](Im& im) {
            return m.call(im.inputPlanes.data(), im.inputStep, im.outputPlanes.data(), badStep, ok, vMin, vMax);
        }, "destination step " + std::to_string(badStep));
        if (!inPlace) {
            expectFailureWritesNothing<T>(m, pxkErrStep, [&](Im& im) {
                return m.call(im.inputPlanes.data(), badStep, im.outputPlanes.data(), im.outputStep, ok, vMin, vMax);
            }, "source step " + std::to_string(badStep));
        }
    }
    // Order: pointers before size, size before steps.
    expectFailureWritesNothing<T>(m, pxkErrNullPtr, [&](Im& im) {
        if (planar) return m.call(im.inputPlanes.data(), 0, nullptr, 0, PxkSize{0, 0}, vMin, vMax);
        T* none[1] = {nullptr};
        return m.call(im.inputPlanes.data(), 0, none, 0, PxkSize{0, 0}, vMin, vMax);
    }, "null destination with a bad size and bad steps");
    expectFailureWritesNothing<T>(m, pxkErrSize, [&](Im& im) {
        return m.call(im.inputPlanes.data(), 0, im.outputPlanes.data(), 0, PxkSize{0, 3}, vMin, vMax);
    }, "bad size with bad steps");
}

// Round toward zero set by the caller: the call leaves the control register as it was.
class KeepControlRegister {
public:
    explicit KeepControlRegister(uint32_t csr) : saved_(_mm_getcsr()) { _mm_setcsr(csr); }
    ~KeepControlRegister() { _mm_setcsr(saved_); }
    uint32_t saved() const { return saved_; }

private:
    uint32_t saved_;
};
inline constexpr uint32_t kRoundTowardZero = 0x7F80u;

}  // namespace gammatest

#endif
