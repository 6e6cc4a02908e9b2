// Where the entries of a real sequence's spectrum stand in memory: all that the three layouts differ in.
#pragma once

#include "elements.h"

namespace zrfgen {

enum class SpectrumLayout { CCS, Pack, Perm };

// Kernels number the entries of the spectrum of n real elements as R[0], R[1], I[1], R[2] ... with R[n/2]
// last where n is even. This is the array element of entry i.
template <SpectrumLayout layout> constexpr int spectrumElement(int n, int i) {
    if (layout == SpectrumLayout::CCS)
        return i == 0 ? 0 : i + 1; // after the imaginary part of X[0]
    if (layout == SpectrumLayout::Perm && n % 2 == 0 && i > 0)
        return i == n - 1 ? 1 : i + 1; // R[n/2] comes second
    return i;
}

// The imaginary parts of X[0] and X[n/2], which only one layout holds.
template <SpectrumLayout layout, class Element>
inline void storeSpectrumZeros(unsigned char *spectrum, int n) {
    if constexpr (layout == SpectrumLayout::CCS) {
        storeElement<Element>(spectrum + sizeof(Element), 0);
        if (n % 2 == 0)
            storeElement<Element>(spectrum + (n + 1) * sizeof(Element), 0);
    }
}

} // namespace zrfgen
