/* A caller in strict C99: the header compiles without extensions and its declarations are those of the
 * library. */
#include <zrfgen/transforms.h>

int callFromC(void);

/* 0, or the number of the step that went wrong. */
int callFromC(void) {
    Status(ZRF_CALL * transform)(const Complex32 *, Complex32 *, int32_t) = zrfgDFTFwd_CToC_2_32fc;
    const LibraryVersion *version = zrfgenGetLibVersion();
    const Complex32 input32[2] = {{1, 2}, {3, 5}};
    const Complex64 input64[2] = {{1, 2}, {3, 5}};
    const Float32 real32[2] = {1, 3};
    Complex32 output32[2];
    Complex64 output64[2];
    Float32 spectrum32[4];
    Dct4Plan *plan;

    if (transform(input32, output32, zrfScaleNone) != zrfStatusOk || output32[0].re != 4 ||
        output32[1].im != -3)
        return 1;
    if (zrfgDFTInv_CToC_64fc(input64, output64, 2, zrfScaleInvByN) != zrfStatusOk || output64[0].im != 3.5)
        return 2;
    if (zrfgDFTFwd_CToC_64fc(input64, output64, 1, zrfScaleNone) != zrfStatusSizeError)
        return 3;
    if (zrfgDFTFwd_RToCCS_2_32f(real32, spectrum32, zrfScaleNone) != zrfStatusOk || spectrum32[2] != -2)
        return 4;
    if (zrfgDCT4InitAlloc_64f(&plan, 64) != zrfStatusOk || zrfgDCT4Free_64f(plan) != zrfStatusOk)
        return 5;
    return version == 0 ? 6 : 0;
}
