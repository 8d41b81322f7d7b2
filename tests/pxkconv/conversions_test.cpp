// pxkconv on real files made here: round trips through every YUV layout within the
// conversion's tolerance, byte-exact moves between YUV layouts, every row of the
// route table run once, and multi-frame streams.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "picture_file.h"
#include "routes.h"
#include "run_program.h"
#include "shape_lookup.h"
#include "yuv_file.h"

namespace {

using namespace pxkconvtest;
using pxkconv::Picture;

// A smooth RGB picture: each channel a slow ramp, so that chroma subsampling costs
// little and the round trip is judged by the matrices alone.
Picture smoothPicture(int w, int h, int bits = 8) {
    Picture p = Picture::blank(w, h, 3, bits);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const int v[3] = {40 + 3 * x, 60 + 4 * y, 200 - 2 * x - y};
            for (int c = 0; c < 3; ++c) {
                if (bits == 8) {
                    p.row(y)[3 * x + c] = uint8_t(v[c]);
                } else {
                    const uint16_t s = uint16_t(v[c] * 257);
                    std::memcpy(p.row(y) + 2 * (3 * x + c), &s, 2);
                }
            }
        }
    }
    return p;
}

int largestDifference(const Picture& a, const Picture& b) {
    int worst = 0;
    for (std::size_t i = 0; i < a.bytes.size() && i < b.bytes.size(); ++i) {
        worst = std::max(worst, std::abs(int(a.bytes[i]) - int(b.bytes[i])));
    }
    return a.bytes.size() == b.bytes.size() ? worst : 1000;
}

Picture readBack(const std::string& path) {
    Picture p;
    std::string error;
    EXPECT_TRUE(pxkconv::readPicture(path, &p, &error)) << error;
    return p;
}

struct RoundTrip {
    const char* layout;
    std::vector<std::string> options;
    int tolerance;
};

TEST(PxkconvConversions, RoundTripsThroughEveryYuvLayoutStayWithinTolerance) {
    const Picture source = smoothPicture(32, 16);
    std::string error;
    ASSERT_TRUE(pxkconv::writePicture(scratch("smooth.ppm"), source, &error)) << error;
    // The standard CbYCr422 member carries chroma along the row from a zero start, so
    // its round trip is judged on the 709HDTV member.
    const RoundTrip trips[] = {
        {"i420", {}, 6},
        {"i420", {"--range", "full"}, 7},
        {"i420", {"--matrix", "709csc"}, 6},
        {"nv12", {}, 6},
        {"yuy2", {}, 5},
        {"yuy2", {"--range", "full"}, 5},
        {"uyvy", {"--matrix", "709hdtv"}, 5},
        {"i422", {}, 5},
        {"i422", {"--range", "full"}, 5},
        {"i444", {}, 3},
        {"i444", {"--range", "full"}, 3},
        {"411", {}, 7},
    };
    for (const RoundTrip& t : trips) {
        std::string label = t.layout;
        for (const std::string& o : t.options) label += " " + o;
        SCOPED_TRACE(label);
        const std::string yuv = scratch(std::string("smooth.") + t.layout);
        const std::string back = scratch("smooth_back.png");
        std::vector<std::string> there = t.options, again = t.options;
        there.insert(there.end(), {scratch("smooth.ppm"), yuv});
        again.insert(again.end(), {"--size", "32x16", yuv, back});
        ProgramRun run = runPxkconv(there);
        ASSERT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(fileBytes(yuv).size(), pxkconv::frameBytes([&] {
                      pxkconv::YuvLayout l;
                      pxkconv::yuvLayoutOf(t.layout, &l);
                      return l;
                  }(), 32, 16));
        run = runPxkconv(again);
        ASSERT_EQ(run.exitCode, 0) << run.err;
        const Picture result = readBack(back);
        EXPECT_LE(largestDifference(source, result), t.tolerance);
        // And not trivially: the YUV bytes are not the picture's.
        EXPECT_NE(fileBytes(yuv), std::vector<uint8_t>(source.bytes.begin(), source.bytes.begin() + long(fileBytes(yuv).size())));
    }
}

TEST(PxkconvConversions, RgbaPicturesGoToYuvInTheirPlaneOrder) {
    // The RGBA member writes Y, Cr, Cb planes: pxkconv puts them in the file's order.
    const Picture rgb = smoothPicture(32, 16);
    Picture rgba = Picture::blank(32, 16, 4, 8);
    for (std::size_t i = 0; i < std::size_t(32 * 16); ++i) {
        std::memcpy(&rgba.bytes[4 * i], &rgb.bytes[3 * i], 3);
        rgba.bytes[4 * i + 3] = 255;
    }
    std::string error;
    ASSERT_TRUE(pxkconv::writePicture(scratch("alpha.png"), rgba, &error)) << error;
    for (const char* layout : {"i420", "nv12", "i444"}) {
        SCOPED_TRACE(layout);
        const std::string yuv = scratch(std::string("alpha.") + layout);
        ProgramRun run = runPxkconv({scratch("alpha.png"), yuv});
        ASSERT_EQ(run.exitCode, 0) << run.err;
        run = runPxkconv({"--size", "32x16", yuv, scratch("alpha_back.png")});
        ASSERT_EQ(run.exitCode, 0) << run.err;
        EXPECT_LE(largestDifference(rgb, readBack(scratch("alpha_back.png"))), 6);
    }
}

TEST(PxkconvConversions, MovesBetweenYuvLayoutsKeepEveryByte) {
    // Random 4:2:0 bytes through a layout and back: chroma rows are repeated on the way
    // to 4:2:2 and the repeated row dropped on the way back.
    std::vector<uint8_t> frame(pxkconv::frameBytes(pxkconv::YuvLayout::I420, 16, 8));
    for (std::size_t i = 0; i < frame.size(); ++i) frame[i] = uint8_t((i * 131 + 7) ^ (i >> 3));
    putFile(scratch("move.i420"), frame);
    for (const char* via : {"nv12", "yuy2", "uyvy", "i422"}) {
        SCOPED_TRACE(via);
        const std::string mid = scratch(std::string("move.") + via);
        ProgramRun run = runPxkconv({"--size", "16x8", scratch("move.i420"), mid});
        ASSERT_EQ(run.exitCode, 0) << run.err;
        run = runPxkconv({"--size", "16x8", mid, scratch("move_back.i420")});
        ASSERT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(fileBytes(scratch("move_back.i420")), frame);
    }
    // 4:2:2 planes to packed and back.
    std::vector<uint8_t> i422(pxkconv::frameBytes(pxkconv::YuvLayout::I422, 16, 8));
    for (std::size_t i = 0; i < i422.size(); ++i) i422[i] = uint8_t(i * 71 + 3);
    putFile(scratch("move.i422"), i422);
    for (const char* via : {"yuy2", "uyvy"}) {
        ProgramRun run = runPxkconv({"--size", "16x8", scratch("move.i422"), scratch(std::string("m.") + via)});
        ASSERT_EQ(run.exitCode, 0) << run.err;
        run = runPxkconv({"--size", "16x8", scratch(std::string("m.") + via), scratch("m_back.i422")});
        ASSERT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(fileBytes(scratch("m_back.i422")), i422) << via;
    }
}

// A file of the route's source layout at w x h, and the options that select the route.
std::vector<std::string> routeArguments(const pxkconv::Route& r, int w, int h) {
    const pxkconv::LayoutInfo* from = pxkconv::layoutInfo(r.from);
    const pxkconv::LayoutInfo* to = pxkconv::layoutInfo(r.to);
    std::vector<std::string> args;
    std::string input;
    if (from->picture) {
        Picture p = Picture::blank(w, h, from->channels, from->bits);
        for (std::size_t i = 0; i < p.bytes.size(); ++i) p.bytes[i] = uint8_t(i * 37 + 5);
        input = scratch(std::string("route_in.") + (from->channels == 1 ? "pgm" : (from->channels == 3 ? "ppm" : "png")));
        std::string error;
        EXPECT_TRUE(pxkconv::writePicture(input, p, &error)) << error;
    } else {
        pxkconv::YuvLayout l;
        pxkconv::yuvLayoutOf(from->yuvName, &l);
        std::vector<uint8_t> bytes(pxkconv::frameBytes(l, w, h));
        for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = uint8_t(i * 29 + 1);
        input = scratch(std::string("route_in.") + from->yuvName);
        putFile(input, bytes);
        args.insert(args.end(), {"--size", std::to_string(w) + "x" + std::to_string(h)});
    }
    const std::string op = r.operation;
    if (op == "reduce") args.insert(args.end(), {"--dither", "fs", "--levels", "4"});
    if (op == "gammafwd") args.insert(args.end(), {"--gamma", "fwd"});
    if (op == "gammainv") args.insert(args.end(), {"--gamma", "inv"});
    if (op == "twist") args.insert(args.end(), {"--twist", "0,0,1,0,0,1,0,0,1,0,0,0"});
    if (op == "bilinear" || op == "vng" || op == "ahd") args.insert(args.end(), {"--bayer", "grbg", "--demosaic", op});
    if (*r.matrix) args.insert(args.end(), {"--matrix", r.matrix});
    if (*r.range) args.insert(args.end(), {"--range", r.range});
    args.insert(args.end(), {"-t", r.to, input});
    args.push_back(scratch(std::string("route_out.") + (to->picture ? (to->channels == 1 ? "pgm" : "png") : to->yuvName)));
    return args;
}

TEST(PxkconvConversions, EveryRouteNamesAnExportAndRuns) {
    for (const pxkconv::Route& r : pxkconv::routes()) {
        SCOPED_TRACE(r.exportName);
        std::string error;
        const std::optional<pxkcross::CallShape> shape = pxkcross::callShapeFor(r.exportName, &error);
        ASSERT_TRUE(shape) << error;
        // The sample sizes of the export are those of the layouts (v210's words aside).
        const pxkconv::LayoutInfo* from = pxkconv::layoutInfo(r.from);
        const pxkconv::LayoutInfo* to = pxkconv::layoutInfo(r.to);
        ASSERT_TRUE(from && to);
        if (from->bits != 10) {
            EXPECT_EQ(pxkcross::sampleBytes(shape->images[0].type), from->bits / 8);
        }
        EXPECT_EQ(pxkcross::sampleBytes(shape->images[1].type), to->bits / 8);
        const ProgramRun run = runPxkconv(routeArguments(r, 12, 8));
        EXPECT_EQ(run.exitCode, 0) << run.err;
    }
}

TEST(PxkconvConversions, Y4mStreamsConvertEveryFrameWithAProgressLine) {
    const int w = 16, h = 8;
    const std::size_t each = pxkconv::frameBytes(pxkconv::YuvLayout::I420, w, h);
    std::vector<uint8_t> frames(3 * each);
    for (std::size_t i = 0; i < frames.size(); ++i) frames[i] = uint8_t(i / each * 50 + i % 13);
    putFile(scratch("three.i420"), frames);
    ProgramRun run = runPxkconv({"--size", "16x8", scratch("three.i420"), scratch("three.y4m")});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.err.find("frame 3 of 3"), std::string::npos) << run.err;
    run = runPxkconv({"-t", "i422", scratch("three.y4m"), scratch("three_422.y4m")});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.err.find("frame 3"), std::string::npos) << run.err;
    pxkconv::Y4mReader reader;
    std::string error;
    ASSERT_TRUE(reader.open(scratch("three_422.y4m"), &error)) << error;
    EXPECT_EQ(reader.layout(), pxkconv::YuvLayout::I422);
    int count = 0;
    pxkconv::YuvFrame f;
    while (reader.next(&f, &error)) {
        // Luma passes unchanged.
        EXPECT_TRUE(std::equal(f.bytes.begin(), f.bytes.begin() + w * h, frames.begin() + long(count) * long(each)));
        ++count;
    }
    EXPECT_TRUE(error.empty()) << error;
    EXPECT_EQ(count, 3);
    // Back to raw: three frames of the raw layout.
    run = runPxkconv({"-q", scratch("three_422.y4m"), scratch("three_back.i420")});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(fileBytes(scratch("three_back.i420")), frames);
    // A picture holds one frame: refused, nothing written.
    std::remove(scratch("three.png").c_str());
    run = runPxkconv({scratch("three.y4m"), scratch("three.png")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.err.find("more than one frame"), std::string::npos) << run.err;
    EXPECT_FALSE(fileExists(scratch("three.png")));
}

TEST(PxkconvConversions, SixteenBitPicturesUseTheSixteenBitMembers) {
    const Picture source = smoothPicture(8, 4, 16);
    std::string error;
    ASSERT_TRUE(pxkconv::writePicture(scratch("deep.ppm"), source, &error)) << error;
    // Two levels: every sample to 0 or 65535.
    ProgramRun run = runPxkconv({"--dither", "none", "--levels", "2", scratch("deep.ppm"), scratch("deep2.ppm")});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    Picture two = readBack(scratch("deep2.ppm"));
    ASSERT_EQ(two.bits, 16);
    for (std::size_t i = 0; i < two.bytes.size(); ++i) EXPECT_TRUE(two.bytes[i] == 0 || two.bytes[i] == 0xFF);
    // 16 to 8 bits: all 256 levels by default; nearest level of v * 257 is v.
    run = runPxkconv({"--dither", "none", scratch("deep.ppm"), "-t", "rgb", scratch("shallow.ppm")});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(readBack(scratch("shallow.ppm")).bytes, smoothPicture(8, 4).bytes);
}

}  // namespace
