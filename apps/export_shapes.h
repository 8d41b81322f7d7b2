// Calling an export through one signature, whatever its layouts: adapters from each
// signature shape of the exports to a function of (source image, destination image).
// Shared by the demo and the benchmark. An image type needs width(), height(),
// step(), data() and planes().
//
// Each shape has one adapter, taking the export as a function pointer: the address
// the header gives, or the one looked up by name in a loaded build of the library.
// Beside it, a template over the export makes one plain function per export, for
// tables of function pointers; it forwards to the same adapter.
#ifndef PXKCC_APPS_EXPORT_SHAPES_H
#define PXKCC_APPS_EXPORT_SHAPES_H

#include <cstddef>
#include <cstdint>
#include <vector>
#include <cstring>


#include "pxkcc.h"

namespace shapes {

using PackedToPacked = PxkResult (*)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize);
using PackedToPlanar = PxkResult (*)(const uint8_t*, int32_t, uint8_t* const[3], int32_t, PxkSize);
using PlanarToPlanar = PxkResult (*)(const uint8_t* const[3], int32_t, uint8_t* const[3], int32_t, PxkSize);
using PlanarToPacked = PxkResult (*)(const uint8_t* const[3], int32_t, uint8_t*, int32_t, PxkSize);
using PlanarToPackedAlpha = PxkResult (*)(const uint8_t* const[3], int32_t, uint8_t*, int32_t, PxkSize, uint8_t);
using PackedToPackedAlpha = PxkResult (*)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize, uint8_t);
using PackedToPlanar4 = PxkResult (*)(const uint8_t*, int32_t, uint8_t* const[4], int32_t, PxkSize);
using PackedToPlanarSteps = PxkResult (*)(const uint8_t*, int32_t, uint8_t* const[3], const int32_t[3], PxkSize);
using PlanarToPlanarSteps = PxkResult (*)(const uint8_t* const[3], const int32_t[3], uint8_t* const[3],
                                          const int32_t[3], PxkSize);
using PackedToPlanarTight = PxkResult (*)(const uint8_t*, uint8_t* const[3], PxkSize);
using PackedToTwoPlanes = PxkResult (*)(const uint8_t*, int32_t, uint8_t*, int32_t, uint8_t*, int32_t, PxkSize);
using PlanarToPlanarTight = PxkResult (*)(const uint8_t* const[3], uint8_t* const[3], PxkSize);
using TwoPlanesToPacked = PxkResult (*)(const uint8_t*, int32_t, const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize);
using TwoPlanesToPackedAlpha = PxkResult (*)(const uint8_t*, int32_t, const uint8_t*, int32_t, uint8_t*, int32_t,
                                             PxkSize, uint8_t);
using PlanarStepsToPacked = PxkResult (*)(const uint8_t* const[3], const int32_t[3], uint8_t*, int32_t, PxkSize);
using PlanarStepsToPackedAlpha = PxkResult (*)(const uint8_t* const[3], const int32_t[3], uint8_t*, int32_t, PxkSize,
                                               uint8_t);
using PlanarStepsToPlanar = PxkResult (*)(const uint8_t* const[3], const int32_t[3], uint8_t* const[3], int32_t,
                                          PxkSize);
using PlanarToPackedTight = PxkResult (*)(const uint8_t* const[3], uint8_t*, PxkSize);
using WordsToWords = PxkResult (*)(const uint32_t*, int32_t, uint16_t*, int32_t, PxkSize);
template <class T>
using MosaicToPacked = PxkResult (*)(const T*, PxkRect, PxkSize, int32_t, T*, int32_t, PxkBayerGrid, int32_t);
template <class T>
using MosaicToPackedScaled = PxkResult (*)(const T*, PxkRect, PxkSize, int32_t, const float*, T*, int32_t,
                                           PxkBayerGrid);
template <class T>
using MosaicToPackedWithBuffer = PxkResult (*)(const T*, PxkRect, PxkSize, int32_t, T*, int32_t, PxkBayerGrid,
                                               uint8_t*, int32_t);

// Chroma layouts: planes with a step each beside a Y plane and a plane of chroma pairs.
using TwoPlanesToPlanarSteps = PxkResult (*)(const uint8_t*, int32_t, const uint8_t*, int32_t, uint8_t* const[3],
                                             const int32_t[3], PxkSize);
using PlanarStepsToTwoPlanes = PxkResult (*)(const uint8_t* const[3], const int32_t[3], uint8_t*, int32_t, uint8_t*,
                                             int32_t, PxkSize);

using Planar4ToPacked = PxkResult (*)(const uint8_t* const[4], int32_t, uint8_t*, int32_t, PxkSize);
using Planar4ToPlanar4 = PxkResult (*)(const uint8_t* const[4], int32_t, uint8_t* const[4], int32_t, PxkSize);

template <class Image>
PxkSize regionOf(const Image& image) {
    return PxkSize{image.width(), image.height()};
}

// ---- the adapters: export given at run time ----

template <class Image>
PxkResult packedToPacked(PackedToPacked f, const Image& s, Image& d) {
    return f(s.data(), s.step(), d.data(), d.step(), regionOf(s));
}

template <class Image>
PxkResult packedToPlanar(PackedToPlanar f, const Image& s, Image& d) {
    return f(s.data(), s.step(), d.planes(), d.step(), regionOf(s));
}

template <class Image>
PxkResult planarToPlanar(PlanarToPlanar f, const Image& s, Image& d) {
    return f(s.planes(), s.step(), d.planes(), d.step(), regionOf(s));
}

template <class Image>
PxkResult planarToPacked(PlanarToPacked f, const Image& s, Image& d) {
    return f(s.planes(), s.step(), d.data(), d.step(), regionOf(s));
}

// Alpha is the value the export writes into every destination pixel.
template <class Image>
PxkResult planarToPackedAlpha(PlanarToPackedAlpha f, const Image& s, Image& d, uint8_t alpha = 0xFF) {
    return f(s.planes(), s.step(), d.data(), d.step(), regionOf(s), alpha);
}

template <class Image>
PxkResult packedToPackedAlpha(PackedToPackedAlpha f, const Image& s, Image& d, uint8_t alpha = 0xFF) {
    return f(s.data(), s.step(), d.data(), d.step(), regionOf(s), alpha);
}

// Four destination planes (the image's planes() has four entries).
template <class Image>
PxkResult packedToPlanar4(PackedToPlanar4 f, const Image& s, Image& d) {
    return f(s.data(), s.step(), d.planes(), d.step(), regionOf(s));
}

// Planes of their own sizes, one step a plane (the image's steps() has three entries).
template <class Image>
PxkResult packedToPlanarSteps(PackedToPlanarSteps f, const Image& s, Image& d) {
    return f(s.data(), s.step(), d.planes(), d.steps(), regionOf(s));
}

template <class Image>
PxkResult planarToPlanarSteps(PlanarToPlanarSteps f, const Image& s, Image& d) {
    return f(s.planes(), s.steps(), d.planes(), d.steps(), regionOf(s));
}

// A Y plane and a plane of chroma pairs: the image's first two planes.
template <class Image>
PxkResult packedToTwoPlanes(PackedToTwoPlanes f, const Image& s, Image& d) {
    return f(s.data(), s.step(), d.planes()[0], d.steps()[0], d.planes()[1], d.steps()[1], regionOf(s));
}

// Planes of their own sizes, one step a plane, into one packed image.
template <class Image>
PxkResult planarStepsToPacked(PlanarStepsToPacked f, const Image& s, Image& d) {
    return f(s.planes(), s.steps(), d.data(), d.step(), regionOf(s));
}

template <class Image>
PxkResult planarStepsToPackedAlpha(PlanarStepsToPackedAlpha f, const Image& s, Image& d, uint8_t alpha = 0xFF) {
    return f(s.planes(), s.steps(), d.data(), d.step(), regionOf(s), alpha);
}

// 32-bit words into 16-bit words, steps counted in elements (the images' byte steps
// are multiples of 4).
template <class Image>
PxkResult wordsToWords(WordsToWords f, const Image& s, Image& d) {
    return f(reinterpret_cast<const uint32_t*>(s.data()), s.step() / 4, reinterpret_cast<uint16_t*>(d.data()),
             d.step() / 2, regionOf(s));
}

// Forms without steps: the rows must lie tightly packed (the image's step equal to its
// row), as the function derives every step from the width.
template <class Image>
PxkResult packedToPlanarTight(PackedToPlanarTight f, const Image& s, Image& d) {
    return f(s.data(), d.planes(), regionOf(s));
}

template <class Image>
PxkResult planarToPlanarTight(PlanarToPlanarTight f, const Image& s, Image& d) {
    return f(s.planes(), d.planes(), regionOf(s));
}

// From a Y plane and a plane of chroma pairs: the source image's first two planes.
template <class Image>
PxkResult twoPlanesToPacked(TwoPlanesToPacked f, const Image& s, Image& d) {
    return f(s.planes()[0], s.steps()[0], s.planes()[1], s.steps()[1], d.data(), d.step(), regionOf(s));
}

template <class Image>
PxkResult twoPlanesToPackedAlpha(TwoPlanesToPackedAlpha f, const Image& s, Image& d, uint8_t alpha = 0xFF) {
    return f(s.planes()[0], s.steps()[0], s.planes()[1], s.steps()[1], d.data(), d.step(), regionOf(s), alpha);
}

// Source planes of their own sizes into planes of one size with one step.
template <class Image>
PxkResult planarStepsToPlanar(PlanarStepsToPlanar f, const Image& s, Image& d) {
    return f(s.planes(), s.steps(), d.planes(), d.step(), regionOf(s));
}

template <class Image>
PxkResult planarToPackedTight(PlanarToPackedTight f, const Image& s, Image& d) {
    return f(s.planes(), d.data(), regionOf(s));
}

// Demosaicing: the whole image as the region, pattern B G / G R.
template <class T, class Image>
PxkResult mosaicToPacked(MosaicToPacked<T> f, const Image& s, Image& d) {
    return f(reinterpret_cast<const T*>(s.data()), PxkRect{0, 0, s.width(), s.height()}, regionOf(s), s.step(),
             reinterpret_cast<T*>(d.data()), d.step(), pxkBayerBGGR, 0);
}

// The same with the channels' scale (null: 1.0 each) before the destination.
template <class T, class Image>
PxkResult mosaicToPackedScaled(MosaicToPackedScaled<T> f, const Image& s, Image& d) {
    return f(reinterpret_cast<const T*>(s.data()), PxkRect{0, 0, s.width(), s.height()}, regionOf(s), s.step(),
             nullptr, reinterpret_cast<T*>(d.data()), d.step(), pxkBayerBGGR);
}

// The same with a work buffer of three rows of the least documented step, kept between
// calls (it only grows), so that a timed call does not allocate.
template <class T, class Image>
PxkResult mosaicToPackedWithBuffer(MosaicToPackedWithBuffer<T> f, const Image& s, Image& d) {
    static std::vector<uint8_t> work;
    const int32_t step = static_cast<int32_t>((8 * sizeof(T) + 25) * static_cast<size_t>(s.width()) + 384);
    if (work.size() < 3 * static_cast<size_t>(step)) work.resize(3 * static_cast<size_t>(step));
    return f(reinterpret_cast<const T*>(s.data()), PxkRect{0, 0, s.width(), s.height()}, regionOf(s), s.step(),
             reinterpret_cast<T*>(d.data()), d.step(), pxkBayerBGGR, work.data(), step);
}

// ---- YCoCg, tone mapping, 12-bit packing: samples of any type ----

// Packed rows into three planes with one step, the sample types taken from the export.
template <class S, class D, class Image>
PxkResult packedToPlanarTyped(PxkResult (*f)(const S*, int32_t, D* const[3], int32_t, PxkSize), const Image& s,
                              Image& d) {
    D* const planes[3] = {reinterpret_cast<D*>(d.planes()[0]), reinterpret_cast<D*>(d.planes()[1]),
                          reinterpret_cast<D*>(d.planes()[2])};
    return f(reinterpret_cast<const S*>(s.data()), s.step(), planes, d.step(), regionOf(s));
}

// Three planes with one step into packed rows; alpha (if the export takes it) 0xFF.
template <class S, class D, class... Alpha, class Image>
PxkResult planarToPackedTyped(PxkResult (*f)(const S* const[3], int32_t, D*, int32_t, PxkSize, Alpha...),
                              const Image& s, Image& d) {
    const S* const planes[3] = {reinterpret_cast<const S*>(s.planes()[0]), reinterpret_cast<const S*>(s.planes()[1]),
                                reinterpret_cast<const S*>(s.planes()[2])};
    return f(planes, s.step(), reinterpret_cast<D*>(d.data()), d.step(), regionOf(s), Alpha(0xFF)...);
}

// One plane to one plane, width and height given as two int32.
template <class S, class D, class Image>
PxkResult rowsWidthHeight(PxkResult (*f)(const S*, int32_t, D*, int32_t, int32_t, int32_t), const Image& s,
                          Image& d) {
    return f(reinterpret_cast<const S*>(s.data()), s.step(), reinterpret_cast<D*>(d.data()), d.step(), s.width(),
             s.height());
}

// ---- samples of any type, in place or not (the gamma members) ----
// The images' bytes are taken as samples of the export's type T; the float members'
// trailing (vMin, vMax) are given the unit range. The in-place forms first copy the
// source into the destination (the copy is part of what is measured) and convert it
// there, so that every call sees the same samples.

template <class... Range, class F, class... Args>
PxkResult withUnitRange(F f, Args... args) {
    if constexpr (sizeof...(Range) == 0) {
        return f(args...);
    } else {
        return f(args..., 0.0f, 1.0f);
    }
}

template <class T, class Image>
T* samplesOf(Image& image, int plane = 0) {
    return reinterpret_cast<T*>(image.planes()[plane]);
}

template <class Image>
void copyPlanes(const Image& s, Image& d, int planes) {
    for (int p = 0; p < planes; ++p) {
        std::memcpy(d.planes()[p], s.planes()[p], static_cast<size_t>(s.step()) * static_cast<size_t>(s.height()));
    }
}

template <class T, class Image, class... Range>
PxkResult samplesToSamples(PxkResult (*f)(const T*, int32_t, T*, int32_t, PxkSize, Range...), const Image& s,
                           Image& d) {
    return withUnitRange<Range...>(f, samplesOf<const T>(s), s.step(), samplesOf<T>(d), d.step(), regionOf(s));
}

template <class T, class Image, class... Range>
PxkResult samplesInPlace(PxkResult (*f)(T*, int32_t, PxkSize, Range...), const Image& s, Image& d) {
    copyPlanes(s, d, 1);
    return withUnitRange<Range...>(f, samplesOf<T>(d), d.step(), regionOf(d));
}

template <class T, class Image, class... Range>
PxkResult planesToPlanes(PxkResult (*f)(const T* const[3], int32_t, T* const[3], int32_t, PxkSize, Range...),
                         const Image& s, Image& d) {
    const T* const src[3] = {samplesOf<const T>(s, 0), samplesOf<const T>(s, 1), samplesOf<const T>(s, 2)};
    T* const dst[3] = {samplesOf<T>(d, 0), samplesOf<T>(d, 1), samplesOf<T>(d, 2)};
    return withUnitRange<Range...>(f, src, s.step(), dst, d.step(), regionOf(s));
}

template <class T, class Image, class... Range>
PxkResult planesInPlace(PxkResult (*f)(T* const[3], int32_t, PxkSize, Range...), const Image& s, Image& d) {
    copyPlanes(s, d, 3);
    T* const planes[3] = {samplesOf<T>(d, 0), samplesOf<T>(d, 1), samplesOf<T>(d, 2)};
    return withUnitRange<Range...>(f, planes, d.step(), regionOf(d));
}

// Chroma layouts: a Y plane and a plane of chroma pairs to three planes, and back.
template <class Image>
PxkResult twoPlanesToPlanarSteps(TwoPlanesToPlanarSteps f, const Image& s, Image& d) {
    return f(s.planes()[0], s.steps()[0], s.planes()[1], s.steps()[1], d.planes(), d.steps(), regionOf(s));
}

template <class Image>
PxkResult planarStepsToTwoPlanes(PlanarStepsToTwoPlanes f, const Image& s, Image& d) {
    return f(s.planes(), s.steps(), d.planes()[0], d.steps()[0], d.planes()[1], d.steps()[1], regionOf(s));
}

// ---- bit-depth reduction: one method, noise and level count a row ----

// A ReduceBits member of any sample types, run with 16 levels by `method` with `noise`
// percent; the scratch buffer (12 bytes a pixel of a row and 6400 more, what any
// method asks for) is kept from call to call.
template <class S, class D, class Image>
PxkResult reduceBitsBy(PxkResult (*f)(const S*, int32_t, D*, int32_t, PxkSize, uint32_t, PxkDitherType, int32_t,
                                      uint8_t*),
                       const Image& s, Image& d, PxkDitherType method, uint32_t noise) {
    static thread_local std::vector<uint8_t> scratch;
    scratch.resize(static_cast<size_t>(s.width()) * 12 + 6400);
    return f(reinterpret_cast<const S*>(s.data()), s.step(), reinterpret_cast<D*>(d.data()), d.step(), regionOf(s),
             noise, method, 16, scratch.data());
}

#define PXK_REDUCE_BITS_SHAPE(shape, method, noise)                                                            \
    template <class S, class D, class Image>                                                                 \
    PxkResult shape(PxkResult (*f)(const S*, int32_t, D*, int32_t, PxkSize, uint32_t, PxkDitherType, int32_t, \
                                   uint8_t*),                                                                 \
                    const Image& s, Image& d) {                                                               \
        return reduceBitsBy(f, s, d, method, noise);                                                          \
    }
PXK_REDUCE_BITS_SHAPE(reduceBitsNone, pxkDitherNone, 0)
PXK_REDUCE_BITS_SHAPE(reduceBitsFS, pxkDitherFS, 0)
PXK_REDUCE_BITS_SHAPE(reduceBitsFSNoise, pxkDitherFS, 30)
PXK_REDUCE_BITS_SHAPE(reduceBitsJJN, pxkDitherJJN, 0)
PXK_REDUCE_BITS_SHAPE(reduceBitsStucki, pxkDitherStucki, 0)
PXK_REDUCE_BITS_SHAPE(reduceBitsBayer, pxkDitherBayer, 0)
PXK_REDUCE_BITS_SHAPE(reduceBitsBayerNoise, pxkDitherBayer, 30)
#undef PXK_REDUCE_BITS_SHAPE

using OneBit = PxkResult (*)(const uint8_t*, int32_t, uint8_t*, int32_t, int32_t, PxkSize, int32_t, int32_t,
                             PxkDitherType, uint8_t, uint8_t*);

// The one-bit member by integer Stucki at threshold 128, rows from bit 0.
template <class Image>
PxkResult oneBitStucki(OneBit f, const Image& s, Image& d) {
    static thread_local std::vector<uint8_t> scratch;
    scratch.resize(static_cast<size_t>(s.width()) * 12 + 112);
    return f(s.data(), s.step(), d.data(), d.step(), 0, regionOf(s), 0, 0, pxkDitherStucki, 128, scratch.data());
}

// ---- gray and twist: samples of any type, the export's pointer types taken from it ----

// The row pointer of an image as the sample type T.
template <class T, class Image>
const T* rowSamplesOf(const Image& image) {
    return reinterpret_cast<const T*>(image.data());
}
template <class T, class Image>
T* rowSamplesOf(Image& image) {
    return reinterpret_cast<T*>(image.data());
}

// The weights that the ColorToGray rows pass, and the twist matrices of the ColorTwist
// rows (three rows of four; four rows of four for the 4x4 member).
inline const float kBenchGrayWeights[3] = {0.25f, 0.5f, 0.125f};
inline const double kBenchGrayWeights64[3] = {0.25, 0.5, 0.125};
inline const float kBenchTwist[16] = {0.5f,  0.25f, 0.125f, 8.0f,  -0.25f, 0.75f, 0.25f, 16.0f,
                                      0.25f, -0.5f, 0.875f, 32.0f, 0.0f,   0.0f,  0.0f,  1.0f};

// One packed image of samples T into another.
template <class T, class Image>
PxkResult samplesToSamples(PxkResult (*f)(const T*, int32_t, T*, int32_t, PxkSize), const Image& s, Image& d) {
    return f(rowSamplesOf<T>(s), s.step(), rowSamplesOf<T>(d), d.step(), regionOf(s));
}
// The same with three weights after the size.
template <class T, class W, class Image>
PxkResult samplesToSamplesWeighted(PxkResult (*f)(const T*, int32_t, T*, int32_t, PxkSize, const W*), const Image& s,
                                   Image& d) {
    const W* w = nullptr;
    if constexpr (sizeof(W) == 8) {
        w = kBenchGrayWeights64;
    } else {
        w = kBenchGrayWeights;
    }
    return f(rowSamplesOf<T>(s), s.step(), rowSamplesOf<T>(d), d.step(), regionOf(s), w);
}
// The same with an alpha value (1) after the size.
template <class T, class Image>
PxkResult samplesToSamplesAlpha(PxkResult (*f)(const T*, int32_t, T*, int32_t, PxkSize, T), const Image& s, Image& d) {
    return f(rowSamplesOf<T>(s), s.step(), rowSamplesOf<T>(d), d.step(), regionOf(s), T(1));
}
// A twist of packed pixels, out of place.
template <class T, class Image>
PxkResult twistPacked(PxkResult (*f)(const T*, int32_t, T*, int32_t, PxkSize, const float*), const Image& s, Image& d) {
    return f(rowSamplesOf<T>(s), s.step(), rowSamplesOf<T>(d), d.step(), regionOf(s), kBenchTwist);
}
// A twist in place, over the destination image (the source is not read).
template <class T, class Image>
PxkResult twistInPlace(PxkResult (*f)(T*, int32_t, PxkSize, const float*), const Image& s, Image& d) {
    return f(rowSamplesOf<T>(d), d.step(), regionOf(s), kBenchTwist);
}
// A twist of three planes, out of place and in place.
template <class T, class Image>
PxkResult twistPlanes(PxkResult (*f)(const T* const[3], int32_t, T* const[3], int32_t, PxkSize, const float*),
                      const Image& s, Image& d) {
    const T* const src[3] = {reinterpret_cast<const T*>(s.planes()[0]), reinterpret_cast<const T*>(s.planes()[1]),
                             reinterpret_cast<const T*>(s.planes()[2])};
    T* const dst[3] = {reinterpret_cast<T*>(d.planes()[0]), reinterpret_cast<T*>(d.planes()[1]),
                       reinterpret_cast<T*>(d.planes()[2])};
    return f(src, s.step(), dst, d.step(), regionOf(s), kBenchTwist);
}
template <class T, class Image>
PxkResult twistPlanesInPlace(PxkResult (*f)(T* const[3], int32_t, PxkSize, const float*), const Image& s, Image& d) {
    T* const planes[3] = {reinterpret_cast<T*>(d.planes()[0]), reinterpret_cast<T*>(d.planes()[1]),
                          reinterpret_cast<T*>(d.planes()[2])};
    return f(planes, d.step(), regionOf(s), kBenchTwist);
}

// Four source planes (the image's planes() has four entries), into one packed image or
// four planes.
template <class Image>
PxkResult planar4ToPacked(Planar4ToPacked f, const Image& s, Image& d) {
    return f(s.planes(), s.step(), d.data(), d.step(), regionOf(s));
}

template <class Image>
PxkResult planar4ToPlanar4(Planar4ToPlanar4 f, const Image& s, Image& d) {
    return f(s.planes(), s.step(), d.planes(), d.step(), regionOf(s));
}

// ---- 4:2:0 smoothing: the layout after the size; the whole image in one call ----

using TwoPlanesToPackedLayout = PxkResult (*)(const uint8_t*, int32_t, const uint8_t*, int32_t, uint8_t*, int32_t,
                                              PxkSize, int32_t);
using TwoPlanesToPlanarStepsLayout = PxkResult (*)(const uint8_t*, int32_t, const uint8_t*, int32_t,
                                                   uint8_t* const[3], const int32_t[3], PxkSize, int32_t);

template <class Image>
PxkResult twoPlanesToPackedWhole(TwoPlanesToPackedLayout f, const Image& s, Image& d) {
    return f(s.planes()[0], s.steps()[0], s.planes()[1], s.steps()[1], d.data(), d.step(), regionOf(s),
             pxkLayoutWhole);
}

template <class Image>
PxkResult twoPlanesToPlanarStepsWhole(TwoPlanesToPlanarStepsLayout f, const Image& s, Image& d) {
    return f(s.planes()[0], s.steps()[0], s.planes()[1], s.steps()[1], d.planes(), d.steps(), regionOf(s),
             pxkLayoutWhole);
}

// ---- Lab: packed samples of two types, planes with a step each (plain and _L) ----

// Packed rows of samples S into packed rows of samples D.
template <class S, class D, class Image>
PxkResult typedPackedToPacked(PxkResult (*f)(const S*, int32_t, D*, int32_t, PxkSize), const Image& s, Image& d) {
    return f(reinterpret_cast<const S*>(s.data()), s.step(), reinterpret_cast<D*>(d.data()), d.step(), regionOf(s));
}

// Three planes of samples T into three planes, a step array on each side (every plane
// with the image's step): int32_t steps and PxkSize, or int64_t steps and PxkSizeL.
template <class T, class Step, class Size, class Image>
PxkResult planesWithStepArrays(PxkResult (*f)(const T* const[3], const Step[3], T* const[3], const Step[3], Size),
                               const Image& s, Image& d) {
    const T* const src[3] = {samplesOf<const T>(s, 0), samplesOf<const T>(s, 1), samplesOf<const T>(s, 2)};
    T* const dst[3] = {samplesOf<T>(d, 0), samplesOf<T>(d, 1), samplesOf<T>(d, 2)};
    const Step srcSteps[3] = {s.step(), s.step(), s.step()};
    const Step dstSteps[3] = {d.step(), d.step(), d.step()};
    return f(src, srcSteps, dst, dstSteps, Size{s.width(), s.height()});
}

// ---- one function per export: export given at compile time ----

template <PackedToPacked F, class Image>
PxkResult packedToPacked(const Image& s, Image& d) {
    return packedToPacked(F, s, d);
}

template <PackedToPlanar F, class Image>
PxkResult packedToPlanar(const Image& s, Image& d) {
    return packedToPlanar(F, s, d);
}

template <PlanarToPlanar F, class Image>
PxkResult planarToPlanar(const Image& s, Image& d) {
    return planarToPlanar(F, s, d);
}

template <PlanarToPacked F, class Image>
PxkResult planarToPacked(const Image& s, Image& d) {
    return planarToPacked(F, s, d);
}

template <PlanarToPackedAlpha F, uint8_t Alpha = 0xFF, class Image>
PxkResult planarToPackedAlpha(const Image& s, Image& d) {
    return planarToPackedAlpha(F, s, d, Alpha);
}

}  // namespace shapes

#endif
