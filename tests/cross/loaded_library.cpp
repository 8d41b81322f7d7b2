#include "loaded_library.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <cstring>

namespace pxkcross {

LoadedLibrary::LoadedLibrary(std::string path) : path_(std::move(path)) {
    // A name without a directory would make the loader search its own paths.
    if (path_.find('/') == std::string::npos) {
        error_ = "\"" + path_ + "\" is not a path to a library file";
        return;
    }
    struct stat st;
    if (::stat(path_.c_str(), &st) != 0) {
        error_ = "no library file at \"" + path_ + "\"";
        return;
    }
    dlerror();
    handle_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) {
        const char* why = dlerror();
        error_ = "cannot load " + path_ + ": " + (why ? why : "unknown loader error");
    }
}

LoadedLibrary::~LoadedLibrary() {
    if (handle_) dlclose(handle_);
}

void* LoadedLibrary::symbol(const std::string& name) const { return handle_ ? dlsym(handle_, name.c_str()) : nullptr; }

const PxkVersionRecord* LoadedLibrary::version() const {
    using Query = const PxkVersionRecord* (*)(void);
    void* query = symbol("pxkccGetLibVersion");
    if (!query) return nullptr;
    return reinterpret_cast<Query>(query)();
}

std::string LoadedLibrary::targetCode() const {
    const PxkVersionRecord* v = version();
    if (!v) return std::string();
    return std::string(v->targetCode, strnlen(v->targetCode, sizeof v->targetCode));
}

}  // namespace pxkcross
