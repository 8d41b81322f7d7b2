// The byte fill of the tone maps: one value into every byte of a region.
#pragma once

#include <cstdint>

#include "pxkcc.h"

namespace pxk {

// Writes `value` into the `width` x `height` bytes of the region at pDst (rows `dstStep`
// bytes apart). pDst null: pxkErrNullPtr; width or height below 1: pxkErrSize.
// Where the step equals the width the region is filled as one run. Above 524288 bytes
// it asks pxkGetMaxCacheSizeB for the largest cache, and streams past the cache (then
// fences) when the region is at least that large; otherwise it stores normally.
PxkResult pxkFillBytes(uint8_t value, uint8_t* pDst, int32_t dstStep, int32_t width, int32_t height);

}  // namespace pxk
