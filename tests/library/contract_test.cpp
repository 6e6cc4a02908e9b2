// What a call refuses and in which order, what it leaves alone then, and what the flags mean.
#include "values.h"

#include <algorithm>
#include <climits>

namespace {

constexpr int32_t scalingFlags[] = {zrfScaleFwdByN, zrfScaleInvByN, zrfScaleBySqrtN, zrfScaleNone};

// The factor that the flag stands for.
double factor(const Transform &transform, int32_t flag) {
    if (flag == zrfScaleBySqrtN)
        return transform.isSingle ? inverseRoot<Float32>(transform.length)
                                  : inverseRoot<Float64>(transform.length);
    if (flag == (transform.isForward ? zrfScaleFwdByN : zrfScaleInvByN))
        return transform.isSingle ? 1.0f / static_cast<Float32>(transform.length) : 1.0 / transform.length;
    return 1;
}

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
    const Values input = randomValues(transform, 2), unscaled = run(transform, input, zrfScaleNone);
    for (const int32_t flag : scalingFlags) {
        Values expected = unscaled;
        for (double &value : expected)
            value = rounded(transform, value * factor(transform, flag));
        EXPECT_EQ(run(transform, input, flag), expected) << "flag " << flag;
    }
}

TEST_P(Contract, ImpulseGivesTheFactorItself) {
    const Transform &transform = GetParam();
    // These two multiply their input by constants before anything else.
    if (transform.isSingle && (transform.length == 47 || transform.length == 59))
        GTEST_SKIP();
    Values impulse(transform.components());
    impulse[0] = 1;
    for (const int32_t flag : scalingFlags) {
        const Values output = run(transform, impulse, flag);
        EXPECT_EQ(output[0], factor(transform, flag)) << "flag " << flag;
        EXPECT_EQ(output[1], 0) << "flag " << flag;
    }
}

INSTANTIATE_FOR_EACH_TRANSFORM(Contract);

TEST(AnySizeEntry, ChecksTheLengthFirst) {
    for (const char *name :
         {"zrfgDFTFwd_CToC_32fc", "zrfgDFTFwd_CToC_64fc", "zrfgDFTInv_CToC_32fc", "zrfgDFTInv_CToC_64fc"}) {
        const auto call = reinterpret_cast<Transform::AnySizeCall>(exportAddress(name));
        std::vector<int32_t> lengths = {INT_MIN, -8, -1, 0, 1, 65, 66, 1000, 0x108, 0x10008, INT_MAX};
        for (int32_t length = 2; length <= 64; ++length) {
            bool isBuilt = false;
            for (const Transform &transform : builtTransforms())
                isBuilt |= transform.anySize == call && transform.length == length;
            if (!isBuilt)
                lengths.push_back(length);
        }
        Arena src(0), dst(0x22);
        for (const int32_t length : lengths) {
            SCOPED_TRACE(testing::Message() << name << ", N " << length);
            EXPECT_EQ(call(nullptr, nullptr, length, 99), zrfStatusSizeError);
            EXPECT_EQ(call(src.at(1), nullptr, length, zrfScaleNone), zrfStatusSizeError);
            EXPECT_EQ(call(src.at(0), dst.at(0), length, 3), zrfStatusSizeError);
            EXPECT_EQ(call(src.at(0), dst.at(0), length, zrfScaleNone), zrfStatusSizeError);
        }
        EXPECT_EQ(dst.bytes, Arena(0x22).bytes);
    }
}

} // namespace
