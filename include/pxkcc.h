/*
 * pxkcc: image colour-conversion primitives with a C ABI.
 *
 * Every export converts a region of pixel rows given by row-start pointers, signed
 * byte steps and a size, and returns a PxkResult. The output of every export is fixed
 * to the bit. The library allocates nothing, starts no threads and keeps no state.
 *
 * Target: x86-64 with SSE2. PxkSize and PxkRect are passed by value as structs.
 */
#ifndef PXKCC_H
#define PXKCC_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(PXKCC_BUILDING)
#define PXKCC_API __attribute__((visibility("default")))
#else
#define PXKCC_API
#endif

/* ------------------------------------------------------------------------ */
/* Types                                                                     */
/* ------------------------------------------------------------------------ */

/* Status of every export but the version query: 0 success, negative error (nothing
 * written), positive warning. */
typedef int32_t PxkResult;

enum {
    pxkOk = 0,
    pxkWarnNegativeImage = 1,  /* tone map: source has no positive level; nothing written */
    pxkWarnOddSize = 35,       /* odd last row, column or group left out */
    pxkErrBadArg = -5,         /* enumerated argument out of its set */
    pxkErrSize = -6,           /* width or height below the minimum */
    pxkErrNullPtr = -8,        /* null pointer, or null entry of a plane array */
    pxkErrContext = -13,       /* noise state without its identifying tag */
    pxkErrStep = -16,          /* step below 1, in the families that test steps */
    pxkErrChannels = -47,      /* channel count outside its set */
    pxkErrRange = -49,         /* value range whose upper bound does not exceed the lower */
    pxkErrDitherLevels = -54,  /* level count out of range */
    pxkErrNoiseRange = -55,    /* noise amount out of range */
    pxkErrDitherType = -224    /* dither mode out of its set */
};

/* Region size in pixels. */
typedef struct PxkSize {
    int32_t width;
    int32_t height;
} PxkSize;

/* Rectangle inside a larger image (demosaicing). */
typedef struct PxkRect {
    int32_t x;
    int32_t y;
    int32_t width;
    int32_t height;
} PxkRect;

/* Size record of the _L members: pointer width on this target. */
typedef struct PxkSizeL {
    int64_t width;
    int64_t height;
} PxkSizeL;

/* Colour-filter pattern by its top-left 2x2 block (top row, then next row). */
typedef int32_t PxkBayerGrid;
enum {
    pxkBayerBGGR = 0, /* B G / G R */
    pxkBayerRGGB = 1, /* R G / G B */
    pxkBayerGBRG = 2, /* G B / R G */
    pxkBayerGRBG = 3  /* G R / B G */
};

/* Dither mode of the bit-depth reduction functions. */
typedef int32_t PxkDitherType;
enum {
    pxkDitherNone = 0,
    pxkDitherFS = 1,
    pxkDitherJJN = 2,
    pxkDitherStucki = 3,
    pxkDitherBayer = 4
};

/* Constant record naming this build; natural alignment. */
typedef struct PxkVersionRecord {
    int32_t major;
    int32_t minor;
    int32_t majorBuild;
    uint32_t build;
    char targetCode[4];
    const char* name;
    const char* version;
    const char* buildDate;
} PxkVersionRecord;

/* ------------------------------------------------------------------------ */
/* Version                                                                   */
/* ------------------------------------------------------------------------ */

/* Pointer to the library's constant version record; never fails. */
PXKCC_API const PxkVersionRecord* pxkccGetLibVersion(void);

/* ------------------------------------------------------------------------ */
/* RGB -> studio-range YCbCr, full resolution                                */
/* ------------------------------------------------------------------------ */

PXKCC_API PxkResult pxkiRGBToYCbCr_8u_C3R(const uint8_t* pSrc, int32_t srcStep,
                                          uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
/* Alpha byte of each destination pixel is left unwritten. */
PXKCC_API PxkResult pxkiRGBToYCbCr_8u_AC4R(const uint8_t* pSrc, int32_t srcStep,
                                           uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCbCr_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                            uint8_t* const pDst[3], int32_t dstStep,
                                            PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCbCr_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep,
                                             uint8_t* const pDst[3], int32_t dstStep,
                                             PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCbCr_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                          uint8_t* const pDst[3], int32_t dstStep,
                                          PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* Studio-range YCbCr -> RGB / BGR, full resolution                          */
/* ------------------------------------------------------------------------ */

PXKCC_API PxkResult pxkiYCbCrToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep,
                                          uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
/* Alpha byte of each destination pixel is left unwritten. */
PXKCC_API PxkResult pxkiYCbCrToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep,
                                           uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCrToRGB_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                          uint8_t* const pDst[3], int32_t dstStep,
                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCrToRGB_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                            uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCrToRGB_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep,
                                            uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                            uint8_t alpha);
PXKCC_API PxkResult pxkiYCbCrToBGR_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                            uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCrToBGR_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep,
                                            uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                            uint8_t alpha);

/* ------------------------------------------------------------------------ */
/* RGB <-> full-range YUV, full resolution                                   */
/* ------------------------------------------------------------------------ */
/* Y = 0.299 R + 0.587 G + 0.114 B, U = 0.492 (B - Y) + 128, V = 0.877 (R - Y)
 * + 128, 8-bit samples, Y, U, V (R, G, B) in bytes 0, 1, 2 or planes 0, 1, 2.
 * Least size 1 x 1; no step is tested; no warning. Several fixed-point forms of
 * the matrix differ in their low bit, and the vector columns of some members
 * (the first width - width % 8 or width - width % 16) take another form than
 * the rest of the row: RGBToYUV C3R (16) and C3P3R (8) and P3R (16),
 * YUVToRGB C3R (8) and P3C3R (16). The others use one form in every column.
 * The AC4 members leave destination byte 3 unwritten; AC4P4R copies source
 * byte 3 into dst[3]; C3C4R writes alpha into byte 3.
 * Checks: pointers, then size; the members with a plane array test its entries
 * after the size (AC4P4R tests dst[0..2] only). */
PXKCC_API PxkResult pxkiRGBToYUV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                          uint8_t* const pDst[3], int32_t dstStep,
                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV_8u_AC4P4R(const uint8_t* pSrc, int32_t srcStep,
                                           uint8_t* const pDst[4], int32_t dstStep,
                                           PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                        uint8_t* const pDst[3], int32_t dstStep,
                                        PxkSize roiSize);
PXKCC_API PxkResult pxkiYUVToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUVToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUVToRGB_8u_C3C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                          int32_t dstStep, PxkSize roiSize, uint8_t alpha);
PXKCC_API PxkResult pxkiYUVToRGB_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                          uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUVToRGB_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                        uint8_t* const pDst[3], int32_t dstStep,
                                        PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* RGB / BGR -> studio-range YCbCr 4:2:0, three planes                       */
/* ------------------------------------------------------------------------ */
/* Each 2 x 2 block gives four Y (direct form of RGBToYCbCr) and one chroma pair
 * from the block's sums (Cb, Cr at a scale of 2^18, rounding term 1/8). Planes:
 * Y width x height, chroma width/2 x height/2, each with its own step
 * (dstStep[3]). YCrCb members put Cr in dst[1] and Cb in dst[2]. A last odd row
 * or column is neither read nor written: pxkWarnOddSize. Least size 2 x 2.
 * RGBToYCbCr420_8u_C3P3R takes another form (at 3 fraction bits) in the chroma
 * columns below p - p % 4 (p = width / 2) and their pixels.
 * Checks: pSrc, pDst, the entries of pDst, dstStep, then the size. */
PXKCC_API PxkResult pxkiBGRToYCbCr420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                               uint8_t* const pDst[3], const int32_t dstStep[3],
                                               PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep,
                                                uint8_t* const pDst[3], const int32_t dstStep[3],
                                                PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCrCb420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                               uint8_t* const pDst[3], const int32_t dstStep[3],
                                               PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCrCb420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep,
                                                uint8_t* const pDst[3], const int32_t dstStep[3],
                                                PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCrCb420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep,
                                                uint8_t* const pDst[3], const int32_t dstStep[3],
                                                PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCbCr420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                               uint8_t* const pDst[3], const int32_t dstStep[3],
                                               PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* RGB / BGR -> studio-range YCbCr 4:1:1 and 4:2:2                          */
/* ------------------------------------------------------------------------ */
/* Luma by the direct form of RGBToYCbCr; chroma from the sums of each group of
 * four (411, scale 2^18) or two (422, scale 2^17) pixels of a row, rounding term
 * 1/8. Planar destinations take dstStep[3]: chroma planes width/4 (411) or width/2
 * (422) wide, full height. Packed C2 destinations hold Y0 Cb Y1 Cr per pair.
 * Least sizes: 411 width 4, 422 width 2; height 1.
 * 411: columns past the last whole group are neither read nor written, with
 * pxkWarnOddSize when width % 4 != 0. 422 with an odd width: BGRToYCbCr422 P3
 * members write the last pixel's Y only; their C2 members write its Y and, in
 * byte 1, its own Cb at a scale of 2^16; RGBToYCbCr422_8u_C3P3R leaves it
 * unwritten. These return pxkOk.
 * Checks: pSrc, pDst (and its entries, then dstStep), then the size. */
PXKCC_API PxkResult pxkiBGRToYCbCr411_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                               uint8_t* const pDst[3], const int32_t dstStep[3],
                                               PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr411_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep,
                                                uint8_t* const pDst[3], const int32_t dstStep[3],
                                                PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                               uint8_t* const pDst[3], const int32_t dstStep[3],
                                               PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr422_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep,
                                                uint8_t* const pDst[3], const int32_t dstStep[3],
                                                PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr422_8u_AC4C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCbCr422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                               uint8_t* const pDst[3], const int32_t dstStep[3],
                                               PxkSize roiSize);

/* 4:2:2 from RGB into packed Y0 Cb Y1 Cr (YCbCr) or Y0 Cr Y1 Cb (YCrCb): the first
 * Y of each pair by the direct form, the second with the offset 1048576 (no
 * rounding half); chroma from the pair's sums at a scale of 2^17, offset 128.5.
 * Least size 1 x 1. An odd last pixel writes its Y and, in byte 1, the direct
 * form's Cb (C3C2R) or Cr (P3C2R), whatever the name's chroma order; pxkOk.
 * P3C2R checks: pSrc, pDst, the entries of pSrc, then the size. */
PXKCC_API PxkResult pxkiRGBToYCbCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCrCb422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], int32_t srcStep,
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCrCb422_8u_P3C2R(const uint8_t* const pSrc[3], int32_t srcStep,
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);

/* 4:2:0 into a Y plane and a plane of interleaved Cb, Cr pairs (each with its own
 * step), by the float form: single precision in a fixed order, results truncated.
 * Least size 1 x 1; a last odd row or column is neither read nor written and
 * reported with pxkWarnOddSize (a width or height of 1 converts nothing).
 * Checks: pSrc, pDstY, pDstCbCr, then the size. C4P2R ignores source byte 3. */
PXKCC_API PxkResult pxkiBGRToYCbCr420_8u_C3P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY,
                                               int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                               PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr420_8u_AC4P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY,
                                                int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                                PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCbCr420_8u_C3P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY,
                                               int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                               PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCbCr420_8u_C4P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY,
                                               int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                               PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* RGB / BGR -> full-range YUV 4:2:0 and 4:2:2                               */
/* ------------------------------------------------------------------------ */
/* Y = L >> 16 with L = 19595 R + 38470 G + 7471 B, except in the vector columns
 * (the first width - width % 8 of RGBToYUV420 C3P3R/C3P3, the first width -
 * width % 16 of every YUV422 member), which take luma at a scale of 2^15. U and
 * V from the group's sums (2 x 2 in 4:2:0, a pair in 4:2:2) in every column.
 * Least size 1 x 1. 4:2:0: planes Y w x h and U, V w/2 x h/2; a last odd row or
 * column is neither read nor written: pxkWarnOddSize (a width or height of 1
 * converts nothing). 4:2:2: U, V planes (w+1)/2 wide; an odd last pixel takes
 * its chroma at a scale of 2^15 (planes: Y, U and V; Y0 U Y1 V: its Y and U);
 * pxkOk. Forms without R derive their steps: source w (planes) or 3 w, Y w,
 * chroma w/2 (4:2:0) or w/2 + w%2 (4:2:2); the 4:2:2 ones convert a whole image
 * of at least 256 pixels and an even width as one long row (vector blocks then
 * run across row ends).
 * Checks: packed source: pSrc, pDst, its entries, dstStep, size. Planar: the
 * arrays (pSrc, srcStep, pDst, dstStep), the size, then the entries. */
PXKCC_API PxkResult pxkiBGRToYUV420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep,
                                              uint8_t* const pDst[3], const int32_t dstStep[3],
                                              PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                             uint8_t* const pDst[3], const int32_t dstStep[3],
                                             PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV420_8u_C3P3(const uint8_t* pSrc, uint8_t* const pDst[3],
                                            PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                           uint8_t* const pDst[3], const int32_t dstStep[3],
                                           PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV420_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3],
                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                             int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                             uint8_t* const pDst[3], const int32_t dstStep[3],
                                             PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV422_8u_C3P3(const uint8_t* pSrc, uint8_t* const pDst[3],
                                            PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                           uint8_t* const pDst[3], const int32_t dstStep[3],
                                           PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYUV422_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3],
                                          PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* Studio-range YCbCr 4:2:0, 4:2:2, 4:1:1 -> RGB / BGR                       */
/* ------------------------------------------------------------------------ */
/* Chroma is replicated: each chroma sample serves every pixel of its group (2 x 2,
 * a pair, four in a row). Forms by member: 4:2:0 P2 sources and YCbCr420ToBGR
 * P3C3R the wide rounded form of YCbCrToRGB_8u_P3R; YCbCr420ToBGR P3C4R,
 * YCbCr420ToRGB P3C3R and YCrCb420ToRGB P3C4R the high-product inverse form of
 * YCbCrToRGB_8u_P3C4R over the first width - width % 8 columns, wide rounded after
 * them; packed Y0 Cb Y1 Cr (YCbCr) or Y0 Cr Y1 Cb (YCrCb) sources wide rounded,
 * except YCbCr422ToRGB/YCrCb422ToRGB C2P3R and YCrCb422ToRGB C2C3R, which take a
 * high-product form (luma 9536, Cb to G -3203) over the first width - width % 8
 * columns and the raw-chroma offset form (no rounding half) after them; 4:2:2
 * planes the raw-chroma offset form; 4:1:1 the same high-product form over the
 * first width - width % 8 columns and the 4:1:1 form (76294) after them.
 * Sources: P3 planes Y, then the chroma of the name's order, each with its own step
 * (4:2:0 chroma planes w/2 x h/2, 4:2:2 w/2 x h, 4:1:1 w/4 x h); P2 a Y plane and a
 * plane of chroma pairs (Cb Cr for YCbCr, Cr Cb for YCrCb). C4 destinations take
 * byte 3 from alpha.
 * Odd sizes: 4:2:0 converts height/2 row pairs and width/2 pixel pairs, leaves the
 * last odd row or column unwritten and returns pxkWarnOddSize (a width or height of
 * 1 converts nothing); 4:1:1 converts width - width % 4 columns; the 4:2:2 planar
 * members leave an odd last pixel unwritten; in the packed 4:2:2 members an odd last
 * pixel takes Y and its first chroma from its own two bytes and the second chroma
 * from the byte before them (at a width of 1, where the row has no such byte, its
 * first chroma stands in; YCbCr422ToBGR C2C3R needs a width of 2). pxkOk there.
 * Least sizes: 1 x 1, except the YCbCr422ToBGR members and YCbCr422ToRGB P3C3R
 * (width 2) and 4:1:1 (width 4).
 * Checks: pointers (arrays, then their entries), then the size; the two YCrCb420
 * P2C4R members test the size first. */
PXKCC_API PxkResult pxkiYCbCr420ToBGR_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep,
                                               const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToBGR_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep,
                                               const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                               uint8_t alpha);
PXKCC_API PxkResult pxkiYCbCr420ToRGB_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep,
                                               const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToRGB_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep,
                                               const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                               uint8_t alpha);
PXKCC_API PxkResult pxkiYCrCb420ToBGR_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep,
                                               const uint8_t* pSrcCrCb, int32_t srcCrCbStep,
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb420ToBGR_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep,
                                               const uint8_t* pSrcCrCb, int32_t srcCrCbStep,
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                               uint8_t alpha);
PXKCC_API PxkResult pxkiYCrCb420ToRGB_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep,
                                               const uint8_t* pSrcCrCb, int32_t srcCrCbStep,
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb420ToRGB_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep,
                                               const uint8_t* pSrcCrCb, int32_t srcCrCbStep,
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                               uint8_t alpha);
PXKCC_API PxkResult pxkiYCbCr420ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToBGR_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                               uint8_t alpha);
PXKCC_API PxkResult pxkiYCbCr420ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb420ToRGB_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                               uint8_t alpha);
PXKCC_API PxkResult pxkiYCbCr422ToBGR_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize, uint8_t alpha);
PXKCC_API PxkResult pxkiYCbCr422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToRGB_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize, uint8_t alpha);
PXKCC_API PxkResult pxkiYCrCb422ToBGR_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize, uint8_t alpha);
PXKCC_API PxkResult pxkiYCrCb422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb422ToRGB_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize, uint8_t alpha);
PXKCC_API PxkResult pxkiYCbCr422ToRGB_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                               uint8_t* const pDst[3], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb422ToRGB_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                               uint8_t* const pDst[3], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToBGR_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                               uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                               uint8_t alpha);

/* 4:2:0 to BGRA with chroma filtered in the row: an even pixel takes its pair's
 * samples, an odd one the rounded mean of its pair's and the next pair's (the last
 * pair of a row takes its own for both); no vertical filter. Truncating form
 * (76309, no rounding half). Planes Y, Cr, Cb; alpha into byte 3. Least size 1 x 1;
 * odd sizes as in the other 4:2:0 members (pxkWarnOddSize). */
PXKCC_API PxkResult pxkiYCrCb420ToBGR_Filter_8u_P3C4R(const uint8_t* const pSrc[3],
                                                      const int32_t srcStep[3], uint8_t* pDst,
                                                      int32_t dstStep, PxkSize roiSize, uint8_t alpha);

/* ------------------------------------------------------------------------ */
/* Full-range YUV 4:2:0 and 4:2:2 -> RGB / BGR                               */
/* ------------------------------------------------------------------------ */
/* Chroma replicated over each 2 x 2 block (4:2:0) or pair (4:2:2). Forms by member
 * (those of YUVToRGB, and two of their own): YUV420ToRGB P3R/P3 the truncating
 * form with the full-rounded constants (no rounding term) in every column;
 * YUV420ToRGB P3C3R/P3C3 the doubled form over the first width - width % 8
 * columns, the same truncating form after them; YUV420ToBGR P3C3R the doubled form
 * with the octet constants in every column; YUV420ToRGB P3AC4R a form at four
 * fraction bits over the first width - width % 8 columns and the half rounded form
 * after them; YUV422ToRGB P3AC4R the same vector form, then the truncating one;
 * YUV422ToRGB C2C3R (Y0 U Y1 V) the doubled form over the first width - width % 16
 * columns, half rounded after them; the other YUV422 members the doubled form over
 * the first width - width % 16 columns, truncating after them. The AC4 members
 * write 0 into byte 3. P3R members write three planes R, G, B with one step.
 * Odd sizes: 4:2:0 as in the YCbCr members (pxkWarnOddSize); 4:2:2 planes convert
 * an odd last pixel with the chroma column after the last pair (chroma planes are
 * (w + 1) / 2 wide); Y0 U Y1 V takes its V from the byte before its Y. Forms without
 * R derive their steps: Y w, chroma w/2 (4:2:0) or w/2 + w%2 (4:2:2), packed 3 w,
 * planes w; the 4:2:2 ones convert an image of at least 256 pixels with an even
 * width as one long row (vector blocks then run across row ends).
 * Least sizes 1 x 1, except YUV420ToBGR P3C3R (2 x 2) and YUV422ToRGB P3C3R
 * (width 2). Checks: into planes (P3R, P3) the arrays, the size, then the entries of
 * both; into packed pixels the arrays and the destination, the source entries, then
 * the size. */
PXKCC_API PxkResult pxkiYUV420ToRGB_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                           uint8_t* const pDst[3], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV420ToRGB_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3],
                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV420ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                             uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV420ToRGB_8u_P3C3(const uint8_t* const pSrc[3], uint8_t* pDst, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV420ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                             uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV420ToRGB_8u_P3AC4R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                              uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV422ToRGB_8u_P3AC4R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                              uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                             int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV422ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                             uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV422ToRGB_8u_P3C3(const uint8_t* const pSrc[3], uint8_t* pDst, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV422ToRGB_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                           uint8_t* const pDst[3], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV422ToRGB_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3],
                                          PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* High-definition matrices (709CSC, 709HDTV), CbYCr422 <-> RGB, v210        */
/* ------------------------------------------------------------------------ */
/* Matrices, at a scale of 2^16 unless said:
 *   709CSC (studio range): Y = (5997 R + 20120 G + 2032 B + 540672) >> 15;
 *     Cb row -6619, -22151, 28770; Cr row 28770, -26149, -2621. Inverse: 76284 (Y),
 *     117506 (Cr to R), -13959 (Cb to G), -34996 (Cr to G), 138609 (Cb to B), offset
 *     -16 * 76284 + 32768.
 *   709HDTV: S = 13959 R + 46858 G + 4719 B, Y = (S - (S >> 7) + 98304) >> 16; Cb row
 *     -7668, -25821, 33489; Cr row 33489, -30409, -3080. Inverse: Y times 65536,
 *     100925, -11993, -30081, 119013, offset +32768.
 *   standard: Y = (16843 R + 33030 G + 6423 B + 1081344) >> 16; Cb row -9699,
 *     -19071, 28770; Cr row 28770, -24117, -4653. Inverse: the rounded form of
 *     YCbCrToRGB_8u_C3R.
 * Inverses take Cb, Cr less 128; every result is clamped to 0..255 unless said.
 *
 * To 4:2:0 (BGR or BGRA source, byte 3 ignored): Y of each pixel; Cb, Cr of each
 * 2 x 2 block from the sums of its R, G, B over both rows: clamp8((k . sums +
 * 128.5 * 2^18) >> 18). P3: planes Y, Cb, Cr (YCrCb: Y, Cr, Cb), each with its own
 * step; P2: a Y plane and a plane of Cb, Cr pairs. Least size 2 x 2; a last odd row
 * or column is neither read nor written: pxkWarnOddSize.
 * Checks: P3: pSrc, pDst, its entries, dstStep, then the size; P2: pSrc, pDstY,
 * pDstCbCr, then the size.
 *
 * From 4:2:0 (planes Y, Cb, Cr with a step each) and from full-resolution planes
 * (one step): BGR, or BGR with alpha in byte 3. 4:2:0 converts height/2 row pairs
 * of width/2 pixel pairs, each chroma sample serving its 2 x 2 block; a last odd row
 * or column is left unwritten: pxkWarnOddSize (least size 1 x 1: a width or height
 * of 1 converts nothing). Checks: pSrc, pDst, the entries of pSrc (4:2:0: then
 * srcStep), then the size.
 *
 * To CbYCr422 (Cb Y0 Cr Y1 a pair), least size 1 x 1:
 *   709HDTV members: Y of each pixel; Cb, Cr of a pair clamp8((k . (p0 + p1) +
 *     128.5 * 2^17) >> 17).
 *   RGBToCbYCr422_8u_C3C2R and BGRToCbYCr422_8u_AC4C2R (standard): chroma carried
 *     along the row: q = (k . p1) >> 2, C = (((k . p0) >> 1) + carry + q - 8355841)
 *     >> 16, carry = q (0 at the start of each row), one carry for Cb, one for Cr;
 *     every byte kept to its low 8 bits.
 *   RGBToCbYCr422Gamma_8u_C3C2R: samples first read through the forward 8u gamma
 *     table; Y = clamp8((8422 R + 16515 G + 3212 B + 540672) >> 15); chroma at the
 *     first pixel of each pair (site), weighing it double and the pixels just before
 *     and after it once (site -2426, -4769, 7193 / neighbour -1213, -2385, 3596 for
 *     Cb; 7193, -6030, -1164 / 3596, -3015, -582 for Cr; + 4210687, >> 15, clamped).
 *     The first site of a row stands in for its missing left neighbour.
 *   A last odd pixel writes two bytes, its Cb and its Y (709HDTV: clamp8((k . p +
 *     128.5 * 2^16) >> 16); standard and gamma members: low8((k . p - 8355840) >> 16)
 *     and the standard Y, low 8 bits); its Cr byte is left unwritten.
 * From CbYCr422: both pixels of a pair take its chroma; a last odd pixel takes Y and
 * Cb from its own two bytes and Cr from the pair before (at width 1 its Cb stands in
 * for Cr). Least size 1 x 1.
 * The AC4C2R and C2C4R members run an aligned kernel when both pointers and both
 * steps are multiples of 16, an unaligned one otherwise; the bits are the same.
 * Checks: pSrc, pDst, then the size.
 *
 * v210 (six pixels in four 32-bit words: Cb0 Y0 Cr0 | Y1 Cb1 Y2 | Cr1 Y3 Cb2 |
 * Y4 Cr2 Y5, 10-bit fields at bits 0, 10, 20): one 16-bit word a pixel. Steps count
 * elements (srcStep 32-bit words, dstStep 16-bit words). Colour in single precision:
 * R = Y + 1.54 Cr, G = Y + (-0.183 Cb + -0.459 Cr), B = Y + 1.816 Cb (Cb, Cr less
 * 512), each t = trunc(x), + 1 unless x - t < 0.5, then R, B clamped to 0..31 and
 * G to 0..63 (no scaling) and packed R | G << 5 | B << 11 (RGB) or B | G << 5 |
 * R << 11 (BGR). Gray: the Y field. Least size 1 x 1.
 * Checks: pSrc, pDst, the size, then the steps (below 1: pxkErrSize). */
PXKCC_API PxkResult pxkiBGRToYCbCr420_709CSC_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                                      uint8_t* const pDst[3], const int32_t dstStep[3],
                                                      PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr420_709CSC_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep,
                                                       uint8_t* const pDst[3], const int32_t dstStep[3],
                                                       PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCrCb420_709CSC_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                                      uint8_t* const pDst[3], const int32_t dstStep[3],
                                                      PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCrCb420_709CSC_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep,
                                                       uint8_t* const pDst[3], const int32_t dstStep[3],
                                                       PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr420_709HDTV_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep,
                                                        uint8_t* const pDst[3], const int32_t dstStep[3],
                                                        PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr420_709CSC_8u_C3P2R(const uint8_t* pSrc, int32_t srcStep,
                                                      uint8_t* pDstY, int32_t dstYStep,
                                                      uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                                      PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToYCbCr420_709CSC_8u_AC4P2R(const uint8_t* pSrc, int32_t srcStep,
                                                       uint8_t* pDstY, int32_t dstYStep,
                                                       uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                                       PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToBGR_709CSC_8u_P3C3R(const uint8_t* const pSrc[3],
                                                      const int32_t srcStep[3], uint8_t* pDst,
                                                      int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToBGR_709HDTV_8u_P3C4R(const uint8_t* const pSrc[3],
                                                       const int32_t srcStep[3], uint8_t* pDst,
                                                       int32_t dstStep, PxkSize roiSize, uint8_t alpha);
PXKCC_API PxkResult pxkiYCbCrToBGR_709CSC_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                                   uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCrToBGR_709CSC_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep,
                                                   uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                                   uint8_t alpha);
PXKCC_API PxkResult pxkiBGRToCbYCr422_709HDTV_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep,
                                                       uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToCbYCr422_709HDTV_8u_AC4C2R(const uint8_t* pSrc, int32_t srcStep,
                                                        uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToCbYCr422_8u_AC4C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToCbYCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToCbYCr422Gamma_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                    int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiCbYCr422ToBGR_709HDTV_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep,
                                                       uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiCbYCr422ToBGR_709HDTV_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep,
                                                       uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                                       uint8_t alpha);
PXKCC_API PxkResult pxkiCbYCr422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize, uint8_t alpha);
PXKCC_API PxkResult pxkiCbYCr422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV422v210ToBGR_709HDTV_32u16u_C3(const uint32_t* pSrc, int32_t srcStep,
                                                          uint16_t* pDst, int32_t dstStep,
                                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV422v210ToRGB_709HDTV_32u16u_C3(const uint32_t* pSrc, int32_t srcStep,
                                                          uint16_t* pDst, int32_t dstStep,
                                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiYUV422v210ToGray_709HDTV_32u16u_C3C1(const uint32_t* pSrc, int32_t srcStep,
                                                             uint16_t* pDst, int32_t dstStep,
                                                             PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* Bayer demosaicing: basic                                                  */
/* ------------------------------------------------------------------------ */

/* One plane of colour-filter samples (pattern `grid`, by the top-left 2x2 block of
 * the whole image) -> interleaved R, G, B. pSrc is the image's first sample and
 * srcSize the whole image, at least 2x2; srcRoi is the region converted, and pDst
 * its first pixel. A region running past the right or bottom edge is cut back to it;
 * a negative x or y is taken as 0 with the width or height kept; an empty region
 * returns pxkOk with nothing written. Pixels two or more lines from every edge of
 * the image get green by the edge-directed rule (the mean along the calmer of row
 * and column, the mean of all four where both are alike) and plain rounded means of
 * the nearest samples otherwise; the two lines along each edge get averages over
 * the neighbours that exist, and the three outer pixels of each 2x2 corner block one
 * colour from that block's four samples. Where an image is under 4 wide or high, a
 * pixel on an edge line belongs to that edge, and the left and top sides come before
 * the right and bottom ones. Steps are not tested. pxkErrBadArg: grid outside 0..3 (after the size
 * check). `spare` is never read. */
PXKCC_API PxkResult pxkiCFAToRGB_8u_C1C3R(const uint8_t* pSrc, PxkRect srcRoi, PxkSize srcSize,
                                          int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          PxkBayerGrid grid, int32_t spare);
PXKCC_API PxkResult pxkiCFAToRGB_16u_C1C3R(const uint16_t* pSrc, PxkRect srcRoi, PxkSize srcSize,
                                           int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                           PxkBayerGrid grid, int32_t spare);

/* ------------------------------------------------------------------------ */
/* Bayer demosaicing: homogeneity-directed                                   */
/* ------------------------------------------------------------------------ */

/* One plane of colour-filter samples -> interleaved R, G, B, by two candidates a
 * pixel (green interpolated along the row, and along the column) and the choice of
 * the more homogeneous one over its 3x3 neighbourhood; integer arithmetic, results
 * saturated to the sample range. pSrc is the image's first sample and srcSize the
 * whole image, at least 5x5; srcRoi is the region converted and pDst its first
 * pixel. A negative x or y is set to 0 with the width or height kept, a region
 * running past the right or bottom edge is cut, an empty one returns pxkOk with
 * nothing written. Samples past the image's edges are read from the mirror image
 * across the edge sample (-x, and 2 (size - 1) - x), which keeps the colour pattern.
 * pBuffer is work memory of at least 3 * bufferStep bytes (any alignment), and
 * bufferStep (bytes) at least 33 * w + 384 for the 8u member and 41 * w + 384 for
 * the 16u member, w being the region's width after cutting; neither is tested.
 * pxkErrBadArg: grid outside 0..3 (after the size check). */
PXKCC_API PxkResult pxkiDemosaicAHD_8u_C1C3R(const uint8_t* pSrc, PxkRect srcRoi, PxkSize srcSize,
                                             int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             PxkBayerGrid grid, uint8_t* pBuffer, int32_t bufferStep);
PXKCC_API PxkResult pxkiDemosaicAHD_16u_C1C3R(const uint16_t* pSrc, PxkRect srcRoi, PxkSize srcSize,
                                              int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                              PxkBayerGrid grid, uint8_t* pBuffer, int32_t bufferStep);

/* ------------------------------------------------------------------------ */
/* Bayer demosaicing: variable number of gradients                           */
/* ------------------------------------------------------------------------ */

/* One plane of colour-filter samples -> four-sample pixels of B, G, R (samples 0, 1,
 * 2); the fourth sample of each pixel is never computed, and only copied with the
 * frame. pSrc is the image's first sample and srcSize the whole image, at least 5x5;
 * srcRoi is the region converted and pDst its first pixel (a negative x or y is set
 * to 0 with the width or height kept, and the region is cut at the image's right and
 * bottom edges). Pixels two or more lines from every edge get eight gradients (sums of
 * absolute differences of like colours along N, E, S, W and the diagonals, the two
 * nearest terms doubled; the samples are listed in the library's source), the
 * directions below lo + max(hi / 2, 1) (rounded half to even) are kept, and each
 * missing colour is the centre plus the mean colour difference over them (integer
 * division toward zero). Each value is then multiplied by pScale[k] for sample k
 * (pScale null: 1.0), clamped to the sample range and rounded half to even. Then the
 * two-pixel frame of the image, where the region covers it, is filled by copying
 * whole pixels from the nearest interior column, then whole region rows from the
 * nearest interior row. A region with no pixel two lines from every edge is left
 * unwritten. A width or height of srcRoi below 1 returns pxkOk (after the checks).
 * pxkErrBadArg: grid outside 0..3 (after the size check). The plain members hand
 * their arguments to the _L members unchanged. */
PXKCC_API PxkResult pxkiCFAToBGRA_VNG_8u_C1C4R_L(const uint8_t* pSrc, PxkRect srcRoi, PxkSize srcSize,
                                                 int32_t srcStep, const float* pScale, uint8_t* pDst,
                                                 int32_t dstStep, PxkBayerGrid grid);
PXKCC_API PxkResult pxkiCFAToBGRA_VNG_16u_C1C4R_L(const uint16_t* pSrc, PxkRect srcRoi, PxkSize srcSize,
                                                  int32_t srcStep, const float* pScale, uint16_t* pDst,
                                                  int32_t dstStep, PxkBayerGrid grid);
PXKCC_API PxkResult pxkiCFAToBGRA_VNG_8u_C1C4R(const uint8_t* pSrc, PxkRect srcRoi, PxkSize srcSize,
                                               int32_t srcStep, const float* pScale, uint8_t* pDst,
                                               int32_t dstStep, PxkBayerGrid grid);
PXKCC_API PxkResult pxkiCFAToBGRA_VNG_16u_C1C4R(const uint16_t* pSrc, PxkRect srcRoi, PxkSize srcSize,
                                                int32_t srcStep, const float* pScale, uint16_t* pDst,
                                                int32_t dstStep, PxkBayerGrid grid);
/* Lossless YCoCg, tone mapping, 12-bit packing                              */
/* ------------------------------------------------------------------------ */

/* YCoCg: packed colour to three planes Y, Co, Cg (plane arrays in that order, one
 * step for all three) and back. BGR rows hold unsigned 8-bit blue, green, red; SBGR
 * rows hold signed 16-bit blue, green, red; a C4 source's fourth sample is not read,
 * and a C4 destination's fourth sample is set to `alpha`. All steps are bytes.
 * Plain family (divides and drops low bits):
 *   Y = (R + 2G + B + 2) >> 2, Co = (R - B + 1) >> 1, Cg = (2G - R - B + 2) >> 2;
 *   R = Y + Co - Cg, G = Y + Cg, B = Y - Co - Cg.
 * _Rev family (lifting steps; the inverse gives back the input exactly):
 *   Co = R - B, t = B + (Co >> 1), Cg = G - t, Y = t + (Cg >> 1);
 *   t = Y - (Cg >> 1), G = Cg + t, B = t - (Co >> 1), R = B + Co.
 * Widths: 8u16s forward in 16 bits (values fit); 16s32s forward in 32 bits; 16s
 * plain forward in 32 bits, saturated to 16 bits in the vector columns (the first
 * width - width % 4) and keeping the low 16 bits in the last width % 4 columns, so
 * that Co or Cg of 32768 gives 32767 there and -32768 here; 16s _Rev forward in 16
 * bits with wrap-around; 16s8u inverses in 16 bits with wrap-around, then saturated
 * to 0..255; 16s inverses in 16 bits with wrap-around; 32s16s inverses in 32 bits,
 * the low 16 bits stored.
 * pxkiRGBToYCoCg_8u_C3P3R (red first) stores Y, Co + 128 and Cg + 128, each at most
 * 255; pxkiYCoCgToRGB_8u_P3C3R computes R = Y + Co' - Cg', G = Y + Cg' - 128,
 * B = 128 - Co' + Y - Cg' + 128, each saturated to 0..255.
 * The 16s32s forward members write planes of more than 524288 bytes, all three
 * plane pointers and dstStep multiples of 16, with streaming stores (then a store
 * fence); the bytes are the same.
 * Checks: every pointer and each of the three plane entries (pxkErrNullPtr), then,
 * in the members marked [size], a width or height below 1 (pxkErrSize). The other
 * members return pxkOk for a width or height below 1 and write nothing. */
PXKCC_API PxkResult pxkiBGRToYCoCg_8u16s_C3P3R(const uint8_t* pSrc, int32_t srcStep, int16_t* const pDst[3],
                                               int32_t dstStep, PxkSize roiSize); /* [size] */
PXKCC_API PxkResult pxkiBGRToYCoCg_8u16s_C4P3R(const uint8_t* pSrc, int32_t srcStep, int16_t* const pDst[3],
                                               int32_t dstStep, PxkSize roiSize); /* [size] */
PXKCC_API PxkResult pxkiBGRToYCoCg_Rev_8u16s_C3P3R(const uint8_t* pSrc, int32_t srcStep, int16_t* const pDst[3],
                                                   int32_t dstStep, PxkSize roiSize); /* [size] */
PXKCC_API PxkResult pxkiBGRToYCoCg_Rev_8u16s_C4P3R(const uint8_t* pSrc, int32_t srcStep, int16_t* const pDst[3],
                                                   int32_t dstStep, PxkSize roiSize); /* [size] */
PXKCC_API PxkResult pxkiRGBToYCoCg_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                            int32_t dstStep, PxkSize roiSize); /* [size] */
PXKCC_API PxkResult pxkiSBGRToYCoCg_16s32s_C3P3R(const int16_t* pSrc, int32_t srcStep, int32_t* const pDst[3],
                                                 int32_t dstStep, PxkSize roiSize); /* [size] */
PXKCC_API PxkResult pxkiSBGRToYCoCg_16s32s_C4P3R(const int16_t* pSrc, int32_t srcStep, int32_t* const pDst[3],
                                                 int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiSBGRToYCoCg_16s_C3P3R(const int16_t* pSrc, int32_t srcStep, int16_t* const pDst[3],
                                              int32_t dstStep, PxkSize roiSize); /* [size] */
PXKCC_API PxkResult pxkiSBGRToYCoCg_16s_C4P3R(const int16_t* pSrc, int32_t srcStep, int16_t* const pDst[3],
                                              int32_t dstStep, PxkSize roiSize); /* [size] */
PXKCC_API PxkResult pxkiSBGRToYCoCg_Rev_16s32s_C3P3R(const int16_t* pSrc, int32_t srcStep,
                                                     int32_t* const pDst[3], int32_t dstStep,
                                                     PxkSize roiSize); /* [size] */
PXKCC_API PxkResult pxkiSBGRToYCoCg_Rev_16s32s_C4P3R(const int16_t* pSrc, int32_t srcStep,
                                                     int32_t* const pDst[3], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiSBGRToYCoCg_Rev_16s_C3P3R(const int16_t* pSrc, int32_t srcStep, int16_t* const pDst[3],
                                                  int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiSBGRToYCoCg_Rev_16s_C4P3R(const int16_t* pSrc, int32_t srcStep, int16_t* const pDst[3],
                                                  int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCoCgToBGR_16s8u_P3C3R(const int16_t* const pSrc[3], int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCoCgToBGR_16s8u_P3C4R(const int16_t* const pSrc[3], int32_t srcStep, uint8_t* pDst,
                                               int32_t dstStep, PxkSize roiSize, uint8_t alpha);
PXKCC_API PxkResult pxkiYCoCgToBGR_Rev_16s8u_P3C3R(const int16_t* const pSrc[3], int32_t srcStep, uint8_t* pDst,
                                                   int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCoCgToBGR_Rev_16s8u_P3C4R(const int16_t* const pSrc[3], int32_t srcStep, uint8_t* pDst,
                                                   int32_t dstStep, PxkSize roiSize, uint8_t alpha);
PXKCC_API PxkResult pxkiYCoCgToRGB_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst,
                                            int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCoCgToSBGR_16s_P3C3R(const int16_t* const pSrc[3], int32_t srcStep, int16_t* pDst,
                                              int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCoCgToSBGR_16s_P3C4R(const int16_t* const pSrc[3], int32_t srcStep, int16_t* pDst,
                                              int32_t dstStep, PxkSize roiSize, int16_t alpha); /* [size] */
PXKCC_API PxkResult pxkiYCoCgToSBGR_32s16s_P3C3R(const int32_t* const pSrc[3], int32_t srcStep, int16_t* pDst,
                                                 int32_t dstStep, PxkSize roiSize); /* [size] */
PXKCC_API PxkResult pxkiYCoCgToSBGR_32s16s_P3C4R(const int32_t* const pSrc[3], int32_t srcStep, int16_t* pDst,
                                                 int32_t dstStep, PxkSize roiSize, int16_t alpha); /* [size] */
PXKCC_API PxkResult pxkiYCoCgToSBGR_Rev_16s_P3C3R(const int16_t* const pSrc[3], int32_t srcStep, int16_t* pDst,
                                                  int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCoCgToSBGR_Rev_16s_P3C4R(const int16_t* const pSrc[3], int32_t srcStep, int16_t* pDst,
                                                  int32_t dstStep, PxkSize roiSize, int16_t alpha);
PXKCC_API PxkResult pxkiYCoCgToSBGR_Rev_32s16s_P3C3R(const int32_t* const pSrc[3], int32_t srcStep,
                                                     int16_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCoCgToSBGR_Rev_32s16s_P3C4R(const int32_t* const pSrc[3], int32_t srcStep,
                                                     int16_t* pDst, int32_t dstStep, PxkSize roiSize,
                                                     int16_t alpha);

/* Tone maps: a float image (C1) to bytes by one scale factor measured from the image;
 * each output is truncate(sample * scale). Linear: m = the largest sample (from the
 * most negative finite float up), scale = 255.0f / m. Mean: d = 2 * mean (the sum in
 * double), scale = (float)(255.0 / d). Width and height are two int32 values; steps
 * are bytes and are not tested. Least size 1 x 1.
 * Vector columns saturate to 0..255; scalar samples keep the low 8 bits (Linear: a
 * negative sample gives a wrapped byte) or limit to 0..255 (Mean). A row runs the
 * vector loop only when it is wider than 6 and its source and destination do not
 * overlap; a row of 16 or more first runs scalar samples up to a 16-byte aligned
 * destination address, the vector loop then covers whole groups of 4 and the last
 * width % 4 samples run scalar; other rows run scalar throughout.
 * Statuses: m or d below 0 returns pxkWarnNegativeImage (1) and writes nothing; m not
 * above 1.1754944e-38 (d not above 1.1754943508222875e-38) fills the region with 0
 * and returns pxkOk. Checks: pSrc, pDst, then the size. */
PXKCC_API PxkResult pxkiToneMapLinear_32f8u_C1R(const float* pSrc, int32_t srcStep, uint8_t* pDst,
                                                int32_t dstStep, int32_t width, int32_t height);
PXKCC_API PxkResult pxkiToneMapMean_32f8u_C1R(const float* pSrc, int32_t srcStep, uint8_t* pDst,
                                              int32_t dstStep, int32_t width, int32_t height);

/* 12-bit packing: 16-bit containers (the low 12 bits; bits 15-12 dropped) to rows of
 * three bytes for each pair of samples a, b: a bits 11-4 | a bits 3-0, b bits 11-8 |
 * b bits 7-0; Unpack reverses it (the top four bits of each output are 0). Width
 * counts samples; each row starts a new group. An odd last sample takes two bytes,
 * the low four bits of the second written as 0 (Unpack reads those two bytes).
 * Width and height are two int32 values. Least size 1 x 1.
 * Checks: pSrc, pDst; then width or height below 1 (pxkErrSize); then srcStep or
 * dstStep below 1 (pxkErrStep). */
PXKCC_API PxkResult pxkiPack_16u12u_C1R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        int32_t width, int32_t height);
PXKCC_API PxkResult pxkiUnpack_12u16u_C1R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                          int32_t width, int32_t height);
/* Gamma: the Rec. 709 transfer curve and its inverse                        */
/* ------------------------------------------------------------------------ */
/* Forward (linear to non-linear) f(x) = 4.5 x for x < 0.018, 1.099 x^0.45 - 0.099
 * otherwise; inverse g(y) = y / 4.5 for y < 0.0812, ((y + 0.099) / 1.099)^(1 / 0.45)
 * otherwise (the two branches of f do not meet exactly, and 0.0812 is not 4.5 * 0.018).
 * Layouts C3, AC4 (the fourth channel of the destination is left unwritten, in place
 * and not), P3 (one step for the three planes), and their in-place forms C3IR, AC4IR,
 * IP3R. Least size 1 x 1; steps are bytes and must be at least 1 (pxkErrStep).
 *
 * 8u and 16u: each sample is replaced by its table entry, f(i / n) * n or g(i / n) * n
 * rounded to nearest (n = 255 or 65535; the linear parts exactly, ties to even: forward
 * 8u of 1 is 4, of 2 is 9; inverse 8u of 4 is 1; forward 16u of 1179 is 5306, of 1180
 * is 5326).
 *
 * 32f: the curve over the range [vMin, vMax], with range = vMax - vMin, r = 1 / range,
 * t = x - vMin: forward 0.018 > r * t gives t * 4.5 + vMin, else
 * ((r * t)^0.45 * 1.099 - 0.099) * range + vMin; inverse r * t < 0.0812 gives
 * t * 0.222222224 + vMin, else p * range + vMin in the AC4 members and p + vMin in the
 * C3 and planar members (not scaled by the range), p = ((t * r + 0.099) *
 * 0.909918129)^2.22222233. Samples are not clamped. r is a float in forward C3R, C3IR,
 * AC4R and inverse C3R, C3IR, and a double in the others (where r * t and the power's
 * argument are worked and compared in double). The power is correctly rounded but for
 * values within a hair of a tie; the rest is float arithmetic in the order written, by
 * the caller's rounding mode. First of all checks, a range whose vMax - vMin is not
 * above 0 gives pxkErrRange (a NaN difference passes); then pointers, size, steps. */
PXKCC_API PxkResult pxkiGammaFwd_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_8u_C3IR(uint8_t* pSrcDst, int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                      PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_8u_AC4IR(uint8_t* pSrcDst, int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3],
                                     int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_8u_IP3R(uint8_t* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                     PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_16u_C3IR(uint16_t* pSrcDst, int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                      PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_16u_AC4IR(uint16_t* pSrcDst, int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_16u_P3R(const uint16_t* const pSrc[3], int32_t srcStep, uint16_t* const pDst[3],
                                     int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_16u_IP3R(uint16_t* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaFwd_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                     PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaFwd_32f_C3IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaFwd_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                      PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaFwd_32f_AC4IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaFwd_32f_P3R(const float* const pSrc[3], int32_t srcStep, float* const pDst[3],
                                     int32_t dstStep, PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaFwd_32f_IP3R(float* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaInv_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                     PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_8u_C3IR(uint8_t* pSrcDst, int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                      PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_8u_AC4IR(uint8_t* pSrcDst, int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3],
                                     int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_8u_IP3R(uint8_t* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                     PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_16u_C3IR(uint16_t* pSrcDst, int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                      PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_16u_AC4IR(uint16_t* pSrcDst, int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_16u_P3R(const uint16_t* const pSrc[3], int32_t srcStep, uint16_t* const pDst[3],
                                     int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_16u_IP3R(uint16_t* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGammaInv_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                     PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaInv_32f_C3IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaInv_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                      PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaInv_32f_AC4IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaInv_32f_P3R(const float* const pSrc[3], int32_t srcStep, float* const pDst[3],
                                     int32_t dstStep, PxkSize roiSize, float vMin, float vMax);
PXKCC_API PxkResult pxkiGammaInv_32f_IP3R(float* const pSrcDst[3], int32_t srcDstStep, PxkSize roiSize, float vMin, float vMax);

/* ------------------------------------------------------------------------ */
/* Chroma layouts: packed 4:2:2, planes, luma beside chroma pairs            */
/* ------------------------------------------------------------------------ */
/* Changes of layout within one chroma sampling; every output byte is one input
 * byte. C2: packed pixel pairs Y0 Cb Y1 Cr (YCrCb: Y0 Cr Y1 Cb); P3: planes Y, then
 * the chroma planes in the name's order, each with its own step (step arrays);
 * P2: a Y plane and a plane of chroma pairs (Cb then Cr), each with a step.
 * Chroma planes: 4:2:2 width/2 x height, 4:2:0 width/2 x height/2, 4:1:1
 * width/4 x height. Luma rows between planes go through a row copier (411 P3P2R:
 * non-temporal stores above 348602 pixels); the C2 destinations of the
 * 422ToYCrCb422 members use non-temporal stores when (sum of all steps) x height
 * exceeds 524288 bytes and the destination and its step are multiples of 16.
 * Odd sizes are cut silently (pxkOk): the width to even (411: a multiple of 4),
 * the height of 4:2:0 to even; cut columns and rows are left unwritten.
 * Least sizes: 4:2:2 width 2 x height 1; 4:2:0 2 x 2; 4:1:1 width 4. The
 * 422ToYCrCb422 and 411 members have no height test: a height of 0 or below
 * returns pxkOk and writes nothing.
 * Checks: pointers (arrays, their entries, step arrays), then the size. Members
 * that differ:
 *   YCrCb422ToYCbCr422_8u_C2P3R does not test pDstStep. When pSrc, pDst[0],
 *     srcStep and pDstStep[0] are multiples of 16 and bits 1 to 3 of the width
 *     are clear, it takes byte 1 of each pair into pDst[1] and byte 3 into
 *     pDst[2] (no exchange); otherwise byte 3 into pDst[1], byte 1 into pDst[2].
 *   YCbCr420ToYCrCb420_8u_P2P3R exchanges nothing: byte 0 of each chroma pair
 *     goes to pDst[1], byte 1 to pDst[2], as in YCbCr420_8u_P2P3R.
 *   YCbCr411_8u_P2P3R does not test the pDst array pointer, only its entries. */
PXKCC_API PxkResult pxkiYCbCr422_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                          uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb422ToYCbCr422_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCrCb422_8u_C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                  int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCrCb422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                          uint8_t* pDstY, int32_t dstYStep, uint8_t* pDstCbCr,
                                          int32_t dstCbCrStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToYCrCb420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep,
                                                    const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb420ToYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDstY, int32_t dstYStep, uint8_t* pDstCbCr,
                                                    int32_t dstCbCrStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                          int32_t srcCbCrStep, uint8_t* const pDst[3],
                                          const int32_t dstStep[3], PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                          uint8_t* pDstY, int32_t dstYStep, uint8_t* pDstCbCr,
                                          int32_t dstCbCrStep, PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* Chroma samplings: 4:2:2, 4:2:0, 4:1:1 without filtering                   */
/* ------------------------------------------------------------------------ */
/* Every output byte is one input byte; Y passes through unchanged. Layouts as
 * above (C2, P2, P3, with the name's chroma order; "YCrCb" targets take Cr where
 * YCbCr ones take Cb). With Cs a source and Cd an output chroma sample (row r,
 * column c of the chroma planes):
 *   422 -> 420  Cd[r][c] = Cs[2r][c]      odd chroma rows dropped
 *   420 -> 422  Cd[r][c] = Cs[r/2][c]     each chroma row twice
 *   422 -> 411  Cd[r][c] = Cs[r][2c]      odd chroma columns dropped
 *   411 -> 422  Cd[r][c] = Cs[r][c/2]     each chroma column twice
 *   420 -> 411  Cd[r][c] = Cs[r/2][2c + r%2]   exact inverses of each other: the
 *   411 -> 420  Cd[r][c] = Cs[2r + c%2][c/2]   round trip returns every sample
 * Odd sizes are cut silently (pxkOk): the width to even (to a multiple of 4 where
 * a side is 4:1:1), the height to even where a side is 4:2:0.
 * Least sizes: width 2 (4 with 4:1:1); height 2 where a side is 4:2:0, 1 for
 * 422ToYCbCr411_8u_C2P3R; the other 422 <-> 411 members have no height test (a
 * height of 0 or below returns pxkOk and writes nothing).
 * Non-temporal stores (the bytes are the same): luma rows above 348602 pixels in
 * 411ToYCbCr420 P3P2R, 411ToYCbCr422 P2P3R and 422ToYCbCr420 P3R, above 524288
 * in 422ToYCbCr411 P3R; the packed destinations of the 411 -> 422 members when
 * (sum of all steps) x height exceeds 524288 and the destination and its step are
 * multiples of 16; 422ToYCbCr411 C2P2R when (3 w + w/2) x height exceeds 1572864
 * and its destinations and steps are multiples of 16.
 * Checks: pointers (arrays, their entries, step arrays), then the size. The
 * 411ToYCbCr422, 411ToYCbCr420 and 411ToYCrCb420 P2P3R members do not test the
 * pDst array pointer, only its entries. */
PXKCC_API PxkResult pxkiYCbCr422ToYCbCr420_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY,
                                                    int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCbCr420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDstY, int32_t dstYStep, uint8_t* pDstCbCr,
                                                    int32_t dstCbCrStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCbCr420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                  uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCrCb420_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY,
                                                    int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCrCb420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb422ToYCbCr420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToYCbCr422_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep,
                                                    const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                    uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToYCbCr422_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep,
                                                    const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToYCbCr422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                  uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb420ToYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb420ToYCbCr422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                  uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCbCr411_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY,
                                                    int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCbCr411_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDstY, int32_t dstYStep, uint8_t* pDstCbCr,
                                                    int32_t dstCbCrStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToYCbCr411_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                  uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb422ToYCbCr411_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToYCbCr422_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep,
                                                    const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                    uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToYCbCr422_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep,
                                                    const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToYCbCr422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                  uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToYCrCb422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToYCrCb422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                  uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToYCbCr411_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep,
                                                    const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDstY, int32_t dstYStep, uint8_t* pDstCbCr,
                                                    int32_t dstCbCrStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb420ToYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDstY, int32_t dstYStep, uint8_t* pDstCbCr,
                                                    int32_t dstCbCrStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToYCbCr420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep,
                                                    const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDstY, int32_t dstYStep, uint8_t* pDstCbCr,
                                                    int32_t dstCbCrStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToYCbCr420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                  uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411ToYCrCb420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep,
                                                    const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* CbYCr422 (packed Cb Y0 Cr Y1) <-> the other YCbCr layouts                 */
/* ------------------------------------------------------------------------ */
/* Byte moves with the drop and repeat rules above: to and from packed Y0 Cb Y1 Cr
 * and 4:2:2 planes (same chroma), to 4:2:0 planes or pairs (odd chroma rows
 * dropped), to 4:1:1 planes (odd chroma columns dropped), from 4:2:0 pairs or
 * planes (each chroma row twice). Widths are cut to even (4:1:1: a multiple of 4),
 * heights to even where a side is 4:2:0, silently (pxkOk). Least sizes: width 2
 * (4:1:1: 4); height 1, 2 where a side is 4:2:0; CbYCr422ToYCbCr411_8u_C2P3R has
 * no height test. Checks: pointers, then the size. */
PXKCC_API PxkResult pxkiCbYCr422ToYCbCr422_8u_C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                  int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToCbYCr422_8u_C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                  int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiCbYCr422ToYCbCr422_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr422ToCbYCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiCbYCr422ToYCbCr420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiCbYCr422ToYCbCr420_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY,
                                                    int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep,
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiCbYCr422ToYCrCb420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiCbYCr422ToYCbCr411_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                    uint8_t* const pDst[3], const int32_t dstStep[3],
                                                    PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToCbYCr422_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep,
                                                    const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                    uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb420ToCbYCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                    uint8_t* pDst, int32_t dstStep, PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* 4:2:0 -> 4:2:2 with the half-sample chroma interpolator                   */
/* ------------------------------------------------------------------------ */
/* Y copied; each output chroma plane (width/2 x height) takes source chroma row k
 * as its row 2k, then each row 2k + 1 is made from the even rows already in the
 * output plane (read back from it, top to bottom), with n = height/2:
 *   row 1:      (8 C[0] + 9 C[1] - C[2] + 8) >> 4
 *   row 2k + 1: (9 (C[k] + C[k+1]) - (C[k-1] + C[k+2]) + 8) >> 4, k = 1 .. n-3
 *   row h - 3:  (-C[n-3] + 9 C[n-2] + 8 C[n-1] + 8) >> 4
 *   row h - 1:  (17 C[n-1] - C[n-2] + 8) >> 4
 * arithmetic shifts, saturated to 0..255, the same in every column. Sources: P3
 * planes Y, Cb, Cr (YCrCb: Y, Cr, Cb, whose planes go to pDst[2] and pDst[1]) or
 * a Y plane and a plane of Cb Cr pairs; destination planes Y, Cb, Cr; a step a
 * plane. The width is cut to even and the height to a multiple of 8, silently
 * (pxkOk). Least size 2 x 8. The output must not overlap the source.
 * Checks: pointers, then the size. */
PXKCC_API PxkResult pxkiYCbCr420ToYCbCr422_Filter_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                         uint8_t* const pDst[3], const int32_t dstStep[3],
                                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToYCbCr422_Filter_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep,
                                                           const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                           uint8_t* const pDst[3], const int32_t dstStep[3],
                                                           PxkSize roiSize);
PXKCC_API PxkResult pxkiYCrCb420ToYCbCr422_Filter_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                         uint8_t* const pDst[3], const int32_t dstStep[3],
                                                         PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* Interlaced 4:2:2 <-> 4:2:0                                                */
/* ------------------------------------------------------------------------ */
/* The two fields never mix: even source rows feed even output rows and odd rows
 * odd ones. Y moves unchanged. Chroma, per column, with C the source chroma rows:
 *   422 -> 420, group g of four rows: row 2g = (3 C[4g] + C[4g+2] + 2) >> 2,
 *     row 2g + 1 = (C[4g+1] + 3 C[4g+3] + 2) >> 2.
 *   420 -> 422 (h output rows, n = h/2): rows 0, 1 = C[0], C[1]; rows h-2, h-1 =
 *     C[n-2], C[n-1]; between them, for i = 0 .. (h-4)/4 - 1 with b = 2i and
 *     r = 2 + 4i: row r = (5 C[b] + 3 C[b+2] + 4) >> 3, r+1 = (7 C[b+1] + C[b+3]
 *     + 4) >> 3, r+2 = (C[b] + 7 C[b+2] + 4) >> 3, r+3 = (3 C[b+1] + 5 C[b+3] + 4)
 *     >> 3.
 * Layouts: planes Y, Cb, Cr with a step each; CbYCr422 packs Cb Y0 Cr Y1.
 * The width is cut to even and the height to a multiple of 4; the status is then
 * pxkWarnOddSize (cut columns and rows left unwritten). Least size 2 x 4.
 * Checks: pointers, then the size. */
PXKCC_API PxkResult pxkiYCbCr422To420_Interlace_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                       uint8_t* const pDst[3], const int32_t dstStep[3],
                                                       PxkSize roiSize);
PXKCC_API PxkResult pxkiCbYCr422ToYCbCr420_Interlace_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep,
                                                              uint8_t* const pDst[3], const int32_t dstStep[3],
                                                              PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420To422_Interlace_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                       uint8_t* const pDst[3], const int32_t dstStep[3],
                                                       PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420ToCbYCr422_Interlace_8u_P3C2R(const uint8_t* const pSrc[3],
                                                              const int32_t srcStep[3], uint8_t* pDst,
                                                              int32_t dstStep, PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* 4:2:0 <-> 1620 and 4:1:1, with vertical and horizontal means              */
/* ------------------------------------------------------------------------ */
/* Planes Y, Cb, Cr with a step each; 1620 chroma is width/4 x height/4. The Y
 * plane is copied (as one run where both steps equal the width and width and
 * height are below 32768), then each chroma plane is resampled with
 * up(a, b) = (a + b + 1) >> 1 in the vector columns and down(a, b) = (a + b) >> 1
 * in the others, so a sample's value depends on its column:
 *   1620To420 (cw = w/4 source columns): D[2r][2c] = S[r][c]; D[2r][2c+1] =
 *     mean(S[r][c], S[r][c+1]); D[2r+1][2c] = mean(S[r][c], S[r+1][c]);
 *     D[2r+1][2c+1] = mean of the two horizontal means. Vector columns: 32 while
 *     more than 32 remain, then 16 while more than 16 remain; the last column
 *     repeats S[r][c] across and takes down(S[r][c], S[r+1][c]) below. The last
 *     source row: 16-column steps only, and its second output row repeats it.
 *   420To1620: D[r][c] = S[2r][2c].
 *   411To420: output row y from source row 2y: D[y][2c] = S[2y][c], D[y][2c+1] =
 *     mean(S[2y][c], S[2y][c+1]); vector columns 64 while more than 64 remain,
 *     then 16 while more than 16 remain; the last column repeats S[2y][c].
 *   420To411: row 2r = S[r][2c], row 2r+1 = mean(S[r][2c], S[r+1][2c]), up in
 *     the first 32 * (cw / 32) columns, down after; the last two rows repeat the
 *     last source row. With height 2 the first row pair is still made from
 *     source rows 0 and 1, and rows 2 and 3 from source row 1: the caller must
 *     supply that source row and those destination rows.
 * Sizes are not cut: width and height must be multiples of 4 from 4 (420To411:
 * width a multiple of 4 from 4, height even from 2), else pxkErrSize.
 * Checks: pSrc, pDst, their entries and the step arrays, then the size. */
PXKCC_API PxkResult pxkiYCbCr1620To420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                              uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420To1620_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                              uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr411To420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                             uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize);
PXKCC_API PxkResult pxkiYCbCr420To411_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                             uint8_t* const pDst[3], const int32_t dstStep[3], PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* Bit-depth reduction: ReduceBits                                           */
/* ------------------------------------------------------------------------ */
/* Lowers samples to `levels` evenly spaced levels (L = levels - 1 steps),
 * optionally changing the sample type, by dtype: pxkDitherNone (nearest level,
 * computed in single precision in the range 0..1), pxkDitherFS, pxkDitherJJN,
 * pxkDitherStucki (error diffusion in float, one channel at a time, rows left to
 * right; the errors one channel leaves feed the first row of the next) or
 * pxkDitherBayer (4 x 4 ordered matrix, indexed from the region's first row and
 * column). `noise` (0..100 percent) spreads the quantiser's threshold with values
 * from a table rebuilt on every call (the same arguments give the same image);
 * it has no effect with pxkDitherNone.
 * Working domain of the diffusion and ordered methods: 0..255 (8u), 0..65535
 * (16u, 16s plus 32768, 16u8u, 16s8u plus 32768), 0..1 (32f sources, taken as
 * they stand: nothing clamps them before quantising). Largest levels: 256 for
 * 8-bit destinations, 65536 for 16-bit ones. Output codes are saturated to the
 * destination's range.
 * Layouts: C1, C3, C4 (all four samples reduced) and AC4 (the fourth sample of
 * each destination pixel is never written). Least size 1 x 1; steps in bytes,
 * not tested; the diffusion methods cut each step to whole elements of its side
 * (16-bit: step >> 1, float: step >> 2).
 * pBuffer: scratch of at least pxkiReduceBitsGetBufferSize bytes for the same
 * width, noise and dtype (any alignment; it is used from the next multiple of 64
 * bytes); not read with pxkDitherNone, nor with pxkDitherBayer without noise.
 * Checks, in order: pSrc, pDst (pxkErrNullPtr); width, height (pxkErrSize);
 * noise > 100 (pxkErrNoiseRange); levels (pxkErrDitherLevels); dtype outside
 * 0..4 (pxkErrDitherType); a null pBuffer where it is used (pxkErrNullPtr).
 * The pxkDitherFS forms of 16s8u, 32f8u, 32f16u and 32f16s add 0.5 before the
 * final truncation, as do the pxkDitherBayer forms with noise of those types in
 * C1, C3 and AC4 (never in C4). Float sources under pxkDitherFS take
 * 1.1920929e-7 as their lower clamp.
 *
 * pxkiReduceBitsGetBufferSize: bytes of scratch for a row of roiSize.width
 * pixels (the height is neither tested nor used; the size does not depend on
 * the channels). 0 for pxkDitherNone and for pxkDitherBayer without noise.
 * Checks, in order: pBufferSize (pxkErrNullPtr), width below 1 (pxkErrSize),
 * channelCode not 1, 3, 4 or 9 (pxkErrChannels), noise > 100
 * (pxkErrNoiseRange), dtype outside 0..4 (pxkErrDitherType); a size beyond
 * INT32_MAX gives pxkErrSize.
 *
 * pxkiReduceBits_8u1u_C1R: 8-bit samples to one bit each, most significant bit
 * first, each row starting at bit (dstBitOffset & 7) of the byte at
 * pDst + row * dstStep (only the low three bits of the offset count). dtype
 * pxkDitherNone: bit = threshold < sample; pxkDitherStucki: integer Stucki
 * diffusion, which needs the buffer that pxkiReduceBitsGetBufferSize gives for
 * pxkDitherStucki without noise (its rows start at the aligned base). The first
 * byte of a row keeps its bits above the offset and has the bits after the
 * written ones cleared; a last byte that is not also the first keeps the bits
 * after the row's last pixel. spare1 and spare2 are never read.
 * Checks, in order: pSrc, pDst (pxkErrNullPtr); width or height below 1 or a
 * negative dstBitOffset (pxkErrSize); dtype other than 0 or 3
 * (pxkErrDitherType); with dtype 3 a null pBuffer (pxkErrNullPtr). */
PXKCC_API PxkResult pxkiReduceBitsGetBufferSize(int32_t channelCode, PxkSize roiSize, uint32_t noise,
                                                PxkDitherType dtype, int32_t* pBufferSize);
PXKCC_API PxkResult pxkiReduceBits_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_8u_C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16u_C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16u_C4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16s_C1R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16s_C4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16u8u_C1R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16u8u_C3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16u8u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16u8u_C4R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16s8u_C1R(const int16_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16s8u_C3R(const int16_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16s8u_AC4R(const int16_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_16s8u_C4R(const int16_t* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f8u_C1R(const float* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f8u_C3R(const float* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f8u_AC4R(const float* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f8u_C4R(const float* pSrc, int32_t srcStep, uint8_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f16u_C1R(const float* pSrc, int32_t srcStep, uint16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f16u_C3R(const float* pSrc, int32_t srcStep, uint16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f16u_AC4R(const float* pSrc, int32_t srcStep, uint16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f16u_C4R(const float* pSrc, int32_t srcStep, uint16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f16s_C1R(const float* pSrc, int32_t srcStep, int16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f16s_C3R(const float* pSrc, int32_t srcStep, int16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f16s_AC4R(const float* pSrc, int32_t srcStep, int16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_32f16s_C4R(const float* pSrc, int32_t srcStep, int16_t* pDst,
    int32_t dstStep, PxkSize roiSize, uint32_t noise, PxkDitherType dtype, int32_t levels,
    uint8_t* pBuffer);
PXKCC_API PxkResult pxkiReduceBits_8u1u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                            int32_t dstStep, int32_t dstBitOffset, PxkSize roiSize,
                                            int32_t spare1, int32_t spare2, PxkDitherType dtype,
                                            uint8_t threshold, uint8_t* pBuffer);

/* ------------------------------------------------------------------------ */
/* Gray: colour -> gray, gray -> RGB                                         */
/* ------------------------------------------------------------------------ */

/*
 * pxkiRGBToGray_* and pxkiColorToGray_* reduce three channels (C3C1R; AC4C1R reads
 * four and ignores the fourth) to one plane: (c0 * s0 + c1 * s1) + c2 * s2. RGBToGray
 * uses the default weights 0.299f, 0.587f, 0.114f; ColorToGray the caller's three
 * (coeffs is not checked: null selects the defaults, widened to double in the 64f
 * members). Least size 1 x 1, and every pixel of any size is converted; statuses:
 * pxkErrNullPtr (pSrc, pDst), pxkErrSize. Steps are not checked.
 *   8u   16-bit fixed-point weights with 15 fractional bits, from each float weight
 *        as (int32)(c * 32768.0 + 0.5) keeping the low 16 bits, so negative weights
 *        and weights of 2 or more wrap. The columns below width & ~3 (C3C1R) or
 *        width & ~7 (AC4C1R) sum truncated products with saturation and give 0 for
 *        an over-unity sum; the others round one sum and keep its low 8 bits.
 *        Steps in bytes.
 *   16u  single precision, rounded by the current rounding mode. The columns below
 *        width & ~3 go in groups of four whose four 32-bit results Dk (low half l,
 *        high half h) are stored as D0l|D2h, D0h|D1l, D2l|D1h, D2h|D3l; the others
 *        keep the low 16 bits. Steps with the low bit cleared.
 *   16s  as 16u on samples plus 32768, 32768 taken off the result: saturated below
 *        width & ~3, low 16 bits kept after it. Steps with the low bit cleared.
 *   32f  single precision, unclamped; steps with the low two bits cleared.
 *   64f  double precision, unclamped; steps in bytes.
 *
 * pxkiGrayToRGB_* copy each gray sample into three channels (C1C3R), or three and
 * alpha in the fourth of every pixel (C1C4R). Samples are copied as bits. Steps in
 * bytes, not checked; least size 1 x 1, any size converted whole; statuses:
 * pxkErrNullPtr, pxkErrSize.
 */
PXKCC_API PxkResult pxkiRGBToGray_8u_C3C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                           int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToGray_8u_AC4C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                            int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToGray_16u_C3C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                            int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToGray_16u_AC4C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                             int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToGray_16s_C3C1R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                            int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToGray_16s_AC4C1R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                             int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToGray_32f_C3C1R(const float* pSrc, int32_t srcStep, float* pDst,
                                            int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToGray_32f_AC4C1R(const float* pSrc, int32_t srcStep, float* pDst,
                                             int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiColorToGray_8u_C3C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                             int32_t dstStep, PxkSize roiSize, const float coeffs[3]);
PXKCC_API PxkResult pxkiColorToGray_8u_AC4C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                              int32_t dstStep, PxkSize roiSize, const float coeffs[3]);
PXKCC_API PxkResult pxkiColorToGray_16u_C3C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                              int32_t dstStep, PxkSize roiSize, const float coeffs[3]);
PXKCC_API PxkResult pxkiColorToGray_16u_AC4C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                               int32_t dstStep, PxkSize roiSize, const float coeffs[3]);
PXKCC_API PxkResult pxkiColorToGray_16s_C3C1R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                              int32_t dstStep, PxkSize roiSize, const float coeffs[3]);
PXKCC_API PxkResult pxkiColorToGray_16s_AC4C1R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                               int32_t dstStep, PxkSize roiSize, const float coeffs[3]);
PXKCC_API PxkResult pxkiColorToGray_32f_C3C1R(const float* pSrc, int32_t srcStep, float* pDst,
                                              int32_t dstStep, PxkSize roiSize, const float coeffs[3]);
PXKCC_API PxkResult pxkiColorToGray_32f_AC4C1R(const float* pSrc, int32_t srcStep, float* pDst,
                                               int32_t dstStep, PxkSize roiSize, const float coeffs[3]);
PXKCC_API PxkResult pxkiColorToGray_64f_C3C1R(const double* pSrc, int32_t srcStep, double* pDst,
                                              int32_t dstStep, PxkSize roiSize, const double coeffs[3]);
PXKCC_API PxkResult pxkiColorToGray_64f_AC4C1R(const double* pSrc, int32_t srcStep, double* pDst,
                                               int32_t dstStep, PxkSize roiSize, const double coeffs[3]);
PXKCC_API PxkResult pxkiGrayToRGB_8u_C1C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                           int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGrayToRGB_8u_C1C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                           int32_t dstStep, PxkSize roiSize, uint8_t alpha);
PXKCC_API PxkResult pxkiGrayToRGB_16u_C1C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                            int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGrayToRGB_16u_C1C4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                            int32_t dstStep, PxkSize roiSize, uint16_t alpha);
PXKCC_API PxkResult pxkiGrayToRGB_32f_C1C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                            int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiGrayToRGB_32f_C1C4R(const float* pSrc, int32_t srcStep, float* pDst,
                                            int32_t dstStep, PxkSize roiSize, float alpha);

/* ------------------------------------------------------------------------ */
/* ColorTwist: a caller's colour matrix                                      */
/* ------------------------------------------------------------------------ */

/*
 * Each pixel's three colour samples x0, x1, x2 (as floats) become
 *   out[k] = (twist[k][3] + twist[k][0] * x0) + (twist[k][2] * x2 + twist[k][1] * x1)
 * with twist three rows of four floats, row-major, in single precision in that
 * association. pxkiColorTwist_32f_* store the results as they are, under the caller's
 * rounding mode. pxkiColorTwist32f_8u/16u/16s_* clamp each result (minimum with the
 * upper bound first, so NaN gives the upper bound; then the maximum with the lower
 * bound: 0..255, 0..65535, -32768..32767) and round to nearest with ties to even;
 * they set the rounding field of the SSE control register to nearest for the call
 * and, if it was not nearest, write the caller's whole register back afterwards.
 * All three outputs of a pixel come from its old inputs, so the in-place forms (IR,
 * IP3R) need no copy. AC4 forms leave the fourth sample of every destination pixel
 * unwritten. Plane forms share one step a side. Steps are bytes, never scaled.
 * Least size 1 x 1, any size converted whole. Checks: pxkErrNullPtr (source,
 * destination, twist, then the plane entries), pxkErrSize, then pxkErrStep for a
 * step below 1.
 * pxkiColorTwist_32f_C4R is a linear four-by-four twist of all four channels, with
 * twist four rows of four: out[k] = ((t[k][0]*x0 + t[k][1]*x1) + t[k][2]*x2) +
 * t[k][3]*x3. When both its steps equal width * 4 (four bytes, not the pixel's
 * sixteen) it converts width * height pixels from the start of the buffers as one run.
 */
PXKCC_API PxkResult pxkiColorTwist_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                           int32_t dstStep, PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist_32f_C3IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize,
                                            const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst,
                                            int32_t dstStep, PxkSize roiSize,
                                            const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist_32f_AC4IR(float* pSrcDst, int32_t srcDstStep, PxkSize roiSize,
                                             const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist_32f_P3R(const float* const pSrc[3], int32_t srcStep,
                                           float* const pDst[3], int32_t dstStep, PxkSize roiSize,
                                           const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist_32f_IP3R(float* const pSrcDst[3], int32_t srcDstStep,
                                            PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist_32f_C4R(const float* pSrc, int32_t srcStep, float* pDst,
                                           int32_t dstStep, PxkSize roiSize, const float twist[16]);
PXKCC_API PxkResult pxkiColorTwist32f_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                             int32_t dstStep, PxkSize roiSize,
                                             const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_8u_C3IR(uint8_t* pSrcDst, int32_t srcDstStep, PxkSize roiSize,
                                              const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                              int32_t dstStep, PxkSize roiSize,
                                              const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_8u_AC4IR(uint8_t* pSrcDst, int32_t srcDstStep,
                                               PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                             uint8_t* const pDst[3], int32_t dstStep,
                                             PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_8u_IP3R(uint8_t* const pSrcDst[3], int32_t srcDstStep,
                                              PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                              int32_t dstStep, PxkSize roiSize,
                                              const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16u_C3IR(uint16_t* pSrcDst, int32_t srcDstStep,
                                               PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16u_AC4R(const uint16_t* pSrc, int32_t srcStep,
                                               uint16_t* pDst, int32_t dstStep, PxkSize roiSize,
                                               const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16u_AC4IR(uint16_t* pSrcDst, int32_t srcDstStep,
                                                PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16u_P3R(const uint16_t* const pSrc[3], int32_t srcStep,
                                              uint16_t* const pDst[3], int32_t dstStep,
                                              PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16u_IP3R(uint16_t* const pSrcDst[3], int32_t srcDstStep,
                                               PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                              int32_t dstStep, PxkSize roiSize,
                                              const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16s_C3IR(int16_t* pSrcDst, int32_t srcDstStep,
                                               PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                               int32_t dstStep, PxkSize roiSize,
                                               const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16s_AC4IR(int16_t* pSrcDst, int32_t srcDstStep,
                                                PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16s_P3R(const int16_t* const pSrc[3], int32_t srcStep,
                                              int16_t* const pDst[3], int32_t dstStep,
                                              PxkSize roiSize, const float twist[12]);
PXKCC_API PxkResult pxkiColorTwist32f_16s_IP3R(int16_t* const pSrcDst[3], int32_t srcDstStep,
                                               PxkSize roiSize, const float twist[12]);

/* ------------------------------------------------------------------------ */
/* RGB <-> HLS (hue, lightness, saturation), 8-bit interleaved               */
/* ------------------------------------------------------------------------ */
/* HLS pixels hold H, L, S; each channel 0..255, H 255 codes for one turn. The
 * arithmetic is float (hue in degrees). The columns below width - width % 8 (C3) or
 * width - width % 4 (AC4) are converted with the processor's approximate reciprocal,
 * unrefined, and truncated and saturated; the rest of each row refines each reciprocal
 * once, so main-loop and tail pixels can differ by one (a pure red can give S 254 in
 * the main loop). RGB to HLS truncates L = (max + min) / 2; a gray pixel gives H 0 and
 * S 0; of channels tied at the maximum, red wins over green over blue. HLS to RGB: a
 * gray (S 0) tail pixel returns its L byte, a gray main-loop pixel
 * trunc(L / 255 * 255), which can be L - 1. Least size 1 x 1; steps are not tested,
 * zero and negative steps are legal. AC4: the destination's alpha byte keeps its
 * value. */
PXKCC_API PxkResult pxkiRGBToHLS_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToHLS_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
/* BGR <-> HLS: the same conversion with the colour side in B, G, R order (channels or
 * planes 0, 1, 2; red is still tested first for the maximum). Main loops take groups
 * of 4 pixels (columns below width - width % 4). Planar sides are arrays of 3 plane
 * pointers (P3) or 4 (AP4, P4: plane 3 is alpha), one step for all planes of a side.
 * AC4P4R: destination plane 3 receives the source's alpha byte; AP4C4R: the
 * destination's alpha byte receives source plane 3; AP4R: plane 3 is copied; AC4R: the
 * destination's alpha byte keeps its value. Status pxkErrStep for a step below 1: the
 * plane and alpha forms test pointers (every plane entry), then steps, then size;
 * pxkiBGRToHLS_8u_AC4R tests pointers, size, then steps. */
PXKCC_API PxkResult pxkiBGRToHLS_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToHLS_8u_AC4P4R(const uint8_t* pSrc, int32_t srcStep,
                                           uint8_t* const pDst[4], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToHLS_8u_AP4C4R(const uint8_t* const pSrc[4], int32_t srcStep,
                                           uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToHLS_8u_AP4R(const uint8_t* const pSrc[4], int32_t srcStep,
                                         uint8_t* const pDst[4], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToHLS_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                          uint8_t* const pDst[3], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToHLS_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                          uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToHLS_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                        uint8_t* const pDst[3], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToBGR_8u_AC4P4R(const uint8_t* pSrc, int32_t srcStep,
                                           uint8_t* const pDst[4], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToBGR_8u_AP4C4R(const uint8_t* const pSrc[4], int32_t srcStep,
                                           uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToBGR_8u_AP4R(const uint8_t* const pSrc[4], int32_t srcStep,
                                         uint8_t* const pDst[4], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToBGR_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep,
                                          uint8_t* const pDst[3], int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToBGR_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                          uint8_t* pDst, int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToBGR_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep,
                                        uint8_t* const pDst[3], int32_t dstStep, PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* RGB <-> CIE XYZ, 8-bit interleaved                                        */
/* ------------------------------------------------------------------------ */
/* Rec. 709 primaries, D65 white, no gamma: the matrix works on the samples as they
 * are. Integer fixed point: the columns below width - width % 8 (C3) or
 * width - width % 4 (AC4) use 16-bit coefficients (2^-15 forward, 2^-13 inverse),
 * truncated and saturated to 0..255; the rest of each row uses coefficients of
 * 2^-16: forward X and Y keep their low 8 bits and Z is limited to 255, inverse
 * results are saturated. Main-loop and tail pixels can differ by one (white gives
 * X 242, Y 255, Z 255 in the main loop and Y 254 in the tail). Least size 1 x 1;
 * steps are not tested. AC4: the destination's alpha byte keeps its value. */
PXKCC_API PxkResult pxkiRGBToXYZ_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToXYZ_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiXYZToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiXYZToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* RGB <-> HSV (hue, saturation, value), 8-bit interleaved                   */
/* ------------------------------------------------------------------------ */
/* HSV pixels hold H, S, V, each 0..255; a sextant of hue is 42.5 codes and hue 255
 * counts as 0 on the way back. Float arithmetic with the processor's approximate
 * reciprocal, unrefined (so S of a pure colour can be 254 or 255 by processor);
 * results rounded by the current rounding mode, low byte stored. Every column gives
 * the same bits. RGB to HSV: V = max; black and gray give H 0, S 0; of channels tied
 * at the maximum, blue wins over green over red. HSV to RGB: S 0 returns V exactly.
 * Least size 1 x 1; steps are not tested. AC4: the destination's alpha byte keeps its
 * value. */
PXKCC_API PxkResult pxkiRGBToHSV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToHSV_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHSVToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHSVToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* RGB <-> YCC, 8-bit interleaved                                            */
/* ------------------------------------------------------------------------ */
/* YCC pixels hold Y, C1, C2: luma scaled by 0.7132668 and two colour differences with
 * neutral at 156 and 137. The columns below width - width % 8 (C3) or
 * width - width % 4 (AC4) are converted in 16-bit words and saturated to 0..255; the
 * rest of each row in 32-bit integers: forward C1 and C2 keep their low 8 bits,
 * inverse results are saturated, and the inverse tail's G is
 * (5564 Y - 794 (b >> 8) - 2084 (c >> 8)) >> 16 with b = 9084 C1 - 1417104,
 * c = 7460 C2 - 1022020 (its luma term shifted by 16), so main-loop and tail pixels
 * differ: slightly in Y, C1, C2, R and B, and widely in inverse G. Least size 1 x 1;
 * steps are not tested. AC4: the destination's alpha byte keeps its value. */
PXKCC_API PxkResult pxkiRGBToYCC_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCC_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCCToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCCToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* 4:2:0 with vertical smoothing, whole or in strips                          */
/* ------------------------------------------------------------------------ */
/* Values of `layout`: which part of an image a call converts. */
typedef int32_t PxkStripLayout;
enum {
    pxkLayoutTop = 1,     /* the top strip of an image converted in strips */
    pxkLayoutCenter = 4,  /* a strip between the top and the bottom */
    pxkLayoutBottom = 16, /* the bottom strip */
    pxkLayoutWhole = 21   /* the whole image in one call (top + center + bottom) */
};

/* Source: a Y plane and a plane of Cb Cr pairs (4:2:0, width/2 pairs by height/2
 * rows), each with its step. Luma and chroma are both smoothed vertically (luma is
 * never copied), per column, with Y and C the source rows counted from the pointers:
 *   F31(r, k)  = (3 Y[r] + Y[r+1] + k) >> 2
 *   F121(r, k) = (Y[r-1] + 2 Y[r] + Y[r+1] + k) >> 2
 *   F13(r, k)  = (Y[r-1] + 3 Y[r] + k) >> 2
 *   A(i, k)    = (C[i] + C[i+1] + k) >> 1
 * each saturated at 255. A k of 4 (luma) or 2 (chroma) adds exactly 1 to the
 * truncated value, so a flat area of value v comes out as v + 1 on those rows.
 * The width is cut to even and the height to even, silently (pxkOk); h is the cut
 * height and n = h/2. Least size 2 x 2. The destination must not overlap the source.
 *
 * Strips. pxkLayoutWhole converts a whole image. An image converted in strips takes
 * pxkLayoutTop for its first strip, pxkLayoutCenter for the middle ones and
 * pxkLayoutBottom for the last, each with its pointers at the strip's first row. The
 * top and center strips stop two rows short (rows h-2 and h-1 need the next strip);
 * the center and bottom strips finish those two rows of the strip above: they WRITE
 * rows -2 and -1 above the destination pointers (for the planar member, chroma row -1
 * too) and READ three luma rows and one chroma row above the source pointers. The
 * caller must own those rows. Another `layout` value takes the whole-image path if its
 * bits 0, 2 and 4 are all set; otherwise the call writes nothing and returns pxkOk
 * (after the pointer and size tests).
 *
 * pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R: into packed 4:2:2 Y0 Cb Y1 Cr (byte 0 of a
 * source pair in byte 1 of the output, byte 1 in byte 3); both output rows of a pair
 * take the same chroma. Output rows and their filters:
 *   Whole, h = 2:  rows 0, 1: F31(0,4), F13(1,4); chroma C[0] copied.
 *   Whole, h >= 4: rows 0 .. h-1: F31(0,4), then F121(r,4), last F13(h-1,4); chroma
 *                  of pair p: A(0,2) for p = 0, A(p,0) between, A(n-2,2) for p = n-1.
 *   Top:           rows 0 .. h-3 (always rows 0 and 1): F31(0,4), F121(1,0), then
 *                  F121(r,4); chroma of rows 2p, 2p+1: A(p,2). At h = 2 it reads luma
 *                  row 2 and chroma row 1, past the region.
 *   Center:        rows -2 .. h-3: F121(r,4); chroma of rows 2p-2, 2p-1: A(p-1,2).
 *   Bottom:        rows -2 .. h-1: F121(r,4), but F121(h-2,0) and F13(h-1,0); chroma
 *                  as Center, but rows h-2, h-1: A(n-2,0).
 * Checks: any pointer null: pxkErrNullPtr; width or height below 2: pxkErrSize.
 *
 * pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R: into 4:2:0 planes pDst[0] (luma), pDst[1]
 * and pDst[2] (chroma, width/2 by height/2), a step a plane. The chroma bytes are not
 * exchanged in spite of the name: byte 0 of each source pair goes to pDst[1], byte 1
 * to pDst[2]. The whole image is biased, the strips are not:
 *   Whole, h = 2:  luma rows 0, 1: F31(0,4), F13(1,4); chroma row 0 copied.
 *   Whole, h >= 4: luma as the packed member's; chroma rows p = 0 .. n-2: A(p,2),
 *                  row n-1: A(n-2,2).
 *   Top:           luma rows 0 .. h-3: F31(0,0), then F121(r,0); chroma rows
 *                  0 .. n-2: A(p,0). At h = 2 nothing is written.
 *   Center:        luma rows -2 .. h-3: F121(r,0); chroma rows -1 .. n-2: A(p,0).
 *   Bottom:        luma rows -2 .. h-1: F121(r,0), last F13(h-1,0); chroma rows
 *                  -1 .. n-2: A(p,0), row n-1: A(n-2,0).
 * Checks: pSrcY, pSrcCbCr or pDst null: pxkErrNullPtr; width or height below 1:
 * pxkErrSize; an entry of pDst, or dstStep, null: pxkErrNullPtr; width or height
 * below 2: pxkErrSize. */
PXKCC_API PxkResult pxkiYCbCr420ToYCbCr422_Filter_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep,
                                                           const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                           uint8_t* pDst, int32_t dstStep, PxkSize roiSize,
                                                           int32_t layout);
PXKCC_API PxkResult pxkiYCbCr420ToYCrCb420_Filter_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep,
                                                           const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                                           uint8_t* const pDst[3], const int32_t dstStep[3],
                                                           PxkSize roiSize, int32_t layout);

/* ------------------------------------------------------------------------ */
/* RGB <-> CIE Lab (D65 white)                                               */
/* ------------------------------------------------------------------------ */
/* Lab pixels hold L, a, b: floats with L 0..100 and signed a and b; 8-bit codes
 * L * 255 / 100, a + 128, b + 128; 16-bit codes L * 65535 / 100, (a + 128) * 255,
 * (b + 128) * 255. The XYZ matrices are applied to the samples as they stand (no
 * gamma step). Layouts: C3 interleaved (RGB red first, BGR blue first; Lab always L,
 * a, b), or three planes (R, G, B and L, a, b) with a byte step each. Steps are bytes
 * for every sample type, used as they stand and not tested. Least size 1 x 1.
 * Forward: Y, X / Xn, Z / Zn (limited to at most 1 for floats and doubles, unlimited
 * for 8-bit samples) through the cube-root curve with its linear foot at 0.008856
 * (compared in the kernel's precision; a value at the threshold and NaN take the
 * foot), each cube root a double power with the exponent 0.3333333333333333, one
 * pixel at a time. Integer Lab codes are truncated and keep their low bits: a or b
 * beyond the code range wraps, it does not saturate. Backward: cubes with no
 * threshold and no linear foot (so it does not invert the forward way for dark
 * colours), no clamp of float results; 8-bit results are truncated and limited to
 * 0..255. The 8-bit backward members convert the columns below width - width % 4
 * with reciprocals (the processor's approximate reciprocal refined once) where the
 * rest of each row divides, so the two can differ by one.
 * Planar members: each plain member tests its two step arrays (pxkErrNullPtr), widens
 * its steps and size and forwards to its _L member, which takes PxkSizeL and arrays of
 * int64_t steps and tests pSrc, pDst, the source planes, srcStep, the destination
 * planes, dstStep, then the size. LabToRGB over planes converts the whole region as
 * one run when all six steps equal the row's bytes or the height is 1 (same values). */
PXKCC_API PxkResult pxkiRGBToLab_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToLab_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToLab_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                           int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLab_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToLab_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiLabToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiLabToBGR_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, PxkSize roiSize);
/* 16-bit Lab codes to 8-bit BGR. */
PXKCC_API PxkResult pxkiLabToBGR_16u8u_C3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                           int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiLabToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiLabToBGR_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLab_32f_P3R(const float* const pSrc[3], const int32_t srcStep[3],
                                         float* const pDst[3], const int32_t dstStep[3], PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLab_32f_P3R_L(const float* const pSrc[3], const int64_t srcStep[3],
                                           float* const pDst[3], const int64_t dstStep[3], PxkSizeL roiSize);
PXKCC_API PxkResult pxkiRGBToLab_64f_P3R(const double* const pSrc[3], const int32_t srcStep[3],
                                         double* const pDst[3], const int32_t dstStep[3], PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLab_64f_P3R_L(const double* const pSrc[3], const int64_t srcStep[3],
                                           double* const pDst[3], const int64_t dstStep[3], PxkSizeL roiSize);
PXKCC_API PxkResult pxkiLabToRGB_32f_P3R(const float* const pSrc[3], const int32_t srcStep[3],
                                         float* const pDst[3], const int32_t dstStep[3], PxkSize roiSize);
PXKCC_API PxkResult pxkiLabToRGB_32f_P3R_L(const float* const pSrc[3], const int64_t srcStep[3],
                                           float* const pDst[3], const int64_t dstStep[3], PxkSizeL roiSize);
PXKCC_API PxkResult pxkiLabToRGB_64f_P3R(const double* const pSrc[3], const int32_t srcStep[3],
                                         double* const pDst[3], const int32_t dstStep[3], PxkSize roiSize);
PXKCC_API PxkResult pxkiLabToRGB_64f_P3R_L(const double* const pSrc[3], const int64_t srcStep[3],
                                           double* const pDst[3], const int64_t dstStep[3], PxkSizeL roiSize);

/* ------------------------------------------------------------------------ */
/* RGB <-> CIE XYZ, 16-bit and float interleaved                             */
/* ------------------------------------------------------------------------ */
/* The matrix of the 8-bit members (Rec. 709 primaries, D65 white, no gamma) in single
 * precision: each output (c0 * a + c1 * b) + c2 * c, one rounding an operation, the
 * same in every column (groups of four pixels, then width & 3 single pixels).
 * 16u: the sums truncated toward zero and saturated to 0..65535 (white gives X 62288,
 * Y 65535, Z 65535). 16s: each sample taken plus 32768, converted as 16u, and the
 * results less 32768 (-32768 in every channel stays -32768). 32f: forward stores X and
 * Y unclamped and clamps Z alone, max(Z, 0) then min(., 1) (a NaN Z gives 0; white
 * gives X 0.950456, Y 1, Z 1); inverse clamps each channel to 0..1 (below 0 gives 0,
 * otherwise min(1, v), so a NaN passes; where two terms of a sum are NaN, the first
 * one's NaN is passed on). Results of the float arithmetic follow the caller's
 * rounding mode. The byte steps lose their low bit (16-bit) or their two low
 * bits (32f), as an arithmetic shift to samples would; they are not tested. Least
 * size 1 x 1. AC4: the destination's fourth sample keeps its value. */
PXKCC_API PxkResult pxkiRGBToXYZ_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToXYZ_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToXYZ_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToXYZ_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToXYZ_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToXYZ_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiXYZToRGB_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiXYZToRGB_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiXYZToRGB_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiXYZToRGB_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiXYZToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiXYZToRGB_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst,
                                          int32_t dstStep, PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* RGB <-> YCC, 16-bit and float interleaved                                 */
/* ------------------------------------------------------------------------ */
/* The YCC of the 8-bit members in single precision, one rounding an operation:
 * forward Y = (0.299 R + 0.587 G) + 0.114 B, out Y * 0.7132668,
 * (B - Y) * 0.4368627 + o1, (R - Y) * 0.53192 + o2; inverse c1 = (C1 - o1) * 2.2179,
 * y = Y * 1.3584, c2 = (C2 - o2) * 1.8215, R = y + c2, G = (y - 0.194 c1) - c2 * 0.509,
 * B = y + c1. 32f: o1 0.6117647, o2 0.5372549 in every column; forward unclamped,
 * inverse clamped to 0..1 (below 0 gives 0, otherwise min(1, v)); black gives 0,
 * 0.6117647, 0.5372549; where two terms of a sum are NaN, the first one's NaN is passed
 * on. 16u: groups of four pixels (columns below width & ~3) with o1
 * 40092, o2 35209, rounded by the current rounding mode; the last width & 3 pixels by
 * folded forms, truncated: forward
 * Y = 0.213267 R + 0.418688 G + 0.0813124 B + 0.49999,
 * C1 = 40092.5 - 0.130621 R - 0.256437 G + 0.387058 B,
 * C2 = 35209.5 + 0.372876 R - 0.312237 G - 0.0606389 B; inverse, with y = 1.3584 Y,
 * d1 = C1 - 40092, d2 = C2 - 35209: R = y + 1.8215 d2, G = y - 0.430272609 d1
 * - 0.927143455 d2, B = y + 2.2179 d1, each + 0.49999 (sums left to right). Group and
 * tail pixels can differ by one; results saturate to 0..65535. 16s: each sample taken
 * plus 32768, converted as 16u, and the results less 32768. Results follow the
 * caller's rounding mode. The byte steps lose their low bit (16-bit) or their two low
 * bits (32f); they are not tested. Least size 1 x 1. AC4: the destination's fourth
 * sample keeps its value. */
PXKCC_API PxkResult pxkiRGBToYCC_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCC_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCC_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCC_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCC_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToYCC_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCCToRGB_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCCToRGB_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCCToRGB_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCCToRGB_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCCToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiYCCToRGB_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst,
                                          int32_t dstStep, PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* RGB <-> HLS and RGB <-> HSV, 16-bit and 32f interleaved                   */
/* ------------------------------------------------------------------------ */
/* The HLS and HSV conversions of 16u (0..65535), 16s (16u shifted by 32768: -32768
 * stands for zero) and 32f samples (HLS: H in turns, 0 up to 1; L, S, R, G, B in 0..1;
 * not clamped). Byte steps are halved (16-bit) or quartered (32f) by an arithmetic
 * shift, so the odd low bits of a step are dropped; steps are not tested, zero and
 * negative steps are legal. Least size 1 x 1. AC4: the destination's fourth samples
 * are not written. Main loops take four pixels; the last width % 4 pixels of a row go
 * to the tail where a member has one.
 * RGB to HLS, 16-bit: the main loop uses the processor's approximate reciprocal,
 * unrefined, the tail refines it once; H, L, S truncated and saturated to the type's
 * range; a gray pixel gives H and S of the lowest code (0, or -32768 for 16s).
 * RGB to HLS, 32f: every pixel by true divisions; a pixel whose spread of channels is
 * at most 1.1920929e-07 gives H 0 and S 0.
 * HLS to RGB, 16u: v * 32767.5 truncated, saturated to 32767 and doubled, so the
 * output is even (white gives 65534); a gray (S 0) tail pixel returns its L.
 * HLS to RGB, 16s: the C3 main loop rounds v * 65535 by the current rounding mode; the
 * AC4 main loop truncates v * 65535 + 0.499989986, saturates it to 32767 and adds
 * -32768 with wrap-around, which folds the upper half of the range to -1; the tails
 * divide for real and truncate v * 65535 + 0.499989986, low 16 bits stored.
 * HLS to RGB, 32f: the tail divides by 60 where the main loop multiplies by one
 * sixtieth, so the last bits can differ.
 * RGB to HSV, 16u: every pixel by true divisions, S and H truncated after adding 0.5;
 * of channels tied at the maximum, blue wins over green over red.
 * HSV to RGB, 16u: results rounded by the current rounding mode; hue 65535 counts as
 * 0; S 0 returns V exactly. */
PXKCC_API PxkResult pxkiRGBToHLS_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToHLS_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToHLS_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToHLS_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToHLS_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToHLS_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToRGB_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToRGB_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToRGB_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToRGB_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHLSToRGB_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToHSV_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToHSV_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHSVToRGB_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                         int32_t dstStep, PxkSize roiSize);
PXKCC_API PxkResult pxkiHSVToRGB_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst,
                                          int32_t dstStep, PxkSize roiSize);

/* ------------------------------------------------------------------------ */
/* RGB and BGR <-> CIE LUV, interleaved                                      */
/* ------------------------------------------------------------------------ */
/* The Rec. 709 / D65 matrices of XYZ (no gamma), white chromaticity un 0.197839,
 * vn 0.468342; L 0..100, U and V signed. Float arithmetic throughout, so results
 * follow the caller's rounding mode. Least size 1 x 1; steps are not tested; 32f
 * members clear the low two bits of each byte step. AC4: the destination's fourth
 * sample keeps its value. A BGR member is its RGB twin with the first and third
 * channels of the RGB side exchanged.
 * 32f forward: L from a 128-entry cube-root table and a nine-term series (903.3 Y at
 * or below Y 0.008856); u, v by the processor's approximate reciprocal refined once.
 * Columns below width - width % 4 add 3 to a zero denominator; the rest give U and V
 * of 0 where Z is 0. Nothing is clamped. 32f inverse: the same in every column, with
 * true divisions; L below 9e-05 gives black; R, G, B clamped to 0..1.
 * 16u, 16s: the members clear the low bit of each byte step; 16s samples are 16u
 * samples less 32768. Forward as 32f from the samples (the linear foot below Y 580.378
 * in sample units), then L16 = L 655.35, U16 = (U + 134) 185.127121,
 * V16 = (V + 140) 250.133591: columns below width - width % 4 round by the current
 * mode, the rest round L and truncate U and V; all saturate to the type's range.
 * Inverse: L, U, V from the samples by the float reciprocals of the three scales
 * (0.00152590219, 0.00540169375, 0.00399786374) and the offsets -134 and -140, then
 * 1 / (13 L) by the refined reciprocal and 1/116 as a product; R, G, B times
 * 65535, truncated and saturated; the columns past width - width % 4 work the cube in
 * double, so they can differ by one.
 * 8u: L8 = L 255 / 100, U8 = (U + 134) 255 / 354, V8 = (V + 140) 255 / 262. Forward one
 * pixel at a time (a double cube root), every column alike: L8 truncated, U8 and V8
 * rounded by + 0.5, each stored as its low 8 bits (black gives 0, 97, 136). Inverse as
 * 16u with the scales 0.392156869, 1.38823533, 1.02745104 and 255 for 65535, over
 * columns below width - width % 8 (C3 and AC4 alike) and a tail past them. */
PXKCC_API PxkResult pxkiRGBToLUV_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLUV_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToLUV_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiLUVToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiLUVToRGB_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiLUVToBGR_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep,
                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLUV_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLUV_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiLUVToRGB_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiLUVToRGB_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLUV_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLUV_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiLUVToRGB_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiLUVToRGB_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                          PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLUV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        PxkSize roiSize);
PXKCC_API PxkResult pxkiRGBToLUV_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiBGRToLUV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        PxkSize roiSize);
PXKCC_API PxkResult pxkiLUVToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        PxkSize roiSize);
PXKCC_API PxkResult pxkiLUVToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                         PxkSize roiSize);
PXKCC_API PxkResult pxkiLUVToBGR_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        PxkSize roiSize);

#ifdef __cplusplus
}
#endif

#endif /* PXKCC_H */
