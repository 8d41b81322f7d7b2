// RGB <-> HSV, 8-bit, interleaved: vector blocks over the columns below
// width - width % 4, the scalar tail for the rest, by the same arithmetic (the
// reciprocal unrefined in both). Steps are not tested; AC4 destinations keep their
// alpha bytes.
#include "pxkcc.h"

#include "colorimetric/hsv_forms.h"
#include "colorimetric/packed_members.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_PACKED_C3_AC4_MEMBERS(pxkiRGBToHSV_8u, RgbToHsv8uBlock, RgbToHsv8uTail, 4, 4)
PXK_PACKED_C3_AC4_MEMBERS(pxkiHSVToRGB_8u, HsvToRgb8uBlock, HsvToRgb8uTail, 4, 4)

}  // extern "C"
