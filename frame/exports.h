// The one list of exports, expanded.
#pragma once

#include "driver/driver.h"

namespace zrfgen::gen {

Exports exportList();

// Of libzrfmany, which has one entry for all lengths of a family.
Exports exportListOfMany();

} // namespace zrfgen::gen
