// Accesses outside the region that exports document, for the tests and the fuzz target
// that lay buffers out exactly: at a given height (or at every height), some planes of
// some images get rows more after their last row or before their first, and nothing
// else.
#ifndef PXKCC_TESTS_CROSS_GUARD_ALLOWANCES_H
#define PXKCC_TESTS_CROSS_GUARD_ALLOWANCES_H

#include <string>
#include <vector>

#include "call_memory.h"

namespace pxkcross {

// The planes that the export `name` may touch outside their rows at this height.
std::vector<PlaneAllowance> guardAllowancesFor(const std::string& name, int height);

}  // namespace pxkcross

#endif
