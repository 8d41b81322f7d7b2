// Builds of the library under measurement, each loaded from its own file so that
// several (one per build target) run side by side in one process. Every export is
// looked up by name in the build it belongs to.
#ifndef PXKCC_BENCH_LIBRARY_H
#define PXKCC_BENCH_LIBRARY_H

#include <string>
#include <vector>

#include "pxkcc.h"

namespace bench {

struct Library {
    std::string path;       // as given on the command line
    std::string label;      // unique in the run: the target code, e.g. "s2", "#2" on a clash
    void* handle = nullptr;
    const PxkVersionRecord* version = nullptr;
    std::string sameAs;     // label of an earlier entry that is the same loaded file, or ""

    // The export's address in this build; nullptr if the build lacks it.
    void* address(const char* name) const;
};

// Loads each path (RTLD_NOW | RTLD_LOCAL: two files with one SONAME load side by side,
// and neither one's exports stand in for the other's) and reads its version record.
// Libraries stay loaded until the process ends. On failure returns false with a
// message in `error`.
bool loadLibraries(const std::vector<std::string>& paths, std::vector<Library>& libraries,
                   std::string& error);

// The library this program was built with (the pxkcc target of its build tree).
const char* defaultLibraryPath();

}  // namespace bench

#endif
