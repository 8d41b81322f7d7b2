// Groups of four pixels in float lanes, for the gray and twist kernels that compute in
// single precision: four samples of any sample type loaded as floats (exactly), the
// three- and four-channel packed layouts split into one vector a channel and joined
// back, and four integer results stored in the sample type. Layouts only: the
// arithmetic lives in the forms.
#pragma once

#include "frame/samples.h"

#include "frame/simd_inline.h"

#include <cstdint>
#include <cstring>

#include "frame/vec_float.h"

namespace pxk {
namespace quads {

using vec::F128;
using vec::V128;

PXK_INLINE const uint8_t* bytes(const void* p) { return static_cast<const uint8_t*>(p); }
PXK_INLINE uint8_t* bytes(void* p) { return static_cast<uint8_t*>(p); }

// Four consecutive samples as floats.
PXK_INLINE F128 load4(const float* p) { return vec::loadF<F128>(p); }
PXK_INLINE F128 load4(const uint16_t* p) {
    return vec::toFloat(vec::unpacklo16(vec::loadLowHalves128(bytes(p)), vec::zero<V128>()));
}
PXK_INLINE F128 load4(const int16_t* p) {
    const V128 v = vec::loadLowHalves128(bytes(p));
    return vec::toFloat(vec::srai32<16>(vec::unpacklo16(v, v)));
}
PXK_INLINE F128 load4(const uint8_t* p) {
    const V128 z = vec::zero<V128>();
    return vec::toFloat(vec::unpacklo16(vec::unpacklo8(vec::loadLowQuarters128(p), z), z));
}
// Four signed 16-bit samples plus 32768, as floats (the sum taken as integers: the
// sign bit flipped).
PXK_INLINE F128 load4Offset(const int16_t* p) {
    const V128 v = vec::xor_(vec::loadLowHalves128(bytes(p)), vec::splat16<V128>(0x8000));
    return vec::toFloat(vec::unpacklo16(v, vec::zero<V128>()));
}

// Four 32-bit integer results (a 128-bit lane; a V256 holds eight) stored as samples:
// the low 16 bits of each; each saturated to signed 16 bits; each (already within
// 0..255) as a byte.
template <class V>
PXK_INLINE V lowHalvesSigned(V d) {
    return vec::srai32<16>(vec::slli32<16>(d));  // low halves, sign-extended: packs keeps them
}
template <class V>
PXK_INLINE void storeLow16(uint16_t* p, V d) {
    const V low = lowHalvesSigned(d);
    vec::storeLowHalves(bytes(p), vec::packs32(low, low));
}
template <class V>
PXK_INLINE void storeSaturated16(int16_t* p, V d) {
    vec::storeLowHalves(bytes(p), vec::packs32(d, d));
}
// The same for two vectors of results, a's then b's, with one pack and one store (the
// 256-bit form puts the packed lanes back in pixel order).
PXK_INLINE void storePacked16(uint8_t* p, V128 a, V128 b) { vec::store128(p, vec::packs32(a, b)); }
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE void storePacked16(uint8_t* p, vec::V256 a, vec::V256 b) {
    vec::storeLanes<vec::V256, 16>(p, _mm256_permute4x64_epi64(vec::packs32(a, b), _MM_SHUFFLE(3, 1, 2, 0)));
}
#endif
template <class V>
PXK_INLINE void storeLow16(uint16_t* p, V a, V b) {
    storePacked16(bytes(p), lowHalvesSigned(a), lowHalvesSigned(b));
}
template <class V>
PXK_INLINE void storeSaturated16(int16_t* p, V a, V b) {
    storePacked16(bytes(p), a, b);
}
PXK_INLINE void storeBytes(uint8_t* p, V128 d) {
    const V128 words = vec::packs32(d, d);
    vec::storeLowQuarters(p, vec::packus16(words, words));
}

// Lanes i0, i1 of a and i2, i3 of b (in each 128-bit lane of a 256-bit vector).
template <int I0, int I1, int I2, int I3, class F>
PXK_INLINE F pick(F a, F b) {
    return vec::floatsOf(vec::shuffle2x32<_MM_SHUFFLE(I3, I2, I1, I0)>(vec::bitsOf(a), vec::bitsOf(b)));
}

// Four three-channel pixels: the twelve samples in x, y, z (pixel order) as one
// vector a channel, and back. A 256-bit vector holds two such groups, one a 128-bit
// lane.
template <class F>
struct ChannelsOf3 {
    F c[3];
};
using Channels3 = ChannelsOf3<F128>;
template <class F>
PXK_INLINE ChannelsOf3<F> split3(F x, F y, F z) {
    ChannelsOf3<F> r;
    r.c[0] = pick<0, 3, 0, 2>(x, pick<2, 2, 1, 1>(y, z));
    r.c[1] = pick<0, 2, 0, 2>(pick<1, 1, 0, 0>(x, y), pick<3, 3, 2, 2>(y, z));
    r.c[2] = pick<0, 2, 0, 3>(pick<2, 2, 1, 1>(x, y), z);
    return r;
}
template <class F>
PXK_INLINE void join3(const F c[3], F& x, F& y, F& z) {
    x = pick<0, 2, 0, 2>(pick<0, 0, 0, 0>(c[0], c[1]), pick<0, 0, 1, 1>(c[2], c[0]));
    y = pick<0, 2, 0, 2>(pick<1, 1, 1, 1>(c[1], c[2]), pick<2, 2, 2, 2>(c[0], c[1]));
    z = pick<0, 2, 0, 2>(pick<2, 2, 3, 3>(c[2], c[0]), pick<3, 3, 3, 3>(c[1], c[2]));
}

// Four four-channel pixels to one vector a channel; the same again goes back.
template <class F>
PXK_INLINE void transpose4(F v[4]) {
    using namespace vec;
    const auto t0 = unpacklo32(bitsOf(v[0]), bitsOf(v[1])), t1 = unpacklo32(bitsOf(v[2]), bitsOf(v[3]));
    const auto t2 = unpackhi32(bitsOf(v[0]), bitsOf(v[1])), t3 = unpackhi32(bitsOf(v[2]), bitsOf(v[3]));
    v[0] = floatsOf(unpacklo64(t0, t1));
    v[1] = floatsOf(unpackhi64(t0, t1));
    v[2] = floatsOf(unpacklo64(t2, t3));
    v[3] = floatsOf(unpackhi64(t2, t3));
}

// Loads of four pixels of a packed row (C3: 12 samples, AC4/C4: 16) or of one plane,
// one float vector a channel.
template <class T>
PXK_INLINE Channels3 loadC3(const T* p) {
    return split3(load4(p), load4(p + 4), load4(p + 8));
}
template <class T>
PXK_INLINE void loadC4(const T* p, F128 v[4]) {
    PXK_UNROLL
    for (int i = 0; i < 4; ++i) v[i] = load4(p + 4 * i);
    transpose4(v);
}

#if defined(PXKCC_TARGET_AVX2)
// Eight pixels in 256-bit vectors, the first four in the low 128-bit lanes and the next
// four in the high ones: the four-pixel layouts above, run once over both halves.
using vec::F256;

// A vector of the four samples that load(p) gives in its low lane and load(q) in its
// high lane.
template <class Load, class T>
PXK_INLINE F256 lanePair(Load load, const T* p, const T* q) {
    return _mm256_set_m128(load(q), load(p));
}

// Eight C3 pixels (24 samples) or eight C4 pixels (32), one vector a channel; `load`
// gives four samples as floats.
template <class Load, class T>
PXK_INLINE ChannelsOf3<F256> loadC3x8(Load load, const T* p) {
    return split3(lanePair(load, p, p + 12), lanePair(load, p + 4, p + 16), lanePair(load, p + 8, p + 20));
}
template <class Load, class T>
PXK_INLINE void loadC4x8(Load load, const T* p, F256 v[4]) {
    PXK_UNROLL
    for (int i = 0; i < 4; ++i) v[i] = lanePair(load, p + 4 * i, p + 16 + 4 * i);
    transpose4(v);
}

// Eight float pixels stored from one vector a channel: C3 as 24 floats; AC4 as three
// floats a pixel, the fourth float of each pixel written back as it was read.
PXK_INLINE void storeC3x8(float* p, const F256 c[3]) {
    F256 x, y, z;
    join3(c, x, y, z);
    _mm256_storeu_ps(p, _mm256_permute2f128_ps(x, y, 0x20));
    _mm256_storeu_ps(p + 8, _mm256_permute2f128_ps(z, x, 0x30));
    _mm256_storeu_ps(p + 16, _mm256_permute2f128_ps(y, z, 0x31));
}
// AC4 with the fourth float of each pixel untouched: Keeping writes it back as it was
// read, Masked does not write it at all (for callers that may change it meanwhile).
enum class FourthFloat { Keeping, Masked };
template <FourthFloat Fourth>
PXK_INLINE void storeAC4x8(float* p, const F256 c[3]) {
    F256 v[4] = {c[0], c[1], c[2], _mm256_setzero_ps()};
    transpose4(v);
    const F256 out[4] = {_mm256_permute2f128_ps(v[0], v[1], 0x20), _mm256_permute2f128_ps(v[2], v[3], 0x20),
                         _mm256_permute2f128_ps(v[0], v[1], 0x31), _mm256_permute2f128_ps(v[2], v[3], 0x31)};
    const __m256i colour = _mm256_setr_epi32(-1, -1, -1, 0, -1, -1, -1, 0);
    PXK_UNROLL
    for (int i = 0; i < 4; ++i) {
        if constexpr (Fourth == FourthFloat::Keeping) {
            _mm256_storeu_ps(p + 8 * i, _mm256_blend_ps(out[i], _mm256_loadu_ps(p + 8 * i), 0x88));
        } else {
            _mm256_maskstore_ps(p + 8 * i, colour, out[i]);
        }
    }
}
#endif

}  // namespace quads
}  // namespace pxk
