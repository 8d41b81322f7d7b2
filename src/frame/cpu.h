// Processor queries: the vendor identification and the size of the largest cache.
// They read the processor's identification on every call and keep nothing.
#pragma once

#include <cstdint>

namespace pxk {

// Writes the 12-character vendor identification and a terminating zero to `vendor`.
void cpuVendor(char vendor[13]);

// Stores the size in bytes of the largest data or unified cache in *sizeBytes and
// returns 0, or returns -1 (leaving *sizeBytes alone) when the processor does not
// describe its caches. The byte fill of the tone-mapping functions asks it before it
// chooses non-temporal stores for a large region.
int32_t pxkGetMaxCacheSizeB(int32_t* sizeBytes);

}  // namespace pxk
