// The kernel as C++ text with the target's intrinsics.
#pragma once

#include "schedule/schedule.h"

#include <functional>
#include <string>

namespace zrfgen::gen {

// How the text reaches the caller's arrays.
struct ArrayText {
    // The address of an element; where empty, that many elements behind the array's start.
    std::function<std::string(int)> address;
    std::string access = "access";                     // of moves that an aligned array aligns
    std::string accessElsewhere = "Access::Unaligned"; // of others
};
struct ArrayTexts {
    ArrayText source = {}, destination = {};
};

// Arrays in which whole vectors move by the same instructions on their boundaries and off them.
ArrayTexts arraysAnywhere();

// The statements of a function body over `src`, `dst` (byte pointers) and `factor` (a vector of the scale
// factor, on a boundary of vectors), with the template parameters `direction` and `access` in scope. The
// graph must have been lowered.
std::string emitBody(const Graph &graph, const Schedule &schedule, const ArrayTexts &arrays,
                     const Target &target);

// Whether the text depends on `access`: some move gains by an aligned array.
bool hasAlignedMoves(const Graph &graph, const ArrayTexts &arrays, const Target &target);

} // namespace zrfgen::gen
