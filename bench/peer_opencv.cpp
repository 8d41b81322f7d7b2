// OpenCV's nearest equivalents, run over the same buffers as ours. Its YCrCb is the
// full-range (JPEG) variant with the bytes in Y, Cr, Cb order, so these are the
// nearest calls, not the same conversion.
#include "cases.h"

#ifdef PXKCC_BENCH_HAVE_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace bench {

#ifdef PXKCC_BENCH_HAVE_OPENCV
namespace {

// A Mat header over one of our packed images; no copy.
cv::Mat wrap(const Image& image) {
    return cv::Mat(image.height(), image.width(), CV_8UC(bytesPerPixel(image.layout())),
                   const_cast<uint8_t*>(image.data()), static_cast<size_t>(image.step()));
}

// Converts into our destination buffer; fails if OpenCV would have allocated a new
// one (then we would be timing something else).
// RGB to planar 4:2:0 (one buffer: Y rows, then U rows, then V rows, tightly packed):
// into the destination's first plane, which is large enough.
template <int Code>
int cvtColorToI420(const Image& s, Image& d) {
    try {
        cv::Mat dst(s.height() * 3 / 2, s.width(), CV_8UC1, d.planes()[0]);
        cv::cvtColor(wrap(s), dst, Code);
        return dst.data == d.planes()[0] ? 0 : -1;
    } catch (const cv::Exception&) {
        return -1;
    }
}

// Planar or semi-planar 4:2:0 (Y rows, then the chroma rows, in one buffer) to packed
// pixels: read from the source's first plane, whose buffer holds the rest after it.
template <int Code, int DstChannels>
int cvtColorFrom420(const Image& s, Image& d) {
    try {
        const cv::Mat src(s.height() * 3 / 2, s.width(), CV_8UC1, const_cast<uint8_t*>(s.planes()[0]));
        cv::Mat dst = wrap(d);
        cv::cvtColor(src, dst, Code, DstChannels);
        return dst.data == d.data() ? 0 : -1;
    } catch (const cv::Exception&) {
        return -1;
    }
}

template <int Code, int DstChannels>
int cvtColorInto(const Image& s, Image& d) {
    try {
        cv::Mat dst = wrap(d);
        cv::cvtColor(wrap(s), dst, Code, DstChannels);
        return dst.data == d.data() ? 0 : -1;
    } catch (const cv::Exception&) {
        return -1;
    }
}

// The same over packed images of wider samples: Depth (CV_16U, CV_32F) with as many
// channels as the layout's pixel holds samples of that size.
template <int Depth>
cv::Mat wrapSamples(const Image& image) {
    const int channels = bytesPerPixel(image.layout()) / int(CV_ELEM_SIZE1(Depth));
    return cv::Mat(image.height(), image.width(), CV_MAKETYPE(Depth, channels), const_cast<uint8_t*>(image.data()),
                   static_cast<size_t>(image.step()));
}
template <int Code, int Depth, int DstChannels>
int cvtSamplesInto(const Image& s, Image& d) {
    try {
        cv::Mat dst = wrapSamples<Depth>(d);
        cv::cvtColor(wrapSamples<Depth>(s), dst, Code, DstChannels);
        return dst.data == d.data() ? 0 : -1;
    } catch (const cv::Exception&) {
        return -1;
    }
}

// A lookup table applied to every byte of a packed image (alpha included), the same
// table for every channel, into our destination buffer.
int lookUpBytes(const Image& s, Image& d) {
    static const cv::Mat table = [] {
        cv::Mat t(1, 256, CV_8U);
        for (int i = 0; i < 256; ++i) t.at<uint8_t>(0, i) = static_cast<uint8_t>(255 - i);
        return t;
    }();
    try {
        cv::Mat dst = wrap(d);
        cv::LUT(wrap(s), table, dst);
        return dst.data == d.data() ? 0 : -1;
    } catch (const cv::Exception&) {
        return -1;
    }
}

// Float image to bytes by one scale from the image: the largest sample (Linear) or
// twice the mean (Mean), then convertTo, which rounds where ours truncates.
template <bool FromMean>
int scaleToBytes(const Image& s, Image& d) {
    try {
        const cv::Mat src(s.height(), s.width(), CV_32FC1, const_cast<uint8_t*>(s.data()), static_cast<size_t>(s.step()));
        cv::Mat dst(d.height(), d.width(), CV_8UC1, d.data(), static_cast<size_t>(d.step()));
        double level = 0.0;
        if (FromMean) {
            level = 2.0 * cv::mean(src)[0];
        } else {
            cv::minMaxLoc(src, nullptr, &level);
        }
        src.convertTo(dst, CV_8U, level > 0.0 ? 255.0 / level : 0.0);
        return dst.data == d.data() ? 0 : -1;
    } catch (const cv::Exception&) {
        return -1;
    }
}

// cv::transform with a 3x4 matrix (three rows of weights and an offset) over packed
// three-channel pixels of `Depth` (CV_8U or CV_32F).
template <int Depth>
int transform3x4(const Image& s, Image& d) {
    try {
        static const float m[12] = {0.5f, 0.25f, 0.125f, 8.0f, -0.25f, 0.75f, 0.25f, 16.0f, 0.25f, -0.5f, 0.875f, 32.0f};
        const cv::Mat matrix(3, 4, CV_32F, const_cast<float*>(m));
        const cv::Mat src(s.height(), s.width(), CV_MAKETYPE(Depth, 3), const_cast<uint8_t*>(s.data()),
                          static_cast<size_t>(s.step()));
        cv::Mat dst(d.height(), d.width(), CV_MAKETYPE(Depth, 3), d.data(), static_cast<size_t>(d.step()));
        cv::transform(src, dst, matrix);
        return dst.data == d.data() ? 0 : -1;
    } catch (const cv::Exception&) {
        return -1;
    }
}

}  // namespace

std::vector<Case> openCvCases() {
    cv::setNumThreads(1);  // one thread, like ours
    return {
        {"opencv/cvtColor_RGB2YCrCb_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2YCrCb, 3>,
         {"pxkiRGBToYCbCr_8u_C3R", "pxkiRGBToYCbCr_8u_C3P3R"},
         "full range, Y,Cr,Cb order, packed output"},
        {"opencv/cvtColor_RGB2YCrCb_8UC4to3", Layout::AC4, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2YCrCb, 3>,
         {"pxkiRGBToYCbCr_8u_AC4R"},
         "full range, Y,Cr,Cb order, 3-byte output pixels"},
        {"opencv/cvtColor_YCrCb2RGB_8UC3", Layout::C3, Layout::C3, Content::YCbCr,
         cvtColorInto<cv::COLOR_YCrCb2RGB, 3>,
         {"pxkiYCbCrToRGB_8u_C3R"},
         "full range, Y,Cr,Cb order"},
        {"opencv/cvtColor_YCrCb2RGB_8UC3to4", Layout::C3, Layout::C4, Content::YCbCr,
         cvtColorInto<cv::COLOR_YCrCb2RGB, 4>,
         {"pxkiYCbCrToRGB_8u_AC4R"},
         "full range, 3-byte input pixels, writes alpha"},
        {"opencv/cvtColor_RGB2YUV_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2YUV, 3>,
         {"pxkiRGBToYUV_8u_C3R", "pxkiRGBToYUV_8u_C3P3R", "pxkiRGBToYUV_8u_P3R"},
         "same matrix, packed output"},
        {"opencv/cvtColor_RGB2YUV_8UC4to3", Layout::AC4, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2YUV, 3>,
         {"pxkiRGBToYUV_8u_AC4R", "pxkiRGBToYUV_8u_AC4P4R"},
         "same matrix, 3-byte output pixels"},
        {"opencv/cvtColor_YUV2RGB_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_YUV2RGB, 3>,
         {"pxkiYUVToRGB_8u_C3R", "pxkiYUVToRGB_8u_P3C3R", "pxkiYUVToRGB_8u_P3R"},
         "same matrix, packed input and output"},
        {"opencv/cvtColor_YUV2RGB_8UC3to4", Layout::C3, Layout::C4, Content::Rgb,
         cvtColorInto<cv::COLOR_YUV2RGB, 4>,
         {"pxkiYUVToRGB_8u_AC4R", "pxkiYUVToRGB_8u_C3C4R"},
         "same matrix, 3-byte input pixels, writes alpha"},
        {"opencv/cvtColor_RGB2YUV_I420", Layout::C3, Layout::P420, Content::Rgb, cvtColorToI420<cv::COLOR_RGB2YUV_I420>,
         {"pxkiRGBToYUV420_8u_C3P3R", "pxkiRGBToYUV420_8u_C3P3", "pxkiRGBToYUV420_8u_P3R", "pxkiRGBToYUV420_8u_P3",
          "pxkiBGRToYUV420_8u_AC4P3R"},
         "studio-range matrix, planes in one buffer"},
        {"opencv/cvtColor_YUV2RGB_I420", Layout::P420, Layout::C3, Content::YCbCr,
         cvtColorFrom420<cv::COLOR_YUV2RGB_I420, 3>,
         {"pxkiYCbCr420ToRGB_8u_P3C3R", "pxkiYCbCr420ToBGR_8u_P3C3R", "pxkiYUV420ToRGB_8u_P3C3R",
          "pxkiYUV420ToRGB_8u_P3C3", "pxkiYUV420ToBGR_8u_P3C3R", "pxkiYUV420ToRGB_8u_P3R", "pxkiYUV420ToRGB_8u_P3"},
         "studio-range matrix, planes in one buffer"},
        {"opencv/cvtColor_YUV2BGRA_I420", Layout::P420, Layout::C4, Content::YCbCr,
         cvtColorFrom420<cv::COLOR_YUV2BGRA_I420, 4>,
         {"pxkiYCbCr420ToBGR_8u_P3C4R", "pxkiYCrCb420ToRGB_8u_P3C4R", "pxkiYCrCb420ToBGR_Filter_8u_P3C4R",
          "pxkiYUV420ToRGB_8u_P3AC4R"},
         "studio-range matrix, planes in one buffer, alpha 255"},
        {"opencv/cvtColor_YUV2RGB_NV12", Layout::P2, Layout::C3, Content::YCbCr,
         cvtColorFrom420<cv::COLOR_YUV2RGB_NV12, 3>,
         {"pxkiYCbCr420ToRGB_8u_P2C3R", "pxkiYCbCr420ToBGR_8u_P2C3R"},
         "studio-range matrix, Y plane and Cb,Cr pairs in one buffer"},
        {"opencv/cvtColor_YUV2RGB_NV21", Layout::P2, Layout::C3, Content::YCbCr,
         cvtColorFrom420<cv::COLOR_YUV2RGB_NV21, 3>,
         {"pxkiYCrCb420ToRGB_8u_P2C3R", "pxkiYCrCb420ToBGR_8u_P2C3R"},
         "studio-range matrix, Y plane and Cr,Cb pairs in one buffer"},
        {"opencv/cvtColor_YUV2BGRA_NV12", Layout::P2, Layout::C4, Content::YCbCr,
         cvtColorFrom420<cv::COLOR_YUV2BGRA_NV12, 4>,
         {"pxkiYCbCr420ToRGB_8u_P2C4R", "pxkiYCbCr420ToBGR_8u_P2C4R", "pxkiYCrCb420ToRGB_8u_P2C4R",
          "pxkiYCrCb420ToBGR_8u_P2C4R"},
         "studio-range matrix, Y plane and chroma pairs in one buffer, alpha 255"},
        {"opencv/cvtColor_YUV2RGB_YUY2", Layout::C2, Layout::C3, Content::YCbCr,
         cvtColorInto<cv::COLOR_YUV2RGB_YUY2, 3>,
         {"pxkiYCbCr422ToRGB_8u_C2C3R", "pxkiYCbCr422ToBGR_8u_C2C3R", "pxkiYCrCb422ToRGB_8u_C2C3R",
          "pxkiYCrCb422ToBGR_8u_C2C3R", "pxkiYUV422ToRGB_8u_C2C3R", "pxkiYCbCr422ToRGB_8u_C2P3R",
          "pxkiYCrCb422ToRGB_8u_C2P3R"},
         "studio-range matrix, Y0 U Y1 V"},
        {"opencv/cvtColor_YUV2BGRA_YUY2", Layout::C2, Layout::C4, Content::YCbCr,
         cvtColorInto<cv::COLOR_YUV2BGRA_YUY2, 4>,
         {"pxkiYCbCr422ToBGR_8u_C2C4R", "pxkiYCbCr422ToRGB_8u_C2C4R", "pxkiYCrCb422ToBGR_8u_C2C4R",
          "pxkiYCrCb422ToRGB_8u_C2C4R"},
         "studio-range matrix, Y0 U Y1 V, alpha 255"},
        {"opencv/cvtColor_YUV2RGB_UYVY", Layout::C2, Layout::C3, Content::YCbCr,
         cvtColorInto<cv::COLOR_YUV2RGB_UYVY, 3>,
         {},
         "studio-range matrix, U Y0 V Y1"},
        // Bayer demosaicing of an 8-bit mosaic into packed RGB: bilinear, VNG, edge-aware.
        {"opencv/cvtColor_BayerBG2RGB_8UC1to3", Layout::C1, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_BayerBG2RGB, 3>,
         {"pxkiCFAToRGB_8u_C1C3R"},
         "bilinear, with no edge-directed green"},
        {"opencv/cvtColor_BayerBG2RGB_VNG_8UC1to3", Layout::C1, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_BayerBG2RGB_VNG, 3>,
         {"pxkiCFAToBGRA_VNG_8u_C1C4R", "pxkiCFAToBGRA_VNG_8u_C1C4R_L", "pxkiCFAToRGB_8u_C1C3R",
          "pxkiDemosaicAHD_8u_C1C3R"},
         "variable number of gradients, three-sample pixels, no scale"},
        {"opencv/cvtColor_BayerBG2RGB_EA_8UC1to3", Layout::C1, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_BayerBG2RGB_EA, 3>,
         {"pxkiCFAToRGB_8u_C1C3R", "pxkiDemosaicAHD_8u_C1C3R"},
         "edge-aware"},
        // The same of a 16-bit mosaic: bilinear and edge-aware (VNG takes 8-bit only).
        {"opencv/cvtColor_BayerBG2RGB_16UC1to3", Layout::W16, Layout::C3W16, Content::Rgb,
         cvtSamplesInto<cv::COLOR_BayerBG2RGB, CV_16U, 3>,
         {"pxkiCFAToRGB_16u_C1C3R"},
         "bilinear, with no edge-directed green"},
        {"opencv/cvtColor_BayerBG2RGB_EA_16UC1to3", Layout::W16, Layout::C3W16, Content::Rgb,
         cvtSamplesInto<cv::COLOR_BayerBG2RGB_EA, CV_16U, 3>,
         {"pxkiCFAToRGB_16u_C1C3R", "pxkiDemosaicAHD_16u_C1C3R"},
         "edge-aware"},
        {"opencv/LUT_8UC3", Layout::C3, Layout::C3, Content::Rgb, lookUpBytes,
         {"pxkiGammaFwd_8u_C3R", "pxkiGammaInv_8u_C3R", "pxkiGammaFwd_8u_C3IR", "pxkiGammaInv_8u_C3IR"},
         "one 256-entry table for all channels"},
        {"opencv/LUT_8UC4", Layout::AC4, Layout::AC4, Content::Rgb, lookUpBytes,
         {"pxkiGammaFwd_8u_AC4R", "pxkiGammaInv_8u_AC4R", "pxkiGammaFwd_8u_AC4IR", "pxkiGammaInv_8u_AC4IR"},
         "one table for all four bytes (alpha is looked up too)"},
        // tone mapping
        {"opencv/minMaxLoc+convertTo_32F8U", Layout::F32, Layout::C1, Content::Light, scaleToBytes<false>,
         {"pxkiToneMapLinear_32f8u_C1R"},
         "level from the largest sample; rounds instead of truncating"},
        {"opencv/mean+convertTo_32F8U", Layout::F32, Layout::C1, Content::Light, scaleToBytes<true>,
         {"pxkiToneMapMean_32f8u_C1R"},
         "level from twice the mean; rounds instead of truncating"},
        {"opencv/cvtColor_RGB2GRAY_8UC3", Layout::C3, Layout::G8, Content::Rgb, cvtColorInto<cv::COLOR_RGB2GRAY, 1>,
         {"pxkiRGBToGray_8u_C3C1R", "pxkiColorToGray_8u_C3C1R"},
         "same weights, rounded fixed point"},
        {"opencv/cvtColor_RGBA2GRAY_8UC4", Layout::AC4, Layout::G8, Content::Rgb, cvtColorInto<cv::COLOR_RGBA2GRAY, 1>,
         {"pxkiRGBToGray_8u_AC4C1R", "pxkiColorToGray_8u_AC4C1R"},
         "same weights, rounded fixed point"},
        {"opencv/cvtColor_GRAY2RGB_8UC1", Layout::G8, Layout::C3, Content::Rgb, cvtColorInto<cv::COLOR_GRAY2RGB, 3>,
         {"pxkiGrayToRGB_8u_C1C3R"},
         "same copy"},
        {"opencv/cvtColor_GRAY2RGBA_8UC1", Layout::G8, Layout::C4, Content::Rgb, cvtColorInto<cv::COLOR_GRAY2RGBA, 4>,
         {"pxkiGrayToRGB_8u_C1C4R"},
         "alpha 255"},
        {"opencv/transform_3x4_8UC3", Layout::C3, Layout::C3, Content::Rgb, transform3x4<CV_8U>,
         {"pxkiColorTwist32f_8u_C3R", "pxkiColorTwist32f_8u_C3IR", "pxkiColorTwist32f_8u_AC4R",
          "pxkiColorTwist32f_8u_AC4IR", "pxkiColorTwist32f_8u_P3R", "pxkiColorTwist32f_8u_IP3R"},
         "same affine matrix, saturated, packed pixels"},
        {"opencv/transform_3x4_32FC3", Layout::Px12, Layout::Px12, Content::Float32, transform3x4<CV_32F>,
         {"pxkiColorTwist_32f_C3R", "pxkiColorTwist_32f_C3IR", "pxkiColorTwist_32f_AC4R", "pxkiColorTwist_32f_AC4IR",
          "pxkiColorTwist_32f_P3R", "pxkiColorTwist_32f_IP3R", "pxkiColorTwist_32f_C4R"},
         "same affine matrix, packed pixels"},
        // Colorimetric spaces
        {"opencv/cvtColor_RGB2HLS_FULL_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2HLS_FULL, 3>,
         {"pxkiRGBToHLS_8u_C3R", "pxkiBGRToHLS_8u_C3P3R", "pxkiBGRToHLS_8u_P3C3R", "pxkiBGRToHLS_8u_P3R"},
         "H in 0..255, rounded, packed sides"},
        {"opencv/cvtColor_RGB2HLS_FULL_8UC4to3", Layout::AC4, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2HLS_FULL, 3>,
         {"pxkiRGBToHLS_8u_AC4R", "pxkiBGRToHLS_8u_AC4R", "pxkiBGRToHLS_8u_AC4P4R", "pxkiBGRToHLS_8u_AP4C4R",
          "pxkiBGRToHLS_8u_AP4R"},
         "H in 0..255, 3-byte output pixels"},
        {"opencv/cvtColor_HLS2RGB_FULL_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_HLS2RGB_FULL, 3>,
         {"pxkiHLSToRGB_8u_C3R", "pxkiHLSToBGR_8u_C3P3R", "pxkiHLSToBGR_8u_P3C3R", "pxkiHLSToBGR_8u_P3R"},
         "H in 0..255, rounded, packed sides"},
        {"opencv/cvtColor_HLS2RGB_FULL_8UC3to4", Layout::C3, Layout::C4, Content::Rgb,
         cvtColorInto<cv::COLOR_HLS2RGB_FULL, 4>,
         {"pxkiHLSToRGB_8u_AC4R", "pxkiHLSToBGR_8u_AC4P4R", "pxkiHLSToBGR_8u_AP4C4R", "pxkiHLSToBGR_8u_AP4R"},
         "H in 0..255, 3-byte input pixels, writes alpha"},
        {"opencv/cvtColor_RGB2XYZ_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2XYZ, 3>,
         {"pxkiRGBToXYZ_8u_C3R"},
         "same matrix, rounded"},
        {"opencv/cvtColor_RGB2XYZ_8UC4to3", Layout::AC4, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2XYZ, 3>,
         {"pxkiRGBToXYZ_8u_AC4R"},
         "same matrix, rounded, 3-byte output pixels"},
        {"opencv/cvtColor_XYZ2RGB_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_XYZ2RGB, 3>,
         {"pxkiXYZToRGB_8u_C3R"},
         "same matrix, rounded"},
        {"opencv/cvtColor_XYZ2RGB_8UC3to4", Layout::C3, Layout::C4, Content::Rgb,
         cvtColorInto<cv::COLOR_XYZ2RGB, 4>,
         {"pxkiXYZToRGB_8u_AC4R"},
         "same matrix, rounded, 3-byte input pixels, writes alpha"},
        {"opencv/cvtColor_RGB2HSV_FULL_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2HSV_FULL, 3>,
         {"pxkiRGBToHSV_8u_C3R"},
         "H in 0..255, exact division"},
        {"opencv/cvtColor_RGB2HSV_FULL_8UC4to3", Layout::AC4, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2HSV_FULL, 3>,
         {"pxkiRGBToHSV_8u_AC4R"},
         "H in 0..255, exact division, 3-byte output pixels"},
        {"opencv/cvtColor_HSV2RGB_FULL_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_HSV2RGB_FULL, 3>,
         {"pxkiHSVToRGB_8u_C3R"},
         "H in 0..255"},
        {"opencv/cvtColor_HSV2RGB_FULL_8UC3to4", Layout::C3, Layout::C4, Content::Rgb,
         cvtColorInto<cv::COLOR_HSV2RGB_FULL, 4>,
         {"pxkiHSVToRGB_8u_AC4R"},
         "H in 0..255, 3-byte input pixels, writes alpha"},
        {"opencv/cvtColor_RGB2Lab_8UC3", Layout::C3, Layout::C3, Content::Rgb, cvtColorInto<cv::COLOR_RGB2Lab, 3>,
         {"pxkiRGBToLab_8u_C3R", "pxkiBGRToLab_8u_C3R", "pxkiBGRToLab_8u16u_C3R"},
         "sRGB gamma, table-driven cube root"},
        {"opencv/cvtColor_Lab2RGB_8UC3", Layout::C3, Layout::C3, Content::Rgb, cvtColorInto<cv::COLOR_Lab2RGB, 3>,
         {"pxkiLabToRGB_8u_C3R", "pxkiLabToBGR_8u_C3R", "pxkiLabToBGR_16u8u_C3R"},
         "sRGB gamma, linear foot on the way back"},
        {"opencv/cvtColor_RGB2Lab_32FC3", Layout::C3F32, Layout::C3F32, Content::Float32,
         cvtSamplesInto<cv::COLOR_RGB2Lab, CV_32F, 3>,
         {"pxkiRGBToLab_32f_C3R", "pxkiBGRToLab_32f_C3R", "pxkiRGBToLab_32f_P3R", "pxkiRGBToLab_64f_P3R"},
         "sRGB gamma, packed sides"},
        {"opencv/cvtColor_Lab2RGB_32FC3", Layout::C3F32, Layout::C3F32, Content::Float32,
         cvtSamplesInto<cv::COLOR_Lab2RGB, CV_32F, 3>,
         {"pxkiLabToRGB_32f_C3R", "pxkiLabToBGR_32f_C3R", "pxkiLabToRGB_32f_P3R", "pxkiLabToRGB_64f_P3R"},
         "sRGB gamma, linear foot, packed sides"},
        // XYZ on 16-bit and float samples
        {"opencv/cvtColor_RGB2XYZ_16UC3", Layout::C3W16, Layout::C3W16, Content::Rgb,
         cvtSamplesInto<cv::COLOR_RGB2XYZ, CV_16U, 3>,
         {"pxkiRGBToXYZ_16u_C3R"},
         "same matrix, rounded"},
        {"opencv/cvtColor_XYZ2RGB_16UC3", Layout::C3W16, Layout::C3W16, Content::Rgb,
         cvtSamplesInto<cv::COLOR_XYZ2RGB, CV_16U, 3>,
         {"pxkiXYZToRGB_16u_C3R"},
         "same matrix, rounded"},
        {"opencv/cvtColor_RGB2XYZ_32FC3", Layout::C3F32, Layout::C3F32, Content::UnitFloats,
         cvtSamplesInto<cv::COLOR_RGB2XYZ, CV_32F, 3>,
         {"pxkiRGBToXYZ_32f_C3R"},
         "same matrix, no clamp"},
        {"opencv/cvtColor_XYZ2RGB_32FC3", Layout::C3F32, Layout::C3F32, Content::UnitFloats,
         cvtSamplesInto<cv::COLOR_XYZ2RGB, CV_32F, 3>,
         {"pxkiXYZToRGB_32f_C3R"},
         "same matrix, no clamp"},
        // HLS of float samples (OpenCV has no 16-bit HLS or HSV): the image as float
        // pixels of three channels; OpenCV's hue runs 0..360 where ours runs 0..1.
        {"opencv/cvtColor_RGB2HLS_32FC3", Layout::C3F32, Layout::C3F32, Content::Rgb,
         cvtSamplesInto<cv::COLOR_RGB2HLS, CV_32F, 3>,
         {"pxkiRGBToHLS_32f_C3R"},
         "H in 0..360, float pixels"},
        {"opencv/cvtColor_RGB2HLS_32FC4to3", Layout::AC4F32, Layout::C3F32, Content::Rgb,
         cvtSamplesInto<cv::COLOR_RGB2HLS, CV_32F, 3>,
         {"pxkiRGBToHLS_32f_AC4R"},
         "H in 0..360, 3-float output pixels"},
        {"opencv/cvtColor_HLS2RGB_32FC3", Layout::C3F32, Layout::C3F32, Content::Rgb,
         cvtSamplesInto<cv::COLOR_HLS2RGB, CV_32F, 3>,
         {"pxkiHLSToRGB_32f_C3R"},
         "H in 0..360, float pixels"},
        {"opencv/cvtColor_HLS2RGB_32FC3to4", Layout::C3F32, Layout::AC4F32, Content::Rgb,
         cvtSamplesInto<cv::COLOR_HLS2RGB, CV_32F, 4>,
         {"pxkiHLSToRGB_32f_AC4R"},
         "H in 0..360, 3-float input pixels, writes alpha"},
        {"opencv/cvtColor_RGB2Luv_32FC3", Layout::C3F32, Layout::C3F32, Content::Rgb,
         cvtSamplesInto<cv::COLOR_RGB2Luv, CV_32F, 3>,
         {"pxkiRGBToLUV_32f_C3R", "pxkiBGRToLUV_32f_C3R"},
         "sRGB gamma applied, float cube root"},
        {"opencv/cvtColor_RGB2Luv_32FC4to3", Layout::AC4F32, Layout::C3F32, Content::Rgb,
         cvtSamplesInto<cv::COLOR_RGB2Luv, CV_32F, 3>,
         {"pxkiRGBToLUV_32f_AC4R"},
         "sRGB gamma applied, 3-float output pixels"},
        {"opencv/cvtColor_Luv2RGB_32FC3", Layout::C3F32, Layout::C3F32, Content::Rgb,
         cvtSamplesInto<cv::COLOR_Luv2RGB, CV_32F, 3>,
         {"pxkiLUVToRGB_32f_C3R", "pxkiLUVToBGR_32f_C3R"},
         "sRGB gamma applied"},
        {"opencv/cvtColor_Luv2RGB_32FC3to4", Layout::C3F32, Layout::AC4F32, Content::Rgb,
         cvtSamplesInto<cv::COLOR_Luv2RGB, CV_32F, 4>,
         {"pxkiLUVToRGB_32f_AC4R"},
         "sRGB gamma applied, 3-float input pixels, writes alpha"},
        {"opencv/cvtColor_RGB2Luv_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2Luv, 3>,
         {"pxkiRGBToLUV_8u_C3R", "pxkiBGRToLUV_8u_C3R"},
         "sRGB gamma applied, fixed point"},
        {"opencv/cvtColor_RGB2Luv_8UC4to3", Layout::AC4, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_RGB2Luv, 3>,
         {"pxkiRGBToLUV_8u_AC4R"},
         "sRGB gamma applied, fixed point, 3-byte output pixels"},
        {"opencv/cvtColor_Luv2RGB_8UC3", Layout::C3, Layout::C3, Content::Rgb,
         cvtColorInto<cv::COLOR_Luv2RGB, 3>,
         {"pxkiLUVToRGB_8u_C3R", "pxkiLUVToBGR_8u_C3R"},
         "sRGB gamma applied"},
        {"opencv/cvtColor_Luv2RGB_8UC3to4", Layout::C3, Layout::C4, Content::Rgb,
         cvtColorInto<cv::COLOR_Luv2RGB, 4>,
         {"pxkiLUVToRGB_8u_AC4R"},
         "sRGB gamma applied, 3-byte input pixels, writes alpha"},
    };
}
#else
std::vector<Case> openCvCases() { return {}; }
#endif

}  // namespace bench
