// Runs the fuzz target by any compiler and on both ABIs: with random inputs, or with those of files. The
// options are named as libFuzzer's.
#include "calls.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
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
    unsigned long runs = 100000, seed = 1;
    for (const int signal : {SIGSEGV, SIGILL, SIGFPE, SIGABRT})
        std::signal(signal, keepInput);
#ifdef SIGBUS
    std::signal(SIGBUS, keepInput);
#endif
    for (int i = 1; i < count; ++i) {
        const char *const argument = arguments[i];
        if (std::sscanf(argument, "-runs=%lu", &runs) == 1 || std::sscanf(argument, "-seed=%lu", &seed) == 1)
            continue;
        std::ifstream file(argument, std::ios::binary);
        if (!file) {
            std::cerr << "zrffuzz: " << argument << " is neither a file nor -runs=N nor -seed=N\n";
            return 2;
        }
        input.assign(std::istreambuf_iterator<char>(file), {});
        LLVMFuzzerTestOneInput(input.data(), input.size());
        std::cout << argument << ": no fault in " << runningCall() << '\n';
        runs = 0;
    }
    std::mt19937_64 random(seed);
    for (unsigned long done = 0; done < runs; ++done) {
        std::ranges::generate(input, [&] { return static_cast<std::uint8_t>(random()); });
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::cout << runs << " random calls without a fault\n";
    return 0;
}
