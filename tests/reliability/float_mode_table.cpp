#include "float_mode_table.h"

namespace pxkreliability {

const std::vector<std::string>& floatModeTableEntries() {
    static const std::vector<std::string> entries = {
        // 4:2:0 into Y and interleaved chroma planes: the chroma is computed in single
        // precision, then truncated.
        "pxkiBGRToYCbCr420_8u_C3P2R",
        "pxkiBGRToYCbCr420_8u_AC4P2R",
        "pxkiRGBToYCbCr420_8u_C3P2R",
        "pxkiRGBToYCbCr420_8u_C4P2R",
        // v210: the matrix works in single precision.
        "pxkiYUV422v210To*",
        // Gamma on floats: the scale into and out of the caller's range around the power.
        "pxkiGamma*_32f_*",
        // Tone maps: the scale from the image's level, in floats.
        "pxkiToneMap*",
        // Demosaicing by gradients: the threshold and the channels' scale, rounded by the
        // current mode.
        "pxkiCFAToBGRA_VNG_*",
        // Gray from wider samples: the weighted sum in floats, converted by the current
        // mode; the float twist stores float results of the caller's rounding.
        "pxkiRGBToGray_16u_*",
        "pxkiRGBToGray_16s_*",
        "pxkiRGBToGray_32f_*",
        "pxkiColorToGray_16u_*",
        "pxkiColorToGray_16s_*",
        "pxkiColorToGray_32f_*",
        "pxkiColorToGray_64f_*",
        "pxkiColorTwist_32f_*",
        // HLS and HSV: hue, lightness and saturation worked in floats and converted by
        // truncation or by the current mode.
        "pxkiRGBToHLS_*",
        "pxkiHLSToRGB_*",
        "pxkiBGRToHLS_*",
        "pxkiHLSToBGR_*",
        "pxkiRGBToHSV_*",
        "pxkiHSVToRGB_*",
        // Bit-depth reduction: levels, noise and diffused errors in floats (all but the
        // one-bit member, whose paths are integer).
        "pxkiReduceBits_8u_*",
        "pxkiReduceBits_16u*",
        "pxkiReduceBits_16s*",
        "pxkiReduceBits_32f*",
        // Lab: the matrix, the curve and its cube roots (the platform's power, whose last
        // bit follows the rounding mode) and the codes, all in floats or doubles.
        "pxkiRGBToLab_*",
        "pxkiBGRToLab_*",
        "pxkiLabToRGB_*",
        "pxkiLabToBGR_*",
        // XYZ and YCC on 16-bit and float samples: the matrices in floats, truncated or
        // converted by the current mode.
        "pxkiRGBToXYZ_16*",
        "pxkiRGBToXYZ_32f_*",
        "pxkiXYZToRGB_16*",
        "pxkiXYZToRGB_32f_*",
        "pxkiRGBToYCC_16*",
        "pxkiRGBToYCC_32f_*",
        "pxkiYCCToRGB_16*",
        "pxkiYCCToRGB_32f_*",
        // LUV: every member works in floats (the 8-bit forward with a double cube root)
        // and the integer members convert by truncation or by the current mode.
        "pxkiRGBToLUV_*",
        "pxkiBGRToLUV_*",
        "pxkiLUVToRGB_*",
        "pxkiLUVToBGR_*",
    };
    return entries;
}

// '*' stands for any run of characters, anywhere in the entry.
bool entryMatches(const std::string& entry, const std::string& name) {
    std::size_t e = 0, n = 0, star = std::string::npos, resume = 0;
    while (n < name.size()) {
        if (e < entry.size() && entry[e] == '*') {
            star = e++;
            resume = n;
        } else if (e < entry.size() && entry[e] == name[n]) {
            ++e, ++n;
        } else if (star != std::string::npos) {
            e = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (e < entry.size() && entry[e] == '*') ++e;
    return e == entry.size();
}

bool followsCallerFloatModes(const std::string& name) {
    for (const std::string& entry : floatModeTableEntries()) {
        if (entryMatches(entry, name)) return true;
    }
    return false;
}

}  // namespace pxkreliability
