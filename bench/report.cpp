#include "report.h"

#include <cmath>
#include <cstdio>

namespace bench {

namespace {

std::map<std::string, double>& memcpyRates() {
    static std::map<std::string, double> rates;
    return rates;
}

double counter(const benchmark::BenchmarkReporter::Run& run, const char* name) {
    auto it = run.counters.find(name);
    return it == run.counters.end() ? 0.0 : it->second.value;
}

bool isMemcpy(const std::string& name) { return name.rfind("memcpy/", 0) == 0; }

}  // namespace

std::string memcpyName(size_t bytes) { return "memcpy/" + std::to_string(bytes) + "B"; }

double memcpyRate(const std::string& name) {
    auto it = memcpyRates().find(name);
    return it == memcpyRates().end() ? 0.0 : it->second;
}

bool TableReporter::ReportContext(const Context& context) {
    PrintBasicContext(&GetErrorStream(), context);
    std::FILE* out = stdout;
    std::fprintf(out,
                 "Columns (median of the repetitions when repeated):\n"
                 "  layout    source>destination layout and bytes read+written per pixel\n"
                 "  Mpix/s    million pixels converted per second\n"
                 "  GB/s      (bytes read + bytes written) / time, 1 GB = 1e9 bytes\n"
                 "  x memcpy  GB/s over the GB/s of the memcpy row of equal traffic: memcpy of\n"
                 "            (source bytes + destination bytes) / 2, which reads and writes\n"
                 "            exactly as many bytes as the conversion; measured in this run\n"
                 "  +-%%       standard deviation of GB/s over the repetitions, in %% of the mean\n\n");
    std::fprintf(out, "%-40s %-14s %9s %9s %8s %9s %6s\n", "benchmark", "layout", "ms/iter",
                 "Mpix/s", "GB/s", "x memcpy", "+-%");
    std::fflush(out);
    return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
    if (runs.empty()) return;
    const Run* chosen = nullptr;
    double mean = 0, stddev = -1;
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Iteration && chosen == nullptr) chosen = &run;
        if (run.run_type != Run::RT_Aggregate) continue;
        if (run.aggregate_name == "median") chosen = &run;
        if (run.aggregate_name == "mean") mean = counter(run, "GB/s");
        if (run.aggregate_name == "stddev") stddev = counter(run, "GB/s");
    }
    if (chosen == nullptr) chosen = &runs.front();

    const std::string name = chosen->run_name.function_name;
    Measured m;
    if (chosen->error_occurred) {
        m.error = chosen->error_message;
    } else {
        m.mpixPerSec = counter(*chosen, "Mpix/s");
        m.gbPerSec = counter(*chosen, "GB/s");
        m.xMemcpy = isMemcpy(name) ? 1.0 : counter(*chosen, "x_memcpy");
        if (stddev >= 0 && mean > 0) m.spreadPct = 100.0 * stddev / mean;
        if (isMemcpy(name)) memcpyRates()[name] = m.gbPerSec;
    }
    results_[name] = m;
    printRow(name, chosen->report_label, chosen->GetAdjustedRealTime(), m);
}

void TableReporter::printRow(const std::string& name, const std::string& label,
                             double msPerIter, const Measured& m) {
    std::FILE* out = stdout;
    if (!m.error.empty()) {
        std::fprintf(out, "%-40s %-14s ERROR: %s\n", name.c_str(), label.c_str(), m.error.c_str());
        std::fflush(out);
        return;
    }
    char mpix[32] = "-", ratio[32] = "n/a", spread[32] = "-";
    if (m.mpixPerSec > 0) std::snprintf(mpix, sizeof mpix, "%.1f", m.mpixPerSec);
    if (m.xMemcpy > 0) std::snprintf(ratio, sizeof ratio, "%.3f", m.xMemcpy);
    if (m.spreadPct >= 0) std::snprintf(spread, sizeof spread, "%.1f", m.spreadPct);
    std::fprintf(out, "%-40s %-14s %9.3f %9s %8.2f %9s %6s\n", name.c_str(), label.c_str(),
                 msPerIter, mpix, m.gbPerSec, ratio, spread);
    std::fflush(out);
}

void printPeerSummary(const std::vector<Case>& ours, const std::vector<Case>& peers,
                      const std::map<std::string, Measured>& results, int width, int height) {
    std::FILE* out = stdout;
    std::fprintf(out,
                 "\nOurs against the nearest peer call, %dx%d, one thread "
                 "(ratio = our Mpix/s / peer Mpix/s; above 1 means ours is faster)\n",
                 width, height);
    std::fprintf(out, "%-26s %8s  %-34s %8s %7s  %s\n", "export", "Mpix/s", "nearest peer",
                 "Mpix/s", "ratio", "how the peer call differs");
    auto rate = [&](const std::string& name) {
        auto it = results.find(name);
        return it == results.end() || !it->second.error.empty() ? 0.0 : it->second.mpixPerSec;
    };
    for (const Case& c : ours) {
        const double mine = rate(c.name);
        if (results.find(c.name) == results.end()) continue;  // filtered out
        char mineText[32] = "n/a";
        if (mine > 0) std::snprintf(mineText, sizeof mineText, "%.1f", mine);
        const std::string shortName = c.name.rfind("pxki", 0) == 0 ? c.name.substr(4) : c.name;
        bool any = false;
        for (const Case& p : peers) {
            bool stands = false;
            for (const std::string& s : p.standsFor) stands = stands || s == c.name;
            if (!stands) continue;
            any = true;
            const double theirs = rate(p.name);
            char theirsText[32] = "n/a", ratioText[32] = "n/a";
            if (theirs > 0) std::snprintf(theirsText, sizeof theirsText, "%.1f", theirs);
            if (mine > 0 && theirs > 0) std::snprintf(ratioText, sizeof ratioText, "%.2f", mine / theirs);
            std::fprintf(out, "%-26s %8s  %-34s %8s %7s  %s\n", shortName.c_str(), mineText,
                         p.name.c_str(), theirsText, ratioText, p.note.c_str());
        }
        if (!any) {
            std::fprintf(out, "%-26s %8s  %s\n", shortName.c_str(), mineText,
                         peers.empty() ? "(no peer run)" : "(no peer equivalent)");
        }
    }
    if (!peers.empty()) {
        std::fprintf(out,
                     "Peers pick their instruction set at run time (AVX2 where present); ours is "
                     "SSE2 only.\n");
    }
}

}  // namespace bench
