// The forms of the high-definition matrices: each vector twin gives the bits of its
// scalar form over every input (the luma and inverse forms exhaustively, the chroma sum
// forms over a dense grid of sums), at every vector width of the build; and the forward
// 8u gamma table against its rule, evaluated here in long double.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>

#include "form_agreement.h"
#include "frame/vec.h"
#include "twist_gamma/gamma_tables.h"
#include "yuv/hd_forms.h"

namespace {

using formtest::countDisagreementsAllWidths;
using formtest::loadLanes16;
using pxk::vec::V128;

// Saturated to a byte, as a store does.
uint8_t storedByte(int16_t lane) { return static_cast<uint8_t>(lane < 0 ? 0 : (lane > 255 ? 255 : lane)); }

TEST(HdForms, Csc709InverseBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::Csc709InverseForm>("709CSC inverse"), 0);
}
TEST(HdForms, Hdtv709InverseBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::Hdtv709InverseForm>("709HDTV inverse"), 0);
}

// Luma of every R, G, B, the vector form against the scalar one.
template <class Luma, class V>
long lumaDisagreements() {
    constexpr int kLanes16 = sizeof(V) / 2;
    long bad = 0;
    for (int r = 0; r < 256; ++r) {
        for (int g = 0; g < 256; ++g) {
            for (int b0 = 0; b0 < 256; b0 += kLanes16) {
                alignas(32) int16_t in[3][kLanes16];
                for (int i = 0; i < kLanes16; ++i) {
                    in[0][i] = int16_t(r);
                    in[1][i] = int16_t(g);
                    in[2][i] = int16_t(b0 + i);
                }
                pxk::Lanes3<V> v;
                for (int k = 0; k < 3; ++k) v.c[k] = loadLanes16<V>(in[k]);
                const V out = Luma::luma(v);
                alignas(32) int16_t lanes[kLanes16];
                std::memcpy(lanes, &out, sizeof out);
                for (int i = 0; i < kLanes16; ++i) {
                    const uint8_t want =
                        Luma::luma(pxk::Pixel3{{uint8_t(r), uint8_t(g), uint8_t(b0 + i)}});
                    if (storedByte(lanes[i]) != want) {
                        if (bad < 5) ADD_FAILURE() << "(" << r << ", " << g << ", " << b0 + i << ")";
                        ++bad;
                    }
                }
            }
        }
    }
    return bad;
}

template <class Luma>
long lumaDisagreementsAllWidths() {
    long bad = lumaDisagreements<Luma, V128>();
#if defined(PXKCC_TARGET_AVX2)
    bad += lumaDisagreements<Luma, pxk::vec::V256>();
#endif
    return bad;
}

TEST(HdForms, Csc709LumaBlockMatchesScalar) { EXPECT_EQ(lumaDisagreementsAllWidths<pxk::yuv::Csc709Luma>(), 0); }
TEST(HdForms, Hdtv709LumaBlockMatchesScalar) { EXPECT_EQ(lumaDisagreementsAllWidths<pxk::yuv::Hdtv709Luma>(), 0); }

// Chroma from sums of up to `maxSum`: sR and sG on a grid of step 7 (and the ends),
// every sB.
template <class Chroma, class V>
long chromaDisagreements(int maxSum) {
    constexpr int kLanes16 = sizeof(V) / 2;
    long bad = 0;
    auto grid = [maxSum](int i) { return i * 7 > maxSum ? maxSum : i * 7; };
    for (int i = 0; i * 7 < maxSum + 7; ++i) {
        for (int j = 0; j * 7 < maxSum + 7; ++j) {
            const int sr = grid(i), sg = grid(j);
            for (int b0 = 0; b0 <= maxSum; b0 += kLanes16) {
                alignas(32) int16_t in[3][kLanes16];
                for (int k = 0; k < kLanes16; ++k) {
                    in[0][k] = int16_t(sr);
                    in[1][k] = int16_t(sg);
                    in[2][k] = int16_t(b0 + k > maxSum ? maxSum : b0 + k);
                }
                V cb, cr;
                Chroma::apply(loadLanes16<V>(in[0]), loadLanes16<V>(in[1]), loadLanes16<V>(in[2]), cb, cr);
                alignas(32) int16_t lanes[2][kLanes16];
                std::memcpy(lanes[0], &cb, sizeof cb);
                std::memcpy(lanes[1], &cr, sizeof cr);
                for (int k = 0; k < kLanes16; ++k) {
                    pxk::yuv::ChromaSums s;
                    s.r = sr;
                    s.g = sg;
                    s.b = in[2][k];
                    if (storedByte(lanes[0][k]) != Chroma::cb(s) || storedByte(lanes[1][k]) != Chroma::cr(s)) {
                        if (bad < 5) ADD_FAILURE() << "sums (" << sr << ", " << sg << ", " << s.b << ")";
                        ++bad;
                    }
                }
            }
        }
    }
    return bad;
}

template <class Chroma>
long chromaDisagreementsAllWidths(int maxSum) {
    long bad = chromaDisagreements<Chroma, V128>(maxSum);
#if defined(PXKCC_TARGET_AVX2)
    bad += chromaDisagreements<Chroma, pxk::vec::V256>(maxSum);
#endif
    return bad;
}

TEST(HdForms, Csc709Chroma420BlockMatchesScalar) {
    EXPECT_EQ(chromaDisagreementsAllWidths<pxk::yuv::Csc709Chroma420>(4 * 255), 0);
}
TEST(HdForms, Hdtv709Chroma420BlockMatchesScalar) {
    EXPECT_EQ(chromaDisagreementsAllWidths<pxk::yuv::Hdtv709Chroma420>(4 * 255), 0);
}
TEST(HdForms, Hdtv709PairChromaBlockMatchesScalar) {
    EXPECT_EQ(chromaDisagreementsAllWidths<pxk::yuv::Hdtv709PairChroma>(2 * 255), 0);
}

// The 709HDTV chroma reaches past both ends of a byte, so the clamp acts: blue sums
// give 258 before it, yellow -2.
TEST(HdForms, Hdtv709ChromaClamps) {
    pxk::yuv::ChromaSums blue;
    blue.b = 1020;
    EXPECT_EQ(pxk::yuv::Hdtv709Chroma420::cb(blue), 255);
    pxk::yuv::ChromaSums yellow;
    yellow.r = 1020;
    yellow.g = 1020;
    EXPECT_EQ(pxk::yuv::Hdtv709Chroma420::cb(yellow), 0);
}

// ---------------------------------------------------------------------------------
// The forward 8u gamma table
// ---------------------------------------------------------------------------------

// Entry i by the rule, in long double: f(i / 255) * 255 rounded to nearest with ties
// to even; f(x) = 4.5 x below 0.018 (4.5 * i taken exactly), 1.099 x^0.45 - 0.099
// from there on.
int forwardByRule(int i) {
    const long double x = static_cast<long double>(i) / 255.0L;
    const long double v =
        x < 0.018L ? 4.5L * static_cast<long double>(i) : (1.099L * std::pow(x, 0.45L) - 0.099L) * 255.0L;
    return static_cast<int>(std::nearbyint(v));  // the default mode: to nearest, ties to even
}

TEST(GammaTables, Forward8uFollowsTheRule) {
    for (int i = 0; i < 256; ++i) EXPECT_EQ(pxk::gamma::kForward8u[i], uint32_t(forwardByRule(i))) << "entry " << i;
}

TEST(GammaTables, Forward8uKnownEntries) {
    EXPECT_EQ(pxk::gamma::kForward8u[0], 0u);
    EXPECT_EQ(pxk::gamma::kForward8u[1], 4u);  // 4.5 to even
    EXPECT_EQ(pxk::gamma::kForward8u[3], 14u);  // 13.5 to even
    EXPECT_EQ(pxk::gamma::kForward8u[255], 255u);
    for (int i = 1; i < 256; ++i) EXPECT_GE(pxk::gamma::kForward8u[i], pxk::gamma::kForward8u[i - 1]) << i;
}

}  // namespace
