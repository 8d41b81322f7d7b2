#include "picture_file.h"

#include "file_handle.h"

#include <png.h>

#include <cctype>
#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>

namespace pxkconv {

namespace {


bool fail(std::string* error, const std::string& path, const std::string& what) {
    *error = path + ": " + what;
    return false;
}

bool isBigEndianHost() {
    const uint16_t one = 1;
    uint8_t first;
    std::memcpy(&first, &one, 1);
    return first == 0;
}

// Swaps the bytes of 16-bit samples between the file's big-endian order and the
// machine's, when they differ.
void swapSamples16(uint8_t* p, std::size_t bytes) {
    if (isBigEndianHost()) return;
    for (std::size_t i = 0; i + 1 < bytes; i += 2) std::swap(p[i], p[i + 1]);
}

// ---- PNM ----

// The next header token of a PNM file: a number, skipping white space and comments.
bool pnmNumber(std::FILE* f, long* value) {
    int c = std::fgetc(f);
    for (;;) {
        while (c != EOF && std::isspace(c)) c = std::fgetc(f);
        if (c != '#') break;
        while (c != EOF && c != '\n') c = std::fgetc(f);
    }
    if (c == EOF || !std::isdigit(c)) return false;
    long v = 0;
    while (c != EOF && std::isdigit(c)) {
        if (v > 100000000) return false;
        v = v * 10 + (c - '0');
        c = std::fgetc(f);
    }
    // Exactly one white-space character ends the header's last number.
    if (c == EOF || !std::isspace(c)) return false;
    *value = v;
    return true;
}

bool readPnm(const std::string& path, std::FILE* f, Picture* picture, std::string* error) {
    char magic[2];
    if (std::fread(magic, 1, 2, f) != 2 || magic[0] != 'P' || (magic[1] != '5' && magic[1] != '6')) {
        return fail(error, path, "not a binary PGM (P5) or PPM (P6) file");
    }
    long w = 0, h = 0, maxval = 0;
    if (!pnmNumber(f, &w) || !pnmNumber(f, &h) || !pnmNumber(f, &maxval)) {
        return fail(error, path, "damaged PGM/PPM header");
    }
    if (w < 1 || h < 1 || w > 65535 || h > 65535) return fail(error, path, "width or height out of 1..65535");
    if (maxval < 1 || maxval > 65535) return fail(error, path, "maximum sample value out of 1..65535");
    *picture = Picture::blank(int(w), int(h), magic[1] == '5' ? 1 : 3, maxval > 255 ? 16 : 8);
    const std::size_t expected = picture->bytes.size();
    const std::size_t got = std::fread(picture->bytes.data(), 1, expected, f);
    if (got != expected) {
        return fail(error, path,
                    "truncated: the header announces " + std::to_string(expected) + " bytes of samples, the file holds " +
                        std::to_string(got));
    }
    if (picture->bits == 16) swapSamples16(picture->bytes.data(), expected);
    return true;
}

bool writePnm(const std::string& path, const Picture& picture, std::string* error) {
    if (picture.channels != 1 && picture.channels != 3) {
        return fail(error, path, "PGM and PPM hold 1 or 3 channels, not " + std::to_string(picture.channels));
    }
    FileHandle f(std::fopen(path.c_str(), "wb"));
    if (!f) return fail(error, path, std::string("cannot open for writing: ") + std::strerror(errno));
    std::fprintf(f.get(), "P%c\n%d %d\n%d\n", picture.channels == 1 ? '5' : '6', picture.width, picture.height,
                 picture.bits == 16 ? 65535 : 255);
    std::vector<uint8_t> out(picture.bytes);
    if (picture.bits == 16) swapSamples16(out.data(), out.size());
    if (std::fwrite(out.data(), 1, out.size(), f.get()) != out.size() || std::fflush(f.get()) != 0) {
        return fail(error, path, "write failed");
    }
    return true;
}

// ---- PNG ----
// libpng reports errors by a long jump back to the setjmp of the function that made
// the call, so the functions that hold a setjmp keep no object with a destructor; the
// picture, the row pointers and the file belong to their callers.

// libpng's messages are not printed: a failure becomes this program's own message.
void pngError(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void pngWarning(png_structp, png_const_charp) {}

struct PngHeader {
    png_uint_32 width, height;
    int bits, channels;
};

// Reads the header and sets up the transformations; false on a damaged file.
bool pngReadHeader(png_structp png, png_infop info, std::FILE* f, PngHeader* header) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_init_io(png, f);
    png_read_info(png, info);
    png_set_expand(png);  // palette to RGB, gray below 8 bits to 8, transparency to alpha
    if (png_get_color_type(png, info) == PNG_COLOR_TYPE_GRAY_ALPHA) png_set_gray_to_rgb(png);
    if (png_get_bit_depth(png, info) == 16 && !isBigEndianHost()) png_set_swap(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    header->width = png_get_image_width(png, info);
    header->height = png_get_image_height(png, info);
    header->bits = png_get_bit_depth(png, info);
    header->channels = png_get_channels(png, info);
    return true;
}

bool pngReadRows(png_structp png, png_bytep* rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_read_image(png, rows);
    png_read_end(png, nullptr);
    return true;
}

bool readPng(const std::string& path, std::FILE* f, Picture* picture, std::string* error) {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, pngError, pngWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_read_struct(&png, nullptr, nullptr);
        return fail(error, path, "cannot start the PNG reader");
    }
    PngHeader header{};
    bool ok = pngReadHeader(png, info, f, &header);
    if (ok && (header.width > 65535 || header.height > 65535)) {
        png_destroy_read_struct(&png, &info, nullptr);
        return fail(error, path, "width or height above 65535");
    }
    if (ok) {
        *picture = Picture::blank(int(header.width), int(header.height), header.channels, header.bits);
        std::vector<png_bytep> rows(header.height);
        for (png_uint_32 y = 0; y < header.height; ++y) rows[y] = picture->row(int(y));
        ok = pngReadRows(png, rows.data());
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return ok ? true : fail(error, path, "damaged or truncated PNG file");
}

bool pngWriteAll(png_structp png, png_infop info, std::FILE* f, const Picture& picture, png_bytep const* rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    int colour = PNG_COLOR_TYPE_GRAY;
    if (picture.channels == 3) colour = PNG_COLOR_TYPE_RGB;
    if (picture.channels == 4) colour = PNG_COLOR_TYPE_RGB_ALPHA;
    png_init_io(png, f);
    png_set_IHDR(png, info, png_uint_32(picture.width), png_uint_32(picture.height), picture.bits, colour,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    if (picture.bits == 16 && !isBigEndianHost()) png_set_swap(png);
    for (int y = 0; y < picture.height; ++y) png_write_row(png, rows[y]);
    png_write_end(png, nullptr);
    return true;
}

bool writePng(const std::string& path, const Picture& picture, std::string* error) {
    if (picture.channels != 1 && picture.channels != 3 && picture.channels != 4) {
        return fail(error, path, "PNG pictures here hold 1, 3 or 4 channels");
    }
    FileHandle f(std::fopen(path.c_str(), "wb"));
    if (!f) return fail(error, path, std::string("cannot open for writing: ") + std::strerror(errno));
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, pngError, pngWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        return fail(error, path, "cannot start the PNG writer");
    }
    std::vector<png_bytep> rows(std::size_t(picture.height));
    for (int y = 0; y < picture.height; ++y) rows[std::size_t(y)] = const_cast<png_bytep>(picture.row(y));
    const bool ok = pngWriteAll(png, info, f.get(), picture, rows.data());
    png_destroy_write_struct(&png, &info);
    if (!ok || std::fflush(f.get()) != 0) return fail(error, path, "write failed");
    return true;
}

}  // namespace

std::string fileExtension(const std::string& path) {
    const std::size_t dot = path.find_last_of('.');
    const std::size_t slash = path.find_last_of('/');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
    std::string e = path.substr(dot + 1);
    for (char& c : e) c = char(std::tolower(static_cast<unsigned char>(c)));
    return e;
}

Picture Picture::blank(int width, int height, int channels, int bits) {
    Picture p;
    p.width = width;
    p.height = height;
    p.channels = channels;
    p.bits = bits;
    p.bytes.assign(p.rowBytes() * std::size_t(height), 0);
    return p;
}

bool pictureFormatOf(const std::string& path, PictureFormat* format) {
    const std::string e = fileExtension(path);
    if (e == "png") {
        *format = PictureFormat::Png;
        return true;
    }
    if (e == "ppm" || e == "pgm" || e == "pnm") {
        *format = PictureFormat::Pnm;
        return true;
    }
    return false;
}

bool readPicture(const std::string& path, Picture* picture, std::string* error) {
    FileHandle f(std::fopen(path.c_str(), "rb"));
    if (!f) return fail(error, path, std::string("cannot open: ") + std::strerror(errno));
    uint8_t signature[8] = {};
    const std::size_t n = std::fread(signature, 1, sizeof signature, f.get());
    std::rewind(f.get());
    if (n == 8 && png_sig_cmp(signature, 0, 8) == 0) return readPng(path, f.get(), picture, error);
    if (n >= 2 && signature[0] == 'P' && (signature[1] == '5' || signature[1] == '6')) {
        return readPnm(path, f.get(), picture, error);
    }
    return fail(error, path, "neither PNG nor binary PGM/PPM");
}

bool writePicture(const std::string& path, const Picture& picture, std::string* error) {
    PictureFormat format;
    if (!pictureFormatOf(path, &format)) {
        return fail(error, path, "unknown picture format (use .png, .ppm, .pgm or .pnm)");
    }
    if (picture.bits != 8 && picture.bits != 16) return fail(error, path, "only 8- and 16-bit samples can be written");
    return format == PictureFormat::Png ? writePng(path, picture, error) : writePnm(path, picture, error);
}

}  // namespace pxkconv
