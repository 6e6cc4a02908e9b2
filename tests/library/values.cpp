#include "values.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <numbers>
#include <random>

namespace {

template <class Real> void encodeAs(const Values &values, unsigned char *bytes) {
    const std::vector<Real> reals(values.begin(), values.end());
    std::memcpy(bytes, reals.data(), reals.size() * sizeof(Real));
}

template <class Real> Values decodeAs(std::size_t count, const unsigned char *bytes) {
    std::vector<Real> reals(count);
    std::memcpy(reals.data(), bytes, count * sizeof(Real));
    return Values(reals.begin(), reals.end());
}

// 1/sqrt(n), the exact value rounded once.
template <class Real> Real inverseRoot(int n) {
    // A midpoint of two neighbours, squared, decides in 113 bits on which side of it the root lies.
    const auto isBelowRoot = [n](__float128 value) { return value * value * n < 1; };
    Real below = static_cast<Real>(1 / std::sqrt(static_cast<double>(n)));
    for (int step = 0; step < 3; ++step)
        below = std::nextafter(below, Real(0));
    for (Real above = std::nextafter(below, Real(1));
         isBelowRoot((static_cast<__float128>(below) + above) / 2); above = std::nextafter(below, Real(1)))
        below = above;
    return below;
}

} // namespace

double rounded(const Transform &transform, double value) {
    return transform.isSingle ? static_cast<Float32>(value) : value;
}

void encode(const Transform &transform, const Values &source, unsigned char *bytes) {
    transform.isSingle ? encodeAs<Float32>(source, bytes) : encodeAs<Float64>(source, bytes);
}

Values decode(const Transform &transform, const unsigned char *destination) {
    const std::size_t count = transform.dstCount();
    return transform.isSingle ? decodeAs<Float32>(count, destination) : decodeAs<Float64>(count, destination);
}

Values randomValues(const Transform &transform, unsigned seed) {
    std::mt19937_64 generator(seed);
    std::uniform_real_distribution<double> uniform(-1, 1);
    Values values(transform.srcCount());
    for (double &value : values)
        value = rounded(transform, uniform(generator));
    for (const int position : zeroPositions(transform.srcLayout, transform.length))
        values[position] = 0;
    return values;
}

Values run(const Transform &transform, const Values &input, int32_t flag) {
    Arena src(0), dst(0);
    encode(transform, input, src.at(0));
    EXPECT_EQ(transform.call(src.at(0), dst.at(0), flag), zrfStatusOk);
    return decode(transform, dst.at(0));
}

std::vector<std::uint64_t> bitsOf(const Values &values) {
    std::vector<std::uint64_t> bits(values.size());
    std::ranges::transform(values, bits.begin(),
                           [](double value) { return std::bit_cast<std::uint64_t>(value); });
    return bits;
}

Part partAt(Layout layout, int length, int position) {
    const bool hasNyquist = length % 2 == 0;
    switch (layout) {
    case Layout::Real:
        return {position, false};
    case Layout::Pack: // as in CCS without the zeros
        return position == 0 ? Part{0, false} : partAt(Layout::CCS, length, position + 1);
    case Layout::Perm: // as in CCS with R[N/2] in place of the first zero
        if (!hasNyquist)
            return partAt(Layout::Pack, length, position);
        return position == 1 ? Part{length / 2, false} : partAt(Layout::CCS, length, position);
    default:
        return {position / 2, position % 2 != 0};
    }
}

std::vector<int> zeroPositions(Layout layout, int length) {
    if (layout != Layout::CCS)
        return {};
    return length % 2 == 0 ? std::vector{1, length + 1} : std::vector{1};
}

long double coefficient(const Transform &transform, int dstPosition, int srcPosition) {
    const int n = transform.length;
    const Part to = partAt(transform.dstLayout, n, dstPosition);
    const Part from = partAt(transform.srcLayout, n, srcPosition);
    const int turns = to.index * from.index % n;
    const long double c = cosineOfTurn(turns, n), s = sineOfTurn(turns, n);
    if (transform.direction == Direction::Both)
        return c + s;
    const long double signedSine = transform.direction == Direction::Forward ? -s : s;
    const long double factor = to.isImaginary == from.isImaginary ? c
                               : to.isImaginary                   ? signedSine
                                                                  : -signedSine;
    // An inner entry of half a spectrum stands for its mirror image as well.
    const bool isHalf = transform.srcLayout != Layout::Complex && transform.srcLayout != Layout::Real;
    return isHalf && from.index != 0 && 2 * from.index != n ? 2 * factor : factor;
}

double scaleFactor(const Transform &transform, int32_t flag) {
    const int n = transform.length;
    if (flag == zrfScaleBySqrtN)
        return transform.isSingle ? inverseRoot<Float32>(n) : inverseRoot<Float64>(n);
    if ((flag == zrfScaleFwdByN && transform.direction != Direction::Inverse) ||
        (flag == zrfScaleInvByN && transform.direction != Direction::Forward))
        return rounded(transform, 1.0 / n);
    return 1;
}

long double cosineOfTurn(int k, int n) {
    constexpr int atQuarters[] = {1, 0, -1, 0};
    k = (k % n + n) % n;
    if (4 * k % n == 0)
        return atQuarters[4 * k / n];
    return std::cos(2 * std::numbers::pi_v<long double> * k / n);
}

long double sineOfTurn(int k, int n) {
    return cosineOfTurn(4 * k - n, 4 * n);
}
