// RGB <-> XYZ on 16-bit and float samples, interleaved: groups of four pixels, then
// width & 3 single pixels, by the same float form. Steps lose their low bit (16-bit) or
// two low bits (float) and are not tested; AC4 destinations keep their fourth sample.
#include "pxkcc.h"

#include "colorimetric/sample_rows.h"
#include "colorimetric/xyz_float_forms.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_SAMPLE_CONVERSION_PAIR(pxkiRGBToXYZ, pxkiXYZToRGB, RgbToXyz16, RgbToXyz16, XyzToRgb16, XyzToRgb16, RgbToXyz32f,
                           XyzToRgb32f)

}  // extern "C"
