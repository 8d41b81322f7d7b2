// Our exports, one row each: name, source layout, destination layout, source
// content, adapter. A new export is one more line here.
#include "cases.h"

namespace bench {

#define PXK_ROW(fn, src, dst, content, shape) \
    Case { #fn, Layout::src, Layout::dst, Content::content, shape<fn>, {}, {} }

std::vector<Case> ourCases() {
    return {
        // RGB -> studio-range YCbCr, full resolution
        PXK_ROW(pxkiRGBToYCbCr_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToYCbCr_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToYCbCr_8u_C3P3R, C3, P3, Rgb, packedToPlanar),
        PXK_ROW(pxkiRGBToYCbCr_8u_AC4P3R, AC4, P3, Rgb, packedToPlanar),
        PXK_ROW(pxkiRGBToYCbCr_8u_P3R, P3, P3, Rgb, planarToPlanar),
        // studio-range YCbCr -> RGB / BGR, full resolution
        PXK_ROW(pxkiYCbCrToRGB_8u_C3R, C3, C3, YCbCr, packedToPacked),
        PXK_ROW(pxkiYCbCrToRGB_8u_AC4R, AC4, AC4, YCbCr, packedToPacked),
        PXK_ROW(pxkiYCbCrToRGB_8u_P3R, P3, P3, YCbCr, planarToPlanar),
        PXK_ROW(pxkiYCbCrToRGB_8u_P3C3R, P3, C3, YCbCr, planarToPacked),
        PXK_ROW(pxkiYCbCrToRGB_8u_P3C4R, P3, C4, YCbCr, planarToPackedAlpha),
        PXK_ROW(pxkiYCbCrToBGR_8u_P3C3R, P3, C3, YCbCr, planarToPacked),
        PXK_ROW(pxkiYCbCrToBGR_8u_P3C4R, P3, C4, YCbCr, planarToPackedAlpha),
    };
}

#undef PXK_ROW

}  // namespace bench
