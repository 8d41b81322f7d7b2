// Every export called from four threads at once, each on its own buffers, gives the
// bytes of one call on one thread: the library keeps no state that calls share.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "every_export.h"
#include "guard_allowances.h"

namespace {

using pxkcross::CallMemory;
using pxkcross::SweepPoint;

constexpr int kThreads = 4;

class ConcurrencyOfEveryExport : public ::testing::TestWithParam<std::string> {};

TEST_P(ConcurrencyOfEveryExport, FourThreadsAtOnceGiveTheBytesOfOneCall) {
    const std::string& name = GetParam();
    std::string error;
    const auto target = pxkreliability::callableExport(name, &error);
    ASSERT_TRUE(target.has_value()) << error;
    const void* function = target->function;

    for (const SweepPoint& point : pxkreliability::reliabilityPoints()) {
        const CallMemory prepared(target->shape, point, pxkreliability::seedOf(name, point),
                                  pxkcross::Placement::Margins, pxkcross::guardAllowancesFor(name, point.height));
        CallMemory alone(prepared);
        int32_t aloneStatus = 0;
        ASSERT_TRUE(pxkreliability::callOnce(function, alone, &aloneStatus, &error)) << error;

        std::vector<CallMemory> memories(kThreads, prepared);
        std::vector<int32_t> statuses(kThreads, 0);
        std::vector<std::string> errors(kThreads);
        std::vector<char> called(kThreads, 0);
        std::atomic<int> ready{0};
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&, t] {
                // Start together, so that the calls overlap.
                ready.fetch_add(1);
                while (ready.load() < kThreads) std::this_thread::yield();
                called[t] = pxkreliability::callOnce(function, memories[t], &statuses[t], &errors[t]);
            });
        }
        for (std::thread& th : threads) th.join();
        for (int t = 0; t < kThreads; ++t) {
            ASSERT_TRUE(called[t]) << errors[t];
            ASSERT_EQ(statuses[t], aloneStatus) << name << " in thread " << t << " at width " << point.width;
            const std::string difference = CallMemory::firstDifference(memories[t], alone);
            ASSERT_TRUE(difference.empty()) << name << " in thread " << t << " at width " << point.width << ", height "
                                            << point.height << ": " << difference;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryExport, ConcurrencyOfEveryExport,
                         ::testing::ValuesIn(pxkreliability::exportsUnderTest()),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });

}  // namespace
