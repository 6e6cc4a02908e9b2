// The passes over the data of Walsh-Hadamard orders 8 to 13, each with the stages of some index bits in
// ascending order, so that every sum is that of the plain butterfly graph. Between the passes the data stands
// in the buffer, every element at its own index.
#pragma once

#include "buffer_size.h"
#include "factors.h"

namespace zrfgen {

// The pass bodies that kernelgen writes, each straight-line text.

// Reads the elements of a block, does all stages and writes them.
template <class Element, int elements> struct Block;
// Reads one vector of each row, `stride` elements apart, does the stages between them and writes them at the
// same distance; the last pass multiplies by the scale factor.
template <class Element, int rows, bool isLast> struct Rows;

#include "wht_block_128_64f.inc"
#include "wht_block_32_32f.inc"
#include "wht_block_32_64f.inc"
#include "wht_block_64_32f.inc"
#include "wht_rows_16_last_32f.inc"
#include "wht_rows_16_last_64f.inc"
#include "wht_rows_32_last_32f.inc"
#include "wht_rows_8_32f.inc"
#include "wht_rows_8_64f.inc"
#include "wht_rows_8_last_32f.inc"
#include "wht_rows_8_last_64f.inc"

template <class Element> inline constexpr int lanes = 16 / sizeof(Element);

// All columns of rows that are `stride` elements long.
template <class Element, int rows, int stride, bool isLast, Access access> [[gnu::always_inline]] inline void
runRows(const unsigned char *src, unsigned char *dst, const Element *factor) {
    for (int column = 0; column < stride; column += lanes<Element>) {
        const std::size_t offset = column * sizeof(Element);
        Rows<Element, rows, isLast>::template run<stride, access>(src + offset, dst + offset, factor);
    }
}

template <class Element, int block, Access access>
[[gnu::always_inline]] inline void runBlocks(const unsigned char *src, unsigned char *dst, int elements) {
    for (int first = 0; first < elements; first += block) {
        const std::size_t offset = first * sizeof(Element);
        Block<Element, block>::template run<access>(src + offset, dst + offset, nullptr);
    }
}

template <class Element, int order, Access access> [[gnu::always_inline]] inline void
runPasses(const unsigned char *src, unsigned char *dst, const Element *factor, unsigned char *buffer) {
    constexpr int length = 1 << order;
    constexpr WhtPasses passes = whtPasses(order, sizeof(Element));
    alignas(16) const Element scale[] = {*factor, *factor}; // which no store can change
    if constexpr (passes.chunk == 0) {
        runBlocks<Element, passes.block, access>(src, buffer, length);
        runRows<Element, length / passes.block, passes.block, true, access>(buffer, dst, scale);
    } else {
        unsigned char *const staging = buffer + length * sizeof(Element);
        for (int first = 0; first < length; first += passes.chunk) {
            const std::size_t offset = first * sizeof(Element);
            runBlocks<Element, passes.block, access>(src + offset, staging, passes.chunk);
            runRows<Element, passes.chunk / passes.block, passes.block, false, Access::Aligned>(
                staging, buffer + offset, scale);
        }
        runRows<Element, length / passes.chunk, passes.chunk, true, access>(buffer, dst, scale);
    }
}

} // namespace zrfgen
