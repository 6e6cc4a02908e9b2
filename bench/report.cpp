#include "report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <stdexcept>

namespace zrfgen::bench {
namespace {

constexpr const char *tsvName = "zrfbench.tsv";
constexpr const char *summaryName = "zrfbench.md";
constexpr const char *growthHeading = "zrfgen ps/(N log2 N)";
constexpr int lengthWidth = 5;

std::string timeHeading(const Timing &contender) {
    return contender.label + " ns";
}

std::string ratioHeading(const Row &row, std::size_t peer) {
    return row.timings[peer].label + "/" + row.timings[0].label;
}

int widthUnder(const std::string &heading) {
    constexpr std::size_t narrowest = 10; // has room for the time of the longest transforms
    return static_cast<int>(std::max(heading.size(), narrowest)) + 2;
}

void printColumn(const std::string &heading) {
    std::printf("%*s", widthUnder(heading), heading.c_str());
}

void printHeading(const Table &table) {
    const Row &row = table.rows[0];
    std::printf("\n%s\n%*s", table.title.c_str(), lengthWidth, table.byOrder ? "order" : "N");
    for (const Timing &contender : row.timings)
        printColumn(timeHeading(contender));
    for (std::size_t peer = 1; peer < row.timings.size(); ++peer)
        printColumn(ratioHeading(row, peer));
    if (table.byOrder)
        printColumn(growthHeading);
    std::printf("\n");
}

void printNumber(const std::string &heading, int decimals, double number) {
    if (std::isnan(number))
        std::printf("%*s", widthUnder(heading), "-");
    else
        std::printf("%*.*f", widthUnder(heading), decimals, number);
}

// In picoseconds: level as long as the time grows no faster than the operations of a fast transform.
double growth(const Row &row) {
    return 1000 * row.timings[0].nanoseconds / std::ldexp(row.length, row.length);
}

void printRow(const Row &row, bool byOrder) {
    std::printf("%*d", lengthWidth, row.length);
    for (const Timing &timing : row.timings)
        printNumber(timeHeading(timing), 1, timing.nanoseconds);
    for (std::size_t peer = 1; peer < row.timings.size(); ++peer)
        printNumber(ratioHeading(row, peer), 2, row.ratio(peer));
    if (byOrder)
        printNumber(growthHeading, 0, growth(row));
    std::printf("\n");
}

// Over the lengths that the peer can do; not a number if there are none.
double geometricMean(const std::vector<Row> &rows, std::size_t peer) {
    double sum = 0;
    int count = 0;
    for (const Row &row : rows)
        if (!std::isnan(row.ratio(peer))) {
            sum += std::log(row.ratio(peer));
            ++count;
        }
    return std::exp(sum / count);
}

// " 14 16", or " none".
std::string lengthsWherePeerIsAhead(const Table &table, std::size_t peer) {
    std::string lengths;
    for (const Row &row : table.rows)
        if (row.ratio(peer) < 1)
            lengths += " " + std::to_string(row.length);
    return lengths.empty() ? " none" : lengths;
}

void printSummary(const Table &table) {
    const Row &first = table.rows[0];
    int width = lengthWidth;
    for (const Timing &contender : first.timings)
        width += widthUnder(timeHeading(contender));
    std::printf("%-*s", width, "geometric mean");
    for (std::size_t peer = 1; peer < first.timings.size(); ++peer)
        printNumber(ratioHeading(first, peer), 2, geometricMean(table.rows, peer));
    std::printf("\n");
    for (std::size_t peer = 1; peer < first.timings.size(); ++peer)
        std::printf("%s is ahead at:%s\n", first.timings[peer].label.c_str(),
                    lengthsWherePeerIsAhead(table, peer).c_str());
}

std::ofstream opened(const std::filesystem::path &path) {
    std::ofstream file(path);
    if (!file)
        throw std::runtime_error("cannot write to " + path.string() + "; name another output directory");
    return file;
}

} // namespace

Report::Report(const std::filesystem::path &directory) : directory(directory) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    tsv = opened(directory / tsvName);
    summary = opened(directory / summaryName);
    tsv << "table\tlength\tpeer\tours_ns\tpeer_ns\tratio\n";
    summary << "| | peer | mean | least | most | the peer is ahead at |\n|---|---|---:|---:|---:|---|\n";
}

void Report::add(const Table &table) {
    printHeading(table);
    for (const Row &row : table.rows)
        printRow(row, table.byOrder);
    printSummary(table);
    write(table);
    summarise(table);
}

void Report::write(const Table &table) {
    for (const Row &row : table.rows)
        for (std::size_t peer = 1; peer < row.timings.size(); ++peer)
            if (!std::isnan(row.ratio(peer)))
                tsv << table.title << '\t' << row.length << '\t' << row.timings[peer].label << '\t'
                    << row.timings[0].nanoseconds << '\t' << row.timings[peer].nanoseconds << '\t'
                    << row.ratio(peer) << '\n';
}

void Report::summarise(const Table &table) {
    for (std::size_t peer = 1; peer < table.rows[0].timings.size(); ++peer) {
        double least = HUGE_VAL, most = 0;
        for (const Row &row : table.rows) {
            least = std::fmin(least, row.ratio(peer));
            most = std::fmax(most, row.ratio(peer));
        }
        summary << std::fixed << std::setprecision(2) << "| " << (peer == 1 ? table.title : "") << " | "
                << table.rows[0].timings[peer].label << " | " << geometricMean(table.rows, peer) << " | "
                << least << " | " << most << " |" << lengthsWherePeerIsAhead(table, peer) << " |\n";
    }
}

void Report::drawPlot() {
    tsv.close();
    summary.close();
    if (!tsv || !summary)
        throw std::runtime_error("cannot write to " + directory.string() + "; is the disk full?");
    // The script reads and writes in the current directory, so no file name passes through the shell.
    std::filesystem::current_path(directory);
    if (std::system("gnuplot '" PLOT_SCRIPT "'") != 0)
        throw std::runtime_error("gnuplot drew no zrfbench.svg; is the package gnuplot-nox installed?");
}

} // namespace zrfgen::bench
