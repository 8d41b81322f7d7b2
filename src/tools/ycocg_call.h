// The body shared by the YCoCg exports: checks in their order (every pointer and
// plane entry, then the size where the member tests it), then the region driver.
#pragma once

#include <cstdint>

#include "pxkcc.h"

#include "frame/checks.h"
#include "tools/ycocg_row.h"

namespace pxk {
namespace ycocg {

// Whether a member refuses a width or height below 1 with pxkErrSize. Members that do
// not return pxkOk there and write nothing.
enum class SizeCheck { Yes, No };

template <class T>
PXK_INLINE const uint8_t* bytesOf(const T* p) { return reinterpret_cast<const uint8_t*>(p); }
template <class T>
PXK_INLINE uint8_t* bytesOf(T* p) { return reinterpret_cast<uint8_t*>(p); }

// Whether 32-bit planes are written past the cache: when they take more than 524288
// bytes and every plane pointer and the step are multiples of 16 (decided once for
// the call). The bytes are the same either way.
template <class D>
PXK_INLINE bool streamsPlanes(D* const dst[3], int32_t dstStep, PxkSize size) {
    constexpr int64_t kPixelBytes = 3 * static_cast<int64_t>(sizeof(D));
    if (size.width < 1 || size.height < 1 || dstStep % 16 != 0) return false;
    if (int64_t{size.width} * size.height <= 524288 / kPixelBytes) return false;
    for (int i = 0; i < 3; ++i) {
        if (reinterpret_cast<std::uintptr_t>(dst[i]) % 16 != 0) return false;
    }
    return true;
}

// Packed colour rows into Y, Co, Cg planes.
template <class M, int Channels, class S, class D>
PxkResult toPlanes(SizeCheck check, const S* src, int32_t srcStep, D* const dst[3], int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkPlanes(dst, 3));
    if (check == SizeCheck::Yes) PXK_CHECK(checkSize(size, 1, 1));
    using In = PackedIn<S, Channels>;
    const auto in = planeRows(In{{bytesOf(src)}}, srcStep);
    if constexpr (sizeof(D) == 4) {
        if (streamsPlanes(dst, dstStep, size)) {
            using Out = PlanesOut<D, StreamingMemory>;
            convertRegion<M, true>(size, in, planeRows(Out{{bytesOf(dst[0]), bytesOf(dst[1]), bytesOf(dst[2])}}, dstStep));
            _mm_sfence();
            return pxkOk;
        }
    }
    using Out = PlanesOut<D>;
    convertRegion<M, true>(size, in, planeRows(Out{{bytesOf(dst[0]), bytesOf(dst[1]), bytesOf(dst[2])}}, dstStep));
    return pxkOk;
}

// Y, Co, Cg planes into packed colour rows; `alpha` fills the fourth sample of C4 rows.
template <class M, int Channels, class S, class D>
PxkResult fromPlanes(SizeCheck check, const S* const src[3], int32_t srcStep, D* dst, int32_t dstStep, PxkSize size,
                     int32_t alpha = 0) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkPlanes(src, 3));
    if (check == SizeCheck::Yes) PXK_CHECK(checkSize(size, 1, 1));
    using In = PlanesIn<S>;
    using Out = PackedOut<D, Channels>;
    convertRegion<M, false>(size, planeRows(In{{bytesOf(src[0]), bytesOf(src[1]), bytesOf(src[2])}}, srcStep),
                            planeRows(Out{{bytesOf(dst)}, alpha}, dstStep));
    return pxkOk;
}

}  // namespace ycocg
}  // namespace pxk
