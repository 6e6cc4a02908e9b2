// The transforms against their definition, in extended precision.
#include "values.h"

#include <cmath>
#include <numeric>

namespace {

// Relative root-mean-square error of the values.
double relativeError(const Values &values, const std::vector<long double> &exact) {
    long double error = 0, size = 0;
    for (std::size_t i = 0; i < exact.size(); ++i) {
        error += (values[i] - exact[i]) * (values[i] - exact[i]);
        size += exact[i] * exact[i];
    }
    return static_cast<double>(std::sqrt(error / size));
}

// About log2(N) roundings lie on the way to an output, and they add up like independent errors. Each is less
// than one epsilon even if a stage rounds twice.
double randomErrorBound(const Transform &transform) {
    return (transform.isSingle ? FLT_EPSILON : DBL_EPSILON) * std::sqrt(std::log2(transform.length));
}

// Of half a spectrum nearly every number counts twice.
double impulseErrorBound(const Transform &transform) {
    const bool countsTwice =
        transform.direction == Direction::Inverse && transform.srcLayout != Layout::Complex;
    return (transform.isSingle ? 3.9e-7 : 1.5e-15) * (countsTwice ? 2 : 1);
}

class Accuracy : public EachTransform {
protected:
    const Transform &transform = GetParam();

    // By definition; a row for each number of the output.
    std::vector<std::vector<long double>> matrix() const {
        std::vector rows(transform.dstCount(), std::vector<long double>(transform.srcCount()));
        for (std::size_t i = 0; i < rows.size(); ++i)
            for (std::size_t j = 0; j < rows[i].size(); ++j)
                rows[i][j] = coefficient(transform, i, j);
        return rows;
    }
};

// Shows each constant of a kernel by itself.
TEST_P(Accuracy, UnitImpulses) {
    const auto expected = matrix();
    for (std::size_t position = 0; position < transform.srcCount(); ++position) {
        Values impulse(transform.srcCount());
        impulse[position] = 1;
        const Values output = run(transform, impulse, zrfScaleNone);
        for (std::size_t i = 0; i < output.size(); ++i)
            EXPECT_NEAR(output[i], static_cast<double>(expected[i][position]), impulseErrorBound(transform))
                << "impulse at " << position << ", output " << i;
    }
}

TEST_P(Accuracy, RandomData) {
    const auto rows = matrix();
    for (unsigned seed = 0; seed < 8; ++seed) {
        const Values input = randomValues(transform, seed);
        std::vector<long double> expected;
        for (const auto &row : rows)
            expected.push_back(std::inner_product(row.begin(), row.end(), input.begin(), 0.0L));
        EXPECT_LE(relativeError(run(transform, input, zrfScaleNone), expected), randomErrorBound(transform));
    }
}

TEST_P(Accuracy, OppositeDirectionGivesTheInputBack) {
    const Transform &opposite = oppositeOf(transform);
    const Values input = randomValues(transform, 9);
    for (const int32_t there : scalingFlags)
        for (const int32_t back : scalingFlags) {
            std::vector<long double> expected(input.begin(), input.end());
            for (long double &value : expected)
                value *= transform.length * scaleFactor(transform, there) * scaleFactor(opposite, back);
            EXPECT_LE(relativeError(run(opposite, run(transform, input, there), back), expected),
                      2 * randomErrorBound(transform))
                << "flags " << there << " and " << back;
        }
}

INSTANTIATE_FOR_EACH_TRANSFORM(Accuracy);

} // namespace
