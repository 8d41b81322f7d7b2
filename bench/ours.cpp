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
        // Colorimetric spaces: HLS
        PXK_ROW(pxkiRGBToHLS_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToHLS_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        PXK_ROW(pxkiHLSToRGB_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiHLSToRGB_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        PXK_ROW(pxkiBGRToHLS_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        PXK_ROW(pxkiBGRToHLS_8u_AC4P4R, AC4, P4, Rgb, packedToPlanar4),
        PXK_ROW(pxkiBGRToHLS_8u_AP4C4R, P4, AC4, Rgb, planar4ToPacked),
        PXK_ROW(pxkiBGRToHLS_8u_AP4R, P4, P4, Rgb, planar4ToPlanar4),
        PXK_ROW(pxkiBGRToHLS_8u_C3P3R, C3, P3, Rgb, packedToPlanar),
        PXK_ROW(pxkiBGRToHLS_8u_P3C3R, P3, C3, Rgb, planarToPacked),
        PXK_ROW(pxkiBGRToHLS_8u_P3R, P3, P3, Rgb, planarToPlanar),
        PXK_ROW(pxkiHLSToBGR_8u_AC4P4R, AC4, P4, Rgb, packedToPlanar4),
        PXK_ROW(pxkiHLSToBGR_8u_AP4C4R, P4, AC4, Rgb, planar4ToPacked),
        PXK_ROW(pxkiHLSToBGR_8u_AP4R, P4, P4, Rgb, planar4ToPlanar4),
        PXK_ROW(pxkiHLSToBGR_8u_C3P3R, C3, P3, Rgb, packedToPlanar),
        PXK_ROW(pxkiHLSToBGR_8u_P3C3R, P3, C3, Rgb, planarToPacked),
        PXK_ROW(pxkiHLSToBGR_8u_P3R, P3, P3, Rgb, planarToPlanar),
        // Colorimetric spaces: XYZ
        PXK_ROW(pxkiRGBToXYZ_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToXYZ_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        PXK_ROW(pxkiXYZToRGB_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiXYZToRGB_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        // Colorimetric spaces: HSV
        PXK_ROW(pxkiRGBToHSV_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToHSV_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        PXK_ROW(pxkiHSVToRGB_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiHSVToRGB_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        // Colorimetric spaces: YCC
        PXK_ROW(pxkiRGBToYCC_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiRGBToYCC_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
        PXK_ROW(pxkiYCCToRGB_8u_C3R, C3, C3, Rgb, packedToPacked),
        PXK_ROW(pxkiYCCToRGB_8u_AC4R, AC4, AC4, Rgb, packedToPacked),
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
