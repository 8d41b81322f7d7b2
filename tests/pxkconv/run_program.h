// Runs the pxkconv program of the build tree and collects its exit code and output.
#ifndef PXKCC_TESTS_PXKCONV_RUN_PROGRAM_H
#define PXKCC_TESTS_PXKCONV_RUN_PROGRAM_H

#include <cstdint>
#include <string>
#include <vector>

#include "test_files.h"

namespace pxkconvtest {

struct ProgramRun {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// Runs pxkconv with the arguments (each quoted for the shell) in the test directory.
ProgramRun runPxkconv(const std::vector<std::string>& args);

// A path in the test's scratch directory.
std::string scratch(const std::string& name);

}  // namespace pxkconvtest

#endif
