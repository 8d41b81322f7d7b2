/* A user's program: includes the installed header, links the installed library,
 * converts one pixel and checks the version record (argv[1]: the target code the
 * installed build must report). */
#include <pxkcc.h>
#include <stdio.h>
#include <string.h>

int main(int argc, char** argv) {
    const char* target = argc > 1 ? argv[1] : "s2";
    const PxkVersionRecord* v = pxkccGetLibVersion();
    if (v == NULL || v->major != 2021 || strcmp(v->targetCode, target) != 0) {
        fprintf(stderr, "unexpected version record\n");
        return 1;
    }
    const uint8_t rgb[3] = {255, 0, 0};
    uint8_t ycc[3] = {0, 0, 0};
    PxkSize size = {1, 1};
    PxkResult status = pxkiRGBToYCbCr_8u_C3R(rgb, 3, ycc, 3, size);
    if (status != pxkOk || ycc[0] != 82 || ycc[1] != 90 || ycc[2] != 240) {
        fprintf(stderr, "unexpected conversion: status %d, %d %d %d\n", (int)status, ycc[0], ycc[1], ycc[2]);
        return 1;
    }
    printf("%s %s: red -> %d %d %d\n", v->name, v->version, ycc[0], ycc[1], ycc[2]);
    return 0;
}
