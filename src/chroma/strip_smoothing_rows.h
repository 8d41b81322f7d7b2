// Vertical smoothing of 4:2:0 luma and chroma rows, for the strip members: the two
// forms (the mean of two rows, and the 1-2-1 mean of three, each plus a bias of 0 or
// 1 and saturated at 255) and the row kernels that apply them and lay the result out
// as packed 4:2:2 pixel pairs or as planes. The vector blocks and the scalar columns
// give the same bits.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>

#include "chroma/byte_moves.h"
#include "frame/drivers.h"
#include "frame/fixed_point.h"
#include "frame/vec.h"
#include "frame/vec_float.h"

namespace pxk {
namespace chroma {

// A smoothed luma row: (Y[outer0] + Y[outer1] + 2 Y[centre] + 4 bias) >> 2, saturated
// at 255, rows counted from the plane pointer (negative rows lie before it). The three
// filters of the members are all of this shape:
//   1 2 1 over rows r - 1, r, r + 1: outer r - 1 and r + 1, centre r
//   3 1 over rows r, r + 1:          outer r and r + 1,     centre r
//   1 3 over rows r - 1, r:          outer r - 1 and r,     centre r
struct LumaTaps {
    int32_t outer0, outer1, centre;
    int32_t bias;
};

// A smoothed chroma row: (C[first] + C[second] + 2 bias) >> 1, saturated at 255. A
// row copied unchanged is first == second with no bias.
struct ChromaTaps {
    int32_t first, second;
    int32_t bias;
};

// The two forms. The vector forms stay in bytes: floor((a + b) / 2) is the rounded
// mean less the bit that the rounding added, floor((a + b + 2c) / 4) equals
// floor((floor((a + b) / 2) + c) / 2), and a bias of 1 after the shift is the same
// as 2 or 4 before it; the saturating add gives the 255 ceiling.
struct StripSmoothingForm {
    template <class V>
    PXK_INLINE static V floorMean(V a, V b) {
        using namespace vec;
        return sub8(avg8(a, b), and_(xor_(a, b), splat16<V>(0x0101)));
    }
    template <class V>
    PXK_INLINE static V twoRows(V a, V b, V bias) {
        return vec::addSatU8(floorMean(a, b), bias);
    }
    template <class V>
    PXK_INLINE static V threeRows(V outer0, V outer1, V centre, V bias) {
        return vec::addSatU8(floorMean(floorMean(outer0, outer1), centre), bias);
    }
    // The scalar twins, as the filters are written.
    PXK_INLINE static uint8_t twoRows(int32_t a, int32_t b, int32_t bias) { return clamp8((a + b + 2 * bias) >> 1); }
    PXK_INLINE static uint8_t threeRows(int32_t outer0, int32_t outer1, int32_t centre, int32_t bias) {
        return clamp8((outer0 + outer1 + 2 * centre + 4 * bias) >> 2);
    }
};

// Row `row` of a plane whose row 0 is at p.
template <class T>
PXK_INLINE T* rowOf(T* p, int32_t step, int32_t row) {
    return byteOffset(p, static_cast<std::intptr_t>(step) * row);
}

// The rows a set of taps reads, resolved to pointers.
struct LumaRows {
    const uint8_t *outer0, *outer1, *centre;
    int32_t bias;
};
struct ChromaRows {
    const uint8_t *first, *second;
    int32_t bias;
};

PXK_INLINE LumaRows lumaRows(const uint8_t* plane, int32_t step, const LumaTaps& t) {
    return LumaRows{rowOf(plane, step, t.outer0), rowOf(plane, step, t.outer1), rowOf(plane, step, t.centre), t.bias};
}
PXK_INLINE ChromaRows chromaRows(const uint8_t* plane, int32_t step, const ChromaTaps& t) {
    return ChromaRows{rowOf(plane, step, t.first), rowOf(plane, step, t.second), t.bias};
}

template <class V>
PXK_INLINE V smoothLuma(const LumaRows& r, int32_t i) {
    using namespace vec;
    return StripSmoothingForm::threeRows(loadLanes<V, 16>(r.outer0 + i), loadLanes<V, 16>(r.outer1 + i),
                                         loadLanes<V, 16>(r.centre + i), splat16<V>(0x0101 * r.bias));
}
template <class V, int Stride>
PXK_INLINE V smoothChroma(const ChromaRows& r, int32_t i) {
    using namespace vec;
    return StripSmoothingForm::twoRows(loadLanes<V, Stride>(r.first + i), loadLanes<V, Stride>(r.second + i),
                                       splat16<V>(0x0101 * r.bias));
}
PXK_INLINE uint8_t smoothLuma(const LumaRows& r, int32_t i) {
    return StripSmoothingForm::threeRows(r.outer0[i], r.outer1[i], r.centre[i], r.bias);
}
PXK_INLINE uint8_t smoothChroma(const ChromaRows& r, int32_t i) {
    return StripSmoothingForm::twoRows(r.first[i], r.second[i], r.bias);
}

// Two packed 4:2:2 rows that share their chroma, of n bytes of luma and n bytes of
// chroma pairs each (n even): byte 2i of row k is the smoothed luma of column i by
// luma[k], byte 2i + 1 the smoothed chroma byte i, made once for both rows.
PXK_INLINE void smoothedPackedRowPair(const LumaRows (&luma)[2], const ChromaRows& chroma, uint8_t* const (&dst)[2],
                                      int32_t n) {
    forBlocks<16>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            const V c = smoothChroma<V, 16>(chroma, i);
            PXK_UNROLL
            for (int k = 0; k < 2; ++k) {
                const V y = smoothLuma<V>(luma[k], i);
                vec::storeLanes<V, 32>(dst[k] + 2 * i, vec::unpacklo8(y, c));
                vec::storeLanes<V, 32>(dst[k] + 2 * i + 16, vec::unpackhi8(y, c));
            }
        },
        [&](int32_t i) {
            const uint8_t c = smoothChroma(chroma, i);
            for (int k = 0; k < 2; ++k) {
                dst[k][2 * i] = smoothLuma(luma[k], i);
                dst[k][2 * i + 1] = c;
            }
        });
}

// One smoothed luma row of n bytes.
PXK_INLINE void smoothedLumaRow(const LumaRows& luma, uint8_t* dst, int32_t n) {
    forBlocks<16>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            vec::storeLanes<V, 16>(dst + i, smoothLuma<V>(luma, i));
        },
        [&](int32_t i) { dst[i] = smoothLuma(luma, i); });
}

// One smoothed row of n chroma pairs, byte 0 of each pair into `first` and byte 1
// into `second`.
PXK_INLINE void smoothedChromaPlanes(const ChromaRows& chroma, uint8_t* first, uint8_t* second, int32_t n) {
    forBlocks<16>(
        n,
        [&](auto tag, int32_t i) PXK_LAMBDA_INLINE {
            using V = decltype(tag);
            V even, odd;
            simd::unzipBytes(smoothChroma<V, 32>(chroma, 2 * i), smoothChroma<V, 32>(chroma, 2 * i + 16), even, odd);
            vec::storeLanes<V, 16>(first + i, even);
            vec::storeLanes<V, 16>(second + i, odd);
        },
        [&](int32_t i) {
            first[i] = smoothChroma(chroma, 2 * i);
            second[i] = smoothChroma(chroma, 2 * i + 1);
        });
}

}  // namespace chroma
}  // namespace pxk
