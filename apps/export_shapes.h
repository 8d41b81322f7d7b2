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

#include <cstdint>

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
