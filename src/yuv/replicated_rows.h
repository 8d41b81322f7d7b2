// Region drivers of the conversions from subsampled YCbCr and YUV to RGB. Chroma is
// replicated by the source layouts (frame/subsampled_layouts.h), so every row is a
// row of the generic kernel; these drivers add what the samplings change: row pairs
// that share a chroma row, cut widths, and the lone last pixel of packed pairs.
#pragma once

#include "frame/simd_inline.h"

#include <algorithm>
#include <cstdint>

#include "pxkcc.h"

#include "frame/convert_row.h"
#include "frame/drivers.h"
#include "frame/subsampled_layouts.h"

namespace pxk {
namespace yuv {

// 4:2:0: height / 2 row pairs of width - width % 2 columns, both rows of a pair with
// the pair's chroma row; a last odd row or column is neither read nor written.
template <class Forms, class In, int Full, class Out>
PXK_INLINE PxkResult convert420(PxkSize size, PairedPlaneRows<In, Full> in, PairedPlaneRows<Out> out) {
    driveRowPairs(
        size.width - size.width % 2, size.height,
        [](int32_t width, RowPair<const In> s, RowPair<const Out> d) {
            convertRow<Forms>(*s.top, *d.top, width);
            convertRow<Forms>(*s.bottom, *d.bottom, width);
        },
        in, out);
    return oddSizeStatus(size, 2, 2);
}

// The first width - width % Group columns of every row; the rest is neither read nor
// written.
template <class Forms, int32_t Group, class In, class Out>
PXK_INLINE void convertWholeGroups(PxkSize size, PlaneRows<In> in, PlaneRows<Out> out) {
    convertRegion<Forms>(PxkSize{size.width - size.width % Group, size.height}, in, out);
}

// Packed pairs (PackedC2In): whole pairs, then a lone last pixel by the tail form.
template <class Forms, class In, class Out>
PXK_INLINE void convertPackedPairs(PxkSize size, PlaneRows<In> in, PlaneRows<Out> out) {
    driveRows(
        size.width, size.height,
        [](int32_t width, const In& s, const Out& d) {
            const int32_t pairs = width - width % 2;
            convertRow<Forms>(s, d, pairs);
            if (pairs != width) d.store1(pairs, Forms::tail(s.loadLone(pairs)));
        },
        in, out);
}

// 4:2:0 with chroma filtered along the row (FilteredPlanesIn): vector blocks cover
// whole blocks of 16 columns that end before the last pair (they read the next pair's
// chroma), the tail the rest; the forms must give the same bits in both.
template <class Forms, class Out>
PXK_INLINE PxkResult convertFiltered420(PxkSize size, PairedPlaneRows<FilteredPlanesIn, 1> in,
                                        PairedPlaneRows<Out> out) {
    static_assert(Forms::kUnit == 16, "blocks of 16, never through the staging buffers");
    driveRowPairs(
        size.width - size.width % 2, size.height,
        [](int32_t width, RowPair<const FilteredPlanesIn> s, RowPair<const Out> d) {
            const int32_t beforeLastPair = std::max(0, width - 2);
            const FilteredPlanesIn* rows[2] = {s.top, s.bottom};
            const Out* outs[2] = {d.top, d.bottom};
            for (int r = 0; r < 2; ++r) {
                FilteredPlanesIn row = *rows[r];
                row.lastPair = width / 2 - 1;
                convertRow<Forms>(row, *outs[r], beforeLastPair);
                for (int32_t x = beforeLastPair; x < width; ++x) outs[r]->store1(x, Forms::tail(row.load1(x)));
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
        convertRow<Forms>(shiftedBy(in, start), shiftedBy(out, start), count);
    });
    if (!longRow) {
        const int32_t chromaStep = size.width / 2 + size.width % 2;
        const int32_t steps[3] = {size.width, chromaStep, chromaStep};
        convertRegion<Forms>(size, planeRows(in, steps), planeRows(out, outStep));
    }
}

}  // namespace yuv
}  // namespace pxk
