// Samples of the bit-depth reduction members in vectors: four samples a 128-bit lane,
// read into float lanes and written back from 32-bit codes, for the paths whose
// samples are independent (nearest level and ordered dither). Each lane holds four
// consecutive samples, so a 256-bit vector is the 128-bit one twice over.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "dither/samples.h"
#include "frame/drivers.h"
#include "frame/vec_float.h"

namespace pxk {
namespace dither {

// Samples one vector of type V carries as floats.
template <class V>
inline constexpr int32_t kSamplesOf = 4 * vec::kLanes<V>;

// Source samples at p in the working domain (16-bit signed ones plus 32768; floats as
// they stand).
template <Sample S, class V>
PXK_INLINE vec::FloatOf<V> loadDomainVec(const SampleT<S>* p) {
    using namespace vec;
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(p);
    if constexpr (S == Sample::U8) {
        const V b = loadLowQuarters<V>(bytes);
        return toFloat(unpacklo16(unpacklo8(b, zero<V>()), zero<V>()));
    } else if constexpr (S == Sample::F32) {
        return loadF<FloatOf<V>>(p);
    } else {
        V h = loadLowHalves<V>(bytes);
        if constexpr (S == Sample::S16) h = xor_(h, splat16<V>(0x8000));
        return toFloat(unpacklo16(h, zero<V>()));
    }
}

// 32-bit codes saturated to the destination (as saturateCode), in the layout of the
// destination's samples: the low 4 (8-bit) or 8 (16-bit) bytes of each lane.
template <Sample D, class V>
PXK_INLINE V packCodes(V z) {
    using namespace vec;
    if constexpr (D == Sample::U8) {
        const V w = packs32(z, z);
        return packus16(w, w);
    } else {
        // Negative codes to 0 first, so that the shift by 32768 cannot wrap.
        const V c = andNot(srai32<31>(z), z);
        const V h = packs32(sub32(c, splat32<V>(32768)), sub32(c, splat32<V>(32768)));
        if constexpr (D == Sample::U16) return xor_(h, splat16<V>(0x8000));
        return h;
    }
}

// Stores packed codes at p. With KeepFourth, every fourth sample (the alpha of AC4
// pixels, one pixel a lane) is not written at all: the codes go through a local block
// and the first three samples of each pixel are copied out.
template <Sample D, bool KeepFourth, class V>
PXK_INLINE void storeCodesVec(SampleT<D>* p, V packed) {
    using namespace vec;
    uint8_t* bytes = reinterpret_cast<uint8_t*>(p);
    constexpr std::size_t kSample = sizeof(SampleT<D>);
    if constexpr (KeepFourth) {
        alignas(32) uint8_t local[4 * kSample * kLanes<V>];
        if constexpr (D == Sample::U8) {
            storeLowQuarters(local, packed);
        } else {
            storeLowHalves(local, packed);
        }
        PXK_UNROLL
        for (int k = 0; k < kLanes<V>; ++k) std::memcpy(bytes + 4 * kSample * k, local + 4 * kSample * k, 3 * kSample);
    } else if constexpr (D == Sample::U8) {
        storeLowQuarters(bytes, packed);
    } else {
        storeLowHalves(bytes, packed);
    }
}

// The output codes of quantised levels q (as codeOfLevel, before saturation).
template <Sample S, Sample D, bool Half, class F>
PXK_INLINE auto levelCodesVec(F q) {
    using namespace vec;
    F m = q;
    if constexpr (S == Sample::F32) m = mulF(m, splatF<F>(D == Sample::U8 ? 255.0f : 65535.0f));
    if constexpr (Half) m = addF(m, splatF<F>(0.5f));
    auto z = truncToInt(m);
    if constexpr (S != Sample::U8 && S != Sample::F32 && D == Sample::U8) z = srai32<8>(z);
    return z;
}

// Runs a flat run of n samples: block.template operator()<V>(i) over vectors of the
// widest type, then of 128 bits, and tail(i) for the last n % 4 samples.
template <class Block, class Tail>
PXK_INLINE void runSamples(int32_t n, Block&& block, Tail&& tail) {
    splitColumns<4, kSamplesOf<vec::Widest>>(
        n,
        [&](int32_t i, int32_t count) PXK_LAMBDA_INLINE {
            if (count == kSamplesOf<vec::Widest>) {
                block(i, static_cast<vec::Widest*>(nullptr));
            } else {
                block(i, static_cast<vec::V128*>(nullptr));
            }
        },
        tail);
}

}  // namespace dither
}  // namespace pxk
