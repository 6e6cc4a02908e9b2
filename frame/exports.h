// The one list of exports, expanded.
#pragma once

#include <string>
#include <vector>

namespace zrfgen::gen {

// All names that the library knows, built or not yet, in export order: by the values of their bytes.
std::vector<std::string> exportNames();

} // namespace zrfgen::gen
