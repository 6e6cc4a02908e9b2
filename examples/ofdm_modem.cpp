// Sends bits over a noisy channel by OFDM, plain and DFT-spread, and holds the errors to theory.

#include "plot.h"
#include "program.h"

#include <array>
#include <bit>
#include <cmath>
#include <complex>
#include <cstdio>
#include <numbers>
#include <random>

namespace {

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
    double peak = 0; // power of a symbol's strongest sample by its mean, averaged over the symbols
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
        std::array<Complex32, length> points, grid{}, samples;
        for (int c = 0; c < scheme.carriers; ++c) {
            for (unsigned &bits : sent[c])
                bits = random() >> (32 - scheme.axisBits);
            points[c] = {level(scheme.axisBits, sent[c][0]), level(scheme.axisBits, sent[c][1])};
        }
        if (scheme.spread)
            require(zrfgDFTFwd_CToC_32fc(points.data(), points.data(), scheme.carriers, zrfScaleBySqrtN));
        for (int c = 0; c < scheme.carriers; ++c)
            grid[carrier(scheme, c)] = points[c];
        require(zrfgDFTInv_CToC_64_32fc(grid.data(), samples.data(), zrfScaleBySqrtN));

        double peak = 0, power = 0;
        std::array<Complex32, prefix + length> onAir;
        for (int i = 0; i < prefix + length; ++i) // the symbol's end stands before it as well
            onAir[i] = samples[(i + length - prefix) % length];
        for (const Complex32 &x : samples) {
            peak = std::max<double>(peak, x.re * x.re + x.im * x.im);
            power += (x.re * x.re + x.im * x.im) / length;
        }
        outcome.peak += peak / power / symbols;

        for (int i = 0; i < length; ++i) {
            const Complex32 &x = onAir[prefix - delay + i];
            samples[i] = {x.re + deviation * normal(random), x.im + deviation * normal(random)};
        }
        require(zrfgDFTFwd_CToC_64_32fc(samples.data(), grid.data(), zrfScaleBySqrtN));
        for (int c = 0; c < scheme.carriers; ++c) { // the prefix has made the delay a turn of each carrier
            const int k = carrier(scheme, c);
            const std::complex<float> turned =
                std::complex(grid[k].re, grid[k].im) *
                std::polar(1.0f, 2 * std::numbers::pi_v<float> * k * delay / length);
            points[c] = {turned.real(), turned.imag()};
        }
        if (scheme.spread)
            require(zrfgDFTInv_CToC_32fc(points.data(), points.data(), scheme.carriers, zrfScaleBySqrtN));
        for (int c = 0; c < scheme.carriers; ++c)
            outcome.wrongBits += std::popcount(sent[c][0] ^ nearest(scheme.axisBits, points[c].re)) +
                                 std::popcount(sent[c][1] ^ nearest(scheme.axisBits, points[c].im));
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

    int wrongWithoutNoise = 0;
    std::array<double, schemes.size()> peaks;
    for (std::size_t s = 0; s < schemes.size(); ++s) {
        const Outcome outcome = transmit(schemes[s], 0, random);
        wrongWithoutNoise += outcome.wrongBits;
        peaks[s] = outcome.peak;
    }

    Plot plot{"Bit errors of a 64-point OFDM modem", "Eb/N0 in dB", "bit error rate", {}, true};
    plot.curves = {{"QPSK, theory", Curve::line, 0, {}, {}}, {"16-QAM, theory", Curve::dashes, 0, {}, {}}};
    for (std::size_t s = 0; s < schemes.size(); ++s)
        plot.curves.push_back({schemes[s].name, Curve::marks, 1 + int(s), {}, {}});

    std::printf("Eb/N0 dB  QPSK theory");
    for (const Scheme &scheme : schemes)
        std::printf("%s  %9s", scheme.axisBits == 2 ? "  16-QAM theory" : "", scheme.name);
    std::printf("\n");
    double largest = 0, squares = 0;
    constexpr int decibelsHigh = 8;
    for (int decibels = 0; decibels <= decibelsHigh; ++decibels) {
        const double bitToNoise = std::pow(10, decibels / 10.0);
        std::printf("%8d  %11.3e", decibels, theory(1, bitToNoise));
        for (int axisBits : {1, 2}) {
            plot.curves[axisBits - 1].x.push_back(decibels);
            plot.curves[axisBits - 1].y.push_back(theory(axisBits, bitToNoise));
        }
        for (std::size_t s = 0; s < schemes.size(); ++s) {
            const double expected = theory(schemes[s].axisBits, bitToNoise);
            if (schemes[s].axisBits == 2)
                std::printf("  %13.3e", expected);
            const int wrong =
                transmit(schemes[s], 1 / (2 * schemes[s].axisBits * bitToNoise), random).wrongBits;
            const double rate = double(wrong) / bitsPerCount;
            std::printf("  %9.3e", rate);
            plot.curves[2 + s].x.push_back(decibels);
            plot.curves[2 + s].y.push_back(rate);
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
