// Everything one call of an export reads or writes, laid out for one point of the
// sweep: a buffer for every plane of every image (with the step kinds and the
// alignment chosen for that point, and margins around the region), for every array
// an argument points to, and the values passed by value. Built once from a seed, then
// copied, so that each library gets its own memory with the same bytes at the same
// alignments; after the calls the two copies are compared byte for byte.
#ifndef PXKCC_TESTS_CROSS_CALL_MEMORY_H
#define PXKCC_TESTS_CROSS_CALL_MEMORY_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "abi_call.h"
#include "call_shape.h"
#include "sweep.h"

namespace pxkcross {

// One point of the sweep: the region, and a running index that picks step kinds and
// alignments so that each kind meets each other kind over consecutive points.
struct SweepPoint {
    int width = 1;
    int height = 1;
    unsigned index = 0;
};

// How a step relates to the tight row of its plane: the sweep's kinds of the test
// support (Tight, Padded, Odd, Zero, Negative with padding, NegativeTight).
using pxktest::StepKind;
using pxktest::stepKindName;
// The kind that step slot `slot` gets at sweep point `index`. The slots are the steps
// of the images in order: one for an image whose planes share a step, one a plane
// otherwise.
StepKind stepKindFor(unsigned index, int slot, bool positiveOnly);
// The step in bytes for a plane whose tight row is `tight` bytes of `unit`-byte samples.
int64_t stepBytesFor(StepKind kind, int64_t tight, int unit, unsigned variant);

// Where the buffers lie. Margins: every buffer with room around the region, for
// comparing what two calls leave there. GuardAfter and GuardBefore: every buffer
// exactly as large as what the call may touch (each plane's rows at its own
// resolution, arrays and values of their own size), its last byte just below a page
// that may not be touched, or its first byte just above one.
enum class Placement { Margins, GuardAfter, GuardBefore };

// Rows that a call may touch beyond a plane's own rows, where an export documents
// reads or writes outside the region: that plane of that image gets `rowsAfter` more
// rows after its last row and `rowsBefore` more before its row 0 (rows -1, -2, ...
// counted by its step from the pointer passed).
struct PlaneAllowance {
    int image;
    int plane;
    int rowsAfter;
    int rowsBefore = 0;
};

class CallMemory {
public:
    CallMemory(const CallShape& shape, const SweepPoint& point, uint32_t seed,
               Placement placement = Placement::Margins, const std::vector<PlaneAllowance>& allowances = {});
    CallMemory(const CallMemory& other);
    CallMemory& operator=(const CallMemory&) = delete;

    // The call's arguments, pointing into this copy's buffers.
    std::vector<AbiArgument> arguments();
    // The steps and alignments chosen, for messages.
    const std::string& layout() const { return layout_; }

    // The first byte at which the two copies differ, described; empty if none does.
    static std::string firstDifference(const CallMemory& a, const CallMemory& b);

    // Access for checks of the layout itself.
    std::size_t bufferCount() const { return buffers_.size(); }
    const std::string& bufferLabel(std::size_t i) const { return buffers_[i].label; }
    std::size_t bufferSize(std::size_t i) const { return buffers_[i].size; }
    uint8_t* bufferData(std::size_t i) { return buffers_[i].data.get(); }
    // Which buffer an address falls in or next to, and where: for the message of an
    // access outside the buffers.
    std::string describeAddress(const void* address) const;
    // Offset in its buffer of the pointer handed to the call.
    std::size_t bufferOrigin(std::size_t i) const { return buffers_[i].origin; }
    // Step in bytes between rows of an image plane's buffer (0 for other buffers).
    int64_t bufferStep(std::size_t i) const { return buffers_[i].step; }

private:
    // Frees a buffer: from the heap, or its mapping with the guard pages around it.
    struct Free {
        Free() : mapping(nullptr), mappingBytes(0) {}
        Free(void* m, std::size_t bytes) : mapping(m), mappingBytes(bytes) {}
        void operator()(uint8_t* p) const;
        void* mapping;
        std::size_t mappingBytes;
    };
    struct Buffer {
        std::string label;
        std::size_t size = 0;
        std::size_t origin = 0;
        int64_t step = 0;
        int rows = 0;
        std::unique_ptr<uint8_t, Free> data;
    };
    enum class Pass { Words, Address, Addresses };
    struct Planned {
        Pass pass = Pass::Words;
        AbiArgument words;        // Words
        int buffer = -1;          // Address
        std::vector<int> planes;  // Addresses: one buffer a plane
    };

    int addBuffer(const std::string& label, std::size_t bytes, std::size_t origin, int64_t step, int rows = 0);

    Placement placement_ = Placement::Margins;
    std::vector<Buffer> buffers_;
    std::vector<Planned> planned_;
    std::vector<std::vector<const void*>> pointerArrays_;
    std::string layout_;
};

}  // namespace pxkcross

#endif
