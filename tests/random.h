// Random numbers from -1 to 1, each with all the bits that its type has: the same in every build and run.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>
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

// Real or complex.
template <class Element> std::vector<Element> randomElements(std::size_t count, std::uint64_t seed = 1) {
    RandomNumbers random(seed);
    std::vector<Element> elements(count);
    std::ranges::generate(elements, [&] {
        if constexpr (std::is_floating_point_v<Element>)
            return random.next<Element>();
        else
            return Element{random.next<typename Element::value_type>(),
                           random.next<typename Element::value_type>()};
    });
    return elements;
}
