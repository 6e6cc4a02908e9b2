// Prints a line for each export, its name and a digest of its results over fixed inputs. The lines are the
// same for every compiler, optimisation and ABI.
#include "exports.h"
#include "random.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

// Tables of the DCT-IV come from the C library, whose last bits depend on the processor. The library takes
// these instead: the angle less quarters of a turn, in two parts, then the series.
static double sineOrCosine(double x, int quarters) {
    constexpr double quarterHigh = 0x1.921fb544p0, quarterLow = 0x1.0b4611a626331p-34;
    const int turned = static_cast<int>(x / quarterHigh + (x < 0 ? -0.5 : 0.5));
    const double r = (x - turned * quarterHigh) - turned * quarterLow, square = r * r;
    const bool isSine = (turned + quarters) % 2 == 0;
    double sum = 0;
    for (int power = isSine ? 19 : 20; power >= 2; power -= 2)
        sum = (1 - sum) * square / (power * (power - 1));
    const double value = isSine ? r - r * sum : 1 - sum;
    return ((turned + quarters) & 2) == 0 ? value : -value;
}

extern "C" double sin(double x) noexcept {
    return sineOrCosine(x, 0);
}

extern "C" double cos(double x) noexcept {
    return sineOrCosine(x, 1);
}

namespace {

class Digest {
public:
    void add(const void *bytes, std::size_t count) { // FNV-1a
        for (std::size_t i = 0; i < count; ++i)
            value = (value ^ static_cast<const unsigned char *>(bytes)[i]) * 0x100000001b3;
    }
    void add(int32_t number) { add(&number, sizeof number); }
    // Of NaNs only that they are: sign and payload follow the order of operands, which is the compiler's.
    template <class Real> void addNumbers(const unsigned char *bytes, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            Real number;
            std::memcpy(&number, bytes + i * sizeof number, sizeof number);
            if (number != number)
                number = std::numeric_limits<Real>::quiet_NaN();
            add(&number, sizeof number);
        }
    }
    void addNumbers(bool isSingle, const unsigned char *bytes, std::size_t count) {
        isSingle ? addNumbers<Float32>(bytes, count) : addNumbers<Float64>(bytes, count);
    }

    std::uint64_t value = 0xcbf29ce484222325;
};

// An array in a block of its own on a 16-byte boundary, which ends where the array ends. What it holds is not
// known.
struct Array {
    static constexpr std::align_val_t boundary{16}; // more than some heaps give
    struct Release {
        void operator()(unsigned char *bytes) const { ::operator delete[](bytes, boundary); }
    };
    std::unique_ptr<unsigned char, Release> block;
    unsigned char *start;
    Array(std::size_t bytes, std::size_t offset)
        : block(static_cast<unsigned char *>(::operator new[](offset + bytes, boundary))),
          start(block.get() + offset) {}
};

enum class Values { Plain, Tiny, Wild, Count };

// Numbers from -1 to 1, each with all the bits that its type has; or zeros of both signs and denormals; or
// the first with infinities among them.
template <class Real> void fill(unsigned char *bytes, std::size_t count, Values values) {
    using Limits = std::numeric_limits<Real>;
    constexpr Real wild[] = {Limits::infinity(), -Limits::infinity(), Limits::max(), Limits::min()};
    RandomNumbers random(count);
    for (std::size_t i = 0; i < count; ++i) {
        Real number = random.next<Real>();
        const std::uint64_t choice = random.bits() >> 33;
        if (values == Values::Tiny)
            number = choice % 4 == 0 ? std::copysign(Real(0), number) : number * Limits::min();
        else if (values == Values::Wild && choice % 16 == 0)
            number = wild[choice / 16 % 4];
        std::memcpy(bytes + i * sizeof number, &number, sizeof number);
    }
}

void fill(bool isSingle, unsigned char *bytes, std::size_t count, Values values) {
    isSingle ? fill<Float32>(bytes, count, values) : fill<Float64>(bytes, count, values);
}

// Calls run(src, dst) for arrays of so many numbers with all kinds of values, on 16-byte boundaries and off
// them, and adds its status and result.
template <class Run>
void addRuns(Digest &digest, const Export &entry, std::size_t srcCount, std::size_t dstCount, Run run) {
    const std::size_t width = entry.numberBytes();
    for (int values = 0; values < static_cast<int>(Values::Count); ++values)
        for (const std::size_t offset : {std::size_t{0}, width}) {
            const Array src(srcCount * width, offset), dst(dstCount * width, 2 * offset);
            fill(entry.isSingle, src.start, srcCount, static_cast<Values>(values));
            digest.add(run(src.start, dst.start));
            digest.addNumbers(entry.isSingle, dst.start, dstCount);
        }
}

void addTransform(Digest &digest, const Export &entry, int32_t n) {
    const int32_t bufferBytes = entry.isWht() ? whtBufferBytes(n, entry.isSingle) : 0;
    const Array buffer(bufferBytes, 0);
    for (const int32_t flag : {zrfScaleFwdByN, zrfScaleInvByN, zrfScaleBySqrtN, zrfScaleNone})
        for (void *scratch : {static_cast<void *>(buffer.start), static_cast<void *>(nullptr)}) {
            addRuns(digest, entry, entry.srcCount(n), entry.dstCount(n),
                    [&](const void *src, void *dst) { return entry.transform(src, dst, n, flag, scratch); });
            if (bufferBytes == 0)
                break;
        }
}

void addTransforms(Digest &digest, const Export &entry) {
    const int32_t least = entry.leastSize(), most = entry.mostSize();
    double memory[256] = {}; // no call with it is accepted
    for (int32_t n = least; n <= most; ++n)
        addTransform(digest, entry, n);
    if (entry.takesSize())
        for (const int32_t n : {INT32_MIN, -1, least - 1, most + 1, INT32_MAX})
            digest.add(entry.transform(nullptr, memory, n, 0, nullptr));
    digest.add(entry.transform(nullptr, memory, least, 3, nullptr));
    digest.add(entry.transform(memory, nullptr, least, 3, nullptr));
    for (const int32_t flag : {INT32_MIN, -1, 0, 3, 5, 16})
        digest.add(entry.transform(memory, memory + 128, least, flag, nullptr));
}

void addSizes(Digest &digest, const Export &entry) {
    const auto query = entry.as<Export::SizeQuery>();
    digest.add(query(4, nullptr));
    const auto add = [&](std::int64_t size) {
        int32_t bytes = -1;
        digest.add(query(static_cast<int32_t>(size), &bytes));
        digest.add(bytes);
    };
    for (std::int64_t size = -100; size < 10000; ++size)
        add(size);
    for (std::int64_t power = 1 << 13; power < std::int64_t{1} << 32; power *= 2)
        for (const int step : {-2, -1, 0, 1, 2})
            add(power + step); // wraps around
}

// The DCT-IV by plans in the caller's block or the library's own.
void addDct4(Digest &digest, const Export &entry) {
    const auto [getSize, init, initAlloc, transform, release] = Dct4Functions(entry.isSingle);
    const bool isAllocated = entry.isOfAllocatedPlan();
    Dct4Plan *plan = nullptr;
    for (int32_t length = 2; length <= 16384; length *= 2) {
        int32_t bytes = 0;
        getSize(length, &bytes);
        const Array block(bytes, static_cast<std::size_t>(length) % 31);
        digest.add(isAllocated ? initAlloc(&plan, length) : init(&plan, length, block.start));
        addRuns(digest, entry, length, length,
                [&, run = transform](const void *src, void *dst) { return run(src, dst, plan); });
        if (isAllocated)
            digest.add(release(plan));
    }
    double memory[2] = {};
    for (const int32_t length : {INT32_MIN, 0, 3, 31, (1 << 27) + 1, 1 << 30}) {
        digest.add(init(&plan, length, memory));
        digest.add(init(&plan, length, nullptr));
        digest.add(initAlloc(nullptr, length));
    }
    digest.add(transform(memory, memory, nullptr));
    digest.add(release(nullptr));
}

void addVersion(Digest &digest) {
    const LibraryVersion *version = zrfgenGetLibVersion();
    for (const char *text : {version->libraryName, version->versionText, version->buildDateText})
        digest.add(text, std::strlen(text) + 1);
    for (const int32_t number :
         {version->majorVersion, version->minorVersion, version->patchVersion, version->revision})
        digest.add(number);
    digest.add(version->targetCode, sizeof version->targetCode);
}

Digest digestOf(const Export &entry) {
    Digest digest;
    switch (entry.entry) {
    case Entry::SizeQuery:
        addSizes(digest, entry);
        break;
    case Entry::Dct4:
        addDct4(digest, entry);
        break;
    case Entry::Version:
        addVersion(digest);
        break;
    default:
        addTransforms(digest, entry);
    }
    return digest;
}

} // namespace

int main() {
    for (const Export &entry : allExports())
        std::printf("%s %016llx\n", entry.name.data(),
                    static_cast<unsigned long long>(digestOf(entry).value));
    return 0;
}
