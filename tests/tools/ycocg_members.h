// The 26 YCoCg members as the tests see them: the name, how to call it with untyped
// pointers, its rule for the reference model, its packed layout and its size check.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "ycocg_reference.h"

namespace ycocgtest {

// Arguments of one call. The forward members read packedSrc and write the planes of
// planeDst; the inverse members read planeSrc and write packedDst. A null array
// pointer is passed as null.
struct Args {
    const void* packedSrc = nullptr;
    const void* const* planeSrc = nullptr;
    void* packedDst = nullptr;
    void* const* planeDst = nullptr;
    int32_t srcStep = 0;
    int32_t dstStep = 0;
    PxkSize size{0, 0};
    int32_t alpha = 0;
};

using Call = PxkResult (*)(const Args&);

struct MemberInfo {
    const char* name;
    Call call;
    ycocgref::Rule rule;
    int channels;     // samples a packed pixel, 3 or 4
    bool checksSize;  // refuses a width or height below 1
};

template <class T>
T* const* planesAs(void* const* p, T* (&buf)[3]) {
    if (p == nullptr) return nullptr;
    for (int i = 0; i < 3; ++i) buf[i] = static_cast<T*>(p[i]);
    return buf;
}
template <class T>
const T* const* planesAs(const void* const* p, const T* (&buf)[3]) {
    if (p == nullptr) return nullptr;
    for (int i = 0; i < 3; ++i) buf[i] = static_cast<const T*>(p[i]);
    return buf;
}

#define YCOCG_FWD(fn, S, D)                                                                                \
    [](const Args& a) -> PxkResult {                                                                       \
        D* buf[3];                                                                                         \
        return fn(static_cast<const S*>(a.packedSrc), a.srcStep, planesAs<D>(a.planeDst, buf), a.dstStep, \
                  a.size);                                                                                 \
    }
#define YCOCG_INV(fn, S, D)                                                                                  \
    [](const Args& a) -> PxkResult {                                                                         \
        const S* buf[3];                                                                                     \
        return fn(planesAs<S>(a.planeSrc, buf), a.srcStep, static_cast<D*>(a.packedDst), a.dstStep, a.size); \
    }
#define YCOCG_INV_ALPHA(fn, S, D)                                                                          \
    [](const Args& a) -> PxkResult {                                                                       \
        const S* buf[3];                                                                                   \
        return fn(planesAs<S>(a.planeSrc, buf), a.srcStep, static_cast<D*>(a.packedDst), a.dstStep, a.size, \
                  static_cast<D>(a.alpha));                                                                \
    }

inline const std::vector<MemberInfo>& members() {
    using ycocgref::Family;
    // Rule: family, forward, arithmetic bits, packed bits, plane bits, red first,
    // vector columns saturate.
    static const std::vector<MemberInfo> list = {
        {"BGRToYCoCg_8u16s_C3P3R", YCOCG_FWD(pxkiBGRToYCoCg_8u16s_C3P3R, uint8_t, int16_t),
         {Family::Plain, true, 16, 8, 16, false, false}, 3, true},
        {"BGRToYCoCg_8u16s_C4P3R", YCOCG_FWD(pxkiBGRToYCoCg_8u16s_C4P3R, uint8_t, int16_t),
         {Family::Plain, true, 16, 8, 16, false, false}, 4, true},
        {"BGRToYCoCg_Rev_8u16s_C3P3R", YCOCG_FWD(pxkiBGRToYCoCg_Rev_8u16s_C3P3R, uint8_t, int16_t),
         {Family::Rev, true, 16, 8, 16, false, false}, 3, true},
        {"BGRToYCoCg_Rev_8u16s_C4P3R", YCOCG_FWD(pxkiBGRToYCoCg_Rev_8u16s_C4P3R, uint8_t, int16_t),
         {Family::Rev, true, 16, 8, 16, false, false}, 4, true},
        {"RGBToYCoCg_8u_C3P3R", YCOCG_FWD(pxkiRGBToYCoCg_8u_C3P3R, uint8_t, uint8_t),
         {Family::Offset, true, 16, 8, 8, true, false}, 3, true},
        {"SBGRToYCoCg_16s32s_C3P3R", YCOCG_FWD(pxkiSBGRToYCoCg_16s32s_C3P3R, int16_t, int32_t),
         {Family::Plain, true, 32, 16, 32, false, false}, 3, true},
        {"SBGRToYCoCg_16s32s_C4P3R", YCOCG_FWD(pxkiSBGRToYCoCg_16s32s_C4P3R, int16_t, int32_t),
         {Family::Plain, true, 32, 16, 32, false, false}, 4, false},
        {"SBGRToYCoCg_16s_C3P3R", YCOCG_FWD(pxkiSBGRToYCoCg_16s_C3P3R, int16_t, int16_t),
         {Family::Plain, true, 32, 16, 16, false, true}, 3, true},
        {"SBGRToYCoCg_16s_C4P3R", YCOCG_FWD(pxkiSBGRToYCoCg_16s_C4P3R, int16_t, int16_t),
         {Family::Plain, true, 32, 16, 16, false, true}, 4, true},
        {"SBGRToYCoCg_Rev_16s32s_C3P3R", YCOCG_FWD(pxkiSBGRToYCoCg_Rev_16s32s_C3P3R, int16_t, int32_t),
         {Family::Rev, true, 32, 16, 32, false, false}, 3, true},
        {"SBGRToYCoCg_Rev_16s32s_C4P3R", YCOCG_FWD(pxkiSBGRToYCoCg_Rev_16s32s_C4P3R, int16_t, int32_t),
         {Family::Rev, true, 32, 16, 32, false, false}, 4, false},
        {"SBGRToYCoCg_Rev_16s_C3P3R", YCOCG_FWD(pxkiSBGRToYCoCg_Rev_16s_C3P3R, int16_t, int16_t),
         {Family::Rev, true, 16, 16, 16, false, false}, 3, false},
        {"SBGRToYCoCg_Rev_16s_C4P3R", YCOCG_FWD(pxkiSBGRToYCoCg_Rev_16s_C4P3R, int16_t, int16_t),
         {Family::Rev, true, 16, 16, 16, false, false}, 4, false},
        {"YCoCgToBGR_16s8u_P3C3R", YCOCG_INV(pxkiYCoCgToBGR_16s8u_P3C3R, int16_t, uint8_t),
         {Family::Plain, false, 16, 8, 16, false, false}, 3, false},
        {"YCoCgToBGR_16s8u_P3C4R", YCOCG_INV_ALPHA(pxkiYCoCgToBGR_16s8u_P3C4R, int16_t, uint8_t),
         {Family::Plain, false, 16, 8, 16, false, false}, 4, false},
        {"YCoCgToBGR_Rev_16s8u_P3C3R", YCOCG_INV(pxkiYCoCgToBGR_Rev_16s8u_P3C3R, int16_t, uint8_t),
         {Family::Rev, false, 16, 8, 16, false, false}, 3, false},
        {"YCoCgToBGR_Rev_16s8u_P3C4R", YCOCG_INV_ALPHA(pxkiYCoCgToBGR_Rev_16s8u_P3C4R, int16_t, uint8_t),
         {Family::Rev, false, 16, 8, 16, false, false}, 4, false},
        {"YCoCgToRGB_8u_P3C3R", YCOCG_INV(pxkiYCoCgToRGB_8u_P3C3R, uint8_t, uint8_t),
         {Family::Offset, false, 16, 8, 8, true, false}, 3, false},
        {"YCoCgToSBGR_16s_P3C3R", YCOCG_INV(pxkiYCoCgToSBGR_16s_P3C3R, int16_t, int16_t),
         {Family::Plain, false, 16, 16, 16, false, false}, 3, false},
        {"YCoCgToSBGR_16s_P3C4R", YCOCG_INV_ALPHA(pxkiYCoCgToSBGR_16s_P3C4R, int16_t, int16_t),
         {Family::Plain, false, 16, 16, 16, false, false}, 4, true},
        {"YCoCgToSBGR_32s16s_P3C3R", YCOCG_INV(pxkiYCoCgToSBGR_32s16s_P3C3R, int32_t, int16_t),
         {Family::Plain, false, 32, 16, 32, false, false}, 3, true},
        {"YCoCgToSBGR_32s16s_P3C4R", YCOCG_INV_ALPHA(pxkiYCoCgToSBGR_32s16s_P3C4R, int32_t, int16_t),
         {Family::Plain, false, 32, 16, 32, false, false}, 4, true},
        {"YCoCgToSBGR_Rev_16s_P3C3R", YCOCG_INV(pxkiYCoCgToSBGR_Rev_16s_P3C3R, int16_t, int16_t),
         {Family::Rev, false, 16, 16, 16, false, false}, 3, false},
        {"YCoCgToSBGR_Rev_16s_P3C4R", YCOCG_INV_ALPHA(pxkiYCoCgToSBGR_Rev_16s_P3C4R, int16_t, int16_t),
         {Family::Rev, false, 16, 16, 16, false, false}, 4, false},
        {"YCoCgToSBGR_Rev_32s16s_P3C3R", YCOCG_INV(pxkiYCoCgToSBGR_Rev_32s16s_P3C3R, int32_t, int16_t),
         {Family::Rev, false, 32, 16, 32, false, false}, 3, false},
        {"YCoCgToSBGR_Rev_32s16s_P3C4R", YCOCG_INV_ALPHA(pxkiYCoCgToSBGR_Rev_32s16s_P3C4R, int32_t, int16_t),
         {Family::Rev, false, 32, 16, 32, false, false}, 4, false},
    };
    return list;
}

#undef YCOCG_FWD
#undef YCOCG_INV
#undef YCOCG_INV_ALPHA

inline const MemberInfo& member(const std::string& name) {
    for (const MemberInfo& m : members()) {
        if (name == m.name) return m;
    }
    throw std::string("no member ") + name;
}

}  // namespace ycocgtest
