#include "measure.h"

#include <cstdio>

#include <cstring>
#include <map>
#include <string>
#include <utility>

#include "report.h"

namespace bench {

namespace {

using benchmark::Counter;

// Source and destination of one memcpy size, allocated once per run.
struct CopyBuffers {
    AlignedBytes src;
    AlignedBytes dst;
};

CopyBuffers& copyBuffers(size_t bytes) {
    static std::map<size_t, CopyBuffers> buffers;
    auto it = buffers.find(bytes);
    if (it == buffers.end()) {
        CopyBuffers b{allocateAligned(bytes), allocateAligned(bytes)};
        fillRandom(b.src.get(), bytes, 0xC0FFEEu);
        it = buffers.emplace(bytes, std::move(b)).first;
    }
    return it->second;
}

// Rate counters: Google Benchmark divides kIsRate values by the measured time.
void setRates(benchmark::State& state, double pixelsPerIter, double bytesPerIter) {
    const double iterations = static_cast<double>(state.iterations());
    state.SetBytesProcessed(static_cast<int64_t>(bytesPerIter) * state.iterations());
    if (pixelsPerIter > 0) {
        state.SetItemsProcessed(static_cast<int64_t>(pixelsPerIter) * state.iterations());
        state.counters["Mpix/s"] = Counter(iterations * pixelsPerIter / 1e6, Counter::kIsRate);
    }
    state.counters["GB/s"] = Counter(iterations * bytesPerIter / 1e9, Counter::kIsRate);
}

// Runs a case's `before` now and its `after` when the measurement ends, however it ends.
class Hold {
public:
    explicit Hold(const Case& c) : c_(c) {
        if (c_.before) c_.before();
    }
    ~Hold() {
        if (c_.after) c_.after();
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

private:
    const Case& c_;
};

}  // namespace

// Bytes a pixel as a short label: "6", "4.5".
static std::string trafficLabel(double bytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", bytes);
    return text;
}

void measureCase(benchmark::State& state, const Case& c, int width, int height,
                 const std::string& reference) {
    const Image& src = imagePool().source(c.src, c.input, width, height);
    Image& dst = imagePool().destination(c.dst, width, height);
    state.SetLabel(std::string(layoutName(c.src)) + ">" + layoutName(c.dst) + " " +
                   trafficLabel(trafficPerPixel(c)) + "B/px");
    const Hold hold(c);

    // One call before timing: checks the status and brings both images into use.
    const int status = c.run(src, dst);
    if (status < 0) {
        state.SkipWithError(("status " + std::to_string(status)).c_str());
        return;
    }
    for (auto _ : state) {
        int result = c.run(src, dst);
        benchmark::DoNotOptimize(result);
        benchmark::ClobberMemory();
    }

    const double pixels = static_cast<double>(width) * height;
    const double bytes = pixels * trafficPerPixel(c);
    setRates(state, pixels, bytes);
    // our GB/s / memcpy GB/s == (bytes / memcpy rate) / time: a rate counter again.
    const double memcpyGBps = memcpyRate(reference);
    if (memcpyGBps > 0) {
        state.counters["x_memcpy"] =
            Counter(static_cast<double>(state.iterations()) * bytes / 1e9 / memcpyGBps, Counter::kIsRate);
    }
}

void measureMemcpy(benchmark::State& state, size_t bytes) {
    CopyBuffers& b = copyBuffers(bytes);
    std::memcpy(b.dst.get(), b.src.get(), bytes);
    state.SetLabel("copy " + std::to_string(bytes) + " B");
    for (auto _ : state) {
        std::memcpy(b.dst.get(), b.src.get(), bytes);
        benchmark::DoNotOptimize(b.dst.get());
        benchmark::ClobberMemory();
    }
    setRates(state, 0, 2.0 * static_cast<double>(bytes));
}

}  // namespace bench
