#include "walsh_hadamard_passes.h"

#include "wht/passes.h"

namespace zrfgen::bench {
namespace {

static_assert(firstOrderOfPasses == highestOrderWithoutBuffer + 1);

template <class Real> struct Data {
    Array<Real> srcElements, dstElements;
    Array<std::uint8_t> bufferBytes;
    const Real *factor; // not known when compiling, as in the library

    const unsigned char *src() const { return reinterpret_cast<const unsigned char *>(srcElements.get()); }
    unsigned char *dst() const { return reinterpret_cast<unsigned char *>(dstElements.get()); }
    unsigned char *buffer() const { return bufferBytes.get(); }
};

template <class Real> using Pass = void (*)(const Data<Real> &);

// The library's loops, each over all chunks by itself.
template <class Real, int order> struct Alone {
    static constexpr int length = 1 << order;
    static constexpr WhtPasses passes = whtPasses(order, sizeof(Real));
    static constexpr bool isStaged = passes.chunk != 0;
    static constexpr int chunk = isStaged ? passes.chunk : length;

    static void blocks(const Data<Real> &data) {
        for (std::size_t first = 0; first < length; first += chunk)
            runBlocks<Real, passes.block, Access::Aligned>(
                data.src() + first * sizeof(Real), data.buffer() + (isStaged ? length * sizeof(Real) : 0),
                chunk);
    }

    static void chunkRows(const Data<Real> &data) {
        for (std::size_t first = 0; first < length; first += chunk)
            runRows<Real, chunk / passes.block, passes.block, false, Access::Aligned>(
                data.buffer() + length * sizeof(Real), data.buffer() + first * sizeof(Real), nullptr);
    }

    static void lastRows(const Data<Real> &data) {
        constexpr int stride = isStaged ? chunk : passes.block;
        const ScaleFactor<Real> scale(*data.factor); // which no store can change
        runRows<Real, length / stride, stride, true, Access::Aligned>(data.buffer(), data.dst(), scale.lanes);
    }

    static std::vector<Pass<Real>> all() {
        if constexpr (isStaged)
            return {blocks, chunkRows, lastRows};
        else
            return {blocks, lastRows};
    }
};

template <class Real> std::vector<Pass<Real>> passesOf(int order) {
    switch (order) {
    case 8:
        return Alone<Real, 8>::all();
    case 9:
        return Alone<Real, 9>::all();
    case 10:
        return Alone<Real, 10>::all();
    case 11:
        return Alone<Real, 11>::all();
    case 12:
        return Alone<Real, 12>::all();
    case 13:
        return Alone<Real, 13>::all();
    }
    throw std::logic_error("no passes of order " + std::to_string(order));
}

// Four vectors at a time: the compiler would make a loop over single ones a call of memcpy, with wider moves.
void copyVectors(const unsigned char *src, unsigned char *dst, std::size_t bytes) {
    for (std::size_t i = 0; i < bytes; i += 64) {
        const __m128 a = loadFloats<Access::Aligned>(src + i), b = loadFloats<Access::Aligned>(src + i + 16),
                     c = loadFloats<Access::Aligned>(src + i + 32),
                     d = loadFloats<Access::Aligned>(src + i + 48);
        storeVector<Access::Aligned>(dst + i, a);
        storeVector<Access::Aligned>(dst + i + 16, b);
        storeVector<Access::Aligned>(dst + i + 32, c);
        storeVector<Access::Aligned>(dst + i + 48, d);
    }
}

template <class Real> void copyAsPassesDo(int order, const Data<Real> &data) {
    const std::size_t bytes = sizeof(Real) << order,
                      chunk = whtPasses(order, sizeof(Real)).chunk * sizeof(Real);
    if (chunk == 0)
        copyVectors(data.src(), data.buffer(), bytes);
    else
        for (std::size_t offset = 0; offset < bytes; offset += chunk) {
            copyVectors(data.src() + offset, data.buffer() + bytes, chunk);
            copyVectors(data.buffer() + bytes, data.buffer() + offset, chunk);
        }
    copyVectors(data.buffer(), data.dst(), bytes);
}

} // namespace

template <class Real>
std::vector<Contender> passContenders(int order, const Array<Real> &src, const Array<Real> &dst) {
    const Data<Real> data{src, dst, allocateBuffer<Real>(order),
                          WhtFactors<Real, firstOrderOfPasses>::one.lanes};
    return {{"passes",
             [=, passes = passesOf<Real>(order)](std::int64_t times) {
                 for (const Pass<Real> pass : passes)
                     for (std::int64_t i = 0; i < times; ++i)
                         pass(data);
             }},
            contender("copies", [=] { copyAsPassesDo(order, data); })};
}

template std::vector<Contender> passContenders(int, const Array<float> &, const Array<float> &);
template std::vector<Contender> passContenders(int, const Array<double> &, const Array<double> &);

} // namespace zrfgen::bench
