// The library's boundary: exactly the names of the export list are visible, the list
// is in plain ASCII order with the version query first, and every name is one of the
// library's named exports.
#include <gtest/gtest.h>

#include <algorithm>
#include <dlfcn.h>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "elf_symbols.h"
#include "text_lines.h"

namespace {

std::vector<std::string> readLines(const char* path) { return pxktest::readNonEmptyLines(path); }

TEST(ExportBoundary, ListIsSortedUniqueAndStartsWithTheVersionQuery) {
    const std::vector<std::string> list = readLines(PXKCC_EXPORT_LIST_FILE);
    ASSERT_FALSE(list.empty());
    EXPECT_EQ(list.front(), "pxkccGetLibVersion");
    for (std::size_t i = 1; i < list.size(); ++i) {
        EXPECT_LT(list[i - 1], list[i]) << "out of order or repeated at line " << i + 1;
    }
}

TEST(ExportBoundary, DynamicSymbolsAreExactlyTheList) {
    std::string error;
    const std::vector<std::string> symbols = pxktest::definedDynamicSymbols(PXKCC_LIBRARY_FILE, error);
    ASSERT_TRUE(error.empty()) << error;
    const std::set<std::string> exported(symbols.begin(), symbols.end());
    const std::vector<std::string> list = readLines(PXKCC_EXPORT_LIST_FILE);
    const std::set<std::string> listed(list.begin(), list.end());
    for (const std::string& s : exported) EXPECT_TRUE(listed.count(s)) << "exported but not listed: " << s;
    for (const std::string& s : listed) EXPECT_TRUE(exported.count(s)) << "listed but not exported: " << s;
}

TEST(ExportBoundary, EveryListedNameIsANamedExport) {
    const std::vector<std::string> named = readLines(PXKCC_NAMED_EXPORTS_FILE);
    if (named.empty()) GTEST_SKIP() << "the full list of export names is not beside the project";
    const std::set<std::string> all(named.begin(), named.end());
    for (const std::string& s : readLines(PXKCC_EXPORT_LIST_FILE)) {
        EXPECT_TRUE(all.count(s)) << "not a named export: " << s;
    }
}

TEST(ExportBoundary, EveryNameResolvesToItsOwnBody) {
    void* lib = dlopen(PXKCC_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(lib, nullptr) << dlerror();
    std::set<void*> bodies;
    const std::vector<std::string> list = readLines(PXKCC_EXPORT_LIST_FILE);
    for (const std::string& name : list) {
        void* body = dlsym(lib, name.c_str());
        EXPECT_NE(body, nullptr) << name;
        bodies.insert(body);
    }
    EXPECT_EQ(bodies.size(), list.size()) << "two names share one body";
    dlclose(lib);
}

}  // namespace
