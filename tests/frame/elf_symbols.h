// Reads the names of the symbols that an ELF64 shared object defines in its dynamic
// symbol table: what a program linking to it can see.
#pragma once

#include <string>
#include <vector>

namespace pxktest {

// Names of defined global and weak symbols of `path`'s .dynsym, or an empty vector
// with `error` set when the file cannot be read as an ELF64 shared object.
std::vector<std::string> definedDynamicSymbols(const std::string& path, std::string& error);

}  // namespace pxktest
