#include "random.h"

namespace pxktest {

int64_t Rng::uniform(int64_t lo, int64_t hi) {
    const uint64_t range = static_cast<uint64_t>(hi - lo) + 1u;
    if (range == 0) {  // the full 64-bit range
        return static_cast<int64_t>((uint64_t(next32()) << 32) | next32());
    }
    // Rejection sampling keeps the distribution exact and independent of the library.
    const uint64_t limit = UINT64_MAX - UINT64_MAX % range;
    uint64_t v;
    do {
        v = (uint64_t(next32()) << 32) | next32();
    } while (v >= limit);
    return lo + static_cast<int64_t>(v % range);
}

namespace {
uint32_t mix(uint32_t h, uint32_t v) {
    // A small avalanche step (a Murmur-style finaliser over the running hash).
    h ^= v + 0x9E3779B9u + (h << 6) + (h >> 2);
    h ^= h >> 16;
    h *= 0x85EBCA6Bu;
    h ^= h >> 13;
    h *= 0xC2B2AE35u;
    h ^= h >> 16;
    return h;
}
}  // namespace

uint32_t seedFor(std::initializer_list<uint32_t> parts) {
    uint32_t h = 0x2545F491u;
    for (uint32_t p : parts) h = mix(h, p);
    return h;
}

uint32_t seedFor(const char* name, std::initializer_list<uint32_t> parts) {
    uint32_t h = 0x811C9DC5u;  // FNV-1a over the name
    for (const char* c = name; c && *c; ++c) {
        h ^= static_cast<uint8_t>(*c);
        h *= 0x01000193u;
    }
    for (uint32_t p : parts) h = mix(h, p);
    return h;
}

}  // namespace pxktest
