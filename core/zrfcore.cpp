#include "zrfcore.h"

#include "aligned_memory.h"

#include <cstddef>

namespace {

// A cache line: more than the 16 bytes that callers rely on, so that blocks do not share lines.
constexpr std::size_t blockAlignment = 64;

} // namespace

void *ZRF_CORE_CALL zrfMalloc(int32_t size) {
    if (size <= 0)
        return nullptr;
    void *block = nullptr;
    return allocateAligned(&block, blockAlignment, static_cast<std::size_t>(size)) ? block : nullptr;
}

void ZRF_CORE_CALL zrfFree(void *block) {
    releaseAligned(block);
}

uint64_t ZRF_CORE_CALL zrfGetEnabledCpuFeatures(void) {
    uint64_t mask = 0;
    if (__builtin_cpu_supports("mmx"))
        mask |= zrfCpuMmx;
    if (__builtin_cpu_supports("sse"))
        mask |= zrfCpuSse;
    if (__builtin_cpu_supports("sse2"))
        mask |= zrfCpuSse2;
    if (__builtin_cpu_supports("sse3"))
        mask |= zrfCpuSse3;
    if (__builtin_cpu_supports("ssse3"))
        mask |= zrfCpuSsse3;
    if (__builtin_cpu_supports("sse4.1"))
        mask |= zrfCpuSse41;
    return mask;
}
