// The 8u members without noise (nearest level and ordered dither) and the 16u8u and
// 16s8u members without dither, over regions large enough for their integer path:
// level counts whose integer form agrees with the float form and ones that fall back
// to it, region sizes around the least that takes the integer path, and widths around
// every block and tail length.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "dither_harness.h"

namespace {

using dithertest::Member;
using dithertest::RunSpec;

const char* const kMembers[] = {"ReduceBits_8u_C1R", "ReduceBits_8u_C3R", "ReduceBits_8u_AC4R",
                                "ReduceBits_8u_C4R"};

RunSpec specFor(const Member& m, int width, int height, int dtype, int levels, int pad) {
    RunSpec r;
    r.width = width;
    r.height = height;
    // Row lengths in bytes; an odd pad leaves the rows of 16-bit sources at odd
    // addresses (the path keeps byte steps).
    const int samples = width * dithertest::samplesPerPixel(m);
    r.srcStep = samples * refdither::bytesOf(m.src) + pad;
    r.dstStep = samples * refdither::bytesOf(m.dst) + 2 * pad;
    r.dtype = dtype;
    r.levels = levels;
    r.seed = pxktest::seedFor(m.name.c_str(), {uint32_t(width), uint32_t(height), uint32_t(dtype),
                                               uint32_t(levels), uint32_t(pad)});
    return r;
}

// Every level count, both methods, on 93 x 45 pixels (at least 4185 samples, with
// every byte value in the source).
TEST(ReduceBitsByteLevels, EveryLevelCountOnALargeRegion) {
    for (const char* name : kMembers) {
        const Member& m = dithertest::memberNamed(name);
        for (int levels = 2; levels <= 256; ++levels) {
            for (int dtype : {0, 4}) {
                ASSERT_TRUE(dithertest::runAgainstReference(m, specFor(m, 93, 45, dtype, levels, 0)));
            }
        }
    }
}

// Regions of one row of 250 to 260 samples and of 4090 to 4100 samples: just below and
// above the sizes from which each method tries the integer path.
TEST(ReduceBitsByteLevels, RegionsAroundTheLeastForTheIntegerPath) {
    const Member& m = dithertest::memberNamed("ReduceBits_8u_C1R");
    for (int levels : {5, 16, 25, 256}) {
        for (int dtype : {0, 4}) {
            for (int w = 250; w <= 260; ++w) {
                ASSERT_TRUE(dithertest::runAgainstReference(m, specFor(m, w, 1, dtype, levels, 3)));
            }
            for (int w = 4090; w <= 4100; ++w) {
                ASSERT_TRUE(dithertest::runAgainstReference(m, specFor(m, w, 1, dtype, levels, 5)));
            }
        }
    }
}

// Every width from 1 to 140 pixels, tall enough for the integer path, so that rows end
// in every tail length after blocks of 16 and 32 samples; padded and misaligned steps.
TEST(ReduceBitsByteLevels, EveryWidthAroundTheBlocks) {
    for (const char* name : kMembers) {
        const Member& m = dithertest::memberNamed(name);
        for (int w = 1; w <= 140; ++w) {
            const int height = 4096 / (w * dithertest::samplesPerPixel(m)) + 2;
            for (int dtype : {0, 4}) {
                const int levels = (w % 3 == 0) ? 16 : (w % 3 == 1 ? 7 : 129);
                ASSERT_TRUE(dithertest::runAgainstReference(m, specFor(m, w, height, dtype, levels, w % 5)));
            }
        }
    }
}

const char* const kWideMembers[] = {"ReduceBits_16u8u_C1R", "ReduceBits_16u8u_C3R", "ReduceBits_16u8u_AC4R",
                                    "ReduceBits_16u8u_C4R", "ReduceBits_16s8u_C1R", "ReduceBits_16s8u_C3R",
                                    "ReduceBits_16s8u_AC4R", "ReduceBits_16s8u_C4R"};

// Rows enough for 2^18 samples (the least from which 16-bit sources try the integer
// path) and one more.
int tallEnough(const Member& m, int width) {
    return (1 << 18) / (width * dithertest::samplesPerPixel(m)) + 1;
}

// 16-bit sources into 8 bits without dither: level counts that agree (up to 25
// levels every one) and ones that fall back, both kinds of steps.
TEST(ReduceBitsByteLevels, SixteenBitSourcesOverLevelCounts) {
    for (const char* name : kWideMembers) {
        const Member& m = dithertest::memberNamed(name);
        for (int levels : {2, 3, 4, 5, 9, 16, 17, 24, 25, 26, 64, 100, 129, 256}) {
            ASSERT_TRUE(dithertest::runAgainstReference(m, specFor(m, 203, tallEnough(m, 203), 0, levels, levels % 3)));
        }
    }
}

// 1024 pixels a row: 255 rows stay below 2^18 samples, 256 reach it.
TEST(ReduceBitsByteLevels, SixteenBitSourcesAroundTheLeastRegion) {
    const Member& m = dithertest::memberNamed("ReduceBits_16s8u_C1R");
    for (int h : {255, 256}) {
        for (int levels : {7, 16, 200}) {
            ASSERT_TRUE(dithertest::runAgainstReference(m, specFor(m, 1024, h, 0, levels, 0)));
        }
    }
}

// Every width from 1 to 40 pixels, so that rows end in every tail length after blocks
// of 16 and 32 samples.
TEST(ReduceBitsByteLevels, SixteenBitSourcesEveryWidth) {
    for (const char* name : {"ReduceBits_16u8u_C1R", "ReduceBits_16s8u_C3R", "ReduceBits_16u8u_AC4R"}) {
        const Member& m = dithertest::memberNamed(name);
        for (int w = 1; w <= 40; ++w) {
            const int levels = (w % 2 == 0) ? 16 : 11;
            ASSERT_TRUE(dithertest::runAgainstReference(m, specFor(m, w, tallEnough(m, w), 0, levels, 2 * (w % 3))));
        }
    }
}

}  // namespace
