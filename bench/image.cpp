#include "image.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace bench {

int bytesPerPixel(Layout layout) {
    switch (layout) {
    case Layout::C3: return 3;
    case Layout::AC4: return 4;
    case Layout::C4: return 4;
    case Layout::C2: return 2;
    case Layout::W16: return 2;
    case Layout::C3W16: return 6;
    case Layout::C4W16: return 8;
    case Layout::AC4W16: return 8;
    case Layout::P3W16: return 2;
    case Layout::P3W32: return 4;
    case Layout::F32: return 4;
    case Layout::C3F32: return 12;
    case Layout::AC4F32: return 16;
    case Layout::P3F32: return 4;
    case Layout::G8: return 1;
    case Layout::W16C3: return 6;
    case Layout::W16C4: return 8;
    case Layout::F32C1: return 4;
    case Layout::F32C3: return 12;
    case Layout::F32C4: return 16;
    case Layout::Px4: return 4;
    case Layout::Px6: return 6;
    case Layout::Px8: return 8;
    case Layout::Px12: return 12;
    case Layout::Px16: return 16;
    case Layout::Px24: return 24;
    case Layout::Px32: return 32;
    case Layout::P3F64: return 8;
    default: return 1;
    }
}

int bytesPerFourPixels(Layout layout) {
    switch (layout) {
    case Layout::C3: return 12;
    case Layout::AC4: return 16;
    case Layout::C4: return 16;
    case Layout::P3: return 12;
    case Layout::P4: return 16;
    case Layout::C2: return 8;
    case Layout::P420: return 6;
    case Layout::P2: return 6;
    case Layout::P422: return 8;
    case Layout::P411: return 6;
    case Layout::W16: return 8;
    case Layout::C1: return 4;
    case Layout::C3W16: return 24;
    case Layout::C4W16: return 32;
    case Layout::V210: return 0;  // 16 bytes for six pixels: see bytesMovedPerPixel
    case Layout::AC4W16: return 32;
    case Layout::P3W16: return 24;
    case Layout::P3W32: return 48;
    case Layout::F32: return 16;
    case Layout::B12: return 6;
    case Layout::C3F32: return 48;
    case Layout::AC4F32: return 64;
    case Layout::P3F32: return 48;
    case Layout::G8:
    case Layout::W16C3:
    case Layout::W16C4:
    case Layout::F32C1:
    case Layout::F32C3:
    case Layout::F32C4:
    case Layout::Px4:
    case Layout::Px6:
    case Layout::Px8:
    case Layout::Px12:
    case Layout::Px16:
    case Layout::Px24:
    case Layout::Px32: return 4 * bytesPerPixel(layout);
    case Layout::P3F64: return 96;
    }
    return 0;
}

double bytesMovedPerPixel(Layout layout) {
    return layout == Layout::V210 ? 16.0 / 6.0 : bytesPerFourPixels(layout) / 4.0;
}

size_t rowBytesOf(Layout layout, int width) {
    const size_t w = static_cast<size_t>(width);
    if (layout == Layout::V210) return (w + 5) / 6 * 16;
    if (layout == Layout::B12) return (3 * w + 1) / 2;
    const bool widePlanes =
        layout == Layout::P3W16 || layout == Layout::P3W32 || layout == Layout::P3F32 || layout == Layout::P3F64;
    return w * static_cast<size_t>(isPlanar(layout) && !widePlanes ? 1 : bytesPerPixel(layout));
}

bool isPlanar(Layout layout) { return planeCount(layout) > 1; }

int planeCount(Layout layout) {
    switch (layout) {
    case Layout::P3:
    case Layout::P420:
    case Layout::P422:
    case Layout::P411:
    case Layout::P3W16:
    case Layout::P3W32:
    case Layout::P3F32:
    case Layout::P3F64: return 3;
    case Layout::P2: return 2;
    case Layout::P4: return 4;
    default: return 1;
    }
}

const char* layoutName(Layout layout) {
    switch (layout) {
    case Layout::C3: return "C3";
    case Layout::AC4: return "AC4";
    case Layout::C4: return "C4";
    case Layout::P3: return "P3";
    case Layout::P4: return "P4";
    case Layout::C2: return "C2";
    case Layout::P420: return "P420";
    case Layout::P422: return "P422";
    case Layout::P411: return "P411";
    case Layout::P2: return "P2";
    case Layout::V210: return "V210";
    case Layout::W16: return "W16";
    case Layout::C3W16: return "C3W16";
    case Layout::C4W16: return "C4W16";
    case Layout::AC4W16: return "AC4W16";
    case Layout::P3W16: return "P3W16";
    case Layout::P3W32: return "P3W32";
    case Layout::F32: return "F32";
    case Layout::B12: return "B12";
    case Layout::C1: return "C1";
    case Layout::C3F32: return "C3F32";
    case Layout::AC4F32: return "AC4F32";
    case Layout::P3F32: return "P3F32";
    case Layout::G8: return "G8";
    case Layout::W16C3: return "W16C3";
    case Layout::W16C4: return "W16C4";
    case Layout::F32C1: return "F32C1";
    case Layout::F32C3: return "F32C3";
    case Layout::F32C4: return "F32C4";
    case Layout::Px4: return "Px4";
    case Layout::Px6: return "Px6";
    case Layout::Px8: return "Px8";
    case Layout::Px12: return "Px12";
    case Layout::Px16: return "Px16";
    case Layout::Px24: return "Px24";
    case Layout::Px32: return "Px32";
    case Layout::P3F64: return "P3F64";
    }
    return "?";
}

void FreeDeleter::operator()(uint8_t* p) const { std::free(p); }

namespace {

constexpr size_t kAlign = 64;

size_t roundUp(size_t n) { return (n + kAlign - 1) / kAlign * kAlign; }

// xorshift32: small, fast and the same on every machine.
uint32_t nextRandom(uint32_t& state) {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return state;
}

// Maps a random byte into [lo, hi] without a division per sample.
uint8_t inRange(uint32_t r, int lo, int hi) {
    return static_cast<uint8_t>(lo + (((r & 0xFFu) * static_cast<uint32_t>(hi - lo + 1)) >> 8));
}

// Floats (or doubles) in [0, 1) over `bytes` bytes of a row.
// Floats (or doubles) in [0, 1) with 24 random bits each over `bytes` of a row.
void fillUnitRow(uint8_t* row, size_t bytes, bool doubles, uint32_t& state) {
    if (doubles) {
        for (size_t i = 0; i + 8 <= bytes; i += 8) {
            const double v = (nextRandom(state) >> 8) * (1.0 / 16777216.0);
            std::memcpy(row + i, &v, 8);
        }
    } else {
        for (size_t i = 0; i + 4 <= bytes; i += 4) {
            const float v = static_cast<float>((nextRandom(state) >> 8) * (1.0 / 16777216.0));
            std::memcpy(row + i, &v, 4);
        }
    }
}

}  // namespace

AlignedBytes allocateAligned(size_t bytes) {
    const size_t size = roundUp(bytes == 0 ? 1 : bytes);
    auto* p = static_cast<uint8_t*>(std::aligned_alloc(kAlign, size));
    if (p == nullptr) throw std::bad_alloc();
    std::memset(p, 0, size);  // also faults every page in before timing starts
    return AlignedBytes(p);
}

void fillRandom(uint8_t* data, size_t bytes, uint32_t seed) {
    uint32_t state = seed != 0 ? seed : 0x9E3779B9u;
    for (size_t i = 0; i < bytes; ++i) data[i] = static_cast<uint8_t>(nextRandom(state) >> 24);
}

Image::Image(Layout layout, int width, int height)
    : layout_(layout), width_(width), height_(height) {
    const size_t rowBytes = rowBytesOf(layout, width);
    step_ = static_cast<int32_t>(roundUp(rowBytes));
    planeBytes_ = roundUp(static_cast<size_t>(step_) * static_cast<size_t>(height));
    storage_ = allocateAligned(planeBytes_ * static_cast<size_t>(planeCount(layout)));
    for (int p = 0; p < 4; ++p) {
        planes_[p] = p < planeCount(layout) ? storage_.get() + planeBytes_ * static_cast<size_t>(p) : nullptr;
        steps_[p] = step_;
    }
}

void Image::fill(Content content, uint32_t seed) {
    uint32_t state = seed != 0 ? seed : 0x9E3779B9u;
    if (content == Content::Light && layout_ == Layout::F32) {
        for (int y = 0; y < height_; ++y) {
            float* row = reinterpret_cast<float*>(planes_[0] + static_cast<size_t>(step_) * static_cast<size_t>(y));
            for (int x = 0; x < width_; ++x) row[x] = static_cast<float>(nextRandom(state) >> 8) * (1000.0f / 16777216.0f);
        }
        return;
    }
    if (layout_ == Layout::C3F32 || layout_ == Layout::AC4F32 || layout_ == Layout::P3F32) {
        fillUnitFloats(state);
        return;
    }
    if (content == Content::UnitFloats) {
        fillUnitFloats(state);
        return;
    }
    const bool planar = isPlanar(layout_);
    const int channels = planar ? 1 : bytesPerPixel(layout_);
    const int rowBytes = static_cast<int>(rowBytesOf(layout_, width_));
    for (int p = 0; p < planeCount(layout_); ++p) {
        for (int y = 0; y < height_; ++y) {
            uint8_t* row = planes_[p] + static_cast<size_t>(step_) * static_cast<size_t>(y);
            if (content == Content::Float32 || content == Content::Float64) {
                fillUnitRow(row, static_cast<size_t>(rowBytes), content == Content::Float64, state);
                continue;
            }
            for (int x = 0; x < rowBytes; ++x) {
                const uint32_t r = nextRandom(state) >> 24;
                const int channel = planar ? p : x % channels;
                if (content != Content::YCbCr || channel == 3) {
                    row[x] = static_cast<uint8_t>(r);
                } else {
                    row[x] = channel == 0 ? inRange(r, 16, 235) : inRange(r, 16, 240);
                }
            }
        }
    }
}

// Floats in [0, 1), every sample of every plane.
void Image::fillUnitFloats(uint32_t& state) {
    const size_t rowBytes = rowBytesOf(layout_, width_);
    for (int p = 0; p < planeCount(layout_); ++p) {
        for (int y = 0; y < height_; ++y) {
            fillUnitRow(planes_[p] + static_cast<size_t>(step_) * static_cast<size_t>(y), rowBytes, false, state);
        }
    }
}

const Image& ImagePool::source(Layout layout, Content content, int width, int height) {
    auto key = std::make_tuple(static_cast<int>(layout), static_cast<int>(content), width, height);
    auto& slot = sources_[key];
    if (!slot) {
        slot = std::make_unique<Image>(layout, width, height);
        slot->fill(content, 0x1234567u + static_cast<uint32_t>(layout) * 977u);
    }
    return *slot;
}

Image& ImagePool::destination(Layout layout, int width, int height) {
    auto key = std::make_tuple(static_cast<int>(layout), width, height);
    auto& slot = destinations_[key];
    if (!slot) slot = std::make_unique<Image>(layout, width, height);
    return *slot;
}

ImagePool& imagePool() {
    static ImagePool pool;
    return pool;
}

}  // namespace bench
