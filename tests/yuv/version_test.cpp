// The version query: the record's fields, its layout, and that it is one constant
// reachable from any thread.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

#include "pxkcc.h"

namespace {

// What this build's record must name: the sse2 build is the library as described; the
// avx2 build names its own target and keeps every other field.
#if defined(PXKCC_TARGET_AVX2)
constexpr char kTargetCode[4] = {'a', '2', '\0', '\0'};
constexpr const char* kTargetName = "pxkCC AVX2 (a2)";
#else
constexpr char kTargetCode[4] = {'s', '2', '\0', '\0'};
constexpr const char* kTargetName = "pxkCC SSE2 (s2)";
#endif

TEST(LibVersion, FieldsHoldThisBuild) {
    const PxkVersionRecord* v = pxkccGetLibVersion();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->major, 2021);
    EXPECT_EQ(v->minor, 8);
    EXPECT_EQ(v->majorBuild, 0);
    EXPECT_EQ(v->build, 0xBA45569Bu);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(v->targetCode[i], kTargetCode[i]) << "targetCode[" << i << "]";
    ASSERT_NE(v->name, nullptr);
    ASSERT_NE(v->version, nullptr);
    ASSERT_NE(v->buildDate, nullptr);
    EXPECT_STREQ(v->name, kTargetName);
    EXPECT_STREQ(v->version, "2021.8 (r0xba45569b)");
    EXPECT_STREQ(v->buildDate, "Feb 17 2023");
}

TEST(LibVersion, VersionStringSpellsMajorMinorAndBuild) {
    const PxkVersionRecord* v = pxkccGetLibVersion();
    ASSERT_NE(v, nullptr);
    char expected[64];
    std::snprintf(expected, sizeof expected, "%d.%d (r0x%08x)", v->major, v->minor, v->build);
    EXPECT_STREQ(v->version, expected);
}

TEST(LibVersion, SamePointerOnEveryCall) {
    const PxkVersionRecord* first = pxkccGetLibVersion();
    ASSERT_NE(first, nullptr);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(pxkccGetLibVersion(), first);
}

TEST(LibVersion, SameRecordFromAnotherThread) {
    const PxkVersionRecord* here = pxkccGetLibVersion();
    const PxkVersionRecord* there = nullptr;
    std::string name;
    std::thread t([&] {
        there = pxkccGetLibVersion();
        if (there && there->name) name = there->name;
    });
    t.join();
    EXPECT_EQ(there, here);
    EXPECT_EQ(name, kTargetName);
}

TEST(LibVersion, FirstCallMayComeFromAnotherThread) {
    // Nothing else in this test touches the library before the worker thread does.
    const PxkVersionRecord* there = nullptr;
    int major = 0;
    std::thread t([&] {
        there = pxkccGetLibVersion();
        if (there) major = there->major;
    });
    t.join();
    ASSERT_NE(there, nullptr);
    EXPECT_EQ(major, 2021);
    EXPECT_EQ(pxkccGetLibVersion(), there);
}

TEST(LibVersion, RecordLayoutIsNaturallyAligned) {
    EXPECT_EQ(offsetof(PxkVersionRecord, major), 0u);
    EXPECT_EQ(offsetof(PxkVersionRecord, minor), 4u);
    EXPECT_EQ(offsetof(PxkVersionRecord, majorBuild), 8u);
    EXPECT_EQ(offsetof(PxkVersionRecord, build), 12u);
    EXPECT_EQ(offsetof(PxkVersionRecord, targetCode), 16u);
    EXPECT_EQ(offsetof(PxkVersionRecord, name), 24u);
    EXPECT_EQ(offsetof(PxkVersionRecord, version), 32u);
    EXPECT_EQ(offsetof(PxkVersionRecord, buildDate), 40u);
    EXPECT_EQ(sizeof(PxkVersionRecord), 48u);
    EXPECT_EQ(sizeof(((PxkVersionRecord*)nullptr)->targetCode), 4u);
}

}  // namespace
