// Packed rows of 16-bit and float samples for the float forms of the colorimetric
// conversions: groups of four pixels per 128-bit lane read into one float vector a
// channel (Floats3), results written back in the sample type, and the generic row
// kernel and region walk around a member's block and tail forms.
//
// Layouts: three samples a pixel (C3), or four with the fourth left as the destination
// held it (AC4). Signed 16-bit samples are read plus 32768 (as integers). Integer
// results are converted by truncation or by the current rounding mode, then 32768 is
// taken off, saturated to signed 16 bits, and for unsigned samples 32768 is put back:
// so each type saturates to its range. (A float whose conversion is out of range
// gives INT32_MIN, which this wraps to the top of the range.)
#pragma once

#include "frame/simd_inline.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "pxkcc.h"

#include "colorimetric/float_columns.h"
#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/samples.h"
#include "frame/vec_float.h"

namespace pxk {
namespace colorimetric {

// A byte step with its low bits cleared, as the 16-bit (Shift 1) and float (Shift 2)
// members read it: the step shifted right arithmetically and back.
PXK_INLINE int32_t sampleStep(int32_t step, int shift) {
    return static_cast<int32_t>(static_cast<uint32_t>(step) & ~((1u << shift) - 1u));
}

// How a float result becomes an integer sample.
enum class Conversion { Truncate, Round };

namespace chunks {

using namespace vec;

// Lane i of the result holds the 16 bytes (Half: 8 bytes, in its low half) at
// p + i * laneStride; the stores are the inverses.
PXK_INLINE V128 load(const uint8_t* p, std::ptrdiff_t, V128*) { return load128(p); }
PXK_INLINE V128 loadHalf(const uint8_t* p, std::ptrdiff_t, V128*) { return loadLowHalves128(p); }
PXK_INLINE void store(uint8_t* p, std::ptrdiff_t, V128 v) { store128(p, v); }
PXK_INLINE void storeHalf(uint8_t* p, std::ptrdiff_t, V128 v) { storeLowHalves(p, v); }
#if defined(PXKCC_TARGET_AVX2)
PXK_INLINE V256 load(const uint8_t* p, std::ptrdiff_t stride, V256*) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(load128(p)), load128(p + stride), 1);
}
PXK_INLINE V256 loadHalf(const uint8_t* p, std::ptrdiff_t stride, V256*) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(loadLowHalves128(p)), loadLowHalves128(p + stride), 1);
}
PXK_INLINE void store(uint8_t* p, std::ptrdiff_t stride, V256 v) {
    store128(p, _mm256_castsi256_si128(v));
    store128(p + stride, _mm256_extracti128_si256(v, 1));
}
PXK_INLINE void storeHalf(uint8_t* p, std::ptrdiff_t stride, V256 v) {
    storeLowHalves(p, _mm256_castsi256_si128(v));
    storeLowHalves(p + stride, _mm256_extracti128_si256(v, 1));
}
#endif
template <class V>
PXK_INLINE V load(const uint8_t* p, std::ptrdiff_t stride) {
    return load(p, stride, static_cast<V*>(nullptr));
}
template <class V>
PXK_INLINE V loadHalf(const uint8_t* p, std::ptrdiff_t stride) {
    return loadHalf(p, stride, static_cast<V*>(nullptr));
}

// Four three-channel pixels per lane: the twelve values in x, y, z (pixel order) as
// one vector a channel, and back.
template <int I0, int I1, int I2, int I3, class F>
PXK_INLINE F pick(F a, F b) {
    return floatsOf(shuffle2x32<_MM_SHUFFLE(I3, I2, I1, I0)>(bitsOf(a), bitsOf(b)));
}
template <class F>
PXK_INLINE Floats3<F> split3(F x, F y, F z) {
    Floats3<F> r;
    r.c[0] = pick<0, 3, 0, 2>(x, pick<2, 2, 1, 1>(y, z));
    r.c[1] = pick<0, 2, 0, 2>(pick<1, 1, 0, 0>(x, y), pick<3, 3, 2, 2>(y, z));
    r.c[2] = pick<0, 2, 0, 3>(pick<2, 2, 1, 1>(x, y), z);
    return r;
}
template <class F>
PXK_INLINE void join3(const Floats3<F>& c, F& x, F& y, F& z) {
    x = pick<0, 2, 0, 2>(pick<0, 0, 0, 0>(c.c[0], c.c[1]), pick<0, 0, 1, 1>(c.c[2], c.c[0]));
    y = pick<0, 2, 0, 2>(pick<1, 1, 1, 1>(c.c[1], c.c[2]), pick<2, 2, 2, 2>(c.c[0], c.c[1]));
    z = pick<0, 2, 0, 2>(pick<2, 2, 3, 3>(c.c[2], c.c[0]), pick<3, 3, 3, 3>(c.c[1], c.c[2]));
}
// Four four-channel pixels per lane to one vector a channel; the same again goes back.
template <class V>
PXK_INLINE void transpose4(V v[4]) {
    const V t0 = unpacklo32(v[0], v[1]), t1 = unpacklo32(v[2], v[3]);
    const V t2 = unpackhi32(v[0], v[1]), t3 = unpackhi32(v[2], v[3]);
    v[0] = unpacklo64(t0, t1);
    v[1] = unpackhi64(t0, t1);
    v[2] = unpacklo64(t2, t3);
    v[3] = unpackhi64(t2, t3);
}

}  // namespace chunks

// The samples of one type: loads of 4 x Channels samples a lane as 32-bit integer or
// float lanes, and stores of integer results.
template <class T>
struct SampleKind;

template <>
struct SampleKind<float> {
    static constexpr int kShift = 2;
    PXK_INLINE static float toFloat(const uint8_t* p) { return loadSample<float>(p); }
};

// 16-bit samples, unsigned or signed (read plus 32768).
template <class T>
struct Sample16Kind {
    static constexpr int kShift = 1;
    static constexpr int32_t kFlip = std::is_signed_v<T> ? 0x8000 : 0;
    // Eight samples a lane (the 16 bytes at p) as two vectors of four 32-bit lanes.
    template <class V>
    PXK_INLINE static void widen(V v, V& lower, V& upper) {
        v = vec::xor_(v, vec::splat16<V>(kFlip));
        lower = vec::unpacklo16(v, vec::zero<V>());
        upper = vec::unpackhi16(v, vec::zero<V>());
    }
    // Integers (32-bit lanes) as saturated samples: a's lanes then b's, eight a lane.
    template <class V>
    PXK_INLINE static V narrow(V a, V b) {
        const V offset = vec::splat32<V>(32768);
        return vec::xor_(vec::packs32(vec::sub32(a, offset), vec::sub32(b, offset)),
                         vec::splat16<V>(0x8000 ^ kFlip));
    }
    PXK_INLINE static float toFloat(const uint8_t* p) {
        return static_cast<float>(static_cast<int32_t>(static_cast<uint16_t>(loadSample<T>(p) ^ T(kFlip))));
    }
    // One integer result as a saturated sample, as narrow() does it.
    PXK_INLINE static T fromInt(int32_t v) {
        const int32_t off = static_cast<int32_t>(static_cast<uint32_t>(v) - 32768u);
        const int32_t s = off < -32768 ? -32768 : (off > 32767 ? 32767 : off);
        return static_cast<T>(static_cast<uint16_t>(static_cast<uint32_t>(s) ^ static_cast<uint32_t>(0x8000 ^ kFlip)));
    }
};
template <>
struct SampleKind<uint16_t> : Sample16Kind<uint16_t> {};
template <>
struct SampleKind<int16_t> : Sample16Kind<int16_t> {};

template <class F>
using IntsOf = decltype(vec::bitsOf(F{}));

template <class F>
PXK_INLINE IntsOf<F> convertLanes(F v, Conversion how) {
    return how == Conversion::Round ? vec::roundToInt(v) : vec::truncToInt(v);
}
PXK_INLINE int32_t convertScalar(float v, Conversion how) {
    return how == Conversion::Round ? pxkRoundHalfEven(v) : truncToInt32(v);
}

// A packed row of samples T, Channels (3, or 4 with the fourth kept) a pixel.
template <class T, int Channels>
struct SampleRow {
    static_assert(Channels == 3 || Channels == 4, "C3 or AC4");
    static constexpr std::ptrdiff_t kPixelBytes = Channels * static_cast<std::ptrdiff_t>(sizeof(T));
    // Bytes between the groups of four pixels of two lanes.
    static constexpr std::ptrdiff_t kStride = 4 * kPixelBytes;
    using Kind = SampleKind<T>;

    PXK_INLINE static const uint8_t* at(const uint8_t* row, int32_t x) { return row + kPixelBytes * x; }
    PXK_INLINE static uint8_t* at(uint8_t* row, int32_t x) { return row + kPixelBytes * x; }

    // Four pixels a lane from column x, one float vector a channel.
    template <class F>
    PXK_INLINE static Floats3<F> load(const uint8_t* row, int32_t x) {
        using namespace vec;
        using V = IntsOf<F>;
        const uint8_t* p = at(row, x);
        if constexpr (std::is_same_v<T, float>) {
            if constexpr (Channels == 3) {
                return chunks::split3(floatsOf(chunks::load<V>(p, kStride)), floatsOf(chunks::load<V>(p + 16, kStride)),
                                      floatsOf(chunks::load<V>(p + 32, kStride)));
            } else {
                V v[4];
                PXK_UNROLL
                for (int i = 0; i < 4; ++i) v[i] = chunks::load<V>(p + 16 * i, kStride);
                chunks::transpose4(v);
                return Floats3<F>{{floatsOf(v[0]), floatsOf(v[1]), floatsOf(v[2])}};
            }
        } else if constexpr (Channels == 3) {
            V a, b, c, unused;
            Kind::widen(chunks::load<V>(p, kStride), a, b);
            Kind::widen(chunks::loadHalf<V>(p + 16, kStride), c, unused);
            return chunks::split3(toFloat(a), toFloat(b), toFloat(c));
        } else {
            V v[4];
            Kind::widen(chunks::load<V>(p, kStride), v[0], v[1]);
            Kind::widen(chunks::load<V>(p + 16, kStride), v[2], v[3]);
            chunks::transpose4(v);
            return Floats3<F>{{toFloat(v[0]), toFloat(v[1]), toFloat(v[2])}};
        }
    }

    // Four pixels a lane to column x: floats as they are, integer samples converted
    // as `how` says and saturated. The fourth sample of AC4 pixels keeps its value.
    template <class F>
    PXK_INLINE static void store(uint8_t* row, int32_t x, const Floats3<F>& r, Conversion how) {
        using namespace vec;
        using V = IntsOf<F>;
        uint8_t* p = at(row, x);
        if constexpr (Channels == 3) {
            F fx, fy, fz;
            chunks::join3(r, fx, fy, fz);
            if constexpr (std::is_same_v<T, float>) {
                chunks::store(p, kStride, bitsOf(fx));
                chunks::store(p + 16, kStride, bitsOf(fy));
                chunks::store(p + 32, kStride, bitsOf(fz));
            } else {
                const V z = convertLanes(fz, how);
                chunks::store(p, kStride, Kind::narrow(convertLanes(fx, how), convertLanes(fy, how)));
                chunks::storeHalf(p + 16, kStride, Kind::narrow(z, z));
            }
        } else {
            V v[4];
            if constexpr (std::is_same_v<T, float>) {
                v[0] = bitsOf(r.c[0]), v[1] = bitsOf(r.c[1]), v[2] = bitsOf(r.c[2]);
            } else {
                v[0] = convertLanes(r.c[0], how), v[1] = convertLanes(r.c[1], how), v[2] = convertLanes(r.c[2], how);
            }
            v[3] = zero<V>();
            chunks::transpose4(v);
            if constexpr (std::is_same_v<T, float>) {
                const V keep = splat32Pattern<V>(0, 0, 0, -1);
                PXK_UNROLL
                for (int i = 0; i < 4; ++i) {
                    uint8_t* q = p + 16 * i;
                    chunks::store(q, kStride, selectBits(keep, chunks::load<V>(q, kStride), v[i]));
                }
            } else {
                const V keep = splat32Pattern<V>(0, static_cast<int32_t>(0xFFFF0000u), 0, static_cast<int32_t>(0xFFFF0000u));
                PXK_UNROLL
                for (int i = 0; i < 2; ++i) {
                    uint8_t* q = p + 16 * i;
                    chunks::store(q, kStride, selectBits(keep, chunks::load<V>(q, kStride), Kind::narrow(v[2 * i], v[2 * i + 1])));
                }
            }
        }
    }

    // One pixel's first three samples as floats (16-bit signed samples plus 32768).
    PXK_INLINE static void load1(const uint8_t* row, int32_t x, float out[3]) {
        const uint8_t* p = at(row, x);
        for (int c = 0; c < 3; ++c) out[c] = Kind::toFloat(p + c * static_cast<std::ptrdiff_t>(sizeof(T)));
    }
    // One pixel's first three samples written (the fourth is left).
    PXK_INLINE static void store1(uint8_t* row, int32_t x, const T v[3]) {
        uint8_t* p = at(row, x);
        for (int c = 0; c < 3; ++c) storeSample<T>(p + c * static_cast<std::ptrdiff_t>(sizeof(T)), v[c]);
    }
};

// The row kernel: columns below n = width - width % 4 in vector blocks of four pixels
// a lane (the widest vector while it lasts, then one of four), the rest by the tail.
// Member: In/Out sample types, kChannels, block<F>(Floats3<F>) -> Floats3<F> with
// kBlockConversion for integer outputs, and tail(const float in[3], Out out[3]).
template <class Member>
PXK_INLINE void convertSampleRow(const uint8_t* src, uint8_t* dst, int32_t width) {
    using InRow = SampleRow<typename Member::In, Member::kChannels>;
    using OutRow = SampleRow<typename Member::Out, Member::kChannels>;
    using Wide = vec::FloatOf<vec::Widest>;
    constexpr int32_t kWide = 4 * vec::kLanes<vec::Widest>;
    splitColumns<4, kWide>(
        width,
        [&](int32_t x, int32_t count) PXK_LAMBDA_INLINE {
            if (count == kWide) {
                OutRow::store(dst, x, Member::block(InRow::template load<Wide>(src, x)), Member::kBlockConversion);
            } else {
                OutRow::store(dst, x, Member::block(InRow::template load<vec::F128>(src, x)),
                              Member::kBlockConversion);
            }
        },
        [&](int32_t x) {
            float in[3];
            InRow::load1(src, x, in);
            typename Member::Out out[3];
            Member::tail(in, out);
            OutRow::store1(dst, x, out);
        });
}

// The body of a packed member: pointers, then size (steps are not tested), then the
// rows from the top, each step with its low bits cleared for the sample size.
template <class Member>
PxkResult convertSamples(const typename Member::In* pSrc, int32_t srcStep, typename Member::Out* pDst,
                         int32_t dstStep, PxkSize size) {
    PXK_CHECK(checkPtrs(pSrc, pDst));
    PXK_CHECK(checkSize(size, 1, 1));
    driveRows(
        size.width, size.height,
        [](int32_t width, const uint8_t* s, uint8_t* d) { convertSampleRow<Member>(s, d, width); },
        rows(reinterpret_cast<const uint8_t*>(pSrc), sampleStep(srcStep, SampleKind<typename Member::In>::kShift)),
        rows(reinterpret_cast<uint8_t*>(pDst), sampleStep(dstStep, SampleKind<typename Member::Out>::kShift)));
    return pxkOk;
}

}  // namespace colorimetric
}  // namespace pxk
