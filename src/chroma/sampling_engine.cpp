#include "chroma/sampling_engine.h"

#include <algorithm>

#include "chroma/byte_moves.h"
#include "chroma/chroma_rows.h"
#include "chroma/row_copier.h"
#include "frame/drivers.h"

namespace pxk {
namespace chroma {

uint8_t* rowOf(uint8_t* plane, int32_t step, int32_t row) {
    return byteOffset(plane, static_cast<std::intptr_t>(step) * row);
}

namespace {

template <class St>
CbCr readChromaWith(const Side& s, int32_t row, int32_t c, int32_t n, uint8_t* cb, uint8_t* cr, uint8_t* luma) {
    switch (s.layout) {
        case Layout::Planes: {
            const uint8_t* p1 = rowOf(s.chroma[0], s.chromaStep[0], row) + c;
            const uint8_t* p2 = rowOf(s.chroma[1], s.chromaStep[1], row) + c;
            return s.cbAt == 1 ? CbCr{p1, p2} : CbCr{p2, p1};
        }
        case Layout::Pairs: {
            const uint8_t* pairs = rowOf(s.chroma[0], s.chromaStep[0], row) + 2 * c;
            if (s.cbAt == 0) {
                unzipPairs(pairs, cb, cr, n);
            } else {
                unzipPairs(pairs, cr, cb, n);
            }
            return CbCr{cb, cr};
        }
        case Layout::Packed:
            break;
    }
    const uint8_t* packed = rowOf(s.luma, s.lumaStep, row) + 4 * c;
    const bool cbFirst = s.cbAt < s.crAt;
    uint8_t* first = cbFirst ? cb : cr;
    uint8_t* second = cbFirst ? cr : cb;
    uint8_t* y = luma == nullptr ? nullptr : luma + 2 * c;
    if (s.lumaByte == 0) {
        if (y) unzipPackedPairs<0, PackedChroma::AllPairs, true, St>(packed, y, first, second, n);
        else unzipPackedPairs<0, PackedChroma::AllPairs, false>(packed, nullptr, first, second, n);
    } else {
        if (y) unzipPackedPairs<1, PackedChroma::AllPairs, true, St>(packed, y, first, second, n);
        else unzipPackedPairs<1, PackedChroma::AllPairs, false>(packed, nullptr, first, second, n);
    }
    return CbCr{cb, cr};
}

}  // namespace

CbCr readChroma(const Side& s, int32_t row, int32_t c, int32_t n, uint8_t* cb, uint8_t* cr, uint8_t* luma) {
    return readChromaWith<PlainStores>(s, row, c, n, cb, cr, luma);
}

template <class St>
void writeChroma(const Side& d, const Side& src, int32_t row, int32_t c, int32_t n, CbCr v) {
    switch (d.layout) {
        case Layout::Planes: {
            uint8_t* p1 = rowOf(d.chroma[0], d.chromaStep[0], row) + c;
            uint8_t* p2 = rowOf(d.chroma[1], d.chromaStep[1], row) + c;
            uint8_t* cb = d.cbAt == 1 ? p1 : p2;
            uint8_t* cr = d.cbAt == 1 ? p2 : p1;
            if (v.cb != cb) copyRow(v.cb, cb, static_cast<std::size_t>(n), false);
            if (v.cr != cr) copyRow(v.cr, cr, static_cast<std::size_t>(n), false);
            return;
        }
        case Layout::Pairs: {
            uint8_t* pairs = rowOf(d.chroma[0], d.chromaStep[0], row) + 2 * c;
            if (d.cbAt == 0) {
                zipPairs<St>(v.cb, v.cr, pairs, n);
            } else {
                zipPairs<St>(v.cr, v.cb, pairs, n);
            }
            return;
        }
        case Layout::Packed:
            break;
    }
    const uint8_t* y = rowOf(src.luma, src.lumaStep, row) + 2 * c;
    uint8_t* packed = rowOf(d.luma, d.lumaStep, row) + 4 * c;
    const bool cbFirst = d.cbAt < d.crAt;
    const uint8_t* first = cbFirst ? v.cb : v.cr;
    const uint8_t* second = cbFirst ? v.cr : v.cb;
    if (d.lumaByte == 0) {
        zipPackedPairs<0, St>(y, first, second, packed, n);
    } else {
        zipPackedPairs<1, St>(y, first, second, packed, n);
    }
}

Targets chromaTargets(const Side& d, int32_t row, int32_t c, uint8_t* cbScratch, uint8_t* crScratch) {
    if (d.layout != Layout::Planes) return Targets{cbScratch, crScratch};
    uint8_t* p1 = rowOf(d.chroma[0], d.chromaStep[0], row) + c;
    uint8_t* p2 = rowOf(d.chroma[1], d.chromaStep[1], row) + c;
    return d.cbAt == 1 ? Targets{p1, p2} : Targets{p2, p1};
}

namespace {

constexpr int32_t kChunk = kChromaChunk;

// The rule that picks a source chroma sample for an output one.
enum class Rule {
    Same,        // Cd[r][c] = Cs[r][c]
    DropRows,    // 422 -> 420: Cs[2r][c]
    RepeatRows,  // 420 -> 422: Cs[r/2][c]
    DropColumns, // 422 -> 411: Cs[r][2c]
    RepeatColumns, // 411 -> 422: Cs[r][c/2]
    SplitRows,   // 420 -> 411: Cs[r/2][2c + r%2]
    WeaveRows,   // 411 -> 420: Cs[2r + c%2][c/2]
};

Rule ruleFor(Sampling from, Sampling to) {
    if (from == to) return Rule::Same;
    if (from == Sampling::S422) return to == Sampling::S420 ? Rule::DropRows : Rule::DropColumns;
    if (from == Sampling::S420) return to == Sampling::S422 ? Rule::RepeatRows : Rule::SplitRows;
    return to == Sampling::S422 ? Rule::RepeatColumns : Rule::WeaveRows;
}

// Luma rows to a destination with a luma plane (a packed destination takes its luma
// with the chroma): copied between planes, picked out of packed rows.
template <class St>
void copyLumaWith(const Side& s, const Side& d, int32_t width, int32_t height, bool streamCopies) {
    if (d.layout == Layout::Packed) return;
    if (s.layout != Layout::Packed) {
        copyRows(s.luma, s.lumaStep, d.luma, d.lumaStep, static_cast<std::size_t>(width), height, streamCopies);
        return;
    }
    for (int32_t y = 0; y < height; ++y) {
        uint8_t* to = rowOf(d.luma, d.lumaStep, y);
        const uint8_t* from = rowOf(s.luma, s.lumaStep, y);
        if (s.lumaByte == 0) {
            unzipPairs<true, false, St>(from, to, nullptr, width);
        } else {
            unzipPairs<false, true, St>(from, nullptr, to, width);
        }
    }
}

// Whether the luma of a packed source goes out as its chroma is read: into a
// destination with a luma plane. Every packed row is then walked once (4:2:2 to
// 4:2:0 takes the luma of the odd rows, whose chroma is dropped, right after the row
// above, so that the luma rows still go out top to bottom).
bool lumaWithChroma(const Side& s, const Side& d) {
    return s.layout == Layout::Packed && d.layout != Layout::Packed;
}

// The start of destination luma row `row` where its luma goes out with the chroma.
uint8_t* fusedLuma(const Side& s, const Side& d, int32_t row) {
    return lumaWithChroma(s, d) ? rowOf(d.luma, d.lumaStep, row) : nullptr;
}

// Luma of packed row `row`, pixel pairs [c, c + n), to the same row of a luma plane.
template <class St>
void lumaOfPackedRow(const Side& s, const Side& d, int32_t row, int32_t c, int32_t n) {
    const uint8_t* from = rowOf(s.luma, s.lumaStep, row) + 4 * c;
    uint8_t* to = rowOf(d.luma, d.lumaStep, row) + 2 * c;
    if (s.lumaByte == 0) {
        unzipPairs<true, false, St>(from, to, nullptr, 2 * n);
    } else {
        unzipPairs<false, true, St>(from, nullptr, to, 2 * n);
    }
}

// A packed source into pairs: the chroma bytes of a packed row are a row of pairs as
// they stand (their two bytes exchanged where the orders differ), so one split of the
// packed bytes makes the luma and the pairs of source row `from`, pixel pairs
// [c, c + n). False where the split does not fit (chroma in the even bytes and the
// orders different: no member has it).
template <class St>
bool splitPackedIntoPairs(const Side& s, const Side& d, int32_t from, int32_t row, int32_t c, int32_t n) {
    if (s.layout != Layout::Packed || d.layout != Layout::Pairs) return false;
    const bool swap = (s.cbAt < s.crAt) != (d.cbAt == 0);
    const uint8_t* packed = rowOf(s.luma, s.lumaStep, from) + 4 * c;
    uint8_t* y = rowOf(d.luma, d.lumaStep, from) + 2 * c;
    uint8_t* pairs = rowOf(d.chroma[0], d.chromaStep[0], row) + 2 * c;
    if (s.lumaByte == 0) {
        if (swap) {
            unzipPairs<true, true, St, true>(packed, y, pairs, 2 * n);
        } else {
            unzipPairs<true, true, St>(packed, y, pairs, 2 * n);
        }
        return true;
    }
    if (swap) return false;
    unzipPairs<true, true, St>(packed, pairs, y, 2 * n);
    return true;
}

// Pairs into a packed destination: a packed row is its luma row and its row of chroma
// pairs interleaved byte by byte (the pairs' two bytes exchanged where the orders
// differ), for output row `row` from chroma row `from`, pixel pairs [c, c + n). False
// where the interleave does not fit (chroma in the even bytes and the orders
// different: no member has it).
template <class St>
bool zipPairsIntoPacked(const Side& s, const Side& d, int32_t from, int32_t row, int32_t c, int32_t n) {
    if (s.layout != Layout::Pairs || d.layout != Layout::Packed) return false;
    const bool swap = (d.cbAt < d.crAt) != (s.cbAt == 0);
    const uint8_t* y = rowOf(s.luma, s.lumaStep, row) + 2 * c;
    const uint8_t* pairs = rowOf(s.chroma[0], s.chromaStep[0], from) + 2 * c;
    uint8_t* packed = rowOf(d.luma, d.lumaStep, row) + 4 * c;
    if (d.lumaByte == 0) {
        if (swap) {
            zipPairs<St, true>(y, pairs, packed, 2 * n);
        } else {
            zipPairs<St>(y, pairs, packed, 2 * n);
        }
        return true;
    }
    if (swap) return false;
    zipPairs<St>(pairs, y, packed, 2 * n);
    return true;
}

// 4:1:1 pairs into a packed destination in the same order: each source pair goes into
// two packed pairs beside the luma of output row `row`, output chroma columns
// [c, c + n) (n even). False where the orders differ (no member has it).
template <class St>
bool zipRepeatedPairsIntoPacked(const Side& s, const Side& d, int32_t row, int32_t c, int32_t n) {
    if (s.layout != Layout::Pairs || d.layout != Layout::Packed) return false;
    if ((d.cbAt < d.crAt) != (s.cbAt == 0)) return false;
    const uint8_t* y = rowOf(s.luma, s.lumaStep, row) + 2 * c;
    const uint8_t* pairs = rowOf(s.chroma[0], s.chromaStep[0], row) + c;
    uint8_t* packed = rowOf(d.luma, d.lumaStep, row) + 4 * c;
    if (d.lumaByte == 0) {
        zipPackedRepeatedPairs<0, St>(y, pairs, packed, n / 2);
    } else {
        zipPackedRepeatedPairs<1, St>(y, pairs, packed, n / 2);
    }
    return true;
}

// A packed source into 4:1:1 planes or pairs (in the same order): luma and the chroma
// of every other pixel pair of packed row `row` in one walk, for output chroma columns
// [c, c + n). False where the pairs' order differs (no member has it).
template <class St>
bool splitPackedInto411(const Side& s, const Side& d, int32_t row, int32_t c, int32_t n) {
    if (s.layout != Layout::Packed || d.layout == Layout::Packed) return false;
    const bool cbFirst = s.cbAt < s.crAt;
    const uint8_t* packed = rowOf(s.luma, s.lumaStep, row) + 8 * c;
    uint8_t* y = rowOf(d.luma, d.lumaStep, row) + 4 * c;
    if (d.layout == Layout::Pairs) {
        if (cbFirst != (d.cbAt == 0)) return false;
        uint8_t* pairs = rowOf(d.chroma[0], d.chromaStep[0], row) + 2 * c;
        if (s.lumaByte == 0) {
            unzipPackedPairs<0, PackedChroma::EveryOtherPairAsPairs, true, St>(packed, y, pairs, nullptr, n);
        } else {
            unzipPackedPairs<1, PackedChroma::EveryOtherPairAsPairs, true, St>(packed, y, pairs, nullptr, n);
        }
        return true;
    }
    const Targets t = chromaTargets(d, row, c, nullptr, nullptr);
    uint8_t* first = cbFirst ? t.cb : t.cr;
    uint8_t* second = cbFirst ? t.cr : t.cb;
    if (s.lumaByte == 0) {
        unzipPackedPairs<0, PackedChroma::EveryOtherPair, true, St>(packed, y, first, second, n);
    } else {
        unzipPackedPairs<1, PackedChroma::EveryOtherPair, true, St>(packed, y, first, second, n);
    }
    return true;
}

// Output chroma row `row`, columns [c, c + n), by the rule.
template <class St>
void chromaChunk(const Side& s, const Side& d, Rule rule, int32_t row, int32_t c, int32_t n) {
    alignas(16) uint8_t in[2][2 * kChunk];
    alignas(16) uint8_t in2[2][kChunk];
    alignas(16) uint8_t out[2][kChunk];
    CbCr v{};
    switch (rule) {
        case Rule::Same:
        case Rule::DropRows:
        case Rule::RepeatRows: {
            const int32_t from = rule == Rule::Same ? row : (rule == Rule::DropRows ? 2 * row : row / 2);
            if (rule != Rule::RepeatRows && splitPackedIntoPairs<St>(s, d, from, row, c, n)) {
                if (rule == Rule::DropRows) lumaOfPackedRow<St>(s, d, from + 1, c, n);
                return;
            }
            if (zipPairsIntoPacked<St>(s, d, from, row, c, n)) return;
            // A planar destination is read straight into; otherwise scratch.
            const Targets t = chromaTargets(d, row, c, out[0], out[1]);
            v = readChromaWith<St>(s, from, c, n, t.cb, t.cr, fusedLuma(s, d, from));
            if (rule == Rule::DropRows && lumaWithChroma(s, d)) lumaOfPackedRow<St>(s, d, from + 1, c, n);
            break;
        }
        case Rule::DropColumns:
        case Rule::SplitRows: {
            const int32_t from = rule == Rule::DropColumns ? row : row / 2;
            if (rule == Rule::DropColumns && splitPackedInto411<St>(s, d, row, c, n)) return;
            const CbCr src = readChromaWith<St>(s, from, 2 * c, 2 * n, in[0], in[1], fusedLuma(s, d, from));
            const Targets t = chromaTargets(d, row, c, out[0], out[1]);
            const bool odd = rule == Rule::SplitRows && row % 2 == 1;
            if (odd) {
                unzipPairs<false, true>(src.cb, nullptr, t.cb, n);
                unzipPairs<false, true>(src.cr, nullptr, t.cr, n);
            } else {
                unzipPairs<true, false>(src.cb, t.cb, nullptr, n);
                unzipPairs<true, false>(src.cr, t.cr, nullptr, n);
            }
            v = CbCr{t.cb, t.cr};
            break;
        }
        case Rule::RepeatColumns: {
            if (zipRepeatedPairsIntoPacked<St>(s, d, row, c, n)) return;
            const CbCr src = readChroma(s, row, c / 2, n / 2, in[0], in[1]);
            const Targets t = chromaTargets(d, row, c, out[0], out[1]);
            zipPairs(src.cb, src.cb, t.cb, n / 2);
            zipPairs(src.cr, src.cr, t.cr, n / 2);
            v = CbCr{t.cb, t.cr};
            break;
        }
        case Rule::WeaveRows: {
            const CbCr even = readChroma(s, 2 * row, c / 2, n / 2, in[0], in[1]);
            const CbCr odd = readChroma(s, 2 * row + 1, c / 2, n / 2, in2[0], in2[1]);
            const Targets t = chromaTargets(d, row, c, out[0], out[1]);
            zipPairs(even.cb, odd.cb, t.cb, n / 2);
            zipPairs(even.cr, odd.cr, t.cr, n / 2);
            v = CbCr{t.cb, t.cr};
            break;
        }
    }
    writeChroma<St>(d, s, row, c, n, v);
}

template <class St>
void convertWith(const Side& s, const Side& d, int32_t width, int32_t height, bool streamLumaCopies) {
    const Rule rule = ruleFor(s.sampling, d.sampling);
    const int32_t rows = chromaRows(d.sampling, height), cols = chromaColumns(d.sampling, width);
    for (int32_t r = 0; r < rows; ++r) {
        for (int32_t c = 0; c < cols; c += kChunk) chromaChunk<St>(s, d, rule, r, c, std::min(kChunk, cols - c));
    }
    if (!lumaWithChroma(s, d)) copyLumaWith<St>(s, d, width, height, streamLumaCopies);
}

}  // namespace

void writeChromaPlain(const Side& d, const Side& src, int32_t row, int32_t c, int32_t n, CbCr v) {
    writeChroma<PlainStores>(d, src, row, c, n, v);
}

void copyLuma(const Side& s, const Side& d, int32_t width, int32_t height, bool streamCopies) {
    copyLumaWith<PlainStores>(s, d, width, height, streamCopies);
}

Side packedSide(const uint8_t* p, int32_t step, int lumaByte, int cbAt, int crAt) {
    return Side{Layout::Packed, Sampling::S422, lumaByte, cbAt, crAt, const_cast<uint8_t*>(p), step, {}, {}};
}

Side pairsSide(Sampling s, const uint8_t* y, int32_t yStep, const uint8_t* pairs, int32_t pairsStep, int cbAt) {
    return Side{Layout::Pairs, s, 0, cbAt, 1 - cbAt, const_cast<uint8_t*>(y), yStep,
                {const_cast<uint8_t*>(pairs), nullptr}, {pairsStep, 0}};
}

Side planesSide(Sampling s, const uint8_t* const* planes, const int32_t* steps, int cbAt) {
    return Side{Layout::Planes, s, 0, cbAt, 3 - cbAt, const_cast<uint8_t*>(planes[0]), steps[0],
                {const_cast<uint8_t*>(planes[1]), const_cast<uint8_t*>(planes[2])}, {steps[1], steps[2]}};
}

void convertSampling(const Side& src, const Side& dst, int32_t width, int32_t height, Stores stores) {
    withStores(stores.streamOwnStores,
               [&](auto st) { convertWith<decltype(st)>(src, dst, width, height, stores.streamLumaCopies); });
}

}  // namespace chroma
}  // namespace pxk
