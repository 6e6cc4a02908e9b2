#include "values.h"

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

} // namespace

double rounded(const Transform &transform, double value) {
    return transform.isSingle ? static_cast<Float32>(value) : value;
}

void encode(const Transform &transform, const Values &values, unsigned char *bytes) {
    transform.isSingle ? encodeAs<Float32>(values, bytes) : encodeAs<Float64>(values, bytes);
}

Values decode(const Transform &transform, const unsigned char *bytes) {
    const std::size_t count = transform.components();
    return transform.isSingle ? decodeAs<Float32>(count, bytes) : decodeAs<Float64>(count, bytes);
}

Values randomValues(const Transform &transform, unsigned seed) {
    std::mt19937_64 generator(seed);
    std::uniform_real_distribution<double> uniform(-1, 1);
    Values values(transform.components());
    for (double &value : values)
        value = rounded(transform, uniform(generator));
    return values;
}

Values run(const Transform &transform, const Values &input, int32_t flag) {
    Arena src(0), dst(0);
    encode(transform, input, src.at(0));
    EXPECT_EQ(transform.call(src.at(0), dst.at(0), flag), zrfStatusOk);
    return decode(transform, dst.at(0));
}

Values exchanged(Values values) {
    for (std::size_t i = 0; i < values.size(); i += 2)
        std::swap(values[i], values[i + 1]);
    return values;
}

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

template Float32 inverseRoot<Float32>(int n);
template Float64 inverseRoot<Float64>(int n);

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
