// The sweep of a Lab export of any sample type against its reference model. A side is
// one interleaved image of three samples a pixel, or three planes each with its own
// step; samples of 1, 2, 4 or 8 bytes. Every width of the sweep, several heights,
// every step plan (padded, odd, zero and negative steps; planes with different steps),
// random bytes around and between the rows; the status, every sample of the region,
// the guards and the source are checked.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "guarded_image.h"
#include "harness.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace labtest {

using pxktest::GuardedImage;
using pxktest::GuardOptions;
using pxktest::ImageGeometry;
using pxktest::Rng;

struct Side {
    bool planar;
    int sampleBytes;
};

// One side of a call: its images and the pointer and step arrays of the planar forms.
class Images {
public:
    Images(Side side, int width, int height, const int32_t steps[3], const GuardOptions& options = {})
        : side_(side) {
        for (int i = 0; i < (side.planar ? 3 : 1); ++i) {
            images_.emplace_back(ImageGeometry{width, height, side.planar ? 1 : 3, side.sampleBytes, steps[i]},
                                 options);
            steps32_[i] = steps[i];
            steps64_[i] = steps[i];
        }
        refresh();
    }
    Images clone() const {
        Images c(*this, 0);
        return c;
    }

    Side side() const { return side_; }
    uint8_t* data() { return images_[0].data(); }
    int32_t step() const { return images_[0].step(); }
    const int32_t* steps() const { return steps32_; }
    const int64_t* steps64() const { return steps64_; }
    uint8_t* const* planes() { return ptrs_; }

    uint8_t* sample(int x, int y, int c) {
        return side_.planar ? images_[size_t(c)].sampleAddress(x, y, 0) : images_[0].sampleAddress(x, y, c);
    }
    const uint8_t* sample(int x, int y, int c) const {
        return side_.planar ? images_[size_t(c)].sampleAddress(x, y, 0) : images_[0].sampleAddress(x, y, c);
    }
    template <class T>
    T get(int x, int y, int c) const {
        T v;
        std::memcpy(&v, sample(x, y, c), sizeof v);
        return v;
    }
    template <class T>
    void set(int x, int y, int c, T v) {
        std::memcpy(sample(x, y, c), &v, sizeof v);
    }

    void fillRandom(Rng& rng) {
        for (GuardedImage& i : images_) i.fillRandom(rng);
    }
    void snapshot() {
        for (GuardedImage& i : images_) i.snapshot();
    }
    ::testing::AssertionResult guardsIntact() const {
        for (const GuardedImage& i : images_) {
            const ::testing::AssertionResult r = i.guardsIntact();
            if (!r) return r;
        }
        return ::testing::AssertionSuccess();
    }
    ::testing::AssertionResult unchanged() const {
        for (const GuardedImage& i : images_) {
            const ::testing::AssertionResult r = i.unchanged();
            if (!r) return r;
        }
        return ::testing::AssertionSuccess();
    }

private:
    Images(const Images& other, int) : side_(other.side_) {
        for (const GuardedImage& i : other.images_) images_.push_back(i.clone());
        std::memcpy(steps32_, other.steps32_, sizeof steps32_);
        std::memcpy(steps64_, other.steps64_, sizeof steps64_);
        refresh();
    }
    void refresh() {
        for (size_t i = 0; i < images_.size(); ++i) ptrs_[i] = images_[i].data();
    }

    Side side_;
    std::vector<GuardedImage> images_;
    uint8_t* ptrs_[3] = {};
    int32_t steps32_[3] = {};
    int64_t steps64_[3] = {};
};

// Fills the region of a source side (random bytes elsewhere).
using Fill = std::function<void(Images& src, int width, int height, Rng& rng)>;
// What a call that must fail breaks: the packed pointer or plane array of a side, one
// entry of a plane array, or a step array.
struct Breakage {
    bool nullSrc = false;
    bool nullDst = false;
    int nullSrcPlane = -1;
    int nullDstPlane = -1;
    bool nullSrcSteps = false;
    bool nullDstSteps = false;
};
// The export's call on two sides, with nothing broken or with a breakage.
using Call = std::function<PxkResult(Images& src, Images& dst, PxkSize size, const Breakage& broken)>;
// The reference: writes every sample of the destination's region.
using Reference = std::function<void(const Images& src, Images& dst, int width, int height)>;

struct Member {
    std::string name;
    Side src;
    Side dst;
    Call call;
    Reference reference;
    Fill fill;
};

inline std::ostream& operator<<(std::ostream& os, const Member& m) { return os << m.name; }

// Every sample of the region equal, bit for bit (two NaNs count as equal).
inline ::testing::AssertionResult sameRegion(const Images& actual, const Images& expected, int width, int height) {
    const int bytes = actual.side().sampleBytes;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < 3; ++c) {
                const uint8_t* a = actual.sample(x, y, c);
                const uint8_t* e = expected.sample(x, y, c);
                if (std::memcmp(a, e, size_t(bytes)) == 0) continue;
                if (bytes == 4 && std::isnan(actual.get<float>(x, y, c)) && std::isnan(expected.get<float>(x, y, c)))
                    continue;
                if (bytes == 8 && std::isnan(actual.get<double>(x, y, c)) &&
                    std::isnan(expected.get<double>(x, y, c)))
                    continue;
                auto value = [&](const Images& i) {
                    switch (bytes) {
                        case 1: return std::to_string(i.get<uint8_t>(x, y, c));
                        case 2: return std::to_string(i.get<uint16_t>(x, y, c));
                        case 4: return std::to_string(i.get<float>(x, y, c));
                        default: return std::to_string(i.get<double>(x, y, c));
                    }
                };
                return ::testing::AssertionFailure() << "at (" << x << ", " << y << ") channel " << c << ": "
                                                     << value(actual) << ", expected " << value(expected);
            }
        }
    }
    return ::testing::AssertionSuccess();
}

// Steps of the three planes (or of the one packed image) for a step kind: padded and
// odd steps differ from plane to plane.
inline void stepsFor(pxktest::StepKind kind, Side side, int width, int32_t steps[3]) {
    const size_t rowBytes = size_t(width) * size_t(side.sampleBytes) * (side.planar ? 1 : 3);
    for (int i = 0; i < 3; ++i) {
        steps[i] = pxktest::stepFor(kind, rowBytes);
        if (side.planar && (kind == pxktest::StepKind::Padded || kind == pxktest::StepKind::Odd)) steps[i] += 16 * i;
    }
}

inline ::testing::AssertionResult runAgainstReference(const Member& m, int width, int height, const int32_t srcSteps[3],
                                                      const int32_t dstSteps[3], Rng& rng,
                                                      const GuardOptions& srcOpt = {},
                                                      const GuardOptions& dstOpt = {}) {
    Images src(m.src, width, height, srcSteps, srcOpt);
    Images dst(m.dst, width, height, dstSteps, dstOpt);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    m.fill(src, width, height, rng);
    Images expected = dst.clone();
    m.reference(src, expected, width, height);
    src.snapshot();
    dst.snapshot();
    const PxkResult status = m.call(src, dst, PxkSize{width, height}, Breakage{});
    if (status != pxkOk) return ::testing::AssertionFailure() << "status " << status;
    ::testing::AssertionResult same = sameRegion(dst, expected, width, height);
    if (!same) return same;
    ::testing::AssertionResult guards = dst.guardsIntact();
    if (!guards) return guards;
    return src.unchanged();
}

inline void sweepAgainstReference(const Member& m) {
    for (int width : pxktest::sweepWidths()) {
        for (int height : pxktest::sweepHeights(width)) {
            for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
                Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(width), uint32_t(height),
                                                          uint32_t(plan.src) * 8 + uint32_t(plan.dst)}));
                int32_t srcSteps[3], dstSteps[3];
                stepsFor(plan.src, m.src, width, srcSteps);
                stepsFor(plan.dst, m.dst, width, dstSteps);
                ASSERT_TRUE(runAgainstReference(m, width, height, srcSteps, dstSteps, rng))
                    << m.name << " width " << width << " height " << height << " " << pxktest::stepPlanName(plan);
            }
        }
    }
}

// Regions at every misalignment of both sides: results depend on the column only.
inline void misalignedAgainstReference(const Member& m) {
    for (size_t s = 0; s < 8; ++s) {
        for (size_t d = 0; d < 8; ++d) {
            Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(s), uint32_t(d), 99}));
            GuardOptions so, dstOpt;
            so.misalign = s;
            dstOpt.misalign = d;
            int32_t srcSteps[3], dstSteps[3];
            stepsFor(pxktest::StepKind::Odd, m.src, 45, srcSteps);
            stepsFor(pxktest::StepKind::Padded, m.dst, 45, dstSteps);
            ASSERT_TRUE(runAgainstReference(m, 45, 3, srcSteps, dstSteps, rng, so, dstOpt))
                << m.name << " misaligned by " << s << " and " << d;
        }
    }
}

// A call with null pointers or a bad size returns `expected` and writes nothing.
inline ::testing::AssertionResult failsWith(const Member& m, PxkResult expected, PxkSize size,
                                            const Breakage& broken) {
    const int32_t steps[3] = {64, 64, 64};
    Images src(m.src, 4, 2, steps);
    Images dst(m.dst, 4, 2, steps);
    Rng rng(7);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    dst.snapshot();
    const PxkResult status = m.call(src, dst, size, broken);
    if (status != expected) return ::testing::AssertionFailure() << "status " << status << ", expected " << expected;
    return dst.unchanged();
}

// Sizes below 1 x 1.
inline const std::vector<PxkSize>& badSizes() {
    static const std::vector<PxkSize> sizes = {{0, 2}, {4, 0}, {-1, 2}, {4, -5}, {INT32_MIN, 1}, {0, 0}};
    return sizes;
}

// Random floats in [lo, hi).
template <class T>
T uniform(Rng& rng, double lo, double hi) {
    return T(lo + (hi - lo) * (double(rng.next32()) / 4294967296.0));
}

}  // namespace labtest
