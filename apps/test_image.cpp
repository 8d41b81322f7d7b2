#include "test_image.h"

#include <algorithm>
#include <cmath>

namespace demo {

namespace {

struct Rgb {
    float r, g, b;
};

Rgb operator+(Rgb a, Rgb b) { return {a.r + b.r, a.g + b.g, a.b + b.b}; }
Rgb operator*(Rgb a, float k) { return {a.r * k, a.g * k, a.b * k}; }
Rgb mix(Rgb a, Rgb b, float t) { return a * (1.0f - t) + b * t; }

float clamp01(float t) { return std::min(1.0f, std::max(0.0f, t)); }
float smoothstep(float lo, float hi, float x) {
    const float t = clamp01((x - lo) / (hi - lo));
    return t * t * (3.0f - 2.0f * t);
}

uint8_t toByte(float v) { return static_cast<uint8_t>(std::lround(std::min(255.0f, std::max(0.0f, v)))); }

// Lattice value in [0, 1) from an integer hash of the cell and a seed.
float lattice(int x, int y, uint32_t seed) {
    uint32_t h = static_cast<uint32_t>(x) * 0x8DA6B343u ^ static_cast<uint32_t>(y) * 0xD8163841u ^ seed * 0xCB1AB31Fu;
    h ^= h >> 13;
    h *= 0x5BD1E995u;
    h ^= h >> 15;
    return static_cast<float>(h & 0xFFFFFFu) / 16777216.0f;
}

// Smoothly interpolated value noise in [0, 1).
float valueNoise(float x, float y, uint32_t seed) {
    const float fx = std::floor(x), fy = std::floor(y);
    const int ix = static_cast<int>(fx), iy = static_cast<int>(fy);
    const float tx = smoothstep(0.0f, 1.0f, x - fx), ty = smoothstep(0.0f, 1.0f, y - fy);
    const float top = lattice(ix, iy, seed) * (1 - tx) + lattice(ix + 1, iy, seed) * tx;
    const float bottom = lattice(ix, iy + 1, seed) * (1 - tx) + lattice(ix + 1, iy + 1, seed) * tx;
    return top * (1 - ty) + bottom * ty;
}

// Fractal sum of octaves, normalised back to [0, 1).
float fbm(float x, float y, int octaves, uint32_t seed) {
    float sum = 0, amplitude = 0.5f, norm = 0;
    for (int o = 0; o < octaves; ++o) {
        sum += amplitude * valueNoise(x, y, seed + static_cast<uint32_t>(o));
        norm += amplitude;
        x *= 2.03f;
        y *= 2.03f;
        amplitude *= 0.5f;
    }
    return sum / norm;
}

Rgb hue(float h) {  // h in [0, 1): full saturation, full value
    const float k = h * 6.0f;
    auto channel = [&](float n) {
        const float t = std::fmod(n + k, 6.0f);
        return 255.0f * (1.0f - clamp01(std::min(t, 4.0f - t)));
    };
    return {channel(5.0f), channel(3.0f), channel(1.0f)};
}

constexpr float kHorizon = 0.62f;
constexpr float kSunU = 0.64f;

// Sky, sun, clouds and mountains above the horizon; u, v in [0, 1], v downwards.
Rgb landscape(float u, float v) {
    const float t = clamp01(v / kHorizon);  // 0 at the top, 1 at the horizon
    Rgb sky = t < 0.55f ? mix(Rgb{18, 24, 78}, Rgb{150, 70, 125}, t / 0.55f)
                        : mix(Rgb{150, 70, 125}, Rgb{255, 178, 70}, (t - 0.55f) / 0.45f);

    const float cloud = smoothstep(0.45f, 0.72f, fbm(u * 4.0f, v * 12.0f, 5, 7u)) * (1.0f - 0.5f * t);
    sky = mix(sky, mix(Rgb{60, 35, 80}, Rgb{255, 160, 120}, t * t), cloud * 0.9f);

    const float du = (u - kSunU) * 1.6f, dv = v - (kHorizon - 0.17f);
    const float d = std::sqrt(du * du + dv * dv);
    sky = sky + Rgb{255, 140, 50} * (0.6f * std::exp(-d * 7.0f));
    if (d < 0.06f) sky = mix(sky, Rgb{255, 246, 220}, smoothstep(0.06f, 0.05f, d));

    const float ridge = kHorizon - 0.015f - 0.16f * fbm(u * 3.5f, 0.5f, 6, 21u) * (0.5f + 0.7f * u);
    if (v > ridge) {
        const float shade = fbm(u * 24.0f, v * 24.0f, 4, 33u);
        const float depth = clamp01((v - ridge) / 0.08f);
        Rgb rock = mix(Rgb{95, 60, 95}, Rgb{28, 18, 40}, depth);  // hazier towards the ridge
        rock = rock * (0.75f + 0.5f * shade);
        rock = rock + Rgb{150, 70, 20} * (0.7f * std::exp(-(v - ridge) * 90.0f));  // rim light
        return rock;
    }
    return sky;
}

// The whole scene: the landscape, mirrored in rippled water below the horizon,
// with the sun's glitter on the water.
Rgb sunset(float u, float v) {
    if (v < kHorizon) return landscape(u, v);
    const float depth = (v - kHorizon) / (1.0f - kHorizon);
    const float wave = fbm(u * 30.0f, v * 220.0f, 3, 55u);
    const float ripple = (wave - 0.5f) * 0.04f * (0.2f + depth);
    const Rgb mirrored = landscape(clamp01(u + ripple), 2.0f * kHorizon - v);
    Rgb water = mix(mirrored * 0.75f, Rgb{12, 28, 58}, 0.2f + 0.5f * depth);
    const float glitter = std::exp(-std::fabs(u - kSunU) * (25.0f - 15.0f * depth)) *
                          smoothstep(0.55f, 0.8f, wave) * (1.0f - 0.6f * depth);
    return water + Rgb{255, 190, 110} * glitter;
}

void put(Buffer& image, int x, int y, Rgb c) {
    uint8_t* p = image.row(y) + 3 * x;
    p[0] = toByte(c.r);
    p[1] = toByte(c.g);
    p[2] = toByte(c.b);
}

}  // namespace

Buffer makeTestImage(int width, int height) {
    Buffer image = Buffer::packed(width, height, 3);
    static const Rgb bars[8] = {{255, 255, 255}, {255, 255, 0}, {0, 255, 255}, {0, 255, 0},
                                {255, 0, 255},   {255, 0, 0},   {0, 0, 255},   {0, 0, 0}};
    static const Rgb ramps[4] = {{1, 1, 1}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const int barsEnd = height * 14 / 100, bars75End = height * 20 / 100;
    const int rampsEnd = height * 36 / 100;
    const int greyEnd = width / 10, hueEnd = width / 5;
    const float sceneW = static_cast<float>(std::max(1, width - hueEnd - 1));
    const float sceneH = static_cast<float>(std::max(1, height - rampsEnd - 1));

    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float fx = static_cast<float>(x), fy = static_cast<float>(y);
            Rgb c;
            if (y < bars75End) {
                c = bars[x * 8 / width] * (y < barsEnd ? 1.0f : 0.75f);
            } else if (y < rampsEnd) {
                const int band = std::min(3, (y - bars75End) * 4 / std::max(1, rampsEnd - bars75End));
                c = ramps[band] * (255.0f * fx / static_cast<float>(std::max(1, width - 1)));
            } else if (x < greyEnd) {
                c = Rgb{255, 255, 255} * ((fy - rampsEnd) / sceneH);
            } else if (x < hueEnd) {
                c = hue((fy - rampsEnd) / (sceneH + 1.0f));
            } else {
                c = sunset((fx - hueEnd) / sceneW, (fy - rampsEnd) / sceneH);
            }
            put(image, x, y, c);
        }
    }
    return image;
}

Buffer withAlpha(const Buffer& rgb) {
    Buffer out = Buffer::packed(rgb.width(), rgb.height(), 4);
    const View in = rgb.view();
    for (int y = 0; y < rgb.height(); ++y) {
        uint8_t* p = out.row(y);
        for (int x = 0; x < rgb.width(); ++x) {
            for (int c = 0; c < 3; ++c) p[4 * x + c] = in.at(c, x, y);
            p[4 * x + 3] = static_cast<uint8_t>(((x + y) / 16) % 2 ? 255 : 64);
        }
    }
    return out;
}

Buffer toPlanar(const Buffer& packed) {
    Buffer out = Buffer::planar(packed.width(), packed.height());
    const View in = packed.view();
    for (int c = 0; c < 3; ++c)
        for (int y = 0; y < packed.height(); ++y)
            for (int x = 0; x < packed.width(); ++x) out.row(y, c)[x] = in.at(c, x, y);
    return out;
}

}  // namespace demo
