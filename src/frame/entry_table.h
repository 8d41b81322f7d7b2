// The table of exports: one slot per exported name, in plain ASCII order of the names,
// each holding the body that the name reaches. The linker's version script and this
// table come from the same sorted list (exports.list), so the two cannot drift apart.
// Callers link to the names directly; the table exists so that its order and the
// one-to-one match of names to bodies can be checked.
#pragma once

#include <cstddef>

namespace pxk {

// The number of exports: one for each line of the list.
#define PXK_EXPORT(name) +1
constexpr std::size_t kExportCount = 0
#include "pxkcc_exports.inc"
    ;
#undef PXK_EXPORT

struct PxkEntrySlot {
    const char* name;
    void (*body)();
};

struct PxkEntryTable {
    PxkEntrySlot slot[kExportCount];
};

extern const PxkEntryTable kEntryTable;

}  // namespace pxk
