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

#ifdef __cplusplus
}
#endif

#endif /* PXKCC_H */
