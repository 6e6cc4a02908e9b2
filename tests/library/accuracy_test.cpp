// The transforms against their definition, in extended precision.
#include "values.h"

#include <cmath>

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

class Accuracy : public EachTransform {
protected:
    const Transform &transform = GetParam();

    // Adds the input (re, im) at index j to output k.
    void addTerm(std::vector<long double> &output, int j, int k, long double re, long double im) const {
        const int turns = j * k % transform.length;
        const long double c = cosineOfTurn(turns, transform.length);
        const long double s =
            transform.isForward ? -sineOfTurn(turns, transform.length) : sineOfTurn(turns, transform.length);
        output[2 * k] += re * c - im * s;
        output[2 * k + 1] += re * s + im * c;
    }

    std::vector<long double> byDefinition(const Values &input) const {
        std::vector<long double> output(input.size());
        for (int k = 0; k < transform.length; ++k)
            for (int j = 0; j < transform.length; ++j)
                addTerm(output, j, k, input[2 * j], input[2 * j + 1]);
        return output;
    }
};

// Shows each constant of a kernel by itself.
TEST_P(Accuracy, UnitImpulses) {
    const double bound = transform.isSingle ? 3.9e-7 : 1.5e-15;
    for (std::size_t position = 0; position < transform.components(); ++position) {
        Values impulse(transform.components());
        impulse[position] = 1;
        std::vector<long double> expected(transform.components());
        for (int k = 0; k < transform.length; ++k)
            addTerm(expected, static_cast<int>(position / 2), k, impulse[position & ~1u],
                    impulse[position | 1u]);
        const Values output = run(transform, impulse, zrfScaleNone);
        for (std::size_t i = 0; i < output.size(); ++i)
            EXPECT_NEAR(output[i], static_cast<double>(expected[i]), bound)
                << "impulse at component " << position << ", output component " << i;
    }
}

TEST_P(Accuracy, RandomData) {
    for (unsigned seed = 0; seed < 8; ++seed) {
        const Values input = randomValues(transform, seed);
        EXPECT_LE(relativeError(run(transform, input, zrfScaleNone), byDefinition(input)),
                  randomErrorBound(transform));
    }
}

TEST_P(Accuracy, OppositeDirectionGivesTheInputBack) {
    const Transform &opposite = oppositeOf(transform);
    const Values input = randomValues(transform, 9);
    for (const int32_t flag : {zrfScaleFwdByN, zrfScaleInvByN, zrfScaleBySqrtN}) {
        const Values output = run(opposite, run(transform, input, flag), flag);
        EXPECT_LE(relativeError(output, {input.begin(), input.end()}), 2 * randomErrorBound(transform))
            << "flag " << flag;
    }
}

INSTANTIATE_FOR_EACH_TRANSFORM(Accuracy);

} // namespace
