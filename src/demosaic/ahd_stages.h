// The arithmetic of the homogeneity-directed demosaic, one form each, in integers:
// the green interpolated along a line, the colour rebuilt from a green plane, the
// luma and chroma terms, and their distances.
#pragma once

#include <cstdint>
#include <type_traits>

#include "frame/simd_inline.h"
#include "frame/vec_float.h"

namespace pxk {
namespace demosaic {

// Green at a red or blue site from the line through it: a and b the green neighbours,
// c the centre, d and e the samples two away: ((a + b) >> 1) + ((c - d + c - e) >> 2),
// held between a and b.
PXK_INLINE int32_t lineGreen(int32_t a, int32_t b, int32_t c, int32_t d, int32_t e) {
    const int32_t g = ((a + b) >> 1) + ((c - d + c - e) >> 2);
    const int32_t lo = a < b ? a : b, hi = a < b ? b : a;
    return g < lo ? lo : (g > hi ? hi : g);
}

PXK_INLINE int32_t saturate(int32_t v, int32_t top) { return v < 0 ? 0 : (v > top ? top : v); }

// A colour from a green plane: the green G at the site plus the mean difference of
// colour and green over `count` (2 or 4, shift 1 or 2) neighbours of that colour,
// saturated to 0..top.
template <int Shift>
PXK_INLINE int32_t colourFromGreen(int32_t green, int32_t colourSum, int32_t greenSum, int32_t top) {
    return saturate(green + ((colourSum - greenSum) >> Shift), top);
}

// Luma and chroma terms of a candidate.
struct Yuv {
    int32_t y, u, v;
};
PXK_INLINE Yuv yuvOf(int32_t r, int32_t g, int32_t b) {
    return Yuv{(66 * r + 129 * g + 25 * b + 128) >> 8, (-38 * r - 74 * g + 112 * b + 128) >> 8,
               (112 * r - 94 * g - 18 * b + 128) >> 8};
}

PXK_INLINE int32_t lumaDistance(const Yuv& a, const Yuv& b) { return a.y > b.y ? a.y - b.y : b.y - a.y; }

// dU * dU + dV * dV: in 64 bits for 16-bit samples, where it passes 32 bits; for
// 8-bit samples (|dU|, |dV| below 2^9) 32 bits hold it exactly and give the same value.
template <class T>
using ChromaDistance = std::conditional_t<sizeof(T) == 1, int32_t, int64_t>;
template <class T>
PXK_INLINE ChromaDistance<T> chromaDistance(const Yuv& a, const Yuv& b) {
    using D = ChromaDistance<T>;
    const D du = D{a.u} - b.u, dv = D{a.v} - b.v;
    return du * du + dv * dv;
}

// ---- Vector twins, on 32-bit lanes: the same integers, lane by lane ----

template <class V>
PXK_INLINE V lineGreen(V a, V b, V c, V d, V e) {
    using namespace vec;
    const V g = add32(srai32<1>(add32(a, b)), srai32<2>(sub32(add32(sub32(c, d), c), e)));
    return min32(max32(g, min32(a, b)), max32(a, b));
}

template <int Shift, class V>
PXK_INLINE V colourFromGreen(V green, V colourSum, V greenSum, int32_t top) {
    using namespace vec;
    const V v = add32(green, srai32<Shift>(sub32(colourSum, greenSum)));
    return min32(max32(v, zero<V>()), splat32<V>(top));
}

template <class V>
struct YuvLanes {
    V y, u, v;
};

// The terms in single precision: with samples below 2^16 every product and partial
// sum is an integer below 2^24, so each is exact, and the arithmetic shift of the
// exact sum is that of the integer form.
template <class V>
PXK_INLINE V weightedTerm(V r, V g, V b, float kr, float kg, float kb) {
    using namespace vec;
    using F = decltype(toFloat(r));
    const F sum = addF(addF(addF(mulF(splatF<F>(kr), toFloat(r)), mulF(splatF<F>(kg), toFloat(g))),
                            mulF(splatF<F>(kb), toFloat(b))),
                       splatF<F>(128.0f));
    return srai32<8>(truncToInt(sum));
}
template <class V>
PXK_INLINE YuvLanes<V> yuvOf(V r, V g, V b) {
    return YuvLanes<V>{weightedTerm(r, g, b, 66.0f, 129.0f, 25.0f), weightedTerm(r, g, b, -38.0f, -74.0f, 112.0f),
                       weightedTerm(r, g, b, 112.0f, -94.0f, -18.0f)};
}

}  // namespace demosaic
}  // namespace pxk
