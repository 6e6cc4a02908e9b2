// The exports that make and release plans.
#include "entry.h"
#include "plan.h"
#include "release.h"
#include "size.h"

#include <zrfcore/zrfcore.h>

namespace zrfgen {
namespace {

template <class Element> Status getSize(std::int32_t length, std::int32_t *sizeOut) {
    const std::int32_t bytes = planBytes<Element>(length);
    if (sizeOut == nullptr)
        return zrfStatusNullPointer;
    if (bytes < 0)
        return zrfStatusSizeError;
    *sizeOut = bytes;
    return zrfStatusOk;
}

template <class Element> Status init(Dct4Plan **planOut, std::int32_t length, void *memory) {
    if (planOut == nullptr || memory == nullptr)
        return zrfStatusNullPointer;
    // First of all: for a refused length there is no telling how far the block reaches.
    if (planBytes<Element>(length) < 0 || length > longestPlan<Element>)
        return zrfStatusSizeError;
    *planOut = buildPlan<Element>(memory, length);
    return zrfStatusOk;
}

template <class Element> Status initAlloc(Dct4Plan **planOut, std::int32_t length) {
    if (planOut == nullptr)
        return zrfStatusNullPointer;
    std::int32_t bytes;
    if (const Status status = getSize<Element>(length, &bytes); status != zrfStatusOk)
        return status;
    void *block = zrfMalloc(bytes);
    const Status status = init<Element>(planOut, length, block);
    if (status != zrfStatusOk)
        zrfFree(block);
    return status;
}

template <class Element> Status release(Dct4Plan *plan) {
    if (plan == nullptr)
        return zrfStatusNullPointer;
    if (!isPlanOf<Element>(plan))
        return zrfStatusPlanError;
    PlanArena *block = plan->header.arena;
    releasePlan<Element>(plan);
    zrfFree(block);
    return zrfStatusOk;
}

} // namespace
} // namespace zrfgen

// Callers promise no stack alignment, but the functions that these call may rely on it, those of other
// libraries above all.
#define REALIGNS_STACK __attribute__((force_align_arg_pointer))

#define ZRF_DCT4_ENTRIES(suffix, Element)                                                                    \
    REALIGNS_STACK Status ZRF_CALL ZRF_BODY(zrfgDCT4GetSize_##suffix)(int32_t length, int32_t * sizeOut) {   \
        return zrfgen::getSize<Element>(length, sizeOut);                                                    \
    }                                                                                                        \
    REALIGNS_STACK Status ZRF_CALL ZRF_BODY(zrfgDCT4Init_##suffix)(Dct4Plan * *planOut, int32_t length,      \
                                                                   void *memory) {                           \
        return zrfgen::init<Element>(planOut, length, memory);                                               \
    }                                                                                                        \
    REALIGNS_STACK Status ZRF_CALL ZRF_BODY(zrfgDCT4InitAlloc_##suffix)(Dct4Plan * *planOut,                 \
                                                                        int32_t length) {                    \
        return zrfgen::initAlloc<Element>(planOut, length);                                                  \
    }                                                                                                        \
    REALIGNS_STACK Status ZRF_CALL ZRF_BODY(zrfgDCT4Free_##suffix)(Dct4Plan * plan) {                        \
        return zrfgen::release<Element>(plan);                                                               \
    }

extern "C" {
ZRF_DCT4_ENTRIES(32f, Float32)
ZRF_DCT4_ENTRIES(64f, Float64)
}
