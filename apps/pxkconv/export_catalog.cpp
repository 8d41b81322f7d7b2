#include "export_catalog.h"

#include <dlfcn.h>

#include <algorithm>
#include <sstream>

#include "export_call.h"
#include "shape_lookup.h"

namespace pxkconv {

using pxkcross::CallShape;
using pxkcross::Image;
using pxkcross::Role;

namespace {

// Words of the operation, spelled out; anything else stands as it is written.
struct Word {
    const char* token;
    const char* text;
};
constexpr Word kVerbs[] = {
    {"ColorTwist32f", "colour twist by a 3x4 float matrix"},
    {"ColorTwist", "colour twist by a float matrix"},
    {"GammaFwd", "forward gamma (linear to non-linear)"},
    {"GammaInv", "inverse gamma (non-linear to linear)"},
    {"ReduceBits", "bit-depth reduction (nearest level, noise, diffusion or ordered dither)"},
    {"Pack", "pack 16-bit containers to 12-bit samples"},
    {"Unpack", "unpack 12-bit samples to 16-bit containers"},
    {"ToneMapLinear", "tone map by the linear scale of the image's maximum"},
    {"ToneMapMean", "tone map by the image's mean level"},
    {"DemosaicAHD", "Bayer demosaic, homogeneity-directed"},
};
constexpr Word kModifiers[] = {
    {"709CSC", "BT.709 studio-range matrix"}, {"709HDTV", "BT.709 HDTV matrix"},
    {"Filter", "chroma filtered"},          {"Interlace", "fields kept apart"},
    {"Rev", "reversible"},                   {"VNG", "variable number of gradients"},
};
constexpr Word kSamplings[] = {{"1620", " 1620"}, {"420", " 4:2:0"}, {"422", " 4:2:2"}, {"411", " 4:1:1"}};

// "YCbCr420" -> "YCbCr 4:2:0", "CFA" -> "Bayer mosaic".
std::string sideText(std::string side) {
    std::string sampling;
    for (const Word& s : kSamplings) {
        const std::size_t at = side.find(s.token);
        if (at != std::string::npos) {
            side = side.substr(0, at) + s.text + side.substr(at + std::string(s.token).size());
            break;
        }
    }
    if (side.rfind("CFA", 0) == 0) side = "Bayer mosaic" + side.substr(3);
    const std::size_t packing = side.find("v210");
    if (packing != std::string::npos) side.replace(packing, 4, " v210");
    const std::size_t gamma = side.find("Gamma");
    if (gamma != std::string::npos) side.replace(gamma, 5, " with gamma");
    return side;
}

std::string operationText(const std::string& op) {
    for (const Word& v : kVerbs) {
        if (op == v.token) return v.text;
    }
    const std::size_t to = op.find("To");
    // "To" followed by a capital or a digit starts the destination's side.
    for (std::size_t at = to; at != std::string::npos; at = op.find("To", at + 1)) {
        if (at == 0 || at + 2 >= op.size()) continue;
        const char next = op[at + 2];
        if ((next >= 'A' && next <= 'Z') || (next >= '0' && next <= '9')) {
            return sideText(op.substr(0, at)) + " to " + sideText(op.substr(at + 2));
        }
    }
    return sideText(op) + " layout change";
}

std::string fraction(int d) { return d == 1 ? "full" : "1/" + std::to_string(d); }

std::string imageText(const Image& image) {
    std::string t = pxkcross::sampleTypeToken(image.type);
    if (image.planes.size() == 1) {
        const int c = image.planes[0].channels;
        return t + " packed " + std::to_string(c) + (c == 1 ? " channel" : " channels");
    }
    t += " " + std::to_string(image.planes.size()) + " planes";
    std::string sub;
    for (std::size_t p = 1; p < image.planes.size(); ++p) {
        const pxkcross::Plane& plane = image.planes[p];
        if (plane.widthDivisor == 1 && plane.heightDivisor == 1 && plane.channels == 1) continue;
        sub = " (plane " + std::to_string(p) + (plane.channels == 2 ? " of pairs" : "") + " and after at " +
              fraction(plane.widthDivisor) + " width, " + fraction(plane.heightDivisor) + " height)";
        break;
    }
    return t + sub;
}

}  // namespace

const std::vector<std::string>& exportNames() {
    static const std::vector<std::string> names = {
#include "pxkconv_exports.inc"
    };
    return names;
}

bool isExport(const std::string& name) {
    const std::vector<std::string>& names = exportNames();
    return std::find(names.begin(), names.end(), name) != names.end();
}

const void* exportAddress(const std::string& name) {
    if (!isExport(name)) return nullptr;
    return dlsym(RTLD_DEFAULT, name.c_str());
}

bool isVersionQuery(const std::string& name) { return isExport(name) && name.rfind("pxki", 0) != 0; }

std::string describeSides(const CallShape& shape) {
    std::string out;
    for (const Image& image : shape.images) {
        const char* role = image.role == Role::Source ? "from " : (image.role == Role::Destination ? "to " : "in place on ");
        if (!out.empty()) out += " ";
        out += role + imageText(image);
    }
    return out;
}

std::string describeExport(const std::string& name) {
    if (isVersionQuery(name)) return "the library's version record (name, version, build target)";
    std::string body = name.substr(4);
    const bool longSizes = body.size() > 2 && body.compare(body.size() - 2, 2, "_L") == 0;
    if (longSizes) body.resize(body.size() - 2);
    std::vector<std::string> parts;
    std::istringstream tokens(body);
    for (std::string token; std::getline(tokens, token, '_');) parts.push_back(token);
    std::string text = operationText(parts.front());
    for (std::size_t i = 1; i + 2 < parts.size(); ++i) {
        std::string m = parts[i];
        for (const Word& w : kModifiers) {
            if (m == w.token) m = w.text;
        }
        text += ", " + m;
    }
    if (longSizes) text += ", the work of its plain twin";
    std::string error;
    const std::optional<CallShape> shape = pxkcross::callShapeFor(name, &error);
    if (!shape) return text + "; no call shape";
    text += "; " + describeSides(*shape);
    bool steps = false;
    for (const pxkcross::Arg& a : shape->args) {
        steps = steps || a.kind == pxkcross::ArgKind::Step || a.kind == pxkcross::ArgKind::StepArray ||
                a.kind == pxkcross::ArgKind::StepArray64;
    }
    text += steps ? "; row steps" : "; tight rows";
    const std::vector<ValueSlot> slots = valueSlots(*shape);
    if (!slots.empty()) {
        text += "; values";
        for (const ValueSlot& s : slots) {
            text += " " + s.key + ":" + pxkcross::valueTypeToken(s.type);
            if (s.count > 1) text += "[" + std::to_string(s.count) + "]";
        }
    }
    return text;
}

}  // namespace pxkconv
