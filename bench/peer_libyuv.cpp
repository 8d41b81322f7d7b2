// libyuv's nearest equivalents, run over the same buffers as ours. Its I444 is
// BT.601 studio range with full-resolution chroma planes, the same target as ours;
// its byte orders are named from the little-endian word: "ARGB" is B,G,R,A in
// memory, "ABGR" is R,G,B,A, "RGB24" is B,G,R and "RAW" is R,G,B.
#include "cases.h"

#ifdef PXKCC_BENCH_HAVE_LIBYUV
#include <libyuv.h>
#endif

namespace bench {

#ifdef PXKCC_BENCH_HAVE_LIBYUV
namespace {

using FromI444 = int (*)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int, uint8_t*,
                         int, int, int);

template <FromI444 F>
int fromI444(const Image& s, Image& d) {
    const uint8_t* const* p = s.planes();
    return F(p[0], s.step(), p[1], s.step(), p[2], s.step(), d.data(), d.step(), s.width(),
             s.height());
}

int argbToI444(const Image& s, Image& d) {
    uint8_t* const* p = d.planes();
    return libyuv::ARGBToI444(s.data(), s.step(), p[0], d.step(), p[1], d.step(), p[2], d.step(),
                              s.width(), s.height());
}

// Packed to three planes of subsampled chroma (I420, I422): Y, U, V.
using ToPlanes = int (*)(const uint8_t*, int, uint8_t*, int, uint8_t*, int, uint8_t*, int, int, int);

template <ToPlanes F>
int toPlanes(const Image& s, Image& d) {
    uint8_t* const* p = d.planes();
    const int32_t* st = d.steps();
    return F(s.data(), s.step(), p[0], st[0], p[1], st[1], p[2], st[2], s.width(), s.height());
}

// Packed to packed 4:2:2 (YUY2: Y0 U Y1 V).
using ToPacked = int (*)(const uint8_t*, int, uint8_t*, int, int, int);

template <ToPacked F>
int toPacked(const Image& s, Image& d) {
    return F(s.data(), s.step(), d.data(), d.step(), s.width(), s.height());
}

// Three planes of their own sizes (I420, I422) to packed pixels.
using FromPlanes = int (*)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int, uint8_t*, int, int, int);

template <FromPlanes F>
int fromPlanes(const Image& s, Image& d) {
    const uint8_t* const* p = s.planes();
    const int32_t* st = s.steps();
    return F(p[0], st[0], p[1], st[1], p[2], st[2], d.data(), d.step(), s.width(), s.height());
}

// A Y plane and a plane of chroma pairs (NV12, NV21) to packed pixels.
using FromTwoPlanes = int (*)(const uint8_t*, int, const uint8_t*, int, uint8_t*, int, int, int);

template <FromTwoPlanes F>
int fromTwoPlanes(const Image& s, Image& d) {
    const uint8_t* const* p = s.planes();
    const int32_t* st = s.steps();
    return F(p[0], st[0], p[1], st[1], d.data(), d.step(), s.width(), s.height());
}

// Chroma layouts: three planes into a Y plane and a plane of chroma pairs (I420ToNV12),
// and back (NV12ToI420).
using PlanesToTwoPlanes = int (*)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int, uint8_t*, int,
                                  uint8_t*, int, int, int);
using TwoPlanesToPlanes = int (*)(const uint8_t*, int, const uint8_t*, int, uint8_t*, int, uint8_t*, int, uint8_t*,
                                  int, int, int);

using PlanesToPlanes = int (*)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int, uint8_t*, int,
                               uint8_t*, int, uint8_t*, int, int, int);
using PackedToTwoPlanes = int (*)(const uint8_t*, int, uint8_t*, int, uint8_t*, int, int, int);

template <PlanesToPlanes F>
int planesToPlanes(const Image& s, Image& d) {
    const uint8_t* const* p = s.planes();
    const int32_t* st = s.steps();
    uint8_t* const* q = d.planes();
    const int32_t* dt = d.steps();
    return F(p[0], st[0], p[1], st[1], p[2], st[2], q[0], dt[0], q[1], dt[1], q[2], dt[2], s.width(), s.height());
}

template <PackedToTwoPlanes F>
int packedToTwoPlanes(const Image& s, Image& d) {
    uint8_t* const* q = d.planes();
    const int32_t* dt = d.steps();
    return F(s.data(), s.step(), q[0], dt[0], q[1], dt[1], s.width(), s.height());
}

template <PlanesToTwoPlanes F>
int planesToTwoPlanes(const Image& s, Image& d) {
    const uint8_t* const* p = s.planes();
    const int32_t* st = s.steps();
    uint8_t* const* q = d.planes();
    const int32_t* dt = d.steps();
    return F(p[0], st[0], p[1], st[1], p[2], st[2], q[0], dt[0], q[1], dt[1], s.width(), s.height());
}

template <TwoPlanesToPlanes F>
int twoPlanesToPlanes(const Image& s, Image& d) {
    const uint8_t* const* p = s.planes();
    const int32_t* st = s.steps();
    uint8_t* const* q = d.planes();
    const int32_t* dt = d.steps();
    return F(p[0], st[0], p[1], st[1], q[0], dt[0], q[1], dt[1], q[2], dt[2], s.width(), s.height());
}

// libyuv picks its code paths from process-wide processor flags. Each call runs twice:
// as the library chooses (AVX2 where present), and held to SSSE3 and below, the
// nearest to our SSE2 build. The mask is set before a measurement and lifted after
// it, outside the timed loop.
void holdToSsse3() { libyuv::MaskCpuFlags(libyuv::kCpuHasX86 | libyuv::kCpuHasSSE2 | libyuv::kCpuHasSSSE3); }
void release() { libyuv::MaskCpuFlags(-1); }  // back to what the processor offers

// A 4x4 matrix of signed 6-bit fixed-point weights over B,G,R,A pixels.
int argbColorMatrix(const Image& s, Image& d) {
    static const int8_t m[16] = {32, 16, 8, 0, -16, 48, 16, 0, 16, -32, 56, 0, 0, 0, 0, 64};
    return libyuv::ARGBColorMatrix(s.data(), s.step(), d.data(), d.step(), m, s.width(), s.height());
}

void addBoth(std::vector<Case>& cases, Case c) {
    cases.push_back(c);
    c.name += " (SSSE3)";
    c.note = "as above, held to SSSE3";
    c.heldTo = "SSSE3";
    c.before = holdToSsse3;
    c.after = release;
    cases.push_back(c);
}

}  // namespace

std::vector<Case> libyuvCases() {
    std::vector<Case> cases;
    addBoth(cases, {"libyuv/ARGBToI444", Layout::AC4, Layout::P3, Content::Rgb, argbToI444,
                    {"pxkiRGBToYCbCr_8u_AC4P3R", "pxkiRGBToYCbCr_8u_C3P3R"},
                    "B,G,R,A source bytes"});
    addBoth(cases, {"libyuv/I444ToRAW", Layout::P3, Layout::C3, Content::YCbCr,
                    fromI444<libyuv::I444ToRAW>,
                    {"pxkiYCbCrToRGB_8u_P3C3R"},
                    "same layout and byte order (R,G,B)"});
    addBoth(cases, {"libyuv/I444ToRGB24", Layout::P3, Layout::C3, Content::YCbCr,
                    fromI444<libyuv::I444ToRGB24>,
                    {"pxkiYCbCrToBGR_8u_P3C3R"},
                    "same layout and byte order (B,G,R)"});
    addBoth(cases, {"libyuv/I444ToABGR", Layout::P3, Layout::C4, Content::YCbCr,
                    fromI444<libyuv::I444ToABGR>,
                    {"pxkiYCbCrToRGB_8u_P3C4R"},
                    "same layout and byte order (R,G,B,A), alpha 255"});
    addBoth(cases, {"libyuv/I444ToARGB", Layout::P3, Layout::C4, Content::YCbCr,
                    fromI444<libyuv::I444ToARGB>,
                    {"pxkiYCbCrToBGR_8u_P3C4R"},
                    "same layout and byte order (B,G,R,A), alpha 255"});
    addBoth(cases, {"libyuv/RGB24ToI420", Layout::C3, Layout::P420, Content::Rgb, toPlanes<libyuv::RGB24ToI420>,
                    {"pxkiBGRToYCbCr420_8u_C3P3R", "pxkiBGRToYCrCb420_8u_C3P3R", "pxkiBGRToYCbCr420_8u_C3P2R",
                     "pxkiRGBToYCbCr420_8u_C3P2R"},
                    "same layouts (B,G,R source), 2x2 chroma from the block"});
    addBoth(cases, {"libyuv/RAWToI420", Layout::C3, Layout::P420, Content::Rgb, toPlanes<libyuv::RAWToI420>,
                    {"pxkiRGBToYCbCr420_8u_C3P3R", "pxkiRGBToYUV420_8u_C3P3R", "pxkiRGBToYUV420_8u_C3P3",
                     "pxkiRGBToYUV420_8u_P3R", "pxkiRGBToYUV420_8u_P3"},
                    "same layouts (R,G,B source); studio range"});
    addBoth(cases, {"libyuv/ARGBToI420", Layout::AC4, Layout::P420, Content::Rgb, toPlanes<libyuv::ARGBToI420>,
                    {"pxkiBGRToYCbCr420_8u_AC4P3R", "pxkiBGRToYCrCb420_8u_AC4P3R", "pxkiBGRToYCbCr411_8u_AC4P3R",
                     "pxkiBGRToYUV420_8u_AC4P3R", "pxkiBGRToYCbCr420_8u_AC4P2R", "pxkiRGBToYCbCr420_8u_C4P2R"},
                    "B,G,R,A source bytes; 4:2:0"});
    addBoth(cases, {"libyuv/RGB24ToI420 (for 411)", Layout::C3, Layout::P420, Content::Rgb,
                    toPlanes<libyuv::RGB24ToI420>,
                    {"pxkiBGRToYCbCr411_8u_C3P3R"},
                    "B,G,R source; 4:2:0, not 4:1:1"});
    addBoth(cases, {"libyuv/ABGRToI420", Layout::AC4, Layout::P420, Content::Rgb, toPlanes<libyuv::ABGRToI420>,
                    {"pxkiRGBToYCrCb420_8u_AC4P3R"},
                    "R,G,B,A source bytes"});
    addBoth(cases, {"libyuv/ARGBToI422", Layout::AC4, Layout::P422, Content::Rgb, toPlanes<libyuv::ARGBToI422>,
                    {"pxkiBGRToYCbCr422_8u_AC4P3R", "pxkiBGRToYCbCr422_8u_C3P3R", "pxkiRGBToYCbCr422_8u_C3P3R",
                     "pxkiRGBToYUV422_8u_C3P3R", "pxkiRGBToYUV422_8u_C3P3", "pxkiRGBToYUV422_8u_P3R",
                     "pxkiRGBToYUV422_8u_P3"},
                    "B,G,R,A source bytes"});
    addBoth(cases, {"libyuv/ARGBToYUY2", Layout::AC4, Layout::C2, Content::Rgb, toPacked<libyuv::ARGBToYUY2>,
                    {"pxkiBGRToYCbCr422_8u_AC4C2R", "pxkiBGRToYCbCr422_8u_C3C2R", "pxkiRGBToYCbCr422_8u_C3C2R",
                     "pxkiRGBToYCbCr422_8u_P3C2R", "pxkiRGBToYUV422_8u_C3C2R"},
                    "B,G,R,A source bytes, Y0 U Y1 V"});
    addBoth(cases, {"libyuv/ARGBToUYVY", Layout::AC4, Layout::C2, Content::Rgb, toPacked<libyuv::ARGBToUYVY>,
                    {"pxkiRGBToYCrCb422_8u_C3C2R", "pxkiRGBToYCrCb422_8u_P3C2R"},
                    "B,G,R,A source bytes, U Y0 V Y1"});
    addBoth(cases, {"libyuv/I420ToRGB24", Layout::P420, Layout::C3, Content::YCbCr, fromPlanes<libyuv::I420ToRGB24>,
                    {"pxkiYCbCr420ToBGR_8u_P3C3R", "pxkiYUV420ToBGR_8u_P3C3R"},
                    "same layouts and byte order (B,G,R)"});
    addBoth(cases, {"libyuv/I420ToRAW", Layout::P420, Layout::C3, Content::YCbCr, fromPlanes<libyuv::I420ToRAW>,
                    {"pxkiYCbCr420ToRGB_8u_P3C3R", "pxkiYUV420ToRGB_8u_P3C3R", "pxkiYUV420ToRGB_8u_P3C3",
                     "pxkiYUV420ToRGB_8u_P3R", "pxkiYUV420ToRGB_8u_P3"},
                    "same layouts and byte order (R,G,B)"});
    addBoth(cases, {"libyuv/I420ToARGB", Layout::P420, Layout::C4, Content::YCbCr, fromPlanes<libyuv::I420ToARGB>,
                    {"pxkiYCbCr420ToBGR_8u_P3C4R", "pxkiYCrCb420ToBGR_Filter_8u_P3C4R"},
                    "same layouts and byte order (B,G,R,A), alpha 255"});
    addBoth(cases, {"libyuv/I420ToABGR", Layout::P420, Layout::C4, Content::YCbCr, fromPlanes<libyuv::I420ToABGR>,
                    {"pxkiYCrCb420ToRGB_8u_P3C4R", "pxkiYUV420ToRGB_8u_P3AC4R"},
                    "same layouts and byte order (R,G,B,A), alpha 255"});
    addBoth(cases, {"libyuv/NV12ToRGB24", Layout::P2, Layout::C3, Content::YCbCr,
                    fromTwoPlanes<libyuv::NV12ToRGB24>,
                    {"pxkiYCbCr420ToBGR_8u_P2C3R", "pxkiYCbCr420ToRGB_8u_P2C3R"},
                    "same layouts (Cb,Cr pairs), B,G,R"});
    addBoth(cases, {"libyuv/NV21ToRGB24", Layout::P2, Layout::C3, Content::YCbCr,
                    fromTwoPlanes<libyuv::NV21ToRGB24>,
                    {"pxkiYCrCb420ToBGR_8u_P2C3R", "pxkiYCrCb420ToRGB_8u_P2C3R"},
                    "same layouts (Cr,Cb pairs), B,G,R"});
    addBoth(cases, {"libyuv/NV12ToARGB", Layout::P2, Layout::C4, Content::YCbCr, fromTwoPlanes<libyuv::NV12ToARGB>,
                    {"pxkiYCbCr420ToBGR_8u_P2C4R", "pxkiYCbCr420ToRGB_8u_P2C4R"},
                    "same layouts (Cb,Cr pairs), B,G,R,A, alpha 255"});
    addBoth(cases, {"libyuv/NV21ToARGB", Layout::P2, Layout::C4, Content::YCbCr, fromTwoPlanes<libyuv::NV21ToARGB>,
                    {"pxkiYCrCb420ToBGR_8u_P2C4R", "pxkiYCrCb420ToRGB_8u_P2C4R"},
                    "same layouts (Cr,Cb pairs), B,G,R,A, alpha 255"});
    addBoth(cases, {"libyuv/YUY2ToARGB", Layout::C2, Layout::C4, Content::YCbCr, toPacked<libyuv::YUY2ToARGB>,
                    {"pxkiYCbCr422ToBGR_8u_C2C4R", "pxkiYCbCr422ToRGB_8u_C2C4R", "pxkiYCbCr422ToBGR_8u_C2C3R",
                     "pxkiYCbCr422ToRGB_8u_C2C3R", "pxkiYUV422ToRGB_8u_C2C3R", "pxkiYCbCr422ToRGB_8u_C2P3R"},
                    "same source layout (Y0 Cb Y1 Cr), B,G,R,A"});
    addBoth(cases, {"libyuv/UYVYToARGB", Layout::C2, Layout::C4, Content::YCbCr, toPacked<libyuv::UYVYToARGB>,
                    {"pxkiYCrCb422ToBGR_8u_C2C4R", "pxkiYCrCb422ToRGB_8u_C2C4R", "pxkiYCrCb422ToBGR_8u_C2C3R",
                     "pxkiYCrCb422ToRGB_8u_C2C3R", "pxkiYCrCb422ToRGB_8u_C2P3R"},
                    "Cb Y0 Cr Y1 source (ours: Y0 Cr Y1 Cb), B,G,R,A"});
    addBoth(cases, {"libyuv/I422ToARGB", Layout::P422, Layout::C4, Content::YCbCr, fromPlanes<libyuv::I422ToARGB>,
                    {"pxkiYUV422ToRGB_8u_P3AC4R", "pxkiYCbCr411ToBGR_8u_P3C4R"},
                    "same layouts, B,G,R,A"});
    addBoth(cases, {"libyuv/I422ToRGB24", Layout::P422, Layout::C3, Content::YCbCr, fromPlanes<libyuv::I422ToRGB24>,
                    {"pxkiYCbCr422ToBGR_8u_P3C3R", "pxkiYCbCr422ToRGB_8u_P3C3R", "pxkiYUV422ToRGB_8u_P3C3R",
                     "pxkiYUV422ToRGB_8u_P3C3", "pxkiYUV422ToRGB_8u_P3R", "pxkiYUV422ToRGB_8u_P3",
                     "pxkiYCbCr411ToBGR_8u_P3C3R"},
                    "same layouts, B,G,R"});
    // The high-definition family: libyuv's "H" calls are BT.709 studio range, and its
    // UYVY is our CbYCr422 (Cb Y0 Cr Y1).
    addBoth(cases, {"libyuv/H420ToRGB24", Layout::P420, Layout::C3, Content::YCbCr, fromPlanes<libyuv::H420ToRGB24>,
                    {"pxkiYCbCr420ToBGR_709CSC_8u_P3C3R"},
                    "BT.709 studio range, same layouts (B,G,R)"});
    addBoth(cases, {"libyuv/H420ToARGB", Layout::P420, Layout::C4, Content::YCbCr, fromPlanes<libyuv::H420ToARGB>,
                    {"pxkiYCbCr420ToBGR_709HDTV_8u_P3C4R"},
                    "BT.709 studio range (ours: near full range), B,G,R,A"});
    addBoth(cases, {"libyuv/H444ToARGB", Layout::P3, Layout::C4, Content::YCbCr, fromI444<libyuv::H444ToARGB>,
                    {"pxkiYCbCrToBGR_709CSC_8u_P3C4R", "pxkiYCbCrToBGR_709CSC_8u_P3C3R"},
                    "BT.709 studio range, B,G,R,A"});
    addBoth(cases, {"libyuv/UYVYToARGB (CbYCr422)", Layout::C2, Layout::C4, Content::YCbCr,
                    toPacked<libyuv::UYVYToARGB>,
                    {"pxkiCbYCr422ToBGR_8u_C2C4R", "pxkiCbYCr422ToBGR_709HDTV_8u_C2C4R", "pxkiCbYCr422ToBGR_709HDTV_8u_C2C3R",
                     "pxkiCbYCr422ToRGB_8u_C2C3R"},
                    "same source layout (Cb Y0 Cr Y1), BT.601, B,G,R,A"});
    addBoth(cases, {"libyuv/ARGBToUYVY", Layout::AC4, Layout::C2, Content::Rgb, toPacked<libyuv::ARGBToUYVY>,
                    {"pxkiBGRToCbYCr422_8u_AC4C2R", "pxkiBGRToCbYCr422_709HDTV_8u_AC4C2R",
                     "pxkiBGRToCbYCr422_709HDTV_8u_C3C2R", "pxkiRGBToCbYCr422_8u_C3C2R",
                     "pxkiRGBToCbYCr422Gamma_8u_C3C2R"},
                    "same destination layout (Cb Y0 Cr Y1), BT.601, B,G,R,A source"});
    addBoth(cases, {"libyuv/ARGBToI420 (for 709)", Layout::AC4, Layout::P420, Content::Rgb,
                    toPlanes<libyuv::ARGBToI420>,
                    {"pxkiBGRToYCbCr420_709CSC_8u_AC4P3R", "pxkiBGRToYCrCb420_709CSC_8u_AC4P3R",
                     "pxkiBGRToYCbCr420_709HDTV_8u_AC4P3R", "pxkiBGRToYCbCr420_709CSC_8u_AC4P2R"},
                    "BT.601 matrix, B,G,R,A source"});
    addBoth(cases, {"libyuv/RGB24ToI420 (for 709)", Layout::C3, Layout::P420, Content::Rgb,
                    toPlanes<libyuv::RGB24ToI420>,
                    {"pxkiBGRToYCbCr420_709CSC_8u_C3P3R", "pxkiBGRToYCrCb420_709CSC_8u_C3P3R",
                     "pxkiBGRToYCbCr420_709CSC_8u_C3P2R"},
                    "BT.601 matrix, B,G,R source"});
    // Chroma layouts
    addBoth(cases, {"libyuv/YUY2ToI422", Layout::C2, Layout::P422, Content::YCbCr, toPlanes<libyuv::YUY2ToI422>,
                    {"pxkiYCbCr422_8u_C2P3R", "pxkiYCrCb422ToYCbCr422_8u_C2P3R"},
                    "same byte moves"});
    addBoth(cases, {"libyuv/I422ToYUY2", Layout::P422, Layout::C2, Content::YCbCr, fromPlanes<libyuv::I422ToYUY2>,
                    {"pxkiYCbCr422_8u_P3C2R", "pxkiYCbCr422ToYCrCb422_8u_P3C2R"},
                    "same byte moves"});
    addBoth(cases, {"libyuv/NV12ToI420", Layout::P2, Layout::P420, Content::YCbCr,
                    twoPlanesToPlanes<libyuv::NV12ToI420>,
                    {"pxkiYCbCr420_8u_P2P3R", "pxkiYCbCr420ToYCrCb420_8u_P2P3R"},
                    "same byte moves"});
    addBoth(cases, {"libyuv/I420ToNV12", Layout::P420, Layout::P2, Content::YCbCr,
                    planesToTwoPlanes<libyuv::I420ToNV12>,
                    {"pxkiYCbCr420_8u_P3P2R", "pxkiYCrCb420ToYCbCr420_8u_P3P2R"},
                    "same byte moves"});
    addBoth(cases, {"libyuv/YUY2ToI420", Layout::C2, Layout::P420, Content::YCbCr, toPlanes<libyuv::YUY2ToI420>,
                    {"pxkiYCbCr422ToYCbCr420_8u_C2P3R", "pxkiYCbCr422ToYCrCb420_8u_C2P3R",
                     "pxkiYCrCb422ToYCbCr420_8u_C2P3R"},
                    "same byte moves"});
    addBoth(cases, {"libyuv/YUY2ToNV12", Layout::C2, Layout::P2, Content::YCbCr,
                    packedToTwoPlanes<libyuv::YUY2ToNV12>,
                    {"pxkiYCbCr422ToYCbCr420_8u_C2P2R", "pxkiYCbCr422ToYCrCb420_8u_C2P2R"},
                    "same byte moves"});
    addBoth(cases, {"libyuv/I422ToI420", Layout::P422, Layout::P420, Content::YCbCr,
                    planesToPlanes<libyuv::I422ToI420>, {"pxkiYCbCr422ToYCbCr420_8u_P3R"},
                    "same byte moves"});
    addBoth(cases, {"libyuv/I420ToI422", Layout::P420, Layout::P422, Content::YCbCr,
                    planesToPlanes<libyuv::I420ToI422>,
                    {"pxkiYCbCr420ToYCbCr422_8u_P3R", "pxkiYCrCb420ToYCbCr422_8u_P3R"}, "same byte moves"});
    addBoth(cases, {"libyuv/I420ToYUY2", Layout::P420, Layout::C2, Content::YCbCr, fromPlanes<libyuv::I420ToYUY2>,
                    {"pxkiYCrCb420ToYCbCr422_8u_P3C2R"}, "same byte moves"});
    addBoth(cases, {"libyuv/UYVYToI420", Layout::C2, Layout::P420, Content::YCbCr, toPlanes<libyuv::UYVYToI420>,
                    {"pxkiCbYCr422ToYCbCr420_8u_C2P3R", "pxkiCbYCr422ToYCrCb420_8u_C2P3R"}, "same byte moves"});
    addBoth(cases, {"libyuv/UYVYToNV12", Layout::C2, Layout::P2, Content::YCbCr,
                    packedToTwoPlanes<libyuv::UYVYToNV12>, {"pxkiCbYCr422ToYCbCr420_8u_C2P2R"},
                    "same byte moves"});
    addBoth(cases, {"libyuv/UYVYToI422", Layout::C2, Layout::P422, Content::YCbCr, toPlanes<libyuv::UYVYToI422>,
                    {"pxkiCbYCr422ToYCbCr422_8u_C2P3R"}, "same byte moves"});
    addBoth(cases, {"libyuv/I422ToUYVY", Layout::P422, Layout::C2, Content::YCbCr, fromPlanes<libyuv::I422ToUYVY>,
                    {"pxkiYCbCr422ToCbYCr422_8u_P3C2R"}, "same byte moves"});
    addBoth(cases, {"libyuv/I420ToUYVY", Layout::P420, Layout::C2, Content::YCbCr, fromPlanes<libyuv::I420ToUYVY>,
                    {"pxkiYCrCb420ToCbYCr422_8u_P3C2R"}, "same byte moves"});

    // Gray: full-range (JPEG) luma of packed pixels, one byte a pixel.
    addBoth(cases, {"libyuv/RGB24ToJ400", Layout::C3, Layout::G8, Content::Rgb, toPacked<libyuv::RGB24ToJ400>,
                    {"pxkiRGBToGray_8u_C3C1R", "pxkiColorToGray_8u_C3C1R"},
                    "B,G,R source, fixed weights"});
    addBoth(cases, {"libyuv/ARGBToJ400", Layout::AC4, Layout::G8, Content::Rgb, toPacked<libyuv::ARGBToJ400>,
                    {"pxkiRGBToGray_8u_AC4C1R", "pxkiColorToGray_8u_AC4C1R"},
                    "B,G,R,A source, fixed weights"});
    addBoth(cases, {"libyuv/J400ToARGB", Layout::G8, Layout::C4, Content::Rgb, toPacked<libyuv::J400ToARGB>,
                    {"pxkiGrayToRGB_8u_C1C4R", "pxkiGrayToRGB_8u_C1C3R"},
                    "alpha 255"});
    addBoth(cases, {"libyuv/ARGBColorMatrix", Layout::AC4, Layout::AC4, Content::Rgb, argbColorMatrix,
                    {"pxkiColorTwist32f_8u_AC4R", "pxkiColorTwist32f_8u_AC4IR", "pxkiColorTwist32f_8u_C3R"},
                    "fixed-point 4x4 matrix, no offset, B,G,R,A"});
    // 4:2:0 smoothing: no peer filters vertically; the nearest is the same change of
    // layout without the filter.
    addBoth(cases, {"libyuv/NV12ToI420 (no filter)", Layout::P2, Layout::P420, Content::YCbCr,
                    twoPlanesToPlanes<libyuv::NV12ToI420>, {"pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R"},
                    "same layout change, without the vertical smoothing of luma and chroma"});
    return cases;
}
#else
std::vector<Case> libyuvCases() { return {}; }
#endif

}  // namespace bench
