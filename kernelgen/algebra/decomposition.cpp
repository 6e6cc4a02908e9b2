#include "algebra/decomposition.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

namespace zrfgen::gen {

using enum Decomposition::Method;

namespace {

const RecipeWord *const words[] = {&PF,        &PFinside,      &T,         &TP,
                                   &TF,        &splitRadix,    &realLanes, &complexRader,
                                   &realRader, &sumDifference, &byColumn,  &bluestein};

bool isPrime(int n) {
    for (int divisor = 2; divisor * divisor <= n; ++divisor)
        if (n % divisor == 0)
            return false;
    return n > 1;
}

bool isBlock(const Decomposition &part) {
    return part.method == Butterfly || part.method == SumDifference || part.method == RealRader;
}

bool hasFactors(const Decomposition &d) {
    const bool takesOne = d.method == SumDifference || d.method == RealLanes;
    return d.factors.size() == (d.method == Butterfly ? 0 : takesOne ? 1 : 2);
}

// What is wrong with a decomposition whose factors are sound, or nothing.
const char *fault(const Decomposition &d) {
    if (!hasFactors(d))
        return "takes another number of factors";
    if (std::ranges::any_of(d.factors, [](const Decomposition &factor) {
            return factor.method == ComplexRader || factor.method == Bluestein;
        }))
        return "a convolution in complex lanes makes whole kernels only";
    const auto is = [&](int factor, Decomposition::Method method) {
        return d.factors[factor].method == method;
    };
    const auto length = [&](int factor) { return d.factors[factor].length; };
    switch (d.method) {
    case Butterfly:
        return d.length == 2 || d.length == 4 || (d.length > 2 && d.length % 2 == 1)
                   ? nullptr
                   : "there are blocks of 2, of 4 and of odd lengths only";
    case SumDifference:
        return is(0, Butterfly) && d.length == 5 ? nullptr : "only the block of 5 has this form";
    case ByColumn:
        return length(0) == length(1) && isBlock(d.factors[0]) && isBlock(d.factors[1])
                   ? nullptr
                   : "takes two forms of one block";
    case PrimeFactorInside:
        if (!is(0, CooleyTukey) || d.factors[0].twiddles == Decomposition::Twiddles::Folded)
            return "the first factor must be a Cooley-Tukey step without folded twiddles";
        [[fallthrough]];
    case PrimeFactor:
        return std::gcd(length(0), length(1)) == 1 ? nullptr : "the factors are not coprime";
    case CooleyTukey:
        return d.twiddles != Decomposition::Twiddles::Folded || (is(0, Butterfly) && length(0) == 4)
                   ? nullptr
                   : "twiddles fold into blocks of 4 only";
    case SplitRadix:
        return length(0) == 2 * length(1) ? nullptr : "takes a half of the length and a quarter of it";
    case RealLanes:
        return nullptr;
    case RealRader:
    case ComplexRader:
        return length(0) == length(1) && isPrime(d.length)
                   ? nullptr
                   : "takes two transforms of a length one below a prime";
    case Bluestein:
        return is(0, Butterfly) && d.length % 2 == 1 && length(1) >= 2 * d.length - 1
                   ? nullptr
                   : "takes an odd length and a transform of about twice that or more";
    }
    return nullptr;
}

int lengthOf(Decomposition::Method method, const std::vector<Decomposition> &factors) {
    const int first = factors[0].length;
    switch (method) {
    case PrimeFactor:
    case PrimeFactorInside:
    case CooleyTukey:
        return first * factors.back().length;
    case SplitRadix:
        return 2 * first;
    case RealRader:
    case ComplexRader:
        return first + 1;
    default:
        return first;
    }
}

[[noreturn]] void refuse(SourceLine line, const std::string &what, const std::string &why) {
    const std::string place =
        line.line == 0 ? "" : std::string(line.file) + ":" + std::to_string(line.line) + ": ";
    throw DecompositionError(place + what + ": " + why);
}

} // namespace

Decomposition::Decomposition(int length, SourceLine line) : method(Butterfly), length(length) {
    if (const char *why = fault(*this))
        refuse(line, describe(*this), why);
}

Decomposition::Decomposition(Method method, Twiddles twiddles, std::vector<Decomposition> parts,
                             SourceLine line)
    : method(method), twiddles(twiddles), factors(std::move(parts)), length(lengthOf(method, factors)) {
    if (method == RealRader && factors.size() == 1)
        factors.push_back(factors[0]);
    if (const char *why = fault(*this))
        refuse(line, describe(*this), why);
}

Decomposition ofLength(int length, Decomposition decomposition, SourceLine line) {
    if (decomposition.length != length)
        refuse(line, describe(decomposition), "is not of length " + std::to_string(length));
    return decomposition;
}

std::string describe(const Decomposition &decomposition) {
    if (decomposition.method == Butterfly)
        return std::to_string(decomposition.length);
    const auto word = std::ranges::find_if(words, [&](const RecipeWord *other) {
        return other->method == decomposition.method && other->twiddles == decomposition.twiddles;
    });
    std::string arguments;
    for (const Decomposition &factor : decomposition.factors)
        arguments += (arguments.empty() ? "" : ", ") + describe(factor);
    return (*word)->text + ("(" + arguments + ")");
}

namespace {

// Takes a number, or a word and decompositions in brackets, from the text's start.
Decomposition takeDecomposition(std::string_view &text) {
    const std::string name(text.substr(0, text.find_first_of("(,)")));
    text.remove_prefix(name.size());
    if (!name.empty() && name.size() < 5 && name.find_first_not_of("0123456789") == name.npos)
        return {std::stoi(name), SourceLine{}};
    const auto word = std::ranges::find(words, name, &RecipeWord::text);
    if (word == std::end(words) || text.empty() || text[0] != '(')
        refuse({}, "'" + name + "'", "neither a length nor a word of recipes with its factors");
    std::vector<Decomposition> factors;
    do {
        text.remove_prefix(1);
        factors.push_back(takeDecomposition(text));
    } while (!text.empty() && text[0] == ',');
    if (text.empty() || text[0] != ')')
        refuse({}, name + "(...", "the bracket is not closed");
    text.remove_prefix(1);
    return {(*word)->method, (*word)->twiddles, factors, {}};
}

} // namespace

Decomposition parsedDecomposition(const std::string &text) {
    std::string words = text;
    std::erase(words, ' ');
    std::string_view rest = words;
    const Decomposition result = takeDecomposition(rest);
    if (!rest.empty())
        refuse({}, "'" + std::string(rest) + "'", "nothing may follow a decomposition");
    return result;
}

} // namespace zrfgen::gen
