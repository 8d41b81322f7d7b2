// Scalar reference model of the YCbCr and YUV members with subsampled chroma (4:2:0,
// 4:2:2, 4:1:1) that convert to RGB or BGR.
//
// The forms these members add are written out here literally, one pixel at a time, in
// 64-bit integers with an explicit floor shift; the forms they share with the
// full-resolution members come from reference_forms.h and reference_yuv.h. Nothing
// here is shared with the library. One converter, driven by a member's rule (its
// sampling, layouts, chroma order, forms and column rule), walks the rows from the top
// by their steps (a step of 0 rewrites one row, the last row written wins) and reads
// and writes exactly the samples that the member may touch.
#ifndef PXKCC_TESTS_YUV_SUBSAMPLED_TO_RGB_REFERENCE_H
#define PXKCC_TESTS_YUV_SUBSAMPLED_TO_RGB_REFERENCE_H

#include <cstddef>
#include <cstdint>

#include "reference_forms.h"
#include "reference_yuv.h"

namespace subrgb {

using ref::clamp8;
using ref::floorShift;
using ref::h;
using ref::rowAt;
using Rgb = ref::Rgb;

// A form takes the raw luma and the two raw chroma samples (Cb, Cr or U, V: 0 to 255,
// 128 not yet taken off) and gives R, G, B.
using Form = Rgb (*)(int Y, int Cb, int Cr);

// ---------------------------------------------------------------------------------
// Forms of the studio-range members
// ---------------------------------------------------------------------------------

// Raw-chroma offset form: chroma enters with nothing subtracted, and the offsets stand
// as they are (no rounding half).
inline Rgb rawChromaOffsetForm(int Yraw, int CbRaw, int CrRaw) {
    const int64_t Y = Yraw, Cb = CbRaw, Cr = CrRaw;
    return {clamp8(floorShift(76284 * Y + 104595 * Cr - 14608761, 16)),
            clamp8(floorShift(76284 * Y - 53281 * Cr - 25690 * Cb + 8887730, 16)),
            clamp8(floorShift(76284 * Y + 132186 * Cb - 18140365, 16))};
}

// The 4:1:1 form: 76294 on Y, 25625 of Cb from G.
inline Rgb form411(int Yraw, int CbRaw, int CrRaw) {
    const int64_t Y = Yraw, Cb = CbRaw - 128, Cr = CrRaw - 128;
    return {clamp8(floorShift(76294 * Y + 104595 * Cr - 1187936, 16)),
            clamp8(floorShift(76294 * Y - 25625 * Cb - 53281 * Cr - 1187936, 16)),
            clamp8(floorShift(76294 * Y + 132186 * Cb - 1187936, 16))};
}

// High-product 4:1:1 and 4:2:2 form, at 4 fraction bits. Every product is cut to its
// high half by itself, toward negative infinity: the Cb term of G is the floor of the
// negative product -3203 * cb, and the Cr term that of -6660 * cr.
inline Rgb highProduct411And422Form(int Yraw, int CbRaw, int CrRaw) {
    const int64_t y = h(9536, (Yraw - 16) * 128LL);
    const int64_t cb = (CbRaw - 128) * 128LL;
    const int64_t cr = (CrRaw - 128) * 128LL;
    return {clamp8(floorShift(y + h(13074, cr) + 8, 4)),                 // R
            clamp8(floorShift(y + h(-3203, cb) + h(-6660, cr) + 8, 4)),  // G
            clamp8(floorShift(y + h(16523, cb) + 8, 4))};                // B
}

// Filter form: truncating, no rounding half.
inline Rgb filterForm(int Yraw, int CbRaw, int CrRaw) {
    const int64_t Y = Yraw, Cb = CbRaw - 128, Cr = CrRaw - 128;
    return {clamp8(floorShift(76309 * Y + 104597 * Cr - 1220944, 16)),
            clamp8(floorShift(76309 * Y - 25675 * Cb - 53279 * Cr - 1220944, 16)),
            clamp8(floorShift(76309 * Y + 132201 * Cb - 1220944, 16))};
}

// The full-resolution forms, under the names the member table uses.
inline Rgb wideRoundedForm(int Y, int Cb, int Cr) { return ref::wideRoundedForm(Y, Cb, Cr); }
inline Rgb highProductInverseForm(int Y, int Cb, int Cr) { return ref::highProductInverseForm(Y, Cb, Cr); }

// ---------------------------------------------------------------------------------
// Forms of the full-range YUV members (arguments Y, U, V)
// ---------------------------------------------------------------------------------

// Truncating, with the constants of the full rounded form and no rounding term.
inline Rgb yuvTruncatingFullForm(int Yraw, int Uraw, int Vraw) {
    const int64_t Y = Yraw, U = Uraw - 128, V = Vraw - 128;
    return {clamp8(floorShift(Y * 65536 + 74711 * V, 16)), clamp8(floorShift(Y * 65536 - 38076 * V - 25821 * U, 16)),
            clamp8(floorShift(Y * 65536 + 133169 * U, 16))};
}

// Sixteenths form: chroma scaled by 128 through high products, luma times 16, a
// rounding 8 and 4 bits dropped. G subtracts the sum of two high products of positive
// constants.
inline Rgb sixteenthsForm(int Yraw, int Uraw, int Vraw) {
    const int64_t Y = Yraw, u = (Uraw - 128) * 128LL, v = (Vraw - 128) * 128LL;
    return {clamp8(floorShift(16 * Y + h(9338, v) + 8, 4)),
            clamp8(floorShift(16 * Y - (h(3227, u) + h(4759, v)) + 8, 4)),
            clamp8(floorShift(16 * Y + h(16646, u) + 8, 4))};
}

// The doubled form's shape (chroma times 16, luma doubled, one bit dropped) with the
// constants 9339, -3228, -4760 and 16646.
inline Rgb doubled9339Form(int Yraw, int Uraw, int Vraw) {
    const int64_t Y = Yraw, u = (Uraw - 128) * 16LL, v = (Vraw - 128) * 16LL;
    return {clamp8(floorShift(2 * Y + h(9339, v), 1)), clamp8(floorShift(2 * Y + h(-3228, u) + h(-4760, v), 1)),
            clamp8(floorShift(2 * Y + h(16646, u), 1))};
}

inline Rgb fromYuv(const refyuv::Rgb& v) { return {v.r, v.g, v.b}; }
inline Rgb yuvDoubledForm(int Y, int U, int V) { return fromYuv(refyuv::doubledForm(Y, U, V)); }
inline Rgb yuvHalfRoundedForm(int Y, int U, int V) { return fromYuv(refyuv::halfRoundedForm(Y, U, V)); }

// ---------------------------------------------------------------------------------
// Members as rules
// ---------------------------------------------------------------------------------

enum class Sampling { S420, S422, S411 };

// P3: a Y plane and two chroma planes, each with its own step. P2: a Y plane and a
// plane of chroma pairs. C2: one plane of Y0 C Y1 C', two bytes a pixel.
enum class Source { P3, P2, C2 };

// C3, C4 (byte 3 = the alpha argument), AC4 (byte 3 = 0), or three planes R, G, B
// with one step.
enum class Dest { C3, C4, AC4, P3 };

// Which columns of a row get the vector form: none; those below c - c % 8 or
// c - c % 16 of the c columns the row converts; or all of them.
enum class Columns { None, Cols8, Cols16, All };

struct Rule {
    Sampling sampling;
    Source source;
    // The first chroma of the source (the second plane, the first byte of a pair, the
    // byte after Y0) is Cb or U; otherwise it is Cr.
    bool cbFirst;
    Dest dest;
    bool bgr;  // byte 0 of a packed destination is B
    Columns columns;
    Form vectorForm;
    Form tailForm;
    // 4:2:2 only: the last pixel of an odd width is converted (planes: chroma column
    // width / 2; packed: its first chroma from its own bytes, its second from the
    // byte before its Y). Otherwise it is left unwritten.
    bool oddPixelConverted = false;
    // Chroma interpolated in the row (even pixel its pair's, odd pixel the rounded
    // mean of its pair's and the next pair's; the last pair its own).
    bool rowFilter = false;
    // The row kernel runs over the whole image as one row when width * height >= 256
    // and the width is even.
    bool oneLongRow = false;
};

// Columns of each row that the member converts.
inline int convertedColumns(const Rule& r, int width) {
    switch (r.sampling) {
        case Sampling::S420:
            return width - width % 2;
        case Sampling::S411:
            return width - width % 4;
        case Sampling::S422:
            return r.oddPixelConverted ? width : width - width % 2;
    }
    return 0;
}

// Rows that the member converts.
inline int convertedRows(const Rule& r, int height) {
    return r.sampling == Sampling::S420 ? height - height % 2 : height;
}

// Columns below this one get the vector form (outside the one-long-row path).
inline int vectorColumns(const Rule& r, int width) {
    const int c = convertedColumns(r, width);
    switch (r.columns) {
        case Columns::None:
            return 0;
        case Columns::Cols8:
            return c - c % 8;
        case Columns::Cols16:
            return c - c % 16;
        case Columns::All:
            return c;
    }
    return 0;
}

inline bool takesOneLongRow(const Rule& r, int width, int height) {
    return r.oneLongRow && int64_t(width) * height >= 256 && width % 2 == 0;
}

// Pixels of the image, counted row by row, that the vector form gets on the
// one-long-row path: the first run covers n = N - N % 8 pixels, its blocks of 16 the
// first n - n % 16; the second run, of fewer than 8 pixels, is all tail.
inline int64_t longRowVectorPixels(int width, int height) {
    const int64_t N = int64_t(width) * height;
    const int64_t n = N - N % 8;
    return n - n % 16;
}

// The memory of a call, as the reference sees it. Source: plane[0] is Y (or the packed
// image), plane[1] and plane[2] the chroma planes in the order of the name (a P2 source
// has its pairs in plane[1]). Destination: plane[0] the packed image, or planes R, G, B.
struct SourceView {
    const uint8_t* plane[3];
    int step[3];
};
struct DestView {
    uint8_t* plane[3];
    int step;
};

struct Samples {
    int Y, first, second;  // raw; first and second chroma as the source orders them
};

// The raw samples of pixel (x, y). `columns` is the number of columns the row converts.
inline Samples samplesAt(const Rule& r, const SourceView& s, int x, int y, int columns) {
    if (r.source == Source::C2) {
        const uint8_t* row = rowAt(s.plane[0], s.step[0], y);
        const int pair = x / 2;
        const int Y = row[2 * x];
        if (2 * pair + 1 < columns) return {Y, row[4 * pair + 1], row[4 * pair + 3]};
        // The odd last pixel: its first chroma after its Y, its second in the byte
        // before its Y, or its first again when the row has no such byte.
        const int first = row[2 * x + 1];
        return {Y, first, x >= 1 ? row[2 * x - 1] : first};
    }
    const int Y = rowAt(s.plane[0], s.step[0], y)[x];
    int cx = 0, cy = y;
    switch (r.sampling) {
        case Sampling::S420:
            cx = x / 2;
            cy = y / 2;
            break;
        case Sampling::S422:
            cx = x / 2;
            break;
        case Sampling::S411:
            cx = x / 4;
            break;
    }
    if (r.source == Source::P2) {
        const uint8_t* pairs = rowAt(s.plane[1], s.step[1], cy);
        return {Y, pairs[2 * cx], pairs[2 * cx + 1]};
    }
    const uint8_t* c1 = rowAt(s.plane[1], s.step[1], cy);
    const uint8_t* c2 = rowAt(s.plane[2], s.step[2], cy);
    if (!r.rowFilter || x % 2 == 0) return {Y, c1[cx], c2[cx]};
    // Odd pixel of a filtered row: the rounded mean of this pair's raw samples and the
    // next pair's, or this pair's alone for the last pair.
    if (cx + 1 >= columns / 2) return {Y, c1[cx], c2[cx]};
    return {Y, (c1[cx] + c1[cx + 1] + 1) >> 1, (c2[cx] + c2[cx + 1] + 1) >> 1};
}

inline void writePixel(const Rule& r, const DestView& d, int x, int y, const Rgb& v, uint8_t alpha) {
    if (r.dest == Dest::P3) {
        rowAt(d.plane[0], d.step, y)[x] = v.r;
        rowAt(d.plane[1], d.step, y)[x] = v.g;
        rowAt(d.plane[2], d.step, y)[x] = v.b;
        return;
    }
    const int channels = r.dest == Dest::C3 ? 3 : 4;
    uint8_t* p = rowAt(d.plane[0], d.step, y) + std::ptrdiff_t(x) * channels;
    p[0] = r.bgr ? v.b : v.r;
    p[1] = v.g;
    p[2] = r.bgr ? v.r : v.b;
    if (r.dest == Dest::C4) p[3] = alpha;
    if (r.dest == Dest::AC4) p[3] = 0;
}

// The member's conversion of a width x height region.
inline void convert(const Rule& r, const SourceView& s, const DestView& d, int width, int height, uint8_t alpha) {
    const int columns = convertedColumns(r, width);
    const int rows = convertedRows(r, height);
    const int vector = vectorColumns(r, width);
    const bool longRow = takesOneLongRow(r, width, height);
    const int64_t longVector = longRowVectorPixels(width, height);
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < columns; ++x) {
            const Samples p = samplesAt(r, s, x, y, columns);
            const int cb = r.cbFirst ? p.first : p.second;
            const int cr = r.cbFirst ? p.second : p.first;
            const bool inVector = longRow ? int64_t(y) * width + x < longVector : x < vector;
            writePixel(r, d, x, y, (inVector ? r.vectorForm : r.tailForm)(p.Y, cb, cr), alpha);
        }
    }
}

}  // namespace subrgb

#endif
