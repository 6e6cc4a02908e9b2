// The one list of exports, expanded.
#pragma once

#include <string>
#include <vector>

namespace zrfgen::gen {

// All names of the library, in export order: by the values of their bytes.
std::vector<std::string> exportNames();

} // namespace zrfgen::gen
