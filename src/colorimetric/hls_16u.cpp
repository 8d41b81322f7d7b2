// RGB <-> HLS, 16u, interleaved: main loops of four pixels with unrefined reciprocals
// (RGB to HLS), tails of width % 4 pixels; byte steps halved. AC4 destinations keep
// their fourth samples unwritten.
#include "pxkcc.h"

#include "colorimetric/hls_wide_forms.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_WIDE_C3_AC4_MEMBERS(pxkiRGBToHLS_16u, uint16_t, RgbToHls16<uint16_t>, RgbToHls16<uint16_t>)
PXK_WIDE_C3_AC4_MEMBERS(pxkiHLSToRGB_16u, uint16_t, HlsToRgb16u, HlsToRgb16u)

}  // extern "C"
