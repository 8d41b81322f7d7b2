// The row kernel and region driver of the YCoCg members.
//
// Columns: n = width - width % 4 columns go to vector groups (16 pixels a group in the
// avx2 build while they last, then 8, then one group of 4 run through local buffers),
// the last width % 4 pixels to the scalar tail. Every member uses this split; it only
// shows in the output of the 16-bit plain forward, whose vector stores saturate while
// its tail keeps the low 16 bits.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <type_traits>

#include "pxkcc.h"

#include "frame/convert_row.h"
#include "frame/drivers.h"
#include "tools/ycocg_forms.h"
#include "tools/ycocg_layouts.h"

namespace pxk {
namespace ycocg {

// Narrowing of 32-bit results into 16-bit samples in the vector groups. The scalar
// tails always keep the low 16 bits (writeSample).
struct NarrowKeepLow16 {
    template <class V>
    PXK_INLINE static V apply(V lo, V hi) {
        using namespace vec;
        return packs32(srai32<16>(slli32<16>(lo)), srai32<16>(slli32<16>(hi)));
    }
};
struct NarrowSaturate {
    template <class V>
    PXK_INLINE static V apply(V lo, V hi) { return vec::packs32(lo, hi); }
};

// Colour orders of the packed side.
inline constexpr bool kBGR = false;
inline constexpr bool kRGB = true;

// A member: its form, its arithmetic width (16 or 32 bits), the colour order of its
// packed side (red first, or blue first), and the narrowing of its vector stores.
template <class Form, int WordBits, bool RedFirst, class Narrow = NarrowKeepLow16>
struct Member {
    using FormType = Form;
    using NarrowType = Narrow;
    static constexpr int kParts = WordBits == 32 ? 2 : 1;
    template <class V>
    using Word = Lanes<V, WordBits>;
    using ScalarWord = Scalar<WordBits>;

    // Index of R and of B in a colour triple as it lies in memory.
    static constexpr int kR = RedFirst ? 0 : 2;
    static constexpr int kB = RedFirst ? 2 : 0;
};

namespace detail {

// A group in `To` parts: 16-bit lanes sign-extended to 32 bits, or 32-bit lanes
// narrowed by Narrow.
template <int To, class Narrow, class V, int From>
PXK_INLINE Group<V, To> toParts(const Group<V, From>& g) {
    if constexpr (To == From) {
        return g;
    } else if constexpr (To == 2) {
        Group<V, 2> w;
        PXK_UNROLL
        for (int i = 0; i < 3; ++i) {
            w.c[i][0] = simd::widenLow16(g.c[i][0]);
            w.c[i][1] = simd::widenHigh16(g.c[i][0]);
        }
        return w;
    } else {
        Group<V, 1> n;
        PXK_UNROLL
        for (int i = 0; i < 3; ++i) n.c[i][0] = Narrow::apply(g.c[i][0], g.c[i][1]);
        return n;
    }
}

// Forward members read colour (memory order) and write Y, Co, Cg; inverse members
// read Y, Co, Cg and write colour in memory order. `Forward` tells which.
template <class M, bool Forward, class A, class T>
PXK_INLINE Triple<T> applyMember(const T (&in)[3]) {
    using Form = typename M::FormType;
    if constexpr (Forward) {
        return Form::template apply<A>(in[M::kR], in[1], in[M::kB]);
    } else {
        const Triple<T> rgb = Form::template apply<A>(in[0], in[1], in[2]);
        Triple<T> out;
        out.c[M::kR] = rgb.c[0];
        out.c[1] = rgb.c[1];
        out.c[M::kB] = rgb.c[2];
        return out;
    }
}

}  // namespace detail

// One row of `width` pixels.
template <class M, bool Forward, class In, class Out>
struct RowKernel {
    template <class V>
    PXK_INLINE static void group(const In& in, const Out& out, int32_t x) {
        const Group<V, M::kParts> g = detail::toParts<M::kParts, typename M::NarrowType>(in.template load<V>(x));
        Group<V, M::kParts> r;
        PXK_UNROLL
        for (int p = 0; p < M::kParts; ++p) {
            const V v[3] = {g.c[0][p], g.c[1][p], g.c[2][p]};
            const Triple<V> t = detail::applyMember<M, Forward, typename M::template Word<V>>(v);
            PXK_UNROLL
            for (int i = 0; i < 3; ++i) r.c[i][p] = t.c[i];
        }
        out.template store<V>(x, detail::toParts<Out::kParts, typename M::NarrowType>(r));
    }

    // The last group of four, through local buffers, so that nothing beyond the row's
    // last pixel is read or written.
    __attribute__((noinline)) static void stagedGroup(const In& in, const Out& out, int32_t x, int32_t count) {
        pxk::detail::Staging<In> inBuf;
        pxk::detail::Staging<Out> outBuf;
        group<vec::V128>(inBuf.fill(in, x, count), outBuf.fill(out, x, count), 0);
        outBuf.drain(out, x, count);
    }

    PXK_INLINE static void one(const In& in, const Out& out, int32_t x) {
        const Triple<int32_t> s = in.load1(x);
        const int32_t v[3] = {s.c[0], s.c[1], s.c[2]};
        out.store1(x, detail::applyMember<M, Forward, typename M::ScalarWord>(v));
    }

    static void row(const In& inRow, const Out& outRow, int32_t width) {
        const In in = inRow;
        const Out out = outRow;
        constexpr int32_t kWidest = 8 * vec::kLanes<vec::Widest>;
        splitColumns<4, kWidest>(
            width,
            [&](int32_t x, int32_t count) PXK_LAMBDA_INLINE {
                if (count == kWidest) {
                    group<vec::Widest>(in, out, x);
                } else if (count == 8) {
                    group<vec::V128>(in, out, x);
                } else {
                    stagedGroup(in, out, x, count);
                }
            },
            [&](int32_t x) { one(in, out, x); });
    }
};

// Converts the region row by row from the top. A width or height below 1 converts
// nothing.
template <class M, bool Forward, class In, class Out>
inline void convertRegion(PxkSize size, PlaneRows<In> in, PlaneRows<Out> out) {
    if (size.width < 1) return;
    driveRows(
        size.width, size.height,
        [](int32_t width, const In& inRow, const Out& outRow) { RowKernel<M, Forward, In, Out>::row(inRow, outRow, width); },
        in, out);
}

}  // namespace ycocg
}  // namespace pxk
