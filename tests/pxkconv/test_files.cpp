#include "test_files.h"

#include <fstream>
#include <iterator>

namespace pxkconvtest {

std::vector<uint8_t> fileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void putFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

bool fileExists(const std::string& path) {
    std::ifstream in(path);
    return bool(in);
}

}  // namespace pxkconvtest
