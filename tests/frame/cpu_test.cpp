// Processor queries.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>

#include "frame/cpu.h"

namespace {

TEST(Cpu, VendorIsTwelvePrintableCharacters) {
    char vendor[13];
    std::memset(vendor, 'x', sizeof vendor);
    pxk::cpuVendor(vendor);
    EXPECT_EQ(vendor[12], '\0');
    EXPECT_EQ(std::strlen(vendor), 12u);
    for (int i = 0; i < 12; ++i) EXPECT_TRUE(std::isprint(static_cast<unsigned char>(vendor[i]))) << i;
}

TEST(Cpu, LargestCacheIsReportedAndPlausible) {
    int32_t size = -7;
    ASSERT_EQ(pxk::pxkGetMaxCacheSizeB(&size), 0);
    EXPECT_GE(size, 64 * 1024);  // any x86-64 processor has at least this much
    EXPECT_EQ(size % 1024, 0);
    int32_t again = 0;
    ASSERT_EQ(pxk::pxkGetMaxCacheSizeB(&again), 0);
    EXPECT_EQ(again, size);
}

TEST(Cpu, NullDestinationFails) { EXPECT_EQ(pxk::pxkGetMaxCacheSizeB(nullptr), -1); }

}  // namespace
