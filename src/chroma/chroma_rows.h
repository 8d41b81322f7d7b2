// Pieces shared by the chroma-layout exports: the cuts of odd sizes, the choice of
// non-temporal stores for the members that store on their own, and the row walks.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "chroma/byte_moves.h"
#include "frame/drivers.h"

namespace pxk {
namespace chroma {

// A size cut down to a multiple of `multiple` (a power of two) by clearing low bits.
constexpr int32_t cutTo(int32_t v, int32_t multiple) {
    return static_cast<int32_t>(static_cast<uint32_t>(v) & ~static_cast<uint32_t>(multiple - 1));
}

// Non-temporal stores for a member with stores of its own: the row steps of both
// sides summed and times the height exceed 524288 bytes, and every destination
// pointer and destination step is a multiple of 16. Decided once for the call.
inline bool streamsRegion(std::initializer_list<int32_t> allSteps, int32_t height,
                          std::initializer_list<const void*> dstPointers, std::initializer_list<int32_t> dstSteps) {
    int64_t sum = 0;
    for (int32_t s : allSteps) sum += s;
    if (sum * height <= 524288) return false;
    for (const void* p : dstPointers) {
        if (reinterpret_cast<std::uintptr_t>(p) % 16 != 0) return false;
    }
    for (int32_t s : dstSteps) {
        if (s % 16 != 0) return false;
    }
    return true;
}

// Calls kernel(rows...) for each of `count` rows, then advances every walk.
template <class Kernel, class... Walk>
PXK_INLINE void eachRow(int32_t count, Kernel&& kernel, Walk... walks) {
    for (int32_t y = 0; y < count; ++y) {
        kernel(walks.current()...);
        (walks.advance(), ...);
    }
}

}  // namespace chroma
}  // namespace pxk

namespace pxk {
namespace chroma {

// Runs body(PlainStores{}) or, when `stream` is set, body(StreamingStores{}) followed
// by the closing store fence.
template <class Body>
PXK_INLINE void withStores(bool stream, Body&& body) {
    if (stream) {
        body(StreamingStores{});
        StreamingStores::finish();
    } else {
        body(PlainStores{});
    }
}

}  // namespace chroma
}  // namespace pxk
