// Our exports, one row each: name, source layout, destination layout, source
// content, adapter. A new export is one more line here.
#include "cases.h"

#include "export_shapes.h"

namespace bench {

// The address comes from the build being measured; its type comes from the export's
// declaration in pxkcc.h, so a row whose adapter does not fit the export's signature
// does not compile.
#define PXK_ROW(fn, src, dst, content, shape)                                            \
    Export {                                                                              \
        #fn, Layout::src, Layout::dst, Content::content, [](void* address) -> Convert {  \
            const auto f = reinterpret_cast<decltype(&fn)>(address);                     \
            return [f](const Image& s, Image& d) { return shapes::shape(f, s, d); };     \
        }                                                                                 \
    }

const std::vector<Export>& ourExports() {
    static const std::vector<Export> table = {
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
        // RGB <-> full-range YUV, full resolution
        PXK_ROW(pxkiRGBToYUV_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToYUV_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToYUV_8u_C3P3R, C3, P3, Rgb, packedToPlanar),
        PXK_ROW(pxkiRGBToYUV_8u_AC4P4R, AC4, P4, Rgb, packedToPlanar4),
        PXK_ROW(pxkiRGBToYUV_8u_P3R, P3, P3, Rgb, planarToPlanar),
        PXK_ROW(pxkiYUVToRGB_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiYUVToRGB_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        PXK_ROW(pxkiYUVToRGB_8u_C3C4R, C3, C4, Rgb, packedToPackedAlpha),
        PXK_ROW(pxkiYUVToRGB_8u_P3C3R, P3, C3, Rgb, planarToPacked),
        PXK_ROW(pxkiYUVToRGB_8u_P3R, P3, P3, Rgb, planarToPlanar),
        // RGB / BGR -> studio-range YCbCr 4:2:0, 4:1:1, 4:2:2
        PXK_ROW(pxkiBGRToYCbCr420_8u_C3P3R, C3, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCbCr420_8u_AC4P3R, AC4, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCrCb420_8u_C3P3R, C3, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCrCb420_8u_AC4P3R, AC4, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiRGBToYCrCb420_8u_AC4P3R, AC4, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiRGBToYCbCr420_8u_C3P3R, C3, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCbCr411_8u_C3P3R, C3, P411, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCbCr411_8u_AC4P3R, AC4, P411, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCbCr422_8u_C3P3R, C3, P422, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCbCr422_8u_AC4P3R, AC4, P422, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCbCr422_8u_C3C2R, C3, C2, Rgb, packedToPacked),
        PXK_ROW(pxkiBGRToYCbCr422_8u_AC4C2R, AC4, C2, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToYCbCr422_8u_C3P3R, C3, P422, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiRGBToYCbCr422_8u_C3C2R, C3, C2, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToYCrCb422_8u_C3C2R, C3, C2, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToYCbCr422_8u_P3C2R, P3, C2, Rgb, planarToPacked),
        PXK_ROW(pxkiRGBToYCrCb422_8u_P3C2R, P3, C2, Rgb, planarToPacked),
        PXK_ROW(pxkiBGRToYCbCr420_8u_C3P2R, C3, P420, Rgb, packedToTwoPlanes),
        PXK_ROW(pxkiBGRToYCbCr420_8u_AC4P2R, AC4, P420, Rgb, packedToTwoPlanes),
        PXK_ROW(pxkiRGBToYCbCr420_8u_C3P2R, C3, P420, Rgb, packedToTwoPlanes),
        PXK_ROW(pxkiRGBToYCbCr420_8u_C4P2R, AC4, P420, Rgb, packedToTwoPlanes),
        // RGB / BGR -> full-range YUV 4:2:0 and 4:2:2 (the forms without steps need tight
        // rows: run them at a width whose rows need no padding, such as 1920)
        PXK_ROW(pxkiBGRToYUV420_8u_AC4P3R, AC4, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiRGBToYUV420_8u_C3P3R, C3, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiRGBToYUV420_8u_C3P3, C3, P420, Rgb, packedToPlanarTight),
        PXK_ROW(pxkiRGBToYUV420_8u_P3R, P3, P420, Rgb, planarToPlanarSteps),
        PXK_ROW(pxkiRGBToYUV420_8u_P3, P3, P420, Rgb, planarToPlanarTight),
        PXK_ROW(pxkiRGBToYUV422_8u_C3C2R, C3, C2, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToYUV422_8u_C3P3R, C3, P422, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiRGBToYUV422_8u_C3P3, C3, P422, Rgb, packedToPlanarTight),
        PXK_ROW(pxkiRGBToYUV422_8u_P3R, P3, P422, Rgb, planarToPlanarSteps),
        PXK_ROW(pxkiRGBToYUV422_8u_P3, P3, P422, Rgb, planarToPlanarTight),
        // studio-range YCbCr 4:2:0, 4:2:2, 4:1:1 -> RGB / BGR
        PXK_ROW(pxkiYCbCr420ToBGR_8u_P2C3R, P2, C3, YCbCr, twoPlanesToPacked),
        PXK_ROW(pxkiYCbCr420ToBGR_8u_P2C4R, P2, C4, YCbCr, twoPlanesToPackedAlpha),
        PXK_ROW(pxkiYCbCr420ToRGB_8u_P2C3R, P2, C3, YCbCr, twoPlanesToPacked),
        PXK_ROW(pxkiYCbCr420ToRGB_8u_P2C4R, P2, C4, YCbCr, twoPlanesToPackedAlpha),
        PXK_ROW(pxkiYCrCb420ToBGR_8u_P2C3R, P2, C3, YCbCr, twoPlanesToPacked),
        PXK_ROW(pxkiYCrCb420ToBGR_8u_P2C4R, P2, C4, YCbCr, twoPlanesToPackedAlpha),
        PXK_ROW(pxkiYCrCb420ToRGB_8u_P2C3R, P2, C3, YCbCr, twoPlanesToPacked),
        PXK_ROW(pxkiYCrCb420ToRGB_8u_P2C4R, P2, C4, YCbCr, twoPlanesToPackedAlpha),
        PXK_ROW(pxkiYCbCr420ToBGR_8u_P3C3R, P420, C3, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCbCr420ToBGR_8u_P3C4R, P420, C4, YCbCr, planarStepsToPackedAlpha),
        PXK_ROW(pxkiYCbCr420ToRGB_8u_P3C3R, P420, C3, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCrCb420ToRGB_8u_P3C4R, P420, C4, YCbCr, planarStepsToPackedAlpha),
        PXK_ROW(pxkiYCrCb420ToBGR_Filter_8u_P3C4R, P420, C4, YCbCr, planarStepsToPackedAlpha),
        PXK_ROW(pxkiYCbCr422ToBGR_8u_C2C3R, C2, C3, YCbCr, packedToPacked),
        PXK_ROW(pxkiYCbCr422ToBGR_8u_C2C4R, C2, C4, YCbCr, packedToPackedAlpha),
        PXK_ROW(pxkiYCbCr422ToRGB_8u_C2C3R, C2, C3, YCbCr, packedToPacked),
        PXK_ROW(pxkiYCbCr422ToRGB_8u_C2C4R, C2, C4, YCbCr, packedToPackedAlpha),
        PXK_ROW(pxkiYCrCb422ToBGR_8u_C2C3R, C2, C3, YCbCr, packedToPacked),
        PXK_ROW(pxkiYCrCb422ToBGR_8u_C2C4R, C2, C4, YCbCr, packedToPackedAlpha),
        PXK_ROW(pxkiYCrCb422ToRGB_8u_C2C3R, C2, C3, YCbCr, packedToPacked),
        PXK_ROW(pxkiYCrCb422ToRGB_8u_C2C4R, C2, C4, YCbCr, packedToPackedAlpha),
        PXK_ROW(pxkiYCbCr422ToRGB_8u_C2P3R, C2, P3, YCbCr, packedToPlanar),
        PXK_ROW(pxkiYCrCb422ToRGB_8u_C2P3R, C2, P3, YCbCr, packedToPlanar),
        PXK_ROW(pxkiYCbCr422ToBGR_8u_P3C3R, P422, C3, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCbCr422ToRGB_8u_P3C3R, P422, C3, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCbCr411ToBGR_8u_P3C3R, P411, C3, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCbCr411ToBGR_8u_P3C4R, P411, C4, YCbCr, planarStepsToPackedAlpha),
        // full-range YUV 4:2:0 and 4:2:2 -> RGB / BGR (forms without steps: tight rows)
        PXK_ROW(pxkiYUV420ToRGB_8u_P3R, P420, P3, Rgb, planarStepsToPlanar),
        PXK_ROW(pxkiYUV420ToRGB_8u_P3, P420, P3, Rgb, planarToPlanarTight),
        PXK_ROW(pxkiYUV420ToRGB_8u_P3C3R, P420, C3, Rgb, planarStepsToPacked),
        PXK_ROW(pxkiYUV420ToRGB_8u_P3C3, P420, C3, Rgb, planarToPackedTight),
        PXK_ROW(pxkiYUV420ToBGR_8u_P3C3R, P420, C3, Rgb, planarStepsToPacked),
        PXK_ROW(pxkiYUV420ToRGB_8u_P3AC4R, P420, AC4, Rgb, planarStepsToPacked),
        PXK_ROW(pxkiYUV422ToRGB_8u_P3AC4R, P422, AC4, Rgb, planarStepsToPacked),
        PXK_ROW(pxkiYUV422ToRGB_8u_C2C3R, C2, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiYUV422ToRGB_8u_P3C3R, P422, C3, Rgb, planarStepsToPacked),
        PXK_ROW(pxkiYUV422ToRGB_8u_P3C3, P422, C3, Rgb, planarToPackedTight),
        PXK_ROW(pxkiYUV422ToRGB_8u_P3R, P422, P3, Rgb, planarStepsToPlanar),
        PXK_ROW(pxkiYUV422ToRGB_8u_P3, P422, P3, Rgb, planarToPlanarTight),
        // High-definition matrices, CbYCr422 (C2 here holds Cb Y0 Cr Y1), v210
        PXK_ROW(pxkiBGRToYCbCr420_709CSC_8u_C3P3R, C3, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCbCr420_709CSC_8u_AC4P3R, AC4, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCrCb420_709CSC_8u_C3P3R, C3, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCrCb420_709CSC_8u_AC4P3R, AC4, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCbCr420_709HDTV_8u_AC4P3R, AC4, P420, Rgb, packedToPlanarSteps),
        PXK_ROW(pxkiBGRToYCbCr420_709CSC_8u_C3P2R, C3, P420, Rgb, packedToTwoPlanes),
        PXK_ROW(pxkiBGRToYCbCr420_709CSC_8u_AC4P2R, AC4, P420, Rgb, packedToTwoPlanes),
        PXK_ROW(pxkiYCbCr420ToBGR_709CSC_8u_P3C3R, P420, C3, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCbCr420ToBGR_709HDTV_8u_P3C4R, P420, C4, YCbCr, planarStepsToPackedAlpha),
        PXK_ROW(pxkiYCbCrToBGR_709CSC_8u_P3C3R, P3, C3, YCbCr, planarToPacked),
        PXK_ROW(pxkiYCbCrToBGR_709CSC_8u_P3C4R, P3, C4, YCbCr, planarToPackedAlpha),
        PXK_ROW(pxkiBGRToCbYCr422_709HDTV_8u_C3C2R, C3, C2, Rgb, packedToPacked),
        PXK_ROW(pxkiBGRToCbYCr422_709HDTV_8u_AC4C2R, AC4, C2, Rgb, packedToPacked),
        PXK_ROW(pxkiBGRToCbYCr422_8u_AC4C2R, AC4, C2, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToCbYCr422_8u_C3C2R, C3, C2, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToCbYCr422Gamma_8u_C3C2R, C3, C2, Rgb, packedToPacked),
        PXK_ROW(pxkiCbYCr422ToBGR_709HDTV_8u_C2C3R, C2, C3, YCbCr, packedToPacked),
        PXK_ROW(pxkiCbYCr422ToBGR_709HDTV_8u_C2C4R, C2, C4, YCbCr, packedToPackedAlpha),
        PXK_ROW(pxkiCbYCr422ToBGR_8u_C2C4R, C2, C4, YCbCr, packedToPackedAlpha),
        PXK_ROW(pxkiCbYCr422ToRGB_8u_C2C3R, C2, C3, YCbCr, packedToPacked),
        PXK_ROW(pxkiYUV422v210ToBGR_709HDTV_32u16u_C3, V210, W16, Rgb, wordsToWords),
        PXK_ROW(pxkiYUV422v210ToRGB_709HDTV_32u16u_C3, V210, W16, Rgb, wordsToWords),
        PXK_ROW(pxkiYUV422v210ToGray_709HDTV_32u16u_C3C1, V210, W16, Rgb, wordsToWords),
        // Bayer demosaicing
        PXK_ROW(pxkiCFAToRGB_8u_C1C3R, C1, C3, Rgb, mosaicToPacked),
        PXK_ROW(pxkiCFAToRGB_16u_C1C3R, W16, C3W16, Rgb, mosaicToPacked),
        PXK_ROW(pxkiDemosaicAHD_8u_C1C3R, C1, C3, Rgb, mosaicToPackedWithBuffer),
        PXK_ROW(pxkiDemosaicAHD_16u_C1C3R, W16, C3W16, Rgb, mosaicToPackedWithBuffer),
        PXK_ROW(pxkiCFAToBGRA_VNG_8u_C1C4R, C1, AC4, Rgb, mosaicToPackedScaled),
        PXK_ROW(pxkiCFAToBGRA_VNG_8u_C1C4R_L, C1, AC4, Rgb, mosaicToPackedScaled),
        PXK_ROW(pxkiCFAToBGRA_VNG_16u_C1C4R, W16, C4W16, Rgb, mosaicToPackedScaled),
        PXK_ROW(pxkiCFAToBGRA_VNG_16u_C1C4R_L, W16, C4W16, Rgb, mosaicToPackedScaled),
        // lossless YCoCg, tone mapping, 12-bit packing
        PXK_ROW(pxkiBGRToYCoCg_8u16s_C3P3R, C3, P3W16, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiBGRToYCoCg_8u16s_C4P3R, C4, P3W16, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiBGRToYCoCg_Rev_8u16s_C3P3R, C3, P3W16, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiBGRToYCoCg_Rev_8u16s_C4P3R, C4, P3W16, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiRGBToYCoCg_8u_C3P3R, C3, P3, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiSBGRToYCoCg_16s32s_C3P3R, C3W16, P3W32, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiSBGRToYCoCg_16s32s_C4P3R, C4W16, P3W32, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiSBGRToYCoCg_16s_C3P3R, C3W16, P3W16, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiSBGRToYCoCg_16s_C4P3R, C4W16, P3W16, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiSBGRToYCoCg_Rev_16s32s_C3P3R, C3W16, P3W32, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiSBGRToYCoCg_Rev_16s32s_C4P3R, C4W16, P3W32, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiSBGRToYCoCg_Rev_16s_C3P3R, C3W16, P3W16, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiSBGRToYCoCg_Rev_16s_C4P3R, C4W16, P3W16, Rgb, packedToPlanarTyped),
        PXK_ROW(pxkiYCoCgToBGR_16s8u_P3C3R, P3W16, C3, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToBGR_16s8u_P3C4R, P3W16, C4, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToBGR_Rev_16s8u_P3C3R, P3W16, C3, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToBGR_Rev_16s8u_P3C4R, P3W16, C4, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToRGB_8u_P3C3R, P3, C3, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToSBGR_16s_P3C3R, P3W16, C3W16, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToSBGR_16s_P3C4R, P3W16, C4W16, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToSBGR_32s16s_P3C3R, P3W32, C3W16, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToSBGR_32s16s_P3C4R, P3W32, C4W16, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToSBGR_Rev_16s_P3C3R, P3W16, C3W16, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToSBGR_Rev_16s_P3C4R, P3W16, C4W16, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToSBGR_Rev_32s16s_P3C3R, P3W32, C3W16, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiYCoCgToSBGR_Rev_32s16s_P3C4R, P3W32, C4W16, Rgb, planarToPackedTyped),
        PXK_ROW(pxkiToneMapLinear_32f8u_C1R, F32, C1, Light, rowsWidthHeight),
        PXK_ROW(pxkiToneMapMean_32f8u_C1R, F32, C1, Light, rowsWidthHeight),
        PXK_ROW(pxkiPack_16u12u_C1R, W16, B12, Rgb, rowsWidthHeight),
        PXK_ROW(pxkiUnpack_12u16u_C1R, B12, W16, Rgb, rowsWidthHeight),
        // Gamma (the in-place forms copy the source into the destination first; the float
        // members run over the range 0 to 1)
        PXK_ROW(pxkiGammaFwd_8u_C3R, C3, C3, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaFwd_8u_C3IR, C3, C3, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaFwd_8u_AC4R, AC4, AC4, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaFwd_8u_AC4IR, AC4, AC4, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaFwd_8u_P3R, P3, P3, Rgb, planesToPlanes),
        PXK_ROW(pxkiGammaFwd_8u_IP3R, P3, P3, Rgb, planesInPlace),
        PXK_ROW(pxkiGammaFwd_16u_C3R, C3W16, C3W16, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaFwd_16u_C3IR, C3W16, C3W16, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaFwd_16u_AC4R, AC4W16, AC4W16, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaFwd_16u_AC4IR, AC4W16, AC4W16, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaFwd_16u_P3R, P3W16, P3W16, Rgb, planesToPlanes),
        PXK_ROW(pxkiGammaFwd_16u_IP3R, P3W16, P3W16, Rgb, planesInPlace),
        PXK_ROW(pxkiGammaFwd_32f_C3R, C3F32, C3F32, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaFwd_32f_C3IR, C3F32, C3F32, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaFwd_32f_AC4R, AC4F32, AC4F32, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaFwd_32f_AC4IR, AC4F32, AC4F32, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaFwd_32f_P3R, P3F32, P3F32, Rgb, planesToPlanes),
        PXK_ROW(pxkiGammaFwd_32f_IP3R, P3F32, P3F32, Rgb, planesInPlace),
        PXK_ROW(pxkiGammaInv_8u_C3R, C3, C3, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaInv_8u_C3IR, C3, C3, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaInv_8u_AC4R, AC4, AC4, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaInv_8u_AC4IR, AC4, AC4, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaInv_8u_P3R, P3, P3, Rgb, planesToPlanes),
        PXK_ROW(pxkiGammaInv_8u_IP3R, P3, P3, Rgb, planesInPlace),
        PXK_ROW(pxkiGammaInv_16u_C3R, C3W16, C3W16, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaInv_16u_C3IR, C3W16, C3W16, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaInv_16u_AC4R, AC4W16, AC4W16, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaInv_16u_AC4IR, AC4W16, AC4W16, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaInv_16u_P3R, P3W16, P3W16, Rgb, planesToPlanes),
        PXK_ROW(pxkiGammaInv_16u_IP3R, P3W16, P3W16, Rgb, planesInPlace),
        PXK_ROW(pxkiGammaInv_32f_C3R, C3F32, C3F32, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaInv_32f_C3IR, C3F32, C3F32, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaInv_32f_AC4R, AC4F32, AC4F32, Rgb, samplesToSamples),
        PXK_ROW(pxkiGammaInv_32f_AC4IR, AC4F32, AC4F32, Rgb, samplesInPlace),
        PXK_ROW(pxkiGammaInv_32f_P3R, P3F32, P3F32, Rgb, planesToPlanes),
        PXK_ROW(pxkiGammaInv_32f_IP3R, P3F32, P3F32, Rgb, planesInPlace),
        // Chroma layouts (P2 here is a Y plane and a plane of chroma pairs; 4:1:1 uses it too)
        PXK_ROW(pxkiYCbCr422_8u_C2P3R, C2, P422, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiYCbCr422_8u_P3C2R, P422, C2, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCrCb422ToYCbCr422_8u_C2P3R, C2, P422, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiYCbCr422ToYCrCb422_8u_C2R, C2, C2, YCbCr, packedToPacked),
        PXK_ROW(pxkiYCbCr422ToYCrCb422_8u_P3C2R, P422, C2, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCbCr420_8u_P2P3R, P2, P420, YCbCr, twoPlanesToPlanarSteps),
        PXK_ROW(pxkiYCbCr420_8u_P3P2R, P420, P2, YCbCr, planarStepsToTwoPlanes),
        PXK_ROW(pxkiYCbCr420ToYCrCb420_8u_P2P3R, P2, P420, YCbCr, twoPlanesToPlanarSteps),
        PXK_ROW(pxkiYCrCb420ToYCbCr420_8u_P3P2R, P420, P2, YCbCr, planarStepsToTwoPlanes),
        PXK_ROW(pxkiYCbCr411_8u_P2P3R, P2, P411, YCbCr, twoPlanesToPlanarSteps),
        PXK_ROW(pxkiYCbCr411_8u_P3P2R, P411, P2, YCbCr, planarStepsToTwoPlanes),
        PXK_ROW(pxkiYCbCr422ToYCbCr420_8u_C2P2R, C2, P2, YCbCr, packedToTwoPlanes),
        PXK_ROW(pxkiYCbCr422ToYCbCr420_8u_C2P3R, C2, P420, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiYCbCr422ToYCbCr420_8u_P3P2R, P422, P2, YCbCr, planarStepsToTwoPlanes),
        PXK_ROW(pxkiYCbCr422ToYCbCr420_8u_P3R, P422, P420, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr422ToYCrCb420_8u_C2P2R, C2, P2, YCbCr, packedToTwoPlanes),
        PXK_ROW(pxkiYCbCr422ToYCrCb420_8u_C2P3R, C2, P420, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiYCrCb422ToYCbCr420_8u_C2P3R, C2, P420, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiYCbCr420ToYCbCr422_8u_P2C2R, P2, C2, YCbCr, twoPlanesToPacked),
        PXK_ROW(pxkiYCbCr420ToYCbCr422_8u_P2P3R, P2, P422, YCbCr, twoPlanesToPlanarSteps),
        PXK_ROW(pxkiYCbCr420ToYCbCr422_8u_P3R, P420, P422, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCrCb420ToYCbCr422_8u_P3C2R, P420, C2, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCrCb420ToYCbCr422_8u_P3R, P420, P422, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr422ToYCbCr411_8u_C2P2R, C2, P2, YCbCr, packedToTwoPlanes),
        PXK_ROW(pxkiYCbCr422ToYCbCr411_8u_C2P3R, C2, P411, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiYCbCr422ToYCbCr411_8u_P3P2R, P422, P2, YCbCr, planarStepsToTwoPlanes),
        PXK_ROW(pxkiYCbCr422ToYCbCr411_8u_P3R, P422, P411, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCrCb422ToYCbCr411_8u_C2P3R, C2, P411, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiYCbCr411ToYCbCr422_8u_P2C2R, P2, C2, YCbCr, twoPlanesToPacked),
        PXK_ROW(pxkiYCbCr411ToYCbCr422_8u_P2P3R, P2, P422, YCbCr, twoPlanesToPlanarSteps),
        PXK_ROW(pxkiYCbCr411ToYCbCr422_8u_P3C2R, P411, C2, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCbCr411ToYCbCr422_8u_P3R, P411, P422, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr411ToYCrCb422_8u_P3C2R, P411, C2, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCbCr411ToYCrCb422_8u_P3R, P411, P422, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr420ToYCbCr411_8u_P2P3R, P2, P411, YCbCr, twoPlanesToPlanarSteps),
        PXK_ROW(pxkiYCbCr420ToYCbCr411_8u_P3P2R, P420, P2, YCbCr, planarStepsToTwoPlanes),
        PXK_ROW(pxkiYCrCb420ToYCbCr411_8u_P3P2R, P420, P2, YCbCr, planarStepsToTwoPlanes),
        PXK_ROW(pxkiYCbCr411ToYCbCr420_8u_P2P3R, P2, P420, YCbCr, twoPlanesToPlanarSteps),
        PXK_ROW(pxkiYCbCr411ToYCbCr420_8u_P3P2R, P411, P2, YCbCr, planarStepsToTwoPlanes),
        PXK_ROW(pxkiYCbCr411ToYCbCr420_8u_P3R, P411, P420, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr411ToYCrCb420_8u_P2P3R, P2, P420, YCbCr, twoPlanesToPlanarSteps),
        PXK_ROW(pxkiCbYCr422ToYCbCr422_8u_C2R, C2, C2, YCbCr, packedToPacked),
        PXK_ROW(pxkiYCbCr422ToCbYCr422_8u_C2R, C2, C2, YCbCr, packedToPacked),
        PXK_ROW(pxkiCbYCr422ToYCbCr422_8u_C2P3R, C2, P422, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiYCbCr422ToCbYCr422_8u_P3C2R, P422, C2, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiCbYCr422ToYCbCr420_8u_C2P3R, C2, P420, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiCbYCr422ToYCbCr420_8u_C2P2R, C2, P2, YCbCr, packedToTwoPlanes),
        PXK_ROW(pxkiCbYCr422ToYCrCb420_8u_C2P3R, C2, P420, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiCbYCr422ToYCbCr411_8u_C2P3R, C2, P411, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiYCbCr420ToCbYCr422_8u_P2C2R, P2, C2, YCbCr, twoPlanesToPacked),
        PXK_ROW(pxkiYCrCb420ToCbYCr422_8u_P3C2R, P420, C2, YCbCr, planarStepsToPacked),
        PXK_ROW(pxkiYCbCr420ToYCbCr422_Filter_8u_P3R, P420, P422, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr420ToYCbCr422_Filter_8u_P2P3R, P2, P422, YCbCr, twoPlanesToPlanarSteps),
        PXK_ROW(pxkiYCrCb420ToYCbCr422_Filter_8u_P3R, P420, P422, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr422To420_Interlace_8u_P3R, P422, P420, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiCbYCr422ToYCbCr420_Interlace_8u_C2P3R, C2, P420, YCbCr, packedToPlanarSteps),
        PXK_ROW(pxkiYCbCr420To422_Interlace_8u_P3R, P420, P422, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr420ToCbYCr422_Interlace_8u_P3C2R, P420, C2, YCbCr, planarStepsToPacked),
        // 1620 sides run on 4:1:1 buffers (large enough); their traffic is counted as 4:1:1.
        PXK_ROW(pxkiYCbCr1620To420_8u_P3R, P411, P420, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr420To1620_8u_P3R, P420, P411, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr411To420_8u_P3R, P411, P420, YCbCr, planarToPlanarSteps),
        PXK_ROW(pxkiYCbCr420To411_8u_P3R, P420, P411, YCbCr, planarToPlanarSteps),
    };
    return table;
}

#undef PXK_ROW

bool ourCases(const std::vector<Library>& libraries, std::vector<Case>& cases, std::string& error) {
    for (const Library& lib : libraries) {
        std::string missing;
        for (const Export& e : ourExports()) {
            if (lib.address(e.name) == nullptr) missing += std::string(missing.empty() ? "" : ", ") + e.name;
        }
        if (!missing.empty()) {
            error = lib.path + " [" + lib.label + "] lacks " + missing;
            return false;
        }
    }
    for (const Export& e : ourExports()) {
        for (const Library& lib : libraries) {
            Case c{ourCaseName(e.name, lib.label), e.src, e.dst, e.input,
                   e.bind(lib.address(e.name)), {}, ""};
            c.exportName = e.name;
            c.library = lib.label;
            cases.push_back(c);
        }
    }
    return true;
}

}  // namespace bench
