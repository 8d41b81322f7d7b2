// More of the vector layer, for the families that work in 32-bit lanes and in floats:
// bitwise and compare operations, saturating 8/16-bit arithmetic, single-precision
// arithmetic with its compares and selects, and conversions between floats and 32-bit
// integers. Same rules as vec.h: every operation here is overloaded for the 128-bit
// type and (in the avx2 build) the 256-bit type, and acts on each 128-bit lane as its
// 128-bit twin does, so a form written once over V or F gives the same bits in both
// builds.
//
// Float rules: one rounding for each operation, in the order written (the build never
// contracts a multiply and an add). minF/maxF follow the processor's operations: when
// either operand is NaN, or both are zeros, the result is the SECOND operand. The
// approximate reciprocal rcpF is the processor's, unrefined (about 12 bits); its
// 256-bit form gives the same value as the 128-bit form for each element.
#pragma once

#include "frame/vec.h"

namespace pxk {
namespace vec {

// ---------------------------------------------------------------------------------
// Integer lanes: bitwise, compares, saturating arithmetic
// ---------------------------------------------------------------------------------

// PXK_VEC_OP2 and PXK_VEC_IMM come from vec.h.

PXK_VEC_OP2(xor_, _mm_xor_si128, _mm256_xor_si256)
// (~a) & b.
PXK_VEC_OP2(andNot, _mm_andnot_si128, _mm256_andnot_si256)

PXK_VEC_OP2(add8, _mm_add_epi8, _mm256_add_epi8)
PXK_VEC_OP2(sub8, _mm_sub_epi8, _mm256_sub_epi8)
PXK_VEC_OP2(add64, _mm_add_epi64, _mm256_add_epi64)
PXK_VEC_OP2(sub64, _mm_sub_epi64, _mm256_sub_epi64)
// Saturating: signed 16-bit, unsigned 8-bit, unsigned 16-bit.
PXK_VEC_OP2(addSat16, _mm_adds_epi16, _mm256_adds_epi16)
PXK_VEC_OP2(subSat16, _mm_subs_epi16, _mm256_subs_epi16)
PXK_VEC_OP2(addSatU8, _mm_adds_epu8, _mm256_adds_epu8)
PXK_VEC_OP2(subSatU8, _mm_subs_epu8, _mm256_subs_epu8)
PXK_VEC_OP2(addSatU16, _mm_adds_epu16, _mm256_adds_epu16)
PXK_VEC_OP2(subSatU16, _mm_subs_epu16, _mm256_subs_epu16)
PXK_VEC_OP2(minU8, _mm_min_epu8, _mm256_min_epu8)
PXK_VEC_OP2(maxU8, _mm_max_epu8, _mm256_max_epu8)
// Unsigned 32 x 32 -> 64-bit products of the even 32-bit lanes (0 and 2 of each 128-bit lane).
PXK_VEC_OP2(mulEvenU32, _mm_mul_epu32, _mm256_mul_epu32)
// Signed 16 -> signed 8 with saturation (a's lanes first, then b's, per 128-bit lane).
PXK_VEC_OP2(packs16, _mm_packs_epi16, _mm256_packs_epi16)

// All ones in the lanes where the compare holds, zeros elsewhere (signed compares).
PXK_VEC_OP2(equal8, _mm_cmpeq_epi8, _mm256_cmpeq_epi8)
PXK_VEC_OP2(equal16, _mm_cmpeq_epi16, _mm256_cmpeq_epi16)
PXK_VEC_OP2(equal32, _mm_cmpeq_epi32, _mm256_cmpeq_epi32)
PXK_VEC_OP2(greater8, _mm_cmpgt_epi8, _mm256_cmpgt_epi8)
PXK_VEC_OP2(greater16, _mm_cmpgt_epi16, _mm256_cmpgt_epi16)
PXK_VEC_OP2(greater32, _mm_cmpgt_epi32, _mm256_cmpgt_epi32)

PXK_VEC_IMM(slli64, _mm_slli_epi64, _mm256_slli_epi64)
PXK_VEC_IMM(srli64, _mm_srli_epi64, _mm256_srli_epi64)
// Whole 128-bit lanes shifted by N bytes toward the high end (zeros shifted in).
PXK_VEC_IMM(bytesUp, _mm_slli_si128, _mm256_slli_si256)
PXK_VEC_IMM(shuffleLow16, _mm_shufflelo_epi16, _mm256_shufflelo_epi16)
PXK_VEC_IMM(shuffleHigh16, _mm_shufflehi_epi16, _mm256_shufflehi_epi16)

// Lanes of a where mask is all ones, of b where it is zero (any mask: bit by bit).
template <class V>
PXK_INLINE V selectBits(V mask, V a, V b) {
    return or_(and_(mask, a), andNot(mask, b));
}

// One bit a byte: bit i of the result is the top bit of byte i.
PXK_INLINE int32_t topBits8(V128 v) { return _mm_movemask_epi8(v); }
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE int32_t topBits8(V256 v) { return _mm256_movemask_epi8(v); }
#endif

// Signed 32-bit lanes: the least and the greatest of a and b, and |a| (|INT32_MIN|
// stays INT32_MIN). The sse2 build forms them by compare and select; the avx2 build
// has them as single instructions (SSE4.1 pminsd/pmaxsd, SSSE3 pabsd), which give
// the same lanes.
#if defined(PXKCC_TARGET_AVX2)
PXK_VEC_OP2(min32, _mm_min_epi32, _mm256_min_epi32)
PXK_VEC_OP2(max32, _mm_max_epi32, _mm256_max_epi32)
PXK_INLINE V128 abs32(V128 a) { return _mm_abs_epi32(a); }
PXK_INLINE V256 abs32(V256 a) { return _mm256_abs_epi32(a); }
// |a| of signed 16-bit lanes (|-32768| stays -32768): SSSE3 pabsw here, the greater of
// a and 0 - a in the sse2 build.
PXK_INLINE V128 abs16(V128 a) { return _mm_abs_epi16(a); }
PXK_INLINE V256 abs16(V256 a) { return _mm256_abs_epi16(a); }
#else
template <class V>
PXK_INLINE V abs16(V a) {
    return max16(a, sub16(zero<V>(), a));
}
template <class V>
PXK_INLINE V min32(V a, V b) {
    return selectBits(greater32(a, b), b, a);
}
template <class V>
PXK_INLINE V max32(V a, V b) {
    return selectBits(greater32(a, b), a, b);
}
template <class V>
PXK_INLINE V abs32(V a) {
    const V sign = srai32<31>(a);
    return sub32(xor_(a, sign), sign);
}
#endif

// ---------------------------------------------------------------------------------
// Single-precision lanes
// ---------------------------------------------------------------------------------

// PXK_VEC_FOP2 comes from vec.h.
#if defined(PXKCC_TARGET_AVX2)
#define PXK_VEC_FOP1(name, op128, op256)              \
    PXK_INLINE F128 name(F128 a) { return op128(a); } \
    PXK_INLINE F256 name(F256 a) { return op256(a); }
#else
#define PXK_VEC_FOP1(name, op128, op256) \
    PXK_INLINE F128 name(F128 a) { return op128(a); }
#endif

PXK_VEC_FOP2(divF, _mm_div_ps, _mm256_div_ps)
PXK_VEC_FOP2(minF, _mm_min_ps, _mm256_min_ps)
PXK_VEC_FOP2(maxF, _mm_max_ps, _mm256_max_ps)
PXK_VEC_FOP1(sqrtF, _mm_sqrt_ps, _mm256_sqrt_ps)
PXK_VEC_FOP1(rcpF, _mm_rcp_ps, _mm256_rcp_ps)
PXK_VEC_FOP2(andF, _mm_and_ps, _mm256_and_ps)
PXK_VEC_FOP2(orF, _mm_or_ps, _mm256_or_ps)
PXK_VEC_FOP2(xorF, _mm_xor_ps, _mm256_xor_ps)
// (~a) & b.
PXK_VEC_FOP2(andNotF, _mm_andnot_ps, _mm256_andnot_ps)
// Masks of all ones where the compare holds. The ordered compares are false when
// either operand is NaN; notEqualF and unorderedF are true then.
#if defined(PXKCC_TARGET_AVX2)
#define PXK_VEC_FCMP(name, op128, predicate)                                      \
    PXK_INLINE F128 name(F128 a, F128 b) { return op128(a, b); }                  \
    PXK_INLINE F256 name(F256 a, F256 b) { return _mm256_cmp_ps(a, b, predicate); }
#else
#define PXK_VEC_FCMP(name, op128, predicate) \
    PXK_INLINE F128 name(F128 a, F128 b) { return op128(a, b); }
#endif
PXK_VEC_FCMP(lessF, _mm_cmplt_ps, _CMP_LT_OS)
PXK_VEC_FCMP(lessEqualF, _mm_cmple_ps, _CMP_LE_OS)
PXK_VEC_FCMP(equalF, _mm_cmpeq_ps, _CMP_EQ_OQ)
PXK_VEC_FCMP(notEqualF, _mm_cmpneq_ps, _CMP_NEQ_UQ)
PXK_VEC_FCMP(unorderedF, _mm_cmpunord_ps, _CMP_UNORD_Q)
#undef PXK_VEC_FCMP
#undef PXK_VEC_FOP1
#undef PXK_VEC_FOP2

// Lanes of a where mask is all ones, of b where it is zero. Every lane of the mask is
// all ones or all zeros (compare results and their and/or): the avx2 build takes the
// blend that reads each lane's top bit, the sse2 build selects bit by bit.
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE F128 selectF(F128 mask, F128 a, F128 b) { return _mm_blendv_ps(b, a, mask); }
PXK_INLINE F256 selectF(F256 mask, F256 a, F256 b) { return _mm256_blendv_ps(b, a, mask); }
#else
PXK_INLINE F128 selectF(F128 mask, F128 a, F128 b) { return orF(andF(mask, a), andNotF(mask, b)); }
#endif

PXK_INLINE F128 zeroF128() { return _mm_setzero_ps(); }
template <class F>
PXK_INLINE F zeroF() {
    return splatF<F>(0.0f);
}

// Unaligned loads and stores of whole vectors of floats.
PXK_INLINE F128 loadF(const float* p, F128*) { return _mm_loadu_ps(p); }
PXK_INLINE void storeF(float* p, F128 v) { _mm_storeu_ps(p, v); }
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE F256 loadF(const float* p, F256*) { return _mm256_loadu_ps(p); }
PXK_INLINE void storeF(float* p, F256 v) { _mm256_storeu_ps(p, v); }
#endif
// loadF<F>(p): as many floats as F holds, from p.
template <class F>
PXK_INLINE F loadF(const float* p) {
    return loadF(p, static_cast<F*>(nullptr));
}

// The bits of floats as integer lanes and back (no conversion).
PXK_INLINE V128 bitsOf(F128 v) { return _mm_castps_si128(v); }
PXK_INLINE F128 floatsOf(V128 v) { return _mm_castsi128_ps(v); }
// Floats to 32-bit integers by the processor's current rounding mode (round to
// nearest, ties to even, unless the caller changed it). Out-of-range values and NaN
// give 0x80000000, the processor's defined result.
PXK_INLINE V128 roundToInt(F128 v) { return _mm_cvtps_epi32(v); }
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE V256 bitsOf(F256 v) { return _mm256_castps_si256(v); }
PXK_INLINE F256 floatsOf(V256 v) { return _mm256_castsi256_ps(v); }
PXK_INLINE V256 roundToInt(F256 v) { return _mm256_cvtps_epi32(v); }
#endif

// a + b with a as the first operand of the processor's add, whatever order the
// compiler would pick for a sum: where both are NaN, the result is a's NaN (quieted).
// The plain addF leaves the order of its operands to the compiler, which may differ
// between the two builds; forms whose inputs can be NaN (float samples) add with this
// one, so that a NaN result has the same bits in every build and column. A scalar twin
// for the tails.
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE F128 addOrderedF(F128 a, F128 b) {
    F128 r;
    __asm__("vaddps %2, %1, %0" : "=x"(r) : "x"(a), "x"(b));
    return r;
}
PXK_INLINE F256 addOrderedF(F256 a, F256 b) {
    F256 r;
    __asm__("vaddps %2, %1, %0" : "=x"(r) : "x"(a), "x"(b));
    return r;
}
PXK_INLINE float addOrderedF(float a, float b) {
    float r;
    __asm__("vaddss %2, %1, %0" : "=x"(r) : "x"(a), "x"(b));
    return r;
}
#else
PXK_INLINE F128 addOrderedF(F128 a, F128 b) {
    __asm__("addps %1, %0" : "+x"(a) : "x"(b));
    return a;
}
PXK_INLINE float addOrderedF(float a, float b) {
    __asm__("addss %1, %0" : "+x"(a) : "x"(b));
    return a;
}
#endif

// ---------------------------------------------------------------------------------
// Double-precision lanes, for the work that a single-precision result needs more
// precision for (the power routine's logarithm and exponential). Same rules: each
// operation acts on each 128-bit lane as its 128-bit twin does.
// ---------------------------------------------------------------------------------

using D128 = __m128d;
#if defined(PXKCC_TARGET_AVX2)
using D256 = __m256d;
#define PXK_VEC_DOP2(name, op128, op256)                         \
    PXK_INLINE D128 name(D128 a, D128 b) { return op128(a, b); } \
    PXK_INLINE D256 name(D256 a, D256 b) { return op256(a, b); }
#else
#define PXK_VEC_DOP2(name, op128, op256) \
    PXK_INLINE D128 name(D128 a, D128 b) { return op128(a, b); }
#endif
PXK_VEC_DOP2(addD, _mm_add_pd, _mm256_add_pd)
PXK_VEC_DOP2(subD, _mm_sub_pd, _mm256_sub_pd)
PXK_VEC_DOP2(mulD, _mm_mul_pd, _mm256_mul_pd)
PXK_VEC_DOP2(divD, _mm_div_pd, _mm256_div_pd)
// As minF/maxF: the second operand when either is NaN.
PXK_VEC_DOP2(minD, _mm_min_pd, _mm256_min_pd)
PXK_VEC_DOP2(maxD, _mm_max_pd, _mm256_max_pd)
#undef PXK_VEC_DOP2

template <class D>
PXK_INLINE D splatD(double v);
template <>
PXK_INLINE D128 splatD<D128>(double v) { return _mm_set1_pd(v); }
// Unaligned loads and stores of whole vectors of doubles.
PXK_INLINE D128 loadD(const double* p, D128*) { return _mm_loadu_pd(p); }
PXK_INLINE void storeD(double* p, D128 v) { _mm_storeu_pd(p, v); }
// The lanes narrowed to floats by the current rounding mode, stored one after the other.
PXK_INLINE void storeNarrowedD(float* p, D128 v) { _mm_storel_pi(reinterpret_cast<__m64*>(p), _mm_cvtpd_ps(v)); }
// The bits of doubles as 64-bit integer lanes and back (no conversion).
PXK_INLINE V128 bitsOfD(D128 v) { return _mm_castpd_si128(v); }
PXK_INLINE D128 doublesOf(V128 v) { return _mm_castsi128_pd(v); }
#if defined(PXKCC_TARGET_AVX2)
template <>
PXK_INLINE D256 splatD<D256>(double v) { return _mm256_set1_pd(v); }
PXK_INLINE D256 loadD(const double* p, D256*) { return _mm256_loadu_pd(p); }
PXK_INLINE void storeD(double* p, D256 v) { _mm256_storeu_pd(p, v); }
PXK_INLINE void storeNarrowedD(float* p, D256 v) { _mm_storeu_ps(p, _mm256_cvtpd_ps(v)); }
PXK_INLINE V256 bitsOfD(D256 v) { return _mm256_castpd_si256(v); }
PXK_INLINE D256 doublesOf(V256 v) { return _mm256_castsi256_pd(v); }
#endif
// loadD<D>(p): as many doubles as D holds, from p.
template <class D>
PXK_INLINE D loadD(const double* p) {
    return loadD(p, static_cast<D*>(nullptr));
}
// The integer vector as wide as the double vector D.
template <class D>
using BitsOfD = decltype(bitsOfD(D{}));

#undef PXK_VEC_OP2
#undef PXK_VEC_IMM

}  // namespace vec

// ---------------------------------------------------------------------------------
// Scalar twins of the conversions: each conversion of a float to an integer named
// once. Out-of-range values and NaN give INT32_MIN (0x80000000), as the processor's
// conversions define; never a C++ cast of an out-of-range value.
// ---------------------------------------------------------------------------------

namespace detail {
// Hides a value from the compiler's constant folding, which would evaluate a
// conversion of a constant by the language's rules instead of the processor's.
PXK_INLINE __m128 opaque(__m128 v) {
    __asm__("" : "+x"(v));
    return v;
}
PXK_INLINE __m128d opaque(__m128d v) {
    __asm__("" : "+x"(v));
    return v;
}
}  // namespace detail

// Float to 32-bit integer by the processor's current rounding mode: to nearest, ties
// to even, unless the caller changed the mode. Nothing here sets the mode.
PXK_INLINE int32_t pxkRoundHalfEven(float x) { return _mm_cvtss_si32(detail::opaque(_mm_set_ss(x))); }
PXK_INLINE int32_t pxkRoundHalfEven(double x) { return _mm_cvtsd_si32(detail::opaque(_mm_set_sd(x))); }
// Float to 32-bit integer truncated toward zero.
PXK_INLINE int32_t truncToInt32(float x) { return _mm_cvttss_si32(detail::opaque(_mm_set_ss(x))); }
PXK_INLINE int32_t truncToInt32(double x) { return _mm_cvttsd_si32(detail::opaque(_mm_set_sd(x))); }
// The processor's approximate reciprocal of one float: the value that rcpF gives
// for that element, unrefined.
PXK_INLINE float approxReciprocal(float x) { return _mm_cvtss_f32(_mm_rcp_ss(detail::opaque(_mm_set_ss(x)))); }

}  // namespace pxk
