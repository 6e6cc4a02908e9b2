#include "target/target.h"

#include "target/avx2.h"
#include "target/avx512.h"
#include "target/sse3.h"

#include <algorithm>
#include <stdexcept>

namespace zrfgen::gen {

const std::vector<Target> &targets() {
    static const Sse3 sse3;
    static const Avx2 avx2(sse3);
    static const Avx512 avx512(avx2);
    static const std::vector<Target> all = {
        {"sse3", 16, 16, false, true, {"-msse3"}, "sse3.h", &sse3},
        {"i386", 16, 8, false, false, {"-msse3"}, "sse3.h", &sse3},
        {"x86-64-v3", 32, 16, true, true, {"-mavx2"}, "avx2.h", &avx2},
        {"x86-64-v4", 64, 32, true, true, {"-mavx512f", "-mavx512vl", "-mavx512dq"}, "avx512.h", &avx512},
    };
    return all;
}

const Target &targetNamed(std::string_view name) {
    const auto target = std::ranges::find(targets(), name, &Target::name);
    if (target != targets().end())
        return *target;
    std::string names;
    for (const Target &other : targets())
        names += " " + other.name;
    throw std::invalid_argument("no target '" + std::string(name) + "'; there are:" + names);
}

const InstructionSet &Target::instructions() const {
    if (instructionSet == nullptr)
        throw std::invalid_argument("target " + name + ": no instructions are known for vectors of " +
                                    std::to_string(vectorBytes) + " bytes");
    return *instructionSet;
}

} // namespace zrfgen::gen
