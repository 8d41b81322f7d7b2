// Full-range RGB <-> YUV members whose row kernels pick a form by column: vector
// columns below width - width % block take the block form, the rest the tail form.
// The member tables, the lookups on them, the search for inputs that tell two forms
// apart, the column-rule check, and the reference suites every such file registers.
#ifndef PXKCC_TESTS_YUV_COLUMN_RULE_MEMBERS_H
#define PXKCC_TESTS_YUV_COLUMN_RULE_MEMBERS_H

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "conversion_harness.h"
#include "reference_yuv.h"

namespace yuvtest {

// Three samples in, as the forms take them.
using Pixel = std::array<int, 3>;

// An export with the column rule of its row kernel: vector columns below
// width - width % block (block 0: none), `blockForm` there and `tailForm` after.
template <typename Form>
struct ColumnRuleMember {
    ExportUnderTest ex;
    int block;
    Form blockForm;
    Form tailForm;
};

// The exports of a member table, in its order.
template <typename Form>
inline std::vector<ExportUnderTest> exportsOf(const std::vector<ColumnRuleMember<Form>>& members) {
    std::vector<ExportUnderTest> v;
    for (const ColumnRuleMember<Form>& m : members) v.push_back(m.ex);
    return v;
}

template <typename Form>
inline const ColumnRuleMember<Form>& memberNamed(const std::vector<ColumnRuleMember<Form>>& members,
                                                 const std::string& name) {
    for (const ColumnRuleMember<Form>& m : members) {
        if (m.ex.name == name) return m;
    }
    throw std::invalid_argument(name);
}

// Pointers to the exports whose members have vector columns.
template <typename Form>
inline std::vector<const ExportUnderTest*> blockExportPointers(const std::vector<ColumnRuleMember<Form>>& members,
                                                               const std::vector<ExportUnderTest>& exports) {
    std::vector<const ExportUnderTest*> v;
    for (const ExportUnderTest& ex : exports) {
        if (memberNamed(members, ex.name).block != 0) v.push_back(&ex);
    }
    return v;
}

// ---------------------------------------------------------------------------------
// Showing values
// ---------------------------------------------------------------------------------

inline std::string show(const refyuv::Yuv& v) {
    return "(" + std::to_string(v.y) + ", " + std::to_string(v.u) + ", " + std::to_string(v.v) + ")";
}

inline std::string show(const refyuv::Rgb& v) {
    return "(" + std::to_string(v.r) + ", " + std::to_string(v.g) + ", " + std::to_string(v.b) + ")";
}

// `n` copies of `first`, then `m` copies of `second`.
template <typename Value>
inline std::vector<std::string> runs(int n, const Value& first, int m = 0, const Value& second = {}) {
    std::vector<std::string> s(std::size_t(n), show(first));
    s.insert(s.end(), std::size_t(m), show(second));
    return s;
}

// ---------------------------------------------------------------------------------
// Telling the forms apart
// ---------------------------------------------------------------------------------

template <typename Form>
struct NamedForm {
    const char* name;
    Form form;
};

// Inputs at which two forms disagree, found by search (the first input met, in a
// scattered order over all inputs, for each channel where the pair can differ).
template <typename Form>
inline std::vector<Pixel> disagreements(Form a, Form b, const std::vector<int>& channels) {
    std::vector<Wanted> wanted;
    for (int c : channels) wanted.push_back({c, 0});
    const std::vector<Found> found = searchDisagreements(wanted, [a, b](int p, int q, int r, int c) {
        return int(refyuv::channelOf(a(p, q, r), c)) - int(refyuv::channelOf(b(p, q, r), c));
    });
    std::vector<Pixel> out;
    for (const Found& f : found) {
        EXPECT_TRUE(f.found) << "no input where the forms differ in channel " << f.wanted.channel;
        if (f.found) out.push_back(f.input);
    }
    return out;
}

// There are `count` telling inputs, and each tells some pair of the forms apart.
template <typename Form>
inline void expectEachInputTellsFormsApart(const std::vector<Pixel>& inputs, std::size_t count,
                                           const std::vector<NamedForm<Form>>& forms) {
    ASSERT_EQ(inputs.size(), count);
    for (const Pixel& p : inputs) {
        int distinct = 0;
        for (const NamedForm<Form>& f : forms) {
            for (const NamedForm<Form>& g : forms) distinct += f.form(p[0], p[1], p[2]) != g.form(p[0], p[1], p[2]);
        }
        EXPECT_GT(distinct, 0);
    }
}

// Rows of `width` copies of each telling input: column x must show the member's block
// form below width - width % block and its tail form from there on. `rowOf(ex,
// pixels)` converts rows of the pixels and returns the last row's values.
template <typename Form, typename RowOf>
inline void expectFormsByColumn(const ColumnRuleMember<Form>& m, int width, const std::vector<Pixel>& inputs,
                                RowOf&& rowOf) {
    const int cols = refyuv::blockColumns(width, m.block);
    for (const Pixel& p : inputs) {
        const auto [a, b, c] = p;
        SCOPED_TRACE(m.ex.name + " width " + std::to_string(width) + " input (" + std::to_string(a) + ", " +
                     std::to_string(b) + ", " + std::to_string(c) + ")");
        const auto out = rowOf(m.ex, std::vector<Pixel>(std::size_t(width), p));
        for (int x = 0; x < width; ++x) {
            const auto want = x < cols ? m.blockForm(a, b, c) : m.tailForm(a, b, c);
            EXPECT_EQ(show(out[std::size_t(x)]), show(want)) << "column " << x;
        }
    }
}

// Widths around both block sizes: all tail (1, 7, 15), one block and a tail (9, 17),
// whole blocks of 8 that are no whole blocks of 16 (8, 24), and more.
inline const std::vector<int>& formByColumnWidths() {
    static const std::vector<int> w = {1, 7, 8, 9, 15, 16, 17, 23, 24, 25, 33};
    return w;
}

}  // namespace yuvtest

// The reference suites of a file of column-rule members: `Prefix`Sweep over every step
// plan, `Prefix`Dense with every input at width 256 and every alignment, and for the
// members with vector columns `Prefix`DenseTail with every input at width 7 and a
// lighter run at width 15. `exportsList` and `blockPointers` are functions of the file.
#define YUVTEST_COLUMN_RULE_REFERENCE_SUITES(Prefix, exportsList, blockPointers)                                    \
    class Prefix##Sweep : public ::testing::TestWithParam<yuvtest::SweepParam> {};                                  \
    TEST_P(Prefix##Sweep, MatchesReference) { yuvtest::sweepAgainstReference(*GetParam().ex, GetParam().plan); }      \
    INSTANTIATE_TEST_SUITE_P(AllExports, Prefix##Sweep, ::testing::ValuesIn(yuvtest::sweepParams(exportsList())),   \
                             yuvtest::sweepParamName);                                                               \
    class Prefix##Dense : public ::testing::TestWithParam<const yuvtest::ExportUnderTest*> {};                       \
    TEST_P(Prefix##Dense, EveryInputInVectorColumnsMatchesReference) {                                               \
        yuvtest::everyInputAgainstReference(*GetParam(), 256);                                                       \
    }                                                                                                                \
    TEST_P(Prefix##Dense, AnyAlignmentMatchesReference) { yuvtest::alignmentsAgainstReference(*GetParam()); }        \
    INSTANTIATE_TEST_SUITE_P(AllExports, Prefix##Dense, ::testing::ValuesIn(yuvtest::exportPointers(exportsList())), \
                             yuvtest::exportParamName);                                                              \
    class Prefix##DenseTail : public ::testing::TestWithParam<const yuvtest::ExportUnderTest*> {};                   \
    TEST_P(Prefix##DenseTail, EveryInputInTailColumnsMatchesReference) {                                             \
        yuvtest::everyInputAgainstReference(*GetParam(), 7);                                                         \
    }                                                                                                                \
    TEST_P(Prefix##DenseTail, FifteenTailColumnsMatchReference) { yuvtest::denseAgainstReference(*GetParam(), 15); } \
    INSTANTIATE_TEST_SUITE_P(BlockMembers, Prefix##DenseTail, ::testing::ValuesIn(blockPointers()),                  \
                             yuvtest::exportParamName)

#endif
