// The moves of the demosaic's vector stages: rows of 8-bit, 16-bit or signed 16-bit
// values to and from 32-bit lanes (4 a vector of 128 bits, 8 of 256), and the squared
// chroma distances in lanes of floats or doubles. These are layouts (they cross
// 128-bit lanes in the 256-bit type); the arithmetic lives in ahd_stages.h.
#pragma once

#include <cstdint>
#include <cstring>

#include "frame/simd_inline.h"
#include "frame/vec_float.h"

namespace pxk {
namespace demosaic {
namespace lanes32 {

using vec::V128;

// Values a vector of 32-bit lanes holds.
template <class V>
inline constexpr int32_t kCount = static_cast<int32_t>(sizeof(V) / 4);

// ---- 128 bits: four values ----

PXK_INLINE V128 widen(const uint8_t* p, V128*) {
    int32_t w;
    std::memcpy(&w, p, 4);
    const V128 z = _mm_setzero_si128();
    return _mm_unpacklo_epi16(_mm_unpacklo_epi8(_mm_cvtsi32_si128(w), z), z);
}
PXK_INLINE V128 widen(const uint16_t* p, V128*) {
    return _mm_unpacklo_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128());
}
PXK_INLINE V128 widen(const int16_t* p, V128*) {
    const V128 v = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
    return _mm_srai_epi32(_mm_unpacklo_epi16(v, v), 16);
}
// Values known to fit the destination type.
PXK_INLINE void narrow(uint8_t* p, V128 v) {
    const V128 w = _mm_packs_epi32(v, v);
    const int32_t bytes = _mm_cvtsi128_si32(_mm_packus_epi16(w, w));
    std::memcpy(p, &bytes, 4);
}
PXK_INLINE void narrow(int8_t* p, V128 v) {
    const V128 w = _mm_packs_epi32(v, v);
    const int32_t bytes = _mm_cvtsi128_si32(_mm_packs_epi16(w, w));
    std::memcpy(p, &bytes, 4);
}
PXK_INLINE void narrow(uint16_t* p, V128 v) {
    // 0..65535 through the signed pack: shifted down by 32768 and back.
    const V128 bias = _mm_set1_epi32(32768);
    const V128 w = _mm_packs_epi32(_mm_sub_epi32(v, bias), _mm_sub_epi32(v, bias));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_xor_si128(w, _mm_set1_epi16(-32768)));
}
PXK_INLINE void narrow(int16_t* p, V128 v) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packs_epi32(v, v));
}

#if defined(PXKCC_TARGET_AVX2)
using vec::V256;

// ---- 256 bits: eight values ----

PXK_INLINE V256 widen(const uint8_t* p, V256*) {
    return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
}
PXK_INLINE V256 widen(const uint16_t* p, V256*) {
    return _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
}
PXK_INLINE V256 widen(const int16_t* p, V256*) {
    return _mm256_cvtepi16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
}
PXK_INLINE V128 halves16(V256 v) {  // eight 32-bit values to eight signed 16-bit ones
    return _mm_packs_epi32(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1));
}
PXK_INLINE void narrow(uint8_t* p, V256 v) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packus_epi16(halves16(v), halves16(v)));
}
PXK_INLINE void narrow(int8_t* p, V256 v) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packs_epi16(halves16(v), halves16(v)));
}
PXK_INLINE void narrow(uint16_t* p, V256 v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p),
                     _mm_packus_epi32(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1)));
}
PXK_INLINE void narrow(int16_t* p, V256 v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), halves16(v)); }
#endif

// widen<V>(p): kCount<V> values from p, each in a 32-bit lane.
template <class V, class T>
PXK_INLINE V widen(const T* p) {
    return widen(p, static_cast<V*>(nullptr));
}

// ---- squared chroma distances, dU * dU + dV * dV, exactly ----
//
// With 8-bit samples |dU| and |dV| stay below 2^9, so the sum stays below 2^19 and
// single precision holds it exactly; with 16-bit samples it passes 32 bits and double
// precision holds it exactly (below 2^34). Either way the comparisons are those of
// the exact integers.

template <class T, class V>
struct ChromaDistances;

template <class V>
struct ChromaDistances<uint8_t, V> {
    using D = decltype(vec::toFloat(V{}));
    PXK_INLINE static D of(V du, V dv) {
        const D u = vec::toFloat(du), v = vec::toFloat(dv);
        return vec::addF(vec::mulF(u, u), vec::mulF(v, v));
    }
    PXK_INLINE static D min(D a, D b) { return vec::minF(a, b); }
    PXK_INLINE static D max(D a, D b) { return vec::maxF(a, b); }
    // All ones in the lanes where d is above the limit.
    PXK_INLINE static V above(D d, D limit) { return vec::bitsOf(vec::lessF(limit, d)); }
};

// Two vectors of doubles: the lower and the upper half of the 32-bit lanes.
template <class D>
struct DoublePair {
    D lo, hi;
};

PXK_INLINE DoublePair<vec::D128> toDoubles(V128 v) {
    return {_mm_cvtepi32_pd(v), _mm_cvtepi32_pd(_mm_unpackhi_epi64(v, v))};
}
PXK_INLINE V128 masks32(DoublePair<vec::D128> m) {
    return _mm_castps_si128(_mm_shuffle_ps(_mm_castpd_ps(m.lo), _mm_castpd_ps(m.hi), 0x88));
}
PXK_INLINE DoublePair<vec::D128> lessD(DoublePair<vec::D128> a, DoublePair<vec::D128> b) {
    return {_mm_cmplt_pd(a.lo, b.lo), _mm_cmplt_pd(a.hi, b.hi)};
}
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE DoublePair<vec::D256> toDoubles(V256 v) {
    return {_mm256_cvtepi32_pd(_mm256_castsi256_si128(v)), _mm256_cvtepi32_pd(_mm256_extracti128_si256(v, 1))};
}
PXK_INLINE V256 masks32(DoublePair<vec::D256> m) {
    const __m256i low32 = _mm256_setr_epi32(0, 2, 4, 6, 0, 2, 4, 6);
    const __m128 lo = _mm256_castps256_ps128(_mm256_permutevar8x32_ps(_mm256_castpd_ps(m.lo), low32));
    const __m128 hi = _mm256_castps256_ps128(_mm256_permutevar8x32_ps(_mm256_castpd_ps(m.hi), low32));
    return _mm256_set_m128i(_mm_castps_si128(hi), _mm_castps_si128(lo));
}
PXK_INLINE DoublePair<vec::D256> lessD(DoublePair<vec::D256> a, DoublePair<vec::D256> b) {
    return {_mm256_cmp_pd(a.lo, b.lo, _CMP_LT_OQ), _mm256_cmp_pd(a.hi, b.hi, _CMP_LT_OQ)};
}
#endif

template <class V>
struct ChromaDistances<uint16_t, V> {
    using D = decltype(toDoubles(V{}));
    PXK_INLINE static D of(V du, V dv) {
        const D u = toDoubles(du), v = toDoubles(dv);
        return {vec::addD(vec::mulD(u.lo, u.lo), vec::mulD(v.lo, v.lo)),
                vec::addD(vec::mulD(u.hi, u.hi), vec::mulD(v.hi, v.hi))};
    }
    PXK_INLINE static D min(D a, D b) { return {vec::minD(a.lo, b.lo), vec::minD(a.hi, b.hi)}; }
    PXK_INLINE static D max(D a, D b) { return {vec::maxD(a.lo, b.lo), vec::maxD(a.hi, b.hi)}; }
    PXK_INLINE static V above(D d, D limit) { return masks32(lessD(limit, d)); }
};

}  // namespace lanes32
}  // namespace demosaic
}  // namespace pxk
