// Image buffers for tests: a region of rows laid out with any signed byte step and
// surrounded by guard bytes, so that a test can tell whether a call wrote anything it
// must not (outside the region, in the step padding, or in bytes of the region that
// the call must leave as they were, such as alpha bytes).
#ifndef PXKCC_TEST_SUPPORT_GUARDED_IMAGE_H
#define PXKCC_TEST_SUPPORT_GUARDED_IMAGE_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace pxktest {

class Rng;

// Where and how the region is placed in its allocation.
struct GuardOptions {
    std::size_t before = 64;   // guard bytes below the lowest row byte
    std::size_t after = 64;    // guard bytes above the highest row byte
    std::size_t misalign = 0;  // extra guard bytes below, to move the region's address
    // Put an inaccessible page right after the allocation (after the `after` guard).
    // With after == 0 any read past the highest row byte faults: use it for sources.
    bool fenceAfter = false;
};

// Geometry of one image: `width` pixels of `channels` samples of `sampleBytes` bytes,
// `height` rows, row y starting y * step bytes after row 0 (step may be larger than
// the row, smaller, odd, zero or negative).
struct ImageGeometry {
    int width = 0;
    int height = 0;
    int channels = 1;
    int sampleBytes = 1;
    int step = 0;

    std::size_t pixelBytes() const { return std::size_t(channels) * std::size_t(sampleBytes); }
    std::size_t rowBytes() const { return std::size_t(width > 0 ? width : 0) * pixelBytes(); }
};

class GuardedImage {
public:
    GuardedImage(const ImageGeometry& geometry, const GuardOptions& options = {});
    GuardedImage(int width, int height, int channels, int step, const GuardOptions& options = {});
    ~GuardedImage();
    GuardedImage(GuardedImage&&) noexcept;
    GuardedImage& operator=(GuardedImage&&) noexcept;
    GuardedImage(const GuardedImage&) = delete;
    GuardedImage& operator=(const GuardedImage&) = delete;

    // A new image with the same geometry, options, bytes (guards included), marks of
    // protected bytes and baseline.
    GuardedImage clone() const;

    const ImageGeometry& geometry() const { return geo_; }
    int width() const { return geo_.width; }
    int height() const { return geo_.height; }
    int channels() const { return geo_.channels; }
    int sampleBytes() const { return geo_.sampleBytes; }
    int step() const { return geo_.step; }
    std::size_t rowBytes() const { return geo_.rowBytes(); }

    // Start of row 0, the pointer to hand to a function under test. For a negative
    // step this is the highest row in memory and the rows run downward from it.
    uint8_t* data() { return row0_; }
    const uint8_t* data() const { return row0_; }
    uint8_t* row(int y) { return row0_ + std::ptrdiff_t(y) * geo_.step; }
    const uint8_t* row(int y) const { return row0_ + std::ptrdiff_t(y) * geo_.step; }

    // First byte of sample `c` of pixel (x, y).
    uint8_t* sampleAddress(int x, int y, int c) {
        return row(y) + std::size_t(x) * geo_.pixelBytes() + std::size_t(c) * std::size_t(geo_.sampleBytes);
    }
    const uint8_t* sampleAddress(int x, int y, int c) const {
        return row(y) + std::size_t(x) * geo_.pixelBytes() + std::size_t(c) * std::size_t(geo_.sampleBytes);
    }
    // 8-bit sample access.
    uint8_t& at(int x, int y, int c = 0) { return *sampleAddress(x, y, c); }
    uint8_t at(int x, int y, int c = 0) const { return *sampleAddress(x, y, c); }
    // Typed sample access for wider samples (unaligned-safe).
    template <typename T>
    T get(int x, int y, int c = 0) const {
        T v;
        std::memcpy(&v, sampleAddress(x, y, c), sizeof(T));
        return v;
    }
    template <typename T>
    void set(int x, int y, int c, T v) {
        std::memcpy(sampleAddress(x, y, c), &v, sizeof(T));
    }

    // Filling. Each of these also takes a new baseline (see snapshot()).
    void fillRandom(Rng& rng);  // every byte, guards included
    void fill(uint8_t regionValue, uint8_t guardValue);
    void fillRegion(const std::function<uint8_t(int x, int y, int byteInPixel)>& value);

    // Mark bytes of the region that a call must leave as they were.
    void protectChannel(int c);
    void protectWhere(const std::function<bool(int x, int y, int c)>& isProtected);
    void clearProtection();

    // Record the current contents as the baseline of the checks below.
    void snapshot();

    // Every guard byte and every protected byte equals the baseline.
    ::testing::AssertionResult guardsIntact() const;
    // Every byte of the allocation equals the baseline (for sources, and for
    // destinations of calls that must fail).
    ::testing::AssertionResult unchanged() const;

    // Human-readable place of an allocation offset, for messages.
    std::string describeOffset(std::size_t offset) const;

private:
    enum : uint8_t { kGuard = 0, kRegion = 1, kProtected = 2 };
    void allocate();
    void release();
    template <typename F>
    void forEachRegionByte(F&& f);

    ImageGeometry geo_;
    GuardOptions opt_;
    std::size_t total_ = 0;       // bytes in the checked allocation
    std::size_t lowStart_ = 0;    // allocation offset of the lowest row byte
    std::size_t span_ = 0;        // bytes from the lowest row byte to the highest + 1
    std::ptrdiff_t row0Off_ = 0;  // allocation offset of row 0
    uint8_t* base_ = nullptr;     // first byte of the checked allocation
    uint8_t* row0_ = nullptr;
    void* mapping_ = nullptr;  // fenced allocations
    std::size_t mappingSize_ = 0;
    std::vector<uint8_t> kind_;
    std::vector<uint8_t> baseline_;
};

// Compare the regions of two images of the same geometry sample by sample. Reports the
// first difference as (x, y, channel) with both values, and the number of differences.
::testing::AssertionResult sameRegion(const GuardedImage& actual, const GuardedImage& expected);

}  // namespace pxktest

#endif
