// One side of a conversion call: either one packed image of interleaved channels, or a
// set of planes (one image per channel, each with its own geometry), with the pointer
// array that the planar functions take.
#ifndef PXKCC_TEST_SUPPORT_SURFACE_H
#define PXKCC_TEST_SUPPORT_SURFACE_H

#include <cstdint>
#include <string>
#include <vector>

#include "guarded_image.h"

namespace pxktest {

class Rng;

class Surface {
public:
    // One image of `channels` interleaved 8-bit samples.
    static Surface packed(int width, int height, int channels, int step, const GuardOptions& options = {});
    // `planes` one-channel 8-bit planes of one size, sharing one step.
    static Surface planar(int width, int height, int planes, int step, const GuardOptions& options = {});
    // Planes of any geometry (subsampled chroma, wider samples...).
    static Surface planar(const std::vector<ImageGeometry>& planes, const GuardOptions& options = {});

    Surface(Surface&&) noexcept = default;
    Surface& operator=(Surface&&) noexcept = default;

    Surface clone() const;

    bool isPlanar() const { return planar_; }
    // Channels of the packed image, or number of planes.
    int channelCount() const;
    int width() const { return images_.front().width(); }
    int height() const { return images_.front().height(); }
    int step() const { return images_.front().step(); }

    GuardedImage& image(int i) { return images_.at(std::size_t(i)); }
    const GuardedImage& image(int i) const { return images_.at(std::size_t(i)); }
    int imageCount() const { return static_cast<int>(images_.size()); }

    // Row 0 of the packed image.
    uint8_t* data() { return images_.front().data(); }
    // The plane pointer array (row 0 of each plane), stable for the surface's life.
    uint8_t* const* planes() { return ptrs_.data(); }
    const uint8_t* const* constPlanes() { return constPtrs_.data(); }

    // 8-bit sample of channel c at (x, y): byte c of the packed pixel, or plane c.
    uint8_t& at(int x, int y, int c);
    uint8_t at(int x, int y, int c) const;

    void fillRandom(Rng& rng);
    void snapshot();
    // Protect channel c: byte c of each packed pixel, or the whole of plane c.
    void protectChannel(int c);

    ::testing::AssertionResult guardsIntact() const;
    ::testing::AssertionResult unchanged() const;

private:
    Surface() = default;
    void refreshPointers();

    bool planar_ = false;
    std::vector<GuardedImage> images_;
    std::vector<uint8_t*> ptrs_;
    std::vector<const uint8_t*> constPtrs_;
};

// Compare two surfaces of the same shape; reports the first differing (x, y, channel),
// where the channel of a planar surface is its plane index.
::testing::AssertionResult sameContents(const Surface& actual, const Surface& expected);

// The outcome of a call against what its reference gave: the status, every byte of the
// destination's regions, the destination's guards (and protected bytes), and a source
// left as it was.
::testing::AssertionResult sameOutcome(int32_t status, int32_t expectedStatus, const Surface& dst,
                                       const Surface& expected, const Surface& src);

}  // namespace pxktest

#endif
