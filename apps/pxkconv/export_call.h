// One call of any export through its call shape: the images' planes bound to memory,
// the values it takes set by key (or left at their defaults), the work buffers and
// results that the shape asks for made here, then the call made by its run-time
// argument list.
#ifndef PXKCC_APPS_PXKCONV_EXPORT_CALL_H
#define PXKCC_APPS_PXKCONV_EXPORT_CALL_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "call_shape.h"
#include "messages.h"

namespace pxkconv {

// Row 0 of one plane and its step in bytes.
struct PlaneRef {
    uint8_t* data = nullptr;
    int64_t step = 0;
};
// The planes of every image of a shape, by the image's index in the shape.
using ImageRefs = std::vector<std::vector<PlaneRef>>;

// A value argument that the user may set: "alpha" for the alpha value, "v1", "v2", ...
// for the others in argument order (a matrix or a list of weights is one value of
// several numbers).
struct ValueSlot {
    std::string key;
    int arg = -1;  // index in the shape's arguments
    pxkcross::ValueType type = pxkcross::ValueType::I32;
    int count = 1;
    double lo = 0, hi = 0;  // the range the call shape gives; empty for alpha
    std::string defaultText;
};

// Defaults: the alpha value is the destination's largest sample (1.0 for floats);
// every other value is the middle of the range its call shape gives (integers rounded
// down), e.g. vMin 0 and vMax 1 for the float gamma members.
std::vector<ValueSlot> valueSlots(const pxkcross::CallShape& shape);

// Values by key; numbers of a list separated by commas.
using ValueSettings = std::map<std::string, std::string>;

struct CallResult {
    int32_t status = 0;
    // What the call wrote through its result pointers, as text, in argument order.
    std::vector<std::string> outs;
};

// Bytes of plane p of image i at this size with tight rows, and its rows.
int64_t tightRowBytes(const pxkcross::Image& image, int p, int width);

// Calls `address` (the export `name`) with the images' planes and the values. Fails
// on a value that does not read, an unknown key, or a list that does not fit the shape.
Failure callExport(const std::string& name, const void* address, const pxkcross::CallShape& shape,
                   const ImageRefs& images, int width, int height, const ValueSettings& values, CallResult* result);

}  // namespace pxkconv

#endif
