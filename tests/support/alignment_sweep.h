// One conversion run at every alignment of its source (0 to 15 bytes past a 16-byte
// boundary) and at every third alignment of its destination: a result must depend on
// the column alone, never on an address.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "random.h"
#include "surface.h"

namespace pxktest {

// run(sourceOptions, destinationOptions, rng) builds the two sides with the options'
// misalignments, converts and compares; the first failure is reported under `name`.
template <class Run>
void everyAlignment(const std::string& name, Run&& run) {
    for (std::size_t srcMis = 0; srcMis < 16; ++srcMis) {
        for (std::size_t dstMis = 0; dstMis < 16; dstMis += 3) {
            Rng rng(seedFor((name + "/align").c_str(), {uint32_t(srcMis), uint32_t(dstMis)}));
            GuardOptions srcOpt, dstOpt;
            srcOpt.misalign = srcMis;
            dstOpt.misalign = dstMis;
            const ::testing::AssertionResult r = run(srcOpt, dstOpt, rng);
            if (!r) {
                ADD_FAILURE() << name << " source misaligned by " << srcMis << ", destination by " << dstMis << ": "
                              << r.message();
                return;
            }
        }
    }
}

}  // namespace pxktest
