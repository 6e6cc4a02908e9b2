// Kernels on blocks: as many transforms at once as a vector has elements.
//
// A block is a row of vectors on a boundary of vectors. Vector i holds element i of every transform. Spectra
// of real sequences stand as in CCS layout, but the vectors of the two parts that are zero hold anything.
#pragma once

#include "kernel_traits.h"

namespace zrfgen {

struct BlockKernel {
    void (*transform)(const unsigned char *src, unsigned char *dst, const void *factor);
    KernelFactors factors;
    Gain gain;

    template <class Kernel> static constexpr BlockKernel of(Gain gain) {
        return {[](const unsigned char *src, unsigned char *dst, const void *factor) {
                    Kernel::transform(src, dst, static_cast<decltype(&Kernel::one.lanes[0])>(factor));
                },
                KernelFactors::of<Kernel>(), gain};
    }
};

// The vectors of the largest block, a spectrum of 64 elements in CCS layout.
inline constexpr int mostVectors = zrfLongestLength + 2;

} // namespace zrfgen
