// The kernel as C++ text with SSE intrinsics.
#pragma once

#include "graph/graph.h"
#include "schedule/schedule.h"

#include <functional>
#include <string>

namespace zrfgen::gen {

// 4 or 8.
int bytes(Element element);

// "32" or "64", as it stands in the names of types and exports.
std::string bits(Element element);

// A number as a hexadecimal literal of the element type: the value rounded once.
std::string literal(Quad value, Element element);

// How the text reaches the caller's arrays.
struct ArrayText {
    // The address of an element; where empty, that many elements behind the array's start.
    std::function<std::string(int)> address;
    std::string access = "access"; // of moves that an aligned array aligns
};
struct ArrayTexts {
    ArrayText source = {}, destination = {};
};

// The statements of a function body over `src`, `dst` (byte pointers) and `factor` (the scale twice over, on
// a 16-byte boundary), with the template parameters `direction` and `access` in scope. The graph must have
// been lowered.
std::string emitBody(const Graph &graph, const Schedule &schedule, const ArrayTexts &arrays);

// Whether the text depends on `access`: some move takes a whole vector that an aligned array aligns.
bool hasAlignedMoves(const Graph &graph);

} // namespace zrfgen::gen
