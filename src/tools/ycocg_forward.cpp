// Colour to YCoCg planes: the plain family (divides as it goes) and the reversible
// family (lifting steps). Each export is one row: its name, its member (form,
// arithmetic width, colour order, narrowing of its vector stores), its packed source
// (sample type and samples a pixel), its plane type, and whether it tests the size.
#include "pxkcc.h"

#include "tools/ycocg_call.h"

using namespace pxk;
using namespace pxk::ycocg;

namespace {

// 8-bit colour in 16-bit arithmetic (every value fits).
using Plain8 = Member<PlainForward, 16, kBGR>;
using Rev8 = Member<RevForward, 16, kBGR>;
// Red first, chroma moved up by 128 into 8-bit planes.
using Offset8 = Member<OffsetForward, 16, kRGB>;
// 16-bit colour into 32-bit planes, in 32-bit arithmetic (nothing saturates).
using Plain16To32 = Member<PlainForward, 32, kBGR>;
using Rev16To32 = Member<RevForward, 32, kBGR>;
// 16-bit planes, plain: 32-bit arithmetic; the vector groups saturate to 16 bits, the
// tail keeps the low 16 bits (Co or Cg of 32768 wraps there only).
using Plain16 = Member<PlainForward, 32, kBGR, NarrowSaturate>;
// 16-bit planes, reversible: 16-bit arithmetic with wrap-around, undone exactly by the
// reversible inverse.
using Rev16 = Member<RevForward, 16, kBGR>;

}  // namespace

#define PXK_YCOCG_FORWARD(name, M, S, channels, D, sizeCheck)                                                  \
    PxkResult name(const S* pSrc, int32_t srcStep, D* const pDst[3], int32_t dstStep, PxkSize roiSize) {     \
        return toPlanes<M, channels>(SizeCheck::sizeCheck, pSrc, srcStep, pDst, dstStep, roiSize);        \
    }

extern "C" {

PXK_YCOCG_FORWARD(pxkiBGRToYCoCg_8u16s_C3P3R, Plain8, uint8_t, 3, int16_t, Yes)
PXK_YCOCG_FORWARD(pxkiBGRToYCoCg_8u16s_C4P3R, Plain8, uint8_t, 4, int16_t, Yes)
PXK_YCOCG_FORWARD(pxkiBGRToYCoCg_Rev_8u16s_C3P3R, Rev8, uint8_t, 3, int16_t, Yes)
PXK_YCOCG_FORWARD(pxkiBGRToYCoCg_Rev_8u16s_C4P3R, Rev8, uint8_t, 4, int16_t, Yes)
PXK_YCOCG_FORWARD(pxkiRGBToYCoCg_8u_C3P3R, Offset8, uint8_t, 3, uint8_t, Yes)
PXK_YCOCG_FORWARD(pxkiSBGRToYCoCg_16s32s_C3P3R, Plain16To32, int16_t, 3, int32_t, Yes)
PXK_YCOCG_FORWARD(pxkiSBGRToYCoCg_16s32s_C4P3R, Plain16To32, int16_t, 4, int32_t, No)
PXK_YCOCG_FORWARD(pxkiSBGRToYCoCg_16s_C3P3R, Plain16, int16_t, 3, int16_t, Yes)
PXK_YCOCG_FORWARD(pxkiSBGRToYCoCg_16s_C4P3R, Plain16, int16_t, 4, int16_t, Yes)
PXK_YCOCG_FORWARD(pxkiSBGRToYCoCg_Rev_16s32s_C3P3R, Rev16To32, int16_t, 3, int32_t, Yes)
PXK_YCOCG_FORWARD(pxkiSBGRToYCoCg_Rev_16s32s_C4P3R, Rev16To32, int16_t, 4, int32_t, No)
PXK_YCOCG_FORWARD(pxkiSBGRToYCoCg_Rev_16s_C3P3R, Rev16, int16_t, 3, int16_t, No)
PXK_YCOCG_FORWARD(pxkiSBGRToYCoCg_Rev_16s_C4P3R, Rev16, int16_t, 4, int16_t, No)

}  // extern "C"

#undef PXK_YCOCG_FORWARD
