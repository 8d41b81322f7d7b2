#include "frame/cpu.h"

#include <cpuid.h>

#include <climits>
#include <cstring>

namespace pxk {

namespace {

struct CpuidRegs {
    unsigned eax, ebx, ecx, edx;
};

// The leaf and subleaf, or all zeros when the leaf is beyond the processor's range.
CpuidRegs cpuid(unsigned leaf, unsigned subleaf) {
    CpuidRegs r{0, 0, 0, 0};
    const unsigned top = __get_cpuid_max(leaf & 0x80000000u, nullptr);
    if (top == 0 || leaf > top) return r;
    __cpuid_count(leaf, subleaf, r.eax, r.ebx, r.ecx, r.edx);
    return r;
}

// Walks the deterministic cache parameters of `leaf` (4, or the extended 0x8000001D):
// one subleaf a cache, until a null cache type.
int64_t largestDeterministicCache(unsigned leaf) {
    int64_t largest = 0;
    for (unsigned sub = 0; sub < 16; ++sub) {
        const CpuidRegs r = cpuid(leaf, sub);
        const unsigned type = r.eax & 0x1F;
        if (type == 0) break;
        if (type == 2) continue;  // instruction cache
        const int64_t ways = ((r.ebx >> 22) & 0x3FF) + 1;
        const int64_t partitions = ((r.ebx >> 12) & 0x3FF) + 1;
        const int64_t line = (r.ebx & 0xFFF) + 1;
        const int64_t sets = static_cast<int64_t>(r.ecx) + 1;
        const int64_t size = ways * partitions * line * sets;
        if (size > largest) largest = size;
    }
    return largest;
}

// The extended leaf 0x80000006: L2 size in KiB, L3 size in 512 KiB units.
int64_t largestExtendedCache() {
    const CpuidRegs r = cpuid(0x80000006u, 0);
    const int64_t l2 = static_cast<int64_t>(r.ecx >> 16) * 1024;
    const int64_t l3 = static_cast<int64_t>(r.edx >> 18) * 512 * 1024;
    return l3 > l2 ? l3 : l2;
}

}  // namespace

void cpuVendor(char vendor[13]) {
    const CpuidRegs r = cpuid(0, 0);
    std::memcpy(vendor + 0, &r.ebx, 4);
    std::memcpy(vendor + 4, &r.edx, 4);
    std::memcpy(vendor + 8, &r.ecx, 4);
    vendor[12] = '\0';
}

int32_t pxkGetMaxCacheSizeB(int32_t* sizeBytes) {
    if (sizeBytes == nullptr) return -1;
    // The standard deterministic leaf first; processors that leave it empty describe
    // their caches in the extended leaves.
    int64_t largest = largestDeterministicCache(4);
    if (largest == 0) largest = largestDeterministicCache(0x8000001Du);
    if (largest == 0) largest = largestExtendedCache();
    if (largest <= 0) return -1;
    *sizeBytes = largest > INT32_MAX ? INT32_MAX : static_cast<int32_t>(largest);
    return 0;
}

}  // namespace pxk
