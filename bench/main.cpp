// pxkcc_bench: every export at one image size, one thread, next to memcpy of the
// same traffic and to the nearest peer calls that were found at configure time.
//
//   pxkcc_bench [--lib=PATH ...] [--quick] [--size=WxH] [--reps=N] [--min-time=S]
//               [--no-peers]
//               [Google Benchmark flags, e.g. --benchmark_filter=RGBToYCbCr|memcpy]
//
// Each --lib names a build of the library (e.g. one per build target); all of them
// are measured in the same run, each export's builds one after the other. Without
// --lib, the build of this tree is measured. Our rows are named by export and build,
// "pxkiRGBToYCbCr_8u_C3R [s2]", the build labelled by its version record's target code.
//
// Rows run in table order: memcpy references first, then ours, then the peers. A
// filter that drops the memcpy rows leaves "x memcpy" empty.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "cases.h"
#include "library.h"
#include "measure.h"
#include "report.h"

namespace {

struct Options {
    int width = 1920;
    int height = 1080;
    int repetitions = 5;
    double minTime = 0.3;       // seconds per repetition
    double warmUpTime = 0.1;    // seconds before each benchmark's first repetition
    bool peers = true;
    std::vector<std::string> libraries;  // empty: the build of this tree
};

void printUsage() {
    std::printf(
        "pxkcc_bench options (any other flag goes to Google Benchmark):\n"
        "  --lib=PATH     measure the library build at PATH; repeat to measure several\n"
        "                 builds side by side (default: %s)\n"
        "  --quick        1 repetition of >= 0.05 s per row (default: 5 of >= 0.3 s, median)\n"
        "  --size=WxH     image size (default 1920x1080)\n"
        "  --reps=N       repetitions per row\n"
        "  --min-time=S   minimum seconds per repetition\n"
        "  --no-peers     skip the peer rows\n\n",
        bench::defaultLibraryPath());
}

bool startsWith(const char* arg, const char* prefix) {
    return std::strncmp(arg, prefix, std::strlen(prefix)) == 0;
}

// Takes our own options out of argv; the rest is left for Google Benchmark.
bool parseOptions(int& argc, char** argv, Options& o) {
    int kept = 1;
    for (int i = 1; i < argc; ++i) {
        const char* a = argv[i];
        if (std::strcmp(a, "--quick") == 0) {
            o.repetitions = 1;
            o.minTime = 0.05;
            o.warmUpTime = 0.02;
        } else if (startsWith(a, "--size=")) {
            if (std::sscanf(a + 7, "%dx%d", &o.width, &o.height) != 2 || o.width < 1 || o.height < 1) {
                std::fprintf(stderr, "bad --size: %s\n", a);
                return false;
            }
        } else if (startsWith(a, "--reps=")) {
            o.repetitions = std::atoi(a + 7);
            if (o.repetitions < 1) return false;
        } else if (startsWith(a, "--min-time=")) {
            o.minTime = std::atof(a + 11);
            if (!(o.minTime > 0)) return false;
        } else if (std::strcmp(a, "--no-peers") == 0) {
            o.peers = false;
        } else if (startsWith(a, "--lib=")) {
            if (a[6] == '\0') {
                std::fprintf(stderr, "empty --lib\n");
                return false;
            }
            o.libraries.push_back(a + 6);
        } else {
            if (std::strcmp(a, "--help") == 0) printUsage();
            argv[kept++] = argv[i];
        }
    }
    argc = kept;
    return true;
}

void configure(benchmark::internal::Benchmark* b, const Options& o) {
    b->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->MinTime(o.minTime)
        ->MinWarmUpTime(o.warmUpTime)
        ->Repetitions(o.repetitions)
        ->DisplayAggregatesOnly(o.repetitions > 1);
}

size_t memcpyBytesFor(const bench::Case& c, const Options& o) {
    const size_t pixels = static_cast<size_t>(o.width) * static_cast<size_t>(o.height);
    return static_cast<size_t>(static_cast<double>(pixels) * bench::trafficPerPixel(c) / 2);
}

}  // namespace

int main(int argc, char** argv) {
    Options o;
    if (!parseOptions(argc, argv, o)) {
        printUsage();
        return 2;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;

    if (o.libraries.empty()) o.libraries.push_back(bench::defaultLibraryPath());
    std::vector<bench::Library> libraries;
    std::vector<bench::Case> ours;
    std::string error;
    if (!bench::loadLibraries(o.libraries, libraries, error) || !bench::ourCases(libraries, ours, error)) {
        std::fprintf(stderr, "pxkcc_bench: %s\n", error.c_str());
        return 1;
    }
    std::vector<bench::Case> peers;
    if (o.peers) {
        for (auto& c : bench::openCvCases()) peers.push_back(c);
        for (auto& c : bench::libyuvCases()) peers.push_back(c);
    }
    std::vector<bench::Case> all = ours;
    all.insert(all.end(), peers.begin(), peers.end());

    // memcpy references first, so that each conversion finds its reference rate.
    std::set<size_t> copySizes;
    for (const auto& c : all) copySizes.insert(memcpyBytesFor(c, o));
    for (size_t bytes : copySizes) {
        auto* b = benchmark::RegisterBenchmark(bench::memcpyName(bytes).c_str(),
                                               [bytes](benchmark::State& s) { bench::measureMemcpy(s, bytes); });
        configure(b, o);
    }
    for (const auto& c : all) {
        const std::string reference = bench::memcpyName(memcpyBytesFor(c, o));
        const int w = o.width, h = o.height;
        auto* b = benchmark::RegisterBenchmark(
            c.name.c_str(), [c, w, h, reference](benchmark::State& s) { bench::measureCase(s, c, w, h, reference); });
        configure(b, o);
    }

    std::string peerNames;
#ifdef PXKCC_BENCH_HAVE_OPENCV
    peerNames += " OpenCV";
#endif
#ifdef PXKCC_BENCH_HAVE_LIBYUV
    peerNames += " libyuv";
#endif
    if (peerNames.empty()) peerNames = " none";
    if (!o.peers) peerNames += " (skipped: --no-peers)";
    std::printf("pxkcc_bench: image %dx%d, %d repetition(s) of >= %.2f s per row, peers built in:%s\n",
                o.width, o.height, o.repetitions, o.minTime, peerNames.c_str());
    for (const bench::Library& lib : libraries) {
        const PxkVersionRecord* v = lib.version;
        const std::string same = lib.sameAs.empty() ? "" : " (same file as [" + lib.sameAs + "])";
        std::printf("  [%s] %s %s, %s%s\n", lib.label.c_str(), v->name ? v->name : "?",
                    v->version ? v->version : "?", lib.path.c_str(), same.c_str());
    }

    bench::TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    bench::printPeerSummary(ours, libraries, peers, reporter.results(), o.width, o.height);
    benchmark::Shutdown();
    return 0;
}
