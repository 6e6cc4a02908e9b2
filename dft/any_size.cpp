// The any-size entries: a jump on the length to the kernel of that length, which makes every other check.
#include "entry.h"

#define KERNEL(N, name, suffix) ZRF_BODY(name##_##N##_##suffix)

#define DECLARE(N, name, suffix, Element)                                                                    \
    Status ZRF_CALL KERNEL(N, name, suffix)(const Element *src, Element *dst, int32_t flag);

#define CASE(N, name, suffix)                                                                                \
    case N:                                                                                                  \
        return KERNEL(N, name, suffix)(src, dst, flag);

#define ANY_SIZE(name, suffix, Element)                                                                      \
    ZRF_FOR_EACH_LENGTH(DECLARE, name, suffix, Element)                                                  \
    Status ZRF_CALL ZRF_BODY(name##_##suffix)(const Element *src, Element *dst, int32_t N, int32_t flag) {   \
        switch (N) { ZRF_FOR_EACH_LENGTH(CASE, name, suffix) }                                           \
        return zrfStatusSizeError;                                                                           \
    }

extern "C" {

ANY_SIZE(zrfgDFTFwd_CToC, 32fc, Complex32)
ANY_SIZE(zrfgDFTFwd_CToC, 64fc, Complex64)
ANY_SIZE(zrfgDFTInv_CToC, 32fc, Complex32)
ANY_SIZE(zrfgDFTInv_CToC, 64fc, Complex64)
}
