#include "call_shape.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace pxkcross {

int sampleBytes(SampleType type) {
    switch (type) {
        case SampleType::U8:
        case SampleType::U1:
            return 1;
        case SampleType::U16:
        case SampleType::S16:
        case SampleType::U12:
            return 2;
        case SampleType::U32:
        case SampleType::S32:
        case SampleType::F32:
            return 4;
        case SampleType::F64:
            return 8;
    }
    return 8;
}

int sampleUnit(SampleType type) {
    // Packed 12-bit and 1-bit samples are addressed by bytes.
    return (type == SampleType::U12) ? 1 : sampleBytes(type);
}

bool isFloat(SampleType type) { return type == SampleType::F32 || type == SampleType::F64; }

const char* sampleTypeToken(SampleType type) {
    switch (type) {
        case SampleType::U8:
            return "8u";
        case SampleType::U16:
            return "16u";
        case SampleType::S16:
            return "16s";
        case SampleType::U32:
            return "32u";
        case SampleType::S32:
            return "32s";
        case SampleType::F32:
            return "32f";
        case SampleType::F64:
            return "64f";
        case SampleType::U12:
            return "12u";
        case SampleType::U1:
            return "1u";
    }
    return "?";
}

int valueBytes(ValueType type) {
    switch (type) {
        case ValueType::U8:
        case ValueType::I8:
            return 1;
        case ValueType::U16:
        case ValueType::I16:
            return 2;
        case ValueType::U32:
        case ValueType::I32:
        case ValueType::F32:
            return 4;
        case ValueType::I64:
        case ValueType::F64:
            return 8;
    }
    return 8;
}

namespace {

struct ValueTypeName {
    ValueType type;
    const char* token;
};
constexpr ValueTypeName kValueTypes[] = {
    {ValueType::U8, "u8"},   {ValueType::I8, "i8"},   {ValueType::U16, "u16"},
    {ValueType::I16, "i16"}, {ValueType::U32, "u32"}, {ValueType::I32, "i32"},
    {ValueType::I64, "i64"}, {ValueType::F32, "f32"}, {ValueType::F64, "f64"},
};

constexpr SampleType kSampleTypes[] = {SampleType::U8,  SampleType::U16, SampleType::S16,
                                       SampleType::U32, SampleType::S32, SampleType::F32,
                                       SampleType::F64, SampleType::U12, SampleType::U1};

}  // namespace

const char* valueTypeToken(ValueType type) {
    for (const ValueTypeName& v : kValueTypes) {
        if (v.type == type) return v.token;
    }
    return "?";
}

ValueType valueTypeOf(SampleType type) {
    switch (type) {
        case SampleType::U8:
        case SampleType::U1:
            return ValueType::U8;
        case SampleType::U16:
        case SampleType::U12:
            return ValueType::U16;
        case SampleType::S16:
            return ValueType::I16;
        case SampleType::U32:
            return ValueType::U32;
        case SampleType::S32:
            return ValueType::I32;
        case SampleType::F32:
            return ValueType::F32;
        case SampleType::F64:
            return ValueType::F64;
    }
    return ValueType::I32;
}

int64_t Image::rowBytes(int p, int width) const {
    const Plane& plane = planes.at(static_cast<std::size_t>(p));
    const int64_t columns = (int64_t(width) + plane.widthDivisor - 1) / plane.widthDivisor;
    return columns * plane.channels * sampleBytes(type);
}

int Image::rows(int p, int height) const {
    const int d = planes.at(static_cast<std::size_t>(p)).heightDivisor;
    return height <= 0 ? height : (height + d - 1) / d;
}

int64_t Image::fullRowBytes(int width) const {
    int64_t widest = 0;
    for (const Plane& plane : planes) {
        const int64_t bytes = int64_t(width) * plane.channels * sampleBytes(type);
        if (bytes > widest) widest = bytes;
    }
    return widest;
}

namespace {

const char* roleToken(Role role) {
    switch (role) {
        case Role::Source:
            return "src";
        case Role::Destination:
            return "dst";
        case Role::InPlace:
            return "srcdst";
    }
    return "?";
}

std::string number(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", v);
    return text;
}

std::string describeArg(const CallShape& shape, const Arg& a) {
    const Image* image = (a.image >= 0) ? &shape.images.at(static_cast<std::size_t>(a.image)) : nullptr;
    const std::string planes = image ? std::to_string(image->planes.size()) : "?";
    switch (a.kind) {
        case ArgKind::Pointer:
            return std::string(roleToken(image->role)) +
                   (image->planes.size() > 1 ? "." + std::to_string(a.plane) : std::string());
        case ArgKind::PlanePointers:
            return std::string(roleToken(image->role)) + "[" + planes + "]";
        case ArgKind::Step:
            return "step";
        case ArgKind::StepArray:
            return "step[" + planes + "]";
        case ArgKind::StepArray64:
            return "step64[" + planes + "]";
        case ArgKind::Size:
            return "size";
        case ArgKind::SizeL:
            return "sizeL";
        case ArgKind::WidthHeight:
            return "wh";
        case ArgKind::Roi:
            return "roi";
        case ArgKind::Value:
            if (a.alpha) {
                for (const Image& i : shape.images) {
                    if (i.role != Role::Source) return std::string("alpha:") + sampleTypeToken(i.type);
                }
                return "alpha:?";
            }
            if (!a.choices.empty()) {
                std::string text = std::string(valueTypeToken(a.type)) + ":";
                for (std::size_t i = 0; i < a.choices.size(); ++i) text += (i ? "|" : "") + number(a.choices[i]);
                return text;
            }
            return std::string(valueTypeToken(a.type)) + ":" + number(a.lo) + ":" + number(a.hi);
        case ArgKind::Values:
            return std::string(valueTypeToken(a.type)) + "[" + std::to_string(a.count) + "]:" + number(a.lo) + ":" +
                   number(a.hi);
        case ArgKind::Out:
            return std::string("out:") + valueTypeToken(a.type);
        case ArgKind::Scratch:
            return "scratch:" + std::to_string(a.perPixel) + ":" + std::to_string(a.fixed) +
                   (a.rows != 1 ? ":" + std::to_string(a.rows) : std::string());
        case ArgKind::ScratchStep:
            return "bufstep";
    }
    return "?";
}

// --- reading a table row ----------------------------------------------------------

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, separator)) parts.push_back(part);
    if (!text.empty() && text.back() == separator) parts.emplace_back();
    return parts;
}

bool readNumber(const std::string& text, double* value) {
    if (text.empty()) return false;
    char* end = nullptr;
    errno = 0;
    *value = std::strtod(text.c_str(), &end);
    return errno == 0 && end && *end == '\0';
}

bool readInteger(const std::string& text, int64_t* value) {
    if (text.empty()) return false;
    char* end = nullptr;
    errno = 0;
    *value = std::strtoll(text.c_str(), &end, 10);
    return errno == 0 && end && *end == '\0';
}

std::optional<ValueType> readValueType(const std::string& token) {
    for (const ValueTypeName& v : kValueTypes) {
        if (token == v.token) return v.type;
    }
    return std::nullopt;
}

std::optional<SampleType> readSampleType(const std::string& token) {
    for (SampleType t : kSampleTypes) {
        if (token == sampleTypeToken(t)) return t;
    }
    return std::nullopt;
}

class RowReader {
public:
    RowReader(const CallShape* nameShape, std::string* error) : name_(nameShape), error_(error) {
        if (name_) shape_.images = name_->images;
    }

    bool token(const std::string& t, bool first) {
        if (t == "...") {
            if (!first) return fail("\"...\" may only open a row");
            if (!name_) return fail("\"...\" needs a name whose type and layout tokens can be read");
            shape_.args = name_->args;
            lastImage_ = -1;
            return true;
        }
        if (t.rfind("floats=", 0) == 0) return floats(t.substr(7));
        if (t == "steps=elements") return (shape_.stepsInElements = true);
        if (t == "steps=positive") return (shape_.positiveStepsOnly = true);
        if (t == "size") return add(ArgKind::Size);
        if (t == "sizeL") return add(ArgKind::SizeL);
        if (t == "wh") return add(ArgKind::WidthHeight);
        if (t == "roi") return add(ArgKind::Roi);
        if (t == "bufstep") {
            if (!haveScratch_) return fail("bufstep before any scratch buffer");
            return add(ArgKind::ScratchStep);
        }
        if (t == "step" || t.rfind("step[", 0) == 0 || t.rfind("step64[", 0) == 0) return step(t);
        if (t.rfind("src", 0) == 0 || t.rfind("dst", 0) == 0) return side(t);
        if (t == "alpha" || t.rfind("alpha:", 0) == 0) return alpha(t);
        if (t.rfind("out:", 0) == 0) return out(t.substr(4));
        if (t.rfind("scratch:", 0) == 0) return scratch(t.substr(8));
        return value(t);
    }

    std::optional<CallShape> finish() {
        if (shape_.args.empty()) {
            fail("the row gives no arguments");
            return std::nullopt;
        }
        return shape_;
    }

private:
    bool fail(const std::string& why) {
        if (error_) *error_ = why;
        return false;
    }

    bool add(ArgKind kind) {
        Arg a;
        a.kind = kind;
        shape_.args.push_back(a);
        return true;
    }

    bool floats(const std::string& range) {
        const std::vector<std::string> p = split(range, ':');
        if (p.size() != 2 || !readNumber(p[0], &shape_.floatLo) || !readNumber(p[1], &shape_.floatHi) ||
            !(shape_.floatLo <= shape_.floatHi)) {
            return fail("floats=<lo>:<hi> expected, not floats=" + range);
        }
        shape_.floatRange = true;
        return true;
    }

    int imageWithRole(Role role) const {
        for (std::size_t i = 0; i < shape_.images.size(); ++i) {
            if (shape_.images[i].role == role) return static_cast<int>(i);
        }
        return -1;
    }

    // src, dst, srcdst; src[3]; src.1
    bool side(const std::string& t) {
        std::string base = t;
        std::string rest;
        const std::size_t cut = t.find_first_of("[.");
        if (cut != std::string::npos) {
            base = t.substr(0, cut);
            rest = t.substr(cut);
        }
        Role role;
        if (base == "src") {
            role = Role::Source;
        } else if (base == "dst") {
            role = Role::Destination;
        } else if (base == "srcdst") {
            role = Role::InPlace;
        } else {
            return fail("unknown token " + t);
        }
        const int image = imageWithRole(role);
        if (image < 0) return fail(t + ": the name gives no such side");
        const int planes = static_cast<int>(shape_.images[static_cast<std::size_t>(image)].planes.size());
        Arg a;
        a.image = image;
        lastImage_ = image;
        if (rest.empty()) {
            if (planes == 2)
                return fail(t + " has two planes with a step each: name them " + base + ".0, " + base + ".1");
            a.kind = (planes == 1) ? ArgKind::Pointer : ArgKind::PlanePointers;
            a.plane = 0;
        } else if (rest[0] == '[') {
            if (rest != "[" + std::to_string(planes) + "]") {
                return fail(t + ": the name gives that side " + std::to_string(planes) + " planes");
            }
            a.kind = ArgKind::PlanePointers;
        } else {
            int64_t p = -1;
            if (!readInteger(rest.substr(1), &p) || p < 0 || p >= planes) return fail(t + ": no such plane");
            a.kind = ArgKind::Pointer;
            a.plane = static_cast<int>(p);
        }
        shape_.args.push_back(a);
        return true;
    }

    bool step(const std::string& t) {
        if (lastImage_ < 0) return fail(t + " must follow the pointer of its side");
        const Image& image = shape_.images[static_cast<std::size_t>(lastImage_)];
        const std::string planes = std::to_string(image.planes.size());
        Arg a;
        a.image = lastImage_;
        const Arg& previous = shape_.args.back();
        if (t == "step") {
            a.kind = ArgKind::Step;
            a.plane = (previous.kind == ArgKind::Pointer && image.planes.size() > 1) ? previous.plane : -1;
        } else if (t == "step[]" || t == "step[" + planes + "]") {
            a.kind = ArgKind::StepArray;
        } else if (t == "step64[]" || t == "step64[" + planes + "]") {
            a.kind = ArgKind::StepArray64;
        } else {
            return fail(t + ": the side has " + planes + " planes");
        }
        shape_.args.push_back(a);
        return true;
    }

    bool alpha(const std::string& t) {
        Arg a;
        a.kind = ArgKind::Value;
        a.alpha = true;
        const int dst =
            imageWithRole(Role::Destination) >= 0 ? imageWithRole(Role::Destination) : imageWithRole(Role::InPlace);
        if (t == "alpha") {
            if (dst < 0) return fail("alpha needs a destination side, or a type: alpha:8u");
            a.type = valueTypeOf(shape_.images[static_cast<std::size_t>(dst)].type);
        } else {
            const std::optional<SampleType> type = readSampleType(t.substr(6));
            if (!type) return fail("unknown sample type in " + t);
            if (dst >= 0 && shape_.images[static_cast<std::size_t>(dst)].type != *type) {
                return fail(t + " differs from the destination's sample type");
            }
            a.type = valueTypeOf(*type);
        }
        shape_.args.push_back(a);
        return true;
    }

    bool out(const std::string& type) {
        const std::optional<ValueType> v = readValueType(type);
        if (!v) return fail("unknown value type in out:" + type);
        Arg a;
        a.kind = ArgKind::Out;
        a.type = *v;
        shape_.args.push_back(a);
        return true;
    }

    bool scratch(const std::string& text) {
        const std::vector<std::string> p = split(text, ':');
        Arg a;
        a.kind = ArgKind::Scratch;
        if ((p.size() != 2 && p.size() != 3) || !readInteger(p[0], &a.perPixel) || !readInteger(p[1], &a.fixed) ||
            (p.size() == 3 && !readInteger(p[2], &a.rows)) || a.perPixel < 0 || a.fixed < 0 || a.rows < 1) {
            return fail("scratch:<bytes a pixel>:<bytes more>[:<rows>] expected, not scratch:" + text);
        }
        haveScratch_ = true;
        shape_.args.push_back(a);
        return true;
    }

    // <type>:<lo>:<hi> by value, <type>[<n>]:<lo>:<hi> by pointer
    bool value(const std::string& t) {
        const std::vector<std::string> p = split(t, ':');
        if (p.size() == 2 && p[1].find('|') != std::string::npos) return valueOf(p[0], split(p[1], '|'), t);
        if (p.size() != 3) return fail("unknown token " + t);
        Arg a;
        std::string type = p[0];
        a.kind = ArgKind::Value;
        const std::size_t bracket = type.find('[');
        if (bracket != std::string::npos) {
            int64_t n = 0;
            if (type.back() != ']' || !readInteger(type.substr(bracket + 1, type.size() - bracket - 2), &n) || n < 1 ||
                n > 4096) {
                return fail("bad count in " + t);
            }
            a.kind = ArgKind::Values;
            a.count = static_cast<int>(n);
            type = type.substr(0, bracket);
        }
        const std::optional<ValueType> v = readValueType(type);
        if (!v) return fail("unknown token " + t);
        a.type = *v;
        if (!readNumber(p[1], &a.lo) || !readNumber(p[2], &a.hi) || !(a.lo <= a.hi)) {
            return fail("bad range in " + t);
        }
        shape_.args.push_back(a);
        return true;
    }

    // <type>:<v1>|<v2>|... by value: one of the values given, for an argument whose
    // meaningful values are few among many.
    bool valueOf(const std::string& type, const std::vector<std::string>& values, const std::string& t) {
        Arg a;
        a.kind = ArgKind::Value;
        const std::optional<ValueType> v = readValueType(type);
        if (!v) return fail("unknown token " + t);
        a.type = *v;
        for (const std::string& text : values) {
            double x = 0;
            if (!readNumber(text, &x)) return fail("bad value in " + t);
            a.choices.push_back(x);
        }
        a.lo = *std::min_element(a.choices.begin(), a.choices.end());
        a.hi = *std::max_element(a.choices.begin(), a.choices.end());
        shape_.args.push_back(a);
        return true;
    }

    const CallShape* name_;
    std::string* error_;
    CallShape shape_;
    int lastImage_ = -1;
    bool haveScratch_ = false;
};

}  // namespace

std::string describeArguments(const CallShape& shape) {
    std::string text;
    for (const Arg& a : shape.args) {
        if (!text.empty()) text += ' ';
        text += describeArg(shape, a);
    }
    return text;
}

std::string describeImages(const CallShape& shape) {
    std::string text;
    for (const Image& image : shape.images) {
        if (!text.empty()) text += " | ";
        text += std::string(roleToken(image.role)) + " " + sampleTypeToken(image.type);
        for (const Plane& p : image.planes) {
            text += " " + std::to_string(p.channels) + "x" + std::to_string(p.widthDivisor);
        }
    }
    return text;
}

std::optional<CallShape> shapeFromRow(const std::string& text, const CallShape* nameShape, std::string* error) {
    RowReader reader(nameShape, error);
    std::istringstream in(text);
    bool first = true;
    for (std::string t; in >> t; first = false) {
        if (!reader.token(t, first)) return std::nullopt;
    }
    return reader.finish();
}

}  // namespace pxkcross
