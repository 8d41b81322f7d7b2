// Building the two sides of a YCoCg call, computing what the reference model expects
// of it, and running one call against that expectation.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "guarded_image.h"
#include "random.h"
#include "surface.h"
#include "sweep.h"
#include "ycocg_members.h"

namespace ycocgtest {

using pxktest::GuardOptions;
using pxktest::ImageGeometry;
using pxktest::Surface;

inline int planeBytes(const MemberInfo& m) { return m.rule.planeBits / 8; }
inline int packedBytes(const MemberInfo& m) { return m.rule.packedBits / 8; }

// One image of packed pixels (held as a one-image surface).
inline Surface packedSide(const MemberInfo& m, int width, int height, int step, const GuardOptions& opt) {
    return Surface::planar({ImageGeometry{width, height, m.channels, packedBytes(m), step}}, opt);
}
// Three planes sharing one step.
inline Surface planeSide(const MemberInfo& m, int width, int height, int step, const GuardOptions& opt) {
    const ImageGeometry g{width, height, 1, planeBytes(m), step};
    return Surface::planar({g, g, g}, opt);
}
inline std::size_t packedRowBytes(const MemberInfo& m, int width) {
    return std::size_t(width) * std::size_t(m.channels) * std::size_t(packedBytes(m));
}
inline std::size_t planeRowBytes(const MemberInfo& m, int width) { return std::size_t(width) * planeBytes(m); }

inline int64_t readAt(const pxktest::GuardedImage& img, int x, int y, int c) {
    switch (img.sampleBytes()) {
        case 1:
            return img.get<uint8_t>(x, y, c);
        case 2:
            return img.get<int16_t>(x, y, c);
        default:
            return img.get<int32_t>(x, y, c);
    }
}
inline void writeAt(pxktest::GuardedImage& img, int x, int y, int c, int64_t v) {
    switch (img.sampleBytes()) {
        case 1:
            img.set<uint8_t>(x, y, c, static_cast<uint8_t>(v));
            break;
        case 2:
            img.set<int16_t>(x, y, c, static_cast<int16_t>(v));
            break;
        default:
            img.set<int32_t>(x, y, c, static_cast<int32_t>(v));
            break;
    }
}

// What the member writes, pixel by pixel in row order, onto a copy of the destination.
inline void expectedOutput(const MemberInfo& m, const Surface& src, Surface& expected, int32_t alpha) {
    const int w = src.width(), h = src.height();
    const int vectorColumns = w - w % 4;
    const int r = m.rule.redFirst ? 0 : 2, b = m.rule.redFirst ? 2 : 0;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            if (m.rule.forward) {
                const pxktest::GuardedImage& in = src.image(0);
                int64_t out[3];
                ycocgref::forward(m.rule, readAt(in, x, y, r), readAt(in, x, y, 1), readAt(in, x, y, b),
                                  x < vectorColumns, out);
                for (int i = 0; i < 3; ++i) writeAt(expected.image(i), x, y, 0, out[i]);
            } else {
                int64_t rgb[3];
                ycocgref::inverse(m.rule, readAt(src.image(0), x, y, 0), readAt(src.image(1), x, y, 0),
                                  readAt(src.image(2), x, y, 0), rgb);
                pxktest::GuardedImage& out = expected.image(0);
                writeAt(out, x, y, r, rgb[0]);
                writeAt(out, x, y, 1, rgb[1]);
                writeAt(out, x, y, b, rgb[2]);
                if (m.channels == 4) writeAt(out, x, y, 3, alpha);
            }
        }
    }
}

// The call's arguments for two sides built for the member.
inline Args argsFor(const MemberInfo& m, Surface& src, Surface& dst, int32_t alpha) {
    Args a;
    if (m.rule.forward) {
        a.packedSrc = src.data();
        a.planeDst = reinterpret_cast<void* const*>(dst.planes());
    } else {
        a.planeSrc = reinterpret_cast<const void* const*>(src.constPlanes());
        a.packedDst = dst.data();
    }
    a.srcStep = src.step();
    a.dstStep = dst.step();
    a.size = PxkSize{src.width(), src.height()};
    a.alpha = alpha;
    return a;
}

// The two sides of a call of `width` x `height` with the given steps, filled at random.
struct CallSides {
    Surface src;
    Surface dst;
};
inline CallSides buildSides(const MemberInfo& m, int width, int height, int srcStep, int dstStep,
                            const GuardOptions& srcOpt, const GuardOptions& dstOpt, pxktest::Rng& rng) {
    CallSides s{m.rule.forward ? packedSide(m, width, height, srcStep, srcOpt)
                               : planeSide(m, width, height, srcStep, srcOpt),
                m.rule.forward ? planeSide(m, width, height, dstStep, dstOpt)
                               : packedSide(m, width, height, dstStep, dstOpt)};
    s.src.fillRandom(rng);
    s.dst.fillRandom(rng);
    return s;
}

inline int32_t randomAlpha(const MemberInfo& m, pxktest::Rng& rng) {
    return m.rule.packedBits == 8 ? int32_t(rng.uniform(0, 255)) : int32_t(rng.uniform(-32768, 32767));
}

// Calls the member on the sides and compares with the reference.
inline ::testing::AssertionResult callAndCompare(const MemberInfo& m, CallSides& s, int32_t alpha) {
    Surface expected = s.dst.clone();
    expectedOutput(m, s.src, expected, alpha);
    const PxkResult status = m.call(argsFor(m, s.src, s.dst, alpha));
    return pxktest::sameOutcome(status, pxkOk, s.dst, expected, s.src);
}

// One random call of the given geometry.
inline ::testing::AssertionResult runCase(const MemberInfo& m, int width, int height, const pxktest::StepPlan& plan,
                                          const GuardOptions& srcOpt, const GuardOptions& dstOpt,
                                          pxktest::Rng& rng) {
    const std::size_t srcRow = m.rule.forward ? packedRowBytes(m, width) : planeRowBytes(m, width);
    const std::size_t dstRow = m.rule.forward ? planeRowBytes(m, width) : packedRowBytes(m, width);
    CallSides s = buildSides(m, width, height, pxktest::stepFor(plan.src, srcRow), pxktest::stepFor(plan.dst, dstRow),
                             srcOpt, dstOpt, rng);
    return callAndCompare(m, s, randomAlpha(m, rng));
}

}  // namespace ycocgtest
