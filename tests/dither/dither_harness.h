// The 32 ReduceBits members as data (types, layout, a caller of one signature), and a
// run of one member against the reference model with guarded images and a guarded
// scratch buffer.
#ifndef PXKCC_TESTS_DITHER_DITHER_HARNESS_H
#define PXKCC_TESTS_DITHER_DITHER_HARNESS_H

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "reference_dither.h"

namespace dithertest {

using refdither::Kind;

using Caller = PxkResult (*)(const void* src, int32_t srcStep, void* dst, int32_t dstStep, PxkSize size,
                             uint32_t noise, PxkDitherType dtype, int32_t levels, uint8_t* buffer);

struct Member {
    std::string name;
    Kind src, dst;
    int channelCode;  // 1 C1, 3 C3, 4 AC4, 5 C4
    Caller call;
};

#define DITHERTEST_MEMBER(types, layout, S, D, code, ST, DT)                                                     \
    Member {                                                                                                      \
        "ReduceBits_" #types "_" #layout "R", Kind::S, Kind::D, code,                                            \
            [](const void* s, int32_t ss, void* d, int32_t ds, PxkSize z, uint32_t n, PxkDitherType t, int32_t l, \
               uint8_t* b) {                                                                                      \
                return pxkiReduceBits_##types##_##layout##R(static_cast<const ST*>(s), ss, static_cast<DT*>(d), ds, \
                                                           z, n, t, l, b);                                       \
            }                                                                                                     \
    }
#define DITHERTEST_LAYOUTS(types, S, D, ST, DT)                                                       \
    DITHERTEST_MEMBER(types, C1, S, D, 1, ST, DT), DITHERTEST_MEMBER(types, C3, S, D, 3, ST, DT),    \
        DITHERTEST_MEMBER(types, AC4, S, D, 4, ST, DT), DITHERTEST_MEMBER(types, C4, S, D, 5, ST, DT)

inline const std::vector<Member>& members() {
    static const std::vector<Member> list = {
        DITHERTEST_LAYOUTS(8u, U8, U8, uint8_t, uint8_t),
        DITHERTEST_LAYOUTS(16u, U16, U16, uint16_t, uint16_t),
        DITHERTEST_LAYOUTS(16s, S16, S16, int16_t, int16_t),
        DITHERTEST_LAYOUTS(16u8u, U16, U8, uint16_t, uint8_t),
        DITHERTEST_LAYOUTS(16s8u, S16, U8, int16_t, uint8_t),
        DITHERTEST_LAYOUTS(32f8u, F32, U8, float, uint8_t),
        DITHERTEST_LAYOUTS(32f16u, F32, U16, float, uint16_t),
        DITHERTEST_LAYOUTS(32f16s, F32, S16, float, int16_t),
    };
    return list;
}
#undef DITHERTEST_LAYOUTS
#undef DITHERTEST_MEMBER

inline const Member& memberNamed(const std::string& name) {
    for (const Member& m : members()) {
        if (m.name == name) return m;
    }
    throw std::invalid_argument("no member " + name);
}

inline int samplesPerPixel(const Member& m) { return m.channelCode == 1 ? 1 : (m.channelCode == 3 ? 3 : 4); }
inline int maxLevelsOf(const Member& m) { return m.dst == Kind::U8 ? 256 : 65536; }

// Samples of a source of kind k: random bytes for integers, floats mostly in -0.1..1.1
// with exact levels and the ends mixed in.
inline void fillSource(pxktest::GuardedImage& img, Kind k, pxktest::Rng& rng) {
    img.fillRandom(rng);
    if (k != Kind::F32) return;
    for (int y = 0; y < img.height(); ++y) {
        for (int x = 0; x < img.width(); ++x) {
            for (int c = 0; c < img.channels(); ++c) {
                const uint32_t pick = rng.next32() % 16;
                float v = float(rng.unit() * 1.2 - 0.1);
                if (pick == 0) v = 0.0f;
                if (pick == 1) v = 1.0f;
                if (pick == 2) v = float(rng.uniform(0, 255)) / 255.0f;
                img.set<float>(x, y, c, v);
            }
        }
    }
    img.snapshot();
}

// A scratch buffer with guard bytes on both sides, handed over `misalign` bytes past a
// 64-byte boundary.
class Scratch {
public:
    Scratch(int32_t bytes, std::size_t misalign, pxktest::Rng& rng)
        : bytes_(bytes), misalign_(misalign), storage_(std::size_t(bytes) + misalign + 256) {
        rng.fill(storage_.data(), storage_.size());
        // Put the handed pointer at the requested distance past a multiple of 64.
        const std::uintptr_t p = reinterpret_cast<std::uintptr_t>(storage_.data() + 64);
        lead_ = 64 + ((64 - (p & 63)) & 63) + misalign;
        before_ = storage_;
    }
    uint8_t* data() { return storage_.data() + lead_; }
    // Nothing outside the bytes that the size query gave was touched.
    ::testing::AssertionResult guardsIntact() const {
        for (std::size_t i = 0; i < storage_.size(); ++i) {
            const bool inside = i >= lead_ && i < lead_ + std::size_t(bytes_);
            if (!inside && storage_[i] != before_[i]) {
                return ::testing::AssertionFailure()
                       << "scratch byte " << (long long)i - (long long)lead_ << " outside the buffer changed";
            }
        }
        return ::testing::AssertionSuccess();
    }
    bool unchanged() const { return storage_ == before_; }
    const uint8_t* aligned() const {
        const std::uintptr_t p = reinterpret_cast<std::uintptr_t>(storage_.data() + lead_);
        return storage_.data() + lead_ + ((64 - (p & 63)) & 63);
    }

private:
    int32_t bytes_;
    std::size_t misalign_;
    std::size_t lead_ = 0;
    std::vector<uint8_t> storage_;
    std::vector<uint8_t> before_;
};

// The byte step a side uses on the diffusion paths: cut to whole elements.
inline int cutStep(int step, Kind k) {
    const int size = refdither::bytesOf(k);
    const int q = step >= 0 ? step / size : -((-step + size - 1) / size);
    return q * size;
}

struct RunSpec {
    int width = 1, height = 1;
    int srcStep = 0, dstStep = 0;  // bytes as passed
    uint32_t noise = 0;
    int dtype = 0;
    int levels = 2;
    std::size_t misalign = 0;  // of the scratch buffer
    uint32_t seed = 1;
};

// Runs the member and the reference on the same source and compares the destination
// (region, guards, AC4 alpha), the source and the scratch buffer's guards.
inline ::testing::AssertionResult runAgainstReference(const Member& m, const RunSpec& r) {
    using pxktest::GuardedImage;
    using pxktest::ImageGeometry;
    pxktest::Rng rng(r.seed);
    const int spp = samplesPerPixel(m);
    const bool diffusion = r.dtype >= 1 && r.dtype <= 3;
    // On the diffusion paths both sides move by their steps cut to whole elements: the
    // images are laid out that way, and the call gets the steps as given.
    ImageGeometry sg{r.width, r.height, spp, refdither::bytesOf(m.src),
                     diffusion ? cutStep(r.srcStep, m.src) : r.srcStep};
    ImageGeometry dg{r.width, r.height, spp, refdither::bytesOf(m.dst),
                     diffusion ? cutStep(r.dstStep, m.dst) : r.dstStep};
    GuardedImage src(sg);
    fillSource(src, m.src, rng);
    GuardedImage dst(dg);
    dst.fillRandom(rng);
    if (m.channelCode == 4) dst.protectChannel(3);
    GuardedImage expected = dst.clone();
    int32_t need = 0;
    const PxkResult sizeStatus =
        pxkiReduceBitsGetBufferSize(1, PxkSize{r.width, r.height}, r.noise, r.dtype, &need);
    if (sizeStatus != pxkOk) return ::testing::AssertionFailure() << "size query gave " << sizeStatus;
    Scratch scratch(need, r.misalign, rng);
    const PxkResult st = m.call(src.data(), r.srcStep, dst.data(), r.dstStep, PxkSize{r.width, r.height}, r.noise,
                                r.dtype, r.levels, scratch.data());
    refdither::Call c{m.src,    m.dst,      m.channelCode, src.data(), r.srcStep, expected.data(),
                      r.dstStep, r.width, r.height,      r.noise,    r.dtype,   r.levels};
    refdither::reduceBits(c);
    const std::string where = m.name + " " + std::to_string(r.width) + "x" + std::to_string(r.height) +
                              " steps " + std::to_string(r.srcStep) + "/" + std::to_string(r.dstStep) + " noise " +
                              std::to_string(r.noise) + " dtype " + std::to_string(r.dtype) + " levels " +
                              std::to_string(r.levels) + ": ";
    if (st != pxkOk) return ::testing::AssertionFailure() << where << "status " << st;
    if (auto same = pxktest::sameRegion(dst, expected); !same) return ::testing::AssertionFailure() << where << same.message();
    if (auto g = dst.guardsIntact(); !g) return ::testing::AssertionFailure() << where << g.message();
    if (auto u = src.unchanged(); !u) return ::testing::AssertionFailure() << where << "source: " << u.message();
    if (auto s = scratch.guardsIntact(); !s) return ::testing::AssertionFailure() << where << s.message();
    return ::testing::AssertionSuccess();
}

}  // namespace dithertest

#endif
