// What the recipes settle and the entries go by.
#pragma once

namespace zrfgen {

// What kernels of many transforms gain over single ones.
enum class Gain {
    None,    // so there is no kernel
    OffRows, // where the elements of a transform do not lie side by side
    Everywhere,
};

constexpr bool isGained(Gain gain, bool areRows) {
    return gain == Gain::Everywhere || (gain == Gain::OffRows && !areRows);
}

// The highest order of the Walsh-Hadamard transform that has such a kernel.
inline constexpr int highestOrderAcross = 6;

} // namespace zrfgen
