// The row copier: every length from 0 to 300 and some long ones, at every alignment of
// source and target, with and without non-temporal stores; the bytes are the source's
// and nothing around the target changes. The address rule that keeps some pairs of
// addresses on ordinary stores, at its edges.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "chroma/row_copier.h"
#include "random.h"

namespace {

using pxk::chroma::copyRow;
using pxk::chroma::copyRows;
using pxk::chroma::streamingAllowed;

constexpr std::size_t kGuard = 48;

// Copies `n` bytes between buffers misaligned by srcMis and dstMis from a 64-byte
// boundary and checks every byte of the target buffer.
::testing::AssertionResult copyAndCheck(std::size_t n, std::size_t srcMis, std::size_t dstMis, bool nonTemporal) {
    pxktest::Rng rng(pxktest::seedFor("copyRow", {uint32_t(n), uint32_t(srcMis), uint32_t(dstMis)}));
    std::vector<uint8_t> srcBuf(n + 2 * kGuard + 64), dstBuf(n + 2 * kGuard + 64);
    rng.fill(srcBuf.data(), srcBuf.size());
    rng.fill(dstBuf.data(), dstBuf.size());
    auto at64 = [](std::vector<uint8_t>& b) {
        const std::uintptr_t p = reinterpret_cast<std::uintptr_t>(b.data()) + kGuard;
        return (p + 63) / 64 * 64 - reinterpret_cast<std::uintptr_t>(b.data());
    };
    const std::size_t so = at64(srcBuf) + srcMis, d0 = at64(dstBuf) + dstMis;
    const std::vector<uint8_t> srcBefore = srcBuf, dstBefore = dstBuf;
    copyRow(srcBuf.data() + so, dstBuf.data() + d0, n, nonTemporal);
    for (std::size_t i = 0; i < dstBuf.size(); ++i) {
        const uint8_t want = (i >= d0 && i < d0 + n) ? srcBuf[so + (i - d0)] : dstBefore[i];
        if (dstBuf[i] != want) {
            return ::testing::AssertionFailure() << "length " << n << " target byte " << (long(i) - long(d0)) << " is "
                                                 << int(dstBuf[i]) << ", expected " << int(want);
        }
    }
    if (srcBuf != srcBefore) return ::testing::AssertionFailure() << "source changed";
    return ::testing::AssertionSuccess();
}

TEST(RowCopier, EveryLengthAndAlignmentCopiesExactlyTheBytes) {
    for (std::size_t n = 0; n <= 300; ++n) {
        for (std::size_t srcMis = 0; srcMis < 16; srcMis += 3) {
            for (std::size_t dstMis = 0; dstMis < 16; ++dstMis) {
                for (bool nt : {false, true}) ASSERT_TRUE(copyAndCheck(n, srcMis, dstMis, nt)) << "nt " << nt;
            }
        }
    }
}

TEST(RowCopier, LongRowsAreTheSameWithAndWithoutNonTemporalStores) {
    for (std::size_t n : {1023u, 1024u, 1920u, 4097u, 65536u + 13u}) {
        for (std::size_t dstMis : {0u, 1u, 8u, 15u}) {
            ASSERT_TRUE(copyAndCheck(n, 5, dstMis, true));
            ASSERT_TRUE(copyAndCheck(n, 0, dstMis, false));
        }
    }
}

// Pairs of addresses whose difference (source minus target) has its low 16 bits in
// 0xFEC0..0xFFF0 take ordinary stores; the others may stream.
TEST(RowCopier, AddressRuleAtItsEdges) {
    const uintptr_t base = 0x100000;
    auto allowed = [&](uint32_t low) {
        return streamingAllowed(reinterpret_cast<const uint8_t*>(base + 0x30000 + low),
                                reinterpret_cast<const uint8_t*>(base));
    };
    EXPECT_TRUE(allowed(0x0000));
    EXPECT_TRUE(allowed(0xFEBF));
    EXPECT_FALSE(allowed(0xFEC0));
    EXPECT_FALSE(allowed(0xFF00));
    EXPECT_FALSE(allowed(0xFFF0));
    EXPECT_TRUE(allowed(0xFFF1));
    EXPECT_TRUE(allowed(0xFFFF));
    // A target above the source: the difference wraps.
    EXPECT_FALSE(streamingAllowed(reinterpret_cast<const uint8_t*>(base), reinterpret_cast<const uint8_t*>(base + 0x10)));
    EXPECT_FALSE(streamingAllowed(reinterpret_cast<const uint8_t*>(base), reinterpret_cast<const uint8_t*>(base + 0x140)));
    EXPECT_TRUE(streamingAllowed(reinterpret_cast<const uint8_t*>(base), reinterpret_cast<const uint8_t*>(base + 0x141)));
    EXPECT_TRUE(streamingAllowed(reinterpret_cast<const uint8_t*>(base), reinterpret_cast<const uint8_t*>(base + 0xF)));
}

// A pair of addresses that the address rule keeps on ordinary stores (the target
// 0x10040 bytes above the source: low 16 bits of the difference 0xFFC0) copies the
// same bytes with the flag set, and nothing around the target changes.
TEST(RowCopier, PairsKeptOnOrdinaryStoresCopyTheSameBytes) {
    std::vector<uint8_t> buf(0x10040 + 4096);
    pxktest::Rng rng(9);
    rng.fill(buf.data(), buf.size());
    const std::vector<uint8_t> before = buf;
    const uint8_t* src = buf.data() + 16;
    uint8_t* dst = buf.data() + 16 + 0x10040;
    ASSERT_FALSE(streamingAllowed(src, dst));
    copyRow(src, dst, 1000, true);
    for (std::size_t i = 0; i < 1000; ++i) ASSERT_EQ(dst[i], before[16 + i]) << i;
    EXPECT_EQ(dst[1000], before[16 + 0x10040 + 1000]);
    EXPECT_EQ(dst[-1], before[16 + 0x10040 - 1]);
}

TEST(RowCopier, RowsFollowTheirSignedSteps) {
    std::vector<uint8_t> src(5 * 40), dst(5 * 50, 0xEE);
    for (std::size_t i = 0; i < src.size(); ++i) src[i] = uint8_t(i);
    // Rows of 33 bytes; the source read upward from its last row, the target downward.
    copyRows(src.data() + 4 * 40, -40, dst.data(), 50, 33, 5, false);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 33; ++x) ASSERT_EQ(dst[std::size_t(50 * y + x)], src[std::size_t(40 * (4 - y) + x)]);
        for (int x = 33; x < 50; ++x) ASSERT_EQ(dst[std::size_t(50 * y + x)], 0xEE);
    }
}

// Rows end to end on both sides go as one run: the same bytes as a copy a row, with
// and without non-temporal stores, and nothing past the last row changes.
TEST(RowCopier, RowsEndToEndCopyTheSameBytes) {
    for (std::size_t width : {1u, 15u, 64u, 100u, 1920u}) {
        for (int32_t rows : {2, 3, 17}) {
            for (bool nonTemporal : {false, true}) {
                const std::size_t n = width * std::size_t(rows);
                pxktest::Rng rng(pxktest::seedFor("copyRowsRun", {uint32_t(width), uint32_t(rows)}));
                std::vector<uint8_t> src(n), dst(n + 64), want(n + 64);
                rng.fill(src.data(), src.size());
                rng.fill(dst.data(), dst.size());
                want = dst;
                for (std::size_t i = 0; i < n; ++i) want[i] = src[i];
                copyRows(src.data(), int32_t(width), dst.data(), int32_t(width), width, rows, nonTemporal);
                ASSERT_EQ(dst, want) << "width " << width << ", rows " << rows;
            }
        }
    }
}

// Rows end to end that overlap their source (the target one row below it) still go a
// row at a time, each row read after the one above was written.
TEST(RowCopier, OverlappingRowsGoARowAtATime) {
    const std::size_t width = 96;
    const int32_t rows = 4;
    std::vector<uint8_t> buf(width * (rows + 1));
    for (std::size_t i = 0; i < buf.size(); ++i) buf[i] = uint8_t(i * 7);
    const std::vector<uint8_t> before = buf;
    copyRows(buf.data(), int32_t(width), buf.data() + width, int32_t(width), width, rows, false);
    for (int32_t y = 0; y <= rows; ++y) {
        for (std::size_t x = 0; x < width; ++x) ASSERT_EQ(buf[std::size_t(y) * width + x], before[x]) << y << " " << x;
    }
}

}  // namespace
