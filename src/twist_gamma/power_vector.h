// The vector power routine: each element of a float array raised to one float
// exponent. Internal, not exported.
#pragma once

#include <cstdint>

namespace pxk {

// pDst[i] = pSrc[i]^exponent for i below len (len >= 1; pSrc may equal pDst).
//
// Exponents with a path of their own, by their exact bits: +0 and -0 (every element
// 1.0, pSrc not read), 1 (a copy), 2 to 9 (products of the element with itself),
// -1 to -4 (the reciprocal of those), 0.5 (square root), -0.5 (its reciprocal) and
// 1.5 (the element times its square root). Every other exponent takes the general
// path, good to single precision (in practice correctly rounded); zero, denormal,
// negative, infinite and NaN elements, and an exponent that is not finite, go
// through a double-precision fallback with the usual rules of a power function.
//
// The call runs with all floating-point exceptions masked, round to nearest and no
// flush modes, so that its results do not depend on the caller's modes, and leaves
// the caller's state as it found it, except for the flags: see power_state.h.
// Returns 0.
int32_t pxkVectorPow(const float* pSrc, float exponent, float* pDst, int32_t len);

// The table of entry points of the vector power routine; pxkVectorPow calls through
// its first element, the only one there is.
using PxkVectorPowFn = int32_t (*)(const float*, float, float*, int32_t);
extern const PxkVectorPowFn pxkVectorPowTable[1];

}  // namespace pxk
