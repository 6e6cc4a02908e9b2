// Calls that must give the same bits: at every address, with overlapping arrays, and in both directions.
#include "values.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

class Bits : public EachTransform {
protected:
    const Transform &transform = GetParam();
    const Values input = randomValues(transform, 3);
    Arena expected = Arena(0); // the output lies at offset 0

    void SetUp() override {
        Arena src(0);
        encode(transform, input, src.at(0));
        ASSERT_EQ(transform.call(src.at(0), expected.at(0), zrfScaleBySqrtN), zrfStatusOk);
    }
};

// The destination is full of NaNs, so an output that depended on its old content would be none of the
// expected ones. Nothing beside the outputs may change.
TEST_P(Bits, AreTheSameAtEveryAddress) {
    for (std::size_t srcOffset = 0; srcOffset <= 16; ++srcOffset)
        for (std::size_t dstOffset = 0; dstOffset <= 16; ++dstOffset) {
            Arena src(0), dst(0xff), wanted(0xff);
            encode(transform, input, src.at(srcOffset));
            std::memcpy(wanted.at(dstOffset), expected.at(0), transform.dstBytes());
            ASSERT_EQ(transform.call(src.at(srcOffset), dst.at(dstOffset), zrfScaleBySqrtN), zrfStatusOk);
            ASSERT_EQ(dst.bytes, wanted.bytes) << "src offset " << srcOffset << ", dst offset " << dstOffset;
        }
}

// In place among them. What the outputs do not cover of the source keeps its numbers.
TEST_P(Bits, AreTheSameWithAnyOverlap) {
    Arena arena(0), wanted(0);
    for (const std::size_t src : {1024, 1025, 1032})
        for (std::size_t dst = src - transform.dstBytes(); dst <= src + transform.srcBytes(); ++dst) {
            encode(transform, input, arena.at(src));
            wanted = arena;
            std::memcpy(wanted.at(dst), expected.at(0), transform.dstBytes());
            ASSERT_EQ(transform.call(arena.at(src), arena.at(dst), zrfScaleBySqrtN), zrfStatusOk);
            ASSERT_EQ(arena.bytes, wanted.bytes) << "src " << src << ", dst " << dst;
        }
}

// NaN and infinity are no failure, and nothing hides them where the definition has the input.
TEST_P(Bits, NumbersThatAreNotFiniteSpread) {
    for (std::size_t position = 0; position < transform.srcCount(); ++position) {
        std::vector<std::size_t> reached;
        for (std::size_t i = 0; i < transform.dstCount(); ++i)
            if (std::fabs(coefficient(transform, i, position)) > 1e-9)
                reached.push_back(i);
        for (const double value : notFinite) {
            Values values = input;
            values[position] = value;
            const Values output = run(transform, values, zrfScaleNone);
            for (const std::size_t i : reached)
                EXPECT_FALSE(std::isfinite(output[i])) << value << " at " << position << ", output " << i;
        }
    }
}

INSTANTIATE_FOR_EACH_TRANSFORM(Bits);

// Lengths whose additions stand in the same order in both directions. The others agree within rounding.
bool hasExchangeSymmetry(const Transform &transform) {
    constexpr int otherOrder64[] = {22, 33, 44, 46, 49, 50, 55, 58, 62};
    if (!transform.isSingle)
        return std::ranges::count(otherOrder64, transform.length) == 0;
    constexpr int primesByConvolution[] = {7, 11, 13, 17, 19, 23, 29, 31, 37, 41, 43, 47, 53, 59, 61};
    return std::ranges::count(primesByConvolution, transform.length) == 0;
}

// Real and imaginary parts exchanged.
Values exchanged(Values values) {
    for (std::size_t i = 0; i < values.size(); i += 2)
        std::swap(values[i], values[i + 1]);
    return values;
}

TEST(ComplexBits, OppositeDirectionMirrorsThem) {
    for (const Transform &transform : builtTransforms()) {
        if (transform.srcLayout != Layout::Complex)
            continue;
        SCOPED_TRACE(transform.name);
        const Transform &opposite = oppositeOf(transform);
        const Values input = randomValues(transform, 3), output = run(transform, input, zrfScaleBySqrtN);
        if (hasExchangeSymmetry(transform)) {
            EXPECT_EQ(run(opposite, exchanged(input), zrfScaleBySqrtN), exchanged(output));
        }
        if (transform.length <= 5) {
            Values reversed = output;
            for (std::size_t i = 2; i < output.size(); ++i)
                reversed[i] = output[output.size() - i + 2 * (i % 2)];
            EXPECT_EQ(run(opposite, input, zrfScaleBySqrtN), reversed);
        }
    }
}

} // namespace
