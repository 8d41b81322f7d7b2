#include "shape_lookup.h"

#include "export_name_grammar.h"

namespace pxkcross {

const char* const kShapeTableFile = "apps/call_shapes/call_shapes_table.cpp";

std::optional<CallShape> callShapeFor(const std::string& exportName, std::string* error) {
    const NameReading reading = readExportName(exportName);
    for (const ShapeRow& row : callShapeRows()) {
        if (exportName != row.exportName) continue;
        std::string why;
        std::optional<CallShape> shape =
            shapeFromRow(row.arguments, reading.tokensRead ? &reading.shape : nullptr, &why);
        if (!shape && error) *error = exportName + ": its row in " + kShapeTableFile + " does not read: " + why;
        return shape;
    }
    if (reading.tokensRead && reading.incomplete.empty()) return reading.shape;
    if (error) {
        const std::string why = reading.tokensRead ? reading.incomplete : reading.error;
        *error = exportName + ": no call shape (" + why + "); add its row to " + kShapeTableFile;
    }
    return std::nullopt;
}

}  // namespace pxkcross
