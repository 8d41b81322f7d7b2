// pxkcc_demo: converts a built-in test picture from RGB to studio-range YCbCr and
// back with every pair of matching exports, writes the planes and the round trips
// as PGM/PPM files, and prints the round-trip error and the speed of each call.
//
//   pxkcc_demo [output_dir] [--size=WxH]     (defaults: demo_out, 961x721)
//
// Exit status: 0 on success, 1 if any call returned an error status, 2 on a usage
// or file error.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "export_shapes.h"
#include "image_view.h"
#include "ppm.h"
#include "pxkcc.h"
#include "test_image.h"

namespace {

using demo::Buffer;
using demo::View;

// The three forms of the test picture that the forward exports read.
struct Sources {
    Buffer rgb;     // packed R,G,B
    Buffer rgba;    // packed R,G,B,A
    Buffer planar;  // R, G and B planes
};

enum class Input { Rgb, Rgba, Planar };
enum class Alpha {
    None,       // no 4-byte destination
    Unwritten,  // 4-byte destinations: the alpha byte must keep what was there
    Argument    // the inverse writes its alpha argument
};

constexpr uint8_t kAlphaMarkYCbCr = 0xA5;  // pre-filled alpha of a 4-byte YCbCr image
constexpr uint8_t kAlphaMarkRgb = 0x5A;    // pre-filled alpha of a 4-byte RGB result
constexpr uint8_t kAlphaArgument = 200;    // alpha passed to the C4 writers

using Call = PxkResult (*)(const Buffer& src, Buffer& dst);

// One round trip: RGB -> YCbCr by `forward`, back by `inverse`.
struct Pair {
    const char* key;      // file name prefix
    const char* forward;  // export names, for the table
    const char* inverse;
    Input input;
    int ycbcrBytes;       // 3 or 4 for a packed YCbCr image, 0 for planes
    int rgbBytes;         // 3 or 4 for a packed result, 0 for planes
    bool bgr;             // the result is B,G,R
    Alpha alpha;
    Call runForward;
    Call runInverse;
};

using shapes::packedToPacked;
using shapes::packedToPlanar;
using shapes::planarToPacked;
using shapes::planarToPlanar;

template <shapes::PlanarToPackedAlpha F>
PxkResult planarToPackedAlpha(const Buffer& s, Buffer& d) {
    return shapes::planarToPackedAlpha<F, kAlphaArgument>(s, d);
}

const std::vector<Pair>& pairs() {
    static const std::vector<Pair> table = {
        {"c3", "RGBToYCbCr_8u_C3R", "YCbCrToRGB_8u_C3R", Input::Rgb, 3, 3, false, Alpha::None,
         packedToPacked<pxkiRGBToYCbCr_8u_C3R>, packedToPacked<pxkiYCbCrToRGB_8u_C3R>},
        {"ac4", "RGBToYCbCr_8u_AC4R", "YCbCrToRGB_8u_AC4R", Input::Rgba, 4, 4, false, Alpha::Unwritten,
         packedToPacked<pxkiRGBToYCbCr_8u_AC4R>, packedToPacked<pxkiYCbCrToRGB_8u_AC4R>},
        {"c3p3", "RGBToYCbCr_8u_C3P3R", "YCbCrToRGB_8u_P3C3R", Input::Rgb, 0, 3, false, Alpha::None,
         packedToPlanar<pxkiRGBToYCbCr_8u_C3P3R>, planarToPacked<pxkiYCbCrToRGB_8u_P3C3R>},
        {"ac4p3", "RGBToYCbCr_8u_AC4P3R", "YCbCrToRGB_8u_P3C4R", Input::Rgba, 0, 4, false, Alpha::Argument,
         packedToPlanar<pxkiRGBToYCbCr_8u_AC4P3R>, planarToPackedAlpha<pxkiYCbCrToRGB_8u_P3C4R>},
        {"p3", "RGBToYCbCr_8u_P3R", "YCbCrToRGB_8u_P3R", Input::Planar, 0, 0, false, Alpha::None,
         planarToPlanar<pxkiRGBToYCbCr_8u_P3R>, planarToPlanar<pxkiYCbCrToRGB_8u_P3R>},
        {"bgr_c3", "RGBToYCbCr_8u_C3P3R", "YCbCrToBGR_8u_P3C3R", Input::Rgb, 0, 3, true, Alpha::None,
         packedToPlanar<pxkiRGBToYCbCr_8u_C3P3R>, planarToPacked<pxkiYCbCrToBGR_8u_P3C3R>},
        {"bgr_c4", "RGBToYCbCr_8u_C3P3R", "YCbCrToBGR_8u_P3C4R", Input::Rgb, 0, 4, true, Alpha::Argument,
         packedToPlanar<pxkiRGBToYCbCr_8u_C3P3R>, planarToPackedAlpha<pxkiYCbCrToBGR_8u_P3C4R>},
    };
    return table;
}

Buffer makeBuffer(int width, int height, int packedBytes) {
    return packedBytes == 0 ? Buffer::planar(width, height) : Buffer::packed(width, height, packedBytes);
}

const Buffer& sourceFor(const Sources& s, Input input) {
    switch (input) {
    case Input::Rgb: return s.rgb;
    case Input::Rgba: return s.rgba;
    case Input::Planar: return s.planar;
    }
    return s.rgb;
}

// Median wall time of `repetitions` calls, in seconds; reports the worst status.
double medianSeconds(Call call, const Buffer& src, Buffer& dst, int repetitions, PxkResult& status) {
    std::vector<double> seconds;
    for (int i = 0; i < repetitions; ++i) {
        const auto start = std::chrono::steady_clock::now();
        const PxkResult st = call(src, dst);
        const auto stop = std::chrono::steady_clock::now();
        if (st < 0 || (st > 0 && status == pxkOk)) status = st;
        seconds.push_back(std::chrono::duration<double>(stop - start).count());
    }
    std::sort(seconds.begin(), seconds.end());
    return seconds[seconds.size() / 2];
}

std::array<int, 3> maxAbsDiff(const View& a, const View& b) {
    std::array<int, 3> worst{0, 0, 0};
    for (int c = 0; c < 3; ++c)
        for (int y = 0; y < a.height; ++y)
            for (int x = 0; x < a.width; ++x)
                worst[c] = std::max(worst[c], std::abs(a.at(c, x, y) - b.at(c, x, y)));
    return worst;
}

bool sameImage(const View& a, const View& b) { return maxAbsDiff(a, b) == std::array<int, 3>{0, 0, 0}; }

// The largest channel difference of each pixel, times 32, as a grey picture.
Buffer diffPicture(const View& a, const View& b) {
    Buffer out = Buffer::packed(a.width, a.height, 3);
    for (int y = 0; y < a.height; ++y) {
        for (int x = 0; x < a.width; ++x) {
            int d = 0;
            for (int c = 0; c < 3; ++c) d = std::max(d, std::abs(a.at(c, x, y) - b.at(c, x, y)));
            uint8_t* p = out.row(y) + 3 * x;
            p[0] = p[1] = p[2] = static_cast<uint8_t>(std::min(255, d * 32));
        }
    }
    return out;
}

struct Range {
    int lo = 255, hi = 0;
};

Range channelRange(const View& v, int c) {
    Range r;
    for (int y = 0; y < v.height; ++y)
        for (int x = 0; x < v.width; ++x) {
            r.lo = std::min<int>(r.lo, v.at(c, x, y));
            r.hi = std::max<int>(r.hi, v.at(c, x, y));
        }
    return r;
}

class Writer {
public:
    explicit Writer(std::string dir) : dir_(std::move(dir)) {}
    void ppm(const std::string& name, const View& v) { check(demo::writePpm(path(name), v), name); }
    void pgm(const std::string& name, const View& v, int c) { check(demo::writePgm(path(name), v, c), name); }
    bool ok() const { return ok_; }
    int count() const { return count_; }

private:
    std::string path(const std::string& name) const { return dir_ + "/" + name; }
    void check(bool written, const std::string& name) {
        ++count_;
        if (!written) {
            std::fprintf(stderr, "cannot write %s\n", path(name).c_str());
            ok_ = false;
        }
    }
    std::string dir_;
    bool ok_ = true;
    int count_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    std::string outDir = "demo_out";
    int width = 961, height = 721;
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], "--size=", 7) == 0) {
            if (std::sscanf(argv[i] + 7, "%dx%d", &width, &height) != 2 || width < 1 || height < 1) {
                std::fprintf(stderr, "bad size: %s\n", argv[i]);
                return 2;
            }
        } else if (argv[i][0] == '-') {
            std::fprintf(stderr, "usage: %s [output_dir] [--size=WxH]\n", argv[0]);
            return 2;
        } else {
            outDir = argv[i];
        }
    }
    std::error_code ec;
    std::filesystem::create_directories(outDir, ec);
    if (ec) {
        std::fprintf(stderr, "cannot create %s: %s\n", outDir.c_str(), ec.message().c_str());
        return 2;
    }

    const PxkVersionRecord* version = pxkccGetLibVersion();
    std::printf("%s %s (built %s)\n", version->name ? version->name : "?",
                version->version ? version->version : "?",
                version->buildDate ? version->buildDate : "?");

    Sources sources{demo::makeTestImage(width, height), Buffer::packed(1, 1, 3), Buffer::planar(1, 1)};
    sources.rgba = demo::withAlpha(sources.rgb);
    sources.planar = demo::toPlanar(sources.rgb);
    const View original = sources.rgb.view();

    Writer out(outDir);
    out.ppm("source_rgb.ppm", original);
    out.pgm("source_alpha.pgm", sources.rgba.view({3, 3, 3}), 0);

    const int repetitions = 15;
    const double megapixels = static_cast<double>(width) * height / 1e6;
    std::printf("test picture %dx%d, speed = median of %d calls, one thread\n\n", width, height, repetitions);
    std::printf("%-22s %-22s %-12s %-16s %9s %9s %-8s %s\n", "forward", "inverse", "max|diff|",
                "YCbCr range", "fwd Mpx/s", "inv Mpx/s", "=C3 fwd", "alpha");
    std::printf("%-22s %-22s %-12s %-16s %9s %9s %-8s %s\n", "", "", "R  G  B", "Y     Cb/Cr", "", "", "", "");

    bool failed = false;
    std::vector<Buffer> forwardResults;  // kept to compare every forward result with the first
    for (const Pair& p : pairs()) {
        const Buffer& src = sourceFor(sources, p.input);
        Buffer ycbcr = makeBuffer(width, height, p.ycbcrBytes);
        Buffer rgb = makeBuffer(width, height, p.rgbBytes);
        if (p.ycbcrBytes == 4) ycbcr.fillAlpha(kAlphaMarkYCbCr);
        if (p.rgbBytes == 4) rgb.fillAlpha(kAlphaMarkRgb);

        PxkResult forwardStatus = p.runForward(src, ycbcr);
        PxkResult inverseStatus = forwardStatus < 0 ? forwardStatus : p.runInverse(ycbcr, rgb);
        if (forwardStatus < 0 || inverseStatus < 0) {
            std::printf("%-22s %-22s failed: status %d / %d\n", p.forward, p.inverse, forwardStatus,
                        inverseStatus);
            failed = true;
            forwardResults.push_back(std::move(ycbcr));
            continue;
        }
        const double forwardTime = medianSeconds(p.runForward, src, ycbcr, repetitions, forwardStatus);
        const double inverseTime = medianSeconds(p.runInverse, ycbcr, rgb, repetitions, inverseStatus);
        failed = failed || forwardStatus < 0 || inverseStatus < 0;

        const View result = rgb.view(p.bgr ? std::array<int, 3>{2, 1, 0} : std::array<int, 3>{0, 1, 2});
        const std::array<int, 3> diff = maxAbsDiff(original, result);
        const Range y = channelRange(ycbcr.view(), 0);
        const Range cb = channelRange(ycbcr.view(), 1), cr = channelRange(ycbcr.view(), 2);
        const bool sameForward = forwardResults.empty() || sameImage(forwardResults.front().view(), ycbcr.view());

        std::string alpha = "-";
        if (p.alpha == Alpha::Unwritten) {
            const bool kept = ycbcr.alphaIs(kAlphaMarkYCbCr) && rgb.alphaIs(kAlphaMarkRgb);
            alpha = kept ? "left unwritten" : "OVERWRITTEN";
        } else if (p.alpha == Alpha::Argument) {
            alpha = rgb.alphaIs(kAlphaArgument) ? "= argument" : "WRONG";
        }

        char diffText[32], rangeText[32];
        std::snprintf(diffText, sizeof diffText, "%d  %d  %d", diff[0], diff[1], diff[2]);
        std::snprintf(rangeText, sizeof rangeText, "%d..%d %d..%d", y.lo, y.hi, std::min(cb.lo, cr.lo),
                      std::max(cb.hi, cr.hi));
        std::printf("%-22s %-22s %-12s %-16s %9.1f %9.1f %-8s %s", p.forward, p.inverse, diffText, rangeText,
                    megapixels / forwardTime, megapixels / inverseTime, sameForward ? "yes" : "no",
                    alpha.c_str());
        if (forwardStatus > 0 || inverseStatus > 0)
            std::printf("  (warning status %d / %d)", forwardStatus, inverseStatus);
        std::printf("\n");

        const std::string key = p.key;
        out.pgm(key + "_Y.pgm", ycbcr.view(), 0);
        out.pgm(key + "_Cb.pgm", ycbcr.view(), 1);
        out.pgm(key + "_Cr.pgm", ycbcr.view(), 2);
        out.ppm(key + "_roundtrip.ppm", result);
        out.ppm(key + "_diff_x32.ppm", diffPicture(original, result).view());
        forwardResults.push_back(std::move(ycbcr));
    }

    std::printf("\nmax|diff|: largest |original - round trip| per channel over the picture.\n"
                "=C3 fwd: whether the forward result equals that of RGBToYCbCr_8u_C3R byte for byte\n"
                "         The forward exports evaluate the matrix in different fixed-point forms,\n"
                "         which differ by one in the low bit on some pixels, so \"no\" is expected.\n"
                "%d files written to %s\n", out.count(), outDir.c_str());
    if (failed) return 1;
    return out.ok() ? 0 : 2;
}
