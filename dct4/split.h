// How a length is split, and which kernels there are for the pieces.
#pragma once

#include "tables.h"

#include <zrfgen/transforms.h>

#include <algorithm>
#include <iterator>
#include <optional>

namespace zrfgen {

// The sizes of each stage's kernels. The kind of a size is its place in the list, counted from 1.
constexpr std::int32_t directLengths[] = {2, 4, 8, 16, 32};
constexpr std::int32_t inputLengths[] = {2, 4, 8, 16, 32, 64};
constexpr std::int32_t combineRadixes[] = {2, 4, 8, 16, 32};
constexpr std::int32_t outputRadixes[] = {1, 2, 4, 8, 16, 32}; // kernels for multiples of the lanes only

// One above the last kind if the size is not in the list.
template <std::size_t count>
constexpr std::int32_t kindOf(std::int32_t size, const std::int32_t (&sizes)[count]) {
    return static_cast<std::int32_t>(std::find(sizes, sizes + count, size) - sizes) + 1;
}

// Such kinds: of plans in two stages, and of input transforms that are split.
constexpr std::int32_t twoStageKind = std::size(directLengths) + 1, splitKind = std::size(inputLengths) + 1;

// Stores the largest radix r that divides the value r M and suits it, or returns zrfStatusSizeError if there
// is none, and leaves *radixOut as it was. A radix suits if transforms of 2 M terms, those of the input
// stage, are no shorter than the radix, which balances the stages, and if M fills the widest vector that the
// radix fills.
constexpr Status choosePlanRadix(std::int32_t *radixOut, std::int32_t value) {
    Status status = zrfStatusSizeError;
    for (const std::int32_t radix : combineRadixes) {
        const std::int32_t leastM = std::max(radix / 2, std::min(radix, laneCount<Float32>));
        if (value >= radix * leastM && value % radix == 0) {
            *radixOut = radix;
            status = zrfStatusOk;
        }
    }
    return status;
}

// A transform as `radix` ones of partLength terms: a plan's input transforms, or the leaves of a level.
struct Split {
    std::int32_t radix, partLength, halfLength; // halfLength is half of partLength
};

// None if there is no radix. Remainders are dropped: one above a power of two is split like the power.
constexpr std::optional<Split> splitOf(std::int32_t length) {
    std::int32_t radix = 0;
    if (choosePlanRadix(&radix, length / 2) != zrfStatusOk)
        return {};
    return Split{radix, length / radix, length / (2 * radix)};
}

} // namespace zrfgen
