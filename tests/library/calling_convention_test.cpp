// What a caller's registers, stack and floating-point state look like after a call.
#include "exports.h"

#include <algorithm>
#include <cfenv>
#include <cstdint>
#include <gtest/gtest.h>
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

Word word(const void *address) {
    return reinterpret_cast<Word>(address);
}

alignas(16) unsigned char arrays[3][1 << 17];

void checkTransform(const Export &entry, Word size, Word offset, Word stackShift, const void *buffer) {
    const Word function = reinterpret_cast<Word>(entry.address);
    const auto check = [&](Word dst, Word size, Word flag, Status expected) {
        std::vector<Word> arguments = {word(arrays[0]) + offset, dst};
        if (entry.takesSize())
            arguments.push_back(size);
        arguments.push_back(flag);
        if (entry.isWht())
            arguments.push_back(word(buffer));
        EXPECT_EQ(static_cast<Status>(callAndCheck(function, arguments, stackShift)), expected);
    };
    const Word dst = word(arrays[1]) + offset;
    check(dst, size, zrfScaleNone, zrfStatusOk);
    check(0, size, zrfScaleNone, zrfStatusNullPointer);
    check(dst, size, 3, zrfStatusFlagError);
    if (entry.takesSize())
        check(dst, 65, zrfScaleNone, zrfStatusSizeError);
}

TEST(CallingConvention, KeepsTheCallersStateInTransforms) {
    for (const Export &entry : allExports()) {
        if (entry.entry > Entry::WhtAnyOrder)
            continue;
        SCOPED_TRACE(entry.name);
        const int least = entry.size ? entry.size : entry.isWht() ? 1 : 2;
        const int most = entry.size ? entry.size : entry.isWht() ? 13 : 64;
        for (int size = least; size <= most; ++size)
            for (const Word offset : {std::size_t{0}, entry.numberBytes()})
                for (const Word stackShift : {0, 4, 8, 12}) {
                    checkTransform(entry, size, offset, stackShift, arrays[2]);
                    if (entry.isWht())
                        checkTransform(entry, size, offset, stackShift, nullptr);
                }
    }
}

TEST(CallingConvention, KeepsTheCallersStateInQueries) {
    const auto named = [](const char *name) { return reinterpret_cast<Word>(exportNamed(name).address); };
    for (const Word stackShift : {0, 4, 8, 12}) {
        EXPECT_NE(callAndCheck(named("zrfgenGetLibVersion"), {}, stackShift), 0u);
        for (const char *name : {"zrfgWHTGetBufferSize_32f", "zrfgWHTGetBufferSize_64f"})
            EXPECT_EQ(callAndCheck(named(name), {13, word(arrays[0])}, stackShift), Word(zrfStatusOk));
    }
}

TEST(CallingConvention, KeepsTheCallersStateInDct4) {
    for (const std::string suffix : {"_32f", "_64f"})
        for (const Word stackShift : {0, 4, 8, 12}) {
            const auto check = [&](const std::string &name, const std::vector<Word> &arguments,
                                   Status expected) {
                SCOPED_TRACE(name);
                const Word function = reinterpret_cast<Word>(exportNamed("zrfgDCT4" + name + suffix).address);
                EXPECT_EQ(static_cast<Status>(callAndCheck(function, arguments, stackShift)), expected);
            };
            const Word length = 4096;
            int32_t size = 0;
            Dct4Plan *plan = nullptr;
            const Word sizeOut = word(&size), planOut = word(&plan);
            check("GetSize", {length, sizeOut}, zrfStatusOk);
            check("GetSize", {48, sizeOut}, zrfStatusSizeError);
            std::vector<unsigned char> block(static_cast<std::size_t>(size));
            check("Init", {planOut, length, word(block.data())}, zrfStatusOk);
            check("Init", {planOut, length, 0}, zrfStatusNullPointer);
            check("InitAlloc", {planOut, 48}, zrfStatusSizeError);
            check("InitAlloc", {planOut, length}, zrfStatusOk);
            const Word elements = word(arrays[0]);
            check("", {elements, elements, word(plan)}, zrfStatusOk);
            check("", {elements, elements, 0}, zrfStatusNullPointer);
            check("Free", {word(plan)}, zrfStatusOk);
            check("Free", {0}, zrfStatusNullPointer);
        }
}

} // namespace
