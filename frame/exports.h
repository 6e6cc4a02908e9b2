// The one list of exports, expanded.
#pragma once

#include <string>
#include <vector>

namespace zrfgen::gen {

// The names of all exports in their order: by the values of their bytes.
std::vector<std::string> exportNames();

} // namespace zrfgen::gen
