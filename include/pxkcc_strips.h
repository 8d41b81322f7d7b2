/*
 * pxkcc_strips.h: one call of a pxkcc export split into horizontal strips that run
 * on a caller's thread pool. Header-only C++17; the library itself stays free of
 * threads, and this helper adds none of its own either: the caller's pool runs the
 * strips.
 *
 *     #include <pxkcc_strips.h>
 *
 *     // pool: any callable that takes a std::function<void()> and runs it, now or
 *     // later, on any thread (it must not wait for the caller to return).
 *     PxkResult r = pxkcc::runInStrips("pxkiRGBToYCbCr420_8u_C3P3R", height, 4, pool,
 *         [&](const pxkcc::Strip& s) {
 *             uint8_t* dst[3] = {pxkcc::stripRow(y, yStep, s),
 *                                pxkcc::stripRow(cb, cStep, s, 2),   // chroma: half the rows
 *                                pxkcc::stripRow(cr, cStep, s, 2)};
 *             const int32_t steps[3] = {yStep, cStep, cStep};
 *             return pxkiRGBToYCbCr420_8u_C3P3R(pxkcc::stripRow(rgb, rgbStep, s), rgbStep,
 *                                              dst, steps, PxkSize{width, s.height});
 *         });
 *
 * Which exports may be split. Every export writes its rows from the top, and most
 * compute each output row group from the input rows of the same group alone, so that
 * any split on group boundaries gives the bytes of one call. The rule, read off the
 * export's name (stripRuleFor):
 *   - Row groups: a 4:2:0 side (one chroma row for two image rows) makes strips start
 *     on even rows; a 1620 side (one chroma row for four) and the members that resample
 *     chroma with means between 4:2:0, 4:1:1 and 1620 (whose sizes are multiples of 4)
 *     on multiples of 4; all others on any row. Every strip but the last is a whole
 *     number of groups, and the last takes the rows that are left, so that an odd last
 *     row meets the same odd-size rule (and status) as in one call.
 *   - Refused (std::invalid_argument), because their rows are not independent:
 *       ReduceBits: error diffusion carries errors from row to row, the noise runs
 *         over the whole region, and the ordered matrix is indexed from the region's
 *         first row;
 *       the demosaics (CFA, DemosaicAHD): they read neighbourhoods across rows and
 *         treat the borders of the whole image apart;
 *       the tone maps: one scale measured from the whole image;
 *       the chroma filters to 4:2:2 (_Filter): they interpolate between chroma rows
 *         and treat the region's first and last rows apart (some also take a strip
 *         layout of their own);
 *       the interlaced members (_Interlace): they weight rows of each field across
 *         the region and treat its first and last rows apart;
 *       1620 to 4:2:0 and 4:2:0 to 4:1:1: means between chroma rows, the last rows
 *         repeated;
 *       the _L members (whose twins are demosaics) and anything outside the naming
 *         grammar (the version query).
 * Statuses: every strip has the whole call's width, pointers, steps and values, and a
 * height that the sampling accepts, so a strip fails only where the whole call fails,
 * and then every strip fails before writing. (The members that take means need whole
 * groups of 4 rows; another height goes to them as one call, which refuses it.) The result is the first error in strip
 * order, else the largest warning (pxkWarnOddSize), else pxkOk.
 * Not for strips: steps of 0 (every strip would write the same rows) and
 * destinations that overlap their sources in other than the in-place members' way.
 */
#ifndef PXKCC_STRIPS_H
#define PXKCC_STRIPS_H

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "pxkcc.h"

namespace pxkcc {

/* Rows [y, y + height) of the region. */
struct Strip {
    int32_t y;
    int32_t height;
};

/* Whether an export may run in strips, and on which row boundaries. */
struct StripRule {
    bool allowed;
    int32_t rowGroup;    /* strips start on multiples of it (1, 2 or 4) */
    const char* reason;  /* why it is refused; "" when allowed */
    bool wholeGroups;    /* the export takes only heights of whole groups */
};

namespace strips_detail {

/* Chroma rows shared by image rows in a sampling of a name: 420 -> 2, 1620 -> 4. */
inline int32_t rowsShared(const std::string& side) {
    if (side.find("1620") != std::string::npos) return 4;
    if (side.find("420") != std::string::npos) return 2;
    return 1;
}

}  // namespace strips_detail

/* The rule for an export, from its name (see the top of this file). */
inline StripRule stripRuleFor(const std::string& name) {
    auto refuse = [](const char* reason) { return StripRule{false, 0, reason, false}; };
    auto has = [&](const char* word) { return name.find(word) != std::string::npos; };
    if (name.rfind("pxki", 0) != 0) return refuse("not a conversion of rows");
    if (name.size() > 2 && name.compare(name.size() - 2, 2, "_L") == 0) {
        return refuse("an _L member, whose work is a demosaic's");
    }
    if (has("ReduceBits")) {
        return refuse("bit-depth reduction: diffusion, noise and the ordered matrix run over the whole region");
    }
    if (has("CFA") || has("Demosaic")) return refuse("a demosaic: neighbourhoods across rows, the image's borders");
    if (has("ToneMap")) return refuse("a tone map: one scale measured from the whole image");
    if (has("_Interlace")) return refuse("an interlaced member: field rows weighted across the region");
    /* The operation: "<source>To<destination>" or one side for both. */
    const std::string op = name.substr(4, name.find('_') == std::string::npos ? std::string::npos : name.find('_') - 4);
    std::string from = op, to = op;
    for (std::size_t at = op.find("To"); at != std::string::npos; at = op.find("To", at + 1)) {
        const char next = at + 2 < op.size() ? op[at + 2] : '\0';
        if (at > 0 && ((next >= 'A' && next <= 'Z') || (next >= '0' && next <= '9'))) {
            from = op.substr(0, at);
            to = op.substr(at + 2);
            break;
        }
    }
    const int32_t fromRows = strips_detail::rowsShared(from), toRows = strips_detail::rowsShared(to);
    if (has("_Filter") && to.find("422") != std::string::npos) {
        return refuse("a chroma filter to 4:2:2: interpolation between chroma rows");
    }
    /* A destination named by its sampling alone: the members that take means. Those
     * that add chroma rows take means between source rows; those that drop rows pick
     * one source row for each output row. */
    const bool means = !to.empty() && to[0] >= '0' && to[0] <= '9';
    if (means && toRows < fromRows) return refuse("means between chroma rows, the last rows repeated");
    return StripRule{true, means ? 4 : std::max(fromRows, toRows), "", means};
}

/* Row 0 of a plane moved to the strip's first row; `heightDivisor` is the image rows
 * one row of the plane covers (2 for 4:2:0 chroma, 4 for 1620 chroma). */
template <class T>
T* stripRow(T* row0, int32_t step, const Strip& strip, int32_t heightDivisor = 1) {
    using Byte = typename std::conditional<std::is_const<T>::value, const unsigned char, unsigned char>::type;
    const std::ptrdiff_t rows = strip.y / heightDivisor;
    return reinterpret_cast<T*>(reinterpret_cast<Byte*>(row0) + rows * std::ptrdiff_t(step));
}

/* At most `count` strips of whole row groups covering `height` rows; the last takes
 * the rows left over. */
inline std::vector<Strip> planStrips(int32_t height, int32_t rowGroup, int count) {
    std::vector<Strip> strips;
    if (height <= 0) return {Strip{0, height}};
    const int32_t groups = height / rowGroup;
    const int32_t n = std::max(1, std::min<int32_t>(count < 1 ? 1 : count, groups));
    int32_t y = 0;
    for (int32_t i = 0; i < n; ++i) {
        const int32_t g = groups / n + (i < groups % n ? 1 : 0);
        const int32_t rows = (i == n - 1) ? height - y : g * rowGroup;
        strips.push_back(Strip{y, rows});
        y += rows;
    }
    return strips;
}

/* Splits the rows of one call of `exportName` into at most `count` strips, runs
 * `call(strip)` (which makes the call for that strip's rows) for each through `pool`,
 * and waits for all of them. Throws std::invalid_argument for an export whose rows
 * are not independent, before any call; an exception from `call` is rethrown here
 * after every strip has ended. */
template <class Pool, class Call>
PxkResult runInStrips(const std::string& exportName, int32_t height, int count, Pool&& pool, Call&& call) {
    const StripRule rule = stripRuleFor(exportName);
    if (!rule.allowed) throw std::invalid_argument(exportName + " cannot run in strips: " + rule.reason);
    /* A height that such an export refuses goes to it whole, for its own status. */
    const int parts = (rule.wholeGroups && height % rule.rowGroup != 0) ? 1 : count;
    const std::vector<Strip> strips = planStrips(height, rule.rowGroup, parts);
    if (strips.size() == 1) return call(strips.front());

    std::vector<PxkResult> results(strips.size(), pxkOk);
    std::mutex mutex;
    std::condition_variable done;
    std::size_t pending = strips.size();
    std::exception_ptr failure;
    for (std::size_t i = 0; i < strips.size(); ++i) {
        pool(std::function<void()>([&, i] {
            PxkResult r = pxkOk;
            std::exception_ptr thrown;
            try {
                r = call(strips[i]);
            } catch (...) {
                thrown = std::current_exception();
            }
            std::lock_guard<std::mutex> lock(mutex);
            results[i] = r;
            if (thrown && !failure) failure = thrown;
            if (--pending == 0) done.notify_all();
        }));
    }
    std::unique_lock<std::mutex> lock(mutex);
    done.wait(lock, [&] { return pending == 0; });
    if (failure) std::rethrow_exception(failure);
    PxkResult warning = pxkOk;
    for (PxkResult r : results) {
        if (r < 0) return r;
        warning = std::max(warning, r);
    }
    return warning;
}

}  // namespace pxkcc

#endif
