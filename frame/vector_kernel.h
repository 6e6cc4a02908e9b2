// The head of the kernels on vectors: one path for arrays on 16-byte boundaries and one for any others.
//
// Besides its factors, a Kernel has
//     hasTwoPaths           whether alignment makes a difference to its text
//     transform<direction, access>(src, dst, factor)
#pragma once

#include "kernel.h"

namespace zrfgen {

inline bool areAligned(const void *src, const void *dst) {
    return ((reinterpret_cast<std::uintptr_t>(src) | reinterpret_cast<std::uintptr_t>(dst)) & 15) == 0;
}

template <class Kernel, Direction direction, Access access>
inline Status runOnPath(const void *src, void *dst, std::int32_t flag) {
    return checkedCall<Kernel, direction>(
        src, dst, flag, [](auto... arguments) __attribute__((always_inline)) {
            Kernel::template transform<direction, access>(arguments...);
        });
}

// A routine of its own, so that the aligned path stays compact.
template <class Kernel, Direction direction>
[[gnu::noinline]] Status unalignedPath(const void *src, void *dst, std::int32_t flag) {
    return runOnPath<Kernel, direction, Access::Unaligned>(src, dst, flag);
}

template <class Kernel, Direction direction>
inline Status runVectorKernel(const void *src, void *dst, std::int32_t flag) {
    if constexpr (Kernel::hasTwoPaths)
        if (!areAligned(src, dst))
            return unalignedPath<Kernel, direction>(src, dst, flag);
    constexpr Access access = Kernel::hasTwoPaths ? Access::Aligned : Access::Unaligned;
    return runOnPath<Kernel, direction, access>(src, dst, flag);
}

} // namespace zrfgen
