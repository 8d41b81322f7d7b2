// The eight directions of the variable-number-of-gradients demosaic: for each kind of
// site, the sample pairs of each direction's gradient and the samples of each
// direction's colour means, as offsets from the centre (x right, y down).
//
// Gradients, written for N and NE; E, S, W and SE, SW, NW are the same turned by 90,
// 180 and 270 degrees clockwise ((dx, dy) -> (-dy, dx) for each quarter turn). Each
// term is |a - b| of two samples of one colour along the direction; the two terms
// nearest the centre count twice.
//   N, every site:  2|(0,-1)-(0,1)| + 2|(0,-2)-(0,0)| + |(-1,-1)-(-1,1)| + |(1,-1)-(1,1)|
//                   + |(-1,-2)-(-1,0)| + |(1,-2)-(1,0)|
//   NE, red or blue site:  2|(1,-1)-(-1,1)| + 2|(2,-2)-(0,0)| + |(0,-1)-(-1,0)|
//                   + |(1,0)-(0,1)| + |(1,-2)-(0,-1)| + |(2,-1)-(1,0)|
//   NE, green site: 2|(1,-1)-(-1,1)| + 2|(2,-2)-(0,0)| + |(-1,0)-(1,-2)|
//                   + |(1,0)-(-1,2)| + |(0,-1)-(-2,1)| + |(0,1)-(2,-1)|
// Colour means, each colour's share twice its mean over one sample (weight 2) or two
// (weight 1 each); a sample adds to the sum of its own colour:
//   N, red or blue site:  (0,0) (0,-2); green 2 (0,-1); opposite (-1,-1) (1,-1)
//   N, green site:        (0,0) (0,-2); column colour 2 (0,-1); row colour (-1,-2) (1,-2)
//   NE, red or blue site: (0,0) (2,-2); green (0,-1) (1,0); opposite 2 (1,-1)
//   NE, green site:       (0,0) (1,-1); row colour (1,-2) (1,0); column colour (0,-1) (2,-1)
#pragma once

#include <cstdint>

namespace pxk {
namespace demosaic {

struct VngTerm {
    int8_t dx1, dy1, dx2, dy2, weight;
};
struct VngShare {
    int8_t dx, dy, weight;  // weight 0: unused
};
struct VngDirection {
    VngTerm terms[6];
    VngShare shares[6];
};
// Directions N, E, S, W, NE, SE, SW, NW.
struct VngDirections {
    VngDirection d[8];
};

constexpr VngTerm turned(VngTerm t) {
    return VngTerm{static_cast<int8_t>(-t.dy1), t.dx1, static_cast<int8_t>(-t.dy2), t.dx2, t.weight};
}
constexpr VngShare turned(VngShare s) { return VngShare{static_cast<int8_t>(-s.dy), s.dx, s.weight}; }
constexpr VngDirection turned(const VngDirection& d) {
    VngDirection r{};
    for (int i = 0; i < 6; ++i) {
        r.terms[i] = turned(d.terms[i]);
        r.shares[i] = turned(d.shares[i]);
    }
    return r;
}

// A term with its two samples in one fixed order (the smaller dy, then the smaller dx,
// first). |a - b| = |b - a|, and opposite directions share several terms (N and S the
// three between rows -1 and 1, the diagonals of a green site five of six): written
// alike, each shared difference is formed once a pixel.
constexpr VngTerm ordered(VngTerm t) {
    const bool swap = t.dy2 < t.dy1 || (t.dy2 == t.dy1 && t.dx2 < t.dx1);
    return swap ? VngTerm{t.dx2, t.dy2, t.dx1, t.dy1, t.weight} : t;
}

// The eight directions from N and NE by quarter turns, every term ordered.
constexpr VngDirections directionsFrom(const VngDirection& north, const VngDirection& northEast) {
    VngDirections all{};
    all.d[0] = north;
    all.d[4] = northEast;
    for (int q = 1; q < 4; ++q) {
        all.d[q] = turned(all.d[q - 1]);
        all.d[4 + q] = turned(all.d[4 + q - 1]);
    }
    for (VngDirection& d : all.d) {
        for (VngTerm& t : d.terms) t = ordered(t);
    }
    return all;
}

constexpr VngDirection kNorth = {
    {{0, -1, 0, 1, 2}, {0, -2, 0, 0, 2}, {-1, -1, -1, 1, 1}, {1, -1, 1, 1, 1}, {-1, -2, -1, 0, 1}, {1, -2, 1, 0, 1}},
    {{0, 0, 1}, {0, -2, 1}, {0, -1, 2}, {-1, -1, 1}, {1, -1, 1}, {0, 0, 0}}};
// A direction with the gradient of `d` and other colour shares.
constexpr VngDirection withShares(VngDirection d, const VngShare (&shares)[6]) {
    for (int i = 0; i < 6; ++i) d.shares[i] = shares[i];
    return d;
}
constexpr VngShare kNorthGreenShares[6] = {{0, 0, 1}, {0, -2, 1}, {0, -1, 2}, {-1, -2, 1}, {1, -2, 1}, {0, 0, 0}};
constexpr VngDirection kNorthGreen = withShares(kNorth, kNorthGreenShares);
constexpr VngDirection kNorthEast = {
    {{1, -1, -1, 1, 2}, {2, -2, 0, 0, 2}, {0, -1, -1, 0, 1}, {1, 0, 0, 1, 1}, {1, -2, 0, -1, 1}, {2, -1, 1, 0, 1}},
    {{0, 0, 1}, {2, -2, 1}, {0, -1, 1}, {1, 0, 1}, {1, -1, 2}, {0, 0, 0}}};
constexpr VngDirection kNorthEastGreen = {
    {{1, -1, -1, 1, 2}, {2, -2, 0, 0, 2}, {-1, 0, 1, -2, 1}, {1, 0, -1, 2, 1}, {0, -1, -2, 1, 1}, {0, 1, 2, -1, 1}},
    {{0, 0, 1}, {1, -1, 1}, {1, -2, 1}, {1, 0, 1}, {0, -1, 1}, {2, -1, 1}}};

// The direction opposite d: N and S, E and W, NE and SW, SE and NW.
constexpr int oppositeOf(int d) { return d < 4 ? (d + 2) % 4 : 4 + (d - 2) % 4; }

// [0] red and blue sites, [1] green sites.
constexpr VngDirections kVngDirections[2] = {directionsFrom(kNorth, kNorthEast),
                                             directionsFrom(kNorthGreen, kNorthEastGreen)};

// For each direction, bit i set where its term i is a term of the opposite direction
// as well (after ordered(), a shared difference is written alike in both).
struct VngSharedTerms {
    uint8_t mask[8];
};
constexpr VngSharedTerms sharedTermsOf(const VngDirections& dirs) {
    VngSharedTerms shared{};
    for (int d = 0; d < 8; ++d) {
        for (int i = 0; i < 6; ++i) {
            const VngTerm& t = dirs.d[d].terms[i];
            for (const VngTerm& u : dirs.d[oppositeOf(d)].terms) {
                if (u.dx1 == t.dx1 && u.dy1 == t.dy1 && u.dx2 == t.dx2 && u.dy2 == t.dy2 && u.weight == t.weight) {
                    shared.mask[d] = static_cast<uint8_t>(shared.mask[d] | (1 << i));
                }
            }
        }
    }
    return shared;
}
constexpr VngSharedTerms kVngShared[2] = {sharedTermsOf(kVngDirections[0]), sharedTermsOf(kVngDirections[1])};

}  // namespace demosaic
}  // namespace pxk
