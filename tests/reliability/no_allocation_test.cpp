// No export allocates: this program puts its own malloc, calloc, realloc, free and
// aligned allocators in front of the C library's (operator new and delete reach them
// too), counts the calls a thread makes while it is inside an export, and fails on any.
// Under the sanitizers, whose runtime owns the allocator, the test is skipped.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include "every_export.h"
#include "guard_allowances.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define PXKCC_ALLOCATOR_OWNED_BY_SANITIZER 1
#endif

#if !defined(PXKCC_ALLOCATOR_OWNED_BY_SANITIZER)
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace {
thread_local bool tArmed = false;
thread_local int tAllocatorCalls = 0;
inline void count() {
    if (tArmed) ++tAllocatorCalls;
}
}  // namespace

extern "C" {
void* malloc(std::size_t n) {
    count();
    return __libc_malloc(n);
}
void* calloc(std::size_t n, std::size_t size) {
    count();
    return __libc_calloc(n, size);
}
void* realloc(void* p, std::size_t n) {
    count();
    return __libc_realloc(p, n);
}
void free(void* p) {
    count();
    __libc_free(p);
}
void* memalign(std::size_t alignment, std::size_t n) {
    count();
    return __libc_memalign(alignment, n);
}
void* aligned_alloc(std::size_t alignment, std::size_t n) {
    count();
    return __libc_memalign(alignment, n);
}
int posix_memalign(void** out, std::size_t alignment, std::size_t n) {
    count();
    void* p = __libc_memalign(alignment, n);
    if (p == nullptr) return 12;  // ENOMEM
    *out = p;
    return 0;
}
}
#endif

namespace {

using pxkcross::CallMemory;
using pxkcross::SweepPoint;

#if !defined(PXKCC_ALLOCATOR_OWNED_BY_SANITIZER)
// Counts the allocator calls of this thread during `f`.
template <class F>
int allocatorCallsDuring(F&& f) {
    tAllocatorCalls = 0;
    tArmed = true;
    f();
    tArmed = false;
    return tAllocatorCalls;
}

// The counting itself works: a vector's growth and release are seen.
TEST(NoAllocation, TheCountSeesAllocations) {
    const int calls = allocatorCallsDuring([] {
        std::vector<int>* v = new std::vector<int>(1000, 7);
        v->resize(100000);
        delete v;
    });
    EXPECT_GE(calls, 4);
}
#endif

class NoAllocationInEveryExport : public ::testing::TestWithParam<std::string> {};

TEST_P(NoAllocationInEveryExport, CallsNoAllocator) {
#if defined(PXKCC_ALLOCATOR_OWNED_BY_SANITIZER)
    GTEST_SKIP() << "the sanitizer runtime owns the allocator in this build";
#else
    const std::string& name = GetParam();
    std::string error;
    const auto target = pxkreliability::callableExport(name, &error);
    ASSERT_TRUE(target.has_value()) << error;
    const void* function = target->function;
    for (const SweepPoint& point : pxkreliability::reliabilityPoints()) {
        CallMemory memory(target->shape, point, pxkreliability::seedOf(name, point),
                          pxkcross::Placement::Margins, pxkcross::guardAllowancesFor(name, point.height));
        // The argument list is built before the count starts.
        const std::vector<pxkcross::AbiArgument> arguments = memory.arguments();
        int32_t status = 0;
        bool called = false;
        const int calls = allocatorCallsDuring(
            [&] { called = pxkcross::callWithArguments(function, arguments, &status, &error); });
        ASSERT_TRUE(called) << error;
        ASSERT_EQ(calls, 0) << name << " called the allocator " << calls << " times at width " << point.width
                            << ", height " << point.height;
    }
#endif
}

INSTANTIATE_TEST_SUITE_P(EveryExport, NoAllocationInEveryExport,
                         ::testing::ValuesIn(pxkreliability::exportsUnderTest()),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });

}  // namespace
