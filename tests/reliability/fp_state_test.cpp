// Floating-point state around every export: whatever rounding mode, flush-to-zero and
// denormals-are-zero setting and x87 control word the caller has, each call leaves the
// control bits of the SSE control and status register and the x87 control word as the
// caller set them. An export whose results do not involve float arithmetic under the
// caller's modes (the table below names those that do) gives the same bytes under
// every setting.
#include <gtest/gtest.h>

#include <xmmintrin.h>

#include <cstdint>
#include <string>
#include <vector>

#include "every_export.h"
#include "float_mode_table.h"
#include "guard_allowances.h"

namespace {

using pxkcross::CallMemory;
using pxkcross::SweepPoint;

// Bits 6 to 15: denormals-are-zero, the six exception masks, the rounding field and
// flush-to-zero. Bits 0 to 5 are the sticky exception flags, which a call may raise.
constexpr uint32_t kControlBits = 0xFFC0;
constexpr uint32_t kDefaultCsr = 0x1F80;

uint16_t x87ControlWord() {
    uint16_t cw;
    __asm__ volatile("fnstcw %0" : "=m"(cw));
    return cw;
}
void setX87ControlWord(uint16_t cw) { __asm__ volatile("fldcw %0" : : "m"(cw)); }

struct FloatState {
    uint32_t csr;
    uint16_t x87;
    const char* name;
};

// Each rounding mode, with and without flush-to-zero and denormals-are-zero; the x87
// word with its own rounding and precision fields changed alongside.
const std::vector<FloatState>& floatStates() {
    static const std::vector<FloatState> states = {
        {kDefaultCsr, 0x037F, "nearest"},
        {kDefaultCsr | 0x2000, 0x077F, "down"},
        {kDefaultCsr | 0x4000, 0x0B7F, "up"},
        {kDefaultCsr | 0x6000, 0x0F7F, "toward zero"},
        {kDefaultCsr | 0x8040, 0x027F, "nearest, flush-to-zero and denormals-are-zero"},
        {kDefaultCsr | 0x6000 | 0x8040, 0x0E7F, "toward zero, flush-to-zero and denormals-are-zero"},
    };
    return states;
}

// The caller's state for one call, put back afterwards whatever the call did.
class CallerState {
public:
    explicit CallerState(const FloatState& s) : savedCsr_(_mm_getcsr()), savedX87_(x87ControlWord()) {
        setX87ControlWord(s.x87);
        _mm_setcsr(s.csr);
    }
    ~CallerState() {
        _mm_setcsr(savedCsr_);
        setX87ControlWord(savedX87_);
    }

private:
    uint32_t savedCsr_;
    uint16_t savedX87_;
};

class FloatStateOfEveryExport : public ::testing::TestWithParam<std::string> {};

TEST_P(FloatStateOfEveryExport, LeavesTheCallersControlStateAndDependsOnItOnlyWhereItMay) {
    const std::string& name = GetParam();
    std::string error;
    const auto target = pxkreliability::callableExport(name, &error);
    ASSERT_TRUE(target.has_value()) << error;
    const void* function = target->function;
    const bool mayDepend = pxkreliability::followsCallerFloatModes(name);

    for (const SweepPoint& point : pxkreliability::reliabilityPoints()) {
        const CallMemory prepared(target->shape, point, pxkreliability::seedOf(name, point),
                                  pxkcross::Placement::Margins, pxkcross::guardAllowancesFor(name, point.height));
        CallMemory atDefault(prepared);
        int32_t defaultStatus = 0;
        {
            CallerState state(floatStates()[0]);
            ASSERT_TRUE(pxkreliability::callOnce(function, atDefault, &defaultStatus, &error)) << error;
        }
        for (const FloatState& s : floatStates()) {
            CallMemory memory(prepared);
            int32_t status = 0;
            uint32_t csrAfter = 0;
            uint16_t x87After = 0;
            {
                CallerState state(s);
                const bool called = pxkreliability::callOnce(function, memory, &status, &error);
                csrAfter = _mm_getcsr();
                x87After = x87ControlWord();
                ASSERT_TRUE(called) << error;
            }
            ASSERT_EQ(csrAfter & kControlBits, s.csr & kControlBits)
                << name << " changed the SSE control bits under \"" << s.name << "\" at width " << point.width
                << ", height " << point.height;
            ASSERT_EQ(x87After, s.x87) << name << " changed the x87 control word under \"" << s.name << "\" at width "
                                       << point.width << ", height " << point.height;
            ASSERT_EQ(status, defaultStatus) << name << " under \"" << s.name << "\"";
            if (!mayDepend) {
                const std::string difference = CallMemory::firstDifference(memory, atDefault);
                ASSERT_TRUE(difference.empty())
                    << name << " gives other bytes under \"" << s.name << "\" than under the default state, at width "
                    << point.width << ", height " << point.height << ": " << difference << "\n  (if its results"
                    << " rightly follow the caller's float modes, name it in float_mode_table.cpp)";
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryExport, FloatStateOfEveryExport,
                         ::testing::ValuesIn(pxkreliability::exportsUnderTest()),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });

TEST(FloatModeTable, PatternsMatchAnyRunWhereTheyHaveAStar) {
    using pxkreliability::entryMatches;
    EXPECT_TRUE(entryMatches("pxkiA_8u_C3R", "pxkiA_8u_C3R"));
    EXPECT_FALSE(entryMatches("pxkiA_8u_C3R", "pxkiA_8u_C3R_L"));
    EXPECT_TRUE(entryMatches("pxkiYUV422v210To*", "pxkiYUV422v210ToRGB_709HDTV_32u16u_C3"));
    EXPECT_TRUE(entryMatches("*_32f_*", "pxkiHLSToRGB_32f_C3R"));
    EXPECT_FALSE(entryMatches("*_32f_*", "pxkiHLSToRGB_8u_C3R"));
    EXPECT_TRUE(entryMatches("pxki*To*_16u_*", "pxkiRGBToGray_16u_C3C1R"));
    EXPECT_FALSE(entryMatches("pxki*To*_16u_*", "pxkiRGBToGray_8u_C3C1R"));
    EXPECT_TRUE(entryMatches("*", "anything"));
}

// The table names only exports of the list.
TEST(FloatModeTable, NamesOnlyListedExports) {
    const std::vector<std::string> list = pxkreliability::exportsUnderTest();
    for (const std::string& entry : pxkreliability::floatModeTableEntries()) {
        bool matched = false;
        for (const std::string& name : list) matched = matched || pxkreliability::entryMatches(entry, name);
        EXPECT_TRUE(matched) << "float_mode_table.cpp names " << entry << ", which matches no export of the list";
    }
}

}  // namespace
