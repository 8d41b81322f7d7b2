// The row kernels of RGB <-> Lab, over interleaved pixels or three planes. Forward rows
// run whole vectors of pixels with the lane cube roots (8-bit to 16-bit codes and
// double planes one pixel at a time, three double power calls at most). Backward float
// and double rows convert whole vectors of plane samples where they can, since every
// column gives the same bits; the 8-bit backward rows run their main loop four pixels
// a round over the columns below width - width % 4 with reciprocals, the tail by
// division.
#pragma once

#include "frame/simd_inline.h"

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "colorimetric/lab_forms.h"
#include "colorimetric/wide_rows.h"
#include "frame/drivers.h"
#include "frame/samples.h"
#include "frame/vec_float.h"

namespace pxk {
namespace colorimetric {
namespace lab {

// Channel order of an interleaved RGB side: R first, or B first.
enum class Order { Rgb, Bgr };

// ---------------------------------------------------------------------------------
// Forward
// ---------------------------------------------------------------------------------

// One row of interleaved float RGB to interleaved float Lab: groups of four or eight
// pixels by the vector form, the last short group padded (every column alike).
template <Order O>
PXK_INLINE void rgbToLabFloatRow(const float* src, float* dst, int32_t width) {
    convertWideRow<ToLab32f<O == Order::Bgr>, 3, 3>(src, dst, width);
}

// One row of interleaved 8-bit BGR to 16-bit Lab codes: groups of four or eight pixels
// by the vector form, the last short group padded (every column alike).
PXK_INLINE void bgrToLab16uRow(const uint8_t* src, uint16_t* dst, int32_t width) {
    convertWideRow<ToLab16uFrom8u, 3, 3>(src, dst, width);
}

// One row of three planes (R, G, B) to three planes (L, a, b), float or double. Float
// rows go a whole vector at a time, the last short vector through a padded copy
// (every column alike).
template <class T>
PXK_INLINE void rgbToLabPlanesRow(const T* const src[3], T* const dst[3], int64_t width) {
    if constexpr (std::is_same_v<T, float>) {
        using F = vec::FloatOf<vec::Widest>;
        constexpr int64_t kLanes = sizeof(F) / sizeof(float);
        const auto convert = [](const float* r, const float* g, const float* b, float* l, float* a, float* bb)
            PXK_LAMBDA_INLINE {
            const Lab<F> v = labOfRgbLanes(vec::loadF<F>(r), vec::loadF<F>(g), vec::loadF<F>(b));
            vec::storeF(l, v.l);
            vec::storeF(a, v.a);
            vec::storeF(bb, v.b);
        };
        int64_t x = 0;
        for (; width - x >= kLanes; x += kLanes) {
            convert(src[0] + x, src[1] + x, src[2] + x, dst[0] + x, dst[1] + x, dst[2] + x);
        }
        if (x == width) return;
        float in[3][kLanes] = {}, out[3][kLanes];
        const std::size_t bytes = sizeof(float) * static_cast<std::size_t>(width - x);
        for (int c = 0; c < 3; ++c) std::memcpy(in[c], src[c] + x, bytes);
        convert(in[0], in[1], in[2], out[0], out[1], out[2]);
        for (int c = 0; c < 3; ++c) std::memcpy(dst[c] + x, out[c], bytes);
        return;
    }
    for (int64_t x = 0; x < width; ++x) {
        const Lab<T> v = labOfRgb(loadSample(src[0] + x), loadSample(src[1] + x), loadSample(src[2] + x));
        storeSample(dst[0] + x, v.l);
        storeSample(dst[1] + x, v.a);
        storeSample(dst[2] + x, v.b);
    }
}

// ---------------------------------------------------------------------------------
// Backward, float and double
// ---------------------------------------------------------------------------------

// The widest vector of floats or doubles of this build, and its loads and stores.
template <class T>
struct WidestOf;
template <>
struct WidestOf<float> {
    using type = vec::FloatOf<vec::Widest>;
    PXK_INLINE static type load(const float* p) { return vec::loadF<type>(p); }
    PXK_INLINE static void store(float* p, type v) { vec::storeF(p, v); }
};
template <>
struct WidestOf<double> {
#if defined(PXKCC_TARGET_AVX2)
    using type = vec::D256;
#else
    using type = vec::D128;
#endif
    PXK_INLINE static type load(const double* p) { return vec::loadD<type>(p); }
    PXK_INLINE static void store(double* p, type v) { vec::storeD(p, v); }
};

// `count` samples of three planes (L, a, b) to three planes (R, G, B): whole vectors,
// then one sample at a time; every column gives the same bits.
template <class T>
PXK_INLINE void labToRgbPlanesRun(const T* const src[3], T* const dst[3], int64_t count) {
    using W = WidestOf<T>;
    constexpr int64_t kLanes = sizeof(typename W::type) / sizeof(T);
    int64_t x = 0;
    for (; count - x >= kLanes; x += kLanes) {
        const Rgb<typename W::type> v = rgbOfLab<T>(W::load(src[0] + x), W::load(src[1] + x), W::load(src[2] + x));
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) W::store(dst[c] + x, v.c[c]);
    }
    for (; x < count; ++x) {
        const Rgb<T> v = rgbOfLab<T>(loadSample(src[0] + x), loadSample(src[1] + x), loadSample(src[2] + x));
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) storeSample(dst[c] + x, v.c[c]);
    }
}

// One row of interleaved float Lab to interleaved float RGB or BGR: groups of four
// pixels taken into vectors of four, then one pixel at a time.
template <Order O>
PXK_INLINE void labToRgbFloatRow(const float* src, float* dst, int64_t width) {
    constexpr int kR = O == Order::Rgb ? 0 : 2;
    int64_t x = 0;
    for (; width - x >= 4; x += 4, src += 12, dst += 12) {
        alignas(16) float lab[3][4];
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) {
            PXK_UNROLL
            for (int c = 0; c < 3; ++c) lab[c][i] = loadSample(src + 3 * i + c);
        }
        const Rgb<vec::F128> v =
            rgbOfLab<float>(vec::loadF<vec::F128>(lab[0]), vec::loadF<vec::F128>(lab[1]), vec::loadF<vec::F128>(lab[2]));
        alignas(16) float rgb[3][4];
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) vec::storeF(rgb[c], v.c[c]);
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) {
            storeSample(dst + 3 * i + kR, rgb[0][i]);
            storeSample(dst + 3 * i + 1, rgb[1][i]);
            storeSample(dst + 3 * i + 2 - kR, rgb[2][i]);
        }
    }
    for (; x < width; ++x, src += 3, dst += 3) {
        const Rgb<float> v = rgbOfLab<float>(loadSample(src), loadSample(src + 1), loadSample(src + 2));
        storeSample(dst + kR, v.c[0]);
        storeSample(dst + 1, v.c[1]);
        storeSample(dst + 2 - kR, v.c[2]);
    }
}

// ---------------------------------------------------------------------------------
// Backward, 8-bit results
// ---------------------------------------------------------------------------------

// One row of interleaved 16-bit Lab codes (Codes: Lab16uCodes) to 8-bit RGB or BGR
// (the 8-bit codes go through the shared 8-bit row kernel with LabToRgb8uBlock). Columns below n = width - width % 4 go four a
// round through the vector form with the row's refined reciprocals and saturate; the
// rest by the scalar form with true divisions.
template <Order O, class Codes, class Sample>
PXK_INLINE void labToRgb8uRow(const Sample* src, uint8_t* dst, int32_t width) {
    constexpr int kR = O == Order::Rgb ? 0 : 2;
    const int32_t n = width - width % 4;
    const ReciprocalDivision reciprocal = ReciprocalDivision::make();
    int32_t x = 0;
    for (; x < n; x += 4, src += 12, dst += 12) {
        alignas(16) float lab[3][4];
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) {
            PXK_UNROLL
            for (int c = 0; c < 3; ++c) lab[c][i] = static_cast<float>(loadSample(src + 3 * i + c));
        }
        const Rgb<vec::F128> v = rgbOfCodes<Codes>(vec::loadF<vec::F128>(lab[0]), vec::loadF<vec::F128>(lab[1]),
                                                   vec::loadF<vec::F128>(lab[2]), reciprocal);
        alignas(16) int32_t rgb[3][4];
        PXK_UNROLL
        for (int c = 0; c < 3; ++c) vec::store128(reinterpret_cast<uint8_t*>(rgb[c]), vec::truncToInt(v.c[c]));
        PXK_UNROLL
        for (int i = 0; i < 4; ++i) {
            dst[3 * i + kR] = truncatedTo8u(rgb[0][i]);
            dst[3 * i + 1] = truncatedTo8u(rgb[1][i]);
            dst[3 * i + 2 - kR] = truncatedTo8u(rgb[2][i]);
        }
    }
    for (; x < width; ++x, src += 3, dst += 3) {
        const Rgb<float> v = rgbOfCodes<Codes>(static_cast<float>(loadSample(src)), static_cast<float>(loadSample(src + 1)),
                                               static_cast<float>(loadSample(src + 2)), TrueDivision{});
        dst[kR] = limited(v.c[0]);
        dst[1] = limited(v.c[1]);
        dst[2 - kR] = limited(v.c[2]);
    }
}

}  // namespace lab
}  // namespace colorimetric
}  // namespace pxk
