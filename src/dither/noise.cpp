#include "dither/noise.h"

#include <cstring>

#include "frame/vec_float.h"

namespace pxk {
namespace dither {

namespace {

constexpr uint32_t kLcgMultiplier = 69069u;
constexpr uint32_t kLcgIncrement = 1013904243u;
constexpr uint32_t kLcgStart = 1131199209u;
constexpr double kTwoToMinus32 = 2.3283064365386963e-10;

// The record is read and written field by field, so that no padding byte of the
// buffer is ever written.
template <class Bound>
NoiseState<Bound> loadState(const uint8_t* p) {
    NoiseState<Bound> s;
#define PXK_LOAD_FIELD(f) std::memcpy(&s.f, p + offsetof(NoiseState<Bound>, f), sizeof s.f)
    PXK_LOAD_FIELD(idTag);
    PXK_LOAD_FIELD(seed);
    PXK_LOAD_FIELD(low);
    PXK_LOAD_FIELD(high);
    PXK_LOAD_FIELD(mid);
    PXK_LOAD_FIELD(scale);
    PXK_LOAD_FIELD(lcg);
    PXK_LOAD_FIELD(a);
    PXK_LOAD_FIELD(b);
    PXK_LOAD_FIELD(d);
    PXK_LOAD_FIELD(borrow);
#undef PXK_LOAD_FIELD
    return s;
}

template <class Bound>
void storeState(uint8_t* p, const NoiseState<Bound>& s) {
#define PXK_STORE_FIELD(f) std::memcpy(p + offsetof(NoiseState<Bound>, f), &s.f, sizeof s.f)
    PXK_STORE_FIELD(idTag);
    PXK_STORE_FIELD(seed);
    PXK_STORE_FIELD(low);
    PXK_STORE_FIELD(high);
    PXK_STORE_FIELD(mid);
    PXK_STORE_FIELD(scale);
    PXK_STORE_FIELD(lcg);
    PXK_STORE_FIELD(a);
    PXK_STORE_FIELD(b);
    PXK_STORE_FIELD(d);
    PXK_STORE_FIELD(borrow);
#undef PXK_STORE_FIELD
}

template <class Bound>
void initState(uint8_t* state, int32_t tag, Bound low, Bound high, uint32_t seed) {
    NoiseState<Bound> s;
    s.idTag = tag;
    s.seed = seed;
    s.low = low;
    s.high = high;
    s.mid = (static_cast<double>(high) + static_cast<double>(low)) * 0.5;
    s.scale = (static_cast<double>(high) - static_cast<double>(low)) * kTwoToMinus32;
    s.lcg = kLcgStart;
    s.a = seed;
    s.b = seed * kLcgMultiplier + kLcgIncrement;
    s.d = s.b * kLcgMultiplier + kLcgIncrement;
    s.borrow = -1;
    storeState(state, s);
}

// One value of the generator, in double, before its mapping to the output type.
template <class Bound>
PXK_INLINE double nextValue(NoiseState<Bound>& s) {
    const uint32_t t = s.b - s.d + static_cast<uint32_t>(s.borrow);
    const bool negative = (t & 0x80000000u) != 0;
    const uint32_t x = negative ? t - 18u : t;
    s.borrow = negative ? -1 : 0;
    s.d = s.b;
    s.b = s.a;
    s.a = x;
    s.lcg = s.lcg * kLcgMultiplier + kLcgIncrement;
    const int32_t r = static_cast<int32_t>(x + s.lcg);
    return static_cast<double>(r) * s.scale + s.mid;
}

// The fill loop of either form: `map` turns a value into the table's type.
template <class Bound, class T, class Map>
PxkResult fill(T* dst, int32_t length, uint8_t* state, int32_t tag, Map map) {
    if (dst == nullptr || state == nullptr) return pxkErrNullPtr;
    if (length < 1) return pxkErrSize;
    NoiseState<Bound> s = loadState<Bound>(state);
    if (s.idTag != tag) return pxkErrContext;
    for (int32_t i = 0; i < length; ++i) dst[i] = map(nextValue(s));
    storeState(state, s);
    return pxkOk;
}

}  // namespace

PxkResult pxkNoiseStateSize(int32_t* size) {
    if (size == nullptr) return pxkErrNullPtr;
    *size = static_cast<int32_t>(sizeof(NoiseState<float>));
    return pxkOk;
}

void pxkNoiseInit16u(uint8_t* state, int16_t low, int16_t high, uint32_t seed) {
    initState<int16_t>(state, kNoiseTag16u, low, high, seed);
}

void pxkNoiseInit32f(uint8_t* state, float low, float high, uint32_t seed) {
    initState<float>(state, kNoiseTag32f, low, high, seed);
}

// Rounded half to even, the low 16 bits kept.
PxkResult pxkNoiseFill16u(uint16_t* dst, int32_t length, uint8_t* state) {
    return fill<int16_t>(dst, length, state, kNoiseTag16u,
                         [](double v) { return static_cast<uint16_t>(static_cast<uint32_t>(pxkRoundHalfEven(v))); });
}

// Narrowed to float.
PxkResult pxkNoiseFill32f(float* dst, int32_t length, uint8_t* state) {
    return fill<float>(dst, length, state, kNoiseTag32f, [](double v) { return static_cast<float>(v); });
}

void buildNoiseTables(uint8_t* base, float low, float high) {
    uint8_t* offsetState = base + kOffsetStateAt;
    uint8_t* noiseState = base + kNoiseStateAt;
    pxkNoiseInit16u(offsetState, 0, 1024, 0);
    pxkNoiseFill16u(reinterpret_cast<uint16_t*>(base + kOffsetTableAt), kTableLength, offsetState);
    pxkNoiseInit32f(noiseState, low, high, 0);
    pxkNoiseFill32f(reinterpret_cast<float*>(base + kNoiseTableAt), kTableLength, noiseState);
}

}  // namespace dither
}  // namespace pxk
