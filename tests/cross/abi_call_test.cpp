// Calls through the run-time argument lists reach the callee as a call with the
// matching prototype would: integers, structs in registers and on the stack, floats.
#include "abi_call.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "pxkcc.h"

namespace {

using pxkcross::AbiArgument;
using pxkcross::callWithArguments;
using pxkcross::doubleArgument;
using pxkcross::floatArgument;
using pxkcross::integerArgument;
using pxkcross::pointerArgument;
using pxkcross::structArgument;

struct Seen {
    const void* p = nullptr;
    PxkRect rect{};
    PxkSize size{};
    int32_t step = 0;
    void* q = nullptr;
    int32_t a = 0, b = 0, c = 0;
    float f = 0;
    double d = 0;
    uint8_t alpha = 0;
    PxkSizeL sizeL{};
    int64_t i1 = 0, i2 = 0, i3 = 0, i4 = 0, i5 = 0, last = 0;
    int16_t s = 0;
};
Seen seen;

// Like the demosaicing exports: a rectangle and a size among many integer arguments,
// so that the later ones go to the stack; then floats.
extern "C" __attribute__((noinline)) int32_t takeMany(const void* p, PxkRect rect, PxkSize size, int32_t step, void* q,
                                                      int32_t a, int32_t b, int32_t c, float f, double d,
                                                      uint8_t alpha) {
    seen.p = p;
    seen.rect = rect;
    seen.size = size;
    seen.step = step;
    seen.q = q;
    seen.a = a;
    seen.b = b;
    seen.c = c;
    seen.f = f;
    seen.d = d;
    seen.alpha = alpha;
    return -49;
}

// A 16-byte struct that no longer fits in the registers goes to the stack, and the
// integer after it still takes the last register.
extern "C" __attribute__((noinline)) int32_t structToStack(int64_t i1, int64_t i2, int64_t i3, int64_t i4, int64_t i5,
                                                           PxkSizeL sizeL, int64_t last, int16_t s) {
    seen.i1 = i1;
    seen.i2 = i2;
    seen.i3 = i3;
    seen.i4 = i4;
    seen.i5 = i5;
    seen.sizeL = sizeL;
    seen.last = last;
    seen.s = s;
    return 35;
}

TEST(AbiCall, IntegersStructsAndFloatsArriveInPlace) {
    seen = Seen();
    int x = 0, y = 0;
    const std::vector<AbiArgument> args = {
        pointerArgument(&x),
        structArgument(uint64_t(3) | (uint64_t(4) << 32), uint64_t(17) | (uint64_t(9) << 32)),
        integerArgument(uint64_t(21) | (uint64_t(13) << 32)),
        integerArgument(uint64_t(int64_t(-64))),
        pointerArgument(&y),
        integerArgument(2),
        integerArgument(uint64_t(int64_t(-7))),
        integerArgument(123456),
        floatArgument(1.5f),
        doubleArgument(-2.25),
        integerArgument(0xAB),
    };
    int32_t result = 0;
    std::string error;
    ASSERT_TRUE(callWithArguments(reinterpret_cast<const void*>(&takeMany), args, &result, &error)) << error;
    EXPECT_EQ(result, -49);
    EXPECT_EQ(seen.p, &x);
    EXPECT_EQ(seen.rect.x, 3);
    EXPECT_EQ(seen.rect.y, 4);
    EXPECT_EQ(seen.rect.width, 17);
    EXPECT_EQ(seen.rect.height, 9);
    EXPECT_EQ(seen.size.width, 21);
    EXPECT_EQ(seen.size.height, 13);
    EXPECT_EQ(seen.step, -64);
    EXPECT_EQ(seen.q, &y);
    EXPECT_EQ(seen.a, 2);
    EXPECT_EQ(seen.b, -7);
    EXPECT_EQ(seen.c, 123456);
    EXPECT_EQ(seen.f, 1.5f);
    EXPECT_EQ(seen.d, -2.25);
    EXPECT_EQ(seen.alpha, 0xAB);
}

TEST(AbiCall, AStructThatDoesNotFitGoesWhollyToTheStack) {
    seen = Seen();
    const std::vector<AbiArgument> args = {
        integerArgument(1),  integerArgument(2),
        integerArgument(3),  integerArgument(4),
        integerArgument(5),  structArgument(1920, uint64_t(int64_t(-37))),
        integerArgument(66), integerArgument(uint64_t(int64_t(-300))),
    };
    int32_t result = 0;
    std::string error;
    ASSERT_TRUE(callWithArguments(reinterpret_cast<const void*>(&structToStack), args, &result, &error)) << error;
    EXPECT_EQ(result, 35);
    EXPECT_EQ(seen.i1, 1);
    EXPECT_EQ(seen.i5, 5);
    EXPECT_EQ(seen.sizeL.width, 1920);
    EXPECT_EQ(seen.sizeL.height, -37);
    EXPECT_EQ(seen.last, 66);
    EXPECT_EQ(seen.s, -300);
}

TEST(AbiCall, ListsBeyondItsSlotsAreRefused) {
    std::vector<AbiArgument> floats(9, floatArgument(0.0f));
    int32_t result = 0;
    std::string error;
    EXPECT_FALSE(callWithArguments(reinterpret_cast<const void*>(&takeMany), floats, &result, &error));
    EXPECT_NE(error.find("floating"), std::string::npos) << error;
    std::vector<AbiArgument> ints(6 + 17, integerArgument(0));
    EXPECT_FALSE(callWithArguments(reinterpret_cast<const void*>(&takeMany), ints, &result, &error));
    EXPECT_NE(error.find("stack"), std::string::npos) << error;
}

}  // namespace
