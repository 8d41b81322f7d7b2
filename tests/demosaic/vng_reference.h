// Reference model of the variable-number-of-gradients demosaic, pixel by pixel, with
// nothing shared with the library. The gradients and colour shares are the library's
// documented choice, written here by direction vectors: u the direction, for the
// axial ones v a perpendicular, for the diagonal ones a = (u.x, 0) and b = (0, u.y).
//   axial gradient:    2|u - (-u)| + 2|2u - 0| + |u+v - (-u+v)| + |u-v - (-u-v)|
//                      + |2u+v - v| + |2u-v - (-v)|
//   diagonal, red/blue:  2|u - (-u)| + 2|2u - 0| + |b - (-a)| + |a - (-b)|
//                        + |u+b - b| + |u+a - a|
//   diagonal, green:     2|u - (-u)| + 2|2u - 0| + |-a - (u+b)| + |a - (-u-b)|
//                        + |b - (-u-a)| + |-b - (u+a)|
//   shares (a sample adds weight x its value to the sum of its own colour):
//     axial, red/blue: 0, 2u, 2 x u, u+v, u-v        axial, green: 0, 2u, 2 x u, 2u+v, 2u-v
//     diagonal, red/blue: 0, 2u, a, b, 2 x u         diagonal, green: 0, u, a, b, u+a, u+b
#ifndef PXKCC_TESTS_DEMOSAIC_VNG_REFERENCE_H
#define PXKCC_TESTS_DEMOSAIC_VNG_REFERENCE_H

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "mosaic_image.h"

namespace demosaictest {

struct Offset {
    int x, y;
};
inline Offset operator+(Offset p, Offset q) { return {p.x + q.x, p.y + q.y}; }
inline Offset operator-(Offset p) { return {-p.x, -p.y}; }
inline Offset operator-(Offset p, Offset q) { return p + (-q); }
inline Offset twice(Offset p) { return {2 * p.x, 2 * p.y}; }

// B, G, R of pixel (x, y), interior only, before scaling.
inline std::array<int, 3> referenceVngValues(const Mosaic& m, int grid, int x, int y) {
    auto c = [&](Offset o) { return m(x + o.x, y + o.y); };
    auto d = [&](Offset p, Offset q) { return std::abs(c(p) - c(q)); };
    const int site = colourAt(grid, x, y);
    const bool green = site == G;
    const Offset zero{0, 0};
    const Offset dirs[8] = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}, {1, -1}, {1, 1}, {-1, 1}, {-1, -1}};
    int grad[8];
    std::array<int, 3> sums[8];  // by colour R, G, B
    for (int k = 0; k < 8; ++k) {
        const Offset u = dirs[k];
        int g = 2 * d(u, -u) + 2 * d(twice(u), zero);
        std::array<std::pair<Offset, int>, 6> shares{};
        int nShares = 0;
        auto share = [&](Offset o, int w) { shares[std::size_t(nShares++)] = {o, w}; };
        if (k < 4) {
            const Offset v{-u.y, u.x};
            g += d(u + v, -u + v) + d(u - v, -u - v) + d(twice(u) + v, v) + d(twice(u) - v, -v);
            share(zero, 1);
            share(twice(u), 1);
            share(u, 2);
            if (green) {
                share(twice(u) + v, 1);
                share(twice(u) - v, 1);
            } else {
                share(u + v, 1);
                share(u - v, 1);
            }
        } else {
            const Offset a{u.x, 0}, b{0, u.y};
            if (green) {
                g += d(-a, u + b) + d(a, -u - b) + d(b, -u - a) + d(-b, u + a);
                share(zero, 1);
                share(u, 1);
                share(a, 1);
                share(b, 1);
                share(u + a, 1);
                share(u + b, 1);
            } else {
                g += d(b, -a) + d(a, -b) + d(u + b, b) + d(u + a, a);
                share(zero, 1);
                share(twice(u), 1);
                share(a, 1);
                share(b, 1);
                share(u, 2);
            }
        }
        grad[k] = g;
        sums[k] = {0, 0, 0};
        for (int i = 0; i < nShares; ++i) {
            const Offset o = shares[std::size_t(i)].first;
            sums[k][std::size_t(colourAt(grid, x + o.x, y + o.y))] += shares[std::size_t(i)].second * c(o);
        }
    }
    const int lo = *std::min_element(grad, grad + 8), hi = *std::max_element(grad, grad + 8);
    const int threshold = int(std::nearbyint(double(lo) + std::max(0.5 * double(hi), 1.0)));
    std::array<int, 3> total{0, 0, 0};
    int count = 0;
    for (int k = 0; k < 8; ++k) {
        if (grad[k] < threshold) {
            ++count;
            for (int ch = 0; ch < 3; ++ch) total[std::size_t(ch)] += sums[k][std::size_t(ch)];
        }
    }
    std::array<int, 3> rgb{};
    for (int ch = 0; ch < 3; ++ch) {
        if (ch == site) {
            rgb[std::size_t(ch)] = c(zero);
        } else {
            const long diff = long(total[std::size_t(ch)]) - long(total[std::size_t(site)]);
            rgb[std::size_t(ch)] = c(zero) + int(diff / (2 * count));  // C++ division truncates toward 0
        }
    }
    return {rgb[B], rgb[G], rgb[R]};
}

// A value scaled, clamped to 0..top and rounded half to even.
inline int referenceVngScaled(int value, float scale, int top) {
    float p = float(value) * scale;
    if (p < 0.0f) p = 0.0f;
    if (p > float(top)) p = float(top);
    return int(std::nearbyint(p));
}

}  // namespace demosaictest

#endif
