// Row drivers: walk a region from the top, row by row or in pairs of rows, advancing
// each row pointer by its own signed byte step. A step of 0 revisits one row; a
// negative step runs upward through memory. Rows are never reordered or merged.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "pxkcc.h"

namespace pxk {

// Adds a signed byte offset to a row pointer of any sample type. The arithmetic is
// done on the address as an integer, so that a pointer stepped past either end of the
// caller's image (after the last row) is never formed by pointer arithmetic.
template <class T>
PXK_INLINE T* byteOffset(T* p, std::intptr_t bytes) {
    return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(p) +
                                static_cast<std::uintptr_t>(bytes));
}

// A plane walked one row at a time.
template <class T>
struct Rows {
    T* row;
    int32_t step;

    T* current() const { return row; }
    void advance() { row = byteOffset(row, step); }
};

template <class T>
PXK_INLINE Rows<T> rows(T* p, int32_t step) { return Rows<T>{p, step}; }

// The two rows of a full-resolution plane that one row pair covers.
template <class T>
struct RowPair {
    T* top;
    T* bottom;
};

// A full-resolution plane walked in pairs of rows: each pair gives both rows, and the
// walk then moves two steps. Planes at half vertical resolution walk with Rows beside
// it and so move one step a pair.
template <class T>
struct PairedRows {
    T* row;
    int32_t step;

    RowPair<T> current() const { return RowPair<T>{row, byteOffset(row, step)}; }
    void advance() { row = byteOffset(row, 2 * static_cast<std::intptr_t>(step)); }
};

template <class T>
PXK_INLINE PairedRows<T> pairedRows(T* p, int32_t step) { return PairedRows<T>{p, step}; }

// A set of planes bound to one row (a layout with kPlanes plane pointers, as in
// pixel_block.h), walked one row at a time, each plane by its own step.
template <class Layout>
struct PlaneRows {
    Layout layout;
    int32_t steps[Layout::kPlanes];

    const Layout& current() const { return layout; }
    void advance() {
        PXK_UNROLL
        for (int i = 0; i < Layout::kPlanes; ++i) layout.plane[i] = byteOffset(layout.plane[i], steps[i]);
    }
};

// All planes of `layout` walked by one common step.
template <class Layout>
PXK_INLINE PlaneRows<Layout> planeRows(const Layout& layout, int32_t step) {
    PlaneRows<Layout> w{layout, {}};
    PXK_UNROLL
    for (int i = 0; i < Layout::kPlanes; ++i) w.steps[i] = step;
    return w;
}

// Each plane of `layout` walked by its own step.
template <class Layout>
PXK_INLINE PlaneRows<Layout> planeRows(const Layout& layout, const int32_t* steps) {
    PlaneRows<Layout> w{layout, {}};
    PXK_UNROLL
    for (int i = 0; i < Layout::kPlanes; ++i) w.steps[i] = steps[i];
    return w;
}

// A set of planes bound to one row, walked in pairs of rows: each pair gives the layout
// bound to both rows (top, bottom), and the walk then moves on by two rows. The first
// FullPlanes planes have a row for each image row and move two steps a pair; the
// others (chroma at half vertical resolution) have one row for the pair, which both
// layouts share, and move one step.
template <class Layout, int FullPlanes = Layout::kPlanes>
struct PairedPlaneRows {
    static_assert(FullPlanes >= 1 && FullPlanes <= Layout::kPlanes, "at least one full-resolution plane");
    Layout layout;
    int32_t steps[Layout::kPlanes];

    RowPair<const Layout> current() const { return RowPair<const Layout>{&layout, &lower}; }
    void advance() {
        PXK_UNROLL
        for (int i = 0; i < Layout::kPlanes; ++i) {
            const std::intptr_t rowsDown = i < FullPlanes ? 2 : 1;
            layout.plane[i] = byteOffset(layout.plane[i], rowsDown * steps[i]);
        }
        bind();
    }
    // The layout of the lower row of the pair.
    void bind() {
        lower = layout;
        PXK_UNROLL
        for (int i = 0; i < FullPlanes; ++i) lower.plane[i] = byteOffset(layout.plane[i], steps[i]);
    }
    Layout lower;
};

// Each plane of `layout` walked in row pairs by its own step; planes from FullPlanes
// on are shared by the two rows of a pair.
template <int FullPlanes = -1, class Layout>
PXK_INLINE auto pairedPlaneRows(const Layout& layout, const int32_t* steps) {
    constexpr int kFull = FullPlanes < 0 ? Layout::kPlanes : FullPlanes;
    PairedPlaneRows<Layout, kFull> w{layout, {}, layout};
    PXK_UNROLL
    for (int i = 0; i < Layout::kPlanes; ++i) w.steps[i] = steps[i];
    w.bind();
    return w;
}

// All planes of `layout` walked in row pairs by one common step.
template <class Layout>
PXK_INLINE PairedPlaneRows<Layout> pairedPlaneRows(const Layout& layout, int32_t step) {
    int32_t steps[Layout::kPlanes];
    PXK_UNROLL
    for (int i = 0; i < Layout::kPlanes; ++i) steps[i] = step;
    return pairedPlaneRows(layout, steps);
}

// The path of the forms without steps over rows that touch: where the image holds at
// least 256 pixels and an even width, it is converted as one long row, in two runs:
// run(0, n) with n = (width * height) - (width * height) % 8, then run(n, rest), so
// that vector blocks run across the ends of image rows. Returns false (and runs
// nothing) otherwise, or past 2^31 - 1 pixels, where the caller walks rows.
template <class RunFn>
PXK_INLINE bool runAsOneLongRow(PxkSize size, RunFn&& run) {
    const int64_t pixels = int64_t{size.width} * size.height;
    if (pixels < 256 || size.width % 2 != 0 || pixels > INT32_MAX) return false;
    const int32_t total = static_cast<int32_t>(pixels);
    const int32_t first = total - total % 8;
    run(0, first);
    run(first, total - first);
    return true;
}

// Calls kernel(width, rows.current()...) once for each of `height` rows.
template <class Kernel, class... Walk>
PXK_INLINE void driveRows(int32_t width, int32_t height, Kernel&& kernel, Walk... walks) {
    for (int32_t y = 0; y < height; ++y) {
        kernel(width, walks.current()...);
        (walks.advance(), ...);
    }
}

// Calls kernel(width, walks.current()...) once for each of `height / 2` row pairs; a
// last odd row is neither read nor written.
template <class Kernel, class... Walk>
PXK_INLINE void driveRowPairs(int32_t width, int32_t height, Kernel&& kernel, Walk... walks) {
    driveRows(width, height / 2, static_cast<Kernel&&>(kernel), walks...);
}

// Status of a conversion that works in whole groups of `groupWidth` columns and
// `groupHeight` rows: pxkWarnOddSize when a column, row or group was cut off.
PXK_INLINE PxkResult oddSizeStatus(PxkSize size, int32_t groupWidth, int32_t groupHeight) {
    return (size.width % groupWidth != 0 || size.height % groupHeight != 0) ? pxkWarnOddSize
                                                                            : pxkOk;
}

// Splits a row of `width` pixels into vector blocks of `Block` columns and a scalar
// tail. With n = width - width % Block, the columns 0 to n - 1 go to the vector blocks
// and the columns n and up to tail(x), one call each. The vector columns run in
// blocks of `Widest` columns while they last, then in halving blocks (Widest / 2 down
// to Block), each at most once: block(x, count) covers columns x to x + count - 1.
// The column split is part of the output in the fixed-point conversions, whose blocks
// and tails compute differently; the block widths are not (every width of block gives
// a column the same bits).
template <int32_t Block, int32_t Widest = 2 * Block, class BlockFn, class TailFn>
PXK_INLINE void splitColumns(int32_t width, BlockFn&& block, TailFn&& tail) {
    static_assert(Widest >= Block && Widest % Block == 0 && ((Widest / Block) & (Widest / Block - 1)) == 0,
                  "Widest is Block times a power of two");
    const int32_t n = width - width % Block;
    int32_t x = 0;
    for (; n - x >= Widest; x += Widest) block(x, Widest);
    PXK_UNROLL
    for (int32_t count = Widest / 2; count >= Block; count /= 2) {
        if (n - x >= count) {
            block(x, count);
            x += count;
        }
    }
    for (x = n; x < width; ++x) tail(x);
}

}  // namespace pxk
