// Runs the fuzz target with random inputs, by any compiler and on both ABIs, or replays inputs from files.
#include "calls.h"

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

std::vector<std::uint8_t> input(64);

// Keeps the input at which the program dies.
void keepInput(int signal) {
    std::fprintf(stderr,
                 "zrffuzz: signal %d in %s; kept in zrffuzz-finding, replay: zrffuzz zrffuzz-finding\n",
                 signal, runningCall());
    if (std::FILE *file = std::fopen("zrffuzz-finding", "wb")) {
        std::fwrite(input.data(), 1, input.size(), file);
        std::fclose(file);
    }
    std::_Exit(1);
}

int usage() {
    std::cerr
        << "usage: zrffuzz [--seconds N | --runs N] [--seed N]   random calls, by default for 10 seconds\n"
           "       zrffuzz FILE...                              the calls of kept inputs\n";
    return 2;
}

} // namespace

int main(int count, char **arguments) {
    unsigned long seconds = 10, runs = 0, seed = 1;
    std::vector<std::string> files;
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        unsigned long *number = argument == "--seconds" ? &seconds
                                : argument == "--runs"  ? &runs
                                : argument == "--seed"  ? &seed
                                                        : nullptr;
        if (number == nullptr && argument.starts_with("-"))
            return usage();
        if (number == nullptr) {
            files.push_back(argument);
            continue;
        }
        char *end = arguments[i];
        if (++i < count)
            *number = std::strtoul(arguments[i], &end, 10);
        if (i == count || *end != 0 || end == arguments[i])
            return usage();
    }

    for (const std::string &name : files) {
        std::ifstream file(name, std::ios::binary);
        if (!file) {
            std::cerr << "zrffuzz: cannot read " << name << '\n';
            return 2;
        }
        input.assign(std::istreambuf_iterator<char>(file), {});
        LLVMFuzzerTestOneInput(input.data(), input.size());
        std::cout << name << ": no fault in " << runningCall() << '\n';
    }
    if (!files.empty())
        return 0;

    for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT})
        std::signal(signal, keepInput);
    std::mt19937_64 random(seed);
    const auto start = std::chrono::steady_clock::now();
    const auto elapsed = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    unsigned long done = 0;
    for (; runs != 0 ? done < runs : elapsed() < static_cast<double>(seconds); ++done) {
        for (std::uint8_t &byte : input)
            byte = static_cast<std::uint8_t>(random());
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::cout << done << " calls without a fault, " << static_cast<long>(done / elapsed())
              << " a second, seed " << seed << '\n';
    return 0;
}
