// The base library, to time beside the one that the loader chose for this machine.
#pragma once

#include "tests/exports.h"

#include <optional>

namespace zrfgen::bench {

// The same export of the base library; none if that is the one the program is linked with.
std::optional<Export> inBaseLibrary(const Export &entry);
bool hasBaseLibraryBeside();

} // namespace zrfgen::bench
