#include "raw_export.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>

#include "export_catalog.h"
#include "file_handle.h"
#include "guard_allowances.h"
#include "pxkcc.h"
#include "shape_lookup.h"

namespace pxkconv {

using pxkcross::CallShape;
using pxkcross::Image;
using pxkcross::Role;

namespace {

struct PlaneFile {
    int image, plane;
    bool input;
    std::string label;  // "source plane 1", ...
    int64_t rowBytes;
    int rows;
};

const char* roleName(Role role) {
    return role == Role::Source ? "source" : (role == Role::Destination ? "destination" : "in-place image");
}

// Inputs first (each source's planes, then each in-place image's), then outputs (each
// destination's planes, then each in-place image's again).
std::vector<PlaneFile> planeFiles(const CallShape& shape, int width, int height) {
    std::vector<PlaneFile> files;
    for (int pass = 0; pass < 2; ++pass) {
        for (Role role : {Role::Source, Role::Destination, Role::InPlace}) {
            const bool input = role == Role::Source || (role == Role::InPlace && pass == 0);
            if ((role == Role::Source && pass == 1) || (role == Role::Destination && pass == 0)) continue;
            for (std::size_t i = 0; i < shape.images.size(); ++i) {
                const Image& image = shape.images[i];
                if (image.role != role) continue;
                for (std::size_t p = 0; p < image.planes.size(); ++p) {
                    std::string label = roleName(role);
                    if (image.planes.size() > 1) label += " plane " + std::to_string(p);
                    files.push_back({int(i), int(p), input, label, image.rowBytes(int(p), width), image.rows(int(p), height)});
                }
            }
        }
    }
    return files;
}

bool readWhole(const std::string& path, std::vector<uint8_t>* bytes) {
    FileHandle f(std::fopen(path.c_str(), "rb"));
    if (!f) return false;
    uint8_t chunk[65536];
    std::size_t n;
    bytes->clear();
    while ((n = std::fread(chunk, 1, sizeof chunk, f.get())) > 0) bytes->insert(bytes->end(), chunk, chunk + n);
    return !std::ferror(f.get());
}

// Without files: what the export takes.
void printExportUsage(const std::string& name, const CallShape& shape) {
    std::printf("%s: %s\n", name.c_str(), describeExport(name).c_str());
    std::printf("arguments: %s\n", pxkcross::describeArguments(shape).c_str());
    std::printf("files, in order (tight rows; W x H is --size):\n");
    for (const PlaneFile& f : planeFiles(shape, 0, 0)) {
        const Image& image = shape.images[std::size_t(f.image)];
        const pxkcross::Plane& plane = image.planes[std::size_t(f.plane)];
        std::printf("  %-6s %s: %s, %d channel(s), W/%d x H/%d (rounded up)\n", f.input ? "INPUT" : "OUTPUT",
                    f.label.c_str(), pxkcross::sampleTypeToken(image.type), plane.channels, plane.widthDivisor,
                    plane.heightDivisor);
    }
    for (const ValueSlot& s : valueSlots(shape)) {
        std::printf("value %s: %s%s, default %s\n", s.key.c_str(), pxkcross::valueTypeToken(s.type),
                    s.count > 1 ? ("[" + std::to_string(s.count) + "]").c_str() : "", s.defaultText.c_str());
    }
}

}  // namespace

void printExportList() {
    for (const std::string& name : exportNames()) std::printf("%s  %s\n", name.c_str(), describeExport(name).c_str());
}

void printVersion() {
    const PxkVersionRecord* v = pxkccGetLibVersion();
    std::printf("%s %s (target %.2s, %d.%d.%d build %u, %s)\n", v->name, v->version, v->targetCode, v->major, v->minor,
                v->majorBuild, v->build, v->buildDate);
}

Failure runExport(const Options& o) {
    const std::string& name = o.exportName;
    if (!isExport(name)) return fault(kExitUsage, name + " is not an export of the library (pxkconv --list)");
    if (isVersionQuery(name)) {
        printVersion();
        return Failure{};
    }
    std::string error;
    const std::optional<CallShape> shape = pxkcross::callShapeFor(name, &error);
    const void* address = exportAddress(name);
    if (!shape || !address) return fault(kExitInternal, error.empty() ? name + ": not found in the library" : error);
    if (o.files.empty() && o.width == 0) {
        printExportUsage(name, *shape);
        return Failure{};
    }
    if (o.width == 0) return fault(kExitUsage, "--export needs --size WxH");
    const int w = o.width, h = o.height;
    const std::vector<PlaneFile> files = planeFiles(*shape, w, h);
    if (o.files.size() != files.size()) {
        std::string list;
        for (const PlaneFile& f : files) list += std::string(list.empty() ? "" : ", ") + (f.input ? "in " : "out ") + f.label;
        return fault(kExitUsage, name + " takes " + std::to_string(files.size()) + " files (" +
                                     (list.empty() ? "none" : list) + "), not " + std::to_string(o.files.size()));
    }

    // One buffer a plane; an in-place plane's output file takes the bytes of its input.
    // Where the export documents rows it touches outside the region at this height, the
    // plane's buffer has those rows too (zeros), so that the call stays inside it.
    std::vector<std::vector<uint8_t>> buffers(files.size());
    ImageRefs refs(shape->images.size());
    for (std::size_t i = 0; i < shape->images.size(); ++i) refs[i].resize(shape->images[i].planes.size());
    const std::vector<pxkcross::PlaneAllowance> allowances = pxkcross::guardAllowancesFor(name, h);
    auto planeAt = [&](std::vector<uint8_t>& bytes, const PlaneFile& f) {
        std::size_t before = 0, after = 0;
        for (const pxkcross::PlaneAllowance& a : allowances) {
            if (a.image == f.image && a.plane == f.plane) {
                before += std::size_t(a.rowsBefore);
                after += std::size_t(a.rowsAfter);
            }
        }
        const std::size_t row = std::size_t(f.rowBytes);
        bytes.insert(bytes.begin(), before * row, uint8_t{0});
        bytes.insert(bytes.end(), after * row, uint8_t{0});
        refs[std::size_t(f.image)][std::size_t(f.plane)] = {bytes.data() + before * row, f.rowBytes};
    };
    for (std::size_t k = 0; k < files.size(); ++k) {
        const PlaneFile& f = files[k];
        const std::size_t bytes = std::size_t(f.rowBytes) * std::size_t(f.rows);
        if (f.input) {
            if (!readWhole(o.files[k], &buffers[k])) {
                return fault(kExitCannotOpen, o.files[k] + ": cannot read: " + std::strerror(errno));
            }
            if (buffers[k].size() != bytes) {
                return fault(kExitWrongSize, o.files[k] + ": the " + f.label + " of " + name + " at " +
                                                 std::to_string(w) + "x" + std::to_string(h) + " takes " +
                                                 std::to_string(bytes) + " bytes (" + std::to_string(f.rows) +
                                                 " rows of " + std::to_string(f.rowBytes) + "), the file holds " +
                                                 std::to_string(buffers[k].size()));
            }
            planeAt(buffers[k], f);
        } else if (shape->images[std::size_t(f.image)].role == Role::Destination) {
            buffers[k].assign(bytes, 0);
            planeAt(buffers[k], f);
        }
    }
    CallResult result;
    if (Failure f = callExport(name, address, *shape, refs, w, h, o.values, &result)) return f;
    if (result.status < 0) return fault(kExitLibraryStatus, name + " returned " + statusText(result.status));
    for (std::size_t k = 0; k < files.size(); ++k) {
        const PlaneFile& f = files[k];
        if (f.input) continue;
        const PlaneRef& plane = refs[std::size_t(f.image)][std::size_t(f.plane)];
        const std::size_t bytes = std::size_t(f.rowBytes) * std::size_t(f.rows);
        FileHandle out(std::fopen(o.files[k].c_str(), "wb"));
        if (!out || std::fwrite(plane.data, 1, bytes, out.get()) != bytes || std::fflush(out.get()) != 0) {
            return fault(kExitCannotOpen, o.files[k] + ": cannot write: " + std::strerror(errno));
        }
    }
    std::printf("%s: %s\n", name.c_str(), statusText(result.status).c_str());
    for (std::size_t i = 0; i < result.outs.size(); ++i) std::printf("out%zu = %s\n", i + 1, result.outs[i].c_str());
    return Failure{};
}

}  // namespace pxkconv
