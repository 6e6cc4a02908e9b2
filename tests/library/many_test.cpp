// Many transforms in one call, held bit by bit to as many single calls, with nothing written beside them.
#include "many.h"
#include "random.h"

#include <complex>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <zrfgen/many.hpp>

namespace {

using Strides = Many::Strides;

class RandomChoices {
public:
    int below(int bound) {
        numbers.next<double>();
        return static_cast<int>((numbers.bits() >> 33) % bound);
    }

private:
    RandomNumbers numbers{7};
} choices;

// An array in some arrangement with elements between that are nobody's, at some address.
class Array {
public:
    Array(int arrangement, ptrdiff_t elements, ptrdiff_t count, std::size_t size, bool mayLieAnywhere)
        : size(size) {
        const ptrdiff_t gap = choices.below(3);
        const Strides all[] = {{1, elements},                    // rows side by side
                               {1, elements + gap},              // apart
                               {1, -elements - gap},             // backwards
                               {count + gap, 1},                 // columns
                               {-2 - gap, (2 + gap) * elements}, // neither
                               {2, 2 * elements + gap}};
        strides = all[arrangement];
        const ptrdiff_t alongTransform = strides.step * (elements - 1),
                        alongCount = strides.distance * (count - 1);
        const ptrdiff_t before =
            4 - std::min<ptrdiff_t>(0, alongTransform) - std::min<ptrdiff_t>(0, alongCount);
        const ptrdiff_t after =
            4 + std::max<ptrdiff_t>(0, alongTransform) + std::max<ptrdiff_t>(0, alongCount);
        bytes.resize((before + after) * size + 64);
        start = 16 - reinterpret_cast<uintptr_t>(bytes.data()) % 16 + before * size +
                (mayLieAnywhere ? choices.below(17) : size * choices.below(3));
    }
    static constexpr int arrangements = 6;

    // Random numbers, some of them zeros of either sign and ones, whose sums show what rounding hides.
    template <class Real> void fill() {
        constexpr Real special[] = {0, -Real(0), 1, -1};
        const std::vector<Real> numbers =
            randomElements<Real>(bytes.size() / sizeof(Real), choices.below(1 << 20));
        for (std::size_t i = start % sizeof(Real), n = 0; i + sizeof(Real) <= bytes.size();
             i += sizeof(Real), ++n) {
            const Real value = choices.below(4) > 0 ? numbers[n] : special[choices.below(4)];
            std::memcpy(bytes.data() + i, &value, sizeof value);
        }
    }

    unsigned char *at(ptrdiff_t transform, ptrdiff_t element) {
        return bytes.data() + start +
               (transform * strides.distance + element * strides.step) * static_cast<ptrdiff_t>(size);
    }

    Strides strides;
    std::vector<unsigned char> bytes;

private:
    std::size_t size, start;
};

alignas(16) uint8_t buffer[1 << 18];

// One row by the single call.
void transformRow(const Many &entry, Array &from, Array &to, ptrdiff_t t, int n, int32_t flag) {
    alignas(16) static unsigned char row[1 << 17];
    for (ptrdiff_t e = 0; e < entry.sources(n); ++e)
        std::memcpy(row + e * entry.elementBytes(), from.at(t, e), entry.elementBytes());
    ASSERT_EQ(entry.single.transform(row, row, n, flag, buffer), zrfStatusOk);
    for (ptrdiff_t e = 0; e < entry.results(n); ++e)
        std::memcpy(to.at(t, e), row + e * entry.elementBytes(), entry.elementBytes());
}

TEST(Many, GivesTheBitsOfSingleCalls) {
    constexpr int32_t flags[] = {zrfScaleFwdByN, zrfScaleInvByN, zrfScaleBySqrtN, zrfScaleNone};
    for (const Many &entry : allOfMany()) {
        SCOPED_TRACE(entry.single.name);
        for (int n = entry.single.leastSize(); n <= entry.single.mostSize(); ++n)
            for (int arrangement = 0; arrangement < Array::arrangements; ++arrangement) {
                const ptrdiff_t count = n >= 10 && entry.single.isWht() ? 3 : 1 + choices.below(70);
                const int ofResults =
                    choices.below(3) == 0 ? choices.below(Array::arrangements) : arrangement;
                const int32_t flag = flags[choices.below(4)];
                const bool mayLieAnywhere = !entry.single.isWht();
                Array source(arrangement, entry.sources(n), count, entry.elementBytes(), mayLieAnywhere);
                Array result(ofResults, entry.results(n), count, entry.elementBytes(), mayLieAnywhere);
                entry.single.isSingle ? source.fill<Float32>() : source.fill<Float64>();
                Array expected = result;
                for (ptrdiff_t t = 0; t < count; ++t)
                    transformRow(entry, source, expected, t, n, flag);
                const auto sourceBefore = source.bytes;
                ASSERT_EQ(entry.call(source.at(0, 0), result.at(0, 0), n, flag, count, source.strides,
                                     result.strides, buffer),
                          zrfStatusOk);
                ASSERT_EQ(result.bytes, expected.bytes)
                    << n << ", " << count << " of arrangement " << arrangement;
                ASSERT_EQ(source.bytes, sourceBefore);
            }
    }
}

TEST(Many, WorksInPlace) {
    for (const Many &entry : allOfMany()) {
        SCOPED_TRACE(entry.single.name);
        for (int n = entry.single.leastSize(); n <= std::min(entry.single.mostSize(), 64); ++n)
            for (int arrangement = 0; arrangement < Array::arrangements; ++arrangement) {
                const ptrdiff_t elements = std::max(entry.sources(n), entry.results(n)),
                                count = 1 + choices.below(40);
                Array array(arrangement, elements, count, entry.elementBytes(), false);
                entry.single.isSingle ? array.fill<Float32>() : array.fill<Float64>();
                Array expected = array;
                for (ptrdiff_t t = 0; t < count; ++t)
                    transformRow(entry, array, expected, t, n, zrfScaleBySqrtN);
                ASSERT_EQ(entry.call(array.at(0, 0), array.at(0, 0), n, zrfScaleBySqrtN, count, array.strides,
                                     array.strides, buffer),
                          zrfStatusOk);
                ASSERT_EQ(array.bytes, expected.bytes)
                    << n << ", " << count << " of arrangement " << arrangement;
            }
    }
}

TEST(Many, RefusesWhatItCannotDo) {
    constexpr ptrdiff_t most = std::numeric_limits<ptrdiff_t>::max(),
                        least = std::numeric_limits<ptrdiff_t>::min();
    for (const Many &entry : allOfMany()) {
        SCOPED_TRACE(entry.single.name);
        const int above = entry.single.mostSize() + 1, n = 9; // a length, or an order with a buffer
        std::vector<unsigned char> src(1 << 17, 1), dst(1 << 17, 2);
        const auto untouched = dst;
        const Strides rows = {1, 66};
        const auto expect = [&](Status status, int32_t size, int32_t flag, ptrdiff_t count, Strides from,
                                Strides to, bool hasSrc = true, bool hasDst = true, bool hasBuffer = true) {
            EXPECT_EQ(entry.call(hasSrc ? src.data() : nullptr, hasDst ? dst.data() : nullptr, size, flag,
                                 count, from, to, hasBuffer ? buffer : nullptr),
                      status);
        };
        for (const int32_t size : {entry.single.leastSize() - 1, above, -1})
            expect(zrfStatusSizeError, size, zrfScaleNone, 1, rows, rows);
        expect(zrfStatusSizeError, n, zrfScaleNone, -1, rows, rows);
        expect(zrfStatusSizeError, n, 0, least, {0, 0}, {0, 0}, false, false);
        expect(zrfStatusOk, n, 0, 0, {0, 0}, {0, 0}, false, false);
        expect(zrfStatusNullPointer, n, 0, 1, {0, 0}, rows, false, true);
        expect(zrfStatusNullPointer, n, 0, 1, rows, {0, 0}, true, false);
        if (entry.single.isWht())
            expect(zrfStatusNullPointer, n, zrfScaleNone, 1, rows, rows, true, true, false);
        expect(zrfStatusFlagError, n, 3, 1, {0, 0}, rows);
        for (const Strides wrong :
             {Strides{0, 66}, {most, 1}, {1, most}, {least, 1}, {1, least / 2}, {1, most / 20}}) {
            expect(zrfStatusStrideError, n, zrfScaleNone, 20, wrong, rows);
            expect(zrfStatusStrideError, n, zrfScaleNone, 20, rows, wrong);
        }
        EXPECT_EQ(dst, untouched);
    }
}

TEST(Many, TellsWhatItsWalshHadamardTransformsNeed) {
    for (const bool single : {true, false}) {
        const auto query = single ? &zrfmWHTGetBufferSize_32f : &zrfmWHTGetBufferSize_64f;
        int32_t bytes = -7;
        EXPECT_EQ(query(3, nullptr), zrfStatusNullPointer);
        for (const int32_t order : {0, zrfHighestOrder + 1})
            EXPECT_EQ(query(order, &bytes), zrfStatusSizeError);
        EXPECT_EQ(bytes, -7);
        for (int32_t order = 1; order <= zrfHighestOrder; ++order) {
            ASSERT_EQ(query(order, &bytes), zrfStatusOk);
            const int32_t row = order <= 7 ? 0 : (single ? 4 : 8) << order;
            EXPECT_EQ(bytes, whtBufferBytes(order, single) + row);
        }
    }
}

using zrfgen::Layout, zrfgen::Rows, zrfgen::Scale;
using Number = std::complex<double>;

TEST(ManyInCpp, TransformsRowsAsSingleCallsDo) {
    const std::vector<float> sound = randomElements<float>(500);
    std::vector<std::complex<float>> spectra(14 * 25), expected(14 * 25);
    const Rows<const float, 48> frames(sound, 14, 32);
    const Rows<std::complex<float>, 25> rows(spectra, 14), expectedRows(expected, 14);
    ASSERT_EQ(zrfgen::realDftForward<Layout::CCS>(frames, rows, Scale::BySqrtN), zrfStatusOk);
    ASSERT_EQ(
        forEachRow(frames, expectedRows,
                   [](auto x, auto X) { return zrfgen::realDftForward<Layout::CCS>(x, X, Scale::BySqrtN); }),
        zrfStatusOk);
    EXPECT_EQ(spectra, expected);
    std::vector<float> back(14 * 48), numbers(14 * 50);
    ASSERT_EQ(zrfgen::realDftInverse<Layout::CCS>(rows, Rows<float, 48>(back, 14), Scale::BySqrtN),
              zrfStatusOk);
    for (std::size_t i = 0; i < back.size(); ++i)
        EXPECT_NEAR(back[i], frames[i / 48][i % 48], 1e-6);
    // Lengths that do not fit, counts that differ, and rows that overlap in the destination.
    EXPECT_EQ(zrfgen::realDftForward<Layout::Pack>(frames, Rows<float, 50>(numbers, 14), Scale::None),
              zrfStatusSizeError);
    EXPECT_EQ(hartley(Rows<const float>(sound, 3, 40, 40), Rows<float>(back, 2, 40, 40), Scale::None),
              zrfStatusSizeError);
    EXPECT_EQ(hartley(Rows<const float>(sound, 3, 40, 40), Rows<float>(back, 3, 39, 40), Scale::None),
              zrfStatusSizeError);
    EXPECT_EQ(hartley(Rows<const float>(sound, 3, 65, 65), Rows<float>(back, 3, 65, 65), Scale::None),
              zrfStatusSizeError);
}

TEST(ManyInCpp, TransformsInTwoDimensions) {
    constexpr std::size_t height = 10, width = 14, half = width / 2 + 1;
    std::vector<double> picture = randomElements<double>(height * width), back(height * width);
    std::vector<Number> complexPicture(picture.begin(), picture.end()), spectrum(height * width),
        halfSpectrum(height * half);
    const Rows<const double, width> rows(picture, height);
    const Rows<Number, half> halfRows(halfSpectrum, height);
    ASSERT_EQ(dftForward2D(Rows<const Number, width>(complexPicture, height),
                           Rows<Number, width>(spectrum, height), Scale::None),
              zrfStatusOk);
    ASSERT_EQ(realDftForward2D(rows, halfRows, Scale::None), zrfStatusOk);
    for (std::size_t v = 0; v < height; ++v)
        for (std::size_t u = 0; u < width; ++u) {
            Number sum = 0; // the definition
            for (std::size_t y = 0; y < height; ++y)
                for (std::size_t x = 0; x < width; ++x)
                    sum += picture[y * width + x] *
                           std::polar(1.0, -2 * 3.14159265358979323846 *
                                               (double(v * y) / height + double(u * x) / width));
            EXPECT_LT(std::abs(spectrum[v * width + u] - sum), 1e-12);
            if (u < half) {
                EXPECT_LT(std::abs(halfSpectrum[v * half + u] - sum), 1e-12);
            }
        }
    ASSERT_EQ(realDftInverse2D(halfRows, Rows<double, width>(back, height), Scale::InverseByN), zrfStatusOk);
    for (std::size_t i = 0; i < back.size(); ++i)
        EXPECT_NEAR(back[i], picture[i], 1e-14);
    EXPECT_EQ(realDftForward2D(Rows<const double, width>(picture, 1), Rows<Number, half>(halfSpectrum, 1),
                               Scale::None),
              zrfStatusSizeError);
}

// In natural order, the transform of rows and columns is that of all elements in one row.
TEST(ManyInCpp, WalshHadamardOfRowsAndColumnsIsThatOfAll) {
    for (const int order : {1, 3, 5, 7}) {
        const std::size_t height = std::size_t{1} << order, width = 64;
        const std::vector<double> elements = randomElements<double>(height * width);
        std::vector<double> rows(height * width), all(height * width);
        ASSERT_EQ(walshHadamard2D(Rows<const double>(elements, height, width, width),
                                  Rows<double>(rows, height, width, width), Scale::None),
                  zrfStatusOk);
        ASSERT_EQ(zrfgWHT_64f(elements.data(), all.data(), order + 6, zrfScaleNone, nullptr), zrfStatusOk);
        EXPECT_EQ(rows, all);
    }
}

} // namespace
