// The rounding field of the SSE control and status register around the integer
// twists, whose packed float-to-integer conversion follows it: set to nearest for
// the row loop and put back afterwards, and only where the caller had another mode.
//
//   1. Read the register; its rounding field is the two bits under 0x6000.
//   2. If the field is not 0 (nearest), write the register back with the field
//      cleared; every other bit stays.
//   3. Run the row loop.
//   4. If the field was not 0, write back the whole saved register. If it was 0,
//      nothing is written, so exception flags raised by the loop stay raised.
//
// The flush and denormal bits are never touched.
#pragma once

#include <xmmintrin.h>

#include <cstdint>

namespace pxk {
namespace twist {

inline constexpr uint32_t kRoundingField = 0x6000u;

// Runs `loop` (a row loop kept out of line, so that no float work moves across the
// register writes) with the rounding field at nearest.
template <class Loop>
void withNearestRounding(Loop&& loop) {
    const uint32_t saved = _mm_getcsr();
    const bool changed = (saved & kRoundingField) != 0;
    if (changed) _mm_setcsr(saved & ~kRoundingField);
    loop();
    if (changed) _mm_setcsr(saved);
}

}  // namespace twist
}  // namespace pxk
