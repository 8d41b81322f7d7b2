// An open C file that closes itself.
#ifndef PXKCC_APPS_PXKCONV_FILE_HANDLE_H
#define PXKCC_APPS_PXKCONV_FILE_HANDLE_H

#include <cstdio>
#include <memory>

namespace pxkconv {

struct FileCloser {
    void operator()(std::FILE* f) const {
        if (f) std::fclose(f);
    }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

}  // namespace pxkconv

#endif
