// What a call refuses and in which order, what it leaves alone then, and what the flags mean.
#include "values.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <map>

namespace {

class Contract : public EachTransform {};

TEST_P(Contract, ChecksPointersThenFlagBeforeItWrites) {
    const Transform &transform = GetParam();
    Arena src(0), dst(0);
    // Alignment selects a path, and each path has its own checks.
    const std::initializer_list<const unsigned char *> sources = {nullptr, src.at(0), src.at(4), src.at(8)};
    const std::initializer_list<unsigned char *> destinations = {nullptr, dst.at(0), dst.at(4), dst.at(8)};
    for (const int32_t flag : {1, 2, 4, 8, 0, 3, 5, 6, 7, 9, 10, 12, 15, 16, 0x108, 0x10001, -1, -8, INT_MIN})
        for (const unsigned char *from : sources)
            for (unsigned char *to : destinations) {
                SCOPED_TRACE(testing::Message() << "src " << static_cast<const void *>(from) << ", dst "
                                                << static_cast<void *>(to) << ", flag " << flag);
                const bool isScaling = std::ranges::count(scalingFlags, flag) != 0;
                const Status expected = from == nullptr || to == nullptr ? zrfStatusNullPointer
                                        : isScaling                      ? zrfStatusOk
                                                                         : zrfStatusFlagError;
                dst = Arena(0x22);
                EXPECT_EQ(transform.call(from, to, flag), expected);
                EXPECT_EQ(transform.anySize(from, to, transform.length, flag), expected);
                EXPECT_EQ(dst.bytes == Arena(0x22).bytes, expected != zrfStatusOk);
            }
}

TEST_P(Contract, AnySizeEntryGivesTheBitsOfTheLength) {
    const Transform &transform = GetParam();
    for (const std::size_t offset : {0, 4})
        for (const int32_t flag : scalingFlags) {
            Arena src(0), fixed(0), any(0);
            encode(transform, randomValues(transform, 1), src.at(offset));
            ASSERT_EQ(transform.call(src.at(offset), fixed.at(offset), flag), zrfStatusOk);
            ASSERT_EQ(transform.anySize(src.at(offset), any.at(offset), transform.length, flag), zrfStatusOk);
            EXPECT_EQ(fixed.bytes, any.bytes) << "offset " << offset << ", flag " << flag;
        }
}

TEST_P(Contract, FlagMultipliesEachOutputOnce) {
    const Transform &transform = GetParam();
    // Real transforms scale what is still in Float64 before they round it to Float32.
    const bool roundsOnce = transform.isSingle && transform.srcLayout != Layout::Complex;
    const Values input = randomValues(transform, 2), unscaled = run(transform, input, zrfScaleNone);
    std::map<double, Values> outputs = {{1, unscaled}};
    for (const int32_t flag : scalingFlags) {
        SCOPED_TRACE(testing::Message() << "flag " << flag);
        const double factor = scaleFactor(transform, flag);
        const Values output = run(transform, input, flag);
        for (std::size_t i = 0; i < output.size(); ++i) {
            const double expected = rounded(transform, unscaled[i] * factor);
            EXPECT_NEAR(output[i], expected, roundsOnce ? FLT_EPSILON * std::fabs(expected) : 0);
        }
        EXPECT_EQ(output, outputs.emplace(factor, output).first->second) << "another flag of this factor";
    }
}

TEST_P(Contract, ImpulseGivesTheFactorItself) {
    const Transform &transform = GetParam();
    const bool isComplex = transform.srcLayout == Layout::Complex;
    // These two multiply their input by constants before anything else.
    if (isComplex && transform.isSingle && (transform.length == 47 || transform.length == 59))
        GTEST_SKIP();
    Values impulse(transform.srcCount());
    impulse[0] = 1;
    for (const int32_t flag : scalingFlags) {
        const Values output = run(transform, impulse, flag);
        for (std::size_t i = 0; i < (isComplex ? 2 : output.size()); ++i)
            EXPECT_EQ(output[i], coefficient(transform, i, 0) * scaleFactor(transform, flag))
                << "flag " << flag << ", output " << i;
    }
}

INSTANTIATE_FOR_EACH_TRANSFORM(Contract);

TEST(AnySizeEntry, ChecksTheLengthFirst) {
    for (const Transform &transform : builtTransforms()) {
        if (transform.length != 2) // one of each family and element type
            continue;
        Arena src(0), dst(0x22);
        for (const int32_t length : {INT_MIN, -8, -1, 0, 1, 65, 66, 1000, 0x108, 0x10008, INT_MAX}) {
            SCOPED_TRACE(testing::Message() << transform.anySizeName << ", N " << length);
            EXPECT_EQ(transform.anySize(nullptr, nullptr, length, 99), zrfStatusSizeError);
            EXPECT_EQ(transform.anySize(src.at(1), nullptr, length, zrfScaleNone), zrfStatusSizeError);
            EXPECT_EQ(transform.anySize(src.at(0), dst.at(0), length, 3), zrfStatusSizeError);
            EXPECT_EQ(transform.anySize(src.at(0), dst.at(0), length, zrfScaleNone), zrfStatusSizeError);
        }
        EXPECT_EQ(dst.bytes, Arena(0x22).bytes);
    }
}

} // namespace
