#include "library.h"

#include <dlfcn.h>

#include <cstring>

namespace bench {

namespace {

std::string fileName(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The target code names the build ("s2"); it fills at most the 4 bytes of its field.
std::string baseLabel(const Library& lib) {
    const PxkVersionRecord* v = lib.version;
    const std::string code(v->targetCode, strnlen(v->targetCode, sizeof v->targetCode));
    if (!code.empty()) return code;
    if (v->name && *v->name) return v->name;
    return fileName(lib.path);
}

}  // namespace

void* Library::address(const char* name) const { return dlsym(handle, name); }

bool loadLibraries(const std::vector<std::string>& paths, std::vector<Library>& libraries,
                   std::string& error) {
    for (const std::string& path : paths) {
        Library lib;
        lib.path = path;
        // A name without a slash would go through the loader's search path, which
        // could find another build than the one named.
        const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
        lib.handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (lib.handle == nullptr) {
            const char* why = dlerror();
            // The loader's message names the file it tried.
            error = std::string("cannot load library: ") + (why ? why : path.c_str());
            return false;
        }
        using GetVersion = const PxkVersionRecord* (*)();
        const auto getVersion = reinterpret_cast<GetVersion>(lib.address("pxkccGetLibVersion"));
        if (getVersion == nullptr) {
            error = path + " has no pxkccGetLibVersion: not a build of this library";
            return false;
        }
        lib.version = getVersion();
        if (lib.version == nullptr) {
            error = path + ": pxkccGetLibVersion returned no record";
            return false;
        }

        const std::string base = baseLabel(lib);
        lib.label = base;
        for (int n = 2;; ++n) {
            bool taken = false;
            for (const Library& other : libraries) taken = taken || other.label == lib.label;
            if (!taken) break;
            lib.label = base + "#" + std::to_string(n);
        }
        for (const Library& other : libraries) {
            if (other.handle == lib.handle && lib.sameAs.empty()) lib.sameAs = other.label;
        }
        libraries.push_back(lib);
    }
    return true;
}

const char* defaultLibraryPath() { return PXKCC_BENCH_DEFAULT_LIBRARY; }

}  // namespace bench
