#include "run_program.h"

#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace pxkconvtest {

namespace {

std::string quoted(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += (c == '\'') ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

std::string fileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace

std::string scratch(const std::string& name) { return std::string(PXKCONV_TEST_DIR) + "/" + name; }

ProgramRun runPxkconv(const std::vector<std::string>& args) {
    static int counter = 0;
    const std::string outPath = scratch("run" + std::to_string(counter) + ".out");
    const std::string errPath = scratch("run" + std::to_string(counter++) + ".err");
    std::string command = "cd " + quoted(PXKCONV_TEST_DIR) + " && " + quoted(PXKCONV_PROGRAM);
    for (const std::string& a : args) command += " " + quoted(a);
    command += " >" + quoted(outPath) + " 2>" + quoted(errPath) + " </dev/null";
    const int status = std::system(command.c_str());
    ProgramRun run;
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + (WIFSIGNALED(status) ? WTERMSIG(status) : 0);
    run.out = fileText(outPath);
    run.err = fileText(errPath);
    std::remove(outPath.c_str());
    std::remove(errPath.c_str());
    return run;
}

}  // namespace pxkconvtest
