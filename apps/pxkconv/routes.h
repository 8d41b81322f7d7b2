// The choice of export for a file conversion: a table from (source layout,
// destination layout, operation, matrix, range) to the export that does it, and the
// layouts that files hold.
#ifndef PXKCC_APPS_PXKCONV_ROUTES_H
#define PXKCC_APPS_PXKCONV_ROUTES_H

#include <string>
#include <vector>

#include "messages.h"

namespace pxkconv {

// A layout that a file holds: a picture (one plane of interleaved samples) or a YUV
// frame of yuv_file.h. widthMultiple and heightMultiple are what its sampling needs.
struct LayoutInfo {
    const char* name;
    bool picture;
    int channels;  // pictures
    int bits;      // bits a sample
    const char* yuvName;  // YUV frames: the name yuv_file.h knows
    int widthMultiple, heightMultiple;
    const char* why;  // what needs the multiple, for messages
};

// The layout of a name, or null.
const LayoutInfo* layoutInfo(const std::string& name);
// The names, for messages.
std::string layoutNames();

// One way of converting: the export and how the file's samples meet its arguments.
struct Route {
    const char* from;
    const char* to;
    const char* operation;  // "" (a plain conversion), reduce, gammafwd, gammainv, twist, bilinear, vng, ahd
    const char* matrix;     // "" where no colour matrix is involved, else 601, 709csc, 709hdtv
    const char* range;      // "" or studio, full
    const char* exportName;
    // Order of the export's channels (packed) or planes (planar) against the file's:
    // "2,1,0" for a BGR export on an RGB picture, "0,2,1" for YCrCb planes; "" keeps it.
    // Source: export k takes file k' = order[k]; destination: file c takes export order[c].
    const char* sourceOrder;
    const char* destinationOrder;
    // Values of the export from the options: "v1=noise v2=dither v3=levels", the
    // option names being noise, dither, levels, twist and grid.
    const char* values;
};

const std::vector<Route>& routes();

// What the user asked for.
struct RouteQuery {
    std::string from;
    std::vector<std::string> to;  // acceptable destinations, in order of preference
    std::string operation;
    std::string matrix, range;
};

// The route for the query, or a failure that says which combinations exist.
Failure chooseRoute(const RouteQuery& query, const Route** route);

// Parses "2,1,0"; empty for "".
std::vector<int> parseOrder(const char* text);

}  // namespace pxkconv

#endif
