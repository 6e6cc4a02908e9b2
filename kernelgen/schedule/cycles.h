// How long a kernel keeps a machine busy, by a model of an out-of-order processor.
#pragma once

#include "schedule/schedule.h"

namespace zrfgen::gen {

// Cycles a call, of many calls in a row that do not wait for each other's results.
double cycles(const Graph &graph, const Schedule &schedule, const Target &target);

} // namespace zrfgen::gen
