// Every transform at every size with arguments that are wrong or that overlap. Each call is told from what
// the memory around the arrays holds afterwards: what is refused has written nothing, and what is not has
// written its result alone, the same one wherever the arrays lie.
#include "exports.h"
#include "random.h"

#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <utility>

namespace {

using Bytes = std::vector<unsigned char>;
using Call = std::function<Status(const void *src, void *dst)>;

alignas(16) unsigned char memory[1 << 18];

class Arguments : public testing::Test {
protected:
    void setArrays(const Export &entry, std::size_t srcCount, std::size_t dstCount) {
        const auto random = [&]<class Real>(Real) {
            const std::vector<Real> numbers = randomElements<Real>(srcCount);
            const auto *const first = reinterpret_cast<const unsigned char *>(numbers.data());
            source.assign(first, first + srcCount * sizeof(Real));
        };
        entry.isSingle ? random(Float32()) : random(Float64());
        numberBytes = entry.numberBytes();
        result.resize(dstCount * numberBytes);
        size = std::max(source.size(), result.size());
    }

    // Expects the bytes at dst, and all others as before. The arrays may be handed over as none.
    void expectCall(const Call &call, std::size_t src, std::size_t dst, Status status, const Bytes &written,
                    bool hasSrc = true, bool hasDst = true) {
        std::memset(memory, 0x5a, 3 * size + 16);
        std::ranges::copy(source, memory + src);
        Bytes expected(memory, memory + 3 * size + 16);
        std::ranges::copy(written, expected.begin() + static_cast<std::ptrdiff_t>(dst));
        EXPECT_EQ(call(hasSrc ? memory + src : nullptr, hasDst ? memory + dst : nullptr), status);
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), memory)) << src << " to " << dst;
    }

    void expectRefusalOfNull(const Call &call, Status status = zrfStatusNullPointer) {
        expectCall(call, 0, 2 * size, status, {}, false, true);
        expectCall(call, 0, 2 * size, status, {}, true, false);
        expectCall(call, 0, 2 * size, status, {}, false, false);
    }

    void expectRefusal(const Call &call, Status status, Status statusOfNull = zrfStatusNullPointer) {
        expectCall(call, 0, 2 * size, status, {});
        expectRefusalOfNull(call, statusOfNull);
    }

    // The result comes out in place, and over the source by every multiple of a width, if there is one.
    void expectResults(const Call &call, std::size_t width) {
        expectRefusalOfNull(call);
        std::ranges::copy(source, memory);
        ASSERT_EQ(call(memory, memory + 2 * size), zrfStatusOk);
        result.assign(memory + 2 * size, memory + 2 * size + result.size());
        const std::size_t src = size / 16 * 16;
        for (const std::size_t offset : {std::size_t{0}, numberBytes}) {
            expectCall(call, src + offset, src + offset, zrfStatusOk, result);
            for (std::size_t dst = 0; width > 0 && dst <= 2 * size; dst += width)
                expectCall(call, src + offset, dst + offset, zrfStatusOk, result);
        }
    }

    Bytes source, result;
    std::size_t numberBytes = 0, size = 0; // of the longer array
};

TEST_F(Arguments, OfTransforms) {
    for (const Export &entry : allExports()) {
        if (entry.entry > Entry::WhtAnyOrder)
            continue;
        SCOPED_TRACE(entry.name);
        const int least = entry.leastSize(), most = entry.mostSize();
        const auto with = [&](int32_t n, int32_t flag) -> Call {
            return [&entry, n, flag](auto... arrays) { return entry.transform(arrays..., n, flag, nullptr); };
        };
        for (int n = least; n <= most; ++n) {
            SCOPED_TRACE(n);
            setArrays(entry, entry.srcCount(n), entry.dstCount(n));
            for (const int32_t flag : {INT32_MIN, -1, 0, 3, 5, 6, 7, 9, 16, INT32_MAX})
                expectRefusal(with(n, flag), zrfStatusFlagError);
            expectResults(with(n, zrfScaleBySqrtN),
                          entry.isWht() ? 0 : numberBytes * (1 + entry.isComplex()));
        }
        for (const int32_t n : {INT32_MIN, -1, 0, least - 1, most + 1, INT32_MAX})
            if (entry.takesSize())
                expectRefusal(with(n, 3), zrfStatusSizeError, zrfStatusSizeError);
    }
}

TEST_F(Arguments, OfTheDct4) {
    for (const char *name : {"zrfgDCT4_32f", "zrfgDCT4_64f"})
        for (int32_t length = 2; length <= 8192; length *= 2) {
            SCOPED_TRACE(testing::Message() << name << ", length " << length);
            const Export &entry = exportNamed(name);
            const Dct4Functions dct4(entry.isSingle), otherType(!entry.isSingle);
            setArrays(entry, length, length);
            Dct4Plan *plan = nullptr;
            ASSERT_EQ(dct4.initAlloc(&plan, length), zrfStatusOk);
            const Call call = [&](auto... arrays) { return dct4.transform(arrays..., plan); };
            expectResults(call, 0);
            expectRefusal([&](auto... arrays) { return dct4.transform(arrays..., nullptr); },
                          zrfStatusNullPointer);
            expectRefusal([&](auto... arrays) { return otherType.transform(arrays..., plan); },
                          zrfStatusPlanError);
            EXPECT_EQ(otherType.release(plan), zrfStatusPlanError);
            int32_t &kind = reinterpret_cast<int32_t *>(plan)[8];
            for (const int32_t wrong : {INT32_MIN, -1, 0, 7, INT32_MAX}) {
                const int32_t known = std::exchange(kind, wrong);
                expectRefusal(call, zrfStatusPlanError);
                kind = known;
            }
            EXPECT_EQ(dct4.release(plan), zrfStatusOk);
        }
}

} // namespace
