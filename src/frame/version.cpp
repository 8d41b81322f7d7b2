// The library's constant version record. Every field but the target's code and name
// is the same in both builds.
#include "pxkcc.h"

namespace {

#if defined(PXKCC_TARGET_AVX2)
// The avx2 build names its own target.
#define PXK_TARGET_CODE {'a', '2', '\0', '\0'}
#define PXK_TARGET_NAME "pxkCC AVX2 (a2)"
#else
#define PXK_TARGET_CODE {'s', '2', '\0', '\0'}
#define PXK_TARGET_NAME "pxkCC SSE2 (s2)"
#endif

constexpr PxkVersionRecord kVersionRecord = {
    2021,                    // major
    8,                       // minor
    0,                       // majorBuild
    0xBA45569Bu,             // build
    PXK_TARGET_CODE,         // targetCode
    PXK_TARGET_NAME,         // name
    "2021.8 (r0xba45569b)",  // version: major.minor and the build number
    "Feb 17 2023",           // buildDate
};

}  // namespace

extern "C" const PxkVersionRecord* pxkccGetLibVersion(void) { return &kVersionRecord; }
