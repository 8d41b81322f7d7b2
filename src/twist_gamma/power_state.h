// The processor state around the vector power routine: the x87 control word and the
// SSE control and status register are put into their default state for the call and
// given back afterwards, so that the routine's results do not depend on the caller's
// rounding and flush modes.
#pragma once

#include <xmmintrin.h>

#include <cstdint>

#include "frame/simd_inline.h"

namespace pxk {
namespace power {

// Bits 6 to 15 of the SSE control and status register: denormals-are-zero, the six
// exception masks, the rounding field and flush-to-zero. 0x1F80 is every exception
// masked, round to nearest, both flush modes off. Bits 0 to 5 are the flags.
inline constexpr uint32_t kSseControlBits = 0xFFC0u;
inline constexpr uint32_t kSseDefaultControl = 0x1F80u;
// The invalid, denormal, zero-divide, overflow and underflow flags (not inexact).
inline constexpr uint32_t kSseErrorFlags = 0x1Fu;
// The six exception masks of the x87 control word.
inline constexpr uint16_t kX87Masks = 0x3Fu;

PXK_INLINE uint16_t x87ControlWord() {
    uint16_t word;
    __asm__ __volatile__("fnstcw %0" : "=m"(word));
    return word;
}
PXK_INLINE void loadX87ControlWord(uint16_t word) { __asm__ __volatile__("fldcw %0" : : "m"(word)); }
PXK_INLINE void clearX87Exceptions() { __asm__ __volatile__("fnclex"); }

// Set up on construction, restored on destruction:
//  1. x87: if the six exception masks are not all set, set them, clear pending
//     exceptions and load the word.
//  2. SSE: if bits 6 to 15 are not 0x1F80, put 0x1F80 there (the flags stay).
// and afterwards:
//  3. x87: clear pending exceptions; if the word was changed, load the saved word.
//  4. SSE: if the register was changed, load the saved value as a whole (the flags
//     raised by the call are dropped with it). If not, clear the invalid, denormal,
//     zero-divide, overflow and underflow flags where any of them is set, whoever
//     raised them; the inexact flag stays as it is.
class DefaultFloatState {
public:
    DefaultFloatState() : x87Saved_(x87ControlWord()), sseSaved_(_mm_getcsr()) {
        x87Changed_ = (x87Saved_ & kX87Masks) != kX87Masks;
        if (x87Changed_) {
            clearX87Exceptions();
            loadX87ControlWord(static_cast<uint16_t>(x87Saved_ | kX87Masks));
        }
        sseChanged_ = (sseSaved_ & kSseControlBits) != kSseDefaultControl;
        if (sseChanged_) _mm_setcsr((sseSaved_ & ~kSseControlBits) | kSseDefaultControl);
    }
    ~DefaultFloatState() {
        clearX87Exceptions();
        if (x87Changed_) loadX87ControlWord(x87Saved_);
        if (sseChanged_) {
            _mm_setcsr(sseSaved_);
        } else {
            const uint32_t now = _mm_getcsr();
            if ((now & kSseErrorFlags) != 0) _mm_setcsr(now & ~kSseErrorFlags);
        }
    }
    DefaultFloatState(const DefaultFloatState&) = delete;
    DefaultFloatState& operator=(const DefaultFloatState&) = delete;

private:
    uint16_t x87Saved_;
    uint32_t sseSaved_;
    bool x87Changed_;
    bool sseChanged_;
};

}  // namespace power
}  // namespace pxk
