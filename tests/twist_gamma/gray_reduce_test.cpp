// Colour to gray: the 18 reducing exports against the reference model over every
// width, several heights and step layouts and several weight sets, the known
// cases with literal values, statuses and guards.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "gray_reference.h"
#include "call_outcome.h"
#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace {

using pxktest::GuardedImage;
using pxktest::ImageGeometry;
using pxktest::Rng;

// One reducing export, called with or without weights (RGBToGray ignores them).
template <class T, class C>
struct Member {
    const char* name;
    int channels;
    int stepLowBits;  // bits of a step the export clears (1 for 16-bit, 3 for 32f)
    bool takesWeights;
    PxkResult (*call)(const T*, int32_t, T*, int32_t, PxkSize, const C*);
    void (*reference)(const T* src, int channels, T* dst, int width, const C* coeffs);
};

template <class T>
void fillSamples(GuardedImage& img, Rng& rng) {
    img.fillRandom(rng);
    if constexpr (std::is_floating_point_v<T>) {
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
                for (int c = 0; c < img.channels(); ++c)
                    img.set<T>(x, y, c, static_cast<T>(rng.uniform(-40000, 400000)) / T(1000));
        img.snapshot();
    }
}

template <class T, class C>
::testing::AssertionResult runOnce(const Member<T, C>& m, int width, int height, int srcStep, int dstStep,
                                   const C* coeffs, uint32_t seed) {
    Rng rng(seed);
    const int srcEff = srcStep & ~m.stepLowBits, dstEff = dstStep & ~m.stepLowBits;
    GuardedImage src(ImageGeometry{width, height, m.channels, int(sizeof(T)), srcEff}, graytest::fencedSource());
    GuardedImage dst(ImageGeometry{width, height, 1, int(sizeof(T)), dstEff});
    fillSamples<T>(src, rng);
    dst.fillRandom(rng);
    GuardedImage expected = dst.clone();
    for (int y = 0; y < height; ++y) {
        std::vector<T> s(static_cast<std::size_t>(width) * m.channels), d(static_cast<std::size_t>(width));
        std::memcpy(s.data(), src.row(y), s.size() * sizeof(T));
        m.reference(s.data(), m.channels, d.data(), width, coeffs);
        std::memcpy(expected.row(y), d.data(), d.size() * sizeof(T));
    }
    const PxkResult r = m.call(reinterpret_cast<const T*>(src.data()), srcStep, reinterpret_cast<T*>(dst.data()),
                               dstStep, PxkSize{width, height}, coeffs);
    return graytest::sameOutcome(r, dst, expected, src);
}

template <class T, class C>
void sweep(const Member<T, C>& m, const std::vector<std::vector<C>>& weightSets) {
    for (int width : pxktest::sweepWidths()) {
        for (int height : pxktest::sweepHeights(width)) {
            for (const pxktest::StepPlan& plan : pxktest::stepPlans()) {
                const int srcStep = pxktest::stepFor(plan.src, static_cast<std::size_t>(width) * m.channels * sizeof(T));
                const int dstStep = pxktest::stepFor(plan.dst, static_cast<std::size_t>(width) * sizeof(T));
                for (std::size_t k = 0; k < (m.takesWeights ? weightSets.size() + 1 : 1); ++k) {
                    const C* coeffs = k < weightSets.size() && m.takesWeights ? weightSets[k].data() : nullptr;
                    const uint32_t seed = pxktest::seedFor(m.name, {uint32_t(width), uint32_t(height), uint32_t(k)});
                    ASSERT_TRUE(runOnce(m, width, height, srcStep, dstStep, coeffs, seed))
                        << m.name << " width " << width << " height " << height << " steps "
                        << pxktest::stepPlanName(plan) << " weights " << k;
                }
            }
        }
    }
}

// Weight sets: the defaults spelled out, ones (over unity), negatives and large
// ones (they wrap in 8u), small random-looking ones.
template <class C>
std::vector<std::vector<C>> weightSets() {
    return {{C(0.299f), C(0.587f), C(0.114f)},
            {1, 1, 1},
            {C(-0.1), C(0.7), C(0.4)},
            {C(2.0), C(0.25), C(-1.5)},
            {C(0.2126), C(0.7152), C(0.0722)},
            {C(0.5), C(0.5), C(0.0)}};
}

#define GRAY_RGB(T, type, layout, ch, low, ref)                                                              \
    Member<T, float> {                                                                                       \
        "RGBToGray_" #type "_" #layout, ch, low, false,                                                      \
            [](const T* s, int32_t ss, T* d, int32_t ds, PxkSize z, const float*) {                          \
                return pxkiRGBToGray_##type##_##layout(s, ss, d, ds, z);                                     \
            },                                                                                               \
            ref                                                                                              \
    }
#define GRAY_COLOR(T, C, type, layout, ch, low, ref)                                                         \
    Member<T, C> {                                                                                           \
        "ColorToGray_" #type "_" #layout, ch, low, true, pxkiColorToGray_##type##_##layout, ref              \
    }

void ref8uC3(const uint8_t* s, int ch, uint8_t* d, int w, const float* c) { refgray::row8u(s, ch, d, w, w & ~3, c); }
void ref8uAC4(const uint8_t* s, int ch, uint8_t* d, int w, const float* c) { refgray::row8u(s, ch, d, w, w & ~7, c); }

TEST(GrayReduce, Matches8uReference) {
    sweep(GRAY_RGB(uint8_t, 8u, C3C1R, 3, 0, ref8uC3), weightSets<float>());
    sweep(GRAY_RGB(uint8_t, 8u, AC4C1R, 4, 0, ref8uAC4), weightSets<float>());
    sweep(GRAY_COLOR(uint8_t, float, 8u, C3C1R, 3, 0, ref8uC3), weightSets<float>());
    sweep(GRAY_COLOR(uint8_t, float, 8u, AC4C1R, 4, 0, ref8uAC4), weightSets<float>());
}
TEST(GrayReduce, Matches16uReference) {
    sweep(GRAY_RGB(uint16_t, 16u, C3C1R, 3, 1, refgray::row16u), weightSets<float>());
    sweep(GRAY_RGB(uint16_t, 16u, AC4C1R, 4, 1, refgray::row16u), weightSets<float>());
    sweep(GRAY_COLOR(uint16_t, float, 16u, C3C1R, 3, 1, refgray::row16u), weightSets<float>());
    sweep(GRAY_COLOR(uint16_t, float, 16u, AC4C1R, 4, 1, refgray::row16u), weightSets<float>());
}
TEST(GrayReduce, Matches16sReference) {
    sweep(GRAY_RGB(int16_t, 16s, C3C1R, 3, 1, refgray::row16s), weightSets<float>());
    sweep(GRAY_RGB(int16_t, 16s, AC4C1R, 4, 1, refgray::row16s), weightSets<float>());
    sweep(GRAY_COLOR(int16_t, float, 16s, C3C1R, 3, 1, refgray::row16s), weightSets<float>());
    sweep(GRAY_COLOR(int16_t, float, 16s, AC4C1R, 4, 1, refgray::row16s), weightSets<float>());
}
TEST(GrayReduce, Matches32fReference) {
    sweep(GRAY_RGB(float, 32f, C3C1R, 3, 3, refgray::row32f), weightSets<float>());
    sweep(GRAY_RGB(float, 32f, AC4C1R, 4, 3, refgray::row32f), weightSets<float>());
    sweep(GRAY_COLOR(float, float, 32f, C3C1R, 3, 3, refgray::row32f), weightSets<float>());
    sweep(GRAY_COLOR(float, float, 32f, AC4C1R, 4, 3, refgray::row32f), weightSets<float>());
}
TEST(GrayReduce, Matches64fReference) {
    sweep(GRAY_COLOR(double, double, 64f, C3C1R, 3, 0, refgray::row64f), weightSets<double>());
    sweep(GRAY_COLOR(double, double, 64f, AC4C1R, 4, 0, refgray::row64f), weightSets<double>());
}

// Every 8-bit colour through the blocks (rows of 256 pixels) and through the tail (the
// same pixels as rows of three), for several weight sets; the sanitizer build takes
// every sixteenth first channel.
TEST(GrayReduce, Every8uColourInBlocksAndTail) {
    const std::vector<std::vector<float>> sets = {{0.299f, 0.587f, 0.114f}, {1, 1, 1}, {-0.1f, 0.7f, 0.4f}};
    for (int channels : {3, 4}) {
        std::vector<uint8_t> src(std::size_t(65536) * channels), dst(65536), want(65536);
        for (int r = 0; r < 256; r += pxktest::kLightSweep ? 16 : 1) {
            for (int i = 0; i < 65536; ++i) {
                uint8_t* p = &src[std::size_t(i) * channels];
                p[0] = uint8_t(r);
                p[1] = uint8_t(i >> 8);
                p[2] = uint8_t(i & 255);
                if (channels == 4) p[3] = uint8_t(i * 7);
            }
            for (const std::vector<float>& w : sets) {
                auto call = channels == 3 ? pxkiColorToGray_8u_C3C1R : pxkiColorToGray_8u_AC4C1R;
                // Blocks: rows of 256 pixels.
                ASSERT_EQ(call(src.data(), 256 * channels, dst.data(), 256, PxkSize{256, 256}, w.data()), pxkOk);
                for (int y = 0; y < 256; ++y)
                    refgray::row8u(&src[std::size_t(y) * 256 * channels], channels, &want[std::size_t(y) * 256], 256,
                                   256, w.data());
                ASSERT_EQ(dst, want) << "blocks, first channel " << r << ", " << channels << " channels";
                // Tail: rows of three pixels (the last pixel alone).
                ASSERT_EQ(call(src.data(), 3 * channels, dst.data(), 3, PxkSize{3, 21845}, w.data()), pxkOk);
                ASSERT_EQ(call(src.data() + std::size_t(65535) * channels, channels, dst.data() + 65535, 1,
                               PxkSize{1, 1}, w.data()),
                          pxkOk);
                refgray::row8u(src.data(), channels, want.data(), 65536, 0, w.data());
                ASSERT_EQ(dst, want) << "tail, first channel " << r << ", " << channels << " channels";
            }
        }
    }
}

// Under round toward zero the 16-bit members follow the caller's mode (nothing sets
// it), and the model under the same mode agrees.
TEST(GrayReduce, SixteenBitMembersFollowTheCallersRoundingMode) {
    const int previous = std::fegetround();
    ASSERT_EQ(std::fesetround(FE_TOWARDZERO), 0);
    const std::vector<std::vector<float>> w = {{0.3f, 0.3f, 0.3f}};
    for (int width : {3, 8, 37}) {
        EXPECT_TRUE(runOnce(GRAY_COLOR(uint16_t, float, 16u, C3C1R, 3, 1, refgray::row16u), width, 2, width * 6,
                            width * 2, w[0].data(), 7));
        EXPECT_TRUE(runOnce(GRAY_COLOR(int16_t, float, 16s, AC4C1R, 4, 1, refgray::row16s), width, 2, width * 8,
                            width * 2, w[0].data(), 8));
    }
    // 0.3f + 0.3f + 0.3f is about 0.9: toward zero gives 0, nearest 1.
    const uint16_t src[3] = {1, 1, 1};
    uint16_t dst = 77;
    ASSERT_EQ(pxkiColorToGray_16u_C3C1R(src, 6, &dst, 2, PxkSize{1, 1}, w[0].data()), pxkOk);
    EXPECT_EQ(dst, 0);
    std::fesetround(previous);
    ASSERT_EQ(pxkiColorToGray_16u_C3C1R(src, 6, &dst, 2, PxkSize{1, 1}, w[0].data()), pxkOk);
    EXPECT_EQ(dst, 1);
}

// ---------------------------------------------------------------------------------
// Known cases, literal values
// ---------------------------------------------------------------------------------

// One row of `width` pixels all equal to `pixel` (C3 or AC4) through an 8u export.
std::vector<uint8_t> row8u(bool ac4, int width, const uint8_t pixel[3], const float* coeffs) {
    const int ch = ac4 ? 4 : 3;
    std::vector<uint8_t> src(static_cast<std::size_t>(width) * ch);
    for (int x = 0; x < width; ++x) {
        for (int c = 0; c < 3; ++c) src[std::size_t(x) * ch + c] = pixel[c];
        if (ac4) src[std::size_t(x) * ch + 3] = uint8_t(x * 37);
    }
    std::vector<uint8_t> dst(static_cast<std::size_t>(width), 0x5A);
    const PxkSize size{width, 1};
    const PxkResult r = ac4 ? pxkiColorToGray_8u_AC4C1R(src.data(), width * ch, dst.data(), width, size, coeffs)
                            : pxkiColorToGray_8u_C3C1R(src.data(), width * ch, dst.data(), width, size, coeffs);
    EXPECT_EQ(r, pxkOk);
    return dst;
}

TEST(GrayReduceCases, WhiteWithDefaultWeightsIs255InBlocksAndTail) {
    const uint8_t white[3] = {255, 255, 255};
    for (bool ac4 : {false, true}) {
        for (uint8_t v : row8u(ac4, 23, white, nullptr)) EXPECT_EQ(v, 255);
    }
    std::vector<uint8_t> src(23 * 3, 255), dst(23);
    ASSERT_EQ(pxkiRGBToGray_8u_C3C1R(src.data(), 69, dst.data(), 23, PxkSize{23, 1}), pxkOk);
    for (uint8_t v : dst) EXPECT_EQ(v, 255);
}

TEST(GrayReduceCases, OnesOnWhiteFoldToBlackInBlocksAndWrapTo253InTheTail) {
    const uint8_t white[3] = {255, 255, 255};
    const float ones[3] = {1.0f, 1.0f, 1.0f};
    // C3C1R width 7: the four-pixel block, then three tail pixels.
    EXPECT_EQ(row8u(false, 7, white, ones), (std::vector<uint8_t>{0, 0, 0, 0, 253, 253, 253}));
    // AC4C1R width 7: all tail.
    EXPECT_EQ(row8u(true, 7, white, ones), (std::vector<uint8_t>(7, 253)));
    // Width 13: C3 blocks of 8 and 4, one tail pixel; AC4 one block of 8, five tail.
    std::vector<uint8_t> c3(13, 0);
    c3[12] = 253;
    EXPECT_EQ(row8u(false, 13, white, ones), c3);
    std::vector<uint8_t> ac4(13, 253);
    for (int x = 0; x < 8; ++x) ac4[std::size_t(x)] = 0;
    EXPECT_EQ(row8u(true, 13, white, ones), ac4);
}

TEST(GrayReduceCases, DefaultFixedWeightsAre9798_19235_3736) {
    // A single channel of 128 through the tail: (128 * w + 0x4000) >> 15.
    const uint8_t r[3] = {128, 0, 0}, g[3] = {0, 128, 0}, b[3] = {0, 0, 128};
    EXPECT_EQ(row8u(false, 3, r, nullptr)[0], (128 * 9798 + 0x4000) >> 15);
    EXPECT_EQ(row8u(false, 3, g, nullptr)[0], (128 * 19235 + 0x4000) >> 15);
    EXPECT_EQ(row8u(false, 3, b, nullptr)[0], (128 * 3736 + 0x4000) >> 15);
    // 255 in each channel through the tail: (255 * 32769 + 0x4000) >> 15 = 255.
    const uint8_t white[3] = {255, 255, 255};
    EXPECT_EQ(row8u(false, 1, white, nullptr)[0], 255);
}

TEST(GrayReduceCases, NegativeWeightWrapsTo62260AndTwoWrapsToZero) {
    const float negative[3] = {-0.1f, 0.0f, 0.0f}, two[3] = {2.0f, 0.0f, 0.0f};
    const uint8_t one[3] = {1, 0, 0}, full[3] = {255, 0, 0};
    // Tail: (1 * 62260 + 16384) >> 15 = 2; (255 * 62260 + 16384) >> 15 = 485, low 8 bits 229.
    EXPECT_EQ(row8u(false, 3, one, negative)[0], 2);
    EXPECT_EQ(row8u(false, 3, full, negative)[0], 229);
    // Blocks: 255 * 256 * 62260 >> 16 = 62016, saturating + 64 = 62080, as signed -3456,
    // >> 7 = -27: 0. A weight of 2.0 is 0: everything black.
    EXPECT_EQ(row8u(false, 4, full, negative), (std::vector<uint8_t>(4, 0)));
    EXPECT_EQ(row8u(false, 4, full, two), (std::vector<uint8_t>(4, 0)));
    EXPECT_EQ(row8u(false, 3, full, two), (std::vector<uint8_t>(3, 0)));
}

TEST(GrayReduceCases, NullWeightsAreTheDefaults) {
    Rng rng(5);
    std::vector<uint8_t> s8(37 * 4);
    rng.fill(s8.data(), s8.size());
    std::vector<uint8_t> a(37), b(37);
    ASSERT_EQ(pxkiRGBToGray_8u_AC4C1R(s8.data(), 148, a.data(), 37, PxkSize{37, 1}), pxkOk);
    ASSERT_EQ(pxkiColorToGray_8u_AC4C1R(s8.data(), 148, b.data(), 37, PxkSize{37, 1}, nullptr), pxkOk);
    EXPECT_EQ(a, b);
    std::vector<float> s32(37 * 3), f1(37), f2(37);
    for (float& v : s32) v = float(rng.uniform(0, 1000)) / 7.0f;
    ASSERT_EQ(pxkiRGBToGray_32f_C3C1R(s32.data(), 37 * 12, f1.data(), 37 * 4, PxkSize{37, 1}), pxkOk);
    ASSERT_EQ(pxkiColorToGray_32f_C3C1R(s32.data(), 37 * 12, f2.data(), 37 * 4, PxkSize{37, 1}, nullptr), pxkOk);
    EXPECT_EQ(0, std::memcmp(f1.data(), f2.data(), f1.size() * 4));
}

TEST(GrayReduceCases, SixtyFourBitDefaultsAreTheFloatWeightsWidened) {
    const uint64_t bits[3] = {0x3FD322D0E0000000ull, 0x3FE2C8B440000000ull, 0x3FBD2F1AA0000000ull};
    for (int k = 0; k < 3; ++k) {
        double src[4] = {0, 0, 0, 0};
        src[k] = 1.0;
        double dst = -1;
        ASSERT_EQ(pxkiColorToGray_64f_AC4C1R(src, 32, &dst, 8, PxkSize{1, 1}, nullptr), pxkOk);
        uint64_t got;
        std::memcpy(&got, &dst, 8);
        EXPECT_EQ(got, bits[k]) << "channel " << k;
    }
}

TEST(GrayReduceCases, SixteenBitResultsOutOfRangeStainTheirGroup) {
    // Weights 2, 0, 0 on first channels 0, 1, 35000, 3: results 0, 2, 70000, 6.
    // 70000 = 0x11170: the group stores 0|1, 0|2, 0x1170|0, 1|6.
    const float w[3] = {2.0f, 0.0f, 0.0f};
    const uint16_t src[12] = {0, 9, 9, 1, 9, 9, 35000, 9, 9, 3, 9, 9};
    uint16_t dst[4] = {};
    ASSERT_EQ(pxkiColorToGray_16u_C3C1R(src, 24, dst, 8, PxkSize{4, 1}, w), pxkOk);
    EXPECT_EQ(std::vector<uint16_t>(dst, dst + 4), (std::vector<uint16_t>{1, 2, 0x1170, 7}));
    // The same pixels as a row of three: all tail, low 16 bits.
    ASSERT_EQ(pxkiColorToGray_16u_C3C1R(src, 24, dst, 8, PxkSize{3, 1}, w), pxkOk);
    EXPECT_EQ(std::vector<uint16_t>(dst, dst + 3), (std::vector<uint16_t>{0, 2, 0x1170}));
}

TEST(GrayReduceCases, SixteenSignedSaturatesInGroupsAndWrapsInTheTail) {
    const float ones[3] = {1.0f, 1.0f, 1.0f};
    // 3 * 65535 - 32768 = 163837: saturated to 32767 in a group, 163837 - 131072 =
    // 32765 in the tail.
    std::vector<int16_t> src(5 * 3, 32767), dst(5, 0);
    ASSERT_EQ(pxkiColorToGray_16s_C3C1R(src.data(), 30, dst.data(), 10, PxkSize{5, 1}, ones), pxkOk);
    EXPECT_EQ(dst, (std::vector<int16_t>{32767, 32767, 32767, 32767, 32765}));
    // -32768 everywhere: 0 * 3 - 32768 = -32768 in both paths.
    std::vector<int16_t> low(5 * 3, -32768);
    ASSERT_EQ(pxkiColorToGray_16s_C3C1R(low.data(), 30, dst.data(), 10, PxkSize{5, 1}, ones), pxkOk);
    EXPECT_EQ(dst, (std::vector<int16_t>(5, -32768)));
}

TEST(GrayReduceCases, FourthChannelNeverMatters) {
    Rng rng(11);
    for (int width : {1, 7, 8, 9, 33}) {
        std::vector<uint16_t> a(static_cast<std::size_t>(width) * 4), b;
        for (uint16_t& v : a) v = uint16_t(rng.next32());
        b = a;
        for (int x = 0; x < width; ++x) b[std::size_t(x) * 4 + 3] = uint16_t(~a[std::size_t(x) * 4 + 3]);
        std::vector<uint16_t> da(static_cast<std::size_t>(width)), db(static_cast<std::size_t>(width));
        ASSERT_EQ(pxkiRGBToGray_16u_AC4C1R(a.data(), width * 8, da.data(), width * 2, PxkSize{width, 1}), pxkOk);
        ASSERT_EQ(pxkiRGBToGray_16u_AC4C1R(b.data(), width * 8, db.data(), width * 2, PxkSize{width, 1}), pxkOk);
        EXPECT_EQ(da, db);
        std::vector<uint8_t> a8(static_cast<std::size_t>(width) * 4), b8, d1(static_cast<std::size_t>(width)), d2(static_cast<std::size_t>(width));
        rng.fill(a8.data(), a8.size());
        b8 = a8;
        for (int x = 0; x < width; ++x) b8[std::size_t(x) * 4 + 3] ^= 0xFF;
        ASSERT_EQ(pxkiRGBToGray_8u_AC4C1R(a8.data(), width * 4, d1.data(), width, PxkSize{width, 1}), pxkOk);
        ASSERT_EQ(pxkiRGBToGray_8u_AC4C1R(b8.data(), width * 4, d2.data(), width, PxkSize{width, 1}), pxkOk);
        EXPECT_EQ(d1, d2);
    }
}

TEST(GrayReduceCases, OddStepsLoseTheirLowBits) {
    // Two rows of one 16u pixel: a source step of 7 reads row 1 at byte 6, and a
    // destination step of 3 writes it at byte 2. 32f: steps 15 and 7 act as 12 and 4.
    const uint16_t src16[6] = {100, 100, 100, 200, 200, 200};
    uint16_t dst16[3] = {0, 0, 0xBEEF};
    const float w[3] = {1.0f, 0.0f, 0.0f};
    ASSERT_EQ(pxkiColorToGray_16u_C3C1R(src16, 7, dst16, 3, PxkSize{1, 2}, w), pxkOk);
    EXPECT_EQ(dst16[0], 100);
    EXPECT_EQ(dst16[1], 200);
    EXPECT_EQ(dst16[2], 0xBEEF);
    const float src32[6] = {1.5f, 0, 0, 2.5f, 0, 0};
    float dst32[3] = {0, 0, -9.0f};
    ASSERT_EQ(pxkiColorToGray_32f_C3C1R(src32, 15, dst32, 7, PxkSize{1, 2}, w), pxkOk);
    EXPECT_EQ(dst32[0], 1.5f);
    EXPECT_EQ(dst32[1], 2.5f);
    EXPECT_EQ(dst32[2], -9.0f);
    // 64f takes its steps in bytes: a step of 28 is used as given.
    std::vector<uint8_t> src64(28 + 24, 0), dst64(40, 0xCC);
    const double one = 1.0, three = 3.0, wd[3] = {1.0, 0.0, 0.0};
    std::memcpy(src64.data(), &one, 8);
    std::memcpy(src64.data() + 28, &three, 8);
    ASSERT_EQ(pxkiColorToGray_64f_C3C1R(reinterpret_cast<const double*>(src64.data()), 28,
                                        reinterpret_cast<double*>(dst64.data()), 12, PxkSize{1, 2}, wd),
              pxkOk);
    double got0, got1;
    std::memcpy(&got0, dst64.data(), 8);
    std::memcpy(&got1, dst64.data() + 12, 8);
    EXPECT_EQ(got0, 1.0);
    EXPECT_EQ(got1, 3.0);
    EXPECT_EQ(dst64[8], 0xCC);
}

// ---------------------------------------------------------------------------------
// Statuses: null pointers, then sizes; a failing call writes nothing.
// ---------------------------------------------------------------------------------

TEST(GrayReduceStatus, NullPointersThenSizeAndNothingWritten) {
    uint8_t src[64] = {}, dst[16];
    std::memset(dst, 0x77, sizeof dst);
    const float w[3] = {1, 1, 1};
    using Fn = PxkResult (*)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize, const float*);
    const Fn fns[2] = {pxkiColorToGray_8u_C3C1R, pxkiColorToGray_8u_AC4C1R};
    for (Fn f : fns) {
        EXPECT_EQ(f(nullptr, 12, dst, 4, PxkSize{0, 0}, w), pxkErrNullPtr);
        EXPECT_EQ(f(src, 12, nullptr, 4, PxkSize{0, 0}, w), pxkErrNullPtr);
        EXPECT_EQ(f(src, 12, dst, 4, PxkSize{0, 1}, w), pxkErrSize);
        EXPECT_EQ(f(src, 12, dst, 4, PxkSize{1, 0}, w), pxkErrSize);
        EXPECT_EQ(f(src, 12, dst, 4, PxkSize{-1, 1}, w), pxkErrSize);
        EXPECT_EQ(f(src, 12, dst, 4, PxkSize{1, -5}, w), pxkErrSize);
        // Steps are not checked: zero and negative ones are legal.
        EXPECT_EQ(f(src, 0, dst, 0, PxkSize{1, 1}, nullptr), pxkOk);
    }
    std::memset(dst, 0x77, sizeof dst);
    EXPECT_EQ(pxkiRGBToGray_8u_C3C1R(src, 12, dst, 4, PxkSize{4, 0}), pxkErrSize);
    EXPECT_EQ(pxkiRGBToGray_16u_C3C1R(nullptr, 12, reinterpret_cast<uint16_t*>(dst), 4, PxkSize{0, 0}),
              pxkErrNullPtr);
    EXPECT_EQ(pxkiRGBToGray_16s_AC4C1R(reinterpret_cast<const int16_t*>(src), 8, nullptr, 4, PxkSize{1, 1}),
              pxkErrNullPtr);
    EXPECT_EQ(pxkiRGBToGray_32f_AC4C1R(reinterpret_cast<const float*>(src), 16, reinterpret_cast<float*>(dst), 4,
                                       PxkSize{1, 0}),
              pxkErrSize);
    EXPECT_EQ(pxkiColorToGray_64f_C3C1R(nullptr, 24, reinterpret_cast<double*>(dst), 8, PxkSize{1, 1}, nullptr),
              pxkErrNullPtr);
    EXPECT_EQ(pxkiColorToGray_16s_C3C1R(reinterpret_cast<const int16_t*>(src), 6, reinterpret_cast<int16_t*>(dst),
                                        2, PxkSize{0, 1}, w),
              pxkErrSize);
    for (uint8_t v : dst) EXPECT_EQ(v, 0x77);
}

}  // namespace
