// How the columns of a stage share vectors.
#pragma once

#include <algorithm>
#include <vector>

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

// Runs block(rows, group) over the columns, as many at a time as the model's vectors hold, and returns its
// outputs as columns. A row holds the elements of the group's columns side by side.
template <class Model, class Block> std::vector<typename Model::Column>
mapColumns(Model &m, const std::vector<typename Model::Column> &columns, int alike, Block block) {
    std::vector<typename Model::Column> results(columns.size());
    const int total = static_cast<int>(columns.size());
    for (Group group{0, 0}; group.first < total; group.first += group.count) {
        group = groupFrom(group.first, total, m.perVector(), alike);
        std::vector<typename Model::Value> rows;
        for (std::size_t row = 0; row < columns[group.first].size(); ++row) {
            typename Model::Column elements;
            for (int column = group.first; column < group.first + group.count; ++column)
                elements.push_back(columns[column][row]);
            rows.push_back(m.gathered(elements));
        }
        for (const auto &value : block(rows, group))
            for (int place = 0; place < group.count; ++place)
                results[group.first + place].push_back(Model::element(value, place));
    }
    return results;
}

} // namespace zrfgen::gen
