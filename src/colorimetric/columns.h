// The column rule of a colorimetric member for the shared row kernel: which form
// converts the vector columns, which the tail, and where the split lies.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <utility>

#include "frame/convert_row.h"
#include "frame/pixel_block.h"

namespace pxk {
namespace colorimetric {

// The column rule of a member: Block::apply(Lanes3<V>) for the columns below
// n = width - width % Unit, Tail::apply(Pixel3) for the rest. SwapIn reads the first
// and third source channels exchanged (BGR read as RGB), SwapOut writes the first
// and third results exchanged. Units of 4 are allowed here: the row kernel stages the
// last short blocks through local buffers.
template <class Block, class Tail, int32_t Unit, bool SwapIn = false, bool SwapOut = false>
struct MemberColumns {
    static_assert(Unit == 4 || Unit == 8, "main loops take groups of 4 or 8 pixels");
    static constexpr int32_t kUnit = Unit;
    static constexpr bool kHasQuads = false;

    template <class V>
    PXK_INLINE static Lanes3<V> block(Lanes3<V> v) {
        if (SwapIn) std::swap(v.c[0], v.c[2]);
        Lanes3<V> r = Block::template apply<V>(v);
        if (SwapOut) std::swap(r.c[0], r.c[2]);
        return r;
    }
    PXK_INLINE static Pixel3 tail(Pixel3 p) {
        if (SwapIn) std::swap(p.c[0], p.c[2]);
        Pixel3 r = Tail::apply(p);
        if (SwapOut) std::swap(r.c[0], r.c[2]);
        return r;
    }
};

}  // namespace colorimetric
}  // namespace pxk
