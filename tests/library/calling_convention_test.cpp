// What a caller's registers, stack and floating-point state look like after a call.
#include "exports.h"

#include <cfenv>
#include <gtest/gtest.h>
#include <pmmintrin.h>

namespace {

using Word = std::uintptr_t;

constexpr int keptRegisters = sizeof(Word) == 8 ? 6 : 4;

struct CallProbe {
    Word callerStack, stackBefore, stackAfter;
    Word keptBefore[6], keptAfter[6];
};

extern "C" {
CallProbe callProbe;
Word probeCall(Word function, const Word *arguments, Word argumentCount, Word stackShift);
}

// Rounds to zero and flushes denormals: states that no program starts with.
constexpr unsigned unusualSseState =
    0x1f80 | _MM_ROUND_TOWARD_ZERO | _MM_FLUSH_ZERO_ON | _MM_DENORMALS_ZERO_ON;
constexpr unsigned sseStatusBits = 0x3f;
constexpr std::uint16_t unusualX87Control = 0x0e7f; // rounds to zero, double precision

Word word(const void *address) {
    return reinterpret_cast<Word>(address);
}

// On 32-bit x86 the stack comes back only if the function has removed just its arguments.
Word resultOf(const Export &entry, std::vector<Word> arguments, Word stackShift) {
    SCOPED_TRACE(testing::Message() << entry.name << ", stack " << stackShift << " bytes below a boundary");
    const Word argumentCount = arguments.size();
    arguments.resize(5);
    for (int i = 0; i < keptRegisters; ++i)
        callProbe.keptBefore[i] = static_cast<Word>(0x5a17c0de0badf00du) * static_cast<Word>(2 * i + 3);

    std::fenv_t usual, after;
    std::fegetenv(&usual);
    const unsigned usualSseState = _mm_getcsr();
    asm volatile("fldcw %0" : : "m"(unusualX87Control));
    _mm_setcsr(unusualSseState);
    const Word function = reinterpret_cast<Word>(entry.address);
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

constexpr Word stackShifts[] = {0, 4, 8, 12};
alignas(16) unsigned char arrays[3][1 << 17];

void checkTransform(const Export &entry, Word size, Word offset, Word stackShift, const void *buffer) {
    const auto check = [&](Word dst, Word size, Word flag, Status expected) {
        std::vector<Word> arguments = {word(arrays[0]) + offset, dst};
        if (entry.takesSize())
            arguments.push_back(size);
        arguments.push_back(flag);
        if (entry.isWht())
            arguments.push_back(word(buffer));
        EXPECT_EQ(static_cast<Status>(resultOf(entry, arguments, stackShift)), expected);
    };
    const Word dst = word(arrays[1]) + offset;
    check(dst, size, zrfScaleNone, zrfStatusOk);
    check(0, size, zrfScaleNone, zrfStatusNullPointer);
    check(dst, size, 3, zrfStatusFlagError);
    if (entry.takesSize())
        check(dst, entry.mostSize() + 1, zrfScaleNone, zrfStatusSizeError);
}

TEST(CallingConvention, KeepsTheCallersStateInTransforms) {
    for (const Export &entry : allExports()) {
        if (entry.entry > Entry::WhtAnyOrder)
            continue;
        for (int size = entry.leastSize(); size <= entry.mostSize(); ++size)
            for (const Word offset : {std::size_t{0}, entry.numberBytes()})
                for (const Word stackShift : stackShifts) {
                    checkTransform(entry, size, offset, stackShift, arrays[2]);
                    if (entry.isWht())
                        checkTransform(entry, size, offset, stackShift, nullptr);
                }
    }
}

TEST(CallingConvention, KeepsTheCallersStateInAllOtherCalls) {
    for (const Word stackShift : stackShifts) {
        EXPECT_NE(resultOf(exportNamed("zrfgenGetLibVersion"), {}, stackShift), 0u);
        for (const std::string suffix : {"_32f", "_64f"}) {
            const auto check = [&](const std::string &name, const std::vector<Word> &arguments,
                                   Status expected) {
                const Word result = resultOf(exportNamed("zrfg" + name + suffix), arguments, stackShift);
                EXPECT_EQ(static_cast<Status>(result), expected);
            };
            const Word length = 4096, elements = word(arrays[0]), block = word(arrays[1]);
            int32_t size;
            Dct4Plan *plan;
            check("WHTGetBufferSize", {13, word(&size)}, zrfStatusOk);
            check("DCT4GetSize", {length, word(&size)}, zrfStatusOk);
            check("DCT4GetSize", {48, word(&size)}, zrfStatusSizeError);
            check("DCT4Init", {word(&plan), length, block}, zrfStatusOk);
            check("DCT4Init", {word(&plan), length, 0}, zrfStatusNullPointer);
            check("DCT4InitAlloc", {word(&plan), 48}, zrfStatusSizeError);
            check("DCT4InitAlloc", {word(&plan), length}, zrfStatusOk);
            check("DCT4", {elements, elements, word(plan)}, zrfStatusOk);
            check("DCT4", {elements, elements, 0}, zrfStatusNullPointer);
            check("DCT4Free", {word(plan)}, zrfStatusOk);
            check("DCT4Free", {0}, zrfStatusNullPointer);
        }
    }
}

} // namespace
