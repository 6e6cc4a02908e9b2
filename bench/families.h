// What is timed. Each family has a file that names its contests.
#pragma once

#include "harness.h"

#include <functional>
#include <string>
#include <vector>

namespace zrfgen::bench {

struct Contest {
    std::string title;
    bool byOrder;                                               // the sizes are orders, for 2^order elements
    std::vector<int> sizes;                                     // lengths or orders
    std::function<std::vector<Contender>(int size)> contenders; // zrfgen first, then its peers
};

std::vector<Contest> complexDftContests();
std::vector<Contest> realForwardContests();
std::vector<Contest> realInverseContests();
std::vector<Contest> hartleyContests();
std::vector<Contest> walshHadamardContests();
std::vector<Contest> dct4Contests();
std::vector<Contest> callContests();
std::vector<Contest> manyContests();

struct Family {
    std::string name; // on the command line
    std::vector<Contest> (*contests)();
};

inline const std::vector<Family> families = {{"complex", complexDftContests},
                                             {"real-forward", realForwardContests},
                                             {"real-inverse", realInverseContests},
                                             {"hartley", hartleyContests},
                                             {"walsh-hadamard", walshHadamardContests},
                                             {"dct4", dct4Contests},
                                             {"calls", callContests},
                                             {"many", manyContests}};

} // namespace zrfgen::bench
