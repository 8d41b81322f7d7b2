// ColorTwist: the 25 exports against the reference model over every width, several
// heights, step layouts and matrices (in place and not), the known cases with
// literal values, the control register around the integer members, the row merges
// and the non-temporal threshold, statuses and guards.
#include <gtest/gtest.h>

#include <xmmintrin.h>

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "call_outcome.h"
#include "guarded_image.h"
#include "pxkcc.h"
#include "random.h"
#include "sweep.h"
#include "twist_reference.h"

namespace {

using pxktest::GuardedImage;
using pxktest::ImageGeometry;
using pxktest::Rng;

enum class Kind { C3, AC4, P3, C4 };
enum class Sample { U8, U16, S16, F32 };

int bytesOf(Sample s) { return s == Sample::U8 ? 1 : (s == Sample::F32 ? 4 : 2); }

// An export called through byte pointers: packed sides use entry 0.
using Call = PxkResult (*)(uint8_t* const src[3], int32_t srcStep, uint8_t* const dst[3], int32_t dstStep, PxkSize,
                           const float* twist);

struct Member {
    const char* name;
    Kind kind;
    bool inPlace;
    Sample sample;
    Call call;
};

template <class T>
T* as(uint8_t* p) {
    return reinterpret_cast<T*>(p);
}
template <class T>
const T* const* planesAs(uint8_t* const p[3]) {
    return reinterpret_cast<const T* const*>(p);
}
template <class T>
T* const* mutablePlanesAs(uint8_t* const p[3]) {
    return reinterpret_cast<T* const*>(p);
}

#define PACKED(name, T, kind, sample)                                                                      \
    Member {                                                                                               \
        #name, kind, false, sample, [](uint8_t* const s[3], int32_t ss, uint8_t* const d[3], int32_t ds, PxkSize z, \
                                       const float* t) { return name(as<T>(s[0]), ss, as<T>(d[0]), ds, z, t); } \
    }
#define PACKED_IN_PLACE(name, T, kind, sample)                                                             \
    Member {                                                                                               \
        #name, kind, true, sample, [](uint8_t* const*, int32_t, uint8_t* const d[3], int32_t ds, PxkSize z, \
                                      const float* t) { return name(as<T>(d[0]), ds, z, t); }              \
    }
#define PLANAR(name, T, sample)                                                                            \
    Member {                                                                                               \
        #name, Kind::P3, false, sample, [](uint8_t* const s[3], int32_t ss, uint8_t* const d[3], int32_t ds, \
                                           PxkSize z, const float* t) {                                    \
            return name(planesAs<T>(s), ss, mutablePlanesAs<T>(d), ds, z, t);                              \
        }                                                                                                  \
    }
#define PLANAR_IN_PLACE(name, T, sample)                                                                   \
    Member {                                                                                               \
        #name, Kind::P3, true, sample, [](uint8_t* const*, int32_t, uint8_t* const d[3], int32_t ds, PxkSize z, \
                                          const float* t) { return name(mutablePlanesAs<T>(d), ds, z, t); } \
    }
#define SIX_FORMS(prefix, T, sample)                                                  \
    PACKED(prefix##_C3R, T, Kind::C3, sample), PACKED_IN_PLACE(prefix##_C3IR, T, Kind::C3, sample), \
        PACKED(prefix##_AC4R, T, Kind::AC4, sample), PACKED_IN_PLACE(prefix##_AC4IR, T, Kind::AC4, sample), \
        PLANAR(prefix##_P3R, T, sample), PLANAR_IN_PLACE(prefix##_IP3R, T, sample)

const std::vector<Member>& members() {
    static const std::vector<Member> list = {
        SIX_FORMS(pxkiColorTwist_32f, float, Sample::F32),
        PACKED(pxkiColorTwist_32f_C4R, float, Kind::C4, Sample::F32),
        SIX_FORMS(pxkiColorTwist32f_8u, uint8_t, Sample::U8),
        SIX_FORMS(pxkiColorTwist32f_16u, uint16_t, Sample::U16),
        SIX_FORMS(pxkiColorTwist32f_16s, int16_t, Sample::S16),
    };
    return list;
}

const Member& memberNamed(const std::string& name) {
    for (const Member& m : members())
        if (name == m.name) return m;
    throw std::runtime_error("no member " + name);
}

// One side of a call: a packed image, or three planes.
struct Side {
    std::vector<GuardedImage> images;
    std::vector<uint8_t*> pointers;

    void bind() {
        pointers.clear();
        for (GuardedImage& i : images) pointers.push_back(i.data());
        while (pointers.size() < 3) pointers.push_back(nullptr);
    }
    Side clone() const {
        Side s;
        for (const GuardedImage& i : images) s.images.push_back(i.clone());
        s.bind();
        return s;
    }
    // Sample c of pixel (x, y).
    std::pair<GuardedImage*, int> at(int c) {
        return images.size() == 1 ? std::make_pair(&images[0], c) : std::make_pair(&images[std::size_t(c)], 0);
    }
};

// Sources end just below an inaccessible page (see call_outcome.h).
Side makeSide(const Member& m, int width, int height, int step, bool source = false) {
    const pxktest::GuardOptions o = source ? graytest::fencedSource() : pxktest::GuardOptions{};
    Side s;
    const int b = bytesOf(m.sample);
    if (m.kind == Kind::P3) {
        for (int p = 0; p < 3; ++p) s.images.emplace_back(ImageGeometry{width, height, 1, b, step}, o);
    } else {
        s.images.emplace_back(ImageGeometry{width, height, m.kind == Kind::C3 ? 3 : 4, b, step}, o);
    }
    s.bind();
    return s;
}

float readSample(const GuardedImage& img, Sample s, int x, int y, int c) {
    switch (s) {
        case Sample::U8:
            return float(img.get<uint8_t>(x, y, c));
        case Sample::U16:
            return float(img.get<uint16_t>(x, y, c));
        case Sample::S16:
            return float(img.get<int16_t>(x, y, c));
        case Sample::F32:
            return img.get<float>(x, y, c);
    }
    return 0;
}

void writeResult(GuardedImage& img, Sample s, int x, int y, int c, float v) {
    switch (s) {
        case Sample::U8:
            img.set<uint8_t>(x, y, c, uint8_t(reftwist::clampRound(v, 0.0f, 255.0f)));
            break;
        case Sample::U16:
            img.set<uint16_t>(x, y, c, uint16_t(reftwist::clampRound(v, 0.0f, 65535.0f)));
            break;
        case Sample::S16:
            img.set<int16_t>(x, y, c, int16_t(reftwist::clampRound(v, -32768.0f, 32767.0f)));
            break;
        case Sample::F32:
            img.set<float>(x, y, c, v);
            break;
    }
}

void fillSide(Side& side, Sample s, Rng& rng) {
    for (GuardedImage& img : side.images) {
        img.fillRandom(rng);
        if (s == Sample::F32) {
            for (int y = 0; y < img.height(); ++y)
                for (int x = 0; x < img.width(); ++x)
                    for (int c = 0; c < img.channels(); ++c)
                        img.set<float>(x, y, c, float(rng.uniform(-100000, 100000)) / 37.0f);
            img.snapshot();
        }
    }
}

// The expected destination: `expected` (a copy of the destination before the call)
// with every converted sample replaced, inputs read from `src` (rows in order, so
// that rows sharing memory end as the call leaves them).
void applyReference(const Member& m, Side& src, Side& expected, int width, int height, const float* twist) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            float in[4] = {0, 0, 0, 0};
            const int channels = m.kind == Kind::C4 ? 4 : 3;
            for (int c = 0; c < channels; ++c) {
                auto [img, ch] = src.at(c);
                in[c] = readSample(*img, m.sample, x, y, ch);
            }
            for (int k = 0; k < channels; ++k) {
                const float v = m.kind == Kind::C4 ? reftwist::linear(twist + 4 * k, in)
                                                   : reftwist::affine(twist + 4 * k, in[0], in[1], in[2]);
                auto [img, ch] = expected.at(k);
                writeResult(*img, m.sample, x, y, ch, v);
            }
        }
    }
}

::testing::AssertionResult sameSides(const Side& a, const Side& b) {
    for (std::size_t i = 0; i < a.images.size(); ++i) {
        auto r = pxktest::sameRegion(a.images[i], b.images[i]);
        if (!r) return r << " (image " << i << ")";
        r = a.images[i].guardsIntact();
        if (!r) return r << " (image " << i << ")";
    }
    return ::testing::AssertionSuccess();
}

// Runs one call of `m` over a width x height region with the given steps and matrix
// and compares every byte with the model. Returns the destination side.
::testing::AssertionResult runOnce(const Member& m, int width, int height, int srcStep, int dstStep,
                                   const float* twist, uint32_t seed) {
    Rng rng(seed);
    Side dst = makeSide(m, width, height, m.inPlace ? srcStep : dstStep);
    fillSide(dst, m.sample, rng);
    Side src = m.inPlace ? dst.clone() : makeSide(m, width, height, srcStep, true);
    if (!m.inPlace) fillSide(src, m.sample, rng);
    if (m.kind == Kind::AC4) dst.images[0].protectChannel(3);
    Side expected = dst.clone();
    applyReference(m, src, expected, width, height, twist);
    const PxkResult r = m.call(src.pointers.data(), srcStep, dst.pointers.data(), m.inPlace ? srcStep : dstStep,
                               PxkSize{width, height}, twist);
    if (r != pxkOk) return ::testing::AssertionFailure() << "status " << r;
    auto ok = sameSides(dst, expected);
    if (!ok) return ok;
    if (!m.inPlace) {
        for (const GuardedImage& i : src.images) {
            ok = i.unchanged();
            if (!ok) return ok << " (source)";
        }
    }
    return ::testing::AssertionSuccess();
}

// Matrices: continuous weights, quarter weights with half offsets (many exact ties),
// large offsets that clamp on both sides.
std::vector<float> matrixFor(const Member& m, Rng& rng, int flavour) {
    const int n = m.kind == Kind::C4 ? 16 : 12;
    const double range = m.sample == Sample::U8 ? 300 : (m.sample == Sample::F32 ? 500 : 70000);
    std::vector<float> t(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        const bool offset = m.kind != Kind::C4 && i % 4 == 3;
        if (flavour == 0) {
            t[std::size_t(i)] = offset ? float(rng.uniform(-int64_t(range), int64_t(range))) / 3.0f
                                       : float(rng.uniform(-2000, 2000)) / 999.0f;
        } else {
            t[std::size_t(i)] = offset ? float(rng.uniform(-40, 40)) * 0.5f : float(rng.uniform(-6, 6)) * 0.25f;
        }
    }
    return t;
}

class TwistSweep : public ::testing::TestWithParam<std::string> {};

TEST_P(TwistSweep, MatchesReference) {
    const Member& m = memberNamed(GetParam());
    const int b = bytesOf(m.sample);
    const int channels = m.kind == Kind::C3 ? 3 : (m.kind == Kind::P3 ? 1 : 4);
    const pxktest::StepKind kinds[][2] = {{pxktest::StepKind::Tight, pxktest::StepKind::Tight},
                                          {pxktest::StepKind::Padded, pxktest::StepKind::Odd},
                                          {pxktest::StepKind::Odd, pxktest::StepKind::Padded}};
    for (int width : pxktest::sweepWidths()) {
        for (int height : pxktest::sweepHeights(width)) {
            for (int plan = 0; plan < 3; ++plan) {
                const std::size_t row = std::size_t(width) * channels * b;
                const int srcStep = pxktest::stepFor(kinds[plan][0], row);
                const int dstStep = pxktest::stepFor(kinds[plan][1], row);
                const uint32_t seed = pxktest::seedFor(m.name, {uint32_t(width), uint32_t(height), uint32_t(plan)});
                Rng rng(seed);
                const std::vector<float> t = matrixFor(m, rng, plan % 2);
                ASSERT_TRUE(runOnce(m, width, height, srcStep, dstStep, t.data(), seed + 1))
                    << m.name << " width " << width << " height " << height << " plan " << plan;
            }
        }
    }
}

std::vector<std::string> memberNames() {
    std::vector<std::string> n;
    for (const Member& m : members()) n.push_back(m.name);
    return n;
}

INSTANTIATE_TEST_SUITE_P(AllExports, TwistSweep, ::testing::ValuesIn(memberNames()),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });

// ---------------------------------------------------------------------------------
// Known cases
// ---------------------------------------------------------------------------------

const float kIdentity[12] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};

TEST(TwistCases, IdentityKeeps8uPixels) {
    Rng rng(3);
    std::vector<uint8_t> src(61 * 3), dst(61 * 3);
    rng.fill(src.data(), src.size());
    ASSERT_EQ(pxkiColorTwist32f_8u_C3R(src.data(), 183, dst.data(), 183, PxkSize{61, 1}, kIdentity), pxkOk);
    EXPECT_EQ(src, dst);
}

TEST(TwistCases, HalfOffsetRoundsToEven) {
    // Offset 0.5 on every output: input 0 gives 0, input 1 gives 2, 2 gives 2, 3 gives 4.
    float t[12];
    std::memcpy(t, kIdentity, sizeof t);
    t[3] = t[7] = t[11] = 0.5f;
    for (int width : {1, 4, 9}) {
        std::vector<uint8_t> src(std::size_t(width) * 3), dst(src.size());
        for (std::size_t i = 0; i < src.size(); ++i) src[i] = uint8_t(i % 4);
        ASSERT_EQ(pxkiColorTwist32f_8u_C3R(src.data(), width * 3, dst.data(), width * 3, PxkSize{width, 1}, t), pxkOk);
        for (std::size_t i = 0; i < src.size(); ++i) {
            const uint8_t want[4] = {0, 2, 2, 4};
            EXPECT_EQ(dst[i], want[src[i]]) << "width " << width << " sample " << i;
        }
    }
}

TEST(TwistCases, SixteenSignedClampsAtBothEnds) {
    float low[12], high[12];
    std::memcpy(low, kIdentity, sizeof low);
    std::memcpy(high, kIdentity, sizeof high);
    low[3] = low[7] = low[11] = -0.6f;  // -32768 - 0.6
    high[3] = high[7] = high[11] = 0.4f;  // 32767 + 0.4
    std::vector<int16_t> a(5 * 3, -32768), b(5 * 3, 32767), out(5 * 3);
    ASSERT_EQ(pxkiColorTwist32f_16s_C3R(a.data(), 30, out.data(), 30, PxkSize{5, 1}, low), pxkOk);
    EXPECT_EQ(out, (std::vector<int16_t>(15, -32768)));
    ASSERT_EQ(pxkiColorTwist32f_16s_C3R(b.data(), 30, out.data(), 30, PxkSize{5, 1}, high), pxkOk);
    EXPECT_EQ(out, (std::vector<int16_t>(15, 32767)));
}

TEST(TwistCases, NaNWeightGivesTheUpperBound) {
    float t[12];
    std::memcpy(t, kIdentity, sizeof t);
    t[1] = std::numeric_limits<float>::quiet_NaN();  // output 0 on input 1
    std::vector<uint8_t> s8(6 * 3, 10), d8(6 * 3);
    ASSERT_EQ(pxkiColorTwist32f_8u_C3R(s8.data(), 18, d8.data(), 18, PxkSize{6, 1}, t), pxkOk);
    std::vector<uint16_t> s16(6 * 3, 10), d16(6 * 3);
    ASSERT_EQ(pxkiColorTwist32f_16u_C3R(s16.data(), 36, d16.data(), 36, PxkSize{6, 1}, t), pxkOk);
    std::vector<int16_t> ss(6 * 3, 10), ds(6 * 3);
    ASSERT_EQ(pxkiColorTwist32f_16s_C3R(ss.data(), 36, ds.data(), 36, PxkSize{6, 1}, t), pxkOk);
    for (int x = 0; x < 6; ++x) {
        EXPECT_EQ(d8[std::size_t(x) * 3], 255);
        EXPECT_EQ(d16[std::size_t(x) * 3], 65535);
        EXPECT_EQ(ds[std::size_t(x) * 3], 32767);
        EXPECT_EQ(d8[std::size_t(x) * 3 + 1], 10);
        EXPECT_EQ(d16[std::size_t(x) * 3 + 2], 10);
    }
}

TEST(TwistCases, InPlaceUsesTheOldInputs) {
    // Rotation of the channels: each output reads another input of the same pixel.
    const float rotate[12] = {0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0};
    std::vector<uint8_t> px = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    ASSERT_EQ(pxkiColorTwist32f_8u_C3IR(px.data(), 15, PxkSize{5, 1}, rotate), pxkOk);
    EXPECT_EQ(px, (std::vector<uint8_t>{2, 3, 1, 5, 6, 4, 8, 9, 7, 11, 12, 10, 14, 15, 13}));
    std::vector<float> f = {1, 2, 3, 99, 4, 5, 6, 98, 7, 8, 9, 97, 10, 11, 12, 96, 13, 14, 15, 95};
    ASSERT_EQ(pxkiColorTwist_32f_AC4IR(f.data(), 80, PxkSize{5, 1}, rotate), pxkOk);
    EXPECT_EQ(f, (std::vector<float>{2, 3, 1, 99, 5, 6, 4, 98, 8, 9, 7, 97, 11, 12, 10, 96, 14, 15, 13, 95}));
}

TEST(TwistCases, AssociationIsOffsetPlusFirstThenThirdPlusSecond) {
    // Inputs 1, 1, 1, weights 1e8, 4, 4, offset 0 (floats near 1e8 are 8 apart):
    // (0 + 1e8) + (4 + 4) = 100000008, whereas left to right 1e8 + 4 is a tie that
    // rounds to 1e8, and so does adding the other 4.
    const float t[12] = {1e8f, 4.0f, 4.0f, 0.0f, 0, 0, 0, 0, 0, 0, 0, 0};
    const float src[3] = {1, 1, 1};
    float dst[3] = {-1, -1, -1};
    ASSERT_EQ(pxkiColorTwist_32f_C3R(src, 12, dst, 12, PxkSize{1, 1}, t), pxkOk);
    EXPECT_EQ(dst[0], 100000008.0f);
    EXPECT_EQ(dst[1], 0.0f);
    // In a group of four and in the tail alike.
    std::vector<float> row(7 * 3, 1.0f), out(7 * 3);
    ASSERT_EQ(pxkiColorTwist_32f_C3R(row.data(), 84, out.data(), 84, PxkSize{7, 1}, t), pxkOk);
    for (int x = 0; x < 7; ++x) EXPECT_EQ(out[std::size_t(x) * 3], 100000008.0f) << x;
}

TEST(TwistCases, FourByFourAssociation) {
    // ((4 * 1 + 4 * 1) + 1e8 * 1) + 0 * 1 = 100000008; from the other end, 1e8 + 4 is a
    // tie that rounds to 1e8.
    const float t[16] = {4, 4, 1e8f, 0, 1e8f, 4, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    std::vector<float> src(5 * 4, 1.0f), dst(5 * 4);
    ASSERT_EQ(pxkiColorTwist_32f_C4R(src.data(), 80, dst.data(), 80, PxkSize{5, 1}, t), pxkOk);
    for (int x = 0; x < 5; ++x) {
        EXPECT_EQ(dst[std::size_t(x) * 4], 100000008.0f) << x;
        EXPECT_EQ(dst[std::size_t(x) * 4 + 1], 100000000.0f) << x;
    }
}

// Every 8-bit colour through the blocks (rows of 256 pixels) and through single
// pixels (rows of 15), with a continuous matrix and one full of ties; the sanitizer
// build takes every sixteenth first channel.
TEST(TwistCases, Every8uColourInBlocksAndSinglePixels) {
    const Member& m = memberNamed("pxkiColorTwist32f_8u_C3R");
    Rng rng(17);
    const std::vector<float> matrices[2] = {matrixFor(m, rng, 0), matrixFor(m, rng, 1)};
    std::vector<uint8_t> src(std::size_t(65535) * 3), dst(src.size()), want(src.size());
    for (int r = 0; r < 256; r += pxktest::kLightSweep ? 16 : 1) {
        for (int i = 0; i < 65535; ++i) {
            src[std::size_t(i) * 3] = uint8_t(r);
            src[std::size_t(i) * 3 + 1] = uint8_t(i >> 8);
            src[std::size_t(i) * 3 + 2] = uint8_t(i & 255);
        }
        for (const std::vector<float>& t : matrices) {
            for (int i = 0; i < 65535; ++i) {
                const uint8_t* p = &src[std::size_t(i) * 3];
                for (int k = 0; k < 3; ++k)
                    want[std::size_t(i) * 3 + k] =
                        uint8_t(reftwist::clampRound(reftwist::affine(&t[std::size_t(k) * 4], p[0], p[1], p[2]), 0, 255));
            }
            // 65535 = 255 rows of 257 pixels (16 blocks and one single pixel), and
            // 4369 rows of 15 (single pixels only).
            for (int width : {257, 15}) {
                std::fill(dst.begin(), dst.end(), uint8_t(0));
                ASSERT_EQ(pxkiColorTwist32f_8u_C3R(src.data(), width * 3, dst.data(), width * 3,
                                                   PxkSize{width, 65535 / width}, t.data()),
                          pxkOk);
                ASSERT_EQ(dst, want) << "first channel " << r << ", width " << width;
            }
        }
    }
}

// ---------------------------------------------------------------------------------
// The rounding field of the control register
// ---------------------------------------------------------------------------------

class CsrScope {
public:
    explicit CsrScope(uint32_t csr) : saved_(_mm_getcsr()) { _mm_setcsr(csr); }
    ~CsrScope() { _mm_setcsr(saved_); }

private:
    uint32_t saved_;
};

constexpr uint32_t kDefaultCsr = 0x1F80;
constexpr uint32_t kFlags = 0x3F;

TEST(TwistRounding, IntegerMembersRoundToNearestUnderTowardZeroAndRestoreTheRegister) {
    for (const Member& m : members()) {
        if (m.sample == Sample::F32) continue;
        for (int width : {3, 9, 40}) {
            uint32_t after = 0;
            {
                CsrScope scope(kDefaultCsr | 0x6000);
                Rng rng(static_cast<uint32_t>(width));
                const std::vector<float> t = matrixFor(m, rng, 1);  // ties
                const int b = bytesOf(m.sample), ch = m.kind == Kind::C3 ? 3 : (m.kind == Kind::P3 ? 1 : 4);
                EXPECT_TRUE(runOnce(m, width, 3, width * ch * b, width * ch * b + 16, t.data(), 77)) << m.name;
                after = _mm_getcsr();
            }
            // The field as the caller left it (the flags here include the model's own).
            EXPECT_EQ(after & ~kFlags, kDefaultCsr | 0x6000) << m.name;
        }
    }
}

TEST(TwistRounding, FlagsRaisedUnderNearestStayAndAreWipedUnderAnotherMode) {
    const float t[12] = {0.3f, 0, 0, 0.1f, 0, 0.3f, 0, 0.1f, 0, 0, 0.3f, 0.1f};  // inexact results
    std::vector<uint8_t> src(16 * 3, 7), dst(16 * 3);
    uint32_t nearest = 0, towardZero = 0, upward = 0;
    {
        CsrScope scope(kDefaultCsr);
        ASSERT_EQ(pxkiColorTwist32f_8u_C3R(src.data(), 48, dst.data(), 48, PxkSize{16, 1}, t), pxkOk);
        nearest = _mm_getcsr();
    }
    {
        CsrScope scope(kDefaultCsr | 0x6000);
        ASSERT_EQ(pxkiColorTwist32f_8u_C3R(src.data(), 48, dst.data(), 48, PxkSize{16, 1}, t), pxkOk);
        towardZero = _mm_getcsr();
    }
    {
        CsrScope scope(kDefaultCsr | 0x4000);
        ASSERT_EQ(pxkiColorTwist32f_8u_C3R(src.data(), 48, dst.data(), 48, PxkSize{16, 1}, t), pxkOk);
        upward = _mm_getcsr();
    }
    EXPECT_EQ(nearest & ~kFlags, kDefaultCsr);
    EXPECT_NE(nearest & 0x20u, 0u) << "the precision flag of the loop stays";
    EXPECT_EQ(towardZero, kDefaultCsr | 0x6000);
    EXPECT_EQ(upward, kDefaultCsr | 0x4000);
}

TEST(TwistRounding, FloatMembersFollowTheCallersModeAndLeaveTheRegister) {
    // Sixteen coefficients: the 4x4 member reads them all, the others the first twelve.
    const float t[16] = {0.1f, 0.2f, 0.3f, 0.7f, 0.3f, 0.1f, 0.2f, 0.9f, 0.2f, 0.3f, 0.1f, 0.3f, 0.6f, 0.4f, 0.8f, 0.2f};
    for (uint32_t field : {0x0000u, 0x2000u, 0x4000u, 0x6000u}) {
        CsrScope scope(kDefaultCsr | field);
        const std::vector<std::string> names = {"pxkiColorTwist_32f_C3R", "pxkiColorTwist_32f_AC4IR",
                                                "pxkiColorTwist_32f_P3R", "pxkiColorTwist_32f_C4R"};
        for (const std::string& n : names) {
            EXPECT_TRUE(runOnce(memberNamed(n), 13, 2, 13 * 16, 13 * 16, t, 5)) << n << " field " << field;
            EXPECT_EQ(_mm_getcsr() & ~kFlags, kDefaultCsr | field) << n;
        }
    }
}

// ---------------------------------------------------------------------------------
// Row merges and kernel choice
// ---------------------------------------------------------------------------------

TEST(TwistRows, C3RAroundTheNonTemporalThresholdGivesTheModelsPixels) {
    const Member& m = memberNamed("pxkiColorTwist_32f_C3R");
    Rng rng(9);
    const std::vector<float> t = matrixFor(m, rng, 0);
    // 1944 * 3 * 6 = 34992 samples: the ordinary kernel; a seventh row crosses.
    for (int height : {6, 7}) {
        for (int extra : {0, 4, 12}) {  // tight (one merged run), padded, padded
            const int step = 1944 * 12 + extra;
            EXPECT_TRUE(runOnce(m, 1944, height, step, step, t.data(), uint32_t(height * 10 + extra)))
                << "height " << height << " padding " << extra;
        }
    }
    // Misaligned rows both sides, large and small.
    for (int mis : {1, 4, 8}) {
        pxktest::GuardOptions o;
        o.misalign = std::size_t(mis);
        GuardedImage src(ImageGeometry{700, 20, 3, 4, 700 * 12 + 4}, o), dst(ImageGeometry{700, 20, 3, 4, 700 * 12 + 8}, o);
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 700; ++x)
                for (int c = 0; c < 3; ++c) src.set<float>(x, y, c, float(x + y * c));
        src.snapshot();
        GuardedImage expected = dst.clone();
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 700; ++x)
                for (int k = 0; k < 3; ++k)
                    expected.set<float>(x, y, k,
                                        reftwist::affine(t.data() + 4 * k, src.get<float>(x, y, 0), src.get<float>(x, y, 1),
                                                         src.get<float>(x, y, 2)));
        ASSERT_EQ(pxkiColorTwist_32f_C3R(reinterpret_cast<const float*>(src.data()), src.step(),
                                         reinterpret_cast<float*>(dst.data()), dst.step(), PxkSize{700, 20}, t.data()),
                  pxkOk);
        EXPECT_TRUE(pxktest::sameRegion(dst, expected)) << "misaligned by " << mis;
        EXPECT_TRUE(dst.guardsIntact());
    }
}

TEST(TwistRows, C4RTakesStepsOfWidthTimesFourAsOneRunFromTheStart) {
    // Width 3, height 4, both steps 12: the rows overlap, and the call converts
    // 3 * 4 = 12 whole pixels (192 bytes) from the start of each buffer.
    const int width = 3, height = 4, pixels = width * height;
    std::vector<float> t(16);
    for (int i = 0; i < 16; ++i) t[std::size_t(i)] = float(i % 5) - 1.5f;
    std::vector<float> src(std::size_t(pixels) * 4 + 8), dst(std::size_t(pixels) * 4 + 8, -7.0f);
    for (std::size_t i = 0; i < src.size(); ++i) src[i] = float(i) * 0.5f;
    ASSERT_EQ(pxkiColorTwist_32f_C4R(src.data(), width * 4, dst.data(), width * 4, PxkSize{width, height}, t.data()),
              pxkOk);
    for (int p = 0; p < pixels; ++p) {
        for (int k = 0; k < 4; ++k) {
            EXPECT_EQ(dst[std::size_t(p) * 4 + k], reftwist::linear(&t[std::size_t(k) * 4], &src[std::size_t(p) * 4]))
                << "pixel " << p << " channel " << k;
        }
    }
    for (std::size_t i = std::size_t(pixels) * 4; i < dst.size(); ++i) EXPECT_EQ(dst[i], -7.0f);
    // A step of width * 16 (a truly contiguous image) walks rows: the same pixels.
    std::vector<float> rows(std::size_t(pixels) * 4, 0.0f);
    ASSERT_EQ(pxkiColorTwist_32f_C4R(src.data(), width * 16, rows.data(), width * 16, PxkSize{width, height}, t.data()),
              pxkOk);
    EXPECT_EQ(0, std::memcmp(rows.data(), dst.data(), rows.size() * 4));
}

TEST(TwistRows, C4RAlignedAndMisalignedRowsAgree) {
    const Member& m = memberNamed("pxkiColorTwist_32f_C4R");
    Rng rng(21);
    const std::vector<float> t = matrixFor(m, rng, 0);
    for (int mis : {0, 4, 8, 12}) {
        pxktest::GuardOptions o;
        o.misalign = std::size_t(mis);
        GuardedImage src(ImageGeometry{37, 5, 4, 4, 37 * 16 + 16}, o), dst(ImageGeometry{37, 5, 4, 4, 37 * 16 + 4});
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 37; ++x)
                for (int c = 0; c < 4; ++c) src.set<float>(x, y, c, float(x * 3 - y * 7 + c));
        src.snapshot();
        GuardedImage expected = dst.clone();
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 37; ++x) {
                float in[4];
                for (int c = 0; c < 4; ++c) in[c] = src.get<float>(x, y, c);
                for (int k = 0; k < 4; ++k) expected.set<float>(x, y, k, reftwist::linear(t.data() + 4 * k, in));
            }
        ASSERT_EQ(pxkiColorTwist_32f_C4R(reinterpret_cast<const float*>(src.data()), src.step(),
                                         reinterpret_cast<float*>(dst.data()), dst.step(), PxkSize{37, 5}, t.data()),
                  pxkOk);
        EXPECT_TRUE(pxktest::sameRegion(dst, expected)) << mis;
        EXPECT_TRUE(dst.guardsIntact());
    }
}

// ---------------------------------------------------------------------------------
// Statuses and their order; a failing call writes nothing.
// ---------------------------------------------------------------------------------

TEST(TwistStatus, PointersThenSizeThenSteps) {
    for (const Member& m : members()) {
        Side dst = makeSide(m, 4, 2, 64);
        Side src = makeSide(m, 4, 2, 64);
        Rng rng(1);
        fillSide(dst, m.sample, rng);
        fillSide(src, m.sample, rng);
        const float t[16] = {};
        uint8_t* const none[3] = {nullptr, nullptr, nullptr};
        auto call = [&](uint8_t* const* s, uint8_t* const* d, PxkSize z, int32_t ss, int32_t ds, const float* tw) {
            return m.call(s, ss, d, ds, z, tw);
        };
        const PxkSize ok{4, 2};
        if (!m.inPlace) {
            EXPECT_EQ(call(none, dst.pointers.data(), PxkSize{0, 0}, 0, 0, t), pxkErrNullPtr) << m.name;
        }
        EXPECT_EQ(call(src.pointers.data(), none, PxkSize{0, 0}, 0, 0, t), pxkErrNullPtr) << m.name;
        EXPECT_EQ(call(src.pointers.data(), dst.pointers.data(), PxkSize{0, 0}, 0, 0, nullptr), pxkErrNullPtr) << m.name;
        if (m.kind == Kind::P3) {
            for (int p = 0; p < 3; ++p) {
                std::vector<uint8_t*> s = src.pointers, d = dst.pointers;
                s[std::size_t(p)] = nullptr;
                d[std::size_t(p)] = nullptr;
                if (!m.inPlace) {
                    EXPECT_EQ(call(s.data(), dst.pointers.data(), PxkSize{0, 0}, 0, 0, t), pxkErrNullPtr) << m.name;
                }
                EXPECT_EQ(call(src.pointers.data(), d.data(), PxkSize{0, 0}, 0, 0, t), pxkErrNullPtr) << m.name;
            }
        }
        EXPECT_EQ(call(src.pointers.data(), dst.pointers.data(), PxkSize{0, 2}, 0, 0, t), pxkErrSize) << m.name;
        EXPECT_EQ(call(src.pointers.data(), dst.pointers.data(), PxkSize{4, 0}, 64, 64, t), pxkErrSize) << m.name;
        EXPECT_EQ(call(src.pointers.data(), dst.pointers.data(), PxkSize{-1, 2}, 64, 64, t), pxkErrSize) << m.name;
        EXPECT_EQ(call(src.pointers.data(), dst.pointers.data(), ok, 0, m.inPlace ? 0 : 64, t), pxkErrStep) << m.name;
        EXPECT_EQ(call(src.pointers.data(), dst.pointers.data(), ok, -64, -64, t), pxkErrStep) << m.name;
        if (!m.inPlace) {
            EXPECT_EQ(call(src.pointers.data(), dst.pointers.data(), ok, 64, 0, t), pxkErrStep) << m.name;
        }
        for (const GuardedImage& i : dst.images) EXPECT_TRUE(i.unchanged()) << m.name;
        for (const GuardedImage& i : src.images) EXPECT_TRUE(i.unchanged()) << m.name;
        EXPECT_EQ(call(src.pointers.data(), dst.pointers.data(), ok, 64, 64, t), pxkOk) << m.name;
    }
}

}  // namespace
