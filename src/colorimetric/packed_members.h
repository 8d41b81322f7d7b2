// The bodies of the 8-bit interleaved members of the colorimetric families: pointers,
// then size (steps are not tested), then the shared row kernel with the member's
// column rule.
#pragma once

#include <cstdint>

#include "pxkcc.h"

#include "colorimetric/columns.h"
#include "frame/checks.h"
#include "frame/convert_row.h"

namespace pxk {
namespace colorimetric {

template <class Forms>
PxkResult convertPackedC3(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(size, 1, 1));
    convertRegion<Forms>(size, planeRows(PackedC3In{{pSrc}}, srcStep), planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}

// The destination's alpha byte keeps its value.
template <class Forms>
PxkResult convertPackedAC4(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(size, 1, 1));
    convertRegion<Forms>(size, planeRows(PackedC4In{{pSrc}}, srcStep), planeRows(PackedAC4KeepOut{{pDst}}, dstStep));
    return pxkOk;
}

}  // namespace colorimetric
}  // namespace pxk

// The C3R and AC4R exports of one conversion: `name`_C3R with main loops of C3Unit
// pixels, `name`_AC4R with main loops of AC4Unit pixels, each with the vector form
// Block and the scalar twin Tail.
#define PXK_PACKED_C3_AC4_MEMBERS(name, Block, Tail, C3Unit, AC4Unit)                                     \
    PxkResult name##_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,           \
                         PxkSize roiSize) {                                                              \
        return pxk::colorimetric::convertPackedC3<pxk::colorimetric::MemberColumns<Block, Tail, C3Unit>>( \
            pSrc, srcStep, pDst, dstStep, roiSize);                                                      \
    }                                                                                                    \
    PxkResult name##_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,          \
                          PxkSize roiSize) {                                                             \
        return pxk::colorimetric::convertPackedAC4<pxk::colorimetric::MemberColumns<Block, Tail, AC4Unit>>( \
            pSrc, srcStep, pDst, dstStep, roiSize);                                                      \
    }
