#include "accuracy_table.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace zrfgen::bench {
namespace {

const std::string head = R"(# Accuracy

`./dev accuracy` measures zrfgen beside FFTW on the same data and writes this file.

- **zrfgen**, **FFTW**: relative root-mean-square error of the unscaled transform over )" +
                         std::to_string(randomVectors) + R"( random vectors (numbers
  uniform in [-1, 1)) against the defining sum in quad precision. FFTW is planned with `FFTW_PATIENT`, which chooses
  by time: its column may change from run to run.
- **ratio**: zrfgen by FFTW. Below 1, zrfgen is the more accurate.
- **impulse**: zrfgen's largest absolute error, over 1 at each input; for the complex DFT over 1 and i, forward and
  inverse.
)";

std::string threeDigits(double value) {
    char text[16];
    std::snprintf(text, sizeof text, "%#.3g", value);
    return value == 0 ? "0" : text;
}

std::string cells(const Accuracy &accuracy) {
    return " " + threeDigits(accuracy.zrfgen) + " | " + threeDigits(accuracy.fftw) + " | " +
           threeDigits(accuracy.ratio()) + " | " + threeDigits(accuracy.impulse) + " |";
}

double meanRatio(const std::vector<AccuracyRow> &rows, Accuracy AccuracyRow::*element) {
    double sum = 0;
    for (const AccuracyRow &row : rows)
        sum += std::log((row.*element).ratio());
    return std::exp(sum / rows.size());
}

// The lengths whose error is more than a tenth above FFTW's.
std::string lengthsBeyond(const std::vector<AccuracyRow> &rows, Accuracy AccuracyRow::*element) {
    std::string list;
    for (const AccuracyRow &row : rows)
        if ((row.*element).ratio() > 1.1)
            list += " " + std::to_string(row.length);
    return list.empty() ? " none" : list;
}

void writeTable(std::ostream &file, const AccuracyTable &table) {
    file << "\n## " << table.title << "\n\n| N | " << table.element
         << "32: zrfgen | FFTW | ratio | impulse | " << table.element
         << "64: zrfgen | FFTW | ratio | impulse |\n"
         << "|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n";
    for (const AccuracyRow &row : table.rows)
        file << "| " << row.length << " |" << cells(row.singlePrecision) << cells(row.doublePrecision)
             << '\n';
    file << "| geometric mean | | | " << threeDigits(meanRatio(table.rows, &AccuracyRow::singlePrecision))
         << " | | | | " << threeDigits(meanRatio(table.rows, &AccuracyRow::doublePrecision)) << " | |\n";
}

} // namespace

void writePage(std::ostream &file, const std::vector<AccuracyTable> &tables) {
    file << head;
    for (const AccuracyTable &table : tables)
        writeTable(file, table);
    file << "\n## More than a tenth above FFTW\n\n"
         << "Nearly all are primes and their multiples, made by convolution: it passes every output through "
            "two transforms\nand a product, where a direct sum rounds less and takes longer.\n\n";
    for (const AccuracyTable &table : tables)
        file << "- " << table.title << ": " << table.element << "32"
             << lengthsBeyond(table.rows, &AccuracyRow::singlePrecision) << "; " << table.element << "64"
             << lengthsBeyond(table.rows, &AccuracyRow::doublePrecision) << '\n';
}

} // namespace zrfgen::bench
