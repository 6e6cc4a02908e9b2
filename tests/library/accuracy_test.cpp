// The DFTs and Hartley transforms against their definition.
#include "definition.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

template <class Real> void expectAccuracy(const Export &transform) {
    const int n = transform.size;
    std::vector<Real> src(transform.srcCount(n)), dst(transform.dstCount(n));
    const auto compute = [&] {
        ASSERT_EQ(transform.transform(src.data(), dst.data(), n, zrfScaleNone, nullptr), zrfStatusOk);
    };
    // Impulses show each constant of a kernel by itself. Of half a spectrum nearly every number counts twice.
    const double impulseBound =
        (transform.isSingle ? 3.9e-7 : 1.5e-15) * (transform.family.ends_with("ToR") ? 2 : 1);
    EXPECT_LE(impulseError(transform, src.data(), dst.data(), compute), impulseBound);
    // About log2(N) roundings lie on the way to an output, and they add up like independent errors. Each is
    // less than one epsilon even if a stage rounds twice.
    const double randomBound = std::numeric_limits<Real>::epsilon() * std::sqrt(std::log2(n));
    EXPECT_LE(randomErrors(transform, src.data(), dst.data(), 8, {compute})[0], randomBound);
}

TEST(Accuracy, OfImpulsesAndRandomData) {
    for (const Export &transform : allExports()) {
        SCOPED_TRACE(transform.name);
        if (transform.entry == Entry::FixedSize)
            (transform.isSingle ? expectAccuracy<Float32> : expectAccuracy<Float64>)(transform);
    }
}

} // namespace
