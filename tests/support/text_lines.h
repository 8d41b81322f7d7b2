// Reading the project's plain lists (the export list, the named exports): one entry a
// line, blank lines skipped.
#ifndef PXKCC_TEST_SUPPORT_TEXT_LINES_H
#define PXKCC_TEST_SUPPORT_TEXT_LINES_H

#include <string>
#include <vector>

namespace pxktest {

// The non-empty lines of the file at `path`, in order; none if it cannot be read.
std::vector<std::string> readNonEmptyLines(const char* path);

}  // namespace pxktest

#endif
