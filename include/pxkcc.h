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

#ifdef __cplusplus
}
#endif

#endif /* PXKCC_H */
