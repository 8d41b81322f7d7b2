// What the reliability tests share: the exports of the list (all but the version
// query), each with its call shape, its address in the library this test links, and
// a small sweep of region sizes that reaches every vector block and tail length.
#ifndef PXKCC_TESTS_RELIABILITY_EVERY_EXPORT_H
#define PXKCC_TESTS_RELIABILITY_EVERY_EXPORT_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "abi_call.h"
#include "call_memory.h"
#include "call_shape.h"

namespace pxkreliability {

// The names of the export list but the version query, in the list's order.
std::vector<std::string> exportsUnderTest();

// An export ready to call: its shape and its address in the library under test.
struct CallableExport {
    pxkcross::CallShape shape;
    const void* function = nullptr;
};
// The export `name`, or nothing (and why, in `error`) if it has no shape or is not
// exported by the library.
std::optional<CallableExport> callableExport(const std::string& name, std::string* error);

// Sizes to call each export at: widths 1 to 40, 67 and 301, with heights 1 to 3 and 8
// spread over them, so that every block and tail length meets odd and even heights.
std::vector<pxkcross::SweepPoint> reliabilityPoints();

// The seed of an export's call at a point.
uint32_t seedOf(const std::string& name, const pxkcross::SweepPoint& point);

// Calls `function` with the arguments of `memory`; false (with a message in `error`)
// if the call cannot be made.
bool callOnce(const void* function, pxkcross::CallMemory& memory, int32_t* status, std::string* error);

}  // namespace pxkreliability

#endif
