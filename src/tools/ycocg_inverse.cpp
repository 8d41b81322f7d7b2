// YCoCg planes to colour: the plain family and the reversible family. Each export is
// one row: its name, its member (form, arithmetic width, colour order), its plane
// type, its packed destination (sample type and samples a pixel), and whether it tests
// the size. C4 destinations take `alpha` as their fourth sample.
#include "pxkcc.h"

#include "tools/ycocg_call.h"

using namespace pxk;
using namespace pxk::ycocg;

namespace {

// 16-bit planes: 16-bit arithmetic with wrap-around (then saturated to 0..255 where the
// destination has 8-bit samples).
using Plain16 = Member<PlainInverse, 16, kBGR>;
using Rev16 = Member<RevInverse, 16, kBGR>;
// 32-bit planes: 32-bit arithmetic, the low 16 bits stored. The plain inverse only adds
// and subtracts, so the low 16 bits of its results follow from the low 16 bits of the
// planes alone: it runs as Plain16 on the planes' low halves (the same bits, half the
// lanes). The reversible inverse shifts 32-bit values right and needs them whole.
using Plain32 = Plain16;
using Rev32 = Member<RevInverse, 32, kBGR>;
// 8-bit planes with chroma offset by 128, red first, saturated to 0..255.
using Offset8 = Member<OffsetInverse, 16, kRGB>;

}  // namespace

#define PXK_YCOCG_INVERSE(name, M, S, D, sizeCheck)                                                          \
    PxkResult name(const S* const pSrc[3], int32_t srcStep, D* pDst, int32_t dstStep, PxkSize roiSize) {   \
        return fromPlanes<M, 3>(SizeCheck::sizeCheck, pSrc, srcStep, pDst, dstStep, roiSize);           \
    }
#define PXK_YCOCG_INVERSE_ALPHA(name, M, S, D, sizeCheck)                                                    \
    PxkResult name(const S* const pSrc[3], int32_t srcStep, D* pDst, int32_t dstStep, PxkSize roiSize,     \
                   D alpha) {                                                                              \
        return fromPlanes<M, 4>(SizeCheck::sizeCheck, pSrc, srcStep, pDst, dstStep, roiSize, alpha);    \
    }

extern "C" {

PXK_YCOCG_INVERSE(pxkiYCoCgToBGR_16s8u_P3C3R, Plain16, int16_t, uint8_t, No)
PXK_YCOCG_INVERSE_ALPHA(pxkiYCoCgToBGR_16s8u_P3C4R, Plain16, int16_t, uint8_t, No)
PXK_YCOCG_INVERSE(pxkiYCoCgToBGR_Rev_16s8u_P3C3R, Rev16, int16_t, uint8_t, No)
PXK_YCOCG_INVERSE_ALPHA(pxkiYCoCgToBGR_Rev_16s8u_P3C4R, Rev16, int16_t, uint8_t, No)
// A height below 1 returns pxkOk at once (as does a width below 1).
PXK_YCOCG_INVERSE(pxkiYCoCgToRGB_8u_P3C3R, Offset8, uint8_t, uint8_t, No)
PXK_YCOCG_INVERSE(pxkiYCoCgToSBGR_16s_P3C3R, Plain16, int16_t, int16_t, No)
PXK_YCOCG_INVERSE_ALPHA(pxkiYCoCgToSBGR_16s_P3C4R, Plain16, int16_t, int16_t, Yes)
PXK_YCOCG_INVERSE(pxkiYCoCgToSBGR_32s16s_P3C3R, Plain32, int32_t, int16_t, Yes)
PXK_YCOCG_INVERSE_ALPHA(pxkiYCoCgToSBGR_32s16s_P3C4R, Plain32, int32_t, int16_t, Yes)
PXK_YCOCG_INVERSE(pxkiYCoCgToSBGR_Rev_16s_P3C3R, Rev16, int16_t, int16_t, No)
PXK_YCOCG_INVERSE_ALPHA(pxkiYCoCgToSBGR_Rev_16s_P3C4R, Rev16, int16_t, int16_t, No)
PXK_YCOCG_INVERSE(pxkiYCoCgToSBGR_Rev_32s16s_P3C3R, Rev32, int32_t, int16_t, No)
PXK_YCOCG_INVERSE_ALPHA(pxkiYCoCgToSBGR_Rev_32s16s_P3C4R, Rev32, int32_t, int16_t, No)

}  // extern "C"

#undef PXK_YCOCG_INVERSE
#undef PXK_YCOCG_INVERSE_ALPHA
