#include "guard_allowances.h"

namespace pxkcross {

namespace {

// An allowance that holds at every height.
constexpr int kAnyHeight = -1;

struct GuardAllowance {
    const char* exportName;
    int height;
    std::vector<PlaneAllowance> planes;  // image, plane, rows after, rows before
};

const std::vector<GuardAllowance>& guardAllowances() {
    static const std::vector<GuardAllowance> table = {
        // At height 2 the 4:2:0 to 4:1:1 kernel still runs its main row: it reads the
        // source's chroma row 1 and writes destination chroma rows 2 and 3.
        {"pxkiYCbCr420To411_8u_P3R", 2, {{0, 1, 1}, {0, 2, 1}, {1, 1, 2}, {1, 2, 2}}},
        // The center and bottom strips of the smoothing members read three luma rows and
        // one chroma row above the source and write two rows above the destination (the
        // planar member: two luma rows and one row of each chroma plane).
        {"pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", kAnyHeight, {{0, 0, 0, 3}, {0, 1, 0, 1}, {1, 0, 0, 2}}},
        {"pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R", kAnyHeight,
         {{0, 0, 0, 3}, {0, 1, 0, 1}, {1, 0, 0, 2}, {1, 1, 0, 1}, {1, 2, 0, 1}}},
        // The top strip of the packed member always makes rows 0 and 1: at a cut height
        // of 2 its row 1 reads luma row 2 and chroma row 1.
        {"pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", 2, {{0, 0, 1}, {0, 1, 1}}},
        {"pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R", 3, {{0, 1, 1}}},
    };
    return table;
}

}  // namespace

std::vector<PlaneAllowance> guardAllowancesFor(const std::string& name, int height) {
    std::vector<PlaneAllowance> planes;
    for (const GuardAllowance& a : guardAllowances()) {
        if (name == a.exportName && (height == a.height || a.height == kAnyHeight)) {
            planes.insert(planes.end(), a.planes.begin(), a.planes.end());
        }
    }
    return planes;
}

}  // namespace pxkcross
