// The exports of the library: their names (the build's export list, compiled in), their
// addresses (looked up by name in the loaded library), their call shapes, and the line
// of `pxkconv --list` that says what each does, made from its name and call shape.
#ifndef PXKCC_APPS_PXKCONV_EXPORT_CATALOG_H
#define PXKCC_APPS_PXKCONV_EXPORT_CATALOG_H

#include <optional>
#include <string>
#include <vector>

#include "call_shape.h"

namespace pxkconv {

// Every export of the library, sorted as the export list is.
const std::vector<std::string>& exportNames();
bool isExport(const std::string& name);

// The address of an export in the library this program runs with, or null.
const void* exportAddress(const std::string& name);

// The version query stands outside the naming grammar and has no call shape.
bool isVersionQuery(const std::string& name);

// One line: the operation, the types and the layouts of each side, and the values it
// takes, e.g. "RGB to YCbCr 4:2:0; 8u packed 3 channels -> 8u 3 planes (Y; Cb, Cr at
// 1/2 width, 1/2 height); row steps".
std::string describeExport(const std::string& name);

// The shape's sides for messages: "source 8u packed 3 channels", ...
std::string describeSides(const pxkcross::CallShape& shape);

}  // namespace pxkconv

#endif
