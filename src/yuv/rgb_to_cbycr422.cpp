// RGB or BGR -> packed CbYCr422 (Cb Y0 Cr Y1 for each pair of pixels).
//
// 709HDTV members: Y of each pixel by the 709HDTV luma; Cb, Cr of a pair =
// clamp8((k . (p0 + p1) + 128.5 * 2^17) >> 17).
// Standard members: Y by the direct form; chroma carried along the row (see
// CarriedChroma), every byte kept to its low 8 bits.
// In all of them a last pixel of an odd width writes two bytes only, its own Cb and
// then its Y; the byte its Cr would take is left unwritten. The fourth byte of an AC4
// source is not read into the result. Checks: the pointers, then the size (1 by 1 at
// least); steps are not tested.
#include "pxkcc.h"

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "yuv/groups_row.h"
#include "yuv/hd_forms.h"
#include "yuv/hd_rows.h"
#include "yuv/pair_dots.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kBGR = true, kRGB = false;

// ---------------------------------------------------------------------------------
// The carried chroma of the standard members
// ---------------------------------------------------------------------------------

// Pairs p0, p1 of a row, with two carries that start at 0 in each row:
//   q = (k . p1) >> 2,  C = low8((((k . p0) >> 1) + carry + q - 8355841) >> 16),
//   then carry = q,
// for the Cb row and the Cr row of the standard matrix, each with its own carry. A pair
// weighs p0 one half, p1 one quarter and the second pixel of the pair before one
// quarter; the first pair of a row has no such neighbour and its sum stays short by
// that quarter. A last odd pixel's Cb is low8((k . p - 8355840) >> 16).
struct CarriedChroma {
    static constexpr int32_t kPairOffset = -8355841;
    static constexpr int32_t kLoneOffset = -8355840;

    PXK_INLINE static int32_t dot(const int32_t (&k)[3], Pixel3 p) { return k[0] * p.c[0] + k[1] * p.c[1] + k[2] * p.c[2]; }

    int32_t carryB = 0, carryR = 0;

    PXK_INLINE static uint8_t carried(const int32_t (&k)[3], Pixel3 p0, Pixel3 p1, int32_t& carry) {
        const int32_t q = asr(dot(k, p1), 2);
        const uint8_t c = low8(asr(asr(dot(k, p0), 1) + carry + q + kPairOffset, 16));
        carry = q;
        return c;
    }
    PXK_INLINE void pair(Pixel3 p0, Pixel3 p1, uint8_t& cb, uint8_t& cr) {
        cb = carried(kStandardChroma.cb, p0, p1, carryB);
        cr = carried(kStandardChroma.cr, p0, p1, carryR);
    }
    PXK_INLINE static uint8_t cb(Pixel3 p) { return low8(asr(dot(kStandardChroma.cb, p) + kLoneOffset, 16)); }
    PXK_INLINE static uint8_t cr(Pixel3) { return 0; }  // no place for it

    // The vector twin over the pairs of a block. even[h] and odd[h] hold k . p0 and
    // k . p1 of pairs 4 h to 4 h + 3 of each 128-bit lane (32-bit lanes); `carry`
    // holds the q of the pair before the block and becomes the q of the block's last
    // pair. Returns the results in 16-bit lanes (not yet cut to 8 bits).
    template <class V>
    PXK_INLINE static V carriedBlock(const V even[2], const V odd[2], V& carry) {
        const V q[2] = {srai32<2>(odd[0]), srai32<2>(odd[1])};
        V before[2];  // the q of each pair's predecessor
        fromPairBefore(q, carry, before);
        V c[2];
        PXK_UNROLL
        for (int h = 0; h < 2; ++h) {
            c[h] = srai32<16>(add32(add32(srai32<1>(even[h]), before[h]), add32(q[h], splat32<V>(kPairOffset))));
        }
        return packs32(c[0], c[1]);  // within -256..0: no saturation
    }
};

// One row of the standard members: whole blocks of pairs in vectors (the carries pass
// from pair to pair inside a block and on to the next), then pair by pair, then a last
// odd pixel. The blocks give the bits of the scalar pairs.
template <bool Bgr, class In, class Memory>
PXK_INLINE void carriedRow(const In& in, const CbYCrSink<Memory>& out, int32_t width) {
    const int32_t pixels = 2 * (width / 2);
    CarriedChroma chroma;
    const int32_t blockEnd = pixels - pixels % kBlockPixels<V128>;
    pairBlocks(0, blockEnd, [&](auto v, int32_t x) PXK_LAMBDA_INLINE {
        using V = decltype(v);
        Block<V> b = in.template load<V>(x);
        if (Bgr) swapFirstAndThird(b);
        const V luma = simd::halvesToPixelBytes(DirectLuma::luma(b.half[0]), DirectLuma::luma(b.half[1]));
        V even[2], odd[2], carryB = carryOf<V>(chroma.carryB), carryR = carryOf<V>(chroma.carryR);
        pairDots(kStandardChroma.cb, b, even, odd);
        const V cb = CarriedChroma::carriedBlock(even, odd, carryB);
        pairDots(kStandardChroma.cr, b, even, odd);
        const V cr = CarriedChroma::carriedBlock(even, odd, carryR);
        const V low8Mask = splat16<V>(0x00FF);
        out.block422(x, luma, packus16(and_(cb, low8Mask), and_(cr, low8Mask)));
        chroma.carryB = carriedValue(carryB);
        chroma.carryR = carriedValue(carryR);
    });
    int32_t x = blockEnd;
    for (; x < pixels; x += 2) {
        const Pixel3 p0 = readRgb<Bgr>(in, x), p1 = readRgb<Bgr>(in, x + 1);
        uint8_t cb, cr;
        chroma.pair(p0, p1, cb, cr);
        out.luma(x, DirectLuma::luma(p0));
        out.luma(x + 1, DirectLuma::luma(p1));
        out.chroma(x / 2, cb, cr);
    }
    if (width % 2 != 0) OddLumaAndChroma<CarriedChroma>::write<AnyColumnLuma<DirectLuma>>(out, readRgb<Bgr>(in, pixels), pixels);
}

// ---------------------------------------------------------------------------------
// Members
// ---------------------------------------------------------------------------------

// The rows of a region; `row(memory, width, src, dst)` converts one.
template <class Row>
PxkResult toCbYCr(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size, Row row) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    driveRows(size.width, size.height, row, rows(src, srcStep), rows(dst, dstStep));
    return pxkOk;
}

// 709HDTV: whole pairs in vector blocks as far as they fill them, the rest pair by
// pair, then a last odd pixel.
template <class In, class Memory>
PXK_INLINE void hdtvRow(int32_t width, const uint8_t* s, uint8_t* d) {
    convertGroupsRow<2, AnyColumnLuma<Hdtv709Luma>, Hdtv709PairChroma, kBGR, OddLumaAndChroma<Hdtv709LoneChroma>>(
        In{{s}}, CbYCrSink<Memory>{d}, width);
}

template <bool Bgr, class In, class Memory>
PXK_INLINE void standardRow(int32_t width, const uint8_t* s, uint8_t* d) {
    carriedRow<Bgr>(In{{s}}, CbYCrSink<Memory>{d}, width);
}

// A member with two kernels: aligned or not, by both pointers and both steps.
template <template <class Memory> class RowOf>
PxkResult toCbYCrTwoKernels(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    byAlignment(src, srcStep, dst, dstStep, [&](auto memory) {
        driveRows(size.width, size.height, RowOf<decltype(memory)>::run, rows(src, srcStep), rows(dst, dstStep));
    });
    return pxkOk;
}

template <class Memory>
struct HdtvAC4Row {
    static void run(int32_t width, const uint8_t* s, uint8_t* d) { hdtvRow<PackedC4InWith<Memory>, Memory>(width, s, d); }
};
template <class Memory>
struct StandardAC4Row {
    static void run(int32_t width, const uint8_t* s, uint8_t* d) {
        standardRow<kBGR, PackedC4InWith<Memory>, Memory>(width, s, d);
    }
};

}  // namespace

extern "C" {

PxkResult pxkiBGRToCbYCr422_709HDTV_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             PxkSize roiSize) {
    return toCbYCr(pSrc, srcStep, pDst, dstStep, roiSize, hdtvRow<PackedC3In, vec::UnalignedMemory>);
}

PxkResult pxkiBGRToCbYCr422_709HDTV_8u_AC4C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                              PxkSize roiSize) {
    return toCbYCrTwoKernels<HdtvAC4Row>(pSrc, srcStep, pDst, dstStep, roiSize);
}

PxkResult pxkiRGBToCbYCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize) {
    return toCbYCr(pSrc, srcStep, pDst, dstStep, roiSize, standardRow<kRGB, PackedC3In, vec::UnalignedMemory>);
}

// Source bytes B, G, R, A: the carried chroma of RGBToCbYCr422_8u_C3C2R in that order.
PxkResult pxkiBGRToCbYCr422_8u_AC4C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                      PxkSize roiSize) {
    return toCbYCrTwoKernels<StandardAC4Row>(pSrc, srcStep, pDst, dstStep, roiSize);
}

}  // extern "C"
