#include "abi_call.h"

#include <cstring>

namespace pxkcross {

namespace {

constexpr int kIntegerRegisters = 6;  // rdi rsi rdx rcx r8 r9
constexpr int kSseRegisters = 8;      // xmm0 to xmm7
constexpr int kStackWords = 16;

double bitsAsDouble(uint64_t bits) {
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

// A prototype that fills every argument register and then kStackWords stack slots:
// a call through it puts the six integer words in the integer registers, the eight
// doubles in xmm0 to xmm7 (moved as bits), and the rest on the stack in order, which is
// exactly where a callee with any shorter list of those classes looks for its
// arguments. Surplus registers and slots are ignored by the callee.
using Universal = int32_t (*)(uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, double, double, double,
                              double, double, double, double, double, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t,
                              uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t,
                              uint64_t, uint64_t);

}  // namespace

AbiArgument integerArgument(uint64_t value) {
    AbiArgument a;
    a.word[0] = value;
    return a;
}

AbiArgument pointerArgument(const void* p) { return integerArgument(reinterpret_cast<uintptr_t>(p)); }

AbiArgument floatArgument(float value) {
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    AbiArgument a;
    a.floating = true;
    a.word[0] = bits;
    return a;
}

AbiArgument doubleArgument(double value) {
    AbiArgument a;
    a.floating = true;
    std::memcpy(&a.word[0], &value, sizeof value);
    return a;
}

AbiArgument structArgument(uint64_t low, uint64_t high) {
    AbiArgument a;
    a.words = 2;
    a.word[0] = low;
    a.word[1] = high;
    return a;
}

#if defined(__clang__)
__attribute__((no_sanitize("function")))
#endif
bool callWithArguments(const void* function, const std::vector<AbiArgument>& args, int32_t* result,
                       std::string* error) {
    uint64_t ints[kIntegerRegisters] = {};
    uint64_t sse[kSseRegisters] = {};
    uint64_t stack[kStackWords] = {};
    int nInt = 0, nSse = 0, nStack = 0;
    for (const AbiArgument& a : args) {
        if (a.floating) {
            // A float that finds no register would have to go to the stack between
            // integer words; no export takes that many.
            if (nSse == kSseRegisters) {
                if (error) *error = "more than eight floating-point arguments";
                return false;
            }
            sse[nSse++] = a.word[0];
        } else if (nInt + a.words <= kIntegerRegisters) {
            for (int w = 0; w < a.words; ++w) ints[nInt++] = a.word[w];
        } else {
            // A struct that does not fit in the registers left goes wholly to the
            // stack; later single words may still take the registers left over.
            if (nStack + a.words > kStackWords) {
                if (error) *error = "too many arguments for the stack slots";
                return false;
            }
            for (int w = 0; w < a.words; ++w) stack[nStack++] = a.word[w];
        }
    }
    const Universal call = reinterpret_cast<Universal>(const_cast<void*>(function));
    *result =
        call(ints[0], ints[1], ints[2], ints[3], ints[4], ints[5], bitsAsDouble(sse[0]), bitsAsDouble(sse[1]),
             bitsAsDouble(sse[2]), bitsAsDouble(sse[3]), bitsAsDouble(sse[4]), bitsAsDouble(sse[5]),
             bitsAsDouble(sse[6]), bitsAsDouble(sse[7]), stack[0], stack[1], stack[2], stack[3], stack[4], stack[5],
             stack[6], stack[7], stack[8], stack[9], stack[10], stack[11], stack[12], stack[13], stack[14], stack[15]);
    return true;
}

}  // namespace pxkcross
