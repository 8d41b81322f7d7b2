// The entry table follows the export list slot for slot, and no two slots share a body.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "frame/entry_table.h"
#include "pxkcc.h"

namespace {

TEST(EntryTable, SlotsFollowTheExportList) {
    std::vector<std::string> list;
    std::ifstream in(PXKCC_EXPORT_LIST_FILE);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty()) list.push_back(line);
    }
    ASSERT_EQ(pxk::kEntryCount, list.size());
    for (std::size_t i = 0; i < list.size(); ++i) EXPECT_EQ(pxk::kEntryTable[i].name, list[i]) << "slot " << i;
}

TEST(EntryTable, OrderIsPlainAsciiWithTheVersionQueryFirst) {
    ASSERT_GT(pxk::kEntryCount, 1u);
    EXPECT_STREQ(pxk::kEntryTable[0].name, "pxkccGetLibVersion");
    for (std::size_t i = 1; i < pxk::kEntryCount; ++i) {
        EXPECT_LT(std::strcmp(pxk::kEntryTable[i - 1].name, pxk::kEntryTable[i].name), 0) << "slot " << i;
    }
}

TEST(EntryTable, EachSlotHoldsItsOwnBody) {
    std::set<void (*)()> bodies;
    for (std::size_t i = 0; i < pxk::kEntryCount; ++i) {
        EXPECT_NE(pxk::kEntryTable[i].body, nullptr) << pxk::kEntryTable[i].name;
        bodies.insert(pxk::kEntryTable[i].body);
    }
    EXPECT_EQ(bodies.size(), pxk::kEntryCount);
    // The version query's slot is the version query.
    using VersionFn = const PxkVersionRecord* (*)();
    EXPECT_EQ(reinterpret_cast<VersionFn>(pxk::kEntryTable[0].body)(), pxkccGetLibVersion());
}

}  // namespace
