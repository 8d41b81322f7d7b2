// Samples at any address: rows may start at any byte and byte steps may be odd, so
// samples wider than a byte are moved through memcpy, which compiles to plain loads and
// stores. One place for every family that reads 16-bit, 32-bit or float samples.
#pragma once

#include <cstring>

#include "frame/simd_inline.h"

namespace pxk {

// The sample at p: its type from the pointer, or given (loadSample<float>(bytes)).
template <class T>
PXK_INLINE T loadSample(const void* p) {
    T v;
    std::memcpy(&v, p, sizeof v);
    return v;
}
template <class T>
PXK_INLINE T loadSample(const T* p) {
    return loadSample<T>(static_cast<const void*>(p));
}

template <class T>
PXK_INLINE void storeSample(void* p, T v) {
    std::memcpy(p, &v, sizeof v);
}
template <class T>
PXK_INLINE void storeSample(T* p, T v) {
    storeSample<T>(static_cast<void*>(p), v);
}

}  // namespace pxk
