// 12-bit samples between 16-bit containers and packed rows of three bytes for two
// samples (a then b, most significant bits first):
//   byte 0 = a bits 11-4, byte 1 = a bits 3-0 | b bits 11-8, byte 2 = b bits 7-0.
// An odd last sample takes bytes 0 and 1, the low half of byte 1 written as 0. Each
// row starts a new group. The rows are plain loops over pairs.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"
#include "tools/samples.h"

using namespace pxk;

namespace {

// The two bytes that sample a contributes (its low 12 bits; bits 15-12 are dropped).
PXK_INLINE uint8_t highByte(uint32_t a) { return static_cast<uint8_t>(a >> 4); }
PXK_INLINE uint8_t lowNibbleHigh(uint32_t a) { return static_cast<uint8_t>(a << 4); }

void packRow(int32_t width, const uint16_t* src, uint8_t* dst) {
    const int32_t pairs = width / 2;
    for (int32_t i = 0; i < pairs; ++i) {
        const uint32_t a = loadSample<uint16_t>(src + 2 * i), b = loadSample<uint16_t>(src + 2 * i + 1);
        uint8_t* d = dst + 3 * static_cast<std::ptrdiff_t>(i);
        d[0] = highByte(a);
        d[1] = static_cast<uint8_t>(lowNibbleHigh(a) | ((b >> 8) & 0x0F));
        d[2] = static_cast<uint8_t>(b);
    }
    if (width % 2 != 0) {
        const uint32_t a = loadSample<uint16_t>(src + (width - 1));
        uint8_t* d = dst + 3 * static_cast<std::ptrdiff_t>(pairs);
        d[0] = highByte(a);
        d[1] = lowNibbleHigh(a);
    }
}

// Sample a from bytes 0 and 1 of a group, sample b from bytes 1 and 2.
PXK_INLINE uint16_t firstSample(const uint8_t* g) { return static_cast<uint16_t>((g[0] << 4) | (g[1] >> 4)); }
PXK_INLINE uint16_t secondSample(const uint8_t* g) { return static_cast<uint16_t>(((g[1] & 0x0F) << 8) | g[2]); }

void unpackRow(int32_t width, const uint8_t* src, uint16_t* dst) {
    const int32_t pairs = width / 2;
    for (int32_t i = 0; i < pairs; ++i) {
        const uint8_t* g = src + 3 * static_cast<std::ptrdiff_t>(i);
        storeSample(dst + 2 * i, firstSample(g));
        storeSample(dst + 2 * i + 1, secondSample(g));
    }
    if (width % 2 != 0) storeSample(dst + (width - 1), firstSample(src + 3 * static_cast<std::ptrdiff_t>(pairs)));
}

// The checks of both, in their order (pointers, size, then steps), then the rows.
template <class Row, class S, class D>
PxkResult checkedRows(Row row, const S* src, int32_t srcStep, D* dst, int32_t dstStep, int32_t width, int32_t height) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(PxkSize{width, height}, 1, 1));
    PXK_CHECK(checkSteps(srcStep, dstStep));
    driveRows(width, height, row, rows(src, srcStep), rows(dst, dstStep));
    return pxkOk;
}

}  // namespace

extern "C" {

PxkResult pxkiPack_16u12u_C1R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t width,
                              int32_t height) {
    return checkedRows(packRow, pSrc, srcStep, pDst, dstStep, width, height);
}

PxkResult pxkiUnpack_12u16u_C1R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, int32_t width,
                                int32_t height) {
    return checkedRows(unpackRow, pSrc, srcStep, pDst, dstStep, width, height);
}

}  // extern "C"
