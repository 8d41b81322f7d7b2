// 12-bit Pack and Unpack against a literal model of the byte layout, over every width
// of the sweep, several heights and positive steps, with guards; the documented
// examples; the statuses in their order.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace {

using pxktest::GuardedImage;
using pxktest::ImageGeometry;
using pxktest::Rng;
using pxktest::StepKind;

// Bytes of a packed row of `width` samples: three for each pair, two for an odd last.
int packedBytes(int width) { return 3 * (width / 2) + 2 * (width % 2); }

// The model: byte 0 = a bits 11-4, byte 1 = a bits 3-0 (high nibble) | b bits 11-8,
// byte 2 = b bits 7-0; an odd last sample writes bytes 0 and 1, low nibble 0.
void modelPackRow(const std::vector<uint16_t>& s, std::vector<uint8_t>& d) {
    const int w = static_cast<int>(s.size());
    d.assign(size_t(packedBytes(w)), 0);
    for (int i = 0; i < w; ++i) {
        const unsigned v = s[size_t(i)] & 0xFFFu;
        const int g = 3 * (i / 2);
        if (i % 2 == 0) {
            d[size_t(g)] = uint8_t(v >> 4);
            d[size_t(g + 1)] = uint8_t((v & 0xFu) << 4);
        } else {
            d[size_t(g + 1)] = uint8_t(d[size_t(g + 1)] | (v >> 8));
            d[size_t(g + 2)] = uint8_t(v & 0xFFu);
        }
    }
}

void modelUnpackRow(const std::vector<uint8_t>& s, int w, std::vector<uint16_t>& d) {
    d.assign(size_t(w), 0);
    for (int i = 0; i < w; ++i) {
        const int g = 3 * (i / 2);
        if (i % 2 == 0) {
            d[size_t(i)] = uint16_t((s[size_t(g)] << 4) | (s[size_t(g + 1)] >> 4));
        } else {
            d[size_t(i)] = uint16_t(((s[size_t(g + 1)] & 0xF) << 8) | s[size_t(g + 2)]);
        }
    }
}

const StepKind kPositiveSteps[] = {StepKind::Tight, StepKind::Padded, StepKind::Odd};

// run(width, height, srcStepKind, dstStepKind, rng) for every width and height of the
// sweep and every pair of positive step kinds.
template <class Run>
void everyGeometry(const char* name, Run&& run) {
    for (int w : pxktest::sweepWidths()) {
        for (int h : pxktest::sweepHeights(w)) {
            for (StepKind sk : kPositiveSteps) {
                for (StepKind dk : kPositiveSteps) {
                    Rng rng(pxktest::seedFor(name, {uint32_t(w), uint32_t(h), uint32_t(sk), uint32_t(dk)}));
                    run(w, h, sk, dk, rng);
                    if (::testing::Test::HasFatalFailure()) return;
                }
            }
        }
    }
}

TEST(Pack12, MatchesModelAtEveryWidthHeightAndStep) {
    everyGeometry("Pack12", [](int w, int h, StepKind sk, StepKind dk, Rng& rng) {
        GuardedImage src(ImageGeometry{w, h, 1, 2, pxktest::stepFor(sk, size_t(w) * 2)});
        const int pb = packedBytes(w);
        GuardedImage dst(ImageGeometry{pb, h, 1, 1, pxktest::stepFor(dk, size_t(pb))});
        src.fillRandom(rng);
        dst.fillRandom(rng);
        GuardedImage expected = dst.clone();
        for (int y = 0; y < h; ++y) {
            std::vector<uint16_t> row(static_cast<size_t>(w));
            for (int x = 0; x < w; ++x) row[size_t(x)] = src.get<uint16_t>(x, y);
            std::vector<uint8_t> packed;
            modelPackRow(row, packed);
            for (int x = 0; x < pb; ++x) expected.at(x, y) = packed[size_t(x)];
        }
        ASSERT_EQ(pxkiPack_16u12u_C1R(reinterpret_cast<const uint16_t*>(src.data()), src.step(), dst.data(),
                                      dst.step(), w, h),
                  pxkOk);
        ASSERT_TRUE(pxktest::sameRegion(dst, expected)) << w << "x" << h;
        ASSERT_TRUE(dst.guardsIntact()) << w << "x" << h;
        ASSERT_TRUE(src.unchanged());
    });
}

TEST(Unpack12, MatchesModelAtEveryWidthHeightAndStep) {
    everyGeometry("Unpack12", [](int w, int h, StepKind sk, StepKind dk, Rng& rng) {
        const int pb = packedBytes(w);
        // A fenced source: no byte past the packed row may be read.
        pxktest::GuardOptions fenced;
        fenced.after = 0;
        fenced.fenceAfter = true;
        GuardedImage src(ImageGeometry{pb, h, 1, 1, pxktest::stepFor(sk, size_t(pb))}, fenced);
        GuardedImage dst(ImageGeometry{w, h, 1, 2, pxktest::stepFor(dk, size_t(w) * 2)});
        src.fillRandom(rng);
        dst.fillRandom(rng);
        GuardedImage expected = dst.clone();
        for (int y = 0; y < h; ++y) {
            std::vector<uint8_t> row(static_cast<size_t>(pb));
            for (int x = 0; x < pb; ++x) row[size_t(x)] = src.at(x, y);
            std::vector<uint16_t> out;
            modelUnpackRow(row, w, out);
            for (int x = 0; x < w; ++x) expected.set<uint16_t>(x, y, 0, out[size_t(x)]);
        }
        ASSERT_EQ(pxkiUnpack_12u16u_C1R(src.data(), src.step(), reinterpret_cast<uint16_t*>(dst.data()), dst.step(),
                                        w, h),
                  pxkOk);
        ASSERT_TRUE(pxktest::sameRegion(dst, expected)) << w << "x" << h;
        ASSERT_TRUE(dst.guardsIntact()) << w << "x" << h;
        ASSERT_TRUE(src.unchanged());
    });
}

TEST(Pack12, WidthOnePacksToTwoBytesWithALowNibbleOfZero) {
    const uint16_t s = 0xABC;
    uint8_t d[3] = {0x55, 0x55, 0x55};
    ASSERT_EQ(pxkiPack_16u12u_C1R(&s, 2, d, 2, 1, 1), pxkOk);
    EXPECT_EQ(d[0], 0xAB);
    EXPECT_EQ(d[1], 0xC0);
    EXPECT_EQ(d[2], 0x55);  // no third byte
}

TEST(Pack12, WidthTwoPacksToExactlyThreeBytes) {
    const uint16_t s[2] = {0x123, 0x456};
    uint8_t d[4] = {0x77, 0x77, 0x77, 0x77};
    ASSERT_EQ(pxkiPack_16u12u_C1R(s, 4, d, 3, 2, 1), pxkOk);
    EXPECT_EQ(d[0], 0x12);
    EXPECT_EQ(d[1], 0x34);
    EXPECT_EQ(d[2], 0x56);
    EXPECT_EQ(d[3], 0x77);
}

TEST(Pack12, TopFourBitsAreDropped) {
    const uint16_t s[3] = {0xFFFF, 0xF00F, 0xFFFF};
    uint8_t d[5];
    ASSERT_EQ(pxkiPack_16u12u_C1R(s, 6, d, 5, 3, 1), pxkOk);
    // 0xFFF, 0x00F, 0xFFF
    EXPECT_EQ(d[0], 0xFF);
    EXPECT_EQ(d[1], 0xF0);
    EXPECT_EQ(d[2], 0x0F);
    EXPECT_EQ(d[3], 0xFF);
    EXPECT_EQ(d[4], 0xF0);
}

TEST(Unpack12, LiteralGroupsAndAnOddLastSample) {
    const uint8_t s[5] = {0x12, 0x34, 0x56, 0xAB, 0xCD};
    uint16_t d[3];
    ASSERT_EQ(pxkiUnpack_12u16u_C1R(s, 5, d, 6, 3, 1), pxkOk);
    EXPECT_EQ(d[0], 0x123);
    EXPECT_EQ(d[1], 0x456);
    EXPECT_EQ(d[2], 0xABC);
}

TEST(Pack12, UnpackAfterPackGivesTheLowTwelveBits) {
    Rng rng(pxktest::seedFor("PackRoundTrip", {1}));
    for (int w : {1, 2, 3, 17, 1920}) {
        std::vector<uint16_t> s(size_t(w) * 2), back(size_t(w) * 2, 0xEEEE);
        for (uint16_t& v : s) v = uint16_t(rng.next32());
        std::vector<uint8_t> p(size_t(packedBytes(w)) * 2);
        ASSERT_EQ(pxkiPack_16u12u_C1R(s.data(), w * 2, p.data(), packedBytes(w), w, 2), pxkOk);
        ASSERT_EQ(pxkiUnpack_12u16u_C1R(p.data(), packedBytes(w), back.data(), w * 2, w, 2), pxkOk);
        for (size_t i = 0; i < s.size(); ++i) ASSERT_EQ(back[i], s[i] & 0xFFF) << i;
    }
}

// Pointers, then the size, then the steps; a refused call writes nothing.
template <class Call>
void checkStatuses(Call call) {
    EXPECT_EQ(call(false, true, 8, 4, 2, 1, 0, 0), pxkErrNullPtr);
    EXPECT_EQ(call(true, false, 8, 4, 2, 1, 0, 0), pxkErrNullPtr);
    EXPECT_EQ(call(true, true, 8, 4, 0, 1, 0, 0), pxkErrSize);
    EXPECT_EQ(call(true, true, 8, 4, 2, 0, 0, 0), pxkErrSize);
    EXPECT_EQ(call(true, true, 8, 4, -1, 1, 8, 4), pxkErrSize);
    // A step of 0 is refused even for a single row, and so is a negative one.
    EXPECT_EQ(call(true, true, 0, 4, 2, 1, 0, 0), pxkErrStep);
    EXPECT_EQ(call(true, true, 8, 0, 2, 1, 0, 0), pxkErrStep);
    EXPECT_EQ(call(true, true, -8, 4, 2, 1, 0, 0), pxkErrStep);
    EXPECT_EQ(call(true, true, 8, -4, 2, 1, 0, 0), pxkErrStep);
}

TEST(Pack12, StatusesInTheirOrderAndNothingWritten) {
    uint16_t src[4] = {0x111, 0x222, 0x333, 0x444};
    uint8_t dst[8];
    std::memset(dst, 0x5A, sizeof dst);
    auto call = [&](bool s, bool d, int32_t ss, int32_t ds, int32_t w, int32_t h, int32_t, int32_t) {
        return pxkiPack_16u12u_C1R(s ? src : nullptr, ss, d ? dst : nullptr, ds, w, h);
    };
    EXPECT_EQ(call(false, true, 0, 0, 0, 0, 0, 0), pxkErrNullPtr);  // nulls before size and steps
    EXPECT_EQ(call(true, true, 0, 0, 0, 1, 0, 0), pxkErrSize);      // size before steps
    checkStatuses(call);
    for (uint8_t b : dst) EXPECT_EQ(b, 0x5A);
}

TEST(Unpack12, StatusesInTheirOrderAndNothingWritten) {
    uint8_t src[6] = {1, 2, 3, 4, 5, 6};
    uint16_t dst[4] = {9, 9, 9, 9};
    auto call = [&](bool s, bool d, int32_t ss, int32_t ds, int32_t w, int32_t h, int32_t, int32_t) {
        return pxkiUnpack_12u16u_C1R(s ? src : nullptr, ss, d ? dst : nullptr, ds, w, h);
    };
    EXPECT_EQ(call(false, true, 0, 0, 0, 0, 0, 0), pxkErrNullPtr);
    EXPECT_EQ(call(true, true, 0, 0, 1, 0, 0, 0), pxkErrSize);
    checkStatuses(call);
    for (uint16_t v : dst) EXPECT_EQ(v, 9);
}

}  // namespace
