// The two builds of the library side by side: this build's libpxkcc.so and the other
// processor target's. For every export of the list, both are called with the same
// arguments on the same bytes, over every width from 1 to 130 and 1920 and heights 1
// to 5 and 37, with tight, padded, odd, zero and negative steps and aligned and
// misaligned pointers; they must return the same status and leave every byte of every
// buffer (sources, destinations, arrays and the margins around them) the same.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "abi_call.h"
#include "call_memory.h"
#include "guard_allowances.h"
#include "loaded_library.h"
#include "random.h"
#include "shape_lookup.h"
#include "text_lines.h"

namespace {

using pxkcross::CallMemory;
using pxkcross::CallShape;
using pxkcross::LoadedLibrary;
using pxkcross::SweepPoint;

const char* const kVersionQuery = "pxkccGetLibVersion";

std::vector<std::string> readExportList() {
    return pxktest::readNonEmptyLines(PXKCC_EXPORT_LIST_FILE);
}

std::vector<std::string> exportsToCompare() {
    std::vector<std::string> names;
    for (const std::string& name : readExportList()) {
        if (name != kVersionQuery) names.push_back(name);
    }
    return names;
}

std::vector<SweepPoint> sweepPoints() {
    std::vector<int> widths;
    for (int w = 1; w <= 130; ++w) widths.push_back(w);
    widths.push_back(1920);
    const int heights[] = {1, 2, 3, 4, 5, 37};
    std::vector<SweepPoint> points;
    for (int w : widths) {
        for (int h : heights) {
            SweepPoint p;
            p.width = w;
            p.height = h;
            p.index = static_cast<unsigned>(points.size());
            points.push_back(p);
        }
    }
    return points;
}

struct LibraryPair {
    LoadedLibrary ours{PXKCC_LIBRARY_FILE};
    LoadedLibrary other{PXKCC_OTHER_LIBRARY_FILE};
};

LibraryPair& libraries() {
    static LibraryPair pair;
    return pair;
}

bool processorHasAvx2() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2");
}

// Both files present and loaded as two libraries, each with its version record.
void requireBothLibraries() {
    const LibraryPair& pair = libraries();
    ASSERT_TRUE(pair.ours.loaded()) << "this build's library: " << pair.ours.error();
    ASSERT_TRUE(pair.other.loaded()) << "the other build's library (PXKCC_CROSS_LIBRARY): " << pair.other.error();
    ASSERT_NE(pair.ours.handle(), pair.other.handle())
        << pair.ours.path() << " and " << pair.other.path()
        << " are one library file, so comparing them would prove nothing";
    ASSERT_NE(pair.ours.version(), nullptr) << pair.ours.path() << " has no version record";
    ASSERT_NE(pair.other.version(), nullptr) << pair.other.path() << " has no version record";
}

class CrossBuildVersion : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NO_FATAL_FAILURE(requireBothLibraries()); }
};

TEST_F(CrossBuildVersion, RecordsDifferOnlyInTheTarget) {
    const LibraryPair& pair = libraries();
    const PxkVersionRecord& a = *pair.ours.version();
    const PxkVersionRecord& b = *pair.other.version();
    EXPECT_EQ(a.major, b.major);
    EXPECT_EQ(a.minor, b.minor);
    EXPECT_EQ(a.majorBuild, b.majorBuild);
    EXPECT_EQ(a.build, b.build);
    ASSERT_NE(a.name, nullptr);
    ASSERT_NE(b.name, nullptr);
    ASSERT_NE(a.version, nullptr);
    ASSERT_NE(b.version, nullptr);
    ASSERT_NE(a.buildDate, nullptr);
    ASSERT_NE(b.buildDate, nullptr);
    EXPECT_STREQ(a.version, b.version);
    EXPECT_STREQ(a.buildDate, b.buildDate);
    if (pair.ours.targetCode() == pair.other.targetCode()) {
        // One target built twice: the whole record is the same.
        EXPECT_EQ(0, std::memcmp(a.targetCode, b.targetCode, sizeof a.targetCode));
        EXPECT_STREQ(a.name, b.name);
    } else {
        // Each target names itself.
        EXPECT_STRNE(a.name, b.name) << "targets " << pair.ours.targetCode() << " and " << pair.other.targetCode();
    }
}

TEST(CrossBuildList, NamesExportsToCompare) {
    const std::vector<std::string> list = readExportList();
    ASSERT_FALSE(list.empty()) << "cannot read the export list " << PXKCC_EXPORT_LIST_FILE;
    EXPECT_EQ(list.front(), kVersionQuery);
    EXPECT_FALSE(exportsToCompare().empty());
}

class CrossBuildExport : public ::testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(requireBothLibraries());
        const LibraryPair& pair = libraries();
        if (!processorHasAvx2()) {
            for (const LoadedLibrary* lib : {&pair.ours, &pair.other}) {
                if (lib->targetCode() != "s2") {
                    GTEST_SKIP() << "this processor has no AVX2, so the build of target " << lib->targetCode() << " at "
                                 << lib->path() << " cannot run here";
                }
            }
        }
    }
};

TEST_P(CrossBuildExport, SameStatusAndBytes) {
    const std::string& name = GetParam();
    const LibraryPair& pair = libraries();
    std::string error;
    const std::optional<CallShape> shape = pxkcross::callShapeFor(name, &error);
    ASSERT_TRUE(shape.has_value()) << error;
    const void* ours = pair.ours.symbol(name);
    const void* other = pair.other.symbol(name);
    ASSERT_NE(ours, nullptr) << name << " is not exported by " << pair.ours.path();
    ASSERT_NE(other, nullptr) << name << " is not exported by " << pair.other.path();

    int calls = 0;
    int succeeded = 0;
    for (const SweepPoint& point : sweepPoints()) {
        const uint32_t seed =
            pxktest::seedFor(name.c_str(), {static_cast<uint32_t>(point.width), static_cast<uint32_t>(point.height)});
        // The rows outside the region that an export documents lie in the buffers too.
        CallMemory a(*shape, point, seed, pxkcross::Placement::Margins,
                     pxkcross::guardAllowancesFor(name, point.height));
        CallMemory b(a);
        int32_t statusA = 0;
        int32_t statusB = 0;
        ASSERT_TRUE(pxkcross::callWithArguments(ours, a.arguments(), &statusA, &error)) << name << ": " << error;
        ASSERT_TRUE(pxkcross::callWithArguments(other, b.arguments(), &statusB, &error)) << name << ": " << error;
        ++calls;
        if (statusA >= 0) ++succeeded;
        const std::string difference = CallMemory::firstDifference(a, b);
        if (statusA != statusB || !difference.empty()) {
            ADD_FAILURE() << name << " differs at width " << point.width << ", height " << point.height << "\n  "
                          << a.layout() << "\n  status " << statusA << " from " << pair.ours.path() << " ("
                          << pair.ours.targetCode() << ")\n  status " << statusB << " from " << pair.other.path()
                          << " (" << pair.other.targetCode() << ")\n  "
                          << (difference.empty() ? std::string("every byte the same") : difference)
                          << "\n  (the sweep of this export stops at its first difference)";
            return;
        }
    }
    EXPECT_GT(succeeded, 0) << name << ": all " << calls << " calls failed, so no output was compared; check its "
                            << "arguments in " << pxkcross::kShapeTableFile;
}

INSTANTIATE_TEST_SUITE_P(EveryExport, CrossBuildExport, ::testing::ValuesIn(exportsToCompare()),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });

}  // namespace
