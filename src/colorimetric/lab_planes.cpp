// RGB <-> Lab over three planes of floats or doubles, each plane with its own byte
// step (used as it stands, not tested). The _L members hold the work: their sizes and
// steps are 64-bit. Each plain member tests its two step arrays, widens its steps and
// size into 64-bit values and forwards to its _L member, so both give the same
// results and statuses.
#include "pxkcc.h"

#include "colorimetric/lab_rows.h"
#include "frame/checks.h"
#include "frame/drivers.h"

using namespace pxk;
using namespace pxk::colorimetric::lab;

namespace {

// The checks of the _L members: pSrc, pDst, the three source planes, srcStep, the
// three destination planes, dstStep (each null gives pxkErrNullPtr), then the size.
template <class T>
PxkResult checkPlanesL(const T* const* pSrc, const int64_t* srcStep, T* const* pDst, const int64_t* dstStep,
                       PxkSizeL size) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkPlanes(pSrc, 3));
    PXK_CHECK(checkPtrs(srcStep));
    PXK_CHECK(checkPlanes(pDst, 3));
    PXK_CHECK(checkPtrs(dstStep));
    return (size.width < 1 || size.height < 1) ? pxkErrSize : pxkOk;
}

// True when the rows of all six planes touch (every step is the row's bytes) or there
// is one row: the region is then one run of width * height samples.
template <class T>
bool isOneRun(const int64_t* srcStep, const int64_t* dstStep, PxkSizeL size) {
    if (size.height == 1) return true;
    const uint64_t rowBytes = static_cast<uint64_t>(size.width) * sizeof(T);
    for (int i = 0; i < 3; ++i) {
        if (static_cast<uint64_t>(srcStep[i]) != rowBytes || static_cast<uint64_t>(dstStep[i]) != rowBytes) return false;
    }
    return true;
}

// Row(src, dst, count) over each row, the planes advanced by their own steps.
template <class T, class Row>
void walkPlaneRows(const T* const* pSrc, const int64_t* srcStep, T* const* pDst, const int64_t* dstStep,
                   PxkSizeL size, Row row) {
    const T* src[3] = {pSrc[0], pSrc[1], pSrc[2]};
    T* dst[3] = {pDst[0], pDst[1], pDst[2]};
    for (int64_t y = 0; y < size.height; ++y) {
        row(src, dst, size.width);
        for (int i = 0; i < 3; ++i) {
            src[i] = byteOffset(src[i], static_cast<std::intptr_t>(srcStep[i]));
            dst[i] = byteOffset(dst[i], static_cast<std::intptr_t>(dstStep[i]));
        }
    }
}

template <class T>
PxkResult rgbToLabPlanes(const T* const* pSrc, const int64_t* srcStep, T* const* pDst, const int64_t* dstStep,
                         PxkSizeL size) {
    PXK_CHECK(checkPlanesL(pSrc, srcStep, pDst, dstStep, size));
    walkPlaneRows(pSrc, srcStep, pDst, dstStep, size, rgbToLabPlanesRow<T>);
    return pxkOk;
}

// The backward members merge the rows into one run where they can.
template <class T>
PxkResult labToRgbPlanes(const T* const* pSrc, const int64_t* srcStep, T* const* pDst, const int64_t* dstStep,
                         PxkSizeL size) {
    PXK_CHECK(checkPlanesL(pSrc, srcStep, pDst, dstStep, size));
    if (isOneRun<T>(srcStep, dstStep, size)) {
        labToRgbPlanesRun<T>(pSrc, pDst, size.width * size.height);
    } else {
        walkPlaneRows(pSrc, srcStep, pDst, dstStep, size, labToRgbPlanesRun<T>);
    }
    return pxkOk;
}

// A plain member: its step arrays tested, then its steps and size widened for its _L
// member.
template <class T, class LongMember>
PxkResult forwardToLong(LongMember member, const T* const* pSrc, const int32_t* srcStep, T* const* pDst,
                        const int32_t* dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(srcStep, dstStep));
    const int64_t srcSteps[3] = {srcStep[0], srcStep[1], srcStep[2]};
    const int64_t dstSteps[3] = {dstStep[0], dstStep[1], dstStep[2]};
    return member(pSrc, srcSteps, pDst, dstSteps, PxkSizeL{size.width, size.height});
}

}  // namespace

// The _L member `name`_L over samples T doing `work`, and its plain twin `name`.
#define PXK_LAB_PLANES_MEMBERS(name, T, work)                                                                \
    PxkResult name##_L(const T* const pSrc[3], const int64_t srcStep[3], T* const pDst[3],                 \
                       const int64_t dstStep[3], PxkSizeL roiSize) {                                        \
        return work(pSrc, srcStep, pDst, dstStep, roiSize);                                                 \
    }                                                                                                       \
    PxkResult name(const T* const pSrc[3], const int32_t srcStep[3], T* const pDst[3], const int32_t dstStep[3], \
                   PxkSize roiSize) {                                                                       \
        return forwardToLong(name##_L, pSrc, srcStep, pDst, dstStep, roiSize);                               \
    }

extern "C" {

PXK_LAB_PLANES_MEMBERS(pxkiRGBToLab_32f_P3R, float, rgbToLabPlanes)
PXK_LAB_PLANES_MEMBERS(pxkiRGBToLab_64f_P3R, double, rgbToLabPlanes)
PXK_LAB_PLANES_MEMBERS(pxkiLabToRGB_32f_P3R, float, labToRgbPlanes)
PXK_LAB_PLANES_MEMBERS(pxkiLabToRGB_64f_P3R, double, labToRgbPlanes)

}  // extern "C"
