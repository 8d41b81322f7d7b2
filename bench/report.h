// Console table of the benchmark runs, the memcpy reference rates they are
// compared with, and the summary against the peers.
#ifndef PXKCC_BENCH_REPORT_H
#define PXKCC_BENCH_REPORT_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "cases.h"
#include "library.h"

namespace bench {

// Name of the memcpy benchmark that copies `bytes` bytes.
std::string memcpyName(size_t bytes);

// Read+written GB/s of a finished memcpy benchmark (its median when repeated);
// 0 when it has not run (filtered out, or not yet).
double memcpyRate(const std::string& name);

// What the table keeps of one benchmark (the median of the repetitions if repeated).
struct Measured {
    double mpixPerSec = 0;  // 0 for memcpy
    double gbPerSec = 0;    // bytes read + written
    double xMemcpy = 0;     // 0 when the reference is missing
    double spreadPct = -1;  // standard deviation / mean of GB/s, -1 if not repeated
    std::string error;
};

// Prints one line per benchmark as it finishes, and records the memcpy rates that
// later benchmarks are compared with. Rates are those of Google Benchmark's own
// timer (real time), read from the counters the benchmarks set.
class TableReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    const std::map<std::string, Measured>& results() const { return results_; }

private:
    void printRow(const std::string& name, const std::string& label, double msPerIter,
                  const Measured& m);
    std::map<std::string, Measured> results_;
};

// For each of our exports: its Mpix/s in each build, side by side, and each build's
// Mpix/s over that of each peer call that stands for the export.
void printPeerSummary(const std::vector<Case>& ours, const std::vector<Library>& libraries,
                      const std::vector<Case>& peers, const std::map<std::string, Measured>& results,
                      int width, int height);

}  // namespace bench

#endif
