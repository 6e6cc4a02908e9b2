// The layout of a plan's tables, on which those that charge, fill and read them agree.
#pragma once

#include <cstdint>

namespace zrfgen {

// The sizes of plans are published. So plans are laid out for vectors of 16 bytes on every machine, whatever
// vectors it has.
constexpr std::int32_t planVectorBytes = 16;

template <class Element> constexpr std::int32_t laneCount = planVectorBytes / sizeof(Element);

// Tables hold groups: a vector of cosines and a vector of sines.
constexpr std::int32_t groupBytes = 2 * planVectorBytes;

// A group for each of the radix's columns in each block of laneCount rows.
constexpr std::int32_t outputTableBytes(std::int32_t blocks, std::int32_t radix) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(blocks) * groupBytes *
                                     static_cast<std::uint32_t>(radix));
}

// The column that a row of a block is for: pairs of columns that mirror each other, in the order in which the
// kernel of the radix takes them up.
constexpr std::int32_t outputTableColumn(std::int32_t radix, std::int32_t row) {
    const std::int32_t pair = row / 2;
    const std::int32_t column = radix == 32 ? pair / 8 + pair / 2 % 4 * 4 + pair % 2 * 16 : pair;
    return row % 2 == 0 ? column : radix - 1 - column;
}

// A level up to radix 8 is one transform of `outer` terms. Above, transforms of `inner` terms come first and
// four terms are left: the twiddles between the two, the first part of the table, take in the rotations
// inside the whole transform. The second part goes before both.
struct LevelPasses {
    std::int32_t outer, inner;

    // The groups of one s in each part.
    constexpr std::int32_t firstGroups() const { return inner * (outer - 1); }
    constexpr std::int32_t secondGroups() const { return inner - 1; }
};

constexpr LevelPasses levelPasses(std::int32_t radix) {
    const std::int32_t inner = radix <= 8 ? 1 : radix / 4;
    return {radix / inner, inner};
}

constexpr std::int32_t levelTableBytes(std::int32_t halfLength, std::int32_t radix) {
    return outputTableBytes(halfLength, radix - 1);
}

} // namespace zrfgen
