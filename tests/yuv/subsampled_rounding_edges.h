// Chroma groups whose sums put a fixed-point result on a rounding edge: finding the
// sums (sR, sG, sB) for which a linear form plus its rounding offset lies within one
// of a multiple of the shift's power of two, and comparing an export with its
// reference on groups of those sums.
#ifndef PXKCC_TESTS_YUV_SUBSAMPLED_ROUNDING_EDGES_H
#define PXKCC_TESTS_YUV_SUBSAMPLED_ROUNDING_EDGES_H

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "subsampled_harness.h"

namespace subtest {

// Groups with the given sums of R, G and B, each sum spread evenly over the group's
// pixels (the first ones taking one more where it does not divide), one after
// another and again from the start to fill the last row.
inline void givenSumsAgainstReference(const SubsampledExport& ex, int width, const std::vector<std::array<int, 3>>& sums,
                                      const std::string& what) {
    ASSERT_FALSE(sums.empty());
    const int n = groupPixels(ex.sampling);
    const long groupsPerRow = chromaPlaneSize(ex.sampling, width, 2).width;
    const int rowsPerGroupRow = ex.sampling == Sampling::S420 ? 2 : 1;
    const int height = int((long(sums.size()) + groupsPerRow - 1) / groupsPerRow) * rowsPerGroupRow;
    denseAgainstReference(ex, width, height, what, [&](long group, int k) {
        const std::array<int, 3>& s = sums[std::size_t(group % long(sums.size()))];
        auto part = [&](int sum) { return sum / n + (k < sum % n ? 1 : 0); };
        return Rgb{part(s[0]), part(s[1]), part(s[2])};
    });
}

// The sums (sR, sG, sB), each from 0 to maxSum, for which
// kR sR + kG sG + kB sB + offset lies within one of a multiple of 2^shift: where a
// rounding term one larger or smaller would change the result of the shift.
inline std::vector<std::array<int, 3>> sumsOnRoundingEdges(int64_t kR, int64_t kG, int64_t kB, int64_t offset,
                                                           int shift, int maxSum) {
    const int64_t m = int64_t(1) << shift;
    auto mod = [m](int64_t v) { return ((v % m) + m) % m; };
    // kB = 2^e * odd: kB sB = t (mod 2^shift) has solutions only for t a multiple of
    // 2^e, and then sB = (t / 2^e) * odd^-1 modulo 2^(shift - e).
    int e = 0;
    int64_t odd = mod(kB);
    while (odd != 0 && odd % 2 == 0 && e < shift) {
        odd /= 2;
        ++e;
    }
    const int64_t period = int64_t(1) << (shift - e);
    int64_t inv = 1;  // Newton's iteration for the inverse of an odd number mod 2^k
    for (int i = 0; i < 6; ++i) inv = (inv * (2 - odd * inv % period + period)) % period;
    std::vector<std::array<int, 3>> out;
    for (int sR = 0; sR <= maxSum; ++sR) {
        for (int sG = 0; sG <= maxSum; ++sG) {
            for (int64_t edge : {int64_t(-1), int64_t(0), int64_t(1)}) {
                const int64_t t = mod(edge - kR * sR - kG * sG - offset);  // kB sB = t (mod 2^shift)
                if (odd == 0 || t % (int64_t(1) << e) != 0) continue;
                const int64_t first = ((t >> e) % period) * inv % period;
                for (int64_t sB = first; sB <= maxSum; sB += period) out.push_back({sR, sG, int(sB)});
            }
        }
    }
    return out;
}

}  // namespace subtest

#endif
