// Every export that the strip helper allows, reached through its call shape: strips
// on the helper's row groups give the bytes and the status of one call. The row group
// is checked against what the call shape knows of the planes (how many image rows a
// plane row covers), and the list is read from the build's export list, so exports that
// land later are covered here without a change.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstring>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "call_memory.h"
#include "pxkcc_strips.h"
#include "shape_lookup.h"

namespace {

using pxkcross::AbiArgument;
using pxkcross::Arg;
using pxkcross::ArgKind;
using pxkcross::CallShape;

std::vector<std::string> exportList() {
    std::vector<std::string> names;
    std::ifstream in(PXKCC_EXPORT_LIST_FILE);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line[0] != '#') names.push_back(line);
    }
    return names;
}

int largestHeightDivisor(const CallShape& shape) {
    int d = 1;
    for (const pxkcross::Image& image : shape.images) {
        for (const pxkcross::Plane& p : image.planes) d = std::max(d, p.heightDivisor);
    }
    return d;
}

// The step in bytes of every plane of every image, as the arguments pass it (a form
// without steps takes tight rows, which at an even width are the call shape's).
std::vector<std::vector<int64_t>> planeSteps(const CallShape& shape, const std::vector<AbiArgument>& args, int w) {
    std::vector<std::vector<int64_t>> steps(shape.images.size());
    for (std::size_t i = 0; i < shape.images.size(); ++i) {
        for (std::size_t p = 0; p < shape.images[i].planes.size(); ++p) steps[i].push_back(shape.images[i].rowBytes(int(p), w));
    }
    std::size_t k = 0;
    for (const Arg& a : shape.args) {
        const AbiArgument& abi = args[k];
        const int unit = a.image >= 0 ? pxkcross::sampleUnit(shape.images[std::size_t(a.image)].type) : 1;
        const int64_t scale = shape.stepsInElements ? unit : 1;
        if (a.kind == ArgKind::Step) {
            const int64_t s = int64_t(int32_t(uint32_t(abi.word[0]))) * scale;
            if (a.plane < 0) {
                for (int64_t& each : steps[std::size_t(a.image)]) each = s;
            } else {
                steps[std::size_t(a.image)][std::size_t(a.plane)] = s;
            }
        } else if (a.kind == ArgKind::StepArray) {
            const int32_t* array = reinterpret_cast<const int32_t*>(abi.word[0]);
            for (std::size_t p = 0; p < steps[std::size_t(a.image)].size(); ++p) steps[std::size_t(a.image)][p] = array[p] * scale;
        }
        k += (a.kind == ArgKind::WidthHeight) ? 2 : 1;
    }
    return steps;
}

// The arguments of one strip: every row pointer moved to the strip's first row of its
// plane, the height the strip's.
std::vector<AbiArgument> stripArguments(const CallShape& shape, std::vector<AbiArgument> args,
                                        const std::vector<std::vector<int64_t>>& steps, const pxkcc::Strip& s,
                                        std::vector<std::vector<const void*>>* arrays) {
    auto moved = [&](uint64_t address, int image, int plane) {
        const int divisor = shape.images[std::size_t(image)].planes[std::size_t(plane)].heightDivisor;
        return address + uint64_t((s.y / divisor) * steps[std::size_t(image)][std::size_t(plane)]);
    };
    std::size_t k = 0;
    for (const Arg& a : shape.args) {
        AbiArgument& abi = args[k];
        if (a.kind == ArgKind::Pointer) {
            abi.word[0] = moved(abi.word[0], a.image, a.plane);
        } else if (a.kind == ArgKind::PlanePointers) {
            const void* const* old = reinterpret_cast<const void* const*>(abi.word[0]);
            std::vector<const void*> planes;
            for (std::size_t p = 0; p < shape.images[std::size_t(a.image)].planes.size(); ++p) {
                planes.push_back(reinterpret_cast<const void*>(moved(reinterpret_cast<uint64_t>(old[p]), a.image, int(p))));
            }
            arrays->push_back(planes);
            abi.word[0] = reinterpret_cast<uint64_t>(arrays->back().data());
        } else if (a.kind == ArgKind::Size) {
            abi.word[0] = (abi.word[0] & 0xFFFFFFFFu) | (uint64_t(uint32_t(s.height)) << 32);
        } else if (a.kind == ArgKind::WidthHeight) {
            args[k + 1].word[0] = uint64_t(int64_t(s.height));
        }
        k += (a.kind == ArgKind::WidthHeight) ? 2 : 1;
    }
    return args;
}

TEST(StripsOverEveryExport, StripsGiveTheBytesAndStatusOfOneCall) {
    int checked = 0;
    for (const std::string& name : exportList()) {
        const pxkcc::StripRule rule = pxkcc::stripRuleFor(name);
        if (!rule.allowed) continue;
        SCOPED_TRACE(name);
        std::string error;
        std::optional<CallShape> shape = pxkcross::callShapeFor(name, &error);
        ASSERT_TRUE(shape) << error;
        // Strips must keep each plane's rows whole.
        EXPECT_EQ(rule.rowGroup % largestHeightDivisor(*shape), 0) << "row group " << rule.rowGroup;
        const void* function = dlsym(RTLD_DEFAULT, name.c_str());
        ASSERT_NE(function, nullptr);
        // Strips of one plane each must not share rows: positive steps only.
        shape->positiveStepsOnly = true;
        for (const pxkcross::SweepPoint point : {pxkcross::SweepPoint{40, 24, 1}, pxkcross::SweepPoint{40, 23, 2},
                                                pxkcross::SweepPoint{18, 9, 3}}) {
            SCOPED_TRACE(std::to_string(point.width) + "x" + std::to_string(point.height));
            pxkcross::CallMemory one(*shape, point, 1234u + point.index);
            pxkcross::CallMemory split(one);
            int32_t whole = 0;
            ASSERT_TRUE(pxkcross::callWithArguments(function, one.arguments(), &whole, &error)) << error;
            const std::vector<AbiArgument> base = split.arguments();
            const std::vector<std::vector<int64_t>> steps = planeSteps(*shape, base, point.width);
            std::vector<std::vector<const void*>> arrays;
            arrays.reserve(64);
            auto inOrder = [](std::function<void()> task) { task(); };
            const PxkResult strips = pxkcc::runInStrips(name, point.height, 3, inOrder, [&](const pxkcc::Strip& s) {
                int32_t r = 0;
                std::string why;
                EXPECT_TRUE(pxkcross::callWithArguments(function, stripArguments(*shape, base, steps, s, &arrays), &r, &why))
                    << why;
                return PxkResult(r);
            });
            EXPECT_EQ(strips, whole);
            EXPECT_EQ(pxkcross::CallMemory::firstDifference(one, split), "") << split.layout();
        }
        ++checked;
    }
    EXPECT_GT(checked, 250);
}

}  // namespace
