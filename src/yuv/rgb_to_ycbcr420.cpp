// RGB or BGR -> studio-range YCbCr 4:2:0 into three planes. Each 2 by 2 block of
// pixels gives four Y samples and one Cb, Cr pair from the sums of its samples; a last
// odd row or column is neither read nor written, and reported with pxkWarnOddSize.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "yuv/blocks420.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

using DirectBlock = BlockForms<DirectLuma, DirectSumForm>;
using Vector420Block = BlockForms<Vector420Form, Vector420Form>;

// A whole region: `width / 2` chroma columns in `height / 2` row pairs. The first
// `leadColumns(width / 2)` columns take LeadForms, the rest TailForms. Cr goes to the
// second plane and Cb to the third where the name spells YCrCb.
template <class In, bool Bgr, bool CrFirst, class LeadForms, class TailForms, class LeadColumns>
PxkResult convert420(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3], const int32_t dstStep[3],
                     PxkSize size, LeadColumns leadColumns) {
    const int32_t columns = size.width / 2;
    const int32_t lead = leadColumns(columns);
    uint8_t* const cb = dst[CrFirst ? 2 : 1];
    uint8_t* const cr = dst[CrFirst ? 1 : 2];
    const int32_t cbStep = dstStep[CrFirst ? 2 : 1], crStep = dstStep[CrFirst ? 1 : 2];
    driveRowPairs(
        size.width, size.height,
        [&](int32_t, RowPair<const uint8_t> s, RowPair<uint8_t> y, uint8_t* cbRow, uint8_t* crRow) {
            const In top{{s.top}}, bottom{{s.bottom}};
            const ChromaPlanes chroma{cbRow, crRow};
            run420<LeadForms, Bgr>(top, bottom, y, chroma, 0, 2 * lead);
            run420<TailForms, Bgr>(top, bottom, y, chroma, 2 * lead, 2 * columns);
        },
        pairedRows(src, srcStep), pairedRows(dst[0], dstStep[0]), rows(cb, cbStep), rows(cr, crStep));
    return oddSizeStatus(size, 2, 2);
}

// Every column in the direct forms.
constexpr auto kNoLead = [](int32_t) { return int32_t{0}; };

// The members with a packed source and three planes: 2 by 2 at least.
PxkResult check420(const uint8_t* src, uint8_t* const dst[3], const int32_t dstStep[3], PxkSize size) {
    return checkPackedIntoPlanes(src, dst, dstStep, size, 2, 2);
}

template <class In, bool Bgr, bool CrFirst>
PxkResult direct420(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3], const int32_t dstStep[3],
                    PxkSize size) {
    PXK_CHECK(check420(src, dst, dstStep, size));
    return convert420<In, Bgr, CrFirst, DirectBlock, DirectBlock>(src, srcStep, dst, dstStep, size, kNoLead);
}

constexpr bool kBGR = true, kRGB = false;
constexpr bool kYCrCb = true, kYCbCr = false;

}  // namespace

extern "C" {

PxkResult pxkiBGRToYCbCr420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                     const int32_t dstStep[3], PxkSize roiSize) {
    return direct420<PackedC3In, kBGR, kYCbCr>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiBGRToYCbCr420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                      const int32_t dstStep[3], PxkSize roiSize) {
    return direct420<PackedC4In, kBGR, kYCbCr>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiBGRToYCrCb420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                     const int32_t dstStep[3], PxkSize roiSize) {
    return direct420<PackedC3In, kBGR, kYCrCb>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiBGRToYCrCb420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                      const int32_t dstStep[3], PxkSize roiSize) {
    return direct420<PackedC4In, kBGR, kYCrCb>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiRGBToYCrCb420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                      const int32_t dstStep[3], PxkSize roiSize) {
    return direct420<PackedC4In, kRGB, kYCrCb>(pSrc, srcStep, pDst, dstStep, roiSize);
}

// The chroma columns below n = p - p % 4 (p = width / 2), with their pixels, take the
// vector 420 form (its blocks are 8 pixels wide and two rows high; where a row's vector
// columns end in one block of 8, that block runs through the form's scalar twin); the
// rest take the direct forms.
PxkResult pxkiRGBToYCbCr420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                     const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK(check420(pSrc, pDst, dstStep, roiSize));
    return convert420<PackedC3In, kRGB, kYCbCr, Vector420Block, DirectBlock>(
        pSrc, srcStep, pDst, dstStep, roiSize, [](int32_t p) { return p - p % 4; });
}

}  // extern "C"
