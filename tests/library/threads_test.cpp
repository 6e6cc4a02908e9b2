// All families from several threads at once: with shared sources and shared plans, as far as these may be
// shared, each thread gets the bits that one alone gets.
#include "exports.h"
#include "random.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace {

constexpr int mostElements = 8192;

// What every thread reads.
const void *sourceOf(bool isSingle) {
    static const auto single = randomElements<Float32>(mostElements);
    static const auto wide = randomElements<Float64>(mostElements);
    return isSingle ? static_cast<const void *>(single.data()) : wide.data();
}

struct Job {
    std::string name;
    std::size_t bytes;
    std::function<Status(void *dst)> run;
};

void addDct4Jobs(std::vector<Job> &jobs, bool isSingle) {
    const Dct4Functions dct4(isSingle);
    const void *source = sourceOf(isSingle);
    for (int32_t length = 2; length <= mostElements; length *= 2) {
        const auto makePlan = [=] {
            Dct4Plan *plan = nullptr;
            EXPECT_EQ(dct4.initAlloc(&plan, length), zrfStatusOk);
            return std::shared_ptr<Dct4Plan>(plan, dct4.release);
        };
        // Longer plans have a work table, which every call writes. Calls take no count of the plan's owners:
        // it would put the threads in an order that hides their races.
        const auto shared = length < 64 ? makePlan() : nullptr;
        jobs.push_back({"DCT-IV of " + std::to_string(length),
                        length * (isSingle ? sizeof(Float32) : sizeof(Float64)), [=](void *dst) {
                            return dct4.transform(source, dst, shared ? shared.get() : makePlan().get());
                        }});
    }
}

std::vector<Job> allJobs() {
    std::vector<Job> jobs;
    addDct4Jobs(jobs, true);
    addDct4Jobs(jobs, false);
    for (const Export &entry : allExports())
        if (entry.entry == Entry::FixedSize || entry.entry == Entry::WhtOrder)
            jobs.push_back({std::string(entry.name), entry.dstCount(entry.size) * entry.numberBytes(),
                            [&entry, source = sourceOf(entry.isSingle)](void *dst) {
                                return entry.transform(source, dst, 0, zrfScaleBySqrtN, nullptr);
                            }});
    return jobs;
}

TEST(Threads, GetTheBitsOfOneAlone) {
    constexpr std::size_t threadCount = 4, rounds = 5;
    const auto jobs = allJobs();
    std::vector<std::vector<char>> expected;
    for (const Job &job : jobs) {
        expected.emplace_back(job.bytes);
        ASSERT_EQ(job.run(expected.back().data()), zrfStatusOk) << job.name;
    }
    std::vector<std::string> differing(threadCount);
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < threadCount; ++number)
        threads.emplace_back([&, number] {
            for (std::size_t i = 0; i < rounds * jobs.size(); ++i) {
                // By turns the same job as the other threads, and one far from theirs.
                const std::size_t j = (i + i % 2 * number * jobs.size() / threadCount) % jobs.size();
                std::vector<char> result(jobs[j].bytes);
                if (jobs[j].run(result.data()) != zrfStatusOk || result != expected[j])
                    differing[number] = jobs[j].name;
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(differing, std::vector<std::string>(threadCount));
}

} // namespace
