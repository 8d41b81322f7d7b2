// The row copier: copies a run of bytes for the chroma-layout conversions (their luma
// rows, and the chroma rows that move unchanged), with ordinary or non-temporal
// stores. The bytes written are the same either way; only the cache behaviour differs.
#pragma once

#include <cstddef>
#include <cstdint>

namespace pxk {
namespace chroma {

// Whether a copy from `src` to `dst` may stream: false where the low 16 bits of
// src - dst lie in 0xFEC0..0xFFF0 (the target then trails the source by just under a
// multiple of 64 KiB, and streaming stores would keep evicting lines the loads need).
bool streamingAllowed(const uint8_t* src, const uint8_t* dst);

// Copies `bytes` bytes from src to dst (the two must not overlap). From 64 bytes on:
// 16 unaligned bytes first, then 64 bytes a round from the next 16-byte boundary of
// the target; whatever is left goes 8, 4, 2 and 1 bytes at a time. With
// `nonTemporal` set (and streamingAllowed) the rounds use non-temporal stores and the
// copy ends with a store fence.
// `addressTest` false streams whatever the addresses (the plane copy of the vertical
// resampling members does not make the test).
void copyRow(const uint8_t* src, uint8_t* dst, std::size_t bytes, bool nonTemporal, bool addressTest = true);

// Copies `rows` rows of `bytes` bytes, each side advancing by its own signed step;
// rows that lie end to end on both sides (and do not overlap) as one run.
void copyRows(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, std::size_t bytes, int32_t rows,
              bool nonTemporal);

}  // namespace chroma
}  // namespace pxk
