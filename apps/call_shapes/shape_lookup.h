// The call shape of an export: its row in the table (call_shapes_table.cpp) if it has
// one, else what its name gives.
#ifndef PXKCC_CALL_SHAPES_SHAPE_LOOKUP_H
#define PXKCC_CALL_SHAPES_SHAPE_LOOKUP_H

#include <optional>
#include <string>
#include <vector>

#include "call_shape.h"

namespace pxkcross {

// One line of the table: an export and its arguments in the words of call_shape.h.
struct ShapeRow {
    const char* exportName;
    const char* arguments;
};

// The table, in call_shapes_table.cpp.
const std::vector<ShapeRow>& callShapeRows();

// Where a missing row goes, for messages.
extern const char* const kShapeTableFile;

// The shape of `exportName`. When neither a row nor the name gives one, returns
// nothing and sets `error` to a message that names the export, says why, and says
// where to add its row.
std::optional<CallShape> callShapeFor(const std::string& exportName, std::string* error);

}  // namespace pxkcross

#endif
