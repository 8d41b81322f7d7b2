#include "report.h"

#include <algorithm>
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

// `value` printed with `format`, or "n/a" when it is not positive.
std::string number(double value, const char* format) {
    char text[32] = "n/a";
    if (value > 0) std::snprintf(text, sizeof text, format, value);
    return text;
}

// " " and `text` right-aligned in `width` columns.
std::string column(const std::string& text, size_t width) {
    return " " + std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

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

void printPeerSummary(const std::vector<Case>& ours, const std::vector<Library>& libraries,
                      const std::vector<Case>& peers, const std::map<std::string, Measured>& results,
                      int width, int height) {
    std::FILE* out = stdout;
    std::fprintf(out,
                 "\nOurs against the nearest peer call, %dx%d, one thread (Mpix/s of each build of "
                 "ours;\nratio = that build's Mpix/s / peer Mpix/s, above 1 means ours is faster)\n",
                 width, height);

    // One Mpix/s column and one ratio column per build, headed by its label.
    std::vector<size_t> rateWidth, ratioWidth;
    std::string head = "export                    ";
    for (const Library& lib : libraries) {
        const std::string title = lib.label + " Mpix/s";
        rateWidth.push_back(std::max<size_t>(9, title.size()));
        head += column(title, rateWidth.back());
    }
    char peerHead[96];
    std::snprintf(peerHead, sizeof peerHead, "  %-34s %-7s %8s", "nearest peer", "held to", "Mpix/s");
    head += peerHead;
    for (const Library& lib : libraries) {
        const std::string title = lib.label + "/peer";
        ratioWidth.push_back(std::max<size_t>(7, title.size()));
        head += column(title, ratioWidth.back());
    }
    head += "  how the peer call differs";
    std::fprintf(out, "%s\n", head.c_str());

    auto rate = [&](const std::string& name) {
        auto it = results.find(name);
        return it == results.end() || !it->second.error.empty() ? 0.0 : it->second.mpixPerSec;
    };

    std::vector<std::string> exports;  // in table order, each once
    for (const Case& c : ours) {
        if (std::find(exports.begin(), exports.end(), c.exportName) == exports.end()) exports.push_back(c.exportName);
    }
    bool anyHeld = false;
    for (const std::string& e : exports) {
        // The export's rate in each build (0 if it failed), and whether any of them ran.
        std::vector<double> mine;
        bool ran = false;
        for (const Library& lib : libraries) {
            const std::string name = ourCaseName(e, lib.label);
            ran = ran || results.find(name) != results.end();
            mine.push_back(rate(name));
        }
        if (!ran) continue;  // filtered out

        std::string left = e.rfind("pxki", 0) == 0 ? e.substr(4) : e;
        left.resize(std::max<size_t>(left.size(), 26), ' ');
        for (size_t i = 0; i < libraries.size(); ++i) {
            left += column(number(mine[i], "%.1f"), rateWidth[i]);
        }
        const std::string blank(left.size(), ' ');

        bool any = false;
        for (const Case& p : peers) {
            if (std::find(p.standsFor.begin(), p.standsFor.end(), e) == p.standsFor.end()) continue;
            const double theirs = rate(p.name);
            char peerText[96];
            std::snprintf(peerText, sizeof peerText, "  %-34s %-7s %8s", p.name.c_str(),
                          p.heldTo.empty() ? "-" : p.heldTo.c_str(), number(theirs, "%.1f").c_str());
            std::string line = (any ? blank : left) + peerText;
            for (size_t i = 0; i < libraries.size(); ++i) {
                line += column(number(theirs > 0 ? mine[i] / theirs : 0, "%.2f"), ratioWidth[i]);
            }
            std::fprintf(out, "%s  %s\n", line.c_str(), p.note.c_str());
            any = true;
            anyHeld = anyHeld || !p.heldTo.empty();
        }
        if (!any) {
            std::fprintf(out, "%s  %s\n", left.c_str(),
                         peers.empty() ? "(no peer run)" : "(no peer equivalent)");
        }
    }

    for (const Library& lib : libraries) {
        std::fprintf(out, "[%s] %s, %s\n", lib.label.c_str(), lib.version->name ? lib.version->name : "?",
                     lib.path.c_str());
    }
    if (!peers.empty()) {
        std::fprintf(out, "Each build of ours runs the instruction set it was built for. Peer calls pick theirs at\n"
                          "run time (AVX2 where present)%s\n",
                     anyHeld ? ", except those held to SSSE3: libyuv's processor flags\n"
                               "masked to SSSE3 and below, to set beside the sse2 build."
                             : ".");
    }
}

}  // namespace bench
