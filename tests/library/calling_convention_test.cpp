// What a caller's registers, stack and floating-point state look like after a call.
#include "call_probe.h"
#include "exports.h"

#include <gtest/gtest.h>
#include <pmmintrin.h>

namespace {

// The states of SSE are the one that programs start with and one
// that none does: it rounds to zero and flushes denormals.
struct Caller {
    Word stackShift;
    unsigned sseState;
};
const std::vector<Caller> callers = [] {
    std::vector<Caller> list;
    for (const unsigned unusual : {0, _MM_ROUND_TOWARD_ZERO | _MM_FLUSH_ZERO_ON | _MM_DENORMALS_ZERO_ON})
        for (const Word stackShift : stackShifts)
            list.push_back({stackShift, 0x1f80 | unusual});
    return list;
}();
constexpr unsigned sseStatusBits = 0x3f;
constexpr std::uint16_t unusualX87Control = 0x0e7f; // rounds to zero, double precision

Word word(const void *address) {
    return reinterpret_cast<Word>(address);
}

// What `fnstenv` stores.
struct X87State {
    std::uint16_t control, gap1, status, gap2, tags, gap3;
    std::uint32_t pointers[4];
};

// The stack of the calls.
constexpr Word untouched = static_cast<Word>(0xa5a5a5a5a5a5a5a5u);
alignas(16) Word stack[4096];
constexpr Word *stackTop = stack + 4080;

// How many bytes of it an export may take besides its arguments: the figures of the calling rules.
int mostStackBytes(const Export &entry) {
#if defined(__clang__) || defined(__SANITIZE_ADDRESS__) || defined(_WIN32)
    return sizeof stack; // they are those of another build
#endif
    const bool isNarrow = sizeof(Word) == 4;
    static const bool hasWideVectors = libraryFile().find("glibc-hwcaps") != std::string::npos;
    if (entry.isComplex())
        return isNarrow ? 2720 : hasWideVectors ? 2432 : 1408;
    if (entry.family == "DCT4")
        return !entry.name.starts_with("zrfgDCT4_") ? 1024 : hasWideVectors ? 5120 : 2560;
    return entry.isWht() ? 1536 : hasWideVectors ? 1280 : 1024;
}

// On 32-bit x86 the stack comes back only if the function has removed just its arguments.
Word resultOf(const Export &entry, std::vector<Word> arguments, const Caller &caller) {
    SCOPED_TRACE(testing::Message() << entry.name << ", stack " << caller.stackShift
                                    << " bytes below a boundary, MXCSR " << caller.sseState);
    const Word argumentCount = arguments.size();
    arguments.resize(5);
    for (int i = 0; i < keptRegisters; ++i)
        callProbe.keptBefore[i] = static_cast<Word>(0x5a17c0de0badf00du) * static_cast<Word>(2 * i + 3);
    std::fill(stack, stackTop, untouched);
    callProbe.stackBefore = word(stackTop) - caller.stackShift;

    X87State usual, after;
    asm volatile("fnstenv %0" : "=m"(usual));
    const unsigned usualSseState = _mm_getcsr();
    asm volatile("fldcw %0" : : "m"(unusualX87Control));
    _mm_setcsr(caller.sseState);
    const Word function = reinterpret_cast<Word>(entry.address);
    const Word result = probeCall(function, arguments.data(), argumentCount);
    const unsigned sseStateAfter = _mm_getcsr();
    asm volatile("fnstenv %0\n\tfldenv %1" : "=m"(after) : "m"(usual));
    _mm_setcsr(usualSseState);

    EXPECT_EQ(callProbe.stackAfter, callProbe.stackBefore);
    EXPECT_TRUE(std::equal(callProbe.keptBefore, callProbe.keptBefore + keptRegisters, callProbe.keptAfter));
    EXPECT_EQ(sseStateAfter & ~sseStatusBits, caller.sseState);
    EXPECT_EQ(after.control, unusualX87Control);
    EXPECT_EQ(after.tags, 0xffff) << "the x87 registers are not empty";
    const Word *const deepest = std::find_if(stack, stackTop, [](Word word) { return word != untouched; });
    EXPECT_LE(static_cast<int>(callProbe.stackBefore - word(deepest)), mostStackBytes(entry));
    return result;
}

alignas(16) unsigned char arrays[3][1 << 17];

void checkTransform(const Export &entry, Word size, Word offset, const Caller &caller, const void *buffer) {
    const auto check = [&](Word dst, Word size, Word flag, Status expected) {
        std::vector<Word> arguments = {word(arrays[0]) + offset, dst};
        if (entry.takesSize())
            arguments.push_back(size);
        arguments.push_back(flag);
        if (entry.isWht())
            arguments.push_back(word(buffer));
        EXPECT_EQ(static_cast<Status>(resultOf(entry, arguments, caller)), expected);
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
                for (const Caller &caller : callers) {
                    checkTransform(entry, size, offset, caller, arrays[2]);
                    if (entry.isWht())
                        checkTransform(entry, size, offset, caller, nullptr);
                }
    }
}

TEST(CallingConvention, KeepsTheCallersStateInAllOtherCalls) {
    // Lengths of each kind, and with one, two and three levels.
    constexpr Word lengths[] = {2, 4, 8, 16, 32, 64, 2048, 4096, 1 << 17, 1 << 21, 1 << 22};
    std::vector<double> numbers(*std::rbegin(lengths));
    const Word elements = word(numbers.data()), block = word(arrays[1]);
    for (const Caller &caller : callers)
        EXPECT_NE(resultOf(exportNamed("zrfgenGetLibVersion"), {}, caller), 0u);
    for (const std::string suffix : {"_32f", "_64f"})
        for (const Caller &caller : callers) {
            const auto check = [&](const std::string &name, const std::vector<Word> &arguments,
                                   Status expected) {
                const Word result = resultOf(exportNamed("zrfg" + name + suffix), arguments, caller);
                EXPECT_EQ(static_cast<Status>(result), expected);
            };
            int32_t size;
            Dct4Plan *plan;
            check("WHTGetBufferSize", {13, word(&size)}, zrfStatusOk);
            check("DCT4GetSize", {4096, word(&size)}, zrfStatusOk);
            check("DCT4GetSize", {48, word(&size)}, zrfStatusSizeError);
            check("DCT4Init", {word(&plan), 4096, block}, zrfStatusOk);
            check("DCT4Init", {word(&plan), 4096, 0}, zrfStatusNullPointer);
            check("DCT4InitAlloc", {word(&plan), 48}, zrfStatusSizeError);
            check("DCT4Free", {0}, zrfStatusNullPointer);
            for (const Word length : lengths) {
                if (length > 4096 && &caller != &callers.front())
                    break;
                check("DCT4InitAlloc", {word(&plan), length}, zrfStatusOk);
                check("DCT4", {elements, elements, word(plan)}, zrfStatusOk);
                check("DCT4", {elements, 0, word(plan)}, zrfStatusNullPointer);
                check("DCT4Free", {word(plan)}, zrfStatusOk);
            }
        }
}

} // namespace
