// The head of every DFT and Hartley kernel: alignment, null pointers, flag, and the scale factor it stands
// for.
//
// A Kernel is a generated type with
//     one, byN, bySqrtN     1, 1/N and 1/sqrt(N), the exact values rounded once, each twice over in a row
//     hasTwoPaths           whether alignment makes a difference to its text
//     transform<direction, access>(src, dst, factor)
#pragma once

#include "entry.h"
#include "vectors.h"

namespace zrfgen {

enum class Direction { Forward, Inverse };

template <class Kernel, Direction direction, Access access>
inline Status checkAndTransform(const void *src, void *dst, std::int32_t flag) {
    if (src == nullptr || dst == nullptr)
        return zrfStatusNullPointer;
    constexpr bool isForward = direction == Direction::Forward;
    const auto *factor = Kernel::one;
    if (flag == zrfScaleNone)
        factor = Kernel::one;
    else if (flag == zrfScaleBySqrtN)
        factor = Kernel::bySqrtN;
    else if (flag == zrfScaleFwdByN)
        factor = isForward ? Kernel::byN : Kernel::one;
    else if (flag == zrfScaleInvByN)
        factor = isForward ? Kernel::one : Kernel::byN;
    else
        return zrfStatusFlagError;
    Kernel::template transform<direction, access>(static_cast<const unsigned char *>(src),
                                                  static_cast<unsigned char *>(dst), factor);
    return zrfStatusOk;
}

// A routine of its own, so that the aligned path stays compact.
template <class Kernel, Direction direction>
[[gnu::noinline]] Status unalignedPath(const void *src, void *dst, std::int32_t flag) {
    return checkAndTransform<Kernel, direction, Access::Unaligned>(src, dst, flag);
}

template <class Kernel, Direction direction>
inline Status runKernel(const void *src, void *dst, std::int32_t flag) {
    if constexpr (Kernel::hasTwoPaths)
        if (((reinterpret_cast<std::uintptr_t>(src) | reinterpret_cast<std::uintptr_t>(dst)) & 15) != 0)
            return unalignedPath<Kernel, direction>(src, dst, flag);
    constexpr Access access = Kernel::hasTwoPaths ? Access::Aligned : Access::Unaligned;
    return checkAndTransform<Kernel, direction, access>(src, dst, flag);
}

} // namespace zrfgen
