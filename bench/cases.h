// The benchmark table: one Case per measured conversion (ours in one build of the
// library, or a peer's).
#ifndef PXKCC_BENCH_CASES_H
#define PXKCC_BENCH_CASES_H

#include <functional>
#include <string>
#include <vector>

#include "image.h"
#include "library.h"
#include "pxkcc.h"

namespace bench {

// Runs the conversion once over the whole image; negative return = failure.
using Convert = std::function<int(const Image& src, Image& dst)>;

struct Case {
    std::string name;  // benchmark name: "export [build label]", or "peer/function"
    Layout src;
    Layout dst;
    Content input;     // value range of the source fill
    Convert run;
    // Peers only: our exports this call is the nearest equivalent of, and how it differs.
    std::vector<std::string> standsFor;
    std::string note;
    // Peers only: the instruction set the call is held to ("SSSE3"), or "" when the
    // peer picks its own at run time.
    std::string heldTo = "";
    // Peers only: called once before and once after each measurement (not timed), to
    // set and restore process-wide peer state such as an instruction-set mask.
    std::function<void()> before = nullptr;
    std::function<void()> after = nullptr;
    // Ours only: the export, and the label of the build it was looked up in.
    std::string exportName = "";
    std::string library = "";
};

// Bytes read plus bytes written per pixel, counted by layout: an AC4 side counts its
// alpha byte, because the whole pixel moves through memory even where alpha is
// neither read nor written.
inline double trafficPerPixel(const Case& c) {
    return bytesMovedPerPixel(c.src) + bytesMovedPerPixel(c.dst);
}

// One of our exports: how to measure it, and how to call it at an address looked up
// in a loaded build.
struct Export {
    const char* name;
    Layout src;
    Layout dst;
    Content input;
    Convert (*bind)(void* address);
    // Rows of one export that measure different settings name them here ("/FS");
    // the benchmark name is the export's name, the variant, then the build.
    const char* variant = "";
};

// Our exports (ours.cpp), in table order.
const std::vector<Export>& ourExports();

// Benchmark name of an export measured in the build labelled `library`.
inline std::string ourCaseName(const std::string& exportName, const std::string& library) {
    return exportName + " [" + library + "]";
}

// Every export of the table in each build, export by export (so that the builds of
// one export run one after the other). Fails, naming what is missing, if a build
// lacks an export of the table.
bool ourCases(const std::vector<Library>& libraries, std::vector<Case>& cases, std::string& error);

// Peers; each list is empty when the peer was not found at configure time.
std::vector<Case> openCvCases();
std::vector<Case> libyuvCases();

}  // namespace bench

#endif
