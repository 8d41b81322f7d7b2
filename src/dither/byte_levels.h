// 8-bit samples into 8-bit codes without noise (nearest level and ordered dither): the
// code of a sample is a function of its value and of the threshold it meets, so a
// 16-bit integer form can stand in for the float forms. With n = v * L, the level below
// is k0 = floor(n / 255), the remainder r = n - 255 k0 (the float remainder times L),
// the level k = k0 + (r > limit), and the code floor(255 k / L) by a divisor's magic
// number. The float forms have rounding of their own (a code may land one low), so a
// call takes the integer form only after checking, for every 8-bit value and every
// limit of the call, that it gives the float form's code; otherwise the float form
// runs. The bytes are the same either way; the integer form is only faster.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "dither/samples.h"
#include "frame/drivers.h"
#include "frame/vec_float.h"

namespace pxk {
namespace dither {

struct ByteLevelForm {
    int32_t L = 0;
    // floor(m / L) = ((m * magic) >> 16) >> shift for every m = 255 k that occurs (the
    // check at the start of a call proves it for the call's L).
    int32_t magic = 0;
    int32_t shift = 0;

    // The magic number of L; false for L = 1, which has none in 16 bits.
    bool setUp(int32_t levelsL) {
        L = levelsL;
        if (L < 2 || L > 255) return false;
        int32_t s = 0;
        while ((2 << s) <= L) ++s;  // s = floor(log2 L)
        uint32_t m = ((1u << (16 + s)) + static_cast<uint32_t>(L) - 1u) / static_cast<uint32_t>(L);
        if (m > 65535u) {
            // A power of two: 2^16 / 2 and one shift less.
            m >>= 1;
            --s;
        }
        magic = static_cast<int32_t>(m);
        shift = s;
        return true;
    }

    // The vector form over 16-bit lanes holding values 0..255 and their limits 0..255.
    template <class V>
    PXK_INLINE V apply(V v, V limit) const {
        using namespace vec;
        const V n = mullo16(v, splat16<V>(L));
        // floor(n / 255) for n below 2^16: the high product by 0x8081, then 7 bits down.
        const V k0 = srli16<7>(mulhiu16(n, splat16<V>(0x8081)));
        const V r = sub16(n, mullo16(k0, splat16<V>(255)));
        const V k = sub16(k0, greater16(r, limit));
        return srl16(mulhiu16(mullo16(k, splat16<V>(255)), splat16<V>(magic)), shift);
    }

    // The scalar twin.
    PXK_INLINE uint8_t apply(uint32_t v, uint32_t limit) const {
        const uint32_t n = v * static_cast<uint32_t>(L);
        const uint32_t k0 = (n * 0x8081u) >> 23;
        const uint32_t r = n - 255u * k0;
        const uint32_t k = k0 + (r > limit ? 1u : 0u);
        const uint32_t code = (((255u * k) * static_cast<uint32_t>(magic)) >> 16) >> shift;
        return static_cast<uint8_t>(code > 255u ? 255u : code);
    }

    // Whether the form gives floatCode(v) for every 8-bit value v against the limit.
    template <class FloatCode>
    bool agrees(uint32_t limit, FloatCode&& floatCode) const {
        for (uint32_t v = 0; v < 256; ++v) {
            if (apply(v, limit) != floatCode(static_cast<uint8_t>(v))) return false;
        }
        return true;
    }
};

// Whether a region is worth the check of the integer form: the check runs the float
// form over 256 values per limit, so small regions skip it.
PXK_INLINE bool worthByteLevels(PxkSize size, int32_t stride, int64_t checkedValues) {
    return static_cast<int64_t>(size.width) * size.height * stride >= checkedValues;
}

// The limits of one row in a pattern that repeats every 96 samples (a multiple of the
// 4-pixel period of every layout), laid out 128 long so that a block of 32 samples
// from any multiple of 16 reads it straight.
constexpr int32_t kLimitPeriod = 96;
using LimitPattern = uint8_t[kLimitPeriod + 32];

// A row of n samples from s to d through the form, in vectors of 16 samples a lane and
// a scalar tail (the two agree for every value). limits is the row's pattern, or
// null for one limit everywhere. With KeepFourth every fourth sample (the alpha of
// AC4 pixels) is not written at all.
template <bool KeepFourth>
PXK_INLINE void byteLevelRow(const ByteLevelForm& form, const uint8_t* s, uint8_t* d, int32_t n,
                             const uint8_t* limits, uint32_t oneLimit) {
    constexpr int32_t kBlock = 16;
    splitColumns<kBlock, kBlock * vec::kLanes<vec::Widest>>(
        n,
        [&](int32_t i, int32_t count) PXK_LAMBDA_INLINE {
            const auto block = [&](auto* type) PXK_LAMBDA_INLINE {
                using namespace vec;
                using V = std::remove_pointer_t<decltype(type)>;
                const V src = loadLanes<V, 16>(s + i);
                V limLo = splat16<V>(static_cast<int32_t>(oneLimit));
                V limHi = limLo;
                if (limits != nullptr) {
                    const V lim = loadLanes<V, 16>(limits + i % kLimitPeriod);
                    limLo = unpacklo8(lim, zero<V>());
                    limHi = unpackhi8(lim, zero<V>());
                }
                const V lo = form.apply(unpacklo8(src, zero<V>()), limLo);
                const V hi = form.apply(unpackhi8(src, zero<V>()), limHi);
                const V codes = packus16(lo, hi);
                if constexpr (KeepFourth) {
                    alignas(32) uint8_t local[sizeof(V)];
                    storeLanes<V, 16>(local, codes);
                    PXK_UNROLL
                    for (int k = 0; k < static_cast<int>(sizeof(V)); k += 4) std::memcpy(d + i + k, local + k, 3);
                } else {
                    storeLanes<V, 16>(d + i, codes);
                }
            };
            if (count == kBlock * vec::kLanes<vec::Widest>) {
                block(static_cast<vec::Widest*>(nullptr));
            } else {
                block(static_cast<vec::V128*>(nullptr));
            }
        },
        [&](int32_t i) {
            if (KeepFourth && i % 4 == 3) return;
            d[i] = form.apply(s[i], limits != nullptr ? limits[i % kLimitPeriod] : oneLimit);
        });
}

}  // namespace dither
}  // namespace pxk
