// The byte fill of the tone maps, from the internal archive: every byte of the region
// and nothing else, at every size around the 64-byte rounds and the alignment, as one
// run or row by row, and past the cache (streaming stores).
#include <gtest/gtest.h>

#include <cstdint>

#include "frame/cpu.h"
#include "guarded_image.h"
#include "sweep.h"
#include "tools/fill_bytes.h"

namespace {

using pxktest::GuardedImage;
using pxktest::GuardOptions;
using pxktest::ImageGeometry;

::testing::AssertionResult filled(GuardedImage& img, uint8_t value) {
    for (int y = 0; y < img.height(); ++y) {
        for (int x = 0; x < img.width(); ++x) {
            if (img.at(x, y) != value) return ::testing::AssertionFailure() << "byte (" << x << ", " << y << ")";
        }
    }
    return img.guardsIntact();
}

TEST(FillBytes, EveryByteOfTheRegionAndNothingElse) {
    for (int w = 1; w <= 200; w += (w < 80 ? 1 : 17)) {
        for (int h : {1, 2, 3}) {
            for (int extra : {0, 5, -1}) {
                for (size_t mis = 0; mis < 16; mis += 5) {
                    GuardOptions opt;
                    opt.misalign = mis;
                    const int step = extra < 0 ? -w : w + extra;
                    GuardedImage img(ImageGeometry{w, h, 1, 1, step}, opt);
                    img.fill(0x11, 0x22);
                    ASSERT_EQ(pxk::pxkFillBytes(0xA7, img.data(), step, w, h), pxkOk);
                    ASSERT_TRUE(filled(img, 0xA7)) << w << "x" << h << " step " << step << " misaligned " << mis;
                }
            }
        }
    }
}

TEST(FillBytes, StatusesAndNothingWritten) {
    uint8_t b[4] = {1, 2, 3, 4};
    EXPECT_EQ(pxk::pxkFillBytes(0, nullptr, 4, 4, 1), pxkErrNullPtr);
    EXPECT_EQ(pxk::pxkFillBytes(0, nullptr, 4, 0, 0), pxkErrNullPtr);
    EXPECT_EQ(pxk::pxkFillBytes(0, b, 4, 0, 1), pxkErrSize);
    EXPECT_EQ(pxk::pxkFillBytes(0, b, 4, 4, 0), pxkErrSize);
    EXPECT_EQ(pxk::pxkFillBytes(0, b, 4, -4, 1), pxkErrSize);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(b[i], i + 1);
}

// At least as large as the largest cache: the streaming stores, as one run and row by
// row (in the sanitizer build one region just above 524288 bytes instead).
TEST(FillBytes, RegionsPastTheCache) {
    int32_t cache = 0;
    const bool known = pxk::pxkGetMaxCacheSizeB(&cache) == 0;
    int64_t bytes = 524289;
    if (known && !pxktest::kLightSweep && cache > bytes) bytes = cache;
    const int w = 4099;
    const int h = int((bytes + w - 1) / w);
    for (int step : {w, w + 29}) {
        GuardedImage img(ImageGeometry{w, h, 1, 1, step});
        img.fill(0x11, 0x22);
        ASSERT_EQ(pxk::pxkFillBytes(0x3C, img.data(), step, w, h), pxkOk);
        EXPECT_TRUE(filled(img, 0x3C)) << "step " << step;
    }
}

}  // namespace
