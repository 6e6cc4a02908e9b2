#include "accuracy_table.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace zrfgen::bench {
namespace {

const std::string head = R"(# Accuracy of the complex DFTs

`./dev accuracy` measures zrfgen beside FFTW on the same data and writes this file.

- **zrfgen**, **FFTW**: relative root-mean-square error of the unscaled forward transform over )" +
                         std::to_string(randomVectors) + R"( random vectors
  (real and imaginary parts uniform in [-1, 1)) against the defining sum in quad precision. FFTW is planned with
  `FFTW_PATIENT`, which chooses by time: its column may change from run to run.
- **ratio**: zrfgen by FFTW. Below 1, zrfgen is the more accurate.
- **impulse**: zrfgen's largest absolute error of a real or imaginary part, over 1 and i at each input, forward and
  inverse.

| N | Complex32: zrfgen | FFTW | ratio | impulse | Complex64: zrfgen | FFTW | ratio | impulse |
|---:|---:|---:|---:|---:|---:|---:|---:|---:|
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

} // namespace

void writeTable(std::ostream &file, const std::vector<AccuracyRow> &rows) {
    file << head;
    for (const AccuracyRow &row : rows)
        file << "| " << row.length << " |" << cells(row.complex32) << cells(row.complex64) << '\n';
    file << "| geometric mean | | | " << threeDigits(meanRatio(rows, &AccuracyRow::complex32)) << " | | | | "
         << threeDigits(meanRatio(rows, &AccuracyRow::complex64)) << " | |\n\n"
         << "More than a tenth above FFTW, in Complex32:" << lengthsBeyond(rows, &AccuracyRow::complex32)
         << "; in Complex64:" << lengthsBeyond(rows, &AccuracyRow::complex64)
         << ".\nThese are primes and their multiples: a convolution passes every output through two "
            "transforms "
            "and a product,\nwhere a direct sum rounds less and takes longer.\n";
}

} // namespace zrfgen::bench
