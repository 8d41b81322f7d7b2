// Whole files as bytes, for pxkconv's tests.
#ifndef PXKCC_TESTS_PXKCONV_TEST_FILES_H
#define PXKCC_TESTS_PXKCONV_TEST_FILES_H

#include <cstdint>
#include <string>
#include <vector>

namespace pxkconvtest {

std::vector<uint8_t> fileBytes(const std::string& path);
void putFile(const std::string& path, const std::vector<uint8_t>& bytes);
bool fileExists(const std::string& path);

}  // namespace pxkconvtest

#endif
