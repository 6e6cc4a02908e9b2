// A kernel of many transforms.
#pragma once

#include "arrays.h"
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

struct ManyKernel {
    // Transforms as many as it can at once, and tells how many these were: all but a few that are left over.
    using Run = std::ptrdiff_t(const ManyKernel &kernel, const void *factor, Sources from, Contents source,
                               Destinations to, Contents destination, std::ptrdiff_t count);
    Run *run;
    void (*onBlock)(const unsigned char *src, unsigned char *dst,
                    const void *factor); // if it is one on blocks
    KernelFactors factors;
    Gain gain;
};

} // namespace zrfgen
