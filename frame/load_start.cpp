#include "load_start.h"

#include <zrfcore/zrfcore.h>

namespace zrfgen {

std::uint32_t capabilityFlag;

std::int32_t entryRoutine(void *, std::uint32_t reason, void *) {
    if (reason == processAttach) {
        constexpr std::uint64_t wanted = zrfCpuSsse3 | zrfCpuSse41;
        capabilityFlag = (zrfGetEnabledCpuFeatures() & wanted) == wanted;
    }
    return 1;
}

#ifndef _WIN32 // which calls DllMain
[[gnu::constructor]] static void attachProcess() {
    entryRoutine(nullptr, processAttach, nullptr);
}
#endif

} // namespace zrfgen
