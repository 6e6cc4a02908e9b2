#include "harness.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace zrfgen::bench {
namespace {

// Keeps the fastest repetition of each: what disturbs a measurement only ever makes it slower. Processor time
// does not count what other processes take.
class FastestReporter : public benchmark::BenchmarkReporter {
public:
    std::map<std::string, double> fastest; // nanoseconds by label

    bool ReportContext(const Context &) override { return true; }

    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &run : runs)
            if (run.run_type == Run::RT_Iteration) {
                const double time = run.GetAdjustedCPUTime();
                const auto best = fastest.try_emplace(run.run_name.function_name, time).first;
                best->second = std::min(best->second, time);
            }
    }
};

void interleaveRepetitions() {
    char program[] = "zrfbench", flag[] = "--benchmark_enable_random_interleaving=true";
    char *arguments[] = {program, flag, nullptr};
    int count = 2;
    benchmark::Initialize(&count, arguments);
}

void measure(benchmark::State &state, const Contender &contender) {
    // Large beside the cost of calling run(), but one call at a time where that takes long.
    const std::int64_t batch = std::min<std::int64_t>(128, state.max_iterations);
    while (state.KeepRunningBatch(batch))
        contender.run(batch);
}

} // namespace

// One run for each set of contenders: their short repetitions are shuffled within a fraction of a second, so
// that a slow spell of the machine hits all of them alike. In one run for all sets they would lie minutes
// apart.
std::vector<Timing> timeContenders(const std::vector<Contender> &contenders, Effort effort) {
    interleaveRepetitions();
    for (const Contender &contender : contenders)
        if (contender.run)
            benchmark::RegisterBenchmark(contender.label.c_str(), measure, contender)
                ->Repetitions(effort.repetitions)
                ->MinTime(effort.secondsEach);
    FastestReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter, ".");
    benchmark::ClearRegisteredBenchmarks();

    std::vector<Timing> timings;
    for (const Contender &contender : contenders)
        timings.push_back({contender.label, contender.run ? reporter.fastest.at(contender.label) : NAN});
    return timings;
}

void keepFaster(std::vector<Timing> &timings, const std::vector<Timing> &others) {
    for (std::size_t i = 0; i < timings.size(); ++i)
        timings[i].nanoseconds = std::min(timings[i].nanoseconds, others[i].nanoseconds);
}

} // namespace zrfgen::bench
