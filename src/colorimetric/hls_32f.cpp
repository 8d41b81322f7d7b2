// RGB <-> HLS, 32f, interleaved: RGB to HLS by one formula with true divisions for
// every pixel; HLS to RGB with main loops of four pixels and tails of width % 4 pixels.
// Byte steps quartered; inputs are not clamped. AC4 destinations keep their fourth
// samples unwritten.
#include "pxkcc.h"

#include "colorimetric/hls_wide_forms.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_WIDE_C3_AC4_MEMBERS(pxkiRGBToHLS_32f, float, RgbToHls32f, RgbToHls32f)
PXK_WIDE_C3_AC4_MEMBERS(pxkiHLSToRGB_32f, float, HlsToRgb32f, HlsToRgb32f)

}  // extern "C"
