// Built against the installed headers and library: the strip helper splits a call
// into strips whose bytes are those of one call.
#include <pxkcc_strips.h>

#include <cstdio>
#include <functional>
#include <vector>

int main() {
    const int32_t w = 16, h = 10;
    std::vector<uint8_t> rgb(3 * w * h), one(3 * w * h), split(3 * w * h);
    for (std::size_t i = 0; i < rgb.size(); ++i) rgb[i] = uint8_t(i * 7);
    if (pxkiRGBToYCbCr_8u_C3R(rgb.data(), 3 * w, one.data(), 3 * w, PxkSize{w, h}) != pxkOk) return 1;
    auto pool = [](std::function<void()> task) { task(); };
    const PxkResult r = pxkcc::runInStrips("pxkiRGBToYCbCr_8u_C3R", h, 3, pool, [&](const pxkcc::Strip& s) {
        return pxkiRGBToYCbCr_8u_C3R(pxkcc::stripRow(rgb.data(), 3 * w, s), 3 * w,
                                     pxkcc::stripRow(split.data(), 3 * w, s), 3 * w, PxkSize{w, s.height});
    });
    if (r != pxkOk || split != one) {
        std::printf("strips differ from one call\n");
        return 1;
    }
    std::printf("strips: the bytes of one call\n");
    return 0;
}
