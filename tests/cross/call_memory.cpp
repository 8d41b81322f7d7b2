#include "call_memory.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>

#include <sys/mman.h>
#include <unistd.h>

#include "random.h"

namespace pxkcross {

namespace {

// Bytes around every region, below its lowest and above its highest byte: room for
// reads and writes past the region, which must agree between the libraries too.
constexpr std::size_t kMargin = 128;
constexpr std::size_t kSmallMargin = 32;  // around arrays, values and work buffers

// The positive kinds first.
const StepKind kAllKinds[] = {StepKind::Tight, StepKind::Padded,   StepKind::Odd,
                              StepKind::Zero,  StepKind::Negative, StepKind::NegativeTight};
constexpr unsigned kPositiveKinds = 3;
constexpr unsigned kKinds = sizeof kAllKinds / sizeof kAllKinds[0];

int64_t roundUp16(int64_t v) { return (v + 15) / 16 * 16; }

// Offset of a buffer's pointer from a 64-byte boundary, in whole samples: every other
// buffer aligned, the rest at a spread of misalignments.
std::size_t alignmentFor(unsigned index, int buffer, int unit) {
    if ((index + unsigned(buffer)) % 2 == 0) return 0;
    const unsigned choices = unit < 32 ? unsigned(32 / unit - 1) : 1u;
    return std::size_t(unit) * (1 + (index * 7u + unsigned(buffer) * 3u) % choices);
}

const char* sideName(Role role) {
    switch (role) {
        case Role::Source:
            return "source";
        case Role::Destination:
            return "destination";
        case Role::InPlace:
            return "in-place image";
    }
    return "?";
}

struct Drawn {
    int64_t i = 0;
    double f = 0;
};

bool isFloatValue(ValueType t) { return t == ValueType::F32 || t == ValueType::F64; }

void fullRange(ValueType t, int64_t* lo, int64_t* hi) {
    switch (t) {
        case ValueType::U8:
            *lo = 0, *hi = 255;
            return;
        case ValueType::I8:
            *lo = -128, *hi = 127;
            return;
        case ValueType::U16:
            *lo = 0, *hi = 65535;
            return;
        case ValueType::I16:
            *lo = -32768, *hi = 32767;
            return;
        case ValueType::U32:
            *lo = 0, *hi = int64_t(std::numeric_limits<uint32_t>::max());
            return;
        case ValueType::I32:
            *lo = std::numeric_limits<int32_t>::min(), *hi = std::numeric_limits<int32_t>::max();
            return;
        default:
            *lo = std::numeric_limits<int64_t>::min(), *hi = std::numeric_limits<int64_t>::max();
            return;
    }
}

Drawn draw(pxktest::Rng& rng, ValueType t, double lo, double hi) {
    Drawn d;
    if (isFloatValue(t)) {
        d.f = lo + rng.unit() * (hi - lo);
        if (t == ValueType::F32) d.f = static_cast<float>(d.f);
    } else {
        d.i = rng.uniform(static_cast<int64_t>(std::llround(lo)), static_cast<int64_t>(std::llround(hi)));
    }
    return d;
}

void store(ValueType t, const Drawn& d, uint8_t* p) {
    switch (t) {
        case ValueType::F32: {
            const float f = static_cast<float>(d.f);
            std::memcpy(p, &f, sizeof f);
            return;
        }
        case ValueType::F64:
            std::memcpy(p, &d.f, sizeof d.f);
            return;
        default: {
            const uint64_t bits = static_cast<uint64_t>(d.i);  // little-endian: low bytes first
            std::memcpy(p, &bits, std::size_t(valueBytes(t)));
            return;
        }
    }
}

AbiArgument byValue(ValueType t, const Drawn& d) {
    if (t == ValueType::F32) return floatArgument(static_cast<float>(d.f));
    if (t == ValueType::F64) return doubleArgument(d.f);
    return integerArgument(static_cast<uint64_t>(d.i));  // signed values sign-extended
}

void fillRandom(pxktest::Rng& rng, uint8_t* p, std::size_t n) {
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4) {
        const uint32_t v = rng.next32();
        std::memcpy(p + i, &v, 4);
    }
    for (; i < n; ++i) p[i] = rng.byte();
}

void fillFloats(pxktest::Rng& rng, SampleType type, double lo, double hi, uint8_t* p, std::size_t n) {
    if (type == SampleType::F32) {
        for (std::size_t i = 0; i + 4 <= n; i += 4) {
            const float f = static_cast<float>(lo + rng.unit() * (hi - lo));
            std::memcpy(p + i, &f, 4);
        }
    } else {
        for (std::size_t i = 0; i + 8 <= n; i += 8) {
            const double f = lo + rng.unit() * (hi - lo);
            std::memcpy(p + i, &f, 8);
        }
    }
}

}  // namespace

StepKind stepKindFor(unsigned index, int slot, bool positiveOnly) {
    const unsigned n = positiveOnly ? kPositiveKinds : kKinds;
    // Slot 0 changes kind at every point, slot 1 every n points, slot 2 every n * n
    // points: over n * n consecutive points the first two slots meet in every pairing.
    unsigned divisor = 1;
    for (int s = 0; s < slot % 3; ++s) divisor *= n;
    return kAllKinds[(index / divisor + unsigned(slot)) % n];
}

int64_t stepBytesFor(StepKind kind, int64_t tight, int unit, unsigned variant) {
    switch (kind) {
        case StepKind::Tight:
            return tight;
        case StepKind::Padded:
            return ((variant % 2 == 0) ? tight : roundUp16(tight)) + 16 * (1 + variant % 3);
        case StepKind::Odd:
            return tight + int64_t(unit) * (2 * (variant % 3) + 1);
        case StepKind::Zero:
            return 0;
        case StepKind::Negative:
            return -(((variant % 2 == 0) ? tight : roundUp16(tight)) + 16);
        case StepKind::NegativeTight:
            return -tight;
    }
    return tight;
}

void CallMemory::Free::operator()(uint8_t* p) const {
    if (mapping != nullptr) {
        munmap(mapping, mappingBytes);
    } else {
        std::free(p);
    }
}

int CallMemory::addBuffer(const std::string& label, std::size_t bytes, std::size_t origin, int64_t step, int rows) {
    Buffer b;
    b.label = label;
    b.rows = rows;
    b.size = bytes;
    b.origin = origin;
    b.step = step;
    if (placement_ == Placement::Margins) {
        // The allocation sits on a 64-byte boundary in both copies, so that the pointers
        // of the two calls have the same alignment.
        void* p = std::aligned_alloc(64, (bytes + 63) / 64 * 64);
        if (!p) throw std::bad_alloc();
        b.data.reset(static_cast<uint8_t*>(p));
    } else {
        // Pages for the bytes, with an inaccessible page on either side.
        const std::size_t page = std::size_t(sysconf(_SC_PAGESIZE));
        const std::size_t inner = (bytes + page - 1) / page * page;
        const std::size_t total = inner + 2 * page;
        void* m = mmap(nullptr, total, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m == MAP_FAILED) throw std::bad_alloc();
        uint8_t* base = static_cast<uint8_t*>(m);
        mprotect(base, page, PROT_NONE);
        mprotect(base + page + inner, page, PROT_NONE);
        uint8_t* data = placement_ == Placement::GuardAfter ? base + page + inner - bytes : base + page;
        b.data = std::unique_ptr<uint8_t, Free>(data, Free{m, total});
    }
    buffers_.push_back(std::move(b));
    return static_cast<int>(buffers_.size() - 1);
}

std::string CallMemory::describeAddress(const void* address) const {
    const uint8_t* a = static_cast<const uint8_t*>(address);
    const std::size_t page = std::size_t(sysconf(_SC_PAGESIZE));
    for (const Buffer& b : buffers_) {
        const uint8_t* first = b.data.get();
        const uint8_t* end = first + b.size;
        if (a + page < first || a >= end + page) continue;
        const long long fromPointer = static_cast<long long>(a - first) - static_cast<long long>(b.origin);
        char text[200];
        if (a < first) {
            std::snprintf(text, sizeof text, "%s: %lld bytes before its first byte (%+lld from the pointer passed)",
                          b.label.c_str(), static_cast<long long>(first - a), fromPointer);
        } else if (a >= end) {
            std::snprintf(text, sizeof text, "%s: %lld bytes after its last byte (%+lld from the pointer passed)",
                          b.label.c_str(), static_cast<long long>(a - end) + 1, fromPointer);
        } else {
            std::snprintf(text, sizeof text, "%s: inside, %+lld from the pointer passed", b.label.c_str(), fromPointer);
        }
        return text;
    }
    return "no buffer of the call";
}

CallMemory::CallMemory(const CallShape& shape, const SweepPoint& point, uint32_t seed, Placement placement,
                       const std::vector<PlaneAllowance>& allowances)
    : placement_(placement) {
    pxktest::Rng rng(seed);
    const bool guarded = placement != Placement::Margins;
    const std::size_t margin = guarded ? 0 : kMargin;
    const std::size_t smallMargin = guarded ? 0 : kSmallMargin;
    const int w = point.width;
    const int h = point.height;
    const unsigned index = point.index;
    auto alignFor = [&](int unit) { return guarded ? std::size_t(0) : alignmentFor(index, int(buffers_.size()), unit); };

    // How each image takes its steps: none (derived from the width), one for all its
    // planes, or one a plane.
    enum class Steps { None, Shared, PerPlane };
    std::vector<Steps> steps(shape.images.size(), Steps::None);
    for (const Arg& a : shape.args) {
        if (a.kind == ArgKind::Step) {
            steps.at(std::size_t(a.image)) = (a.plane < 0) ? Steps::Shared : Steps::PerPlane;
        } else if (a.kind == ArgKind::StepArray || a.kind == ArgKind::StepArray64) {
            steps.at(std::size_t(a.image)) = Steps::PerPlane;
        }
    }

    std::vector<std::vector<int>> planeBuffer(shape.images.size());
    std::vector<std::vector<int64_t>> passedStep(shape.images.size());
    int slot = 0;
    for (std::size_t i = 0; i < shape.images.size(); ++i) {
        const Image& image = shape.images[i];
        const int unit = sampleUnit(image.type);
        const int64_t full = image.fullRowBytes(w);
        int64_t widestTight = 0;
        for (std::size_t p = 0; p < image.planes.size(); ++p) {
            widestTight = std::max(widestTight, image.rowBytes(int(p), w));
        }
        StepKind kind = StepKind::Tight;
        int64_t bytes = full;
        auto choose = [&](int64_t tight) {
            kind = stepKindFor(index, slot, shape.positiveStepsOnly);
            bytes = stepBytesFor(kind, tight, unit, index / 7 + unsigned(slot));
            ++slot;
        };
        if (steps[i] == Steps::Shared) choose(widestTight);
        for (std::size_t p = 0; p < image.planes.size(); ++p) {
            if (steps[i] == Steps::PerPlane) choose(image.rowBytes(int(p), w));
            // Guarded, each plane holds just its rows at its own resolution; a form
            // without steps derives tight ones.
            if (guarded && steps[i] == Steps::None) bytes = image.rowBytes(int(p), w);
            int rows = guarded ? image.rows(int(p), h) : h;
            // Rows outside the region that the export documents, in every placement, so
            // that they lie in the buffer (rows before the pointer sit above it in
            // memory when the step is negative).
            int before = 0;
            for (const PlaneAllowance& a : allowances) {
                if (a.image != int(i) || a.plane != int(p)) continue;
                rows += a.rowsAfter;
                before += a.rowsBefore;
            }
            const int64_t rowBytes = guarded ? image.rowBytes(int(p), w) : full;
            const int64_t absStep = bytes < 0 ? -bytes : bytes;
            const int64_t rowSpan = int64_t(before + rows - 1) * absStep;
            const std::size_t align = alignFor(unit);
            const std::size_t origin =
                margin + align + std::size_t(bytes < 0 ? int64_t(rows - 1) * absStep : int64_t(before) * absStep);
            const std::size_t size = margin + align + std::size_t(rowSpan + rowBytes) + margin;
            std::string label = sideName(image.role);
            if (image.planes.size() > 1) label += " plane " + std::to_string(p);
            const int b = addBuffer(label, size, origin, bytes, rows);
            planeBuffer[i].push_back(b);
            if (shape.floatRange && isFloat(image.type)) {
                fillFloats(rng, image.type, shape.floatLo, shape.floatHi, bufferData(std::size_t(b)), size);
            } else {
                fillRandom(rng, bufferData(std::size_t(b)), size);
            }
            passedStep[i].push_back(shape.stepsInElements ? bytes / unit : bytes);

            // One entry a step: "destination plane 1: step Odd 53, pointer +7", or for a
            // step shared by the planes "source: step Tight 51, pointers +0 +27 +0".
            char text[160];
            const bool first = (p == 0) || steps[i] == Steps::PerPlane;
            if (first) {
                const std::string side = steps[i] == Steps::PerPlane ? label : std::string(sideName(image.role));
                const char* pointers = image.planes.size() > 1 && steps[i] != Steps::PerPlane ? "pointers" : "pointer";
                if (steps[i] == Steps::None) {
                    std::snprintf(text, sizeof text, "%s: no steps, %s +%zu", side.c_str(), pointers, align);
                } else {
                    std::snprintf(text, sizeof text, "%s: step %s %lld, %s +%zu", side.c_str(), stepKindName(kind),
                                  static_cast<long long>(passedStep[i].back()), pointers, align);
                }
                if (!layout_.empty()) layout_ += "; ";
            } else {
                std::snprintf(text, sizeof text, " +%zu", align);
            }
            layout_ += text;
        }
    }

    int64_t scratchRow = 0;
    for (std::size_t n = 0; n < shape.args.size(); ++n) {
        const Arg& a = shape.args[n];
        Planned planned;
        const std::string label = "argument " + std::to_string(n + 1);
        switch (a.kind) {
            case ArgKind::Pointer:
                planned.pass = Pass::Address;
                planned.buffer = planeBuffer.at(std::size_t(a.image)).at(std::size_t(a.plane));
                break;
            case ArgKind::PlanePointers:
                planned.pass = Pass::Addresses;
                planned.planes = planeBuffer.at(std::size_t(a.image));
                break;
            case ArgKind::Step: {
                const int64_t v = passedStep.at(std::size_t(a.image)).at(std::size_t(a.plane < 0 ? 0 : a.plane));
                planned.words = integerArgument(static_cast<uint64_t>(static_cast<int64_t>(static_cast<int32_t>(v))));
                break;
            }
            case ArgKind::StepArray:
            case ArgKind::StepArray64: {
                const std::vector<int64_t>& values = passedStep.at(std::size_t(a.image));
                const std::size_t each = (a.kind == ArgKind::StepArray) ? 4 : 8;
                const int b = addBuffer(label + " (steps)", smallMargin * 2 + values.size() * each, smallMargin, 0);
                fillRandom(rng, bufferData(std::size_t(b)), bufferSize(std::size_t(b)));
                for (std::size_t p = 0; p < values.size(); ++p) {
                    uint8_t* at = bufferData(std::size_t(b)) + smallMargin + p * each;
                    if (each == 4) {
                        const int32_t v = static_cast<int32_t>(values[p]);
                        std::memcpy(at, &v, 4);
                    } else {
                        std::memcpy(at, &values[p], 8);
                    }
                }
                planned.pass = Pass::Address;
                planned.buffer = b;
                break;
            }
            case ArgKind::Size:
                planned.words = integerArgument(uint64_t(uint32_t(w)) | (uint64_t(uint32_t(h)) << 32));
                break;
            case ArgKind::SizeL:
                planned.words = structArgument(uint64_t(int64_t(w)), uint64_t(int64_t(h)));
                break;
            case ArgKind::WidthHeight:
                // Two arguments: the width here, the height as an extra entry below.
                planned.words = integerArgument(uint64_t(int64_t(w)));
                planned_.push_back(planned);
                planned.words = integerArgument(uint64_t(int64_t(h)));
                break;
            case ArgKind::Roi:
                planned.words = structArgument(0, uint64_t(uint32_t(w)) | (uint64_t(uint32_t(h)) << 32));
                break;
            case ArgKind::Value: {
                double lo = a.lo, hi = a.hi;
                if (a.alpha) {
                    if (isFloatValue(a.type)) {
                        lo = shape.floatLo, hi = shape.floatHi;
                    } else {
                        int64_t l, u;
                        fullRange(a.type, &l, &u);
                        lo = double(l), hi = double(u);
                    }
                }
                if (!a.choices.empty()) {
                    // One of the given values, each as likely.
                    const double pick =
                        a.choices[std::size_t(rng.uniform(0, int64_t(a.choices.size()) - 1))];
                    lo = hi = pick;
                }
                planned.words = byValue(a.type, draw(rng, a.type, lo, hi));
                break;
            }
            case ArgKind::Values: {
                const int size = valueBytes(a.type);
                const std::size_t align = alignFor(size);
                const std::size_t origin = smallMargin + align;
                const int b =
                    addBuffer(label + " (values)", origin + std::size_t(a.count * size) + smallMargin, origin, 0);
                fillRandom(rng, bufferData(std::size_t(b)), bufferSize(std::size_t(b)));
                for (int k = 0; k < a.count; ++k) {
                    store(a.type, draw(rng, a.type, a.lo, a.hi),
                          bufferData(std::size_t(b)) + origin + std::size_t(k * size));
                }
                planned.pass = Pass::Address;
                planned.buffer = b;
                break;
            }
            case ArgKind::Out: {
                const int b =
                    addBuffer(label + " (result)", smallMargin * 2 + std::size_t(valueBytes(a.type)), smallMargin, 0);
                fillRandom(rng, bufferData(std::size_t(b)), bufferSize(std::size_t(b)));
                planned.pass = Pass::Address;
                planned.buffer = b;
                break;
            }
            case ArgKind::Scratch: {
                scratchRow = a.perPixel * w + a.fixed;
                const std::size_t align = alignFor(1);
                const std::size_t origin = smallMargin + align;
                const int b = addBuffer(label + " (work buffer)",
                                        origin + std::size_t(scratchRow * a.rows) + smallMargin, origin, 0);
                fillRandom(rng, bufferData(std::size_t(b)), bufferSize(std::size_t(b)));
                planned.pass = Pass::Address;
                planned.buffer = b;
                break;
            }
            case ArgKind::ScratchStep:
                planned.words = integerArgument(uint64_t(scratchRow));
                break;
        }
        planned_.push_back(planned);
    }
}

CallMemory::CallMemory(const CallMemory& other)
    : placement_(other.placement_), planned_(other.planned_), layout_(other.layout_) {
    for (const Buffer& b : other.buffers_) {
        const int i = addBuffer(b.label, b.size, b.origin, b.step, b.rows);
        std::memcpy(bufferData(std::size_t(i)), b.data.get(), b.size);
    }
}

std::vector<AbiArgument> CallMemory::arguments() {
    std::vector<AbiArgument> args;
    pointerArrays_.clear();
    pointerArrays_.reserve(planned_.size());
    for (const Planned& p : planned_) {
        switch (p.pass) {
            case Pass::Words:
                args.push_back(p.words);
                break;
            case Pass::Address:
                args.push_back(
                    pointerArgument(bufferData(std::size_t(p.buffer)) + bufferOrigin(std::size_t(p.buffer))));
                break;
            case Pass::Addresses: {
                std::vector<const void*> array;
                for (int b : p.planes) array.push_back(bufferData(std::size_t(b)) + bufferOrigin(std::size_t(b)));
                pointerArrays_.push_back(std::move(array));
                args.push_back(pointerArgument(pointerArrays_.back().data()));
                break;
            }
        }
    }
    return args;
}

std::string CallMemory::firstDifference(const CallMemory& a, const CallMemory& b) {
    if (a.buffers_.size() != b.buffers_.size()) return "the two copies have different buffers";
    for (std::size_t i = 0; i < a.buffers_.size(); ++i) {
        const Buffer& x = a.buffers_[i];
        const Buffer& y = b.buffers_[i];
        if (x.size != y.size) return x.label + ": the two copies differ in size";
        if (std::memcmp(x.data.get(), y.data.get(), x.size) == 0) continue;
        std::size_t first = 0;
        while (x.data.get()[first] == y.data.get()[first]) ++first;
        std::size_t count = 0;
        for (std::size_t k = first; k < x.size; ++k) count += (x.data.get()[k] != y.data.get()[k]);
        const long long fromPointer = static_cast<long long>(first) - static_cast<long long>(x.origin);
        char text[256];
        std::snprintf(text, sizeof text,
                      "%s: first difference at byte %+lld from the pointer passed (0x%02x vs 0x%02x)", x.label.c_str(),
                      fromPointer, x.data.get()[first], y.data.get()[first]);
        std::string out = text;
        if (x.step != 0) {
            // The row whose bytes start at or below the difference and run past it.
            // With s > 0 that is floor(offset / s), with s < 0 ceil(offset / s).
            const long long s = x.step;
            const long long a = s > 0 ? s : -s;
            long long row = fromPointer / s;  // truncated toward zero
            const bool inexact = row * s != fromPointer;
            if (inexact && s > 0 && fromPointer < 0) --row;
            if (inexact && s < 0 && fromPointer < 0) ++row;
            const long long byte = fromPointer - s * row;
            if (row >= 0 && row < x.rows && byte >= 0 && byte < a) {
                std::snprintf(text, sizeof text, ", row %lld byte %lld", row, byte);
                out += text;
            } else {
                out += ", outside the region's rows";
            }
        }
        std::snprintf(text, sizeof text, "; %zu of its %zu bytes differ", count, x.size);
        return out + text;
    }
    return std::string();
}

}  // namespace pxkcross
