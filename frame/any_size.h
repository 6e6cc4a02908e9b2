// The any-size entries: a jump on the length to the kernel of that length, which makes every other check.
#pragma once

#include "entry.h"

#define ZRF_KERNEL(N, name, suffix) ZRF_BODY(name##_##N##_##suffix)

#define ZRF_DECLARE_KERNEL(N, name, suffix, Element)                                                         \
    Status ZRF_CALL ZRF_KERNEL(N, name, suffix)(const Element *src, Element *dst, int32_t flag);

#define ZRF_KERNEL_CASE(N, name, suffix)                                                                     \
    case N:                                                                                                  \
        return ZRF_KERNEL(N, name, suffix)(src, dst, flag);

// Defines the entry of a family.
#define ZRF_ANY_SIZE(name, suffix, Element)                                                                  \
    extern "C" {                                                                                             \
    ZRF_FOR_EACH_LENGTH(ZRF_DECLARE_KERNEL, name, suffix, Element)                                           \
    Status ZRF_CALL ZRF_BODY(name##_##suffix)(const Element *src, Element *dst, int32_t N, int32_t flag) {   \
        switch (N) { ZRF_FOR_EACH_LENGTH(ZRF_KERNEL_CASE, name, suffix) }                                    \
        return zrfStatusSizeError;                                                                           \
    }                                                                                                        \
    }
