// Benchmark bodies: one conversion of the table, or the memcpy reference.
#ifndef PXKCC_BENCH_MEASURE_H
#define PXKCC_BENCH_MEASURE_H

#include <benchmark/benchmark.h>

#include <cstddef>

#include "cases.h"

namespace bench {

// Converts a width x height image per iteration; sets Mpix/s, GB/s (read + written)
// and x_memcpy (GB/s over the rate of memcpy benchmark `reference`).
void measureCase(benchmark::State& state, const Case& c, int width, int height,
                 const std::string& reference);

// Copies `bytes` bytes between two buffers per iteration; GB/s counts them twice
// (read once, written once).
void measureMemcpy(benchmark::State& state, size_t bytes);

}  // namespace bench

#endif
