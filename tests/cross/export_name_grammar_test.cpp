// Argument lists read off export names, table rows, and the lookup that joins them:
// every export of the list must get a call shape from one or the other.
#include "export_name_grammar.h"
#include "text_lines.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "call_shape.h"
#include "shape_lookup.h"

namespace {

using pxkcross::CallShape;
using pxkcross::describeArguments;
using pxkcross::describeImages;
using pxkcross::NameReading;
using pxkcross::readExportName;

std::vector<std::string> readLines(const char* path) { return pxktest::readNonEmptyLines(path); }

// The name gives the whole list: these arguments over these images.
void expectShape(const std::string& name, const std::string& args, const std::string& images) {
    SCOPED_TRACE(name);
    const NameReading r = readExportName(name);
    ASSERT_TRUE(r.tokensRead) << r.error;
    EXPECT_EQ(r.incomplete, "");
    EXPECT_EQ(describeArguments(r.shape), args);
    EXPECT_EQ(describeImages(r.shape), images);
}

// The name gives its sides, but not the whole list.
void expectIncomplete(const std::string& name, const std::string& because) {
    SCOPED_TRACE(name);
    const NameReading r = readExportName(name);
    ASSERT_TRUE(r.tokensRead) << r.error;
    EXPECT_NE(r.incomplete.find(because), std::string::npos) << "incomplete because: " << r.incomplete;
}

TEST(ExportNameGrammar, PackedToPacked) {
    expectShape("pxkiRGBToYCbCr_8u_C3R", "src step dst step size", "src 8u 3x1 | dst 8u 3x1");
    expectShape("pxkiYCbCrToRGB_8u_AC4R", "src step dst step size", "src 8u 4x1 | dst 8u 4x1");
    expectShape("pxkiRGBToCbYCr422Gamma_8u_C3C2R", "src step dst step size", "src 8u 3x1 | dst 8u 2x1");
    expectShape("pxkiLabToBGR_16u8u_C3R", "src step dst step size", "src 16u 3x1 | dst 8u 3x1");
    expectShape("pxkiRGBToGray_8u_C3C1R", "src step dst step size", "src 8u 3x1 | dst 8u 1x1");
}

TEST(ExportNameGrammar, FourChannelsFromFewerTakeAnAlphaOfTheDestinationType) {
    expectShape("pxkiYCbCrToBGR_8u_P3C4R", "src[3] step dst step size alpha:8u", "src 8u 1x1 1x1 1x1 | dst 8u 4x1");
    expectShape("pxkiYUVToRGB_8u_C3C4R", "src step dst step size alpha:8u", "src 8u 3x1 | dst 8u 4x1");
    expectShape("pxkiGrayToRGB_32f_C1C4R", "src step dst step size alpha:32f", "src 32f 1x1 | dst 32f 4x1");
    expectShape("pxkiYCoCgToSBGR_Rev_32s16s_P3C4R", "src[3] step dst step size alpha:16s",
                "src 32s 1x1 1x1 1x1 | dst 16s 4x1");
    // Four channels from four: no alpha.
    expectShape("pxkiBGRToHLS_8u_AP4C4R", "src[4] step dst step size", "src 8u 1x1 1x1 1x1 1x1 | dst 8u 4x1");
    expectShape("pxkiYUV422ToRGB_8u_P3AC4R", "src[3] step[3] dst step size", "src 8u 1x1 1x2 1x2 | dst 8u 4x1");
}

TEST(ExportNameGrammar, PlanarSidesAtOneResolutionShareOneStep) {
    expectShape("pxkiRGBToYCbCr_8u_P3R", "src[3] step dst[3] step size", "src 8u 1x1 1x1 1x1 | dst 8u 1x1 1x1 1x1");
    expectShape("pxkiRGBToYCbCr_8u_AC4P3R", "src step dst[3] step size", "src 8u 4x1 | dst 8u 1x1 1x1 1x1");
    expectShape("pxkiRGBToYUV_8u_AC4P4R", "src step dst[4] step size", "src 8u 4x1 | dst 8u 1x1 1x1 1x1 1x1");
    expectShape("pxkiBGRToYCoCg_8u16s_C4P3R", "src step dst[3] step size", "src 8u 4x1 | dst 16s 1x1 1x1 1x1");
    // The subsampling is on the packed side only.
    expectShape("pxkiRGBToYCbCr422_8u_P3C2R", "src[3] step dst step size", "src 8u 1x1 1x1 1x1 | dst 8u 2x1");
    expectShape("pxkiYCbCr422ToRGB_8u_C2P3R", "src step dst[3] step size", "src 8u 2x1 | dst 8u 1x1 1x1 1x1");
}

TEST(ExportNameGrammar, SubsampledPlanarSidesTakeAStepAPlane) {
    expectShape("pxkiYCbCr420ToBGR_8u_P3C3R", "src[3] step[3] dst step size", "src 8u 1x1 1x2 1x2 | dst 8u 3x1");
    expectShape("pxkiBGRToYCbCr411_8u_C3P3R", "src step dst[3] step[3] size", "src 8u 3x1 | dst 8u 1x1 1x4 1x4");
    // A format change without To: both sides are 422.
    expectShape("pxkiYCbCr422_8u_C2P3R", "src step dst[3] step[3] size", "src 8u 2x1 | dst 8u 1x1 1x2 1x2");
    expectShape("pxkiYCbCr1620To420_8u_P3R", "src[3] step[3] dst[3] step[3] size",
                "src 8u 1x1 1x4 1x4 | dst 8u 1x1 1x2 1x2");
    expectShape("pxkiYCbCr420To1620_8u_P3R", "src[3] step[3] dst[3] step[3] size",
                "src 8u 1x1 1x2 1x2 | dst 8u 1x1 1x4 1x4");
    // Planar to planar: the full-resolution side takes a step a plane too.
    expectShape("pxkiRGBToYUV420_8u_P3R", "src[3] step[3] dst[3] step[3] size",
                "src 8u 1x1 1x1 1x1 | dst 8u 1x1 1x2 1x2");
}

TEST(ExportNameGrammar, SemiPlanarSidesAreTwoPointersWithAStepEach) {
    expectShape("pxkiYCbCr420ToRGB_8u_P2C4R", "src.0 step src.1 step dst step size alpha:8u",
                "src 8u 1x1 2x2 | dst 8u 4x1");
    expectShape("pxkiYCbCr411ToYCbCr420_8u_P2P3R", "src.0 step src.1 step dst[3] step[3] size",
                "src 8u 1x1 2x4 | dst 8u 1x1 1x2 1x2");
    expectShape("pxkiCbYCr422ToYCbCr420_8u_C2P2R", "src step dst.0 step dst.1 step size",
                "src 8u 2x1 | dst 8u 1x1 2x2");
    expectShape("pxkiBGRToYCbCr420_709CSC_8u_AC4P2R", "src step dst.0 step dst.1 step size",
                "src 8u 4x1 | dst 8u 1x1 2x2");
}

TEST(ExportNameGrammar, InPlaceFormsHaveOneSide) {
    expectShape("pxkiGammaFwd_8u_IP3R", "srcdst[3] step size", "srcdst 8u 1x1 1x1 1x1");
    expectShape("pxkiGammaInv_16u_AC4IR", "srcdst step size", "srcdst 16u 4x1");
    expectShape("pxkiGammaFwd_16u_C3IR", "srcdst step size", "srcdst 16u 3x1");
}

TEST(ExportNameGrammar, FormsWithoutRTakeNoSteps) {
    expectShape("pxkiRGBToYUV420_8u_P3", "src[3] dst[3] size", "src 8u 1x1 1x1 1x1 | dst 8u 1x1 1x2 1x2");
    expectShape("pxkiRGBToYUV422_8u_C3P3", "src dst[3] size", "src 8u 3x1 | dst 8u 1x1 1x2 1x2");
    expectShape("pxkiYUV420ToRGB_8u_P3C3", "src[3] dst size", "src 8u 1x1 1x2 1x2 | dst 8u 3x1");
}

TEST(ExportNameGrammar, FamiliesWithArgumentsBeyondTheNameNeedARow) {
    expectIncomplete("pxkiColorTwist32f_8u_C3R", "matrix");
    expectIncomplete("pxkiColorTwist_32f_IP3R", "matrix");
    expectIncomplete("pxkiGammaFwd_32f_C3R", "value range");
    expectIncomplete("pxkiReduceBits_16u8u_AC4R", "dither");
    expectIncomplete("pxkiReduceBits_8u1u_C1R", "dither");
    expectIncomplete("pxkiToneMapMean_32f8u_C1R", "two int32");
    expectIncomplete("pxkiPack_16u12u_C1R", "two int32");
    expectIncomplete("pxkiCFAToBGRA_VNG_16u_C1C4R", "Bayer grid");
    expectIncomplete("pxkiDemosaicAHD_8u_C1C3R", "Bayer grid");
    expectIncomplete("pxkiColorToGray_64f_AC4C1R", "coefficient");
    expectIncomplete("pxkiYUV422v210ToGray_709HDTV_32u16u_C3C1", "elements");
    expectIncomplete("pxkiLabToRGB_32f_P3R", "a step a plane");
    expectIncomplete("pxkiRGBToLab_64f_P3R_L", "_L");
    expectIncomplete("pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", "strip layout");
    // Their siblings without such arguments join by name.
    expectShape("pxkiGammaFwd_8u_C3R", "src step dst step size", "src 8u 3x1 | dst 8u 3x1");
    expectShape("pxkiLabToRGB_8u_C3R", "src step dst step size", "src 8u 3x1 | dst 8u 3x1");
    expectShape("pxkiYCbCr420ToYCbCr422_Filter_8u_P3R", "src[3] step[3] dst[3] step[3] size",
                "src 8u 1x1 1x2 1x2 | dst 8u 1x1 1x2 1x2");
}

TEST(ExportNameGrammar, SidesOfUnusualNamesStillRead) {
    const NameReading pack = readExportName("pxkiPack_16u12u_C1R");
    ASSERT_TRUE(pack.tokensRead);
    EXPECT_EQ(describeImages(pack.shape), "src 16u 1x1 | dst 12u 1x1");
    const NameReading bits = readExportName("pxkiReduceBits_8u1u_C1R");
    ASSERT_TRUE(bits.tokensRead);
    EXPECT_EQ(describeImages(bits.shape), "src 8u 1x1 | dst 1u 1x1");
    const NameReading vng = readExportName("pxkiCFAToBGRA_VNG_8u_C1C4R_L");
    ASSERT_TRUE(vng.tokensRead);
    EXPECT_EQ(describeImages(vng.shape), "src 8u 1x1 | dst 8u 4x1");
}

TEST(ExportNameGrammar, NamesWithoutTypeAndLayoutAreNotRead) {
    EXPECT_FALSE(readExportName("pxkiReduceBitsGetBufferSize").tokensRead);
    EXPECT_FALSE(readExportName("pxkccGetLibVersion").tokensRead);
    EXPECT_FALSE(readExportName("pxkiRGBToYCbCr_8x_C3R").tokensRead);
    EXPECT_FALSE(readExportName("pxkiRGBToYCbCr_8u_C5R").tokensRead);
    EXPECT_FALSE(readExportName("pxkiRGBToYCbCr_8u16s_IP3R").tokensRead);
}

TEST(ExportNameGrammar, UnknownOperationsAreNotGuessed) {
    const NameReading r = readExportName("pxkiRGBToFoo_8u_C3R");
    ASSERT_TRUE(r.tokensRead);
    EXPECT_NE(r.incomplete.find("RGBToFoo"), std::string::npos) << r.incomplete;
}

// --- table rows ----------------------------------------------------------------------

std::string rowShape(const std::string& name, const std::string& row, CallShape* out = nullptr) {
    const NameReading r = readExportName(name);
    std::string error;
    const std::optional<CallShape> shape = pxkcross::shapeFromRow(row, r.tokensRead ? &r.shape : nullptr, &error);
    if (!shape) return "error: " + error;
    if (out) *out = *shape;
    return describeArguments(*shape);
}

TEST(ShapeRows, ExtrasAfterTheNamesArguments) {
    EXPECT_EQ(rowShape("pxkiColorTwist32f_8u_C3R", "... f32[12]:-2:2"), "src step dst step size f32[12]:-2:2");
    EXPECT_EQ(rowShape("pxkiColorTwist_32f_IP3R", "... f32[12]:-2:2"), "srcdst[3] step size f32[12]:-2:2");
    EXPECT_EQ(rowShape("pxkiGammaFwd_32f_C3R", "... f32:-0.5:0.5 f32:0.5:1.5 floats=0:1"),
              "src step dst step size f32:-0.5:0.5 f32:0.5:1.5");
    EXPECT_EQ(rowShape("pxkiReduceBits_16u8u_C3R", "... u32:0:100 i32:0:4 i32:2:256 scratch:12:6400"),
              "src step dst step size u32:0:100 i32:0:4 i32:2:256 scratch:12:6400");
    EXPECT_EQ(rowShape("pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", "... i32:1:21"),
              "src.0 step src.1 step dst step size i32:1:21");
    EXPECT_EQ(rowShape("pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", "... i32:1|4|16"),
              "src.0 step src.1 step dst step size i32:1|4|16");
}

TEST(ShapeRows, WholeArgumentLists) {
    CallShape shape;
    EXPECT_EQ(rowShape("pxkiLabToRGB_32f_P3R_L", "src step64[] dst step64[] sizeL floats=0:100", &shape),
              "src[3] step64[3] dst[3] step64[3] sizeL");
    EXPECT_TRUE(shape.floatRange);
    EXPECT_EQ(shape.floatLo, 0.0);
    EXPECT_EQ(shape.floatHi, 100.0);
    EXPECT_EQ(rowShape("pxkiLabToRGB_32f_P3R", "src step[] dst step[] size"), "src[3] step[3] dst[3] step[3] size");
    EXPECT_EQ(rowShape("pxkiCFAToRGB_8u_C1C3R", "src roi size step dst step i32:0:3 i32:0:0"),
              "src roi size step dst step i32:0:3 i32:0:0");
    EXPECT_EQ(rowShape("pxkiCFAToBGRA_VNG_8u_C1C4R", "src roi size step f32[3]:0:2 dst step i32:0:3"),
              "src roi size step f32[3]:0:2 dst step i32:0:3");
    EXPECT_EQ(rowShape("pxkiDemosaicAHD_16u_C1C3R", "src roi size step dst step i32:0:3 scratch:24:64:8 bufstep"),
              "src roi size step dst step i32:0:3 scratch:24:64:8 bufstep");
    EXPECT_EQ(rowShape("pxkiToneMapMean_32f8u_C1R", "src step dst step wh floats=0:100"), "src step dst step wh");
    EXPECT_EQ(rowShape("pxkiReduceBits_8u1u_C1R",
                       "src step dst step i32:0:7 size i32:0:0 i32:0:0 i32:0:3 u8:0:255 scratch:8:64"),
              "src step dst step i32:0:7 size i32:0:0 i32:0:0 i32:0:3 u8:0:255 scratch:8:64");
    EXPECT_EQ(rowShape("pxkiReduceBitsGetBufferSize", "i32:0:9 size u32:0:120 i32:-1:5 out:i32"),
              "i32:0:9 size u32:0:120 i32:-1:5 out:i32");
    EXPECT_EQ(rowShape("pxkiYUV422v210ToRGB_709HDTV_32u16u_C3", "src step dst step size steps=elements", &shape),
              "src step dst step size");
    EXPECT_TRUE(shape.stepsInElements);
    EXPECT_FALSE(shape.positiveStepsOnly);
    EXPECT_EQ(rowShape("pxkiBGRToHLS_8u_C3P3R", "... steps=positive", &shape), "src step dst[3] step size");
    EXPECT_TRUE(shape.positiveStepsOnly);
    EXPECT_EQ(rowShape("pxkiGrayToRGB_16u_C1C4R", "src step dst step size alpha"), "src step dst step size alpha:16u");
}

TEST(ShapeRows, BadRowsSayWhatIsWrong) {
    auto errorOf = [](const std::string& name, const std::string& row) {
        const std::string r = rowShape(name, row);
        return r.rfind("error: ", 0) == 0 ? r.substr(7) : std::string("(no error) ") + r;
    };
    EXPECT_NE(errorOf("pxkiRGBToYCbCr_8u_C3R", "step src dst step size").find("must follow"), std::string::npos);
    EXPECT_NE(errorOf("pxkiRGBToYCbCr_8u_C3R", "src step dst step size bogus").find("unknown token bogus"),
              std::string::npos);
    EXPECT_NE(errorOf("pxkiYCbCr420ToRGB_8u_P2C3R", "src step dst step size").find("src.0"), std::string::npos);
    EXPECT_NE(errorOf("pxkiRGBToYCbCr_8u_P3R", "src[4] step dst step size").find("3 planes"), std::string::npos);
    EXPECT_NE(errorOf("pxkiRGBToYCbCr_8u_C3R", "size ...").find("may only open"), std::string::npos);
    EXPECT_NE(errorOf("pxkiRGBToYCbCr_8u_C3R", "... i32:5:1").find("bad range"), std::string::npos);
    EXPECT_NE(errorOf("pxkiRGBToYCbCr_8u_C3R", "... i32:1|x").find("bad value"), std::string::npos);
    EXPECT_NE(errorOf("pxkiReduceBitsGetBufferSize", "src step").find("no such side"), std::string::npos);
    EXPECT_NE(errorOf("pxkiReduceBitsGetBufferSize", "...").find("\"...\" needs"), std::string::npos);
    EXPECT_NE(errorOf("pxkiRGBToYCbCr_8u_C3R", "... bufstep").find("bufstep"), std::string::npos);
    EXPECT_NE(errorOf("pxkiRGBToYCbCr_8u_C3R", "... alpha:16u").find("differs"), std::string::npos);
    EXPECT_NE(errorOf("pxkiRGBToYCbCr_8u_C3R", "").find("no arguments"), std::string::npos);
}

// --- the lookup over the export list -------------------------------------------------

TEST(ShapeLookup, AnExportWithoutShapeIsNamedWithWhereItsRowGoes) {
    std::string error;
    // No such export exists, so it will never have a row.
    EXPECT_FALSE(pxkcross::callShapeFor("pxkiColorTwist32f_8u_C4R", &error).has_value());
    EXPECT_NE(error.find("pxkiColorTwist32f_8u_C4R"), std::string::npos) << error;
    EXPECT_NE(error.find("matrix"), std::string::npos) << error;
    EXPECT_NE(error.find("apps/call_shapes/call_shapes_table.cpp"), std::string::npos) << error;
    EXPECT_FALSE(pxkcross::callShapeFor("pxkiFrobnicate", &error).has_value());
    EXPECT_NE(error.find("pxkiFrobnicate"), std::string::npos) << error;
    EXPECT_TRUE(pxkcross::callShapeFor("pxkiRGBToYCbCr_8u_C3R", &error).has_value());
}

TEST(ShapeLookup, EveryListedExportHasAShape) {
    const std::vector<std::string> list = readLines(PXKCC_EXPORT_LIST_FILE);
    ASSERT_FALSE(list.empty()) << "cannot read " << PXKCC_EXPORT_LIST_FILE;
    for (const std::string& name : list) {
        if (name == "pxkccGetLibVersion") continue;
        std::string error;
        EXPECT_TRUE(pxkcross::callShapeFor(name, &error).has_value()) << error;
    }
}

TEST(ShapeLookup, EveryRowReadsAndNamesAnExport) {
    std::vector<std::string> known = readLines(PXKCC_NAMED_EXPORTS_FILE);
    for (const std::string& name : readLines(PXKCC_EXPORT_LIST_FILE)) known.push_back(name);
    const std::set<std::string> names(known.begin(), known.end());
    std::set<std::string> seen;
    for (const pxkcross::ShapeRow& row : pxkcross::callShapeRows()) {
        EXPECT_TRUE(names.count(row.exportName)) << "a row for an unknown export: " << row.exportName;
        EXPECT_TRUE(seen.insert(row.exportName).second) << "two rows for " << row.exportName;
        std::string error;
        EXPECT_TRUE(pxkcross::callShapeFor(row.exportName, &error).has_value()) << error;
    }
}

// Every named export, including those not built yet, joins by its name or by a row
// for a reason the grammar knows: none has an operation or token the grammar cannot
// read at all.
TEST(ShapeLookup, EveryNamedExportJoinsByNameOrByAKnownKindOfRow) {
    const std::vector<std::string> named = readLines(PXKCC_NAMED_EXPORTS_FILE);
    if (named.empty()) GTEST_SKIP() << "the full list of export names is not beside the project";
    int byName = 0;
    for (const std::string& name : named) {
        if (name == "pxkccGetLibVersion" || name == "pxkiReduceBitsGetBufferSize") continue;
        const NameReading r = readExportName(name);
        EXPECT_TRUE(r.tokensRead) << name << ": " << r.error;
        EXPECT_EQ(r.incomplete.find("not one the grammar knows"), std::string::npos) << name << ": " << r.incomplete;
        byName += r.tokensRead && r.incomplete.empty();
    }
    // Most exports need no row.
    EXPECT_GT(byName, static_cast<int>(named.size()) / 2);
}

}  // namespace
