// The vector layer: one set of integer vector operations, overloaded for the 128-bit
// type (every build) and the 256-bit type (the avx2 build), so that each arithmetic
// form and each pixel layout is written once, as a template over its vector type.
//
// How to write a form once for both widths:
//   - Write it as `template <class V> static Lanes3<V> apply(const Lanes3<V>&)` (or on
//     whatever lane bundle it needs), using only the operations of this file, and
//     splat<V>(...) / pairs<V>(...) for constants. Never call an _mm_ or _mm256_
//     intrinsic from a form.
//   - Use only operations that act on each 128-bit lane by itself: in the 256-bit type
//     every operation here does to each lane exactly what its 128-bit twin does to
//     the whole vector (unpack, pack, madd, high product and shifts are all in-lane).
//     So a 256-bit block is two 128-bit blocks side by side and gives the same bits
//     by construction; the scalar twin of the form (apply(Pixel3)) serves the tail.
//   - Layouts put the pixels into lanes: loadLanes/storeLanes move one 16-byte chunk
//     a lane, `LaneStride` bytes apart in memory, so the same shuffle network serves
//     both widths. Byte shuffles (shuffleBytes, blendBytes) exist only in the avx2
//     build (kHasByteShuffle); a layout may have a faster network there.
//   - The column split does not change with the width: the wider blocks only cover
//     more of the vector columns at a time (see splitColumns in drivers.h).
#pragma once

#include <emmintrin.h>
#if defined(PXKCC_TARGET_AVX2)
#if !defined(__AVX2__)
#error "the avx2 target is compiled with -mavx2"
#endif
#include <immintrin.h>
#endif

#include <cstdint>
#include <cstring>

#include "frame/simd_inline.h"

namespace pxk {

#if defined(PXKCC_TARGET_AVX2)
inline constexpr bool kHasByteShuffle = true;
#else
inline constexpr bool kHasByteShuffle = false;
#endif

namespace vec {

using V128 = __m128i;
#if defined(PXKCC_TARGET_AVX2)
using V256 = __m256i;
// The widest vector type of this build.
using Widest = V256;
#else
using Widest = V128;
#endif

// Number of 128-bit lanes of a vector type.
template <class V>
inline constexpr int kLanes = sizeof(V) / 16;

// ---------------------------------------------------------------------------------
// Constants
// ---------------------------------------------------------------------------------

template <class V>
PXK_INLINE V zero();
template <>
PXK_INLINE V128 zero<V128>() { return _mm_setzero_si128(); }

// Every 16-bit lane holding v (taken modulo 2^16).
template <class V>
PXK_INLINE V splat16(int32_t v);
template <>
PXK_INLINE V128 splat16<V128>(int32_t v) { return _mm_set1_epi16(static_cast<int16_t>(v)); }

// Every 32-bit lane holding v.
template <class V>
PXK_INLINE V splat32(int32_t v);
template <>
PXK_INLINE V128 splat32<V128>(int32_t v) { return _mm_set1_epi32(v); }

// Every 128-bit lane holding the four 32-bit values a, b, c, d in this order.
template <class V>
PXK_INLINE V splat32Pattern(int32_t a, int32_t b, int32_t c, int32_t d);
template <>
PXK_INLINE V128 splat32Pattern<V128>(int32_t a, int32_t b, int32_t c, int32_t d) {
    return _mm_setr_epi32(a, b, c, d);
}

// Every 128-bit lane holding four 16-bit lanes of lo, then four of hi.
template <class V>
PXK_INLINE V splat16Halves(int32_t lo, int32_t hi);
template <>
PXK_INLINE V128 splat16Halves<V128>(int32_t lo, int32_t hi) {
    const int16_t l = static_cast<int16_t>(lo), h = static_cast<int16_t>(hi);
    return _mm_set_epi16(h, h, h, h, l, l, l, l);
}

// Every 128-bit lane holding the 16 given bytes (a shuffle or blend mask).
template <class V>
PXK_INLINE V bytesInEachLane(const uint8_t (&b)[16]);
template <>
PXK_INLINE V128 bytesInEachLane<V128>(const uint8_t (&b)[16]) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(b));
}

// Coefficient pairs for madd16: every 32-bit lane holds (first, second) as two signed
// 16-bit numbers, multiplied with the (first, second) 16-bit values of a lane.
template <class V>
PXK_INLINE V pairs(int32_t first, int32_t second) {
    const uint32_t packed = static_cast<uint16_t>(first) |
                            (static_cast<uint32_t>(static_cast<uint16_t>(second)) << 16);
    return splat32<V>(static_cast<int32_t>(packed));
}

// ---------------------------------------------------------------------------------
// Memory. loadLanes<V, Stride>(p): lane i of the result holds the 16 bytes at
// p + i * Stride; storeLanes is its inverse. Unaligned throughout.
// ---------------------------------------------------------------------------------

PXK_INLINE V128 load128(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
PXK_INLINE void store128(uint8_t* p, V128 v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }

template <class V, int Stride>
PXK_INLINE V loadLanes(const uint8_t* p);
template <class V, int Stride>
PXK_INLINE void storeLanes(uint8_t* p, V v);

// The 128-bit forms ignore the stride: one lane.
template <>
PXK_INLINE V128 loadLanes<V128, 16>(const uint8_t* p) { return load128(p); }
template <>
PXK_INLINE V128 loadLanes<V128, 48>(const uint8_t* p) { return load128(p); }
template <>
PXK_INLINE V128 loadLanes<V128, 64>(const uint8_t* p) { return load128(p); }
template <>
PXK_INLINE V128 loadLanes<V128, 32>(const uint8_t* p) { return load128(p); }
template <>
PXK_INLINE void storeLanes<V128, 16>(uint8_t* p, V128 v) { store128(p, v); }
template <>
PXK_INLINE void storeLanes<V128, 48>(uint8_t* p, V128 v) { store128(p, v); }
template <>
PXK_INLINE void storeLanes<V128, 64>(uint8_t* p, V128 v) { store128(p, v); }
template <>
PXK_INLINE void storeLanes<V128, 32>(uint8_t* p, V128 v) { store128(p, v); }

// The low 8 bytes of each 128-bit lane, stored one after the other.
// 8 (or 4) bytes a lane, in the low bytes of each lane, from consecutive memory: the
// loads that match storeLowHalves and storeLowQuarters.
PXK_INLINE V128 loadLowHalves128(const uint8_t* p) { return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)); }
PXK_INLINE V128 loadLowQuarters128(const uint8_t* p) {
    int32_t v;
    std::memcpy(&v, p, sizeof v);
    return _mm_cvtsi32_si128(v);
}
template <class V>
PXK_INLINE V loadLowHalves(const uint8_t* p);
template <class V>
PXK_INLINE V loadLowQuarters(const uint8_t* p);
template <>
PXK_INLINE V128 loadLowHalves<V128>(const uint8_t* p) { return loadLowHalves128(p); }
template <>
PXK_INLINE V128 loadLowQuarters<V128>(const uint8_t* p) { return loadLowQuarters128(p); }
PXK_INLINE void storeLowHalves(uint8_t* p, V128 v) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v); }
// The low 4 bytes of each 128-bit lane, stored one after the other.
PXK_INLINE void storeLowQuarters(uint8_t* p, V128 v) {
    const int32_t word = _mm_cvtsi128_si32(v);
    std::memcpy(p, &word, sizeof word);
}

// Four vectors whose lane L holds the 16-byte chunks 4 L to 4 L + 3 (one a vector)
// of a run of 64 bytes a lane, stored in order. The 128-bit form is four stores.
PXK_INLINE void storeLanes4x64(uint8_t* p, const V128 v[4]) {
    PXK_UNROLL
    for (int i = 0; i < 4; ++i) store128(p + 16 * i, v[i]);
}

// ---------------------------------------------------------------------------------
// Operations, one line each naming the 128-bit instruction and its 256-bit twin (the
// twin exists in the avx2 build only). Arithmetic wraps unless the name says
// otherwise; packs, unpacks and shuffles act within each 128-bit lane.
// ---------------------------------------------------------------------------------

#if defined(PXKCC_TARGET_AVX2)
#define PXK_VEC_OP2(name, op128, op256)                                  \
    PXK_INLINE V128 name(V128 a, V128 b) { return op128(a, b); }         \
    PXK_INLINE V256 name(V256 a, V256 b) { return op256(a, b); }
#define PXK_VEC_IMM(name, op128, op256)                                  \
    template <int N>                                                     \
    PXK_INLINE V128 name(V128 a) { return op128(a, N); }                 \
    template <int N>                                                     \
    PXK_INLINE V256 name(V256 a) { return op256(a, N); }
#else
#define PXK_VEC_OP2(name, op128, op256) \
    PXK_INLINE V128 name(V128 a, V128 b) { return op128(a, b); }
#define PXK_VEC_IMM(name, op128, op256) \
    template <int N>                      \
    PXK_INLINE V128 name(V128 a) { return op128(a, N); }
#endif

PXK_VEC_OP2(add16, _mm_add_epi16, _mm256_add_epi16)
PXK_VEC_OP2(sub16, _mm_sub_epi16, _mm256_sub_epi16)
PXK_VEC_OP2(add32, _mm_add_epi32, _mm256_add_epi32)
PXK_VEC_OP2(sub32, _mm_sub_epi32, _mm256_sub_epi32)
// Low 16 bits of the product.
PXK_VEC_OP2(mullo16, _mm_mullo_epi16, _mm256_mullo_epi16)
// High 16 bits of the exact signed product: (a * b) >> 16, toward negative infinity.
PXK_VEC_OP2(mulhi16, _mm_mulhi_epi16, _mm256_mulhi_epi16)
// The same with both factors unsigned.
PXK_VEC_OP2(mulhiu16, _mm_mulhi_epu16, _mm256_mulhi_epu16)
// Each 32-bit lane: a.lo * b.lo + a.hi * b.hi over signed 16-bit halves.
PXK_VEC_OP2(madd16, _mm_madd_epi16, _mm256_madd_epi16)
// Rounded mean of unsigned bytes: (a + b + 1) >> 1.
PXK_VEC_OP2(avg8, _mm_avg_epu8, _mm256_avg_epu8)
// Lane by lane minimum and maximum of signed 16-bit values.
PXK_VEC_OP2(min16, _mm_min_epi16, _mm256_min_epi16)
PXK_VEC_OP2(max16, _mm_max_epi16, _mm256_max_epi16)
PXK_VEC_OP2(and_, _mm_and_si128, _mm256_and_si256)
PXK_VEC_OP2(or_, _mm_or_si128, _mm256_or_si256)

PXK_VEC_IMM(slli16, _mm_slli_epi16, _mm256_slli_epi16)
PXK_VEC_IMM(srli16, _mm_srli_epi16, _mm256_srli_epi16)
PXK_VEC_IMM(srai16, _mm_srai_epi16, _mm256_srai_epi16)
PXK_VEC_IMM(slli32, _mm_slli_epi32, _mm256_slli_epi32)
PXK_VEC_IMM(srli32, _mm_srli_epi32, _mm256_srli_epi32)
PXK_VEC_IMM(srai32, _mm_srai_epi32, _mm256_srai_epi32)

// 32-bit lanes of a then b, saturated to signed 16 bits.
PXK_VEC_OP2(packs32, _mm_packs_epi32, _mm256_packs_epi32)
// 16-bit lanes of a then b, saturated to 0..255.
PXK_VEC_OP2(packus16, _mm_packus_epi16, _mm256_packus_epi16)
PXK_VEC_OP2(unpacklo8, _mm_unpacklo_epi8, _mm256_unpacklo_epi8)
PXK_VEC_OP2(unpackhi8, _mm_unpackhi_epi8, _mm256_unpackhi_epi8)
PXK_VEC_OP2(unpacklo16, _mm_unpacklo_epi16, _mm256_unpacklo_epi16)
PXK_VEC_OP2(unpackhi16, _mm_unpackhi_epi16, _mm256_unpackhi_epi16)
PXK_VEC_OP2(unpacklo32, _mm_unpacklo_epi32, _mm256_unpacklo_epi32)
PXK_VEC_OP2(unpackhi32, _mm_unpackhi_epi32, _mm256_unpackhi_epi32)
PXK_VEC_OP2(unpacklo64, _mm_unpacklo_epi64, _mm256_unpacklo_epi64)
PXK_VEC_OP2(unpackhi64, _mm_unpackhi_epi64, _mm256_unpackhi_epi64)

// 32-bit lanes rearranged by an immediate, as _mm_shuffle_epi32.
PXK_VEC_IMM(shuffle32, _mm_shuffle_epi32, _mm256_shuffle_epi32)
// The bytes of each 128-bit lane moved down by N places, zeros shifted in.
PXK_VEC_IMM(bytesDown, _mm_srli_si128, _mm256_srli_si256)

// Two 32-bit lanes of a, then two of b, picked by an immediate in each 128-bit lane,
// as _mm_shuffle_ps.
template <int Imm>
PXK_INLINE V128 shuffle2x32(V128 a, V128 b) {
    return _mm_castps_si128(_mm_shuffle_ps(_mm_castsi128_ps(a), _mm_castsi128_ps(b), Imm));
}
#if defined(PXKCC_TARGET_AVX2)
template <int Imm>
PXK_INLINE V256 shuffle2x32(V256 a, V256 b) {
    return _mm256_castps_si256(_mm256_shuffle_ps(_mm256_castsi256_ps(a), _mm256_castsi256_ps(b), Imm));
}
#endif

// The upper eight bytes of each lane, moved to its lower half (the upper half repeats
// them). A dword shuffle writes a new register, so `a` stays usable.
template <class V>
PXK_INLINE V upperHalf(V a) {
    return shuffle32<_MM_SHUFFLE(3, 2, 3, 2)>(a);
}

// Each 16-bit lane shifted right, zeros shifted in, by a count known only at run time
// (the same for every lane; 16 or more gives 0).
PXK_INLINE V128 srl16(V128 a, int32_t count) { return _mm_srl_epi16(a, _mm_cvtsi32_si128(count)); }
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE V256 srl16(V256 a, int32_t count) { return _mm256_srl_epi16(a, _mm_cvtsi32_si128(count)); }
#endif

#if defined(PXKCC_TARGET_AVX2)
// Sums of adjacent 16-bit lanes: four pairs of a, then four of b, in each 128-bit lane.
PXK_VEC_OP2(pairSums16, _mm_hadd_epi16, _mm256_hadd_epi16)
// Byte shuffle within each lane; an index with its top bit set gives 0.
PXK_VEC_OP2(shuffleBytes, _mm_shuffle_epi8, _mm256_shuffle_epi8)
// Bytes of b where the mask byte's top bit is set, else of a.
PXK_INLINE V128 blendBytes(V128 a, V128 b, V128 mask) { return _mm_blendv_epi8(a, b, mask); }
PXK_INLINE V256 blendBytes(V256 a, V256 b, V256 mask) { return _mm256_blendv_epi8(a, b, mask); }
#endif

// ---------------------------------------------------------------------------------
// Single-precision lanes, for the float forms: one rounding for each operation, in
// the order written (the build never contracts a multiply and an add).
// ---------------------------------------------------------------------------------

using F128 = __m128;
#if defined(PXKCC_TARGET_AVX2)
using F256 = __m256;
#endif

// The float vector as wide as the integer vector V.
template <class V>
struct FloatLanesOf;
template <>
struct FloatLanesOf<V128> {
    using type = F128;
};
#if defined(PXKCC_TARGET_AVX2)
template <>
struct FloatLanesOf<V256> {
    using type = F256;
};
#endif
template <class V>
using FloatOf = typename FloatLanesOf<V>::type;

template <class F>
PXK_INLINE F splatF(float v);
template <>
PXK_INLINE F128 splatF<F128>(float v) { return _mm_set1_ps(v); }

#if defined(PXKCC_TARGET_AVX2)
#define PXK_VEC_FOP2(name, op128, op256)                             \
    PXK_INLINE F128 name(F128 a, F128 b) { return op128(a, b); }     \
    PXK_INLINE F256 name(F256 a, F256 b) { return op256(a, b); }
#else
#define PXK_VEC_FOP2(name, op128, op256) \
    PXK_INLINE F128 name(F128 a, F128 b) { return op128(a, b); }
#endif
PXK_VEC_FOP2(addF, _mm_add_ps, _mm256_add_ps)
PXK_VEC_FOP2(subF, _mm_sub_ps, _mm256_sub_ps)
PXK_VEC_FOP2(mulF, _mm_mul_ps, _mm256_mul_ps)

// 32-bit integer lanes to floats (exact below 2^24), and floats to 32-bit integers
// truncated toward zero.
PXK_INLINE F128 toFloat(V128 v) { return _mm_cvtepi32_ps(v); }
PXK_INLINE V128 truncToInt(F128 v) { return _mm_cvttps_epi32(v); }
// All ones in the 32-bit lanes where a < b, zeros elsewhere.
PXK_INLINE V128 lessThanF(F128 a, F128 b) { return _mm_castps_si128(_mm_cmplt_ps(a, b)); }

// PXK_VEC_OP2, PXK_VEC_IMM and PXK_VEC_FOP2 stay defined for vec_float.h, which
// undefines them after its own operations.

// ---------------------------------------------------------------------------------
// Constants and memory of the 256-bit type
// ---------------------------------------------------------------------------------
#if defined(PXKCC_TARGET_AVX2)

template <>
PXK_INLINE V256 zero<V256>() { return _mm256_setzero_si256(); }
template <>
PXK_INLINE V256 splat16<V256>(int32_t v) { return _mm256_set1_epi16(static_cast<int16_t>(v)); }
template <>
PXK_INLINE V256 splat32<V256>(int32_t v) { return _mm256_set1_epi32(v); }
template <>
PXK_INLINE F256 splatF<F256>(float v) { return _mm256_set1_ps(v); }
PXK_INLINE F256 toFloat(V256 v) { return _mm256_cvtepi32_ps(v); }
PXK_INLINE V256 truncToInt(F256 v) { return _mm256_cvttps_epi32(v); }
PXK_INLINE V256 lessThanF(F256 a, F256 b) { return _mm256_castps_si256(_mm256_cmp_ps(a, b, _CMP_LT_OQ)); }
template <>
PXK_INLINE V256 splat32Pattern<V256>(int32_t a, int32_t b, int32_t c, int32_t d) {
    return _mm256_setr_epi32(a, b, c, d, a, b, c, d);
}
template <>
PXK_INLINE V256 splat16Halves<V256>(int32_t lo, int32_t hi) {
    return _mm256_broadcastsi128_si256(splat16Halves<V128>(lo, hi));
}
template <>
PXK_INLINE V256 bytesInEachLane<V256>(const uint8_t (&b)[16]) {
    return _mm256_broadcastsi128_si256(bytesInEachLane<V128>(b));
}

template <>
PXK_INLINE V256 loadLanes<V256, 16>(const uint8_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}
template <>
PXK_INLINE void storeLanes<V256, 16>(uint8_t* p, V256 v) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v);
}
// Two chunks Stride bytes apart, one a lane.
template <int Stride>
PXK_INLINE V256 loadTwoChunks(const uint8_t* p) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(load128(p)), load128(p + Stride), 1);
}
template <int Stride>
PXK_INLINE void storeTwoChunks(uint8_t* p, V256 v) {
    store128(p, _mm256_castsi256_si128(v));
    store128(p + Stride, _mm256_extracti128_si256(v, 1));
}
template <>
PXK_INLINE V256 loadLanes<V256, 32>(const uint8_t* p) { return loadTwoChunks<32>(p); }
template <>
PXK_INLINE V256 loadLanes<V256, 48>(const uint8_t* p) { return loadTwoChunks<48>(p); }
template <>
PXK_INLINE V256 loadLowHalves<V256>(const uint8_t* p) {
    return _mm256_permute4x64_epi64(_mm256_castsi128_si256(load128(p)), _MM_SHUFFLE(1, 1, 0, 0));
}
template <>
PXK_INLINE V256 loadLowQuarters<V256>(const uint8_t* p) {
    return _mm256_permutevar8x32_epi32(_mm256_castsi128_si256(loadLowHalves128(p)),
                                       _mm256_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1));
}
template <>
PXK_INLINE V256 loadLanes<V256, 64>(const uint8_t* p) { return loadTwoChunks<64>(p); }
template <>
PXK_INLINE void storeLanes<V256, 48>(uint8_t* p, V256 v) { storeTwoChunks<48>(p, v); }
template <>
PXK_INLINE void storeLanes<V256, 64>(uint8_t* p, V256 v) { storeTwoChunks<64>(p, v); }
template <>
PXK_INLINE void storeLanes<V256, 32>(uint8_t* p, V256 v) { storeTwoChunks<32>(p, v); }
PXK_INLINE void storeLowHalves(uint8_t* p, V256 v) {
    store128(p, _mm256_castsi256_si128(_mm256_permute4x64_epi64(v, _MM_SHUFFLE(3, 1, 2, 0))));
}
PXK_INLINE void storeLowQuarters(uint8_t* p, V256 v) {
    // Dword 0 of each lane side by side, then their 8 bytes.
    storeLowHalves(p, _mm256_castsi256_si128(_mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7))));
}
// The 256-bit form joins the lanes of two vectors into whole 32-byte stores.
PXK_INLINE void storeLanes4x64(uint8_t* p, const V256 v[4]) {
    PXK_UNROLL
    for (int i = 0; i < 4; i += 2) {
        storeLanes<V256, 16>(p + 16 * i, _mm256_permute2x128_si256(v[i], v[i + 1], 0x20));
        storeLanes<V256, 16>(p + 64 + 16 * i, _mm256_permute2x128_si256(v[i], v[i + 1], 0x31));
    }
}

#endif  // PXKCC_TARGET_AVX2

// ---------------------------------------------------------------------------------
// Memory access of a layout: UnalignedMemory (any address) or AlignedMemory (every
// 16-byte chunk on a multiple of 16, for kernels chosen by that test). Both move the
// same bytes; a 256-bit access in AlignedMemory goes by aligned 128-bit halves, since
// a 16-byte test says nothing of 32-byte alignment.
// ---------------------------------------------------------------------------------

struct UnalignedMemory {
    template <class V, int Stride>
    PXK_INLINE static V loadLanes(const uint8_t* p) { return vec::loadLanes<V, Stride>(p); }
    template <class V, int Stride>
    PXK_INLINE static void storeLanes(uint8_t* p, V v) { vec::storeLanes<V, Stride>(p, v); }
    template <class V>
    PXK_INLINE static void storeLanes4x64(uint8_t* p, const V v[4]) { vec::storeLanes4x64(p, v); }
};

struct AlignedMemory {
    PXK_INLINE static V128 load(const uint8_t* p) { return _mm_load_si128(reinterpret_cast<const __m128i*>(p)); }
    PXK_INLINE static void store(uint8_t* p, V128 v) { _mm_store_si128(reinterpret_cast<__m128i*>(p), v); }

    // Lane i of a 256-bit vector holds the chunk at p + i * Stride.
    template <class V, int Stride>
    PXK_INLINE static V loadLanes(const uint8_t* p) {
        if constexpr (sizeof(V) == 16) {
            return load(p);
#if defined(PXKCC_TARGET_AVX2)
        } else {
            return _mm256_inserti128_si256(_mm256_castsi128_si256(load(p)), load(p + Stride), 1);
#endif
        }
    }
    template <class V, int Stride>
    PXK_INLINE static void storeLanes(uint8_t* p, V v) {
        if constexpr (sizeof(V) == 16) {
            store(p, v);
#if defined(PXKCC_TARGET_AVX2)
        } else {
            store(p, _mm256_castsi256_si128(v));
            store(p + Stride, _mm256_extracti128_si256(v, 1));
#endif
        }
    }
    // As vec::storeLanes4x64: lane L of v[i] is the chunk at p + 64 L + 16 i.
    template <class V>
    PXK_INLINE static void storeLanes4x64(uint8_t* p, const V v[4]) {
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) storeLanes<V, 64>(p + 16 * i, v[i]);
    }
};

// Non-temporal stores of whole 16-byte chunks, each on a multiple of 16, for targets
// too large to stay in the cache. The bytes are those of the other kinds; a run of
// them ends with finish(), the store fence.
struct StreamingMemory {
    template <class V, int Stride>
    PXK_INLINE static void storeLanes(uint8_t* p, V v) {
        if constexpr (sizeof(V) == 16) {
            _mm_stream_si128(reinterpret_cast<__m128i*>(p), v);
#if defined(PXKCC_TARGET_AVX2)
        } else {
            _mm_stream_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(v));
            _mm_stream_si128(reinterpret_cast<__m128i*>(p + Stride), _mm256_extracti128_si256(v, 1));
#endif
        }
    }
    static void finish() { _mm_sfence(); }
};

}  // namespace vec
}  // namespace pxk
