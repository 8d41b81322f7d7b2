// An export with subsampled chroma as the tests see it: its table entry (sampling,
// layouts, how to call it, its reference), the sizes its sampling allows, the
// surfaces it converts between, and one comparison of a call with its reference.
#ifndef PXKCC_TESTS_YUV_SUBSAMPLED_EXPORT_H
#define PXKCC_TESTS_YUV_SUBSAMPLED_EXPORT_H

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "random.h"
#include "reference_subsampled.h"
#include "surface.h"
#include "sweep.h"

namespace subtest {

using pxktest::GuardOptions;
using pxktest::ImageGeometry;
using pxktest::Rng;
using pxktest::StepKind;
using pxktest::Surface;

enum class Sampling { S420, S411, S422 };
// P3: Y plane and two chroma planes, each with its own step. C2: one packed plane of
// Y0 Cb Y1 Cr, two bytes a pixel. P2: a Y plane and a plane of Cb, Cr pairs.
enum class DestLayout { P3, C2, P2 };
// Packed: one image of srcBytes bytes a pixel. Planar: three planes R, G, B.
enum class SourceLayout { Packed, Planar };

using P3Fn = PxkResult (*)(const uint8_t*, int32_t, uint8_t* const[3], const int32_t[3], PxkSize);
using C2Fn = PxkResult (*)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize);
// A call on the test's surfaces (source and destination as makeSource and makeDest
// build them), for the shapes that p3 and c2 do not cover.
using SurfaceCall = std::function<PxkResult(Surface& src, Surface& dst, PxkSize size)>;

// One export under test.
struct SubsampledExport {
    std::string name;
    int srcBytes;  // 3, or 4 with a fourth byte that is ignored
    bool bgr;      // byte 0 of a source pixel is B
    Sampling sampling;
    DestLayout dest;
    P3Fn p3;  // set for P3 destinations
    C2Fn c2;  // set for C2 destinations
    // The reference: for C2, plane 0 and step 0 of the destination are the packed image;
    // for P2, plane 0 is Y and plane 1 the Cb, Cr pairs.
    std::function<void(const subref::PackedSource&, const subref::PlanarDest&, int width, int height)> reference;

    // Other shapes; the defaults describe the members above.
    SourceLayout source = SourceLayout::Packed;  // Planar sources have srcBytes 1
    bool ownSourceSteps = false;                 // a planar source with a step per plane
    SurfaceCall call = nullptr;                  // when set, used in place of p3 and c2
    PxkSize least = {0, 0};                      // least size, where not the sampling's
    bool oddChromaColumn = false;  // 4:2:2 chroma planes of (width + 1) / 2 columns
    bool derivedSteps = false;     // takes no steps: every side is laid out tight
};

// ---------------------------------------------------------------------------------
// Sizes
// ---------------------------------------------------------------------------------

inline PxkSize minimumSize(Sampling s) {
    switch (s) {
        case Sampling::S420:
            return {2, 2};
        case Sampling::S411:
            return {4, 1};
        case Sampling::S422:
            return {2, 1};
    }
    throw std::invalid_argument("sampling");
}

// The status of a call with a valid size.
inline PxkResult expectedStatus(Sampling s, int width, int height) {
    switch (s) {
        case Sampling::S420:
            return (width % 2 != 0 || height % 2 != 0) ? pxkWarnOddSize : pxkOk;
        case Sampling::S411:
            return width % 4 != 0 ? pxkWarnOddSize : pxkOk;
        case Sampling::S422:
            return pxkOk;
    }
    throw std::invalid_argument("sampling");
}

inline PxkSize minimumSize(const SubsampledExport& ex) {
    return ex.least.width > 0 ? ex.least : minimumSize(ex.sampling);
}

// The part of the source that a call may read: whole chroma groups only in 4:2:0 and
// 4:1:1; every pixel in 4:2:2.
inline PxkSize readableExtent(Sampling s, int width, int height) {
    switch (s) {
        case Sampling::S420:
            return {width - width % 2, height - height % 2};
        case Sampling::S411:
            return {width - width % 4, height};
        case Sampling::S422:
            return {width, height};
    }
    throw std::invalid_argument("sampling");
}

// Chroma plane size for a region of width x height.
inline PxkSize chromaPlaneSize(Sampling s, int width, int height) {
    switch (s) {
        case Sampling::S420:
            return {width / 2, height / 2};
        case Sampling::S411:
            return {width / 4, height};
        case Sampling::S422:
            return {width / 2, height};
    }
    throw std::invalid_argument("sampling");
}

inline PxkSize chromaPlaneSize(const SubsampledExport& ex, int width, int height) {
    if (ex.oddChromaColumn) return {(width + 1) / 2, height};
    return chromaPlaneSize(ex.sampling, width, height);
}

// Sizes below the least size m, or not positive.
inline std::vector<PxkSize> badSizesBelow(PxkSize m, Sampling s) {
    std::vector<PxkSize> v = {{0, m.height},        {m.width, 0},         {0, 0},
                              {-1, m.height},       {m.width, -1},        {-5, -5},
                              {INT32_MIN, m.height}, {m.width, INT32_MIN}, {INT32_MIN, INT32_MIN},
                              {-m.width, m.height}, {m.width - 1, m.height}, {m.width - 1, 64}};
    if (m.width > 1 || m.height > 1) v.push_back({1, 1});
    if (m.height > 1) {
        v.push_back({m.width, m.height - 1});
        v.push_back({64, m.height - 1});
    }
    if (s == Sampling::S411) {
        v.push_back({2, 1});
        v.push_back({3, 9});
    }
    return v;
}

// Sizes below the minimum, or not positive, for a sampling, or for an export.
inline std::vector<PxkSize> badSizes(Sampling s) { return badSizesBelow(minimumSize(s), s); }
inline std::vector<PxkSize> badSizes(const SubsampledExport& ex) { return badSizesBelow(minimumSize(ex), ex.sampling); }

inline std::string sizeText(PxkSize z) { return std::to_string(z.width) + "x" + std::to_string(z.height); }

// ---------------------------------------------------------------------------------
// Surfaces
// ---------------------------------------------------------------------------------

// Steps of the three destination planes (a C2 destination uses the first).
struct DestSteps {
    StepKind y, c1, c2;
};

// The destination of a region: a packed image (C2), a Y plane and a plane of chroma
// pairs (P2, the pairs' plane taking the c1 step), or three planes. Members without
// steps get tight rows, whatever the steps asked for.
inline Surface makeDest(const SubsampledExport& ex, int width, int height, const DestSteps& asked,
                        const GuardOptions& options = {}) {
    const DestSteps k = ex.derivedSteps ? DestSteps{StepKind::Tight, StepKind::Tight, StepKind::Tight} : asked;
    if (ex.dest == DestLayout::C2) {
        return Surface::packed(width, height, 2, pxktest::stepFor(k.y, std::size_t(width) * 2), options);
    }
    const PxkSize c = chromaPlaneSize(ex, width, height);
    if (ex.dest == DestLayout::P2) {
        return Surface::planar(
            {ImageGeometry{width, height, 1, 1, pxktest::stepFor(k.y, std::size_t(width))},
             ImageGeometry{c.width, c.height, 2, 1, pxktest::stepFor(k.c1, std::size_t(c.width) * 2)}},
            options);
    }
    return Surface::planar({ImageGeometry{width, height, 1, 1, pxktest::stepFor(k.y, std::size_t(width))},
                            ImageGeometry{c.width, c.height, 1, 1, pxktest::stepFor(k.c1, std::size_t(c.width))},
                            ImageGeometry{c.width, c.height, 1, 1, pxktest::stepFor(k.c2, std::size_t(c.width))}},
                           options);
}

inline Surface makeDest(const SubsampledExport& ex, int width, int height, StepKind all = StepKind::Tight,
                        const GuardOptions& options = {}) {
    return makeDest(ex, width, height, DestSteps{all, all, all}, options);
}

// Bytes of a source row of `width` pixels (of each plane, for a planar source).
inline int tightSourceStep(const SubsampledExport& ex, int width) { return width * ex.srcBytes; }

// A source of `extent` pixels with the given row steps: one packed image (the first
// step), or three planes R, G, B. Members without steps get the tight rows of a
// region `width` pixels wide, whatever the steps asked for.
inline Surface makeSourceOf(const SubsampledExport& ex, PxkSize extent, int width, std::array<int, 3> steps,
                            const GuardOptions& options) {
    if (ex.derivedSteps) steps.fill(tightSourceStep(ex, width));
    if (ex.source == SourceLayout::Packed) {
        return Surface::packed(extent.width, extent.height, ex.srcBytes, steps[0], options);
    }
    return Surface::planar({ImageGeometry{extent.width, extent.height, 1, 1, steps[0]},
                            ImageGeometry{extent.width, extent.height, 1, 1, steps[1]},
                            ImageGeometry{extent.width, extent.height, 1, 1, steps[2]}},
                           options);
}

// A source holding only the pixels the call may read, laid out with the step of the
// whole region's rows (every plane's, for a planar source).
inline Surface makeSource(const SubsampledExport& ex, int width, int height, int step,
                          const GuardOptions& options = {}) {
    return makeSourceOf(ex, readableExtent(ex.sampling, width, height), width, {step, step, step}, options);
}

// The same with a step for each plane of a planar source.
inline Surface makeSource(const SubsampledExport& ex, int width, int height, const std::array<int, 3>& steps,
                          const GuardOptions& options = {}) {
    return makeSourceOf(ex, readableExtent(ex.sampling, width, height), width, steps, options);
}

// A source holding every pixel of the region.
inline Surface makeFullSource(const SubsampledExport& ex, int width, int height, int step,
                              const GuardOptions& options = {}) {
    return makeSourceOf(ex, PxkSize{width, height}, width, {step, step, step}, options);
}

// Calls a member of a packed source through p3 or c2.
inline PxkResult callExport(const SubsampledExport& ex, const uint8_t* src, int32_t srcStep, Surface& dst,
                            PxkSize size) {
    if (ex.call || (ex.dest == DestLayout::C2 ? ex.c2 == nullptr : ex.p3 == nullptr)) {
        throw std::invalid_argument(ex.name + " is called on its surfaces");
    }
    if (ex.dest == DestLayout::C2) return ex.c2(src, srcStep, dst.data(), dst.step(), size);
    const int32_t steps[3] = {dst.image(0).step(), dst.image(1).step(), dst.image(2).step()};
    return ex.p3(src, srcStep, dst.planes(), steps, size);
}

// Calls any member on a source and destination built by makeSource and makeDest.
inline PxkResult callExport(const SubsampledExport& ex, Surface& src, Surface& dst, PxkSize size) {
    if (ex.call) return ex.call(src, dst, size);
    return callExport(ex, src.data(), src.step(), dst, size);
}

inline void runReference(const SubsampledExport& ex, Surface& src, Surface& dst, int width, int height) {
    subref::RgbSource s{src.data(), src.step(), ex.srcBytes, ex.bgr};
    if (ex.source == SourceLayout::Planar) {
        for (int i = 0; i < 3; ++i) {
            s.plane[i] = src.image(i).data();
            s.planeStep[i] = src.image(i).step();
        }
    }
    subref::PlanarDest d{};
    if (ex.dest == DestLayout::C2) {
        d.plane[0] = dst.data();
        d.step[0] = dst.step();
    } else {
        for (int i = 0; i < dst.imageCount(); ++i) {
            d.plane[i] = dst.image(i).data();
            d.step[i] = dst.image(i).step();
        }
    }
    ex.reference(s, d, width, height);
}

// Calls the export and its reference on the same images; the status, every sample of
// the destination (bytes the call must leave alone included), the guards and the
// source are checked.
inline ::testing::AssertionResult compareOnce(const SubsampledExport& ex, Surface& src, Surface& dst, int width,
                                              int height) {
    src.snapshot();
    dst.snapshot();
    Surface expected = dst.clone();
    runReference(ex, src, expected, width, height);
    const PxkResult want = expectedStatus(ex.sampling, width, height);
    const PxkResult st = callExport(ex, src, dst, PxkSize{width, height});
    return pxktest::sameOutcome(st, want, dst, expected, src);
}

}  // namespace subtest

#endif
