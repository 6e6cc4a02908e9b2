// zrfaccuracy: writes a table of the complex DFTs' errors beside FFTW's.
#include "accuracy_table.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

namespace zrfgen::bench {
namespace {

std::vector<AccuracyRow> measureAll() {
    std::vector<AccuracyRow> rows;
    for (int length = 2; length <= 64; ++length)
        rows.push_back({length, measureAccuracy<float>(length), measureAccuracy<double>(length)});
    return rows;
}

void run(const std::string &fileName) {
    std::ofstream file(fileName); // first of all, since measuring takes a while
    if (!file)
        throw std::runtime_error("cannot write to " + fileName + "; name another file");
    const std::vector<AccuracyRow> rows = measureAll();
    writeTable(file, rows);
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
