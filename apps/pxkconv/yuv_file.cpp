#include "yuv_file.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sstream>

namespace pxkconv {

namespace {

struct LayoutName {
    YuvLayout layout;
    const char* name;
};
const LayoutName kLayoutNames[] = {
    {YuvLayout::I420, "i420"}, {YuvLayout::Nv12, "nv12"}, {YuvLayout::Yuy2, "yuy2"},
    {YuvLayout::Uyvy, "uyvy"}, {YuvLayout::I422, "i422"}, {YuvLayout::I444, "i444"},
    {YuvLayout::Yuv411, "411"}, {YuvLayout::V210, "v210"},
};

int half(int v) { return (v + 1) / 2; }
int quarter(int v) { return (v + 3) / 4; }

bool fail(std::string* error, const std::string& path, const std::string& what) {
    *error = path + ": " + what;
    return false;
}

std::string sizeText(int w, int h) { return std::to_string(w) + "x" + std::to_string(h); }

// A decimal field of a header, or 0 if it is not one in 1..65535.
int dimension(const std::string& text) {
    char* end = nullptr;
    const long v = std::strtol(text.c_str(), &end, 10);
    return (end != text.c_str() && *end == '\0' && v >= 1 && v <= 65535) ? int(v) : 0;
}

}  // namespace

bool yuvLayoutOf(const std::string& name, YuvLayout* layout) {
    for (const LayoutName& l : kLayoutNames) {
        if (name == l.name) {
            *layout = l.layout;
            return true;
        }
    }
    return false;
}

const char* yuvLayoutName(YuvLayout layout) {
    for (const LayoutName& l : kLayoutNames) {
        if (l.layout == layout) return l.name;
    }
    return "gray";
}

const char* yuvLayoutNames() { return "i420, nv12, yuy2, uyvy, i422, i444, 411, v210"; }

int YuvFrame::planeCount() const {
    switch (layout) {
        case YuvLayout::I420:
        case YuvLayout::I422:
        case YuvLayout::I444:
        case YuvLayout::Yuv411:
            return 3;
        case YuvLayout::Nv12:
            return 2;
        default:
            return 1;
    }
}

YuvPlane YuvFrame::plane(int p) const {
    const int w = width, h = height;
    const std::size_t luma = std::size_t(w) * std::size_t(h);
    switch (layout) {
        case YuvLayout::I420: {
            const std::size_t chroma = std::size_t(half(w)) * std::size_t(half(h));
            if (p == 0) return {0, w, h};
            return {luma + std::size_t(p - 1) * chroma, half(w), half(h)};
        }
        case YuvLayout::Nv12:
            if (p == 0) return {0, w, h};
            return {luma, 2 * half(w), half(h)};
        case YuvLayout::I422: {
            const std::size_t chroma = std::size_t(half(w)) * std::size_t(h);
            if (p == 0) return {0, w, h};
            return {luma + std::size_t(p - 1) * chroma, half(w), h};
        }
        case YuvLayout::I444:
            return {std::size_t(p) * luma, w, h};
        case YuvLayout::Yuv411: {
            const std::size_t chroma = std::size_t(quarter(w)) * std::size_t(h);
            if (p == 0) return {0, w, h};
            return {luma + std::size_t(p - 1) * chroma, quarter(w), h};
        }
        case YuvLayout::Yuy2:
        case YuvLayout::Uyvy:
            return {0, 4 * half(w), h};
        case YuvLayout::V210:
            return {0, (w + 47) / 48 * 128, h};
        case YuvLayout::Gray:
            return {0, w, h};
    }
    return {0, 0, 0};
}

YuvFrame YuvFrame::blank(YuvLayout layout, int width, int height) {
    YuvFrame f;
    f.layout = layout;
    f.width = width;
    f.height = height;
    f.bytes.assign(frameBytes(layout, width, height), 0);
    return f;
}

std::size_t frameBytes(YuvLayout layout, int width, int height) {
    YuvFrame shape;
    shape.layout = layout;
    shape.width = width;
    shape.height = height;
    std::size_t total = 0;
    for (int p = 0; p < shape.planeCount(); ++p) {
        const YuvPlane plane = shape.plane(p);
        total += std::size_t(plane.rowBytes) * std::size_t(plane.rows);
    }
    return total;
}

bool readRawFrames(const std::string& path, YuvLayout layout, int width, int height, std::vector<YuvFrame>* frames,
                   std::string* error) {
    FileHandle f(std::fopen(path.c_str(), "rb"));
    if (!f) return fail(error, path, std::string("cannot open: ") + std::strerror(errno));
    std::vector<uint8_t> all;
    uint8_t chunk[65536];
    std::size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, f.get())) > 0) all.insert(all.end(), chunk, chunk + n);
    const std::size_t each = frameBytes(layout, width, height);
    if (all.empty() || all.size() % each != 0) {
        return fail(error, path,
                    std::string("a raw ") + yuvLayoutName(layout) + " frame of " + sizeText(width, height) + " takes " +
                        std::to_string(each) + " bytes, and the file's " + std::to_string(all.size()) +
                        " bytes are not a whole number of frames; check --size and the layout");
    }
    frames->clear();
    for (std::size_t at = 0; at < all.size(); at += each) {
        YuvFrame frame = YuvFrame::blank(layout, width, height);
        std::memcpy(frame.bytes.data(), all.data() + at, each);
        frames->push_back(std::move(frame));
    }
    return true;
}

bool writeRawFrame(const std::string& path, const YuvFrame& frame, bool append, std::string* error) {
    FileHandle f(std::fopen(path.c_str(), append ? "ab" : "wb"));
    if (!f) return fail(error, path, std::string("cannot open for writing: ") + std::strerror(errno));
    if (std::fwrite(frame.bytes.data(), 1, frame.bytes.size(), f.get()) != frame.bytes.size() ||
        std::fflush(f.get()) != 0) {
        return fail(error, path, "write failed");
    }
    return true;
}

// ---- Y4M ----

bool Y4mReader::open(const std::string& path, std::string* error) {
    path_ = path;
    file_.reset(std::fopen(path.c_str(), "rb"));
    if (!file_) return fail(error, path, std::string("cannot open: ") + std::strerror(errno));
    std::string header;
    int c;
    while ((c = std::fgetc(file_.get())) != EOF && c != '\n' && header.size() < 4096) header += char(c);
    if (c != '\n' || header.compare(0, 10, "YUV4MPEG2 ") != 0) return fail(error, path, "not a Y4M stream");
    std::istringstream fields(header.substr(10));
    std::string field, colour = "420jpeg";
    while (fields >> field) {
        const char tag = field[0];
        const std::string value = field.substr(1);
        if (tag == 'W') width_ = dimension(value);
        if (tag == 'H') height_ = dimension(value);
        if (tag == 'C') colour = value;
        if (tag == 'F') rate_ = field;
        if (tag == 'I' && value != "p" && value != "?") {
            return fail(error, path, "interlaced Y4M (I" + value + ") is not taken; only progressive frames");
        }
    }
    if (width_ < 1 || height_ < 1 || width_ > 65535 || height_ > 65535) {
        return fail(error, path, "Y4M header without a width and height in 1..65535");
    }
    if (colour == "420" || colour == "420jpeg" || colour == "420paldv" || colour == "420mpeg2") {
        layout_ = YuvLayout::I420;
    } else if (colour == "422") {
        layout_ = YuvLayout::I422;
    } else if (colour == "444") {
        layout_ = YuvLayout::I444;
    } else if (colour == "411") {
        layout_ = YuvLayout::Yuv411;
    } else if (colour == "mono") {
        layout_ = YuvLayout::Gray;
    } else {
        return fail(error, path, "Y4M colour space C" + colour + " is not taken (420, 422, 444, 411 or mono, 8 bits)");
    }
    return true;
}

bool Y4mReader::next(YuvFrame* frame, std::string* error) {
    error->clear();
    std::string marker;
    int c;
    while ((c = std::fgetc(file_.get())) != EOF && c != '\n' && marker.size() < 4096) marker += char(c);
    if (c == EOF && marker.empty()) return false;
    if (marker.compare(0, 5, "FRAME") != 0 || c != '\n') {
        return fail(error, path_, "damaged Y4M stream before frame " + std::to_string(frameIndex_ + 1));
    }
    *frame = YuvFrame::blank(layout_, width_, height_);
    const std::size_t got = std::fread(frame->bytes.data(), 1, frame->bytes.size(), file_.get());
    if (got != frame->bytes.size()) {
        return fail(error, path_,
                    "truncated: frame " + std::to_string(frameIndex_ + 1) + " holds " + std::to_string(got) + " of its " +
                        std::to_string(frame->bytes.size()) + " bytes");
    }
    ++frameIndex_;
    return true;
}

bool Y4mWriter::open(const std::string& path, YuvLayout layout, int width, int height, const std::string& rate,
                     std::string* error) {
    const char* colour = nullptr;
    switch (layout) {
        case YuvLayout::I420:
            colour = "420jpeg";
            break;
        case YuvLayout::I422:
            colour = "422";
            break;
        case YuvLayout::I444:
            colour = "444";
            break;
        case YuvLayout::Yuv411:
            colour = "411";
            break;
        case YuvLayout::Gray:
            colour = "mono";
            break;
        default:
            return fail(error, path, std::string("Y4M holds planar frames; ") + yuvLayoutName(layout) + " is not one");
    }
    path_ = path;
    file_.reset(std::fopen(path.c_str(), "wb"));
    if (!file_) return fail(error, path, std::string("cannot open for writing: ") + std::strerror(errno));
    std::fprintf(file_.get(), "YUV4MPEG2 W%d H%d %s Ip A1:1 C%s\n", width, height, rate.c_str(), colour);
    return true;
}

bool Y4mWriter::write(const YuvFrame& frame, std::string* error) {
    if (std::fputs("FRAME\n", file_.get()) < 0 ||
        std::fwrite(frame.bytes.data(), 1, frame.bytes.size(), file_.get()) != frame.bytes.size() ||
        std::fflush(file_.get()) != 0) {
        return fail(error, path_, "write failed");
    }
    return true;
}

}  // namespace pxkconv
