// The head of the kernels on vectors: one path for arrays on the target's boundaries and one for any others.
//
// Besides its factors, a Kernel has
//     hasTwoPaths           whether alignment makes a difference to its text
//     transform<direction, access>(src, dst, factor, more...)
#pragma once

#include "kernel.h"

namespace zrfgen {

inline bool areAligned(const void *src, const void *dst) {
    return (reinterpret_cast<std::uintptr_t>(src) | reinterpret_cast<std::uintptr_t>(dst)) % vectorBytes == 0;
}

template <class Kernel, KernelDirection direction, Access access, class... More>
inline Status runOnPath(const void *src, void *dst, std::int32_t flag, More... more) {
    return checkedCall<Kernel, direction>(
        src, dst, flag, [more...](auto... arguments) __attribute__((always_inline)) {
            Kernel::template transform<direction, access>(arguments..., more...);
        });
}

// Whether routines keep vector registers for their callers. An export that saved them before it looks at the
// arrays would give them back for the unaligned path, which saves them again: there, the aligned path is
// apart as well.
#ifdef _WIN64
constexpr bool keepsVectorRegisters = true;
#else
constexpr bool keepsVectorRegisters = false;
#endif

// A routine of its own, so that the aligned path stays compact. An export's convention and arguments let the
// export jump to it with no frame of its own left. `used` keeps the compiler from passing them otherwise.
template <class Kernel, KernelDirection direction, class... More>
[[gnu::noinline, gnu::used]] Status ZRF_CALL unalignedPath(const void *src, void *dst, std::int32_t flag,
                                                           More... more) {
    return runOnPath<Kernel, direction, Access::Unaligned>(src, dst, flag, more...);
}

template <class Kernel, KernelDirection direction, class... More>
[[gnu::noinline, gnu::used]] Status ZRF_CALL alignedPath(const void *src, void *dst, std::int32_t flag,
                                                         More... more) {
    return runOnPath<Kernel, direction, Access::Aligned>(src, dst, flag, more...);
}

template <class Kernel, KernelDirection direction, class... More>
inline Status runVectorKernel(const void *src, void *dst, std::int32_t flag, More... more) {
    if constexpr (Kernel::hasTwoPaths) {
        if (!areAligned(src, dst))
            return unalignedPath<Kernel, direction>(src, dst, flag, more...);
        if constexpr (keepsVectorRegisters)
            return alignedPath<Kernel, direction>(src, dst, flag, more...);
    }
    constexpr Access access = Kernel::hasTwoPaths ? Access::Aligned : Access::Unaligned;
    return runOnPath<Kernel, direction, access>(src, dst, flag, more...);
}

} // namespace zrfgen
