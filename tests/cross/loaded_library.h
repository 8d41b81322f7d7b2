// One built libpxkcc.so, opened by its full path with RTLD_LOCAL, so that two builds
// with the same file name and SONAME can be loaded side by side and their exports
// looked up apart.
#ifndef PXKCC_TESTS_CROSS_LOADED_LIBRARY_H
#define PXKCC_TESTS_CROSS_LOADED_LIBRARY_H

#include <string>

#include "pxkcc.h"

namespace pxkcross {

class LoadedLibrary {
public:
    explicit LoadedLibrary(std::string path);
    ~LoadedLibrary();
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    const std::string& path() const { return path_; }
    bool loaded() const { return handle_ != nullptr; }
    // Why the library did not load.
    const std::string& error() const { return error_; }
    // The loader's handle: two paths of one file give the same handle.
    const void* handle() const { return handle_; }

    // The address of an export, or null.
    void* symbol(const std::string& name) const;
    // The library's version record, or null if it has no version query.
    const PxkVersionRecord* version() const;
    // The record's target code as a string ("s2" for the sse2 build), or "" without one.
    std::string targetCode() const;

private:
    std::string path_;
    std::string error_;
    void* handle_ = nullptr;
};

}  // namespace pxkcross

#endif
