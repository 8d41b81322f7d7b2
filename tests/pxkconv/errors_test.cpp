// pxkconv's faults: each gives its message and its own exit code, writes nothing, and
// never crashes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "picture_file.h"
#include "run_program.h"

namespace {

using namespace pxkconvtest;

void expectFault(const std::vector<std::string>& args, int code, const std::string& words, const std::string& output) {
    std::remove(output.c_str());
    const ProgramRun run = runPxkconv(args);
    EXPECT_EQ(run.exitCode, code) << run.err;
    EXPECT_NE(run.err.find(words), std::string::npos) << "stderr: " << run.err;
    // The message is pxkconv's own, after any finished progress line.
    EXPECT_NE(run.err.find("pxkconv: "), std::string::npos) << run.err;
    if (!output.empty()) {
        EXPECT_FALSE(fileExists(output)) << output << " written despite the fault";
    }
}

std::string pictureFile(const std::string& name, int w, int h, int channels) {
    pxkconv::Picture p = pxkconv::Picture::blank(w, h, channels, 8);
    for (std::size_t i = 0; i < p.bytes.size(); ++i) p.bytes[i] = uint8_t(i);
    std::string error;
    EXPECT_TRUE(pxkconv::writePicture(scratch(name), p, &error)) << error;
    return scratch(name);
}

TEST(PxkconvErrors, UsageFaultsExitWithOne) {
    const std::string in = pictureFile("e.ppm", 8, 4, 3);
    const std::string out = scratch("e_out.png");
    expectFault({in}, 1, "one INPUT and one OUTPUT", "");
    expectFault({"--frobnicate", in, out}, 1, "unknown option --frobnicate", out);
    expectFault({"--size", "12by4", in, out}, 1, "--size takes WxH", out);
    expectFault({"--twist", "1,2,3", in, out}, 1, "twelve numbers", out);
    expectFault({"--matrix", "240m", in, out}, 1, "--matrix takes 601, 709csc or 709hdtv", out);
    expectFault({"--gamma", "fwd", "--dither", "fs", in, out}, 1, "one operation a run", out);
    expectFault({"--demosaic", "vng", in, out}, 1, "--demosaic needs --bayer", out);
    expectFault({in, scratch("e_out.yuv")}, 1, "a raw output needs its layout", scratch("e_out.yuv"));
}

TEST(PxkconvErrors, UnknownFormatsAndLayoutsExitWithTwo) {
    const std::string in = pictureFile("f.ppm", 8, 4, 3);
    expectFault({in, scratch("f.tiff")}, 2, "f.tiff: unknown format", scratch("f.tiff"));
    putFile(scratch("f.bmp"), {'B', 'M', 0, 0});
    expectFault({scratch("f.bmp"), scratch("f.png")}, 2, "f.bmp: unknown format", scratch("f.png"));
    expectFault({"-t", "yv24", in, scratch("f2.png")}, 2, "unknown layout \"yv24\"", scratch("f2.png"));
    expectFault({"-t", "i420", in, scratch("f3.png")}, 2, "cannot hold i420 (it holds", scratch("f3.png"));
    putFile(scratch("f.y4m"), std::vector<uint8_t>{'Y', 'U', 'V', '4', 'M', 'P', 'E', 'G', '2', ' ', 'W', '4', ' ',
                                                   'H', '2', ' ', 'C', '4', '2', '0', 'p', '1', '0', '\n'});
    expectFault({scratch("f.y4m"), scratch("f4.png")}, 2, "C420p10 is not taken", scratch("f4.png"));
}

TEST(PxkconvErrors, FilesThatCannotBeOpenedExitWithThree) {
    expectFault({scratch("missing.ppm"), scratch("m.png")}, 3, "missing.ppm: cannot open", scratch("m.png"));
    const std::string in = pictureFile("g.ppm", 8, 4, 3);
    expectFault({in, scratch("no/such/dir/out.png")}, 3, "cannot open for writing", "");
}

TEST(PxkconvErrors, RawFilesOfTheWrongSizeExitWithFour) {
    putFile(scratch("w.i420"), std::vector<uint8_t>(100, 16));
    expectFault({"--size", "8x8", scratch("w.i420"), scratch("w.png")}, 4,
                "a raw i420 frame of 8x8 takes 96 bytes, and the file's 100 bytes are not a whole number of frames",
                scratch("w.png"));
    expectFault({scratch("w.i420"), scratch("w.png")}, 1, "a raw file needs --size WxH", scratch("w.png"));
    expectFault({"--size", "8x8", "-f", "nv21", scratch("w.i420"), scratch("w.png")}, 2, "unknown raw layout \"nv21\"",
                scratch("w.png"));
    // --export checks every plane file against the size.
    putFile(scratch("w.y"), std::vector<uint8_t>(10));
    expectFault({"--export", "pxkiRGBToYCbCr_8u_C3R", "--size", "4x4", scratch("w.y"), scratch("w.out")}, 4,
                "takes 48 bytes (4 rows of 12), the file holds 10", scratch("w.out"));
}

TEST(PxkconvErrors, TruncatedFilesExitWithFive) {
    const std::string in = pictureFile("t.ppm", 8, 4, 3);
    std::vector<uint8_t> bytes = fileBytes(in);
    bytes.resize(bytes.size() - 10);
    putFile(scratch("t_cut.ppm"), bytes);
    expectFault({scratch("t_cut.ppm"), scratch("t.i420")}, 5, "truncated", scratch("t.i420"));
    const std::string png = pictureFile("t.png", 8, 4, 3);
    bytes = fileBytes(png);
    bytes.resize(bytes.size() / 2);
    putFile(scratch("t_cut.png"), bytes);
    expectFault({scratch("t_cut.png"), scratch("t2.i420")}, 5, "damaged or truncated PNG", scratch("t2.i420"));
    std::string y4m = "YUV4MPEG2 W4 H2 F25:1 C420jpeg\nFRAME\n";
    std::vector<uint8_t> stream(y4m.begin(), y4m.end());
    stream.insert(stream.end(), 5, 0x80);  // a frame of 12 bytes, cut at 5
    putFile(scratch("t.y4m"), stream);
    expectFault({scratch("t.y4m"), scratch("t3.i420")}, 5, "truncated: frame 1 holds 5 of its 12 bytes", "");
}

TEST(PxkconvErrors, SizesTheSamplingCannotHoldExitWithSixAndSayWhich) {
    const std::string odd = pictureFile("o.ppm", 33, 20, 3);
    expectFault({odd, scratch("o.i420")}, 6, "i420 needs a width that is even and a height that is even", scratch("o.i420"));
    expectFault({odd, scratch("o.i420")}, 6, "the width 33 is not even", scratch("o.i420"));
    const std::string tall = pictureFile("o2.ppm", 32, 21, 3);
    expectFault({tall, scratch("o2.nv12")}, 6, "the height 21 is not even", scratch("o2.nv12"));
    expectFault({odd, scratch("o.yuy2")}, 6, "4:2:2 chroma covers pairs of pixels", scratch("o.yuy2"));
    const std::string w30 = pictureFile("o3.ppm", 30, 4, 3);
    expectFault({w30, scratch("o3.411")}, 6, "the width 30 is not a multiple of 4", scratch("o3.411"));
    // Odd 4:4:4 is fine.
    const ProgramRun run = runPxkconv({odd, scratch("o.i444")});
    EXPECT_EQ(run.exitCode, 0) << run.err;
}

TEST(PxkconvErrors, UnsupportedCombinationsExitWithSevenAndSayWhatExists) {
    const std::string in = pictureFile("u.ppm", 8, 4, 3);
    expectFault({"--matrix", "709hdtv", in, scratch("u.i420")}, 7, "no export converts rgb to i420", scratch("u.i420"));
    expectFault({"--matrix", "709hdtv", in, scratch("u.i420")}, 7, "rgb -> i420 --matrix 709csc --range studio", "");
    expectFault({"--range", "full", in, scratch("u.411")}, 7, "rgb -> 411 --matrix 601 --range studio", scratch("u.411"));
    const std::string gray = pictureFile("u.pgm", 8, 4, 1);
    expectFault({"--gamma", "inv", gray, scratch("u2.pgm")}, 7, "gray converts nowhere with --gamma inv",
                scratch("u2.pgm"));
}

TEST(PxkconvErrors, LibraryStatusesExitWithEightByName) {
    // The homogeneity-directed demosaic needs 5 x 5 at least.
    const std::string small = pictureFile("s.pgm", 4, 4, 1);
    expectFault({"--bayer", "rggb", "--demosaic", "ahd", small, scratch("s.png")}, 8,
                "pxkiDemosaicAHD_8u_C1C3R returned pxkErrSize (-6)", scratch("s.png"));
}

}  // namespace
