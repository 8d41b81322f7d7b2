// Scalar reference model of RGB -> studio-range YCbCr with subsampled chroma (4:2:0,
// 4:1:1 and 4:2:2).
//
// Every formula is written out literally, one pixel or one chroma group at a time, in
// 64-bit integers with an explicit floor shift (the float form in single-precision
// variables, one operation at a time). Nothing here is shared with the library. The conversions walk rows (or row pairs) from the top by their steps, so
// that a step of 0 rewrites one row and the last row written wins, and they read and
// write exactly the samples that the export may touch: whole chroma groups, plus the
// odd last pixel where a 4:2:2 member converts it.
#ifndef PXKCC_TESTS_YUV_REFERENCE_SUBSAMPLED_H
#define PXKCC_TESTS_YUV_REFERENCE_SUBSAMPLED_H

#include <cstddef>
#include <cstdint>

namespace subref {

// ---------------------------------------------------------------------------------
// Words of fixed-point arithmetic
// ---------------------------------------------------------------------------------

// v / 2^s rounded toward negative infinity, without shifting a negative value.
inline int64_t floorShift(int64_t v, int s) {
    const int64_t d = int64_t(1) << s;
    int64_t q = v / d;  // truncates toward zero
    if (v % d != 0 && v < 0) --q;
    return q;
}

// The low 8 bits of v, two's complement.
inline uint8_t low8(int64_t v) { return static_cast<uint8_t>(static_cast<uint64_t>(v) & 0xFFu); }

inline uint8_t clamp8(int64_t v) { return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v)); }

// High product: the exact signed product k * x divided by 2^16, rounded toward
// negative infinity.
inline int64_t highProduct(int64_t k, int64_t x) { return floorShift(k * x, 16); }

// ---------------------------------------------------------------------------------
// Luma of one pixel
// ---------------------------------------------------------------------------------

// Direct form: (16843 R + 33030 G + 6423 B + 16.5 * 2^16) >> 16, low 8 bits.
inline uint8_t directLuma(int R, int G, int B) {
    return low8(floorShift(16843LL * R + 33030LL * G + 6423LL * B + 1081344LL, 16));
}

// The 4:2:0 block form at 3 fraction bits: samples scaled by 128, each product
// truncated to its high half by itself.
inline uint8_t blockLuma420(int R, int G, int B) {
    const int64_t sum = highProduct(1052, R * 128LL) + highProduct(2064, G * 128LL) + highProduct(401, B * 128LL);
    return clamp8(floorShift(sum + 132, 3));
}

// ---------------------------------------------------------------------------------
// Chroma of one group, from the sums of its samples
// ---------------------------------------------------------------------------------

struct Chroma {
    uint8_t cb, cr;
};

// Sums of four samples (a 2 x 2 block, or four pixels of a row) at a scale of 2^18;
// 33587200 is 128 at that scale plus 32768, a rounding term of one eighth.
inline Chroma directSumChroma(int64_t sR, int64_t sG, int64_t sB) {
    return {low8(floorShift(-9699 * sR - 19071 * sG + 28770 * sB + 33587200, 18)),
            low8(floorShift(28770 * sR - 24117 * sG - 4653 * sB + 33587200, 18))};
}

// Sums of a horizontal pair at a scale of 2^17; 16793600 is 128 at that scale plus
// 16384, again one eighth.
inline Chroma eighthRoundedPairChroma(int64_t sR, int64_t sG, int64_t sB) {
    return {low8(floorShift(-9699 * sR - 19071 * sG + 28770 * sB + 16793600, 17)),
            low8(floorShift(28770 * sR - 24117 * sG - 4653 * sB + 16793600, 17))};
}

// The 4:2:0 block form: sums scaled by 32, each product truncated by itself.
inline Chroma blockChroma420(int64_t sR, int64_t sG, int64_t sB) {
    const int64_t cb = highProduct(-607, sR * 32) + highProduct(-1192, sG * 32) + highProduct(1798, sB * 32);
    const int64_t cr = highProduct(1798, sR * 32) + highProduct(-1508, sG * 32) + highProduct(-291, sB * 32);
    return {clamp8(floorShift(cb + 1028, 3)), clamp8(floorShift(cr + 1028, 3))};
}

// Byte 1 of an odd last pixel of a packed 4:2:2 row of the BGR members: a Cb of the
// one pixel with the eighth rounding term, (128 + 1/8) * 2^16 = 8396800.
inline uint8_t oddPixelChroma422(int R, int G, int B) {
    return low8(floorShift(-9699LL * R - 19071LL * G + 28770LL * B + 8396800LL, 16));
}

// Full-resolution direct chroma of one pixel: 8421376 is 128.5 at 2^16.
inline int64_t directCbValue(int R, int G, int B) {
    return floorShift(-9699LL * R - 19071LL * G + 28770LL * B + 8421376LL, 16);
}
inline int64_t directCrValue(int R, int G, int B) {
    return floorShift(28770LL * R - 24117LL * G - 4653LL * B + 8421376LL, 16);
}

// The luma of the pair-luma 4:2:2 members: the first pixel of a pair by the direct
// form, the second with 1048576 (16 at 2^16, no rounding half) in its place.
inline int64_t directLumaValue(int R, int G, int B) {
    return floorShift(16843LL * R + 33030LL * G + 6423LL * B + 1081344LL, 16);
}
inline int64_t secondOfPairLumaValue(int R, int G, int B) {
    return floorShift(16843LL * R + 33030LL * G + 6423LL * B + 1048576LL, 16);
}

// Sums of a horizontal pair at 2^17; 16842752 is 128.5 at that scale, a rounding
// term of one half.
inline int64_t halfRoundedPairCbValue(int64_t sR, int64_t sG, int64_t sB) {
    return floorShift(-9699 * sR - 19071 * sG + 28770 * sB + 16842752, 17);
}
inline int64_t halfRoundedPairCrValue(int64_t sR, int64_t sG, int64_t sB) {
    return floorShift(28770 * sR - 24117 * sG - 4653 * sB + 16842752, 17);
}

// ---------------------------------------------------------------------------------
// The float form: single precision, one rounding for each operation, in the order
// written (the build forbids contracting a multiply and an add), truncated to a byte
// ---------------------------------------------------------------------------------

// Y = 0.257 R + 16.5 + 0.504 G + 0.098 B, left to right. The sum lies between 16.5
// and 236, so the conversion to int truncates a value in range.
inline uint8_t floatLuma(int R, int G, int B) {
    const float r = static_cast<float>(R), g = static_cast<float>(G), b = static_cast<float>(B);
    float y = 0.257f * r;
    y = y + 16.5f;
    y = y + 0.504f * g;
    y = y + 0.098f * b;
    return static_cast<uint8_t>(static_cast<int>(y));
}

// Cb = (0.439 sB + 512 - 0.148 sR - 0.291 sG) * 0.25 + 0.5 and
// Cr = (512 - 0.071 sB + 0.439 sR - 0.368 sG) * 0.25 + 0.5 over the sums of a 2 x 2
// block, left to right; both lie between 16 and 241.
inline Chroma floatChroma(int64_t sR, int64_t sG, int64_t sB) {
    const float r = static_cast<float>(sR), g = static_cast<float>(sG), b = static_cast<float>(sB);
    float cb = 0.439f * b;
    cb = cb + 512.0f;
    cb = cb - 0.148f * r;
    cb = cb - 0.291f * g;
    cb = cb * 0.25f;
    cb = cb + 0.5f;
    float cr = 512.0f - 0.071f * b;
    cr = cr + 0.439f * r;
    cr = cr - 0.368f * g;
    cr = cr * 0.25f;
    cr = cr + 0.5f;
    return {static_cast<uint8_t>(static_cast<int>(cb)), static_cast<uint8_t>(static_cast<int>(cr))};
}

// ---------------------------------------------------------------------------------
// Images
// ---------------------------------------------------------------------------------

// The source of a conversion. A packed image: `bytesPerPixel` bytes a pixel (3, or 4
// with a fourth byte that is never looked at), R first, or B first when `bgr`. Or,
// when plane[0] is set, three planes R, G, B, each with its own step; row0, step and
// bytesPerPixel are then not used.
struct RgbSource {
    const uint8_t* row0;
    int step;
    int bytesPerPixel;
    bool bgr;
    const uint8_t* plane[3] = {nullptr, nullptr, nullptr};
    int planeStep[3] = {0, 0, 0};

    struct Rgb {
        int r, g, b;
    };
    Rgb at(int x, int y) const {
        if (plane[0] != nullptr) {
            return {plane[0][std::ptrdiff_t(y) * planeStep[0] + x], plane[1][std::ptrdiff_t(y) * planeStep[1] + x],
                    plane[2][std::ptrdiff_t(y) * planeStep[2] + x]};
        }
        const uint8_t* p = row0 + std::ptrdiff_t(y) * step + std::ptrdiff_t(x) * bytesPerPixel;
        return bgr ? Rgb{p[2], p[1], p[0]} : Rgb{p[0], p[1], p[2]};
    }
};
// The name the tables of the packed-source members use.
using PackedSource = RgbSource;

// Planar destination: Y, then the two chroma planes, each with its own step.
struct PlanarDest {
    uint8_t* plane[3];
    int step[3];
    uint8_t& at(int p, int x, int y) const { return plane[p][std::ptrdiff_t(y) * step[p] + x]; }
};

// Where Cb and Cr go: YCbCr members put Cb in plane 1, YCrCb members in plane 2.
enum class ChromaOrder { CbCr, CrCb };

inline void storeChroma(const PlanarDest& d, int x, int y, Chroma c, ChromaOrder order) {
    d.at(1, x, y) = order == ChromaOrder::CbCr ? c.cb : c.cr;
    d.at(2, x, y) = order == ChromaOrder::CbCr ? c.cr : c.cb;
}

// 4:2:0. Chroma column c, row r comes from pixels 2c, 2c + 1 of rows 2r, 2r + 1;
// height / 2 row pairs and width / 2 columns, so that an odd last row or column is
// neither read nor written. With `blockColumns`, the chroma columns below
// n = p - p % 4 (p = width / 2) and their four pixels take the block form; all other
// columns the direct luma and the direct sum chroma.
inline void rgbTo420(const PackedSource& src, const PlanarDest& dst, int width, int height, ChromaOrder order,
                     bool blockColumns) {
    const int p = width / 2;
    const int n = blockColumns ? p - p % 4 : 0;
    for (int r = 0; r < height / 2; ++r) {
        for (int c = 0; c < p; ++c) {
            const bool block = c < n;
            int64_t sR = 0, sG = 0, sB = 0;
            for (int dy = 0; dy < 2; ++dy) {
                for (int dx = 0; dx < 2; ++dx) {
                    const int x = 2 * c + dx, y = 2 * r + dy;
                    const PackedSource::Rgb v = src.at(x, y);
                    dst.at(0, x, y) = block ? blockLuma420(v.r, v.g, v.b) : directLuma(v.r, v.g, v.b);
                    sR += v.r;
                    sG += v.g;
                    sB += v.b;
                }
            }
            storeChroma(dst, c, r, block ? blockChroma420(sR, sG, sB) : directSumChroma(sR, sG, sB), order);
        }
    }
}

// 4:1:1: chroma column c of row y from pixels 4c to 4c + 3 of that row; width / 4
// groups, so the columns past the last whole group are neither read nor written.
inline void rgbTo411(const PackedSource& src, const PlanarDest& dst, int width, int height) {
    for (int y = 0; y < height; ++y) {
        for (int c = 0; c < width / 4; ++c) {
            int64_t sR = 0, sG = 0, sB = 0;
            for (int dx = 0; dx < 4; ++dx) {
                const int x = 4 * c + dx;
                const PackedSource::Rgb v = src.at(x, y);
                dst.at(0, x, y) = directLuma(v.r, v.g, v.b);
                sR += v.r;
                sG += v.g;
                sB += v.b;
            }
            storeChroma(dst, c, y, directSumChroma(sR, sG, sB), ChromaOrder::CbCr);
        }
    }
}

// What a planar 4:2:2 member does with the last pixel of an odd width.
enum class OddPixel422 {
    LumaOnly,    // its Y is written, no chroma
    Unwritten,   // nothing at all is written for it
};

// 4:2:2 into planes: chroma column c of row y from pixels 2c, 2c + 1.
inline void rgbTo422Planar(const PackedSource& src, const PlanarDest& dst, int width, int height, OddPixel422 odd) {
    for (int y = 0; y < height; ++y) {
        for (int c = 0; c < width / 2; ++c) {
            const PackedSource::Rgb a = src.at(2 * c, y);
            const PackedSource::Rgb b = src.at(2 * c + 1, y);
            dst.at(0, 2 * c, y) = directLuma(a.r, a.g, a.b);
            dst.at(0, 2 * c + 1, y) = directLuma(b.r, b.g, b.b);
            storeChroma(dst, c, y, eighthRoundedPairChroma(a.r + b.r, a.g + b.g, a.b + b.b), ChromaOrder::CbCr);
        }
        if (width % 2 == 1 && odd == OddPixel422::LumaOnly) {
            const PackedSource::Rgb v = src.at(width - 1, y);
            dst.at(0, width - 1, y) = directLuma(v.r, v.g, v.b);
        }
    }
}

// 4:2:2 packed: each pair gives Y0 Cb Y1 Cr. The last pixel of an odd width gives
// two bytes: its Y, and oddPixelChroma422 of it.
inline void rgbTo422Packed(const PackedSource& src, uint8_t* dst, int dstStep, int width, int height) {
    for (int y = 0; y < height; ++y) {
        uint8_t* d = dst + std::ptrdiff_t(y) * dstStep;
        for (int c = 0; c < width / 2; ++c) {
            const PackedSource::Rgb a = src.at(2 * c, y);
            const PackedSource::Rgb b = src.at(2 * c + 1, y);
            const Chroma ch = eighthRoundedPairChroma(a.r + b.r, a.g + b.g, a.b + b.b);
            d[4 * c + 0] = directLuma(a.r, a.g, a.b);
            d[4 * c + 1] = ch.cb;
            d[4 * c + 2] = directLuma(b.r, b.g, b.b);
            d[4 * c + 3] = ch.cr;
        }
        if (width % 2 == 1) {
            const PackedSource::Rgb v = src.at(width - 1, y);
            d[2 * (width - 1) + 0] = directLuma(v.r, v.g, v.b);
            d[2 * (width - 1) + 1] = oddPixelChroma422(v.r, v.g, v.b);
        }
    }
}

// 4:2:0 by the float form into a Y plane (plane 0) and a plane of Cb, Cr pairs
// (plane 1: chroma column c of row pair r in bytes 2c and 2c + 1 of row r). height / 2
// row pairs and width / 2 columns: an odd last row or column is neither read nor
// written, and a width or height of 1 converts nothing.
inline void rgbTo420Float(const RgbSource& src, const PlanarDest& dst, int width, int height) {
    for (int r = 0; r < height / 2; ++r) {
        for (int c = 0; c < width / 2; ++c) {
            int64_t sR = 0, sG = 0, sB = 0;
            for (int dy = 0; dy < 2; ++dy) {
                for (int dx = 0; dx < 2; ++dx) {
                    const int x = 2 * c + dx, y = 2 * r + dy;
                    const RgbSource::Rgb v = src.at(x, y);
                    dst.at(0, x, y) = floatLuma(v.r, v.g, v.b);
                    sR += v.r;
                    sG += v.g;
                    sB += v.b;
                }
            }
            const Chroma ch = floatChroma(sR, sG, sB);
            dst.at(1, 2 * c, r) = ch.cb;
            dst.at(1, 2 * c + 1, r) = ch.cr;
        }
    }
}

// What byte 1 of an odd last pixel holds in the pair-luma 4:2:2 members, whatever
// their chroma order.
enum class OddPixelChroma { DirectCb, DirectCr };

// 4:2:2 packed by the pair-luma members: each pair gives Y0 Cb Y1 Cr (or Y0 Cr Y1 Cb),
// Y0 by the direct form, Y1 with the offset 1048576, the chroma half-rounded from the
// pair's sums. The last pixel of an odd width gives two bytes: its direct Y, and its
// direct Cb or Cr. `clamped`: results clamped to 0..255 rather than cut to 8 bits
// (they never leave that range, so both give the same bytes).
inline void rgbTo422PackedPairLuma(const RgbSource& src, uint8_t* dst, int dstStep, int width, int height,
                                   ChromaOrder order, OddPixelChroma odd, bool clamped) {
    auto store = [clamped](int64_t v) { return clamped ? clamp8(v) : low8(v); };
    for (int y = 0; y < height; ++y) {
        uint8_t* d = dst + std::ptrdiff_t(y) * dstStep;
        for (int c = 0; c < width / 2; ++c) {
            const RgbSource::Rgb a = src.at(2 * c, y);
            const RgbSource::Rgb b = src.at(2 * c + 1, y);
            const int64_t cb = halfRoundedPairCbValue(a.r + b.r, a.g + b.g, a.b + b.b);
            const int64_t cr = halfRoundedPairCrValue(a.r + b.r, a.g + b.g, a.b + b.b);
            d[4 * c + 0] = store(directLumaValue(a.r, a.g, a.b));
            d[4 * c + 1] = store(order == ChromaOrder::CbCr ? cb : cr);
            d[4 * c + 2] = store(secondOfPairLumaValue(b.r, b.g, b.b));
            d[4 * c + 3] = store(order == ChromaOrder::CbCr ? cr : cb);
        }
        if (width % 2 == 1) {
            const RgbSource::Rgb v = src.at(width - 1, y);
            d[2 * (width - 1) + 0] = store(directLumaValue(v.r, v.g, v.b));
            d[2 * (width - 1) + 1] = store(odd == OddPixelChroma::DirectCb ? directCbValue(v.r, v.g, v.b)
                                                                            : directCrValue(v.r, v.g, v.b));
        }
    }
}

}  // namespace subref

#endif
