// Gray to RGB: the six exports against a plain copy model over every width, several
// heights and step layouts, alpha always written, bits of floats kept, statuses and
// guards.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "call_outcome.h"
#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace {

using pxktest::GuardedImage;
using pxktest::ImageGeometry;
using pxktest::Rng;

template <class T>
struct Member {
    const char* name;
    int channels;
    PxkResult (*call)(const T*, int32_t, T*, int32_t, PxkSize, T alpha);
};

template <class T>
T alphaFor(uint32_t bits) {
    T v;
    std::memcpy(&v, &bits, sizeof v);  // the low bytes
    return v;
}

template <class T>
::testing::AssertionResult runOnce(const Member<T>& m, int width, int height, int srcStep, int dstStep,
                                   uint32_t seed) {
    Rng rng(seed);
    GuardedImage src(ImageGeometry{width, height, 1, int(sizeof(T)), srcStep}, graytest::fencedSource());
    GuardedImage dst(ImageGeometry{width, height, m.channels, int(sizeof(T)), dstStep});
    src.fillRandom(rng);  // any bits, NaNs included for 32f
    dst.fillRandom(rng);
    const T alpha = alphaFor<T>(rng.next32());
    GuardedImage expected = dst.clone();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < 3; ++c) std::memcpy(expected.sampleAddress(x, y, c), src.sampleAddress(x, y, 0), sizeof(T));
            if (m.channels == 4) std::memcpy(expected.sampleAddress(x, y, 3), &alpha, sizeof(T));
        }
    }
    const PxkResult r = m.call(reinterpret_cast<const T*>(src.data()), srcStep, reinterpret_cast<T*>(dst.data()),
                               dstStep, PxkSize{width, height}, alpha);
    return graytest::sameOutcome(r, dst, expected, src);
}

template <class T>
void sweep(const Member<T>& m) {
    for (int width : pxktest::sweepWidths()) {
        for (int height : pxktest::sweepHeights(width)) {
            for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
                const int srcStep = pxktest::stepFor(plan.src, static_cast<std::size_t>(width) * sizeof(T));
                const int dstStep = pxktest::stepFor(plan.dst, static_cast<std::size_t>(width) * m.channels * sizeof(T));
                ASSERT_TRUE(runOnce(m, width, height, srcStep, dstStep,
                                    pxktest::seedFor(m.name, {uint32_t(width), uint32_t(height)})))
                    << m.name << " width " << width << " height " << height << " " << pxktest::stepPlanName(plan);
            }
        }
    }
}

#define C3_MEMBER(T, type)                                                                      \
    Member<T> {                                                                                 \
        "GrayToRGB_" #type "_C1C3R", 3, [](const T* s, int32_t ss, T* d, int32_t ds, PxkSize z, T) { \
            return pxkiGrayToRGB_##type##_C1C3R(s, ss, d, ds, z);                               \
        }                                                                                       \
    }
#define C4_MEMBER(T, type) \
    Member<T> { "GrayToRGB_" #type "_C1C4R", 4, pxkiGrayToRGB_##type##_C1C4R }

TEST(GrayExpand, Matches8uModel) {
    sweep(C3_MEMBER(uint8_t, 8u));
    sweep(C4_MEMBER(uint8_t, 8u));
}
TEST(GrayExpand, Matches16uModel) {
    sweep(C3_MEMBER(uint16_t, 16u));
    sweep(C4_MEMBER(uint16_t, 16u));
}
TEST(GrayExpand, Matches32fModel) {
    sweep(C3_MEMBER(float, 32f));
    sweep(C4_MEMBER(float, 32f));
}

// Misaligned rows: the same bytes at every offset of source and destination.
TEST(GrayExpand, AnyAlignment) {
    for (int mis = 0; mis < 16; ++mis) {
        for (int width : {5, 16, 37}) {
            pxktest::GuardOptions o;
            o.misalign = std::size_t(mis);
            GuardedImage src(ImageGeometry{width, 2, 1, 4, width * 4 + 3}, o);
            GuardedImage dst(ImageGeometry{width, 2, 4, 4, width * 16 + 1}, o);
            Rng rng(uint32_t(mis * 100 + width));
            src.fillRandom(rng);
            dst.fillRandom(rng);
            ASSERT_EQ(pxkiGrayToRGB_32f_C1C4R(reinterpret_cast<const float*>(src.data()), src.step(),
                                              reinterpret_cast<float*>(dst.data()), dst.step(), PxkSize{width, 2}, 0.5f),
                      pxkOk);
            for (int y = 0; y < 2; ++y)
                for (int x = 0; x < width; ++x) {
                    for (int c = 0; c < 3; ++c) ASSERT_EQ(0, std::memcmp(dst.sampleAddress(x, y, c), src.sampleAddress(x, y, 0), 4));
                    ASSERT_EQ(dst.get<float>(x, y, 3), 0.5f);
                }
            ASSERT_TRUE(dst.guardsIntact());
        }
    }
}

TEST(GrayExpandCases, AlphaZeroOverwritesEveryFourthByte) {
    std::vector<uint8_t> src(21), dst(21 * 4, 0xAA);
    for (int i = 0; i < 21; ++i) src[std::size_t(i)] = uint8_t(i * 11);
    ASSERT_EQ(pxkiGrayToRGB_8u_C1C4R(src.data(), 21, dst.data(), 84, PxkSize{21, 1}, 0), pxkOk);
    for (int i = 0; i < 21; ++i) {
        EXPECT_EQ(dst[std::size_t(i) * 4 + 0], i * 11);
        EXPECT_EQ(dst[std::size_t(i) * 4 + 1], i * 11);
        EXPECT_EQ(dst[std::size_t(i) * 4 + 2], i * 11);
        EXPECT_EQ(dst[std::size_t(i) * 4 + 3], 0);
    }
}

TEST(GrayExpandCases, FloatNaNsAndSignedZerosPassBitForBit) {
    const uint32_t bits[6] = {0x7FC12345u, 0xFF800001u, 0x80000000u, 0x00000001u, 0x7F800000u, 0x3F800000u};
    float src[6];
    std::memcpy(src, bits, sizeof src);
    float dst[6 * 3];
    ASSERT_EQ(pxkiGrayToRGB_32f_C1C3R(src, 24, dst, 72, PxkSize{6, 1}), pxkOk);
    for (int i = 0; i < 18; ++i) {
        uint32_t got;
        std::memcpy(&got, &dst[i], 4);
        EXPECT_EQ(got, bits[i / 3]) << i;
    }
    const float nanAlpha = std::numeric_limits<float>::quiet_NaN();
    float dst4[6 * 4];
    ASSERT_EQ(pxkiGrayToRGB_32f_C1C4R(src, 24, dst4, 96, PxkSize{6, 1}, nanAlpha), pxkOk);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(0, std::memcmp(&dst4[i * 4 + 3], &nanAlpha, 4));
    const uint16_t s16[3] = {0, 65535, 1234};
    uint16_t d16[12];
    ASSERT_EQ(pxkiGrayToRGB_16u_C1C4R(s16, 6, d16, 24, PxkSize{3, 1}, 40000), pxkOk);
    EXPECT_EQ(std::vector<uint16_t>(d16, d16 + 12),
              (std::vector<uint16_t>{0, 0, 0, 40000, 65535, 65535, 65535, 40000, 1234, 1234, 1234, 40000}));
}

TEST(GrayExpandStatus, NullPointersThenSizeAndNothingWritten) {
    uint8_t src[16] = {}, dst[64];
    std::memset(dst, 0x55, sizeof dst);
    EXPECT_EQ(pxkiGrayToRGB_8u_C1C3R(nullptr, 4, dst, 12, PxkSize{0, 0}), pxkErrNullPtr);
    EXPECT_EQ(pxkiGrayToRGB_8u_C1C3R(src, 4, nullptr, 12, PxkSize{1, 1}), pxkErrNullPtr);
    EXPECT_EQ(pxkiGrayToRGB_8u_C1C3R(src, 4, dst, 12, PxkSize{0, 1}), pxkErrSize);
    EXPECT_EQ(pxkiGrayToRGB_8u_C1C4R(src, 4, dst, 16, PxkSize{1, 0}, 9), pxkErrSize);
    EXPECT_EQ(pxkiGrayToRGB_8u_C1C4R(nullptr, 4, dst, 16, PxkSize{1, 1}, 9), pxkErrNullPtr);
    EXPECT_EQ(pxkiGrayToRGB_16u_C1C3R(reinterpret_cast<const uint16_t*>(src), 4, nullptr, 12, PxkSize{1, 1}),
              pxkErrNullPtr);
    EXPECT_EQ(pxkiGrayToRGB_16u_C1C4R(reinterpret_cast<const uint16_t*>(src), 4, reinterpret_cast<uint16_t*>(dst),
                                      16, PxkSize{-3, 1}, 1),
              pxkErrSize);
    EXPECT_EQ(pxkiGrayToRGB_32f_C1C3R(reinterpret_cast<const float*>(src), 4, reinterpret_cast<float*>(dst), 12,
                                      PxkSize{2, 0}),
              pxkErrSize);
    EXPECT_EQ(pxkiGrayToRGB_32f_C1C4R(nullptr, 4, reinterpret_cast<float*>(dst), 12, PxkSize{2, 1}, 1.0f),
              pxkErrNullPtr);
    for (uint8_t v : dst) EXPECT_EQ(v, 0x55);
}

}  // namespace
