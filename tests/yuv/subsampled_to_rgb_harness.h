// Harness of the tests of the subsampled YCbCr and YUV -> RGB members: a member as the
// tests see it (its rule for the reference, its least size, the order of its checks,
// how to call it), the surfaces of a call, one comparison with the reference, the
// sweeps over sizes and steps, and the status checks.
#ifndef PXKCC_TESTS_YUV_SUBSAMPLED_TO_RGB_HARNESS_H
#define PXKCC_TESTS_YUV_SUBSAMPLED_TO_RGB_HARNESS_H

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "alignment_sweep.h"
#include "random.h"
#include "subsampled_to_rgb_reference.h"
#include "surface.h"
#include "sweep.h"

namespace s2rgb {

using pxktest::GuardOptions;
using pxktest::ImageGeometry;
using pxktest::Rng;
using pxktest::StepKind;
using pxktest::Surface;
using subrgb::Columns;
using subrgb::Dest;
using subrgb::Rule;
using subrgb::Sampling;
using subrgb::Source;

// The order of a member's argument checks.
enum class Checks {
    PointersThenSize,            // each pointer, then the size (P2 and C2 sources)
    SizeThenPointers,            // the size, then each pointer
    ArraysThenSizeThenEntries,   // array pointers, the size, then each entry (P3 sources)
    PointersAndEntriesThenSize,  // every pointer and every plane entry, then the size
};

// Every argument an export of these shapes can take; a member reads those of its shape.
struct CallArgs {
    const uint8_t* const* srcPlanes = nullptr;  // P3 source
    const int32_t* srcSteps = nullptr;          // P3 source with steps
    const uint8_t* src = nullptr;               // C2 source, or the Y plane of a P2 source
    int32_t srcStep = 0;
    const uint8_t* srcChroma = nullptr;  // chroma pairs of a P2 source
    int32_t srcChromaStep = 0;
    uint8_t* dst = nullptr;               // packed destination
    uint8_t* const* dstPlanes = nullptr;  // planar destination
    int32_t dstStep = 0;
    PxkSize size{0, 0};
    uint8_t alpha = 0;
};

using CallFn = PxkResult (*)(const CallArgs&);

struct Member {
    std::string name;
    Rule rule;
    PxkSize least;
    Checks checks;
    bool derivedSteps;  // takes no steps: every plane is laid out tight
    CallFn call;
};

// ---------------------------------------------------------------------------------
// Statuses and sizes
// ---------------------------------------------------------------------------------

// The status of a call with a valid size.
inline PxkResult expectedStatus(const Member& m, int width, int height) {
    if (m.rule.sampling == Sampling::S420 && (width % 2 != 0 || height % 2 != 0)) return pxkWarnOddSize;
    return pxkOk;
}

inline std::string sizeText(PxkSize z) { return std::to_string(z.width) + "x" + std::to_string(z.height); }

// Sizes below the member's least size, or not positive.
inline std::vector<PxkSize> badSizes(const Member& m) {
    const PxkSize l = m.least;
    std::vector<PxkSize> v = {{0, l.height},
                              {l.width, 0},
                              {0, 0},
                              {-1, l.height},
                              {l.width, -1},
                              {-5, -5},
                              {INT32_MIN, l.height},
                              {l.width, INT32_MIN},
                              {INT32_MIN, INT32_MIN},
                              {-l.width, l.height},
                              {0, 64},
                              {64, 0}};
    if (l.width > 1) {
        v.push_back({l.width - 1, l.height});
        v.push_back({l.width - 1, 64});
        v.push_back({1, 1});
    }
    if (l.height > 1) {
        v.push_back({l.width, l.height - 1});
        v.push_back({64, l.height - 1});
    }
    return v;
}

// ---------------------------------------------------------------------------------
// Surfaces
// ---------------------------------------------------------------------------------

// One source plane: the part of it the member may read, and the bytes of a whole row
// of the region (from which its steps are counted).
struct PlaneShape {
    int width, height, channels, rowBytes;
};

// The planes of a source: Y (or the packed image), then the chroma plane(s). A 4:2:0
// member never reads an odd last row or column, so those are not part of its planes.
inline std::vector<PlaneShape> sourceShapes(const Member& m, int w, int h) {
    const Rule& r = m.rule;
    if (r.source == Source::C2) return {{w, h, 2, 2 * w}};
    std::vector<PlaneShape> s;
    switch (r.sampling) {
        case Sampling::S420:
            s.push_back({w - w % 2, h - h % 2, 1, w});
            if (r.source == Source::P2) {
                s.push_back({w / 2, h / 2, 2, 2 * (w / 2)});
            } else {
                s.push_back({w / 2, h / 2, 1, w / 2});
                s.push_back({w / 2, h / 2, 1, w / 2});
            }
            break;
        case Sampling::S422: {
            const int c = r.oddPixelConverted ? w / 2 + w % 2 : w / 2;
            s = {{w, h, 1, w}, {c, h, 1, c}, {c, h, 1, c}};
            break;
        }
        case Sampling::S411:
            s = {{w, h, 1, w}, {w / 4, h, 1, w / 4}, {w / 4, h, 1, w / 4}};
            break;
    }
    return s;
}

// Steps of each source plane (Y, first chroma, second chroma) and of the destination.
struct StepPlan {
    StepKind y, c1, c2, dst;
};

inline const std::vector<StepPlan>& stepPlans() {
    using K = StepKind;
    static const std::vector<StepPlan> plans = {
        {K::Tight, K::Tight, K::Tight, K::Tight},
        {K::Padded, K::Odd, K::Negative, K::Odd},
        {K::Odd, K::Padded, K::Odd, K::Padded},
        {K::Negative, K::Negative, K::NegativeTight, K::Negative},
        {K::NegativeTight, K::Zero, K::Tight, K::Padded},
        {K::Tight, K::Tight, K::Padded, K::NegativeTight},
        {K::Zero, K::Padded, K::Zero, K::Padded},
        {K::Odd, K::Odd, K::Odd, K::Zero},
        {K::Zero, K::Zero, K::Zero, K::Zero},
    };
    return plans;
}

inline const StepPlan& tightPlan() { return stepPlans().front(); }

inline std::string stepPlanName(const StepPlan& p) {
    return std::string("y") + pxktest::stepKindName(p.y) + "_c" + pxktest::stepKindName(p.c1) + "_c" +
           pxktest::stepKindName(p.c2) + "_dst" + pxktest::stepKindName(p.dst);
}

// Members without steps lay every plane out tight, whatever the plan.
inline Surface makeSource(const Member& m, int w, int h, const StepPlan& asked, const GuardOptions& options = {}) {
    const StepPlan plan = m.derivedSteps ? tightPlan() : asked;
    const StepKind kinds[3] = {plan.y, plan.c1, plan.c2};
    const std::vector<PlaneShape> shapes = sourceShapes(m, w, h);
    if (m.rule.source == Source::C2) {
        const PlaneShape& s = shapes.front();
        return Surface::packed(s.width, s.height, 2, pxktest::stepFor(kinds[0], std::size_t(s.rowBytes)), options);
    }
    std::vector<ImageGeometry> g;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const PlaneShape& s = shapes[i];
        g.push_back({s.width, s.height, s.channels, 1, pxktest::stepFor(kinds[i], std::size_t(s.rowBytes))});
    }
    return Surface::planar(g, options);
}

inline int destChannels(const Member& m) {
    switch (m.rule.dest) {
        case Dest::C3:
            return 3;
        case Dest::C4:
        case Dest::AC4:
            return 4;
        case Dest::P3:
            return 1;
    }
    return 0;
}

inline Surface makeDest(const Member& m, int w, int h, StepKind asked, const GuardOptions& options = {}) {
    const StepKind kind = m.derivedSteps ? StepKind::Tight : asked;
    const int channels = destChannels(m);
    const int step = pxktest::stepFor(kind, std::size_t(w) * std::size_t(channels));
    if (m.rule.dest == Dest::P3) return Surface::planar(w, h, 3, step, options);
    return Surface::packed(w, h, channels, step, options);
}

// ---------------------------------------------------------------------------------
// Calls
// ---------------------------------------------------------------------------------

// The arguments of a call on a source and destination built by makeSource and
// makeDest. `srcSteps` receives the steps of the source planes and must outlive it.
inline CallArgs argsFor(const Member& m, Surface& src, Surface& dst, PxkSize z, uint8_t alpha,
                        std::array<int32_t, 3>& srcSteps) {
    CallArgs a;
    switch (m.rule.source) {
        case Source::P3:
            for (int i = 0; i < 3; ++i) srcSteps[std::size_t(i)] = src.image(i).step();
            a.srcPlanes = src.constPlanes();
            a.srcSteps = srcSteps.data();
            break;
        case Source::P2:
            a.src = src.image(0).data();
            a.srcStep = src.image(0).step();
            a.srcChroma = src.image(1).data();
            a.srcChromaStep = src.image(1).step();
            break;
        case Source::C2:
            a.src = src.data();
            a.srcStep = src.step();
            break;
    }
    if (m.rule.dest == Dest::P3) {
        a.dstPlanes = dst.planes();
        a.dstStep = dst.image(0).step();
    } else {
        a.dst = dst.data();
        a.dstStep = dst.step();
    }
    a.size = z;
    a.alpha = alpha;
    return a;
}

inline PxkResult callOn(const Member& m, Surface& src, Surface& dst, PxkSize z, uint8_t alpha) {
    std::array<int32_t, 3> steps{};
    return m.call(argsFor(m, src, dst, z, alpha, steps));
}

inline void runReference(const Member& m, Surface& src, Surface& dst, int w, int h, uint8_t alpha) {
    subrgb::SourceView s{};
    for (int i = 0; i < src.imageCount(); ++i) {
        s.plane[i] = src.image(i).data();
        s.step[i] = src.image(i).step();
    }
    subrgb::DestView d{};
    for (int i = 0; i < dst.imageCount(); ++i) d.plane[i] = dst.image(i).data();
    d.step = dst.image(0).step();
    subrgb::convert(m.rule, s, d, w, h, alpha);
}

// Calls the member and its reference on the same images: the status, every byte of
// the destination region (those the call must leave alone included), the guards, and
// that the source was not written.
inline ::testing::AssertionResult compareOnce(const Member& m, Surface& src, Surface& dst, int w, int h,
                                              uint8_t alpha) {
    src.snapshot();
    dst.snapshot();
    Surface expected = dst.clone();
    runReference(m, src, expected, w, h, alpha);
    const PxkResult want = expectedStatus(m, w, h);
    const PxkResult st = callOn(m, src, dst, PxkSize{w, h}, alpha);
    return pxktest::sameOutcome(st, want, dst, expected, src);
}

// ---------------------------------------------------------------------------------
// Sweeps
// ---------------------------------------------------------------------------------

// Every width of the library-wide sweep from the least one, and widths on both sides
// of 64 and 128.
inline std::vector<int> sweepWidths(const Member& m) {
    std::vector<int> v;
    for (int w : pxktest::sweepWidths()) {
        if (w >= m.least.width) v.push_back(w);
    }
    for (int w : {63, 64, 65, 127, 128, 129}) v.push_back(w);
    return v;
}

// Odd and even heights; fewer for wide rows, so that a sweep stays quick under the
// sanitizers.
inline std::vector<int> sweepHeights(const Member& m, int width) {
    std::vector<int> all;
    if (width <= 40) {
        all = {1, 2, 3, 4, 5};
    } else if (width <= 301) {
        all = {1, 2, 3};
    } else {
        all = {2, 3};
    }
    std::vector<int> v;
    for (int h : all) {
        if (h >= m.least.height) v.push_back(h);
    }
    return v;
}

// Random images of each size with the plan's steps; sources end flush against an
// inaccessible page, so that a read past the last byte a member may read faults.
inline void sizesAgainstReference(const Member& m, const StepPlan& plan, const std::vector<PxkSize>& sizes) {
    for (const PxkSize& z : sizes) {
        Rng rng(pxktest::seedFor(m.name.c_str(), {uint32_t(z.width), uint32_t(z.height), uint32_t(plan.y),
                                                  uint32_t(plan.c1), uint32_t(plan.dst)}));
        GuardOptions srcOpt;
        srcOpt.after = 0;
        srcOpt.fenceAfter = true;
        srcOpt.misalign = std::size_t(rng.uniform(0, 15));
        GuardOptions dstOpt;
        dstOpt.misalign = std::size_t(rng.uniform(0, 15));
        Surface src = makeSource(m, z.width, z.height, plan, srcOpt);
        Surface dst = makeDest(m, z.width, z.height, plan.dst, dstOpt);
        src.fillRandom(rng);
        dst.fillRandom(rng);
        const uint8_t alpha = rng.byte();
        ::testing::AssertionResult r = compareOnce(m, src, dst, z.width, z.height, alpha);
        if (!r) {
            ADD_FAILURE() << m.name << " " << sizeText(z) << ", " << stepPlanName(plan) << ", alpha " << int(alpha)
                          << ": " << r.message();
            return;  // one report per sweep keeps the output readable
        }
    }
}

inline void sweepAgainstReference(const Member& m, const StepPlan& plan) {
    std::vector<PxkSize> sizes;
    for (int w : sweepWidths(m)) {
        for (int h : sweepHeights(m, w)) sizes.push_back({w, h});
    }
    sizesAgainstReference(m, plan, sizes);
}

// The same conversion at every alignment of source and destination modulo 16: the
// result depends on the column alone, never on an address.
inline void alignmentsAgainstReference(const Member& m) {
    const int w = 45, h = 4;
    const StepPlan padded{StepKind::Padded, StepKind::Padded, StepKind::Padded, StepKind::Padded};
    pxktest::everyAlignment(m.name, [&](const GuardOptions& srcOpt, const GuardOptions& dstOpt, Rng& rng) {
        Surface src = makeSource(m, w, h, padded, srcOpt);
        Surface dst = makeDest(m, w, h, StepKind::Padded, dstOpt);
        src.fillRandom(rng);
        dst.fillRandom(rng);
        return compareOnce(m, src, dst, w, h, rng.byte());
    });
}

// Every pair of chroma samples (65536 of them) in a group of its own, the luma of the
// group's pixels running over all 256 values as the groups go on, in rows of `width`
// pixels: with a width of a multiple of 16 every group lies in the vector columns,
// with a narrow one in the tail.
inline void everyChromaPairAgainstReference(const Member& m, int width) {
    const Rule& r = m.rule;
    const int groupWidth = r.sampling == Sampling::S411 ? 4 : 2;
    const int groupRows = r.sampling == Sampling::S420 ? 2 : 1;
    const int groupsPerRow = width / groupWidth;
    const int height = (65536 + groupsPerRow - 1) / groupsPerRow * groupRows;
    Rng rng(pxktest::seedFor((m.name + "/pairs").c_str(), {uint32_t(width)}));
    Surface src =
        makeSource(m, width, height, StepPlan{StepKind::Odd, StepKind::Padded, StepKind::Tight, StepKind::Odd});
    Surface dst = makeDest(m, width, height, StepKind::Padded);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    uint32_t luma = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const uint32_t group = uint32_t(y / groupRows) * uint32_t(groupsPerRow) + uint32_t(x / groupWidth);
            const uint8_t first = uint8_t(group >> 8), second = uint8_t(group);
            luma = (luma + 97) & 0xFF;
            if (r.source == Source::C2) {
                uint8_t* row = src.image(0).row(y);
                row[2 * x] = uint8_t(luma);
                row[2 * x + 1] = x % 2 == 0 ? first : second;
                continue;
            }
            if (y < src.image(0).height() && x < src.image(0).width()) src.at(x, y, 0) = uint8_t(luma);
            const int cy = r.sampling == Sampling::S420 ? y / 2 : y;
            const int cx = x / groupWidth;
            if (cy >= src.image(1).height() || cx >= src.image(1).width()) continue;
            if (r.source == Source::P2) {
                src.image(1).at(cx, cy, 0) = first;
                src.image(1).at(cx, cy, 1) = second;
            } else {
                src.image(1).at(cx, cy, 0) = first;
                src.image(2).at(cx, cy, 0) = second;
            }
        }
    }
    ::testing::AssertionResult res = compareOnce(m, src, dst, width, height, 0x3C);
    EXPECT_TRUE(res) << m.name << " width " << width << ", height " << height;
}

// Widths below 8 (every column in the tail, unless the member has vector columns
// everywhere): whole groups, and for 4:2:2 members that convert an odd last pixel, an
// odd width too.
inline std::vector<int> tailWidths(const Member& m) {
    if (m.rule.sampling == Sampling::S411) return {4};
    if (m.rule.sampling == Sampling::S422 && m.rule.oddPixelConverted) return {6, 7};
    return {6};
}

// ---------------------------------------------------------------------------------
// Statuses
// ---------------------------------------------------------------------------------

// A size with whole groups and more than one vector block, and random images of it,
// to check the statuses and that a failing call writes nothing.
inline constexpr PxkSize kValid{20, 4};

struct StatusFixture {
    Surface src;
    Surface dst;
    std::array<int32_t, 3> srcSteps{};
    explicit StatusFixture(const Member& m)
        : src(makeSource(m, kValid.width, kValid.height, tightPlan())),
          dst(makeDest(m, kValid.width, kValid.height, StepKind::Tight)) {
        Rng rng(pxktest::seedFor((m.name + "/status").c_str(), {}));
        src.fillRandom(rng);
        dst.fillRandom(rng);
    }
    CallArgs args(const Member& m, PxkSize z) { return argsFor(m, src, dst, z, 0xA5, srcSteps); }
    ::testing::AssertionResult nothingWritten() const {
        ::testing::AssertionResult r = dst.unchanged();
        if (!r) return ::testing::AssertionFailure() << "destination: " << r.message();
        r = src.unchanged();
        if (!r) return ::testing::AssertionFailure() << "source: " << r.message();
        return ::testing::AssertionSuccess();
    }
};

// One way of spoiling the arguments: a pointer or a whole array made null, or one entry
// of an array.
struct Spoil {
    std::string what;
    bool entry;  // an entry of an array, not a pointer the call takes itself
    std::function<void(CallArgs&, std::array<const uint8_t*, 3>&, std::array<uint8_t*, 3>&)> apply;
};

inline std::vector<Spoil> spoilsOf(const Member& m) {
    std::vector<Spoil> v;
    using In = std::array<const uint8_t*, 3>;
    using Out = std::array<uint8_t*, 3>;
    switch (m.rule.source) {
        case Source::P3:
            v.push_back({"pSrc", false, [](CallArgs& a, In&, Out&) { a.srcPlanes = nullptr; }});
            if (!m.derivedSteps) {
                v.push_back({"srcStep", false, [](CallArgs& a, In&, Out&) { a.srcSteps = nullptr; }});
            }
            break;
        case Source::P2:
            v.push_back({"pSrcY", false, [](CallArgs& a, In&, Out&) { a.src = nullptr; }});
            v.push_back({"pSrcChroma", false, [](CallArgs& a, In&, Out&) { a.srcChroma = nullptr; }});
            break;
        case Source::C2:
            v.push_back({"pSrc", false, [](CallArgs& a, In&, Out&) { a.src = nullptr; }});
            break;
    }
    if (m.rule.dest == Dest::P3) {
        v.push_back({"pDst", false, [](CallArgs& a, In&, Out&) { a.dstPlanes = nullptr; }});
    } else {
        v.push_back({"pDst", false, [](CallArgs& a, In&, Out&) { a.dst = nullptr; }});
    }
    if (m.rule.source == Source::P3) {
        for (int i = 0; i < 3; ++i) {
            v.push_back({"pSrc[" + std::to_string(i) + "]", true, [i](CallArgs& a, In& in, Out&) {
                             if (a.srcPlanes == nullptr) return;  // the array itself is missing
                             for (int k = 0; k < 3; ++k) in[std::size_t(k)] = a.srcPlanes[k];
                             in[std::size_t(i)] = nullptr;
                             a.srcPlanes = in.data();
                         }});
        }
    }
    if (m.rule.dest == Dest::P3) {
        for (int i = 0; i < 3; ++i) {
            v.push_back({"pDst[" + std::to_string(i) + "]", true, [i](CallArgs& a, In&, Out& out) {
                             if (a.dstPlanes == nullptr) return;  // the array itself is missing
                             for (int k = 0; k < 3; ++k) out[std::size_t(k)] = a.dstPlanes[k];
                             out[std::size_t(i)] = nullptr;
                             a.dstPlanes = out.data();
                         }});
        }
    }
    return v;
}

// The status a call with one spoiled argument must give: a null pointer or array is
// reported before the size except in the members that test the size first; a null
// entry is reported before the size only in the members that test entries with their
// arrays.
inline PxkResult statusWithSpoil(const Member& m, const Spoil& s, bool sizeValid) {
    if (sizeValid) return pxkErrNullPtr;
    switch (m.checks) {
        case Checks::SizeThenPointers:
            return pxkErrSize;
        case Checks::ArraysThenSizeThenEntries:
            return s.entry ? pxkErrSize : pxkErrNullPtr;
        case Checks::PointersThenSize:
        case Checks::PointersAndEntriesThenSize:
            return pxkErrNullPtr;
    }
    return pxkErrNullPtr;
}

// Each argument spoiled alone, each pair of them, with the valid size and each bad
// size; each bad size alone, with zero and negative steps too (steps are never
// tested). No failing call writes anything; the valid call then converts.
inline void statusChecks(const Member& m) {
    StatusFixture f(m);
    const std::vector<Spoil> spoils = spoilsOf(m);
    std::vector<PxkSize> sizes = badSizes(m);
    sizes.insert(sizes.begin(), kValid);
    for (const PxkSize& z : sizes) {
        const bool valid = z.width == kValid.width && z.height == kValid.height;
        SCOPED_TRACE("size " + sizeText(z));
        for (std::size_t i = 0; i < spoils.size(); ++i) {
            for (std::size_t j = i; j < spoils.size(); ++j) {
                SCOPED_TRACE(i == j ? spoils[i].what : spoils[i].what + " and " + spoils[j].what);
                std::array<const uint8_t*, 3> in{};
                std::array<uint8_t*, 3> out{};
                CallArgs a = f.args(m, z);
                spoils[i].apply(a, in, out);
                if (j != i) spoils[j].apply(a, in, out);
                // Two spoils: the earlier check decides. A pointer or array is never
                // later than an entry; for the size, the worse of the two outcomes.
                PxkResult want = statusWithSpoil(m, spoils[i], valid);
                if (j != i && want == pxkErrSize) want = statusWithSpoil(m, spoils[j], valid);
                EXPECT_EQ(m.call(a), want);
            }
        }
        EXPECT_TRUE(f.nothingWritten());
    }
    for (const PxkSize& z : badSizes(m)) {
        SCOPED_TRACE("size " + sizeText(z));
        CallArgs a = f.args(m, z);
        EXPECT_EQ(m.call(a), pxkErrSize);
        a.srcStep = 0;
        a.srcChromaStep = -3;
        a.dstStep = -1;
        const int32_t oddSteps[3] = {0, -5, 1};
        if (a.srcSteps) a.srcSteps = oddSteps;
        EXPECT_EQ(m.call(a), pxkErrSize);
    }
    EXPECT_TRUE(f.nothingWritten());
    // Every pointer in place: the valid size converts and writes.
    EXPECT_EQ(m.call(f.args(m, kValid)), pxkOk);
    EXPECT_FALSE(f.dst.unchanged());
    EXPECT_TRUE(f.src.unchanged());
}

// The least size converts as the reference does; one less in width or in height is
// refused and writes nothing.
inline void leastSizeChecks(const Member& m) {
    const PxkSize l = m.least;
    Rng rng(pxktest::seedFor((m.name + "/least").c_str(), {}));
    for (const PxkSize& below : {PxkSize{l.width - 1, l.height}, PxkSize{l.width, l.height - 1}}) {
        Surface src = makeSource(m, l.width, l.height, tightPlan());
        Surface dst = makeDest(m, l.width, l.height, StepKind::Tight);
        src.fillRandom(rng);
        dst.fillRandom(rng);
        EXPECT_EQ(callOn(m, src, dst, below, 0x11), pxkErrSize) << sizeText(below);
        EXPECT_TRUE(dst.unchanged()) << sizeText(below);
    }
    Surface src = makeSource(m, l.width, l.height, tightPlan());
    Surface dst = makeDest(m, l.width, l.height, StepKind::Tight);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    EXPECT_TRUE(compareOnce(m, src, dst, l.width, l.height, 0x22)) << m.name;
}

// ---------------------------------------------------------------------------------
// Given pixels
// ---------------------------------------------------------------------------------

// Raw samples of one pixel as a member's source holds them: Y, Cb and Cr (or Y, U, V),
// whatever order the source keeps the chroma in.
struct Ycc {
    int y, cb, cr;
};

// Writes the samples of pixel (x, y) into the member's source. The chroma of a group
// is that of the last of its pixels written; a packed source keeps the first chroma of
// a pair with its first pixel and the second with its second pixel.
inline void setSamples(const Member& m, Surface& src, int x, int y, const Ycc& v) {
    const Rule& r = m.rule;
    const int first = r.cbFirst ? v.cb : v.cr;
    const int second = r.cbFirst ? v.cr : v.cb;
    if (r.source == Source::C2) {
        uint8_t* row = src.image(0).row(y);
        row[2 * x] = uint8_t(v.y);
        row[2 * x + 1] = uint8_t(x % 2 == 0 ? first : second);
        if (x % 2 == 1) row[2 * x - 1] = uint8_t(first);
        return;
    }
    if (y < src.image(0).height() && x < src.image(0).width()) src.at(x, y, 0) = uint8_t(v.y);
    const int cy = r.sampling == Sampling::S420 ? y / 2 : y;
    const int cx = r.sampling == Sampling::S411 ? x / 4 : x / 2;
    if (cy >= src.image(1).height() || cx >= src.image(1).width()) return;
    if (r.source == Source::P2) {
        src.image(1).at(cx, cy, 0) = uint8_t(first);
        src.image(1).at(cx, cy, 1) = uint8_t(second);
    } else {
        src.image(1).at(cx, cy, 0) = uint8_t(first);
        src.image(2).at(cx, cy, 0) = uint8_t(second);
    }
}

// Every one of the 2^24 inputs (Y, first chroma, second chroma): each pair of chroma
// samples in a group of its own, and over the slices the pixels of each group take
// every luma value (slice s gives pixel k of a group of n pixels the luma s * n + k).
// Rows of `width` pixels: a multiple of 16 puts every input in the vector columns.
inline void everyInputAgainstReference(const Member& m, int width) {
    const Rule& r = m.rule;
    const int groupWidth = r.sampling == Sampling::S411 ? 4 : 2;
    const int groupRows = r.sampling == Sampling::S420 ? 2 : 1;
    const int n = groupWidth * groupRows;
    const int groupsPerRow = width / groupWidth;
    const int height = (65536 + groupsPerRow - 1) / groupsPerRow * groupRows;
    Rng rng(pxktest::seedFor((m.name + "/every").c_str(), {uint32_t(width)}));
    Surface src =
        makeSource(m, width, height, StepPlan{StepKind::Padded, StepKind::Odd, StepKind::Tight, StepKind::Odd});
    Surface dst = makeDest(m, width, height, StepKind::Odd);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    auto groupOf = [&](int x, int y) {
        return (uint32_t(y / groupRows) * uint32_t(groupsPerRow) + uint32_t(x / groupWidth)) & 0xFFFFu;
    };
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const uint32_t group = groupOf(x, y);
            setSamples(m, src, x, y,
                       Ycc{0, r.cbFirst ? int(group >> 8) : int(group & 0xFF),
                           r.cbFirst ? int(group & 0xFF) : int(group >> 8)});
        }
    }
    src.snapshot();
    dst.snapshot();
    Surface expected = dst.clone();
    const PxkResult want = expectedStatus(m, width, height);
    for (int slice = 0; slice < 256 / n; ++slice) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const int k = (y % groupRows) * groupWidth + x % groupWidth;
                const uint8_t luma = uint8_t(slice * n + k);
                if (r.source == Source::C2) {
                    src.image(0).row(y)[2 * x] = luma;
                } else if (y < src.image(0).height() && x < src.image(0).width()) {
                    src.at(x, y, 0) = luma;
                }
            }
        }
        const uint8_t alpha = uint8_t(slice * 29 + 3);
        runReference(m, src, expected, width, height, alpha);
        const PxkResult st = callOn(m, src, dst, PxkSize{width, height}, alpha);
        ::testing::AssertionResult res = ::testing::AssertionSuccess();
        if (st != want) res = ::testing::AssertionFailure() << "status " << st << ", expected " << want;
        if (res) res = pxktest::sameContents(dst, expected);
        if (res) res = dst.guardsIntact();
        if (!res) {
            ADD_FAILURE() << m.name << " width " << width << ", slice " << slice << ": " << res.message();
            return;
        }
    }
}

// Converts a width x height region whose every pixel holds `v`, over a destination
// whose region holds `fill` and whose guards hold another value; checks the status,
// the guards and the source, and returns the destination.
inline Surface convertUniform(const Member& m, int width, int height, const Ycc& v, uint8_t alpha = 0xA7,
                              uint8_t fill = 0xEE) {
    Surface src =
        makeSource(m, width, height, StepPlan{StepKind::Padded, StepKind::Odd, StepKind::Padded, StepKind::Padded});
    Rng rng(pxktest::seedFor((m.name + "/uniform").c_str(), {uint32_t(width), uint32_t(height)}));
    src.fillRandom(rng);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) setSamples(m, src, x, y, v);
    }
    src.snapshot();
    Surface dst = makeDest(m, width, height, StepKind::Padded);
    for (int i = 0; i < dst.imageCount(); ++i) dst.image(i).fill(fill, 0x5A);
    EXPECT_EQ(callOn(m, src, dst, PxkSize{width, height}, alpha), expectedStatus(m, width, height)) << m.name;
    EXPECT_TRUE(dst.guardsIntact()) << m.name;
    EXPECT_TRUE(src.unchanged()) << m.name;
    return dst;
}

// R, G, B (or, past them, alpha: channel 3) of pixel (x, y) of a destination.
inline int channelAt(const Member& m, const Surface& d, int x, int y, int c) {
    if (m.rule.dest == Dest::P3) return d.at(x, y, c);
    if (c == 3) return d.at(x, y, 3);
    const int byte = m.rule.bgr ? 2 - c : c;
    return d.at(x, y, byte);
}

inline std::string rgbText(int r, int g, int b) {
    return "(" + std::to_string(r) + ", " + std::to_string(g) + ", " + std::to_string(b) + ")";
}

inline std::string rgbAt(const Member& m, const Surface& d, int x, int y) {
    return rgbText(channelAt(m, d, x, y, 0), channelAt(m, d, x, y, 1), channelAt(m, d, x, y, 2));
}

// ---------------------------------------------------------------------------------
// Test parameters
// ---------------------------------------------------------------------------------

struct SweepParam {
    const Member* member;
    StepPlan plan;
};

inline std::vector<SweepParam> sweepParams(const std::vector<const Member*>& members) {
    std::vector<SweepParam> v;
    for (const Member* m : members) {
        for (const StepPlan& p : stepPlans()) {
            v.push_back({m, p});
            if (m->derivedSteps) break;
        }
    }
    return v;
}

inline std::string sweepParamName(const ::testing::TestParamInfo<SweepParam>& info) {
    return info.param.member->name + "_" + stepPlanName(info.param.plan);
}

inline std::string memberParamName(const ::testing::TestParamInfo<const Member*>& info) { return info.param->name; }

inline void PrintTo(const SweepParam& p, std::ostream* os) { *os << p.member->name << " " << stepPlanName(p.plan); }
inline void PrintTo(const Member* m, std::ostream* os) { *os << m->name; }

}  // namespace s2rgb

// `Prefix`Sweep: each member of `membersList()` against its reference over every size
// and step plan; `Prefix`Each: alignments, every chroma pair in vector and in tail
// columns, least size, statuses; `Prefix`Vector: every input in the vector columns of
// the members of `exhaustiveList()` (one or two for each vector form and source layout).
#define S2RGB_REFERENCE_SUITES(Prefix, membersList, exhaustiveList)                                                 \
    class Prefix##Sweep : public ::testing::TestWithParam<s2rgb::SweepParam> {};                                    \
    TEST_P(Prefix##Sweep, MatchesReference) { s2rgb::sweepAgainstReference(*GetParam().member, GetParam().plan); }  \
    INSTANTIATE_TEST_SUITE_P(AllMembers, Prefix##Sweep, ::testing::ValuesIn(s2rgb::sweepParams(membersList())),     \
                             s2rgb::sweepParamName);                                                                \
    class Prefix##Each : public ::testing::TestWithParam<const s2rgb::Member*> {};                                  \
    TEST_P(Prefix##Each, AnyAlignmentMatchesReference) { s2rgb::alignmentsAgainstReference(*GetParam()); }          \
    TEST_P(Prefix##Each, EveryChromaPairInVectorColumnsMatchesReference) {                                          \
        s2rgb::everyChromaPairAgainstReference(*GetParam(), 256);                                                   \
    }                                                                                                               \
    TEST_P(Prefix##Each, EveryChromaPairInTailColumnsMatchesReference) {                                            \
        for (int w : s2rgb::tailWidths(*GetParam())) s2rgb::everyChromaPairAgainstReference(*GetParam(), w);        \
    }                                                                                                               \
    TEST_P(Prefix##Each, StatusesAndCheckOrder) { s2rgb::statusChecks(*GetParam()); }                               \
    TEST_P(Prefix##Each, LeastSize) { s2rgb::leastSizeChecks(*GetParam()); }                                        \
    INSTANTIATE_TEST_SUITE_P(AllMembers, Prefix##Each, ::testing::ValuesIn(membersList()), s2rgb::memberParamName); \
    class Prefix##Vector : public ::testing::TestWithParam<const s2rgb::Member*> {};                                \
    TEST_P(Prefix##Vector, EveryInputInVectorColumnsMatchesReference) {                                             \
        s2rgb::everyInputAgainstReference(*GetParam(), 256);                                                        \
    }                                                                                                               \
    INSTANTIATE_TEST_SUITE_P(VectorFormMembers, Prefix##Vector, ::testing::ValuesIn(exhaustiveList()),              \
                             s2rgb::memberParamName)

#endif
