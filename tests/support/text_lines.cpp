#include "text_lines.h"

#include <fstream>

namespace pxktest {

std::vector<std::string> readNonEmptyLines(const char* path) {
    std::vector<std::string> lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty()) lines.push_back(line);
    }
    return lines;
}

}  // namespace pxktest
