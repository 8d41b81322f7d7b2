// Every export, at every width from 1 to 40 and a few larger ones, with each of its
// buffers exactly as large as what the call may touch: each plane's rows at its own
// resolution, each array and value of its own size. Once every buffer ends just below
// a page that may not be touched, once every buffer starts just above one, so that a
// read or write past either end faults. A fault is caught and reported with the export,
// the region and the buffer it fell next to.
#include <gtest/gtest.h>

#include <csetjmp>
#include <csignal>
#include <cstring>
#include <string>
#include <vector>

#include "every_export.h"
#include "guard_allowances.h"

namespace {

using pxkcross::CallMemory;
using pxkcross::Placement;
using pxkcross::SweepPoint;

sigjmp_buf gFaultReturn;
volatile sig_atomic_t gFaulted = 0;
void* volatile gFaultAddress = nullptr;

void onFault(int, siginfo_t* info, void*) {
    gFaulted = 1;
    gFaultAddress = info->si_addr;
    siglongjmp(gFaultReturn, 1);
}

// While alive, a fault of this thread returns to the call below instead of ending
// the program.
class FaultCatcher {
public:
    FaultCatcher() {
        struct sigaction a;
        std::memset(&a, 0, sizeof a);
        a.sa_sigaction = onFault;
        a.sa_flags = SA_SIGINFO | SA_NODEFER;
        sigemptyset(&a.sa_mask);
        sigaction(SIGSEGV, &a, &savedSegv_);
        sigaction(SIGBUS, &a, &savedBus_);
    }
    ~FaultCatcher() {
        sigaction(SIGSEGV, &savedSegv_, nullptr);
        sigaction(SIGBUS, &savedBus_, nullptr);
    }

private:
    struct sigaction savedSegv_;
    struct sigaction savedBus_;
};

// Calls the export; false if it touched an inaccessible page (address in *fault).
bool callWithoutFault(const void* function, const std::vector<pxkcross::AbiArgument>& args, int32_t* status,
                      std::string* error, void** fault) {
    FaultCatcher catcher;
    gFaulted = 0;
    if (sigsetjmp(gFaultReturn, 1) == 0) {
        pxkcross::callWithArguments(function, args, status, error);
    }
    *fault = gFaultAddress;
    return gFaulted == 0;
}

std::vector<SweepPoint> guardPoints() {
    std::vector<SweepPoint> points;
    const int heights[] = {1, 2, 3, 4, 5, 6, 7};
    std::vector<int> widths;
    for (int w = 1; w <= 40; ++w) widths.push_back(w);
    for (int w : {64, 67, 130}) widths.push_back(w);
    for (std::size_t i = 0; i < widths.size(); ++i) {
        for (int k = 0; k < 2; ++k) {
            SweepPoint p;
            p.width = widths[i];
            p.height = heights[(i + 3 * k) % 7];
            p.index = static_cast<unsigned>(points.size());
            points.push_back(p);
        }
    }
    return points;
}

// A stand-in with the argument list of a packed three-channel conversion that reads the
// byte after the last row of its source, or the byte before its first row.
int32_t gTouchOffset = 0;
extern "C" int32_t touchesPastTheSource(const uint8_t* src, int32_t srcStep, uint8_t*, int32_t, int64_t size) {
    const int32_t width = static_cast<int32_t>(size & 0xFFFFFFFF), height = static_cast<int32_t>(size >> 32);
    const uint8_t* lastRow = src + static_cast<std::ptrdiff_t>(height - 1) * srcStep;
    const uint8_t* p = gTouchOffset > 0 ? lastRow + 3 * width : src - 1;
    return *static_cast<const volatile uint8_t*>(p);
}

TEST(GuardPages, AnAccessPastEitherEndIsCaught) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the address sanitizer checks these accesses itself in this build";
#else
    std::string error;
    const auto shape = pxkreliability::callableExport("pxkiRGBToYCbCr_8u_C3R", &error);
    ASSERT_TRUE(shape.has_value()) << error;
    for (Placement placement : {Placement::GuardAfter, Placement::GuardBefore}) {
        gTouchOffset = placement == Placement::GuardAfter ? 1 : -1;
        SweepPoint point;
        point.width = 5;
        point.height = 3;  // index 0: tight steps
        CallMemory memory(shape->shape, point, 1, placement);
        int32_t status = 0;
        void* fault = nullptr;
        EXPECT_FALSE(callWithoutFault(reinterpret_cast<const void*>(&touchesPastTheSource), memory.arguments(), &status,
                                      &error, &fault));
        EXPECT_NE(memory.describeAddress(fault).find("source"), std::string::npos) << memory.describeAddress(fault);
    }
#endif
}

class GuardPagesOfEveryExport : public ::testing::TestWithParam<std::string> {};

TEST_P(GuardPagesOfEveryExport, TouchesNothingPastItsBuffers) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the address sanitizer checks these accesses itself in this build";
#else
    const std::string& name = GetParam();
    std::string error;
    const auto target = pxkreliability::callableExport(name, &error);
    ASSERT_TRUE(target.has_value()) << error;
    for (Placement placement : {Placement::GuardAfter, Placement::GuardBefore}) {
        const char* where = placement == Placement::GuardAfter ? "after" : "before";
        for (const SweepPoint& point : guardPoints()) {
            CallMemory memory(target->shape, point, pxkreliability::seedOf(name, point), placement,
                              pxkcross::guardAllowancesFor(name, point.height));
            const std::vector<pxkcross::AbiArgument> args = memory.arguments();
            int32_t status = 0;
            void* fault = nullptr;
            const bool clean = callWithoutFault(target->function, args, &status, &error, &fault);
            ASSERT_TRUE(clean) << name << " touched the protected page " << where << " a buffer at width "
                               << point.width << ", height " << point.height << "\n  " << memory.layout()
                               << "\n  address " << fault << ": " << memory.describeAddress(fault);
        }
    }
#endif
}

INSTANTIATE_TEST_SUITE_P(EveryExport, GuardPagesOfEveryExport,
                         ::testing::ValuesIn(pxkreliability::exportsUnderTest()),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });

}  // namespace
