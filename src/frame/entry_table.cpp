#include "frame/entry_table.h"

#include "pxkcc.h"

namespace pxk {

#define PXK_EXPORT(name) {#name, reinterpret_cast<void (*)()>(&name)},
const EntrySlot kEntryTable[] = {
#include "pxkcc_exports.inc"
};
#undef PXK_EXPORT

const std::size_t kEntryCount = sizeof(kEntryTable) / sizeof(kEntryTable[0]);

}  // namespace pxk
