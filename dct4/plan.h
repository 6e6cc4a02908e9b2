// Laying a plan into its block.
#pragma once

#include "records.h"

namespace zrfgen {

// Builds the plan of a length that planBytes accepts and that is not above longestPlan, and returns its root.
// It takes no more than planBytes from the start of the block; nothing in it can fail.
template <class Element> Dct4Plan *buildPlan(void *block, std::int32_t length);

} // namespace zrfgen
