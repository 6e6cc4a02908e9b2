// The libraries for other machines that this one runs too, to time beside the one that the loader chose.
#pragma once

#include "tests/exports.h"

#include <string>
#include <vector>

namespace zrfgen::bench {

struct OtherLibrary {
    std::string target;
    void *handle; // of the loader

    // The same export there.
    Export the(const Export &entry) const;
};

const std::vector<OtherLibrary> &otherLibraries();

// Whether the chosen one is the base library.
bool isBaseLibrary();

} // namespace zrfgen::bench
