// Bayer mosaic -> four-sample B, G, R pixels by variable number of gradients: eight
// gradients a pixel (vng_directions.h), the calm directions kept by a threshold, the
// colour differences of those directions averaged, a float scale a channel. The
// fourth sample of each pixel is never computed; the frame is copied from the
// interior afterwards.
#include "pxkcc.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "demosaic/bayer.h"
#include "demosaic/cfa_forms.h"
#include "demosaic/vng_directions.h"
#include "frame/checks.h"
#include "frame/drivers.h"
#include "frame/vec_float.h"

using namespace pxk;
using namespace pxk::demosaic;

namespace {

// Destination samples: blue 0, green 1, red 2.
constexpr int kOutBlue = 0, kOutGreen = 1, kOutRed = 2;

// The kind of site by grid and the parities of x and y ([grid][x odd + 2 * y odd]):
// 0 a blue site, 1 a red site, 2 green in a row with blue, 3 green in a row with red.
constexpr int kVngPhase[4][4] = {{0, 2, 3, 1}, {1, 3, 2, 0}, {2, 0, 1, 3}, {3, 1, 0, 2}};

// The destination sample of the colour at offset (dx, dy) from a site of `kind`.
constexpr int colourAround(int kind, int dx, int dy) {
    const bool oddX = (dx & 1) != 0, oddY = (dy & 1) != 0;
    if (kind <= 1) {
        const int own = kind == 0 ? kOutBlue : kOutRed;
        if (oddX == oddY) return oddX ? kOutBlue + kOutRed - own : own;
        return kOutGreen;
    }
    if (oddX == oddY) return kOutGreen;
    const int rowColour = kind == 2 ? kOutBlue : kOutRed;
    return oddX ? rowColour : kOutBlue + kOutRed - rowColour;
}

// The scale of a channel, then clamping to 0..top and rounding half to even (a NaN
// product gives 0 in both forms).
template <class T>
PXK_INLINE int32_t scaledSample(int32_t value, float scale) {
    constexpr float kTop = sizeof(T) == 1 ? 255.0f : 65535.0f;
    float p = static_cast<float>(value) * scale;
    p = p < 0.0f ? 0.0f : (p > kTop ? kTop : p);
    return pxkRoundHalfEven(p) & 0xFFFF;
}
template <class T, class V>
PXK_INLINE V scaledSample(V value, float scale) {
    using F = vec::FloatOf<V>;
    constexpr float kTop = sizeof(T) == 1 ? 255.0f : 65535.0f;
    const F p = vec::mulF(vec::toFloat(value), vec::splatF<F>(scale));
    return vec::roundToInt(vec::minF(vec::maxF(p, vec::zeroF<F>()), vec::splatF<F>(kTop)));
}

// d / m rounded toward zero, for |d| below 2^20 (a colour's sum over eight directions
// stays below 8 x 2 x 65535) and m from 2 to 16. d and m are exact in float, and the
// quotient, below 2^19, is rounded by less than 2^-6, while a quotient that is not a
// whole number lies at least 1/16 from one: the truncated float quotient is exact.
template <class V>
PXK_INLINE V quotientTowardZero(V d, V m) {
    return vec::truncToInt(vec::divF(vec::toFloat(d), vec::toFloat(m)));
}

// The threshold lo + max(hi / 2, 1) rounded half to even, in integer lanes of policy L
// (the 16-bit lanes of 8-bit samples, which have no float lanes of their width).
// max(hi / 2, 1) = max(hi, 2) / 2, so the threshold is s / 2 with s = 2 lo + max(hi, 2)
// (at most 3 x 2040): s / 2 itself when s is even; when s = 2k + 1, the even one of k
// and k + 1, that is k + (k & 1). Both come to (s + ((s >> 1) & 1)) >> 1, exactly the
// value the scalar twin rounds in double.
template <class L, class V>
PXK_INLINE V vngThreshold(V lo, V hi) {
    const V s = L::add(L::add(lo, lo), L::max(hi, L::constant(2)));
    return L::template shiftRight<1>(L::add(s, vec::and_(L::template shiftRight<1>(s), L::constant(1))));
}

// a + b and |a - b| on N, either int32_t or a vector of the integer lanes of policy L.
template <class L, class N>
PXK_INLINE N plus(N a, N b) {
    if constexpr (std::is_same<N, int32_t>::value) {
        return a + b;
    } else {
        return L::add(a, b);
    }
}
template <class L, class N>
PXK_INLINE N absDiff(N a, N b) {
    if constexpr (std::is_same<N, int32_t>::value) {
        const int32_t d = a - b;
        return d < 0 ? -d : d;
    } else {
        return L::abs(L::sub(a, b));
    }
}

// The sum of weight x |a - b| over the terms of direction d of table Table that it
// shares with its opposite direction (Shared) or that are its own (!Shared), from the
// 5x5 neighbourhood n (n[dy + 2][dx + 2] the sample at (dx, dy)). The terms counted
// twice are summed first and doubled once. The tables are constants, so the loops
// unroll into straight code and the tests fold away.
template <int Table, class L, bool Shared, class N>
PXK_INLINE N gradientPart(int d, const N (&n)[5][5]) {
    constexpr const VngDirections& dirs = kVngDirections[Table];
    N once{}, twice{};
    bool anyOnce = false, anyTwice = false;
    PXK_UNROLL
    for (int i = 0; i < 6; ++i) {
        if (((kVngShared[Table].mask[d] >> i) & 1) != (Shared ? 1 : 0)) continue;
        const VngTerm& t = dirs.d[d].terms[i];
        const N term = absDiff<L>(n[t.dy1 + 2][t.dx1 + 2], n[t.dy2 + 2][t.dx2 + 2]);
        if (t.weight == 2) {
            twice = anyTwice ? plus<L>(twice, term) : term;
            anyTwice = true;
        } else {
            once = anyOnce ? plus<L>(once, term) : term;
            anyOnce = true;
        }
    }
    if (!anyTwice) return once;
    const N doubled = plus<L>(twice, twice);
    return anyOnce ? plus<L>(doubled, once) : doubled;
}

// The kept directions of one pixel of site kind Kind, from its 5x5 neighbourhood n:
// their count, and the sums of the colour shares over them, by destination sample.
// Written once over N, either int32_t (the scalar twin, L unused) or a vector of the
// integer lanes of policy L, one pixel a lane. Opposite directions add up the terms
// they share once.
template <int Kind, class L, class N>
PXK_INLINE void vngSums(const N (&n)[5][5], N& count, N (&sum)[3]) {
    constexpr int kTable = Kind <= 1 ? 0 : 1;
    constexpr const VngDirections& dirs = kVngDirections[kTable];
    constexpr bool kScalar = std::is_same<N, int32_t>::value;
    N gradient[8];
    PXK_UNROLL
    for (int d = 0; d < 8; ++d) {
        const int o = oppositeOf(d);
        if (o < d) continue;
        const N shared = gradientPart<kTable, L, true>(d, n);
        gradient[d] = plus<L>(shared, gradientPart<kTable, L, false>(d, n));
        gradient[o] = plus<L>(shared, gradientPart<kTable, L, false>(o, n));
    }
    N threshold;
    if constexpr (kScalar) {
        int32_t lo = gradient[0], hi = gradient[0];
        PXK_UNROLL
        for (int d = 1; d < 8; ++d) {
            lo = std::min(lo, gradient[d]);
            hi = std::max(hi, gradient[d]);
        }
        threshold = pxkRoundHalfEven(static_cast<double>(lo) + std::max(0.5 * hi, 1.0));
    } else if constexpr (L::kBits == 32) {
        // In 32-bit lanes the extremes and the threshold are taken in float lanes, where
        // min and max are single operations in both builds: the gradients (below 2^19)
        // are exact there, and so is lo + max(hi / 2, 1), a multiple of 1/2 below 2^20,
        // which the conversion rounds half to even as the scalar twin does in double.
        using F = vec::FloatOf<N>;
        F lo = vec::toFloat(gradient[0]), hi = lo;
        PXK_UNROLL
        for (int d = 1; d < 8; ++d) {
            const F g = vec::toFloat(gradient[d]);
            lo = vec::minF(lo, g);
            hi = vec::maxF(hi, g);
        }
        threshold = vec::roundToInt(vec::addF(lo, vec::maxF(vec::mulF(hi, vec::splatF<F>(0.5f)), vec::splatF<F>(1.0f))));
    } else {
        N lo = gradient[0], hi = gradient[0];
        PXK_UNROLL
        for (int d = 1; d < 8; ++d) {
            lo = L::min(lo, gradient[d]);
            hi = L::max(hi, gradient[d]);
        }
        threshold = vngThreshold<L>(lo, hi);
    }

    // Every direction's shares, added where the direction is kept.
    count = N{};
    PXK_UNROLL
    for (int k = 0; k < 3; ++k) sum[k] = N{};
    PXK_UNROLL
    for (int d = 0; d < 8; ++d) {
        N part[3] = {N{}, N{}, N{}};
        PXK_UNROLL
        for (int i = 0; i < 6; ++i) {
            const VngShare& sh = dirs.d[d].shares[i];
            const N& v = n[sh.dy + 2][sh.dx + 2];
            N& p = part[colourAround(Kind, sh.dx, sh.dy)];
            if constexpr (kScalar) {
                p += sh.weight * v;
            } else if (sh.weight != 0) {
                p = L::add(p, sh.weight == 2 ? L::add(v, v) : v);
            }
        }
        if constexpr (kScalar) {
            const int32_t kept = threshold > gradient[d] ? 1 : 0;
            count += kept;
            PXK_UNROLL
            for (int k = 0; k < 3; ++k) sum[k] += kept * part[k];
        } else {
            const N kept = L::less(gradient[d], threshold);
            count = L::sub(count, kept);
            PXK_UNROLL
            for (int k = 0; k < 3; ++k) sum[k] = L::add(sum[k], vec::and_(kept, part[k]));
        }
    }
}

// The three samples of a pixel of site kind Kind from its centre sample and its kept
// directions: the centre for its own colour, the centre plus the mean difference of
// the colour sums (divided toward zero) for the others, each scaled. Written once
// over N as vngSums is.
template <int Kind, class T, class N>
PXK_INLINE void vngFinish(N centre, N count, const N (&sum)[3], const float scale[3], N (&out)[3]) {
    constexpr int own = colourAround(Kind, 0, 0);
    PXK_UNROLL
    for (int k = 0; k < 3; ++k) {
        if constexpr (std::is_same<N, int32_t>::value) {
            out[k] = scaledSample<T>(k == own ? centre : centre + (sum[k] - sum[own]) / (2 * count), scale[k]);
        } else {
            const N value =
                k == own ? centre
                         : vec::add32(centre, quotientTowardZero(vec::sub32(sum[k], sum[own]), vec::add32(count, count)));
            out[k] = scaledSample<T>(value, scale[k]);
        }
    }
}

// One interior pixel of site kind Kind at column x of the rows y - 2 to y + 2.
template <int Kind, class T>
PXK_INLINE void vngPixel(const T* const rows[5], int32_t x, const float scale[3], T* out) {
    int32_t n[5][5];
    PXK_UNROLL
    for (int dy = 0; dy < 5; ++dy) {
        PXK_UNROLL
        for (int dx = 0; dx < 5; ++dx) n[dy][dx] = loadSample(rows[dy], x + dx - 2);
    }
    int32_t count, sum[3], samples[3];
    vngSums<Kind, void>(n, count, sum);
    vngFinish<Kind, T>(n[2][2], count, sum, scale, samples);
    PXK_UNROLL
    for (int k = 0; k < 3; ++k) storeSample(out, k, samples[k]);
}

// The lanes of a block by sample type: 8-bit samples in 16-bit lanes, sixteen pixels a
// 128-bit lane (a gradient is at most 8 x 255, a colour sum at most 16 x 255, the
// threshold's s at most 3 x 2040); 16-bit samples in 32-bit lanes, eight pixels a
// 128-bit lane. Either way a block is its even pixels and its odd ones, a vector each.
template <class T>
struct VngLanes {
    static constexpr int kBits = 16 * int(sizeof(T));
    template <class V>
    using Policy = SumLanes<V, kBits>;
    // One lane's value, for the results passed through the stack.
    using Lane = std::conditional_t<kBits == 16, int16_t, int32_t>;
    template <class V>
    static constexpr int32_t kPixels = 256 / kBits * vec::kLanes<V>;

    // The pixels x, x + 1, ... of a row: the even ones and the odd ones.
    template <class V>
    static PXK_INLINE void load(const T* row, int32_t x, V& even, V& odd) {
        const V v = vec::loadLanes<V, 16>(reinterpret_cast<const uint8_t*>(row + x));
        if constexpr (kBits == 16) {
            even = vec::and_(v, vec::splat16<V>(0xFF));
            odd = vec::srli16<8>(v);
        } else {
            even = vec::and_(v, vec::splat32<V>(0xFFFF));
            odd = vec::srli32<16>(v);
        }
    }

    // vngFinish on the lanes of a block. 16-bit lanes, all of them non-negative here,
    // go through it as two halves widened to 32 bits, and the results (0 to 255) are
    // narrowed back in their order.
    template <int Kind, class V>
    static PXK_INLINE void finish(V centre, V count, const V (&sum)[3], const float scale[3], V (&out)[3]) {
        if constexpr (kBits == 32) {
            vngFinish<Kind, T>(centre, count, sum, scale, out);
        } else {
            V half[2][3];
            PXK_UNROLL
            for (int h = 0; h < 2; ++h) {
                const auto widen = [h](V v) PXK_LAMBDA_INLINE {
                    return h == 0 ? vec::unpacklo16(v, vec::zero<V>()) : vec::unpackhi16(v, vec::zero<V>());
                };
                const V wideSum[3] = {widen(sum[0]), widen(sum[1]), widen(sum[2])};
                vngFinish<Kind, T>(widen(centre), widen(count), wideSum, scale, half[h]);
            }
            PXK_UNROLL
            for (int k = 0; k < 3; ++k) out[k] = vec::packs32(half[0][k], half[1][k]);
        }
    }
};

// The pixels x, x + 1, ... of a row whose even pixels are of KindA and odd ones of
// KindB: all of it in vector lanes, then the three samples of each pixel stored.
template <int KindA, int KindB, class V, class T>
PXK_INLINE void vngBlock(const T* const rows[5], int32_t x, const float scale[3], T* out) {
    using Lanes = VngLanes<T>;
    using L = typename Lanes::template Policy<V>;
    constexpr int32_t kHalf = Lanes::template kPixels<V> / 2;
    // The odd pixels at offset dx are the even pixels at offset dx + 1: the even pixels
    // of each row at the offsets -2 to 3 serve both halves, so that the differences the
    // halves share (all the orthogonal ones, some diagonal ones) are formed once.
    V n[2][5][5];
    PXK_UNROLL
    for (int dy = 0; dy < 5; ++dy) {
        V even[6], odd;
        PXK_UNROLL
        for (int j = 0; j < 5; ++j) Lanes::load(rows[dy], x + j - 2, even[j], odd);
        even[5] = odd;
        PXK_UNROLL
        for (int dx = 0; dx < 5; ++dx) {
            n[0][dy][dx] = even[dx];
            n[1][dy][dx] = even[dx + 1];
        }
    }
    // Samples 0 and 1 of a pixel joined in one lane (as they lie in memory, the low
    // sample first), sample 2 in another.
    using Lane = typename Lanes::Lane;
    alignas(32) Lane firstTwo[2][kHalf];
    alignas(32) Lane third[2][kHalf];
    PXK_UNROLL
    for (int p = 0; p < 2; ++p) {
        V count, sum[3], out3[3];
        if (p == 0) {
            vngSums<KindA, L>(n[0], count, sum);
            Lanes::template finish<KindA>(n[0][2][2], count, sum, scale, out3);
        } else {
            vngSums<KindB, L>(n[1], count, sum);
            Lanes::template finish<KindB>(n[1][2][2], count, sum, scale, out3);
        }
        const V joined = vec::or_(out3[0], L::template shiftLeft<8 * int(sizeof(T))>(out3[1]));
        vec::storeLanes<V, 16>(reinterpret_cast<uint8_t*>(firstTwo[p]), joined);
        vec::storeLanes<V, 16>(reinterpret_cast<uint8_t*>(third[p]), out3[2]);
    }
    // Entry i of a half holds pixel 2 i of the even half, 2 i + 1 of the odd one (the
    // lanes of a 128-bit lane L hold the pixels of L's run of 16 bytes). Each pixel takes
    // two stores, samples 0 and 1 together, then sample 2; its fourth sample is not
    // written.
    PXK_UNROLL
    for (int32_t i = 0; i < kHalf; ++i) {
        PXK_UNROLL
        for (int p = 0; p < 2; ++p) {
            T* pixel = out + 4 * (2 * i + p);
            std::memcpy(pixel, &firstTwo[p][i], 2 * sizeof(T));
            storeSample(pixel, 2, third[p][i]);
        }
    }
}

// Columns x0 to x1 of interior row y, whose sites alternate between KindA (at x0) and
// KindB: vector blocks over the first count - count % kNarrow columns (16 for 8-bit
// samples, 8 for 16-bit ones), the scalar twin after them (both give the same bits).
template <int KindA, int KindB, class T>
void vngRow(const SourceImage<T>& img, int32_t y, int32_t x0, int32_t x1, const float scale[3], T* out) {
    const T* rows[5];
    for (int i = 0; i < 5; ++i) rows[i] = img.row(y - 2 + i);
    constexpr int32_t kNarrow = VngLanes<T>::template kPixels<vec::V128>;
    constexpr int32_t kWide = VngLanes<T>::template kPixels<vec::Widest>;
    splitColumns<kNarrow, kWide>(
        x1 - x0 + 1,
        [&](int32_t i, int32_t n) PXK_LAMBDA_INLINE {
            if (n == kWide) {
                vngBlock<KindA, KindB, vec::Widest>(rows, x0 + i, scale, out + 4 * i);
            } else {
                vngBlock<KindA, KindB, vec::V128>(rows, x0 + i, scale, out + 4 * i);
            }
        },
        [&](int32_t i) {
            if (i % 2 == 0) {
                vngPixel<KindA>(rows, x0 + i, scale, out + 4 * i);
            } else {
                vngPixel<KindB>(rows, x0 + i, scale, out + 4 * i);
            }
        });
}

// The interior row by the kind of its first site (the phase of the grid's table).
template <class T>
void vngInteriorRow(const SourceImage<T>& img, int32_t grid, int32_t y, int32_t x0, int32_t x1, const float scale[3],
                    T* out) {
    switch (kVngPhase[grid][(x0 & 1) + 2 * (y & 1)]) {
        case 0: vngRow<0, 2>(img, y, x0, x1, scale, out); break;
        case 1: vngRow<1, 3>(img, y, x0, x1, scale, out); break;
        case 2: vngRow<2, 0>(img, y, x0, x1, scale, out); break;
        default: vngRow<3, 1>(img, y, x0, x1, scale, out); break;
    }
}

// Copies whole four-sample pixels (column copies) or whole region rows.
template <class T>
void copyPixel(const DestinationRegion<T, 4>& dst, int32_t fromX, int32_t toX, int32_t y) {
    std::memmove(dst.pixel(toX, y), dst.pixel(fromX, y), 4 * sizeof(T));
}
template <class T>
void copyRow(const DestinationRegion<T, 4>& dst, const Region& r, int32_t fromY, int32_t toY) {
    std::memmove(dst.row(toY), dst.row(fromY), static_cast<std::size_t>(r.width) * 4 * sizeof(T));
}

template <class T>
PxkResult cfaToBgraVng(const T* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep, const float* pScale, T* pDst,
                       int32_t dstStep, PxkBayerGrid grid) {
    PXK_CHECK(checkMosaicCall(pSrc, pDst, srcSize, 5, grid));
    if (srcRoi.width < 1 || srcRoi.height < 1) return pxkOk;
    const Region r = clipRegion(srcRoi, srcSize);
    const int32_t ix0 = std::max(r.x, 2), iy0 = std::max(r.y, 2);
    const int32_t ix1 = std::min(r.lastX(), srcSize.width - 3), iy1 = std::min(r.lastY(), srcSize.height - 3);
    // Nothing to copy from without an interior.
    if (r.empty() || ix1 < ix0 || iy1 < iy0) return pxkOk;
    const float ones[3] = {1.0f, 1.0f, 1.0f};
    const float* scale = pScale != nullptr ? pScale : ones;
    const SourceImage<T> img{pSrc, srcStep, srcSize.width, srcSize.height};
    const DestinationRegion<T, 4> dst{pDst, dstStep, r.x, r.y};

    for (int32_t y = iy0; y <= iy1; ++y) vngInteriorRow(img, grid, y, ix0, ix1, scale, dst.pixel(ix0, y));

    // The frame, after the interior: columns of the interior rows, then whole rows.
    for (int32_t y = iy0; y <= iy1; ++y) {
        if (r.x <= 1) {
            if (r.x == 0) copyPixel(dst, ix0, 0, y);
            copyPixel(dst, ix0, 1, y);
        }
        if (r.lastX() >= srcSize.width - 2) {
            copyPixel(dst, ix1, ix1 + 1, y);
            if (r.lastX() >= srcSize.width - 1) copyPixel(dst, ix1, ix1 + 2, y);
        }
    }
    if (r.y <= 1) {
        if (r.y == 0) copyRow(dst, r, iy0, 0);
        copyRow(dst, r, iy0, 1);
    }
    if (r.lastY() >= srcSize.height - 2) {
        copyRow(dst, r, iy1, iy1 + 1);
        if (r.lastY() >= srcSize.height - 1) copyRow(dst, r, iy1, iy1 + 2);
    }
    return pxkOk;
}

}  // namespace

extern "C" {

PxkResult pxkiCFAToBGRA_VNG_8u_C1C4R_L(const uint8_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                       const float* pScale, uint8_t* pDst, int32_t dstStep, PxkBayerGrid grid) {
    return cfaToBgraVng(pSrc, srcRoi, srcSize, srcStep, pScale, pDst, dstStep, grid);
}

PxkResult pxkiCFAToBGRA_VNG_16u_C1C4R_L(const uint16_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                        const float* pScale, uint16_t* pDst, int32_t dstStep, PxkBayerGrid grid) {
    return cfaToBgraVng(pSrc, srcRoi, srcSize, srcStep, pScale, pDst, dstStep, grid);
}

// The plain members hand their arguments on unchanged.
PxkResult pxkiCFAToBGRA_VNG_8u_C1C4R(const uint8_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                     const float* pScale, uint8_t* pDst, int32_t dstStep, PxkBayerGrid grid) {
    return pxkiCFAToBGRA_VNG_8u_C1C4R_L(pSrc, srcRoi, srcSize, srcStep, pScale, pDst, dstStep, grid);
}

PxkResult pxkiCFAToBGRA_VNG_16u_C1C4R(const uint16_t* pSrc, PxkRect srcRoi, PxkSize srcSize, int32_t srcStep,
                                      const float* pScale, uint16_t* pDst, int32_t dstStep, PxkBayerGrid grid) {
    return pxkiCFAToBGRA_VNG_16u_C1C4R_L(pSrc, srcRoi, srcSize, srcStep, pScale, pDst, dstStep, grid);
}

}  // extern "C"
