// Benchmark images: pixel layouts, aligned buffers and a pool that allocates each
// source and destination image once per run.
#ifndef PXKCC_BENCH_IMAGE_H
#define PXKCC_BENCH_IMAGE_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <tuple>

namespace bench {

// How the pixels of one side of a conversion sit in memory.
enum class Layout {
    C3,   // 3 interleaved bytes per pixel
    AC4,  // 4 bytes per pixel, the 4th is alpha (not converted)
    C4,   // 4 bytes per pixel, alpha written from an argument
    P3,   // three planes of 1 byte per pixel, one common step
    P4,   // four planes of 1 byte per pixel, one common step
    C2,   // 2 bytes per pixel: Y0 Cb Y1 Cr for each pair
    P420, // three planes, chroma at half width and half height (steps as an array)
    P422, // three planes, chroma at half width (steps as an array)
    P411, // three planes, chroma at quarter width (steps as an array)
    P2,   // a Y plane and a plane of chroma pairs at half height (a step each)
    V210, // 32-bit words, six pixels in four words (10-bit 4:2:2)
    W16,  // one 16-bit word a pixel
    // Wider samples and packed 12-bit samples (YCoCg, tone mapping, 12-bit packing)
    C3W16,  // three interleaved 16-bit samples a pixel
    C4W16,  // four interleaved 16-bit samples a pixel
    P3W16,  // three planes of one 16-bit sample a pixel, one common step
    P3W32,  // three planes of one 32-bit sample a pixel, one common step
    F32,    // one float a pixel
    B12,    // 12-bit samples packed two in three bytes
    C1,     // one byte a pixel (a Bayer mosaic)
    // The gamma members: four 16-bit samples, the 4th alpha and not converted; floats
    // filled with values in [0, 1), interleaved or one a plane.
    AC4W16,
    C3F32,
    AC4F32,
    P3F32,
    // Bit-depth reduction sides: packed samples of 1, 2 or 4 bytes.
    G8,     // one byte a pixel
    W16C3,  // three 16-bit samples a pixel
    W16C4,  // four 16-bit samples a pixel
    F32C1,  // one float a pixel
    F32C3,  // three floats a pixel
    F32C4,  // four floats a pixel
    // Gray and twist: packed pixels of wider samples by their size in bytes (16u C3 is
    // Px6, 32f AC4 is Px16, 64f C3 is Px24, ...)
    Px4, Px6, Px8, Px12, Px16, Px24, Px32,
    // Lab: three planes of one double a pixel, one common step (filled with [0, 1)).
    P3F64
};

// Bytes of one interleaved pixel (packed layouts; one sample for planar ones).
int bytesPerPixel(Layout layout);
// Bytes that four pixels occupy, all planes together: what a conversion reads or
// writes of this layout.
int bytesPerFourPixels(Layout layout);
// Bytes a pixel occupies on average, all planes together (bytesPerFourPixels / 4, and
// 16 / 6 for V210).
double bytesMovedPerPixel(Layout layout);
// Bytes of one row of `width` pixels (of each plane, for planar layouts).
size_t rowBytesOf(Layout layout, int width);
bool isPlanar(Layout layout);
int planeCount(Layout layout);
const char* layoutName(Layout layout);

// What the samples of a source image hold; decides the value range of the fill.
enum class Content {
    Rgb,    // any byte
    YCbCr,  // studio range: Y 16..235, Cb and Cr 16..240
    Light,      // F32 images: floats in [0, 1000); other layouts: any byte
    UnitFloats,  // float samples in 0..1 (float layouts)
    Float32,  // 32-bit floats in [0, 1)
    Float64   // 64-bit floats in [0, 1)
};

// Bytes freed with std::free (std::aligned_alloc storage).
struct FreeDeleter {
    void operator()(uint8_t* p) const;
};
using AlignedBytes = std::unique_ptr<uint8_t, FreeDeleter>;

// 64-byte aligned, zero-filled allocation; the size is rounded up to a multiple of 64.
AlignedBytes allocateAligned(size_t bytes);

// Fills `bytes` with a deterministic pseudo-random sequence (same seed, same bytes).
void fillRandom(uint8_t* data, size_t bytes, uint32_t seed);

// One image: a packed buffer, or three or four planes of the same step inside one
// allocation.
class Image {
public:
    Image(Layout layout, int width, int height);

    Layout layout() const { return layout_; }
    int width() const { return width_; }
    int height() const { return height_; }
    int32_t step() const { return step_; }

    // Packed layouts: the first row. Planar: the first plane.
    uint8_t* data() { return planes_[0]; }
    const uint8_t* data() const { return planes_[0]; }

    // Planar layout: the plane pointers (for packed ones only [0] is set).
    uint8_t* const* planes() { return planes_; }
    const uint8_t* const* planes() const { return planes_; }
    // One step a plane, all the same (every plane is allocated at full size).
    const int32_t* steps() const { return steps_; }

    // Pseudo-random content in the value range of `content` (floats in [0, 1) for the
    // float layouts, whatever the content).
    void fill(Content content, uint32_t seed);

private:
    void fillUnitFloats(uint32_t& state);
    Layout layout_;
    int width_;
    int height_;
    int32_t step_;
    size_t planeBytes_;
    AlignedBytes storage_;
    uint8_t* planes_[4];
    int32_t steps_[4];
};

// Images are allocated on first use and kept for the whole run, so that every
// benchmark finds its buffers already faulted in and filled.
class ImagePool {
public:
    const Image& source(Layout layout, Content content, int width, int height);
    Image& destination(Layout layout, int width, int height);

private:
    std::map<std::tuple<int, int, int, int>, std::unique_ptr<Image>> sources_;
    std::map<std::tuple<int, int, int>, std::unique_ptr<Image>> destinations_;
};

ImagePool& imagePool();

}  // namespace bench

#endif
