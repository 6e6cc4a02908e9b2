// Transforms block by block: into a block, through a kernel and out of it again.
#include "block_kernel.h"

#include <algorithm>

namespace zrfgen {

namespace {

// A square of numbers of so many bytes transposed, from rows srcPitch bytes apart to rows dstPitch bytes
// apart.
template <int numberBytes, int numbers> struct Transpose;
#include "many_transposes.inc"

template <int size> class Blocks {
public:
    static constexpr int transforms = vectorBytes / size;

    // Transforms as many whole blocks as there are, and tells how many transforms these were.
    static std::ptrdiff_t run(const ManyKernel &kernel, const void *factor, Sources from, Contents source,
                              Destinations to, Contents destination, std::ptrdiff_t count) {
        alignas(vectorBytes) unsigned char in[mostVectors * vectorBytes], out[mostVectors * vectorBytes];
        std::ptrdiff_t t = 0;
        for (; count - t >= transforms; t += transforms) {
            load(from.from(t), source, in);
            kernel.onBlock(in, out, factor);
            store(out, to.from(t), destination);
        }
        return t;
    }

private:
    static constexpr int group = 16 / size;

    // The two ways between an array and a block.
    struct In {
        template <int bytes> static void copy(const unsigned char *array, unsigned char *block) {
            std::memcpy(block, array, bytes);
        }
        template <int lanes>
        static void transpose(const unsigned char *array, std::ptrdiff_t pitch, unsigned char *block) {
            Transpose<size, lanes>::run(array, pitch, block, vectorBytes);
        }
    };
    struct Out {
        template <int bytes> static void copy(unsigned char *array, const unsigned char *block) {
            std::memcpy(array, block, bytes);
        }
        template <int lanes>
        static void transpose(unsigned char *array, std::ptrdiff_t pitch, const unsigned char *block) {
            Transpose<size, lanes>::run(block, vectorBytes, array, pitch);
        }
    };

    // Columns by whole vectors, rows by squares, all else by elements.
    template <class Way, class Array, class Byte> static void move(Array array, Byte *vectors, int elements) {
        const auto square = [&]<int lanes>(int e, int t) {
            Way::template transpose<lanes>(array.at(t, e), array.distance,
                                           vectors + e * vectorBytes + t * size);
        };
        if (array.distance == size)
            for (int e = 0; e < elements; ++e)
                Way::template copy<vectorBytes>(array.at(0, e), vectors + e * vectorBytes);
        else if (array.step != size || !inSquares(elements, square))
            for (int t = 0; t < transforms; ++t)
                for (int e = 0; e < elements; ++e)
                    Way::template copy<size>(array.at(t, e), vectors + e * vectorBytes + t * size);
    }

    static void load(Sources from, Contents contents, unsigned char *block) {
        move<In>(from, block + contents.first * vectorBytes, contents.elements);
        if (contents.insteadOf1 != 1)
            std::memcpy(block + contents.insteadOf1 * vectorBytes, block + vectorBytes, vectorBytes);
    }

    static void store(unsigned char *block, Destinations to, Contents contents) {
        if (contents.insteadOf1 != 1)
            std::memcpy(block + vectorBytes, block + contents.insteadOf1 * vectorBytes, vectorBytes);
        if (contents.lastZero != 0) {
            std::memset(block + vectorBytes, 0, vectorBytes);
            std::memset(block + contents.lastZero * vectorBytes, 0, vectorBytes);
        }
        move<Out>(to, static_cast<const unsigned char *>(block) + contents.first * vectorBytes,
                  contents.elements);
    }

    // Calls move<numbers>(element, transform) for the corners of squares that together are the block, the
    // largest that rows have room for, and tells whether there are any.
    template <int numbers = transforms, class Move> static bool inSquares(int elements, Move move) {
        if constexpr (numbers < std::max(group, 2)) {
            return false;
        } else {
            if (elements < numbers)
                return inSquares<numbers / 2>(elements, move);
            for (int t = 0; t < transforms; t += numbers)
                alongRow<numbers>(elements, [&](int e) { move.template operator()<numbers>(e, t); });
            return true;
        }
    }

    // The last square reaches back where they do not fill the row.
    template <int lanes, class Square> static void alongRow(int elements, Square square) {
        for (int e = 0; e < elements; e += lanes)
            square(e + lanes <= elements ? e : elements - lanes);
    }
};

} // namespace

template <int numberBytes> std::ptrdiff_t runBlocks(const ManyKernel &kernel, const void *factor,
                                                    Sources from, Contents source, Destinations to,
                                                    Contents destination, std::ptrdiff_t count) {
    return Blocks<numberBytes>::run(kernel, factor, from, source, to, destination, count);
}

template ManyKernel::Run runBlocks<4>;
template ManyKernel::Run runBlocks<8>;
template ManyKernel::Run runBlocks<16>;

} // namespace zrfgen
