// Times contenders against one another.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zrfgen::bench {

struct Contender {
    std::string label;
    std::function<void(std::int64_t times)> run; // does the work so many times; empty if it cannot
};

struct Timing {
    std::string label;
    double nanoseconds; // for the work done once; not a number if the contender cannot do it
};

struct Effort {
    int repetitions;
    double secondsEach;
};

// The contenders' timings, in their order.
std::vector<Timing> timeContenders(const std::vector<Contender> &contenders, Effort effort);

// Takes over what the same contenders did faster another time.
void keepFaster(std::vector<Timing> &timings, const std::vector<Timing> &others);

} // namespace zrfgen::bench
