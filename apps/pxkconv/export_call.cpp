#include "export_call.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <sstream>

#include "abi_call.h"

namespace pxkconv {

using pxkcross::AbiArgument;
using pxkcross::Arg;
using pxkcross::ArgKind;
using pxkcross::CallShape;
using pxkcross::ValueType;

namespace {

bool isFloatValue(ValueType t) { return t == ValueType::F32 || t == ValueType::F64; }

template <class T>
void limits(long long* lo, unsigned long long* hi) {
    *lo = static_cast<long long>(std::numeric_limits<T>::min());
    *hi = static_cast<unsigned long long>(std::numeric_limits<T>::max());
}

// The integers a value of type t holds.
void integerRange(ValueType t, long long* lo, unsigned long long* hi) {
    if (t == ValueType::U8) return limits<uint8_t>(lo, hi);
    if (t == ValueType::I8) return limits<int8_t>(lo, hi);
    if (t == ValueType::U16) return limits<uint16_t>(lo, hi);
    if (t == ValueType::I16) return limits<int16_t>(lo, hi);
    if (t == ValueType::U32) return limits<uint32_t>(lo, hi);
    if (t == ValueType::I32) return limits<int32_t>(lo, hi);
    return limits<int64_t>(lo, hi);
}

std::string numberText(ValueType t, double v) {
    std::ostringstream out;
    if (isFloatValue(t)) {
        out << v;
    } else {
        out << static_cast<long long>(std::floor(v));
    }
    return out.str();
}

// One number of a value: its bits in the low bytes of `word` (floats as float or
// double bits), false if it does not read or does not fit the type.
bool readNumber(ValueType t, const std::string& text, uint64_t* word, double* asDouble) {
    if (text.empty()) return false;
    char* end = nullptr;
    errno = 0;
    if (isFloatValue(t)) {
        const double v = std::strtod(text.c_str(), &end);
        if (errno != 0 || *end != '\0') return false;
        *asDouble = v;
        if (t == ValueType::F32) {
            const float f = static_cast<float>(v);
            uint32_t bits;
            std::memcpy(&bits, &f, 4);
            *word = bits;
        } else {
            std::memcpy(word, &v, 8);
        }
        return true;
    }
    const long long v = std::strtoll(text.c_str(), &end, 10);
    if (errno != 0 || *end != '\0') return false;
    long long lo;
    unsigned long long hi;
    integerRange(t, &lo, &hi);
    if (v < lo || (v > 0 && static_cast<unsigned long long>(v) > hi)) return false;
    *word = static_cast<uint64_t>(v);  // signed values sign-extended, as the convention passes them
    *asDouble = double(v);
    return true;
}

std::vector<std::string> splitList(const std::string& text) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, ',')) parts.push_back(part);
    if (!text.empty() && text.back() == ',') parts.emplace_back();
    return parts;
}

AbiArgument valueArgument(ValueType t, uint64_t word) {
    AbiArgument a = pxkcross::integerArgument(word);
    a.floating = isFloatValue(t);
    return a;
}

std::string outText(ValueType t, const uint8_t* bytes) {
    switch (t) {
        case ValueType::F32: {
            float f;
            std::memcpy(&f, bytes, 4);
            return numberText(t, f);
        }
        case ValueType::F64: {
            double d;
            std::memcpy(&d, bytes, 8);
            return numberText(t, d);
        }
        default: {
            int64_t v = 0;
            const int n = pxkcross::valueBytes(t);
            std::memcpy(&v, bytes, std::size_t(n));
            const bool isSigned = t == ValueType::I8 || t == ValueType::I16 || t == ValueType::I32;
            if (isSigned && n < 8) {
                const int shift = 64 - 8 * n;
                v = static_cast<int64_t>(static_cast<uint64_t>(v) << shift) >> shift;
            }
            return std::to_string(v);
        }
    }
}

}  // namespace

std::vector<ValueSlot> valueSlots(const CallShape& shape) {
    std::vector<ValueSlot> slots;
    int n = 0;
    for (std::size_t i = 0; i < shape.args.size(); ++i) {
        const Arg& a = shape.args[i];
        if (a.kind != ArgKind::Value && a.kind != ArgKind::Values) continue;
        ValueSlot s;
        s.arg = int(i);
        s.type = a.type;
        if (a.kind == ArgKind::Value && a.alpha) {
            s.key = "alpha";
            long long lo;
            unsigned long long hi;
            integerRange(a.type, &lo, &hi);
            s.defaultText = isFloatValue(a.type) ? "1" : std::to_string(hi);
        } else {
            s.key = "v" + std::to_string(++n);
            s.count = a.kind == ArgKind::Values ? a.count : 1;
            s.lo = a.lo;
            s.hi = a.hi;
            const std::string one = numberText(a.type, (a.lo + a.hi) / 2);
            for (int k = 0; k < s.count; ++k) s.defaultText += (k ? "," : "") + one;
        }
        slots.push_back(s);
    }
    return slots;
}

int64_t tightRowBytes(const pxkcross::Image& image, int p, int width) { return image.rowBytes(p, width); }

Failure callExport(const std::string& name, const void* address, const CallShape& shape, const ImageRefs& images,
                   int width, int height, const ValueSettings& values, CallResult* result) {
    const std::vector<ValueSlot> slots = valueSlots(shape);
    for (const auto& setting : values) {
        bool known = false;
        for (const ValueSlot& s : slots) known = known || s.key == setting.first;
        if (!known) {
            std::string keys;
            for (const ValueSlot& s : slots) keys += (keys.empty() ? "" : ", ") + s.key;
            return fault(kExitUsage, name + " takes no value " + setting.first +
                                         (keys.empty() ? " (it takes no values)" : " (its values: " + keys + ")"));
        }
    }
    if (images.size() != shape.images.size()) return fault(kExitInternal, name + ": images do not match its shape");

    // Storage that the arguments point into, alive until the call returns.
    std::vector<std::vector<const void*>> pointerArrays;
    std::vector<std::vector<uint8_t>> buffers;
    pointerArrays.reserve(shape.args.size());
    buffers.reserve(shape.args.size() * 2);
    std::vector<std::pair<ValueType, std::size_t>> outs;  // type, buffer index

    auto stepOf = [&](int image, int plane) {
        const int64_t bytes = images[std::size_t(image)][std::size_t(plane)].step;
        return shape.stepsInElements ? bytes / pxkcross::sampleUnit(shape.images[std::size_t(image)].type) : bytes;
    };

    std::vector<AbiArgument> args;
    int64_t scratchRow = 0;
    for (std::size_t i = 0; i < shape.args.size(); ++i) {
        const Arg& a = shape.args[i];
        switch (a.kind) {
            case ArgKind::Pointer:
                args.push_back(pxkcross::pointerArgument(images[std::size_t(a.image)][std::size_t(a.plane)].data));
                break;
            case ArgKind::PlanePointers: {
                std::vector<const void*> array;
                for (const PlaneRef& p : images[std::size_t(a.image)]) array.push_back(p.data);
                pointerArrays.push_back(std::move(array));
                args.push_back(pxkcross::pointerArgument(pointerArrays.back().data()));
                break;
            }
            case ArgKind::Step: {
                const int32_t s = static_cast<int32_t>(stepOf(a.image, a.plane < 0 ? 0 : a.plane));
                args.push_back(pxkcross::integerArgument(static_cast<uint64_t>(static_cast<int64_t>(s))));
                break;
            }
            case ArgKind::StepArray:
            case ArgKind::StepArray64: {
                const std::size_t each = a.kind == ArgKind::StepArray ? 4 : 8;
                const std::size_t planes = images[std::size_t(a.image)].size();
                buffers.emplace_back(planes * each);
                for (std::size_t p = 0; p < planes; ++p) {
                    const int64_t s = stepOf(a.image, int(p));
                    if (each == 4) {
                        const int32_t s32 = static_cast<int32_t>(s);
                        std::memcpy(buffers.back().data() + p * 4, &s32, 4);
                    } else {
                        std::memcpy(buffers.back().data() + p * 8, &s, 8);
                    }
                }
                args.push_back(pxkcross::pointerArgument(buffers.back().data()));
                break;
            }
            case ArgKind::Size:
                args.push_back(pxkcross::integerArgument(uint64_t(uint32_t(width)) | (uint64_t(uint32_t(height)) << 32)));
                break;
            case ArgKind::SizeL:
                args.push_back(pxkcross::structArgument(uint64_t(int64_t(width)), uint64_t(int64_t(height))));
                break;
            case ArgKind::WidthHeight:
                args.push_back(pxkcross::integerArgument(uint64_t(int64_t(width))));
                args.push_back(pxkcross::integerArgument(uint64_t(int64_t(height))));
                break;
            case ArgKind::Roi:
                args.push_back(
                    pxkcross::structArgument(0, uint64_t(uint32_t(width)) | (uint64_t(uint32_t(height)) << 32)));
                break;
            case ArgKind::Value:
            case ArgKind::Values: {
                const ValueSlot* slot = nullptr;
                for (const ValueSlot& s : slots) {
                    if (s.arg == int(i)) slot = &s;
                }
                const auto set = values.find(slot->key);
                const std::string text = set != values.end() ? set->second : slot->defaultText;
                const std::vector<std::string> numbers = splitList(text);
                if (int(numbers.size()) != slot->count) {
                    return fault(kExitUsage, name + ": value " + slot->key + " takes " + std::to_string(slot->count) +
                                                 (slot->count == 1 ? " number" : " numbers separated by commas") +
                                                 ", not \"" + text + "\"");
                }
                const int size = pxkcross::valueBytes(slot->type);
                std::vector<uint8_t> bytes(std::size_t(size * slot->count));
                uint64_t word = 0;
                for (int k = 0; k < slot->count; ++k) {
                    double unused;
                    if (!readNumber(slot->type, numbers[std::size_t(k)], &word, &unused)) {
                        return fault(kExitUsage, name + ": value " + slot->key + " needs " +
                                                     (isFloatValue(slot->type) ? "a number" : "an integer") + " of type " +
                                                     pxkcross::valueTypeToken(slot->type) + ", not \"" +
                                                     numbers[std::size_t(k)] + "\"");
                    }
                    std::memcpy(bytes.data() + k * size, &word, std::size_t(size));  // little-endian low bytes
                }
                if (a.kind == ArgKind::Value) {
                    args.push_back(valueArgument(slot->type, word));
                } else {
                    buffers.push_back(std::move(bytes));
                    args.push_back(pxkcross::pointerArgument(buffers.back().data()));
                }
                break;
            }
            case ArgKind::Out:
                buffers.emplace_back(8, 0);
                outs.emplace_back(a.type, buffers.size() - 1);
                args.push_back(pxkcross::pointerArgument(buffers.back().data()));
                break;
            case ArgKind::Scratch:
                scratchRow = a.perPixel * width + a.fixed;
                buffers.emplace_back(std::size_t(scratchRow * a.rows), 0);
                args.push_back(pxkcross::pointerArgument(buffers.back().data()));
                break;
            case ArgKind::ScratchStep:
                args.push_back(pxkcross::integerArgument(uint64_t(scratchRow)));
                break;
        }
    }
    std::string why;
    if (!pxkcross::callWithArguments(address, args, &result->status, &why)) {
        return fault(kExitInternal, name + ": the call cannot be made: " + why);
    }
    result->outs.clear();
    for (const auto& out : outs) result->outs.push_back(outText(out.first, buffers[out.second].data()));
    return Failure{};
}

}  // namespace pxkconv
