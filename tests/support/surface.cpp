#include "surface.h"

#include "random.h"

namespace pxktest {

Surface Surface::packed(int width, int height, int channels, int step, const GuardOptions& options) {
    Surface s;
    s.planar_ = false;
    s.images_.emplace_back(ImageGeometry{width, height, channels, 1, step}, options);
    s.refreshPointers();
    return s;
}

Surface Surface::planar(int width, int height, int planes, int step, const GuardOptions& options) {
    std::vector<ImageGeometry> g(std::size_t(planes), ImageGeometry{width, height, 1, 1, step});
    return planar(g, options);
}

Surface Surface::planar(const std::vector<ImageGeometry>& planes, const GuardOptions& options) {
    Surface s;
    s.planar_ = true;
    s.images_.reserve(planes.size());
    for (const ImageGeometry& g : planes) s.images_.emplace_back(g, options);
    s.refreshPointers();
    return s;
}

Surface Surface::clone() const {
    Surface s;
    s.planar_ = planar_;
    s.images_.reserve(images_.size());
    for (const GuardedImage& img : images_) s.images_.push_back(img.clone());
    s.refreshPointers();
    return s;
}

void Surface::refreshPointers() {
    ptrs_.clear();
    constPtrs_.clear();
    for (GuardedImage& img : images_) {
        ptrs_.push_back(img.data());
        constPtrs_.push_back(img.data());
    }
}

int Surface::channelCount() const { return planar_ ? static_cast<int>(images_.size()) : images_.front().channels(); }

uint8_t& Surface::at(int x, int y, int c) {
    return planar_ ? images_.at(std::size_t(c)).at(x, y, 0) : images_.front().at(x, y, c);
}

uint8_t Surface::at(int x, int y, int c) const {
    return planar_ ? images_.at(std::size_t(c)).at(x, y, 0) : images_.front().at(x, y, c);
}

void Surface::fillRandom(Rng& rng) {
    for (GuardedImage& img : images_) img.fillRandom(rng);
}

void Surface::snapshot() {
    for (GuardedImage& img : images_) img.snapshot();
}

void Surface::protectChannel(int c) {
    if (planar_) {
        images_.at(std::size_t(c)).protectWhere([](int, int, int) { return true; });
    } else {
        images_.front().protectChannel(c);
    }
}

::testing::AssertionResult Surface::guardsIntact() const {
    for (std::size_t i = 0; i < images_.size(); ++i) {
        ::testing::AssertionResult r = images_[i].guardsIntact();
        if (!r)
            return ::testing::AssertionFailure() << (planar_ ? "plane " + std::to_string(i) + ": " : "") << r.message();
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult Surface::unchanged() const {
    for (std::size_t i = 0; i < images_.size(); ++i) {
        ::testing::AssertionResult r = images_[i].unchanged();
        if (!r)
            return ::testing::AssertionFailure() << (planar_ ? "plane " + std::to_string(i) + ": " : "") << r.message();
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult sameContents(const Surface& actual, const Surface& expected) {
    if (actual.isPlanar() != expected.isPlanar() || actual.imageCount() != expected.imageCount()) {
        return ::testing::AssertionFailure() << "surfaces of different shape";
    }
    for (int i = 0; i < actual.imageCount(); ++i) {
        ::testing::AssertionResult r = sameRegion(actual.image(i), expected.image(i));
        if (!r) {
            if (actual.isPlanar())
                return ::testing::AssertionFailure() << "plane " << i << " (channel " << i << "): " << r.message();
            return r;
        }
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult sameOutcome(int32_t status, int32_t expectedStatus, const Surface& dst,
                                       const Surface& expected, const Surface& src) {
    if (status != expectedStatus) {
        return ::testing::AssertionFailure() << "status " << status << ", expected " << expectedStatus;
    }
    ::testing::AssertionResult r = sameContents(dst, expected);
    if (!r) return r;
    r = dst.guardsIntact();
    if (!r) return ::testing::AssertionFailure() << "destination: " << r.message();
    r = src.unchanged();
    if (!r) return ::testing::AssertionFailure() << "source written: " << r.message();
    return ::testing::AssertionSuccess();
}

}  // namespace pxktest
