// The head of the real and Hartley kernels. They move elements and vectors as those of unaligned arrays, so
// alignment makes no difference.
//
// Besides its factors, a Kernel has
//     transform<layout>(src, dst, factor)
#pragma once

#include "kernel.h"
#include "spectrum_layout.h"

namespace zrfgen {

// Hartley kernels have no spectrum; they take the layout in which nothing moves.
template <class Kernel, KernelDirection direction, SpectrumLayout layout = SpectrumLayout::Pack>
inline Status runRealKernel(const void *src, void *dst, std::int32_t flag) {
    return checkedCall<Kernel, direction>(
        src, dst, flag, [](auto... arguments) __attribute__((always_inline)) {
            Kernel::template transform<layout>(arguments...);
        });
}

} // namespace zrfgen
