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
    };
    return rows;
}

}  // namespace pxkcross
