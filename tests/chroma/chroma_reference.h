// A plain model of the chroma-layout conversions, written from their description: each
// side is a layout (packed pairs, luma beside chroma pairs, or three planes) at a
// sampling, and each output sample is read from the one input sample that the
// sampling rule names. Nothing here is shared with the library.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "surface.h"
#include "sweep.h"

namespace chromatest {

using pxktest::GuardOptions;
using pxktest::ImageGeometry;
using pxktest::StepKind;
using pxktest::Surface;

enum class Sampling { S422, S420, S411, S1620 };
enum class Kind { C2, P2, P3 };

// Where a side keeps its samples. C2: luma at bytes lumaByte and lumaByte + 2 of each
// four, Cb at byte cbAt, Cr at crAt. P2: Cb at byte cbAt of each chroma pair, Cr at
// crAt. P3: Cb in plane cbAt, Cr in plane crAt.
struct Side {
    Kind kind;
    Sampling sampling;
    int lumaByte;
    int cbAt;
    int crAt;
};

inline Side packedYCbCr() { return {Kind::C2, Sampling::S422, 0, 1, 3}; }
inline Side packedYCrCb() { return {Kind::C2, Sampling::S422, 0, 3, 1}; }
inline Side packedCbYCr() { return {Kind::C2, Sampling::S422, 1, 0, 2}; }
inline Side pairs(Sampling s) { return {Kind::P2, s, 0, 0, 1}; }
inline Side pairsCrCb(Sampling s) { return {Kind::P2, s, 0, 1, 0}; }
inline Side planes(Sampling s) { return {Kind::P3, s, 0, 1, 2}; }
inline Side planesCrCb(Sampling s) { return {Kind::P3, s, 0, 2, 1}; }

inline int chromaColumns(Sampling s, int width) {
    return width / ((s == Sampling::S411 || s == Sampling::S1620) ? 4 : 2);
}
inline int chromaRows(Sampling s, int height) {
    return s == Sampling::S420 ? height / 2 : (s == Sampling::S1620 ? height / 4 : height);
}

// The images of one side for a region of width x height, with the step kind `kind`
// for each of its images.
inline Surface makeSide(const Side& side, int width, int height, StepKind kind, const GuardOptions& options = {}) {
    auto geometry = [&](int w, int h, int channels) {
        ImageGeometry g;
        g.width = w < 1 ? 1 : w;
        g.height = h < 1 ? 1 : h;
        g.channels = channels;
        g.step = pxktest::stepFor(kind, std::size_t(g.width) * std::size_t(channels));
        return g;
    };
    if (side.kind == Kind::C2) {
        const ImageGeometry g = geometry(width, height, 2);
        return Surface::planar({g}, options);
    }
    const int cw = chromaColumns(side.sampling, width), ch = chromaRows(side.sampling, height);
    if (side.kind == Kind::P2) return Surface::planar({geometry(width, height, 1), geometry(cw, ch, 2)}, options);
    return Surface::planar({geometry(width, height, 1), geometry(cw, ch, 1), geometry(cw, ch, 1)}, options);
}

inline uint8_t* lumaAt(Surface& s, const Side& side, int x, int y) {
    if (side.kind == Kind::C2) return s.image(0).row(y) + 4 * (x / 2) + side.lumaByte + 2 * (x % 2);
    return s.image(0).row(y) + x;
}

// Component k: 0 Cb, 1 Cr; at chroma column c of chroma row r.
inline uint8_t* chromaAt(Surface& s, const Side& side, int k, int c, int r) {
    const int at = k == 0 ? side.cbAt : side.crAt;
    switch (side.kind) {
        case Kind::C2:
            return s.image(0).row(r) + 4 * c + at;
        case Kind::P2:
            return s.image(1).row(r) + 2 * c + at;
        case Kind::P3:
            break;
    }
    return s.image(at).row(r) + c;
}

// The source chroma position (row, column) of output chroma sample (r, c).
inline void sourceOf(Sampling from, Sampling to, int r, int c, int* rs, int* cs) {
    *rs = r;
    *cs = c;
    if (from == to) return;
    if (from == Sampling::S422 && to == Sampling::S420) *rs = 2 * r;
    if (from == Sampling::S420 && to == Sampling::S422) *rs = r / 2;
    if (from == Sampling::S422 && to == Sampling::S411) *cs = 2 * c;
    if (from == Sampling::S411 && to == Sampling::S422) *cs = c / 2;
    if (from == Sampling::S420 && to == Sampling::S411) {
        *rs = r / 2;
        *cs = 2 * c + r % 2;
    }
    if (from == Sampling::S411 && to == Sampling::S420) {
        *rs = 2 * r + c % 2;
        *cs = c / 2;
    }
}

// Writes what a conversion of the (already cut) region width x height gives, row by
// row from the top.
inline void convertReference(Surface& src, const Side& s, Surface& dst, const Side& d, int width, int height) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) *lumaAt(dst, d, x, y) = *lumaAt(src, s, x, y);
    }
    const int rows = chromaRows(d.sampling, height), cols = chromaColumns(d.sampling, width);
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c) {
            int rs = 0, cs = 0;
            sourceOf(s.sampling, d.sampling, r, c, &rs, &cs);
            for (int k = 0; k < 2; ++k) *chromaAt(dst, d, k, c, r) = *chromaAt(src, s, k, cs, rs);
        }
    }
}

}  // namespace chromatest
