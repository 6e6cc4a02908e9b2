// The order of the rows in the table of the output stage.
#pragma once

#include <cstdint>

namespace zrfgen {

// The column that a row of a block is for: pairs of columns that mirror each other, in the order in which the
// kernel of the radix takes them up.
constexpr std::int32_t outputTableColumn(std::int32_t radix, std::int32_t row) {
    const std::int32_t pair = row / 2;
    const std::int32_t column = radix == 32 ? pair / 8 + pair / 2 % 4 * 4 + pair % 2 * 16 : pair;
    return row % 2 == 0 ? column : radix - 1 - column;
}

} // namespace zrfgen
