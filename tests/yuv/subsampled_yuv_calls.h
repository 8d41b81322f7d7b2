// The shapes of the RGB -> YUV 4:2:0 and 4:2:2 members that the subsampled harness
// does not call by itself: three source planes with a step each (P3R), and the forms
// without steps (packed source C3P3, planar source P3). For each, how to call it on
// the harness's surfaces and the order of its argument checks; and the readers and
// runners that the 4:2:0 and 4:2:2 tests share.
#ifndef PXKCC_TESTS_YUV_SUBSAMPLED_YUV_CALLS_H
#define PXKCC_TESTS_YUV_SUBSAMPLED_YUV_CALLS_H

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "subsampled_harness.h"

namespace subyuvtest {

using pxktest::Surface;
using subtest::SubsampledExport;

using PlanesWithStepsFn = PxkResult (*)(const uint8_t* const[3], const int32_t[3], uint8_t* const[3],
                                        const int32_t[3], PxkSize);
using PackedWithoutStepsFn = PxkResult (*)(const uint8_t*, uint8_t* const[3], PxkSize);
using PlanesWithoutStepsFn = PxkResult (*)(const uint8_t* const[3], uint8_t* const[3], PxkSize);

inline subtest::SurfaceCall callPlanesWithSteps(PlanesWithStepsFn fn) {
    return [fn](Surface& src, Surface& dst, PxkSize z) {
        const int32_t ss[3] = {src.image(0).step(), src.image(1).step(), src.image(2).step()};
        const int32_t ds[3] = {dst.image(0).step(), dst.image(1).step(), dst.image(2).step()};
        return fn(src.constPlanes(), ss, dst.planes(), ds, z);
    };
}

inline subtest::SurfaceCall callPackedWithoutSteps(PackedWithoutStepsFn fn) {
    return [fn](Surface& src, Surface& dst, PxkSize z) { return fn(src.data(), dst.planes(), z); };
}

inline subtest::SurfaceCall callPlanesWithoutSteps(PlanesWithoutStepsFn fn) {
    return [fn](Surface& src, Surface& dst, PxkSize z) { return fn(src.constPlanes(), dst.planes(), z); };
}

// ---------------------------------------------------------------------------------
// Argument checks
// ---------------------------------------------------------------------------------

// Sizes to try with each missing pointer: the valid one, then every bad one.
inline std::vector<PxkSize> validThenBadSizes(const SubsampledExport& ex) {
    std::vector<PxkSize> sizes = subtest::badSizes(ex);
    sizes.insert(sizes.begin(), subtest::validSize(ex.sampling));
    return sizes;
}

// After the failing calls: the valid size converts and touches every plane.
inline void expectValidCallConverts(const SubsampledExport& ex, subtest::StatusFixture& f) {
    EXPECT_EQ(subtest::callExport(ex, f.src, f.dst, subtest::validSize(ex.sampling)),
              subtest::expectedStatus(ex.sampling, subtest::validSize(ex.sampling).width,
                                      subtest::validSize(ex.sampling).height));
    for (int i = 0; i < f.dst.imageCount(); ++i) EXPECT_FALSE(f.dst.image(i).unchanged()) << "plane " << i;
    EXPECT_TRUE(f.src.unchanged());
}

// (pSrc[3], srcStep[3], pDst[3], dstStep[3], size): the four array pointers, then the
// size, then the entries of pSrc and of pDst. A null entry is reported for a valid
// size only; a bad size wins over it. Steps are not tested.
inline void planesWithStepsStatusChecks(const SubsampledExport& ex, PlanesWithStepsFn fn) {
    subtest::StatusFixture f(ex);
    const uint8_t* const* src = f.src.constPlanes();
    uint8_t* const* dst = f.dst.planes();
    const int32_t ss[3] = {f.src.image(0).step(), f.src.image(1).step(), f.src.image(2).step()};
    const int32_t ds[3] = {f.dst.image(0).step(), f.dst.image(1).step(), f.dst.image(2).step()};
    const int32_t oddSteps[3] = {0, -3, 7};
    const uint8_t* noSrc[3] = {nullptr, nullptr, nullptr};
    uint8_t* noDst[3] = {nullptr, nullptr, nullptr};
    const PxkSize valid = subtest::validSize(ex.sampling);

    for (const PxkSize& z : validThenBadSizes(ex)) {
        SCOPED_TRACE("size " + subtest::sizeText(z));
        EXPECT_EQ(fn(nullptr, ss, dst, ds, z), pxkErrNullPtr);
        EXPECT_EQ(fn(src, nullptr, dst, ds, z), pxkErrNullPtr);
        EXPECT_EQ(fn(src, ss, nullptr, ds, z), pxkErrNullPtr);
        EXPECT_EQ(fn(src, ss, dst, nullptr, z), pxkErrNullPtr);
        EXPECT_EQ(fn(nullptr, nullptr, nullptr, nullptr, z), pxkErrNullPtr);
        // An array pointer missing wins over null entries.
        EXPECT_EQ(fn(noSrc, nullptr, noDst, ds, z), pxkErrNullPtr);
        EXPECT_EQ(fn(noSrc, ss, noDst, nullptr, z), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE("null entry " + std::to_string(i));
        const uint8_t* srcWithNull[3] = {src[0], src[1], src[2]};
        uint8_t* dstWithNull[3] = {dst[0], dst[1], dst[2]};
        srcWithNull[i] = nullptr;
        dstWithNull[i] = nullptr;
        EXPECT_EQ(fn(srcWithNull, ss, dst, ds, valid), pxkErrNullPtr);
        EXPECT_EQ(fn(src, ss, dstWithNull, ds, valid), pxkErrNullPtr);
        for (const PxkSize& z : subtest::badSizes(ex)) {
            EXPECT_EQ(fn(srcWithNull, ss, dst, ds, z), pxkErrSize) << subtest::sizeText(z);
            EXPECT_EQ(fn(src, ss, dstWithNull, ds, z), pxkErrSize) << subtest::sizeText(z);
        }
        EXPECT_TRUE(f.nothingWritten());
    }
    EXPECT_EQ(fn(noSrc, ss, noDst, ds, valid), pxkErrNullPtr);
    for (const PxkSize& z : subtest::badSizes(ex)) {
        SCOPED_TRACE("size " + subtest::sizeText(z));
        EXPECT_EQ(fn(src, ss, dst, ds, z), pxkErrSize);
        EXPECT_EQ(fn(noSrc, ss, noDst, ds, z), pxkErrSize);
        EXPECT_EQ(fn(src, oddSteps, dst, oddSteps, z), pxkErrSize);
    }
    EXPECT_TRUE(f.nothingWritten());
    expectValidCallConverts(ex, f);
}

// (pSrc, pDst[3], size): pSrc, pDst and each of its entries, then the size. A null
// entry is reported whatever the size.
inline void packedWithoutStepsStatusChecks(const SubsampledExport& ex, PackedWithoutStepsFn fn) {
    subtest::StatusFixture f(ex);
    const uint8_t* src = f.src.data();
    uint8_t* const* dst = f.dst.planes();
    uint8_t* noDst[3] = {nullptr, nullptr, nullptr};
    for (const PxkSize& z : validThenBadSizes(ex)) {
        SCOPED_TRACE("size " + subtest::sizeText(z));
        EXPECT_EQ(fn(nullptr, dst, z), pxkErrNullPtr);
        EXPECT_EQ(fn(src, nullptr, z), pxkErrNullPtr);
        EXPECT_EQ(fn(nullptr, nullptr, z), pxkErrNullPtr);
        EXPECT_EQ(fn(src, noDst, z), pxkErrNullPtr);
        for (int i = 0; i < 3; ++i) {
            uint8_t* withNull[3] = {dst[0], dst[1], dst[2]};
            withNull[i] = nullptr;
            EXPECT_EQ(fn(src, withNull, z), pxkErrNullPtr) << "null entry " << i;
        }
        EXPECT_TRUE(f.nothingWritten());
    }
    for (const PxkSize& z : subtest::badSizes(ex)) EXPECT_EQ(fn(src, dst, z), pxkErrSize) << subtest::sizeText(z);
    EXPECT_TRUE(f.nothingWritten());
    expectValidCallConverts(ex, f);
}

// (pSrc[3], pDst[3], size): pSrc and pDst, then the size, then the entries. A bad
// size wins over a null entry.
inline void planesWithoutStepsStatusChecks(const SubsampledExport& ex, PlanesWithoutStepsFn fn) {
    subtest::StatusFixture f(ex);
    const uint8_t* const* src = f.src.constPlanes();
    uint8_t* const* dst = f.dst.planes();
    const uint8_t* noSrc[3] = {nullptr, nullptr, nullptr};
    uint8_t* noDst[3] = {nullptr, nullptr, nullptr};
    const PxkSize valid = subtest::validSize(ex.sampling);
    for (const PxkSize& z : validThenBadSizes(ex)) {
        SCOPED_TRACE("size " + subtest::sizeText(z));
        EXPECT_EQ(fn(nullptr, dst, z), pxkErrNullPtr);
        EXPECT_EQ(fn(src, nullptr, z), pxkErrNullPtr);
        EXPECT_EQ(fn(nullptr, nullptr, z), pxkErrNullPtr);
        EXPECT_EQ(fn(nullptr, noDst, z), pxkErrNullPtr);
        EXPECT_EQ(fn(noSrc, nullptr, z), pxkErrNullPtr);
        EXPECT_TRUE(f.nothingWritten());
    }
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE("null entry " + std::to_string(i));
        const uint8_t* srcWithNull[3] = {src[0], src[1], src[2]};
        uint8_t* dstWithNull[3] = {dst[0], dst[1], dst[2]};
        srcWithNull[i] = nullptr;
        dstWithNull[i] = nullptr;
        EXPECT_EQ(fn(srcWithNull, dst, valid), pxkErrNullPtr);
        EXPECT_EQ(fn(src, dstWithNull, valid), pxkErrNullPtr);
        for (const PxkSize& z : subtest::badSizes(ex)) {
            EXPECT_EQ(fn(srcWithNull, dst, z), pxkErrSize) << subtest::sizeText(z);
            EXPECT_EQ(fn(src, dstWithNull, z), pxkErrSize) << subtest::sizeText(z);
        }
        EXPECT_TRUE(f.nothingWritten());
    }
    EXPECT_EQ(fn(noSrc, noDst, valid), pxkErrNullPtr);
    for (const PxkSize& z : subtest::badSizes(ex)) {
        EXPECT_EQ(fn(src, dst, z), pxkErrSize) << subtest::sizeText(z);
        EXPECT_EQ(fn(noSrc, noDst, z), pxkErrSize) << subtest::sizeText(z);
    }
    EXPECT_TRUE(f.nothingWritten());
    expectValidCallConverts(ex, f);
}

// ---------------------------------------------------------------------------------
// Reading results, running given pixels
// ---------------------------------------------------------------------------------

// Y of pixel x and U, V of chroma column c in row y, from planes or from Y0 U Y1 V.
// (A packed destination is an image of two-byte pixels: Y, then U or V.)
inline int lumaAt(const Surface& d, int x, int y) { return d.at(x, y, 0); }
inline int uAt(const SubsampledExport& ex, const Surface& d, int c, int y) {
    return ex.dest == subtest::DestLayout::C2 ? d.at(2 * c, y, 1) : d.at(c, y, 1);
}
inline int vAt(const SubsampledExport& ex, const Surface& d, int c, int y) {
    return ex.dest == subtest::DestLayout::C2 ? d.at(2 * c + 1, y, 1) : d.at(c, y, 2);
}

// The same pixel everywhere in a width x height region, converted alone.
inline Surface convertUniform(const SubsampledExport& ex, int width, int height, subtest::Rgb v, uint8_t fill = 0xEE) {
    return subtest::convertPixels(ex, subtest::uniformRows(width, height, v),
                                  subtest::expectedStatus(ex.sampling, width, height), fill);
}

}  // namespace subyuvtest

#endif
