#include "frame_files.h"

#include <cerrno>
#include <cctype>
#include <cstdio>
#include <cstring>

#include "file_handle.h"

namespace pxkconv {

namespace {

// A file that cannot be opened for reading gives its own exit code, before any format
// reader sees it.
Failure openable(const std::string& path) {
    FileHandle f(std::fopen(path.c_str(), "rb"));
    if (!f) return fault(kExitCannotOpen, path + ": cannot open: " + std::strerror(errno));
    return Failure{};
}

YuvLayout yuvLayoutFor(const LayoutInfo* layout) {
    YuvLayout l = YuvLayout::Gray;
    yuvLayoutOf(layout->yuvName, &l);
    return l;
}

class PictureSource : public FrameSource {
public:
    bool next(FrameData* frame, Failure*) override {
        if (done_) return false;
        done_ = true;
        *frame = std::move(frame_);
        return true;
    }
    long count() const override { return 1; }
    FrameData frame_;
    bool done_ = false;
};

class RawSource : public FrameSource {
public:
    bool next(FrameData* frame, Failure*) override {
        if (at_ >= frames_.size()) return false;
        frame->layout = layout;
        frame->yuv = std::move(frames_[at_++]);
        return true;
    }
    long count() const override { return long(frames_.size()); }
    std::vector<YuvFrame> frames_;
    std::size_t at_ = 0;
};

// Y4M frames; mono streams become gray pictures.
class Y4mSource : public FrameSource {
public:
    bool next(FrameData* frame, Failure* failure) override {
        YuvFrame f;
        std::string error;
        if (!reader_.next(&f, &error)) {
            if (!error.empty()) *failure = fault(kExitDamaged, error);
            return false;
        }
        frame->layout = layout;
        if (layout->picture) {
            frame->picture = Picture::blank(width, height, 1, 8);
            frame->picture.bytes = std::move(f.bytes);
        } else {
            frame->yuv = std::move(f);
        }
        return true;
    }
    long count() const override { return 0; }
    std::string rate() const override { return reader_.rate(); }
    Y4mReader reader_;
};

}  // namespace

FrameData FrameData::blank(const LayoutInfo* layout, int width, int height) {
    FrameData f;
    f.layout = layout;
    if (layout->picture) {
        f.picture = Picture::blank(width, height, layout->channels, layout->bits);
    } else {
        f.yuv = YuvFrame::blank(yuvLayoutFor(layout), width, height);
    }
    return f;
}

std::vector<PlaneRef> FrameData::planes() {
    std::vector<PlaneRef> refs;
    if (layout->picture) {
        refs.push_back({picture.bytes.data(), int64_t(picture.rowBytes())});
    } else {
        for (int p = 0; p < yuv.planeCount(); ++p) refs.push_back({yuv.planeData(p), yuv.plane(p).rowBytes});
    }
    return refs;
}

bool fileKindOf(const std::string& path, FileKind* kind, std::string* rawLayout) {
    const std::string e = fileExtension(path);
    PictureFormat pf;
    YuvLayout yl;
    rawLayout->clear();
    if (pictureFormatOf(path, &pf)) {
        *kind = FileKind::Picture;
    } else if (e == "y4m") {
        *kind = FileKind::Y4m;
    } else if (yuvLayoutOf(e, &yl)) {
        *kind = FileKind::Raw;
        *rawLayout = e;
    } else if (e == "yuv" || e == "raw") {
        *kind = FileKind::Raw;
    } else {
        return false;
    }
    return true;
}

Failure openSource(const std::string& path, FileKind kind, const std::string& layoutName, bool bayer, int width,
                   int height, std::unique_ptr<FrameSource>* source) {
    if (Failure f = openable(path)) return f;
    std::string error;
    if (kind == FileKind::Picture) {
        auto s = std::make_unique<PictureSource>();
        if (!readPicture(path, &s->frame_.picture, &error)) return fault(kExitDamaged, error);
        const Picture& p = s->frame_.picture;
        std::string name = p.channels == 1 ? "gray" : (p.channels == 3 ? "rgb" : "rgba");
        if (bayer) {
            if (p.channels != 1) return fault(kExitUsage, path + ": a Bayer mosaic is a one-channel PGM or PNG");
            name = "bayer";
        }
        if (p.bits == 16) name += "16";
        s->layout = s->frame_.layout = layoutInfo(name);
        s->width = p.width;
        s->height = p.height;
        *source = std::move(s);
        return Failure{};
    }
    if (kind == FileKind::Y4m) {
        auto s = std::make_unique<Y4mSource>();
        if (!s->reader_.open(path, &error)) {
            const bool foreign = error.find("is not taken") != std::string::npos;
            return fault(foreign ? kExitUnknownFormat : kExitDamaged, error);
        }
        s->width = s->reader_.width();
        s->height = s->reader_.height();
        s->layout = layoutInfo(yuvLayoutName(s->reader_.layout()));
        *source = std::move(s);
        return Failure{};
    }
    const LayoutInfo* layout = layoutInfo(layoutName);
    if (layoutName.empty()) {
        return fault(kExitUsage, path + ": a raw file needs its layout: -f LAYOUT or an extension such as .i420");
    }
    if (!layout || layout->picture) {
        return fault(kExitUnknownFormat, path + ": unknown raw layout \"" + layoutName + "\" (raw layouts: " +
                                             yuvLayoutNames() + ")");
    }
    if (width < 1 || height < 1) return fault(kExitUsage, path + ": a raw file needs --size WxH");
    auto s = std::make_unique<RawSource>();
    if (!readRawFrames(path, yuvLayoutFor(layout), width, height, &s->frames_, &error)) {
        return fault(kExitWrongSize, error);
    }
    s->layout = layout;
    s->width = width;
    s->height = height;
    *source = std::move(s);
    return Failure{};
}

Failure FrameSink::write(const FrameData& frame) {
    std::string error;
    ++written_;
    if (kind_ == FileKind::Picture) {
        if (!writePicture(path_, frame.picture, &error)) return fault(kExitCannotOpen, error);
        return Failure{};
    }
    if (kind_ == FileKind::Raw) {
        if (!writeRawFrame(path_, frame.yuv, written_ > 1, &error)) return fault(kExitCannotOpen, error);
        return Failure{};
    }
    // Y4M: gray pictures go as mono frames.
    YuvFrame mono;
    const YuvFrame* out = &frame.yuv;
    if (frame.layout->picture) {
        mono = YuvFrame::blank(YuvLayout::Gray, frame.picture.width, frame.picture.height);
        mono.bytes = frame.picture.bytes;
        out = &mono;
    }
    if (written_ == 1 && !y4m_.open(path_, out->layout, out->width, out->height, rate_, &error)) {
        return fault(kExitCannotOpen, error);
    }
    if (!y4m_.write(*out, &error)) return fault(kExitCannotOpen, error);
    return Failure{};
}

}  // namespace pxkconv
