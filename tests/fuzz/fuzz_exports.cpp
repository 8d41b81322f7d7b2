// One fuzz target for every export of the library. Each input picks an export, a
// region (including empty, negative and odd sizes), step kinds and pointer offsets,
// where the inaccessible pages lie (just past the last byte of every buffer, or just
// before the first), null pointers and null plane entries, and the values passed by
// value or in small arrays (including NaN and infinities for floats and values outside
// their documented sets for integers). Every buffer is exactly what the call may touch,
// so an access outside faults. The target also stops on a status the library does not
// document, and on any byte changed by a call that failed.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "abi_call.h"
#include "call_memory.h"
#include "call_shape.h"
#include "frame/entry_table.h"
#include "guard_allowances.h"
#include "pxkcc.h"
#include "shape_lookup.h"

namespace {

using pxkcross::AbiArgument;
using pxkcross::ArgKind;
using pxkcross::CallMemory;
using pxkcross::CallShape;
using pxkcross::ValueType;

struct Target {
    const char* name;
    const void* function;
    CallShape shape;
};

const std::vector<Target>& targets() {
    static const std::vector<Target> all = [] {
        std::vector<Target> list;
        for (const pxk::PxkEntrySlot& slot : pxk::kEntryTable.slot) {
            if (std::strcmp(slot.name, "pxkccGetLibVersion") == 0) continue;
            std::string error;
            auto shape = pxkcross::callShapeFor(slot.name, &error);
            if (!shape) {
                std::fprintf(stderr, "no call shape: %s\n", error.c_str());
                std::abort();
            }
            list.push_back(Target{slot.name, reinterpret_cast<const void*>(slot.body), *shape});
        }
        return list;
    }();
    return all;
}

// The input, read front to back; zeros once it runs out.
class Input {
public:
    Input(const uint8_t* data, std::size_t size) : p_(data), n_(size) {}
    uint8_t byte() { return i_ < n_ ? p_[i_++] : 0; }
    uint32_t u16() { return uint32_t(byte()) | (uint32_t(byte()) << 8); }
    uint32_t u32() { return u16() | (u16() << 16); }

private:
    const uint8_t* p_;
    std::size_t n_;
    std::size_t i_ = 0;
};

// Mostly small regions, every remainder of the vector blocks, sometimes empty,
// negative or wider than a few blocks.
int32_t sizeFrom(uint8_t b) {
    static const int32_t kSpecial[] = {0, -1, -2, 1, 2, 3, 4, 65, 130, 257, std::numeric_limits<int32_t>::min(), 5};
    if (b >= 244) return kSpecial[b - 244];
    return 1 + b % 48;
}

bool isDocumentedStatus(int32_t s) {
    switch (s) {
        case pxkOk:
        case pxkWarnNegativeImage:
        case pxkWarnOddSize:
        case pxkErrBadArg:
        case pxkErrSize:
        case pxkErrNullPtr:
        case pxkErrContext:
        case pxkErrStep:
        case pxkErrChannels:
        case pxkErrRange:
        case pxkErrDitherLevels:
        case pxkErrNoiseRange:
        case pxkErrDitherType:
            return true;
        default:
            return false;
    }
}

float specialFloat(uint8_t b) {
    const float kValues[] = {std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::infinity(),
                             -std::numeric_limits<float>::infinity(),
                             0.0f,
                             -0.0f,
                             1e30f,
                             -1e30f,
                             std::numeric_limits<float>::denorm_min(),
                             1.0f,
                             -1.0f};
    return kValues[b % (sizeof kValues / sizeof kValues[0])];
}

uint64_t floatBits(float f) {
    uint32_t b;
    std::memcpy(&b, &f, 4);
    return b;
}

// Changes the values the memory drew (by value, or in small arrays) with a
// probability of about one in four each.
void disturbValues(const CallShape& shape, std::vector<AbiArgument>& args, Input& in) {
    std::size_t k = 0;
    for (const pxkcross::Arg& a : shape.args) {
        AbiArgument& arg = args.at(k);
        if (a.kind == ArgKind::Value && in.byte() < 64) {
            const uint8_t pick = in.byte();
            if (a.type == ValueType::F32) {
                arg.word[0] = floatBits(specialFloat(pick));
            } else if (a.type == ValueType::F64) {
                const double d = specialFloat(pick);
                std::memcpy(&arg.word[0], &d, 8);
            } else {
                // Small values around the documented sets, or anything.
                const int64_t v = (pick & 1) ? int64_t(int8_t(in.byte())) : int64_t(int32_t(in.u32()));
                arg.word[0] = uint64_t(v);
            }
        } else if (a.kind == ArgKind::Values && in.byte() < 64) {
            const int element = in.byte() % a.count;
            uint8_t* at = reinterpret_cast<uint8_t*>(arg.word[0]);
            if (a.type == ValueType::F32) {
                const float f = specialFloat(in.byte());
                std::memcpy(at + 4 * element, &f, 4);
            } else if (a.type == ValueType::F64) {
                const double d = specialFloat(in.byte());
                std::memcpy(at + 8 * element, &d, 8);
            } else {
                const uint32_t v = in.u32();
                std::memcpy(at + pxkcross::valueBytes(a.type) * element, &v,
                            std::size_t(std::min(4, pxkcross::valueBytes(a.type))));
            }
        }
        k += (a.kind == ArgKind::WidthHeight) ? 2 : 1;
    }
}

// Passes the region's true size where the memory was laid out for at least 1 x 1.
void passSize(const CallShape& shape, std::vector<AbiArgument>& args, int32_t w, int32_t h) {
    std::size_t k = 0;
    for (const pxkcross::Arg& a : shape.args) {
        AbiArgument& arg = args.at(k);
        switch (a.kind) {
            case ArgKind::Size:
                arg = pxkcross::integerArgument(uint64_t(uint32_t(w)) | (uint64_t(uint32_t(h)) << 32));
                break;
            case ArgKind::SizeL:
                arg = pxkcross::structArgument(uint64_t(int64_t(w)), uint64_t(int64_t(h)));
                break;
            case ArgKind::WidthHeight:
                arg = pxkcross::integerArgument(uint64_t(int64_t(w)));
                args.at(k + 1) = pxkcross::integerArgument(uint64_t(int64_t(h)));
                break;
            case ArgKind::Roi:
                arg = pxkcross::structArgument(0, uint64_t(uint32_t(w)) | (uint64_t(uint32_t(h)) << 32));
                break;
            default:
                break;
        }
        k += (a.kind == ArgKind::WidthHeight) ? 2 : 1;
    }
}

// Pointers that an export documents as not tested, so that a null one is the caller's
// fault: the export's name, the argument's position in its list, and the entry of a
// plane array (-1: the argument itself).
struct Untested {
    const char* exportName;
    std::size_t argument;
    int entry;
};
const Untested kUntestedPointers[] = {
    {"pxkiRGBToYCbCr_8u_AC4P3R", 2, -1},  // the destination's plane array (its entries are tested)
    {"pxkiRGBToYUV_8u_AC4P4R", 2, 3},     // the alpha plane (the first three entries are tested)
    // 4:1:1 luma beside chroma pairs into planes: the destination's plane array.
    {"pxkiYCbCr411_8u_P2P3R", 4, -1},
    {"pxkiYCbCr411ToYCbCr420_8u_P2P3R", 4, -1},
    {"pxkiYCbCr411ToYCbCr422_8u_P2P3R", 4, -1},
    {"pxkiYCbCr411ToYCrCb420_8u_P2P3R", 4, -1},
    // The step array read for the choice of kernel.
    {"pxkiYCrCb422ToYCbCr422_8u_C2P3R", 3, -1},
    // The demosaic's work buffer.
    {"pxkiDemosaicAHD_8u_C1C3R", 7, -1},
    {"pxkiDemosaicAHD_16u_C1C3R", 7, -1},
};

bool untested(const char* name, std::size_t argument, int entry) {
    for (const Untested& u : kUntestedPointers) {
        if (argument == u.argument && entry == u.entry && std::strcmp(name, u.exportName) == 0) return true;
    }
    return false;
}

// With a probability of about one in six, one pointer argument or one entry of a plane
// array becomes null (only an entry, where the array pointer itself is untested).
void nullOne(const char* name, const CallShape& shape, std::vector<AbiArgument>& args, Input& in) {
    if (in.byte() >= 43) return;
    struct Candidate {
        const pxkcross::Arg* arg;
        std::size_t position;
        std::size_t abi;
    };
    std::vector<Candidate> candidates;
    std::size_t abi = 0;
    for (std::size_t position = 0; position < shape.args.size(); ++position) {
        const pxkcross::Arg& a = shape.args[position];
        switch (a.kind) {
            case ArgKind::PlanePointers:
            case ArgKind::Pointer:
            case ArgKind::StepArray:
            case ArgKind::StepArray64:
            case ArgKind::Values:
            case ArgKind::Out:
            case ArgKind::Scratch:
                candidates.push_back({&a, position, abi});
                break;
            default:
                break;
        }
        abi += (a.kind == ArgKind::WidthHeight) ? 2 : 1;
    }
    if (candidates.empty()) return;
    const Candidate& c = candidates[in.byte() % candidates.size()];
    const bool entry = c.arg->kind == ArgKind::PlanePointers && (in.byte() & 1);
    if (entry) {
        const int planes = int(shape.images.at(std::size_t(c.arg->image)).planes.size());
        const int e = in.byte() % planes;
        if (untested(name, c.position, e)) return;
        reinterpret_cast<const void**>(args[c.abi].word[0])[e] = nullptr;
    } else {
        if (untested(name, c.position, -1)) return;
        args[c.abi] = pxkcross::pointerArgument(nullptr);
    }
}

[[noreturn]] void finding(const Target& t, int32_t w, int32_t h, const CallMemory& memory, const std::string& what) {
    std::fprintf(stderr, "\n%s at width %d, height %d\n  %s\n  %s\n", t.name, int(w), int(h), memory.layout().c_str(),
                 what.c_str());
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    if (size < 6) return 0;
    Input in(data, size);
    const std::vector<Target>& all = targets();
    const Target& t = all[in.u16() % all.size()];
    const int32_t w = sizeFrom(in.byte()), h = sizeFrom(in.byte());
    pxkcross::SweepPoint point;
    point.width = w > 0 ? w : 1;
    point.height = h > 0 ? h : 1;
    point.index = in.u16();
    const pxkcross::Placement placement =
        (in.byte() & 1) ? pxkcross::Placement::GuardAfter : pxkcross::Placement::GuardBefore;
    CallMemory memory(t.shape, point, in.u32(), placement, pxkcross::guardAllowancesFor(t.name, h));
    std::vector<AbiArgument> args = memory.arguments();
    passSize(t.shape, args, w, h);
    disturbValues(t.shape, args, in);
    nullOne(t.name, t.shape, args, in);
    // Every byte as the call receives it, to compare with after a failed call.
    const CallMemory before(memory);

    int32_t status = 0;
    std::string error;
    if (!pxkcross::callWithArguments(t.function, args, &status, &error)) finding(t, w, h, memory, error);
    if (!isDocumentedStatus(status)) finding(t, w, h, memory, "status " + std::to_string(status) + " is not documented");
    if (status < 0) {
        const std::string changed = CallMemory::firstDifference(memory, before);
        if (!changed.empty()) {
            finding(t, w, h, memory, "status " + std::to_string(status) + ", yet the call changed memory: " + changed);
        }
    }
    return 0;
}
