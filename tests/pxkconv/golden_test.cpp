// Golden files: pxkconv's output for each format, kept in tests/pxkconv/golden/ and
// compared byte for byte.
//
// How they were made: the sources are built here from the literal tables below (a
// 16 x 4 picture of eight flat 4 x 2 colour blocks, and a v210 row of literal 10-bit
// samples), and each golden file is pxkconv's output for them, written by this test
// when it runs with PXKCONV_REGENERATE_GOLDEN=1:
//
//     PXKCONV_REGENERATE_GOLDEN=1 build/tests/pxkconv/pxkconv_program_test --gtest_filter='PxkconvGolden.*'
//
// A golden file is never trusted because the program wrote it: every test below also
// checks the kept file's bytes independently, against the BT.601 formulas in floating
// point (within the rounding of the fixed-point forms), against the layout rules of the
// YUV formats, or against the literal samples.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "picture_file.h"
#include "run_program.h"

namespace {

using namespace pxkconvtest;
using pxkconv::Picture;

constexpr int kW = 16, kH = 4;
// Eight flat blocks of 4 x 2 pixels, so that every chroma group (pairs, 2 x 2 blocks,
// groups of four) sees one colour.
constexpr int kBlocks[8][3] = {{255, 0, 0}, {0, 255, 0},     {0, 0, 255},    {255, 255, 255},
                               {0, 0, 0},   {128, 128, 128}, {200, 150, 50}, {30, 90, 220}};

const int* colourAt(int x, int y) { return kBlocks[(y / 2) * 4 + x / 4]; }

bool regenerate() {
    const char* v = std::getenv("PXKCONV_REGENERATE_GOLDEN");
    return v && *v == '1';
}

std::string golden(const std::string& name) { return std::string(PXKCONV_GOLDEN_DIR) + "/" + name; }

std::string sourcePicture() {
    Picture p = Picture::blank(kW, kH, 3, 8);
    for (int y = 0; y < kH; ++y) {
        for (int x = 0; x < kW; ++x) {
            for (int c = 0; c < 3; ++c) p.row(y)[3 * x + c] = uint8_t(colourAt(x, y)[c]);
        }
    }
    std::string error;
    EXPECT_TRUE(pxkconv::writePicture(scratch("golden_source.ppm"), p, &error)) << error;
    return scratch("golden_source.ppm");
}

// Runs pxkconv into the scratch directory and compares with (or, regenerating, writes)
// the golden file; returns the golden file's bytes.
std::vector<uint8_t> produce(std::vector<std::string> args, const std::string& name) {
    const std::string out = scratch(name);
    args.push_back(out);
    const ProgramRun run = runPxkconv(args);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    if (regenerate()) putFile(golden(name), fileBytes(out));
    const std::vector<uint8_t> kept = fileBytes(golden(name));
    EXPECT_FALSE(kept.empty()) << golden(name) << " is missing";
    EXPECT_EQ(fileBytes(out), kept) << name << " differs from its golden file";
    return kept;
}

double studioY(const int* c) { return 16 + (65.481 * c[0] + 128.553 * c[1] + 24.966 * c[2]) / 255; }
double studioCb(const int* c) { return 128 + (-37.797 * c[0] - 74.203 * c[1] + 112.0 * c[2]) / 255; }
double studioCr(const int* c) { return 128 + (112.0 * c[0] - 93.786 * c[1] - 18.214 * c[2]) / 255; }
double luma(const int* c) { return 0.299 * c[0] + 0.587 * c[1] + 0.114 * c[2]; }
double clamp255(double v) { return v < 0 ? 0 : (v > 255 ? 255 : v); }

// The i420 golden frame: planes Y (16 x 4), U and V (8 x 2).
void checkStudio420(const std::vector<uint8_t>& f) {
    ASSERT_EQ(f.size(), std::size_t(kW * kH * 3 / 2));
    for (int y = 0; y < kH; ++y) {
        for (int x = 0; x < kW; ++x) EXPECT_NEAR(f[std::size_t(y * kW + x)], studioY(colourAt(x, y)), 1.5) << x << "," << y;
    }
    for (int y = 0; y < kH / 2; ++y) {
        for (int x = 0; x < kW / 2; ++x) {
            const int* c = colourAt(2 * x, 2 * y);
            EXPECT_NEAR(f[std::size_t(kW * kH + y * 8 + x)], studioCb(c), 1.5) << x << "," << y;
            EXPECT_NEAR(f[std::size_t(kW * kH + 16 + y * 8 + x)], studioCr(c), 1.5) << x << "," << y;
        }
    }
}

TEST(PxkconvGolden, RawI420AndY4m) {
    const std::string src = sourcePicture();
    const std::vector<uint8_t> i420 = produce({src}, "blocks.i420");
    checkStudio420(i420);
    const std::vector<uint8_t> y4m = produce({"--size", "16x4", golden("blocks.i420")}, "blocks.y4m");
    const std::string header = "YUV4MPEG2 W16 H4 F25:1 Ip A1:1 C420jpeg\nFRAME\n";
    ASSERT_EQ(y4m.size(), header.size() + i420.size());
    EXPECT_EQ(std::string(y4m.begin(), y4m.begin() + long(header.size())), header);
    EXPECT_TRUE(std::equal(i420.begin(), i420.end(), y4m.begin() + long(header.size())));
}

TEST(PxkconvGolden, RawLayoutsMovedFromI420) {
    // Each layout holds the golden i420 bytes where its definition puts them.
    const std::vector<uint8_t> i420 = fileBytes(golden("blocks.i420"));
    ASSERT_EQ(i420.size(), 96u);
    auto Y = [&](int x, int y) { return i420[std::size_t(y * kW + x)]; };
    auto U = [&](int x, int y) { return i420[std::size_t(64 + (y / 2) * 8 + x / 2)]; };
    auto V = [&](int x, int y) { return i420[std::size_t(80 + (y / 2) * 8 + x / 2)]; };
    const std::vector<std::string> from = {"--size", "16x4", golden("blocks.i420")};

    const std::vector<uint8_t> nv12 = produce(from, "blocks.nv12");
    ASSERT_EQ(nv12.size(), 96u);
    for (int i = 0; i < 64; ++i) EXPECT_EQ(nv12[std::size_t(i)], i420[std::size_t(i)]);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 8; ++x) {
            EXPECT_EQ(nv12[std::size_t(64 + y * 16 + 2 * x)], U(2 * x, 2 * y));
            EXPECT_EQ(nv12[std::size_t(64 + y * 16 + 2 * x + 1)], V(2 * x, 2 * y));
        }
    }
    const std::vector<uint8_t> yuy2 = produce(from, "blocks.yuy2");
    const std::vector<uint8_t> uyvy = produce(from, "blocks.uyvy");
    ASSERT_EQ(yuy2.size(), 128u);
    ASSERT_EQ(uyvy.size(), 128u);
    const std::vector<uint8_t> i422 = produce(from, "blocks.i422");
    ASSERT_EQ(i422.size(), 128u);
    for (int y = 0; y < kH; ++y) {
        for (int p = 0; p < kW / 2; ++p) {
            const std::size_t at = std::size_t(y * 32 + 4 * p);
            const uint8_t y0 = Y(2 * p, y), y1 = Y(2 * p + 1, y), u = U(2 * p, y), v = V(2 * p, y);
            EXPECT_EQ(yuy2[at], y0);
            EXPECT_EQ(yuy2[at + 1], u);
            EXPECT_EQ(yuy2[at + 2], y1);
            EXPECT_EQ(yuy2[at + 3], v);
            EXPECT_EQ(uyvy[at], u);
            EXPECT_EQ(uyvy[at + 1], y0);
            EXPECT_EQ(uyvy[at + 2], v);
            EXPECT_EQ(uyvy[at + 3], y1);
            EXPECT_EQ(i422[std::size_t(64 + y * 8 + p)], u);
            EXPECT_EQ(i422[std::size_t(96 + y * 8 + p)], v);
        }
    }
}

TEST(PxkconvGolden, RawI444FullRangeAnd411) {
    const std::string src = sourcePicture();
    const std::vector<uint8_t> i444 = produce({"--range", "full", src}, "blocks.i444");
    ASSERT_EQ(i444.size(), std::size_t(3 * kW * kH));
    for (int y = 0; y < kH; ++y) {
        for (int x = 0; x < kW; ++x) {
            const int* c = colourAt(x, y);
            const double l = luma(c);
            const std::size_t at = std::size_t(y * kW + x);
            EXPECT_NEAR(i444[at], l, 1.5);
            EXPECT_NEAR(i444[64 + at], clamp255(0.492 * (c[2] - l) + 128), 1.5);
            EXPECT_NEAR(i444[128 + at], clamp255(0.877 * (c[0] - l) + 128), 1.5);
        }
    }
    const std::vector<uint8_t> yuv411 = produce({src}, "blocks.411");
    ASSERT_EQ(yuv411.size(), std::size_t(kW * kH + 2 * 4 * kH));
    for (int y = 0; y < kH; ++y) {
        for (int x = 0; x < kW; ++x) EXPECT_NEAR(yuv411[std::size_t(y * kW + x)], studioY(colourAt(x, y)), 1.5);
        for (int g = 0; g < 4; ++g) {
            EXPECT_NEAR(yuv411[std::size_t(64 + y * 4 + g)], studioCb(colourAt(4 * g, y)), 1.5);
            EXPECT_NEAR(yuv411[std::size_t(80 + y * 4 + g)], studioCr(colourAt(4 * g, y)), 1.5);
        }
    }
}

// Samples of a picture file kept in the tree.
Picture keptPicture(const std::string& name) {
    Picture p;
    std::string error;
    EXPECT_TRUE(pxkconv::readPicture(golden(name), &p, &error)) << error;
    return p;
}

TEST(PxkconvGolden, PgmPpmAndPng) {
    const std::string src = sourcePicture();
    produce({src}, "blocks_gray.pgm");
    const Picture gray = keptPicture("blocks_gray.pgm");
    ASSERT_EQ(gray.channels, 1);
    ASSERT_EQ(gray.width, kW);
    for (int y = 0; y < kH; ++y) {
        for (int x = 0; x < kW; ++x) EXPECT_NEAR(gray.row(y)[x], luma(colourAt(x, y)), 1.0) << x << "," << y;
    }
    produce({golden("blocks_gray.pgm")}, "blocks_gray_rgb.ppm");
    const Picture rgb = keptPicture("blocks_gray_rgb.ppm");
    ASSERT_EQ(rgb.channels, 3);
    for (int y = 0; y < kH; ++y) {
        for (int x = 0; x < kW; ++x) {
            for (int c = 0; c < 3; ++c) EXPECT_EQ(rgb.row(y)[3 * x + c], gray.row(y)[x]);
        }
    }
    // Back from the golden 4:2:0 frame: flat blocks come back within the rounding of
    // both directions.
    produce({"--size", "16x4", golden("blocks.i420")}, "blocks_from_i420.png");
    const Picture back = keptPicture("blocks_from_i420.png");
    ASSERT_EQ(back.channels, 3);
    for (int y = 0; y < kH; ++y) {
        for (int x = 0; x < kW; ++x) {
            for (int c = 0; c < 3; ++c) EXPECT_NEAR(back.row(y)[3 * x + c], colourAt(x, y)[c], 3.0) << x << "," << y;
        }
    }
}

TEST(PxkconvGolden, V210ToSixteenBitLuma) {
    // Two rows of 12 pixels: v210 words hold Cb0 Y0 Cr0 | Y1 Cb1 Y2 | Cr1 Y3 Cb2 |
    // Y4 Cr2 Y5 in 10-bit fields at bits 0, 10, 20; each row padded to 128 bytes.
    const int w = 12, h = 2;
    std::vector<uint8_t> file(std::size_t(128 * h), 0);
    std::vector<uint16_t> lumaSamples;
    for (int y = 0; y < h; ++y) {
        for (int g = 0; g < w / 6; ++g) {
            uint32_t s[12];
            for (int k = 0; k < 12; ++k) s[k] = uint32_t((64 + 71 * (y * 24 + g * 12 + k)) % 1024);
            // Fields in order: Cb0 Y0 Cr0 Y1 Cb1 Y2 Cr1 Y3 Cb2 Y4 Cr2 Y5.
            for (int word = 0; word < 4; ++word) {
                const uint32_t v = s[3 * word] | (s[3 * word + 1] << 10) | (s[3 * word + 2] << 20);
                std::memcpy(&file[std::size_t(y * 128 + g * 16 + word * 4)], &v, 4);
            }
            for (int k : {1, 3, 5, 7, 9, 11}) lumaSamples.push_back(uint16_t(s[k]));
        }
    }
    putFile(scratch("row.v210"), file);
    produce({"--size", "12x2", scratch("row.v210")}, "row_luma.pgm");
    const Picture out = keptPicture("row_luma.pgm");
    ASSERT_EQ(out.bits, 16);
    ASSERT_EQ(out.bytes.size(), lumaSamples.size() * 2);
    for (std::size_t i = 0; i < lumaSamples.size(); ++i) {
        uint16_t v;
        std::memcpy(&v, &out.bytes[2 * i], 2);
        EXPECT_EQ(v, lumaSamples[i]) << i;
    }
}

}  // namespace
