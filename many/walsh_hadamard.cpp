// The entries of the Walsh-Hadamard transform.
#include "transform_all.h"
#include "wht/buffer_size.h"

#include <zrfgen/many.h>

#include <algorithm>
#include <iterator>

namespace zrfgen {

namespace {

template <class Element>
Status runWalshHadamard(const ManyKernel *const *kernels,
                        Status(ZRF_CALL *single)(const Element *, Element *, std::int32_t, std::int32_t,
                                                 std::uint8_t *),
                        const Element *src, Element *dst, std::int32_t order, std::int32_t flag,
                        std::ptrdiff_t count, Strides from, Strides to, std::uint8_t *buffer) {
    if (order < 1 || order > highestOrder || count < 0)
        return zrfStatusSizeError;
    if (count == 0)
        return zrfStatusOk;
    if (src == nullptr || dst == nullptr || (buffer == nullptr && order > highestOrderWithoutBuffer))
        return zrfStatusNullPointer;
    // Above, the flag is all that a kernel is asked for.
    const ManyKernel &kernel = *kernels[std::min(order, highestOrderAcross) - 1];
    const Gain gain = order <= highestOrderAcross ? kernel.gain : Gain::None;
    const Contents elements{1 << order};
    alignas(16) unsigned char row[sizeof(Element) << highestOrderWithoutBuffer];
    unsigned char *spare =
        order > highestOrderWithoutBuffer ? buffer + whtBufferSize(order, sizeof(Element)) : row;
    return transformAll<Element>(
        {src, from, elements, dst, to, elements, count}, kernel, gain, KernelDirection::Both, flag, spare,
        [=](const Element *row, Element *result) { single(row, result, order, flag, buffer); });
}

template <class Element> Status bufferSize(std::int32_t order, std::int32_t *size) {
    if (size == nullptr)
        return zrfStatusNullPointer;
    if (order < 1 || order > highestOrder)
        return zrfStatusSizeError;
    *size = order <= highestOrderWithoutBuffer
                ? 0
                : whtBufferSize(order, sizeof(Element)) + (static_cast<int>(sizeof(Element)) << order);
    return zrfStatusOk;
}

} // namespace

#define FOR_EACH_ORDER_OF_BLOCKS(entry, suffix)                                                              \
    entry(1, suffix) entry(2, suffix) entry(3, suffix) entry(4, suffix) entry(5, suffix) entry(6, suffix)
#define DECLARE_KERNEL(order, suffix) extern const ManyKernel many_WHT_##order##_##suffix;
#define ADDRESS_OF_KERNEL(order, suffix) &many_WHT_##order##_##suffix,

#define ZRF_WHT_FAMILY(suffix, Element)                                                                      \
    FOR_EACH_ORDER_OF_BLOCKS(DECLARE_KERNEL, suffix)                                                         \
    static constexpr const ManyKernel *kernels_##suffix[] = {                                                \
        FOR_EACH_ORDER_OF_BLOCKS(ADDRESS_OF_KERNEL, suffix)};                                                \
    static_assert(std::size(kernels_##suffix) == highestOrderAcross);                                        \
    extern "C" [[gnu::visibility("default")]] Status ZRF_CALL zrfmWHT_##suffix(                              \
        const Element *src, Element *dst, std::int32_t order, std::int32_t flag, std::ptrdiff_t count,       \
        std::ptrdiff_t srcStep, std::ptrdiff_t srcDistance, std::ptrdiff_t dstStep,                          \
        std::ptrdiff_t dstDistance, std::uint8_t *buffer) noexcept {                                         \
        return runWalshHadamard(kernels_##suffix, zrfgWHT_##suffix, src, dst, order, flag, count,            \
                                {srcStep, srcDistance}, {dstStep, dstDistance}, buffer);                     \
    }                                                                                                        \
    extern "C" [[gnu::visibility("default")]] Status ZRF_CALL zrfmWHTGetBufferSize_##suffix(                 \
        std::int32_t order, std::int32_t *size) noexcept {                                                   \
        return bufferSize<Element>(order, size);                                                             \
    }
#define ZRF_SIZED_FAMILY(family, suffix, Element)
#define ZRF_DCT4_FAMILY(suffix, Element)
#define ZRF_VERSION_QUERY(name)
#include <zrfgen/families.inc>

} // namespace zrfgen
