// Runs the fuzz target by any compiler and on both ABIs: with random inputs, or with those of files. The
// options are named as libFuzzer's.
#include "calls.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr char findingName[] = "zrffuzz-finding";
std::vector<std::uint8_t> input(64);

// Keeps the input at which the program dies.
void keepInput(int signal) {
    std::ofstream(findingName, std::ios::binary).write(reinterpret_cast<char *>(input.data()), input.size());
    std::fprintf(stderr, "zrffuzz: signal %d in %s; to repeat it: zrffuzz %s\n", signal, runningCall(),
                 findingName);
    std::_Exit(1);
}

} // namespace

int main(int count, char **arguments) {
    unsigned long seconds = 10, runs = -1ul, seed = 1;
    const std::pair<std::string, unsigned long *> options[] = {
        {"-max_total_time=", &seconds}, {"-runs=", &runs}, {"-seed=", &seed}};
    for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT})
        std::signal(signal, keepInput);
    bool isReplay = false;
    for (const std::string &argument : std::vector<std::string>(arguments + 1, arguments + count)) {
        const auto option = std::ranges::find_if(
            options, [&](const auto &option) { return argument.starts_with(option.first); });
        if (option != std::end(options)) {
            *option->second = std::strtoul(argument.c_str() + option->first.size(), nullptr, 10);
            continue;
        }
        std::ifstream file(argument, std::ios::binary);
        if (!file) {
            std::cerr << "zrffuzz: " << argument << " is neither a file nor one of the options -runs=N, "
                      << "-max_total_time=SECONDS and -seed=N\n";
            return 2;
        }
        input.assign(std::istreambuf_iterator<char>(file), {});
        LLVMFuzzerTestOneInput(input.data(), input.size());
        std::cout << argument << ": no fault in " << runningCall() << '\n';
        isReplay = true;
    }
    if (isReplay)
        return 0;

    std::mt19937_64 random(seed);
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(seconds);
    unsigned long done = 0;
    for (; done < runs && Clock::now() < end; ++done) {
        std::ranges::generate(input, [&] { return static_cast<std::uint8_t>(random()); });
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::cout << done << " calls without a fault, by seed " << seed << '\n';
    return 0;
}
