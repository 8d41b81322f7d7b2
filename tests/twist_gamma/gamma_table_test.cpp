// The 8u and 16u gamma members: every sample replaced by its table entry. The
// reference tables are built here from the curve's rule in long double (the linear
// parts exactly, ties to even; no value of the power parts lies near enough to a tie
// for long double to misjudge it), and every member is compared with them over the
// size and step sweep, over every input value, and on the documented values.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "gamma_harness.h"

namespace {

using gammatest::Form;
using gammatest::Member;
using pxktest::Rng;

// f(x) = 4.5 x below 0.018, 1.099 x^0.45 - 0.099 from there; g(y) = y / 4.5 below
// 0.0812, ((y + 0.099) / 1.099)^(1 / 0.45) from there. Entry i = curve(i / n) * n,
// rounded to nearest.
std::vector<uint32_t> referenceTable(bool forward, int n) {
    std::vector<uint32_t> t(static_cast<std::size_t>(n) + 1);
    for (int i = 0; i <= n; ++i) {
        const long double x = static_cast<long double>(i) / n;
        long double v;
        if (forward) {
            v = x < 0.018L ? 4.5L * i : (1.099L * std::pow(x, 0.45L) - 0.099L) * n;
        } else {
            v = x < 0.0812L ? i / 4.5L : std::pow((x + 0.099L) / 1.099L, 1.0L / 0.45L) * n;
        }
        t[static_cast<std::size_t>(i)] = static_cast<uint32_t>(std::nearbyint(v));  // ties to even
    }
    return t;
}

const std::vector<uint32_t>& table(bool forward, int n) {
    static const std::vector<uint32_t> f8 = referenceTable(true, 255), i8 = referenceTable(false, 255),
                                       f16 = referenceTable(true, 65535), i16 = referenceTable(false, 65535);
    return n == 255 ? (forward ? f8 : i8) : (forward ? f16 : i16);
}

const std::vector<Member<uint8_t>>& members8(bool forward) {
    static const std::vector<Member<uint8_t>> fwd = GAMMATEST_MEMBERS(Fwd, 8u, uint8_t, GAMMATEST_NO_RANGE);
    static const std::vector<Member<uint8_t>> inv = GAMMATEST_MEMBERS(Inv, 8u, uint8_t, GAMMATEST_NO_RANGE);
    return forward ? fwd : inv;
}
const std::vector<Member<uint16_t>>& members16(bool forward) {
    static const std::vector<Member<uint16_t>> fwd = GAMMATEST_MEMBERS(Fwd, 16u, uint16_t, GAMMATEST_NO_RANGE);
    static const std::vector<Member<uint16_t>> inv = GAMMATEST_MEMBERS(Inv, 16u, uint16_t, GAMMATEST_NO_RANGE);
    return forward ? fwd : inv;
}

template <class T>
gammatest::SampleCheck<T> byTable(bool forward) {
    const std::vector<uint32_t>& t = table(forward, sizeof(T) == 1 ? 255 : 65535);
    return [&t](T in, T out) -> std::string {
        if (out == t[in]) return {};
        return "input " + std::to_string(in) + " gave " + std::to_string(out) + ", table " + std::to_string(t[in]);
    };
}

template <class T>
T anyValue(Rng& r) {
    return static_cast<T>(r.next32());
}

// Every input value through a member: the converted samples of rows of 256 pixels
// take the values 0, 1, 2, ... in memory order (alpha samples take 0).
template <class T>
void everyValue(const Member<T>& m, bool forward) {
    const int count = sizeof(T) == 1 ? 256 : 65536;
    const int ch = gammatest::channelsOf(m.form), converted = gammatest::convertedOf(m.form);
    const int height = (count + 256 * converted - 1) / (256 * converted);
    int k = 0;
    gammatest::Images<T> im = gammatest::makeImages<T>(
        m.form, 256, height, pxktest::StepKind::Padded, pxktest::StepKind::Padded, 3, [&k, ch, count](Rng&) {
            const int i = k++;
            if (ch == 4) return static_cast<T>(i % 4 == 3 ? 0 : (i / 4 * 3 + i % 4) % count);
            return static_cast<T>(i % count);
        });
    ASSERT_TRUE(gammatest::runAndCheck(m, im, 256, height, byTable<T>(forward)));
}

// Every width from 41 to 100, two rows: rows of several whole blocks (32 samples or
// 8 pixels, words of 8 samples) followed by every remainder, which the common sweep
// reaches only for some widths.
template <class T>
void widthsAroundTheBlocks(const Member<T>& m, bool forward) {
    for (int width = 41; width <= 100; ++width) {
        gammatest::Images<T> im =
            gammatest::makeImages<T>(m.form, width, 2, pxktest::StepKind::Odd, pxktest::StepKind::Padded,
                                     pxktest::seedFor(m.name.c_str(), {uint32_t(width), 41u}), anyValue<T>);
        ASSERT_TRUE(gammatest::runAndCheck(m, im, width, 2, byTable<T>(forward))) << "width " << width;
    }
}

class GammaTable8u : public ::testing::TestWithParam<std::tuple<bool, int>> {};
class GammaTable16u : public ::testing::TestWithParam<std::tuple<bool, int>> {};

std::string memberName(const ::testing::TestParamInfo<std::tuple<bool, int>>& info) {
    static const char* forms[] = {"C3R", "C3IR", "AC4R", "AC4IR", "P3R", "IP3R"};
    return std::string(std::get<0>(info.param) ? "Fwd_" : "Inv_") + forms[std::get<1>(info.param)];
}

TEST_P(GammaTable8u, SweepAgainstTheReferenceTable) {
    const bool forward = std::get<0>(GetParam());
    gammatest::sweep<uint8_t>(members8(forward)[std::size_t(std::get<1>(GetParam()))], anyValue<uint8_t>,
                              byTable<uint8_t>(forward));
}
TEST_P(GammaTable8u, EveryValue) {
    const bool forward = std::get<0>(GetParam());
    everyValue(members8(forward)[std::size_t(std::get<1>(GetParam()))], forward);
}
TEST_P(GammaTable8u, WidthsAroundTheBlocks) {
    const bool forward = std::get<0>(GetParam());
    widthsAroundTheBlocks(members8(forward)[std::size_t(std::get<1>(GetParam()))], forward);
}
TEST_P(GammaTable8u, Statuses) {
    gammatest::checkStatuses(members8(std::get<0>(GetParam()))[std::size_t(std::get<1>(GetParam()))], 0.0f, 1.0f);
}
TEST_P(GammaTable16u, SweepAgainstTheReferenceTable) {
    const bool forward = std::get<0>(GetParam());
    gammatest::sweep<uint16_t>(members16(forward)[std::size_t(std::get<1>(GetParam()))], anyValue<uint16_t>,
                               byTable<uint16_t>(forward));
}
TEST_P(GammaTable16u, EveryValue) {
    const bool forward = std::get<0>(GetParam());
    everyValue(members16(forward)[std::size_t(std::get<1>(GetParam()))], forward);
}
TEST_P(GammaTable16u, WidthsAroundTheBlocks) {
    const bool forward = std::get<0>(GetParam());
    widthsAroundTheBlocks(members16(forward)[std::size_t(std::get<1>(GetParam()))], forward);
}
TEST_P(GammaTable16u, Statuses) {
    gammatest::checkStatuses(members16(std::get<0>(GetParam()))[std::size_t(std::get<1>(GetParam()))], 0.0f, 1.0f);
}

INSTANTIATE_TEST_SUITE_P(Members, GammaTable8u, ::testing::Combine(::testing::Bool(), ::testing::Range(0, 6)),
                         memberName);
INSTANTIATE_TEST_SUITE_P(Members, GammaTable16u, ::testing::Combine(::testing::Bool(), ::testing::Range(0, 6)),
                         memberName);

// ---------------------------------------------------------------------------------
// Documented values, through every member of the kind
// ---------------------------------------------------------------------------------

template <class T>
void expectValues(const std::vector<Member<T>>& members, const std::vector<std::pair<T, T>>& pairs) {
    for (const Member<T>& m : members) {
        std::size_t k = 0;
        gammatest::Images<T> im = gammatest::makeImages<T>(
            m.form, int(pairs.size()), 1, pxktest::StepKind::Tight, pxktest::StepKind::Tight, 5,
            [&](Rng&) { return pairs[(k++ / std::size_t(gammatest::channelsOf(m.form))) % pairs.size()].first; });
        ASSERT_EQ(gammatest::callOn(m, im, PxkSize{int(pairs.size()), 1}), pxkOk) << m.name;
        for (int p = 0; p < gammatest::planesOf(m.form); ++p) {
            for (std::size_t x = 0; x < pairs.size(); ++x) {
                for (int c = 0; c < gammatest::convertedOf(m.form); ++c) {
                    EXPECT_EQ(im.output[std::size_t(p)].template get<T>(int(x), 0, c), pairs[x].second)
                        << m.name << " of " << pairs[x].first;
                }
            }
            EXPECT_TRUE(im.output[std::size_t(p)].guardsIntact()) << m.name;
        }
    }
}

TEST(GammaTables, Forward8uDocumentedValues) {
    expectValues<uint8_t>(members8(true), {{0, 0}, {1, 4}, {2, 9}, {3, 14}, {255, 255}});
}
TEST(GammaTables, Inverse8uDocumentedValues) {
    expectValues<uint8_t>(members8(false), {{0, 0}, {4, 1}, {255, 255}});
}
TEST(GammaTables, Forward16uJumpBetweenTheBranches) {
    // 4.5 * 1179 = 5305.5 goes to the even 5306; 1180 is on the power branch.
    expectValues<uint16_t>(members16(true), {{1179, 5306}, {1180, 5326}, {0, 0}, {65535, 65535}});
}
TEST(GammaTables, Inverse16uLinearUpTo5321) {
    // Entries up to 5321 are i / 4.5 rounded; 5322 is on the power branch.
    expectValues<uint16_t>(members16(false), {{5321, 1182}, {9, 2}, {0, 0}, {65535, 65535}});
    EXPECT_EQ(table(false, 65535)[5321], 1182u);
    EXPECT_NE(table(false, 65535)[5322], 1183u) << "the branches do not meet";
}

// The caller's round-toward-zero mode changes nothing and is left as it was.
template <class T>
void underRoundTowardZero(const std::vector<Member<T>>& members, bool forward) {
    for (const Member<T>& m : members) {
        gammatest::Images<T> im = gammatest::makeImages<T>(m.form, 37, 3, pxktest::StepKind::Padded,
                                                           pxktest::StepKind::Padded, 9, anyValue<T>);
        uint32_t after;
        ::testing::AssertionResult ok = ::testing::AssertionSuccess();
        {
            gammatest::KeepControlRegister mode(gammatest::kRoundTowardZero);
            ok = gammatest::runAndCheck(m, im, 37, 3, byTable<T>(forward));
            after = _mm_getcsr();
        }
        EXPECT_TRUE(ok);
        EXPECT_EQ(after & 0xFFC0u, gammatest::kRoundTowardZero) << m.name;
    }
}

TEST(GammaTables, CallersRoundingModeChangesNothing) {
    for (bool forward : {true, false}) {
        underRoundTowardZero(members8(forward), forward);
        underRoundTowardZero(members16(forward), forward);
    }
}

}  // namespace
