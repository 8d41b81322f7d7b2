// The one walk behind every conversion between chroma samplings and layouts that moves
// bytes without arithmetic: output luma equals input luma, and each output chroma
// sample is one input chroma sample, picked by the rule of the pair of samplings.
//
// A row of output chroma is made in chunks of columns: the source chroma of the chunk
// is read as a Cb row and a Cr row (the source planes themselves, or de-interleaved
// into scratch rows), resampled along the row where the rule says so, and written in
// the destination's layout. Scratch rows live on the stack; nothing is allocated.
#pragma once

#include <cstdint>

namespace pxk {
namespace chroma {

enum class Sampling { S422, S420, S411 };

// How a side lays out its samples.
//  Packed: pixel pairs of four bytes, luma at bytes lumaByte and lumaByte + 2, Cb at
//          byte cbAt and Cr at byte crAt (4:2:2 only); `luma` is the packed row.
//  Pairs:  a luma plane and a plane of chroma pairs (`chroma[0]`), Cb at byte cbAt of
//          each pair and Cr at crAt.
//  Planes: a luma plane and two chroma planes, Cb in plane cbAt (1 or 2), Cr in crAt.
enum class Layout { Packed, Pairs, Planes };

// The pointers are held without const for both directions; a source side is only
// ever read.
struct Side {
    Layout layout;
    Sampling sampling;
    int lumaByte;
    int cbAt;
    int crAt;
    uint8_t* luma;
    int32_t lumaStep;
    uint8_t* chroma[2];
    int32_t chromaStep[2];
};

// Sides of each layout. `planes` and `steps` list luma first.
Side packedSide(const uint8_t* p, int32_t step, int lumaByte, int cbAt, int crAt);
Side pairsSide(Sampling s, const uint8_t* y, int32_t yStep, const uint8_t* pairs, int32_t pairsStep, int cbAt);
Side planesSide(Sampling s, const uint8_t* const* planes, const int32_t* steps, int cbAt);

// How the stores of a conversion go.
struct Stores {
    // Luma rows between planes go through the row copier with this flag.
    bool streamLumaCopies = false;
    // Luma extracted from packed rows and every chroma row written in a packed or
    // paired layout use non-temporal stores (destinations on 16-byte boundaries).
    bool streamOwnStores = false;
};

// Converts the region (width and height already cut to whole groups) from `src` to
// `dst`.
void convertSampling(const Side& src, const Side& dst, int32_t width, int32_t height, Stores stores);

// The pieces of the walk, for conversions that compute their chroma rows.

// Output chroma columns made at a time; a multiple of 64, so that every chunk starts
// on a 16-byte boundary of each destination row.
inline constexpr int32_t kChromaChunk = 512;

inline int32_t chromaColumns(Sampling s, int32_t width) { return width / (s == Sampling::S411 ? 4 : 2); }
inline int32_t chromaRows(Sampling s, int32_t height) { return s == Sampling::S420 ? height / 2 : height; }

// Row `row` of a plane.
uint8_t* rowOf(uint8_t* plane, int32_t step, int32_t row);

// Cb and Cr of some columns of a row.
struct CbCr {
    const uint8_t* cb;
    const uint8_t* cr;
};

// Reads the chroma of source chroma row `row`, columns [c, c + n), into cb and cr (or,
// for planes, gives the planes' own bytes). A packed source with `luma` given also
// writes the luma of those pixel pairs there (the start of the destination's luma
// row), so that the row is walked once.
CbCr readChroma(const Side& s, int32_t row, int32_t c, int32_t n, uint8_t* cb, uint8_t* cr,
                uint8_t* luma = nullptr);

// Where output chroma of row `row`, columns [c, c + n) can be made: in a planar
// destination its own bytes, otherwise the scratch rows given.
struct Targets {
    uint8_t* cb;
    uint8_t* cr;
};
Targets chromaTargets(const Side& d, int32_t row, int32_t c, uint8_t* cbScratch, uint8_t* crScratch);

// Writes Cb and Cr of output columns [c, c + n) to destination chroma row `row` (bytes
// already in place are not copied again); a packed destination takes the luma of the
// same row from the source's luma plane.
void writeChromaPlain(const Side& d, const Side& src, int32_t row, int32_t c, int32_t n, CbCr v);

// Luma rows of the region to a destination with a luma plane: copied between planes
// (non-temporal stores with `streamCopies`), picked out of packed rows.
void copyLuma(const Side& s, const Side& d, int32_t width, int32_t height, bool streamCopies);

}  // namespace chroma
}  // namespace pxk
