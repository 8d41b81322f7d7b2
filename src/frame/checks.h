// Argument checks. An export calls them in its documented order, each through
// PXK_CHECK, so that the order is visible at a glance and the first failure returns
// before anything is written.
#pragma once

#include <cstdint>

#include "pxkcc.h"

#define PXK_CHECK(expr)                            \
    do {                                           \
        const PxkResult pxk_status_ = (expr);      \
        if (pxk_status_ != pxkOk) return pxk_status_; \
    } while (0)

namespace pxk {

// pxkErrNullPtr if any of the pointers is null.
template <class... T>
constexpr PxkResult checkPtrs(const T*... ptrs) {
    return ((ptrs == nullptr) || ...) ? pxkErrNullPtr : pxkOk;
}

// pxkErrNullPtr if any of the first `count` entries of a plane array is null. The
// array pointer itself must have been checked (or be documented as unchecked).
template <class T>
inline PxkResult checkPlanes(T* const* planes, int count) {
    for (int i = 0; i < count; ++i) {
        if (planes[i] == nullptr) return pxkErrNullPtr;
    }
    return pxkOk;
}

// pxkErrSize if the width or height is below its minimum.
inline PxkResult checkSize(PxkSize size, int32_t minWidth, int32_t minHeight) {
    return (size.width < minWidth || size.height < minHeight) ? pxkErrSize : pxkOk;
}

// The checks of a packed source written into planes that each have their own step:
// the source, the plane array and each of its entries, the step array (null pointers
// give pxkErrNullPtr), then the size.
inline PxkResult checkPackedIntoPlanes(const uint8_t* src, uint8_t* const* dst, const int32_t* dstStep, PxkSize size,
                                       int32_t minWidth, int32_t minHeight) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkPlanes(dst, 3));
    PXK_CHECK(checkPtrs(dstStep));
    return checkSize(size, minWidth, minHeight);
}

// The checks of planes with their own steps read into one packed destination: the
// plane and step arrays and the destination, each plane entry, then the size.
inline PxkResult checkPlanesIntoPacked(const uint8_t* const* src, const int32_t* srcStep, const uint8_t* dst,
                                       PxkSize size, int32_t minWidth, int32_t minHeight) {
    PXK_CHECK(checkPtrs(src, srcStep, dst));
    PXK_CHECK(checkPlanes(src, 3));
    return checkSize(size, minWidth, minHeight);
}

// The two-stage checks of planes into planes: the arrays (plane and step arrays, in
// argument order; pass the pointers), then the size, then the entries of the three
// source planes and of the three destination planes.
template <class... Arrays>
inline PxkResult checkPlanesToPlanes(const uint8_t* const* src, uint8_t* const* dst, PxkSize size,
                                     int32_t minWidth, int32_t minHeight, const Arrays*... arrays) {
    PXK_CHECK(checkPtrs(arrays...));
    PXK_CHECK(checkSize(size, minWidth, minHeight));
    PXK_CHECK(checkPlanes(src, 3));
    return checkPlanes(dst, 3);
}

// pxkErrStep if any step is below 1 (only in the families that test steps).
template <class... S>
constexpr PxkResult checkSteps(S... steps) {
    return ((steps < 1) || ...) ? pxkErrStep : pxkOk;
}

}  // namespace pxk
