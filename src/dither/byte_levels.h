// Integer samples into 8-bit codes without noise (nearest level of 8- and 16-bit
// sources, ordered dither of 8-bit ones): the code of a sample is a function of its
// value and of the threshold it meets, so a 16-bit integer form can stand in for the
// float forms. With n = v * L and the domain's top T (255 or 65535), the level below
// is k0 = floor(n / T), the remainder r = n - T k0 (the float remainder times L),
// the level k = k0 + (r > limit), and the code floor(255 k / L) by a divisor's magic
// number. The float forms have rounding of their own (a code may land one low), so a
// call takes the integer form only after checking, for every source value and every
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

template <Sample S>
struct ByteLevelForm {
    static_assert(S == Sample::U8 || S == Sample::U16 || S == Sample::S16, "integer sources");
    // Source values that the check runs through.
    static constexpr int32_t kValues = S == Sample::U8 ? 256 : 65536;
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

    // A limit as the vector form compares it: 16-bit remainders are compared as signed
    // values moved down by 32768.
    static int32_t limitLane(uint32_t limit) {
        return static_cast<int32_t>(S == Sample::U8 ? limit : (limit ^ 0x8000u));
    }

    // The vector form over 16-bit lanes holding samples and their limits (limitLane).
    template <class V>
    PXK_INLINE V apply(V v, V limit) const {
        using namespace vec;
        V k0, raise;
        if constexpr (S == Sample::U8) {
            const V n = mullo16(v, splat16<V>(L));
            // floor(n / 255) for n below 2^16: the high product by 0x8081, then 7 bits down.
            k0 = srli16<7>(mulhiu16(n, splat16<V>(0x8081)));
            const V r = sub16(n, mullo16(k0, splat16<V>(255)));
            raise = greater16(r, limit);
        } else {
            const V u = S == Sample::S16 ? xor_(v, splat16<V>(0x8000)) : v;
            // n = u L = 65536 hi + lo = 65535 hi + (hi + lo), and hi + lo < 2 * 65535:
            // k0 = hi + 1 and r = hi + lo - 65535 where hi + lo reaches 65535 (carry all
            // ones), else k0 = hi and r = hi + lo.
            const V lo = mullo16(u, splat16<V>(L));
            const V hi = mulhiu16(u, splat16<V>(L));
            const V carry = equal16(addSatU16(lo, hi), splat16<V>(-1));
            k0 = sub16(hi, carry);
            const V r = sub16(add16(lo, hi), carry);
            raise = greater16(xor_(r, splat16<V>(0x8000)), limit);
        }
        return codeOf(sub16(k0, raise));
    }

    // The limit of the nearest level: the remainder above half the domain's top.
    static constexpr uint32_t kHalfLimit = S == Sample::U8 ? 127u : 32767u;

    // The vector form against kHalfLimit. For 8-bit samples k0 + (r > 127) is
    // floor((n + 127) / 255), since r + 127 reaches 255 just when r > 127: one division
    // instead of the remainder and its compare.
    template <class V>
    PXK_INLINE V applyHalf(V v) const {
        using namespace vec;
        if constexpr (S == Sample::U8) {
            const V n = add16(mullo16(v, splat16<V>(L)), splat16<V>(static_cast<int32_t>(kHalfLimit)));
            return codeOf(srli16<7>(mulhiu16(n, splat16<V>(0x8081))));
        } else {
            return apply(v, splat16<V>(limitLane(kHalfLimit)));
        }
    }

    // The code of level k: floor(255 k / L).
    template <class V>
    PXK_INLINE V codeOf(V k) const {
        using namespace vec;
        return srl16(mulhiu16(mullo16(k, splat16<V>(255)), splat16<V>(magic)), shift);
    }

    // The scalar twin.
    PXK_INLINE uint8_t apply(SampleT<S> sample, uint32_t limit) const {
        const uint32_t u = S == Sample::S16 ? static_cast<uint32_t>(int32_t{sample} + 32768)
                                            : static_cast<uint32_t>(sample);
        const uint32_t n = u * static_cast<uint32_t>(L);
        uint32_t k0, r;
        if constexpr (S == Sample::U8) {
            k0 = (n * 0x8081u) >> 23;
            r = n - 255u * k0;
        } else {
            const uint32_t sum = (n >> 16) + (n & 0xFFFFu);
            const uint32_t carry = sum >= 65535u ? 1u : 0u;
            k0 = (n >> 16) + carry;
            r = (sum + carry) & 0xFFFFu;
        }
        const uint32_t k = k0 + (r > limit ? 1u : 0u);
        const uint32_t code = (((255u * k) * static_cast<uint32_t>(magic)) >> 16) >> shift;
        return static_cast<uint8_t>(code > 255u ? 255u : code);
    }

    // Whether the form gives the float form's code for every source value against the
    // limit: floatCodes(values, codes, n) writes the float form's codes of n values.
    template <class FloatCodes>
    bool agrees(uint32_t limit, FloatCodes&& floatCodes) const {
        constexpr int32_t kBatch = 256;
        alignas(32) SampleT<S> values[kBatch];
        alignas(32) uint8_t codes[kBatch];
        for (int32_t first = 0; first < kValues; first += kBatch) {
            for (int32_t j = 0; j < kBatch; ++j) {
                const int32_t u = first + j;
                values[j] = static_cast<SampleT<S>>(S == Sample::S16 ? u - 32768 : u);
            }
            floatCodes(static_cast<const SampleT<S>*>(values), static_cast<uint8_t*>(codes), kBatch);
            for (int32_t j = 0; j < kBatch; ++j) {
                if (apply(values[j], limit) != codes[j]) return false;
            }
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

// The samples of a block in 16-bit lanes, in the order that packus16(lo, hi) gives
// back: 8-bit samples unpacked from one vector, 16-bit ones from two (one a 16-byte
// chunk in each lane, 32 bytes apart).
template <Sample S, class V>
PXK_INLINE void loadBlockLanes(const SampleT<S>* p, V& lo, V& hi) {
    using namespace vec;
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(p);
    if constexpr (S == Sample::U8) {
        const V b = loadLanes<V, 16>(bytes);
        lo = unpacklo8(b, zero<V>());
        hi = unpackhi8(b, zero<V>());
    } else {
        lo = loadLanes<V, 32>(bytes);
        hi = loadLanes<V, 32>(bytes + 16);
    }
}

// A row of n samples from s to d through the form, in vectors of 16 samples a lane and
// a scalar tail (the two agree for every value): against the nearest level's limit
// (Nearest), or else against the row's pattern of limits (8-bit sources). With
// KeepFourth every fourth sample (the alpha of AC4 pixels) is not written at all.
template <Sample S, bool KeepFourth, bool Nearest>
PXK_INLINE void byteLevelRow(const ByteLevelForm<S>& formRef, const SampleT<S>* s, uint8_t* d, int32_t n,
                             const uint8_t* limits) {
    // A local copy: the byte stores below may alias anything the caller's form could
    // be, and the copy lets its numbers (and their splats) stay in registers.
    const ByteLevelForm<S> form = formRef;
    constexpr int32_t kBlock = 16;
    splitColumns<kBlock, kBlock * vec::kLanes<vec::Widest>>(
        n,
        [&](int32_t i, int32_t count) PXK_LAMBDA_INLINE {
            const auto block = [&](auto* type) PXK_LAMBDA_INLINE {
                using namespace vec;
                using V = std::remove_pointer_t<decltype(type)>;
                V lo, hi;
                loadBlockLanes<S>(s + i, lo, hi);
                V codes;
                if constexpr (Nearest) {
                    codes = packus16(form.applyHalf(lo), form.applyHalf(hi));
                } else {
                    const V lim = loadLanes<V, 16>(limits + i % kLimitPeriod);
                    codes = packus16(form.apply(lo, unpacklo8(lim, zero<V>())),
                                     form.apply(hi, unpackhi8(lim, zero<V>())));
                }
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
            // Rows may start at any byte (byte steps), so the sample is read by bytes.
            d[i] = form.apply(loadSample(s + i), Nearest ? ByteLevelForm<S>::kHalfLimit : limits[i % kLimitPeriod]);
        });
}

}  // namespace dither
}  // namespace pxk
