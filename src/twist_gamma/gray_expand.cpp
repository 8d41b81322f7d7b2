// Gray to RGB: each gray sample copied into three channels, and in C1C4R the alpha
// argument into the fourth of every pixel. No arithmetic: samples move as bits, so
// 32f values (NaNs included) pass through unchanged. Steps in bytes for every type.
#include "pxkcc.h"

#include <cstring>

#include "frame/checks.h"
#include "frame/convert_row.h"
#include "frame/vec_float.h"

using namespace pxk;

namespace {

// ---------------------------------------------------------------------------------
// 8u: the frame's packed layouts, fed by a gray plane read as three equal channels.
// ---------------------------------------------------------------------------------

struct GrayPlaneIn {
    static constexpr int kPlanes = 1;
    static constexpr int kBytes = 1;
    const uint8_t* plane[1];

    template <class V>
    PXK_INLINE Block<V> load(int32_t x) const {
        V h0, h1;
        simd::toHalves(vec::loadLanes<V, 16>(plane[0] + x), h0, h1);
        Block<V> b;
        b.half[0] = Lanes3<V>{{h0, h0, h0}};
        b.half[1] = Lanes3<V>{{h1, h1, h1}};
        return b;
    }
    PXK_INLINE Pixel3 load1(int32_t x) const { return Pixel3{{plane[0][x], plane[0][x], plane[0][x]}}; }
};

struct CopyForm {
    template <class V>
    PXK_INLINE static Lanes3<V> apply(const Lanes3<V>& v) {
        return v;
    }
    PXK_INLINE static Pixel3 apply(Pixel3 p) { return p; }
};
using Copy = ColumnForms<CopyForm, CopyForm>;

// ---------------------------------------------------------------------------------
// 16u and 32f: samples of 2 or 4 bytes moved as integer words, a 16-byte chunk of
// gray samples a lane at a time.
// ---------------------------------------------------------------------------------

// The three (C3) or four (C4) chunks of output that one chunk of gray samples gives,
// alpha (in every sample lane of `alpha`) in the fourth channel of C4.
template <class V>
PXK_INLINE void spread3(V g, V out[3], std::integral_constant<int, 4>) {
    out[0] = vec::shuffle32<_MM_SHUFFLE(1, 0, 0, 0)>(g);
    out[1] = vec::shuffle32<_MM_SHUFFLE(2, 2, 1, 1)>(g);
    out[2] = vec::shuffle32<_MM_SHUFFLE(3, 3, 3, 2)>(g);
}
template <class V>
PXK_INLINE void spread3(V g, V out[3], std::integral_constant<int, 2>) {
    using namespace vec;
    const V high = upperHalf(g);
    out[0] = unpacklo64(shuffleLow16<_MM_SHUFFLE(1, 0, 0, 0)>(g), shuffleLow16<_MM_SHUFFLE(2, 2, 1, 1)>(g));
    out[1] = unpacklo64(shuffleLow16<_MM_SHUFFLE(3, 3, 3, 2)>(g), shuffleLow16<_MM_SHUFFLE(1, 0, 0, 0)>(high));
    out[2] = unpacklo64(shuffleLow16<_MM_SHUFFLE(2, 2, 1, 1)>(high), shuffleLow16<_MM_SHUFFLE(3, 3, 3, 2)>(high));
}
// The low or high halves of a and b interleaved in units of Bits bits.
template <int Bits, class V>
PXK_INLINE V interleaveLow(V a, V b) {
    if constexpr (Bits == 16) return vec::unpacklo16(a, b);
    if constexpr (Bits == 32) return vec::unpacklo32(a, b);
    if constexpr (Bits == 64) return vec::unpacklo64(a, b);
}
template <int Bits, class V>
PXK_INLINE V interleaveHigh(V a, V b) {
    if constexpr (Bits == 16) return vec::unpackhi16(a, b);
    if constexpr (Bits == 32) return vec::unpackhi32(a, b);
    if constexpr (Bits == 64) return vec::unpackhi64(a, b);
}
// Samples of Bytes bytes: each gray sample paired with itself and with alpha, then the
// pairs joined into whole pixels (g, g, g, alpha).
template <class V, int Bytes>
PXK_INLINE void spread4(V g, V alpha, V out[4], std::integral_constant<int, Bytes>) {
    constexpr int kBits = 8 * Bytes;
    const V pairsLo = interleaveLow<kBits>(g, g), withAlphaLo = interleaveLow<kBits>(g, alpha);
    const V pairsHi = interleaveHigh<kBits>(g, g), withAlphaHi = interleaveHigh<kBits>(g, alpha);
    out[0] = interleaveLow<2 * kBits>(pairsLo, withAlphaLo);
    out[1] = interleaveHigh<2 * kBits>(pairsLo, withAlphaLo);
    out[2] = interleaveLow<2 * kBits>(pairsHi, withAlphaHi);
    out[3] = interleaveHigh<2 * kBits>(pairsHi, withAlphaHi);
}

template <class V, int Bytes>
PXK_INLINE V splatSample(uint32_t bits) {
    return Bytes == 4 ? vec::splat32<V>(static_cast<int32_t>(bits)) : vec::splat16<V>(static_cast<int32_t>(bits));
}

// One row of `width` samples of `Bytes` bytes into `Channels` channels. Samples are
// handled as unsigned words of their size (W), so no value is ever interpreted.
template <int Bytes, int Channels>
void spreadRow(int32_t width, const uint8_t* src, uint8_t* dst, uint32_t alphaBits) {
    using V = vec::Widest;
    using Size = std::integral_constant<int, Bytes>;
    constexpr int32_t kPerLane = 16 / Bytes;
    constexpr int32_t kPerBlock = kPerLane * vec::kLanes<V>;
    constexpr int kOutStride = 16 * Channels;
    const V alpha = splatSample<V, Bytes>(alphaBits);
    int32_t x = 0;
    for (; width - x >= kPerBlock; x += kPerBlock) {
        const V g = vec::loadLanes<V, 16>(src + std::ptrdiff_t{Bytes} * x);
        uint8_t* out = dst + std::ptrdiff_t{Bytes} * Channels * x;
        V v[Channels];
        if constexpr (Channels == 3) {
            spread3(g, v, Size{});
        } else {
            spread4(g, alpha, v, Size{});
        }
        PXK_UNROLL
        for (int i = 0; i < Channels; ++i) vec::storeLanes<V, kOutStride>(out + 16 * i, v[i]);
    }
    for (; x < width; ++x) {
        uint8_t* out = dst + std::ptrdiff_t{Bytes} * Channels * x;
        for (int c = 0; c < 3; ++c) std::memcpy(out + Bytes * c, src + std::ptrdiff_t{Bytes} * x, Bytes);
        if (Channels == 4) std::memcpy(out + 3 * Bytes, &alphaBits, Bytes);  // the low bytes on this target
    }
}

template <int Bytes, int Channels, class T>
PxkResult spread(const T* src, int32_t srcStep, T* dst, int32_t dstStep, PxkSize size, uint32_t alphaBits) {
    PXK_CHECK(checkPtrs(src, dst));
    PXK_CHECK(checkSize(size, 1, 1));
    driveRows(
        size.width, size.height,
        [alphaBits](int32_t width, const uint8_t* s, uint8_t* d) { spreadRow<Bytes, Channels>(width, s, d, alphaBits); },
        rows(reinterpret_cast<const uint8_t*>(src), srcStep), rows(reinterpret_cast<uint8_t*>(dst), dstStep));
    return pxkOk;
}

uint32_t bitsOf(float v) {
    uint32_t b;
    std::memcpy(&b, &v, sizeof b);
    return b;
}

}  // namespace

extern "C" {

PxkResult pxkiGrayToRGB_8u_C1C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                 PxkSize roiSize) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<Copy>(roiSize, planeRows(GrayPlaneIn{{pSrc}}, srcStep), planeRows(PackedC3Out{{pDst}}, dstStep));
    return pxkOk;
}
PxkResult pxkiGrayToRGB_8u_C1C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                 PxkSize roiSize, uint8_t alpha) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(roiSize, 1, 1));
    convertRegion<Copy>(roiSize, planeRows(GrayPlaneIn{{pSrc}}, srcStep),
                        planeRows(PackedC4AlphaOut{{pDst}, alpha}, dstStep));
    return pxkOk;
}
PxkResult pxkiGrayToRGB_16u_C1C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                  PxkSize roiSize) {
    return spread<2, 3>(pSrc, srcStep, pDst, dstStep, roiSize, 0);
}
PxkResult pxkiGrayToRGB_16u_C1C4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                  PxkSize roiSize, uint16_t alpha) {
    return spread<2, 4>(pSrc, srcStep, pDst, dstStep, roiSize, alpha);
}
PxkResult pxkiGrayToRGB_32f_C1C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                  PxkSize roiSize) {
    return spread<4, 3>(pSrc, srcStep, pDst, dstStep, roiSize, 0);
}
PxkResult pxkiGrayToRGB_32f_C1C4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                  PxkSize roiSize, float alpha) {
    return spread<4, 4>(pSrc, srcStep, pDst, dstStep, roiSize, bitsOf(alpha));
}

}  // extern "C"
