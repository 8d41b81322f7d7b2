// BGR -> YCbCr 4:2:0 by the high-definition matrices (709CSC, and one 709HDTV member).
// Each 2 by 2 block gives four Y samples, each by the luma form from its own pixel, and
// one Cb, Cr pair from the sums of the block's R, G and B over both rows: clamp8((kR sR
// + kG sG + kB sB + 128.5 * 2^18) >> 18). A last odd row or column is neither read nor
// written, and reported with pxkWarnOddSize. The fourth byte of an AC4 source is not
// read into the result.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "yuv/blocks420.h"
#include "yuv/hd_forms.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

using Csc709Block = BlockForms<Csc709Luma, Csc709Chroma420>;
using Hdtv709Block = BlockForms<Hdtv709Luma, Hdtv709Chroma420>;

constexpr bool kBGR = true;

// `height / 2` row pairs of `width / 2` blocks, into a Y plane walked in row pairs and
// a chroma destination that `chromaRows` walks one row a pair.
template <class Forms, class In, class ChromaOf, class... ChromaWalk>
PxkResult convert420(const uint8_t* src, int32_t srcStep, uint8_t* dstY, int32_t dstYStep, PxkSize size,
                     ChromaOf chromaOf, ChromaWalk... chromaRows) {
    const int32_t columns = size.width / 2;
    driveRowPairs(
        size.width, size.height,
        [&](int32_t, RowPair<const uint8_t> s, RowPair<uint8_t> y, auto... chromaRow) {
            run420<Forms, kBGR>(In{{s.top}}, In{{s.bottom}}, y, chromaOf(chromaRow...), 0, 2 * columns);
        },
        pairedRows(src, srcStep), pairedRows(dstY, dstYStep), chromaRows...);
    return oddSizeStatus(size, 2, 2);
}

// Three planes Y, Cb, Cr (Y, Cr, Cb with CrFirst), each with its own step. Checks: the
// source, the plane array and its entries, the step array, then the size (2 by 2).
template <class Forms, class In, bool CrFirst>
PxkResult toPlanes(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3], const int32_t dstStep[3],
                   PxkSize size) {
    PXK_CHECK(checkPackedIntoPlanes(src, dst, dstStep, size, 2, 2));
    const int cbPlane = CrFirst ? 2 : 1, crPlane = CrFirst ? 1 : 2;
    return convert420<Forms, In>(
        src, srcStep, dst[0], dstStep[0], size, [](uint8_t* cb, uint8_t* cr) { return ChromaPlanes{cb, cr}; },
        rows(dst[cbPlane], dstStep[cbPlane]), rows(dst[crPlane], dstStep[crPlane]));
}

// A Y plane and a plane of Cb, Cr pairs. Checks: the three pointers, then the size
// (2 by 2).
template <class Forms, class In>
PxkResult toTwoPlanes(const uint8_t* src, int32_t srcStep, uint8_t* dstY, int32_t dstYStep, uint8_t* dstCbCr,
                      int32_t dstCbCrStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dstY, dstCbCr));
    PXK_CHECK(checkSize(size, 2, 2));
    return convert420<Forms, In>(
        src, srcStep, dstY, dstYStep, size, [](uint8_t* cbcr) { return ChromaPairs{cbcr}; },
        rows(dstCbCr, dstCbCrStep));
}

constexpr bool kYCrCb = true, kYCbCr = false;

}  // namespace

extern "C" {

PxkResult pxkiBGRToYCbCr420_709CSC_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                            const int32_t dstStep[3], PxkSize roiSize) {
    return toPlanes<Csc709Block, PackedC3In, kYCbCr>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiBGRToYCbCr420_709CSC_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], PxkSize roiSize) {
    return toPlanes<Csc709Block, PackedC4In, kYCbCr>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiBGRToYCrCb420_709CSC_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                            const int32_t dstStep[3], PxkSize roiSize) {
    return toPlanes<Csc709Block, PackedC3In, kYCrCb>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiBGRToYCrCb420_709CSC_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], PxkSize roiSize) {
    return toPlanes<Csc709Block, PackedC4In, kYCrCb>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiBGRToYCbCr420_709HDTV_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], PxkSize roiSize) {
    return toPlanes<Hdtv709Block, PackedC4In, kYCbCr>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiBGRToYCbCr420_709CSC_8u_C3P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                            uint8_t* pDstCbCr, int32_t dstCbCrStep, PxkSize roiSize) {
    return toTwoPlanes<Csc709Block, PackedC3In>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxkResult pxkiBGRToYCbCr420_709CSC_8u_AC4P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY,
                                             int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                             PxkSize roiSize) {
    return toTwoPlanes<Csc709Block, PackedC4In>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

}  // extern "C"
