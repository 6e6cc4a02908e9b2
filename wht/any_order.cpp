// The Walsh-Hadamard transforms of any order, and the sizes of their buffers.
#include "buffer_size.h"
#include "entry.h"

#define ORDER_CASE(order, suffix)                                                                            \
    case order:                                                                                              \
        return ZRF_BODY(zrfgWHT_##order##_##suffix)(src, dst, flag, buffer);

#define DECLARE_ORDER(order, suffix, Element)                                                                \
    Status ZRF_CALL ZRF_BODY(zrfgWHT_##order##_##suffix)(const Element *src, Element *dst, int32_t flag,     \
                                                         uint8_t *buffer);

#define ANY_ORDER(suffix, Element)                                                                           \
    ZRF_FOR_EACH_ORDER(DECLARE_ORDER, suffix, Element)                                                       \
    Status ZRF_CALL ZRF_BODY(zrfgWHT_##suffix)(const Element *src, Element *dst, int32_t order,              \
                                               int32_t flag, uint8_t *buffer) {                              \
        switch (order) { ZRF_FOR_EACH_ORDER(ORDER_CASE, suffix) }                                            \
        return zrfStatusSizeError;                                                                           \
    }                                                                                                        \
    Status ZRF_CALL ZRF_BODY(zrfgWHTGetBufferSize_##suffix)(int32_t order, int32_t * size) {                 \
        if (size == nullptr)                                                                                 \
            return zrfStatusNullPointer;                                                                     \
        if (order < 1 || order > zrfgen::highestOrder)                                                       \
            return zrfStatusSizeError;                                                                       \
        *size = zrfgen::whtBufferSize(order, sizeof(Element));                                               \
        return zrfStatusOk;                                                                                  \
    }

extern "C" {

ANY_ORDER(32f, Float32)
ANY_ORDER(64f, Float64)
}
