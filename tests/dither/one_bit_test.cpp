// pxkiReduceBits_8u1u_C1R: threshold and integer Stucki against the reference over
// widths, heights, bit offsets and steps; the first and last byte rules; statuses.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "reference_dither.h"
#include "sweep.h"

namespace {

using pxktest::GuardedImage;
using pxktest::Rng;

int rowBytes(int offset, int width) { return ((offset & 7) + width + 7) / 8; }

::testing::AssertionResult runOne(int w, int h, int offset, int dtype, uint8_t threshold, int srcExtra, int dstKind,
                                  uint32_t seed) {
    Rng rng(seed);
    const int bytes = rowBytes(offset, w);
    const int srcStep = srcExtra == -1 ? -(w + 3) : w + srcExtra;
    const int dstStep = dstKind == 0 ? bytes : (dstKind == 1 ? bytes + 5 : (dstKind == 2 ? 0 : -(bytes + 2)));
    GuardedImage src(w, h, 1, srcStep);
    src.fillRandom(rng);
    GuardedImage dst(bytes, h, 1, dstStep);
    dst.fillRandom(rng);
    GuardedImage expected = dst.clone();
    std::vector<uint8_t> buffer(size_t(12 * w + 48 + 64 + 128));
    rng.fill(buffer.data(), buffer.size());
    const std::vector<uint8_t> before = buffer;
    const PxkResult st = pxkiReduceBits_8u1u_C1R(src.data(), srcStep, dst.data(), dstStep, offset, PxkSize{w, h}, 77,
                                                 -3, dtype, threshold, buffer.data() + 7);
    refdither::oneBit(src.data(), srcStep, expected.data(), dstStep, offset, w, h, dtype, threshold);
    if (st != pxkOk) return ::testing::AssertionFailure() << "status " << st;
    if (auto s = pxktest::sameRegion(dst, expected); !s) return s;
    if (auto g = dst.guardsIntact(); !g) return g;
    if (auto u = src.unchanged(); !u) return u;
    for (size_t i = 0; i < buffer.size(); ++i) {
        const bool used = dtype == 3 && i >= 7 && i < size_t(7 + 12 * w + 48 + 64);
        if (!used && buffer[i] != before[i]) return ::testing::AssertionFailure() << "buffer byte " << i << " changed";
    }
    return ::testing::AssertionSuccess();
}

TEST(ReduceBitsOneBit, MatchesTheReference) {
    unsigned n = 0;
    for (int w : pxktest::sweepWidths()) {
        for (int h : pxktest::sweepHeights(w)) {
            for (int offset : {0, 1, 3, 7, 8, 13}) {
                for (int dtype : {0, 3}) {
                    if (pxktest::kLightSweep && (n++ % 3) != 0) continue;
                    const uint8_t threshold = uint8_t((w * 31 + offset * 7 + h) & 0xFF);
                    ASSERT_TRUE(runOne(w, h, offset, dtype, threshold, (w + offset) % 4 - 1, (w + h + offset) % 4,
                                       pxktest::seedFor("1u", {uint32_t(w), uint32_t(h), uint32_t(offset),
                                                               uint32_t(dtype)})))
                        << w << "x" << h << " offset " << offset << " dtype " << dtype;
                }
            }
        }
    }
}

TEST(ReduceBitsOneBit, ThresholdIsStrict) {
    const uint8_t src[4] = {99, 100, 101, 255};
    uint8_t dst[1] = {0};
    ASSERT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, dst, 1, 0, PxkSize{4, 1}, 0, 0, pxkDitherNone, 100, nullptr), pxkOk);
    EXPECT_EQ(dst[0], 0x30);  // 0 0 1 1, then the cleared rest
}

TEST(ReduceBitsOneBit, RowInsideTheFirstByteClearsTheBitsAfterIt) {
    // Offset 2, three pixels of 0: the two top bits kept, the written three 0, the rest
    // cleared.
    const uint8_t src[3] = {0, 0, 0};
    uint8_t dst[2] = {0xFF, 0xFF};
    ASSERT_EQ(pxkiReduceBits_8u1u_C1R(src, 3, dst, 2, 2, PxkSize{3, 1}, 0, 0, pxkDitherNone, 0, nullptr), pxkOk);
    EXPECT_EQ(dst[0], 0xC0);
    EXPECT_EQ(dst[1], 0xFF);
}

TEST(ReduceBitsOneBit, LongerRowKeepsTheBitsAfterItsLastPixel) {
    // Offset 2, ten pixels of 0: first byte 11 000000, second byte 0000 1111.
    const uint8_t src[10] = {};
    uint8_t dst[3] = {0xFF, 0xFF, 0xFF};
    ASSERT_EQ(pxkiReduceBits_8u1u_C1R(src, 10, dst, 3, 2, PxkSize{10, 1}, 0, 0, pxkDitherNone, 0, nullptr), pxkOk);
    EXPECT_EQ(dst[0], 0xC0);
    EXPECT_EQ(dst[1], 0x0F);
    EXPECT_EQ(dst[2], 0xFF);
}

TEST(ReduceBitsOneBit, OnlyTheLowThreeBitsOfTheOffsetCount) {
    const uint8_t src[4] = {255, 0, 255, 0};
    uint8_t a[2] = {0, 0}, b[2] = {0, 0};
    ASSERT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, a, 2, 3, PxkSize{4, 1}, 0, 0, pxkDitherNone, 9, nullptr), pxkOk);
    ASSERT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, b, 2, 11, PxkSize{4, 1}, 0, 0, pxkDitherNone, 9, nullptr), pxkOk);
    EXPECT_EQ(a[0], 0x14);  // 000 1010 0
    EXPECT_EQ(a[0], b[0]);
    EXPECT_EQ(b[1], 0);
}

TEST(ReduceBitsOneBit, StuckiSpreadsAMidGrey) {
    // 128 against threshold 127: bit 1 at S = 128 * 8192 > 127 * 8192, error
    // (1048576 >> 10) - 2047 = -1023; the next pixel takes 8 * -1023 * 23 and falls below.
    std::vector<uint8_t> buffer(12 * 4 + 48 + 64);
    const uint8_t src[4] = {128, 128, 128, 128};
    uint8_t dst[1] = {0};
    ASSERT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, dst, 1, 0, PxkSize{4, 1}, 0, 0, pxkDitherStucki, 127, buffer.data()),
              pxkOk);
    EXPECT_EQ(dst[0] & 0xC0, 0x80);
}

TEST(ReduceBitsOneBit, Statuses) {
    const uint8_t src[4] = {1, 2, 3, 4};
    uint8_t dst[1] = {0x5A};
    std::vector<uint8_t> buf(200);
    EXPECT_EQ(pxkiReduceBits_8u1u_C1R(nullptr, 4, dst, 1, 0, PxkSize{4, 1}, 0, 0, 0, 1, buf.data()), pxkErrNullPtr);
    EXPECT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, nullptr, 1, 0, PxkSize{4, 1}, 0, 0, 0, 1, buf.data()), pxkErrNullPtr);
    EXPECT_EQ(pxkiReduceBits_8u1u_C1R(nullptr, 4, dst, 1, -1, PxkSize{0, 1}, 0, 0, 9, 1, nullptr), pxkErrNullPtr);
    EXPECT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, dst, 1, 0, PxkSize{0, 1}, 0, 0, 0, 1, buf.data()), pxkErrSize);
    EXPECT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, dst, 1, 0, PxkSize{4, 0}, 0, 0, 0, 1, buf.data()), pxkErrSize);
    EXPECT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, dst, 1, -1, PxkSize{4, 1}, 0, 0, 0, 1, buf.data()), pxkErrSize);
    EXPECT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, dst, 1, -1, PxkSize{4, 1}, 0, 0, 9, 1, nullptr), pxkErrSize);
    for (int dtype : {1, 2, 4, -1, 5}) {
        EXPECT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, dst, 1, 0, PxkSize{4, 1}, 0, 0, dtype, 1, nullptr), pxkErrDitherType)
            << dtype;
    }
    EXPECT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, dst, 1, 0, PxkSize{4, 1}, 0, 0, 3, 1, nullptr), pxkErrNullPtr);
    EXPECT_EQ(dst[0], 0x5A);  // nothing written on failure
    EXPECT_EQ(pxkiReduceBits_8u1u_C1R(src, 4, dst, 1, 0, PxkSize{4, 1}, 0, 0, 0, 1, nullptr), pxkOk);
}

}  // namespace
