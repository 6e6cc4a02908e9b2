// Every export of libzrfmany that transforms, with the any-size entry whose work it does.
#pragma once

#include "exports.h"

#include <zrfgen/many.h>

using OfLength = Status(ZRF_CALL *)(const void *, void *, int32_t N, int32_t flag, ptrdiff_t count,
                                    ptrdiff_t srcStep, ptrdiff_t srcDistance, ptrdiff_t dstStep,
                                    ptrdiff_t dstDistance);
using OfOrder = Status(ZRF_CALL *)(const void *, void *, int32_t order, int32_t flag, ptrdiff_t count,
                                   ptrdiff_t srcStep, ptrdiff_t srcDistance, ptrdiff_t dstStep,
                                   ptrdiff_t dstDistance, uint8_t *buffer);

// The entry for many transforms of a family and element type.
struct Many {
    struct Strides {
        ptrdiff_t step, distance; // in elements
    };

    const Export &single; // the any-size entry for one transform
    void (*address)();

    Status call(const void *src, void *dst, int32_t n, int32_t flag, ptrdiff_t count, Strides from,
                Strides to, uint8_t *buffer = nullptr) const {
        return single.isWht()
                   ? reinterpret_cast<OfOrder>(address)(src, dst, n, flag, count, from.step, from.distance,
                                                        to.step, to.distance, buffer)
                   : reinterpret_cast<OfLength>(address)(src, dst, n, flag, count, from.step, from.distance,
                                                         to.step, to.distance);
    }
    std::size_t parts() const { return single.isComplex() ? 2 : 1; }
    std::size_t elementBytes() const { return parts() * single.numberBytes(); }
    ptrdiff_t sources(int n) const { return static_cast<ptrdiff_t>(single.srcCount(n) / parts()); }
    ptrdiff_t results(int n) const { return static_cast<ptrdiff_t>(single.dstCount(n) / parts()); }
};

inline const std::vector<Many> &allOfMany() {
    static const std::vector<Many> all = {
#define ZRF_SIZED_FAMILY(family, suffix, Element)                                                            \
    {exportNamed("zrfg" #family "_" #suffix), reinterpret_cast<void (*)()>(zrfm##family##_##suffix)},
#define ZRF_WHT_FAMILY(suffix, Element)                                                                      \
    {exportNamed("zrfgWHT_" #suffix), reinterpret_cast<void (*)()>(zrfmWHT_##suffix)},
#define ZRF_DCT4_FAMILY(suffix, Element)
#define ZRF_VERSION_QUERY(name)
#include <zrfgen/families.inc>
    };
    return all;
}
