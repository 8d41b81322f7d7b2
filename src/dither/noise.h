// The noise generator of the bit-depth reduction family (a lagged subtract-with-borrow
// generator plus a congruential state, mapped to a range in double precision), its
// record, and the layout of the caller's scratch buffer that holds its two tables.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pxkcc.h"

namespace pxk {
namespace dither {

// The generator's record, as it lies in the scratch buffer (56 bytes, natural
// alignment). `Bound` is int16_t in the 16-bit form, float in the float form.
template <class Bound>
struct NoiseState {
    int32_t idTag;
    uint32_t seed;
    Bound low;
    Bound high;
    double mid;
    double scale;
    uint32_t lcg;
    uint32_t a;
    uint32_t b;
    uint32_t d;
    int32_t borrow;
};
static_assert(sizeof(NoiseState<int16_t>) == 56 && sizeof(NoiseState<float>) == 56, "56-byte records");

constexpr int32_t kNoiseTag16u = 38;
constexpr int32_t kNoiseTag32f = 39;

// Scratch layout, in bytes from `base` (the buffer pointer moved up to a multiple of 64).
constexpr std::size_t kTableLength = 1024;
constexpr std::size_t kNoiseTableAt = 0;
constexpr std::size_t kOffsetTableAt = 4096;
constexpr std::size_t kOffsetStateAt = 6144;
constexpr std::size_t kNoiseStateAt = 6200;
// Row buffers of the diffusion methods: after the tables with noise, at base without.
constexpr std::size_t kRowsWithNoiseAt = 6256;
// What the size query adds for the tables: 6144 and twice the record size rounded up
// to 16.
constexpr int64_t kNoiseBytes = 6144 + 2 * ((int64_t{sizeof(NoiseState<float>)} + 15) / 16 * 16);

// The buffer pointer moved up to the next multiple of 64 (itself when aligned).
inline uint8_t* alignedBase(uint8_t* buffer) {
    const std::uintptr_t p = reinterpret_cast<std::uintptr_t>(buffer);
    return buffer + ((64 - (p & 63)) & 63);
}

// The generator's operations on a record in memory (any address). Fill checks: a null
// pointer gives pxkErrNullPtr, a length below 1 pxkErrSize, a record without its tag
// pxkErrContext; the record is written back, so a second fill goes on from there.
PxkResult pxkNoiseStateSize(int32_t* size);
void pxkNoiseInit16u(uint8_t* state, int16_t low, int16_t high, uint32_t seed);
void pxkNoiseInit32f(uint8_t* state, float low, float high, uint32_t seed);
PxkResult pxkNoiseFill16u(uint16_t* dst, int32_t length, uint8_t* state);
PxkResult pxkNoiseFill32f(float* dst, int32_t length, uint8_t* state);

// The two tables of a call with noise, built at `base`: the offset table (values 0 to
// 1024, seed 0), then the noise table (seed 0, bounds low and high).
void buildNoiseTables(uint8_t* base, float low, float high);

// The tables as a kernel reads them.
struct NoiseTables {
    const float* noise;
    const uint16_t* offset;

    // The noise value of pixel column i in row y (y counted from the region's top).
    float at(int32_t i, uint32_t twiceY) const {
        const uint32_t pos = (uint32_t{offset[static_cast<uint32_t>(i) & 1023u]} + twiceY +
                              static_cast<uint32_t>(i)) & 1023u;
        return noise[pos];
    }
};

inline NoiseTables noiseTablesAt(const uint8_t* base) {
    return NoiseTables{reinterpret_cast<const float*>(base + kNoiseTableAt),
                       reinterpret_cast<const uint16_t*>(base + kOffsetTableAt)};
}

}  // namespace dither
}  // namespace pxk
