// Code-generation hints for the SSE2 kernels. The per-block helpers are small and
// called in the innermost loops: they are always inlined, and their short loops over
// channels or halves are unrolled so that the vectors stay in registers.
#pragma once

#define PXK_INLINE inline __attribute__((always_inline))
// The same for a lambda that a row kernel hands to a column walker.
#define PXK_LAMBDA_INLINE __attribute__((always_inline))
#define PXK_UNROLL _Pragma("GCC unroll 16")
