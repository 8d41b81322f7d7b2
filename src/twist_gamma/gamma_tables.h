// Tables of the transfer curve, constant data. The forward 8u table: entry i is
// f(i / 255) * 255 rounded to nearest with ties to even, f(x) = 4.5 x below 0.018 and
// 1.099 x^0.45 - 0.099 from there on (the linear part as 4.5 * i exactly: entry 1 is 4,
// entry 3 is 14). Its values fit a byte; they are held as 32-bit entries, as the
// conversions that read them through the table take them.
#pragma once

#include <cstdint>

namespace pxk {
namespace gamma {

extern const uint32_t kForward8u[256];

}  // namespace gamma
}  // namespace pxk
