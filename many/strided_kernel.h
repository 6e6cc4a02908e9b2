// Kernels that read complex numbers where they lie: as many transforms at once as a vector has numbers.
#pragma once

#include "kernel_traits.h"

namespace zrfgen {

struct StridedKernel {
    // Transforms `vectors` times as many as a vector has numbers. Number e of transform t is at src + t *
    // srcDistance + e * srcStep, in bytes.
    using Run = void(const unsigned char *src, std::ptrdiff_t srcDistance, std::ptrdiff_t srcStep,
                     unsigned char *dst, std::ptrdiff_t dstDistance, std::ptrdiff_t dstStep,
                     const void *factor, std::ptrdiff_t vectors);
    Run *onRows; // with the numbers of a transform side by side on both sides
    Run *anywhere;
    KernelFactors factors;
    Gain gain;

    template <class Kernel> static constexpr StridedKernel of(Gain gain) {
        return {run<Kernel, true>, run<Kernel, false>, KernelFactors::of<Kernel>(), gain};
    }

private:
    template <class Kernel, bool isOnRows>
    static void run(const unsigned char *src, std::ptrdiff_t srcDistance, std::ptrdiff_t srcStep,
                    unsigned char *dst, std::ptrdiff_t dstDistance, std::ptrdiff_t dstStep,
                    const void *factor, std::ptrdiff_t vectors) {
        using Factor = decltype(&Kernel::one.lanes[0]);
        constexpr std::ptrdiff_t numberBytes = 2 * sizeof(Kernel::one.lanes[0]),
                                 numbers = vectorBytes / numberBytes;
        for (; vectors > 0; --vectors) {
            Kernel::transform(src, srcDistance, isOnRows ? numberBytes : srcStep, dst, dstDistance,
                              isOnRows ? numberBytes : dstStep, static_cast<Factor>(factor));
            src += numbers * srcDistance;
            dst += numbers * dstDistance;
        }
    }
};

} // namespace zrfgen
