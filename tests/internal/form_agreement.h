// Agreement of a form's vector twin with its scalar form over every input: shared by
// the tests of the forms of each matrix family.
#ifndef PXKCC_TESTS_INTERNAL_FORM_AGREEMENT_H
#define PXKCC_TESTS_INTERNAL_FORM_AGREEMENT_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "frame/pixel_block.h"
#include "frame/vec.h"

namespace formtest {

using pxk::vec::V128;

template <class V>
V loadLanes16(const int16_t* values) {
    V v;
    std::memcpy(&v, values, sizeof v);
    return v;
}

// Runs Form's vector apply on every (a, b, c) input, 8 pixels per 128-bit lane (each
// lane gets its own inputs), and compares each output byte with the scalar form.
template <class Form, class V>
long countDisagreements(const char* name) {
    constexpr int kLanes16 = sizeof(V) / 2;  // 16-bit lanes in V
    long bad = 0;
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            for (int c0 = 0; c0 < 256; c0 += kLanes16) {
                alignas(32) int16_t in[3][kLanes16];
                for (int i = 0; i < kLanes16; ++i) {
                    in[0][i] = static_cast<int16_t>(a);
                    in[1][i] = static_cast<int16_t>(b);
                    in[2][i] = static_cast<int16_t>(c0 + i);
                }
                pxk::Lanes3<V> v;
                for (int k = 0; k < 3; ++k) v.c[k] = loadLanes16<V>(in[k]);
                const pxk::Lanes3<V> out = Form::template apply<V>(v);
                alignas(32) int16_t lanes[3][kLanes16];
                for (int k = 0; k < 3; ++k) std::memcpy(lanes[k], &out.c[k], sizeof(V));
                for (int i = 0; i < kLanes16; ++i) {
                    const pxk::Pixel3 s = Form::apply(pxk::Pixel3{{static_cast<uint8_t>(a), static_cast<uint8_t>(b),
                                                                     static_cast<uint8_t>(c0 + i)}});
                    for (int k = 0; k < 3; ++k) {
                        const int lane = lanes[k][i];
                        const uint8_t byte = static_cast<uint8_t>(lane < 0 ? 0 : (lane > 255 ? 255 : lane));
                        if (byte != s.c[k]) {
                            if (bad < 5) {
                                ADD_FAILURE() << name << " (" << sizeof(V) * 8 << "-bit) at (" << a << ", " << b
                                              << ", " << c0 + i << ") channel " << k << ": block " << int(byte)
                                              << ", tail " << int(s.c[k]);
                            }
                            ++bad;
                        }
                    }
                }
            }
        }
    }
    return bad;
}

// The form against its scalar twin at every vector width of this build.
template <class Form>
long countDisagreementsAllWidths(const char* name) {
    long bad = countDisagreements<Form, V128>(name);
#if defined(PXKCC_TARGET_AVX2)
    bad += countDisagreements<Form, pxk::vec::V256>(name);
#endif
    return bad;
}

}  // namespace formtest

#endif
