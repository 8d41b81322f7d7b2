// The library's constant version record.
#include "pxkcc.h"

namespace {

constexpr PxkVersionRecord kVersionRecord = {
    2021,                    // major
    8,                       // minor
    0,                       // majorBuild
    0xBA45569Bu,             // build
    {'s', '2', '\0', '\0'},  // targetCode
    "pxkCC SSE2 (s2)",       // name
    "2021.8 (r0xba45569b)",  // version: major.minor and the build number
    "Feb 17 2023",           // buildDate
};

}  // namespace

extern "C" const PxkVersionRecord* pxkccGetLibVersion(void) { return &kVersionRecord; }
