// YUV frames in files: raw frames of a named layout (the size given by the user), and
// Y4M streams, which carry their size and sampling in a header.
//
// Layouts and their bytes for a frame of w x h (cw = ceil(w / 2), ch = ceil(h / 2)):
//   i420  planes Y (w x h), U and V (cw x ch)          nv12  Y, then UV pairs (2 cw x ch)
//   i422  planes Y, U and V (cw x h)                   i444  three planes of w x h
//   411   planes Y, U and V (ceil(w / 4) x h)          yuy2  Y0 U Y1 V, uyvy U Y0 V Y1 (4 cw a row)
//   v210  10-bit 4:2:2, six pixels in 16 bytes, rows padded to 128 bytes (48 pixels)
#ifndef PXKCC_APPS_PXKCONV_YUV_FILE_H
#define PXKCC_APPS_PXKCONV_YUV_FILE_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "file_handle.h"

namespace pxkconv {

enum class YuvLayout { I420, Nv12, Yuy2, Uyvy, I422, I444, Yuv411, V210, Gray };

// The layout a name gives (i420, nv12, yuy2, uyvy, i422, i444, 411, v210), or false.
bool yuvLayoutOf(const std::string& name, YuvLayout* layout);
const char* yuvLayoutName(YuvLayout layout);
// The names accepted by yuvLayoutOf, for messages.
const char* yuvLayoutNames();

// One plane of a frame: where it starts in the frame's bytes, its row length in bytes
// and its rows.
struct YuvPlane {
    std::size_t offset;
    int rowBytes;
    int rows;
};

struct YuvFrame {
    YuvLayout layout = YuvLayout::I420;
    int width = 0;
    int height = 0;
    std::vector<uint8_t> bytes;

    static YuvFrame blank(YuvLayout layout, int width, int height);
    int planeCount() const;
    YuvPlane plane(int p) const;
    uint8_t* planeData(int p) { return bytes.data() + plane(p).offset; }
    const uint8_t* planeData(int p) const { return bytes.data() + plane(p).offset; }
};

// Bytes of one frame.
std::size_t frameBytes(YuvLayout layout, int width, int height);

// Reads every frame of a raw file; false with a message if the file is not a whole
// number of frames of that layout and size.
bool readRawFrames(const std::string& path, YuvLayout layout, int width, int height, std::vector<YuvFrame>* frames,
                   std::string* error);
// Writes frames one after another (appending when `append`).
bool writeRawFrame(const std::string& path, const YuvFrame& frame, bool append, std::string* error);

// A Y4M stream read frame by frame.
class Y4mReader {
public:
    // Opens the file and reads its header; false with a message if it is not Y4M or
    // uses a sampling this reader does not take (420, 422, 444, 411 and mono are taken).
    bool open(const std::string& path, std::string* error);
    int width() const { return width_; }
    int height() const { return height_; }
    YuvLayout layout() const { return layout_; }
    // The header's frame-rate and other fields, kept for the writer.
    const std::string& rate() const { return rate_; }
    // The next frame: true with a frame, false at the end (error empty) or on a
    // damaged or truncated frame (error set).
    bool next(YuvFrame* frame, std::string* error);

private:
    FileHandle file_;
    std::string path_;
    std::string rate_ = "F25:1";
    int width_ = 0;
    int height_ = 0;
    YuvLayout layout_ = YuvLayout::I420;
    long frameIndex_ = 0;
};

class Y4mWriter {
public:
    // Creates the file and writes the header for frames of this size and layout (i420,
    // i422, i444, 411 or gray).
    bool open(const std::string& path, YuvLayout layout, int width, int height, const std::string& rate,
              std::string* error);
    bool write(const YuvFrame& frame, std::string* error);

private:
    FileHandle file_;
    std::string path_;
};

}  // namespace pxkconv

#endif
