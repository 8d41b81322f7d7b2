// pxkcc_strips_bench: one thread against the strip helper (include/pxkcc_strips.h) on a
// pool of 2 workers, for a few conversions of 3840x2160 frames. Prints the best time
// of each over the repetitions and the scaling (one-thread time over strip time).
//
//     pxkcc_strips_bench [--workers=N] [--strips=N] [--repeat=N] [--size=WxH]
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "pxkcc_strips.h"

namespace {

// Workers that live as long as the pool and take tasks from one queue.
class WorkerPool {
public:
    explicit WorkerPool(int workers) {
        for (int i = 0; i < workers; ++i) threads_.emplace_back([this] { work(); });
    }
    ~WorkerPool() {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            stopping_ = true;
        }
        wake_.notify_all();
        for (std::thread& t : threads_) t.join();
    }
    void operator()(std::function<void()> task) {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            tasks_.push_back(std::move(task));
        }
        wake_.notify_one();
    }

private:
    void work() {
        for (;;) {
            std::function<void()> task;
            {
                std::unique_lock<std::mutex> lock(mutex_);
                wake_.wait(lock, [this] { return stopping_ || !tasks_.empty(); });
                if (tasks_.empty()) return;
                task = std::move(tasks_.front());
                tasks_.pop_front();
            }
            task();
        }
    }
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> tasks_;
    std::vector<std::thread> threads_;
    bool stopping_ = false;
};

struct Frame {
    int w, h;
    std::vector<uint8_t> rgb, out, y, cb, cr, c2;
    Frame(int width, int height)
        : w(width), h(height), rgb(std::size_t(3) * w * h), out(std::size_t(3) * w * h), y(std::size_t(w) * h),
          cb(std::size_t(w) * h),
          cr(std::size_t(w) * h), c2(std::size_t(2) * w * h) {
        for (std::size_t i = 0; i < rgb.size(); ++i) rgb[i] = uint8_t(i * 2654435761u >> 24);
        for (std::size_t i = 0; i < y.size(); ++i) y[i] = cb[i] = cr[i] = uint8_t(i * 40503u >> 8);
        for (std::size_t i = 0; i < c2.size(); ++i) c2[i] = uint8_t(i * 69069u >> 16);
    }
};

// One conversion: the export's name and the call for a strip of rows.
struct Case {
    const char* name;
    std::function<PxkResult(Frame&, const pxkcc::Strip&)> call;
};

std::vector<Case> cases() {
    using pxkcc::stripRow;
    return {
        {"pxkiRGBToYCbCr420_8u_C3P3R",
         [](Frame& f, const pxkcc::Strip& s) {
             uint8_t* dst[3] = {stripRow(f.y.data(), f.w, s), stripRow(f.cb.data(), f.w / 2, s, 2),
                                stripRow(f.cr.data(), f.w / 2, s, 2)};
             const int32_t steps[3] = {f.w, f.w / 2, f.w / 2};
             return pxkiRGBToYCbCr420_8u_C3P3R(stripRow(f.rgb.data(), 3 * f.w, s), 3 * f.w, dst, steps,
                                              PxkSize{f.w, s.height});
         }},
        {"pxkiYCbCr420ToRGB_8u_P3C3R",
         [](Frame& f, const pxkcc::Strip& s) {
             const uint8_t* src[3] = {stripRow(f.y.data(), f.w, s), stripRow(f.cb.data(), f.w / 2, s, 2),
                                      stripRow(f.cr.data(), f.w / 2, s, 2)};
             const int32_t steps[3] = {f.w, f.w / 2, f.w / 2};
             return pxkiYCbCr420ToRGB_8u_P3C3R(src, steps, stripRow(f.rgb.data(), 3 * f.w, s), 3 * f.w,
                                              PxkSize{f.w, s.height});
         }},
        {"pxkiRGBToYCbCr_8u_C3R",
         [](Frame& f, const pxkcc::Strip& s) {
             return pxkiRGBToYCbCr_8u_C3R(stripRow(f.rgb.data(), 3 * f.w, s), 3 * f.w,
                                          stripRow(f.out.data(), 3 * f.w, s), 3 * f.w, PxkSize{f.w, s.height});
         }},
        {"pxkiYCbCr422ToRGB_8u_C2C3R",
         [](Frame& f, const pxkcc::Strip& s) {
             return pxkiYCbCr422ToRGB_8u_C2C3R(stripRow(f.c2.data(), 2 * f.w, s), 2 * f.w,
                                               stripRow(f.rgb.data(), 3 * f.w, s), 3 * f.w, PxkSize{f.w, s.height});
         }},
        {"pxkiGammaFwd_8u_C3R",
         [](Frame& f, const pxkcc::Strip& s) {
             return pxkiGammaFwd_8u_C3R(stripRow(f.rgb.data(), 3 * f.w, s), 3 * f.w, stripRow(f.out.data(), 3 * f.w, s),
                                        3 * f.w, PxkSize{f.w, s.height});
         }},
    };
}

double seconds(const std::function<void()>& run, int repeat) {
    double best = 1e30;
    for (int r = 0; r < repeat; ++r) {
        const auto start = std::chrono::steady_clock::now();
        run();
        const std::chrono::duration<double> d = std::chrono::steady_clock::now() - start;
        best = std::min(best, d.count());
    }
    return best;
}

int option(int argc, char** argv, const char* name, int fallback) {
    const std::size_t n = std::strlen(name);
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], name, n) == 0 && argv[i][n] == '=') return std::atoi(argv[i] + n + 1);
    }
    return fallback;
}

}  // namespace

int main(int argc, char** argv) {
    const int workers = option(argc, argv, "--workers", 2);
    const int strips = option(argc, argv, "--strips", 2 * workers);
    const int repeat = option(argc, argv, "--repeat", 10);
    int w = 3840, h = 2160;
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], "--size=", 7) == 0 && std::sscanf(argv[i] + 7, "%dx%d", &w, &h) != 2) {
            std::fprintf(stderr, "--size takes WxH\n");
            return 1;
        }
    }
    if (w < 2 || h < 2 || w % 2 != 0 || h % 2 != 0 || workers < 1 || strips < 1 || repeat < 1) {
        std::fprintf(stderr, "sizes: even width and height; workers, strips, repeat at least 1\n");
        return 1;
    }
    Frame frame(w, h);
    WorkerPool pool(workers);
    std::printf("%dx%d, best of %d; strips: %d over %d workers\n", w, h, repeat, strips, workers);
    std::printf("%-30s %12s %12s %8s\n", "export", "1 thread ms", "strips ms", "scaling");
    for (const Case& c : cases()) {
        PxkResult one = pxkOk, split = pxkOk;
        const double t1 = seconds([&] { one = c.call(frame, pxkcc::Strip{0, h}); }, repeat);
        const double t2 = seconds(
            [&] {
                split = pxkcc::runInStrips(c.name, h, strips, pool,
                                           [&](const pxkcc::Strip& s) { return c.call(frame, s); });
            },
            repeat);
        if (one != pxkOk || split != pxkOk) {
            std::fprintf(stderr, "%s: status %d in one call, %d in strips\n", c.name, one, split);
            return 1;
        }
        std::printf("%-30s %12.2f %12.2f %7.2fx\n", c.name, t1 * 1e3, t2 * 1e3, t1 / t2);
    }
    return 0;
}
