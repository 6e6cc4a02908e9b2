#include "algebra/decomposition.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>

namespace zrfgen::gen {

using Method = Decomposition::Method;
using Twiddles = Decomposition::Twiddles;

namespace {

struct Word {
    const char *text;
    Method method;
    std::size_t factors;
    Twiddles twiddles = Twiddles::Shortest;
    bool namesLength = false; // the first argument is the length
};

const Word words[] = {
    {"sumDifference", Method::SumDifference, 0, Twiddles::Shortest, true},
    {"byColumn", Method::ByColumn, 2},
    {"PF", Method::PrimeFactor, 2},
    {"PFinside", Method::PrimeFactorInside, 2},
    {"T", Method::CooleyTukey, 2},
    {"TP", Method::CooleyTukey, 2, Twiddles::Products},
    {"TF", Method::CooleyTukey, 2, Twiddles::Folded},
    {"splitRadix", Method::SplitRadix, 2},
    {"realLanes", Method::RealLanes, 1},
    {"realRader", Method::RealRader, 2},
    {"complexRader", Method::ComplexRader, 2},
    {"bluestein", Method::Bluestein, 1, Twiddles::Shortest, true},
};

int lengthOf(Method method, const std::vector<Decomposition> &factors) {
    switch (method) {
    case Method::PrimeFactor:
    case Method::PrimeFactorInside:
    case Method::CooleyTukey:
        return factors[0].length * factors[1].length;
    case Method::SplitRadix:
        return 2 * factors[0].length;
    case Method::RealRader:
    case Method::ComplexRader:
        return factors[0].length + 1;
    default:
        return factors[0].length;
    }
}

bool isPrime(int n) {
    for (int divisor = 2; divisor * divisor <= n; ++divisor)
        if (n % divisor == 0)
            return false;
    return n > 1;
}

bool isBlock(const Decomposition &part) {
    return part.method == Method::Butterfly || part.method == Method::SumDifference ||
           part.method == Method::RealRader;
}

// What is wrong with a decomposition whose factors are sound, or nothing.
std::string fault(const Decomposition &d) {
    const auto length = [&](int factor) { return d.factors[factor].length; };
    for (const Decomposition &factor : d.factors)
        if (factor.method == Method::ComplexRader || factor.method == Method::Bluestein)
            return "the convolution " + describe(factor) + " makes whole kernels only";
    switch (d.method) {
    case Method::Butterfly:
        if (d.length != 2 && d.length != 4 && (d.length < 3 || d.length % 2 == 0))
            return "there are blocks of 2, of 4 and of odd lengths only";
        break;
    case Method::SumDifference:
        if (d.length != 5)
            return "only the block of 5 has this form";
        break;
    case Method::ByColumn:
        if (length(0) != length(1) || !isBlock(d.factors[0]) || !isBlock(d.factors[1]))
            return "two forms of one block are wanted";
        break;
    case Method::PrimeFactorInside:
        if (d.factors[0].method != Method::CooleyTukey || d.factors[0].twiddles == Twiddles::Folded)
            return "the first factor must be a Cooley-Tukey step without folded twiddles";
        [[fallthrough]];
    case Method::PrimeFactor:
        if (std::gcd(length(0), length(1)) != 1)
            return "the factors " + std::to_string(length(0)) + " and " + std::to_string(length(1)) +
                   " are not coprime";
        break;
    case Method::CooleyTukey:
        if (d.twiddles == Twiddles::Folded && d.factors[0] != Decomposition(4))
            return "twiddles fold into blocks of 4 only";
        break;
    case Method::SplitRadix:
        if (length(0) != 2 * length(1))
            return "a half of the length and a quarter of it are wanted";
        break;
    case Method::RealLanes:
        break;
    case Method::RealRader:
    case Method::ComplexRader:
        if (length(0) != length(1) || !isPrime(d.length))
            return "two transforms of a length one below a prime are wanted";
        break;
    case Method::Bluestein:
        if (d.length < 3 || d.length % 2 == 0)
            return "the chirps are those of odd lengths";
        if (length(0) < 2 * d.length - 1)
            return "the convolution needs a length of at least " + std::to_string(2 * d.length - 1);
        break;
    }
    return "";
}

[[noreturn]] void refuse(SourceLine line, const std::string &what, const std::string &why) {
    const std::string place =
        line.line == 0 ? "" : std::string(line.file) + ":" + std::to_string(line.line) + ": ";
    throw DecompositionError(place + what + ": " + why);
}

Decomposition step(Method method, std::vector<Decomposition> factors, SourceLine line,
                   Twiddles twiddles = Twiddles::Shortest) {
    const int length = lengthOf(method, factors);
    return {method, length, std::move(factors), line, twiddles};
}

} // namespace

Decomposition::Decomposition(int length, SourceLine line)
    : Decomposition(Method::Butterfly, length, {}, line) {}

Decomposition::Decomposition(Method method, int length, std::vector<Decomposition> factors, SourceLine line,
                             Twiddles twiddles)
    : method(method), length(length), factors(std::move(factors)), twiddles(twiddles) {
    const std::string why = fault(*this);
    if (!why.empty())
        refuse(line, describe(*this), why);
}

Decomposition sumDifference(int length, SourceLine line) {
    return {Method::SumDifference, length, {}, line};
}

Decomposition byColumn(Decomposition first, Decomposition others, SourceLine line) {
    return step(Method::ByColumn, {first, others}, line);
}

Decomposition PF(Decomposition first, Decomposition second, SourceLine line) {
    return step(Method::PrimeFactor, {first, second}, line);
}

Decomposition PFinside(Decomposition outer, Decomposition inner, SourceLine line) {
    return step(Method::PrimeFactorInside, {outer, inner}, line);
}

Decomposition T(Decomposition first, Decomposition second, SourceLine line) {
    return step(Method::CooleyTukey, {first, second}, line);
}

Decomposition TP(Decomposition first, Decomposition second, SourceLine line) {
    return step(Method::CooleyTukey, {first, second}, line, Twiddles::Products);
}

Decomposition TF(Decomposition first, Decomposition second, SourceLine line) {
    return step(Method::CooleyTukey, {first, second}, line, Twiddles::Folded);
}

Decomposition splitRadix(Decomposition half, Decomposition quarter, SourceLine line) {
    return step(Method::SplitRadix, {half, quarter}, line);
}

Decomposition realLanes(Decomposition decomposition, SourceLine line) {
    return step(Method::RealLanes, {decomposition}, line);
}

Decomposition realRader(Decomposition there, Decomposition back, SourceLine line) {
    return step(Method::RealRader, {there, back}, line);
}

Decomposition realRader(Decomposition both, SourceLine line) {
    return realRader(both, both, line);
}

Decomposition complexRader(Decomposition there, Decomposition back, SourceLine line) {
    return step(Method::ComplexRader, {there, back}, line);
}

Decomposition bluestein(int length, Decomposition longer, SourceLine line) {
    return {Method::Bluestein, length, {longer}, line};
}

Decomposition ofLength(int length, Decomposition decomposition, SourceLine line) {
    if (decomposition.length != length)
        refuse(line, describe(decomposition),
               "has length " + std::to_string(decomposition.length) + " in the row of " +
                   std::to_string(length));
    return decomposition;
}

std::string describe(const Decomposition &decomposition) {
    const std::string length = std::to_string(decomposition.length);
    if (decomposition.method == Method::Butterfly)
        return length;
    const Word &word = *std::ranges::find_if(words, [&](const Word &other) {
        return other.method == decomposition.method && other.twiddles == decomposition.twiddles;
    });
    std::string arguments = word.namesLength ? ", " + length : "";
    for (const Decomposition &factor : decomposition.factors)
        arguments += ", " + describe(factor);
    return word.text + ("(" + arguments.substr(2) + ")");
}

namespace {

class Parser {
public:
    explicit Parser(const std::string &text) : text(text) {}

    Decomposition whole() {
        const Decomposition result = decomposition();
        if (next != text.size())
            refuse("'" + text.substr(next) + "' is too much");
        return result;
    }

private:
    Decomposition decomposition() {
        const std::string name = taken([](unsigned char c) { return std::isalnum(c) != 0; });
        if (!name.empty() && std::isdigit(static_cast<unsigned char>(name[0])))
            return {number(name), noLine};
        const auto word = std::ranges::find(words, name, &Word::text);
        if (word == std::end(words))
            refuse("'" + name + "' is no word of a recipe");
        expect('(');
        int length = 0;
        std::vector<Decomposition> factors;
        if (word->namesLength) {
            length = number(taken([](unsigned char c) { return std::isdigit(c) != 0; }));
            if (word->factors > 0)
                expect(',');
        }
        for (std::size_t factor = 0; factor < word->factors; ++factor) {
            if (factor > 0)
                expect(',');
            factors.push_back(decomposition());
        }
        expect(')');
        if (!word->namesLength)
            length = lengthOf(word->method, factors);
        return {word->method, length, factors, noLine, word->twiddles};
    }

    int number(const std::string &digits) const {
        if (digits.empty() || digits.size() > 4 || digits.find_first_not_of("0123456789") != digits.npos)
            refuse("'" + digits + "' is no length");
        return std::stoi(digits);
    }

    template <class Belongs> std::string taken(Belongs belongs) {
        skipBlanks();
        const std::size_t first = next;
        while (next < text.size() && belongs(text[next]))
            ++next;
        const std::string result = text.substr(first, next - first);
        skipBlanks();
        return result;
    }

    void expect(char wanted) {
        if (next == text.size() || text[next] != wanted)
            refuse(std::string("'") + wanted + "' is wanted before '" + text.substr(next) + "'");
        ++next;
    }

    void skipBlanks() {
        while (next < text.size() && text[next] == ' ')
            ++next;
    }

    [[noreturn]] void refuse(const std::string &why) const { gen::refuse(noLine, text, why); }

    static constexpr SourceLine noLine{};
    const std::string &text;
    std::size_t next = 0;
};

} // namespace

Decomposition parsedDecomposition(const std::string &text) {
    return Parser(text).whole();
}

} // namespace zrfgen::gen
