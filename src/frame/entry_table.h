// The table of exports: one slot per exported name, in plain ASCII order of the names,
// each holding the body that the name reaches. The linker's version script and this
// table come from the same sorted list (exports.list), so the two cannot drift apart.
// Callers link to the names directly; the table exists so that the order and the
// one-to-one match of names to bodies can be checked.
#pragma once

#include <cstddef>

namespace pxk {

struct EntrySlot {
    const char* name;
    void (*body)();
};

extern const EntrySlot kEntryTable[];
extern const std::size_t kEntryCount;

}  // namespace pxk
