// Which lengths have a plan, how a length is split, and how many bytes a plan takes.
#pragma once

#include "records.h"

namespace zrfgen {

// Kinds of length: 1 to 6 for 2, 4, 8, 16, 32 and 64, the lengths of the direct input transforms, and
// splitKind for any other. At the root, 64 and any other length are split into two stages.
constexpr std::int32_t twoStageKind = 6, splitKind = 7;

constexpr std::int32_t inputKind(std::int32_t length) {
    for (std::int32_t kind = 1; kind < splitKind; ++kind)
        if (length == 1 << kind)
            return kind;
    return splitKind;
}

constexpr std::int32_t rootKind(std::int32_t length) {
    return inputKind(length) < twoStageKind ? inputKind(length) : twoStageKind;
}

// Stores the largest radix that divides the value, 2 to 32, among those that suit its magnitude. Returns
// zrfStatusSizeError if there is none, and leaves *radixOut as it was.
Status choosePlanRadix(std::int32_t *radixOut, std::int32_t value);

// Tables hold groups of 32 bytes: a vector of cosines and a vector of sines.
constexpr std::int32_t outputTableBytes(std::int32_t blocks, std::int32_t radix) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(blocks) * 32 *
                                     static_cast<std::uint32_t>(radix));
}

constexpr std::int32_t levelTableBytes(std::int32_t halfLength, std::int32_t radix) {
    return outputTableBytes(halfLength, radix - 1);
}

// The bytes that a plan of the length takes at most, in a block at any address, or zrfStatusSizeError if the
// length has no plan. The sums wrap around: above longestPlan the result may be positive and too small.
template <class Element> std::int32_t planBytes(std::int32_t length);

template <class Element> constexpr std::int32_t longestPlan = (1 << 28) / sizeof(Element) + 1;

} // namespace zrfgen
