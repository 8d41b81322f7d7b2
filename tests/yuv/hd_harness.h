// Harness of the high-definition family's tests: an export as a table entry (the
// planes of its source and destination for a region, how to call it, its reference),
// the sweep that compares the two over every width, several heights and step layouts,
// and the status checks.
#ifndef PXKCC_TESTS_YUV_HD_HARNESS_H
#define PXKCC_TESTS_YUV_HD_HARNESS_H

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "random.h"
#include "surface.h"
#include "sweep.h"

namespace hdtest {

using pxktest::GuardedImage;
using pxktest::GuardOptions;
using pxktest::ImageGeometry;
using pxktest::Rng;
using pxktest::StepKind;
using pxktest::Surface;

// The planes of one side of a call for a region of width x height: their geometry with
// a tight step (the step is set by the sweep).
using PlanesOf = std::function<std::vector<ImageGeometry>(int width, int height)>;

// A call with some of its pointers replaced: `nullAt` names the pointer (0 source, 1
// destination, 2 and up the entries of a plane array or a step array, as each test
// table says) that the call passes as null; -1 passes them all.
using NullCall = std::function<PxkResult(Surface& src, Surface& dst, PxkSize size, int nullAt)>;

struct HdExport {
    std::string name;
    PlanesOf source;
    PlanesOf dest;
    std::function<PxkResult(Surface& src, Surface& dst, PxkSize size, uint8_t alpha)> call;
    std::function<void(Surface& src, Surface& dst, int width, int height, uint8_t alpha)> reference;
    PxkSize least = {1, 1};
    bool warnsOdd = false;        // pxkWarnOddSize for an odd width or height (4:2:0)
    bool sharedSourceStep = false;  // one step for every source plane
    bool elementSteps = false;      // steps count samples and must be at least 1 (v210)
    NullCall nullCall;              // the call with pointers left out, for the status checks
    int pointerCount = 2;           // the pointers nullCall can leave out one at a time
};

// The null calls of exports with one source and one destination pointer.
template <class Fn, class... Extra>
NullCall packedNullCall(Fn f, Extra... extra) {
    return [f, extra...](Surface& s, Surface& d, PxkSize z, int nullAt) {
        const bool all = nullAt == -1;
        return f(all || nullAt == 0 ? nullptr : s.data(), s.step(), all || nullAt == 1 ? nullptr : d.data(), d.step(), z,
                 extra...);
    };
}

// A one-plane side: `channels` samples of `sampleBytes` bytes a pixel.
inline PlanesOf packedPlanes(int channels, int sampleBytes = 1) {
    return [channels, sampleBytes](int w, int h) {
        return std::vector<ImageGeometry>{ImageGeometry{w, h, channels, sampleBytes, w * channels * sampleBytes}};
    };
}

inline PxkResult expectedStatus(const HdExport& ex, int width, int height) {
    return ex.warnsOdd && (width % 2 != 0 || height % 2 != 0) ? pxkWarnOddSize : pxkOk;
}

// Step kinds of each plane of both sides.
struct StepPlan {
    std::vector<StepKind> src;
    std::vector<StepKind> dst;
};

inline const std::vector<StepPlan>& stepPlans() {
    using K = StepKind;
    static const std::vector<StepPlan> plans = {
        {{K::Tight, K::Tight, K::Tight}, {K::Tight, K::Tight, K::Tight}},
        {{K::Padded, K::Odd, K::Negative}, {K::Odd, K::Padded, K::Negative}},
        {{K::Odd, K::Padded, K::Odd}, {K::Padded, K::Odd, K::Odd}},
        {{K::Negative, K::NegativeTight, K::Negative}, {K::Negative, K::Negative, K::NegativeTight}},
        {{K::NegativeTight, K::Padded, K::Tight}, {K::Padded, K::Zero, K::Tight}},
        {{K::Zero, K::Zero, K::Padded}, {K::Padded, K::Negative, K::Odd}},
        {{K::Odd, K::Tight, K::Zero}, {K::Zero, K::Zero, K::Zero}},
    };
    return plans;
}

// Steps counted in elements must stay whole elements and positive.
inline const std::vector<StepPlan>& elementStepPlans() {
    using K = StepKind;
    static const std::vector<StepPlan> plans = {
        {{K::Tight}, {K::Tight}}, {{K::Padded}, {K::Tight}}, {{K::Tight}, {K::Padded}}, {{K::Padded}, {K::Padded}}};
    return plans;
}

inline const std::vector<StepPlan>& plansFor(const HdExport& ex) {
    return ex.elementSteps ? elementStepPlans() : stepPlans();
}

inline std::string planName(const StepPlan& p) {
    std::string s = "src";
    for (StepKind k : p.src) s += std::string("_") + pxktest::stepKindName(k);
    s += "_dst";
    for (StepKind k : p.dst) s += std::string("_") + pxktest::stepKindName(k);
    return s;
}

// A side of the given planes, each with the step its kind gives (all planes the first
// plane's step when `shared`).
inline Surface makeSide(std::vector<ImageGeometry> planes, const std::vector<StepKind>& kinds, bool shared,
                        const GuardOptions& options) {
    for (std::size_t i = 0; i < planes.size(); ++i) {
        const StepKind k = kinds[shared ? 0 : i % kinds.size()];
        planes[i].step = pxktest::stepFor(k, planes[i].rowBytes());
    }
    return Surface::planar(planes, options);
}

// Calls the export and its reference on the same images; checks the status, every byte
// of the destination's regions, its guards, and that the source is untouched.
inline ::testing::AssertionResult compareOnce(const HdExport& ex, Surface& src, Surface& dst, int width, int height,
                                              uint8_t alpha) {
    src.snapshot();
    dst.snapshot();
    Surface expected = dst.clone();
    ex.reference(src, expected, width, height, alpha);
    const PxkResult st = ex.call(src, dst, PxkSize{width, height}, alpha);
    return pxktest::sameOutcome(st, expectedStatus(ex, width, height), dst, expected, src);
}

// Widths 1 to 40, 59, 67, 130, 301 and 1920 (from the least width), and widths about
// 64 and 128 (whole and partial blocks of 16 and 32 pixels).
inline std::vector<int> widthsFor(const HdExport& ex) {
    std::vector<int> w;
    for (int x : pxktest::sweepWidths()) {
        if (x >= ex.least.width) w.push_back(x);
    }
    for (int x : {63, 64, 65, 127, 128, 129}) w.push_back(x);
    return w;
}

inline std::vector<int> heightsFor(const HdExport& ex, int width) {
    std::vector<int> candidates;
    if (width <= 40) {
        candidates = {1, 2, 3, 4, 5};
    } else if (width <= 301) {
        candidates = {1, 2, 3};
    } else {
        candidates = {2, 3};
    }
    std::vector<int> h;
    for (int y : candidates) {
        if (y >= ex.least.height) h.push_back(y);
    }
    return h;
}

// The export against its reference over random images of every width and height of
// the sweep, with the plan's steps. Sources end flush against an inaccessible page, so
// that a read past the last byte of the highest row faults.
inline void sweepAgainstReference(const HdExport& ex, const StepPlan& plan) {
    for (int width : widthsFor(ex)) {
        for (int height : heightsFor(ex, width)) {
            Rng rng(pxktest::seedFor(ex.name.c_str(), {uint32_t(width), uint32_t(height), uint32_t(plan.src[0]),
                                                        uint32_t(plan.dst[0])}));
            GuardOptions srcOpt;
            srcOpt.after = 0;
            srcOpt.fenceAfter = true;
            GuardOptions dstOpt;
            if (!ex.elementSteps) {
                srcOpt.misalign = std::size_t(rng.uniform(0, 15));
                dstOpt.misalign = std::size_t(rng.uniform(0, 15));
            }
            Surface src = makeSide(ex.source(width, height), plan.src, ex.sharedSourceStep, srcOpt);
            Surface dst = makeSide(ex.dest(width, height), plan.dst, false, dstOpt);
            src.fillRandom(rng);
            dst.fillRandom(rng);
            const uint8_t alpha = rng.byte();
            ::testing::AssertionResult r = compareOnce(ex, src, dst, width, height, alpha);
            if (!r) {
                ADD_FAILURE() << ex.name << " " << width << "x" << height << ", " << planName(plan) << ": "
                              << r.message();
                return;  // one report per sweep keeps the output readable
            }
        }
    }
}

// Random images of one size with tight rows at the given misalignments (0 to 15 bytes
// from a multiple of 16), against the reference.
inline ::testing::AssertionResult misalignedAgainstReference(const HdExport& ex, int width, int height,
                                                             std::size_t srcMisalign, std::size_t dstMisalign,
                                                             int extraStep) {
    Rng rng(pxktest::seedFor((ex.name + "/align").c_str(), {uint32_t(srcMisalign), uint32_t(dstMisalign),
                                                              uint32_t(extraStep)}));
    GuardOptions srcOpt, dstOpt;
    srcOpt.misalign = srcMisalign;
    dstOpt.misalign = dstMisalign;
    std::vector<ImageGeometry> s = ex.source(width, height), d = ex.dest(width, height);
    for (auto& g : s) g.step = int(g.rowBytes()) + extraStep;
    for (auto& g : d) g.step = int(g.rowBytes()) + extraStep;
    Surface src = Surface::planar(s, srcOpt);
    Surface dst = Surface::planar(d, dstOpt);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    return compareOnce(ex, src, dst, width, height, rng.byte());
}

// Random images of one size whose row pointers and steps all lie on multiples of 16
// (steps rounded up from the row, plus 16), against the reference.
inline ::testing::AssertionResult alignedAgainstReference(const HdExport& ex, int width, int height) {
    Rng rng(pxktest::seedFor((ex.name + "/aligned").c_str(), {uint32_t(width), uint32_t(height)}));
    std::vector<ImageGeometry> s = ex.source(width, height), d = ex.dest(width, height);
    for (auto& g : s) g.step = int((g.rowBytes() + 15) / 16 * 16) + 16;
    for (auto& g : d) g.step = int((g.rowBytes() + 15) / 16 * 16) + 16;
    Surface src = Surface::planar(s, {});
    Surface dst = Surface::planar(d, {});
    for (Surface* side : {&src, &dst}) {
        for (int i = 0; i < side->imageCount(); ++i) {
            const GuardedImage& image = side->image(i);
            if (reinterpret_cast<std::uintptr_t>(image.data()) % 16 != 0 || image.step() % 16 != 0) {
                return ::testing::AssertionFailure() << "the test's rows are not aligned";
            }
        }
    }
    src.fillRandom(rng);
    dst.fillRandom(rng);
    return compareOnce(ex, src, dst, width, height, rng.byte());
}

// The same at every misalignment of the source (0 to 15) and some of the
// destination, with rows padded by 16: the result depends on the column alone.
inline void alignmentsAgainstReference(const HdExport& ex, int width, int height) {
    for (std::size_t s = 0; s < 16; ++s) {
        for (std::size_t d = 0; d < 16; d += 5) {
            EXPECT_TRUE(misalignedAgainstReference(ex, width, height, s, d, 16)) << "misaligned by " << s << ", " << d;
        }
    }
}

// Sources whose bytes are all 0 or 255 (picked at random): every clamp and saturation
// at both ends, at widths that end in a whole block and in each tail.
inline void extremeBytesAgainstReference(const HdExport& ex) {
    for (int width : {7, 16, 31, 48, 67, 130}) {
        const int height = ex.least.height > 4 ? ex.least.height : 4;
        Rng rng(pxktest::seedFor((ex.name + "/extremes").c_str(), {uint32_t(width)}));
        const std::vector<StepKind> tight = {StepKind::Tight};
        Surface src = makeSide(ex.source(width, height), tight, ex.sharedSourceStep, {});
        Surface dst = makeSide(ex.dest(width, height), tight, false, {});
        dst.fillRandom(rng);
        for (int i = 0; i < src.imageCount(); ++i) {
            src.image(i).fillRegion([&rng](int, int, int) { return uint8_t((rng.next32() & 1u) ? 255 : 0); });
        }
        EXPECT_TRUE(compareOnce(ex, src, dst, width, height, 0xA5)) << ex.name << " width " << width;
    }
}

// ---------------------------------------------------------------------------------
// Statuses
// ---------------------------------------------------------------------------------

// Sizes that are not positive or below the least size.
inline std::vector<PxkSize> badSizes(const HdExport& ex) {
    const PxkSize m = ex.least;
    std::vector<PxkSize> v = {{0, m.height},         {m.width, 0},           {0, 0},
                              {-1, m.height},        {m.width, -1},          {-5, -5},
                              {INT32_MIN, m.height}, {m.width, INT32_MIN},   {INT32_MIN, INT32_MIN},
                              {m.width - 1, 64},     {64, m.height - 1}};
    if (m.width > 1 || m.height > 1) v.push_back({1, 1});
    return v;
}

inline std::string sizeText(PxkSize z) { return std::to_string(z.width) + "x" + std::to_string(z.height); }

// Each pointer missing alone gives pxkErrNullPtr at any size, valid or not (pointers
// are checked first); every bad size with all pointers gives pxkErrSize; none of the
// failing calls writes anything; the valid size then converts.
inline void statusChecks(const HdExport& ex) {
    const NullCall& call = ex.nullCall;
    const int pointerCount = ex.pointerCount;
    const PxkSize valid{18, 4};
    Rng rng(pxktest::seedFor((ex.name + "/status").c_str(), {}));
    const std::vector<StepKind> tight = {StepKind::Tight};
    Surface src = makeSide(ex.source(valid.width, valid.height), tight, ex.sharedSourceStep, {});
    Surface dst = makeSide(ex.dest(valid.width, valid.height), tight, false, {});
    src.fillRandom(rng);
    dst.fillRandom(rng);
    src.snapshot();
    dst.snapshot();
    std::vector<PxkSize> sizes = badSizes(ex);
    sizes.insert(sizes.begin(), valid);
    for (const PxkSize& z : sizes) {
        SCOPED_TRACE("size " + sizeText(z));
        for (int i = 0; i < pointerCount; ++i) {
            EXPECT_EQ(call(src, dst, z, i), pxkErrNullPtr) << "null pointer " << i;
        }
        EXPECT_EQ(call(src, dst, z, -1), pxkErrNullPtr) << "all pointers null";
        EXPECT_TRUE(dst.unchanged());
        EXPECT_TRUE(src.unchanged());
    }
    for (const PxkSize& z : badSizes(ex)) {
        EXPECT_EQ(ex.call(src, dst, z, 7), pxkErrSize) << sizeText(z);
        EXPECT_TRUE(dst.unchanged()) << sizeText(z);
    }
    EXPECT_EQ(ex.call(src, dst, valid, 7), pxkOk);
    EXPECT_FALSE(dst.unchanged());
    EXPECT_TRUE(src.unchanged());
}

// The least size converts as the reference does.
inline void leastSizeConverts(const HdExport& ex) {
    Rng rng(pxktest::seedFor((ex.name + "/least").c_str(), {}));
    const std::vector<StepKind> tight = {StepKind::Tight};
    Surface src = makeSide(ex.source(ex.least.width, ex.least.height), tight, ex.sharedSourceStep, {});
    Surface dst = makeSide(ex.dest(ex.least.width, ex.least.height), tight, false, {});
    src.fillRandom(rng);
    dst.fillRandom(rng);
    EXPECT_TRUE(compareOnce(ex, src, dst, ex.least.width, ex.least.height, 9));
}

// ---------------------------------------------------------------------------------
// Parameters
// ---------------------------------------------------------------------------------

struct SweepParam {
    const HdExport* ex;
    StepPlan plan;
};

inline std::vector<SweepParam> sweepParams(const std::vector<HdExport>& exports) {
    std::vector<SweepParam> out;
    for (const HdExport& ex : exports) {
        for (const StepPlan& p : plansFor(ex)) out.push_back({&ex, p});
    }
    return out;
}

inline std::string sweepParamName(const ::testing::TestParamInfo<SweepParam>& info) {
    return info.param.ex->name + "_" + planName(info.param.plan);
}

inline std::vector<const HdExport*> exportPointers(const std::vector<HdExport>& exports) {
    std::vector<const HdExport*> v;
    for (const HdExport& ex : exports) v.push_back(&ex);
    return v;
}

inline std::string exportParamName(const ::testing::TestParamInfo<const HdExport*>& info) { return info.param->name; }

inline const HdExport& exportNamed(const std::vector<HdExport>& exports, const std::string& name) {
    for (const HdExport& ex : exports) {
        if (ex.name == name) return ex;
    }
    throw std::invalid_argument(name);
}

inline void PrintTo(const SweepParam& p, std::ostream* os) { *os << p.ex->name << " " << planName(p.plan); }
inline void PrintTo(const HdExport* ex, std::ostream* os) { *os << ex->name; }

}  // namespace hdtest

// `Prefix`Sweep: every export of `exportsList()` against its reference over every size
// and step plan of the sweep.
#define HDTEST_SWEEP_SUITE(Prefix, exportsList)                                                                 \
    class Prefix##Sweep : public ::testing::TestWithParam<hdtest::SweepParam> {};                                \
    TEST_P(Prefix##Sweep, MatchesReference) { hdtest::sweepAgainstReference(*GetParam().ex, GetParam().plan); }   \
    INSTANTIATE_TEST_SUITE_P(AllExports, Prefix##Sweep, ::testing::ValuesIn(hdtest::sweepParams(exportsList())), \
                             hdtest::sweepParamName)

#endif
