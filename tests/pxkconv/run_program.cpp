#include "run_program.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

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

// Each test has its own names, so that tests that ctest runs at once never share a file.
std::string scratch(const std::string& name) {
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    const std::string owner = test ? std::string(test->name()) + "_" : std::string();
    return std::string(PXKCONV_TEST_DIR) + "/" + owner + name;
}

ProgramRun runPxkconv(const std::vector<std::string>& args) {
    static int counter = 0;
    const std::string files = "run" + std::to_string(getpid()) + "_" + std::to_string(counter++);
    const std::string outPath = scratch(files + ".out");
    const std::string errPath = scratch(files + ".err");
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
