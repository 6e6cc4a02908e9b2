// Random numbers from -1 to 1, each with all the bits that its type has: the same in every build and run.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

class RandomNumbers {
public:
    explicit RandomNumbers(std::uint64_t seed) : state(seed) {}
    template <class Real> Real next() {
        state = state * 6364136223846793005 + 1442695040888963407;
        return static_cast<Real>(static_cast<std::int64_t>(state) >> 10) / (std::int64_t{1} << 53);
    }
    std::uint64_t bits() const { return state; } // that the last number was made of

private:
    std::uint64_t state;
};

template <class Real> std::vector<Real> randomNumbers(std::size_t count, std::uint64_t seed = 1) {
    RandomNumbers random(seed);
    std::vector<Real> numbers(count);
    std::ranges::generate(numbers, [&] { return random.next<Real>(); });
    return numbers;
}
