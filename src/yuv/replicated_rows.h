// Region drivers of the conversions from subsampled YCbCr and YUV to RGB. Chroma is
// replicated by the source layouts (frame/subsampled_layouts.h), so every row is a
// row of the generic kernel; these drivers add what the samplings change: row pairs
// that share a chroma row, cut widths, and the lone last pixel of packed pairs.
#pragma once

#include "frame/simd_inline.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

#include "pxkcc.h"

#include "frame/convert_row.h"
#include "frame/drivers.h"
#include "frame/subsampled_layouts.h"

namespace pxk {
namespace yuv {

namespace detail {

// One vector block of Rows rows at column x that share their chroma samples: the
// chroma terms of each pair of pixels once, then each row's luma.
template <class Layout, class = void>
struct ChromaEachPixel : std::false_type {};
template <class Layout>
struct ChromaEachPixel<Layout, std::void_t<decltype(Layout::kChromaEachPixel)>> : std::true_type {};

// The chroma terms of a block's two halves, where each pixel has chroma of its own
// (kChromaEachPixel).
template <class Forms, class V, class In>
PXK_INLINE auto chromaTermHalves(const In& in, int32_t x) {
    V c1[2], c2[2];
    in.loadChromaHalves(x, 1, c1[0], c1[1]);
    in.loadChromaHalves(x, 2, c2[0], c2[1]);
    using T = decltype(Forms::chromaTerms(c1[0], c2[0]));
    return std::array<T, 2>{Forms::chromaTerms(c1[0], c2[0]), Forms::chromaTerms(c1[1], c2[1])};
}

template <class Forms, class V, int Rows, class In, class Out>
PXK_INLINE void sharedChromaBlock(const In (&in)[Rows], const Out (&out)[Rows], int32_t x) {
    if constexpr (ChromaEachPixel<In>::value) {
        const auto terms = chromaTermHalves<Forms, V>(in[0], x);
        PXK_UNROLL
        for (int r = 0; r < Rows; ++r) {
            Block<V> b;
            V y0, y1;
            in[r].template loadLuma<V>(x, y0, y1);
            b.half[0] = Forms::withLuma(y0, terms[0]);
            b.half[1] = Forms::withLuma(y1, terms[1]);
            out[r].store(x, b);
        }
    } else {
        // One chroma value a pair: the even pixels and the odd pixels each take the
        // terms as they are, and the results go to the block's order after.
        V c1, c2;
        in[0].template loadChroma<V>(x, c1, c2);
        const auto terms = Forms::chromaTerms(c1, c2);
        PXK_UNROLL
        for (int r = 0; r < Rows; ++r) {
            V even, odd;
            in[r].template loadLumaEvenOdd<V>(x, even, odd);
            const Lanes3<V> e = Forms::withLuma(even, terms);
            const Lanes3<V> o = Forms::withLuma(odd, terms);
            Block<V> b;
            PXK_UNROLL
            for (int c = 0; c < 3; ++c) simd::evenOddToBlockHalves(e.c[c], o.c[c], b.half[0].c[c], b.half[1].c[c]);
            out[r].store(x, b);
        }
    }
}

}  // namespace detail

// Converts Rows rows of `width` pixels whose chroma comes from one chroma row (in[0]'s):
// the columns of the generic row kernel (convertRow), with each vector block's chroma
// terms computed once for all rows. A last block of 8 columns runs row by row
// through local buffers.
template <class Forms, int Rows, class In, class Out>
PXK_INLINE void convertSharedChromaRows(const In (&inRows)[Rows], const Out (&outRows)[Rows], int32_t width) {
    // Local copies, as in convertRow.
    In in[Rows];
    Out out[Rows];
    PXK_UNROLL
    for (int r = 0; r < Rows; ++r) {
        in[r] = inRows[r];
        out[r] = outRows[r];
    }
    splitColumns<Forms::kUnit, kBlockPixels<vec::Widest>>(
        width,
        [&](int32_t x, int32_t count) PXK_LAMBDA_INLINE {
            if (count == kBlockPixels<vec::Widest>) {
                detail::sharedChromaBlock<Forms, vec::Widest>(in, out, x);
            } else if (count == kBlockPixels<vec::V128>) {
                detail::sharedChromaBlock<Forms, vec::V128>(in, out, x);
            } else {
                PXK_UNROLL
                for (int r = 0; r < Rows; ++r) pxk::detail::convertStagedBlock<Forms>(in[r], out[r], x, count);
            }
        },
        [&](int32_t x) {
            PXK_UNROLL
            for (int r = 0; r < Rows; ++r) out[r].store1(x, Forms::tail(in[r].load1(x)));
        });
}

// One row of a source with replicated chroma.
template <class Forms, class In, class Out>
PXK_INLINE void convertChromaRow(const In& in, const Out& out, int32_t width) {
    const In ins[1] = {in};
    const Out outs[1] = {out};
    convertSharedChromaRows<Forms>(ins, outs, width);
}

// Row by row from the top.
template <class Forms, class In, class Out>
PXK_INLINE void convertChromaRegion(PxkSize size, PlaneRows<In> in, PlaneRows<Out> out) {
    driveRows(size.width, size.height,
              [](int32_t width, const In& s, const Out& d) { convertChromaRow<Forms>(s, d, width); }, in, out);
}

// 4:2:0: height / 2 row pairs of width - width % 2 columns, both rows of a pair with
// the pair's chroma row; a last odd row or column is neither read nor written.
template <class Forms, class In, int Full, class Out>
PXK_INLINE PxkResult convert420(PxkSize size, PairedPlaneRows<In, Full> in, PairedPlaneRows<Out> out) {
    driveRowPairs(
        size.width - size.width % 2, size.height,
        [](int32_t width, RowPair<const In> s, RowPair<const Out> d) {
            const In ins[2] = {*s.top, *s.bottom};
            const Out outs[2] = {*d.top, *d.bottom};
            convertSharedChromaRows<Forms>(ins, outs, width);
        },
        in, out);
    return oddSizeStatus(size, 2, 2);
}

// The first width - width % Group columns of every row; the rest is neither read nor
// written.
template <class Forms, int32_t Group, class In, class Out>
PXK_INLINE void convertWholeGroups(PxkSize size, PlaneRows<In> in, PlaneRows<Out> out) {
    convertChromaRegion<Forms>(PxkSize{size.width - size.width % Group, size.height}, in, out);
}

// Packed pairs (PackedC2In): whole pairs, then a lone last pixel by the tail form.
template <class Forms, class In, class Out>
PXK_INLINE void convertPackedPairs(PxkSize size, PlaneRows<In> in, PlaneRows<Out> out) {
    driveRows(
        size.width, size.height,
        [](int32_t width, const In& s, const Out& d) {
            const int32_t pairs = width - width % 2;
            convertChromaRow<Forms>(s, d, pairs);
            if (pairs != width) d.store1(pairs, Forms::tail(s.loadLone(pairs)));
        },
        in, out);
}

// 4:2:0 with chroma filtered along the row (FilteredPlanesIn): vector blocks cover
// whole blocks of 16 columns that end before the last pair (they read the next pair's
// chroma), both rows of a pair at once; the tail the rest. The forms must give the
// same bits in both.
template <class Forms, class Out>
PXK_INLINE PxkResult convertFiltered420(PxkSize size, PairedPlaneRows<FilteredPlanesIn, 1> in,
                                        PairedPlaneRows<Out> out) {
    static_assert(Forms::kUnit == 16, "blocks of 16, never through the staging buffers");
    driveRowPairs(
        size.width - size.width % 2, size.height,
        [](int32_t width, RowPair<const FilteredPlanesIn> s, RowPair<const Out> d) {
            const int32_t beforeLastPair = std::max(0, width - 2);
            FilteredPlanesIn rows[2] = {*s.top, *s.bottom};
            rows[0].lastPair = rows[1].lastPair = width / 2 - 1;
            const Out outs[2] = {*d.top, *d.bottom};
            convertSharedChromaRows<Forms>(rows, outs, beforeLastPair);
            for (int r = 0; r < 2; ++r) {
                for (int32_t x = beforeLastPair; x < width; ++x) outs[r].store1(x, Forms::tail(rows[r].load1(x)));
            }
        },
        in, out);
    return oddSizeStatus(size, 2, 2);
}

// The 4:2:2 forms without steps: one long row where the rows touch (runAsOneLongRow),
// else rows with the derived steps: luma `width`, chroma width / 2 + width % 2, the
// destination `outStep`.
template <class Forms, class Out>
PXK_INLINE void convert422WithoutSteps(PxkSize size, const ReplicatedPlanesIn<1>& in, const Out& out,
                                       int32_t outStep) {
    const bool longRow = runAsOneLongRow(size, [&](int32_t start, int32_t count) {
        convertChromaRow<Forms>(shiftedBy(in, start), shiftedBy(out, start), count);
    });
    if (!longRow) {
        const int32_t chromaStep = size.width / 2 + size.width % 2;
        const int32_t steps[3] = {size.width, chromaStep, chromaStep};
        convertChromaRegion<Forms>(size, planeRows(in, steps), planeRows(out, outStep));
    }
}

}  // namespace yuv
}  // namespace pxk
