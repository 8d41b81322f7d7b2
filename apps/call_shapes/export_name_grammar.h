// Reading an export's argument list off its name:
//
//   pxki <operation> [_<modifier>]... _<type> _<layout> [_L]
//
// The type token gives the sample types (one, or source then destination), the layout
// token the sides (C1 C2 C3 C4 AC4 packed; P2 P3 P4 AP4 planar; one token for both
// sides, or source then destination; a leading or trailing I for in place) and whether
// the export takes steps (a final R). The operation gives the sampling of each side
// (420, 422, 411, 1620), which decides whether a planar side takes one step or one a
// plane, and the width of its chroma planes.
//
// Some families take arguments that the name does not tell (a matrix, a value range,
// dither settings, a Bayer grid, buffers, 64-bit sizes, ...). For those the grammar
// still reads the sides, but says that the list is incomplete: such an export needs a
// row in call_shapes_table.cpp.
#ifndef PXKCC_CALL_SHAPES_EXPORT_NAME_GRAMMAR_H
#define PXKCC_CALL_SHAPES_EXPORT_NAME_GRAMMAR_H

#include <string>

#include "call_shape.h"

namespace pxkcross {

struct NameReading {
    // The type and layout tokens were read: `shape` holds the images and the
    // arguments that the name gives.
    bool tokensRead = false;
    CallShape shape;
    // Why the name alone does not give the whole argument list; empty when it does.
    std::string incomplete;
    // Why the tokens could not be read (tokensRead false).
    std::string error;
};

NameReading readExportName(const std::string& name);

}  // namespace pxkcross

#endif
