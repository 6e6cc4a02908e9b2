// Sends bits over a noisy channel by OFDM, plain and DFT-spread, and holds the errors to theory.

#include "plot.h"
#include "program.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <complex>
#include <cstdio>
#include <numbers>
#include <numeric>
#include <random>
#include <span>
#include <zrfgen/transforms.hpp>

namespace {

using Complex = std::complex<float>;
using zrfgen::orThrow;

constexpr auto scale = zrfgen::Scale::BySqrtN;
constexpr int length = 64, prefix = 16;
constexpr int delay = 5;             // of the channel, in samples; the receiver keeps the sender's time
constexpr int bitsPerCount = 201600; // whole symbols of every scheme below

struct Scheme {
    const char *name;
    int carriers;
    int axisBits; // bits in each coordinate of a point: 1 is QPSK, 2 is 16-QAM
    bool spread;  // points go through a DFT of as many carriers first, so that each is on all of them
};

constexpr std::array<Scheme, 7> schemes{{{"plain", 60, 1, false},
                                         {"spread 12", 12, 1, true},
                                         {"spread 24", 24, 1, true},
                                         {"spread 36", 36, 1, true},
                                         {"spread 48", 48, 1, true},
                                         {"spread 60", 60, 1, true},
                                         {"16-QAM", 60, 2, false}}};

struct Outcome {
    int wrongBits = 0;
    std::vector<double> peaks; // of each symbol, the power of the strongest sample divided by the mean power
};

// Neighbours differ in one bit. The mean power of a point is 1.
float level(int axisBits, unsigned bits) {
    constexpr std::array steps{-3, -1, 3, 1};
    return axisBits == 1 ? (bits ? 1 : -1) / std::sqrt(2.0f) : float(steps[bits]) / std::sqrt(10.0f);
}

unsigned nearest(int axisBits, float value) {
    unsigned best = 0;
    for (unsigned bits = 1; bits < 1u << axisBits; ++bits)
        if (std::abs(value - level(axisBits, bits)) < std::abs(value - level(axisBits, best)))
            best = bits;
    return best;
}

// Frequencies around zero, the negative ones in the upper half of the DFT.
int carrier(const Scheme &scheme, int index) {
    return (index - scheme.carriers / 2 + length) % length;
}

Outcome transmit(const Scheme &scheme, double noisePower, std::mt19937 &random) {
    std::normal_distribution<float> normal;
    const float deviation = float(std::sqrt(noisePower / 2));
    Outcome outcome;
    const int symbols = bitsPerCount / (2 * scheme.axisBits * scheme.carriers);
    for (int symbol = 0; symbol < symbols; ++symbol) {
        std::array<std::array<unsigned, 2>, length> sent;
        std::array<Complex, length> grid{}, samples;
        std::array<Complex, length> pointsOfAll;
        const std::span points(pointsOfAll.data(), scheme.carriers);
        for (int c = 0; c < scheme.carriers; ++c) {
            for (unsigned &bits : sent[c])
                bits = random() >> (32 - scheme.axisBits);
            points[c] = {level(scheme.axisBits, sent[c][0]), level(scheme.axisBits, sent[c][1])};
        }
        if (scheme.spread)
            orThrow(zrfgen::dftForward(points, points, scale));
        for (int c = 0; c < scheme.carriers; ++c)
            grid[carrier(scheme, c)] = points[c];
        orThrow(zrfgen::dftInverse(grid, samples, scale));

        double peak = 0, power = 0;
        std::array<Complex, prefix + length> onAir;
        for (int i = 0; i < prefix + length; ++i) // the symbol's end stands before it as well
            onAir[i] = samples[(i + length - prefix) % length];
        for (const Complex &x : samples) {
            peak = std::max<double>(peak, std::norm(x));
            power += std::norm(x) / length;
        }
        outcome.peaks.push_back(peak / power);

        for (int i = 0; i < length; ++i) {
            const float re = deviation * normal(random), im = deviation * normal(random);
            samples[i] = onAir[prefix - delay + i] + Complex(re, im);
        }
        orThrow(zrfgen::dftForward(samples, grid, scale));
        for (int c = 0; c < scheme.carriers; ++c) { // the prefix has made the delay a turn of each carrier
            const int k = carrier(scheme, c);
            points[c] = grid[k] * std::polar(1.0f, 2 * std::numbers::pi_v<float> * k * delay / length);
        }
        if (scheme.spread)
            orThrow(zrfgen::dftInverse(points, points, scale));
        for (int c = 0; c < scheme.carriers; ++c)
            outcome.wrongBits += std::popcount(sent[c][0] ^ nearest(scheme.axisBits, points[c].real())) +
                                 std::popcount(sent[c][1] ^ nearest(scheme.axisBits, points[c].imag()));
    }
    return outcome;
}

// The transforms keep noise white and of the same power, so errors are those of single points.
double theory(int axisBits, double bitToNoise) {
    const auto tail = [](double x) { return std::erfc(x / std::numbers::sqrt2) / 2; };
    if (axisBits == 1)
        return tail(std::sqrt(2 * bitToNoise));
    const double half =
        std::sqrt(0.8 * bitToNoise); // half the distance of levels, in deviations of the noise
    return (3 * tail(half) + 2 * tail(3 * half) - tail(5 * half)) / 4;
}

} // namespace

int main(int count, char **values) try {
    const std::string output = parsePaths(count, values, "ofdm_modem OUTPUT.svg")[0];
    std::mt19937 random(1);

    Plot plot{"Spreading by a DFT lowers the peaks of an OFDM signal",
              "peak power above the mean, dB",
              "part of the symbols with a higher peak",
              {},
              true};
    int wrongWithoutNoise = 0;
    std::array<double, schemes.size()> peaks;
    for (std::size_t s = 0; s < schemes.size(); ++s) {
        const Outcome outcome = transmit(schemes[s], 0, random);
        wrongWithoutNoise += outcome.wrongBits;
        peaks[s] =
            std::accumulate(outcome.peaks.begin(), outcome.peaks.end(), 0.0) / double(outcome.peaks.size());
        // How many symbols have a peak above so many decibels.
        plot.curves.push_back(
            {schemes[s].name, schemes[s].axisBits == 2 ? Curve::dashes : Curve::line, int(s), {}, {}});
        for (int step = 20; step <= 120; ++step) {
            const double level = step / 10.0;
            const auto above = std::ranges::count_if(
                outcome.peaks, [&](double peak) { return 10 * std::log10(peak) > level; });
            plot.curves[s].x.push_back(level);
            plot.curves[s].y.push_back(double(above) / double(outcome.peaks.size()));
        }
    }

    std::printf("Eb/N0 dB  QPSK theory");
    for (const Scheme &scheme : schemes)
        std::printf("%s  %9s", scheme.axisBits == 2 ? "  16-QAM theory" : "", scheme.name);
    std::printf("\n");
    double largest = 0, squares = 0;
    constexpr int decibelsHigh = 8;
    for (int decibels = 0; decibels <= decibelsHigh; ++decibels) {
        const double bitToNoise = std::pow(10, decibels / 10.0);
        std::printf("%8d  %11.3e", decibels, theory(1, bitToNoise));
        for (std::size_t s = 0; s < schemes.size(); ++s) {
            const double expected = theory(schemes[s].axisBits, bitToNoise);
            if (schemes[s].axisBits == 2)
                std::printf("  %13.3e", expected);
            const int wrong =
                transmit(schemes[s], 1 / (2 * schemes[s].axisBits * bitToNoise), random).wrongBits;
            const double rate = double(wrong) / bitsPerCount;
            std::printf("  %9.3e", rate);
            const double deviations = (rate - expected) / std::sqrt(expected * (1 - expected) / bitsPerCount);
            largest = std::max(largest, std::abs(deviations));
            squares += deviations * deviations;
        }
        std::printf("\n");
    }
    std::printf("bits       %d in each count, fixed seed\n", bitsPerCount);
    std::printf("no noise   %d wrong bits of %zu\n", wrongWithoutNoise, bitsPerCount * schemes.size());
    std::printf("peaks     ");
    for (std::size_t s = 0; s < schemes.size(); ++s)
        std::printf(" %s %.1f dB%s", schemes[s].name, 10 * std::log10(peaks[s]),
                    s + 1 < schemes.size() ? "," : "\n");
    std::printf("deviation  largest %.2f, root mean square %.2f standard deviations of a count\n", largest,
                std::sqrt(squares / double(schemes.size() * (decibelsHigh + 1))));
    writeSvg(plot, output);
    std::printf("picture    %s\n", output.c_str());
    return 0;
} catch (const std::exception &error) {
    return reportFailure("ofdm_modem", error);
}
