// Kernels on blocks: as many transforms at once as a vector has numbers.
//
// A block is a row of vectors on a boundary of vectors. Vector i holds number i of every transform. Spectra
// of real sequences stand as in CCS layout, but the vectors of the two parts that are zero hold anything.
#pragma once

#include "kernel.h"

namespace zrfgen {

// The vectors of the largest block, a spectrum of 64 elements in CCS layout.
inline constexpr int mostVectors = zrfLongestLength + 2;

// Brings numbers of so many bytes into blocks, through the kernel and out again.
template <int numberBytes> ManyKernel::Run runBlocks;

template <class Kernel, int numberBytes> constexpr ManyKernel blockKernel(Gain gain) {
    return {runBlocks<numberBytes>,
            [](const unsigned char *src, unsigned char *dst, const void *factor) {
                Kernel::transform(src, dst, static_cast<decltype(&Kernel::one.lanes[0])>(factor));
            },
            KernelFactors::of<Kernel>(), gain};
}

} // namespace zrfgen
