// What the orders from 8 up need as scratch memory.
#pragma once

#include <zrfgen/transforms.h>

#include <cstdint>

namespace zrfgen {

inline constexpr int highestOrderWithoutBuffer = 7, highestOrder = zrfHighestOrder;

// How an order's stages are spread over passes. A pass works on elements that are near one another in memory.
struct WhtPasses {
    int block; // consecutive elements of the first pass
    int chunk; // elements that the first two of three passes take at a time, in the staging area; 0: two
               // passes

    // The last pass works on rows as long as what the passes before it took at a time.
    constexpr int lastRowElements() const { return chunk != 0 ? chunk : block; }
    constexpr int lastRows(int order) const { return (1 << order) / lastRowElements(); }
};

constexpr WhtPasses whtPasses(int order, int elementBytes) {
    if (elementBytes == 4)
        return order == 8 ? WhtPasses{32, 0} : WhtPasses{64, order < 12 ? 0 : 512};
    if (order == 10)
        return {128, 0};
    if (order == 13)
        return {128, 1024};
    return {32, order < 10 ? 0 : 256};
}

// In bytes: all elements, and behind them the staging area of one chunk.
constexpr std::int32_t whtBufferSize(int order, int elementBytes) {
    if (order <= highestOrderWithoutBuffer)
        return 0;
    return ((1 << order) + whtPasses(order, elementBytes).chunk) * elementBytes;
}

} // namespace zrfgen
