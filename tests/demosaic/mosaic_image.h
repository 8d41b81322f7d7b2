// Test helpers of the demosaicing tests: a mosaic held as plain numbers, the colour of
// each site, and reading and writing samples of guarded images of either sample type.
#ifndef PXKCC_TESTS_DEMOSAIC_MOSAIC_IMAGE_H
#define PXKCC_TESTS_DEMOSAIC_MOSAIC_IMAGE_H

#include <cstdint>
#include <vector>

#include "guarded_image.h"
#include "random.h"

namespace demosaictest {

// Channel names of the destinations.
enum { R = 0, G = 1, B = 2 };

// The colour of the site at (x, y) for a grid code, spelled out from its 2x2 pattern:
// 0 B G / G R, 1 R G / G B, 2 G B / R G, 3 G R / B G.
inline int colourAt(int grid, int x, int y) {
    static const char* const patterns[4] = {"BGGR", "RGGB", "GBRG", "GRBG"};
    const char c = patterns[grid][(y % 2) * 2 + (x % 2)];
    return c == 'R' ? R : (c == 'G' ? G : B);
}

// A whole source image as plain integers, row-major.
struct Mosaic {
    int width = 0, height = 0;
    std::vector<int> v;
    int operator()(int x, int y) const { return v[std::size_t(y) * std::size_t(width) + std::size_t(x)]; }
};

template <class T>
Mosaic readMosaic(const pxktest::GuardedImage& img) {
    Mosaic m{img.width(), img.height(), {}};
    m.v.resize(std::size_t(img.width()) * std::size_t(img.height()));
    for (int y = 0; y < img.height(); ++y) {
        for (int x = 0; x < img.width(); ++x) m.v[std::size_t(y) * std::size_t(img.width()) + std::size_t(x)] = img.get<T>(x, y, 0);
    }
    return m;
}

// Random samples of the whole range of T, with runs of equal samples mixed in so that
// ties of the gradient tests come up often.
template <class T>
void fillMosaic(pxktest::GuardedImage& img, pxktest::Rng& rng) {
    const int top = sizeof(T) == 1 ? 255 : 65535;
    for (int y = 0; y < img.height(); ++y) {
        for (int x = 0; x < img.width(); ++x) {
            const uint32_t r = rng.next32();
            int v;
            if (r % 4 == 0) {
                v = (r >> 8) % 2 == 0 ? 0 : top;
            } else if (r % 4 == 1) {
                v = int((r >> 8) % 4) * (top / 3);
            } else {
                v = int((r >> 8) % uint32_t(top + 1));
            }
            img.set<T>(x, y, 0, static_cast<T>(v));
        }
    }
    img.snapshot();
}

// A source whose highest byte is the last of its allocation, followed by a page that
// cannot be read: a call that reads past the image faults.
inline pxktest::GuardOptions fencedSource() {
    pxktest::GuardOptions options;
    options.after = 0;
    options.fenceAfter = true;
    return options;
}

template <class T>
pxktest::ImageGeometry geometry(int width, int height, int channels, int step) {
    pxktest::ImageGeometry g;
    g.width = width;
    g.height = height;
    g.channels = channels;
    g.sampleBytes = int(sizeof(T));
    g.step = step;
    return g;
}

}  // namespace demosaictest

#endif
