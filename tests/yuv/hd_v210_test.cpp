// v210 -> 16-bit RGB, BGR and gray: the three decoders against the reference model,
// known values (the saturated fields, the width of 7), rounding, the steps in
// elements and their check, statuses and guards.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "hd_harness.h"
#include "hd_reference.h"
#include "pxkcc.h"

namespace {

using hdref::V210Out;
using hdtest::HdExport;
using pxktest::ImageGeometry;
using pxktest::Rng;
using pxktest::Surface;

using V210Fn = PxkResult (*)(const uint32_t*, int32_t, uint16_t*, int32_t, PxkSize);

// Words a row of `width` pixels reads: up to the last field it needs.
int wordsFor(V210Out kind, int width) {
    const int x = width - 1;
    const int lumaField = 4 * (x / 2) + (x % 2 == 0 ? 1 : 3);
    const int last = kind == V210Out::Gray ? lumaField : (x % 2 == 0 ? lumaField + 1 : lumaField);
    return last / 3 + 1;
}

PxkResult callV210(V210Fn f, Surface& s, Surface& d, PxkSize z) {
    return f(reinterpret_cast<const uint32_t*>(s.data()), s.step() / 4, reinterpret_cast<uint16_t*>(d.data()),
             d.step() / 2, z);
}

HdExport member(const char* name, V210Fn f, V210Out kind) {
    HdExport ex;
    ex.name = name;
    ex.source = [kind](int w, int h) {
        const int words = wordsFor(kind, w);
        return std::vector<ImageGeometry>{ImageGeometry{words, h, 1, 4, words * 4}};
    };
    ex.dest = [](int w, int h) { return std::vector<ImageGeometry>{ImageGeometry{w, h, 1, 2, w * 2}}; };
    ex.call = [f](Surface& s, Surface& d, PxkSize z, uint8_t) { return callV210(f, s, d, z); };
    ex.nullCall = [f](Surface& s, Surface& d, PxkSize z, int nullAt) {
        const bool all = nullAt == -1;
        return f(all || nullAt == 0 ? nullptr : reinterpret_cast<const uint32_t*>(s.data()), s.step() / 4,
                 all || nullAt == 1 ? nullptr : reinterpret_cast<uint16_t*>(d.data()), d.step() / 2, z);
    };
    ex.reference = [kind](Surface& s, Surface& d, int w, int h, uint8_t) {
        hdref::v210To16(kind, s.data(), s.step() / 4, d.data(), d.step() / 2, w, h);
    };
    ex.elementSteps = true;
    return ex;
}

const std::vector<HdExport>& exports() {
    static const std::vector<HdExport> list = {
        member("YUV422v210ToRGB_709HDTV_32u16u_C3", pxkiYUV422v210ToRGB_709HDTV_32u16u_C3, V210Out::Rgb),
        member("YUV422v210ToBGR_709HDTV_32u16u_C3", pxkiYUV422v210ToBGR_709HDTV_32u16u_C3, V210Out::Bgr),
        member("YUV422v210ToGray_709HDTV_32u16u_C3C1", pxkiYUV422v210ToGray_709HDTV_32u16u_C3C1, V210Out::Gray),
    };
    return list;
}

const HdExport& named(const std::string& n) { return hdtest::exportNamed(exports(), n); }

HDTEST_SWEEP_SUITE(HdV210, exports);

class HdV210Each : public ::testing::TestWithParam<const HdExport*> {};
INSTANTIATE_TEST_SUITE_P(AllExports, HdV210Each, ::testing::ValuesIn(hdtest::exportPointers(exports())),
                         hdtest::exportParamName);

TEST_P(HdV210Each, ExtremeBytesMatchReference) { hdtest::extremeBytesAgainstReference(*GetParam()); }

TEST_P(HdV210Each, StatusOrderPointersThenSize) { hdtest::statusChecks(*GetParam()); }

// Steps below 1 element give pxkErrSize, after the pointers and the size; nothing is
// written.
TEST_P(HdV210Each, StepsBelowOneAreSizeErrors) {
    const HdExport& ex = *GetParam();
    const V210Fn f = ex.name.find("RGB") != std::string::npos   ? pxkiYUV422v210ToRGB_709HDTV_32u16u_C3
                     : ex.name.find("BGR") != std::string::npos ? pxkiYUV422v210ToBGR_709HDTV_32u16u_C3
                                                                : pxkiYUV422v210ToGray_709HDTV_32u16u_C3C1;
    Rng rng(8);
    const std::vector<pxktest::StepKind> tight = {pxktest::StepKind::Tight};
    Surface src = hdtest::makeSide(ex.source(12, 3), tight, false, {});
    Surface dst = hdtest::makeSide(ex.dest(12, 3), tight, false, {});
    src.fillRandom(rng);
    dst.fillRandom(rng);
    src.snapshot();
    dst.snapshot();
    const uint32_t* s = reinterpret_cast<const uint32_t*>(src.data());
    uint16_t* d = reinterpret_cast<uint16_t*>(dst.data());
    const int ss = src.step() / 4, ds = dst.step() / 2;
    for (int bad : {0, -1, -ss, INT32_MIN}) {
        EXPECT_EQ(f(s, bad, d, ds, PxkSize{12, 3}), pxkErrSize) << bad;
        EXPECT_EQ(f(s, ss, d, bad, PxkSize{12, 3}), pxkErrSize) << bad;
        EXPECT_EQ(f(s, bad, d, bad, PxkSize{12, 3}), pxkErrSize) << bad;
        // Pointers come first.
        EXPECT_EQ(f(nullptr, bad, d, bad, PxkSize{12, 3}), pxkErrNullPtr) << bad;
        EXPECT_EQ(f(s, bad, nullptr, ds, PxkSize{0, 3}), pxkErrNullPtr) << bad;
        EXPECT_EQ(f(s, bad, d, bad, PxkSize{0, 0}), pxkErrSize) << bad;
    }
    EXPECT_TRUE(dst.unchanged());
    EXPECT_TRUE(src.unchanged());
    EXPECT_EQ(f(s, 1, d, 1, PxkSize{1, 1}), pxkOk);
}

// Rows of one group of words (repeated as needed) decoded at a width.
std::vector<uint16_t> decode(const HdExport& ex, const std::vector<uint32_t>& words, int width) {
    Surface src = Surface::planar({ImageGeometry{int(words.size()), 1, 1, 4, int(words.size()) * 4}}, {});
    std::memcpy(src.data(), words.data(), words.size() * 4);
    Surface dst = Surface::planar({ImageGeometry{width + 2, 1, 1, 2, (width + 2) * 2}}, {});
    dst.image(0).fill(0xEE, 0x11);
    EXPECT_EQ(ex.call(src, dst, PxkSize{width, 1}, 0), pxkOk);
    std::vector<uint16_t> out(std::size_t(width + 2));
    std::memcpy(out.data(), dst.data(), out.size() * 2);
    EXPECT_EQ(out[std::size_t(width)], 0xEEEE);  // the samples after the region stay
    return out;
}

uint32_t word(int f0, int f1, int f2, int top = 0) {
    return uint32_t(f0) | uint32_t(f1) << 10 | uint32_t(f2) << 20 | uint32_t(top) << 30;
}

// Y 512 and both chroma fields 512: R 31, G 63, B 31 in every field, 0xFFFF (the clamp,
// not a shift, makes the 10-bit values fit). Bits 30 and 31 are ignored.
TEST(HdV210Values, MidValuesSaturateEveryField) {
    const std::vector<uint32_t> group = {word(512, 512, 512, 3), word(512, 512, 512, 1), word(512, 512, 512, 2),
                                         word(512, 512, 512, 3)};
    for (const char* name : {"YUV422v210ToRGB_709HDTV_32u16u_C3", "YUV422v210ToBGR_709HDTV_32u16u_C3"}) {
        const std::vector<uint16_t> out = decode(named(name), group, 6);
        for (int x = 0; x < 6; ++x) EXPECT_EQ(out[std::size_t(x)], 0xFFFF) << name << " pixel " << x;
    }
    const std::vector<uint16_t> gray = decode(named("YUV422v210ToGray_709HDTV_32u16u_C3C1"), group, 6);
    for (int x = 0; x < 6; ++x) EXPECT_EQ(gray[std::size_t(x)], 512);
}

// Width 7: one whole group, then one pixel of the next (Cb3 Y6 Cr3 in the fifth word).
TEST(HdV210Values, WidthSevenIsOneGroupAndOnePixel) {
    const std::vector<uint32_t> words = {word(512, 1, 512), word(2, 512, 3), word(512, 4, 512), word(5, 512, 6),
                                         word(512, 7, 512)};
    EXPECT_EQ(decode(named("YUV422v210ToGray_709HDTV_32u16u_C3C1"), words, 7),
              (std::vector<uint16_t>{1, 2, 3, 4, 5, 6, 7, 0xEEEE, 0xEEEE}));
    // Neutral chroma: R = B = Y, G = Y, each a field of its own: Y | Y << 5 | Y << 11.
    std::vector<uint16_t> want;
    for (int y = 1; y <= 7; ++y) want.push_back(uint16_t(y | y << 5 | y << 11));
    want.push_back(0xEEEE);
    want.push_back(0xEEEE);
    EXPECT_EQ(decode(named("YUV422v210ToRGB_709HDTV_32u16u_C3"), words, 7), want);
}

// Rounding: t = trunc(x), t + 1 unless x - t < 0.5. Y 0, Cr 513: R 1.54 gives 2, G
// -0.459 gives 0. Cr 515: R 4.62 gives 5. Cb 511: B -1.816 gives -1, clamped to 0;
// G 0.183 gives 0. Y 40, Cb 512, Cr 512: R and B clamp to 31, G is 40.
TEST(HdV210Values, RoundingAndClamping) {
    const HdExport& rgb = named("YUV422v210ToRGB_709HDTV_32u16u_C3");
    const HdExport& bgr = named("YUV422v210ToBGR_709HDTV_32u16u_C3");
    EXPECT_EQ(decode(rgb, {word(512, 0, 513)}, 1)[0], 2);
    EXPECT_EQ(decode(rgb, {word(512, 0, 515)}, 1)[0], 5);
    EXPECT_EQ(decode(bgr, {word(512, 0, 515)}, 1)[0], 5 << 11);
    EXPECT_EQ(decode(rgb, {word(511, 0, 512)}, 1)[0], 0);
    EXPECT_EQ(decode(rgb, {word(512, 40, 512)}, 1)[0], 31 | 40 << 5 | 31 << 11);
    EXPECT_EQ(decode(bgr, {word(512, 40, 512)}, 1)[0], 31 | 40 << 5 | 31 << 11);
    // Neutral chroma, Y 20 in the second pixel.
    EXPECT_EQ(decode(rgb, {word(512, 20, 512), word(20, 0, 0)}, 2)[1], 20 | 20 << 5 | 20 << 11);
}

// The chroma of a pair serves both its pixels: Y 10 and 20 with Cr 522 (R + 15.4).
TEST(HdV210Values, PairSharesItsChroma) {
    const std::vector<uint16_t> out =
        decode(named("YUV422v210ToRGB_709HDTV_32u16u_C3"), {word(512, 10, 522), word(20, 0, 0)}, 2);
    // R: 10 + 15.4 = 25.4 -> 25, 20 + 15.4 = 35.4 -> 31 (clamped); G: 10 - 4.59 = 5.41
    // -> 5, 20 - 4.59 = 15.41 -> 15; B = Y.
    EXPECT_EQ(out[0], 25 | 5 << 5 | 10 << 11);
    EXPECT_EQ(out[1], 31 | 15 << 5 | 20 << 11);
}

// Near-neutral chroma, where the rounding and the clamps decide: every Y with Cb and Cr
// from 488 to 535, in rows that run in vector blocks and in the scalar pixels alike.
TEST_P(HdV210Each, NearNeutralFieldsAgainstReference) {
    const HdExport& ex = *GetParam();
    const int width = 6 * 181;  // 45 blocks of four groups and one group
    const int height = 48 * 48 * 512 / (width / 2) + 1;
    const std::vector<pxktest::StepKind> tight = {pxktest::StepKind::Tight};
    Surface src = hdtest::makeSide(ex.source(width, height), tight, false, {});
    Surface dst = hdtest::makeSide(ex.dest(width, height), tight, false, {});
    Rng rng(21);
    dst.fillRandom(rng);
    long pair = 0;
    for (int y = 0; y < height; ++y) {
        uint8_t* row = src.image(0).row(y);
        for (int g = 0; g < width / 6; ++g) {
            int fields[12];
            for (int j = 0; j < 3; ++j, ++pair) {
                const long i = pair % (48L * 48 * 512);
                fields[4 * j] = 488 + int(i % 48);
                fields[4 * j + 2] = 488 + int(i / 48 % 48);
                fields[4 * j + 1] = int(2 * (i / (48 * 48)));
                fields[4 * j + 3] = int(2 * (i / (48 * 48)) + 1);
            }
            for (int k = 0; k < 4; ++k) {
                const uint32_t w = word(fields[3 * k], fields[3 * k + 1], fields[3 * k + 2]);
                std::memcpy(row + 16 * g + 4 * k, &w, 4);
            }
        }
    }
    EXPECT_TRUE(hdtest::compareOnce(ex, src, dst, width, height, 0));
}

}  // namespace
