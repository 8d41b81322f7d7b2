#include "frame/entry_table.h"

#include "pxkcc.h"

namespace pxk {

#define PXK_EXPORT(name) {#name, reinterpret_cast<void (*)()>(&name)},
const PxkEntryTable kEntryTable = {{
#include "pxkcc_exports.inc"
}};
#undef PXK_EXPORT

}  // namespace pxk
