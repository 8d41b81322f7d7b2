// Deterministic random data for tests: every image a test builds comes from a fixed
// seed, so that a failure reproduces exactly.
#ifndef PXKCC_TEST_SUPPORT_RANDOM_H
#define PXKCC_TEST_SUPPORT_RANDOM_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>

namespace pxktest {

class Rng {
public:
    explicit Rng(uint32_t seed) : engine_(seed) {}

    uint32_t next32() { return static_cast<uint32_t>(engine_()); }
    uint8_t byte() { return static_cast<uint8_t>(next32() >> 24); }
    // Uniform in [lo, hi], both inclusive; lo <= hi.
    int64_t uniform(int64_t lo, int64_t hi);
    // Uniform float in [0, 1).
    double unit() { return (next32() >> 8) * (1.0 / 16777216.0); }
    void fill(uint8_t* p, std::size_t n) {
        for (std::size_t i = 0; i < n; ++i) p[i] = byte();
    }

    std::mt19937& engine() { return engine_; }

private:
    std::mt19937 engine_;
};

// Mix any number of values (a test id, width, height, case index...) into one seed.
uint32_t seedFor(std::initializer_list<uint32_t> parts);
// Seed from a name and values, e.g. seedFor("RGBToYCbCr_C3R", {width, height}).
uint32_t seedFor(const char* name, std::initializer_list<uint32_t> parts);

}  // namespace pxktest

#endif
