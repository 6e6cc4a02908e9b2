// The command line of zrfbench.
#pragma once

#include "families.h"

#include <filesystem>
#include <utility>

namespace zrfgen::bench {

struct Options {
    std::string answer; // instead of measurements
    bool quick = false;
    std::vector<std::pair<int, int>> lengthRanges; // first and last; empty: all lengths
    std::vector<Family> families = bench::families;
    std::filesystem::path directory = ".";

    bool wants(int length) const;
};

// Throws std::invalid_argument with a line for the user.
Options parseOptions(int argc, char **argv);

} // namespace zrfgen::bench
