// pxkconv: converts pictures and video frames with the pxkcc library, and runs any of
// its exports on raw planes. Every fault ends with a message and its own exit code
// (messages.h); nothing is written on a fault before the conversion.
#include <cstdio>
#include <exception>

#include "conversion.h"
#include "options.h"
#include "raw_export.h"

int main(int argc, char** argv) {
    using namespace pxkconv;
    try {
        Options options;
        Failure failure = parseOptions(argc, argv, &options);
        if (!failure) {
            if (options.help) {
                std::fputs(helpText(), stdout);
            } else if (options.version) {
                printVersion();
            } else if (options.list) {
                printExportList();
            } else if (!options.exportName.empty()) {
                failure = runExport(options);
            } else if (options.files.empty()) {
                failure = fault(kExitUsage, "usage: pxkconv [options] INPUT OUTPUT (pxkconv --help)");
            } else {
                failure = runConversion(options);
            }
        }
        if (failure) {
            std::fprintf(stderr, "pxkconv: %s\n", failure.message.c_str());
            return failure.code;
        }
        return kExitOk;
    } catch (const std::exception& e) {
        // Out of memory for a very large frame, and the like.
        std::fprintf(stderr, "pxkconv: %s\n", e.what());
        return kExitInternal;
    }
}
