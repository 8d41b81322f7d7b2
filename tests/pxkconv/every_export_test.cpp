// Every export of the library's list is reachable from pxkconv: `--list` names each,
// one a line, its name first; `--export NAME` runs each on a small image given as raw
// plane files. The list is read from the file the build passes in, so an export that
// lands later is covered without a change here.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "random.h"
#include "run_program.h"
#include "shape_lookup.h"

namespace {

using namespace pxkconvtest;
using pxkcross::CallShape;
using pxkcross::Role;

std::vector<std::string> exportList() {
    std::vector<std::string> names;
    std::ifstream in(PXKCC_EXPORT_LIST_FILE);
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line[0] != '#') names.push_back(line);
    }
    return names;
}

// The statuses of the header, by the names pxkconv prints.
const char* const kStatusNames[] = {"pxkOk", "pxkWarnNegativeImage", "pxkWarnOddSize", "pxkErrBadArg",
                                    "pxkErrSize", "pxkErrNullPtr", "pxkErrContext", "pxkErrStep",
                                    "pxkErrChannels", "pxkErrRange", "pxkErrDitherLevels", "pxkErrNoiseRange",
                                    "pxkErrDitherType"};

bool namesAStatus(const std::string& text) {
    for (const char* s : kStatusNames) {
        if (text.find(std::string(s) + " (") != std::string::npos) return true;
    }
    return false;
}

TEST(PxkconvEveryExport, ListNamesEachExportOnItsOwnLineNameFirst) {
    const std::vector<std::string> names = exportList();
    ASSERT_GT(names.size(), 300u);
    const ProgramRun run = runPxkconv({"--list"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    std::istringstream lines(run.out);
    std::string line;
    std::vector<std::string> listed;
    while (std::getline(lines, line)) {
        const std::size_t cut = line.find(' ');
        listed.push_back(line.substr(0, cut));
        // A line says what the export does after its name.
        EXPECT_NE(cut, std::string::npos) << line;
        if (cut != std::string::npos) {
            EXPECT_GT(line.size(), cut + 10) << line;
        }
    }
    EXPECT_EQ(listed, names);
}

TEST(PxkconvEveryExport, ExportRunsEachOnASmallImage) {
    // 24 x 16 suits every sampling (pairs, groups of four and six, 4:2:0 and 1620
    // rows) and the least sizes of the demosaics and the filtered members.
    const int w = 24, h = 16;
    int ok = 0, refused = 0;
    std::string refusedNames;
    for (const std::string& name : exportList()) {
        SCOPED_TRACE(name);
        std::string error;
        const std::optional<CallShape> shape = pxkcross::callShapeFor(name, &error);
        std::vector<std::string> args = {"--export", name};
        std::vector<std::pair<std::string, std::size_t>> outputs;
        if (!shape) {
            // The version query alone stands outside the grammar; pxkconv prints its record.
            ASSERT_EQ(name.rfind("pxki", 0), std::string::npos) << error;
            const ProgramRun run = runPxkconv(args);
            ASSERT_EQ(run.exitCode, 0) << run.err;
            EXPECT_NE(run.out.find("target"), std::string::npos) << run.out;
            ++ok;
            continue;
        }
        args.push_back("--size");
        args.push_back(std::to_string(w) + "x" + std::to_string(h));
        pxktest::Rng rng(pxktest::seedFor(name.c_str(), {}));
        int k = 0;
        for (int pass = 0; pass < 2; ++pass) {
            for (std::size_t i = 0; i < shape->images.size(); ++i) {
                const pxkcross::Image& image = shape->images[i];
                const bool input = image.role == Role::Source || (image.role == Role::InPlace && pass == 0);
                const bool output = image.role == Role::Destination || (image.role == Role::InPlace && pass == 1);
                if ((pass == 0 && !input) || (pass == 1 && !output)) continue;
                for (std::size_t p = 0; p < image.planes.size(); ++p) {
                    const std::size_t bytes = std::size_t(image.rowBytes(int(p), w)) * std::size_t(image.rows(int(p), h));
                    const std::string path = scratch("plane" + std::to_string(k++));
                    if (input) {
                        std::vector<uint8_t> data(bytes);
                        if (image.type == pxkcross::SampleType::F32) {
                            const double lo = shape->floatRange ? shape->floatLo : 0.0;
                            const double hi = shape->floatRange ? shape->floatHi : 1.0;
                            for (std::size_t b = 0; b + 4 <= bytes; b += 4) {
                                const float f = float(lo + rng.unit() * (hi - lo));
                                std::memcpy(&data[b], &f, 4);
                            }
                        } else if (image.type == pxkcross::SampleType::F64) {
                            for (std::size_t b = 0; b + 8 <= bytes; b += 8) {
                                const double f = rng.unit();
                                std::memcpy(&data[b], &f, 8);
                            }
                        } else {
                            rng.fill(data.data(), bytes);
                        }
                        putFile(path, data);
                    } else {
                        std::remove(path.c_str());
                        outputs.emplace_back(path, bytes);
                    }
                    args.push_back(path);
                }
            }
        }
        const ProgramRun run = runPxkconv(args);
        // The call was made: its status comes back by name.
        ASSERT_TRUE(namesAStatus(run.out + run.err)) << run.out << run.err;
        if (run.exitCode == 0) {
            ++ok;
            for (const auto& o : outputs) EXPECT_EQ(fileBytes(o.first).size(), o.second) << o.first;
        } else {
            // Only a status of the library (the defaults of a value outside the set
            // that export takes) may fail a call that the shapes make; nothing is
            // written then.
            ASSERT_EQ(run.exitCode, 8) << run.err;
            for (const auto& o : outputs) EXPECT_FALSE(fileExists(o.first)) << o.first;
            ++refused;
            refusedNames += " " + name;
        }
    }
    // Defaults are the middle of each value's range, valid for nearly every export.
    EXPECT_LE(refused, 2) << "refused with default values:" << refusedNames;
    std::printf("refused with default values:%s\n", refusedNames.c_str());
    EXPECT_GT(ok, 300);
}

TEST(PxkconvEveryExport, ValuesFromTheCommandLineReachTheCall) {
    // The one-bit reduction takes modes 0 and 3 only: the default (1, the middle of its
    // range) is refused by name, and --value v4=3 is taken.
    const std::string in = scratch("bits.in"), out = scratch("bits.out");
    putFile(in, std::vector<uint8_t>(16 * 2, 200));
    ProgramRun run = runPxkconv({"--export", "pxkiReduceBits_8u1u_C1R", "--size", "16x2", in, out});
    EXPECT_EQ(run.exitCode, 8);
    EXPECT_NE(run.err.find("pxkErrDitherType (-224)"), std::string::npos) << run.err;
    run = runPxkconv({"--export", "pxkiReduceBits_8u1u_C1R", "--size", "16x2", "--value", "v4=0", "--value", "v1=0",
                   "--value", "v5=100", in, out});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    // 200 > threshold 100: every bit set; one byte a pixel of room in the file.
    const std::vector<uint8_t> bits = fileBytes(out);
    ASSERT_EQ(bits.size(), 32u);
    EXPECT_EQ(bits[0], 0xFF);
    EXPECT_EQ(bits[1], 0xFF);
    // The size query writes its result through a pointer: printed as out1.
    run = runPxkconv({"--export", "pxkiReduceBitsGetBufferSize", "--size", "16x2", "--value", "v1=3", "--value", "v2=0",
                   "--value", "v3=0"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.out.find("out1 = 0\n"), std::string::npos) << run.out;  // no buffer without dither or noise
    run = runPxkconv({"--export", "pxkiReduceBitsGetBufferSize", "--size", "16x2", "--value", "v1=3", "--value",
                      "v2=0", "--value", "v3=1"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    ASSERT_NE(run.out.find("out1 = "), std::string::npos) << run.out;
    EXPECT_GT(std::stol(run.out.substr(run.out.find("out1 = ") + 7)), 0) << run.out;  // diffusion needs one
    // An unknown key names the keys that exist.
    run = runPxkconv({"--export", "pxkiReduceBitsGetBufferSize", "--size", "16x2", "--value", "v9=1"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.err.find("its values: v1, v2, v3"), std::string::npos) << run.err;
}

TEST(PxkconvEveryExport, ExportWithoutFilesSaysWhatItTakes) {
    const ProgramRun run = runPxkconv({"--export", "pxkiYCbCr420ToRGB_8u_P3C3R"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.out.find("INPUT  source plane 1: 8u, 1 channel(s), W/2 x H/2"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("OUTPUT destination: 8u, 3 channel(s)"), std::string::npos) << run.out;
    const ProgramRun wrong = runPxkconv({"--export", "pxkiYCbCr420ToRGB_8u_P3C3R", "--size", "4x4", "a"});
    EXPECT_EQ(wrong.exitCode, 1);
    EXPECT_NE(wrong.err.find("takes 4 files"), std::string::npos) << wrong.err;
    const ProgramRun unknown = runPxkconv({"--export", "pxkiNoSuchThing_8u_C3R"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_NE(unknown.err.find("not an export"), std::string::npos) << unknown.err;
}

}  // namespace
