// pxkconv's command line: the options, read into one record.
#ifndef PXKCC_APPS_PXKCONV_OPTIONS_H
#define PXKCC_APPS_PXKCONV_OPTIONS_H

#include <string>
#include <vector>

#include "export_call.h"
#include "messages.h"

namespace pxkconv {

struct Options {
    bool help = false;
    bool list = false;
    bool version = false;
    bool quiet = false;             // no progress line
    std::string exportName;         // --export NAME
    std::string from, to;           // -f/--from, -t/--to layout names
    int width = 0, height = 0;      // --size WxH (0: not given)
    std::string matrix = "601";     // --matrix 601|709csc|709hdtv
    std::string range = "studio";   // --range studio|full
    bool matrixGiven = false, rangeGiven = false;
    std::string dither;             // --dither none|fs|jjn|stucki|bayer
    int levels = 0;                 // --levels N (0: not given)
    int noise = 0;                  // --noise P, 0..100
    bool noiseGiven = false;
    std::string gamma;              // --gamma fwd|inv
    std::string twist;              // --twist m00,...,m23 (twelve numbers)
    std::string bayer;              // --bayer bggr|rggb|grbg|gbrg
    std::string demosaic;           // --demosaic bilinear|vng|ahd
    ValueSettings values;           // --value K=V
    std::vector<std::string> files; // INPUT... OUTPUT...
};

Failure parseOptions(int argc, const char* const* argv, Options* options);

// The text of --help.
const char* helpText();

}  // namespace pxkconv

#endif
