// RGB <-> HSV, 16u, interleaved: RGB to HSV by one formula with true divisions for
// every pixel; HSV to RGB with main loops of four pixels and tails of width % 4 pixels
// by the same arithmetic. Byte steps halved. AC4 destinations keep their fourth
// samples unwritten.
#include "pxkcc.h"

#include "colorimetric/hsv_wide_forms.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_WIDE_C3_AC4_MEMBERS(pxkiRGBToHSV_16u, uint16_t, RgbToHsv16u, RgbToHsv16u)
PXK_WIDE_C3_AC4_MEMBERS(pxkiHSVToRGB_16u, uint16_t, HsvToRgb16u, HsvToRgb16u)

}  // extern "C"
