#include "guard_allowances.h"

namespace pxkcross {

namespace {

struct GuardAllowance {
    const char* exportName;
    int height;
    std::vector<PlaneAllowance> planes;  // image, plane, rows after
};

const std::vector<GuardAllowance>& guardAllowances() {
    static const std::vector<GuardAllowance> table = {
        // At height 2 the 4:2:0 to 4:1:1 kernel still runs its main row: it reads the
        // source's chroma row 1 and writes destination chroma rows 2 and 3.
        {"pxkiYCbCr420To411_8u_P3R", 2, {{0, 1, 1}, {0, 2, 1}, {1, 1, 2}, {1, 2, 2}}},
    };
    return table;
}

}  // namespace

std::vector<PlaneAllowance> guardAllowancesFor(const std::string& name, int height) {
    for (const GuardAllowance& a : guardAllowances()) {
        if (name == a.exportName && height == a.height) return a.planes;
    }
    return {};
}

}  // namespace pxkcross
