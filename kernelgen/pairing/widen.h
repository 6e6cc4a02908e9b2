#pragma once

#include "schedule/schedule.h"

namespace zrfgen::gen {

// The kernel in single instructions of the target: those of the graph as the algebra built it, put side by
// side while the target's vectors have room and it pays. An operation on an element stays what it was.
OrderedGraph inVectors(const Graph &algebra, const Target &target);

} // namespace zrfgen::gen
