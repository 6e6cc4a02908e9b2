// Quantises vectors to a few bits an element, as they are and rotated by random signs and a Walsh-Hadamard
// transform: a large element, which makes the steps wide for all others, is spread over the whole vector.

#include "plot.h"
#include "program.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <zrfgen/transforms.hpp>

namespace {

constexpr int length = 1024;
constexpr int vectorsEach = 200;

using Vector = std::array<float, length>;

class Rotation {
public:
    explicit Rotation(std::mt19937 &random) {
        for (float &sign : signs)
            sign = random() >> 31 ? 1.0f : -1.0f;
    }

    Vector forward(Vector x) {
        for (int i = 0; i < length; ++i)
            x[i] *= signs[i];
        transform(x);
        return x;
    }

    Vector inverse(Vector x) {
        transform(x);
        for (int i = 0; i < length; ++i)
            x[i] *= signs[i];
        return x;
    }

private:
    void transform(Vector &x) { // with this scaling, its own inverse
        zrfgen::orThrow(zrfgen::walshHadamard(x, x, zrfgen::Scale::BySqrtN, buffer));
    }

    Vector signs;
    std::vector<zrfgen::ScratchBlock> buffer{zrfgen::walshHadamardBufferSize<float>(length)};
};

// To the nearest of 2^bits - 1 levels, evenly spaced up to the largest element.
Vector quantise(Vector x, int bits) {
    float largest = 0;
    for (const float element : x)
        largest = std::max(largest, std::abs(element));
    const float step = largest / float((1 << (bits - 1)) - 1);
    for (float &element : x)
        element = std::round(element / step) * step;
    return x;
}

// The power of the difference by the power of the vector.
double relativeError(const Vector &x, const Vector &approximation) {
    double error = 0, power = 0;
    for (int i = 0; i < length; ++i) {
        error += std::pow(double(approximation[i]) - x[i], 2);
        power += std::pow(double(x[i]), 2);
    }
    return error / power;
}

double decibels(double power) {
    return 10 * std::log10(power);
}

} // namespace

int main(int count, char **values) try {
    const std::string output = parsePaths(count, values, "rotated_quantisation OUTPUT.svg")[0];
    std::mt19937 random(1);
    Rotation rotation(random);

    std::normal_distribution<float> normal;
    std::student_t_distribution<float> heavyTailed(3);
    struct Kind {
        const char *name;
        std::function<float()> element;
    };
    const auto outlier = [&] {
        const float element = normal(random);
        return random() % 100 == 0 ? 30 * element : element;
    };
    const std::array<Kind, 3> kinds{{{"normal", [&] { return normal(random); }},
                                     {"Student t", [&] { return heavyTailed(random); }},
                                     {"outliers", outlier}}};

    constexpr int fewest = 2, most = 8;
    double roundTrip = 0;
    std::array<std::array<double, most + 1>, kinds.size()> plainError{}, rotatedError{};
    for (std::size_t k = 0; k < kinds.size(); ++k)
        for (int v = 0; v < vectorsEach; ++v) {
            Vector x;
            std::generate(x.begin(), x.end(), kinds[k].element);
            const Vector rotated = rotation.forward(x);
            roundTrip = std::max(roundTrip, relativeError(x, rotation.inverse(rotated)));
            for (int bits = fewest; bits <= most; ++bits) {
                plainError[k][bits] += relativeError(x, quantise(x, bits)) / vectorsEach;
                rotatedError[k][bits] +=
                    relativeError(x, rotation.inverse(quantise(rotated, bits))) / vectorsEach;
            }
        }

    std::printf("error by power of the vector in dB, as it is and rotated: %d vectors of %d elements\n",
                vectorsEach, length);
    std::printf("bits  %17s  %17s  %17s\n", kinds[0].name, kinds[1].name, kinds[2].name);
    Plot plot{
        "Quantising 1024 elements, as they are and rotated", "bits an element", "error by power in dB", {}};
    for (std::size_t k = 0; k < kinds.size(); ++k) {
        plot.curves.push_back({kinds[k].name, Curve::dashes, 4 + int(k), {}, {}});
        plot.curves.push_back({std::string(kinds[k].name) + ", rotated", Curve::line, 4 + int(k), {}, {}});
    }
    for (int bits = fewest; bits <= most; ++bits) {
        std::printf("%4d", bits);
        for (std::size_t k = 0; k < kinds.size(); ++k) {
            const double errors[] = {decibels(plainError[k][bits]), decibels(rotatedError[k][bits])};
            std::printf("    %7.2f  %7.2f", errors[0], errors[1]);
            for (int r = 0; r < 2; ++r) {
                plot.curves[2 * k + r].x.push_back(bits);
                plot.curves[2 * k + r].y.push_back(errors[r]);
            }
        }
        std::printf("\n");
    }
    std::printf("outliers     one element in 100, 30 times as large; at 4 bits the rotation saves %.1f dB\n",
                decibels(plainError[2][4] / rotatedError[2][4]));
    std::printf("round trip   error %.1f dB without quantising\n", decibels(roundTrip));
    writeSvg(plot, output);
    std::printf("picture      %s\n", output.c_str());
    return 0;
} catch (const std::exception &error) {
    return reportFailure("rotated_quantisation", error);
}
