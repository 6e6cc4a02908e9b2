// The DFTs and Hartley transforms against their definition, in extended precision.
#include "definition.h"
#include "run.h"

#include <cfloat>
#include <cmath>
#include <numeric>

namespace {

// About log2(N) roundings lie on the way to an output, and they add up like independent errors. Each is less
// than one epsilon even if a stage rounds twice.
double randomErrorBound(const Export &transform) {
    return (transform.isSingle ? FLT_EPSILON : DBL_EPSILON) * std::sqrt(std::log2(transform.size));
}

// Of half a spectrum nearly every number counts twice.
double impulseErrorBound(const Export &transform) {
    return (transform.isSingle ? 3.9e-7 : 1.5e-15) * (transform.family.ends_with("ToR") ? 2 : 1);
}

template <class Check> void forEachTransform(Check check) {
    for (const Export &transform : allExports()) {
        if (transform.entry != Entry::FixedSize)
            continue;
        SCOPED_TRACE(transform.name);
        check(transform, definition<long double>(transform));
    }
}

// Shows each constant of a kernel by itself.
TEST(Accuracy, UnitImpulses) {
    forEachTransform([](const Export &transform, const auto &matrix) {
        for (std::size_t j = 0; j < matrix.size(); ++j) {
            Values impulse(matrix.size());
            impulse[j] = 1;
            const Values output = run(transform, impulse, zrfScaleNone);
            for (std::size_t k = 0; k < output.size(); ++k)
                EXPECT_NEAR(output[k], static_cast<double>(matrix[k][j]), impulseErrorBound(transform))
                    << "impulse at " << j << ", output " << k;
        }
    });
}

// By the relative root-mean-square error.
TEST(Accuracy, RandomData) {
    forEachTransform([](const Export &transform, const auto &matrix) {
        for (unsigned seed = 0; seed < 8; ++seed) {
            const Values input = randomValues(transform, seed), output = run(transform, input, zrfScaleNone);
            long double error = 0, size = 0;
            for (std::size_t k = 0; k < output.size(); ++k) {
                const auto exact = std::inner_product(input.begin(), input.end(), matrix[k].begin(), 0.0L);
                error += (output[k] - exact) * (output[k] - exact);
                size += exact * exact;
            }
            EXPECT_LE(std::sqrt(error / size), randomErrorBound(transform));
        }
    });
}

} // namespace
