// The benchmark table: one Case per measured conversion (ours or a peer's).
#ifndef PXKCC_BENCH_CASES_H
#define PXKCC_BENCH_CASES_H

#include <string>
#include <vector>

#include "export_shapes.h"
#include "image.h"
#include "pxkcc.h"

namespace bench {

// Runs the conversion once over the whole image; negative return = failure.
using Convert = int (*)(const Image& src, Image& dst);

struct Case {
    std::string name;  // benchmark name: the export's name, or "peer/function"
    Layout src;
    Layout dst;
    Content input;     // value range of the source fill
    Convert run;
    // Peers only: our exports this call is the nearest equivalent of, and how it differs.
    std::vector<std::string> standsFor;
    std::string note;
};

// Bytes read plus bytes written per pixel, counted by layout: an AC4 side counts its
// alpha byte, because the whole pixel moves through memory even where alpha is
// neither read nor written.
inline int trafficPerPixel(const Case& c) { return bytesPerPixel(c.src) + bytesPerPixel(c.dst); }

// Our exports (ours.cpp).
std::vector<Case> ourCases();
// Peers; each list is empty when the peer was not found at configure time.
std::vector<Case> openCvCases();
std::vector<Case> libyuvCases();

// Adapters from the export signatures to Convert, one per signature shape, so
// that a table row names the export once.
using shapes::packedToPacked;
using shapes::packedToPlanar;
using shapes::planarToPacked;
using shapes::planarToPackedAlpha;
using shapes::planarToPlanar;

}  // namespace bench

#endif
