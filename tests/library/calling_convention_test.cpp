// What a caller's registers, stack and floating-point state look like after a call.
#include "values.h"

#include <algorithm>
#include <cfenv>
#include <cstdint>
#include <pmmintrin.h>

namespace {

using Word = std::uintptr_t;

#ifdef __x86_64__
constexpr int keptRegisters = 6;
#else
constexpr int keptRegisters = 4;
#endif

struct CallProbe {
    Word callerStack, stackBefore, stackAfter;
    Word keptBefore[6], keptAfter[6];
};

extern "C" CallProbe callProbe;
extern "C" Word probeCall(Word function, const Word *arguments, Word argumentCount, Word stackShift);

// Rounds to zero and flushes denormals: states that no program starts with.
constexpr unsigned unusualSseState =
    0x1f80 | _MM_ROUND_TOWARD_ZERO | _MM_FLUSH_ZERO_ON | _MM_DENORMALS_ZERO_ON;
constexpr unsigned sseStatusBits = 0x3f;
constexpr std::uint16_t unusualX87Control = 0x0e7f; // rounds to zero, double precision

// On 32-bit x86 the stack comes back only if the function has removed just its arguments.
Word callAndCheck(Word function, std::vector<Word> arguments, Word stackShift) {
    SCOPED_TRACE(testing::Message() << "stack " << stackShift << " bytes below a boundary");
    const Word argumentCount = arguments.size();
    arguments.resize(5);
    for (int i = 0; i < keptRegisters; ++i)
        callProbe.keptBefore[i] = static_cast<Word>(0x5a17c0de0badf00du) * static_cast<Word>(2 * i + 3);

    std::fenv_t usual, after;
    std::fegetenv(&usual);
    const unsigned usualSseState = _mm_getcsr();
    asm volatile("fldcw %0" : : "m"(unusualX87Control));
    _mm_setcsr(unusualSseState);
    const Word result = probeCall(function, arguments.data(), argumentCount, stackShift);
    const unsigned sseStateAfter = _mm_getcsr();
    _mm_setcsr(usualSseState);
    std::fegetenv(&after);
    std::fesetenv(&usual);

    EXPECT_EQ(callProbe.stackAfter, callProbe.stackBefore);
    EXPECT_TRUE(std::equal(callProbe.keptBefore, callProbe.keptBefore + keptRegisters, callProbe.keptAfter));
    EXPECT_EQ(sseStateAfter & ~sseStatusBits, unusualSseState);
    EXPECT_EQ(after.__control_word, unusualX87Control);
    EXPECT_EQ(after.__tags & 0xffff, 0xffff) << "the x87 registers are not empty";
    return result;
}

class CallingConvention : public EachTransform {};

TEST_P(CallingConvention, KeepsTheCallersState) {
    const Transform &transform = GetParam();
    const Word call = reinterpret_cast<Word>(transform.call);
    const Word anySize = reinterpret_cast<Word>(transform.anySize);
    const Word length = static_cast<Word>(transform.length);
    const Values input = randomValues(transform, 5);
    Arena src(0), dst(0);
    for (const std::size_t offset : {0, 4})
        for (const Word stackShift : {0, 4, 8, 12}) {
            encode(transform, input, src.at(offset));
            const Word from = reinterpret_cast<Word>(src.at(offset)),
                       to = reinterpret_cast<Word>(dst.at(offset));
            const auto check = [&](Word function, const std::vector<Word> &arguments, Status expected) {
                EXPECT_EQ(static_cast<Status>(callAndCheck(function, arguments, stackShift)), expected);
            };
            check(call, {from, to, zrfScaleNone}, zrfStatusOk);
            check(call, {from, 0, zrfScaleNone}, zrfStatusNullPointer);
            check(call, {from, to, 3}, zrfStatusFlagError);
            check(anySize, {from, to, length, zrfScaleNone}, zrfStatusOk);
            check(anySize, {from, to, 65, zrfScaleNone}, zrfStatusSizeError);
        }
}

INSTANTIATE_FOR_EACH_TRANSFORM(CallingConvention);

TEST(CallingConvention, KeepsTheCallersStateInWalshHadamard) {
    alignas(16) static unsigned char arrays[3][2 * 8192 * sizeof(Float64)];
    const auto word = [](const void *address) { return reinterpret_cast<Word>(address); };
    for (const std::string suffix : {"_32f", "_64f"})
        for (const Word stackShift : {0, 4, 8, 12}) {
            const Word anyOrder = word(exportAddress("zrfgWHT" + suffix)),
                       query = word(exportAddress("zrfgWHTGetBufferSize" + suffix));
            EXPECT_EQ(callAndCheck(query, {13, word(arrays[0])}, stackShift), Word(zrfStatusOk));
            for (Word order = 1; order <= 13; ++order) {
                const Word fixedOrder = word(exportAddress("zrfgWHT_" + std::to_string(order) + suffix));
                for (const Word buffer : {word(arrays[2]), Word(0)}) {
                    const Word src = word(arrays[0] + 8 * (order % 2)), dst = word(arrays[1]);
                    EXPECT_EQ(callAndCheck(fixedOrder, {src, dst, 8, buffer}, stackShift), Word(zrfStatusOk));
                    EXPECT_EQ(callAndCheck(anyOrder, {src, dst, order, 8, buffer}, stackShift),
                              Word(zrfStatusOk));
                }
            }
        }
}

TEST(CallingConvention, KeepsTheCallersStateInTheVersionQuery) {
    const Word query = reinterpret_cast<Word>(exportAddress("zrfgenGetLibVersion"));
    for (const Word stackShift : {0, 4, 8, 12})
        EXPECT_NE(callAndCheck(query, {}, stackShift), 0u);
}

TEST(CallingConvention, KeepsTheCallersStateInDct4) {
    for (const std::string suffix : {"_32f", "_64f"})
        for (const Word stackShift : {0, 4, 8, 12}) {
            const auto check = [&](const std::string &name, const std::vector<Word> &arguments,
                                   Status expected) {
                SCOPED_TRACE(name);
                const Word function = reinterpret_cast<Word>(exportAddress("zrfgDCT4" + name + suffix));
                EXPECT_EQ(static_cast<Status>(callAndCheck(function, arguments, stackShift)), expected);
            };
            const Word length = 4096;
            int32_t size = 0;
            Dct4Plan *plan = nullptr;
            const Word sizeOut = reinterpret_cast<Word>(&size), planOut = reinterpret_cast<Word>(&plan);
            check("GetSize", {length, sizeOut}, zrfStatusOk);
            check("GetSize", {48, sizeOut}, zrfStatusSizeError);
            std::vector<unsigned char> block(static_cast<std::size_t>(size));
            check("Init", {planOut, length, reinterpret_cast<Word>(block.data())}, zrfStatusOk);
            check("Init", {planOut, length, 0}, zrfStatusNullPointer);
            check("InitAlloc", {planOut, 48}, zrfStatusSizeError);
            check("InitAlloc", {planOut, length}, zrfStatusOk);
            alignas(16) static unsigned char array[4096 * sizeof(Float64)];
            const Word elements = reinterpret_cast<Word>(array);
            check("", {elements, elements, reinterpret_cast<Word>(plan)}, zrfStatusOk);
            check("", {elements, elements, 0}, zrfStatusNullPointer);
            check("Free", {reinterpret_cast<Word>(plan)}, zrfStatusOk);
            check("Free", {0}, zrfStatusNullPointer);
        }
}

} // namespace
