// The commands of the kernelgen tool.
#pragma once

#include "driver/family.h"

#include <map>
#include <string>
#include <vector>

namespace zrfgen::gen {

// The names of a library's exports in their order, by the values of their bytes, and how many bytes of
// arguments each removes from the stack on 32-bit x86.
using Exports = std::map<std::string, int>;

// A library of the build, with the kernels that it is made of.
struct Library {
    std::string name;
    std::vector<Family> families;
    Exports exports;
};

// Runs one command line (without the program's name) over the libraries. Returns the exit status; errors are
// one line on standard error.
int runDriver(std::vector<std::string> arguments, const std::vector<Library> &libraries);

} // namespace zrfgen::gen
