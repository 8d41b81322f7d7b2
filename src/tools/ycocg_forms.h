// The YCoCg forms, each written once over an arithmetic word: 16-bit vector lanes,
// 32-bit vector lanes, or their scalar twins for the tails. Every operation of a form
// wraps at the word's width (16 or 32 bits), and shifts are arithmetic, so a form gives
// a pixel the same bits in a vector block and in the tail; only the stores of one
// member differ (see Narrow in ycocg_row.h).
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "frame/vec.h"

namespace pxk {
namespace ycocg {

// ---------------------------------------------------------------------------------
// Arithmetic words. Each has T, add, sub, sar<N> (arithmetic shift right) and
// constant(v).
// ---------------------------------------------------------------------------------

// Vector lanes of 16 or 32 bits, wrapping.
template <class V, int Bits>
struct Lanes {
    static_assert(Bits == 16 || Bits == 32, "16- or 32-bit lanes");
    using T = V;
    PXK_INLINE static T add(T a, T b) { return Bits == 16 ? vec::add16(a, b) : vec::add32(a, b); }
    PXK_INLINE static T sub(T a, T b) { return Bits == 16 ? vec::sub16(a, b) : vec::sub32(a, b); }
    template <int N>
    PXK_INLINE static T sar(T a) {
        return Bits == 16 ? vec::srai16<N>(a) : vec::srai32<N>(a);
    }
    PXK_INLINE static T constant(int32_t v) { return Bits == 16 ? vec::splat16<V>(v) : vec::splat32<V>(v); }
};

// The low 16 bits of x as a signed value.
PXK_INLINE int32_t wrap16(int32_t x) { return static_cast<int16_t>(static_cast<uint16_t>(x)); }

// Scalar twin of Lanes<V, Bits>: values held sign-extended from Bits bits; sums and
// differences wrap, computed in unsigned arithmetic.
template <int Bits>
struct Scalar {
    using T = int32_t;
    PXK_INLINE static T wrap(uint32_t x) {
        return Bits == 16 ? wrap16(static_cast<int32_t>(x)) : static_cast<int32_t>(x);
    }
    PXK_INLINE static T add(T a, T b) { return wrap(static_cast<uint32_t>(a) + static_cast<uint32_t>(b)); }
    PXK_INLINE static T sub(T a, T b) { return wrap(static_cast<uint32_t>(a) - static_cast<uint32_t>(b)); }
    template <int N>
    PXK_INLINE static T sar(T a) { return a >> N; }
    PXK_INLINE static T constant(int32_t v) { return v; }
};

// Three values of one word: (R, G, B) on the colour side, (Y, Co, Cg) on the other.
template <class T>
struct Triple {
    T c[3];
};

// ---------------------------------------------------------------------------------
// Forms. Forward forms take R, G, B and give Y, Co, Cg; inverse forms the reverse.
// ---------------------------------------------------------------------------------

// Plain forward: divides as it goes and drops the low bits.
struct PlainForward {
    template <class A, class T>
    PXK_INLINE static Triple<T> apply(T r, T g, T b) {
        const T g2 = A::add(g, g);
        const T y = A::template sar<2>(A::add(A::add(A::add(r, g2), b), A::constant(2)));
        const T co = A::template sar<1>(A::add(A::sub(r, b), A::constant(1)));
        const T cg = A::template sar<2>(A::add(A::sub(A::sub(g2, r), b), A::constant(2)));
        return Triple<T>{{y, co, cg}};
    }
};

// Plain inverse.
struct PlainInverse {
    template <class A, class T>
    PXK_INLINE static Triple<T> apply(T y, T co, T cg) {
        const T r = A::sub(A::add(y, co), cg);
        const T g = A::add(y, cg);
        const T b = A::sub(A::sub(y, co), cg);
        return Triple<T>{{r, g, b}};
    }
};

// Reversible forward: lifting steps, each undone exactly by RevInverse.
struct RevForward {
    template <class A, class T>
    PXK_INLINE static Triple<T> apply(T r, T g, T b) {
        const T co = A::sub(r, b);
        const T t = A::add(b, A::template sar<1>(co));
        const T cg = A::sub(g, t);
        const T y = A::add(t, A::template sar<1>(cg));
        return Triple<T>{{y, co, cg}};
    }
};

// Reversible inverse: the lifting steps of RevForward in reverse order.
struct RevInverse {
    template <class A, class T>
    PXK_INLINE static Triple<T> apply(T y, T co, T cg) {
        const T t = A::sub(y, A::template sar<1>(cg));
        const T g = A::add(cg, t);
        const T b = A::sub(t, A::template sar<1>(co));
        const T r = A::add(b, co);
        return Triple<T>{{r, g, b}};
    }
};

// The 8-bit offset pair: the plain forward with both chroma values moved up by 128
// (the 8-bit store limits them to 255).
struct OffsetForward {
    template <class A, class T>
    PXK_INLINE static Triple<T> apply(T r, T g, T b) {
        const Triple<T> v = PlainForward::apply<A>(r, g, b);
        const T offset = A::constant(128);
        return Triple<T>{{v.c[0], A::add(v.c[1], offset), A::add(v.c[2], offset)}};
    }
};

// Its inverse, on the stored chroma: R = Y + Co - Cg, G = Y + Cg - 128,
// B = 128 - Co + Y - Cg + 128 (the 8-bit store saturates each).
struct OffsetInverse {
    template <class A, class T>
    PXK_INLINE static Triple<T> apply(T y, T co, T cg) {
        const T offset = A::constant(128);
        const T r = A::sub(A::add(y, co), cg);
        const T g = A::sub(A::add(y, cg), offset);
        const T b = A::add(A::sub(A::add(A::sub(offset, co), y), cg), offset);
        return Triple<T>{{r, g, b}};
    }
};

}  // namespace ycocg
}  // namespace pxk
