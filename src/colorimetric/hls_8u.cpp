// RGB <-> HLS, 8-bit, interleaved: the main loop over groups of 8 pixels (C3) or 4
// (AC4) with unrefined reciprocals, the scalar tail with refined ones. Steps are not
// tested; AC4 destinations keep their alpha bytes.
#include "pxkcc.h"

#include "colorimetric/hls_forms.h"
#include "colorimetric/packed_members.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_PACKED_C3_AC4_MEMBERS(pxkiRGBToHLS_8u, RgbToHls8uBlock, RgbToHls8uTail, 8, 4)
PXK_PACKED_C3_AC4_MEMBERS(pxkiHLSToRGB_8u, HlsToRgb8uBlock, HlsToRgb8uTail, 8, 4)

}  // extern "C"
