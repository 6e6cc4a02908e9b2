// Kernels that read numbers where they lie: as many transforms at once as a vector has numbers.
#pragma once

#include "kernel.h"

namespace zrfgen {

// The numbers of a transform are known to lie side by side, on both sides, or may lie anywhere.
template <class Kernel, bool isOnRows> [[gnu::noinline]] std::ptrdiff_t
runStrided(const void *factor, Sources from, Destinations to, std::ptrdiff_t count) {
    using Factor = decltype(&Kernel::one.lanes[0]);
    constexpr std::ptrdiff_t numberBytes = 2 * sizeof(Kernel::one.lanes[0]),
                             transforms = vectorBytes / numberBytes;
    std::ptrdiff_t t = 0;
    for (; count - t >= transforms; t += transforms)
        Kernel::transform(from.at(t, 0), from.distance, isOnRows ? numberBytes : from.step, to.at(t, 0),
                          to.distance, isOnRows ? numberBytes : to.step, static_cast<Factor>(factor));
    return t;
}

template <class Kernel> constexpr ManyKernel stridedKernel(Gain gain) {
    return {[](const ManyKernel &, const void *factor, Sources from, Contents, Destinations to, Contents,
               std::ptrdiff_t count) {
                constexpr std::ptrdiff_t numberBytes = 2 * sizeof(Kernel::one.lanes[0]);
                return from.step == numberBytes && to.step == numberBytes
                           ? runStrided<Kernel, true>(factor, from, to, count)
                           : runStrided<Kernel, false>(factor, from, to, count);
            },
            nullptr, KernelFactors::of<Kernel>(), gain};
}

} // namespace zrfgen
