// What the platform's callers may expect and do.
#pragma once

#include <cstdint>

using Word = std::uintptr_t;

// The words of the registers that a function has to keep: on 64-bit Windows eight plain ones, then xmm6 to
// xmm15.
constexpr int keptRegisters = sizeof(Word) == 8 ? 28 : 4;
constexpr int mostKeptWords = 28; // as the probe has room for

// How far below a 16-byte boundary a caller's stack may stand.
#ifdef __x86_64__
constexpr Word stackShifts[] = {0};
#else
constexpr Word stackShifts[] = {0, 4, 8, 12};
#endif
