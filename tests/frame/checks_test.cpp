// Argument-check helpers: each status, and PXK_CHECK returning the first failure.
#include <gtest/gtest.h>

#include "frame/checks.h"

namespace {

TEST(Checks, PointersReportNullAnywhere) {
    int a = 0, b = 0;
    EXPECT_EQ(pxk::checkPtrs(&a, &b), pxkOk);
    EXPECT_EQ(pxk::checkPtrs(static_cast<int*>(nullptr), &b), pxkErrNullPtr);
    EXPECT_EQ(pxk::checkPtrs(&a, static_cast<const char*>(nullptr)), pxkErrNullPtr);
}

TEST(Checks, PlaneEntriesReportNullUpToTheCount) {
    uint8_t x = 0;
    uint8_t* planes[3] = {&x, &x, nullptr};
    EXPECT_EQ(pxk::checkPlanes(planes, 2), pxkOk);
    EXPECT_EQ(pxk::checkPlanes(planes, 3), pxkErrNullPtr);
    planes[0] = nullptr;
    EXPECT_EQ(pxk::checkPlanes(planes, 1), pxkErrNullPtr);
}

TEST(Checks, SizeAgainstItsMinimum) {
    EXPECT_EQ(pxk::checkSize(PxkSize{1, 1}, 1, 1), pxkOk);
    EXPECT_EQ(pxk::checkSize(PxkSize{0, 1}, 1, 1), pxkErrSize);
    EXPECT_EQ(pxk::checkSize(PxkSize{1, 0}, 1, 1), pxkErrSize);
    EXPECT_EQ(pxk::checkSize(PxkSize{-5, 3}, 1, 1), pxkErrSize);
    EXPECT_EQ(pxk::checkSize(PxkSize{3, 2}, 4, 1), pxkErrSize);
    EXPECT_EQ(pxk::checkSize(PxkSize{4, 1}, 4, 2), pxkErrSize);
    EXPECT_EQ(pxk::checkSize(PxkSize{4, 2}, 4, 2), pxkOk);
}

TEST(Checks, StepsBelowOne) {
    EXPECT_EQ(pxk::checkSteps(1, 7), pxkOk);
    EXPECT_EQ(pxk::checkSteps(1, 0), pxkErrStep);
    EXPECT_EQ(pxk::checkSteps(-3), pxkErrStep);
}

PxkResult checkedCall(const int* p, PxkSize size, int* reached) {
    PXK_CHECK(pxk::checkPtrs(p));
    PXK_CHECK(pxk::checkSize(size, 1, 1));
    *reached = 1;
    return pxkOk;
}

TEST(Checks, FirstFailureEndsTheCall) {
    int v = 0, reached = 0;
    EXPECT_EQ(checkedCall(nullptr, PxkSize{0, 0}, &reached), pxkErrNullPtr);
    EXPECT_EQ(checkedCall(&v, PxkSize{0, 0}, &reached), pxkErrSize);
    EXPECT_EQ(reached, 0);
    EXPECT_EQ(checkedCall(&v, PxkSize{1, 1}, &reached), pxkOk);
    EXPECT_EQ(reached, 1);
}

}  // namespace
