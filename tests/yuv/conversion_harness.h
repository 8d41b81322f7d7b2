// Harness shared by the full-resolution conversion tests: a table entry for each export
// (its layouts, how to call it and its reference), and the sweeps that compare the two.
#ifndef PXKCC_TESTS_YUV_CONVERSION_HARNESS_H
#define PXKCC_TESTS_YUV_CONVERSION_HARNESS_H

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
#include "alignment_sweep.h"
#include "random.h"
#include "surface.h"
#include "sweep.h"

namespace yuvtest {

using pxktest::GuardOptions;
using pxktest::Rng;
using pxktest::Surface;

// P4: four planes sharing one step (the fourth takes byte 3 of a four-byte source).
enum class Layout { C3, AC4, C4, P3, P4 };

inline bool isPlanar(Layout l) { return l == Layout::P3 || l == Layout::P4; }
inline int planeCount(Layout l) { return l == Layout::P4 ? 4 : 3; }
inline int packedChannels(Layout l) { return l == Layout::C3 ? 3 : 4; }
inline std::size_t rowBytesOf(Layout l, int width) {
    return std::size_t(width) * (isPlanar(l) ? 1u : std::size_t(packedChannels(l)));
}

inline Surface makeSurface(Layout l, int width, int height, int step, const GuardOptions& options = {}) {
    if (isPlanar(l)) return Surface::planar(width, height, planeCount(l), step, options);
    return Surface::packed(width, height, packedChannels(l), step, options);
}

// One export under test.
struct ExportUnderTest {
    std::string name;
    Layout src;
    Layout dst;
    bool keepsDstAlpha;  // byte 3 of each destination pixel must stay as it was
    std::function<PxkResult(Surface& src, Surface& dst, PxkSize size, uint8_t alpha)> call;
    std::function<void(Surface& src, Surface& dst, int width, int height, uint8_t alpha)> reference;
};

// Result of one comparison of an export with its reference.
inline ::testing::AssertionResult compareOnce(const ExportUnderTest& ex, Surface& src, Surface& dst, int width,
                                              int height, uint8_t alpha) {
    if (ex.keepsDstAlpha) dst.protectChannel(3);
    dst.snapshot();
    src.snapshot();
    Surface expected = dst.clone();
    ex.reference(src, expected, width, height, alpha);
    const PxkResult st = ex.call(src, dst, PxkSize{width, height}, alpha);
    return pxktest::sameOutcome(st, pxkOk, dst, expected, src);
}

// Compare an export with its reference over random images of every sweep width and
// height with the given steps. Sources end flush against an inaccessible page, so a
// read past the last byte of the highest row faults.
inline void sweepAgainstReference(const ExportUnderTest& ex, const pxktest::StepPlan& plan) {
    for (int width : pxktest::sweepWidths()) {
        for (int height : pxktest::sweepHeights(width)) {
            Rng rng(pxktest::seedFor(ex.name.c_str(),
                                     {uint32_t(width), uint32_t(height), uint32_t(plan.src), uint32_t(plan.dst)}));
            const int srcStep = pxktest::stepFor(plan.src, rowBytesOf(ex.src, width));
            const int dstStep = pxktest::stepFor(plan.dst, rowBytesOf(ex.dst, width));
            GuardOptions srcOpt;
            srcOpt.after = 0;
            srcOpt.fenceAfter = true;
            srcOpt.misalign = std::size_t(rng.uniform(0, 15));
            GuardOptions dstOpt;
            dstOpt.misalign = std::size_t(rng.uniform(0, 15));
            Surface src = makeSurface(ex.src, width, height, srcStep, srcOpt);
            Surface dst = makeSurface(ex.dst, width, height, dstStep, dstOpt);
            src.fillRandom(rng);
            dst.fillRandom(rng);
            const uint8_t alpha = rng.byte();
            ::testing::AssertionResult r = compareOnce(ex, src, dst, width, height, alpha);
            if (!r) {
                ADD_FAILURE() << ex.name << " width " << width << " height " << height << ", srcStep " << srcStep
                              << ", dstStep " << dstStep << ", alpha " << int(alpha) << ": " << r.message();
                return;  // one report per sweep keeps the output readable
            }
        }
    }
}

// The same conversion at every alignment of source and destination modulo 16: the
// result depends on the column alone, never on an address.
inline void alignmentsAgainstReference(const ExportUnderTest& ex) {
    const int width = 37, height = 2;
    pxktest::everyAlignment(ex.name, [&](const GuardOptions& srcOpt, const GuardOptions& dstOpt, Rng& rng) {
        Surface src = makeSurface(ex.src, width, height, int(rowBytesOf(ex.src, width)) + 16, srcOpt);
        Surface dst = makeSurface(ex.dst, width, height, int(rowBytesOf(ex.dst, width)) + 16, dstOpt);
        src.fillRandom(rng);
        dst.fillRandom(rng);
        return compareOnce(ex, src, dst, width, height, rng.byte());
    });
}

// Dense inputs: 16 slices of the 2^24 three-sample inputs, each holding one sample
// fixed (0, 17, ..., 255, the fixed channel turning with the slice) and the other two
// over all 65536 pairs, in rows of `width` pixels. With a width that is a multiple of 8
// every input lands in the vector columns; with a width below 8, in the tail.
inline void denseAgainstReference(const ExportUnderTest& ex, int width) {
    const int perSlice = 65536;
    const int height = (perSlice + width - 1) / width;
    Rng rng(pxktest::seedFor((ex.name + "/dense").c_str(), {uint32_t(width)}));
    Surface src = makeSurface(ex.src, width, height, int(rowBytesOf(ex.src, width)));
    Surface dst = makeSurface(ex.dst, width, height, int(rowBytesOf(ex.dst, width)) + 5);
    src.fillRandom(rng);  // alpha bytes of a 4-channel source stay random
    dst.fillRandom(rng);
    for (int slice = 0; slice < 16; ++slice) {
        const int fixedChannel = slice % 3;
        const uint8_t fixedValue = uint8_t(slice * 17);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const uint32_t i = (uint32_t(y) * uint32_t(width) + uint32_t(x)) % uint32_t(perSlice);
                src.at(x, y, fixedChannel) = fixedValue;
                src.at(x, y, (fixedChannel + 1) % 3) = uint8_t(i >> 8);
                src.at(x, y, (fixedChannel + 2) % 3) = uint8_t(i);
            }
        }
        const uint8_t alpha = uint8_t(slice * 37 + 11);
        ::testing::AssertionResult r = compareOnce(ex, src, dst, width, height, alpha);
        if (!r) {
            ADD_FAILURE() << ex.name << " width " << width << ", slice " << slice << " (channel " << fixedChannel
                          << " fixed at " << int(fixedValue) << "): " << r.message();
            return;
        }
    }
}

// Every one of the 2^24 three-sample inputs, once: 256 slices, slice s holding the
// first sample at s and the other two over all 65536 pairs, in rows of `width` pixels
// (a multiple of 16 puts every input in the vector columns; a width below 8 every
// input in the tail). One pair of images serves all slices; the guards and the bytes
// the export must leave alone are checked after every slice.
inline void everyInputAgainstReference(const ExportUnderTest& ex, int width) {
    const int perSlice = 65536;
    const int height = (perSlice + width - 1) / width;
    Rng rng(pxktest::seedFor((ex.name + "/every").c_str(), {uint32_t(width)}));
    Surface src = makeSurface(ex.src, width, height, int(rowBytesOf(ex.src, width)) + 1);
    Surface dst = makeSurface(ex.dst, width, height, int(rowBytesOf(ex.dst, width)) + 3);
    src.fillRandom(rng);  // alpha bytes of a four-byte source stay random
    dst.fillRandom(rng);
    if (ex.keepsDstAlpha) dst.protectChannel(3);
    dst.snapshot();
    Surface expected = dst.clone();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const uint32_t i = (uint32_t(y) * uint32_t(width) + uint32_t(x)) % uint32_t(perSlice);
            src.at(x, y, 1) = uint8_t(i >> 8);
            src.at(x, y, 2) = uint8_t(i);
        }
    }
    for (int slice = 0; slice < 256; ++slice) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) src.at(x, y, 0) = uint8_t(slice);
        }
        const uint8_t alpha = uint8_t(slice * 37 + 11);
        ex.reference(src, expected, width, height, alpha);
        const PxkResult st = ex.call(src, dst, PxkSize{width, height}, alpha);
        ::testing::AssertionResult r = ::testing::AssertionSuccess();
        if (st != pxkOk) r = ::testing::AssertionFailure() << "status " << st << ", expected pxkOk (0)";
        if (r) r = pxktest::sameContents(dst, expected);
        if (r) r = dst.guardsIntact();
        if (!r) {
            ADD_FAILURE() << ex.name << " width " << width << ", first sample " << slice << ": " << r.message();
            return;
        }
    }
}

// Visits the 2^24 three-sample inputs in a scattered order (the code times an odd
// constant modulo 2^24, a bijection), so that rare inputs turn up early. `visit`
// returns true to stop.
template <typename Visit>
inline void forEachInputScattered(Visit&& visit) {
    for (uint32_t i = 0; i < (1u << 24); ++i) {
        const uint32_t code = (i * 0x9E3779B1u) & 0xFFFFFFu;
        if (visit(int(code >> 16), int((code >> 8) & 0xFF), int(code & 0xFF))) return;
    }
}

// A disagreement to look for between two forms: in `channel`, the first form lower
// (sign -1), higher (+1) or just different (0).
struct Wanted {
    int channel;
    int sign;
};

// The first input found for each wanted disagreement, in the order of `wanted`;
// entries never found are missing (found == false).
struct Found {
    Wanted wanted;
    bool found = false;
    std::array<int, 3> input{};
};

template <typename ChannelDiff>
inline std::vector<Found> searchDisagreements(const std::vector<Wanted>& wanted, ChannelDiff&& diff) {
    std::vector<Found> out;
    for (const Wanted& w : wanted) out.push_back(Found{w});
    std::size_t remaining = out.size();
    forEachInputScattered([&](int a, int b, int c) {
        for (Found& f : out) {
            if (f.found) continue;
            const int d = diff(a, b, c, f.wanted.channel);
            if ((f.wanted.sign == 0 && d != 0) || (f.wanted.sign < 0 && d < 0) || (f.wanted.sign > 0 && d > 0)) {
                f.found = true;
                f.input = {a, b, c};
                --remaining;
            }
        }
        return remaining == 0;
    });
    return out;
}

// Sizes below the minimum of a full-resolution export (1 by 1).
inline const std::vector<PxkSize>& badSizes() {
    static const std::vector<PxkSize> s = {{0, 1},   {1, 0}, {0, 0}, {-1, 1},        {1, -1},
                                           {-5, -5}, {0, 7}, {9, 0}, {INT32_MIN, 1}, {1, INT32_MIN}};
    return s;
}

// A valid size for status tests: one block of 8 and a tail pixel, two rows.
inline constexpr PxkSize kValid{9, 2};

// Random source and destination of the valid size, to check that a failing call
// writes nothing.
struct StatusFixture {
    Surface src;
    Surface dst;
    explicit StatusFixture(Layout s, Layout d)
        : src(makeSurface(s, kValid.width, kValid.height, int(rowBytesOf(s, kValid.width)))),
          dst(makeSurface(d, kValid.width, kValid.height, int(rowBytesOf(d, kValid.width)))) {
        Rng rng(314);
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

using PackedCall = std::function<PxkResult(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize)>;

// Packed to packed (C3R, AC4R, C3C4R): src, dst, then size.
inline void packedStatusChecks(Layout s, Layout d, const PackedCall& fn) {
    StatusFixture f(s, d);
    const int ss = f.src.step(), ds = f.dst.step();
    EXPECT_EQ(fn(nullptr, ss, f.dst.data(), ds, kValid), pxkErrNullPtr);
    EXPECT_TRUE(f.nothingWritten());
    EXPECT_EQ(fn(f.src.data(), ss, nullptr, ds, kValid), pxkErrNullPtr);
    EXPECT_TRUE(f.nothingWritten());
    EXPECT_EQ(fn(nullptr, ss, nullptr, ds, kValid), pxkErrNullPtr);
    for (const PxkSize& z : badSizes()) {
        SCOPED_TRACE("size " + std::to_string(z.width) + "x" + std::to_string(z.height));
        EXPECT_EQ(fn(f.src.data(), ss, f.dst.data(), ds, z), pxkErrSize);
        EXPECT_TRUE(f.nothingWritten());
        // Pointers are tested before the size.
        EXPECT_EQ(fn(nullptr, ss, f.dst.data(), ds, z), pxkErrNullPtr);
        EXPECT_EQ(fn(f.src.data(), ss, nullptr, ds, z), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
    // Steps are not tested: zero and negative steps with a bad size still report the size.
    EXPECT_EQ(fn(f.src.data(), 0, f.dst.data(), -1, PxkSize{0, 1}), pxkErrSize);
    EXPECT_TRUE(f.nothingWritten());
}

inline void packedStatusChecks(Layout l, PxkResult (*fn)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize)) {
    packedStatusChecks(l, l, PackedCall(fn));
}

// A call for status tests with each side given either as a packed pointer or as a
// plane array; the side that the export does not take as that kind is ignored.
using SidesCall = std::function<PxkResult(const uint8_t* srcPacked, const uint8_t* const* srcPlanes, int32_t srcStep,
                                          uint8_t* dstPacked, uint8_t* const* dstPlanes, int32_t dstStep, PxkSize)>;

// Checks tested in two stages: the packed pointers and the array pointers themselves,
// then the size, then each entry of the source array and each of the first
// `dstEntriesTested` entries of the destination array. A null pointer or array wins
// over a bad size; a bad size wins over a null entry. Failing calls write nothing.
inline void twoStageStatusChecks(Layout s, Layout d, int dstEntriesTested, const SidesCall& fn) {
    StatusFixture f(s, d);
    const int ss = f.src.step(), ds = f.dst.step();
    const bool srcArray = isPlanar(s), dstArray = isPlanar(d);
    const int srcEntries = srcArray ? planeCount(s) : 0;
    const int dstEntries = dstArray ? planeCount(d) : 0;
    std::array<const uint8_t*, 4> in{};
    std::array<uint8_t*, 4> out{};
    for (int i = 0; i < srcEntries; ++i) in[std::size_t(i)] = f.src.constPlanes()[i];
    for (int i = 0; i < dstEntries; ++i) out[std::size_t(i)] = f.dst.planes()[i];
    const uint8_t* srcPacked = srcArray ? nullptr : f.src.data();
    uint8_t* dstPacked = dstArray ? nullptr : f.dst.data();

    // The whole source or destination missing, with a valid or a bad size.
    auto callNullSrc = [&](PxkSize z) {
        return fn(nullptr, nullptr, ss, dstPacked, dstArray ? out.data() : nullptr, ds, z);
    };
    auto callNullDst = [&](PxkSize z) {
        return fn(srcPacked, srcArray ? in.data() : nullptr, ss, nullptr, nullptr, ds, z);
    };
    EXPECT_EQ(callNullSrc(kValid), pxkErrNullPtr);
    EXPECT_EQ(callNullDst(kValid), pxkErrNullPtr);
    EXPECT_EQ(fn(nullptr, nullptr, ss, nullptr, nullptr, ds, kValid), pxkErrNullPtr);
    EXPECT_TRUE(f.nothingWritten());
    for (const PxkSize& z : badSizes()) {
        SCOPED_TRACE("size " + std::to_string(z.width) + "x" + std::to_string(z.height));
        EXPECT_EQ(callNullSrc(z), pxkErrNullPtr);
        EXPECT_EQ(callNullDst(z), pxkErrNullPtr);
        EXPECT_EQ(fn(srcPacked, srcArray ? in.data() : nullptr, ss, dstPacked, dstArray ? out.data() : nullptr, ds, z),
                  pxkErrSize);
        EXPECT_TRUE(f.nothingWritten());
    }

    // One null entry at a time: reported for a valid size only.
    auto callWithNullEntry = [&](bool inSrc, int entry, PxkSize z, int32_t srcStep, int32_t dstStep) {
        std::array<const uint8_t*, 4> i2 = in;
        std::array<uint8_t*, 4> o2 = out;
        if (inSrc) {
            i2[std::size_t(entry)] = nullptr;
        } else {
            o2[std::size_t(entry)] = nullptr;
        }
        return fn(srcPacked, srcArray ? i2.data() : nullptr, srcStep, dstPacked, dstArray ? o2.data() : nullptr,
                  dstStep, z);
    };
    for (int side = 0; side < 2; ++side) {
        const bool inSrc = side == 0;
        const int entries = inSrc ? srcEntries : dstEntriesTested;
        for (int e = 0; e < entries; ++e) {
            SCOPED_TRACE(std::string(inSrc ? "null src entry " : "null dst entry ") + std::to_string(e));
            EXPECT_EQ(callWithNullEntry(inSrc, e, kValid, ss, ds), pxkErrNullPtr);
            EXPECT_TRUE(f.nothingWritten());
            for (const PxkSize& z : badSizes()) {
                SCOPED_TRACE("size " + std::to_string(z.width) + "x" + std::to_string(z.height));
                EXPECT_EQ(callWithNullEntry(inSrc, e, z, ss, ds), pxkErrSize);
            }
            // Steps are not tested, whatever their value.
            EXPECT_EQ(callWithNullEntry(inSrc, e, PxkSize{0, 2}, 0, -7), pxkErrSize);
            EXPECT_TRUE(f.nothingWritten());
        }
    }
    // Every entry null at once: still the size first.
    if (srcEntries + dstEntriesTested > 0) {
        std::array<const uint8_t*, 4> noIn{};
        std::array<uint8_t*, 4> noOut{};
        EXPECT_EQ(fn(srcPacked, srcArray ? noIn.data() : nullptr, ss, dstPacked, dstArray ? noOut.data() : nullptr, ds,
                     PxkSize{9, 0}),
                  pxkErrSize);
        EXPECT_EQ(fn(srcPacked, srcArray ? noIn.data() : nullptr, ss, dstPacked, dstArray ? noOut.data() : nullptr, ds,
                     kValid),
                  pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
}

// Test parameter: an export and a step plan.
struct SweepParam {
    const ExportUnderTest* ex;
    pxktest::StepPlan plan;
};

// The export of `exports` with the given name.
inline const ExportUnderTest& exportNamed(const std::vector<ExportUnderTest>& exports, const std::string& name) {
    for (const ExportUnderTest& ex : exports) {
        if (ex.name == name) return ex;
    }
    throw std::invalid_argument(name);
}

// Pointers to each export of `exports`, as test parameters.
inline std::vector<const ExportUnderTest*> exportPointers(const std::vector<ExportUnderTest>& exports) {
    std::vector<const ExportUnderTest*> v;
    for (const ExportUnderTest& ex : exports) v.push_back(&ex);
    return v;
}

// Runs the export alone on rows of the given pixels (all rows alike, three channels
// each) over a random destination, checks the status, the guards and that the source
// stayed as it was, and returns the destination.
inline Surface runOnRows(const ExportUnderTest& ex, const std::vector<std::array<int, 3>>& pixels, int height,
                         uint8_t alpha, uint32_t seed) {
    const int width = int(pixels.size());
    pxktest::Rng rng(seed);
    Surface src = makeSurface(ex.src, width, height, int(rowBytesOf(ex.src, width)) + 3);
    Surface dst = makeSurface(ex.dst, width, height, int(rowBytesOf(ex.dst, width)) + 5);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < 3; ++c) src.at(x, y, c) = uint8_t(pixels[std::size_t(x)][std::size_t(c)]);
        }
    }
    src.snapshot();
    if (ex.keepsDstAlpha) dst.protectChannel(3);
    EXPECT_EQ(ex.call(src, dst, PxkSize{width, height}, alpha), pxkOk) << ex.name;
    EXPECT_TRUE(dst.guardsIntact()) << ex.name;
    EXPECT_TRUE(src.unchanged()) << ex.name;
    return dst;
}

// ---------------------------------------------------------------------------------
// Alpha of four-byte members
// ---------------------------------------------------------------------------------

// A member that keeps byte 3 of its destination: a random 19 x 3 image over a
// destination whose byte 3 holds a pattern; the pattern stays and the guards hold.
// With `expectWritten`, the call must also have written something.
inline void expectDestinationAlphaKept(const ExportUnderTest& ex, bool expectWritten) {
    const int w = 19, h = 3;
    Surface src = Surface::packed(w, h, 4, w * 4);
    Surface dst = Surface::packed(w, h, 4, w * 4 + 4);
    Rng rng(7);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) dst.at(x, y, 3) = uint8_t(x * 7 + y * 13 + 1);
    }
    dst.snapshot();
    ASSERT_EQ(ex.call(src, dst, PxkSize{w, h}, 0), pxkOk);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) EXPECT_EQ(dst.at(x, y, 3), uint8_t(x * 7 + y * 13 + 1)) << x << "," << y;
    }
    EXPECT_TRUE(dst.guardsIntact());
    if (expectWritten) {
        EXPECT_FALSE(dst.unchanged());  // the call did write
    }
}

// Byte 3 of a four-byte source takes no part: the same image with byte 3 of every
// pixel flipped gives the same destination. `channelsCompared` 0 compares all of it;
// 3 compares channels 0-2 only (a fourth plane that takes the source's byte 3).
inline void expectSourceAlphaIgnored(const ExportUnderTest& ex, int channelsCompared = 0) {
    const int w = 21, h = 2;
    Rng rng(99);
    Surface srcA = makeSurface(ex.src, w, h, w * 4);
    srcA.fillRandom(rng);
    Surface srcB = srcA.clone();
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) srcB.at(x, y, 3) = uint8_t(~srcA.at(x, y, 3));
    }
    Surface dstA = makeSurface(ex.dst, w, h, int(rowBytesOf(ex.dst, w)));
    dstA.fillRandom(rng);
    Surface dstB = dstA.clone();
    ASSERT_EQ(ex.call(srcA, dstA, PxkSize{w, h}, 0), pxkOk);
    ASSERT_EQ(ex.call(srcB, dstB, PxkSize{w, h}, 0), pxkOk);
    if (channelsCompared == 0) {
        EXPECT_TRUE(pxktest::sameContents(dstA, dstB));
    } else {
        for (int c = 0; c < channelsCompared; ++c) {
            for (int y = 0; y < h; ++y) {
                for (int x = 0; x < w; ++x) {
                    EXPECT_EQ(dstA.at(x, y, c), dstB.at(x, y, c)) << "channel " << c << " at " << x << "," << y;
                }
            }
        }
    }
    EXPECT_FALSE(dstA.unchanged());  // the call did write
}

// ---------------------------------------------------------------------------------
// Steps
// ---------------------------------------------------------------------------------

// A packed three-byte member on two rows of width 2 with negative steps (-8 and -10):
// row 0 black, row 1 white, row 1 lying below row 0 in memory. Row 0 must hold
// `black` and row 1 `white` in every pixel; with `sourceChecked`, the source must
// also stay as it was.
inline void expectRowsRunDownward(const ExportUnderTest& ex, std::array<int, 3> black, std::array<int, 3> white,
                                  bool sourceChecked) {
    const int w = 2, h = 2;
    Surface src = Surface::packed(w, h, 3, -8);
    Surface dst = Surface::packed(w, h, 3, -10);
    Rng rng(5);
    src.fillRandom(rng);
    dst.fillRandom(rng);
    uint8_t* s0 = src.data();
    uint8_t* s1 = s0 - 8;
    for (int i = 0; i < 6; ++i) {
        s0[i] = 0;
        s1[i] = 255;
    }
    src.snapshot();
    ASSERT_EQ(src.step(), -8);
    ASSERT_EQ(dst.step(), -10);
    ASSERT_EQ(ex.call(src, dst, PxkSize{w, h}, 0), pxkOk);
    const uint8_t* d0 = dst.data();
    const uint8_t* d1 = d0 - 10;
    for (int x = 0; x < w; ++x) {
        for (int c = 0; c < 3; ++c) {
            EXPECT_EQ(d0[3 * x + c], black[std::size_t(c)]) << "row 0, pixel " << x << ", channel " << c;
            EXPECT_EQ(d1[3 * x + c], white[std::size_t(c)]) << "row 1, pixel " << x << ", channel " << c;
        }
    }
    EXPECT_TRUE(dst.guardsIntact());
    if (sourceChecked) {
        EXPECT_TRUE(src.unchanged());
    }
}

inline void PrintTo(const SweepParam& p, std::ostream* os) {
    *os << p.ex->name << " " << pxktest::stepPlanName(p.plan);
}
inline void PrintTo(const ExportUnderTest* ex, std::ostream* os) { *os << ex->name; }

inline std::vector<SweepParam> sweepParams(const std::vector<ExportUnderTest>& exports) {
    std::vector<SweepParam> out;
    for (const ExportUnderTest& ex : exports) {
        for (const pxktest::StepPlan& p : pxktest::stepPlans()) out.push_back({&ex, p});
    }
    return out;
}

inline std::string sweepParamName(const ::testing::TestParamInfo<SweepParam>& info) {
    return info.param.ex->name + "_" + pxktest::stepPlanName(info.param.plan);
}

inline std::string exportParamName(const ::testing::TestParamInfo<const ExportUnderTest*>& info) {
    return info.param->name;
}

}  // namespace yuvtest

#endif
