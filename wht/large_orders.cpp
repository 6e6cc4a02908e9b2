// The Walsh-Hadamard kernels of orders 8 to 13.
#include "passes.h"

#include <zrfcore/zrfcore.h>

namespace zrfgen {

namespace {

template <class Element, int order, Access access> [[gnu::always_inline]] inline Status
runLargeOnPath(const void *src, void *dst, std::int32_t flag, std::uint8_t *buffer) {
    return checkedCall<WhtFactors<Element, order>, Direction::Both>(
        src, dst, flag, [&](const unsigned char *from, unsigned char *to, const Element *factor) {
            const bool isOwn = buffer == nullptr;
            // A failed allocation is not looked for: the transform has no status for it.
            std::uint8_t *const scratch =
                isOwn ? static_cast<std::uint8_t *>(zrfMalloc(whtBufferSize(order, sizeof(Element))))
                      : buffer;
            runPasses<Element, order, access>(from, to, factor, scratch);
            if (isOwn)
                zrfFree(scratch);
        });
}

template <class Element, int order> [[gnu::noinline]] Status
unalignedLargeOrder(const void *src, void *dst, std::int32_t flag, std::uint8_t *buffer) {
    return runLargeOnPath<Element, order, Access::Unaligned>(src, dst, flag, buffer);
}

template <class Element, int order>
inline Status runLargeOrder(const void *src, void *dst, std::int32_t flag, std::uint8_t *buffer) {
    if (!areAligned(src, dst))
        return unalignedLargeOrder<Element, order>(src, dst, flag, buffer);
    return runLargeOnPath<Element, order, Access::Aligned>(src, dst, flag, buffer);
}

} // namespace

#define LARGE_ORDER(order, suffix, Element)                                                                  \
    Status ZRF_CALL ZRF_BODY(zrfgWHT_##order##_##suffix)(const Element *src, Element *dst, int32_t flag,     \
                                                         uint8_t *buffer) {                                  \
        return runLargeOrder<Element, order>(src, dst, flag, buffer);                                        \
    }

#define LARGE_ORDERS(suffix, Element)                                                                        \
    LARGE_ORDER(8, suffix, Element)                                                                          \
    LARGE_ORDER(9, suffix, Element)                                                                          \
    LARGE_ORDER(10, suffix, Element)                                                                         \
    LARGE_ORDER(11, suffix, Element)                                                                         \
    LARGE_ORDER(12, suffix, Element)                                                                         \
    LARGE_ORDER(13, suffix, Element)

extern "C" {

LARGE_ORDERS(32f, Float32)
LARGE_ORDERS(64f, Float64)
}

} // namespace zrfgen
