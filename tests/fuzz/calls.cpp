// A fuzz target: every input is a transform, a size query or the life of one plan, and all that must be true
// of it. Results are those that the kernel's graph predicts; arrays, buffers and plans lie
// against pages that must not be touched; what is no result keeps its bytes.
#include "calls.h"
#include "dft/recipes/complex_dft.h"
#include "exports.h"
#include "graph/evaluate.h"
#include "guarded_pages.h"
#include "random.h"
#ifndef _WIN32
#include "many.h"
#endif
#include "real/recipes/real_dft.h"

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <map>
#include <zrfcore/zrfcore.h>

static_assert(FLT_EVAL_METHOD == 0, "the expectations need arithmetic in the width of the operands");

namespace {

std::string call;

void require(bool isTrue, const char *expectation) {
    if (isTrue)
        return;
    std::fprintf(stderr, "%s: %s\n", call.c_str(), expectation);
    std::abort();
}

// The largest blocks of plans.
constexpr int32_t mostPlanBytes = 1 << 18;

GuardedPages sourcePages(1 << 17), destinationPages(1 << 17), blockPages(2 * mostPlanBytes),
    allocatedPages(mostPlanBytes);

// The program's own allocator has one block, which ends where its pages end. It may promise more than it has.
void *allocated = nullptr;
int32_t mostAllocatedBytes = mostPlanBytes;

} // namespace

void *ZRF_CORE_CALL zrfMalloc(int32_t size) {
    require(allocated == nullptr, "one block is enough");
    if (size > 0 && size <= mostAllocatedBytes)
        allocated = allocatedPages.end() - std::min(size, mostPlanBytes);
    return allocated;
}

void ZRF_CORE_CALL zrfFree(void *block) {
    require(block == allocated, "what is released was allocated");
    allocated = nullptr;
}

std::uint64_t ZRF_CORE_CALL zrfGetEnabledCpuFeatures() {
    return 0;
}

namespace {

// Numbers from the bytes of the input, zeros when it is used up.
class Input {
public:
    Input(const std::uint8_t *data, std::size_t size) : next(data), rest(size) {}
    template <class Number> Number raw() {
        Number number = 0;
        const std::size_t count = std::min(rest, sizeof number);
        std::memcpy(&number, next, count);
        next += count;
        rest -= count;
        return number;
    }
    int below(int bound) { return bound <= 256 ? raw<std::uint8_t>() % bound : raw<std::uint16_t>() % bound; }
    bool oneIn(int n) { return below(n) == n - 1; }

private:
    const std::uint8_t *next;
    std::size_t rest;
};

// Memory with its surroundings as far as the guard pages, as they were before a call.
class Window {
public:
    Window(const GuardedPages &pages, unsigned char *start, std::size_t bytes)
        : first(std::max(pages.begin(), start - 64)),
          content(first, std::min(pages.end(), start + bytes + 64)) {}
    void requireKeptBut(const unsigned char *start, std::size_t bytes) const {
        const auto from = std::clamp<std::ptrdiff_t>(start - first, 0, std::ssize(content));
        const auto to = std::clamp<std::ptrdiff_t>(start + bytes - first, 0, std::ssize(content));
        require(std::equal(content.begin(), content.begin() + from, first) &&
                    std::equal(content.begin() + to, content.end(), first + to),
                "nothing but results is written");
    }

private:
    unsigned char *first;
    std::vector<unsigned char> content;
};

// Near the first or the last byte of the pages, a few steps off.
unsigned char *place(Input &input, const GuardedPages &pages, std::size_t bytes, std::size_t step) {
    const bool isFirst = input.oneIn(2);
    const std::size_t gap = input.oneIn(2) ? 0 : input.below(33) * step;
    return isFirst ? pages.begin() + gap : pages.end() - bytes - gap;
}

// The arrays of a transform. Any overlap, or none but in place.
struct Arrays {
    unsigned char *src, *dst;
    std::size_t srcBytes, dstBytes;

    Arrays(Input &input, std::size_t srcBytes, std::size_t dstBytes, std::size_t width, bool mayLieAnywhere)
        : srcBytes(srcBytes), dstBytes(dstBytes) {
        const std::size_t step = mayLieAnywhere ? 1 : width;
        const bool isInPlace = input.oneIn(4);
        src = place(input, sourcePages, isInPlace ? std::max(srcBytes, dstBytes) : srcBytes, step);
        dst = isInPlace ? src : place(input, destinationPages, dstBytes, step);
        if (mayLieAnywhere && !isInPlace && input.oneIn(4)) {
            src = sourcePages.begin() + 2048 + input.below(32);
            dst = src - dstBytes + input.below(static_cast<int>(srcBytes + dstBytes));
        }
    }
    Window sourceWindow() const { return {sourcePages, src, srcBytes}; }
    Window destinationWindow() const {
        const bool isShared = dst >= sourcePages.begin() && dst < sourcePages.end();
        return {isShared ? sourcePages : destinationPages, dst, dstBytes};
    }
};

enum class Values { Plain, SomeSpecial, AnyBits, Special };

template <class Real> std::vector<Real> makeValues(Input &input, std::size_t count, Values kind) {
    using Limits = std::numeric_limits<Real>;
    constexpr Real infinity = Limits::infinity(), least = Limits::denorm_min();
    constexpr Real special[] = {
        0,     -Real(0), 1, -1, infinity, -infinity, Limits::quiet_NaN(), Limits::max(), Limits::min(),
        least, -least};
    using Bits = std::conditional_t<sizeof(Real) == 4, std::uint32_t, std::uint64_t>;
    RandomNumbers random(input.raw<std::uint32_t>());
    const int rarity = 1 + input.below(64);
    std::vector<Real> values(count);
    for (Real &value : values) {
        value = random.next<Real>();
        const std::uint64_t bits = random.bits(), high = bits >> 33;
        if (kind == Values::AnyBits)
            value = std::bit_cast<Real>(static_cast<Bits>(bits ^ bits >> 32));
        else if (kind == Values::Special || (kind == Values::SomeSpecial && high % rarity == 0))
            value = special[high / 64 % std::size(special)];
    }
    return values;
}

template <class Real> bool isSame(Real a, Real b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (a != a && b != b);
}

template <class Real>
std::vector<Real> predictDft(const Export &entry, int n, const std::vector<Real> &source, Real factor) {
    using namespace zrfgen::gen;
    static std::map<std::pair<char, int>, Graph> graphs;
    constexpr Element element = sizeof(Real) == 4 ? Element::Float32 : Element::Float64;
    const std::string_view family = entry.family;
    const char kind = entry.isComplex() ? 'c' : family == "Hartley" ? 'h' : family[3]; // Fwd or Inv
    const int count = entry.numbers(n);
    Graph &graph = graphs[{kind, n}];
    if (graph.size() == 0)
        graph = kind == 'c'   ? complexDft(n, element, baseTarget())
                : kind == 'F' ? forwardRealDft(n, element)
                : kind == 'h' ? hartley(n, element)
                              : inverseRealDft(n, element);
    std::vector<Quad> graphSource(count);
    for (int i = 0; i < count; ++i)
        graphSource[i] = source[entry.srcPosition(n, i)];
    const Direction direction = family == "DFTInv_CToC" ? Direction::Inverse : Direction::Forward;
    const auto predicted = evaluate(graph, direction, Precision::Native, graphSource, factor, count);
    std::vector<Real> result(entry.dstCount(n), 0);
    for (int i = 0; i < count; ++i)
        result[entry.dstPosition(n, i)] = static_cast<Real>(predicted[i]);
    return result;
}

// The butterflies from the lowest index bit up.
template <class Real> std::vector<Real> predictWht(std::vector<Real> x, Real factor) {
    for (std::size_t distance = 1; distance < x.size(); distance *= 2)
        for (std::size_t j = 0; j < x.size(); ++j)
            if ((j & distance) == 0) {
                const Real a = x[j], b = x[j + distance];
                x[j] = a + b;
                x[j + distance] = a - b;
            }
    for (Real &value : x)
        value *= factor;
    return x;
}

template <class Real> Real factorOf(const Export &entry, int n, int32_t flag) {
    const bool isForwardOnly = entry.family.starts_with("DFTFwd");
    const bool isInverseOnly = entry.family.starts_with("DFTInv");
    const int count = entry.numbers(n) / (entry.isComplex() ? 2 : 1);
    if (flag == zrfScaleNone || (flag == zrfScaleFwdByN && isInverseOnly) ||
        (flag == zrfScaleInvByN && isForwardOnly))
        return 1;
    if (flag != zrfScaleBySqrtN)
        return Real(1) / static_cast<Real>(count);
    if (entry.isWht() && n % 2 != 0) // by the rounded root of 2
        return std::ldexp(Real(1) / std::sqrt(Real(2)), -(n / 2));
    return static_cast<Real>(1 / zrfgen::gen::squareRoot(count));
}

template <class Real> void fuzzTransform(Input &input, const Export &entry) {
    const int32_t n = entry.leastSize() + input.below(entry.mostSize() - entry.leastSize() + 1);
    const int32_t flag = 1 << input.below(4);
    const Arrays arrays(input, entry.srcCount(n) * sizeof(Real), entry.dstCount(n) * sizeof(Real),
                        sizeof(Real), !entry.isWht());
    const auto source = makeValues<Real>(input, entry.srcCount(n), static_cast<Values>(input.below(4)));
    std::memcpy(arrays.src, source.data(), arrays.srcBytes);

    const int32_t bufferBytes = entry.isWht() ? whtBufferBytes(n, entry.isSingle) : 0;
    unsigned char *buffer = place(input, blockPages, bufferBytes, 16);
    const Window around[] = {arrays.sourceWindow(), arrays.destinationWindow()};
    const Window aroundBuffer(blockPages, buffer, bufferBytes);
    if (input.oneIn(2))
        buffer = nullptr;

    call =
        std::string(entry.name) + ", length or order " + std::to_string(n) + ", flag " + std::to_string(flag);
    require(entry.transform(arrays.src, arrays.dst, n, flag, buffer) == zrfStatusOk,
            "good arguments are taken");
    require(allocated == nullptr, "what was allocated is released");
    for (const Window &window : around)
        window.requireKeptBut(arrays.dst, arrays.dstBytes);
    aroundBuffer.requireKeptBut(buffer, buffer != nullptr ? bufferBytes : 0);

    const Real factor = factorOf<Real>(entry, n, flag);
    const auto predicted = entry.isWht() ? predictWht(source, factor) : predictDft(entry, n, source, factor);
    std::vector<Real> result(predicted.size());
    std::memcpy(result.data(), arrays.dst, arrays.dstBytes);
    require(std::ranges::equal(result, predicted, isSame<Real>), "the bits are those of the graph");
}

#ifndef _WIN32 // where there is no libzrfmany yet
// An array of transforms: rows, columns or neither, with unused elements between, as near the pages' ends as
// its first and last element allow.
struct ManyArrays {
    Many::Strides strides;
    unsigned char *first; // element 0 of transform 0
    std::ptrdiff_t elementBytes;

    ManyArrays(Input &input, const GuardedPages &pages, std::ptrdiff_t elements, std::ptrdiff_t count,
               std::size_t elementBytes, std::size_t step)
        : elementBytes(static_cast<std::ptrdiff_t>(elementBytes)) {
        const std::ptrdiff_t gap = input.below(3);
        const Many::Strides choices[] = {
            {1, elements + gap}, {count + gap, 1}, {2 + gap, (2 + gap) * elements}, {1, -elements - gap}};
        strides = choices[input.below(4)];
        const std::ptrdiff_t along = (elements - 1) * strides.step + 1,
                             across = (count - 1) * strides.distance;
        const std::size_t bytes = (along + std::abs(across)) * elementBytes;
        first = place(input, pages, bytes, step) - std::min<std::ptrdiff_t>(across, 0) * this->elementBytes;
    }
    unsigned char *at(std::ptrdiff_t transform, std::ptrdiff_t element) const {
        return first + (transform * strides.distance + element * strides.step) * elementBytes;
    }
};

// Many transforms give the bits of single ones, which are held to their graphs, and write nothing else.
template <class Real> void fuzzMany(Input &input, const Many &many) {
    const Export &single = many.single;
    const int most = single.isWht() ? 10 : single.mostSize(); // as the pages have room for
    const int32_t n = single.leastSize() + input.below(most - single.leastSize() + 1);
    const std::ptrdiff_t count = 1 + input.below(single.isWht() && n > 5 ? 3 : 24);
    const int32_t flag = 1 << input.below(4);
    const std::size_t size = many.elementBytes(), step = single.isWht() ? sizeof(Real) : 1;
    const ManyArrays src(input, sourcePages, many.sources(n), count, size, step);
    const ManyArrays dst(input, destinationPages, many.results(n), count, size, step);
    const auto values = makeValues<Real>(input, single.srcCount(n), static_cast<Values>(input.below(4)));
    std::vector<Real> row(std::max(single.srcCount(n), single.dstCount(n)));
    const std::size_t pageBytes = destinationPages.end() - destinationPages.begin();
    std::vector<unsigned char> expected(destinationPages.begin(), destinationPages.end());
    unsigned char *const buffer = blockPages.begin();
    call = "many of " + std::string(single.name) + ", length or order " + std::to_string(n) + ", flag " +
           std::to_string(flag) + ", " + std::to_string(count) + " by " + std::to_string(src.strides.step) +
           ", " + std::to_string(src.strides.distance) + " to " + std::to_string(dst.strides.step) + ", " +
           std::to_string(dst.strides.distance);
    for (std::ptrdiff_t t = 0; t < count; ++t) {
        for (std::size_t i = 0; i < single.srcCount(n); ++i)
            row[i] = values[(i + 7 * t) % values.size()];
        for (std::ptrdiff_t e = 0; e < many.sources(n); ++e)
            std::memcpy(src.at(t, e), reinterpret_cast<unsigned char *>(row.data()) + e * size, size);
        require(single.transform(row.data(), row.data(), n, flag, buffer) == zrfStatusOk, "a row is taken");
        for (std::ptrdiff_t e = 0; e < many.results(n); ++e)
            std::memcpy(expected.data() + (dst.at(t, e) - destinationPages.begin()),
                        reinterpret_cast<unsigned char *>(row.data()) + e * size, size);
    }
    require(many.call(src.at(0, 0), dst.at(0, 0), n, flag, count, src.strides, dst.strides, buffer) ==
                zrfStatusOk,
            "good arguments are taken");
    for (std::ptrdiff_t t = 0; t < count; ++t) // numbers that are none may differ in their bits
        for (std::ptrdiff_t e = 0; e < many.results(n); ++e)
            for (std::size_t part = 0; part < many.parts(); ++part) {
                unsigned char *const there = dst.at(t, e) + part * sizeof(Real);
                unsigned char *const wanted = expected.data() + (there - destinationPages.begin());
                Real result, number;
                std::memcpy(&result, there, sizeof result);
                std::memcpy(&number, wanted, sizeof number);
                require(isSame(result, number), "the bits are those of single calls");
                std::memcpy(wanted, there, sizeof result);
            }
    require(std::memcmp(expected.data(), destinationPages.begin(), pageBytes) == 0,
            "nothing but results is written");
}

#endif

int32_t choosePlanLength(Input &input) {
    if (input.oneIn(8))
        return input.raw<int32_t>();
    if (input.oneIn(8)) // near a power of two
        return static_cast<int32_t>((1u << input.below(32)) + input.below(5) - 2);
    return (2 << input.below(11)) + (input.oneIn(8) ? 1 : 0);
}

bool hasPlan(int32_t length, bool isSingle) {
    const bool isOdd = length % 2 != 0 && length >= (isSingle ? 33 : 9);
    return length > 1 && std::has_single_bit(static_cast<unsigned>(length - isOdd)) &&
           length <= (isSingle ? 1 << 26 : 1 << 25) + 1;
}

// Sizes wrap around to these lengths.
bool hasSize(int32_t length, bool isSingle) {
    return hasPlan(length, isSingle) || length >> 1 == 1 << 29 || (!isSingle && length >> 1 == 1 << 28);
}

void fuzzSizeQuery(Input &input, const Export &entry) {
    const bool isWht = entry.isWht();
    const int32_t size = isWht && !input.oneIn(4) ? input.below(16) : choosePlanLength(input);
    const bool isSize = isWht ? size >= 1 && size <= zrfHighestOrder : hasSize(size, entry.isSingle);
    int32_t bytes = -1;
    const bool isNull = input.oneIn(16);
    call = std::string(entry.name) + ", length or order " + std::to_string(size);
    const Status expected = isNull ? zrfStatusNullPointer : isSize ? zrfStatusOk : zrfStatusSizeError;
    require(entry.as<Export::SizeQuery>()(size, isNull ? nullptr : &bytes) == expected,
            "the status is that of the contract");
    require((bytes >= 0) == (expected == zrfStatusOk), "just an accepted size is stored");
}

// A plan gives the same bits wherever it and the arrays lie, and again when it is used again.
template <class Real>
void fuzzDct4(Input &input, const Dct4Functions &dct4, int32_t length, int32_t planBytes, Dct4Plan *plan) {
    const std::size_t bytes = length * sizeof(Real);
    const auto source = makeValues<Real>(input, length, static_cast<Values>(input.below(4)));
    std::vector<Real> reference(length);
    std::vector<unsigned char> block(planBytes);
    Dct4Plan *other;
    dct4.init(&other, length, block.data());
    dct4.transform(source.data(), reference.data(), other);

    for (int times = 0; times < 2; ++times) {
        const Arrays arrays(input, bytes, bytes, sizeof(Real), false);
        std::memcpy(arrays.src, source.data(), bytes);
        const Window around[] = {arrays.sourceWindow(), arrays.destinationWindow()};
        require(dct4.transform(arrays.src, arrays.dst, plan) == zrfStatusOk, "good arguments are taken");
        for (const Window &window : around)
            window.requireKeptBut(arrays.dst, bytes);
        require(length % 2 != 0 || std::memcmp(arrays.dst, reference.data(), bytes) == 0,
                "the bits are those of any plan of the length");
    }
}

template <class Real> void fuzzPlan(Input &input, const Export &entry) {
    const bool isSingle = sizeof(Real) == 4;
    const Dct4Functions dct4(isSingle);
    const bool isOwn = entry.isOfAllocatedPlan();
    const int32_t length = choosePlanLength(input);
    call = std::string(entry.name) + ", length " + std::to_string(length);
    int32_t bytes = 64;
    dct4.getSize(length, &bytes);
    if (hasPlan(length, isSingle) && bytes > mostPlanBytes && !isOwn)
        return;
    const int32_t blockBytes = std::min(bytes, mostPlanBytes);
    unsigned char *const block = place(input, blockPages, blockBytes, 1);
    const Window around(blockPages, block, blockBytes);
    Dct4Plan *const none = reinterpret_cast<Dct4Plan *>(&input);
    Dct4Plan *plan = none;
    Dct4Plan **const planOut = input.oneIn(16) ? nullptr : &plan;
    void *const memory = input.oneIn(16) ? nullptr : block;
    // Where there is no plan, none may be laid into the block.
    mostAllocatedBytes = input.oneIn(8) ? 0 : hasPlan(length, isSingle) ? mostPlanBytes : INT32_MAX;
    const bool hasMemory = isOwn ? bytes <= mostAllocatedBytes : memory != nullptr;
    const Status refusal = isOwn && !hasSize(length, isSingle) ? zrfStatusSizeError // before it allocates
                           : !hasMemory                        ? zrfStatusNullPointer
                           : !hasPlan(length, isSingle)        ? zrfStatusSizeError
                                                               : zrfStatusOk;
    const Status expected = planOut == nullptr ? zrfStatusNullPointer : refusal;
    const Status status = isOwn ? dct4.initAlloc(planOut, length) : dct4.init(planOut, length, memory);
    require(status == expected, "the status is that of the contract");
    around.requireKeptBut(block, !isOwn && expected == zrfStatusOk ? bytes : 0);
    require(allocated == (isOwn && expected == zrfStatusOk ? allocatedPages.end() - bytes : nullptr),
            "a plan has a block of its size, others none");
    require((plan != none) == (expected == zrfStatusOk), "just a plan's handle is stored");
    if (expected != zrfStatusOk)
        return;

    fuzzDct4<Real>(input, dct4, length, bytes, plan);
    around.requireKeptBut(block, isOwn ? 0 : bytes);
    if (isOwn) {
        require(dct4.release(plan) == zrfStatusOk && allocated == nullptr, "a plan's block is released");
    } else {
        std::memset(block, input.oneIn(2) ? 0 : 0xff, bytes);
        Real number = 1, result = 2;
        require(dct4.transform(&number, &result, plan) == zrfStatusPlanError && result == 2 &&
                    dct4.release(plan) == zrfStatusPlanError,
                "what was overwritten is no plan");
    }
}

// The few exports of many lengths, of the Walsh-Hadamard transform and the DCT-IV more often than the others.
const Export &chooseExport(Input &input) {
    static const auto choices = [] {
        std::vector<const Export *> list;
        for (const Export &entry : allExports())
            list.insert(list.end(),
                        entry.family == "DCT4"               ? 30
                        : entry.isWht() || entry.takesSize() ? 10
                                                             : 1,
                        &entry);
        return list;
    }();
    return *choices[input.below(static_cast<int>(choices.size()))];
}

} // namespace

const char *runningCall() {
    return call.c_str();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    Input input(data, size);
    mostAllocatedBytes = mostPlanBytes;
    const Export &entry = chooseExport(input);
    switch (entry.entry) {
    case Entry::SizeQuery:
        fuzzSizeQuery(input, entry);
        break;
    case Entry::Dct4:
        entry.isSingle ? fuzzPlan<Float32>(input, entry) : fuzzPlan<Float64>(input, entry);
        break;
    case Entry::Version:
        require(zrfgenGetLibVersion() == zrfgenGetLibVersion(), "there is one record");
        break;
    default:
#ifndef _WIN32
        if (entry.takesSize() && input.oneIn(2)) {
            const Many &many = *std::ranges::find(allOfMany(), entry.name,
                                                  [](const Many &each) { return each.single.name; });
            entry.isSingle ? fuzzMany<Float32>(input, many) : fuzzMany<Float64>(input, many);
            break;
        }
#endif
        entry.isSingle ? fuzzTransform<Float32>(input, entry) : fuzzTransform<Float64>(input, entry);
    }
    return 0;
}
