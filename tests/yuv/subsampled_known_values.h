// Known values shared by the tests of RGB -> YCbCr and YUV with subsampled chroma:
// uniform groups of the primaries, one mixed 2 x 2 block, and the 3 x 3 region whose
// top-left block alone converts.
#ifndef PXKCC_TESTS_YUV_SUBSAMPLED_KNOWN_VALUES_H
#define PXKCC_TESTS_YUV_SUBSAMPLED_KNOWN_VALUES_H

#include <vector>

#include "subsampled_harness.h"

namespace subtest {

// A uniform group and the studio-range samples it gives.
struct KnownYcc {
    const char* name;
    Rgb rgb;
    int y, cb, cr;
};

// Uniform groups in the integer direct forms. The chroma of a uniform group is
// (c . rgb + 8396800) >> 16: its rounding term is an eighth, so green gives Cb 53
// where the full-resolution direct form gives 54.
inline const std::vector<KnownYcc>& studioPrimaries() {
    static const std::vector<KnownYcc> k = {
        {"black", {0, 0, 0}, 16, 128, 128},   {"white", {255, 255, 255}, 235, 128, 128},
        {"red", {255, 0, 0}, 82, 90, 240},    {"green", {0, 255, 0}, 145, 53, 34},
        {"blue", {0, 0, 255}, 41, 240, 110},
    };
    return k;
}

// A uniform group and the full-range samples it gives.
struct KnownYuv {
    const char* name;
    Rgb rgb;
    int y, u, v;
};

// Uniform groups with the tail luma L >> 16. Red's V runs past 255 before the clamp.
inline const std::vector<KnownYuv>& fullRangePrimaries() {
    static const std::vector<KnownYuv> k = {
        {"black", {0, 0, 0}, 0, 128, 128},       {"white", {255, 255, 255}, 255, 128, 128},
        {"red", {255, 0, 0}, 76, 90, 255},       {"green", {0, 255, 0}, 149, 54, 0},
        {"blue", {0, 0, 255}, 29, 239, 102},     {"gray", {128, 128, 128}, 128, 128, 128},
    };
    return k;
}

// The vector luma differs on white (254) and gray 128 (127); chroma is the same.
inline int vectorLumaOf(const KnownYuv& k) {
    if (k.rgb.r == 255 && k.rgb.g == 255 && k.rgb.b == 255) return 254;
    if (k.rgb.r == 128 && k.rgb.g == 128 && k.rgb.b == 128) return 127;
    return k.y;
}

// One block of four different pixels, sums R 287, G 408, B 458.
inline const std::vector<std::vector<Rgb>>& mixedBlock() {
    static const std::vector<std::vector<Rgb>> b = {{{10, 20, 30}, {200, 100, 50}}, {{0, 255, 128}, {77, 33, 250}}};
    return b;
}

// Four copies of the mixed block side by side: width 8, two rows.
inline std::vector<std::vector<Rgb>> mixedBlockFourTimes() {
    const std::vector<std::vector<Rgb>>& b = mixedBlock();
    std::vector<std::vector<Rgb>> rows(2);
    for (int i = 0; i < 4; ++i) {
        for (std::size_t y = 0; y < 2; ++y) rows[y].insert(rows[y].end(), b[y].begin(), b[y].end());
    }
    return rows;
}

// A 3 x 3 region whose top-left 2 x 2 block is white, black / red, blue (sums R 510,
// G 255, B 510); the third row and column are other colours.
inline const std::vector<std::vector<Rgb>>& threeByThree() {
    static const std::vector<std::vector<Rgb>> rows = {{{255, 255, 255}, {0, 0, 0}, {12, 34, 56}},
                                                       {{255, 0, 0}, {0, 0, 255}, {99, 99, 99}},
                                                       {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}};
    return rows;
}

}  // namespace subtest

#endif
