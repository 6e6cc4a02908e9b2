#include "report.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace zrfgen::bench {
namespace {

constexpr const char *tsvName = "zrfbench.tsv";
constexpr int lengthWidth = 4, timeWidth = 12, ratioWidth = 16;

void printHeading(const Table &table) {
    const std::vector<Timing> &contenders = table.rows[0].timings;
    std::printf("\n%s\n%*s", table.title.c_str(), lengthWidth, "N");
    for (const Timing &contender : contenders)
        std::printf("%*s", timeWidth, (contender.label + " ns").c_str());
    for (std::size_t peer = 1; peer < contenders.size(); ++peer)
        std::printf("%*s", ratioWidth, (contenders[peer].label + "/" + contenders[0].label).c_str());
    std::printf("\n");
}

void printRow(const Row &row) {
    std::printf("%*d", lengthWidth, row.length);
    for (const Timing &timing : row.timings)
        std::printf("%*.1f", timeWidth, timing.nanoseconds);
    for (std::size_t peer = 1; peer < row.timings.size(); ++peer)
        std::printf("%*.2f", ratioWidth, row.ratio(peer));
    std::printf("\n");
}

double geometricMean(const std::vector<Row> &rows, std::size_t peer) {
    double sum = 0;
    for (const Row &row : rows)
        sum += std::log(row.ratio(peer));
    return std::exp(sum / rows.size());
}

void printSummary(const Table &table) {
    const std::vector<Timing> &contenders = table.rows[0].timings;
    std::printf("%-*s", lengthWidth + timeWidth * static_cast<int>(contenders.size()), "geometric mean");
    for (std::size_t peer = 1; peer < contenders.size(); ++peer)
        std::printf("%*.2f", ratioWidth, geometricMean(table.rows, peer));
    std::printf("\n");
    for (std::size_t peer = 1; peer < contenders.size(); ++peer) {
        std::string lengths;
        for (const Row &row : table.rows)
            if (row.ratio(peer) < 1)
                lengths += " " + std::to_string(row.length);
        std::printf("%s is ahead at:%s\n", contenders[peer].label.c_str(),
                    lengths.empty() ? " no length" : lengths.c_str());
    }
}

} // namespace

Report::Report(const std::filesystem::path &directory) : directory(directory) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    tsv.open(directory / tsvName);
    if (!tsv)
        throw std::runtime_error("cannot write to " + (directory / tsvName).string() +
                                 "; name another output directory");
    tsv << "table\tlength\tpeer\tours_ns\tpeer_ns\tratio\n";
}

void Report::add(const Table &table) {
    printHeading(table);
    for (const Row &row : table.rows)
        printRow(row);
    printSummary(table);
    write(table);
}

void Report::write(const Table &table) {
    for (const Row &row : table.rows)
        for (std::size_t peer = 1; peer < row.timings.size(); ++peer)
            tsv << table.title << '\t' << row.length << '\t' << row.timings[peer].label << '\t'
                << row.timings[0].nanoseconds << '\t' << row.timings[peer].nanoseconds << '\t'
                << row.ratio(peer) << '\n';
}

void Report::drawPlot() {
    tsv.close();
    if (!tsv)
        throw std::runtime_error("cannot write " + (directory / tsvName).string() + "; is the disk full?");
    // The script reads and writes in the current directory, so no file name passes through the shell.
    std::filesystem::current_path(directory);
    if (std::system("gnuplot '" PLOT_SCRIPT "'") != 0)
        throw std::runtime_error("gnuplot drew no zrfbench.png; is the package gnuplot-nox installed?");
}

} // namespace zrfgen::bench
