// The accuracy tables in Markdown.
#pragma once

#include "accuracy_measure.h"

#include <ostream>
#include <string>
#include <vector>

namespace zrfgen::bench {

struct AccuracyRow {
    int length;
    Accuracy singlePrecision, doublePrecision;
};

struct AccuracyTable {
    std::string title;
    std::string element; // its type without the number of bits
    std::vector<AccuracyRow> rows;
};

void writePage(std::ostream &file, const std::vector<AccuracyTable> &tables);

} // namespace zrfgen::bench
