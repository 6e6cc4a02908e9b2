// A kernel as it is settled beside the same kernel by another recipe: whether their bits agree, and their
// times.
#include "harness.h"
#include "kernels.h"
#include "tests/random.h"

#include <cstdio>
#include <cstring>

extern "C" {
Status ZRF_CALL settled_body(const void *src, void *dst, std::int32_t flag);
Status ZRF_CALL tried_body(const void *src, void *dst, std::int32_t flag);
}

namespace {

// Room for a spectrum with its zeros.
struct alignas(64) Array {
    Real values[elements + 2] = {};
};

int differences(int inputs) {
    RandomNumbers random(1);
    int count = 0;
    for (int input = 0; input < inputs; ++input) {
        Array source, settled, tried;
        for (Real &value : source.values)
            value = random.next<Real>();
        settled_body(&source, &settled, zrfScaleBySqrtN);
        tried_body(&source, &tried, zrfScaleBySqrtN);
        count += std::memcmp(&settled, &tried, sizeof settled) != 0;
    }
    return count;
}

} // namespace

int main() {
    constexpr int inputs = 100000;
    std::printf("bits            %d of %d random inputs give other bits\n", differences(inputs), inputs);
    Array source, destination;
    const auto calls = [&](auto kernel) {
        return [&, kernel](std::int64_t times) {
            for (std::int64_t i = 0; i < times; ++i)
                kernel(&source, &destination, zrfScaleNone);
        };
    };
    const auto timings =
        zrfgen::bench::timeContenders({{"settled", calls(settled_body)}, {"tried", calls(tried_body)}},
                                      {.repetitions = 40, .secondsEach = 0.01});
    std::printf("time            %.1f ns settled, %.1f ns tried: %.2f of the settled kernel's\n",
                timings[0].nanoseconds, timings[1].nanoseconds,
                timings[1].nanoseconds / timings[0].nanoseconds);
}
