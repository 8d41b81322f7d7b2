#include "routes.h"

#include <sstream>

namespace pxkconv {

namespace {

constexpr LayoutInfo kLayouts[] = {
    {"gray", true, 1, 8, "", 1, 1, ""},
    {"gray16", true, 1, 16, "", 1, 1, ""},
    {"rgb", true, 3, 8, "", 1, 1, ""},
    {"rgb16", true, 3, 16, "", 1, 1, ""},
    {"rgba", true, 4, 8, "", 1, 1, ""},
    {"rgba16", true, 4, 16, "", 1, 1, ""},
    {"bayer", true, 1, 8, "", 1, 1, ""},
    {"bayer16", true, 1, 16, "", 1, 1, ""},
    {"i420", false, 0, 8, "i420", 2, 2, "4:2:0 chroma covers 2x2 pixels"},
    {"nv12", false, 0, 8, "nv12", 2, 2, "4:2:0 chroma covers 2x2 pixels"},
    {"yuy2", false, 0, 8, "yuy2", 2, 1, "4:2:2 chroma covers pairs of pixels"},
    {"uyvy", false, 0, 8, "uyvy", 2, 1, "4:2:2 chroma covers pairs of pixels"},
    {"i422", false, 0, 8, "i422", 2, 1, "4:2:2 chroma covers pairs of pixels"},
    {"i444", false, 0, 8, "i444", 1, 1, ""},
    {"411", false, 0, 8, "411", 4, 1, "4:1:1 chroma covers groups of four pixels"},
    {"v210", false, 0, 10, "v210", 6, 1, "v210 packs groups of six pixels"},
};

// Sources and destinations that the formats name; one row a way of converting.
const std::vector<Route> kRoutes = {
    // RGB pictures to YUV frames.
    {"rgb", "i420", "", "601", "studio", "pxkiRGBToYCbCr420_8u_C3P3R", "", "", ""},
    {"rgb", "i420", "", "601", "full", "pxkiRGBToYUV420_8u_C3P3R", "", "", ""},
    {"rgb", "i420", "", "709csc", "studio", "pxkiBGRToYCbCr420_709CSC_8u_C3P3R", "2,1,0", "", ""},
    {"rgb", "nv12", "", "601", "studio", "pxkiRGBToYCbCr420_8u_C3P2R", "", "", ""},
    {"rgb", "nv12", "", "709csc", "studio", "pxkiBGRToYCbCr420_709CSC_8u_C3P2R", "2,1,0", "", ""},
    {"rgb", "yuy2", "", "601", "studio", "pxkiRGBToYCbCr422_8u_C3C2R", "", "", ""},
    {"rgb", "yuy2", "", "601", "full", "pxkiRGBToYUV422_8u_C3C2R", "", "", ""},
    {"rgb", "uyvy", "", "601", "studio", "pxkiRGBToCbYCr422_8u_C3C2R", "", "", ""},
    {"rgb", "uyvy", "", "709hdtv", "studio", "pxkiBGRToCbYCr422_709HDTV_8u_C3C2R", "2,1,0", "", ""},
    {"rgb", "i422", "", "601", "studio", "pxkiRGBToYCbCr422_8u_C3P3R", "", "", ""},
    {"rgb", "i422", "", "601", "full", "pxkiRGBToYUV422_8u_C3P3R", "", "", ""},
    {"rgb", "i444", "", "601", "studio", "pxkiRGBToYCbCr_8u_C3P3R", "", "", ""},
    {"rgb", "i444", "", "601", "full", "pxkiRGBToYUV_8u_C3P3R", "", "", ""},
    {"rgb", "411", "", "601", "studio", "pxkiBGRToYCbCr411_8u_C3P3R", "2,1,0", "", ""},
    // RGBA pictures (PNG): the alpha sample is not read.
    {"rgba", "i420", "", "601", "studio", "pxkiRGBToYCrCb420_8u_AC4P3R", "", "0,2,1", ""},
    {"rgba", "i420", "", "709hdtv", "studio", "pxkiBGRToYCbCr420_709HDTV_8u_AC4P3R", "2,1,0,3", "", ""},
    {"rgba", "nv12", "", "601", "studio", "pxkiRGBToYCbCr420_8u_C4P2R", "", "", ""},
    {"rgba", "i444", "", "601", "studio", "pxkiRGBToYCbCr_8u_AC4P3R", "", "", ""},
    {"rgba", "gray", "", "", "", "pxkiRGBToGray_8u_AC4C1R", "", "", ""},
    // YUV frames to RGB pictures.
    {"i420", "rgb", "", "601", "studio", "pxkiYCbCr420ToRGB_8u_P3C3R", "", "", ""},
    {"i420", "rgb", "", "601", "full", "pxkiYUV420ToRGB_8u_P3C3R", "", "", ""},
    {"i420", "rgb", "", "709csc", "studio", "pxkiYCbCr420ToBGR_709CSC_8u_P3C3R", "", "2,1,0", ""},
    {"nv12", "rgb", "", "601", "studio", "pxkiYCbCr420ToRGB_8u_P2C3R", "", "", ""},
    {"yuy2", "rgb", "", "601", "studio", "pxkiYCbCr422ToRGB_8u_C2C3R", "", "", ""},
    {"yuy2", "rgb", "", "601", "full", "pxkiYUV422ToRGB_8u_C2C3R", "", "", ""},
    {"uyvy", "rgb", "", "601", "studio", "pxkiCbYCr422ToRGB_8u_C2C3R", "", "", ""},
    {"uyvy", "rgb", "", "709hdtv", "studio", "pxkiCbYCr422ToBGR_709HDTV_8u_C2C3R", "", "2,1,0", ""},
    {"i422", "rgb", "", "601", "studio", "pxkiYCbCr422ToRGB_8u_P3C3R", "", "", ""},
    {"i422", "rgb", "", "601", "full", "pxkiYUV422ToRGB_8u_P3C3R", "", "", ""},
    {"i444", "rgb", "", "601", "studio", "pxkiYCbCrToRGB_8u_P3C3R", "", "", ""},
    {"i444", "rgb", "", "601", "full", "pxkiYUVToRGB_8u_P3C3R", "", "", ""},
    {"i444", "rgb", "", "709csc", "studio", "pxkiYCbCrToBGR_709CSC_8u_P3C3R", "", "2,1,0", ""},
    {"411", "rgb", "", "601", "studio", "pxkiYCbCr411ToBGR_8u_P3C3R", "", "2,1,0", ""},
    // v210 to its 10-bit luma in 16-bit samples.
    {"v210", "gray16", "", "", "", "pxkiYUV422v210ToGray_709HDTV_32u16u_C3C1", "", "", ""},
    // Between YUV layouts: byte moves, no colour matrix.
    {"i420", "nv12", "", "", "", "pxkiYCbCr420_8u_P3P2R", "", "", ""},
    {"i420", "yuy2", "", "", "", "pxkiYCrCb420ToYCbCr422_8u_P3C2R", "0,2,1", "", ""},
    {"i420", "uyvy", "", "", "", "pxkiYCrCb420ToCbYCr422_8u_P3C2R", "0,2,1", "", ""},
    {"i420", "i422", "", "", "", "pxkiYCbCr420ToYCbCr422_8u_P3R", "", "", ""},
    {"nv12", "i420", "", "", "", "pxkiYCbCr420_8u_P2P3R", "", "", ""},
    {"nv12", "yuy2", "", "", "", "pxkiYCbCr420ToYCbCr422_8u_P2C2R", "", "", ""},
    {"nv12", "uyvy", "", "", "", "pxkiYCbCr420ToCbYCr422_8u_P2C2R", "", "", ""},
    {"nv12", "i422", "", "", "", "pxkiYCbCr420ToYCbCr422_8u_P2P3R", "", "", ""},
    {"nv12", "411", "", "", "", "pxkiYCbCr420ToYCbCr411_8u_P2P3R", "", "", ""},
    {"yuy2", "i420", "", "", "", "pxkiYCbCr422ToYCbCr420_8u_C2P3R", "", "", ""},
    {"yuy2", "nv12", "", "", "", "pxkiYCbCr422ToYCbCr420_8u_C2P2R", "", "", ""},
    {"yuy2", "i422", "", "", "", "pxkiYCbCr422_8u_C2P3R", "", "", ""},
    {"yuy2", "uyvy", "", "", "", "pxkiYCbCr422ToCbYCr422_8u_C2R", "", "", ""},
    {"yuy2", "411", "", "", "", "pxkiYCbCr422ToYCbCr411_8u_C2P3R", "", "", ""},
    {"uyvy", "yuy2", "", "", "", "pxkiCbYCr422ToYCbCr422_8u_C2R", "", "", ""},
    {"uyvy", "i422", "", "", "", "pxkiCbYCr422ToYCbCr422_8u_C2P3R", "", "", ""},
    {"uyvy", "i420", "", "", "", "pxkiCbYCr422ToYCbCr420_8u_C2P3R", "", "", ""},
    {"uyvy", "nv12", "", "", "", "pxkiCbYCr422ToYCbCr420_8u_C2P2R", "", "", ""},
    {"uyvy", "411", "", "", "", "pxkiCbYCr422ToYCbCr411_8u_C2P3R", "", "", ""},
    {"i422", "yuy2", "", "", "", "pxkiYCbCr422_8u_P3C2R", "", "", ""},
    {"i422", "uyvy", "", "", "", "pxkiYCbCr422ToCbYCr422_8u_P3C2R", "", "", ""},
    {"i422", "i420", "", "", "", "pxkiYCbCr422ToYCbCr420_8u_P3R", "", "", ""},
    {"i422", "nv12", "", "", "", "pxkiYCbCr422ToYCbCr420_8u_P3P2R", "", "", ""},
    {"i422", "411", "", "", "", "pxkiYCbCr422ToYCbCr411_8u_P3R", "", "", ""},
    {"411", "i420", "", "", "", "pxkiYCbCr411ToYCbCr420_8u_P3R", "", "", ""},
    {"411", "i422", "", "", "", "pxkiYCbCr411ToYCbCr422_8u_P3R", "", "", ""},
    {"411", "yuy2", "", "", "", "pxkiYCbCr411ToYCbCr422_8u_P3C2R", "", "", ""},
    {"411", "nv12", "", "", "", "pxkiYCbCr411ToYCbCr420_8u_P3P2R", "", "", ""},
    // Gray.
    {"rgb", "gray", "", "", "", "pxkiRGBToGray_8u_C3C1R", "", "", ""},
    {"rgb16", "gray16", "", "", "", "pxkiRGBToGray_16u_C3C1R", "", "", ""},
    {"gray", "rgb", "", "", "", "pxkiGrayToRGB_8u_C1C3R", "", "", ""},
    {"gray16", "rgb16", "", "", "", "pxkiGrayToRGB_16u_C1C3R", "", "", ""},
    // Bit-depth reduction: noise, dither mode, levels.
    {"rgb", "rgb", "reduce", "", "", "pxkiReduceBits_8u_C3R", "", "", "v1=noise v2=dither v3=levels"},
    {"gray", "gray", "reduce", "", "", "pxkiReduceBits_8u_C1R", "", "", "v1=noise v2=dither v3=levels"},
    {"rgb16", "rgb16", "reduce", "", "", "pxkiReduceBits_16u_C3R", "", "", "v1=noise v2=dither v3=levels"},
    {"gray16", "gray16", "reduce", "", "", "pxkiReduceBits_16u_C1R", "", "", "v1=noise v2=dither v3=levels"},
    {"rgb16", "rgb", "reduce", "", "", "pxkiReduceBits_16u8u_C3R", "", "", "v1=noise v2=dither v3=levels"},
    {"gray16", "gray", "reduce", "", "", "pxkiReduceBits_16u8u_C1R", "", "", "v1=noise v2=dither v3=levels"},
    // Gamma and colour twist, in place of the samples' own depth.
    {"rgb", "rgb", "gammafwd", "", "", "pxkiGammaFwd_8u_C3R", "", "", ""},
    {"rgb16", "rgb16", "gammafwd", "", "", "pxkiGammaFwd_16u_C3R", "", "", ""},
    {"rgb", "rgb", "gammainv", "", "", "pxkiGammaInv_8u_C3R", "", "", ""},
    {"rgb16", "rgb16", "gammainv", "", "", "pxkiGammaInv_16u_C3R", "", "", ""},
    {"rgb", "rgb", "twist", "", "", "pxkiColorTwist32f_8u_C3R", "", "", "v1=twist"},
    {"rgb16", "rgb16", "twist", "", "", "pxkiColorTwist32f_16u_C3R", "", "", "v1=twist"},
    // Bayer mosaics: the whole picture is the region; VNG writes B, G, R and a fourth
    // sample that it leaves alone, of which the picture keeps R, G, B.
    {"bayer", "rgb", "bilinear", "", "", "pxkiCFAToRGB_8u_C1C3R", "", "", "v1=grid"},
    {"bayer16", "rgb16", "bilinear", "", "", "pxkiCFAToRGB_16u_C1C3R", "", "", "v1=grid"},
    {"bayer", "rgb", "vng", "", "", "pxkiCFAToBGRA_VNG_8u_C1C4R", "", "2,1,0", "v2=grid"},
    {"bayer16", "rgb16", "vng", "", "", "pxkiCFAToBGRA_VNG_16u_C1C4R", "", "2,1,0", "v2=grid"},
    {"bayer", "rgb", "ahd", "", "", "pxkiDemosaicAHD_8u_C1C3R", "", "", "v1=grid"},
    {"bayer16", "rgb16", "ahd", "", "", "pxkiDemosaicAHD_16u_C1C3R", "", "", "v1=grid"},
};

std::string describe(const Route& r) {
    std::string text = std::string(r.from) + " -> " + r.to;
    if (*r.matrix) text += std::string(" --matrix ") + r.matrix;
    if (*r.range) text += std::string(" --range ") + r.range;
    return text;
}

std::string operationOption(const std::string& operation) {
    if (operation.empty()) return "";
    if (operation == "reduce") return " with --dither/--levels";
    if (operation == "gammafwd") return " with --gamma fwd";
    if (operation == "gammainv") return " with --gamma inv";
    if (operation == "twist") return " with --twist";
    return " with --demosaic " + operation;
}

}  // namespace

const LayoutInfo* layoutInfo(const std::string& name) {
    for (const LayoutInfo& l : kLayouts) {
        if (name == l.name) return &l;
    }
    return nullptr;
}

std::string layoutNames() {
    std::string names;
    for (const LayoutInfo& l : kLayouts) names += (names.empty() ? "" : " ") + std::string(l.name);
    return names;
}

const std::vector<Route>& routes() { return kRoutes; }

std::vector<int> parseOrder(const char* text) {
    std::vector<int> order;
    for (const char* p = text; *p; ++p) {
        if (*p >= '0' && *p <= '9') order.push_back(*p - '0');
    }
    return order;
}

Failure chooseRoute(const RouteQuery& q, const Route** chosen) {
    // The matrix and range fit a row that names them, or any row that needs none.
    auto fits = [&](const Route& r) {
        return (!*r.matrix || q.matrix == r.matrix) && (!*r.range || q.range == r.range);
    };
    for (const std::string& to : q.to) {
        for (const Route& r : kRoutes) {
            if (q.from == r.from && to == r.to && q.operation == r.operation && fits(r)) {
                *chosen = &r;
                return Failure{};
            }
        }
    }
    // Nothing fits: say what exists from this source with this operation.
    // What exists to the wanted destinations with other options; failing that, from
    // this source to anywhere.
    std::string exist;
    for (const Route& r : kRoutes) {
        bool wanted = false;
        for (const std::string& to : q.to) wanted = wanted || to == r.to;
        if (q.from == r.from && q.operation == r.operation && wanted) exist += "\n  " + describe(r);
    }
    if (exist.empty()) {
        for (const Route& r : kRoutes) {
            if (q.from == r.from && q.operation == r.operation) exist += "\n  " + describe(r);
        }
    }
    std::string wanted;
    for (const std::string& to : q.to) wanted += (wanted.empty() ? "" : " or ") + to;
    std::string message = "no export converts " + q.from + " to " + wanted + operationOption(q.operation) +
                          " (--matrix " + q.matrix + " --range " + q.range + ")";
    message += exist.empty() ? "; " + q.from + " converts nowhere" + operationOption(q.operation)
                             : "; what exists from " + q.from + operationOption(q.operation) + ":" + exist;
    return fault(kExitUnsupported, message);
}

}  // namespace pxkconv
