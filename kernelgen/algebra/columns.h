// How the columns of a stage share vectors.
#pragma once

#include <algorithm>

namespace zrfgen::gen {

// Columns that stand in one vector.
struct Group {
    int first, count;
};

// The group that starts at column `first` of `total`. Each run of `alike` columns is the same place in as
// many transforms; where these fill most of a vector, no group crosses the end of a run.
inline Group groupFrom(int first, int total, int perVector, int alike) {
    const int run = 2 * alike > perVector ? alike : total;
    return {first, std::min({perVector, (first / run + 1) * run - first, total - first})};
}

} // namespace zrfgen::gen
