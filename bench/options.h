// The command line of zrfbench.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace zrfgen::bench {

struct Options {
    bool help = false;
    bool quick = false;
    std::vector<std::pair<int, int>> lengthRanges; // first and last; empty: all lengths
    std::vector<std::string> families{"complex",        "real-forward", "real-inverse", "hartley",
                                      "walsh-hadamard", "dct4",         "calls"};
    std::filesystem::path directory = ".";

    bool wants(int length) const;
};

inline constexpr const char *usage =
    "usage: zrfbench [--quick] [--families LIST] [--lengths LIST] [output directory]\n"
    "  --quick          short measurements: a first look, with more noise\n"
    "  --families LIST  only these of complex,real-forward,real-inverse,hartley,walsh-hadamard,dct4,calls\n"
    "  --lengths LIST   only these lengths, such as 8,16 or 2-8,60-64;\n"
    "                   of walsh-hadamard and dct4, the orders\n"
    "Writes zrfbench.tsv and zrfbench.png to the output directory (default: the current one).\n";

// Throws std::invalid_argument with a line for the user.
Options parseOptions(int argc, char **argv);

} // namespace zrfgen::bench
