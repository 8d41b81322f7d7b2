#include "conversion.h"

#include <cstdio>
#include <cstring>
#include <optional>

#include "export_catalog.h"
#include "shape_lookup.h"

namespace pxkconv {

namespace {

const char* const kDitherCodes[] = {"none", "fs", "jjn", "stucki", "bayer"};  // pxkDitherNone ... pxkDitherBayer
const char* const kGridCodes[] = {"bggr", "rggb", "gbrg", "grbg"};            // pxkBayerBGGR ... pxkBayerGRBG

int codeOf(const char* const* names, int n, const std::string& name) {
    for (int i = 0; i < n; ++i) {
        if (name == names[i]) return i;
    }
    return 0;
}

// The operation that the options ask for, or a failure if they ask for two.
Failure operationOf(const Options& o, std::string* operation) {
    std::vector<std::string> ops;
    if (!o.dither.empty() || o.levels != 0 || o.noiseGiven) ops.push_back("reduce");
    if (!o.gamma.empty()) ops.push_back(o.gamma == "fwd" ? "gammafwd" : "gammainv");
    if (!o.twist.empty()) ops.push_back("twist");
    if (!o.bayer.empty()) ops.push_back(o.demosaic.empty() ? "bilinear" : o.demosaic);
    if (ops.size() > 1) {
        return fault(kExitUsage, "one operation a run: --dither/--levels/--noise, --gamma, --twist and --bayer "
                                 "do not combine");
    }
    *operation = ops.empty() ? "" : ops.front();
    return Failure{};
}

// The destination layouts that an output file may hold, most wanted first.
Failure destinationsFor(const Options& o, const std::string& path, FileKind kind, const std::string& rawLayout,
                        const LayoutInfo* source, std::vector<std::string>* to) {
    const bool deep = source->bits == 16;
    const std::string ext = path.substr(path.find_last_of('.') + 1);
    std::vector<std::string> allowed;
    if (kind == FileKind::Picture) {
        const bool pgm = ext == "pgm" || ext == "PGM";
        const bool ppm = ext == "ppm" || ext == "PPM";
        if (!ppm) allowed = deep ? std::vector<std::string>{"gray16", "gray"} : std::vector<std::string>{"gray", "gray16"};
        if (!pgm) {
            const std::vector<std::string> rgb = deep ? std::vector<std::string>{"rgb16", "rgb"}
                                                      : std::vector<std::string>{"rgb", "rgb16"};
            // A colour source goes to colour first.
            const bool colour = source->channels > 1 || std::string(source->name).rfind("bayer", 0) == 0;
            allowed.insert(colour ? allowed.begin() : allowed.end(), rgb.begin(), rgb.end());
        }
    } else if (kind == FileKind::Y4m) {
        allowed = {"i420", "i422", "i444", "411", "gray"};
    } else if (!rawLayout.empty()) {
        allowed = {rawLayout};
    } else {
        allowed = {"i420", "nv12", "yuy2", "uyvy", "i422", "i444", "411"};
        if (o.to.empty()) return fault(kExitUsage, path + ": a raw output needs its layout: -t LAYOUT or an extension such as .nv12");
    }
    if (o.to.empty()) {
        *to = allowed;
        return Failure{};
    }
    const LayoutInfo* wanted = layoutInfo(o.to);
    if (!wanted) return fault(kExitUnknownFormat, "unknown layout \"" + o.to + "\" (layouts: " + layoutNames() + ")");
    for (const std::string& a : allowed) {
        if (a == o.to) {
            *to = {o.to};
            return Failure{};
        }
    }
    std::string list;
    for (const std::string& a : allowed) list += (list.empty() ? "" : ", ") + a;
    return fault(kExitUnknownFormat, path + " cannot hold " + o.to + " (it holds " + list + ")");
}

// The size must fill whole sampling groups of the layout.
Failure checkSampling(const LayoutInfo* layout, int width, int height) {
    const bool w = width % layout->widthMultiple != 0;
    const bool h = height % layout->heightMultiple != 0;
    if (!w && !h) return Failure{};
    auto need = [](int m) { return m == 2 ? std::string("even") : "a multiple of " + std::to_string(m); };
    std::string what;
    if (w) what = "width " + std::to_string(width) + " is not " + need(layout->widthMultiple);
    if (h) what += std::string(w ? " and the " : "") + "height " + std::to_string(height) + " is not " + need(layout->heightMultiple);
    return fault(kExitOddSize, std::string(layout->name) + " needs a width that is " + need(layout->widthMultiple) +
                                   (layout->heightMultiple > 1 ? " and a height that is " + need(layout->heightMultiple)
                                                               : std::string()) +
                                   " (" + layout->why + "): the " + what);
}

// Copies packed pixels between channel orders: out channel c of each pixel takes in
// channel order[c] (order sized to the output's channels).
void reorderChannels(const uint8_t* in, int inChannels, uint8_t* out, int outChannels, const std::vector<int>& order,
                     std::size_t pixels, int sampleBytes) {
    for (std::size_t i = 0; i < pixels; ++i) {
        for (int c = 0; c < outChannels && c < int(order.size()); ++c) {
            std::memcpy(out + (i * std::size_t(outChannels) + std::size_t(c)) * std::size_t(sampleBytes),
                        in + (i * std::size_t(inChannels) + std::size_t(order[std::size_t(c)])) * std::size_t(sampleBytes),
                        std::size_t(sampleBytes));
        }
    }
}

std::string valueFromOptions(const std::string& option, const Options& o, const LayoutInfo* from, const LayoutInfo* to) {
    if (option == "noise") return std::to_string(o.noise);
    if (option == "dither") return std::to_string(codeOf(kDitherCodes, 5, o.dither.empty() ? "none" : o.dither));
    if (option == "levels") {
        if (o.levels != 0) return std::to_string(o.levels);
        // At the same depth, two levels; to a smaller depth, all of the destination's.
        return from->bits == to->bits ? "2" : std::to_string(1 << to->bits);
    }
    if (option == "twist") return o.twist;
    if (option == "grid") return std::to_string(codeOf(kGridCodes, 4, o.bayer));
    return "";
}

}  // namespace

Failure convertFrame(const Route& route, const ValueSettings& values, FrameData& in, FrameData* out) {
    std::string error;
    const std::optional<pxkcross::CallShape> shape = pxkcross::callShapeFor(route.exportName, &error);
    const void* address = exportAddress(route.exportName);
    if (!shape || !address || shape->images.size() != 2) {
        return fault(kExitInternal, std::string(route.exportName) + ": not callable in this library" +
                                        (error.empty() ? "" : ": " + error));
    }
    const int width = in.width(), height = in.height();
    ImageRefs refs(2);
    refs[0] = in.planes();
    refs[1] = out->planes();

    // Channel and plane orders: a packed side goes through a copy in the export's order,
    // a planar side has its plane pointers reordered.
    const std::vector<int> srcOrder = parseOrder(route.sourceOrder);
    const std::vector<int> dstOrder = parseOrder(route.destinationOrder);
    std::vector<uint8_t> srcCopy, dstCopy;
    const int sampleBytes = (in.layout->bits + 7) / 8;
    const int outSampleBytes = (out->layout->bits + 7) / 8;
    const std::size_t pixels = std::size_t(width) * std::size_t(height);
    const int srcChannels = shape->images[0].planes[0].channels;
    const int dstChannels = shape->images[1].planes[0].channels;
    if (!srcOrder.empty() && in.layout->picture) {
        srcCopy.resize(pixels * std::size_t(srcChannels * sampleBytes));
        reorderChannels(in.picture.bytes.data(), in.layout->channels, srcCopy.data(), srcChannels, srcOrder, pixels,
                        sampleBytes);
        refs[0] = {{srcCopy.data(), int64_t(width) * srcChannels * sampleBytes}};
    } else if (!srcOrder.empty()) {
        std::vector<PlaneRef> planes;
        for (int k : srcOrder) planes.push_back(refs[0][std::size_t(k)]);
        refs[0] = planes;
    }
    if (!dstOrder.empty() && out->layout->picture) {
        dstCopy.assign(pixels * std::size_t(dstChannels * outSampleBytes), 0);
        refs[1] = {{dstCopy.data(), int64_t(width) * dstChannels * outSampleBytes}};
    } else if (!dstOrder.empty()) {
        std::vector<PlaneRef> planes(refs[1].size());
        for (std::size_t c = 0; c < dstOrder.size(); ++c) planes[std::size_t(dstOrder[c])] = refs[1][c];
        refs[1] = planes;
    }
    for (int side = 0; side < 2; ++side) {
        if (refs[std::size_t(side)].size() != shape->images[std::size_t(side)].planes.size()) {
            return fault(kExitInternal, std::string(route.exportName) + ": its planes do not match the layouts");
        }
    }

    CallResult result;
    if (Failure f = callExport(route.exportName, address, *shape, refs, width, height, values, &result)) return f;
    if (result.status < 0) {
        return fault(kExitLibraryStatus, std::string(route.exportName) + " returned " + statusText(result.status));
    }
    if (result.status > 0) {
        std::fprintf(stderr, "pxkconv: warning: %s returned %s\n", route.exportName, statusText(result.status).c_str());
    }
    if (!dstCopy.empty()) {
        reorderChannels(dstCopy.data(), dstChannels, out->picture.bytes.data(), out->layout->channels, dstOrder, pixels,
                        outSampleBytes);
    }
    return Failure{};
}

Failure runConversion(const Options& o) {
    if (o.files.size() != 2) return fault(kExitUsage, "pxkconv takes one INPUT and one OUTPUT (pxkconv --help)");
    const std::string& input = o.files[0];
    const std::string& output = o.files[1];
    FileKind inKind, outKind;
    std::string inRaw, outRaw;
    if (!fileKindOf(input, &inKind, &inRaw)) {
        if (o.from.empty() || !layoutInfo(o.from) || layoutInfo(o.from)->picture) {
            return fault(kExitUnknownFormat, input + ": unknown format (use .png .ppm .pgm .y4m, a raw layout "
                                                     "extension such as .i420, or .yuv with -f LAYOUT)");
        }
        inKind = FileKind::Raw;
    }
    if (!fileKindOf(output, &outKind, &outRaw)) {
        if (o.to.empty() || !layoutInfo(o.to) || layoutInfo(o.to)->picture) {
            return fault(kExitUnknownFormat, output + ": unknown format (use .png .ppm .pgm .y4m, a raw layout "
                                                      "extension such as .nv12, or .yuv with -t LAYOUT)");
        }
        outKind = FileKind::Raw;
    }
    if (inKind == FileKind::Raw && !o.from.empty()) inRaw = o.from;
    if (outKind == FileKind::Raw && !o.to.empty()) outRaw = o.to;
    if (!o.from.empty() && inKind != FileKind::Raw) {
        return fault(kExitUsage, "-f names the layout of raw input; " + input + " says its own");
    }

    std::string operation;
    if (Failure f = operationOf(o, &operation)) return f;
    std::unique_ptr<FrameSource> source;
    if (Failure f = openSource(input, inKind, inRaw, !o.bayer.empty(), o.width, o.height, &source)) return f;
    if (source->layout == nullptr) return fault(kExitUnknownFormat, input + ": a layout pxkconv does not convert");

    std::vector<std::string> to;
    if (Failure f = destinationsFor(o, output, outKind, outRaw, source->layout, &to)) return f;

    // The same layout with nothing to do: frames are copied as they are.
    const Route* route = nullptr;
    bool copy = false;
    if (operation.empty()) {
        for (const std::string& t : to) copy = copy || t == source->layout->name;
    }
    const LayoutInfo* destination = source->layout;
    if (!copy) {
        RouteQuery query{source->layout->name, to, operation, o.matrix, o.range};
        if (Failure f = chooseRoute(query, &route)) return f;
        destination = layoutInfo(route->to);
    }
    if (Failure f = checkSampling(source->layout, source->width, source->height)) return f;
    if (Failure f = checkSampling(destination, source->width, source->height)) return f;
    if ((o.matrixGiven || o.rangeGiven) && route && !*route->matrix && !copy) {
        std::fprintf(stderr, "pxkconv: note: %s involves no colour matrix; --matrix and --range have no effect\n",
                     route->exportName);
    }

    ValueSettings values;
    if (route) {
        const std::string list = route->values;
        for (std::size_t at = 0; at < list.size();) {
            std::size_t end = list.find(' ', at);
            if (end == std::string::npos) end = list.size();
            const std::string item = list.substr(at, end - at);
            const std::size_t eq = item.find('=');
            values[item.substr(0, eq)] = valueFromOptions(item.substr(eq + 1), o, source->layout, destination);
            at = end + 1;
        }
    }

    FrameSink sink(output, outKind, source->rate());
    const bool progress = !o.quiet && (inKind == FileKind::Y4m || source->count() > 1);
    long n = 0;
    FrameData frame;
    Failure failure;
    while (!failure && source->next(&frame, &failure)) {
        ++n;
        FrameData out = copy ? frame : FrameData::blank(destination, source->width, source->height);
        if (!copy) failure = convertFrame(*route, values, frame, &out);
        if (!failure && outKind == FileKind::Picture && n == 1) {
            // A picture holds one frame: refuse a second before writing the first.
            FrameData second;
            if (source->next(&second, &failure)) {
                failure = fault(kExitUsage, input + " holds more than one frame, and " + output +
                                                " holds one picture; write to a .y4m or raw file");
            }
        }
        if (!failure) failure = sink.write(out);
        if (!failure && progress) {
            if (source->count() > 0) {
                std::fprintf(stderr, "\rpxkconv: frame %ld of %ld", n, source->count());
            } else {
                std::fprintf(stderr, "\rpxkconv: frame %ld", n);
            }
        }
    }
    // The progress line ends before any message.
    if (progress && n > 0) std::fprintf(stderr, "\n");
    if (failure) return failure;
    if (n == 0) return fault(kExitDamaged, input + ": no frames");
    return Failure{};
}

}  // namespace pxkconv
