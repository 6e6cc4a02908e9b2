// The head of every DFT and Hartley kernel: null pointers, flag, and the scale factor it stands for.
//
// A Kernel is a generated type with the exact values rounded once of
//     one, byN, bySqrtN     1, 1/N and 1/sqrt(N), each a ScaleFactor
// and a function `transform` over the arrays and a factor.
#pragma once

#include "entry.h"
#include "target.h"

namespace zrfgen {

enum class KernelDirection { Forward, Inverse, Both };

// A whole vector of one factor.
template <class Element> struct alignas(vectorBytes) ScaleFactor {
    Element lanes[vectorBytes / sizeof(Element)];

    constexpr explicit ScaleFactor(Element factor) : lanes{} {
        for (Element &lane : lanes)
            lane = factor;
    }
};

// The arguments checked, then transform(src, dst, factor) over the bytes of the arrays. Not a pointer to a
// function: compilers inline through that only when they optimise well.
template <class Kernel, KernelDirection direction, class Transform>
inline Status checkedCall(const void *src, void *dst, std::int32_t flag, Transform transform) {
    if (src == nullptr || dst == nullptr)
        return zrfStatusNullPointer;
    const auto *factor = &Kernel::one;
    if (flag == zrfScaleNone)
        factor = &Kernel::one;
    else if (flag == zrfScaleBySqrtN)
        factor = &Kernel::bySqrtN;
    else if (flag == zrfScaleFwdByN)
        factor = direction == KernelDirection::Inverse ? &Kernel::one : &Kernel::byN;
    else if (flag == zrfScaleInvByN)
        factor = direction == KernelDirection::Forward ? &Kernel::one : &Kernel::byN;
    else
        return zrfStatusFlagError;
    transform(static_cast<const unsigned char *>(src), static_cast<unsigned char *>(dst), factor->lanes);
    return zrfStatusOk;
}

} // namespace zrfgen
