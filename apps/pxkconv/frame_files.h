// Frames of any layout that pxkconv reads or writes, and the files they come from and
// go to: pictures (one frame), Y4M streams and raw YUV files (any number of frames).
#ifndef PXKCC_APPS_PXKCONV_FRAME_FILES_H
#define PXKCC_APPS_PXKCONV_FRAME_FILES_H

#include <memory>
#include <string>
#include <vector>

#include "export_call.h"
#include "messages.h"
#include "picture_file.h"
#include "routes.h"
#include "yuv_file.h"

namespace pxkconv {

// One frame in a layout of routes.h: a picture, or a YUV frame.
struct FrameData {
    const LayoutInfo* layout = nullptr;
    Picture picture;
    YuvFrame yuv;

    static FrameData blank(const LayoutInfo* layout, int width, int height);
    int width() const { return layout->picture ? picture.width : yuv.width; }
    int height() const { return layout->picture ? picture.height : yuv.height; }
    // Row 0 and the step of each plane.
    std::vector<PlaneRef> planes();
};

enum class FileKind { Picture, Y4m, Raw };

// The kind of file a name's extension gives, and for raw files the layout that the
// extension names (".nv12"), or "" (".yuv", ".raw"). False for an unknown extension.
bool fileKindOf(const std::string& path, FileKind* kind, std::string* rawLayout);

// Frames read one by one from a file.
class FrameSource {
public:
    virtual ~FrameSource() = default;
    // The next frame: true with a frame; false at the end (no failure) or on a fault.
    virtual bool next(FrameData* frame, Failure* failure) = 0;
    // Frames in the file, or 0 where the file does not say before it is read.
    virtual long count() const = 0;
    // The Y4M frame rate field to keep ("F25:1").
    virtual std::string rate() const { return "F25:1"; }
    const LayoutInfo* layout = nullptr;
    int width = 0, height = 0;
};

// Opens a source. `layoutName` is -f (raw files, or "bayer" for a Bayer PGM); width and
// height are --size (raw files).
Failure openSource(const std::string& path, FileKind kind, const std::string& layoutName, bool bayer, int width,
                   int height, std::unique_ptr<FrameSource>* source);

// Frames written one by one to a file.
class FrameSink {
public:
    FrameSink(std::string path, FileKind kind, std::string rate) : path_(std::move(path)), kind_(kind), rate_(std::move(rate)) {}
    Failure write(const FrameData& frame);

private:
    std::string path_;
    FileKind kind_;
    std::string rate_;
    long written_ = 0;
    Y4mWriter y4m_;
};

}  // namespace pxkconv

#endif
