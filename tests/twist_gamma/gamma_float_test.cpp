// The 32f gamma members against a reference written from the curve's rules: per
// member the precision of r = 1 / range (float or double), and whether the inverse's
// upper branch is scaled by the range. The power itself is required to single
// precision only; the library's routines round it correctly, so the reference takes
// the correctly rounded power of the long double value (and both neighbours of a value
// within a hair of a tie, where rounding from long double could go either way) and
// the member's output must be the formula's result for one of them.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "gamma_harness.h"

namespace {

using gammatest::Form;
using gammatest::Member;
using pxktest::Rng;

uint32_t bitsOf(float v) {
    uint32_t b;
    std::memcpy(&b, &v, sizeof b);
    return b;
}

// What sets one member apart.
struct Rule {
    bool forward;
    bool doubleR;
    bool scaleUpper;  // inverse only
};

// The member table: forward C3R, C3IR float r; AC4R float r; AC4IR double r; P3R, IP3R
// double r. Inverse C3R, C3IR float r; AC4R, AC4IR double r and scaled; P3R, IP3R
// double r.
Rule ruleOf(bool forward, Form f) {
    if (forward) return Rule{true, !(f == Form::C3R || f == Form::C3IR || f == Form::AC4R), false};
    return Rule{false, !(f == Form::C3R || f == Form::C3IR), f == Form::AC4R || f == Form::AC4IR};
}

const std::vector<Member<float>>& members(bool forward) {
    static const std::vector<Member<float>> fwd = GAMMATEST_MEMBERS(Fwd, 32f, float, GAMMATEST_RANGE);
    static const std::vector<Member<float>> inv = GAMMATEST_MEMBERS(Inv, 32f, float, GAMMATEST_RANGE);
    return forward ? fwd : inv;
}

// The floats that a power routine good to the last bit may give for a^e.
std::vector<float> powerCandidates(float a, float e) {
    if (!(a > 0.0f) || !std::isfinite(a)) {
        return {static_cast<float>(std::pow(static_cast<double>(a), static_cast<double>(e)))};
    }
    const long double exact = std::pow(static_cast<long double>(a), static_cast<long double>(e));
    const float nearest = static_cast<float>(exact);
    const float other = exact > nearest ? std::nextafter(nearest, std::numeric_limits<float>::infinity())
                                        : std::nextafter(nearest, 0.0f);
    const long double mid = (static_cast<long double>(nearest) + static_cast<long double>(other)) / 2;
    if (std::fabs(exact - mid) < 1e-9L * exact) return {nearest, other};
    return {nearest};
}

// The reference of one sample: every output the rules allow.
std::vector<float> allowedOutputs(const Rule& rule, float x, float vMin, float vMax) {
    const float range = vMax - vMin;
    const float rF = 1.0f / range;
    const double rD = 1.0 / static_cast<double>(range);
    const float t = x - vMin;
    std::vector<float> outs;
    if (rule.forward) {
        bool linear;
        float u;
        if (rule.doubleR) {
            const double ud = rD * static_cast<double>(t);
            linear = static_cast<double>(0.018f) > ud;
            u = static_cast<float>(ud);
        } else {
            u = rF * t;
            linear = 0.018f > u;
        }
        if (linear) return {t * 4.5f + vMin};
        for (float p : powerCandidates(u, 0.45f)) outs.push_back((p * 1.099f - 0.099f) * range + vMin);
        return outs;
    }
    bool linear;
    float w;
    if (rule.doubleR) {
        const double td = static_cast<double>(t);
        linear = rD * td < static_cast<double>(0.0812f);
        w = static_cast<float>((td * rD + 0.0989999994635582) * 0.9099181294441223);
    } else {
        linear = rF * t < 0.0812f;
        w = (t * rF + 0.099f) * 0.909918129f;
    }
    if (linear) return {t * 0.222222224f + vMin};
    for (float p : powerCandidates(w, 2.22222233f)) outs.push_back((rule.scaleUpper ? p * range : p) + vMin);
    return outs;
}

gammatest::SampleCheck<float> byRule(const Rule& rule, float vMin, float vMax) {
    return [rule, vMin, vMax](float in, float out) -> std::string {
        const std::vector<float> allowed = allowedOutputs(rule, in, vMin, vMax);
        for (float a : allowed) {
            if (bitsOf(a) == bitsOf(out) || (std::isnan(a) && std::isnan(out))) return {};
        }
        return "input " + std::to_string(in) + " gave " + std::to_string(out) + " (bits " +
               std::to_string(bitsOf(out)) + "), allowed " + std::to_string(allowed[0]) + " (bits " +
               std::to_string(bitsOf(allowed[0])) + ")";
    };
}

struct RangeCase {
    float vMin, vMax;
};
const RangeCase kRanges[] = {{0.0f, 1.0f}, {0.0f, 255.0f}, {-3.0f, 5.5f}, {10.0f, 10.75f}};

// Values over the range and a little beyond both ends.
std::function<float(Rng&)> valuesIn(RangeCase r) {
    return [r](Rng& rng) {
        const float span = r.vMax - r.vMin;
        return static_cast<float>(r.vMin + (rng.unit() * 1.3 - 0.15) * span);
    };
}

class GammaFloat : public ::testing::TestWithParam<std::tuple<bool, int>> {
protected:
    const Member<float>& member() const { return members(std::get<0>(GetParam()))[std::size_t(std::get<1>(GetParam()))]; }
    Rule rule() const { return ruleOf(std::get<0>(GetParam()), member().form); }
};

std::string memberName(const ::testing::TestParamInfo<std::tuple<bool, int>>& info) {
    static const char* forms[] = {"C3R", "C3IR", "AC4R", "AC4IR", "P3R", "IP3R"};
    return std::string(std::get<0>(info.param) ? "Fwd_" : "Inv_") + forms[std::get<1>(info.param)];
}

TEST_P(GammaFloat, SweepAgainstTheReference) {
    // The sanitizer build takes the first two ranges (the unit range and 0..255).
    for (const RangeCase& r : kRanges) {
        if (pxktest::kLightSweep && &r >= kRanges + 2) break;
        gammatest::sweep<float>(member(), valuesIn(r), byRule(rule(), r.vMin, r.vMax), r.vMin, r.vMax);
        if (HasFatalFailure()) return;
    }
}

TEST_P(GammaFloat, Statuses) { gammatest::checkStatuses(member(), 0.0f, 1.0f); }

// The range test comes before every other, and a NaN difference passes it.
TEST_P(GammaFloat, RangeTestFirst) {
    const Member<float>& m = member();
    const auto noWrite = [&](PxkResult want, float vMin, float vMax, bool nullPointers, PxkSize size,
                             const char* what) {
        gammatest::expectFailureWritesNothing<float>(m, want, [&](gammatest::Images<float>& im) {
            // Packed forms take entry 0 of the arrays; planar forms the arrays themselves.
            const float* noSource[1] = {nullptr};
            float* noDestination[1] = {nullptr};
            const bool planar = gammatest::isPlanar(m.form);
            if (nullPointers) {
                return m.call(planar ? nullptr : noSource, 0, planar ? nullptr : noDestination, 0, size, vMin, vMax);
            }
            return m.call(im.inputPlanes.data(), im.inputStep, im.outputPlanes.data(), im.outputStep, size, vMin,
                          vMax);
        }, what);
    };
    noWrite(pxkErrRange, 2.0f, 2.0f, false, PxkSize{4, 3}, "vMax equal to vMin");
    noWrite(pxkErrRange, 2.0f, 1.0f, false, PxkSize{4, 3}, "vMax below vMin");
    noWrite(pxkErrRange, 2.0f, 2.0f, true, PxkSize{0, 0}, "equal bounds with null pointers and size 0");
    noWrite(pxkErrRange, 1.0f, -std::numeric_limits<float>::infinity(), true, PxkSize{4, 3}, "minus infinity");
    // A NaN difference passes the range test: the other checks follow.
    const float nan = std::numeric_limits<float>::quiet_NaN();
    noWrite(pxkErrNullPtr, nan, 1.0f, true, PxkSize{4, 3}, "NaN vMin with null pointers");
    gammatest::Images<float> im = gammatest::makeImages<float>(m.form, 4, 3, pxktest::StepKind::Tight,
                                                               pxktest::StepKind::Tight, 3, valuesIn({0.0f, 1.0f}));
    EXPECT_EQ(gammatest::callOn(m, im, PxkSize{4, 3}, 0.0f, nan), pxkOk) << m.name;
    EXPECT_TRUE(std::isnan(im.output[0].get<float>(0, 0, 0))) << m.name;
}

INSTANTIATE_TEST_SUITE_P(Members, GammaFloat, ::testing::Combine(::testing::Bool(), ::testing::Range(0, 6)),
                         memberName);

// ---------------------------------------------------------------------------------
// Documented cases
// ---------------------------------------------------------------------------------

// One row of the given values (in every converted channel) through a member.
std::vector<float> convertRow(const Member<float>& m, const std::vector<float>& values, float vMin, float vMax,
                              int channel = 0) {
    std::size_t k = 0;
    const std::size_t ch = std::size_t(gammatest::channelsOf(m.form));
    gammatest::Images<float> im =
        gammatest::makeImages<float>(m.form, int(values.size()), 1, pxktest::StepKind::Tight,
                                     pxktest::StepKind::Tight, 1, [&](Rng&) { return values[(k++ / ch) % values.size()]; });
    EXPECT_EQ(gammatest::callOn(m, im, PxkSize{int(values.size()), 1}, vMin, vMax), pxkOk) << m.name;
    EXPECT_TRUE(im.output[0].guardsIntact()) << m.name;
    std::vector<float> out;
    for (std::size_t x = 0; x < values.size(); ++x) out.push_back(im.output[0].get<float>(int(x), 0, channel));
    return out;
}

const Member<float>& named(bool forward, Form f) {
    for (const Member<float>& m : members(forward)) {
        if (m.form == f) return m;
    }
    throw std::logic_error("no such member");
}

TEST(GammaFloatCases, InverseC3AndAC4AgreeUpToRoundingOnTheUnitRange) {
    std::vector<float> values;
    for (int i = 0; i <= 200; ++i) values.push_back(i / 200.0f);
    const std::vector<float> c3 = convertRow(named(false, Form::C3R), values, 0.0f, 1.0f);
    const std::vector<float> ac4 = convertRow(named(false, Form::AC4R), values, 0.0f, 1.0f);
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_LE(std::fabs(c3[i] - ac4[i]), 4e-7f * std::fabs(c3[i])) << values[i];  // w rounded apart: a few ulps of p
    }
}

TEST(GammaFloatCases, InverseC3UpperBranchIsNotScaledByTheRange) {
    // vMin 0, vMax 255: C3 gives p in 0..1 on the upper branch and x / 4.5 on the lower;
    // AC4 scales the upper branch up to 255.
    const std::vector<float> values = {10.0f, 20.0f, 21.0f, 128.0f, 255.0f};
    const std::vector<float> c3 = convertRow(named(false, Form::C3R), values, 0.0f, 255.0f);
    const std::vector<float> ac4 = convertRow(named(false, Form::AC4R), values, 0.0f, 255.0f);
    EXPECT_EQ(c3[0], 10.0f * 0.222222224f);
    EXPECT_EQ(c3[1], 20.0f * 0.222222224f);  // 20 / 255 = 0.0784 < 0.0812
    for (std::size_t i = 2; i < values.size(); ++i) {
        EXPECT_GT(c3[i], 0.0f);
        EXPECT_LE(c3[i], 1.0f);
        EXPECT_NEAR(ac4[i], c3[i] * 255.0f, 255.0f * 1e-6f) << values[i];
    }
    EXPECT_NEAR(c3[4], 1.0f, 1e-6f);
    EXPECT_NEAR(ac4[4], 255.0f, 1e-4f);
    EXPECT_EQ(ac4[0], c3[0]);
}

TEST(GammaFloatCases, ForwardAtTheThresholdTakesThePowerBranch) {
    // vMin + 0.018 * range on the unit range is 0.018 itself: 0.018 > 0.018 fails.
    for (Form f : {Form::C3R, Form::AC4R, Form::P3R, Form::AC4IR}) {
        const float out = convertRow(named(true, f), {0.018f}, 0.0f, 1.0f)[0];
        EXPECT_NE(out, 0.018f * 4.5f) << int(f);
        EXPECT_NEAR(out, 1.099 * std::pow(0.018, 0.45) - 0.099, 1e-6) << int(f);
    }
}

TEST(GammaFloatCases, BelowTheRangeTakesTheLinearBranchUnclamped) {
    for (const Member<float>& m : members(true)) {
        const std::vector<float> out = convertRow(m, {-1.0f, 2.0f}, 0.0f, 1.0f);
        EXPECT_EQ(out[0], -4.5f) << m.name;
        EXPECT_GT(out[1], 1.0f) << m.name;
    }
    // Inverse below vMin: the power of a negative argument is NaN, and the lower branch
    // discards it.
    for (const Member<float>& m : members(false)) {
        EXPECT_EQ(convertRow(m, {-1.0f}, 0.0f, 1.0f)[0], -1.0f * 0.222222224f) << m.name;
    }
}

TEST(GammaFloatCases, AlphaOfTheDestinationStays) {
    for (bool forward : {true, false}) {
        for (Form f : {Form::AC4R, Form::AC4IR}) {
            const Member<float>& m = named(forward, f);
            gammatest::Images<float> im = gammatest::makeImages<float>(
                f, 19, 2, pxktest::StepKind::Padded, pxktest::StepKind::Padded, 4, valuesIn({0.0f, 1.0f}));
            ASSERT_EQ(gammatest::callOn(m, im, PxkSize{19, 2}, 0.0f, 1.0f), pxkOk);
            EXPECT_TRUE(im.output[0].guardsIntact()) << m.name;  // the alpha samples are protected
        }
    }
}

TEST(GammaFloatCases, InPlaceForwardAC4UsesADoubleReciprocal) {
    // The same call in place and not in place may differ in the last bit: the rules of
    // each are checked on a range whose reciprocal is not exact.
    const float vMin = 0.1f, vMax = 0.8f;
    std::vector<float> values;
    for (int i = 0; i < 300; ++i) values.push_back(vMin + (vMax - vMin) * (i / 299.0f));
    for (Form f : {Form::AC4R, Form::AC4IR}) {
        const std::vector<float> out = convertRow(named(true, f), values, vMin, vMax);
        const auto check = byRule(ruleOf(true, f), vMin, vMax);
        for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(check(values[i], out[i]), "") << int(f);
    }
}

TEST(GammaFloatCases, CallersControlRegisterIsLeftAsItWas) {
    for (bool forward : {true, false}) {
        for (const Member<float>& m : members(forward)) {
            uint32_t after;
            {
                gammatest::KeepControlRegister mode(gammatest::kRoundTowardZero);
                convertRow(m, {0.001f, 0.3f, 0.9f}, 0.0f, 1.0f);
                after = _mm_getcsr();
            }
            EXPECT_EQ(after & 0xFFC0u, gammatest::kRoundTowardZero) << m.name;
        }
    }
}

}  // namespace
