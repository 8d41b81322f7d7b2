// `pxkconv --export NAME ...`: any export of the library run on raw planes, one file a
// plane with tight rows, so that every export is reachable whether or not a file
// format leads to it.
#ifndef PXKCC_APPS_PXKCONV_RAW_EXPORT_H
#define PXKCC_APPS_PXKCONV_RAW_EXPORT_H

#include "messages.h"
#include "options.h"

namespace pxkconv {

Failure runExport(const Options& options);

// `pxkconv --list`.
void printExportList();

// `pxkconv --version`.
void printVersion();

}  // namespace pxkconv

#endif
