// The tables on standard output and in zrfbench.tsv, their summary in zrfbench.md, and zrfbench.svg.
#pragma once

#include "harness.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace zrfgen::bench {

struct Row {
    int length;
    std::vector<Timing> timings; // ours first, then the peers'

    // The peer's time by ours: above 1, we are faster.
    double ratio(std::size_t peer) const { return timings[peer].nanoseconds / timings[0].nanoseconds; }
};

struct Table {
    std::string title;
    bool byOrder;          // the lengths are orders, for 2^order elements
    std::vector<Row> rows; // at least one, all with the same contenders
};

// Failures to write are thrown as std::runtime_error with a line for the user.
class Report {
public:
    explicit Report(const std::filesystem::path &directory);

    void add(const Table &table);
    void drawPlot();

private:
    void write(const Table &table);
    void summarise(const Table &table);

    std::filesystem::path directory;
    std::ofstream tsv, summary;
};

} // namespace zrfgen::bench
