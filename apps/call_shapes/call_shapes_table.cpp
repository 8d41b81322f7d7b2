// The exports whose names do not give their whole argument list, one row each: the
// export, then its arguments in the words of call_shape.h.
//
//   src dst srcdst     a side's pointer: a row pointer, or its array of plane pointers
//   src.0 src.1        one plane's row pointer (the two planes of a P2 side)
//   step               int32 step of the side named last (one for all its planes)
//   step[] step64[]    pointer to one int32 (int64) step a plane of that side
//   size sizeL wh roi  PxkSize, PxkSizeL, two int32, PxkRect {0, 0, width, height}
//   alpha              a value of the destination's sample type
//   i32:lo:hi          a value by value, random in [lo, hi] (u8 i8 u16 i16 u32 i32 i64 f32 f64)
//   f32[12]:lo:hi      pointer to 12 constant values, random in [lo, hi]
//   out:i32            pointer to one value that the call writes
//   scratch:a:b[:r]    pointer to a work buffer of (a * width + b) * r bytes
//   bufstep            int32: the row length of the last work buffer, a * width + b
//   ...                (first only) the arguments that the name gives, in their order
//   floats=lo:hi       float samples of every side drawn from [lo, hi], not random bytes
//   steps=elements     steps count samples, not bytes
//   steps=positive     only positive steps, for exports that refuse the others
//
// The sides (sample types, layouts, planes) always come from the name's type and
// layout tokens. Rows look like these:
//
//   {"pxkiColorTwist32f_8u_C3R", "... f32[12]:-2:2"},
//   {"pxkiGammaFwd_32f_C3R", "... f32:-0.5:0.5 f32:0.5:1.5 floats=0:1"},
//   {"pxkiReduceBits_16u8u_C3R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
//   {"pxkiReduceBitsGetBufferSize", "i32:0:9 size u32:0:120 i32:-1:5 out:i32"},
//   {"pxkiToneMapMean_32f8u_C1R", "src step dst step wh floats=0:100"},
//   {"pxkiLabToRGB_32f_P3R", "src step[] dst step[] size floats=0:100"},
//   {"pxkiLabToRGB_32f_P3R_L", "src step64[] dst step64[] sizeL floats=0:100"},
//   {"pxkiCFAToRGB_8u_C1C3R", "src roi size step dst step i32:0:3 i32:0:0"},
//   {"pxkiYUV422v210ToRGB_709HDTV_32u16u_C3", "src step dst step size steps=elements"},
#include "shape_lookup.h"

namespace pxkcross {

const std::vector<ShapeRow>& callShapeRows() {
    static const std::vector<ShapeRow> rows = {
        // Planes of different sizes on the source side, three planes of one size on the
        // destination side.
        {"pxkiYUV420ToRGB_8u_P3R", "src step[] dst step size"},
        {"pxkiYUV422ToRGB_8u_P3R", "src step[] dst step size"},
        // v210: steps count 32-bit words and 16-bit words, and must be at least 1.
        {"pxkiYUV422v210ToBGR_709HDTV_32u16u_C3", "src step dst step size steps=elements steps=positive"},
        {"pxkiYUV422v210ToGray_709HDTV_32u16u_C3C1", "src step dst step size steps=elements steps=positive"},
        {"pxkiYUV422v210ToRGB_709HDTV_32u16u_C3", "src step dst step size steps=elements steps=positive"},
        // Demosaicing: the whole image as the region, then the channels' scale or the
        // grid code.
        {"pxkiCFAToBGRA_VNG_16u_C1C4R", "src roi size step f32[3]:0:2 dst step i32:0:3"},
        {"pxkiCFAToBGRA_VNG_16u_C1C4R_L", "src roi size step f32[3]:0:2 dst step i32:0:3"},
        {"pxkiCFAToBGRA_VNG_8u_C1C4R", "src roi size step f32[3]:0:2 dst step i32:0:3"},
        {"pxkiCFAToBGRA_VNG_8u_C1C4R_L", "src roi size step f32[3]:0:2 dst step i32:0:3"},
        {"pxkiCFAToRGB_16u_C1C3R", "src roi size step dst step i32:0:3 i32:0:0"},
        {"pxkiCFAToRGB_8u_C1C3R", "src roi size step dst step i32:0:3 i32:0:0"},
        // ... then a work buffer of three rows of the least documented step.
        {"pxkiDemosaicAHD_16u_C1C3R", "src roi size step dst step i32:0:3 scratch:41:384:3 bufstep"},
        {"pxkiDemosaicAHD_8u_C1C3R", "src roi size step dst step i32:0:3 scratch:33:384:3 bufstep"},
        // Tone maps and 12-bit packing: width and height as two int32. The tone-map
        // sources hold negative samples too, so that the columns whose scalar and
        // vector bytes differ are compared; the packing members refuse steps below 1.
        {"pxkiToneMapLinear_32f8u_C1R", "src step dst step wh floats=-20:100"},
        {"pxkiToneMapMean_32f8u_C1R", "src step dst step wh floats=-20:100"},
        {"pxkiPack_16u12u_C1R", "src step dst step wh steps=positive"},
        {"pxkiUnpack_12u16u_C1R", "src step dst step wh steps=positive"},
        // Gamma: steps must be at least 1; the float members take vMin and vMax, their
        // samples drawn from a little beyond the range.
        {"pxkiGammaFwd_8u_C3R", "... steps=positive"},
        {"pxkiGammaFwd_8u_C3IR", "... steps=positive"},
        {"pxkiGammaFwd_8u_AC4R", "... steps=positive"},
        {"pxkiGammaFwd_8u_AC4IR", "... steps=positive"},
        {"pxkiGammaFwd_8u_P3R", "... steps=positive"},
        {"pxkiGammaFwd_8u_IP3R", "... steps=positive"},
        {"pxkiGammaFwd_16u_C3R", "... steps=positive"},
        {"pxkiGammaFwd_16u_C3IR", "... steps=positive"},
        {"pxkiGammaFwd_16u_AC4R", "... steps=positive"},
        {"pxkiGammaFwd_16u_AC4IR", "... steps=positive"},
        {"pxkiGammaFwd_16u_P3R", "... steps=positive"},
        {"pxkiGammaFwd_16u_IP3R", "... steps=positive"},
        {"pxkiGammaFwd_32f_C3R", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaFwd_32f_C3IR", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaFwd_32f_AC4R", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaFwd_32f_AC4IR", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaFwd_32f_P3R", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaFwd_32f_IP3R", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaInv_8u_C3R", "... steps=positive"},
        {"pxkiGammaInv_8u_C3IR", "... steps=positive"},
        {"pxkiGammaInv_8u_AC4R", "... steps=positive"},
        {"pxkiGammaInv_8u_AC4IR", "... steps=positive"},
        {"pxkiGammaInv_8u_P3R", "... steps=positive"},
        {"pxkiGammaInv_8u_IP3R", "... steps=positive"},
        {"pxkiGammaInv_16u_C3R", "... steps=positive"},
        {"pxkiGammaInv_16u_C3IR", "... steps=positive"},
        {"pxkiGammaInv_16u_AC4R", "... steps=positive"},
        {"pxkiGammaInv_16u_AC4IR", "... steps=positive"},
        {"pxkiGammaInv_16u_P3R", "... steps=positive"},
        {"pxkiGammaInv_16u_IP3R", "... steps=positive"},
        {"pxkiGammaInv_32f_C3R", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaInv_32f_C3IR", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaInv_32f_AC4R", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaInv_32f_AC4IR", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaInv_32f_P3R", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        {"pxkiGammaInv_32f_IP3R", "... f32:-0.5:0.5 f32:0.5:1.5 floats=-0.6:1.6 steps=positive"},
        // Chroma layouts: the filtered 4:2:0 P2 source to 4:2:2 planes takes nothing after the size.
        {"pxkiYCbCr420ToYCbCr422_Filter_8u_P2P3R", "..."},
        // At height 2 it reads the source chroma row below the region and writes two
        // chroma rows below it; with positive steps those rows stay in the buffers.
        {"pxkiYCbCr420To411_8u_P3R", "... steps=positive"},
        // Bit-depth reduction: noise, dither mode, levels (to the destination's largest),
        // then a scratch buffer at least as large as the size query asks for any mode.
        {"pxkiReduceBits_8u_C1R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_8u_C3R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_8u_AC4R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_8u_C4R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_16u_C1R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400"},
        {"pxkiReduceBits_16u_C3R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400"},
        {"pxkiReduceBits_16u_AC4R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400"},
        {"pxkiReduceBits_16u_C4R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400"},
        {"pxkiReduceBits_16s_C1R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400"},
        {"pxkiReduceBits_16s_C3R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400"},
        {"pxkiReduceBits_16s_AC4R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400"},
        {"pxkiReduceBits_16s_C4R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400"},
        {"pxkiReduceBits_16u8u_C1R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_16u8u_C3R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_16u8u_AC4R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_16u8u_C4R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_16s8u_C1R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_16s8u_C3R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_16s8u_AC4R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_16s8u_C4R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"},
        {"pxkiReduceBits_32f8u_C1R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f8u_C3R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f8u_AC4R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f8u_C4R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f16u_C1R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f16u_C3R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f16u_AC4R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f16u_C4R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f16s_C1R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f16s_C3R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f16s_AC4R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBits_32f16s_C4R", "... u32:0:100 i32:0:4 i32:2:65536 scratch:12:6400 floats=-0.25:1.25"},
        {"pxkiReduceBitsGetBufferSize", "i32:0:9 size u32:0:120 i32:-1:5 out:i32"},
        // dstBitOffset, the size, two unread words, the mode (0 and 3 valid), threshold.
        {"pxkiReduceBits_8u1u_C1R", "src step dst step i32:0:20 size i32:0:0 i32:0:0 i32:0:3 u8:0:255 scratch:12:112"},
        // Gray: ColorToGray takes three weights after the size; the float members get
        // finite samples.
        {"pxkiColorToGray_8u_C3C1R", "... f32[3]:-1:2"},
        {"pxkiColorToGray_8u_AC4C1R", "... f32[3]:-1:2"},
        {"pxkiColorToGray_16u_C3C1R", "... f32[3]:-1:2"},
        {"pxkiColorToGray_16u_AC4C1R", "... f32[3]:-1:2"},
        {"pxkiColorToGray_16s_C3C1R", "... f32[3]:-1:2"},
        {"pxkiColorToGray_16s_AC4C1R", "... f32[3]:-1:2"},
        {"pxkiColorToGray_32f_C3C1R", "... f32[3]:-1:2 floats=-1000:1000"},
        {"pxkiColorToGray_32f_AC4C1R", "... f32[3]:-1:2 floats=-1000:1000"},
        {"pxkiColorToGray_64f_C3C1R", "... f64[3]:-1:2 floats=-1000:1000"},
        {"pxkiColorToGray_64f_AC4C1R", "... f64[3]:-1:2 floats=-1000:1000"},
        {"pxkiRGBToGray_32f_C3C1R", "... floats=-1000:1000"},
        {"pxkiRGBToGray_32f_AC4C1R", "... floats=-1000:1000"},
        // ColorTwist: a matrix after the size, steps of at least 1; float members get
        // finite samples. The 4x4 member takes sixteen coefficients.
        {"pxkiColorTwist_32f_C3R", "... f32[12]:-2:2 floats=-1000:1000 steps=positive"},
        {"pxkiColorTwist_32f_C3IR", "... f32[12]:-2:2 floats=-1000:1000 steps=positive"},
        {"pxkiColorTwist_32f_AC4R", "... f32[12]:-2:2 floats=-1000:1000 steps=positive"},
        {"pxkiColorTwist_32f_AC4IR", "... f32[12]:-2:2 floats=-1000:1000 steps=positive"},
        {"pxkiColorTwist_32f_P3R", "... f32[12]:-2:2 floats=-1000:1000 steps=positive"},
        {"pxkiColorTwist_32f_IP3R", "... f32[12]:-2:2 floats=-1000:1000 steps=positive"},
        {"pxkiColorTwist_32f_C4R", "... f32[16]:-2:2 floats=-1000:1000 steps=positive"},
        {"pxkiColorTwist32f_8u_C3R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_8u_C3IR", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_8u_AC4R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_8u_AC4IR", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_8u_P3R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_8u_IP3R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16u_C3R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16u_C3IR", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16u_AC4R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16u_AC4IR", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16u_P3R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16u_IP3R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16s_C3R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16s_C3IR", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16s_AC4R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16s_AC4IR", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16s_P3R", "... f32[12]:-2:2 steps=positive"},
        {"pxkiColorTwist32f_16s_IP3R", "... f32[12]:-2:2 steps=positive"},
        // HLS: the BGR forms refuse steps below 1.
        {"pxkiBGRToHLS_8u_AC4R", "... steps=positive"},
        {"pxkiBGRToHLS_8u_AC4P4R", "... steps=positive"},
        {"pxkiBGRToHLS_8u_AP4C4R", "... steps=positive"},
        {"pxkiBGRToHLS_8u_AP4R", "... steps=positive"},
        {"pxkiBGRToHLS_8u_C3P3R", "... steps=positive"},
        {"pxkiBGRToHLS_8u_P3C3R", "... steps=positive"},
        {"pxkiBGRToHLS_8u_P3R", "... steps=positive"},
        {"pxkiHLSToBGR_8u_AC4P4R", "... steps=positive"},
        {"pxkiHLSToBGR_8u_AP4C4R", "... steps=positive"},
        {"pxkiHLSToBGR_8u_AP4R", "... steps=positive"},
        {"pxkiHLSToBGR_8u_C3P3R", "... steps=positive"},
        {"pxkiHLSToBGR_8u_P3C3R", "... steps=positive"},
        {"pxkiHLSToBGR_8u_P3R", "... steps=positive"},
        // 4:2:0 smoothing, whole or in strips: the layout after the size, each path as
        // likely (5 takes none). The rows the strips reach outside the region are in
        // guard_allowances.cpp.
        {"pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", "... i32:1|4|16|21|5"},
        {"pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R", "... i32:1|4|16|21|5"},
        // Lab over planes: a step a plane although the planes have one size; the _L
        // members take 64-bit steps and size. RGB samples around 0..1 (with some past
        // either end), Lab samples around their ranges.
        {"pxkiRGBToLab_32f_P3R", "src step[] dst step[] size floats=-0.1:1.3"},
        {"pxkiRGBToLab_32f_P3R_L", "src step64[] dst step64[] sizeL floats=-0.1:1.3"},
        {"pxkiRGBToLab_64f_P3R", "src step[] dst step[] size floats=-0.1:1.3"},
        {"pxkiRGBToLab_64f_P3R_L", "src step64[] dst step64[] sizeL floats=-0.1:1.3"},
        {"pxkiLabToRGB_32f_P3R", "src step[] dst step[] size floats=-120:120"},
        {"pxkiLabToRGB_32f_P3R_L", "src step64[] dst step64[] sizeL floats=-120:120"},
        {"pxkiLabToRGB_64f_P3R", "src step[] dst step[] size floats=-120:120"},
        {"pxkiLabToRGB_64f_P3R_L", "src step64[] dst step64[] sizeL floats=-120:120"},
        // HLS of float samples: samples drawn as floats around 0..1. Random bytes give
        // pixels with two NaN channels, whose result carries the payload of one or the
        // other by the operand order each build's register allocation picks.
        {"pxkiRGBToHLS_32f_C3R", "... floats=-0.5:1.5"},
        {"pxkiRGBToHLS_32f_AC4R", "... floats=-0.5:1.5"},
        {"pxkiHLSToRGB_32f_C3R", "... floats=-0.5:1.5"},
        {"pxkiHLSToRGB_32f_AC4R", "... floats=-0.5:1.5"},
        // LUV: float members get samples in and around their ranges of use (RGB a
        // little past 0..1, L, U and V in -150..150).
        {"pxkiRGBToLUV_32f_C3R", "... floats=-0.25:1.25"},
        {"pxkiRGBToLUV_32f_AC4R", "... floats=-0.25:1.25"},
        {"pxkiBGRToLUV_32f_C3R", "... floats=-0.25:1.25"},
        {"pxkiLUVToRGB_32f_C3R", "... floats=-150:150"},
        {"pxkiLUVToRGB_32f_AC4R", "... floats=-150:150"},
        {"pxkiLUVToBGR_32f_C3R", "... floats=-150:150"},
    };
    return rows;
}

}  // namespace pxkcross
