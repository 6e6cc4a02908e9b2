// zrfaccuracy: writes tables of the transforms' errors beside FFTW's.
#include "accuracy_table.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

namespace zrfgen::bench {
namespace {

using Measure = Accuracy (*)(int length);

AccuracyTable measureAll(const char *title, const char *element, Measure singlePrecision,
                         Measure doublePrecision) {
    AccuracyTable table{title, element, {}};
    for (int length = 2; length <= 64; ++length)
        table.rows.push_back({length, singlePrecision(length), doublePrecision(length)});
    return table;
}

std::vector<AccuracyTable> tables() {
    return {measureAll("Complex DFT, forward", "Complex", complexForwardAccuracy<float>,
                       complexForwardAccuracy<double>),
            measureAll("Real DFT, forward", "Float", realForwardAccuracy<float>, realForwardAccuracy<double>),
            measureAll("Real DFT, inverse", "Float", realInverseAccuracy<float>, realInverseAccuracy<double>),
            measureAll("Hartley", "Float", hartleyAccuracy<float>, hartleyAccuracy<double>)};
}

void run(const std::string &fileName) {
    std::ofstream file(fileName); // first of all, since measuring takes a while
    if (!file)
        throw std::runtime_error("cannot write to " + fileName + "; name another file");
    writePage(file, tables());
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + fileName + "; is the disk full?");
}

} // namespace
} // namespace zrfgen::bench

int main(int argc, char **argv) {
    try {
        if (argc != 2 || argv[1][0] == '-')
            throw std::invalid_argument("usage: zrfaccuracy FILE (the Markdown file to write)");
        zrfgen::bench::run(argv[1]);
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "zrfaccuracy: %s\n", error.what());
        return 1;
    }
}
