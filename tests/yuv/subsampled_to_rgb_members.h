// The subsampled YCbCr and YUV -> RGB members as the tests see them: for each, its
// rule (sampling, layouts, chroma order, the form of its vector columns and of the
// rest, odd sizes), its least size, the order of its checks and how to call it; and
// the groups the test files take them in.
#ifndef PXKCC_TESTS_YUV_SUBSAMPLED_TO_RGB_MEMBERS_H
#define PXKCC_TESTS_YUV_SUBSAMPLED_TO_RGB_MEMBERS_H

#include <stdexcept>
#include <string>
#include <vector>

#include "pxkcc.h"
#include "subsampled_to_rgb_harness.h"

namespace s2rgb {

// Rule fields in order: sampling, source, first chroma is Cb (or U), destination, B
// first, vector columns, vector form, other form, odd last 4:2:2 pixel converted,
// chroma filtered in the row, one long row.
inline const std::vector<Member>& allMembers() {
    static const std::vector<Member> list = {
        {"YCbCr420ToBGR_8u_P2C3R",
         {Sampling::S420, Source::P2, true, Dest::C3, true, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr420ToBGR_8u_P2C3R(a.src, a.srcStep, a.srcChroma, a.srcChromaStep, a.dst, a.dstStep,
                                               a.size);
         }},
        {"YCbCr420ToBGR_8u_P2C4R",
         {Sampling::S420, Source::P2, true, Dest::C4, true, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr420ToBGR_8u_P2C4R(a.src, a.srcStep, a.srcChroma, a.srcChromaStep, a.dst, a.dstStep, a.size,
                                               a.alpha);
         }},
        {"YCbCr420ToRGB_8u_P2C3R",
         {Sampling::S420, Source::P2, true, Dest::C3, false, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr420ToRGB_8u_P2C3R(a.src, a.srcStep, a.srcChroma, a.srcChromaStep, a.dst, a.dstStep,
                                               a.size);
         }},
        {"YCbCr420ToRGB_8u_P2C4R",
         {Sampling::S420, Source::P2, true, Dest::C4, false, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr420ToRGB_8u_P2C4R(a.src, a.srcStep, a.srcChroma, a.srcChromaStep, a.dst, a.dstStep, a.size,
                                               a.alpha);
         }},
        {"YCrCb420ToBGR_8u_P2C3R",
         {Sampling::S420, Source::P2, false, Dest::C3, true, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCrCb420ToBGR_8u_P2C3R(a.src, a.srcStep, a.srcChroma, a.srcChromaStep, a.dst, a.dstStep,
                                               a.size);
         }},
        {"YCrCb420ToBGR_8u_P2C4R",
         {Sampling::S420, Source::P2, false, Dest::C4, true, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::SizeThenPointers,
         false,
         [](const CallArgs& a) {
             return pxkiYCrCb420ToBGR_8u_P2C4R(a.src, a.srcStep, a.srcChroma, a.srcChromaStep, a.dst, a.dstStep, a.size,
                                               a.alpha);
         }},
        {"YCrCb420ToRGB_8u_P2C3R",
         {Sampling::S420, Source::P2, false, Dest::C3, false, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCrCb420ToRGB_8u_P2C3R(a.src, a.srcStep, a.srcChroma, a.srcChromaStep, a.dst, a.dstStep,
                                               a.size);
         }},
        {"YCrCb420ToRGB_8u_P2C4R",
         {Sampling::S420, Source::P2, false, Dest::C4, false, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::SizeThenPointers,
         false,
         [](const CallArgs& a) {
             return pxkiYCrCb420ToRGB_8u_P2C4R(a.src, a.srcStep, a.srcChroma, a.srcChromaStep, a.dst, a.dstStep, a.size,
                                               a.alpha);
         }},
        {"YCbCr420ToBGR_8u_P3C3R",
         {Sampling::S420, Source::P3, true, Dest::C3, true, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr420ToBGR_8u_P3C3R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size);
         }},
        {"YCbCr420ToBGR_8u_P3C4R",
         {Sampling::S420, Source::P3, true, Dest::C4, true, Columns::Cols8, subrgb::highProductInverseForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr420ToBGR_8u_P3C4R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size, a.alpha);
         }},
        {"YCbCr420ToRGB_8u_P3C3R",
         {Sampling::S420, Source::P3, true, Dest::C3, false, Columns::Cols8, subrgb::highProductInverseForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr420ToRGB_8u_P3C3R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size);
         }},
        {"YCrCb420ToRGB_8u_P3C4R",
         {Sampling::S420, Source::P3, false, Dest::C4, false, Columns::Cols8, subrgb::highProductInverseForm,
          subrgb::wideRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCrCb420ToRGB_8u_P3C4R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size, a.alpha);
         }},
        {"YCrCb420ToBGR_Filter_8u_P3C4R",
         {Sampling::S420, Source::P3, false, Dest::C4, true, Columns::None, subrgb::filterForm, subrgb::filterForm,
          false, true, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCrCb420ToBGR_Filter_8u_P3C4R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size, a.alpha);
         }},
        {"YCbCr422ToBGR_8u_C2C3R",
         {Sampling::S422, Source::C2, true, Dest::C3, true, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, true, false, false},
         {2, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) { return pxkiYCbCr422ToBGR_8u_C2C3R(a.src, a.srcStep, a.dst, a.dstStep, a.size); }},
        {"YCbCr422ToBGR_8u_C2C4R",
         {Sampling::S422, Source::C2, true, Dest::C4, true, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, true, false, false},
         {2, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr422ToBGR_8u_C2C4R(a.src, a.srcStep, a.dst, a.dstStep, a.size, a.alpha);
         }},
        {"YCbCr422ToRGB_8u_C2C3R",
         {Sampling::S422, Source::C2, true, Dest::C3, false, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, true, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) { return pxkiYCbCr422ToRGB_8u_C2C3R(a.src, a.srcStep, a.dst, a.dstStep, a.size); }},
        {"YCbCr422ToRGB_8u_C2C4R",
         {Sampling::S422, Source::C2, true, Dest::C4, false, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, true, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr422ToRGB_8u_C2C4R(a.src, a.srcStep, a.dst, a.dstStep, a.size, a.alpha);
         }},
        {"YCrCb422ToBGR_8u_C2C3R",
         {Sampling::S422, Source::C2, false, Dest::C3, true, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, true, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) { return pxkiYCrCb422ToBGR_8u_C2C3R(a.src, a.srcStep, a.dst, a.dstStep, a.size); }},
        {"YCrCb422ToBGR_8u_C2C4R",
         {Sampling::S422, Source::C2, false, Dest::C4, true, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, true, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCrCb422ToBGR_8u_C2C4R(a.src, a.srcStep, a.dst, a.dstStep, a.size, a.alpha);
         }},
        {"YCrCb422ToRGB_8u_C2C3R",
         {Sampling::S422, Source::C2, false, Dest::C3, false, Columns::Cols8, subrgb::highProduct411And422Form,
          subrgb::rawChromaOffsetForm, true, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) { return pxkiYCrCb422ToRGB_8u_C2C3R(a.src, a.srcStep, a.dst, a.dstStep, a.size); }},
        {"YCrCb422ToRGB_8u_C2C4R",
         {Sampling::S422, Source::C2, false, Dest::C4, false, Columns::None, subrgb::wideRoundedForm,
          subrgb::wideRoundedForm, true, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCrCb422ToRGB_8u_C2C4R(a.src, a.srcStep, a.dst, a.dstStep, a.size, a.alpha);
         }},
        {"YCbCr422ToRGB_8u_C2P3R",
         {Sampling::S422, Source::C2, true, Dest::P3, false, Columns::Cols8, subrgb::highProduct411And422Form,
          subrgb::rawChromaOffsetForm, true, false, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr422ToRGB_8u_C2P3R(a.src, a.srcStep, a.dstPlanes, a.dstStep, a.size);
         }},
        {"YCrCb422ToRGB_8u_C2P3R",
         {Sampling::S422, Source::C2, false, Dest::P3, false, Columns::Cols8, subrgb::highProduct411And422Form,
          subrgb::rawChromaOffsetForm, true, false, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCrCb422ToRGB_8u_C2P3R(a.src, a.srcStep, a.dstPlanes, a.dstStep, a.size);
         }},
        {"YCbCr422ToBGR_8u_P3C3R",
         {Sampling::S422, Source::P3, true, Dest::C3, true, Columns::None, subrgb::rawChromaOffsetForm,
          subrgb::rawChromaOffsetForm, false, false, false},
         {2, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr422ToBGR_8u_P3C3R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size);
         }},
        {"YCbCr422ToRGB_8u_P3C3R",
         {Sampling::S422, Source::P3, true, Dest::C3, false, Columns::None, subrgb::rawChromaOffsetForm,
          subrgb::rawChromaOffsetForm, false, false, false},
         {2, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr422ToRGB_8u_P3C3R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size);
         }},
        {"YCbCr411ToBGR_8u_P3C3R",
         {Sampling::S411, Source::P3, true, Dest::C3, true, Columns::Cols8, subrgb::highProduct411And422Form,
          subrgb::form411, false, false, false},
         {4, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr411ToBGR_8u_P3C3R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size);
         }},
        {"YCbCr411ToBGR_8u_P3C4R",
         {Sampling::S411, Source::P3, true, Dest::C4, true, Columns::Cols8, subrgb::highProduct411And422Form,
          subrgb::form411, false, false, false},
         {4, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYCbCr411ToBGR_8u_P3C4R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size, a.alpha);
         }},
        {"YUV420ToRGB_8u_P3R",
         {Sampling::S420, Source::P3, true, Dest::P3, false, Columns::None, subrgb::yuvTruncatingFullForm,
          subrgb::yuvTruncatingFullForm, false, false, false},
         {1, 1},
         Checks::ArraysThenSizeThenEntries,
         false,
         [](const CallArgs& a) {
             return pxkiYUV420ToRGB_8u_P3R(a.srcPlanes, a.srcSteps, a.dstPlanes, a.dstStep, a.size);
         }},
        {"YUV420ToRGB_8u_P3",
         {Sampling::S420, Source::P3, true, Dest::P3, false, Columns::None, subrgb::yuvTruncatingFullForm,
          subrgb::yuvTruncatingFullForm, false, false, false},
         {1, 1},
         Checks::ArraysThenSizeThenEntries,
         true,
         [](const CallArgs& a) { return pxkiYUV420ToRGB_8u_P3(a.srcPlanes, a.dstPlanes, a.size); }},
        {"YUV420ToRGB_8u_P3C3R",
         {Sampling::S420, Source::P3, true, Dest::C3, false, Columns::Cols8, subrgb::yuvDoubledForm,
          subrgb::yuvTruncatingFullForm, false, false, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) { return pxkiYUV420ToRGB_8u_P3C3R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size); }},
        {"YUV420ToRGB_8u_P3C3",
         {Sampling::S420, Source::P3, true, Dest::C3, false, Columns::Cols8, subrgb::yuvDoubledForm,
          subrgb::yuvTruncatingFullForm, false, false, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         true,
         [](const CallArgs& a) { return pxkiYUV420ToRGB_8u_P3C3(a.srcPlanes, a.dst, a.size); }},
        {"YUV420ToBGR_8u_P3C3R",
         {Sampling::S420, Source::P3, true, Dest::C3, true, Columns::All, subrgb::doubled9339Form,
          subrgb::doubled9339Form, false, false, false},
         {2, 2},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) { return pxkiYUV420ToBGR_8u_P3C3R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size); }},
        {"YUV420ToRGB_8u_P3AC4R",
         {Sampling::S420, Source::P3, true, Dest::AC4, false, Columns::Cols8, subrgb::sixteenthsForm,
          subrgb::yuvHalfRoundedForm, false, false, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYUV420ToRGB_8u_P3AC4R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size);
         }},
        {"YUV422ToRGB_8u_P3AC4R",
         {Sampling::S422, Source::P3, true, Dest::AC4, false, Columns::Cols8, subrgb::sixteenthsForm,
          subrgb::yuvTruncatingFullForm, true, false, false},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) {
             return pxkiYUV422ToRGB_8u_P3AC4R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size);
         }},
        {"YUV422ToRGB_8u_C2C3R",
         {Sampling::S422, Source::C2, true, Dest::C3, false, Columns::Cols16, subrgb::yuvDoubledForm,
          subrgb::yuvHalfRoundedForm, true, false, false},
         {1, 1},
         Checks::PointersThenSize,
         false,
         [](const CallArgs& a) { return pxkiYUV422ToRGB_8u_C2C3R(a.src, a.srcStep, a.dst, a.dstStep, a.size); }},
        {"YUV422ToRGB_8u_P3C3R",
         {Sampling::S422, Source::P3, true, Dest::C3, false, Columns::Cols16, subrgb::yuvDoubledForm,
          subrgb::yuvTruncatingFullForm, true, false, false},
         {2, 1},
         Checks::PointersAndEntriesThenSize,
         false,
         [](const CallArgs& a) { return pxkiYUV422ToRGB_8u_P3C3R(a.srcPlanes, a.srcSteps, a.dst, a.dstStep, a.size); }},
        {"YUV422ToRGB_8u_P3C3",
         {Sampling::S422, Source::P3, true, Dest::C3, false, Columns::Cols16, subrgb::yuvDoubledForm,
          subrgb::yuvTruncatingFullForm, true, false, true},
         {1, 1},
         Checks::PointersAndEntriesThenSize,
         true,
         [](const CallArgs& a) { return pxkiYUV422ToRGB_8u_P3C3(a.srcPlanes, a.dst, a.size); }},
        {"YUV422ToRGB_8u_P3R",
         {Sampling::S422, Source::P3, true, Dest::P3, false, Columns::Cols16, subrgb::yuvDoubledForm,
          subrgb::yuvTruncatingFullForm, true, false, false},
         {1, 1},
         Checks::ArraysThenSizeThenEntries,
         false,
         [](const CallArgs& a) {
             return pxkiYUV422ToRGB_8u_P3R(a.srcPlanes, a.srcSteps, a.dstPlanes, a.dstStep, a.size);
         }},
        {"YUV422ToRGB_8u_P3",
         {Sampling::S422, Source::P3, true, Dest::P3, false, Columns::Cols16, subrgb::yuvDoubledForm,
          subrgb::yuvTruncatingFullForm, true, false, true},
         {1, 1},
         Checks::ArraysThenSizeThenEntries,
         true,
         [](const CallArgs& a) { return pxkiYUV422ToRGB_8u_P3(a.srcPlanes, a.dstPlanes, a.size); }},
    };
    return list;
}

inline const Member& memberNamed(const std::string& name) {
    for (const Member& m : allMembers()) {
        if (m.name == name) return m;
    }
    throw std::invalid_argument(name);
}

inline std::vector<const Member*> membersNamed(const std::vector<std::string>& names) {
    std::vector<const Member*> v;
    for (const std::string& n : names) v.push_back(&memberNamed(n));
    return v;
}

// Studio-range 4:2:0: the P2 and P3 sources and the filtered member.
inline std::vector<const Member*> ycbcr420Members() {
    return membersNamed({"YCbCr420ToBGR_8u_P2C3R", "YCbCr420ToBGR_8u_P2C4R", "YCbCr420ToRGB_8u_P2C3R",
                         "YCbCr420ToRGB_8u_P2C4R", "YCrCb420ToBGR_8u_P2C3R", "YCrCb420ToBGR_8u_P2C4R",
                         "YCrCb420ToRGB_8u_P2C3R", "YCrCb420ToRGB_8u_P2C4R", "YCbCr420ToBGR_8u_P3C3R",
                         "YCbCr420ToBGR_8u_P3C4R", "YCbCr420ToRGB_8u_P3C3R", "YCrCb420ToRGB_8u_P3C4R",
                         "YCrCb420ToBGR_Filter_8u_P3C4R"});
}

// Studio-range 4:2:2 (packed and planar sources) and 4:1:1.
inline std::vector<const Member*> ycbcr422And411Members() {
    return membersNamed({"YCbCr422ToBGR_8u_C2C3R", "YCbCr422ToBGR_8u_C2C4R", "YCbCr422ToRGB_8u_C2C3R",
                         "YCbCr422ToRGB_8u_C2C4R", "YCrCb422ToBGR_8u_C2C3R", "YCrCb422ToBGR_8u_C2C4R",
                         "YCrCb422ToRGB_8u_C2C3R", "YCrCb422ToRGB_8u_C2C4R", "YCbCr422ToRGB_8u_C2P3R",
                         "YCrCb422ToRGB_8u_C2P3R", "YCbCr422ToBGR_8u_P3C3R", "YCbCr422ToRGB_8u_P3C3R",
                         "YCbCr411ToBGR_8u_P3C3R", "YCbCr411ToBGR_8u_P3C4R"});
}

// Full-range YUV 4:2:0 and 4:2:2.
inline std::vector<const Member*> yuvMembers() {
    return membersNamed({"YUV420ToRGB_8u_P3R", "YUV420ToRGB_8u_P3", "YUV420ToRGB_8u_P3C3R", "YUV420ToRGB_8u_P3C3",
                         "YUV420ToBGR_8u_P3C3R", "YUV420ToRGB_8u_P3AC4R", "YUV422ToRGB_8u_P3AC4R",
                         "YUV422ToRGB_8u_C2C3R", "YUV422ToRGB_8u_P3C3R", "YUV422ToRGB_8u_P3C3", "YUV422ToRGB_8u_P3R",
                         "YUV422ToRGB_8u_P3"});
}

// Every member whose chroma is YCbCr (studio range).
inline std::vector<const Member*> ycbcrMembers() {
    std::vector<const Member*> v = ycbcr420Members();
    for (const Member* m : ycbcr422And411Members()) v.push_back(m);
    return v;
}

}  // namespace s2rgb

#endif
