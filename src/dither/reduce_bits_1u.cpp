// 8-bit samples packed to one bit each, by a threshold or by integer Stucki diffusion.
// Bits run from the most significant bit of a byte down; a row starts at bit
// dstBitOffset & 7 of its first byte.
#include "pxkcc.h"

#include <cstring>

#include "dither/noise.h"
#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/fixed_point.h"

using namespace pxk;

namespace {

// Collects the bits of one row and writes them: the first byte keeps its bits above
// the offset and has those below the written ones cleared; a last byte that is not
// also the first keeps the bits after the row's last pixel.
class BitRow {
public:
    BitRow(uint8_t* row, int32_t offset) : first_(row), out_(row), pos_(offset) {
        acc_ = static_cast<uint8_t>(row[0] & ~(0xFFu >> offset));
    }
    PXK_INLINE void put(bool bit) {
        if (bit) acc_ = static_cast<uint8_t>(acc_ | (0x80u >> pos_));
        if (++pos_ == 8) {
            *out_++ = acc_;
            acc_ = 0;
            pos_ = 0;
        }
    }
    void finish() {
        if (pos_ == 0) return;
        if (out_ != first_) acc_ = static_cast<uint8_t>(acc_ | (*out_ & (0xFFu >> pos_)));
        *out_ = acc_;
    }

private:
    uint8_t* first_;
    uint8_t* out_;
    int32_t pos_;
    uint8_t acc_;
};

// Integer Stucki over three rows of 32-bit errors (A oldest, B, C current), two zero
// cells at each end of each row. The error arithmetic is bounded (|e| stays far below
// 2^24) and is done in unsigned words so that no step can overflow.
void stuckiBits(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t offset, PxkSize size,
                uint8_t threshold, int32_t* rows) {
    const int32_t w = size.width;
    const std::size_t rowLength = static_cast<std::size_t>(w) + 4;
    std::memset(rows, 0, 3 * rowLength * sizeof(int32_t));
    int32_t* a = rows + 2;
    int32_t* b = a + rowLength;
    int32_t* c = b + rowLength;
    const int32_t limit = int32_t{threshold} * 8192;
    for (int32_t y = 0; y < size.height; ++y) {
        const uint8_t* s = byteOffset(src, static_cast<std::intptr_t>(y) * srcStep);
        BitRow bits(byteOffset(dst, static_cast<std::intptr_t>(y) * dstStep), offset);
        for (int32_t i = 0; i < w; ++i) {
            const uint32_t g = static_cast<uint32_t>(a[i - 2] + a[i + 2]) +
                               8u * static_cast<uint32_t>(b[i] + c[i - 1]) +
                               4u * static_cast<uint32_t>(a[i] + b[i - 1] + b[i + 1] + c[i - 2]) +
                               2u * static_cast<uint32_t>(a[i - 1] + a[i + 1] + b[i - 2] + b[i + 2]);
            const int32_t sum = static_cast<int32_t>(uint32_t{s[i]} * 8192u + 23u * g);
            int32_t e = asr(sum, 10);
            const bool set = sum > limit;
            if (set) e -= 2047;
            c[i] = e;
            bits.put(set);
        }
        bits.finish();
        int32_t* oldA = a;
        a = b;
        b = c;
        c = oldA;
    }
}

void thresholdBits(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t offset, PxkSize size,
                   uint8_t threshold) {
    for (int32_t y = 0; y < size.height; ++y) {
        const uint8_t* s = byteOffset(src, static_cast<std::intptr_t>(y) * srcStep);
        BitRow bits(byteOffset(dst, static_cast<std::intptr_t>(y) * dstStep), offset);
        for (int32_t i = 0; i < size.width; ++i) bits.put(threshold < s[i]);
        bits.finish();
    }
}

}  // namespace

extern "C" {

// Only the low three bits of dstBitOffset count. spare1 and spare2 are never read.
PxkResult pxkiReduceBits_8u1u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                  int32_t dstBitOffset, PxkSize roiSize, int32_t spare1, int32_t spare2,
                                  PxkDitherType dtype, uint8_t threshold, uint8_t* pBuffer) {
    (void)spare1;
    (void)spare2;
    PXK_CHECK(checkPtrs(pSrc, pDst));
    if (roiSize.width < 1 || roiSize.height < 1 || dstBitOffset < 0) return pxkErrSize;
    if (dtype != pxkDitherNone && dtype != pxkDitherStucki) return pxkErrDitherType;
    const int32_t offset = dstBitOffset & 7;
    if (dtype == pxkDitherNone) {
        thresholdBits(pSrc, srcStep, pDst, dstStep, offset, roiSize, threshold);
        return pxkOk;
    }
    PXK_CHECK(checkPtrs(pBuffer));
    stuckiBits(pSrc, srcStep, pDst, dstStep, offset, roiSize, threshold,
               reinterpret_cast<int32_t*>(dither::alignedBase(pBuffer)));
    return pxkOk;
}

}  // extern "C"
