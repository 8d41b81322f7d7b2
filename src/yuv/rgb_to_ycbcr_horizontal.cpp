// RGB or BGR -> studio-range YCbCr with horizontally subsampled chroma: 4:2:2 (one Cb,
// Cr pair for two pixels of a row) and 4:1:1 (for four), into planes or packed
// Y0 Cb Y1 Cr. Luma is the direct form of the full-resolution conversion; chroma comes
// from the sums of the group's samples.
#include "pxkcc.h"

#include <utility>

#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "frame/vec.h"
#include "yuv/subsampled_forms.h"

using namespace pxk;
using namespace pxk::yuv;

namespace {

constexpr bool kBGR = true, kRGB = false;

// The source pixel at column x as R, G, B.
template <bool Bgr, class In>
PXK_INLINE Pixel3 rgbAt(const In& row, int32_t x) {
    Pixel3 p = row.load1(x);
    if (Bgr) std::swap(p.c[0], p.c[2]);
    return p;
}

// Three planes: Y at full width, Cb and Cr one sample a group.
struct PlanarSink {
    uint8_t* y;
    uint8_t* cb;
    uint8_t* cr;

    PXK_INLINE void luma(int32_t x, uint8_t v) const { y[x] = v; }
    PXK_INLINE void chroma(int32_t c, uint8_t vb, uint8_t vr) const {
        cb[c] = vb;
        cr[c] = vr;
    }
    // Sixteen pixels a lane from column x (4:2:2): their Y bytes in pixel order, and
    // [Cb of the eight pairs | Cr of the eight pairs] in each lane.
    template <class V>
    PXK_INLINE void block422(int32_t x, V lumaBytes, V chromaBytes) const {
        vec::storeLanes<V, 16>(y + x, lumaBytes);
        vec::storeLowHalves(cb + x / 2, chromaBytes);
        vec::storeLowHalves(cr + x / 2, vec::upperHalf(chromaBytes));
    }
};

// Packed 4:2:2, Y0 Cb Y1 Cr (Y0 Cr Y1 Cb with CrFirst): the Y of pixel x at byte 2 x,
// the pair's chroma at 4 c + 1 and 4 c + 3.
template <bool CrFirst>
struct PackedC2Sink {
    uint8_t* row;

    PXK_INLINE void luma(int32_t x, uint8_t v) const { row[pixelOffset<2>(x)] = v; }
    PXK_INLINE void chroma(int32_t c, uint8_t vb, uint8_t vr) const {
        row[pixelOffset<4>(c) + 1] = CrFirst ? vr : vb;
        row[pixelOffset<4>(c) + 3] = CrFirst ? vb : vr;
    }
    // Byte 1 after the Y of a last pixel x that has no pair.
    PXK_INLINE void loneChroma(int32_t x, uint8_t v) const { row[pixelOffset<2>(x) + 1] = v; }
    // Sixteen pixels a lane from column x: Y bytes in pixel order interleaved with the
    // pairs' chroma (32 bytes a lane); chromaBytes holds [Cb of the eight pairs | Cr].
    template <class V>
    PXK_INLINE void block422(int32_t x, V lumaBytes, V chromaBytes) const {
        const V first = CrFirst ? vec::upperHalf(chromaBytes) : chromaBytes;
        const V second = CrFirst ? chromaBytes : vec::upperHalf(chromaBytes);
        const V cbcr = vec::unpacklo8(first, second);  // Cb0 Cr0 Cb1 Cr1 ... (or Cr first)
        uint8_t* p = row + pixelOffset<2>(x);
        vec::storeLanes<V, 32>(p, vec::unpacklo8(lumaBytes, cbcr));
        vec::storeLanes<V, 32>(p + 16, vec::unpackhi8(lumaBytes, cbcr));
    }
};

// What a last pixel that has no group does (4:2:2 members with an odd width). Packed
// destinations take a chroma value in byte 1, whatever the name's chroma order.
enum class OddPixel {
    Unwritten,       // left as it was
    LumaOnly,        // its Y is written
    LumaAndLoneCb,   // its Y, and its Cb at a scale of 2^16 with a rounding term of 1/8
    LumaAndDirectCb, // its Y, and the direct form's Cb
    LumaAndDirectCr, // its Y, and the direct form's Cr
};

// Luma of every pixel by the direct form.
struct DirectPairLuma {
    PXK_INLINE static uint8_t luma(Pixel3 p, int32_t) { return DirectLuma::luma(p); }
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& half, int) {
        return DirectLuma::luma(half);
    }
};

// The first pixel of a pair by the direct form, the second with the offset 1048576 in
// place of 1081344: without the rounding half. (Both lie within 16..235, so the low 8
// bits and a saturation give the same byte.)
struct AsymmetricPairLuma {
    PXK_INLINE static uint8_t luma(Pixel3 p, int32_t x) {
        const int32_t offset = x % 2 == 0 ? 1081344 : 1048576;
        return low8(asr(16843 * p.c[0] + 33030 * p.c[1] + 6423 * p.c[2] + offset, 16));
    }
    template <class V>
    PXK_INLINE static V luma(const Lanes3<V>& half, int h) {
        return DirectForm::lumaLess(half, vec::and_(simd::oddColumnLanes32<V>(h), vec::splat32<V>(1081344 - 1048576)));
    }
};

// The Cb of one pixel at a scale of 2^16, with 128 and a rounding term of one eighth.
PXK_INLINE uint8_t singleCb(Pixel3 p) {
    return low8(asr(-9699 * p.c[0] - 19071 * p.c[1] + 28770 * p.c[2] + 8396800, 16));
}

// Sixteen pixels a lane of a 4:2:2 row from column x, by the forms' vector twins.
template <class Luma, class Chroma, bool Bgr, class V, class In, class Sink>
PXK_INLINE void vectorBlock422(const In& in, const Sink& out, int32_t x) {
    Block<V> b = in.template load<V>(x);
    if (Bgr) {
        std::swap(b.half[0].c[0], b.half[0].c[2]);
        std::swap(b.half[1].c[0], b.half[1].c[2]);
    }
    const V lumaBytes = simd::halvesToPixelBytes(Luma::luma(b.half[0], 0), Luma::luma(b.half[1], 1));
    V sums[3];
    PXK_UNROLL
    for (int k = 0; k < 3; ++k) sums[k] = simd::horizontalPairSums(b.half[0].c[k], b.half[1].c[k]);
    V cb, cr;
    Chroma::apply(sums[0], sums[1], sums[2], cb, cr);
    out.block422(x, lumaBytes, vec::packus16(cb, cr));
}

// One row: `width / Group` whole groups, then what the odd-pixel rule says. In 4:2:2
// the whole groups run in vector blocks as far as they fill them (the forms' vector
// twins give the same bits), the rest one group at a time.
template <int Group, class Luma, class Chroma, bool Bgr, OddPixel Odd, class In, class Sink>
PXK_INLINE void convertGroupsRow(const In& in, const Sink& out, int32_t width) {
    const int32_t groups = width / Group;
    int32_t first = 0;  // the first group left to the scalar loop
    if constexpr (Group == 2) {
        const int32_t pixels = 2 * groups;
        int32_t x = 0;
        for (; pixels - x >= kBlockPixels<vec::Widest>; x += kBlockPixels<vec::Widest>) {
            vectorBlock422<Luma, Chroma, Bgr, vec::Widest>(in, out, x);
        }
        if (pixels - x >= kBlockPixels<vec::V128>) {
            vectorBlock422<Luma, Chroma, Bgr, vec::V128>(in, out, x);
            x += kBlockPixels<vec::V128>;
        }
        first = x / 2;
    }
    for (int32_t c = first; c < groups; ++c) {
        ChromaSums sums;
        for (int32_t i = 0; i < Group; ++i) {
            const int32_t x = Group * c + i;
            const Pixel3 p = rgbAt<Bgr>(in, x);
            out.luma(x, Luma::luma(p, x));
            sums.add(p);
        }
        out.chroma(c, Chroma::cb(sums), Chroma::cr(sums));
    }
    if constexpr (Odd != OddPixel::Unwritten) {
        if (width % Group != 0) {
            const int32_t x = groups * Group;
            const Pixel3 p = rgbAt<Bgr>(in, x);
            out.luma(x, Luma::luma(p, x));
            if constexpr (Odd == OddPixel::LumaAndLoneCb) out.loneChroma(x, singleCb(p));
            if constexpr (Odd == OddPixel::LumaAndDirectCb) out.loneChroma(x, DirectForm::apply(p).c[1]);
            if constexpr (Odd == OddPixel::LumaAndDirectCr) out.loneChroma(x, DirectForm::apply(p).c[2]);
        }
    }
}

// Into three planes, each with its own step. Checks: the source, the plane array and
// its entries, the step array, then the size.
template <int Group, class Chroma, bool Bgr, OddPixel Odd, class In>
PxkResult toPlanes(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3], const int32_t dstStep[3],
                   PxkSize size, int32_t minWidth) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkPlanes(dst, 3));
    PXK_CHECK(checkPtrs(dstStep));
    PXK_CHECK(checkSize(size, minWidth, 1));
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
template <class Luma, class Chroma, bool Bgr, bool CrFirst, OddPixel Odd, class In>
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
    toPackedC2<DirectPairLuma, EighthRoundedPairForm, kBGR, false, OddPixel::LumaAndLoneCb>(
        planeRows(In{{src}}, srcStep), dst, dstStep, size);
    return pxkOk;
}

// The RGB members: the asymmetric luma, the half-rounded pair form; at least 1 by 1.
template <bool CrFirst>
PxkResult rgbC3ToPackedC2(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    toPackedC2<AsymmetricPairLuma, HalfRoundedPairForm, kRGB, CrFirst, OddPixel::LumaAndDirectCb>(
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
    toPackedC2<AsymmetricPairLuma, HalfRoundedPairForm, kRGB, CrFirst, OddPixel::LumaAndDirectCr>(
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
    PXK_CHECK((toPlanes<4, DirectSumForm, kBGR, OddPixel::Unwritten, PackedC3In>(pSrc, srcStep, pDst, dstStep,
                                                                                  roiSize, 4)));
    return oddSizeStatus(roiSize, 4, 1);
}

PxkResult pxkiBGRToYCbCr411_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                      const int32_t dstStep[3], PxkSize roiSize) {
    PXK_CHECK((toPlanes<4, DirectSumForm, kBGR, OddPixel::Unwritten, PackedC4In>(pSrc, srcStep, pDst, dstStep,
                                                                                  roiSize, 4)));
    return oddSizeStatus(roiSize, 4, 1);
}

// 4:2:2 from BGR, the eighth-rounded pair form; an odd last pixel writes its Y only.
PxkResult pxkiBGRToYCbCr422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                     const int32_t dstStep[3], PxkSize roiSize) {
    return toPlanes<2, EighthRoundedPairForm, kBGR, OddPixel::LumaOnly, PackedC3In>(pSrc, srcStep, pDst, dstStep,
                                                                                   roiSize, 2);
}

PxkResult pxkiBGRToYCbCr422_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                      const int32_t dstStep[3], PxkSize roiSize) {
    return toPlanes<2, EighthRoundedPairForm, kBGR, OddPixel::LumaOnly, PackedC4In>(pSrc, srcStep, pDst, dstStep,
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
    return toPlanes<2, EighthRoundedPairForm, kRGB, OddPixel::Unwritten, PackedC3In>(pSrc, srcStep, pDst, dstStep,
                                                                                    roiSize, 2);
}

}  // extern "C"
