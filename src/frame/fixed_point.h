// The words of scalar fixed-point arithmetic, each in one place; their vector twins
// are in vec.h. "Keeps the low 8 bits", "saturates to 8 bits" and "takes the high
// product" are different operations and each has its own helper here.
#pragma once

#include <cstdint>

namespace pxk {

// Arithmetic shift right by n: rounds toward negative infinity. (The compilers we
// build with define >> on negative values as arithmetic.)
constexpr int32_t asr(int32_t x, int n) { return x >> n; }

// Saturates to 0..255.
constexpr uint8_t clamp8(int32_t x) {
    return static_cast<uint8_t>(x < 0 ? 0 : (x > 255 ? 255 : x));
}

// Keeps the low 8 bits.
constexpr uint8_t low8(int32_t x) { return static_cast<uint8_t>(x & 0xFF); }

// h(k, x): the exact signed product of two 16-bit values, shifted right by 16, so
// that a negative product truncates toward negative infinity.
constexpr int32_t highProduct(int32_t k, int32_t x) { return asr(k * x, 16); }

// The high product of two unsigned 16-bit values, the product taken exactly.
constexpr int32_t highProductUnsigned(uint32_t k, uint32_t x) { return static_cast<int32_t>((k * x) >> 16); }

}  // namespace pxk
