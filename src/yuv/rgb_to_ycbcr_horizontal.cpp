// RGB or BGR -> studio-range YCbCr with horizontally subsampled chroma: 4:2:2 (one Cb,
// Cr pair for two pixels of a row) and 4:1:1 (for four), into planes or packed
// Y0 Cb Y1 Cr. Luma is the direct form of the full-resolution conversion; chroma comes
// from the sums of the group's samples.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "yuv/groups_row.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kBGR = true, kRGB = false;

// The chroma byte of a last pixel without a pair, in the packed members: its own Cb
// at a scale of 2^16, with 128 and a rounding term of one eighth (BGR members), or the
// direct form's Cb (RGB packed source) or Cr (RGB planes).
struct LoneOwnCb {
    PXK_INLINE static uint8_t cb(Pixel3 p) {
        return low8(asr(-9699 * p.c[0] - 19071 * p.c[1] + 28770 * p.c[2] + 8396800, 16));
    }
    PXK_INLINE static uint8_t cr(Pixel3) { return 0; }  // no place for it
};
struct LoneDirectCb {
    PXK_INLINE static uint8_t cb(Pixel3 p) { return DirectForm::apply(p).c[1]; }
    PXK_INLINE static uint8_t cr(Pixel3) { return 0; }  // no place for it
};
struct LoneDirectCr {
    PXK_INLINE static uint8_t cb(Pixel3 p) { return DirectForm::apply(p).c[2]; }
    PXK_INLINE static uint8_t cr(Pixel3) { return 0; }  // no place for it
};

// Into three planes, each with its own step. Checks: the source, the plane array and
// its entries, the step array, then the size.
template <int Group, class Chroma, bool Bgr, class Odd, class In>
PxkResult toPlanes(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3], const int32_t dstStep[3],
                   PxkSize size, int32_t minWidth) {
    PXK_CHECK(checkPackedIntoPlanes(src, dst, dstStep, size, minWidth, 1));
    driveRows(
        size.width, size.height,
        [](int32_t width, const uint8_t* s, uint8_t* y, uint8_t* cb, uint8_t* cr) {
            convertGroupsRow<Group, DirectPairLuma, Chroma, Bgr, Odd>(In{{s}}, PlanarSink{y, cb, cr}, width);
        },
        rows(src, srcStep), rows(dst[0], dstStep[0]), rows(dst[1], dstStep[1]), rows(dst[2], dstStep[2]));
    return pxkOk;
}

// Into packed Y0 Cb Y1 Cr (Y0 Cr Y1 Cb with CrFirst), from the source rows `source`
// walks. Checks: the pointers, then the size.
template <class Luma, class Chroma, bool Bgr, bool CrFirst, class Odd, class In>
void toPackedC2(PlaneRows<In> source, uint8_t* dst, int32_t dstStep, PxkSize size) {
    driveRows(
        size.width, size.height,
        [](int32_t width, const In& s, uint8_t* d) {
            convertGroupsRow<2, Luma, Chroma, Bgr, Odd>(s, PackedC2Sink<CrFirst>{d}, width);
        },
        source, rows(dst, dstStep));
}

// The BGR members with packed sources: at least 2 by 1.
template <class In>
PxkResult bgrToPackedC2(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 2, 1));
    toPackedC2<DirectPairLuma, EighthRoundedPairForm, kBGR, false, OddLumaAndChroma<LoneOwnCb>>(
        planeRows(In{{src}}, srcStep), dst, dstStep, size);
    return pxkOk;
}

// The RGB members: the asymmetric luma, the half-rounded pair form; at least 1 by 1.
template <bool CrFirst>
PxkResult rgbC3ToPackedC2(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    toPackedC2<AsymmetricPairLuma, HalfRoundedPairForm, kRGB, CrFirst, OddLumaAndChroma<LoneDirectCb>>(
        planeRows(PackedC3In{{src}}, srcStep), dst, dstStep, size);
    return pxkOk;
}

// From three planes, one step for all: the array pointer and its entries, then the
// size. (The results lie within 16..240, so clamping them changes nothing.)
template <bool CrFirst>
PxkResult rgbP3ToPackedC2(const uint8_t* const src[3], int32_t srcStep, uint8_t* dst, int32_t dstStep,
                          PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkPlanes(src, 3));
    PXK_CHECK(checkSize(size, 1, 1));
    toPackedC2<AsymmetricPairLuma, HalfRoundedPairForm, kRGB, CrFirst, OddLumaAndChroma<LoneDirectCr>>(
        planeRows(PlanarP3In{{src[0], src[1], src[2]}}, srcStep), dst, dstStep, size);
    return pxkOk;
}

constexpr bool kYCrCb = true, kYCbCr = false;

}  // namespace

extern "C" {

// 4:1:1: groups of four pixels of a row, the direct sum form; columns past the last
// whole group are neither read nor written, and reported.
PxkResult pxkiBGRToYCbCr411_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                     const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK((toPlanes<4, DirectSumForm, kBGR, OddLeftUnwritten, PackedC3In>(pSrc, srcStep, pDst, dstStep,
                                                                                  roiSize, 4)));
    return oddSizeStatus(roiSize, 4, 1);
}

PxkResult pxkiBGRToYCbCr411_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                      const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK((toPlanes<4, DirectSumForm, kBGR, OddLeftUnwritten, PackedC4In>(pSrc, srcStep, pDst, dstStep,
                                                                                  roiSize, 4)));
    return oddSizeStatus(roiSize, 4, 1);
}

// 4:2:2 from BGR, the eighth-rounded pair form; an odd last pixel writes its Y only.
PxkResult pxkiBGRToYCbCr422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                     const int32_t dstStep[3], PxkSize roiSize) {
    return toPlanes<2, EighthRoundedPairForm, kBGR, OddLumaOnly, PackedC3In>(pSrc, srcStep, pDst, dstStep,
                                                                                   roiSize, 2);
}

PxkResult pxkiBGRToYCbCr422_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                      const int32_t dstStep[3], PxkSize roiSize) {
    return toPlanes<2, EighthRoundedPairForm, kBGR, OddLumaOnly, PackedC4In>(pSrc, srcStep, pDst, dstStep,
                                                                                   roiSize, 2);
}

// Packed 4:2:2 from BGR; an odd last pixel writes its Y and, in byte 1, its own Cb.
PxkResult pxkiBGRToYCbCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    return bgrToPackedC2<PackedC3In>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiBGRToYCbCr422_8u_AC4C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                      PxkSize roiSize) {
    return bgrToPackedC2<PackedC4In>(pSrc, srcStep, pDst, dstStep, roiSize);
}

// Packed 4:2:2 from RGB: the first Y of a pair has the rounding half, the second not;
// an odd last pixel writes its Y and, in byte 1, the direct form's Cb (in both chroma
// orders).
PxkResult pxkiRGBToYCbCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    return rgbC3ToPackedC2<kYCbCr>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiRGBToYCrCb422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    return rgbC3ToPackedC2<kYCrCb>(pSrc, srcStep, pDst, dstStep, roiSize);
}

// The same from three planes; an odd last pixel takes the direct form's Cr in byte 1
// (in both chroma orders).
PxkResult pxkiRGBToYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    return rgbP3ToPackedC2<kYCbCr>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiRGBToYCrCb422_8u_P3C2R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst,
                                     int32_t dstStep, PxkSize roiSize) {
    return rgbP3ToPackedC2<kYCrCb>(pSrc, srcStep, pDst, dstStep, roiSize);
}

// 4:2:2 from RGB into planes; an odd last pixel is left unwritten.
PxkResult pxkiRGBToYCbCr422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                     const int32_t dstStep[3], PxkSize roiSize) {
    return toPlanes<2, EighthRoundedPairForm, kRGB, OddLeftUnwritten, PackedC3In>(pSrc, srcStep, pDst, dstStep,
                                                                                    roiSize, 2);
}

}  // extern "C"
