// 4:2:0 to and from 1620 and 4:1:1 with means: the four members against a literal
// model (vector columns rounding up, scalar columns truncating, the last-column and
// last-row rules), their statuses, the height-2 case of 420To411 and the documented
// cases.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "chroma_harness.h"

namespace {

using namespace chromatest;

int up(int a, int b) { return (a + b + 1) >> 1; }
int down(int a, int b) { return (a + b) >> 1; }

// Vector columns of 1620To420 (rows above the last): 32 while rem >= 33, 16 while
// rem >= 17.
int vectors1620(int cw, bool lastRow) {
    int rem = cw;
    while (!lastRow && rem >= 33) rem -= 32;
    while (rem >= 17) rem -= 16;
    return cw - rem;
}

int vectors411(int cw) {
    int rem = cw;
    while (rem > 64) rem -= 64;
    while (rem > 16) rem -= 16;
    return cw - rem;
}

void copyLuma(Surface& src, Surface& dst, int w, int h) {
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) dst.image(0).row(y)[x] = src.image(0).row(y)[x];
    }
}

// Plane p (1 or 2) of a surface at chroma row r, column c.
uint8_t& at(Surface& s, int p, int c, int r) { return s.image(p).row(r)[c]; }

void model1620To420(Surface& src, Surface& dst, int w, int h) {
    copyLuma(src, dst, w, h);
    const int cw = w / 4, ch = h / 4;
    for (int p = 1; p < 3; ++p) {
        auto S = [&](int r, int c) { return int(at(src, p, c, r)); };
        auto D = [&](int r, int c) -> uint8_t& { return at(dst, p, c, r); };
        for (int r = 0; r < ch; ++r) {
            const bool last = r == ch - 1;
            const int nv = vectors1620(cw, last);
            for (int c = 0; c < cw; ++c) {
                const bool vector = c < nv, lastColumn = c == cw - 1;
                D(2 * r, 2 * c) = uint8_t(S(r, c));
                if (lastColumn) {
                    D(2 * r, 2 * c + 1) = uint8_t(S(r, c));
                } else {
                    D(2 * r, 2 * c + 1) = uint8_t(vector ? up(S(r, c), S(r, c + 1)) : down(S(r, c), S(r, c + 1)));
                }
                if (last) {
                    D(2 * r + 1, 2 * c) = D(2 * r + 1, 2 * c + 1) = uint8_t(S(r, c));
                } else if (lastColumn) {
                    D(2 * r + 1, 2 * c) = D(2 * r + 1, 2 * c + 1) = uint8_t(down(S(r, c), S(r + 1, c)));
                } else if (vector) {
                    D(2 * r + 1, 2 * c) = uint8_t(up(S(r, c), S(r + 1, c)));
                    D(2 * r + 1, 2 * c + 1) = uint8_t(up(up(S(r, c), S(r, c + 1)), up(S(r + 1, c), S(r + 1, c + 1))));
                } else {
                    D(2 * r + 1, 2 * c) = uint8_t(down(S(r, c), S(r + 1, c)));
                    D(2 * r + 1, 2 * c + 1) =
                        uint8_t(down(down(S(r + 1, c + 1), S(r + 1, c)), down(S(r, c), S(r, c + 1))));
                }
            }
        }
    }
}

void model420To1620(Surface& src, Surface& dst, int w, int h) {
    copyLuma(src, dst, w, h);
    for (int p = 1; p < 3; ++p) {
        for (int r = 0; r < h / 4; ++r) {
            for (int c = 0; c < w / 4; ++c) at(dst, p, c, r) = at(src, p, 2 * c, 2 * r);
        }
    }
}

void model411To420(Surface& src, Surface& dst, int w, int h) {
    copyLuma(src, dst, w, h);
    const int cw = w / 4, nv = vectors411(cw);
    for (int p = 1; p < 3; ++p) {
        for (int y = 0; y < h / 2; ++y) {
            for (int c = 0; c < cw; ++c) {
                const int s = at(src, p, c, 2 * y);
                at(dst, p, 2 * c, y) = uint8_t(s);
                if (c == cw - 1) {
                    at(dst, p, 2 * c + 1, y) = uint8_t(s);
                } else {
                    const int t = at(src, p, c + 1, 2 * y);
                    at(dst, p, 2 * c + 1, y) = uint8_t(c < nv ? up(s, t) : down(s, t));
                }
            }
        }
    }
}

// 420To411 for heights of 4 and more (height 2 has its own test).
void model420To411(Surface& src, Surface& dst, int w, int h) {
    copyLuma(src, dst, w, h);
    const int cw = w / 4, n = h / 2, nv = 32 * (cw / 32);
    for (int p = 1; p < 3; ++p) {
        for (int r = 0; r < n; ++r) {
            for (int c = 0; c < cw; ++c) {
                const int s = at(src, p, 2 * c, r);
                at(dst, p, c, 2 * r) = uint8_t(s);
                if (r == n - 1) {
                    at(dst, p, c, 2 * r + 1) = uint8_t(s);
                } else {
                    const int t = at(src, p, 2 * c, r + 1);
                    at(dst, p, c, 2 * r + 1) = uint8_t(c < nv ? up(s, t) : down(s, t));
                }
            }
        }
    }
}

bool fours(int v) { return v >= 4 && v % 4 == 0; }

Member resampling(const char* name, Sampling from, Sampling to, Call call,
                  void (*model)(Surface&, Surface&, int, int), bool evenHeightFrom2) {
    Member m{name, planes(from), planes(to), 4, false, 4, evenHeightFrom2 ? 2 : 4, std::move(call)};
    m.reference = model;
    m.validSize = evenHeightFrom2 ? [](int w, int h) { return fours(w) && h >= 2 && h % 2 == 0; }
                                  : [](int w, int h) { return fours(w) && fours(h); };
    m.heights = evenHeightFrom2 ? std::vector<int>{4, 5, 6, 8, 10} : std::vector<int>{4, 6, 8, 12, 16};
    return m;
}

const std::vector<Member>& members() {
    static const std::vector<Member> list = {
        resampling("YCbCr1620To420_8u_P3R", Sampling::S1620, Sampling::S420,
                   [](Args& a) {
                       return pxkiYCbCr1620To420_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size);
                   },
                   model1620To420, false),
        resampling("YCbCr420To1620_8u_P3R", Sampling::S420, Sampling::S1620,
                   [](Args& a) {
                       return pxkiYCbCr420To1620_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size);
                   },
                   model420To1620, false),
        resampling("YCbCr411To420_8u_P3R", Sampling::S411, Sampling::S420,
                   [](Args& a) {
                       return pxkiYCbCr411To420_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size);
                   },
                   model411To420, false),
        resampling("YCbCr420To411_8u_P3R", Sampling::S420, Sampling::S411,
                   [](Args& a) {
                       return pxkiYCbCr420To411_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps, a.size);
                   },
                   model420To411, true),
    };
    return list;
}

CHROMATEST_MEMBER_SUITES(VerticalResampling, members);

// Widths around the block limits of each kernel (32, 64 and 16 columns, with "more
// than" and "at least" limits), against the model.
TEST(VerticalResamplingCases, ColumnLimitsAtTheirEdges) {
    for (const Member& m : members()) {
        for (int w : {60, 64, 68, 124, 128, 132, 136, 252, 256, 260, 264, 512, 516, 520}) {
            for (int h : {4, 8}) {
                EXPECT_TRUE(runOnce(m, w, h, StepKind::Tight, StepKind::Padded, uint32_t(w * 16 + h)))
                    << m.name << " width " << w << " height " << h;
            }
        }
    }
}

// One chroma row pair of 1620To420 at width w (cw = w/4 source columns, two rows).
std::vector<uint8_t> from1620Row1(int w, const std::vector<uint8_t>& row0, const std::vector<uint8_t>& row1) {
    const int cw = w / 4;
    std::vector<uint8_t> y(static_cast<std::size_t>(w * 8)), c(static_cast<std::size_t>(2 * cw));
    for (int i = 0; i < cw; ++i) {
        c[std::size_t(i)] = row0[std::size_t(i)];
        c[std::size_t(cw + i)] = row1[std::size_t(i)];
    }
    std::vector<uint8_t> dy(y.size()), d(static_cast<std::size_t>(2 * cw * 4));
    const uint8_t* const src[3] = {y.data(), c.data(), c.data()};
    const int32_t srcSteps[3] = {w, cw, cw};
    std::vector<uint8_t> d2(d.size());
    uint8_t* const dst[3] = {dy.data(), d.data(), d2.data()};
    const int32_t dstSteps[3] = {w, 2 * cw, 2 * cw};
    EXPECT_EQ(pxkiYCbCr1620To420_8u_P3R(src, srcSteps, dst, dstSteps, PxkSize{w, 8}), pxkOk);
    return std::vector<uint8_t>(d.begin() + 2 * cw, d.begin() + 4 * cw);  // output row 1
}

// Width 64: all chroma columns scalar, so all means truncate; width 68: the first 16
// columns round up. Rows of 1 and 2: up gives 2, down gives 1.
TEST(VerticalResamplingCases, Width64TruncatesAndWidth68RoundsUpItsFirst16) {
    const std::vector<uint8_t> r0(17, 1), r1(17, 2);
    const std::vector<uint8_t> at64 = from1620Row1(64, r0, r1);
    for (int c = 0; c < 16; ++c) EXPECT_EQ(at64[std::size_t(2 * c)], 1) << c;
    const std::vector<uint8_t> at68 = from1620Row1(68, r0, r1);
    for (int c = 0; c < 16; ++c) EXPECT_EQ(at68[std::size_t(2 * c)], 2) << c;
    EXPECT_EQ(at68[32], 1) << "the last column truncates";
}

// Width 128: 16 vector columns, 15 scalar ones and the last one.
TEST(VerticalResamplingCases, Width128SplitsAs16And15AndOne) {
    const std::vector<uint8_t> r0(32, 1), r1(32, 2);
    const std::vector<uint8_t> row = from1620Row1(128, r0, r1);
    for (int c = 0; c < 32; ++c) EXPECT_EQ(row[std::size_t(2 * c)], c < 16 ? 2 : 1) << c;
}

// Width 6 is pxkErrSize in all four; so is height 6 where the height must be a
// multiple of 4.
TEST(VerticalResamplingCases, Width6IsASizeError) {
    for (const Member& m : members()) {
        EXPECT_TRUE(writesNothing(m, 6, 8, pxkErrSize, [](Args&, NullHolder&) {})) << m.name;
        if (m.name != "YCbCr420To411_8u_P3R") {
            EXPECT_TRUE(writesNothing(m, 8, 6, pxkErrSize, [](Args&, NullHolder&) {})) << m.name;
        }
    }
    const Member& m = memberNamed(members(), "YCbCr420To411_8u_P3R");
    EXPECT_TRUE(writesNothing(m, 8, 7, pxkErrSize, [](Args&, NullHolder&) {}));
    EXPECT_TRUE(writesNothing(m, 8, 1, pxkErrSize, [](Args&, NullHolder&) {}));
}

// 420To1620 then 1620To420 does not restore odd rows or columns of the source.
TEST(VerticalResamplingCases, DownAndUpDoesNotRestoreOddSamples) {
    const int w = 8, h = 8;
    std::vector<uint8_t> y(64), cb(16), cr(16);
    for (int i = 0; i < 16; ++i) cb[std::size_t(i)] = cr[std::size_t(i)] = uint8_t(i % 2 ? 200 : 10);
    std::vector<uint8_t> my(64), m1(4), m2(4), oy(64), o1(16), o2(16);
    const uint8_t* const src[3] = {y.data(), cb.data(), cr.data()};
    const int32_t steps420[3] = {w, w / 2, w / 2}, steps1620[3] = {w, w / 4, w / 4};
    uint8_t* const mid[3] = {my.data(), m1.data(), m2.data()};
    ASSERT_EQ(pxkiYCbCr420To1620_8u_P3R(src, steps420, mid, steps1620, PxkSize{w, h}), pxkOk);
    EXPECT_EQ(m1, (std::vector<uint8_t>{10, 10, 10, 10}));
    const uint8_t* const back[3] = {my.data(), m1.data(), m2.data()};
    uint8_t* const out[3] = {oy.data(), o1.data(), o2.data()};
    ASSERT_EQ(pxkiYCbCr1620To420_8u_P3R(back, steps1620, out, steps420, PxkSize{w, h}), pxkOk);
    EXPECT_NE(o1, cb);
}

// Height 2 of 420To411: chroma row 1 (outside the region) is read; rows 0 and 1 come
// from rows 0 and 1, rows 2 and 3 (outside the region) from row 1.
TEST(VerticalResamplingCases, Height2Of420To411ReadsAndWritesBeyondTheRegion) {
    const int w = 8;  // cw = 2
    std::vector<uint8_t> y(16, 5), cb = {10, 0, 20, 0, 31, 0, 41, 0}, cr = cb;  // rows of 4
    std::vector<uint8_t> dy(16), d1(4 * 2, 0xEE), d2(4 * 2, 0xEE);
    const uint8_t* const src[3] = {y.data(), cb.data(), cr.data()};
    const int32_t srcSteps[3] = {w, 4, 4};
    uint8_t* const dst[3] = {dy.data(), d1.data(), d2.data()};
    const int32_t dstSteps[3] = {w, 2, 2};
    ASSERT_EQ(pxkiYCbCr420To411_8u_P3R(src, srcSteps, dst, dstSteps, PxkSize{w, 2}), pxkOk);
    // Row 0: 10 20; row 1: down(10, 31) = 20, down(20, 41) = 30; rows 2, 3: 31 41.
    EXPECT_EQ(d1, (std::vector<uint8_t>{10, 20, 20, 30, 31, 41, 31, 41}));
    EXPECT_EQ(dy, std::vector<uint8_t>(16, 5));
}

}  // namespace
