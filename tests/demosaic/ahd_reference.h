// Reference model of the homogeneity-directed demosaic, from its stages as told,
// over whole planes held in plain vectors, with nothing shared with the library.
//
// The library's documented choices: samples past an edge come from the mirror image
// across the edge sample (-x below 0, 2 (size - 1) - x past the end), the main area
// runs from 5 to size - 6, and the stages reach as far as they need around each strip.
#ifndef PXKCC_TESTS_DEMOSAIC_AHD_REFERENCE_H
#define PXKCC_TESTS_DEMOSAIC_AHD_REFERENCE_H

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "mosaic_image.h"

namespace demosaictest {

class AhdReference {
public:
    AhdReference(const Mosaic& m, int grid, int top) : m_(m), grid_(grid), top_(top) {
        W_ = m.width + 2 * kPad;
        H_ = m.height + 2 * kPad;
        for (int k = 0; k < 2; ++k) {
            green_[k].assign(std::size_t(W_ * H_), 0);
            rgb_[k].assign(std::size_t(W_ * H_), {});
            yuv_[k].assign(std::size_t(W_ * H_), {});
        }
        diff_.assign(std::size_t(W_ * H_), 0);
        // Stage 1 and 2 on [-3, size + 2], stage 3 and 4 on [-2, size + 1], 5 and 6 on
        // [-1, size].
        for (int y = -3; y < m.height + 3; ++y) {
            for (int x = -3; x < m.width + 3; ++x) {
                greenAt(0, x, y) = lineGreen(x, y, 1, 0);
                greenAt(1, x, y) = lineGreen(x, y, 0, 1);
            }
        }
        for (int y = -2; y < m.height + 2; ++y) {
            for (int x = -2; x < m.width + 2; ++x) {
                for (int k = 0; k < 2; ++k) candidate(k, x, y);
            }
        }
        for (int y = -1; y < m.height + 1; ++y) {
            for (int x = -1; x < m.width + 1; ++x) homogeneity(x, y);
        }
    }

    // The output of one kernel run over [x0, x1] x [y0, y1], through write(x, y, rgb).
    template <class Write>
    void run(int x0, int y0, int x1, int y1, Write&& write) const {
        for (int y = y0; y <= y1; ++y) {
            int last = 1;
            for (int x = x0; x <= x1; ++x) {
                int sum = 0;
                for (int dy = -1; dy <= 1; ++dy) {
                    for (int dx = -1; dx <= 1; ++dx) sum += diff_[idx(x + dx, y + dy)];
                }
                int pick;
                if (sum < 0) {
                    pick = 1;
                } else if (sum > 0) {
                    pick = 0;
                } else {
                    pick = last > 0 ? 0 : 1;
                }
                if (sum != 0) last = sum;
                write(x, y, rgb_[std::size_t(pick)][idx(x, y)]);
            }
        }
    }

    // The call: the region's split into the main area and the strips.
    template <class Write>
    void call(int rx, int ry, int rw, int rh, Write&& write) const {
        const int W = m_.width, H = m_.height;
        rx = std::max(rx, 0);
        ry = std::max(ry, 0);
        if (int64_t(rx) + rw > W) rw = W - rx;
        if (int64_t(ry) + rh > H) rh = H - ry;
        if (rw < 1 || rh < 1) return;
        const int rx1 = rx + rw - 1, ry1 = ry + rh - 1;
        int ax = std::max(rx, 5), ay = std::max(ry, 5);
        int ax1 = std::min(rx1, W - 6), ay1 = std::min(ry1, H - 6);
        const int phases[4] = {2, 0, 1, 3};
        int phase = phases[grid_];
        if (ax % 2 == 1) phase ^= 3;
        if (ay % 2 == 1) phase = phase % 2 == 0 ? phase + 1 : phase - 1;
        if (phase > 1) {
            ++ax;
            phase ^= 3;
        }
        if (phase != 0) ++ay;
        int aw = ax1 - ax + 1, ah = ay1 - ay + 1;
        aw = aw > 0 ? aw / 2 * 2 : 0;
        ah = ah > 0 ? ah / 2 * 2 : 0;
        if (aw < 1 || ah < 1) {
            run(rx, ry, rx1, ry1, write);
            return;
        }
        ax1 = ax + aw - 1;
        ay1 = ay + ah - 1;
        run(ax, ay, ax1, ay1, write);
        if (ay > ry) run(rx, ry, rx1, ay - 1, write);
        if (ay1 < ry1) run(rx, ay1 + 1, rx1, ry1, write);
        if (ax > rx) run(rx, ay, ax - 1, ay1, write);
        if (ax1 < rx1) run(ax1 + 1, ay, rx1, ay1, write);
    }

    // How many results of stage 3 fell outside 0..top before saturation.
    int saturated() const { return saturated_; }

private:
    static constexpr int kPad = 5;

    std::size_t idx(int x, int y) const { return std::size_t((y + kPad) * W_ + (x + kPad)); }
    static int parity(int v) { return ((v % 2) + 2) % 2; }
    int colour(int x, int y) const { return colourAt(grid_, parity(x), parity(y)); }
    static int mirror(int v, int n) {
        while (v < 0 || v > n - 1) v = v < 0 ? -v : 2 * (n - 1) - v;
        return v;
    }
    int S(int x, int y) const { return m_(mirror(x, m_.width), mirror(y, m_.height)); }
    int& greenAt(int k, int x, int y) { return green_[std::size_t(k)][idx(x, y)]; }
    int greenOf(int k, int x, int y) const { return green_[std::size_t(k)][idx(x, y)]; }

    int lineGreen(int x, int y, int dx, int dy) const {
        if (colour(x, y) == G) return S(x, y);
        const int a = S(x - dx, y - dy), b = S(x + dx, y + dy), c = S(x, y);
        const int d = S(x - 2 * dx, y - 2 * dy), e = S(x + 2 * dx, y + 2 * dy);
        const int g = ((a + b) >> 1) + ((c - d + c - e) >> 2);
        return std::min(std::max(g, std::min(a, b)), std::max(a, b));
    }

    int sat(int v) {
        if (v < 0 || v > top_) ++saturated_;
        return std::min(std::max(v, 0), top_);
    }

    void candidate(int k, int x, int y) {
        std::array<int, 3> out{};
        const int site = colour(x, y);
        if (site == G) {
            const int g = S(x, y);
            out[G] = g;
            out[colour(x + 1, y)] =
                sat(g + ((S(x - 1, y) + S(x + 1, y) - greenOf(k, x - 1, y) - greenOf(k, x + 1, y)) >> 1));
            out[colour(x, y + 1)] =
                sat(g + ((S(x, y - 1) + S(x, y + 1) - greenOf(k, x, y - 1) - greenOf(k, x, y + 1)) >> 1));
        } else {
            const int g = greenOf(k, x, y);
            out[site] = S(x, y);
            out[G] = g;
            const int sumC = S(x - 1, y - 1) + S(x + 1, y - 1) + S(x - 1, y + 1) + S(x + 1, y + 1);
            const int sumG = greenOf(k, x - 1, y - 1) + greenOf(k, x + 1, y - 1) + greenOf(k, x - 1, y + 1) +
                             greenOf(k, x + 1, y + 1);
            out[site == R ? B : R] = sat(g + ((sumC - sumG) >> 2));
        }
        rgb_[std::size_t(k)][idx(x, y)] = out;
        const int r = out[R], gg = out[G], b = out[B];
        yuv_[std::size_t(k)][idx(x, y)] = {(66 * r + 129 * gg + 25 * b + 128) >> 8,
                                           (-38 * r - 74 * gg + 112 * b + 128) >> 8,
                                           (112 * r - 94 * gg - 18 * b + 128) >> 8};
    }

    const std::array<int, 3>& yuv(int k, int x, int y) const { return yuv_[std::size_t(k)][idx(x, y)]; }
    static int dY(const std::array<int, 3>& a, const std::array<int, 3>& b) { return std::abs(a[0] - b[0]); }
    static long long dC(const std::array<int, 3>& a, const std::array<int, 3>& b) {
        const long long du = a[1] - b[1], dv = a[2] - b[2];
        return du * du + dv * dv;
    }

    void homogeneity(int x, int y) {
        const auto& h = yuv(0, x, y);
        const auto& w = yuv(1, x, y);
        const int limitY = std::min(std::max(dY(h, yuv(0, x - 1, y)), dY(h, yuv(0, x + 1, y))),
                                    std::max(dY(w, yuv(1, x, y - 1)), dY(w, yuv(1, x, y + 1))));
        const long long limitC = std::min(std::max(dC(h, yuv(0, x - 1, y)), dC(h, yuv(0, x + 1, y))),
                                          std::max(dC(w, yuv(1, x, y - 1)), dC(w, yuv(1, x, y + 1))));
        int count[2] = {0, 0};
        for (int k = 0; k < 2; ++k) {
            const auto& c = yuv(k, x, y);
            const int nx[4] = {x - 1, x + 1, x, x}, ny[4] = {y, y, y - 1, y + 1};
            for (int n = 0; n < 4; ++n) {
                const auto& o = yuv(k, nx[n], ny[n]);
                if (dY(c, o) <= limitY && dC(c, o) <= limitC) ++count[k];
            }
        }
        diff_[idx(x, y)] = count[0] - count[1];
    }

    const Mosaic& m_;
    int grid_, top_;
    int W_ = 0, H_ = 0;
    int saturated_ = 0;
    std::vector<int> green_[2];
    std::vector<std::array<int, 3>> rgb_[2];
    std::vector<std::array<int, 3>> yuv_[2];
    std::vector<int> diff_;
};

}  // namespace demosaictest

#endif
