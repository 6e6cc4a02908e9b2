// A call as the library's callers make it, with what it leaves of registers and stack.
#pragma once

#include "callers.h"

struct CallProbe {
    Word callerStack, stackBefore, stackAfter;
    Word keptBefore[mostKeptWords], keptAfter[mostKeptWords];
};

extern "C" {
inline CallProbe callProbe;
Word probeCall(Word function, const Word *arguments, Word argumentCount);
}
