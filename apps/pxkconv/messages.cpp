#include "messages.h"

#include "pxkcc.h"

namespace pxkconv {

namespace {

struct StatusName {
    int32_t value;
    const char* name;
    const char* meaning;
};

// The statuses of the public header, with what each reports.
constexpr StatusName kStatuses[] = {
    {pxkOk, "pxkOk", "success"},
    {pxkWarnNegativeImage, "pxkWarnNegativeImage", "the source has no positive level; nothing was written"},
    {pxkWarnOddSize, "pxkWarnOddSize", "an odd last row, column or group was left out"},
    {pxkErrBadArg, "pxkErrBadArg", "an enumerated argument out of its set"},
    {pxkErrSize, "pxkErrSize", "width or height below the function's minimum"},
    {pxkErrNullPtr, "pxkErrNullPtr", "a null pointer or plane entry"},
    {pxkErrContext, "pxkErrContext", "a noise state without its identifying tag"},
    {pxkErrStep, "pxkErrStep", "a step below 1"},
    {pxkErrChannels, "pxkErrChannels", "a channel count outside its set"},
    {pxkErrRange, "pxkErrRange", "a value range whose upper bound does not exceed its lower bound"},
    {pxkErrDitherLevels, "pxkErrDitherLevels", "a level count out of range"},
    {pxkErrNoiseRange, "pxkErrNoiseRange", "a noise amount out of range"},
    {pxkErrDitherType, "pxkErrDitherType", "a dither mode out of its set"},
};

}  // namespace

std::string statusName(int32_t status) {
    for (const StatusName& s : kStatuses) {
        if (s.value == status) return s.name;
    }
    return "unknown status " + std::to_string(status);
}

std::string statusText(int32_t status) {
    for (const StatusName& s : kStatuses) {
        if (s.value == status) return std::string(s.name) + " (" + std::to_string(status) + "): " + s.meaning;
    }
    return statusName(status);
}

}  // namespace pxkconv
