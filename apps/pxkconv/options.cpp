#include "options.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace pxkconv {

namespace {

bool oneOf(const std::string& v, std::initializer_list<const char*> set) {
    for (const char* s : set) {
        if (v == s) return true;
    }
    return false;
}

bool readInt(const std::string& text, long lo, long hi, int* out) {
    if (text.empty()) return false;
    char* end = nullptr;
    errno = 0;
    const long v = std::strtol(text.c_str(), &end, 10);
    if (errno != 0 || *end != '\0' || v < lo || v > hi) return false;
    *out = int(v);
    return true;
}

Failure usage(const std::string& message) { return fault(kExitUsage, message + " (pxkconv --help lists the options)"); }

// Twelve numbers separated by commas.
bool isMatrix(const std::string& text) {
    int count = 0;
    std::size_t at = 0;
    while (at <= text.size()) {
        std::size_t cut = text.find(',', at);
        if (cut == std::string::npos) cut = text.size();
        const std::string part = text.substr(at, cut - at);
        char* end = nullptr;
        errno = 0;
        std::strtod(part.c_str(), &end);
        if (part.empty() || errno != 0 || *end != '\0') return false;
        ++count;
        at = cut + 1;
    }
    return count == 12;
}

}  // namespace

Failure parseOptions(int argc, const char* const* argv, Options* o) {
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        std::string value;
        bool inlineValue = false;
        if (arg.rfind("--", 0) == 0 && arg.find('=') != std::string::npos) {
            value = arg.substr(arg.find('=') + 1);
            arg = arg.substr(0, arg.find('='));
            inlineValue = true;
        }
        // The option's value: after '=' or the next argument.
        auto take = [&](std::string* out) -> bool {
            if (inlineValue) {
                *out = value;
                return true;
            }
            if (i + 1 >= argc) return false;
            *out = argv[++i];
            return true;
        };
        std::string v;
        if (arg == "-h" || arg == "--help") {
            o->help = true;
        } else if (arg == "--list") {
            o->list = true;
        } else if (arg == "--version") {
            o->version = true;
        } else if (arg == "-q" || arg == "--quiet") {
            o->quiet = true;
        } else if (arg == "--export") {
            if (!take(&o->exportName)) return usage("--export needs an export name");
        } else if (arg == "-f" || arg == "--from") {
            if (!take(&o->from)) return usage(arg + " needs a layout name");
        } else if (arg == "-t" || arg == "--to") {
            if (!take(&o->to)) return usage(arg + " needs a layout name");
        } else if (arg == "--size") {
            if (!take(&v)) return usage("--size needs WxH");
            const std::size_t x = v.find('x');
            if (x == std::string::npos || !readInt(v.substr(0, x), 1, 65535, &o->width) ||
                !readInt(v.substr(x + 1), 1, 65535, &o->height)) {
                return usage("--size takes WxH with each in 1..65535, not \"" + v + "\"");
            }
        } else if (arg == "--matrix") {
            if (!take(&o->matrix) || !oneOf(o->matrix, {"601", "709csc", "709hdtv"})) {
                return usage("--matrix takes 601, 709csc or 709hdtv");
            }
            o->matrixGiven = true;
        } else if (arg == "--range") {
            if (!take(&o->range) || !oneOf(o->range, {"studio", "full"})) return usage("--range takes studio or full");
            o->rangeGiven = true;
        } else if (arg == "--dither") {
            if (!take(&o->dither) || !oneOf(o->dither, {"none", "fs", "jjn", "stucki", "bayer"})) {
                return usage("--dither takes none, fs, jjn, stucki or bayer");
            }
        } else if (arg == "--levels") {
            if (!take(&v) || !readInt(v, 2, 65536, &o->levels)) return usage("--levels takes a count in 2..65536");
        } else if (arg == "--noise") {
            if (!take(&v) || !readInt(v, 0, 100, &o->noise)) return usage("--noise takes a percentage in 0..100");
            o->noiseGiven = true;
        } else if (arg == "--gamma") {
            if (!take(&o->gamma) || !oneOf(o->gamma, {"fwd", "inv"})) return usage("--gamma takes fwd or inv");
        } else if (arg == "--twist") {
            if (!take(&o->twist) || !isMatrix(o->twist)) {
                return usage("--twist takes twelve numbers m00,m01,m02,m03,m10,...,m23 separated by commas");
            }
        } else if (arg == "--bayer") {
            if (!take(&o->bayer) || !oneOf(o->bayer, {"bggr", "rggb", "grbg", "gbrg"})) {
                return usage("--bayer takes bggr, rggb, grbg or gbrg");
            }
        } else if (arg == "--demosaic") {
            if (!take(&o->demosaic) || !oneOf(o->demosaic, {"bilinear", "vng", "ahd"})) {
                return usage("--demosaic takes bilinear, vng or ahd");
            }
        } else if (arg == "--value") {
            if (!take(&v) || v.find('=') == std::string::npos || v.find('=') == 0) {
                return usage("--value takes KEY=VALUE, e.g. --value v1=3 or --value v2=1,0,0");
            }
            o->values[v.substr(0, v.find('='))] = v.substr(v.find('=') + 1);
        } else if (arg.size() > 1 && arg[0] == '-') {
            return usage("unknown option " + arg);
        } else {
            o->files.push_back(arg);
        }
    }
    if (!o->demosaic.empty() && o->bayer.empty()) return usage("--demosaic needs --bayer with the mosaic's pattern");
    return Failure{};
}

const char* helpText() {
    return R"(Usage:
  pxkconv [options] INPUT OUTPUT
  pxkconv --list
  pxkconv --export NAME
  pxkconv --export NAME --size WxH [--value K=V ...] INPUT... OUTPUT...

Converts pictures and video frames with the pxkcc library, one export a frame.

Formats, from the file extension:
  .png .ppm .pgm .pnm   pictures: gray, RGB (and RGBA PNG), 8 or 16 bits a sample
  .y4m                  Y4M streams: 4:2:0, 4:2:2, 4:4:4, 4:1:1, mono; every frame
  .i420 .nv12 .yuy2 .uyvy .i422 .i444 .411 .v210
                        raw frames of that layout, tight rows; input needs --size
  .yuv .raw             raw frames; the layout comes from -f (input) or -t (output)

Options:
  -f, --from LAYOUT     the layout of raw input: i420 nv12 yuy2 uyvy i422 i444 411
                        v210 (pictures and Y4M streams say their own)
  -t, --to LAYOUT       the output's layout: a raw layout, or gray gray16 rgb rgb16
                        for pictures (default: the first that the input converts to
                        in the output's format, at the input's bit depth)
  --size WxH            the size of raw input frames
  --matrix M            601 (default), 709csc (BT.709 studio range) or 709hdtv
  --range R             studio (default) selects the studio-range YCbCr members of
                        the 601 matrix (Y 16..235, chroma 16..240); full selects the
                        full-range YUV members (Y 0..255). The 709 matrices are
                        studio range only.
  --dither D            reduce the bit depth: none (nearest level), fs, jjn, stucki
                        (error diffusion) or bayer (4x4 ordered)
  --levels N            levels a sample after reduction (default 2 at the same bit
                        depth; 256 from 16 to 8 bits)
  --noise P             noise added to the quantiser's threshold, 0..100 percent
  --gamma fwd|inv       the Rec. 709 transfer curve, or its inverse
  --twist m00,...,m23   a 3x4 colour matrix: out_i = m_i0 R + m_i1 G + m_i2 B + m_i3
  --bayer P             the input PGM is a Bayer mosaic of pattern bggr, rggb,
                        grbg or gbrg (the top-left 2x2 block)
  --demosaic M          bilinear (default), vng or ahd
  -q, --quiet           no progress line for multi-frame input
  --list                every export of the library, one a line: its name, then
                        what it does
  --export NAME         run one export on raw planes: one file a plane of each
                        source, then one a plane of each destination, tight rows.
                        Without files: the export's arguments, files and values.
  --value K=V           a value of --export: "alpha" (default: the destination's
                        largest sample, 1.0 for floats) or v1, v2, ... in argument
                        order (lists separated by commas). Default: the middle of
                        the range the export's call shape gives for it.
  --version             the library's version record
  -h, --help            this text

Exit codes: 0 success, 1 usage, 2 unknown format or layout, 3 cannot open, read or
write a file, 4 raw file of the wrong size, 5 truncated or damaged file, 6 a size
that the sampling cannot hold (odd where it must be even), 7 no export for this
combination, 8 the library returned an error status, 9 internal.
)";
}

}  // namespace pxkconv
