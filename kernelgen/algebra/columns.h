// How the columns of a stage share vectors.
#pragma once

#include "algebra/number_model.h"

#include <algorithm>

namespace zrfgen::gen {

// Columns that stand in one vector.
struct Group {
    int first, count;
};

// How many columns in a row may share vectors with one another. Each run of `alike` columns is the same place
// in as many transforms; where these fill most of a vector, they keep vectors to themselves.
inline int runOfFullVectors(int total, int together, int alike) {
    return 2 * alike > together ? alike : total;
}

// Runs block(values, group) over the columns, as many at a time as the model's vectors hold and no group
// across the end of a run, and returns its outputs as columns. A value holds the elements of the group's
// columns side by side.
template <ComplexModel Model, class Block>
Columns<Model> mapColumns(Model &m, const Columns<Model> &columns, int run, Block block) {
    Columns<Model> results(columns.size());
    const int total = static_cast<int>(columns.size());
    for (int first = 0, count; first < total; first += count) {
        count = std::min({m.columnsTogether(), run - first % run, total - first});
        for (int start = 0; start < count; start += m.perVector()) {
            const Group group{first + start, std::min(m.perVector(), count - start)};
            Values<Model> values;
            for (std::size_t row = 0; row < columns[first].size(); ++row) {
                typename Model::Column elements;
                for (int column = first; column < first + count; ++column)
                    elements.push_back(columns[column][row]);
                values.push_back(m.gathered(elements, start));
            }
            for (const auto &value : block(values, group))
                for (int place = 0; place < group.count; ++place)
                    results[group.first + place].push_back(Model::element(value, place));
        }
    }
    return results;
}

} // namespace zrfgen::gen
