// What is timed. Each family has a file of its own that names its contests.
#pragma once

#include "harness.h"

#include <functional>
#include <string>
#include <vector>

namespace zrfgen::bench {

struct Contest {
    std::string title;
    bool byOrder;             // the lengths are orders, for 2^order elements
    std::vector<int> lengths; // those that the library can do
    std::function<std::vector<Contender>(int length)> contenders; // zrfgen first, then its peers
};

std::vector<Contest> complexDftContests();
std::vector<Contest> realForwardContests();
std::vector<Contest> realInverseContests();
std::vector<Contest> hartleyContests();
std::vector<Contest> walshHadamardContests();
std::vector<Contest> dct4Contests();
std::vector<Contest> callContests();

} // namespace zrfgen::bench
