// The exports whose results involve float arithmetic under the caller's rounding mode
// and flush settings, so that their bytes may change with them. Every other export
// must give the same bytes whatever the caller's floating-point state.
#ifndef PXKCC_TESTS_RELIABILITY_FLOAT_MODE_TABLE_H
#define PXKCC_TESTS_RELIABILITY_FLOAT_MODE_TABLE_H

#include <string>
#include <vector>

namespace pxkreliability {

// The table's entries: an export's name, or a pattern in which '*' stands for any run
// of characters.
const std::vector<std::string>& floatModeTableEntries();
bool entryMatches(const std::string& entry, const std::string& name);
bool followsCallerFloatModes(const std::string& name);

}  // namespace pxkreliability

#endif
