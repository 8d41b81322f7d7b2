// 4:2:0 with vertical smoothing, whole and in strips: both members against a literal
// model of their row tables, for every `layout` path, on images that own the rows
// above the pointers that the strips reach (and a few below): every byte of those
// images that the tables do not name must stay as it was. Then the documented cases
// with literal values, and the statuses and their order.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"

namespace {

using pxktest::GuardedImage;
using pxktest::GuardOptions;
using pxktest::StepKind;

// Rows that the images own beyond the region: above the source luma, the source
// chroma and the destination, and below all of them.
constexpr int kLumaAbove = 3, kChromaAbove = 1, kDstAbove = 2, kBelow = 2;

enum class Member { Packed, Planar };

// gtest prints a parameter by this.
void PrintTo(Member m, std::ostream* os) { *os << (m == Member::Packed ? "P2C2R" : "P2P3R"); }

const char* memberName(Member m) {
    return m == Member::Packed ? "pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R" : "pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R";
}

GuardedImage image(int bytes, int rows, StepKind kind, std::size_t misalign = 0) {
    GuardOptions o;
    o.misalign = misalign;
    const int b = bytes < 1 ? 1 : bytes;
    return GuardedImage(b, rows, 1, pxktest::stepFor(kind, std::size_t(b)), o);
}

// The images of one call of width w and height h (h >= 0), whose region starts at
// the rows after the owned rows above.
struct Frame {
    GuardedImage y, c;               // source luma; chroma pairs
    std::vector<GuardedImage> dst;  // packed; or luma and the two chroma planes

    Frame(Member m, int w, int h, StepKind srcKind, StepKind dstKind, std::size_t srcMis = 0, std::size_t dstMis = 0)
        : y(image(w, kLumaAbove + h + kBelow, srcKind, srcMis)),
          c(image(2 * (w / 2), kChromaAbove + h / 2 + kBelow, srcKind, srcMis)) {
        if (m == Member::Packed) {
            dst.push_back(image(2 * w, kDstAbove + h + kBelow, dstKind, dstMis));
        } else {
            dst.push_back(image(w, kDstAbove + h + kBelow, dstKind, dstMis));
            for (int k = 0; k < 2; ++k) dst.push_back(image(w / 2, 1 + h / 2 + kBelow, dstKind, dstMis));
        }
    }
    Frame(const Frame& o) : y(o.y.clone()), c(o.c.clone()) {
        for (const GuardedImage& d : o.dst) dst.push_back(d.clone());
    }

    // Row r of each image counted from the pointer the call is given.
    uint8_t* yRow(int r) { return y.row(kLumaAbove + r); }
    uint8_t* cRow(int r) { return c.row(kChromaAbove + r); }
    uint8_t* dstRow(int plane, int r) { return dst[std::size_t(plane)].row((plane == 0 ? kDstAbove : 1) + r); }

    PxkResult call(Member m, int w, int h, int32_t layout) {
        if (m == Member::Packed) {
            return pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R(yRow(0), y.step(), cRow(0), c.step(), dstRow(0, 0),
                                                          dst[0].step(), PxkSize{w, h}, layout);
        }
        uint8_t* const planes[3] = {dstRow(0, 0), dstRow(1, 0), dstRow(2, 0)};
        const int32_t steps[3] = {dst[0].step(), dst[1].step(), dst[2].step()};
        return pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R(yRow(0), y.step(), cRow(0), c.step(), planes, steps,
                                                      PxkSize{w, h}, layout);
    }

    void fillRandom(pxktest::Rng& rng) {
        y.fillRandom(rng);
        c.fillRandom(rng);
        for (GuardedImage& d : dst) d.fillRandom(rng);
    }
};

// ---------------------------------------------------------------------------------
// The model, written from the row tables.
// ---------------------------------------------------------------------------------

int sat255(int v) { return v > 255 ? 255 : v; }

struct Model {
    Frame& f;
    int w, h;

    int Y(int r, int x) { return f.yRow(r)[x]; }
    int C(int i, int b) { return f.cRow(i)[b]; }  // byte b of chroma row i
    int F31(int r, int k, int x) { return sat255((3 * Y(r, x) + Y(r + 1, x) + k) >> 2); }
    int F121(int r, int k, int x) { return sat255((Y(r - 1, x) + 2 * Y(r, x) + Y(r + 1, x) + k) >> 2); }
    int F13(int r, int k, int x) { return sat255((Y(r - 1, x) + 3 * Y(r, x) + k) >> 2); }
    int A(int i, int k, int b) { return sat255((C(i, b) + C(i + 1, b) + k) >> 1); }
};

using LumaRule = std::function<int(Model&, int x)>;
using ChromaRule = std::function<int(Model&, int b)>;

// Floor division by 2.
int floorHalf(int v) { return v >= 0 ? v / 2 : -((-v + 1) / 2); }

bool bitsSet(int32_t layout) { return (uint32_t(layout) & 21u) == 21u; }

// Packed member: output rows in order, each with its luma and chroma rule.
void packedModel(Frame& f, Frame& out, int w, int h, int32_t layout) {
    w -= w % 2;
    h -= h % 2;
    const int n = h / 2;
    Model m{f, w, h};
    auto writeRow = [&](int r, const LumaRule& luma, const ChromaRule& chroma) {
        uint8_t* row = out.dstRow(0, r);
        for (int j = 0; j < w / 2; ++j) {
            row[4 * j + 0] = uint8_t(luma(m, 2 * j));
            row[4 * j + 1] = uint8_t(chroma(m, 2 * j));      // Cb: byte 0 of pair j
            row[4 * j + 2] = uint8_t(luma(m, 2 * j + 1));
            row[4 * j + 3] = uint8_t(chroma(m, 2 * j + 1));  // Cr: byte 1 of pair j
        }
    };
    auto f31 = [](int r, int k) { return LumaRule([=](Model& md, int x) { return md.F31(r, k, x); }); };
    auto f121 = [](int r, int k) { return LumaRule([=](Model& md, int x) { return md.F121(r, k, x); }); };
    auto f13 = [](int r, int k) { return LumaRule([=](Model& md, int x) { return md.F13(r, k, x); }); };
    auto a = [](int i, int k) { return ChromaRule([=](Model& md, int b) { return md.A(i, k, b); }); };
    if (layout == pxkLayoutTop) {
        const int last = h - 3 < 1 ? 1 : h - 3;
        for (int r = 0; r <= last; ++r) {
            const LumaRule luma = r == 0 ? f31(0, 4) : (r == 1 ? f121(1, 0) : f121(r, 4));
            writeRow(r, luma, a(r / 2, 2));
        }
    } else if (layout == pxkLayoutCenter) {
        for (int r = -2; r <= h - 3; ++r) writeRow(r, f121(r, 4), a(floorHalf(r + 2) - 1, 2));
    } else if (layout == pxkLayoutBottom) {
        for (int r = -2; r <= h - 1; ++r) {
            if (r == h - 1) {
                writeRow(r, f13(r, 0), a(n - 2, 0));
            } else if (r == h - 2) {
                writeRow(r, f121(r, 0), a(n - 2, 0));
            } else {
                writeRow(r, f121(r, 4), a(floorHalf(r + 2) - 1, 2));
            }
        }
    } else if (bitsSet(layout) && h == 2) {
        const ChromaRule copied = [](Model& md, int b) { return md.C(0, b); };
        writeRow(0, f31(0, 4), copied);
        writeRow(1, f13(1, 4), copied);
    } else if (bitsSet(layout)) {
        for (int r = 0; r < h; ++r) {
            const int p = r / 2;
            const LumaRule luma = r == 0 ? f31(0, 4) : (r == h - 1 ? f13(h - 1, 4) : f121(r, 4));
            const ChromaRule chroma = p == 0 ? a(0, 2) : (p == n - 1 ? a(n - 2, 2) : a(p, 0));
            writeRow(r, luma, chroma);
        }
    }
}

// Planar member: luma rows, then chroma rows (byte 0 of each pair to plane 1, byte 1
// to plane 2).
void planarModel(Frame& f, Frame& out, int w, int h, int32_t layout) {
    w -= w % 2;
    h -= h % 2;
    const int n = h / 2;
    Model m{f, w, h};
    auto lumaRow = [&](int r, int which, int k) {
        for (int x = 0; x < w; ++x) {
            const int v = which == 31 ? m.F31(r, k, x) : (which == 13 ? m.F13(r, k, x) : m.F121(r, k, x));
            out.dstRow(0, r)[x] = uint8_t(v);
        }
    };
    auto chromaRow = [&](int p, int i, int k) {  // output chroma row p = A(i, k)
        for (int j = 0; j < w / 2; ++j) {
            out.dstRow(1, p)[j] = uint8_t(m.A(i, k, 2 * j));
            out.dstRow(2, p)[j] = uint8_t(m.A(i, k, 2 * j + 1));
        }
    };
    if (layout == pxkLayoutTop) {
        for (int r = 0; r <= h - 3; ++r) lumaRow(r, r == 0 ? 31 : 121, 0);
        for (int p = 0; p <= n - 2; ++p) chromaRow(p, p, 0);
    } else if (layout == pxkLayoutCenter) {
        for (int r = -2; r <= h - 3; ++r) lumaRow(r, 121, 0);
        for (int p = -1; p <= n - 2; ++p) chromaRow(p, p, 0);
    } else if (layout == pxkLayoutBottom) {
        for (int r = -2; r <= h - 1; ++r) lumaRow(r, r == h - 1 ? 13 : 121, 0);
        for (int p = -1; p <= n - 2; ++p) chromaRow(p, p, 0);
        chromaRow(n - 1, n - 2, 0);
    } else if (bitsSet(layout) && h == 2) {
        lumaRow(0, 31, 4);
        lumaRow(1, 13, 4);
        for (int j = 0; j < w / 2; ++j) {
            out.dstRow(1, 0)[j] = uint8_t(m.C(0, 2 * j));
            out.dstRow(2, 0)[j] = uint8_t(m.C(0, 2 * j + 1));
        }
    } else if (bitsSet(layout)) {
        for (int r = 0; r < h; ++r) lumaRow(r, r == 0 ? 31 : (r == h - 1 ? 13 : 121), 4);
        for (int p = 0; p <= n - 2; ++p) chromaRow(p, p, 2);
        chromaRow(n - 1, n - 2, 2);
    }
}

::testing::AssertionResult runOnce(Member mem, int w, int h, int32_t layout, StepKind srcKind, StepKind dstKind,
                                   uint32_t seed, std::size_t srcMis = 0, std::size_t dstMis = 0) {
    pxktest::Rng rng(seed);
    Frame f(mem, w, h, srcKind, dstKind, srcMis, dstMis);
    f.fillRandom(rng);
    Frame expected(f);
    const PxkResult want = (w < 2 || h < 2) ? pxkErrSize : pxkOk;
    if (want != pxkOk) {
        // Nothing written: the model leaves `expected` as it is.
    } else if (mem == Member::Packed) {
        packedModel(f, expected, w, h, layout);
    } else {
        planarModel(f, expected, w, h, layout);
    }
    const PxkResult st = f.call(mem, w, h, layout);
    if (st != want) return ::testing::AssertionFailure() << "status " << st << ", expected " << want;
    if (!f.y.unchanged() || !f.c.unchanged()) return ::testing::AssertionFailure() << "the source changed";
    for (std::size_t i = 0; i < f.dst.size(); ++i) {
        // Every row the images own is region here: the rows the tables do not name
        // keep their random bytes in `expected`.
        const ::testing::AssertionResult same = pxktest::sameRegion(f.dst[i], expected.dst[i]);
        if (!same) return ::testing::AssertionFailure() << "destination image " << i << ": " << same.message();
        const ::testing::AssertionResult guards = f.dst[i].guardsIntact();
        if (!guards) return ::testing::AssertionFailure() << "destination image " << i << ": " << guards.message();
    }
    return ::testing::AssertionSuccess();
}

// Every path, and other values: bits 0, 2 and 4 set (whole image), or not (nothing).
const int32_t kLayouts[] = {pxkLayoutWhole, pxkLayoutTop, pxkLayoutCenter, pxkLayoutBottom, 0,
                            5,              20,           0x15 | 0x100,    -1,              INT32_MIN};

std::vector<int> heightsFor(int w) {
    if (w <= 40) return {2, 3, 4, 5, 6, 8, 11};
    if (w <= 301) return {2, 4, 7};
    return {2, 6};
}

class StripSmoothing : public ::testing::TestWithParam<Member> {};

TEST_P(StripSmoothing, MatchesTheModelAtEveryWidthHeightLayoutAndStep) {
    const Member mem = GetParam();
    const std::vector<pxktest::StepPlan>& plans = pxktest::stepPlans();
    for (int w : pxktest::sweepWidths()) {
        for (int h : heightsFor(w)) {
            for (int32_t layout : kLayouts) {
                for (std::size_t pi = 0; pi < plans.size(); ++pi) {
                    // The lighter sample takes every third plan, changing with the width.
                    if (pxktest::kLightSweep && (pi + std::size_t(w)) % 3 != 0) continue;
                    const pxktest::StepPlan& plan = plans[pi];
                    const uint32_t seed = pxktest::seedFor(
                        memberName(mem), {uint32_t(w), uint32_t(h), uint32_t(layout), uint32_t(pi)});
                    const ::testing::AssertionResult r = runOnce(mem, w, h, layout, plan.src, plan.dst, seed);
                    if (!r) {
                        ADD_FAILURE() << memberName(mem) << " width " << w << " height " << h << " layout " << layout
                                      << " steps " << pxktest::stepPlanName(plan) << ": " << r.message();
                        return;
                    }
                }
            }
        }
    }
}

TEST_P(StripSmoothing, MatchesTheModelAtEveryAlignment) {
    const Member mem = GetParam();
    for (int w : {16, 34, 64, 130}) {
        for (int32_t layout : {pxkLayoutWhole, pxkLayoutTop, pxkLayoutCenter, pxkLayoutBottom}) {
            for (std::size_t srcMis = 0; srcMis < 16; ++srcMis) {
                for (std::size_t dstMis = 0; dstMis < 16; dstMis += 5) {
                    const ::testing::AssertionResult r =
                        runOnce(mem, w, 6, layout, StepKind::Padded, StepKind::Padded,
                                pxktest::seedFor(memberName(mem), {uint32_t(w), uint32_t(srcMis), uint32_t(dstMis)}),
                                srcMis, dstMis);
                    if (!r) {
                        ADD_FAILURE() << memberName(mem) << " width " << w << " layout " << layout << " misaligned by "
                                      << srcMis << " / " << dstMis << ": " << r.message();
                        return;
                    }
                }
            }
        }
    }
}

TEST_P(StripSmoothing, LargeRegions) {
    for (int32_t layout : {pxkLayoutWhole, pxkLayoutCenter, pxkLayoutBottom}) {
        EXPECT_TRUE(runOnce(GetParam(), 1920, 68, layout, StepKind::Padded, StepKind::Tight, 9u)) << layout;
    }
}

INSTANTIATE_TEST_SUITE_P(Members, StripSmoothing, ::testing::Values(Member::Packed, Member::Planar),
                         [](const ::testing::TestParamInfo<Member>& info) {
                             return std::string(info.param == Member::Packed ? "P2C2R" : "P2P3R");
                         });

// ---------------------------------------------------------------------------------
// Documented cases, literal values
// ---------------------------------------------------------------------------------

// Flat images of width 4 and height h, with kLumaAbove / kChromaAbove rows of the same
// value above, converted with `layout`; the destination starts filled with 0xEE.
struct Flat {
    Frame f;
    PxkResult status;
    Flat(Member m, uint8_t v, int h, int32_t layout)
        : f(m, 4, h, StepKind::Tight, StepKind::Tight) {
        f.y.fill(v, 0);
        f.c.fill(v, 0);
        for (GuardedImage& d : f.dst) d.fill(0xEE, 0);
        status = f.call(m, 4, h, layout);
    }
    std::vector<uint8_t> packedRow(int r) { return std::vector<uint8_t>(f.dstRow(0, r), f.dstRow(0, r) + 8); }
    std::vector<uint8_t> lumaRow(int r) { return std::vector<uint8_t>(f.dstRow(0, r), f.dstRow(0, r) + 4); }
    std::vector<uint8_t> chromaRow(int plane, int p) {
        return std::vector<uint8_t>(f.dstRow(plane, p), f.dstRow(plane, p) + 2);
    }
};

std::vector<uint8_t> quads(uint8_t luma, uint8_t chroma) { return {luma, chroma, luma, chroma, luma, chroma, luma, chroma}; }
std::vector<uint8_t> bytes(std::size_t n, uint8_t v) { return std::vector<uint8_t>(n, v); }

// Flat 100, whole image: luma 101 in every row, chroma 101 in the first and last
// pairs and 100 between.
TEST(StripSmoothingCases, Flat100WholeImage) {
    Flat o(Member::Packed, 100, 8, pxkLayoutWhole);
    EXPECT_EQ(o.status, pxkOk);
    for (int r = 0; r < 8; ++r) EXPECT_EQ(o.packedRow(r), quads(101, (r < 2 || r >= 6) ? 101 : 100)) << r;
    EXPECT_EQ(o.packedRow(-1), bytes(8, 0xEE));
    EXPECT_EQ(o.packedRow(8), bytes(8, 0xEE));
}

TEST(StripSmoothingCases, Flat255StaysBySaturation) {
    for (int32_t layout : {pxkLayoutWhole, pxkLayoutTop, pxkLayoutCenter, pxkLayoutBottom}) {
        Flat o(Member::Packed, 255, 8, layout);
        const int first = layout == pxkLayoutWhole || layout == pxkLayoutTop ? 0 : -2;
        const int last = layout == pxkLayoutWhole || layout == pxkLayoutBottom ? 7 : 5;
        for (int r = first; r <= last; ++r) EXPECT_EQ(o.packedRow(r), quads(255, 255)) << layout << " row " << r;
        Flat p(Member::Planar, 255, 8, layout);
        for (int r = first; r <= last; ++r) EXPECT_EQ(p.lumaRow(r), bytes(4, 255)) << layout << " row " << r;
    }
}

// Flat 100 in the top strip: luma 100 on row 1 and 101 on the others, rows 0 to h-3.
TEST(StripSmoothingCases, Flat100TopStrip) {
    Flat o(Member::Packed, 100, 8, pxkLayoutTop);
    EXPECT_EQ(o.status, pxkOk);
    for (int r = 0; r < 6; ++r) EXPECT_EQ(o.packedRow(r), quads(r == 1 ? 100 : 101, 101)) << r;
    EXPECT_EQ(o.packedRow(6), bytes(8, 0xEE)) << "row h-2 is left to the next strip";
    EXPECT_EQ(o.packedRow(-1), bytes(8, 0xEE));
}

// The center strip writes rows -2 to h-3; the bottom strip -2 to h-1, its last two
// rows unbiased.
TEST(StripSmoothingCases, CenterAndBottomStripsWriteTwoRowsAbove) {
    Flat c(Member::Packed, 100, 8, pxkLayoutCenter);
    for (int r = -2; r <= 5; ++r) EXPECT_EQ(c.packedRow(r), quads(101, 101)) << r;
    EXPECT_EQ(c.packedRow(6), bytes(8, 0xEE));
    Flat b(Member::Packed, 100, 8, pxkLayoutBottom);
    for (int r = -2; r <= 5; ++r) EXPECT_EQ(b.packedRow(r), quads(101, 101)) << r;
    EXPECT_EQ(b.packedRow(6), quads(100, 100));
    EXPECT_EQ(b.packedRow(7), quads(100, 100));
    EXPECT_EQ(b.packedRow(8), bytes(8, 0xEE));
}

// Other layout values: the whole image when bits 0, 2 and 4 are set, else nothing.
TEST(StripSmoothingCases, OtherLayoutValues) {
    for (Member m : {Member::Packed, Member::Planar}) {
        Flat whole(m, 100, 8, 0x15 | 0x100);
        EXPECT_EQ(whole.status, pxkOk);
        EXPECT_EQ(whole.lumaRow(7), bytes(4, 101)) << memberName(m);
        for (int32_t layout : {0, 5, 17, 20, 2, 0x100}) {
            Flat none(m, 100, 8, layout);
            EXPECT_EQ(none.status, pxkOk);
            for (GuardedImage& d : none.f.dst) EXPECT_TRUE(d.unchanged()) << memberName(m) << " layout " << layout;
        }
    }
}

// The planar member on flat 100: the whole image biased (101), the strips not (100).
TEST(StripSmoothingCases, PlanarWholeAndStrips) {
    Flat w(Member::Planar, 100, 8, pxkLayoutWhole);
    for (int r = 0; r < 8; ++r) EXPECT_EQ(w.lumaRow(r), bytes(4, 101)) << r;
    for (int p = 0; p < 4; ++p) EXPECT_EQ(w.chromaRow(1, p), bytes(2, 101)) << p;
    Flat t(Member::Planar, 100, 8, pxkLayoutTop);
    for (int r = 0; r < 6; ++r) EXPECT_EQ(t.lumaRow(r), bytes(4, 100)) << r;
    EXPECT_EQ(t.lumaRow(6), bytes(4, 0xEE));
    EXPECT_EQ(t.chromaRow(2, 2), bytes(2, 100));
    EXPECT_EQ(t.chromaRow(2, 3), bytes(2, 0xEE));
    Flat c(Member::Planar, 100, 8, pxkLayoutCenter);
    EXPECT_EQ(c.lumaRow(-2), bytes(4, 100));
    EXPECT_EQ(c.chromaRow(1, -1), bytes(2, 100));
    EXPECT_EQ(c.lumaRow(6), bytes(4, 0xEE));
    EXPECT_EQ(c.chromaRow(1, 3), bytes(2, 0xEE));
    Flat b(Member::Planar, 100, 8, pxkLayoutBottom);
    EXPECT_EQ(b.lumaRow(7), bytes(4, 100));
    EXPECT_EQ(b.chromaRow(1, 3), bytes(2, 100));
}

// Height 2 with the top strip: the packed member writes rows 0 and 1, the planar
// member nothing.
TEST(StripSmoothingCases, TopStripAtHeight2) {
    Flat p(Member::Packed, 100, 2, pxkLayoutTop);
    EXPECT_EQ(p.packedRow(0), quads(101, 101));
    EXPECT_EQ(p.packedRow(1), quads(100, 101));
    Flat q(Member::Planar, 100, 2, pxkLayoutTop);
    for (GuardedImage& d : q.f.dst) EXPECT_TRUE(d.unchanged());
}

// One column of distinct values, so that each rule shows. Luma column 0 holds the
// given rows (row -3 first), column 1 is 255 everywhere (255 by saturation in every
// filter); chroma byte 0 (Cb) holds the given rows (row -1 first), byte 1 is 255.
struct Column {
    Frame f;
    Column(Member m, int h, const std::vector<int>& luma, const std::vector<int>& cb)
        : f(m, 2, h, StepKind::Tight, StepKind::Tight) {
        f.y.fill(255, 0);
        f.c.fill(255, 0);
        for (GuardedImage& d : f.dst) d.fill(0xEE, 0);
        for (std::size_t i = 0; i < luma.size(); ++i) f.yRow(int(i) - kLumaAbove)[0] = uint8_t(luma[i]);
        for (std::size_t i = 0; i < cb.size(); ++i) f.cRow(int(i) - kChromaAbove)[0] = uint8_t(cb[i]);
    }
    std::vector<uint8_t> packed(int r) { return std::vector<uint8_t>(f.dstRow(0, r), f.dstRow(0, r) + 4); }
    int luma(int r) { return f.dstRow(0, r)[0]; }
    int chroma(int p) { return f.dstRow(1, p)[0]; }
};

// Luma rows -3 .. 5: 0 4 8 | 10 20 40 80 160 250; chroma rows -1 .. 2: 1 | 7 100 31.
const std::vector<int> kLuma = {0, 4, 8, 10, 20, 40, 80, 160, 250};
const std::vector<int> kCb = {1, 7, 100, 31};

std::vector<uint8_t> px(int y, int cb) { return {uint8_t(y), uint8_t(cb), 255, 255}; }

// Packed rows of a call on Column: {row, luma of column 0, Cb}; a luma of -1 means
// the row stays unwritten.
struct PackedRow {
    int row, luma, cb;
};
void expectPacked(Member m, int h, int32_t layout, const std::vector<PackedRow>& rows) {
    Column c(m, h, kLuma, kCb);
    ASSERT_EQ(c.f.call(m, 2, h, layout), pxkOk);
    for (const PackedRow& r : rows) {
        EXPECT_EQ(c.packed(r.row), r.luma < 0 ? std::vector<uint8_t>(4, 0xEE) : px(r.luma, r.cb))
            << "layout " << layout << " height " << h << " row " << r.row;
    }
}

// Whole, h 6:  rows (30+20+4)>>2 = 13, (10+80+20+4)>>2... as below; chroma pairs
// A(0,2) = (7+100+2)>>1 = 54, A(1,0) = 131>>1 = 65, A(1,2) = 133>>1 = 66.
TEST(StripSmoothingCases, PackedWholeRules) {
    // F31(0,4) = (30+20+4)>>2 = 13; F121(r,4): (10+40+40+4)>>2 = 23, (20+80+80+4)>>2 = 46,
    // (40+160+160+4)>>2 = 91, (80+320+250+4)>>2 = 163; F13(5,4) = (160+750+4)>>2 = 228.
    // Chroma pairs: A(0,2) = (7+100+2)>>1 = 54, A(1,0) = 131>>1 = 65, A(1,2) = 133>>1 = 66.
    expectPacked(Member::Packed, 6, pxkLayoutWhole,
                 {{0, 13, 54}, {1, 23, 54}, {2, 46, 65}, {3, 91, 65}, {4, 163, 66}, {5, 228, 66}, {6, -1, 0}});
    // Height 2: F31(0,4) = 13, F13(1,4) = (10+60+4)>>2 = 18; chroma row 0 copied.
    expectPacked(Member::Packed, 2, pxkLayoutWhole, {{0, 13, 7}, {1, 18, 7}, {2, -1, 0}, {-1, -1, 0}});
}

TEST(StripSmoothingCases, PackedTopRules) {
    // F31(0,4) = 13, F121(1,0) = 90>>2 = 22, F121(2,4) = 46, F121(3,4) = 91; chroma
    // A(0,2) = 54, A(1,2) = 66; rows 4 and 5 left to the next strip.
    expectPacked(Member::Packed, 6, pxkLayoutTop, {{0, 13, 54}, {1, 22, 54}, {2, 46, 66}, {3, 91, 66}, {4, -1, 0}});
    // At height 2: rows 0 and 1, reading luma row 2 and chroma row 1.
    expectPacked(Member::Packed, 2, pxkLayoutTop, {{0, 13, 54}, {1, 22, 54}, {-1, -1, 0}});
}

TEST(StripSmoothingCases, PackedCenterAndBottomRules) {
    // F121(-2,4) = (0+8+8+4)>>2 = 5, F121(-1,4) = (4+16+10+4)>>2 = 8, F121(0,4) = 13,
    // F121(1,4) = 23; chroma rows -2, -1: A(-1,2) = (1+7+2)>>1 = 5, rows 0, 1: 54.
    expectPacked(Member::Packed, 4, pxkLayoutCenter, {{-2, 5, 5}, {-1, 8, 5}, {0, 13, 54}, {1, 23, 54}, {2, -1, 0}});
    // Bottom: the same, then F121(2,0) = 180>>2 = 45 and F13(3,0) = 280>>2 = 70 with
    // chroma A(0,0) = 107>>1 = 53.
    expectPacked(Member::Packed, 4, pxkLayoutBottom,
                 {{-2, 5, 5}, {-1, 8, 5}, {0, 13, 54}, {1, 23, 54}, {2, 45, 53}, {3, 70, 53}});
}

TEST(StripSmoothingCases, PlanarRules) {
    // Whole, h 6: luma as the packed member's; chroma A(0,2) = 54, A(1,2) = 66, and the
    // last row A(n-2,2) = 66. Plane 2 takes byte 1 (255).
    Column w(Member::Planar, 6, kLuma, kCb);
    ASSERT_EQ(w.f.call(Member::Planar, 2, 6, pxkLayoutWhole), pxkOk);
    const int y[6] = {13, 23, 46, 91, 163, 228};
    for (int r = 0; r < 6; ++r) EXPECT_EQ(w.luma(r), y[r]) << r;
    EXPECT_EQ(w.chroma(0), 54);
    EXPECT_EQ(w.chroma(1), 66);
    EXPECT_EQ(w.chroma(2), 66);
    EXPECT_EQ(w.f.dstRow(2, 0)[0], 255);
    // Whole, h 2: 13, 18; chroma row 0 copied.
    Column w2(Member::Planar, 2, kLuma, kCb);
    ASSERT_EQ(w2.f.call(Member::Planar, 2, 2, pxkLayoutWhole), pxkOk);
    EXPECT_EQ(w2.luma(0), 13);
    EXPECT_EQ(w2.luma(1), 18);
    EXPECT_EQ(w2.chroma(0), 7);
    // Top, h 6: F31(0,0) = 50>>2 = 12, F121(r,0) = 22, 45, 90; chroma A(0,0) = 53,
    // A(1,0) = 65; rows 4 and 2 left.
    Column t(Member::Planar, 6, kLuma, kCb);
    ASSERT_EQ(t.f.call(Member::Planar, 2, 6, pxkLayoutTop), pxkOk);
    EXPECT_EQ(t.luma(0), 12);
    EXPECT_EQ(t.luma(1), 22);
    EXPECT_EQ(t.luma(2), 45);
    EXPECT_EQ(t.luma(3), 90);
    EXPECT_EQ(t.luma(4), 0xEE);
    EXPECT_EQ(t.chroma(0), 53);
    EXPECT_EQ(t.chroma(1), 65);
    EXPECT_EQ(t.chroma(2), 0xEE);
    // Center, h 4: F121(r,0) for rows -2 .. 1: 16>>2 = 4, 30>>2 = 7, 48>>2 = 12, 22;
    // chroma rows -1, 0: A(-1,0) = 8>>1 = 4, A(0,0) = 53.
    Column c(Member::Planar, 4, kLuma, kCb);
    ASSERT_EQ(c.f.call(Member::Planar, 2, 4, pxkLayoutCenter), pxkOk);
    EXPECT_EQ(c.luma(-2), 4);
    EXPECT_EQ(c.luma(-1), 7);
    EXPECT_EQ(c.luma(0), 12);
    EXPECT_EQ(c.luma(1), 22);
    EXPECT_EQ(c.luma(2), 0xEE);
    EXPECT_EQ(c.chroma(-1), 4);
    EXPECT_EQ(c.chroma(0), 53);
    EXPECT_EQ(c.chroma(1), 0xEE);
    // Bottom, h 4: the same, then F121(2,0) = 45, F13(3,0) = 70; chroma row 1 A(0,0) = 53.
    Column b(Member::Planar, 4, kLuma, kCb);
    ASSERT_EQ(b.f.call(Member::Planar, 2, 4, pxkLayoutBottom), pxkOk);
    EXPECT_EQ(b.luma(-2), 4);
    EXPECT_EQ(b.luma(2), 45);
    EXPECT_EQ(b.luma(3), 70);
    EXPECT_EQ(b.chroma(-1), 4);
    EXPECT_EQ(b.chroma(1), 53);
}

// Width 5, height 7: the 4 x 6 result; column 4 and row 6 stay unwritten.
TEST(StripSmoothingCases, CutsToEvenWidthAndHeight) {
    for (Member m : {Member::Packed, Member::Planar}) {
        Frame f(m, 5, 7, StepKind::Tight, StepKind::Tight);
        f.y.fill(100, 0);
        f.c.fill(100, 0);
        for (GuardedImage& d : f.dst) d.fill(0xEE, 0);
        ASSERT_EQ(f.call(m, 5, 7, pxkLayoutWhole), pxkOk);
        const int bytesPerPixel = m == Member::Packed ? 2 : 1;
        for (int r = -2; r < 9; ++r) {
            for (int x = 0; x < 5 * bytesPerPixel; ++x) {
                const bool written = r >= 0 && r < 6 && x < 4 * bytesPerPixel;
                EXPECT_EQ(f.dstRow(0, r)[x] == 0xEE, !written) << memberName(m) << " row " << r << " byte " << x;
            }
        }
    }
}

// ---------------------------------------------------------------------------------
// Statuses
// ---------------------------------------------------------------------------------

enum class Null { None, SrcY, SrcC, Dst, DstEntry0, DstEntry1, DstEntry2, DstSteps };

// A call on an 8 x 8 frame with one argument null; returns the status and checks
// that nothing of any image changed.
PxkResult callWith(Member m, int w, int h, Null null, int32_t layout = pxkLayoutWhole) {
    pxktest::Rng rng(pxktest::seedFor(memberName(m), {uint32_t(w), uint32_t(h), uint32_t(null)}));
    Frame f(m, 8, 8, StepKind::Padded, StepKind::Padded);
    f.fillRandom(rng);
    const uint8_t* y = null == Null::SrcY ? nullptr : f.yRow(0);
    const uint8_t* c = null == Null::SrcC ? nullptr : f.cRow(0);
    PxkResult st;
    if (m == Member::Packed) {
        st = pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R(y, f.y.step(), c, f.c.step(),
                                                    null == Null::Dst ? nullptr : f.dstRow(0, 0), f.dst[0].step(),
                                                    PxkSize{w, h}, layout);
    } else {
        uint8_t* planes[3] = {f.dstRow(0, 0), f.dstRow(1, 0), f.dstRow(2, 0)};
        if (null == Null::DstEntry0) planes[0] = nullptr;
        if (null == Null::DstEntry1) planes[1] = nullptr;
        if (null == Null::DstEntry2) planes[2] = nullptr;
        const int32_t steps[3] = {f.dst[0].step(), f.dst[1].step(), f.dst[2].step()};
        st = pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R(y, f.y.step(), c, f.c.step(), null == Null::Dst ? nullptr : planes,
                                                    null == Null::DstSteps ? nullptr : steps, PxkSize{w, h}, layout);
    }
    EXPECT_TRUE(f.y.unchanged());
    EXPECT_TRUE(f.c.unchanged());
    if (st != pxkOk || layout == 5) {
        for (GuardedImage& d : f.dst) EXPECT_TRUE(d.unchanged()) << memberName(m) << " status " << st;
    }
    return st;
}

TEST(StripSmoothingStatus, PackedPointersThenSize) {
    for (Null n : {Null::SrcY, Null::SrcC, Null::Dst}) {
        for (int32_t layout : {int32_t(pxkLayoutWhole), int32_t(pxkLayoutCenter), 5}) {
            EXPECT_EQ(callWith(Member::Packed, 8, 8, n, layout), pxkErrNullPtr) << int(n);
        }
        EXPECT_EQ(callWith(Member::Packed, 0, 8, n), pxkErrNullPtr) << int(n);
        EXPECT_EQ(callWith(Member::Packed, -3, -3, n), pxkErrNullPtr) << int(n);
    }
    for (int w : {1, 0, -1, INT32_MIN}) EXPECT_EQ(callWith(Member::Packed, w, 8, Null::None), pxkErrSize) << w;
    for (int h : {1, 0, -1, INT32_MIN}) EXPECT_EQ(callWith(Member::Packed, 8, h, Null::None), pxkErrSize) << h;
    EXPECT_EQ(callWith(Member::Packed, 2, 2, Null::None), pxkOk);
    EXPECT_EQ(callWith(Member::Packed, 3, 3, Null::None), pxkOk);
}

// srcY, srcCbCr, dst; width or height below 1; the entries of dst (and its step
// array); width or height below 2.
TEST(StripSmoothingStatus, PlanarCheckOrder) {
    for (Null n : {Null::SrcY, Null::SrcC, Null::Dst}) {
        EXPECT_EQ(callWith(Member::Planar, 8, 8, n), pxkErrNullPtr) << int(n);
        EXPECT_EQ(callWith(Member::Planar, 0, 8, n), pxkErrNullPtr) << int(n);
        EXPECT_EQ(callWith(Member::Planar, 8, -1, n), pxkErrNullPtr) << int(n);
    }
    for (Null n : {Null::DstEntry0, Null::DstEntry1, Null::DstEntry2, Null::DstSteps}) {
        EXPECT_EQ(callWith(Member::Planar, 8, 8, n), pxkErrNullPtr) << int(n);
        EXPECT_EQ(callWith(Member::Planar, 8, 8, n, 5), pxkErrNullPtr) << int(n);
        // Below 1: the size first; at 1: the entry first.
        EXPECT_EQ(callWith(Member::Planar, 0, 8, n), pxkErrSize) << int(n);
        EXPECT_EQ(callWith(Member::Planar, 8, 0, n), pxkErrSize) << int(n);
        EXPECT_EQ(callWith(Member::Planar, 1, 8, n), pxkErrNullPtr) << int(n);
        EXPECT_EQ(callWith(Member::Planar, 8, 1, n), pxkErrNullPtr) << int(n);
    }
    for (int w : {1, 0, -1, INT32_MIN}) EXPECT_EQ(callWith(Member::Planar, w, 8, Null::None), pxkErrSize) << w;
    for (int h : {1, 0, -1, INT32_MIN}) EXPECT_EQ(callWith(Member::Planar, 8, h, Null::None), pxkErrSize) << h;
    EXPECT_EQ(callWith(Member::Planar, 2, 2, Null::None), pxkOk);
}

// A layout that takes no path returns pxkOk after the checks, having written nothing.
TEST(StripSmoothingStatus, NoPathWritesNothing) {
    for (Member m : {Member::Packed, Member::Planar}) {
        EXPECT_EQ(callWith(m, 8, 8, Null::None, 5), pxkOk) << memberName(m);
        EXPECT_EQ(callWith(m, 1, 8, Null::None, 5), pxkErrSize) << memberName(m);
    }
}

}  // namespace
