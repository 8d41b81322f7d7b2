// Image buffers of the demo (packed or planar, padded rows) and a read-only view
// that addresses channel c of pixel (x, y) the same way for both.
#ifndef PXKCC_APPS_IMAGE_VIEW_H
#define PXKCC_APPS_IMAGE_VIEW_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "pxkcc.h"

namespace demo {

// Three channels of an image: for a packed buffer the channel bytes of each pixel,
// for a planar one the three planes.
struct View {
    const uint8_t* base[3];
    int32_t step;
    int pixelBytes;
    int width;
    int height;

    uint8_t at(int c, int x, int y) const {
        return base[c][static_cast<ptrdiff_t>(y) * step + static_cast<ptrdiff_t>(x) * pixelBytes];
    }
};

class Buffer {
public:
    // Interleaved pixels of `pixelBytes` bytes (3 or 4).
    static Buffer packed(int width, int height, int pixelBytes) {
        return Buffer(width, height, pixelBytes, false);
    }
    // Three planes of one byte per pixel sharing one step.
    static Buffer planar(int width, int height) { return Buffer(width, height, 1, true); }

    int width() const { return width_; }
    int height() const { return height_; }
    int pixelBytes() const { return pixelBytes_; }
    int32_t step() const { return step_; }
    PxkSize size() const { return PxkSize{width_, height_}; }

    uint8_t* data() { return planes_[0]; }
    const uint8_t* data() const { return planes_[0]; }
    uint8_t* const* planes() { return planes_; }
    const uint8_t* const* planes() const { return planes_; }

    uint8_t* row(int y, int plane = 0) {
        return planes_[plane] + static_cast<ptrdiff_t>(y) * step_;
    }

    // Channels in memory order `order` (e.g. {2,1,0} reads a B,G,R buffer as R,G,B).
    View view(std::array<int, 3> order = {0, 1, 2}) const {
        View v{};
        for (int c = 0; c < 3; ++c) v.base[c] = planar_ ? planes_[c] : planes_[0] + order[c];
        v.step = step_;
        v.pixelBytes = planar_ ? 1 : pixelBytes_;
        v.width = width_;
        v.height = height_;
        return v;
    }

    // Packed 4-byte pixels: sets the 4th byte of every pixel.
    void fillAlpha(uint8_t alpha) {
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x) row(y)[4 * x + 3] = alpha;
    }

    // Packed 4-byte pixels: true if the 4th byte of every pixel equals `alpha`.
    bool alphaIs(uint8_t alpha) const {
        for (int y = 0; y < height_; ++y) {
            const uint8_t* r = planes_[0] + static_cast<ptrdiff_t>(y) * step_;
            for (int x = 0; x < width_; ++x)
                if (r[4 * x + 3] != alpha) return false;
        }
        return true;
    }

    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    Buffer(Buffer&&) = default;
    Buffer& operator=(Buffer&&) = default;

private:
    Buffer(int width, int height, int pixelBytes, bool planar)
        : width_(width), height_(height), pixelBytes_(pixelBytes), planar_(planar) {
        // Rows padded to a multiple of 64 bytes, as a caller with aligned rows would have.
        step_ = static_cast<int32_t>((static_cast<size_t>(width) * pixelBytes + 63) / 64 * 64);
        const size_t plane = static_cast<size_t>(step_) * static_cast<size_t>(height);
        bytes_.assign(plane * (planar ? 3 : 1), 0);
        for (int c = 0; c < 3; ++c) planes_[c] = planar || c == 0 ? bytes_.data() + plane * c : nullptr;
    }

    int width_;
    int height_;
    int pixelBytes_;
    bool planar_;
    int32_t step_;
    std::vector<uint8_t> bytes_;
    uint8_t* planes_[3];
};

}  // namespace demo

#endif
