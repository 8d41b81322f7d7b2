#include "export_name_grammar.h"

#include <vector>

namespace pxkcross {

namespace {

enum class Layout { C1, C2, C3, C4, AC4, P2, P3, P4, AP4 };

struct LayoutToken {
    const char* text;
    Layout layout;
};
// Three-letter tokens first, so that AC4 is not read as something shorter.
constexpr LayoutToken kLayouts[] = {
    {"AC4", Layout::AC4}, {"AP4", Layout::AP4}, {"C1", Layout::C1}, {"C2", Layout::C2}, {"C3", Layout::C3},
    {"C4", Layout::C4},   {"P2", Layout::P2},   {"P3", Layout::P3}, {"P4", Layout::P4},
};

struct TypeToken {
    const char* text;
    SampleType type;
};
constexpr TypeToken kTypes[] = {
    {"8u", SampleType::U8},   {"16u", SampleType::U16}, {"16s", SampleType::S16},
    {"32u", SampleType::U32}, {"32s", SampleType::S32}, {"32f", SampleType::F32},
    {"64f", SampleType::F64}, {"12u", SampleType::U12}, {"1u", SampleType::U1},
};

// Colour spaces, longest first where one is a prefix of another's spelling.
constexpr const char* kSpaces[] = {"YCbCr", "YCrCb", "CbYCr", "YCoCg", "SBGR", "Color", "Gray", "HLS", "HSV",
                                   "LUV",   "Lab",   "XYZ",   "YCC",   "YUV",  "RGB",   "BGR",  "CFA"};
constexpr const char* kSamplings[] = {"1620", "420", "422", "411"};
// Words that may follow a side's space and sampling.
constexpr const char* kSideWords[] = {"Gamma", "v210"};

constexpr const char* kVerbs[] = {"ColorTwist32f", "ColorTwist", "GammaFwd",      "GammaInv",    "ReduceBits",
                                  "Pack",          "Unpack",     "ToneMapLinear", "ToneMapMean", "DemosaicAHD"};

bool startsWith(const std::string& s, const std::string& prefix, std::size_t at = 0) {
    return s.compare(at, prefix.size(), prefix) == 0;
}

bool isPacked(Layout l) {
    return l == Layout::C1 || l == Layout::C2 || l == Layout::C3 || l == Layout::C4 || l == Layout::AC4;
}

bool readType(const std::string& token, SampleType* type) {
    for (const TypeToken& t : kTypes) {
        if (token == t.text) {
            *type = t.type;
            return true;
        }
    }
    return false;
}

// "8u" -> 8u, 8u; "16s8u" -> 16s, 8u.
bool readTypes(const std::string& token, SampleType* src, SampleType* dst) {
    if (readType(token, src)) {
        *dst = *src;
        return true;
    }
    for (std::size_t cut = 1; cut < token.size(); ++cut) {
        if (readType(token.substr(0, cut), src) && readType(token.substr(cut), dst)) return true;
    }
    return false;
}

struct LayoutReading {
    std::vector<Layout> layouts;  // one or two
    bool inPlace = false;
    bool steps = false;  // final R
};

// C3R, AC4P3R, IP3R, C3IR, P3, C3P3, ...
bool readLayout(const std::string& token, LayoutReading* out) {
    std::size_t at = 0;
    if (startsWith(token, "I")) {
        out->inPlace = true;
        at = 1;
    }
    while (at < token.size() && out->layouts.size() < 2) {
        bool found = false;
        for (const LayoutToken& l : kLayouts) {
            if (startsWith(token, l.text, at)) {
                out->layouts.push_back(l.layout);
                at += std::string(l.text).size();
                found = true;
                break;
            }
        }
        if (!found) break;
    }
    if (at < token.size() && token[at] == 'I') {
        out->inPlace = true;
        ++at;
    }
    if (at < token.size() && token[at] == 'R') {
        out->steps = true;
        ++at;
    }
    if (at != token.size() || out->layouts.empty()) return false;
    return !(out->inPlace && out->layouts.size() != 1);
}

struct Side {
    std::string space;
    std::string sampling;
    std::string word;  // Gamma, v210
};

bool readSide(const std::string& text, Side* side) {
    std::size_t at = 0;
    for (const char* s : kSpaces) {
        if (startsWith(text, s)) {
            side->space = s;
            at = side->space.size();
            break;
        }
    }
    for (const char* s : kSamplings) {
        if (startsWith(text, s, at)) {
            side->sampling = s;
            at += side->sampling.size();
            break;
        }
    }
    for (const char* w : kSideWords) {
        if (startsWith(text, w, at)) {
            side->word = w;
            at += side->word.size();
            break;
        }
    }
    return at == text.size() && at > 0;
}

// "YCbCr420ToRGB" -> YCbCr 420, RGB; "YCbCr422" -> the same on both sides;
// "YCbCr420To411" -> YCbCr 420, 411. A verb leaves both sides plain.
bool readOperation(const std::string& op, Side* src, Side* dst, bool* verb) {
    for (const char* v : kVerbs) {
        if (op == v) {
            *verb = true;
            return true;
        }
    }
    std::size_t to = std::string::npos;
    for (std::size_t i = 1; i + 2 < op.size(); ++i) {
        const char next = op[i + 2];
        if (op.compare(i, 2, "To") == 0 && ((next >= 'A' && next <= 'Z') || (next >= '0' && next <= '9'))) {
            to = i;
            break;
        }
    }
    if (to == std::string::npos) {
        if (!readSide(op, src) || src->space.empty()) return false;
        *dst = *src;
        return true;
    }
    return readSide(op.substr(0, to), src) && !src->space.empty() && readSide(op.substr(to + 2), dst);
}

int samplingDivisor(const std::string& sampling) {
    if (sampling == "420" || sampling == "422") return 2;
    if (sampling == "411" || sampling == "1620") return 4;
    return 1;
}

Image makeImage(Role role, SampleType type, Layout layout, const std::string& sampling) {
    Image image;
    image.role = role;
    image.type = type;
    const int d = samplingDivisor(sampling);
    // Chroma rows: one for two luma rows in 420, one for four in 1620.
    const int rowsShared = sampling == "420" ? 2 : (sampling == "1620" ? 4 : 1);
    switch (layout) {
        case Layout::C1:
            image.planes = {{1, 1}};
            break;
        case Layout::C2:
            image.planes = {{2, 1}};
            break;
        case Layout::C3:
            image.planes = {{3, 1}};
            break;
        case Layout::C4:
        case Layout::AC4:
            image.planes = {{4, 1}};
            break;
        case Layout::P2:
            // A luma plane, and one plane of chroma pairs; chroma is always subsampled.
            image.planes = {{1, 1}, {2, d > 1 ? d : 2, rowsShared}};
            break;
        case Layout::P3:
            image.planes = {{1, 1}, {1, d, rowsShared}, {1, d, rowsShared}};
            break;
        case Layout::P4:
        case Layout::AP4:
            image.planes = {{1, 1}, {1, 1}, {1, 1}, {1, 1}};
            break;
    }
    return image;
}

enum class StepForm { None, One, PerPlane };

void addSide(CallShape& shape, int image, Layout layout, StepForm steps) {
    auto add = [&](ArgKind kind, int plane) {
        Arg a;
        a.kind = kind;
        a.image = image;
        a.plane = plane;
        shape.args.push_back(a);
    };
    if (layout == Layout::P2) {
        // Two pointers with a step each.
        for (int p = 0; p < 2; ++p) {
            add(ArgKind::Pointer, p);
            if (steps != StepForm::None) add(ArgKind::Step, p);
        }
        return;
    }
    add(isPacked(layout) ? ArgKind::Pointer : ArgKind::PlanePointers, 0);
    if (steps == StepForm::One) add(ArgKind::Step, -1);
    if (steps == StepForm::PerPlane) add(ArgKind::StepArray, -1);
}

// Families whose arguments go beyond what the name tells; the first that matches
// explains why the export needs a table row. These look at the operation's spelling,
// so that they hold even where the operation's sides cannot be read.
std::string incompleteBecause(const std::string& op, const std::vector<std::string>& modifiers, SampleType srcType,
                              SampleType dstType, const std::vector<Layout>& layouts, bool longSizes) {
    auto has = [&](const char* modifier) {
        for (const std::string& m : modifiers) {
            if (m == modifier) return true;
        }
        return false;
    };
    auto contains = [&](const char* word) { return op.find(word) != std::string::npos; };
    const bool floats = isFloat(srcType) || isFloat(dstType);
    if (longSizes) return "an _L member (64-bit size and step arrays, or its plain twin's arguments)";
    if (startsWith(op, "ColorTwist")) return "a matrix follows the size";
    if (startsWith(op, "Gamma") && floats) return "a value range follows the size";
    if (startsWith(op, "ReduceBits")) return "dither settings and a work buffer follow the size";
    if (op == "Pack" || op == "Unpack" || startsWith(op, "ToneMap")) {
        return "width and height come as two int32, not as a size";
    }
    if (startsWith(op, "Demosaic") || startsWith(op, "CFA")) {
        return "a rectangle, the image size, a Bayer grid and more";
    }
    if (startsWith(op, "ColorTo")) return "a coefficient array follows the size";
    if (contains("v210")) return "steps count elements";
    const bool planar = layouts.front() == Layout::P3 || layouts.back() == Layout::P3;
    if (contains("Lab") && planar && floats) return "a step a plane although the planes have one size";
    if (has("Filter") && layouts.front() == Layout::P2) {
        return "some filtered members take a strip layout after the size";
    }
    return std::string();
}

}  // namespace

NameReading readExportName(const std::string& name) {
    NameReading r;
    if (!startsWith(name, "pxki")) {
        r.error = "not a conversion name (no pxki prefix)";
        return r;
    }
    std::string body = name.substr(4);
    bool longSizes = false;
    if (body.size() > 2 && body.compare(body.size() - 2, 2, "_L") == 0) {
        longSizes = true;
        body.resize(body.size() - 2);
    }
    std::vector<std::string> parts;
    for (std::size_t at = 0;;) {
        const std::size_t cut = body.find('_', at);
        parts.push_back(body.substr(at, cut - at));
        if (cut == std::string::npos) break;
        at = cut + 1;
    }
    if (parts.size() < 3) {
        r.error = "no type and layout tokens";
        return r;
    }
    const std::string& op = parts.front();
    const std::vector<std::string> modifiers(parts.begin() + 1, parts.end() - 2);

    SampleType srcType, dstType;
    if (!readTypes(parts[parts.size() - 2], &srcType, &dstType)) {
        r.error = "unknown type token " + parts[parts.size() - 2];
        return r;
    }
    LayoutReading layout;
    if (!readLayout(parts.back(), &layout)) {
        r.error = "unknown layout token " + parts.back();
        return r;
    }
    if (layout.inPlace && srcType != dstType) {
        r.error = "an in-place layout with two sample types";
        return r;
    }

    Side src, dst;
    bool verb = false;
    const bool opRead = readOperation(op, &src, &dst, &verb);
    if (!opRead) src = dst = Side();

    const Layout srcLayout = layout.layouts.front();
    const Layout dstLayout = layout.layouts.back();
    CallShape& shape = r.shape;
    if (layout.inPlace) {
        shape.images.push_back(makeImage(Role::InPlace, srcType, srcLayout, src.sampling));
    } else {
        shape.images.push_back(makeImage(Role::Source, srcType, srcLayout, src.sampling));
        shape.images.push_back(makeImage(Role::Destination, dstType, dstLayout, dst.sampling));
    }

    // A planar side at a subsampling takes one step a plane. A planar-to-planar member
    // that subsamples on either side takes one a plane on both, its full-resolution
    // side included.
    auto stepForm = [&](Layout l, const Side& side) {
        if (!layout.steps) return StepForm::None;
        if (l != Layout::P3) return StepForm::One;
        const bool subsampled = !src.sampling.empty() || !dst.sampling.empty();
        const bool bothP3 = srcLayout == Layout::P3 && dstLayout == Layout::P3 && !layout.inPlace;
        return (!side.sampling.empty() || (bothP3 && subsampled)) ? StepForm::PerPlane : StepForm::One;
    };
    addSide(shape, 0, srcLayout, stepForm(srcLayout, src));
    if (!layout.inPlace) addSide(shape, 1, dstLayout, stepForm(dstLayout, dst));
    Arg size;
    size.kind = ArgKind::Size;
    shape.args.push_back(size);
    // A four-channel destination filled from fewer channels takes its alpha value.
    const bool fourFromFewer = srcLayout != Layout::C4 && srcLayout != Layout::AC4 && srcLayout != Layout::AP4;
    if (!layout.inPlace && dstLayout == Layout::C4 && fourFromFewer) {
        Arg alpha;
        alpha.kind = ArgKind::Value;
        alpha.alpha = true;
        alpha.type = valueTypeOf(dstType);
        shape.args.push_back(alpha);
    }
    r.tokensRead = true;

    r.incomplete = incompleteBecause(op, modifiers, srcType, dstType, layout.layouts, longSizes);
    if (r.incomplete.empty() && !opRead) r.incomplete = "the operation " + op + " is not one the grammar knows";
    return r;
}

}  // namespace pxkcross
