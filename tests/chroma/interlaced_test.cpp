// Interlaced 4:2:2 <-> 4:2:0: the four members against a literal model of the field
// weights, their statuses (pxkWarnOddSize after a cut), and the documented cases.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "chroma_harness.h"

namespace {

using namespace chromatest;

// The model: luma moved; each output chroma row from two rows of its own field.
void fieldModel(Surface& src, const Side& s, Surface& dst, const Side& d, int w, int h) {
    w -= w % 2;
    h -= h % 4;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) *lumaAt(dst, d, x, y) = *lumaAt(src, s, x, y);
    }
    const int cw = w / 2, n = h / 2;
    for (int k = 0; k < 2; ++k) {
        for (int c = 0; c < cw; ++c) {
            auto C = [&](int r) { return int(*chromaAt(src, s, k, c, r)); };
            auto out = [&](int r) { return chromaAt(dst, d, k, c, r); };
            if (d.sampling == Sampling::S420) {
                for (int g = 0; g < h / 4; ++g) {
                    *out(2 * g) = uint8_t((3 * C(4 * g) + C(4 * g + 2) + 2) >> 2);
                    *out(2 * g + 1) = uint8_t((C(4 * g + 1) + 3 * C(4 * g + 3) + 2) >> 2);
                }
            } else {
                *out(0) = uint8_t(C(0));
                *out(1) = uint8_t(C(1));
                for (int i = 0; i < (h - 4) / 4; ++i) {
                    const int b = 2 * i, r = 2 + 4 * i;
                    *out(r) = uint8_t((5 * C(b) + 3 * C(b + 2) + 4) >> 3);
                    *out(r + 1) = uint8_t((7 * C(b + 1) + C(b + 3) + 4) >> 3);
                    *out(r + 2) = uint8_t((C(b) + 7 * C(b + 2) + 4) >> 3);
                    *out(r + 3) = uint8_t((3 * C(b + 1) + 5 * C(b + 3) + 4) >> 3);
                }
                *out(h - 2) = uint8_t(C(n - 2));
                *out(h - 1) = uint8_t(C(n - 1));
            }
        }
    }
}

Member interlaced(const char* name, Side src, Side dst, Call call) {
    Member m{name, src, dst, 2, false, 2, 4, std::move(call)};
    m.reference = [src, dst](Surface& s, Surface& d, int w, int h) { fieldModel(s, src, d, dst, w, h); };
    m.heights = {4, 5, 7, 8, 12, 13};
    m.status = [](int w, int h) { return (w % 2 != 0 || h % 4 != 0) ? pxkWarnOddSize : pxkOk; };
    return m;
}

const std::vector<Member>& members() {
    static const std::vector<Member> list = {
        interlaced("YCbCr422To420_Interlace_8u_P3R", planes(Sampling::S422), planes(Sampling::S420),
                   [](Args& a) {
                       return pxkiYCbCr422To420_Interlace_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps,
                                                                 a.size);
                   }),
        interlaced("CbYCr422ToYCbCr420_Interlace_8u_C2P3R", packedCbYCr(), planes(Sampling::S420),
                   [](Args& a) {
                       return pxkiCbYCr422ToYCbCr420_Interlace_8u_C2P3R(a.srcPtr[0], a.srcStep[0], a.dstArray,
                                                                        a.dstSteps, a.size);
                   }),
        interlaced("YCbCr420To422_Interlace_8u_P3R", planes(Sampling::S420), planes(Sampling::S422),
                   [](Args& a) {
                       return pxkiYCbCr420To422_Interlace_8u_P3R(a.srcArray, a.srcSteps, a.dstArray, a.dstSteps,
                                                                 a.size);
                   }),
        interlaced("YCbCr420ToCbYCr422_Interlace_8u_P3C2R", planes(Sampling::S420), packedCbYCr(),
                   [](Args& a) {
                       return pxkiYCbCr420ToCbYCr422_Interlace_8u_P3C2R(a.srcArray, a.srcSteps, a.dstPtr[0],
                                                                        a.dstStep[0], a.size);
                   }),
    };
    return list;
}

CHROMATEST_MEMBER_SUITES(Interlaced, members);

// One column of chroma through a planar member.
std::vector<uint8_t> column(bool to420, const std::vector<uint8_t>& c, int w, int h, PxkResult* status) {
    const int srcRows = int(c.size()), dstRows = to420 ? h / 2 : h;
    std::vector<uint8_t> y(static_cast<std::size_t>(w * h), 1), cb(static_cast<std::size_t>(srcRows)),
        cr(static_cast<std::size_t>(srcRows));
    for (int r = 0; r < srcRows; ++r) cb[std::size_t(r)] = cr[std::size_t(r)] = c[std::size_t(r)];
    std::vector<uint8_t> dy(static_cast<std::size_t>(w * h)), dcb(static_cast<std::size_t>(dstRows), 0xEE),
        dcr(static_cast<std::size_t>(dstRows), 0xEE);
    const uint8_t* const src[3] = {y.data(), cb.data(), cr.data()};
    const int32_t srcSteps[3] = {w, 1, 1};
    uint8_t* const dst[3] = {dy.data(), dcb.data(), dcr.data()};
    const int32_t dstSteps[3] = {w, 1, 1};
    const PxkSize size{w, h};
    *status = to420 ? pxkiYCbCr422To420_Interlace_8u_P3R(src, srcSteps, dst, dstSteps, size)
                    : pxkiYCbCr420To422_Interlace_8u_P3R(src, srcSteps, dst, dstSteps, size);
    return dcb;
}

// Height 4 from 420: no group; the rows are C[0], C[1], C[0], C[1].
TEST(InterlacedCases, Height4From420CopiesTheRows) {
    PxkResult st = 0;
    EXPECT_EQ(column(false, {30, 200}, 2, 4, &st), (std::vector<uint8_t>{30, 200, 30, 200}));
    EXPECT_EQ(st, pxkOk);
}

// Height 8 from 420 (C = 10, 20, 90, 200): rows 2..5 by the weights, in literal values.
//   row 2: (50 + 270 + 4) >> 3 = 40;  row 3: (140 + 200 + 4) >> 3 = 43
//   row 4: (10 + 630 + 4) >> 3 = 80;  row 5: (60 + 1000 + 4) >> 3 = 133
TEST(InterlacedCases, WeightsOfBothFieldsInLiteralValues) {
    PxkResult st = 0;
    EXPECT_EQ(column(false, {10, 20, 90, 200}, 2, 8, &st),
              (std::vector<uint8_t>{10, 20, 40, 43, 80, 133, 90, 200}));
    // To 420 (C = 10, 20, 90, 200): (30 + 90 + 2) >> 2 = 30, (20 + 600 + 2) >> 2 = 155.
    EXPECT_EQ(column(true, {10, 20, 90, 200}, 2, 4, &st), (std::vector<uint8_t>{30, 155}));
}

// Width 17, height 9: the 16 x 8 result and pxkWarnOddSize.
TEST(InterlacedCases, Width17Height9GivesThe16By8ResultAndAWarning) {
    const Member& m = memberNamed(members(), "YCbCr420ToCbYCr422_Interlace_8u_P3C2R");
    EXPECT_TRUE(runOnce(m, 17, 9, StepKind::Tight, StepKind::Tight, 17u));
    Surface src = makeSide(m.src, 17, 9, StepKind::Tight);
    Surface dst = makeSide(m.dst, 17, 9, StepKind::Tight);
    dst.snapshot();
    Args a(src, dst, PxkSize{17, 9});
    EXPECT_EQ(m.call(a), pxkWarnOddSize);
}

// A change in an odd source row does not reach the even output rows, and the reverse,
// in both directions; flat chroma stays flat.
TEST(InterlacedCases, FieldsDoNotMixAndFlatStaysFlat) {
    for (bool to420 : {true, false}) {
        const int h = 16, rows = to420 ? 16 : 8;
        std::vector<uint8_t> base(static_cast<std::size_t>(rows)), odd, even;
        for (int r = 0; r < rows; ++r) base[std::size_t(r)] = uint8_t(17 * r + 5);
        odd = even = base;
        for (int r = 1; r < rows; r += 2) odd[std::size_t(r)] ^= 0x55;
        for (int r = 0; r < rows; r += 2) even[std::size_t(r)] ^= 0x55;
        PxkResult st = 0;
        const std::vector<uint8_t> a = column(to420, base, 2, h, &st), b = column(to420, odd, 2, h, &st),
                                   c = column(to420, even, 2, h, &st);
        for (std::size_t r = 0; r < a.size(); ++r) {
            if (r % 2 == 0) {
                EXPECT_EQ(a[r], b[r]) << to420 << " row " << r;
            } else {
                EXPECT_EQ(a[r], c[r]) << to420 << " row " << r;
            }
        }
        EXPECT_EQ(column(to420, std::vector<uint8_t>(std::size_t(rows), 77), 2, h, &st),
                  std::vector<uint8_t>(a.size(), 77));
    }
}

// Every pair of byte values through the weights of both directions, in vector columns
// and in the scalar tail: 65536 + 5 chroma columns, column c holding the pair
// (c & 255, c >> 8) (then five tail columns), against the weights written out here.
TEST(InterlacedCases, EveryPairOfValuesInEveryWeight) {
    const int cw = 65536 + 5, w = 2 * cw;
    const auto lowOf = [](int c) { return uint8_t(c & 255); };
    const auto highOf = [](int c) { return uint8_t((c >> 8) ^ (c > 65535 ? 0x5A : 0)); };
    for (bool to420 : {true, false}) {
        const int h = to420 ? 4 : 8, srcRows = to420 ? 4 : 4, dstRows = h / (to420 ? 2 : 1);
        std::vector<uint8_t> y(std::size_t(w) * std::size_t(h), 3), cb(std::size_t(cw) * std::size_t(srcRows));
        for (int c = 0; c < cw; ++c) {
            // Rows 0 and 2 form one field, rows 1 and 3 the other; each field sees the
            // pair both ways round.
            cb[std::size_t(c)] = lowOf(c);
            cb[std::size_t(cw + c)] = highOf(c);
            cb[std::size_t(2 * cw + c)] = highOf(c);
            cb[std::size_t(3 * cw + c)] = lowOf(c);
        }
        std::vector<uint8_t> dy(y.size()), dcb(std::size_t(cw) * std::size_t(dstRows)), dcr(dcb.size());
        const uint8_t* const src[3] = {y.data(), cb.data(), cb.data()};
        const int32_t steps[3] = {w, cw, cw};
        uint8_t* const dst[3] = {dy.data(), dcb.data(), dcr.data()};
        const PxkSize size{w, h};
        const PxkResult st = to420 ? pxkiYCbCr422To420_Interlace_8u_P3R(src, steps, dst, steps, size)
                                   : pxkiYCbCr420To422_Interlace_8u_P3R(src, steps, dst, steps, size);
        ASSERT_EQ(st, pxkOk);
        ASSERT_EQ(dcb, dcr);
        int bad = 0;
        for (int c = 0; c < cw && bad < 5; ++c) {
            const int lo = lowOf(c), hi = highOf(c);
            std::vector<int> want;
            if (to420) {
                want = {(3 * lo + hi + 2) >> 2, (hi + 3 * lo + 2) >> 2};
            } else {
                want = {lo, hi, (5 * lo + 3 * hi + 4) >> 3, (7 * hi + lo + 4) >> 3,
                        (lo + 7 * hi + 4) >> 3, (3 * hi + 5 * lo + 4) >> 3, hi, lo};
            }
            for (int r = 0; r < dstRows; ++r) {
                const int got = dcb[std::size_t(r) * std::size_t(cw) + std::size_t(c)];
                if (got != want[std::size_t(r)]) {
                    ADD_FAILURE() << (to420 ? "to 420" : "to 422") << " column " << c << " row " << r << ": "
                                  << got << " want " << want[std::size_t(r)];
                    ++bad;
                }
            }
        }
    }
}

}  // namespace
