// What is timed. Each family has a file of its own that names its contests.
#pragma once

#include "harness.h"

#include <functional>
#include <string>
#include <vector>

namespace zrfgen::bench {

struct Contest {
    std::string title;
    std::string lengthName;   // "N", or "order" where the length is 2^order
    std::vector<int> lengths; // those that the library has a kernel for
    std::function<std::vector<Contender>(int length)> contenders; // zrfgen first, then its peers
};

std::vector<Contest> complexDftContests();
std::vector<Contest> realForwardContests();
std::vector<Contest> realInverseContests();
std::vector<Contest> hartleyContests();
std::vector<Contest> walshHadamardContests();

} // namespace zrfgen::bench
