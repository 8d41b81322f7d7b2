// Row drivers and the column split: which rows and columns each call sees.
#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

#include "frame/drivers.h"

namespace {

TEST(Drivers, RowsAdvanceByTheirOwnSignedSteps) {
    uint8_t mem[64] = {};
    uint8_t* mid = mem + 32;
    for (int32_t step : {7, 0, -5}) {
        std::vector<std::pair<const uint8_t*, uint16_t*>> seen;
        uint16_t* other = reinterpret_cast<uint16_t*>(mem);
        pxk::driveRows(3, 4, [&](int32_t w, const uint8_t* a, uint16_t* b) {
            EXPECT_EQ(w, 3);
            seen.emplace_back(a, b);
        }, pxk::rows(static_cast<const uint8_t*>(mid), step), pxk::rows(other, 2));
        ASSERT_EQ(seen.size(), 4u);
        for (int y = 0; y < 4; ++y) {
            EXPECT_EQ(seen[y].first, mid + y * step);
            EXPECT_EQ(reinterpret_cast<uint8_t*>(seen[y].second), mem + 2 * y);  // byte step on a 16-bit plane
        }
    }
}

TEST(Drivers, PairsCoverWholePairsOnly) {
    uint8_t mem[256] = {};
    for (int32_t height : {1, 2, 5, 6}) {
        std::vector<uint8_t*> tops, bottoms, chroma;
        pxk::driveRowPairs(4, height, [&](int32_t, pxk::RowPair<uint8_t> luma, uint8_t* c) {
            tops.push_back(luma.top);
            bottoms.push_back(luma.bottom);
            chroma.push_back(c);
        }, pxk::pairedRows(mem + 100, -10), pxk::rows(mem + 200, 3));
        ASSERT_EQ(static_cast<int32_t>(tops.size()), height / 2);
        for (std::size_t i = 0; i < tops.size(); ++i) {
            EXPECT_EQ(tops[i], mem + 100 - 20 * static_cast<int>(i));
            EXPECT_EQ(bottoms[i], mem + 90 - 20 * static_cast<int>(i));
            EXPECT_EQ(chroma[i], mem + 200 + 3 * static_cast<int>(i));
        }
    }
}

struct TwoPlanes {
    static constexpr int kPlanes = 2;
    uint8_t* plane[2];
};

TEST(Drivers, PlaneRowsStepEachPlane) {
    uint8_t mem[64] = {};
    const int32_t steps[2] = {4, -2};
    std::vector<TwoPlanes> seen;
    pxk::driveRows(1, 3, [&](int32_t, const TwoPlanes& p) { seen.push_back(p); },
                   pxk::planeRows(TwoPlanes{{mem, mem + 40}}, steps));
    ASSERT_EQ(seen.size(), 3u);
    EXPECT_EQ(seen[2].plane[0], mem + 8);
    EXPECT_EQ(seen[2].plane[1], mem + 36);
    std::vector<TwoPlanes> common;
    pxk::driveRows(1, 2, [&](int32_t, const TwoPlanes& p) { common.push_back(p); },
                   pxk::planeRows(TwoPlanes{{mem, mem + 40}}, 5));
    EXPECT_EQ(common[1].plane[0], mem + 5);
    EXPECT_EQ(common[1].plane[1], mem + 45);
}

TEST(Drivers, ColumnSplitAtTheLastWholeBlock) {
    for (int32_t width = 0; width <= 70; ++width) {
        std::vector<int> form(width, 0);  // 1 = vector block, 2 = tail
        int blocks16 = 0, blocks8 = 0;
        pxk::splitColumns<8>(width,
            [&](int32_t x, int32_t count) {
                ASSERT_TRUE(count == 16 || count == 8);
                (count == 16 ? blocks16 : blocks8)++;
                for (int32_t i = x; i < x + count; ++i) form[i] += 1;
            },
            [&](int32_t x) { form[x] += 2; });
        const int32_t n = width - width % 8;
        for (int32_t x = 0; x < width; ++x) EXPECT_EQ(form[x], x < n ? 1 : 2) << "width " << width << " x " << x;
        EXPECT_EQ(blocks16, n / 16);
        EXPECT_EQ(blocks8, (n / 8) % 2);
    }
}

TEST(Drivers, OddSizeStatus) {
    EXPECT_EQ(pxk::oddSizeStatus(PxkSize{4, 4}, 2, 2), pxkOk);
    EXPECT_EQ(pxk::oddSizeStatus(PxkSize{3, 4}, 2, 2), pxkWarnOddSize);
    EXPECT_EQ(pxk::oddSizeStatus(PxkSize{4, 3}, 2, 2), pxkWarnOddSize);
    EXPECT_EQ(pxk::oddSizeStatus(PxkSize{6, 3}, 4, 1), pxkWarnOddSize);
    EXPECT_EQ(pxk::oddSizeStatus(PxkSize{8, 3}, 4, 1), pxkOk);
}

}  // namespace
