// The entry table follows the export list slot for slot, and no two slots share a body.
#include <gtest/gtest.h>

#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "frame/entry_table.h"
#include "pxkcc.h"
#include "text_lines.h"

namespace {

TEST(EntryTable, SlotsFollowTheExportList) {
    const std::vector<std::string> list = pxktest::readNonEmptyLines(PXKCC_EXPORT_LIST_FILE);
    ASSERT_EQ(pxk::kExportCount, list.size());
    for (std::size_t i = 0; i < list.size(); ++i) EXPECT_EQ(pxk::kEntryTable.slot[i].name, list[i]) << "slot " << i;
}

TEST(EntryTable, OrderIsPlainAsciiWithTheVersionQueryFirst) {
    ASSERT_GT(pxk::kExportCount, 1u);
    EXPECT_STREQ(pxk::kEntryTable.slot[0].name, "pxkccGetLibVersion");
    for (std::size_t i = 1; i < pxk::kExportCount; ++i) {
        EXPECT_LT(std::strcmp(pxk::kEntryTable.slot[i - 1].name, pxk::kEntryTable.slot[i].name), 0) << "slot " << i;
    }
}

TEST(EntryTable, EachSlotHoldsItsOwnBody) {
    std::set<void (*)()> bodies;
    for (std::size_t i = 0; i < pxk::kExportCount; ++i) {
        EXPECT_NE(pxk::kEntryTable.slot[i].body, nullptr) << pxk::kEntryTable.slot[i].name;
        bodies.insert(pxk::kEntryTable.slot[i].body);
    }
    EXPECT_EQ(bodies.size(), pxk::kExportCount);
    // The version query's slot is the version query.
    using VersionFn = const PxkVersionRecord* (*)();
    EXPECT_EQ(reinterpret_cast<VersionFn>(pxk::kEntryTable.slot[0].body)(), pxkccGetLibVersion());
}

// Each slot's body is what the dynamic linker finds under the slot's name in this
// program (linked with its symbols exported), independently of how the table is built.
TEST(EntryTable, EachNameResolvesToItsSlotsBody) {
    for (std::size_t i = 0; i < pxk::kExportCount; ++i) {
        void* found = dlsym(RTLD_DEFAULT, pxk::kEntryTable.slot[i].name);
        ASSERT_NE(found, nullptr) << pxk::kEntryTable.slot[i].name;
        EXPECT_EQ(found, reinterpret_cast<void*>(pxk::kEntryTable.slot[i].body)) << pxk::kEntryTable.slot[i].name;
    }
}

}  // namespace
