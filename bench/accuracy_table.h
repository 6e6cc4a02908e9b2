// The accuracy table in Markdown.
#pragma once

#include "accuracy_measure.h"

#include <ostream>
#include <vector>

namespace zrfgen::bench {

struct AccuracyRow {
    int length;
    Accuracy complex32, complex64;
};

void writeTable(std::ostream &file, const std::vector<AccuracyRow> &rows);

} // namespace zrfgen::bench
