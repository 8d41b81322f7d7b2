// RGB <-> YCC on 16-bit and float samples, interleaved: groups of four pixels, then
// width & 3 single pixels. The float members use one form in every column; the 16-bit
// members round their groups by the current mode and truncate a folded form in the
// tail. Steps lose their low bit (16-bit) or two low bits (float) and are not tested;
// AC4 destinations keep their fourth sample.
#include "pxkcc.h"

#include "colorimetric/sample_rows.h"
#include "colorimetric/ycc_float_forms.h"

using namespace pxk::colorimetric;

extern "C" {

PXK_SAMPLE_CONVERSION_PAIR(pxkiRGBToYCC, pxkiYCCToRGB, RgbToYcc16Block, RgbToYcc16Tail, YccToRgb16Block,
                           YccToRgb16Tail, RgbToYcc32f, YccToRgb32f)

}  // extern "C"
