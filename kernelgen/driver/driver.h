// The commands of the kernelgen tool.
#pragma once

#include "driver/family.h"

#include <string>
#include <vector>

namespace zrfgen::gen {

// Runs one command line (without the program's name) over the families. `exports` are the names of the
// library. Returns the exit status; errors are one line on standard error.
int runDriver(std::vector<std::string> arguments, const std::vector<Family> &families,
              const std::vector<std::string> &exports);

} // namespace zrfgen::gen
