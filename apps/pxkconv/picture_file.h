// Pictures in files: PNG (through libpng), binary PPM and PGM with 8- or 16-bit
// samples. A picture holds tight rows of interleaved samples; 16-bit samples are in the
// machine's byte order in memory, whatever the file's.
#ifndef PXKCC_APPS_PXKCONV_PICTURE_FILE_H
#define PXKCC_APPS_PXKCONV_PICTURE_FILE_H

#include <cstdint>
#include <string>
#include <vector>

namespace pxkconv {

struct Picture {
    int width = 0;
    int height = 0;
    int channels = 0;  // 1 gray, 3 RGB, 4 RGBA
    int bits = 8;      // 8 or 16 bits a sample
    std::vector<uint8_t> bytes;

    int sampleBytes() const { return bits / 8; }
    std::size_t rowBytes() const { return std::size_t(width) * std::size_t(channels) * std::size_t(sampleBytes()); }
    uint8_t* row(int y) { return bytes.data() + std::size_t(y) * rowBytes(); }
    const uint8_t* row(int y) const { return bytes.data() + std::size_t(y) * rowBytes(); }
    // A picture of the given shape, every byte 0.
    static Picture blank(int width, int height, int channels, int bits);
};

enum class PictureFormat { Png, Pnm };

// A file name's extension in lower case, without the dot; "" without one.
std::string fileExtension(const std::string& path);

// The format a file name's extension names (.png; .ppm, .pgm, .pnm), or false.
bool pictureFormatOf(const std::string& path, PictureFormat* format);

// Reads a picture; false with a message naming the file and the fault. PNG palettes
// expand to RGB, gray with alpha to RGBA, bit depths below 8 to 8.
bool readPicture(const std::string& path, Picture* picture, std::string* error);
// Writes a picture in the format of the file's extension; a PPM or PGM must have 1 or 3
// channels (PGM for 1, PPM for 3).
bool writePicture(const std::string& path, const Picture& picture, std::string* error);

}  // namespace pxkconv

#endif
