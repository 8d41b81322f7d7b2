// The strip helper with typed calls, as a user writes them, on a minimal thread pool:
// one member of each sampling gives the bytes and the status of one call; members
// whose rows are not independent are refused before any call.
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

#include "pxkcc_strips.h"
#include "random.h"

namespace {

// The least pool there is: a thread for each task, all joined when the pool ends.
class ThreadPerTask {
public:
    void operator()(std::function<void()> task) { threads_.emplace_back(std::move(task)); }
    ~ThreadPerTask() {
        for (std::thread& t : threads_) t.join();
    }

private:
    std::vector<std::thread> threads_;
};

std::vector<uint8_t> randomBytes(std::size_t n, uint32_t seed) {
    std::vector<uint8_t> v(n);
    pxktest::Rng(seed).fill(v.data(), n);
    return v;
}

TEST(Strips, PlanStartsEveryStripOnItsRowGroup) {
    for (int32_t group : {1, 2, 4}) {
        for (int32_t height : {1, 2, 3, 7, 8, 37, 1080, 1081}) {
            for (int count : {1, 2, 3, 8}) {
                const std::vector<pxkcc::Strip> strips = pxkcc::planStrips(height, group, count);
                ASSERT_FALSE(strips.empty());
                EXPECT_LE(int(strips.size()), count);
                int32_t y = 0;
                for (std::size_t i = 0; i < strips.size(); ++i) {
                    EXPECT_EQ(strips[i].y, y);
                    EXPECT_EQ(strips[i].y % group, 0);
                    if (i + 1 < strips.size()) {
                        EXPECT_EQ(strips[i].height % group, 0);
                    }
                    EXPECT_GE(strips[i].height, std::min(height, group));
                    y += strips[i].height;
                }
                EXPECT_EQ(y, height);
            }
        }
    }
}

TEST(Strips, RulesFollowTheSampling) {
    EXPECT_EQ(pxkcc::stripRuleFor("pxkiRGBToYCbCr_8u_C3R").rowGroup, 1);
    EXPECT_EQ(pxkcc::stripRuleFor("pxkiRGBToYCbCr422_8u_C3C2R").rowGroup, 1);
    EXPECT_EQ(pxkcc::stripRuleFor("pxkiRGBToYCbCr420_8u_C3P3R").rowGroup, 2);
    EXPECT_EQ(pxkcc::stripRuleFor("pxkiYCbCr420ToRGB_8u_P2C3R").rowGroup, 2);
    EXPECT_EQ(pxkcc::stripRuleFor("pxkiYCbCr420_8u_P3P2R").rowGroup, 2);
    EXPECT_EQ(pxkcc::stripRuleFor("pxkiYCbCr420To1620_8u_P3R").rowGroup, 4);
    EXPECT_EQ(pxkcc::stripRuleFor("pxkiYCbCr411To420_8u_P3R").rowGroup, 4);
    EXPECT_TRUE(pxkcc::stripRuleFor("pxkiYCrCb420ToBGR_Filter_8u_P3C4R").allowed);  // filtered along the row only
}

TEST(Strips, MembersWhoseRowsAreNotIndependentAreRefused) {
    int calls = 0;
    auto call = [&](const pxkcc::Strip&) {
        ++calls;
        return PxkResult(pxkOk);
    };
    auto inline_pool = [](std::function<void()> task) { task(); };
    for (const char* name :
         {"pxkiReduceBits_8u_C3R", "pxkiReduceBits_32f16u_AC4R", "pxkiReduceBits_8u1u_C1R", "pxkiCFAToRGB_8u_C1C3R",
          "pxkiDemosaicAHD_16u_C1C3R", "pxkiCFAToBGRA_VNG_8u_C1C4R", "pxkiCFAToBGRA_VNG_8u_C1C4R_L",
          "pxkiToneMapLinear_32f8u_C1R", "pxkiToneMapMean_32f8u_C1R", "pxkiYCbCr420ToYCbCr422_Filter_8u_P3R",
          "pxkiYCbCr420ToYCbCr422_Filter_8u_P2P3R", "pxkiYCbCr420To422_Interlace_8u_P3R",
          "pxkiYCbCr422To420_Interlace_8u_P3R", "pxkiYCbCr1620To420_8u_P3R", "pxkiYCbCr420To411_8u_P3R",
          "pxkiLabToRGB_32f_P3R_L", "pxkccGetLibVersion"}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(pxkcc::stripRuleFor(name).allowed);
        EXPECT_THROW(pxkcc::runInStrips(name, 64, 4, inline_pool, call), std::invalid_argument);
    }
    EXPECT_EQ(calls, 0);
}

TEST(Strips, AnExceptionFromAStripComesBackAfterAllStripsEnd) {
    std::atomic<int> ran{0};
    ThreadPerTask pool;
    auto call = [&](const pxkcc::Strip& s) -> PxkResult {
        ++ran;
        if (s.y == 0) throw std::runtime_error("strip 0");
        return pxkOk;
    };
    EXPECT_THROW(pxkcc::runInStrips("pxkiRGBToYCbCr_8u_C3R", 40, 4, pool, call), std::runtime_error);
    EXPECT_EQ(ran.load(), 4);
}

// RGB to 4:2:0 planes: strips on even rows, the odd last row cut as in one call.
TEST(Strips, FourTwoZeroGivesTheBytesOfOneCall) {
    for (int32_t h : {2, 36, 37}) {
        SCOPED_TRACE(h);
        const int32_t w = 66, rgbStep = 3 * w + 5, yStep = w + 3, cStep = w / 2 + 7;
        const std::vector<uint8_t> rgb = randomBytes(std::size_t(rgbStep) * h, 420u + uint32_t(h));
        std::vector<uint8_t> one(std::size_t(yStep) * h + 2 * std::size_t(cStep) * h, 0x55), split = one;
        auto run = [&](std::vector<uint8_t>& out, const pxkcc::Strip& s) {
            uint8_t* y = out.data();
            uint8_t* cb = y + std::size_t(yStep) * h;
            uint8_t* cr = cb + std::size_t(cStep) * h;
            uint8_t* dst[3] = {pxkcc::stripRow(y, yStep, s), pxkcc::stripRow(cb, cStep, s, 2),
                               pxkcc::stripRow(cr, cStep, s, 2)};
            const int32_t steps[3] = {yStep, cStep, cStep};
            return pxkiRGBToYCbCr420_8u_C3P3R(pxkcc::stripRow(rgb.data(), rgbStep, s), rgbStep, dst, steps,
                                             PxkSize{w, s.height});
        };
        const PxkResult whole = run(one, pxkcc::Strip{0, h});
        ThreadPerTask pool;
        const PxkResult strips = pxkcc::runInStrips("pxkiRGBToYCbCr420_8u_C3P3R", h, 4, pool,
                                                    [&](const pxkcc::Strip& s) { return run(split, s); });
        EXPECT_EQ(strips, whole);
        EXPECT_EQ(whole, h % 2 ? pxkWarnOddSize : pxkOk);
        EXPECT_EQ(split, one);
    }
}

// Packed 4:2:2 from RGB, any row boundary.
TEST(Strips, FourTwoTwoGivesTheBytesOfOneCall) {
    const int32_t w = 50, h = 33, srcStep = 3 * w, dstStep = 2 * w + 4;
    const std::vector<uint8_t> rgb = randomBytes(std::size_t(srcStep) * h, 422);
    std::vector<uint8_t> one(std::size_t(dstStep) * h, 0x33), split = one;
    auto run = [&](std::vector<uint8_t>& out, const pxkcc::Strip& s) {
        return pxkiRGBToYCbCr422_8u_C3C2R(pxkcc::stripRow(rgb.data(), srcStep, s), srcStep,
                                          pxkcc::stripRow(out.data(), dstStep, s), dstStep, PxkSize{w, s.height});
    };
    ASSERT_EQ(run(one, pxkcc::Strip{0, h}), pxkOk);
    ThreadPerTask pool;
    EXPECT_EQ(pxkcc::runInStrips("pxkiRGBToYCbCr422_8u_C3C2R", h, 3, pool,
                                 [&](const pxkcc::Strip& s) { return run(split, s); }),
              pxkOk);
    EXPECT_EQ(split, one);
}

// 4:2:0 to 1620 planes: strips on multiples of 4.
TEST(Strips, SixteenTwentyGivesTheBytesOfOneCall) {
    const int32_t w = 64, h = 40;
    const std::vector<uint8_t> src = randomBytes(std::size_t(w) * h * 2, 1620);
    const uint8_t* in[3] = {src.data(), src.data() + w * h, src.data() + w * h + (w / 2) * (h / 2)};
    const int32_t inSteps[3] = {w, w / 2, w / 2};
    const int32_t outSteps[3] = {w, w / 4, w / 4};
    std::vector<uint8_t> one(std::size_t(w) * h * 2, 0x77), split = one;
    auto run = [&](std::vector<uint8_t>& out, const pxkcc::Strip& s) {
        uint8_t* base[3] = {out.data(), out.data() + w * h, out.data() + w * h + (w / 4) * (h / 4)};
        const uint8_t* srcPlanes[3] = {pxkcc::stripRow(in[0], inSteps[0], s), pxkcc::stripRow(in[1], inSteps[1], s, 2),
                                       pxkcc::stripRow(in[2], inSteps[2], s, 2)};
        uint8_t* dst[3] = {pxkcc::stripRow(base[0], outSteps[0], s), pxkcc::stripRow(base[1], outSteps[1], s, 4),
                           pxkcc::stripRow(base[2], outSteps[2], s, 4)};
        return pxkiYCbCr420To1620_8u_P3R(srcPlanes, inSteps, dst, outSteps, PxkSize{w, s.height});
    };
    ASSERT_EQ(run(one, pxkcc::Strip{0, h}), pxkOk);
    ThreadPerTask pool;
    EXPECT_EQ(pxkcc::runInStrips("pxkiYCbCr420To1620_8u_P3R", h, 3, pool,
                                 [&](const pxkcc::Strip& s) { return run(split, s); }),
              pxkOk);
    EXPECT_EQ(split, one);
}

// A failure of the whole call is the failure of every strip, and nothing is written.
TEST(Strips, AFailingCallFailsInEveryStripAndWritesNothing) {
    const int32_t w = 3, h = 12;  // 1620 needs a width that is a multiple of 4
    std::vector<uint8_t> src(256, 1), out(256, 0x5A);
    const uint8_t* in[3] = {src.data(), src.data() + 64, src.data() + 128};
    uint8_t* dst[3] = {out.data(), out.data() + 64, out.data() + 128};
    const int32_t steps[3] = {4, 2, 2};
    ThreadPerTask pool;
    const PxkResult r = pxkcc::runInStrips("pxkiYCbCr420To1620_8u_P3R", h, 3, pool, [&](const pxkcc::Strip& s) {
        return pxkiYCbCr420To1620_8u_P3R(in, steps, dst, steps, PxkSize{w, s.height});
    });
    EXPECT_EQ(r, pxkErrSize);
    EXPECT_EQ(out, std::vector<uint8_t>(256, 0x5A));
}

}  // namespace
