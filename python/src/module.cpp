// The extension module pxkcc._pxkcc: the export list this build was made from, each
// export's call shape and address, the library's statuses and version record, and one
// call through a run-time argument list with the interpreter lock released. Everything
// a Python caller sees (arrays, checks, exceptions) is built on these in pxkcc/.
#include <dlfcn.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include "abi_call.h"
#include "guard_allowances.h"
#include "pxkcc.h"
#include "shape_lookup.h"

namespace py = pybind11;

namespace {

// The export list, read from the project's list when the module was configured.
const char* const kExportNames[] = {
#include "export_names.inc"
};

struct StatusName {
    int32_t value;
    const char* name;
    const char* meaning;
};
// The library's statuses, by the header's constants.
const StatusName kStatuses[] = {
    {pxkOk, "pxkOk", "success"},
    {pxkWarnNegativeImage, "pxkWarnNegativeImage", "the source has no positive level; nothing was written"},
    {pxkWarnOddSize, "pxkWarnOddSize", "an odd last row, column or group was left out"},
    {pxkErrBadArg, "pxkErrBadArg", "an enumerated argument is out of its set"},
    {pxkErrSize, "pxkErrSize", "the width or height is below the function's minimum"},
    {pxkErrNullPtr, "pxkErrNullPtr", "a null pointer, or a null entry of a plane array"},
    {pxkErrContext, "pxkErrContext", "a noise state without its identifying tag"},
    {pxkErrStep, "pxkErrStep", "a step below 1, where the function tests steps"},
    {pxkErrChannels, "pxkErrChannels", "a channel count outside its set"},
    {pxkErrRange, "pxkErrRange", "a value range whose upper bound does not exceed its lower bound"},
    {pxkErrDitherLevels, "pxkErrDitherLevels", "a level count out of range"},
    {pxkErrNoiseRange, "pxkErrNoiseRange", "a noise amount out of range"},
    {pxkErrDitherType, "pxkErrDitherType", "a dither mode out of its set"},
};

// The handle of the libpxkcc.so this module is linked to, found through one of its
// symbols, so that exports are looked up in that library and no other.
void* libraryHandle() {
    static void* handle = [] {
        Dl_info info{};
        if (dladdr(reinterpret_cast<const void*>(&pxkccGetLibVersion), &info) == 0 || info.dli_fname == nullptr) {
            return static_cast<void*>(nullptr);
        }
        return dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD);
    }();
    return handle;
}

const char* roleName(pxkcross::Role role) {
    switch (role) {
        case pxkcross::Role::Source:
            return "src";
        case pxkcross::Role::Destination:
            return "dst";
        case pxkcross::Role::InPlace:
            return "srcdst";
    }
    return "?";
}

const char* argKindName(pxkcross::ArgKind kind) {
    using K = pxkcross::ArgKind;
    switch (kind) {
        case K::Pointer:
            return "pointer";
        case K::PlanePointers:
            return "plane_pointers";
        case K::Step:
            return "step";
        case K::StepArray:
            return "step_array";
        case K::StepArray64:
            return "step_array64";
        case K::Size:
            return "size";
        case K::SizeL:
            return "size64";
        case K::WidthHeight:
            return "width_height";
        case K::Roi:
            return "roi";
        case K::Value:
            return "value";
        case K::Values:
            return "values";
        case K::Out:
            return "out";
        case K::Scratch:
            return "scratch";
        case K::ScratchStep:
            return "scratch_step";
    }
    return "?";
}

// The call shape of `name` as plain Python data; LookupError if it has none.
py::dict callShape(const std::string& name) {
    std::string error;
    const std::optional<pxkcross::CallShape> shape = pxkcross::callShapeFor(name, &error);
    if (!shape) throw py::key_error(error);
    py::list images;
    for (const pxkcross::Image& image : shape->images) {
        py::list planes;
        for (const pxkcross::Plane& p : image.planes) {
            planes.append(py::make_tuple(p.channels, p.widthDivisor, p.heightDivisor));
        }
        py::dict d;
        d["role"] = roleName(image.role);
        d["type"] = pxkcross::sampleTypeToken(image.type);
        d["sample_bytes"] = pxkcross::sampleBytes(image.type);
        d["planes"] = planes;
        images.append(d);
    }
    py::list args;
    for (const pxkcross::Arg& a : shape->args) {
        py::dict d;
        d["kind"] = argKindName(a.kind);
        d["image"] = a.image;
        d["plane"] = a.plane;
        d["type"] = pxkcross::valueTypeToken(a.type);
        d["count"] = a.count;
        d["lo"] = a.lo;
        d["hi"] = a.hi;
        d["alpha"] = a.alpha;
        d["per_pixel"] = a.perPixel;
        d["fixed"] = a.fixed;
        d["rows"] = a.rows;
        args.append(d);
    }
    py::dict out;
    out["images"] = images;
    out["args"] = args;
    out["steps_in_elements"] = shape->stepsInElements;
    out["positive_steps_only"] = shape->positiveStepsOnly;
    out["float_range"] = shape->floatRange ? py::object(py::make_tuple(shape->floatLo, shape->floatHi)) : py::none();
    out["arguments"] = pxkcross::describeArguments(*shape);
    return out;
}

// The address of an export in the linked library, or 0.
uintptr_t exportAddress(const std::string& name) {
    void* handle = libraryHandle();
    return handle ? reinterpret_cast<uintptr_t>(dlsym(handle, name.c_str())) : 0;
}

// One argument word list per argument: (floating, low[, high]).
std::vector<pxkcross::AbiArgument> toAbi(const std::vector<py::tuple>& words) {
    std::vector<pxkcross::AbiArgument> args;
    args.reserve(words.size());
    for (const py::tuple& t : words) {
        if (t.size() < 2 || t.size() > 3) throw py::value_error("an argument is (floating, low word[, high word])");
        pxkcross::AbiArgument a;
        a.floating = t[0].cast<bool>();
        a.word[0] = t[1].cast<uint64_t>();
        if (t.size() == 3) {
            a.words = 2;
            a.word[1] = t[2].cast<uint64_t>();
        }
        args.push_back(a);
    }
    return args;
}

// Calls the export at `address` with `words`; the interpreter lock is released for
// the call itself, so that other threads run meanwhile.
int32_t callExport(uintptr_t address, const std::vector<py::tuple>& words) {
    if (address == 0) throw py::value_error("no function at address 0");
    const std::vector<pxkcross::AbiArgument> args = toAbi(words);
    int32_t status = 0;
    std::string error;
    bool called;
    {
        py::gil_scoped_release release;
        called = pxkcross::callWithArguments(reinterpret_cast<const void*>(address), args, &status, &error);
    }
    if (!called) throw py::value_error(error);
    return status;
}

py::dict versionRecord() {
    const PxkVersionRecord* v = pxkccGetLibVersion();
    py::dict d;
    d["major"] = v->major;
    d["minor"] = v->minor;
    d["majorBuild"] = v->majorBuild;
    d["build"] = v->build;
    d["targetCode"] = std::string(v->targetCode, strnlen(v->targetCode, sizeof v->targetCode));
    d["name"] = v->name;
    d["version"] = v->version;
    d["buildDate"] = v->buildDate;
    return d;
}

}  // namespace

PYBIND11_MODULE(_pxkcc, m) {
    m.doc() = "Calls into libpxkcc by the project's export list and call shapes.";
    m.def("export_names", [] { return std::vector<std::string>(std::begin(kExportNames), std::end(kExportNames)); },
          "The exports of the list this module was built from, in the list's order.");
    m.def("call_shape", &callShape, py::arg("name"), "The argument list and images of an export.");
    m.def("address", &exportAddress, py::arg("name"), "The export's address in the linked library, or 0.");
    m.def("call", &callExport, py::arg("address"), py::arg("words"),
          "Calls an export with its argument words; releases the GIL during the call.");
    m.def("rows_past_region", [](const std::string& name, int height) {
        py::list out;
        for (const pxkcross::PlaneAllowance& a : pxkcross::guardAllowancesFor(name, height)) {
            out.append(py::make_tuple(a.image, a.plane, a.rowsAfter, a.rowsBefore));
        }
        return out;
    }, py::arg("name"), py::arg("height"),
          "(image, plane, rows after, rows before) for each plane that a call at this height touches "
          "outside its rows.");
    m.def("statuses", [] {
        py::list out;
        for (const StatusName& s : kStatuses) out.append(py::make_tuple(s.value, s.name, s.meaning));
        return out;
    });
    m.def("version_record", &versionRecord, "pxkccGetLibVersion's record as a dict.");
}
