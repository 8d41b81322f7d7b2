// One run of `pxkconv [options] INPUT OUTPUT`: the formats and options resolved to a
// route (routes.h), then every frame of the input converted by its export and written.
#ifndef PXKCC_APPS_PXKCONV_CONVERSION_H
#define PXKCC_APPS_PXKCONV_CONVERSION_H

#include "frame_files.h"
#include "messages.h"
#include "options.h"

namespace pxkconv {

Failure runConversion(const Options& options);

// Converts one frame by a route's export into `out` (already of the route's
// destination layout and the frame's size). `values` are the route's values, by key.
Failure convertFrame(const Route& route, const ValueSettings& values, FrameData& in, FrameData* out);

}  // namespace pxkconv

#endif
