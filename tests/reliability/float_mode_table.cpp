#include "float_mode_table.h"

namespace pxkreliability {

const std::vector<std::string>& floatModeTableEntries() {
    static const std::vector<std::string> entries = {
        // 4:2:0 into Y and interleaved chroma planes: the chroma is computed in single
        // precision, then truncated.
        "pxkiBGRToYCbCr420_8u_C3P2R",
        "pxkiBGRToYCbCr420_8u_AC4P2R",
        "pxkiRGBToYCbCr420_8u_C3P2R",
        "pxkiRGBToYCbCr420_8u_C4P2R",
        // v210: the matrix works in single precision.
        "pxkiYUV422v210To*",
    };
    return entries;
}

bool entryMatches(const std::string& entry, const std::string& name) {
    if (!entry.empty() && entry.back() == '*') return name.compare(0, entry.size() - 1, entry, 0, entry.size() - 1) == 0;
    return entry == name;
}

bool followsCallerFloatModes(const std::string& name) {
    for (const std::string& entry : floatModeTableEntries()) {
        if (entryMatches(entry, name)) return true;
    }
    return false;
}

}  // namespace pxkreliability
