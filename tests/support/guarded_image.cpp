#include "guarded_image.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "random.h"

namespace pxktest {

GuardedImage::GuardedImage(const ImageGeometry& geometry, const GuardOptions& options) : geo_(geometry), opt_(options) {
    if (geo_.channels < 1 || geo_.sampleBytes < 1) throw std::invalid_argument("bad image geometry");
    allocate();
}

GuardedImage::GuardedImage(int width, int height, int channels, int step, const GuardOptions& options)
    : GuardedImage(ImageGeometry{width, height, channels, 1, step}, options) {}

GuardedImage::~GuardedImage() { release(); }

GuardedImage::GuardedImage(GuardedImage&& o) noexcept { *this = std::move(o); }

GuardedImage& GuardedImage::operator=(GuardedImage&& o) noexcept {
    if (this != &o) {
        release();
        geo_ = o.geo_;
        opt_ = o.opt_;
        total_ = o.total_;
        lowStart_ = o.lowStart_;
        span_ = o.span_;
        row0Off_ = o.row0Off_;
        base_ = o.base_;
        row0_ = o.row0_;
        mapping_ = o.mapping_;
        mappingSize_ = o.mappingSize_;
        kind_ = std::move(o.kind_);
        baseline_ = std::move(o.baseline_);
        o.base_ = nullptr;
        o.row0_ = nullptr;
        o.mapping_ = nullptr;
        o.mappingSize_ = 0;
        o.total_ = 0;
    }
    return *this;
}

void GuardedImage::allocate() {
    const int64_t r = static_cast<int64_t>(geo_.rowBytes());
    const int64_t h = geo_.height > 0 ? geo_.height : 0;
    const int64_t s = geo_.step;
    int64_t minOff = 0;
    int64_t maxEnd = 0;
    if (h > 0 && r > 0) {
        const int64_t lastOff = (h - 1) * s;
        minOff = std::min<int64_t>(0, lastOff);
        maxEnd = std::max<int64_t>(0, lastOff) + r;
    }
    span_ = static_cast<std::size_t>(maxEnd - minOff);
    lowStart_ = opt_.before + opt_.misalign;
    total_ = lowStart_ + span_ + opt_.after;
    row0Off_ = static_cast<std::ptrdiff_t>(lowStart_) - static_cast<std::ptrdiff_t>(minOff);

    if (opt_.fenceAfter) {
        const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t dataPages = (total_ + page - 1) / page * page;
        mappingSize_ = dataPages + page;
        void* m = mmap(nullptr, mappingSize_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m == MAP_FAILED) throw std::runtime_error("mmap failed");
        mapping_ = m;
        uint8_t* fence = static_cast<uint8_t*>(m) + dataPages;
        if (mprotect(fence, page, PROT_NONE) != 0) throw std::runtime_error("mprotect failed");
        base_ = fence - total_;
    } else {
        base_ = new uint8_t[total_ > 0 ? total_ : 1];
    }
    row0_ = base_ + row0Off_;

    kind_.assign(total_, kGuard);
    for (int64_t y = 0; y < h && r > 0; ++y) {
        const std::size_t start = static_cast<std::size_t>(row0Off_ + y * s);
        std::fill(kind_.begin() + static_cast<std::ptrdiff_t>(start),
                  kind_.begin() + static_cast<std::ptrdiff_t>(start + static_cast<std::size_t>(r)), kRegion);
    }
    std::fill(base_, base_ + total_, uint8_t(0));
    baseline_.assign(base_, base_ + total_);
}

void GuardedImage::release() {
    if (mapping_) {
        munmap(mapping_, mappingSize_);
    } else {
        delete[] base_;
    }
    mapping_ = nullptr;
    base_ = nullptr;
    row0_ = nullptr;
}

GuardedImage GuardedImage::clone() const {
    GuardedImage copy(geo_, opt_);
    std::copy(base_, base_ + total_, copy.base_);
    copy.kind_ = kind_;
    copy.baseline_ = baseline_;
    return copy;
}

template <typename F>
void GuardedImage::forEachRegionByte(F&& f) {
    const std::size_t pb = geo_.pixelBytes();
    for (int y = 0; y < geo_.height; ++y) {
        uint8_t* p = row(y);
        for (int x = 0; x < geo_.width; ++x) {
            for (std::size_t b = 0; b < pb; ++b) {
                f(p + std::size_t(x) * pb + b, x, y, static_cast<int>(b));
            }
        }
    }
}

void GuardedImage::fillRandom(Rng& rng) {
    rng.fill(base_, total_);
    snapshot();
}

void GuardedImage::fill(uint8_t regionValue, uint8_t guardValue) {
    for (std::size_t i = 0; i < total_; ++i) base_[i] = kind_[i] == kGuard ? guardValue : regionValue;
    snapshot();
}

void GuardedImage::fillRegion(const std::function<uint8_t(int x, int y, int byteInPixel)>& value) {
    forEachRegionByte([&](uint8_t* p, int x, int y, int b) { *p = value(x, y, b); });
    snapshot();
}

void GuardedImage::protectWhere(const std::function<bool(int x, int y, int c)>& isProtected) {
    for (int y = 0; y < geo_.height; ++y) {
        for (int x = 0; x < geo_.width; ++x) {
            for (int c = 0; c < geo_.channels; ++c) {
                if (!isProtected(x, y, c)) continue;
                const std::size_t off = static_cast<std::size_t>(sampleAddress(x, y, c) - base_);
                for (int b = 0; b < geo_.sampleBytes; ++b) kind_[off + std::size_t(b)] = kProtected;
            }
        }
    }
}

void GuardedImage::protectChannel(int channel) {
    protectWhere([channel](int, int, int c) { return c == channel; });
}

void GuardedImage::clearProtection() {
    for (auto& k : kind_) {
        if (k == kProtected) k = kRegion;
    }
}

void GuardedImage::snapshot() { std::copy(base_, base_ + total_, baseline_.begin()); }

std::string GuardedImage::describeOffset(std::size_t o) const {
    std::ostringstream s;
    if (o < lowStart_) {
        s << (lowStart_ - o) << " byte(s) below the lowest row byte";
        return s.str();
    }
    if (o >= lowStart_ + span_) {
        s << (o - (lowStart_ + span_) + 1) << " byte(s) above the highest row byte";
        return s.str();
    }
    const int64_t r = static_cast<int64_t>(geo_.rowBytes());
    const int64_t pb = static_cast<int64_t>(geo_.pixelBytes());
    const int64_t rel0 = static_cast<int64_t>(o) - static_cast<int64_t>(row0Off_);
    for (int y = 0; y < geo_.height; ++y) {
        const int64_t rel = rel0 - int64_t(y) * geo_.step;
        if (rel >= 0 && rel < r) {
            const int64_t x = rel / pb;
            const int64_t inPixel = rel % pb;
            s << "row " << y << ", pixel " << x << ", sample " << inPixel / geo_.sampleBytes;
            if (geo_.sampleBytes > 1) s << " byte " << inPixel % geo_.sampleBytes;
            return s.str();
        }
    }
    // Step padding: name the row whose start lies closest below.
    int best = -1;
    int64_t bestRel = 0;
    for (int y = 0; y < geo_.height; ++y) {
        const int64_t rel = rel0 - int64_t(y) * geo_.step;
        if (rel >= 0 && (best < 0 || rel < bestRel)) {
            best = y;
            bestRel = rel;
        }
    }
    s << "step padding, " << bestRel << " byte(s) after the start of row " << best;
    return s.str();
}

namespace {
std::string hexByte(uint8_t v) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "0x%02x", v);
    return buf;
}
}  // namespace

::testing::AssertionResult GuardedImage::guardsIntact() const {
    std::size_t bad = 0;
    std::size_t first = 0;
    for (std::size_t i = 0; i < total_; ++i) {
        if (kind_[i] != kRegion && base_[i] != baseline_[i]) {
            if (bad == 0) first = i;
            ++bad;
        }
    }
    if (bad == 0) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << bad << " " << (kind_[first] == kGuard ? "guard" : "protected")
                                         << " byte(s) changed; first at " << describeOffset(first) << ": was "
                                         << hexByte(baseline_[first]) << ", now " << hexByte(base_[first]) << " (image "
                                         << geo_.width << "x" << geo_.height << ", " << geo_.channels
                                         << " channel(s), step " << geo_.step << ")";
}

::testing::AssertionResult GuardedImage::unchanged() const {
    std::size_t bad = 0;
    std::size_t first = 0;
    for (std::size_t i = 0; i < total_; ++i) {
        if (base_[i] != baseline_[i]) {
            if (bad == 0) first = i;
            ++bad;
        }
    }
    if (bad == 0) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << bad << " byte(s) changed; first at " << describeOffset(first) << ": was "
                                         << hexByte(baseline_[first]) << ", now " << hexByte(base_[first]) << " (image "
                                         << geo_.width << "x" << geo_.height << ", step " << geo_.step << ")";
}

namespace {
std::string sampleText(const uint8_t* p, int sampleBytes) {
    if (sampleBytes == 1) return std::to_string(unsigned(*p));
    std::string s = "0x";
    for (int b = sampleBytes - 1; b >= 0; --b) s += hexByte(p[b]).substr(2);  // little endian
    return s;
}
}  // namespace

::testing::AssertionResult sameRegion(const GuardedImage& actual, const GuardedImage& expected) {
    const ImageGeometry& a = actual.geometry();
    const ImageGeometry& e = expected.geometry();
    if (a.width != e.width || a.height != e.height || a.channels != e.channels || a.sampleBytes != e.sampleBytes) {
        return ::testing::AssertionFailure() << "geometries differ: " << a.width << "x" << a.height << "x" << a.channels
                                             << " vs " << e.width << "x" << e.height << "x" << e.channels;
    }
    std::size_t bad = 0;
    int fx = 0, fy = 0, fc = 0;
    for (int y = 0; y < a.height; ++y) {
        for (int x = 0; x < a.width; ++x) {
            for (int c = 0; c < a.channels; ++c) {
                if (std::memcmp(actual.sampleAddress(x, y, c), expected.sampleAddress(x, y, c),
                                std::size_t(a.sampleBytes)) != 0) {
                    if (bad == 0) {
                        fx = x;
                        fy = y;
                        fc = c;
                    }
                    ++bad;
                }
            }
        }
    }
    if (bad == 0) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << bad << " sample(s) differ; first at (x=" << fx << ", y=" << fy
                                         << ", channel=" << fc << "): got "
                                         << sampleText(actual.sampleAddress(fx, fy, fc), a.sampleBytes) << ", expected "
                                         << sampleText(expected.sampleAddress(fx, fy, fc), a.sampleBytes) << " (image "
                                         << a.width << "x" << a.height << ", step " << a.step << ")";
}

}  // namespace pxktest
