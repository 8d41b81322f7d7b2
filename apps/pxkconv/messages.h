// pxkconv's exit codes, its failures, and the library's statuses by name.
#ifndef PXKCC_APPS_PXKCONV_MESSAGES_H
#define PXKCC_APPS_PXKCONV_MESSAGES_H

#include <cstdint>
#include <string>

namespace pxkconv {

// One code for each kind of fault, so that scripts can tell them apart.
enum ExitCode : int {
    kExitOk = 0,
    kExitUsage = 1,             // bad or missing options and arguments
    kExitUnknownFormat = 2,     // a file format or layout name that pxkconv does not know
    kExitCannotOpen = 3,        // a file that cannot be opened, read or written
    kExitWrongSize = 4,         // a raw file that is not a whole number of frames of --size
    kExitDamaged = 5,           // a truncated or damaged file
    kExitOddSize = 6,           // a size that the sampling of a side cannot hold
    kExitUnsupported = 7,       // no export converts between the two formats with these options
    kExitLibraryStatus = 8,     // the library returned an error status
    kExitInternal = 9,          // a call that could not be made (a missing export or call shape)
};

// A fault: the message for stderr and the exit code.
struct Failure {
    int code = kExitOk;
    std::string message;
    explicit operator bool() const { return code != kExitOk; }
};

inline Failure fault(int code, const std::string& message) { return Failure{code, message}; }

// The name of a status of the library ("pxkErrSize"), or "unknown status N".
std::string statusName(int32_t status);
// "pxkErrSize (-6): width or height below the function's minimum".
std::string statusText(int32_t status);

}  // namespace pxkconv

#endif
