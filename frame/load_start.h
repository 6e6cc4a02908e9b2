// What happens when the library is loaded: a capability is recorded, and nothing acts on it.
#pragma once

#include <cstdint>

namespace zrfgen {

// 1 if the core library enables both SSSE3 and SSE4.1, else 0. Written once, at process attach.
extern std::uint32_t capabilityFlag;

constexpr std::uint32_t processAttach = 1;

// The loader's notification. Reasons other than process attach have no effect. Always returns 1: the library
// never refuses to load.
std::int32_t entryRoutine(void *moduleHandle, std::uint32_t reason, void *reserved);

} // namespace zrfgen
