// Accesses outside the region that exports document: at a given height (or at every
// height), some planes of some images are read or written for rows more than the
// region has, after its last row or before its first, and nothing else. The tests and the fuzz target that lay buffers out exactly give those planes
// the rows; the front ends give them room, so that no call reaches past a caller's
// image.
#ifndef PXKCC_CALL_SHAPES_GUARD_ALLOWANCES_H
#define PXKCC_CALL_SHAPES_GUARD_ALLOWANCES_H

#include <string>
#include <vector>

namespace pxkcross {

// Plane `plane` of image `image` (in the call shape's order) may be touched for
// `rowsAfter` rows past its last row and `rowsBefore` rows before its row 0 (rows -1,
// -2, ... counted by its step from the pointer passed).
struct PlaneAllowance {
    int image;
    int plane;
    int rowsAfter;
    int rowsBefore = 0;
};

// The planes that the export `name` may touch outside their rows at this height (or
// at every height).
std::vector<PlaneAllowance> guardAllowancesFor(const std::string& name, int height);

}  // namespace pxkcross

#endif
