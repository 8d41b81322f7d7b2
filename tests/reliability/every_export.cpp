#include "every_export.h"

#include "loaded_library.h"
#include "random.h"
#include "shape_lookup.h"
#include "text_lines.h"

namespace pxkreliability {

std::vector<std::string> exportsUnderTest() {
    std::vector<std::string> names;
    for (const std::string& name : pxktest::readNonEmptyLines(PXKCC_EXPORT_LIST_FILE)) {
        if (name != "pxkccGetLibVersion") names.push_back(name);
    }
    return names;
}

std::optional<CallableExport> callableExport(const std::string& name, std::string* error) {
    static const pxkcross::LoadedLibrary library(PXKCC_LIBRARY_FILE);
    std::optional<pxkcross::CallShape> shape = pxkcross::callShapeFor(name, error);
    if (!shape) return std::nullopt;
    const void* function = library.symbol(name);
    if (function == nullptr) {
        *error = name + " is not exported by " + library.path() + (library.loaded() ? "" : ": " + library.error());
        return std::nullopt;
    }
    return CallableExport{*shape, function};
}

std::vector<pxkcross::SweepPoint> reliabilityPoints() {
    std::vector<int> widths;
    for (int w = 1; w <= 40; ++w) widths.push_back(w);
    widths.push_back(67);
    widths.push_back(301);
    const int heights[] = {1, 2, 3, 8};
    std::vector<pxkcross::SweepPoint> points;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        pxkcross::SweepPoint p;
        p.width = widths[i];
        p.height = heights[i % 4];
        p.index = static_cast<unsigned>(i);
        points.push_back(p);
    }
    return points;
}

uint32_t seedOf(const std::string& name, const pxkcross::SweepPoint& point) {
    return pxktest::seedFor(name.c_str(), {static_cast<uint32_t>(point.width), static_cast<uint32_t>(point.height),
                                           0x5AFEu});
}

bool callOnce(const void* function, pxkcross::CallMemory& memory, int32_t* status, std::string* error) {
    return pxkcross::callWithArguments(function, memory.arguments(), status, error);
}

}  // namespace pxkreliability
