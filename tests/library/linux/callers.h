// What the platform's callers may expect and do.
#pragma once

#include <cstdint>

using Word = std::uintptr_t;

// The registers that a function has to keep.
constexpr int keptRegisters = sizeof(Word) == 8 ? 6 : 4;
constexpr int mostKeptWords = 6; // as the probe has room for

// How far below a 16-byte boundary a caller's stack may stand: anywhere.
constexpr Word stackShifts[] = {0, 4, 8, 12};
