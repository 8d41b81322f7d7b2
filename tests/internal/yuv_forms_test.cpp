// Each fixed-point form is written twice, once for the scalar tail and once over the
// vector type for the blocks. Over every possible input the two must give the same
// bytes (the block's 16-bit lanes saturated to 8 bits, as its store does), for every
// vector width of the build: the 128-bit type always, the 256-bit type in the avx2
// build.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "form_agreement.h"
#include "frame/vec.h"
#include "yuv/forms.h"
#include "yuv/yuv_forms.h"

namespace {

using formtest::countDisagreementsAllWidths;
using formtest::loadLanes16;
using pxk::vec::V128;

TEST(YuvForms, DirectBlockMatchesTail) { EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::DirectForm>("direct"), 0); }
TEST(YuvForms, PairedBlockMatchesTail) { EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::PairedForm>("paired"), 0); }
TEST(YuvForms, HighProductBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::HighProductForm>("high-product"), 0);
}
TEST(YuvForms, RoundedBlockMatchesTail) { EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::RoundedForm>("rounded"), 0); }
TEST(YuvForms, WideRoundedBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::WideRoundedForm>("wide rounded"), 0);
}
TEST(YuvForms, WideTruncatingBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::WideTruncatingForm>("wide truncating"), 0);
}
TEST(YuvForms, HighProductInverseBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::HighProductInverseForm>("high-product inverse"), 0);
}

// The full-range YUV forms that vector blocks use.
TEST(YuvForms, YuvHighProductBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::YuvHighProductForm>("YUV high-product"), 0);
}
TEST(YuvForms, RoundedScalarBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::RoundedScalarForm>("rounded scalar"), 0);
}
TEST(YuvForms, RoundedLumaScalarBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::RoundedLumaScalarForm>("rounded luma scalar"), 0);
}
TEST(YuvForms, TruncatingLumaScalarBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::TruncatingLumaScalarForm>("truncating luma scalar"), 0);
}
TEST(YuvForms, FullRoundedBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::FullRoundedForm>("full rounded"), 0);
}
TEST(YuvForms, HalfRoundedBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::HalfRoundedForm>("half rounded"), 0);
}
TEST(YuvForms, TruncatingBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::TruncatingForm>("truncating"), 0);
}
TEST(YuvForms, OctetBlockMatchesTail) { EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::OctetForm>("octet"), 0); }
TEST(YuvForms, DoubledBlockMatchesTail) { EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::DoubledForm>("doubled"), 0); }

// The inverse forms of the subsampled members that vector blocks use, and those whose
// vector twin serves every column.
TEST(YuvForms, HighProduct411BlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::HighProduct411Form>("high-product 411 and 422"), 0);
}
TEST(YuvForms, Form411BlockMatchesTail) { EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::Form411>("411"), 0); }
TEST(YuvForms, FilterBlockMatchesTail) { EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::FilterForm>("filter"), 0); }
TEST(YuvForms, RawChromaOffsetBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::RawChromaOffsetForm>("raw-chroma offset"), 0);
}
TEST(YuvForms, TruncatingFullBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::TruncatingFullForm>("truncating, full constants"), 0);
}
TEST(YuvForms, SixteenthsBlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::SixteenthsForm>("sixteenths"), 0);
}
TEST(YuvForms, Doubled9339BlockMatchesTail) {
    EXPECT_EQ(countDisagreementsAllWidths<pxk::yuv::Doubled9339Form>("doubled 9339"), 0);
}

// The paired form also works on blocks in quad order, where one output vector can mix
// two rows; every pixel must still match the scalar form.
TEST(YuvForms, PairedQuadBlockMatchesTail) {
    long bad = 0;
    for (uint32_t first = 0; first < (1u << 24); first += 16) {
        pxk::Pixel3 px[16];
        for (int i = 0; i < 16; ++i) {
            const uint32_t v = first + static_cast<uint32_t>(i);
            px[i] = pxk::Pixel3{{static_cast<uint8_t>(v >> 16), static_cast<uint8_t>(v >> 8), static_cast<uint8_t>(v)}};
        }
        // Quad q = 3 s + c, lane j: channel c of pixel 4 j + s; quads in pairs a vector.
        alignas(16) int16_t lanes[6][8];
        for (int q = 0; q < 12; ++q)
            for (int j = 0; j < 4; ++j) lanes[q / 2][4 * (q % 2) + j] = px[4 * j + q / 3].c[q % 3];
        pxk::Quads16 in;
        for (int r = 0; r < 6; ++r) in.v[r] = loadLanes16<V128>(lanes[r]);
        const pxk::Quads16 out = pxk::yuv::PairedForm::apply(in);
        alignas(16) uint8_t bytes[6][16];
        for (int r = 0; r < 6; ++r) {
            const V128 packed = pxk::vec::packus16(out.v[r], out.v[r]);
            std::memcpy(bytes[r], &packed, sizeof packed);
        }
        for (int q = 0; q < 12; ++q) {
            for (int j = 0; j < 4; ++j) {
                const int i = 4 * j + q / 3, c = q % 3;
                const uint8_t want = pxk::yuv::PairedForm::apply(px[i]).c[c];
                const uint8_t got = bytes[q / 2][4 * (q % 2) + j];
                if (got != want) {
                    if (bad < 5) {
                        ADD_FAILURE() << "paired quads at pixel " << first + i << " channel " << c << ": block "
                                      << int(got) << ", tail " << int(want);
                    }
                    ++bad;
                }
            }
        }
    }
    EXPECT_EQ(bad, 0);
}

// The forms are distinct: each pair that the exports mix differs somewhere.
TEST(YuvForms, FormsThatExportsMixDiffer) {
    auto differs = [](auto f, auto g) {
        for (int r = 0; r < 256; r += 3)
            for (int gg = 0; gg < 256; gg += 5)
                for (int b = 0; b < 256; b += 7) {
                    const pxk::Pixel3 p{{static_cast<uint8_t>(r), static_cast<uint8_t>(gg), static_cast<uint8_t>(b)}};
                    const pxk::Pixel3 x = f(p), y = g(p);
                    if (x.c[0] != y.c[0] || x.c[1] != y.c[1] || x.c[2] != y.c[2]) return true;
                }
        return false;
    };
    using namespace pxk::yuv;
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return PairedForm::apply(p); }, [](pxk::Pixel3 p) { return DirectForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return HighProductForm::apply(p); }, [](pxk::Pixel3 p) { return DirectForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return HighProductInverseForm::apply(p); },
                        [](pxk::Pixel3 p) { return RoundedForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return WideTruncatingForm::apply(p); },
                        [](pxk::Pixel3 p) { return WideRoundedForm::apply(p); }));
    // Full-range YUV: the pairs of block and tail forms, and the scalar forms that
    // differ in a rounding constant only.
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return YuvHighProductForm::apply(p); },
                        [](pxk::Pixel3 p) { return TruncatingLumaScalarForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return YuvHighProductForm::apply(p); },
                        [](pxk::Pixel3 p) { return MatrixScalarForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return RoundedScalarForm::apply(p); },
                        [](pxk::Pixel3 p) { return RoundedLumaScalarForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return RoundedLumaScalarForm::apply(p); },
                        [](pxk::Pixel3 p) { return TruncatingLumaScalarForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return OctetForm::apply(p); },
                        [](pxk::Pixel3 p) { return HalfRoundedForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return DoubledForm::apply(p); },
                        [](pxk::Pixel3 p) { return TruncatingForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return FullRoundedForm::apply(p); },
                        [](pxk::Pixel3 p) { return HalfRoundedForm::apply(p); }));
    // The subsampled members' pairs of block and tail forms.
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return HighProduct411Form::apply(p); },
                        [](pxk::Pixel3 p) { return HighProductInverseForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return HighProduct411Form::apply(p); },
                        [](pxk::Pixel3 p) { return RawChromaOffsetForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return HighProduct411Form::apply(p); },
                        [](pxk::Pixel3 p) { return Form411::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return SixteenthsForm::apply(p); },
                        [](pxk::Pixel3 p) { return HalfRoundedForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return SixteenthsForm::apply(p); },
                        [](pxk::Pixel3 p) { return TruncatingFullForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return DoubledForm::apply(p); },
                        [](pxk::Pixel3 p) { return TruncatingFullForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return Doubled9339Form::apply(p); },
                        [](pxk::Pixel3 p) { return DoubledForm::apply(p); }));
    EXPECT_TRUE(differs([](pxk::Pixel3 p) { return RawChromaOffsetForm::apply(p); },
                        [](pxk::Pixel3 p) { return WideTruncatingForm::apply(p); }));
}

}  // namespace
