// Demosaicing quality: the demo's test picture, parts of it, and a smooth colour field
// are mosaicked with an R G / G B pattern and demosaicked by plain bilinear
// interpolation (written here), CFAToRGB, VNG and AHD. The PSNR of each against the
// original is printed as a table. On the smooth and natural pictures (shaded waves of
// one colour cast, the picture's value-noise landscape, the picture's hue sweep and a
// field of slow colour waves) AHD must lie above bilinear by 1 dB at least and VNG
// above it, wherever bilinear's error is above the floor that rounding sets (a PSNR
// below 50 dB): in the hue sweep and the slow waves every method is within a unit of
// the original, and the integer arithmetic of VNG and AHD rounds a little more often
// than a plain mean does. (VNG's margin on smooth shading is small: its gradients
// choose among directions, which helps at edges, not in gentle waves.) The whole
// picture and its ramp bands are reported
// only: their hard edges between saturated colours (bars, and bands of pure red,
// green and blue ramps one above the other) are where interpolation by colour
// differences goes wrong (across a red band over a green one the red of the last red
// row comes out 0), as it does in every method of that kind.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "test_image.h"

namespace {

constexpr int kWidth = 640, kHeight = 480;

struct Picture {
    std::string name;
    bool judged;  // smooth or natural: VNG and AHD must beat bilinear on it
    int width, height;
    std::vector<uint8_t> rgb;  // packed R, G, B
};

// The part [x0, x1) x [y0, y1) of the demo's picture.
Picture partOf(const demo::Buffer& full, const char* name, bool judged, int x0, int y0, int x1, int y1) {
    Picture p{name, judged, x1 - x0, y1 - y0, {}};
    p.rgb.resize(std::size_t(p.width) * std::size_t(p.height) * 3);
    for (int y = 0; y < p.height; ++y) {
        const uint8_t* row = full.data() + std::ptrdiff_t(y0 + y) * full.step() + 3 * x0;
        std::copy(row, row + 3 * p.width, p.rgb.begin() + std::ptrdiff_t(y) * p.width * 3);
    }
    return p;
}

// Three slow waves of different directions, one a channel.
Picture colourField() {
    Picture p{"colour field", true, kWidth, kHeight, {}};
    p.rgb.resize(std::size_t(kWidth) * kHeight * 3);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const double u = x / double(kWidth), v = y / double(kHeight);
            const double waves[3] = {std::sin(6.0 * u + 2.0 * v), std::sin(3.0 * u - 5.0 * v + 1.0),
                                     std::cos(4.0 * u + 4.0 * v)};
            for (int c = 0; c < 3; ++c) {
                p.rgb[(std::size_t(y) * kWidth + x) * 3 + c] = uint8_t(std::lround(127.5 + 110.0 * waves[c]));
            }
        }
    }
    return p;
}

// Shading of one colour cast: a grey pattern of two waves (periods of 17 to 37
// pixels), with red, green and blue each a fixed scale and offset of it, as the
// channels of a coloured surface in light and shade are.
Picture shadedWaves() {
    Picture p{"shaded waves", true, kWidth, kHeight, {}};
    p.rgb.resize(std::size_t(kWidth) * kHeight * 3);
    const double pi2 = 6.283185307179586;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const double base = 128.0 + 60.0 * std::sin(pi2 * (x / 23.0 + y / 37.0)) + 40.0 * std::sin(pi2 * (x - y) / 17.0);
            const double rgb[3] = {0.9 * base + 20.0, base, 0.7 * base + 30.0};
            for (int c = 0; c < 3; ++c) p.rgb[(std::size_t(y) * kWidth + x) * 3 + c] = uint8_t(std::lround(rgb[c]));
        }
    }
    return p;
}

std::vector<Picture> pictures() {
    const demo::Buffer full = demo::makeTestImage(kWidth, kHeight);
    // The picture's layout: bars to 20% of the height, ramp bands to 36%; below them a
    // grey ramp in the first tenth of the width, a hue sweep in the second, and the
    // landscape in the rest.
    const int scene = kHeight * 36 / 100 + 2;
    return {partOf(full, "whole picture", false, 0, 0, kWidth, kHeight),
            partOf(full, "ramp bands", false, 0, kHeight * 20 / 100 + 2, kWidth, kHeight * 36 / 100 - 2),
            partOf(full, "hue sweep", true, kWidth / 10 + 2, scene, kWidth / 5 - 2, kHeight),
            partOf(full, "landscape", true, kWidth / 5 + 2, scene, kWidth, kHeight),
            colourField(), shadedWaves()};
}

// The colour (0 R, 1 G, 2 B) of the pattern R G / G B at (x, y).
int colourAt(int x, int y) { return (x & 1) + (y & 1); }

std::vector<uint8_t> mosaic(const Picture& p) {
    std::vector<uint8_t> cfa(std::size_t(p.width) * std::size_t(p.height));
    for (int y = 0; y < p.height; ++y) {
        for (int x = 0; x < p.width; ++x) {
            cfa[std::size_t(y) * p.width + x] = p.rgb[(std::size_t(y) * p.width + x) * 3 + colourAt(x, y)];
        }
    }
    return cfa;
}

// Plain bilinear interpolation: each missing colour the rounded mean of the nearest
// samples of that colour (mirrored across the edges, which keeps the pattern).
std::vector<uint8_t> bilinear(const std::vector<uint8_t>& cfa, int w, int h) {
    const auto at = [&](int x, int y) {
        x = x < 0 ? -x : (x >= w ? 2 * (w - 1) - x : x);
        y = y < 0 ? -y : (y >= h ? 2 * (h - 1) - y : y);
        return int(cfa[std::size_t(y) * w + x]);
    };
    std::vector<uint8_t> out(std::size_t(w) * std::size_t(h) * 3);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            for (int c = 0; c < 3; ++c) {
                int sum = 0, n = 0;
                for (int dy = -1; dy <= 1; ++dy) {
                    for (int dx = -1; dx <= 1; ++dx) {
                        // The nearest ring that holds colour c: the pixel itself, then the
                        // four axial neighbours, then the four diagonal ones.
                        const int ring = (dx != 0) + (dy != 0);
                        const int own = colourAt(x, y) == c ? 0 : (c == 1 || (colourAt(x, y) == 1) ? 1 : 2);
                        if (ring == own && colourAt(x + dx + 2, y + dy + 2) == c) {
                            sum += at(x + dx, y + dy);
                            ++n;
                        }
                    }
                }
                out[(std::size_t(y) * w + x) * 3 + c] = uint8_t((sum + n / 2) / n);
            }
        }
    }
    return out;
}

// PSNR over the pixels four or more lines from every edge, all three colours.
double psnr(const Picture& p, const std::vector<uint8_t>& rgb) {
    double sum = 0;
    long n = 0;
    for (int y = 4; y < p.height - 4; ++y) {
        for (int x = 4; x < p.width - 4; ++x) {
            for (int c = 0; c < 3; ++c) {
                const std::size_t i = (std::size_t(y) * p.width + x) * 3 + c;
                const double d = double(rgb[i]) - double(p.rgb[i]);
                sum += d * d;
                ++n;
            }
        }
    }
    return 10.0 * std::log10(255.0 * 255.0 / (sum / double(n)));
}

struct Row {
    double bilinear, cfa, vng, ahd;
};

Row measure(const Picture& p) {
    const int w = p.width, h = p.height;
    const std::vector<uint8_t> cfa = mosaic(p);
    const PxkRect roi{0, 0, w, h};
    const PxkSize size{w, h};
    Row r{};
    r.bilinear = psnr(p, bilinear(cfa, w, h));

    std::vector<uint8_t> out(std::size_t(w) * h * 3);
    EXPECT_EQ(pxkiCFAToRGB_8u_C1C3R(cfa.data(), roi, size, w, out.data(), 3 * w, pxkBayerRGGB, 0), pxkOk);
    r.cfa = psnr(p, out);

    std::vector<uint8_t> bgra(std::size_t(w) * h * 4);
    EXPECT_EQ(pxkiCFAToBGRA_VNG_8u_C1C4R(cfa.data(), roi, size, w, nullptr, bgra.data(), 4 * w, pxkBayerRGGB), pxkOk);
    for (std::size_t i = 0; i < std::size_t(w) * h; ++i) {
        for (int c = 0; c < 3; ++c) out[3 * i + c] = bgra[4 * i + 2 - c];
    }
    r.vng = psnr(p, out);

    const int32_t bufferStep = 33 * w + 384;
    std::vector<uint8_t> buffer(3 * std::size_t(bufferStep));
    EXPECT_EQ(pxkiDemosaicAHD_8u_C1C3R(cfa.data(), roi, size, w, out.data(), 3 * w, pxkBayerRGGB, buffer.data(),
                                       bufferStep),
              pxkOk);
    r.ahd = psnr(p, out);
    return r;
}

TEST(DemosaicQuality, VngAndAhdAboveBilinear) {
    std::printf("PSNR (dB), R G / G B mosaic of the demo's %dx%d picture, 4-pixel margins left out\n", kWidth,
                kHeight);
    std::printf("%-16s %9s %9s %9s %9s\n", "picture", "bilinear", "CFAToRGB", "VNG", "AHD");
    for (const Picture& p : pictures()) {
        const Row r = measure(p);
        std::printf("%-16s %9.2f %9.2f %9.2f %9.2f\n", p.name.c_str(), r.bilinear, r.cfa, r.vng, r.ahd);
        if (p.judged && r.bilinear < 50.0) {
            EXPECT_GT(r.vng, r.bilinear) << p.name;
            EXPECT_GT(r.ahd, r.bilinear + 1.0) << p.name;
        }
    }
}

}  // namespace
