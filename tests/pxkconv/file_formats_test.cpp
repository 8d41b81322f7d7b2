// pxkconv's file formats: pictures and YUV frames written and read back, files with
// known bytes, and the messages for damaged, truncated and mis-sized files.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "picture_file.h"
#include "test_files.h"
#include "yuv_file.h"

namespace {

using namespace pxkconv;

std::string tempPath(const std::string& name) {
    return std::string(PXKCONV_TEST_DIR) + "/" + name;
}

using pxkconvtest::fileBytes;
using pxkconvtest::putFile;

Picture patterned(int w, int h, int channels, int bits) {
    Picture p = Picture::blank(w, h, channels, bits);
    for (std::size_t i = 0; i < p.bytes.size(); ++i) p.bytes[i] = uint8_t(i * 37 + 11);
    return p;
}

TEST(PictureFiles, PgmAndPpmRoundTripsAt8And16Bits) {
    for (int channels : {1, 3}) {
        for (int bits : {8, 16}) {
            const Picture p = patterned(7, 5, channels, bits);
            const std::string path = tempPath(channels == 1 ? "rt.pgm" : "rt.ppm");
            std::string error;
            ASSERT_TRUE(writePicture(path, p, &error)) << error;
            Picture q;
            ASSERT_TRUE(readPicture(path, &q, &error)) << error;
            EXPECT_EQ(q.width, 7);
            EXPECT_EQ(q.height, 5);
            EXPECT_EQ(q.channels, channels);
            EXPECT_EQ(q.bits, bits);
            EXPECT_EQ(q.bytes, p.bytes);
        }
    }
}

TEST(PictureFiles, PpmHasTheBinaryHeaderAndBigEndianSamples) {
    Picture p = Picture::blank(2, 1, 3, 16);
    const uint16_t samples[6] = {0x0102, 0x0304, 0x0506, 0xA0B0, 0xC0D0, 0xE0F0};
    std::memcpy(p.bytes.data(), samples, sizeof samples);
    std::string error;
    const std::string path = tempPath("golden.ppm");
    ASSERT_TRUE(writePicture(path, p, &error)) << error;
    const std::string header = "P6\n2 1\n65535\n";
    std::vector<uint8_t> expected(header.begin(), header.end());
    for (uint8_t b : {0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0xA0, 0xB0, 0xC0, 0xD0, 0xE0, 0xF0}) expected.push_back(b);
    EXPECT_EQ(fileBytes(path), expected);
}

TEST(PictureFiles, PgmHeaderWithCommentsIsRead) {
    const std::string text = "P5\n# made by hand\n3 # width\n2\n255\n";
    std::vector<uint8_t> bytes(text.begin(), text.end());
    for (int i = 0; i < 6; ++i) bytes.push_back(uint8_t(10 * i));
    const std::string path = tempPath("comments.pgm");
    putFile(path, bytes);
    Picture p;
    std::string error;
    ASSERT_TRUE(readPicture(path, &p, &error)) << error;
    EXPECT_EQ(p.width, 3);
    EXPECT_EQ(p.height, 2);
    EXPECT_EQ(p.bytes, (std::vector<uint8_t>{0, 10, 20, 30, 40, 50}));
}

TEST(PictureFiles, PngRoundTripsGrayRgbAndRgbaAt8And16Bits) {
    for (int channels : {1, 3, 4}) {
        for (int bits : {8, 16}) {
            const Picture p = patterned(9, 4, channels, bits);
            const std::string path = tempPath("rt.png");
            std::string error;
            ASSERT_TRUE(writePicture(path, p, &error)) << error;
            const std::vector<uint8_t> bytes = fileBytes(path);
            ASSERT_GE(bytes.size(), 8u);
            EXPECT_EQ(bytes[1], 'P');
            EXPECT_EQ(bytes[2], 'N');
            EXPECT_EQ(bytes[3], 'G');
            Picture q;
            ASSERT_TRUE(readPicture(path, &q, &error)) << error;
            EXPECT_EQ(q.channels, channels);
            EXPECT_EQ(q.bits, bits);
            EXPECT_EQ(q.bytes, p.bytes) << channels << " channels, " << bits << " bits";
        }
    }
}

TEST(PictureFiles, TruncatedAndForeignFilesAreRefusedWithAMessage) {
    std::string error;
    Picture p = patterned(8, 8, 3, 8);
    ASSERT_TRUE(writePicture(tempPath("whole.ppm"), p, &error));
    std::vector<uint8_t> bytes = fileBytes(tempPath("whole.ppm"));
    bytes.resize(bytes.size() - 5);
    putFile(tempPath("cut.ppm"), bytes);
    Picture q;
    EXPECT_FALSE(readPicture(tempPath("cut.ppm"), &q, &error));
    EXPECT_NE(error.find("truncated"), std::string::npos) << error;

    ASSERT_TRUE(writePicture(tempPath("whole.png"), p, &error));
    bytes = fileBytes(tempPath("whole.png"));
    bytes.resize(bytes.size() / 2);
    putFile(tempPath("cut.png"), bytes);
    EXPECT_FALSE(readPicture(tempPath("cut.png"), &q, &error));
    EXPECT_NE(error.find("PNG"), std::string::npos) << error;

    putFile(tempPath("text.png"), std::vector<uint8_t>{'h', 'e', 'l', 'l', 'o'});
    EXPECT_FALSE(readPicture(tempPath("text.png"), &q, &error));
    EXPECT_NE(error.find("neither PNG nor"), std::string::npos) << error;

    EXPECT_FALSE(readPicture(tempPath("missing.png"), &q, &error));
    EXPECT_NE(error.find("cannot open"), std::string::npos) << error;

    EXPECT_FALSE(writePicture(tempPath("out.bmp"), p, &error));
    EXPECT_NE(error.find("unknown picture format"), std::string::npos) << error;
    EXPECT_FALSE(writePicture(tempPath("out.ppm"), patterned(2, 2, 4, 8), &error));
}

TEST(YuvFiles, FrameSizesOfEachLayout) {
    // 5 x 3: cw = 3, ch = 2.
    EXPECT_EQ(frameBytes(YuvLayout::I420, 5, 3), 15u + 2 * 6);
    EXPECT_EQ(frameBytes(YuvLayout::Nv12, 5, 3), 15u + 12);
    EXPECT_EQ(frameBytes(YuvLayout::I422, 5, 3), 15u + 2 * 9);
    EXPECT_EQ(frameBytes(YuvLayout::I444, 5, 3), 45u);
    EXPECT_EQ(frameBytes(YuvLayout::Yuv411, 5, 3), 15u + 2 * 6);
    EXPECT_EQ(frameBytes(YuvLayout::Yuy2, 5, 3), 36u);
    EXPECT_EQ(frameBytes(YuvLayout::Uyvy, 5, 3), 36u);
    EXPECT_EQ(frameBytes(YuvLayout::V210, 5, 3), 3u * 128);
    EXPECT_EQ(frameBytes(YuvLayout::V210, 49, 1), 256u);
    EXPECT_EQ(frameBytes(YuvLayout::I420, 1920, 1080), 3110400u);
}

TEST(YuvFiles, LayoutNames) {
    YuvLayout l;
    for (const char* name : {"i420", "nv12", "yuy2", "uyvy", "i422", "i444", "411", "v210"}) {
        ASSERT_TRUE(yuvLayoutOf(name, &l)) << name;
        EXPECT_STREQ(yuvLayoutName(l), name);
    }
    EXPECT_FALSE(yuvLayoutOf("yv12", &l));
}

TEST(YuvFiles, RawFramesRoundTripAndAWrongSizeIsNamed) {
    std::string error;
    const std::string path = tempPath("frames.yuv");
    YuvFrame a = YuvFrame::blank(YuvLayout::I420, 6, 4), b = a;
    for (std::size_t i = 0; i < a.bytes.size(); ++i) a.bytes[i] = uint8_t(i), b.bytes[i] = uint8_t(200 - i);
    ASSERT_TRUE(writeRawFrame(path, a, false, &error)) << error;
    ASSERT_TRUE(writeRawFrame(path, b, true, &error)) << error;
    std::vector<YuvFrame> frames;
    ASSERT_TRUE(readRawFrames(path, YuvLayout::I420, 6, 4, &frames, &error)) << error;
    ASSERT_EQ(frames.size(), 2u);
    EXPECT_EQ(frames[0].bytes, a.bytes);
    EXPECT_EQ(frames[1].bytes, b.bytes);
    EXPECT_FALSE(readRawFrames(path, YuvLayout::I420, 8, 4, &frames, &error));
    EXPECT_NE(error.find("a raw i420 frame of 8x4 takes 48 bytes"), std::string::npos) << error;
    EXPECT_NE(error.find("72 bytes"), std::string::npos) << error;
}

TEST(YuvFiles, Y4mRoundTripsSeveralFramesAndKeepsTheRate) {
    std::string error;
    const std::string path = tempPath("clip.y4m");
    Y4mWriter writer;
    ASSERT_TRUE(writer.open(path, YuvLayout::I422, 4, 2, "F30000:1001", &error)) << error;
    std::vector<YuvFrame> written;
    for (int f = 0; f < 3; ++f) {
        YuvFrame frame = YuvFrame::blank(YuvLayout::I422, 4, 2);
        for (std::size_t i = 0; i < frame.bytes.size(); ++i) frame.bytes[i] = uint8_t(f * 50 + i);
        ASSERT_TRUE(writer.write(frame, &error)) << error;
        written.push_back(frame);
    }
    const std::vector<uint8_t> bytes = fileBytes(path);
    const std::string header = "YUV4MPEG2 W4 H2 F30000:1001 Ip A1:1 C422\nFRAME\n";
    ASSERT_GE(bytes.size(), header.size());
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + long(header.size())), header);

    Y4mReader reader;
    ASSERT_TRUE(reader.open(path, &error)) << error;
    EXPECT_EQ(reader.width(), 4);
    EXPECT_EQ(reader.height(), 2);
    EXPECT_EQ(reader.layout(), YuvLayout::I422);
    EXPECT_EQ(reader.rate(), "F30000:1001");
    YuvFrame frame;
    for (const YuvFrame& w : written) {
        ASSERT_TRUE(reader.next(&frame, &error)) << error;
        EXPECT_EQ(frame.bytes, w.bytes);
    }
    EXPECT_FALSE(reader.next(&frame, &error));
    EXPECT_TRUE(error.empty()) << error;
}

TEST(YuvFiles, Y4mTruncatedFrameAndUnknownColourSpaceAreRefused) {
    std::string error;
    const std::string head = "YUV4MPEG2 W4 H2 F25:1 C420jpeg\nFRAME\n";
    std::vector<uint8_t> bytes(head.begin(), head.end());
    bytes.resize(bytes.size() + 5, 7);  // a 4x2 4:2:0 frame takes 12 bytes
    putFile(tempPath("cut.y4m"), bytes);
    Y4mReader reader;
    ASSERT_TRUE(reader.open(tempPath("cut.y4m"), &error)) << error;
    YuvFrame frame;
    EXPECT_FALSE(reader.next(&frame, &error));
    EXPECT_NE(error.find("truncated: frame 1 holds 5 of its 12 bytes"), std::string::npos) << error;

    const std::string odd = "YUV4MPEG2 W4 H2 C420p10\n";
    putFile(tempPath("deep.y4m"), std::vector<uint8_t>(odd.begin(), odd.end()));
    Y4mReader deep;
    EXPECT_FALSE(deep.open(tempPath("deep.y4m"), &error));
    EXPECT_NE(error.find("C420p10"), std::string::npos) << error;

    putFile(tempPath("nothing.y4m"), std::vector<uint8_t>{'P', '6'});
    Y4mReader none;
    EXPECT_FALSE(none.open(tempPath("nothing.y4m"), &error));
    EXPECT_NE(error.find("not a Y4M stream"), std::string::npos) << error;
}

}  // namespace
