// The outcome of one call against its model: the status, every sample of the
// destination region, the destination's guards and protected bytes, and the source
// left as it was.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>

#include "guarded_image.h"
#include "pxkcc.h"

namespace graytest {

// A source whose last byte lies just below an inaccessible page: a read past it faults.
inline pxktest::GuardOptions fencedSource() {
    pxktest::GuardOptions o;
    o.after = 0;
    o.fenceAfter = true;
    return o;
}

inline ::testing::AssertionResult sameOutcome(PxkResult status, const pxktest::GuardedImage& dst,
                                              const pxktest::GuardedImage& expected, const pxktest::GuardedImage& src) {
    if (status != pxkOk) return ::testing::AssertionFailure() << "status " << status;
    auto ok = pxktest::sameRegion(dst, expected);
    if (!ok) return ok;
    ok = dst.guardsIntact();
    if (!ok) return ok;
    return src.unchanged();
}

}  // namespace graytest
