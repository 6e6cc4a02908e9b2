// Giving back what records own.
#pragma once

#include "records.h"

namespace zrfgen {

// The record's `destroy` operation: gives back what it owns, apart from the record itself. The root stands in
// no list and is released as a whole.
void destroyRecord(NodeHeader *record);

// Gives back all of the plan's records, tables and work, but not the block.
template <class Element> void releasePlan(Dct4Plan *plan);

} // namespace zrfgen
