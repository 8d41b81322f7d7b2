// RGB <-> XYZ, 8-bit, interleaved: the main loop over groups of 8 pixels (C3) or 4
// (AC4) with the 16-bit tables, the tail with the tables of 65536ths. Steps are not
// tested; AC4 destinations keep their alpha bytes.
#include "pxkcc.h"

#include "colorimetric/xyz_forms.h"
#include "colorimetric/packed_members.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_PACKED_C3_AC4_MEMBERS(pxkiRGBToXYZ_8u, RgbToXyz8uBlock, RgbToXyz8uTail, 8, 4)
PXK_PACKED_C3_AC4_MEMBERS(pxkiXYZToRGB_8u, XyzToRgb8uBlock, XyzToRgb8uTail, 8, 4)

}  // extern "C"
