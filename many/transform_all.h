// A call of many transforms whose sizes and pointers are good.
#pragma once

#include "kernel.h"

#include <zrfgen/many.h>

namespace zrfgen {

template <class Element> struct Arrays {
    const Element *src;
    Strides from;
    Contents source;
    Element *dst;
    Strides to;
    Contents destination;
    std::ptrdiff_t count; // of transforms
};

// The transforms by the kernel, as far as it gains, and the rest by `single(src, dst)`, which may need
// `spare` for a row.
template <class Element, class Single>
Status transformAll(const Arrays<Element> &arrays, const ManyKernel &kernel, Gain gain,
                    KernelDirection direction, std::int32_t flag, unsigned char *spare, Single single) {
    const auto &[src, from, source, dst, to, destination, count] = arrays;
    const void *factor = kernel.factors.factor(direction, flag);
    if (factor == nullptr)
        return zrfStatusFlagError;
    if (!haveAddresses(src, from, count, source.elements) ||
        !haveAddresses(dst, to, count, destination.elements))
        return zrfStatusStrideError;
    const Sources sources = latticeOf(src, from);
    const Destinations destinations = latticeOf(dst, to);
    const std::ptrdiff_t done =
        isGained(gain, from.step == 1 && to.step == 1)
            ? kernel.run(kernel, factor, sources, source, destinations, destination, count)
            : 0;
    oneByOne<Element>(sources, source.elements, destinations, destination.elements, done, count, spare,
                      single);
    return zrfStatusOk;
}

} // namespace zrfgen
