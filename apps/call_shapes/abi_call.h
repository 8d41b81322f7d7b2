// Calling a C function whose argument list is known only at run time, on x86-64 Linux
// (System V calling convention): each argument is given as the eightbytes the
// convention passes it in, and lands in the register or stack slot the compiler would
// have put it in for a matching prototype.
#ifndef PXKCC_CALL_SHAPES_ABI_CALL_H
#define PXKCC_CALL_SHAPES_ABI_CALL_H

#include <cstdint>
#include <string>
#include <vector>

namespace pxkcross {

struct AbiArgument {
    // Integer class (pointers, integers, structs of integers such as PxkSize and
    // PxkRect) or SSE class (float, double).
    bool floating = false;
    // One eightbyte, or two for a 16-byte struct (PxkRect, PxkSizeL). A float sits in
    // the low 32 bits; integers narrower than 64 bits are sign- or zero-extended.
    int words = 1;
    uint64_t word[2] = {0, 0};
};

AbiArgument integerArgument(uint64_t value);
AbiArgument pointerArgument(const void* p);
AbiArgument floatArgument(float value);
AbiArgument doubleArgument(double value);
AbiArgument structArgument(uint64_t low, uint64_t high);  // a 16-byte struct of integers

// Calls `function`, which returns a 32-bit integer, with `args`. Returns false (and
// says why) if the list does not fit the calls this can make.
bool callWithArguments(const void* function, const std::vector<AbiArgument>& args, int32_t* result, std::string* error);

}  // namespace pxkcross

#endif
