// The Walsh-Hadamard kernels of orders 8 to 13.
#include "passes.h"

#include <zrfcore/zrfcore.h>

namespace zrfgen {

namespace {

template <class Element, int order> struct LargeOrder : WhtFactors<Element, order> {
    static constexpr bool hasTwoPaths = true;

    template <KernelDirection, Access access> [[gnu::always_inline]] static void
    transform(const unsigned char *src, unsigned char *dst, const Element *factor, std::uint8_t *buffer) {
        // A failed allocation is not looked for: the transform has no status for it.
        std::uint8_t *const scratch =
            buffer == nullptr ? static_cast<std::uint8_t *>(zrfMalloc(whtBufferSize(order, sizeof(Element))))
                              : buffer;
        runPasses<Element, order, access>(src, dst, factor, scratch);
        if (buffer == nullptr)
            zrfFree(scratch);
    }
};

} // namespace

#define LARGE_ORDER(order, suffix, Element)                                                                  \
    Status ZRF_CALL ZRF_BODY(zrfgWHT_##order##_##suffix)(const Element *src, Element *dst, int32_t flag,     \
                                                         uint8_t *buffer) {                                  \
        return runVectorKernel<LargeOrder<Element, order>, KernelDirection::Both>(src, dst, flag, buffer);   \
    }

extern "C" {

ZRF_FOR_EACH_ORDER_WITH_BUFFER(LARGE_ORDER, 32f, Float32)
ZRF_FOR_EACH_ORDER_WITH_BUFFER(LARGE_ORDER, 64f, Float64)
}

} // namespace zrfgen
