// zrfbench: times the library's transforms beside other libraries'.
#include "families.h"
#include "harness.h"
#include "library.h"
#include "options.h"
#include "report.h"

#include <zrfgen/transforms.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <stdexcept>

namespace zrfgen::bench {
namespace {

std::vector<Contest> wantedContests(const Options &options) {
    std::vector<Contest> contests;
    for (const Family &family : options.families)
        std::ranges::move(family.contests(), std::back_inserter(contests));
    for (Contest &contest : contests)
        std::erase_if(contest.sizes, [&](int size) { return !options.wants(size); });
    std::erase_if(contests, [](const Contest &contest) { return contest.sizes.empty(); });
    if (contests.empty())
        throw std::runtime_error("no kernel has one of these lengths; choose others with --lengths");
    return contests;
}

Table measureOnce(const Contest &contest, Effort effort) {
    Table table{contest.title, contest.byOrder, {}};
    for (const int size : contest.sizes)
        table.rows.push_back({size, timeContenders(contest.contenders(size), effort)});
    return table;
}

// In several passes over everything, since a slow spell of the machine can outlast all repetitions of a
// length.
std::vector<Table> measure(const std::vector<Contest> &contests, bool quick) {
    const int passes = quick ? 2 : 4;
    const Effort effort = quick ? Effort{8, 0.001} : Effort{20, 0.004};
    std::vector<Table> tables;
    for (int pass = 1; pass <= passes; ++pass) {
        std::fprintf(stderr, "pass %d of %d\n", pass, passes);
        for (std::size_t i = 0; i < contests.size(); ++i) {
            const Table table = measureOnce(contests[i], effort);
            if (pass == 1)
                tables.push_back(table);
            for (std::size_t row = 0; row < table.rows.size(); ++row)
                keepFaster(tables[i].rows[row].timings, table.rows[row].timings);
        }
    }
    return tables;
}

void run(const Options &options) {
    const std::vector<Contest> contests = wantedContests(options);
    Report report(options.directory);
    for (const Table &table : measure(contests, options.quick))
        report.add(table);
    report.drawPlot();
}

} // namespace
} // namespace zrfgen::bench

int main(int argc, char **argv) {
    using namespace zrfgen::bench;
    try {
        const Options options = parseOptions(argc, argv);
        if (!options.answer.empty())
            std::fputs(options.answer.c_str(), stdout);
        else {
            const LibraryVersion *const version = zrfgenGetLibVersion();
            std::printf("%s %s, %s\n", version->libraryName, version->versionText, libraryFile().c_str());
            run(options);
        }
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "zrfbench: %s\n", error.what());
        return 1;
    }
}
