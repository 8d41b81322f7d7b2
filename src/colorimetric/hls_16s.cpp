// RGB <-> HLS, 16s (16u samples shifted by 32768), interleaved: main loops of four
// pixels, tails of width % 4 pixels; byte steps halved. HLS to RGB rounds in the C3
// main loop and truncates after adding 0.499989986 in the AC4 main loop and in the
// tails. AC4 destinations keep their fourth samples unwritten.
#include "pxkcc.h"

#include "colorimetric/hls_wide_forms.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_WIDE_C3_AC4_MEMBERS(pxkiRGBToHLS_16s, int16_t, RgbToHls16<int16_t>, RgbToHls16<int16_t>)
PXK_WIDE_C3_AC4_MEMBERS(pxkiHLSToRGB_16s, int16_t, HlsToRgb16sC3, HlsToRgb16sAC4)

}  // extern "C"
