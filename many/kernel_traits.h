// What is to know of a kernel of many transforms before it is called.
#pragma once

#include "gain.h"
#include "wht/factors.h"

#include <cstddef>

namespace zrfgen {

// Vectors of the factors, filled up.
struct KernelFactors {
    const void *one, *byN, *bySqrtN;

    template <class Kernel> static constexpr KernelFactors of() {
        return {&Kernel::one, &Kernel::byN, &Kernel::bySqrtN};
    }

    // Null if the flag is none.
    const void *factor(KernelDirection direction, std::int32_t flag) const {
        switch (flag) {
        case zrfScaleNone:
            return one;
        case zrfScaleBySqrtN:
            return bySqrtN;
        case zrfScaleFwdByN:
            return direction == KernelDirection::Inverse ? one : byN;
        case zrfScaleInvByN:
            return direction == KernelDirection::Forward ? one : byN;
        default:
            return nullptr;
        }
    }
};

} // namespace zrfgen
