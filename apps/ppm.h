// Binary PPM (P6) and PGM (P5) writers.
#ifndef PXKCC_APPS_PPM_H
#define PXKCC_APPS_PPM_H

#include <string>

#include "image_view.h"

namespace demo {

// Writes the three channels of `image` as R, G, B. Returns false on an I/O error.
bool writePpm(const std::string& path, const View& image);

// Writes channel `channel` of `image` as a grey image. Returns false on an I/O error.
bool writePgm(const std::string& path, const View& image, int channel);

}  // namespace demo

#endif
