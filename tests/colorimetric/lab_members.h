// The Lab exports as test members: their calls, their reference walks (from
// reference_lab.h) and the contents their sources are filled with.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include "lab_harness.h"
#include "pxkcc.h"
#include "reference_lab.h"

namespace labtest {

inline constexpr Side k8u{false, 1};
inline constexpr Side k16u{false, 2};
inline constexpr Side k32f{false, 4};
inline constexpr Side kPlanes32f{true, 4};
inline constexpr Side kPlanes64f{true, 8};

// Channel order of the RGB side: where red is.
enum class Order { Rgb, Bgr };
inline int red(Order o) { return o == Order::Rgb ? 0 : 2; }

// ---- calls ----

template <class S, class D>
Call packedCall(PxkResult (*fn)(const S*, int32_t, D*, int32_t, PxkSize)) {
    return [fn](Images& s, Images& d, PxkSize size, const Breakage& b) {
        return fn(b.nullSrc ? nullptr : reinterpret_cast<const S*>(s.data()), s.step(),
                  b.nullDst ? nullptr : reinterpret_cast<D*>(d.data()), d.step(), size);
    };
}

// The plane arrays of both sides, with the breakage applied.
template <class T>
struct PlaneArrays {
    const T* src[3];
    T* dst[3];
    bool nullSrc, nullDst;
    PlaneArrays(Images& s, Images& d, const Breakage& b) : nullSrc(b.nullSrc), nullDst(b.nullDst) {
        for (int i = 0; i < 3; ++i) {
            src[i] = i == b.nullSrcPlane ? nullptr : reinterpret_cast<const T*>(s.planes()[i]);
            dst[i] = i == b.nullDstPlane ? nullptr : reinterpret_cast<T*>(d.planes()[i]);
        }
    }
    const T* const* srcArg() const { return nullSrc ? nullptr : src; }
    T* const* dstArg() const { return nullDst ? nullptr : dst; }
};

template <class T>
using PlanesFn = PxkResult (*)(const T* const[3], const int32_t[3], T* const[3], const int32_t[3], PxkSize);
template <class T>
using PlanesLFn = PxkResult (*)(const T* const[3], const int64_t[3], T* const[3], const int64_t[3], PxkSizeL);

template <class T>
Call planesCall(PlanesFn<T> fn) {
    return [fn](Images& s, Images& d, PxkSize size, const Breakage& b) {
        PlaneArrays<T> a(s, d, b);
        return fn(a.srcArg(), b.nullSrcSteps ? nullptr : s.steps(), a.dstArg(), b.nullDstSteps ? nullptr : d.steps(),
                  size);
    };
}
template <class T>
Call planesLCall(PlanesLFn<T> fn) {
    return [fn](Images& s, Images& d, PxkSize size, const Breakage& b) {
        PlaneArrays<T> a(s, d, b);
        return fn(a.srcArg(), b.nullSrcSteps ? nullptr : s.steps64(), a.dstArg(),
                  b.nullDstSteps ? nullptr : d.steps64(), PxkSizeL{size.width, size.height});
    };
}

// ---- reference walks ----

// Forward: RGB samples S (in the side's order) to Lab samples D, by `pixel`.
template <class S, class D, class Pixel>
Reference forwardWalk(Order order, Pixel pixel) {
    return [order, pixel](const Images& src, Images& dst, int width, int height) {
        const int r = red(order);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const auto lab = pixel(src.get<S>(x, y, r), src.get<S>(x, y, 1), src.get<S>(x, y, 2 - r));
                for (int c = 0; c < 3; ++c) dst.set<D>(x, y, c, D(lab.v[c]));
            }
        }
    };
}

// Backward: Lab samples S to RGB samples D (in the side's order); `pixel` is told
// whether a pixel lies in the last width % group columns.
template <class S, class D, class Pixel>
Reference backwardWalk(Order order, int group, Pixel pixel) {
    return [order, group, pixel](const Images& src, Images& dst, int width, int height) {
        const int r = red(order);
        const int mainColumns = width - width % group;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const auto rgb = pixel(src.get<S>(x, y, 0), src.get<S>(x, y, 1), src.get<S>(x, y, 2), x >= mainColumns);
                dst.set<D>(x, y, r, D(rgb.v[0]));
                dst.set<D>(x, y, 1, D(rgb.v[1]));
                dst.set<D>(x, y, 2 - r, D(rgb.v[2]));
            }
        }
    };
}

// ---- source contents ----

// Integer sources keep their random bytes.
inline void keepRandom(Images&, int, int, Rng&) {}

// Floats of RGB: mostly in [-0.1, 1.3], one in eight near the threshold of the curve.
template <class T>
void fillRgbFloats(Images& src, int width, int height, Rng& rng) {
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < 3; ++c)
                src.set<T>(x, y, c, (rng.next32() & 7) == 0 ? uniform<T>(rng, 0.0, 0.03) : uniform<T>(rng, -0.1, 1.3));
}

// Floats of Lab: L in [-5, 105], a and b in [-140, 140].
template <class T>
void fillLabFloats(Images& src, int width, int height, Rng& rng) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            src.set<T>(x, y, 0, uniform<T>(rng, -5.0, 105.0));
            src.set<T>(x, y, 1, uniform<T>(rng, -140.0, 140.0));
            src.set<T>(x, y, 2, uniform<T>(rng, -140.0, 140.0));
        }
    }
}

// ---- the members ----

inline reflab::Triple<float> forward32fPixel(float r, float g, float b) { return reflab::forward32f(r, g, b); }
inline reflab::Triple<uint8_t> forward8uPixel(uint8_t r, uint8_t g, uint8_t b) {
    return reflab::codes8u(reflab::forward8u(r, g, b));
}
inline reflab::Triple<uint16_t> forward16uPixel(uint8_t r, uint8_t g, uint8_t b) {
    return reflab::codes16u(reflab::forward8u(r, g, b));
}
inline reflab::Triple<float> backward32fPixel(float l, float a, float b, bool) { return reflab::backward32f(l, a, b); }
inline reflab::Triple<double> backward64fPixel(double l, double a, double b, bool) {
    return reflab::backward64f(l, a, b);
}

inline Member rgbToLab8u(const std::string& name, PxkResult (*fn)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize),
                         Order order) {
    return Member{name, k8u, k8u, packedCall(fn), forwardWalk<uint8_t, uint8_t>(order, forward8uPixel), keepRandom};
}
inline Member labToRgb8u(const std::string& name, PxkResult (*fn)(const uint8_t*, int32_t, uint8_t*, int32_t, PxkSize),
                         Order order) {
    return Member{name, k8u, k8u, packedCall(fn), backwardWalk<uint8_t, uint8_t>(order, 4, reflab::backward8u),
                  keepRandom};
}
inline Member rgbToLab32f(const std::string& name, PxkResult (*fn)(const float*, int32_t, float*, int32_t, PxkSize),
                          Order order) {
    return Member{name, k32f, k32f, packedCall(fn), forwardWalk<float, float>(order, forward32fPixel),
                  fillRgbFloats<float>};
}
inline Member labToRgb32f(const std::string& name, PxkResult (*fn)(const float*, int32_t, float*, int32_t, PxkSize),
                          Order order) {
    return Member{name, k32f, k32f, packedCall(fn), backwardWalk<float, float>(order, 1, backward32fPixel),
                  fillLabFloats<float>};
}

inline const Member kRgbToLab8u = rgbToLab8u("RGBToLab_8u_C3R", pxkiRGBToLab_8u_C3R, Order::Rgb);
inline const Member kBgrToLab8u = rgbToLab8u("BGRToLab_8u_C3R", pxkiBGRToLab_8u_C3R, Order::Bgr);
inline const Member kBgrToLab8u16u{"BGRToLab_8u16u_C3R", k8u, k16u, packedCall(pxkiBGRToLab_8u16u_C3R),
                                   forwardWalk<uint8_t, uint16_t>(Order::Bgr, forward16uPixel), keepRandom};
inline const Member kRgbToLab32f = rgbToLab32f("RGBToLab_32f_C3R", pxkiRGBToLab_32f_C3R, Order::Rgb);
inline const Member kBgrToLab32f = rgbToLab32f("BGRToLab_32f_C3R", pxkiBGRToLab_32f_C3R, Order::Bgr);
inline const Member kLabToRgb8u = labToRgb8u("LabToRGB_8u_C3R", pxkiLabToRGB_8u_C3R, Order::Rgb);
inline const Member kLabToBgr8u = labToRgb8u("LabToBGR_8u_C3R", pxkiLabToBGR_8u_C3R, Order::Bgr);
inline const Member kLabToBgr16u8u{"LabToBGR_16u8u_C3R", k16u, k8u, packedCall(pxkiLabToBGR_16u8u_C3R),
                                   backwardWalk<uint16_t, uint8_t>(Order::Bgr, 4, reflab::backward16u8u), keepRandom};
inline const Member kLabToRgb32f = labToRgb32f("LabToRGB_32f_C3R", pxkiLabToRGB_32f_C3R, Order::Rgb);
inline const Member kLabToBgr32f = labToRgb32f("LabToBGR_32f_C3R", pxkiLabToBGR_32f_C3R, Order::Bgr);

// A planar member (plain, or _L with its 64-bit steps and size): forward members
// read RGB floats, backward members Lab floats.
template <class T, class Fn>
Member planesMember(const std::string& name, Fn fn, bool forward) {
    const Side side = sizeof(T) == 4 ? kPlanes32f : kPlanes64f;
    Call call;
    if constexpr (std::is_same_v<Fn, PlanesFn<T>>) {
        call = planesCall<T>(fn);
    } else {
        call = planesLCall<T>(fn);
    }
    if (forward) {
        Reference walk;
        if constexpr (sizeof(T) == 4) {
            walk = forwardWalk<T, T>(Order::Rgb, forward32fPixel);
        } else {
            walk = forwardWalk<T, T>(Order::Rgb, reflab::forward64f);
        }
        return Member{name, side, side, call, walk, fillRgbFloats<T>};
    }
    Reference walk;
    if constexpr (sizeof(T) == 4) {
        walk = backwardWalk<T, T>(Order::Rgb, 1, backward32fPixel);
    } else {
        walk = backwardWalk<T, T>(Order::Rgb, 1, backward64fPixel);
    }
    return Member{name, side, side, call, walk, fillLabFloats<T>};
}

inline const Member kRgbToLab32fP3 = planesMember<float>("RGBToLab_32f_P3R", pxkiRGBToLab_32f_P3R, true);
inline const Member kRgbToLab32fP3L = planesMember<float>("RGBToLab_32f_P3R_L", pxkiRGBToLab_32f_P3R_L, true);
inline const Member kRgbToLab64fP3 = planesMember<double>("RGBToLab_64f_P3R", pxkiRGBToLab_64f_P3R, true);
inline const Member kRgbToLab64fP3L = planesMember<double>("RGBToLab_64f_P3R_L", pxkiRGBToLab_64f_P3R_L, true);
inline const Member kLabToRgb32fP3 = planesMember<float>("LabToRGB_32f_P3R", pxkiLabToRGB_32f_P3R, false);
inline const Member kLabToRgb32fP3L = planesMember<float>("LabToRGB_32f_P3R_L", pxkiLabToRGB_32f_P3R_L, false);
inline const Member kLabToRgb64fP3 = planesMember<double>("LabToRGB_64f_P3R", pxkiLabToRGB_64f_P3R, false);
inline const Member kLabToRgb64fP3L = planesMember<double>("LabToRGB_64f_P3R_L", pxkiLabToRGB_64f_P3R_L, false);

}  // namespace labtest
