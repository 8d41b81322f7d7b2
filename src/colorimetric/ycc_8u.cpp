// RGB <-> YCC, 8-bit, interleaved: vector blocks over the columns below
// width - width % 8 (C3) or width - width % 4 (AC4) in 16-bit words, the tail in 32-bit
// integers. Steps are not tested; AC4 destinations keep their alpha bytes.
#include "pxkcc.h"

#include "colorimetric/ycc_forms.h"
#include "colorimetric/packed_members.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_PACKED_C3_AC4_MEMBERS(pxkiRGBToYCC_8u, RgbToYcc8uBlock, RgbToYcc8uTail, 8, 4)
PXK_PACKED_C3_AC4_MEMBERS(pxkiYCCToRGB_8u, YccToRgb8uBlock, YccToRgb8uTail, 8, 4)

}  // extern "C"
