// zrfaccuracy: writes tables of the transforms' errors beside FFTW's.
#include "accuracy_table.h"

#include <zrfgen/transforms.h>

#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

namespace zrfgen::bench {
namespace {

AccuracyTable measured(const char *title, const char *element, const char *family, Planner<float> single,
                       Planner<double> wide) {
    AccuracyTable table{title, element, {}};
    for (int length = zrfShortestLength; length <= zrfLongestLength; ++length)
        table.rows.push_back({length, measureAccuracy<float>(family, length, single),
                              measureAccuracy<double>(family, length, wide)});
    return table;
}

std::vector<AccuracyTable> tables() {
    return {measured("Complex DFT, forward", "Complex", "DFTFwd_CToC", planComplexForward<float>,
                     planComplexForward<double>),
            measured("Real DFT, forward", "Float", "DFTFwd_RToCCS", planRealForward<float>,
                     planRealForward<double>),
            measured("Real DFT, inverse", "Float", "DFTInv_CCSToR", planRealInverse<float>,
                     planRealInverse<double>),
            measured("Hartley", "Float", "Hartley", planHartley<float>, planHartley<double>)};
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
