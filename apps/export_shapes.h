// Calling an export through one signature, whatever its layouts: adapters from each
// signature shape of the exports to a function of (source image, destination image).
// Shared by the demo and the benchmark. An image type needs width(), height(),
// step(), data() and planes().
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

template <class Image>
PxkSize regionOf(const Image& image) {
    return PxkSize{image.width(), image.height()};
}

template <PackedToPacked F, class Image>
PxkResult packedToPacked(const Image& s, Image& d) {
    return F(s.data(), s.step(), d.data(), d.step(), regionOf(s));
}

template <PackedToPlanar F, class Image>
PxkResult packedToPlanar(const Image& s, Image& d) {
    return F(s.data(), s.step(), d.planes(), d.step(), regionOf(s));
}

template <PlanarToPlanar F, class Image>
PxkResult planarToPlanar(const Image& s, Image& d) {
    return F(s.planes(), s.step(), d.planes(), d.step(), regionOf(s));
}

template <PlanarToPacked F, class Image>
PxkResult planarToPacked(const Image& s, Image& d) {
    return F(s.planes(), s.step(), d.data(), d.step(), regionOf(s));
}

// Alpha is the value the export writes into every destination pixel.
template <PlanarToPackedAlpha F, uint8_t Alpha = 0xFF, class Image>
PxkResult planarToPackedAlpha(const Image& s, Image& d) {
    return F(s.planes(), s.step(), d.data(), d.step(), regionOf(s), Alpha);
}

}  // namespace shapes

#endif
