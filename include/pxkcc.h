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

#ifdef __cplusplus
}
#endif

#endif /* PXKCC_H */
