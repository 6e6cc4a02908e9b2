// Sizing, making and releasing plans of the DCT-IV, by the exports. The program brings the library's core
// functions and its sine and cosine, which count.
#include "registry.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <zrfcore/zrfcore.h>

namespace {

int trigonometricCalls = 0;

double callNext(const char *name, double x) {
    ++trigonometricCalls;
    return reinterpret_cast<double (*)(double)>(dlsym(RTLD_NEXT, name))(x);
}

std::vector<int32_t> allocations;
std::vector<void *> releases;
void *nextBlock = nullptr; // what zrfMalloc delivers

} // namespace

extern "C" double sin(double x) noexcept {
    return callNext("sin", x);
}

extern "C" double cos(double x) noexcept {
    return callNext("cos", x);
}

void *ZRF_CORE_CALL zrfMalloc(int32_t size) {
    allocations.push_back(size);
    return nextBlock;
}

void ZRF_CORE_CALL zrfFree(void *block) {
    releases.push_back(block);
}

std::uint64_t ZRF_CORE_CALL zrfGetEnabledCpuFeatures() {
    return 0;
}

namespace {

constexpr int32_t refused = zrfStatusSizeError;

struct Functions {
    const char *suffix;
    Status(ZRF_CALL *getSize)(int32_t, int32_t *);
    Status(ZRF_CALL *init)(Dct4Plan **, int32_t, void *);
    Status(ZRF_CALL *initAlloc)(Dct4Plan **, int32_t);
    Status(ZRF_CALL *free)(Dct4Plan *);
    int32_t longest, shortestOdd;

    // What the size query reports: the size, or its status.
    int32_t size(int32_t length) const {
        int32_t bytes = 123;
        const Status status = getSize(length, &bytes);
        EXPECT_EQ(status == zrfStatusOk, bytes != 123);
        return status == zrfStatusOk ? bytes : status;
    }
};

void PrintTo(const Functions &functions, std::ostream *stream) {
    *stream << functions.suffix;
}

const Functions float32 = {
    "32f", zrfgDCT4GetSize_32f, zrfgDCT4Init_32f, zrfgDCT4InitAlloc_32f, zrfgDCT4Free_32f, 1 << 26, 33};
const Functions float64 = {
    "64f", zrfgDCT4GetSize_64f, zrfgDCT4Init_64f, zrfgDCT4InitAlloc_64f, zrfgDCT4Free_64f, 1 << 25, 9};

// A block of exactly `size` bytes, `offset` bytes behind a 64-byte boundary, between guard bytes.
class GuardedBlock {
public:
    GuardedBlock(int32_t size, std::size_t offset)
        : bytes(static_cast<std::size_t>(size) + 512, fill), size(static_cast<std::size_t>(size)) {
        const auto address = reinterpret_cast<std::uintptr_t>(bytes.data());
        block = bytes.data() + 128 + offset - address % 64;
    }
    unsigned char *start() const { return block; }

    bool guardsAreIntact() const {
        return isIntact(bytes.data(), block) && isIntact(block + size, bytes.data() + bytes.size());
    }
    bool isUntouched() const { return isIntact(bytes.data(), bytes.data() + bytes.size()); }

private:
    static constexpr unsigned char fill = 0xa5;
    static bool isIntact(const unsigned char *first, const unsigned char *last) {
        return std::all_of(first, last, [](unsigned char byte) { return byte == fill; });
    }

    std::vector<unsigned char> bytes;
    unsigned char *block;
    std::size_t size;
};

class Dct4Plans : public testing::TestWithParam<Functions> {
protected:
    void SetUp() override {
        allocations.clear();
        releases.clear();
        nextBlock = nullptr;
    }

    const Functions &functions = GetParam();
    Dct4Plan *const untouched = reinterpret_cast<Dct4Plan *>(&trigonometricCalls);
    Dct4Plan *plan = untouched;
};

INSTANTIATE_TEST_SUITE_P(Library, Dct4Plans, testing::Values(float32, float64),
                         testing::PrintToStringParamName());

TEST(Dct4Sizes, AreThoseOfTheTable) {
    // Of the powers of two from 2 to 2^30.
    const std::vector<int32_t> singleBytes = {
        224,       224,        224,     224,      224,      1632,     2144,      3168,
        5216,      9312,       17504,   52768,    103968,   206112,   410912,    820000,
        2164960,   4327648,    8652768, 17303520, 34604512, 85986208, 171969440, 343935648,
        687868576, 1375733920, refused, refused,  refused,  536874336};
    const std::vector<int32_t> doubleBytes = {
        224,        224,     224,      224,      224,       2144,      3168,      5216,
        9312,       17504,   33888,    101920,   202272,    402720,    804128,    1606432,
        4262112,    8521952, 17041376, 34080736, 68158944,  169872288, 339741600, 679479968,
        1358957216, refused, refused,  refused,  268438880, 536874336};
    for (int exponent = 1; exponent <= 30; ++exponent) {
        const auto row = static_cast<std::size_t>(exponent - 1);
        EXPECT_EQ(float32.size(1 << exponent), singleBytes[row]) << exponent;
        EXPECT_EQ(float64.size(1 << exponent), doubleBytes[row]) << exponent;
    }
    EXPECT_EQ(float32.size(33), 1408);
    EXPECT_EQ(float64.size(33), 1664);
    EXPECT_EQ(float64.size(9), 1280);
    EXPECT_EQ(float64.size(17), 1408);
}

TEST_P(Dct4Plans, AcceptPowersOfTwoAndSomeOneAbove) {
    const auto isAccepted = [&](int32_t length) {
        const bool isPower = length > 1 && std::has_single_bit(static_cast<unsigned>(length));
        const bool isOneAbove =
            length >= functions.shortestOdd && std::has_single_bit(static_cast<unsigned>(length - 1));
        return isPower || isOneAbove;
    };
    for (int32_t length = -1000; length < 300000; ++length)
        ASSERT_EQ(functions.size(length) > 0, isAccepted(length)) << length;
    for (int32_t power = 1 << 18; power <= functions.longest; power *= 2)
        for (int32_t length = power - 40; length <= power + 40; ++length)
            ASSERT_EQ(functions.size(length) > 0, isAccepted(length)) << length;
    for (const int32_t length : {INT32_MIN, INT32_MIN + 1, INT32_MAX, INT32_MAX - 1, 3 << 28, -(1 << 30)})
        EXPECT_EQ(functions.size(length), refused) << length;
}

TEST_P(Dct4Plans, SizeQueryNeedsSomewhereToStore) {
    for (const int32_t length : {64, 32, 48, 0, -64, 1 << 27})
        EXPECT_EQ(functions.getSize(length, nullptr), zrfStatusNullPointer) << length;
}

// In blocks of exactly the reported size, wherever they start.
TEST_P(Dct4Plans, LieWithinTheReportedSize) {
    for (int32_t power = 2; power <= 1 << 17; power *= 2)
        for (const int32_t length : {power, power + 1}) {
            const int32_t size = functions.size(length);
            if (size < 0)
                continue;
            for (const std::size_t offset : {0, 1, 4, 8, 16, 27, 31, 32, 63}) {
                SCOPED_TRACE(testing::Message() << "length " << length << " at offset " << offset);
                GuardedBlock block(size, offset);
                ASSERT_EQ(functions.init(&plan, length, block.start()), zrfStatusOk);
                EXPECT_TRUE(block.guardsAreIntact());
                // The root is the first record, behind the head of the block.
                const auto *root = reinterpret_cast<unsigned char *>(plan);
                EXPECT_EQ(root - block.start(), 64 - static_cast<std::ptrdiff_t>(offset % 32));
            }
        }
    EXPECT_TRUE(allocations.empty() && releases.empty());
}

TEST_P(Dct4Plans, InitRefusesAndTouchesNothing) {
    GuardedBlock block(1 << 12, 0);
    EXPECT_EQ(functions.init(nullptr, 64, block.start()), zrfStatusNullPointer);
    EXPECT_EQ(functions.init(nullptr, 48, nullptr), zrfStatusNullPointer);
    EXPECT_EQ(functions.init(&plan, 64, nullptr), zrfStatusNullPointer);
    EXPECT_EQ(functions.init(&plan, 48, nullptr), zrfStatusNullPointer);
    for (const int32_t length : {48, 0, 1, 3, 6, 7, 10, 12, 24, 96, 66, 5, -64, INT32_MIN, INT32_MAX})
        EXPECT_EQ(functions.init(&plan, length, block.start()), zrfStatusSizeError) << length;
    // The sizes of the last ones wrap around and are positive.
    for (const int32_t power : {2 * functions.longest, 1 << 27, 1 << 29, 1 << 30})
        for (const int32_t length : {power, power + 1})
            EXPECT_EQ(functions.init(&plan, length, block.start()), zrfStatusSizeError) << length;
    EXPECT_TRUE(block.isUntouched());
    EXPECT_EQ(plan, untouched);
}

TEST_P(Dct4Plans, AreAllocatedOnceAndFreed) {
    for (const int32_t length : {2, 32, functions.shortestOdd, 64, 4096, 131072}) {
        SCOPED_TRACE(length);
        SetUp();
        GuardedBlock block(functions.size(length), 16);
        nextBlock = block.start();
        ASSERT_EQ(functions.initAlloc(&plan, length), zrfStatusOk);
        EXPECT_EQ(allocations, std::vector<int32_t>{functions.size(length)});
        EXPECT_TRUE(releases.empty());
        EXPECT_EQ(functions.free(plan), zrfStatusOk);
        EXPECT_EQ(releases, std::vector<void *>{block.start()});
        EXPECT_EQ(allocations.size(), 1u);
        EXPECT_TRUE(block.guardsAreIntact());
    }
}

TEST_P(Dct4Plans, InitAllocAllocatesNothingForARefusedCall) {
    EXPECT_EQ(functions.initAlloc(nullptr, 64), zrfStatusNullPointer);
    EXPECT_EQ(functions.initAlloc(nullptr, 48), zrfStatusNullPointer);
    EXPECT_EQ(functions.initAlloc(&plan, 48), zrfStatusSizeError);
    EXPECT_EQ(functions.initAlloc(&plan, 2 * functions.longest), zrfStatusSizeError);
    EXPECT_EQ(plan, untouched);
    EXPECT_TRUE(allocations.empty() && releases.empty());
}

TEST_P(Dct4Plans, InitAllocReportsExhaustedMemory) {
    for (const int32_t length : {32, 64, 1 << 30}) {
        SetUp();
        EXPECT_EQ(functions.initAlloc(&plan, length), zrfStatusNullPointer);
        EXPECT_EQ(allocations, std::vector<int32_t>{functions.size(length)});
        EXPECT_EQ(releases, std::vector<void *>{nullptr});
    }
    EXPECT_EQ(plan, untouched);
}

TEST_P(Dct4Plans, InitAllocFreesABlockThatIsTooSmall) {
    GuardedBlock block(64, 0);
    nextBlock = block.start();
    EXPECT_EQ(functions.initAlloc(&plan, 1 << 30), zrfStatusSizeError);
    EXPECT_EQ(releases, std::vector<void *>{block.start()});
    EXPECT_TRUE(block.isUntouched());
    EXPECT_EQ(plan, untouched);
}

TEST_P(Dct4Plans, FreeNeedsAPlan) {
    EXPECT_EQ(functions.free(nullptr), zrfStatusNullPointer);
    EXPECT_TRUE(releases.empty());
}

// One call for each value of a table that differs by lane: N of the output table, and two for each of the
// (r2 - 1) n / (2 r2) groups of a level, here with r2 = 8 and n = 128.
TEST_P(Dct4Plans, CallSineAndCosineAsOftenAsTheyMust) {
    constexpr struct {
        int32_t length;
        int calls;
    } rows[] = {{2, 0}, {32, 0}, {64, 64}, {2048, 2048}, {4096, 4096 + 2 * 7 * 8}};
    for (const auto &[length, calls] : rows) {
        GuardedBlock block(functions.size(length), 0);
        trigonometricCalls = 0;
        EXPECT_EQ(functions.init(&plan, length, block.start()), zrfStatusOk);
        EXPECT_EQ(trigonometricCalls, calls) << length;
    }
}

} // namespace
