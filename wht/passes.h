// The passes over the data of Walsh-Hadamard orders 8 to 13, each with the stages of some index bits in
// ascending order, so that every sum is that of the plain butterfly graph. Between the passes the data stands
// in the buffer, every element at its own index.
#pragma once

#include "buffer_size.h"
#include "factors.h"

namespace zrfgen {

// The pass bodies that kernelgen writes, each straight-line text.

// Reads the elements of a block, does all stages and writes them.
template <class Element, int elements> struct BlockStages;
// Reads one vector of each row, `stride` elements apart, does the stages between them and writes them at the
// same distance; the last pass multiplies by the scale factor.
template <class Element, int rows, bool isLast> struct RowStages;

#include "wht_passes.inc"

template <class Element> inline constexpr int lanes = vectorBytes / sizeof(Element);

// All columns of rows that are `stride` elements long.
template <class Element, int rows, int stride, bool isLast, Access access> [[gnu::always_inline]] inline void
runRows(const unsigned char *src, unsigned char *dst, const Element *factor) {
    for (int column = 0; column < stride; column += lanes<Element>) {
        const std::size_t offset = column * sizeof(Element);
        RowStages<Element, rows, isLast>::template run<stride, access>(src + offset, dst + offset, factor);
    }
}

template <class Element, int block, Access access>
[[gnu::always_inline]] inline void runBlocks(const unsigned char *src, unsigned char *dst, int elements) {
    for (int first = 0; first < elements; first += block) {
        const std::size_t offset = first * sizeof(Element);
        BlockStages<Element, block>::template run<access>(src + offset, dst + offset, nullptr);
    }
}

template <class Element, int order, Access access> [[gnu::always_inline]] inline void
runPasses(const unsigned char *src, unsigned char *dst, const Element *factor, unsigned char *buffer) {
    constexpr int length = 1 << order;
    constexpr WhtPasses passes = whtPasses(order, sizeof(Element));
    const ScaleFactor<Element> scale(*factor); // which no store can change
    if constexpr (passes.chunk == 0) {
        runBlocks<Element, passes.block, access>(src, buffer, length);
    } else {
        unsigned char *const staging = buffer + length * sizeof(Element);
        for (int first = 0; first < length; first += passes.chunk) {
            const std::size_t offset = first * sizeof(Element);
            runBlocks<Element, passes.block, access>(src + offset, staging, passes.chunk);
            runRows<Element, passes.chunk / passes.block, passes.block, false, Access::Aligned>(
                staging, buffer + offset, scale.lanes);
        }
    }
    runRows<Element, passes.lastRows(order), passes.lastRowElements(), true, access>(buffer, dst,
                                                                                     scale.lanes);
}

} // namespace zrfgen
