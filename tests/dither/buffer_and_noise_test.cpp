// The size query of the scratch buffer (values and check order), and the noise tables
// and generator records that a call with noise leaves in the buffer, against the
// reference generator.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "dither_harness.h"

namespace {

template <class T>
T readAt(const uint8_t* base, size_t offset) {
    T v;
    std::memcpy(&v, base + offset, sizeof v);
    return v;
}

int32_t sizeOf(int32_t code, int32_t width, uint32_t noise, int32_t dtype, PxkResult* status = nullptr) {
    int32_t size = -12345;
    const PxkResult st = pxkiReduceBitsGetBufferSize(code, PxkSize{width, -7}, noise, dtype, &size);
    if (status) *status = st;
    return size;
}

TEST(ReduceBitsBufferSize, DocumentedValues) {
    EXPECT_EQ(sizeOf(1, 10, 0, pxkDitherFS), 160);
    EXPECT_EQ(sizeOf(1, 10, 1, pxkDitherFS), 6432);
    EXPECT_EQ(sizeOf(1, 10, 0, pxkDitherBayer), 0);
    EXPECT_EQ(sizeOf(1, 10, 5, pxkDitherBayer), 6336);
    EXPECT_EQ(sizeOf(3, 10, 0, pxkDitherJJN), 10 * 12 + 48 + 64);
    EXPECT_EQ(sizeOf(4, 10, 100, pxkDitherStucki), 10 * 12 + 48 + 6272 + 64);
    EXPECT_EQ(sizeOf(9, 1, 0, pxkDitherNone), 0);
    EXPECT_EQ(sizeOf(9, 1, 100, pxkDitherNone), 0);  // no regard to noise
}

TEST(ReduceBitsBufferSize, SameForEveryChannelCodeAndHeight) {
    for (int32_t w : {1, 2, 17, 1920}) {
        for (int dtype = 0; dtype <= 4; ++dtype) {
            for (uint32_t noise : {0u, 50u}) {
                const int32_t base = sizeOf(1, w, noise, dtype);
                for (int32_t code : {3, 4, 9}) EXPECT_EQ(sizeOf(code, w, noise, dtype), base);
                int32_t other = 0;
                ASSERT_EQ(pxkiReduceBitsGetBufferSize(1, PxkSize{w, 1000}, noise, dtype, &other), pxkOk);
                EXPECT_EQ(other, base);
            }
        }
    }
}

TEST(ReduceBitsBufferSize, ChecksInOrder) {
    PxkResult st;
    EXPECT_EQ(pxkiReduceBitsGetBufferSize(2, PxkSize{0, 0}, 500, 9, nullptr), pxkErrNullPtr);
    EXPECT_EQ(sizeOf(2, 0, 500, 9, &st), -12345);
    EXPECT_EQ(st, pxkErrSize);
    sizeOf(1, -4, 0, 1, &st);
    EXPECT_EQ(st, pxkErrSize);
    for (int32_t code : {0, 2, 5, 8, 10, -1}) {
        EXPECT_EQ(sizeOf(code, 5, 500, 9, &st), -12345);
        EXPECT_EQ(st, pxkErrChannels) << code;
    }
    EXPECT_EQ(sizeOf(1, 5, 101, 9, &st), -12345);
    EXPECT_EQ(st, pxkErrNoiseRange);
    EXPECT_EQ(sizeOf(1, 5, 101, 0, &st), -12345);
    EXPECT_EQ(st, pxkErrNoiseRange);
    for (int32_t dtype : {-1, 5, 224}) {
        EXPECT_EQ(sizeOf(1, 5, 0, dtype, &st), -12345);
        EXPECT_EQ(st, pxkErrDitherType) << dtype;
    }
    // A size beyond a 32-bit count is refused as a size.
    EXPECT_EQ(sizeOf(1, 0x7FFFFFFF, 0, pxkDitherJJN, &st), -12345);
    EXPECT_EQ(st, pxkErrSize);
}

// A call with noise leaves both tables and both records at their documented places.
TEST(ReduceBitsNoiseTables, TablesAndRecordsInTheBuffer) {
    for (int dtype : {pxkDitherFS, pxkDitherBayer}) {
        for (uint32_t noise : {1u, 50u, 100u}) {
            pxktest::Rng rng(noise + 1000u * uint32_t(dtype));
            const int32_t need = sizeOf(1, 8, noise, dtype);
            dithertest::Scratch scratch(need, 13, rng);
            std::vector<uint8_t> src(8, 100), dst(8, 0);
            ASSERT_EQ(pxkiReduceBits_8u_C1R(src.data(), 8, dst.data(), 8, PxkSize{8, 1}, noise, dtype, 4, scratch.data()),
                      pxkOk);
            EXPECT_TRUE(scratch.guardsIntact());
            const uint8_t* base = scratch.aligned();
            const std::vector<uint16_t> offset = refdither::offsetTable();
            const float step = 255.0f / 3.0f;
            const float low = dtype == pxkDitherBayer ? float(-int(noise)) / 100.0f : float(50 - int(noise)) * step / 100.0f;
            const float high = dtype == pxkDitherBayer ? float(int(noise)) / 100.0f : float(50 + int(noise)) * step / 100.0f;
            const std::vector<float> table = refdither::noiseTable(low, high);
            for (int i = 0; i < 1024; ++i) {
                const uint16_t o = readAt<uint16_t>(base, size_t(4096 + 2 * i));
                const float n = readAt<float>(base, size_t(4 * i));
                ASSERT_EQ(o, offset[size_t(i)]) << i;
                ASSERT_LE(o, 1024);
                ASSERT_EQ(std::memcmp(&n, &table[size_t(i)], 4), 0) << i << ": " << n << " vs " << table[size_t(i)];
                ASSERT_GE(n, low);
                ASSERT_LE(n, high);
            }
            // The records: tag, seed, bounds, mid (offset table at 6144, noise at 6200).
            EXPECT_EQ(readAt<int32_t>(base, 6144), 38);
            EXPECT_EQ(readAt<int32_t>(base, 6200), 39);
            EXPECT_EQ(readAt<uint32_t>(base, 6148), 0u);
            EXPECT_EQ(readAt<uint32_t>(base, 6204), 0u);
            EXPECT_EQ(readAt<int16_t>(base, 6152), 0);
            EXPECT_EQ(readAt<int16_t>(base, 6154), 1024);
            EXPECT_EQ(readAt<float>(base, 6208), low);
            EXPECT_EQ(readAt<float>(base, 6212), high);
            EXPECT_EQ(readAt<double>(base, 6216), (double(high) + double(low)) * 0.5);
        }
    }
}

// The first values of the generator, worked by hand from its definition with seed 0:
// a = 0, b = 1013904243, d = 1013904243 * 69069 + 1013904243 (mod 2^32).
TEST(ReduceBitsNoiseTables, FirstOffsetValueByHand) {
    const uint32_t b = 1013904243u;
    const uint32_t d = b * 69069u + 1013904243u;
    const uint32_t t = b - d + 0xFFFFFFFFu;
    const uint32_t x = (t & 0x80000000u) ? t - 18u : t;
    const uint32_t lcg = 1131199209u * 69069u + 1013904243u;
    const int32_t r = int32_t(x + lcg);
    const double v = double(r) * (1024.0 * 2.3283064365386963e-10) + 512.0;
    EXPECT_EQ(refdither::offsetTable()[0], uint16_t(std::nearbyint(v)));
    // And the library's table agrees (read from a call's buffer).
    std::vector<uint8_t> buffer(20000, 0);
    std::vector<uint8_t> src(1, 9), dst(1, 0);
    ASSERT_EQ(pxkiReduceBits_8u_C1R(src.data(), 1, dst.data(), 1, PxkSize{1, 1}, 10, pxkDitherBayer, 2, buffer.data()),
              pxkOk);
    const std::uintptr_t p = reinterpret_cast<std::uintptr_t>(buffer.data());
    const uint8_t* base = buffer.data() + ((64 - (p & 63)) & 63);
    uint16_t first;
    std::memcpy(&first, base + 4096, 2);
    EXPECT_EQ(first, uint16_t(std::nearbyint(v)));
}

// The diffusion rows lie at the aligned base without noise and 6256 bytes after it
// with noise: two rows of width + 2 floats for Floyd-Steinberg, a zero cell at each
// end, row 1 (the first current row) from float width + 3. Three 100s with two levels:
// errors 100, then 100 + 100 * 7/16 = 143.75 rises (error -111.25), then
// 100 - 111.25 * 7/16 = 51.328125 stays.
TEST(ReduceBitsScratchLayout, FloydSteinbergRowsAtTheirPlace) {
    for (uint32_t noise : {0u, 1u}) {
        std::vector<uint8_t> buffer(8000, 0xCD);
        const std::vector<uint8_t> src = {100, 100, 100};
        std::vector<uint8_t> dst(3, 0);
        // Noise 1 moves the thresholds (0.49 to 0.51 of a step) too little to change
        // these samples.
        ASSERT_EQ(pxkiReduceBits_8u_C1R(src.data(), 3, dst.data(), 3, PxkSize{3, 1}, noise, pxkDitherFS, 2,
                                        buffer.data() + 1),
                  pxkOk);
        EXPECT_EQ(dst, (std::vector<uint8_t>{0, 255, 0}));
        const std::uintptr_t p = reinterpret_cast<std::uintptr_t>(buffer.data() + 1);
        const uint8_t* base = buffer.data() + 1 + ((64 - (p & 63)) & 63);
        const uint8_t* rows = base + (noise ? 6256 : 0);
        const float expected[10] = {0, 0, 0, 0, 0, 0, 100.0f, -111.25f, 51.328125f, 0};
        for (int i = 0; i < 10; ++i) EXPECT_EQ(readAt<float>(rows, size_t(4 * i)), expected[i]) << noise << " " << i;
        EXPECT_EQ(readAt<uint32_t>(rows, 40), 0xCDCDCDCDu);  // nothing after the rows
    }
}

}  // namespace
