// BGR <-> HLS, 8-bit: the RGB kernels with the first and third colour channels
// exchanged, main loops of 4 pixels (tail: width & 3), in the packed, planar and alpha
// forms. These twelve forms test the steps (each must be at least 1) before the size;
// the AC4 form tests them after it.
#include <type_traits>

#include "pxkcc.h"

#include "colorimetric/alpha_rows.h"
#include "colorimetric/columns.h"
#include "colorimetric/hls_forms.h"
#include "frame/checks.h"
#include "frame/convert_row.h"

using namespace pxk;
using namespace pxk::colorimetric;

namespace {

using BgrToHls = MemberColumns<RgbToHls8uBlock, RgbToHls8uTail, 4, true, false>;
using HlsToBgr = MemberColumns<HlsToRgb8uBlock, HlsToRgb8uTail, 4, false, true>;

PlanarP3In planesIn(const uint8_t* const p[]) { return PlanarP3In{{p[0], p[1], p[2]}}; }
PlanarP3Out planesOut(uint8_t* const p[]) { return PlanarP3Out{{p[0], p[1], p[2]}}; }

// The conversion row by row, then alpha(width, extra rows...) on each row: the alpha
// bytes of that row.
template <class Forms, class In, class Out, class Alpha, class... Extra>
void convertWithAlpha(PxkSize size, PlaneRows<In> in, PlaneRows<Out> out, Alpha alpha, Extra... extra) {
    driveRows(
        size.width, size.height,
        [&](int32_t width, const In& i, const Out& o, auto... e) {
            convertRow<Forms>(i, o, width);
            alpha(width, e...);
        },
        in, out, extra...);
}

// Pointers (the plane arrays and each of their entries), steps, then size.
template <class Src, class Dst>
PxkResult checkPointersStepsSize(Src src, int srcPlanes, int32_t srcStep, Dst dst, int dstPlanes, int32_t dstStep,
                                 PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    if constexpr (!std::is_same_v<Src, const uint8_t*>) PXK_CHECK(checkPlanes(src, srcPlanes));
    if constexpr (!std::is_same_v<Dst, uint8_t*>) PXK_CHECK(checkPlanes(dst, dstPlanes));
    PXK_CHECK(checkSteps(srcStep, dstStep));
    return checkSize(size, 1, 1);
}

template <class Forms>
PxkResult packedToPlanes(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                         PxkSize size) {
    PXK_CHECK(checkPointersStepsSize(pSrc, 0, srcStep, pDst, 3, dstStep, size));
    convertRegion<Forms>(size, planeRows(PackedC3In{{pSrc}}, srcStep), planeRows(planesOut(pDst), dstStep));
    return pxkOk;
}

template <class Forms>
PxkResult planesToPacked(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                         PxkSize size) {
    PXK_CHECK(checkPointersStepsSize(pSrc, 3, srcStep, pDst, 0, dstStep, size));
    convertRegion<Forms>(size, planeRows(planesIn(pSrc), srcStep), planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}

template <class Forms>
PxkResult planesToPlanes(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                         PxkSize size) {
    PXK_CHECK(checkPointersStepsSize(pSrc, 3, srcStep, pDst, 3, dstStep, size));
    convertRegion<Forms>(size, planeRows(planesIn(pSrc), srcStep), planeRows(planesOut(pDst), dstStep));
    return pxkOk;
}

// Destination plane 3 receives byte 3 of each source pixel.
template <class Forms>
PxkResult alphaPixelsToPlanes(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[4], int32_t dstStep,
                              PxkSize size) {
    PXK_CHECK(checkPointersStepsSize(pSrc, 0, srcStep, pDst, 4, dstStep, size));
    convertWithAlpha<Forms>(
        size, planeRows(PackedC4In{{pSrc}}, srcStep), planeRows(planesOut(pDst), dstStep),
        [](int32_t width, const uint8_t* s, uint8_t* a) { copyFourthBytes(s, a, width); }, rows(pSrc, srcStep),
        rows(pDst[3], dstStep));
    return pxkOk;
}

// Byte 3 of each destination pixel receives source plane 3.
template <class Forms>
PxkResult alphaPlanesToPixels(const uint8_t* const pSrc[4], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                              PxkSize size) {
    PXK_CHECK(checkPointersStepsSize(pSrc, 4, srcStep, pDst, 0, dstStep, size));
    convertWithAlpha<Forms>(
        size, planeRows(planesIn(pSrc), srcStep), planeRows(PackedAC4KeepOut{{pDst}}, dstStep),
        [](int32_t width, const uint8_t* a, uint8_t* d) { putFourthBytes(a, d, width); }, rows(pSrc[3], srcStep),
        rows(pDst, dstStep));
    return pxkOk;
}

// Destination plane 3 receives source plane 3.
template <class Forms>
PxkResult alphaPlanesToPlanes(const uint8_t* const pSrc[4], int32_t srcStep, uint8_t* const pDst[4],
                              int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPointersStepsSize(pSrc, 4, srcStep, pDst, 4, dstStep, size));
    convertWithAlpha<Forms>(
        size, planeRows(planesIn(pSrc), srcStep), planeRows(planesOut(pDst), dstStep),
        [](int32_t width, const uint8_t* s, uint8_t* d) { copyPlaneRow(s, d, width); }, rows(pSrc[3], srcStep),
        rows(pDst[3], dstStep));
    return pxkOk;
}

}  // namespace

extern "C" {

// Pointers, size, then steps; the destination's alpha byte keeps its value.
PxkResult pxkiBGRToHLS_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                               PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    PXK_CHECK(checkSteps(srcStep, dstStep));
    convertRegion<BgrToHls>(roiSize, planeRows(PackedC4In{{pSrc}}, srcStep),
                            planeRows(PackedAC4KeepOut{{pDst}}, dstStep));
    return pxkOk;
}

// Each plane or alpha form, in both directions, forwarding to its body.
#define PXK_HLS_BGR_FORMS(form, Body, SrcArg, DstArg)                                                     \
    PxkResult pxkiBGRToHLS_8u_##form(SrcArg pSrc, int32_t srcStep, DstArg pDst, int32_t dstStep,          \
                                     PxkSize roiSize) {                                                   \
        return Body<BgrToHls>(pSrc, srcStep, pDst, dstStep, roiSize);                                     \
    }                                                                                                     \
    PxkResult pxkiHLSToBGR_8u_##form(SrcArg pSrc, int32_t srcStep, DstArg pDst, int32_t dstStep,          \
                                     PxkSize roiSize) {                                                   \
        return Body<HlsToBgr>(pSrc, srcStep, pDst, dstStep, roiSize);                                     \
    }

using Packed = const uint8_t*;
using Planes = const uint8_t* const*;
using PackedOut = uint8_t*;
using PlanesOut = uint8_t* const*;

PXK_HLS_BGR_FORMS(AC4P4R, alphaPixelsToPlanes, Packed, PlanesOut)
PXK_HLS_BGR_FORMS(AP4C4R, alphaPlanesToPixels, Planes, PackedOut)
PXK_HLS_BGR_FORMS(AP4R, alphaPlanesToPlanes, Planes, PlanesOut)
PXK_HLS_BGR_FORMS(C3P3R, packedToPlanes, Packed, PlanesOut)
PXK_HLS_BGR_FORMS(P3C3R, planesToPacked, Planes, PackedOut)
PXK_HLS_BGR_FORMS(P3R, planesToPlanes, Planes, PlanesOut)

#undef PXK_HLS_BGR_FORMS

}  // extern "C"
