// Samples at any address: rows may start at any byte and steps may be odd, so samples
// wider than a byte are moved through memcpy.
#pragma once

#include "frame/simd_inline.h"

#include <cstring>

namespace pxk {

template <class T>
PXK_INLINE T loadSample(const void* p) {
    T v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

template <class T>
PXK_INLINE void storeSample(void* p, T v) {
    std::memcpy(p, &v, sizeof v);
}

}  // namespace pxk
