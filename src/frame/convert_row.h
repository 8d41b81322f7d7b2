// The generic row kernel of per-pixel three-channel conversions: vector blocks over
// the columns below n = width - width % 8, the scalar tail for the rest. The blocks
// are as wide as the build's widest vector allows (32 pixels in the avx2 build, 16 in
// the sse2 build), then 16 and a last 8 as needed.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "pxkcc.h"

#include "frame/drivers.h"
#include "frame/pixel_block.h"
#include "frame/vec.h"

namespace pxk {

namespace detail {

template <class Form, class = void>
struct HasQuadApply : std::false_type {};
template <class Form>
struct HasQuadApply<Form, std::void_t<decltype(Form::apply(std::declval<const Quads16&>()))>> : std::true_type {};

template <class In, class Out, class = void>
struct HasQuadLayouts : std::false_type {};
template <class In, class Out>
struct HasQuadLayouts<In, Out,
                      std::void_t<decltype(std::declval<const In&>().loadQuads(0)),
                                  decltype(std::declval<const Out&>().storeQuads(0, std::declval<const Quads16&>()))>>
    : std::true_type {};

}  // namespace detail

// A conversion given as two forms: BlockForm::apply(const Lanes3<V>&) for the columns
// of the vector blocks, Tail::apply(Pixel3) for the tail. The vector columns are those
// below n = width - width % Unit (Unit 8 or 16). With Reorder the first and third
// output channels of both are swapped (an RGB result written in BGR order).
template <class BlockForm, class Tail, bool Reorder = false, int32_t Unit = 8>
struct ColumnForms {
    static_assert(Unit == 8 || Unit == 16, "vector columns come in 8s or 16s");
    static constexpr int32_t kUnit = Unit;
    template <class V>
    PXK_INLINE static Lanes3<V> block(const Lanes3<V>& v) {
        Lanes3<V> r = BlockForm::template apply<V>(v);
        if (Reorder) std::swap(r.c[0], r.c[2]);
        return r;
    }
    // Blocks in quad order (see Quads16), for a block form that has them; with Reorder
    // there are none.
    static constexpr bool kHasQuads = !Reorder && detail::HasQuadApply<BlockForm>::value;
    PXK_INLINE static Quads16 blockQuads(const Quads16& v) { return BlockForm::apply(v); }
    // The block form in two parts (chroma terms, then each pixel's luma), for blocks
    // whose pixels share their chroma.
    template <class V>
    PXK_INLINE static auto chromaTerms(V c1, V c2) {
        return BlockForm::chromaTerms(c1, c2);
    }
    template <class V, class T>
    PXK_INLINE static Lanes3<V> withLuma(V y, const T& terms) {
        Lanes3<V> r = BlockForm::withLuma(y, terms);
        if (Reorder) std::swap(r.c[0], r.c[2]);
        return r;
    }
    PXK_INLINE static Pixel3 tail(Pixel3 p) {
        Pixel3 r = Tail::apply(p);
        if (Reorder) std::swap(r.c[0], r.c[2]);
        return r;
    }
};

namespace detail {

// Room for 16 pixels of a layout, plane by plane.
template <class Layout>
struct Staging {
    alignas(16) uint8_t bytes[Layout::kPlanes][16 * Layout::kBytes] = {};

    // Copies `count` pixels from column x of `row` in, and returns the layout bound to
    // this buffer instead.
    Layout fill(const Layout& row, int32_t x, int32_t count) {
        Layout local = row;
        PXK_UNROLL
        for (int i = 0; i < Layout::kPlanes; ++i) {
            std::memcpy(bytes[i], row.plane[i] + planeOffsetOf<Layout>(i, x),
                        static_cast<std::size_t>(planeOffsetOf<Layout>(i, count)));
            local.plane[i] = bytes[i];
        }
        return local;
    }
    // Copies `count` pixels back to column x of `row`.
    void drain(const Layout& row, int32_t x, int32_t count) const {
        PXK_UNROLL
        for (int i = 0; i < Layout::kPlanes; ++i) {
            std::memcpy(row.plane[i] + planeOffsetOf<Layout>(i, x), bytes[i],
                        static_cast<std::size_t>(planeOffsetOf<Layout>(i, count)));
        }
    }
};

template <class Forms, class V>
PXK_INLINE Block<V> applyForms(const Block<V>& src) {
    Block<V> dst;
    dst.half[0] = Forms::block(src.half[0]);
    dst.half[1] = Forms::block(src.half[1]);
    return dst;
}

// One block of vector type V from column x. Where both layouts and the block form have
// quad order (128-bit blocks of the sse2 network), the block goes through it; the
// results are the same pixel for pixel either way.
template <class Forms, class V, class In, class Out>
PXK_INLINE void convertBlock(const In& in, const Out& out, int32_t x) {
    if constexpr (std::is_same_v<V, vec::V128> && Forms::kHasQuads && HasQuadLayouts<In, Out>::value) {
        out.storeQuads(x, Forms::blockQuads(in.loadQuads(x)));
    } else {
        out.store(x, applyForms<Forms>(in.template load<V>(x)));
    }
}

// A last vector block of `count` pixels (8), run through local buffers. Kept out of
// line so that the row loop around the whole blocks stays small.
template <class Forms, class In, class Out>
__attribute__((noinline)) void convertStagedBlock(const In& in, const Out& out, int32_t x, int32_t count) {
    Staging<In> inBuf;
    Staging<Out> outBuf;
    convertBlock<Forms, vec::V128>(inBuf.fill(in, x, count), outBuf.fill(out, x, count), 0);
    outBuf.drain(out, x, count);
}

}  // namespace detail

// Converts one row of `width` pixels from `in` to `out`. Vector blocks cover the
// widest vector's block, then 16 columns; where the unit is 8, a last block of 8 runs
// through local buffers, so that no byte beyond the row's last pixel is read or
// written.
template <class Forms, class In, class Out>
PXK_INLINE void convertRow(const In& inRow, const Out& outRow, int32_t width) {
    // Local copies: the stores of a block may alias any byte, so plane pointers read
    // through a reference would be read again after every store.
    const In in = inRow;
    const Out out = outRow;
    splitColumns<Forms::kUnit, kBlockPixels<vec::Widest>>(
        width,
        [&](int32_t x, int32_t count) PXK_LAMBDA_INLINE {
            if (count == kBlockPixels<vec::Widest>) {
                detail::convertBlock<Forms, vec::Widest>(in, out, x);
            } else if (count == kBlockPixels<vec::V128>) {
                detail::convertBlock<Forms, vec::V128>(in, out, x);
            } else {
                detail::convertStagedBlock<Forms>(in, out, x, count);
            }
        },
        [&](int32_t x) { out.store1(x, Forms::tail(in.load1(x))); });
}

// Converts a whole region row by row from the top; `in` and `out` are plane walks
// bound to the region's first row.
template <class Forms, class In, class Out>
PXK_INLINE void convertRegion(PxkSize size, PlaneRows<In> in, PlaneRows<Out> out) {
    driveRows(size.width, size.height,
              [](int32_t width, const In& inRow, const Out& outRow) { convertRow<Forms>(inRow, outRow, width); },
              in, out);
}

}  // namespace pxk
